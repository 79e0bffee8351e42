#pragma once

#include "benchmarks/page/LoadedPage.h"

#include <QString>

// The modes of the program. Each returns the exit status of the program. GUI thread only.

/// Shows the page. At its first frame prints the time in nanoseconds of the monotonic clock and the peak resident
/// memory in KiB, and ends the process.
int reportFirstFrame(LoadedPage::Kind kind);

/// Uses the page on a slow camera and prints the longest gaps of the event loop.
int reportEventLoop();

/// Opens each dialog and list for the first time and prints its cost up to the first frame that shows it.
int reportOpenings();

/// Shows each tab, does nothing for ten seconds and prints the cost of this time.
int reportIdle();

/// Prints the numbers of controls and objects of the page at its first frame, and the number of controls after the
/// contents of hidden pages have been created.
int reportCounts();

/// Shows the page, waits for the contents of hidden pages and ends the process.
int reportContents();

/// Shows the live picture of the desk, hides it again, and prints its costs.
int reportDesk();

/// Writes a flat page with the same stock controls and layouts as the plug-in's page.
int writeFlatPage(const QString &file);
