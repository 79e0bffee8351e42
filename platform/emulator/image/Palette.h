#pragma once

#include <array>
#include <cstdint>

namespace emulator::image
{

/// A colour of a picture.
struct Rgb {
    uint8_t red = 0;
    uint8_t green = 0;
    uint8_t blue = 0;
    bool operator==(const Rgb &) const = default;
};

/// The colours of the levels 0 to 255, from cold to hot, or those of the numbers of an overlay.
using Palette = std::array<Rgb, 256>;

} // namespace emulator::image
