#include "setup/SetupTabResults.h"

#include "common/CapabilityBlock.h"
#include "common/Refresh.h"
#include "common/reading.h"

#include "zvt/zvtsdk.h"

// The focus limits

DiscontinuousFovPositionMetaResult DiscontinuousFovPositionMetaResult::read(const CameraAccess &camera, uint8_t fov,
                                                                            bool loadLensStates)
{
    const uint64_t handle = camera.handle;
    DiscontinuousFovPositionMetaResult result;
    ::read(result.nearPosition, zvtGetFocusNearPos, handle, fov);
    ::read(result.farPosition, zvtGetFocusFarPos, handle, fov);
    if (::read(result.focusSlowControl, zvtMfgGetFocusSlowControl, handle, fov) && result.focusSlowControl.get() == 0)
        ::read(result.positionIncrement, zvtMfgGetFocusPositionIncrement, handle, fov);
    ::read(result.currentPosition, zvtGetFocusCurrentPos, handle);
    readPair(result.fullRangeMinimum, result.fullRangeMaximum, zvtGetFocusRange, handle);
    ::read(result.narrowNear, zvtGetFocusNearPos, handle, NarrowFieldOfView);
    ::read(result.narrowFar, zvtGetFocusFarPos, handle, NarrowFieldOfView);
    ::read(result.wideNear, zvtGetFocusNearPos, handle, WideFieldOfView);
    ::read(result.wideFar, zvtGetFocusFarPos, handle, WideFieldOfView);
    result.loadLensStates = loadLensStates;
    return result;
}

DiscontinuousFovPositionMetaRead DiscontinuousFovPositionMetaRead::start(const CameraAccess &camera, uint8_t fov,
                                                                         bool loadLensStates)
{
    const auto since = std::chrono::steady_clock::now();
    const auto task = [fov, loadLensStates](const CameraAccess &access) {
        return DiscontinuousFovPositionMetaResult::read(access, fov, loadLensStates);
    };
    return {launchRead<DiscontinuousFovPositionMetaResult>(task, camera), since};
}

ContinuousFovPositionMetaResult ContinuousFovPositionMetaResult::read(const CameraAccess &camera)
{
    const uint64_t handle = camera.handle;
    ContinuousFovPositionMetaResult result;
    readPair(result.fullRangeMinimum, result.fullRangeMaximum, zvtGetFocusRange, handle);
    ::read(result.currentPosition, zvtGetFocusCurrentPos, handle);
    ::read(result.nearPosition, zvtGetFocusNearPos, handle, OnlyFieldOfView);
    ::read(result.farPosition, zvtGetFocusFarPos, handle, OnlyFieldOfView);
    return result;
}

// The settings

SetupSettingsResult SetupSettingsResult::read(const CameraAccess &camera, const ContinuousMeta &runningMeta)
{
    const uint64_t handle = camera.handle;
    SetupSettingsResult result;
    if (camera.capabilities->hasFPAGain())
        result.readGain(camera);
    result.readLens(camera, runningMeta);
    ::read(result.hsmAvailable, zvtGetHSMAvailable, handle);
    ::read(result.hsmEnabled, zvtGetHSMEnabled, handle);
    ::read(result.flipHorizontally, zvtGetRevertEnabled, handle);
    ::read(result.flipVertically, zvtGetInvertEnabled, handle);
    ::read(result.frameSyncSource, zvtGetFrameSyncSource, handle);
    result.athermalizationAvailable = readOr(false, zvtGetLensAthermalizationEnabledAvailable, handle);
    if (result.athermalizationAvailable)
        ::read(result.athermalizationEnabled, zvtGetLensAthermalizationEnabled, handle);
    return result;
}

void SetupSettingsResult::readGain(const CameraAccess &camera)
{
    constexpr uint32_t nameSize = 100;

    const bool named = readOr(false, zvtGetGainLevelsAreNamed, camera.handle);
    // The camera may turn into another one on the way, so the number of levels is looked up anew for each.
    for (int level = 0; level < camera.capabilities->numFPAGainLevels(); ++level) {
        QString name;
        if (named)
            name = textOr<nameSize>({}, zvtGetGainLevelName, camera.handle, static_cast<uint8_t>(level));
        gainNames << (name.isEmpty() ? QString::number(level) : name);
    }
    ::read(gainLevel, zvtGetGainLevel, camera.handle);
}

void SetupSettingsResult::readLens(const CameraAccess &camera, const ContinuousMeta &runningMeta)
{
    const uint64_t handle = camera.handle;
    if (camera.capabilities->hasDiscontinuousOpticalZoom()) {
        ::read(discreteFieldOfView, zvtGetFOV, handle);
        Nullable<uint8_t> fov;
        if (::read(fov, zvtGetFOV, handle))
            discontinuousMeta = DiscontinuousFovPositionMetaRead::start(camera, fov.get(), true);
    }
    if (camera.capabilities->hasContinuousOpticalZoom()) {
        ::read(zoomPosition, zvtGetFOVPos, handle);
        readPair(zoomMinimum, zoomMaximum, zvtGetFOVRange, handle);
        loadPositionMetaForContinuousFov(camera, runningMeta);
    }
    if (camera.capabilities->hasLensCover())
        ::read(lensCover, zvtGetLensCoverState, handle);
    if (camera.capabilities->hasFocus())
        readFocus(camera, runningMeta);
    if (camera.capabilities->hasFocusToDistance()) {
        ::read(distanceMinimum, zvtGetFocusToDistanceMin, handle);
        ::read(distanceMaximum, zvtGetFocusToDistanceMax, handle);
    }
}

void SetupSettingsResult::readFocus(const CameraAccess &camera, const ContinuousMeta &runningMeta)
{
    const uint64_t handle = camera.handle;
    ::read(regionSize, zvtGetAutoFocusROISize, handle);
    ::read(regionPosition, zvtGetAutoFocusROIPosition, handle);
    ::read(regionShownWhenFocusing, zvtGetAutoFocusROIShowWhenFocusing, handle);
    ::read(overlayShowsFocusRegion, zvtGetVideoOverlayShowFocusROI, handle);
    // A lens without zoom has its limits as a continuous one.
    if (!camera.capabilities->hasContinuousOpticalZoom() && !camera.capabilities->hasDiscontinuousOpticalZoom())
        loadPositionMetaForContinuousFov(camera, runningMeta);
    ::read(focusManualMode, zvtGetFocusManualMode, handle);
}

void SetupSettingsResult::loadPositionMetaForContinuousFov(const CameraAccess &camera,
                                                           const ContinuousMeta &runningMeta)
{
    if (!runningMeta.isRunning())
        continuousMeta = launchRead<ContinuousFovPositionMetaResult>(&ContinuousFovPositionMetaResult::read, camera);
}
