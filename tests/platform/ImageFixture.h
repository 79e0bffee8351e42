#pragma once

#include "platform/emulator/image/Detector.h"
#include "platform/emulator/image/frame.h"

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

inline QByteArray checksum(const Counts &counts)
{
    const QByteArrayView bytes(reinterpret_cast<const char *>(counts.data()),
                               static_cast<qsizetype>(counts.size() * sizeof(uint16_t)));
    return QCryptographicHash::hash(bytes.toByteArray(), QCryptographicHash::Md5).toHex();
}

} // namespace imageFixture
