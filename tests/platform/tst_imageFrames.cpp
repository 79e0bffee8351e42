#include "platform/emulator/image/Projection.h"
#include "platform/emulator/image/Statistics.h"
#include "tests/platform/ImageFixture.h"
#include "tests/support/Test.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>
#include <thread>

using namespace imageFixture;

/// Raw frames as functions of their exposures.
class tst_imageFrames : public Test
{
    Q_OBJECT

private slots:
    void rawFramesAreTheSameForEver_data();
    void rawFramesAreTheSameForEver();
    void tenThreadsMakeTheSameFrames();
    void aSmallerWindowIsAPartOfTheFrame();
    void hugeAndForeignWindowsHaveNoFrames_data();
    void hugeAndForeignWindowsHaveNoFrames();
    void noExposureLeavesTheRangeOfCounts();
    void backgroundIsBetween18And24Celsius();
    void targetsMoveWithTheClock();
    void everyPatternShowsItsBlackbodies();
    void otherPatternNumbersAreTheLiveScene();
    void flipsMirrorTheFrame();
    void zoomEnlargesTargets();
    void defocusKeepsTheLightOfADisc_data();
    void defocusKeepsTheLightOfADisc();
    void defocusLowersTheFocusMeasureSteadily_data();
    void defocusLowersTheFocusMeasureSteadily();
    void aBlockedLensShowsItsTemperature();
    void aFilterPassesItsShareAndGlows_data();
    void aFilterPassesItsShareAndGlows();
    void theSharpPlaceMovesWithTheLensTemperature();
};

void tst_imageFrames::rawFramesAreTheSameForEver_data()
{
    QTest::addColumn<int>("pattern");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("live") << int(Scene::Live) << QByteArray("2efae11603e17d9e3160ab8d976c8e17");
    QTest::newRow("round") << int(Scene::Round) << QByteArray("be111577a36c4aa361e2b2411a19f932");
    QTest::newRow("area") << int(Scene::Area) << QByteArray("1e2350afe4ddb677fe1faf733cce1fb7");
}

void tst_imageFrames::rawFramesAreTheSameForEver()
{
    QFETCH(const int, pattern);
    Exposure exposure = exposureOf(Scene::patternOf(pattern), {}, {640, 512});
    exposure.frameNumber = 12345;
    exposure.scene.microseconds = 123'456'789;
    exposure.optics.magnification = 1.5;
    exposure.optics.defocus = 0.7;
    exposure.readout.caseCelsius = 32.5;
    exposure.readout.warmth = 0.3;
    QTEST(checksum(frameOf(exposure)), "expected");
    QTEST(checksum(frameOf(exposure)), "expected");
}

void tst_imageFrames::tenThreadsMakeTheSameFrames()
{
    constexpr int threads = 10;
    constexpr int frames = 20;
    const auto render = [](int camera) {
        Exposure exposure = exposureOf(Scene::Live, {.seed = static_cast<uint64_t>(camera)});
        Counts all;
        for (int frame = 0; frame < frames; ++frame) {
            exposure.frameNumber = static_cast<uint64_t>(frame);
            exposure.scene.microseconds = frame * 10'000;
            const Counts counts = frameOf(exposure);
            all.insert(all.end(), counts.begin(), counts.end());
        }
        return all;
    };
    std::vector<Counts> together(threads);
    {
        std::vector<std::jthread> running;
        for (int camera = 0; camera < threads; ++camera)
            running.emplace_back([&, camera] { together[static_cast<size_t>(camera)] = render(camera); });
    }
    for (int camera = 0; camera < threads; ++camera)
        QVERIFY(together[static_cast<size_t>(camera)] == render(camera));
    QVERIFY(together[0] != together[1]);
}

// The faults, the noise and the scene belong to the coordinates of the array.
void tst_imageFrames::aSmallerWindowIsAPartOfTheFrame()
{
    Exposure exposure = exposureOf(Scene::Live);
    exposure.optics.defocus = 1.3;
    const Counts whole = frameOf(exposure);
    exposure.window = {33, 20, 75, 40};
    for (const bool ownMaps : {false, true}) {
        if (ownMaps)
            exposure.detector = Detector::make({}, smallArray, exposure.window);
        const Counts part = frameOf(exposure);
        QCOMPARE(part.size(), size_t(75 * 40));
        for (int y = 0; y < exposure.window.height; ++y)
            QVERIFY(std::equal(part.begin() + y * 75, part.begin() + (y + 1) * 75,
                               whole.begin() + (y + 20) * smallArray.width + 33));
    }
}

