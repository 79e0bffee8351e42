#include "tests/page/NucWizard.h"

void NucWizard::prepare(emulator::Gate &gate, const Setup &setup)
{
    gate.script("zvtGetNUCName", setup.nucName);
    gate.script("controller.GetPresetCalibrationIndex", setup.calibrated ? 0 : -1);
    gate.script("zvtGetNUCType", setup.type);
    gate.script("zvtGetNUCSource", setup.source);
    gate.script("zvtGetNUCNumFrames", 16);
    gate.script("zvtGetNUCFlagSetpointType", 0);
    gate.script("zvtGetNUCFlagSetpointDeltas", QVariantList{2.5, 12.5});
    gate.script("zvtGetNUCFlagSetpointTemps", QVariantList{22.5, 37.5});
    gate.script("zvtGetNUCUseFactoryBadPixels", true);
    gate.script("zvtGetNUCSetup", QVariantList{0.75, 1.5, 1000, 15000, setup.detectBadPixels});
    gate.script("zvtGetTwinklerSetup", QVariantList{true, 32, 200});
    gate.script("zvtGetFlagPresent", setup.flag);
    gate.script("zvtGetFlagTemperatureControlled", setup.controlledFlag);
    gate.script("zvtGetNUCStatus", QVariantList{13, "Starting"});
    gate.script("zvtGetNUCResult", QVariantList{0, "Done"});
    gate.script("zvtGetNUCResults", QVariantList{11, 12, 13, 14, 15, 16, 17, 18, 19, 20});
    gate.script("zvtGetShowBadPixels", false);
    for (const char *command :
         {"zvtSetNUCType", "zvtSetNUCSource", "zvtSetNUCNumFrames", "zvtSetNUCPreset", "zvtSetNUCFlagSetpointType",
          "zvtSetNUCFlagSetpointDeltas", "zvtSetNUCFlagSetpointTemps", "zvtSetNUCUseFactoryBadPixels", "zvtSetNUCSetup",
          "zvtSetTwinklerSetup", "zvtStartNUC", "zvtContinueNUC", "zvtAbortNUC", "zvtAcceptNUC", "zvtDiscardNUC",
          "zvtSetShowBadPixels", "zvtSaveNUCAs"})
        gate.script(command, true);
    gate.failAlways("zvtNUCExists"); // No correction of any name exists.
}
