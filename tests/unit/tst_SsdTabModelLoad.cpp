#include "tests/support/Test.h"
#include "tests/unit/MovieRig.h"

#include <QThreadPool>

namespace
{

const QStringList loadReads{"zvtGetSsdPlaybackFrame", "zvtGetSsdStartFrame", "zvtGetSsdEndFrame",
                            "zvtGetSsdNumFramesAcquired"};
const QString windowRead = QStringLiteral("zvtGetWindow 0");

} // namespace

/// The load of a movie of the drive into the memory, and the window that it needs.
class tst_SsdTabModelLoad : public Test
{
    Q_OBJECT

private slots:
    void loadsInOrder();
    void windowOfTheSameSizeStays();
    void windowIsKeptUntilStop();
    void firstOfSeveralWindowsIsKept();
    void refusedWindowIsKept();
    void refusedWindowAtTheEndIsForgotten();
    void unreadableWindowEndsTheLoad();
    void failedLoadTakesTheFrames();
    void unreadFramesStay_data();
    void unreadFramesStay();
    void secondLoadIsDropped();
    void loadIsDroppedUntilItIsShown();
    void nothingIsNotLoaded();
    void disconnectionEndsTheLoad();
    void runningLoadOutlivesTheModel();
};

void tst_SsdTabModelLoad::loadsInOrder()
{
    Movies movies;
    movies.gate().script("zvtGetSsdState", SsdTabModel::MOVIE_LOADED);
    movies.list();
    movies.log.take();
    const size_t mark = movies.gate().mark();
    QCOMPARE(movies.orderOf([&] { movies.model.loadMovie(movies.movie(1)); }),
             QStringList({"stateChanged", windowRead, "controller.SetWindow 0, 0, 320, 256"}));
    QCOMPARE(movies.model.state(), SsdTabModel::LOADING);
    QCOMPARE(movies.log.take(), stateSignals);
    // Already now, without a signal.
    QCOMPARE(movies.model.loadedMovieName(), "Flight");
    QCOMPARE(movies.model.loadedMovieNumber(), 17U);
    QVERIFY(!movies.model.movieLoaded());
    CameraRig::settle();
    QCOMPARE(movies.log.take(),
             QStringList({"currentFrameChanged", "startFrameChanged", "endFrameChanged", "totalFramesInFileChanged",
                          "fromDiskChanged", "movieLoadedChanged", "maxPlaybackRateInHertzChanged", "didLoadMovie"})
                 + stateSignals);
    QCOMPARE(movies.calls(mark, false), QStringList("zvtSsdLoadMovie 1") + loadReads);
    QCOMPARE(movies.calls(mark, true).last(), "zvtGetSsdState");
    QVERIFY(movies.model.movieLoaded() && movies.model.fromDisk());
    QCOMPARE(movies.model.state(), SsdTabModel::MOVIE_LOADED);
    QCOMPARE(movies.model.currentFrame(), 42U);
    QCOMPARE(movies.model.startFrame(), 7U);
    QCOMPARE(movies.model.endFrame(), 300U);
    QCOMPARE(movies.model.totalFramesInFile(), 350U);
}

void tst_SsdTabModelLoad::windowOfTheSameSizeStays()
{
    Movies movies;
    QCOMPARE(movies.load(640, 512), QStringList({windowRead, "zvtGetSsdState"}));
    QVERIFY(movies.model.movieLoaded());
    QCOMPARE(movies.windowsSet(movies.callsOf([&] { movies.model.stop(); })), QStringList());
}

void tst_SsdTabModelLoad::windowIsKeptUntilStop()
{
    Movies movies;
    movies.load(320, 256);
    const QStringList ends{"zvtSsdStopBuffer", "zvtSsdUnload", "zvtGetSsdPlaybackFrame"};
    QCOMPARE(movies.callsOf([&] { movies.model.stop(); }), ends + QStringList("controller.SetWindow 8, 4, 640, 512"));
    // Once.
    QCOMPARE(movies.windowsSet(movies.callsOf([&] { movies.model.stop(); })), QStringList());
}

