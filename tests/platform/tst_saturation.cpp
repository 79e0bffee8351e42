#include "platform/emulator/devices/EmulatorProperties.h"
#include "platform/emulator/devices/FrameSync.h"
#include "tests/platform/FrameRig.h"
#include "tests/support/Test.h"

#include <atomic>
#include <cmath>
#include <limits>
#include <thread>

using emulator::Clock;
using emulator::image::Statistics;

/// The saturation flag of a camera.
class tst_saturation : public Test
{
    Q_OBJECT

private slots:
    void anAreaBlackbodySaturates_data();
    void anAreaBlackbodySaturates();
    void beforeAnyFrameTheHottestPlaceDecides();
    void onePixelInAThousandRaisesIt();
    void manyHotPixelsRaiseIt_data();
    void manyHotPixelsRaiseIt();
    void pixelsOfVeryDifferentGainRaiseIt();
    void aHotPixelOfASmallWindowRaisesIt();
    void theLongestPresetInUseDecides();
    void eachColorInUseDecides();
    void aBlackbodyThatIsNotShownDoesNotSaturate();
    void aTemperatureThatIsNoNumberIsCold_data();
    void aTemperatureThatIsNoNumberIsCold();
    void gainAndHighSensitivitySaturate();
    void theCoverHidesAHotScene();
    void aHotFlagSaturates();
    void aWarmDetectorIsSaturated();
    void faultyPixelsDoNotRaiseIt();
    void anotherClientCanRaiseIt();
    void withoutFramesOnlyAnotherClientRaisesIt();
    void aLostSignalEndsIt();
    void itIsReadWhileFramesAreMade();

private:
    /// -1 if the camera refuses to return the flag.
    static int flag(FrameRig &rig)
    {
        uint8_t saturated = 9;
        return zvtGetSaturatedFlag(rig.handle(), &saturated) == 0 ? saturated : -1;
    }
    static bool hasMaps(FrameRig &rig) { return rig.exposure().detector != nullptr; }
    /// The share of the pixels of the last frames that have 16000 counts or more.
    static double brightShare(FrameRig &rig, int frames);
};

void tst_saturation::anAreaBlackbodySaturates_data()
{
    QTest::addColumn<double>("milliseconds");
    QTest::addColumn<int>("expected");
    QTest::newRow("3.5 ms") << 3.5 << 0;
    QTest::newRow("4 ms") << 4.0 << 1;
    QTest::newRow("5 ms") << 5.0 << 1;
    QTest::newRow("100 ms") << 100.0 << 1;
}

void tst_saturation::anAreaBlackbodySaturates()
{
    QFETCH(const double, milliseconds);
    QFETCH(const int, expected);
    FrameRig rig;
    QVERIFY(rig.showArea(35) && rig.set("sensor.integrationTime", milliseconds));
    QCOMPARE(flag(rig), expected);
    QVERIFY(!hasMaps(rig));
    QVERIFY(!rig.newest().empty());
    QCOMPARE(flag(rig), expected);
}

void tst_saturation::beforeAnyFrameTheHottestPlaceDecides()
{
    FrameRig rig;
    QCOMPARE(flag(rig), 0); // Targets of 48 C at 2 ms.
    QVERIFY(rig.set("sensor.integrationTime", 20.0));
    QCOMPARE(flag(rig), 1);
    QVERIFY(rig.showArea(35) && rig.set("sensor.integrationTime", 2.0));
    QCOMPARE(flag(rig), 0);
    QVERIFY(rig.showArea(60));
    QCOMPARE(flag(rig), 1);
    QVERIFY(rig.showArea(-20));
    QCOMPARE(flag(rig), 0);
    QVERIFY(!hasMaps(rig));
}

