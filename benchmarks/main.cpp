#include "benchmarks/Report.h"
#include "benchmarks/figures.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <cstdio>
#include <utility>

// zvtbench [refresh] [loop] [start] [open] [idle] [lists] [conversion] [video] [desk]: runs the named measurements, or
// all. The exit status is 1 if a figure is above its limit.
int main(int argc, char *argv[])
{
    // Neither this program nor those it starts read or write files of the user's home folder.
    const QTemporaryDir home;
    for (const char *variable : {"XDG_RUNTIME_DIR", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"})
        qputenv(variable, home.path().toUtf8());
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QCoreApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("zvt-bench"));
    QCoreApplication::setApplicationName(QStringLiteral("zvtbench"));

    const std::pair<const char *, void (*)(Report &)> figures[]
        = {{"refresh", measureRefreshes},     {"loop", measureEventLoop}, {"start", measureStart},
           {"open", measureOpenings},         {"idle", measureIdling},    {"lists", measureLists},
           {"conversion", measureConversion}, {"video", measureVideo},    {"desk", measureDesk}};
    QStringList wanted = QCoreApplication::arguments().mid(1);
    const bool everything = wanted.isEmpty();
    Report report;
    for (const auto &[name, measure] : figures)
        if (wanted.removeAll(QLatin1String(name)) > 0 || everything)
            measure(report);
    if (!wanted.isEmpty()) {
        std::fprintf(stderr, "zvtbench: there is no figure \"%s\"\n", qPrintable(wanted.constFirst()));
        return 2;
    }
    return report.missed() == 0 ? 0 : 1;
}
