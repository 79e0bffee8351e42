#include "benchmarks/PageProgram.h"
#include "benchmarks/Report.h"
#include "benchmarks/figures.h"

#include <QList>
#include <QString>

#include <array>
#include <chrono>
#include <vector>

namespace
{

/// The measured starts of one page.
struct Starts {
    const char *mode;
    std::vector<double> milliseconds{}; ///< From before the process starts to its first frame.
    std::vector<double> mebibytes{}; ///< The peak resident memory at the first frame.

    void run()
    {
        const auto start = std::chrono::steady_clock::now().time_since_epoch();
        // The program prints nanoseconds of the same clock, and kibibytes.
        const auto answer = PageProgram::run(QLatin1String(mode)).simplified().split(' ');
        const std::chrono::nanoseconds frame(answer.value(0).toLongLong());
        milliseconds.push_back(std::chrono::duration<double, std::milli>(frame - start).count());
        mebibytes.push_back(answer.value(1).toDouble() / 1024);
    }

    QString text() const
    {
        return QStringLiteral("%1 %2 ms, %3 MiB")
            .arg(QLatin1String(mode))
            .arg(median(milliseconds), 0, 'f', 1)
            .arg(median(mebibytes), 0, 'f', 1);
    }
};

void measureInstructions(Report &report)
{
    constexpr double ratioLimit = 1.25;
    constexpr double controlLimit = 0.9; // Million instructions.
    constexpr double objectLimit = 8;

    const double page = 1e-6 * PageProgram::instructions(QStringLiteral("page"));
    const double flat = 1e-6 * PageProgram::instructions(QStringLiteral("flat"));
    const double empty = 1e-6 * PageProgram::instructions(QStringLiteral("empty"));
    const double whole = 1e-6 * PageProgram::instructions(QStringLiteral("contents"));
    const auto counts = PageProgram::table(QStringLiteral("counts")).value(0);
    const double firstControls = counts.value(0).toDouble();
    const double objects = counts.value(1).toDouble();
    const double controls = counts.value(2).toDouble();
    report.figure(QStringLiteral("instructions to the first frame, over a flat page"), page / flat, ratioLimit,
                  QStringLiteral("page %1, flat %2, empty %3 million")
                      .arg(page, 0, 'f', 1)
                      .arg(flat, 0, 'f', 1)
                      .arg(empty, 0, 'f', 1));
    report.figure(QStringLiteral("million instructions to the first frame for each control"), (page - empty) / controls,
                  controlLimit, QStringLiteral("%1 controls").arg(controls));
    report.note(QStringLiteral("until the hidden pages have their contents: %1 million, %2 for each control")
                    .arg(whole, 0, 'f', 1)
                    .arg((whole - empty) / controls, 0, 'f', 2));
    report.figure(QStringLiteral("objects for each control at the first frame"), objects / firstControls, objectLimit,
                  QStringLiteral("%1 objects, %2 controls").arg(objects).arg(firstControls));
}

void measureTimeAndMemory(Report &report)
{
    constexpr int rounds = 21;
    constexpr double limit = 1.25;

    std::array<Starts, 3> pages{Starts{"page"}, Starts{"flat"}, Starts{"empty"}};
    for (const Starts &page : pages)
        PageProgram::run(QLatin1String(page.mode)); // Loads the files into the system's file cache.
    for (int round = 0; round < rounds; ++round)
        for (Starts &page : pages)
            page.run();
    const auto &[page, flat, empty] = pages;
    report.figure(QStringLiteral("peak memory at the first frame, over a flat page"),
                  median(page.mebibytes) / median(flat.mebibytes), limit);
    report.note(QStringLiteral("time to the first frame, over a flat page: %1")
                    .arg(median(page.milliseconds) / median(flat.milliseconds), 0, 'f', 2));
    report.note(page.text() + QStringLiteral("; ") + flat.text() + QStringLiteral("; ") + empty.text());
}

} // namespace

void measureStart(Report &report)
{
    measureInstructions(report);
    measureTimeAndMemory(report);
}
