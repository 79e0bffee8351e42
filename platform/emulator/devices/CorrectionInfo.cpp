#include "platform/emulator/devices/CorrectionInfo.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/Analog.h"
#include "platform/emulator/devices/Color.h"
#include "platform/emulator/devices/DetectorGain.h"
#include "platform/emulator/devices/DigitalGain.h"
#include "platform/emulator/devices/FilterWheel.h"
#include "platform/emulator/devices/FrameSync.h"
#include "platform/emulator/devices/Identity.h"
#include "platform/emulator/devices/ImageMode.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/image/makeCorrection.h"

namespace emulator
{

CorrectionInfo presentSettings(const Camera &camera, int preset)
{
    CorrectionInfo info;
    const auto *const identity = camera.device<Identity>();
    info.cameraModel = identity->model();
    info.cameraSerial = identity->serial();
    const auto *const sensor = camera.device<Sensor>();
    const auto &window = sensor->geometry().window();
    info.x = window.x;
    info.y = window.y;
    info.width = window.width;
    info.height = window.height;
    sensor->integrationWidth(preset, info.integrationWidth);
    sensor->frameWidth(preset, info.frameWidth);
    if (const auto *const analog = camera.device<Analog>()) {
        info.biasKind = analog->biases();
        info.detectorBias = analog->bias();
        info.secondDetectorBias = analog->secondBias();
        info.analogOffset = analog->globalOffset();
        // They stay as they are if the camera has no skimming.
        analog->skimmingEnabled(info.skimmingEnabled);
        analog->skimmingVoltage(info.skimmingVoltage);
    }
    camera.device<Color>()->selected(static_cast<uint8_t>(preset), info.color);
    const auto *const digital = camera.device<DigitalGain>();
    digital->gain(static_cast<uint8_t>(preset), info.digitalGain);
    digital->offset(static_cast<uint8_t>(preset), info.digitalOffset);
    const auto *const image = camera.device<ImageMode>();
    info.invert = image->inverted();
    info.revert = image->reverted();
    info.frameSyncMode = camera.device<FrameSync>()->mode();
    if (const auto *const filters = camera.device<FilterWheel>())
        filters->current(info.filterID);
    if (const auto *const gain = camera.device<DetectorGain>())
        info.gainLevel = gain->level();
    return info;
}

namespace
{

/// Calls `visit` for each number of bad pixels, with its fields of a description and of the counts.
template <class Visit, class Info, class Counts> void forEachCount(Visit visit, Info &info, Counts &counts)
{
    visit(info.totalBadPixels, counts.total);
    visit(info.twinklingPixels, counts.twinkling);
    visit(info.factoryBadPixels, counts.factory);
    visit(info.aboveGainMaximum, counts.aboveGainMax);
    visit(info.belowGainMinimum, counts.belowGainMin);
    visit(info.aboveAdMaximumSource1, counts.aboveAdMaxSource1);
    visit(info.belowAdMinimumSource1, counts.belowAdMinSource1);
    visit(info.aboveAdMaximumSource2, counts.aboveAdMaxSource2);
    visit(info.belowAdMinimumSource2, counts.belowAdMinSource2);
    visit(info.newBadPixels, counts.newlyBad);
}

} // namespace

void setCounts(CorrectionInfo &info, const image::BadPixelCounts &counts)
{
    forEachCount([](uint32_t &to, uint32_t from) { to = from; }, info, counts);
}

image::BadPixelCounts countsOf(const CorrectionInfo &info)
{
    image::BadPixelCounts counts;
    forEachCount([](uint32_t from, uint32_t &to) { to = from; }, info, counts);
    return counts;
}

} // namespace emulator
