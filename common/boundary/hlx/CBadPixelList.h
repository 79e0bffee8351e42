#pragma once

#include <cstdint>

#include "hlx/CString.h"
#include "hlx/TArray.h"

namespace hlx::cam::zvt
{

/// The pixels that a correction must replace, with the size of the image they belong to. Coordinates count from 0 at
/// the top left. A value; one thread at a time.
class CBadPixelList
{
public:
    /// Reads a list file. False, with the list left as it is, if there is no such file, or if it is foreign, cut short
    /// or corrupt.
    bool Load(const CString &path);

    /// In pixels; 0 by 0 for an empty list.
    void GetSize(uint16_t &width, uint16_t &height) const;
    unsigned GetCount() const;
    /// One pixel, in the order of the list. An index beyond the end leaves both alone.
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
