#pragma once

#include "zvt/zvttypes.h"

#include <cstdint>
#include <string>

namespace zvt
{

/// Returns the directory entry of a file on the camera. `name` is UTF-8, `size` is in bytes, and `written` is the time
/// of the last change in milliseconds since 1970-01-01 UTC.
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
