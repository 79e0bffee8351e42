#include "benchmarks/PageProgram.h"
#include "benchmarks/Report.h"
#include "benchmarks/figures.h"

#include <QMap>
#include <QString>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

void measureDesk(Report &report)
{
    constexpr double coreLimit = 25; // Percent.
    constexpr double wantedPictures = 25; // A second.
    constexpr double periodLimit = 42; // Milliseconds between two pictures: 24 a second at least.
    constexpr double memoryLimit = 40; // MiB.
    constexpr double gapLimit = 16; // Milliseconds.
    constexpr double framesLimit = 1.05;
    constexpr double hiddenLimit = 2; // Milliseconds of processor time in five seconds.
    constexpr double wakeUpLimit = 10;

    QMap<QByteArray, QList<QByteArray>> rows;
    for (const auto &row : PageProgram::table(QStringLiteral("desk")))
        rows[row.constFirst()] = row;
    const auto value = [&rows](const char *name, int field = 1) {
        bool isNumber = false;
        const double number = rows.value(name).value(field).toDouble(&isNumber);
        if (!isNumber) {
            std::fprintf(stderr, "zvtbench: zvtbenchpage has not measured \"%s\"\n", name);
            std::exit(2);
        }
        return number;
    };
    for (const char *view : {"raw", "corrected", "video"}) {
        const double pictures = value(view, 2);
        report.figure(QStringLiteral("pictures of 640x512, %1, ms from one to the next").arg(QLatin1String(view)),
                      1000 / pictures, periodLimit);
        // A busy machine makes fewer pictures, which must not make the figure better.
        report.figure(QStringLiteral("25 pictures of 640x512 a second, %1, % of a core").arg(QLatin1String(view)),
                      value(view) * wantedPictures / pictures, coreLimit,
                      QStringLiteral("measured with %1 pictures a second").arg(pictures, 0, 'f', 1));
    }
    report.figure(QStringLiteral("desk with the picture, MiB"), value("memory"), memoryLimit);
    report.figure(QStringLiteral("longest gap of the event loop with the picture, ms"), value("gap"), gapLimit,
                  QStringLiteral("%1 ms by the wall clock").arg(value("gap", 2), 0, 'f', 1));
    report.figure(QStringLiteral("the same with the last cards in view, ms"), value("gap of the rows"), gapLimit,
                  QStringLiteral("%1 ms by the wall clock").arg(value("gap of the rows", 2), 0, 'f', 1));
    report.figure(
        QStringLiteral("frames of the page that scrolls, without the desk over with it"),
        value("frames") / value("frames", 2), framesLimit,
        QStringLiteral("%1 and %2 a second").arg(value("frames"), 0, 'f', 1).arg(value("frames", 2), 0, 'f', 1));
    report.figure(QStringLiteral("desk hidden again, ms in 5 s"), std::max(value("hidden"), 0.0), hiddenLimit);
    report.figure(QStringLiteral("desk hidden again, wake-ups in 5 s"), std::max(value("hidden", 2), 0.0), wakeUpLimit);
}
