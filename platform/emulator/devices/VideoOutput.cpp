#include "platform/emulator/devices/VideoOutput.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/ImageMode.h"
#include "platform/emulator/devices/Sensor.h"

#include <algorithm>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

constexpr double maximumZoomFactor = 5;

/// Raster pixels for each pixel of the image, by the number of a zoom factor. 0: the largest size that fits. They are
/// numbers of a float, as in clients, so that both round the size of the image in the same way.
double scaleOf(uint8_t zoomFactor)
{
    static constexpr std::array scales{0.5F, 1.0F, 2.0F, 4.0F, 1.3F, 0.0F};
    return scales.at(zoomFactor);
}

/// The raster of a video format in pixels.
hlx::RasterPlacement::Size rasterOf(uint8_t format)
{
    switch (format) {
    case 1:
    case 4:
    case 102:
        return {640, 512};
    case 2:
        return {800, 600};
    case 5:
    case 10:
    case 12:
        return {1280, 720};
    case 6:
        return {1280, 1024};
    case 7:
    case 8:
    case 9:
    case 11:
    case 13:
        return {1920, 1080};
    default:
        return {640, 480};
    }
}

Refusal checkStep(const VideoOutput::Offset &offset)
{
    const auto isMultiple = [](int number) { return number % VideoOutput::offsetStep == 0; };
    return std::ranges::all_of(offset, isMultiple) ? Refusal() : u"must be multiples of 4"_s;
}

} // namespace

VideoOutput::VideoOutput(Camera &camera, Section &section) : Device(camera)
{
    const OneOf formats{{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 101, 102}};
    const auto checkFactor = [this](uint8_t factor) {
        const auto offered = zoomFactors();
        return std::ranges::find(offered, factor) != offered.end() ? Refusal() : u"must be an offered zoom factor"_s;
    };
    const auto checkOffset = [this](const Offset &offset) { return checkRoom(offset); };
    addSettings(section,
                {
                    {u"format"_s, m_format, formats, Everywhere},
                    {u"positionWritable"_s, m_positionWritable, Profile | OtherClient},
                    Setting(u"position"_s, m_position, Between{0, 2}, Everywhere).onlyIf(m_positionWritable),
                    {u"zoomFactor"_s, m_zoomFactor, {Between{0, maximumZoomFactor}, checkFactor}, Everywhere},
                    {u"offset"_s, m_offset, checkOffset, OtherClient},
                    // Saved offsets may be outside of the raster, because the window has been changed after them.
                    {u"offset"_s, m_offset, checkStep, Profile | Snapshot},
                    {u"integratePolarity"_s, m_integratePolarity, Between{0, 1}, Everywhere},
                    {u"irigLatch"_s, m_irigLatch, Between{0, 2}, Everywhere},
                });
}

std::vector<uint8_t> VideoOutput::zoomFactors() const
{
    if (camera().capabilities().value(u"hasBilinearZoom"_s).toBool())
        return {0, 1, 4, 2, 3, 5};
    return {1, 2, 3};
}

hlx::RasterPlacement VideoOutput::placement() const
{
    const SensorGeometry &geometry = camera().device<Sensor>()->geometry();
    const auto &window = geometry.window();
    const auto &array = geometry.limits().maximum;
    const auto *const image = camera().device<ImageMode>();
    return {
        .raster = rasterOf(m_format),
        .array = {array.width, array.height},
        .windowPosition = {window.x, window.y},
        .windowSize = {window.width, window.height},
        .mirrored = image->reverted(),
        .inverted = image->inverted(),
        .position = m_position,
        .zoom = scaleOf(m_zoomFactor),
        .offset = {m_offset[0], m_offset[1]},
    };
}

Refusal VideoOutput::checkRoom(const Offset &offset) const
{
    hlx::RasterPlacement placement = this->placement();
    placement.offset = {offset[0], offset[1]};
    if (placement.hasValidOffset({offsetStep, offsetStep}))
        return {};
    const Refusal refusal = checkStep(offset);
    return refusal.isEmpty() ? u"must keep the image inside the raster, or the raster inside the image"_s : refusal;
}

} // namespace emulator