void tst_SsdTabModelLoad::firstOfSeveralWindowsIsKept()
{
    Movies movies;
    movies.load(320, 256);
    movies.gate().script("zvtGetWindow", QVariantList{0, 0, 320, 256});
    QCOMPARE(movies.windowsSet(movies.load(64, 4)), QStringList("controller.SetWindow 0, 0, 64, 4"));
    movies.gate().script("zvtGetWindow", QVariantList{0, 0, 64, 4});
    QCOMPARE(movies.windowsSet(movies.load(64, 4)), QStringList());
    QCOMPARE(movies.windowsSet(movies.callsOf([&] { movies.model.stop(); })),
             QStringList("controller.SetWindow 8, 4, 640, 512"));
}

void tst_SsdTabModelLoad::refusedWindowIsKept()
{
    Movies movies;
    movies.gate().failNext("controller.SetWindow");
    const size_t mark = movies.gate().mark();
    QCOMPARE(movies.load(320, 256), QStringList({windowRead, "controller.SetWindow 0, 0, 320, 256"}));
    QCOMPARE(movies.calls(mark, false), QStringList());
    QCOMPARE(movies.model.loadedMovieName(), QString());
    QCOMPARE(movies.model.state(), SsdTabModel::LOADING);
    movies.poll();
    QCOMPARE(movies.model.state(), SsdTabModel::COMPLETE);
    QVERIFY(!movies.model.fromDisk());
    movies.gate().script("zvtGetWindow", QVariantList{1, 2, 160, 128});
    movies.load(320, 256);
    QCOMPARE(movies.windowsSet(movies.callsOf([&] { movies.model.stop(); })),
             QStringList("controller.SetWindow 8, 4, 640, 512"));
}

void tst_SsdTabModelLoad::refusedWindowAtTheEndIsForgotten()
{
    Movies movies;
    movies.load(320, 256);
    movies.gate().failNext("controller.SetWindow");
    QCOMPARE(movies.windowsSet(movies.callsOf([&] { movies.model.stop(); })).size(), 1);
    QCOMPARE(movies.windowsSet(movies.callsOf([&] { movies.model.stop(); })), QStringList());
}

void tst_SsdTabModelLoad::unreadableWindowEndsTheLoad()
{
    Movies movies;
    movies.gate().failNext("zvtGetWindow");
    const size_t mark = movies.gate().mark();
    QCOMPARE(movies.load(320, 256), QStringList(windowRead));
    QCOMPARE(movies.calls(mark, false), QStringList());
    QCOMPARE(movies.model.loadedMovieNumber(), 0U);
    QCOMPARE(movies.model.state(), SsdTabModel::LOADING);
    movies.poll();
    QCOMPARE(movies.model.state(), SsdTabModel::COMPLETE);
    QCOMPARE(movies.windowsSet(movies.callsOf([&] { movies.model.stop(); })), QStringList());
}

void tst_SsdTabModelLoad::failedLoadTakesTheFrames()
{
    Movies movies;
    movies.gate().failNext("zvtSsdLoadMovie");
    const size_t mark = movies.gate().mark();
    movies.load(320, 256);
    QCOMPARE(movies.calls(mark, false), QStringList("zvtSsdLoadMovie 2") + loadReads);
    QVERIFY(!movies.model.movieLoaded());
    QVERIFY(movies.model.fromDisk());
    QCOMPARE(movies.model.totalFramesInFile(), 350U);
    QCOMPARE(movies.model.currentFrame(), 42U);
    const QStringList signalled = movies.log.take();
    QVERIFY(signalled.contains("fromDiskChanged") && !signalled.contains("didLoadMovie"));
    QCOMPARE(movies.model.loadedMovieName(), "Flight");
    // The poll at the end shows the state of the camera.
    QCOMPARE(movies.model.state(), SsdTabModel::COMPLETE);
}

