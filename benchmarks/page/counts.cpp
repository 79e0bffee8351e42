#include "benchmarks/page/modes.h"

#include "benchmarks/page/Census.h"

#include <QFile>

#include <cstdio>
#include <cstdlib>

int writeFlatPage(const QString &fileName)
{
    LoadedPage page(LoadedPage::Kind::Plugin);
    page.show();
    page.awaitContents();
    const Census census(page.item());
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly) || file.write(census.flatPage().toUtf8()) < 0) {
        std::fprintf(stderr, "zvtbenchpage: %s: %s\n", qPrintable(fileName), qPrintable(file.errorString()));
        return 2;
    }
    std::printf("%s\n", qPrintable(census.summary()));
    return 0;
}

int reportCounts()
{
    LoadedPage page(LoadedPage::Kind::Plugin);
    page.show();
    const Census first(page.item());
    page.awaitContents();
    const Census whole(page.item());
    std::printf("%lld\t%lld\t%lld\n", static_cast<long long>(first.controls()), static_cast<long long>(first.objects()),
                static_cast<long long>(whole.controls()));
    return 0;
}

int reportContents()
{
    LoadedPage page(LoadedPage::Kind::Plugin);
    page.show();
    page.awaitContents();
    std::_Exit(0);
}
