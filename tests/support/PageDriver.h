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

/// The camera, the surroundings and the size of the page that a PageDriver opens.
struct PageSetup {
    QString profile = QStringLiteral("everything");
    bool connected = true;
    /// The surroundings of the page; the default is a host application.
    hlx::cam::ui::PageOptions options = {};
    QSize size{640, 480};
    /// Called with the camera before it is connected and the model is made.
    std::function<void(emulator::Camera &)> prepare = [](emulator::Camera &) {};
};

/// Shows the page of an emulated camera, made by the built plug-in, in a real window, and operates it: finds items by
/// their accessible names, clicks and types. GUI thread only.
class PageDriver
{
public:
    explicit PageDriver(const PageSetup &setup = {});
    PageDriver(const PageDriver &) = delete;
    PageDriver &operator=(const PageDriver &) = delete;
    ~PageDriver();

    CameraRig &rig() { return m_rig; }
    QObject *cameraModel() const { return m_model.get(); }
    /// The tab model in this property of the camera model.
    QObject *tabModel(const char *property) const;
    QQuickItem *page() const { return m_host->item(); }
    QQuickWindow &window() { return m_window; }

    /// The visible item below `below` (null: in the whole window) with this accessible name; null if there is none.
    QQuickItem *find(const QString &name, const QQuickItem *below = nullptr) const;
    /// The accessible name of an item; empty if it has none.
    static QString nameOf(const QQuickItem &item);
    /// The same. Ends the program if there is none.
    QQuickItem &item(const QString &name) const;
    bool enabled(const QString &name) const { return item(name).isEnabled(); }
    bool checked(const QString &name) const { return item(name).property("checked").toBool(); }
    /// The visible item whose text is equal to `text`; null if there is none.
    QQuickItem *findText(const QString &text) const;
    /// The property `text` of the visible item with this accessible name; "(not shown)" if there is none.
    QString text(const QString &name) const;
    /// The text of the visible tool tip; empty if there is none.
    QString hint() const;
    /// Whether the shade of a modal dialog is over the page.
    bool isShaded() const;
    /// The object of the page with this object name, visible or not; null if there is none.
    QObject *object(const QString &objectName) const;
    /// The visible items below `below` that show a text.
    static QList<QQuickItem *> shownTexts(const QQuickItem &below);
    /// Whether a text is completely visible within `place`, in coordinates of the window: not elided, not cut off.
    static bool fits(const QQuickItem &text, const QRectF &place);
    /// A property of the page's root item.
    QVariant rootProperty(const char *name) const { return page()->property(name); }

    /// Presses and releases the left button in the middle of the item.
    void click(QQuickItem *item);
    void click(const QString &name);
    /// Clicks the item, or presses the space bar on it.
    void use(QQuickItem &item, bool byKeyboard);
    void use(const QString &name, bool byKeyboard) { use(item(name), byKeyboard); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Types into the item with the focus. Latin-1 characters only.
    void type(const QString &text);
    /// Replaces the text of a field, key by key, and leaves it by the key `leave`.
    void enter(QQuickItem &field, const QString &text, Qt::Key leave = Qt::Key_Tab);
    /// Opens the configuration menu and clicks the action with this name. Does not wait for tasks.
    void choose(const QString &action);

    /// Makes an object from QML source in the context of the page, with all controls, dialogs and rows imported. An
    /// item is placed over the page. The object is deleted with the page. Throws std::runtime_error if the source has a
    /// fault.
    QObject *create(const QString &qml, const QVariantMap &properties = {});

    /// The calls since `mark` that change something in the camera, as "zvtFocusMove 2". Reads are left out.
    QStringList commands(size_t mark);

    /// Runs the poll of the Status tab once and waits until its values are shown.
    void poll();
    /// Waits until no task runs, the next frame is shown and no dialog fades in or out.
    void settle();
    /// Waits for the next frame, with which layouts are done. Tasks may still run.
    void awaitFrame();
    QImage grab() { return m_window.grabWindow(); }
    /// With the environment variable ZVT_SCREENSHOTS=FOLDER, writes the page, or the upper left part of this size, to a
    /// file in it, to be looked at. The file is named after the present test and its row, and `suffix`.
    void saveScreenshot(const QString &suffix = {}, const QSize &size = {});

    /// Deletes the camera model before the page, as a host may do.
    void deleteModel() { m_model.reset(); }
    /// Deletes the page, but not the camera model. The driver can then be used only for the camera and the model.
    void deletePage() { m_host.reset(); }

private:
    CameraRig m_rig;
    std::unique_ptr<QObject> m_model;
    QQuickWindow m_window;
    QQmlEngine m_engine;
    std::unique_ptr<hlx::cam::ui::PageHost> m_host;
};
