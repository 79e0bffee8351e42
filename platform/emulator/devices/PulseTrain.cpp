#include "platform/emulator/devices/PulseTrain.h"

#include <algorithm>
#include <cmath>

namespace emulator
{

namespace
{

// Products of a time, a frequency and a million do not fit into 64 bits.
__extension__ using Wide = unsigned __int128;

constexpr uint64_t million = 1'000'000;

} // namespace

PulseTrain::PulseTrain(double hertz, uint32_t ticksPerSecond)
    : m_pulses(static_cast<uint64_t>(std::llround(hertz * 1e6))), m_ticks(ticksPerSecond * million),
      m_hertz(static_cast<double>(m_pulses) / 1e6)
{
}

PulseTrain PulseTrain::every(uint64_t period, uint32_t ticksPerSecond)
{
    PulseTrain train;
    train.m_pulses = 1;
    train.m_ticks = period;
    train.m_hertz = static_cast<double>(ticksPerSecond) / static_cast<double>(period);
    return train;
}

int64_t PulseTrain::tickOf(uint64_t pulse) const
{
    // The nearest whole number to pulse * m_ticks / m_pulses.
    const Wide halves = (Wide(2) * pulse * m_ticks + m_pulses) / m_pulses;
    return static_cast<int64_t>(std::min(halves / 2, Wide(farthest)));
}

uint64_t PulseTrain::pulseAt(int64_t tick) const
{
    // The largest pulse whose time is below that of the tick and a half.
    const Wide numerator = Wide(m_pulses) * (2 * static_cast<uint64_t>(tick) + 1) - 1;
    return static_cast<uint64_t>(numerator / (Wide(2) * m_ticks));
}

uint64_t PulseTrain::pulsesIn(uint64_t ticks) const
{
    return static_cast<uint64_t>((Wide(ticks) * m_pulses + m_ticks - 1) / m_ticks);
}

bool PulseTrain::repeatsAfter(uint64_t ticks) const { return Wide(ticks) * m_pulses % m_ticks == 0; }

} // namespace emulator
