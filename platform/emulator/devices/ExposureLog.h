#pragma once

#include "platform/emulator/devices/Recording.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>

namespace emulator
{

class Camera;
class CameraClock;
class Corrections;
class Environment;
class Sensor;
class VideoOutput;

/// The settings with which the frames of a FrameLog were exposed. They depend on the Clock and the commands only, not
/// on the times of look(). A segment begins
///
/// - when a setting has changed,
/// - at a time of a grid of 10 ms, if devices have moved or drifted since the last segment began,
///
/// but not within 10 ms after another one: a change in this time has its effect at the end of it.
///
/// A look reads the motion at each time of the grid since the last look. While nothing moves, it leaves out more and
/// more of them: the next time is later by a fourth of the rest so far, at most 10 s and not after the next turn of the
/// surroundings. If something has moved by then, it finds the first such time by bisection. Only a motion to and fro
/// between two of the times would be missed.
class ExposureLog
{
public:
    explicit ExposureLog(const Camera &camera) : m_camera(camera) { }

    /// Begins with the present settings. All devices must exist. Times are of Clock in milliseconds.
    void start(const FrameLog &frames, int64_t now);
    /// Notices the changes since the last time. Called before and after each change of a setting.
    void look(const FrameLog &frames, int64_t now);
    /// Forgets the segments that only frames before this number need.
    void forgetBefore(uint64_t number);
    void clear() { m_segments.clear(); }

    const std::deque<Recording::Segment> &segments() const { return m_segments; }

private:
    using Settings = std::shared_ptr<const RecordedSettings>;

    void findMotion(const FrameLog &frames, int64_t now, int64_t &rest);
    void takeChanges(const FrameLog &frames, int64_t time, bool motion);
    void begin(const FrameLog &frames, int64_t time, Settings settings, const RecordedMotion &motion);
    RecordedSettings presentSettings() const;
    RecordedMotion motionAt(int64_t time) const;

    const Camera &m_camera;
    const Sensor *m_sensor = nullptr;
    const Corrections *m_corrections = nullptr; ///< Null if the camera has none.
    const CameraClock *m_clock = nullptr;
    const Environment *m_environment = nullptr;
    const VideoOutput *m_video = nullptr; ///< It has the latch of the IRIG time.
    std::deque<Recording::Segment> m_segments;
    int64_t m_looked = 0; ///< The time until which everything has been read.
    int64_t m_begun = 0; ///< The time of the last segment.
    std::optional<int64_t> m_due; ///< A change waits for this time.
};

} // namespace emulator
