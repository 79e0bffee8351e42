#include "platform/emulator/devices/VideoPath.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/Clock.h"
#include "platform/emulator/devices/CorrectionRun.h"
#include "platform/emulator/devices/FrameClock.h"
#include "platform/emulator/devices/Recorder.h"
#include "platform/emulator/devices/VideoFormat.h"
#include "platform/emulator/devices/VideoGain.h"
#include "platform/emulator/devices/VideoOutput.h"
#include "platform/emulator/devices/VideoOverlay.h"
#include "platform/emulator/devices/VideoPalette.h"
#include "platform/emulator/image/Detail.h"
#include "platform/emulator/image/Exposure.h"
#include "platform/emulator/image/Raster.h"
#include "platform/emulator/image/levels.h"
#include "platform/emulator/image/output.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

namespace emulator
{

namespace
{

using Counts = std::vector<uint16_t>;
using Filter = image::TemporalFilter;

/// The filter uses so many frames of the video before the newest one.
constexpr int64_t framesBefore = 3;

/// The part of the memory that the next order needs.
struct Progress {
    std::optional<FrameStart> shown; ///< The frame of the last image.
    bool filters = false; ///< The temporal filter has the frames before the last image.
    int64_t videoFrame = 0; ///< The number of the frame of the video in which the last image was taken.
};

/// The inputs of a picture besides the memory of the path, taken with the camera's lock.
struct Order {
    int64_t now = 0; ///< A time of Clock.
    VideoFormat format{};
    int64_t videoFrame = 0;
    int preset = 0;
    FrameStart start; ///< Of the newest frame.
    std::optional<image::Exposure> newest; ///< Nothing if the last image stays.
    std::optional<RecordedFrame> played; ///< The newest frame is this one, which a playback shows.
    std::optional<image::Exposure> firstField; ///< Half a frame of the video earlier, if the update rate is by fields.
    std::vector<image::Exposure> missed; ///< For the filter: the frames of the video since the last image, in order.
    Filter::Mode filter = Filter::Mode::Off;
    uint16_t filterThreshold = 0;
    image::AgcSettings gain;
    image::Window region;
    double gainStep = 1; ///< Of each frame of the video.
    image::LevelTable levels{};
    const image::Palette *palette = nullptr;
    hlx::RasterPlacement placement;
    bool interpolated = false;
    image::OverlayContent overlay; ///< The boxes are in pixels of the image.
};

/// Takes the exposures, unless the last image stays.
void takeExposures(Camera &camera, const Progress &progress, Order &order)
{
    const auto *const recorder = camera.device<Recorder>();
    if ((order.played = recorder ? recorder->shown() : std::nullopt)) {
        // A recorded frame is shown as it is.
        order.filter = Filter::Mode::Off;
        order.preset = order.played->start.preset;
        order.start = order.played->start;
        order.newest = order.played->exposure;
        return;
    }
    auto &frames = *camera.device<FrameClock>();
    const auto &output = *camera.device<VideoOutput>();
    const auto *const run = camera.device<CorrectionRun>();
    const auto newest = frames.newest(order.preset);
    if (!newest)
        return;
    const double period = 1e6 / order.format.rate;
    const double age = double(order.now) * 1e3 - double(newest->microseconds);
    const bool silent = progress.shown == newest && age > 2 * std::max(period, frames.cycleSeconds() * 1e6);
    const bool running = run && run->running();
    if (progress.shown && (running || silent))
        return;
    order.start = *newest;
    order.newest = camera.exposure(*newest);
    const auto exposureBefore = [&](double periods) {
        const auto microseconds = static_cast<int64_t>(periods * period);
        return camera.exposure(frames.newest(order.preset, microseconds).value_or(*newest));
    };
    if (output.showsFields())
        order.firstField = exposureBefore(0.5);
    if (order.filter == Filter::Mode::Off)
        return;
    const int64_t frame = order.videoFrame;
    const int64_t oldest = frame - framesBefore;
    for (int64_t missed = progress.filters ? std::max(oldest, progress.videoFrame + 1) : oldest; missed < frame;
         ++missed)
        order.missed.push_back(exposureBefore(double(frame - missed)));
}

Order takeOrder(Camera &camera, const Progress &progress)
{
    const std::lock_guard lock(camera.mutex());
    camera.catchUp();
    const auto &output = *camera.device<VideoOutput>();
    const auto &gain = *camera.device<VideoGain>();
    Order order;
    order.now = Clock::now();
    order.format = VideoFormat::of(output.format());
    order.videoFrame = static_cast<int64_t>(double(order.now) * order.format.rate / 1e3);
    order.preset = output.preset();
    order.filter = output.filterMode();
    order.filterThreshold = output.filterThreshold();
    order.gain = gain.agcSettings();
    order.region = gain.effectiveRegion();
    order.gainStep = gain.step(1 / order.format.rate);
    order.levels = output.levels();
    order.palette = &camera.device<VideoPalette>()->palette();
    order.placement = output.placement();
    order.interpolated = output.interpolates();
    order.overlay = camera.device<VideoOverlay>()->content();
    takeExposures(camera, progress, order);
    return order;
}

} // namespace

/// The last image and the memories of temporal filter and gain control.
class VideoPath::Memory
{
public:
    Progress progress() const
    {
        return {m_frame ? std::optional(m_frame->start) : std::nullopt, m_filters, m_videoFrame};
    }
    bool hasImage() const { return m_frame != nullptr; }

