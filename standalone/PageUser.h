#pragma once

#include <QList>
#include <QPoint>
#include <QString>

#include <functional>

class QQuickItem;
class QQuickWindow;

/// Uses a page as an operator does: looks for its tab buttons and presses them. GUI thread only.
///
/// Waiting runs the event loop. No wait is longer than its limit.
class PageUser
{
public:
    PageUser(QQuickWindow &window, QQuickItem &page) : m_window(window), m_page(page) { }

    /// The visible buttons of the page's tab bar, from left to right.
    QList<QQuickItem *> tabButtons() const;

    /// The visible button with the accessible name `name`; null if there is none.
    QQuickItem *button(const QString &name) const;

    /// Presses and releases the left mouse button in the middle of an item.
    void press(QQuickItem &item) const;

    /// Presses and releases a key.
    void key(Qt::Key code) const;

    /// Presses a tab button and waits until it is checked and settle() returns; false after the limit in milliseconds,
    /// which counts for each of the two.
    bool openTab(QQuickItem &tabButton, int limit = 10'000) const;

    /// The visible items below `item`, parents before children, for which the condition holds.
    static QList<QQuickItem *> visibleItems(const QQuickItem &item, const std::function<bool(QQuickItem &)> &condition);

    /// Runs the event loop for this time.
    static void pause(int milliseconds);

    /// Waits until the condition holds; false after the limit in milliseconds.
    static bool waitFor(const std::function<bool()> &condition, int limit = 10'000);

    /// Waits until no task runs and the results of all tasks are shown; false after the limit in milliseconds.
    bool settle(int limit = 10'000) const;

private:
    QQuickWindow &m_window;
    QQuickItem &m_page;
};
