#pragma once

#include <algorithm>
#include <cstdint>

namespace emulator
{

/// Advances a control loop to `now` and returns its temperature. `conditionsAt` returns its conditions at a time. They
/// are asked for every ten seconds, so that a changing ambient temperature has nearly the same effect however rarely
/// the loop is read.
template <class Loop, class ConditionsAt> double advanceLoop(Loop &loop, int64_t now, ConditionsAt conditionsAt)
{
    constexpr int64_t interval = 10'000;
    for (int64_t time = std::max(loop.time(), now - Loop::memoryMilliseconds) + interval; time < now; time += interval)
        loop.temperature(conditionsAt(time), time);
    return loop.temperature(conditionsAt(now), now);
}

} // namespace emulator
