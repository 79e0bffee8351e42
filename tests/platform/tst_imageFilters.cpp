#include "platform/emulator/image/Detail.h"
#include "platform/emulator/image/TemporalFilter.h"
#include "platform/emulator/image/levels.h"
#include "tests/platform/ImageFixture.h"
#include "tests/support/Test.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>

using namespace imageFixture;

/// The filters of the video before and after the gain control: detail enhancement, temporal filter, and the adjustment
/// of the levels.
class tst_imageFilters : public Test
{
    Q_OBJECT

private slots:
    void detailsAreEnhancedAroundTheMean_data();
    void detailsAreEnhancedAroundTheMean();
    void smallTargetsGainContrast();
    void noiseBelowTheThresholdStays();
    void sharpnessIsMonotone();
    void detailsStayInTheRangeOfCounts();
    void framesOfAnotherSizeStay_data();
    void framesOfAnotherSizeStay();
    void fourTapsHalveTheNoise();
    void theFirstFrameIsNotFiltered_data();
    void theFirstFrameIsNotFiltered();
    void eachFrameCountsInFourMeans();
    void offForgetsTheFrames();
    void theAdaptiveFilterKeepsAMovingEdge();
    void theThresholdDecidesForEachPixel();
    void levelsAreAdjusted_data();
    void levelsAreAdjusted();
    void brightnessAndContrastFollowTheirFormula();
    void brightnessBrightensAlsoWithBlackHot();
    void filteredFramesAreTheSameForEver();
};

namespace
{

using Mode = TemporalFilter::Mode;

Counts noise(size_t pixels, int lowest, int highest, uint32_t seed = 1)
{
    std::minstd_rand random(seed);
    std::uniform_int_distribution<int> distribution(lowest, highest);
    Counts counts(pixels);
    std::ranges::generate(counts, [&] { return static_cast<uint16_t>(distribution(random)); });
    return counts;
}

/// The definition of the detail enhancement, pixel by pixel.
Counts enhancedSlowly(const Counts &counts, const Size &size, int sharpness, double threshold)
{
    Counts enhanced(counts);
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x) {
            double sum = 0;
            for (int dy = -2; dy <= 2; ++dy)
                for (int dx = -2; dx <= 2; ++dx) {
                    const Place near{std::clamp(x + dx, 0, size.width - 1), std::clamp(y + dy, 0, size.height - 1)};
                    sum += counts[near.indexIn(size.width)];
                }
            uint16_t &count = enhanced[Place{x, y}.indexIn(size.width)];
            const double base = sum / 25;
            if (25 * std::abs(count - base) >= 25 * threshold - 1e-6)
                count = toCount(static_cast<float>(base + (1 + 0.5 * sharpness) * (count - base)));
        }
    return enhanced;
}

Counts enhanced(Counts counts, const Size &size, uint8_t sharpness, uint32_t threshold)
{
    enhanceDetail(counts, size, sharpness, threshold);
    return counts;
}

/// A frame of one count with a target of one pixel in the middle.
Counts targetOf(uint16_t count)
{
    Counts counts(15 * 15, 5000);
    counts[7 * 15 + 7] = count;
    return counts;
}

Counts filtered(TemporalFilter &filter, Counts counts, Mode mode, uint16_t threshold = 0)
{
    filter.apply(counts, mode, threshold);
    return counts;
}

/// The temporal deviation of frames of a flat field at 27 C by the default detector with 2 ms.
double deviationWith(Mode mode)
{
    constexpr int frames = 64;
    Exposure exposure = areaOf(exposureOf(Scene::Area), 27);
    const auto pixels = static_cast<size_t>(exposure.window.pixels());
    Statistics statistics(pixels, faultsOf(exposure));
    TemporalFilter filter;
    for (; exposure.frameNumber < frames; ++exposure.frameNumber)
        statistics.add(filtered(filter, frameOf(exposure), mode));
    return statistics.temporalDeviation();
}

