#include "platform/emulator/image/Font.h"
#include "tests/support/Test.h"

#include <algorithm>
#include <set>
#include <string>

using emulator::image::Font;

/// The font of the video overlay.
class tst_imageFont : public Test
{
    Q_OBJECT

private slots:
    void everyCharacterHasItsOwnGlyph();
    void otherCharactersAreQuestionMarks();
    void glyphsAreInTheirCells();

private:
    static std::string characters()
    {
        std::string list;
        for (char character = ' '; character <= '~'; ++character)
            list += character;
        return list + '\xB0';
    }
    static const Font::Glyph &glyph(char character) { return Font::glyph(static_cast<unsigned char>(character)); }
    static bool isEmpty(const Font::Glyph &glyph)
    {
        return std::ranges::all_of(glyph, [](uint8_t row) { return row == 0; });
    }
    /// The first and the last row with a pixel.
    static std::pair<int, int> rows(char character)
    {
        const Font::Glyph &glyph = tst_imageFont::glyph(character);
        const auto hasPixels = [](uint8_t row) { return row != 0; };
        const auto first = std::ranges::find_if(glyph, hasPixels) - glyph.begin();
        const auto last = glyph.rend() - std::find_if(glyph.rbegin(), glyph.rend(), hasPixels) - 1;
        return {static_cast<int>(first), static_cast<int>(last)};
    }
};

void tst_imageFont::everyCharacterHasItsOwnGlyph()
{
    std::set<Font::Glyph> glyphs;
    for (const char character : characters()) {
        QCOMPARE(isEmpty(glyph(character)), character == ' ');
        QVERIFY2(glyphs.insert(glyph(character)).second, std::string(1, character).c_str());
    }
    QCOMPARE(glyphs.size(), size_t(96));
}

void tst_imageFont::otherCharactersAreQuestionMarks()
{
    for (const char character : {'\0', '\n', '\x1F', '\x7F', '\xAF', '\xB1', '\xFF'})
        QVERIFY(glyph(character) == glyph('?'));
}

void tst_imageFont::glyphsAreInTheirCells()
{
    // Capitals and digits are on one line. No row is lost at the top or below: parentheses are the highest characters,
    // and they are as wide above the middle as below it.
    const int baseline = rows('E').second;
    const int top = rows('E').first;
    QVERIFY(top >= 1 && baseline >= top + 8 && baseline <= Font::height - 3);
    for (const char character : std::string("ABCDEFGHIKLMNOPRSTUVWXYZ0123456789")) {
        QCOMPARE(rows(character).second, baseline);
        QVERIFY(std::abs(rows(character).first - top) <= 1);
    }
    for (const char character : std::string("gjpqy"))
        QVERIFY(rows(character).second > baseline);
    // The degree sign is a small ring at the top.
    QVERIFY(rows('\xB0').second < (top + baseline) / 2 + 1);
    // Characters do not touch their right neighbours.
    for (const char character : std::string("HINOU08"))
        QVERIFY(std::ranges::all_of(glyph(character), [](uint8_t row) { return (row & 1) == 0; }));
    // Symmetric characters are symmetric: no column is missing.
    for (const char character : std::string("HOTUVY8|"))
        for (const uint8_t row : glyph(character)) {
            int first = 8, last = -1;
            for (int column = 0; column < Font::width; ++column)
                if ((row >> (Font::width - 1 - column)) & 1) {
                    first = std::min(first, column);
                    last = std::max(last, column);
                }
            if (last >= 0)
                QVERIFY(std::abs((first + last) - 7) <= 1);
        }
}

ZVT_TEST(tst_imageFont)
#include "tst_imageFont.moc"
