#include "tests/support/Test.h"
#include "tests/unit/SsdRig.h"

#include <QUrl>

namespace
{

/// What a direct poll asks while nothing changes.
const QStringList directPoll{"zvtGetSsdState"};

const QStringList namesOfStates{"disarmed",     "armed",  "triggered",          "complete", "playing",
                                "saving",       "paused", "formatting",         "loading",  "recording paused",
                                "movie loaded", "arming", "asks for a download"};

} // namespace

/// The setters and the commands of the recorder, and the state that the SSD tab shows after them.
class tst_SsdTabModelRecorder : public Test
{
    Q_OBJECT

private slots:
    void settersThatIgnoreTheStatus_data();
    void settersThatIgnoreTheStatus();
    void settersThatAskTheCamera_data();
    void settersThatAskTheCamera();
    void invalidDurationIsZero();
    void settingsOfTheComputer();
    void visibilityDoesNotTouchThePoll();
    void timeFromText();

    void commandsCallTheCamera_data();
    void commandsCallTheCamera();
    void commandsAreShownAlthoughRefused_data();
    void commandsAreShownAlthoughRefused();
    void secondPressChangesNothing();
    void newStateDelaysThePoll();
    void stoppedTimerIsNotStarted();
    void interactionFollowsTheState_data();
    void interactionFollowsTheState();

    void armWritesEverything();
    void armEndsThePlayback_data();
    void armEndsThePlayback();
    void armAsksTheStateOfTheCamera();
    void armWithoutFrames();
    void armSignalsOnlyChanges();
    void armSetsWhereTheRecordingIs();
    void stopAndSaveShowWhatTheCameraSays_data();
    void stopAndSaveShowWhatTheCameraSays();
    void refreshEndsThePendingState();
    void commandsWithoutARoot();
};

// The setters

void tst_SsdTabModelRecorder::settersThatIgnoreTheStatus_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QStringList>("calls");
    QTest::addColumn<QStringList>("signalled");
    QTest::newRow("autoPlay") << QVariant(false) << QStringList("zvtSetSsdAutoPlay 0")
                              << QStringList("autoPlayChanged");
    QTest::newRow("autoSave") << QVariant(false) << QStringList("zvtSetSsdAutoSave 0")
                              << QStringList("autoSaveChanged");
    QTest::newRow("filename") << QVariant(QStringLiteral("Größe 1")) << QStringList("zvtSetSsdSaveName \"Größe 1\"")
                              << QStringList("filenameChanged");
    QTest::newRow("framesToRecord") << QVariant(77U) << QStringList("zvtSetSsdNumFrames 77")
                                    << QStringList{"framesToRecordChanged", "pretriggerMaxFramesToRecordChanged"};
    QTest::newRow("pretriggerFramesToRecord") << QVariant(33U) << QStringList("zvtSetSsdPretriggerFrames 33")
                                              << QStringList("pretriggerFramesToRecordChanged");
    QTest::newRow("loopPlayback") << QVariant(false) << QStringList("zvtSetSsdLoopPlayback 0")
                                  << QStringList("loopPlaybackChanged");
    QTest::newRow("playbackRateInHertz") << QVariant(12.5F) << QStringList("zvtSetSsdPlaybackRate 12.5")
                                         << QStringList("playbackRateInHertzChanged");
    QTest::newRow("startFrame") << QVariant(11U) << QStringList("zvtSetSsdStartFrame 11")
                                << QStringList("startFrameChanged");
    QTest::newRow("endFrame") << QVariant(4294967295U) << QStringList("zvtSetSsdEndFrame 4294967295")
                              << QStringList("endFrameChanged");
}

void tst_SsdTabModelRecorder::settersThatIgnoreTheStatus()
{
    QFETCH(const QVariant, value);
    QFETCH(const QStringList, calls);
    QFETCH(const QStringList, signalled);
    const char *property = QTest::currentDataTag();
    Ssd ssd;
    ssd.read();
    const QVariant old = ssd.model.property(property);
    for (const bool refused : {false, true}) {
        if (refused)
            ssd.gate().failAlways(calls.front().section(u' ', 0, 0).toStdString());
        QCOMPARE(ssd.write(property, value), calls);
        QCOMPARE(ssd.log.take(), signalled);
        QCOMPARE(ssd.model.property(property), value);
        // The same value is not written again.
        QCOMPARE(ssd.write(property, value), QStringList());
        QCOMPARE(ssd.log.take(), QStringList());
        ssd.write(property, old);
    }
}

