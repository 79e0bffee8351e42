#include "platform/emulator/image/Raster.h"

#include "platform/emulator/image/limits.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <span>

namespace emulator::image
{

namespace
{

constexpr size_t bytesPerPixel = 3;

/// Weights of interpolation are 0 to this, a power of two.
constexpr uint32_t weightBits = 8;
constexpr uint32_t fullWeight = 1u << weightBits;

/// A pixel of the raster lies between two of the image, or on one.
struct Sample {
    uint32_t index; ///< Of the first of the two.
    uint32_t next; ///< Of the second one.
    uint32_t weight; ///< Of the second one, to fullWeight.
};

/// The pixels of the raster along one axis that show the image, and what they show.
struct Axis {
    size_t begin = 0;
    std::vector<Sample> samples;
};

/// `start` and `length` are those of the image on the raster.
Axis axisOf(int raster, int pixels, double start, double length, bool interpolated)
{
    Axis axis;
    const double scale = pixels / length;
    const auto last = static_cast<double>(pixels - 1);
    for (int i = 0; i < raster; ++i) {
        // The middle of the pixel, in pixels of the image.
        const double middle = (i + 0.5 - start) * scale;
        if (!(middle >= 0 && middle < pixels))
            continue;
        if (axis.samples.empty())
            axis.begin = static_cast<size_t>(i);
        const double place = interpolated ? within(0, middle - 0.5, last) : std::floor(middle);
        const auto index = static_cast<uint32_t>(place);
        const double weight = interpolated ? (place - index) * fullWeight : 0;
        axis.samples.push_back(
            {index, std::min(index + 1, static_cast<uint32_t>(pixels - 1)), static_cast<uint32_t>(weight)});
    }
    return axis;
}

/// Returns the level between two.
uint32_t between(uint32_t first, uint32_t second, uint32_t weight)
{
    return (first * (fullWeight - weight) + second * weight + fullWeight / 2) >> weightBits;
}

/// The colours with their bytes in the order of a picture, and a fourth byte.
using Colors = std::array<std::array<uint8_t, bytesPerPixel + 1>, 256>;

Colors colorsOf(const Palette &palette)
{
    Colors colors{};
    for (size_t level = 0; level < palette.size(); ++level)
        colors[level] = {palette[level].red, palette[level].green, palette[level].blue, 0};
    return colors;
}

/// Draws the rows of an image.
class Painter
{
public:
    Painter(const RasterPlace &place, Size image, const Palette &palette, Picture &picture)
        : m_place(place), m_width(static_cast<size_t>(image.width)), m_colors(colorsOf(palette)),
          m_columns(axisOf(place.raster.width, image.width, place.x, place.width, place.interpolated)),
          m_rows(axisOf(place.raster.height, image.height, place.y, place.height, place.interpolated)),
          m_picture(picture), m_between(m_width)
    {
    }

    void draw(const Fields &fields)
    {
        if (m_columns.samples.empty())
            return;
        for (size_t i = 0; i < m_rows.samples.size(); ++i) {
            const size_t y = m_rows.begin + i;
            drawRow(y, m_rows.samples[i], y % 2 != 0 && !fields.second.empty() ? fields.second : fields.first);
        }
    }

private:
    uint8_t *placeOf(size_t y)
    {
        const auto width = static_cast<size_t>(m_place.raster.width);
        return m_picture.rgb.data() + (y * width + m_columns.begin) * bytesPerPixel;
    }

    void drawRow(size_t y, const Sample &row, const std::vector<uint8_t> &levels)
    {
        uint8_t *const pixels = placeOf(y);
        const uint8_t *const first = levels.data() + row.index * m_width;
        if (!m_place.interpolated) {
            // Rows of an enlarged image repeat.
            if (first == m_drawn)
                std::memcpy(pixels, placeOf(y - 1), m_columns.samples.size() * bytesPerPixel);
            else
                drawNearest(first, pixels);
            m_drawn = first;
            return;
        }
        const uint8_t *const second = levels.data() + row.next * m_width;
        for (size_t x = 0; x < m_width; ++x)
            m_between[x] = static_cast<uint8_t>(between(first[x], second[x], row.weight));
        drawInterpolated(pixels);
    }

    void drawNearest(const uint8_t *levels, uint8_t *pixels) const
    {
        drawPixels(pixels, [levels](const Sample &column) { return levels[column.index]; });
    }

    void drawInterpolated(uint8_t *pixels) const
    {
        drawPixels(pixels, [this](const Sample &column) {
            return between(m_between[column.index], m_between[column.next], column.weight);
        });
    }

    template <class LevelOf> void drawPixels(uint8_t *pixels, const LevelOf &levelOf) const
    {
        const std::span all(m_columns.samples);
        // Four bytes at a time are faster than three. The next pixel replaces the fourth one.
        for (const Sample &column : all.first(all.size() - 1)) {
            const auto &color = m_colors[levelOf(column)];
            std::memcpy(pixels, color.data(), color.size());
            pixels += bytesPerPixel;
        }
        std::memcpy(pixels, m_colors[levelOf(all.back())].data(), bytesPerPixel);
    }

    const RasterPlace &m_place;
    const size_t m_width;
    const Colors m_colors;
    const Axis m_columns;
    const Axis m_rows;
    Picture &m_picture;
    std::vector<uint8_t> m_between; ///< A row between two rows of the image.
    const uint8_t *m_drawn = nullptr; ///< The row of the image that has been drawn last.
};

bool isComplete(const Fields &fields)
{
    const Window image{0, 0, fields.size.width, fields.size.height};
    const auto pixels = static_cast<size_t>(image.hasFrames() ? image.pixels() : 0);
    return pixels > 0 && fields.first.size() == pixels && (fields.second.empty() || fields.second.size() == pixels);
}

} // namespace

Picture drawRaster(const Fields &fields, const RasterPlace &place, const Palette &palette)
{
    const auto pixels = static_cast<size_t>(place.raster.width) * static_cast<size_t>(place.raster.height);
    Picture picture{place.raster.width, place.raster.height, std::vector<uint8_t>(pixels * bytesPerPixel)};
    if (isComplete(fields) && place.width > 0 && place.height > 0)
        Painter(place, fields.size, palette, picture).draw(fields);
    return picture;
}

} // namespace emulator::image
