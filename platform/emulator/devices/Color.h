#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/devices/presets.h"

#include <array>
#include <cstdint>

namespace emulator
{

/// The colours of the detector. One with two colours sees thermal light of two bands, with one of them at a time, and
/// has two biases.
class Color : public Device
{
public:
    /// Profile keys: "number" (1 or 2) and "selected". Setting: "selected" (a list of the colours, 0 or 1, of four
    /// presets).
    Color(Camera &camera, Section &section);

    /// The number of colours.
    uint8_t number() const { return m_number; }
    /// Selects the colour of a preset. Refused by a detector with one colour, for a preset that the camera lacks, and
    /// above 1.
    Status select(uint8_t preset, uint8_t color);
    /// Refuses a preset that the camera lacks.
    Status selected(uint8_t preset, uint8_t &color) const;

    void expose(int preset, image::Exposure &exposure) const override;

private:
    const int m_numPresets;
    const uint8_t m_number;
    std::array<int, maximumPresets> m_selected{};
};

} // namespace emulator