void tst_SsdTabModelRecorder::settersThatAskTheCamera_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("call");
    QTest::addColumn<QStringList>("accepted"); // Further signals of an accepted value.
    QTest::newRow("autoRearm") << QVariant(false) << "zvtSetSsdAutoRearm 0" << QStringList();
    QTest::newRow("autoDownload") << QVariant(false) << "zvtSetSsdAutoDownload 0" << QStringList();
    QTest::newRow("recordGated") << QVariant(false) << "zvtSetSsdRecordGated 0" << QStringList();
    QTest::newRow("recordDuration") << QVariant(QTime(23, 59, 59, 999)) << "zvtSetSsdRecordDuration 86399999"
                                    << QStringList();
    QTest::newRow("recordMode") << QVariant(0) << "zvtSetSsdRecordMode 0" << limitSignals;
    QTest::newRow("recordType") << QVariant(1) << "zvtSetSsdRecordType 1"
                                << QStringList("pretriggerMaxFramesToRecordChanged");
}

void tst_SsdTabModelRecorder::settersThatAskTheCamera()
{
    QFETCH(const QVariant, value);
    QFETCH(const QString, call);
    QFETCH(const QStringList, accepted);
    const char *property = QTest::currentDataTag();
    const QStringList changed(QString::fromLatin1(property) + "Changed");
    Ssd ssd;
    ssd.read();
    const QVariant old = ssd.model.property(property);
    // A refused value is signalled, so that its control shows the old one again.
    ssd.gate().failNext(call.section(u' ', 0, 0).toStdString());
    QCOMPARE(ssd.write(property, value), QStringList(call));
    QCOMPARE(ssd.log.take(), changed);
    QCOMPARE(ssd.model.property(property), old);

    QCOMPARE(ssd.write(property, value), QStringList(call));
    QCOMPARE(ssd.log.take(), changed + accepted);
    QVERIFY(ssd.model.property(property) != old);

    QCOMPARE(ssd.write(property, value), QStringList());
    QCOMPARE(ssd.log.take(), QStringList());
}

void tst_SsdTabModelRecorder::invalidDurationIsZero()
{
    Ssd ssd;
    ssd.read();
    QCOMPARE(ssd.write("recordDuration", QTime()), QStringList("zvtSetSsdRecordDuration 0"));
    QCOMPARE(ssd.model.recordDuration(), QTime(0, 0));
    QCOMPARE(ssd.write("recordDuration", QTime::fromMSecsSinceStartOfDay(86'400'000)), QStringList());
}

void tst_SsdTabModelRecorder::settingsOfTheComputer()
{
    Ssd ssd;
    QCOMPARE(ssd.write("autoDownloadDirectory", "/tmp/a b"), QStringList());
    QCOMPARE(ssd.log.take(), QStringList("autoDownloadDirectoryUrlChanged"));
    QCOMPARE(ssd.model.autoDownloadDirectoryUrl(), QUrl::fromLocalFile("/tmp/a b").toString());
    QCOMPARE(ssd.write("autoDownloadDirectoryUrl", "file:///tmp/c"), QStringList());
    QCOMPARE(ssd.log.take(), QStringList("autoDownloadDirectoryUrlChanged"));
    QCOMPARE(ssd.model.autoDownloadDirectory(), "/tmp/c");
    ssd.write("autoDownloadDirectory", "/tmp/c");
    QCOMPARE(ssd.log.take(), QStringList());
    QCOMPARE(ssd.write("autoDownloadCount", 5U), QStringList());
    QCOMPARE(ssd.log.take(), QStringList("autoDownloadCountChanged"));
    ssd.write("autoDownloadCount", 5U);
    QCOMPARE(ssd.log.take(), QStringList());
}

