#include "benchmarks/page/modes.h"

#include "benchmarks/page/measuring.h"
#include "standalone/PageDriver.h"

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

/// Opens popups of a page by pressing what opens them, and prints what the first frame with each has cost.
class Opener
{
public:
    explicit Opener(LoadedPage &page) : m_window(page.window()), m_driver(page.window(), page.item()) { }

    const PageDriver &driver() const { return m_driver; }
    void openTab(const QString &title) const;
    /// Opens what the button opens, and closes nothing.
    Cost open(const QString &button) const;
    Cost open(QQuickItem &control) const;
    /// Closes every popup.
    void close() const;
    /// The boxes with a list that the page shows.
    Items comboBoxes() const;

private:
    Items popups() const;
    static void bringIntoView(QQuickItem &control);

    QQuickWindow &m_window;
    const PageDriver m_driver;
};

void Opener::openTab(const QString &title) const
{
    for (QQuickItem *tab : m_driver.tabButtons())
        if (tab->property("text").toString() == title && m_driver.openTab(*tab))
            return;
    throw std::runtime_error(qPrintable(QStringLiteral("the tab \"%1\" does not open").arg(title)));
}

Cost Opener::open(const QString &button) const
{
    QQuickItem *control = m_driver.button(button);
    if (!control || !control->isEnabled())
        throw std::runtime_error(qPrintable(QStringLiteral("there is no button \"%1\" to press").arg(button)));
    return open(*control);
}

Cost Opener::open(QQuickItem &control) const
{
    constexpr int rest = 300; // Milliseconds.
    constexpr int limit = 10'000;

    bringIntoView(control);
    PageDriver::pause(rest);
    const Items before = popups();
    Cost cost;
    QEventLoop loop;
    QObject::connect(&m_window, &QQuickWindow::frameSwapped, &loop, [&, stopwatch = Stopwatch()] {
        cost = stopwatch.cost();
        if (std::ranges::any_of(popups(), [&before](QQuickItem *popup) { return !before.contains(popup); }))
            loop.quit();
    });
    QTimer::singleShot(limit, &loop, [&loop] { loop.exit(1); });
    m_driver.press(control);
    if (loop.exec() != 0)
        throw std::runtime_error("a press opens nothing");
    return cost;
}

void Opener::close() const
{
    for (const QQuickItem *popup : popups())
        QMetaObject::invokeMethod(popup->parent(), "close");
    if (!PageDriver::waitFor([this] { return popups().isEmpty(); }) || !m_driver.settle())
        throw std::runtime_error("a popup does not close");
}

Items Opener::comboBoxes() const
{
    return PageDriver::visibleItems(*m_window.contentItem(), [](QQuickItem &item) {
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

/// Scrolls until the control is in the middle of the view that it lies in.
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

/// The longest of all lists.
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
    // One whose lens offers every dialog.
    LoadedPage page(LoadedPage::Kind::Plugin, QStringLiteral("discrete-fov"));
    page.show();
    connectCamera(page);
    const Opener opener(page);
    opener.driver().settle();
    // Dialogs of an existing state need one.
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
