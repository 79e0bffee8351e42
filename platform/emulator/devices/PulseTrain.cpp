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
    : m_microhertz(static_cast<uint64_t>(std::llround(hertz * 1e6))), m_ticksPerSecond(ticksPerSecond)
{
}

int64_t PulseTrain::tickOf(uint64_t pulse) const
{
    // The nearest whole number to pulse * ticksPerSecond / hertz.
    const Wide halves = (Wide(2) * pulse * m_ticksPerSecond * million + m_microhertz) / m_microhertz;
    return static_cast<int64_t>(std::min(halves / 2, Wide(INT64_MAX)));
}

uint64_t PulseTrain::pulseAt(int64_t tick) const
{
    // The largest pulse whose time is below that of the tick and a half.
    const Wide numerator = Wide(m_microhertz) * (2 * static_cast<uint64_t>(tick) + 1) - 1;
    return static_cast<uint64_t>(numerator / (Wide(2) * m_ticksPerSecond * million));
}

uint64_t PulseTrain::pulsesIn(uint64_t ticks) const
{
    const Wide ticksOfMillion = Wide(m_ticksPerSecond) * million;
    return static_cast<uint64_t>((Wide(ticks) * m_microhertz + ticksOfMillion - 1) / ticksOfMillion);
}

} // namespace emulator
