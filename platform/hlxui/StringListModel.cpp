#include "hlxui/StringListModel.h"

#include <QQmlEngine>

StringListModel::StringListModel(QObject *parent) : QAbstractListModel(parent)
{
    // A list that is a member of a model has no parent object, so the engine would delete it as garbage.
    QQmlEngine::setObjectOwnership(this, QQmlEngine::CppOwnership);
}

StringListModel::~StringListModel() = default;

int StringListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_strings.size());
}

QVariant StringListModel::data(const QModelIndex &index, int role) const
{
    return role == Qt::DisplayRole && index.isValid() ? m_strings.value(index.row()) : QVariant();
}

void StringListModel::push_back(const QString &text)
{
    const auto row = static_cast<int>(m_strings.size());
    beginInsertRows({}, row, row);
    m_strings.append(text);
    endInsertRows();
}

void StringListModel::removeAll()
{
    if (m_strings.isEmpty())
        return;
    beginResetModel();
    m_strings.clear();
    endResetModel();
}
