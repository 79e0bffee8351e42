#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/Section.h"

#include <QLatin1String>

#include <memory>
#include <span>

namespace emulator
{

/// A kind of device that a profile can give to a camera, under "devices".
struct DeviceKind {
    enum Presence { Always, WhereListed };
    enum Memory { Forgets, Remembers };
    enum Snapshot { LeftOut, Included };

    QLatin1String key; ///< Its name in profiles, and before the dot in names of settings.
    Presence presence; ///< Always: a profile that does not list it gives the device its defaults.
    Memory memory; ///< Remembers: what it saves outlives the process, in the camera's folder.
    Snapshot snapshot; ///< Included: what it saves are settings, which a snapshot holds. Hours and clocks are none.
    std::unique_ptr<Device> (*make)(Camera &camera, Section &section);

    /// All kinds, in the order in which a camera builds its devices.
    static std::span<const DeviceKind> all();
};

} // namespace emulator
