// The SDK's functions of frame sync and trigger. Emulated cameras have only the source of the frame sync.
#include "zvt/zvtsdk.h"

#include "platform/emulator/devices/FrameSync.h"
#include "platform/emulator/memberCalls.h"

using namespace emulator;

// Frame synchronisation.

int zvtGetFrameSyncSource(uint64_t handle, uint8_t *source)
{
    return get<&FrameSync::source>(__func__, handle, source);
}

int zvtSetFrameSyncSource(uint64_t handle, uint8_t source)
{
    return call<&FrameSync::setSource>(__func__, handle, source);
}

int zvtGetFrameSyncMode(uint64_t handle, uint8_t *mode) { return absent(__func__, handle, mode); }

int zvtSetFrameSyncMode(uint64_t handle, uint8_t mode) { return absent(__func__, handle, mode); }

int zvtGetFrameSyncDelay(uint64_t handle, float *microseconds) { return absent(__func__, handle, microseconds); }

int zvtSetFrameSyncDelay(uint64_t handle, float microseconds) { return absent(__func__, handle, microseconds); }

int zvtGetFrameSyncPolarity(uint64_t handle, uint8_t *polarity) { return absent(__func__, handle, polarity); }

int zvtSetFrameSyncPolarity(uint64_t handle, uint8_t polarity) { return absent(__func__, handle, polarity); }

int zvtGetTriLevelSyncSourceAvailable(uint64_t handle, bool *available)
{
    return get<&FrameSync::hasTriLevel>(__func__, handle, available);
}

int zvtGetSyncOutSource(uint64_t handle, uint8_t *source) { return absent(__func__, handle, source); }

int zvtSetSyncOutSource(uint64_t handle, uint8_t source) { return absent(__func__, handle, source); }

int zvtGetSyncOutDelay(uint64_t handle, uint8_t preset, float *microseconds)
{
    return absent(__func__, handle, preset, microseconds);
}

int zvtSetSyncOutDelay(uint64_t handle, uint8_t preset, float microseconds)
{
    return absent(__func__, handle, preset, microseconds);
}

int zvtGetSyncOutPolarity(uint64_t handle, uint8_t *polarity) { return absent(__func__, handle, polarity); }

int zvtSetSyncOutPolarity(uint64_t handle, uint8_t polarity) { return absent(__func__, handle, polarity); }

int zvtGetIntegrateOutPolarity(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtSetIntegrateOutPolarity(uint64_t handle, uint8_t value) { return absent(__func__, handle, value); }

int zvtGetIRIGLatchSource(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtSetIRIGLatchSource(uint64_t handle, uint8_t value) { return absent(__func__, handle, value); }

// Trigger.

int zvtGetTriggerMode(uint64_t handle, uint8_t *mode) { return absent(__func__, handle, mode); }

int zvtSetTriggerMode(uint64_t handle, uint8_t mode) { return absent(__func__, handle, mode); }

int zvtGetTriggerSource(uint64_t handle, uint8_t *source) { return absent(__func__, handle, source); }

int zvtSetTriggerSource(uint64_t handle, uint8_t source) { return absent(__func__, handle, source); }

int zvtGetTriggerDelay(uint64_t handle, float *microseconds) { return absent(__func__, handle, microseconds); }

int zvtSetTriggerDelay(uint64_t handle, float microseconds) { return absent(__func__, handle, microseconds); }

int zvtGetTriggerPolarity(uint64_t handle, uint8_t *polarity) { return absent(__func__, handle, polarity); }

int zvtSetTriggerPolarity(uint64_t handle, uint8_t polarity) { return absent(__func__, handle, polarity); }

int zvtGetInternalTriggerRate(uint64_t handle, double *hertz) { return absent(__func__, handle, hertz); }

int zvtSetInternalTriggerRate(uint64_t handle, double hertz) { return absent(__func__, handle, hertz); }

int zvtGetIRIGTriggerTime(uint64_t handle, uint16_t *day, uint8_t *hour, uint8_t *minute, uint8_t *second,
                          uint16_t *millisecond, uint16_t *microsecond)
{
    return absent(__func__, handle, day, hour, minute, second, millisecond, microsecond);
}

int zvtSetIRIGTriggerTime(uint64_t handle, uint16_t day, uint8_t hour, uint8_t minute, uint8_t second,
                          uint16_t millisecond, uint16_t microsecond)
{
    return absent(__func__, handle, day, hour, minute, second, millisecond, microsecond);
}

int zvtGetSequenceCount(uint64_t handle, uint32_t *count) { return absent(__func__, handle, count); }

int zvtSetSequenceCount(uint64_t handle, uint32_t count) { return absent(__func__, handle, count); }

int zvtSoftwareTrigger(uint64_t handle) { return absent(__func__, handle); }

int zvtRearmTrigger(uint64_t handle) { return absent(__func__, handle); }
