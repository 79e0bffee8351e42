#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/devices/ExposureLog.h"
#include "platform/emulator/devices/RecordedFrame.h"
#include "platform/emulator/devices/RecorderMachine.h"
#include "platform/emulator/devices/SeededMovie.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace emulator::image
{
enum class Output;
}

namespace emulator
{

class FrameClock;
class MovieFolder;
class Sensor;

/// The recorder: a memory for frames, a drive for movies, and playback on the video output. It records the frames of
/// the digital output. Its states are those of a RecorderMachine. The property "/RecordStart" of EmulatorProperties is
/// the input for trigger and gate: its rise triggers an armed recorder, and with "gated" only frames are kept that
/// begin while it is true. A trigger by a command needs no open gate.
///
/// Functions for equipment that the recorder lacks return Absent: without record modes, those for mode, type, duration,
/// gate, pause, automatic arming and download, the limit of the drive, the count of frames and the loading of movies;
/// without a drive those for its movies and its space.
class Recorder : public Device, private RecorderWorld
{
public:
    static constexpr size_t longestName = 199; ///< Bytes.
    static constexpr uint32_t longestDuration = 86'400'000; ///< Milliseconds.
    static constexpr float lowestRate = 0.0001f; ///< Hertz.

    /// Profile keys: "recordModes" and "drive" (whether it has them, true without the key), "memoryBytes",
    /// "driveBytes", "fifoBytes" (of the memory before the drive), "driveBytesPerSecond", "movies" (those on the drive
    /// of a new camera, see SeededMovie; one that the camera cannot have recorded or that does not fit onto the drive
    /// is left out). Profile keys and settings:
    /// "mode" (0 to memory, 1 to the drive), "type" (0 number of frames, 1 duration, 2 start and stop), "frames",
    /// "pretrigger" (frames), "duration" (ms), "gated", "autoPlay", "autoSave", "autoRearm", "autoDownload", "name",
    /// "rate" (Hz), "loop". Settings: "startFrame" and "endFrame" of a playback; "recognized", whether the file system
    /// of the drive can be read, which formatting makes true; "drivePulled", "driveFull" (until it is formatted) and
    /// "driveSlow". The devices FrameClock and EmulatorProperties must exist before.
    Recorder(Camera &camera, Section &section);

    RecorderMachine::State state() const { return m_machine.state(); }
    /// Whether the window, the sequencing, the sync source and the times of the presets must stay, and no correction
    /// can be made: while it is armed or records.
    bool holdsFrames() const;
    /// The same, or while it may be armed again by itself.
    bool watchesFrames() const { return m_machine.watchesFrames(); }

    // Commands. All but load() return at once. Refused in a state that does not allow them.

    /// Numbers of frames that do not fit are cut. Refused without room for a frame.
    Status arm() { return command(&RecorderMachine::arm); }
    Status disarm() { return command(&RecorderMachine::disarm); }
    Status trigger() { return command(&RecorderMachine::trigger); }
    Status pauseRecording() { return modeCommand(&RecorderMachine::pauseRecording); }
    Status resumeRecording() { return modeCommand(&RecorderMachine::resumeRecording); }
    Status stopRecording() { return command(&RecorderMachine::stopRecording); }
    Status saveMovie() { return command(&RecorderMachine::save); }
    Status format() { return command(&RecorderMachine::format); }
    /// Loads the movie with this place in the list, and returns when it is loaded. Refused if its frames have another
    /// size than the window.
    Status load(uint32_t movie);
    Status unload() { return modeCommand(&RecorderMachine::unload); }
    Status downloadStarts() { return modeCommand(&RecorderMachine::downloadStarts); }
    Status downloadIsDone() { return modeCommand(&RecorderMachine::downloadIsDone); }
    /// Frames of the memory are transferred to the computer: see RecorderMachine::transferBegins().
    void transferBegins() { m_machine.transferBegins(present()); }
    void transferEnds() { m_machine.transferEnds(present()); }
    Status play() { return command(&RecorderMachine::play); }
    Status pause() { return command(&RecorderMachine::pause); }
    Status resume() { return command(&RecorderMachine::resume); }
    Status stop() { return command(&RecorderMachine::stop); }
    Status skipTo(uint32_t frame);
    Status skipForward() { return skipBy(1); }
    Status skipBackward() { return skipBy(-1); }

