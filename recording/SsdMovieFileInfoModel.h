#pragma once

#include <QObject>
#include <QString>

#include "zvt/zvttypes.h"

/// A movie on the camera's drive, as a row of the list of movies. Constant, except that the page marks the rows that
/// the operator has selected. GUI thread only.
class SsdMovieFileInfoModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int index READ index CONSTANT FINAL)
    Q_PROPERTY(QString name READ name CONSTANT FINAL)
    Q_PROPERTY(uint number READ number CONSTANT FINAL)
    Q_PROPERTY(uint width READ width CONSTANT FINAL)
    Q_PROPERTY(uint height READ height CONSTANT FINAL)
    Q_PROPERTY(uint numFrames READ numFrames CONSTANT FINAL)

    Q_PROPERTY(uint startIrigDay READ startIrigDay CONSTANT FINAL)
    Q_PROPERTY(uint startIrigHour READ startIrigHour CONSTANT FINAL)
    Q_PROPERTY(uint startIrigMinute READ startIrigMinute CONSTANT FINAL)
    Q_PROPERTY(uint startIrigSecond READ startIrigSecond CONSTANT FINAL)
    Q_PROPERTY(uint startIrigMillisecond READ startIrigMillisecond CONSTANT FINAL)
    Q_PROPERTY(uint startIrigMicrosecond READ startIrigMicrosecond CONSTANT FINAL)
    Q_PROPERTY(uint endIrigDay READ endIrigDay CONSTANT FINAL)
    Q_PROPERTY(uint endIrigHour READ endIrigHour CONSTANT FINAL)
    Q_PROPERTY(uint endIrigMinute READ endIrigMinute CONSTANT FINAL)
    Q_PROPERTY(uint endIrigSecond READ endIrigSecond CONSTANT FINAL)
    Q_PROPERTY(uint endIrigMillisecond READ endIrigMillisecond CONSTANT FINAL)
    Q_PROPERTY(uint endIrigMicrosecond READ endIrigMicrosecond CONSTANT FINAL)
    Q_PROPERTY(QString startTimeString READ startTimeString CONSTANT FINAL)
    Q_PROPERTY(QString endTimeString READ endTimeString CONSTANT FINAL)

    Q_PROPERTY(bool selected READ selected WRITE setSelected NOTIFY selectedChanged FINAL)

public:
    /// `index` is the place in the list, counted from 0.
    SsdMovieFileInfoModel(int index, const zvtSSsdMovieInfo &info, QObject *parent);

    const zvtSSsdMovieInfo &info() const { return m_info; } ///< As the camera returned it.

    int index() const { return m_index; }
    QString name() const;
    uint number() const { return m_info.number; } ///< On the drive; a number is never given twice.
    uint width() const { return m_info.width; } ///< Pixels.
    uint height() const { return m_info.height - 1U; } ///< Pixels; 4294967295 for a record without lines.
    uint numFrames() const { return m_info.numFrames; }

    // The IRIG times of the first and of the last frame.
    uint startIrigDay() const { return m_info.startTime.day; } ///< Of the year, counted from 1.
    uint startIrigHour() const { return m_info.startTime.hour; }
    uint startIrigMinute() const { return m_info.startTime.minute; }
    uint startIrigSecond() const { return m_info.startTime.second; }
    uint startIrigMillisecond() const { return m_info.startTime.millisecond; }
    uint startIrigMicrosecond() const { return m_info.startTime.microsecond; }
    uint endIrigDay() const { return m_info.endTime.day; }
    uint endIrigHour() const { return m_info.endTime.hour; }
    uint endIrigMinute() const { return m_info.endTime.minute; }
    uint endIrigSecond() const { return m_info.endTime.second; }
    uint endIrigMillisecond() const { return m_info.endTime.millisecond; }
    uint endIrigMicrosecond() const { return m_info.endTime.microsecond; }
    QString startTimeString() const; ///< With milliseconds and microseconds.
    QString endTimeString() const;

    bool selected() const { return m_selected; }
    void setSelected(bool selected);

signals:
    void selectedChanged();

private:
    const int m_index;
    const zvtSSsdMovieInfo m_info;
    bool m_selected = false;
};
