#pragma once

#include "platform/emulator/Status.h"
#include "platform/emulator/devices/presets.h"

#include <array>
#include <cstdint>

namespace emulator
{

// One preset's value in a member of a device that has those of all presets.

/// Reads the value of a preset. Refuses a preset that the camera lacks.
template <class T> Status fetchOf(const std::array<T, maximumPresets> &values, int numPresets, uint8_t preset, T &value)
{
    if (preset >= numPresets)
        return Refused;
    value = values[preset];
    return Ok;
}

/// Changes the value of a preset: calls `assign` with the values of all. Refuses a preset that the camera lacks.
template <class T, class Assign>
Status assignOf(std::array<T, maximumPresets> values, int numPresets, uint8_t preset, T value, const Assign &assign)
{
    if (preset >= numPresets)
        return Refused;
    values[preset] = value;
    return assign(values);
}

} // namespace emulator
