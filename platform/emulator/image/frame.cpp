#include "platform/emulator/image/frame.h"

#include "platform/emulator/image/Detector.h"
#include "platform/emulator/image/Projection.h"
#include "platform/emulator/image/RowReader.h"

#include <algorithm>
#include <span>

namespace emulator::image
{

namespace
{

bool hasFrame(const Exposure &exposure)
{
    return exposure.detector && exposure.window.hasFrames() && exposure.detector->window().contains(exposure.window);
}

Projection projectionOf(const Exposure &exposure)
{
    return {exposure.scene, exposure.optics, exposure.band, exposure.detector->array(), exposure.window};
}

} // namespace

bool renderFrame(const Exposure &exposure, std::vector<uint16_t> &counts)
{
    if (!hasFrame(exposure))
        return false;
    const Window &window = exposure.window;
    const auto width = static_cast<size_t>(window.width);
    counts.resize(static_cast<size_t>(window.pixels()));
    Projection projection = projectionOf(exposure);
    Detector::RowReader reader(*exposure.detector, exposure.readout, exposure.frameNumber);
    for (int y = 0; y < window.height; ++y) {
        // The flips are the last step, so that they move the faults of the pixels too.
        const auto target = static_cast<size_t>(exposure.optics.inverted ? window.height - 1 - y : y);
        const std::span<uint16_t> row(counts.data() + target * width, width);
        reader.read(window.x, window.y + y, projection.row(y), row);
        if (exposure.optics.mirrored)
            std::ranges::reverse(row);
    }
    return true;
}

size_t countAtLeast(const Exposure &exposure, uint16_t threshold, size_t enough)
{
    if (!hasFrame(exposure) || threshold > Detector::maximumCount)
        return 0;
    Projection projection = projectionOf(exposure);
    Detector::RowReader reader(*exposure.detector, exposure.readout, exposure.frameNumber);
    const int x = exposure.window.x;
    const auto width = static_cast<size_t>(exposure.window.width);
    size_t pixels = 0;
    for (int row = 0; row < exposure.window.height && pixels < enough; ++row) {
        const int y = exposure.window.y + row;
        pixels += reader.mayReach(x, y, width, projection.brightest(row), threshold)
            ? reader.countAtLeast(x, y, projection.row(row), threshold)
            : reader.countFixedAtLeast(x, y, width, threshold);
    }
    return pixels;
}

} // namespace emulator::image
