#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/Frame.h"
#include "platform/emulator/devices/FramePattern.h"
#include "platform/emulator/devices/FrameSegment.h"
#include "platform/emulator/devices/TriggerSchedule.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>

namespace emulator
{

class FrameLog;
class FrameSync;
class Sensor;
class Trigger;
struct PresetAdvance;

/// The times at which the frames of a camera begin. A frame begins at a tick, which is a clock of the sensor. Ticks and
/// frames count from the first connection; the camera makes frames from then on, also while it is not connected. Which
/// frames have begun follows from the timing of Sensor, the source of FrameSync, the triggers of Trigger and the Clock,
/// and never from the moments of the queries. While the Clock runs backwards, no frame begins.
///
/// After a change of the timing, the frame in progress ends as it began; the first frame of the new timing follows it.
/// A change of the timing ends a sequence that a trigger has started. After a trigger too, the first frame waits for
/// the end of a frame in progress.
class FrameClock : public Device
{
public:
    /// No profile keys and no settings.
    FrameClock(Camera &camera, Section &section);

    /// The last frame of a preset that has begun. Nothing if there has been none. Optionally the last one that had
    /// begun so long ago; of those before the last change of the timing or the last sequence, only the newest is known.
    std::optional<FrameStart> newest(int preset, int64_t microsecondsAgo = 0);
    /// The frame with this number. Nothing if it has not begun, or if it began before the last change of the timing or
    /// the last sequence and has not been the newest one of its preset then.
    std::optional<FrameStart> frame(uint64_t number);
    /// The frames of all presets per second at present, in hertz, with the pauses between periodic sequences. 0 while
    /// no frames come.
    double averageRate();
    /// The seconds after which frames repeat at present: a cycle of the presets, or a sequence and the pause after it.
    /// 0 while no frames come.
    double cycleSeconds();

    /// Carries out the triggers so far, then takes over the present timing of the devices if it has changed. Called
    /// before and after each change of a setting; the queries call it too. Takes below 0.5 us. After a silence with
    /// triggers it takes up to 0.5 us for each sequence or change of the preset within one period of triggers and
    /// frames; two signals with strange rates may have a period of hours.
    void updateFrameTiming();
    /// A single trigger now.
    void trigger();

    /// The time of Clock until which the frames are known, in milliseconds; it never decreases. Nothing before the
    /// first connection.
    std::optional<int64_t> time() const;
    /// Writes the frames from the present timing on into a log, or, for null, into none any more. With a log, changes
    /// of the preset between two calls take 0.5 us each, also those that repeat. There must have been a connection.
    void writeTo(FrameLog *log);

    void connectionChanged(bool connected) override;

private:
    /// What the triggers before one have led to.
    struct Effects {
        int64_t tick; ///< Of this trigger.
        int preset; ///< The active preset.
        FrameSegment segment;
        uint64_t firstNumber;
        uint64_t advances;
        std::array<std::optional<FrameStart>, maximumPresets> before;
    };

    FrameTiming timing() const;
    FrameTiming timing(const SensorTiming &sensor) const;
    int64_t tickAt(int64_t time) const;
    FrameStart frameAt(uint64_t index) const;
    FrameStart frameStart(uint64_t number, int preset, int64_t tick) const;
    void begin(const FrameTiming &timing, int64_t tick);
    void writeSegment();
    void updateAdvance();
    void runTriggers();
    void runTrigger(int64_t tick);
    bool skipPeriods(const Effects &earlier, int64_t tick);
    void startSequence(int64_t tick);
    void advancePreset(int64_t tick);
    void takeSettings();

    Sensor &m_sensor;
    const FrameSync &m_sync;
    const Trigger &m_trigger;
    std::optional<int64_t> m_start; ///< The first connection, a time of Clock.
    int64_t m_time = 0; ///< The latest time of Clock so far.
    int64_t m_now = 0; ///< The latest tick so far.
    TriggerSchedule m_triggers;
    uint8_t m_mode = 0; ///< A Trigger::Mode, of the last updateFrameTiming().
    uint64_t m_advances = 0; ///< Changes of the active preset that have raised no event yet.
    bool m_waiting = false; ///< Frames need a trigger that has not come.
    FrameSegment m_segment; ///< The frames since the last change of the timing or the last trigger.
    uint64_t m_firstNumber = 0; ///< Of the first frame of the segment.
    FrameLog *m_log = nullptr;
    std::shared_ptr<const PresetAdvance> m_advance; ///< For the log: the present one, if there is a log.
    std::array<std::optional<FrameStart>, maximumPresets> m_before; ///< The newest frames before the segment.
};

} // namespace emulator
