#include "tests/platform/RecorderRig.h"
#include "tests/platform/callTimes.h"
#include "tests/support/Test.h"

#include <chrono>
#include <functional>

namespace
{

// For an optimized build. Without optimization and with sanitizers, calls take much longer.
#ifdef __SANITIZE_ADDRESS__
constexpr int factor = 10;
#elif !defined(__OPTIMIZE__)
constexpr int factor = 4;
#else
constexpr int factor = 1;
#endif
constexpr std::chrono::milliseconds longest(factor);

} // namespace

/// The times of calls to an armed or recording camera: a call carries out all frames and triggers since the last one.
class tst_RecorderTimes : public Test
{
    Q_OBJECT

private slots:
    void silencesTakeNoTime_data();
    void silencesTakeNoTime();
    void motionTakesLittleTime_data();
    void motionTakesLittleTime();
    void lossesTakeLittleTime();

private:
    /// The time of a call after so many milliseconds without one. `prepare` is called before each wait.
    static std::chrono::nanoseconds timeAfter(
        RecorderRig &rig, int64_t silence, const std::function<void()> &prepare = [] {});
};

std::chrono::nanoseconds tst_RecorderTimes::timeAfter(RecorderRig &rig, int64_t silence,
                                                      const std::function<void()> &prepare)
{
    const size_t mark = rig.camera().gate().mark();
    for (int call = 0; call < 8; ++call) {
        prepare();
        rig.wait(silence);
        rig.state();
    }
    return slowestFunction(rig.camera().gate(), mark);
}

void tst_RecorderTimes::silencesTakeNoTime_data()
{
    QTest::addColumn<bool>("toDrive");
    QTest::addColumn<int>("triggerMode");
    QTest::addColumn<bool>("recording");
    for (const bool toDrive : {false, true})
        for (const int mode : {0, 2})
            for (const bool recording : {false, true})
                QTest::addRow("%s, mode %d, %s", toDrive ? "drive" : "memory", mode, recording ? "recording" : "armed")
                    << toDrive << mode << recording;
}

void tst_RecorderTimes::silencesTakeNoTime()
{
    QFETCH(bool, toDrive);
    QFETCH(int, triggerMode);
    QFETCH(bool, recording);
    RecorderRig rig;
    // 25 000 frames/s, in mode 2 each as a sequence.
    QVERIFY(rig.set("sensor.integrationTime", 0.001) && rig.set("sensor.frameRate", 25'000));
    QVERIFY(rig.set("trigger.internalRate", 100'000) && rig.set("trigger.mode", triggerMode));
    QVERIFY(rig.set(zvtSetSsdRecordMode, toDrive ? 1 : 0) && rig.set(zvtSetSsdRecordType, 2) && rig.arm());
    QVERIFY(!recording || rig.call(zvtSsdTrigger));
    const auto usual = timeAfter(rig, 10);
    for (const int64_t silence : {1000, 10'000}) {
        const auto time = timeAfter(rig, silence);
        QVERIFY2(time - usual < longest, qPrintable(QString::number((time - usual).count())));
    }
    QCOMPARE(rig.state(), recording ? 2 : 1);
}

void tst_RecorderTimes::motionTakesLittleTime_data()
{
    QTest::addColumn<bool>("lens");
    QTest::addColumn<bool>("cooling");
    QTest::newRow("lens") << true << false;
    QTest::newRow("cooling") << false << true;
    QTest::newRow("lens and cooling") << true << true;
}

/// The page reads the recorder once a second.
void tst_RecorderTimes::motionTakesLittleTime()
{
    QFETCH(bool, lens);
    QFETCH(bool, cooling);
    RecorderRig rig;
    if (!cooling)
        rig.wait(86'400'000);
    QVERIFY(rig.set(zvtSetSsdRecordType, 2) && rig.arm() && rig.call(zvtSsdTrigger));
    const auto usual = timeAfter(rig, 10);
    bool moved = true;
    int position = 500;
    const auto move = [&] {
        position = 10'000 - position;
        moved = (!lens || rig.set("zoom.position", position)) && moved;
    };
    const auto time = timeAfter(rig, 1000, move);
    QVERIFY(moved);
    QVERIFY2(time - usual < longest, qPrintable(QString::number((time - usual).count())));
    QVERIFY(rig.call(zvtSsdRecordStop));
    QVERIFY(rig.recorder().memory()->segments() > (lens ? 400U : 50U));
}

void tst_RecorderTimes::lossesTakeLittleTime()
{
    RecorderRig rig;
    rig.openDevices(R"({"sensor": {"maximumSize": "1280x1024", "windowSizes": ["1280x1024", "64x4"],
                                   "pixelsPerClock": 16},
                        "recorder": {"mode": 1, "type": 2}})");
    QVERIFY(rig.set("sensor.window", QVariantList{0, 0, 1280, 1024}) && rig.set("sensor.frameRate", 114.5));
    QVERIFY(rig.arm() && rig.call(zvtSsdTrigger));
    // The memory before the drive is full after 28 s.
    rig.wait(40'000);
    const auto usual = timeAfter(rig, 10);
    const auto time = timeAfter(rig, 10'000);
    QVERIFY2(time - usual < longest, qPrintable(QString::number((time - usual).count())));
    QCOMPARE(rig.state(), 2);
}

ZVT_TEST(tst_RecorderTimes)
#include "tst_RecorderTimes.moc"
