#include "standalone/desk/DeskSettings.h"

#include <QSettings>

#include <algorithm>

namespace
{

const QString shownKey = QStringLiteral("desk/shown");
const QString widthKey = QStringLiteral("desk/width");

QString cardKey(const QString &name) { return QStringLiteral("desk/cards/") + name; }

} // namespace

DeskSettings::DeskSettings(QSettings &settings, QObject *parent) : QObject(parent), m_settings(settings) { }

bool DeskSettings::shown() const { return m_settings.value(shownKey, true).toBool(); }

void DeskSettings::setShown(bool shown) { m_settings.setValue(shownKey, shown); }

int DeskSettings::width() const
{
    bool valid = false;
    const int width = m_settings.value(widthKey).toInt(&valid);
    return valid ? std::max(width, LeastWidth) : DefaultWidth;
}

void DeskSettings::setWidth(int width) { m_settings.setValue(widthKey, std::max(width, LeastWidth)); }

bool DeskSettings::isOpen(const QString &name, bool first) const
{
    return m_settings.value(cardKey(name), first).toBool();
}

void DeskSettings::setOpen(const QString &name, bool open) { m_settings.setValue(cardKey(name), open); }
