#pragma once

#include "platform/emulator/Rule.h"
#include "platform/emulator/devices/SensorGeometry.h"

#include <cstdint>

namespace emulator
{

/// The time that a sensor needs for a frame, in clocks.
class SensorReadout
{
public:
    /// The dead times of the readout circuit.
    struct Constants {
        uint32_t lineDeadWidth = 20; ///< Clocks after each row.
        uint32_t preIntDeadWidth = 300; ///< Clocks before the integration.
        uint32_t postIntDeadWidth = 200; ///< Clocks after the integration.
        uint32_t preDeadRows = 1; ///< Rows before the image.
        uint32_t postDeadRows = 1; ///< Rows after the image.
        bool hasExtraLineSync = false; ///< It takes a further row.
        bool operator==(const Constants &) const = default;
    };

    // The ranges of the constants. The line dead width is at least 1, so that each row takes time, also if its pixels
    // take less than a clock.

    static constexpr Between lineDeadWidths{1, 4095};
    static constexpr Between integrationDeadWidths{0, 1'000'000};
    static constexpr Between deadRows{0, 255};

    /// Profile keys: "pixelsPerClock" (the pixels of a row that are read in one clock, 1 to 1024); the constants
    /// "lineDeadWidth", "preIntDeadWidth", "postIntDeadWidth", "preDeadRows", "postDeadRows" and "hasExtraLineSync" in
    /// the ranges above; "presetSwitchClocks" (the time of a change to the settings of another preset, 1 to 1e6);
    /// "maximumFrameRate" (Hz, 0.1 to 1e6).
    SensorReadout(Section &section, uint32_t clockFrequency);

    struct FrameSettings {
        SensorGeometry::Size size;
        uint32_t integration = 0; ///< Clocks.
        bool reducedNoise = false;
        bool sequencing = false; ///< The preset changes after the frame.
    };

    uint32_t shortestFrameWidth(const FrameSettings &frame) const;
    uint32_t presetSwitchClocks() const { return m_presetSwitchClocks; }

    const Constants &constants() const { return m_constants; }
    /// Takes constants that are in their ranges.
    void setConstants(const Constants &constants) { m_constants = constants; }

private:
    uint32_t m_pixelsPerClock;
    Constants m_constants;
    uint32_t m_presetSwitchClocks;
    uint32_t m_shortestWidth; ///< The shortest frame that "maximumFrameRate" allows.
};

} // namespace emulator
