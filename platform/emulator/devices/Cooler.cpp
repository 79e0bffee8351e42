#include "platform/emulator/devices/Cooler.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/Clock.h"
#include "platform/emulator/devices/Environment.h"
#include "platform/emulator/devices/noise.h"
#include "platform/emulator/image/Exposure.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

constexpr double zeroCelsius = 273.15;
constexpr double maximumNumber = 1e6;
constexpr std::array typeNames{"None", "Thermoelectric", "Rotary Stirling", "Linear Stirling"};
constexpr uint64_t noiseSeed = 1;

/// The range of the setpoint. Its ends are setpoints too, so they are values of a float.
Between readRange(Section &section, Cooler::Type type)
{
    const bool celsius = type == Cooler::Thermoelectric;
    const double minimum = section.number(u"minimum"_s, celsius ? -40 : 60, -zeroCelsius, maximumNumber);
    const double maximum = section.number(u"maximum"_s, celsius ? 40 : 120, minimum, maximumNumber);
    return {static_cast<float>(minimum), static_cast<float>(maximum)};
}

Cooler::Control readControl(Section section)
{
    const auto value = [&section](const char *key, double fallback) {
        return static_cast<float>(section.number(QLatin1String(key), fallback, -maximumNumber, maximumNumber));
    };
    const Cooler::Control control{value("kP", 1.5), value("kI", 0.25), value("kD", 0.05), value("kOff", 0)};
    section.finish();
    return control;
}

} // namespace

const char *Cooler::typeName(uint8_t type) { return type < typeNames.size() ? typeNames[type] : nullptr; }

Cooler::Cooler(Camera &camera, Section &section)
    : Device(camera), m_environment(*camera.device<Environment>()),
      m_type(static_cast<Type>(section.integer(u"type"_s, LinearStirling, None, LinearStirling))),
      m_cold(section.number(u"cold"_s, 0, 0, maximumNumber)), m_range(readRange(section, m_type)),
      m_setpoint(
          static_cast<float>(std::clamp(m_type == Thermoelectric ? 10.0 : 77.0, m_range.minimum, m_range.maximum))),
      m_coolSeconds(section.number(u"coolSeconds"_s, isStirling() ? 55 : 30, 0.001, maximumNumber)),
      m_warmSeconds(section.number(u"warmSeconds"_s, isStirling() ? 1800 : 120, 0.001, maximumNumber)),
      m_noise(section.number(u"noise"_s, 0.02, 0, maximumNumber)), m_control(readControl(section.section(u"control"_s)))
{
    const auto hasCooler = [this] { return m_type != None; };
    addSettings(
        section,
        {
            Setting(u"kP"_s, m_control.kP, Snapshot).onlyIf(hasCooler),
            Setting(u"kI"_s, m_control.kI, Snapshot).onlyIf(hasCooler),
            Setting(u"kD"_s, m_control.kD, Snapshot).onlyIf(hasCooler),
            Setting(u"kOff"_s, m_control.kOff, Snapshot).onlyIf(hasCooler),
            {u"setpoint"_s, m_setpoint, m_range, Profile},
            Setting(
                u"setpoint"_s, [this] { return m_setpoint; }, [this](float value) { return setSetpoint(value); },
                m_range, Snapshot | OtherClient)
                .onlyIf(hasCooler),
            {u"power"_s, m_power, Profile},
            Setting(
                u"power"_s, [this] { return m_power; }, [this](bool on) { return setPower(on); }, Memory | OtherClient)
                .onlyIf(hasCooler),
        });
}

float Cooler::temperature() const
{
    return static_cast<float>(std::max(0.0, temperatureNow() + m_noise * noise(noiseSeed, Clock::now())));
}

Status Cooler::coldTemperature(float &kelvin) const
{
    if (m_cold <= 0)
        return Absent;
    kelvin = static_cast<float>(m_cold);
    return Ok;
}

Status Cooler::setpoint(float &value) const
{
    if (m_type == None)
        return Absent;
    value = m_setpoint;
    return Ok;
}

Status Cooler::setSetpoint(float value)
{
    if (m_type == None)
        return Absent;
    if (!m_range.holds(value))
        return Refused;
    const double present = temperatureNow();
    m_setpoint = value;
    startFrom(present);
    remember();
    return Ok;
}

Status Cooler::power(bool &on) const
{
    if (m_type == None)
        return Absent;
    on = m_power;
    return Ok;
}

Status Cooler::setPower(bool on)
{
    if (m_type == None)
        return Absent;
    const double present = temperatureNow();
    m_power = on;
    startFrom(present);
    remember();
    return Ok;
}

Status Cooler::control(Control &values) const
{
    if (m_type == None)
        return Absent;
    values = m_control;
    return Ok;
}

Status Cooler::setControl(const Control &values)
{
    if (m_type == None)
        return Absent;
    for (const float value : {values.kP, values.kI, values.kD, values.kOff})
        if (!std::isfinite(value))
            return Refused;
    m_control = values;
    remember();
    return Ok;
}

void Cooler::connectionChanged(bool connected)
{
    if (connected && !m_switchedOn) {
        m_switchedOn = true;
        startFrom(ambientKelvin());
        if (isStirling())
            m_loop.emplace(ambientKelvin(), m_startTime);
    }
}

void Cooler::expose(int, image::Exposure &exposure) const
{
    image::Readout &readout = exposure.readout;
    const double cold = isStirling() && m_cold > 0 ? m_cold : setpointKelvin();
    readout.cooling = isStirling() ? image::Readout::Stirling
        : m_type == Thermoelectric ? image::Readout::Thermoelectric
                                   : image::Readout::Uncooled;
    readout.warmth = temperatureNow() - cold;
}

double Cooler::setpointKelvin() const { return m_type == Thermoelectric ? m_setpoint + zeroCelsius : m_setpoint; }

double Cooler::temperatureNow() const
{
    if (m_type == None || !m_switchedOn)
        return ambientKelvin();
    if (m_loop)
        return m_loop->temperature({m_power, ambientKelvin(), m_setpoint, m_coolSeconds, m_warmSeconds}, Clock::now());
    const double seconds = static_cast<double>(std::max<int64_t>(0, Clock::now() - m_startTime)) / 1000;
    return target() + m_startDifference * std::exp(-seconds / (m_power ? m_coolSeconds : m_warmSeconds));
}

double Cooler::ambientKelvin() const { return m_environment.laggedAmbient() + zeroCelsius; }

double Cooler::target() const { return m_power ? setpointKelvin() : ambientKelvin(); }

void Cooler::startFrom(double kelvin)
{
    m_startDifference = kelvin - target();
    m_startTime = Clock::now();
}

} // namespace emulator
