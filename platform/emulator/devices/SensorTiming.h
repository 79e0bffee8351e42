#pragma once

#include "platform/emulator/devices/presets.h"

#include <array>
#include <cstdint>

namespace emulator
{

/// The frames that a sensor makes with its present settings. Widths are in clocks.
struct SensorTiming {
    struct Preset {
        uint32_t repeats = 0; ///< Frames of the preset in a cycle; 0 if it is not in use.
        uint32_t width = 0; ///< Of a frame.
        uint32_t shortestWidth = 0; ///< Of a frame that does not wait for the end of its period.
        uint32_t integration = 0; ///< Of a frame, at its beginning.
    };

    std::array<Preset, maximumPresets> presets{};
    bool superframing = false; ///< The frames of a cycle are the subframes of a superframe.
    uint64_t superframeWidth = 0;
};

} // namespace emulator
