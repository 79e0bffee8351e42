#include "platform/emulator/devices/Cooler.h"

#include "platform/emulator/Clock.h"
#include "platform/emulator/devices/noise.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace emulator
{

namespace
{

constexpr double zeroCelsius = 273.15;
constexpr double hottest = 1e6;
constexpr std::array typeNames{"None", "Thermoelectric", "Rotary Stirling", "Linear Stirling"};
constexpr uint64_t noiseSeed = 1;

Cooler::Control readControl(Section section)
{
    const auto value = [&section](const char *key, double fallback) {
        return static_cast<float>(section.number(QLatin1String(key), fallback, -hottest, hottest));
    };
    const Cooler::Control control{value("kP", 1.5), value("kI", 0.25), value("kD", 0.05), value("kOff", 0)};
    section.finish();
    return control;
}

} // namespace

const char *Cooler::typeName(uint8_t type) { return type < typeNames.size() ? typeNames[type] : nullptr; }

Cooler::Cooler(Camera &camera, Section &section)
    : Device(camera),
      m_type(static_cast<Type>(section.integer(QStringLiteral("type"), LinearStirling, None, LinearStirling))),
      m_ambient(section.number(QStringLiteral("ambient"), 296.15, 0, hottest)),
      m_cold(section.number(QStringLiteral("cold"), 0, 0, hottest)),
      m_minimum(section.number(QStringLiteral("minimum"), m_type == Thermoelectric ? -40 : 60, -zeroCelsius, hottest)),
      m_maximum(section.number(QStringLiteral("maximum"), m_type == Thermoelectric ? 40 : 120, m_minimum, hottest)),
      m_setpoint(static_cast<float>(section.number(
          QStringLiteral("setpoint"), std::clamp(m_type == Thermoelectric ? 10.0 : 77.0, m_minimum, m_maximum),
          m_minimum, m_maximum))),
      m_coolSeconds(section.number(QStringLiteral("coolSeconds"), 30, 0.001, hottest)),
      m_warmSeconds(section.number(QStringLiteral("warmSeconds"), 120, 0.001, hottest)),
      m_noise(section.number(QStringLiteral("noise"), 0.02, 0, hottest)),
      m_power(section.flag(QStringLiteral("power"), true)),
      m_control(readControl(section.section(QStringLiteral("control")))), m_from(m_ambient)
{
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
    // Written so that a NaN is refused too.
    if (!(value >= m_minimum && value <= m_maximum))
        return Refused;
    rebase();
    m_setpoint = value;
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
    rebase();
    m_power = on;
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

QJsonObject Cooler::save() const
{
    return {{QStringLiteral("power"), m_power},   {QStringLiteral("setpoint"), m_setpoint},
            {QStringLiteral("kP"), m_control.kP}, {QStringLiteral("kI"), m_control.kI},
            {QStringLiteral("kD"), m_control.kD}, {QStringLiteral("kOff"), m_control.kOff}};
}

void Cooler::restore(const QJsonObject &values)
{
    const auto number = [&values](const char *key, float fallback) {
        return static_cast<float>(values.value(QLatin1String(key)).toDouble(fallback));
    };
    setControl({number("kP", m_control.kP), number("kI", m_control.kI), number("kD", m_control.kD),
                number("kOff", m_control.kOff)});
    setSetpoint(number("setpoint", m_setpoint));
    setPower(values.value(QLatin1String("power")).toBool(m_power));
}

void Cooler::connectionChanged(bool connected)
{
    if (connected && !m_switchedOn) {
        m_switchedOn = true;
        m_since = Clock::now();
    }
}

bool Cooler::set(const QString &name, const QVariant &value)
{
    if (name == QLatin1String("power"))
        return value.typeId() == QMetaType::Bool && setPower(value.toBool()) == Ok;
    bool isNumber = false;
    const float number = value.toFloat(&isNumber);
    return name == QLatin1String("setpoint") && isNumber && setSetpoint(number) == Ok;
}

double Cooler::setpointKelvin() const { return m_type == Thermoelectric ? m_setpoint + zeroCelsius : m_setpoint; }

double Cooler::temperatureNow() const
{
    if (m_type == None || !m_switchedOn)
        return m_from;
    const double target = m_power ? setpointKelvin() : m_ambient;
    const double seconds = static_cast<double>(std::max<int64_t>(0, Clock::now() - m_since)) / 1000;
    return target + (m_from - target) * std::exp(-seconds / (m_power ? m_coolSeconds : m_warmSeconds));
}

void Cooler::rebase()
{
    m_from = temperatureNow();
    m_since = Clock::now();
}

} // namespace emulator
