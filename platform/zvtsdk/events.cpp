// The SDK's function of the camera's event queue.
#include "zvt/zvtsdk.h"

#include "platform/emulator/devices/CorrectionRun.h"
#include "platform/emulator/devices/EventQueue.h"
#include "platform/emulator/dispatch.h"

using namespace emulator;

int zvtReadEventQueue(uint64_t handle, zvtEEventType *type)
{
    const auto read = [&](Camera &camera) {
        // An automatic correction advances although no client asks for its status, and ends with an event.
        if (auto *const run = camera.device<CorrectionRun>())
            if (const Status status = run->look(); status != Ok)
                return status;
        *type = camera.device<EventQueue>()->take();
        return Ok;
    };
    return dispatch(__func__, handle, read, type);
}
