#include "tests/support/Test.h"
#include "tests/unit/SsdRig.h"

namespace
{

using Input = SsdTabModel::SsdUIState;
using Update = SsdTabModel::SsdUpdateState;
using Command = void (SsdTabModel::*)();

constexpr int stateCount = SsdTabModel::REQUEST_AUTO_DOWNLOAD + 1;

bool isOneOf(int state, const QList<int> &states) { return states.contains(state); }

/// The calls that a poll must make, without those of every fifth one. `before` is the state on the page, `now` the
/// camera's.
QStringList expectedCalls(int before, int now, bool fromDisk, bool recordModes)
{
    const QList<int> recording{SsdTabModel::ARMED, SsdTabModel::TRIGGERED, SsdTabModel::RECORD_PAUSED};
    QStringList calls{"zvtGetSsdState"};
    if (now == SsdTabModel::PLAYING || (now == SsdTabModel::PAUSED && before != SsdTabModel::PAUSED))
        calls << "zvtGetSsdPlaybackFrame";
    if (isOneOf(before, recording) && !isOneOf(now, recording)) {
        if (fromDisk)
            calls << "zvtGetSsdMaxNumFramesDisk";
        else if (recordModes)
            calls << "zvtGetSsdNumFramesAcquired"
                  << "zvtSetSsdStartFrame 0"
                  << "zvtSetSsdEndFrame 349";
        else
            calls << "zvtGetSsdNumFrames"
                  << "zvtSetSsdStartFrame 0"
                  << "zvtSetSsdEndFrame 399";
    }
    if (isOneOf(before, {SsdTabModel::FORMATTING, SsdTabModel::SAVING}) && now != before)
        calls << "zvtGetSsdMaxNumFramesDisk";
    return calls;
}

} // namespace

/// The poll of the SSD tab: what it asks, when it runs, and when it is void. tst_SsdTabModelPollResults has what it
/// shows.
class tst_SsdTabModelPolls : public Test
{
    Q_OBJECT

private slots:
    void everyTransitionAsksWhatItNeeds();
    void minuteInAState_data();
    void minuteInAState();
    void driveIsReadAtEveryFifthPoll();
    void failedPollDoesNotCount();
    void recognizedDriveHasALimit_data();
    void recognizedDriveHasALimit();
    void failedDriveReadSetsNothing_data();
    void failedDriveReadSetsNothing();

    void timerRunsFromTheStart();
    void onlyTestsStartPolls();
    void disconnectedCameraIsNotPolled();
    void oneTimedPollAtATime();
    void failedPollIsNotTheLast();
    void pollDuringAPublicationIsDropped();
    void directPollRunsBesideATimedOne();
    void pollOlderThanACommandIsVoid_data();
    void pollOlderThanACommandIsVoid();
    void runningPollOutlivesTheModel();
};

// All states on the page, all states of the camera, all kinds of recordings.
void tst_SsdTabModelPolls::everyTransitionAsksWhatItNeeds()
{
    Ssd ssd;
    Input input;
    ssd.model.GetUIState(input);
    for (int combination = 0; combination < stateCount * stateCount * 4; ++combination) {
        const int before = combination % stateCount;
        const int now = combination / stateCount % stateCount;
        input.fromDisk = combination / (stateCount * stateCount) % 2 == 1;
        input.recordModeAvailable = combination / (stateCount * stateCount * 2) == 1;
        input.state = static_cast<SsdTabModel::SsdState>(before);
        ssd.setCameraState(now);
        Update update;
        const QStringList calls = ssd.callsOf([&] { SsdTabModel::UpdateSsdState(input, update); });
        const QStringList expected = expectedCalls(before, now, input.fromDisk, input.recordModeAvailable);
        QVERIFY2(calls == expected, qPrintable(QStringLiteral("%1 > %2: ").arg(before).arg(now) + calls.join(u' ')));
        QCOMPARE(int(update.state.get()), now);
        QCOMPARE(update.sequence, input.sequence);
        QCOMPARE(update.tick, 1);
        QCOMPARE(update.currentFrame.set(), calls.contains("zvtGetSsdPlaybackFrame"));
        QCOMPARE(update.maxFramesDisk.set(), calls.contains("zvtGetSsdMaxNumFramesDisk"));
        QCOMPARE(update.totalFrames.set(), calls.contains("zvtSetSsdStartFrame 0"));
        QVERIFY(!update.drivePresent.set() && !update.driveRecognized.set());
    }
}

