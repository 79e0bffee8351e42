#pragma once

#include "platform/emulator/image/Voltages.h"

namespace emulator::image
{

/// How the array is exposed and read out. Any finite or other value may be given: what is out of a physical range
/// counts as the nearer end of it.
struct Readout {
    enum Cooling { Uncooled, Thermoelectric, Stirling };

    static constexpr double maximumClockNoise = 20;

    double integrationTime = 2; ///< Milliseconds.
    double saturatingTime = 4; ///< The integration time at which light 1 gives the full signal, in milliseconds.
    int gainLevel = 0; ///< Each level doubles the signal.
    bool highSensitivity = false; ///< Doubles the signal.
    bool reducedNoise = false; ///< The slower readout with less noise.
    Cooling cooling = Stirling;
    double warmth = 0; ///< Kelvin by which the array is warmer than its cold temperature or its setpoint.
    double caseCelsius = 25;
    Voltages voltages = {};
    int color = 0; ///< 1 for the second colour of a detector with two, whose pixels have higher offsets.
    double clockNoise = 1; ///< Multiplies the read noise, 1 to 20: with another than the best phase of the clock.
    bool noise = true; ///< Without it, pixels neither have noise nor twinkle.

    bool operator==(const Readout &) const = default;

    /// The product of the gains of level and mode.
    double gain() const;
    /// The dark current in counts, rounded to 1/256 count.
    double dark() const;
    /// The counts that the colour and the voltages add to every pixel.
    double addedCounts() const;
};

} // namespace emulator::image
