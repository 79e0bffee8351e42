#include "platform/emulator/image/Readout.h"

#include "platform/emulator/image/limits.h"

#include <algorithm>
#include <cmath>

namespace emulator::image
{

double Readout::gain() const
{
    constexpr int highestLevel = 10;
    return double(1 << std::clamp(gainLevel, 0, highestLevel)) * (highSensitivity ? 2 : 1);
}

double Readout::dark() const
{
    constexpr double coldCounts = 150;
    constexpr double stirlingDoubling = 5; // Kelvin.
    constexpr double thermoelectricDoubling = 8;
    constexpr double most = 65'536; // More than fills a pixel.
    if (cooling == Uncooled)
        return 0;
    const double doublings = warmth / (cooling == Stirling ? stirlingDoubling : thermoelectricDoubling);
    const double counts = within(0, coldCounts * std::exp2(within(-100, doublings, 100)), most);
    return std::floor(counts * 256 + 0.5) / 256;
}

double Readout::addedCounts() const
{
    constexpr double ofSecondColor = 300;
    return voltages.addedCounts() + (color > 0 ? ofSecondColor : 0);
}

} // namespace emulator::image
