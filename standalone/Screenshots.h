#pragma once

#include "standalone/Options.h"

#include <QSize>
#include <QString>

class PageDriver;
class PageWindow;

/// Pictures of every tab of the page and of its configuration popup, in two sizes, without a camera and with one. GUI
/// thread only.
class Screenshots
{
public:
    /// Writes them as PNG files named by tab and prints the folder. The program's exit status: 0 if all pictures could
    /// be taken. Throws BadInput and emulator::SetupError.
    static int run(const Options &options);

private:
    Screenshots(PageWindow &window, const PageDriver &driver, const QString &folder);

    bool takeAll(const QString &suffix);
    bool takeTabs(const QString &suffix);
    bool takePopup(const QString &suffix);
    bool take(const QString &name);

    PageWindow &m_window;
    const PageDriver &m_driver;
    QString m_folder;
};
