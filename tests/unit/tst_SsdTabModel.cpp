#include "tests/support/Test.h"
#include "tests/unit/SsdRig.h"

#include <QMetaEnum>
#include <QStandardPaths>
#include <QUrl>

namespace
{

const QStringList startSignals{"refreshingChanged", "hasRefreshedChanged"};
const QStringList endSignals{"hasRefreshedChanged", "refreshingChanged"};

/// The signals of every read, in order, in which every call succeeds.
const QStringList switchSignals{"drivePresentChanged", "driveRecognizedChanged", "loopPlaybackChanged",
                                "autoPlayChanged", "autoSaveChanged"};
const QStringList frameSignals = QStringList{"framesToRecordChanged", "maxFramesToRecordToMemoryChanged"} + limitSignals
    + QStringList{"pretriggerFramesToRecordChanged",
                  "playbackRateInHertzChanged",
                  "maxPlaybackRateInHertzChanged",
                  "maxPlaybackRateInHertzChanged",
                  "filenameChanged",
                  "startFrameChanged",
                  "endFrameChanged"};
const QStringList everySignal = switchSignals + stateSignals + frameSignals;

/// What a camera without record modes lacks.
const QStringList modes{"recordModeAvailable", "recordMode",
                        "recordType",          "recordGated",
                        "recordDuration",      "maxFramesToRecordToDisk",
                        "movieLoaded",         "autoRearm",
                        "autoDownload",        "totalFramesInFile",
                        "maxFramesToRecord",   "pretriggerMaxFramesToRecord",
                        "maxRecordDuration",   "maxPlaybackRateInHertz"};

} // namespace

/// What the SSD tab reads, and what it shows after a read. tst_SsdTabModelLimits has the numbers that a read reduces.
class tst_SsdTabModel : public Test
{
    Q_OBJECT

private slots:
    void startsWithDefaults();
    void statesHaveTheNumbersOfTheCamera();
    void readsInOrder();
    void modesAreReadOnlyIfThereAreAny_data();
    void modesAreReadOnlyIfThereAreAny();
    void publishesInOrder();
    void publishesTheValuesOfTheCamera();
    void unchangedReadSignals();
    void loadedMovieIsFromTheDrive();

    void cameraWithoutModesHasNone();
    void missingModesAreSignalledOnce();
    void framesOfARecordingWithoutModes_data();
    void framesOfARecordingWithoutModes();
    void changesOfModesSignalTheirLimits_data();
    void changesOfModesSignalTheirLimits();
    void synchronisationSignalsTheDuration();
    void windowIsSignalledOnce();

    void rootRefreshesATabWithARecorder();
    void failingReads();
    void heldReadsOutliveTheModel();
    void secondRefreshIsDropped();
    void readsWithoutACamera();
    void randomOperator();
};

void tst_SsdTabModel::startsWithDefaults()
{
    Ssd ssd;
    for (const char *flag :
         {"visible", "refreshing", "hasRefreshed", "drivePresent", "driveRecognized", "loopPlayback", "autoPlay",
          "autoSave", "autoRearm", "canInteract", "recordModeAvailable", "recordGated", "fromDisk", "movieLoaded",
          "externalSync", "autoDownload", "canDownload", "ramContainsVideo"})
        QCOMPARE(ssd.model.property(flag), QVariant(false));
    QCOMPARE(ssd.model.state(), SsdTabModel::DISARMED);
    for (const char *number : {"currentFrame", "startFrame", "endFrame", "totalFramesInFile", "windowWidth",
                               "windowHeight", "recordMode", "recordType", "maxFramesToRecordToDisk"}) {
        QVERIFY2(ssd.model.property(number).isValid(), number);
        QCOMPARE(ssd.model.property(number).toInt(), 0);
    }
    QCOMPARE(ssd.model.framesToRecord(), 1000U);
    QCOMPARE(ssd.model.maxFramesToRecord(), 1000U);
    QCOMPARE(ssd.model.maxFramesToRecordToMemory(), 1000U);
    QCOMPARE(ssd.model.pretriggerFramesToRecord(), 100U);
    QCOMPARE(ssd.model.pretriggerMaxFramesToRecord(), 1000U);
    QCOMPARE(ssd.model.maxRecordDuration(), QTime(0, 16, 40));
    QCOMPARE(ssd.model.playbackRateInHertz(), 30.0F);
    QCOMPARE(ssd.model.maxPlaybackRateInHertz(), 1000.0F);
    QCOMPARE(ssd.model.recordDuration(), QTime(0, 0));
    QCOMPARE(ssd.model.averageFrameRate(), 1.0);
    QCOMPARE(ssd.model.filename(), QString());
    QCOMPARE(ssd.model.autoDownloadCount(), 1U);
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    QCOMPARE(ssd.model.autoDownloadDirectory(), documents);
    QCOMPARE(ssd.model.autoDownloadDirectoryUrl(), QUrl::fromLocalFile(documents).toString());
}

