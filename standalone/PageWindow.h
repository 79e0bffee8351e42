#pragma once

#include "platform/hlxcamui/PageHost.h"

#include <QQmlEngine>
#include <QQuickWindow>

#include <memory>

class Desk;
class DeskSplit;
class QSettings;
class Session;

/// A window with the page of a session, and the desk beside it if it has one. The session must outlive the window. The
/// title shows the camera, whether it is connected and whether faults are on. The window stays open while the model
/// does not allow the controller to be closed. GUI thread only.
class PageWindow : public QQuickWindow
{
    Q_OBJECT

public:
    /// `asHost`: the page gets no standaloneModel and refreshes when F5 is pressed. `deskSettings` stores the state of
    /// the desk and must outlive the window; without it the window has no desk. Throws BadInput.
    PageWindow(Session &session, bool asHost, QSettings *deskSettings = nullptr);
    ~PageWindow() override;

    QQuickItem &page() { return *m_page->item(); }
    /// Null if the window has no desk.
    Desk *desk() const { return m_desk.get(); }
    DeskSplit *split() const { return m_split.get(); }

protected:
    void closeEvent(QCloseEvent *event) override;
    /// F12 shows or hides the desk. The page does not see this key.
    void keyPressEvent(QKeyEvent *event) override;

private:
    void addDesk(QSettings &settings);
    void fitPage();
    void updateTitle();

    Session &m_session;
    // The order matters: page and split are destroyed before their engine, the split before its desk.
    QQmlEngine m_engine;
    std::unique_ptr<hlx::cam::ui::PageHost> m_page;
    std::unique_ptr<Desk> m_desk;
    std::unique_ptr<DeskSplit> m_split;
};
