#include "platform/emulator/devices/Recorder.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/Clock.h"
#include "platform/emulator/devices/CorrectionRun.h"
#include "platform/emulator/devices/EmulatorProperties.h"
#include "platform/emulator/devices/FrameClock.h"
#include "platform/emulator/devices/Sensor.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

constexpr double mostBytes = 1e15;
constexpr double mostFifoBytes = 1e12;

RecorderMachine::Equipment equipmentOf(Section &section)
{
    RecorderMachine::Equipment equipment;
    equipment.hasDrive = section.flag(u"drive"_s, true);
    equipment.memory
        = static_cast<uint64_t>(section.number(u"memoryBytes"_s, static_cast<double>(equipment.memory), 1, mostBytes));
    equipment.fifo
        = static_cast<int64_t>(section.number(u"fifoBytes"_s, static_cast<double>(equipment.fifo), 1, mostFifoBytes));
    return equipment;
}

Drive driveOf(Section &section)
{
    const double bytes = section.number(u"driveBytes"_s, 512'110'190'592, 0, mostBytes);
    const double speed = section.number(u"driveBytesPerSecond"_s, 262'144'000, 1000, mostFifoBytes);
    return {static_cast<uint64_t>(bytes), static_cast<int64_t>(speed)};
}

Refusal above(uint32_t frames, uint32_t limit)
{
    return frames <= limit ? Refusal() : u"must be at most %1 now"_s.arg(limit);
}

Refusal checkName(const std::string &name)
{
    const bool possible = !name.empty() && name.size() <= Recorder::longestName;
    return possible ? Refusal() : u"must have 1 to %1 bytes"_s.arg(Recorder::longestName);
}

} // namespace

Recorder::Recorder(Camera &camera, Section &section)
    : Device(camera), m_sensor(*camera.device<Sensor>()), m_frameClock(*camera.device<FrameClock>()),
      m_recordModes(section.flag(u"recordModes"_s, true)), m_exposures(camera),
      m_machine(*this, m_settings, equipmentOf(section), driveOf(section)), m_seeded(SeededMovie::list(section))
{
    addRecordingRows(section);
    addOtherRows(section);
    addDriveRows(section);
    QVariant input;
    camera.device<EmulatorProperties>()->get(u"/RecordStart"_s, input);
    m_machine.setInput(input.toBool(), 0);
}

/// The settings of recordings.
void Recorder::addRecordingRows(Section &section)
{
    RecorderSettings &s = m_settings;
    // The present number may be from another window.
    const auto framesFit
        = [this](uint32_t frames) { return frames == m_settings.frames ? Refusal() : above(frames, framesLimit()); };
    const auto pretriggerFits = [this](uint32_t frames) {
        return frames == m_settings.pretrigger ? Refusal() : above(frames, pretriggerLimit());
    };
    // The numbers of a profile or a snapshot may belong to another window.
    const auto stored = [](uint32_t &member) {
        return std::pair([&member] { return member; },
                         [&member](uint32_t value) {
                             member = value;
                             return Ok;
                         });
    };
    const auto [frames, setFrames] = stored(s.frames);
    const auto [pretrigger, setPretrigger] = stored(s.pretrigger);
    addSettings(section,
                {
                    Setting(u"mode"_s, s.mode, Between{0, hasDrive() ? 1.0 : 0.0}, Everywhere).onlyIf(m_recordModes),
                    Setting(u"type"_s, s.type, Between{0, 2}, Everywhere).onlyIf(m_recordModes),
                    {u"frames"_s, s.frames, {Between{1, UINT32_MAX}, framesFit}, OtherClient},
                    {u"frames"_s, frames, setFrames, Between{1, UINT32_MAX}, Profile | Snapshot},
                    {u"pretrigger"_s, s.pretrigger, pretriggerFits, OtherClient},
                    {u"pretrigger"_s, pretrigger, setPretrigger, Profile | Snapshot},
                    Setting(u"duration"_s, s.duration, Between{1, longestDuration}, Everywhere).onlyIf(m_recordModes),
                    Setting(u"gated"_s, s.gated, Everywhere).onlyIf(m_recordModes),
                });
}

/// The settings of the automatic options and of playbacks.
void Recorder::addOtherRows(Section &section)
{
    RecorderSettings &s = m_settings;
    const auto changed = [this] { playbackChanged(); };
    addSettings(
        section,
        {
            {u"autoPlay"_s, s.autoPlay, Everywhere},
            {u"autoSave"_s, s.autoSave, Everywhere},
            Setting(u"autoRearm"_s, s.autoRearm, Everywhere).onlyIf(m_recordModes),
            Setting(u"autoDownload"_s, s.autoDownload, Everywhere).onlyIf(m_recordModes),
            {u"name"_s, s.name, checkName, Everywhere},
            {u"rate"_s, [this] { return rate(); }, [this](float hertz) { return setRate(hertz); }, OtherClient},
            Setting(u"rate"_s, s.rate, Between{lowestRate, std::numeric_limits<float>::max()}, Profile | Snapshot)
                .then(changed),
            Setting(u"loop"_s, s.loop, Everywhere).then(changed),
            Setting(u"startFrame"_s, s.startFrame, Between{0, UINT32_MAX}, OtherClient).then(changed),
            Setting(u"endFrame"_s, s.endFrame, Between{0, UINT32_MAX}, OtherClient).then(changed),
        });
}

