#include "platform/emulator/image/Optics.h"

#include "platform/emulator/image/limits.h"

#include <cmath>

namespace emulator::image
{

double Optics::glow(Light::Band band) const
{
    constexpr double emissivity = 0.1;
    return (1 - transmission) * emissivity * Light::of(filterCelsius, band);
}

double Optics::magnificationOf(double narrowness) { return 1 + (maximumMagnification - 1) * within(0, narrowness, 1); }

double Optics::defocusOf(double counts, double narrowness)
{
    constexpr double wideCountsPerPixel = 300;
    constexpr double narrowCountsPerPixel = 100;
    const double share = within(0, narrowness, 1);
    return std::abs(counts) / (wideCountsPerPixel + (narrowCountsPerPixel - wideCountsPerPixel) * share);
}

double Optics::sharpShift(double lensCelsius)
{
    constexpr double countsPerKelvin = 12;
    constexpr double referenceCelsius = 22.5;
    return countsPerKelvin * (lensCelsius - referenceCelsius);
}

} // namespace emulator::image
