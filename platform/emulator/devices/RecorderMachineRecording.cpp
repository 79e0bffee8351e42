// The recordings of the recorder, and the automatic options after them.
#include "platform/emulator/devices/RecorderMachine.h"

#include "platform/emulator/devices/Recording.h"

#include <algorithm>
#include <array>
#include <limits>
#include <span>
#include <utility>

namespace emulator
{

namespace
{

// Microseconds.
constexpr int64_t armingTime = 300'000;
constexpr int64_t downloadTimeout = 60'000'000;

constexpr int64_t microsecondsIn(uint32_t milliseconds) { return int64_t(milliseconds) * 1000; }

} // namespace

/// Whether there are frames and room for a recording with the present settings.
bool RecorderMachine::canArm()
{
    const bool toMemory = m_settings.mode == RecorderSettings::ToMemory;
    if (!toMemory && driveUsable() && diskLimit() == 0)
        ++m_timesFull;
    return (toMemory ? memoryLimit() : diskLimit()) > 0 && m_world.freeFrames();
}

bool RecorderMachine::arm(int64_t now)
{
    if (!isAt(now, {Disarmed, Complete, MovieLoaded}) || !canArm())
        return false;
    startArming(now);
    return true;
}

void RecorderMachine::startArming(int64_t time)
{
    setMemory(nullptr, false);
    RecorderSettings &s = m_settings;
    m_toDisk = s.mode == RecorderSettings::ToDisk;
    m_room = m_toDisk ? diskLimit() : memoryLimit();
    s.frames = static_cast<uint32_t>(std::min<uint64_t>(s.frames, m_room));
    const bool byMemory = m_toDisk || s.type == RecorderSettings::StartStop;
    s.pretrigger = std::min(s.pretrigger, byMemory ? memoryLimit() : s.frames);
    m_gated = s.gated;
    m_name = s.name;
    m_pretrigger = m_toDisk ? 0 : s.pretrigger;
    m_left = s.type == RecorderSettings::Frames ? s.frames : std::numeric_limits<uint64_t>::max();
    m_duration = s.type == RecorderSettings::Duration ? microsecondsIn(s.duration) : 0;
    m_kept = {};
    m_fifo = RecorderFifo(m_equipment.fifo, m_drive.speed(), static_cast<int64_t>(m_world.frameBytes()));
    m_world.watchFrames();
    m_end = time + armingTime;
    m_state = Arming;
}

bool RecorderMachine::disarm(int64_t now)
{
    if (!isAt(now, {Armed}))
        return false;
    m_state = Disarmed;
    return true;
}

/// Keeps the frames that a trigger may need. Nothing follows by itself.
bool RecorderMachine::watchForTrigger(int64_t now)
{
    const uint64_t next = std::max(m_next, m_world.firstAfter(now));
    if (m_pretrigger > 0 && open()) {
        m_kept.add(m_next, next - m_next);
        m_kept.keepLast(m_pretrigger);
    }
    m_next = next;
    return false;
}

bool RecorderMachine::trigger(int64_t now)
{
    if (!isAt(now, {Armed}))
        return false;
    startRecording(now);
    return true;
}

void RecorderMachine::setInput(bool level, int64_t now)
{
    advance(now);
    const bool rises = level && !m_input;
    m_input = level;
    if (rises && m_state == Armed)
        startRecording(now);
}

void RecorderMachine::startRecording(int64_t now)
{
    m_left -= std::min(m_left, m_kept.size());
    m_room -= std::min(m_room, m_kept.size());
    m_recorded = 0;
    m_since = now;
    m_state = Triggered;
    if (m_left == 0 || m_room == 0)
        finish(now);
}

bool RecorderMachine::record(int64_t now)
{
    const int64_t end = m_duration > 0 ? m_since + m_duration - m_recorded : std::numeric_limits<int64_t>::max();
    if (takeFrames(std::min(now, end))) {
        finish(beginning(m_next - 1));
        return true;
    }
    if (now < end)
        return false;
    finish(end);
    return true;
}

/// Takes the frames until a time. Ends after the last one that is wanted or fits, and then returns true.
bool RecorderMachine::takeFrames(int64_t until)
{
    const uint64_t stop = std::max(m_next, m_world.firstAfter(until));
    if (!open())
        m_next = stop;
    while (m_next < stop && m_left > 0 && m_room > 0) {
        const uint64_t count = std::min({stop - m_next, m_left, m_room});
        if (!m_toDisk)
            keep(count);
        else if (m_fifo.keepsUpWith(m_world.shortestFrame()))
            putAll(count);
        else
            putEach(count);
    }
    return m_left == 0 || m_room == 0;
}

/// Keeps the next frames.
void RecorderMachine::keep(uint64_t count)
{
    m_kept.add(m_next, count);
    m_room -= count;
    m_left -= count;
    m_next += count;
}

/// Puts the next frames into the memory before the drive, which loses none.
void RecorderMachine::putAll(uint64_t count)
{
    m_fifo.putAll(beginning(m_next + count - 1));
    keep(count);
}

/// Puts the next frames, at most `count`, into the memory before the drive. Some are lost if it is full.
void RecorderMachine::putEach(uint64_t count)
{
    std::array<int64_t, 256> buffer;
    const std::span times(buffer.data(), std::min<uint64_t>(count, buffer.size()));
    m_world.beginnings(m_next, times);
    for (const int64_t time : times) {
        if (m_fifo.put(time)) {
            keep(1);
            continue;
        }
        // A lost frame counts among those that are wanted.
        --m_left;
        ++m_next;
    }
}

int64_t RecorderMachine::beginning(uint64_t number) const
{
    int64_t time = 0;
    m_world.beginnings(number, {&time, 1});
    return time;
}

bool RecorderMachine::pauseRecording(int64_t now)
{
    if (!isAt(now, {Triggered}))
        return false;
    m_recorded += now - m_since;
    m_state = RecordPaused;
    return true;
}

bool RecorderMachine::resumeRecording(int64_t now)
{
    if (!isAt(now, {RecordPaused}))
        return false;
    m_since = now;
    m_next = std::max(m_next, m_world.firstAfter(now));
    m_state = Triggered;
    return true;
}

bool RecorderMachine::stopRecording(int64_t now)
{
    if (!isAt(now, {Triggered, RecordPaused}))
        return false;
    finish(now);
    return true;
}

void RecorderMachine::finish(int64_t time)
{
    auto recording = m_world.record(std::exchange(m_kept, {}));
    if (!m_toDisk) {
        setMemory(std::move(recording), false);
        goOn(Next::Save, time);
        return;
    }
    m_toSave = std::move(recording);
    m_purpose = Purpose::Flush;
    m_end = time + std::max(shortestSaving, m_fifo.microsecondsToEmpty(time));
    m_state = Saving;
}

/// Carries out the first of the automatic options from `next` on.
void RecorderMachine::goOn(Next next, int64_t time)
{
    if (next == Next::Save && m_settings.autoSave && driveUsable()) {
        startSaving(Purpose::AutoSave, time);
    } else if (next != Next::Rearm && m_settings.autoDownload) {
        m_loadEnd = time;
        m_end = time + downloadTimeout;
        m_state = DownloadRequested;
    } else if (m_settings.autoRearm && canArm()) {
        startArming(time);
    } else if (!m_movieLoaded && m_settings.autoPlay && frames() > 0) {
        m_position.start(course(), time);
        m_state = Playing;
    } else {
        m_state = stateOfMemory();
    }
}

bool RecorderMachine::downloadStarts(int64_t now)
{
    if (!isAt(now, {DownloadRequested}))
        return false;
    m_end = now + downloadTimeout;
    return true;
}

void RecorderMachine::transferBegins(int64_t now)
{
    advance(now);
    ++m_transfers;
}

void RecorderMachine::transferEnds(int64_t now)
{
    advance(now);
    --m_transfers;
    m_transferEnd = now;
}

bool RecorderMachine::downloadIsDone(int64_t now)
{
    if (!isAt(now, {DownloadRequested}))
        return false;
    m_toLoad.reset();
    goOn(Next::Rearm, now);
    return true;
}

} // namespace emulator
