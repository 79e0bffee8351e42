#pragma once

#include "common/FileTransfer.h"
#include "common/Nullable.h"
#include "common/Refresh.h"

#include <QAbstractListModel>
#include <QDateTime>
#include <QList>
#include <QString>

#include <cstdint>

#include "zvt/zvttypes.h"

class NucInfoModel;
class NucTransferWorker;

/// The non-uniformity corrections (NUCs) in the camera's own storage, in the camera's order. Lists, deletes and renames
/// them, and copies them to and from the computer. The list is empty while it is read.
///
/// A transfer is ignored while another one runs. transferOk() reports whether a transfer failed. Other failures have no
/// message: a failed rename or deletion changes nothing, and a failed read of the free space leaves the old one. GUI
/// thread only.
class NucListModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(bool refreshing READ refreshing NOTIFY refreshingChanged FINAL)
    Q_PROPERTY(int progress READ progress NOTIFY progressChanged FINAL)
    Q_PROPERTY(bool transferring READ transferring NOTIFY transferringChanged FINAL)
    Q_PROPERTY(bool transferOk READ transferOk NOTIFY transferringChanged FINAL)
    Q_PROPERTY(bool transferUpload READ transferUpload NOTIFY transferringChanged FINAL)
    Q_PROPERTY(qulonglong freeSpace READ freeSpace NOTIFY freeSpaceChanged FINAL)
    Q_PROPERTY(QString freeSpaceString READ freeSpaceString NOTIFY freeSpaceChanged FINAL)
    Q_MOC_INCLUDE("correction/NucInfoModel.h")

public:
    enum Role { Name = Qt::UserRole + 1, Size, Date, Width, Height, IntTime, InfoOk, Index };

    explicit NucListModel(QObject *parent);
    ~NucListModel() override; ///< Waits for a running transfer without aborting it.

    bool refreshing() const { return m_refresh.refreshing(); }
    int progress() const { return m_transfer.progress(); } ///< Of the transfer, 0 to 100 percent.
    bool transferring() const { return m_transfer.running(); }
    bool transferOk() const { return m_transfer.ok(); } ///< Whether the last transfer that has ended succeeded.
    /// Whether the last transfer was an upload to the camera.
    bool transferUpload() const { return m_transfer.isUpload(); }
    qulonglong freeSpace() const { return m_freeSpace; } ///< The space left for corrections in bytes.
    QString freeSpaceString() const; ///< freeSpace() with a unit.

    Q_INVOKABLE void refresh(); ///< Reads the list and the free space.
    Q_INVOKABLE void deleteNuc(const QString &name); ///< Blocks for two SDK calls.
    Q_INVOKABLE void renameNuc(const QString &oldName, const QString &newName); ///< Moves the row to the end. Blocks.
    Q_INVOKABLE void uploadNuc(const QString &url); ///< The whole name of the file is the name for the camera.
    Q_INVOKABLE void downloadNuc(const QString &name, const QString &url);
    Q_INVOKABLE QString nameAt(int index) const; ///< Empty if the list has no such row.
    /// A new description of the correction, which belongs to the caller. Null if the list has no such row or its infoOk
    /// is false.
    Q_INVOKABLE NucInfoModel *infoAt(int index);
    Q_INVOKABLE void abort(); ///< Stops the transfer at its next block.
    // These ask the camera and wait for its answer.
    Q_INVOKABLE bool nucExists(const QString &name);
    Q_INVOKABLE bool isFactoryNuc(const QString &name); ///< False if the camera does not answer.
    /// The size, in bytes, of a correction for the window of preset 0, whichever preset it is for; 0 after a failure.
    Q_INVOKABLE uint guessNucSize();
    // These do not ask the camera.
    Q_INVOKABLE bool nucNameValid(const QString &name); ///< Whether `name` is a valid file name on the camera.
    Q_INVOKABLE qulonglong localFileSize(const QString &fname); ///< The size of the file of a URL; 0 without a file.

    int rowCount(const QModelIndex &parent = {}) const override;
    /// The name for every role that is not one of the others. Invalid for a row that does not exist.
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

signals:
    void refreshingChanged();
    void progressChanged();
    void transferringChanged();
    void freeSpaceChanged();

private:
    using Self = NucListModel;

    struct NucEntry {
        QString name;
        uint32_t size = 0; ///< Bytes.
        QDateTime date; ///< In UTC, to the millisecond.
        uint16_t width = 0;
        uint16_t height = 0;
        double intTime = 0.0; ///< Milliseconds.
        bool infoOk = false; ///< Whether the window and the integration time are known.

        static NucEntry read(uint64_t handle, const zvtSDirEntry &file);
    };
    struct Settings {
        QList<NucEntry> nucs;
        Nullable<uint64_t> freeSpace;

        static Settings read(const CameraAccess &camera);
    };

    int rowOf(const QString &name) const;
    void append(const NucEntry &nuc);
    void removeAt(int row);

private slots:
    void progressChangedTransferWorker(int value) { m_transfer.storeProgress(value); }
    void finishedTransferWorker() { m_transfer.finish(); }
    void finishedWatcher();

private:
    QList<NucEntry> m_nucs;
    uint64_t m_freeSpace = 0;
    FileTransfer<Self, NucTransferWorker> m_transfer{this, &Self::progressChangedTransferWorker,
                                                     &Self::finishedTransferWorker};
    Refresh<Self, Settings> m_refresh{this, &Self::finishedWatcher, RefreshForm::FlagGuard};
};
