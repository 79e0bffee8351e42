#pragma once

#include <cstdint>
#include <optional>
#include <utility>

namespace emulator
{

class Recording;

/// Returns the first frame of a recording whose IRIG time is `start` or later, and the last one whose time is `end` or
/// earlier. Times are in microseconds from the beginning of the year; the years of the frames do not matter, so that
/// January is before December, also in a recording from December to January. Empty if there is no such frame, or if the
/// first one is after the last one. For each setting of the IRIG clock and each year in the recording it takes the
/// times of some hundred frames: some 10 us, however many frames there are, but up to 0.2 ms for each time if a fast
/// trigger has advanced the presets for long (see PresetTurns). The caller should not hold the camera's lock.
std::optional<std::pair<uint64_t, uint64_t>> findFrames(const Recording &recording, int64_t start, int64_t end);

} // namespace emulator
