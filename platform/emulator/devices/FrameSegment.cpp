#include "platform/emulator/devices/FrameSegment.h"

#include <algorithm>

namespace emulator
{

namespace
{

/// An offset of a pattern in ticks, so small that sums of a few of them fit into 64 bits.
int64_t ticksOf(uint64_t offset) { return static_cast<int64_t>(std::min<uint64_t>(offset, PulseTrain::farthest)); }

} // namespace

FrameSegment::FrameSegment(const FrameTiming &timing, int64_t start) : m_timing(timing), m_start(start)
{
    if (!timing.hasFrames() || timing.kind == FrameTiming::Free)
        return;
    if (timing.kind == FrameTiming::CycleByPulse && timing.signal.startsReadout)
        m_lead = timing.durations[static_cast<size_t>(presetOf(0))];
    m_firstPulse = timing.signal.pulses.pulseFrom(start - timing.signal.delay + m_lead);
}

uint64_t FrameSegment::begun(int64_t tick) const
{
    if (tick < m_start || !m_timing.hasFrames())
        return 0;
    const uint64_t count = std::min(slotsBegun(tick), m_timing.frames);
    const bool lastHasBegun = count == 0 || !m_timing.signal.startsReadout || tickOf(count - 1) <= tick;
    return lastHasBegun ? count : count - 1;
}

/// The number of slots that have begun at a tick, without regard to the end of the frames.
uint64_t FrameSegment::slotsBegun(int64_t tick) const
{
    const FramePattern &pattern = m_timing.pattern;
    if (m_timing.kind == FrameTiming::Free)
        return pattern.begun(static_cast<uint64_t>(tick - m_start));
    if (tick < pulseTick(m_firstPulse) - m_lead)
        return 0;
    const uint64_t pulses = m_timing.signal.pulses.pulseAt(tick - m_timing.signal.delay + m_lead) - m_firstPulse;
    if (m_timing.kind == FrameTiming::FrameByPulse)
        return pattern.begun(pulses);
    const uint64_t cycles = pulses / m_timing.cyclePulses;
    const auto inCycle = static_cast<uint64_t>(tick - cycleTick(cycles));
    return cycles * pattern.framesInCycle() + std::min(pattern.begun(inCycle), pattern.framesInCycle());
}

int64_t FrameSegment::tickOf(uint64_t frame) const
{
    const FramePattern &pattern = m_timing.pattern;
    const bool endsAtPulse = m_timing.signal.startsReadout;
    switch (m_timing.kind) {
    case FrameTiming::FrameByPulse: {
        const FramePattern::Place place = pattern.place(frame);
        const auto preset = static_cast<size_t>(place.preset);
        const uint64_t pulse = m_firstPulse + place.offset;
        return endsAtPulse ? pulseTick(pulse + pattern.turns()[preset].width) - m_timing.integrations[preset]
                           : pulseTick(pulse);
    }
    case FrameTiming::CycleByPulse: {
        const FramePattern::Place place = pattern.place(frame % pattern.framesInCycle());
        const auto preset = static_cast<size_t>(place.preset);
        const int64_t slot = cycleTick(frame / pattern.framesInCycle()) + ticksOf(place.offset);
        return endsAtPulse ? slot + m_timing.durations[preset] - m_timing.integrations[preset] : slot;
    }
    default:
        return m_start + ticksOf(pattern.place(frame).offset);
    }
}

int64_t FrameSegment::end(uint64_t count) const
{
    if (count == 0)
        return m_start;
    const uint64_t last = count - 1;
    return tickOf(last) + m_timing.durations[static_cast<size_t>(presetOf(last))];
}

bool FrameSegment::repeats(const FrameSegment &earlier, int64_t from, int64_t ticks) const
{
    if (m_timing != earlier.m_timing || !m_timing.hasFrames())
        return false;
    // A cycle does not include the time before the first frame of a segment.
    if (m_start == earlier.m_start)
        return m_timing.frames == FrameTiming::endless && begun(from) > 0
            && cycleRepeatsAfter(static_cast<uint64_t>(ticks));
    if (m_start != earlier.m_start + ticks || m_timing.kind == FrameTiming::Free)
        return m_start == earlier.m_start + ticks;
    // There are no pulses before pulse 0: segments that begin before it have the same first pulse.
    const PulseTrain &pulses = m_timing.signal.pulses;
    return pulses.repeatsAfter(static_cast<uint64_t>(ticks))
        && m_firstPulse == earlier.m_firstPulse + pulses.pulsesIn(static_cast<uint64_t>(ticks));
}

/// Whether a whole number of cycles takes this number of ticks.
bool FrameSegment::cycleRepeatsAfter(uint64_t ticks) const
{
    if (m_timing.kind == FrameTiming::Free)
        return ticks % m_timing.pattern.cycleWidth() == 0;
    const PulseTrain &pulses = m_timing.signal.pulses;
    const uint64_t inCycle
        = m_timing.kind == FrameTiming::FrameByPulse ? m_timing.pattern.cycleWidth() : m_timing.cyclePulses;
    return pulses.repeatsAfter(ticks) && pulses.pulsesIn(ticks) % inCycle == 0;
}

/// When a pulse takes effect.
int64_t FrameSegment::pulseTick(uint64_t pulse) const
{
    return m_timing.signal.pulses.tickOf(pulse) + m_timing.signal.delay;
}

int64_t FrameSegment::cycleTick(uint64_t cycle) const
{
    return pulseTick(m_firstPulse + cycle * m_timing.cyclePulses) - m_lead;
}

} // namespace emulator
