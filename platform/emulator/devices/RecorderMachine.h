#pragma once

#include "platform/emulator/devices/Drive.h"
#include "platform/emulator/devices/FrameRanges.h"
#include "platform/emulator/devices/PlaybackPosition.h"
#include "platform/emulator/devices/RecorderFifo.h"
#include "platform/emulator/devices/RecorderSettings.h"
#include "platform/emulator/devices/RecorderWorld.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>

namespace emulator
{

/// The states of a recorder, its memory and its drive. Everything that a recorder does by itself follows from the
/// commands and the times of the frames, so it does not matter how often advance() is called. Times are in microseconds
/// and never decrease. A command, or a change of the input, affects the frames that begin after it.
class RecorderMachine
{
public:
    /// The numbers are those of the SDK.
    enum State : uint8_t {
        Disarmed = 0,
        Armed = 1,
        Triggered = 2,
        Complete = 3,
        Playing = 4,
        Saving = 5,
        Paused = 6,
        Formatting = 7,
        Loading = 8,
        RecordPaused = 9,
        MovieLoaded = 10,
        Arming = 11,
        DownloadRequested = 12,
    };

    struct Equipment {
        uint64_t memory = 17'179'869'184; ///< Bytes.
        int64_t fifo = 1'073'741'824; ///< Bytes.
        bool hasDrive = true;
    };

    /// The machine cuts numbers that do not fit when it is armed, and a rate that is too high for a playback. It sets
    /// the range when it has loaded a movie.
    RecorderMachine(RecorderWorld &world, RecorderSettings &settings, const Equipment &equipment, Drive drive);

    /// Does everything that is due until a time. Takes up to 0.2 us for each frame that has begun since the last call,
    /// if the drive is slower than the frames.
    void advance(int64_t now);
    /// Ends a save that is over by now. Looks at no frames, unlike advance().
    void endSavingUntil(int64_t now);

    State state() const { return m_state; }
    /// Whether the next state, by itself, needs time or frames.
    bool moves() const;
    /// Whether frames and their settings are needed.
    bool watchesFrames() const;
    /// The number of the oldest frame that is still needed. Nothing if only coming ones are.
    std::optional<uint64_t> oldestNeeded() const;

    // Commands. Each calls advance() first. It returns false, and changes nothing, in a state that does not allow it.

    bool arm(int64_t now);
    bool disarm(int64_t now);
    bool trigger(int64_t now);
    bool pauseRecording(int64_t now);
    bool resumeRecording(int64_t now);
    bool stopRecording(int64_t now);
    bool save(int64_t now);
    bool format(int64_t now);
    /// Begins to load a movie. It is loaded at loadEnd().
    bool load(size_t movie, int64_t now);
    bool unload(int64_t now);
    bool downloadStarts(int64_t now);
    bool downloadIsDone(int64_t now);
    /// The frames of the memory are transferred to the computer. A request for a download does not end by itself until
    /// as many transfers have ended as have begun. In all states.
    void transferBegins(int64_t now);
    void transferEnds(int64_t now);
    bool play(int64_t now);
    bool pause(int64_t now);
    bool resume(int64_t now);
    bool stop(int64_t now);
    /// Shows a frame, or the last one if the number is too high.
    bool skipTo(uint64_t frame, int64_t now);
    bool skipBy(int step, int64_t now);

    /// The level of the input for trigger and gate. Its rise triggers.
    void setInput(bool level, int64_t now);
    /// Rate, loop or range have changed.
    void playbackChanged(int64_t now);

    bool hasDrive() const { return m_equipment.hasDrive; }
    bool drivePresent() const { return m_equipment.hasDrive && !m_pulled; }
    /// The drive is present and its file system can be read.
    bool driveUsable() const { return drivePresent() && m_recognized; }
    void setRecognized(bool recognized) { m_recognized = recognized; }
    /// Pulls the drive with everything on it, or puts it in again. Pulling ends what uses it: nothing is saved, loaded
    /// or formatted, and a recording to the drive is lost.
    void setPulled(bool pulled, int64_t now);
    const Drive &drive() const { return m_drive; }
    /// A new speed counts from the next use on.
    Drive &drive() { return m_drive; }

