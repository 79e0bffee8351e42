#include "benchmarks/page/modes.h"

#include "benchmarks/page/measuring.h"
#include "standalone/PageUser.h"

#include <QEventLoop>
#include <QQuickItem>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <stdexcept>

namespace
{

using Items = QList<QQuickItem *>;

/// Opens popups of a page by their buttons and prints the cost of the first frame of each.
class Opener
{
public:
    explicit Opener(LoadedPage &page) : m_window(page.window()), m_user(page.window(), page.item()) { }

    const PageUser &user() const { return m_user; }
    void openTab(const QString &title) const;
    /// Opens a popup by its button and leaves it open.
    Cost open(const QString &button) const;
    Cost open(QQuickItem &control) const;
    /// Closes every popup.
    void close() const;
    /// The visible combo boxes of the page.
    Items comboBoxes() const;

private:
    Items popups() const;
    static void bringIntoView(QQuickItem &control);

    QQuickWindow &m_window;
    const PageUser m_user;
};

void Opener::openTab(const QString &title) const
{
    for (QQuickItem *tab : m_user.tabButtons())
        if (tab->property("text").toString() == title && m_user.openTab(*tab))
            return;
    throw std::runtime_error(qPrintable(QStringLiteral("the tab \"%1\" does not open").arg(title)));
}

Cost Opener::open(const QString &button) const
{
    QQuickItem *control = m_user.button(button);
    if (!control || !control->isEnabled())
        throw std::runtime_error(qPrintable(QStringLiteral("there is no button \"%1\" to press").arg(button)));
    return open(*control);
}

Cost Opener::open(QQuickItem &control) const
{
    constexpr int rest = 300; // Milliseconds.
    constexpr int limit = 10'000;

    bringIntoView(control);
    PageUser::pause(rest);
    const Items before = popups();
    Cost cost;
    QEventLoop loop;
    QObject::connect(&m_window, &QQuickWindow::frameSwapped, &loop, [&, stopwatch = Stopwatch()] {
        cost = stopwatch.cost();
        if (std::ranges::any_of(popups(), [&before](QQuickItem *popup) { return !before.contains(popup); }))
            loop.quit();
    });
    QTimer::singleShot(limit, &loop, [&loop] { loop.exit(1); });
    m_user.press(control);
    if (loop.exec() != 0)
        throw std::runtime_error("a press opens nothing");
    return cost;
}

void Opener::close() const
{
    for (const QQuickItem *popup : popups())
        QMetaObject::invokeMethod(popup->parent(), "close");
    if (!PageUser::waitFor([this] { return popups().isEmpty(); }) || !m_user.settle())
        throw std::runtime_error("a popup does not close");
}

Items Opener::comboBoxes() const
{
    return PageUser::visibleItems(*m_window.contentItem(), [](QQuickItem &item) {
        return item.inherits("QQuickComboBox") && item.isEnabled() && item.property("count").toInt() > 0;
    });
}

Items Opener::popups() const
{
    Items found;
    for (const QQuickItem *layer : m_window.contentItem()->childItems())
        if (layer->inherits("QQuickOverlay"))
            for (QQuickItem *item : layer->childItems())
                if (item->isVisible() && item->inherits("QQuickPopupItem"))
                    found << item;
    return found;
}

/// Scrolls the containing view so that the control is in its middle.
void Opener::bringIntoView(QQuickItem &control)
{
    for (QQuickItem *view = control.parentItem(); view; view = view->parentItem())
        if (view->inherits("QQuickFlickable")) {
            const auto *content = view->property("contentItem").value<QQuickItem *>();
            const double end = std::max(0.0, view->property("contentHeight").toDouble() - view->height());
            const double middle = control.mapToItem(content, QPointF(0, control.height() / 2)).y();
            view->setProperty("contentY", std::clamp(middle - view->height() / 2, 0.0, end));
        }
}

void print(const QString &name, const Cost &cost)
{
    std::printf("%s\t%.3f\t%.3f\n", qPrintable(name), cost.processor.count(), cost.wall.count());
}

/// The largest cost among all lists.
Cost openLists(const Opener &opener)
{
    Cost longest;
    for (QQuickItem *box : opener.comboBoxes()) {
        const Cost cost = opener.open(*box);
        opener.close();
        if (cost.processor > longest.processor)
            longest = cost;
    }
    return longest;
}

} // namespace

int reportOpenings()
{
    const QString configuration = QStringLiteral("Configuration");
    // The lens of this profile has all lens dialogs.
    LoadedPage page(LoadedPage::Kind::Plugin, QStringLiteral("discrete-fov"));
    page.show();
    connectCamera(page);
    const Opener opener(page);
    opener.user().settle();
    // The dialogs for existing lens states need one.
    QMetaObject::invokeMethod(page.model()->property("setupTabModel").value<QObject *>(), "addLensState",
                              Q_ARG(QString, QStringLiteral("State")));

    print(configuration, opener.open(configuration));
    opener.close();
    for (const char *name : {"Save State As", "Adjust Time", "About"}) {
        opener.open(configuration);
        print(QLatin1String(name), opener.open(QLatin1String(name)));
        opener.close();
    }
    opener.openTab(QStringLiteral("Setup"));
    for (const char *name : {"Add New Lens State Using Current Settings", "Rename Lens State", "Delete Lens State",
                             "Edit Nearest/Farthest Positions"}) {
        print(QLatin1String(name), opener.open(QLatin1String(name)));
        opener.close();
    }
    print(QStringLiteral("list of a combo box"), openLists(opener));
    return 0;
}
