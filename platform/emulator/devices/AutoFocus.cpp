#include "platform/emulator/devices/AutoFocus.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/Focus.h"
#include "zvt/zvttypes.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

// The distances from the sharp position, as fractions of the range of the focus.
constexpr std::array swingAmplitudes{0.2, -0.1, 0.04, -0.02, 0.0};

} // namespace

AutoFocus::AutoFocus(Camera &camera, Section &section) : Device(camera)
{
    addSettings(
        section,
        {
            {u"regionSize"_s, m_regionSize, Between{1, UINT16_MAX}, Profile},
            {u"regionSize"_s, m_regionSize, OneOf{{16, 32, 64, 128, 256, 512}}, Snapshot | OtherClient},
            {u"regionPosition"_s, m_regionPosition, Between{ZVT_AF_ROI_CENTER, ZVT_AF_ROI_BOTTOM_RIGHT}, Everywhere},
            {u"showWhenFocusing"_s, m_showWhenFocusing, Everywhere},
            {u"showAlways"_s, m_showAlways, Everywhere},
            {u"sceneDistance"_s, m_sceneDistance, Between{0.001, 1e9}, Profile | OtherClient},
        });
}

Status AutoFocus::focusFast()
{
    auto *const focus = camera().device<Focus>();
    if (!focus)
        return Absent;
    for (const double amplitude : swingAmplitudes) {
        const double target
            = focus->positionFor(m_sceneDistance) + amplitude * (double(focus->maximum()) - focus->minimum());
        const double reachable = std::clamp(target, double(focus->minimum()), double(focus->maximum()));
        if (const Status status = focus->goTo(static_cast<uint32_t>(std::llround(reachable))); status != Ok)
            return status;
    }
    return Ok;
}

Status AutoFocus::focusFull()
{
    auto *const focus = camera().device<Focus>();
    if (!focus)
        return Absent;
    for (const auto end : {Focus::Near, Focus::Far})
        if (const Status status = focus->goToEnd(end); status != Ok)
            return status;
    return focusFast();
}

} // namespace emulator
