#pragma once

#include "platform/emulator/Device.h"

#include <cstdint>

namespace emulator
{

/// The temperature of the detector, and the cooler that controls it. After the camera is switched on, the detector
/// cools down from ambient towards the setpoint; it warms up again while the cooler's power is off. Setpoint, power and
/// control values outlive the process; the temperature does not.
class Cooler : public Device
{
public:
    enum Type : uint8_t { None = 0, Thermoelectric = 1, RotaryStirling = 2, LinearStirling = 3 };

    /// The name of a type, null for an unknown type. Static text.
    static const char *typeName(uint8_t type);

    /// The parameters of the control loop.
    struct Control {
        float kP;
        float kI;
        float kD;
        float kOff;
    };

    /// Profile keys: "type"; "ambient", "cold" (the working temperature, unknown without it) in Kelvin; "setpoint",
    /// "minimum", "maximum" in the unit of the setpoint; "coolSeconds", "warmSeconds" (time constants); "noise"
    /// (Kelvin); "power"; "control" (kP, kI, kD, kOff). Settings: "setpoint", "power".
    Cooler(Camera &camera, Section &section);

    Type type() const { return m_type; }
    /// The temperature of the detector, Kelvin.
    float temperature() const;
    /// The temperature, Kelvin, at and below which the detector works. Absent if it is unknown.
    Status coldTemperature(float &kelvin) const;

    /// Celsius for a thermoelectric cooler, Kelvin for any other. Refused outside "minimum" to "maximum".
    Status setpoint(float &value) const;
    Status setSetpoint(float value);

    Status power(bool &on) const;
    Status setPower(bool on);

    Status control(Control &values) const;
    Status setControl(const Control &values);

    void connectionChanged(bool connected) override;

private:
    double setpointKelvin() const;
    double temperatureNow() const;
    void rebase();

    Type m_type;
    double m_ambient;
    double m_cold; ///< 0: unknown.
    Between m_range; ///< Of the setpoint.
    float m_setpoint;
    double m_coolSeconds;
    double m_warmSeconds;
    double m_noise;
    bool m_power = true;
    Control m_control;

    // The temperature changes exponentially from m_from since m_since, when the power or the setpoint was changed or
    // the camera was switched on.
    double m_from;
    int64_t m_since = 0;
    bool m_switchedOn = false;
};

} // namespace emulator
