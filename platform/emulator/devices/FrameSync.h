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

    /// Profile keys: "triLevel" (whether the camera has a tri-level sync input), "source". Setting: "source".
    FrameSync(Camera &camera, Section &section);

    uint8_t source() const { return m_source; }
    /// Selects a Source. Refuses an input that the camera lacks.
    Status setSource(uint8_t source) { return assign(m_source, source); }
    bool hasTriLevel() const { return m_triLevel; }

private:
    bool m_triLevel;
    uint8_t m_source = Internal;
};

} // namespace emulator
