#include "tests/support/Test.h"
#include "tests/unit/DownloadRig.h"
#include "tests/unit/MovieController.h"
#include "tests/unit/MovieRig.h"

#include <QSemaphore>

#include <atomic>
#include <memory>
#include <new>

namespace
{

const QString findCall = QStringLiteral("controller.FindFrameRange");
const QStringList startSignals{"progressChanged", "downloadingChanged"};

/// The SSD tab of a controller whose downloads are functions of the test.
struct Foreign {
    Foreign()
        : controller(hlx::TSharedPtr<MovieController>::make(rig.camera().handle())), root(controller, nullptr),
          model(*root.ssdTabModel())
    {
        CameraRig::settle();
        log.watch(&model);
    }

    bool download()
    {
        model.downloadTimeRange("file:///tmp/a.rqs", "001:02:03:04.000005", "366:23:59:59.999999");
        return finishDownload(model);
    }

    CameraRig rig;
    hlx::TSharedPtr<MovieController> controller;
    ZvtCameraModel root;
    SsdTabModel &model;
    SignalLog log;
};

} // namespace

/// The downloads of the operator.
class tst_SsdTabModelDownload : public Test
{
    Q_OBJECT

private slots:
    void startsWithoutADownload();
    void fourKindsOfFrames();
    void timesAreReadFromTexts();
    void urlBecomesAPath_data();
    void urlBecomesAPath();
    void startSignalsInOrder();
    void endIsSignalledOnceAfterAllMembers_data();
    void endIsSignalledOnceAfterAllMembers();
    void nextOneMayStartAtOnce();
    void progressAndFlagsAreShown();
    void onlyChangedProgressIsSignalled();
    void failedSearchKeepsItsFlagUntilTheNext();
    void secondDownloadIsThrownAway();

    void abortEndsAsAFailure();
    void abortDuringTheSearchWaitsForTheTransfer();
    void abortWithoutADownloadDoesNothing();
    void exceptionEndsAsAFailure();

    void cameraIsNotPolledMeanwhile();
    void cameraIsNotPolledDuringABatch();
    void pollThatRunsAtTheStartIsShown();
    void disconnectionEndsIt();
    void deletionWaitsForTheAbortedDownload();
    void deletionDuringTheSearchWaitsForTheTransfer();
    void deletionBeforeTheEndIsShown();
    void workersAreFreed();
    void downloadWithoutARoot();
};

void tst_SsdTabModelDownload::startsWithoutADownload()
{
    const DownloadRig rig;
    for (const char *flag : {"downloading", "downloadOk", "findingFrameLimits", "grabbingDroppedFrames"})
        QCOMPARE(rig.model.property(flag), QVariant(false));
    QCOMPARE(rig.model.progress(), 0);
}

void tst_SsdTabModelDownload::fourKindsOfFrames()
{
    DownloadRig rig;
    rig.read();
    const QString file = rig.url("a.rqs");
    SsdTabModel &model = rig.model;
    QCOMPARE(rig.downloadOf([&] { model.download(file); }), QStringList(rig.transfer("a.rqs", 7, 300)));
    QCOMPARE(rig.downloadOf([&] { model.downloadFrameRange(file, 3, 4294967294U); }),
             QStringList(rig.transfer("a.rqs", 3, 4294967294U)));
    QCOMPARE(rig.downloadOf([&] { model.downloadEntireMovie(file); }),
             QStringList(rig.transfer("a.rqs", 0, 4294967295U)));
    QCOMPARE(rig.downloadOf([&] { model.downloadTimeRange(file, "001:00:00:00.000000", "002:00:00:00.000000"); }),
             QStringList({findCall + " object, object", rig.transfer("a.rqs", 20, 30)}));
    QVERIFY(model.downloadOk());
}

