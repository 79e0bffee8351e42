// The SDK's functions that compute frame periods.
#include "zvt/zvtsdk.h"

#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/dispatch.h"

using namespace emulator;

int zvtCalcMinFrameWidth(uint64_t handle, uint32_t *clocks, uint16_t width, uint16_t height)
{
    return onDevice<Sensor>(
        __func__, handle,
        [&](Sensor &s) {
            return s.minimumFrameWidth({width, height}, 0, false, *clocks);
        },
        clocks, width, height);
}

int zvtCalcMinFrameWidthEx(uint64_t handle, uint32_t *minClocks, uint16_t width, uint16_t height,
                           uint32_t integrationWidth, bool sequencing)
{
    return onDevice<Sensor>(
        __func__, handle,
        [&](Sensor &s) {
            return s.minimumFrameWidth({width, height}, integrationWidth, sequencing, *minClocks);
        },
        minClocks, width, height, integrationWidth, sequencing);
}

int zvtSnapHertz(uint64_t handle, double *snapped, double wanted)
{
    return onDevice<Sensor>(
        __func__, handle, [&](Sensor &s) { return s.snapHertz(wanted, *snapped); }, snapped, wanted);
}
