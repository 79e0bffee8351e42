#pragma once

#include <cstdint>

namespace emulator
{

// The filters that every camera knows by their IDs, 0 to 63. Any thread.

inline constexpr uint8_t filterCount = 64;

/// The built-in name of a filter as a static text, null for an ID that is not known.
const char *filterName(uint8_t id);

/// The share of the light that a filter passes, 0 to 1. It does not depend on the user's name of the filter.
double filterTransmission(uint8_t id);

} // namespace emulator
