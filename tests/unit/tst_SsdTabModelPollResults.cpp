#include "tests/support/Test.h"
#include "tests/unit/SsdRig.h"

namespace
{

using Input = SsdTabModel::SsdUIState;
using Update = SsdTabModel::SsdUpdateState;

} // namespace

/// What a poll of the SSD tab shows. tst_SsdTabModelPolls has when it runs and what it asks.
class tst_SsdTabModelPollResults : public Test
{
    Q_OBJECT

private slots:
    void publishesInOrder();
    void publishesOnlyChanges();
    void voidPollShowsNothing();
    void failedReadsKeepTheValues_data();
    void failedReadsKeepTheValues();
    void recognizedDriveWithoutALimit();
    void endOfARecordingToMemory();
    void endOfARecordingToTheDrive();
    void endOfAnEmptyRecording();
    void endOfAnArmingIsNoEnd();
};

void tst_SsdTabModelPollResults::publishesInOrder()
{
    Ssd ssd;
    Update update;
    Input input;
    ssd.model.GetUIState(input);
    update.sequence = input.sequence;
    update.state = uint8_t{SsdTabModel::PLAYING};
    update.currentFrame = 1U;
    update.startFrame = 2U;
    update.endFrame = 3U;
    update.totalFrames = 4U;
    update.maxFramesDisk = 5U;
    update.drivePresent = uint8_t{1};
    update.driveRecognized = uint8_t{1};
    ssd.model.UpdateUI(update);
    QCOMPARE(ssd.log.take(),
             QStringList({"canInteractChanged", "stateChanged", "currentFrameChanged", "startFrameChanged",
                          "endFrameChanged", "totalFramesInFileChanged", "maxFramesToRecordToDiskChanged"})
                 + limitSignals + QStringList({"drivePresentChanged", "driveRecognizedChanged"}));
    QCOMPARE(ssd.model.currentFrame(), 1U);
    QCOMPARE(ssd.model.startFrame(), 2U);
    QCOMPARE(ssd.model.endFrame(), 3U);
    QCOMPARE(ssd.model.totalFramesInFile(), 4U);
    QCOMPARE(ssd.model.maxFramesToRecordToDisk(), 5U);
    // The same again changes nothing.
    ssd.model.UpdateUI(update);
    QCOMPARE(ssd.log.take(), QStringList("canInteractChanged"));
    // A loaded movie is from the drive only after a refresh.
    update.state = uint8_t{SsdTabModel::MOVIE_LOADED};
    ssd.model.UpdateUI(update);
    QCOMPARE(ssd.log.take(), QStringList({"canInteractChanged", "stateChanged"}));
    QVERIFY(!ssd.model.fromDisk());
}

// A pending state that the camera confirms is not signalled again.
void tst_SsdTabModelPollResults::publishesOnlyChanges()
{
    Ssd ssd;
    ssd.enter(SsdTabModel::ARMED);
    ssd.model.triggerRecording();
    ssd.log.take();
    ssd.setCameraState(SsdTabModel::TRIGGERED);
    ssd.poll();
    QCOMPARE(ssd.log.take(), QStringList("canInteractChanged"));
}

// Its tick, its frames and its drive flags are dropped too.
void tst_SsdTabModelPollResults::voidPollShowsNothing()
{
    Ssd ssd;
    ssd.enter(SsdTabModel::TRIGGERED);
    Input input;
    ssd.model.GetUIState(input);
    input.tick = 4;
    ssd.setCameraState(SsdTabModel::PLAYING);
    Update update;
    SsdTabModel::UpdateSsdState(input, update);
    QVERIFY(update.currentFrame.set() && update.totalFrames.set() && update.driveRecognized.set());
    ssd.model.pauseRecording();
    ssd.log.take();
    ssd.model.UpdateUI(update);
    QCOMPARE(ssd.log.take(), QStringList());
    QCOMPARE(ssd.model.state(), SsdTabModel::RECORD_PAUSED);
    QCOMPARE(ssd.model.totalFramesInFile(), 0U);
    QVERIFY(!ssd.model.drivePresent());
    Input next;
    ssd.model.GetUIState(next);
    QCOMPARE(next.tick, 1);
}

void tst_SsdTabModelPollResults::failedReadsKeepTheValues_data()
{
    QTest::addColumn<QString>("call");
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("now");
    QTest::addColumn<bool>("recordModes");
    QTest::addColumn<bool>("toDisk");
    QTest::newRow("frame") << "zvtGetSsdPlaybackFrame" << int(SsdTabModel::COMPLETE) << int(SsdTabModel::PLAYING)
                           << false << false;
    QTest::newRow("length") << "zvtGetSsdNumFrames" << int(SsdTabModel::TRIGGERED) << int(SsdTabModel::COMPLETE)
                            << false << false;
    QTest::newRow("recorded frames") << "zvtGetSsdNumFramesAcquired" << int(SsdTabModel::TRIGGERED)
                                     << int(SsdTabModel::COMPLETE) << true << false;
    QTest::newRow("space after a recording")
        << "zvtGetSsdMaxNumFramesDisk" << int(SsdTabModel::TRIGGERED) << int(SsdTabModel::SAVING) << true << true;
    QTest::newRow("space after a formatting")
        << "zvtGetSsdMaxNumFramesDisk" << int(SsdTabModel::FORMATTING) << int(SsdTabModel::DISARMED) << false << false;
}

