#include "standalone/DeskSplit.h"

#include "standalone/desk/Desk.h"

#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QScreen>

#include <algorithm>

namespace
{

constexpr int narrowDesk = 280;

int screenWidth(const QQuickWindow &window) { return window.screen() ? window.screen()->availableSize().width() : 0; }

} // namespace

DeskSplit::Widths DeskSplit::divide(int window, int screen, int wanted, bool shown)
{
    const int rest = LeastPage.width() + HandleWidth;
    if (!shown)
        return {std::max(window - HandleWidth, LeastPage.width()), 0, rest, rest};
    const int room = screen - rest;
    const int least = std::clamp(room, narrowDesk, DeskSettings::LeastWidth);
    const int desk = std::clamp(window - rest, least, std::max(wanted, least));
    return {std::max(window - HandleWidth - desk, LeastPage.width()), desk, rest + least,
            rest + std::clamp(wanted, least, std::max(room, least))};
}

DeskSplit::DeskSplit(QQuickWindow &window, QQmlEngine &engine, QQuickItem &page, Desk &desk)
    : m_window(window), m_engine(engine), m_page(page), m_desk(desk), m_wanted(desk.settings()->width()),
      m_context(std::make_unique<QQmlContext>(&engine))
{
    m_handle = create("DeskHandle", nullptr);
    QObject::connect(m_handle.get(), SIGNAL(clicked()), this, SLOT(toggle()));
    QObject::connect(m_handle.get(), SIGNAL(dragged(double)), this, SLOT(drag(double)));
    QObject::connect(m_handle.get(), SIGNAL(stepped(int)), this, SLOT(step(int)));
    QObject::connect(m_handle.get(), SIGNAL(dropped()), this, SLOT(storeWidth()));
    QObject::connect(&m_window, &QQuickWindow::activeFocusItemChanged, this, &DeskSplit::followFocus);
    // The shades of dialogs are as large as the window.
    overlay()->setClip(true);
    // The overlay takes the window's size again after each change of it.
    QObject::connect(overlay(), &QQuickItem::widthChanged, this, &DeskSplit::fitOverlay);
    QObject::connect(overlay(), &QQuickItem::heightChanged, this, &DeskSplit::fitOverlay);
    QObject::connect(m_desk.faults(), &Faults::changed, this, &DeskSplit::showFaults);
    showFaults();
}

DeskSplit::~DeskSplit()
{
    // The focus moves while the items are destroyed.
    QObject::disconnect(&m_window, nullptr, this, nullptr);
}

/// Creates an item of the desk's module, in the window. `model` is its property for the desk or for the faults.
std::unique_ptr<QQuickItem> DeskSplit::create(const char *file, const char *model)
{
    QQmlComponent component(
        &m_engine,
        QUrl(QStringLiteral("qrc:/qt-project.org/imports/zvt/controller/desk/%1.qml").arg(QLatin1String(file))));
    std::unique_ptr<QObject> object(component.beginCreate(m_context.get()));
    auto *item = qobject_cast<QQuickItem *>(object.get());
    if (!item)
        qFatal("%s", qPrintable(component.errorString()));
    if (model)
        component.setInitialProperties(item, {{QString::fromLatin1(model), QVariant::fromValue(&m_desk)}});
    component.completeCreate();
    static_cast<void>(object.release());
    item->setParentItem(m_window.contentItem());
    return std::unique_ptr<QQuickItem>(item);
}

void DeskSplit::createDesk()
{
    m_deskItem = create("DeskColumn", "desk");
    QObject::connect(m_deskItem.get(), SIGNAL(exited()), this, SLOT(leaveDesk()));
}

void DeskSplit::setShown(bool shown)
{
    if (shown == m_shown)
        return;
    if (shown && !m_deskItem)
        createDesk();
    if (!shown && m_deskItem->hasActiveFocus())
        leaveDesk();
    m_shown = shown;
    m_deskItem->setVisible(shown);
    m_handle->setProperty("shown", shown);
    m_desk.settings()->setShown(shown);
    if (shown)
        grow();
    else
        shrink();
    fit();
}

