#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace emulator::image
{

/// The statistics of frames of the same window, and measures of single frames. A frame is a list of counts, row by row.
/// Used by one thread; the measures of single frames may be used by any thread.
class Statistics
{
public:
    /// Pixels with a nonzero value in `excluded` do not count. It is empty if all pixels count.
    explicit Statistics(size_t pixels, std::vector<uint8_t> excluded = {});

    /// Adds a frame. A frame with another number of pixels is ignored.
    void add(std::span<const uint16_t> frame);

    int frames() const { return m_frames; }
    /// The mean of all pixels of all frames. This and the deviations are 0 without frames or pixels.
    double mean() const;
    /// The standard deviation between the pixels of the mean of all frames.
    double spatialDeviation() const;
    /// The standard deviation of a pixel between the frames, as the root of the mean square of all pixels. 0 for a
    /// single frame.
    double temporalDeviation() const;

    /// The number of pixels at or above a threshold.
    static size_t countAtLeast(std::span<const uint16_t> frame, uint16_t threshold);
    /// How sharp a frame is: the mean square of the differences between neighbouring pixels. 0 for a frame without
    /// pixels, or if the number of pixels is not a multiple of the width.
    static double focusMeasure(std::span<const uint16_t> frame, size_t width);

private:
    bool counts(size_t pixel) const { return m_excluded.empty() || m_excluded[pixel] == 0; }
    size_t countedPixels() const;

    int m_frames = 0;
    std::vector<uint8_t> m_excluded;
    std::vector<uint64_t> m_sums;
    std::vector<uint64_t> m_squares;
};

} // namespace emulator::image
