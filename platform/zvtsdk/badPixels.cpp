// The SDK's functions of the lists of bad pixels.
#include "zvt/zvtsdk.h"

#include "platform/emulator/devices/BadPixelLists.h"
#include "platform/emulator/memberCalls.h"

using namespace emulator;

int zvtSaveBadPixelList(uint64_t handle, uint8_t preset, const char *cameraPath)
{
    return call<&BadPixelLists::exportList>(__func__, handle, preset, cameraPath);
}

int zvtMfgFactoryBPLCreate(uint64_t handle, uint32_t presetMask)
{
    return call<&BadPixelLists::createFactoryList>(__func__, handle, presetMask);
}

int zvtMfgFactoryBPLAppend(uint64_t handle, uint32_t presetMask)
{
    return call<&BadPixelLists::appendToFactoryList>(__func__, handle, presetMask);
}

int zvtMfgFactoryBPLApply(uint64_t handle, uint32_t presetMask)
{
    return call<&BadPixelLists::applyFactoryList>(__func__, handle, presetMask);
}
