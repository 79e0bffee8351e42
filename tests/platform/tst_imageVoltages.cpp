#include "platform/emulator/image/makeCorrection.h"
#include "tests/platform/ImageFixture.h"
#include "tests/support/Test.h"

#include <cmath>
#include <limits>
#include <memory>

using namespace imageFixture;

/// What the voltages of a detector and its second colour change in the frames.
class tst_imageVoltages : public Test
{
    Q_OBJECT

private slots:
    void startValuesChangeNothing();
    void correctionsStopFitting_data();
    void correctionsStopFitting();
    void globalOffsetAddsCounts();
    void referenceActsAsTwiceTheGlobalOffset();
    void biasChangesTheResponse_data();
    void biasChangesTheResponse();
    void differencesByBiasAndCommonAddUp_data();
    void differencesByBiasAndCommonAddUp();
    void biasChangesTheReadNoise();
    void biasChangesTheTwinklingPixels_data();
    void biasChangesTheTwinklingPixels();
    void skimmingLetsHotScenesFit();
    void skimmingFollowsTheIntegration();
    void secondColorSeesOtherLight();
    void saturatedPixelsAreCountedWithVoltages();
    void outOfRangeIsTheNearerEnd();
};

namespace
{

/// The mean of the pixels without faults.
double meanOf(const Exposure &exposure)
{
    Statistics statistics(static_cast<size_t>(exposure.window.pixels()), faultsOf(exposure));
    statistics.add(frameOf(exposure));
    return statistics.mean();
}

Exposure withVoltages(Exposure exposure, const Voltages &voltages)
{
    exposure.readout.voltages = voltages;
    return exposure;
}

QByteArray text(double number) { return QByteArray::number(number); }

} // namespace

void tst_imageVoltages::startValuesChangeNothing()
{
    const Voltages voltages;
    QCOMPARE(voltages.response(), 1.0);
    QCOMPARE(voltages.readNoise(), 1.0);
    QCOMPARE(voltages.twinkling(), 1.0);
    QCOMPARE(voltages.excess(), 0.0);
    QCOMPARE(voltages.addedCounts(), 0.0);
    QCOMPARE(voltages.skimmedCounts(2), 0.0);
}

void tst_imageVoltages::correctionsStopFitting_data()
{
    // Steps of a tenth of the range.
    QTest::addColumn<Voltages>("voltages");
    const Voltages start{.skimming = 1.2};
    const auto row = [&start](const char *name, double Voltages::*voltage, double volts) {
        Voltages stepped = start;
        stepped.*voltage = volts;
        QTest::newRow(name) << stepped;
    };
    row("global offset", &Voltages::globalOffset, 1);
    row("global offset, down", &Voltages::globalOffset, -1);
    row("bias", &Voltages::bias, 300);
    row("bias, down", &Voltages::bias, 200);
    row("skimming", &Voltages::skimming, 1.53);
    row("skimming, down", &Voltages::skimming, 0.87);
    row("skimming, off", &Voltages::skimming, 0);
    row("reference", &Voltages::reference, 1.78);
    row("reference, down", &Voltages::reference, 1.52);
    row("common", &Voltages::common, 2.52);
    row("common, down", &Voltages::common, 2.28);
}

void tst_imageVoltages::correctionsStopFitting()
{
    QFETCH(const Voltages, voltages);
    const Exposure exposure = withVoltages(exposureOf(Scene::Area, {}, {640, 512}), {.skimming = 1.2});
    const auto made = makeTwoPoint(collect(areaOf(exposure, 20), 16), collect(areaOf(exposure, 35), 16), nullptr, {});
    QVERIFY(made);
    Exposure seen = areaOf(exposure, 27);
    seen.correction = std::make_shared<const CorrectionTable>(made->table);
    const double fitting = residualOf(seen);
    QVERIFY2(fitting < 2.5, text(fitting));
    const double stepped = residualOf(withVoltages(seen, voltages));
    QVERIFY2(stepped > 5 * fitting, text(stepped / fitting));
}

void tst_imageVoltages::globalOffsetAddsCounts()
{
    Exposure exposure = areaOf(exposureOf(Scene::Area), 27);
    exposure.readout.noise = false;
    const FrameCollector before = collect(exposure, 1);
    const FrameCollector after = collect(withVoltages(exposure, {.globalOffset = 2}), 1);
    Statistics differences(before.pixels(), faultsOf(exposure));
    Counts added;
    for (size_t i = 0; i < before.pixels(); ++i)
        added.push_back(static_cast<uint16_t>(std::max(0.0, after.mean(i) - before.mean(i))));
    differences.add(added);
    QVERIFY2(std::abs(differences.mean() - 800) < 5, text(differences.mean()));
    QVERIFY2(std::abs(differences.spatialDeviation() - 80) < 4, text(differences.spatialDeviation()));
    QVERIFY(std::abs(meanOf(withVoltages(exposure, {.globalOffset = -2})) - meanOf(exposure) + 800) < 5);
}

