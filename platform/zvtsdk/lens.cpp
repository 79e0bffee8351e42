#include "zvt/zvtsdk.h"

#include "platform/emulator/devices/Athermalization.h"
#include "platform/emulator/devices/AutoFocus.h"
#include "platform/emulator/devices/FieldOfView.h"
#include "platform/emulator/devices/Focus.h"
#include "platform/emulator/devices/FocusToDistance.h"
#include "platform/emulator/devices/LensCover.h"
#include "platform/emulator/devices/LensStates.h"
#include "platform/emulator/devices/Zoom.h"
#include "platform/emulator/dispatch.h"
#include "platform/zvtsdk/dirEntry.h"

// The SDK's functions of the lens: focus, zoom, field of view, cover, athermalization and lens states.

using namespace emulator;

// Focus.

int zvtGetFocusCurrentPos(uint64_t handle, uint32_t *position)
{
    return onDevice<Focus>(
        __func__, handle, [&](Focus &d) { *position = d.position(); }, position);
}

int zvtGetFocusRange(uint64_t handle, uint32_t *minimum, uint32_t *maximum)
{
    return onDevice<Focus>(
        __func__, handle,
        [&](Focus &d) {
            *minimum = d.minimum();
            *maximum = d.maximum();
        },
        minimum, maximum);
}

int zvtGetFocusNearPos(uint64_t handle, uint8_t fov, uint32_t *position)
{
    return onDevice<Focus>(
        __func__, handle, [&](Focus &d) { return d.limit(Focus::Near, fov, *position); }, fov, position);
}

int zvtSetFocusNearPos(uint64_t handle, uint8_t fov, uint32_t position)
{
    return onDevice<Focus>(
        __func__, handle, [&](Focus &d) { return d.setLimit(Focus::Near, fov, position); }, fov, position);
}

int zvtGetFocusFarPos(uint64_t handle, uint8_t fov, uint32_t *position)
{
    return onDevice<Focus>(
        __func__, handle, [&](Focus &d) { return d.limit(Focus::Far, fov, *position); }, fov, position);
}

int zvtSetFocusFarPos(uint64_t handle, uint8_t fov, uint32_t position)
{
    return onDevice<Focus>(
        __func__, handle, [&](Focus &d) { return d.setLimit(Focus::Far, fov, position); }, fov, position);
}

int zvtSetFocusPos(uint64_t handle, uint32_t position)
{
    return onDevice<Focus>(
        __func__, handle, [&](Focus &d) { return d.goTo(position); }, position);
}

int zvtFocusMoveTo(uint64_t handle, uint32_t position)
{
    return onDevice<Focus>(
        __func__, handle, [&](Focus &d) { return d.moveTo(position); }, position);
}

int zvtFocusMove(uint64_t handle, int32_t speed)
{
    return onDevice<Focus>(
        __func__, handle, [&](Focus &d) { return d.move(speed); }, speed);
}

int zvtFocusMovePercent(uint64_t handle, float percent)
{
    return onDevice<Focus>(
        __func__, handle, [&](Focus &d) { return d.movePercent(percent); }, percent);
}

int zvtFocusNear(uint64_t handle)
{
    return onDevice<Focus>(__func__, handle, [&](Focus &d) { return d.goToEnd(Focus::Near); });
}

int zvtFocusFar(uint64_t handle)
{
    return onDevice<Focus>(__func__, handle, [&](Focus &d) { return d.goToEnd(Focus::Far); });
}

int zvtGetFocusManualMode(uint64_t handle, bool *manual)
{
    return onDevice<Focus>(
        __func__, handle, [&](Focus &d) { *manual = d.manual(); }, manual);
}

int zvtMfgGetFocusSlowControl(uint64_t handle, uint8_t fov, uint8_t *control)
{
    return onDevice<Focus>(
        __func__, handle, [&](Focus &d) { return d.slowControl(fov, *control); }, fov, control);
}

