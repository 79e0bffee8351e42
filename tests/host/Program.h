#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

/// Runs the built programs as a user does.
namespace Program
{

struct Result {
    int status = -1; ///< The exit status; -1: it crashed, or did not end in time.
    QString output;
    QString errors;
};

inline QString folder() { return QStringLiteral(ZVT_BINARY_DIR "/bin"); }

inline QString file() { return folder() + QStringLiteral("/zvtcontroller"); }

/// Runs zvtcontroller, or another program.
inline Result run(const QStringList &arguments, const QString &program = file())
{
    QProcess process;
    process.start(program, arguments);
    Result result;
    if (process.waitForFinished(120'000) && process.exitStatus() == QProcess::NormalExit)
        result.status = process.exitCode();
    result.output = QString::fromUtf8(process.readAllStandardOutput());
    result.errors = QString::fromUtf8(process.readAllStandardError());
    return result;
}

} // namespace Program
