// The SDK's functions of the sensor: its clock, window, presets and saturation.
#include "zvt/zvtsdk.h"

#include "platform/emulator/devices/Saturation.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/memberCalls.h"

using namespace emulator;

int zvtClocksToHertz(uint64_t handle, uint32_t clocks, double *hertz)
{
    return call<&Sensor::clocksToHertz>(__func__, handle, clocks, hertz);
}

int zvtClocksToMilliseconds(uint64_t handle, uint32_t clocks, double *milliseconds)
{
    return call<&Sensor::clocksToMilliseconds>(__func__, handle, clocks, milliseconds);
}

int zvtGetActivePreset(uint64_t handle, uint8_t *preset)
{
    return get<&Sensor::activePreset>(__func__, handle, preset);
}

int zvtGetClockFrequency(uint64_t handle, uint32_t *hz) { return get<&Sensor::clockFrequency>(__func__, handle, hz); }

int zvtGetFrameWidth(uint64_t handle, uint8_t preset, uint32_t *out)
{
    return call<&Sensor::frameWidth>(__func__, handle, preset, out);
}

int zvtGetGigEPreset(uint64_t handle, uint8_t *preset) { return call<&Sensor::gigEPreset>(__func__, handle, preset); }

int zvtGetIntegrationWidth(uint64_t handle, uint8_t preset, uint32_t *out)
{
    return call<&Sensor::integrationWidth>(__func__, handle, preset, out);
}

int zvtGetNumPresets(uint64_t handle, uint8_t *count) { return get<&Sensor::numPresets>(__func__, handle, count); }

int zvtGetPresetSequencingMode(uint64_t handle, uint8_t *mode)
{
    return get<&Sensor::sequencingMode>(__func__, handle, mode);
}

int zvtGetSaturatedFlag(uint64_t handle, uint8_t *saturated)
{
    return call<&Saturation::raised>(__func__, handle, saturated);
}

int zvtGetVideoPreset(uint64_t handle, uint8_t *preset) { return get<&Sensor::videoPreset>(__func__, handle, preset); }

int zvtGetWindow(uint64_t handle, uint8_t preset, uint16_t *x, uint16_t *y, uint16_t *width, uint16_t *height)
{
    const auto body = [&](Sensor &s) -> Status {
        // All presets use the same window.
        if (preset >= s.numPresets())
            return Refused;
        const Sensor::Window &window = s.geometry().window();
        *x = window.x;
        *y = window.y;
        *width = window.width;
        *height = window.height;
        return Ok;
    };
    return onDevice<Sensor>(__func__, handle, body, preset, x, y, width, height);
}

int zvtGetWindowLimits(uint64_t handle, uint16_t *minW, uint16_t *maxW, uint16_t *minH, uint16_t *maxH, uint16_t *incW,
                       uint16_t *incH)
{
    const auto body = [&](Sensor &s) {
        const auto &limits = s.geometry().limits();
        *minW = limits.minimum.width;
        *maxW = limits.maximum.width;
        *minH = limits.minimum.height;
        *maxH = limits.maximum.height;
        *incW = limits.step.width;
        *incH = limits.step.height;
    };
    return onDevice<Sensor>(__func__, handle, body, minW, maxW, minH, maxH, incW, incH);
}

int zvtSetFrameWidth(uint64_t handle, uint8_t preset, uint32_t value)
{
    return call<&Sensor::setFrameWidth>(__func__, handle, preset, value);
}

int zvtSetGigEPreset(uint64_t handle, uint8_t preset) { return call<&Sensor::setGigEPreset>(__func__, handle, preset); }

int zvtSetIntegrationWidth(uint64_t handle, uint8_t preset, uint32_t value)
{
    return call<&Sensor::setIntegrationWidth>(__func__, handle, preset, value);
}
