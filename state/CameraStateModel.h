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

/// The named states that the camera keeps on its own storage, each a snapshot of its whole configuration: lists, saves,
/// loads, renames and deletes them, copies them to and from the computer, and knows which one the camera is in. A load
/// changes nearly every setting, so `loading` disables the page, and its end makes the root read all anew.
///
/// Saves and loads exclude one another and wait for a transfer; a transfer waits for none but another transfer. No
/// failure of a save, a load, a rename or a deletion has a message; a failed transfer shows in transferOk(). GUI only.
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
    ~CameraStateModel() override; ///< Waits for a running transfer, which is not aborted.

    bool refreshing() const { return m_entriesRead.refreshing(); }
    bool hasRefreshed() const { return m_entriesRead.hasRefreshed(); }
    bool saving() const { return m_saving; }
    bool loading() const { return m_loading; }
    QString currentStateName() const { return m_currentStateName; } ///< Empty if not known.
    int progress() const { return m_progress; } ///< Of the transfer, in percent.
    ObjectListModel *entries() { return &m_entries; } ///< Of CameraStateEntry, in the camera's order.
    bool transferring() const { return m_transferring; }
    bool transferOk() const { return m_transferOk; } ///< Of the last transfer, once it has ended.
    bool transferUpload() const { return m_transferUpload; } ///< The last transfer went to the camera.
    bool canSaveState() const { return m_canSaveState; } ///< saveState() may overwrite the current state.

    Q_INVOKABLE void saveState();
    Q_INVOKABLE void saveStateAs(const QString &name); ///< Overwrites. The names of the special states are ignored.
    Q_INVOKABLE void loadState(const QString &name);
    Q_INVOKABLE void loadFactoryDefaults();
    Q_INVOKABLE void saveFactoryDefaults();
    Q_INVOKABLE void loadHardDefaults();
    Q_INVOKABLE void deleteState(const QString &name);
    Q_INVOKABLE void renameState(const QString &oldName, const QString &newName); ///< Moves its entry to the end.
    Q_INVOKABLE void uploadState(const QString &url); ///< The state gets the name of the file less its last suffix.
    Q_INVOKABLE void downloadState(const QString &name, const QString &url);
    Q_INVOKABLE void abort(); ///< Of the transfer, at its next block.
    Q_INVOKABLE void refresh(); ///< Reads the entries and the current state.
    Q_INVOKABLE bool stateExists(const QString &name); ///< Asks the camera.
    Q_INVOKABLE bool stateNameValid(const QString &name); ///< Whether a file on the camera may have this name.

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
    /// The state that the camera is in, and whether saveState() may overwrite it.
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
    /// Starts a save or a load, unless something of the kind runs. `write` is called as int(const CameraAccess &).
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
    Refresh<Self, CameraStates> m_entriesRead{this, &Self::finishedEntriesWatcher, Form::RefreshingOnly};
    Refresh<Self, CurrentState> m_saveLoad{this, &Self::finishedSaveLoadWatcher, Form::NoFlags};
    Refresh<Self, CurrentState> m_currentState{this, &Self::finishedGetCurrentStateNameWatcher, Form::NewestOnly};
};
