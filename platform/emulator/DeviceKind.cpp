#include "platform/emulator/DeviceKind.h"

#include "platform/emulator/devices/CameraClock.h"
#include "platform/emulator/devices/Cooler.h"
#include "platform/emulator/devices/Corrections.h"
#include "platform/emulator/devices/EmulatorProperties.h"
#include "platform/emulator/devices/HourMeter.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/devices/Temperatures.h"

#include <array>

namespace emulator
{

namespace
{

using enum DeviceKind::Presence;
using enum DeviceKind::Memory;
using enum DeviceKind::Snapshot;

template <class D>
constexpr DeviceKind kind(const char *key, DeviceKind::Presence presence, DeviceKind::Memory memory,
                          DeviceKind::Snapshot snapshot)
{
    const auto make = [](Camera &camera, Section &section) -> std::unique_ptr<Device> {
        return std::make_unique<D>(camera, section);
    };
    return {QLatin1String(key), presence, memory, snapshot, make};
}

constexpr std::array kinds{
    kind<EmulatorProperties>("emulator", Always, Forgets, LeftOut),
    kind<CameraClock>("clock", Always, Remembers, LeftOut),
    kind<HourMeter>("hours", Always, Remembers, LeftOut),
    kind<Sensor>("sensor", Always, Forgets, Included),
    kind<Cooler>("cooler", WhereListed, Remembers, Included),
    kind<Temperatures>("temperatures", WhereListed, Forgets, LeftOut),
    kind<Corrections>("corrections", WhereListed, Forgets, LeftOut),
};

} // namespace

std::span<const DeviceKind> DeviceKind::all() { return kinds; }

} // namespace emulator
