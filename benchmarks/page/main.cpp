#include "benchmarks/page/modes.h"

#include <QApplication>
#include <QQuickStyle>

#include <cstdio>
#include <exception>

namespace
{

int run(const QStringList &arguments)
{
    const QString mode = arguments.value(1);
    if (mode == QLatin1String("page"))
        return reportFirstFrame(LoadedPage::Kind::Plugin);
    if (mode == QLatin1String("flat"))
        return reportFirstFrame(LoadedPage::Kind::Flat);
    if (mode == QLatin1String("empty"))
        return reportFirstFrame(LoadedPage::Kind::Empty);
    if (mode == QLatin1String("loop"))
        return reportEventLoop();
    if (mode == QLatin1String("opening"))
        return reportOpenings();
    if (mode == QLatin1String("idle"))
        return reportIdle();
    if (mode == QLatin1String("counts"))
        return reportCounts();
    if (mode == QLatin1String("contents"))
        return reportContents();
    if (mode == QLatin1String("desk"))
        return reportDesk();
    if (mode == QLatin1String("census"))
        return writeFlatPage(arguments.value(2));
    std::fprintf(stderr,
                 "zvtbenchpage page | flat | empty | loop | opening | idle | counts | contents | desk | census FILE\n");
    return 2;
}

} // namespace

// Loads one page in its own process, for zvtbench and for the build. Not linked with the models.
int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("zvt-bench"));
    QApplication::setApplicationName(QStringLiteral("zvtbenchpage"));
    QQuickStyle::setStyle(QStringLiteral("Fusion"));
    try {
        return run(QApplication::arguments());
    } catch (const std::exception &error) {
        std::fprintf(stderr, "zvtbenchpage: %s\n", error.what());
        return 2;
    }
}
