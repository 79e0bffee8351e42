#include "platform/emulator/devices/CameraClock.h"
#include "platform/emulator/devices/FrameSearch.h"
#include "platform/emulator/devices/Recording.h"
#include "platform/emulator/devices/Sensor.h"
#include "tests/platform/RecorderRig.h"
#include "tests/support/Test.h"

/// The latch of the IRIG time, by the times of recorded frames.
class tst_irigLatch : public Test
{
    Q_OBJECT

private slots:
    void itSelectsTheTimeOfAFrame_data();
    void itSelectsTheTimeOfAFrame();
    void presetsHaveTimesOfTheirOwn();
    void anIntegrationThatEndsAtAPulse();
    void aFrameKeepsTheLatchOfItsTime();
    void aChangeOfTheLatchNeverTurnsTimesBack_data();
    void aChangeOfTheLatchNeverTurnsTimesBack();
    void theTimeIsInItsFrame();
    void savedMoviesKeepIt();
    void framesAreFoundByIt();

private:
    static constexpr int64_t integrationDelay = 15; ///< Microseconds.

    static bool setLatch(RecorderRig &rig, int latch)
    {
        return zvtSetIRIGLatchSource(rig.handle(), uint8_t(latch)) == 0;
    }
    static int64_t microsecondsOf(const emulator::CameraClock::IrigTime &time)
    {
        const int64_t minutes = (int64_t{time.day} * 24 + time.hour) * 60 + time.minute;
        return ((minutes * 60 + time.second) * 1000 + time.millisecond) * 1000 + time.microsecond;
    }
    static int64_t irigTime(RecorderRig &rig, uint64_t frame)
    {
        return microsecondsOf(rig.recorder().recorded(*rig.recorder().memory(), frame).irigTime);
    }
    /// From the beginning of a recorded frame to its IRIG time.
    static int64_t delayOf(RecorderRig &rig, uint64_t frame)
    {
        const auto &clock = *rig.camera().device<emulator::CameraClock>();
        return irigTime(rig, frame)
            - microsecondsOf(clock.irigTimeAt(rig.recorder().memory()->start(frame).microseconds));
    }
};

void tst_irigLatch::itSelectsTheTimeOfAFrame_data()
{
    QTest::addColumn<int>("latch");
    QTest::addColumn<double>("milliseconds");
    QTest::addColumn<int>("delay");
    QTest::newRow("start of the frame") << 0 << 2.0 << 0;
    QTest::newRow("start of the integration") << 1 << 2.0 << 15;
    QTest::newRow("start of a long integration") << 1 << 7.5 << 15;
    QTest::newRow("end of the integration") << 2 << 2.0 << 2015;
    QTest::newRow("end of a long integration") << 2 << 7.5 << 7515;
}