    /// The frames that fit into the memory and onto the drive, at most 4294967295.
    uint32_t memoryLimit() const { return framesIn(m_equipment.memory); }
    uint32_t diskLimit() const { return driveUsable() ? framesIn(m_drive.free()) : 0; }

    /// The memory: a recording or the loaded movie. Null if it is empty.
    const std::shared_ptr<const Recording> &memory() const { return m_memory; }
    bool movieLoaded() const { return m_movieLoaded; }
    /// Whether a movie is being loaded.
    bool loads() const { return m_toLoad != nullptr; }
    int64_t loadEnd() const { return m_loadEnd; }
    /// The frames in the memory or, while it records, those kept so far.
    uint64_t framesAcquired() const;
    /// The frame that a playback shows. 0 without frames.
    uint64_t playbackFrame(int64_t now) const { return m_position.frame(now); }
    /// How often something did not fit onto the drive.
    uint32_t timesFull() const { return m_timesFull; }

private:
    static constexpr int64_t shortestSaving = 500'000; ///< Microseconds.

    enum class Purpose { Flush, AutoSave, Command }; ///< Of Saving.
    enum class Next { Save, Download, Rearm }; ///< What comes first after a recording.

    uint32_t framesIn(uint64_t bytes) const;
    uint64_t frames() const;
    bool is(std::initializer_list<State> wanted) const;
    bool isAt(int64_t now, std::initializer_list<State> wanted);
    bool step(int64_t now);
    bool loadStep(int64_t now);
    bool canArm();
    void startArming(int64_t time);
    bool watchForTrigger(int64_t now);
    bool open() const { return !m_gated || m_input; }
    void startRecording(int64_t now);
    bool record(int64_t now);
    bool takeFrames(int64_t until);
    void keep(uint64_t count);
    void putAll(uint64_t count);
    void putEach(uint64_t count);
    int64_t beginning(uint64_t number) const;
    void finish(int64_t time);
    void goOn(Next next, int64_t time);
    void startSaving(Purpose purpose, int64_t time);
    void endSaving(int64_t time);
    State stateOfMemory() const;
    void endLoading();
    void setMemory(std::shared_ptr<const Recording> recording, bool isMovie);
    void cutRate();
    PlaybackPosition::Course course();

    RecorderWorld &m_world;
    RecorderSettings &m_settings;
    Equipment m_equipment;
    Drive m_drive;
    bool m_recognized = true;
    bool m_pulled = false;
    uint32_t m_timesFull = 0;

    State m_state = Disarmed;
    int64_t m_end = 0; ///< Of a state that ends by itself.
    State m_afterFormatting = Disarmed;
    Purpose m_purpose = Purpose::Command;
    bool m_input = false;

    // The recording that the recorder was last armed for.
    bool m_toDisk = false;
    bool m_gated = false;
    std::string m_name;
    uint64_t m_pretrigger = 0;
    uint64_t m_left = 0; ///< Frames until its end by their number.
    uint64_t m_room = 0; ///< Frames that still fit.
    int64_t m_duration = 0;
    int64_t m_recorded = 0; ///< The duration before m_since.
    int64_t m_since = 0; ///< The trigger, or the end of the last pause.
    uint64_t m_next = 0; ///< The first frame that has not been looked at.
    FrameRanges m_kept;
    RecorderFifo m_fifo{0, 1, 0};

    std::shared_ptr<const Recording> m_memory;
    std::shared_ptr<const Recording> m_toSave;
    std::shared_ptr<const Recording> m_toLoad; ///< Null while nothing is loaded.
    int64_t m_loadEnd = 0;
    int m_transfers = 0; ///< That run now.
    int64_t m_transferEnd = 0; ///< Of the last one.
    bool m_movieLoaded = false;
    PlaybackPosition m_position;
};

} // namespace emulator
