#pragma once

#include "platform/emulator/image/Window.h"

#include <cstdint>
#include <span>

namespace emulator::image
{

/// Enhances the details of a frame: the differences of its pixels from the mean of the 5x5 pixels around them. A
/// difference of at least `threshold` counts becomes 1 + 0.5 `sharpness` times as large; smaller ones are noise and
/// stay. At the edges the frame is continued by its outermost pixels. A frame without `size.width * size.height` pixels
/// is left unchanged. Any thread.
void enhanceDetail(std::span<uint16_t> counts, Size size, uint8_t sharpness, uint32_t threshold);

} // namespace emulator::image
