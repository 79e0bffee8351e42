#include "tests/platform/TriggerRig.h"
#include "tests/support/Test.h"

using emulator::Clock;
using emulator::Sensor;
using emulator::Trigger;

/// What triggers start, seen in the frames.
class tst_trigger : public Test
{
    Q_OBJECT

private slots:
    void init()
    {
        Test::init();
        Clock::manual();
    }
    void cleanup() { Clock::automatic(); }

    void freeRunNeedsNoTrigger();
    void framesWaitForATriggerAndThenRepeat();
    void armingStopsTheFrames_data();
    void armingStopsTheFrames();
    void aChangeDoesNotStopTriggeredFrames();
    void aTriggerGivesASequence();
    void aSequenceTurnsThePresets();
    void aSequenceOfSuperframes();
    void triggersMeanwhileAreLost();
    void aSequenceOfAgesIsNotRestarted();
    void aChangeEndsASequence();
    void aTriggerWaitsForTheFrameInProgress();
    void withoutASignalATriggerStartsNothing();
    void aTriggerAdvancesThePreset();
    void onlyPresetsInUseAreAdvancedTo();
    void manyTriggersInAFrameAdvanceOnce();
    void advanceNeedsPresetSequencing();
    void aDelayPostponesTheEffect();
    void framesThatDoNotComeLeaveTheLastPicture();
};

void tst_trigger::freeRunNeedsNoTrigger()
{
    for (const int source : {0, 1, 2, 3}) {
        TriggerRig rig(Trigger::FreeRun, source);
        QVERIFY(rig.ready && rig.watch(45));
        QCOMPARE(rig.story(), "0@0 0@10 0@20 0@30 0@40");
        QCOMPARE(rig.clock().averageRate(), 100.0);
        QCOMPARE(zvtSoftwareTrigger(rig.handle()), int(emulator::Refused));
    }
}

void tst_trigger::framesWaitForATriggerAndThenRepeat()
{
    TriggerRig rig(Trigger::TriggeredFreeRun, Trigger::Software);
    QVERIFY(rig.watch(100));
    QCOMPARE(rig.story(), "");
    QCOMPARE(rig.clock().averageRate(), 0.0);
    QCOMPARE(zvtSoftwareTrigger(rig.handle()), 0);
    QCOMPARE(rig.clock().averageRate(), 100.0);
    QVERIFY(rig.watch(25));
    QCOMPARE(rig.story(), "0@100 0@110 0@120");
    // Further triggers change nothing.
    QCOMPARE(zvtSoftwareTrigger(rig.handle()), 0);
    QVERIFY(rig.watch(10));
    QCOMPARE(rig.story(), "0@100 0@110 0@120 0@130");
}

void tst_trigger::armingStopsTheFrames_data()
{
    QTest::addColumn<QByteArray>("setting");
    QTest::newRow("mode") << QByteArray("trigger.mode");
    QTest::newRow("source") << QByteArray("trigger.source");
    QTest::newRow("rearm") << QByteArray();
}

void tst_trigger::armingStopsTheFrames()
{
    QFETCH(const QByteArray, setting);
    TriggerRig rig(Trigger::TriggeredFreeRun, Trigger::Software);
    QCOMPARE(zvtSoftwareTrigger(rig.handle()), 0);
    QVERIFY(rig.watch(15));
    // The same value arms too.
    if (setting.isEmpty())
        QCOMPARE(zvtRearmTrigger(rig.handle()), 0);
    else
        QVERIFY(rig.set(setting, setting == "trigger.mode" ? int(Trigger::TriggeredFreeRun) : int(Trigger::Software)));
    QCOMPARE(rig.clock().averageRate(), 0.0);
    QVERIFY(rig.watch(50));
    QCOMPARE(rig.story(), "0@0 0@10");
    QCOMPARE(zvtSoftwareTrigger(rig.handle()), 0);
    QVERIFY(rig.watch(1));
    QCOMPARE(rig.story(), "0@0 0@10 0@65");
}

