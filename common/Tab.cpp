#include "common/Tab.h"

Tab::Tab(QObject *parent, const QString &name, const QString &qml, QObject *model)
    : QObject(parent), m_name(name), m_qml(qml), m_model(model)
{
}
