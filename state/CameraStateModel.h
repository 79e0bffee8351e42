#pragma once

#include "common/FileTransfer.h"
#include "common/Refresh.h"

#include <QDateTime>
#include <QList>
#include <QObject>
#include <QString>

#include <tuple>

#include "hlxui/ObjectListModel.h"

class CameraStateEntry;
class CameraStateTransferWorker;

/// The named states in the camera's own storage. Each state is a snapshot of the camera's whole configuration. Lists,
/// saves, loads, renames and deletes states, copies them to and from the computer, and shows the current one. A load
/// changes nearly every setting. So the page is disabled while `loading` is true, and the root model reads its tabs
/// again after the load.
///
/// A save or a load is ignored while a save, a load or a transfer runs; a transfer is ignored only while another
/// transfer runs. transferOk() reports whether a transfer failed. Other failures have no message: a failed rename or
/// deletion changes nothing, and after a failed save or load canSaveState() is false. GUI thread only.
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
    ~CameraStateModel() override; ///< Waits for a running transfer without aborting it.

    bool refreshing() const { return m_entriesRead.refreshing(); }
    bool hasRefreshed() const { return m_entriesRead.hasRefreshed(); }
    bool saving() const { return m_saving; }
    bool loading() const { return m_loading; }
    QString currentStateName() const { return m_currentStateName; } ///< Empty if unknown.
    int progress() const { return m_transfer.progress(); } ///< Of the transfer, 0 to 100 percent.
    ObjectListModel *entries() { return &m_entries; } ///< CameraStateEntry objects in the camera's order.
    bool transferring() const { return m_transfer.running(); }
    bool transferOk() const { return m_transfer.ok(); } ///< Whether the last transfer that has ended succeeded.
    /// Whether the last transfer was an upload to the camera.
    bool transferUpload() const { return m_transfer.isUpload(); }
    bool canSaveState() const { return m_canSaveState; } ///< Whether saveState() may overwrite the current state.

    Q_INVOKABLE void saveState(); ///< Overwrites the current state. Ignored unless canSaveState().
    /// Replaces a state of that name. Ignored for "Factory Defaults" and "Hard Defaults".
    Q_INVOKABLE void saveStateAs(const QString &name);
    Q_INVOKABLE void loadState(const QString &name);
    Q_INVOKABLE void loadFactoryDefaults();
    Q_INVOKABLE void saveFactoryDefaults();
    Q_INVOKABLE void loadHardDefaults(); ///< The camera's built-in defaults.
    Q_INVOKABLE void deleteState(const QString &name);
    Q_INVOKABLE void renameState(const QString &oldName, const QString &newName); ///< Moves the entry to the end.
    Q_INVOKABLE void uploadState(const QString &url); ///< The state gets the file's name without its last extension.
    Q_INVOKABLE void downloadState(const QString &name, const QString &url);
    Q_INVOKABLE void abort(); ///< Stops the transfer at its next block.
    Q_INVOKABLE void refresh(); ///< Reads the entries and the current state.
    Q_INVOKABLE bool stateExists(const QString &name); ///< Asks the camera and waits for the answer.
    Q_INVOKABLE bool stateNameValid(const QString &name); ///< Whether `name` is a valid file name on the camera.

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
    /// Starts `write`, an int(const CameraAccess &), on a pool thread, unless a save, a load or a transfer runs. `flag`
    /// is true while it runs. `onSuccess` becomes the current state if `write` returns 0.
    template <class Write>
    void saveOrLoad(bool &flag, void (Self::*changed)(), const CurrentState &onSuccess, Write write);
    CameraStateEntry *entryOf(const QString &name) const;

private slots:
    void finishedEntriesWatcher();
    void finishedGetCurrentStateNameWatcher();
    void finishedSaveLoadWatcher();
    void progressChangedTransferWorker(int value) { m_transfer.storeProgress(value); }
    void finishedTransferWorker() { m_transfer.finish(); }

private:
    bool m_saving = false;
    bool m_loading = false;
    QString m_currentStateName;
    ObjectListModel m_entries{true};
    FileTransfer<Self, CameraStateTransferWorker> m_transfer{this, &Self::progressChangedTransferWorker,
                                                             &Self::finishedTransferWorker};
    bool m_canSaveState = false;
    Refresh<Self, CameraStates> m_entriesRead{this, &Self::finishedEntriesWatcher, RefreshForm::RefreshingOnly};
    Refresh<Self, CurrentState> m_saveLoad{this, &Self::finishedSaveLoadWatcher, RefreshForm::NoFlags};
    Refresh<Self, CurrentState> m_currentState{this, &Self::finishedGetCurrentStateNameWatcher,
                                               RefreshForm::NewestOnly};
};
