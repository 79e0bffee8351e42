#include "platform/emulator/image/Light.h"
#include "platform/emulator/image/Projection.h"
#include "platform/emulator/image/RowReader.h"
#include "platform/emulator/image/Statistics.h"
#include "tests/platform/ImageFixture.h"
#include "tests/support/Test.h"

#include <cmath>
#include <limits>

using namespace imageFixture;

/// The statistics of flat fields, and the light law.
class tst_imageDetector : public Test
{
    Q_OBJECT

private slots:
    void lightFollowsTheBand_data();
    void lightFollowsTheBand();
    void flatFieldHasTheDeviationsOfACooledCamera();
    void faultsBelongToTheArray();
    void twinklingPixelsStayForTwoToTwentyFrames();
    void longerIntegrationIsBrighterUntilItSaturates();
    void saturatedPixelsAreCountedWithoutAFrame_data();
    void saturatedPixelsAreCountedWithoutAFrame();
    void countsAreThoseOfAllRows();
    void countsRegardTheVoltages();
    void countEndsWhenItIsEnough();
    void warmDetectorIsWhite();
    void gainMultipliesTheSignalAndItsNoise();
    void reducedNoiseReadsQuieter();
    void caseTemperatureMovesTheOffsets();
    void statisticsOfKnownFrames();
    void focusMeasureOfKnownFrames();
};

namespace
{

/// The statistics of some frames of a flat field.
Statistics flatField(Exposure exposure, double celsius, int frames)
{
    exposure.scene.pattern = Scene::Area;
    exposure.scene.blackbody1 = celsius;
    std::vector<uint8_t> faulty(static_cast<size_t>(exposure.window.pixels()));
    for (const Detector::Fault &fault : exposure.detector->faults())
        faulty[static_cast<size_t>(fault.y * exposure.window.width + fault.x)] = 1;
    Statistics statistics(faulty.size(), faulty);
    for (int frame = 0; frame < frames; ++frame, ++exposure.frameNumber)
        statistics.add(frameOf(exposure));
    return statistics;
}

size_t countOfAllRows(const Exposure &exposure, uint16_t threshold)
{
    const Window &window = exposure.window;
    Projection projection(exposure.scene, exposure.optics, exposure.band, exposure.detector->array(), window);
    Detector::RowReader reader(*exposure.detector, exposure.readout, exposure.frameNumber);
    size_t pixels = 0;
    for (int y = 0; y < window.height; ++y)
        pixels += reader.countAtLeast(window.x, window.y + y, projection.row(y), threshold);
    return pixels;
}

} // namespace

void tst_imageDetector::lightFollowsTheBand_data()
{
    QTest::addColumn<int>("band");
    QTest::addColumn<double>("celsius");
    QTest::addColumn<double>("expected");
    QTest::newRow("medium, 35") << int(Light::Medium) << 35.0 << 1.0;
    QTest::newRow("medium, 27") << int(Light::Medium) << 27.0 << 0.75822;
    QTest::newRow("medium, 150") << int(Light::Medium) << 150.0 << 16.818;
    QTest::newRow("long, 35") << int(Light::Long) << 35.0 << 1.0;
    QTest::newRow("long, 150") << int(Light::Long) << 150.0 << 3.56139;
    QTest::newRow("short, 20") << int(Light::Short) << 20.0 << 0.3;
    QTest::newRow("short, 35") << int(Light::Short) << 35.0 << 0.45;
    QTest::newRow("short, cold") << int(Light::Short) << -40.0 << 0.02;
    QTest::newRow("absolute zero") << int(Light::Medium) << -273.15 << 0.0;
    QTest::newRow("below it") << int(Light::Long) << -3.4e38 << 0.0;
    QTest::newRow("hottest") << int(Light::Medium) << 3.4e38 << 32370.0;
    QTest::newRow("hottest, short") << int(Light::Short) << 3.4e38 << 100'000.0;
    QTest::newRow("no number") << int(Light::Medium) << std::numeric_limits<double>::quiet_NaN() << 0.0;
}

void tst_imageDetector::lightFollowsTheBand()
{
    QFETCH(const int, band);
    QFETCH(const double, celsius);
    QFETCH(const double, expected);
    const double light = Light::of(celsius, static_cast<Light::Band>(band));
    QVERIFY2(std::abs(light - expected) <= 1e-3 * expected, qPrintable(QString::number(light, 'g', 8)));
    const double steps = light * 256 * Light::fullSignal;
    QVERIFY(std::abs(steps - std::round(steps)) < 1e-3);
}

