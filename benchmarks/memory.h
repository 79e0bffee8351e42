#pragma once

#include <QByteArray>
#include <QFile>

#include <stdexcept>

/// Returns an entry of the process's memory in MiB.
inline double mebibytes(const QByteArray &entry)
{
    QFile file(QStringLiteral("/proc/self/status"));
    if (file.open(QIODevice::ReadOnly))
        for (const QByteArray &line : file.readAll().split('\n'))
            if (line.startsWith(entry))
                return line.mid(entry.size() + 1).trimmed().split(' ').constFirst().toDouble() / 1024;
    throw std::runtime_error("the memory of the process cannot be read");
}

/// Lets the peak of the memory begin at its present value.
inline void forgetPeak()
{
    QFile file(QStringLiteral("/proc/self/clear_refs"));
    if (!file.open(QIODevice::WriteOnly) || file.write("5") != 1)
        throw std::runtime_error("the peak of the memory cannot be reset");
}