void tst_SsdTabModelRecorder::visibilityDoesNotTouchThePoll()
{
    Ssd ssd;
    for (const bool visible : {true, false}) {
        QVERIFY(!ssd.restartsTimer([&] { QCOMPARE(ssd.write("visible", visible), QStringList()); }));
        QCOMPARE(ssd.log.take(), QStringList("visibleChanged"));
        QCOMPARE(ssd.poll(), QStringList("zvtGetSsdState"));
        ssd.log.take();
    }
}

void tst_SsdTabModelRecorder::timeFromText()
{
    Ssd ssd;
    QCOMPARE(ssd.model.timeFromString("01:30:05"), QTime(1, 30, 5));
    QVERIFY(!ssd.model.timeFromString("24:00:00").isValid());
    QVERIFY(!ssd.model.timeFromString("::").isValid());
}

// The commands

void tst_SsdTabModelRecorder::commandsCallTheCamera_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<QString>("call");
    QTest::newRow("disarm") << int(SsdTabModel::DISARMED) << "zvtSsdDisarm";
    QTest::newRow("triggerRecording") << int(SsdTabModel::TRIGGERED) << "zvtSsdTrigger";
    QTest::newRow("pauseRecording") << int(SsdTabModel::RECORD_PAUSED) << "zvtSsdRecordPause";
    QTest::newRow("resumeRecording") << int(SsdTabModel::TRIGGERED) << "zvtSsdRecordResume";
    QTest::newRow("format") << int(SsdTabModel::FORMATTING) << "zvtSsdFormatDrive";
}

void tst_SsdTabModelRecorder::commandsCallTheCamera()
{
    QFETCH(const int, state);
    QFETCH(const QString, call);
    Ssd ssd;
    ssd.enter(SsdTabModel::COMPLETE);
    QCOMPARE(ssd.orderOf([&] { QMetaObject::invokeMethod(&ssd.model, QTest::currentDataTag()); }),
             QStringList({call, "stateChanged"}));
    QCOMPARE(ssd.log.take(), stateSignals);
    QCOMPARE(int(ssd.model.state()), state);
    // The next poll replaces it.
    ssd.poll();
    QCOMPARE(ssd.model.state(), SsdTabModel::COMPLETE);
    QVERIFY(ssd.log.take().contains("stateChanged"));
}

void tst_SsdTabModelRecorder::commandsAreShownAlthoughRefused_data() { commandsCallTheCamera_data(); }

void tst_SsdTabModelRecorder::commandsAreShownAlthoughRefused()
{
    QFETCH(const int, state);
    QFETCH(const QString, call);
    Ssd ssd;
    ssd.enter(SsdTabModel::COMPLETE);
    ssd.gate().failAlways(call.toStdString());
    QMetaObject::invokeMethod(&ssd.model, QTest::currentDataTag());
    QCOMPARE(int(ssd.model.state()), state);
    // While the state cannot be read, the pending one stays.
    ssd.gate().failNext("zvtGetSsdState");
    ssd.poll();
    QCOMPARE(int(ssd.model.state()), state);
    ssd.poll();
    QCOMPARE(ssd.model.state(), SsdTabModel::COMPLETE);
}

// Not even the poll that is under way becomes void.
void tst_SsdTabModelRecorder::secondPressChangesNothing()
{
    Ssd ssd;
    ssd.enter(SsdTabModel::ARMED);
    ssd.model.triggerRecording();
    ssd.log.take();
    ssd.setCameraState(SsdTabModel::RECORD_PAUSED);
    QVERIFY(ssd.holdPoll());
    const size_t mark = ssd.gate().mark();
    QVERIFY(!ssd.restartsTimer([&] { ssd.model.triggerRecording(); }));
    QCOMPARE(ssd.calls(mark, true), QStringList("zvtSsdTrigger"));
    QCOMPARE(ssd.log.take(), QStringList());
    ssd.release();
    QCOMPARE(ssd.model.state(), SsdTabModel::RECORD_PAUSED);
}

void tst_SsdTabModelRecorder::newStateDelaysThePoll()
{
    Ssd ssd;
    QVERIFY(ssd.restartsTimer([&] { ssd.model.triggerRecording(); }));
    QVERIFY(pollTimer(ssd.model).isActive());
}

