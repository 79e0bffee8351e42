#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/devices/presets.h"

#include <array>
#include <cstdint>

namespace emulator
{

/// The digital gain and offset of each preset: both outputs have corrected * gain + offset for each pixel. Functions
/// refuse a preset that the camera lacks.
class DigitalGain : public Device
{
public:
    /// Profile keys and settings: "gains" and "offsets" (counts), lists for four presets.
    DigitalGain(Camera &camera, Section &section);

    Status gain(uint8_t preset, float &factor) const;
    /// Refused outside of 0 to 3.999.
    Status setGain(uint8_t preset, float factor);
    Status offset(uint8_t preset, float &counts) const;
    /// Refused outside of -16383.5 to 16383.5.
    Status setOffset(uint8_t preset, float counts);

    void expose(int preset, image::Exposure &exposure) const override;

private:
    using Values = std::array<float, maximumPresets>; ///< One for each preset.

    const int m_numPresets;
    Values m_gains;
    Values m_offsets{};
};

} // namespace emulator
