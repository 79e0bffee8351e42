// The SDK's functions of the voltages of the detector's electronics.
#include "zvt/zvtsdk.h"

#include "platform/emulator/devices/NamedVoltages.h"
#include "platform/emulator/memberCalls.h"

using namespace emulator;

int zvtListVoltages(uint64_t handle, hlx::TArray<hlx::CString> *out)
{
    // A camera without named voltages has an empty list.
    const auto body = [&](Camera &camera) {
        if (const auto *const voltages = camera.device<NamedVoltages>())
            for (const std::string &name : voltages->names())
                out->add(hlx::CString(name.c_str()));
    };
    return dispatch(__func__, handle, body, out);
}

int zvtGetVoltage(uint64_t handle, const char *name, float *out)
{
    return call<&NamedVoltages::volts>(__func__, handle, name, out);
}

int zvtSetVoltage(uint64_t handle, const char *name, float value)
{
    return call<&NamedVoltages::setVolts>(__func__, handle, name, value);
}

int zvtGetVoltageDisplayName(uint64_t handle, const char *name, char *buf, uint32_t size)
{
    return call<&NamedVoltages::displayName>(__func__, handle, name, Text(buf, size));
}

int zvtGetVoltageEditable(uint64_t handle, const char *name, uint8_t *out)
{
    const auto body = [&](NamedVoltages &voltages) {
        bool editable = false;
        const Status status = voltages.editable(name, editable);
        if (status == Ok)
            *out = editable ? 1 : 0;
        return status;
    };
    return onDevice<NamedVoltages>(__func__, handle, body, name, out);
}

int zvtGetVoltageLimits(uint64_t handle, const char *name, float *min, float *max)
{
    return call<&NamedVoltages::limits>(__func__, handle, name, min, max);
}
