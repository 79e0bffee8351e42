#include "platform/emulator/image/levels.h"

#include "platform/emulator/image/limits.h"

#include <cmath>
#include <cstddef>

namespace emulator::image
{

LevelTable adjustedLevels(int brightness, int contrast, bool blackHot)
{
    constexpr int white = 255;
    constexpr double middle = 128;
    LevelTable levels{};
    for (int level = 0; level <= white; ++level) {
        const int grey = blackHot ? white - level : level;
        const double adjusted = (grey - middle) * (1 + contrast / middle) + middle + 2 * brightness;
        levels[static_cast<size_t>(level)] = static_cast<uint8_t>(std::lround(within(0, adjusted, white)));
    }
    return levels;
}

} // namespace emulator::image
