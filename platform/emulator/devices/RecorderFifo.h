#pragma once

#include <cstdint>

namespace emulator
{

/// The memory through which frames go to the drive. It takes frames as fast as they come, and the drive empties it. A
/// frame that does not fit is lost. Times are in microseconds.
class RecorderFifo
{
public:
    /// `capacity` and `frame` are bytes, `speed` bytes a second.
    RecorderFifo(int64_t capacity, int64_t speed, int64_t frame);

    /// A frame arrives. Returns whether it fits.
    bool put(int64_t time);
    /// Whether the drive takes each frame before the next one arrives, from now on, if frames are at least `distance`
    /// apart.
    bool keepsUpWith(int64_t distance) const;
    /// Frames arrive, the last one at `time`. Needs keepsUpWith().
    void putAll(int64_t time);
    /// The time that the drive needs for the content of the memory, rounded up.
    int64_t microsecondsToEmpty(int64_t time);

private:
    void drain(int64_t time);

    int64_t m_capacity;
    int64_t m_speed;
    int64_t m_frame;
    // In millionths of a byte, so that no time is lost by rounding.
    int64_t m_content = 0;
    int64_t m_time = 0;
};

} // namespace emulator
