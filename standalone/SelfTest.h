#pragma once

#include "standalone/Options.h"

#include <functional>

class PageUser;
class Session;

/// Connects a camera on the page, opens every tab, refreshes, disconnects and connects again, and prints one line for
/// each step. GUI thread only.
class SelfTest
{
public:
    /// Returns the exit status of the program: 0 if every step passed without a warning from QML. Throws BadInput and
    /// emulator::SetupError.
    static int run(const Options &options);

private:
    SelfTest(Session &session, const PageUser &user) : m_session(session), m_user(user) { }

    bool steps();
    bool openTabs();
    QString connectCamera();
    QString chooseCamera();
    QString press(const QString &name);
    QString disconnectCamera();
    QString refresh();
    bool showsConnected(bool connected) const;

    Session &m_session;
    const PageUser &m_user;
};
