// The SDK's functions of saturation thresholds, lock-in and digital interfaces.
#include "zvt/zvtsdk.h"

#include "platform/emulator/devices/Interfaces.h"
#include "platform/emulator/devices/Lockin.h"
#include "platform/emulator/devices/Saturation.h"
#include "platform/emulator/memberCalls.h"

using namespace emulator;

// Saturation.

int zvtGetSaturationCountThreshold(uint64_t handle, uint8_t preset, uint16_t *out)
{
    return call<&Saturation::countThreshold>(__func__, handle, preset, out);
}

int zvtSetSaturationCountThreshold(uint64_t handle, uint8_t preset, uint16_t value)
{
    return call<&Saturation::setCountThreshold>(__func__, handle, preset, value);
}

int zvtGetSaturationPixelThreshold(uint64_t handle, uint8_t preset, uint32_t *out)
{
    return call<&Saturation::pixelThreshold>(__func__, handle, preset, out);
}

int zvtSetSaturationPixelThreshold(uint64_t handle, uint8_t preset, uint32_t value)
{
    return call<&Saturation::setPixelThreshold>(__func__, handle, preset, value);
}

int zvtGetSaturatedPixels(uint64_t handle, uint8_t preset, uint32_t *out)
{
    return call<&Saturation::pixels>(__func__, handle, preset, out);
}

// Lock-in.

int zvtGetLockinCoupling(uint64_t handle, uint8_t *out) { return get<&Lockin::coupling>(__func__, handle, out); }

int zvtSetLockinCoupling(uint64_t handle, uint8_t value) { return call<&Lockin::setCoupling>(__func__, handle, value); }

int zvtGetLockinAlphaFilter(uint64_t handle, uint8_t *out) { return get<&Lockin::filter>(__func__, handle, out); }

int zvtSetLockinAlphaFilter(uint64_t handle, uint8_t value)
{
    return call<&Lockin::setFilter>(__func__, handle, value);
}

int zvtGetLockinEstInputFreq(uint64_t handle, float *out)
{
    return get<&Lockin::estimatedFrequency>(__func__, handle, out);
}

int zvtSetLockinEstInputFreq(uint64_t handle, float value)
{
    return call<&Lockin::setEstimatedFrequency>(__func__, handle, value);
}

int zvtGetLockinSampleFreq(uint64_t handle, float *out)
{
    return call<&Lockin::sampleFrequency>(__func__, handle, out);
}

// Digital interfaces.

int zvtGetDeviceTLTypeAvailable(uint64_t handle, uint8_t *out)
{
    return call<&Interfaces::transportAvailable>(__func__, handle, out);
}

int zvtGetDeviceTLType(uint64_t handle, uint8_t *out)
{
    return call<&Interfaces::transportNumber>(__func__, handle, out);
}

int zvtGetGigEHeaderModeAvailable(uint64_t handle, uint8_t *out)
{
    return get<&Interfaces::gigEHeaderModeAvailable>(__func__, handle, out);
}

int zvtGetGigEHeaderMode(uint64_t handle, uint8_t *out)
{
    return call<&Interfaces::gigEHeaderMode>(__func__, handle, out);
}

int zvtSetGigEHeaderMode(uint64_t handle, uint8_t value)
{
    return call<&Interfaces::setGigEHeaderMode>(__func__, handle, value);
}

int zvtGetCameraLinkHeaderModeAvailable(uint64_t handle, uint8_t *out)
{
    return get<&Interfaces::cameraLinkHeaderModeAvailable>(__func__, handle, out);
}

int zvtGetCameraLinkHeaderMode(uint64_t handle, uint8_t *out)
{
    return call<&Interfaces::cameraLinkHeaderMode>(__func__, handle, out);
}

int zvtSetCameraLinkHeaderMode(uint64_t handle, uint8_t value)
{
    return call<&Interfaces::setCameraLinkHeaderMode>(__func__, handle, value);
}

int zvtGetCameraLinkType(uint64_t handle, uint8_t *out)
{
    return get<&Interfaces::cameraLinkType>(__func__, handle, out);
}

int zvtGetCameraLinkTypeWritable(uint64_t handle, uint8_t *out)
{
    return get<&Interfaces::cameraLinkTypeWritable>(__func__, handle, out);
}

int zvtGetCoaXPressHeaderModeAvailable(uint64_t handle, uint8_t *out)
{
    return get<&Interfaces::coaXPressHeaderModeAvailable>(__func__, handle, out);
}

int zvtGetCoaXPressHeaderMode(uint64_t handle, uint8_t *out)
{
    return call<&Interfaces::coaXPressHeaderMode>(__func__, handle, out);
}

int zvtSetCoaXPressHeaderMode(uint64_t handle, uint8_t value)
{
    return call<&Interfaces::setCoaXPressHeaderMode>(__func__, handle, value);
}

int zvtGetCoaXPressLinkCount(uint64_t handle, uint8_t *out)
{
    return get<&Interfaces::coaXPressLinks>(__func__, handle, out);
}

int zvtGetCoaXPressLinkCountWritable(uint64_t handle, uint8_t *out)
{
    return get<&Interfaces::coaXPressLinksWritable>(__func__, handle, out);
}
