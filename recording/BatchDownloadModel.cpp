#include "recording/BatchDownloadModel.h"

#include "common/TInvokeEvent.h"
#include "common/conversions.h"
#include "common/setters.h"
#include "recording/BatchDownloadRun.h"
#include "recording/SsdMovieFileInfoModel.h"
#include "recording/SsdTabModel.h"

#include <QDir>
#include <QList>
#include <QStandardPaths>
#include <QUrl>

#include <algorithm>
#include <utility>

BatchDownloadModel::BatchDownloadModel(QObject *parent)
    : QObject(parent),
      m_outputDir(QUrl::fromLocalFile(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)).toString())
{
}

BatchDownloadModel::~BatchDownloadModel() { m_run.lastRead().waitForFinished(); }

void BatchDownloadModel::setOutputDir(const QString &outputDir)
{
    storeOnly(this, outputDir, m_outputDir, &Self::outputDirChanged);
}

int BatchDownloadModel::currentEntryFileNumber() const
{
    const int row = m_downloading ? m_entries.indexOf(m_currentEntry) : -1;
    return row < 0 ? row : row + 1;
}

SsdTabModel *BatchDownloadModel::ssdTabModel() const { return qobject_cast<SsdTabModel *>(parent()); }

void BatchDownloadModel::setConvertToQdseq(bool convert)
{
    storeOnly(this, convert, m_convertToQdseq, &Self::convertToQdseqChanged);
}

void BatchDownloadModel::setKeepRqsFile(bool keep) { storeOnly(this, keep, m_keepRqsFile, &Self::keepRqsFileChanged); }

void BatchDownloadModel::setAddCalFile(bool add) { storeOnly(this, add, m_addCalFile, &Self::addCalFileChanged); }

void BatchDownloadModel::setCalFilename(const QString &filename)
{
    storeOnly(this, filename, m_calFilename, &Self::calFilenameChanged);
}

void BatchDownloadModel::start()
{
    if (m_downloading || m_entries.size() == 0)
        return;
    setProgress(0.0);
    setDownloading(true);
    m_log.removeAll();
    // Before the reset: the counts are those of the statuses that the last run has left.
    generateResultsForDisplay();
    *m_cancelled = false;
    BatchDownloadRun::Order order{};
    for (BatchDownloadEntry *entry : allEntries()) {
        entry->setProgress(0.0);
        entry->setStatus(BatchDownloadEntry::STATUS_NOT_STARTED);
        order.movies.append(BatchDownloadRun::Movie(entry));
    }
    order.receiver = this;
    order.folder = toCString(m_outputDir.startsWith(u"file:") ? QUrl(m_outputDir).toLocalFile() : m_outputDir);
    order.convertToQdseq = m_convertToQdseq;
    order.keepRqsFile = m_keepRqsFile;
    if (m_addCalFile)
        order.calFile = toCString(QUrl(m_calFilename).toLocalFile());
    order.cancelled = m_cancelled;
    m_run.start([order = std::move(order)](const CameraAccess &camera) {
        BatchDownloadRun(order, camera).run();
        return true;
    });
}

void BatchDownloadModel::cancel()
{
    if (m_downloading)
        *m_cancelled = true;
}

void BatchDownloadModel::removeAll()
{
    if (m_downloading)
        return;
    m_namesakes.clear();
    m_entries.removeAll();
}

void BatchDownloadModel::remove(BatchDownloadEntry *ent)
{
    if (m_downloading || !ent)
        return;
    m_entries.remove(ent);
    checkAndSetDuplicateOutputs();
}

BatchDownloadEntry *BatchDownloadModel::add(SsdMovieFileInfoModel *info)
{
    if (m_downloading || !info)
        return nullptr;
    auto *entry = new BatchDownloadEntry(info->index(), info->info(), this);
    // Marks as checkAndSetDuplicateOutputs() does, which would take long for each of thousands of movies.
    const Namesakes namesakes = countName(entry);
    m_entries.push_back(entry);
    if (namesakes.count > 1) {
        namesakes.first->setHasDuplicateOutputName(true);
        entry->setHasDuplicateOutputName(true);
    }
    return entry;
}

