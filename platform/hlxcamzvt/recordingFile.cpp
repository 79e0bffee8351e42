#include "platform/hlxcamzvt/recordingFile.h"

#include "hlx/CRCalReduceObject.h"
#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/FactoryCalibrations.h"
#include "platform/emulator/devices/Identity.h"
#include "platform/emulator/devices/RecordedFrame.h"
#include "platform/emulator/devices/Recording.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/image/Detector.h"
#include "platform/emulator/image/UsualPixel.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

namespace hlx::cam
{

using emulator::Camera;
using emulator::FactoryCalibrations;
using emulator::RecordedSettings;
using emulator::Recording;

namespace image = emulator::image;

namespace
{

constexpr int sixteenBits = 2; ///< The number of this data type.

/// Returns the count of an average pixel that sees a body of this temperature without lens and filter.
double countOf(double celsius, const image::Exposure &exposure, const image::Detector::Properties &properties)
{
    const image::UsualPixel pixel{1, properties.offset, properties.curvature};
    return pixel.countOf(image::Light::of(celsius, exposure.band), exposure.readout);
}

/// Returns the temperature in Kelvin at which countOf() has this value.
double kelvinOf(double count, const image::Exposure &exposure, const image::Detector::Properties &properties)
{
    constexpr double kelvinOfZeroCelsius = 273.15;
    double low = -150;
    double high = 3000;
    while (high - low > 1e-4) {
        const double middle = (low + high) / 2;
        (countOf(middle, exposure, properties) < count ? low : high) = middle;
    }
    return low + kelvinOfZeroCelsius;
}

/// Returns the coefficients of the polynomial through points, whose places must differ.
std::vector<double> polynomialThrough(const std::vector<double> &places, std::vector<double> values)
{
    // The values become divided differences.
    const size_t count = places.size();
    for (size_t order = 1; order < count; ++order)
        for (size_t i = count - 1; i >= order; --i)
            values[i] = (values[i] - values[i - 1]) / (places[i] - places[i - order]);
    std::vector<double> coefficients(count);
    for (size_t i = count; i-- > 0;) {
        // The polynomial so far times (x - place), and the next difference.
        for (size_t power = count - 1; power > 0; --power)
            coefficients[power] = coefficients[power - 1] - places[i] * coefficients[power];
        coefficients[0] = values[i] - places[i] * coefficients[0];
    }
    return coefficients;
}

/// A calibration by the settings of an exposure, for the middle 80 % of the counts.
reduce::CRCalFile calibrationOf(const QString &name, const image::Exposure &exposure,
                                const image::Detector::Properties &properties)
{
    constexpr double coldest = -150;
    const double dark = countOf(coldest, exposure, properties);
    const double range = image::Detector::maximumCount - dark;
    std::vector<double> counts;
    std::vector<double> kelvins;
    for (const double share : {0.1, 0.2, 0.4, 0.65, 0.9}) {
        counts.push_back(dark + share * range);
        kelvins.push_back(kelvinOf(counts.back(), exposure, properties));
    }
    reduce::CRCalFile calibration;
    calibration.name = CString(name.toUtf8().constData());
    calibration.low = static_cast<float>(kelvins.front());
    calibration.high = static_cast<float>(kelvins.back());
    for (const double coefficient : polynomialThrough(counts, kelvins))
        calibration.coefficients.push_back(static_cast<float>(coefficient));
    return calibration;
}

/// Adds the calibration of the factory for the integration time of the exposure, if there is one.
void addCalibration(const Camera &camera, const image::Exposure &exposure, reduce::CReduceObjectArray &objects)
{
    const auto *const calibrations = camera.device<FactoryCalibrations>();
    if (!calibrations)
        return;
    constexpr double smallestDifference = 1e-4; // Milliseconds; integration times have whole clocks.
    const auto &times = calibrations->integrationTimes();
    const auto isOf
        = [&](double time) { return std::abs(time - exposure.readout.integrationTime) < smallestDifference; };
    const auto found = std::ranges::find_if(times, isOf);
    if (found == times.end())
        return;
    auto object = std::make_unique<reduce::CRCalReduceObject>();
    object->calibration = calibrationOf(calibrations->names().at(found - times.begin()), exposure,
                                        camera.device<emulator::Sensor>()->array().properties());
    objects.add(std::move(object));
}

/// Adds the part of the correction of a preset that the frames of its window need, if there is one.
void addCorrection(uint8_t preset, const RecordedSettings::Preset &settings, reduce::CReduceObjectArray &objects)
{
    const auto correction = settings.correction ? settings.correction->correction() : std::nullopt;
    if (!correction)
        return;
    const image::Exposure &exposure = settings.exposure;
    const image::CorrectionTable part = correction->table->partFor(exposure.window, exposure.optics);
    if (!part.isComplete())
        return;
    CNucFile file;
    file.width = static_cast<uint16_t>(part.window.width);
    file.height = static_cast<uint16_t>(part.window.height);
    for (const float gain : part.gains)
        file.gains.push_back(gain);
    for (const float offset : part.offsets)
        file.offsets.push_back(offset);
    objects.GetCorrection(preset, true)->CreateFromNucFile(file);
}

} // namespace

file::MovieDescription descriptionOf(const Camera &camera, const Recording &recording, uint64_t frame)
{
    const auto &presets = recording.segment(frame).settings->presets;
    const emulator::FrameTiming timing = recording.timing(frame);
    const auto &identity = *camera.device<emulator::Identity>();
    file::MovieDescription description;
    description.abated = recording.abated();
    description.cameraModel = identity.model();
    description.cameraSerial = identity.serial();
    description.clockHertz = recording.ticksPerSecond();
    description.x = static_cast<uint16_t>(presets.front().exposure.window.x);
    description.y = static_cast<uint16_t>(presets.front().exposure.window.y);
    static_assert(emulator::maximumPresets == std::tuple_size_v<decltype(description.presets)>);
    for (size_t preset = 0; preset < presets.size(); ++preset)
        description.presets[preset] = {presets[preset].exposure.readout.integrationTime, timing.durations[preset]};
    return description;
}

reduce::CReduceObjectArray reduceObjectsOf(const Camera &camera, const Recording &recording, uint64_t first,
                                           uint64_t last)
{
    reduce::CReduceObjectArray objects;
    objects.format = {static_cast<unsigned int>(recording.size().width),
                      static_cast<unsigned int>(recording.size().height), sixteenBits};
    if (recording.abated())
        return objects;
    const auto &presets = recording.segment(first).settings->presets;
    for (size_t preset = 0; preset < presets.size(); ++preset)
        if (recording.uses(static_cast<int>(preset), first, last))
            addCorrection(static_cast<uint8_t>(preset), presets[preset], objects);
    addCalibration(camera, presets[static_cast<size_t>(recording.start(first).preset)].exposure, objects);
    return objects;
}

file::MovieFrame movieFrameOf(const emulator::RecordedFrame &frame)
{
    const emulator::CameraClock::IrigTime &time = frame.irigTime;
    file::MovieFrame result;
    result.number = static_cast<uint32_t>(frame.start.number);
    result.preset = static_cast<uint8_t>(frame.start.preset);
    result.year = time.year;
    result.time = {time.day, time.hour, time.minute, time.second, time.millisecond, time.microsecond};
    return result;
}

} // namespace hlx::cam