void tst_SsdTabModelDownload::timesAreReadFromTexts()
{
    Foreign foreign;
    hlx::CDateTime start;
    hlx::CDateTime end;
    foreign.controller->findFrames = [&](hlx::CDateTime first, hlx::CDateTime last, unsigned int *, unsigned int *) {
        start = first;
        end = last;
        return true;
    };
    QVERIFY(foreign.download());
    QVERIFY(start == hlx::CDateTime::NewYDHMS(1, 2, 3, 4, 0, 5));
    QVERIFY(end == hlx::CDateTime::NewYDHMS(366, 23, 59, 59, 999, 999));
}

void tst_SsdTabModelDownload::urlBecomesAPath_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("path");
    QTest::newRow("file") << "file:///tmp/a b.rqs"
                          << "/tmp/a b.rqs";
    QTest::newRow("encoded") << "file:///tmp/%C3%9C%20%231.rqs" << QString::fromUtf8("/tmp/Ü #1.rqs");
    QTest::newRow("no file") << "/tmp/a.rqs"
                             << "";
}

void tst_SsdTabModelDownload::urlBecomesAPath()
{
    QFETCH(const QString, url);
    QFETCH(const QString, path);
    DownloadRig rig;
    QCOMPARE(rig.downloadOf([&] { rig.model.downloadFrameRange(url, 1, 2); }),
             QStringList(QStringLiteral("%1 \"%2\", delegate, 1, 2").arg(transferCall, path)));
}

void tst_SsdTabModelDownload::startSignalsInOrder()
{
    DownloadRig rig;
    QStringList seen;
    QObject::connect(&rig.model, &SsdTabModel::progressChanged, &rig.model,
                     [&] { seen << QStringLiteral("progress, downloading %1").arg(rig.model.downloading()); });
    QObject::connect(&rig.model, &SsdTabModel::downloadingChanged, &rig.model,
                     [&] { seen << QStringLiteral("downloading %1").arg(rig.model.downloading()); });
    QVERIFY(rig.holdDownload());
    QCOMPARE(rig.log.take(), startSignals);
    QCOMPARE(seen, QStringList({"progress, downloading 0", "downloading 1"}));
    QVERIFY(rig.releaseDownload());
    QCOMPARE(rig.log.take(), QStringList("downloadingChanged"));
}

void tst_SsdTabModelDownload::endIsSignalledOnceAfterAllMembers_data()
{
    QTest::addColumn<bool>("ok");
    QTest::newRow("succeeds") << true;
    QTest::newRow("fails") << false;
}

void tst_SsdTabModelDownload::endIsSignalledOnceAfterAllMembers()
{
    QFETCH(const bool, ok);
    DownloadRig rig;
    // The result of the last download, which must have been replaced.
    rig.gate().script(transferCall.toStdString(), !ok);
    rig.downloadOf([&] { rig.model.downloadEntireMovie(rig.url("a.rqs")); });
    QCOMPARE(rig.model.downloadOk(), !ok);
    rig.gate().script(transferCall.toStdString(), ok);
    QVERIFY(rig.holdDownload());
    QCOMPARE(rig.model.downloadOk(), !ok);
    QStringList seen;
    QObject::connect(&rig.model, &SsdTabModel::downloadingChanged, &rig.model, [&] {
        seen << QStringLiteral("downloading %1, ok %2").arg(rig.model.downloading()).arg(rig.model.downloadOk());
    });
    QVERIFY(rig.releaseDownload());
    QCOMPARE(seen, QStringList(QStringLiteral("downloading 0, ok %1").arg(ok)));
}

void tst_SsdTabModelDownload::nextOneMayStartAtOnce()
{
    DownloadRig rig;
    int left = 2;
    QObject::connect(&rig.model, &SsdTabModel::downloadingChanged, &rig.model, [&] {
        if (!rig.model.downloading() && left-- > 0)
            rig.model.downloadEntireMovie(rig.url("next.rqs"));
    });
    const size_t mark = rig.gate().mark();
    rig.model.downloadEntireMovie(rig.url("a.rqs"));
    QTRY_COMPARE(left, -1);
    QVERIFY(rig.finish());
    QCOMPARE(rig.calls(mark, false),
             QStringList({rig.transfer("a.rqs"), rig.transfer("next.rqs"), rig.transfer("next.rqs")}));
}