void tst_SsdTabModelPolls::minuteInAState_data()
{
    QTest::addColumn<int>("state");
    for (int state = 0; state < stateCount; ++state)
        QTest::addRow("%d", state) << state;
}

// A poll a second: one read of the state, the drive every fifth time, its limit once, and the frame while it moves.
void tst_SsdTabModelPolls::minuteInAState()
{
    QFETCH(const int, state);
    constexpr int seconds = 60;
    Ssd ssd;
    // A download would end the polls for a while.
    ssd.gate().failAlways("zvtSsdAutoDownloadStart");
    ssd.enter(state);
    QMap<QString, int> counts;
    const size_t mark = ssd.gate().mark();
    for (int second = 0; second < seconds; ++second)
        ssd.poll();
    for (const QString &call : ssd.calls(mark, false))
        ++counts[call];
    QMap<QString, int> expected{{"zvtGetSsdState", seconds},
                                {"zvtGetSsdDrivePresent", seconds / 5},
                                {"zvtGetSsdDriveRecognized", seconds / 5},
                                {"zvtGetSsdMaxNumFramesDisk", 1}};
    if (state == SsdTabModel::PLAYING)
        expected.insert("zvtGetSsdPlaybackFrame", seconds);
    QCOMPARE(counts, expected);
    // The download that the camera asks for is tried again each time.
    QCOMPARE(ssd.calls(mark, true),
             QStringList(state == SsdTabModel::REQUEST_AUTO_DOWNLOAD ? seconds : 0, "zvtSsdAutoDownloadStart"));
}

void tst_SsdTabModelPolls::driveIsReadAtEveryFifthPoll()
{
    Ssd ssd;
    for (int poll = 1; poll <= 15; ++poll) {
        // Direct polls count too.
        const size_t mark = ssd.gate().mark();
        if (poll % 2 == 1)
            ssd.poll();
        else
            ssd.model.stopRecording();
        const QStringList calls = ssd.rig.callsSince(mark);
        QCOMPARE(calls.contains("zvtGetSsdDrivePresent"), poll % 5 == 0);
        QCOMPARE(calls.contains("zvtGetSsdDriveRecognized"), poll % 5 == 0);
        QCOMPARE(calls.contains("zvtGetSsdMaxNumFramesDisk"), poll == 5);
    }
}

void tst_SsdTabModelPolls::failedPollDoesNotCount()
{
    Ssd ssd;
    for (int poll = 1; poll <= 4; ++poll)
        ssd.poll();
    for (int failed = 0; failed < 3; ++failed) {
        ssd.gate().failNext("zvtGetSsdState");
        QCOMPARE(ssd.poll(), QStringList("zvtGetSsdState"));
    }
    QVERIFY(ssd.poll().contains("zvtGetSsdDrivePresent"));
}

void tst_SsdTabModelPolls::recognizedDriveHasALimit_data()
{
    QTest::addColumn<int>("recognized");
    QTest::addColumn<bool>("known");
    QTest::addColumn<bool>("asked");
    QTest::newRow("not recognized") << 0 << false << false;
    QTest::newRow("newly recognized") << 1 << false << true;
    QTest::newRow("still recognized") << 1 << true << false;
    QTest::newRow("another number") << 2 << false << false;
}

void tst_SsdTabModelPolls::recognizedDriveHasALimit()
{
    QFETCH(const int, recognized);
    QFETCH(const bool, known);
    QFETCH(const bool, asked);
    Ssd ssd;
    ssd.gate().script("zvtGetSsdDriveRecognized", recognized);
    Input input;
    ssd.model.GetUIState(input);
    input.tick = 4;
    input.driveRecognized = known;
    Update update;
    QCOMPARE(ssd.callsOf([&] { SsdTabModel::UpdateSsdState(input, update); }),
             QStringList({"zvtGetSsdState", "zvtGetSsdDrivePresent", "zvtGetSsdDriveRecognized"})
                 + (asked ? QStringList("zvtGetSsdMaxNumFramesDisk") : QStringList()));
    QCOMPARE(update.tick, 0);
    ssd.model.UpdateUI(update);
    QVERIFY(ssd.model.drivePresent());
    QCOMPARE(ssd.model.driveRecognized(), recognized != 0);
    QCOMPARE(ssd.model.maxFramesToRecordToDisk(), asked ? 900U : 0U);
}

