#pragma once

#include "platform/emulator/Device.h"

#include <cstdint>

namespace emulator
{

class FrameClock;

/// The lock-in: it looks for a periodic signal at its input, near an estimated frequency. It changes no frame.
class Lockin : public Device
{
public:
    /// Profile keys and settings: "coupling" (0 AC, 1 DC), "filter" (0 to 7), "estimatedFrequency" (Hz, 0 to 1e6) and
    /// "inputFrequency" (Hz of the signal at the input, 0 to 1e6, 0: no signal). The device FrameClock must exist
    /// before.
    Lockin(Camera &camera, Section &section);

    uint8_t coupling() const { return m_coupling; }
    /// Refused above 1.
    Status setCoupling(uint8_t coupling) { return assign(m_coupling, coupling); }

    /// The number of the digital filter; the camera does not filter anything.
    uint8_t filter() const { return m_filter; }
    /// Takes 7 for larger numbers.
    Status setFilter(uint8_t filter);

    float estimatedFrequency() const { return m_estimatedFrequency; }
    /// Takes the nearest frequency from 0 to half of the present average frame rate. Refused if it is not finite. A
    /// later change of the frame rate does not change it.
    Status setEstimatedFrequency(float hertz);

    /// The sample rate, which is the average frame rate. Refused unless a signal is at the input whose frequency
    /// differs from the estimate by at most a tenth of the estimate, and while no frames come.
    Status sampleFrequency(float &hertz) const;

private:
    FrameClock &m_frames;
    uint8_t m_coupling = 0;
    uint8_t m_filter = 0;
    float m_estimatedFrequency = 0;
    double m_inputFrequency = 0;
};

} // namespace emulator
