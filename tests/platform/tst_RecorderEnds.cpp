#include "platform/emulator/devices/VideoOverlay.h"
#include "platform/emulator/image/Overlay.h"
#include "tests/platform/RecorderRig.h"
#include "tests/support/Test.h"

/// The ends of recordings, and the automatic options that follow.
class tst_RecorderEnds : public Test
{
    Q_OBJECT

private slots:
    void optionsFollowInTheirOrder_data();
    void optionsFollowInTheirOrder();
    void theNumberOfFramesEndsARecording();
    void theDurationEndsARecording();
    void aDurationEndsWithoutFrames();
    void startStopEndsByCommandOrWhenFull();
    void aFullMemoryEndsEveryRecording();
    void pausesAreLeftOut();
    void aFullDriveEndsSaving();
    void aDriveThatBecomesFullEndsTheRecording();
    void aDriveWithoutRoomIsNotArmed();
    void aCameraWithoutDriveSkipsSaving();
    void rearmedRecordingsFollowEachOther();
    void aDrivePulledWhileItSavesEndsTheOptions();

private:
    static QString message(RecorderRig &rig)
    {
        const std::lock_guard lock(rig.camera().mutex());
        rig.camera().catchUp();
        return QString::fromStdString(rig.camera().device<emulator::VideoOverlay>()->content().message);
    }
};

void tst_RecorderEnds::optionsFollowInTheirOrder_data()
{
    QTest::addColumn<bool>("toDisk");
    QTest::addColumn<bool>("save");
    QTest::addColumn<bool>("download");
    QTest::addColumn<bool>("rearm");
    QTest::addColumn<bool>("play");
    for (int set = 0; set < 32; ++set)
        QTest::addRow("%d", set) << bool(set & 16) << bool(set & 8) << bool(set & 4) << bool(set & 2) << bool(set & 1);
}

void tst_RecorderEnds::optionsFollowInTheirOrder()
{
    QFETCH(bool, toDisk);
    QFETCH(bool, save);
    QFETCH(bool, download);
    QFETCH(bool, rearm);
    QFETCH(bool, play);
    RecorderRig rig;
    QVERIFY(rig.set(zvtSetSsdRecordMode, toDisk ? 1 : 0) && rig.set(zvtSetSsdAutoSave, save ? 1 : 0));
    QVERIFY(rig.set(zvtSetSsdAutoDownload, download ? 1 : 0) && rig.set(zvtSetSsdAutoRearm, rearm ? 1 : 0));
    QVERIFY(rig.set(zvtSetSsdAutoPlay, play ? 1 : 0));
    QVERIFY(zvtSetSsdNumFrames(rig.handle(), 20) == 0 && zvtSetSsdPretriggerFrames(rig.handle(), 0) == 0);
    QVERIFY(rig.arm() && rig.call(zvtSsdTrigger));
    rig.wait(199);
    QCOMPARE(rig.state(), 2);
    rig.wait(1);
    if (toDisk || save) {
        QCOMPARE(rig.state(), 5);
        rig.wait(499);
        QCOMPARE(rig.state(), 5);
        rig.wait(1);
    }
    QCOMPARE(rig.movies(), toDisk || save ? 1U : 0U);
    if (download) {
        QCOMPARE(rig.state(), 12);
        QVERIFY(rig.call(zvtSsdAutoDownloadDone));
    }
    QCOMPARE(rig.state(), rearm ? 11 : toDisk ? 0 : play ? 4 : 3);
    QCOMPARE(rig.acquired(), rearm || toDisk ? 0U : 20U);
    if (rearm) {
        rig.wait(300);
        QCOMPARE(rig.state(), 1);
    }
}

void tst_RecorderEnds::theNumberOfFramesEndsARecording()
{
    RecorderRig rig;
    QVERIFY(zvtSetSsdNumFrames(rig.handle(), 7) == 0 && zvtSetSsdPretriggerFrames(rig.handle(), 0) == 0);
    QVERIFY(rig.arm() && rig.call(zvtSsdTrigger));
    const uint64_t before = rig.newest();
    rig.wait(69);
    QCOMPARE(rig.state(), 2);
    QCOMPARE(rig.acquired(), 6U);
    rig.wait(1);
    QCOMPARE(rig.state(), 3);
    const std::vector<std::pair<uint64_t, uint64_t>> expected{{before + 1, before + 7}};
    QCOMPARE(rig.ranges(), expected);
}

void tst_RecorderEnds::theDurationEndsARecording()
{
    RecorderRig rig;
    QVERIFY(rig.set(zvtSetSsdRecordType, 1) && zvtSetSsdRecordDuration(rig.handle(), 255) == 0);
    QVERIFY(zvtSetSsdPretriggerFrames(rig.handle(), 0) == 0 && rig.arm() && rig.call(zvtSsdTrigger));
    rig.wait(254);
    QCOMPARE(rig.state(), 2);
    rig.wait(1);
    QCOMPARE(rig.state(), 3);
    QCOMPARE(rig.acquired(), 25U);
}

