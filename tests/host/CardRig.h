#pragma once

#include "platform/emulator/control.h"
#include "standalone/StandaloneModel.h"
#include "standalone/desk/Desk.h"
#include "tests/support/PageDriver.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QThreadPool>

#include <functional>
#include <memory>

/// A card of the desk in a window, over an emulated camera that is not connected. The clock is stopped. GUI thread
/// only.
class CardRig
{
public:
    explicit CardRig(const QString &profile = QStringLiteral("everything"))
        : m_settings(m_folder.filePath("settings.ini"), QSettings::IniFormat),
          m_standalone(profile, m_folder.path(), {}), m_desk(m_standalone, m_settings)
    {
        emulator::Clock::manual();
        Desk::registerTypes();
    }
    CardRig(const CardRig &) = delete;
    CardRig &operator=(const CardRig &) = delete;
    ~CardRig()
    {
        m_card.reset();
        QThreadPool::globalInstance()->waitForDone();
        emulator::Clock::automatic();
    }

    StandaloneModel &standalone() { return m_standalone; }
    emulator::Camera &camera() { return m_standalone.camera(); }
    /// Ends the connection of the camera, so that another one can be connected.
    bool unplug()
    {
        camera().disconnect();
        return QTest::qWaitFor([this] { return !m_standalone.connected(); });
    }
    Desk &desk() { return m_desk; }
    QQuickWindow &window() { return m_window; }

    /// Shows the card of this file, which is closed at first. Returns why it cannot be shown.
    QString show(const QString &file, QObject &model)
    {
        QQmlComponent component(&m_engine,
                                QUrl(QStringLiteral("qrc:/qt-project.org/imports/zvt/controller/desk/") + file));
        if (!component.isReady())
            return component.errorString();
        m_card.reset(qobject_cast<QQuickItem *>(component.createWithInitialProperties(
            {{"settings", QVariant::fromValue(m_desk.settings())}, {"model", QVariant::fromValue(&model)}})));
        if (!m_card)
            return component.errorString();
        m_window.resize(420, 900);
        m_card->setParentItem(m_window.contentItem());
        m_window.show();
        m_window.requestActivate();
        return QTest::qWaitForWindowActive(&m_window) ? QString() : QStringLiteral("the window does not show");
    }
    QQuickItem &card() { return *m_card; }

    /// The visible item with this accessible name; null if there is none.
    QQuickItem *find(const QString &name) const
    {
        return findBelow(*m_window.contentItem(),
                         [&name](const QQuickItem &item) { return PageDriver::nameOf(item) == name; });
    }
    /// Clicks the item after the next frame, with which layouts are done.
    void click(const QString &name)
    {
        QSignalSpy frames(&m_window, &QQuickWindow::frameSwapped);
        m_window.update();
        QVERIFY(frames.wait());
        QQuickItem *const item = find(name);
        QVERIFY2(item, qPrintable(name));
        const QPointF middle = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
        QTest::mouseClick(&m_window, Qt::LeftButton, Qt::NoModifier, middle.toPoint());
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(&m_window, key, modifiers);
    }
    /// Replaces the text of a field, key by key.
    void type(const QString &name, const QString &text)
    {
        QQuickItem *const field = find(name);
        QVERIFY2(field, qPrintable(name));
        field->forceActiveFocus(Qt::TabFocusReason);
        press(Qt::Key_A, Qt::ControlModifier);
        for (const QChar character : text)
            QTest::keyClick(&m_window, character.toLatin1());
    }
    /// Whether a visible item of the card shows this text.
    bool shows(const QString &text) const
    {
        return findBelow(*m_card,
                         [&text](const QQuickItem &item) {
                             return item.inherits("QQuickText") && item.property("text") == text;
                         })
            != nullptr;
    }
    QVariant property(const QString &name, const char *property) const
    {
        const QQuickItem *const item = find(name);
        return item ? item->property(property) : QVariant();
    }

private:
    // By items, since the rows of a list are not children of its object.
    static QQuickItem *findBelow(const QQuickItem &item, const std::function<bool(const QQuickItem &)> &condition)
    {
        for (QQuickItem *const child : item.childItems()) {
            if (!child->isVisible())
                continue;
            if (condition(*child))
                return child;
            if (auto *found = findBelow(*child, condition))
                return found;
        }
        return nullptr;
    }

    QTemporaryDir m_folder;
    QSettings m_settings;
    StandaloneModel m_standalone;
    Desk m_desk;
    QQuickWindow m_window;
    QQmlEngine m_engine;
    std::unique_ptr<QQuickItem> m_card;
};
