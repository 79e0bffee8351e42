// The SDK's functions of the filter wheel, which emulated cameras do not have.
#include "zvt/zvtsdk.h"

#include "platform/emulator/dispatch.h"

using namespace emulator;

int zvtGetFilterWheelPresent(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtGetNumFilters(uint64_t handle, uint8_t *count) { return absent(__func__, handle, count); }

int zvtGetFilterIDs(uint64_t handle, uint8_t *id0, uint8_t *id1, uint8_t *id2, uint8_t *id3)
{
    return absent(__func__, handle, id0, id1, id2, id3);
}

int zvtGetFilterIDInSlot(uint64_t handle, uint8_t slot, uint8_t *out) { return absent(__func__, handle, slot, out); }

int zvtSetFilterIDInSlot(uint64_t handle, uint8_t slot, uint8_t value) { return absent(__func__, handle, slot, value); }

int zvtGetCurrentFilterID(uint64_t handle, uint8_t *id) { return absent(__func__, handle, id); }

int zvtSetCurrentFilterID(uint64_t handle, uint8_t id) { return absent(__func__, handle, id); }

int zvtScanFilters(uint64_t handle) { return absent(__func__, handle); }

int zvtGetFilterNameEx(uint64_t handle, uint8_t id, char *buffer, uint32_t size)
{
    return absent(__func__, handle, id, Text(buffer, size));
}

int zvtSetFilterInfoName(uint64_t handle, uint8_t id, const char *name) { return absent(__func__, handle, id, name); }