void tst_RecorderEnds::aDurationEndsWithoutFrames()
{
    RecorderRig rig;
    QVERIFY(rig.set("sync.externalRate", 0) && zvtSetFrameSyncSource(rig.handle(), 1) == 0);
    QVERIFY(rig.set(zvtSetSsdRecordType, 1) && rig.arm() && rig.call(zvtSsdTrigger));
    rig.wait(999);
    QCOMPARE(rig.state(), 2);
    rig.wait(1);
    QCOMPARE(rig.state(), 3);
    QCOMPARE(rig.acquired(), 0U);
    // There is nothing to play; a movie without frames is possible.
    QVERIFY(!rig.call(zvtSsdPlayBuffer) && !rig.call(zvtSsdSkipForward));
    QVERIFY(rig.call(zvtSsdSaveBuffer));
    rig.wait(500);
    QCOMPARE(zvtSsdLoadMovie(rig.handle(), 0), 0);
    QCOMPARE(rig.number<uint32_t>(zvtGetSsdEndFrame), UINT32_MAX);
}

void tst_RecorderEnds::startStopEndsByCommandOrWhenFull()
{
    RecorderRig rig;
    rig.openWith(R"({"memoryBytes": 32000})");
    QCOMPARE(rig.number<uint32_t>(zvtGetSsdMaxNumFrames), 50U);
    QVERIFY(rig.set(zvtSetSsdRecordType, 2) && zvtSetSsdPretriggerFrames(rig.handle(), 5) == 0);
    QVERIFY(rig.arm());
    rig.wait(100);
    QVERIFY(rig.call(zvtSsdTrigger));
    rig.wait(200);
    QVERIFY(rig.call(zvtSsdRecordStop));
    QCOMPARE(rig.state(), 3);
    QCOMPARE(rig.acquired(), 25U);
    QVERIFY(rig.arm());
    rig.wait(100);
    QVERIFY(rig.call(zvtSsdTrigger));
    rig.wait(449);
    QCOMPARE(rig.state(), 2);
    rig.wait(1);
    QCOMPARE(rig.state(), 3);
    QCOMPARE(rig.acquired(), 50U);
}

void tst_RecorderEnds::aFullMemoryEndsEveryRecording()
{
    RecorderRig rig;
    rig.openWith(R"({"memoryBytes": 32000, "type": 1, "duration": 10000, "pretrigger": 0})");
    QVERIFY(rig.arm() && rig.call(zvtSsdTrigger));
    rig.wait(499);
    QCOMPARE(rig.state(), 2);
    rig.wait(1);
    QCOMPARE(rig.state(), 3);
    QCOMPARE(rig.acquired(), 50U);
}

void tst_RecorderEnds::pausesAreLeftOut()
{
    RecorderRig rig;
    QVERIFY(rig.set(zvtSetSsdRecordType, 1) && zvtSetSsdPretriggerFrames(rig.handle(), 0) == 0);
    QVERIFY(rig.arm() && rig.call(zvtSsdTrigger));
    const uint64_t before = rig.newest();
    rig.wait(400);
    QVERIFY(rig.call(zvtSsdRecordPause));
    rig.wait(5000);
    QCOMPARE(rig.state(), 9);
    QCOMPARE(rig.acquired(), 40U);
    QVERIFY(rig.call(zvtSsdRecordResume));
    rig.wait(599);
    QCOMPARE(rig.state(), 2);
    rig.wait(1);
    QCOMPARE(rig.state(), 3);
    const std::vector<std::pair<uint64_t, uint64_t>> expected{{before + 1, before + 40}, {before + 541, before + 600}};
    QCOMPARE(rig.ranges(), expected);
}

void tst_RecorderEnds::aFullDriveEndsSaving()
{
    for (const bool automatic : {false, true}) {
        RecorderRig rig;
        rig.openWith(R"({"driveBytes": 19200})");
        QVERIFY(rig.record(20) && rig.call(zvtSsdSaveBuffer));
        rig.wait(500);
        QCOMPARE(rig.movies(), 1U);
        QVERIFY(message(rig) != QStringLiteral("SSD FULL"));
        QVERIFY(rig.set(zvtSetSsdAutoSave, automatic ? 1 : 0) && rig.set(zvtSetSsdAutoRearm, 1));
        if (automatic) {
            QVERIFY(rig.arm() && rig.call(zvtSsdTrigger));
            rig.wait(200);
        } else {
            QVERIFY(rig.call(zvtSsdSaveBuffer));
        }
        QCOMPARE(rig.state(), 5);
        rig.wait(500);
        QCOMPARE(rig.state(), 3);
        QCOMPARE(rig.movies(), 1U);
        QCOMPARE(rig.acquired(), 20U);
        QCOMPARE(message(rig), QStringLiteral("SSD FULL"));
        QCOMPARE(rig.number<int64_t>(zvtGetSsdDriveSpaceFree), int64_t(6400));
    }
}

