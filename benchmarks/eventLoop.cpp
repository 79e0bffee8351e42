#include "benchmarks/PageProgram.h"
#include "benchmarks/Report.h"
#include "benchmarks/figures.h"

#include <QList>
#include <QMap>
#include <QString>

#include <vector>

void measureEventLoop(Report &report)
{
    constexpr int rounds = 5;
    constexpr double limit = 16; // Milliseconds.
    constexpr double showingLimit = 50; // For the first showing of a tab.

    std::vector<double> steady;
    std::vector<double> showing;
    QMap<QByteArray, QByteArray> leftOut;
    for (int round = 0; round < rounds; ++round) {
        // One line for each figure: its kind, the milliseconds or the name of a call, and how often it was made.
        for (const QByteArray &line : PageProgram::run(QStringLiteral("loop")).split('\n')) {
            const auto fields = line.split('\t');
            if (fields.value(0) == "steady")
                steady.push_back(fields.value(1).toDouble());
            else if (fields.value(0) == "showing")
                showing.push_back(fields.value(1).toDouble());
            else if (fields.value(0) == "left out")
                leftOut[fields.value(1)] = fields.value(2);
        }
    }
    report.figure(QStringLiteral("longest gap of the event loop at 20 ms, ms"), median(steady), limit);
    if (showing.empty())
        report.note(QStringLiteral("no tab is shown for the first time after the first frame: there is only one"));
    else
        report.figure(QStringLiteral("longest gap at the first showing of a tab, ms"), median(showing), showingLimit);
    QStringList names;
    for (auto call = leftOut.cbegin(); call != leftOut.cend(); ++call)
        names << QString::fromLatin1(call.key() + " (" + call.value() + ')');
    report.note(QStringLiteral("left out, calls on the GUI thread: ") + names.join(QStringLiteral(", ")));
}