void tst_imageFrames::hugeAndForeignWindowsHaveNoFrames_data()
{
    QTest::addColumn<int>("x");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::newRow("4295 million pixels") << 0 << 65535 << 65535;
    QTest::newRow("one row too many") << 0 << 2048 << 2049;
    QTest::newRow("empty") << 0 << 0 << 10;
    QTest::newRow("negative") << 0 << -4 << -4;
    QTest::newRow("beyond the array") << 65530 << 10 << 1;
    QTest::newRow("before the array") << -1 << 10 << 1;
}

void tst_imageFrames::hugeAndForeignWindowsHaveNoFrames()
{
    QFETCH(const int, x);
    QFETCH(const int, width);
    QFETCH(const int, height);
    constexpr Size largestArray{65535, 65535};
    const Window refused{x, 0, width, height};
    QCOMPARE(Detector::make({}, largestArray, refused), nullptr);
    Exposure exposure;
    exposure.detector = Detector::make({}, largestArray, {100, 100, 64, 64});
    QVERIFY(exposure.detector);
    exposure.window = refused;
    Counts counts{7};
    QVERIFY(!renderFrame(exposure, counts));
    QCOMPARE(counts, Counts{7});
    QCOMPARE(countAtLeast(exposure, 0), size_t(0));
    exposure.window = {110, 110, 4, 4};
    QVERIFY(renderFrame(exposure, counts));
    exposure.detector.reset();
    QVERIFY(!renderFrame(exposure, counts));
}

// All million of them with ZVT_ALL_EXPOSURES=1, as CI does with the sanitizers. That takes ten times as long.
void tst_imageFrames::noExposureLeavesTheRangeOfCounts()
{
    const int exposures = qEnvironmentVariableIsSet("ZVT_ALL_EXPOSURES") ? 1'000'000 : 100'000;
    std::mt19937_64 random(1);
    const auto below = [&random](int end) { return static_cast<int>(random() % static_cast<uint64_t>(end)); };
    const auto number = [&](double ordinary) {
        constexpr double extremes[] = {0,
                                       -1,
                                       1e9,
                                       -273.15,
                                       -3.4e38,
                                       3.4e38,
                                       std::numeric_limits<double>::infinity(),
                                       -std::numeric_limits<double>::infinity(),
                                       std::numeric_limits<double>::quiet_NaN()};
        return below(4) == 0 ? extremes[below(std::size(extremes))] : ordinary * (below(2001) - 1000) / 1000;
    };
    std::vector<std::shared_ptr<const Detector>> detectors;
    for (const Size array : {Size{64, 64}, Size{64, 4}, Size{65535, 65535}})
        detectors.push_back(Detector::make({.dead = 9000, .hot = 9000, .weak = 9000, .strong = 9000, .twinkling = 9000},
                                           array, {0, 0, 64, std::min(64, array.height)}));
    Counts counts;
    for (int i = 0; i < exposures; ++i) {
        Exposure exposure;
        exposure.detector = detectors[static_cast<size_t>(below(3))];
        Window &window = exposure.window;
        const Window &all = exposure.detector->window();
        window.width = 1 + below(below(8) == 0 ? 64 : 16);
        window.height = 1 + below(below(8) == 0 ? all.height : 4);
        window.x = below(all.width - window.width + 1);
        window.y = below(all.height - window.height + 1);
        exposure.frameNumber = random();
        exposure.band = static_cast<Light::Band>(below(4));
        exposure.scene = {.pattern = Scene::patternOf(below(5)),
                          .blackbody1 = number(400),
                          .blackbody2 = number(400),
                          .hasTargets = below(2) == 0,
                          .secondSource = below(2) == 0,
                          .microseconds = static_cast<int64_t>(random())};
        exposure.optics = {.magnification = number(7),
                           .defocus = number(30),
                           .blocked = below(8) == 0,
                           .lensCelsius = number(80),
                           .flagCover = number(2),
                           .flagCelsius = number(80),
                           .transmission = number(2),
                           .filterCelsius = number(80),
                           .mirrored = below(2) == 0,
                           .inverted = below(2) == 0};
        exposure.readout = {number(20),    number(20),    below(260) - 2,
                            below(2) == 0, below(2) == 0, static_cast<Readout::Cooling>(below(3)),
                            number(100),   number(80),    {number(6), number(600), number(4)},
                            below(2),      number(30),    below(2) == 0};
        QVERIFY(renderFrame(exposure, counts));
        QCOMPARE(counts.size(), static_cast<size_t>(window.pixels()));
        if (std::ranges::max(counts) > Detector::maximumCount)
            QFAIL(qPrintable(QStringLiteral("exposure %1 has a count above the range").arg(i)));
    }
}

