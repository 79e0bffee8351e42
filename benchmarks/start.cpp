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

/// What the starts of one page took.
struct Starts {
    const char *mode;
    std::vector<double> milliseconds{}; ///< From before the process is started to its first frame.
    std::vector<double> mebibytes{}; ///< The peak of its resident memory up to there.

    void run()
    {
        const auto start = std::chrono::steady_clock::now().time_since_epoch();
        // The program answers with the same clock's nanoseconds and with kibibytes.
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

} // namespace

void measureStart(Report &report)
{
    constexpr int rounds = 21;
    constexpr double limit = 1.25;

    std::array<Starts, 3> pages{Starts{"page"}, Starts{"flat"}, Starts{"empty"}};
    for (const Starts &page : pages)
        PageProgram::run(QLatin1String(page.mode)); // From here on the files are in the system's memory.
    for (int round = 0; round < rounds; ++round)
        for (Starts &page : pages)
            page.run();
    const auto &[page, flat, empty] = pages;
    report.figure(QStringLiteral("start to first frame, over a flat page"),
                  median(page.milliseconds) / median(flat.milliseconds), limit);
    report.figure(QStringLiteral("peak memory at the first frame, over a flat page"),
                  median(page.mebibytes) / median(flat.mebibytes), limit);
    report.note(page.text() + QStringLiteral("; ") + flat.text() + QStringLiteral("; ") + empty.text());
}
