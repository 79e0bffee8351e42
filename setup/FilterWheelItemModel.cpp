#include "setup/FilterWheelItemModel.h"

#include "common/setters.h"

#include <utility>

#include "hlxui/ObjectListModel.h"

FilterWheelItemModel::FilterWheelItemModel(QString filterName, int filterID, int slotID, QObject *parent)
    : QObject(parent), m_filterName(std::move(filterName)), m_filterID(filterID), m_slotID(slotID)
{
}

void FilterWheelItemModel::setFilterID(int id)
{
    storeOnly(this, id, m_filterID, &FilterWheelItemModel::filterIDChanged);
}

const FilterWheelItemModel *FilterWheelItemModel::filterAt(const ObjectListModel &filters, int row)
{
    return static_cast<const FilterWheelItemModel *>(filters.at(row));
}

std::optional<uint8_t> FilterWheelItemModel::idAt(const ObjectListModel &filters, int row)
{
    const FilterWheelItemModel *const filter = filterAt(filters, row);
    return filter ? std::optional(static_cast<uint8_t>(filter->filterID())) : std::nullopt;
}

int FilterWheelItemModel::rowOf(const ObjectListModel &filters, int filterID)
{
    for (int row = 0; row < filters.size(); ++row)
        if (filterAt(filters, row)->filterID() == filterID)
            return row;
    return -1;
}
