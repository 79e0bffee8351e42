#include "platform/emulator/image/Light.h"
#include "tests/platform/FrameRig.h"
#include "tests/support/Test.h"

#include <cmath>

using emulator::Clock;
using emulator::image::Light;
using Counts = FrameRig::Counts;

/// How the scene, the settings of the sensor and the temperatures change the frames of a camera.
class tst_cameraPicture : public Test
{
    Q_OBJECT

private slots:
    void longerIntegrationIsBrighterUntilItSaturates();
    void presetsHaveTheirOwnIntegrationTimes();
    void gainMultipliesTheSignal_data();
    void gainMultipliesTheSignal();
    void theSaturatingTimeComesFromTheProfile();
    void reducedNoiseReadsQuieter();
    void flatFieldHasTheDeviationsOfACooledCamera();
    void flipsMirrorTheFrame();
    void aWindowShowsItsPixels();
    void everyPatternShowsItsBlackbodies();
    void otherPatternsAreTheLiveScene();
    void targetsCanBeRemoved();
    void lightFollowsTheBand_data();
    void lightFollowsTheBand();
    void aWarmDetectorIsWhite();
    void withoutPowerTheDetectorWarmsUp();
    void anUncooledDetectorHasNoDarkCurrent();
    void theCaseTemperatureMovesTheOffsets();
    void aCameraWithoutSensorsHasTheTemperatureOfItsSurroundings();

private:
    /// Signal of the present settings above that of the shortest integration time, in counts.
    static double signal(FrameRig &rig);
};

double tst_cameraPicture::signal(FrameRig &rig)
{
    double milliseconds = 0;
    rig.sensor().integrationTime(0, milliseconds);
    const double bright = rig.mean();
    if (!rig.set("sensor.integrationTime", 0.001))
        return 0;
    const double dark = rig.mean();
    return rig.set("sensor.integrationTime", milliseconds) ? bright - dark : 0;
}

