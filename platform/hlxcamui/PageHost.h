#pragma once

#include <QString>
#include <QUrl>

#include <memory>
#include <optional>

class QObject;
class QQmlContext;
class QQmlEngine;
class QQuickItem;

namespace hlx::cam::ui
{

/// What a page may be told besides its camera. What is left out is undefined in the page's context.
struct PageOptions {
    /// Only in the standalone controller. Outlives the page.
    QObject *standaloneModel = nullptr;
    /// Modifiers and key in one number, as in QKeyCombination::toCombined().
    std::optional<int> refreshCameraControllerHotkey = std::nullopt;
};

/// One loaded page, with a context of its own, so that the pages of any number of cameras fit into one engine. GUI
/// thread only.
///
/// Destroying it destroys the item first and then the context, so that no binding runs against a context that is half
/// gone. The engine outlives it. A camera model that dies earlier turns null in the page.
class PageHost
{
public:
    /// Loads the page that a model creator named, such as "zvt/zvtmain.qml". Never null; see item() and errorText().
    static std::unique_ptr<PageHost> load(QQmlEngine &engine, QObject *model, const QString &qml,
                                          const PageOptions &options = {});
    ~PageHost();
    PageHost(const PageHost &) = delete;
    PageHost &operator=(const PageHost &) = delete;

    /// The page's root item, which belongs to this object; null if the page could not be built. The host gives it a
    /// parent item.
    QQuickItem *item() const { return m_item.get(); }

    /// Why there is no item: one line for each error, with file and line. Empty if there is one.
    QString errorText() const { return m_errorText; }

    /// The resource of a page's path: "qrc:/zvt/zvtmain.qml" for "zvt/zvtmain.qml". A path with a scheme stays as it
    /// is.
    static QUrl resourceUrl(const QString &qml);

private:
    PageHost(QQmlEngine &engine, QObject *model, const PageOptions &options);
    void create(const QUrl &url);

    // In this order: the item is destroyed before the context.
    std::unique_ptr<QQmlContext> m_context;
    std::unique_ptr<QQuickItem> m_item;
    QString m_errorText;
};

} // namespace hlx::cam::ui
