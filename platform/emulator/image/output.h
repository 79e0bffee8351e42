#pragma once

#include "platform/emulator/image/Exposure.h"

#include <cstdint>
#include <vector>

namespace emulator::image
{

/// The outputs of a camera. Each has a switch for the correction of its frames.
enum class Output { Video, Digital };

/// Renders a frame as an output shows it: the raw frame; if the output's switch is on and a table contains the window,
/// the correction and the repair of bad pixels; then digital gain and offset. Last, if bad pixels are shown and a table
/// contains the window, its bad pixels become white, also while the switch is off. Pixels have 0 to
/// Detector::maximumCount. Pure and with the return value of renderFrame().
bool renderOutput(const Exposure &exposure, Output output, std::vector<uint16_t> &counts);

} // namespace emulator::image
