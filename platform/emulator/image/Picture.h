#pragma once

#include <cstdint>
#include <vector>

namespace emulator::image
{

/// A picture of a video output.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<uint8_t> rgb; ///< Red, green and blue of each pixel, row by row without padding.

    bool isEmpty() const { return rgb.empty(); }
    bool operator==(const Picture &) const = default;
};

} // namespace emulator::image
