#include "platform/emulator/devices/ExposureLog.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/Clock.h"
#include "platform/emulator/devices/CameraClock.h"
#include "platform/emulator/devices/Corrections.h"
#include "platform/emulator/devices/Environment.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/devices/VideoOutput.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

namespace emulator
{

namespace
{

// Milliseconds.
constexpr int64_t interval = 10;
constexpr int64_t longestStep = 10'000;

constexpr int64_t gridTime(int64_t time) { return time / interval * interval; }

} // namespace

void ExposureLog::start(const FrameLog &frames, int64_t now)
{
    m_sensor = m_camera.device<Sensor>();
    m_corrections = m_camera.device<Corrections>();
    m_clock = m_camera.device<CameraClock>();
    m_environment = m_camera.device<Environment>();
    m_video = m_camera.device<VideoOutput>();
    m_segments.clear();
    m_due.reset();
    m_looked = now;
    begin(frames, now, std::make_shared<const RecordedSettings>(presentSettings()), motionAt(now));
}

void ExposureLog::look(const FrameLog &frames, int64_t now)
{
    for (int64_t rest = m_looked; m_due.value_or(gridTime(m_looked) + interval) <= now;) {
        if (m_due) {
            m_looked = rest = *std::exchange(m_due, std::nullopt);
            // The settings have not changed since the last look.
            const Clock::AsOf moment(m_looked);
            takeChanges(frames, m_looked, true);
        } else {
            findMotion(frames, now, rest);
        }
    }
    m_looked = now;
    takeChanges(frames, now, false);
}

/// Reads the motion at the next time of the grid, or later if nothing has moved since `rest`.
void ExposureLog::findMotion(const FrameLog &frames, int64_t now, int64_t &rest)
{
    const auto changes = [this](const RecordedMotion &motion) { return motion.differsFrom(m_segments.back().motion); };
    int64_t before = gridTime(m_looked);
    const int64_t turn = gridTime(m_environment->nextTurn(before));
    int64_t time = before + std::clamp(gridTime((m_looked - rest) / 4), interval, longestStep);
    time = std::min({time, gridTime(now), std::max(turn, before + interval)});
    RecordedMotion motion = motionAt(time);
    if (changes(motion)) {
        while (time - before > interval) {
            const int64_t middle = gridTime(std::midpoint(before, time));
            const RecordedMotion earlier = motionAt(middle);
            (changes(earlier) ? time : before) = middle;
            if (time == middle)
                motion = earlier;
        }
        rest = time;
        begin(frames, time, m_segments.back().settings, motion);
    }
    m_looked = time;
}

/// Begins a segment if a setting has changed or, with `motion`, if a device has moved.
void ExposureLog::takeChanges(const FrameLog &frames, int64_t time, bool motion)
{
    const Recording::Segment &last = m_segments.back();
    const RecordedSettings present = presentSettings();
    const bool settingsChanged = !present.equals(*last.settings);
    if (!settingsChanged && !motion)
        return;
    const RecordedMotion presentMotion = motionAt(time);
    if (settingsChanged)
        begin(frames, time, std::make_shared<const RecordedSettings>(present), presentMotion);
    else if (presentMotion.differsFrom(last.motion))
        begin(frames, time, last.settings, presentMotion);
}

/// Begins a segment, now or when it is due.
void ExposureLog::begin(const FrameLog &frames, int64_t time, Settings settings, const RecordedMotion &motion)
{
    if (!m_segments.empty() && time < m_begun + interval) {
        m_due = m_begun + interval;
        return;
    }
    const uint64_t number = frames.firstAfter(time * 1000);
    // No frame has begun with the settings of the last segment.
    if (!m_segments.empty() && m_segments.back().firstNumber == number)
        m_segments.pop_back();
    m_segments.push_back({number, std::move(settings), motion});
    m_begun = time;
}

RecordedSettings ExposureLog::presentSettings() const
{
    RecordedSettings present;
    present.irigShift = m_clock->irigShift();
    present.realTimeShift = m_clock->realTimeShift();
    present.irigLatch = static_cast<RecordedSettings::IrigLatch>(m_video->irigLatch());
    present.integrationDelay = m_sensor->readoutConstants().preIntDeadWidth * 1e6 / m_sensor->clockFrequency();
    for (int preset = 0; preset < m_sensor->numPresets(); ++preset) {
        auto &[exposure, correction] = present.presets.at(static_cast<size_t>(preset));
        exposure = m_camera.exposure({.preset = preset});
        exposure.correction.reset();
        RecordedMotion::takeFrom(exposure);
        if (m_corrections)
            correction = m_corrections->toRecord(preset);
    }
    return present;
}

RecordedMotion ExposureLog::motionAt(int64_t time) const
{
    const Clock::AsOf moment(time);
    image::Exposure exposure = m_camera.exposure({.preset = m_sensor->activePreset()});
    return RecordedMotion::takeFrom(exposure);
}

void ExposureLog::forgetBefore(uint64_t number)
{
    const auto present = std::ranges::upper_bound(m_segments, number, {}, &Recording::Segment::firstNumber);
    if (present != m_segments.begin())
        m_segments.erase(m_segments.begin(), std::prev(present));
}

} // namespace emulator
