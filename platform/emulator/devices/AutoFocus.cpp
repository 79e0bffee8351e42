#include "platform/emulator/devices/AutoFocus.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/Focus.h"
#include "platform/emulator/devices/settings.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "zvt/zvttypes.h"

namespace emulator
{

namespace
{

constexpr std::array<uint16_t, 6> regionSizes{16, 32, 64, 128, 256, 512};
// How far the focus swings past the sharp place, in parts of its range.
constexpr std::array swings{0.2, -0.1, 0.04, -0.02, 0.0};
constexpr double farthestScene = 1e9;
const auto regionSizeKey = QStringLiteral("regionSize");
const auto regionPositionKey = QStringLiteral("regionPosition");
const auto showWhenFocusingKey = QStringLiteral("showWhenFocusing");
const auto showAlwaysKey = QStringLiteral("showAlways");
const auto sceneDistanceKey = QStringLiteral("sceneDistance");

} // namespace

AutoFocus::AutoFocus(Camera &camera, Section &section)
    : Device(camera), m_regionSize(static_cast<uint16_t>(section.integer(regionSizeKey, 128, 1, UINT16_MAX))),
      m_regionPosition(static_cast<uint8_t>(
          section.integer(regionPositionKey, ZVT_AF_ROI_CENTER, ZVT_AF_ROI_CENTER, ZVT_AF_ROI_BOTTOM_RIGHT))),
      m_showWhenFocusing(section.flag(showWhenFocusingKey, true)), m_showAlways(section.flag(showAlwaysKey, false)),
      m_sceneDistance(section.number(sceneDistanceKey, 25, 0.001, farthestScene))
{
}

Status AutoFocus::focusFast()
{
    auto *const focus = camera().device<Focus>();
    if (!focus)
        return Absent;
    for (const double swing : swings) {
        const double wanted
            = focus->positionFor(m_sceneDistance) + swing * (double(focus->maximum()) - focus->minimum());
        const double reachable = std::clamp(wanted, double(focus->minimum()), double(focus->maximum()));
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

Status AutoFocus::setRegionSize(uint16_t pixels)
{
    if (std::ranges::find(regionSizes, pixels) == regionSizes.end())
        return Refused;
    m_regionSize = pixels;
    return Ok;
}

Status AutoFocus::setRegionPosition(uint8_t position)
{
    if (position > ZVT_AF_ROI_BOTTOM_RIGHT)
        return Refused;
    m_regionPosition = position;
    return Ok;
}

void AutoFocus::setShowWhenFocusing(bool show) { m_showWhenFocusing = show; }

void AutoFocus::setShowAlways(bool show) { m_showAlways = show; }

QJsonObject AutoFocus::save() const
{
    return {{regionSizeKey, m_regionSize},
            {regionPositionKey, m_regionPosition},
            {showWhenFocusingKey, m_showWhenFocusing},
            {showAlwaysKey, m_showAlways}};
}

void AutoFocus::restore(const QJsonObject &values)
{
    for (const QString &key : {regionSizeKey, regionPositionKey, showWhenFocusingKey, showAlwaysKey})
        set(key, values.value(key).toVariant());
}

bool AutoFocus::set(const QString &name, const QVariant &value)
{
    if (name == showWhenFocusingKey)
        return takeSetting(m_showWhenFocusing, value);
    if (name == showAlwaysKey)
        return takeSetting(m_showAlways, value);
    if (name == sceneDistanceKey) {
        const auto metres = settingAs<double>(value);
        return metres && *metres > 0 && *metres <= farthestScene && takeSetting(m_sceneDistance, value);
    }
    const auto number = settingAs<uint16_t>(value);
    if (name == regionSizeKey)
        return number && setRegionSize(*number) == Ok;
    return name == regionPositionKey && number && *number <= ZVT_AF_ROI_BOTTOM_RIGHT
        && setRegionPosition(static_cast<uint8_t>(*number)) == Ok;
}

} // namespace emulator
