#pragma once

#include <QtGlobal>

#include <ctime>

/// Processor time of this thread so far, in microseconds. Other programs on the computer do not influence it.
inline qint64 computedMicroseconds()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return qint64{time.tv_sec} * 1'000'000 + time.tv_nsec / 1000;
}
