#include "standalone/PageUser.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQmlProperty>
#include <QQuickItem>
#include <QQuickWindow>
#include <QThreadPool>
#include <QTimer>

namespace
{

using Items = QList<QQuickItem *>;

void collect(const QQuickItem &item, const std::function<bool(QQuickItem &)> &condition, Items &found)
{
    for (QQuickItem *child : item.childItems()) {
        if (!child->isVisible())
            continue;
        if (condition(*child))
            found.append(child);
        collect(*child, condition, found);
    }
}

} // namespace

QList<QQuickItem *> PageUser::visibleItems(const QQuickItem &item, const std::function<bool(QQuickItem &)> &condition)
{
    Items found;
    collect(item, condition, found);
    return found;
}

void PageUser::pause(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

QList<QQuickItem *> PageUser::tabButtons() const
{
    // The outermost bar comes first. Bars inside the tabs do not belong to the page itself.
    const Items bars = visibleItems(m_page, [](QQuickItem &item) { return item.inherits("QQuickTabBar"); });
    if (bars.isEmpty())
        return {};
    return visibleItems(*bars.constFirst(),
                        [](QQuickItem &item) { return item.inherits("QQuickTabButton") && item.width() > 0; });
}

QQuickItem *PageUser::button(const QString &name) const
{
    const Items found = visibleItems(*m_window.contentItem(), [&name](QQuickItem &item) {
        return item.inherits("QQuickAbstractButton")
            && QQmlProperty::read(&item, QStringLiteral("Accessible.name"), qmlContext(&item)).toString() == name;
    });
    return found.value(0);
}

void PageUser::press(QQuickItem &item) const
{
    const QPointF local = item.mapToScene(QPointF(item.width() / 2, item.height() / 2));
    const QPointF global = m_window.mapToGlobal(local);
    QMouseEvent pressing(QEvent::MouseButtonPress, local, global, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&m_window, &pressing);
    QMouseEvent releasing(QEvent::MouseButtonRelease, local, global, Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&m_window, &releasing);
}

void PageUser::key(Qt::Key code) const
{
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, code, Qt::NoModifier);
        QCoreApplication::sendEvent(&m_window, &event);
    }
}

bool PageUser::openTab(QQuickItem &tabButton, int limit) const
{
    press(tabButton);
    return waitFor([&tabButton] { return tabButton.property("checked").toBool(); }, limit) && settle(limit);
}

bool PageUser::waitFor(const std::function<bool()> &condition, int limit)
{
    const QDeadlineTimer deadline(limit);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        pause(10);
    }
    return true;
}

bool PageUser::settle(int limit) const
{
    // No task may run at several checks in a row, since the end of one task often starts another.
    constexpr int looks = 5;
    int quiet = 0;
    return waitFor(
        [&quiet] {
            quiet = QThreadPool::globalInstance()->activeThreadCount() == 0 ? quiet + 1 : 0;
            return quiet >= looks;
        },
        limit);
}
