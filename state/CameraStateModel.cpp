#include "state/CameraStateModel.h"

#include "common/conversions.h"
#include "common/publishing.h"
#include "common/reading.h"
#include "common/setters.h"
#include "state/CameraStateEntry.h"
#include "state/CameraStateTransferWorker.h"

#include <QDebug>
#include <QUrl>

#include <array>

#include "zvt/zvtsdk.h"

namespace
{

using hlx::cam::IZVTController;

// The camera's names of states that are not files.
const QLatin1String factoryDefaults("Factory Defaults");
const QLatin1String hardDefaults("Hard Defaults");

} // namespace

CameraStateModel::CameraStateModel(QObject *parent) : QObject(parent) { getInitialStateName(); }

CameraStateModel::~CameraStateModel() = default;

// The current state

void CameraStateModel::getInitialStateName() { startReadingCurrentState(Trace::Silent); }

void CameraStateModel::startReadingCurrentState(Trace trace)
{
    m_currentState.start([trace](const CameraAccess &camera) { return readCurrentState(camera, trace); });
}

CameraStateModel::CurrentState CameraStateModel::readCurrentState(const CameraAccess &camera, Trace trace)
{
    constexpr uint32_t nameSize = 200;
    // One byte more than the camera may fill, so that the buffer always ends with a zero.
    std::array<char, nameSize + 1> buffer{};
    const bool known = zvtGetStateName(camera.handle, buffer.data(), nameSize) == 0;
    uint8_t isFactory = 0;
    zvtIsFactoryDefaultState(camera.handle, &isFactory);
    const bool isName = zvtIsValidStateName(buffer.data()) == 0;

    const QString text = fromBoundedUtf8(buffer.data(), buffer.size());
    const bool isSpecial = text.compare(hardDefaults, Qt::CaseInsensitive) == 0
        || text.compare(factoryDefaults, Qt::CaseInsensitive) == 0;
    const QString name = known ? text : QString();
    if (trace == Trace::Logged)
        qDebug("Current state name is: %s", qUtf8Printable(name));
    return {name, !isSpecial && isFactory == 0 && isName};
}

void CameraStateModel::finishedGetCurrentStateNameWatcher()
{
    const auto [name, canSave] = m_currentState.result();
    announce(this, name, m_currentStateName, &Self::currentStateNameChanged);
    announce(this, canSave, m_canSaveState, &Self::canSaveStateChanged);
    m_currentState.finish();
}

// The list

void CameraStateModel::refresh()
{
    if (m_entriesRead.start(&CameraStates::read))
        startReadingCurrentState(Trace::Logged);
}

CameraStateModel::CameraStates CameraStateModel::CameraStates::read(const CameraAccess &camera)
{
    CameraStates states;
    hlx::TArray<zvtSDirEntry> entries;
    if (zvtListStates(camera.handle, &entries) == 0)
        for (const auto &entry : entries)
            states.append({QString::fromUtf8(entry.name.c_str()), dateTimeOfFileTime(entry.time100ns)});
    return states;
}

void CameraStateModel::finishedEntriesWatcher()
{
    const CameraStates states = m_entriesRead.result();
    m_entries.removeAll();
    for (const CameraState &state : states)
        m_entries.append(new CameraStateEntry(state.name, state.date, this));
    m_entriesRead.finish();
}

CameraStateEntry *CameraStateModel::entryOf(const QString &name) const
{
    for (int row = 0; row < m_entries.size(); ++row)
        if (auto *entry = static_cast<CameraStateEntry *>(m_entries.at(row)); entry->name() == name)
            return entry;
    return nullptr;
}

bool CameraStateModel::stateExists(const QString &name)
{
    return zvtStateExists(CameraAccess::of(this).handle, name.toUtf8().constData()) == 0;
}

bool CameraStateModel::stateNameValid(const QString &name)
{
    return zvtIsValidFileName(name.toUtf8().constData()) == 0;
}

void CameraStateModel::deleteState(const QString &name)
{
    if (zvtDeleteState(CameraAccess::of(this).handle, name.toUtf8().constData()) == 0)
        m_entries.remove(entryOf(name));
}

void CameraStateModel::renameState(const QString &oldName, const QString &newName)
{
    const uint64_t handle = CameraAccess::of(this).handle;
    if (zvtRenameState(handle, oldName.toUtf8().constData(), newName.toUtf8().constData()) != 0)
        return;
    auto *renamed = entryOf(oldName);
    if (!renamed)
        return;
    m_entries.append(new CameraStateEntry(newName, renamed->date(), this));
    m_entries.remove(renamed);
}

// Saves and loads

template <class Write>
void CameraStateModel::saveOrLoad(bool &flag, void (Self::*changed)(), const CurrentState &onSuccess, Write write)
{
    if (m_saving || m_loading || m_transfer.running())
        return;
    announce(this, true, flag, changed);
    m_saveLoad.start([onSuccess, write = std::move(write)](const CameraAccess &camera) {
        return write(camera) == 0 ? onSuccess : CurrentState(QString(), false);
    });
}

void CameraStateModel::saveState()
{
    if (m_canSaveState)
        saveOrLoad(m_saving, &Self::savingChanged, {m_currentStateName, m_canSaveState},
                   [](const CameraAccess &camera) { return zvtSaveState(camera.handle); });
}

void CameraStateModel::saveStateAs(const QString &name)
{
    if (name != hardDefaults && name != factoryDefaults)
        saveOrLoad(m_saving, &Self::savingChanged, {name, true}, [name = name.toUtf8()](const CameraAccess &camera) {
            return zvtSaveStateAs(camera.handle, name.constData());
        });
}

void CameraStateModel::saveFactoryDefaults()
{
    saveOrLoad(m_saving, &Self::savingChanged, {factoryDefaults, false},
               [](const CameraAccess &camera) { return zvtSaveFactoryDefaults(camera.handle); });
}

void CameraStateModel::loadState(const QString &name)
{
    saveOrLoad(m_loading, &Self::loadingChanged, {name, true}, [name = name.toUtf8()](const CameraAccess &camera) {
        return reading::callController(camera.controller, &IZVTController::LoadState, name.constData());
    });
}

void CameraStateModel::loadFactoryDefaults()
{
    saveOrLoad(m_loading, &Self::loadingChanged, {factoryDefaults, false}, [](const CameraAccess &camera) {
        return reading::callController(camera.controller, &IZVTController::LoadFactoryDefaults);
    });
}

void CameraStateModel::loadHardDefaults()
{
    saveOrLoad(m_loading, &Self::loadingChanged, {hardDefaults, false}, [](const CameraAccess &camera) {
        return reading::callController(camera.controller, &IZVTController::LoadHardDefaults);
    });
}

void CameraStateModel::finishedSaveLoadWatcher()
{
    const auto [name, canSave] = m_saveLoad.result();
    storeOnly(this, false, m_saving, &Self::savingChanged);
    storeOnly(this, false, m_loading, &Self::loadingChanged);
    if (!name.isEmpty())
        storeOnly(this, name, m_currentStateName, &Self::currentStateNameChanged);
    storeOnly(this, canSave, m_canSaveState, &Self::canSaveStateChanged);
    m_saveLoad.finish();
}

// Transfers

void CameraStateModel::uploadState(const QString &url) { m_transfer.start(true, url, QUrl(url).fileName()); }

void CameraStateModel::downloadState(const QString &name, const QString &url) { m_transfer.start(false, url, name); }

void CameraStateModel::abort() { m_transfer.abort(); }
