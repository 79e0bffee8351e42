#pragma once

#include "platform/emulator/Gate.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <string>

/// The time of the slowest function among the calls since `mark`. The time of a function is that of its quickest call,
/// so that other work on the computer does not count.
inline std::chrono::nanoseconds slowestFunction(const emulator::Gate &gate, size_t mark)
{
    std::map<std::string, std::chrono::nanoseconds> times;
    for (const auto &call : gate.callsSince(mark)) {
        const auto [entry, isNew] = times.try_emplace(call.name, call.duration);
        entry->second = std::min(entry->second, call.duration);
    }
    auto slowest = std::chrono::nanoseconds::zero();
    for (const auto &[name, time] : times)
        slowest = std::max(slowest, time);
    return slowest;
}