void tst_irigLatch::itSelectsTheTimeOfAFrame()
{
    QFETCH(const int, latch);
    QFETCH(const double, milliseconds);
    QFETCH(const int, delay);
    RecorderRig rig;
    QVERIFY(rig.set("sensor.integrationTime", milliseconds) && setLatch(rig, latch) && rig.record(5));
    for (uint64_t frame = 0; frame < 5; ++frame)
        QCOMPARE(delayOf(rig, frame), int64_t{delay});
    // The frames themselves begin when they would have begun.
    QCOMPARE(rig.recorder().memory()->start(4).microseconds - rig.recorder().memory()->start(0).microseconds, 40'000);
}

void tst_irigLatch::presetsHaveTimesOfTheirOwn()
{
    RecorderRig rig;
    for (const int preset : {0, 1, 2, 3})
        QVERIFY(rig.set("sensor.activePreset", preset) && rig.set("sensor.integrationTime", 1.0 + preset)
                && rig.set("sensor.frameRate", 100));
    QVERIFY(rig.set("sensor.sequencingMode", int(emulator::Sensor::PresetSequencing)) && setLatch(rig, 2));
    QVERIFY(rig.record(8));
    for (uint64_t frame = 0; frame < 8; ++frame)
        QCOMPARE(delayOf(rig, frame), integrationDelay + 1000 * (1 + rig.recorder().memory()->start(frame).preset));
}

// Then the frame begins with its integration.
void tst_irigLatch::anIntegrationThatEndsAtAPulse()
{
    for (const int mode : {0, 1}) {
        RecorderRig rig;
        QVERIFY(rig.set("sensor.integrationTime", 2.0) && rig.set("sync.source", 1));
        QVERIFY(rig.set("sync.externalRate", 100) && rig.set("sync.mode", mode));
        for (const int latch : {0, 1, 2}) {
            QVERIFY(setLatch(rig, latch) && rig.record(3));
            const int64_t start = mode == 0 ? integrationDelay : 0;
            QCOMPARE(delayOf(rig, 1), latch == 0 ? 0 : latch == 1 ? start : start + 2000);
        }
    }
}

void tst_irigLatch::aFrameKeepsTheLatchOfItsTime()
{
    RecorderRig rig;
    QVERIFY(rig.set("sensor.integrationTime", 2.0) && zvtSetSsdNumFrames(rig.handle(), 30) == 0);
    QVERIFY(rig.arm() && rig.call(zvtSsdTrigger));
    for (const int latch : {0, 2, 1}) {
        QVERIFY(setLatch(rig, latch));
        rig.wait(100);
    }
    QCOMPARE(rig.acquired(), 30u);
    QVERIFY(setLatch(rig, 2));
    // The first frame begins with the trigger, and a latch holds for the frames that begin after it.
    for (uint64_t frame = 0; frame < 30; ++frame)
        QCOMPARE(delayOf(rig, frame), frame <= 10 ? 0 : frame <= 20 ? 2015 : integrationDelay);
}

void tst_irigLatch::aChangeOfTheLatchNeverTurnsTimesBack_data()
{
    QTest::addColumn<QByteArray>("devices");
    QTest::addColumn<double>("frameRate");
    QTest::addColumn<int64_t>("smallestDistance");
    QTest::newRow("9 of 10 ms") << QByteArray("{}") << 100.0 << int64_t{985};
    // The integration ends when the next frame begins.
    QTest::newRow("no dead time") << QByteArray(R"({"sensor": {"postIntDeadWidth": 0}})") << 1e6 << int64_t{0};
}

void tst_irigLatch::aChangeOfTheLatchNeverTurnsTimesBack()
{
    QFETCH(const QByteArray, devices);
    QFETCH(const double, frameRate);
    QFETCH(const int64_t, smallestDistance);
    RecorderRig rig;
    rig.openDevices(devices.constData());
    QVERIFY(rig.set("sensor.integrationTime", 9.0) && rig.set("sensor.frameRate", frameRate));
    QCOMPARE(zvtSetSsdNumFrames(rig.handle(), 60), 0);
    QVERIFY(rig.arm() && rig.call(zvtSsdTrigger));
    for (const int latch : {2, 0, 2, 1, 2, 0}) {
        QVERIFY(setLatch(rig, latch));
        rig.wait(100);
    }
    rig.wait(100);
    QCOMPARE(rig.acquired(), 60u);
    QCOMPARE(rig.state(), int(RecorderRig::State::Complete));
    int64_t smallest = INT64_MAX;
    for (uint64_t frame = 1; frame < 60; ++frame)
        smallest = std::min(smallest, irigTime(rig, frame) - irigTime(rig, frame - 1));
    QCOMPARE(smallest, smallestDistance);
}

// These frames have nearly no dead time.
void tst_irigLatch::theTimeIsInItsFrame()
{
    RecorderRig rig;
    rig.openDevices(R"({"sensor": {"preIntDeadWidth": 1, "postIntDeadWidth": 1}})");
    QVERIFY(rig.set("sensor.integrationTime", 1.0) && rig.set("sensor.frameRate", 1e6) && setLatch(rig, 2));
    QVERIFY(zvtSetSsdNumFrames(rig.handle(), 50) == 0 && rig.arm() && rig.call(zvtSsdTrigger));
    rig.wait(1000);
    QCOMPARE(rig.state(), int(RecorderRig::State::Complete));
    const auto &memory = *rig.recorder().memory();
    QCOMPARE(memory.frames(), 50u);
    for (uint64_t frame = 0; frame + 1 < 50; ++frame) {
        QVERIFY(delayOf(rig, frame) >= 1000);
        QVERIFY(memory.irigTime(frame) <= memory.irigTime(frame + 1) - 1000);
        QVERIFY(delayOf(rig, frame) <= memory.start(frame + 1).microseconds - memory.start(frame).microseconds);
    }
}

void tst_irigLatch::savedMoviesKeepIt()
{
    RecorderRig rig;
    rig.openWith(R"({"movies": []})");
    QVERIFY(rig.set("sensor.integrationTime", 2.0) && setLatch(rig, 2) && rig.recordMovie(5));
    const int64_t first = irigTime(rig, 0);
    const int64_t last = irigTime(rig, 4);
    QVERIFY(setLatch(rig, 0));
    for (const bool restarted : {false, true}) {
        if (restarted)
            rig.restart();
        zvtSSsdMovieInfo info{};
        QCOMPARE(zvtGetSsdMovieInfo(rig.handle(), 0, &info), 0);
        const auto &[day, hour, minute, second, millisecond, microsecond] = info.startTime;
        QCOMPARE(microsecondsOf({0, day, hour, minute, second, millisecond, microsecond}), first);
        const zvtSIRIG end = info.endTime;
        QCOMPARE(microsecondsOf({0, end.day, end.hour, end.minute, end.second, end.millisecond, end.microsecond}),
                 last);
        rig.useSmallestWindow();
        QVERIFY(rig.load(0));
        QCOMPARE(delayOf(rig, 3), 2015);
    }
}

void tst_irigLatch::framesAreFoundByIt()
{
    RecorderRig rig;
    QVERIFY(rig.set("sensor.integrationTime", 2.0) && setLatch(rig, 2) && rig.record(20));
    const auto &memory = *rig.recorder().memory();
    constexpr int64_t day = 86'400'000'000;
    // The clock of the rig stands at the 60th day of its year.
    const int64_t time = 59 * day + memory.irigTime(7) % day;
    using Range = std::optional<std::pair<uint64_t, uint64_t>>;
    QVERIFY(emulator::findFrames(memory, time, time) == Range(std::pair(7u, 7u)));
    QVERIFY(emulator::findFrames(memory, time + 1, time + 10'000) == Range(std::pair(8u, 8u)));
    QVERIFY(!emulator::findFrames(memory, time + 1, time + 9999));
}

ZVT_TEST(tst_irigLatch)
#include "tst_irigLatch.moc"
