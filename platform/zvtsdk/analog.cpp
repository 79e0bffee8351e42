// The SDK's functions of detector voltages, colours, gains and image orientation.
#include "zvt/zvtsdk.h"

#include "platform/emulator/devices/Analog.h"
#include "platform/emulator/devices/Color.h"
#include "platform/emulator/devices/DetectorGain.h"
#include "platform/emulator/devices/DigitalGain.h"
#include "platform/emulator/devices/ImageMode.h"
#include "platform/emulator/memberCalls.h"

using namespace emulator;

int zvtGetNumColors(uint64_t handle, uint8_t *count) { return get<&Color::number>(__func__, handle, count); }

int zvtSetColor(uint64_t handle, uint8_t preset, uint8_t color)
{
    return call<&Color::select>(__func__, handle, preset, color);
}

int zvtGetGainLevelsAreNamed(uint64_t handle, bool *named)
{
    return get<&DetectorGain::named>(__func__, handle, named);
}

int zvtGetGainLevel(uint64_t handle, uint8_t *level) { return get<&DetectorGain::level>(__func__, handle, level); }

int zvtSetGainLevel(uint64_t handle, uint8_t level) { return call<&DetectorGain::setLevel>(__func__, handle, level); }

int zvtGetGainLevelName(uint64_t handle, uint8_t level, char *buffer, uint32_t size)
{
    return call<&DetectorGain::name>(__func__, handle, level, Text(buffer, size));
}

int zvtGetGlobalOffsetVoltage(uint64_t handle, float *out) { return get<&Analog::globalOffset>(__func__, handle, out); }

int zvtSetGlobalOffsetVoltage(uint64_t handle, float value)
{
    return call<&Analog::setGlobalOffset>(__func__, handle, value);
}

int zvtGetGlobalOffsetVoltageLimits(uint64_t handle, float *min, float *max)
{
    return get<&Analog::minimumGlobalOffset, &Analog::maximumGlobalOffset>(__func__, handle, min, max);
}

int zvtGetFPABias(uint64_t handle, float *out) { return get<&Analog::bias>(__func__, handle, out); }

int zvtSetFPABias(uint64_t handle, float value) { return call<&Analog::setBias>(__func__, handle, value); }

int zvtSetFPABiasEx(uint64_t handle, uint8_t index, float millivolts)
{
    return call<&Analog::setBiasOf>(__func__, handle, index, millivolts);
}

int zvtGetFPABiasLimits(uint64_t handle, float *min, float *max)
{
    return get<&Analog::minimumBias, &Analog::maximumBias>(__func__, handle, min, max);
}

int zvtGetSkimmingAvailable(uint64_t handle, bool *out)
{
    return get<&Analog::skimmingAvailable>(__func__, handle, out);
}

int zvtGetSkimmingEnabled(uint64_t handle, bool *out) { return call<&Analog::skimmingEnabled>(__func__, handle, out); }

int zvtSetSkimmingEnabled(uint64_t handle, bool value)
{
    return call<&Analog::setSkimmingEnabled>(__func__, handle, value);
}

int zvtGetSkimmingVoltage(uint64_t handle, float *out) { return call<&Analog::skimmingVoltage>(__func__, handle, out); }

int zvtSetSkimmingVoltage(uint64_t handle, float value)
{
    return call<&Analog::setSkimmingVoltage>(__func__, handle, value);
}

int zvtGetSkimmingVoltageLimits(uint64_t handle, float *min, float *max)
{
    return call<&Analog::skimmingLimits>(__func__, handle, min, max);
}

int zvtGetDigitalGain(uint64_t handle, uint8_t preset, float *out)
{
    return call<&DigitalGain::gain>(__func__, handle, preset, out);
}

int zvtSetDigitalGain(uint64_t handle, uint8_t preset, float value)
{
    return call<&DigitalGain::setGain>(__func__, handle, preset, value);
}

int zvtGetDigitalOffset(uint64_t handle, uint8_t preset, float *out)
{
    return call<&DigitalGain::offset>(__func__, handle, preset, out);
}

int zvtSetDigitalOffset(uint64_t handle, uint8_t preset, float value)
{
    return call<&DigitalGain::setOffset>(__func__, handle, preset, value);
}

int zvtGetRevertEnabled(uint64_t handle, bool *enabled) { return get<&ImageMode::reverted>(__func__, handle, enabled); }

int zvtSetRevertEnabled(uint64_t handle, bool enabled)
{
    return call<&ImageMode::setReverted>(__func__, handle, enabled);
}

int zvtGetInvertEnabled(uint64_t handle, bool *enabled) { return get<&ImageMode::inverted>(__func__, handle, enabled); }

int zvtSetInvertEnabled(uint64_t handle, bool enabled)
{
    return call<&ImageMode::setInverted>(__func__, handle, enabled);
}

int zvtGetHSMAvailable(uint64_t handle, bool *available)
{
    return get<&ImageMode::hsmAvailable>(__func__, handle, available);
}

int zvtGetHSMEnabled(uint64_t handle, bool *enabled) { return call<&ImageMode::hsmEnabled>(__func__, handle, enabled); }

int zvtSetHSMEnabled(uint64_t handle, bool enabled)
{
    return call<&ImageMode::setHsmEnabled>(__func__, handle, enabled);
}