void tst_imageDetector::flatFieldHasTheDeviationsOfACooledCamera()
{
    const Exposure exposure = exposureOf(Scene::Area, {}, {640, 512});
    const Statistics statistics = flatField(exposure, 27, 64);
    QVERIFY2(std::abs(statistics.temporalDeviation() - 4.6) < 0.5,
             qPrintable(QString::number(statistics.temporalDeviation())));
    QVERIFY2(std::abs(statistics.spatialDeviation() - 408) < 40,
             qPrintable(QString::number(statistics.spatialDeviation())));
    const double perKelvin = flatField(exposure, 28, 4).mean() - flatField(exposure, 27, 4).mean();
    QVERIFY2(std::abs(perKelvin - 190) < 10, qPrintable(QString::number(perKelvin)));
    // After a correction only the noise and the shading of the lens are left.
    const Statistics corrected = flatField(exposureOf(Scene::Area, imageFixture::corrected(), {640, 512}), 27, 4);
    QVERIFY(corrected.spatialDeviation() < 30);
}

void tst_imageDetector::faultsBelongToTheArray()
{
    constexpr Size array{640, 512};
    const auto whole = Detector::make({}, array, {0, 0, 640, 512});
    const auto faults = whole->faults();
    QVERIFY(faults.size() > 420 && faults.size() < 560);
    const Exposure exposure = exposureOf(Scene::Area, {}, array);
    const Counts counts = frameOf(exposure);
    size_t shown = 0;
    for (const Detector::Fault &fault : faults) {
        const int count = counts[static_cast<size_t>(fault.y * array.width + fault.x)];
        if (fault.kind == Detector::Fault::Dead)
            QCOMPARE(count, 300);
        if (fault.kind == Detector::Fault::Hot)
            QCOMPARE(count, 16383);
        shown += fault.kind == Detector::Fault::Dead ? 1 : 0;
    }
    QVERIFY(shown > 100);
    const Window part{100, 50, 320, 256};
    size_t expected = 0;
    for (const Detector::Fault &fault : faults)
        expected += part.contains({fault.x, fault.y, 1, 1}) ? 1 : 0;
    QCOMPARE(Detector::make({}, array, part)->faults().size(), expected);
    QVERIFY(Detector::make({.seed = 2}, array, part)->faults().size() > 0);
}

