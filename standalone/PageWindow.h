#pragma once

#include "platform/hlxcamui/PageHost.h"

#include <QQmlEngine>
#include <QQuickWindow>

#include <memory>

class Session;

/// A window with the page of a session, which outlives it. Its title shows the camera and whether it is connected. It
/// stays open while the camera's model does not allow it to be closed. GUI thread only.
class PageWindow : public QQuickWindow
{
    Q_OBJECT

public:
    /// `asHost`: the page gets no standaloneModel, and refreshes at F5. Throws BadInput.
    PageWindow(Session &session, bool asHost);

    QQuickItem &page() { return *m_page->item(); }

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void fitPage();
    void updateTitle();

    Session &m_session;
    // In this order: the page is destroyed before its engine.
    QQmlEngine m_engine;
    std::unique_ptr<hlx::cam::ui::PageHost> m_page;
};
