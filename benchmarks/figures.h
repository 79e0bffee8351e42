#pragma once

class Report;

// Each function runs its own measurement and reports its figures, which docs/measurements.md explains. GUI thread only.

/// The share of a refresh that is not spent in the camera.
void measureRefreshes(Report &report);

/// The longest time for which the event loop is blocked while everything refreshes on a slow camera.
void measureEventLoop(Report &report);

/// Instructions and memory up to the first frame, compared with a flat page of the same controls, and the cost of a
/// control.
void measureStart(Report &report);

/// The cost of the first opening of each dialog.
void measureOpenings(Report &report);

/// The cost of an idle page.
void measureIdling(Report &report);

/// Whether the cost of a row is independent of the length of its list.
void measureLists(Report &report);

/// The cost of the conversion of movies over that of its file operations.
void measureConversion(Report &report);

/// The cost of frames of the emulated camera.
void measureVideo(Report &report);

/// The cost of the desk with its live picture.
void measureDesk(Report &report);
