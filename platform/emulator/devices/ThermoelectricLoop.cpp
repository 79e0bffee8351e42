#include "platform/emulator/devices/ThermoelectricLoop.h"

#include <algorithm>

namespace emulator
{

namespace
{

constexpr int64_t stepMilliseconds = 100;
constexpr double stepSeconds = 0.1;
constexpr int64_t maximumSteps = ThermoelectricLoop::memoryMilliseconds / stepMilliseconds;

constexpr double lossSeconds = 60; // The time constant without drive.
constexpr double driveLagSeconds = 2;
constexpr double kelvinPerSecond = 2; // At full drive and ambient temperature.
constexpr double stuckKelvinPerSecond = 1;
constexpr double largestDifference
    = 45; // The difference from the ambient temperature at which the drive has no effect.
// A thermal fuse. Some constants of the regulator would heat without end.
constexpr double hottest = 120;

} // namespace

// The change of e is the change of the temperature, so a new setpoint does not make the drive jump.
double ThermoelectricLoop::wantedDrive(const Conditions &conditions)
{
    if (!conditions.power) {
        m_integral = 0;
        return 0;
    }
    const auto &[kP, kI, kD, kOff] = conditions.control;
    const double error = m_temperature - conditions.setpoint;
    const double change = (m_temperature - m_previous) / stepSeconds;
    const double unlimited = kOff + kP * error + kI * m_integral + kD * change;
    const double wanted = std::clamp(unlimited, -1.0, 1.0);
    // At a limit the integral only changes so that the drive moves away from the limit: without a proportional part,
    // the drive would otherwise stay at the limit for ever. An integral without effect does not add up.
    if (kI == 0)
        m_integral = 0;
    else if (wanted == unlimited || error * unlimited < 0)
        m_integral += error * stepSeconds;
    return wanted;
}

double ThermoelectricLoop::temperature(const Conditions &conditions, int64_t now)
{
    // The computer's clock may be set back.
    m_time = std::min(m_time, now);
    const int64_t steps = (now - m_time) / stepMilliseconds;
    m_time += steps * stepMilliseconds;
    for (int64_t step = std::min(steps, maximumSteps); step > 0; --step) {
        m_drive += (wantedDrive(conditions) - m_drive) * stepSeconds / driveLagSeconds;
        const double difference = conditions.ambient - m_temperature;
        const double change = conditions.stuck && conditions.power
            ? stuckKelvinPerSecond
            : difference / lossSeconds - kelvinPerSecond * m_drive * (1 - difference / largestDifference);
        m_previous = m_temperature;
        m_temperature = std::min(m_temperature + change * stepSeconds, hottest);
    }
    return m_temperature;
}

} // namespace emulator
