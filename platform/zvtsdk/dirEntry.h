#pragma once

#include "zvt/zvttypes.h"

#include <algorithm>
#include <concepts>
#include <cstdint>
#include <limits>
#include <string>

namespace zvt
{

/// Returns a time in milliseconds since 1970-01-01 UTC as the SDK has it: in units of 100 ns since 1601-01-01 UTC.
inline uint64_t fileTime(int64_t milliseconds)
{
    constexpr int64_t millisecondsTo1970 = 11'644'473'600'000; // From 1601.
    constexpr int64_t ticksPerMillisecond = 10'000;
    return static_cast<uint64_t>((milliseconds + millisecondsTo1970) * ticksPerMillisecond);
}

/// Returns a size in bytes as the SDK has it, which is the largest possible one for any larger file.
template <std::integral Size> uint32_t fileSize(Size bytes)
{
    return static_cast<uint32_t>(
        std::min<uint64_t>(static_cast<uint64_t>(bytes), std::numeric_limits<uint32_t>::max()));
}

/// Returns the directory entry of a file on the camera. `name` is UTF-8, `size` is in bytes, and `written` is the time
/// of the last change in milliseconds since 1970-01-01 UTC.
template <std::integral Size> zvtSDirEntry dirEntry(const std::string &name, Size size, int64_t written)
{
    zvtSDirEntry entry;
    entry.name = name.c_str();
    entry.size = fileSize(size);
    entry.time100ns = fileTime(written);
    return entry;
}

} // namespace zvt
