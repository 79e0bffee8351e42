#include "tests/faults/randomActions.h"

#include "tests/support/modelProperties.h"

#include "recording/SsdMovieFileInfoModel.h"
#include "recording/SsdTabModel.h"

#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QUrl>

namespace
{

void refresh(QObject *model)
{
    if (model->metaObject()->indexOfMethod("refresh()") >= 0)
        QMetaObject::invokeMethod(model, "refresh");
}

/// Sends the recorder a random command. Most commands end what it does: the emulated camera takes long to advance its
/// clock while it is armed.
void commandRecorder(const Models &models, QRandomGenerator &random)
{
    static const QList<const char *> commands{"arm",
                                              "triggerRecording",
                                              "pauseRecording",
                                              "resumeRecording",
                                              "stopRecording",
                                              "stopRecording",
                                              "disarm",
                                              "disarm",
                                              "disarm",
                                              "disarm",
                                              "save",
                                              "format",
                                              "play",
                                              "pause",
                                              "stop",
                                              "stop",
                                              "skipForwardToNextFrame"};
    QMetaObject::invokeMethod(models.root->ssdTabModel(), commands.at(random.bounded(commands.size())));
}

/// Lists, loads or downloads movies of the drive. Downloads end often, since they take real time.
void useMovies(const Models &models, QRandomGenerator &random)
{
    static const QTemporaryDir folder;
    constexpr int places = 3;
    SsdTabModel &ssd = *models.root->ssdTabModel();
    BatchDownloadModel &batch = *ssd.batchDownload();
    const QString file = QUrl::fromLocalFile(folder.filePath("movie.rqs")).toString();
    auto *movie = qobject_cast<SsdMovieFileInfoModel *>(ssd.fileListModel()->at(random.bounded(places)));
    switch (random.bounded(12)) {
    case 0:
        ssd.loadAndViewFiles();
        break;
    case 1:
        ssd.loadMovie(movie);
        break;
    case 2:
        ssd.downloadEntireMovie(file);
        break;
    case 3:
        ssd.downloadFrameRange(file, random.bounded(20), random.bounded(20));
        break;
    case 4:
        ssd.downloadTimeRange(file, "001:00:00:00.000000", "366:23:59:59.999999");
        break;
    case 5:
        batch.add(movie);
        break;
    case 6:
        batch.remove(qobject_cast<BatchDownloadEntry *>(batch.entries()->at(0)));
        break;
    case 7:
        batch.setOutputDir(folder.path());
        batch.start();
        break;
    case 8:
    case 9:
        batch.cancel();
        break;
    default:
        ssd.abortDownload();
    }
}

/// Lets a random timer of the models elapse at once, if it runs.
void elapseAnyTimer(const Models &models, QRandomGenerator &random)
{
    const auto timers = models.root->findChildren<QTimer *>();
    QTimer *timer = timers.at(random.bounded(timers.size()));
    if (timer->isActive())
        QMetaObject::invokeMethod(timer, "timeout");
}

} // namespace

Models::Models(CameraRig &rig)
    : root(std::make_unique<ZvtCameraModel>(rig.controller(), nullptr)), byPath(modelsOf(root.get()))
{
}

void doSomething(Models &models, const Models &otherClient, CameraRig &rig, QRandomGenerator &random)
{
    switch (random.bounded(25)) {
    case 0:
        rig.camera().disconnect();
        break;
    case 1:
    case 2:
        rig.camera().connect();
        break;
    case 3:
        models.root->refreshAllVisible();
        break;
    case 4:
    case 5:
        refresh(models.byPath.values().at(random.bounded(models.byPath.size())));
        break;
    case 6:
        emulator::Clock::advance(random.bounded(60'000));
        break;
    case 7:
        elapseAnyTimer(models, random);
        break;
    case 8:
    case 9:
        // Not processEvents(), with which timers would elapse in real time.
        QCoreApplication::sendPostedEvents();
        break;
    case 10:
        rig.camera().changeMakeUp(QStringLiteral("hasSsd"), random.bounded(2) == 1);
        break;
    case 11:
        if (random.bounded(25) == 0)
            models = Models(rig);
        break;
    case 12:
        if (random.bounded(2) == 0)
            useMovies(models, random);
        else
            commandRecorder(models, random);
        break;
    case 13:
    case 14:
    case 15:
    case 16:
        writeRandomProperty(otherClient.byPath.values(), random);
        break;
    default:
        writeRandomProperty(models.byPath.values(), random);
    }
}

void endDownloads(const Models &models)
{
    constexpr int longerThanAFrame = 60'000;
    SsdTabModel &ssd = *models.root->ssdTabModel();
    ssd.abortDownload();
    ssd.batchDownload()->cancel();
    QVERIFY(QTest::qWaitFor([&ssd] { return !ssd.downloading() && !ssd.batchDownload()->downloading(); },
                            longerThanAFrame));
    ssd.batchDownload()->removeAll();
}

void readEverything(const Models &models)
{
    models.root->ssdTabModel()->loadAndViewFiles();
    for (QObject *model : models.byPath) {
        if (model->metaObject()->indexOfProperty("visible") >= 0) {
            model->setProperty("visible", false);
            model->setProperty("visible", true);
        }
        refresh(model);
    }
    CameraRig::settle();
}
