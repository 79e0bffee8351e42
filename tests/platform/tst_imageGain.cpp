#include "platform/emulator/image/Agc.h"
#include "tests/platform/ImageFixture.h"
#include "tests/support/Test.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <numeric>

using namespace imageFixture;

/// The gain control of the video: how counts become levels of grey.
class tst_imageGain : public Test
{
    Q_OBJECT

private slots:
    void allIsBlackBeforeTheFirstFrame();
    void theSumOfTheHistogramIsTheTable();
    void plateausSpreadTheLevels();
    void theSmallestPlateauIsNearlyLinear();
    void aLargeAreaTakesLessOfTheLevelsWithASmallPlateau();
    void linearEndsAreAtHalfAPercent();
    void linearIgnoresAFewBadPixels();
    void manualIsLinearBetweenItsEnds_data();
    void manualIsLinearBetweenItsEnds();
    void theTableGoesAShareOfTheWay();
    void stepsOutsideOfTheRangeAreItsEnds_data();
    void stepsOutsideOfTheRangeAreItsEnds();
    void aStepOf0FreezesTheTable();
    void theRegionIsSpreadMoreThanTheWhole();
    void onlyPixelsOfTheRegionCount_data();
    void onlyPixelsOfTheRegionCount();
    void aRegionWithoutPixelsChangesNothing_data();
    void aRegionWithoutPixelsChangesNothing();
    void limitsAreTheEndsOfTheTable_data();
    void limitsAreTheEndsOfTheTable();
    void levelsAreTheSameForEver_data();
    void levelsAreTheSameForEver();
};

namespace
{

using Levels = std::vector<uint8_t>;
using Numbers = QList<int>;

AgcSettings settingsOf(AgcMethod method) { return {.method = method}; }

AgcSettings plateauOf(uint32_t plateau) { return {.method = AgcMethod::Plateau, .plateau = plateau}; }

AgcSettings manualOf(uint16_t low, uint16_t high)
{
    return {.method = AgcMethod::Manual, .manualLow = low, .manualHigh = high};
}

/// Fits the gain to a frame of one row.
void updateByRow(Agc &agc, const Counts &row, const AgcSettings &settings, double step = 1)
{
    const int width = static_cast<int>(row.size());
    agc.update(row, {width, 1}, {0, 0, width, 1}, settings, step);
}

Agc fittedTo(const Counts &row, const AgcSettings &settings)
{
    Agc agc;
    updateByRow(agc, row, settings);
    return agc;
}

/// A frame of the live scene as a corrected camera shows it.
Counts liveFrame() { return frameOf(exposureOf(Scene::Live, corrected())); }

/// The levels of such a frame.
Levels levelsOf(const Counts &counts, const AgcSettings &settings, const Window &region = smallWindow)
{
    Agc agc;
    agc.update(counts, smallArray, region, settings, 1);
    Levels levels;
    agc.apply(counts, levels);
    return levels;
}

/// The standard deviation of the levels in a part of such a frame.
double spreadIn(const Levels &levels, const Window &part)
{
    double sum = 0;
    double squares = 0;
    for (int y = part.y; y < part.y + part.height; ++y)
        for (int x = part.x; x < part.x + part.width; ++x) {
            const double level = levels[Place{x, y}.indexIn(smallArray.width)];
            sum += level;
            squares += level * level;
        }
    const double mean = sum / double(part.pixels());
    return std::sqrt(squares / double(part.pixels()) - mean * mean);
}

/// Which percentage of the levels is in each quarter of the range.
Numbers quartersOf(const Levels &levels)
{
    Numbers quarters(4, 0);
    for (const uint8_t level : levels)
        ++quarters[level / 64];
    for (int &pixels : quarters)
        pixels = static_cast<int>(std::lround(100.0 * pixels / double(levels.size())));
    return quarters;
}

/// The counts from `first` to `last`, each once.
Counts eachFrom(int first, int last)
{
    Counts counts(static_cast<size_t>(last - first + 1));
    std::iota(counts.begin(), counts.end(), static_cast<uint16_t>(first));
    return counts;
}

} // namespace

