#pragma once

#include "platform/emulator/Setting.h"
#include "platform/emulator/devices/ThermoelectricLoop.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace emulator
{

class Section;

/// A thermoelectric cooler with its settings, for the device that it is part of. Temperatures are Celsius. Setpoint,
/// power and constants outlive the process and are not in snapshots: loading a state must not change a temperature that
/// takes its time to settle.
class ThermoelectricCooler
{
public:
    using Control = ThermoelectricLoop::Control;

    /// Profile keys: "setpoint", "minimum" and "maximum" (the range of the setpoint), "power", "control" ("kP", "kI",
    /// "kD", "kOff", each 0 to 1000). `range` and `setpoint` are the defaults. `ambient` returns the temperature
    /// without power at a time of Clock. `changed` is called after each change of a setting.
    ThermoelectricCooler(Section &section, Between range, double setpoint, std::function<double(int64_t)> ambient,
                         std::function<void()> changed);

    /// The rows for the table of the device, which reads the profile: "setpoint", "power" and the constants.
    std::vector<Setting> settings();

    float setpoint() const { return m_setpoint; }
    /// Refused outside the range, and if it is not finite.
    Status setSetpoint(float celsius);
    bool power() const { return m_power; }
    Status setPower(bool on);
    const Control &control() const { return m_control; }
    /// Refuses constants outside 0 to 1000.
    Status setControl(const Control &control);

    /// Starts the loop at the ambient temperature. Does nothing if it has been started.
    void switchOn();
    /// The temperature of what is cooled; the ambient temperature until the cooler is switched on.
    double temperature() const;

private:
    Setting constantRow(const char *key, float Control::*constant);
    template <class Member> Status change(Member &member, const Member &value);

    std::function<double(int64_t)> m_ambient;
    std::function<void()> m_changed;
    Between m_range;
    float m_setpoint;
    bool m_power = true;
    Control m_control;
    mutable std::optional<ThermoelectricLoop> m_loop;
};

} // namespace emulator
