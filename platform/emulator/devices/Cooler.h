#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/devices/StirlingLoop.h"
#include "platform/emulator/devices/ThermoelectricCooler.h"

#include <cstdint>
#include <memory>
#include <optional>

namespace emulator
{

class Environment;

/// The cooler of the detector, with the temperature of the detector. After the camera is switched on, the detector
/// cools from the ambient temperature towards the setpoint: by the control loop of a Stirling cooler (StirlingLoop), or
/// by a thermoelectric cooler (ThermoelectricCooler). It warms up while the cooler's power is off. Setpoint and power
/// of a Stirling cooler outlive the process; snapshots leave its power out, since loading an old state must not warm a
/// detector up. The temperature does not outlive the process. Without a cooler (None) the detector has the ambient
/// temperature.
class Cooler : public Device
{
public:
    enum Type : uint8_t { None = 0, Thermoelectric = 1, RotaryStirling = 2, LinearStirling = 3 };
    using Control = ThermoelectricCooler::Control;

    /// The name of a type as a static text, null for an unknown type.
    static const char *typeName(uint8_t type);

    /// Profile keys: "type"; "cold" in Kelvin (coldTemperature() is Absent without it); "noise" (Kelvin); of a
    /// thermoelectric cooler also the keys of ThermoelectricCooler, in Celsius; of a Stirling cooler "setpoint",
    /// "minimum" and "maximum" in Kelvin, "coolSeconds" (the time that full drive without losses takes to the
    /// setpoint), "warmSeconds" (time constant of the losses) and "power". Settings: "setpoint", "power" and, of a
    /// thermoelectric cooler, the constants of its regulator. The environment must exist before.
    Cooler(Camera &camera, Section &section);

    Type type() const { return m_type; }
    /// The temperature of the detector in Kelvin.
    float temperature() const;
    /// How often the cooler has begun to cool a detector that was more than 3 K warmer than its setpoint: when it was
    /// switched on, and after changes of power or setpoint.
    uint32_t coolDowns() const { return m_coolDowns; }
    /// The temperature in Kelvin at and below which the detector counts as cold. Absent if it is unknown.
    Status coldTemperature(float &kelvin) const;

    // The functions below are for the thermoelectric cooler of the camera: that of the detector or, with another cooler
    // of the detector, that of the flag. They are Absent if the camera has neither.

    /// The setpoint in Celsius. Refused out of its range, and if it is not finite.
    Status setpoint(float &celsius) const;
    Status setSetpoint(float celsius);

    Status power(bool &on) const;
    Status setPower(bool on);

    /// The constants of the regulator. Refused outside 0 to 1000.
    Status control(Control &values) const;
    Status setControl(const Control &values);

    void connectionChanged(bool connected) override;
    void catchUp() override;
    void expose(int preset, image::Exposure &exposure) const override;

private:
    /// The task of the cooler.
    struct Demand {
        bool cools = false;
        float setpoint = 0; ///< In the unit of the setting.
        bool operator==(const Demand &) const = default;
    };

    Demand demand() const;
    void addStirlingSettings(Section &section);
    /// The thermoelectric cooler of the detector or the flag; null if there is none.
    ThermoelectricCooler *thermoelectric() const;
    /// The temperature without cooling, at a time of Clock.
    double ambientKelvin(int64_t time) const;
    /// The temperature of the detector in Kelvin, without noise.
    double temperatureNow() const;
    bool isStirling() const { return m_type == RotaryStirling || m_type == LinearStirling; }
    /// Changes a setting of a Stirling cooler.
    template <class T> Status changeStirling(T &member, const T &value);

    const Environment &m_environment;
    Type m_type;
    double m_cold; ///< Kelvin; 0 if it is unknown.
    double m_noise;
    std::unique_ptr<ThermoelectricCooler> m_thermoelectric; ///< Of the detector; null with another cooler.

    bool m_switchedOn = false;
    Demand m_demand; ///< Of the last catchUp().
    uint32_t m_coolDowns = 0;

    // Of a Stirling cooler:
    float m_setpoint = 77; ///< Kelvin.
    double m_coolSeconds = 0;
    double m_warmSeconds = 0;
    bool m_power = true;
    mutable std::optional<StirlingLoop> m_loop; ///< Once it has been switched on.
};

} // namespace emulator