void tst_SsdTabModelDownload::progressAndFlagsAreShown()
{
    Foreign foreign;
    foreign.controller->download = [](const MovieController::Progress &progress, unsigned int, unsigned int) {
        return progress(0, 50, 100) == 0 && progress(1, 1, 4) == 0;
    };
    QStringList seen;
    const auto note
        = [&seen](const char *name, int value) { seen << QStringLiteral("%1 %2").arg(QLatin1String(name)).arg(value); };
    SsdTabModel &model = foreign.model;
    QObject::connect(&model, &SsdTabModel::progressChanged, &model, [&] { note("progress", model.progress()); });
    QObject::connect(&model, &SsdTabModel::findingFrameLimitsChanged, &model,
                     [&] { note("finding", model.findingFrameLimits()); });
    QObject::connect(&model, &SsdTabModel::grabbingDroppedFramesChanged, &model,
                     [&] { note("dropped", model.grabbingDroppedFrames()); });
    QVERIFY(foreign.download());
    QCOMPARE(seen, QStringList({"progress 0", "finding 1", "finding 0", "progress 50", "dropped 1", "progress 25"}));
    // It stays until the next download.
    QVERIFY(model.grabbingDroppedFrames());
    seen.clear();
    QVERIFY(foreign.download());
    QCOMPARE(seen.mid(0, 2), QStringList({"progress 0", "dropped 0"}));
}

void tst_SsdTabModelDownload::onlyChangedProgressIsSignalled()
{
    Foreign foreign;
    foreign.controller->download = [](const MovieController::Progress &progress, unsigned int, unsigned int) {
        for (const unsigned int done : {0U, 1U, 2U, 1000U, 1001U})
            progress(0, done, 2000);
        return true;
    };
    QVERIFY(foreign.download());
    // At the start, and for 50 percent.
    QCOMPARE(foreign.log.take().count("progressChanged"), 2);
    QCOMPARE(foreign.model.progress(), 50);
}

void tst_SsdTabModelDownload::failedSearchKeepsItsFlagUntilTheNext()
{
    Foreign foreign;
    foreign.controller->findFrames
        = [](hlx::CDateTime, hlx::CDateTime, unsigned int *, unsigned int *) { return false; };
    QVERIFY(foreign.download());
    QVERIFY(foreign.model.findingFrameLimits());
    QVERIFY(!foreign.model.downloadOk());
    QCOMPARE(foreign.log.take(), startSignals + QStringList({"findingFrameLimitsChanged", "downloadingChanged"}));
    foreign.model.downloadEntireMovie("file:///tmp/a.rqs");
    QVERIFY(!foreign.model.findingFrameLimits());
    QCOMPARE(foreign.log.take(), startSignals + QStringList("findingFrameLimitsChanged"));
    QVERIFY(finishDownload(foreign.model));
    QVERIFY(foreign.model.downloadOk());
}

void tst_SsdTabModelDownload::secondDownloadIsThrownAway()
{
    DownloadRig rig;
    QVERIFY(rig.holdDownload());
    rig.log.take();
    const size_t mark = rig.gate().mark();
    rig.model.downloadEntireMovie(rig.url("b.rqs"));
    rig.model.downloadTimeRange(rig.url("b.rqs"), "001:00:00:00.000000", "001:00:00:00.000000");
    QCOMPARE(rig.log.take(), QStringList());
    QCOMPARE(rig.workers(), 3);
    CameraRig::settle();
    QCOMPARE(rig.workers(), 1);
    QVERIFY(rig.releaseDownload());
    QCOMPARE(rig.calls(mark, false), QStringList());
    QVERIFY(rig.model.downloadOk());
}

// Abort

