#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/Frame.h"
#include "platform/emulator/devices/FramePattern.h"
#include "platform/emulator/devices/FrameSegment.h"

#include <array>
#include <cstdint>
#include <optional>

namespace emulator
{

class FrameSync;
class Sensor;

/// The times at which the frames of a camera begin. A frame begins at a tick, which is a clock of the sensor. Ticks and
/// frames count from the first connection; the camera makes frames from then on, also while it is not connected. Which
/// frames have begun follows from the timing of Sensor, the source of FrameSync and the Clock, and never from the
/// moments of the queries. While the Clock runs backwards, no frame begins.
///
/// After a change of the timing, the frame in progress ends as it began; the first frame of the new timing follows it.
class FrameClock : public Device
{
public:
    using Frame = FrameStart;

    /// No profile keys and no settings.
    FrameClock(Camera &camera, Section &section);

    /// The last frame of a preset that has begun. Nothing if there has been none.
    std::optional<Frame> newest(int preset);
    /// The frame with this number. Nothing if it has not begun, or if it began before the last change of the timing and
    /// has not been the newest one of its preset then.
    std::optional<Frame> frame(uint64_t number);
    /// The frames of all presets per second in the present timing, in hertz. 0 without frames.
    double averageRate() const;

    /// Takes over the present timing of the devices if it has changed. Called after each change of a setting; the
    /// queries call it too. Takes below 0.5 us.
    void settle();

    void connectionChanged(bool connected) override;

private:
    FrameTiming timing() const;
    int64_t tickNow() const;
    Frame frameAt(uint64_t index) const;

    const Sensor &m_sensor;
    const FrameSync &m_sync;
    std::optional<int64_t> m_start; ///< The first connection, a time of Clock.
    int64_t m_now = 0; ///< The latest tick so far.
    FrameSegment m_segment; ///< The frames since the last change of the timing.
    uint64_t m_firstNumber = 0; ///< Of the first frame of the segment.
    std::array<std::optional<Frame>, FramePattern::presets> m_before; ///< The newest frames before the segment.
};

} // namespace emulator
