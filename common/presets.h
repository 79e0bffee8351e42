#pragma once

#include <cstdint>

/// How many presets the family's cameras have at most. They count from 0.
inline constexpr uint8_t presetCount = 4;
