#include "state/CameraStateEntry.h"

#include <utility>

CameraStateEntry::CameraStateEntry(QString name, QDateTime date, QObject *parent)
    : QObject(parent), m_name(std::move(name)), m_date(std::move(date))
{
}
