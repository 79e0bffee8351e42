#pragma once

#include "platform/emulator/image/Window.h"

#include <cstdint>
#include <vector>

namespace emulator
{

/// The beginning of a frame.
struct FrameStart {
    uint64_t number = 0; ///< Counts all frames since the first connection, from 0.
    int preset = 0;
    int64_t tick = 0; ///< Clocks of the sensor since the first connection.
    int64_t microseconds = 0; ///< The same as a time of Clock in microseconds since 1970, rounded down.
    bool operator==(const FrameStart &) const = default;
};

/// A frame: raw, before any correction, or as an output shows it.
struct Frame {
    FrameStart start;
    image::Size size;
    std::vector<uint16_t> counts; ///< Of each pixel, 0 to 16383, row by row.
};

} // namespace emulator