void BatchDownloadModel::resetAllStatusOnEntries()
{
    for (BatchDownloadEntry *entry : allEntries())
        entry->setStatus(BatchDownloadEntry::STATUS_NOT_STARTED);
}

bool BatchDownloadModel::checkAndSetDuplicateOutputs()
{
    const auto entries = allEntries();
    m_namesakes.clear();
    m_namesakes.reserve(entries.size());
    for (BatchDownloadEntry *entry : entries)
        countName(entry);
    const auto isDuplicate
        = [this](const BatchDownloadEntry *entry) { return m_namesakes.value(entry->outFile()).count > 1; };
    for (BatchDownloadEntry *entry : entries)
        entry->setHasDuplicateOutputName(isDuplicate(entry));
    return std::any_of(entries.cbegin(), entries.cend(), isDuplicate);
}

void BatchDownloadModel::generateResultsForDisplay()
{
    const auto entries = allEntries();
    const auto count = [&entries](BatchDownloadEntry::ESTATUS status) {
        return static_cast<int>(std::count_if(entries.cbegin(), entries.cend(),
                                              [status](const auto *entry) { return entry->status() == status; }));
    };
    m_itemsSucceeded = count(BatchDownloadEntry::STATUS_SUCCEEDED);
    m_itemsFailed = count(BatchDownloadEntry::STATUS_FAILED);
    m_itemsNotStarted = count(BatchDownloadEntry::STATUS_NOT_STARTED);
    emit resultReportingChanged();
}

QString BatchDownloadModel::urlToLocalFile(const QString &url)
{
    return QDir::toNativeSeparators(QUrl(url).toLocalFile());
}

void BatchDownloadModel::postProgress(double progress)
{
    postInvoke(this, [this, progress] { setProgress(progress); });
}

void BatchDownloadModel::postLog(const QString &line)
{
    postInvoke(this, [this, line] { m_log.push_back(line); });
}

void BatchDownloadModel::postCurrentEntry(BatchDownloadEntry *entry)
{
    postInvoke(this, [this, entry] { setCurrentEntry(entry); });
}

bool BatchDownloadModel::event(QEvent *event) { return handleInvokeEvent(event) || QObject::event(event); }

// The events of the run were posted before its end, so they have been handled.
void BatchDownloadModel::finishedWatcher()
{
    m_run.result();
    generateResultsForDisplay();
    setDownloading(false);
    emit doneDownloading();
    m_run.finish();
}

void BatchDownloadModel::setDownloading(bool downloading)
{
    announce(this, downloading, m_downloading, &Self::downloadingChanged);
    emit currentEntryFileNumberChanged();
}

void BatchDownloadModel::setCurrentEntry(BatchDownloadEntry *entry)
{
    if (m_currentEntry == entry)
        return;
    m_currentEntry = entry;
    emit currentEntryChanged();
    emit currentEntryFileNumberChanged();
}

BatchDownloadModel::Namesakes BatchDownloadModel::countName(BatchDownloadEntry *entry)
{
    if (entry->outFile().isEmpty())
        return {};
    Namesakes &namesakes = m_namesakes[entry->outFile()];
    if (++namesakes.count == 1)
        namesakes.first = entry;
    return namesakes;
}

void BatchDownloadModel::setProgress(double progress) { storeOnly(this, progress, m_progress, &Self::progressChanged); }

QList<BatchDownloadEntry *> BatchDownloadModel::allEntries() const
{
    QList<BatchDownloadEntry *> entries;
    entries.reserve(m_entries.size());
    for (int row = 0; row < m_entries.size(); ++row)
        entries.append(static_cast<BatchDownloadEntry *>(m_entries.at(row)));
    return entries;
}
