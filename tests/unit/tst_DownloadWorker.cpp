#include "tests/support/CameraRig.h"
#include "tests/support/Test.h"
#include "tests/unit/MovieController.h"

#include "recording/DownloadWorker.h"

#include <QSignalSpy>

#include <limits>
#include <memory>
#include <new>
#include <stdexcept>

namespace
{

const QString file = QStringLiteral("/tmp/Größe.rqs");
const QString transfer = QStringLiteral("controller.DownloadMovie");

/// A camera that can load and download movies, and one worker. The camera's answers are scripted.
struct Download {
    Download()
    {
        for (const char *call : {"zvtSsdLoadMovie", "zvtSsdStopBuffer", "zvtSsdUnload", "zvtSsdAutoDownloadDone",
                                 "controller.DownloadMovie"})
            rig.gate().script(call, true);
        rig.gate().script("controller.FindFrameRange", QVariantList{20U, 30U});
    }

    template <class... Arguments> void make(Arguments... arguments)
    {
        worker = std::make_unique<DownloadWorker>(nullptr, rig.controller(), file, arguments...);
        for (const auto &[changed, name] : {std::pair{&DownloadWorker::findingFrameLimitsChanged, "finding"},
                                            std::pair{&DownloadWorker::grabbingDroppedFramesChanged, "dropped"}})
            QObject::connect(worker.get(), changed, &context, [this, text = QLatin1String(name)](bool value) {
                flags << QStringLiteral("%1 %2").arg(text).arg(value);
            });
    }

    /// Runs the worker. Returns its calls with their arguments.
    QStringList run()
    {
        const size_t mark = rig.gate().mark();
        worker->start();
        worker->wait();
        QCoreApplication::sendPostedEvents(&context);
        return callsSince(mark);
    }
    QStringList callsSince(size_t mark)
    {
        QStringList list;
        for (const auto &call : rig.gate().callsSince(mark))
            if (call.name != "controller.GetHandle")
                list << QString::fromStdString(call.name + ' ' + call.arguments).trimmed();
        return list;
    }
    QStringList namesOfRun()
    {
        QStringList names = run();
        for (QString &name : names)
            name = name.section(u' ', 0, 0);
        return names;
    }

    CameraRig rig;
    QObject context;
    QStringList flags; ///< The signals of the flags with their values.
    std::unique_ptr<DownloadWorker> worker;
};

/// The call of a transfer in the log.
QString transferOf(uint first, uint last)
{
    return QStringLiteral("%1 \"%2\", delegate, %3, %4").arg(transfer, file).arg(first).arg(last);
}

} // namespace

/// What a download asks of the camera, in order, and what it reports.
class tst_DownloadWorker : public Test
{
    Q_OBJECT

private slots:
    void downloadsFrames();
    void downloadsToTheEnd();
    void loadsAndUnloadsAMovie();
    void numberWithoutAMovieLoadsNone();
    void reportsTheEndOfARequest_data();
    void reportsTheEndOfARequest();
    void failedLoadUnloadsNothing_data();
    void failedLoadUnloadsNothing();
    void failedTransferUnloads();
    void failedUnloadIsNoFailure();

    void searchesTheFramesOfTimes();
    void timesReachTheController();
    void failedSearchKeepsItsFlag();
    void exceptionEndsItAsAFailure_data();
    void exceptionEndsItAsAFailure();
    void withoutAControllerItFails();
    void lostCameraEndsIt();

    void percentIsTruncated_data();
    void percentIsTruncated();
    void stagesAreReportedOnce();
    void abortStopsTheTransfer();
    void abortDoesNotStopTheSearch();
};

void tst_DownloadWorker::downloadsFrames()
{
    Download download;
    download.make(3U, 77U);
    QCOMPARE(download.run(), QStringList(transferOf(3, 77)));
    QVERIFY(download.worker->ok());
    QCOMPARE(download.flags, QStringList());
}

