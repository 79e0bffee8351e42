#include "platform/emulator/devices/Zoom.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/image/Exposure.h"

#include <algorithm>
#include <cmath>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

Motor makeMotor(Section &section, uint32_t minimum, uint32_t maximum)
{
    constexpr double defaultSpeed = 4000;
    // The encoder has no negative counts.
    const double overtravel = section.integer(u"overtravel"_s, 0, 0, static_cast<int>(minimum));
    return Motor::fromProfile(section, {minimum - overtravel, maximum + overtravel}, defaultSpeed,
                              {double(minimum), double(maximum)}, minimum);
}

} // namespace

Zoom::Zoom(Camera &camera, Section &section)
    : Device(camera), m_minimum(Motor::counts(section, u"minimum"_s, 500, 0)),
      m_maximum(Motor::counts(section, u"maximum"_s, std::max(m_minimum, 10'000U), m_minimum)),
      m_percent(section.flag(u"percent"_s, false)), m_motor(makeMotor(section, m_minimum, m_maximum))
{
    const QString key = u"position"_s;
    // A lens that coasts past its range is brought back into it when it is restored.
    const auto restingInRange = [this] {
        return std::clamp(static_cast<uint32_t>(std::llround(m_motor.restingPosition())), m_minimum, m_maximum);
    };
    addSettings(
        section,
        {
            {key, restingInRange, [this](uint32_t position) { return restorePosition(position); }, range(), Snapshot},
            {key, [this] { return position(); }, [this](uint32_t position) { return moveTo(position); }, range(),
             OtherClient},
        });
}

uint32_t Zoom::position() const { return static_cast<uint32_t>(std::llround(m_motor.position())); }

uint32_t Zoom::commandedPosition() const
{
    return static_cast<uint32_t>(std::llround(m_motor.target().value_or(m_motor.position())));
}

double Zoom::narrowness() const { return narrownessAt(m_motor.position()); }

double Zoom::restingNarrowness() const { return narrownessAt(m_motor.restingPosition()); }

Status Zoom::move(int32_t speed) { return moveBySpeed(Motor::speedFractionOfStep(speed)); }

Status Zoom::movePercent(float percent)
{
    return m_percent ? moveBySpeed(Motor::speedFractionOfPercent(percent)) : Absent;
}

Status Zoom::moveTo(uint32_t position)
{
    if (!range().holds(position))
        return Refused;
    m_motor.moveTo(position);
    return Ok;
}

Status Zoom::goTo(uint32_t position)
{
    const Status status = moveTo(position);
    return status == Ok ? awaitRest() : status;
}

void Zoom::connectionChanged(bool connected)
{
    if (!connected)
        m_motor.halt();
}

void Zoom::expose(int, image::Exposure &exposure) const
{
    exposure.optics.magnification = image::Optics::magnificationOf(narrowness());
}

Status Zoom::restorePosition(uint32_t position)
{
    const Status status = moveTo(position);
    // The lens does not move while the camera is off.
    if (status == Ok && !camera().connected())
        m_motor.setPosition(position);
    return status;
}

Status Zoom::moveBySpeed(std::optional<double> fraction)
{
    if (!fraction)
        return Refused;
    m_motor.moveBySpeed(*fraction, *fraction < 0 ? m_minimum : m_maximum);
    return Ok;
}

double Zoom::narrownessAt(double position) const
{
    return m_maximum > m_minimum ? std::clamp((position - m_minimum) / (m_maximum - m_minimum), 0.0, 1.0) : 0;
}

} // namespace emulator
