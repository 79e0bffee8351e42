#include "standalone/Screenshots.h"

#include "platform/emulator/Clock.h"
#include "standalone/BadInput.h"
#include "standalone/DeskSplit.h"
#include "standalone/PageUser.h"
#include "standalone/PageWindow.h"
#include "standalone/Session.h"
#include "standalone/TemporarySettings.h"

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QQuickItem>

#include <cstdio>

namespace
{

/// Milliseconds after which the detector of every camera is cold.
constexpr int64_t cooling = 30 * 60'000;

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
    TemporarySettings settings;
    PageWindow window(session, false, options.desk ? settings.get() : nullptr);
    if (options.desk)
        window.split()->setShown(true);
    window.show();
    const PageUser user(window, window.page());
    Screenshots screenshots(session, window, user, folder);

    if (!PageUser::waitFor([&window] { return window.isExposed(); }) || !user.settle())
        return complain(QStringLiteral("the window does not appear")), 1;
    if (!(options.desk ? screenshots.takeDesk() : screenshots.takePage()))
        return 1;
    std::printf("%s\n", qPrintable(folder));
    return 0;
}

Screenshots::Screenshots(Session &session, PageWindow &window, const PageUser &user, const QString &folder)
    : m_session(session), m_window(window), m_user(user), m_folder(folder)
{
}

bool Screenshots::takePage() { return takeAll(QStringLiteral("-not-connected")) && connectCamera() && takeAll({}); }

bool Screenshots::takeDesk()
{
    if (!connectCamera())
        return false;
    // On the second tab, which has more settings than the first.
    if (const QList<QQuickItem *> tabs = m_user.tabButtons(); tabs.size() > 1 && !m_user.openTab(*tabs.at(1)))
        return complain(QStringLiteral("the page does not come to rest"));
    // The detector sees nothing until it is cold.
    emulator::Clock::stop();
    emulator::Clock::advance(cooling);
    // The last is the smallest window with a desk.
    for (const QSize size : {QSize(1280, 1024), QSize(1280, 800), QSize(1100, 720), QSize(988, 480)})
        if (!resize(size) || !takeCards(QStringLiteral("-%1x%2").arg(size.width()).arg(size.height())))
            return false;
    return true;
}

bool Screenshots::connectCamera()
{
    StandaloneModel &model = m_session.standaloneModel();
    model.connect(m_session.firstCamera());
    if (!PageUser::waitFor([&model] { return !model.connecting(); }, 60'000) || !model.connected())
        return complain(QStringLiteral("the camera cannot be connected"));
    return m_user.settle(60'000);
}

bool Screenshots::resize(const QSize &size)
{
    m_window.resize(size);
    return PageUser::waitFor([this, size] { return m_window.size() == size; })
        || complain(QStringLiteral("the window cannot be resized"));
}

bool Screenshots::takeAll(const QString &suffix)
{
    for (const QSize size : {QSize(900, 720), QSize(640, 480), QSize(1280, 1024)}) {
        const QString full = QStringLiteral("-%1x%2%3").arg(size.width()).arg(size.height()).arg(suffix);
        if (!resize(size) || !takeTabs(full) || !takePopup(full))
            return false;
    }
    return true;
}

bool Screenshots::takeCards(const QString &suffix)
{
    const QList<QQuickItem *> headers = PageUser::visibleItems(
        *m_window.split()->desk(), [](QQuickItem &item) { return item.objectName() == QLatin1String("cardHeader"); });
    for (QQuickItem *header : headers)
        if (header->property("checked").toBool())
            press(*header);
    for (QQuickItem *header : headers) {
        press(*header);
        // The live picture and its statistics need some frames.
        for (int frame = 0; frame < 20; ++frame) {
            emulator::Clock::advance(50);
            PageUser::pause(50);
        }
        const QString title = header->property("text").toString();
        if (!m_user.settle() || !take(title.simplified().replace(u' ', u'-') + suffix))
            return false;
        press(*header);
    }
    return !headers.isEmpty() || complain(QStringLiteral("the desk has no cards"));
}

void Screenshots::press(QQuickItem &header)
{
    m_user.press(header);
    // The cards below it move in the next frame.
    PageUser::pause(100);
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
