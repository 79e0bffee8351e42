#include "platform/emulator/Clock.h"

#include <atomic>
#include <chrono>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

namespace emulator
{

namespace
{

constexpr int64_t manualStart = 1709208000000; // 2024-02-29 12:00:00 UTC: a leap day, where errors of dates show first.

std::atomic<bool> manualClock{false};
std::atomic<int64_t> manualTime{manualStart};

std::mutex actionMutex;
std::function<void()> nextAction; ///< Of duringNextWait().

thread_local std::optional<int64_t> earlierTime; ///< Of AsOf.

void runNextAction()
{
    std::unique_lock lock(actionMutex);
    const auto action = std::exchange(nextAction, nullptr);
    lock.unlock();
    if (action)
        action();
}

} // namespace

Clock::AsOf::AsOf(int64_t milliseconds) : m_outer(std::exchange(earlierTime, milliseconds)) { }

Clock::AsOf::~AsOf() { earlierTime = m_outer; }

bool Clock::isAsOf() { return earlierTime.has_value(); }

int64_t Clock::now()
{
    if (earlierTime)
        return *earlierTime;
    if (manualClock)
        return manualTime;
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(sinceEpoch).count();
}

void Clock::manual()
{
    manualTime = manualStart;
    manualClock = true;
}

void Clock::stop()
{
    manualTime = now();
    manualClock = true;
}

void Clock::automatic() { manualClock = false; }

bool Clock::isManual() { return manualClock; }

void Clock::advance(int64_t milliseconds)
{
    if (manualClock && milliseconds > 0)
        manualTime += milliseconds;
}

void Clock::wait(int64_t milliseconds)
{
    if (manualClock) {
        runNextAction();
        advance(milliseconds);
    } else if (milliseconds > 0) {
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
    }
}

void Clock::duringNextWait(std::function<void()> action)
{
    const std::lock_guard lock(actionMutex);
    nextAction = std::move(action);
}

int64_t Clock::remaining(int64_t end, int64_t duration)
{
    const int64_t left = end - now();
    return left > 0 && left <= duration ? left : 0;
}

} // namespace emulator
