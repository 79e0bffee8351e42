// The SDK's functions of the video overlay. Emulated cameras have only the region of the automatic focus.
#include "zvt/zvtsdk.h"

#include "platform/emulator/devices/AutoFocus.h"
#include "platform/emulator/memberCalls.h"

using namespace emulator;

int zvtGetVideoOverlayEnabled(uint64_t handle, bool *out) { return absent(__func__, handle, out); }

int zvtSetVideoOverlayEnabled(uint64_t handle, bool value) { return absent(__func__, handle, value); }

int zvtGetVideoOverlayPalette(uint64_t handle, uint8_t *rgb768) { return absent(__func__, handle, rgb768); }

int zvtGetVideoOverlayTextColor(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtSetVideoOverlayTextColor(uint64_t handle, uint8_t value) { return absent(__func__, handle, value); }

int zvtGetVideoOverlayTextBackground(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtSetVideoOverlayTextBackground(uint64_t handle, uint8_t value) { return absent(__func__, handle, value); }

int zvtGetVideoOverlayTextColorsAvailable(uint64_t handle, bool *out) { return absent(__func__, handle, out); }

int zvtGetVideoOverlayAGCROIColor(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtSetVideoOverlayAGCROIColor(uint64_t handle, uint8_t value) { return absent(__func__, handle, value); }

int zvtGetVideoOverlayFocusROIColor(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtSetVideoOverlayFocusROIColor(uint64_t handle, uint8_t value) { return absent(__func__, handle, value); }

int zvtGetVideoOverlayShowAGCROI(uint64_t handle, bool *out) { return absent(__func__, handle, out); }

int zvtSetVideoOverlayShowAGCROI(uint64_t handle, bool value) { return absent(__func__, handle, value); }

int zvtGetVideoOverlayShowFocusROI(uint64_t handle, bool *show)
{
    return get<&AutoFocus::showAlways>(__func__, handle, show);
}

int zvtSetVideoOverlayShowFocusROI(uint64_t handle, bool show)
{
    return call<&AutoFocus::setShowAlways>(__func__, handle, show);
}

int zvtGetVideoOverlayShowMessage(uint64_t handle, bool *out) { return absent(__func__, handle, out); }

int zvtSetVideoOverlayShowMessage(uint64_t handle, bool value) { return absent(__func__, handle, value); }

int zvtVideoOverlayClearMessage(uint64_t handle) { return absent(__func__, handle); }

int zvtGetVideoOverlayShowLogo(uint64_t handle, bool *out) { return absent(__func__, handle, out); }

int zvtSetVideoOverlayShowLogo(uint64_t handle, bool value) { return absent(__func__, handle, value); }

int zvtGetVideoOverlayShowFocus(uint64_t handle, bool *out) { return absent(__func__, handle, out); }

int zvtSetVideoOverlayShowFocus(uint64_t handle, bool value) { return absent(__func__, handle, value); }

int zvtGetVideoOverlayShowDate(uint64_t handle, bool *out) { return absent(__func__, handle, out); }

int zvtSetVideoOverlayShowDate(uint64_t handle, bool value) { return absent(__func__, handle, value); }

int zvtGetVideoOverlayShowTime(uint64_t handle, bool *out) { return absent(__func__, handle, out); }

int zvtSetVideoOverlayShowTime(uint64_t handle, bool value) { return absent(__func__, handle, value); }

int zvtGetVideoOverlayShowIRIG(uint64_t handle, bool *out) { return absent(__func__, handle, out); }

int zvtSetVideoOverlayShowIRIG(uint64_t handle, bool value) { return absent(__func__, handle, value); }

int zvtGetVideoOverlayShowCameraInfo(uint64_t handle, bool *out) { return absent(__func__, handle, out); }

int zvtSetVideoOverlayShowCameraInfo(uint64_t handle, bool value) { return absent(__func__, handle, value); }

int zvtGetVideoOverlayShowHourMeter(uint64_t handle, bool *out) { return absent(__func__, handle, out); }

int zvtSetVideoOverlayShowHourMeter(uint64_t handle, bool value) { return absent(__func__, handle, value); }

int zvtGetVideoOverlayShowFrontPanelTemp(uint64_t handle, bool *out) { return absent(__func__, handle, out); }

int zvtSetVideoOverlayShowFrontPanelTemp(uint64_t handle, bool value) { return absent(__func__, handle, value); }

int zvtGetVideoOverlayShowAirGapTemp(uint64_t handle, bool *out) { return absent(__func__, handle, out); }

int zvtSetVideoOverlayShowAirGapTemp(uint64_t handle, bool value) { return absent(__func__, handle, value); }

int zvtGetVideoOverlayShowInternalTemp(uint64_t handle, bool *out) { return absent(__func__, handle, out); }

int zvtSetVideoOverlayShowInternalTemp(uint64_t handle, bool value) { return absent(__func__, handle, value); }

int zvtGetVideoOverlayShowChassisTemp(uint64_t handle, bool *out) { return absent(__func__, handle, out); }

int zvtSetVideoOverlayShowChassisTemp(uint64_t handle, bool value) { return absent(__func__, handle, value); }

int zvtGetVideoOverlayShowLensTemp(uint64_t handle, bool *out) { return absent(__func__, handle, out); }

int zvtSetVideoOverlayShowLensTemp(uint64_t handle, bool value) { return absent(__func__, handle, value); }

int zvtGetVideoOverlayShowFlag(uint64_t handle, bool *out) { return absent(__func__, handle, out); }

int zvtSetVideoOverlayShowFlag(uint64_t handle, bool value) { return absent(__func__, handle, value); }

int zvtGetVideoOverlayShowPalette(uint64_t handle, bool *out) { return absent(__func__, handle, out); }

int zvtSetVideoOverlayShowPalette(uint64_t handle, bool value) { return absent(__func__, handle, value); }

int zvtGetVideoOverlayShowFOV(uint64_t handle, bool *out) { return absent(__func__, handle, out); }

int zvtSetVideoOverlayShowFOV(uint64_t handle, bool value) { return absent(__func__, handle, value); }

int zvtGetVideoOverlayShowZoom(uint64_t handle, bool *out) { return absent(__func__, handle, out); }

int zvtSetVideoOverlayShowZoom(uint64_t handle, bool value) { return absent(__func__, handle, value); }

int zvtGetVideoOverlayShowPreset(uint64_t handle, bool *out) { return absent(__func__, handle, out); }

int zvtSetVideoOverlayShowPreset(uint64_t handle, bool value) { return absent(__func__, handle, value); }

int zvtGetVideoOverlayShowFrameRate(uint64_t handle, bool *out) { return absent(__func__, handle, out); }

int zvtSetVideoOverlayShowFrameRate(uint64_t handle, bool value) { return absent(__func__, handle, value); }

int zvtGetVideoOverlayShowStateName(uint64_t handle, bool *out) { return absent(__func__, handle, out); }

int zvtSetVideoOverlayShowStateName(uint64_t handle, bool value) { return absent(__func__, handle, value); }

int zvtGetVideoOverlayUserDefinedFieldAvailable(uint64_t handle, bool *out) { return absent(__func__, handle, out); }

int zvtGetVideoOverlayShowUserDefinedField(uint64_t handle, bool *out) { return absent(__func__, handle, out); }

int zvtSetVideoOverlayShowUserDefinedField(uint64_t handle, bool value) { return absent(__func__, handle, value); }

int zvtGetVideoOverlayUserDefinedFieldText(uint64_t handle, char *buf, uint32_t size)
{
    return absent(__func__, handle, Text(buf, size));
}

int zvtSetVideoOverlayUserDefinedFieldText(uint64_t handle, const char *text) { return absent(__func__, handle, text); }

int zvtVideoOverlayUseDefaults(uint64_t handle) { return absent(__func__, handle); }
