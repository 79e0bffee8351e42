#include "platform/emulator/dispatch.h"
#include "zvt/zvtsdk.h"

// What the camera tells about itself beside its identity.

using namespace emulator;

int zvtGetCameraExtraInfo(uint64_t handle, hlx::TArray<zvtSInfoEntry> *entries)
{
    return absent(__func__, handle, entries);
}
