#pragma once

#include "platform/emulator/devices/Focus.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/image/Detector.h"
#include "platform/emulator/image/Statistics.h"
#include "tests/platform/LensRig.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

/// A camera with a cold detector and a stopped clock, and its raw frames.
class FrameRig : public LensRig
{
public:
    using Counts = std::vector<uint16_t>;

    /// The devices of a camera whose pixels are all equal.
    static constexpr auto equalPixels = R"({"sensor": {"detector": {"vignetting": 0, "gainDeviation": 0,
        "offsetDeviation": 0, "columnDeviation": 0, "curvatureDeviation": 0, "driftDeviation": 0,
        "dead": 0, "hot": 0, "weak": 0, "strong": 0, "twinkling": 0}}})";

    explicit FrameRig(const char *profile = "everything") : LensRig(profile) { coolDetector(); }

    /// Opens a camera with a profile that extends another one by these devices.
    void openWith(const char *devices, const char *extended = "everything")
    {
        open(writeProfile(m_profiles.path(), extended, devices).toLatin1());
        coolDetector();
    }

    const emulator::Sensor &sensor() { return *camera().device<emulator::Sensor>(); }
    /// The array coordinates of the window.
    emulator::image::Window window()
    {
        const auto &present = sensor().geometry().window();
        return {present.x, present.y, present.width, present.height};
    }
    /// Reads out 160x128 pixels in the middle of the array.
    bool useSmallWindow()
    {
        const auto array = sensor().array().size();
        return set("sensor.window", QVariantList{(array.width - 160) / 2, (array.height - 128) / 2, 160, 128});
    }
    /// Moves the focus to the sharp position for a scene at this distance in metres, and keeps it sharp at any
    /// temperature of the lens.
    bool focusOn(double metres)
    {
        const bool set = this->set("autoFocus.sceneDistance", metres) && this->set("athermalization.enabled", true)
            && this->set("focus.position", camera().device<emulator::Focus>()->positionFor(metres));
        finishMoves();
        return set && defocus() < 0.01;
    }
    /// Shows an area blackbody over the whole field.
    bool showArea(double celsius) { return set("emulator./Pattern", 3) && set("emulator./BlackbodyTemp1", celsius); }

    /// What frames of the first preset depend on now.
    emulator::image::Exposure exposure() { return camera().exposure({}); }

    /// The counts of the newest frame, and of a frame that has begun. Empty if it does not exist.
    Counts newest(int preset = 0)
    {
        const auto frame = camera().newestFrame(preset);
        return frame ? frame->counts : Counts();
    }
    Counts frame(const emulator::FrameStart &start)
    {
        const auto frame = camera().frame(start.preset, start.number);
        return frame && frame->start == start ? frame->counts : Counts();
    }

    /// The statistics of the last frames of a preset that follow each other, without faulty pixels.
    emulator::image::Statistics statistics(int frames, int preset = 0)
    {
        const auto newest = camera().newestFrame(preset);
        if (!newest)
            return emulator::image::Statistics(0);
        emulator::image::Statistics statistics(newest->counts.size(), faults());
        for (int back = 0; back < frames; ++back)
            if (const auto frame = camera().frame(preset, newest->start.number - static_cast<uint64_t>(back)))
                statistics.add(frame->counts);
        return statistics;
    }
    double mean(int preset = 0) { return statistics(1, preset).mean(); }

    /// The share of the pixels of the newest frame that are at the maximum.
    double whiteShare()
    {
        const Counts counts = newest();
        return double(emulator::image::Statistics::countAtLeast(counts, 16'383)) / double(counts.size());
    }

    /// The truly faulty pixels of the window, nonzero for each of them.
    std::vector<uint8_t> faults()
    {
        const auto read = window();
        const auto maps = camera().device<emulator::Sensor>()->array().mapsFor(read);
        std::vector<uint8_t> faulty(static_cast<size_t>(read.pixels()));
        for (const auto &fault : maps->faults())
            if (read.contains({fault.x, fault.y, 1, 1}))
                faulty[static_cast<size_t>((fault.y - read.y) * read.width + fault.x - read.x)] = 1;
        return faulty;
    }

private:
    QTemporaryDir m_profiles;
};

/// The largest difference between the counts of two frames. The largest int for frames of different sizes or without
/// pixels.
inline int largestDifference(const FrameRig::Counts &first, const FrameRig::Counts &second)
{
    if (first.empty() || first.size() != second.size())
        return std::numeric_limits<int>::max();
    int largest = 0;
    for (size_t i = 0; i < first.size(); ++i)
        largest = std::max(largest, std::abs(first[i] - second[i]));
    return largest;
}
