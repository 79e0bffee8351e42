#include "manufacturing/MfgToolsModel.h"

#include "common/presets.h"
#include "common/setters.h"
#include "manufacturing/BadPixelExport.h"

#include <array>
#include <vector>

#include "zvt/zvtsdk.h"

namespace
{

/// The lists of bad pixels for each index, in the order of their export.
std::vector<int> listsOf(int index)
{
    constexpr int factory = BadPixelExport::factoryList;
    static const std::array<std::vector<int>, 7> lists{
        {{0}, {1}, {2}, {3}, {0, 1, 2, 3}, {factory}, {0, 1, 2, 3, factory}}};
    return index >= 0 && index < static_cast<int>(lists.size()) ? lists[static_cast<size_t>(index)]
                                                                : std::vector<int>();
}

} // namespace

void MfgToolsModel::setVisible(bool visible) { storeOnly(this, visible, m_visible, &Self::visibleChanged); }

void MfgToolsModel::setSelectedSaveBplIndex(int index)
{
    storeOnly(this, index, m_selectedSaveBplIndex, &Self::selectedSaveBplIndexChanged);
}

void MfgToolsModel::refresh()
{
    m_refresh.start([](const CameraAccess &) { return Nothing(); });
}

void MfgToolsModel::finishedWatcher()
{
    m_refresh.result();
    m_refresh.finish();
}

// The factory's default state

void MfgToolsModel::downloadFactoryState(const QUrl &url)
{
    zvtDownloadFactoryDefaultStateStd(CameraAccess::of(this).handle, url.toLocalFile().toUtf8().constData(), {});
}

void MfgToolsModel::uploadFactoryState(const QUrl &url)
{
    zvtUploadFactoryDefaultStateStd(CameraAccess::of(this).handle, url.toLocalFile().toUtf8().constData(), {});
}

// Bad pixels

void MfgToolsModel::createFactoryBplForAllLoadedNucs()
{
    zvtMfgFactoryBPLCreate(CameraAccess::of(this).handle, allPresets);
}

void MfgToolsModel::appendToFactoryBplForAllLoadedNucs()
{
    zvtMfgFactoryBPLAppend(CameraAccess::of(this).handle, allPresets);
}

void MfgToolsModel::applyFactoryBplForAllLoadedNucs()
{
    zvtMfgFactoryBPLApply(CameraAccess::of(this).handle, allPresets);
}

void MfgToolsModel::saveAllLoadedNucs()
{
    const uint64_t handle = CameraAccess::of(this).handle;
    for (uint8_t preset = 0; preset < presetCount; ++preset)
        zvtSaveNUC(handle, preset);
}

void MfgToolsModel::saveBplForSelectedIndexAction(const QUrl &folder)
{
    const std::vector<int> lists = listsOf(m_selectedSaveBplIndex);
    // Without a local path the files would go into the working directory.
    if (const QString path = folder.toLocalFile(); !path.isEmpty() && !lists.empty())
        BadPixelExport(CameraAccess::of(this).handle, path).run(lists);
}

// The lens

void MfgToolsModel::tk2950AutoFocusFull() { zvtAutoFocusFull(CameraAccess::of(this).handle, 0); }
