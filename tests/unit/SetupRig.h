#pragma once

#include "tests/support/SignalLog.h"
#include "tests/support/modelOf.h"

#include "setup/SetupGeneralModel.h"

#include <limits>
#include <thread>

/// A general setup with its presets below a root that has read it, with helpers for tests.
struct Setup {
    explicit Setup(const QString &profile = QStringLiteral("everything"), bool connected = true)
        : rig(profile, connected), root(rig.controller(), nullptr), model(root.setupGeneralModel())
    {
        CameraRig::settle();
    }

    emulator::Gate &gate() { return rig.gate(); }
    size_t mark() { return rig.gate().mark(); }

    /// Reads everything and waits for the end. Returns the calls of the task.
    QStringList refresh()
    {
        const size_t start = mark();
        model->refresh();
        CameraRig::settle();
        return taskCalls(start);
    }

    /// The calls of pool tasks as name and arguments: "GetPresetFrameRate 2", "zvtGetNumPresets".
    QStringList taskCalls(size_t start) { return calls(start, false); }
    QStringList guiCalls(size_t start) { return calls(start, true); }

    QStringList calls(size_t start, bool gui)
    {
        static const QStringList silent{"GetHandle", "IsConnected", "capabilities"};
        QStringList list;
        for (const auto &call : rig.gate().callsSince(start)) {
            QString name = QString::fromStdString(call.name);
            name.remove(QStringLiteral("controller."));
            if ((call.thread == std::this_thread::get_id()) == gui && !silent.contains(name))
                list << (name + u' ' + QString::fromStdString(call.arguments)).trimmed();
        }
        return list;
    }

    CameraRig rig;
    ZvtCameraModel root;
    SetupGeneralModel *model;
};

inline constexpr int presetNumber = 2; ///< The preset under test.
inline const double notANumber = std::numeric_limits<double>::quiet_NaN();

/// A preset of a root that has read it.
struct Preset : Setup {
    explicit Preset(const QString &profile = QStringLiteral("everything"), bool connected = true)
        : Setup(profile, connected), preset(model->ps(presetNumber)), log(preset)
    {
    }

    QStringList read(void (ZvtCameraPresetModel::*operation)())
    {
        const size_t start = mark();
        (preset->*operation)();
        CameraRig::settle();
        return taskCalls(start);
    }

    /// Writes a property. Returns the calls of the GUI thread.
    QStringList write(const char *property, const QVariant &value)
    {
        const size_t start = mark();
        preset->setProperty(property, value);
        return guiCalls(start);
    }

    ZvtCameraPresetModel *preset;
    SignalLog log;
};

inline QStringList presetCalls(const QStringList &names, int preset)
{
    QStringList list;
    for (const QString &name : names)
        list << (name == QLatin1String("GetFactoryCalibrations") ? name
                                                                 : QStringLiteral("%1 %2").arg(name).arg(preset));
    return list;
}

/// The calls of a full read of one preset, in order.
inline QStringList fullReadOf(int preset)
{
    return presetCalls({"GetPresetIntegrationTime", "GetPresetFrameRate", "GetSubframeEnabled", "GetDwellCount",
                        "GetPresetFrameRates", "GetPresetFrameRateIndex", "GetFactoryCalibrations",
                        "GetPresetCalibrationIndex"},
                       preset);
}

/// The calls of a partial read of one preset, in order.
inline QStringList partialReadOf(int preset)
{
    return presetCalls(
        {"GetPresetIntegrationTime", "GetPresetFrameRate", "GetPresetFrameRates", "GetPresetFrameRateIndex"}, preset);
}

/// The calls of the partial reads of all presets, sorted, since these reads run at the same time.
inline QStringList partialReadsOfAll()
{
    QStringList list;
    for (int preset = 0; preset < 4; ++preset)
        list += partialReadOf(preset);
    list.sort();
    return list;
}

inline QStringList sorted(QStringList list)
{
    list.sort();
    return list;
}
