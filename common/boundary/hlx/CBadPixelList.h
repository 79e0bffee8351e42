#pragma once

#include <cstdint>

#include "hlx/CString.h"
#include "hlx/TArray.h"

namespace hlx::cam::zvt
{

/// The pixels that a correction must replace, with the size of the image to which they belong. Coordinates count from 0
/// at the top left. One thread at a time.
class CBadPixelList
{
public:
    /// Replaces the list by the list in a file. Returns false and keeps the old list if the file is missing, is not a
    /// list, is truncated or is corrupt, or if its image has more than 4 194 304 pixels.
    bool Load(const CString &path);

    /// The size of the image in pixels, 0 by 0 before a list was loaded.
    void GetSize(uint16_t &width, uint16_t &height) const;
    /// The number of pixels in the list.
    unsigned GetCount() const;
    /// The pixel at `index`, from 0. An index out of range leaves both outputs as they are.
    void GetAt(unsigned index, uint16_t &x, uint16_t &y) const;

private:
    struct Pixel {
        uint16_t x;
        uint16_t y;
    };

    uint16_t m_width = 0;
    uint16_t m_height = 0;
    TArray<Pixel> m_pixels;
};

} // namespace hlx::cam::zvt
