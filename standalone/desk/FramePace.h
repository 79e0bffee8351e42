#pragma once

#include <chrono>

/// How often pictures are made: at most 25 a second, and less often while they take too long. Takes only durations, no
/// time of its own. Used by one thread.
///
/// A frame that takes more than half of the period doubles it. After 10 frames that follow each other and would also
/// fit into half of the shorter period, the period is halved again. So a constant load never makes it alternate.
class FramePace
{
public:
    static constexpr std::chrono::milliseconds shortest{40};
    static constexpr std::chrono::milliseconds longest{640};
    static constexpr int quickFrames = 10;

    /// From the start of a frame to the start of the next one.
    std::chrono::milliseconds period() const { return m_period; }

    /// A frame has taken so long.
    void add(std::chrono::nanoseconds duration);

private:
    std::chrono::milliseconds m_period = shortest;
    int m_quick = 0; ///< Frames that follow each other and would fit into a shorter period.
};
