#pragma once

namespace emulator::image
{

/// The adjustable voltages of a detector. Each changes every count, and differently from pixel to pixel, so a
/// correction that was made with other voltages no longer fits. With the values here no pixel is changed. What is out
/// of a physical range counts as the nearer end of it.
struct Voltages {
    static constexpr double startBias = 250;
    static constexpr double maximumBias = 500;
    static constexpr double maximumOffset = 5;
    static constexpr double maximumSkimming = 3.3;

    double globalOffset = 0; ///< Volts, -5 to 5.
    double bias = startBias; ///< Millivolts, 0 to 500. The one of the selected colour.
    double skimming = 0; ///< Volts, 0 to 3.3. 0 takes nothing off.

    bool operator==(const Voltages &) const = default;

    /// The counts that the global offset adds to every pixel.
    double addedCounts() const;
    /// The volts by which the pixels differ more than with the start values.
    double addedVolts() const;

    // The effects of the bias, as factors of those at startBias. They do not depend on the mathematical library.

    double response() const;
    /// -1 to 1. The responses of the pixels differ in proportion to it.
    double excess() const;
    double readNoise() const;
    double twinkling() const; ///< The number of twinkling pixels, 0 to maximumTwinkling.

    static constexpr double maximumTwinkling = 4;

    /// The counts that skimming takes off the light of each pixel during the integration, in milliseconds.
    double skimmedCounts(double integrationTime) const;
};

} // namespace emulator::image
