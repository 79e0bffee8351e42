// The SDK's functions of saturation thresholds, lock-in and digital outputs, which emulated cameras do not have.
#include "zvt/zvtsdk.h"

#include "platform/emulator/dispatch.h"

using namespace emulator;

// Saturation.

int zvtGetSaturationCountThreshold(uint64_t handle, uint8_t preset, uint16_t *out)
{
    return absent(__func__, handle, preset, out);
}

int zvtSetSaturationCountThreshold(uint64_t handle, uint8_t preset, uint16_t value)
{
    return absent(__func__, handle, preset, value);
}

int zvtGetSaturationPixelThreshold(uint64_t handle, uint8_t preset, uint32_t *out)
{
    return absent(__func__, handle, preset, out);
}

int zvtSetSaturationPixelThreshold(uint64_t handle, uint8_t preset, uint32_t value)
{
    return absent(__func__, handle, preset, value);
}

int zvtGetSaturatedPixels(uint64_t handle, uint8_t preset, uint32_t *out)
{
    return absent(__func__, handle, preset, out);
}

// Lock-in.

int zvtGetLockinCoupling(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtSetLockinCoupling(uint64_t handle, uint8_t value) { return absent(__func__, handle, value); }

int zvtGetLockinAlphaFilter(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtSetLockinAlphaFilter(uint64_t handle, uint8_t value) { return absent(__func__, handle, value); }

int zvtGetLockinEstInputFreq(uint64_t handle, float *out) { return absent(__func__, handle, out); }

int zvtSetLockinEstInputFreq(uint64_t handle, float value) { return absent(__func__, handle, value); }

int zvtGetLockinSampleFreq(uint64_t handle, float *out) { return absent(__func__, handle, out); }

// Digital outputs.

int zvtGetDeviceTLTypeAvailable(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtGetDeviceTLType(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtGetGigEHeaderModeAvailable(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtGetGigEHeaderMode(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtSetGigEHeaderMode(uint64_t handle, uint8_t value) { return absent(__func__, handle, value); }

int zvtGetCameraLinkHeaderModeAvailable(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtGetCameraLinkHeaderMode(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtSetCameraLinkHeaderMode(uint64_t handle, uint8_t value) { return absent(__func__, handle, value); }

int zvtGetCameraLinkType(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtGetCameraLinkTypeWritable(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtGetCoaXPressHeaderModeAvailable(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtGetCoaXPressHeaderMode(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtSetCoaXPressHeaderMode(uint64_t handle, uint8_t value) { return absent(__func__, handle, value); }

int zvtGetCoaXPressLinkCount(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtGetCoaXPressLinkCountWritable(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }
