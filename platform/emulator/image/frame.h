#pragma once

#include "platform/emulator/image/Exposure.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace emulator::image
{

/// Renders a raw frame: the counts of all pixels of the window, 0 to Detector::maximumCount, row by row. It is a pure
/// function of the exposure: the bytes are the same in every build and on any thread. Returns false, and leaves
/// `counts` unchanged, if there is no detector or its maps do not contain the window.
bool renderFrame(const Exposure &exposure, std::vector<uint16_t> &counts);

/// Returns how many pixels of the window reach a threshold, not regarding noise and twinkling pixels, in less than half
/// of the time of a frame. 0 where renderFrame() returns false. Ends after the row with the `enough`-th such pixel.
size_t countAtLeast(const Exposure &exposure, uint16_t threshold, size_t enough = std::numeric_limits<size_t>::max());

} // namespace emulator::image
