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

    /// Regulates to this temperature, or the nearest one in the range, with power on, instead of to the setpoint; again
    /// to the setpoint without a value. Changes no setting.
    void holdAt(std::optional<float> celsius);
    bool stuck() const { return m_stuck; }
    /// A fault: while there is power, the temperature rises by 1 K/s.
    void setStuck(bool stuck);

    /// Starts the loop at the ambient temperature. Does nothing if it has been started.
    void switchOn();
    /// The temperature of what is cooled; the ambient temperature until the cooler is switched on.
    double temperature() const;
    /// The same at a time of Clock up to now. It is at least the time of the last read, since the temperature before it
    /// is no longer known.
    double temperature(int64_t time) const;

private:
    Setting constantRow(const char *key, float Control::*constant);
    template <class Member> Status change(Member &member, const Member &value);
    double advanceTo(int64_t now) const;

    std::function<double(int64_t)> m_ambient;
    std::function<void()> m_changed;
    Between m_range;
    float m_setpoint;
    bool m_power = true;
    bool m_stuck = false;
    std::optional<float> m_heldAt; ///< Instead of the setpoint, with power on.
    Control m_control;
    mutable std::optional<ThermoelectricLoop> m_loop;
};

} // namespace emulator
