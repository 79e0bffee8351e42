#pragma once

#include <QList>
#include <QObject>
#include <QStringList>

/// The display strings of a combo box and the value of each, row for row. GUI thread only.
class StringIntDisplaySanityModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QStringList strings READ strings NOTIFY stringsChanged FINAL)
    Q_PROPERTY(QList<int> values READ values NOTIFY valuesChanged FINAL)
    Q_PROPERTY(int size READ size NOTIFY sizeChanged FINAL)

public:
    explicit StringIntDisplaySanityModel(QObject *parent = nullptr);

    QStringList strings() const { return m_strings; }
    QList<int> values() const { return m_values; }
    int size() const { return static_cast<int>(m_values.size()); }

    void append(const QString &string, int value);

    /// Removes a row, which must exist.
    void remove(int index);
    void removeAll();

    /// The string of a row; an empty one for a row that does not exist.
    QString stringAt(int index) const { return m_strings.value(index); }

    /// The value of a row; -1 for a row that does not exist.
    int valueAt(int index) const { return m_values.value(index, -1); }

    /// The first row with this value; -1 if there is none.
    int findFirstIndexOfValue(int value) const { return static_cast<int>(m_values.indexOf(value)); }

    /// Emits the signals of strings, values and size, in this order. Each edit calls it.
    void everythingChanged();

signals:
    void stringsChanged();
    void valuesChanged();
    void sizeChanged();

private:
    QStringList m_strings;
    QList<int> m_values;
};
