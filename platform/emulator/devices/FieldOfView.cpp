#include "platform/emulator/devices/FieldOfView.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/Clock.h"
#include "platform/emulator/devices/Focus.h"
#include "platform/emulator/devices/Zoom.h"
#include "platform/emulator/image/Exposure.h"

#include <cmath>

namespace emulator
{

using namespace Qt::StringLiterals;

FieldOfView::FieldOfView(Camera &camera, Section &section)
    : Device(camera), m_switchSeconds(section.number(u"switchSeconds"_s, 0.6, 0, 60))
{
    const Between fields{Narrow, Wide};
    addSettings(
        section,
        {
            {u"selected"_s, m_selected, fields, Profile},
            // A snapshot also contains the position of the focus, so restoring the field must not move the focus.
            {u"selected"_s, [this] { return m_selected; }, [this](Field field) { return selectWithoutFocus(field); },
             fields, Snapshot},
            {u"selected"_s, [this] { return m_selected; }, [this](Field field) { return select(field); }, fields,
             OtherClient},
        });
}

Status FieldOfView::select(uint8_t field)
{
    if (field == m_selected)
        return Ok;
    auto *const focus = camera().device<Focus>();
    const double relativePosition = focus ? focus->relativePosition() : 0;
    const Status status = selectWithoutFocus(field);
    if (status == Ok && focus)
        focus->moveToRelativePosition(relativePosition, m_switchSeconds);
    return status;
}

Status FieldOfView::selectWithoutFocus(uint8_t field)
{
    if (field > Wide)
        return Refused;
    // The turret does not turn while the camera is off.
    if (field != m_selected && camera().connected())
        m_arrival = Clock::now() + std::llround(m_switchSeconds * 1000);
    m_selected = static_cast<Field>(field);
    return Ok;
}

void FieldOfView::expose(int, image::Exposure &exposure) const
{
    // A continuous zoom contains the turret's optics.
    if (!camera().device<Zoom>())
        exposure.optics.magnification = image::Optics::magnificationOf(m_selected == Narrow ? 1 : 0);
    exposure.optics.blocked |= Clock::now() < m_arrival;
}

} // namespace emulator
