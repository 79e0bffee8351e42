#include "platform/emulator/image/Font.h"
#include "platform/emulator/image/Overlay.h"
#include "platform/emulator/image/Picture.h"
#include "tests/support/Test.h"

#include <QRect>

#include <algorithm>
#include <functional>

using namespace emulator::image;

/// The texts and frames of the overlay on a picture.
class tst_imageOverlay : public Test
{
    Q_OBJECT

private slots:
    void coloursHaveTheirNumbers();
    void aTextIsDrawnByItsGlyphs();
    void aBackgroundFillsTheCellsOfItsText();
    void transparentColoursChangeNothing();
    void linesFollowEachOtherDownwards();
    void theRightColumnFollowsTheLeftOne();
    void textsEndWithTheirColumn();
    void theMessageHasTheLastRow();
    void boxesAreFrames_data();
    void boxesAreFrames();
    void textsAreOverBoxes();
    void smallPicturesHaveNoRoomForTexts();

private:
    static constexpr Rgb ground{10, 20, 30};
    static constexpr int left = 8;
    static constexpr int top = 8;
    static constexpr int rowHeight = 18;

    static Picture pictureOf(int width, int height)
    {
        Picture picture{width, height, {}};
        for (int pixel = 0; pixel < width * height; ++pixel)
            picture.rgb.insert(picture.rgb.end(), {ground.red, ground.green, ground.blue});
        return picture;
    }
    static Picture drawn(const OverlayContent &content, int width = 320, int height = 240)
    {
        Picture picture = pictureOf(width, height);
        drawOverlay(content, picture);
        return picture;
    }
    static OverlayContent withLines(std::vector<std::string> lines)
    {
        return {.lines = std::move(lines), .message = {}, .boxes = {}, .textColor = 1, .textBackground = 0};
    }
    static OverlayContent withBox(const OverlayBox &box)
    {
        return {.lines = {}, .message = {}, .boxes = {box}, .textColor = 1, .textBackground = 0};
    }
    static Rgb at(const Picture &picture, int x, int y)
    {
        const uint8_t *pixel = picture.rgb.data() + (y * picture.width + x) * 3;
        return {pixel[0], pixel[1], pixel[2]};
    }
    static bool hasBit(char character, int x, int y)
    {
        return (Font::glyph(static_cast<unsigned char>(character))[size_t(y)] >> (Font::width - 1 - x)) & 1;
    }
    /// The smallest rectangle with all pixels that are not the ground.
    static QRect changed(const Picture &picture)
    {
        QRect area;
        for (int y = 0; y < picture.height; ++y)
            for (int x = 0; x < picture.width; ++x)
                if (at(picture, x, y) != ground)
                    area |= QRect(x, y, 1, 1);
        return area;
    }
    /// Compares each pixel with a colour that a function returns.
    static void compare(const Picture &picture, const std::function<Rgb(int, int)> &expected)
    {
        for (int y = 0; y < picture.height; ++y)
            for (int x = 0; x < picture.width; ++x)
                QVERIFY2(at(picture, x, y) == expected(x, y), qPrintable(QString("pixel %1, %2").arg(x).arg(y)));
    }
};

void tst_imageOverlay::coloursHaveTheirNumbers()
{
    const Palette &palette = overlayPalette();
    const std::vector<Rgb> basic{{255, 255, 255}, {255, 0, 0},   {0, 255, 0},     {0, 0, 255},   {255, 255, 0},
                                 {0, 255, 255},   {255, 0, 255}, {128, 128, 128}, {128, 0, 0},   {0, 128, 0},
                                 {0, 0, 128},     {128, 128, 0}, {0, 128, 128},   {128, 0, 128}, {64, 64, 64}};
    QVERIFY(std::equal(basic.begin(), basic.end(), palette.begin() + 1));
    QVERIFY(palette[16] == Rgb({0, 0, 0}));
    QVERIFY(palette[17] == Rgb({0, 0, 51}));
    QVERIFY(palette[22] == Rgb({0, 51, 0}));
    QVERIFY(palette[52] == Rgb({51, 0, 0}));
    QVERIFY(palette[231] == Rgb({255, 255, 255}));
    QVERIFY(palette[232] == Rgb({8, 8, 8}));
    QVERIFY(palette[255] == Rgb({238, 238, 238}));
}

