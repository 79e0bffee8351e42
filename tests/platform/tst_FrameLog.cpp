#include "platform/emulator/devices/FrameLog.h"
#include "tests/platform/TriggerRig.h"
#include "tests/support/Test.h"

#include <algorithm>
#include <random>
#include <span>
#include <vector>

using namespace emulator;

/// The log of the beginnings of frames: it agrees with the frame clock, and its size does not depend on their number.
class tst_FrameLog : public Test
{
    Q_OBJECT

private slots:
    void init() { Clock::manual(); }
    void cleanup() { Clock::automatic(); }

    void agreesWithTheFrameClock_data();
    void agreesWithTheFrameClock();
    void looksDoNotChangeIt_data() { agreesWithTheFrameClock_data(); }
    void looksDoNotChangeIt();
    void periodicTriggersTakeLittle_data();
    void periodicTriggersTakeLittle();
    void anyNumberOfTurnsTakesLittle();
    void timingsAreShared();
    void sequencesAtAnotherDistanceAreAnotherEntry();

private:
    /// A camera with random settings of its triggers and its frames, and a log of its frames.
    struct Rig : TriggerRig {
        explicit Rig(int seed);
        ~Rig() { clock().writeTo(nullptr); }
        /// Whether the log has the frames that the clock has shown.
        bool agrees(uint64_t first) const;

        FrameLog log;
        uint64_t firstNumber = 0;
    };

    static const FrameTiming &timing(size_t preset);
};

tst_FrameLog::Rig::Rig(int seed)
{
    std::mt19937 random(static_cast<uint32_t>(seed));
    const auto oneOf = [&random](const std::vector<double> &values) { return values[random() % values.size()]; };
    for (int preset = 0; preset < maximumPresets; ++preset) {
        sensor().setFrameRate(preset, oneOf({100, 100, 99.37, 250, 33}));
        sensor().setDwellCount(preset, random() % 4);
    }
    sensor().setSequencingMode(Sensor::PresetSequencing);
    ready = set("trigger.sequenceCount", int(1 + random() % 3)) && set("trigger.delay", oneOf({0, 0, 1234.5}))
        && set("sync.externalRate", oneOf({90, 150.5})) && set("sync.source", random() % 4 == 0 ? 1 : 0);
    const double rate = oneOf({100, 30, 7, 999.37, 1000, 101, 10});
    const int source = random() % 3 == 0 ? Trigger::Software
        : random() % 2 == 0              ? Trigger::External
                                         : Trigger::Internal;
    const bool set = ready;
    arm(random() % 4 == 0 ? Trigger::TriggeredSequence : Trigger::PresetAdvance, source, rate);
    ready = ready && set;
    clock().writeTo(&log);
    for (int preset = 0; preset < maximumPresets; ++preset)
        if (const auto newest = clock().newest(preset))
            firstNumber = std::max(firstNumber, newest->number + 1);
}

bool tst_FrameLog::Rig::agrees(uint64_t first) const
{
    for (const auto &[number, frame] : frames()) {
        if (number < first)
            continue;
        int64_t time = 0;
        log.beginnings(number, {&time, 1});
        if (log.frame(number) != frame || time != frame.microseconds || log.firstAfter(time) <= number
            || log.firstAfter(time - 1) > number)
            return false;
    }
    if (frames().empty() || frames().rbegin()->first < first)
        return true;
    // All of them at once.
    const uint64_t last = frames().rbegin()->first;
    std::vector<int64_t> times(last + 1 - first);
    log.beginnings(first, times);
    for (uint64_t number = first; number <= last; ++number)
        if (const auto known = frames().find(number);
            known != frames().end() && times[number - first] != known->second.microseconds)
            return false;
    return true;
}

void tst_FrameLog::agreesWithTheFrameClock_data()
{
    QTest::addColumn<int>("seed");
    for (int seed = 0; seed < 60; ++seed)
        QTest::addRow("%d", seed) << seed;
}

void tst_FrameLog::agreesWithTheFrameClock()
{
    QFETCH(int, seed);
    Rig rig(seed);
    QVERIFY(rig.ready);
    std::mt19937 random(static_cast<uint32_t>(seed));
    for (int step = 0; step < 1500; ++step) {
        Clock::advance(1);
        if (random() % 50 == 0)
            zvtSoftwareTrigger(rig.handle());
        rig.poll();
    }
    QVERIFY(rig.agrees(rig.firstNumber));
    // Only frames before a number are forgotten.
    if (rig.frames().empty())
        return;
    const uint64_t middle = std::max((rig.firstNumber + rig.frames().rbegin()->first) / 2, rig.firstNumber);
    rig.log.forgetBefore(middle);
    QVERIFY(rig.agrees(middle));
}

void tst_FrameLog::looksDoNotChangeIt()
{
    QFETCH(int, seed);
    Rig watched(seed);
    const int64_t start = Clock::now();
    for (int step = 0; step < 3000; ++step) {
        Clock::advance(1);
        watched.clock().updateFrameTiming();
    }
    Clock::manual();
    Rig alone(seed);
    Clock::advance(3000);
    QCOMPARE(Clock::now(), start + 3000);
    alone.clock().updateFrameTiming();
    const uint64_t end = watched.log.firstAfter(Clock::now() * 1000);
    QCOMPARE(alone.log.firstAfter(Clock::now() * 1000), end);
    for (uint64_t number = watched.firstNumber; number < end; ++number)
        QVERIFY(alone.log.frame(number) == watched.log.frame(number));
}

