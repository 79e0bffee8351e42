#include "platform/emulator/devices/VideoPalette.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>

#include <map>
#include <mutex>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

const QString folder = u":/emulator/palettes"_s;
const QString suffix = u".json"_s;

image::Palette read(const QString &name)
{
    QFile file(folder + u'/' + name + suffix);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("the palette %s is missing", qPrintable(name));
    const QJsonArray colors = QJsonDocument::fromJson(file.readAll()).array();
    image::Palette palette;
    for (qsizetype i = 0; i < qsizetype(palette.size()); ++i) {
        const auto component = [color = colors.at(i)](int index) { return static_cast<uint8_t>(color[index].toInt()); };
        palette[static_cast<size_t>(i)] = {component(0), component(1), component(2)};
    }
    return palette;
}

/// Returns the colours of a palette of the camera. The file is read at the first use of the palette in the process. Any
/// thread.
const image::Palette &colorsOf(const QString &name)
{
    static std::mutex reading;
    static std::map<QString, const image::Palette> palettes;
    const std::lock_guard lock(reading);
    auto place = palettes.find(name);
    if (place == palettes.end())
        place = palettes.emplace(name, read(name)).first;
    return place->second;
}

Refusal checkListed(const std::string &name)
{
    const bool listed = VideoPalette::names().contains(QString::fromStdString(name));
    return listed ? Refusal() : u"must be one of "_s + VideoPalette::names().join(u", "_s);
}

} // namespace

VideoPalette::VideoPalette(Camera &camera, Section &section) : Device(camera)
{
    addSettings(section,
                {
                    {u"name"_s, m_name, Profile},
                    {u"name"_s, m_name, checkListed, Snapshot | OtherClient},
                });
}

const QStringList &VideoPalette::names()
{
    static const QStringList list = [] {
        QStringList names;
        for (const QFileInfo &file : QDir(folder).entryInfoList({u"*"_s + suffix}, QDir::Files, QDir::Name))
            names.append(file.completeBaseName());
        return names;
    }();
    return list;
}

const image::Palette &VideoPalette::palette() const
{
    const QString name = QString::fromStdString(m_name);
    return colorsOf(names().contains(name) ? name : QString::fromLatin1(defaultName));
}

} // namespace emulator
