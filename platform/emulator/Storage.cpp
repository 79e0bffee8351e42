#include "platform/emulator/Storage.h"

#include "platform/emulator/SetupError.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QSaveFile>
#include <QTemporaryFile>

#include <utility>

namespace emulator
{

namespace
{

constexpr auto cameraMagic = "zvt-emulated-camera";
constexpr int version = 1;

[[noreturn]] void refuse(const QString &path, const QString &why)
{
    throw SetupError(QStringLiteral("storage %1: %2").arg(path, why).toStdString());
}

} // namespace

Storage::Storage(QString folder) : m_folder(std::move(folder))
{
    if (const QFileInfo info(m_folder); info.exists() && !info.isDir())
        refuse(m_folder, QStringLiteral("not a folder"));
    for (const auto *subfolder : {"states", "nucs", "movies", "lens"}) {
        const QString path = m_folder + QLatin1Char('/') + QLatin1String(subfolder);
        if (!QDir().mkpath(path))
            refuse(path, QStringLiteral("the folder cannot be made"));
    }
    if (QTemporaryFile probe(m_folder + QStringLiteral("/probe")); !probe.open())
        refuse(m_folder, QStringLiteral("cannot be written to: %1").arg(probe.errorString()));
    for (const auto &name : QDir(m_folder).entryList({QStringLiteral("*.json")}))
        read(name);
}

QJsonObject Storage::read(const QString &name) const
{
    const QString path = m_folder + QLatin1Char('/') + name;
    return QFile::exists(path) ? readFile(path, cameraMagic) : QJsonObject();
}

void Storage::write(const QString &name, const QJsonObject &values) const
{
    writeFile(m_folder + QLatin1Char('/') + name, cameraMagic, values);
}

QJsonObject Storage::readFile(const QString &path, const char *magic, qint64 maximumSize)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        refuse(file.fileName(), QStringLiteral("cannot be read: %1").arg(file.errorString()));
    const QByteArray content = file.read(maximumSize + 1);
    QJsonParseError error;
    const auto document = QJsonDocument::fromJson(content, &error);
    if (content.size() > maximumSize || error.error != QJsonParseError::NoError || !document.isObject()
        || document[QLatin1String("magic")] != QLatin1String(magic) || !document[QLatin1String("values")].isObject())
        refuse(file.fileName(), QStringLiteral("corrupt, or not a file of an emulated camera"));
    if (document[QLatin1String("version")] != version)
        refuse(file.fileName(), QStringLiteral("written by another version of this program"));
    return document[QLatin1String("values")].toObject();
}

void Storage::writeFile(const QString &path, const char *magic, const QJsonObject &values)
{
    const QJsonObject content{{QLatin1String("magic"), QLatin1String(magic)},
                              {QLatin1String("version"), version},
                              {QLatin1String("values"), values}};
    QSaveFile file(path);
    const QByteArray bytes = QJsonDocument(content).toJson();
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        refuse(file.fileName(), QStringLiteral("cannot be written: %1").arg(file.errorString()));
}

} // namespace emulator
