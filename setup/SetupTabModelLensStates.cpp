#include "setup/SetupTabModel.h"

#include "common/CapabilityBlock.h"
#include "common/publishing.h"
#include "common/setters.h"

#include <QDebug>

#include "zvt/zvtsdk.h"

// Part of SetupTabModel: the lens states. The camera stores the list; the model has only the names.

namespace
{

/// Returns the list of lens states: empty, without a call, for a camera without lens states, and empty after a failed
/// call, which may have filled it in part. Pool task.
hlx::TArray<zvtSDirEntry> readLensStates(const CameraAccess &camera)
{
    hlx::TArray<zvtSDirEntry> states;
    if (camera.capabilities->hasLensStatesFunctionality() && zvtListLensStates(camera.handle, &states) != 0)
        states.clear();
    return states;
}

} // namespace

void SetupTabModel::loadLensStateNamesAsync() { m_lensStates.start(&readLensStates); }

void SetupTabModel::finishedLoadingLensStatesWatcher()
{
    storeLensStates(m_lensStates.result());
    signalLensStates();
    m_lensStates.finish();
}

void SetupTabModel::loadLensStateNames()
{
    if (capabilities()->hasLensStatesFunctionality()) {
        m_lensStateNames.clear();
        LensStates states;
        if (zvtListLensStates(handle(), &states) == 0)
            storeLensStates(states);
    }
    signalLensStates();
}

// Selects the first state, since the camera does not report which one was loaded last.
void SetupTabModel::storeLensStates(const LensStates &states)
{
    m_lensStateNames.clear();
    for (const zvtSDirEntry &state : states)
        m_lensStateNames << QString::fromUtf8(state.name.c_str());
    m_selectedLensStateIndex = m_lensStateNames.isEmpty() ? -1 : 0;
}

// The index is signalled last: a combo box with new rows selects the first one until then.
void SetupTabModel::signalLensStates()
{
    emit hasAtLeastOneLensStateChanged();
    emit lensStateNamesChanged();
    emit selectedLensStateIndexChanged();
}

void SetupTabModel::setSelectedLensStateIndex(int index)
{
    storeOnly(this, index, m_selectedLensStateIndex, &Self::selectedLensStateIndexChanged);
}

void SetupTabModel::setComponentsModified(bool modified)
{
    announce(this, modified, m_selectedLensStateComponentsModifiedNotSaved,
             &Self::selectedLensStateComponentsModifiedNotSavedChanged);
}

void SetupTabModel::addLensState(const QString &name)
{
    if (zvtSaveLensStateAs(handle(), name.toUtf8().constData()) != 0)
        return;
    loadLensStateNames();
    if (zvtLoadLensState(handle(), name.toUtf8().constData()) != 0)
        return;
    const auto index = m_lensStateNames.indexOf(name);
    if (index < 0)
        return;
    setSelectedLensStateIndex(static_cast<int>(index));
    setComponentsModified(false);
}

void SetupTabModel::renameLensState(const QString &oldName, const QString &newName)
{
    if (zvtRenameLensState(handle(), oldName.toUtf8().constData(), newName.toUtf8().constData()) != 0)
        return;
    loadLensStateNames();
    if (const auto index = m_lensStateNames.indexOf(newName); index >= 0)
        setSelectedLensStateIndex(static_cast<int>(index));
}

void SetupTabModel::saveLensState(const QString &name)
{
    zvtSaveLensStateAs(handle(), name.toUtf8().constData());
    setComponentsModified(false);
}

void SetupTabModel::loadLensState(const QString &name)
{
    qDebug("Trying to load lens state: %s", qUtf8Printable(name));
    zvtLoadLensState(handle(), name.toUtf8().constData());
    refreshLensStateDependentItems();
}

void SetupTabModel::deleteLensState(const QString &name)
{
    if (zvtDeleteLensState(handle(), name.toUtf8().constData()) != 0)
        return;
    loadLensStateNames();
    if (m_lensStateNames.isEmpty())
        return;
    const QString first = m_lensStateNames.first();
    setSelectedLensStateIndex(0);
    loadLensState(first);
}

void SetupTabModel::refreshLensStateDependentItems()
{
    if (capabilities()->hasDiscontinuousOpticalZoom()) {
        emit selectedDiscontinuousFieldOfViewIndexChanged();
        updateFocusPosition();
    }
    if (capabilities()->hasContinuousOpticalZoom())
        updateZoomPosition();
    setComponentsModified(false);
}
