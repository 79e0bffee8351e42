#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace emulator::image
{

/// The font of the overlay: ASCII from 32 to 126 and the degree sign, in Latin-1. All glyphs have the same size. A tool
/// of the build (platform/font) makes the table from an installed font.
class Font
{
public:
    static constexpr int width = 8;
    static constexpr int height = 16;

    /// A byte for each row, from top to bottom. The highest bit is the leftmost pixel.
    using Glyph = std::array<uint8_t, height>;

    /// The glyph of a Latin-1 character; that of a question mark if the font lacks the character.
    static const Glyph &glyph(unsigned char character);

private:
    static constexpr unsigned char first = 32;
    static constexpr unsigned char last = 126;
    static constexpr unsigned char degree = 0xB0;

    static constexpr size_t glyphCount = last - first + 2;

    /// The characters from first to last, then the degree sign.
    static const std::array<Glyph, glyphCount> glyphs;
};

} // namespace emulator::image
