#pragma once

#include "platform/emulator/image/Optics.h"
#include "platform/emulator/image/Window.h"

#include <algorithm>
#include <cstddef>

namespace emulator::image
{

/// Returns one axis' part of the squared distance of a pixel from the centre of its array: 1 in the middle of the far
/// edges, which are half of the longer side away. `position` counts from 0 along an axis with `length` pixels.
constexpr float squaredDistance(int position, int length, const Size &array)
{
    const double distance = (2.0 * position + 1 - length) / std::max(array.width, array.height);
    return static_cast<float>(distance * distance);
}

/// A pixel of a frame.
struct Place {
    int x = 0;
    int y = 0;

    bool operator==(const Place &) const = default;
    /// The index in the list of the pixels of a frame of this width.
    size_t indexIn(int width) const
    {
        return static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x);
    }
};

/// Returns where frames of a window with these flips show the pixel at the array coordinates x, y of the window.
constexpr Place placeIn(const Window &window, const Optics &optics, int x, int y)
{
    return {optics.mirrored ? window.x + window.width - 1 - x : x - window.x,
            optics.inverted ? window.y + window.height - 1 - y : y - window.y};
}

} // namespace emulator::image
