// The SDK's function of the camera's event queue.
#include "zvt/zvtsdk.h"

#include "platform/emulator/devices/EventQueue.h"
#include "platform/emulator/dispatch.h"

using emulator::EventQueue;

int zvtReadEventQueue(uint64_t handle, zvtEEventType *type)
{
    return emulator::onDevice<EventQueue>(
        __func__, handle, [&](EventQueue &queue) { *type = queue.take(); }, type);
}
