#pragma once

#include <QAbstractListModel>
#include <QList>

/// A list of objects for QML with the role `item`. GUI thread only.
///
/// With `ownsItems` the list becomes the parent of its items. The QML engine never owns the list or its items. An
/// object may be in the list only once; an object that is deleted elsewhere is removed from the list.
class ObjectListModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int size READ size NOTIFY sizeChanged FINAL)

public:
    enum Roles { ItemRole = Qt::UserRole + 1 };

    explicit ObjectListModel(bool ownsItems, QObject *parent = nullptr);
    ~ObjectListModel() override;

    int size() const { return static_cast<int>(m_items.size()); }

    Q_INVOKABLE int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// The object of a row; null if there is no such row.
    Q_INVOKABLE QObject *at(int row) const;

    /// Adds a row at the end. Does nothing for null.
    void append(QObject *item);
    void push_back(QObject *item) { append(item); }

    /// Removes the item's row; an owned item is deleted later. Does nothing if the object is not in the list.
    void remove(QObject *item);

    /// The row of an object, -1 if it is not in the list.
    int indexOf(QObject *item) const;

    /// Empties the list; owned items are deleted later.
    void removeAll();

    /// Empties the list and keeps all objects alive; owned items then have no parent.
    void detachAll();

signals:
    void sizeChanged();

private:
    void takeRow(QObject *item);
    QList<QObject *> takeAll();

    QList<QObject *> m_items;
    bool m_ownsItems;
};
