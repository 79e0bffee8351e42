#include "platform/emulator/image/Scene.h"

#include <cmath>

namespace emulator::image
{

namespace
{

constexpr double skyCelsius = 18.2;
constexpr double horizonCelsius = 19;
constexpr double hottestTarget = 48;

// Wider than the field of any array.
constexpr Scene::Stripes everywhere{-1e6, 2e6};

// The background: two houses with windows, a fence and bars of several widths, so that each part of the field has edges
// at each magnification. The sums of overlapping layers stay below 24 C.
const std::vector<Scene::Layer> background{
    {everywhere, {0.22, 1e6}, 19, 20}, // Ground.
    {{-0.56, 0.42}, {-0.32, 0.54}, 19, 21}, // The left house.
    {{-0.54, 0.022, 0.048, 8}, {-0.29, 0.03, 0.07, 7}, 21, 22.6},
    {{0.14, 0.42}, {-0.18, 0.4}, 19, 20.4}, // The right house.
    {{0.16, 0.03, 0.055, 7}, {-0.15, 0.02, 0.05, 7}, 20.4, 22},
    {{-0.095, 0.19}, {-0.12, 0.3}, 19, 20}, // The board in the middle.
    {{-0.08, 0.012, 0.024, 7}, {-0.1, 0.08}, 20, 23}, // Its bars.
    {{-0.08, 0.16}, {0, 0.006, 0.012, 5}, 20, 23},
    {{-0.08, 0.004, 0.008, 20}, {0.08, 0.06}, 20, 23},
    {{-4, 0.01, 0.025, 320}, {0.27, 0.09}, 20, 22.5}, // The fence.
    {{-4, 0.3, 0.4, 20}, {-0.44, 0.02, 0.045, 2}, 18.3, 19.2}, // Clouds.
};

struct Target {
    double x; // The middle of the path.
    double y;
    double radius;
    double celsius;
    double width; // From the middle to the ends of the path.
    double height;
    int64_t xPeriod; // Microseconds.
    int64_t yPeriod;
};

constexpr Target targets[] = {
    {0, 0.35, 0.035, 28, 0.5, 0.02, 31'000'000, 3'700'000},
    {0.2, 0.3, 0.03, 32, 0.35, 0.03, 23'000'000, 2'900'000},
    {-0.2, -0.1, 0.045, 36, 0.3, 0.25, 41'000'000, 29'000'000},
    {0.1, -0.3, 0.025, 40, 0.45, 0.1, 13'000'000, 17'000'000},
    {-0.3, 0.15, 0.05, 44, 0.2, 0.2, 37'000'000, 47'000'000},
    {0.35, 0, 0.02, hottestTarget, 0.2, 0.4, 7'000'000, 11'000'000},
};

/// Swings between -1 and 1 with a period, like a sine but made of two parabolas.
double swing(int64_t time, int64_t period)
{
    const int64_t rest = time % period;
    const double phase = double(rest < 0 ? rest + period : rest) / double(period);
    return phase < 0.5 ? 16 * phase * (0.5 - phase) : -16 * (phase - 0.5) * (1 - phase);
}

} // namespace

Scene::Pattern Scene::patternOf(int number)
{
    return number >= Live && number <= Area ? static_cast<Pattern>(number) : Live;
}

double Scene::topCelsius() const
{
    switch (pattern) {
    case Halves:
        return blackbody2;
    case Area:
        return areaCelsius();
    default:
        return skyCelsius;
    }
}

double Scene::bottomCelsius() const { return pattern == Live || pattern == Round ? horizonCelsius : topCelsius(); }

std::vector<Scene::Layer> Scene::layers() const
{
    switch (pattern) {
    case Halves:
        return {{{-1e6, 1e6}, everywhere, blackbody2, blackbody1}};
    case Area:
        return {};
    default:
        return background;
    }
}

std::vector<Scene::Disc> Scene::discs() const
{
    if (pattern == Round)
        return {{0, 0, 1.0 / 6, blackbody1}};
    std::vector<Disc> discs;
    if (pattern == Live && hasTargets)
        for (const Target &target : targets)
            discs.push_back({target.x + target.width * swing(microseconds, target.xPeriod),
                             target.y + target.height * swing(microseconds, target.yPeriod), target.radius,
                             target.celsius});
    return discs;
}

double Scene::hottestCelsius() const
{
    constexpr double hottestBackground = 24;
    switch (pattern) {
    case Round:
        return std::fmax(hottestBackground, blackbody1);
    case Halves:
        return std::fmax(blackbody1, blackbody2); // Not NaN if one of them is a number.
    case Area:
        return areaCelsius();
    default:
        return hasTargets ? hottestTarget : hottestBackground;
    }
}

} // namespace emulator::image