    bool hasRecordModes() const { return m_recordModes; }
    Status mode(uint8_t &mode) const { return readMode(m_settings.mode, mode); }
    Status setMode(uint8_t mode) { return m_recordModes ? assign(m_settings.mode, mode) : Absent; }
    Status type(uint8_t &type) const { return readMode(m_settings.type, type); }
    Status setType(uint8_t type) { return m_recordModes ? assign(m_settings.type, type) : Absent; }
    Status duration(uint32_t &milliseconds) const { return readMode(m_settings.duration, milliseconds); }
    Status setDuration(uint32_t milliseconds)
    {
        return m_recordModes ? assign(m_settings.duration, milliseconds) : Absent;
    }
    Status gated(uint8_t &gated) const { return readMode(m_settings.gated, gated); }
    Status setGated(uint8_t gated) { return setModeFlag(m_settings.gated, gated); }
    Status autoRearm(uint8_t &on) const { return readMode(m_settings.autoRearm, on); }
    Status setAutoRearm(uint8_t on) { return setModeFlag(m_settings.autoRearm, on); }
    Status autoDownload(uint8_t &on) const { return readMode(m_settings.autoDownload, on); }
    Status setAutoDownload(uint8_t on) { return setModeFlag(m_settings.autoDownload, on); }
    bool autoSave() const { return m_settings.autoSave; }
    Status setAutoSave(uint8_t on) { return setFlag(m_settings.autoSave, on); }
    bool autoPlay() const { return m_settings.autoPlay; }
    Status setAutoPlay(uint8_t on) { return setFlag(m_settings.autoPlay, on); }
    /// The frames to record. Without record modes, while the memory has a recording, the frames of it.
    uint32_t frames() const;
    /// 1 to the limit of the mode.
    Status setFrames(uint32_t frames) { return assign(m_settings.frames, frames); }
    /// At most frames(), or memoryLimit() for recordings to the drive and those that are started and stopped.
    uint32_t pretrigger() const { return m_settings.pretrigger; }
    Status setPretrigger(uint32_t frames) { return assign(m_settings.pretrigger, frames); }
    std::string name() const { return m_settings.name; }
    /// 1 to longestName bytes of UTF-8.
    Status setName(const std::string &name) { return assign(m_settings.name, name); }

    uint32_t memoryLimit() const { return m_machine.memoryLimit(); }
    Status diskLimit(uint32_t &frames) const;
    Status framesAcquired(uint32_t &frames) const;

    // Playback. The frames of its range are stored as given and cut when they are played.

    uint32_t playbackFrame() const;
    float rate() const { return m_settings.rate; }
    /// A rate outside of the limits is cut, also when a playback begins and when a movie has been loaded. Refuses NaN.
    Status setRate(float hertz);
    /// The highest rate for the present window: that of the shortest frames or, for a movie, also that of the drive.
    float highestRate() const override;
    bool loop() const { return m_settings.loop; }
    Status setLoop(uint8_t on) { return setFlag(m_settings.loop, on); }
    uint32_t startFrame() const { return m_settings.startFrame; }
    Status setStartFrame(uint32_t frame) { return assign(m_settings.startFrame, frame); }
    uint32_t endFrame() const { return m_settings.endFrame; }
    Status setEndFrame(uint32_t frame) { return assign(m_settings.endFrame, frame); }

    // The drive.

    bool hasDrive() const { return m_machine.hasDrive(); }
    bool drivePresent() const { return m_machine.drivePresent(); }
    bool recognized() const { return m_machine.driveUsable(); }
    /// In bytes. Refused while the drive is not recognized, as are the movies.
    Status driveTotal(int64_t &bytes) const { return ofDrive(m_machine.drive().capacity(), bytes); }
    Status driveUsed(int64_t &bytes) const { return ofDrive(m_machine.drive().used(), bytes); }
    Status driveFree(int64_t &bytes) const { return ofDrive(m_machine.drive().free(), bytes); }
    Status movieCount(uint32_t &count) const { return ofDrive(m_machine.drive().movies().size(), count); }
    /// The movie with this place in the list. Refused if the list is shorter.
    Status movie(uint32_t place, const Drive::Movie *&movie) const;
    /// Returns the first frame of the memory whose IRIG time is `start` or later, and the last one that is `end` or
    /// earlier. Times are in microseconds from the beginning of the year, whatever the year is. Refused if there is
    /// none, or the first one is after the last one. Takes 0.5 s and a microsecond for each frame of the memory.
    Status findFrames(int64_t start, int64_t end, uint32_t &first, uint32_t &last);
    bool movieIsLoaded() const { return m_machine.movieLoaded(); }
    Status movieLoaded(uint8_t &loaded) const { return readMode(movieIsLoaded(), loaded); }
    /// How often something did not fit onto the drive.
    uint32_t timesFull() const { return m_machine.timesFull(); }

