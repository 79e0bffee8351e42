#pragma once

#include "platform/emulator/Device.h"

#include <cstdint>

namespace emulator
{

/// The automatic focus with the region of the image that it evaluates. It swings around the position in which the scene
/// is sharp, with smaller and smaller amplitude, and ends there.
class AutoFocus : public Device
{
public:
    /// Profile keys and settings: "regionSize" (pixels; a profile may have any size, also one that cannot be set),
    /// "regionPosition", "showWhenFocusing", "showAlways", and "sceneDistance" (metres from the camera to the scene).
    AutoFocus(Camera &camera, Section &section);

    /// Searches around the present position. Refused if another command moves the focus meanwhile.
    Status focusFast();
    /// The same after a run from near to far.
    Status focusFull();

    uint16_t regionSize() const { return m_regionSize; }
    /// 16, 32, 64, 128, 256 or 512 pixels.
    Status setRegionSize(uint16_t pixels) { return assign(m_regionSize, pixels); }
    /// A zvtEAutoFocusRoiPosition.
    uint8_t regionPosition() const { return m_regionPosition; }
    Status setRegionPosition(uint8_t position) { return assign(m_regionPosition, position); }
    /// The overlay shows the region while focusing, and at all times.
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