void tst_imageGain::allIsBlackBeforeTheFirstFrame()
{
    const Agc agc;
    Levels levels{7};
    agc.apply(Counts{0, 5000, 16'383}, levels);
    QCOMPARE(levels, Levels(3, 0));
}

void tst_imageGain::theSumOfTheHistogramIsTheTable()
{
    // Of 16 pixels 4 have the count 100, 8 have 200 and 4 have 300.
    Counts counts(4, 100);
    counts.insert(counts.end(), 8, 200);
    counts.insert(counts.end(), 4, 300);
    const auto levels = [&](const AgcSettings &settings) {
        const Agc agc = fittedTo(counts, settings);
        return Numbers{agc.level(0),   agc.level(99),  agc.level(100), agc.level(199),
                       agc.level(200), agc.level(299), agc.level(300), agc.level(16'383)};
    };
    QCOMPARE(levels(plateauOf(16'383)), Numbers({0, 0, 64, 64, 191, 191, 255, 255}));
    // The 8 pixels count as 4, so that each count has a third.
    QCOMPARE(levels(plateauOf(4)), Numbers({0, 0, 85, 85, 170, 170, 255, 255}));
    QCOMPARE(levels(plateauOf(1)), Numbers({0, 0, 85, 85, 170, 170, 255, 255}));
    // Details are enhanced before.
    AgcSettings detail = plateauOf(4);
    detail.method = AgcMethod::Detail;
    QCOMPARE(levels(detail), levels(plateauOf(4)));
}

void tst_imageGain::plateausSpreadTheLevels()
{
    const Counts counts = liveFrame();
    for (const int share : quartersOf(levelsOf(counts, plateauOf(maximumCount))))
        QVERIFY2(share >= 23 && share <= 27, qPrintable(QString::number(share)));
    // A linear table leaves most of the levels to the few warm targets.
    const Numbers linear = quartersOf(levelsOf(counts, settingsOf(AgcMethod::Linear)));
    QVERIFY2(*std::ranges::max_element(linear) > 50, qPrintable(QDebug::toString(linear)));
}

void tst_imageGain::theSmallestPlateauIsNearlyLinear()
{
    // Every count from 4000 to 7999, those up to 5000 much more often than the others.
    Counts counts = eachFrom(4000, 7999);
    for (int times = 0; times < 50; ++times) {
        const Counts often = eachFrom(4000, 5000);
        counts.insert(counts.end(), often.begin(), often.end());
    }
    const Agc nearlyLinear = fittedTo(counts, plateauOf(1));
    const Agc equal = fittedTo(counts, plateauOf(maximumCount));
    for (int count = 4000; count < 8000; ++count) {
        const double linear = 255.0 * (count - 4000) / 4000;
        QVERIFY(std::abs(nearlyLinear.level(static_cast<uint16_t>(count)) - linear) <= 1);
    }
    QVERIFY(equal.level(5000) > 230);
    QVERIFY(fittedTo(counts, plateauOf(10)).level(5000) < equal.level(5000));
}

void tst_imageGain::aLargeAreaTakesLessOfTheLevelsWithASmallPlateau()
{
    // 5000 pixels of sky with little noise, and a target of 200 pixels.
    Counts counts;
    for (int pixel = 0; pixel < 5000; ++pixel)
        counts.push_back(static_cast<uint16_t>(6000 + pixel % 20));
    for (int pixel = 0; pixel < 200; ++pixel)
        counts.push_back(static_cast<uint16_t>(7000 + pixel));
    int before = 256;
    for (const uint32_t plateau : {1u, 10u, 50u, 250u}) {
        const Agc agc = fittedTo(counts, plateauOf(plateau));
        const int levelsOfTarget = agc.level(7199) - agc.level(7000);
        QVERIFY2(levelsOfTarget < before, qPrintable(QString::number(plateau)));
        before = levelsOfTarget;
    }
    QVERIFY(before < 20);
}

void tst_imageGain::linearEndsAreAtHalfAPercent()
{
    // 50 of the 10000 pixels are at or below 1049, and 9950 at or below 10949.
    const Agc agc = fittedTo(eachFrom(1000, 10'999), settingsOf(AgcMethod::Linear));
    for (const int black : {0, 1000, 1049})
        QCOMPARE(agc.level(static_cast<uint16_t>(black)), uint8_t(0));
    for (const int white : {10'949, 10'999, 16'383})
        QCOMPARE(agc.level(static_cast<uint16_t>(white)), uint8_t(255));
    QCOMPARE(agc.level(1049 + 20), uint8_t(1));
    QCOMPARE(agc.level(1049 + 4950), uint8_t(128));
    QCOMPARE(agc.level(10'949 - 20), uint8_t(254));
}

void tst_imageGain::linearIgnoresAFewBadPixels()
{
    Counts counts = eachFrom(5000, 5999);
    const Agc without = fittedTo(counts, settingsOf(AgcMethod::Linear));
    counts[0] = 16'383;
    counts[1] = 300;
    const Agc with = fittedTo(counts, settingsOf(AgcMethod::Linear));
    for (const int count : {5000, 5250, 5500, 5750, 5999})
        QVERIFY(std::abs(without.level(static_cast<uint16_t>(count)) - with.level(static_cast<uint16_t>(count))) <= 1);
}

void tst_imageGain::manualIsLinearBetweenItsEnds_data()
{
    QTest::addColumn<int>("low");
    QTest::addColumn<int>("high");
    QTest::addColumn<Numbers>("counts");
    QTest::addColumn<Numbers>("levels");
    const Numbers ends{0, 16'383};
    QTest::newRow("part") << 2000 << 4000 << Numbers{0, 2000, 2500, 3000, 4000, 16'383}
                          << Numbers{0, 0, 64, 128, 255, 255};
    QTest::newRow("whole") << 0 << 16'383 << Numbers{0, 32, 33, 8192, 16'383} << Numbers{0, 0, 1, 128, 255};
    QTest::newRow("neighbours") << 3000 << 3001 << Numbers{2999, 3000, 3001} << Numbers{0, 0, 255};
    QTest::newRow("equal") << 3000 << 3000 << Numbers{2999, 3000, 3001} << Numbers{0, 255, 255};
    QTest::newRow("exchanged") << 3000 << 1000 << Numbers{999, 1000, 2999, 3000, 16'383} << Numbers{0, 0, 0, 255, 255};
    QTest::newRow("all white") << 0 << 0 << ends << Numbers{255, 255};
    QTest::newRow("all but one black") << 16'383 << 16'383 << Numbers{16'382, 16'383} << Numbers{0, 255};
}

void tst_imageGain::manualIsLinearBetweenItsEnds()
{
    QFETCH(const int, low);
    QFETCH(const int, high);
    QFETCH(const Numbers, counts);
    QFETCH(const Numbers, levels);
    // It does not depend on the frame.
    for (const Counts &frame : {Counts{9000}, Counts{}, eachFrom(0, 16'383)}) {
        const Agc agc = fittedTo(frame, manualOf(static_cast<uint16_t>(low), static_cast<uint16_t>(high)));
        Numbers found;
        for (const int count : counts)
            found << agc.level(static_cast<uint16_t>(count));
        QCOMPARE(found, levels);
    }
}

void tst_imageGain::theTableGoesAShareOfTheWay()
{
    // From a table in which 8000 is black to one in which it is white. The first step goes the whole way.
    Agc agc;
    updateByRow(agc, {1}, manualOf(9000, 9000), 0.25);
    QCOMPARE(agc.level(8000), uint8_t(0));
    QCOMPARE(agc.level(9000), uint8_t(255));
    double black = 1;
    for (int step = 0; step < 20; ++step) {
        updateByRow(agc, {1}, manualOf(7000, 7000), 0.25);
        black *= 0.75;
        QVERIFY(std::abs(agc.level(8000) - 255 * (1 - black)) <= 0.51);
    }
    // The fraction of a level is kept: small steps arrive, too.
    for (int step = 0; step < 2000; ++step)
        updateByRow(agc, {1}, manualOf(9000, 9000), 0.004);
    QCOMPARE(agc.level(8000), uint8_t(0));
}

void tst_imageGain::stepsOutsideOfTheRangeAreItsEnds_data()
{
    QTest::addColumn<double>("step");
    QTest::addColumn<int>("level");
    QTest::newRow("below") << -1.0 << 0;
    QTest::newRow("above") << 3.0 << 255;
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << 0;
}

void tst_imageGain::stepsOutsideOfTheRangeAreItsEnds()
{
    QFETCH(const double, step);
    Agc agc = fittedTo({1}, manualOf(9000, 9000));
    updateByRow(agc, {1}, manualOf(7000, 7000), step);
    QTEST(int(agc.level(8000)), "level");
}

void tst_imageGain::aStepOf0FreezesTheTable()
{
    const Counts cold = eachFrom(2000, 3000);
    const Counts warm = eachFrom(6000, 9000);
    for (const AgcMethod method : {AgcMethod::Plateau, AgcMethod::Linear}) {
        Agc agc;
        // The first frame takes the whole way also with a step of 0.
        updateByRow(agc, cold, settingsOf(method), 0);
        Levels before;
        agc.apply(eachFrom(0, maximumCount), before);
        QVERIFY(agc.level(2500) > 100 && agc.level(2500) < 150);
        for (int frame = 0; frame < 10; ++frame)
            updateByRow(agc, warm, settingsOf(method), 0);
        Levels after;
        agc.apply(eachFrom(0, maximumCount), after);
        QCOMPARE(after, before);
        updateByRow(agc, warm, settingsOf(method), 1);
        QCOMPARE(agc.level(2500), uint8_t(0));
    }
}

void tst_imageGain::theRegionIsSpreadMoreThanTheWhole()
{
    const Counts counts = liveFrame();
    const Window region{60, 8, 24, 16};
    for (const AgcMethod method : {AgcMethod::Plateau, AgcMethod::Linear}) {
        const Levels byWhole = levelsOf(counts, settingsOf(method));
        const Levels byRegion = levelsOf(counts, settingsOf(method), region);
        QVERIFY(spreadIn(byRegion, region) > 1.5 * spreadIn(byWhole, region));
    }
}

void tst_imageGain::onlyPixelsOfTheRegionCount_data()
{
    QTest::addColumn<Window>("region");
    QTest::newRow("inside") << Window{2, 1, 2, 2};
    QTest::newRow("beyond the right and the bottom") << Window{2, 1, 100, 100};
    QTest::newRow("huge") << Window{2, 1, std::numeric_limits<int>::max(), std::numeric_limits<int>::max()};
}

void tst_imageGain::onlyPixelsOfTheRegionCount()
{
    QFETCH(const Window, region);
    const Counts counts{9, 9, 9, 9, //
                        9, 9, 4, 5, //
                        9, 9, 6, 7};
    Agc agc;
    agc.update(counts, {4, 3}, region, plateauOf(100), 1);
    QCOMPARE(Numbers({agc.level(3), agc.level(4), agc.level(5), agc.level(6), agc.level(7), agc.level(9)}),
             Numbers({0, 64, 128, 191, 255, 255}));
    // With all pixels, half of the levels are for the count 9.
    agc.update(counts, {4, 3}, {-1, -1, 10, 10}, plateauOf(100), 1);
    QCOMPARE(agc.level(7), uint8_t(85));
}

void tst_imageGain::aRegionWithoutPixelsChangesNothing_data()
{
    QTest::addColumn<Window>("region");
    QTest::addColumn<emulator::image::Size>("size");
    constexpr int most = std::numeric_limits<int>::max();
    const emulator::image::Size size{4, 4};
    QTest::newRow("empty") << Window{} << size;
    QTest::newRow("to the right") << Window{4, 0, 4, 4} << size;
    QTest::newRow("far") << Window{most, most, most, most} << size;
    QTest::newRow("above") << Window{0, -4, 4, 4} << size;
    QTest::newRow("negative") << Window{3, 3, -2, -2} << size;
    // Sizes that the frame has not.
    const Window whole{0, 0, most, most};
    QTest::newRow("too high") << whole << emulator::image::Size{4, 5};
    QTest::newRow("too low") << whole << emulator::image::Size{4, 3};
    QTest::newRow("negative size") << whole << emulator::image::Size{-4, -4};
    QTest::newRow("no size") << whole << emulator::image::Size{};
}

void tst_imageGain::aRegionWithoutPixelsChangesNothing()
{
    QFETCH(const Window, region);
    QFETCH(const emulator::image::Size, size);
    const Counts counts(16, 5000);
    for (const AgcMethod method : {AgcMethod::Plateau, AgcMethod::Linear}) {
        Agc agc;
        agc.update(counts, size, region, settingsOf(method), 1);
        QCOMPARE(agc.level(16'383), uint8_t(0));
        updateByRow(agc, {1}, manualOf(7000, 7000));
        agc.update(counts, size, region, settingsOf(method), 1);
        QCOMPARE(Numbers({agc.level(6999), agc.level(7000)}), Numbers({0, 255}));
    }
}

void tst_imageGain::limitsAreTheEndsOfTheTable_data()
{
    QTest::addColumn<int>("low");
    QTest::addColumn<int>("high");
    QTest::newRow("ramp") << 1000 << 3000;
    QTest::newRow("everything") << 0 << 16'383;
    QTest::newRow("step") << 5000 << 5000;
}

void tst_imageGain::limitsAreTheEndsOfTheTable()
{
    QFETCH(int, low);
    QFETCH(int, high);
    QCOMPARE(Agc().limits(), (Agc::Limits{16'383, 16'383}));
    const Agc agc = fittedTo({0}, manualOf(uint16_t(low), uint16_t(high)));
    const Agc::Limits limits = agc.limits();
    QCOMPARE(agc.level(limits.white), uint8_t{255});
    QVERIFY(limits.white == 0 || agc.level(uint16_t(limits.white - 1)) < 255);
    QCOMPARE(agc.level(limits.black), uint8_t{0});
    QVERIFY(agc.level(uint16_t(limits.black + 1)) > 0);
    QVERIFY(qAbs(limits.white - high) <= (high - low) / 255 + 1);
    QVERIFY(qAbs(limits.black - low) <= (high - low) / 255 + 1);
}

void tst_imageGain::levelsAreTheSameForEver_data()
{
    QTest::addColumn<int>("method");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("plateau") << int(AgcMethod::Plateau) << QByteArray("c10afbf2494fd9fb0f72507c06be9d5c");
    QTest::newRow("linear") << int(AgcMethod::Linear) << QByteArray("af11be1847e376feced8fe12dcc1de36");
    QTest::newRow("manual") << int(AgcMethod::Manual) << QByteArray("4a9c46a1fdc020eec7e2ebf106208fa0");
}

void tst_imageGain::levelsAreTheSameForEver()
{
    QFETCH(const int, method);
    Exposure exposure = exposureOf(Scene::Live);
    AgcSettings settings{.method = static_cast<AgcMethod>(method), .plateau = 37};
    settings.manualLow = 1234;
    settings.manualHigh = 7890;
    Agc agc;
    Counts counts;
    for (const double step : {1.0, 0.3, 0.017, 0.5}) {
        counts = frameOf(exposure);
        agc.update(counts, smallArray, {10, 20, 133, 97}, settings, step);
        exposure.frameNumber += 7;
        exposure.scene.microseconds += 1'234'567;
        exposure.readout.caseCelsius += 5;
    }
    Levels levels;
    agc.apply(counts, levels);
    QTEST(checksum(levels), "expected");
}

ZVT_TEST(tst_imageGain)
#include "tst_imageGain.moc"
