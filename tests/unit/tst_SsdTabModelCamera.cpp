#include "tests/platform/writeProfile.h"
#include "tests/support/Test.h"
#include "tests/unit/SsdCameraRig.h"

#include "common/reading.h"

#include <QTemporaryDir>

#include "zvt/zvtsdk.h"

/// The SSD tab with the emulated recorder, which moves by itself.
class tst_SsdTabModelCamera : public Test
{
    Q_OBJECT

private slots:
    void recordsAndPlays();
    void playsInALoop();
    void refusedCommandIsCorrected();
    void savesAndFormats();
    void fullDriveSavesNothing();
    void recordsToTheDrive();
    void startsByTheInput();
    void gateSelectsTheFrames();
    void pretriggerFramesCount();
    void endsByTheDuration();
    void pausesAndStops();
    void recordsWithoutModes();
    void recordsAgainByItself();
    void playsByItself();
    void asksForADownload();
    void driveIsLostAndFound();
    void cameraWithoutADrive();
    void armWritesReducedPretriggerFrames();
    void cameraWithoutARecorder();
};

void tst_SsdTabModelCamera::recordsAndPlays()
{
    Recorder recorder;
    QCOMPARE(recorder.model.state(), SsdTabModel::DISARMED);
    QVERIFY(recorder.model.canInteract() && recorder.model.recordModeAvailable());
    QVERIFY(recorder.model.maxFramesToRecordToMemory() > 1000);
    recorder.model.arm();
    QCOMPARE(recorder.model.state(), SsdTabModel::ARMING);
    QCOMPARE(recorder.after(100), SsdTabModel::ARMING);
    QCOMPARE(recorder.after(400), SsdTabModel::ARMED);
    recorder.model.triggerRecording();
    QCOMPARE(recorder.model.state(), SsdTabModel::TRIGGERED);
    QCOMPARE(recorder.after(0), SsdTabModel::TRIGGERED);
    QCOMPARE(recorder.after(Recorder::longerThanARecording), SsdTabModel::COMPLETE);
    QCOMPARE(recorder.model.totalFramesInFile(), Recorder::frames);
    QCOMPARE(recorder.model.endFrame(), Recorder::frames - 1);
    QVERIFY(!recorder.model.fromDisk());

    recorder.model.setPlaybackRateInHertz(10.0F);
    recorder.model.play();
    QCOMPARE(recorder.after(1000), SsdTabModel::PLAYING);
    QCOMPARE(recorder.model.currentFrame(), 10U);
    recorder.model.skipForwardToNextFrame();
    QCOMPARE(recorder.model.currentFrame(), 11U);
    QCOMPARE(recorder.after(5000), SsdTabModel::PAUSED);
    QCOMPARE(recorder.model.currentFrame(), 11U);
    recorder.model.play();
    // It stays at its last frame.
    QCOMPARE(recorder.after(60'000), SsdTabModel::PAUSED);
    QCOMPARE(recorder.model.currentFrame(), Recorder::frames - 1);
    recorder.model.skipForwardToNextFrame();
    QCOMPARE(recorder.model.currentFrame(), Recorder::frames - 1);
    recorder.model.stop();
    QCOMPARE(recorder.after(0), SsdTabModel::COMPLETE);
}

void tst_SsdTabModelCamera::playsInALoop()
{
    Recorder recorder;
    QCOMPARE(recorder.record(), SsdTabModel::COMPLETE);
    recorder.model.setPlaybackRateInHertz(10.0F);
    recorder.model.setLoopPlayback(true);
    recorder.model.play();
    QCOMPARE(recorder.after(7000), SsdTabModel::PLAYING);
    QCOMPARE(recorder.model.currentFrame(), 70 % Recorder::frames);
}

void tst_SsdTabModelCamera::refusedCommandIsCorrected()
{
    Recorder recorder;
    recorder.model.triggerRecording();
    QCOMPARE(recorder.model.state(), SsdTabModel::TRIGGERED);
    QCOMPARE(recorder.after(1000), SsdTabModel::DISARMED);
}

void tst_SsdTabModelCamera::savesAndFormats()
{
    Recorder recorder;
    const uint limit = recorder.model.maxFramesToRecordToDisk();
    QVERIFY(limit > 0);
    QCOMPARE(recorder.record(), SsdTabModel::COMPLETE);
    recorder.model.save();
    QCOMPARE(recorder.model.state(), SsdTabModel::SAVING);
    QCOMPARE(recorder.after(10'000), SsdTabModel::COMPLETE);
    QCOMPARE(recorder.model.maxFramesToRecordToDisk(), limit - Recorder::frames);
    recorder.model.format();
    QCOMPARE(recorder.model.state(), SsdTabModel::FORMATTING);
    QCOMPARE(recorder.after(1000), SsdTabModel::FORMATTING);
    QCOMPARE(recorder.after(10'000), SsdTabModel::COMPLETE);
    // Without the movies of the profile too.
    constexpr qint64 frameBytes = 2 * 640 * 513;
    const qint64 bytes = readOr(qint64{0}, zvtGetSsdDriveSpaceTotal, recorder.rig.camera().handle());
    QCOMPARE(recorder.model.maxFramesToRecordToDisk(), static_cast<uint>(bytes / frameBytes));
}

void tst_SsdTabModelCamera::fullDriveSavesNothing()
{
    const QTemporaryDir profiles;
    // A drive for 20 frames of 640x512 pixels.
    Recorder recorder(
        writeProfile(profiles.path(), "everything", R"({"recorder": {"driveBytes": 13132800, "movies": []}})"));
    QCOMPARE(recorder.model.maxFramesToRecordToDisk(), 20U);
    QCOMPARE(recorder.record(), SsdTabModel::COMPLETE);
    recorder.model.save();
    QCOMPARE(recorder.after(10'000), SsdTabModel::COMPLETE);
    recorder.refresh();
    QCOMPARE(recorder.model.maxFramesToRecordToDisk(), 20U);
    QCOMPARE(readOr(1U, zvtGetSsdMovieCount, recorder.rig.camera().handle()), 0U);
}

void tst_SsdTabModelCamera::recordsToTheDrive()
{
    Recorder recorder;
    const uint limit = recorder.model.maxFramesToRecordToDisk();
    recorder.model.setRecordMode(SsdTabModel::MODE_TO_DISK);
    QCOMPARE(recorder.model.maxFramesToRecord(), limit);
    QCOMPARE(recorder.record(), SsdTabModel::DISARMED);
    QVERIFY(recorder.model.fromDisk());
    QCOMPARE(recorder.model.maxFramesToRecordToDisk(), limit - Recorder::frames);
    QCOMPARE(recorder.model.endFrame(), Recorder::frames - 1);
}

// A trigger that no command of the operator has caused.
void tst_SsdTabModelCamera::startsByTheInput()
{
    Recorder recorder;
    recorder.model.arm();
    QCOMPARE(recorder.after(500), SsdTabModel::ARMED);
    recorder.root.setRecordStart(true);
    QCOMPARE(recorder.after(1), SsdTabModel::TRIGGERED);
    QCOMPARE(recorder.after(Recorder::longerThanARecording), SsdTabModel::COMPLETE);
    QCOMPARE(recorder.model.totalFramesInFile(), Recorder::frames);
}

// Frames are kept only while the input is true.
void tst_SsdTabModelCamera::gateSelectsTheFrames()
{
    Recorder recorder;
    recorder.model.setRecordGated(true);
    QVERIFY(recorder.trigger());
    QCOMPARE(recorder.after(1000), SsdTabModel::TRIGGERED);
    recorder.root.setRecordStart(true);
    QCOMPARE(recorder.after(400), SsdTabModel::TRIGGERED);
    recorder.root.setRecordStart(false);
    QCOMPARE(recorder.after(1000), SsdTabModel::TRIGGERED);
    recorder.root.setRecordStart(true);
    QCOMPARE(recorder.after(200), SsdTabModel::COMPLETE);
    QCOMPARE(recorder.model.totalFramesInFile(), Recorder::frames);
}

void tst_SsdTabModelCamera::pretriggerFramesCount()
{
    Recorder recorder;
    for (const uint pretrigger : {0U, 15U}) {
        recorder.model.setPretriggerFramesToRecord(pretrigger);
        QVERIFY(recorder.trigger());
        const int milliseconds = static_cast<int>(Recorder::frames - pretrigger) * 10;
        QCOMPARE(recorder.after(milliseconds - 50), SsdTabModel::TRIGGERED);
        QCOMPARE(recorder.after(100), SsdTabModel::COMPLETE);
        QCOMPARE(recorder.model.totalFramesInFile(), Recorder::frames);
    }
}

void tst_SsdTabModelCamera::endsByTheDuration()
{
    Recorder recorder;
    recorder.model.setRecordType(SsdTabModel::TYPE_DURATION);
    recorder.model.setRecordDuration(QTime(0, 0, 2));
    QVERIFY(recorder.trigger());
    QCOMPARE(recorder.after(1950), SsdTabModel::TRIGGERED);
    QCOMPARE(recorder.after(100), SsdTabModel::COMPLETE);
    QCOMPARE(recorder.model.totalFramesInFile(), 200U);
}

void tst_SsdTabModelCamera::pausesAndStops()
{
    Recorder recorder;
    recorder.model.setRecordType(SsdTabModel::TYPE_START_STOP);
    QVERIFY(recorder.trigger());
    QCOMPARE(recorder.after(1000), SsdTabModel::TRIGGERED);
    recorder.model.pauseRecording();
    QCOMPARE(recorder.after(1000), SsdTabModel::RECORD_PAUSED);
    recorder.model.resumeRecording();
    QCOMPARE(recorder.after(1000), SsdTabModel::TRIGGERED);
    recorder.model.stopRecording();
    QCOMPARE(recorder.model.state(), SsdTabModel::COMPLETE);
    QVERIFY(recorder.model.totalFramesInFile() > 0);
    QCOMPARE(recorder.model.endFrame(), recorder.model.totalFramesInFile() - 1);
}

void tst_SsdTabModelCamera::recordsWithoutModes()
{
    Recorder recorder(QStringLiteral("board-6"));
    QVERIFY(!recorder.model.recordModeAvailable());
    recorder.model.setRecordMode(SsdTabModel::MODE_TO_DISK);
    QCOMPARE(recorder.model.recordMode(), SsdTabModel::MODE_TO_MEMORY);
    QCOMPARE(recorder.record(), SsdTabModel::COMPLETE);
    QCOMPARE(recorder.model.totalFramesInFile(), Recorder::frames);
    recorder.refresh();
    QCOMPARE(recorder.model.totalFramesInFile(), Recorder::frames);
}

void tst_SsdTabModelCamera::recordsAgainByItself()
{
    Recorder recorder;
    const uint limit = recorder.model.maxFramesToRecordToDisk();
    recorder.model.setAutoSave(true);
    recorder.model.setAutoRearm(true);
    QCOMPARE(recorder.record(), SsdTabModel::ARMED);
    // It is saved. No poll has seen the end, so only a refresh reads the space.
    recorder.refresh();
    QCOMPARE(recorder.model.maxFramesToRecordToDisk(), limit - Recorder::frames);
    recorder.model.disarm();
    QCOMPARE(recorder.model.state(), SsdTabModel::DISARMED);
    QCOMPARE(recorder.after(0), SsdTabModel::DISARMED);
}

void tst_SsdTabModelCamera::playsByItself()
{
    Recorder recorder;
    recorder.model.setAutoPlay(true);
    recorder.model.setPlaybackRateInHertz(10.0F);
    QVERIFY(recorder.trigger());
    QCOMPARE(recorder.after(1500), SsdTabModel::PLAYING);
    QVERIFY(recorder.model.currentFrame() > 0 && recorder.model.currentFrame() <= 10);
    QCOMPARE(recorder.model.totalFramesInFile(), Recorder::frames);
    QCOMPARE(recorder.after(10'000), SsdTabModel::PAUSED);
    QCOMPARE(recorder.model.currentFrame(), Recorder::frames - 1);
}

// The camera waits a minute for a download that does not start.
void tst_SsdTabModelCamera::asksForADownload()
{
    Recorder recorder;
    recorder.rig.gate().failAlways("zvtSsdAutoDownloadStart");
    recorder.model.setAutoDownload(true);
    QCOMPARE(recorder.record(), SsdTabModel::REQUEST_AUTO_DOWNLOAD);
    QVERIFY(!recorder.model.canInteract());
    QCOMPARE(recorder.after(60'000 - Recorder::longerThanARecording), SsdTabModel::REQUEST_AUTO_DOWNLOAD);
    QCOMPARE(recorder.after(1000), SsdTabModel::COMPLETE);
    QVERIFY(recorder.model.canInteract());
    QCOMPARE(recorder.model.totalFramesInFile(), Recorder::frames);
}

// The drive is read at every fifth poll.
void tst_SsdTabModelCamera::driveIsLostAndFound()
{
    Recorder recorder;
    const uint limit = recorder.model.maxFramesToRecordToDisk();
    QVERIFY(limit > 0);
    for (const bool recognized : {false, true}) {
        QVERIFY(recorder.rig.camera().otherClient().set("recorder.recognized", recognized));
        for (int poll = 1; poll <= 4; ++poll) {
            recorder.after(1000);
            QCOMPARE(recorder.model.driveRecognized(), !recognized);
        }
        recorder.after(1000);
        QCOMPARE(recorder.model.driveRecognized(), recognized);
        QVERIFY(recorder.model.drivePresent());
        if (!recognized)
            recorder.refresh();
        QCOMPARE(recorder.model.maxFramesToRecordToDisk(), recognized ? limit : 0U);
    }
}

void tst_SsdTabModelCamera::cameraWithoutADrive()
{
    Recorder recorder(QStringLiteral("te-cooler"));
    QVERIFY(recorder.model.recordModeAvailable() && !recorder.model.drivePresent());
    QVERIFY(!recorder.model.driveRecognized());
    QCOMPARE(recorder.model.maxFramesToRecordToDisk(), 0U);
    recorder.model.setRecordMode(SsdTabModel::MODE_TO_DISK);
    QCOMPARE(recorder.model.recordMode(), SsdTabModel::MODE_TO_MEMORY);
    QCOMPARE(recorder.record(), SsdTabModel::COMPLETE);
    QCOMPARE(recorder.model.totalFramesInFile(), Recorder::frames);
    recorder.model.save();
    QCOMPARE(recorder.model.state(), SsdTabModel::COMPLETE);
}

void tst_SsdTabModelCamera::armWritesReducedPretriggerFrames()
{
    Recorder recorder;
    const auto inTheCamera
        = [&recorder] { return readOr(0U, zvtGetSsdPretriggerFrames, recorder.rig.camera().handle()); };
    recorder.model.setFramesToRecord(500);
    recorder.model.setPretriggerFramesToRecord(500);
    recorder.model.setFramesToRecord(400);
    recorder.refresh();
    QCOMPARE(recorder.model.framesToRecord(), 400U);
    QCOMPARE(recorder.model.pretriggerFramesToRecord(), 128U);
    QCOMPARE(inTheCamera(), 500U);
    recorder.model.arm();
    QCOMPARE(inTheCamera(), 128U);
}

void tst_SsdTabModelCamera::cameraWithoutARecorder()
{
    Recorder recorder(QStringLiteral("bare"));
    QVERIFY(recorder.model.hasRefreshed() && !recorder.model.canInteract());
    QCOMPARE(recorder.after(1000), SsdTabModel::DISARMED);
    recorder.model.arm();
    QCOMPARE(recorder.after(1000), SsdTabModel::ARMING);
}

ZVT_TEST(tst_SsdTabModelCamera)
#include "tst_SsdTabModelCamera.moc"