int zvtMfgGetFocusPositionIncrement(uint64_t handle, uint8_t fov, uint32_t *increment)
{
    return onDevice<Focus>(
        __func__, handle, [&](Focus &d) { return d.increment(fov, *increment); }, fov, increment);
}

int zvtGetFocusToDistanceAvailable(uint64_t handle, bool *available)
{
    return onDevice<FocusToDistance>(
        __func__, handle, [&](FocusToDistance &d) { *available = d.available(); }, available);
}

int zvtGetFocusToDistanceMin(uint64_t handle, float *metres)
{
    return onDevice<FocusToDistance>(
        __func__, handle, [&](FocusToDistance &d) { return d.minimum(*metres); }, metres);
}

int zvtGetFocusToDistanceMax(uint64_t handle, float *metres)
{
    return onDevice<FocusToDistance>(
        __func__, handle, [&](FocusToDistance &d) { return d.maximum(*metres); }, metres);
}

int zvtFocusToDistance(uint64_t handle, float metres)
{
    return onDevice<FocusToDistance>(
        __func__, handle, [&](FocusToDistance &d) { return d.focusTo(metres); }, metres);
}

// Automatic focus.

int zvtAutoFocusFast(uint64_t handle, int32_t mode)
{
    return onDevice<AutoFocus>(
        __func__, handle, [&](AutoFocus &d) { return mode == 1 ? d.focusFast() : Refused; }, mode);
}

int zvtAutoFocusFull(uint64_t handle, int flag)
{
    return onDevice<AutoFocus>(
        __func__, handle, [&](AutoFocus &d) { return flag == 0 ? d.focusFull() : Refused; }, flag);
}

int zvtGetAutoFocusROISize(uint64_t handle, uint16_t *size)
{
    return onDevice<AutoFocus>(
        __func__, handle, [&](AutoFocus &d) { *size = d.regionSize(); }, size);
}

int zvtSetAutoFocusROISize(uint64_t handle, uint16_t size)
{
    return onDevice<AutoFocus>(
        __func__, handle, [&](AutoFocus &d) { return d.setRegionSize(size); }, size);
}

int zvtGetAutoFocusROIPosition(uint64_t handle, uint8_t *position)
{
    return onDevice<AutoFocus>(
        __func__, handle, [&](AutoFocus &d) { *position = d.regionPosition(); }, position);
}

int zvtSetAutoFocusROIPosition(uint64_t handle, uint8_t position)
{
    return onDevice<AutoFocus>(
        __func__, handle, [&](AutoFocus &d) { return d.setRegionPosition(position); }, position);
}

int zvtGetAutoFocusROIShowWhenFocusing(uint64_t handle, bool *show)
{
    return onDevice<AutoFocus>(
        __func__, handle, [&](AutoFocus &d) { *show = d.showWhenFocusing(); }, show);
}

int zvtSetAutoFocusROIShowWhenFocusing(uint64_t handle, bool show)
{
    return onDevice<AutoFocus>(
        __func__, handle, [&](AutoFocus &d) { d.setShowWhenFocusing(show); }, show);
}

// Zoom and field of view.

int zvtGetFOV(uint64_t handle, uint8_t *fov)
{
    return onDevice<FieldOfView>(
        __func__, handle, [&](FieldOfView &d) { *fov = d.selected(); }, fov);
}

int zvtSetFOV(uint64_t handle, uint8_t fov)
{
    return onDevice<FieldOfView>(
        __func__, handle, [&](FieldOfView &d) { return d.select(fov); }, fov);
}

int zvtGetFOVPos(uint64_t handle, uint32_t *position)
{
    return onDevice<Zoom>(
        __func__, handle, [&](Zoom &d) { *position = d.commandedPosition(); }, position);
}

int zvtSetFOVPos(uint64_t handle, uint32_t position)
{
    return onDevice<Zoom>(
        __func__, handle, [&](Zoom &d) { return d.goTo(position); }, position);
}

