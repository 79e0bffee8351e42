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

/// Optional context properties of a page. Those that are not set are undefined in the page's context.
struct PageOptions {
    /// Set only by the standalone controller. Must outlive the page.
    QObject *standaloneModel = nullptr;
    /// The key that refreshes the page: modifiers and key in one number, as from QKeyCombination::toCombined().
    std::optional<int> refreshCameraControllerHotkey = std::nullopt;
};

/// One loaded page with its own context, so that one engine can hold the pages of several cameras. GUI thread only.
///
/// The destructor destroys the item before the context, so that no binding runs in a destroyed context. The engine must
/// outlive this object. If the camera model is destroyed earlier, the page sees null.
class PageHost
{
public:
    /// Loads the page with the path that a model creator returned, such as "zvt/zvtmain.qml". Never null; see item()
    /// and errorText().
    static std::unique_ptr<PageHost> load(QQmlEngine &engine, QObject *model, const QString &qml,
                                          const PageOptions &options = {});
    ~PageHost();
    PageHost(const PageHost &) = delete;
    PageHost &operator=(const PageHost &) = delete;

    /// The page's root item, owned by this object; null if the page could not be created. The host must set its parent
    /// item.
    QQuickItem *item() const { return m_item.get(); }

    /// Why the page could not be created: one line for each error, with file and line number. Empty on success.
    QString errorText() const { return m_errorText; }

    /// The URL of a page's path: "qrc:/zvt/zvtmain.qml" for "zvt/zvtmain.qml". A URL with a scheme is returned
    /// unchanged.
    static QUrl resourceUrl(const QString &qml);

private:
    PageHost(QQmlEngine &engine, QObject *model, const PageOptions &options);
    void create(const QUrl &url);

    // The order matters: the item must be destroyed before the context.
    std::unique_ptr<QQmlContext> m_context;
    std::unique_ptr<QQuickItem> m_item;
    QString m_errorText;
};

} // namespace hlx::cam::ui
