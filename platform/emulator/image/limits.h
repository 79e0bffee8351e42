#pragma once

#include <cstdint>

namespace emulator::image
{

/// Returns the value if it is in the range, otherwise the nearer end; the lower end for a value that is not a number.
constexpr double within(double lower, double value, double upper)
{
    if (!(value > lower))
        return lower;
    return value < upper ? value : upper;
}

/// The highest count of a pixel.
inline constexpr uint16_t maximumCount = 16'383;

/// Returns the nearest count; 0 for a value that is not a number.
constexpr uint16_t toCount(float value)
{
    constexpr float brightest = maximumCount;
    value = value > 0 ? value : 0;
    value = value < brightest ? value : brightest;
    return static_cast<uint16_t>(static_cast<int>(value + 0.5f));
}

} // namespace emulator::image
