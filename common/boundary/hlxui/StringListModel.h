#pragma once

#include <QAbstractListModel>
#include <QStringList>

/// A list of strings for QML with the role `display`. Never owned by the QML engine. GUI thread only.
class StringListModel : public QAbstractListModel
{
    Q_OBJECT

public:
    explicit StringListModel(QObject *parent = nullptr);
    ~StringListModel() override;

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;

    void push_back(const QString &text);
    void removeAll();

private:
    QStringList m_strings;
};
