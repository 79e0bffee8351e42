#include "platform/emulator/devices/SeededMovie.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/CorrectionStore.h"
#include "platform/emulator/devices/Corrections.h"
#include "platform/emulator/devices/Recording.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/utf8.h"

#include <cmath>
#include <utility>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

constexpr int64_t day = 86'400'000'000; ///< Microseconds.

/// The settings of the profile for a movie of a window.
RecordedSettings settingsFor(const Camera &camera, const image::Window &window, bool abated)
{
    const auto *const corrections = camera.device<Corrections>();
    RecordedSettings settings;
    for (int preset = 0; preset < camera.device<Sensor>()->numPresets(); ++preset) {
        auto &[exposure, correction] = settings.presets.at(static_cast<size_t>(preset));
        exposure = camera.exposure({.preset = preset});
        exposure.window = window;
        exposure.frameNumber = 0;
        exposure.scene.microseconds = 0;
        exposure.detector.reset();
        exposure.correction.reset();
        exposure.digitalCorrected = abated;
        RecordedMotion::takeFrom(exposure);
        std::string name;
        if (corrections && corrections->name(static_cast<uint8_t>(preset), name) == Ok && !name.empty())
            correction = camera.device<CorrectionStore>()->recordFactory(name);
    }
    return settings;
}

FrameLog logOf(uint32_t ticksPerSecond, int64_t start, int presets, double hertz)
{
    SensorTiming sensor;
    const auto width = static_cast<uint32_t>(std::lround(ticksPerSecond / hertz));
    for (int preset = 0; preset < presets; ++preset)
        sensor.presets.at(static_cast<size_t>(preset)) = {1, width, width, 0};
    FrameLog log;
    log.start(ticksPerSecond, start);
    log.begin({FrameTiming(sensor, std::nullopt), 0}, 0);
    return log;
}

} // namespace

std::vector<SeededMovie> SeededMovie::list(Section &section)
{
    std::vector<SeededMovie> movies;
    for (Section &entry : section.sections(u"movies"_s))
        movies.push_back(SeededMovie(std::move(entry), static_cast<uint32_t>(movies.size() + 1)));
    return movies;
}

SeededMovie::SeededMovie(Section section, uint32_t number)
    : m_number(number), m_name(section.text(u"name"_s, u"Untitled"_s)),
      m_width(section.integer(u"width"_s, 64, 1, UINT16_MAX)),
      m_height(section.integer(u"height"_s, 4, 1, UINT16_MAX - 1)),
      m_frames(static_cast<uint64_t>(section.integer(u"frames"_s, 0, 0, INT32_MAX))),
      m_rate(section.number(u"rate"_s, 100, 0.1, 10'000)),
      m_presets(section.integer(u"presets"_s, 1, 1, maximumPresets)), m_abated(section.flag(u"abated"_s, false))
{
    section.finish();
}

std::optional<Drive::Movie> SeededMovie::make(const Camera &camera) const
{
    const auto &sensor = *camera.device<Sensor>();
    const image::Size &array = sensor.array().size();
    const image::Window window{(array.width - m_width) / 2, (array.height - m_height) / 2, m_width, m_height};
    if (!image::Window{0, 0, array.width, array.height}.contains(window) || m_presets > sensor.numPresets())
        return std::nullopt;
    const RecordedSettings settings = settingsFor(camera, window, m_abated);
    for (int preset = 0; m_abated && preset < m_presets; ++preset)
        if (!settings.presets.at(static_cast<size_t>(preset)).correction)
            return std::nullopt;
    FrameRanges numbers;
    numbers.add(0, m_frames);
    image::Exposure atRest;
    auto recording = std::make_shared<const Recording>(
        image::Size{m_width, m_height}, std::move(numbers),
        logOf(sensor.clockFrequency(), start + m_number * day, m_presets, m_rate),
        std::deque<Recording::Segment>{
            {0, std::make_shared<const RecordedSettings>(settings), RecordedMotion::takeFrom(atRest)}});
    const std::string name(beginningOf(m_name.toStdString(), Drive::longestName));
    return Drive::Movie{m_number, name, std::move(recording), true};
}

} // namespace emulator
