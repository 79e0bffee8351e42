#pragma once

#include "tests/unit/TabRig.h"

#include "video/VideoTabModel.h"

/// The values that are signalled after every read.
inline const QStringList alwaysSignalled{"selectedUpdateRateIndexChanged", "selectedTemporalFilterIndexChanged",
                                         "temporalFilterThresholdChanged"};
/// The formats of the camera of the profile "everything".
inline const QStringList cameraFormats{"NTSC",       "NTSC (Square Pixel)", "PAL",  "PAL (Square Pixel)",
                                       "SVGA",       "720p @ 60Hz",         "SXGA", "1080p @ 30Hz",
                                       "720p @ 50Hz"};

/// Lets each read return a value that differs from those of a new model. The lists are those of the camera.
inline void scriptVideo(emulator::Gate &gate)
{
    gate.script("zvtGetVideoFormat", 1);
    gate.script("zvtGetVideoOverlayEnabled", true);
    gate.script("zvtGetVideoAGCFilterRateEnabled", true);
    gate.script("zvtGetVideoAGCFilterRate", 2.5);
    gate.script("zvtGetVideoAGCDampeningEnabled", true);
    gate.script("zvtGetVideoAGCDampening", 0.25);
    gate.script("zvtGetVideoAGCMethod", 3);
    gate.script("zvtGetVideoAGCPlateauP", 400);
    gate.script("zvtGetVideoBrightness", -15);
    gate.script("zvtGetVideoContrast", 127);
    gate.script("zvtGetVideoAGCManualLow", 1000);
    gate.script("zvtGetVideoAGCManualHigh", 9000);
    gate.script("zvtGetVideoAGCDDESharpness", 3);
    gate.script("zvtGetPalette", "Iron");
    gate.script("zvtGetVideoUpdateRate", 1);
    gate.script("zvtGetVideoTemporalFilter", 2);
    gate.script("zvtGetVideoTemporalFilterThreshold", 77);
}

/// The Video tab below a root, with helpers for tests. The camera's values are scripted.
struct VideoTab : TabRig<VideoTabModel> {
    explicit VideoTab(bool manufacturingMode = false, const QString &profile = QStringLiteral("everything"))
        : TabRig(profile, &ZvtCameraModel::videoTabModel)
    {
        scriptVideo(gate());
        root.setManufacturingMode(manufacturingMode);
        start();
    }
};