void tst_DownloadWorker::downloadsToTheEnd()
{
    Download download;
    download.make(0U, DownloadWorker::toTheEnd);
    QCOMPARE(download.run(), QStringList(transferOf(0, 4294967295U)));
}

void tst_DownloadWorker::loadsAndUnloadsAMovie()
{
    Download download;
    download.make(5, 1U, 2U, false);
    QCOMPARE(download.run(), QStringList({"zvtSsdLoadMovie 5", transferOf(1, 2), "zvtSsdStopBuffer", "zvtSsdUnload"}));
    QVERIFY(download.worker->ok());
}

void tst_DownloadWorker::numberWithoutAMovieLoadsNone()
{
    Download download;
    download.make(-1, 0U, DownloadWorker::toTheEnd, false);
    QCOMPARE(download.namesOfRun(), QStringList(transfer));
}

void tst_DownloadWorker::reportsTheEndOfARequest_data()
{
    QTest::addColumn<int>("movie");
    QTest::addColumn<bool>("fails");
    QTest::newRow("memory") << -1 << false;
    QTest::newRow("movie") << 0 << false;
    QTest::newRow("memory fails") << -1 << true;
    QTest::newRow("movie fails") << 0 << true;
}

void tst_DownloadWorker::reportsTheEndOfARequest()
{
    QFETCH(const int, movie);
    QFETCH(const bool, fails);
    Download download;
    if (fails)
        download.rig.gate().failAlways("controller.DownloadMovie");
    download.make(movie, 0U, DownloadWorker::toTheEnd, true);
    const QStringList transferred{transfer};
    QCOMPARE(download.namesOfRun(),
             (movie < 0
                  ? transferred
                  : QStringList("zvtSsdLoadMovie") + transferred + QStringList({"zvtSsdStopBuffer", "zvtSsdUnload"}))
                 + QStringList("zvtSsdAutoDownloadDone"));
    QCOMPARE(download.worker->ok(), !fails);
}

void tst_DownloadWorker::failedLoadUnloadsNothing_data()
{
    QTest::addColumn<bool>("automatic");
    QTest::newRow("automatic") << true;
    QTest::newRow("of the operator") << false;
}

void tst_DownloadWorker::failedLoadUnloadsNothing()
{
    QFETCH(const bool, automatic);
    Download download;
    download.rig.gate().failAlways("zvtSsdLoadMovie");
    download.make(0, 0U, 9U, automatic);
    QCOMPARE(download.namesOfRun(),
             QStringList("zvtSsdLoadMovie") + (automatic ? QStringList("zvtSsdAutoDownloadDone") : QStringList()));
    QVERIFY(!download.worker->ok());
}

void tst_DownloadWorker::failedTransferUnloads()
{
    Download download;
    download.rig.gate().failAlways("controller.DownloadMovie");
    download.make(2, 0U, 9U, false);
    QCOMPARE(download.namesOfRun(), QStringList({"zvtSsdLoadMovie", transfer, "zvtSsdStopBuffer", "zvtSsdUnload"}));
    QVERIFY(!download.worker->ok());
}

void tst_DownloadWorker::failedUnloadIsNoFailure()
{
    Download download;
    for (const char *call : {"zvtSsdStopBuffer", "zvtSsdUnload", "zvtSsdAutoDownloadDone"})
        download.rig.gate().failAlways(call);
    download.make(2, 0U, 9U, true);
    QCOMPARE(download.namesOfRun(),
             QStringList({"zvtSsdLoadMovie", transfer, "zvtSsdStopBuffer", "zvtSsdUnload", "zvtSsdAutoDownloadDone"}));
    QVERIFY(download.worker->ok());
}

// A range of times

void tst_DownloadWorker::searchesTheFramesOfTimes()
{
    Download download;
    download.make(hlx::CDateTime(), hlx::CDateTime());
    QCOMPARE(download.run(), QStringList({"controller.FindFrameRange object, object", transferOf(20, 30)}));
    QVERIFY(download.worker->ok());
    QCOMPARE(download.flags, QStringList({"finding 1", "finding 0"}));
}

