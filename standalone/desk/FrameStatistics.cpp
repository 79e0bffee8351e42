#include "standalone/desk/FrameStatistics.h"

#include "platform/emulator/image/limits.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace
{

double deviation(double sum, double squares, double pixels)
{
    const double mean = sum / pixels;
    return std::sqrt(std::max(squares / pixels - mean * mean, 0.0));
}

double temporalNoiseOf(std::span<const uint16_t> frame, std::span<const uint16_t> before)
{
    int64_t sum = 0;
    uint64_t squares = 0;
    for (size_t i = 0; i < frame.size(); ++i) {
        const int difference = int(frame[i]) - int(before[i]);
        sum += difference;
        squares += static_cast<uint32_t>(difference * difference);
    }
    return deviation(double(sum), double(squares), double(frame.size())) / std::sqrt(2.0);
}

} // namespace

FrameStatistics FrameStatistics::of(std::span<const uint16_t> frame, std::span<const uint16_t> before)
{
    FrameStatistics statistics;
    statistics.histogram.resize(emulator::image::maximumCount + 1);
    for (const uint16_t count : frame)
        ++statistics.histogram[count];
    if (frame.empty())
        return statistics;
    uint64_t sum = 0;
    uint64_t squares = 0;
    statistics.lowest = emulator::image::maximumCount;
    for (uint64_t count = 0; count < statistics.histogram.size(); ++count) {
        const uint64_t pixels = statistics.histogram[count];
        if (pixels == 0)
            continue;
        statistics.lowest = std::min(statistics.lowest, static_cast<uint16_t>(count));
        statistics.highest = static_cast<uint16_t>(count);
        sum += pixels * count;
        squares += pixels * count * count;
    }
    const auto pixels = double(frame.size());
    statistics.mean = double(sum) / pixels;
    statistics.spatialNoise = deviation(double(sum), double(squares), pixels);
    if (frame.size() == before.size())
        statistics.temporalNoise = temporalNoiseOf(frame, before);
    return statistics;
}

uint16_t FrameStatistics::countAt(int thousandths) const
{
    constexpr uint64_t whole = 1000;
    const uint64_t wanted = pixels() * static_cast<uint64_t>(thousandths);
    uint64_t sum = 0;
    for (uint16_t count = lowest; count < highest; ++count) {
        sum += histogram[count];
        if (sum * whole > wanted)
            return count;
    }
    return highest;
}

size_t FrameStatistics::pixels() const { return std::accumulate(histogram.begin(), histogram.end(), size_t{0}); }
