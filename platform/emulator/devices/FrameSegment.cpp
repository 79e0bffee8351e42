#include "platform/emulator/devices/FrameSegment.h"

#include <algorithm>

namespace emulator
{

FrameSegment::FrameSegment(const FrameTiming &timing, int64_t start)
    : m_timing(timing), m_start(start),
      m_firstPulse(timing.kind == FrameTiming::Free ? 0 : timing.pulses.pulseFrom(start))
{
}

uint64_t FrameSegment::begun(int64_t tick) const
{
    const FramePattern &pattern = m_timing.pattern;
    if (tick < m_start || pattern.framesInCycle() == 0)
        return 0;
    if (m_timing.kind == FrameTiming::Free)
        return pattern.begun(static_cast<uint64_t>(tick - m_start));
    const uint64_t pulse = m_timing.pulses.pulseAt(tick);
    if (pulse < m_firstPulse)
        return 0;
    if (m_timing.kind == FrameTiming::FrameByPulse)
        return pattern.begun(pulse - m_firstPulse);
    const uint64_t cycles = (pulse - m_firstPulse) / m_timing.cyclePulses;
    const auto inCycle = static_cast<uint64_t>(tick - cycleTick(cycles));
    return cycles * pattern.framesInCycle() + std::min(pattern.begun(inCycle), pattern.framesInCycle());
}

int64_t FrameSegment::tickOf(uint64_t frame) const
{
    const FramePattern &pattern = m_timing.pattern;
    switch (m_timing.kind) {
    case FrameTiming::FrameByPulse:
        return m_timing.pulses.tickOf(m_firstPulse + pattern.place(frame).offset);
    case FrameTiming::CycleByPulse:
        return cycleTick(frame / pattern.framesInCycle())
            + static_cast<int64_t>(pattern.place(frame % pattern.framesInCycle()).offset);
    default:
        return m_start + static_cast<int64_t>(pattern.place(frame).offset);
    }
}

int64_t FrameSegment::end(uint64_t count) const
{
    if (count == 0)
        return m_start;
    const uint64_t last = count - 1;
    return tickOf(last) + m_timing.durations[static_cast<size_t>(presetOf(last))];
}

int64_t FrameSegment::cycleTick(uint64_t cycle) const
{
    return m_timing.pulses.tickOf(m_firstPulse + cycle * m_timing.cyclePulses);
}

} // namespace emulator
