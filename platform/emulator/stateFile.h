#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

#include <optional>

namespace emulator
{

// The contents of a state file (.qsf): the settings of a camera, as Camera::snapshot() returns them, and the name of
// the camera's profile. docs/file-formats.md describes the format.

/// In bytes; more than the settings of any camera need. A larger file is not a state.
constexpr qint64 maximumStateFileSize = qint64{16} * 1024 * 1024;

/// Returns the contents of a state file for the camera of this profile.
QByteArray toStateFile(const QString &profile, const QJsonObject &settings);

/// Returns the settings in a state file. Empty if it is not a state file, has another version, is damaged or too large,
/// or was written by a camera of another profile.
std::optional<QJsonObject> fromStateFile(const QByteArray &content, const QString &profile);

} // namespace emulator
