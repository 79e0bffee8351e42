#include "standalone/desk/CallBuffer.h"

#include "platform/emulator/Status.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace
{

char toLower(char letter) { return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter; }

bool contains(std::string_view text, std::string_view part)
{
    const auto equal = [](char left, char right) { return toLower(left) == toLower(right); };
    return std::search(text.begin(), text.end(), part.begin(), part.end(), equal) != text.end();
}

} // namespace

bool CallFilter::matches(const emulator::Call &call) const
{
    if (onlyFailed && call.status == emulator::Ok)
        return false;
    return text.empty() || contains(call.name, text) || contains(call.arguments, text);
}

CallBuffer::CallBuffer(CallFilter filter, size_t limit) : m_filter(std::move(filter)), m_limit(limit) { }

bool CallBuffer::add(const emulator::CallEvent &event)
{
    if (!m_filter.matches(event.call))
        return false;
    const std::lock_guard lock(m_mutex);
    if (m_events.size() == m_limit)
        m_events.pop_front();
    m_events.push_back(event);
    return !std::exchange(m_isAnnounced, true);
}

std::vector<emulator::CallEvent> CallBuffer::take()
{
    const std::lock_guard lock(m_mutex);
    m_isAnnounced = false;
    const std::deque<emulator::CallEvent> events = std::exchange(m_events, {});
    return {events.begin(), events.end()};
}

size_t CallBuffer::look()
{
    const std::lock_guard lock(m_mutex);
    m_isAnnounced = false;
    return m_events.size();
}
