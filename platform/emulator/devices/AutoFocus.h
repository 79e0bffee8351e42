#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/devices/FocusMeter.h"

#include <cstdint>
#include <functional>

namespace emulator
{

class Focus;
class FocusSearch;

/// The automatic focus, with the region of the image that it evaluates. It moves the focus, measures how sharp the
/// region is at each place, and ends at the sharpest place.
class AutoFocus : public Device
{
public:
    static constexpr double defaultSceneDistance = 25; ///< Metres.

    /// Profile keys and settings: "regionSize" (pixels; a profile may contain a size that cannot be set),
    /// "regionPosition", "showWhenFocusing", "showAlways", and "sceneDistance" (metres from the camera to the scene).
    AutoFocus(Camera &camera, Section &section);

    /// Searches the sharpest place from the present one, and returns when the focus is at rest in it. Absent without a
    /// focus. Refused if the focus is turned by hand, or if another command moves it meanwhile; it then stays where
    /// that command leaves it. Refused, with the focus back in the place of the start, if the region has too little
    /// contrast (the largest focus measure is below 1.5 times the smallest). Refused, without a move, if the camera
    /// makes no frames of the active preset or something hides the scene: the cover, or a turret that turns.
    ///
    /// The thread must hold the camera's lock exactly once, as in a call.
    Status focusFast();
    /// The same, but searches the whole range of the focus. Finds the sharpest place from any start.
    Status focusFull();

    uint16_t regionSize() const { return m_region.size; }
    /// Sets the size: 16, 32, 64, 128, 256 or 512 pixels. Refuses other sizes.
    Status setRegionSize(uint16_t pixels) { return assign(m_region.size, pixels); }
    /// The position of the region in the image, a zvtEAutoFocusROIPosition. Other values are refused.
    uint8_t regionPosition() const { return m_region.position; }
    Status setRegionPosition(uint8_t position) { return assign(m_region.position, position); }
    /// Whether the overlay shows the region while the camera focuses, and whether it always shows it.
    bool showWhenFocusing() const { return m_showWhenFocusing; }
    Status setShowWhenFocusing(bool show) { return assign(m_showWhenFocusing, show); }
    bool showAlways() const { return m_showAlways; }
    Status setShowAlways(bool show) { return assign(m_showAlways, show); }
    /// The region in a picture of this size, by pixels of the picture.
    image::Window regionIn(const image::Window &picture) const { return m_region.of(picture, {}); }
    /// Whether a search runs.
    bool focusing() const { return m_searches > 0; }
    /// The distance of the scene in metres.
    double sceneDistance() const { return m_sceneDistance; }

private:
    Status focus(const std::function<Status(FocusSearch &, const Focus &)> &searchCoarsely);

    FocusRegion m_region;
    int m_searches = 0; ///< That run; several callers may search at the same time.
    bool m_showWhenFocusing = true;
    bool m_showAlways = false;
    double m_sceneDistance = defaultSceneDistance;
};

} // namespace emulator
