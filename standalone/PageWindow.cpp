#include "standalone/PageWindow.h"

#include "standalone/BadInput.h"
#include "standalone/Session.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QQuickItem>

using hlx::cam::ui::PageHost;

PageWindow::PageWindow(Session &session, bool asHost) : m_session(session)
{
    m_engine.setIncubationController(incubationController());
    StandaloneModel &standalone = session.standaloneModel();
    hlx::cam::ui::PageOptions options;
    if (asHost)
        options.refreshCameraControllerHotkey = Qt::Key_F5;
    else
        options.standaloneModel = &standalone;
    m_page = PageHost::load(m_engine, &session.cameraModel(), session.page(), options);
    if (!m_page->item())
        throw BadInput(QStringLiteral("the plug-in's page cannot be shown: %1").arg(m_page->errorText()));

    setColor(QColor(0x11, 0x11, 0x11));
    setMinimumSize({640, 480});
    resize(900, 720);
    m_page->item()->setParentItem(contentItem());
    m_page->item()->setFocus(true);
    QObject::connect(this, &QWindow::widthChanged, this, &PageWindow::fitPage);
    QObject::connect(this, &QWindow::heightChanged, this, &PageWindow::fitPage);
    fitPage();

    QObject::connect(&standalone, &StandaloneModel::cameraNameChanged, this, &PageWindow::updateTitle);
    QObject::connect(&standalone, &StandaloneModel::connectedChanged, this, &PageWindow::updateTitle);
    updateTitle();
}

void PageWindow::updateTitle()
{
    const StandaloneModel &standalone = m_session.standaloneModel();
    const QString text = standalone.connected() ? tr("%1 - connected") : tr("%1 - not connected");
    setTitle(text.arg(standalone.cameraName()));
}

void PageWindow::closeEvent(QCloseEvent *event)
{
    const QVariant allowed = m_session.cameraModel().property("allowedToCloseController");
    if (allowed.isValid() && !allowed.toBool())
        event->ignore();
    else
        QQuickWindow::closeEvent(event);
}

void PageWindow::fitPage() { m_page->item()->setSize(size()); }
