// The SDK's functions of the calibration flag.
#include "zvt/zvtsdk.h"

#include "platform/emulator/devices/Flag.h"
#include "platform/emulator/memberCalls.h"

using namespace emulator;

int zvtGetFlagPresent(uint64_t handle, bool *out)
{
    return dispatch(
        __func__, handle, [&](Camera &camera) { *out = camera.device<Flag>() != nullptr; }, out);
}

int zvtGetFlagTemperatureControlled(uint64_t handle, bool *out)
{
    return get<&Flag::temperatureControlled>(__func__, handle, out);
}

int zvtGetFlagState(uint64_t handle, uint8_t *state) { return get<&Flag::state>(__func__, handle, state); }

int zvtSetFlagState(uint64_t handle, uint8_t state) { return call<&Flag::setState>(__func__, handle, state); }

int zvtGetFlagTemperature(uint64_t handle, float *temperature)
{
    return get<&Flag::temperature>(__func__, handle, temperature);
}

int zvtGetFlagDesiredTemperature(uint64_t handle, float *temperature)
{
    return call<&Flag::desiredTemperature>(__func__, handle, temperature);
}

int zvtSetFlagDesiredTemperature(uint64_t handle, float temperature)
{
    return call<&Flag::setDesiredTemperature>(__func__, handle, temperature);
}

int zvtGetFlagCoolerEnabled(uint64_t handle, bool *enabled)
{
    return call<&Flag::coolerEnabled>(__func__, handle, enabled);
}
