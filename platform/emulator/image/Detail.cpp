#include "platform/emulator/image/Detail.h"

#include "platform/emulator/image/limits.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <vector>

namespace emulator::image
{

namespace
{

constexpr int reach = 2; ///< Pixels around a pixel in each direction.
constexpr size_t side = 2 * reach + 1;
constexpr int area = side * side;

/// The sums of the pixels around the pixels of a row. The rows of a frame are added one after the other.
class Surroundings
{
public:
    explicit Surroundings(size_t width) : m_padded(width + side - 1), m_sums(width)
    {
        m_rows.fill(std::vector<int32_t>(width));
    }

    /// Adds a row in place of the one that has been added five calls before.
    void add(std::span<const uint16_t> row)
    {
        const auto end = std::ranges::copy(row, m_padded.begin() + reach).out;
        std::fill_n(m_padded.begin(), reach, row.front());
        std::fill(end, m_padded.end(), row.back());
        std::rotate(m_rows.begin(), m_rows.begin() + 1, m_rows.end());
        int32_t *const across = m_rows.back().data();
        const uint16_t *const around = m_padded.data();
        for (size_t x = 0; x < m_sums.size(); ++x) {
            const int32_t sum = around[x] + around[x + 1] + around[x + 2] + around[x + 3] + around[x + 4];
            m_sums[x] += sum - across[x];
            across[x] = sum;
        }
    }

    /// The sum of `area` pixels around each pixel of the row that has been added two calls before the last one.
    std::span<const int32_t> sums() const { return m_sums; }

private:
    std::vector<uint16_t> m_padded; ///< A row, continued by its outermost pixels.
    std::array<std::vector<int32_t>, side> m_rows; ///< For each of the last rows, the sums across.
    std::vector<int32_t> m_sums;
};

} // namespace

void enhanceDetail(std::span<uint16_t> counts, Size size, uint8_t sharpness, uint32_t threshold)
{
    if (size.width <= 0 || size.height <= 0)
        return;
    const auto width = static_cast<size_t>(size.width);
    if (counts.size() != width * static_cast<size_t>(size.height))
        return;
    const auto row = [=](int y) { return counts.subspan(static_cast<size_t>(y) * width, width); };
    // All differences are `area` times as large, so that they are whole numbers.
    const auto least = static_cast<int32_t>(std::min<uint32_t>(threshold, maximumCount)) * area;
    const float excess = 0.5f * static_cast<float>(sharpness) / area;
    Surroundings surroundings(width);
    for (int y = -reach; y < size.height + reach; ++y) {
        surroundings.add(row(std::clamp(y, 0, size.height - 1)));
        if (y < reach)
            continue;
        const std::span<uint16_t> pixels = row(y - reach);
        const std::span<const int32_t> sums = surroundings.sums();
        for (size_t x = 0; x < width; ++x) {
            const int32_t difference = pixels[x] * area - sums[x];
            const int32_t detail = std::abs(difference) >= least ? difference : 0;
            pixels[x] = toCount(static_cast<float>(pixels[x]) + static_cast<float>(detail) * excess);
        }
    }
}

} // namespace emulator::image
