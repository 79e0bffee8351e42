#include "platform/emulator/devices/TriggerSchedule.h"

#include <algorithm>

namespace emulator
{

bool TriggerSchedule::update(const TriggerSignal &signal, int64_t now)
{
    const bool armed = signal.armings != m_signal.armings;
    if (signal == m_signal)
        return false;
    if (armed) {
        m_single.clear();
        m_momentTaken = false;
    }
    m_signal = signal;
    m_taken = armed ? now - 1 : now;
    if (m_signal.pulses.exists())
        m_nextPulse = m_signal.pulses.pulseFrom(m_taken + 1 - m_signal.delay);
    return armed;
}

void TriggerSchedule::add(int64_t tick)
{
    const int64_t effect = tick + m_signal.delay;
    m_single.insert(std::ranges::upper_bound(m_single, effect), effect);
}

std::optional<int64_t> TriggerSchedule::next() const
{
    std::optional<int64_t> first;
    const auto consider = [&first](int64_t tick) { first = first ? std::min(*first, tick) : tick; };
    if (m_signal.pulses.exists())
        consider(m_signal.pulses.tickOf(m_nextPulse) + m_signal.delay);
    if (m_signal.moment && !m_momentTaken && *m_signal.moment + m_signal.delay > m_taken)
        consider(*m_signal.moment + m_signal.delay);
    if (!m_single.empty())
        consider(m_single.front());
    return first;
}

uint64_t TriggerSchedule::takeUntil(int64_t tick)
{
    uint64_t count = 0;
    if (m_signal.pulses.exists() && tick >= m_signal.delay) {
        const uint64_t end = m_signal.pulses.pulseAt(tick - m_signal.delay) + 1;
        count += end - std::min(m_nextPulse, end);
        m_nextPulse = std::max(m_nextPulse, end);
    }
    if (m_signal.moment && !m_momentTaken && *m_signal.moment + m_signal.delay > m_taken
        && *m_signal.moment + m_signal.delay <= tick) {
        m_momentTaken = true;
        ++count;
    }
    const auto later = std::ranges::upper_bound(m_single, tick);
    count += static_cast<uint64_t>(later - m_single.begin());
    m_single.erase(m_single.begin(), later);
    m_taken = std::max(m_taken, tick);
    return count;
}

/// Whether a periodic trigger takes effect at a tick.
bool TriggerSchedule::isPulse(int64_t tick) const
{
    const int64_t cause = tick - m_signal.delay;
    return m_signal.pulses.exists() && cause >= 0 && m_signal.pulses.tickOf(m_signal.pulses.pulseAt(cause)) == cause;
}

uint64_t TriggerSchedule::repeats(int64_t tick, int64_t length, int64_t end) const
{
    if (!isPulse(tick) || !m_single.empty() || end <= tick)
        return 0;
    const auto pause = static_cast<uint64_t>(length);
    const uint64_t distance = m_signal.pulses.pulsesIn(pause);
    // If a pulse less than a tick before the end of the pause exists, rounding decides whether it counts.
    if (pause == 0 || m_signal.pulses.pulsesIn(pause - 1) != distance)
        return 0;
    const uint64_t first = m_signal.pulses.pulseAt(tick - m_signal.delay);
    return (m_signal.pulses.pulseAt(end - m_signal.delay) - first) / distance;
}

int64_t TriggerSchedule::takeRepeats(int64_t tick, int64_t length, uint64_t count)
{
    const uint64_t first = m_signal.pulses.pulseAt(tick - m_signal.delay);
    const uint64_t distance = m_signal.pulses.pulsesIn(static_cast<uint64_t>(length));
    const int64_t last = m_signal.pulses.tickOf(first + count * distance) + m_signal.delay;
    takeUntil(last);
    return last;
}

bool TriggerSchedule::repeatsAfter(int64_t ticks) const
{
    return m_signal.pulses.exists() && m_single.empty() && m_signal.pulses.repeatsAfter(static_cast<uint64_t>(ticks));
}

std::optional<double> TriggerSchedule::rate(int64_t tick, const std::function<int64_t(int64_t)> &endOf) const
{
    const PulseTrain &pulses = m_signal.pulses;
    if (!pulses.exists())
        return std::nullopt;
    // With a second signal the distances differ by a pulse: the mean of so many is exact to 2 %.
    constexpr int count = 64;
    const uint64_t first = pulses.pulseFrom(tick - m_signal.delay);
    uint64_t pulse = first;
    for (int n = 0; n < count; ++n) {
        const int64_t end = endOf(pulses.tickOf(pulse) + m_signal.delay);
        pulse = std::max(pulses.pulseFrom(end - m_signal.delay), pulse + 1);
    }
    return pulses.hertz() * count / static_cast<double>(pulse - first);
}

} // namespace emulator
