#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/devices/presets.h"

#include <array>
#include <cstdint>

namespace emulator
{

class Sensor;

/// The sync output. Its signal goes to other equipment; no frame depends on it.
class SyncOut : public Device
{
public:
    /// Profile keys and settings: "source" (0 integration start, 1 frame start, 2 saturation flag), "polarity" (0
    /// active low, 1 active high), "delays" (a list of four delays in us, one for each preset, stored as the nearest
    /// clocks).
    SyncOut(Camera &camera, Section &section);

    uint8_t source() const { return m_source; }
    Status setSource(uint8_t source) { return assign(m_source, source); }
    uint8_t polarity() const { return m_polarity; }
    Status setPolarity(uint8_t polarity) { return assign(m_polarity, polarity); }
    /// The delay for frames of a preset in microseconds, 0 to 1 000 000. Refuses a preset above 3.
    Status delay(uint8_t preset, float &microseconds) const;
    Status setDelay(uint8_t preset, float microseconds);

private:
    using Delays = std::array<double, maximumPresets>;

    Delays delays() const;

    const uint32_t m_clockFrequency;
    uint8_t m_source = 0;
    uint8_t m_polarity = 0;
    std::array<uint32_t, maximumPresets> m_delays{}; ///< Clocks.
};

} // namespace emulator
