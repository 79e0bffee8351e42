#pragma once

#include <QDateTime>
#include <QObject>
#include <QString>

#include <atomic>

#include "zvt/zvttypes.h"

class BatchDownloadModel;

/// One movie in the list of BatchDownloadModel: what the run downloads, to which file, and how far it is. Frames count
/// from 0. Times are times of the year: the year of a movie is not known, and all times are in the year -1. GUI thread
/// only, except the functions whose names begin with "post".
class BatchDownloadEntry : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int index READ index CONSTANT FINAL)
    Q_PROPERTY(uint number READ number CONSTANT FINAL)
    Q_PROPERTY(QString file READ file CONSTANT FINAL)
    Q_PROPERTY(QString outFile READ outFile WRITE setOutFile NOTIFY outFileChanged FINAL)
    Q_PROPERTY(ESTATUS status READ status NOTIFY statusChanged FINAL)
    Q_PROPERTY(ERANGE_TYPE rangeType READ rangeType WRITE setRangeType NOTIFY rangeTypeChanged FINAL)
    Q_PROPERTY(qulonglong startFrame READ startFrame WRITE setStartFrame NOTIFY startFrameChanged FINAL)
    Q_PROPERTY(qulonglong endFrame READ endFrame WRITE setEndFrame NOTIFY endFrameChanged FINAL)
    Q_PROPERTY(qulonglong totalFrames READ totalFrames NOTIFY totalFramesChanged FINAL)
    Q_PROPERTY(QDateTime startTime READ startTime WRITE setStartTime NOTIFY startTimeChanged FINAL)
    Q_PROPERTY(QDateTime endTime READ endTime WRITE setEndTime NOTIFY endTimeChanged FINAL)
    Q_PROPERTY(QString startTimeString READ startTimeString WRITE setStartTimeString NOTIFY startTimeChanged FINAL)
    Q_PROPERTY(QString endTimeString READ endTimeString WRITE setEndTimeString NOTIFY endTimeChanged FINAL)
    Q_PROPERTY(uint width READ width CONSTANT FINAL)
    Q_PROPERTY(uint height READ height CONSTANT FINAL)
    Q_PROPERTY(double progress READ progress NOTIFY progressChanged FINAL)
    Q_PROPERTY(bool validAll READ validAll NOTIFY validAllChanged FINAL)
    Q_PROPERTY(bool validOutFile READ validOutFile NOTIFY validOutFileChanged FINAL)
    Q_PROPERTY(bool validFrameRange READ validFrameRange NOTIFY validFrameRangeChanged FINAL)
    Q_PROPERTY(bool validTimeRange READ validTimeRange NOTIFY validTimeRangeChanged FINAL)
    Q_PROPERTY(bool hasDuplicateOutputName READ hasDuplicateOutputName NOTIFY hasDuplicateOutputNameChanged FINAL)
    Q_PROPERTY(bool inProgress READ inProgress NOTIFY statusChanged FINAL)

