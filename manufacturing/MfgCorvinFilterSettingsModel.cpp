#include "manufacturing/MfgCorvinFilterSettingsModel.h"

#include "common/publishing.h"
#include "common/reading.h"
#include "common/setters.h"

#include <algorithm>

#include "zvt/zvtsdk.h"

void MfgCorvinFilterSettingsModel::setVisible(bool visible)
{
    storeOnly(this, visible, m_visible, &Self::visibleChanged);
}

void MfgCorvinFilterSettingsModel::setSelectedFilterIndex(int row)
{
    storeOnly(this, row, m_selectedFilterIndex, &Self::selectedFilterIndexChanged);
}

// The read

void MfgCorvinFilterSettingsModel::refresh() { m_refresh.start(&FilterTable::read); }

MfgCorvinFilterSettingsModel::FilterTable MfgCorvinFilterSettingsModel::FilterTable::read(const CameraAccess &camera)
{
    FilterTable table;
    fetch(table.numFilters, zvtGetNumFilters, camera.handle);
    table.readSlots(camera.handle);
    fetch(table.currentFilterID, zvtGetCurrentFilterID, camera.handle);
    table.readNames(camera.handle);
    return table;
}

/// Sets the IDs only if those of all slots can be read, also on a wheel of three.
void MfgCorvinFilterSettingsModel::FilterTable::readSlots(uint64_t handle)
{
    FilterIDs ids{};
    for (size_t slot = 0; slot < ids.size(); ++slot)
        if (zvtGetFilterIDInSlot(handle, static_cast<uint8_t>(slot), &ids[slot]) != 0)
            return;
    filterIDs = ids;
    for (size_t slot = 0; slot < ids.size(); ++slot)
        filterNames[slot] = QString::fromUtf8(zvtGetFilterName(ids[slot])); // Null is an empty name.
}

/// Appends what each call wrote, so that the list has an entry for each ID.
void MfgCorvinFilterSettingsModel::FilterTable::readNames(uint64_t handle)
{
    constexpr uint8_t idCount = 64;
    for (uint8_t id = 0; id < idCount; ++id) {
        std::array<char, 257> buffer{};
        zvtGetFilterNameEx(handle, id, buffer.data(), buffer.size());
        namesOfIDs << fromBoundedUtf8(buffer.data(), buffer.size());
    }
}

void MfgCorvinFilterSettingsModel::finishedWatcher()
{
    const FilterTable table = m_refresh.result();
    announce(this, table.namesOfIDs, m_filterNames, &Self::filterIDNameStringListModelChanged);
    if (table.filterIDs.set() && table.numFilters.set() && table.numFilters.get() != 0)
        showFilters(table);
    if (table.currentFilterID.set())
        if (const int row = FilterWheelItemModel::rowOf(m_filters, table.currentFilterID.get()); row >= 0)
            m_selectedFilterIndex = row;
    emit selectedFilterIndexChanged();
    emit filterListModelChanged();
    m_refresh.finish();
}

void MfgCorvinFilterSettingsModel::showFilters(const FilterTable &table)
{
    m_numFilters = table.numFilters.get();
    m_filters.removeAll();
    for (size_t slot = 0; slot < FilterWheelItemModel::rowsFor(table.numFilters.get()); ++slot)
        m_filters.append(new FilterWheelItemModel(table.filterNames[slot], table.filterIDs.get()[slot],
                                                  static_cast<int>(slot), this));
}

// Turning the wheel

void MfgCorvinFilterSettingsModel::selectFilter(int filterID)
{
    announce(this, filterID, m_selectedFilterIndex, &Self::selectedFilterIndexChanged);
    announce(this, true, m_selectionInProgress, &Self::filterSelectionInProgressChanged);
    const std::optional<uint8_t> id = FilterWheelItemModel::idAt(m_filters, filterID);
    m_selection.start([id](const CameraAccess &camera) { return id ? zvtSetCurrentFilterID(camera.handle, *id) : 0; });
}

void MfgCorvinFilterSettingsModel::finishedFilterSelection()
{
    m_selection.result();
    announce(this, false, m_selectionInProgress, &Self::filterSelectionInProgressChanged);
}

// Writing the table

void MfgCorvinFilterSettingsModel::applyFilterIDs()
{
    const uint64_t handle = CameraAccess::of(this).handle;
    for (int slot = 0; slot < std::min(m_numFilters, m_filters.size()); ++slot)
        zvtSetFilterIDInSlot(handle, static_cast<uint8_t>(slot), *FilterWheelItemModel::idAt(m_filters, slot));
}
