#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace emulator::image
{

/// Reduces the noise of a video by the mean of each pixel over the last four frames, which are its memory. The first
/// frame of another size counts as the frames before it, too. Used by one thread.
class TemporalFilter
{
public:
    /// By the numbers of the SDK.
    enum class Mode : uint8_t {
        Off, ///< Also forgets the frames.
        FourTap, ///< The mean of the last four frames.
        Adaptive, ///< The mean where a pixel differs from it by at most the threshold, otherwise the pixel.
    };

    /// Filters the next frame of the video, whose counts are at most maximumCount. `threshold` is in counts.
    void apply(std::span<uint16_t> counts, Mode mode, uint16_t threshold);

private:
    std::array<std::vector<uint16_t>, 3> m_before; ///< The frames before the next one.
    size_t m_oldest = 0; ///< The one of them that the next frame replaces.
};

} // namespace emulator::image
