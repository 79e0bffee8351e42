#pragma once

#include "standalone/Options.h"

#include <QSize>
#include <QString>

class PageUser;
class PageWindow;
class QQuickItem;
class Session;

/// Pictures of every tab of the page and of its configuration popup, in three sizes, without a camera and with one; or,
/// with the option `desk`, of the page beside each card of the desk. GUI thread only.
class Screenshots
{
public:
    /// Writes the pictures as PNG files named by tab or card and prints their folder. Returns the exit status of the
    /// program: 0 if all pictures could be taken. Throws BadInput and emulator::SetupError.
    static int run(const Options &options);

private:
    Screenshots(Session &session, PageWindow &window, const PageUser &user, const QString &folder);

    bool takePage();
    bool takeDesk();
    bool connectCamera();
    bool resize(const QSize &size);
    bool takeAll(const QString &suffix);
    bool takeCards(const QString &suffix);
    void press(QQuickItem &header);
    bool takeTabs(const QString &suffix);
    bool takePopup(const QString &suffix);
    bool take(const QString &name);

    Session &m_session;
    PageWindow &m_window;
    const PageUser &m_user;
    QString m_folder;
};
