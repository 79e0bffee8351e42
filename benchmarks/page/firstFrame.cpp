#include "benchmarks/page/modes.h"

#include <QApplication>
#include <QFile>

#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace
{

/// The peak of this process's resident memory in KiB.
int peakMemory()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n'))
        if (line.startsWith("VmHWM:"))
            return line.simplified().split(' ').value(1).toInt();
    return 0;
}

} // namespace

int reportFirstFrame(LoadedPage::Kind kind)
{
    LoadedPage page(kind);
    // A direct connection, so that the time is taken on the rendering thread when the frame is complete.
    QObject::connect(
        &page.window(), &QQuickWindow::frameSwapped, &page.window(),
        [] {
            const auto now = std::chrono::steady_clock::now().time_since_epoch();
            std::printf("%lld %d\n",
                        static_cast<long long>(std::chrono::duration_cast<std::chrono::nanoseconds>(now).count()),
                        peakMemory());
            std::fflush(stdout);
            std::_Exit(0);
        },
        Qt::DirectConnection);
    page.window().show();
    return QApplication::exec();
}
