#include "recording/BatchDownloadEntry.h"

#include "common/TInvokeEvent.h"
#include "common/conversions.h"
#include "common/reading.h"
#include "common/setters.h"
#include "recording/BatchDownloadModel.h"

namespace
{

// The time of a movie's record in the year of all times of entries, so that edited and unedited times can be compared.
QDateTime timeOfYear(zvtSIRIG irig)
{
    const auto time
        = hlx::CDateTime::NewYDHMS(irig.day, irig.hour, irig.minute, irig.second, irig.millisecond, irig.microsecond);
    // The framework's year 0 means no year. QDate has no year 0; its year -1 is the same leap year.
    const int year = time.year() == 0 ? -1 : time.year();
    return QDateTime(QDate(year, time.month(), time.day()),
                     QTime(time.hour(), time.minute(), time.second(), time.millisecond()));
}

} // namespace

// The last frame of a movie without frames is 4294967295: the number of frames has 32 bits.
BatchDownloadEntry::BatchDownloadEntry(int index, const zvtSSsdMovieInfo &info, BatchDownloadModel *model)
    : m_model(model), m_index(index), m_info(info), m_file(fromBoundedUtf8(info.name, sizeof(info.name))),
      m_outFile(QStringLiteral("%1-%2").arg(QString::number(info.number), m_file)), m_endFrame(info.numFrames - 1U),
      m_totalFrames(info.numFrames), m_movieStart(timeOfYear(info.startTime)), m_movieEnd(timeOfYear(info.endTime)),
      m_startTime(m_movieStart), m_endTime(m_movieEnd)
{
}

void BatchDownloadEntry::setOutFile(const QString &outFile)
{
    if (!storeOnly(this, outFile, m_outFile, &BatchDownloadEntry::outFileChanged))
        return;
    emit validOutFileChanged();
    emit validAllChanged();
    m_model->checkAndSetDuplicateOutputs();
}

void BatchDownloadEntry::setStatus(ESTATUS status)
{
    storeOnly(this, status, m_status, &BatchDownloadEntry::statusChanged);
}

void BatchDownloadEntry::setRangeType(ERANGE_TYPE rangeType)
{
    if (!storeOnly(this, rangeType, m_rangeType, &BatchDownloadEntry::rangeTypeChanged))
        return;
    if (rangeType != RANGE_FRAMES) {
        m_startFrame = 0;
        m_endFrame = m_totalFrames;
        emit startFrameChanged();
        emit endFrameChanged();
        emit validFrameRangeChanged();
    }
    if (rangeType != RANGE_IRIG) {
        m_startTime = m_movieStart;
        m_endTime = m_movieEnd;
        emit startTimeChanged();
        emit endTimeChanged();
        emit validTimeRangeChanged();
    }
    emit validAllChanged();
}

void BatchDownloadEntry::setStartFrame(qulonglong frame)
{
    if (!storeOnly(this, frame, m_startFrame, &BatchDownloadEntry::startFrameChanged))
        return;
    emit validFrameRangeChanged();
    emit validAllChanged();
}

void BatchDownloadEntry::setEndFrame(qulonglong frame)
{
    if (!storeOnly(this, frame, m_endFrame, &BatchDownloadEntry::endFrameChanged))
        return;
    emit validFrameRangeChanged();
    emit validAllChanged();
}

void BatchDownloadEntry::setStartTime(const QDateTime &time)
{
    if (storeOnly(this, time, m_startTime, &BatchDownloadEntry::startTimeChanged))
        emit validTimeRangeChanged();
}

void BatchDownloadEntry::setEndTime(const QDateTime &time)
{
    if (storeOnly(this, time, m_endTime, &BatchDownloadEntry::endTimeChanged))
        emit validTimeRangeChanged();
}

QString BatchDownloadEntry::startTimeString() const { return DateTimeToIrigString(m_startTime); }

void BatchDownloadEntry::setStartTimeString(const QString &text) { setStartTime(IrigStringToDateTime(text)); }

QString BatchDownloadEntry::endTimeString() const { return DateTimeToIrigString(m_endTime); }

void BatchDownloadEntry::setEndTimeString(const QString &text) { setEndTime(IrigStringToDateTime(text)); }

void BatchDownloadEntry::setProgress(double progress)
{
    storeOnly(this, progress, m_progress, &BatchDownloadEntry::progressChanged);
}

void BatchDownloadEntry::setHasDuplicateOutputName(bool duplicate)
{
    storeOnly(this, duplicate, m_hasDuplicateOutputName, &BatchDownloadEntry::hasDuplicateOutputNameChanged);
}

// The model handles the events of its entries. It keeps them in its list until the last event of the run is handled.
void BatchDownloadEntry::postStatus(ESTATUS status)
{
    postInvoke(m_model, [this, status] { setStatus(status); });
}

void BatchDownloadEntry::postProgress(double progress)
{
    postInvoke(m_model, [this, progress] { setProgress(progress); });
}

void BatchDownloadEntry::postLatestProgress(double progress)
{
    m_latestProgress = progress;
    if (m_latestProgressWaits.exchange(true))
        return;
    postInvoke(m_model, [this] {
        // Before the value is read: for one that comes later, another event is posted.
        m_latestProgressWaits = false;
        setProgress(m_latestProgress);
    });
}
