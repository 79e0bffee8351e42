#pragma once

namespace emulator
{

/// The presets of a camera. A profile may have fewer ("numPresets").
inline constexpr int maximumPresets = 4;

} // namespace emulator
