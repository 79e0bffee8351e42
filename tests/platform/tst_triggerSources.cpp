#include "platform/emulator/devices/CameraClock.h"
#include "tests/platform/TriggerRig.h"
#include "tests/support/Test.h"

#include <cmath>
#include <ctime>

using emulator::CameraClock;
using emulator::Clock;
using emulator::Sensor;
using emulator::Trigger;

namespace
{

constexpr int64_t ms = TriggerRig::ticksPerMillisecond;

/// Sets the trigger time to a number of microseconds after the present IRIG time.
bool setTimeAfter(TriggerRig &rig, int64_t microseconds)
{
    const auto time = rig.camera().device<CameraClock>()->irigTimeAt(Clock::now() * 1000 + microseconds);
    return zvtSetIRIGTriggerTime(rig.handle(), time.day, time.hour, time.minute, time.second, time.millisecond,
                                 time.microsecond)
        == 0;
}

} // namespace

/// Where triggers come from: each comes at a tick that no query changes.
class tst_triggerSources : public Test
{
    Q_OBJECT

private slots:
    void init()
    {
        Test::init();
        Clock::manual();
    }
    void cleanup() { Clock::automatic(); }

    void internalTriggersComeAtTheirRate_data();
    void internalTriggersComeAtTheirRate();
    void theSignalAtTheInputTriggers();
    void aSinglePulseAtTheInputTriggers();
    void aSinglePulseBetweenThoseOfASignal();
    void sequencesFollowTheFrameSync_data();
    void sequencesFollowTheFrameSync();
    void theTimeTriggersOnce();
    void theTimeIsThatOfTheIrigClock();
    void aTimeThatHasPassedIsThatOfTheNextYear();
    void theDay366IsThatOfALeapYear();
    void softwareTriggersNeedTheirSource();
    void queriesChangeNothing_data();
    void queriesChangeNothing();
    void hoursOfTriggersTakeNoTime_data();
    void hoursOfTriggersTakeNoTime();
    void singleTriggerIsNotRepeated();
    void triggersWithoutFramesTakeNoTime_data();
    void triggersWithoutFramesTakeNoTime();
};

