#include "status/AboutItemModel.h"

#include <utility>

AboutItemModel::AboutItemModel(QString name, QString value, QObject *parent)
    : QObject(parent), m_name(std::move(name)), m_value(std::move(value))
{
}
