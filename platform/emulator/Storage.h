#pragma once

#include <QJsonObject>
#include <QString>

namespace emulator
{

/// The folder of one camera: `states`, `nucs`, `movies` and `lens` for what the operator keeps on the camera, and small
/// files of values beside them. Each such file carries a magic and a version; it is replaced as a whole, so that it is
/// never half written.
class Storage
{
public:
    /// Makes the folder with its subfolders where they are missing, and looks into every file of values. Throws a
    /// SetupError if the folder cannot be used or a file is not what it should be; such a file is left as it is.
    explicit Storage(QString folder);

    const QString &folder() const { return m_folder; }

    /// The values of the file `name`, empty if there is none. Throws SetupError.
    QJsonObject read(const QString &name) const;

    /// Throws a SetupError if the file cannot be written; the old one is then still there.
    void write(const QString &name, const QJsonObject &values) const;

    /// The same for a file of values anywhere, with a magic of its own. A file that is not there is refused.
    static QJsonObject readFile(const QString &path, const char *magic);
    static void writeFile(const QString &path, const char *magic, const QJsonObject &values);

private:
    QString m_folder;
};

} // namespace emulator
