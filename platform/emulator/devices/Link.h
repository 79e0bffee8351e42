#pragma once

#include "platform/emulator/Device.h"

#include <cstdint>

namespace emulator
{

/// The link over which the frames of the recorder come to the computer. It loses some of them. Not in snapshots: it is
/// a cable, not a part of the camera.
class Link : public Device
{
public:
    static constexpr uint32_t usualLoss = 200; ///< Frames per million.

    /// Profile keys and settings: "bytesPerSecond", at least 1000; "lossPerMillion" (frames, usualLoss without the
    /// key). A running transfer keeps its speed.
    Link(Camera &camera, Section &section);

    int64_t bytesPerSecond() const { return m_bytesPerSecond; }

    /// Whether a frame with this number on the sensor is lost in a pass of a transfer. A pass always loses the same
    /// frames; if it loses more of a million, it loses these, too.
    bool loses(uint64_t number, uint32_t pass) const;

private:
    int64_t m_bytesPerSecond = 100'000'000;
    uint32_t m_lossPerMillion = usualLoss;
};

} // namespace emulator
