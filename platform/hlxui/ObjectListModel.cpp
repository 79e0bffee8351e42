#include "hlxui/ObjectListModel.h"

#include <QQmlEngine>

#include <utility>

ObjectListModel::ObjectListModel(bool ownsItems, QObject *parent) : QAbstractListModel(parent), m_ownsItems(ownsItems)
{
    // A list that is a member of a model has no parent object, so the engine would delete it as garbage.
    QQmlEngine::setObjectOwnership(this, QQmlEngine::CppOwnership);
}

ObjectListModel::~ObjectListModel() = default;

int ObjectListModel::rowCount(const QModelIndex &parent) const { return parent.isValid() ? 0 : size(); }

QVariant ObjectListModel::data(const QModelIndex &index, int role) const
{
    return role == ItemRole && index.isValid() ? QVariant::fromValue(at(index.row())) : QVariant();
}

QHash<int, QByteArray> ObjectListModel::roleNames() const { return {{ItemRole, "item"}}; }

QObject *ObjectListModel::at(int row) const { return row >= 0 && row < size() ? m_items.at(row) : nullptr; }

void ObjectListModel::append(QObject *item)
{
    if (!item)
        return;
    QQmlEngine::setObjectOwnership(item, QQmlEngine::CppOwnership);
    if (m_ownsItems)
        item->setParent(this);
    connect(item, &QObject::destroyed, this, &ObjectListModel::takeRow);
    beginInsertRows({}, size(), size());
    m_items.append(item);
    endInsertRows();
    emit sizeChanged();
}

void ObjectListModel::remove(QObject *item)
{
    if (indexOf(item) < 0)
        return;
    disconnect(item, nullptr, this, nullptr);
    takeRow(item);
    // Deleted later, since the removal may have been requested by a handler of the item itself.
    if (m_ownsItems)
        item->deleteLater();
}

int ObjectListModel::indexOf(QObject *item) const { return static_cast<int>(m_items.indexOf(item)); }

void ObjectListModel::removeAll()
{
    const auto items = takeAll();
    if (m_ownsItems)
        for (QObject *item : items)
            item->deleteLater();
}

void ObjectListModel::detachAll()
{
    const auto items = takeAll();
    if (m_ownsItems)
        for (QObject *item : items)
            item->setParent(nullptr);
}

void ObjectListModel::takeRow(QObject *item)
{
    const int row = indexOf(item);
    beginRemoveRows({}, row, row);
    m_items.removeAt(row);
    endRemoveRows();
    emit sizeChanged();
}

QList<QObject *> ObjectListModel::takeAll()
{
    if (m_items.isEmpty())
        return {};
    for (QObject *item : std::as_const(m_items))
        disconnect(item, nullptr, this, nullptr);
    beginResetModel();
    const auto items = std::exchange(m_items, {});
    endResetModel();
    emit sizeChanged();
    return items;
}
