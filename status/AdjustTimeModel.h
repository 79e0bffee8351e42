#pragma once

#include "common/Refresh.h"

#include <QDateTime>
#include <QObject>

#include <cstdint>

/// Reads the camera's real-time clock, and sets this clock and the IRIG time to a given time or to that of the
/// computer. Times are local times; time zones are not converted. GUI thread only.
class AdjustTimeModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool refreshing READ refreshing NOTIFY refreshingChanged FINAL)
    Q_PROPERTY(bool hasRefreshed READ hasRefreshed NOTIFY hasRefreshedChanged FINAL)
    Q_PROPERTY(QDateTime cameraTime READ cameraTime WRITE setCameraTime NOTIFY cameraTimeChanged FINAL)

public:
    explicit AdjustTimeModel(QObject *parent) : QObject(parent) { }

    bool refreshing() const { return m_refresh.refreshing(); }
    bool hasRefreshed() const { return m_refresh.hasRefreshed(); }
    QDateTime cameraTime() const { return m_cameraTime; } ///< As last read or set; it does not advance by itself.
    /// Writes the time to the real-time clock, which counts years from 2000 in a byte, and to the IRIG time, since the
    /// camera uses one of them. Ignores both statuses, then stores and signals the time. Does nothing if it is the
    /// stored one.
    void setCameraTime(const QDateTime &time);

    Q_INVOKABLE void refresh(); ///< Reads the real-time clock; signals a changed time.
    /// As refresh(), but signals the time also if it is unchanged: the operator may have overwritten it in the fields.
    Q_INVOKABLE void getCameraTime();
    Q_INVOKABLE void syncCameraTimeToPC(); ///< Calls setCameraTime() with the present time of the computer.

signals:
    void refreshingChanged();
    void hasRefreshedChanged();
    void cameraTimeChanged();

private:
    using Self = AdjustTimeModel;

    /// The result of a read.
    struct Settings {
        bool forceUpdate = false; ///< Signal the time even if it is unchanged.
        bool hasTime = false;
        uint8_t year = 0; ///< From 2000.
        uint8_t month = 0;
        uint8_t day = 0;
        uint8_t hour = 0;
        uint8_t minute = 0;
        uint8_t second = 0;

        static Settings read(const CameraAccess &camera, bool forceUpdate);
    };

private slots:
    void finishedWatcher();

private:
    void startRead(bool forceUpdate);

    QDateTime m_cameraTime;
    Refresh<Self, Settings> m_refresh{this, &Self::finishedWatcher, RefreshForm::RefreshingOnly};
};
