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
    : Device(camera), m_turnMilliseconds(std::llround(section.number(u"switchSeconds"_s, 0.6, 0, 60) * 1000))
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
        focus->moveToRelativePosition(relativePosition, static_cast<double>(m_turnMilliseconds) / 1000);
    return status;
}

Status FieldOfView::selectWithoutFocus(uint8_t field)
{
    if (field > Wide)
        return Refused;
    // The turret does not turn while the camera is off.
    if (field != m_selected && camera().connected())
        m_arrival = Clock::now() + m_turnMilliseconds;
    m_selected = static_cast<Field>(field);
    return Ok;
}

void FieldOfView::expose(int, image::Exposure &exposure) const
{
    // A camera with both has the magnification of its zoom.
    if (!camera().device<Zoom>())
        exposure.optics.magnification = image::Optics::magnificationOf(m_selected == Narrow ? 1 : 0);
    exposure.optics.blocked |= Clock::remaining(m_arrival, m_turnMilliseconds) > 0;
}

} // namespace emulator
