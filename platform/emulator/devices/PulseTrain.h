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
    /// A pulse every `period` ticks, which must be above 0.
    static PulseTrain every(uint64_t period, uint32_t ticksPerSecond);

    bool exists() const { return m_pulses > 0; }
    double hertz() const { return m_hertz; }

    /// Later pulses count as being at this tick. Sums of a few such ticks fit into 64 bits with a sign.
    static constexpr int64_t farthest = INT64_MAX / 4;

    // The following need a signal.
    int64_t tickOf(uint64_t pulse) const;
    /// The last pulse at or before a tick, which must not be negative.
    uint64_t pulseAt(int64_t tick) const;
    /// The first pulse at or after a tick. Pulse 0 for a negative one.
    uint64_t pulseFrom(int64_t tick) const { return tick <= 0 ? 0 : pulseAt(tick - 1) + 1; }
    /// The smallest number of pulse periods that takes at least this number of ticks.
    uint64_t pulsesIn(uint64_t ticks) const;
    /// Whether all pulses repeat exactly after this number of ticks.
    bool repeatsAfter(uint64_t ticks) const;

    bool operator==(const PulseTrain &) const = default;

    /// See RecipeArchive.h.
    template <class Archive, class Self> static void archive(Archive &archive, Self &self)
    {
        archive(self.m_pulses, self.m_ticks, self.m_hertz);
        archive.require([&self] { return self.m_pulses <= self.m_ticks; });
    }

private:
    // There are m_pulses pulses in m_ticks ticks.
    uint64_t m_pulses = 0;
    uint64_t m_ticks = 0;
    double m_hertz = 0;
};

} // namespace emulator
