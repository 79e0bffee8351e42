// The SDK's functions of the non-uniformity corrections.
#include "zvt/zvtsdk.h"

#include "platform/emulator/devices/Corrections.h"
#include "platform/emulator/memberCalls.h"

using namespace emulator;

int zvtGetNUCName(uint64_t handle, uint8_t preset, char *buffer, uint32_t size)
{
    return call<&Corrections::name>(__func__, handle, preset, Text(buffer, size));
}
