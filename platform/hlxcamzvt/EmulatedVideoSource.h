#pragma once

#include "hlx/IVideoSource.h"

#include <memory>

namespace emulator
{
class Camera;
}

namespace hlx::cam
{

/// The video stream of an emulated camera. It does not keep the camera alive.
class EmulatedVideoSource final : public IVideoSource
{
public:
    explicit EmulatedVideoSource(std::weak_ptr<emulator::Camera> camera);

    void StopStream() override;
    void StartStream() override;

private:
    void setStreaming(const char *name, bool streaming);

    const std::weak_ptr<emulator::Camera> m_camera;
};

} // namespace hlx::cam
