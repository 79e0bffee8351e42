#include "setup/SetupFilterWheelSettingsModel.h"

#include "common/publishing.h"
#include "common/reading.h"
#include "common/setters.h"

#include "zvt/zvtsdk.h"

// Reading

void SetupFilterWheelSettingsModel::refresh()
{
    m_refresh.start(
        [forceScan = m_forceScan](const CameraAccess &camera) { return Filters::read(camera, *forceScan); });
}

void SetupFilterWheelSettingsModel::forceScan()
{
    *m_forceScan = true;
    refresh();
}

SetupFilterWheelSettingsModel::Filters SetupFilterWheelSettingsModel::Filters::read(const CameraAccess &camera,
                                                                                    std::atomic<bool> &forceScan)
{
    constexpr uint32_t nameSize = 200;
    Filters filters;
    fetch(filters.count, zvtGetNumFilters, camera.handle);
    // Cleared before the scan, so that a scan requested meanwhile is left to the next read.
    if (forceScan.exchange(false))
        zvtScanFilters(camera.handle);
    std::array<uint8_t, slotCount> ids{};
    if (zvtGetFilterIDs(camera.handle, &ids[0], &ids[1], &ids[2], &ids[3]) == 0) {
        filters.ids = ids;
        for (size_t slot = 0; slot < slotCount; ++slot)
            filters.names[slot] = textOr<nameSize>({}, zvtGetFilterNameEx, camera.handle, ids[slot]);
    }
    fetch(filters.currentID, zvtGetCurrentFilterID, camera.handle);
    return filters;
}

void SetupFilterWheelSettingsModel::finishedWatcher()
{
    const Filters filters = m_refresh.result();
    showFilters(filters);
    if (filters.currentID.set())
        if (const int row = FilterWheelItemModel::rowOf(m_filters, filters.currentID.get()); row >= 0)
            announce(this, row, m_selectedFilterIndex, &Self::selectedFilterIndexChanged);
    m_refresh.finish();
}

void SetupFilterWheelSettingsModel::showFilters(const Filters &filters)
{
    constexpr int noSlot = -1; // The rows of this list are not numbered by slots.
    m_filters.removeAll();
    if (!filters.ids.set() || !filters.count.set() || filters.count.get() == 0)
        return;
    const size_t rows = FilterWheelItemModel::rowsFor(filters.count.get());
    for (size_t row = 0; row < rows; ++row)
        m_filters.append(new FilterWheelItemModel(filters.names[row], filters.ids.get()[row], noSlot, this));
}

// Turning the wheel

void SetupFilterWheelSettingsModel::turn(Refresh<Self, int> &move, std::optional<uint8_t> id)
{
    move.start([id](const CameraAccess &camera) { return id ? zvtSetCurrentFilterID(camera.handle, *id) : 0; });
}

void SetupFilterWheelSettingsModel::selectFilter(int filterID)
{
    announce(this, filterID, m_selectedFilterIndex, &Self::selectedFilterIndexChanged);
    announce(this, true, m_selectionInProgress, &Self::filterSelectionInProgressChanged);
    turn(m_selection, FilterWheelItemModel::idAt(m_filters, filterID));
}

void SetupFilterWheelSettingsModel::finishedFilterSelection()
{
    m_selection.result();
    announce(this, false, m_selectionInProgress, &Self::filterSelectionInProgressChanged);
}

void SetupFilterWheelSettingsModel::replaceFilter(int filterID)
{
    const bool turns = storeOnly(this, filterID, m_selectedFilterIndex, &Self::selectedFilterIndexChanged);
    announce(this, true, m_replacementInProgress, &Self::filterReplacementSelectionInProgressChanged);
    turn(m_replacement, turns ? FilterWheelItemModel::idAt(m_filters, filterID) : std::nullopt);
}

void SetupFilterWheelSettingsModel::finishedFilterReplacementSelection()
{
    m_replacement.result();
    announce(this, false, m_replacementInProgress, &Self::filterReplacementSelectionInProgressChanged);
}

// Values of the page

void SetupFilterWheelSettingsModel::setVisible(bool visible)
{
    storeOnly(this, visible, m_visible, &Self::visibleChanged);
}

void SetupFilterWheelSettingsModel::setSelectedFilterIndex(int row)
{
    storeOnly(this, row, m_selectedFilterIndex, &Self::selectedFilterIndexChanged);
}
