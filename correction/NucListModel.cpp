#include "correction/NucListModel.h"

#include "common/conversions.h"
#include "common/formatting.h"
#include "common/publishing.h"
#include "common/reading.h"
#include "correction/NucInfoModel.h"
#include "correction/NucTransferWorker.h"

#include <QFileInfo>
#include <QUrl>

#include "zvt/zvtsdk.h"

NucListModel::NucListModel(QObject *parent) : QAbstractListModel(parent) { }

NucListModel::~NucListModel() = default;

// The read

void NucListModel::refresh()
{
    if (!m_refresh.begin())
        return;
    if (!m_nucs.isEmpty()) {
        beginRemoveRows({}, 0, static_cast<int>(m_nucs.size()) - 1);
        m_nucs.clear();
        endRemoveRows();
    }
    m_refresh.run(&Settings::read);
}

NucListModel::Settings NucListModel::Settings::read(const CameraAccess &camera)
{
    Settings s;
    hlx::TArray<zvtSDirEntry> files;
    if (zvtListNUCs(camera.handle, &files) == 0)
        for (const auto &file : files)
            s.nucs.append(NucEntry::read(camera.handle, file));
    fetch(s.freeSpace, zvtGetNUCFreeSpace, camera.handle);
    return s;
}

NucListModel::NucEntry NucListModel::NucEntry::read(uint64_t handle, const zvtSDirEntry &file)
{
    NucEntry entry;
    entry.name = QString::fromUtf8(file.name.c_str());
    entry.size = file.size;
    entry.date = dateTimeOfFileTime(file.time100ns);
    zvtSNUCInfo info{};
    const bool queried = zvtQueryNUCBasicInfo(handle, file.name.c_str(), &info) == 0;
    // Also after a failed query, which may have written them.
    entry.width = info.width;
    entry.height = info.height;
    entry.infoOk = queried && zvtClocksToMilliseconds(handle, info.integrationWidth, &entry.intTime) == 0;
    return entry;
}

void NucListModel::finishedWatcher()
{
    const Settings s = m_refresh.result();
    for (const NucEntry &nuc : s.nucs)
        append(nuc);
    publishIfChanged(this, s.freeSpace, m_freeSpace, &Self::freeSpaceChanged);
    m_refresh.finish();
}

QString NucListModel::freeSpaceString() const { return sizeText(m_freeSpace); }

// The list

int NucListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_nucs.size());
}

QVariant NucListModel::data(const QModelIndex &index, int role) const
{
    if (index.row() < 0 || index.row() >= m_nucs.size())
        return {};
    const NucEntry &nuc = m_nucs.at(index.row());
    switch (role) {
    case Size:
        return nuc.size;
    case Date:
        return nuc.date;
    case Width:
        return nuc.width;
    case Height:
        return nuc.height;
    case IntTime:
        return nuc.intTime;
    case InfoOk:
        return nuc.infoOk;
    case Index:
        return index.row();
    default:
        return nuc.name;
    }
}

QHash<int, QByteArray> NucListModel::roleNames() const
{
    return {{Name, "name"},     {Size, "size"},       {Date, "date"},     {Width, "width"},
            {Height, "height"}, {IntTime, "intTime"}, {InfoOk, "infoOk"}, {Index, "index"}};
}

QString NucListModel::nameAt(int index) const { return m_nucs.value(index).name; }

NucInfoModel *NucListModel::infoAt(int index)
{
    const NucEntry nuc = m_nucs.value(index);
    if (!nuc.infoOk)
        return nullptr;
    return new NucInfoModel(CameraAccess::of(this).handle, nuc.name.toUtf8().constData(), nuc.size,
                            fileTimeOfDateTime(nuc.date), nullptr);
}

int NucListModel::rowOf(const QString &name) const
{
    for (int i = 0; i < m_nucs.size(); ++i)
        if (m_nucs.at(i).name == name)
            return i;
    return -1;
}

void NucListModel::append(const NucEntry &nuc)
{
    const int row = static_cast<int>(m_nucs.size());
    beginInsertRows({}, row, row);
    m_nucs.append(nuc);
    endInsertRows();
}

void NucListModel::removeAt(int row)
{
    beginRemoveRows({}, row, row);
    m_nucs.removeAt(row);
    endRemoveRows();
    // The following rows have other numbers now.
    if (row < m_nucs.size())
        emit dataChanged(index(row), index(static_cast<int>(m_nucs.size()) - 1), {Index});
}

void NucListModel::deleteNuc(const QString &name)
{
    const uint64_t handle = CameraAccess::of(this).handle;
    if (zvtDeleteNUC(handle, name.toUtf8().constData()) == 0)
        if (const int row = rowOf(name); row >= 0)
            removeAt(row);
    Nullable<uint64_t> freeSpace;
    fetch(freeSpace, zvtGetNUCFreeSpace, handle);
    publishIfChanged(this, freeSpace, m_freeSpace, &Self::freeSpaceChanged);
}

void NucListModel::renameNuc(const QString &oldName, const QString &newName)
{
    const uint64_t handle = CameraAccess::of(this).handle;
    if (zvtRenameNUC(handle, oldName.toUtf8().constData(), newName.toUtf8().constData()) != 0)
        return;
    const int row = rowOf(oldName);
    if (row < 0)
        return;
    NucEntry renamed = m_nucs.at(row);
    renamed.name = newName;
    append(renamed);
    removeAt(row);
}

// Queries

bool NucListModel::nucExists(const QString &name)
{
    return zvtNUCExists(CameraAccess::of(this).handle, name.toUtf8().constData()) == 0;
}

bool NucListModel::isFactoryNuc(const QString &name)
{
    return readOr(false, zvtIsFactoryNUC, CameraAccess::of(this).handle, name.toUtf8().constData());
}

uint NucListModel::guessNucSize()
{
    const uint64_t handle = CameraAccess::of(this).handle;
    constexpr uint8_t preset = 0;
    uint16_t x = 0;
    uint16_t y = 0;
    uint16_t width = 0;
    uint16_t height = 0;
    if (zvtGetWindow(handle, preset, &x, &y, &width, &height) != 0)
        return 0;
    return readOr(0U, zvtGuessNUCSize, handle, width, height);
}

bool NucListModel::nucNameValid(const QString &name) { return zvtIsValidFileName(name.toUtf8().constData()) == 0; }

qulonglong NucListModel::localFileSize(const QString &fname)
{
    return static_cast<qulonglong>(QFileInfo(QUrl(fname).toLocalFile()).size());
}

// Transfers

void NucListModel::uploadNuc(const QString &url)
{
    m_transfer.start(true, url, QUrl(url).fileName(QUrl::FullyDecoded));
}

void NucListModel::downloadNuc(const QString &name, const QString &url) { m_transfer.start(false, url, name); }

void NucListModel::abort() { m_transfer.abort(); }
