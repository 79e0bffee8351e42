#include "platform/emulator/image/Raster.h"
#include "tests/support/Test.h"

#include <numeric>

using namespace emulator::image;

/// The image of a video output on its raster.
class tst_imageRaster : public Test
{
    Q_OBJECT

private slots:
    void wholeFactorsRepeatPixels();
    void levelsHaveTheColoursOfThePalette();
    void theImageIsClipped_data();
    void theImageIsClipped();
    void halfTheSizeIsTheMeanOfFourPixels();
    void interpolationChangesEvenly();
    void fieldsTakeTurns();
    void withoutAnImageTheRasterIsBlack_data();
    void withoutAnImageTheRasterIsBlack();

private:
    static constexpr Size size{4, 2};

    static Palette grey()
    {
        Palette palette;
        for (size_t level = 0; level < palette.size(); ++level) {
            const auto part = static_cast<uint8_t>(level);
            palette[level] = {part, part, part};
        }
        return palette;
    }
    /// The levels 10, 20, 30, ...
    static Fields ramp()
    {
        Fields fields{size, {}, {}};
        for (int pixel = 1; pixel <= size.width * size.height; ++pixel)
            fields.first.push_back(static_cast<uint8_t>(10 * pixel));
        return fields;
    }
    /// The greys of a picture, a text for each row.
    static QStringList greysOf(const Picture &picture)
    {
        QStringList rows;
        for (int y = 0; y < picture.height; ++y) {
            QStringList row;
            for (int x = 0; x < picture.width; ++x)
                row << QString::number(picture.rgb[static_cast<size_t>(y * picture.width + x) * 3]);
            rows << row.join(' ');
        }
        return rows;
    }
};

void tst_imageRaster::wholeFactorsRepeatPixels()
{
    const Picture picture = drawRaster(ramp(), {{10, 6}, 1, 1, 8, 4, false}, grey());
    QCOMPARE(picture.width, 10);
    QCOMPARE(picture.height, 6);
    QCOMPARE(picture.rgb.size(), size_t(180));
    QCOMPARE(greysOf(picture),
             QStringList({"0 0 0 0 0 0 0 0 0 0", "0 10 10 20 20 30 30 40 40 0", "0 10 10 20 20 30 30 40 40 0",
                          "0 50 50 60 60 70 70 80 80 0", "0 50 50 60 60 70 70 80 80 0", "0 0 0 0 0 0 0 0 0 0"}));
}

void tst_imageRaster::levelsHaveTheColoursOfThePalette()
{
    Palette palette;
    for (size_t level = 0; level < palette.size(); ++level)
        palette[level] = {static_cast<uint8_t>(level), static_cast<uint8_t>(255 - level), 7};
    for (const bool interpolated : {false, true}) {
        const Picture picture = drawRaster(ramp(), {{4, 2}, 0, 0, 4, 2, interpolated}, palette);
        std::vector<uint8_t> expected;
        for (const uint8_t level : ramp().first)
            expected.insert(expected.end(), {level, static_cast<uint8_t>(255 - level), 7});
        QCOMPARE(picture.rgb, expected);
    }
}

void tst_imageRaster::theImageIsClipped_data()
{
    QTest::addColumn<int>("x");
    QTest::addColumn<int>("y");
    QTest::addColumn<QStringList>("rows");
    QTest::newRow("left, top") << -1 << -1 << QStringList{"60 70 80", "0 0 0", "0 0 0"};
    QTest::newRow("right, bottom") << 2 << 2 << QStringList{"0 0 0", "0 0 0", "0 0 10"};
    QTest::newRow("all of it") << 3 << 0 << QStringList{"0 0 0", "0 0 0", "0 0 0"};
    QTest::newRow("all of it, above") << 0 << -2 << QStringList{"0 0 0", "0 0 0", "0 0 0"};
}

void tst_imageRaster::theImageIsClipped()
{
    QFETCH(const int, x);
    QFETCH(const int, y);
    QFETCH(const QStringList, rows);
    for (const bool interpolated : {false, true}) {
        const RasterPlace place{{3, 3}, double(x), double(y), double(size.width), double(size.height), interpolated};
        QCOMPARE(greysOf(drawRaster(ramp(), place, grey())), rows);
    }
}

void tst_imageRaster::halfTheSizeIsTheMeanOfFourPixels()
{
    QCOMPARE(greysOf(drawRaster(ramp(), {{2, 1}, 0, 0, 2, 1, true}, grey())), QStringList{"35 55"});
}

void tst_imageRaster::interpolationChangesEvenly()
{
    const Fields ends{{2, 1}, {0, 200}, {}};
    const QStringList row = greysOf(drawRaster(ends, {{12, 1}, 0, 0, 12, 1, true}, grey()));
    // The middles of the two pixels are in the middles of the halves.
    QCOMPARE(row, QStringList{"0 0 0 16 50 83 116 150 183 200 200 200"});
}

void tst_imageRaster::fieldsTakeTurns()
{
    Fields fields = ramp();
    fields.second = {1, 2, 3, 4, 5, 6, 7, 8};
    QCOMPARE(greysOf(drawRaster(fields, {{4, 5}, 0, 1, 4, 4, false}, grey())),
             QStringList({"0 0 0 0", "1 2 3 4", "10 20 30 40", "5 6 7 8", "50 60 70 80"}));
}

void tst_imageRaster::withoutAnImageTheRasterIsBlack_data()
{
    QTest::addColumn<int>("pixels");
    QTest::addColumn<int>("secondPixels");
    QTest::addColumn<double>("width");
    QTest::newRow("no levels") << 0 << 0 << 4.0;
    QTest::newRow("a level is missing") << 7 << 0 << 4.0;
    QTest::newRow("a level of the second field is missing") << 8 << 7 << 4.0;
    QTest::newRow("no width") << 8 << 8 << 0.0;
}

void tst_imageRaster::withoutAnImageTheRasterIsBlack()
{
    QFETCH(const int, pixels);
    QFETCH(const int, secondPixels);
    QFETCH(const double, width);
    const Fields fields{size, std::vector<uint8_t>(size_t(pixels), 200),
                        std::vector<uint8_t>(size_t(secondPixels), 200)};
    const Picture picture = drawRaster(fields, {{4, 2}, 0, 0, width, 2, false}, grey());
    QCOMPARE(picture.rgb, std::vector<uint8_t>(24));
}

ZVT_TEST(tst_imageRaster)
#include "tst_imageRaster.moc"
