#include "benchmarks/page/modes.h"

#include "benchmarks/page/measuring.h"
#include "standalone/PageUser.h"

#include <QQuickItem>

#include <cstdio>

int reportIdle()
{
    constexpr int untilAnimationsEnd = 1500; // Milliseconds.
    constexpr int idle = 10'000; // Milliseconds.

    LoadedPage page(LoadedPage::Kind::Plugin);
    page.show();
    connectCamera(page);
    const PageUser user(page.window(), page.item());
    for (QQuickItem *tab : user.tabButtons()) {
        user.openTab(*tab);
        PageUser::pause(untilAnimationsEnd);
        const Stopwatch stopwatch;
        PageUser::pause(idle);
        std::printf("%s\t%.3f\n", qPrintable(tab->property("text").toString()), stopwatch.cost().processor.count());
    }
    return 0;
}
