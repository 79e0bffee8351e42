#include "platform/emulator/devices/CameraClock.h"
#include "platform/emulator/devices/Trigger.h"
#include "platform/hlxcamzvt/makeController.h"
#include "tests/platform/FrameClockRig.h"
#include "tests/support/Test.h"
#include "zvt/zvtsdk.h"

#include <functional>

using emulator::Clock;
using emulator::Sensor;
using emulator::Trigger;

using Change = std::function<void(FrameClockRig &)>;

namespace
{

constexpr int64_t ms = FrameClockRig::ticksPerMillisecond;

/// The presets and the beginnings of the frames so far, in milliseconds rounded down.
QString story(FrameClockRig &rig)
{
    QStringList texts;
    for (const auto &[number, frame] : rig.frames())
        texts.append(QStringLiteral("%1@%2").arg(frame.preset).arg(frame.tick / ms));
    return texts.join(QLatin1Char(' '));
}

/// Lets time pass and notes the frames after each millisecond.
bool watch(FrameClockRig &rig, int milliseconds)
{
    for (int n = 0; n < milliseconds; ++n) {
        Clock::advance(1);
        if (!rig.poll())
            return false;
    }
    return true;
}

void setTurns(FrameClockRig &rig)
{
    for (const int preset : {0, 1, 2, 3}) {
        rig.sensor().setDwellCount(preset, preset == 1 ? 2 : preset == 2 ? 0 : 1);
        rig.sensor().setFrameRate(preset, preset == 1 ? 100.0 : 50.0);
    }
    rig.sensor().setSequencingMode(Sensor::PresetSequencing);
    rig.clock().updateFrameTiming();
}

/// Each of ten triggers a second makes the next preset the active one, the first one at once.
bool advanceByTriggers(FrameClockRig &rig)
{
    return rig.set("sensor.sequencingMode", int(Sensor::PresetSequencing)) && rig.set("trigger.internalRate", 10)
        && rig.set("trigger.source", int(Trigger::Internal)) && rig.set("trigger.mode", int(Trigger::PresetAdvance));
}

} // namespace

class tst_frameClock : public Test
{
    Q_OBJECT

private slots:
    void init()
    {
        Test::init();
        Clock::manual();
    }
    void cleanup() { Clock::automatic(); }

    void nothingBeginsBeforeTheFirstConnection();
    void theActivePresetRepeats();
    void presetsTakeTurns();
    void framesOfThePastAreFound();
    void subframesFollowEachOtherAtOnce();
    void aChangeWaitsForTheEndOfTheFrame();
    void aLaterChangeReplacesOneThatWaits();
    void aChangeCountsFromItsOwnMoment_data();
    void aChangeCountsFromItsOwnMoment();
    void aChangeFollowsTheTriggersBeforeIt_data();
    void aChangeFollowsTheTriggersBeforeIt();
    void framesStopAndGoOn();
    void changesLoseNoFrames_data();
    void changesLoseNoFrames();
    void otherSettingsChangeNoFrame();
    void theNewestFrameOfAnUnusedPresetStays();
    void ratesAreAveraged();
    void aDisconnectedCameraGoesOn();
    void aClockThatIsSetBackRepeatsNoFrame();
    void framesOfACenturyAreExact();
    void irigTimesFollowTheTicks();
};

void tst_frameClock::nothingBeginsBeforeTheFirstConnection()
{
    FrameClockRig rig;
    Clock::advance(1000);
    rig.clock().updateFrameTiming();
    QVERIFY(!rig.clock().newest(0));
    QVERIFY(!rig.clock().frame(0));
    QCOMPARE(rig.clock().averageRate(), 100.0);
    rig.camera().connect();
    QVERIFY(rig.clock().newest(0) == (emulator::FrameStart{0, 0, 0, Clock::now() * 1000}));
}

