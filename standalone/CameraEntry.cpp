#include "standalone/CameraEntry.h"

CameraEntry::CameraEntry(const QString &profile, const QString &name, const QString &folder, QObject *parent)
    : QObject(parent), m_profile(profile), m_name(name), m_folder(folder)
{
}
