#pragma once

#include "benchmarks/page/LoadedPage.h"

#include <chrono>

// What the modes measure with. GUI thread only.

using Milliseconds = std::chrono::duration<double, std::milli>;

/// What a measured step costs the GUI thread.
struct Cost {
    Milliseconds processor{}; ///< Spent by the thread itself. Other programs and threads do not count.
    Milliseconds wall{};
};

/// Measures from its construction, or from when it was started again.
class Stopwatch
{
public:
    Stopwatch() { restart(); }

    void restart() { m_start = now(); }
    Cost cost() const;

private:
    static Cost now();

    Cost m_start;
};

/// Connects the camera as a host does, and waits until it is connected.
void connectCamera(LoadedPage &page);
