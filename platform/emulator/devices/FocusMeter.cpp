#include "platform/emulator/devices/FocusMeter.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/Unlocked.h"
#include "platform/emulator/devices/FrameClock.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/image/Detector.h"
#include "platform/emulator/image/Statistics.h"
#include "platform/emulator/image/frame.h"
#include "zvt/zvttypes.h"

#include <algorithm>
#include <vector>

namespace emulator
{

namespace
{

std::optional<FrameStart> newestOfActivePreset(const Camera &camera)
{
    const Sensor &sensor = *camera.device<Sensor>();
    auto *const clock = camera.device<FrameClock>();
    // The clock also returns the last frame of a camera that makes none now.
    if (sensor.repeats(sensor.activePreset()) == 0 || clock->averageRate() == 0)
        return std::nullopt;
    return clock->newest(sensor.activePreset());
}

} // namespace

image::Window FocusRegion::of(const image::Window &window, const image::Optics &optics) const
{
    const bool quarter = position != ZVT_AF_ROI_CENTER;
    const bool right = position == ZVT_AF_ROI_TOP_RIGHT || position == ZVT_AF_ROI_BOTTOM_RIGHT;
    const bool bottom = position == ZVT_AF_ROI_BOTTOM_LEFT || position == ZVT_AF_ROI_BOTTOM_RIGHT;
    struct Span {
        int start;
        int length;
    };
    const auto clipped = [this, quarter](int extent, bool farSide, bool flipped) {
        const int start = (quarter ? extent / 4 * (farSide ? 3 : 1) : extent / 2) - size / 2;
        const int first = std::max(start, 0);
        const int end = std::min(start + size, extent);
        return Span{flipped ? extent - end : first, end - first};
    };
    const Span columns = clipped(window.width, right, optics.mirrored);
    const Span rows = clipped(window.height, bottom, optics.inverted);
    return {window.x + columns.start, window.y + rows.start, columns.length, rows.length};
}

FocusMeter::FocusMeter(Camera &camera, const FocusRegion &region)
    : m_camera(camera), m_region(region), m_start(newestOfActivePreset(camera))
{
}

std::optional<double> FocusMeter::measure()
{
    std::optional<image::Exposure> exposure = this->exposure();
    if (!exposure)
        return std::nullopt;
    const DetectorArray &array = m_camera.device<Sensor>()->array();
    const Camera::Unlocked unlocked(m_camera);
    // Another client may have changed the window or the flips since the last measure.
    if (!m_detector || m_detector->window() != exposure->window)
        m_detector = image::Detector::make(array.properties().corrected(), array.size(), exposure->window);
    exposure->detector = m_detector;
    std::vector<uint16_t> counts;
    image::renderFrame(*exposure, counts);
    return image::Statistics::focusMeasure(counts, static_cast<size_t>(exposure->window.width));
}

/// Returns the exposure of the region.
std::optional<image::Exposure> FocusMeter::exposure() const
{
    if (!m_start)
        return std::nullopt;
    image::Exposure exposure = m_camera.exposure(*m_start);
    if (exposure.optics.blocked || !exposure.window.hasFrames())
        return std::nullopt;
    exposure.window = m_region.of(exposure.window, exposure.optics);
    return exposure;
}

} // namespace emulator
