#include "platform/emulator/image/Statistics.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace emulator::image
{

Statistics::Statistics(size_t pixels, std::vector<uint8_t> excluded)
    : m_excluded(std::move(excluded)), m_sums(pixels), m_squares(pixels)
{
    if (!m_excluded.empty())
        m_excluded.resize(pixels);
}

void Statistics::add(std::span<const uint16_t> frame)
{
    if (frame.size() != m_sums.size())
        return;
    ++m_frames;
    for (size_t i = 0; i < frame.size(); ++i) {
        const uint64_t count = frame[i];
        m_sums[i] += count;
        m_squares[i] += count * count;
    }
}

size_t Statistics::countedPixels() const
{
    return m_sums.size() - static_cast<size_t>(std::ranges::count_if(m_excluded, [](uint8_t value) { return value; }));
}

double Statistics::mean() const
{
    uint64_t sum = 0;
    for (size_t i = 0; i < m_sums.size(); ++i)
        if (counts(i))
            sum += m_sums[i];
    const double values = double(countedPixels()) * m_frames;
    return values > 0 ? double(sum) / values : 0;
}

double Statistics::spatialDeviation() const
{
    const double middle = mean();
    double squares = 0;
    for (size_t i = 0; i < m_sums.size() && m_frames > 0; ++i)
        if (counts(i)) {
            const double difference = double(m_sums[i]) / m_frames - middle;
            squares += difference * difference;
        }
    const auto pixels = double(countedPixels());
    return pixels > 0 ? std::sqrt(squares / pixels) : 0;
}

double Statistics::temporalDeviation() const
{
    const auto pixels = double(countedPixels());
    if (m_frames < 2 || pixels == 0)
        return 0;
    double variances = 0;
    for (size_t i = 0; i < m_sums.size(); ++i)
        if (counts(i)) {
            const double sum = double(m_sums[i]);
            variances += (double(m_squares[i]) - sum * sum / m_frames) / (m_frames - 1);
        }
    return std::sqrt(std::max(variances, 0.0) / pixels);
}

size_t Statistics::countAtLeast(std::span<const uint16_t> frame, uint16_t threshold)
{
    return static_cast<size_t>(
        std::ranges::count_if(frame, [threshold](uint16_t count) { return count >= threshold; }));
}

double Statistics::focusMeasure(std::span<const uint16_t> frame, size_t width)
{
    if (width == 0 || frame.empty() || frame.size() % width != 0)
        return 0;
    uint64_t squares = 0;
    uint64_t differences = 0;
    const auto addDifference = [&](int first, int second) {
        squares += static_cast<uint64_t>(int64_t(first - second) * (first - second));
        ++differences;
    };
    for (size_t row = 0; row < frame.size(); row += width)
        for (size_t i = row; i < row + width; ++i) {
            if (i > row)
                addDifference(frame[i], frame[i - 1]);
            if (row > 0)
                addDifference(frame[i], frame[i - width]);
        }
    return differences > 0 ? double(squares) / double(differences) : 0;
}

} // namespace emulator::image
