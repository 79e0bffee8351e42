#include "platform/emulator/devices/Focus.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/Athermalization.h"
#include "platform/emulator/devices/AutoFocus.h"
#include "platform/emulator/devices/FieldOfView.h"
#include "platform/emulator/devices/Zoom.h"
#include "platform/emulator/image/Exposure.h"

#include <algorithm>
#include <cmath>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

constexpr uint8_t onlyField = 2;

std::vector<double> distances(Section &section, const QString &key, const QList<double> &fallback)
{
    const QList<double> metres = section.numbers(key, fallback);
    if (metres.size() != 2 || metres[0] <= 0 || metres[1] <= 0)
        section.refuse(key, QStringLiteral("must hold two distances"));
    return {metres.begin(), metres.end()};
}

Motor makeMotor(Section &section, uint32_t minimum, uint32_t maximum, double zoomShare)
{
    constexpr double defaultSpeed = 5000;
    const double middle = minimum + (maximum - minimum) / 2;
    return Motor::fromProfile(section, {minimum - zoomShare, double(maximum)}, defaultSpeed,
                              {double(minimum), double(maximum)}, middle);
}

} // namespace

Focus::Focus(Camera &camera, Section &section)
    : Device(camera), m_zoom(camera.device<Zoom>()), m_minimum(Motor::counts(section, u"minimum"_s, 0, 0)),
      m_maximum(Motor::counts(section, u"maximum"_s, std::max(m_minimum, 10'000U), m_minimum)),
      m_descending(section.flag(u"descending"_s, false)), m_near{m_descending ? m_maximum : m_minimum},
      m_percent(section.flag(u"percent"_s, false)), m_nearest(distances(section, u"nearest"_s, {5.0, 0.5})),
      m_farthest(distances(section, u"farthest"_s, {5000.0, 500.0})),
      m_zoomShare(section.integer(u"zoomShare"_s, 0, 0, Motor::maximumCounts)),
      m_motor(makeMotor(section, m_minimum, m_maximum, m_zoomShare))
{
    readSettings(section);
}

void Focus::readSettings(Section &section)
{
    const auto checkSize
        = [](bool isValid) { return isValid ? Refusal() : u"must have one entry, or one for each field of view"_s; };
    const auto oneOrTwo = [checkSize](const Counts &list) { return checkSize(list.size() == 1 || list.size() == 2); };
    const auto sameSizeAsNear
        = [this, checkSize](const Counts &list) { return checkSize(list.size() == m_near.size()); };

    // The number of near limits in the profile is the number of fields of the lens.
    addSettings(section, {{u"near"_s, m_near, {range(), oneOrTwo}, Profile}});
    m_far.assign(m_near.size(), m_descending ? m_minimum : m_maximum);
    m_increments.assign(m_near.size(), 90);
    addSettings(section,
                {
                    {u"near"_s, m_near, {range(), sameSizeAsNear}, Snapshot | OtherClient},
                    {u"far"_s, m_far, {range(), sameSizeAsNear}, Everywhere},
                    {u"increments"_s, m_increments, {Between{0, Motor::maximumCounts}, sameSizeAsNear}, Everywhere},
                    {u"slowBySteps"_s, m_slowBySteps, Everywhere},
                    {u"manual"_s, [this] { return m_manual; }, [this](bool manual) { return setManual(manual); },
                     Profile | OtherClient},
                    {u"position"_s, [this] { return position(); },
                     [this](uint32_t position) { return changePosition(position); }, range(), OtherClient},
                    {u"withoutZoom"_s, [this] { return m_motor.restingPosition(); },
                     [this](double position) { return restoreMotorPosition(position); },
                     Between{m_minimum - m_zoomShare, range().maximum}, Snapshot},
                });
}

uint32_t Focus::position() const
{
    return static_cast<uint32_t>(std::llround(clampedToRange(m_motor.position() + zoomShare())));
}

uint8_t Focus::presentField() const
{
    if (m_near.size() == 1)
        return onlyField;
    const auto *turret = camera().device<FieldOfView>();
    return turret ? turret->selected() : FieldOfView::Narrow;
}

bool Focus::hasField(uint8_t field) const { return m_near.size() == 1 ? field == onlyField : field < m_near.size(); }

Status Focus::limit(End end, uint8_t field, uint32_t &position) const
{
    if (!hasField(field))
        return Refused;
    position = (end == Near ? m_near : m_far)[indexOf(field)];
    return Ok;
}

Status Focus::setLimit(End end, uint8_t field, uint32_t position)
{
    if (!hasField(field))
        return Refused;
    Counts &limits = end == Near ? m_near : m_far;
    Counts wanted = limits;
    wanted[indexOf(field)] = position;
    const Status status = assign(limits, wanted);
    if (status == Ok)
        remember();
    return status;
}

Status Focus::slowControl(uint8_t field, uint8_t &control) const
{
    if (!hasField(field))
        return Refused;
    control = m_slowBySteps ? 0 : 1;
    return Ok;
}

Status Focus::increment(uint8_t field, uint32_t &counts) const
{
    if (!hasField(field))
        return Refused;
    counts = m_increments[indexOf(field)];
    return Ok;
}

Status Focus::move(int32_t speed) { return moveBySpeed(Motor::speedFractionOfStep(speed)); }

Status Focus::movePercent(float percent)
{
    return m_percent ? moveBySpeed(Motor::speedFractionOfPercent(percent)) : Absent;
}

Status Focus::moveTo(uint32_t position)
{
    if (m_manual || !range().holds(position))
        return Refused;
    m_motor.moveTo(position - restingZoomShare());
    return Ok;
}

Status Focus::goTo(uint32_t position)
{
    const Status status = moveTo(position);
    return status == Ok ? awaitRest() : status;
}

Status Focus::goToEnd(End end) { return goTo(presentLimit(end)); }

double Focus::nearest() const { return std::lerp(m_nearest[1], m_nearest[0], narrowness()); }

double Focus::farthest() const { return std::max(nearest(), std::lerp(m_farthest[1], m_farthest[0], narrowness())); }

uint32_t Focus::positionFor(double metres) const
{
    // The position follows the reciprocal of the distance.
    const double nearestReciprocal = 1 / nearest();
    const double reciprocalRange = nearestReciprocal - 1 / farthest();
    const double fraction = reciprocalRange > 0
        ? (nearestReciprocal - 1 / std::clamp(metres, nearest(), farthest())) / reciprocalRange
        : 0;
    return static_cast<uint32_t>(std::llround(std::lerp(presentLimit(Near), presentLimit(Far), fraction)));
}

double Focus::relativePosition() const
{
    const double near = presentLimit(Near);
    const double far = presentLimit(Far);
    if (near == far)
        return 0;
    return std::clamp((m_motor.restingPosition() + restingZoomShare() - near) / (far - near), 0.0, 1.0);
}

void Focus::moveToRelativePosition(double fraction, double seconds)
{
    const double position = std::round(std::lerp(presentLimit(Near), presentLimit(Far), fraction));
    m_motor.moveTo(position - restingZoomShare(), seconds);
}

void Focus::connectionChanged(bool connected)
{
    if (!connected)
        m_motor.halt();
}

void Focus::expose(int, image::Exposure &exposure) const
{
    const auto *const autoFocus = camera().device<AutoFocus>();
    const auto *const athermalization = camera().device<Athermalization>();
    const bool holdsFocus = athermalization && athermalization->holdsFocus();
    const double shift = holdsFocus ? 0 : image::Optics::sharpShift(exposure.optics.lensCelsius);
    const double sharp = positionFor(autoFocus ? autoFocus->sceneDistance() : AutoFocus::defaultSceneDistance) + shift;
    exposure.optics.defocus = image::Optics::defocusOf(position() - sharp, narrowness());
}

uint32_t Focus::presentLimit(End end) const { return (end == Near ? m_near : m_far)[indexOf(presentField())]; }

Status Focus::moveBySpeed(std::optional<double> fraction)
{
    if (m_manual || !fraction)
        return Refused;
    const double limit = presentLimit(*fraction < 0 ? Near : Far) - restingZoomShare();
    m_motor.moveBySpeed(m_descending ? -*fraction : *fraction, limit);
    return Ok;
}

Status Focus::setManual(bool manual)
{
    if (manual && !m_manual)
        m_motor.moveBySpeed(0, 0);
    m_manual = manual;
    return Ok;
}

/// Another client moves the focus, or turns it by hand.
Status Focus::changePosition(uint32_t position)
{
    if (!m_manual)
        return moveTo(position);
    m_motor.setPosition(position - restingZoomShare());
    return Ok;
}

Status Focus::restoreMotorPosition(double position)
{
    // The lens does not move while the camera is off.
    if (!camera().connected())
        m_motor.setPosition(position);
    else if (!m_manual)
        m_motor.moveTo(position);
    return Ok;
}

double Focus::narrowness() const
{
    if (m_zoom)
        return m_zoom->narrowness();
    return presentField() == FieldOfView::Wide ? 0 : 1;
}

double Focus::zoomShare() const { return m_zoom ? m_zoomShare * m_zoom->narrowness() * m_zoom->narrowness() : 0; }

double Focus::restingZoomShare() const
{
    return m_zoom ? m_zoomShare * m_zoom->restingNarrowness() * m_zoom->restingNarrowness() : 0;
}

double Focus::clampedToRange(double position) const
{
    return std::clamp(position, double(m_minimum), double(m_maximum));
}

} // namespace emulator
