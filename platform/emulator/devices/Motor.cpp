#include "platform/emulator/devices/Motor.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/Clock.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace emulator
{

namespace
{

// How often a move checks whether another command has replaced it and whether the camera is still connected.
constexpr int64_t lookMilliseconds = 50;

// The speeds of an operator's buttons, as fractions of the full speed.
constexpr std::array stepFractions{0.0, 0.1, 0.4, 1.0};

} // namespace

uint32_t Motor::counts(Section &section, const QString &key, uint32_t fallback, uint32_t minimum)
{
    return static_cast<uint32_t>(
        section.integer(key, static_cast<int>(fallback), static_cast<int>(minimum), mostCounts));
}

Motor Motor::fromProfile(Section &section, Range stops, double usualSpeed, Range range, double usualPosition)
{
    constexpr double fastestOfAll = 1e12;
    const double fastest = section.number(QStringLiteral("countsPerSecond"), usualSpeed, 1, fastestOfAll);
    const double slowing = section.number(QStringLiteral("slowingSeconds"), 0.1, 0, 10);
    const double position = section.integer(QStringLiteral("position"), static_cast<int>(usualPosition),
                                            static_cast<int>(range.minimum), static_cast<int>(range.maximum));
    return {stops, fastest, slowing, position};
}

std::optional<double> Motor::speedFractionOfStep(int32_t step)
{
    const auto size = static_cast<uint32_t>(step < 0 ? -int64_t(step) : step);
    if (size >= stepFractions.size())
        return std::nullopt;
    return step < 0 ? -stepFractions[size] : stepFractions[size];
}

std::optional<double> Motor::speedFractionOfPercent(float percent)
{
    if (!(std::abs(percent) <= 100))
        return std::nullopt;
    return percent / 100.0;
}

Motor::Motor(Range stops, double fastest, double slowingSeconds, double position)
    : m_stops(stops), m_fastest(fastest), m_slowingSeconds(slowingSeconds), m_from(clampedToStops(position)),
      m_since(Clock::now())
{
}

double Motor::position() const
{
    if (m_goal && !moving())
        return *m_goal;
    const double run = std::min(elapsed(), m_runSeconds);
    const double slowed = std::clamp(elapsed() - m_runSeconds, 0.0, slowing());
    const double coasted = slowed > 0 ? m_velocity * slowed * (1 - slowed / (2 * slowing())) : 0;
    return clampedToStops(m_from + m_velocity * run + coasted);
}

double Motor::restingPosition() const
{
    return m_goal ? *m_goal : clampedToStops(m_from + m_velocity * (m_runSeconds + slowing() / 2));
}

void Motor::travelTo(double position) { travelTo(position, std::abs(position - this->position()) / m_fastest); }

void Motor::travelTo(double position, double seconds)
{
    const double goal = clampedToStops(position);
    start(seconds > 0 ? (goal - this->position()) / seconds : 0, seconds, false, goal);
}

void Motor::move(double fraction, double limit)
{
    const double here = position();
    const double wanted = fraction * m_fastest;
    const double way = limit - here;
    if (wanted != 0 && way * wanted > 0)
        start(wanted, way / wanted, true, std::nullopt);
    else
        start(std::clamp(velocity(), -m_fastest, m_fastest), 0, true, std::nullopt);
}

void Motor::setPosition(double position)
{
    start(0, 0, false, std::nullopt);
    m_from = clampedToStops(position);
}

Status Motor::awaitRest(Camera &camera) const
{
    const auto command = m_commands;
    while (const int64_t remaining = remainingMilliseconds()) {
        if (const Status status = camera.letTimePass(std::min(remaining, lookMilliseconds)); status != Ok)
            return status;
        if (m_commands != command)
            return Refused;
    }
    return Ok;
}

double Motor::elapsed() const { return static_cast<double>(std::max<int64_t>(0, Clock::now() - m_since)) / 1000; }

double Motor::slowing() const { return m_slowsDown ? std::abs(m_velocity) / m_fastest * m_slowingSeconds : 0; }

double Motor::velocity() const
{
    if (!moving())
        return 0;
    const double slowed = std::max(0.0, elapsed() - m_runSeconds);
    return slowed > 0 ? m_velocity * std::max(0.0, 1 - slowed / slowing()) : m_velocity;
}

int64_t Motor::remainingMilliseconds() const
{
    const auto whole = static_cast<int64_t>(std::ceil((m_runSeconds + slowing()) * 1000));
    return std::clamp<int64_t>(m_since + whole - Clock::now(), 0, whole);
}

double Motor::clampedToStops(double position) const { return std::clamp(position, m_stops.minimum, m_stops.maximum); }

void Motor::start(double velocity, double runSeconds, bool slowsDown, std::optional<double> goal)
{
    m_from = position();
    m_since = Clock::now();
    m_velocity = velocity;
    m_runSeconds = runSeconds;
    m_slowsDown = slowsDown;
    m_goal = goal;
    ++m_commands;
}

} // namespace emulator
