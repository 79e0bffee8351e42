#include "platform/emulator/image/makeCorrection.h"

#include "platform/emulator/image/Detector.h"
#include "platform/emulator/image/FrameCollector.h"
#include "platform/emulator/image/hashes.h"

#include <cmath>
#include <utility>

namespace emulator::image
{

namespace
{

using Kind = uint32_t BadPixelCounts::*;

/// The mean of a value of all pixels that are not bad. Not a number if all of them are bad.
template <class Value> double meanOfGood(const std::vector<uint8_t> &flags, const Value &value)
{
    double sum = 0;
    double pixels = 0;
    for (size_t i = 0; i < flags.size(); ++i)
        if ((flags[i] & CorrectionTable::Bad) == 0) {
            sum += value(i);
            ++pixels;
        }
    return sum / pixels;
}

bool fitTogether(const FrameCollector &first, const FrameCollector &second)
{
    const Exposure &one = first.exposure();
    const Exposure &other = second.exposure();
    return second.frames() > 0 && one.window == other.window && one.optics.mirrored == other.optics.mirrored
        && one.optics.inverted == other.optics.inverted;
}

/// Marks the bad pixels of a correction and counts them.
class BadPixels
{
public:
    BadPixels(size_t pixels, const Judgement &judgement) : m_judgement(judgement), m_flags(pixels)
    {
        for (size_t i = 0; i < pixels; ++i)
            judge(i, judgement.useFactoryList && isInList(i), &BadPixelCounts::factory);
    }

    const std::vector<uint8_t> &flags() const { return m_flags; }

    void judgeCounts(const FrameCollector &source, Kind aboveMaximum, Kind belowMinimum)
    {
        const BadPixelLimits &limits = m_judgement.limits;
        for (size_t i = 0; i < m_flags.size() && limits.detect; ++i) {
            judge(i, source.mean(i) > limits.adMax, aboveMaximum);
            judge(i, source.mean(i) < limits.adMin, belowMinimum);
        }
    }

    void judgeTwinkling(const FrameCollector &source)
    {
        for (size_t i = 0; i < m_flags.size() && m_judgement.limits.twinklers; ++i)
            judge(i, source.maxima()[i] - source.minima()[i] > m_judgement.limits.twinklerDelta,
                  &BadPixelCounts::twinkling, CorrectionTable::Twinkling);
    }

    /// Pixels that are bad already do not count in the mean response.
    template <class Response> void judgeResponses(const Response &response)
    {
        const BadPixelLimits &limits = m_judgement.limits;
        const double mean = meanOfGood(m_flags, response);
        for (size_t i = 0; i < m_flags.size() && limits.detect; ++i) {
            judge(i, response(i) / mean > double(limits.gainMax), &BadPixelCounts::aboveGainMax);
            judge(i, response(i) / mean < double(limits.gainMin), &BadPixelCounts::belowGainMin);
        }
    }

    /// Completes the table, which has its window, gains and offsets.
    MadeCorrection finish(CorrectionTable table)
    {
        for (size_t i = 0; i < m_flags.size(); ++i)
            if ((m_flags[i] & CorrectionTable::Bad) != 0) {
                ++m_counts.total;
                if (isInList(i))
                    m_flags[i] |= CorrectionTable::Factory;
                else
                    ++m_counts.newlyBad;
            }
        table.flags = std::move(m_flags);
        return {std::move(table), m_counts};
    }

private:
    bool isInList(size_t pixel) const
    {
        return pixel < m_judgement.factoryList.size() && m_judgement.factoryList[pixel] != 0;
    }

    void judge(size_t pixel, bool isBad, Kind kind, uint8_t flags = 0)
    {
        if (!isBad)
            return;
        m_flags[pixel] |= static_cast<uint8_t>(CorrectionTable::Bad | flags);
        ++(m_counts.*kind);
    }

