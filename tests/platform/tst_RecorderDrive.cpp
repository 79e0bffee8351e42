#include "platform/emulator/devices/VideoOverlay.h"
#include "tests/platform/RecorderRig.h"
#include "tests/platform/settingOf.h"
#include "tests/support/Test.h"

/// A drive that a hand pulls, fills or makes slow.
class tst_RecorderDrive : public Test
{
    Q_OBJECT

private slots:
    void aPulledDriveIsAbsentAndCannotBeUsed();
    void moviesComeBackWithTheDrive();
    void pullingEndsItsUse_data();
    void pullingEndsItsUse();
    void pullingLeavesOtherStates_data();
    void pullingLeavesOtherStates();
    void pullingEndsALoad_data();
    void pullingEndsALoad();
    void aFullDriveTakesNothing();
    void aDriveThatIsFilledLosesTheRecording_data();
    void aDriveThatIsFilledLosesTheRecording();
    void formattingEmptiesAFullDrive();
    void aSlowDriveTakesLonger();
    void aSlowDriveDoesNotSlowAPlayback();
    void aSlowDriveLosesFrames();
    void theStateOfTheDriveIsNotInASnapshot();
    void aCameraWithoutDriveHasNoSuchSettings();
};

void tst_RecorderDrive::aPulledDriveIsAbsentAndCannotBeUsed()
{
    RecorderRig rig;
    QVERIFY(rig.record(20));
    QVERIFY(rig.set("recorder.drivePulled", true));
    QCOMPARE(rig.number<uint8_t>(zvtGetSsdDrivePresent), 0);
    QCOMPARE(rig.number<uint8_t>(zvtGetSsdDriveRecognized), 0);
    QCOMPARE(rig.number<uint32_t>(zvtGetSsdMaxNumFramesDisk), 0U);
    QVERIFY(!rig.call(zvtSsdSaveBuffer) && !rig.call(zvtSsdFormatDrive));
    QVERIFY(rig.set("recorder.drivePulled", false));
    QCOMPARE(rig.number<uint8_t>(zvtGetSsdDrivePresent), 1);
    QCOMPARE(rig.number<uint8_t>(zvtGetSsdDriveRecognized), 1);
    QVERIFY(rig.call(zvtSsdSaveBuffer));
}

void tst_RecorderDrive::moviesComeBackWithTheDrive()
{
    RecorderRig rig;
    QVERIFY(rig.record(20) && rig.call(zvtSsdSaveBuffer));
    rig.wait(500);
    QCOMPARE(rig.movies(), 1U);
    QVERIFY(rig.set("recorder.drivePulled", true));
    uint32_t count = 0;
    QVERIFY(zvtGetSsdMovieCount(rig.handle(), &count) != 0);
    QVERIFY(rig.set("recorder.drivePulled", false));
    QCOMPARE(rig.movies(), 1U);
}

void tst_RecorderDrive::pullingEndsItsUse_data()
{
    QTest::addColumn<int>("busy");
    QTest::addColumn<int>("after");
    QTest::newRow("saving") << 5 << 3;
    QTest::newRow("formatting") << 7 << 3;
    QTest::newRow("arming") << 11 << 0;
    QTest::newRow("armed") << 1 << 0;
    QTest::newRow("recording") << 2 << 0;
    QTest::newRow("paused recording") << 9 << 0;
}

