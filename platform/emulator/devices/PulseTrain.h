#pragma once

#include <cstdint>

namespace emulator
{

/// The pulses of a periodic signal in ticks of a clock. Pulses count from 0, which is at tick 0; each is at the tick
/// that is nearest to its time.
class PulseTrain
{
public:
    /// No signal.
    PulseTrain() = default;
    /// `hertz` is rounded to a millionth of a hertz; 0 is no signal. It must not be above `ticksPerSecond`.
    PulseTrain(double hertz, uint32_t ticksPerSecond);

    bool exists() const { return m_microhertz > 0; }
    double hertz() const { return static_cast<double>(m_microhertz) / 1e6; }

    // The following need a signal.
    int64_t tickOf(uint64_t pulse) const;
    /// The last pulse at or before a tick, which must not be negative.
    uint64_t pulseAt(int64_t tick) const;
    /// The first pulse at or after a tick, which must not be negative.
    uint64_t pulseFrom(int64_t tick) const { return tick == 0 ? 0 : pulseAt(tick - 1) + 1; }
    /// The smallest number of pulse periods that takes at least this number of ticks.
    uint64_t pulsesIn(uint64_t ticks) const;

    bool operator==(const PulseTrain &) const = default;

private:
    uint64_t m_microhertz = 0;
    uint32_t m_ticksPerSecond = 0;
};

} // namespace emulator