    const Judgement &m_judgement;
    std::vector<uint8_t> m_flags;
    BadPixelCounts m_counts;
};

} // namespace

BadPixelCounts countFlags(const std::vector<uint8_t> &flags, BadPixelCounts counts)
{
    // Without conditions, so that the compiler vectorizes the loop.
    uint32_t bad = 0;
    uint32_t twinkling = 0;
    uint32_t factory = 0;
    for (const uint8_t pixel : flags) {
        constexpr uint8_t badTwinkling = CorrectionTable::Bad | CorrectionTable::Twinkling;
        constexpr uint8_t badFactory = CorrectionTable::Bad | CorrectionTable::Factory;
        bad += (pixel & CorrectionTable::Bad) == CorrectionTable::Bad ? 1 : 0;
        twinkling += (pixel & badTwinkling) == badTwinkling ? 1 : 0;
        factory += (pixel & badFactory) == badFactory ? 1 : 0;
    }
    counts.total = bad;
    counts.twinkling = twinkling;
    counts.factory = factory;
    counts.newlyBad = bad - factory;
    return counts;
}

std::vector<uint8_t> factoryList(const Exposure &exposure)
{
    if (!exposure.detector || !exposure.window.hasFrames())
        return {};
    return factoryList(exposure.detector->faults(), exposure.window).forFrames(exposure.window, exposure.optics);
}

BadPixelMap factoryList(std::span<const Detector::Fault> faults, const Window &window)
{
    constexpr uint64_t key = 0x666163746f7279;
    constexpr uint64_t inList = 4; // Of five faults.
    BadPixelMap list{window};
    for (const Detector::Fault &fault : faults) {
        const uint64_t coordinate = uint64_t(static_cast<uint32_t>(fault.y)) << 16 | static_cast<uint32_t>(fault.x);
        if (window.contains({fault.x, fault.y, 1, 1}) && mixed(key + coordinate * hashStep) % 5 < inList)
            list.isBad[Place{fault.x - window.x, fault.y - window.y}.indexIn(window.width)] = 1;
    }
    return list;
}

std::optional<MadeCorrection> makeOnePoint(const FrameCollector &source, const Judgement &judgement)
{
    BadPixels bad(source.pixels(), judgement);
    bad.judgeCounts(source, &BadPixelCounts::aboveAdMaxSource1, &BadPixelCounts::belowAdMinSource1);
    const double mean = meanOfGood(bad.flags(), [&](size_t i) { return source.mean(i); });
    if (std::isnan(mean))
        return std::nullopt;
    std::vector<float> offsets(source.pixels());
    for (size_t i = 0; i < source.pixels(); ++i)
        offsets[i] = static_cast<float>(mean - source.mean(i));
    return bad.finish({source.exposure().window, std::vector<float>(source.pixels(), 1), std::move(offsets), {}});
}

std::optional<MadeCorrection> makeTwoPoint(const FrameCollector &first, const FrameCollector &second,
                                           const FrameCollector *twinkling, const Judgement &judgement)
{
    if (first.frames() == 0 || !fitTogether(first, second) || (twinkling && !fitTogether(first, *twinkling)))
        return std::nullopt;
    const auto response = [&](size_t i) { return second.mean(i) - first.mean(i); };
    BadPixels bad(first.pixels(), judgement);
    bad.judgeCounts(first, &BadPixelCounts::aboveAdMaxSource1, &BadPixelCounts::belowAdMinSource1);
    bad.judgeCounts(second, &BadPixelCounts::aboveAdMaxSource2, &BadPixelCounts::belowAdMinSource2);
    if (twinkling)
        bad.judgeTwinkling(*twinkling);
    bad.judgeResponses(response);
    const double meanResponse = meanOfGood(bad.flags(), response);
    // Also refuses a mean that is not a number.
    if (!(std::abs(meanResponse) >= leastSourceDifference))
        return std::nullopt;
    const double mean = meanOfGood(bad.flags(), [&](size_t i) { return first.mean(i); });
    std::vector<float> gains(first.pixels());
    std::vector<float> offsets(first.pixels());
    for (size_t i = 0; i < first.pixels(); ++i) {
        const bool responds = response(i) != 0;
        const double gain = responds ? meanResponse / response(i) : 1;
        gains[i] = static_cast<float>(gain);
        offsets[i] = responds ? static_cast<float>(mean - gain * first.mean(i)) : 0;
    }
    return bad.finish({first.exposure().window, std::move(gains), std::move(offsets), {}});
}

std::optional<MadeCorrection> updateOffsets(const CorrectionTable &old, const FrameCollector &source)
{
    const Window &window = source.exposure().window;
    const CorrectionTable part = old.partFor(window, source.exposure().optics);
    const auto first = old.placeOf(window, source.exposure().optics);
    if (source.frames() == 0 || !part.isComplete() || !first)
        return std::nullopt;
    const auto amplified = [&](size_t i) { return double(part.gains[i]) * source.mean(i); };
    const double mean = meanOfGood(part.flags, [&](size_t i) { return amplified(i) + double(part.offsets[i]); });
    if (std::isnan(mean))
        return std::nullopt;
    std::vector<float> offsets = old.offsets.values();
    size_t pixel = 0;
    for (int y = 0; y < window.height; ++y) {
        const size_t row = Place{first->x, first->y + y}.indexIn(old.window.width);
        for (size_t i = row; i < row + static_cast<size_t>(window.width); ++i, ++pixel)
            offsets[i] = static_cast<float>(mean - amplified(pixel));
    }
    return MadeCorrection{{old.window, old.gains, std::move(offsets), old.flags}, countFlags(old.flags)};
}

Exposure flatField(Exposure exposure, double celsius)
{
    const Exposure fresh;
    exposure.scene = fresh.scene;
    exposure.scene.pattern = Scene::Area;
    exposure.scene.blackbody1 = celsius;
    const Optics optics = std::exchange(exposure.optics, fresh.optics);
    exposure.optics.mirrored = optics.mirrored;
    exposure.optics.inverted = optics.inverted;
    exposure.readout.voltages = {};
    exposure.readout.noise = false;
    exposure.readout.warmth = 0;
    exposure.readout.caseCelsius = fresh.readout.caseCelsius;
    return exposure;
}

} // namespace emulator::image
