#include "tests/support/Test.h"
#include "tests/unit/BatchTransferRig.h"

#include <QUrl>

#include <new>

namespace
{

/// The calls of one movie that fits the window.
QStringList callsOfMovie(const QString &path, int place, const QString &frames = QStringLiteral("0, 4294967295"))
{
    return {"controller.GetWindow", QStringLiteral("zvtSsdLoadMovie %1").arg(place),
            QStringLiteral("controller.DownloadMovie \"%1\", delegate, %2").arg(path, frames), "zvtSsdStopBuffer",
            "zvtSsdUnload"};
}

/// A time as year-month-day hour:minute:second.millisecond.microsecond.
QString textOf(const hlx::CDateTime &time)
{
    return QString::asprintf("%d-%d-%d %d:%d:%d.%03d.%03d", time.year(), time.month(), time.day(), time.hour(),
                             time.minute(), time.second(), time.millisecond(), time.microsecond());
}

} // namespace

/// The run of a batch download: its calls, their order, what it reports, and what a failure leaves. The camera's
/// answers are scripted.
class tst_BatchDownloadModelRun : public Test
{
    Q_OBJECT

private slots:
    void moviesAreFetchedOneAfterTheOther();
    void runReportsInOrder();
    void startIsIgnoredWithoutEntries();
    void listIsLockedDuringARun();
    void secondRunStartsAfresh();
    void startShowsTheLastResultsFirst();
    void fileNumberOnlyDuringARun();

    void playbackIsEndedFirst_data();
    void playbackIsEndedFirst();
    void unknownStateEndsNothing();

    void rangeOfFrames();
    void rangeOfTimes();
    void folderIsAUrlOrAPath_data();
    void folderIsAUrlOrAPath();
    void emptyNameIsOnlyAnExtension();
    void equalNamesAreNotChecked();

    void windowFollowsTheMoviesAndComesBackOnce();
    void refusedWindowIsRestoredToo();
    void failuresEndTheMovieOnly_data();
    void failuresEndTheMovieOnly();
    void exceptionsFailTheirStep_data();
    void exceptionsFailTheirStep();
    void failedStopSkipsTheUnload();
    void disconnectedCameraFailsEachMovie();
    void modelWithoutAController();
};

void tst_BatchDownloadModelRun::moviesAreFetchedOneAfterTheOther()
{
    Batch batch;
    batch.scriptMovies();
    batch.add(driveMovie(1));
    batch.add(driveMovie(5, "Forge"));
    QCOMPARE(batch.run(),
             QStringList("zvtGetSsdState") + callsOfMovie(batch.pathOf("1-Kiln.rqs"), 10)
                 + callsOfMovie(batch.pathOf("5-Forge.rqs"), 11));
    QCOMPARE(batch.statuses(), QList<int>(2, BatchDownloadEntry::STATUS_SUCCEEDED));
}

void tst_BatchDownloadModelRun::runReportsInOrder()
{
    Batch batch;
    batch.scriptMovies();
    batch.addWatched(driveMovie(1))->setProgress(0.5);
    batch.addWatched(driveMovie(2))->setRangeType(BatchDownloadEntry::RANGE_IRIG);
    batch.journal.clear();
    SignalLog log(&batch.batch);
    batch.batch.start();
    QVERIFY(batch.batch.downloading());
    QCOMPARE(log.take(),
             QStringList({"downloadingChanged", "currentEntryFileNumberChanged", "resultReportingChanged"}));
    QCOMPARE(batch.journal, QStringList("0 progress 0"));
    batch.journal.clear();
    CameraRig::settle();
    QCOMPARE(batch.journal,
             QStringList({"current 0", "0 status 1", "log Processing movie: Kiln", "0 status 3", "0 status 7",
                          "0 progress 1", "progress 0.5", "current 1", "1 status 1", "log Processing movie: Kiln",
                          "1 status 2",
                          "log Scanning movie for frames in irig time range 060:12:30:15.250 to 060:12:30:15.450",
                          "1 status 3", "1 status 7", "1 progress 1", "progress 1"}));
    QCOMPARE(log.take().mid(6),
             QStringList(
                 {"resultReportingChanged", "downloadingChanged", "currentEntryFileNumberChanged", "doneDownloading"}));
    QVERIFY(!batch.batch.downloading());
    QCOMPARE(batch.batch.itemsSucceeded(), 2);
}

