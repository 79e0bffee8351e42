#pragma once

#include "platform/emulator/image/Detector.h"
#include "platform/emulator/image/FrameCollector.h"
#include "platform/emulator/image/Statistics.h"
#include "platform/emulator/image/frame.h"
#include "platform/emulator/image/output.h"

#include <QCryptographicHash>

#include <vector>

/// Frames of an array of 160x128 pixels.
namespace imageFixture
{

using namespace emulator::image;
using Counts = std::vector<uint16_t>;

inline constexpr Size smallArray{160, 128};
inline constexpr Window smallWindow{0, 0, smallArray.width, smallArray.height};

/// An exposure of a whole array.
inline Exposure exposureOf(Scene::Pattern pattern, const Detector::Properties &properties = {},
                           const Size &array = smallArray)
{
    Exposure exposure;
    exposure.window = {0, 0, array.width, array.height};
    exposure.detector = Detector::make(properties, array, exposure.window);
    exposure.scene.pattern = pattern;
    return exposure;
}

/// An array without differences between its pixels.
inline Detector::Properties corrected() { return Detector::Properties().corrected(); }

/// The counts of an exposure, empty if there is no frame.
inline Counts frameOf(const Exposure &exposure)
{
    Counts counts;
    renderFrame(exposure, counts);
    return counts;
}

/// The same as an output shows it.
inline Counts outputOf(const Exposure &exposure, Output output = Output::Video)
{
    Counts counts;
    renderOutput(exposure, output, counts);
    return counts;
}

/// An area blackbody over the whole field.
inline Exposure areaOf(Exposure exposure, double celsius)
{
    exposure.scene.pattern = Scene::Area;
    exposure.scene.blackbody1 = celsius;
    return exposure;
}

/// Frames of an exposure that follow each other.
inline FrameCollector collect(Exposure exposure, int frames)
{
    FrameCollector collector;
    for (int frame = 0; frame < frames; ++frame, ++exposure.frameNumber)
        collector.add(exposure);
    return collector;
}

/// The pixels of a frame that are faulty, nonzero for each of them.
inline std::vector<uint8_t> faultsOf(const Exposure &exposure)
{
    const Window &window = exposure.window;
    std::vector<uint8_t> faulty(static_cast<size_t>(window.pixels()));
    for (const Detector::Fault &fault : exposure.detector->faults())
        if (window.contains({fault.x, fault.y, 1, 1}))
            faulty[placeIn(window, exposure.optics, fault.x, fault.y).indexIn(window.width)] = 1;
    return faulty;
}

/// The standard deviation between the pixels without faults of the mean of 64 frames.
inline double residualOf(Exposure exposure, Output output = Output::Video)
{
    Statistics statistics(static_cast<size_t>(exposure.window.pixels()), faultsOf(exposure));
    exposure.frameNumber += 1000; // Other noise than that of the correction.
    for (int frame = 0; frame < 64; ++frame, ++exposure.frameNumber)
        statistics.add(outputOf(exposure, output));
    return statistics.spatialDeviation();
}

/// A checksum of counts or of levels.
template <class Number> QByteArray checksum(const std::vector<Number> &numbers)
{
    const QByteArrayView bytes(reinterpret_cast<const char *>(numbers.data()),
                               static_cast<qsizetype>(numbers.size() * sizeof(Number)));
    return QCryptographicHash::hash(bytes.toByteArray(), QCryptographicHash::Md5).toHex();
}

} // namespace imageFixture