void tst_imageDetector::twinklingPixelsStayForTwoToTwentyFrames()
{
    Exposure exposure = exposureOf(
        Scene::Area, {.offsetDeviation = 0, .dead = 0, .hot = 0, .weak = 0, .strong = 0, .twinkling = 1'000'000},
        {64, 4});
    exposure.window.width = 16;
    Counts low(16, 16'383);
    std::vector<Counts> frames;
    for (; exposure.frameNumber < 300; ++exposure.frameNumber) {
        frames.push_back(frameOf(exposure));
        for (size_t x = 0; x < 16; ++x)
            low[x] = std::min(low[x], frames.back()[x]);
    }
    for (size_t x = 0; x < 16; ++x) {
        int length = 0;
        int runs = 0;
        bool last = false;
        for (const Counts &frame : frames) {
            const bool now = frame[x] > low[x] + 210;
            if (now != last) {
                // The first run may have begun before.
                QVERIFY(runs == 0 || (length >= 2 && length <= 20));
                ++runs;
                length = 0;
            }
            last = now;
            ++length;
        }
        QVERIFY(runs > 20);
    }
}

void tst_imageDetector::longerIntegrationIsBrighterUntilItSaturates()
{
    Exposure exposure = exposureOf(Scene::Area);
    double before = 0;
    for (const double milliseconds : {0.1, 0.5, 1.0, 2.0, 3.0, 4.0, 4.5}) {
        exposure.readout.integrationTime = milliseconds;
        const double mean = flatField(exposure, 35, 1).mean();
        QVERIFY(mean > before + 100);
        before = mean;
    }
    for (const double milliseconds : {12.0, 1000.0, 1e30}) {
        exposure.readout.integrationTime = milliseconds;
        QCOMPARE(flatField(exposure, 35, 1).mean(), 16'383.0);
    }
}

void tst_imageDetector::saturatedPixelsAreCountedWithoutAFrame_data()
{
    QTest::addColumn<double>("milliseconds");
    QTest::addColumn<int>("least");
    QTest::addColumn<int>("most");
    QTest::newRow("few") << 3.5 << 100 << 400;
    QTest::newRow("some") << 4.0 << 15'000 << 60'000;
    QTest::newRow("most") << 5.0 << 310'000 << 327'400;
}

void tst_imageDetector::saturatedPixelsAreCountedWithoutAFrame()
{
    QFETCH(const double, milliseconds);
    QFETCH(const int, least);
    QFETCH(const int, most);
    Exposure exposure = exposureOf(Scene::Area, {}, {640, 512});
    exposure.scene.blackbody1 = 35;
    exposure.readout.integrationTime = milliseconds;
    const auto shown = static_cast<int>(Statistics::countAtLeast(frameOf(exposure), 16'383));
    const auto counted = static_cast<int>(countAtLeast(exposure, 16'383));
    QVERIFY2(shown > least && shown < most, qPrintable(QString::number(shown)));
    QVERIFY(std::abs(counted - shown) < 5 + shown / 100);
    QCOMPARE(countAtLeast(exposure, 0), size_t(640 * 512));
    QCOMPARE(countAtLeast(exposure, 16'384), size_t(0));
}

// Rows that cannot reach the threshold are not rendered.
void tst_imageDetector::countsAreThoseOfAllRows()
{
    const Detector::Properties faulty{.dead = 3000, .hot = 3000, .weak = 3000, .strong = 3000};
    int between = 0;
    for (const auto pattern : {Scene::Live, Scene::Round, Scene::Halves, Scene::Area})
        for (const double defocus : {0.0, 0.7, 8.0, 40.0})
            for (const double milliseconds : {0.5, 1.5, 2.5, 3.5, 4.5, 7.0})
                for (const int change : {0, 1, 2, 3}) {
                    Exposure exposure = exposureOf(pattern, faulty);
                    exposure.optics.defocus = defocus;
                    exposure.optics.transmission = change == 1 ? 0.5 : 1;
                    exposure.optics.flagCover = change == 2 ? 0.3 : 0;
                    exposure.optics.flagCelsius = 45;
                    exposure.readout.integrationTime = milliseconds;
                    exposure.readout.caseCelsius = change == 3 ? -30 : 40;
                    for (const uint16_t threshold : {300, 301, 9000, 14'000, 16'000, 16'383}) {
                        const size_t expected = countOfAllRows(exposure, threshold);
                        between += expected > 200 && expected < 20'000 ? 1 : 0;
                        QCOMPARE(countAtLeast(exposure, threshold), expected);
                    }
                }
    QVERIFY2(between > 300, qPrintable(QString::number(between)));
}

// Only the voltages make the pixels of these detectors different.
void tst_imageDetector::countsRegardTheVoltages()
{
    Detector::Properties byOffset = corrected();
    byOffset.voltageDeviation = 40;
    Detector::Properties byBias = corrected();
    byBias.biasDeviation = 0.02f;
    for (const auto &[properties, voltages] : {std::pair{byOffset, Voltages{.globalOffset = -3}},
                                               {byBias, Voltages{.bias = 450}},
                                               {byBias, Voltages{.bias = 100}}}) {
        Exposure exposure = exposureOf(Scene::Area, properties);
        exposure.readout.voltages = voltages;
        for (uint16_t threshold = 1000; threshold < 16'000; threshold += 20)
            QCOMPARE(countAtLeast(exposure, threshold), countOfAllRows(exposure, threshold));
    }
}

void tst_imageDetector::countEndsWhenItIsEnough()
{
    Exposure exposure = exposureOf(Scene::Area);
    exposure.readout.integrationTime = 100;
    const auto row = static_cast<size_t>(exposure.window.width);
    QVERIFY(countAtLeast(exposure, 16'000) > 100 * row);
    QVERIFY(countAtLeast(exposure, 16'000, 1) > 0);
    QVERIFY(countAtLeast(exposure, 16'000, 1) <= row);
    QCOMPARE(countAtLeast(exposure, 16'000, 0), size_t(0));
}

void tst_imageDetector::warmDetectorIsWhite()
{
    Exposure exposure = exposureOf(Scene::Live);
    const auto white = [&](Readout::Cooling cooling, double warmth) {
        exposure.readout.cooling = cooling;
        exposure.readout.warmth = warmth;
        return double(Statistics::countAtLeast(frameOf(exposure), 16'383)) / double(exposure.window.pixels());
    };
    QVERIFY(white(Readout::Stirling, 210) > 0.99);
    QVERIFY(white(Readout::Stirling, 36) > 0.99);
    QVERIFY(white(Readout::Stirling, 15) < 0.01);
    QVERIFY(white(Readout::Thermoelectric, 36) < 0.01);
    QVERIFY(white(Readout::Thermoelectric, 60) > 0.99);
    QVERIFY(white(Readout::Uncooled, 210) < 0.01);
    exposure.readout = {};
    QCOMPARE(exposure.readout.dark(), 150.0);
    exposure.readout.warmth = 10;
    QCOMPARE(exposure.readout.dark(), 600.0);
}

void tst_imageDetector::gainMultipliesTheSignalAndItsNoise()
{
    Detector::Properties properties = corrected();
    properties.offset = 0;
    properties.readNoise = 0;
    Exposure exposure = exposureOf(Scene::Area, properties);
    exposure.readout.cooling = Readout::Uncooled;
    exposure.readout.integrationTime = 0.5;
    const Statistics single = flatField(exposure, 27, 16);
    for (const auto &[level, highSensitivity, factor] :
         {std::tuple{1, false, 2.0}, {2, false, 4.0}, {0, true, 2.0}, {2, true, 8.0}}) {
        exposure.readout.gainLevel = level;
        exposure.readout.highSensitivity = highSensitivity;
        const Statistics amplified = flatField(exposure, 27, 16);
        QVERIFY(std::abs(amplified.mean() / single.mean() - factor) < 0.01 * factor);
        QVERIFY(std::abs(amplified.temporalDeviation() / single.temporalDeviation() - factor) < 0.03 * factor);
    }
}

void tst_imageDetector::reducedNoiseReadsQuieter()
{
    Exposure exposure = exposureOf(Scene::Area);
    exposure.readout.cooling = Readout::Uncooled;
    exposure.readout.integrationTime = 0;
    // The rounding to whole counts adds a twelfth.
    QVERIFY(std::abs(flatField(exposure, 27, 16).temporalDeviation() - std::sqrt(9 + 1 / 12.0)) < 0.05);
    exposure.readout.reducedNoise = true;
    QVERIFY(std::abs(flatField(exposure, 27, 16).temporalDeviation() - std::sqrt(2.4 * 2.4 + 1 / 12.0)) < 0.05);
}

void tst_imageDetector::caseTemperatureMovesTheOffsets()
{
    Exposure exposure = exposureOf(Scene::Area);
    const double before = flatField(exposure, 27, 4).mean();
    exposure.readout.caseCelsius = 35;
    QVERIFY(std::abs(flatField(exposure, 27, 4).mean() - before - 20) < 2);
}

void tst_imageDetector::statisticsOfKnownFrames()
{
    Statistics statistics(4, {0, 0, 0, 1});
    QCOMPARE(statistics.mean(), 0.0);
    QCOMPARE(statistics.spatialDeviation(), 0.0);
    statistics.add(Counts{10, 20, 30, 9999});
    QCOMPARE(statistics.temporalDeviation(), 0.0);
    statistics.add(Counts{12, 22, 32, 0});
    statistics.add(Counts{1, 2, 3}); // Of another size.
    QCOMPARE(statistics.frames(), 2);
    QCOMPARE(statistics.mean(), 21.0);
    QCOMPARE(statistics.spatialDeviation(), std::sqrt(200 / 3.0));
    QCOMPARE(statistics.temporalDeviation(), std::sqrt(2.0));
    QCOMPARE(Statistics(0).mean(), 0.0);
    QCOMPARE(Statistics::countAtLeast(Counts{1, 2, 3, 4}, 3), size_t(2));
}

void tst_imageDetector::focusMeasureOfKnownFrames()
{
    QCOMPARE(Statistics::focusMeasure(Counts{5, 5, 5, 5}, 2), 0.0);
    // Differences of 1, 2, 3 and 4.
    QCOMPARE(Statistics::focusMeasure(Counts{5, 6, 8, 10}, 2), (1 + 4 + 9 + 16) / 4.0);
    QCOMPARE(Statistics::focusMeasure(Counts{0, 16'383}, 2), 16'383.0 * 16'383.0);
    QCOMPARE(Statistics::focusMeasure({}, 2), 0.0);
    QCOMPARE(Statistics::focusMeasure(Counts{1, 2, 3}, 2), 0.0);
    QCOMPARE(Statistics::focusMeasure(Counts{1, 2, 3}, 0), 0.0);
}

ZVT_TEST(tst_imageDetector)
#include "tst_imageDetector.moc"