void tst_DownloadWorker::timesReachTheController()
{
    const hlx::CDateTime start("001:00:00:00.000001");
    const hlx::CDateTime end("366:23:59:59.999999");
    const auto controller = hlx::TSharedPtr<MovieController>::make(0);
    bool asked = false;
    controller->findFrames = [&](hlx::CDateTime first, hlx::CDateTime last, unsigned int *, unsigned int *) {
        asked = first == start && last == end;
        return false;
    };
    DownloadWorker worker(nullptr, controller, file, start, end);
    worker.start();
    worker.wait();
    QVERIFY(asked);
}

void tst_DownloadWorker::failedSearchKeepsItsFlag()
{
    Download download;
    download.rig.gate().failAlways("controller.FindFrameRange");
    download.make(hlx::CDateTime(), hlx::CDateTime());
    QCOMPARE(download.namesOfRun(), QStringList("controller.FindFrameRange"));
    QVERIFY(!download.worker->ok());
    QCOMPARE(download.flags, QStringList("finding 1"));
}

// Failures

void tst_DownloadWorker::exceptionEndsItAsAFailure_data()
{
    QTest::addColumn<bool>("inSearch");
    QTest::newRow("search") << true;
    QTest::newRow("transfer") << false;
}

void tst_DownloadWorker::exceptionEndsItAsAFailure()
{
    QFETCH(const bool, inSearch);
    Download download;
    const auto controller = hlx::TSharedPtr<MovieController>::make(download.rig.camera().handle());
    controller->findFrames = [](hlx::CDateTime, hlx::CDateTime, unsigned int *, unsigned int *) -> bool {
        throw std::runtime_error("no memory");
    };
    controller->download
        = [](const MovieController::Progress &, unsigned int, unsigned int) -> bool { throw std::bad_alloc(); };
    if (inSearch)
        download.worker
            = std::make_unique<DownloadWorker>(nullptr, controller, file, hlx::CDateTime(), hlx::CDateTime());
    else
        download.worker = std::make_unique<DownloadWorker>(nullptr, controller, file, 2, 0U, 9U, true);
    QTest::ignoreMessage(QtWarningMsg,
                         inSearch ? "a download ended early: no memory" : "a download ended early: std::bad_alloc");
    QCOMPARE(download.run(),
             inSearch
                 ? QStringList()
                 : QStringList({"zvtSsdLoadMovie 2", "zvtSsdStopBuffer", "zvtSsdUnload", "zvtSsdAutoDownloadDone"}));
    QVERIFY(!download.worker->ok());
}

// Another camera gets no call.
void tst_DownloadWorker::withoutAControllerItFails()
{
    Download download;
    download.worker = std::make_unique<DownloadWorker>(nullptr, DownloadWorker::Controller(), file, 3, 0U, 9U, true);
    QCOMPARE(download.run(), QStringList());
    QVERIFY(!download.worker->ok());
    download.worker = std::make_unique<DownloadWorker>(nullptr, DownloadWorker::Controller(), file, 0U, 9U);
    QCOMPARE(download.run(), QStringList());
    QVERIFY(!download.worker->ok());
}