void tst_BatchDownloadModelRun::startIsIgnoredWithoutEntries()
{
    Batch batch;
    SignalLog log(&batch.batch);
    QCOMPARE(batch.run(), QStringList());
    QCOMPARE(log.take(), QStringList());
}

void tst_BatchDownloadModelRun::listIsLockedDuringARun()
{
    Batch batch;
    batch.scriptMovies();
    batch.add(driveMovie(1));
    QVERIFY(batch.runUntil("zvtSsdLoadMovie"));
    const size_t mark = batch.gate().mark();
    batch.batch.start();
    QVERIFY(!batch.add(driveMovie(2)));
    batch.batch.remove(batch.entry(0));
    batch.batch.removeAll();
    QCOMPARE(batch.batch.entries()->size(), 1);
    batch.finishRun();
    QCOMPARE(batch.calls(mark, false).filter("zvtSsdLoadMovie"), QStringList());
    QVERIFY(batch.add(driveMovie(2)));
}

void tst_BatchDownloadModelRun::secondRunStartsAfresh()
{
    Batch batch;
    batch.scriptMovies();
    batch.addWatched(driveMovie(1));
    batch.gate().failNext("zvtSsdLoadMovie");
    batch.run();
    QCOMPARE(batch.lines().size(), 3);
    QCOMPARE(batch.batch.itemsFailed(), 1);
    batch.journal.clear();
    for (const auto &[signal, text] : {std::pair{&BatchDownloadModel::downloadingChanged, "downloading"},
                                       {&BatchDownloadModel::currentEntryFileNumberChanged, "file number"},
                                       {&BatchDownloadModel::resultReportingChanged, "results"}})
        QObject::connect(&batch.batch, signal, &batch.context, [&batch, text = text] { batch.journal << text; });
    QObject::connect(batch.batch.log(), &QAbstractItemModel::modelReset, &batch.context,
                     [&batch] { batch.journal << "empty log"; });
    batch.batch.start();
    QCOMPARE(batch.journal,
             QStringList(
                 {"progress 0", "downloading", "file number", "empty log", "results", "0 progress 0", "0 status 0"}));
    QCOMPARE(batch.lines(), QStringList());
    CameraRig::settle();
    QCOMPARE(batch.lines(), QStringList("Processing movie: Kiln"));
    QCOMPARE(batch.batch.itemsFailed(), 0);
    QCOMPARE(batch.batch.itemsSucceeded(), 1);
}

// The results are counted before the statuses are reset.
void tst_BatchDownloadModelRun::startShowsTheLastResultsFirst()
{
    Batch batch;
    batch.scriptMovies();
    batch.add(driveMovie(1));
    batch.run();
    batch.add(driveMovie(2));
    batch.batch.start();
    QCOMPARE(batch.batch.itemsSucceeded(), 1);
    QCOMPARE(batch.batch.itemsNotStarted(), 1);
    QCOMPARE(batch.statuses(), QList<int>(2, BatchDownloadEntry::STATUS_NOT_STARTED));
    CameraRig::settle();
    QCOMPARE(batch.batch.itemsSucceeded(), 2);
}

void tst_BatchDownloadModelRun::fileNumberOnlyDuringARun()
{
    Batch batch;
    batch.scriptMovies();
    batch.add(driveMovie(1));
    batch.add(driveMovie(2));
    QList<int> numbers;
    QObject::connect(&batch.batch, &BatchDownloadModel::currentEntryFileNumberChanged, &batch.context,
                     [&] { numbers << batch.batch.currentEntryFileNumber(); });
    batch.run();
    QCOMPARE(numbers, QList<int>({-1, 1, 2, -1}));
    QCOMPARE(batch.batch.currentEntry(), batch.entry(1));
}

void tst_BatchDownloadModelRun::playbackIsEndedFirst_data()
{
    QTest::addColumn<bool>("ended");
    for (int state = SsdTabModel::DISARMED; state <= SsdTabModel::REQUEST_AUTO_DOWNLOAD; ++state)
        QTest::addRow("%d", state) << (state == SsdTabModel::PLAYING || state == SsdTabModel::PAUSED
                                       || state == SsdTabModel::MOVIE_LOADED);
}

