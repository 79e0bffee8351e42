#pragma once

#include "common/Refresh.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QUrl>

#include <cstdint>
#include <utility>

#include "hlxui/ObjectListModel.h"

/// The camera's information as rows of a name and a value, and a text file of them. GUI thread only.
class AboutModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool refreshing READ refreshing NOTIFY refreshingChanged FINAL)
    Q_PROPERTY(bool hasRefreshed READ hasRefreshed NOTIFY hasRefreshedChanged FINAL)
    Q_PROPERTY(ObjectListModel *nameValueListModel READ nameValueListModel NOTIFY nameValueListModelChanged FINAL)
    Q_PROPERTY(QUrl lastDirectory READ lastDirectory WRITE setLastDirectory NOTIFY lastDirectoryChanged FINAL)

public:
    explicit AboutModel(QObject *parent);

    bool refreshing() const { return m_refresh.refreshing(); } ///< True until the first read has ended.
    bool hasRefreshed() const { return m_refresh.hasRefreshed(); }
    ObjectListModel *nameValueListModel() { return &m_nameValueListModel; } ///< Of AboutItemModel.

    /// The directory in which the page's file dialog starts, as a URL; first the home directory. Not stored in the
    /// settings.
    QUrl lastDirectory();
    void setLastDirectory(const QUrl &directory); ///< Signals in any case. An invalid URL sets the home directory.

    /// Reads the rows again. Of two simultaneous reads only the later one is published.
    Q_INVOKABLE void refresh();
    /// Writes the rows to the file of a URL, in UTF-8 with CR LF line ends. Returns false if the file cannot be opened;
    /// a failed write is not reported.
    Q_INVOKABLE bool saveTextFile(const QString &filenameWithPath);

signals:
    void refreshingChanged();
    void hasRefreshedChanged();
    void nameValueListModelChanged();
    void lastDirectoryChanged();

private:
    using Self = AboutModel;

    /// The name and value of each row, in the order of the list.
    struct Rows : QList<std::pair<QString, QString>> {
        static Rows read(const CameraAccess &camera);
        void readNames(uint64_t handle);
        void readOperatingTime(uint64_t handle);
        void readExtraInfo(uint64_t handle);
    };

private slots:
    void finishedWatcher();

private:
    ObjectListModel m_nameValueListModel{true};
    QUrl m_lastDirectory;
    Refresh<Self, Rows> m_refresh{this, &Self::finishedWatcher, RefreshForm::Unguarded};
};