public:
    enum ESTATUS : int {
        STATUS_NOT_STARTED = 0, ///< Waits, or was never reached.
        STATUS_LOADING = 1, ///< The camera loads the movie.
        STATUS_FINDING_FRAME_RANGE = 2, ///< The frames of a range of times are searched.
        STATUS_DOWNLOADING = 3,
        STATUS_GRABBING_DROPPED_FRAMES = 4, ///< Frames that were lost are transferred again.
        STATUS_CONVERTING = 5,
        STATUS_FAILED = 6,
        STATUS_SUCCEEDED = 7
    };
    Q_ENUM(ESTATUS)
    /// What of the movie is downloaded.
    enum ERANGE_TYPE : int { RANGE_ENTIRE_FILE = 0, RANGE_FRAMES = 1, RANGE_IRIG = 2 };
    Q_ENUM(ERANGE_TYPE)

    /// `index` is the movie's place in the list of the drive. `model` must outlive the entry.
    BatchDownloadEntry(int index, const zvtSSsdMovieInfo &info, BatchDownloadModel *model);

    int index() const { return m_index; }
    uint number() const { return m_info.number; } ///< On the drive.
    QString file() const { return m_file; } ///< The name of the movie.
    QString outFile() const { return m_outFile; } ///< The name of the files to be written, without an extension.
    void setOutFile(const QString &outFile); ///< Also checks all names of the batch for duplicates.
    ESTATUS status() const { return m_status; }
    void setStatus(ESTATUS status);
    ERANGE_TYPE rangeType() const { return m_rangeType; }
    /// Resets the ranges of the other types. `endFrame` then becomes `totalFrames`, one more than the last frame.
    void setRangeType(ERANGE_TYPE rangeType);
    qulonglong startFrame() const { return m_startFrame; }
    void setStartFrame(qulonglong frame);
    qulonglong endFrame() const { return m_endFrame; } ///< The last frame of the range.
    void setEndFrame(qulonglong frame);
    qulonglong totalFrames() const { return m_totalFrames; }
    // Unlike the setters of the frames, those of the times do not signal validAllChanged().
    QDateTime startTime() const { return m_startTime; }
    void setStartTime(const QDateTime &time);
    QDateTime endTime() const { return m_endTime; }
    void setEndTime(const QDateTime &time);
    QString startTimeString() const; ///< "DDD:hh:mm:ss.mmm" with the day of the year.
    void setStartTimeString(const QString &text);
    QString endTimeString() const;
    void setEndTimeString(const QString &text);
    uint width() const { return m_info.width; } ///< Pixels.
    /// Lines of the picture: the record counts one more. 4294967295 for a record of 0 lines.
    uint height() const { return m_info.height - 1U; }
    double progress() const { return m_progress; } ///< 0 to 1.
    void setProgress(double progress);
    bool validAll() const { return validOutFile() && validFrameRange() && validTimeRange(); }
    bool validOutFile() const { return !m_outFile.isEmpty(); }
    bool validFrameRange() const { return m_rangeType != RANGE_FRAMES || m_startFrame <= m_endFrame; }
    bool validTimeRange() const { return m_rangeType != RANGE_IRIG || m_endTime >= m_startTime; }
    bool hasDuplicateOutputName() const { return m_hasDuplicateOutputName; } ///< As last checked by the model.
    void setHasDuplicateOutputName(bool duplicate);
    /// Whether the camera works on this movie. A conversion, which needs no camera, does not count.
    bool inProgress() const { return m_status >= STATUS_LOADING && m_status <= STATUS_GRABBING_DROPPED_FRAMES; }

    // Call the setter later on the GUI thread. Any thread, while the entry is in the list of its model.
    void postStatus(ESTATUS status);
    void postProgress(double progress);
    /// As postProgress(), but posts nothing while the event of an earlier call waits: that event then sets this value.
    /// For progress that may be reported faster than the GUI thread handles events.
    void postLatestProgress(double progress);

signals:
    void outFileChanged();
    void statusChanged();
    void rangeTypeChanged();
    void startFrameChanged();
    void endFrameChanged();
    void totalFramesChanged();
    void startTimeChanged();
    void endTimeChanged();
    void progressChanged();
    void validAllChanged();
    void validOutFileChanged();
    void validFrameRangeChanged();
    void validTimeRangeChanged();
    void hasDuplicateOutputNameChanged();

private:
    BatchDownloadModel *const m_model;
    const int m_index;
    const zvtSSsdMovieInfo m_info;
    const QString m_file;
    QString m_outFile;
    ESTATUS m_status = STATUS_NOT_STARTED;
    ERANGE_TYPE m_rangeType = RANGE_ENTIRE_FILE;
    qulonglong m_startFrame = 0;
    qulonglong m_endFrame;
    const qulonglong m_totalFrames;
    const QDateTime m_movieStart;
    const QDateTime m_movieEnd;
    QDateTime m_startTime;
    QDateTime m_endTime;
    double m_progress = 0.0;
    std::atomic<double> m_latestProgress{0.0}; ///< Of postLatestProgress().
    std::atomic<bool> m_latestProgressWaits{false}; ///< Whether its event has been posted and not been handled.
    bool m_hasDuplicateOutputName = false;
};
