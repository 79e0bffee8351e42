// The SDK's function of additional information about the camera.
#include "zvt/zvtsdk.h"

#include "platform/emulator/devices/Information.h"
#include "platform/emulator/dispatch.h"

using namespace emulator;

int zvtGetCameraExtraInfo(uint64_t handle, hlx::TArray<zvtSInfoEntry> *entries)
{
    const auto body = [&](Information &information) {
        for (const auto &[name, value] : information.rows())
            entries->add({name.c_str(), value.c_str()});
    };
    return onDevice<Information>(__func__, handle, body, entries);
}
