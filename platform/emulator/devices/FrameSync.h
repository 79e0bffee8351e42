#pragma once

#include "platform/emulator/Device.h"

#include <cstdint>

namespace emulator
{

/// The source of the signal that starts each frame.
class FrameSync : public Device
{
public:
    enum Source : uint8_t { Internal = 0, External = 1, Video = 2, TriLevel = 3 };

    /// Profile keys: "triLevel" (whether the camera has a tri-level sync input), "source", "externalRate" (Hz).
    /// Settings: "source", "externalRate".
    FrameSync(Camera &camera, Section &section);

    uint8_t source() const { return m_source; }
    /// Selects a Source. Refuses an input that the camera lacks.
    Status setSource(uint8_t source) { return assign(m_source, source); }
    bool hasTriLevel() const { return m_triLevel; }
    /// The frequency of the signal at the selected input in hertz, 0 without a signal.
    double externalRate() const { return m_externalRate; }

private:
    bool m_triLevel;
    uint8_t m_source = Internal;
    double m_externalRate = 50;
};

} // namespace emulator
