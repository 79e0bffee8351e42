#include "standalone/desk/FrameMaker.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/FrameClock.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/devices/VideoFormat.h"
#include "platform/emulator/devices/VideoGain.h"
#include "platform/emulator/devices/VideoOutput.h"
#include "platform/emulator/image/Exposure.h"
#include "platform/emulator/image/limits.h"
#include "platform/emulator/image/output.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <mutex>
#include <numeric>
#include <span>
#include <utility>

using emulator::image::maximumCount;

/// The values of the devices, taken with the camera's lock.
struct FrameMaker::Inputs {
    bool hasFrames = false; ///< The window is not too large.
    std::optional<emulator::FrameStart> start;
    emulator::image::Exposure exposure;
    double rate = 0;
    std::vector<int> presets;
    emulator::image::AgcSettings gain;
    emulator::image::Window region;
    double gainStep = 1; ///< Since the last frame.
    QRectF place; ///< Of the frame on the raster of the video output.
};

namespace
{

std::vector<int> sequencedPresets(const emulator::Sensor &sensor)
{
    std::vector<int> presets;
    for (int preset = 0; preset < sensor.numPresets(); ++preset)
        if (sensor.repeats(preset) > 0)
            presets.push_back(preset);
    return presets;
}

/// Shows counts from `low` to `high` as levels of grey from black to white. If they are equal, all counts are in the
/// range, so that a saturated frame is white.
QImage greyPicture(const emulator::Frame &frame, int low, int high)
{
    constexpr int white = 255;
    if (low == high) {
        low = 0;
        high = maximumCount;
    }
    const int range = high - low;
    std::vector<QRgb> colors(maximumCount + 1);
    for (int count = 0; count <= maximumCount; ++count) {
        const int level = std::clamp((count - low) * white / range, 0, white);
        colors[static_cast<size_t>(count)] = qRgb(level, level, level);
    }
    QImage picture(frame.size.width, frame.size.height, QImage::Format_RGB32);
    const auto width = static_cast<size_t>(frame.size.width);
    for (int y = 0; y < frame.size.height; ++y) {
        auto *const row = reinterpret_cast<QRgb *>(picture.scanLine(y));
        const uint16_t *const counts = frame.counts.data() + static_cast<size_t>(y) * width;
        std::transform(counts, counts + width, row, [&colors](uint16_t count) { return colors[count]; });
    }
    return picture;
}

QImage videoPicture(const emulator::image::Picture &picture)
{
    const int bytesPerLine = 3 * picture.width;
    return QImage(picture.rgb.data(), picture.width, picture.height, bytesPerLine, QImage::Format_RGB888)
        .convertToFormat(QImage::Format_RGB32);
}

/// Draws the numbers of pixels from the lowest to the highest count, with logarithmic heights.
QImage histogramPicture(const FrameStatistics &statistics)
{
    constexpr size_t width = 256;
    constexpr int height = 64;
    constexpr QRgb back = qRgb(0x1a, 0x1a, 0x21);
    constexpr QRgb bar = qRgb(0xb0, 0xb4, 0xba);
    const size_t range = statistics.highest - statistics.lowest + size_t{1};
    const auto pixels = [&](size_t column) {
        const auto first = statistics.histogram.begin() + statistics.lowest;
        const size_t from = column * range / width;
        const size_t to = std::max(from + 1, (column + 1) * range / width);
        return std::accumulate(first + std::ptrdiff_t(from), first + std::ptrdiff_t(to), 0.0);
    };
    std::array<double, width> heights{};
    for (size_t column = 0; column < width; ++column)
        heights[column] = std::log1p(pixels(column));
    const double highest = std::max(std::ranges::max(heights), 1.0);
    QImage picture(width, height, QImage::Format_RGB32);
    picture.fill(back);
    for (size_t column = 0; column < width; ++column)
        for (int y = height - static_cast<int>(std::lround(heights[column] / highest * height)); y < height; ++y)
            picture.setPixel(static_cast<int>(column), y, bar);
    return picture;
}

} // namespace

bool ShownFrame::operator==(const ShownFrame &other) const
{
    return state == other.state && measured == other.measured && picture.cacheKey() == other.picture.cacheKey()
        && place == other.place && rate == other.rate && presets == other.presets;
}

