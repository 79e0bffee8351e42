#include "benchmarks/PageProgram.h"

#include <QCoreApplication>
#include <QProcess>
#include <QRegularExpression>

#include <cstdio>
#include <cstdlib>

namespace
{

/// Starts the process and waits for its end. Ends the benchmark program if it fails.
void run(QProcess &process, const QStringList &command)
{
    constexpr int limit = 300'000; // Milliseconds.

    process.start(command.constFirst(), command.mid(1));
    const bool ended = process.waitForFinished(limit);
    if (ended && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0)
        return;
    std::fprintf(stderr, "zvtbench: %s has failed: %s\n%s", qPrintable(command.join(u' ')),
                 qPrintable(process.errorString()), process.readAllStandardError().constData());
    std::exit(2);
}

QString program() { return QCoreApplication::applicationDirPath() + QStringLiteral("/zvtbenchpage"); }

} // namespace

QByteArray PageProgram::run(const QString &mode)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    ::run(process, {program(), mode});
    return process.readAllStandardOutput();
}

QList<QList<QByteArray>> PageProgram::table(const QString &mode)
{
    QList<QList<QByteArray>> rows;
    for (const QByteArray &line : run(mode).split('\n'))
        if (!line.isEmpty())
            rows << line.split('\t');
    return rows;
}

double PageProgram::instructions(const QString &mode)
{
    QProcess process;
    ::run(process,
          {QStringLiteral("valgrind"), QStringLiteral("--tool=callgrind"),
           QStringLiteral("--callgrind-out-file=/dev/null"), program(), mode});
    const QString words = QString::fromUtf8(process.readAllStandardError());
    const auto total = QRegularExpression(QStringLiteral("Collected : (\\d+)")).match(words);
    if (!total.hasMatch()) {
        std::fprintf(stderr, "zvtbench: valgrind has counted nothing:\n%s", qPrintable(words));
        std::exit(2);
    }
    return total.captured(1).toDouble();
}