double tst_saturation::brightShare(FrameRig &rig, int frames)
{
    const auto newest = rig.camera().newestFrame(0);
    if (!newest)
        return -1;
    double pixels = 0;
    for (int back = 0; back < frames; ++back)
        if (const auto frame = rig.camera().frame(0, newest->start.number - static_cast<uint64_t>(back)))
            pixels += double(Statistics::countAtLeast(frame->counts, 16'000));
    return pixels / double(newest->counts.size()) / frames;
}

// The mean of several frames, since the flag does not regard the noise.
void tst_saturation::onePixelInAThousandRaisesIt()
{
    FrameRig rig;
    QVERIFY(rig.showArea(35) && !rig.newest().empty());
    double dark = 3.5;
    double bright = 4;
    // Down to a clock of the sensor.
    while (bright - dark > 0.00005) {
        const double middle = (dark + bright) / 2;
        QVERIFY(rig.set("sensor.integrationTime", middle));
        (flag(rig) == 1 ? bright : dark) = middle;
    }
    QVERIFY(dark > 3.5 && bright < 4);
    const double share = brightShare(rig, 32);
    QVERIFY2(std::abs(share / 0.001 - 1) < 0.01, qPrintable(QString::number(share)));
}

void tst_saturation::manyHotPixelsRaiseIt_data()
{
    QTest::addColumn<QByteArray>("devices");
    QTest::addColumn<int>("expected");
    QTest::newRow("one pixel in 2000") << QByteArray(R"({"sensor": {"detector": {"hot": 500}}})") << 0;
    QTest::newRow("one pixel in 500") << QByteArray(R"({"sensor": {"detector": {"hot": 2000}}})") << 1;
}

void tst_saturation::manyHotPixelsRaiseIt()
{
    QFETCH(const QByteArray, devices);
    QFETCH(const int, expected);
    FrameRig rig;
    rig.openWith(devices);
    QVERIFY(rig.showArea(0));
    QCOMPARE(flag(rig), 0);
    QCOMPARE(brightShare(rig, 1) > 0.001, expected == 1);
    QCOMPARE(flag(rig), expected);
}

// A usual pixel has 12000 counts.
void tst_saturation::pixelsOfVeryDifferentGainRaiseIt()
{
    FrameRig rig;
    rig.openWith(R"({"sensor": {"detector": {"gainDeviation": 0.2}}})");
    QVERIFY(rig.showArea(35) && rig.set("sensor.integrationTime", 2.7));
    QCOMPARE(flag(rig), 0);
    QVERIFY(brightShare(rig, 1) > 0.0015);
    QCOMPARE(flag(rig), 1);
    QVERIFY(rig.set("sensor.integrationTime", 2.0));
    QVERIFY(brightShare(rig, 1) < 0.0009);
    QCOMPARE(flag(rig), 0);
}

void tst_saturation::aHotPixelOfASmallWindowRaisesIt()
{
    FrameRig rig;
    QVERIFY(rig.showArea(0));
    int raised = 0;
    int windows = 0;
    for (int y = 0; y < 512; y += 16)
        for (int x = 0; x < 640; x += 64) {
            QVERIFY(rig.set("sensor.window", QVariantList{x, y, 64, 4}));
            const bool hasHotPixel = brightShare(rig, 1) > 0;
            QCOMPARE(flag(rig), hasHotPixel ? 1 : 0);
            ++windows;
            raised += hasHotPixel ? 1 : 0;
        }
    QVERIFY(raised > 5 && raised < windows / 2);
}

void tst_saturation::theLongestPresetInUseDecides()
{
    FrameRig rig;
    QVERIFY(rig.useSmallWindow() && rig.showArea(27));
    QVERIFY(rig.set("sensor.activePreset", 1) && rig.set("sensor.integrationTime", 20.0));
    QVERIFY(rig.set("sensor.activePreset", 0));
    for (const bool hasFrame : {false, true}) {
        if (hasFrame)
            QVERIFY(!rig.newest().empty());
        QCOMPARE(hasMaps(rig), hasFrame);
        QCOMPARE(flag(rig), 0);
        QVERIFY(rig.set("sensor.activePreset", 1));
        Clock::advance(1000);
        QCOMPARE(flag(rig), 1);
        QVERIFY(rig.set("sensor.activePreset", 0));
        Clock::advance(1000);
        QCOMPARE(flag(rig), 0);
        QVERIFY(rig.set("sensor.sequencingMode", int(emulator::Sensor::PresetSequencing)));
        Clock::advance(1000);
        QCOMPARE(flag(rig), 1);
        // A preset without frames in the sequence is not in use.
        QVERIFY(rig.set("sensor.activePreset", 1) && rig.set("sensor.dwellCount", 0));
        Clock::advance(1000);
        QCOMPARE(flag(rig), 0);
        QVERIFY(rig.set("sensor.dwellCount", 1) && rig.set("sensor.activePreset", 0));
        QVERIFY(rig.set("sensor.sequencingMode", int(emulator::Sensor::SinglePreset)));
        Clock::advance(1000);
    }
}

// A higher bias of the second colour makes its preset brighter at the same integration time.
void tst_saturation::eachColorInUseDecides()
{
    for (const int second : {0, 1}) {
        FrameRig rig("two-color");
        QVERIFY(rig.useSmallWindow() && rig.showArea(35) && rig.set("analog.secondBias", 500.0));
        for (const int preset : {0, 1, 2, 3}) {
            QVERIFY(rig.set("sensor.activePreset", preset) && rig.set("sensor.dwellCount", preset < 2 ? 1 : 0));
            QVERIFY(rig.set("sensor.integrationTime", 3.4));
        }
        // The preset of the second colour has the shorter frames, or frames of the same length.
        QVERIFY(rig.set("sensor.activePreset", 0) && rig.set("sensor.integrationTime", second == 0 ? 3.3 : 3.4));
        QVERIFY(rig.set("sensor.sequencingMode", int(emulator::Sensor::PresetSequencing)));
        Clock::advance(1000);
        for (const bool hasFrame : {false, true}) {
            if (hasFrame)
                QVERIFY(!rig.newest().empty());
            QVERIFY(rig.set("color.selected", QVariantList{0, 0, 0, 0}));
            QCOMPARE(flag(rig), 0);
            QVERIFY(rig.set("color.selected", QVariantList{1 - second, second, 0, 0}));
            QCOMPARE(flag(rig), 1);
        }
    }
}

void tst_saturation::aBlackbodyThatIsNotShownDoesNotSaturate()
{
    FrameRig rig;
    QVERIFY(rig.set("emulator./BlackbodyTemp1", 20) && rig.set("emulator./BlackbodyTemp2", 90));
    for (const bool hasFrame : {false, true}) {
        if (hasFrame)
            QVERIFY(!rig.newest().empty());
        for (const auto &[pattern, expected] : {std::pair{0, 0}, {1, 0}, {2, 1}, {3, 0}}) {
            QVERIFY(rig.set("emulator./Pattern", pattern));
            QCOMPARE(flag(rig), expected);
        }
    }
}

void tst_saturation::aTemperatureThatIsNoNumberIsCold_data()
{
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    QTest::addColumn<int>("pattern");
    QTest::addColumn<float>("first");
    QTest::addColumn<float>("second");
    QTest::addColumn<int>("expected");
    QTest::newRow("left half, hot right one") << 2 << nan << 90.0F << 1;
    QTest::newRow("right half, hot left one") << 2 << 90.0F << nan << 1;
    QTest::newRow("left half, cold right one") << 2 << nan << 20.0F << 0;
    QTest::newRow("right half, cold left one") << 2 << 20.0F << nan << 0;
    QTest::newRow("both halves") << 2 << nan << nan << 0;
    QTest::newRow("round body") << 1 << nan << 90.0F << 0;
    QTest::newRow("area") << 3 << nan << 90.0F << 0;
}

void tst_saturation::aTemperatureThatIsNoNumberIsCold()
{
    QFETCH(const int, pattern);
    QFETCH(const float, first);
    QFETCH(const float, second);
    QFETCH(const int, expected);
    FrameRig rig;
    QVERIFY(rig.set("emulator./Pattern", pattern));
    auto *const properties = rig.camera().device<emulator::EmulatorProperties>();
    QVERIFY(properties->set(QStringLiteral("/BlackbodyTemp1"), first));
    QVERIFY(properties->set(QStringLiteral("/BlackbodyTemp2"), second));
    QCOMPARE(flag(rig), expected);
    QCOMPARE(brightShare(rig, 1) > 0.001, expected == 1);
    QCOMPARE(flag(rig), expected);
}

void tst_saturation::gainAndHighSensitivitySaturate()
{
    FrameRig rig;
    QVERIFY(rig.useSmallWindow() && rig.showArea(27));
    QVERIFY(!rig.newest().empty());
    QCOMPARE(flag(rig), 0);
    QVERIFY(rig.set("gain.level", 2));
    QCOMPARE(flag(rig), 1);
    QVERIFY(rig.set("gain.level", 1));
    QCOMPARE(flag(rig), 0);
    QVERIFY(rig.set("image.hsmEnabled", true));
    QCOMPARE(flag(rig), 1);
}

void tst_saturation::theCoverHidesAHotScene()
{
    FrameRig rig;
    QVERIFY(rig.showArea(80));
    for (const bool hasFrame : {false, true}) {
        if (hasFrame)
            QVERIFY(!rig.newest().empty());
        QCOMPARE(flag(rig), 1);
        QVERIFY(rig.set("cover.state", 1));
        QCOMPARE(flag(rig), 0);
        FrameRig::finishMoves();
        QCOMPARE(flag(rig), 0);
        QVERIFY(rig.set("cover.state", 0));
        FrameRig::finishMoves();
    }
}

void tst_saturation::aHotFlagSaturates()
{
    FrameRig rig;
    // The flag hides a hot scene, also before the first frame.
    QVERIFY(rig.showArea(60));
    QCOMPARE(flag(rig), 1);
    QCOMPARE(zvtSetFlagState(rig.handle(), 1), 0);
    Clock::advance(1000);
    QCOMPARE(flag(rig), 0);
    QCOMPARE(zvtSetFlagState(rig.handle(), 0), 0);
    Clock::advance(1000);
    QVERIFY(rig.showArea(20));
    QVERIFY(!rig.newest().empty());
    QCOMPARE(flag(rig), 0);
    QCOMPARE(zvtSetFlagDesiredTemperature(rig.handle(), 60), 0);
    QCOMPARE(zvtSetFlagState(rig.handle(), 1), 0);
    Clock::advance(120'000);
    QVERIFY(rig.mean() > 15'000);
    QCOMPARE(flag(rig), 1);
    QCOMPARE(zvtSetFlagState(rig.handle(), 0), 0);
    Clock::advance(1000);
    QCOMPARE(flag(rig), 0);
}

void tst_saturation::aWarmDetectorIsSaturated()
{
    FrameRig rig;
    for (const bool hasFrame : {false, true}) {
        rig.open("everything");
        if (hasFrame)
            QVERIFY(!rig.newest().empty());
        QCOMPARE(flag(rig), 1);
        FrameRig::coolDetector();
        QCOMPARE(flag(rig), 0);
    }
}

// The detector has 300 pixels of a million that are always at the maximum.
void tst_saturation::faultyPixelsDoNotRaiseIt()
{
    FrameRig rig;
    // The hot blackbody is outside of the window.
    QVERIFY(rig.focusOn(25) && rig.set("sensor.window", QVariantList{0, 0, 640, 128}));
    QVERIFY(rig.set("emulator./Pattern", 1) && rig.set("emulator./BlackbodyTemp1", 90));
    QCOMPARE(flag(rig), 1);
    QVERIFY(Statistics::countAtLeast(rig.newest(), 16'383) > 10);
    QCOMPARE(flag(rig), 0);
    // Its upper part.
    QVERIFY(rig.set("sensor.window", QVariantList{0, 0, 640, 192}));
    QCOMPARE(flag(rig), 1);
}

void tst_saturation::anotherClientCanRaiseIt()
{
    FrameRig rig;
    for (const bool hasFrame : {false, true}) {
        if (hasFrame)
            QVERIFY(!rig.newest().empty());
        QVERIFY(rig.set("sensor.saturated", true));
        QCOMPARE(flag(rig), 1);
        QVERIFY(rig.set("sensor.saturated", false));
        QCOMPARE(flag(rig), 0);
    }
}

void tst_saturation::withoutFramesOnlyAnotherClientRaisesIt()
{
    FrameRig rig;
    rig.open("edge-values");
    QCOMPARE(flag(rig), 1);
    QVERIFY(rig.set("sensor.saturated", false));
    QCOMPARE(flag(rig), 0);
    rig.openWith(R"({"sync": {"source": 1, "externalRate": 0}})");
    QVERIFY(rig.showArea(90));
    QVERIFY(rig.newest().empty());
    QCOMPARE(flag(rig), 0);
    QVERIFY(rig.set("sensor.saturated", true));
    QCOMPARE(flag(rig), 1);
}

void tst_saturation::aLostSignalEndsIt()
{
    FrameRig rig;
    QVERIFY(rig.showArea(90));
    for (const bool hasFrame : {false, true}) {
        if (hasFrame)
            QVERIFY(!rig.newest().empty());
        QVERIFY(rig.set("sync.source", int(emulator::FrameSync::External)));
        Clock::advance(1000);
        QCOMPARE(flag(rig), 1);
        QVERIFY(rig.set("sync.externalRate", 0));
        QCOMPARE(flag(rig), 0);
        Clock::advance(1000);
        QCOMPARE(flag(rig), 0);
        QVERIFY(rig.set("sensor.saturated", true));
        QCOMPARE(flag(rig), 1);
        QVERIFY(rig.set("sensor.saturated", false));
        QVERIFY(rig.set("sync.externalRate", 50));
        QCOMPARE(flag(rig), 1);
        QVERIFY(rig.set("sync.source", int(emulator::FrameSync::Internal)));
    }
}

// The camera's lock is free while pixels are counted.
void tst_saturation::itIsReadWhileFramesAreMade()
{
    FrameRig rig;
    QVERIFY(rig.showArea(35) && rig.set("sensor.integrationTime", 5.0));
    std::atomic<int> wrong{0};
    {
        std::vector<std::jthread> threads;
        for (int thread = 0; thread < 4; ++thread)
            threads.emplace_back([&, thread] {
                for (int round = 0; round < 10; ++round)
                    if (thread % 2 == 0 ? rig.newest().empty() : flag(rig) != 1)
                        ++wrong;
            });
    }
    QCOMPARE(wrong.load(), 0);
}

ZVT_TEST(tst_saturation)
#include "tst_saturation.moc"
