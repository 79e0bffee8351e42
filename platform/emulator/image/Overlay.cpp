#include "platform/emulator/image/Overlay.h"

#include "platform/emulator/image/Font.h"
#include "platform/emulator/image/Picture.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string_view>

namespace emulator::image
{

namespace
{

constexpr int margin = 8;
constexpr int rowHeight = 18;

constexpr Palette makeOverlayPalette()
{
    constexpr uint8_t full = 255;
    constexpr std::array<Rgb, 8> basic{{{full, full, full},
                                        {full, 0, 0},
                                        {0, full, 0},
                                        {0, 0, full},
                                        {full, full, 0},
                                        {0, full, full},
                                        {full, 0, full},
                                        {128, 128, 128}}};
    constexpr size_t firstDark = 9;
    constexpr size_t firstOfCube = 16;
    constexpr size_t firstGrey = 232;
    constexpr size_t levels = 6;
    Palette palette{};
    std::copy(basic.begin(), basic.end(), palette.begin() + 1);
    const auto byte = [](size_t value) { return static_cast<uint8_t>(value); };
    for (size_t i = firstDark; i < firstOfCube; ++i) {
        const Rgb bright = basic[i - firstDark + 1];
        palette[i] = {byte((bright.red + 1) / 2), byte((bright.green + 1) / 2), byte((bright.blue + 1) / 2)};
    }
    for (size_t i = firstOfCube; i < firstGrey; ++i) {
        const size_t place = i - firstOfCube;
        const auto level = [=](size_t number) { return byte(number % levels * full / (levels - 1)); };
        palette[i] = {level(place / levels / levels), level(place / levels), level(place)};
    }
    for (size_t i = firstGrey; i < palette.size(); ++i) {
        const uint8_t grey = byte(8 + 10 * (i - firstGrey));
        palette[i] = {grey, grey, grey};
    }
    return palette;
}

constexpr Palette colors = makeOverlayPalette();

/// The pixels from `left` to `right` and `top` to `bottom`, both ends included.
struct Area {
    int left;
    int top;
    int right;
    int bottom;
};

/// Fills the part of an area that is inside the picture. Color 0 changes nothing.
void fill(const Area &area, uint8_t color, Picture &picture)
{
    if (color == 0)
        return;
    const Rgb rgb = colors[color];
    const int left = std::max(area.left, 0);
    const int right = std::min(area.right, picture.width - 1);
    const int bottom = std::min(area.bottom, picture.height - 1);
    for (int y = std::max(area.top, 0); y <= bottom; ++y) {
        uint8_t *pixel = picture.rgb.data() + (ptrdiff_t(y) * picture.width + left) * 3;
        for (int x = left; x <= right; ++x) {
            *pixel++ = rgb.red;
            *pixel++ = rgb.green;
            *pixel++ = rgb.blue;
        }
    }
}

/// Draws the pixels of a glyph, all of which are inside the picture.
void drawGlyph(const Font::Glyph &glyph, int x, int y, Rgb rgb, Picture &picture)
{
    constexpr unsigned leftmost = 1U << (Font::width - 1);
    const ptrdiff_t stride = ptrdiff_t(picture.width) * 3;
    uint8_t *row = picture.rgb.data() + y * stride + ptrdiff_t(x) * 3;
    for (const uint8_t bits : glyph) {
        for (int column = 0; column < Font::width; ++column) {
            if ((bits & (leftmost >> column)) == 0)
                continue;
            uint8_t *const pixel = row + ptrdiff_t(column) * 3;
            pixel[0] = rgb.red;
            pixel[1] = rgb.green;
            pixel[2] = rgb.blue;
        }
        row += stride;
    }
}

/// Draws those characters that end at or before the column `end`.
void drawText(std::string_view text, int x, int y, int end, const OverlayContent &content, Picture &picture)
{
    const auto fitting = static_cast<size_t>(std::max((end - x) / Font::width, 0));
    text = text.substr(0, fitting);
    const int width = static_cast<int>(text.size()) * Font::width;
    fill({x, y, x + width - 1, y + Font::height - 1}, content.textBackground, picture);
    if (content.textColor == 0)
        return;
    for (const char character : text) {
        drawGlyph(Font::glyph(static_cast<unsigned char>(character)), x, y, colors[content.textColor], picture);
        x += Font::width;
    }
}

void drawBox(const OverlayBox &box, Picture &picture)
{
    // Far outside of any raster, so that sums of these numbers stay in the range of an int.
    const auto pixel = [](double place) { return static_cast<int>(std::lround(std::clamp(place, -1e6, 1e6))); };
    const Area area{pixel(box.x), pixel(box.y), pixel(box.x + box.width) - 1, pixel(box.y + box.height) - 1};
    if (area.right < area.left || area.bottom < area.top)
        return;
    fill({area.left, area.top, area.right, area.top}, box.color, picture);
    fill({area.left, area.bottom, area.right, area.bottom}, box.color, picture);
    fill({area.left, area.top, area.left, area.bottom}, box.color, picture);
    fill({area.right, area.top, area.right, area.bottom}, box.color, picture);
}

} // namespace

const Palette &overlayPalette() { return colors; }

void drawOverlay(const OverlayContent &content, Picture &picture)
{
    for (const OverlayBox &box : content.boxes)
        drawBox(box, picture);
    const int forRows = picture.height - margin - Font::height;
    if (forRows < 0)
        return;
    const auto lastRow = static_cast<size_t>(forRows / rowHeight);
    const int middle = picture.width / 2;
    const auto top = [](size_t row) { return margin + static_cast<int>(row) * rowHeight; };
    const int leftEnd = content.lines.size() > lastRow ? middle : picture.width;
    const size_t lines = std::min(content.lines.size(), 2 * lastRow);
    for (size_t i = 0; i < lines; ++i) {
        if (i < lastRow)
            drawText(content.lines[i], margin, top(i), leftEnd, content, picture);
        else
            drawText(content.lines[i], middle, top(i - lastRow), picture.width, content, picture);
    }
    drawText(content.message, margin, top(lastRow), picture.width, content, picture);
}

} // namespace emulator::image
