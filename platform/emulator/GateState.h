#pragma once

#include "platform/emulator/Gate.h"

#include <QVariant>

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <map>
#include <mutex>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace emulator
{

/// The name that means every call.
inline const std::string everyName = "*";

/// The data of a gate, shared with the calls that pass it. Only for Gate.cpp and GatePass.cpp.
struct Gate::State {
    /// The requests of tests, as bits of `requested`. A call without a request of a kind does not lock the mutex for
    /// it.
    enum Request : unsigned { Holds = 1, Delays = 2, Failures = 4, Scripts = 8, Fills = 16 };

    struct Countdown {
        std::string name;
        int remaining;
    };

    /// A held call. It is on the stack of its thread.
    struct Waiter {
        const std::string name;
        bool released = false;
    };

    std::atomic<unsigned> requested{0};

    mutable std::mutex mutex;
    mutable std::condition_variable changed;

    std::deque<Call> log;
    size_t droppedCalls = 0; ///< Calls that were dropped from the front of the log.

    std::set<std::string> held;
    bool everythingHeld = false;
    std::set<std::string> letThrough; ///< Names that were released while every call is held.
    std::vector<Waiter *> waiters;

    std::map<std::string, int> delays;

    std::vector<Countdown> countdowns;
    std::set<std::string> failing;
    double failProbability = 0;
    uint32_t failSeed = 0;
    std::map<std::string, std::mt19937> generators;

    std::map<std::string, QVariant> scripts;
    bool filling = false;

    bool isRequested(Request request) const { return requested & request; }

    // Call these functions with the mutex locked.

    void updateRequested()
    {
        const bool failures = !countdowns.empty() || !failing.empty() || failProbability > 0;
        requested = (held.empty() && !everythingHeld ? 0u : Holds) | (delays.empty() ? 0u : Delays)
            | (failures ? Failures : 0u) | (scripts.empty() ? 0u : Scripts) | (filling ? Fills : 0u);
    }

    bool isHeld(const std::string &name) const
    {
        return held.contains(name) || (everythingHeld && !letThrough.contains(name));
    }

    void releaseWaiters(const std::string &name)
    {
        std::erase_if(waiters, [&](Waiter *waiter) {
            waiter->released = name == everyName || waiter->name == name;
            return waiter->released;
        });
        changed.notify_all();
    }

    /// Counts a call of this name. Returns whether it is one that failNext() requested.
    bool countDown(const std::string &name)
    {
        for (Countdown &countdown : countdowns)
            if (countdown.name == name || countdown.name == everyName)
                --countdown.remaining;
        return std::erase_if(countdowns, [](const Countdown &countdown) { return countdown.remaining <= 0; }) > 0;
    }

    /// Returns whether the next call of this name fails by chance; see Gate::failRandomly().
    bool drawFailure(const std::string &name)
    {
        if (failProbability <= 0)
            return false;
        auto generator = generators.find(name);
        if (generator == generators.end()) {
            std::vector<uint32_t> seeds(name.begin(), name.end());
            seeds.push_back(failSeed);
            std::seed_seq sequence(seeds.begin(), seeds.end());
            generator = generators.emplace(name, sequence).first;
        }
        return generator->second() / 4294967296.0 < failProbability;
    }
};

} // namespace emulator
