#pragma once

#include "platform/emulator/image/Window.h"

#include <algorithm>

namespace emulator::image
{

/// Returns one axis' part of the squared distance of a pixel from the centre of its array: 1 in the middle of the far
/// edges, which are half of the longer side away. `position` counts from 0 along an axis with `length` pixels.
constexpr float squaredDistance(int position, int length, const Size &array)
{
    const double distance = (2.0 * position + 1 - length) / std::max(array.width, array.height);
    return static_cast<float>(distance * distance);
}

} // namespace emulator::image
