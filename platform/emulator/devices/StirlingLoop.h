#pragma once

#include <cstdint>

namespace emulator
{

/// The detector in the dewar of a Stirling cooler, and the control loop of its compressor. Its temperature is computed
/// in steps of 100 ms of the Clock, so it does not depend on how often it is read.
class StirlingLoop
{
public:
    /// After a longer time the temperature depends only on what was within this time: the loop has settled by then.
    static constexpr int64_t memoryMilliseconds = 86'400'000;

    struct Conditions {
        bool power;
        double ambient; ///< Kelvin.
        double setpoint; ///< Kelvin.
        double coolSeconds; ///< From the ambient temperature to the setpoint at full drive, without losses.
        double warmSeconds; ///< The time constant of the losses.
    };

    /// `temperature` of the detector in Kelvin at `now`, with the compressor at rest.
    StirlingLoop(double temperature, int64_t now) : m_temperature(temperature), m_time(now) { }

    /// Returns the temperature at `now` in Kelvin. The conditions apply since the previous call.
    double temperature(const Conditions &conditions, int64_t now);
    /// The time of Clock up to which it has been computed.
    int64_t time() const { return m_time; }

private:
    double m_temperature;
    double m_drive = 0; ///< 0 to 1.
    double m_integral = 0; ///< Kelvin seconds.
    int64_t m_time; ///< The end of the last step, a time of Clock.
};

} // namespace emulator
