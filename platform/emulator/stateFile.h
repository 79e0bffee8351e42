#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

#include <optional>

namespace emulator
{

// The bytes of a state file (.qsf): the settings of a camera, as Camera::snapshot() gives them, and the profile of the
// camera that they are of. docs/file-formats.md describes them.

/// More than the settings of any camera need; a file of this size is no state.
constexpr qint64 largestStateFile = qint64{16} * 1024 * 1024;

QByteArray toStateFile(const QString &profile, const QJsonObject &settings);

/// The settings in a state file. Nothing if it is foreign, of another version, damaged anywhere, or of a camera of
/// another profile.
std::optional<QJsonObject> fromStateFile(const QByteArray &content, const QString &profile);

} // namespace emulator
