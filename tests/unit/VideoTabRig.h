#pragma once

#include "tests/support/SignalLog.h"
#include "tests/support/modelOf.h"

#include "video/VideoTabModel.h"

#include <thread>

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
struct VideoTab {
    explicit VideoTab(bool manufacturingMode = false, const QString &profile = QStringLiteral("everything"))
        : rig(profile), root(rig.controller(), nullptr), model(*root.videoTabModel())
    {
        scriptVideo(gate());
        root.setManufacturingMode(manufacturingMode);
        CameraRig::settle(); // The root reads the general setup.
        log.watch(&model);
    }

    emulator::Gate &gate() { return rig.gate(); }

    /// The calls since a mark with their arguments, as "zvtSetVideoContrast 5".
    QStringList calls(size_t since, bool onGuiThread)
    {
        QStringList list;
        for (const auto &call : gate().callsSince(since)) {
            const QString name = QString::fromStdString(call.name);
            if (name.startsWith("zvt") && (call.thread == std::this_thread::get_id()) == onGuiThread)
                list << (name + u' ' + QString::fromStdString(call.arguments)).trimmed();
        }
        return list;
    }

    /// Reads the model. Returns the calls of the task.
    QStringList read()
    {
        const size_t since = gate().mark();
        model.refresh();
        CameraRig::settle();
        return calls(since, false);
    }

    /// Reads the model. Returns the signals between those of the flags.
    QStringList refresh()
    {
        log.take();
        read();
        const QStringList all = log.take();
        return all.size() < 4 ? all : all.mid(2, all.size() - 4);
    }

    /// Writes a property. Returns the calls.
    QStringList write(const char *property, const QVariant &value)
    {
        const size_t since = gate().mark();
        model.setProperty(property, value);
        return calls(since, true);
    }

    CameraRig rig;
    ZvtCameraModel root;
    VideoTabModel &model;
    SignalLog log;
};
