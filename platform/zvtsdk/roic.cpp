// The SDK's functions of the readout circuit: the constants of its timing, and the phase of the detector clock.
#include "zvt/zvtsdk.h"

#include "platform/emulator/devices/Roic.h"
#include "platform/emulator/memberCalls.h"

using namespace emulator;

int zvtGetMfgOverrideRoicConfig(uint64_t handle, uint8_t *out) { return get<&Roic::overridden>(__func__, handle, out); }

int zvtSetMfgOverrideRoicConfig(uint64_t handle, uint8_t value)
{
    return call<&Roic::setOverride>(__func__, handle, value);
}

int zvtGetMfgHasExtraLSync(uint64_t handle, uint8_t *out)
{
    return get<&Roic::hasExtraLineSync>(__func__, handle, out);
}

int zvtSetMfgHasExtraLSync(uint64_t handle, uint8_t value)
{
    return call<&Roic::setHasExtraLineSync>(__func__, handle, value);
}

int zvtGetMfgLineDeadWidth(uint64_t handle, uint32_t *out) { return get<&Roic::lineDeadWidth>(__func__, handle, out); }

int zvtSetMfgLineDeadWidth(uint64_t handle, uint32_t value)
{
    return call<&Roic::setLineDeadWidth>(__func__, handle, value);
}

int zvtGetMfgPreIntDeadWidth(uint64_t handle, uint32_t *out)
{
    return get<&Roic::preIntDeadWidth>(__func__, handle, out);
}

int zvtSetMfgPreIntDeadWidth(uint64_t handle, uint32_t value)
{
    return call<&Roic::setPreIntDeadWidth>(__func__, handle, value);
}

int zvtGetMfgPostIntDeadWidth(uint64_t handle, uint32_t *out)
{
    return get<&Roic::postIntDeadWidth>(__func__, handle, out);
}

int zvtSetMfgPostIntDeadWidth(uint64_t handle, uint32_t value)
{
    return call<&Roic::setPostIntDeadWidth>(__func__, handle, value);
}

int zvtGetMfgPreDeadRows(uint64_t handle, uint32_t *out) { return get<&Roic::preDeadRows>(__func__, handle, out); }

int zvtSetMfgPreDeadRows(uint64_t handle, uint32_t value)
{
    return call<&Roic::setPreDeadRows>(__func__, handle, value);
}

int zvtGetMfgPostDeadRows(uint64_t handle, uint32_t *out) { return get<&Roic::postDeadRows>(__func__, handle, out); }

int zvtSetMfgPostDeadRows(uint64_t handle, uint32_t value)
{
    return call<&Roic::setPostDeadRows>(__func__, handle, value);
}

int zvtMfgGetClockPhaseShift(uint64_t handle, uint32_t *out)
{
    return get<&Roic::clockPhaseShift>(__func__, handle, out);
}

int zvtMfgSetClockPhaseShift(uint64_t handle, uint32_t value)
{
    return call<&Roic::setClockPhaseShift>(__func__, handle, value);
}