void tst_imageOverlay::aTextIsDrawnByItsGlyphs()
{
    const std::string text = "FOC 6000 \xB0";
    const int end = left + int(text.size()) * Font::width;
    compare(drawn(withLines({text})), [&](int x, int y) {
        const bool inside = x >= left && x < end && y >= top && y < top + Font::height;
        const bool set = inside && hasBit(text[size_t((x - left) / Font::width)], (x - left) % Font::width, y - top);
        return set ? overlayPalette()[1] : ground;
    });
}

void tst_imageOverlay::aBackgroundFillsTheCellsOfItsText()
{
    OverlayContent content = withLines({"ZVT"});
    content.textBackground = 4;
    compare(drawn(content), [&](int x, int y) {
        if (!QRect(left, top, 3 * Font::width, Font::height).contains(x, y))
            return ground;
        const bool set = hasBit("ZVT"[(x - left) / Font::width], (x - left) % Font::width, y - top);
        return overlayPalette()[set ? 1 : 4];
    });
}

void tst_imageOverlay::transparentColoursChangeNothing()
{
    const Picture before = pictureOf(320, 240);
    OverlayContent content = withLines({"ZVT"});
    content.message = "NO SYNC";
    content.boxes = {{10, 10, 50, 50, 0}};
    content.textColor = 0;
    QVERIFY(drawn(content).rgb == before.rgb);

    // A background without letters.
    content.textBackground = 2;
    const Picture plain = drawn(content);
    QCOMPARE(changed(plain), QRect(left, top, 7 * Font::width, 12 * rowHeight + Font::height));
    QVERIFY(at(plain, left + 3, top + 5) == overlayPalette()[2]);
    compare(plain, [&](int x, int y) {
        const bool line = QRect(left, top, 3 * Font::width, Font::height).contains(x, y);
        const bool message = QRect(left, top + 12 * rowHeight, 7 * Font::width, Font::height).contains(x, y);
        return line || message ? overlayPalette()[2] : ground;
    });
}

void tst_imageOverlay::linesFollowEachOtherDownwards()
{
    OverlayContent content = withLines({"", "", "X"});
    content.textBackground = 2;
    QCOMPARE(changed(drawn(content)), QRect(left, top + 2 * rowHeight, Font::width, Font::height));
}

void tst_imageOverlay::theRightColumnFollowsTheLeftOne()
{
    // 100 rows of pixels have four rows of text above that of the message.
    OverlayContent content = withLines({"", "", "", "", "", "X"});
    content.textBackground = 2;
    QCOMPARE(changed(drawn(content, 320, 100)), QRect(160, top + rowHeight, Font::width, Font::height));
    content.lines = {"", "", "", "", "", "", "", "X", "X", "X"};
    QCOMPARE(changed(drawn(content, 320, 100)), QRect(160, top + 3 * rowHeight, Font::width, Font::height));
    content.lines = {"", "", "", "X"};
    QCOMPARE(changed(drawn(content, 320, 100)), QRect(left, top + 3 * rowHeight, Font::width, Font::height));
}

