#pragma once

#include "platform/emulator/image/Light.h"

#include <cstdint>
#include <vector>

namespace emulator::image
{

/// What is before the camera: a pattern, the temperatures of the emulated blackbodies, and the time, which moves the
/// targets. Positions and sizes are in heights of the array at magnification 1. They are relative to the centre of the
/// field; x grows to the right and y downwards. Temperatures are in Celsius. Any thread.
class Scene
{
public:
    enum Pattern {
        Live, ///< A background of 18 to 24 C with edges, and six warm targets of 28 to 48 C that move.
        Round, ///< A round blackbody, a third of the field high, before the background of the live scene.
        Halves, ///< The first blackbody on the left half, the second one on the right half.
        Area, ///< A blackbody over the whole field.
    };

    /// Equal stripes across an axis. A pitch is the distance from the start of one stripe to the start of the next.
    struct Stripes {
        double start = 0;
        double width = 0;
        double pitch = 0;
        int count = 1;
    };

    /// The places that are in a stripe of both axes. There `to` has replaced the temperature `from` of a lower layer.
    struct Layer {
        Stripes columns;
        Stripes rows;
        double from = 0;
        double to = 0;
    };

    struct Disc {
        double x = 0;
        double y = 0;
        double radius = 0;
        double celsius = 0;
    };

    /// A number other than that of a pattern counts as Live.
    static Pattern patternOf(int number);

    Pattern pattern = Live;
    double blackbody1 = 20;
    double blackbody2 = 35;
    bool hasTargets = true; ///< Whether Live contains its targets.
    /// Whether Area shows the second blackbody instead of the first one.
    bool secondSource = false;
    int64_t microseconds = 0;

    bool operator==(const Scene &) const = default;

    /// The temperature behind all layers at the top and at the bottom of the field. The light changes evenly between.
    double topCelsius() const;
    double bottomCelsius() const;
    /// The layers from back to front. Their lights add up.
    std::vector<Layer> layers() const;
    /// The discs from back to front, before all layers.
    std::vector<Disc> discs() const;
    /// The highest temperature that the scene may contain.
    double hottestCelsius() const;

private:
    double areaCelsius() const { return secondSource ? blackbody2 : blackbody1; }
};

} // namespace emulator::image
