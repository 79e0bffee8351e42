#include "platform/emulator/Profile.h"

#include "platform/emulator/DeviceKind.h"
#include "platform/emulator/Section.h"
#include "platform/emulator/SetupError.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

#include <array>

namespace emulator
{

namespace
{

const auto builtInFolder = QStringLiteral(":/emulator/profiles");
// In bytes; more than any profile needs. A movie or a device file is not read to its end.
constexpr qint64 maximumFileSize = qint64{1024} * 1024;

constexpr auto gainLevels = "numFPAGainLevels";
constexpr std::array flags{"hasFrontPanelTemperature",
                           "hasAirGapTemperature",
                           "hasInternalTemperature",
                           "hasChassisTemperature",
                           "hasFPAGain",
                           "hasReplaceableFilters",
                           "hasGigEPreset",
                           "hasVideoOutputSettings",
                           "hasLensStatesFunctionality",
                           "hasContinuousOpticalZoom",
                           "hasDiscontinuousOpticalZoom",
                           "hasFocus",
                           "hasFocusToDistance",
                           "hasFovMovePercent",
                           "hasFocusMovePercent",
                           "hasWindowSettings",
                           "hasWindowDimensionsThatCanBeArbitrary",
                           "hasBilinearZoom",
                           "hasFilterWheel",
                           "hasFlag",
                           "hasFlagCooler",
                           "hasLensCover",
                           "hasBadPixelCorrection",
                           "hasUpdateRate",
                           "hasTemporalFilter",
                           "hasOverlayCustomization",
                           "hasVideoAgcRoi",
                           "hasCameraLinkMode",
                           "hasCoaXPressLinksToUse",
                           "hasSkimming",
                           "hasLockin",
                           "hasAdvancedMiscSettings",
                           "hasSsd",
                           "hasTeCooler"};

QString pathOf(const QString &builtIn) { return QStringLiteral("%1/%2.json").arg(builtInFolder, builtIn); }

QJsonObject readFile(const QString &path, const QString &messagePrefix)
{
    const auto refuse
        = [&](const QString &why) { throw SetupError(QStringLiteral("%1: %2").arg(messagePrefix, why).toStdString()); };
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        refuse(QStringLiteral("cannot be read: %1").arg(file.errorString()));
    const QByteArray content = file.read(maximumFileSize + 1);
    if (content.size() > maximumFileSize)
        refuse(QStringLiteral("too large for a profile"));
    QJsonParseError error;
    const auto document = QJsonDocument::fromJson(content, &error);
    if (error.error != QJsonParseError::NoError)
        refuse(QStringLiteral("not JSON at byte %1: %2").arg(error.offset).arg(error.errorString()));
    if (!document.isObject())
        refuse(QStringLiteral("must hold one object"));
    return document.object();
}

/// Reads the keys of an identity into `values`. Values of keys that the section does not contain stay the same.
void mergeIdentity(Section section, QJsonObject &values)
{
    for (const auto *key : {"boardSet", "type", "subtype", "detector", "readout", "variant", "pleora"})
        values[QLatin1String(key)]
            = section.integer(QLatin1String(key), values.value(QLatin1String(key)).toInt(), 0, 255);
    for (const auto *key : {"model", "serial"})
        values[QLatin1String(key)] = section.text(QLatin1String(key), values.value(QLatin1String(key)).toString());
    section.finish();
}

/// Reads the keys of the capabilities into `values`, like mergeIdentity().
void mergeCapabilities(Section section, QJsonObject &values)
{
    for (const auto *key : flags)
        values[QLatin1String(key)] = section.flag(QLatin1String(key), values.value(QLatin1String(key)).toBool());
    const QLatin1String levels(gainLevels);
    values[levels] = section.integer(levels, values.value(levels).toInt(), 0, 255);
    section.finish();
}

/// Merges the devices key by key. null removes an inherited key or an inherited device.
void mergeDevices(Section section, QJsonObject &devices)
{
    for (const auto &kind : DeviceKind::all()) {
        const QString key = kind.key;
        if (section.isNull(key)) {
            devices.remove(key);
            continue;
        }
        if (!section.contains(key))
            continue;
        QJsonObject merged = devices.value(key).toObject();
        const QJsonObject overrides = section.object(key);
        for (auto value = overrides.begin(); value != overrides.end(); ++value)
            merged[value.key()] = value.value();
        for (const auto &name : merged.keys())
            if (merged.value(name).isNull())
                merged.remove(name);
        devices[key] = merged;
    }
    section.finish();
}

} // namespace

QStringList Profile::names()
{
    QStringList result;
    for (const auto &file : QDir(builtInFolder).entryInfoList({QStringLiteral("*.json")}, QDir::Files, QDir::Name))
        result.append(file.completeBaseName());
    return result;
}

Profile Profile::load(const QString &nameOrFile) { return load(nameOrFile, {}); }

Profile Profile::load(const QString &nameOrFile, const QStringList &derivedProfiles)
{
    const bool builtIn = names().contains(nameOrFile);
    if (!builtIn && !QFileInfo::exists(nameOrFile)) {
        const auto message = QStringLiteral("no profile \"%1\": neither a file nor one of %2")
                                 .arg(nameOrFile, names().join(QStringLiteral(", ")));
        throw SetupError(message.toStdString());
    }
    const QString path = builtIn ? pathOf(nameOrFile) : QFileInfo(nameOrFile).canonicalFilePath();
    const QString messagePrefix = QStringLiteral("profile %1").arg(nameOrFile);
    Section section(readFile(path, messagePrefix), messagePrefix);
    if (derivedProfiles.contains(path))
        section.refuse(QStringLiteral("extends"), QStringLiteral("leads back to this profile"));

    Profile profile;
    if (const QString base = section.text(QStringLiteral("extends"), {}); !base.isEmpty()) {
        // The path of another file is relative to the folder of this file.
        const QString baseNameOrFile = names().contains(base) ? base : QFileInfo(path).dir().absoluteFilePath(base);
        if (baseNameOrFile != base && !QFileInfo::exists(baseNameOrFile))
            section.refuse(QStringLiteral("extends"), QStringLiteral("there is no profile \"%1\"").arg(base));
        profile = load(baseNameOrFile, derivedProfiles + QStringList{path});
    }
    profile.m_name = QFileInfo(path).completeBaseName();
    profile.m_source = nameOrFile;
    // The name is used as the name of a folder.
    if (profile.m_name.isEmpty() || profile.m_name.startsWith(QLatin1Char('.')))
        throw SetupError(
            QStringLiteral("%1: the file needs a name before its suffix").arg(messagePrefix).toStdString());
    profile.m_title = section.text(QStringLiteral("title"), profile.m_name);
    const QString clock = section.text(QStringLiteral("clock"),
                                       profile.m_realTimeClock ? QStringLiteral("rtc") : QStringLiteral("irig"));
    if (clock != QLatin1String("rtc") && clock != QLatin1String("irig"))
        section.refuse(QStringLiteral("clock"), QStringLiteral("must be \"rtc\" or \"irig\""));
    profile.m_realTimeClock = clock == QLatin1String("rtc");
    mergeIdentity(section.section(QStringLiteral("identity")), profile.m_identity);
    mergeCapabilities(section.section(QStringLiteral("capabilities")), profile.m_capabilities);
    mergeDevices(section.section(QStringLiteral("devices")), profile.m_devices);
    section.finish();
    return profile;
}

} // namespace emulator
