#include "tests/platform/ImageFixture.h"
#include "tests/support/Test.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <utility>

using namespace imageFixture;

/// How an output shows a frame: correction, repair of bad pixels, digital gain and offset, white pixels. The raw frames
/// of these tests have the same count everywhere, so that a table with gain 0 makes any picture.
class tst_imageOutputs : public Test
{
    Q_OBJECT

private slots:
    void outputsAreRawWithoutACorrection();
    void correctedIsGainAndOffset_data();
    void correctedIsGainAndOffset();
    void badPixelsAreRepaired_data();
    void badPixelsAreRepaired();
    void onlyTheBadOnesAreRepaired();
    void shownBadPixelsAreWhite();
    void switchesAreForEachOutput();
    void digitalGainAndOffset_data();
    void digitalGainAndOffset();
    void partOfTheTableIsUsed_data();
    void partOfTheTableIsUsed();
    void unusableTablesAreIgnored();
    void framesAreTheSameForEver();
};

namespace
{

/// A table whose corrected pixels have these counts, 16 in each row. A count of -1 is a bad pixel.
CorrectionTable tableOf(const QList<int> &counts)
{
    std::vector<float> offsets;
    std::vector<uint8_t> flags;
    for (const int count : counts) {
        offsets.push_back(static_cast<float>(count));
        flags.push_back(count < 0 ? uint8_t(CorrectionTable::Bad) : uint8_t(0));
    }
    const int height = static_cast<int>(counts.size()) / 16;
    return {{0, 0, 16, height}, std::vector<float>(offsets.size()), std::move(offsets), std::move(flags)};
}

Exposure exposureWith(CorrectionTable table)
{
    Exposure exposure = exposureOf(Scene::Area, imageFixture::corrected(), {16, 4});
    exposure.window.height = table.window.height;
    exposure.correction = std::make_shared<const CorrectionTable>(std::move(table));
    return exposure;
}

/// 16 counts of 1000, and bad pixels at some places.
QList<int> rowWith(const QList<int> &bad)
{
    QList<int> counts(16, 1000);
    for (const int x : bad)
        counts[x] = -1;
    return counts;
}

QList<int> listOf(const Counts &counts) { return {counts.begin(), counts.end()}; }

} // namespace

void tst_imageOutputs::outputsAreRawWithoutACorrection()
{
    const Exposure exposure = exposureOf(Scene::Live);
    QCOMPARE(outputOf(exposure, Output::Video), frameOf(exposure));
    QCOMPARE(outputOf(exposure, Output::Digital), frameOf(exposure));
    Counts counts{1, 2, 3};
    QVERIFY(!renderOutput({}, Output::Video, counts));
    QCOMPARE(counts, Counts({1, 2, 3}));
}

void tst_imageOutputs::correctedIsGainAndOffset_data()
{
    constexpr float infinite = std::numeric_limits<float>::infinity();
    constexpr float noNumber = std::numeric_limits<float>::quiet_NaN();
    QTest::addColumn<float>("gain");
    QTest::addColumn<float>("offset");
    QTest::addColumn<int>("expected"); // For a raw count of 16383.
    QTest::newRow("unchanged") << 1.0f << 0.0f << 16'383;
    QTest::newRow("half") << 0.5f << 0.0f << 8192;
    QTest::newRow("rounded down") << 0.0f << 100.49f << 100;
    QTest::newRow("rounded up") << 0.0f << 100.5f << 101;
    QTest::newRow("both") << 0.25f << -95.75f << 4000;
    QTest::newRow("too much") << 2.0f << 0.0f << 16'383;
    QTest::newRow("too little") << -1.0f << 0.0f << 0;
    QTest::newRow("infinite") << infinite << 0.0f << 16'383;
    QTest::newRow("minus infinite") << 1.0f << -infinite << 0;
    QTest::newRow("no number") << noNumber << 0.0f << 0;
    QTest::newRow("no offset") << 1.0f << noNumber << 0;
}

