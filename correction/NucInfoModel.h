#pragma once

#include "common/Refresh.h"

#include <QAbstractListModel>
#include <QList>
#include <QString>

#include <cstdint>
#include <utility>

struct zvtSNUCInfo;

/// Everything that a stored correction says about itself, as rows of a name and a value: the camera and the settings
/// that it was made with, and what the search for bad pixels found. Reads the rows once, from its construction on; a
/// failed read leaves no rows. It is created without a parent, so QML owns it. GUI thread only.
class NucInfoModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(bool refreshing READ refreshing NOTIFY refreshingChanged FINAL)
    Q_PROPERTY(bool status READ status NOTIFY refreshingChanged FINAL)

public:
    enum Role { Name = Qt::UserRole + 1, Value };

    /// `name` is the correction's, in UTF-8; it is copied. `size` is in bytes, `time` in units of 100 ns since
    /// 1601-01-01 00:00 UTC. The camera is asked for both if both are 0 (also for a file that really has
    /// neither).
    // NOLINTNEXTLINE(google-runtime-int)
    NucInfoModel(uint64_t handle, const char *name, unsigned int size, unsigned long time, QObject *parent);

    bool refreshing() const { return m_read.refreshing(); } ///< True until the read has ended.
    bool status() const { return m_status; } ///< Whether the rows have been read.

    int rowCount(const QModelIndex &parent = {}) const override;
    /// The name for the role Name, the value for every other role. Invalid for a row that does not exist.
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// Writes the rows, as lines "name: value" in UTF-8, to the file of a URL and replaces its content. Returns false
    /// if the file cannot be opened; a failed write is not reported.
    Q_INVOKABLE bool save(const QString &url);

signals:
    void refreshingChanged();

private:
    using Self = NucInfoModel;

    struct File {
        QByteArray name;
        uint32_t size = 0;
        uint64_t time100ns = 0;
    };
    using NameAndValue = std::pair<QString, QString>;
    struct Rows : QList<NameAndValue> {
        static Rows read(uint64_t handle, File file);
        void appendFile(const File &file);
        void appendFrame(const zvtSNUCInfo &info, double milliseconds, double hertz);
        void appendDetector(const zvtSNUCInfo &info);
        void appendProcess(const zvtSNUCInfo &info);
        void appendBadPixels(const zvtSNUCInfo &info);
        static QString truth(bool value);
    };

private slots:
    void finishedWatcher();

private:
    bool m_status = false;
    QList<NameAndValue> m_rows;
    Refresh<Self, Rows> m_read{this, &Self::finishedWatcher, RefreshForm::Unguarded};
};
