#pragma once

#include "standalone/Options.h"

#include <QSize>
#include <QString>

class PageUser;
class PageWindow;

/// Pictures of every tab of the page and of its configuration popup, in two sizes, without a camera and with one. GUI
/// thread only.
class Screenshots
{
public:
    /// Writes the pictures as PNG files named by tab and prints their folder. Returns the exit status of the program: 0
    /// if all pictures could be taken. Throws BadInput and emulator::SetupError.
    static int run(const Options &options);

private:
    Screenshots(PageWindow &window, const PageUser &user, const QString &folder);

    bool takeAll(const QString &suffix);
    bool takeTabs(const QString &suffix);
    bool takePopup(const QString &suffix);
    bool take(const QString &name);

    PageWindow &m_window;
    const PageUser &m_user;
    QString m_folder;
};
