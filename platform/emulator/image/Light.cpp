#include "platform/emulator/image/Light.h"

#include "platform/emulator/image/limits.h"

#include <cmath>

namespace emulator::image
{

namespace
{

constexpr double kelvinOfZeroCelsius = 273.15;
constexpr double kelvinOfUnitLight = 308.15;
constexpr double mediumSlope = 3200; // Kelvin.
constexpr double secondColorSlope = 2400;
constexpr double longSlope = 1440;

constexpr double reflectedAtRoom = 0.3;
constexpr double reflectedPerKelvin = 0.01;
constexpr double roomCelsius = 20;
constexpr double leastReflected = 0.02;

double slopeOf(Light::Band band)
{
    switch (band) {
    case Light::Long:
        return longSlope;
    case Light::SecondColor:
        return secondColorSlope;
    default:
        return mediumSlope;
    }
}

double thermal(double celsius, double slope)
{
    const double kelvin = within(0, celsius + kelvinOfZeroCelsius, 1e9);
    return kelvin > 0 ? std::exp(slope * (1 / kelvinOfUnitLight - 1 / kelvin)) : 0;
}

} // namespace

double Light::of(double celsius, Band band)
{
    const double light = band == Short
        ? within(leastReflected, reflectedAtRoom + reflectedPerKelvin * (celsius - roomCelsius), maximum)
        : within(0, thermal(celsius, slopeOf(band)), maximum);
    constexpr double steps = 256 * fullSignal;
    return std::floor(light * steps + 0.5) / steps;
}

} // namespace emulator::image