void tst_SsdTabModel::statesHaveTheNumbersOfTheCamera()
{
    const auto states = QMetaEnum::fromType<SsdTabModel::SsdState>();
    QCOMPARE(states.keyCount(), 14);
    QCOMPARE(states.valueToKey(13), "UNKNOWN_STATE_QML_ONLY_NOT_SDK");
    QCOMPARE(states.keyToValue("REQUEST_AUTO_DOWNLOAD"), 12);
    for (int state = 0; state < states.keyCount(); ++state)
        QCOMPARE(states.value(state), state);
    QCOMPARE(QMetaEnum::fromType<SsdTabModel::ERECORD_MODE>().keyToValue("MODE_TO_DISK"), 1);
    QCOMPARE(QMetaEnum::fromType<SsdTabModel::ERECORD_TYPE>().keyToValue("TYPE_START_STOP"), 2);
}

// Reading

namespace
{

const QStringList readsBeforeTheModes{"zvtGetSsdDrivePresent",
                                      "zvtGetSsdDriveRecognized",
                                      "zvtGetSsdLoopPlayback",
                                      "zvtGetSsdAutoPlay",
                                      "zvtGetSsdAutoSave",
                                      "zvtGetSsdState",
                                      "zvtGetSsdNumFrames",
                                      "zvtGetSsdMaxNumFrames",
                                      "zvtGetSsdPretriggerFrames",
                                      "zvtGetSsdPlaybackRate",
                                      "zvtGetSsdStartFrame",
                                      "zvtGetSsdEndFrame",
                                      "zvtGetSsdRecordModeAvailable",
                                      "controller.GetAverageFrameRate",
                                      "controller.CanDownload",
                                      "zvtGetFrameSyncSource"};
const QStringList readsOfTheModes{"zvtGetSsdRecordMode",     "zvtGetSsdRecordType",  "zvtGetSsdMaxNumFramesDisk",
                                  "zvtGetSsdRecordDuration", "zvtGetSsdRecordGated", "zvtGetSsdNumFramesAcquired",
                                  "zvtGetSsdMovieLoaded",    "zvtGetSsdAutoRearm",   "zvtGetSsdAutoDownload"};
const QStringList readsAfterTheModes{"controller.GetWindow", "zvtGetSsdSaveName", "zvtCalcMinFrameWidth 640, 512",
                                     "zvtClocksToHertz 1000"};

} // namespace

void tst_SsdTabModel::readsInOrder()
{
    Ssd ssd;
    QCOMPARE(ssd.read(), readsBeforeTheModes + readsOfTheModes + readsAfterTheModes);
}

void tst_SsdTabModel::modesAreReadOnlyIfThereAreAny_data()
{
    QTest::addColumn<bool>("fails");
    QTest::newRow("none") << false;
    QTest::newRow("not known") << true;
}

void tst_SsdTabModel::modesAreReadOnlyIfThereAreAny()
{
    QFETCH(const bool, fails);
    Ssd ssd;
    if (fails)
        ssd.gate().failNext("zvtGetSsdRecordModeAvailable");
    else
        ssd.gate().script("zvtGetSsdRecordModeAvailable", 0);
    QCOMPARE(ssd.read(), readsBeforeTheModes + readsAfterTheModes);
}

