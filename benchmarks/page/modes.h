#pragma once

#include "benchmarks/page/LoadedPage.h"

#include <QString>

// What the program does with a page. Each returns the program's exit status. GUI thread only.

/// Shows the page, and at its first frame prints the time (nanoseconds of the monotonic clock) and the peak of the
/// resident memory (KiB), and ends the process.
int reportFirstFrame(LoadedPage::Kind kind);

/// Uses the page on a slow camera and prints the longest gaps of the event loop.
int reportEventLoop();

/// Opens dialogs and lists for the first time and prints what each costs up to the first frame that shows it.
int reportOpenings();

/// Shows each tab, does nothing for ten seconds and prints what that has cost.
int reportIdle();

/// Prints how many controls and how many objects the page consists of at its first frame, and how many controls once
/// the contents of hidden pages are there too.
int reportCounts();

/// Shows the page, waits for the contents of hidden pages and ends the process.
int reportContents();

/// Writes a flat page with the same stock controls and layouts as the plug-in's page.
int writeFlatPage(const QString &file);
