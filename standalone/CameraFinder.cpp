#include "standalone/CameraFinder.h"

#include "platform/emulator/Profile.h"
#include "standalone/CameraEntry.h"

CameraFinder::CameraFinder(const QString &first, QObject *parent) : QObject(parent)
{
    add(first);
    for (const QString &profile : emulator::Profile::names())
        if (profile != first)
            add(profile);
}

CameraEntry *CameraFinder::find(const QString &key) const
{
    for (int row = 0; row < m_cameras.size(); ++row)
        if (auto *entry = qobject_cast<CameraEntry *>(m_cameras.at(row)); entry && entry->key() == key)
            return entry;
    return nullptr;
}

void CameraFinder::add(const QString &profile)
{
    m_cameras.append(new CameraEntry(profile, emulator::Profile::load(profile).title()));
}
