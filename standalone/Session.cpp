#include "standalone/Session.h"

#include "platform/emulator/CallRecorder.h"
#include "platform/emulator/CallReplay.h"
#include "platform/emulator/Camera.h"
#include "platform/hlxcamui/hostModules.h"
#include "standalone/BadInput.h"

#include "hlxui/IControllerModelFactory.h"

#include <QEventLoop>

#include <cstdio>

namespace
{

LineFaults lineOf(const Options &options)
{
    LineFaults line;
    line.latency = options.latency;
    line.failRate = options.failRate;
    line.seed = options.seed;
    return line;
}

/// A recording is repeated without a change of the user's cameras.
QString storageOf(const Options &options, const emulator::CallReplay *replay)
{
    return replay && options.storage.isEmpty() ? replay->folder() : options.storage;
}

void printError(const QString &message) { std::fprintf(stderr, "zvtcontroller: %s\n", qPrintable(message)); }

} // namespace

Session::Session(const Options &options)
    : m_plugin(options.plugin),
      m_replay(options.replay.isEmpty() ? nullptr : std::make_unique<emulator::CallReplay>(options.replay)),
      m_firstCamera(m_replay ? m_replay->profile() : options.profile),
      m_standaloneModel(m_firstCamera, storageOf(options, m_replay.get()), lineOf(options))
{
    const auto camera = m_standaloneModel.camera().shared_from_this();
    if (m_replay)
        m_replay->attachTo(camera);
    if (!options.record.isEmpty())
        m_recorder = std::make_unique<emulator::CallRecorder>(camera, options.record, &printError);
    // The icon font must be there before a window is made.
    hlx::cam::ui::registerHostModules();
    if (options.asHost)
        connectFirst();
    QObject *model = nullptr;
    if (!hlx::cam::ui::controllerModelFactory()->CreateModel(m_standaloneModel.controller(), nullptr, model, m_page))
        throw BadInput(QStringLiteral("the plug-in \"%1\" does not serve this camera").arg(options.plugin));
    m_cameraModel.reset(model);
}

Session::~Session() = default;

void Session::connectFirst()
{
    QEventLoop loop;
    QObject::connect(&m_standaloneModel, &StandaloneModel::connectingChanged, &loop, [this, &loop] {
        if (!m_standaloneModel.connecting())
            loop.quit();
    });
    m_standaloneModel.connect(m_firstCamera);
    loop.exec();
}
