#pragma once

#include <QJsonObject>
#include <QString>

namespace emulator
{

/// The folder of one camera. Its subfolders `states`, `nucs`, `movies` and `lens` contain the files that the operator
/// keeps on the camera; beside them are small files of values. Each file of values has a magic and a version. It is
/// replaced as a whole, so that it is never partly written.
class Storage
{
public:
    /// Makes the folder and its subfolders where they are missing, and checks every file of values. Throws a SetupError
    /// if the folder cannot be used or a file is not valid. Does not change such a file.
    explicit Storage(QString folder);

    const QString &folder() const { return m_folder; }

    /// Returns the values of the file `name`, empty if the file does not exist. Throws a SetupError if it is not valid.
    QJsonObject read(const QString &name) const;

    /// Replaces the file `name`. Throws a SetupError if it cannot be written; the old file is then unchanged.
    void write(const QString &name, const QJsonObject &values) const;

    /// More bytes than the values of any camera need. A larger file was not written by an emulated camera.
    static constexpr qint64 mostValues = qint64{16} * 1024 * 1024;
    /// The same for a file of values in any folder, with its own magic. readFile() throws if the file does not exist or
    /// is larger than `maximumSize` in bytes.
    static QJsonObject readFile(const QString &path, const char *magic, qint64 maximumSize = mostValues);
    static void writeFile(const QString &path, const char *magic, const QJsonObject &values);

private:
    QString m_folder;
};

} // namespace emulator
