#include "platform/emulator/devices/FocusToDistance.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/Focus.h"

namespace emulator
{

FocusToDistance::FocusToDistance(Camera &camera, Section &section) : Device(camera)
{
    addSettings(section, {{QStringLiteral("available"), m_available, Profile | OtherClient}});
}

Status FocusToDistance::minimum(float &metres) const
{
    const auto *focus = camera().device<Focus>();
    if (!focus || !m_available)
        return Refused;
    metres = static_cast<float>(focus->nearest());
    return Ok;
}

Status FocusToDistance::maximum(float &metres) const
{
    const auto *focus = camera().device<Focus>();
    if (!focus || !m_available)
        return Refused;
    metres = static_cast<float>(focus->farthest());
    return Ok;
}

Status FocusToDistance::focusTo(float metres)
{
    auto *const focus = camera().device<Focus>();
    if (!focus || !m_available || !(metres > 0))
        return Refused;
    return focus->moveTo(focus->positionFor(metres));
}

} // namespace emulator
