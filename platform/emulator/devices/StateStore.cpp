#include "platform/emulator/devices/StateStore.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/fileNames.h"
#include "platform/emulator/replaceFile.h"
#include "platform/emulator/stateFile.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <tuple>
#include <utility>

namespace emulator
{

namespace
{

const auto suffix = QStringLiteral(".qsf");
const auto currentKey = QStringLiteral("current");
constexpr double maximumSeconds = 60;

int64_t milliseconds(Section &section, const QString &key, double fallback)
{
    return static_cast<int64_t>(section.number(key, fallback, 0, maximumSeconds) * 1000);
}

bool isSpecial(const std::string &name)
{
    return name == StateStore::factoryDefaults || name == StateStore::hardDefaults;
}

/// Returns whether a state with a file can have this name.
bool isOrdinaryName(const std::string &name) { return isStateName(name) && !isSpecial(name); }

} // namespace

StateStore::StateStore(Camera &camera, Section &section)
    : Device(camera), m_saveMilliseconds(milliseconds(section, QStringLiteral("saveSeconds"), 0.4)),
      m_loadMilliseconds(milliseconds(section, QStringLiteral("loadSeconds"), 0.8))
{
    const auto known = [this](const std::string &name) {
        return isKnown(name) && settingsOf(name) ? Refusal() : QStringLiteral("must be a state that can be loaded");
    };
    addSettings(section,
                {{currentKey, [this] { return m_current; },
                  [this](const std::string &name) { return applyState(name); }, known, OtherClient}});
}

std::vector<StateStore::Entry> StateStore::list() const
{
    std::vector<Entry> entries;
    const QDir folder(camera().folder() + QStringLiteral("/states"));
    const auto files = folder.entryInfoList({QLatin1Char('*') + suffix},
                                            QDir::Files | QDir::Hidden | QDir::CaseSensitive, QDir::Unsorted);
    for (const QFileInfo &file : files) {
        const std::string name = file.fileName().chopped(suffix.size()).toStdString();
        if (isOrdinaryName(name))
            entries.push_back({name, file.size(), file.lastModified().toMSecsSinceEpoch()});
    }
    std::ranges::sort(entries, {}, [](const Entry &entry) { return std::tie(entry.written, entry.name); });
    return entries;
}

bool StateStore::exists(const std::string &name) const
{
    return isOrdinaryName(name) && QFileInfo(pathOf(name)).isFile();
}

Status StateStore::saveCurrent() { return saveAs(m_current); }

Status StateStore::saveAs(const std::string &name) { return isOrdinaryName(name) ? store(name) : Refused; }

Status StateStore::saveFactoryDefaults() { return store(factoryDefaults); }

Status StateStore::load(const std::string &name) { return exists(name) ? loadWithDelay(name) : Refused; }

Status StateStore::remove(const std::string &name)
{
    return exists(name) && QFile::remove(pathOf(name)) ? Ok : Refused;
}

Status StateStore::rename(const std::string &oldName, const std::string &newName)
{
    return exists(oldName) && isOrdinaryName(newName) && QFile::rename(pathOf(oldName), pathOf(newName)) ? Ok : Refused;
}

Status StateStore::upload(const QString &localPath, const FileTransfer::Progress &progress)
{
    const std::string name = QFileInfo(localPath).completeBaseName().toStdString();
    return isOrdinaryName(name) ? receive(name, localPath, progress) : Refused;
}

Status StateStore::uploadFactoryDefaults(const QString &localPath, const FileTransfer::Progress &progress)
{
    return receive(factoryDefaults, localPath, progress);
}

Status StateStore::download(const std::string &name, const QString &localPath, const FileTransfer::Progress &progress)
{
    return exists(name) ? send(name, localPath, progress) : Refused;
}

Status StateStore::downloadFactoryDefaults(const QString &localPath, const FileTransfer::Progress &progress)
{
    return send(factoryDefaults, localPath, progress);
}

std::string StateStore::stateAtStart(const QJsonObject &memory) const
{
    const std::string name = memory.value(currentKey).toString().toStdString();
    return isKnown(name) && settingsOf(name) ? name : factoryDefaults;
}

QJsonObject StateStore::save() const { return {{currentKey, QString::fromStdString(m_current)}}; }

QStringList StateStore::restore(const QJsonObject &values)
{
    // The last state may have been deleted since.
    m_current = stateAtStart(values);
    return {};
}

QString StateStore::pathOf(const std::string &name) const
{
    const QString file = name == factoryDefaults ? QStringLiteral("/factory")
                                                 : QStringLiteral("/states/") + QString::fromStdString(name);
    return camera().folder() + file + suffix;
}

bool StateStore::isKnown(const std::string &name) const { return isSpecial(name) || exists(name); }

/// Returns the contents of the state file, empty if it cannot be read.
QByteArray StateStore::contentOf(const std::string &name) const
{
    QFile file(pathOf(name));
    if (name == hardDefaults || (name == factoryDefaults && !file.exists()))
        return toStateFile(camera().profile().name(), camera().newSettings());
    return file.open(QIODevice::ReadOnly) ? file.read(maximumStateFileSize + 1) : QByteArray();
}

std::optional<QJsonObject> StateStore::settingsIn(const QByteArray &content) const
{
    return fromStateFile(content, camera().profile().name());
}

Status StateStore::store(std::string name)
{
    if (const Status status = camera().letTimePass(m_saveMilliseconds); status != Ok)
        return status;
    if (!replaceFile(pathOf(name), toStateFile(camera().profile().name(), camera().snapshot())))
        return Refused;
    m_current = std::move(name);
    remember();
    return Ok;
}

Status StateStore::loadWithDelay(const std::string &name)
{
    // Refuses a state that cannot be loaded immediately, not after the duration of a load.
    if (!settingsOf(name))
        return Refused;
    if (const Status status = camera().letTimePass(m_loadMilliseconds); status != Ok)
        return status;
    return applyState(name);
}

Status StateStore::applyState(const std::string &name)
{
    const auto settings = settingsOf(name);
    if (!settings)
        return Refused;
    m_current = name;
    camera().restore(*settings, QStringLiteral("state ") + QString::fromStdString(name));
    return Ok;
}

Status StateStore::receive(const std::string &name, const QString &localPath, const FileTransfer::Progress &progress)
{
    QByteArray content;
    const Status status = camera().device<FileTransfer>()->upload(localPath, maximumStateFileSize, content, progress);
    if (status != Ok)
        return status;
    return settingsIn(content) && replaceFile(pathOf(name), content) ? Ok : Refused;
}

Status StateStore::send(const std::string &name, const QString &localPath, const FileTransfer::Progress &progress)
{
    const QByteArray content = contentOf(name);
    return settingsIn(content) ? camera().device<FileTransfer>()->download(content, localPath, progress) : Refused;
}

} // namespace emulator
