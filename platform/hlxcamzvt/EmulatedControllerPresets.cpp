// The operations that the sensor and its calibrations answer: windows, presets, rates and sequences.
#include "platform/hlxcamzvt/EmulatedController.h"

#include "platform/emulator/devices/FactoryCalibrations.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/dispatch.h"

#include <algorithm>
#include <vector>

namespace hlx::cam
{

using emulator::controllerOnDevice;
using emulator::FactoryCalibrations;
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
    return controllerOnDevice<FactoryCalibrations>(
        camera(), "controller.GetPresetCalibrationIndex",
        [&](FactoryCalibrations &f) { return f.selected(preset, *index); }, preset, index);
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
    controllerOnDevice<Sensor>(
        camera(), "controller.SetWindowSizeIndex", [&](Sensor &s) { return s.setWindowSizeIndex(index); }, index);
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
    controllerOnDevice<Sensor>(
        camera(), "controller.SetPresetFrameRateIndex", [&](Sensor &s) { return s.setFrameRateIndex(preset, index); },
        preset, index);
}

void EmulatedController::GetPresetFrameRateIndex(int preset, int *index)
{
    controllerOnDevice<Sensor>(
        camera(), "controller.GetPresetFrameRateIndex", [&](Sensor &s) { return s.frameRateIndex(preset, *index); },
        preset, index);
}

bool EmulatedController::GetPresetFrameRate(int preset, double *hertz)
{
    return controllerOnDevice<Sensor>(
        camera(), "controller.GetPresetFrameRate", [&](Sensor &s) { return s.frameRate(preset, *hertz); }, preset,
        hertz);
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
    return controllerOnDevice<Sensor>(
        camera(), "controller.GetPresetSequencingMode",
        [&](Sensor &s) { *mode = static_cast<int>(s.sequencingMode()); }, mode);
}

void EmulatedController::SetPresetSequencingMode(uint32_t mode)
{
    controllerOnDevice<Sensor>(
        camera(), "controller.SetPresetSequencingMode", [&](Sensor &s) { return s.setSequencingMode(mode); }, mode);
}

bool EmulatedController::GetPresetSequence(void *buffer, int count)
{
    const auto body = [&](Sensor &s) -> Status {
        if (count <= 0)
            return emulator::Refused;
        auto *const entries = static_cast<SPresetSequenceEntry *>(buffer);
        for (int preset = 0; preset < std::min(count, Sensor::maxPresets); ++preset)
            entries[preset] = {static_cast<uint32_t>(preset), s.repeats(preset)};
        return emulator::Ok;
    };
    return controllerOnDevice<Sensor>(camera(), "controller.GetPresetSequence", body, buffer, count);
}

void EmulatedController::GetSubframeEnabled(int preset, bool *enabled)
{
    controllerOnDevice<Sensor>(
        camera(), "controller.GetSubframeEnabled", [&](Sensor &s) { return s.subframeEnabled(preset, *enabled); },
        preset, enabled);
}

void EmulatedController::SetSubframeEnabled(int preset, bool enabled)
{
    controllerOnDevice<Sensor>(
        camera(), "controller.SetSubframeEnabled", [&](Sensor &s) { return s.setSubframeEnabled(preset, enabled); },
        preset, enabled);
}

void EmulatedController::GetDwellCount(int preset, unsigned int *count)
{
    controllerOnDevice<Sensor>(
        camera(), "controller.GetDwellCount", [&](Sensor &s) { return s.dwellCount(preset, *count); }, preset, count);
}

void EmulatedController::SetDwellCount(int preset, unsigned int count)
{
    controllerOnDevice<Sensor>(
        camera(), "controller.SetDwellCount", [&](Sensor &s) { return s.setDwellCount(preset, count); }, preset, count);
}

void EmulatedController::GetSuperframeRates(hlx::TArray<double> *rates)
{
    controllerOnDevice<Sensor>(
        camera(), "controller.GetSuperframeRates", [&](Sensor &s) { *rates = toFramework(s.superframeRates()); },
        rates);
}

void EmulatedController::SetSuperframeRateIndex(int index)
{
    controllerOnDevice<Sensor>(
        camera(), "controller.SetSuperframeRateIndex", [&](Sensor &s) { return s.setSuperframeRateIndex(index); },
        index);
}

bool EmulatedController::GetSuperframeRateIndex(int *index)
{
    return controllerOnDevice<Sensor>(
        camera(), "controller.GetSuperframeRateIndex", [&](Sensor &s) { *index = s.superframeRateIndex(); }, index);
}

bool EmulatedController::GetSuperframeRate(double *hertz)
{
    return controllerOnDevice<Sensor>(
        camera(), "controller.GetSuperframeRate", [&](Sensor &s) { *hertz = s.superframeRate(); }, hertz);
}

void EmulatedController::SetSuperframeRate(int flag, double hertz)
{
    controllerOnDevice<Sensor>(
        camera(), "controller.SetSuperframeRate", [&](Sensor &s) { return s.setSuperframeRate(hertz); }, flag, hertz);
}

bool EmulatedController::GetPresetIntegrationTime(int preset, double *milliseconds)
{
    return controllerOnDevice<Sensor>(
        camera(), "controller.GetPresetIntegrationTime",
        [&](Sensor &s) { return s.integrationTime(preset, *milliseconds); }, preset, milliseconds);
}

void EmulatedController::SetPresetIntegrationTime(int preset, int flag, double milliseconds)
{
    controllerOnDevice<Sensor>(
        camera(), "controller.SetPresetIntegrationTime",
        [&](Sensor &s) { return s.setIntegrationTime(preset, milliseconds); }, preset, flag, milliseconds);
}

void EmulatedController::SetVideoPreset(int16_t preset)
{
    controllerOnDevice<Sensor>(
        camera(), "controller.SetVideoPreset", [&](Sensor &s) { return s.setVideoPreset(preset); }, preset);
}

bool EmulatedController::GetActivePreset(uint8_t *preset)
{
    return controllerOnDevice<Sensor>(
        camera(), "controller.GetActivePreset", [&](Sensor &s) { *preset = static_cast<uint8_t>(s.activePreset()); },
        preset);
}

void EmulatedController::SetActivePreset(int16_t preset)
{
    controllerOnDevice<Sensor>(
        camera(), "controller.SetActivePreset", [&](Sensor &s) { return s.setActivePreset(preset); }, preset);
}

bool EmulatedController::GetAverageFrameRate(double *hertz)
{
    return controllerOnDevice<Sensor>(
        camera(), "controller.GetAverageFrameRate", [&](Sensor &s) { *hertz = s.averageFrameRate(); }, hertz);
}

bool EmulatedController::GetIsLowCost()
{
    bool lowCost = false;
    controllerOnDevice<Sensor>(
        camera(), "controller.GetIsLowCost", [&](Sensor &s) { lowCost = s.lowCost(); }, &lowCost);
    return lowCost;
}

bool EmulatedController::GetReduceNoise()
{
    bool reduce = false;
    controllerOnDevice<Sensor>(
        camera(), "controller.GetReduceNoise", [&](Sensor &s) { reduce = s.reduceNoise(); }, &reduce);
    return reduce;
}

void EmulatedController::SetReduceNoise(bool reduce)
{
    controllerOnDevice<Sensor>(
        camera(), "controller.SetReduceNoise", [&](Sensor &s) { s.setReduceNoise(reduce); }, reduce);
}

} // namespace hlx::cam