void tst_SsdTabModel::publishesInOrder()
{
    Ssd ssd;
    ssd.model.refresh();
    QCOMPARE(ssd.log.take(), startSignals);
    QVERIFY(ssd.model.refreshing() && !ssd.model.hasRefreshed());
    CameraRig::settle();
    QCOMPARE(ssd.log.take(),
             everySignal + QStringList({"windowSizeChanged", "recordModeAvailableChanged", "recordModeChanged"})
                 + limitSignals
                 + QStringList({"recordTypeChanged", "pretriggerMaxFramesToRecordChanged", "recordGatedChanged",
                                "recordDurationChanged", "maxFramesToRecordToDiskChanged"})
                 + limitSignals
                 + QStringList({"totalFramesInFileChanged", "movieLoadedChanged", "autoRearmChanged",
                                "autoDownloadChanged", "externalSyncChanged", "maxRecordDurationChanged",
                                "averageFrameRateChanged", "maxRecordDurationChanged", "canDownloadChanged"})
                 + endSignals);
    QVERIFY(!ssd.model.refreshing() && ssd.model.hasRefreshed());
}

void tst_SsdTabModel::publishesTheValuesOfTheCamera()
{
    Ssd ssd;
    ssd.read();
    for (const char *flag :
         {"drivePresent", "driveRecognized", "loopPlayback", "autoPlay", "autoSave", "autoRearm", "canInteract",
          "recordModeAvailable", "recordGated", "movieLoaded", "externalSync", "autoDownload", "canDownload"})
        QVERIFY2(ssd.model.property(flag).toBool(), flag);
    QCOMPARE(ssd.model.state(), SsdTabModel::COMPLETE);
    QCOMPARE(ssd.model.framesToRecord(), 400U);
    QCOMPARE(ssd.model.maxFramesToRecordToMemory(), 5000U);
    QCOMPARE(ssd.model.maxFramesToRecordToDisk(), 900U);
    QCOMPARE(ssd.model.pretriggerFramesToRecord(), 50U);
    QCOMPARE(ssd.model.playbackRateInHertz(), 25.0F);
    QCOMPARE(ssd.model.startFrame(), 7U);
    QCOMPARE(ssd.model.endFrame(), 300U);
    QCOMPARE(ssd.model.totalFramesInFile(), 350U);
    QCOMPARE(ssd.model.averageFrameRate(), 50.0);
    QCOMPARE(ssd.model.recordMode(), SsdTabModel::MODE_TO_DISK);
    QCOMPARE(ssd.model.recordType(), SsdTabModel::TYPE_START_STOP);
    QCOMPARE(ssd.model.recordDuration(), QTime(0, 0, 2, 500));
    QCOMPARE(ssd.model.windowWidth(), 640);
    QCOMPARE(ssd.model.windowHeight(), 512);
    QCOMPARE(ssd.model.filename(), "Shot");
    // A read sets it only for MOVIE_LOADED; only arm() clears it.
    QVERIFY(!ssd.model.fromDisk());
}

void tst_SsdTabModel::unchangedReadSignals()
{
    Ssd ssd;
    ssd.read();
    QCOMPARE(ssd.refresh(), everySignal);
}

void tst_SsdTabModel::loadedMovieIsFromTheDrive()
{
    Ssd ssd;
    ssd.setCameraState(SsdTabModel::MOVIE_LOADED);
    QCOMPARE(ssd.refresh().mid(5, 3), stateSignals + QStringList("fromDiskChanged"));
    QVERIFY(ssd.model.fromDisk());
    // It stays so until a recording is armed.
    ssd.setCameraState(SsdTabModel::DISARMED);
    QCOMPARE(ssd.refresh().mid(5, 2), stateSignals);
    QVERIFY(ssd.model.fromDisk());
}

// Record modes

void tst_SsdTabModel::cameraWithoutModesHasNone()
{
    Ssd ssd;
    ssd.read();
    ssd.gate().script("zvtGetSsdRecordModeAvailable", 0);
    ssd.refresh();
    QCOMPARE(ssd.model.recordMode(), SsdTabModel::MODE_TO_MEMORY);
    QCOMPARE(ssd.model.recordType(), SsdTabModel::TYPE_NUM_FRAMES);
    QCOMPARE(ssd.model.recordDuration(), QTime(0, 0));
    QCOMPARE(ssd.model.maxFramesToRecordToDisk(), 0U);
    QVERIFY(!ssd.model.recordGated() && !ssd.model.movieLoaded());
    QVERIFY(!ssd.model.autoRearm() && !ssd.model.autoDownload());
}

