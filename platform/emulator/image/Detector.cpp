#include "platform/emulator/image/Detector.h"

#include "platform/emulator/image/Light.h"
#include "platform/emulator/image/RowReader.h"
#include "platform/emulator/image/geometry.h"
#include "platform/emulator/image/hashes.h"
#include "platform/emulator/image/limits.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>
#include <utility>

namespace emulator::image
{

namespace
{

constexpr double referenceCaseCelsius = 25;
constexpr double coldestCase = -100;
constexpr double hottestCase = 150;
constexpr double electronsPerCount = 467;
// More than saturates any pixel, but less than the signal at which the curvature would darken it again.
constexpr float maximumSignal = 3;

constexpr uint16_t deadCount = 300;
constexpr int twinkleCounts = 420;
constexpr float weakGain = 0.6f;
constexpr float strongGain = 1.8f;

// The differences of a pixel, each from a hash of its own. A column has one of its own, too.
enum Difference : uint64_t { Gain, Offset, Curvature, Drift, Faulty, Differences };
constexpr uint64_t columnKey = uint64_t(1) << 40;

uint64_t hashOf(uint64_t key, int x, int y, Difference difference)
{
    const uint64_t coordinate = uint64_t(static_cast<uint32_t>(y)) << 16 | static_cast<uint32_t>(x);
    return mixed(key + (coordinate * Differences + difference) * hashStep);
}

/// Whether a twinkling pixel is bright in a frame. It is bright for 2 to 20 frames and then normal for 2 to 20 frames.
bool twinkles(uint64_t key, const Detector::Fault &fault, uint64_t number)
{
    constexpr uint64_t cycle = 22;
    constexpr uint64_t shortest = 2;
    const uint64_t hash = hashOf(key, fault.x, fault.y, Faulty);
    const uint64_t shifted = number + hash % cycle;
    return shifted % cycle < shortest + mixed(hash + shifted / cycle) % (cycle - 2 * shortest + 1);
}

/// The fault of a pixel, if it has one. Twinkling with any onset is one.
std::optional<Detector::Fault> faultOf(const Detector::Properties &properties, uint64_t key, int x, int y)
{
    // The upper half of the hash as a number below a million.
    const uint64_t place = (hashOf(key, x, y, Faulty) >> 32) * 1'000'000 >> 32;
    uint64_t end = 0;
    const uint32_t rates[] = {properties.dead, properties.hot, properties.weak, properties.strong};
    for (size_t kind = 0; kind < std::size(rates); ++kind)
        if (end += rates[kind]; place < end)
            return Detector::Fault{x, y, static_cast<Detector::Fault::Kind>(kind)};
    if (properties.twinkling == 0)
        return std::nullopt;
    const float onset = static_cast<float>(place - end) / static_cast<float>(properties.twinkling);
    if (onset >= static_cast<float>(Voltages::maximumTwinkling))
        return std::nullopt;
    return Detector::Fault{x, y, Detector::Fault::Twinkling, onset};
}

/// Whether a pixel has its fault with the start value of the bias, too.
bool isAtStart(const Detector::Fault &fault) { return fault.onset < 1; }

/// Whether the count of a pixel does not depend on its light.
bool isFixed(const Detector::Fault &fault)
{
    return fault.kind == Detector::Fault::Dead || fault.kind == Detector::Fault::Hot;
}

/// What a pixel collects: the counts of its light and of its dark current.
float collected(const Detector::Conversion &by, const Detector::Maps &maps, float light, size_t i)
{
    float signal = maps.gain[i] * light * by.exposure - by.skimmed;
    signal = signal > 0 ? signal : 0;
    signal = signal < maximumSignal ? signal : maximumSignal;
    return static_cast<float>(Light::fullSignal) * signal * (1 - maps.curvature[i] * signal) + by.dark;
}

/// What it has without collecting anything.
float pedestal(const Detector::Conversion &by, const Detector::Maps &maps, size_t i)
{
    return maps.offset[i] + maps.drift[i] * by.kelvin + by.added;
}

} // namespace

Detector::Properties Detector::Properties::corrected() const
{
    Properties properties;
    properties.seed = seed;
    properties.offset = offset;
    properties.readNoise = readNoise;
    properties.reducedReadNoise = reducedReadNoise;
    for (float *const difference :
         {&properties.vignetting, &properties.gainDeviation, &properties.offsetDeviation, &properties.columnDeviation,
          &properties.curvature, &properties.curvatureDeviation, &properties.drift, &properties.driftDeviation,
          &properties.voltageDeviation, &properties.biasDeviation})
        *difference = 0;
    for (uint32_t *const faults :
         {&properties.dead, &properties.hot, &properties.weak, &properties.strong, &properties.twinkling})
        *faults = 0;
    return properties;
}

std::shared_ptr<const Detector> Detector::make(const Properties &properties, const Size &array, const Window &window)
{
    if (!window.hasFrames() || !Window{0, 0, array.width, array.height}.contains(window))
        return nullptr;
    return std::shared_ptr<const Detector>(new Detector(properties, array, window));
}

Detector::Detector(const Properties &properties, const Size &array, const Window &window)
    : m_properties(properties), m_key(mixed(properties.seed)), m_array(array), m_window(window)
{
    std::vector<float> columns;
    for (int x = window.x; x < window.x + window.width; ++x) {
        const uint64_t hash = mixed(m_key + (columnKey + static_cast<uint64_t>(x)) * hashStep);
        columns.push_back(properties.columnDeviation * standardNormal(hash));
    }
    for (std::vector<float> *const map : {&m_gain, &m_offset, &m_curvature, &m_drift, &m_voltage, &m_bias})
        map->reserve(static_cast<size_t>(window.pixels()));
    for (int y = 0; y < window.height; ++y)
        for (int x = 0; x < window.width; ++x)
            addPixel(window.x + x, window.y + y, columns[static_cast<size_t>(x)]);
}

void Detector::addPixel(int x, int y, float columnOffset)
{
    const Properties &p = m_properties;
    const auto normal = [&](Difference difference) { return standardNormal(hashOf(m_key, x, y, difference)); };
    const float q = squaredDistance(x, m_array.width, m_array) + squaredDistance(y, m_array.height, m_array);
    const float gain = (1 - p.vignetting * q) * (1 + p.gainDeviation * normal(Gain));
    m_gain.push_back(gain * addFault(x, y));
    m_offset.push_back(p.offset + p.offsetDeviation * normal(Offset) + columnOffset);
    m_curvature.push_back(p.curvature + p.curvatureDeviation * normal(Curvature));
    m_drift.push_back(p.drift + p.driftDeviation * normal(Drift));
    // These have a key of their own, so that the ones above stay what they are.
    const NormalPair further = standardNormals(hashOf(~m_key, x, y, Gain));
    m_voltage.push_back(p.voltageDeviation * further.first);
    m_bias.push_back(p.biasDeviation * further.second);
    m_extremes.gain = std::max(m_extremes.gain, gain);
    m_extremes.offset = std::max(m_extremes.offset, m_offset.back());
    m_extremes.curvature = std::min(m_extremes.curvature, m_curvature.back());
    m_extremes.drift = std::max(m_extremes.drift, std::abs(m_drift.back()));
    m_extremes.voltage = std::max(m_extremes.voltage, std::abs(m_voltage.back()));
    m_extremes.bias = std::max(m_extremes.bias, std::abs(m_bias.back()));
}

/// Adds the fault of a pixel, if it has one. Returns the factor of the pixel's gain.
float Detector::addFault(int x, int y)
{
    const auto fault = faultOf(m_properties, m_key, x, y);
    if (!fault)
        return 1;
    (isAtStart(*fault) ? m_faults : m_unsteady).push_back(*fault);
    return fault->kind == Fault::Weak ? weakGain : fault->kind == Fault::Strong ? strongGain : 1;
}

std::vector<Detector::Fault> Detector::findFaults(const Properties &properties, const Window &window)
{
    const uint64_t key = mixed(properties.seed);
    std::vector<Fault> faults;
    for (int y = window.y; y < window.y + window.height; ++y)
        for (int x = window.x; x < window.x + window.width; ++x)
            if (const auto fault = faultOf(properties, key, x, y); fault && isAtStart(*fault))
                faults.push_back(*fault);
    return faults;
}

Detector::RowReader::RowReader(const Detector &detector, const Readout &readout, uint64_t number)
    : m_detector(detector), m_number(number), m_key(mixed(detector.m_properties.seed + hashStep) + number * hashStep)
{
    constexpr double longestExposure = 1e6; // In saturating times.
    constexpr double shortestTime = 1e-6; // Milliseconds.
    constexpr double longestTime = 1e9;
    const Properties &properties = detector.m_properties;
    const double exposure = within(
        0, readout.integrationTime / within(shortestTime, readout.saturatingTime, longestTime), longestExposure);
    const Voltages &voltages = readout.voltages;
    m_conversion.exposure = static_cast<float>(exposure * readout.gain() * voltages.response());
    m_conversion.skimmed = static_cast<float>(voltages.skimmedCounts(readout.integrationTime) / Light::fullSignal);
    m_conversion.kelvin
        = static_cast<float>(within(coldestCase, readout.caseCelsius, hottestCase) - referenceCaseCelsius);
    m_conversion.dark = static_cast<float>(readout.dark());
    m_conversion.added = static_cast<float>(readout.addedCounts());
    m_conversion.volts = static_cast<float>(voltages.addedVolts());
    m_conversion.excess = static_cast<float>(voltages.excess());
    if (!readout.noise)
        return;
    const float readNoise = (readout.reducedNoise ? properties.reducedReadNoise : properties.readNoise)
        * static_cast<float>(voltages.readNoise() * within(1, readout.clockNoise, Readout::maximumClockNoise));
    m_conversion.readVariance = readNoise * readNoise;
    m_conversion.variancePerCount = static_cast<float>(readout.gain() / electronsPerCount);
    m_conversion.twinkling = static_cast<float>(voltages.twinkling());
}

Detector::Maps Detector::mapsAt(int x, int y) const
{
    const auto first = static_cast<size_t>(y - m_window.y) * static_cast<size_t>(m_window.width)
        + static_cast<size_t>(x - m_window.x);
    return {m_gain.data() + first,  m_offset.data() + first,  m_curvature.data() + first,
            m_drift.data() + first, m_voltage.data() + first, m_bias.data() + first};
}

std::span<const Detector::Fault> Detector::partOf(const std::vector<Fault> &faults, int x, int y, size_t count)
{
    const auto isBefore
        = [](const Fault &fault, const std::pair<int, int> &place) { return std::pair(fault.y, fault.x) < place; };
    const auto first = std::lower_bound(faults.begin(), faults.end(), std::pair(y, x), isBefore);
    const auto end = std::lower_bound(first, faults.end(), std::pair(y, x + static_cast<int>(count)), isBefore);
    return {first, end};
}

Detector::Maps Detector::RowReader::mapsAt(int x, int y, size_t count)
{
    Maps maps = m_detector.mapsAt(x, y);
    const float volts = m_conversion.volts;
    const float excess = m_conversion.excess;
    if (volts == 0 && excess == 0)
        return maps;
    m_gain.resize(count);
    m_offset.resize(count);
    for (size_t i = 0; i < count; ++i) {
        m_gain[i] = maps.gain[i] * (1 + excess * maps.bias[i]);
        m_offset[i] = maps.offset[i] + volts * maps.voltage[i];
    }
    maps.gain = m_gain.data();
    maps.offset = m_offset.data();
    return maps;
}

void Detector::RowReader::read(int x, int y, std::span<const float> light, std::span<uint16_t> counts)
{
    makeNoise(x, y, light.size());
    const Maps maps = mapsAt(x, y, light.size());
    const Conversion by = m_conversion;
    const float *const noise = m_noise.data() + x % 2;
    for (size_t i = 0; i < light.size(); ++i) {
        const float signal = collected(by, maps, light[i], i);
        const float deviation = std::sqrt(by.readVariance + signal * by.variancePerCount);
        counts[i] = toCount(pedestal(by, maps, i) + signal + noise[i] * deviation);
    }
    for (const Fault &fault : partOf(m_detector.m_faults, x, y, counts.size())) {
        uint16_t &count = counts[static_cast<size_t>(fault.x - x)];
        if (fault.kind == Fault::Dead)
            count = deadCount;
        else if (fault.kind == Fault::Hot)
            count = maximumCount;
        else if (fault.kind == Fault::Twinkling)
            twinkle(fault, count);
    }
    if (m_conversion.twinkling > 1)
        for (const Fault &fault : partOf(m_detector.m_unsteady, x, y, counts.size()))
            twinkle(fault, counts[static_cast<size_t>(fault.x - x)]);
}

void Detector::RowReader::twinkle(const Fault &fault, uint16_t &count) const
{
    if (fault.onset < m_conversion.twinkling && twinkles(m_detector.m_key, fault, m_number))
        count = static_cast<uint16_t>(std::min(count + twinkleCounts, int(maximumCount)));
}

size_t Detector::RowReader::countAtLeast(int x, int y, std::span<const float> light, uint16_t threshold)
{
    const Maps maps = mapsAt(x, y, light.size());
    const Conversion by = m_conversion;
    const float limit = float(threshold) - 0.5f;
    const auto reaches
        = [&](size_t i) { return static_cast<int>(pedestal(by, maps, i) + collected(by, maps, light[i], i) >= limit); };
    int pixels = 0;
    for (size_t i = 0; i < light.size(); ++i)
        pixels += reaches(i);
    for (const Fault &fault : partOf(m_detector.m_faults, x, y, light.size()))
        if (isFixed(fault))
            pixels -= reaches(static_cast<size_t>(fault.x - x));
    return static_cast<size_t>(pixels) + countFixedAtLeast(x, y, light.size(), threshold);
}

size_t Detector::RowReader::countFixedAtLeast(int x, int y, size_t count, uint16_t threshold) const
{
    const auto reaches = [threshold](const Fault &fault) {
        return isFixed(fault) && (fault.kind == Fault::Hot ? maximumCount : deadCount) >= threshold;
    };
    return static_cast<size_t>(std::ranges::count_if(partOf(m_detector.m_faults, x, y, count), reaches));
}

bool Detector::RowReader::mayReach(int x, int y, size_t count, float light, uint16_t threshold) const
{
    constexpr float rounding = 1; // Counts.
    const auto isStrong = [](const Fault &fault) { return fault.kind == Fault::Strong; };
    const bool hasStrong = std::ranges::any_of(partOf(m_detector.m_faults, x, y, count), isStrong);
    const Extremes &e = m_detector.m_extremes;
    Conversion by = m_conversion;
    by.kelvin = std::abs(by.kelvin);
    const float gain = e.gain * (hasStrong ? strongGain : 1.0f) * (1 + std::abs(by.excess) * e.bias);
    const float offset = e.offset + std::abs(by.volts) * e.voltage;
    const Maps maps{&gain, &offset, &e.curvature, &e.drift, &e.voltage, &e.bias};
    return pedestal(by, maps, 0) + collected(by, maps, light, 0) + rounding >= float(threshold) - 0.5f;
}

void Detector::RowReader::makeNoise(int x, int y, size_t count)
{
    // A hash makes the noise of two neighbours.
    const auto odd = static_cast<size_t>(x % 2);
    const size_t pairs = (odd + count + 1) / 2;
    m_noise.resize(2 * pairs);
    uint64_t input = mixed(m_key + static_cast<uint64_t>(y)) + static_cast<uint64_t>(x / 2) * hashStep;
    for (size_t pair = 0; pair < pairs; ++pair, input += hashStep) {
        const NormalPair noise = standardNormals(mixed(input));
        m_noise[2 * pair] = noise.first;
        m_noise[2 * pair + 1] = noise.second;
    }
}

} // namespace emulator::image
