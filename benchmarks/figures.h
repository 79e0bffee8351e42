#pragma once

class Report;

// Each measures by itself and reports its figures; docs/measurements.md tells what they mean. GUI thread only.

/// How much of a refresh is not the camera's own time.
void measureRefreshes(Report &report);

/// For how long the event loop stands still while everything refreshes on a slow camera.
void measureEventLoop(Report &report);

/// Instructions and memory up to the first frame, over a flat page of the same controls, and what a control costs.
void measureStart(Report &report);

/// What the first opening of each dialog costs.
void measureOpenings(Report &report);

/// What a page costs while nothing happens.
void measureIdling(Report &report);

/// Whether long lists cost no more for each row than short ones.
void measureLists(Report &report);
