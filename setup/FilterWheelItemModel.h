#pragma once

#include <QObject>
#include <QString>

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

signals:
    void filterIDChanged();

private:
    const QString m_filterName;
    int m_filterID;
    const int m_slotID;
};