void DeskSplit::grow()
{
    m_widthBefore = m_window.width();
    const int width = std::max(m_window.width(), widths().wantedWindow);
    m_widthGrown = width;
    if (width == m_widthBefore || (m_window.windowStates() & (Qt::WindowMaximized | Qt::WindowFullScreen)))
        return;
    m_window.resize(width, m_window.height());
    if (!m_window.isVisible() || !m_window.screen())
        return;
    const QRect screen = m_window.screen()->availableGeometry();
    if (m_window.frameGeometry().right() > screen.right())
        m_window.setX(std::max(screen.left(), m_window.x() + screen.right() - m_window.frameGeometry().right()));
}

void DeskSplit::shrink()
{
    m_window.setMinimumWidth(widths().leastWindow);
    if (m_widthGrown != m_widthBefore && m_window.width() == m_widthGrown)
        m_window.resize(m_widthBefore, m_window.height());
}

DeskSplit::Widths DeskSplit::widths() const
{
    return divide(m_window.width(), screenWidth(m_window), m_wanted, m_shown);
}

void DeskSplit::fit()
{
    const int top = m_bar && m_bar->isVisible() ? qRound(m_bar->height()) : 0;
    const int height = m_window.height() - top;
    const Widths parts = widths();
    m_window.setMinimumSize({parts.leastWindow, LeastPage.height() + top});
    if (m_bar)
        m_bar->setSize({m_window.width() * 1.0, m_bar->height()});
    m_page.setPosition({0, top * 1.0});
    m_page.setSize({parts.page * 1.0, height * 1.0});
    m_handle->setPosition({std::min(parts.page, m_window.width() - HandleWidth) * 1.0, top * 1.0});
    m_handle->setSize({HandleWidth * 1.0, height * 1.0});
    if (m_deskItem) {
        m_deskItem->setPosition({parts.page + HandleWidth * 1.0, top * 1.0});
        m_deskItem->setSize({parts.desk * 1.0, height * 1.0});
    }
    fitOverlay();
}

QQuickItem *DeskSplit::overlay() const { return m_handle->property("overlay").value<QQuickItem *>(); }

void DeskSplit::fitOverlay()
{
    overlay()->setPosition(m_page.position());
    overlay()->setSize(m_page.size());
}

void DeskSplit::showFaults()
{
    const bool active = m_desk.faults()->active();
    if (!m_bar) {
        if (!active)
            return;
        m_bar = create("FaultBar", "desk");
    } else if (m_bar->isVisible() == active) {
        return;
    }
    const QQuickItem *focused = m_window.activeFocusItem();
    if (!active && focused && m_bar->isAncestorOf(focused))
        leaveDesk();
    m_bar->setVisible(active);
    fit();
}

void DeskSplit::setWantedWidth(int width)
{
    const int most = std::max(m_window.width() - LeastPage.width() - HandleWidth, DeskSettings::LeastWidth);
    m_wanted = std::clamp(width, DeskSettings::LeastWidth, most);
    fit();
}

void DeskSplit::drag(double x)
{
    if (m_shown)
        setWantedWidth(qRound(m_window.width() - x - HandleWidth / 2.0));
}

void DeskSplit::step(int pixels)
{
    if (!m_shown)
        return;
    setWantedWidth(widths().desk + pixels);
    storeWidth();
}

void DeskSplit::storeWidth()
{
    if (m_shown)
        m_desk.settings()->setWidth(m_wanted);
}

void DeskSplit::followFocus()
{
    QQuickItem *item = m_window.activeFocusItem();
    const auto isIn = [item](const QQuickItem *part) { return part && (item == part || part->isAncestorOf(item)); };
    if (item && item != m_window.contentItem() && !isIn(m_handle.get()) && !isIn(m_bar.get())
        && !isIn(m_deskItem.get()))
        m_pageFocus = item;
}

void DeskSplit::leaveDesk()
{
    QQuickItem *item = m_pageFocus && m_pageFocus->isVisible() ? m_pageFocus.data() : &m_page;
    item->forceActiveFocus(Qt::OtherFocusReason);
}