void tst_frameClock::theActivePresetRepeats()
{
    FrameClockRig rig;
    rig.camera().connect();
    Clock::advance(25);
    const emulator::FrameStart third{2, 0, 20 * ms, (rig.start + 20) * 1000};
    QVERIFY(rig.clock().newest(0) == third);
    QVERIFY(rig.clock().frame(2) == third);
    QCOMPARE(rig.clock().frame(1)->tick, 10 * ms);
    QVERIFY(!rig.clock().frame(3));
    QVERIFY(!rig.clock().frame(UINT64_MAX));
    for (const int preset : {-1, 1, 3, 4})
        QVERIFY(!rig.clock().newest(preset));
    Clock::advance(5);
    QCOMPARE(rig.clock().newest(0)->number, 3ULL);
    // Frames begin at ticks, not at milliseconds.
    QCOMPARE(rig.sensor().setFrameWidth(0, 100'001), emulator::Ok);
    rig.clock().updateFrameTiming();
    Clock::advance(20);
    QCOMPARE(rig.clock().frame(5)->tick, 40 * ms + 100'001);
    QCOMPARE(rig.clock().frame(5)->microseconds, (rig.start + 45) * 1000);
}

void tst_frameClock::presetsTakeTurns()
{
    FrameClockRig rig;
    setTurns(rig);
    rig.camera().connect();
    QVERIFY(rig.poll());
    QVERIFY(watch(rig, 125));
    QVERIFY(rig.complete());
    QCOMPARE(story(rig), QStringLiteral("0@0 1@20 1@30 3@40 0@60 1@80 1@90 3@100 0@120"));
    QVERIFY(!rig.clock().newest(2));
    QCOMPARE(rig.clock().newest(1)->number, 6ULL);
}

void tst_frameClock::framesOfThePastAreFound()
{
    FrameClockRig rig;
    rig.camera().connect();
    setTurns(rig);
    Clock::advance(100);
    std::vector<emulator::FrameStart> seen;
    for (int n = 0; n < 200; ++n) {
        Clock::advance(1);
        seen.push_back(rig.clock().newest(1).value());
    }
    QVERIFY(seen.front() != seen.back());
    for (int64_t ago = 0; ago < 200; ++ago)
        QCOMPARE(rig.clock().newest(1, ago * 1000), seen[static_cast<size_t>(199 - ago)]);
    // Of the frames before a change, the newest one.
    QVERIFY(rig.set("sensor.sequencingMode", int(Sensor::SinglePreset)));
    Clock::advance(100);
    QCOMPARE(rig.clock().newest(1, 60'000), rig.clock().newest(1));
    QVERIFY(rig.clock().newest(0, 60'000)->number < rig.clock().newest(0)->number);
    // Before the first frame there is none.
    FrameClockRig fresh;
    fresh.camera().connect();
    Clock::advance(100);
    QVERIFY(fresh.clock().newest(0, 100'000));
    QVERIFY(!fresh.clock().newest(0, 101'000));
}

void tst_frameClock::subframesFollowEachOtherAtOnce()
{
    FrameClockRig rig;
    QCOMPARE(rig.sensor().setSequencingMode(Sensor::Superframing), emulator::Ok);
    QCOMPARE(rig.sensor().setSubframeEnabled(2, false), emulator::Ok);
    QCOMPARE(rig.sensor().setSuperframeRate(25), emulator::Ok);
    rig.camera().connect();
    QVERIFY(rig.poll());
    QVERIFY(watch(rig, 90));
    QVERIFY(rig.complete());
    uint32_t width = 0;
    QCOMPARE(rig.sensor().minimumFrameWidth({640, 512}, 1000, true, width), emulator::Ok);
    for (uint64_t number = 0; number < 8; ++number) {
        const auto &frame = rig.frames().at(number);
        QCOMPARE(frame.preset, number % 3 == 2 ? 3 : static_cast<int>(number % 3));
        QCOMPARE(frame.tick, static_cast<int64_t>(number / 3 * 800'000 + number % 3 * width));
    }
}

void tst_frameClock::aChangeWaitsForTheEndOfTheFrame()
{
    FrameClockRig rig;
    rig.camera().connect();
    Clock::advance(15);
    QVERIFY(rig.set("sensor.frameRate", 50.0));
    QVERIFY(!rig.clock().frame(2));
    QVERIFY(rig.poll());
    QVERIFY(watch(rig, 55));
    QCOMPARE(rig.frames().at(1).tick, 10 * ms);
    QCOMPARE(rig.frames().at(2).tick, 20 * ms);
    QCOMPARE(rig.frames().at(3).tick, 40 * ms);
    QCOMPARE(rig.frames().at(4).tick, 60 * ms);
    // A frame that begins at the moment of the change has the timing before it.
    Clock::advance(10);
    QVERIFY(rig.set("sensor.frameRate", 200.0));
    QCOMPARE(rig.clock().newest(0)->tick, 80 * ms);
    Clock::advance(20);
    QCOMPARE(rig.clock().newest(0)->tick, 100 * ms);
    Clock::advance(5);
    QCOMPARE(rig.clock().newest(0)->tick, 105 * ms);
}

void tst_frameClock::aLaterChangeReplacesOneThatWaits()
{
    FrameClockRig rig;
    rig.camera().connect();
    for (const double rate : {1.0, 25.0, 30.0, 50.0}) {
        Clock::advance(2);
        QVERIFY(rig.set("sensor.frameRate", rate));
    }
    QVERIFY(rig.set("sensor.frameRate", 50.0));
    Clock::advance(32);
    QCOMPARE(rig.clock().newest(0)->number, 2ULL);
    QCOMPARE(rig.clock().newest(0)->tick, 30 * ms);
}

void tst_frameClock::aChangeCountsFromItsOwnMoment_data()
{
    QTest::addColumn<Change>("change");
    QTest::newRow("SDK") << Change([](FrameClockRig &r) { zvtSetFrameWidth(r.camera().handle(), 0, 20 * ms); });
    QTest::newRow("other client") << Change([](FrameClockRig &r) { r.set("sensor.frameRate", 50.0); });
    QTest::newRow("snapshot") << Change([](FrameClockRig &r) {
        FrameClockRig other;
        other.set("sensor.frameRate", 50.0);
        r.camera().restore(other.camera().snapshot());
    });
}

// No frame is asked for between the change and the end.
void tst_frameClock::aChangeCountsFromItsOwnMoment()
{
    QFETCH(Change, change);
    FrameClockRig rig;
    rig.camera().connect();
    Clock::advance(15);
    change(rig);
    Clock::advance(1000);
    // The frames 0 and 1 took 10 ms each.
    QVERIFY(rig.clock().newest(0) == (emulator::FrameStart{51, 0, 1000 * ms, (rig.start + 1000) * 1000}));
}

void tst_frameClock::aChangeFollowsTheTriggersBeforeIt_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<int>("expected");
    QTest::newRow("nothing") << Change([](FrameClockRig &) {}) << 3;
    QTest::newRow("controller") << Change([](FrameClockRig &r) {
        hlx::cam::makeController(r.camera().shared_from_this())->SetActivePreset(1);
    }) << 1;
    QTest::newRow("other client") << Change([](FrameClockRig &r) { r.set("sensor.activePreset", 1); }) << 1;
    QTest::newRow("snapshot") << Change([](FrameClockRig &r) {
        FrameClockRig other;
        QVERIFY(advanceByTriggers(other) && other.set("sensor.activePreset", 1));
        r.camera().restore(other.camera().snapshot());
    }) << 1;
}

void tst_frameClock::aChangeFollowsTheTriggersBeforeIt()
{
    QFETCH(Change, change);
    QFETCH(int, expected);
    FrameClockRig rig;
    rig.camera().connect();
    QVERIFY(advanceByTriggers(rig));
    // Three triggers.
    Clock::advance(250);
    change(rig);
    rig.clock().updateFrameTiming();
    QCOMPARE(rig.sensor().activePreset(), expected);
}

void tst_frameClock::framesStopAndGoOn()
{
    FrameClockRig rig;
    setTurns(rig);
    rig.camera().connect();
    QVERIFY(rig.poll());
    QVERIFY(watch(rig, 45));
    for (const int preset : {0, 1, 3})
        QCOMPARE(rig.sensor().setDwellCount(preset, 0), emulator::Ok);
    QVERIFY(watch(rig, 5));
    QCOMPARE(rig.clock().averageRate(), 0.0);
    // The last frame has not ended yet.
    QCOMPARE(rig.sensor().setDwellCount(1, 1), emulator::Ok);
    QVERIFY(watch(rig, 20));
    QCOMPARE(story(rig), QStringLiteral("0@0 1@20 1@30 3@40 1@60 1@70"));
    QCOMPARE(rig.sensor().setDwellCount(1, 0), emulator::Ok);
    QVERIFY(watch(rig, 100));
    QCOMPARE(rig.clock().newest(3)->number, 3ULL);
    QCOMPARE(rig.clock().newest(1)->number, 5ULL);
    QCOMPARE(rig.sensor().setDwellCount(3, 1), emulator::Ok);
    QVERIFY(watch(rig, 30));
    QVERIFY(rig.complete());
    QCOMPARE(story(rig), QStringLiteral("0@0 1@20 1@30 3@40 1@60 1@70 3@171 3@191"));
}

void tst_frameClock::changesLoseNoFrames_data()
{
    QTest::addColumn<Change>("change");
    QTest::newRow("rate") << Change([](FrameClockRig &r) { r.sensor().setFrameRate(0, 77.7); });
    QTest::newRow("rate, unused preset") << Change([](FrameClockRig &r) { r.sensor().setFrameRate(2, 77.7); });
    QTest::newRow("window") << Change([](FrameClockRig &r) { r.sensor().setWindowSizeIndex(4); });
    QTest::newRow("preset") << Change([](FrameClockRig &r) { r.sensor().setActivePreset(3); });
    QTest::newRow("dwell") << Change([](FrameClockRig &r) { r.sensor().setDwellCount(1, 3); });
    QTest::newRow("mode 0") << Change([](FrameClockRig &r) { r.sensor().setSequencingMode(0); });
    QTest::newRow("mode 1") << Change([](FrameClockRig &r) { r.sensor().setSequencingMode(1); });
    QTest::newRow("mode 2") << Change([](FrameClockRig &r) { r.sensor().setSequencingMode(2); });
    QTest::newRow("subframe") << Change([](FrameClockRig &r) { r.sensor().setSubframeEnabled(1, false); });
    QTest::newRow("integration") << Change([](FrameClockRig &r) { r.sensor().setIntegrationTime(0, 31); });
    QTest::newRow("noise") << Change([](FrameClockRig &r) { r.sensor().setReduceNoise(true); });
    QTest::newRow("source") << Change([](FrameClockRig &r) { r.set("sync.source", 1); });
    QTest::newRow("signal") << Change([](FrameClockRig &r) { r.set("sync.externalRate", 333.3); });
    QTest::newRow("no signal") << Change([](FrameClockRig &r) { r.set("sync.externalRate", 0); });
    QTest::newRow("nothing") << Change([](FrameClockRig &) {});
}

void tst_frameClock::changesLoseNoFrames()
{
    QFETCH(Change, change);
    for (const uint32_t mode : {Sensor::SinglePreset, Sensor::Superframing, Sensor::PresetSequencing})
        for (const int source : {0, 1})
            for (const int moment : {10, 13}) {
                FrameClockRig asked;
                FrameClockRig quiet;
                for (FrameClockRig *rig : {&asked, &quiet}) {
                    QCOMPARE(rig->sensor().setSequencingMode(mode), emulator::Ok);
                    QVERIFY(rig->set("sync.source", source));
                    rig->camera().connect();
                }
                QVERIFY(asked.poll());
                QVERIFY(watch(asked, moment));
                for (FrameClockRig *rig : {&asked, &quiet}) {
                    change(*rig);
                    rig->clock().updateFrameTiming();
                }
                QVERIFY(asked.poll());
                QVERIFY(watch(asked, 150));
                QVERIFY(asked.complete());
                for (int preset = 0; preset < emulator::maximumPresets; ++preset)
                    QVERIFY(asked.clock().newest(preset) == quiet.clock().newest(preset));
                QVERIFY(quiet.poll());
                for (const auto &[number, frame] : quiet.frames())
                    QVERIFY(asked.frames().at(number) == frame);
            }
}

void tst_frameClock::otherSettingsChangeNoFrame()
{
    FrameClockRig rig;
    rig.camera().connect();
    Clock::advance(13);
    // Only single presets follow each other; the signal is not selected.
    QCOMPARE(rig.sensor().setDwellCount(0, 7), emulator::Ok);
    QCOMPARE(rig.sensor().setFrameRate(1, 7.0), emulator::Ok);
    QCOMPARE(rig.sensor().setSuperframeRate(7.0), emulator::Ok);
    QCOMPARE(rig.sensor().setIntegrationTime(0, 3.0), emulator::Ok);
    QVERIFY(rig.set("sync.externalRate", 7.0));
    QCOMPARE(rig.clock().frame(0)->tick, 0);
    Clock::advance(17);
    QCOMPARE(rig.clock().newest(0)->tick, 30 * ms);
}

void tst_frameClock::theNewestFrameOfAnUnusedPresetStays()
{
    FrameClockRig rig;
    rig.camera().connect();
    Clock::advance(45);
    const auto newest = rig.clock().newest(0);
    QVERIFY(rig.set("sensor.activePreset", 1));
    Clock::advance(1000);
    QVERIFY(rig.clock().newest(0) == newest);
    QVERIFY(rig.clock().frame(newest->number) == newest);
    QVERIFY(!rig.clock().frame(newest->number - 1));
    QCOMPARE(rig.clock().frame(newest->number + 1)->preset, 1);
    QVERIFY(rig.set("sensor.activePreset", 2));
    QVERIFY(rig.clock().frame(newest->number) == newest);
}

void tst_frameClock::ratesAreAveraged()
{
    FrameClockRig rig;
    QCOMPARE(rig.sensor().setActivePreset(2), emulator::Ok);
    QCOMPARE(rig.clock().averageRate(), 100.0);
    setTurns(rig);
    // Two frames of 20 ms and two of 10 ms.
    QCOMPARE(rig.clock().averageRate(), 4 / 0.06);
    for (const int preset : {0, 1, 3})
        QCOMPARE(rig.sensor().setDwellCount(preset, 0), emulator::Ok);
    QCOMPARE(rig.clock().averageRate(), 0.0);
    QCOMPARE(rig.sensor().setSequencingMode(Sensor::Superframing), emulator::Ok);
    QCOMPARE(rig.clock().averageRate(), 4 * rig.sensor().superframeRate());
    QCOMPARE(rig.sensor().setSuperframeRate(10), emulator::Ok);
    QCOMPARE(rig.sensor().setSubframeEnabled(3, false), emulator::Ok);
    QCOMPARE(rig.clock().averageRate(), 30.0);
    for (const int preset : {0, 1, 2})
        QCOMPARE(rig.sensor().setSubframeEnabled(preset, false), emulator::Ok);
    QCOMPARE(rig.clock().averageRate(), 0.0);
}

void tst_frameClock::aDisconnectedCameraGoesOn()
{
    FrameClockRig rig;
    rig.camera().connect();
    Clock::advance(35);
    rig.camera().disconnect();
    Clock::advance(60'000);
    QCOMPARE(rig.clock().newest(0)->number, 6003ULL);
    rig.camera().connect();
    Clock::advance(10);
    QCOMPARE(rig.clock().newest(0)->number, 6004ULL);
    QCOMPARE(rig.clock().newest(0)->tick, 60'040 * ms);
}

void tst_frameClock::aClockThatIsSetBackRepeatsNoFrame()
{
    FrameClockRig rig;
    rig.camera().connect();
    Clock::advance(1005);
    const auto newest = rig.clock().newest(0);
    Clock::manual();
    QVERIFY(rig.clock().newest(0) == newest);
    QVERIFY(rig.set("sensor.frameRate", 50.0));
    QVERIFY(rig.clock().newest(0) == newest);
    Clock::advance(1029);
    QCOMPARE(rig.clock().newest(0)->number, newest->number + 1);
    QCOMPARE(rig.clock().newest(0)->tick, 1010 * ms);
}

void tst_frameClock::framesOfACenturyAreExact()
{
    FrameClockRig rig;
    QCOMPARE(rig.sensor().setFrameWidth(0, 200'001), emulator::Ok);
    rig.camera().connect();
    const int64_t milliseconds = 100LL * 366 * 86'400'000;
    Clock::advance(milliseconds);
    const int64_t ticks = milliseconds * ms;
    const auto newest = *rig.clock().newest(0);
    QCOMPARE(newest.number, static_cast<uint64_t>(ticks / 200'001));
    QCOMPARE(newest.tick, ticks / 200'001 * 200'001);
    QCOMPARE(newest.microseconds, rig.start * 1000 + newest.tick / 20);
    Clock::advance(INT64_MAX / 2);
    QVERIFY(rig.clock().newest(0)->tick > newest.tick);
}

void tst_frameClock::irigTimesFollowTheTicks()
{
    FrameClockRig rig;
    QCOMPARE(rig.sensor().setFrameWidth(0, 123'457), emulator::Ok);
    rig.camera().connect();
    QCOMPARE(zvtSetIRIGTime(rig.camera().handle(), 2023, 365, 23, 59, 59, 990, 17), 0);
    Clock::advance(100);
    const auto *const clock = rig.camera().device<emulator::CameraClock>();
    const auto sinceStart = [&](uint64_t number) {
        const auto time = clock->irigTimeAt(rig.clock().frame(number)->microseconds);
        const int64_t day = time.year == 2024 ? 1 : 0;
        const int64_t seconds = ((day * 24 + time.hour) * 60 + time.minute) * 60 + time.second;
        return (seconds * 1000 + time.millisecond) * 1000 + time.microsecond;
    };
    const int64_t first = sinceStart(0);
    for (uint64_t number = 0; number < 16; ++number)
        QCOMPARE(sinceStart(number) - first, static_cast<int64_t>(number) * 123'457 / 20);
}

ZVT_TEST(tst_frameClock)
#include "tst_frameClock.moc"