void tst_BatchDownloadModelRun::playbackIsEndedFirst()
{
    QFETCH(const bool, ended);
    Batch batch;
    batch.scriptMovies();
    batch.gate().script("zvtGetSsdState", QByteArray(QTest::currentDataTag()).toInt());
    batch.gate().failNext("zvtSsdStopBuffer"); // The unload does not depend on it.
    batch.gate().failAlways("controller.GetWindow");
    batch.add(driveMovie(1));
    QStringList expected("zvtGetSsdState");
    if (ended)
        expected << "zvtSsdStopBuffer"
                 << "zvtSsdUnload";
    QCOMPARE(batch.run(), expected << "controller.GetWindow");
}

void tst_BatchDownloadModelRun::unknownStateEndsNothing()
{
    Batch batch;
    batch.scriptMovies();
    batch.gate().failAlways("zvtGetSsdState");
    batch.add(driveMovie(1));
    QCOMPARE(batch.run(), QStringList("zvtGetSsdState") + callsOfMovie(batch.pathOf("1-Kiln.rqs"), 10));
}

void tst_BatchDownloadModelRun::rangeOfFrames()
{
    Batch batch;
    batch.scriptMovies();
    BatchDownloadEntry *entry = batch.add(driveMovie(1));
    entry->setRangeType(BatchDownloadEntry::RANGE_FRAMES);
    entry->setStartFrame(20);
    entry->setEndFrame(100); // One more than the last frame.
    QCOMPARE(batch.run(),
             QStringList("zvtGetSsdState") + callsOfMovie(batch.pathOf("1-Kiln.rqs"), 10, QStringLiteral("20, 100")));
}

void tst_BatchDownloadModelRun::rangeOfTimes()
{
    BatchTransfer rig;
    BatchDownloadEntry *entry = rig.add(driveMovie(1));
    entry->setRangeType(BatchDownloadEntry::RANGE_IRIG);
    entry->setStartTimeString("059:01:02:03.004");
    QStringList steps;
    rig.controller->findFrames
        = [&steps](hlx::CDateTime start, hlx::CDateTime end, unsigned int *first, unsigned int *last) {
              steps << textOf(start) << textOf(end);
              *first = 3;
              *last = 7;
              return true;
          };
    rig.controller->download = [&steps](const auto &, unsigned int first, unsigned int last) {
        steps << QStringLiteral("frames %1 to %2").arg(first).arg(last);
        return true;
    };
    rig.batch.start();
    CameraRig::settle();
    QCOMPARE(steps, QStringList({"0-2-28 1:2:3.004.000", "0-2-29 12:30:15.450.000", "frames 3 to 7"}));
    QCOMPARE(rig.lines().at(1),
             QStringLiteral("Scanning movie for frames in irig time range 059:01:02:03.004 to 060:12:30:15.450"));
}

void tst_BatchDownloadModelRun::folderIsAUrlOrAPath_data()
{
    QTest::addColumn<QString>("outputDir");
    QTest::addColumn<QString>("file");
    QTest::newRow("url") << "file:///tmp/a%20b"
                         << "/tmp/a b/1-Kiln.rqs";
    QTest::newRow("url with a separator") << "file:///tmp/"
                                          << "/tmp/1-Kiln.rqs";
    QTest::newRow("path") << "/tmp/a%20b"
                          << "/tmp/a%20b/1-Kiln.rqs";
    QTest::newRow("relative path") << "movies"
                                   << "movies/1-Kiln.rqs";
    QTest::newRow("none") << ""
                          << "1-Kiln.rqs";
    QTest::newRow("other characters") << "/tmp/Öfen"
                                      << "/tmp/Öfen/1-Kiln.rqs";
}

void tst_BatchDownloadModelRun::folderIsAUrlOrAPath()
{
    QFETCH(const QString, outputDir);
    QFETCH(const QString, file);
    Batch batch;
    batch.scriptMovies();
    batch.batch.setOutputDir(outputDir);
    batch.add(driveMovie(1));
    QCOMPARE(batch.run(), QStringList("zvtGetSsdState") + callsOfMovie(file, 10));
}

void tst_BatchDownloadModelRun::emptyNameIsOnlyAnExtension()
{
    Batch batch;
    batch.scriptMovies();
    batch.add(driveMovie(1))->setOutFile("");
    QCOMPARE(batch.run(), QStringList("zvtGetSsdState") + callsOfMovie(batch.pathOf(".rqs"), 10));
    QCOMPARE(batch.batch.itemsSucceeded(), 1);
}

