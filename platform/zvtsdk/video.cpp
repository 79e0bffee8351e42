// The SDK's functions of the video output. Those of its gain control are in gainControl.cpp, those of its palette in
// palettes.cpp, those of its overlay in overlay.cpp.
#include "zvt/zvtsdk.h"

#include "platform/emulator/devices/VideoOutput.h"
#include "platform/emulator/memberCalls.h"

using namespace emulator;

int zvtGetVideoFormats(uint64_t handle, hlx::TArray<unsigned char> *out)
{
    const auto body = [&](const VideoOutput &video) {
        for (const uint8_t format : video.formats())
            out->add(format);
    };
    return onDevice<VideoOutput>(__func__, handle, body, out);
}

int zvtGetVideoFormat(uint64_t handle, uint8_t *out) { return get<&VideoOutput::format>(__func__, handle, out); }

int zvtSetVideoFormat(uint64_t handle, uint8_t value) { return call<&VideoOutput::setFormat>(__func__, handle, value); }

int zvtGetVideoUpdateRate(uint64_t handle, uint8_t *out)
{
    return call<&VideoOutput::updateRate>(__func__, handle, out);
}

int zvtSetVideoUpdateRate(uint64_t handle, uint8_t value)
{
    return call<&VideoOutput::setUpdateRate>(__func__, handle, value);
}

int zvtGetVideoTemporalFilter(uint64_t handle, uint8_t *out)
{
    return call<&VideoOutput::temporalFilter>(__func__, handle, out);
}

int zvtSetVideoTemporalFilter(uint64_t handle, uint8_t value)
{
    return call<&VideoOutput::setTemporalFilter>(__func__, handle, value);
}

int zvtGetVideoTemporalFilterThreshold(uint64_t handle, uint16_t *out)
{
    return call<&VideoOutput::temporalFilterThreshold>(__func__, handle, out);
}

int zvtSetVideoTemporalFilterThreshold(uint64_t handle, uint16_t value)
{
    return call<&VideoOutput::setTemporalFilterThreshold>(__func__, handle, value);
}

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

int zvtGetVideoBrightness(uint64_t handle, int8_t *out) { return get<&VideoOutput::brightness>(__func__, handle, out); }

int zvtSetVideoBrightness(uint64_t handle, int8_t value)
{
    return call<&VideoOutput::setBrightness>(__func__, handle, value);
}

int zvtGetVideoContrast(uint64_t handle, int8_t *out) { return get<&VideoOutput::contrast>(__func__, handle, out); }

int zvtSetVideoContrast(uint64_t handle, int8_t value)
{
    return call<&VideoOutput::setContrast>(__func__, handle, value);
}
