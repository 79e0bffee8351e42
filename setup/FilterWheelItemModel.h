#pragma once

#include <QObject>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <optional>

class ObjectListModel;

/// A filter in the filter wheel. GUI thread only.
class FilterWheelItemModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString filterName READ filterName CONSTANT FINAL)
    Q_PROPERTY(int filterID READ filterID WRITE setFilterID NOTIFY filterIDChanged FINAL)
    Q_PROPERTY(int slotID READ slotID CONSTANT FINAL)

public:
    FilterWheelItemModel(QString filterName, int filterID, int slotID, QObject *parent);

    QString filterName() const { return m_filterName; } ///< As the camera returned it with the ID of the constructor.
    int filterID() const { return m_filterID; } ///< Number of the filter in the camera's table of names, 0 to 63.
    void setFilterID(int id); ///< Writes nothing to the camera.
    int slotID() const
    {
        return m_slotID;
    } ///< Place in the wheel, counted from 0; -1 if the list does not number them.

    // For lists of these objects.

    static constexpr size_t slotCount = 4; ///< The camera always returns the filters in this many slots.
    /// How many of the slots have a row: all of a wheel of four, three for any other count of the camera.
    static constexpr size_t rowsFor(uint8_t count) { return count == slotCount ? slotCount : slotCount - 1; }
    /// The ID of the filter in a row as the camera gets it, its lowest 8 bits; empty for a row outside the list.
    static std::optional<uint8_t> idAt(const ObjectListModel &filters, int row);
    /// The first row of this filter, -1 without one.
    static int rowOf(const ObjectListModel &filters, int filterID);

signals:
    void filterIDChanged();

private:
    /// Null for a row outside the list.
    static const FilterWheelItemModel *filterAt(const ObjectListModel &filters, int row);

    const QString m_filterName;
    int m_filterID;
    const int m_slotID;
};
