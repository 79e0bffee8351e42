#pragma once

#include <array>
#include <cstdint>

// Changes of the levels of grey of a picture after the gain control. Any thread.

namespace emulator::image
{

/// The level, 0 to 255, for each of the 256 levels.
using LevelTable = std::array<uint8_t, 256>;

/// Levels y become 255 - y if hot is black, and then (y - 128)(1 + contrast / 128) + 128 + 2 brightness, cut to 0 to
/// 255. So a higher brightness always gives a brighter picture. Brightness and contrast are -128 to 127.
LevelTable adjustedLevels(int brightness, int contrast, bool blackHot);

} // namespace emulator::image
