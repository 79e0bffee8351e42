#include "tests/faults/randomActions.h"

#include "tests/support/modelProperties.h"

#include "recording/SsdTabModel.h"

#include <QTimer>

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

void readEverything(const Models &models)
{
    for (QObject *model : models.byPath) {
        if (model->metaObject()->indexOfProperty("visible") >= 0) {
            model->setProperty("visible", false);
            model->setProperty("visible", true);
        }
        refresh(model);
    }
    CameraRig::settle();
}
