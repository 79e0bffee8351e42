#pragma once

#include <cstdint>

namespace emulator::image
{

/// A size in pixels.
struct Size {
    int width = 0;
    int height = 0;
    bool operator==(const Size &) const = default;
};

/// A rectangle of pixels, by default of a detector array.
struct Window {
    /// Larger windows have no frames, and no detector maps are made for them.
    static constexpr int64_t maximumPixels = 4'194'304;

    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    bool operator==(const Window &) const = default;
    int64_t pixels() const { return int64_t(width) * height; }
    /// Whether frames of this window exist.
    bool hasFrames() const { return width > 0 && height > 0 && pixels() <= maximumPixels; }
    bool contains(const Window &other) const
    {
        return other.x >= x && other.y >= y && int64_t(other.x) + other.width <= int64_t(x) + width
            && int64_t(other.y) + other.height <= int64_t(y) + height;
    }
};

} // namespace emulator::image
