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

template <class D> std::unique_ptr<Device> make(Camera &camera, Section &section)
{
    return std::make_unique<D>(camera, section);
}

const std::array kinds{
    DeviceKind{QLatin1String("emulator"), DeviceKind::Always, DeviceKind::Forgets, DeviceKind::LeftOut, make<EmulatorProperties>},
    DeviceKind{QLatin1String("clock"), DeviceKind::Always, DeviceKind::Remembers, DeviceKind::LeftOut, make<CameraClock>},
    DeviceKind{QLatin1String("hours"), DeviceKind::Always, DeviceKind::Remembers, DeviceKind::LeftOut, make<HourMeter>},
    DeviceKind{QLatin1String("sensor"), DeviceKind::Always, DeviceKind::Forgets, DeviceKind::Included, make<Sensor>},
    DeviceKind{QLatin1String("cooler"), DeviceKind::WhereListed, DeviceKind::Remembers, DeviceKind::Included, make<Cooler>},
    DeviceKind{QLatin1String("temperatures"), DeviceKind::WhereListed, DeviceKind::Forgets, DeviceKind::LeftOut, make<Temperatures>},
    DeviceKind{QLatin1String("corrections"), DeviceKind::WhereListed, DeviceKind::Forgets, DeviceKind::LeftOut, make<Corrections>},
};

} // namespace

std::span<const DeviceKind> DeviceKind::all() { return kinds; }

} // namespace emulator
