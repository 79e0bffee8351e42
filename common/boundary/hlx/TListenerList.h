#pragma once

#include <algorithm>
#include <cstddef>
#include <mutex>

#include "hlx/TArray.h"

namespace hlx
{

/// A list of plain functions with their contexts, called in the order in which they were added. Any thread. The caller
/// of Call() must keep the list alive until it returns.
template <class... Args> class TListenerList
{
public:
    /// One listener: its function, and the context that is passed as its first argument.
    struct SListener {
        void (*call)(void *context, Args... args) = nullptr;
        void *context = nullptr;

        bool operator==(const SListener &) const = default;
    };

    /// Adds `listener` at the end, unless it has no function or the list holds an equal one.
    void Add(const SListener &listener)
    {
        const std::lock_guard lock(m_mutex);
        if (listener.call && !contains(listener))
            m_listeners.add(listener);
    }

    /// Removes the equal listener, if there is one. After that no call of it runs on another thread.
    void Remove(const SListener &listener)
    {
        const std::lock_guard lock(m_mutex);
        const auto *found = std::find(m_listeners.begin(), m_listeners.end(), listener);
        if (found != m_listeners.end())
            m_listeners.remove(static_cast<std::size_t>(found - m_listeners.begin()));
    }

    /// Calls every listener on the calling thread. The list is locked during the calls, so that a removal on another
    /// thread waits for them. A listener may add and remove listeners.
    void Call(Args... args) const
    {
        const std::lock_guard lock(m_mutex);
        const auto listeners = m_listeners;
        // One listener may have removed another.
        for (const SListener &listener : listeners)
            if (contains(listener))
                listener.call(listener.context, args...);
    }

    /// A copy of the list.
    TArray<SListener> Listeners() const
    {
        const std::lock_guard lock(m_mutex);
        return m_listeners;
    }

private:
    bool contains(const SListener &listener) const
    {
        return std::find(m_listeners.begin(), m_listeners.end(), listener) != m_listeners.end();
    }

    mutable std::recursive_mutex m_mutex; ///< Recursive, since a listener may add, remove and call.
    TArray<SListener> m_listeners;
};

} // namespace hlx
