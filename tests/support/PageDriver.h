#pragma once

#include "tests/support/CameraRig.h"

#include <QImage>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSize>
#include <QVariant>

#include <functional>
#include <memory>

#include "platform/hlxcamui/PageHost.h"

/// What a PageDriver opens.
struct PageSetup {
    QString profile = QStringLiteral("everything");
    bool connected = true;
    /// What stands around the page: nothing means a host application.
    hlx::cam::ui::PageOptions options = {};
    QSize size{640, 480};
    /// Done to the camera before it is connected and the model is made.
    std::function<void(emulator::Camera &)> prepare = [](emulator::Camera &) {};
};

/// The page of an emulated camera, made by the built plug-in and shown in a real window, and an operator before it who
/// finds things by their accessible names. GUI thread only.
class PageDriver
{
public:
    explicit PageDriver(const PageSetup &setup = {});
    PageDriver(const PageDriver &) = delete;
    PageDriver &operator=(const PageDriver &) = delete;
    ~PageDriver();

    CameraRig &rig() { return m_rig; }
    QObject *cameraModel() const { return m_model.get(); }
    /// The tab model that the camera model's property of this name holds.
    QObject *tabModel(const char *property) const;
    QQuickItem *page() const { return m_host->item(); }
    QQuickWindow &window() { return m_window; }

    /// The visible item of this accessible name, null if there is none. Below `below`, the whole window if it is null.
    QQuickItem *find(const QString &name, const QQuickItem *below = nullptr) const;
    /// The accessible name of an item; empty if it has none.
    static QString nameOf(const QQuickItem &item);
    /// The visible item that shows just this text, null if there is none.
    QQuickItem *findText(const QString &text) const;
    /// The property `text` of the visible item of this name; "(not shown)" if there is none.
    QString text(const QString &name) const;
    /// The text of the tool tip on show; empty if there is none.
    QString hint() const;
    /// An object of the page by its object name, visible or not.
    QObject *object(const QString &objectName) const;
    /// The visible items below this one that show a text.
    static QList<QQuickItem *> shownTexts(const QQuickItem &below);
    /// Whether a text stands whole within this part of the window: neither elided nor cut off nor outside.
    static bool fits(const QQuickItem &text, const QRectF &place);
    /// A property of the page's root: a colour, a size.
    QVariant rootProperty(const char *name) const { return page()->property(name); }

    /// Presses and releases the left button in the middle of the item.
    void click(QQuickItem *item);
    void click(const QString &name);
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Types into what has the focus.
    void type(const QString &text);
    /// Opens the configuration menu and clicks the action of this name. Waits for no task.
    void choose(const QString &action);

    /// Makes a further object as a part of the page, which sees what the page's own parts see; all controls, dialogs
    /// and rows are imported. An item lies over the page. It lives until the page dies.
    QObject *create(const QString &qml, const QVariantMap &properties = {});

    /// Runs the status poll once and waits for its values.
    void poll();
    /// Waits until nothing runs any more and everything is shown.
    void settle();
    /// Waits until layouts have taken their places, while tasks may still run.
    void awaitFrame();
    QImage grab() { return m_window.grabWindow(); }

    /// The host lets go of the camera before the page.
    void deleteModel() { m_model.reset(); }

private:
    CameraRig m_rig;
    std::unique_ptr<QObject> m_model;
    QQuickWindow m_window;
    QQmlEngine m_engine;
    std::unique_ptr<hlx::cam::ui::PageHost> m_host;
};
