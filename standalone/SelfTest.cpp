#include "standalone/SelfTest.h"

#include "standalone/PageDriver.h"
#include "standalone/PageWindow.h"
#include "standalone/Session.h"
#include "standalone/WarningCounter.h"

#include <QQuickItem>

#include <cstdio>

namespace
{

/// Room for slow cameras.
constexpr int limit = 60'000;

/// Prints how a step went, by the reason why it failed, empty if it did not; it has also failed if QML has warned.
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
        PageWindow window(session, false);
        window.show();
        const PageDriver driver(window, window.page());
        const bool shown = PageDriver::waitFor([&window] { return window.isExposed(); });
        passed = report(QStringLiteral("load"), shown ? QString() : QStringLiteral("the window does not appear"))
            && SelfTest(session, driver).steps();
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
    const QList<QQuickItem *> buttons = m_driver.tabButtons();
    if (buttons.isEmpty())
        return report(QStringLiteral("tabs"), QStringLiteral("the page has none"));
    for (QQuickItem *button : buttons) {
        const QString failure
            = m_driver.openTab(*button, limit) ? QString() : QStringLiteral("it does not come to rest");
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
        PageDriver::waitFor([&answered] { return answered; }, limit);
    QObject::disconnect(noting);
    QObject::disconnect(waiting);
    if (!failure.isEmpty())
        return failure;
    if (!model.connected())
        return reason;
    if (!showsConnected(true))
        return QStringLiteral("the page does not notice it");
    return m_driver.settle(limit) ? QString() : QStringLiteral("the page does not come to rest");
}

QString SelfTest::chooseCamera()
{
    for (const QString &name : {QStringLiteral("Connect"), m_session.standaloneModel().cameraName()})
        if (const QString failure = press(name); !failure.isEmpty())
            return failure;
    // The list of the cameras is open, with this one chosen.
    m_driver.key(Qt::Key_Return);
    return {};
}

QString SelfTest::press(const QString &name)
{
    // What has just been opened finds its place with the next frames.
    const bool shown = PageDriver::waitFor([this, &name] { return m_driver.button(name) != nullptr; });
    QQuickItem *button = shown && m_driver.settle(limit) ? m_driver.button(name) : nullptr;
    if (!button)
        return QStringLiteral("the page has no button \"%1\"").arg(name);
    m_driver.press(*button);
    return {};
}

QString SelfTest::disconnectCamera()
{
    StandaloneModel &model = m_session.standaloneModel();
    const QString failure = press(QStringLiteral("Disconnect"));
    if (!failure.isEmpty())
        return failure;
    const bool done = PageDriver::waitFor([&model] { return !model.connected() && !model.disconnecting(); }, limit);
    if (done && !showsConnected(false))
        return QStringLiteral("the page does not notice it");
    return done && m_driver.settle(limit) ? QString() : QStringLiteral("it does not end in time");
}

bool SelfTest::showsConnected(bool connected) const
{
    const QObject &model = m_session.cameraModel();
    return PageDriver::waitFor([&model, connected] { return model.property("connected").toBool() == connected; });
}

QString SelfTest::refresh()
{
    if (!QMetaObject::invokeMethod(&m_session.cameraModel(), "refreshAllVisible"))
        return QStringLiteral("the camera's model has no refreshAllVisible");
    return m_driver.settle(limit) ? QString() : QStringLiteral("it does not end in time");
}
