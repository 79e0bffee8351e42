#pragma once

#include "common/Refresh.h"
#include "recording/BatchDownloadEntry.h"

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QString>

#include <atomic>
#include <memory>

#include "hlxui/ObjectListModel.h"
#include "hlxui/StringListModel.h"

class SsdMovieFileInfoModel;
class SsdTabModel;

/// Downloads any number of movies from the drive of the camera, one after the other: each movie is loaded, copied to a
/// folder of the computer, unloaded and, on request, converted. A movie that fails does not stop the others. The whole
/// run is one pool task (BatchDownloadRun), which reports only by posted events.
///
/// The list of entries does not change during a run. The model stays alive until its run has ended, so the task may
/// post events to it and to its entries. GUI thread only, except the functions whose names begin with "post".
class BatchDownloadModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString outputDir READ outputDir WRITE setOutputDir NOTIFY outputDirChanged FINAL)
    Q_PROPERTY(ObjectListModel *entries READ entries CONSTANT FINAL)
    Q_PROPERTY(StringListModel *log READ log CONSTANT FINAL)
    Q_PROPERTY(bool downloading READ downloading NOTIFY downloadingChanged FINAL)
    Q_PROPERTY(BatchDownloadEntry *currentEntry READ currentEntry NOTIFY currentEntryChanged FINAL)
    Q_PROPERTY(double progress READ progress NOTIFY progressChanged FINAL)
    Q_PROPERTY(int itemsSucceeded READ itemsSucceeded NOTIFY resultReportingChanged FINAL)
    Q_PROPERTY(int itemsFailed READ itemsFailed NOTIFY resultReportingChanged FINAL)
    Q_PROPERTY(int itemsNotStarted READ itemsNotStarted NOTIFY resultReportingChanged FINAL)
    Q_PROPERTY(int currentEntryFileNumber READ currentEntryFileNumber NOTIFY currentEntryFileNumberChanged FINAL)
    Q_PROPERTY(SsdTabModel *ssdTabModel READ ssdTabModel CONSTANT FINAL)
    Q_PROPERTY(bool convertToQdseq READ convertToQdseq WRITE setConvertToQdseq NOTIFY convertToQdseqChanged FINAL)
    Q_PROPERTY(bool keepRqsFile READ keepRqsFile WRITE setKeepRqsFile NOTIFY keepRqsFileChanged FINAL)
    Q_PROPERTY(bool addCalFile READ addCalFile WRITE setAddCalFile NOTIFY addCalFileChanged FINAL)
    Q_PROPERTY(QString calFilename READ calFilename WRITE setCalFilename NOTIFY calFilenameChanged FINAL)
    Q_MOC_INCLUDE("recording/SsdMovieFileInfoModel.h")
    Q_MOC_INCLUDE("recording/SsdTabModel.h")

public:
    explicit BatchDownloadModel(QObject *parent);
    ~BatchDownloadModel() override; ///< Waits for a run without cancelling it.

    QString outputDir() const { return m_outputDir; } ///< A URL or a path; the documents of the user at first.
    void setOutputDir(const QString &outputDir);
    ObjectListModel *entries() { return &m_entries; } ///< BatchDownloadEntry objects.
    StringListModel *log() { return &m_log; } ///< What the last run did and what failed.
    bool downloading() const { return m_downloading; } ///< Whether a run is under way.
    /// The movie that the last run has started last; null if it has been deleted.
    BatchDownloadEntry *currentEntry() const { return m_currentEntry; }
    double progress() const { return m_progress; } ///< Of the run, 0 to 1.
    // As last counted by generateResultsForDisplay().
    int itemsSucceeded() const { return m_itemsSucceeded; }
    int itemsFailed() const { return m_itemsFailed; }
    int itemsNotStarted() const { return m_itemsNotStarted; }
    int currentEntryFileNumber() const; ///< The row of currentEntry(), from 1; -1 without a run.
    SsdTabModel *ssdTabModel() const; ///< The parent.
    bool convertToQdseq() const { return m_convertToQdseq; } ///< Whether a run converts the movies.
    void setConvertToQdseq(bool convert);
    bool keepRqsFile() const { return m_keepRqsFile; } ///< Whether the downloaded file stays after its conversion.
    void setKeepRqsFile(bool keep);
    bool addCalFile() const { return m_addCalFile; } ///< Whether the conversion uses the file of calFilename().
    void setAddCalFile(bool add);
    QString calFilename() const { return m_calFilename; } ///< A URL.
    void setCalFilename(const QString &filename);

    /// Downloads all movies of the list. Ignored during a run and without entries. Does not check the entries: two with
    /// the same name write the same file.
    Q_INVOKABLE void start();
    /// Stops the run at the next progress report of a transfer or a conversion, or after the present movie.
    Q_INVOKABLE void cancel();
    // These three do nothing during a run.
    Q_INVOKABLE void removeAll();
    Q_INVOKABLE void remove(BatchDownloadEntry *ent); ///< Does nothing for null.
    /// Adds the movie once more if the list has it already. Returns the new entry; null for null and during a run.
    Q_INVOKABLE BatchDownloadEntry *add(SsdMovieFileInfoModel *info);

    Q_INVOKABLE void resetAllStatusOnEntries(); ///< Also during a run.
    /// Marks the entries whose output name another one has too. Letter case counts; empty names never match. Returns
    /// whether there are any. Files of these names in the folder are not looked for.
    Q_INVOKABLE bool checkAndSetDuplicateOutputs();
    Q_INVOKABLE void generateResultsForDisplay(); ///< Counts the entries by their statuses; those in work are left out.
    Q_INVOKABLE QString urlToLocalFile(const QString &url); ///< With the separators of this system.

    // Store the value, or add a line to log(), later on the GUI thread. Any thread, while the model exists.
    void postProgress(double progress);
    void postLog(const QString &line);
    void postCurrentEntry(BatchDownloadEntry *entry);

    bool event(QEvent *event) override;

signals:
    void outputDirChanged();
    void downloadingChanged();
    void currentEntryChanged();
    void progressChanged();
    void resultReportingChanged();
    void currentEntryFileNumberChanged();
    void convertToQdseqChanged();
    void keepRqsFileChanged();
    void addCalFileChanged();
    void calFilenameChanged();
    void doneDownloading(); ///< The run has ended, by itself or because it was cancelled.

private slots:
    void finishedWatcher();

private:
    using Self = BatchDownloadModel;
    /// The entries with one output name.
    struct Namesakes {
        BatchDownloadEntry *first = nullptr;
        int count = 0;
    };

    Namesakes countName(BatchDownloadEntry *entry);
    void setDownloading(bool downloading);
    void setCurrentEntry(BatchDownloadEntry *entry);
    void setProgress(double progress);
    QList<BatchDownloadEntry *> allEntries() const;

    QString m_outputDir;
    ObjectListModel m_entries{true};
    QHash<QString, Namesakes> m_namesakes; ///< By the names of the list; without the empty one.
    StringListModel m_log;
    bool m_downloading = false;
    QPointer<BatchDownloadEntry> m_currentEntry;
    double m_progress = 0.0;
    int m_itemsSucceeded = 0;
    int m_itemsFailed = 0;
    int m_itemsNotStarted = 0;
    std::shared_ptr<std::atomic<bool>> m_cancelled = std::make_shared<std::atomic<bool>>(false); ///< Shared with a run.
    bool m_convertToQdseq = false;
    bool m_keepRqsFile = true;
    bool m_addCalFile = false;
    QString m_calFilename;
    Refresh<Self, bool> m_run{this, &Self::finishedWatcher, RefreshForm::NoFlags};
};