void tst_SsdTabModelPolls::failedDriveReadSetsNothing_data()
{
    QTest::addColumn<QStringList>("calls");
    QTest::newRow("zvtGetSsdDrivePresent") << QStringList{"zvtGetSsdState", "zvtGetSsdDrivePresent"};
    QTest::newRow("zvtGetSsdDriveRecognized")
        << QStringList{"zvtGetSsdState", "zvtGetSsdDrivePresent", "zvtGetSsdDriveRecognized"};
}

void tst_SsdTabModelPolls::failedDriveReadSetsNothing()
{
    QFETCH(const QStringList, calls);
    Ssd ssd;
    for (int poll = 1; poll <= 4; ++poll)
        ssd.poll();
    ssd.gate().failNext(QTest::currentDataTag());
    QCOMPARE(ssd.poll(), calls);
    QVERIFY(!ssd.model.drivePresent() && !ssd.model.driveRecognized());
    // It is read again after five polls.
    for (int poll = 1; poll <= 4; ++poll)
        QCOMPARE(ssd.poll(), QStringList("zvtGetSsdState"));
    ssd.poll();
    QVERIFY(ssd.model.drivePresent() && ssd.model.driveRecognized());
}

// When polls run

void tst_SsdTabModelPolls::timerRunsFromTheStart()
{
    QObject parent;
    const SsdTabModel model(&parent);
    const QTimer &timer = pollTimer(model);
    QVERIFY(timer.isActive() && !timer.isSingleShot());
    QCOMPARE(timer.interval(), 1000);
}

// The filter of Test.cpp stops the timer of the model, and no other one of this name.
void tst_SsdTabModelPolls::onlyTestsStartPolls()
{
    Ssd ssd;
    QTimer other;
    other.setObjectName(pollTimer(ssd.model).objectName());
    int elapsed = 0;
    QObject::connect(&other, &QTimer::timeout, &other, [&elapsed] { ++elapsed; });
    const size_t mark = ssd.gate().mark();
    pollTimer(ssd.model).start(0);
    other.start(0);
    QTRY_VERIFY(elapsed > 2);
    CameraRig::settle();
    QCOMPARE(ssd.calls(mark, false), QStringList());
}

void tst_SsdTabModelPolls::disconnectedCameraIsNotPolled()
{
    Ssd ssd;
    ssd.enter(SsdTabModel::PLAYING);
    ssd.rig.camera().disconnect();
    QCOMPARE(ssd.poll(), QStringList());
    QVERIFY(pollTimer(ssd.model).isActive());
    QCOMPARE(ssd.model.state(), SsdTabModel::PLAYING);
    ssd.rig.camera().connect();
    ssd.setCameraState(SsdTabModel::COMPLETE);
    ssd.poll();
    QCOMPARE(ssd.model.state(), SsdTabModel::COMPLETE);
}

void tst_SsdTabModelPolls::oneTimedPollAtATime()
{
    Ssd ssd;
    ssd.gate().hold("zvtGetSsdState");
    const size_t mark = ssd.gate().mark();
    for (int tick = 0; tick < 3; ++tick)
        startPoll(ssd.model);
    QVERIFY(ssd.gate().waitHeld("zvtGetSsdState"));
    startPoll(ssd.model);
    ssd.release();
    QCOMPARE(ssd.calls(mark, false), QStringList("zvtGetSsdState"));
    QCOMPARE(ssd.poll(), QStringList("zvtGetSsdState"));
}

void tst_SsdTabModelPolls::failedPollIsNotTheLast()
{
    Ssd ssd;
    ssd.enter(SsdTabModel::PLAYING);
    ssd.gate().failNext("zvtGetSsdState");
    QCOMPARE(ssd.poll(), QStringList("zvtGetSsdState"));
    QCOMPARE(ssd.log.take(), QStringList());
    QCOMPARE(ssd.model.state(), SsdTabModel::PLAYING);
    // Also if the camera is lost during the poll.
    QVERIFY(ssd.holdPoll());
    ssd.rig.camera().disconnect();
    ssd.release();
    ssd.rig.camera().connect();
    QCOMPARE(ssd.poll().value(0), "zvtGetSsdState");
}