    /// Whether frames can be transferred to the computer: the property "/SSDTransfer" of a camera with a video stream.
    bool canDownload() const;

    /// A frame of the memory, counted from 0. Empty if it does not exist or cannot be rendered. Renders on the calling
    /// thread, which must not hold the camera's lock.
    std::optional<PlayedFrame> frame(uint64_t number);
    /// The frame that the video output shows instead of the newest one: while it plays, is paused or has a movie.
    std::optional<RecordedFrame> shown() const;
    /// A frame of a recording, which must have it.
    RecordedFrame recorded(const Recording &recording, uint64_t frame) const;
    /// Renders a frame as an output shows it. Returns false for a window without frames, and if the file of its
    /// correction is damaged. Any thread, which must not hold the camera's lock.
    bool render(const RecordedFrame &frame, image::Output output, std::vector<uint16_t> &counts) const;

    /// The memory: a recording or the loaded movie. Null if it is empty.
    const std::shared_ptr<const Recording> &memory() const { return m_machine.memory(); }
    const FrameLog &frameLog() const { return m_frames; }

    /// The input for trigger and gate.
    void setInput(bool level);
    void catchUp() override;
    void devicesExist() override;
    std::function<void()> filesToWrite() override;

private:
    uint64_t frameBytes() const override;
    bool freeFrames() override;
    void watchFrames() override;
    uint64_t firstAfter(int64_t time) const override { return m_frames.firstAfter(time); }
    void beginnings(uint64_t first, std::span<int64_t> times) const override { m_frames.beginnings(first, times); }
    int64_t shortestFrame() const override { return m_frames.shortestFrame(); }
    std::shared_ptr<const Recording> record(FrameRanges numbers) override;

    void addRecordingRows(Section &section);
    void addOtherRows(Section &section);
    void addDriveRows(Section &section);
    Status skipBy(int step);
    void report(const Drive::Movie &movie, const char *why) const;
    image::Size size() const;
    using Command = bool (RecorderMachine::*)(int64_t now);
    Status command(Command function);
    Status modeCommand(Command function) { return m_recordModes ? command(function) : Absent; }
    /// The time of the frames that are known, in microseconds.
    int64_t now() const;
    int64_t present();
    void playbackChanged();
    /// For settings that only a recorder with record modes has.
    template <class Member, class Value> Status readMode(const Member &member, Value &value) const
    {
        if (!m_recordModes)
            return Absent;
        value = member;
        return Ok;
    }
    template <class Value> Status ofDrive(uint64_t present, Value &value) const
    {
        if (!recognized())
            return hasDrive() ? Refused : Absent;
        value = static_cast<Value>(present);
        return Ok;
    }
    Status setFlag(bool &member, uint8_t value);
    Status setModeFlag(bool &member, uint8_t value) { return m_recordModes ? setFlag(member, value) : Absent; }
    uint32_t framesLimit() const;
    uint32_t pretriggerLimit() const;

    Sensor &m_sensor;
    FrameClock &m_frameClock;
    bool m_recordModes;
    RecorderSettings m_settings;
    bool m_watching = false;
    FrameLog m_frames;
    ExposureLog m_exposures;
    RecorderMachine m_machine;
    std::vector<SeededMovie> m_seeded; ///< Empty after devicesExist().
    std::shared_ptr<MovieFolder> m_folder; ///< Null without a drive.
    uint64_t m_reported = 0; ///< The changes of the drive that are to be written.
};

} // namespace emulator
