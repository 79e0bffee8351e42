#pragma once

#include <QObject>
#include <QString>

/// A row of what the camera says about itself.
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
