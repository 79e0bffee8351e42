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

/// A page in a window as a host application shows it, with an emulated camera that is not connected yet. GUI thread
/// only.
class LoadedPage
{
public:
    enum class Kind {
        Plugin, ///< The plug-in's page with its models.
        Flat, ///< The page of the same controls and nothing else. The camera is made too, as it is the host's work.
        Empty, ///< One button.
    };

    /// `profile`: the make-up of the camera. Throws std::runtime_error if there is no such page.
    explicit LoadedPage(Kind kind, const QString &profile = QStringLiteral("everything"));

    /// Shows the window and waits for its first frame.
    void show();

    /// Waits until what is made beside other work after the first frame is there: the contents of hidden pages.
    void awaitContents();

    QQuickWindow &window() { return *m_window; }
    QQuickItem &item() { return *m_page->item(); }
    emulator::Camera &camera() { return *m_camera; }
    /// Null but for the plug-in's page.
    QObject *model() { return m_model.get(); }

private:
    QString load(Kind kind);

    // In this order: the page goes first, then its models, then the code of both.
    std::shared_ptr<emulator::Camera> m_camera;
    hlx::TSharedPtr<hlx::cam::CZVTController> m_controller;
    std::optional<PluginLoader> m_plugin;
    QLibrary m_flatPages;
    std::unique_ptr<QObject> m_model;
    QQmlEngine m_engine;
    std::unique_ptr<QQuickWindow> m_window;
    std::unique_ptr<hlx::cam::ui::PageHost> m_page;
};
