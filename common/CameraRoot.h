#pragma once

#include <QMetaObject>

#include <cstdint>
#include <functional>
#include <memory>

#include "hlx/IDevice.h"
#include "hlx/IZVTController.h"
#include "hlx/TSharedPtr.h"

class CameraCapabilitiesModel;
class CapabilityBlock;
class QObject;
class SetupGeneralModel;
class ZvtCameraModel;

/// What a model may ask of the root of its camera's tree. GUI thread only.
class CameraRoot
{
public:
    /// The root above `model`: the first of its QObject parents, upward from its own, that is one. Null if none is,
    /// which is so while the root itself is being destroyed.
    static CameraRoot *of(const QObject *model);

    CameraRoot() = default;
    CameraRoot(const CameraRoot &) = delete;
    CameraRoot &operator=(const CameraRoot &) = delete;
    virtual ~CameraRoot();

    /// A copy of the shared pointer; null if the root was built without a controller.
    virtual hlx::TSharedPtr<hlx::cam::IZVTController> controller() const = 0;

    /// The device behind the controller; null if there is none.
    virtual hlx::TSharedPtr<hlx::cam::IDevice> device() const = 0;

    /// False without a controller.
    virtual bool connected() const = 0;

    /// Calls `listener` on each change of connected(), for as long as `context` lives.
    virtual QMetaObject::Connection onConnectedChanged(const QObject *context, std::function<void()> listener) = 0;

    /// The live values behind cameraCapabilitiesModel(); never null. They exist before any sub-model does, so that a
    /// model may start a read from its constructor.
    virtual std::shared_ptr<CapabilityBlock> capabilities() const = 0;

    /// What this camera can do. Not to be called from the constructor of a sub-model: the root may build it later.
    virtual CameraCapabilitiesModel *cameraCapabilitiesModel() = 0;

    /// The general setup with the presets, as last read; never null. Not to be called from the constructor of a
    /// sub-model either.
    virtual SetupGeneralModel *setupGeneralModel() = 0;

    /// Bit n set: preset n holds a non-uniformity correction.
    virtual uint8_t hasNucMask() = 0;
    /// Sets the bits of `mask` to those of `values` in the mask of presets that hold a correction.
    virtual void modifyHasNucMask(uint8_t mask, uint8_t values) = 0;
    virtual void setPresetHasNuc(uint8_t preset, bool hasNuc) = 0;
    /// Reads the mask anew from the camera.
    virtual void updateHasNucMask() = 0;

    /// The root itself, for models that hand it to their page.
    virtual ZvtCameraModel *cameraModel() = 0;
};