void tst_imageVoltages::referenceActsAsTwiceTheGlobalOffset()
{
    const Exposure exposure = areaOf(exposureOf(Scene::Area, {}, {64, 64}), 27);
    constexpr double start = Voltages::startReference;
    for (const double volts : {-0.25, 0.5})
        QCOMPARE(frameOf(withVoltages(exposure, {.reference = start + volts})),
                 frameOf(withVoltages(exposure, {.globalOffset = 2 * volts})));
}

void tst_imageVoltages::biasChangesTheResponse_data()
{
    QTest::addColumn<double>("bias");
    QTest::addColumn<double>("response");
    QTest::newRow("none") << 0.0 << 0.0;
    QTest::newRow("100") << 100.0 << 0.64575;
    QTest::newRow("start") << 250.0 << 1.0;
    QTest::newRow("highest") << 500.0 << 1.12453;
}

void tst_imageVoltages::biasChangesTheResponse()
{
    QFETCH(const double, bias);
    QFETCH(const double, response);
    Detector::Properties properties = imageFixture::corrected();
    properties.offset = 500;
    properties.biasDeviation = 0.02f;
    Exposure exposure = withVoltages(areaOf(exposureOf(Scene::Area, properties), 27), {.bias = bias});
    exposure.readout.noise = false;
    exposure.readout.cooling = Readout::Uncooled;
    Statistics statistics(static_cast<size_t>(exposure.window.pixels()));
    statistics.add(frameOf(exposure));
    const double light = 15'000 * 0.5 * 0.75822 * 0.9965; // The lens loses some of it outside of the centre.
    QVERIFY2(std::abs(statistics.mean() - 500 - light * response) < 20, text(statistics.mean()));
    // Two hundredths from pixel to pixel at both ends, beside the shading of the lens.
    const double deviation = light * response * 0.02 * std::abs(bias - 250) / 250;
    const double shading = light * response * 0.0031;
    QVERIFY2(std::abs(statistics.spatialDeviation() - std::hypot(deviation, shading)) < 4,
             text(statistics.spatialDeviation()));
}

void tst_imageVoltages::differencesByBiasAndCommonAddUp_data()
{
    QTest::addColumn<double>("bias");
    QTest::addColumn<double>("common");
    QTest::addColumn<double>("excess");
    QTest::newRow("bias") << 500.0 << Voltages::startCommon << 1.0;
    QTest::newRow("common") << 250.0 << 3.0 << 1.0;
    QTest::newRow("common, down") << 250.0 << Voltages::minimumCommon << -1.0;
    QTest::newRow("both") << 500.0 << 3.0 << 2.0;
    QTest::newRow("against each other") << 500.0 << Voltages::minimumCommon << 0.0;
}

void tst_imageVoltages::differencesByBiasAndCommonAddUp()
{
    QFETCH(const double, bias);
    QFETCH(const double, common);
    QFETCH(const double, excess);
    Detector::Properties properties = imageFixture::corrected();
    properties.offset = 500;
    properties.biasDeviation = 0.02f;
    Exposure exposure = withVoltages(areaOf(exposureOf(Scene::Area, properties), 27), {.bias = bias, .common = common});
    exposure.readout.noise = false;
    exposure.readout.cooling = Readout::Uncooled;
    Statistics statistics(static_cast<size_t>(exposure.window.pixels()));
    statistics.add(frameOf(exposure));
    // Beside the shading of the lens.
    const double expected = (statistics.mean() - 500) * std::hypot(0.02 * excess, 0.0031);
    QVERIFY2(std::abs(statistics.spatialDeviation() - expected) < 4, text(statistics.spatialDeviation() - expected));
}

void tst_imageVoltages::biasChangesTheReadNoise()
{
    Exposure exposure = exposureOf(Scene::Area, {.twinkling = 0});
    exposure.readout.cooling = Readout::Uncooled;
    exposure.readout.integrationTime = 0;
    const auto noise = [&](double bias) {
        Statistics statistics(static_cast<size_t>(exposure.window.pixels()), faultsOf(exposure));
        Exposure next = withVoltages(exposure, {.bias = bias});
        for (; next.frameNumber < 16; ++next.frameNumber)
            statistics.add(frameOf(next));
        return std::sqrt(std::pow(statistics.temporalDeviation(), 2) - 1 / 12.0);
    };
    const double atStart = 1 + std::pow(250 / 400.0, 4);
    QVERIFY2(std::abs(noise(250) - 3) < 0.05, text(noise(250)));
    QVERIFY2(std::abs(noise(0) - 3 / atStart) < 0.05, text(noise(0)));
    QVERIFY2(std::abs(noise(500) - 3 * (1 + std::pow(500 / 400.0, 4)) / atStart) < 0.1, text(noise(500)));
}

void tst_imageVoltages::biasChangesTheTwinklingPixels_data()
{
    QTest::addColumn<double>("bias");
    QTest::addColumn<double>("share");
    QTest::newRow("none") << 0.0 << 0.0;
    QTest::newRow("half") << 125.0 << 0.25;
    QTest::newRow("start") << 250.0 << 1.0;
    QTest::newRow("highest") << 500.0 << 4.0;
}

