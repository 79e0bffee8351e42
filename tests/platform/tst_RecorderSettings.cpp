#include "platform/emulator/devices/Sensor.h"
#include "tests/platform/RecorderRig.h"
#include "tests/platform/settingOf.h"
#include "tests/support/Test.h"

#include <functional>
#include <map>

namespace
{

using Change = std::function<bool(RecorderRig &)>;

Change setting(const char *name, const QVariant &value)
{
    return [name, value](RecorderRig &rig) { return rig.set(name, value); };
}

/// A change by the function of the SDK.
template <class... Values> Change sdk(int (*set)(uint64_t, Values...), Values... values)
{
    return [=](RecorderRig &rig) { return set(rig.handle(), values...) == 0; };
}

/// A change by the function of Sensor, which the operation of the controller calls.
template <class... Parameters, class... Values>
Change sensor(emulator::Status (emulator::Sensor::*set)(Parameters...), Values... values)
{
    return [=](RecorderRig &rig) {
        const std::lock_guard lock(rig.camera().mutex());
        return (rig.camera().device<emulator::Sensor>()->*set)(values...) == emulator::Ok;
    };
}

using emulator::Sensor;

/// Changes of the window, the sequencing, the sync source, and the times of the presets or of their shortest frames.
const std::map<QByteArray, Change> timingChanges{
    {"other client: window", setting("sensor.window", QVariantList{0, 0, 80, 4})},
    {"other client: sequencing", setting("sensor.sequencingMode", 2)},
    {"other client: dwell count", setting("sensor.dwellCount", 2)},
    {"other client: subframe", setting("sensor.subframeEnabled", false)},
    {"other client: sync source", setting("sync.source", 1)},
    {"other client: sync mode", setting("sync.mode", 1)},
    {"other client: reduce noise", setting("sensor.reduceNoise", true)},
    {"other client: integration time", setting("sensor.integrationTime", 1)},
    {"other client: frame rate", setting("sensor.frameRate", 50)},
    {"other client: superframe rate", setting("sensor.superframeRate", 5)},
    {"sync source", sdk<uint8_t>(zvtSetFrameSyncSource, 1)},
    {"sync mode", sdk<uint8_t>(zvtSetFrameSyncMode, 1)},
    {"frame width", sdk<uint8_t, uint32_t>(zvtSetFrameWidth, 1, 300'000)},
    {"integration width", sdk<uint8_t, uint32_t>(zvtSetIntegrationWidth, 1, 3000)},
    {"window size", sensor(&Sensor::setWindowSizeIndex, 0)},
    {"window", sensor(&Sensor::setWindow, Sensor::Window{0, 0, 80, 4})},
    {"frame rate index", sensor(&Sensor::setFrameRateIndex, 0, 0)},
    {"frame rate", sensor(&Sensor::setFrameRate, 0, 50.0)},
    {"integration time", sensor(&Sensor::setIntegrationTime, 0, 1.0)},
    {"superframe rate index", sensor(&Sensor::setSuperframeRateIndex, 1)},
    {"superframe rate", sensor(&Sensor::setSuperframeRate, 5.0)},
    {"sequencing", sensor(&Sensor::setSequencingMode, 2U)},
    {"dwell count", sensor(&Sensor::setDwellCount, 0, 2U)},
    {"subframe", sensor(&Sensor::setSubframeEnabled, 0, false)},
    {"reduce noise", sensor(&Sensor::setReduceNoise, true)},
};

} // namespace

/// The settings of the recorder, its equipment, and the settings of the camera that an armed recorder keeps.
class tst_RecorderSettings : public Test
{
    Q_OBJECT

private slots:
    void startsWithItsDefaults();
    void refusesValuesOutsideOfTheirRanges();
    void refusesNumbersThatDoNotFit();
    void armingCutsNumbers();
    void otherClientsChangeThem();
    void snapshotsHoldAllButTheRange();
    void aSnapshotOfAnotherWindowIsTaken();
    void aCameraMayHaveNoRecordModes();
    void aCameraMayHaveNoDrive();
    void aDriveMayNotBeRecognized();
    void camerasWithoutRecorderLackAll();
    void anArmedRecorderKeepsTheFrames_data();
    void anArmedRecorderKeepsTheFrames();
    void anArmedRecorderKeepsLoadedStates();
    void noCorrectionIsMadeMeanwhile();
    void theControllerTellsWhetherDownloadsArePossible();

private:
    static QVariant value(RecorderRig &rig, const char *name)
    {
        return settingOf(rig.camera(), QStringLiteral("recorder.") + QString::fromLatin1(name));
    }
    static QByteArray name(RecorderRig &rig)
    {
        char text[200] = "?";
        return zvtGetSsdSaveName(rig.handle(), text, sizeof text) == 0 ? QByteArray(text) : QByteArray("failed");
    }
};

void tst_RecorderSettings::startsWithItsDefaults()
{
    RecorderRig rig;
    QCOMPARE(rig.number<uint32_t>(zvtGetSsdNumFrames), 1000U);
    QCOMPARE(rig.number<uint32_t>(zvtGetSsdPretriggerFrames), 100U);
    QCOMPARE(rig.number<uint32_t>(zvtGetSsdRecordDuration), 1000U);
    QCOMPARE(rig.number<float>(zvtGetSsdPlaybackRate), 30.f);
    for (auto *const get :
         {zvtGetSsdRecordMode, zvtGetSsdRecordType, zvtGetSsdRecordGated, zvtGetSsdAutoPlay, zvtGetSsdAutoSave,
          zvtGetSsdAutoRearm, zvtGetSsdAutoDownload, zvtGetSsdLoopPlayback, zvtGetSsdMovieLoaded, zvtGetSsdState})
        QCOMPARE(rig.number<uint8_t>(get), uint8_t(0));
    for (auto *const get : {zvtGetSsdRecordModeAvailable, zvtGetSsdDrivePresent, zvtGetSsdDriveRecognized})
        QCOMPARE(rig.number<uint8_t>(get), uint8_t(1));
    QCOMPARE(name(rig), QByteArray("Untitled"));
    QCOMPARE(rig.movies(), 0U);
    QCOMPARE(rig.acquired(), 0U);
    QCOMPARE(rig.number<int64_t>(zvtGetSsdDriveSpaceTotal), int64_t(512'110'190'592));
    QCOMPARE(rig.number<int64_t>(zvtGetSsdDriveSpaceFree), int64_t(512'110'190'592));
    QCOMPARE(rig.number<int64_t>(zvtGetSsdDriveSpaceUsed), int64_t(0));
}

void tst_RecorderSettings::refusesValuesOutsideOfTheirRanges()
{
    RecorderRig rig;
    const uint64_t h = rig.handle();
    const QJsonObject before = rig.camera().snapshot();
    for (auto *const set : {zvtSetSsdRecordGated, zvtSetSsdAutoPlay, zvtSetSsdAutoSave, zvtSetSsdAutoRearm,
                            zvtSetSsdAutoDownload, zvtSetSsdLoopPlayback, zvtSetSsdRecordMode})
        for (const uint8_t bad : {2, 255})
            QCOMPARE(set(h, bad), int(emulator::Refused));
    QCOMPARE(zvtSetSsdRecordType(h, 3), int(emulator::Refused));
    QCOMPARE(zvtSetSsdNumFrames(h, 0), int(emulator::Refused));
    for (const uint32_t bad : {0U, 86'400'001U})
        QCOMPARE(zvtSetSsdRecordDuration(h, bad), int(emulator::Refused));
    QCOMPARE(zvtSetSsdSaveName(h, ""), int(emulator::Refused));
    QCOMPARE(zvtSetSsdSaveName(h, QByteArray(200, 'n').constData()), int(emulator::Refused));
    QCOMPARE(zvtSetSsdSaveName(h, "\xff"), int(emulator::Refused));
    QCOMPARE(rig.camera().snapshot(), before);
    QCOMPARE(zvtSetSsdSaveName(h, QByteArray(199, 'n').constData()), 0);
    QCOMPARE(name(rig), QByteArray(199, 'n'));
    for (const uint32_t good : {1U, 86'400'000U})
        QCOMPARE(zvtSetSsdRecordDuration(h, good), 0);
}

void tst_RecorderSettings::refusesNumbersThatDoNotFit()
{
    RecorderRig rig;
    const uint64_t h = rig.handle();
    rig.openWith(R"({"memoryBytes": 640000, "driveBytes": 1280000})");
    const auto frames = [&](uint32_t number) { return zvtSetSsdNumFrames(rig.handle(), number); };
    const auto pretrigger = [&](uint32_t number) { return zvtSetSsdPretriggerFrames(rig.handle(), number); };
    QVERIFY(h != rig.handle());
    QVERIFY(frames(1000) == 0 && frames(1001) == emulator::Refused);
    QVERIFY(pretrigger(1000) == 0 && pretrigger(1001) == emulator::Refused);
    QVERIFY(frames(500) == 0 && pretrigger(501) == emulator::Refused && pretrigger(0) == 0);
    QVERIFY(rig.set(zvtSetSsdRecordType, 2) && pretrigger(1000) == 0 && pretrigger(1001) == emulator::Refused);
    QVERIFY(rig.set(zvtSetSsdRecordType, 0) && pretrigger(501) == emulator::Refused);
    QVERIFY(rig.set(zvtSetSsdRecordMode, 1) && pretrigger(1000) == 0 && pretrigger(1001) == emulator::Refused);
    QVERIFY(frames(2000) == 0 && frames(2001) == emulator::Refused);
}

void tst_RecorderSettings::armingCutsNumbers()
{
    RecorderRig rig;
    rig.openWith(R"({"memoryBytes": 640000})");
    QVERIFY(zvtSetSsdNumFrames(rig.handle(), 1000) == 0 && zvtSetSsdPretriggerFrames(rig.handle(), 900) == 0);
    QVERIFY(rig.set("sensor.window", QVariantList{0, 0, 128, 4}) && rig.arm());
    QCOMPARE(rig.number<uint32_t>(zvtGetSsdNumFrames), 500U);
    QCOMPARE(rig.number<uint32_t>(zvtGetSsdPretriggerFrames), 500U);
}

void tst_RecorderSettings::otherClientsChangeThem()
{
    RecorderRig rig;
    for (const auto *flag : {"gated", "autoPlay", "autoSave", "autoRearm", "autoDownload", "loop"}) {
        const QByteArray key = QByteArray("recorder.") + flag;
        QVERIFY(rig.set(key.constData(), true) && !rig.set(key.constData(), 1));
        QCOMPARE(value(rig, flag), QVariant(true));
    }
    QVERIFY(rig.set("recorder.frames", 5) && !rig.set("recorder.frames", 0) && rig.set("recorder.mode", 1));
    QVERIFY(rig.set("recorder.pretrigger", 4) && rig.set("recorder.type", 2) && !rig.set("recorder.type", 3));
    QVERIFY(rig.set("recorder.name", QStringLiteral("Größe")) && !rig.set("recorder.name", QString()));
    QVERIFY(rig.set("recorder.rate", 1e9) && value(rig, "rate").toDouble() < 1e6);
    QVERIFY(rig.set("recorder.duration", 5) && !rig.set("recorder.state", 1));
    QVERIFY(rig.set("recorder.startFrame", 7) && rig.set("recorder.endFrame", 9.0)
            && !rig.set("recorder.endFrame", -1));
    QCOMPARE(value(rig, "startFrame"), QVariant(7));
    QCOMPARE(rig.number<uint32_t>(zvtGetSsdStartFrame), 7U);
    QCOMPARE(rig.number<uint32_t>(zvtGetSsdEndFrame), 9U);
    QCOMPARE(rig.number<uint32_t>(zvtGetSsdNumFrames), 5U);
    QCOMPARE(name(rig), QByteArray("Größe"));
}

void tst_RecorderSettings::snapshotsHoldAllButTheRange()
{
    RecorderRig rig;
    const QString key = QStringLiteral("recorder");
    QCOMPARE(rig.camera().snapshot().value(key).toObject().keys().join(QLatin1Char(' ')),
             QStringLiteral("autoDownload autoPlay autoRearm autoSave duration frames gated loop mode name pretrigger "
                            "rate type"));
    const QJsonObject before = rig.camera().snapshot();
    QVERIFY(rig.set("recorder.frames", 5) && rig.set("recorder.mode", 1) && rig.set("recorder.gated", true));
    QVERIFY(rig.set("recorder.rate", 12.5) && rig.set("recorder.name", QStringLiteral("x")));
    QVERIFY(rig.set("recorder.recognized", false) && zvtSetSsdStartFrame(rig.handle(), 3) == 0);
    const QJsonObject after = rig.camera().snapshot();
    rig.camera().restore(before);
    QCOMPARE(rig.camera().snapshot(), before);
    QCOMPARE(rig.number<uint32_t>(zvtGetSsdNumFrames), 1000U);
    QCOMPARE(rig.number<uint32_t>(zvtGetSsdStartFrame), 3U);
    QCOMPARE(rig.number<uint8_t>(zvtGetSsdDriveRecognized), uint8_t(0));
    rig.camera().restore(after);
    QCOMPARE(rig.camera().snapshot(), after);
    QCOMPARE(rig.number<float>(zvtGetSsdPlaybackRate), 12.5f);
}

void tst_RecorderSettings::aSnapshotOfAnotherWindowIsTaken()
{
    RecorderRig rig;
    QVERIFY(zvtSetSsdNumFrames(rig.handle(), 1'000'000) == 0);
    const QJsonObject recorder = rig.camera().snapshot().value(QStringLiteral("recorder")).toObject();
    QVERIFY(rig.set("sensor.window", QVariantList{0, 0, 640, 512}) && rig.set("recorder.frames", 1));
    rig.camera().restore({{QStringLiteral("recorder"), recorder}});
    QCOMPARE(rig.number<uint32_t>(zvtGetSsdNumFrames), 1'000'000U);
    QVERIFY(rig.arm());
    QCOMPARE(rig.number<uint32_t>(zvtGetSsdNumFrames), 26'163U);
}

void tst_RecorderSettings::aCameraMayHaveNoRecordModes()
{
    RecorderRig rig("board-6");
    const uint64_t h = rig.handle();
    QCOMPARE(rig.number<uint8_t>(zvtGetSsdRecordModeAvailable), uint8_t(0));
    uint8_t byte = 7;
    for (auto *const get : {zvtGetSsdRecordMode, zvtGetSsdRecordType, zvtGetSsdRecordGated, zvtGetSsdAutoRearm,
                            zvtGetSsdAutoDownload, zvtGetSsdMovieLoaded})
        QCOMPARE(get(h, &byte), int(emulator::Absent));
    uint32_t number = 7;
    for (auto *const get : {zvtGetSsdMaxNumFramesDisk, zvtGetSsdRecordDuration, zvtGetSsdNumFramesAcquired})
        QCOMPARE(get(h, &number), int(emulator::Absent));
    QVERIFY(byte == 7 && number == 7);
    for (auto *const set :
         {zvtSetSsdRecordMode, zvtSetSsdRecordType, zvtSetSsdRecordGated, zvtSetSsdAutoRearm, zvtSetSsdAutoDownload})
        QCOMPARE(set(h, 0), int(emulator::Absent));
    for (auto *const command :
         {zvtSsdRecordPause, zvtSsdRecordResume, zvtSsdUnload, zvtSsdAutoDownloadStart, zvtSsdAutoDownloadDone})
        QCOMPARE(command(h), int(emulator::Absent));
    QCOMPARE(zvtSetSsdRecordDuration(h, 5), int(emulator::Absent));
    QCOMPARE(zvtSsdLoadMovie(h, 0), int(emulator::Absent));
    QVERIFY(!rig.set("recorder.mode", 1));
    // It records and saves. The number of frames is then that of the recording.
    QVERIFY(zvtSetSsdNumFrames(h, 50) == 0 && zvtSetSsdPretriggerFrames(h, 0) == 0 && rig.arm());
    QCOMPARE(rig.number<uint32_t>(zvtGetSsdNumFrames), 50U);
    QVERIFY(rig.call(zvtSsdTrigger));
    rig.wait(200);
    QVERIFY(rig.call(zvtSsdRecordStop) && rig.state() == 3);
    QCOMPARE(rig.number<uint32_t>(zvtGetSsdNumFrames), 20U);
    QVERIFY(rig.call(zvtSsdSaveBuffer));
    rig.wait(500);
    QCOMPARE(rig.movies(), 1U);
}

void tst_RecorderSettings::aCameraMayHaveNoDrive()
{
    RecorderRig rig("te-cooler");
    const uint64_t h = rig.handle();
    QCOMPARE(rig.number<uint8_t>(zvtGetSsdDrivePresent), uint8_t(0));
    QCOMPARE(rig.number<uint8_t>(zvtGetSsdDriveRecognized), uint8_t(0));
    QCOMPARE(rig.number<uint32_t>(zvtGetSsdMaxNumFramesDisk), 0U);
    int64_t bytes = 7;
    for (auto *const get : {zvtGetSsdDriveSpaceTotal, zvtGetSsdDriveSpaceFree, zvtGetSsdDriveSpaceUsed})
        QCOMPARE(get(h, &bytes), int(emulator::Absent));
    uint32_t count = 7;
    QCOMPARE(zvtGetSsdMovieCount(h, &count), int(emulator::Absent));
    QVERIFY(bytes == 7 && count == 7);
    QCOMPARE(zvtSetSsdRecordMode(h, 1), int(emulator::Refused));
    QCOMPARE(zvtSsdFormatDrive(h), int(emulator::Refused));
    QVERIFY(!rig.set("recorder.recognized", true));
    QVERIFY(rig.record(20));
    QCOMPARE(zvtSsdSaveBuffer(h), int(emulator::Refused));
}

void tst_RecorderSettings::aDriveMayNotBeRecognized()
{
    RecorderRig rig;
    const uint64_t h = rig.handle();
    QVERIFY(rig.record(20) && rig.call(zvtSsdSaveBuffer));
    rig.wait(500);
    QVERIFY(rig.set("recorder.recognized", false));
    QCOMPARE(rig.number<uint8_t>(zvtGetSsdDrivePresent), uint8_t(1));
    QCOMPARE(rig.number<uint8_t>(zvtGetSsdDriveRecognized), uint8_t(0));
    QCOMPARE(rig.number<uint32_t>(zvtGetSsdMaxNumFramesDisk), 0U);
    int64_t bytes = 7;
    QCOMPARE(zvtGetSsdDriveSpaceFree(h, &bytes), int(emulator::Refused));
    QCOMPARE(zvtSsdLoadMovie(h, 0), int(emulator::Refused));
    QCOMPARE(zvtSsdSaveBuffer(h), int(emulator::Refused));
    QVERIFY(rig.call(zvtSsdFormatDrive));
    rig.wait(3000);
    QCOMPARE(rig.number<uint8_t>(zvtGetSsdDriveRecognized), uint8_t(1));
    QCOMPARE(rig.movies(), 0U);
}

void tst_RecorderSettings::camerasWithoutRecorderLackAll()
{
    RecorderRig rig;
    for (const auto *profile : {"bare", "low-cost"}) {
        rig.open(profile);
        uint8_t state = 77;
        QCOMPARE(zvtGetSsdState(rig.handle(), &state), int(emulator::Absent));
        QCOMPARE(zvtSsdArm(rig.handle()), int(emulator::Absent));
        QCOMPARE(state, uint8_t(77));
        QVERIFY(!rig.set("recorder.frames", 5));
    }
}

void tst_RecorderSettings::anArmedRecorderKeepsTheFrames_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const auto &[name, unused] : timingChanges)
        QTest::newRow(name.constData()) << name;
}

void tst_RecorderSettings::anArmedRecorderKeepsTheFrames()
{
    QFETCH(QByteArray, name);
    const Change &change = timingChanges.at(name);
    RecorderRig rig;
    const auto snapshot = [&] {
        QJsonObject all = rig.camera().snapshot();
        all.remove(QStringLiteral("recorder"));
        return all;
    };
    const QJsonObject before = snapshot();
    const std::vector<std::pair<int, std::function<bool()>>> steps{
        {11, [&] { return rig.call(zvtSsdArm); }},
        {1, [&] { return rig.wait(300), true; }},
        {2, [&] { return rig.call(zvtSsdTrigger); }},
        {9, [&] { return rig.call(zvtSsdRecordPause); }},
    };
    for (const auto &[state, step] : steps) {
        QVERIFY(step());
        QCOMPARE(rig.state(), state);
        QVERIFY(!change(rig));
        QCOMPARE(snapshot(), before);
    }
    QVERIFY(rig.call(zvtSsdRecordStop));
    QVERIFY(change(rig));
    QVERIFY(snapshot() != before);
}

void tst_RecorderSettings::anArmedRecorderKeepsLoadedStates()
{
    RecorderRig rig;
    const QString sensorKey = QStringLiteral("sensor");
    // The shortest frames: the noise reduction and the sync mode would lengthen them.
    QVERIFY(rig.set("sensor.sequencingMode", 2) && rig.set("sensor.reduceNoise", true));
    QVERIFY(zvtSetFrameSyncMode(rig.handle(), 0) == 0);
    const QJsonObject other = rig.camera().snapshot();
    QVERIFY(rig.set("sensor.reduceNoise", false) && zvtSetFrameSyncMode(rig.handle(), 1) == 0);
    QVERIFY(rig.set("sensor.sequencingMode", 1) && rig.set("sensor.window", QVariantList{0, 0, 160, 128}));
    QVERIFY(rig.set("sensor.integrationTime", 1) && rig.set("sensor.frameRate", 100'000));
    QVERIFY(rig.set("sensor.superframeRate", 3));
    const QJsonObject sensor = rig.camera().snapshot().value(sensorKey).toObject();
    QVERIFY(rig.arm());
    // A value that is in place already is not refused.
    QCOMPARE(rig.camera().device<emulator::Sensor>()->restore(sensor), QStringList());
    const QString refused = QStringLiteral(": is refused by the camera ");
    QCOMPARE(rig.camera().device<emulator::Sensor>()->restore(other.value(sensorKey).toObject()).join(QLatin1Char(' '))
                 + QLatin1Char(' '),
             QStringList({QStringLiteral("window"), QStringLiteral("sequencingMode"), QStringLiteral("reduceNoise"),
                          QStringLiteral("syncStartsReadout"), QStringLiteral("presets"),
                          QStringLiteral("superframeWidth"), QString()})
                 .join(refused));
    QCOMPARE(rig.camera().snapshot().value(sensorKey).toObject(), sensor);
    QVERIFY(rig.call(zvtSsdDisarm));
    rig.camera().restore(other);
    QCOMPARE(rig.camera().snapshot(), other);
}

void tst_RecorderSettings::noCorrectionIsMadeMeanwhile()
{
    RecorderRig rig;
    const auto start = [&] { return zvtStartNUC(rig.handle()); };
    QVERIFY(rig.arm());
    QCOMPARE(start(), int(emulator::Refused));
    QVERIFY(rig.call(zvtSsdTrigger));
    QCOMPARE(start(), int(emulator::Refused));
    // The recorder may arm again until it has done everything that follows a recording.
    QVERIFY(rig.set(zvtSetSsdAutoSave, 1) && rig.set(zvtSetSsdAutoDownload, 1) && rig.call(zvtSsdRecordStop));
    QCOMPARE(rig.state(), 5);
    QCOMPARE(start(), int(emulator::Refused));
    rig.wait(500);
    QCOMPARE(rig.state(), 12);
    QCOMPARE(start(), int(emulator::Refused));
    QVERIFY(rig.call(zvtSsdAutoDownloadDone));
    QCOMPARE(rig.state(), 3);
    // A save by command is followed by nothing.
    QVERIFY(rig.call(zvtSsdSaveBuffer));
    QCOMPARE(start(), 0);
}

void tst_RecorderSettings::theControllerTellsWhetherDownloadsArePossible()
{
    CameraRig rig;
    QVERIFY(rig.controller()->CanDownload());
    QVERIFY(rig.camera().otherClient().set(QStringLiteral("emulator./SSDTransfer"), false));
    QVERIFY(!rig.controller()->CanDownload());
    // A camera without a video stream transfers none.
    for (const bool videoStream : {true, false}) {
        RecorderRig camera;
        camera.openDevices(videoStream ? R"({"sensor": {"videoStream": true}})"
                                       : R"({"sensor": {"videoStream": false}})");
        QCOMPARE(camera.recorder().canDownload(), videoStream);
    }
}

ZVT_TEST(tst_RecorderSettings)
#include "tst_RecorderSettings.moc"
