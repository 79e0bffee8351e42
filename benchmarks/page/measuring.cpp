#include "benchmarks/page/measuring.h"

#include "standalone/PageUser.h"

#include <QThreadPool>

#include <ctime>

Cost Stopwatch::now()
{
    timespec processor{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &processor);
    return {std::chrono::seconds(processor.tv_sec) + std::chrono::nanoseconds(processor.tv_nsec),
            std::chrono::steady_clock::now().time_since_epoch()};
}

Cost Stopwatch::cost() const
{
    const Cost end = now();
    return {end.processor - m_start.processor, end.wall - m_start.wall};
}

void connectCamera(LoadedPage &page)
{
    QThreadPool::globalInstance()->start([&page] { page.camera().connect(); });
    PageUser::waitFor([&page] { return page.camera().connected(); });
}