void tst_imageVoltages::biasChangesTheTwinklingPixels()
{
    QFETCH(const double, bias);
    QFETCH(const double, share);
    const Exposure exposure = areaOf(exposureOf(Scene::Area, {.twinkling = 20'000}), 20);
    const FrameCollector frames = collect(withVoltages(exposure, {.bias = bias}), 32);
    double twinkling = 0;
    for (size_t i = 0; i < frames.pixels(); ++i)
        twinkling += frames.maxima()[i] - frames.minima()[i] > 300 ? 1 : 0;
    const double expected = 0.02 * share * static_cast<double>(frames.pixels());
    QVERIFY2(std::abs(twinkling - expected) <= 0.15 * expected, text(twinkling));
    // The faults are those of the start value.
    QVERIFY(std::abs(double(exposure.detector->faults().size()) - 0.0213 * double(frames.pixels())) < 60);
}

void tst_imageVoltages::skimmingLetsHotScenesFit()
{
    Exposure exposure = areaOf(exposureOf(Scene::Area), 35);
    exposure.readout.integrationTime = 4.5;
    const auto white = [](const Exposure &seen) {
        return double(Statistics::countAtLeast(frameOf(seen), 16'383)) / double(seen.window.pixels());
    };
    QVERIFY2(white(exposure) > 0.3, text(white(exposure)));
    const Exposure skimmed = withVoltages(exposure, {.skimming = 3.3});
    QVERIFY2(white(skimmed) < 0.002, text(white(skimmed)));
}

void tst_imageVoltages::skimmingFollowsTheIntegration()
{
    Detector::Properties properties = imageFixture::corrected();
    properties.offset = 500;
    for (const double milliseconds : {1.0, 2.0, 3.0})
        for (const double volts : {0.5, 1.2}) {
            Exposure exposure = areaOf(exposureOf(Scene::Area, properties), 30);
            exposure.readout.integrationTime = milliseconds;
            const double taken = meanOf(exposure) - meanOf(withVoltages(exposure, {.skimming = volts}));
            QVERIFY2(std::abs(taken - 600 * volts * milliseconds / 2) < 2, text(taken));
        }
    // It takes off light only.
    Exposure dark = areaOf(exposureOf(Scene::Area, properties), -100);
    dark.readout.cooling = Readout::Uncooled;
    QVERIFY(std::abs(meanOf(withVoltages(dark, {.skimming = 3.3})) - 500) < 1);
}

void tst_imageVoltages::secondColorSeesOtherLight()
{
    QVERIFY(std::abs(Light::of(27, Light::SecondColor) - std::exp(2400 * (1 / 308.15 - 1 / 300.15))) < 1e-4);
    QCOMPARE(Light::of(35, Light::SecondColor), 1.0);
    Exposure first = areaOf(exposureOf(Scene::Area), 35);
    Exposure second = first;
    second.band = Light::SecondColor;
    second.readout.color = 1;
    // The same light at 35 C, with higher offsets; a cold scene is brighter in comparison.
    QVERIFY(std::abs(meanOf(second) - meanOf(first) - 300) < 1);
    QVERIFY(meanOf(areaOf(second, 0)) > meanOf(areaOf(first, 0)) + 900);
}

void tst_imageVoltages::saturatedPixelsAreCountedWithVoltages()
{
    Exposure exposure = areaOf(exposureOf(Scene::Area), 35);
    exposure.readout.integrationTime = 4;
    exposure.readout.color = 1;
    for (const Voltages &voltages : {Voltages{.globalOffset = 0.8}, Voltages{.globalOffset = -1, .bias = 380},
                                     Voltages{.bias = 400, .skimming = 1}, Voltages{.reference = 2.2, .common = 2.9}}) {
        const Exposure seen = withVoltages(exposure, voltages);
        const auto shown = static_cast<int>(Statistics::countAtLeast(frameOf(seen), 16'000));
        const auto counted = static_cast<int>(countAtLeast(seen, 16'000));
        QVERIFY2(shown > 200 && shown < 20'300, text(shown));
        QVERIFY2(std::abs(counted - shown) < 5 + shown / 50, text(counted - shown));
    }
}

void tst_imageVoltages::outOfRangeIsTheNearerEnd()
{
    const Exposure exposure = exposureOf(Scene::Live);
    constexpr double infinite = std::numeric_limits<double>::infinity();
    QCOMPARE(frameOf(withVoltages(exposure, {infinite, infinite, infinite, infinite, infinite})),
             frameOf(withVoltages(exposure, {5, 500, 3.3, 2.3F, 3.0})));
    QCOMPARE(frameOf(withVoltages(exposure, {-1e300, -1e300, -1e300, -1e300, -1e300})),
             frameOf(withVoltages(exposure, {-5, 0, 0, 1.0, 1.8F})));
    const double noNumber = std::numeric_limits<double>::quiet_NaN();
    QCOMPARE(frameOf(withVoltages(exposure, {noNumber, noNumber, noNumber, noNumber, noNumber})),
             frameOf(withVoltages(exposure, {-5, 0, 0, 1.0, 1.8F})));
}

ZVT_TEST(tst_imageVoltages)
#include "tst_imageVoltages.moc"
