#include "platform/emulator/devices/FieldOfView.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/Focus.h"
#include "platform/emulator/devices/settings.h"

namespace emulator
{

namespace
{

const auto selectedKey = QStringLiteral("selected");

} // namespace

FieldOfView::FieldOfView(Camera &camera, Section &section)
    : Device(camera), m_selected(static_cast<Field>(section.integer(selectedKey, Narrow, Narrow, Wide))),
      m_switchSeconds(section.number(QStringLiteral("switchSeconds"), 0.6, 0, 60))
{
}

Status FieldOfView::select(uint8_t field)
{
    if (field == m_selected)
        return Ok;
    auto *const focus = camera().device<Focus>();
    const double place = focus ? focus->placeBetweenLimits() : 0;
    const Status status = selectAlone(field);
    if (status == Ok && focus)
        focus->carryBetweenLimits(place, m_switchSeconds);
    return status;
}

Status FieldOfView::selectAlone(uint8_t field)
{
    if (field > Wide)
        return Refused;
    m_selected = static_cast<Field>(field);
    return Ok;
}

QJsonObject FieldOfView::save() const { return {{selectedKey, m_selected}}; }

void FieldOfView::restore(const QJsonObject &values)
{
    if (const auto field = settingAs<uint8_t>(values.value(selectedKey).toVariant()))
        selectAlone(*field);
}

bool FieldOfView::set(const QString &name, const QVariant &value)
{
    const auto field = settingAs<uint8_t>(value);
    return name == selectedKey && field && select(*field) == Ok;
}

} // namespace emulator
