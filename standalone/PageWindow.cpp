#include "standalone/PageWindow.h"

#include "standalone/BadInput.h"
#include "standalone/DeskSplit.h"
#include "standalone/Session.h"
#include "standalone/desk/Desk.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QQuickItem>

using hlx::cam::ui::PageHost;

PageWindow::PageWindow(Session &session, bool asHost, QSettings *deskSettings) : m_session(session)
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
    setMinimumSize(DeskSplit::LeastPage);
    resize(900, 720);
    m_page->item()->setParentItem(contentItem());
    m_page->item()->setFocus(true);
    if (deskSettings)
        addDesk(*deskSettings);
    QObject::connect(this, &QWindow::widthChanged, this, &PageWindow::fitPage);
    QObject::connect(this, &QWindow::heightChanged, this, &PageWindow::fitPage);
    fitPage();

    QObject::connect(&standalone, &StandaloneModel::cameraNameChanged, this, &PageWindow::updateTitle);
    QObject::connect(&standalone, &StandaloneModel::connectedChanged, this, &PageWindow::updateTitle);
    updateTitle();
}

PageWindow::~PageWindow() = default;

void PageWindow::addDesk(QSettings &settings)
{
    Desk::registerTypes();
    m_desk = std::make_unique<Desk>(m_session.standaloneModel(), settings);
    m_split = std::make_unique<DeskSplit>(*this, m_engine, page(), *m_desk);
    QObject::connect(m_desk->faults(), &Faults::changed, this, &PageWindow::updateTitle);
}

void PageWindow::updateTitle()
{
    const StandaloneModel &standalone = m_session.standaloneModel();
    QString text = standalone.connected() ? tr("%1 - connected") : tr("%1 - not connected");
    if (m_desk && m_desk->faults()->active())
        text += tr(" - faults on");
    setTitle(text.arg(standalone.cameraName()));
}

void PageWindow::keyPressEvent(QKeyEvent *event)
{
    if (!m_split || event->key() != Qt::Key_F12 || event->modifiers() != Qt::NoModifier) {
        QQuickWindow::keyPressEvent(event);
        return;
    }
    if (!event->isAutoRepeat())
        m_split->setShown(!m_split->shown());
}

void PageWindow::closeEvent(QCloseEvent *event)
{
    const QVariant allowed = m_session.cameraModel().property("allowedToCloseController");
    if (allowed.isValid() && !allowed.toBool())
        event->ignore();
    else
        QQuickWindow::closeEvent(event);
}

void PageWindow::fitPage()
{
    if (m_split)
        m_split->fit();
    else
        m_page->item()->setSize(size());
}
