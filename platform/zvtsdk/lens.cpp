// The SDK's functions of the lens: focus, zoom, field of view, cover, athermalization and lens states.
#include "zvt/zvtsdk.h"

#include "platform/emulator/devices/Athermalization.h"
#include "platform/emulator/devices/AutoFocus.h"
#include "platform/emulator/devices/FieldOfView.h"
#include "platform/emulator/devices/Focus.h"
#include "platform/emulator/devices/FocusToDistance.h"
#include "platform/emulator/devices/LensCover.h"
#include "platform/emulator/devices/LensStates.h"
#include "platform/emulator/devices/Zoom.h"
#include "platform/emulator/memberCalls.h"
#include "platform/zvtsdk/dirEntry.h"

using namespace emulator;

// Focus.

int zvtGetFocusCurrentPos(uint64_t handle, uint32_t *position)
{
    return get<&Focus::position>(__func__, handle, position);
}

int zvtGetFocusRange(uint64_t handle, uint32_t *minimum, uint32_t *maximum)
{
    return get<&Focus::minimum, &Focus::maximum>(__func__, handle, minimum, maximum);
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

int zvtSetFocusPos(uint64_t handle, uint32_t position) { return call<&Focus::goTo>(__func__, handle, position); }

int zvtFocusMoveTo(uint64_t handle, uint32_t position) { return call<&Focus::moveTo>(__func__, handle, position); }

int zvtFocusMove(uint64_t handle, int32_t speed) { return call<&Focus::move>(__func__, handle, speed); }

int zvtFocusMovePercent(uint64_t handle, float percent) { return call<&Focus::movePercent>(__func__, handle, percent); }

int zvtFocusNear(uint64_t handle)
{
    return onDevice<Focus>(__func__, handle, [&](Focus &d) { return d.goToEnd(Focus::Near); });
}

int zvtFocusFar(uint64_t handle)
{
    return onDevice<Focus>(__func__, handle, [&](Focus &d) { return d.goToEnd(Focus::Far); });
}

int zvtGetFocusManualMode(uint64_t handle, bool *manual) { return get<&Focus::manual>(__func__, handle, manual); }

int zvtMfgGetFocusSlowControl(uint64_t handle, uint8_t fov, uint8_t *control)
{
    return call<&Focus::slowControl>(__func__, handle, fov, control);
}

int zvtMfgGetFocusPositionIncrement(uint64_t handle, uint8_t fov, uint32_t *increment)
{
    return call<&Focus::increment>(__func__, handle, fov, increment);
}

int zvtGetFocusToDistanceAvailable(uint64_t handle, bool *available)
{
    return get<&FocusToDistance::available>(__func__, handle, available);
}

int zvtGetFocusToDistanceMin(uint64_t handle, float *metres)
{
    return call<&FocusToDistance::minimum>(__func__, handle, metres);
}

int zvtGetFocusToDistanceMax(uint64_t handle, float *metres)
{
    return call<&FocusToDistance::maximum>(__func__, handle, metres);
}

int zvtFocusToDistance(uint64_t handle, float metres)
{
    return call<&FocusToDistance::focusTo>(__func__, handle, metres);
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
    return get<&AutoFocus::regionSize>(__func__, handle, size);
}

int zvtSetAutoFocusROISize(uint64_t handle, uint16_t size)
{
    return call<&AutoFocus::setRegionSize>(__func__, handle, size);
}

int zvtGetAutoFocusROIPosition(uint64_t handle, uint8_t *position)
{
    return get<&AutoFocus::regionPosition>(__func__, handle, position);
}

int zvtSetAutoFocusROIPosition(uint64_t handle, uint8_t position)
{
    return call<&AutoFocus::setRegionPosition>(__func__, handle, position);
}

int zvtGetAutoFocusROIShowWhenFocusing(uint64_t handle, bool *show)
{
    return get<&AutoFocus::showWhenFocusing>(__func__, handle, show);
}

int zvtSetAutoFocusROIShowWhenFocusing(uint64_t handle, bool show)
{
    return call<&AutoFocus::setShowWhenFocusing>(__func__, handle, show);
}

// Zoom and field of view.

int zvtGetFOV(uint64_t handle, uint8_t *fov) { return get<&FieldOfView::selected>(__func__, handle, fov); }

int zvtSetFOV(uint64_t handle, uint8_t fov) { return call<&FieldOfView::select>(__func__, handle, fov); }

int zvtGetFOVPos(uint64_t handle, uint32_t *position)
{
    return get<&Zoom::commandedPosition>(__func__, handle, position);
}

int zvtSetFOVPos(uint64_t handle, uint32_t position) { return call<&Zoom::goTo>(__func__, handle, position); }

int zvtGetFOVCurrentPos(uint64_t handle, uint32_t *position)
{
    return get<&Zoom::position>(__func__, handle, position);
}

int zvtGetFOVRange(uint64_t handle, uint32_t *minimum, uint32_t *maximum)
{
    return get<&Zoom::minimum, &Zoom::maximum>(__func__, handle, minimum, maximum);
}

int zvtFOVMoveTo(uint64_t handle, uint32_t position) { return call<&Zoom::moveTo>(__func__, handle, position); }

int zvtFOVMove(uint64_t handle, int32_t speed) { return call<&Zoom::move>(__func__, handle, speed); }

int zvtFOVMovePercent(uint64_t handle, float percent) { return call<&Zoom::movePercent>(__func__, handle, percent); }

int zvtFOVMin(uint64_t handle)
{
    return onDevice<Zoom>(__func__, handle, [&](Zoom &d) { return d.goTo(d.minimum()); });
}

int zvtFOVMax(uint64_t handle)
{
    return onDevice<Zoom>(__func__, handle, [&](Zoom &d) { return d.goTo(d.maximum()); });
}

// Lens cover, athermalization and lens states.

int zvtGetLensCoverState(uint64_t handle, uint8_t *state) { return get<&LensCover::state>(__func__, handle, state); }

int zvtSetLensCoverState(uint64_t handle, uint8_t state) { return call<&LensCover::moveTo>(__func__, handle, state); }

int zvtGetLensAthermalizationEnabledAvailable(uint64_t handle, bool *available)
{
    return get<&Athermalization::available>(__func__, handle, available);
}

int zvtGetLensAthermalizationEnabled(uint64_t handle, bool *enabled)
{
    return call<&Athermalization::enabled>(__func__, handle, enabled);
}

int zvtSetLensAthermalizationEnabled(uint64_t handle, bool enabled)
{
    return call<&Athermalization::setEnabled>(__func__, handle, enabled);
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

int zvtLoadLensState(uint64_t handle, const char *name) { return call<&LensStates::load>(__func__, handle, name); }

int zvtSaveLensStateAs(uint64_t handle, const char *name) { return call<&LensStates::saveAs>(__func__, handle, name); }

int zvtRenameLensState(uint64_t handle, const char *oldName, const char *newName)
{
    return call<&LensStates::rename>(__func__, handle, oldName, newName);
}

int zvtDeleteLensState(uint64_t handle, const char *name) { return call<&LensStates::remove>(__func__, handle, name); }
