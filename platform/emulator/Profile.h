#pragma once

#include "platform/emulator/SetupError.h"

#include <QJsonObject>
#include <QString>
#include <QStringList>

namespace emulator
{

/// A kind of camera, as data: who it is, what it can do, and what its devices start with. Profiles inherit by
/// "extends"; unknown keys are errors.
class Profile
{
public:
    /// A profile by the name of a built-in one or the path of a file. Throws SetupError.
    static Profile load(const QString &nameOrFile);

    /// The built-in names, sorted.
    static QStringList names();

    const QString &name() const { return m_name; }
    /// The name or file that it was loaded by.
    const QString &source() const { return m_source; }
    const QString &title() const { return m_title; }
    const QJsonObject &identity() const { return m_identity; }
    const QJsonObject &capabilities() const { return m_capabilities; }
    const QJsonObject &devices() const { return m_devices; }
    /// True: the camera keeps a real-time clock. False: it takes IRIG time.
    bool hasRealTimeClock() const { return m_realTimeClock; }

private:
    static Profile load(const QString &nameOrFile, const QStringList &chain);

    QString m_name;
    QString m_source;
    QString m_title;
    QJsonObject m_identity;
    QJsonObject m_capabilities;
    QJsonObject m_devices;
    bool m_realTimeClock = true;
};

} // namespace emulator
