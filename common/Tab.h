#pragma once

#include <QObject>
#include <QString>

/// A tab of the main page: its label, its page and its model. Constant after construction. GUI thread only.
class Tab : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString name READ name CONSTANT FINAL)
    Q_PROPERTY(QString qml READ qml CONSTANT FINAL)
    Q_PROPERTY(QObject *model READ model CONSTANT FINAL)

public:
    /// `name` is the label, `qml` the page's file. `model` is not owned and must outlive the tab.
    Tab(QObject *parent, const QString &name, const QString &qml, QObject *model);

    QString name() const { return m_name; }
    QString qml() const { return m_qml; }
    QObject *model() const { return m_model; }

private:
    const QString m_name;
    const QString m_qml;
    QObject *const m_model;
};
