#pragma once

#include "benchmarks/page/LoadedPage.h"

#include <QString>

// What the program does with a page. Each returns the program's exit status. GUI thread only.

/// Shows the page, and at its first frame prints the time (nanoseconds of the monotonic clock) and the peak of the
/// resident memory (KiB), and ends the process.
int reportFirstFrame(LoadedPage::Kind kind);

/// Uses the page on a slow camera and prints the longest gaps of the event loop.
int reportEventLoop();

/// Writes a flat page with the same stock controls and layouts as the plug-in's page.
int writeFlatPage(const QString &file);
