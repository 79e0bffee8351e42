// The SDK's functions of the camera's clocks and hour meter.
#include "zvt/zvtsdk.h"

#include "platform/emulator/devices/CameraClock.h"
#include "platform/emulator/devices/HourMeter.h"
#include "platform/emulator/memberCalls.h"

using namespace emulator;

int zvtGetRealTimeClock(uint64_t handle, uint8_t *year, uint8_t *month, uint8_t *day, uint8_t *hour, uint8_t *minute,
                        uint8_t *second)
{
    const auto body = [&](CameraClock &clock) {
        const auto time = clock.realTime();
        *year = time.year;
        *month = time.month;
        *day = time.day;
        *hour = time.hour;
        *minute = time.minute;
        *second = time.second;
    };
    return onDevice<CameraClock>(__func__, handle, body, year, month, day, hour, minute, second);
}

int zvtSetRealTimeClock(uint64_t handle, uint8_t year, uint8_t month, uint8_t day, uint8_t hour, uint8_t minute,
                        uint8_t second)
{
    const auto body = [&](CameraClock &clock) { return clock.setRealTime({year, month, day, hour, minute, second}); };
    return onDevice<CameraClock>(__func__, handle, body, year, month, day, hour, minute, second);
}

int zvtGetIRIGTime(uint64_t handle, uint16_t *year, uint16_t *day, uint8_t *hour, uint8_t *minute, uint8_t *second,
                   uint16_t *millisecond, uint16_t *microsecond)
{
    const auto body = [&](CameraClock &clock) {
        const auto time = clock.irigTime();
        *year = time.year;
        *day = time.day;
        *hour = time.hour;
        *minute = time.minute;
        *second = time.second;
        *millisecond = time.millisecond;
        *microsecond = time.microsecond;
    };
    return onDevice<CameraClock>(__func__, handle, body, year, day, hour, minute, second, millisecond, microsecond);
}

int zvtSetIRIGTime(uint64_t handle, uint16_t year, uint16_t dayOfYear, uint8_t hour, uint8_t minute, uint8_t second,
                   uint16_t millisecond, uint16_t microsecond)
{
    const auto body = [&](CameraClock &clock) {
        return clock.setIrigTime({year, dayOfYear, hour, minute, second, millisecond, microsecond});
    };
    return onDevice<CameraClock>(__func__, handle, body, year, dayOfYear, hour, minute, second, millisecond,
                                 microsecond);
}

int zvtGetIRIGLocked(uint64_t handle, uint8_t *locked)
{
    return get<&CameraClock::irigLocked>(__func__, handle, locked);
}

int zvtGetOperatingTime(uint64_t handle, uint32_t *minutes)
{
    return get<&HourMeter::minutes>(__func__, handle, minutes);
}
