#pragma once

#include "common/Refresh.h"

#include <QDateTime>
#include <QList>
#include <QObject>
#include <QString>

#include <tuple>

#include "hlxui/ObjectListModel.h"

class CameraStateEntry;
class CameraStateTransferWorker;

/// The named states in the camera's own storage, each a snapshot of its whole configuration. Lists, saves, loads,
/// renames and deletes states, copies them to and from the computer, and shows the current one. A load changes nearly
/// every setting, so `loading` disables the page, and the root reads everything again when it ends.
///
/// A save or a load is ignored while a save, a load or a transfer runs; a transfer is ignored only while another
/// transfer runs. Failed saves, loads, renames and deletions have no message; transferOk() shows a failed transfer. GUI
/// thread only.
class CameraStateModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool refreshing READ refreshing NOTIFY refreshingChanged FINAL)
    Q_PROPERTY(bool hasRefreshed READ hasRefreshed NOTIFY hasRefreshedChanged FINAL)
    Q_PROPERTY(bool saving READ saving NOTIFY savingChanged FINAL)
    Q_PROPERTY(bool loading READ loading NOTIFY loadingChanged FINAL)
    Q_PROPERTY(QString currentStateName READ currentStateName NOTIFY currentStateNameChanged FINAL)
    Q_PROPERTY(int progress READ progress NOTIFY progressChanged FINAL)
    Q_PROPERTY(ObjectListModel *entries READ entries CONSTANT FINAL)
    Q_PROPERTY(bool transferring READ transferring NOTIFY transferringChanged FINAL)
    Q_PROPERTY(bool transferOk READ transferOk NOTIFY transferringChanged FINAL)
    Q_PROPERTY(bool transferUpload READ transferUpload NOTIFY transferringChanged FINAL)
    Q_PROPERTY(bool canSaveState READ canSaveState NOTIFY canSaveStateChanged FINAL)

public:
    explicit CameraStateModel(QObject *parent);
    ~CameraStateModel() override; ///< Waits for a running transfer and does not abort it.

    bool refreshing() const { return m_entriesRead.refreshing(); }
    bool hasRefreshed() const { return m_entriesRead.hasRefreshed(); }
    bool saving() const { return m_saving; }
    bool loading() const { return m_loading; }
    QString currentStateName() const { return m_currentStateName; } ///< Empty if unknown.
    int progress() const { return m_progress; } ///< Of the transfer, 0 to 100 percent.
    ObjectListModel *entries() { return &m_entries; } ///< CameraStateEntry objects in the camera's order.
    bool transferring() const { return m_transferring; }
    bool transferOk() const { return m_transferOk; } ///< Whether the last transfer succeeded; valid after its end.
    bool transferUpload() const { return m_transferUpload; } ///< Whether the last transfer was an upload to the camera.
    bool canSaveState() const { return m_canSaveState; } ///< Whether saveState() may overwrite the current state.

    Q_INVOKABLE void saveState(); ///< Overwrites the current state. Ignored unless canSaveState().
    Q_INVOKABLE void saveStateAs(const QString &name); ///< Overwrites. Ignored for the two default states.
    Q_INVOKABLE void loadState(const QString &name);
    Q_INVOKABLE void loadFactoryDefaults();
    Q_INVOKABLE void saveFactoryDefaults();
    Q_INVOKABLE void loadHardDefaults();
    Q_INVOKABLE void deleteState(const QString &name);
    Q_INVOKABLE void renameState(const QString &oldName, const QString &newName); ///< Moves the entry to the end.
    Q_INVOKABLE void uploadState(const QString &url); ///< The state's name is the file's without its last suffix.
    Q_INVOKABLE void downloadState(const QString &name, const QString &url);
    Q_INVOKABLE void abort(); ///< Stops the transfer at its next block.
    Q_INVOKABLE void refresh(); ///< Reads the entries and the current state.
    Q_INVOKABLE bool stateExists(const QString &name); ///< Asks the camera, blocking.
    Q_INVOKABLE bool stateNameValid(const QString &name); ///< Whether it is a valid file name for the camera.

signals:
    void refreshingChanged();
    void hasRefreshedChanged();
    void savingChanged();
    void loadingChanged();
    void currentStateNameChanged();
    void progressChanged();
    void transferringChanged();
    void canSaveStateChanged();

private:
    using Self = CameraStateModel;
    /// The name of the current state, and whether saveState() may overwrite it.
    using CurrentState = std::tuple<QString, bool>;
    enum class Trace { Silent, Logged };

    struct CameraState {
        QString name;
        QDateTime date;
    };
    struct CameraStates : QList<CameraState> {
        static CameraStates read(const CameraAccess &camera);
    };

    static CurrentState readCurrentState(const CameraAccess &camera, Trace trace);
    void startReadingCurrentState(Trace trace);
    void getInitialStateName();
    /// Starts `write`, an int(const CameraAccess &), unless a save, a load or a transfer runs. Sets `flag` while it
    /// runs. `onSuccess` is the current state after a status of 0.
    template <class Write>
    void saveOrLoad(bool &flag, void (Self::*changed)(), const CurrentState &onSuccess, Write write);
    void startTransfer(bool upload, const QString &url, const QString &name);
    CameraStateEntry *entryOf(const QString &name) const;

private slots:
    void finishedEntriesWatcher();
    void finishedGetCurrentStateNameWatcher();
    void finishedSaveLoadWatcher();
    void progressChangedTransferWorker(int value);
    void finishedTransferWorker();

private:
    bool m_saving = false;
    bool m_loading = false;
    bool m_transferring = false;
    int m_progress = 0;
    QString m_currentStateName;
    ObjectListModel m_entries{true};
    CameraStateTransferWorker *m_worker = nullptr;
    bool m_transferOk = false;
    bool m_transferUpload = false;
    bool m_canSaveState = false;
    Refresh<Self, CameraStates> m_entriesRead{this, &Self::finishedEntriesWatcher, RefreshForm::RefreshingOnly};
    Refresh<Self, CurrentState> m_saveLoad{this, &Self::finishedSaveLoadWatcher, RefreshForm::NoFlags};
    Refresh<Self, CurrentState> m_currentState{this, &Self::finishedGetCurrentStateNameWatcher,
                                               RefreshForm::NewestOnly};
};