void tst_imageOverlay::textsEndWithTheirColumn()
{
    const std::string longText(64, 'W');
    OverlayContent content = withLines({longText});
    content.textBackground = 2;
    // Only whole characters are drawn.
    QCOMPARE(changed(drawn(content, 320, 100)), QRect(left, top, 312, Font::height));
    QCOMPARE(changed(drawn(content, 327, 100)), QRect(left, top, 312, Font::height));
    QCOMPARE(changed(drawn(content, 640, 100)), QRect(left, top, 512, Font::height));
    // With two columns, the left one ends where the right one begins.
    content.lines = {longText, "", "", "", ""};
    QCOMPARE(changed(drawn(content, 320, 100)), QRect(left, top, 152, Font::height));
    content.lines = {"", "", "", "", longText};
    QCOMPARE(changed(drawn(content, 320, 100)), QRect(160, top, 160, Font::height));
    content.lines = {};
    content.message = longText;
    QCOMPARE(changed(drawn(content, 320, 100)), QRect(left, top + 4 * rowHeight, 312, Font::height));
}

void tst_imageOverlay::theMessageHasTheLastRow()
{
    OverlayContent content = withLines({});
    content.message = "X";
    content.textBackground = 2;
    QCOMPARE(changed(drawn(content, 640, 480)), QRect(left, top + 25 * rowHeight, Font::width, Font::height));
    QCOMPARE(changed(drawn(content, 1920, 1080)), QRect(left, top + 58 * rowHeight, Font::width, Font::height));
}

void tst_imageOverlay::boxesAreFrames_data()
{
    QTest::addColumn<QRectF>("box");
    QTest::addColumn<QRect>("frame");
    QTest::newRow("whole numbers") << QRectF(100, 50, 40, 30) << QRect(100, 50, 40, 30);
    QTest::newRow("the picture") << QRectF(0, 0, 320, 240) << QRect(0, 0, 320, 240);
    QTest::newRow("a pixel") << QRectF(5, 6, 1, 1) << QRect(5, 6, 1, 1);
    QTest::newRow("rounded") << QRectF(10.4, 10.6, 20.2, 20.3) << QRect(10, 11, 21, 20);
    QTest::newRow("partly outside") << QRectF(-10, 200, 50, 100) << QRect(-10, 200, 50, 100);
    QTest::newRow("around") << QRectF(-10, -10, 400, 400) << QRect(-10, -10, 400, 400);
    QTest::newRow("far outside") << QRectF(1e12, -1e12, 1e12, 1e30) << QRect();
    QTest::newRow("empty") << QRectF(50, 50, 0, 20) << QRect();
}

void tst_imageOverlay::boxesAreFrames()
{
    QFETCH(const QRectF, box);
    QFETCH(const QRect, frame);
    const auto picture = drawn(withBox({box.x(), box.y(), box.width(), box.height(), 5}));
    compare(picture, [&](int x, int y) {
        const bool inner = frame.width() > 2 && frame.adjusted(1, 1, -1, -1).contains(x, y);
        return frame.contains(x, y) && !inner ? overlayPalette()[5] : ground;
    });
}

void tst_imageOverlay::textsAreOverBoxes()
{
    OverlayContent content = withLines({"X"});
    content.textBackground = 2;
    content.boxes = {{0, 12, 320, 1, 5}};
    const Picture picture = drawn(content);
    QVERIFY(at(picture, 7, 12) == overlayPalette()[5]);
    QVERIFY(at(picture, 8, 12) != overlayPalette()[5]);
    QVERIFY(at(picture, 16, 12) == overlayPalette()[5]);
}

void tst_imageOverlay::smallPicturesHaveNoRoomForTexts()
{
    OverlayContent content = withLines({"ZVT", "ZVT"});
    content.message = "NO SYNC";
    content.boxes = {{0, 0, 5, 5, 5}};
    QVERIFY(drawn(content, 0, 0).rgb.empty());
    QCOMPARE(changed(drawn(content, 300, 23)), QRect(0, 0, 5, 5));
    QCOMPARE(changed(drawn(content, 15, 300)), QRect(0, 0, 5, 5));
    // One row of text: that of the message.
    content.textBackground = 2;
    content.boxes.clear();
    QCOMPARE(changed(drawn(content, 300, 24)), QRect(8, 8, 7 * Font::width, Font::height));
}

ZVT_TEST(tst_imageOverlay)
#include "tst_imageOverlay.moc"
