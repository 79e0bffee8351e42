#pragma once

#include "platform/emulator/Frame.h"
#include "platform/emulator/image/Exposure.h"

#include <cstdint>
#include <memory>
#include <optional>

namespace emulator
{

class Camera;

/// The region of the image that the automatic focus evaluates.
struct FocusRegion {
    uint16_t size = 128; ///< The side of the square, in pixels.
    uint8_t position = 0; ///< A zvtEAutoFocusROIPosition.

    /// Returns the part of the array that the region shows: a square in the middle of the image, or of one of its
    /// quarters, clipped to the window of the image. A flipped image shows it in another place of the array.
    image::Window of(const image::Window &window, const image::Optics &optics) const;
};

/// Measures how sharp a camera shows a region. All measures are of one frame, the newest one of the active preset when
/// the meter is made, so that neither moving targets nor noise look like a change of the focus.
class FocusMeter
{
public:
    FocusMeter(Camera &camera, const FocusRegion &region);

    /// Whether the frame exists and nothing hides the scene. The camera must make frames of the active preset, and its
    /// window must not be too large for them.
    bool seesScene() const { return exposure().has_value(); }
    /// Returns the focus measure of the region, with the present focus and lens. Nothing if seesScene() is false. The
    /// thread must hold the camera's lock exactly once; the pixels are computed without it.
    std::optional<double> measure();

private:
    std::optional<image::Exposure> exposure() const;

    Camera &m_camera;
    FocusRegion m_region;
    std::optional<FrameStart> m_start;
    std::shared_ptr<const image::Detector> m_detector; ///< Of the region only, without faults.
};

} // namespace emulator
