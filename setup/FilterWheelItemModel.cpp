#include "setup/FilterWheelItemModel.h"

#include "common/setters.h"

#include <utility>

FilterWheelItemModel::FilterWheelItemModel(QString filterName, int filterID, int slotID, QObject *parent)
    : QObject(parent), m_filterName(std::move(filterName)), m_filterID(filterID), m_slotID(slotID)
{
}

void FilterWheelItemModel::setFilterID(int id)
{
    storeOnly(this, id, m_filterID, &FilterWheelItemModel::filterIDChanged);
}
