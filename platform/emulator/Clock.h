#pragma once

#include <cstdint>

namespace emulator
{

/// The one clock of the emulated world. By default it follows the computer's; a test takes it over and moves it by
/// hand. Any thread.
class Clock
{
public:
    /// Milliseconds since the epoch in the emulated world, UTC.
    static int64_t now();

    /// Stops the clock at a fixed instant (2024-02-29 12:00:00 UTC); from here on it moves only by advance() and
    /// wait().
    static void manual();

    /// Lets the clock follow the computer's again.
    static void automatic();

    static bool isManual();

    /// Moves a manual clock forward.
    static void advance(int64_t milliseconds);

    /// How a device takes its time: sleeps with an automatic clock, and moves a manual clock forward itself, so that no
    /// call ever waits for somebody to turn the clock.
    static void wait(int64_t milliseconds);
};

} // namespace emulator
