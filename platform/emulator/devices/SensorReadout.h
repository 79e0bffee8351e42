#pragma once

#include "platform/emulator/devices/SensorGeometry.h"

#include <cstdint>

namespace emulator
{

/// The time that a sensor needs for a frame, in clocks.
class SensorReadout
{
public:
    /// Profile keys: "pixelsPerClock" (of a row); the dead times "deadClocksPerRow", "deadRows" and
    /// "deadClocksPerFrame"; "presetSwitchClocks" (the time of a change to the settings of another preset);
    /// "maximumFrameRate" (Hz).
    SensorReadout(Section &section, uint32_t clockFrequency);

    struct FrameSettings {
        SensorGeometry::Size size;
        uint32_t integration = 0; ///< Clocks.
        bool reducedNoise = false;
        bool sequencing = false; ///< The preset changes after the frame.
    };

    uint32_t shortestFrameWidth(const FrameSettings &frame) const;
    uint32_t presetSwitchClocks() const { return m_presetSwitchClocks; }

private:
    uint32_t m_pixelsPerClock;
    uint32_t m_deadClocksPerRow;
    uint32_t m_deadRows;
    uint32_t m_deadClocksPerFrame;
    uint32_t m_presetSwitchClocks;
    uint32_t m_shortestWidth; ///< The shortest frame that "maximumFrameRate" allows.
};

} // namespace emulator
