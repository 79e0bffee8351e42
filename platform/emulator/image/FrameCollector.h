#pragma once

#include "platform/emulator/image/Exposure.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace emulator::image
{

/// The mean, the smallest and the largest count of each pixel of some raw frames of the same window. The pixels are in
/// the order of the frames. Used by one thread.
class FrameCollector
{
public:
    /// Renders the raw frame of an exposure and adds it. Returns false, and adds nothing, if there is no such frame, or
    /// if its window or its flips differ from those of the first frame.
    bool add(const Exposure &exposure);

    int frames() const { return m_frames; }
    size_t pixels() const { return m_sums.size(); }
    /// The exposure of the last frame; its window and its flips are those of all frames.
    const Exposure &exposure() const { return m_exposure; }

    /// The mean count of a pixel. There must be a frame.
    double mean(size_t pixel) const { return static_cast<double>(m_sums[pixel]) / m_frames; }
    std::span<const uint16_t> minima() const { return m_minima; }
    std::span<const uint16_t> maxima() const { return m_maxima; }

private:
    int m_frames = 0;
    Exposure m_exposure;
    std::vector<uint64_t> m_sums;
    std::vector<uint16_t> m_minima;
    std::vector<uint16_t> m_maxima;
    std::vector<uint16_t> m_frame;
};

} // namespace emulator::image
