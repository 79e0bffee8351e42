#include "platform/emulator/devices/Roic.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/changedValues.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/image/Exposure.h"

#include <algorithm>
#include <cmath>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

constexpr int usualPhaseShift = 40;

} // namespace

Roic::Roic(Camera &camera, Section &section)
    : Device(camera), m_sensor(*camera.device<Sensor>()), m_default(m_sensor.readoutConstants()),
      m_constants(m_default), m_set(m_default),
      m_bestPhaseShift(
          static_cast<uint32_t>(section.integer(u"bestClockPhaseShift"_s, usualPhaseShift, 0, int(maximumPhaseShift)))),
      m_phaseShift(m_bestPhaseShift)
{
    addConstants();
    addSettings(
        section,
        {
            Setting(u"clockPhaseShift"_s, m_phaseShift, Between{0, maximumPhaseShift}, Profile | Memory | OtherClient)
                .then([this] { remember(); }),
        });
    m_valuesOfProfile = Device::save();
}

/// Adds a constant twice: the memory has what was set, also while it is not in force, and clients change what is in
/// force.
template <class T>
void Roic::addConstant(const QString &key, T SensorReadout::Constants::*constant, const Rule<T> &rule)
{
    const auto mayChange = [this] { return m_override && !m_sensor.framesAreHeld(); };
    const auto changed = [this] {
        m_set = m_constants;
        useConstants();
    };
    T &set = m_set.*constant;
    T &inForce = m_constants.*constant;
    addSettings({
        {key, set, rule, Setting::Memory},
        Setting(key, inForce, rule, Setting::OtherClient).onlyIf(mayChange).then(changed),
    });
}

void Roic::addConstants()
{
    using Constants = SensorReadout::Constants;
    const Rule<uint32_t> widths = SensorReadout::integrationDeadWidths;
    const Rule<uint32_t> rows = SensorReadout::deadRows;
    addConstant<uint32_t>(u"lineDeadWidth"_s, &Constants::lineDeadWidth, SensorReadout::lineDeadWidths);
    addConstant(u"preIntDeadWidth"_s, &Constants::preIntDeadWidth, widths);
    addConstant(u"postIntDeadWidth"_s, &Constants::postIntDeadWidth, widths);
    addConstant(u"preDeadRows"_s, &Constants::preDeadRows, rows);
    addConstant(u"postDeadRows"_s, &Constants::postDeadRows, rows);
    addConstant(u"hasExtraLineSync"_s, &Constants::hasExtraLineSync, {});
    // After the constants, so that they are in place when the override comes back from the memory.
    addSettings({
        Setting(u"override"_s, m_override, Memory | OtherClient)
            .onlyIf([this] { return !m_sensor.framesAreHeld(); })
            .then([this] {
                m_constants = m_override ? m_set : m_default;
                useConstants();
            }),
    });
}

void Roic::useConstants()
{
    m_sensor.setReadoutConstants(m_constants);
    remember();
}

Status Roic::setOverride(uint8_t value) { return value > 1 ? Refused : assign(m_override, value == 1); }

Status Roic::setHasExtraLineSync(uint8_t value)
{
    return value > 1 ? Refused : assign(m_constants.hasExtraLineSync, value == 1);
}

QJsonObject Roic::save() const { return changedValues(Device::save(), m_valuesOfProfile); }

void Roic::expose(int, image::Exposure &exposure) const
{
    constexpr double doubling = 50;
    const double distance = std::abs(double(m_phaseShift) - double(m_bestPhaseShift));
    exposure.readout.clockNoise = std::min(1 + distance / doubling, image::Readout::maximumClockNoise);
}

} // namespace emulator
