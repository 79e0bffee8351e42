#include "platform/emulator/image/Font.h"

namespace emulator::image
{

const Font::Glyph &Font::glyph(unsigned char character)
{
    if (character == degree)
        return glyphs.back();
    const bool known = character >= first && character <= last;
    return glyphs[static_cast<size_t>((known ? character : '?') - first)];
}

} // namespace emulator::image
