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
    fetch(result.nearPosition, zvtGetFocusNearPos, handle, fov);
    fetch(result.farPosition, zvtGetFocusFarPos, handle, fov);
    if (fetch(result.focusSlowControl, zvtMfgGetFocusSlowControl, handle, fov) && result.focusSlowControl.get() == 0)
        fetch(result.positionIncrement, zvtMfgGetFocusPositionIncrement, handle, fov);
    fetch(result.currentPosition, zvtGetFocusCurrentPos, handle);
    readPair(result.fullRangeMinimum, result.fullRangeMaximum, zvtGetFocusRange, handle);
    fetch(result.narrowNear, zvtGetFocusNearPos, handle, NarrowFieldOfView);
    fetch(result.narrowFar, zvtGetFocusFarPos, handle, NarrowFieldOfView);
    fetch(result.wideNear, zvtGetFocusNearPos, handle, WideFieldOfView);
    fetch(result.wideFar, zvtGetFocusFarPos, handle, WideFieldOfView);
    result.loadLensStates = loadLensStates;
    return result;
}

DiscontinuousFovPositionMetaRead DiscontinuousFovPositionMetaRead::start(const CameraAccess &camera, uint8_t fov,
                                                                         bool loadLensStates)
{
    const auto startTime = std::chrono::steady_clock::now();
    const auto task = [fov, loadLensStates](const CameraAccess &access) {
        return DiscontinuousFovPositionMetaResult::read(access, fov, loadLensStates);
    };
    return {launchRead<DiscontinuousFovPositionMetaResult>(task, camera), startTime};
}

ContinuousFovPositionMetaResult ContinuousFovPositionMetaResult::read(const CameraAccess &camera)
{
    const uint64_t handle = camera.handle;
    ContinuousFovPositionMetaResult result;
    readPair(result.fullRangeMinimum, result.fullRangeMaximum, zvtGetFocusRange, handle);
    fetch(result.currentPosition, zvtGetFocusCurrentPos, handle);
    fetch(result.nearPosition, zvtGetFocusNearPos, handle, OnlyFieldOfView);
    fetch(result.farPosition, zvtGetFocusFarPos, handle, OnlyFieldOfView);
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
    fetch(result.hsmAvailable, zvtGetHSMAvailable, handle);
    fetch(result.hsmEnabled, zvtGetHSMEnabled, handle);
    fetch(result.flipHorizontally, zvtGetRevertEnabled, handle);
    fetch(result.flipVertically, zvtGetInvertEnabled, handle);
    fetch(result.frameSyncSource, zvtGetFrameSyncSource, handle);
    result.athermalizationAvailable = readOr(false, zvtGetLensAthermalizationEnabledAvailable, handle);
    if (result.athermalizationAvailable)
        fetch(result.athermalizationEnabled, zvtGetLensAthermalizationEnabled, handle);
    return result;
}

void SetupSettingsResult::readGain(const CameraAccess &camera)
{
    constexpr uint32_t nameSize = 100;

    const bool named = readOr(false, zvtGetGainLevelsAreNamed, camera.handle);
    // The number of levels is read again for each, since the controller may get another camera meanwhile.
    for (int level = 0; level < camera.capabilities->numFPAGainLevels(); ++level) {
        QString name;
        if (named)
            name = textOr<nameSize>({}, zvtGetGainLevelName, camera.handle, static_cast<uint8_t>(level));
        gainNames << (name.isEmpty() ? QString::number(level) : name);
    }
    fetch(gainLevel, zvtGetGainLevel, camera.handle);
}

void SetupSettingsResult::readLens(const CameraAccess &camera, const ContinuousMeta &runningMeta)
{
    const uint64_t handle = camera.handle;
    if (camera.capabilities->hasDiscontinuousOpticalZoom()) {
        fetch(discreteFieldOfView, zvtGetFOV, handle);
        Nullable<uint8_t> fov;
        if (fetch(fov, zvtGetFOV, handle))
            discontinuousMeta = DiscontinuousFovPositionMetaRead::start(camera, fov.get(), true);
    }
    if (camera.capabilities->hasContinuousOpticalZoom()) {
        fetch(zoomPosition, zvtGetFOVPos, handle);
        readPair(zoomMinimum, zoomMaximum, zvtGetFOVRange, handle);
        loadPositionMetaForContinuousFov(camera, runningMeta);
    }
    if (camera.capabilities->hasLensCover())
        fetch(lensCover, zvtGetLensCoverState, handle);
    if (camera.capabilities->hasFocus())
        readFocus(camera, runningMeta);
    if (camera.capabilities->hasFocusToDistance()) {
        fetch(distanceMinimum, zvtGetFocusToDistanceMin, handle);
        fetch(distanceMaximum, zvtGetFocusToDistanceMax, handle);
    }
}

void SetupSettingsResult::readFocus(const CameraAccess &camera, const ContinuousMeta &runningMeta)
{
    const uint64_t handle = camera.handle;
    fetch(regionSize, zvtGetAutoFocusROISize, handle);
    fetch(regionPosition, zvtGetAutoFocusROIPosition, handle);
    fetch(regionShownWhenFocusing, zvtGetAutoFocusROIShowWhenFocusing, handle);
    fetch(overlayShowsFocusRegion, zvtGetVideoOverlayShowFocusROI, handle);
    // The limits of a lens without zoom are read as those of a continuous one.
    if (!camera.capabilities->hasContinuousOpticalZoom() && !camera.capabilities->hasDiscontinuousOpticalZoom())
        loadPositionMetaForContinuousFov(camera, runningMeta);
    fetch(focusManualMode, zvtGetFocusManualMode, handle);
}

void SetupSettingsResult::loadPositionMetaForContinuousFov(const CameraAccess &camera,
                                                           const ContinuousMeta &runningMeta)
{
    if (!runningMeta.isRunning())
        continuousMeta = launchRead<ContinuousFovPositionMetaResult>(&ContinuousFovPositionMetaResult::read, camera);
}