void tst_cameraPicture::longerIntegrationIsBrighterUntilItSaturates()
{
    FrameRig rig;
    QVERIFY(rig.useSmallWindow() && rig.showArea(35));
    double before = 0;
    for (const double milliseconds : {0.1, 0.5, 1.0, 2.0, 3.0, 3.8, 4.2}) {
        QVERIFY(rig.set("sensor.integrationTime", milliseconds));
        const double mean = rig.mean();
        QVERIFY2(mean > before + 100, qPrintable(QString::number(mean)));
        before = mean;
    }
    for (const double milliseconds : {12.0, 100.0, 1000.0}) {
        QVERIFY(rig.set("sensor.integrationTime", milliseconds));
        QCOMPARE(rig.mean(), 16'383.0);
    }
}

void tst_cameraPicture::presetsHaveTheirOwnIntegrationTimes()
{
    FrameRig rig;
    QVERIFY(rig.useSmallWindow() && rig.showArea(27));
    QVERIFY(rig.set("sensor.sequencingMode", int(emulator::Sensor::Superframing)));
    Clock::advance(1000);
    // 2, 1, 0.5 and 0.25 ms.
    const double longest = rig.mean(0);
    const double shortest = rig.mean(3);
    const double pedestal = shortest - (longest - shortest) / 7;
    QVERIFY(longest - shortest > 4000);
    QVERIFY(std::abs((rig.mean(1) - pedestal) / (longest - pedestal) - 0.5) < 0.01);
    QVERIFY(std::abs((rig.mean(2) - pedestal) / (longest - pedestal) - 0.25) < 0.01);
    QVERIFY(rig.set("sensor.activePreset", 2) && rig.set("sensor.integrationTime", 2.0));
    QVERIFY(std::abs(rig.mean(2) - longest) < 5);
    QVERIFY(std::abs(rig.mean(0) - longest) < 1);
}

void tst_cameraPicture::gainMultipliesTheSignal_data()
{
    QTest::addColumn<int>("level");
    QTest::addColumn<bool>("highSensitivity");
    QTest::addColumn<double>("factor");
    QTest::newRow("level 1") << 1 << false << 2.0;
    QTest::newRow("level 2") << 2 << false << 4.0;
    QTest::newRow("high sensitivity") << 0 << true << 2.0;
    QTest::newRow("level 1, high sensitivity") << 1 << true << 4.0;
}

void tst_cameraPicture::gainMultipliesTheSignal()
{
    QFETCH(const int, level);
    QFETCH(const bool, highSensitivity);
    QFETCH(const double, factor);
    FrameRig rig;
    QVERIFY(rig.useSmallWindow() && rig.showArea(27) && rig.set("sensor.integrationTime", 0.4));
    const double before = signal(rig);
    QVERIFY(before > 1000);
    QVERIFY(rig.set("gain.level", level) && rig.set("image.hsmEnabled", highSensitivity));
    const double ratio = signal(rig) / before;
    QVERIFY2(std::abs(ratio / factor - 1) < 0.01, qPrintable(QString::number(ratio)));
    // A mode that is not available has no effect.
    QVERIFY(rig.set("image.hsmAvailable", false));
    QVERIFY(std::abs(signal(rig) / before / (highSensitivity ? factor / 2 : factor) - 1) < 0.01);
}

void tst_cameraPicture::theSaturatingTimeComesFromTheProfile()
{
    FrameRig rig;
    QVERIFY(rig.useSmallWindow() && rig.showArea(27) && rig.set("sensor.integrationTime", 0.4));
    const double before = signal(rig);
    rig.openWith(R"({"sensor": {"saturatingIntegrationTime": 1}})");
    QVERIFY(rig.useSmallWindow() && rig.showArea(27) && rig.set("sensor.integrationTime", 0.4));
    QVERIFY(std::abs(signal(rig) / before / 4 - 1) < 0.01);
}

void tst_cameraPicture::reducedNoiseReadsQuieter()
{
    FrameRig rig;
    QVERIFY(rig.useSmallWindow() && rig.showArea(27));
    // The light and the dark current have shot noise. The mean without both is 1000 counts, 2 more for each kelvin of
    // the case, and rounding to whole counts adds a twelfth.
    const auto expected = [](double readNoise, double mean, double kelvin) {
        return std::sqrt(readNoise * readNoise + (mean - 1000 - 2 * kelvin) / 467 + 1 / 12.0);
    };
    const double kelvin = rig.exposure().readout.caseCelsius - 25;
    const auto normal = rig.statistics(32);
    QVERIFY(rig.set("sensor.reduceNoise", true));
    Clock::advance(1000);
    const auto reduced = rig.statistics(32);
    QCOMPARE(reduced.frames(), 32);
    const double quiet = reduced.temporalDeviation();
    const double loud = normal.temporalDeviation();
    QVERIFY2(std::abs(loud / expected(3, normal.mean(), kelvin) - 1) < 0.05, qPrintable(QString::number(loud)));
    QVERIFY2(std::abs(quiet / expected(2.4, reduced.mean(), kelvin) - 1) < 0.05, qPrintable(QString::number(quiet)));
    QVERIFY(std::abs(std::sqrt(loud * loud - quiet * quiet) / std::sqrt(9 - 2.4 * 2.4) - 1) < 0.05);
}

// The case is some 7 K warmer than 25 C. The differences of its drift are 18 counts, which adds 0.4 to 408.
void tst_cameraPicture::flatFieldHasTheDeviationsOfACooledCamera()
{
    FrameRig rig;
    QVERIFY(rig.showArea(27));
    const auto statistics = rig.statistics(64);
    QCOMPARE(statistics.frames(), 64);
    const double temporal = statistics.temporalDeviation();
    const double spatial = statistics.spatialDeviation();
    QVERIFY2(std::abs(temporal - 4.6) < 0.5, qPrintable(QString::number(temporal)));
    QVERIFY2(std::abs(spatial - 408) < 40, qPrintable(QString::number(spatial)));
}

// The same frame, so that its noise and its faults move with the pixels.
void tst_cameraPicture::flipsMirrorTheFrame()
{
    constexpr int width = 320;
    FrameRig rig;
    QVERIFY(rig.set("sensor.window", QVariantList{96, 100, width, 256}));
    const auto before = rig.camera().newestFrame(0);
    QVERIFY(before);
    QVERIFY(std::ranges::count(before->counts, 16'383) > 10);
    const auto flipped = [&](bool mirrored, bool inverted) {
        Counts counts = before->counts;
        if (inverted)
            std::ranges::reverse(counts); // This also mirrors it.
        if (mirrored != inverted)
            for (auto row = counts.begin(); row != counts.end(); row += width)
                std::reverse(row, row + width);
        return counts;
    };
    for (const auto &[mirrored, inverted] : {std::pair{true, false}, {true, true}, {false, true}, {false, false}}) {
        QVERIFY(rig.set("image.reverted", mirrored) && rig.set("image.inverted", inverted));
        QVERIFY(rig.frame(before->start) == flipped(mirrored, inverted));
    }
}

void tst_cameraPicture::aWindowShowsItsPixels()
{
    FrameRig rig;
    const auto whole = rig.camera().newestFrame(0);
    QVERIFY(whole);
    QCOMPARE(whole->size, (emulator::image::Size{640, 512}));
    for (const QVariantList &window : {QVariantList{32, 20, 160, 128}, {480, 508, 160, 4}, {0, 0, 64, 512}}) {
        const int x = window[0].toInt();
        const int y = window[1].toInt();
        const int width = window[2].toInt();
        const int height = window[3].toInt();
        QVERIFY(rig.set("sensor.window", window));
        const auto part = rig.camera().frame(0, whole->start.number);
        QVERIFY(part);
        QCOMPARE(part->size, (emulator::image::Size{width, height}));
        QCOMPARE(part->counts.size(), static_cast<size_t>(width * height));
        for (int row = 0; row < height; ++row)
            QVERIFY(std::equal(part->counts.begin() + row * width, part->counts.begin() + (row + 1) * width,
                               whole->counts.begin() + (y + row) * 640 + x));
    }
}

void tst_cameraPicture::everyPatternShowsItsBlackbodies()
{
    FrameRig rig;
    QVERIFY(rig.focusOn(25) && rig.set("emulator./BlackbodyTemp2", 40));
    const auto start = rig.camera().newestFrame(0)->start;
    // Returns the same frame of a window at these array coordinates.
    const auto at = [&](int x, int y) {
        return rig.set("sensor.window", QVariantList{x, y, 64, 64}) ? rig.frame(start) : Counts();
    };
    // Whether a window shows a body of this temperature. The sum of the lights of two bodies may be rounded once more.
    const auto shows = [&](int pattern, int x, int y, double celsius) {
        const bool set = rig.set("emulator./Pattern", pattern) && rig.set("emulator./BlackbodyTemp1", 30);
        const Counts counts = at(x, y);
        return set && rig.showArea(celsius) && largestDifference(counts, at(x, y)) <= 1;
    };
    // Round: in the middle, before the background.
    QVERIFY(shows(1, 288, 224, 30));
    QVERIFY(!shows(1, 288, 100, 30));
    // Halves.
    QVERIFY(shows(2, 128, 224, 30));
    QVERIFY(shows(2, 448, 224, 40));
    QVERIFY(!shows(2, 288, 224, 30));
    // An area.
    QVERIFY(shows(3, 0, 0, 30));
    QVERIFY(shows(3, 576, 448, 30));
    QVERIFY(!shows(3, 576, 448, 31));
}

void tst_cameraPicture::otherPatternsAreTheLiveScene()
{
    FrameRig rig;
    QVERIFY(rig.focusOn(25));
    const auto live = rig.camera().newestFrame(0);
    QVERIFY(live);
    for (const int pattern : {4, -1, 2'000'000'000, 0}) {
        QVERIFY(rig.set("emulator./Pattern", 3));
        QVERIFY(rig.frame(live->start) != live->counts);
        QVERIFY(rig.set("emulator./Pattern", pattern));
        QVERIFY(rig.frame(live->start) == live->counts);
    }
    // Its targets move with the clock.
    Clock::advance(1000);
    QVERIFY(largestDifference(rig.newest(), live->counts) > 3000);
}

void tst_cameraPicture::targetsCanBeRemoved()
{
    FrameRig rig;
    rig.openWith(FrameRig::equalPixels);
    QVERIFY(rig.focusOn(25));
    const auto changeInASecond = [&rig] {
        const Counts before = rig.newest();
        Clock::advance(1000);
        return largestDifference(rig.newest(), before);
    };
    QVERIFY(changeInASecond() > 3000);
    QCOMPARE(rig.exposure().scene.hottestCelsius(), 48.0);
    QVERIFY(rig.set("environment.movingTargets", false));
    QVERIFY(changeInASecond() < 300); // Noise.
    QCOMPARE(rig.exposure().scene.hottestCelsius(), 24.0);
    QVERIFY(rig.set("environment.movingTargets", true));
    QVERIFY(changeInASecond() > 3000);
}

void tst_cameraPicture::lightFollowsTheBand_data()
{
    QTest::addColumn<QByteArray>("profile");
    QTest::addColumn<int>("band");
    QTest::newRow("medium") << QByteArray("everything") << int(Light::Medium);
    QTest::newRow("long") << QByteArray("low-cost") << int(Light::Long);
    QTest::newRow("short") << QByteArray("te-cooler") << int(Light::Short);
}

void tst_cameraPicture::lightFollowsTheBand()
{
    QFETCH(const QByteArray, profile);
    QFETCH(const int, band);
    FrameRig rig(profile);
    QVERIFY(rig.showArea(20) && rig.set("sensor.integrationTime", 1.0));
    const double cool = signal(rig);
    QVERIFY(rig.showArea(40));
    const double warm = signal(rig);
    const auto light = [&](double celsius) { return Light::of(celsius, static_cast<Light::Band>(band)); };
    QVERIFY(cool > 100);
    // The curve of the pixels takes below 1 %.
    QVERIFY2(std::abs(warm / cool / (light(40) / light(20)) - 1) < 0.01, qPrintable(QString::number(warm / cool)));
}

void tst_cameraPicture::aWarmDetectorIsWhite()
{
    FrameRig rig;
    rig.open("everything");
    QVERIFY(rig.useSmallWindow());
    QVERIFY(rig.whiteShare() > 0.99);
    Clock::advance(40'000);
    QVERIFY(rig.whiteShare() > 0.99);
    // The picture gets normal within some seconds, when the detector is about 33 K above its cold temperature.
    double share = 1;
    float kelvinWhenVisible = 0;
    for (int seconds = 41; seconds <= 60; ++seconds) {
        Clock::advance(1000);
        QVERIFY(rig.whiteShare() <= share + 0.01);
        share = rig.whiteShare();
        if (share < 0.5 && kelvinWhenVisible == 0)
            QCOMPARE(zvtGetFPATemperature(rig.handle(), &kelvinWhenVisible), 0);
    }
    QVERIFY(share < 0.01);
    QVERIFY2(std::abs(kelvinWhenVisible - 113) < 5, qPrintable(QString::number(kelvinWhenVisible)));
}

void tst_cameraPicture::withoutPowerTheDetectorWarmsUp()
{
    FrameRig rig;
    QVERIFY(rig.useSmallWindow());
    QVERIFY(rig.set("cooler.power", false));
    QVERIFY(rig.whiteShare() < 0.01);
    Clock::advance(200'000);
    QVERIFY(rig.whiteShare() < 0.5);
    Clock::advance(400'000);
    QVERIFY(rig.whiteShare() > 0.99);
    QVERIFY(rig.set("cooler.power", true));
    FrameRig::coolDetector();
    QVERIFY(rig.whiteShare() < 0.01);
}

void tst_cameraPicture::anUncooledDetectorHasNoDarkCurrent()
{
    LensRig rig("low-cost");
    const auto frame = rig.camera().newestFrame(0);
    QVERIFY(frame);
    QVERIFY(emulator::image::Statistics::countAtLeast(frame->counts, 16'383) < frame->counts.size() / 100);
    QCOMPARE(rig.camera().exposure(frame->start).readout.dark(), 0.0);
}

void tst_cameraPicture::theCaseTemperatureMovesTheOffsets()
{
    FrameRig rig;
    QVERIFY(rig.useSmallWindow() && rig.showArea(27));
    // The sensor inside of the case reads A + 8 + 6 h, without its noise.
    const auto caseCelsius = [&] { return rig.exposure().readout.caseCelsius; };
    QVERIFY(std::abs(caseCelsius() - (23 + 8 + 6 * (1 - std::exp(-0.2)))) < 0.01);
    const double before = rig.mean();
    const double celsius = caseCelsius();
    QVERIFY(rig.set("environment.ambient", 43));
    QVERIFY(std::abs(rig.mean() - before) < 0.01);
    Clock::advance(3 * 3'600'000);
    QVERIFY(std::abs(caseCelsius() - (43 + 8 + 6)) < 0.01);
    const double perKelvin = (rig.mean() - before) / (caseCelsius() - celsius);
    QVERIFY2(std::abs(perKelvin - 2) < 0.1, qPrintable(QString::number(perKelvin)));
}

void tst_cameraPicture::aCameraWithoutSensorsHasTheTemperatureOfItsSurroundings()
{
    FrameRig rig("bare");
    QVERIFY(rig.set("environment.ambient", 40));
    Clock::advance(3'600'000);
    // All but e^-12 of the change from 23 C.
    QVERIFY(std::abs(rig.exposure().readout.caseCelsius - 40) < 0.001);
    QVERIFY(std::abs(rig.exposure().optics.lensCelsius - 40) < 0.001);
    QVERIFY(!rig.newest().empty());
}

ZVT_TEST(tst_cameraPicture)
#include "tst_cameraPicture.moc"