/// A frame that is cold to the left of an edge and warm to the right of it.
Counts edgeAt(int x)
{
    Counts counts(160, 4000);
    std::fill(counts.begin() + x, counts.end(), uint16_t(6000));
    return counts;
}

} // namespace

void tst_imageFilters::detailsAreEnhancedAroundTheMean_data()
{
    QTest::addColumn<Size>("size");
    for (const Size &size : {Size{37, 23}, Size{160, 128}, Size{5, 5}, Size{4, 4}, Size{3, 7}, Size{7, 1}, Size{1, 7},
                             Size{2, 2}, Size{1, 1}})
        QTest::addRow("%dx%d", size.width, size.height) << size;
}

void tst_imageFilters::detailsAreEnhancedAroundTheMean()
{
    QFETCH(const Size, size);
    const Counts counts = noise(static_cast<size_t>(size.width * size.height), 4900, 5100);
    for (const int sharpness : {1, 2, 7})
        for (const int threshold : {0, 8, 60, 16'383}) {
            const Counts quick = enhanced(counts, size, static_cast<uint8_t>(sharpness), uint32_t(threshold));
            const Counts slow = enhancedSlowly(counts, size, sharpness, threshold);
            for (size_t i = 0; i < counts.size(); ++i)
                QVERIFY2(std::abs(quick[i] - slow[i]) <= 1,
                         qPrintable(QStringLiteral("%1: %2, not %3").arg(i).arg(quick[i]).arg(slow[i])));
        }
}

void tst_imageFilters::smallTargetsGainContrast()
{
    // The mean around the target is 5004, so the difference is 96.
    const Counts target = enhanced(targetOf(5100), {15, 15}, 3, 8);
    QCOMPARE(int(target[7 * 15 + 7]), 5004 + 240);
    // The pixels around it differ by 4.
    QCOMPARE(std::ranges::count(target, 5000), 224);
    // A cold one becomes colder.
    QCOMPARE(int(enhanced(targetOf(4900), {15, 15}, 3, 8)[7 * 15 + 7]), 4996 - 240);
    // A large area only changes at its edges.
    Counts large(40 * 40, 5000);
    for (int y = 10; y < 30; ++y)
        std::fill_n(large.begin() + y * 40 + 10, 20, uint16_t(5100));
    const Counts sharp = enhanced(large, {40, 40}, 3, 8);
    QCOMPARE(int(sharp[20 * 40 + 20]), 5100);
    QVERIFY(sharp[20 * 40 + 10] > 5150);
    QVERIFY(sharp[20 * 40 + 9] < 4950);
}

void tst_imageFilters::noiseBelowTheThresholdStays()
{
    const Counts quiet = noise(160 * 128, 5000, 5007);
    QCOMPARE(enhanced(quiet, smallArray, 7, 8), quiet);
    QVERIFY(enhanced(quiet, smallArray, 7, 0) != quiet);
    // The largest threshold lets nothing through.
    QCOMPARE(enhanced(targetOf(16'383), {15, 15}, 7, std::numeric_limits<uint32_t>::max()), targetOf(16'383));
}

void tst_imageFilters::sharpnessIsMonotone()
{
    int before = 5100;
    for (uint8_t sharpness = 1; sharpness <= 7; ++sharpness) {
        const int now = enhanced(targetOf(5100), {15, 15}, sharpness, 8)[7 * 15 + 7];
        QCOMPARE(now, before + 48);
        before = now;
    }
}

void tst_imageFilters::detailsStayInTheRangeOfCounts()
{
    QCOMPARE(int(enhanced(targetOf(16'383), {15, 15}, 7, 8)[7 * 15 + 7]), 16'383);
    QCOMPARE(int(enhanced(targetOf(0), {15, 15}, 7, 8)[7 * 15 + 7]), 0);
}

void tst_imageFilters::framesOfAnotherSizeStay_data()
{
    QTest::addColumn<Size>("size");
    QTest::newRow("larger") << Size{15, 16};
    QTest::newRow("smaller") << Size{15, 14};
    QTest::newRow("empty") << Size{0, 0};
    QTest::newRow("negative") << Size{-15, -15};
}

void tst_imageFilters::framesOfAnotherSizeStay()
{
    QFETCH(const Size, size);
    QCOMPARE(enhanced(targetOf(5100), size, 7, 0), targetOf(5100));
}

void tst_imageFilters::fourTapsHalveTheNoise()
{
    const double raw = deviationWith(Mode::Off);
    const double mean = deviationWith(Mode::FourTap);
    QVERIFY2(std::abs(raw - 4.6) < 0.1, qPrintable(QString::number(raw)));
    QVERIFY2(std::abs(mean - 2.3) < 0.1, qPrintable(QString::number(mean)));
}

void tst_imageFilters::theFirstFrameIsNotFiltered_data()
{
    QTest::addColumn<Mode>("mode");
    QTest::newRow("off") << Mode::Off;
    QTest::newRow("four taps") << Mode::FourTap;
    QTest::newRow("adaptive") << Mode::Adaptive;
}

void tst_imageFilters::theFirstFrameIsNotFiltered()
{
    QFETCH(const Mode, mode);
    TemporalFilter filter;
    const Counts first{0, 1, 5000, 16'383};
    QCOMPARE(filtered(filter, first, mode, 16'383), first);
    // Nor is the first one of another size.
    const Counts other{9, 9, 9};
    QCOMPARE(filtered(filter, other, mode, 16'383), other);
    QCOMPARE(filtered(filter, {}, mode), Counts());
    QCOMPARE(filtered(filter, first, mode, 16'383), first);
}

void tst_imageFilters::eachFrameCountsInFourMeans()
{
    TemporalFilter filter;
    filtered(filter, {1000, 16'383}, Mode::FourTap);
    QCOMPARE(filtered(filter, {1400, 16'383}, Mode::FourTap), Counts({1100, 16'383}));
    QCOMPARE(filtered(filter, {1000, 16'383}, Mode::FourTap), Counts({1100, 16'383}));
    QCOMPARE(filtered(filter, {1002, 16'383}, Mode::FourTap), Counts({1101, 16'383}));
    QCOMPARE(filtered(filter, {1000, 16'383}, Mode::FourTap), Counts({1101, 16'383}));
    // The mean of 1000, 1002, 1000 and 1000 is rounded up.
    QCOMPARE(filtered(filter, {1000, 0}, Mode::FourTap), Counts({1001, 12'287}));
}

void tst_imageFilters::offForgetsTheFrames()
{
    TemporalFilter filter;
    filtered(filter, {1000}, Mode::FourTap);
    QCOMPARE(filtered(filter, {5000}, Mode::Off), Counts({5000}));
    QCOMPARE(filtered(filter, {3000}, Mode::FourTap), Counts({3000}));
}

void tst_imageFilters::theAdaptiveFilterKeepsAMovingEdge()
{
    TemporalFilter mean;
    TemporalFilter adaptive;
    for (int x = 20; x < 60; x += 3) {
        const Counts edge = edgeAt(x);
        const Counts blurred = filtered(mean, edge, Mode::FourTap);
        if (x > 20)
            QVERIFY(blurred != edge);
        QCOMPARE(filtered(adaptive, edge, Mode::Adaptive, 20), edge);
    }
    // It also reduces noise that is smaller than the threshold.
    Statistics raw(160);
    Statistics quiet(160);
    for (uint32_t frame = 0; frame < 32; ++frame) {
        Counts counts = noise(160, 5000, 5010, frame + 1);
        raw.add(counts);
        quiet.add(filtered(adaptive, counts, Mode::Adaptive, 20));
    }
    QVERIFY(quiet.temporalDeviation() < 0.6 * raw.temporalDeviation());
}

void tst_imageFilters::theThresholdDecidesForEachPixel()
{
    // The first pixel differs from the mean by 30, the second one by 31.
    for (const auto &[threshold, expected] : {std::pair{uint16_t(29), Counts{5040, 5041}},
                                              {uint16_t(30), Counts{5010, 5041}},
                                              {uint16_t(31), Counts{5010, 5010}},
                                              {uint16_t(65'535), Counts{5010, 5010}}}) {
        TemporalFilter filter;
        filtered(filter, {5000, 5000}, Mode::Adaptive, threshold);
        QCOMPARE(filtered(filter, {5040, 5041}, Mode::Adaptive, threshold), expected);
    }
}

void tst_imageFilters::levelsAreAdjusted_data()
{
    QTest::addColumn<int>("brightness");
    QTest::addColumn<int>("contrast");
    QTest::addColumn<bool>("blackHot");
    QTest::addColumn<QList<int>>("expected"); // Of the levels 0, 1, 64, 128, 192 and 255.
    QTest::newRow("unchanged") << 0 << 0 << false << QList<int>{0, 1, 64, 128, 192, 255};
    QTest::newRow("brighter") << 10 << 0 << false << QList<int>{20, 21, 84, 148, 212, 255};
    QTest::newRow("darker") << -15 << 0 << false << QList<int>{0, 0, 34, 98, 162, 225};
    QTest::newRow("brightest") << 127 << 0 << false << QList<int>{254, 255, 255, 255, 255, 255};
    QTest::newRow("more contrast") << 0 << 64 << false << QList<int>{0, 0, 32, 128, 224, 255};
    QTest::newRow("most contrast") << 0 << 127 << false << QList<int>{0, 0, 1, 128, 255, 255};
    QTest::newRow("less contrast") << 0 << -64 << false << QList<int>{64, 65, 96, 128, 160, 192};
    QTest::newRow("no contrast") << 0 << -128 << false << QList<int>{128, 128, 128, 128, 128, 128};
    QTest::newRow("brightness after contrast") << 60 << 127 << false << QList<int>{0, 0, 121, 248, 255, 255};
    QTest::newRow("black hot") << 0 << 0 << true << QList<int>{255, 254, 191, 127, 63, 0};
}

void tst_imageFilters::levelsAreAdjusted()
{
    QFETCH(const int, brightness);
    QFETCH(const int, contrast);
    QFETCH(const bool, blackHot);
    const LevelTable table = adjustedLevels(brightness, contrast, blackHot);
    QList<int> found;
    for (const size_t level : {0u, 1u, 64u, 128u, 192u, 255u})
        found << table[level];
    QTEST(found, "expected");
}

void tst_imageFilters::brightnessAndContrastFollowTheirFormula()
{
    for (int contrast = -128; contrast <= 127; contrast += 15)
        for (int brightness = -128; brightness <= 127; brightness += 17) {
            const LevelTable table = adjustedLevels(brightness, contrast, false);
            for (int level = 0; level < 256; ++level) {
                const double exact = (level - 128) * (1 + contrast / 128.0) + 128 + 2 * brightness;
                QVERIFY(std::abs(table[static_cast<size_t>(level)] - std::clamp(exact, 0.0, 255.0)) <= 0.5);
            }
        }
}

void tst_imageFilters::brightnessBrightensAlsoWithBlackHot()
{
    for (const bool blackHot : {false, true}) {
        const LevelTable before = adjustedLevels(0, 0, blackHot);
        const LevelTable after = adjustedLevels(5, 0, blackHot);
        for (size_t level = 20; level < 230; ++level)
            QCOMPARE(int(after[level]), before[level] + 10);
    }
}

void tst_imageFilters::filteredFramesAreTheSameForEver()
{
    Exposure exposure = exposureOf(Scene::Live);
    TemporalFilter filter;
    Counts counts;
    for (; exposure.frameNumber < 6; ++exposure.frameNumber) {
        exposure.scene.microseconds += 40'000;
        counts = frameOf(exposure);
        filter.apply(counts, exposure.frameNumber < 3 ? Mode::FourTap : Mode::Adaptive, 15);
    }
    enhanceDetail(counts, smallArray, 5, 8);
    QCOMPARE(checksum(counts), QByteArray("38170fb1b04494c852e639e058cbc263"));
}

ZVT_TEST(tst_imageFilters)
#include "tst_imageFilters.moc"