void tst_trigger::aChangeDoesNotStopTriggeredFrames()
{
    TriggerRig rig(Trigger::TriggeredFreeRun, Trigger::Software);
    QCOMPARE(zvtSoftwareTrigger(rig.handle()), 0);
    QVERIFY(rig.watch(15));
    QVERIFY(rig.set("sensor.frameRate", 50));
    QVERIFY(rig.set("trigger.internalRate", 50) && rig.set("trigger.delay", 5));
    QVERIFY(rig.watch(50));
    QCOMPARE(rig.story(), "0@0 0@10 0@20 0@40 0@60");
}

void tst_trigger::aTriggerGivesASequence()
{
    TriggerRig rig(Trigger::TriggeredSequence, Trigger::Software);
    QCOMPARE(zvtSetSequenceCount(rig.handle(), 3), 0);
    QVERIFY(rig.watch(7));
    QCOMPARE(zvtSoftwareTrigger(rig.handle()), 0);
    QCOMPARE(rig.clock().averageRate(), 100.0);
    QVERIFY(rig.watch(93));
    QCOMPARE(rig.story(), "0@7 0@17 0@27");
    QCOMPARE(rig.clock().averageRate(), 0.0);
    QCOMPARE(zvtSoftwareTrigger(rig.handle()), 0);
    QVERIFY(rig.watch(100));
    QCOMPARE(rig.story(), "0@7 0@17 0@27 0@100 0@110 0@120");
}

void tst_trigger::aSequenceTurnsThePresets()
{
    TriggerRig rig(Trigger::TriggeredSequence, Trigger::Software);
    for (const int preset : {0, 1, 2, 3})
        QCOMPARE(rig.sensor().setDwellCount(preset, preset == 1 ? 2 : preset == 2 ? 1 : 0), emulator::Ok);
    QCOMPARE(rig.sensor().setSequencingMode(Sensor::PresetSequencing), emulator::Ok);
    QVERIFY(rig.set("trigger.sequenceCount", 2));
    QCOMPARE(zvtSoftwareTrigger(rig.handle()), 0);
    QVERIFY(rig.watch(200));
    QCOMPARE(rig.story(), "1@0 1@10 2@20 1@30 1@40 2@50");
}

