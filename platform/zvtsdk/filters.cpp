// The SDK's functions of the filter wheel.
#include "zvt/zvtsdk.h"

#include "platform/emulator/devices/FilterWheel.h"
#include "platform/emulator/memberCalls.h"

using namespace emulator;

int zvtGetFilterWheelPresent(uint64_t handle, uint8_t *out)
{
    return dispatch(
        __func__, handle, [&](Camera &camera) { *out = camera.device<FilterWheel>() ? 1 : 0; }, out);
}

int zvtGetNumFilters(uint64_t handle, uint8_t *count) { return get<&FilterWheel::count>(__func__, handle, count); }

int zvtGetFilterIDs(uint64_t handle, uint8_t *id0, uint8_t *id1, uint8_t *id2, uint8_t *id3)
{
    return call<&FilterWheel::ids>(__func__, handle, id0, id1, id2, id3);
}

int zvtGetFilterIDInSlot(uint64_t handle, uint8_t slot, uint8_t *out)
{
    return call<&FilterWheel::idInSlot>(__func__, handle, slot, out);
}

int zvtSetFilterIDInSlot(uint64_t handle, uint8_t slot, uint8_t value)
{
    return call<&FilterWheel::setIdInSlot>(__func__, handle, slot, value);
}

int zvtGetCurrentFilterID(uint64_t handle, uint8_t *id) { return call<&FilterWheel::current>(__func__, handle, id); }

int zvtSetCurrentFilterID(uint64_t handle, uint8_t id) { return call<&FilterWheel::turnTo>(__func__, handle, id); }

int zvtScanFilters(uint64_t handle) { return call<&FilterWheel::scan>(__func__, handle); }

int zvtGetFilterNameEx(uint64_t handle, uint8_t id, char *buffer, uint32_t size)
{
    return call<&FilterWheel::name>(__func__, handle, id, Text(buffer, size));
}

int zvtSetFilterInfoName(uint64_t handle, uint8_t id, const char *name)
{
    return call<&FilterWheel::setName>(__func__, handle, id, name);
}
