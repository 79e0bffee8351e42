#pragma once

#include "platform/emulator/Gate.h"

#include <QVariant>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
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

/// Returns whether `name` is one of those that `pattern` means: the same name, or one with the beginning before its
/// "*". `name` may be a pattern too: then the result is whether `pattern` means all names that `name` means.
inline bool matches(const std::string &pattern, const std::string &name)
{
    if (!pattern.ends_with('*'))
        return name == pattern;
    return name.compare(0, pattern.size() - 1, pattern, 0, pattern.size() - 1) == 0;
}

/// The requests for delays. Each name of a call has its own sequence of random numbers, the same one in every run.
class GateDelays
{
public:
    struct Delay {
        int milliseconds;
        int jitter; ///< The delay is longer by 0 to so many milliseconds.
    };

    /// In place of the former delay of this name, which two zeros end.
    void set(const std::string &name, Delay delay);
    void clear() { m_delays.clear(); }
    const std::map<std::string, Delay> &all() const { return m_delays; }
    /// Returns how long the next call of this name is delayed.
    std::chrono::milliseconds draw(const std::string &name, AnsweredBy answeredBy);

private:
    std::map<std::string, Delay> m_delays;
    std::map<std::string, std::mt19937> m_generators;
};

/// The data of a gate, shared with the calls that pass it. Only for Gate.cpp, GatePass.cpp and GateState.cpp.
struct Gate::State {
    /// The requests of tests and what follows the calls, as bits of `requested`. A call without a request of a kind
    /// does not lock the mutex for it.
    enum Request : unsigned {
        Holds = 1,
        Delays = 2,
        Failures = 4,
        Scripts = 8,
        Fills = 16,
        Listeners = 32,
        Results = 64,
        Answers = 128
    };

    /// A hold() (`holds` is true) or a release().
    struct HoldRule {
        std::string name;
        bool holds;
    };

    struct Listener {
        std::function<void(const CallEvent &)> call;
        bool withResults;
    };

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

    std::vector<HoldRule> holdRules; ///< The oldest first. The newest one that matches a call decides.
    std::vector<Waiter *> waiters;

    GateDelays delays;

    std::vector<Countdown> countdowns;
    std::set<std::string> failing;
    double failProbability = 0;
    uint32_t failSeed = 0;
    std::map<std::string, std::mt19937> generators;

    std::map<std::string, QVariant> scripts;
    bool filling = false;

    emulator::Answers answers;

    /// Held while listeners run. Locked before the mutex.
    std::recursive_mutex listenerMutex;
    std::map<int, Listener> listeners;
    int lastListener = 0;

    bool isRequested(unsigned requests) const { return requested & requests; }

    // Call these functions with the mutex locked.

    void updateRequested();

    bool isHeld(const std::string &name) const;
    /// Adds a rule in place of those that it makes void.
    void addHoldRule(const HoldRule &added);
    void releaseWaiters(const std::string &name);
    /// Returns how many calls of this name are held.
    int countHeld(const std::string &name) const;

    /// Counts a call of this name. Returns whether it is one that failNext() requested.
    bool countDown(const std::string &name);
    /// Returns whether the next call of this name fails by chance; see Gate::failRandomly().
    bool drawFailure(const std::string &name);
};

} // namespace emulator
