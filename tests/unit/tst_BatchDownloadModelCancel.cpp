#include "tests/support/Test.h"
#include "tests/unit/BatchTransferRig.h"

#include <QCoreApplication>

#include "hlxui/IInvokeEvent.h"

namespace
{

/// Counts the posted calls that reach an object of which it is an event filter.
class InvokedEvents : public QObject
{
public:
    bool eventFilter(QObject * /*object*/, QEvent *event) override
    {
        count += dynamic_cast<IInvokeEvent *>(event) ? 1 : 0;
        return false;
    }

    int count = 0;
};

} // namespace

/// What the progress of a transfer and a cancellation do to a run of the batch download, and what happens to a run
/// whose model is deleted.
class tst_BatchDownloadModelCancel : public Test
{
    Q_OBJECT

private slots:
    void progressBelongsToTheMovieInWork();
    void secondStageShowsThatFramesAreFetchedAgain();
    void progressOfNothingIsZero();
    void progressIsPostedAgainOnlyWhenItIsHandled();

    void cancelStopsTheTransfer();
    void cancelledMovieIsUnloadedAndTheWindowComesBack();
    void cancelAfterTheLastMovieIsLogged();
    void cancelWithAFailureHasNoLineOfTheFailure();
    void cancelWithoutARunIsForgotten();
    void cancelOfTheLastRunIsForgotten();

    void deletionWaitsForTheRun();
    void deletionDropsTheEventsOfTheRun();
    void disconnectionEndsTheRun();
};

// The GUI thread learns only later which movie is the current one.
void tst_BatchDownloadModelCancel::progressBelongsToTheMovieInWork()
{
    BatchTransfer rig;
    QList<QList<double>> progress(2);
    for (int row = 0; row < 2; ++row) {
        const BatchDownloadEntry *entry = rig.add(driveMovie(1));
        QObject::connect(entry, &BatchDownloadEntry::progressChanged, entry,
                         [&progress, row, entry] { progress[row] << entry->progress(); });
    }
    unsigned int current = 0;
    rig.controller->download
        = [&current](const MovieController::Progress &report, auto...) { return report(0, ++current, 4) == 0; };
    rig.batch.start();
    CameraRig::settle();
    QCOMPARE(progress, QList<QList<double>>({{0.25, 1.0}, {0.5, 1.0}}));
}

// Until the next status of the movie, also if the first stage comes back.
void tst_BatchDownloadModelCancel::secondStageShowsThatFramesAreFetchedAgain()
{
    BatchTransfer rig;
    QList<int> statuses;
    const BatchDownloadEntry *entry = rig.add(driveMovie(1));
    QObject::connect(entry, &BatchDownloadEntry::statusChanged, entry, [&] { statuses << entry->status(); });
    rig.controller->download = [](const MovieController::Progress &report, auto...) {
        for (const int stage : {0, 1, 0, 2, 1})
            report(stage, 1, 2);
        return true;
    };
    rig.batch.start();
    CameraRig::settle();
    QCOMPARE(statuses, QList<int>({1, 3, 4, 7}));
}

void tst_BatchDownloadModelCancel::progressOfNothingIsZero()
{
    BatchTransfer rig;
    QList<double> progress;
    const BatchDownloadEntry *entry = rig.add(driveMovie(1));
    QObject::connect(entry, &BatchDownloadEntry::progressChanged, entry, [&] { progress << entry->progress(); });
    rig.controller->download = [&rig](const MovieController::Progress &report, auto...) {
        report(0, 1, 2);
        rig.reported.release();
        rig.proceed.acquire();
        return report(0, 0, 0) == 0;
    };
    rig.batch.start();
    rig.reported.acquire();
    QCoreApplication::sendPostedEvents();
    QCOMPARE(progress, QList<double>({0.5}));
    rig.proceed.release();
    CameraRig::settle();
    QCOMPARE(progress, QList<double>({0.5, 0.0, 1.0}));
}

// A transfer may report faster than the GUI thread handles events. Here this thread handles none during the run.
void tst_BatchDownloadModelCancel::progressIsPostedAgainOnlyWhenItIsHandled()
{
    constexpr unsigned int reports = 10'000;
    BatchTransfer rig;
    QList<double> progress;
    const BatchDownloadEntry *entry = rig.add(driveMovie(1));
    QObject::connect(entry, &BatchDownloadEntry::progressChanged, entry, [&] { progress << entry->progress(); });
    rig.controller->download = [](const MovieController::Progress &report, auto...) {
        for (unsigned int done = 1; done <= reports; ++done)
            report(0, done, 2 * reports);
        return true;
    };
    InvokedEvents events;
    rig.batch.installEventFilter(&events);
    rig.batch.start();
    CameraRig::settle();
    QCOMPARE(progress, QList<double>({0.5, 1.0}));
    // That of the transfer, 3 statuses, the progress 0 and 1, the current movie, a line, and the progress of the run.
    QCOMPARE(events.count, 9);
}

void tst_BatchDownloadModelCancel::cancelStopsTheTransfer()
{
    BatchTransfer rig;
    for (const uint32_t number : {1, 2, 3})
        rig.add(driveMovie(number));
    rig.startWaiting();
    rig.batch.cancel();
    QVERIFY(rig.batch.downloading());
    rig.proceed.release();
    CameraRig::settle();
    QCOMPARE(rig.answers, QList<int>({0, -1}));
    QCOMPARE(rig.lines(), QStringList({"Processing movie: Kiln", "Failed to download movie.", "Extract canceled"}));
    QCOMPARE(rig.entry(0)->status(), BatchDownloadEntry::STATUS_FAILED);
    QCOMPARE(rig.entry(0)->progress(), 1.0);
    QCOMPARE(rig.entry(1)->status(), BatchDownloadEntry::STATUS_NOT_STARTED);
    QCOMPARE(rig.batch.itemsFailed(), 1);
    QCOMPARE(rig.batch.itemsNotStarted(), 2);
    QCOMPARE(rig.batch.itemsSucceeded(), 0);
    QVERIFY(!rig.batch.downloading());
}

