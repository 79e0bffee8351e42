#include "benchmarks/page/modes.h"

#include "benchmarks/memory.h"
#include "benchmarks/page/measuring.h"
#include "platform/emulator/Clock.h"
#include "standalone/DeskSplit.h"
#include "standalone/PageUser.h"
#include "standalone/PageWindow.h"
#include "standalone/Session.h"
#include "standalone/desk/Desk.h"

#include <QElapsedTimer>
#include <QQuickItem>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <stdexcept>
#include <utility>

#include <sys/resource.h>

namespace
{

constexpr int measured = 5000; // Milliseconds.
constexpr int untilSteady = 1500; // Milliseconds.

/// What the whole process has used so far.
struct Usage {
    double time = 0; ///< By the wall clock, milliseconds.
    double processor = 0; ///< Milliseconds.
    long wakeUps = 0; ///< How often a thread has waited and has run again.

    static Usage now()
    {
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        return {milliseconds(CLOCK_MONOTONIC), milliseconds(CLOCK_PROCESS_CPUTIME_ID), usage.ru_nvcsw};
    }

    Usage operator-(const Usage &start) const
    {
        return {time - start.time, processor - start.processor, wakeUps - start.wakeUps};
    }

private:
    static double milliseconds(clockid_t clock)
    {
        timespec time{};
        clock_gettime(clock, &time);
        return double(time.tv_sec) * 1e3 + double(time.tv_nsec) * 1e-6;
    }
};

/// What the process uses while it runs its event loop.
Usage usageAtRest()
{
    const Usage start = Usage::now();
    PageUser::pause(measured);
    return Usage::now() - start;
}

/// The longest gap between the events of a timer of one millisecond, in time of the GUI thread.
class LongestGap
{
public:
    LongestGap()
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&m_timer, &QTimer::timeout, [this] {
            const Cost gap = m_stopwatch.cost();
            m_longest.processor = std::max(m_longest.processor, gap.processor);
            m_longest.wall = std::max(m_longest.wall, gap.wall);
            m_stopwatch.restart();
        });
        m_timer.start(1);
    }

    const Cost &longest() const { return m_longest; }

private:
    QTimer m_timer;
    Stopwatch m_stopwatch;
    Cost m_longest;
};

void print(const char *what, double value, double detail = 0) { std::printf("%s\t%.3f\t%.3f\n", what, value, detail); }

/// Connects the camera, whose detector is cold then, and shows a tab that does not poll.
void prepare(Session &session, PageWindow &window)
{
    StandaloneModel &model = session.standaloneModel();
    model.connect(session.firstCamera());
    if (!PageUser::waitFor([&model] { return model.connected(); }))
        throw std::runtime_error("the camera does not connect");
    // The time of the stopped clock is long ago.
    emulator::Clock::automatic();
    const PageUser user(window, window.page());
    const auto tabs = user.tabButtons();
    const auto setup = std::ranges::find_if(
        tabs, [](const QQuickItem *tab) { return tab->property("text").toString() == QStringLiteral("Setup"); });
    if (setup == tabs.end() || !user.openTab(**setup))
        throw std::runtime_error("the Setup tab does not open");
    PageUser::pause(untilSteady);
}

/// Shows the desk with its first width. The offscreen screen is too narrow for it, so the window does not grow by
/// itself.
void showDesk(PageWindow &window)
{
    constexpr int deskWidth = DeskSettings::DefaultWidth;

    window.split()->setShown(true);
    window.resize(DeskSplit::LeastPage.width() + DeskSplit::HandleWidth + deskWidth, 720);
    if (!PageUser::waitFor([&window] { return qRound(window.split()->desk()->width()) == deskWidth; }))
        throw std::runtime_error("the desk does not get its width");
}

/// The distance by which a view can be scrolled; 0 for other items.
double scrollRange(const QQuickItem &item)
{
    return item.inherits("QQuickFlickable") ? item.property("contentHeight").toDouble() - item.height() : 0;
}

/// The visible view below `item` that can be scrolled the farthest.
QQuickItem &longestView(const QQuickItem &item)
{
    const auto views = PageUser::visibleItems(item, [](QQuickItem &view) { return scrollRange(view) > 1; });
    if (views.isEmpty())
        throw std::runtime_error("nothing can be scrolled");
    return **std::ranges::max_element(
        views, [](const QQuickItem *a, const QQuickItem *b) { return scrollRange(*a) < scrollRange(*b); });
}

