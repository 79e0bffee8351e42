// The SDK's functions for manufacturing, which emulated cameras do not have.
#include "zvt/zvtsdk.h"

#include "platform/emulator/dispatch.h"

using namespace emulator;

int zvtGetMfgOverrideRoicConfig(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtSetMfgOverrideRoicConfig(uint64_t handle, uint8_t value) { return absent(__func__, handle, value); }

int zvtGetMfgHasExtraLSync(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtSetMfgHasExtraLSync(uint64_t handle, uint8_t value) { return absent(__func__, handle, value); }

int zvtGetMfgLineDeadWidth(uint64_t handle, uint32_t *out) { return absent(__func__, handle, out); }

int zvtSetMfgLineDeadWidth(uint64_t handle, uint32_t value) { return absent(__func__, handle, value); }

int zvtGetMfgPreIntDeadWidth(uint64_t handle, uint32_t *out) { return absent(__func__, handle, out); }

int zvtSetMfgPreIntDeadWidth(uint64_t handle, uint32_t value) { return absent(__func__, handle, value); }

int zvtGetMfgPostIntDeadWidth(uint64_t handle, uint32_t *out) { return absent(__func__, handle, out); }

int zvtSetMfgPostIntDeadWidth(uint64_t handle, uint32_t value) { return absent(__func__, handle, value); }

int zvtGetMfgPreDeadRows(uint64_t handle, uint32_t *out) { return absent(__func__, handle, out); }

int zvtSetMfgPreDeadRows(uint64_t handle, uint32_t value) { return absent(__func__, handle, value); }

int zvtGetMfgPostDeadRows(uint64_t handle, uint32_t *out) { return absent(__func__, handle, out); }

int zvtSetMfgPostDeadRows(uint64_t handle, uint32_t value) { return absent(__func__, handle, value); }

int zvtMfgGetClockPhaseShift(uint64_t handle, uint32_t *out) { return absent(__func__, handle, out); }

int zvtMfgSetClockPhaseShift(uint64_t handle, uint32_t value) { return absent(__func__, handle, value); }

int zvtListVoltages(uint64_t handle, hlx::TArray<hlx::CString> *out) { return absent(__func__, handle, out); }

int zvtGetVoltage(uint64_t handle, const char *name, float *out) { return absent(__func__, handle, name, out); }

int zvtSetVoltage(uint64_t handle, const char *name, float value) { return absent(__func__, handle, name, value); }

int zvtGetVoltageDisplayName(uint64_t handle, const char *name, char *buf, uint32_t size)
{
    return absent(__func__, handle, name, Text(buf, size));
}

int zvtGetVoltageEditable(uint64_t handle, const char *name, uint8_t *out)
{
    return absent(__func__, handle, name, out);
}

int zvtGetVoltageLimits(uint64_t handle, const char *name, float *min, float *max)
{
    return absent(__func__, handle, name, min, max);
}

int zvtMfgFactoryBPLCreate(uint64_t handle, uint32_t presetMask) { return absent(__func__, handle, presetMask); }

int zvtMfgFactoryBPLAppend(uint64_t handle, uint32_t presetMask) { return absent(__func__, handle, presetMask); }

int zvtMfgFactoryBPLApply(uint64_t handle, uint32_t presetMask) { return absent(__func__, handle, presetMask); }
