#include "benchmarks/page/modes.h"

#include "standalone/PageDriver.h"

#include <QCoreApplication>
#include <QQuickItem>
#include <QThreadPool>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <map>
#include <string>
#include <thread>
#include <vector>

namespace
{

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

/// Ticks each millisecond and notes how long the event loop took to come round to the next tick. The time that calls to
/// the camera spent on this thread is left out.
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

    /// Until the next frame a gap counts as one of the first showing of a tab.
    void expectShowing(QQuickWindow &window)
    {
        m_showing = true;
        // Queued: the tick behind the frame is still one of the showing.
        QObject::connect(
            &window, &QQuickWindow::frameSwapped, &m_timer, [this] { m_showingEnds = true; },
            Qt::ConnectionType(Qt::QueuedConnection | Qt::SingleShotConnection));
    }

    void print() const
    {
        std::printf("steady\t%.3f\n", m_steady);
        if (m_shown > 0)
            std::printf("showing\t%.3f\n", m_shown);
        for (const auto &[name, count] : m_leftOut)
            std::printf("left out\t%s\t%d\n", name.c_str(), count);
    }

private:
    void startOver()
    {
        m_last = Clock::now();
        for (size_t i = 0; i < m_gates.size(); ++i)
            m_marks[i] = m_gates[i]->mark();
    }

    void tick()
    {
        double gap = Milliseconds(Clock::now() - m_last).count();
        for (size_t i = 0; i < m_gates.size(); ++i)
            for (const emulator::Call &call : m_gates[i]->callsSince(m_marks[i]))
                if (call.thread == std::this_thread::get_id()) {
                    gap -= Milliseconds(call.duration).count();
                    ++m_leftOut[call.name];
                }
        double &longest = m_showing ? m_shown : m_steady;
        longest = std::max(longest, gap);
        if (std::exchange(m_showingEnds, false))
            m_showing = false;
        startOver();
    }

    const std::vector<emulator::Gate *> m_gates;
    std::vector<size_t> m_marks;
    QTimer m_timer;
    Clock::time_point m_last;
    double m_steady = 0; ///< Milliseconds.
    double m_shown = 0;
    bool m_showing = false;
    bool m_showingEnds = false;
    std::map<std::string, int> m_leftOut;
};

void pause(int milliseconds)
{
    PageDriver::waitFor([] { return false; }, milliseconds);
}

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
    QThreadPool::globalInstance()->start([&page] { page.camera().connect(); });
    PageDriver::waitFor([&page] { return page.camera().connected(); });
    pause(enoughForPolls);

    const PageDriver driver(page.window(), page.item());
    for (const bool first : {true, false})
        for (QQuickItem *tab : driver.tabButtons()) {
            if (first && !tab->property("checked").toBool())
                probe.expectShowing(page.window());
            driver.openTab(*tab);
            driver.key(Qt::Key_F5);
            pause(enoughForPolls);
        }
    probe.print();
    return 0;
}
