#pragma once

#include "zvt/zvttypes.h"

#include <cstdint>
#include <string>

namespace zvt
{

/// The entry of a file of the camera in a listing: its UTF-8 name, its bytes, and when it was written in milliseconds
/// since 1970-01-01 UTC.
inline zvtSDirEntry dirEntry(const std::string &name, int64_t size, int64_t written)
{
    constexpr int64_t millisecondsTo1970 = 11'644'473'600'000; // From 1601.
    constexpr int64_t ticksPerMillisecond = 10'000;
    zvtSDirEntry entry;
    entry.name = name.c_str();
    entry.size = static_cast<uint32_t>(size);
    entry.time100ns = static_cast<uint64_t>((written + millisecondsTo1970) * ticksPerMillisecond);
    return entry;
}

} // namespace zvt
