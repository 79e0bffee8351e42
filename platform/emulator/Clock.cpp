#include "platform/emulator/Clock.h"

#include <atomic>
#include <chrono>
#include <thread>

namespace emulator
{

namespace
{

constexpr int64_t manualStart = 1709208000000; // 2024-02-29 12:00:00 UTC: a leap day, where errors of dates show first.

std::atomic<bool> manualClock{false};
std::atomic<int64_t> manualTime{manualStart};

} // namespace

int64_t Clock::now()
{
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

void Clock::automatic() { manualClock = false; }

bool Clock::isManual() { return manualClock; }

void Clock::advance(int64_t milliseconds)
{
    if (manualClock && milliseconds > 0)
        manualTime += milliseconds;
}

void Clock::wait(int64_t milliseconds)
{
    if (manualClock)
        advance(milliseconds);
    else if (milliseconds > 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

int64_t Clock::remaining(int64_t end, int64_t duration)
{
    const int64_t left = end - now();
    return left > 0 && left <= duration ? left : 0;
}

} // namespace emulator
