#pragma once

#include "platform/emulator/Gate.h"

#include <cstddef>
#include <deque>
#include <mutex>
#include <string>
#include <vector>

/// Which calls a list shows.
struct CallFilter {
    std::string text; ///< A part of the name or of the arguments. Upper and lower case of ASCII letters are equal.
    bool onlyFailed = false; ///< Leaves out calls that ended with Ok.

    bool matches(const emulator::Call &call) const;
};

/// The calls that wait to be shown: the last `limit` of those that match the filter. Any thread.
class CallBuffer
{
public:
    CallBuffer(CallFilter filter, size_t limit);

    /// Adds a call. Returns whether it is the first one that matches since take() or look().
    bool add(const emulator::CallEvent &event);

    /// Removes and returns all calls, the oldest first.
    std::vector<emulator::CallEvent> take();

    /// Returns the number of calls that wait.
    size_t look();

private:
    const CallFilter m_filter;
    const size_t m_limit;
    std::mutex m_mutex;
    std::deque<emulator::CallEvent> m_events;
    bool m_isAnnounced = false;
};