FrameMaker::Inputs FrameMaker::take(const FrameOrder &order) const
{
    emulator::Camera &camera = *order.camera;
    const std::lock_guard lock(camera.mutex());
    camera.catchUp();
    const auto &sensor = *camera.device<emulator::Sensor>();
    const auto &window = sensor.geometry().window();
    auto &frames = *camera.device<emulator::FrameClock>();
    const auto &output = *camera.device<emulator::VideoOutput>();
    const auto &gain = *camera.device<emulator::VideoGain>();
    const bool showsVideo = order.view == FrameOrder::Video;
    Inputs inputs;
    inputs.hasFrames = emulator::image::Window{window.x, window.y, window.width, window.height}.hasFrames();
    inputs.rate = frames.averageRate();
    inputs.presets = sequencedPresets(sensor);
    inputs.start = frames.newest(showsVideo || !order.preset ? output.preset() : *order.preset);
    if (!inputs.hasFrames || !inputs.start)
        return inputs;
    inputs.exposure = camera.exposure(*inputs.start);
    inputs.gain = gain.agcSettings();
    inputs.region = gain.effectiveRegion();
    if (m_measured) {
        const double rate = emulator::VideoFormat::of(output.format()).rate;
        const double seconds = double(inputs.start->microseconds - m_measured->frame.start.microseconds) / 1e6;
        inputs.gainStep = emulator::VideoGain::stepOfFrames(gain.step(1 / rate), seconds * rate);
    }
    const auto raster = output.placement().image();
    inputs.place = showsVideo ? QRectF(raster.x, raster.y, raster.width, raster.height)
                              : QRectF(0, 0, window.width, window.height);
    return inputs;
}

std::shared_ptr<const ShownFrame> FrameMaker::make(const FrameOrder &order)
{
    if (order != m_order)
        *this = {};
    m_order = order;
    const Inputs inputs = take(order);
    auto shown = std::make_shared<ShownFrame>();
    if (!inputs.hasFrames) {
        shown->state = ShownFrame::TooLarge;
    } else if (inputs.start && (order.view == FrameOrder::Video ? showVideo(*shown) : showFrame(inputs, *shown))) {
        shown->state = ShownFrame::Ready;
        shown->measured = m_measured;
        shown->place = inputs.place;
    }
    if (!shown->measured)
        m_measured.reset();
    shown->rate = inputs.rate;
    shown->presets = inputs.presets;
    if (m_shown && *shown == *m_shown)
        return nullptr;
    m_shown = shown;
    return shown;
}

/// Shows the picture of the video output and measures its frame. Returns false if there is none.
bool FrameMaker::showVideo(ShownFrame &shown)
{
    const emulator::VideoPicture video = m_order.camera->device<emulator::VideoOutput>()->renderWithFrame();
    if (!video.frame)
        return false;
    if (!isMeasured(video.frame->start, video.frame->size))
        measure(*video.frame, video.gain);
    shown.picture = videoPicture(video.picture);
    return true;
}

/// Renders, measures and shows the frame, unless it is the last one. Returns false if it does not exist.
bool FrameMaker::showFrame(const Inputs &inputs, ShownFrame &shown)
{
    using emulator::image::Output;
    const emulator::image::Size size{inputs.exposure.window.width, inputs.exposure.window.height};
    if (isMeasured(*inputs.start, size)) {
        shown.picture = m_shown->picture;
        return true;
    }
    emulator::Frame frame{*inputs.start, size, {}};
    const auto output = m_order.view == FrameOrder::Raw ? std::nullopt : std::optional(Output::Video);
    if (!m_order.camera->render(inputs.exposure, frame.start.preset, output, frame.counts))
        return false;
    if (!followsMeasured(frame))
        m_gain = {};
    m_gain.update(frame.counts, size, inputs.region, inputs.gain, inputs.gainStep);
    measure(std::move(frame), m_gain.limits());
    const FrameStatistics &statistics = m_measured->statistics;
    shown.picture = greyPicture(m_measured->frame, statistics.countAt(blackThousandths),
                                statistics.countAt(1000 - blackThousandths));
    return true;
}

bool FrameMaker::isMeasured(const emulator::FrameStart &start, emulator::image::Size size) const
{
    return m_measured && m_measured->frame.start == start && m_measured->frame.size == size;
}

/// Whether the last frame can be compared with this one.
bool FrameMaker::followsMeasured(const emulator::Frame &frame) const
{
    return m_measured && m_measured->frame.start.preset == frame.start.preset && m_measured->frame.size == frame.size;
}

void FrameMaker::measure(emulator::Frame frame, const emulator::image::Agc::Limits &gain)
{
    auto measured = std::make_shared<MeasuredFrame>();
    measured->statistics = FrameStatistics::of(
        frame.counts, followsMeasured(frame) ? std::span(m_measured->frame.counts) : std::span<const uint16_t>());
    measured->histogram = histogramPicture(measured->statistics);
    measured->gain = gain;
    measured->frame = std::move(frame);
    m_measured = std::move(measured);
}
