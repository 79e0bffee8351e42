#pragma once

#include "platform/hlxcamui/PageHost.h"

#include <QQmlEngine>
#include <QQuickWindow>

#include <memory>

class Session;

/// A window with the page of a session. The session must outlive the window. The title shows the camera and whether it
/// is connected. The window stays open while the model does not allow the controller to be closed. GUI thread only.
class PageWindow : public QQuickWindow
{
    Q_OBJECT

public:
    /// `asHost`: the page gets no standaloneModel and refreshes when F5 is pressed. Throws BadInput.
    PageWindow(Session &session, bool asHost);

    QQuickItem &page() { return *m_page->item(); }

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void fitPage();
    void updateTitle();

    Session &m_session;
    // The order matters: the page is destroyed before its engine.
    QQmlEngine m_engine;
    std::unique_ptr<hlx::cam::ui::PageHost> m_page;
};
