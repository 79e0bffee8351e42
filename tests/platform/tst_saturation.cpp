#include "platform/emulator/devices/Saturation.h"
#include "tests/platform/FrameRig.h"
#include "tests/support/Test.h"

#include <atomic>
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
    void theShareOfTheFramesDecides();
    void theLongestPresetInUseDecides();
    void aBlackbodyThatIsNotShownDoesNotSaturate();
    void gainAndHighSensitivitySaturate();
    void theCoverHidesAHotScene();
    void aWarmDetectorIsSaturated();
    void faultyPixelsDoNotRaiseIt();
    void anotherClientCanRaiseIt();
    void withoutFramesOnlyAnotherClientRaisesIt();
    void itIsReadWhileFramesAreMade();

private:
    /// -1 if the camera refuses to return the flag.
    static int flag(FrameRig &rig)
    {
        uint8_t saturated = 9;
        return zvtGetSaturatedFlag(rig.handle(), &saturated) == 0 ? saturated : -1;
    }
    static bool hasMaps(FrameRig &rig) { return rig.exposure().detector != nullptr; }
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

// Frames of one pixel in a thousand above 16000 counts, with faulty pixels.
void tst_saturation::theShareOfTheFramesDecides()
{
    FrameRig rig;
    QVERIFY(rig.useSmallWindow());
    QVERIFY(!rig.newest().empty());
    for (const double celsius : {20.0, 30.0, 33.0, 34.0, 35.0, 36.0, 37.0, 40.0}) {
        QVERIFY(rig.showArea(celsius) && rig.set("sensor.integrationTime", 3.7));
        const auto counts = rig.newest();
        const auto bright = double(Statistics::countAtLeast(counts, emulator::Saturation::countThreshold));
        const double share = bright / double(counts.size()) / emulator::Saturation::pixelShare;
        // The count for the flag does not regard the noise.
        if (share < 0.9 || share > 1.1)
            QCOMPARE(flag(rig), share > 1 ? 1 : 0);
    }
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
        FrameRig::settle();
        QCOMPARE(flag(rig), 0);
        QVERIFY(rig.set("cover.state", 0));
        FrameRig::settle();
    }
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
