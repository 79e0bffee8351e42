#include "platform/emulator/dispatch.h"
#include "zvt/zvtsdk.h"

// What the camera works out about frame periods.

using namespace emulator;

int zvtCalcMinFrameWidth(uint64_t handle, uint32_t *clocks, uint16_t width, uint16_t height)
{
    return absent(__func__, handle, clocks, width, height);
}

int zvtCalcMinFrameWidthEx(uint64_t handle, uint32_t *minClocks, uint16_t width, uint16_t height,
                           uint32_t integrationWidth, bool sequencing)
{
    return absent(__func__, handle, minClocks, width, height, integrationWidth, sequencing);
}

int zvtSnapHertz(uint64_t handle, double *snapped, double wanted) { return absent(__func__, handle, snapped, wanted); }
