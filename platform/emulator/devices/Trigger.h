#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/devices/CameraClock.h"
#include "platform/emulator/devices/TriggerSchedule.h"

#include <array>
#include <cstdint>

namespace emulator
{

class FrameSync;
class Sensor;

/// What a trigger starts, and where triggers come from. FrameClock carries the triggers out. Setting mode or source
/// arms the trigger, even if the value is the same.
class Trigger : public Device
{
public:
    enum Mode : uint8_t {
        FreeRun = 0, ///< Frames need no trigger.
        TriggeredFreeRun = 1, ///< The first trigger after arming starts the frames.
        TriggeredSequence
        = 2, ///< Each trigger starts a number of cycles of the presets. Other triggers meanwhile are lost.
        PresetAdvance = 3, ///< Each trigger makes the next preset in use the active one. The active preset repeats.
    };
    enum Source : uint8_t { Internal = 0, External = 1, Software = 2, Time = 3 };

    /// Profile keys and settings: "mode" (0 to 2 in profiles; 3 only in preset sequencing), "source", "delay" (us,
    /// stored as the nearest clock), "polarity" (0 active low, 1 active high), "internalRate" (Hz), "sequenceCount",
    /// "time" (a list of day of the year, hour, minute, second, millisecond, microsecond).
    Trigger(Camera &camera, Section &section);

    uint8_t mode() const { return m_mode; }
    Status setMode(uint8_t mode) { return assign(m_mode, mode); }
    uint8_t source() const { return m_source; }
    Status setSource(uint8_t source) { return assign(m_source, source); }
    /// From a trigger to its effect, in microseconds, 0 to 1 000 000. Stored as the nearest clock.
    float delay() const;
    Status setDelay(float microseconds);
    uint8_t polarity() const { return m_polarity; }
    Status setPolarity(uint8_t polarity) { return assign(m_polarity, polarity); }
    /// The rate of the internal source in hertz, 0.01 to 100 000. Its period is the nearest whole number of clocks.
    double internalRate() const { return m_internalRate; }
    Status setInternalRate(double hertz) { return assign(m_internalRate, hertz); }
    /// The cycles that one trigger starts, 1 to 1 000 000.
    uint32_t sequenceCount() const { return m_sequenceCount; }
    Status setSequenceCount(uint32_t count) { return assign(m_sequenceCount, count); }
    /// The IRIG time of the source Time. The year is ignored. Refuses a time that no year has.
    CameraClock::IrigTime time() const;
    Status setTime(const CameraClock::IrigTime &time);

    /// Triggers once. Refused in free run and with another source.
    Status softwareTrigger();
    /// Arms the trigger: ends what a trigger has started, and lets the source Time trigger once more.
    void rearm();
    /// A single pulse at the trigger input. Without effect in free run and with another source.
    void inputPulse();
    /// The sequencing mode has changed: PresetAdvance becomes FreeRun without preset sequencing.
    void sequencingChanged();

    /// The triggers of the present settings. `start` is the time of Clock of tick 0.
    TriggerSignal signal(int64_t start) const;

private:
    Refusal checkMode(uint8_t mode) const;
    int64_t momentTick(int64_t start) const;

    const Sensor &m_sensor;
    const FrameSync &m_sync;
    const CameraClock &m_clock;
    uint8_t m_mode = FreeRun;
    uint8_t m_source = Internal;
    uint32_t m_delay = 0; ///< Clocks.
    uint8_t m_polarity = 0;
    double m_internalRate = 10;
    uint32_t m_sequenceCount = 1;
    std::array<uint16_t, 6> m_time{1, 0, 0, 0, 0, 0};
    uint32_t m_armings = 0;
    int64_t m_armedAt = 0; ///< A time of Clock.
};

} // namespace emulator
