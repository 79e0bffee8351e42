#pragma once

namespace emulator::image
{

/// Returns the value if it is in the range, otherwise the nearer end; the lower end for a value that is not a number.
constexpr double within(double lower, double value, double upper)
{
    if (!(value > lower))
        return lower;
    return value < upper ? value : upper;
}

} // namespace emulator::image
