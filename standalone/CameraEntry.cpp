#include "standalone/CameraEntry.h"

CameraEntry::CameraEntry(const QString &profile, const QString &name, QObject *parent)
    : QObject(parent), m_profile(profile), m_name(name)
{
}
