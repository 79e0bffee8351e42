#pragma once

#include "standalone/Options.h"

#include <functional>

class PageDriver;
class Session;

/// Drives the page through connecting, every tab, a refresh, disconnecting and reconnecting, and prints one line for
/// each step. GUI thread only.
class SelfTest
{
public:
    /// The program's exit status: 0 if every step passed without a warning from QML. Throws BadInput and
    /// emulator::SetupError.
    static int run(const Options &options);

private:
    SelfTest(Session &session, const PageDriver &driver) : m_session(session), m_driver(driver) { }

    bool steps();
    bool openTabs();
    QString connectCamera();
    QString chooseCamera();
    QString press(const QString &name);
    QString disconnectCamera();
    QString refresh();
    bool showsConnected(bool connected) const;

    Session &m_session;
    const PageDriver &m_driver;
};