    /// Takes the image of an order. A window without frames leaves the last one.
    void takeImage(const Camera &camera, const Order &order)
    {
        auto frame = std::make_shared<Frame>();
        if (!render(camera, *order.newest, order, frame->counts))
            return;
        m_window = order.newest->window;
        m_optics = order.newest->optics;
        frame->start = order.start;
        frame->size = {m_window.width, m_window.height};
        prepareFilter(camera, order);
        m_frame = std::move(frame);
        m_filtered = m_filters ? m_frame->counts : Counts();
        filter(order, m_filtered);
        m_firstField.clear();
        if (order.firstField && render(camera, *order.firstField, order, m_firstField))
            filter(order, m_firstField);
        m_videoFrame = order.videoFrame;
    }

    /// Draws the last image.
    VideoPicture draw(const Order &order)
    {
        Counts copy;
        const Counts &newest = enhanced(m_filters ? m_filtered : m_frame->counts, order, copy);
        m_gain.update(newest, m_frame->size, order.region, order.gain, gainStep(order));
        image::Fields fields{m_frame->size, {}, {}};
        const bool byFields = !m_firstField.empty();
        m_gain.apply(newest, byFields ? fields.second : fields.first);
        if (byFields)
            m_gain.apply(enhanced(m_firstField, order, copy), fields.first);

        image::Palette palette;
        for (size_t level = 0; level < palette.size(); ++level)
            palette[level] = (*order.palette)[order.levels[level]];
        const image::RasterPlace place = placeOf(order);
        image::Picture picture = image::drawRaster(fields, place, palette);
        image::drawOverlay(onRaster(order.overlay, place), picture);
        return {std::move(picture), m_frame, m_gain.limits()};
    }

private:
    static bool render(const Camera &camera, const image::Exposure &exposure, const Order &order, Counts &counts)
    {
        if (order.played)
            return camera.device<Recorder>()->render(*order.played, image::Output::Video, counts);
        return camera.render(exposure, order.preset, image::Output::Video, counts);
    }

    /// Brings the filter to the state before the newest frame, while the last one is still there.
    void prepareFilter(const Camera &camera, const Order &order)
    {
        const bool hasFrames = std::exchange(m_filters, order.filter != Filter::Mode::Off);
        if (!m_filters) {
            m_filter = {};
            return;
        }
        Counts counts;
        if (hasFrames && order.videoFrame != m_videoFrame) {
            counts = m_frame->counts;
            m_filter.apply(counts, order.filter, order.filterThreshold);
        }
        for (const image::Exposure &missed : order.missed)
            if (render(camera, missed, order, counts))
                m_filter.apply(counts, order.filter, order.filterThreshold);
    }

    /// Filters a frame as the next one of the video. The filter stays as it is, since the same frame may come again.
    void filter(const Order &order, Counts &counts) const
    {
        if (order.filter != Filter::Mode::Off)
            Filter(m_filter).apply(counts, order.filter, order.filterThreshold);
    }

    /// Returns `copy` with the frame and its details enhanced, or the frame itself if the method does not enhance them.
    const Counts &enhanced(const Counts &frame, const Order &order, Counts &copy) const
    {
        if (order.gain.method != image::AgcMethod::Detail)
            return frame;
        copy = frame;
        image::enhanceDetail(copy, m_frame->size, order.gain.sharpness, order.gain.threshold);
        return copy;
    }

    /// Returns the share of the way that the gain control goes for the frames of the video since the last picture. It
    /// waits while the image stays.
    double gainStep(const Order &order)
    {
        const int64_t passed = order.now - std::exchange(m_gainTime, order.now);
        return VideoGain::stepOfFrames(order.gainStep, order.newest ? double(passed) * order.format.rate / 1e3 : 0);
    }

    image::RasterPlace placeOf(const Order &order) const
    {
        hlx::RasterPlacement placement = order.placement;
        placement.windowPosition = {m_window.x, m_window.y};
        placement.windowSize = {m_window.width, m_window.height};
        placement.mirrored = m_optics.mirrored;
        placement.inverted = m_optics.inverted;
        const auto image = placement.image();
        return {{placement.raster.width, placement.raster.height},
                image.x,
                image.y,
                image.width,
                image.height,
                order.interpolated};
    }

    /// Places boxes that are in pixels of the last image.
    image::OverlayContent onRaster(image::OverlayContent overlay, const image::RasterPlace &place) const
    {
        const double scale = place.width / m_window.width;
        for (image::OverlayBox &box : overlay.boxes)
            box = {place.x + box.x * scale, place.y + box.y * scale, box.width * scale, box.height * scale, box.color};
        return overlay;
    }

    std::shared_ptr<const Frame> m_frame; ///< Of the last image, before the filter. Null before the first image.
    image::Window m_window; ///< Of the last image.
    image::Optics m_optics;
    Counts m_filtered; ///< Empty while the filter is off.
    Counts m_firstField; ///< Empty if the last image has no fields.
    int64_t m_videoFrame = 0;
    Filter m_filter; ///< With the frames of the video before the last image.
    bool m_filters = false; ///< The filter was on for the last image.
    image::Agc m_gain;
    int64_t m_gainTime = 0; ///< Of the last picture, a time of Clock.
};

VideoPath::VideoPath(Camera &camera) : m_camera(camera) { }

VideoPath::~VideoPath() = default;

VideoPicture VideoPath::render()
{
    const std::lock_guard rendering(m_rendering);
    if (!m_memory)
        m_memory = std::make_unique<Memory>();
    const Order order = takeOrder(m_camera, m_memory->progress());
    if (order.newest)
        m_memory->takeImage(m_camera, order);
    return m_memory->hasImage() ? m_memory->draw(order) : VideoPicture();
}

} // namespace emulator
