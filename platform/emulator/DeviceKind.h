#pragma once

#include "platform/emulator/Device.h"

#include <QLatin1String>

#include <memory>
#include <span>

namespace emulator
{

/// A kind of device that a camera can have. Profiles list the devices of a camera under "devices".
struct DeviceKind {
    enum Presence { Always, WhereListed, WithCorrections, WithRecorder };
    enum Memory { Forgets, Remembers };
    enum Snapshot { LeftOut, Included };

    QLatin1String key; ///< Its key in profiles and the first part of the names of its settings, before the dot.
    /// Always: if the profile does not list it, it has its default values. WithCorrections and WithRecorder: the same,
    /// but only in a camera with the device Corrections or Recorder.
    Presence presence;
    Memory memory; ///< Remembers: its saved values outlive the process, in the camera's folder.
    Snapshot snapshot; ///< Included: snapshots contain its saved values, except those for Setting::Memory.
    std::unique_ptr<Device> (*make)(Camera &camera, Section &section);

    /// All kinds, in the order in which a camera constructs its devices.
    static std::span<const DeviceKind> all();
};

} // namespace emulator