void tst_imageFrames::backgroundIsBetween18And24Celsius()
{
    Detector::Properties quiet = corrected();
    quiet.readNoise = 0;
    const auto countOf = [&](double celsius) {
        Exposure exposure = exposureOf(Scene::Area, quiet);
        exposure.scene.blackbody1 = celsius;
        Statistics statistics(static_cast<size_t>(exposure.window.pixels()));
        statistics.add(frameOf(exposure));
        return statistics.mean();
    };
    Exposure exposure = exposureOf(Scene::Round, quiet);
    exposure.scene.blackbody1 = 21;
    const Counts counts = frameOf(exposure);
    constexpr double noise = 20; // More than five deviations of the noise of the light.
    constexpr double shading = 0.02;
    QVERIFY(std::ranges::min(counts) > countOf(18) * (1 - shading) - noise);
    QVERIFY(std::ranges::max(counts) < countOf(24) + noise);
    QVERIFY(std::ranges::max(counts) - std::ranges::min(counts) > countOf(22) - countOf(19));
}

void tst_imageFrames::targetsMoveWithTheClock()
{
    const auto warmPixels = [](int64_t microseconds) {
        Exposure exposure = exposureOf(Scene::Live, corrected());
        exposure.scene.microseconds = microseconds;
        std::vector<bool> warm;
        for (const uint16_t count : frameOf(exposure))
            warm.push_back(count > 6500);
        return warm;
    };
    const auto now = warmPixels(0);
    QVERIFY(std::ranges::count(now, true) > 200);
    QVERIFY(now != warmPixels(1'000'000));
    QVERIFY(now == warmPixels(0));
    QVERIFY(Scene{.microseconds = -1}.discs().size() == 6);
    QCOMPARE(Scene{}.hottestCelsius(), 48.0);
}

void tst_imageFrames::everyPatternShowsItsBlackbodies()
{
    // Returns the mean of 20x20 pixels around a place.
    const auto around = [](const Exposure &exposure, int x, int y) {
        Exposure part = exposure;
        part.window = {x - 10, y - 10, 20, 20};
        Statistics statistics(400);
        statistics.add(frameOf(part));
        return statistics.mean();
    };
    const auto flat = [](double celsius) {
        Exposure exposure = exposureOf(Scene::Area, corrected());
        exposure.scene.blackbody1 = celsius;
        return exposure;
    };
    const auto matches = [&](const Exposure &exposure, int x, int y, double celsius) {
        return std::abs(around(exposure, x, y) - around(flat(celsius), x, y)) < 3;
    };
    Exposure exposure = exposureOf(Scene::Round, corrected());
    exposure.scene.blackbody1 = 30;
    exposure.scene.blackbody2 = 40;
    QVERIFY(matches(exposure, 80, 64, 30));
    QVERIFY(!matches(exposure, 80, 30, 30));
    QCOMPARE(exposure.scene.hottestCelsius(), 30.0);
    exposure.scene.pattern = Scene::Halves;
    QVERIFY(matches(exposure, 40, 64, 30));
    QVERIFY(matches(exposure, 120, 64, 40));
    QCOMPARE(exposure.scene.hottestCelsius(), 40.0);
    exposure.scene.pattern = Scene::Area;
    QVERIFY(matches(exposure, 15, 15, 30));
    exposure.scene.secondSource = true;
    QVERIFY(matches(exposure, 15, 15, 40));
    QCOMPARE(exposure.scene.hottestCelsius(), 40.0);
}

void tst_imageFrames::otherPatternNumbersAreTheLiveScene()
{
    QCOMPARE(Scene::patternOf(3), Scene::Area);
    for (const int number : {4, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()})
        QCOMPARE(Scene::patternOf(number), Scene::Live);
}

void tst_imageFrames::flipsMirrorTheFrame()
{
    Exposure exposure = exposureOf(Scene::Live);
    exposure.window = {16, 8, 64, 40};
    Counts expected = frameOf(exposure);
    exposure.optics.mirrored = true;
    for (auto row = expected.begin(); row != expected.end(); row += 64)
        std::reverse(row, row + 64);
    QVERIFY(frameOf(exposure) == expected);
    exposure.optics = {.inverted = true};
    std::ranges::reverse(expected); // Mirrored and inverted, so that only the rows are in the other order.
    QVERIFY(frameOf(exposure) == expected);
}

void tst_imageFrames::zoomEnlargesTargets()
{
    const auto diameter = [](double magnification) {
        Exposure exposure = exposureOf(Scene::Round, corrected(), {640, 512});
        exposure.scene.blackbody1 = 40;
        exposure.optics.magnification = magnification;
        return std::sqrt(double(Statistics::countAtLeast(frameOf(exposure), 7000)));
    };
    QCOMPARE(Optics::magnificationOf(0), 1.0);
    QCOMPARE(Optics::magnificationOf(1), 6.0);
    const double wide = diameter(1);
    QVERIFY(std::abs(wide * wide - 512.0 * 512 / 36 * 3.14159) < 200);
    for (const double magnification : {1.5, 2.0, 2.75})
        QVERIFY(std::abs(diameter(magnification) / wide - magnification) < 0.01);
}

