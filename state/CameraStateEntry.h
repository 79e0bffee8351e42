#pragma once

#include <QDateTime>
#include <QObject>
#include <QString>

/// A state stored in the camera. Constant. GUI thread only.
class CameraStateEntry : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString name READ name CONSTANT FINAL)
    Q_PROPERTY(QDateTime date READ date CONSTANT FINAL)

public:
    CameraStateEntry(QString name, QDateTime date, QObject *parent);

    QString name() const { return m_name; }
    QDateTime date() const { return m_date; } ///< The time of the save, in UTC.

private:
    const QString m_name;
    const QDateTime m_date;
};
