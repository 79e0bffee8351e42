#include "platform/emulator/devices/Drive.h"

#include "platform/emulator/devices/Recording.h"

#include <utility>

namespace emulator
{

bool Drive::add(const std::string &name, std::shared_ptr<const Recording> recording)
{
    const uint64_t bytes = recording->bytes();
    if (bytes > free())
        return false;
    m_used += bytes;
    m_movies.push_back({++m_lastNumber, name, std::move(recording)});
    return true;
}

void Drive::format()
{
    m_movies.clear();
    m_used = 0;
    m_lastNumber = 0;
    m_full = false;
}

int64_t Drive::microseconds(uint64_t bytes) const
{
    const auto perSecond = static_cast<uint64_t>(speed());
    // Products of a capacity and a million do not fit into 64 bits.
    return static_cast<int64_t>(bytes / perSecond * 1'000'000
                                + (bytes % perSecond * 1'000'000 + perSecond - 1) / perSecond);
}

} // namespace emulator
