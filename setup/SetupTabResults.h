#pragma once

#include "common/CameraAccess.h"
#include "common/Nullable.h"

#include <QFuture>
#include <QStringList>

#include <chrono>
#include <cstdint>

// What the tasks of SetupTabModel read. All of it is read on pool threads, from values only.

/// A field of view, as the focus limits want it.
enum FieldOfView : uint8_t {
    NarrowFieldOfView = 0,
    WideFieldOfView = 1,
    OnlyFieldOfView = 2 ///< Of a lens without discrete fields of view.
};

/// The focus limits of one discrete field of view, and of both as they are stored in the camera. Encoder counts.
struct DiscontinuousFovPositionMetaResult {
    Nullable<uint8_t> focusSlowControl; ///< 0: the slow speed goes by steps of position.
    Nullable<uint32_t> nearPosition;
    Nullable<uint32_t> farPosition;
    Nullable<uint32_t> currentPosition;
    Nullable<uint32_t> narrowNear;
    Nullable<uint32_t> narrowFar;
    Nullable<uint32_t> wideNear;
    Nullable<uint32_t> wideFar;
    Nullable<uint32_t> positionIncrement; ///< Asked only for a lens that goes by steps.
    Nullable<uint32_t> fullRangeMinimum;
    Nullable<uint32_t> fullRangeMaximum;
    bool loadLensStates = false; ///< Copied from the request.

    static DiscontinuousFovPositionMetaResult read(const CameraAccess &camera, uint8_t fov, bool loadLensStates);
};

/// One such read on its way. Several may run at once, started on any thread; the one that was started last is the one
/// that counts.
struct DiscontinuousFovPositionMetaRead {
    QFuture<DiscontinuousFovPositionMetaResult> result;
    std::chrono::steady_clock::time_point since;

    static DiscontinuousFovPositionMetaRead start(const CameraAccess &camera, uint8_t fov, bool loadLensStates);
};

/// The focus limits of a lens without discrete fields of view. Encoder counts.
struct ContinuousFovPositionMetaResult {
    Nullable<uint32_t> fullRangeMinimum;
    Nullable<uint32_t> fullRangeMaximum;
    Nullable<uint32_t> nearPosition;
    Nullable<uint32_t> farPosition;
    Nullable<uint32_t> currentPosition;

    static ContinuousFovPositionMetaResult read(const CameraAccess &camera);
};

/// The settings of the Setup tab. Focus limits are not among them: their reads are started on the way and run beside.
struct SetupSettingsResult {
    QStringList gainNames;
    Nullable<uint8_t> gainLevel;
    Nullable<bool> overlayShowsFocusRegion;
    Nullable<bool> regionShownWhenFocusing;
    Nullable<bool> hsmAvailable;
    Nullable<bool> hsmEnabled;
    Nullable<bool> flipHorizontally;
    Nullable<bool> flipVertically;
    Nullable<uint8_t> discreteFieldOfView; ///< On no page: each of them asks the camera itself.
    Nullable<uint8_t> lensCover;
    Nullable<uint8_t> regionPosition;
    Nullable<uint8_t> frameSyncSource;
    Nullable<uint16_t> regionSize; ///< Pixels.
    Nullable<uint32_t> zoomPosition; ///< As commanded.
    Nullable<float> distanceMinimum; ///< Metres.
    Nullable<float> distanceMaximum; ///< Metres.
    Nullable<uint32_t> zoomMinimum;
    Nullable<uint32_t> zoomMaximum;
    Nullable<bool> focusManualMode;
    bool athermalizationAvailable = false;
    Nullable<bool> athermalizationEnabled;
    Nullable<DiscontinuousFovPositionMetaRead> discontinuousMeta;
    Nullable<QFuture<ContinuousFovPositionMetaResult>> continuousMeta;

    /// `runningMeta` is the last read of a continuous lens: while it runs, no other one is started.
    static SetupSettingsResult read(const CameraAccess &camera,
                                    const QFuture<ContinuousFovPositionMetaResult> &runningMeta);

private:
    using ContinuousMeta = QFuture<ContinuousFovPositionMetaResult>;

    void readGain(const CameraAccess &camera);
    void readLens(const CameraAccess &camera, const ContinuousMeta &runningMeta);
    void readFocus(const CameraAccess &camera, const ContinuousMeta &runningMeta);
    void loadPositionMetaForContinuousFov(const CameraAccess &camera, const ContinuousMeta &runningMeta);
};
