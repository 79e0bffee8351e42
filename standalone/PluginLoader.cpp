#include "standalone/PluginLoader.h"

#include "standalone/BadInput.h"

#include "hlxui/IControllerModelFactory.h"

#include <QFileInfo>
#include <QThreadPool>

PluginLoader::PluginLoader(const QString &file)
{
    const QFileInfo info(file);
    if (!info.isFile())
        throw BadInput(QStringLiteral("the plug-in \"%1\" does not exist").arg(file));
    m_library.setFileName(info.absoluteFilePath());
    if (!m_library.load())
        throw BadInput(QStringLiteral("\"%1\" is not a plug-in: %2").arg(file, m_library.errorString()));
    using EntryPoint = int (*)();
    const auto init = reinterpret_cast<EntryPoint>(m_library.resolve("hlxInitPlugin"));
    if (!init) {
        m_library.unload();
        throw BadInput(QStringLiteral("\"%1\" is not a plug-in: it has no hlxInitPlugin").arg(file));
    }
    if (init() != 1)
        throw BadInput(QStringLiteral("the plug-in \"%1\" did not start").arg(file));
}

PluginLoader::~PluginLoader()
{
    QThreadPool::globalInstance()->waitForDone();
    // The factory must not keep the creator, a function of the library, after the library is unloaded.
    const auto creator = reinterpret_cast<hlx::cam::ui::ModelCreator>(m_library.resolve(
        "_Z24CreateModelForControllerN3hlx10TSharedPtrINS_3cam11IControllerEEEP7QObjectRS5_R7QString"));
    if (creator)
        hlx::cam::ui::controllerModelFactory()->UnregisterModelCreator(creator);
    m_library.unload();
}
