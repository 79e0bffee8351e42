#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/devices/PulseTrain.h"

#include <cstdint>

namespace emulator
{

class Sensor;

/// The sync input: what starts each frame. The device also has the signals at the sync input and at the trigger input.
class FrameSync : public Device
{
public:
    enum Source : uint8_t { Internal = 0, External = 1, Video = 2, TriLevel = 3 };
    enum Mode : uint8_t { StartsIntegration = 0, StartsReadout = 1 };

    /// Profile keys: "triLevel" (whether the camera has a tri-level sync input), "source", "mode", "delay" (us, stored
    /// as the nearest clock), "polarity" (0 active low, 1 active high), and of the signals "externalRate" and
    /// "triggerRate" (Hz, 0 for no signal). Settings: all of these but "triLevel", and "trigger" (true for a single
    /// pulse at the trigger input; always false).
    FrameSync(Camera &camera, Section &section);

    uint8_t source() const { return m_source; }
    /// Selects a Source. Refuses an input that the camera lacks, and every change while Sensor::framesAreHeld().
    Status setSource(uint8_t source) { return assign(m_source, source); }
    bool hasTriLevel() const { return m_triLevel; }
    /// A Mode: what a pulse of a source other than Internal starts. With every source, the shortest frames of a camera
    /// whose presets take turns depend on it (Sensor::syncStartsReadout()), so Sensor stores it.
    uint8_t mode() const;
    /// Refuses other numbers than those of Mode, and every change while Sensor::framesAreHeld().
    Status setMode(uint8_t mode);
    /// From a pulse to what it starts, in microseconds, 0 to 1 000 000. Stored as the nearest clock.
    float delay() const;
    Status setDelay(float microseconds);
    uint32_t delayClocks() const { return m_delay; }
    uint8_t polarity() const { return m_polarity; }
    Status setPolarity(uint8_t polarity) { return assign(m_polarity, polarity); }

    /// The frequency of the signal at the selected sync input in hertz, 0 without a signal.
    double externalRate() const { return m_externalRate; }
    /// The frequency of the signal at the trigger input in hertz, 0 without a signal.
    double triggerRate() const { return m_triggerRate; }

private:
    Status pulseTriggerInput(bool pulse);

    Sensor &m_sensor;
    bool m_triLevel;
    uint8_t m_source = Internal;
    uint32_t m_delay = 0; ///< Clocks.
    uint8_t m_polarity = 0;
    double m_externalRate = 50;
    double m_triggerRate = 0;
};

} // namespace emulator
