#pragma once

#include "tests/support/SignalLog.h"
#include "tests/support/modelOf.h"
#include "tests/unit/threadCalls.h"

#include "correction/CorrectionTabModel.h"
#include "correction/LoadNucOptionsModel.h"

/// Lets each read return a value that differs from those of a new model.
inline void scriptCorrections(emulator::Gate &gate)
{
    gate.script("zvtGetNumPresets", 3);
    gate.script("zvtGetNUCName", "Sky");
    gate.script("controller.GetPresetCalibrationIndex", 0);
    gate.script("zvtGetShowBadPixels", true);
    gate.script("zvtGetAutoNUCSetup", QVariantList{true, true, 2.5, true, 30});
    gate.script("zvtGetDigitalOutputNUCEnabled", true);
    gate.script("zvtGetVideoOutputNUCEnabled", true);
    gate.script("zvtGetBadPixelCorrectionMethod", 2);
}

/// The Correction tab below a root, with helpers for tests. The camera's answers are scripted.
struct Correction {
    explicit Correction(const QString &profile = QStringLiteral("everything"), bool connected = true)
        : rig(profile, connected), root(rig.controller(), nullptr), model(*root.correctionTabModel()),
          options(*root.loadNucOptions()), log(&model)
    {
        scriptCorrections(gate());
        CameraRig::settle(); // The root reads the general setup.
    }

    emulator::Gate &gate() { return rig.gate(); }

    /// See threadCalls().
    QStringList calls(size_t since, bool onGuiThread)
    {
        return threadCalls(gate(), since, onGuiThread ? CallPlace::OnGui : CallPlace::OnPool);
    }
    /// The calls of the task that `action` starts.
    template <class Action> QStringList taskOf(Action action)
    {
        const size_t since = gate().mark();
        action();
        CameraRig::settle();
        return calls(since, false);
    }
    /// The calls that `action` makes itself.
    template <class Action> QStringList guiCallsOf(Action action)
    {
        const size_t since = gate().mark();
        action();
        return calls(since, true);
    }

    /// Reads the model, and returns the signals.
    QStringList refresh()
    {
        log.take();
        model.refresh();
        CameraRig::settle();
        return log.take();
    }

    CameraRig rig;
    ZvtCameraModel root;
    CorrectionTabModel &model;
    LoadNucOptionsModel &options;
    SignalLog log;
};