void tst_RecorderDrive::pullingEndsItsUse()
{
    QFETCH(int, busy);
    QFETCH(int, after);
    RecorderRig rig;
    QVERIFY(rig.record(20));
    if (busy == 5)
        QVERIFY(rig.call(zvtSsdSaveBuffer));
    else if (busy == 7)
        QVERIFY(rig.call(zvtSsdFormatDrive));
    else
        QVERIFY(rig.set(zvtSetSsdRecordMode, 1) && rig.call(zvtSsdArm));
    if (after == 0)
        rig.wait(busy == 11 ? 100 : 300);
    if (busy == 2 || busy == 9)
        QVERIFY(rig.call(zvtSsdTrigger));
    if (busy == 9)
        QVERIFY(rig.call(zvtSsdRecordPause));
    QCOMPARE(rig.state(), busy);
    QVERIFY(rig.set("recorder.drivePulled", true));
    QCOMPARE(rig.state(), after);
    rig.wait(60'000);
    QCOMPARE(rig.state(), after);
    QVERIFY(rig.set("recorder.drivePulled", false));
    QCOMPARE(rig.movies(), 0U);
    QCOMPARE(rig.acquired(), after == 3 ? 20U : 0U);
}

void tst_RecorderDrive::pullingLeavesOtherStates_data()
{
    QTest::addColumn<int>("command");
    QTest::newRow("complete") << 3;
    QTest::newRow("playing") << 4;
    QTest::newRow("armed for the memory") << 1;
    QTest::newRow("recording to the memory") << 2;
}

void tst_RecorderDrive::pullingLeavesOtherStates()
{
    QFETCH(int, command);
    RecorderRig rig;
    QVERIFY(rig.record(20));
    if (command == 4)
        QVERIFY(rig.call(zvtSsdPlayBuffer));
    if (command == 1 || command == 2)
        QVERIFY(rig.arm());
    if (command == 2)
        QVERIFY(rig.call(zvtSsdTrigger));
    QVERIFY(rig.set("recorder.drivePulled", true));
    QCOMPARE(rig.state(), command);
    rig.wait(200);
    QCOMPARE(rig.state(), command == 2 ? 3 : command);
}

void tst_RecorderDrive::pullingEndsALoad_data()
{
    QTest::addColumn<bool>("requested");
    QTest::addColumn<int>("after");
    QTest::newRow("from complete") << false << 3;
    QTest::newRow("in a requested download") << true << 12;
}

void tst_RecorderDrive::pullingEndsALoad()
{
    QFETCH(bool, requested);
    QFETCH(int, after);
    RecorderRig rig;
    rig.openWith(R"({"driveBytesPerSecond": 1000})");
    QVERIFY(rig.record(200) && rig.call(zvtSsdSaveBuffer));
    rig.wait(128'000);
    if (requested) {
        QVERIFY(rig.set(zvtSetSsdAutoDownload, 1) && rig.arm() && rig.call(zvtSsdTrigger));
        rig.wait(2000);
    }
    const int64_t start = emulator::Clock::now();
    emulator::Clock::duringNextWait([&rig] { QVERIFY(rig.set("recorder.drivePulled", true)); });
    QVERIFY(zvtSsdLoadMovie(rig.handle(), 0) != 0);
    QVERIFY(emulator::Clock::now() <= start + 50);
    QCOMPARE(rig.state(), after);
    QCOMPARE(rig.number<uint8_t>(zvtGetSsdMovieLoaded), 0);
    QCOMPARE(rig.acquired(), 200U);
    // The request ends after a minute, though the load would have taken longer.
    rig.wait(60'000);
    QCOMPARE(rig.state(), 3);
}

void tst_RecorderDrive::aFullDriveTakesNothing()
{
    RecorderRig rig;
    QVERIFY(rig.record(20));
    QVERIFY(rig.set("recorder.driveFull", true));
    QCOMPARE(rig.number<uint32_t>(zvtGetSsdMaxNumFramesDisk), 0U);
    QVERIFY(rig.set(zvtSetSsdAutoRearm, 1) && rig.call(zvtSsdSaveBuffer));
    rig.wait(500);
    QCOMPARE(rig.state(), 3);
    QCOMPARE(rig.movies(), 0U);
    {
        const std::lock_guard lock(rig.camera().mutex());
        QCOMPARE(rig.camera().device<emulator::VideoOverlay>()->content().message, std::string("SSD FULL"));
    }
    QVERIFY(rig.set(zvtSetSsdRecordMode, 1));
    QVERIFY(!rig.call(zvtSsdArm));
    QVERIFY(rig.set("recorder.driveFull", false));
    QVERIFY(rig.call(zvtSsdArm));
}

void tst_RecorderDrive::aDriveThatIsFilledLosesTheRecording_data()
{
    QTest::addColumn<int>("milliseconds");
    QTest::newRow("recording") << 50;
    QTest::newRow("writing") << 300;
}

void tst_RecorderDrive::aDriveThatIsFilledLosesTheRecording()
{
    QFETCH(int, milliseconds);
    RecorderRig rig;
    QVERIFY(rig.set(zvtSetSsdRecordMode, 1) && rig.set(zvtSetSsdAutoRearm, 1));
    QVERIFY(zvtSetSsdNumFrames(rig.handle(), 20) == 0 && rig.arm() && rig.call(zvtSsdTrigger));
    rig.wait(milliseconds);
    QVERIFY(rig.set("recorder.driveFull", true));
    rig.wait(1000);
    QCOMPARE(rig.state(), 0);
    QCOMPARE(rig.movies(), 0U);
}

void tst_RecorderDrive::formattingEmptiesAFullDrive()
{
    RecorderRig rig;
    QVERIFY(rig.set("recorder.driveFull", true) && rig.call(zvtSsdFormatDrive));
    rig.wait(3000);
    QVERIFY(rig.number<uint32_t>(zvtGetSsdMaxNumFramesDisk) > 0);
    QCOMPARE(settingOf(rig.camera(), QStringLiteral("recorder.driveFull")).toBool(), false);
}

void tst_RecorderDrive::aSlowDriveTakesLonger()
{
    RecorderRig rig;
    rig.openWith(R"({"driveBytesPerSecond": 640000})");
    // 1000 frames of 640 bytes.
    QVERIFY(rig.record(1000) && rig.set("recorder.driveSlow", true) && rig.call(zvtSsdSaveBuffer));
    rig.wait(49'999);
    QCOMPARE(rig.state(), 5);
    rig.wait(1);
    QCOMPARE(rig.state(), 3);
    QVERIFY(rig.set("recorder.driveSlow", false) && rig.call(zvtSsdSaveBuffer));
    rig.wait(999);
    QCOMPARE(rig.state(), 5);
    rig.wait(1);
    QCOMPARE(rig.state(), 3);
}

void tst_RecorderDrive::aSlowDriveDoesNotSlowAPlayback()
{
    RecorderRig rig;
    rig.openWith(R"({"driveBytesPerSecond": 64000})");
    QVERIFY(rig.record(20) && rig.call(zvtSsdSaveBuffer));
    rig.wait(500);
    QCOMPARE(zvtSsdLoadMovie(rig.handle(), 0), 0);
    QVERIFY(rig.set("recorder.driveSlow", true) && zvtSetSsdPlaybackRate(rig.handle(), 50) == 0);
    QVERIFY(rig.call(zvtSsdPlayBuffer));
    QCOMPARE(rig.number<float>(zvtGetSsdPlaybackRate), 50.0F);
}

void tst_RecorderDrive::aSlowDriveLosesFrames()
{
    RecorderRig rig;
    // There are 64000 bytes a second. A slow drive takes 12800 of them.
    rig.openWith(R"({"driveBytesPerSecond": 640000, "fifoBytes": 6400})");
    QVERIFY(rig.set(zvtSetSsdRecordMode, 1) && zvtSetSsdNumFrames(rig.handle(), 100) == 0);
    const auto recorded = [&rig](uint32_t place) {
        const emulator::Drive::Movie *movie = nullptr;
        if (!rig.arm() || !rig.call(zvtSsdTrigger))
            return uint64_t(0);
        rig.wait(10'000);
        return rig.movies() > place && rig.recorder().movie(place, movie) == emulator::Ok ? movie->recording->frames()
                                                                                          : 0;
    };
    QCOMPARE(recorded(0), 100U);
    QVERIFY(rig.set("recorder.driveSlow", true));
    // Ten fit into the memory before the drive, and every fifth of the others.
    const uint64_t kept = recorded(1);
    QVERIFY2(kept >= 27 && kept <= 32, qPrintable(QString::number(kept)));
}

void tst_RecorderDrive::theStateOfTheDriveIsNotInASnapshot()
{
    RecorderRig rig;
    const auto before = rig.camera().snapshot();
    for (const char *setting : {"recorder.drivePulled", "recorder.driveFull", "recorder.driveSlow"})
        QVERIFY(rig.set(setting, true));
    QVERIFY(rig.camera().snapshot() == before);
}

void tst_RecorderDrive::aCameraWithoutDriveHasNoSuchSettings()
{
    RecorderRig rig("te-cooler");
    for (const char *setting : {"recorder.drivePulled", "recorder.driveFull", "recorder.driveSlow"})
        QVERIFY(!rig.set(setting, true));
}

ZVT_TEST(tst_RecorderDrive)
#include "tst_RecorderDrive.moc"