void tst_SsdTabModelPollResults::failedReadsKeepTheValues()
{
    QFETCH(const QString, call);
    QFETCH(const int, before);
    QFETCH(const int, now);
    QFETCH(const bool, recordModes);
    QFETCH(const bool, toDisk);
    Ssd ssd;
    if (recordModes)
        ssd.read();
    if (toDisk)
        ssd.model.arm();
    ssd.enter(before);
    ssd.setCameraState(now);
    ssd.gate().failNext(call.toStdString());
    const QStringList calls = ssd.poll();
    QVERIFY(calls.contains(call));
    QVERIFY(calls.filter("zvtSet").isEmpty());
    QCOMPARE(ssd.log.take(), stateSignals);
    QCOMPARE(int(ssd.model.state()), now);
}

void tst_SsdTabModelPollResults::recognizedDriveWithoutALimit()
{
    Ssd ssd;
    for (int poll = 1; poll <= 4; ++poll)
        ssd.poll();
    ssd.log.take();
    ssd.gate().failNext("zvtGetSsdMaxNumFramesDisk");
    QVERIFY(ssd.poll().contains("zvtGetSsdMaxNumFramesDisk"));
    QCOMPARE(ssd.log.take(), QStringList({"canInteractChanged", "drivePresentChanged", "driveRecognizedChanged"}));
    QCOMPARE(ssd.model.maxFramesToRecordToDisk(), 0U);
}

void tst_SsdTabModelPollResults::endOfARecordingToMemory()
{
    Ssd ssd;
    ssd.gate().script("zvtGetSsdRecordMode", SsdTabModel::MODE_TO_MEMORY);
    ssd.read();
    ssd.enter(SsdTabModel::TRIGGERED);
    ssd.setCameraState(SsdTabModel::COMPLETE);
    ssd.gate().script("zvtGetSsdNumFramesAcquired", 200U);
    // The range is written by the task.
    QCOMPARE(ssd.poll(),
             QStringList(
                 {"zvtGetSsdState", "zvtGetSsdNumFramesAcquired", "zvtSetSsdStartFrame 0", "zvtSetSsdEndFrame 199"}));
    QCOMPARE(ssd.log.take(),
             stateSignals + QStringList({"startFrameChanged", "endFrameChanged", "totalFramesInFileChanged"}));
    QCOMPARE(ssd.model.startFrame(), 0U);
    QCOMPARE(ssd.model.endFrame(), 199U);
    QCOMPARE(ssd.model.totalFramesInFile(), 200U);
}

void tst_SsdTabModelPollResults::endOfARecordingToTheDrive()
{
    Ssd ssd;
    ssd.read();
    ssd.model.arm();
    ssd.enter(SsdTabModel::TRIGGERED);
    ssd.setCameraState(SsdTabModel::SAVING);
    ssd.gate().script("zvtGetSsdMaxNumFramesDisk", 500U);
    QCOMPARE(ssd.poll(), QStringList({"zvtGetSsdState", "zvtGetSsdMaxNumFramesDisk"}));
    QCOMPARE(ssd.model.maxFramesToRecordToDisk(), 500U);
    // The range stays that of arm().
    QCOMPARE(ssd.model.endFrame(), 399U);
    QCOMPARE(ssd.model.totalFramesInFile(), 350U);
}

void tst_SsdTabModelPollResults::endOfAnEmptyRecording()
{
    Ssd ssd;
    ssd.gate().script("zvtGetSsdRecordMode", SsdTabModel::MODE_TO_MEMORY);
    ssd.read();
    QCOMPARE(ssd.model.totalFramesInFile(), 350U);
    ssd.enter(SsdTabModel::RECORD_PAUSED);
    ssd.setCameraState(SsdTabModel::DISARMED);
    ssd.gate().script("zvtGetSsdNumFramesAcquired", 0U);
    QCOMPARE(ssd.poll(),
             QStringList({"zvtGetSsdState", "zvtGetSsdNumFramesAcquired", "zvtSetSsdStartFrame 0",
                          "zvtSetSsdEndFrame 4294967295"}));
    QCOMPARE(ssd.model.endFrame(), 4294967295U);
    QCOMPARE(ssd.model.totalFramesInFile(), 0U);
}

// A recording that was over before a poll saw it armed is not noticed.
void tst_SsdTabModelPollResults::endOfAnArmingIsNoEnd()
{
    Ssd ssd;
    ssd.enter(SsdTabModel::ARMING);
    ssd.setCameraState(SsdTabModel::COMPLETE);
    QCOMPARE(ssd.poll(), QStringList("zvtGetSsdState"));
    QCOMPARE(ssd.model.totalFramesInFile(), 0U);
}

ZVT_TEST(tst_SsdTabModelPollResults)
#include "tst_SsdTabModelPollResults.moc"
