#include "platform/emulator/MemoryWriter.h"

#include <utility>

namespace emulator
{

MemoryWriter::MemoryWriter(std::function<bool()> write, std::chrono::milliseconds interval)
    : m_write(std::move(write)), m_interval(interval)
{
}

MemoryWriter::~MemoryWriter() { stop(); }

void MemoryWriter::mark()
{
    const std::lock_guard lock(m_mutex);
    m_marked = true;
    if (!m_thread.joinable() && !m_stopped)
        m_thread = std::thread([this] { run(); });
    m_changed.notify_all();
}

void MemoryWriter::flush()
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return !m_writing; });
    if (m_marked || m_failed)
        writeUnlocked(lock);
}

void MemoryWriter::stop()
{
    std::thread thread;
    {
        const std::lock_guard lock(m_mutex);
        m_stopped = true;
        thread = std::move(m_thread);
        m_changed.notify_all();
    }
    if (thread.joinable())
        thread.join();
}

void MemoryWriter::run()
{
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_changed.wait(lock, [this] { return m_stopped || (m_marked && !m_writing); });
        if (m_stopped)
            return;
        writeUnlocked(lock);
        m_changed.wait_for(lock, m_interval, [this] { return m_stopped; });
    }
}

/// Writes with the lock released. A change during the write is marked again, for the next one.
void MemoryWriter::writeUnlocked(std::unique_lock<std::mutex> &lock)
{
    m_marked = false;
    m_writing = true;
    lock.unlock();
    const bool written = m_write();
    lock.lock();
    m_failed = !written;
    m_writing = false;
    m_changed.notify_all();
}

} // namespace emulator
