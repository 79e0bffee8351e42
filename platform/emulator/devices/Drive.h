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
    static constexpr size_t longestName = 67; ///< Bytes.
    static constexpr uint32_t highestNumber = UINT32_MAX - 1; ///< Of a movie.

    struct Movie {
        uint32_t number = 0; ///< From 1; no movie gets the number of an earlier one before the drive is formatted.
        std::string name; ///< UTF-8, at most longestName bytes.
        std::shared_ptr<const Recording> recording;
        bool seeded = false; ///< From the profile: it is on the drive of a new camera.
    };
    /// What outlives the process.
    struct Content {
        std::vector<Movie> movies;
        uint32_t lastNumber = 0; ///< That of the last movie since the drive was formatted.
        uint32_t formats = 0; ///< How often it was formatted.
    };

    /// `capacity` is in bytes, `speed` in bytes a second.
    Drive(uint64_t capacity, int64_t speed) : m_capacity(capacity), m_speed(speed) { }

    uint64_t capacity() const { return m_capacity; }
    /// The speed of a drive that is not slow.
    int64_t ratedSpeed() const { return m_speed; }
    int64_t speed() const { return m_slow ? std::max<int64_t>(m_speed / slowness, 1) : m_speed; }
    // The sum of these is the capacity.
    uint64_t used() const { return m_full ? m_capacity : m_used; }
    uint64_t free() const { return m_capacity - used(); }
    const std::vector<Movie> &movies() const { return m_content.movies; }

    /// Whether other files fill the drive. Formatting removes them.
    bool isFull() const { return m_full; }
    void setFull(bool full) { m_full = full; }
    /// A slow drive has a fiftieth of its speed.
    bool isSlow() const { return m_slow; }
    void setSlow(bool slow) { m_slow = slow; }

    /// Adds a movie. A longer name is cut between two characters. Returns false if the movie does not fit, or
    /// no number is left.
    bool add(const std::string &name, std::shared_ptr<const Recording> recording);
    /// Removes all movies and other files.
    void format();
    /// The time for this number of bytes in microseconds, rounded up.
    int64_t microseconds(uint64_t bytes) const;

    const Content &content() const { return m_content; }
    /// Replaces everything. Returns the movies that do not fit beside those that are before them in the list.
    std::vector<Movie> restore(Content content);
    /// The number of changes of content() by add() and format().
    uint64_t changes() const { return m_changes; }

private:
    static constexpr int64_t slowness = 50;

    uint64_t m_capacity;
    int64_t m_speed;
    uint64_t m_used = 0;
    uint64_t m_changes = 0;
    bool m_full = false;
    bool m_slow = false;
    Content m_content;
};

} // namespace emulator
