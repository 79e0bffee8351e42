#include "platform/emulator/devices/PlaybackPosition.h"

#include <algorithm>
#include <cmath>

namespace emulator
{

void PlaybackPosition::showFrame(uint64_t frame)
{
    m_running = false;
    m_ended = false;
    m_frame = frame;
}

void PlaybackPosition::run(uint64_t frame, double phase, const Course &course, int64_t time)
{
    m_course = course;
    m_running = true;
    m_ended = false;
    m_frame = frame;
    m_phase = phase;
    m_time = time;
}

void PlaybackPosition::start(const Course &course, int64_t time) { run(course.first, 0, course, time); }

void PlaybackPosition::resume(const Course &course, int64_t time)
{
    const bool inside = m_frame >= course.first && m_frame <= course.last && !m_ended;
    run(inside ? m_frame : course.first, 0, course, time);
}

void PlaybackPosition::change(const Course &course, int64_t time)
{
    const double frames = passed(time);
    run(std::clamp(frame(time), course.first, course.last), frames - std::floor(frames), course, time);
}

void PlaybackPosition::pause(int64_t time)
{
    const bool over = ended(time);
    showFrame(frame(time));
    m_ended = over;
}

double PlaybackPosition::passed(int64_t time) const
{
    return m_phase + static_cast<double>(std::max<int64_t>(time - m_time, 0)) * m_course.rate / 1e6;
}

uint64_t PlaybackPosition::frame(int64_t time) const
{
    if (!m_running)
        return m_frame;
    const uint64_t place = m_frame - m_course.first + static_cast<uint64_t>(passed(time));
    const uint64_t count = m_course.last - m_course.first + 1;
    return m_course.first + (m_course.loop ? place % count : std::min(place, count - 1));
}

bool PlaybackPosition::ended(int64_t time) const
{
    return m_running && !m_course.loop && passed(time) >= static_cast<double>(m_course.last - m_frame + 1);
}

} // namespace emulator
