// The SDK's functions of frame sync and trigger.
#include "zvt/zvtsdk.h"

#include "platform/emulator/devices/FrameSync.h"
#include "platform/emulator/devices/SyncOut.h"
#include "platform/emulator/devices/Trigger.h"
#include "platform/emulator/devices/VideoOutput.h"
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

int zvtGetFrameSyncMode(uint64_t handle, uint8_t *mode) { return get<&FrameSync::mode>(__func__, handle, mode); }

int zvtSetFrameSyncMode(uint64_t handle, uint8_t mode) { return call<&FrameSync::setMode>(__func__, handle, mode); }

int zvtGetFrameSyncDelay(uint64_t handle, float *microseconds)
{
    return get<&FrameSync::delay>(__func__, handle, microseconds);
}

int zvtSetFrameSyncDelay(uint64_t handle, float microseconds)
{
    return call<&FrameSync::setDelay>(__func__, handle, microseconds);
}

int zvtGetFrameSyncPolarity(uint64_t handle, uint8_t *polarity)
{
    return get<&FrameSync::polarity>(__func__, handle, polarity);
}

int zvtSetFrameSyncPolarity(uint64_t handle, uint8_t polarity)
{
    return call<&FrameSync::setPolarity>(__func__, handle, polarity);
}

int zvtGetTriLevelSyncSourceAvailable(uint64_t handle, bool *available)
{
    return get<&FrameSync::hasTriLevel>(__func__, handle, available);
}

int zvtGetSyncOutSource(uint64_t handle, uint8_t *source) { return get<&SyncOut::source>(__func__, handle, source); }

int zvtSetSyncOutSource(uint64_t handle, uint8_t source) { return call<&SyncOut::setSource>(__func__, handle, source); }

int zvtGetSyncOutDelay(uint64_t handle, uint8_t preset, float *microseconds)
{
    return call<&SyncOut::delay>(__func__, handle, preset, microseconds);
}

int zvtSetSyncOutDelay(uint64_t handle, uint8_t preset, float microseconds)
{
    return call<&SyncOut::setDelay>(__func__, handle, preset, microseconds);
}

int zvtGetSyncOutPolarity(uint64_t handle, uint8_t *polarity)
{
    return get<&SyncOut::polarity>(__func__, handle, polarity);
}

int zvtSetSyncOutPolarity(uint64_t handle, uint8_t polarity)
{
    return call<&SyncOut::setPolarity>(__func__, handle, polarity);
}

int zvtGetIntegrateOutPolarity(uint64_t handle, uint8_t *out)
{
    return get<&VideoOutput::integratePolarity>(__func__, handle, out);
}

int zvtSetIntegrateOutPolarity(uint64_t handle, uint8_t value)
{
    return call<&VideoOutput::setIntegratePolarity>(__func__, handle, value);
}

int zvtGetIRIGLatchSource(uint64_t handle, uint8_t *out) { return get<&VideoOutput::irigLatch>(__func__, handle, out); }

int zvtSetIRIGLatchSource(uint64_t handle, uint8_t value)
{
    return call<&VideoOutput::setIrigLatch>(__func__, handle, value);
}

// Trigger.

int zvtGetTriggerMode(uint64_t handle, uint8_t *mode) { return get<&Trigger::mode>(__func__, handle, mode); }

int zvtSetTriggerMode(uint64_t handle, uint8_t mode) { return call<&Trigger::setMode>(__func__, handle, mode); }

int zvtGetTriggerSource(uint64_t handle, uint8_t *source) { return get<&Trigger::source>(__func__, handle, source); }

int zvtSetTriggerSource(uint64_t handle, uint8_t source) { return call<&Trigger::setSource>(__func__, handle, source); }

int zvtGetTriggerDelay(uint64_t handle, float *microseconds)
{
    return get<&Trigger::delay>(__func__, handle, microseconds);
}

int zvtSetTriggerDelay(uint64_t handle, float microseconds)
{
    return call<&Trigger::setDelay>(__func__, handle, microseconds);
}

int zvtGetTriggerPolarity(uint64_t handle, uint8_t *polarity)
{
    return get<&Trigger::polarity>(__func__, handle, polarity);
}

int zvtSetTriggerPolarity(uint64_t handle, uint8_t polarity)
{
    return call<&Trigger::setPolarity>(__func__, handle, polarity);
}

int zvtGetInternalTriggerRate(uint64_t handle, double *hertz)
{
    return get<&Trigger::internalRate>(__func__, handle, hertz);
}

int zvtSetInternalTriggerRate(uint64_t handle, double hertz)
{
    return call<&Trigger::setInternalRate>(__func__, handle, hertz);
}

int zvtGetIRIGTriggerTime(uint64_t handle, uint16_t *day, uint8_t *hour, uint8_t *minute, uint8_t *second,
                          uint16_t *millisecond, uint16_t *microsecond)
{
    return onDevice<Trigger>(
        __func__, handle,
        [&](Trigger &trigger) {
            const CameraClock::IrigTime time = trigger.time();
            *day = time.day;
            *hour = time.hour;
            *minute = time.minute;
            *second = time.second;
            *millisecond = time.millisecond;
            *microsecond = time.microsecond;
        },
        day, hour, minute, second, millisecond, microsecond);
}

int zvtSetIRIGTriggerTime(uint64_t handle, uint16_t day, uint8_t hour, uint8_t minute, uint8_t second,
                          uint16_t millisecond, uint16_t microsecond)
{
    return onDevice<Trigger>(
        __func__, handle,
        [&](Trigger &trigger) {
            return trigger.setTime({0, day, hour, minute, second, millisecond, microsecond});
        },
        day, hour, minute, second, millisecond, microsecond);
}

int zvtGetSequenceCount(uint64_t handle, uint32_t *count)
{
    return get<&Trigger::sequenceCount>(__func__, handle, count);
}

int zvtSetSequenceCount(uint64_t handle, uint32_t count)
{
    return call<&Trigger::setSequenceCount>(__func__, handle, count);
}

int zvtSoftwareTrigger(uint64_t handle) { return call<&Trigger::softwareTrigger>(__func__, handle); }

int zvtRearmTrigger(uint64_t handle)
{
    return onDevice<Trigger>(__func__, handle, [](Trigger &trigger) { trigger.rearm(); });
}
