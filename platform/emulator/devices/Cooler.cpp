#include "platform/emulator/devices/Cooler.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/Clock.h"
#include "platform/emulator/devices/Environment.h"
#include "platform/emulator/devices/Flag.h"
#include "platform/emulator/devices/advanceLoop.h"
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

} // namespace

const char *Cooler::typeName(uint8_t type) { return type < typeNames.size() ? typeNames[type] : nullptr; }

Cooler::Cooler(Camera &camera, Section &section)
    : Device(camera), m_environment(*camera.device<Environment>()),
      m_type(static_cast<Type>(section.integer(u"type"_s, LinearStirling, None, LinearStirling))),
      m_cold(section.number(u"cold"_s, 0, 0, maximumNumber)),
      m_noise(section.number(u"noise"_s, 0.02, 0, maximumNumber))
{
    camera.device<Environment>()->beforeChange([this] { temperatureNow(); });
    if (m_type != Thermoelectric) {
        addStirlingSettings(section);
        return;
    }
    constexpr Between range{-40, 40};
    constexpr double setpoint = 10;
    m_thermoelectric = std::make_unique<ThermoelectricCooler>(
        section, range, setpoint, [this](int64_t time) { return m_environment.laggedAmbient(time); },
        [this] { remember(); });
    addSettings(section, m_thermoelectric->settings());
}

// A camera without a cooler has the keys, too, since profiles inherit them.
void Cooler::addStirlingSettings(Section &section)
{
    const double minimum = section.number(u"minimum"_s, 60, 0, maximumNumber);
    const double maximum = section.number(u"maximum"_s, std::max(minimum, 120.0), minimum, maximumNumber);
    // The ends of the range are setpoints too, so they are values of a float.
    const Between range{static_cast<float>(minimum), static_cast<float>(maximum)};
    m_setpoint = static_cast<float>(std::clamp<double>(m_setpoint, range.minimum, range.maximum));
    m_coolSeconds = section.number(u"coolSeconds"_s, 55, 0.001, maximumNumber);
    m_warmSeconds = section.number(u"warmSeconds"_s, 1800, 0.001, maximumNumber);
    addSettings(
        section,
        {
            {u"setpoint"_s, m_setpoint, range, Profile},
            Setting(
                u"setpoint"_s, [this] { return m_setpoint; },
                [this](float kelvin) { return changeStirling(m_setpoint, kelvin); }, range, Snapshot | OtherClient)
                .onlyIf([this] { return isStirling(); }),
            {u"power"_s, m_power, Profile},
            Setting(
                u"power"_s, [this] { return m_power; }, [this](bool on) { return changeStirling(m_power, on); },
                Memory | OtherClient)
                .onlyIf([this] { return isStirling(); }),
        });
}

/// The loop first advances to the present time with the old setting.
template <class T> Status Cooler::changeStirling(T &member, const T &value)
{
    temperatureNow();
    member = value;
    remember();
    return Ok;
}

float Cooler::temperature() const
{
    return static_cast<float>(std::max(0.0, temperatureNow() + m_noise * noise(noiseSeed, Clock::now())));
}

Cooler::Demand Cooler::demand() const
{
    if (m_thermoelectric)
        return {m_switchedOn && m_thermoelectric->power(), m_thermoelectric->setpoint()};
    return {m_switchedOn && isStirling() && m_power, m_setpoint};
}

/// Only a change of the demand begins a cool-down, so the temperature is not computed in each call.
void Cooler::catchUp()
{
    const Demand now = demand();
    if (now == m_demand)
        return;
    const double temperature = m_thermoelectric ? m_thermoelectric->temperature() : temperatureNow();
    const auto isTooWarmFor = [temperature](const Demand &demand) {
        constexpr double tolerance = 3; // Kelvin.
        return demand.cools && temperature > demand.setpoint + tolerance;
    };
    if (isTooWarmFor(now) && !isTooWarmFor(m_demand))
        ++m_coolDowns;
    m_demand = now;
}

Status Cooler::coldTemperature(float &kelvin) const
{
    if (m_cold <= 0)
        return Absent;
    kelvin = static_cast<float>(m_cold);
    return Ok;
}

ThermoelectricCooler *Cooler::thermoelectric() const
{
    if (m_thermoelectric)
        return m_thermoelectric.get();
    const auto *flag = camera().device<Flag>();
    return flag ? flag->cooler() : nullptr;
}

Status Cooler::setpoint(float &celsius) const
{
    const auto *const cooler = thermoelectric();
    if (!cooler)
        return Absent;
    celsius = cooler->setpoint();
    return Ok;
}

Status Cooler::setSetpoint(float celsius)
{
    auto *const cooler = thermoelectric();
    return cooler ? cooler->setSetpoint(celsius) : Absent;
}

Status Cooler::power(bool &on) const
{
    const auto *const cooler = thermoelectric();
    if (!cooler)
        return Absent;
    on = cooler->power();
    return Ok;
}

Status Cooler::setPower(bool on)
{
    auto *const cooler = thermoelectric();
    return cooler ? cooler->setPower(on) : Absent;
}

Status Cooler::control(Control &values) const
{
    const auto *const cooler = thermoelectric();
    if (!cooler)
        return Absent;
    values = cooler->control();
    return Ok;
}

Status Cooler::setControl(const Control &values)
{
    auto *const cooler = thermoelectric();
    return cooler ? cooler->setControl(values) : Absent;
}

void Cooler::connectionChanged(bool connected)
{
    if (!connected)
        return;
    m_switchedOn = true;
    if (m_thermoelectric)
        m_thermoelectric->switchOn();
    else if (isStirling() && !m_loop)
        m_loop.emplace(ambientKelvin(Clock::now()), Clock::now());
    catchUp();
}

void Cooler::expose(int, image::Exposure &exposure) const
{
    image::Readout &readout = exposure.readout;
    if (isStirling()) {
        readout.cooling = image::Readout::Stirling;
        readout.warmth = temperatureNow() - (m_cold > 0 ? m_cold : m_setpoint);
    } else if (m_thermoelectric) {
        readout.cooling = image::Readout::Thermoelectric;
        readout.warmth = m_thermoelectric->temperature() - m_thermoelectric->setpoint();
    } else {
        readout.cooling = image::Readout::Uncooled;
    }
}

double Cooler::ambientKelvin(int64_t time) const { return m_environment.laggedAmbient(time) + zeroCelsius; }

double Cooler::temperatureNow() const
{
    const int64_t now = Clock::now();
    if (m_thermoelectric)
        return m_thermoelectric->temperature() + zeroCelsius;
    if (!m_loop)
        return ambientKelvin(now);
    return advanceLoop(*m_loop, now, [this](int64_t time) {
        return StirlingLoop::Conditions{m_power, ambientKelvin(time), m_setpoint, m_coolSeconds, m_warmSeconds};
    });
}

} // namespace emulator
