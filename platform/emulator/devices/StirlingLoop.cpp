#include "platform/emulator/devices/StirlingLoop.h"

#include <algorithm>
#include <cmath>

namespace emulator
{

namespace
{

constexpr int64_t stepMilliseconds = 100;
constexpr double stepSeconds = 0.1;
constexpr int64_t maximumSteps = StirlingLoop::memoryMilliseconds / stepMilliseconds;

constexpr double restingDrive = 0.03; // About the drive that makes up for the losses.
constexpr double proportional = 0.2;
constexpr double integral = 0.002;
constexpr double driveLagSeconds = 0.2;

} // namespace

double StirlingLoop::temperature(const Conditions &conditions, int64_t now)
{
    // The computer's clock may be set back.
    m_time = std::min(m_time, now);
    const int64_t steps = (now - m_time) / stepMilliseconds;
    m_time += steps * stepMilliseconds;

    const double coolingPerStep
        = std::max(0.0, conditions.ambient - conditions.setpoint) / conditions.coolSeconds * stepSeconds;
    const double remainingPerStep = std::exp(-stepSeconds / conditions.warmSeconds);
    const double drivePerStep = 1 - std::exp(-stepSeconds / driveLagSeconds);
    if (!conditions.power)
        m_integral = 0;
    for (int64_t step = std::min(steps, maximumSteps); step > 0; --step) {
        double wanted = 0;
        if (conditions.power) {
            const double error = m_temperature - conditions.setpoint;
            const double unlimited = restingDrive + proportional * error + integral * m_integral;
            wanted = unlimited < 0 ? 0 : unlimited > 1 ? 1 : unlimited;
            // The integral rests while the drive is at a limit. It would otherwise grow during the whole cool-down.
            if (wanted == unlimited)
                m_integral += error * stepSeconds;
        }
        m_drive += (wanted - m_drive) * drivePerStep;
        const double warmed = conditions.ambient + (m_temperature - conditions.ambient) * remainingPerStep;
        const double cooled = warmed - coolingPerStep * m_drive;
        m_temperature = cooled < 0 ? 0 : cooled;
    }
    return m_temperature;
}

} // namespace emulator
