#pragma once

#include <QAbstractListModel>
#include <QList>

/// A list of objects for QML; each row has the role `item`. GUI thread only.
///
/// A list that owns its items (the constructor's `true`) becomes their parent. Items never belong to the QML engine. An
/// object stands in a list at most once; one that is deleted elsewhere leaves the list by itself.
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

    /// The object of a row, null for a row that does not exist.
    Q_INVOKABLE QObject *at(int row) const;

    /// Adds a row at the end; null adds none.
    void append(QObject *item);
    void push_back(QObject *item) { append(item); }

    /// Takes the item's row out; an owned item is deleted later. An object that is not in the list changes nothing.
    void remove(QObject *item);

    /// The row of an object, -1 if it is not in the list.
    int indexOf(QObject *item) const;

    /// Empties the list; owned items are deleted later.
    void removeAll();

    /// Empties the list and leaves all objects alive.
    void detachAll();

signals:
    void sizeChanged();

private:
    void takeRow(QObject *item);
    QList<QObject *> takeAll();

    QList<QObject *> m_items;
    bool m_ownsItems;
};
