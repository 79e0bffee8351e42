#pragma once

#include "platform/emulator/Gate.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <random>
#include <set>

namespace emulator
{

/// The name that means every call.
inline const std::string everyName = "*";

/// The contents of a gate, shared with the calls on their way through it. Only for Gate.cpp and GatePass.cpp.
struct Gate::State {
    /// What a test asked for, as bits of `asked`: a call that finds none of them takes no second look.
    enum Asked : unsigned { Holds = 1, Delays = 2, Failures = 4, Scripts = 8, Fills = 16 };

    struct Countdown {
        std::string name;
        int remaining;
    };

    /// A call at the latch. It lives on the stack of its thread.
    struct Waiter {
        const std::string name;
        bool released = false;
    };

    std::atomic<unsigned> asked{0};

    mutable std::mutex mutex;
    mutable std::condition_variable changed;

    std::deque<Call> log;
    size_t forgotten = 0; ///< Calls that were dropped from the front of the log.

    std::set<std::string> held;
    bool everythingHeld = false;
    std::set<std::string> letThrough; ///< Released while everything is held.
    std::vector<Waiter *> waiters;

    std::map<std::string, int> delays;

    std::vector<Countdown> countdowns;
    std::set<std::string> failing;
    double failProbability = 0;
    uint32_t failSeed = 0;
    std::map<std::string, std::mt19937> generators;

    std::map<std::string, QVariant> scripts;
    bool filling = false;

    bool isAsked(Asked what) const { return asked & what; }

    // The rest is called with the mutex held.

    void updateAsked()
    {
        const bool failures = !countdowns.empty() || !failing.empty() || failProbability > 0;
        asked = (held.empty() && !everythingHeld ? 0u : Holds) | (delays.empty() ? 0u : Delays)
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

    bool countDown(const std::string &name)
    {
        for (Countdown &countdown : countdowns)
            if (countdown.name == name || countdown.name == everyName)
                --countdown.remaining;
        return std::erase_if(countdowns, [](const Countdown &countdown) { return countdown.remaining <= 0; }) > 0;
    }

    /// Each name draws from a sequence of its own, so that the n-th call of a name fares the same in every run,
    /// whatever other threads call meanwhile.
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