void tst_DownloadWorker::lostCameraEndsIt()
{
    Download download;
    download.rig.gate().hold("zvtSsdLoadMovie");
    download.make(1, 0U, 9U, true);
    const size_t mark = download.rig.gate().mark();
    download.worker->start();
    QVERIFY(download.rig.gate().waitHeld("zvtSsdLoadMovie"));
    download.rig.camera().disconnect();
    download.rig.gate().release("*");
    QVERIFY(download.worker->wait(10'000));
    QVERIFY(!download.worker->ok());
    QCOMPARE(download.callsSince(mark), QStringList({"zvtSsdLoadMovie 1", "zvtSsdAutoDownloadDone"}));
}

// The progress

void tst_DownloadWorker::percentIsTruncated_data()
{
    constexpr uint most = std::numeric_limits<uint>::max();
    QTest::addColumn<uint>("current");
    QTest::addColumn<uint>("total");
    QTest::addColumn<int>("percent");
    QTest::newRow("start") << 0U << 200U << 0;
    QTest::newRow("below one") << 1U << 101U << 0;
    QTest::newRow("half") << 100U << 200U << 50;
    QTest::newRow("last frame") << 199U << 200U << 99;
    QTest::newRow("end") << 200U << 200U << 100;
    // The quotient of doubles is a little below 0.29.
    QTest::newRow("rounded quotient") << 29U << 100U << 28;
    QTest::newRow("no frames") << 0U << 0U << 0;
    QTest::newRow("part of nothing") << 5U << 0U << 0;
    QTest::newRow("greatest") << most << most << 100;
    QTest::newRow("beyond the end") << 150U << 100U << 150;
    QTest::newRow("more than an int") << most << 1U << std::numeric_limits<int>::max();
}

void tst_DownloadWorker::percentIsTruncated()
{
    QFETCH(const uint, current);
    QFETCH(const uint, total);
    QFETCH(const int, percent);
    DownloadWorker worker(nullptr, {}, file, 0U, 0U);
    const QSignalSpy progress(&worker, &DownloadWorker::progressChanged);
    QCOMPARE(worker.progress(0, current, total), 0);
    QCOMPARE(QList<QVariantList>(progress), QList<QVariantList>{{percent}});
}

// Each change of the stage, before the progress. The stage before the first one is 0.
void tst_DownloadWorker::stagesAreReportedOnce()
{
    DownloadWorker worker(nullptr, {}, file, 0U, 0U);
    QStringList order;
    QObject::connect(&worker, &DownloadWorker::grabbingDroppedFramesChanged, &worker,
                     [&order](bool value) { order << (value ? "dropped" : "not dropped"); });
    QObject::connect(&worker, &DownloadWorker::progressChanged, &worker,
                     [&order](int value) { order << QString::number(value); });
    worker.progress(0, 0, 2);
    worker.progress(0, 2, 2);
    worker.progress(1, 0, 1);
    worker.progress(1, 1, 1);
    worker.progress(2, 0, 4);
    worker.progress(0, 1, 4);
    QCOMPARE(order, QStringList({"0", "100", "dropped", "0", "100", "not dropped", "0", "not dropped", "25"}));
}

void tst_DownloadWorker::abortStopsTheTransfer()
{
    const auto controller = hlx::TSharedPtr<MovieController>::make(0);
    DownloadWorker worker(nullptr, controller, file, 0U, 9U);
    QList<int> answers;
    controller->download = [&](const MovieController::Progress &progress, unsigned int, unsigned int) {
        answers << progress(0, 0, 10);
        worker.abort();
        answers << progress(0, 1, 10) << progress(1, 0, 1);
        return false;
    };
    worker.start();
    worker.wait();
    QCOMPARE(answers, QList<int>({0, -1, -1}));
    QVERIFY(!worker.ok());
}

// It is noticed at the first progress of the transfer.
void tst_DownloadWorker::abortDoesNotStopTheSearch()
{
    const auto controller = hlx::TSharedPtr<MovieController>::make(0);
    DownloadWorker worker(nullptr, controller, file, hlx::CDateTime(), hlx::CDateTime());
    controller->findFrames = [&](hlx::CDateTime, hlx::CDateTime, unsigned int *, unsigned int *) {
        worker.abort();
        return true;
    };
    int answer = 0;
    controller->download = [&](const MovieController::Progress &progress, unsigned int, unsigned int) {
        answer = progress(0, 0, 10);
        return answer == 0;
    };
    worker.start();
    worker.wait();
    QCOMPARE(answer, -1);
    QVERIFY(!worker.ok());
}

ZVT_TEST(tst_DownloadWorker)
#include "tst_DownloadWorker.moc"
