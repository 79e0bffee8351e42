#pragma once

#include "platform/emulator/Device.h"

#include <cmath>
#include <cstdint>

namespace emulator
{

// Delays in microseconds that are stored in clocks of the sensor.

inline constexpr Between delayRange{0, 1'000'000};

inline double delayOf(uint32_t clocks, uint32_t clockFrequency) { return clocks * 1e6 / clockFrequency; }

/// Sets `clocks` to the nearest number of clocks. Refuses a delay outside of delayRange.
inline Status storeDelay(double microseconds, uint32_t clockFrequency, uint32_t &clocks)
{
    if (!delayRange.holds(microseconds))
        return Refused;
    clocks = static_cast<uint32_t>(std::llround(microseconds * clockFrequency / 1e6));
    return Ok;
}

/// The row of a delay that is a member of a device, in clocks.
inline Setting delaySetting(QString key, uint32_t &clocks, uint32_t clockFrequency)
{
    return {std::move(key), [&clocks, clockFrequency] { return delayOf(clocks, clockFrequency); },
            [&clocks, clockFrequency](double microseconds) { return storeDelay(microseconds, clockFrequency, clocks); },
            delayRange, Setting::Everywhere};
}

} // namespace emulator
