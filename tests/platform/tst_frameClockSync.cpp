#include "tests/platform/FrameClockRig.h"
#include "tests/platform/writeProfile.h"
#include "tests/support/Test.h"

#include <cmath>

using emulator::Clock;
using emulator::FrameSync;
using emulator::Sensor;

namespace
{

constexpr int64_t ms = FrameClockRig::ticksPerMillisecond;

/// Connects a camera whose frames begin with a signal. Its shortest frame takes 5 ms: 200 Hz.
void useSignal(FrameClockRig &rig, double hertz)
{
    QCOMPARE(rig.sensor().setIntegrationWidth(0, 99'500), emulator::Ok);
    QVERIFY(rig.set("sync.source", FrameSync::External));
    QVERIFY(rig.set("sync.externalRate", hertz));
    rig.camera().connect();
}

/// Checks that each frame begins with a pulse, and that `pulses` of them are a frame.
void checkPulses(FrameClockRig &rig, double hertz, uint64_t pulses)
{
    Clock::advance(60'000);
    const uint64_t count = rig.clock().newest(0)->number + 1;
    QCOMPARE(count, static_cast<uint64_t>(60 * hertz) / pulses + 1);
    for (uint64_t number = 0; number < count; ++number) {
        const double pulse = static_cast<double>(number * pulses);
        QCOMPARE(static_cast<double>(rig.clock().frame(number)->tick), std::round(pulse * 20e6 / hertz));
    }
}

} // namespace

/// Frames that a signal at an input of the camera begins.
class tst_frameClockSync : public Test
{
    Q_OBJECT

private slots:
    void init()
    {
        Test::init();
        Clock::manual();
    }
    void cleanup() { Clock::automatic(); }

    void framesBeginWithPulses_data();
    void framesBeginWithPulses();
    void theIntervalFollowsTheShortestFrame();
    void presetsTakeTheirOwnPulses();
    void subframesFollowThePulseOfTheirSuperframe_data();
    void subframesFollowThePulseOfTheirSuperframe();
    void aSuperframeWithoutSubframesHasNoFrames();
    void withoutASignalTheLastFrameStays();
    void aSignalThatReturnsBeginsFrames();
    void aFrameInProgressEndsBeforeTheNextPulse();
    void theInternalSourceNeedsNoPulse();
    void triLevelAndVideoBeginFramesToo_data();
    void triLevelAndVideoBeginFramesToo();
    void edgeValuesHaveNoFrames();
    void impossibleRatesAreRefused();
    void theSignalIsNotInSnapshots();
    void theSignalOfTheProfileExists();
};

void tst_frameClockSync::framesBeginWithPulses_data()
{
    QTest::addColumn<double>("hertz");
    QTest::addColumn<uint64_t>("pulses");
    QTest::newRow("slower than frames") << 50.0 << uint64_t(1);
    QTest::newRow("no whole number of ticks") << 59.94 << uint64_t(1);
    QTest::newRow("almost the highest rate") << 199.999 << uint64_t(1);
    QTest::newRow("the highest rate") << 200.0 << uint64_t(1);
    QTest::newRow("just above") << 200.001 << uint64_t(2);
    QTest::newRow("no multiple") << 470.0 << uint64_t(3);
    QTest::newRow("a multiple") << 800.0 << uint64_t(4);
    QTest::newRow("far above") << 1e6 << uint64_t(5000);
    QTest::newRow("very slow") << 0.1 << uint64_t(1);
}

void tst_frameClockSync::framesBeginWithPulses()
{
    QFETCH(double, hertz);
    QFETCH(uint64_t, pulses);
    FrameClockRig rig;
    useSignal(rig, hertz);
    QCOMPARE(rig.clock().averageRate(), hertz / static_cast<double>(pulses));
    QVERIFY(rig.clock().averageRate() <= 200.0);
    checkPulses(rig, hertz, pulses);
}

void tst_frameClockSync::theIntervalFollowsTheShortestFrame()
{
    FrameClockRig rig;
    useSignal(rig, 100);
    // The frame rate of the sensor does not matter.
    QCOMPARE(rig.sensor().setFrameRate(0, 5.0), emulator::Ok);
    QCOMPARE(rig.clock().averageRate(), 100.0);
    Clock::advance(23);
    QCOMPARE(rig.sensor().setIntegrationTime(0, 15.0), emulator::Ok);
    QCOMPARE(rig.clock().averageRate(), 50.0);
    rig.clock().updateFrameTiming();
    Clock::advance(40);
    QCOMPARE(rig.clock().newest(0)->tick, 50 * ms);
    QCOMPARE(rig.clock().frame(3)->tick, 30 * ms);
}

void tst_frameClockSync::presetsTakeTheirOwnPulses()
{
    FrameClockRig rig;
    QCOMPARE(rig.sensor().setDwellCount(1, 2), emulator::Ok);
    QCOMPARE(rig.sensor().setDwellCount(2, 0), emulator::Ok);
    QCOMPARE(rig.sensor().setDwellCount(3, 0), emulator::Ok);
    QCOMPARE(rig.sensor().setIntegrationTime(1, 15.0), emulator::Ok);
    QCOMPARE(rig.sensor().setSequencingMode(Sensor::PresetSequencing), emulator::Ok);
    useSignal(rig, 100);
    QCOMPARE(rig.clock().averageRate(), 60.0);
    Clock::advance(105);
    QCOMPARE(rig.clock().newest(0)->number, 6ULL);
    const int64_t starts[] = {0, 10, 30, 50, 60, 80, 100};
    for (uint64_t number = 0; number < 7; ++number) {
        QCOMPARE(rig.clock().frame(number)->tick, starts[number] * ms);
        QCOMPARE(rig.clock().frame(number)->preset, number % 3 == 0 ? 0 : 1);
    }
}

void tst_frameClockSync::subframesFollowThePulseOfTheirSuperframe_data()
{
    QTest::addColumn<double>("hertz");
    QTest::addColumn<uint64_t>("pulses");
    QTest::addColumn<size_t>("frames");
    QTest::newRow("two pulses") << 90.0 << uint64_t(2) << size_t(15);
    QTest::newRow("a long pause") << 20.0 << uint64_t(1) << size_t(7);
}

void tst_frameClockSync::subframesFollowThePulseOfTheirSuperframe()
{
    QFETCH(double, hertz);
    QFETCH(uint64_t, pulses);
    QFETCH(size_t, frames);
    FrameClockRig rig;
    QCOMPARE(rig.sensor().setSequencingMode(Sensor::Superframing), emulator::Ok);
    QCOMPARE(rig.sensor().setSubframeEnabled(1, false), emulator::Ok);
    // The superframe rate of the sensor does not matter.
    QCOMPARE(rig.sensor().setSuperframeRate(2.0), emulator::Ok);
    useSignal(rig, hertz);
    uint32_t first = 0;
    uint32_t other = 0;
    QCOMPARE(rig.sensor().minimumFrameWidth({640, 512}, 99'500, true, first), emulator::Ok);
    QCOMPARE(rig.sensor().minimumFrameWidth({640, 512}, 1000, true, other), emulator::Ok);
    // The superframe takes 14.4 ms.
    QCOMPARE(rig.clock().averageRate(), 3 * hertz / static_cast<double>(pulses));
    QVERIFY(rig.poll());
    for (int n = 0; n < 100; ++n) {
        Clock::advance(1);
        QVERIFY(rig.poll());
    }
    QVERIFY(rig.complete());
    QCOMPARE(rig.frames().size(), frames);
    for (const auto &[number, frame] : rig.frames()) {
        const double pulse = std::round(static_cast<double>(number / 3 * pulses) * 20e6 / hertz);
        const int64_t offsets[] = {0, first, first + other};
        QCOMPARE(frame.tick, static_cast<int64_t>(pulse) + offsets[number % 3]);
        QCOMPARE(frame.preset, number % 3 == 0 ? 0 : static_cast<int>(number % 3) + 1);
    }
}

void tst_frameClockSync::aSuperframeWithoutSubframesHasNoFrames()
{
    FrameClockRig rig;
    useSignal(rig, 50);
    for (int preset = 0; preset < emulator::maximumPresets; ++preset)
        QCOMPARE(rig.sensor().setSubframeEnabled(preset, false), emulator::Ok);
    QCOMPARE(rig.sensor().setSequencingMode(Sensor::Superframing), emulator::Ok);
    const auto last = rig.clock().newest(0);
    Clock::advance(1000);
    QCOMPARE(rig.clock().newest(0), last);
    QCOMPARE(rig.clock().averageRate(), 0.0);
}

void tst_frameClockSync::withoutASignalTheLastFrameStays()
{
    FrameClockRig rig;
    useSignal(rig, 50);
    Clock::advance(47);
    const auto newest = rig.clock().newest(0);
    QCOMPARE(newest->tick, 40 * ms);
    QVERIFY(rig.set("sync.externalRate", 0));
    QCOMPARE(rig.clock().averageRate(), 0.0);
    Clock::advance(100'000);
    QVERIFY(rig.clock().newest(0) == newest);
    QVERIFY(rig.clock().frame(newest->number) == newest);
    QVERIFY(!rig.clock().frame(newest->number + 1));
}

void tst_frameClockSync::aSignalThatReturnsBeginsFrames()
{
    FrameClockRig rig;
    useSignal(rig, 0);
    Clock::advance(1003);
    QVERIFY(!rig.clock().newest(0));
    QVERIFY(rig.set("sync.externalRate", 50));
    QVERIFY(!rig.clock().newest(0));
    Clock::advance(20);
    QVERIFY(rig.clock().newest(0) == (emulator::FrameStart{0, 0, 1020 * ms, (rig.start + 1020) * 1000}));
    QVERIFY(rig.set("sync.externalRate", 0));
    Clock::advance(16);
    QVERIFY(rig.set("sync.externalRate", 50));
    QCOMPARE(rig.clock().newest(0)->number, 0ULL);
    Clock::advance(1);
    QCOMPARE(rig.clock().newest(0)->tick, 1040 * ms);
    // A pulse at the moment of the return begins a frame.
    QVERIFY(rig.set("sync.externalRate", 0));
    Clock::advance(20);
    QVERIFY(rig.set("sync.externalRate", 50));
    QCOMPARE(rig.clock().newest(0)->tick, 1060 * ms);
}

void tst_frameClockSync::aFrameInProgressEndsBeforeTheNextPulse()
{
    FrameClockRig rig;
    useSignal(rig, 50);
    Clock::advance(1);
    // The frame takes 5 ms.
    QVERIFY(rig.set("sync.externalRate", 500));
    Clock::advance(6);
    QCOMPARE(rig.clock().newest(0)->tick, 6 * ms);
    QVERIFY(rig.set("sync.externalRate", 0));
    QVERIFY(rig.set("sync.externalRate", 1000));
    Clock::advance(4);
    QCOMPARE(rig.clock().newest(0)->tick, 11 * ms);
    QCOMPARE(rig.clock().newest(0)->number, 2ULL);
}

void tst_frameClockSync::theInternalSourceNeedsNoPulse()
{
    FrameClockRig rig;
    useSignal(rig, 1);
    Clock::advance(3);
    QVERIFY(rig.set("sync.source", FrameSync::Internal));
    QCOMPARE(rig.clock().averageRate(), 100.0);
    Clock::advance(5);
    QCOMPARE(rig.clock().newest(0)->tick, 5 * ms);
    Clock::advance(100);
    QVERIFY(rig.set("sync.source", FrameSync::External));
    Clock::advance(5000);
    QCOMPARE(rig.clock().newest(0)->tick, 5000 * ms);
}

void tst_frameClockSync::triLevelAndVideoBeginFramesToo_data()
{
    QTest::addColumn<int>("source");
    QTest::newRow("video") << int(FrameSync::Video);
    QTest::newRow("tri-level") << int(FrameSync::TriLevel);
}

void tst_frameClockSync::triLevelAndVideoBeginFramesToo()
{
    QFETCH(int, source);
    FrameClockRig rig(QStringLiteral("edge-values"));
    QVERIFY(rig.set("sync.source", source));
    QVERIFY(rig.set("sync.mode", FrameSync::StartsIntegration) && rig.set("sync.delay", 0));
    QVERIFY(rig.set("sync.externalRate", 0.5));
    // The shortest frame takes 10 s.
    QVERIFY(rig.set("sensor.window", QVariantList{0, 0, 64, 64}));
    rig.camera().connect();
    QCOMPARE(rig.clock().averageRate(), 0.1);
    checkPulses(rig, 0.5, 5);
}

void tst_frameClockSync::edgeValuesHaveNoFrames()
{
    FrameClockRig rig(QStringLiteral("edge-values"));
    rig.camera().connect();
    for (const uint32_t mode : rig.sensor().sequencingModes())
        for (const int source : {0, 3}) {
            QCOMPARE(rig.sensor().setSequencingMode(mode), emulator::Ok);
            QVERIFY(rig.set("sync.source", source));
            Clock::advance(1'000'000);
            QVERIFY(rig.poll());
            QVERIFY(std::isfinite(rig.clock().averageRate()));
            QCOMPARE(rig.clock().averageRate() > 0.0, source == 0);
        }
    FrameClockRig other(QStringLiteral("edge-values"));
    other.camera().connect();
    Clock::advance(1'000'000);
    QVERIFY(!other.clock().newest(0));
}

void tst_frameClockSync::impossibleRatesAreRefused()
{
    FrameClockRig rig;
    for (const auto &bad : {QVariant(-1.0), QVariant(1'000'001), QVariant(QStringLiteral("fast"))})
        QVERIFY(!rig.set("sync.externalRate", bad));
    QCOMPARE(rig.camera().device<FrameSync>()->externalRate(), 50.0);
}

void tst_frameClockSync::theSignalIsNotInSnapshots()
{
    FrameClockRig rig;
    const QJsonObject before = rig.camera().snapshot();
    QVERIFY(rig.set("sync.externalRate", 25.0));
    QVERIFY(rig.camera().snapshot() == before);
    QVERIFY(!before.contains(QStringLiteral("frames")));
}

void tst_frameClockSync::theSignalOfTheProfileExists()
{
    const QTemporaryDir folder;
    FrameClockRig rig(writeProfile(folder.path(), "everything", R"({"sync": {"source": 1, "externalRate": 12.5}})"));
    QCOMPARE(rig.clock().averageRate(), 12.5);
}

ZVT_TEST(tst_frameClockSync)
#include "tst_frameClockSync.moc"
