#include "platform/emulator/devices/FactoryCorrections.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/Corrections.h"
#include "platform/emulator/devices/FactoryCalibrations.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/image/FrameCollector.h"
#include "platform/emulator/image/makeCorrection.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace emulator
{

namespace
{

constexpr double firstCelsius = 20;
// The first of them with enough difference is used.
constexpr double secondCelsius[] = {35, 100, 250, 600};
constexpr uint32_t frames = 64;

/// The limits of the factory. No pixel is too dark for them, since short integration times leave pixels near their
/// offsets.
image::BadPixelLimits limits()
{
    image::BadPixelLimits limits;
    limits.adMin = 0;
    limits.twinklers = false;
    return limits;
}

image::FrameCollector collect(const image::Exposure &exposure, double celsius)
{
    // One frame is enough, since it has no noise.
    image::Exposure field = image::flatField(exposure, celsius);
    field.readout.voltages = exposure.readout.voltages;
    image::FrameCollector collector;
    collector.add(field);
    return collector;
}

std::optional<image::MadeCorrection> makeFrom(const image::Exposure &exposure)
{
    const image::Judgement judgement{limits(), image::factoryList(exposure), true};
    const image::FrameCollector first = collect(exposure, firstCelsius);
    for (const double celsius : secondCelsius)
        if (auto made = image::makeTwoPoint(first, collect(exposure, celsius), nullptr, judgement))
            return made;
    return std::nullopt;
}

} // namespace

FactoryCorrections::FactoryCorrections(Camera &camera) : m_array(camera.device<Sensor>()->array())
{
    const Sensor &sensor = *camera.device<Sensor>();
    const auto &array = m_array.size();
    m_size = correctionFileSize(static_cast<uint64_t>(array.width), static_cast<uint64_t>(array.height));
    if (const auto *const calibrations = camera.device<FactoryCalibrations>())
        for (qsizetype row = 0; row < calibrations->names().size(); ++row) {
            constexpr double most = std::numeric_limits<uint32_t>::max();
            const double milliseconds = calibrations->integrationTimes()[static_cast<size_t>(row)];
            const double clocks = std::clamp(std::round(milliseconds * sensor.clockFrequency() / 1000), 0.0, most);
            add(camera, calibrations->names().at(row).toStdString(), 0, static_cast<uint32_t>(clocks));
        }
    if (const auto *const corrections = camera.device<Corrections>())
        for (int preset = 0; preset < sensor.numPresets(); ++preset) {
            std::string name;
            uint32_t clocks = 0;
            if (corrections->name(static_cast<uint8_t>(preset), name) == Ok
                && sensor.integrationWidth(preset, clocks) == Ok)
                add(camera, name, preset, clocks);
        }
}

std::vector<std::string> FactoryCorrections::names() const
{
    std::vector<std::string> names;
    for (const Entry &entry : m_entries)
        names.push_back(entry.name);
    return names;
}

std::optional<CorrectionInfo> FactoryCorrections::basicInfo(const std::string &name) const
{
    const std::lock_guard lock(m_mutex);
    const auto *const entry = find(name);
    return entry ? std::optional(entry->info) : std::nullopt;
}

std::optional<CorrectionInfo> FactoryCorrections::info(const std::string &name) const
{
    {
        const std::lock_guard lock(m_mutex);
        if (const auto *const entry = find(name); entry && entry->counted)
            return entry->info;
    }
    auto made = make(name);
    return made ? std::optional(std::move(made->info)) : std::nullopt;
}

std::optional<Correction> FactoryCorrections::make(const std::string &name) const
{
    const std::lock_guard making(m_making);
    auto *const entry = find(name);
    if (!entry)
        return std::nullopt;
    if (auto table = entry->table.lock())
        return Correction{entry->info, std::move(table)};
    image::Exposure exposure = entry->exposure;
    exposure.detector = m_array.mapsFor(exposure.window);
    auto made = makeFrom(exposure);
    if (!made)
        return std::nullopt;
    Correction correction{entry->info, std::make_shared<image::CorrectionTable>(std::move(made->table))};
    setCounts(correction.info, made->counts);
    const std::lock_guard lock(m_mutex);
    entry->info = correction.info;
    entry->counted = true;
    entry->table = correction.table;
    return correction;
}

void FactoryCorrections::add(const Camera &camera, const std::string &name, int preset, uint32_t integrationWidth)
{
    if (name.empty() || contains(name))
        return;
    const Sensor &sensor = *camera.device<Sensor>();
    const auto &array = m_array.size();
    Entry entry;
    entry.name = name;
    entry.exposure = camera.exposure({.preset = preset});
    entry.exposure.window = {0, 0, array.width, array.height};
    double milliseconds = 0;
    sensor.clocksToMilliseconds(integrationWidth, milliseconds);
    entry.exposure.readout.integrationTime = milliseconds;

    CorrectionInfo &info = entry.info;
    info = presentSettings(camera, preset);
    info.x = 0;
    info.y = 0;
    info.width = static_cast<uint16_t>(array.width);
    info.height = static_cast<uint16_t>(array.height);
    info.integrationWidth = integrationWidth;
    uint32_t shortest = 0;
    sensor.minimumFrameWidth({info.width, info.height}, integrationWidth, false, shortest);
    info.frameWidth = std::max(info.frameWidth, shortest);
    info.nucType = 1;
    info.numFrames = frames;
    info.detectBadPixels = true;
    const image::BadPixelLimits by = limits();
    info.twinklerDelta = by.twinklerDelta;
    info.adMinimum = by.adMin;
    info.adMaximum = by.adMax;
    info.gainMinimum = by.gainMin;
    info.gainMaximum = by.gainMax;
    m_entries.push_back(std::move(entry));
}

FactoryCorrections::Entry *FactoryCorrections::find(const std::string &name) const
{
    const auto found = std::ranges::find(m_entries, name, &Entry::name);
    return found == m_entries.end() ? nullptr : &*found;
}

} // namespace emulator