void tst_RecorderEnds::aDriveThatBecomesFullEndsTheRecording()
{
    RecorderRig rig;
    rig.openWith(R"({"driveBytes": 32000, "mode": 1, "type": 2})");
    QVERIFY(rig.arm() && rig.call(zvtSsdTrigger));
    rig.wait(499);
    QCOMPARE(rig.state(), 2);
    rig.wait(1);
    QCOMPARE(rig.state(), 5);
    rig.wait(500);
    QCOMPARE(rig.state(), 0);
    QCOMPARE(rig.number<int64_t>(zvtGetSsdDriveSpaceFree), int64_t(0));
    zvtSSsdMovieInfo info{};
    QCOMPARE(zvtGetSsdMovieInfo(rig.handle(), 0, &info), 0);
    QCOMPARE(info.numFrames, 50U);
}

void tst_RecorderEnds::aDriveWithoutRoomIsNotArmed()
{
    RecorderRig rig;
    rig.openWith(R"({"driveBytes": 7000, "mode": 1, "autoRearm": true})");
    QVERIFY(rig.arm() && rig.call(zvtSsdTrigger));
    QCOMPARE(rig.number<uint32_t>(zvtGetSsdNumFrames), 10U);
    rig.wait(600);
    QCOMPARE(rig.state(), 0);
    QCOMPARE(rig.movies(), 1U);
    QCOMPARE(message(rig), QStringLiteral("SSD FULL"));
    QCOMPARE(zvtSsdArm(rig.handle()), int(emulator::Refused));
    QVERIFY(rig.set("recorder.recognized", false));
    QCOMPARE(zvtSsdArm(rig.handle()), int(emulator::Refused));
}

void tst_RecorderEnds::aCameraWithoutDriveSkipsSaving()
{
    RecorderRig rig;
    rig.openWith(R"({"drive": false, "autoSave": true})");
    QVERIFY(rig.record(20));
    QCOMPARE(zvtSsdSaveBuffer(rig.handle()), int(emulator::Refused));
    rig.openWith(R"({"autoSave": true})");
    QVERIFY(rig.set("recorder.recognized", false));
    QVERIFY(rig.record(20));
}

void tst_RecorderEnds::rearmedRecordingsFollowEachOther()
{
    RecorderRig rig;
    QVERIFY(rig.set(zvtSetSsdAutoRearm, 1) && rig.set(zvtSetSsdAutoSave, 1));
    QVERIFY(zvtSetSsdNumFrames(rig.handle(), 40) == 0 && zvtSetSsdPretriggerFrames(rig.handle(), 10) == 0);
    QVERIFY(rig.arm());
    for (const auto *name : {"first", "second", "third"}) {
        // The name at the time of arming counts.
        rig.wait(1000);
        QCOMPARE(rig.state(), 1);
        QVERIFY(rig.set("emulator./RecordStart", true));
        QCOMPARE(zvtSetSsdSaveName(rig.handle(), name), 0);
        // 300 ms for 30 frames, 500 ms for the movie, 300 ms for arming.
        rig.wait(1099);
        QCOMPARE(rig.state(), 11);
        rig.wait(1);
        QCOMPARE(rig.state(), 1);
        QVERIFY(rig.set("emulator./RecordStart", false));
    }
    QCOMPARE(rig.movies(), 3U);
    zvtSSsdMovieInfo info{};
    QCOMPARE(zvtGetSsdMovieInfo(rig.handle(), 2, &info), 0);
    QCOMPARE(info.numFrames, 40U);
    QCOMPARE(QByteArray(info.name), QByteArray("second"));
    QCOMPARE(zvtGetSsdMovieInfo(rig.handle(), 0, &info), 0);
    QCOMPARE(QByteArray(info.name), QByteArray("Untitled"));
}

void tst_RecorderEnds::aDrivePulledWhileItSavesEndsTheOptions()
{
    RecorderRig rig;
    QVERIFY(rig.set(zvtSetSsdAutoRearm, 1) && rig.set(zvtSetSsdAutoSave, 1) && rig.set(zvtSetSsdAutoPlay, 1));
    QVERIFY(!rig.record(20));
    QCOMPARE(rig.state(), 5);
    QVERIFY(rig.set("recorder.drivePulled", true));
    QCOMPARE(rig.state(), 3);
    rig.wait(60'000);
    QCOMPARE(rig.state(), 3);
    QCOMPARE(rig.acquired(), 20U);
}

ZVT_TEST(tst_RecorderEnds)
#include "tst_RecorderEnds.moc"
