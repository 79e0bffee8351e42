#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>

/// Writes a profile that extends another one by these devices, a JSON object. Returns the path of its file, which has a
/// new name in the folder.
inline QString writeProfile(const QString &folder, const QByteArray &extended, const QByteArray &devices)
{
    const auto count = QDir(folder).entryList({QStringLiteral("profile*.json")}).size();
    QFile file(QStringLiteral("%1/profile%2.json").arg(folder).arg(count + 1));
    const QByteArray text = R"({"extends": ")" + extended + R"(", "devices": )" + devices + "}";
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("cannot write %s", qPrintable(file.fileName()));
    return file.fileName();
}
