// The SDK's functions of the video output. Emulated cameras have the place of the image on the raster, but neither a
// choice of formats nor the gain control.
#include "zvt/zvtsdk.h"

#include "platform/emulator/devices/VideoOutput.h"
#include "platform/emulator/memberCalls.h"

using namespace emulator;

// Video output.

int zvtGetVideoFormats(uint64_t handle, hlx::TArray<unsigned char> *out) { return absent(__func__, handle, out); }

int zvtGetVideoFormat(uint64_t handle, uint8_t *out) { return get<&VideoOutput::format>(__func__, handle, out); }

int zvtSetVideoFormat(uint64_t handle, uint8_t value) { return absent(__func__, handle, value); }

int zvtGetVideoUpdateRate(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtSetVideoUpdateRate(uint64_t handle, uint8_t value) { return absent(__func__, handle, value); }

int zvtGetVideoTemporalFilter(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtSetVideoTemporalFilter(uint64_t handle, uint8_t value) { return absent(__func__, handle, value); }

int zvtGetVideoTemporalFilterThreshold(uint64_t handle, uint16_t *out) { return absent(__func__, handle, out); }

int zvtSetVideoTemporalFilterThreshold(uint64_t handle, uint16_t value) { return absent(__func__, handle, value); }

int zvtGetVideoPositionWritable(uint64_t handle, bool *out)
{
    return get<&VideoOutput::positionWritable>(__func__, handle, out);
}

int zvtGetVideoPosition(uint64_t handle, uint8_t *out) { return get<&VideoOutput::position>(__func__, handle, out); }

int zvtSetVideoPosition(uint64_t handle, uint8_t value)
{
    return call<&VideoOutput::setPosition>(__func__, handle, value);
}

int zvtGetVideoOffset(uint64_t handle, int16_t *x, int16_t *y)
{
    return get<&VideoOutput::xOffset, &VideoOutput::yOffset>(__func__, handle, x, y);
}

int zvtSetVideoOffset(uint64_t handle, int16_t x, int16_t y)
{
    return call<&VideoOutput::setOffset>(__func__, handle, x, y);
}

int zvtGetVideoZoomFactors(uint64_t handle, hlx::TArray<unsigned char> *out)
{
    const auto body = [&](const VideoOutput &video) {
        for (const uint8_t factor : video.zoomFactors())
            out->add(factor);
    };
    return onDevice<VideoOutput>(__func__, handle, body, out);
}

int zvtGetVideoZoomFactor(uint64_t handle, uint8_t *out)
{
    return get<&VideoOutput::zoomFactor>(__func__, handle, out);
}

int zvtSetVideoZoomFactor(uint64_t handle, uint8_t value)
{
    return call<&VideoOutput::setZoomFactor>(__func__, handle, value);
}

int zvtGetVideoBrightness(uint64_t handle, int8_t *out) { return absent(__func__, handle, out); }

int zvtSetVideoBrightness(uint64_t handle, int8_t value) { return absent(__func__, handle, value); }

int zvtGetVideoContrast(uint64_t handle, int8_t *out) { return absent(__func__, handle, out); }

int zvtSetVideoContrast(uint64_t handle, int8_t value) { return absent(__func__, handle, value); }

int zvtGetBlackHotAvailable(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtGetBlackHotEnabled(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtSetBlackHotEnabled(uint64_t handle, uint8_t value) { return absent(__func__, handle, value); }

int zvtListPalettes(uint64_t handle, hlx::TArray<zvtSDirEntry> *out) { return absent(__func__, handle, out); }

int zvtGetPalette(uint64_t handle, char *buf, uint32_t size) { return absent(__func__, handle, Text(buf, size)); }

int zvtLoadPalette(uint64_t handle, const char *name) { return absent(__func__, handle, name); }

// Automatic gain control of the video.

int zvtGetVideoAGCMethod(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtSetVideoAGCMethod(uint64_t handle, uint8_t value) { return absent(__func__, handle, value); }

int zvtGetVideoAGCPlateauP(uint64_t handle, uint32_t *out) { return absent(__func__, handle, out); }

int zvtSetVideoAGCPlateauP(uint64_t handle, uint32_t value) { return absent(__func__, handle, value); }

int zvtGetVideoAGCDDESharpness(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtSetVideoAGCDDESharpness(uint64_t handle, uint8_t value) { return absent(__func__, handle, value); }

int zvtGetVideoAGCDDEThreshold(uint64_t handle, uint32_t *out) { return absent(__func__, handle, out); }

int zvtSetVideoAGCDDEThreshold(uint64_t handle, uint32_t value) { return absent(__func__, handle, value); }

int zvtGetVideoAGCManualLow(uint64_t handle, uint16_t *out) { return absent(__func__, handle, out); }

int zvtSetVideoAGCManualLow(uint64_t handle, uint16_t value) { return absent(__func__, handle, value); }

int zvtGetVideoAGCManualHigh(uint64_t handle, uint16_t *out) { return absent(__func__, handle, out); }

int zvtSetVideoAGCManualHigh(uint64_t handle, uint16_t value) { return absent(__func__, handle, value); }

int zvtGetVideoAGCFilterRateEnabled(uint64_t handle, bool *out) { return absent(__func__, handle, out); }

int zvtSetVideoAGCFilterRateEnabled(uint64_t handle, bool value) { return absent(__func__, handle, value); }

int zvtGetVideoAGCFilterRate(uint64_t handle, double *out) { return absent(__func__, handle, out); }

int zvtSetVideoAGCFilterRate(uint64_t handle, double value) { return absent(__func__, handle, value); }

int zvtGetVideoAGCDampeningEnabled(uint64_t handle, bool *out) { return absent(__func__, handle, out); }

int zvtSetVideoAGCDampeningEnabled(uint64_t handle, bool value) { return absent(__func__, handle, value); }

int zvtGetVideoAGCDampening(uint64_t handle, float *out) { return absent(__func__, handle, out); }

int zvtSetVideoAGCDampening(uint64_t handle, float value) { return absent(__func__, handle, value); }

int zvtGetVideoAGCROIEnabled(uint64_t handle, bool *out) { return absent(__func__, handle, out); }

int zvtSetVideoAGCROIEnabled(uint64_t handle, bool value) { return absent(__func__, handle, value); }

int zvtGetVideoAGCROI(uint64_t handle, uint16_t *x, uint16_t *y, uint16_t *width, uint16_t *height)
{
    return absent(__func__, handle, x, y, width, height);
}

int zvtSetVideoAGCROI(uint64_t handle, uint16_t x, uint16_t y, uint16_t width, uint16_t height)
{
    return absent(__func__, handle, x, y, width, height);
}

int zvtGetVideoAGCROIShowWhenEnabled(uint64_t handle, bool *out) { return absent(__func__, handle, out); }
