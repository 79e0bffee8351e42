#pragma once

#include <cstdint>

/// The largest number of presets of a camera of the family. Presets count from 0.
inline constexpr uint8_t presetCount = 4;

/// The size of the buffer for the name of the correction that is loaded in a preset, in bytes.
inline constexpr uint32_t nucNameSize = 256;

/// The `flag` argument of the controller's setters of presets and of the superframe rate. It is always 1; no other
/// value is defined.
inline constexpr int controllerFlag = 1;
