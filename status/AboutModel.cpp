#include "status/AboutModel.h"

#include "common/identity.h"
#include "common/publishing.h"
#include "common/reading.h"
#include "status/AboutItemModel.h"

#include <QDir>
#include <QFile>

#include "zvt/zvtsdk.h"

namespace
{

QUrl homeDirectory() { return QUrl::fromLocalFile(QDir::homePath()); }

} // namespace

AboutModel::AboutModel(QObject *parent) : QObject(parent), m_lastDirectory(homeDirectory()) { }

QUrl AboutModel::lastDirectory()
{
    if (!m_lastDirectory.isValid())
        m_lastDirectory = homeDirectory();
    return m_lastDirectory;
}

void AboutModel::setLastDirectory(const QUrl &directory)
{
    announce(this, directory.isValid() ? directory : homeDirectory(), m_lastDirectory, &Self::lastDirectoryChanged);
}

// The read

void AboutModel::refresh() { m_refresh.start(&Rows::read); }

AboutModel::Rows AboutModel::Rows::read(const CameraAccess &camera)
{
    Rows rows;
    //: Row of the list of the camera's information, as are the following
    rows.append({tr("Camera Model"), readCameraModel(camera.handle)});
    rows.append({tr("Camera Serial"), readCameraSerial(camera.handle)});
    rows.readNames(camera.handle);
    rows.readOperatingTime(camera.handle);
    rows.readExtraInfo(camera.handle);
    return rows;
}

// A row is appended only if all of its reads succeeded.
void AboutModel::Rows::readNames(uint64_t handle)
{
    constexpr uint32_t nameSize = 200;
    const auto appendName = [this](const QString &name, auto getName, auto... numbers) {
        Nullable<QString> value;
        if (readText<nameSize>(value, getName, numbers...))
            append({name, value.get()});
    };
    Nullable<uint8_t> type;
    Nullable<uint8_t> subtype;
    Nullable<uint8_t> readout;
    Nullable<uint8_t> detector;
    if (fetch(type, zvtGetCameraType, handle))
        appendName(tr("Camera Type"), zvtGetCameraTypeName, type.get());
    if (fetch(subtype, zvtGetCameraSubtype, handle) && type.set())
        appendName(tr("Camera SubType"), zvtGetCameraSubtypeName, type.get(), subtype.get());
    if (fetch(readout, zvtGetReadout, handle))
        //: The readout circuit of the detector
        appendName(tr("ROIC Type"), zvtGetReadoutName, readout.get());
    if (fetch(detector, zvtGetDetectorType, handle))
        appendName(tr("Detector Type"), zvtGetDetectorTypeName, detector.get());
}

void AboutModel::Rows::readOperatingTime(uint64_t handle)
{
    constexpr uint32_t minutesPerHour = 60;
    Nullable<uint32_t> minutes;
    if (fetch(minutes, zvtGetOperatingTime, handle))
        append({tr("Operating Time"),
                tr("%1 hours, %2 minutes").arg(minutes.get() / minutesPerHour).arg(minutes.get() % minutesPerHour)});
}

void AboutModel::Rows::readExtraInfo(uint64_t handle)
{
    hlx::TArray<zvtSInfoEntry> entries;
    if (zvtGetCameraExtraInfo(handle, &entries) != 0)
        return;
    for (const auto &entry : entries)
        append({QString::fromUtf8(entry.name.c_str()), QString::fromUtf8(entry.value.c_str())});
}

void AboutModel::finishedWatcher()
{
    const Rows rows = m_refresh.result();
    m_nameValueListModel.removeAll();
    for (const auto &[name, value] : rows)
        m_nameValueListModel.append(new AboutItemModel(name, value, this));
    emit nameValueListModelChanged();
    m_refresh.finish();
}

// The file

bool AboutModel::saveTextFile(const QString &filenameWithPath)
{
    QFile file(QUrl(filenameWithPath).toLocalFile());
    if (!file.open(QIODevice::WriteOnly))
        return false;
    //: Heading of the file of the camera's information
    file.write(
        tr("%1 Camera Controller Information\r\n\r\n").arg(readCameraModel(CameraAccess::of(this).handle)).toUtf8());
    for (int row = 0; row < m_nameValueListModel.size(); ++row) {
        const auto *item = static_cast<AboutItemModel *>(m_nameValueListModel.at(row));
        file.write(QStringLiteral("%1: %2\r\n").arg(item->name(), item->value()).toUtf8());
    }
    return true;
}
