#include "platform/emulator/devices/Motor.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/Clock.h"
#include "platform/emulator/Section.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace emulator
{

namespace
{

// The interval of the checks whether another command has replaced a move and whether the camera is still connected.
constexpr int64_t checkIntervalMilliseconds = 50;

// The speed steps 0 to 3, as fractions of the full speed.
constexpr std::array stepFractions{0.0, 0.1, 0.4, 1.0};

} // namespace

uint32_t Motor::counts(Section &section, const QString &key, uint32_t fallback, uint32_t minimum)
{
    return static_cast<uint32_t>(
        section.integer(key, static_cast<int>(fallback), static_cast<int>(minimum), maximumCounts));
}

Motor Motor::fromProfile(Section &section, Range stops, double defaultSpeed, Range positionRange,
                         double defaultPosition)
{
    constexpr double highestSpeed = 1e12;
    const double fullSpeed = section.number(QStringLiteral("countsPerSecond"), defaultSpeed, 1, highestSpeed);
    const double slowingSeconds = section.number(QStringLiteral("slowingSeconds"), 0.1, 0, 10);
    const double position
        = section.integer(QStringLiteral("position"), static_cast<int>(defaultPosition),
                          static_cast<int>(positionRange.minimum), static_cast<int>(positionRange.maximum));
    return {stops, fullSpeed, slowingSeconds, position};
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

Motor::Motor(Range stops, double fullSpeed, double slowingSeconds, double position)
    : m_stops(stops), m_fullSpeed(fullSpeed), m_slowingSeconds(slowingSeconds),
      m_startPosition(clampedToStops(position)), m_startTime(Clock::now())
{
}

double Motor::position() const
{
    if (m_target && !moving())
        return *m_target;
    const double runSeconds = std::min(elapsed(), m_runSeconds);
    const double slowedSeconds = std::clamp(elapsed() - m_runSeconds, 0.0, slowingSecondsOfMove());
    const double coastedCounts
        = slowedSeconds > 0 ? m_velocity * slowedSeconds * (1 - slowedSeconds / (2 * slowingSecondsOfMove())) : 0;
    return clampedToStops(m_startPosition + m_velocity * runSeconds + coastedCounts);
}

double Motor::restingPosition() const
{
    return m_target ? *m_target
                    : clampedToStops(m_startPosition + m_velocity * (m_runSeconds + slowingSecondsOfMove() / 2));
}

void Motor::moveTo(double position) { moveTo(position, std::abs(position - this->position()) / m_fullSpeed); }

void Motor::moveTo(double position, double seconds)
{
    const double target = clampedToStops(position);
    start(seconds > 0 ? (target - this->position()) / seconds : 0, seconds, false, target);
}

void Motor::moveBySpeed(double fraction, double limit)
{
    const double present = position();
    const double newVelocity = fraction * m_fullSpeed;
    const double distance = limit - present;
    if (newVelocity != 0 && distance * newVelocity > 0)
        start(newVelocity, distance / newVelocity, true, std::nullopt);
    else
        start(std::clamp(velocity(), -m_fullSpeed, m_fullSpeed), 0, true, std::nullopt);
}

void Motor::setPosition(double position)
{
    start(0, 0, false, std::nullopt);
    m_startPosition = clampedToStops(position);
}

Status Motor::awaitRest(Camera &camera) const
{
    const auto command = m_commands;
    while (const int64_t remaining = remainingMilliseconds()) {
        if (const Status status = camera.letTimePass(std::min(remaining, checkIntervalMilliseconds)); status != Ok)
            return status;
        if (m_commands != command)
            return Refused;
    }
    return Ok;
}

double Motor::elapsed() const { return static_cast<double>(std::max<int64_t>(0, Clock::now() - m_startTime)) / 1000; }

double Motor::slowingSecondsOfMove() const
{
    return m_slowsDown ? std::abs(m_velocity) / m_fullSpeed * m_slowingSeconds : 0;
}

double Motor::velocity() const
{
    if (!moving())
        return 0;
    const double slowedSeconds = std::max(0.0, elapsed() - m_runSeconds);
    return slowedSeconds > 0 ? m_velocity * std::max(0.0, 1 - slowedSeconds / slowingSecondsOfMove()) : m_velocity;
}

int64_t Motor::remainingMilliseconds() const
{
    const auto total = static_cast<int64_t>(std::ceil((m_runSeconds + slowingSecondsOfMove()) * 1000));
    return std::clamp<int64_t>(m_startTime + total - Clock::now(), 0, total);
}

double Motor::clampedToStops(double position) const { return std::clamp(position, m_stops.minimum, m_stops.maximum); }

void Motor::start(double velocity, double runSeconds, bool slowsDown, std::optional<double> target)
{
    m_startPosition = position();
    m_startTime = Clock::now();
    m_velocity = velocity;
    m_runSeconds = runSeconds;
    m_slowsDown = slowsDown;
    m_target = target;
    ++m_commands;
}

} // namespace emulator
