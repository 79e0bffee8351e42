#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

/// The measures of a frame on the desk, in counts. Any thread.
struct FrameStatistics {
    double mean = 0;
    /// The standard deviation over the window of this single frame. It includes the scene and the temporal noise.
    double spatialNoise = 0;
    /// The standard deviation, over the window, of the difference between this frame and the one measured before it,
    /// divided by the root of 2. A change of the mean does not add to it, a moving target does. Nothing for a first
    /// frame, and after one of another size.
    std::optional<double> temporalNoise;
    uint16_t lowest = 0;
    uint16_t highest = 0;
    /// The number of pixels of each count.
    std::vector<uint32_t> histogram;

    /// Measures a frame, whose counts are not above image::maximumCount. `before` is the frame before it, empty if
    /// there is none. A frame without pixels has the mean 0.
    static FrameStatistics of(std::span<const uint16_t> frame, std::span<const uint16_t> before);

    /// Returns the lowest count that is not below so many thousandths of the pixels.
    uint16_t countAt(int thousandths) const;
    size_t pixels() const;
};
