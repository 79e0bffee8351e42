#include "platform/emulator/devices/Sensor.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/Recorder.h"
#include "platform/emulator/image/Exposure.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

constexpr double minimumRate = 0.1;
constexpr double standardRates[]
    = {10000, 5000, 2000, 1000, 500, 400, 300, 250, 200, 150, 120, 100, 60, 50, 30, 25, 20, 15, 10, 5, 2, 1};

uint32_t toClocks(double seconds, uint32_t frequency)
{
    const double clocks = std::round(seconds * frequency);
    return static_cast<uint32_t>(std::clamp(clocks, 0.0, double(std::numeric_limits<uint32_t>::max())));
}

template <class T> int indexOf(const std::vector<T> &list, const T &value)
{
    const auto found = std::find(list.begin(), list.end(), value);
    return found == list.end() ? -1 : static_cast<int>(found - list.begin());
}

} // namespace

Sensor::Sensor(Camera &camera, Section &section)
    : Device(camera),
      m_clockFrequency(static_cast<uint32_t>(section.integer(u"clockFrequency"_s, 20'000'000, 1'000'000, 100'000'000))),
      m_maximumIntegrationWidth(
          toClocks(section.number(u"maximumIntegrationTime"_s, 1000.0, 1.0, 10'000.0) / 1000.0, m_clockFrequency)),
      m_numPresets(section.integer(u"numPresets"_s, maximumPresets, 1, maximumPresets)),
      m_lowCost(section.flag(u"lowCost"_s, false)), m_hasVideoStream(section.flag(u"videoStream"_s, true)),
      m_geometry(section), m_readout(section, m_clockFrequency),
      m_array(section, {m_geometry.limits().maximum.width, m_geometry.limits().maximum.height})
{
    for (const double mode : section.numbers(u"sequencingModes"_s, {SinglePreset, Superframing, PresetSequencing}))
        if (mode >= 0.0 && mode <= 255.0)
            m_sequencingModes.push_back(static_cast<uint32_t>(mode));
        else
            section.refuse(u"sequencingModes"_s, u"must be numbers from 0 to 255"_s);
    const QList<double> times = section.numbers(u"integrationTimes"_s, {2.0, 1.0, 0.5, 0.25});
    const double rate = section.number(u"frameRate"_s, 100.0, minimumRate, 1e6);
    for (int preset = 0; preset < m_numPresets; ++preset) {
        if (times.isEmpty()
            || setIntegrationTime(preset, times.at(std::min<qsizetype>(preset, times.size() - 1))) != Ok)
            section.refuse(u"integrationTimes"_s, u"must be a list of times in milliseconds"_s);
        setFrameRate(preset, rate);
    }
    readSettings(section);
}

bool Sensor::framesAreHeld() const
{
    const auto *const recorder = camera().device<Recorder>();
    return recorder && recorder->holdsFrames();
}

Status Sensor::clocksToHertz(uint32_t clocks, double &hertz) const
{
    if (clocks == 0)
        return Refused;
    hertz = double(m_clockFrequency) / clocks;
    return Ok;
}

Status Sensor::clocksToMilliseconds(uint32_t clocks, double &milliseconds) const
{
    milliseconds = clocks * 1000.0 / m_clockFrequency;
    return Ok;
}

Status Sensor::snapHertz(double wanted, double &snapped) const
{
    if (!(wanted > 0.0))
        return Refused;
    return clocksToHertz(std::max(toClocks(1.0 / wanted, m_clockFrequency), 1u), snapped);
}

Status Sensor::setWindowSizeIndex(int index)
{
    const Status status = framesAreHeld() ? Refused : m_geometry.setSizeIndex(index);
    if (status == Ok)
        stretchFrames();
    return status;
}

Status Sensor::setWindow(const Window &window)
{
    const Status status = framesAreHeld() ? Refused : m_geometry.setWindow(window);
    if (status == Ok)
        stretchFrames();
    return status;
}

void Sensor::setReadoutConstants(const SensorReadout::Constants &constants)
{
    m_readout.setConstants(constants);
    stretchFrames();
}

Status Sensor::minimumFrameWidth(const Size &size, uint32_t integration, bool sequencing, uint32_t &clocks) const
{
    if (size.width == 0 || size.height == 0)
        return Refused;
    clocks = m_readout.shortestFrameWidth({size, integration, m_reduceNoise, sequencing});
    return Ok;
}

uint32_t Sensor::minimumFrameWidth(int preset) const
{
    return minimumFrameWidth(preset, m_sequencingMode != SinglePreset && !m_syncStartsReadout);
}

uint32_t Sensor::minimumFrameWidth(int preset, bool sequencing) const
{
    const Window &window = m_geometry.window();
    const uint32_t integration = m_presets[static_cast<size_t>(preset)].integrationWidth;
    return m_readout.shortestFrameWidth({{window.width, window.height}, integration, m_reduceNoise, sequencing});
}

uint32_t Sensor::effectiveFrameWidth(int preset) const
{
    return std::max(m_presets[static_cast<size_t>(preset)].frameWidth, minimumFrameWidth(preset));
}

void Sensor::stretchFrames()
{
    for (int preset = 0; preset < m_numPresets; ++preset)
        m_presets[static_cast<size_t>(preset)].frameWidth = effectiveFrameWidth(preset);
    m_superframeWidth = superframeWidth();
}

template <class Width> std::vector<Width> Sensor::offeredWidths(Width minimum) const
{
    std::vector<Width> widths{minimum};
    for (const double rate : standardRates)
        if (const Width width = toClocks(1.0 / rate, m_clockFrequency); width > minimum)
            widths.push_back(width);
    return widths;
}

template <class Width> std::vector<double> Sensor::toHertz(const std::vector<Width> &widths) const
{
    std::vector<double> rates;
    for (const Width width : widths)
        rates.push_back(double(m_clockFrequency) / double(width));
    return rates;
}

template <class Width> Width Sensor::nearestWidth(double hertz, Width minimum) const
{
    return std::max<Width>(minimum, toClocks(1.0 / std::max(hertz, minimumRate), m_clockFrequency));
}

Status Sensor::integrationWidth(int preset, uint32_t &clocks) const
{
    if (!hasPreset(preset))
        return Refused;
    clocks = m_presets[static_cast<size_t>(preset)].integrationWidth;
    return Ok;
}

Status Sensor::setIntegrationWidth(int preset, uint32_t clocks)
{
    if (framesAreHeld() || !hasPreset(preset) || !integrationWidths().holds(clocks))
        return Refused;
    m_presets[static_cast<size_t>(preset)].integrationWidth = clocks;
    return Ok;
}

Status Sensor::integrationTime(int preset, double &milliseconds) const
{
    if (!hasPreset(preset))
        return Refused;
    return clocksToMilliseconds(m_presets[static_cast<size_t>(preset)].integrationWidth, milliseconds);
}

Status Sensor::setIntegrationTime(int preset, double milliseconds)
{
    if (framesAreHeld() || !hasPreset(preset) || !std::isfinite(milliseconds))
        return Refused;
    m_presets[static_cast<size_t>(preset)].integrationWidth = std::clamp(
        toClocks(milliseconds / 1000.0, m_clockFrequency), minimumIntegrationWidth, m_maximumIntegrationWidth);
    stretchFrames();
    return Ok;
}

Status Sensor::frameWidth(int preset, uint32_t &clocks) const
{
    if (!hasPreset(preset))
        return Refused;
    clocks = m_presets[static_cast<size_t>(preset)].frameWidth;
    return Ok;
}

Status Sensor::setFrameWidth(int preset, uint32_t clocks)
{
    if (framesAreHeld() || !hasPreset(preset) || clocks < minimumFrameWidth(preset))
        return Refused;
    m_presets[static_cast<size_t>(preset)].frameWidth = clocks;
    return Ok;
}

Status Sensor::frameRates(int preset, std::vector<double> &hertz) const
{
    if (!hasPreset(preset))
        return Refused;
    hertz = toHertz(offeredWidths(minimumFrameWidth(preset)));
    return Ok;
}

Status Sensor::frameRateIndex(int preset, int &index) const
{
    if (!hasPreset(preset))
        return Refused;
    index = indexOf(offeredWidths(minimumFrameWidth(preset)), effectiveFrameWidth(preset));
    return Ok;
}

Status Sensor::setFrameRateIndex(int preset, int index)
{
    if (framesAreHeld() || !hasPreset(preset))
        return Refused;
    const auto widths = offeredWidths(minimumFrameWidth(preset));
    if (index < 0 || index >= static_cast<int>(widths.size()))
        return Refused;
    m_presets[static_cast<size_t>(preset)].frameWidth = widths[static_cast<size_t>(index)];
    return Ok;
}

Status Sensor::frameRate(int preset, double &hertz) const
{
    return hasPreset(preset) ? clocksToHertz(effectiveFrameWidth(preset), hertz) : Refused;
}

Status Sensor::setFrameRate(int preset, double hertz)
{
    if (framesAreHeld() || !hasPreset(preset) || !(hertz > 0.0))
        return Refused;
    m_presets[static_cast<size_t>(preset)].frameWidth = nearestWidth(hertz, minimumFrameWidth(preset));
    return Ok;
}

SensorTiming::Preset Sensor::presetTiming(int preset, uint32_t repeats) const
{
    const uint32_t integration = m_presets[static_cast<size_t>(preset)].integrationWidth;
    return {repeats, effectiveFrameWidth(preset), minimumFrameWidth(preset), integration};
}

SensorTiming Sensor::timing() const
{
    SensorTiming timing{{}, m_sequencingMode == Superframing, superframeWidth()};
    for (int preset = 0; preset < m_numPresets; ++preset)
        if (const uint32_t repeats = this->repeats(preset); repeats > 0) {
            SensorTiming::Preset &values = timing.presets[static_cast<size_t>(preset)];
            values = presetTiming(preset, repeats);
            if (timing.superframing)
                values.width = values.shortestWidth;
        }
    return timing;
}

SensorTiming Sensor::timingOf(int preset) const
{
    SensorTiming timing{{}, false, superframeWidth()};
    timing.presets[static_cast<size_t>(preset)] = presetTiming(preset, 1);
    return timing;
}

void Sensor::setSyncStartsReadout(bool startsReadout)
{
    m_syncStartsReadout = startsReadout;
    stretchFrames();
}

bool Sensor::advanceActivePreset(uint64_t count)
{
    const auto inUse = static_cast<uint64_t>(std::count_if(m_presets.begin(), m_presets.begin() + m_numPresets,
                                                           [](const Preset &p) { return p.dwellCount > 0; }));
    if (inUse == 0 || count == 0)
        return false;
    // The first step may lead from a preset that is not in use; afterwards the presets in use repeat.
    for (uint64_t steps = (count - 1) % inUse + 1; steps > 0; --steps)
        do
            m_activePreset = (m_activePreset + 1) % m_numPresets;
        while (m_presets[static_cast<size_t>(m_activePreset)].dwellCount == 0);
    return true;
}

uint32_t Sensor::repeats(int preset) const
{
    if (!hasPreset(preset))
        return 0;
    const Preset &values = m_presets[static_cast<size_t>(preset)];
    switch (m_sequencingMode) {
    case Superframing:
        return values.subframeEnabled ? 1 : 0;
    case PresetSequencing:
        return values.dwellCount;
    default:
        return preset == m_activePreset ? 1 : 0;
    }
}

Status Sensor::subframeEnabled(int preset, bool &enabled) const
{
    if (!hasPreset(preset))
        return Refused;
    enabled = m_presets[static_cast<size_t>(preset)].subframeEnabled;
    return Ok;
}

Status Sensor::setSubframeEnabled(int preset, bool enabled)
{
    if (!hasPreset(preset))
        return Refused;
    Preset &values = m_presets[static_cast<size_t>(preset)];
    return values.settings.assign(values.subframeEnabled, enabled);
}

Status Sensor::dwellCount(int preset, uint32_t &count) const
{
    if (!hasPreset(preset))
        return Refused;
    count = m_presets[static_cast<size_t>(preset)].dwellCount;
    return Ok;
}

Status Sensor::setDwellCount(int preset, uint32_t count)
{
    if (!hasPreset(preset))
        return Refused;
    Preset &values = m_presets[static_cast<size_t>(preset)];
    return values.settings.assign(values.dwellCount, count);
}

uint64_t Sensor::minimumSuperframeWidth() const
{
    // A superframe without frames still takes the time of a change of presets.
    uint64_t width = 0;
    for (int preset = 0; preset < m_numPresets; ++preset)
        if (m_presets[static_cast<size_t>(preset)].subframeEnabled)
            width += minimumFrameWidth(preset, !m_syncStartsReadout);
    return std::max<uint64_t>(width, m_readout.presetSwitchClocks());
}

std::vector<double> Sensor::superframeRates() const { return toHertz(offeredWidths(minimumSuperframeWidth())); }

int Sensor::superframeRateIndex() const { return indexOf(offeredWidths(minimumSuperframeWidth()), m_superframeWidth); }

Status Sensor::setSuperframeRateIndex(int index)
{
    const auto widths = offeredWidths(minimumSuperframeWidth());
    if (framesAreHeld() || index < 0 || index >= static_cast<int>(widths.size()))
        return Refused;
    m_superframeWidth = widths[static_cast<size_t>(index)];
    return Ok;
}

uint64_t Sensor::superframeWidth() const { return std::max(m_superframeWidth, minimumSuperframeWidth()); }

double Sensor::superframeRate() const { return double(m_clockFrequency) / double(superframeWidth()); }

Status Sensor::setSuperframeRate(double hertz)
{
    if (framesAreHeld() || !(hertz > 0.0))
        return Refused;
    m_superframeWidth = nearestWidth(hertz, minimumSuperframeWidth());
    return Ok;
}

Status Sensor::gigEPreset(uint8_t &preset) const
{
    if (!hasGigEPreset())
        return Absent;
    preset = static_cast<uint8_t>(m_gigEPreset);
    return Ok;
}

Status Sensor::setGigEPreset(int preset) { return hasGigEPreset() ? assign(m_gigEPreset, preset) : Absent; }

bool Sensor::hasGigEPreset() const { return camera().capabilities().value(u"hasGigEPreset"_s).toBool(); }

void Sensor::expose(int preset, image::Exposure &exposure) const
{
    const Window &window = m_geometry.window();
    exposure.window = {window.x, window.y, window.width, window.height};
    double milliseconds = 0;
    if (integrationTime(preset, milliseconds) == Ok)
        exposure.readout.integrationTime = milliseconds;
    exposure.readout.reducedNoise = m_reduceNoise;
    // A camera with a cooler changes this.
    exposure.readout.cooling = image::Readout::Uncooled;
    m_array.expose(exposure);
}

} // namespace emulator
