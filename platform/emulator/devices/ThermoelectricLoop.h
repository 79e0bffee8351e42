#pragma once

#include <cstdint>

namespace emulator
{

/// What a thermoelectric cooler cools, and the regulator of its current. The cooler can also heat. The temperature is
/// computed in steps of 100 ms of the Clock, so it does not depend on how often it is read. Temperatures are Celsius.
class ThermoelectricLoop
{
public:
    /// The constants of the regulator. The wanted drive is kOff + kP e + kI * (integral of e) + kD * (change of e),
    /// limited to -1 (heating) to 1 (cooling), where e is the distance above the setpoint, and times are in seconds.
    struct Control {
        float kP = 1.5F;
        float kI = 0.25F;
        float kD = 0.05F;
        float kOff = 0;
    };

    /// After a longer time the temperature depends only on what was within this time: the loop has settled by then.
    static constexpr int64_t memoryMilliseconds = 3'600'000;

    struct Conditions {
        bool power;
        double ambient; ///< The temperature that it has without power.
        double setpoint;
        Control control;
        bool stuck = false; ///< The drive heats without control while there is power, by 1 K/s.
    };

    /// `temperature` at `now`, without drive.
    ThermoelectricLoop(double temperature, int64_t now)
        : m_temperature(temperature), m_previous(temperature), m_time(now)
    {
    }

    /// Returns the temperature at `now`. The conditions apply since the previous call.
    double temperature(const Conditions &conditions, int64_t now);
    /// The time of Clock up to which it has been computed.
    int64_t time() const { return m_time; }

private:
    double wantedDrive(const Conditions &conditions);

    double m_temperature;
    double m_previous; ///< The temperature one step before.
    double m_drive = 0; ///< -1 to 1.
    double m_integral = 0; ///< Kelvin seconds.
    int64_t m_time; ///< The end of the last step, a time of Clock.
};

} // namespace emulator
