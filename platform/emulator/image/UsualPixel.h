#pragma once

namespace emulator::image
{

struct Readout;

/// A pixel without a fault.
struct UsualPixel {
    double gain = 1;
    double offset = 0; ///< Counts, with the drift.
    double curvature = 0;

    /// Its count by this light, without noise. It may be above the highest count.
    double countOf(double light, const Readout &readout) const;
};

} // namespace emulator::image