// The page checks them before it starts a run.
void tst_BatchDownloadModelRun::equalNamesAreNotChecked()
{
    Batch batch;
    batch.scriptMovies();
    batch.add(driveMovie(1));
    batch.add(driveMovie(1));
    QCOMPARE(batch.run().filter("DownloadMovie").size(), 2);
}

void tst_BatchDownloadModelRun::windowFollowsTheMoviesAndComesBackOnce()
{
    Batch batch;
    batch.scriptMovies();
    batch.gate().script("controller.GetWindow", {});
    QVERIFY(batch.rig.controller()->SetWindow(64, 32, 320, 256));
    for (const auto &[width, height] : {std::pair{320, 256}, {160, 128}, {160, 128}, {64, 4}, {320, 256}})
        batch.add(driveMovie(1, "Kiln", 10, static_cast<uint16_t>(width), static_cast<uint16_t>(height)));
    QStringList windows = batch.run().filter("SetWindow");
    QCOMPARE(windows,
             QStringList({"controller.SetWindow 0, 0, 160, 128", "controller.SetWindow 0, 0, 64, 4",
                          "controller.SetWindow 0, 0, 320, 256", "controller.SetWindow 64, 32, 320, 256"}));
    QCOMPARE(batch.batch.itemsSucceeded(), 5);
}

void tst_BatchDownloadModelRun::refusedWindowIsRestoredToo()
{
    Batch batch;
    batch.scriptMovies();
    batch.gate().failNext("controller.SetWindow");
    batch.add(driveMovie(1, "Kiln", 10, 320, 256));
    QCOMPARE(batch.run(),
             QStringList({"zvtGetSsdState", "controller.GetWindow", "controller.SetWindow 0, 0, 320, 256",
                          "controller.SetWindow 0, 0, 640, 512"}));
    QCOMPARE(batch.batch.itemsFailed(), 1);
}

void tst_BatchDownloadModelRun::failuresEndTheMovieOnly_data()
{
    QTest::addColumn<QStringList>("failures"); // Lines of the log.
    QTest::addColumn<QStringList>("skipped"); // Calls of the movie that are not made.
    const QStringList beforeTheLoad{"zvtSsdLoadMovie", "FindFrameRange", "DownloadMovie", "StopBuffer", "Unload"};
    QTest::newRow("controller.GetWindow") << QStringList() << (QStringList("SetWindow") + beforeTheLoad);
    QTest::newRow("controller.SetWindow") << QStringList() << beforeTheLoad;
    QTest::newRow("zvtSsdLoadMovie") << QStringList("Failed to load movie.") << beforeTheLoad.mid(1);
    QTest::newRow("controller.FindFrameRange")
        << QStringList("Failed to find frame range.") << QStringList("DownloadMovie");
    QTest::newRow("controller.DownloadMovie") << QStringList("Failed to download movie.") << QStringList();
    QTest::newRow("zvtSsdStopBuffer") << QStringList("Failed to unload movie.") << QStringList("Unload");
    QTest::newRow("zvtSsdUnload") << QStringList("Failed to unload movie.") << QStringList();
}

// The next movie succeeds.
void tst_BatchDownloadModelRun::failuresEndTheMovieOnly()
{
    QFETCH(const QStringList, failures);
    QFETCH(const QStringList, skipped);
    Batch batch;
    batch.scriptMovies();
    // Each movie needs another window, and has a range of times.
    for (const uint32_t number : {1, 2})
        batch.addWatched(driveMovie(number, "Kiln", 10, 320, 256))->setRangeType(BatchDownloadEntry::RANGE_IRIG);
    batch.gate().failNext(QTest::currentDataTag());
    batch.journal.clear();
    const QStringList calls = batch.run();
    for (const char *call :
         {"SetWindow 0, 0, 320", "zvtSsdLoadMovie", "FindFrameRange", "DownloadMovie", "StopBuffer", "Unload"}) {
        const bool isSkipped = skipped.contains(QString::fromLatin1(call).split(' ').first());
        QCOMPARE(calls.filter(call).size(), isSkipped ? 1 : 2);
    }
    QCOMPARE(batch.statuses(), QList<int>({BatchDownloadEntry::STATUS_FAILED, BatchDownloadEntry::STATUS_SUCCEEDED}));
    QCOMPARE(batch.lines().filter("Fail"), failures + QStringList("Failed to extract file"));
    const qsizetype failed = batch.journal.indexOf("log Failed to extract file");
    QCOMPARE(batch.journal.mid(failed + 1, 4),
             QStringList({"0 status 6", "0 progress 1", "progress 0.5", "current 1"}));
    QCOMPARE(batch.batch.itemsFailed(), 1);
    QCOMPARE(calls.last(), QStringLiteral("controller.SetWindow 0, 0, 640, 512"));
}

