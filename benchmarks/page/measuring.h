#pragma once

#include "benchmarks/page/LoadedPage.h"

#include <chrono>

// Helpers for measurements. GUI thread only.

using Milliseconds = std::chrono::duration<double, std::milli>;

/// The cost of a measured step on the GUI thread.
struct Cost {
    Milliseconds processor{}; ///< Processor time of the thread; not influenced by other programs and threads.
    Milliseconds wall{};
};

/// Measures the time since its construction or its last restart.
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
