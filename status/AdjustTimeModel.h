#pragma once

#include "common/Refresh.h"

#include <QDateTime>
#include <QObject>

#include <cstdint>

/// Reads the camera's real-time clock and sets both of its clocks, by hand or from the computer's. Times are local
/// times; no zone is converted. GUI thread only.
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
    QDateTime cameraTime() const { return m_cameraTime; } ///< As last read or set; it does not run on.
    /// Sets the real-time clock, which keeps years from 2000 in a byte, and the IRIG time, whichever of them the camera
    /// uses.
    void setCameraTime(const QDateTime &time);

    Q_INVOKABLE void refresh();
    /// The same, but signals the time in any case: the operator may have typed over the one on show.
    Q_INVOKABLE void getCameraTime();
    Q_INVOKABLE void syncCameraTimeToPC();

signals:
    void refreshingChanged();
    void hasRefreshedChanged();
    void cameraTimeChanged();

private:
    using Self = AdjustTimeModel;

    /// What a read brought.
    struct Settings {
        bool forceUpdate = false; ///< Signal it even if it is the time that is known.
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
    Refresh<Self, Settings> m_refresh{this, &Self::finishedWatcher, Form::RefreshingOnly};
};