/// The settings of the drive that only another client changes.
void Recorder::addDriveRows(Section &section)
{
    if (!hasDrive())
        return;
    const auto setRecognized = [this](bool recognized) {
        m_machine.setRecognized(recognized);
        return Ok;
    };
    const auto setPulled = [this](bool pulled) {
        m_machine.setPulled(pulled, now());
        return Ok;
    };
    const auto setFull = [this](bool full) {
        m_machine.drive().setFull(full);
        return Ok;
    };
    const auto setSlow = [this](bool slow) {
        m_machine.drive().setSlow(slow);
        return Ok;
    };
    addSettings(section,
                {
                    {u"recognized"_s, [this] { return recognized(); }, setRecognized, OtherClient},
                    {u"drivePulled"_s, [this] { return !drivePresent(); }, setPulled, OtherClient},
                    {u"driveFull"_s, [this] { return m_machine.drive().isFull(); }, setFull, OtherClient},
                    {u"driveSlow"_s, [this] { return m_machine.drive().isSlow(); }, setSlow, OtherClient},
                });
}

uint32_t Recorder::framesLimit() const
{
    return m_settings.mode == RecorderSettings::ToDisk ? m_machine.diskLimit() : m_machine.memoryLimit();
}

uint32_t Recorder::pretriggerLimit() const
{
    const bool byMemory = m_settings.mode == RecorderSettings::ToDisk || m_settings.type == RecorderSettings::StartStop;
    return byMemory ? m_machine.memoryLimit() : m_settings.frames;
}

image::Size Recorder::size() const
{
    const Sensor::Window &window = m_sensor.geometry().window();
    return {window.width, window.height};
}

uint64_t Recorder::frameBytes() const
{
    const Sensor::Window &window = m_sensor.geometry().window();
    return Recording::frameBytes(window.width, window.height);
}

bool Recorder::freeFrames()
{
    auto *const run = camera().device<CorrectionRun>();
    return !run || run->giveWay();
}

void Recorder::watchFrames()
{
    if (m_watching)
        return;
    m_watching = true;
    m_frameClock.writeTo(&m_frames);
    m_exposures.start(m_frames, *m_frameClock.time());
}

std::shared_ptr<const Recording> Recorder::record(FrameRanges numbers)
{
    return std::make_shared<const Recording>(size(), std::move(numbers), m_frames, m_exposures.segments());
}

bool Recorder::holdsFrames() const
{
    switch (m_machine.state()) {
    case RecorderMachine::Arming:
    case RecorderMachine::Armed:
    case RecorderMachine::Triggered:
    case RecorderMachine::RecordPaused:
        return true;
    default:
        return false;
    }
}

int64_t Recorder::now() const { return m_frameClock.time().value_or(0) * 1000; }

/// Carries out what is due. Returns now().
int64_t Recorder::present()
{
    m_frameClock.updateFrameTiming();
    const int64_t time = now();
    if (m_watching)
        m_exposures.look(m_frames, time / 1000);
    m_machine.advance(time);
    if (const uint64_t changes = m_machine.drive().changes(); changes != std::exchange(m_reported, changes))
        remember();
    if (!m_watching)
        return time;
    if (m_machine.watchesFrames()) {
        const uint64_t oldest = m_machine.oldestNeeded().value_or(m_frames.firstAfter(time));
        m_frames.forgetBefore(oldest);
        m_exposures.forgetBefore(oldest);
    } else {
        m_frameClock.writeTo(nullptr);
        m_frames = {};
        m_exposures.clear();
        m_watching = false;
    }
    return time;
}

void Recorder::catchUp()
{
    if (m_watching || m_machine.moves())
        present();
}

bool Recorder::canDownload() const
{
    QVariant transfer;
    camera().device<EmulatorProperties>()->get(u"/SSDTransfer"_s, transfer);
    return transfer.toBool() && m_sensor.hasVideoStream();
}

void Recorder::setInput(bool level) { m_machine.setInput(level, present()); }

// Commands.

Status Recorder::command(Command function)
{
    const int64_t time = present();
    return m_frameClock.time() && (m_machine.*function)(time) ? Ok : Refused;
}

Status Recorder::skipTo(uint32_t frame) { return m_machine.skipTo(frame, present()) ? Ok : Refused; }

Status Recorder::skipBy(int step) { return m_machine.skipBy(step, present()) ? Ok : Refused; }

// Settings and values.

Status Recorder::setFlag(bool &member, uint8_t value) { return value > 1 ? Refused : assign(member, value == 1); }

uint32_t Recorder::frames() const
{
    return m_recordModes || !memory() ? m_settings.frames : static_cast<uint32_t>(memory()->frames());
}

Status Recorder::diskLimit(uint32_t &frames) const { return readMode(m_machine.diskLimit(), frames); }

Status Recorder::framesAcquired(uint32_t &frames) const
{
    return readMode(static_cast<uint32_t>(m_machine.framesAcquired()), frames);
}

uint32_t Recorder::playbackFrame() const { return static_cast<uint32_t>(m_machine.playbackFrame(now())); }

float Recorder::highestRate() const
{
    const image::Size window = size();
    uint32_t clocks = 0;
    double hertz = 0;
    const Sensor::Size pixels{static_cast<uint16_t>(window.width), static_cast<uint16_t>(window.height)};
    // A window has pixels and a frame has clocks, so this succeeds.
    if (m_sensor.minimumFrameWidth(pixels, 0, false, clocks) == Ok)
        m_sensor.clocksToHertz(clocks, hertz);
    const double byDrive = static_cast<double>(m_machine.drive().ratedSpeed()) / static_cast<double>(frameBytes());
    return std::max(static_cast<float>(movieIsLoaded() ? std::min(hertz, byDrive) : hertz), lowestRate);
}

Status Recorder::setRate(float hertz)
{
    if (std::isnan(hertz))
        return Refused;
    m_settings.rate = std::clamp(hertz, lowestRate, highestRate());
    playbackChanged();
    return Ok;
}

void Recorder::playbackChanged() { m_machine.playbackChanged(now()); }

} // namespace emulator
