#pragma once

#include "tests/support/SignalLog.h"
#include "tests/support/modelOf.h"
#include "tests/unit/threadCalls.h"

#include "setup/SyncSettingsModel.h"

/// The synchronisation settings below a root, with helpers for tests.
struct Sync : CallPlace {
    explicit Sync(const QString &profile = QStringLiteral("everything"), bool connected = true)
        : rig(profile, connected), root(rig.controller(), nullptr), model(root.syncSettings()), log(model)
    {
        CameraRig::settle(); // The root reads the general setup.
    }

    emulator::Gate &gate() { return rig.gate(); }

    /// See threadCalls().
    QStringList calls(size_t since, Where where) { return threadCalls(gate(), since, where); }
    template <class Action> QStringList callsOf(Action action, Where where = OnGui)
    {
        const size_t since = gate().mark();
        action();
        CameraRig::settle();
        return calls(since, where);
    }

    /// Reads the model. Returns the signals.
    QStringList refresh()
    {
        log.take();
        model->refresh();
        CameraRig::settle();
        return log.take();
    }

    QStringList write(const char *property, const QVariant &value)
    {
        return callsOf([&] { model->setProperty(property, value); });
    }

    void setSequencing(uint32_t mode) { rig.controller()->SetPresetSequencingMode(mode); }
    int sequencing()
    {
        int mode = -1;
        rig.controller()->GetPresetSequencingMode(&mode);
        return mode;
    }

    CameraRig rig;
    ZvtCameraModel root;
    SyncSettingsModel *model;
    SignalLog log;
};

/// The signals of every value, in the order in which a read publishes them.
inline const QStringList publishedSignals{"syncModeChanged",
                                          "syncSourceChanged",
                                          "triggerModeChanged",
                                          "triggerSourceChanged",
                                          "triggerRateChanged",
                                          "sequenceCountChanged",
                                          "syncInDelayChanged",
                                          "triggerInDelayChanged",
                                          "syncOutDelayPS0Changed",
                                          "syncOutDelayPS1Changed",
                                          "syncOutDelayPS2Changed",
                                          "syncOutDelayPS3Changed",
                                          "syncOutPolarityChanged",
                                          "syncOutSourceChanged",
                                          "syncInPolarityChanged",
                                          "triggerInPolarityChanged",
                                          "triggerTimeDayChanged",
                                          "triggerTimeHourChanged",
                                          "triggerTimeMinuteChanged",
                                          "triggerTimeSecondChanged",
                                          "triggerTimeMillisecondChanged",
                                          "triggerTimeMicrosecondChanged"};

/// Lets each read return a value that differs from those of a new model.
inline void scriptValues(emulator::Gate &gate)
{
    gate.script("zvtGetFrameSyncMode", 1);
    gate.script("zvtGetFrameSyncSource", 2);
    gate.script("zvtGetTriggerMode", 2);
    gate.script("zvtGetTriggerSource", 3);
    gate.script("zvtGetInternalTriggerRate", 12.5);
    gate.script("zvtGetSequenceCount", 7);
    gate.script("zvtGetFrameSyncDelay", 1.5);
    gate.script("zvtGetTriggerDelay", 2.5);
    gate.script("zvtGetSyncOutDelay", 3.5);
    gate.script("zvtGetSyncOutPolarity", 1);
    gate.script("zvtGetSyncOutSource", 2);
    gate.script("zvtGetFrameSyncPolarity", 1);
    gate.script("zvtGetTriggerPolarity", 0);
    gate.script("zvtGetIRIGTriggerTime", QVariantList{366, 23, 59, 58, 999, 998});
    gate.script("zvtGetTriLevelSyncSourceAvailable", true);
}