void tst_SsdTabModel::missingModesAreSignalledOnce()
{
    Ssd ssd;
    ssd.read();
    ssd.gate().script("zvtGetSsdRecordModeAvailable", 0);
    QCOMPARE(ssd.refresh(),
             everySignal + QStringList({"recordModeAvailableChanged", "recordModeChanged"}) + limitSignals
                 + QStringList({"recordTypeChanged", "pretriggerMaxFramesToRecordChanged", "recordGatedChanged",
                                "recordDurationChanged", "maxFramesToRecordToDiskChanged"})
                 + limitSignals
                 + QStringList(
                     {"movieLoadedChanged", "autoRearmChanged", "autoDownloadChanged", "totalFramesInFileChanged"}));
    QCOMPARE(ssd.refresh(), everySignal);
    // While the query fails, the modes stay as they are.
    ssd.gate().failNext("zvtGetSsdRecordModeAvailable");
    QCOMPARE(ssd.refresh(), everySignal);
}

void tst_SsdTabModel::framesOfARecordingWithoutModes_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<bool>("recorded");
    for (int state = 0; state <= SsdTabModel::REQUEST_AUTO_DOWNLOAD; ++state)
        QTest::addRow("state %d", state) << state
                                         << (state == SsdTabModel::COMPLETE || state == SsdTabModel::PLAYING
                                             || state == SsdTabModel::PAUSED);
}

void tst_SsdTabModel::framesOfARecordingWithoutModes()
{
    QFETCH(const int, state);
    QFETCH(const bool, recorded);
    Ssd ssd;
    ssd.gate().script("zvtGetSsdRecordModeAvailable", 0);
    ssd.setCameraState(state);
    // The number as read, not the one reduced to the limit.
    ssd.gate().script("zvtGetSsdNumFrames", 6000U);
    ssd.read();
    QCOMPARE(ssd.model.totalFramesInFile(), recorded ? 6000U : 0U);
    QCOMPARE(ssd.model.framesToRecord(), 5000U);
}

void tst_SsdTabModel::changesOfModesSignalTheirLimits_data()
{
    QTest::addColumn<QStringList>("signalled");
    QTest::newRow("zvtGetSsdRecordMode") << (QStringList("recordModeChanged") + limitSignals);
    QTest::newRow("zvtGetSsdRecordType") << QStringList{"recordTypeChanged", "pretriggerMaxFramesToRecordChanged"};
    QTest::newRow("zvtGetSsdRecordGated") << QStringList("recordGatedChanged");
    QTest::newRow("zvtGetSsdRecordDuration") << QStringList("recordDurationChanged");
    QTest::newRow("zvtGetSsdMaxNumFramesDisk") << (QStringList("maxFramesToRecordToDiskChanged") + limitSignals);
    QTest::newRow("zvtGetSsdNumFramesAcquired") << QStringList("totalFramesInFileChanged");
    QTest::newRow("zvtGetSsdMovieLoaded") << QStringList("movieLoadedChanged");
    QTest::newRow("zvtGetSsdAutoRearm") << QStringList("autoRearmChanged");
    QTest::newRow("zvtGetSsdAutoDownload") << QStringList("autoDownloadChanged");
}

void tst_SsdTabModel::changesOfModesSignalTheirLimits()
{
    QFETCH(const QStringList, signalled);
    Ssd ssd;
    ssd.gate().script("zvtGetSsdNumFrames", 0U);
    ssd.gate().script("zvtGetSsdPretriggerFrames", 0U);
    ssd.read();
    ssd.gate().script(QTest::currentDataTag(), 0U);
    QCOMPARE(ssd.refresh(), everySignal + signalled);
}

void tst_SsdTabModel::synchronisationSignalsTheDuration()
{
    Ssd ssd;
    ssd.read();
    ssd.gate().script("zvtGetFrameSyncSource", 2);
    QCOMPARE(ssd.refresh(), everySignal);
    QVERIFY(ssd.model.externalSync());
    ssd.gate().script("zvtGetFrameSyncSource", 0);
    QCOMPARE(ssd.refresh(), everySignal + QStringList({"externalSyncChanged", "maxRecordDurationChanged"}));
    QVERIFY(!ssd.model.externalSync());
    ssd.gate().script("controller.GetAverageFrameRate", 100.0);
    QCOMPARE(ssd.refresh(), everySignal + QStringList({"averageFrameRateChanged", "maxRecordDurationChanged"}));
    ssd.gate().script("controller.CanDownload", false);
    QCOMPARE(ssd.refresh(), everySignal + QStringList("canDownloadChanged"));
}