void tst_FrameLog::periodicTriggersTakeLittle_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<double>("rate");
    QTest::addColumn<double>("frames");
    QTest::addColumn<double>("step");
    // With a step of 0, triggers coincide with the beginnings of frames.
    for (const int mode : {int(Trigger::TriggeredSequence), int(Trigger::PresetAdvance)})
        for (const double rate : {1000.0, 999.37, 100.0})
            for (const double frames : {100.0, 1500.0})
                for (const double step : {0.0, 1.0})
                    QTest::addRow("mode %d, %g Hz, %g frames/s, step %g", mode, rate, frames, step)
                        << mode << rate << frames << step;
}

void tst_FrameLog::periodicTriggersTakeLittle()
{
    QFETCH(int, mode);
    QFETCH(double, rate);
    QFETCH(double, frames);
    QFETCH(double, step);
    TriggerRig rig;
    for (int preset = 0; preset < maximumPresets; ++preset)
        QCOMPARE(rig.sensor().setIntegrationTime(preset, 0.01), Ok);
    QCOMPARE(rig.sensor().setWindow({0, 0, 64, 4}), Ok);
    for (int preset = 0; preset < maximumPresets; ++preset)
        QCOMPARE(rig.sensor().setFrameRate(preset, frames + step * preset), Ok);
    QCOMPARE(rig.sensor().setSequencingMode(Sensor::PresetSequencing), Ok);
    rig.arm(mode, Trigger::Internal, rate);
    QVERIFY(rig.ready);
    FrameLog log;
    rig.clock().writeTo(&log);
    for (int wait = 0; wait < 2000; ++wait) {
        Clock::advance(50);
        rig.clock().updateFrameTiming();
    }
    const uint64_t count = log.firstAfter(Clock::now() * 1000);
    QVERIFY(count > 2000);
    QVERIFY2(log.size() < 100, qPrintable(QString::number(log.size())));
    QVERIFY2(log.bytes() < 500'000, qPrintable(QString::number(log.bytes())));
    rig.clock().writeTo(nullptr);
}

const FrameTiming &tst_FrameLog::timing(size_t preset)
{
    static const auto timings = [] {
        std::vector<FrameTiming> all;
        for (size_t n = 0; n < 3; ++n) {
            SensorTiming sensor;
            sensor.presets[n] = {1, uint32_t(1000 + 7 * n), 900, 100};
            all.emplace_back(sensor, std::nullopt);
        }
        return all;
    }();
    return timings[preset];
}

void tst_FrameLog::anyNumberOfTurnsTakesLittle()
{
    const auto advance = std::make_shared<const PresetAdvance>(
        PresetAdvance{{timing(0), timing(1), timing(2)}, PulseTrain(19'777.77, 20'000'000), 5});
    FrameLog log;
    log.start(20'000'000, 0);
    std::vector<PresetAdvance::Turn> turns{{0, 0, 0, 0}};
    while (turns.size() < 300'000) {
        log.begin(advance->segmentOf(turns.back()), advance, turns.back());
        turns.push_back(*advance->after(turns.back(), INT64_MAX));
    }
    QVERIFY(log.size() <= 2);
    QVERIFY2(log.bytes() < 300'000, qPrintable(QString::number(log.bytes())));
    std::mt19937 random(1);
    const auto agrees = [&](size_t n) {
        const FrameStart frame = log.frame(turns[n].firstNumber);
        return frame.tick == turns[n].start && frame.preset == int(turns[n].timing)
            && log.firstAfter(frame.microseconds) == turns[n].firstNumber + 1;
    };
    for (int n = 0; n < 1000; ++n)
        QVERIFY(agrees(random() % (turns.size() - 1)));
    log.forgetBefore(turns[250'000].firstNumber);
    for (size_t n = 250'000; n < 250'100; ++n)
        QVERIFY(agrees(n));
    QVERIFY(agrees(turns.size() - 2));
}

void tst_FrameLog::timingsAreShared()
{
    FrameLog log;
    log.start(20'000'000, 0);
    int64_t start = 0;
    for (uint64_t number = 0; number < 1000; ++number) {
        log.begin({timing(number % 3), start}, number);
        start += 5000 + int64_t(number);
    }
    QCOMPARE(log.size(), size_t(1000));
    QVERIFY2(log.bytes() < 120'000, qPrintable(QString::number(log.bytes())));
}

void tst_FrameLog::sequencesAtAnotherDistanceAreAnotherEntry()
{
    // Ten pulses a millisecond. Sequences of one frame.
    SensorTiming sensor;
    sensor.presets[0] = {1, 1000, 900, 100};
    const FrameTiming sequence(sensor, std::nullopt, 1);
    const SequenceRun::Trigger trigger{PulseTrain::every(2000, 20'000'000), 0};
    FrameLog log;
    log.start(20'000'000, 0);
    log.begin({sequence, 0}, 0, trigger);
    log.repeat(4, 1);
    log.begin({sequence, 10'000}, 5, trigger);
    QCOMPARE(log.size(), size_t(1));
    log.repeat(3, 2);
    QCOMPARE(log.size(), size_t(2));
    const std::vector<int64_t> expected{0, 2000, 4000, 6000, 8000, 10'000, 14'000, 18'000, 22'000};
    for (size_t number = 0; number < expected.size(); ++number)
        QCOMPARE(log.frame(number).tick, expected[number]);
    QCOMPARE(log.firstAfter(700), uint64_t(7));
}

ZVT_TEST(tst_FrameLog)
#include "tst_FrameLog.moc"
