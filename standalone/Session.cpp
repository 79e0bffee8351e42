#include "standalone/Session.h"

#include "platform/hlxcamui/hostModules.h"
#include "standalone/BadInput.h"

#include "hlxui/IControllerModelFactory.h"

#include <QEventLoop>

Session::Session(const Options &options)
    : m_plugin(options.plugin), m_firstCamera(options.profile),
      m_standaloneModel(options.profile, options.storage, {options.latency, options.failRate, options.seed})
{
    // The icon font must be there before a window is made.
    hlx::cam::ui::registerHostModules();
    if (options.asHost)
        connectFirst();
    QObject *model = nullptr;
    if (!hlx::cam::ui::controllerModelFactory()->CreateModel(m_standaloneModel.controller(), nullptr, model, m_page))
        throw BadInput(QStringLiteral("the plug-in \"%1\" does not serve this camera").arg(options.plugin));
    m_cameraModel.reset(model);
}

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
