#include "platform/emulator/devices/VideoOutput.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/ImageMode.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/devices/VideoFormat.h"
#include "platform/emulator/devices/VideoGain.h"

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

/// Reads the formats that a camera offers.
std::vector<uint8_t> formatsOf(Section &section)
{
    const auto key = u"formats"_s;
    std::vector<uint8_t> formats;
    if (const QJsonValue json = section.value(key); json.isUndefined())
        formats = {0, 1};
    else if (const Refusal refusal = parse(json, formats); !refusal.isEmpty())
        section.refuse(key, refusal);
    return formats;
}

/// The numbers that a camera with these formats can be set to.
QList<double> settableFormats(const std::vector<uint8_t> &offered)
{
    QList<double> numbers = VideoFormat::known();
    for (const uint8_t format : offered)
        if (!numbers.contains(format))
            numbers.append(format);
    return numbers;
}

Refusal checkStep(const VideoOutput::Offset &offset)
{
    const auto isMultiple = [](int number) { return number % VideoOutput::offsetStep == 0; };
    return std::ranges::all_of(offset, isMultiple) ? Refusal() : u"must be multiples of 4"_s;
}

} // namespace

VideoOutput::VideoOutput(Camera &camera, Section &section)
    : Device(camera), m_formats(formatsOf(section)), m_path(camera)
{
    const OneOf formats{settableFormats(m_formats)};
    const auto mayFilter = [this] { return hasTemporalFilter(); };
    const auto checkFactor = [this](uint8_t factor) {
        const auto offered = zoomFactors();
        return std::ranges::find(offered, factor) != offered.end() ? Refusal() : u"must be an offered zoom factor"_s;
    };
    const auto checkOffset = [this](const Offset &offset) { return checkRoom(offset); };
    addSettings(section,
                {
                    {u"format"_s, m_format, formats, Everywhere},
                    Setting(u"updateRate"_s, m_updateRate, Between{0, 1}, Everywhere).onlyIf([this] {
                        return hasUpdateRate();
                    }),
                    Setting(u"temporalFilter"_s, m_temporalFilter, Between{0, 2}, Everywhere).onlyIf(mayFilter),
                    Setting(u"temporalFilterThreshold"_s, m_filterThreshold, Everywhere).onlyIf(mayFilter),
                    {u"brightness"_s, m_brightness, Everywhere},
                    {u"contrast"_s, m_contrast, Everywhere},
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

const char *VideoOutput::zoomFactorText(uint8_t factor)
{
    static constexpr std::array texts{"0.5X", "1X", "2X", "4X", "1.3X", "Fit"};
    return factor < texts.size() ? texts[factor] : nullptr;
}

bool VideoOutput::hasUpdateRate() const { return camera().capabilities().value(u"hasUpdateRate"_s).toBool(); }

Status VideoOutput::updateRate(uint8_t &rate) const { return hasUpdateRate() ? fetch(m_updateRate, rate) : Absent; }

Status VideoOutput::setUpdateRate(uint8_t rate) { return hasUpdateRate() ? assign(m_updateRate, rate) : Absent; }

bool VideoOutput::hasTemporalFilter() const { return camera().capabilities().value(u"hasTemporalFilter"_s).toBool(); }

Status VideoOutput::temporalFilter(uint8_t &mode) const
{
    if (!hasTemporalFilter())
        return Absent;
    mode = static_cast<uint8_t>(m_temporalFilter);
    return Ok;
}

Status VideoOutput::setTemporalFilter(uint8_t mode)
{
    return hasTemporalFilter() ? assign(m_temporalFilter, image::TemporalFilter::Mode(mode)) : Absent;
}

Status VideoOutput::temporalFilterThreshold(uint16_t &counts) const
{
    return hasTemporalFilter() ? fetch(m_filterThreshold, counts) : Absent;
}

Status VideoOutput::setTemporalFilterThreshold(uint16_t counts)
{
    return hasTemporalFilter() ? assign(m_filterThreshold, counts) : Absent;
}

int VideoOutput::preset() const
{
    const Sensor &sensor = *camera().device<Sensor>();
    return sensor.sequencingMode() == Sensor::SinglePreset ? sensor.activePreset() : sensor.videoPreset();
}

bool VideoOutput::showsFields() const
{
    return m_updateRate == 1 && hasUpdateRate() && VideoFormat::of(m_format).interlaced;
}

image::TemporalFilter::Mode VideoOutput::filterMode() const
{
    return hasTemporalFilter() ? m_temporalFilter : image::TemporalFilter::Mode::Off;
}

image::LevelTable VideoOutput::levels() const
{
    const bool blackHot = camera().device<VideoGain>()->blackHot();
    if (VideoFormat::of(m_format).analog)
        return image::adjustedLevels(m_brightness, m_contrast, blackHot);
    return image::adjustedLevels(0, 0, blackHot);
}

std::vector<uint8_t> VideoOutput::zoomFactors() const
{
    if (camera().capabilities().value(u"hasBilinearZoom"_s).toBool())
        return {0, 1, 4, 2, 3, 5};
    return {1, 2, 3};
}

bool VideoOutput::interpolates() const
{
    constexpr std::array<uint8_t, 3> factors{0, 4, 5};
    return std::ranges::find(factors, m_zoomFactor) != factors.end();
}

hlx::RasterPlacement VideoOutput::placement() const
{
    const SensorGeometry &geometry = camera().device<Sensor>()->geometry();
    const auto &window = geometry.window();
    const auto &array = geometry.limits().maximum;
    const auto *const image = camera().device<ImageMode>();
    return {
        .raster = VideoFormat::of(m_format).raster,
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
