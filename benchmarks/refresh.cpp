#include "benchmarks/Report.h"
#include "benchmarks/figures.h"
#include "plugin/ZvtCameraModel.h"
#include "tests/support/CameraRig.h"

#include <QCoreApplication>
#include <QThreadPool>
#include <QTimer>

#include <chrono>
#include <functional>
#include <thread>
#include <vector>

namespace
{

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

/// One way to start a read.
struct Reader {
    QString name;
    std::function<void()> start;
};

struct Sample {
    double elapsed = 0; ///< Seconds from the start of the read until everything is published.
    double inside = 0; ///< Seconds that the gate measured inside its calls.
    int calls = 0;
};

/// Reads that are started by a timer instead of a refresh() method.
const std::pair<const char *, const char *> polls[] = {{"StatusTabModel", "updateTimeTimer"}};

/// All models below the root with a refresh() method, and all polls.
std::vector<Reader> readersOf(const QObject &root)
{
    std::vector<Reader> readers;
    for (QObject *model : root.findChildren<QObject *>()) {
        const QString name = QString::fromLatin1(model->metaObject()->className());
        if (model->metaObject()->indexOfMethod("refresh()") >= 0)
            readers.push_back({name, [model] { QMetaObject::invokeMethod(model, "refresh"); }});
        for (const auto &[owner, timerName] : polls)
            if (auto *timer
                = name == QLatin1String(owner) ? model->findChild<QTimer *>(QLatin1String(timerName)) : nullptr)
                readers.push_back(
                    {name + QStringLiteral(" poll"), [timer] { QMetaObject::invokeMethod(timer, "timeout"); }});
    }
    return readers;
}

/// Runs the event loop until all tasks have ended and the events they posted have been delivered.
void finishTasks()
{
    const auto *pool = QThreadPool::globalInstance();
    do {
        while (pool->activeThreadCount() > 0) {
            QCoreApplication::processEvents();
            std::this_thread::yield();
        }
        QCoreApplication::processEvents();
    } while (pool->activeThreadCount() > 0);
}

Sample sampleOf(const Reader &reader, const std::vector<emulator::Gate *> &gates)
{
    std::vector<size_t> marks;
    for (const auto *gate : gates)
        marks.push_back(gate->mark());
    Sample sample;
    const auto start = Clock::now();
    reader.start();
    finishTasks();
    sample.elapsed = Seconds(Clock::now() - start).count();
    for (size_t i = 0; i < gates.size(); ++i)
        for (const emulator::Call &call : gates[i]->callsSince(marks[i])) {
            sample.inside += Seconds(call.duration).count();
            ++sample.calls;
        }
    return sample;
}

void measure(const Reader &reader, CameraRig &rig, Report &report)
{
    constexpr int rounds = 9;
    constexpr int readsWithoutLatency = 25; // This many reads still take less time than one read of a slow camera.
    constexpr int latency = 20; // Milliseconds.
    constexpr double ratioLimit = 1.05;
    constexpr double allowance = 1e-3; // Seconds for a read ...
    constexpr double callAllowance = 1e-5; // ... and for each of its calls.

    const std::vector<emulator::Gate *> gates{&rig.gate(), &emulator::Sdk::gate()};
    std::vector<double> ratios;
    std::vector<double> milliseconds;
    std::vector<double> allowed;
    int calls = 0;
    for (int round = 0; round < rounds; ++round) {
        for (auto *gate : gates)
            gate->delay(latency);
        const Sample slow = sampleOf(reader, gates);
        for (auto *gate : gates)
            gate->delay(0);
        if (slow.calls == 0) {
            report.note(reader.name + QStringLiteral(": reads nothing"));
            return;
        }
        ratios.push_back(slow.elapsed / slow.inside);
        for (int read = 0; read < readsWithoutLatency; ++read) {
            const Sample quick = sampleOf(reader, gates);
            milliseconds.push_back(1e3 * quick.elapsed);
            allowed.push_back(1e3 * (allowance + quick.calls * callAllowance));
        }
        calls = std::max(calls, slow.calls);
    }
    report.figure(reader.name + QStringLiteral(", over time in the gate at 20 ms"), median(ratios), ratioLimit,
                  QStringLiteral("up to %1 calls").arg(calls));
    report.figure(reader.name + QStringLiteral(", milliseconds without latency"), median(milliseconds),
                  median(allowed));
}

} // namespace

void measureRefreshes(Report &report)
{
    CameraRig rig;
    const ZvtCameraModel root(rig.controller(), nullptr);
    finishTasks();
    for (const Reader &reader : readersOf(root))
        measure(reader, rig, report);
}