void tst_SsdTabModelDownload::abortEndsAsAFailure()
{
    Foreign foreign;
    foreign.controller->download = [](const MovieController::Progress &progress, unsigned int, unsigned int) {
        while (progress(0, 1, 2) == 0)
            QThread::yieldCurrentThread();
        return false;
    };
    foreign.model.downloadEntireMovie("file:///tmp/a.rqs");
    QTRY_COMPARE(foreign.model.progress(), 50);
    foreign.model.abortDownload();
    QVERIFY(finishDownload(foreign.model));
    QVERIFY(!foreign.model.downloadOk());
}

void tst_SsdTabModelDownload::abortDuringTheSearchWaitsForTheTransfer()
{
    DownloadRig rig;
    QVERIFY(rig.holdDownload(findCall));
    rig.model.abortDownload();
    QVERIFY(rig.model.downloading());
    const size_t mark = rig.gate().mark();
    // A scripted transfer asks for no progress.
    QVERIFY(rig.releaseDownload());
    QCOMPARE(rig.calls(mark, false), QStringList(rig.transfer("held.rqs", 20, 30)));
    QVERIFY(rig.model.downloadOk());
}

void tst_SsdTabModelDownload::abortWithoutADownloadDoesNothing()
{
    DownloadRig rig;
    rig.model.abortDownload();
    rig.downloadOf([&] { rig.model.downloadEntireMovie(rig.url("a.rqs")); });
    QVERIFY(rig.model.downloadOk());
    rig.model.abortDownload();
    rig.downloadOf([&] { rig.model.downloadEntireMovie(rig.url("a.rqs")); });
    QVERIFY(rig.model.downloadOk());
}

void tst_SsdTabModelDownload::exceptionEndsAsAFailure()
{
    Foreign foreign;
    foreign.controller->download
        = [](const MovieController::Progress &, unsigned int, unsigned int) -> bool { throw std::bad_alloc(); };
    QTest::ignoreMessage(QtWarningMsg, "a download ended early: std::bad_alloc");
    QVERIFY(foreign.download());
    QVERIFY(!foreign.model.downloadOk());
    QCOMPARE(foreign.log.take().constLast(), "downloadingChanged");
}

// The camera meanwhile

void tst_SsdTabModelDownload::cameraIsNotPolledMeanwhile()
{
    DownloadRig rig;
    rig.enter(SsdTabModel::COMPLETE);
    QVERIFY(rig.holdDownload());
    rig.setCameraState(SsdTabModel::PLAYING);
    const size_t mark = rig.gate().mark();
    startPoll(rig.model);
    // Nor at once after a command.
    rig.model.stopRecording();
    QCOMPARE(rig.calls(mark, true), QStringList("zvtSsdRecordStop"));
    QCOMPARE(rig.calls(mark, false), QStringList());
    QCOMPARE(rig.model.state(), SsdTabModel::COMPLETE);
    QVERIFY(pollTimer(rig.model).isActive());
    QVERIFY(rig.releaseDownload());
    QCOMPARE(rig.poll().value(0), "zvtGetSsdState");
    QCOMPARE(rig.model.state(), SsdTabModel::PLAYING);
}

void tst_SsdTabModelDownload::cameraIsNotPolledDuringABatch()
{
    DownloadRig rig;
    zvtSSsdMovieInfo info = movieRecord();
    info.width = 640;
    info.height = 513;
    SsdMovieFileInfoModel movie(0, info, nullptr);
    BatchDownloadModel &batch = *rig.model.batchDownload();
    batch.setOutputDir(rig.folder.path());
    batch.add(&movie);
    rig.gate().hold("zvtSsdLoadMovie");
    batch.start();
    QVERIFY(rig.gate().waitHeld("zvtSsdLoadMovie"));
    const size_t mark = rig.gate().mark();
    startPoll(rig.model);
    rig.model.stopRecording();
    QCOMPARE(rig.calls(mark, true), QStringList("zvtSsdRecordStop"));
    QCOMPARE(rig.calls(mark, false), QStringList());
    rig.release();
    QVERIFY(!batch.downloading());
    QCOMPARE(rig.poll().value(0), "zvtGetSsdState");
}

