#pragma once

#include <cstdint>
#include <functional>
#include <optional>

namespace emulator
{

/// The clock of all emulated cameras. By default it follows the computer's clock; a test can stop it and move it
/// forward. Any thread.
class Clock
{
public:
    /// Milliseconds since 1970-01-01 00:00 UTC.
    static int64_t now();

    /// While an object exists, now() returns an earlier time on its thread, so that devices show their values at that
    /// time. An inner object ends before the outer one. It must not be used for commands.
    class AsOf
    {
    public:
        explicit AsOf(int64_t milliseconds);
        AsOf(const AsOf &) = delete;
        AsOf &operator=(const AsOf &) = delete;
        ~AsOf();

    private:
        std::optional<int64_t> m_outer;
    };
    /// Whether an AsOf exists on this thread. A later AsOf may have an earlier time, so a computation that goes on from
    /// its last time must keep an earlier one.
    static bool isAsOf();

    /// Sets the clock to a fixed time (2024-02-29 12:00:00 UTC) and stops it. After that only advance() and wait() move
    /// it.
    static void manual();

    /// Stops the clock at its present time, as manual() at a fixed one.
    static void stop();

    /// Lets the clock follow the computer's clock again.
    static void automatic();

    static bool isManual();

    /// Moves a manual clock forward. Does nothing with an automatic clock or for a negative time.
    static void advance(int64_t milliseconds);

    /// Lets the time of an operation pass. Sleeps with an automatic clock; moves a manual clock forward, so that a call
    /// never waits for a test to advance the clock.
    static void wait(int64_t milliseconds);

    /// For tests of changes during a slow operation: the next wait() of a manual clock calls `action` once, on its
    /// thread.
    static void duringNextWait(std::function<void()> action);

    /// Returns how much remains of an operation that takes `duration` milliseconds and ends at `end`: 0 after its end,
    /// and if the computer's clock has been set back since its start.
    static int64_t remaining(int64_t end, int64_t duration);
};

} // namespace emulator
