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
    // Those of the factory are values of a float, so that a camera starts with exactly these.
    static constexpr double startReference = 1.65F;
    static constexpr double minimumReference = 1.0;
    static constexpr double maximumReference = 2.3F;
    static constexpr double startCommon = 2.4F;
    static constexpr double minimumCommon = 1.8F;
    static constexpr double maximumCommon = 3.0;

    double globalOffset = 0; ///< Volts, -5 to 5.
    double bias = startBias; ///< Millivolts, 0 to 500. The one of the selected colour.
    double skimming = 0; ///< Volts, 0 to 3.3. 0 takes nothing off.
    double reference = startReference; ///< Volts, 1.0 to 2.3. Acts as the global offset, but is twice as strong.
    double common = startCommon; ///< Volts, 1.8 to 3.0, at the common electrode of all pixels.

    bool operator==(const Voltages &) const = default;

    /// The counts that the global offset and the reference add to every pixel.
    double addedCounts() const;
    /// The volts of global offset by which the pixels differ more than with the start values.
    double addedVolts() const;

    // The effects of the bias and, in response() and excess(), of the common electrode, as factors of those of the
    // start values. They do not depend on the mathematical library.

    double response() const;
    /// -2 to 2. The responses of the pixels differ in proportion to it.
    double excess() const;
    double readNoise() const;
    double twinkling() const; ///< The number of twinkling pixels, 0 to maximumTwinkling.

    static constexpr double maximumTwinkling = 4;

    /// The counts that skimming takes off the light of each pixel during the integration, in milliseconds.
    double skimmedCounts(double integrationTime) const;
};

} // namespace emulator::image
