#pragma once

#include "platform/emulator/control.h"
#include "standalone/DeskSplit.h"
#include "standalone/PageUser.h"
#include "standalone/PageWindow.h"
#include "standalone/Session.h"
#include "standalone/TemporarySettings.h"
#include "standalone/desk/Desk.h"
#include "tests/host/Program.h"

#include <QLibrary>
#include <QQuickItem>
#include <QTemporaryDir>
#include <QTest>

/// A session in a window with a desk, as the program shows it, with settings of its own.
class DeskRig
{
public:
    /// Loads the plug-in and keeps it until the end of the process: QML keeps the addresses of the types of a library.
    static bool loadPlugin()
    {
        static QLibrary library(Program::folder() + QStringLiteral("/libhlxcamuiZVT.so"));
        library.setLoadHints(QLibrary::PreventUnloadHint);
        return library.load();
    }

    explicit DeskRig(Options options = {}) : m_session(complete(options, m_folder)) { restart(); }

    /// Replaces the window by a new one, as at the next start of the program.
    void restart()
    {
        m_window.reset();
        m_window = std::make_unique<PageWindow>(m_session, false, m_settings.get());
        m_window->show();
    }

    Session &session() { return m_session; }
    PageWindow &window() { return *m_window; }
    DeskSplit &split() { return *m_window->split(); }
    Desk &desk() { return *m_window->desk(); }
    DeskSettings &settings() { return *desk().settings(); }
    QQuickItem &page() { return m_window->page(); }
    StandaloneModel &standalone() { return m_session.standaloneModel(); }
    emulator::Camera &camera() { return standalone().camera(); }
    PageUser user() { return {*m_window, page()}; }
    /// The visible button with this accessible name; null if there is none.
    QQuickItem *button(const QString &name) { return user().button(name); }

    bool connectCamera()
    {
        standalone().connect(m_session.firstCamera());
        return QTest::qWaitFor([this] { return !standalone().connecting(); }) && standalone().connected()
            && user().settle();
    }

private:
    static Options complete(Options options, const QTemporaryDir &folder)
    {
        options.plugin = Program::folder() + QStringLiteral("/libhlxcamuiZVT.so");
        if (options.profile.isEmpty())
            options.profile = QStringLiteral("everything");
        options.storage = folder.path();
        return options;
    }

    QTemporaryDir m_folder;
    TemporarySettings m_settings;
    Session m_session;
    std::unique_ptr<PageWindow> m_window;
};
