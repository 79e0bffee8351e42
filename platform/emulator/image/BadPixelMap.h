#pragma once

#include "platform/emulator/image/Window.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace emulator::image
{

struct CorrectionTable;
struct Optics;

/// The bad pixels of a window of the array. They are in the order of the detector, so they do not depend on the flips
/// of frames. Corrections are assumed to have been made with the flips that are given. A map of 640x512 pixels takes
/// some 0.05 ms in each function.
struct BadPixelMap {
    Window window;
    std::vector<uint8_t> isBad = std::vector<uint8_t>(static_cast<size_t>(window.pixels())); ///< 1, row by row; or 0.

    /// Adds those bad pixels of a correction that are in a window.
    void add(const CorrectionTable &table, const Optics &flips, const Window &part);

    /// Returns the bad pixels in frames of a window with these flips, 1 for each of them.
    std::vector<uint8_t> forFrames(const Window &frames, const Optics &flips) const;

    /// Returns a correction in which these pixels are bad, as pixels of the factory's list, too.
    CorrectionTable appliedTo(CorrectionTable table, const Optics &flips) const;
};

} // namespace emulator::image
