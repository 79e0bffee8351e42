#include "platform/emulator/devices/Zoom.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/settings.h"

#include <algorithm>
#include <cmath>

namespace emulator
{

namespace
{

const auto positionKey = QStringLiteral("position");

Motor makeMotor(Section &section, uint32_t minimum, uint32_t maximum)
{
    constexpr double usualSpeed = 4000;
    // The encoder knows no negative counts.
    const double overtravel = section.integer(QStringLiteral("overtravel"), 0, 0, static_cast<int>(minimum));
    return Motor::fromProfile(section, {minimum - overtravel, maximum + overtravel}, usualSpeed,
                              {double(minimum), double(maximum)}, minimum);
}

} // namespace

Zoom::Zoom(Camera &camera, Section &section)
    : Device(camera), m_minimum(Motor::counts(section, QStringLiteral("minimum"), 500, 0)),
      m_maximum(Motor::counts(section, QStringLiteral("maximum"), std::max(m_minimum, 10'000U), m_minimum)),
      m_percent(section.flag(QStringLiteral("percent"), false)), m_motor(makeMotor(section, m_minimum, m_maximum))
{
}

uint32_t Zoom::position() const { return static_cast<uint32_t>(std::llround(m_motor.position())); }

uint32_t Zoom::commandedPosition() const
{
    return static_cast<uint32_t>(std::llround(m_motor.goal().value_or(m_motor.position())));
}

double Zoom::narrowness() const { return narrownessAt(m_motor.position()); }

double Zoom::restingNarrowness() const { return narrownessAt(m_motor.restingPosition()); }

Status Zoom::move(int32_t speed) { return movePart(Motor::partOfStep(speed)); }

Status Zoom::movePercent(float percent) { return m_percent ? movePart(Motor::partOfPercent(percent)) : Absent; }

Status Zoom::moveTo(uint32_t position)
{
    if (position < m_minimum || position > m_maximum)
        return Refused;
    m_motor.travelTo(position);
    return Ok;
}

Status Zoom::goTo(uint32_t position)
{
    const Status status = moveTo(position);
    return status == Ok ? awaitRest() : status;
}

QJsonObject Zoom::save() const { return {{positionKey, std::round(m_motor.restingPosition())}}; }

void Zoom::restore(const QJsonObject &values)
{
    const auto position = settingAs<uint32_t>(values.value(positionKey).toVariant());
    // While the camera is off, the lens is where it was left.
    if (position && moveTo(*position) == Ok && !camera().connected())
        m_motor.place(*position);
}

void Zoom::connectionChanged(bool connected)
{
    if (!connected)
        m_motor.halt();
}

bool Zoom::set(const QString &name, const QVariant &value)
{
    const auto position = settingAs<uint32_t>(value);
    return name == positionKey && position && moveTo(*position) == Ok;
}

Status Zoom::movePart(std::optional<double> part)
{
    if (!part)
        return Refused;
    m_motor.move(*part, *part < 0 ? m_minimum : m_maximum);
    return Ok;
}

double Zoom::narrownessAt(double position) const
{
    return m_maximum > m_minimum ? std::clamp((position - m_minimum) / (m_maximum - m_minimum), 0.0, 1.0) : 0;
}

} // namespace emulator
