#include "platform/emulator/devices/Drive.h"

#include "platform/emulator/devices/Recording.h"
#include "platform/emulator/utf8.h"

#include <algorithm>
#include <utility>

namespace emulator
{

bool Drive::add(const std::string &name, std::shared_ptr<const Recording> recording)
{
    const uint64_t bytes = recording->bytes();
    if (bytes > free() || m_content.lastNumber >= highestNumber)
        return false;
    m_used += bytes;
    const uint32_t number = ++m_content.lastNumber;
    m_content.movies.push_back({number, std::string(beginningOf(name, longestName)), std::move(recording)});
    ++m_changes;
    return true;
}

void Drive::format()
{
    m_content = {{}, 0, m_content.formats + 1};
    m_used = 0;
    m_full = false;
    ++m_changes;
}

std::vector<Drive::Movie> Drive::restore(Content content)
{
    std::vector<Movie> left;
    m_content = {{}, content.lastNumber, content.formats};
    m_used = 0;
    for (Movie &movie : content.movies) {
        const uint64_t bytes = movie.recording->bytes();
        const bool fits = bytes <= m_capacity - m_used;
        m_used += fits ? bytes : 0;
        (fits ? m_content.movies : left).push_back(std::move(movie));
    }
    std::ranges::sort(m_content.movies, {}, &Movie::number);
    return left;
}

int64_t Drive::microseconds(uint64_t bytes) const
{
    const auto perSecond = static_cast<uint64_t>(speed());
    // Products of a capacity and a million do not fit into 64 bits.
    return static_cast<int64_t>(bytes / perSecond * 1'000'000
                                + (bytes % perSecond * 1'000'000 + perSecond - 1) / perSecond);
}

} // namespace emulator
