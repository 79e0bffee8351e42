// The operations of the sensor and its calibrations: windows, presets, rates and sequences.
#include "platform/hlxcamzvt/EmulatedController.h"

#include "platform/emulator/devices/FactoryCalibrations.h"
#include "platform/emulator/devices/FrameClock.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/memberCalls.h"

#include <algorithm>
#include <vector>

namespace hlx::cam
{

using emulator::controllerCall;
using emulator::controllerGet;
using emulator::controllerOnDevice;
using emulator::FactoryCalibrations;
using emulator::FrameClock;
using emulator::Sensor;
using emulator::Status;

namespace
{

hlx::TArray<double> toFramework(const std::vector<double> &values)
{
    hlx::TArray<double> array;
    for (const double value : values)
        array.add(value);
    return array;
}

} // namespace

bool EmulatedController::GetIsFactoryCalibrated(bool *calibrated)
{
    return controllerOnDevice<FactoryCalibrations>(
        camera(), "controller.GetIsFactoryCalibrated",
        [&](FactoryCalibrations &f) { *calibrated = !f.names().isEmpty(); }, calibrated);
}

bool EmulatedController::GetFactoryCalibrations(hlx::TArray<SFactoryCalibration> *list)
{
    return controllerOnDevice<FactoryCalibrations>(
        camera(), "controller.GetFactoryCalibrations",
        [&](FactoryCalibrations &f) {
            list->clear();
            for (const QString &name : f.names()) {
                SFactoryCalibration calibration;
                calibration.name = name.toUtf8().constData();
                list->add(calibration);
            }
        },
        list);
}

bool EmulatedController::GetPresetCalibrationIndex(int preset, int *index)
{
    return controllerCall<&FactoryCalibrations::selected>(camera(), "controller.GetPresetCalibrationIndex", preset,
                                                          index);
}

void EmulatedController::SetPresetCalibrationIndex(int preset, int index, int flag)
{
    controllerOnDevice<FactoryCalibrations>(
        camera(), "controller.SetPresetCalibrationIndex",
        [&](FactoryCalibrations &f) { return f.select(preset, index); }, preset, index, flag);
}

bool EmulatedController::GetWindowSizes(hlx::TArray<SWindowSize> *sizes)
{
    return controllerOnDevice<Sensor>(
        camera(), "controller.GetWindowSizes",
        [&](Sensor &s) {
            sizes->clear();
            for (const Sensor::Size &size : s.geometry().sizes())
                sizes->add({size.width, size.height});
        },
        sizes);
}

void EmulatedController::SetWindowSizeIndex(int index)
{
    controllerCall<&Sensor::setWindowSizeIndex>(camera(), "controller.SetWindowSizeIndex", index);
}

bool EmulatedController::GetWindowSizeIndex(int *index)
{
    return controllerOnDevice<Sensor>(
        camera(), "controller.GetWindowSizeIndex", [&](Sensor &s) { *index = s.geometry().sizeIndex(); }, index);
}

bool EmulatedController::GetCanWindowCustom(bool *allowed)
{
    return controllerOnDevice<Sensor>(
        camera(), "controller.GetCanWindowCustom", [&](Sensor &s) { *allowed = s.geometry().customAllowed(); },
        allowed);
}

bool EmulatedController::GetCanWindowCustomOffset(bool *allowed)
{
    return controllerOnDevice<Sensor>(
        camera(), "controller.GetCanWindowCustomOffset",
        [&](Sensor &s) { *allowed = s.geometry().customOffsetAllowed(); }, allowed);
}

bool EmulatedController::GetWindow(uint16_t *x, uint16_t *y, uint16_t *width, uint16_t *height)
{
    return controllerOnDevice<Sensor>(
        camera(), "controller.GetWindow",
        [&](Sensor &s) {
            const Sensor::Window &window = s.geometry().window();
            *x = window.x;
            *y = window.y;
            *width = window.width;
            *height = window.height;
        },
        x, y, width, height);
}

bool EmulatedController::SetWindow(uint16_t x, uint16_t y, uint16_t width, uint16_t height)
{
    return controllerOnDevice<Sensor>(
        camera(), "controller.SetWindow",
        [&](Sensor &s) {
            return s.setWindow({x, y, width, height});
        },
        x, y, width, height);
}

void EmulatedController::GetWindowLimits(uint16_t *minWidth, uint16_t *maxWidth, uint16_t *minHeight,
                                         uint16_t *maxHeight, uint16_t *widthIncrement, uint16_t *heightIncrement)
{
    controllerOnDevice<Sensor>(
        camera(), "controller.GetWindowLimits",
        [&](Sensor &s) {
            const auto &limits = s.geometry().limits();
            *minWidth = limits.minimum.width;
            *maxWidth = limits.maximum.width;
            *minHeight = limits.minimum.height;
            *maxHeight = limits.maximum.height;
            *widthIncrement = limits.step.width;
            *heightIncrement = limits.step.height;
        },
        minWidth, maxWidth, minHeight, maxHeight, widthIncrement, heightIncrement);
}

void EmulatedController::GetPresetFrameRates(int preset, hlx::TArray<double> *rates)
{
    controllerOnDevice<Sensor>(
        camera(), "controller.GetPresetFrameRates",
        [&](Sensor &s) {
            std::vector<double> offered;
            const Status status = s.frameRates(preset, offered);
            if (status == emulator::Ok)
                *rates = toFramework(offered);
            return status;
        },
        preset, rates);
}

void EmulatedController::SetPresetFrameRateIndex(int preset, int index)
{
    controllerCall<&Sensor::setFrameRateIndex>(camera(), "controller.SetPresetFrameRateIndex", preset, index);
}

void EmulatedController::GetPresetFrameRateIndex(int preset, int *index)
{
    controllerCall<&Sensor::frameRateIndex>(camera(), "controller.GetPresetFrameRateIndex", preset, index);
}

bool EmulatedController::GetPresetFrameRate(int preset, double *hertz)
{
    return controllerCall<&Sensor::frameRate>(camera(), "controller.GetPresetFrameRate", preset, hertz);
}

void EmulatedController::SetPresetFrameRate(int preset, int flag, double hertz)
{
    controllerOnDevice<Sensor>(
        camera(), "controller.SetPresetFrameRate", [&](Sensor &s) { return s.setFrameRate(preset, hertz); }, preset,
        flag, hertz);
}

bool EmulatedController::GetSequencingModes(hlx::TArray<uint32_t> *modes)
{
    return controllerOnDevice<Sensor>(
        camera(), "controller.GetSequencingModes",
        [&](Sensor &s) {
            modes->clear();
            for (const uint32_t mode : s.sequencingModes())
                modes->add(mode);
        },
        modes);
}

bool EmulatedController::GetPresetSequencingMode(int *mode)
{
    return controllerGet<&Sensor::sequencingMode>(camera(), "controller.GetPresetSequencingMode", mode);
}

void EmulatedController::SetPresetSequencingMode(uint32_t mode)
{
    controllerCall<&Sensor::setSequencingMode>(camera(), "controller.SetPresetSequencingMode", mode);
}

bool EmulatedController::GetPresetSequence(void *buffer, int count)
{
    const auto body = [&](Sensor &s) -> Status {
        if (count <= 0)
            return emulator::Refused;
        auto *const entries = static_cast<SPresetSequenceEntry *>(buffer);
        for (int preset = 0; preset < std::min(count, emulator::maximumPresets); ++preset)
            entries[preset] = {static_cast<uint32_t>(preset), s.repeats(preset)};
        return emulator::Ok;
    };
    const size_t size
        = static_cast<size_t>(std::clamp(count, 0, emulator::maximumPresets)) * sizeof(SPresetSequenceEntry);
    return controllerOnDevice<Sensor>(camera(), "controller.GetPresetSequence", body, emulator::Block{buffer, size},
                                      count);
}

void EmulatedController::GetSubframeEnabled(int preset, bool *enabled)
{
    controllerCall<&Sensor::subframeEnabled>(camera(), "controller.GetSubframeEnabled", preset, enabled);
}

void EmulatedController::SetSubframeEnabled(int preset, bool enabled)
{
    controllerCall<&Sensor::setSubframeEnabled>(camera(), "controller.SetSubframeEnabled", preset, enabled);
}

void EmulatedController::GetDwellCount(int preset, unsigned int *count)
{
    controllerCall<&Sensor::dwellCount>(camera(), "controller.GetDwellCount", preset, count);
}

void EmulatedController::SetDwellCount(int preset, unsigned int count)
{
    controllerCall<&Sensor::setDwellCount>(camera(), "controller.SetDwellCount", preset, count);
}

void EmulatedController::GetSuperframeRates(hlx::TArray<double> *rates)
{
    controllerOnDevice<Sensor>(
        camera(), "controller.GetSuperframeRates", [&](Sensor &s) { *rates = toFramework(s.superframeRates()); },
        rates);
}

void EmulatedController::SetSuperframeRateIndex(int index)
{
    controllerCall<&Sensor::setSuperframeRateIndex>(camera(), "controller.SetSuperframeRateIndex", index);
}

bool EmulatedController::GetSuperframeRateIndex(int *index)
{
    return controllerGet<&Sensor::superframeRateIndex>(camera(), "controller.GetSuperframeRateIndex", index);
}

bool EmulatedController::GetSuperframeRate(double *hertz)
{
    return controllerGet<&Sensor::superframeRate>(camera(), "controller.GetSuperframeRate", hertz);
}

void EmulatedController::SetSuperframeRate(int flag, double hertz)
{
    controllerOnDevice<Sensor>(
        camera(), "controller.SetSuperframeRate", [&](Sensor &s) { return s.setSuperframeRate(hertz); }, flag, hertz);
}

bool EmulatedController::GetPresetIntegrationTime(int preset, double *milliseconds)
{
    return controllerCall<&Sensor::integrationTime>(camera(), "controller.GetPresetIntegrationTime", preset,
                                                    milliseconds);
}

void EmulatedController::SetPresetIntegrationTime(int preset, int flag, double milliseconds)
{
    controllerOnDevice<Sensor>(
        camera(), "controller.SetPresetIntegrationTime",
        [&](Sensor &s) { return s.setIntegrationTime(preset, milliseconds); }, preset, flag, milliseconds);
}

void EmulatedController::SetVideoPreset(int16_t preset)
{
    controllerCall<&Sensor::setVideoPreset>(camera(), "controller.SetVideoPreset", preset);
}

bool EmulatedController::GetActivePreset(uint8_t *preset)
{
    return controllerGet<&Sensor::activePreset>(camera(), "controller.GetActivePreset", preset);
}

void EmulatedController::SetActivePreset(int16_t preset)
{
    controllerCall<&Sensor::setActivePreset>(camera(), "controller.SetActivePreset", preset);
}

bool EmulatedController::GetAverageFrameRate(double *hertz)
{
    return controllerGet<&FrameClock::averageRate>(camera(), "controller.GetAverageFrameRate", hertz);
}

bool EmulatedController::GetIsLowCost()
{
    bool lowCost = false;
    controllerGet<&Sensor::lowCost>(camera(), "controller.GetIsLowCost", &lowCost);
    return lowCost;
}

bool EmulatedController::GetReduceNoise()
{
    bool reduce = false;
    controllerGet<&Sensor::reduceNoise>(camera(), "controller.GetReduceNoise", &reduce);
    return reduce;
}

void EmulatedController::SetReduceNoise(bool reduce)
{
    controllerCall<&Sensor::setReduceNoise>(camera(), "controller.SetReduceNoise", reduce);
}

} // namespace hlx::cam