// The timer elapses while a slot of stateChanged runs, as when the slot runs an event loop.
void tst_SsdTabModelPolls::pollDuringAPublicationIsDropped()
{
    Ssd ssd;
    QObject::connect(&ssd.model, &SsdTabModel::stateChanged, &ssd.model, [&ssd] { startPoll(ssd.model); });
    ssd.setCameraState(SsdTabModel::SAVING);
    QCOMPARE(ssd.poll(), QStringList("zvtGetSsdState"));
    QCOMPARE(ssd.model.state(), SsdTabModel::SAVING);
    QCOMPARE(ssd.poll(), QStringList("zvtGetSsdState"));
}

void tst_SsdTabModelPolls::directPollRunsBesideATimedOne()
{
    Ssd ssd;
    QVERIFY(ssd.holdPoll());
    ssd.setCameraState(SsdTabModel::SAVING);
    QVERIFY(ssd.callsOf([&] { ssd.model.save(); }).contains("zvtGetSsdState"));
    QCOMPARE(ssd.model.state(), SsdTabModel::SAVING);
    // The direct poll has not ended the timed one, which is void.
    const size_t mark = ssd.gate().mark();
    startPoll(ssd.model);
    ssd.setCameraState(SsdTabModel::COMPLETE);
    ssd.release();
    QCOMPARE(ssd.calls(mark, false).count("zvtGetSsdState"), 0);
    QCOMPARE(ssd.model.state(), SsdTabModel::SAVING);
    ssd.poll();
    QCOMPARE(ssd.model.state(), SsdTabModel::COMPLETE);
}

void tst_SsdTabModelPolls::pollOlderThanACommandIsVoid_data()
{
    QTest::addColumn<Command>("command");
    QTest::addColumn<int>("shown");
    const auto add = [](const char *name, Command command, int shown) { QTest::newRow(name) << command << shown; };
    add("disarm", &SsdTabModel::disarm, SsdTabModel::DISARMED);
    add("triggerRecording", &SsdTabModel::triggerRecording, SsdTabModel::TRIGGERED);
    add("pauseRecording", &SsdTabModel::pauseRecording, SsdTabModel::RECORD_PAUSED);
    add("resumeRecording", &SsdTabModel::resumeRecording, SsdTabModel::TRIGGERED);
    add("format", &SsdTabModel::format, SsdTabModel::FORMATTING);
    add("play", &SsdTabModel::play, SsdTabModel::PLAYING);
    add("pause", &SsdTabModel::pause, SsdTabModel::PAUSED);
    add("stop", &SsdTabModel::stop, SsdTabModel::COMPLETE);
    add("skipForwardToNextFrame", &SsdTabModel::skipForwardToNextFrame, SsdTabModel::PAUSED);
    add("skipBackwardToPreviousFrame", &SsdTabModel::skipBackwardToPreviousFrame, SsdTabModel::PAUSED);
    // These poll at once, and the camera saves.
    add("arm", &SsdTabModel::arm, SsdTabModel::SAVING);
    add("stopRecording", &SsdTabModel::stopRecording, SsdTabModel::SAVING);
    add("save", &SsdTabModel::save, SsdTabModel::SAVING);
}

void tst_SsdTabModelPolls::pollOlderThanACommandIsVoid()
{
    QFETCH(const Command, command);
    QFETCH(const int, shown);
    Ssd ssd;
    ssd.gate().failAlways("zvtSsdAutoDownloadStart");
    ssd.enter(SsdTabModel::ARMED);
    QVERIFY(ssd.holdPoll());
    ssd.setCameraState(SsdTabModel::SAVING);
    (ssd.model.*command)();
    ssd.log.take();
    ssd.setCameraState(SsdTabModel::REQUEST_AUTO_DOWNLOAD);
    ssd.release();
    QCOMPARE(int(ssd.model.state()), shown);
    QCOMPARE(ssd.log.take(), QStringList());
    ssd.poll();
    QCOMPARE(ssd.model.state(), SsdTabModel::REQUEST_AUTO_DOWNLOAD);
}

void tst_SsdTabModelPolls::runningPollOutlivesTheModel()
{
    ModelUnderTest model = ssdModel();
    model.read = [](QObject *ssd) { startPoll(*ssd); };
    walkHeldDeletion(model);
}

ZVT_TEST(tst_SsdTabModelPolls)
#include "tst_SsdTabModelPolls.moc"
