#pragma once

#include "platform/emulator/devices/VideoOutput.h"
#include "platform/emulator/devices/VideoPalette.h"
#include "tests/platform/FrameRig.h"

#include <QRect>

#include <cmath>
#include <numeric>
#include <vector>

/// A camera with a cold detector, a window of 160x128 pixels and the pictures of its video output. The overlay is off,
/// and so is the correction, so that flips mirror the image exactly.
class VideoRig : public FrameRig
{
public:
    using Picture = emulator::image::Picture;
    using Levels = std::vector<uint8_t>;

    explicit VideoRig(const char *profile = "everything") : FrameRig(profile) { prepare(); }

    void openWith(const char *devices, const char *extended = "everything")
    {
        FrameRig::openWith(devices, extended);
        prepare();
    }

    /// Sets several settings. False if one is refused.
    bool setAll(std::initializer_list<std::pair<const char *, QVariant>> settings)
    {
        return std::ranges::all_of(settings, [this](const auto &s) { return set(s.first, s.second); });
    }
    /// Makes the levels depend on the counts alone: they run from black to white between these counts.
    bool useRange(int low, int high)
    {
        return setAll({{"agc.method", 3}, {"agc.manualLow", low}, {"agc.manualHigh", high}});
    }
    /// The same with a level for each count around the mean of the picture.
    bool useNarrowRange()
    {
        const int middle = static_cast<int>(mean());
        return useRange(middle - 127, middle + 128);
    }

    emulator::VideoOutput &output() { return *camera().device<emulator::VideoOutput>(); }
    Picture picture() { return output().render(); }
    /// The pixels of the raster that show the image, by whole pixels.
    QRect place()
    {
        const auto image = output().placement().image();
        return QRectF(image.x, image.y, image.width, image.height).toRect();
    }
    /// The levels of the image. Its palette must be Grayscale.
    Levels levels() { return levelsIn(picture(), place()); }

    static Levels levelsIn(const Picture &picture, const QRect &part)
    {
        Levels levels;
        for (int y = part.top(); y <= part.bottom(); ++y)
            for (int x = part.left(); x <= part.right(); ++x)
                levels.push_back(pixel(picture, x, y).red);
        return levels;
    }
    static emulator::image::Rgb pixel(const Picture &picture, int x, int y)
    {
        const auto *const rgb = picture.rgb.data() + size_t(y * picture.width + x) * 3;
        return {rgb[0], rgb[1], rgb[2]};
    }
    /// The smallest rectangle with all pixels of a picture that are not grey.
    static QRect coloredPart(const Picture &picture)
    {
        QRect part;
        for (int y = 0; y < picture.height; ++y)
            for (int x = 0; x < picture.width; ++x)
                if (const auto rgb = pixel(picture, x, y); rgb.red != rgb.green || rgb.green != rgb.blue)
                    part |= QRect(x, y, 1, 1);
        return part;
    }
    /// Whether all pixels outside of a part are black.
    static bool isBlackOutside(const Picture &picture, const QRect &part)
    {
        for (int y = 0; y < picture.height; ++y)
            for (int x = 0; x < picture.width; ++x)
                if (!part.contains(x, y) && pixel(picture, x, y) != emulator::image::Rgb())
                    return false;
        return true;
    }
    static double meanOf(const Levels &levels)
    {
        return double(std::accumulate(levels.begin(), levels.end(), int64_t(0))) / double(levels.size());
    }
    static double deviationOf(const Levels &levels)
    {
        const double mean = meanOf(levels);
        double squares = 0;
        for (const uint8_t level : levels)
            squares += (level - mean) * (level - mean);
        return std::sqrt(squares / double(levels.size()));
    }

private:
    /// The image is in the middle of the raster, unless its position is fixed.
    void prepare()
    {
        if (!useSmallWindow() || !setAll({{"overlay.enabled", false}, {"corrections.videoCorrected", false}})
            || (output().positionWritable() && !set("video.position", 1)))
            qFatal("the camera refuses a setting of the rig");
    }
};

/// A camera whose gain control follows at 0.5/s, so that it goes 63 % of its way in 2 s.
class SlowGainRig : public VideoRig
{
public:
    /// Begins a new way. False if a setting is refused.
    bool begin()
    {
        const bool set = setAll({{"agc.filterRateEnabled", false}}) && showArea(27) && useRange(0, 10'000);
        m_goal = meanOf(levels());
        const bool back = set && useRange(0, 16'383);
        m_start = meanOf(levels());
        return back && m_goal - m_start > 30
            && setAll({{"agc.filterRateEnabled", true}, {"agc.filterRate", 0.5}, {"agc.manualHigh", 10'000}});
    }
    /// Asks for a picture. Returns the share of the way so far.
    double way() { return (meanOf(levels()) - m_start) / (m_goal - m_start); }

private:
    double m_start = 0;
    double m_goal = 0;
};
