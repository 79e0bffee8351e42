#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/Gate.h"
#include "platform/emulator/Section.h"

#include <cstdint>

namespace emulator
{

/// The detector's temperature, and the cooler that holds it. From the camera's switching on, the detector cools down
/// from ambient towards the setpoint, and warms up again while the cooler's power is off. Setpoint, power and control
/// values outlive the process; the detector's temperature does not.
class Cooler : public Device
{
public:
    enum Type : uint8_t { None = 0, Thermoelectric = 1, RotaryStirling = 2, LinearStirling = 3 };

    /// The name of a type, null for a type that there is not. Static text.
    static const char *typeName(uint8_t type);

    /// What a cooler's regulator works with.
    struct Control {
        float kP;
        float kI;
        float kD;
        float kOff;
    };

    /// Knows in the profile: "type"; "ambient", "cold" (the working temperature, not told without it) in Kelvin;
    /// "setpoint", "minimum", "maximum" in the setpoint's unit; "coolSeconds", "warmSeconds" (time constants); "noise"
    /// (Kelvin); "power"; "control" (kP, kI, kD, kOff).
    Cooler(Camera &camera, Section &section);

    Type type() const { return m_type; }
    /// Kelvin, whatever the cooler.
    float temperature() const;
    /// The detector works at this temperature, Kelvin, and below.
    Status coldTemperature(float &kelvin) const;

    /// Celsius for a thermoelectric cooler, Kelvin for any other. Refuses what the cooler cannot reach.
    Status setpoint(float &value) const;
    Status setSetpoint(float value);

    Status power(bool &on) const;
    Status setPower(bool on);

    Status control(Control &values) const;
    Status setControl(const Control &values);

    QJsonObject save() const override;
    void restore(const QJsonObject &values) override;
    void connectionChanged(bool connected) override;
    /// "setpoint" or "power".
    bool set(const QString &name, const QVariant &value) override;

private:
    double setpointKelvin() const;
    double temperatureNow() const;
    void rebase();

    Type m_type;
    double m_ambient;
    double m_cold; ///< 0: the camera does not tell.
    double m_minimum;
    double m_maximum;
    float m_setpoint;
    double m_coolSeconds;
    double m_warmSeconds;
    double m_noise;
    bool m_power;
    Control m_control;

    // The temperature moves exponentially from here; the power or the setpoint was changed, or the camera switched on,
    // then.
    double m_from;
    int64_t m_since = 0;
    bool m_switchedOn = false;
};

} // namespace emulator
