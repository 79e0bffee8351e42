// The SDK's functions of the calibration flag, which emulated cameras do not have.
#include "zvt/zvtsdk.h"

#include "platform/emulator/dispatch.h"

using namespace emulator;

int zvtGetFlagPresent(uint64_t handle, bool *out) { return absent(__func__, handle, out); }

int zvtGetFlagTemperatureControlled(uint64_t handle, bool *out) { return absent(__func__, handle, out); }

int zvtGetFlagState(uint64_t handle, uint8_t *state) { return absent(__func__, handle, state); }

int zvtSetFlagState(uint64_t handle, uint8_t state) { return absent(__func__, handle, state); }

int zvtGetFlagTemperature(uint64_t handle, float *temperature) { return absent(__func__, handle, temperature); }

int zvtGetFlagDesiredTemperature(uint64_t handle, float *temperature) { return absent(__func__, handle, temperature); }

int zvtSetFlagDesiredTemperature(uint64_t handle, float temperature) { return absent(__func__, handle, temperature); }

int zvtGetFlagCoolerEnabled(uint64_t handle, bool *enabled) { return absent(__func__, handle, enabled); }
