#pragma once

namespace hlx
{

/// A width and a height.
struct SSize {
    SSize() = default;
    SSize(int w, int h) : width(w), height(h) { }

    friend bool operator==(const SSize &, const SSize &) = default;

    int width = 0;
    int height = 0;
};

} // namespace hlx
