// The SDK's functions of the non-uniformity corrections.
#include "zvt/zvtsdk.h"

#include "platform/emulator/devices/Corrections.h"
#include "platform/emulator/dispatch.h"

using emulator::Corrections;

int zvtGetNUCName(uint64_t handle, uint8_t preset, char *buffer, uint32_t size)
{
    emulator::Text text(buffer, size);
    return emulator::onDevice<Corrections>(
        __func__, handle, [&](Corrections &c) { return c.name(preset, text.value); }, preset, text);
}
