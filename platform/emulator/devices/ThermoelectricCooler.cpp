#include "platform/emulator/devices/ThermoelectricCooler.h"

#include "platform/emulator/Clock.h"
#include "platform/emulator/Section.h"
#include "platform/emulator/devices/advanceLoop.h"

#include <algorithm>
#include <utility>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

constexpr double zeroKelvin = -273.15;
constexpr double maximumNumber = 1e6;
constexpr Between constants{0, 1000};

/// The ends of the range are setpoints too, so they are values of a float.
Between readRange(Section &section, Between fallback)
{
    const double minimum = section.number(u"minimum"_s, fallback.minimum, zeroKelvin, maximumNumber);
    const double maximum = section.number(u"maximum"_s, std::max(minimum, fallback.maximum), minimum, maximumNumber);
    return {static_cast<float>(minimum), static_cast<float>(maximum)};
}

ThermoelectricLoop::Control readControl(Section section)
{
    const auto value = [&section](const char *key, float fallback) {
        return static_cast<float>(section.number(QLatin1String(key), fallback, constants.minimum, constants.maximum));
    };
    ThermoelectricLoop::Control control;
    control = {value("kP", control.kP), value("kI", control.kI), value("kD", control.kD), value("kOff", control.kOff)};
    section.finish();
    return control;
}

} // namespace

ThermoelectricCooler::ThermoelectricCooler(Section &section, Between range, double setpoint,
                                           std::function<double(int64_t)> ambient, std::function<void()> changed)
    : m_ambient(std::move(ambient)), m_changed(std::move(changed)), m_range(readRange(section, range)),
      m_setpoint(static_cast<float>(std::clamp(setpoint, m_range.minimum, m_range.maximum))),
      m_control(readControl(section.section(u"control"_s)))
{
}

Setting ThermoelectricCooler::constantRow(const char *key, float Control::*constant)
{
    const auto set = [this, constant](float value) {
        Control control = m_control;
        control.*constant = value;
        return setControl(control);
    };
    return Setting(
        QLatin1String(key), [this, constant] { return m_control.*constant; }, set, constants,
        Setting::Memory | Setting::OtherClient);
}

std::vector<Setting> ThermoelectricCooler::settings()
{
    const auto uses = Setting::Memory | Setting::OtherClient;
    return {
        {u"setpoint"_s, m_setpoint, m_range, Setting::Profile},
        Setting(
            u"setpoint"_s, [this] { return m_setpoint; }, [this](float celsius) { return setSetpoint(celsius); },
            m_range, uses),
        {u"power"_s, m_power, Setting::Profile},
        Setting(
            u"power"_s, [this] { return m_power; }, [this](bool on) { return setPower(on); }, uses),
        constantRow("kP", &Control::kP),
        constantRow("kI", &Control::kI),
        constantRow("kD", &Control::kD),
        constantRow("kOff", &Control::kOff),
    };
}

/// The loop first advances to the present time with the old settings.
template <class Member> Status ThermoelectricCooler::change(Member &member, const Member &value)
{
    temperature();
    member = value;
    m_changed();
    return Ok;
}

Status ThermoelectricCooler::setSetpoint(float celsius)
{
    return m_range.holds(celsius) ? change(m_setpoint, celsius) : Refused;
}

Status ThermoelectricCooler::setPower(bool on) { return change(m_power, on); }

Status ThermoelectricCooler::setControl(const Control &control)
{
    for (const float value : {control.kP, control.kI, control.kD, control.kOff})
        if (!constants.holds(value))
            return Refused;
    return change(m_control, control);
}

void ThermoelectricCooler::switchOn()
{
    if (!m_loop)
        m_loop.emplace(m_ambient(Clock::now()), Clock::now());
}

void ThermoelectricCooler::holdAt(std::optional<float> celsius)
{
    temperature();
    m_heldAt = celsius;
    if (m_heldAt)
        m_heldAt = std::clamp(*m_heldAt, static_cast<float>(m_range.minimum), static_cast<float>(m_range.maximum));
}

void ThermoelectricCooler::setStuck(bool stuck)
{
    temperature();
    m_stuck = stuck;
}

double ThermoelectricCooler::temperature() const { return m_loop ? advanceTo(Clock::now()) : m_ambient(Clock::now()); }

double ThermoelectricCooler::temperature(int64_t time) const
{
    return m_loop ? advanceTo(std::min(std::max(time, m_loop->time()), Clock::now())) : m_ambient(time);
}

double ThermoelectricCooler::advanceTo(int64_t now) const
{
    return advanceLoop(*m_loop, now, [this](int64_t time) {
        return ThermoelectricLoop::Conditions{m_power || m_heldAt, m_ambient(time), m_heldAt.value_or(m_setpoint),
                                              m_control, m_stuck};
    });
}

} // namespace emulator