void tst_SsdTabModelDownload::pollThatRunsAtTheStartIsShown()
{
    DownloadRig rig;
    rig.enter(SsdTabModel::COMPLETE);
    QVERIFY(rig.holdPoll());
    QVERIFY(rig.holdDownload());
    rig.setCameraState(SsdTabModel::PLAYING);
    rig.gate().release("zvtGetSsd*");
    CameraRig::settle();
    QVERIFY(rig.model.downloading());
    QCOMPARE(rig.model.state(), SsdTabModel::PLAYING);
    QVERIFY(rig.releaseDownload());
}

void tst_SsdTabModelDownload::disconnectionEndsIt()
{
    DownloadRig rig;
    QVERIFY(rig.holdDownload(findCall));
    rig.rig.camera().disconnect();
    QVERIFY(rig.releaseDownload());
    QVERIFY(!rig.model.downloadOk());
    rig.rig.camera().connect();
    rig.downloadOf([&] { rig.model.downloadEntireMovie(rig.url("a.rqs")); });
    QVERIFY(rig.model.downloadOk());
}

// The end

void tst_SsdTabModelDownload::deletionWaitsForTheAbortedDownload()
{
    Foreign foreign;
    std::atomic<bool> running{false};
    std::atomic<bool> ended{false};
    foreign.controller->download = [&](const MovieController::Progress &progress, unsigned int, unsigned int) {
        running = true;
        while (progress(0, 0, 1) == 0)
            QThread::yieldCurrentThread();
        ended = true;
        return false;
    };
    auto model = std::make_unique<SsdTabModel>(&foreign.root);
    model->downloadEntireMovie("file:///tmp/a.rqs");
    QTRY_VERIFY(running);
    model.reset();
    QVERIFY(ended);
}

// The search cannot be stopped: the abort takes effect at the first progress of the transfer.
void tst_SsdTabModelDownload::deletionDuringTheSearchWaitsForTheTransfer()
{
    Foreign foreign;
    QSemaphore searching;
    bool abortedInSearch = false;
    int answer = 0;
    bool ended = false;
    foreign.controller->findFrames = [&](hlx::CDateTime, hlx::CDateTime, unsigned int *, unsigned int *) {
        searching.release();
        abortedInSearch = waitForAbort();
        return true;
    };
    foreign.controller->download = [&](const MovieController::Progress &progress, unsigned int, unsigned int) {
        answer = progress(0, 0, 10);
        ended = true;
        return false;
    };
    auto model = std::make_unique<SsdTabModel>(&foreign.root);
    model->downloadTimeRange("file:///tmp/a.rqs", "001:00:00:00.000000", "002:00:00:00.000000");
    QVERIFY(searching.tryAcquire(1, 10'000));
    model.reset();
    QVERIFY(abortedInSearch && ended);
    QCOMPARE(answer, -1);
}

// The thread has ended, but no event has reached the model.
void tst_SsdTabModelDownload::deletionBeforeTheEndIsShown()
{
    Foreign foreign;
    auto model = std::make_unique<SsdTabModel>(&foreign.root);
    model->downloadEntireMovie("file:///tmp/a.rqs");
    QVERIFY(model->findChild<DownloadWorker *>()->wait(10'000));
    model.reset();
    CameraRig::settle();
}

void tst_SsdTabModelDownload::workersAreFreed()
{
    DownloadRig rig;
    QVERIFY(rig.holdDownload());
    QCOMPARE(rig.workers(), 1);
    QVERIFY(rig.releaseDownload());
    QCOMPARE(rig.workers(), 0);
}

void tst_SsdTabModelDownload::downloadWithoutARoot()
{
    QObject parent;
    SsdTabModel model(&parent);
    model.downloadEntireMovie("file:///tmp/a.rqs");
    QVERIFY(model.downloading());
    QTRY_VERIFY(!model.downloading());
    QVERIFY(!model.downloadOk());
}

ZVT_TEST(tst_SsdTabModelDownload)
#include "tst_SsdTabModelDownload.moc"
