// The SDK's functions of the sensor: its clock, window, presets and saturation.
#include "zvt/zvtsdk.h"

#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/dispatch.h"

using emulator::onDevice;
using emulator::Sensor;
using emulator::Status;

int zvtClocksToHertz(uint64_t handle, uint32_t clocks, double *hertz)
{
    return onDevice<Sensor>(
        __func__, handle, [&](Sensor &s) { return s.clocksToHertz(clocks, *hertz); }, clocks, hertz);
}

int zvtClocksToMilliseconds(uint64_t handle, uint32_t clocks, double *milliseconds)
{
    return onDevice<Sensor>(
        __func__, handle, [&](Sensor &s) { return s.clocksToMilliseconds(clocks, *milliseconds); }, clocks,
        milliseconds);
}

int zvtGetActivePreset(uint64_t handle, uint8_t *preset)
{
    return onDevice<Sensor>(
        __func__, handle, [&](Sensor &s) { *preset = static_cast<uint8_t>(s.activePreset()); }, preset);
}

int zvtGetClockFrequency(uint64_t handle, uint32_t *hz)
{
    return onDevice<Sensor>(
        __func__, handle, [&](Sensor &s) { *hz = s.clockFrequency(); }, hz);
}

int zvtGetFrameWidth(uint64_t handle, uint8_t preset, uint32_t *out)
{
    return onDevice<Sensor>(
        __func__, handle, [&](Sensor &s) { return s.frameWidth(preset, *out); }, preset, out);
}

int zvtGetGigEPreset(uint64_t handle, uint8_t *preset)
{
    return onDevice<Sensor>(
        __func__, handle, [&](Sensor &s) { return s.gigEPreset(*preset); }, preset);
}

int zvtGetIntegrationWidth(uint64_t handle, uint8_t preset, uint32_t *out)
{
    return onDevice<Sensor>(
        __func__, handle, [&](Sensor &s) { return s.integrationWidth(preset, *out); }, preset, out);
}

int zvtGetNumPresets(uint64_t handle, uint8_t *count)
{
    return onDevice<Sensor>(
        __func__, handle, [&](Sensor &s) { *count = static_cast<uint8_t>(s.numPresets()); }, count);
}

int zvtGetPresetSequencingMode(uint64_t handle, uint8_t *mode)
{
    return onDevice<Sensor>(
        __func__, handle, [&](Sensor &s) { *mode = static_cast<uint8_t>(s.sequencingMode()); }, mode);
}

int zvtGetSaturatedFlag(uint64_t handle, uint8_t *saturated)
{
    return onDevice<Sensor>(
        __func__, handle, [&](Sensor &s) { *saturated = s.saturated(); }, saturated);
}

int zvtGetVideoPreset(uint64_t handle, uint8_t *preset)
{
    return onDevice<Sensor>(
        __func__, handle, [&](Sensor &s) { *preset = static_cast<uint8_t>(s.videoPreset()); }, preset);
}

int zvtGetWindow(uint64_t handle, uint8_t preset, uint16_t *x, uint16_t *y, uint16_t *width, uint16_t *height)
{
    const auto body = [&](Sensor &s) -> Status {
        // All presets look through the one window of the sensor.
        if (preset >= s.numPresets())
            return emulator::Refused;
        const Sensor::Window &window = s.geometry().window();
        *x = window.x;
        *y = window.y;
        *width = window.width;
        *height = window.height;
        return emulator::Ok;
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
    return onDevice<Sensor>(
        __func__, handle, [&](Sensor &s) { return s.setFrameWidth(preset, value); }, preset, value);
}

int zvtSetGigEPreset(uint64_t handle, uint8_t preset)
{
    return onDevice<Sensor>(
        __func__, handle, [&](Sensor &s) { return s.setGigEPreset(preset); }, preset);
}

int zvtSetIntegrationWidth(uint64_t handle, uint8_t preset, uint32_t value)
{
    return onDevice<Sensor>(
        __func__, handle, [&](Sensor &s) { return s.setIntegrationWidth(preset, value); }, preset, value);
}
