#include "standalone/LineFaults.h"

#include "platform/emulator/Gate.h"

const std::string LineFaults::connection = "controller.Connect";

const std::vector<std::string> &LineFaults::changes()
{
    static const std::vector<std::string> names{
        "controller.Load*",
        "controller.Set*",
        "controller.StartStream",
        "controller.StopStream",
        "controller.properties.set",
        "zvtAbortNUC",
        "zvtAcceptNUC",
        "zvtAutoFocus*",
        "zvtContinueNUC",
        "zvtDelete*",
        "zvtDiscardNUC",
        "zvtDoAutoNUC",
        "zvtFOV*",
        "zvtFocus*",
        "zvtLoad*",
        "zvtMfgFactoryBPL*",
        "zvtMfgSet*",
        "zvtRearmTrigger",
        "zvtRename*",
        "zvtSave*",
        "zvtScanFilters",
        "zvtSet*",
        "zvtSoftwareTrigger",
        "zvtSsd*",
        "zvtStartNUC",
        "zvtUnloadNUC",
        "zvtUpload*",
        "zvtVideoOverlay*",
    };
    return names;
}

void LineFaults::applyRefusal(emulator::Gate &gate) const
{
    for (const std::string &name : changes()) {
        if (refusesChanges)
            gate.failAlways(name);
        else
            gate.failNoLonger(name);
    }
}

void LineFaults::applyCable(emulator::Gate &gate) const
{
    if (pulled)
        gate.failAlways(connection);
    else
        gate.failNoLonger(connection);
}

void LineFaults::applyTo(emulator::Gate &gate) const
{
    gate.delay(latency, "*", jitter);
    gate.failNever();
    gate.failRandomly(failRate, seed);
    applyRefusal(gate);
    applyCable(gate);
    gate.release("*");
    if (!held.empty())
        gate.hold(held);
}
