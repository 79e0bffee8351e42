#pragma once

#include "platform/emulator/Clock.h"
#include "platform/emulator/Device.h"
#include "platform/emulator/devices/ThermoelectricCooler.h"

#include <cstdint>
#include <memory>

namespace emulator
{

class Environment;
class Temperatures;

/// The flag: a plate between the lens and the filter, which moves over the detector from the left. It has the
/// temperature of the air gap, or that of its own thermoelectric cooler. Temperatures are Celsius.
class Flag : public Device
{
public:
    enum State : uint8_t { Stowed = 0, InView = 1 };
    static constexpr int64_t moveMilliseconds = 400;

    /// Profile keys: "controlled" (whether it has a cooler), "noise" (degrees); with a cooler also the keys of
    /// ThermoelectricCooler. Settings: "state", which starts a move; with a cooler also its settings, and "stuck": the
    /// cooler heats without control, by 1 K/s. The environment and the temperature sensors must exist before.
    Flag(Camera &camera, Section &section);

    /// Where the flag is or moves to.
    State state() const { return m_state; }
    /// Starts a move, which takes 0.4 s, and returns at once. Refused for other numbers than those of the states.
    Status setState(uint8_t state);

    /// The measured temperature.
    float temperature() const { return temperatureAt(Clock::now()); }
    /// The same at a time of Clock since the last read.
    float temperatureAt(int64_t time) const;
    bool temperatureControlled() const { return m_cooler != nullptr; }
    /// The cooler; null without one.
    ThermoelectricCooler *cooler() const { return m_cooler.get(); }
    /// These are Absent without a cooler. The desired temperature is its setpoint.
    Status desiredTemperature(float &celsius) const;
    Status setDesiredTemperature(float celsius);
    Status coolerEnabled(bool &on) const;

    void connectionChanged(bool connected) override;
    void expose(int preset, image::Exposure &exposure) const override;

private:
    /// The temperature without a cooler, at a time of Clock.
    double airGap(int64_t time) const;
    /// The temperature without noise at a time of Clock since the last read.
    double celsius(int64_t time) const;
    /// The share of the array, from its left edge, that the flag covers now.
    double cover() const;

    const Environment &m_environment;
    const Temperatures *m_temperatures; ///< Null in a camera without sensors.
    double m_noise;
    std::unique_ptr<ThermoelectricCooler> m_cooler;
    State m_state = Stowed;
    // The last move: it started at this time of Clock, with this share of the array covered.
    double m_startCover = 0;
    int64_t m_startTime = 0;
};

} // namespace emulator
