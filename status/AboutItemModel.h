#pragma once

#include <QObject>
#include <QString>

/// One row of the camera's information: a name and a value. Constant. GUI thread only.
class AboutItemModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString name READ name CONSTANT FINAL)
    Q_PROPERTY(QString value READ value CONSTANT FINAL)

public:
    AboutItemModel(QString name, QString value, QObject *parent);

    QString name() const { return m_name; }
    QString value() const { return m_value; }

private:
    const QString m_name;
    const QString m_value;
};