void tst_SsdTabModelRecorder::stoppedTimerIsNotStarted()
{
    Ssd ssd;
    pollTimer(ssd.model).stop();
    ssd.model.triggerRecording();
    QVERIFY(!pollTimer(ssd.model).isActive());
}

void tst_SsdTabModelRecorder::interactionFollowsTheState_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<bool>("canInteract");
    QTest::addColumn<bool>("ramContainsVideo");
    const QList<int> interactive{0, 1, 3, 4, 6, 10};
    const QList<int> withVideo{3, 4, 6, 10};
    for (int state = 0; state < namesOfStates.size(); ++state)
        QTest::newRow(qPrintable(namesOfStates.at(state)))
            << state << interactive.contains(state) << withVideo.contains(state);
}

void tst_SsdTabModelRecorder::interactionFollowsTheState()
{
    QFETCH(const int, state);
    QFETCH(const bool, canInteract);
    QFETCH(const bool, ramContainsVideo);
    Ssd ssd;
    // A download would end the polls for a while.
    ssd.gate().failAlways("zvtSsdAutoDownloadStart");
    ssd.enter(state);
    QCOMPARE(int(ssd.model.state()), state);
    QCOMPARE(ssd.model.canInteract(), canInteract);
    QCOMPARE(ssd.model.ramContainsVideo(), ramContainsVideo);
    // Signalled at each poll, changed or not.
    ssd.poll();
    QCOMPARE(ssd.log.take().value(0), "canInteractChanged");
}

// Arming

void tst_SsdTabModelRecorder::armWritesEverything()
{
    Ssd ssd;
    ssd.read();
    ssd.setCameraState(SsdTabModel::ARMING);
    ssd.model.setFramesToRecord(200);
    ssd.model.setPretriggerFramesToRecord(20);
    ssd.model.setFilename("Take 2");
    QCOMPARE(ssd.callsOf([&] { ssd.model.arm(); }),
             QStringList({"zvtSetSsdNumFrames 200", "zvtSetSsdPretriggerFrames 20", "zvtSetSsdSaveName \"Take 2\"",
                          "zvtSetSsdStartFrame 0", "zvtSetSsdEndFrame 199", "zvtSsdArm"})
                 + directPoll);
    QCOMPARE(ssd.log.take(),
             stateSignals
                 + QStringList({"startFrameChanged", "endFrameChanged", "fromDiskChanged", "canInteractChanged"}));
    QCOMPARE(ssd.model.state(), SsdTabModel::ARMING);
    QCOMPARE(ssd.model.startFrame(), 0U);
    QCOMPARE(ssd.model.endFrame(), 199U);
}

void tst_SsdTabModelRecorder::armEndsThePlayback_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<QStringList>("first");
    for (int state = 0; state < namesOfStates.size(); ++state) {
        QStringList first;
        if (state == SsdTabModel::PLAYING || state == SsdTabModel::PAUSED)
            first << "zvtSsdStopBuffer";
        if (state != SsdTabModel::ARMING)
            first << "stateChanged";
        QTest::newRow(qPrintable(namesOfStates.at(state))) << state << first;
    }
}

void tst_SsdTabModelRecorder::armEndsThePlayback()
{
    QFETCH(const int, state);
    QFETCH(const QStringList, first);
    Ssd ssd;
    ssd.enter(state);
    const QStringList order = ssd.orderOf([&] { ssd.model.arm(); });
    QCOMPARE(order.mid(0, first.size() + 1), first + QStringList("zvtSetSsdNumFrames 1000"));
    QCOMPARE(order.count("zvtSsdStopBuffer"), first.count("zvtSsdStopBuffer"));
}

// The state that the camera reported last, not the pending one.
void tst_SsdTabModelRecorder::armAsksTheStateOfTheCamera()
{
    Ssd ssd;
    ssd.enter(SsdTabModel::COMPLETE);
    ssd.model.play();
    QCOMPARE(ssd.model.state(), SsdTabModel::PLAYING);
    QVERIFY(!ssd.callsOf([&] { ssd.model.arm(); }).contains("zvtSsdStopBuffer"));
    ssd.enter(SsdTabModel::PLAYING);
    ssd.model.disarm();
    QVERIFY(ssd.callsOf([&] { ssd.model.arm(); }).contains("zvtSsdStopBuffer"));
}

