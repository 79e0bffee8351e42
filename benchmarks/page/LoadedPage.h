#pragma once

#include "hlx/CZVTController.h"
#include "platform/emulator/control.h"
#include "platform/hlxcamui/PageHost.h"
#include "standalone/PluginLoader.h"

#include <QLibrary>
#include <QQmlEngine>
#include <QQuickWindow>

#include <memory>
#include <optional>

/// A page in a window, as a host application shows it, with an emulated camera that is not connected yet. GUI thread
/// only.
class LoadedPage
{
public:
    enum class Kind {
        Plugin, ///< The plug-in's page with its models.
        Flat, ///< Only the same controls. A camera is created too, as the host would do it.
        Empty, ///< A page with one button.
    };

    /// `profile` is the name of the camera profile. Throws std::runtime_error if the page cannot be loaded.
    explicit LoadedPage(Kind kind, const QString &profile = QStringLiteral("everything"));

    /// Shows the window and waits for its first frame.
    void show();

    /// Waits for the contents of hidden pages, which are created asynchronously after the first frame.
    void awaitContents();

    QQuickWindow &window() { return *m_window; }
    QQuickItem &item() { return *m_page->item(); }
    emulator::Camera &camera() { return *m_camera; }
    /// The camera model of the plug-in's page; null for the other kinds.
    QObject *model() { return m_model.get(); }

private:
    QString load(Kind kind);

    // The order matters: the page is destroyed first, then its models, then the plug-in with the code of both is
    // unloaded.
    std::shared_ptr<emulator::Camera> m_camera;
    hlx::TSharedPtr<hlx::cam::CZVTController> m_controller;
    std::optional<PluginLoader> m_plugin;
    QLibrary m_flatPages;
    std::unique_ptr<QObject> m_model;
    QQmlEngine m_engine;
    std::unique_ptr<QQuickWindow> m_window;
    std::unique_ptr<hlx::cam::ui::PageHost> m_page;
};
