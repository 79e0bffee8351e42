#pragma once

#include "common/Nullable.h"
#include "common/presets.h"
#include "common/publishing.h"
#include "common/reading.h"

#include <array>
#include <cstddef>
#include <cstdint>

// Settings of which each preset has a value of its own.

/// One value for each preset.
template <class T> using PerPreset = std::array<T, presetCount>;

/// Reads the value of each preset, as fetch() with the number of the preset. Any thread.
template <class T, class Get> void fetchPresets(PerPreset<Nullable<T>> &values, Get get, uint64_t handle)
{
    for (uint8_t preset = 0; preset < presetCount; ++preset)
        fetch(values[preset], get, handle, preset);
}

/// Publishes the value of each preset, as publish() with the signal of the preset. GUI thread only.
template <class Model, class Value, class Member>
void publishPresets(Model *model, const PerPreset<Nullable<Value>> &values, PerPreset<Member> &members,
                    const PerPreset<void (Model::*)()> &changed)
{
    for (size_t preset = 0; preset < presetCount; ++preset)
        publish(model, values[preset], members[preset], changed[preset]);
}
