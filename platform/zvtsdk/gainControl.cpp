// The SDK's functions of the automatic gain control of the video.
#include "zvt/zvtsdk.h"

#include "platform/emulator/devices/VideoGain.h"
#include "platform/emulator/devices/VideoOverlay.h"
#include "platform/emulator/memberCalls.h"

using namespace emulator;

int zvtGetVideoAGCMethod(uint64_t handle, uint8_t *out) { return get<&VideoGain::method>(__func__, handle, out); }

int zvtSetVideoAGCMethod(uint64_t handle, uint8_t value)
{
    return call<&VideoGain::setMethod>(__func__, handle, value);
}

int zvtGetVideoAGCPlateauP(uint64_t handle, uint32_t *out) { return get<&VideoGain::plateau>(__func__, handle, out); }

int zvtSetVideoAGCPlateauP(uint64_t handle, uint32_t value)
{
    return call<&VideoGain::setPlateau>(__func__, handle, value);
}

int zvtGetVideoAGCDDESharpness(uint64_t handle, uint8_t *out)
{
    return get<&VideoGain::sharpness>(__func__, handle, out);
}

int zvtSetVideoAGCDDESharpness(uint64_t handle, uint8_t value)
{
    return call<&VideoGain::setSharpness>(__func__, handle, value);
}

int zvtGetVideoAGCDDEThreshold(uint64_t handle, uint32_t *out)
{
    return get<&VideoGain::threshold>(__func__, handle, out);
}

int zvtSetVideoAGCDDEThreshold(uint64_t handle, uint32_t value)
{
    return call<&VideoGain::setThreshold>(__func__, handle, value);
}

int zvtGetVideoAGCManualLow(uint64_t handle, uint16_t *out)
{
    return get<&VideoGain::manualLow>(__func__, handle, out);
}

int zvtSetVideoAGCManualLow(uint64_t handle, uint16_t value)
{
    return call<&VideoGain::setManualLow>(__func__, handle, value);
}

int zvtGetVideoAGCManualHigh(uint64_t handle, uint16_t *out)
{
    return get<&VideoGain::manualHigh>(__func__, handle, out);
}

int zvtSetVideoAGCManualHigh(uint64_t handle, uint16_t value)
{
    return call<&VideoGain::setManualHigh>(__func__, handle, value);
}

int zvtGetVideoAGCFilterRateEnabled(uint64_t handle, bool *out)
{
    return get<&VideoGain::filterRateEnabled>(__func__, handle, out);
}

int zvtSetVideoAGCFilterRateEnabled(uint64_t handle, bool value)
{
    return call<&VideoGain::setFilterRateEnabled>(__func__, handle, value);
}

int zvtGetVideoAGCFilterRate(uint64_t handle, double *out)
{
    return get<&VideoGain::filterRate>(__func__, handle, out);
}

int zvtSetVideoAGCFilterRate(uint64_t handle, double value)
{
    return call<&VideoGain::setFilterRate>(__func__, handle, value);
}

int zvtGetVideoAGCDampeningEnabled(uint64_t handle, bool *out)
{
    return get<&VideoGain::dampeningEnabled>(__func__, handle, out);
}

int zvtSetVideoAGCDampeningEnabled(uint64_t handle, bool value)
{
    return call<&VideoGain::setDampeningEnabled>(__func__, handle, value);
}

int zvtGetVideoAGCDampening(uint64_t handle, float *out) { return get<&VideoGain::dampening>(__func__, handle, out); }

int zvtSetVideoAGCDampening(uint64_t handle, float value)
{
    return call<&VideoGain::setDampening>(__func__, handle, value);
}

int zvtGetVideoAGCROIEnabled(uint64_t handle, bool *out)
{
    return get<&VideoGain::regionEnabled>(__func__, handle, out);
}

int zvtSetVideoAGCROIEnabled(uint64_t handle, bool value)
{
    return call<&VideoGain::setRegionEnabled>(__func__, handle, value);
}

int zvtGetVideoAGCROI(uint64_t handle, uint16_t *x, uint16_t *y, uint16_t *width, uint16_t *height)
{
    return get<&VideoGain::regionX, &VideoGain::regionY, &VideoGain::regionWidth, &VideoGain::regionHeight>(
        __func__, handle, x, y, width, height);
}

int zvtSetVideoAGCROI(uint64_t handle, uint16_t x, uint16_t y, uint16_t width, uint16_t height)
{
    return call<&VideoGain::setRegion>(__func__, handle, x, y, width, height);
}

int zvtGetVideoAGCROIShowWhenEnabled(uint64_t handle, bool *out)
{
    return get<&VideoOverlay::showAgcRegion>(__func__, handle, out);
}

int zvtGetBlackHotAvailable(uint64_t handle, uint8_t *out)
{
    return get<&VideoGain::blackHotAvailable>(__func__, handle, out);
}

int zvtGetBlackHotEnabled(uint64_t handle, uint8_t *out)
{
    const auto body = [&](const VideoGain &gain) {
        bool enabled = false;
        const Status status = gain.blackHotEnabled(enabled);
        if (status == Ok)
            *out = enabled;
        return status;
    };
    return onDevice<VideoGain>(__func__, handle, body, out);
}

int zvtSetBlackHotEnabled(uint64_t handle, uint8_t value)
{
    return call<&VideoGain::setBlackHotEnabled>(__func__, handle, value);
}
