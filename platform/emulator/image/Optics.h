#pragma once

#include "platform/emulator/image/Light.h"

namespace emulator::image
{

/// The lens and the orientation of the image.
struct Optics {
    /// The scene is enlarged by this, 1 to maximumMagnification.
    double magnification = 1;
    /// The width of the blur in pixels, as the standard deviation of its profile.
    double defocus = 0;
    /// Something before the lens or in it hides the scene: the closed cover, or a turret that turns. It has the
    /// temperature of the lens.
    bool blocked = false;
    double lensCelsius = 22.5;
    /// The flag is behind the lens and covers this share of the array, 0 to 1, from its left edge.
    double flagCover = 0;
    double flagCelsius = 25;
    /// The share of the light from the lens and the flag that the filter passes, 0 to 1.
    double transmission = 1;
    double filterCelsius = 25;
    /// The image is flipped left to right, and top to bottom.
    bool mirrored = false;
    bool inverted = false;

    static constexpr double maximumMagnification = 6;

    bool operator==(const Optics &) const = default;

    /// The light of the filter itself, which reaches every pixel. A filter that passes everything has none.
    double glow(Light::Band band) const;

    // `narrowness` of the field of view is 0 for the widest and 1 for the narrowest one.

    static double magnificationOf(double narrowness);
    /// The defocus, in pixels, at a distance from the sharp place, in encoder counts.
    static double defocusOf(double counts, double narrowness);
    /// By how many encoder counts a lens of this temperature has its sharp place farther up than one of 22.5 C.
    static double sharpShift(double lensCelsius);
    /// The share of the light that the lens passes. `q` is the squared distance from the centre of the array, 1 in the
    /// middle of a far edge.
    static float shading(float q) { return 1 - 0.01f * q; }
};

} // namespace emulator::image
