#include "platform/emulator/devices/RecorderMachine.h"

#include "platform/emulator/devices/Recording.h"

#include <algorithm>
#include <utility>

namespace emulator
{

namespace
{

// Microseconds.
constexpr int64_t formattingTime = 3'000'000;
constexpr int64_t loadingTime = 200'000; ///< Besides the time of the drive.

} // namespace

RecorderMachine::RecorderMachine(RecorderWorld &world, RecorderSettings &settings, const Equipment &equipment,
                                 Drive drive)
    : m_world(world), m_settings(settings), m_equipment(equipment), m_drive(std::move(drive))
{
}

bool RecorderMachine::is(std::initializer_list<State> wanted) const
{
    return std::ranges::find(wanted, m_state) != wanted.end();
}

bool RecorderMachine::isAt(int64_t now, std::initializer_list<State> wanted)
{
    advance(now);
    return is(wanted);
}

bool RecorderMachine::moves() const { return !is({Disarmed, Complete, Paused, MovieLoaded}); }

bool RecorderMachine::watchesFrames() const
{
    return is({Arming, Armed, Triggered, RecordPaused, DownloadRequested})
        || (m_state == Saving && m_purpose != Purpose::Command);
}

std::optional<uint64_t> RecorderMachine::oldestNeeded() const
{
    if (!is({Armed, Triggered, RecordPaused}))
        return std::nullopt;
    return m_kept.empty() ? m_next : m_kept.first();
}

uint32_t RecorderMachine::framesIn(uint64_t bytes) const
{
    return static_cast<uint32_t>(std::min<uint64_t>(bytes / m_world.frameBytes(), UINT32_MAX));
}

uint64_t RecorderMachine::frames() const { return m_memory ? m_memory->frames() : 0; }

uint64_t RecorderMachine::framesAcquired() const { return is({Triggered, RecordPaused}) ? m_kept.size() : frames(); }

void RecorderMachine::advance(int64_t now)
{
    while (step(now)) { }
}

void RecorderMachine::endSavingUntil(int64_t now)
{
    if (m_state == Saving && now >= m_end)
        endSaving(m_end);
}

/// Carries out what is due next. Returns false if nothing more is due.
bool RecorderMachine::step(int64_t now)
{
    switch (m_state) {
    case Armed:
        return watchForTrigger(now);
    case Triggered:
        return record(now);
    case Playing:
        if (!m_position.ended(now))
            return false;
        m_position.pause(now);
        m_state = Paused;
        return true;
    case DownloadRequested:
        return loadStep(now);
    case Arming:
    case Saving:
    case Formatting:
    case Loading:
        if (now < m_end)
            return false;
        break;
    default:
        return false;
    }
    if (m_state == Arming) {
        m_next = m_world.firstAfter(m_end);
        m_state = Armed;
    } else if (m_state == Saving) {
        endSavingUntil(now);
    } else if (m_state == Loading) {
        endLoading();
        m_state = MovieLoaded;
    } else {
        m_drive.format();
        m_recognized = true;
        m_state = m_afterFormatting;
    }
    return true;
}

/// In DownloadRequested, which neither a load nor a transfer leaves.
bool RecorderMachine::loadStep(int64_t now)
{
    if (m_toLoad) {
        if (now < m_loadEnd)
            return false;
        endLoading();
        return true;
    }
    const int64_t end = std::max({m_end, m_loadEnd, m_transferEnd});
    if (m_transfers > 0 || now < end)
        return false;
    goOn(Next::Rearm, end);
    return true;
}

// The drive.

bool RecorderMachine::save(int64_t now)
{
    if (!isAt(now, {Complete}) || !driveUsable())
        return false;
    m_name = m_settings.name;
    startSaving(Purpose::Command, now);
    return true;
}

/// Saves the content of the memory, or as much of it as fits before the drive is full.
void RecorderMachine::startSaving(Purpose purpose, int64_t time)
{
    m_toSave = m_memory;
    m_purpose = purpose;
    const uint64_t bytes = std::min(m_toSave->bytes(), m_drive.free());
    m_end = time + std::max(shortestSaving, m_drive.microseconds(bytes));
    m_state = Saving;
}

void RecorderMachine::endSaving(int64_t time)
{
    if (!m_drive.add(m_name, std::exchange(m_toSave, nullptr))) {
        ++m_timesFull;
        m_state = stateOfMemory();
    } else if (m_purpose == Purpose::Command) {
        m_state = Complete;
    } else {
        goOn(Next::Download, time);
    }
}

bool RecorderMachine::format(int64_t now)
{
    if (!isAt(now, {Disarmed, Complete}) || !drivePresent())
        return false;
    m_afterFormatting = m_state;
    m_end = now + formattingTime;
    m_state = Formatting;
    return true;
}

void RecorderMachine::setPulled(bool pulled, int64_t now)
{
    advance(now);
    m_pulled = pulled;
    if (!pulled)
        return;
    if (std::exchange(m_toLoad, nullptr))
        m_loadEnd = now;
    const bool records = m_toDisk && is({Arming, Armed, Triggered, RecordPaused});
    if (records || is({Saving, Formatting, Loading})) {
        m_toSave.reset();
        m_kept = {};
        m_state = stateOfMemory();
    }
}

/// The state while nothing happens.
RecorderMachine::State RecorderMachine::stateOfMemory() const
{
    if (m_movieLoaded)
        return MovieLoaded;
    return m_memory ? Complete : Disarmed;
}

bool RecorderMachine::load(size_t movie, int64_t now)
{
    if (!isAt(now, {Disarmed, Complete, Playing, Paused, MovieLoaded, DownloadRequested}) || !driveUsable()
        || movie >= m_drive.movies().size() || m_toLoad)
        return false;
    m_toLoad = m_drive.movies()[movie].recording;
    m_loadEnd = now + loadingTime + m_drive.microseconds(m_toLoad->bytes());
    if (m_state == DownloadRequested)
        return true;
    m_end = m_loadEnd;
    m_state = Loading;
    return true;
}

void RecorderMachine::endLoading()
{
    setMemory(std::exchange(m_toLoad, nullptr), true);
    m_settings.startFrame = 0;
    m_settings.endFrame = static_cast<uint32_t>(frames()) - 1;
    cutRate();
}

bool RecorderMachine::unload(int64_t now)
{
    if (!isAt(now, {Playing, Paused, MovieLoaded, DownloadRequested}) || !m_movieLoaded)
        return false;
    setMemory(nullptr, false);
    if (m_state != DownloadRequested)
        m_state = Disarmed;
    return true;
}

void RecorderMachine::setMemory(std::shared_ptr<const Recording> recording, bool isMovie)
{
    m_memory = std::move(recording);
    m_movieLoaded = isMovie;
    m_position.showFrame(0);
}

// Playback.

void RecorderMachine::cutRate() { m_settings.rate = std::min(m_settings.rate, m_world.highestRate()); }

/// The course of a playback that begins or changes now.
PlaybackPosition::Course RecorderMachine::course()
{
    cutRate();
    const uint64_t last = frames() - 1;
    const uint64_t first = std::min<uint64_t>(m_settings.startFrame, last);
    return {first, std::clamp<uint64_t>(m_settings.endFrame, first, last), m_settings.rate, m_settings.loop};
}

bool RecorderMachine::play(int64_t now)
{
    if (!isAt(now, {Complete, Playing, Paused, MovieLoaded}) || frames() == 0)
        return false;
    m_position.start(course(), now);
    m_state = Playing;
    return true;
}

bool RecorderMachine::pause(int64_t now)
{
    if (!isAt(now, {Playing}))
        return false;
    m_position.pause(now);
    m_state = Paused;
    return true;
}

bool RecorderMachine::resume(int64_t now)
{
    if (!isAt(now, {Paused}))
        return false;
    m_position.resume(course(), now);
    m_state = Playing;
    return true;
}

bool RecorderMachine::stop(int64_t now)
{
    if (!isAt(now, {Complete, Playing, Paused, MovieLoaded, DownloadRequested}))
        return false;
    if (is({Playing, Paused})) {
        m_position.pause(now);
        m_state = m_movieLoaded ? MovieLoaded : Complete;
    }
    return true;
}

bool RecorderMachine::skipTo(uint64_t frame, int64_t now)
{
    if (!isAt(now, {Complete, Playing, Paused, MovieLoaded}) || frames() == 0)
        return false;
    m_position.showFrame(std::min(frame, frames() - 1));
    m_state = Paused;
    return true;
}

bool RecorderMachine::skipBy(int step, int64_t now)
{
    advance(now);
    const auto wanted = static_cast<int64_t>(m_position.frame(now)) + step;
    return skipTo(static_cast<uint64_t>(std::max<int64_t>(wanted, 0)), now);
}

void RecorderMachine::playbackChanged(int64_t now)
{
    advance(now);
    if (m_state == Playing)
        m_position.change(course(), now);
}

} // namespace emulator