int zvtGetFOVCurrentPos(uint64_t handle, uint32_t *position)
{
    return onDevice<Zoom>(
        __func__, handle, [&](Zoom &d) { *position = d.position(); }, position);
}

int zvtGetFOVRange(uint64_t handle, uint32_t *minimum, uint32_t *maximum)
{
    return onDevice<Zoom>(
        __func__, handle,
        [&](Zoom &d) {
            *minimum = d.minimum();
            *maximum = d.maximum();
        },
        minimum, maximum);
}

int zvtFOVMoveTo(uint64_t handle, uint32_t position)
{
    return onDevice<Zoom>(
        __func__, handle, [&](Zoom &d) { return d.moveTo(position); }, position);
}

int zvtFOVMove(uint64_t handle, int32_t speed)
{
    return onDevice<Zoom>(
        __func__, handle, [&](Zoom &d) { return d.move(speed); }, speed);
}

int zvtFOVMovePercent(uint64_t handle, float percent)
{
    return onDevice<Zoom>(
        __func__, handle, [&](Zoom &d) { return d.movePercent(percent); }, percent);
}

int zvtFOVMin(uint64_t handle)
{
    return onDevice<Zoom>(__func__, handle, [&](Zoom &d) { return d.goTo(d.minimum()); });
}

int zvtFOVMax(uint64_t handle)
{
    return onDevice<Zoom>(__func__, handle, [&](Zoom &d) { return d.goTo(d.maximum()); });
}

// Lens cover, athermalization and lens states.

int zvtGetLensCoverState(uint64_t handle, uint8_t *state)
{
    return onDevice<LensCover>(
        __func__, handle, [&](LensCover &d) { *state = d.state(); }, state);
}

int zvtSetLensCoverState(uint64_t handle, uint8_t state)
{
    return onDevice<LensCover>(
        __func__, handle, [&](LensCover &d) { return d.moveTo(state); }, state);
}

int zvtGetLensAthermalizationEnabledAvailable(uint64_t handle, bool *available)
{
    return onDevice<Athermalization>(
        __func__, handle, [&](Athermalization &d) { *available = d.available(); }, available);
}

int zvtGetLensAthermalizationEnabled(uint64_t handle, bool *enabled)
{
    return onDevice<Athermalization>(
        __func__, handle, [&](Athermalization &d) { return d.enabled(*enabled); }, enabled);
}

int zvtSetLensAthermalizationEnabled(uint64_t handle, bool enabled)
{
    return onDevice<Athermalization>(
        __func__, handle, [&](Athermalization &d) { return d.setEnabled(enabled); }, enabled);
}

int zvtListLensStates(uint64_t handle, hlx::TArray<zvtSDirEntry> *entries)
{
    const auto body = [&](LensStates &d) {
        entries->clear();
        for (const auto &state : d.list())
            entries->add(zvt::dirEntry(state.name, state.size, state.written));
    };
    return onDevice<LensStates>(__func__, handle, body, entries);
}

int zvtLoadLensState(uint64_t handle, const char *name)
{
    return onDevice<LensStates>(
        __func__, handle, [&](LensStates &d) { return d.load(name); }, name);
}

int zvtSaveLensStateAs(uint64_t handle, const char *name)
{
    return onDevice<LensStates>(
        __func__, handle, [&](LensStates &d) { return d.saveAs(name); }, name);
}

int zvtRenameLensState(uint64_t handle, const char *oldName, const char *newName)
{
    return onDevice<LensStates>(
        __func__, handle, [&](LensStates &d) { return d.rename(oldName, newName); }, oldName, newName);
}

int zvtDeleteLensState(uint64_t handle, const char *name)
{
    return onDevice<LensStates>(
        __func__, handle, [&](LensStates &d) { return d.remove(name); }, name);
}
