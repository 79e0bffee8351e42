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
class FlagSettingsModel;
class LoadNucOptionsModel;
class QObject;
class SetupCoolerSettingsModel;
class SetupFilterWheelSettingsModel;
class SetupGeneralModel;
class SyncSettingsModel;
class ZvtCameraModel;

/// The interface through which a model reaches the root of its camera's tree. GUI thread only.
class CameraRoot
{
public:
    /// The root of `model`: its nearest QObject ancestor that is a CameraRoot. Null if there is none, also while the
    /// root is being destroyed.
    static CameraRoot *of(const QObject *model);

    CameraRoot() = default;
    CameraRoot(const CameraRoot &) = delete;
    CameraRoot &operator=(const CameraRoot &) = delete;
    virtual ~CameraRoot();

    /// A copy of the shared pointer; null if the root was built without a controller.
    virtual hlx::TSharedPtr<hlx::cam::IZVTController> controller() const = 0;

    /// The device of the controller; null without a controller or if the controller has no device.
    virtual hlx::TSharedPtr<hlx::cam::IDevice> device() const = 0;

    /// Whether the camera is connected. False without a controller.
    virtual bool connected() const = 0;

    /// Calls `listener` after each change of connected() until `context` is destroyed. It replaces a signal, which an
    /// interface without QObject cannot have.
    virtual QMetaObject::Connection onConnectedChanged(const QObject *context, std::function<void()> listener) = 0;

    /// Calls `listener` after each update of capabilities() until `context` is destroyed.
    virtual QMetaObject::Connection onCapabilitiesChanged(const QObject *context, std::function<void()> listener) = 0;

    /// Whether the pages show what only the manufacturer needs.
    virtual bool manufacturingMode() const = 0;

    /// Calls `listener` after each change of manufacturingMode() until `context` is destroyed.
    virtual QMetaObject::Connection onManufacturingModeChanged(const QObject *context, std::function<void()> listener)
        = 0;

    /// The live values that cameraCapabilitiesModel() shows; never null. They are built before any sub-model, so a
    /// model may start a read from its constructor.
    virtual std::shared_ptr<CapabilityBlock> capabilities() const = 0;

    /// The capabilities of this camera; never null. Must not be called from the constructor of a sub-model: the root
    /// may not have built this model yet.
    virtual CameraCapabilitiesModel *cameraCapabilitiesModel() = 0;

    /// The general setup with the presets, as last read; never null. Must not be called from the constructor of a
    /// sub-model.
    virtual SetupGeneralModel *setupGeneralModel() = 0;

    /// The filters in the filter wheel, as last read; never null. Must not be called from the constructor of a
    /// sub-model.
    virtual SetupFilterWheelSettingsModel *setupFilterWheelSettingsModel() = 0;

    /// The settings of the cooler, as last read; never null. Must not be called from the constructor of a sub-model.
    virtual SetupCoolerSettingsModel *setupCoolerSettingsModel() = 0;

    /// The settings of the flag, as last read; never null. Must not be called from the constructor of a sub-model.
    virtual FlagSettingsModel *flagSettings() = 0;

    /// The synchronisation settings, as last read; never null. Must not be called from the constructor of a sub-model.
    virtual SyncSettingsModel *syncSettings() = 0;

    /// What a load of a correction sets again, as chosen by the operator; never null. Must not be called from the
    /// constructor of a sub-model.
    virtual LoadNucOptionsModel *loadNucOptions() = 0;

    /// The mask of presets: bit n is set if preset n, counted from 0, holds a non-uniformity correction.
    virtual uint8_t hasNucMask() = 0;
    /// Clears the bits of `mask` in hasNucMask(), then sets all bits of `values`. Signals in any case; writes nothing
    /// to the camera.
    virtual void modifyHasNucMask(uint8_t mask, uint8_t values) = 0;
    /// Sets or clears the bit of one preset, counted from 0.
    virtual void setPresetHasNuc(uint8_t preset, bool hasNuc) = 0;
    /// Reads the mask from the camera again and signals it. Blocks for one SDK call for each preset.
    virtual void updateHasNucMask() = 0;

    /// The root itself, for models that have it as a property for their page; never null.
    virtual ZvtCameraModel *cameraModel() = 0;
};
