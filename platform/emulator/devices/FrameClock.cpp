#include "platform/emulator/devices/FrameClock.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/Clock.h"
#include "platform/emulator/devices/FrameSync.h"
#include "platform/emulator/devices/Sensor.h"

#include <algorithm>

namespace emulator
{

namespace
{

// About 300 years in milliseconds. The ticks of this time fit into 64 bits.
constexpr int64_t longestRun = 10'000'000'000'000;

/// value * multiplier / divisor, rounded down, without a product of value and multiplier.
constexpr int64_t scaled(int64_t value, int64_t multiplier, int64_t divisor)
{
    return value / divisor * multiplier + value % divisor * multiplier / divisor;
}

} // namespace

FrameClock::FrameClock(Camera &camera, Section &)
    : Device(camera), m_sensor(*camera.device<Sensor>()), m_sync(*camera.device<FrameSync>())
{
}

std::optional<FrameClock::Frame> FrameClock::newest(int preset)
{
    settle();
    if (const auto index = m_segment.newest(preset, m_segment.begun(m_now)))
        return frameAt(*index);
    const bool exists = preset >= 0 && preset < FramePattern::presets;
    return exists ? m_before[static_cast<size_t>(preset)] : std::nullopt;
}

std::optional<FrameClock::Frame> FrameClock::frame(uint64_t number)
{
    settle();
    if (number >= m_firstNumber) {
        const uint64_t index = number - m_firstNumber;
        return index < m_segment.begun(m_now) ? std::optional(frameAt(index)) : std::nullopt;
    }
    const auto found = std::ranges::find_if(
        m_before, [number](const std::optional<Frame> &known) { return known && known->number == number; });
    return found == m_before.end() ? std::nullopt : *found;
}

double FrameClock::averageRate() const { return timing().averageRate(m_sensor.clockFrequency()); }

void FrameClock::settle()
{
    if (!m_start)
        return;
    m_now = std::max(m_now, tickNow());
    const FrameTiming present = timing();
    if (present == m_segment.timing())
        return;
    const uint64_t count = m_segment.begun(m_now);
    for (size_t preset = 0; preset < m_before.size(); ++preset)
        if (const auto index = m_segment.newest(static_cast<int>(preset), count))
            m_before[preset] = frameAt(*index);
    m_firstNumber += count;
    m_segment = FrameSegment(present, std::max(m_now, m_segment.end(count)));
}

void FrameClock::connectionChanged(bool connected)
{
    if (!connected || m_start)
        return;
    m_start = Clock::now();
    settle();
}

FrameTiming FrameClock::timing() const
{
    std::optional<PulseTrain> signal;
    if (m_sync.source() != FrameSync::Internal)
        signal.emplace(m_sync.externalRate(), m_sensor.clockFrequency());
    return {m_sensor.timing(), signal};
}

int64_t FrameClock::tickNow() const
{
    const int64_t milliseconds = std::clamp<int64_t>(Clock::now() - *m_start, 0, longestRun);
    return scaled(milliseconds, m_sensor.clockFrequency(), 1000);
}

FrameClock::Frame FrameClock::frameAt(uint64_t index) const
{
    const int64_t tick = m_segment.tickOf(index);
    return {m_firstNumber + index, m_segment.presetOf(index), tick,
            *m_start * 1000 + scaled(tick, 1'000'000, m_sensor.clockFrequency())};
}

} // namespace emulator
