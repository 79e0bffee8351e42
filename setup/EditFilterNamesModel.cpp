#include "setup/EditFilterNamesModel.h"

#include "common/CameraRoot.h"
#include "common/reading.h"
#include "common/setters.h"
#include "setup/FilterNameEditorItemModel.h"
#include "setup/SetupFilterWheelSettingsModel.h"

#include "zvt/zvtsdk.h"

namespace
{

const FilterNameEditorItemModel *filterAt(const ObjectListModel &filters, int row)
{
    return static_cast<const FilterNameEditorItemModel *>(filters.at(row));
}

} // namespace

void EditFilterNamesModel::refresh() { m_refresh.start(&Names::read); }

EditFilterNamesModel::Names EditFilterNamesModel::Names::read(const CameraAccess &camera)
{
    constexpr uint32_t nameSize = 200;
    Names names;
    for (size_t id = 0; id < filterCount; ++id) {
        const auto filter = static_cast<uint8_t>(id);
        names.defaultNames[id] = QString::fromUtf8(zvtGetFilterName(filter)); // Null is an empty name.
        names.names[id] = textOr<nameSize>({}, zvtGetFilterNameEx, camera.handle, filter);
    }
    return names;
}

void EditFilterNamesModel::finishedWatcher()
{
    const Names names = m_refresh.result();
    m_filters.removeAll();
    for (size_t id = 0; id < filterCount; ++id)
        m_filters.append(
            new FilterNameEditorItemModel(static_cast<int>(id), names.defaultNames[id], names.names[id], this));
    emit filterListModelChanged();
    m_refresh.finish();
}

bool EditFilterNamesModel::validateAll()
{
    constexpr qsizetype longest = 199;
    for (int row = 0; row < m_filters.size(); ++row)
        if (const qsizetype length = filterAt(m_filters, row)->name().size(); length < 1 || length > longest)
            return false;
    return true;
}

void EditFilterNamesModel::saveAllModified()
{
    const uint64_t handle = CameraAccess::of(this).handle;
    for (int row = 0; row < m_filters.size(); ++row)
        if (const auto *filter = filterAt(m_filters, row); filter->hasBeenModified())
            zvtSetFilterInfoName(handle, static_cast<uint8_t>(filter->filterID()), filter->name().toUtf8().constData());
    refreshVisibleLists();
}

void EditFilterNamesModel::refreshVisibleLists()
{
    CameraRoot *const root = CameraRoot::of(this);
    if (!root)
        return;
    if (auto *wheel = root->setupFilterWheelSettingsModel(); wheel->visible())
        wheel->refresh();
}

void EditFilterNamesModel::setVisible(bool visible) { storeOnly(this, visible, m_visible, &Self::visibleChanged); }