/// Scrolls a view down and up again, 60 times a second. Returns how many of its places are shown in a second.
double framesWhileScrolling(QQuickWindow &window, QQuickItem &view)
{
    constexpr int step = 7; // Pixels.
    constexpr double rate = 60;

    int place = 0;
    bool isNew = false;
    int frames = 0;
    const auto connection = QObject::connect(&window, &QQuickWindow::frameSwapped, &view,
                                             [&] { frames += std::exchange(isNew, false) ? 1 : 0; });
    QElapsedTimer time;
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer, &QTimer::timeout, &view, [&] {
        // As on a display, each place has its time, and the places whose time has passed are left out.
        const int now = static_cast<int>(double(time.elapsed()) * rate / 1000);
        if (now == std::exchange(place, now))
            return;
        const double range = scrollRange(view);
        view.setProperty("contentY", range - std::abs(std::fmod(now * step, 2 * range) - range));
        isNew = true;
    });
    time.start();
    timer.start(1);
    PageUser::pause(measured);
    const double seconds = double(time.elapsed()) / 1000;
    QObject::disconnect(connection);
    view.setProperty("contentY", 0);
    return frames / seconds;
}

void openAllCards(QQuickItem &desk)
{
    const auto headers = PageUser::visibleItems(desk, [](QQuickItem &item) {
        return item.objectName() == QStringLiteral("cardHeader") && !item.property("checked").toBool();
    });
    // As a click does; the control has no function for it.
    for (QQuickItem *header : headers)
        QMetaObject::invokeMethod(header, "toggled");
    PageUser::pause(untilSteady);
}

/// Measures a view of the picture, compared with the usage without a desk.
void measureView(PictureModel &picture, PictureModel::View view, const char *name, const Usage &without)
{
    picture.setView(view);
    PageUser::pause(untilSteady);
    int pictures = 0;
    const auto connection = QObject::connect(&picture, &PictureModel::imageChanged, [&pictures] { ++pictures; });
    const Usage usage = usageAtRest();
    QObject::disconnect(connection);
    print(name, (usage.processor / usage.time - without.processor / without.time) * 100, pictures * 1000 / usage.time);
}

} // namespace

int reportDesk()
{
    const QTemporaryDir folder;
    QSettings settings(folder.filePath(QStringLiteral("settings.ini")), QSettings::IniFormat);
    Options options;
    options.profile = QStringLiteral("everything");
    options.storage = folder.path();
    options.plugin = QCoreApplication::applicationDirPath() + QStringLiteral("/libhlxcamuiZVT.so");
    emulator::Clock::manual();
    Session session(options);
    PageWindow window(session, false, &settings);
    window.show();
    prepare(session, window);
    const Usage without = usageAtRest();
    QQuickItem &page = longestView(window.page());
    const double framesWithout = framesWhileScrolling(window, page);

    forgetPeak();
    const double memory = mebibytes("VmRSS");
    PictureModel &picture = *window.desk()->picture();
    showDesk(window);
    measureView(picture, PictureModel::Raw, "raw", without);
    measureView(picture, PictureModel::Corrected, "corrected", without);
    measureView(picture, PictureModel::Video, "video", without);
    print("memory", mebibytes("VmHWM") - memory);
    openAllCards(*window.split()->desk());
    QQuickItem &cards = longestView(*window.split()->desk());
    {
        const LongestGap gap;
        for (const auto view : {PictureModel::Raw, PictureModel::Corrected, PictureModel::Video}) {
            picture.setView(view);
            PageUser::pause(untilSteady);
        }
        print("gap", gap.longest().processor.count(), gap.longest().wall.count());
    }
    print("frames", framesWithout, framesWhileScrolling(window, page));
    {
        cards.setProperty("contentY", scrollRange(cards));
        PageUser::pause(untilSteady);
        const LongestGap gap;
        PageUser::pause(measured);
        print("gap of the rows", gap.longest().processor.count(), gap.longest().wall.count());
    }

    window.split()->setShown(false);
    PageUser::pause(untilSteady);
    const Usage hidden = usageAtRest();
    print("hidden", hidden.processor - without.processor, double(hidden.wakeUps - without.wakeUps));
    return 0;
}