void tst_imageFrames::defocusKeepsTheLightOfADisc_data()
{
    QTest::addColumn<double>("defocus");
    for (const double defocus : {0.0, 1.0, 4.0, 8.0, 16.0, 32.0}) // Blurred by up to eight radii.
        QTest::addRow("%g pixels", defocus) << defocus;
}

void tst_imageFrames::defocusKeepsTheLightOfADisc()
{
    QFETCH(const double, defocus);
    constexpr double radius = 10;
    constexpr Size array{640, 60};
    constexpr Window window{200, -90, 240, 240}; // Larger than the array, so that it contains the blurred disc.
    const auto light = [&](double celsius) {
        Projection projection({.pattern = Scene::Round, .blackbody1 = celsius}, {.defocus = defocus}, Light::Medium,
                              array, window);
        double sum = 0;
        for (int y = 0; y < window.height; ++y)
            for (const float pixel : projection.row(y))
                sum += double(pixel);
        return sum;
    };
    const double pixels = (light(100) - light(0)) / (Light::of(100, Light::Medium) - Light::of(0, Light::Medium));
    const double expected = std::numbers::pi * radius * radius;
    QVERIFY2(std::abs(pixels / expected - 1) < 0.03, qPrintable(QString::number(pixels / expected)));
}

void tst_imageFrames::defocusLowersTheFocusMeasureSteadily_data()
{
    QTest::addColumn<double>("magnification");
    QTest::newRow("wide") << 1.0;
    QTest::newRow("between") << 2.5;
    QTest::newRow("narrow") << 6.0;
}

void tst_imageFrames::defocusLowersTheFocusMeasureSteadily()
{
    QFETCH(const double, magnification);
    Exposure exposure;
    exposure.window = {256, 192, 128, 128};
    exposure.detector = Detector::make(corrected(), {640, 512}, exposure.window);
    exposure.optics.magnification = magnification;
    double before = std::numeric_limits<double>::infinity();
    for (const double defocus : {0.0, 0.35, 0.7, 1.0, 1.4, 2.0, 3.0, 4.0, 6.0, 8.0, 16.0}) {
        exposure.optics.defocus = defocus;
        const double measure = Statistics::focusMeasure(frameOf(exposure), 128);
        if (measure >= before)
            QFAIL(qPrintable(QStringLiteral("no decrease at %1 pixels").arg(defocus)));
        before = measure;
    }
}

void tst_imageFrames::aBlockedLensShowsItsTemperature()
{
    Exposure blocked = exposureOf(Scene::Live);
    blocked.optics.blocked = true;
    blocked.optics.lensCelsius = 31;
    Exposure flat = exposureOf(Scene::Area);
    flat.scene.blackbody1 = 31;
    QVERIFY(frameOf(blocked) == frameOf(flat));
}

void tst_imageFrames::aFilterPassesItsShareAndGlows_data()
{
    QTest::addColumn<double>("transmission");
    QTest::addColumn<double>("mean");
    QTest::newRow("open") << 1.0 << 5190.0;
    QTest::newRow("half") << 0.5 << 3412.0;
    QTest::newRow("tenth") << 0.1 << 1984.0;
    QTest::newRow("band pass") << 0.06 << 1841.0;
    QTest::newRow("hundredth") << 0.01 << 1662.0;
}

// A body of 20 C before an uncooled detector in a case of 30 C.
void tst_imageFrames::aFilterPassesItsShareAndGlows()
{
    QFETCH(const double, transmission);
    QFETCH(const double, mean);
    Exposure exposure = exposureOf(Scene::Area, {}, {640, 512});
    exposure.scene.blackbody1 = 20;
    exposure.readout.cooling = Readout::Uncooled;
    exposure.readout.caseCelsius = 30;
    exposure.optics.filterCelsius = 30;
    exposure.optics.transmission = transmission;
    Statistics statistics(static_cast<size_t>(exposure.window.pixels()));
    statistics.add(frameOf(exposure));
    QVERIFY2(std::abs(statistics.mean() / mean - 1) < 0.005, qPrintable(QString::number(statistics.mean())));
}

void tst_imageFrames::theSharpPlaceMovesWithTheLensTemperature()
{
    QCOMPARE(Optics::sharpShift(22.5), 0.0);
    QCOMPARE(Optics::sharpShift(32.5), 120.0);
    QCOMPARE(Optics::defocusOf(-210, 0), 0.7);
    QCOMPARE(Optics::defocusOf(70, 1), 0.7);
}

ZVT_TEST(tst_imageFrames)
#include "tst_imageFrames.moc"
