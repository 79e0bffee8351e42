#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace emulator
{

/// Writes something on a thread of its own soon after it has changed, at most once in an interval, so that the caller
/// that changes it does not wait for the disk. The thread starts with the first mark(). Any thread. A caller of flush()
/// and stop() must not hold a lock that the write takes.
class MemoryWriter
{
public:
    /// `write` is called on this thread and by flush(), one call at a time. It returns whether everything is written,
    /// and must not throw. After a failure the thread waits for the next change, but each flush() tries again.
    explicit MemoryWriter(std::function<bool()> write, std::chrono::milliseconds interval = std::chrono::seconds(1));
    MemoryWriter(const MemoryWriter &) = delete;
    MemoryWriter &operator=(const MemoryWriter &) = delete;
    /// Ends the thread. Does not write what is marked.
    ~MemoryWriter();

    /// Reports a change. Does not wait for a write.
    void mark();

    /// Returns when every change that is marked has been written, or could not be written. Writes on the calling thread
    /// instead of waiting for the end of the interval.
    void flush();

    /// Ends the thread after a running write. After that only flush() writes.
    void stop();

private:
    void run();
    void writeUnlocked(std::unique_lock<std::mutex> &lock);

    std::function<bool()> m_write;
    std::chrono::milliseconds m_interval;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_marked = false;
    bool m_failed = false; ///< The last write.
    bool m_writing = false;
    bool m_stopped = false;
    std::thread m_thread;
};

} // namespace emulator