void tst_SsdTabModelLoad::unreadFramesStay_data()
{
    QTest::addColumn<QString>("call");
    QTest::newRow("currentFrame") << loadReads.at(0);
    QTest::newRow("startFrame") << loadReads.at(1);
    QTest::newRow("endFrame") << loadReads.at(2);
    QTest::newRow("totalFramesInFile") << loadReads.at(3);
}

void tst_SsdTabModelLoad::unreadFramesStay()
{
    QFETCH(const QString, call);
    Movies movies;
    movies.gate().failNext(call.toStdString());
    movies.load(320, 256);
    const QStringList signalled = movies.log.take();
    for (const char *frame : {"currentFrame", "startFrame", "endFrame", "totalFramesInFile"}) {
        const bool read = qstrcmp(frame, QTest::currentDataTag()) != 0;
        QCOMPARE(movies.model.property(frame).toUInt() != 0, read);
        QCOMPARE(signalled.contains(QLatin1String(frame) + "Changed"), read);
    }
    QVERIFY(movies.model.movieLoaded());
}

void tst_SsdTabModelLoad::secondLoadIsDropped()
{
    Movies movies;
    movies.list();
    movies.gate().hold("zvtSsdLoadMovie");
    movies.model.loadMovie(movies.movie(0));
    QVERIFY(movies.gate().waitHeld("zvtSsdLoadMovie"));
    // The poll after a command has shown another state.
    movies.model.stopRecording();
    QCOMPARE(movies.model.state(), SsdTabModel::COMPLETE);
    QCOMPARE(movies.callsOf([&] { movies.model.loadMovie(movies.movie(1)); }), QStringList());
    QCOMPARE(movies.log.take(), QStringList());
    const size_t mark = movies.gate().mark();
    movies.release();
    QVERIFY(!movies.calls(mark, false).contains("zvtSsdLoadMovie 1"));
}

// Also between the end of the task and its publication.
void tst_SsdTabModelLoad::loadIsDroppedUntilItIsShown()
{
    Movies movies;
    movies.list();
    movies.model.loadMovie(movies.movie(0));
    QVERIFY(QThreadPool::globalInstance()->waitForDone(10'000));
    const size_t mark = movies.gate().mark();
    QCOMPARE(movies.callsOf([&] { movies.model.loadMovie(movies.movie(1)); }), QStringList());
    CameraRig::settle();
    QCOMPARE(movies.calls(mark, false), QStringList());
    QCOMPARE(movies.log.take().count("didLoadMovie"), 1);
}

void tst_SsdTabModelLoad::nothingIsNotLoaded()
{
    Movies movies;
    QCOMPARE(movies.callsOf([&] { movies.model.loadMovie(nullptr); }), QStringList());
    QCOMPARE(movies.log.take(), QStringList());
}

void tst_SsdTabModelLoad::disconnectionEndsTheLoad()
{
    Movies movies;
    movies.list();
    movies.gate().hold("zvtSsdLoadMovie");
    movies.model.loadMovie(movies.movie(0));
    QVERIFY(movies.gate().waitHeld("zvtSsdLoadMovie"));
    movies.log.take();
    movies.rig.camera().disconnect();
    const size_t mark = movies.gate().mark();
    movies.release();
    QCOMPARE(movies.log.take(), QStringList("fromDiskChanged"));
    QVERIFY(!movies.model.movieLoaded());
    QCOMPARE(movies.calls(mark, true), QStringList());
    QCOMPARE(movies.model.state(), SsdTabModel::LOADING);
    movies.rig.camera().connect();
    movies.poll();
    QCOMPARE(movies.model.state(), SsdTabModel::COMPLETE);
}

void tst_SsdTabModelLoad::runningLoadOutlivesTheModel()
{
    walkHeldDeletion(moviesModel([](SsdTabModel *model) {
        SsdMovieFileInfoModel movie(0, movieRecord(), nullptr);
        model->loadMovie(&movie);
    }));
}

ZVT_TEST(tst_SsdTabModelLoad)
#include "tst_SsdTabModelLoad.moc"
