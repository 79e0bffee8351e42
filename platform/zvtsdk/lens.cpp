#include "platform/emulator/dispatch.h"
#include "zvt/zvtsdk.h"

// Focus, zoom, lens cover and lens states. No emulated camera has a motorized lens.

using namespace emulator;

// Focus.

int zvtGetFocusCurrentPos(uint64_t handle, uint32_t *position) { return absent(__func__, handle, position); }

int zvtGetFocusRange(uint64_t handle, uint32_t *minimum, uint32_t *maximum)
{
    return absent(__func__, handle, minimum, maximum);
}

int zvtGetFocusNearPos(uint64_t handle, uint8_t fov, uint32_t *position)
{
    return absent(__func__, handle, fov, position);
}

int zvtSetFocusNearPos(uint64_t handle, uint8_t fov, uint32_t position)
{
    return absent(__func__, handle, fov, position);
}

int zvtGetFocusFarPos(uint64_t handle, uint8_t fov, uint32_t *position)
{
    return absent(__func__, handle, fov, position);
}

int zvtSetFocusFarPos(uint64_t handle, uint8_t fov, uint32_t position)
{
    return absent(__func__, handle, fov, position);
}

int zvtSetFocusPos(uint64_t handle, uint32_t position) { return absent(__func__, handle, position); }

int zvtFocusMoveTo(uint64_t handle, uint32_t position) { return absent(__func__, handle, position); }

int zvtFocusMove(uint64_t handle, int32_t speed) { return absent(__func__, handle, speed); }

int zvtFocusMovePercent(uint64_t handle, float percent) { return absent(__func__, handle, percent); }

int zvtFocusNear(uint64_t handle) { return absent(__func__, handle); }

int zvtFocusFar(uint64_t handle) { return absent(__func__, handle); }

int zvtGetFocusManualMode(uint64_t handle, bool *manual) { return absent(__func__, handle, manual); }

int zvtMfgGetFocusSlowControl(uint64_t handle, uint8_t fov, uint8_t *control)
{
    return absent(__func__, handle, fov, control);
}

int zvtMfgGetFocusPositionIncrement(uint64_t handle, uint8_t fov, uint32_t *increment)
{
    return absent(__func__, handle, fov, increment);
}

int zvtGetFocusToDistanceAvailable(uint64_t handle, bool *available) { return absent(__func__, handle, available); }

int zvtGetFocusToDistanceMin(uint64_t handle, float *metres) { return absent(__func__, handle, metres); }

int zvtGetFocusToDistanceMax(uint64_t handle, float *metres) { return absent(__func__, handle, metres); }

int zvtFocusToDistance(uint64_t handle, float metres) { return absent(__func__, handle, metres); }

// Automatic focus.

int zvtAutoFocusFast(uint64_t handle, int32_t mode) { return absent(__func__, handle, mode); }

int zvtAutoFocusFull(uint64_t handle, int flag) { return absent(__func__, handle, flag); }

int zvtGetAutoFocusROISize(uint64_t handle, uint16_t *size) { return absent(__func__, handle, size); }

int zvtSetAutoFocusROISize(uint64_t handle, uint16_t size) { return absent(__func__, handle, size); }

int zvtGetAutoFocusROIPosition(uint64_t handle, uint8_t *position) { return absent(__func__, handle, position); }

int zvtSetAutoFocusROIPosition(uint64_t handle, uint8_t position) { return absent(__func__, handle, position); }

int zvtGetAutoFocusROIShowWhenFocusing(uint64_t handle, bool *show) { return absent(__func__, handle, show); }

int zvtSetAutoFocusROIShowWhenFocusing(uint64_t handle, bool show) { return absent(__func__, handle, show); }

// Zoom and field of view.

int zvtGetFOV(uint64_t handle, uint8_t *fov) { return absent(__func__, handle, fov); }

int zvtSetFOV(uint64_t handle, uint8_t fov) { return absent(__func__, handle, fov); }

int zvtGetFOVPos(uint64_t handle, uint32_t *position) { return absent(__func__, handle, position); }

int zvtSetFOVPos(uint64_t handle, uint32_t position) { return absent(__func__, handle, position); }

int zvtGetFOVCurrentPos(uint64_t handle, uint32_t *position) { return absent(__func__, handle, position); }

int zvtGetFOVRange(uint64_t handle, uint32_t *minimum, uint32_t *maximum)
{
    return absent(__func__, handle, minimum, maximum);
}

int zvtFOVMoveTo(uint64_t handle, uint32_t position) { return absent(__func__, handle, position); }

int zvtFOVMove(uint64_t handle, int32_t speed) { return absent(__func__, handle, speed); }

int zvtFOVMovePercent(uint64_t handle, float percent) { return absent(__func__, handle, percent); }

int zvtFOVMin(uint64_t handle) { return absent(__func__, handle); }

int zvtFOVMax(uint64_t handle) { return absent(__func__, handle); }

// Lens cover, athermalization and lens states.

int zvtGetLensCoverState(uint64_t handle, uint8_t *state) { return absent(__func__, handle, state); }

int zvtSetLensCoverState(uint64_t handle, uint8_t state) { return absent(__func__, handle, state); }

int zvtGetLensAthermalizationEnabledAvailable(uint64_t handle, bool *available)
{
    return absent(__func__, handle, available);
}

int zvtGetLensAthermalizationEnabled(uint64_t handle, bool *enabled) { return absent(__func__, handle, enabled); }

int zvtSetLensAthermalizationEnabled(uint64_t handle, bool enabled) { return absent(__func__, handle, enabled); }

int zvtListLensStates(uint64_t handle, hlx::TArray<zvtSDirEntry> *entries) { return absent(__func__, handle, entries); }

int zvtLoadLensState(uint64_t handle, const char *name) { return absent(__func__, handle, name); }

int zvtSaveLensStateAs(uint64_t handle, const char *name) { return absent(__func__, handle, name); }

int zvtRenameLensState(uint64_t handle, const char *oldName, const char *newName)
{
    return absent(__func__, handle, oldName, newName);
}

int zvtDeleteLensState(uint64_t handle, const char *name) { return absent(__func__, handle, name); }
