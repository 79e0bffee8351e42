// The SDK's function of the camera's event queue.
#include "zvt/zvtsdk.h"

#include "platform/emulator/devices/EventQueue.h"
#include "platform/emulator/memberCalls.h"

using namespace emulator;

int zvtReadEventQueue(uint64_t handle, zvtEEventType *type) { return get<&EventQueue::take>(__func__, handle, type); }
