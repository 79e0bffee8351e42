#pragma once

#include "platform/emulator/Device.h"

#include <cstdint>

namespace emulator
{

/// The automatic focus, with the region of the image that it evaluates. It moves the focus around the position in which
/// the scene is sharp, with decreasing amplitude, and ends at this position.
class AutoFocus : public Device
{
public:
    /// Profile keys and settings: "regionSize" (pixels; a profile may contain a size that cannot be set),
    /// "regionPosition", "showWhenFocusing", "showAlways", and "sceneDistance" (metres from the camera to the scene).
    AutoFocus(Camera &camera, Section &section);

    /// Focuses on the scene, and returns when the focus is at rest. Absent without a focus. Refused if the focus is
    /// turned by hand, or if another command moves it meanwhile.
    Status focusFast();
    /// The same after a move to the near and to the far limit.
    Status focusFull();

    uint16_t regionSize() const { return m_regionSize; }
    /// Sets the size: 16, 32, 64, 128, 256 or 512 pixels. Refuses other sizes.
    Status setRegionSize(uint16_t pixels) { return assign(m_regionSize, pixels); }
    /// The position of the region in the image, a zvtEAutoFocusRoiPosition. Other values are refused.
    uint8_t regionPosition() const { return m_regionPosition; }
    Status setRegionPosition(uint8_t position) { return assign(m_regionPosition, position); }
    /// Whether the overlay shows the region while the camera focuses, and whether it always shows it.
    bool showWhenFocusing() const { return m_showWhenFocusing; }
    Status setShowWhenFocusing(bool show) { return assign(m_showWhenFocusing, show); }
    bool showAlways() const { return m_showAlways; }
    Status setShowAlways(bool show) { return assign(m_showAlways, show); }

private:
    uint16_t m_regionSize = 128;
    uint8_t m_regionPosition = 0;
    bool m_showWhenFocusing = true;
    bool m_showAlways = false;
    double m_sceneDistance = 25;
};

} // namespace emulator