void tst_imageOutputs::correctedIsGainAndOffset()
{
    QFETCH(const float, gain);
    QFETCH(const float, offset);
    QFETCH(const int, expected);
    CorrectionTable table = tableOf(rowWith({}));
    table.gains = std::vector<float>(16, gain);
    table.offsets = std::vector<float>(16, offset);
    Exposure exposure = exposureWith(table);
    exposure.readout.integrationTime = 1000;
    QCOMPARE(listOf(frameOf(exposure)), QList<int>(16, 16'383));
    QCOMPARE(listOf(outputOf(exposure)), QList<int>(16, expected));
}

void tst_imageOutputs::badPixelsAreRepaired_data()
{
    QTest::addColumn<QList<int>>("row"); // -1: bad.
    QTest::addColumn<QList<int>>("expected");
    QTest::addColumn<int>("repair");
    const auto row = [](const char *name, const QList<int> &given, Repair repair, const QList<int> &replaced) {
        QList<int> counts = given;
        for (qsizetype i = 0, next = 0; i < counts.size(); ++i)
            if (counts[i] < 0)
                counts[i] = replaced[next++];
        QTest::newRow(name) << given << counts << int(repair);
    };
    const QList<int> single{10, 20, 30, 40, -1, 80, 70, 60, 50, 40, 30, 20, 10, 20, 30, 40};
    row("single", single, Repair::TwoNearest, {60});
    row("single, nearest", single, Repair::Nearest, {40});
    row("single, none", single, Repair::None, {0});
    const QList<int> three{10, 20, 30, 40, -1, -1, -1, 80, 50, 40, 30, 20, 10, 20, 30, 40};
    row("three", three, Repair::TwoNearest, {50, 60, 70});
    row("three, nearest", three, Repair::Nearest, {40, 40, 80});
    row("three, none", three, Repair::None, {0, 0, 0});
    const QList<int> ends{-1, -1, 30, 40, 50, 60, 70, 80, 50, 40, 30, 20, 10, 20, 30, -1};
    row("ends", ends, Repair::TwoNearest, {30, 30, 30});
    row("ends, nearest", ends, Repair::Nearest, {30, 30, 30});
    const QList<int> two{10, 20, -1, 41, -1, 40, 70, 80, 50, 40, -1, -1, 10, 20, 30, 40};
    row("two groups and more", two, Repair::TwoNearest, {31, 41, 30, 20});
    row("all", QList<int>(16, -1), Repair::TwoNearest, QList<int>(16, 0));
    QList<int> rows = QList<int>(15, 100) + QList<int>{-1, -1} + QList<int>(15, 200);
    row("rows do not mix", rows, Repair::TwoNearest, {100, 200});
}

void tst_imageOutputs::badPixelsAreRepaired()
{
    QFETCH(const QList<int>, row);
    QFETCH(const QList<int>, expected);
    QFETCH(const int, repair);
    Exposure exposure = exposureWith(tableOf(row));
    exposure.repair = static_cast<Repair>(repair);
    QCOMPARE(listOf(outputOf(exposure)), expected);
}

void tst_imageOutputs::onlyTheBadOnesAreRepaired()
{
    CorrectionTable table = tableOf(rowWith({4, 11}));
    std::vector<float> offsets(16);
    for (size_t i = 0; i < offsets.size(); ++i) {
        offsets[i] = static_cast<float>(1000 + 10 * i);
        table.flags[i] |= CorrectionTable::Factory | CorrectionTable::Twinkling;
    }
    offsets[4] = 0;
    table.offsets = std::move(offsets);
    QList<int> expected;
    for (int i = 0; i < 16; ++i)
        expected << 1000 + 10 * i;
    QCOMPARE(listOf(outputOf(exposureWith(table))), expected);
}

void tst_imageOutputs::shownBadPixelsAreWhite()
{
    Exposure exposure = exposureWith(tableOf(rowWith({0, 7, 8, 15})));
    exposure.showBadPixels = true;
    exposure.digitalCorrected = true;
    exposure.digitalGain = 0.5;
    QList<int> expected(16, 500);
    for (const int x : {0, 7, 8, 15})
        expected[x] = 16'383;
    for (const Repair repair : {Repair::TwoNearest, Repair::Nearest, Repair::None}) {
        exposure.repair = repair;
        QCOMPARE(listOf(outputOf(exposure, Output::Video)), expected);
        QCOMPARE(listOf(outputOf(exposure, Output::Digital)), expected);
    }
    // Also in an output that is not corrected.
    exposure.videoCorrected = false;
    const Counts raw = frameOf(exposure);
    for (qsizetype x = 0; x < 16; ++x)
        if (expected[x] == 500)
            expected[x] = static_cast<int>(std::lround(double(raw[static_cast<size_t>(x)]) * 0.5));
    QCOMPARE(listOf(outputOf(exposure, Output::Video)), expected);
    // Without a table that contains the window no pixel is known to be bad.
    const auto white = [](const Counts &counts) { return std::ranges::count(counts, 16'383); };
    QCOMPARE(white(outputOf(exposure, Output::Digital)), 4);
    exposure.window.x = 1;
    for (const Output output : {Output::Video, Output::Digital})
        QCOMPARE(white(outputOf(exposure, output)), 0);
}

void tst_imageOutputs::switchesAreForEachOutput()
{
    Exposure exposure = exposureWith(tableOf(rowWith({})));
    const QList<int> corrected(16, 1000);
    for (const bool video : {false, true})
        for (const bool digital : {false, true}) {
            exposure.videoCorrected = video;
            exposure.digitalCorrected = digital;
            QCOMPARE(listOf(outputOf(exposure, Output::Video)) == corrected, video);
            QCOMPARE(listOf(outputOf(exposure, Output::Digital)) == corrected, digital);
        }
    const Exposure fresh;
    QVERIFY(fresh.videoCorrected && !fresh.digitalCorrected && !fresh.showBadPixels);
}

void tst_imageOutputs::digitalGainAndOffset_data()
{
    QTest::addColumn<float>("gain");
    QTest::addColumn<float>("offset");
    QTest::addColumn<int>("expected"); // For a count of 1000.
    QTest::newRow("start") << 1.0f << 0.0f << 1000;
    QTest::newRow("gain") << 2.5f << 0.0f << 2500;
    QTest::newRow("gain 0") << 0.0f << 0.0f << 0;
    QTest::newRow("offset") << 1.0f << -300.0f << 700;
    QTest::newRow("both, rounded") << 0.5f << 0.5f << 501;
    QTest::newRow("black") << 1.0f << -16'383.5f << 0;
    QTest::newRow("white") << 3.999f << 16'383.5f << 16'383;
}

void tst_imageOutputs::digitalGainAndOffset()
{
    QFETCH(const float, gain);
    QFETCH(const float, offset);
    QFETCH(const int, expected);
    Exposure exposure = exposureWith(tableOf(rowWith({})));
    exposure.digitalCorrected = true;
    const Counts raw = frameOf(exposure);
    exposure.digitalGain = gain;
    exposure.digitalOffset = offset;
    QCOMPARE(frameOf(exposure), raw);
    QCOMPARE(listOf(outputOf(exposure, Output::Video)), QList<int>(16, expected));
    QCOMPARE(listOf(outputOf(exposure, Output::Digital)), QList<int>(16, expected));
    // It also acts on an output that is not corrected.
    exposure.digitalCorrected = false;
    const float wanted = std::clamp(float(raw[0]) * gain + offset, 0.0f, 16'383.0f);
    QVERIFY(std::abs(float(outputOf(exposure, Output::Digital)[0]) - wanted) <= 0.5f);
}

void tst_imageOutputs::partOfTheTableIsUsed_data()
{
    QTest::addColumn<bool>("mirrored");
    QTest::addColumn<bool>("inverted");
    QTest::newRow("upright") << false << false;
    QTest::newRow("mirrored") << true << false;
    QTest::newRow("inverted") << false << true;
    QTest::newRow("both") << true << true;
}

void tst_imageOutputs::partOfTheTableIsUsed()
{
    QFETCH(const bool, mirrored);
    QFETCH(const bool, inverted);
    // The corrected count of a pixel shows its array coordinates. The table is that of the window with these flips.
    Exposure exposure = exposureOf(Scene::Area);
    exposure.optics.mirrored = mirrored;
    exposure.optics.inverted = inverted;
    const Window whole{8, 4, 100, 80};
    std::vector<float> offsets(8000);
    for (int y = 4; y < 84; ++y)
        for (int x = 8; x < 108; ++x)
            offsets[placeIn(whole, exposure.optics, x, y).indexIn(100)] = static_cast<float>(100 * y + x);
    const CorrectionTable table{whole, std::vector<float>(8000), std::move(offsets), std::vector<uint8_t>(8000)};
    exposure.correction = std::make_shared<const CorrectionTable>(table);
    for (const Window &part : {whole, Window{8, 4, 20, 10}, Window{88, 74, 20, 10}, Window{31, 17, 64, 32}}) {
        exposure.window = part;
        const Counts counts = outputOf(exposure);
        for (int y = part.y; y < part.y + part.height; ++y)
            for (int x = part.x; x < part.x + part.width; ++x)
                QCOMPARE(int(counts[placeIn(part, exposure.optics, x, y).indexIn(part.width)]), 100 * y + x);
        const CorrectionTable cut = table.partFor(part, exposure.optics);
        QVERIFY(cut.isComplete());
        QCOMPARE(cut.window, part);
        Exposure same = exposure;
        same.correction = std::make_shared<const CorrectionTable>(cut);
        QCOMPARE(outputOf(same), counts);
    }
}

void tst_imageOutputs::unusableTablesAreIgnored()
{
    const Exposure good = exposureWith(tableOf(rowWith({})));
    const auto isRaw = [&](const CorrectionTable &table) {
        Exposure exposure = good;
        exposure.correction = std::make_shared<const CorrectionTable>(table);
        return outputOf(exposure) == frameOf(exposure);
    };
    CorrectionTable table = *good.correction;
    QVERIFY(!isRaw(table));
    QVERIFY(isRaw({}));
    table.window.x = 1; // It no longer contains the frame.
    QVERIFY(isRaw(table));
    QVERIFY(!table.partFor(good.window, {}).isComplete());
    table = *good.correction;
    table.flags.pop_back();
    QVERIFY(isRaw(table));
    table = *good.correction;
    table.gains = {};
    QVERIFY(isRaw(table));
    table = *good.correction;
    table.window.width = -16;
    QVERIFY(isRaw(table));
}

void tst_imageOutputs::framesAreTheSameForEver()
{
    Exposure exposure = exposureOf(Scene::Live);
    std::vector<float> gains;
    std::vector<float> offsets;
    std::vector<uint8_t> flags;
    for (int i = 0; i < 160 * 128; ++i) {
        gains.push_back(0.9f + 0.0001f * static_cast<float>(i % 1999));
        offsets.push_back(0.37f * static_cast<float>(i % 997) - 150);
        flags.push_back(i % 271 < 2 ? uint8_t(CorrectionTable::Bad) : uint8_t(0));
    }
    exposure.correction = std::make_shared<const CorrectionTable>(
        CorrectionTable{exposure.window, std::move(gains), std::move(offsets), std::move(flags)});
    exposure.digitalGain = 1.1f;
    exposure.digitalOffset = -20.3f;
    exposure.readout.voltages = {.globalOffset = 0.7, .bias = 301.5, .skimming = 0.9};
    exposure.readout.color = 1;
    exposure.band = Light::SecondColor;
    QCOMPARE(checksum(outputOf(exposure)), QByteArray("ce11316ff9239b41f75e154b8f5e7d74"));
}

ZVT_TEST(tst_imageOutputs)
#include "tst_imageOutputs.moc"
