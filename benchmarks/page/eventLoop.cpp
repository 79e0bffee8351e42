#include "benchmarks/page/modes.h"

#include "benchmarks/page/measuring.h"
#include "standalone/PageUser.h"

#include <QQuickItem>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace
{

/// A timer of one millisecond that records the longest gaps between its events. The wall-clock time excludes calls to
/// the camera on this thread, which mostly wait for the emulated delay.
class Probe
{
public:
    explicit Probe(std::vector<emulator::Gate *> gates) : m_gates(std::move(gates)), m_marks(m_gates.size())
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.setInterval(1);
        QObject::connect(&m_timer, &QTimer::timeout, [this] { tick(); });
        startOver();
        m_timer.start();
    }

    /// Counts gaps until the next frame as part of the first showing of a tab.
    void expectShowing(QQuickWindow &window)
    {
        m_showing = true;
        // Queued, so that the first timer event after the frame still counts as part of the showing.
        QObject::connect(
            &window, &QQuickWindow::frameSwapped, &m_timer, [this] { m_showingEnds = true; },
            Qt::ConnectionType(Qt::QueuedConnection | Qt::SingleShotConnection));
    }

    void print() const
    {
        print("steady", m_steady);
        if (m_shown.wall.count() > 0)
            print("showing", m_shown);
        for (const auto &[name, count] : m_leftOut)
            std::printf("left out\t%s\t%d\n", name.c_str(), count);
    }

private:
    static void print(const char *kind, const Cost &longest)
    {
        std::printf("%s\t%.3f\t%.3f\n", kind, longest.processor.count(), longest.wall.count());
    }

    void startOver()
    {
        m_stopwatch.restart();
        for (size_t i = 0; i < m_gates.size(); ++i)
            m_marks[i] = m_gates[i]->mark();
    }

    void tick()
    {
        Cost gap = m_stopwatch.cost();
        for (size_t i = 0; i < m_gates.size(); ++i)
            for (const emulator::Call &call : m_gates[i]->callsSince(m_marks[i]))
                if (call.thread == std::this_thread::get_id()) {
                    gap.wall -= call.duration;
                    ++m_leftOut[call.name];
                }
        Cost &longest = m_showing ? m_shown : m_steady;
        longest.processor = std::max(longest.processor, gap.processor);
        longest.wall = std::max(longest.wall, gap.wall);
        if (std::exchange(m_showingEnds, false))
            m_showing = false;
        startOver();
    }

    const std::vector<emulator::Gate *> m_gates;
    std::vector<size_t> m_marks;
    QTimer m_timer;
    Stopwatch m_stopwatch;
    Cost m_steady; ///< The longest gap so far.
    Cost m_shown; ///< The longest one at the first showing of a tab.
    bool m_showing = false;
    bool m_showingEnds = false;
    std::map<std::string, int> m_leftOut;
};

} // namespace

int reportEventLoop()
{
    constexpr int latency = 20; // Milliseconds.
    constexpr int enoughForPolls = 2500; // Milliseconds.

    LoadedPage page(LoadedPage::Kind::Plugin);
    page.show();
    const std::vector<emulator::Gate *> gates{&page.camera().gate(), &emulator::Sdk::gate()};
    for (auto *gate : gates)
        gate->delay(latency);
    Probe probe(gates);
    connectCamera(page);
    PageUser::pause(enoughForPolls);

    const PageUser user(page.window(), page.item());
    for (const bool first : {true, false})
        for (QQuickItem *tab : user.tabButtons()) {
            if (first && !tab->property("checked").toBool())
                probe.expectShowing(page.window());
            user.openTab(*tab);
            user.key(Qt::Key_F5);
            PageUser::pause(enoughForPolls);
        }
    probe.print();
    return 0;
}
