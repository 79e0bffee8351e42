#pragma once

namespace emulator::image
{

/// The light that a detector of a spectral band receives from a body. Any thread.
class Light
{
public:
    enum Band {
        Medium, ///< Thermal light of the medium waves.
        Long, ///< Thermal light of the long waves, which rises less with the temperature.
        SecondColor, ///< Thermal light of the second colour of a detector with two.
        Short, ///< Reflected light, since bodies near room temperature do not glow there.
    };

    /// The light at which the saturating integration time gives a signal of `fullSignal` counts.
    static constexpr double fullSignal = 15'000;
    /// The most that of() returns.
    static constexpr double maximum = 100'000;

    /// Returns the light of a body of a temperature in Celsius, 0 to maximum; 1 in the thermal bands for 35 C. It is
    /// rounded to 1/256 count of `fullSignal`, so that it does not depend on the mathematical library.
    static double of(double celsius, Band band);
};

} // namespace emulator::image
