#pragma once

#include "platform/emulator/SetupError.h"

#include <QJsonObject>
#include <QString>
#include <QStringList>

namespace emulator
{

/// The description of a kind of camera: its identity, its capabilities, and its devices with their first values. A
/// profile extends another one by "extends". Unknown keys are errors.
class Profile
{
public:
    /// Loads a built-in profile by its name, or any profile by the path of its file. Throws a SetupError.
    static Profile load(const QString &nameOrFile);

    /// The names of the built-in profiles, sorted.
    static QStringList names();

    /// The file name without its last extension.
    const QString &name() const { return m_name; }
    /// The name or path that load() was called with.
    const QString &source() const { return m_source; }
    /// The name for the user, by default name().
    const QString &title() const { return m_title; }
    const QJsonObject &identity() const { return m_identity; }
    const QJsonObject &capabilities() const { return m_capabilities; }
    const QJsonObject &devices() const { return m_devices; }
    /// True: the camera keeps a real-time clock. False: it takes IRIG time.
    bool hasRealTimeClock() const { return m_realTimeClock; }

private:
    /// `derivedProfiles` are the paths of the profiles that extend this one, which must not contain its own path.
    static Profile load(const QString &nameOrFile, const QStringList &derivedProfiles);

    QString m_name;
    QString m_source;
    QString m_title;
    QJsonObject m_identity;
    QJsonObject m_capabilities;
    QJsonObject m_devices;
    bool m_realTimeClock = true;
};

} // namespace emulator
