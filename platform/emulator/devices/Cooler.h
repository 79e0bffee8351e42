#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/devices/StirlingLoop.h"

#include <cstdint>
#include <optional>

namespace emulator
{

class Environment;

/// The cooler of the detector, with the temperature of the detector. After the camera is switched on, the detector
/// cools from the ambient temperature towards the setpoint: by the control loop of a Stirling cooler (StirlingLoop), or
/// exponentially by a thermoelectric cooler. It warms up while the cooler's power is off. Setpoint, power and control
/// parameters outlive the process; the temperature does not. Snapshots leave the power out, since loading an old state
/// must not warm a detector up. Without a cooler (None) the detector has the ambient temperature, and setpoint, power
/// and control parameters are Absent.
class Cooler : public Device
{
public:
    enum Type : uint8_t { None = 0, Thermoelectric = 1, RotaryStirling = 2, LinearStirling = 3 };

    /// The name of a type as a static text, null for an unknown type.
    static const char *typeName(uint8_t type);

    /// The parameters of the control loop. They are kept, but the emulated loops do not use them.
    struct Control {
        float kP;
        float kI;
        float kD;
        float kOff;
    };

    /// Profile keys: "type"; "cold" in Kelvin (coldTemperature() is Absent without it); "setpoint",
    /// "minimum", "maximum" in the unit of the setpoint; "coolSeconds" (the time constant of a thermoelectric cooler;
    /// of a Stirling cooler, the time that full drive without losses takes to the setpoint); "warmSeconds" (time
    /// constant); "noise" (Kelvin); "power"; "control" ("kP", "kI", "kD", "kOff"). Settings: "setpoint", "power". The
    /// environment must exist before.
    Cooler(Camera &camera, Section &section);

    Type type() const { return m_type; }
    /// The temperature of the detector in Kelvin.
    float temperature() const;
    /// The temperature in Kelvin at and below which the detector counts as cold. Absent if it is unknown.
    Status coldTemperature(float &kelvin) const;

    /// The setpoint, in Celsius for a thermoelectric cooler and in Kelvin for the others. Refused outside "minimum" to
    /// "maximum".
    Status setpoint(float &value) const;
    Status setSetpoint(float value);

    Status power(bool &on) const;
    Status setPower(bool on);

    /// The parameters of the control loop. Values that are not finite are refused.
    Status control(Control &values) const;
    Status setControl(const Control &values);

    void connectionChanged(bool connected) override;
    void expose(int preset, image::Exposure &exposure) const override;

private:
    double setpointKelvin() const;
    double ambientKelvin() const;
    /// The temperature to which the detector goes without a control loop, in Kelvin.
    double target() const;
    /// The temperature of the detector without noise, in Kelvin.
    double temperatureNow() const;
    bool isStirling() const { return m_type == RotaryStirling || m_type == LinearStirling; }
    /// Starts the change from this temperature to the present target.
    void startFrom(double kelvin);

    const Environment &m_environment;
    Type m_type;
    double m_cold; ///< 0 if it is unknown.
    Between m_range; ///< The range of the setpoint.
    float m_setpoint;
    double m_coolSeconds;
    double m_warmSeconds;
    double m_noise;
    bool m_power = true;
    Control m_control;

    // Without a Stirling cooler, the difference from the target decays exponentially since m_startTime. This is the
    // time of the last change of the power or the setpoint, or the time at which the camera was switched on.
    double m_startDifference = 0;
    int64_t m_startTime = 0;
    bool m_switchedOn = false;
    mutable std::optional<StirlingLoop> m_loop; ///< Of a Stirling cooler that has been switched on.
};

} // namespace emulator
