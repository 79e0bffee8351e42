#pragma once

#include "tests/platform/writeProfile.h"

#include <QByteArray>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

/// Profiles whose recorder has no movies, unless a test asks for some.
class RecorderProfiles
{
protected:
    /// Returns the path of the profile with these devices.
    QByteArray pathOf(const QByteArray &devices, const char *extended)
    {
        QJsonObject values = QJsonDocument::fromJson(devices).object();
        QJsonObject recorder = values.value(QLatin1String("recorder")).toObject();
        if (!recorder.contains(QLatin1String("movies")))
            recorder[QLatin1String("movies")] = QJsonArray();
        values[QLatin1String("recorder")] = recorder;
        m_last = writeProfile(m_folder.path(), extended, QJsonDocument(values).toJson()).toUtf8();
        return m_last;
    }
    const QByteArray &lastPath() const { return m_last; }
    void rewriteLast(const QByteArray &devices) const
    {
        QFile file(QString::fromUtf8(m_last));
        if (!file.open(QIODevice::WriteOnly)
            || file.write(R"({"extends": "everything", "devices": )" + devices + "}") < 0)
            qFatal("cannot write %s", m_last.constData());
    }

private:
    QTemporaryDir m_folder;
    QByteArray m_last;
};
