#pragma once

#include "common/CameraAccess.h"
#include "common/Nullable.h"

#include <QFuture>
#include <QStringList>

#include <chrono>
#include <cstdint>

// The results of the reads of SetupTabModel. Pool threads read them, from values only.

/// The field of view as an argument of the SDK's functions of focus limits.
enum FieldOfView : uint8_t {
    NarrowFieldOfView = 0,
    WideFieldOfView = 1,
    OnlyFieldOfView = 2 ///< A lens without discrete fields of view.
};

/// The focus limits of the present discrete field of view, and of both as stored in the camera. Encoder counts.
struct DiscontinuousFovPositionMetaResult {
    Nullable<uint8_t> focusSlowControl; ///< 0: the slow speed moves by steps of position.
    Nullable<uint32_t> nearPosition;
    Nullable<uint32_t> farPosition;
    Nullable<uint32_t> currentPosition;
    Nullable<uint32_t> narrowNear;
    Nullable<uint32_t> narrowFar;
    Nullable<uint32_t> wideNear;
    Nullable<uint32_t> wideFar;
    Nullable<uint32_t> positionIncrement; ///< One step; read only for a lens that moves by steps.
    Nullable<uint32_t> fullRangeMinimum;
    Nullable<uint32_t> fullRangeMaximum;
    bool loadLensStates = false; ///< Whether to read the lens states after it.

    static DiscontinuousFovPositionMetaResult read(const CameraAccess &camera, uint8_t fov, bool loadLensStates);
};

/// A running read of this kind. Several may run at the same time, started on any thread; the one started last is
/// published.
struct DiscontinuousFovPositionMetaRead {
    QFuture<DiscontinuousFovPositionMetaResult> result;
    std::chrono::steady_clock::time_point startTime;

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

/// The settings of the Setup tab. The read starts the reads of the focus limits as separate tasks and does not wait for
/// them.
struct SetupSettingsResult {
    QStringList gainNames;
    Nullable<uint8_t> gainLevel;
    Nullable<bool> overlayShowsFocusRegion;
    Nullable<bool> regionShownWhenFocusing;
    Nullable<bool> hsmAvailable;
    Nullable<bool> hsmEnabled;
    Nullable<bool> flipHorizontally;
    Nullable<bool> flipVertically;
    Nullable<uint8_t> discreteFieldOfView; ///< Not published: pages ask the model, which asks the camera.
    Nullable<uint8_t> lensCover;
    Nullable<uint8_t> regionPosition;
    Nullable<uint8_t> frameSyncSource;
    Nullable<uint16_t> regionSize; ///< Pixels.
    Nullable<uint32_t> zoomPosition; ///< The commanded position, encoder counts.
    Nullable<float> distanceMinimum; ///< Metres.
    Nullable<float> distanceMaximum; ///< Metres.
    Nullable<uint32_t> zoomMinimum;
    Nullable<uint32_t> zoomMaximum;
    Nullable<bool> focusManualMode;
    bool athermalizationAvailable = false;
    Nullable<bool> athermalizationEnabled;
    Nullable<DiscontinuousFovPositionMetaRead> discontinuousMeta;
    Nullable<QFuture<ContinuousFovPositionMetaResult>> continuousMeta;

    /// `runningMeta` is the last read of the limits of a continuous lens: while it runs, no other one is started.
    static SetupSettingsResult read(const CameraAccess &camera,
                                    const QFuture<ContinuousFovPositionMetaResult> &runningMeta);

private:
    using ContinuousMeta = QFuture<ContinuousFovPositionMetaResult>;

    void readGain(const CameraAccess &camera);
    void readLens(const CameraAccess &camera, const ContinuousMeta &runningMeta);
    void readFocus(const CameraAccess &camera, const ContinuousMeta &runningMeta);
    void loadPositionMetaForContinuousFov(const CameraAccess &camera, const ContinuousMeta &runningMeta);
};
