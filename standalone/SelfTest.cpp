#include "standalone/SelfTest.h"

#include "standalone/DeskSplit.h"
#include "standalone/PageUser.h"
#include "standalone/PageWindow.h"
#include "standalone/Session.h"
#include "standalone/TemporarySettings.h"
#include "standalone/WarningCounter.h"

#include <QQuickItem>

#include <cstdio>

namespace
{

/// Milliseconds for each step: enough for slow cameras.
constexpr int limit = 60'000;

/// Prints the result of a step. `failure` explains why it failed and is empty if it passed. A warning from QML during
/// the step is a failure too. Returns whether the step passed.
bool report(const QString &step, QString failure)
{
    const int warnings = WarningCounter::take();
    if (failure.isEmpty() && warnings > 0)
        failure = QStringLiteral("%1 warning(s) from QML").arg(warnings);
    const QString result = failure.isEmpty() ? QStringLiteral("ok") : QStringLiteral("FAILED, ") + failure;
    std::printf("%s: %s\n", qPrintable(step), qPrintable(result));
    std::fflush(stdout);
    return failure.isEmpty();
}

} // namespace

int SelfTest::run(const Options &options)
{
    const WarningCounter counter;
    bool passed = false;
    {
        Session session(options);
        TemporarySettings settings;
        PageWindow window(session, false, options.desk ? settings.get() : nullptr);
        if (options.desk)
            window.split()->setShown(true);
        window.show();
        const PageUser user(window, window.page());
        const bool shown = PageUser::waitFor([&window] { return window.isExposed(); });
        passed = report(QStringLiteral("load"), shown ? QString() : QStringLiteral("the window does not appear"))
            && SelfTest(session, user).steps();
        window.close();
    }
    return report(QStringLiteral("quit"), {}) && passed ? 0 : 1;
}

bool SelfTest::steps()
{
    return report(QStringLiteral("connect"), connectCamera()) && openTabs()
        && report(QStringLiteral("refresh"), refresh()) && report(QStringLiteral("disconnect"), disconnectCamera())
        && report(QStringLiteral("reconnect"), connectCamera());
}

bool SelfTest::openTabs()
{
    const QList<QQuickItem *> buttons = m_user.tabButtons();
    if (buttons.isEmpty())
        return report(QStringLiteral("tabs"), QStringLiteral("the page has none"));
    for (QQuickItem *button : buttons) {
        const QString failure = m_user.openTab(*button, limit) ? QString() : QStringLiteral("it does not come to rest");
        if (!report(QStringLiteral("tab ") + button->property("text").toString(), failure))
            return false;
    }
    return true;
}

QString SelfTest::connectCamera()
{
    StandaloneModel &model = m_session.standaloneModel();
    QString reason = QStringLiteral("the camera does not answer in time");
    bool answered = false;
    const auto noting
        = QObject::connect(&model, &StandaloneModel::connectFailed, [&reason](const QString &text) { reason = text; });
    const auto waiting
        = QObject::connect(&model, &StandaloneModel::connectingChanged, [&] { answered = !model.connecting(); });
    const QString failure = chooseCamera();
    if (failure.isEmpty())
        PageUser::waitFor([&answered] { return answered; }, limit);
    QObject::disconnect(noting);
    QObject::disconnect(waiting);
    if (!failure.isEmpty())
        return failure;
    if (!model.connected())
        return reason;
    if (!showsConnected(true))
        return QStringLiteral("the page does not notice it");
    return m_user.settle(limit) ? QString() : QStringLiteral("the page does not come to rest");
}

QString SelfTest::chooseCamera()
{
    for (const QString &name : {QStringLiteral("Connect"), m_session.standaloneModel().cameraName()})
        if (const QString failure = press(name); !failure.isEmpty())
            return failure;
    // The list of cameras is open and this camera is selected.
    m_user.key(Qt::Key_Return);
    return {};
}

QString SelfTest::press(const QString &name)
{
    // A dialog or menu that has just opened is laid out during the next frames.
    const bool shown = PageUser::waitFor([this, &name] { return m_user.button(name) != nullptr; });
    QQuickItem *button = shown && m_user.settle(limit) ? m_user.button(name) : nullptr;
    if (!button)
        return QStringLiteral("the page has no button \"%1\"").arg(name);
    m_user.press(*button);
    return {};
}

QString SelfTest::disconnectCamera()
{
    StandaloneModel &model = m_session.standaloneModel();
    const QString failure = press(QStringLiteral("Disconnect"));
    if (!failure.isEmpty())
        return failure;
    const bool done = PageUser::waitFor([&model] { return !model.connected() && !model.disconnecting(); }, limit);
    if (done && !showsConnected(false))
        return QStringLiteral("the page does not notice it");
    return done && m_user.settle(limit) ? QString() : QStringLiteral("it does not end in time");
}

bool SelfTest::showsConnected(bool connected) const
{
    const QObject &model = m_session.cameraModel();
    return PageUser::waitFor([&model, connected] { return model.property("connected").toBool() == connected; });
}

QString SelfTest::refresh()
{
    if (!QMetaObject::invokeMethod(&m_session.cameraModel(), "refreshAllVisible"))
        return QStringLiteral("the camera's model has no refreshAllVisible");
    return m_user.settle(limit) ? QString() : QStringLiteral("it does not end in time");
}
