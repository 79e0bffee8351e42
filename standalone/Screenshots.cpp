#include "standalone/Screenshots.h"

#include "standalone/BadInput.h"
#include "standalone/PageUser.h"
#include "standalone/PageWindow.h"
#include "standalone/Session.h"

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QQuickItem>

#include <cstdio>

namespace
{

/// Prepares the folder and returns its absolute path.
QString makeFolder(const QString &folder)
{
    if (!QDir().mkpath(folder) || !QFileInfo(folder).isWritable())
        throw BadInput(QStringLiteral("cannot write into the folder \"%1\"").arg(folder));
    return QFileInfo(folder).absoluteFilePath();
}

bool complain(const QString &reason)
{
    std::fprintf(stderr, "zvtcontroller: %s\n", qPrintable(reason));
    return false;
}

} // namespace

int Screenshots::run(const Options &options)
{
    const QString folder = makeFolder(options.screenshots);
    Session session(options);
    PageWindow window(session, false);
    window.show();
    const PageUser user(window, window.page());
    StandaloneModel &model = session.standaloneModel();
    Screenshots screenshots(window, user, folder);

    if (!PageUser::waitFor([&window] { return window.isExposed(); }) || !user.settle())
        return complain(QStringLiteral("the window does not appear")), 1;
    if (!screenshots.takeAll(QStringLiteral("-not-connected")))
        return 1;
    model.connect(session.firstCamera());
    if (!PageUser::waitFor([&model] { return !model.connecting(); }, 60'000) || !model.connected())
        return complain(QStringLiteral("the camera cannot be connected")), 1;
    if (!user.settle(60'000) || !screenshots.takeAll({}))
        return 1;
    std::printf("%s\n", qPrintable(folder));
    return 0;
}

Screenshots::Screenshots(PageWindow &window, const PageUser &user, const QString &folder)
    : m_window(window), m_user(user), m_folder(folder)
{
}

bool Screenshots::takeAll(const QString &suffix)
{
    for (const QSize size : {QSize(900, 720), QSize(640, 480), QSize(1280, 1024)}) {
        m_window.resize(size);
        if (!PageUser::waitFor([this, size] { return m_window.size() == size; }))
            return complain(QStringLiteral("the window cannot be resized"));
        const QString full = QStringLiteral("-%1x%2%3").arg(size.width()).arg(size.height()).arg(suffix);
        if (!takeTabs(full) || !takePopup(full))
            return false;
    }
    return true;
}

bool Screenshots::takeTabs(const QString &suffix)
{
    const QList<QQuickItem *> buttons = m_user.tabButtons();
    for (QQuickItem *button : buttons) {
        const QString tab = button->property("text").toString();
        if (!m_user.openTab(*button))
            return complain(QStringLiteral("the tab %1 does not come to rest").arg(tab));
        if (!take(tab + suffix))
            return false;
    }
    return !buttons.isEmpty() || complain(QStringLiteral("the page has no tabs"));
}

bool Screenshots::takePopup(const QString &suffix)
{
    const QString name = QStringLiteral("Configuration");
    QQuickItem *button = m_user.button(name);
    if (!button)
        return complain(QStringLiteral("the page has no button \"%1\"").arg(name));
    m_user.press(*button);
    const bool taken = m_user.settle() && take(name + suffix);
    m_user.key(Qt::Key_Escape);
    return taken && m_user.settle();
}

bool Screenshots::take(const QString &name)
{
    const QString file = QDir(m_folder).filePath(name + QStringLiteral(".png"));
    return m_window.grabWindow().save(file) || complain(QStringLiteral("cannot write \"%1\"").arg(file));
}
