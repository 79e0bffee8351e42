#include "benchmarks/PageProgram.h"

#include <QCoreApplication>
#include <QProcess>

#include <cstdio>
#include <cstdlib>

QByteArray PageProgram::run(const QString &mode)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationDirPath() + QStringLiteral("/zvtbenchpage"), {mode});
    const bool ended = process.waitForFinished(120'000);
    if (!ended || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        std::fprintf(stderr, "zvtbench: zvtbenchpage %s has failed: %s\n", qPrintable(mode),
                     qPrintable(process.errorString()));
        std::exit(2);
    }
    return process.readAllStandardOutput();
}
