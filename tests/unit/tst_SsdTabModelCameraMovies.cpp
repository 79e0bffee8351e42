#include "tests/support/Test.h"
#include "tests/support/limitFileSize.h"
#include "tests/unit/SsdCameraRig.h"
#include "tests/unit/download.h"

#include "recording/SsdMovieFileInfoModel.h"

#include <QFile>
#include <QScopeGuard>
#include <QSemaphore>
#include <QTemporaryDir>
#include <QUrl>

#include <algorithm>
#include <utility>

#include "hlx/CRQSImagerFile.h"
#include "hlx/IFileSystem.h"

namespace
{

/// The movies of the profile "everything", by their places.
enum Place { FastTarget, EngineStart, TwoPresets };
constexpr int movieCount = 8;

/// The SSD tab of an emulated camera with movies, and a folder for downloads.
struct Movies : Recorder {
    Movies()
    {
        model.loadAndViewFiles();
        CameraRig::settle();
    }

    SsdMovieFileInfoModel *movie(int place)
    {
        return qobject_cast<SsdMovieFileInfoModel *>(model.fileListModel()->at(place));
    }
    /// Loads a movie. Returns the state on the page.
    SsdTabModel::SsdState load(int place)
    {
        model.loadMovie(movie(place));
        CameraRig::settle();
        return model.state();
    }
    /// The width of the camera's window.
    int windowWidth()
    {
        refresh();
        return model.windowWidth();
    }

    QString path() const { return folder.filePath("movie.rqs"); }
    QString url() const { return QUrl::fromLocalFile(path()).toString(); }

    QTemporaryDir folder;
};

/// The number of frames in a file; -1 if it cannot be opened.
int framesIn(const QString &path)
{
    hlx::file::CRQSImagerFile file;
    return file.Open(hlx::fileSystem(), path.toUtf8().constData(), 0) ? static_cast<int>(file.nFrames()) : -1;
}

} // namespace

/// The drive and the downloads of the SSD tab with the emulated recorder.
class tst_SsdTabModelCameraMovies : public Test
{
    Q_OBJECT

private slots:
    void listsTheDrive();
    void savedMovieIsTheLast();
    void loadsPlaysAndGoesBack();
    void loadsSeveralMovies();

    void downloadsARecording();
    void downloadsFramesOfAMovie();
    void downloadsTimesOfAMovie();
    void timesOutsideAMovieFail();
    void downloadWithoutARecordingFails();
    void fileThatCannotBeWrittenEndsTheDownload_data();
    void fileThatCannotBeWrittenEndsTheDownload();
    void deletionDuringADownload();
    void requestIsServed_data();
    void requestIsServed();
};

// The drive

void tst_SsdTabModelCameraMovies::listsTheDrive()
{
    Movies movies;
    QCOMPARE(movies.model.fileListModel()->size(), movieCount);
    const SsdMovieFileInfoModel &movie = *movies.movie(TwoPresets);
    QCOMPARE(movie.number(), 3U);
    QCOMPARE(movie.name(), "Two presets");
    QCOMPARE(movie.width(), 320U);
    QCOMPARE(movie.height(), 256U);
    QCOMPARE(movie.numFrames(), 300U);
    QVERIFY(movie.startTimeString() < movie.endTimeString());
    QVERIFY(movie.startIrigDay() >= 1);
    for (const QString &size : {movies.model.totalSpace(), movies.model.freeSpace(), movies.model.usedSpace()})
        QVERIFY2(size.endsWith("B"), qPrintable(size));
}

