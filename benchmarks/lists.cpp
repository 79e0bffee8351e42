#include "benchmarks/Report.h"
#include "benchmarks/figures.h"
#include "hlxui/ObjectListModel.h"

#include <QCoreApplication>

#include <chrono>
#include <vector>

namespace
{

/// Seconds to fill and to empty a list.
struct Times {
    double append = 0;
    double removeAll = 0;
};

Times timesOf(int rows)
{
    using Clock = std::chrono::steady_clock;
    using Seconds = std::chrono::duration<double>;

    ObjectListModel list(true);
    const auto start = Clock::now();
    for (int row = 0; row < rows; ++row)
        list.append(new QObject);
    const auto filled = Clock::now();
    list.removeAll();
    // Deletes the removed items, which otherwise only an event loop would do.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return {Seconds(filled - start).count(), Seconds(Clock::now() - filled).count()};
}

} // namespace

void measureLists(Report &report)
{
    constexpr int rounds = 15;
    constexpr int few = 1'000;
    constexpr int many = 10'000;
    constexpr double limit = 15; // 10 is linear; the larger list does not fit into the processor caches.

    timesOf(many);
    std::vector<double> append[2];
    std::vector<double> removeAll[2];
    for (int round = 0; round < rounds; ++round)
        for (const bool large : {false, true}) {
            const Times times = timesOf(large ? many : few);
            append[large].push_back(times.append);
            removeAll[large].push_back(times.removeAll);
        }
    report.figure(QStringLiteral("ObjectListModel::append, 10 000 rows over 1 000"),
                  median(append[true]) / median(append[false]), limit);
    report.figure(QStringLiteral("ObjectListModel::removeAll, 10 000 rows over 1 000"),
                  median(removeAll[true]) / median(removeAll[false]), limit);
}
