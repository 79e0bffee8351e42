#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace emulator
{

/// Returns the longest beginning of a text in UTF-8 that has at most this number of bytes and ends between two
/// characters.
constexpr std::string_view beginningOf(std::string_view text, size_t bytes)
{
    size_t length = std::min(bytes, text.size());
    if (length < text.size())
        while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80)
            --length;
    return text.substr(0, length);
}

} // namespace emulator
