#include "benchmarks/PageProgram.h"
#include "benchmarks/Report.h"
#include "benchmarks/figures.h"

#include <QList>
#include <QMap>
#include <QString>

#include <vector>

namespace
{

/// Measured costs in milliseconds, one value of each kind for each measurement.
struct Costs {
    std::vector<double> processor; ///< Of the GUI thread.
    std::vector<double> wall;

    /// Adds the fields 1 and 2 of a row.
    void add(const QList<QByteArray> &row)
    {
        processor.push_back(row.value(1).toDouble());
        wall.push_back(row.value(2).toDouble());
    }

    void report(Report &report, const QString &name, double limit) const
    {
        report.figure(name, median(processor), limit,
                      QStringLiteral("%1 ms by the wall clock").arg(median(wall), 0, 'f', 1));
    }
};

} // namespace

void measureEventLoop(Report &report)
{
    constexpr int rounds = 5;
    constexpr double limit = 16; // Milliseconds.
    constexpr double showingLimit = 50; // For the first showing of a tab.

    Costs steady;
    Costs showing;
    QMap<QByteArray, QByteArray> leftOut;
    for (int round = 0; round < rounds; ++round)
        for (const auto &row : PageProgram::table(QStringLiteral("loop"))) {
            if (row.constFirst() == "steady")
                steady.add(row);
            else if (row.constFirst() == "showing")
                showing.add(row);
            else
                leftOut[row.value(1)] = row.value(2);
        }
    steady.report(report, QStringLiteral("longest gap of the event loop at 20 ms, ms"), limit);
    if (showing.wall.empty())
        report.note(QStringLiteral("no tab is shown for the first time after the first frame: there is only one"));
    else
        showing.report(report, QStringLiteral("longest gap at the first showing of a tab, ms"), showingLimit);
    QStringList names;
    for (auto call = leftOut.cbegin(); call != leftOut.cend(); ++call)
        names << QString::fromLatin1(call.key() + " (" + call.value() + ')');
    report.note(QStringLiteral("left out of the wall clock, calls on the GUI thread: ")
                + names.join(QStringLiteral(", ")));
}

void measureOpenings(Report &report)
{
    constexpr int rounds = 5;
    constexpr double limit = 16; // Milliseconds.

    QList<QByteArray> names; // In the order in which they are opened.
    QMap<QByteArray, Costs> openings;
    for (int round = 0; round < rounds; ++round)
        for (const auto &row : PageProgram::table(QStringLiteral("opening"))) {
            if (round == 0)
                names << row.constFirst();
            openings[row.constFirst()].add(row);
        }
    for (const QByteArray &name : names)
        openings[name].report(report, QStringLiteral("first opening, ms: ") + QString::fromUtf8(name), limit);
}

void measureIdling(Report &report)
{
    // Milliseconds of processor time in ten seconds.
    constexpr double polling = 10 * 0.3; // On every tab the recorder is polled once a second.
    constexpr double limit = 2 + polling;
    constexpr double limitWithClock = 10 + polling; // The Status tab shows a clock.

    for (const auto &row : PageProgram::table(QStringLiteral("idle")))
        report.figure(QStringLiteral("10 s idle, ms: ") + QString::fromUtf8(row.constFirst()), row.value(1).toDouble(),
                      row.constFirst() == "Status" ? limitWithClock : limit);
}
