#pragma once

#include "platform/emulator/Clock.h"

#include <algorithm>
#include <cstdint>

namespace emulator
{

/// Advances a control loop to `now` and returns its temperature. `conditionsAt` returns its conditions at a time. They
/// are taken from the end of each ten seconds of Clock, so the temperature does not depend on how often the loop is
/// read. Advance it to the present time before its other conditions change.
///
/// For a Clock::AsOf, the loop itself stays 20 s before `now`, so that a later call may go back by so much. A loop that
/// is later than `now` shows its newest temperature.
template <class Loop, class ConditionsAt> double advanceLoop(Loop &loop, int64_t now, ConditionsAt conditionsAt)
{
    constexpr int64_t interval = 10'000;
    constexpr int64_t kept = 20'000;
    const auto advance = [&conditionsAt](Loop &advanced, int64_t end) {
        int64_t next = (std::max(advanced.time(), end - Loop::memoryMilliseconds) / interval + 1) * interval;
        for (; next < end; next += interval)
            advanced.temperature(conditionsAt(next), next);
        return advanced.temperature(conditionsAt(next), end);
    };
    if (!Clock::isAsOf())
        return advance(loop, now);
    if (now - kept > loop.time())
        advance(loop, now - kept);
    Loop earlier = loop;
    return advance(earlier, std::max(now, loop.time()));
}

} // namespace emulator