void tst_BatchDownloadModelRun::exceptionsFailTheirStep_data()
{
    QTest::addColumn<bool>("inTheSearch");
    QTest::addColumn<QString>("failure");
    QTest::newRow("search") << true << "Failed to find frame range.";
    QTest::newRow("transfer") << false << "Failed to download movie.";
}

// The movie is unloaded, and the next one succeeds.
void tst_BatchDownloadModelRun::exceptionsFailTheirStep()
{
    QFETCH(const bool, inTheSearch);
    QFETCH(const QString, failure);
    BatchTransfer rig;
    for (const uint32_t number : {1, 2})
        rig.add(driveMovie(number, "Kiln", 10, 320, 256))->setRangeType(BatchDownloadEntry::RANGE_IRIG);
    bool throws = true;
    const auto step
        = [&throws](bool isThis) { return isThis && std::exchange(throws, false) ? throw std::bad_alloc() : true; };
    rig.controller->findFrames = [=](auto...) { return step(inTheSearch); };
    rig.controller->download = [=](auto...) { return step(!inTheSearch); };
    QTest::ignoreMessage(QtWarningMsg, "a step of a batch download ended early: std::bad_alloc");
    const size_t mark = rig.rig.gate().mark();
    rig.batch.start();
    CameraRig::settle();
    const QStringList movie{"zvtSsdLoadMovie", "zvtSsdStopBuffer", "zvtSsdUnload"};
    QCOMPARE(rig.rig.callsSince(mark), QStringList("zvtGetSsdState") + movie + movie);
    QCOMPARE(rig.lines().filter("Fail"), QStringList({failure, "Failed to extract file"}));
    QCOMPARE(rig.entry(0)->status(), BatchDownloadEntry::STATUS_FAILED);
    QCOMPARE(rig.entry(1)->status(), BatchDownloadEntry::STATUS_SUCCEEDED);
    QCOMPARE(rig.controller->window, std::pair(uint16_t{640}, uint16_t{512}));
}

void tst_BatchDownloadModelRun::failedStopSkipsTheUnload()
{
    Batch batch;
    batch.scriptMovies();
    batch.gate().failAlways("controller.DownloadMovie");
    batch.gate().failAlways("zvtSsdStopBuffer");
    batch.add(driveMovie(1));
    QVERIFY(!batch.run().contains("zvtSsdUnload"));
    QCOMPARE(batch.lines(),
             QStringList({"Processing movie: Kiln", "Failed to download movie.", "Failed to unload movie.",
                          "Failed to extract file"}));
}

void tst_BatchDownloadModelRun::disconnectedCameraFailsEachMovie()
{
    Batch batch;
    batch.scriptMovies();
    for (const uint32_t number : {1, 2, 3})
        batch.add(driveMovie(number));
    QVERIFY(batch.runUntil("controller.DownloadMovie"));
    batch.rig.camera().disconnect();
    batch.finishRun();
    QCOMPARE(batch.statuses(), QList<int>(3, BatchDownloadEntry::STATUS_FAILED));
    QCOMPARE(batch.lines(),
             QStringList({"Processing movie: Kiln", "Failed to download movie.", "Failed to unload movie.",
                          "Failed to extract file", "Processing movie: Kiln", "Failed to extract file",
                          "Processing movie: Kiln", "Failed to extract file"}));
    QVERIFY(!batch.batch.downloading());
}

void tst_BatchDownloadModelRun::modelWithoutAController()
{
    const ZvtCameraModel root({}, nullptr);
    BatchDownloadModel batch(root.ssdTabModel());
    SsdMovieFileInfoModel movie(0, driveMovie(1), nullptr);
    QVERIFY(batch.add(&movie));
    batch.start();
    CameraRig::settle();
    QCOMPARE(batch.itemsFailed(), 1);
    QVERIFY(!batch.downloading());
}

ZVT_TEST(tst_BatchDownloadModelRun)
#include "tst_BatchDownloadModelRun.moc"