void tst_SsdTabModelRecorder::armWithoutFrames()
{
    Ssd ssd;
    ssd.model.setFramesToRecord(0);
    QVERIFY(ssd.callsOf([&] { ssd.model.arm(); }).contains("zvtSetSsdEndFrame 4294967295"));
    QCOMPARE(ssd.model.endFrame(), 4294967295U);
}

void tst_SsdTabModelRecorder::armSignalsOnlyChanges()
{
    Ssd ssd;
    ssd.setCameraState(SsdTabModel::ARMED);
    ssd.model.arm();
    QCOMPARE(ssd.model.state(), SsdTabModel::ARMED);
    ssd.log.take();
    ssd.model.arm();
    // ARMING and back; the range is as before.
    QCOMPARE(ssd.log.take(), stateSignals + stateSignals);
}

void tst_SsdTabModelRecorder::armSetsWhereTheRecordingIs()
{
    Ssd ssd;
    ssd.read();
    for (const auto mode : {SsdTabModel::MODE_TO_DISK, SsdTabModel::MODE_TO_MEMORY}) {
        ssd.model.setRecordMode(mode);
        ssd.log.take();
        ssd.model.arm();
        QCOMPARE(ssd.log.take().count("fromDiskChanged"), 1);
        QCOMPARE(ssd.model.fromDisk(), mode == SsdTabModel::MODE_TO_DISK);
        ssd.model.arm();
        QCOMPARE(ssd.log.take().count("fromDiskChanged"), 0);
    }
}

void tst_SsdTabModelRecorder::stopAndSaveShowWhatTheCameraSays_data()
{
    QTest::addColumn<QStringList>("calls");
    QTest::newRow("stopRecording") << QStringList("zvtSsdRecordStop");
    QTest::newRow("save") << QStringList{"zvtSetSsdSaveName \"Shot\"", "zvtSsdSaveBuffer"};
}

void tst_SsdTabModelRecorder::stopAndSaveShowWhatTheCameraSays()
{
    QFETCH(const QStringList, calls);
    Ssd ssd;
    ssd.read();
    const auto act = [&ssd] { QMetaObject::invokeMethod(&ssd.model, QTest::currentDataTag()); };
    ssd.setCameraState(SsdTabModel::SAVING);
    QCOMPARE(ssd.callsOf(act), calls + directPoll);
    QCOMPARE(ssd.log.take(), stateSignals);
    QCOMPARE(ssd.model.state(), SsdTabModel::SAVING);
    // There is no pending state: without an answer nothing changes, and the timer goes on.
    ssd.gate().failNext("zvtGetSsdState");
    QVERIFY(!ssd.restartsTimer([&] { QCOMPARE(ssd.callsOf(act), calls + directPoll); }));
    QCOMPARE(ssd.log.take(), QStringList());
    // Without a camera there is no poll.
    ssd.rig.camera().disconnect();
    QCOMPARE(ssd.callsOf(act), calls);
}

// Also in the middle of a command; the page is disabled while it refreshes.
void tst_SsdTabModelRecorder::refreshEndsThePendingState()
{
    Ssd ssd;
    ssd.gate().hold("zvtGetSsdState");
    ssd.model.refresh();
    QVERIFY(ssd.gate().waitHeld("zvtGetSsdState"));
    ssd.model.triggerRecording();
    QCOMPARE(ssd.model.state(), SsdTabModel::TRIGGERED);
    ssd.release();
    QCOMPARE(ssd.model.state(), SsdTabModel::COMPLETE);
}

void tst_SsdTabModelRecorder::commandsWithoutARoot()
{
    QObject parent;
    SsdTabModel model(&parent);
    model.arm();
    QCOMPARE(model.state(), SsdTabModel::ARMING);
    model.stopRecording();
    model.stop();
    QCOMPARE(model.state(), SsdTabModel::COMPLETE);
}

ZVT_TEST(tst_SsdTabModelRecorder)
#include "tst_SsdTabModelRecorder.moc"