void tst_SsdTabModelCameraMovies::savedMovieIsTheLast()
{
    Movies movies;
    movies.model.setFilename("Take");
    QCOMPARE(movies.record(), SsdTabModel::COMPLETE);
    movies.model.save();
    QCOMPARE(movies.after(10'000), SsdTabModel::COMPLETE);
    movies.model.loadAndViewFiles();
    CameraRig::settle();
    QCOMPARE(movies.model.fileListModel()->size(), movieCount + 1);
    QCOMPARE(movies.movie(movieCount)->name(), "Take");
    QCOMPARE(movies.movie(movieCount)->numFrames(), Recorder::frames);
}

void tst_SsdTabModelCameraMovies::loadsPlaysAndGoesBack()
{
    Movies movies;
    QCOMPARE(movies.load(TwoPresets), SsdTabModel::MOVIE_LOADED);
    QVERIFY(movies.model.movieLoaded() && movies.model.fromDisk() && movies.model.ramContainsVideo());
    QCOMPARE(movies.model.totalFramesInFile(), 300U);
    QCOMPARE(movies.model.endFrame(), 299U);
    QCOMPARE(movies.model.loadedMovieName(), "Two presets");
    QCOMPARE(movies.windowWidth(), 320);
    movies.model.setPlaybackRateInHertz(10.0F);
    movies.model.play();
    QCOMPARE(movies.after(1000), SsdTabModel::PLAYING);
    QCOMPARE(movies.model.currentFrame(), 10U);
    movies.model.stop();
    QCOMPARE(movies.after(0), SsdTabModel::DISARMED);
    QCOMPARE(movies.windowWidth(), 640);
    QVERIFY(!movies.model.movieLoaded());
}

void tst_SsdTabModelCameraMovies::loadsSeveralMovies()
{
    Movies movies;
    for (const int place : {FastTarget, TwoPresets, EngineStart}) {
        QCOMPARE(movies.load(place), SsdTabModel::MOVIE_LOADED);
        QCOMPARE(movies.windowWidth(), static_cast<int>(movies.movie(place)->width()));
        QCOMPARE(movies.model.totalFramesInFile(), movies.movie(place)->numFrames());
    }
    movies.model.stop();
    QCOMPARE(movies.windowWidth(), 640);
}

// Downloads

void tst_SsdTabModelCameraMovies::downloadsARecording()
{
    Movies movies;
    movies.model.setFramesToRecord(5);
    QCOMPARE(movies.record(), SsdTabModel::COMPLETE);
    movies.model.download(movies.url());
    QVERIFY(finishDownload(movies.model));
    QVERIFY(movies.model.downloadOk());
    QCOMPARE(movies.model.progress(), 100);
    QCOMPARE(framesIn(movies.path()), 5);
}

void tst_SsdTabModelCameraMovies::downloadsFramesOfAMovie()
{
    Movies movies;
    QCOMPARE(movies.load(FastTarget), SsdTabModel::MOVIE_LOADED);
    movies.model.downloadFrameRange(movies.url(), 10, 19);
    QVERIFY(finishDownload(movies.model));
    QCOMPARE(framesIn(movies.path()), 10);
    movies.model.downloadEntireMovie(movies.url());
    QVERIFY(finishDownload(movies.model));
    QVERIFY(movies.model.downloadOk());
    QCOMPARE(framesIn(movies.path()), 2000);
}

void tst_SsdTabModelCameraMovies::downloadsTimesOfAMovie()
{
    Movies movies;
    const QString start = movies.movie(FastTarget)->startTimeString();
    const QString end = movies.movie(FastTarget)->endTimeString();
    QCOMPARE(movies.load(FastTarget), SsdTabModel::MOVIE_LOADED);
    movies.model.downloadTimeRange(movies.url(), start, end);
    QVERIFY(finishDownload(movies.model));
    QVERIFY(movies.model.downloadOk() && !movies.model.findingFrameLimits());
    QCOMPARE(framesIn(movies.path()), 2000);
    movies.model.downloadTimeRange(movies.url(), start, start);
    QVERIFY(finishDownload(movies.model));
    QCOMPARE(framesIn(movies.path()), 1);
}

void tst_SsdTabModelCameraMovies::timesOutsideAMovieFail()
{
    Movies movies;
    const QString end = movies.movie(FastTarget)->endTimeString();
    QCOMPARE(movies.load(FastTarget), SsdTabModel::MOVIE_LOADED);
    movies.model.downloadTimeRange(movies.url(), end, "001:00:00:00.000000");
    QVERIFY(finishDownload(movies.model));
    QVERIFY(!movies.model.downloadOk() && movies.model.findingFrameLimits());
    QVERIFY(!QFile::exists(movies.path()));
}

void tst_SsdTabModelCameraMovies::downloadWithoutARecordingFails()
{
    Movies movies;
    movies.model.downloadEntireMovie(movies.url());
    QVERIFY(finishDownload(movies.model));
    QVERIFY(!movies.model.downloadOk());
    QVERIFY(!QFile::exists(movies.path()));
}

void tst_SsdTabModelCameraMovies::fileThatCannotBeWrittenEndsTheDownload_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("diskIsFull");
    QTest::newRow("full disk") << "full.rqs" << true;
    QTest::newRow("no such folder") << "missing/movie.rqs" << false;
}

// The movie stays loaded, the camera is polled again, and the next download succeeds.
void tst_SsdTabModelCameraMovies::fileThatCannotBeWrittenEndsTheDownload()
{
    QFETCH(const QString, name);
    QFETCH(const bool, diskIsFull);
    Movies movies;
    QCOMPARE(movies.load(FastTarget), SsdTabModel::MOVIE_LOADED);
    const QString file = movies.folder.filePath(name);
    {
        const auto restore = qScopeGuard([] { limitFileSize({}); });
        if (diskIsFull)
            limitFileSize(500'000);
        movies.model.downloadEntireMovie(QUrl::fromLocalFile(file).toString());
        QVERIFY(finishDownload(movies.model));
    }
    QVERIFY(!movies.model.downloadOk());
    QCOMPARE(QFile::exists(file), diskIsFull);
    const int frames = framesIn(file);
    QVERIFY2(diskIsFull ? frames > 0 && frames < 2000 : frames == -1, qPrintable(QString::number(frames)));

    const size_t mark = movies.rig.gate().mark();
    QCOMPARE(movies.after(0), SsdTabModel::MOVIE_LOADED);
    const auto calls = movies.rig.gate().callsSince(mark);
    QVERIFY(std::ranges::count(calls, "zvtGetSsdState", &emulator::Call::name) == 1);
    movies.model.downloadEntireMovie(movies.url());
    QVERIFY(finishDownload(movies.model));
    QVERIFY(movies.model.downloadOk());
    QCOMPARE(framesIn(movies.path()), 2000);
}

// The worker stays in its first report until the deletion aborts it: the file has the frames until then.
void tst_SsdTabModelCameraMovies::deletionDuringADownload()
{
    CameraRig rig;
    const QTemporaryDir folder;
    const QString path = folder.filePath("movie.rqs");
    auto root = std::make_unique<ZvtCameraModel>(rig.controller(), nullptr);
    SsdTabModel &model = *root->ssdTabModel();
    model.loadAndViewFiles();
    CameraRig::settle();
    model.loadMovie(qobject_cast<SsdMovieFileInfoModel *>(model.fileListModel()->at(FastTarget)));
    CameraRig::settle();
    QVERIFY(rig.camera().otherClient().set("link.lossPerMillion", 0));
    rig.gate().hold("controller.DownloadMovie");
    model.downloadEntireMovie(QUrl::fromLocalFile(path).toString());
    QVERIFY(rig.gate().waitHeld("controller.DownloadMovie"));
    auto *const worker = model.findChild<DownloadWorker *>();
    QSemaphore reported;
    bool first = true;
    const auto stay = [&] {
        if (!std::exchange(first, false))
            return;
        reported.release();
        waitForAbort();
    };
    QObject::connect(worker, &DownloadWorker::progressChanged, worker, stay, Qt::DirectConnection);
    rig.gate().release("*");
    QVERIFY(reported.tryAcquire(1, 10'000));
    root.reset();
    QCOMPARE(framesIn(path), 1);
}

void tst_SsdTabModelCameraMovies::requestIsServed_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("end");
    QTest::newRow("memory") << int(SsdTabModel::MODE_TO_MEMORY) << int(SsdTabModel::COMPLETE);
    QTest::newRow("drive") << int(SsdTabModel::MODE_TO_DISK) << int(SsdTabModel::DISARMED);
}

void tst_SsdTabModelCameraMovies::requestIsServed()
{
    QFETCH(const int, mode);
    QFETCH(const int, end);
    Movies movies;
    movies.model.setFramesToRecord(5);
    movies.model.setRecordMode(static_cast<SsdTabModel::ERECORD_MODE>(mode));
    movies.model.setAutoDownload(true);
    movies.model.setAutoDownloadDirectory(movies.folder.path());
    movies.model.setFilename("Take");
    QCOMPARE(movies.record(), SsdTabModel::REQUEST_AUTO_DOWNLOAD);
    QVERIFY(movies.model.downloading());
    QVERIFY(finishDownload(movies.model));
    QVERIFY(movies.model.downloadOk());
    QCOMPARE(framesIn(movies.folder.filePath("Take-1.rqs")), 5);
    QCOMPARE(int(movies.after(0)), end);
}

ZVT_TEST(tst_SsdTabModelCameraMovies)
#include "tst_SsdTabModelCameraMovies.moc"
