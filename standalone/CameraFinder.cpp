#include "standalone/CameraFinder.h"

#include "platform/emulator/control.h"
#include "standalone/CameraEntry.h"

CameraFinder::CameraFinder(const QString &first, const QString &storage, QObject *parent) : QObject(parent)
{
    add(first, storage);
    for (const QString &profile : emulator::Profile::names())
        if (profile != first)
            add(profile, storage);
}

CameraEntry *CameraFinder::find(const QString &key) const
{
    for (int row = 0; row < m_cameras.size(); ++row)
        if (auto *entry = qobject_cast<CameraEntry *>(m_cameras.at(row)); entry && entry->key() == key)
            return entry;
    return nullptr;
}

void CameraFinder::add(const QString &profile, const QString &storage)
{
    const auto loaded = emulator::Profile::load(profile);
    m_cameras.append(new CameraEntry(profile, loaded.title(), emulator::Camera::folderOf(loaded.name(), storage)));
}
