// The movies on the drive of the recorder.
#include "platform/emulator/devices/Recorder.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/Clock.h"
#include "platform/emulator/Unlocked.h"
#include "platform/emulator/devices/FrameClock.h"
#include "platform/emulator/devices/FrameSearch.h"
#include "platform/emulator/devices/MovieFolder.h"
#include "platform/emulator/devices/Sensor.h"

#include <algorithm>
#include <limits>

namespace emulator
{

namespace
{

// Milliseconds.
constexpr int64_t checkInterval = 50; ///< How soon the end of a load by something else is noticed.
constexpr int64_t searchTime = 500;
constexpr uint64_t searchedFrames = 1000; ///< In a millisecond.

} // namespace

/// Reads the movies in the camera's folder, and makes those of the profile, unless the drive has been formatted.
void Recorder::devicesExist()
{
    if (!hasDrive())
        return;
    m_folder = std::make_shared<MovieFolder>(camera().folder() + QStringLiteral("/movies"));
    Drive::Content content = m_folder->read();
    // The profile may have changed since they were recorded.
    std::erase_if(content.movies, [this](const Drive::Movie &movie) {
        const bool possible = movie.recording->isPossibleWith(m_sensor.array().size(), m_sensor.numPresets());
        if (!possible)
            report(movie, "needs a larger array or more presets");
        return !possible;
    });
    for (const SeededMovie &seeded : m_seeded) {
        if (content.formats > 0)
            break;
        content.lastNumber = std::max(content.lastNumber, seeded.number());
        // A recorded movie has this number if the profile had fewer movies when it was saved.
        if (auto movie = m_folder->hasFile(seeded.number()) ? std::nullopt : seeded.make(camera()))
            content.movies.push_back(*std::move(movie));
    }
    for (const Drive::Movie &left : m_machine.drive().restore(std::move(content)))
        if (!left.seeded)
            report(left, "does not fit onto the drive");
    m_seeded.clear();
}

/// A recorded movie is not in the list.
void Recorder::report(const Drive::Movie &movie, const char *why) const
{
    qInfo("storage %s: movie %u %s", qUtf8Printable(camera().folder()), movie.number, why);
}

std::function<void()> Recorder::filesToWrite()
{
    // A movie may have been saved since the last look. The frames until now are not looked at: there may be many, and
    // the camera may be about to end.
    constexpr int64_t lastMillisecond = std::numeric_limits<int64_t>::max() / 1000;
    const int64_t time = std::max(m_frameClock.time().value_or(0), Clock::now());
    m_machine.endSavingUntil(std::min(time, lastMillisecond) * 1000);
    const Drive &drive = m_machine.drive();
    if (!m_folder || m_folder->written() == drive.changes())
        return {};
    return
        [folder = m_folder, content = drive.content(), changes = drive.changes()] { folder->write(content, changes); };
}

Status Recorder::movie(uint32_t place, const Drive::Movie *&movie) const
{
    uint32_t count = 0;
    if (const Status status = movieCount(count); status != Ok)
        return status;
    if (place >= count)
        return Refused;
    movie = &m_machine.drive().movies()[place];
    return Ok;
}

Status Recorder::load(uint32_t place)
{
    const Drive::Movie *found = nullptr;
    if (!m_recordModes)
        return Absent;
    if (const Status status = movie(place, found); status != Ok)
        return status;
    const auto wanted = found->recording;
    if (wanted->size() != size() || !m_machine.load(place, present()))
        return Refused;
    while (m_machine.loads()) {
        const int64_t remaining = std::max<int64_t>((m_machine.loadEnd() + 999) / 1000 - Clock::now(), 0);
        if (const Status status = camera().letTimePass(std::min(remaining, checkInterval)); status != Ok)
            return status;
        present();
    }
    return movieIsLoaded() && memory() == wanted ? Ok : Refused;
}

Status Recorder::findFrames(int64_t start, int64_t end, uint32_t &first, uint32_t &last)
{
    const auto searched = memory();
    if (!searched)
        return Refused;
    const int64_t ready = Clock::now() + searchTime + static_cast<int64_t>(searched->frames() / searchedFrames);
    for (int64_t now = Clock::now(); now < ready; now = Clock::now())
        if (const Status status = camera().letTimePass(std::min(ready - now, checkInterval)); status != Ok)
            return status;
    const auto found = [&] {
        const Camera::Unlocked unlocked(camera());
        return emulator::findFrames(*searched, start, end);
    }();
    if (!found || memory() != searched)
        return Refused;
    first = static_cast<uint32_t>(found->first);
    last = static_cast<uint32_t>(found->second);
    return Ok;
}

} // namespace emulator
