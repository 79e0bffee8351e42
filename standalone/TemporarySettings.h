#pragma once

#include <QSettings>
#include <QTemporaryDir>

/// Settings that are deleted with this object, so that the user's settings stay as they are.
class TemporarySettings
{
public:
    QSettings *get() { return &m_settings; }

private:
    // The order matters: the settings are written before the folder is removed.
    QTemporaryDir m_folder;
    QSettings m_settings{m_folder.filePath(QStringLiteral("settings.ini")), QSettings::IniFormat};
};