void tst_SsdTabModel::windowIsSignalledOnce()
{
    Ssd ssd;
    ssd.read();
    ssd.gate().script("controller.GetWindow", QVariantList{4, 4, 320, 256});
    QCOMPARE(ssd.refresh(), everySignal + QStringList("windowSizeChanged"));
    QCOMPARE(ssd.model.windowWidth(), 320);
    QCOMPARE(ssd.model.windowHeight(), 256);
}

void tst_SsdTabModel::rootRefreshesATabWithARecorder()
{
    Ssd ssd;
    for (const bool hasRecorder : {true, false}) {
        ssd.rig.camera().changeMakeUp(QStringLiteral("hasSsd"), hasRecorder);
        ssd.rig.controller()->capabilities.configure(ssd.rig.controller().get());
        ssd.root.cameraCapabilitiesModel()->configure();
        ssd.log.take();
        ssd.root.refreshAllVisible();
        CameraRig::settle();
        QCOMPARE(ssd.log.take().isEmpty(), !hasRecorder);
    }
}

void tst_SsdTabModel::failingReads()
{
    // Signalled by every read that returns the limit of the memory or the rates.
    const QStringList limits{"maxFramesToRecord", "maxFramesToRecordToDisk", "pretriggerMaxFramesToRecord",
                             "maxRecordDuration"};
    const QStringList rate{"maxPlaybackRateInHertz"};
    walkFailingReads(
        ssdModel(),
        {{"zvtGetSsdState", {{"state", "canInteract", "ramContainsVideo"}, "all come from the state"}},
         {"zvtGetSsdNumFrames", {{"framesToRecord"}, "the old number is reduced to the limit"}},
         {"zvtGetSsdMaxNumFrames",
          {{"maxFramesToRecordToMemory", "pretriggerMaxFramesToRecord"}, "the limit of the pretrigger depends on it"}},
         {"zvtGetSsdRecordModeAvailable", {modes, "without modes their values are not read", limits + rate}},
         {"zvtGetSsdRecordMode",
          {{"recordMode", "maxFramesToRecord", "maxRecordDuration"}, "the limits depend on the mode", limits}},
         {"zvtGetSsdMaxNumFramesDisk",
          {{"maxFramesToRecordToDisk", "maxFramesToRecord", "maxRecordDuration", "framesToRecord"},
           "without space there is nothing to record",
           limits + QStringList{"framesToRecord"}}},
         {"zvtGetSsdMovieLoaded",
          {{"movieLoaded", "maxPlaybackRateInHertz"}, "a movie has another limit of the rate", rate}},
         {"controller.GetAverageFrameRate",
          {{"averageFrameRate", "maxRecordDuration"}, "the duration depends on the rate", limits}},
         {"controller.CanDownload", {{"canDownload"}, "a refusal is the answer", {"canDownload"}}},
         {"zvtGetSsdSaveName", {{"filename"}, "a recording without a name is untitled", {"filename"}}},
         {"controller.GetWindow",
          {{"windowWidth", "windowHeight", "maxPlaybackRateInHertz"}, "the rate of a movie depends on it", rate}},
         {"zvtCalcMinFrameWidth", {rate, "both limits of the rate come from the shortest frame"}},
         {"zvtClocksToHertz", {rate, "both limits of the rate come from the shortest frame"}}});
}

void tst_SsdTabModel::heldReadsOutliveTheModel() { walkHeldDeletion(ssdModel()); }

void tst_SsdTabModel::secondRefreshIsDropped() { walkSecondRefresh(ssdModel()); }

void tst_SsdTabModel::readsWithoutACamera() { walkNoCamera(modelOf<SsdTabModel>(), {"filename"}); }

void tst_SsdTabModel::randomOperator() { walkRandomOperator(ssdModel(), 71); }

ZVT_TEST(tst_SsdTabModel)
#include "tst_SsdTabModel.moc"
