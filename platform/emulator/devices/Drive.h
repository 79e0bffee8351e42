#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace emulator
{

class Recording;

/// The drive of a recorder, with the movies on it in the order of their numbers.
class Drive
{
public:
    struct Movie {
        uint32_t number = 0; ///< From 1; no movie gets the number of an earlier one before the drive is formatted.
        std::string name; ///< UTF-8.
        std::shared_ptr<const Recording> recording;
    };

    /// `capacity` is in bytes, `speed` in bytes a second.
    Drive(uint64_t capacity, int64_t speed) : m_capacity(capacity), m_speed(speed) { }

    uint64_t capacity() const { return m_capacity; }
    /// The speed of a drive that is not slow.
    int64_t ratedSpeed() const { return m_speed; }
    int64_t speed() const { return m_slow ? std::max<int64_t>(m_speed / slowness, 1) : m_speed; }
    uint64_t used() const { return m_used; }
    uint64_t free() const { return m_full ? 0 : m_capacity - m_used; }
    const std::vector<Movie> &movies() const { return m_movies; }

    /// Whether other files fill the drive. Formatting removes them.
    bool isFull() const { return m_full; }
    void setFull(bool full) { m_full = full; }
    /// A slow drive has a fiftieth of its speed.
    bool isSlow() const { return m_slow; }
    void setSlow(bool slow) { m_slow = slow; }

    /// Adds a movie. Returns false if it does not fit.
    bool add(const std::string &name, std::shared_ptr<const Recording> recording);
    /// Removes all movies and other files.
    void format();
    /// The time for this number of bytes in microseconds, rounded up.
    int64_t microseconds(uint64_t bytes) const;

private:
    static constexpr int64_t slowness = 50;

    uint64_t m_capacity;
    int64_t m_speed;
    uint64_t m_used = 0;
    uint32_t m_lastNumber = 0;
    bool m_full = false;
    bool m_slow = false;
    std::vector<Movie> m_movies;
};

} // namespace emulator
