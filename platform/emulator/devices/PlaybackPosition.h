#pragma once

#include <cstdint>

namespace emulator
{

/// The frame that a playback shows. A playback shows each frame of a range for the period of its rate, the first one at
/// once. Without a loop it ends after the last one, and shows this one from then on. Times are in microseconds; the
/// frame depends on the time only.
class PlaybackPosition
{
public:
    /// The course of a playback. `rate` is in hertz, above 0.
    struct Course {
        uint64_t first = 0;
        uint64_t last = 0; ///< Included; not below `first`.
        double rate = 30;
        bool loop = false;
    };

    /// Shows a frame until the playback starts.
    void showFrame(uint64_t frame);
    /// Starts at the first frame of the range.
    void start(const Course &course, int64_t time);
    /// Continues at the present frame; at the first one if the present one is outside of the range, or if the playback
    /// has ended.
    void resume(const Course &course, int64_t time);
    /// Changes the course of a running playback. A frame outside of the range is replaced by the nearest one.
    void change(const Course &course, int64_t time);
    void pause(int64_t time);

    uint64_t frame(int64_t time) const;
    /// Whether a running playback has ended.
    bool ended(int64_t time) const;

private:
    double passed(int64_t time) const;
    void run(uint64_t frame, double phase, const Course &course, int64_t time);

    Course m_course;
    bool m_running = false;
    bool m_ended = false; ///< The playback ended before the last pause.
    uint64_t m_frame = 0; ///< At m_time.
    double m_phase = 0; ///< The share of the period of this frame that has passed at m_time.
    int64_t m_time = 0;
};

} // namespace emulator
