#pragma once

#include "hlx/IDevice.h"

#include <cstdint>
#include <memory>

namespace emulator
{
class Camera;
}

namespace hlx::cam
{

/// An emulated camera as the framework finds it. Does not keep the camera alive.
class EmulatedDevice final : public IDevice
{
public:
    explicit EmulatedDevice(const std::shared_ptr<emulator::Camera> &camera);

    hlx::CString key() const override { return m_key; }
    CProperties &properties() override { return m_properties; }

    /// The camera; null if it no longer exists.
    std::shared_ptr<emulator::Camera> camera() const { return m_properties.camera.lock(); }

    /// The existing emulated camera whose device has this key; null if there is none.
    static std::shared_ptr<emulator::Camera> cameraOf(const hlx::CString &key);

private:
    /// The emulator's own properties. They can be read and written even while the camera is not connected.
    struct Properties final : CProperties {
        bool get(const hlx::CString &key, hlx::CVariant &value) const override;
        bool set(const hlx::CString &key, hlx::CVariant value) override;

        std::weak_ptr<emulator::Camera> camera;
    };

    const hlx::CString m_key;
    Properties m_properties;
};

} // namespace hlx::cam