void tst_BatchDownloadModelCancel::cancelledMovieIsUnloadedAndTheWindowComesBack()
{
    BatchTransfer rig;
    rig.add(driveMovie(1, "Kiln", 10, 320, 256));
    const size_t mark = rig.rig.gate().mark();
    rig.startWaiting();
    QCOMPARE(rig.controller->window, std::pair(uint16_t{320}, uint16_t{256}));
    rig.batch.cancel();
    rig.proceed.release();
    CameraRig::settle();
    QCOMPARE(rig.rig.callsSince(mark),
             QStringList({"zvtGetSsdState", "zvtSsdLoadMovie", "zvtSsdStopBuffer", "zvtSsdUnload"}));
    QCOMPARE(rig.controller->window, std::pair(uint16_t{640}, uint16_t{512}));
}

void tst_BatchDownloadModelCancel::cancelAfterTheLastMovieIsLogged()
{
    Batch batch;
    batch.scriptMovies();
    batch.add(driveMovie(1));
    QVERIFY(batch.runUntil("zvtSsdUnload"));
    batch.batch.cancel();
    batch.finishRun();
    QCOMPARE(batch.lines(), QStringList({"Processing movie: Kiln", "Extract canceled"}));
    QCOMPARE(batch.batch.itemsSucceeded(), 1);
}

void tst_BatchDownloadModelCancel::cancelWithAFailureHasNoLineOfTheFailure()
{
    Batch batch;
    batch.scriptMovies();
    batch.gate().failAlways("zvtSsdLoadMovie");
    batch.add(driveMovie(1));
    QVERIFY(batch.runUntil("zvtSsdLoadMovie"));
    batch.batch.cancel();
    batch.finishRun();
    QCOMPARE(batch.lines(), QStringList({"Processing movie: Kiln", "Failed to load movie.", "Extract canceled"}));
    QCOMPARE(batch.batch.itemsFailed(), 1);
}

void tst_BatchDownloadModelCancel::cancelWithoutARunIsForgotten()
{
    Batch batch;
    batch.scriptMovies();
    batch.add(driveMovie(1));
    batch.batch.cancel();
    batch.run();
    QCOMPARE(batch.lines(), QStringList("Processing movie: Kiln"));
}

void tst_BatchDownloadModelCancel::cancelOfTheLastRunIsForgotten()
{
    Batch batch;
    batch.scriptMovies();
    batch.add(driveMovie(1));
    batch.add(driveMovie(2));
    QVERIFY(batch.runUntil("zvtSsdLoadMovie"));
    batch.batch.cancel();
    batch.finishRun();
    QCOMPARE(batch.batch.itemsNotStarted(), 1);
    batch.run();
    QCOMPARE(batch.batch.itemsSucceeded(), 2);
    QVERIFY(!batch.lines().contains("Extract canceled"));
}

// It does not cancel the run either: the movie is transferred to its end, and the next one, too.
void tst_BatchDownloadModelCancel::deletionWaitsForTheRun()
{
    BatchTransfer rig;
    rig.add(driveMovie(1, "Kiln", 10, 320, 256));
    rig.add(driveMovie(2, "Kiln", 10, 320, 256));
    rig.rig.gate().delay(20, "zvtSsdUnload");
    const size_t mark = rig.rig.gate().mark();
    rig.startWaiting();
    rig.proceed.release(2);
    rig.root.reset();
    QCOMPARE(rig.answers, QList<int>({0, 0, 0, 0}));
    QCOMPARE(rig.rig.callsSince(mark).filter("zvtSsdUnload").size(), 2);
    QCOMPARE(rig.controller->window, std::pair(uint16_t{640}, uint16_t{512}));
    CameraRig::settle();
}

// No event is handled while the model is deleted. One that is handled later would use deleted objects, which only the
// sanitizers are certain to find.
void tst_BatchDownloadModelCancel::deletionDropsTheEventsOfTheRun()
{
    BatchTransfer rig;
    const BatchDownloadEntry *entry = rig.add(driveMovie(1));
    rig.controller->download = [](const MovieController::Progress &report, auto...) { return report(0, 1, 4) == 0; };
    int changes = 0;
    const QObject context;
    rig.batch.start();
    QObject::connect(entry, &BatchDownloadEntry::statusChanged, &context, [&changes] { ++changes; });
    QObject::connect(&rig.batch, &BatchDownloadModel::progressChanged, &context, [&changes] { ++changes; });
    rig.root.reset();
    CameraRig::settle();
    QCOMPARE(changes, 0);
}

void tst_BatchDownloadModelCancel::disconnectionEndsTheRun()
{
    BatchTransfer rig;
    rig.add(driveMovie(1));
    rig.add(driveMovie(2));
    rig.startWaiting();
    rig.rig.camera().disconnect();
    rig.proceed.release(2);
    CameraRig::settle();
    QCOMPARE(rig.batch.itemsFailed(), 2);
    QVERIFY(!rig.batch.downloading());
    QCOMPARE(rig.lines(),
             QStringList({"Processing movie: Kiln", "Failed to unload movie.", "Failed to extract file",
                          "Processing movie: Kiln", "Failed to load movie.", "Failed to extract file"}));
}

ZVT_TEST(tst_BatchDownloadModelCancel)
#include "tst_BatchDownloadModelCancel.moc"
