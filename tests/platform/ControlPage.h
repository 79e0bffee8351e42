#pragma once

#include <QDir>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

#include <memory>

#include "platform/hlxcamui/hostModules.h"

/// A page with the usual palette in its own window, which contains a control of the host.
class ControlPage
{
public:
    ControlPage() { hlx::cam::ui::registerHostModules(); }

    /// Shows a page with these contents in a window of this size, and returns the first item of the contents.
    QQuickItem *show(const QString &contents, const QSize &size = {480, 360})
    {
        QQmlComponent component(&m_engine);
        component.setData(text().arg(contents).toUtf8(), QUrl(QStringLiteral("qrc:/zvt/Test.qml")));
        if (!component.isReady())
            qFatal("%s", qPrintable(component.errorString()));
        m_page.reset(qobject_cast<QQuickItem *>(component.create()));
        m_window = std::make_unique<QQuickWindow>();
        m_page->setParentItem(m_window->contentItem());
        m_page->setSize(size);
        m_window->resize(size);
        m_window->show();
        m_window->requestActivate();
        if (!QTest::qWaitForWindowActive(m_window.get()))
            qFatal("the window does not show");
        return m_page->property("item").value<QQuickItem *>();
    }

    void close()
    {
        m_page.reset();
        m_window.reset();
    }

    QQuickWindow *window() const { return m_window.get(); }
    QQuickItem *item() const { return m_page.get(); }

    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        QTest::keyClick(m_window.get(), key, modifiers);
    }

    void drag(const QPoint &from, const QPoint &to) const
    {
        QTest::mouseMove(m_window.get(), from);
        QTest::mousePress(m_window.get(), Qt::LeftButton, {}, from);
        QTest::mouseMove(m_window.get(), (from + to) / 2);
        QTest::mouseMove(m_window.get(), to);
        QTest::mouseRelease(m_window.get(), Qt::LeftButton, {}, to);
    }

    /// Saves a picture of the window, for inspection by developers.
    void shot(const char *name) const
    {
        const QString folder = QStringLiteral(ZVT_BINARY_DIR "/shots");
        QVERIFY(QDir().mkpath(folder));
        QVERIFY(m_window->grabWindow().save(QStringLiteral("%1/%2.png").arg(folder, QLatin1String(name))));
    }

private:
    static QString text()
    {
        return QStringLiteral(R"(
import QtQuick
import QtQuick.Controls
import com.kestrin.hlxcamui 1.0
import com.kestrin.hlxui 1.0
import "../hlxcamui/controls"
Item {
    id: root
    property var item: contents.children.length > 0 ? contents.children[0] : null
    palette { window: "#22222b"; windowText: "#d8d8d8"; base: "#1a1a21"; alternateBase: "#2a2a34"; text: "#f0f0f0"
              button: "#3a3a45"; buttonText: "#d8d8d8"; highlight: "#18aae2"; highlightedText: "#000000"; mid: "#747482"
              dark: "#5c5c68"; light: "#55555f"; placeholderText: "#8d9196" }
    Rectangle { anchors.fill: parent; color: "#111111" }
    Item { id: contents; anchors.fill: parent
%1
    }
})");
    }

    QQmlEngine m_engine;
    std::unique_ptr<QQuickWindow> m_window;
    std::unique_ptr<QQuickItem> m_page;
};