void tst_trigger::aSequenceOfSuperframes()
{
    TriggerRig rig(Trigger::TriggeredSequence, Trigger::Software);
    QCOMPARE(rig.sensor().setSubframeEnabled(1, false), emulator::Ok);
    QCOMPARE(rig.sensor().setSubframeEnabled(2, false), emulator::Ok);
    QCOMPARE(rig.sensor().setSequencingMode(Sensor::Superframing), emulator::Ok);
    QCOMPARE(rig.sensor().setSuperframeRate(20), emulator::Ok);
    QVERIFY(rig.set("trigger.sequenceCount", 2));
    uint32_t width = 0;
    QCOMPARE(rig.sensor().minimumFrameWidth({640, 512}, 40'000, true, width), emulator::Ok);
    QCOMPARE(zvtSoftwareTrigger(rig.handle()), 0);
    QVERIFY(rig.watch(500));
    const double second = double(width) / TriggerRig::ticksPerMillisecond;
    QCOMPARE(rig.story(), QStringLiteral("0@0 3@%1 0@50 3@%2").arg(second).arg(50 + second));
}

void tst_trigger::triggersMeanwhileAreLost()
{
    TriggerRig rig(Trigger::TriggeredSequence, Trigger::Software);
    QVERIFY(rig.set("trigger.sequenceCount", 2));
    for (const int pause : {0, 1, 18, 1, 19, 1}) {
        QVERIFY(rig.watch(pause));
        QCOMPARE(zvtSoftwareTrigger(rig.handle()), 0);
    }
    QVERIFY(rig.watch(200));
    // The triggers at 1, 19 and 39 ms are lost.
    QCOMPARE(rig.story(), "0@0 0@10 0@20 0@30 0@40 0@50");
}

void tst_trigger::aSequenceOfAgesIsNotRestarted()
{
    TriggerRig rig(Trigger::TriggeredSequence, Trigger::Software, 10,
                   {{"sensor.dwellCount", emulator::Sensor::maximumDwellCount}, {"sensor.sequencingMode", 2}});
    QVERIFY(rig.ready);
    QCOMPARE(zvtSetSequenceCount(rig.handle(), 1'000'000), 0);
    QCOMPARE(zvtSoftwareTrigger(rig.handle()), 0);
    QVERIFY(rig.watch(25));
    QCOMPARE(zvtSoftwareTrigger(rig.handle()), 0);
    QVERIFY(rig.watch(10));
    QCOMPARE(rig.story(), "0@0 0@10 0@20 0@30");
}

void tst_trigger::aChangeEndsASequence()
{
    TriggerRig rig(Trigger::TriggeredSequence, Trigger::Software);
    QVERIFY(rig.set("trigger.sequenceCount", 5));
    QCOMPARE(zvtSoftwareTrigger(rig.handle()), 0);
    QVERIFY(rig.watch(15));
    QVERIFY(rig.set("sensor.frameRate", 50));
    QVERIFY(rig.watch(100));
    QCOMPARE(rig.story(), "0@0 0@10");
    QCOMPARE(zvtSoftwareTrigger(rig.handle()), 0);
    QVERIFY(rig.watch(30));
    QCOMPARE(rig.story(), "0@0 0@10 0@115 0@135");
}

void tst_trigger::aTriggerWaitsForTheFrameInProgress()
{
    TriggerRig rig;
    QVERIFY(rig.watch(13));
    rig.arm(Trigger::TriggeredSequence, Trigger::Software);
    QCOMPARE(zvtSoftwareTrigger(rig.handle()), 0);
    QVERIFY(rig.watch(100));
    QCOMPARE(rig.story(), "0@0 0@10 0@20");
}

void tst_trigger::withoutASignalATriggerStartsNothing()
{
    for (const int mode : {1, 2}) {
        TriggerRig rig(mode, Trigger::Software);
        QVERIFY(rig.set("sync.source", 1) && rig.set("sync.externalRate", 0));
        QCOMPARE(zvtSoftwareTrigger(rig.handle()), 0);
        QVERIFY(rig.watch(50));
        QCOMPARE(rig.clock().averageRate(), 0.0);
        QCOMPARE(rig.story(), "");
    }
}

// The presets

void tst_trigger::aTriggerAdvancesThePreset()
{
    TriggerRig rig;
    QCOMPARE(rig.sensor().setSequencingMode(Sensor::PresetSequencing), emulator::Ok);
    rig.arm(Trigger::PresetAdvance, Trigger::Software);
    QVERIFY(rig.ready);
    zvtEEventType event{};
    while (zvtReadEventQueue(rig.handle(), &event) == 0 && event != ZVT_EVENT_NONE) { }
    // Frames of the active preset come without a trigger.
    QVERIFY(rig.watch(35));
    QCOMPARE(rig.clock().averageRate(), 100.0);
    for (const int preset : {1, 2, 3, 0}) {
        QCOMPARE(zvtSoftwareTrigger(rig.handle()), 0);
        QCOMPARE(rig.sensor().activePreset(), preset);
        QCOMPARE(zvtReadEventQueue(rig.handle(), &event), 0);
        QCOMPARE(event, ZVT_EVENT_SETTINGS_CHANGED);
        QCOMPARE(zvtReadEventQueue(rig.handle(), &event), 0);
        QCOMPARE(event, ZVT_EVENT_NONE);
        QVERIFY(rig.watch(20));
    }
    QCOMPARE(rig.story(), "0@0 0@10 0@20 0@30 1@40 1@50 2@60 2@70 3@80 3@90 0@100 0@110");
}

void tst_trigger::onlyPresetsInUseAreAdvancedTo()
{
    TriggerRig rig;
    QCOMPARE(rig.sensor().setSequencingMode(Sensor::PresetSequencing), emulator::Ok);
    rig.arm(Trigger::PresetAdvance, Trigger::Software);
    QCOMPARE(rig.sensor().setDwellCount(0, 0), emulator::Ok);
    QCOMPARE(rig.sensor().setDwellCount(2, 0), emulator::Ok);
    for (const int preset : {1, 3, 1, 3}) {
        QCOMPARE(zvtSoftwareTrigger(rig.handle()), 0);
        QCOMPARE(rig.sensor().activePreset(), preset);
    }
    QCOMPARE(rig.sensor().setDwellCount(1, 0), emulator::Ok);
    QCOMPARE(rig.sensor().setDwellCount(3, 0), emulator::Ok);
    QCOMPARE(zvtSoftwareTrigger(rig.handle()), 0);
    QCOMPARE(rig.sensor().activePreset(), 3);
}

void tst_trigger::manyTriggersInAFrameAdvanceOnce()
{
    TriggerRig rig;
    QCOMPARE(rig.sensor().setSequencingMode(Sensor::PresetSequencing), emulator::Ok);
    // Six triggers in each frame: the next preset is two further.
    rig.arm(Trigger::PresetAdvance, Trigger::Internal, 600);
    QVERIFY(rig.ready && rig.watch(58));
    QCOMPARE(rig.story(), "0@0 3@10 1@20 3@30 1@40 3@50");
}

void tst_trigger::advanceNeedsPresetSequencing()
{
    TriggerRig rig;
    for (const uint32_t mode : {0U, 1U}) {
        QCOMPARE(rig.sensor().setSequencingMode(mode), emulator::Ok);
        QCOMPARE(zvtSetTriggerMode(rig.handle(), Trigger::PresetAdvance), int(emulator::Refused));
    }
    QCOMPARE(rig.sensor().setSequencingMode(2), emulator::Ok);
    QCOMPARE(zvtSetTriggerMode(rig.handle(), Trigger::PresetAdvance), 0);
    // It ends with the preset sequencing.
    QVERIFY(rig.set("sensor.sequencingMode", 0));
    uint8_t mode = 9;
    QCOMPARE(zvtGetTriggerMode(rig.handle(), &mode), 0);
    QCOMPARE(mode, uint8_t(Trigger::FreeRun));
    // Other modes stay.
    QCOMPARE(zvtSetTriggerMode(rig.handle(), Trigger::TriggeredSequence), 0);
    QVERIFY(rig.set("sensor.sequencingMode", 2) && rig.set("sensor.sequencingMode", 1));
    QCOMPARE(zvtGetTriggerMode(rig.handle(), &mode), 0);
    QCOMPARE(mode, uint8_t(Trigger::TriggeredSequence));
}

void tst_trigger::aDelayPostponesTheEffect()
{
    TriggerRig rig(Trigger::TriggeredSequence, Trigger::Software);
    QCOMPARE(zvtSetTriggerDelay(rig.handle(), 30'000.05F), 0);
    Clock::advance(5);
    QCOMPARE(zvtSoftwareTrigger(rig.handle()), 0);
    Clock::advance(30);
    QVERIFY(!rig.clock().newest(0));
    Clock::advance(1);
    QCOMPARE(rig.clock().newest(0)->tick, 35 * TriggerRig::ticksPerMillisecond + 1);
    // A trigger that is on its way keeps its delay.
    QCOMPARE(zvtSoftwareTrigger(rig.handle()), 0);
    QCOMPARE(zvtSetTriggerDelay(rig.handle(), 0), 0);
    Clock::advance(100);
    QCOMPARE(rig.clock().newest(0)->tick, 66 * TriggerRig::ticksPerMillisecond + 1);
    // Arming forgets it.
    QCOMPARE(zvtSetTriggerDelay(rig.handle(), 30'000), 0);
    QCOMPARE(zvtSoftwareTrigger(rig.handle()), 0);
    QCOMPARE(zvtRearmTrigger(rig.handle()), 0);
    Clock::advance(100);
    QCOMPARE(rig.newest(), 66.00005);
}

void tst_trigger::framesThatDoNotComeLeaveTheLastPicture()
{
    TriggerRig rig;
    QVERIFY(rig.set("sensor.window", QVariantList{0, 0, 64, 64}));
    Clock::advance(100);
    const auto before = rig.camera().newestFrame(0);
    QVERIFY(before);
    rig.arm(Trigger::TriggeredSequence, Trigger::Software);
    Clock::advance(5000);
    const auto after = rig.camera().newestFrame(0);
    QVERIFY(after);
    QCOMPARE(after->start.tick, before->start.tick);
    QCOMPARE(zvtSoftwareTrigger(rig.handle()), 0);
    Clock::advance(100);
    QCOMPARE(rig.camera().newestFrame(0)->start.number, before->start.number + 1);
}

ZVT_TEST(tst_trigger)
#include "tst_trigger.moc"
