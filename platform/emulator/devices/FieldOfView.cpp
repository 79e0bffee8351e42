#include "platform/emulator/devices/FieldOfView.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/Focus.h"

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
            // A snapshot also contains the position of the focus, so restoring the field must not move the focus.
            {u"selected"_s, m_selected, fields, Profile | Snapshot},
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

Status FieldOfView::selectWithoutFocus(uint8_t field) { return assign(m_selected, static_cast<Field>(field)); }

} // namespace emulator
