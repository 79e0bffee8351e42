#pragma once

#include "tests/unit/TabRig.h"

#include "advanced/AdvancedMiscSettingsModel.h"

/// Lets each read return a value that differs from those of a new model, and each setter succeed.
inline void scriptMisc(emulator::Gate &gate)
{
    gate.script("zvtGetIntegrateOutPolarity", 1);
    gate.script("zvtGetIRIGLatchSource", 2);
    for (const char *available : {"zvtGetGigEHeaderModeAvailable", "zvtGetCameraLinkHeaderModeAvailable",
                                  "zvtGetCoaXPressHeaderModeAvailable", "zvtGetDeviceTLTypeAvailable"})
        gate.script(available, 1);
    gate.script("zvtGetGigEHeaderMode", 2);
    gate.script("zvtGetCameraLinkHeaderMode", 1);
    gate.script("zvtGetCoaXPressHeaderMode", 1);
    gate.script("zvtGetDeviceTLType", 0);
    for (const char *setter : {"zvtSetIntegrateOutPolarity", "zvtSetIRIGLatchSource", "zvtSetGigEHeaderMode",
                               "zvtSetCameraLinkHeaderMode", "zvtSetCoaXPressHeaderMode"})
        gate.script(setter, true);
}

/// The miscellaneous settings below a root, with helpers for tests. The camera's values are scripted, or those of its
/// devices.
struct Misc : TabRig<AdvancedMiscSettingsModel> {
    explicit Misc(bool scripted = true)
        : TabRig(QStringLiteral("everything"), &ZvtCameraModel::advancedMiscSettingsModel)
    {
        if (scripted)
            scriptMisc(gate());
        start();
    }

    int value(const char *property) const { return model.property(property).toInt(); }
};
