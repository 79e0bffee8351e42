#include "platform/emulator/devices/Focus.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/FieldOfView.h"
#include "platform/emulator/devices/Zoom.h"
#include "platform/emulator/devices/settings.h"

#include <QJsonArray>

#include <algorithm>
#include <cmath>

namespace emulator
{

namespace
{

constexpr uint8_t onlyField = 2;
const auto nearKey = QStringLiteral("near");
const auto farKey = QStringLiteral("far");
const auto incrementsKey = QStringLiteral("increments");
const auto positionKey = QStringLiteral("position");
const auto manualKey = QStringLiteral("manual");
const auto slowByStepsKey = QStringLiteral("slowBySteps");
const auto restKey = QStringLiteral("withoutZoom");

std::vector<uint32_t> countList(Section &section, const QString &key, const QList<double> &fallback, size_t size,
                                Motor::Range range)
{
    const QList<double> numbers = section.numbers(key, fallback);
    if (static_cast<size_t>(numbers.size()) != size && (size != 0 || numbers.isEmpty() || numbers.size() > 2))
        section.refuse(key, QStringLiteral("must have one entry, or one for each field of view"));
    for (const double number : numbers)
        if (number < range.minimum || number > range.maximum || std::trunc(number) != number)
            section.refuse(key, QStringLiteral("must hold whole numbers in the range"));
    return {numbers.begin(), numbers.end()};
}

std::vector<double> distances(Section &section, const QString &key, const QList<double> &fallback)
{
    const QList<double> metres = section.numbers(key, fallback);
    if (metres.size() != 2 || metres[0] <= 0 || metres[1] <= 0)
        section.refuse(key, QStringLiteral("must hold two distances"));
    return {metres.begin(), metres.end()};
}

QJsonArray toJson(const std::vector<uint32_t> &list)
{
    QJsonArray array;
    for (const uint32_t number : list)
        array.append(double(number));
    return array;
}

Motor makeMotor(Section &section, uint32_t minimum, uint32_t maximum, double zoomShare)
{
    constexpr double usualSpeed = 5000;
    const double middle = minimum + (maximum - minimum) / 2;
    return Motor::fromProfile(section, {minimum - zoomShare, double(maximum)}, usualSpeed,
                              {double(minimum), double(maximum)}, middle);
}

} // namespace

Focus::Focus(Camera &camera, Section &section)
    : Device(camera), m_minimum(Motor::counts(section, QStringLiteral("minimum"), 0, 0)),
      m_maximum(Motor::counts(section, QStringLiteral("maximum"), std::max(m_minimum, 10'000U), m_minimum)),
      m_descending(section.flag(QStringLiteral("descending"), false)),
      m_near(countList(section, nearKey, {double(m_descending ? m_maximum : m_minimum)}, 0,
                       {double(m_minimum), double(m_maximum)})),
      m_far(countList(section, farKey, QList<double>(m_near.size(), m_descending ? m_minimum : m_maximum),
                      m_near.size(), {double(m_minimum), double(m_maximum)})),
      m_increments(countList(section, incrementsKey, QList<double>(m_near.size(), 90), m_near.size(),
                             {0, double(Motor::mostCounts)})),
      m_percent(section.flag(QStringLiteral("percent"), false)), m_slowBySteps(section.flag(slowByStepsKey, false)),
      m_manual(section.flag(manualKey, false)), m_nearest(distances(section, QStringLiteral("nearest"), {5.0, 0.5})),
      m_farthest(distances(section, QStringLiteral("farthest"), {5000.0, 500.0})),
      m_zoomShare(section.integer(QStringLiteral("zoomShare"), 0, 0, Motor::mostCounts)),
      m_motor(makeMotor(section, m_minimum, m_maximum, m_zoomShare))
{
}

uint32_t Focus::position() const
{
    return static_cast<uint32_t>(std::llround(within(m_motor.position() + zoomShare())));
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
    if (!hasField(field) || position < m_minimum || position > m_maximum)
        return Refused;
    (end == Near ? m_near : m_far)[indexOf(field)] = position;
    remember();
    return Ok;
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

Status Focus::move(int32_t speed) { return movePart(Motor::partOfStep(speed)); }

Status Focus::movePercent(float percent) { return m_percent ? movePart(Motor::partOfPercent(percent)) : Absent; }

Status Focus::moveTo(uint32_t position)
{
    if (m_manual || position < m_minimum || position > m_maximum)
        return Refused;
    m_motor.travelTo(position - restingZoomShare());
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
    // A lens moves as the reciprocal of the distance.
    const double closest = 1 / nearest();
    const double range = closest - 1 / farthest();
    const double place = range > 0 ? (closest - 1 / std::clamp(metres, nearest(), farthest())) / range : 0;
    return static_cast<uint32_t>(std::llround(std::lerp(presentLimit(Near), presentLimit(Far), place)));
}

double Focus::placeBetweenLimits() const
{
    const double near = presentLimit(Near);
    const double far = presentLimit(Far);
    if (near == far)
        return 0;
    return std::clamp((m_motor.restingPosition() + restingZoomShare() - near) / (far - near), 0.0, 1.0);
}

void Focus::carryBetweenLimits(double place, double seconds)
{
    const double position = std::round(std::lerp(presentLimit(Near), presentLimit(Far), place));
    m_motor.travelTo(position - restingZoomShare(), seconds);
}

QJsonObject Focus::save() const
{
    return {{restKey, m_motor.restingPosition()},
            {nearKey, toJson(m_near)},
            {farKey, toJson(m_far)},
            {incrementsKey, toJson(m_increments)},
            {slowByStepsKey, m_slowBySteps}};
}

void Focus::restore(const QJsonObject &values)
{
    for (const QString &key : {nearKey, farKey, incrementsKey, slowByStepsKey})
        if (values.contains(key))
            set(key, values.value(key).toVariant());
    const double rest = values.value(restKey).toDouble(-1.0 - Motor::mostCounts);
    if (rest < m_minimum - m_zoomShare || rest > m_maximum)
        return;
    // While the camera is off, the lens is where it was left.
    if (!camera().connected())
        m_motor.place(rest);
    else if (!m_manual)
        m_motor.travelTo(rest);
}

void Focus::connectionChanged(bool connected)
{
    if (!connected)
        m_motor.halt();
}

bool Focus::set(const QString &name, const QVariant &value)
{
    if (name == nearKey)
        return setList(m_near, value);
    if (name == farKey)
        return setList(m_far, value);
    if (name == incrementsKey)
        return setList(m_increments, value);
    if (name == slowByStepsKey)
        return takeSetting(m_slowBySteps, value);
    if (name == manualKey) {
        const auto manual = settingAs<bool>(value);
        if (manual)
            setManual(*manual);
        return manual.has_value();
    }
    const auto position = settingAs<uint32_t>(value);
    if (name != positionKey || !position || *position < m_minimum || *position > m_maximum)
        return false;
    if (m_manual)
        m_motor.place(*position - restingZoomShare());
    return m_manual || moveTo(*position) == Ok;
}

uint32_t Focus::presentLimit(End end) const { return (end == Near ? m_near : m_far)[indexOf(presentField())]; }

Status Focus::movePart(std::optional<double> part)
{
    if (m_manual || !part)
        return Refused;
    const double limit = presentLimit(*part < 0 ? Near : Far) - restingZoomShare();
    m_motor.move(m_descending ? -*part : *part, limit);
    return Ok;
}

void Focus::setManual(bool manual)
{
    if (manual && !m_manual)
        m_motor.move(0, 0);
    m_manual = manual;
}

bool Focus::setList(std::vector<uint32_t> &list, const QVariant &value)
{
    const QVariantList entries = value.toList();
    if (static_cast<size_t>(entries.size()) != list.size())
        return false;
    const bool isLimit = &list != &m_increments;
    std::vector<uint32_t> taken;
    for (const QVariant &entry : entries) {
        const auto number = settingAs<uint32_t>(entry);
        if (!number || (isLimit && (*number < m_minimum || *number > m_maximum)))
            return false;
        taken.push_back(*number);
    }
    list = taken;
    return true;
}

double Focus::narrowness() const
{
    if (const auto *zoom = camera().device<Zoom>())
        return zoom->narrowness();
    return presentField() == FieldOfView::Wide ? 0 : 1;
}

double Focus::zoomShare() const
{
    const auto *zoom = camera().device<Zoom>();
    return zoom ? m_zoomShare * zoom->narrowness() * zoom->narrowness() : 0;
}

double Focus::restingZoomShare() const
{
    const auto *zoom = camera().device<Zoom>();
    return zoom ? m_zoomShare * zoom->restingNarrowness() * zoom->restingNarrowness() : 0;
}

double Focus::within(double position) const { return std::clamp(position, double(m_minimum), double(m_maximum)); }

} // namespace emulator
