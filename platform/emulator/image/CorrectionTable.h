#pragma once

#include "platform/emulator/image/SharedVector.h"
#include "platform/emulator/image/geometry.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace emulator::image
{

/// What is done with the bad pixels of a corrected frame.
enum class Repair : uint8_t {
    TwoNearest, ///< The mean of the nearest good pixels to the left and to the right, weighted by nearness.
    Nearest, ///< The nearest good pixel of the row.
    None,
};

/// A non-uniformity correction: corrected = raw * gain + offset for each pixel of a window. The pixels are in the order
/// of the frames from which the table was made, so after their flips: the table does not tell which flips these were.
struct CorrectionTable {
    enum Flag : uint8_t {
        Bad = 1, ///< Is repaired.
        Factory = 2, ///< Is in the factory's list of bad pixels.
        Twinkling = 4, ///< Twinkled when the table was made.
    };

    Window window; ///< By array coordinates.
    SharedVector<float> gains; ///< Shared with copies, in which often only the flags differ.
    SharedVector<float> offsets; ///< Counts.
    std::vector<uint8_t> flags; ///< Sums of Flag.

    /// Whether it has pixels, and one gain, offset and set of flags for each of them.
    bool isComplete() const;

    /// Returns the pixel of the table for the first pixel of a frame of a window with these flips; nothing if the
    /// window is not inside the table's. Assumes that the table was made with the same flips.
    std::optional<Place> placeOf(const Window &part, const Optics &optics) const;

    /// Returns the part of the table for frames of a window with these flips. Without pixels if the window is not
    /// inside the table's, or if the table is not complete.
    CorrectionTable partFor(const Window &part, const Optics &optics) const;
};

} // namespace emulator::image