void tst_triggerSources::internalTriggersComeAtTheirRate_data()
{
    QTest::addColumn<double>("rate");
    QTest::addColumn<int>("sequences");
    QTest::addColumn<int64_t>("period");
    QTest::addColumn<int>("triggers"); // From one sequence to the next.
    QTest::newRow("slow") << 0.01 << 1 << int64_t(2'000'000'000) << 1;
    QTest::newRow("no whole number of clocks") << 7.0 << 2 << int64_t(2'857'143) << 1;
    QTest::newRow("as long as a sequence") << 50.0 << 2 << int64_t(400'000) << 1;
    QTest::newRow("a little faster") << 50.001 << 2 << int64_t(399'992) << 2;
    QTest::newRow("a multiple") << 1000.0 << 1 << int64_t(20'000) << 10;
    QTest::newRow("fast") << 100'000.0 << 3 << int64_t(200) << 3000;
}

void tst_triggerSources::internalTriggersComeAtTheirRate()
{
    QFETCH(const double, rate);
    QFETCH(const int, sequences);
    QFETCH(const int64_t, period);
    QFETCH(const int, triggers);
    TriggerRig rig(Trigger::TriggeredSequence, Trigger::Internal, rate, {{"trigger.sequenceCount", sequences}});
    QVERIFY(rig.ready);
    QCOMPARE(rig.clock().newest(0)->tick, 0);
    QCOMPARE(rig.clock().averageRate(), 20e6 / double(period) * sequences / triggers);
    // After a long time without a query.
    Clock::advance(7 * triggers * period / ms + 1);
    const auto frame = rig.clock().newest(0);
    const int64_t offset = frame->tick % (triggers * period);
    QCOMPARE(offset % (10 * ms), 0);
    QVERIFY(offset < 10 * ms * sequences);
    QCOMPARE(int64_t(frame->number), frame->tick / (triggers * period) * sequences + offset / (10 * ms));
    QVERIFY(frame->tick > 6 * triggers * period);
}

void tst_triggerSources::theSignalAtTheInputTriggers()
{
    TriggerRig rig(Trigger::TriggeredSequence, Trigger::External, 0);
    QVERIFY(rig.ready && rig.watch(50));
    QCOMPARE(rig.story(), "");
    QVERIFY(rig.set("sync.triggerRate", 40));
    QVERIFY(rig.watch(70));
    // Pulses of a signal count from tick 0.
    QCOMPARE(rig.story(), "0@75 0@100");
    QCOMPARE(rig.clock().averageRate(), 40.0);
    QVERIFY(rig.set("sync.triggerRate", 0));
    QVERIFY(rig.watch(70));
    QCOMPARE(rig.story(), "0@75 0@100");
    QCOMPARE(rig.clock().averageRate(), 0.0);
}

void tst_triggerSources::aSinglePulseAtTheInputTriggers()
{
    for (const int source : {0, 1, 2, 3}) {
        TriggerRig rig(Trigger::TriggeredFreeRun, source, source == Trigger::External ? 0 : 0.01);
        Clock::advance(40);
        const bool hadFrames = rig.clock().newest(0).has_value();
        QVERIFY(rig.set("sync.trigger", false));
        QCOMPARE(rig.clock().newest(0).has_value(), hadFrames);
        QVERIFY(rig.set("sync.trigger", true));
        QCOMPARE(rig.clock().newest(0).has_value(), hadFrames || source == Trigger::External);
        QVERIFY(!rig.set("sync.trigger", 1));
    }
    // Without a trigger there is nothing to start.
    TriggerRig free(Trigger::FreeRun, Trigger::External, 0);
    QVERIFY(free.set("sync.trigger", true) && free.watch(25));
    QCOMPARE(free.story(), "0@0 0@10 0@20");
}

void tst_triggerSources::aSinglePulseBetweenThoseOfASignal()
{
    TriggerRig rig(Trigger::TriggeredSequence, Trigger::External, 20, {{"trigger.sequenceCount", 2}});
    QVERIFY(rig.watch(72));
    QVERIFY(rig.set("sync.trigger", true));
    QVERIFY(rig.watch(13));
    QVERIFY(rig.set("sync.trigger", true)); // Lost.
    QVERIFY(rig.watch(10));
    QVERIFY(rig.set("sync.trigger", true)); // Longer than until the next pulse, which is lost.
    QVERIFY(rig.watch(90));
    QCOMPARE(rig.story(), "0@0 0@10 0@50 0@60 0@72 0@82 0@95 0@105 0@150 0@160");
}

void tst_triggerSources::sequencesFollowTheFrameSync_data()
{
    QTest::addColumn<double>("triggers");
    QTest::addColumn<QString>("story");
    QTest::addColumn<double>("rate");
    QTest::newRow("slower") << 10.0 << "0@0 0@40 0@120 0@160 0@200 0@240" << 20.0;
    QTest::newRow("as fast as sequences") << 12.5 << "0@0 0@40 0@80 0@120 0@160 0@200 0@240" << 25.0;
    QTest::newRow("faster") << 25.0 << "0@0 0@40 0@80 0@120 0@160 0@200 0@240" << 25.0;
    QTest::newRow("very fast") << 100'000.0 << "0@0 0@40 0@80 0@120 0@160 0@200 0@240" << 25.0;
}

void tst_triggerSources::sequencesFollowTheFrameSync()
{
    QFETCH(const double, triggers);
    QFETCH(const QString, story);
    QFETCH(const double, rate);
    TriggerRig rig(Trigger::TriggeredSequence, Trigger::Internal, triggers,
                   {{"trigger.sequenceCount", 2}, {"sync.source", 1}, {"sync.externalRate", 25}});
    for (int milliseconds = 0; milliseconds < 250; ++milliseconds) {
        QCOMPARE(rig.clock().averageRate(), rate);
        QVERIFY(rig.watch(1));
    }
    QCOMPARE(rig.story(), story);
}

// The IRIG time

void tst_triggerSources::theTimeTriggersOnce()
{
    TriggerRig rig(Trigger::TriggeredSequence, Trigger::Time);
    QVERIFY(setTimeAfter(rig, 30'000));
    QVERIFY(rig.watch(29));
    QCOMPARE(rig.story(), "");
    QCOMPARE(zvtSoftwareTrigger(rig.handle()), int(emulator::Refused));
    QVERIFY(rig.watch(50));
    QCOMPARE(rig.story(), "0@30");
    // Another time needs arming.
    QVERIFY(setTimeAfter(rig, 20'000));
    QVERIFY(rig.watch(50));
    QCOMPARE(rig.story(), "0@30");
    QVERIFY(setTimeAfter(rig, 20'000));
    QCOMPARE(zvtRearmTrigger(rig.handle()), 0);
    QVERIFY(rig.watch(50));
    QCOMPARE(rig.story(), "0@30 0@149");
}

void tst_triggerSources::theTimeIsThatOfTheIrigClock()
{
    TriggerRig rig(Trigger::TriggeredSequence, Trigger::Time);
    QCOMPARE(zvtSetIRIGTriggerTime(rig.handle(), 200, 12, 0, 0, 0, 7), 0);
    QCOMPARE(zvtSetIRIGTime(rig.handle(), 2030, 200, 11, 59, 59, 990, 0), 0);
    QCOMPARE(zvtRearmTrigger(rig.handle()), 0);
    Clock::advance(1000);
    const auto frame = rig.clock().newest(0);
    QVERIFY(frame);
    QCOMPARE(frame->tick, 10 * ms + 7 * 20);
    // The IRIG time of the frame is that of the trigger.
    const auto time = rig.camera().device<CameraClock>()->irigTimeAt(frame->microseconds);
    QCOMPARE(int(time.day), 200);
    QCOMPARE(int(time.hour), 12);
    QCOMPARE(int(time.second), 0);
    QCOMPARE(int(time.millisecond), 0);
    QCOMPARE(int(time.microsecond), 7);
}

void tst_triggerSources::aTimeThatHasPassedIsThatOfTheNextYear()
{
    TriggerRig rig(Trigger::TriggeredSequence, Trigger::Time);
    QVERIFY(setTimeAfter(rig, -1000));
    QCOMPARE(zvtRearmTrigger(rig.handle()), 0);
    Clock::advance(300LL * 86'400'000);
    QVERIFY(!rig.clock().newest(0));
    Clock::advance(70LL * 86'400'000);
    QVERIFY(rig.clock().newest(0));
}

void tst_triggerSources::theDay366IsThatOfALeapYear()
{
    TriggerRig rig(Trigger::TriggeredSequence, Trigger::Time);
    QCOMPARE(zvtSetIRIGTime(rig.handle(), 2029, 1, 0, 0, 0, 0, 0), 0);
    QCOMPARE(zvtSetIRIGTriggerTime(rig.handle(), 366, 0, 0, 0, 0, 0), 0);
    QCOMPARE(zvtRearmTrigger(rig.handle()), 0);
    // 31 December 2032 is 1460 days after 1 January 2029.
    Clock::advance(1460LL * 86'400'000 - 1);
    QVERIFY(!rig.clock().newest(0));
    Clock::advance(1);
    QVERIFY(rig.clock().newest(0));
}

void tst_triggerSources::softwareTriggersNeedTheirSource()
{
    for (const int mode : {0, 1, 2})
        for (const int source : {0, 1, 2, 3}) {
            TriggerRig rig(mode, source);
            const bool possible = mode != Trigger::FreeRun && source == Trigger::Software;
            QCOMPARE(zvtSoftwareTrigger(rig.handle()) == 0, possible);
            QCOMPARE(zvtRearmTrigger(rig.handle()), 0);
        }
}

// Each change happens at a time of its own; one camera is asked after each millisecond, the other one only at the end.

namespace
{

using Changes = std::map<int, std::function<bool(TriggerRig &)>>;

/// The newest frames and the state of a camera after these changes.
QString endOf(const Changes &changes, int milliseconds, bool asked)
{
    TriggerRig rig;
    bool done = true;
    for (int now = 0; now <= milliseconds; ++now) {
        if (const auto change = changes.find(now); change != changes.end())
            done = change->second(rig) && done;
        if (asked)
            done = rig.poll() && done;
        if (now < milliseconds)
            Clock::advance(1);
    }
    if (!done || (asked && !rig.complete()))
        return {};
    QString text = QStringLiteral("%1 Hz, preset %2").arg(rig.clock().averageRate()).arg(rig.sensor().activePreset());
    for (const int preset : {0, 1, 2, 3})
        if (const auto frame = rig.clock().newest(preset))
            text += QStringLiteral(", %1: %2@%3").arg(preset).arg(frame->number).arg(frame->tick);
    return text;
}

Changes changesOf(const QByteArray &name)
{
    const auto set
        = [](const char *key, const QVariant &value) { return [=](TriggerRig &rig) { return rig.set(key, value); }; };
    const auto trigger = [](TriggerRig &rig) { return zvtSoftwareTrigger(rig.handle()) == 0; };
    const auto arm = [](int mode, int source, double rate) {
        return [=](TriggerRig &rig) {
            rig.arm(mode, source, rate);
            return rig.ready;
        };
    };
    const auto presetSequencing = [](TriggerRig &rig) {
        return rig.sensor().setSequencingMode(Sensor::PresetSequencing) == emulator::Ok
            && rig.set("trigger.sequenceCount", 2);
    };
    const auto externalSync
        = [](TriggerRig &rig) { return rig.set("sync.externalRate", 59.94) && rig.set("sync.source", 1); };
    const auto readoutSync = [=](TriggerRig &rig) { return rig.set("sync.mode", 1) && externalSync(rig); };
    const QMap<QByteArray, Changes> all{
        {"started by the internal source", {{13, arm(1, 0, 7)}, {400, set("sensor.frameRate", 60)}}},
        {"sequences by the internal source", {{13, arm(2, 0, 37.7)}, {510, set("trigger.internalRate", 90.1)}}},
        {"sequences of presets", {{3, presetSequencing}, {13, arm(2, 0, 11.3)}, {700, set("sensor.frameRate", 60)}}},
        {"sequences by both signals", {{3, externalSync}, {13, arm(2, 1, 22.22)}, {600, set("sync.triggerRate", 31)}}},
        {"sequences before readouts", {{3, readoutSync}, {5, presetSequencing}, {13, arm(2, 1, 22.22)}}},
        {"advance", {{3, presetSequencing}, {13, arm(3, 0, 33.3)}, {500, set("sensor.dwellCount", 0)}}},
        {"advance by fast triggers", {{3, presetSequencing}, {13, arm(3, 1, 7777)}, {500, set("trigger.delay", 777)}}},
        {"advance with a signal", {{3, presetSequencing}, {4, readoutSync}, {13, arm(3, 1, 70)}}},
        {"software with a delay",
         {{13, arm(2, 2, 1)}, {20, set("trigger.delay", 1234.5)}, {21, trigger}, {30, trigger}, {99, trigger}}},
        {"back to free run", {{13, arm(2, 0, 25)}, {400, set("trigger.mode", 0)}, {500, arm(1, 0, 3)}}},
    };
    return all.value(name);
}

} // namespace

void tst_triggerSources::queriesChangeNothing_data()
{
    QTest::addColumn<bool>("anything");
    for (const char *name :
         {"started by the internal source", "sequences by the internal source", "sequences of presets",
          "sequences by both signals", "sequences before readouts", "advance", "advance by fast triggers",
          "advance with a signal", "software with a delay", "back to free run"})
        QTest::newRow(name) << true;
}

void tst_triggerSources::queriesChangeNothing()
{
    const Changes changes = changesOf(QTest::currentDataTag());
    QVERIFY(!changes.empty());
    for (const int end : {100, 555, 1000}) {
        const QString asked = endOf(changes, end, true);
        QVERIFY(!asked.isEmpty());
        QCOMPARE(endOf(changes, end, false), asked);
    }
}

namespace
{

/// A camera with these settings, and with frames of 20 ms for preset 1. It is connected at tick 0.
class SilentRig : public TriggerRig
{
public:
    explicit SilentRig(const QVariantMap &settings, int presets = 4) : TriggerRig(Trigger::FreeRun, 0)
    {
        sensor().setFrameRate(1, 50);
        for (int preset = presets; preset < 4; ++preset)
            sensor().setDwellCount(preset, 0);
        for (auto setting = settings.cbegin(); setting != settings.cend(); ++setting)
            ready = set(setting.key().toLatin1().constData(), setting.value()) && ready;
    }

    QString newestFrames()
    {
        clock().updateFrameTiming();
        QString text = QStringLiteral("preset %1").arg(sensor().activePreset());
        for (const int preset : {0, 1, 2, 3})
            if (const auto frame = clock().newest(preset))
                text += QStringLiteral(", %1: %2@%3").arg(preset).arg(frame->number).arg(frame->tick);
        return text;
    }
    /// The number of frames so far.
    uint64_t count()
    {
        uint64_t count = 0;
        for (const int preset : {0, 1, 2, 3})
            if (const auto frame = clock().newest(preset))
                count = std::max(count, frame->number + 1);
        return count;
    }
};

QVariantMap merged(QVariantMap settings, const QVariantMap &further)
{
    settings.insert(further);
    return settings;
}

} // namespace

void tst_triggerSources::hoursOfTriggersTakeNoTime_data()
{
    QTest::addColumn<QVariantMap>("settings");
    QTest::addColumn<int>("presets"); // In use.
    QTest::addColumn<int>("period"); // After which triggers and frames repeat, in milliseconds.
    const auto row = [](const char *name, const QVariantMap &settings, int period, int presets = 4) {
        QTest::newRow(name) << settings << presets << period;
    };
    const auto internal = [](int mode, double rate) {
        return QVariantMap{{"trigger.mode", mode}, {"trigger.internalRate", rate}};
    };
    const auto external = [](int mode, double rate) {
        return QVariantMap{{"trigger.mode", mode}, {"trigger.source", 1}, {"sync.triggerRate", rate}};
    };
    const auto synchronised = [](double rate) {
        return QVariantMap{{"trigger.sequenceCount", 2}, {"sync.source", 1}, {"sync.externalRate", rate}};
    };
    const auto sequenceOf = [&](int mode, double rate) {
        return merged(synchronised(rate), {{"sensor.sequencingMode", mode}});
    };
    row("sequences", internal(2, 100'000), 10);
    row("slow sequences", internal(2, 13.7), 729'927);
    row("started", internal(1, 100'000), 10);
    row("sequences by the frame sync", merged(internal(2, 10), synchronised(25)), 200);
    row("fast triggers and the frame sync", merged(internal(2, 100'000), synchronised(25)), 80);
    row("sequences by both signals", merged(external(2, 22.22), synchronised(59.94)), 50'000);
    row("sequences before readouts", merged(merged(external(2, 22.22), synchronised(25)), {{"sync.mode", 1}}), 50'000);
    row("sequences of presets", merged(external(2, 3.3), sequenceOf(Sensor::PresetSequencing, 25)), 10'000);
    row("sequences of superframes", merged(external(2, 3.3), sequenceOf(Sensor::Superframing, 25)), 10'000);
    const QVariantMap sequencing{{"sensor.sequencingMode", int(Sensor::PresetSequencing)}};
    row("advance", merged(sequencing, internal(3, 10)), 400);
    row("advance by a signal", merged(sequencing, external(3, 59.94)), 200'000);
    row("advance by fast triggers", merged(sequencing, internal(3, 100'000)), 2000);
    row("advance with a delay", merged(merged(sequencing, internal(3, 10)), {{"trigger.delay", 777}}), 400);
    row("advance with a frame sync", merged(merged(sequencing, internal(3, 10)), synchronised(25)), 800);
    row("advance with one preset", merged(sequencing, internal(3, 10)), 100, 1);
    row("advance by two at once", merged(sequencing, internal(3, 200)), 20, 2);
    // Two triggers come during the last frame of 10 ms, and one or four during each later frame.
    row("advance after a long frame",
        merged(merged(sequencing, internal(3, 200)), {{"trigger.delay", 2500}, {"sensor.frameRate", 200}}), 20, 2);
    const auto delayed = [&](const QVariantMap &triggers, double microseconds) {
        return merged(merged(triggers, synchronised(25)), {{"sync.delay", microseconds}});
    };
    row("advance with a delayed frame sync", delayed(merged(sequencing, internal(3, 10)), 1'000'000), 800);
    row("advance with another delay", delayed(merged(sequencing, internal(3, 10)), 333'333.3), 800);
    row("sequences by a delayed frame sync", delayed(internal(2, 10), 1'000'000), 200);
    row("sequences of superframes by a delayed frame sync",
        delayed(merged(internal(2, 10), {{"sensor.sequencingMode", int(Sensor::Superframing)}}), 612'345.6), 200);
    row("sequences before delayed readouts", merged(delayed(internal(2, 10), 1'000'000), {{"sync.mode", 1}}), 200);
}

void tst_triggerSources::hoursOfTriggersTakeNoTime()
{
    QFETCH(const QVariantMap, settings);
    QFETCH(const int, presets);
    QFETCH(const int, period);
    SilentRig rig(settings, presets);
    SilentRig asked(settings, presets);
    QVERIFY(rig.ready && asked.ready);
    const int64_t silence = 3LL * period + 10'000;
    for (int64_t time = 0; time < silence; time += 10) {
        Clock::advance(10);
        asked.clock().updateFrameTiming();
    }
    QCOMPARE(rig.newestFrames(), asked.newestFrames());
    const uint64_t before = rig.count();
    Clock::advance(period);
    const uint64_t frames = rig.count() - before;
    QVERIFY(frames > 0);
    const int64_t periods = 1000LL * 86'400'000 / period;
    Clock::advance(periods * period);
    const std::clock_t start = std::clock();
    QCOMPARE(rig.count(), before + (1 + static_cast<uint64_t>(periods)) * frames);
    QVERIFY(std::clock() - start < CLOCKS_PER_SEC / 2);
    if (settings["trigger.mode"].toInt() != Trigger::PresetAdvance) {
        const double rate = double(frames) * 1000 / period;
        QVERIFY2(std::abs(rig.clock().averageRate() / rate - 1) < 0.02, qPrintable(QString::number(rate)));
    }
}

void tst_triggerSources::singleTriggerIsNotRepeated()
{
    const QVariantMap settings{{"sensor.sequencingMode", int(Sensor::PresetSequencing)},
                               {"sync.triggerRate", 10},
                               {"trigger.delay", 1'000'000},
                               {"trigger.mode", int(Trigger::PresetAdvance)},
                               {"trigger.source", int(Trigger::External)}};
    SilentRig rig(settings, 2);
    SilentRig asked(settings, 2);
    QVERIFY(rig.ready && asked.ready);
    Clock::advance(5050); // Between two triggers of the signal.
    QVERIFY(rig.set("sync.trigger", true) && asked.set("sync.trigger", true));
    for (int time = 0; time < 20'000; time += 10) {
        Clock::advance(10);
        asked.clock().updateFrameTiming();
    }
    QCOMPARE(rig.newestFrames(), asked.newestFrames());
}

void tst_triggerSources::triggersWithoutFramesTakeNoTime_data()
{
    QTest::addColumn<QVariantMap>("settings");
    QTest::addColumn<int>("presets"); // In use.
    QTest::newRow("no frame sync") << QVariantMap{{"sync.source", 1}, {"sync.externalRate", 0}} << 4;
    QTest::newRow("no preset") << QVariantMap{{"sensor.sequencingMode", int(Sensor::PresetSequencing)}} << 0;
}

void tst_triggerSources::triggersWithoutFramesTakeNoTime()
{
    QFETCH(const QVariantMap, settings);
    QFETCH(const int, presets);
    const QVariantMap triggers{{"trigger.mode", int(Trigger::TriggeredSequence)}, {"trigger.internalRate", 100'000}};
    SilentRig rig(merged(settings, triggers), presets);
    QVERIFY(rig.ready);
    const uint64_t before = rig.count();
    const std::clock_t start = std::clock();
    // Short times first, so that a loop over all triggers ends.
    for (const int64_t milliseconds : {10'000LL, 20'000LL, 40'000LL, 1000LL * 86'400'000}) {
        Clock::advance(milliseconds);
        QCOMPARE(rig.count(), before);
        QVERIFY(std::clock() - start < CLOCKS_PER_SEC / 2);
    }
    QCOMPARE(rig.clock().averageRate(), 0.0);
}

ZVT_TEST(tst_triggerSources)
#include "tst_triggerSources.moc"
