#include "status/AdjustTimeModel.h"

#include "common/publishing.h"

#include "zvt/zvtsdk.h"

namespace
{

constexpr int century = 2000; // The real-time clock counts years from 2000.

} // namespace

void AdjustTimeModel::refresh() { startRead(false); }

void AdjustTimeModel::getCameraTime() { startRead(true); }

void AdjustTimeModel::startRead(bool forceUpdate)
{
    m_refresh.start([forceUpdate](const CameraAccess &camera) { return Settings::read(camera, forceUpdate); });
}

AdjustTimeModel::Settings AdjustTimeModel::Settings::read(const CameraAccess &camera, bool forceUpdate)
{
    Settings s;
    s.forceUpdate = forceUpdate;
    s.hasTime = zvtGetRealTimeClock(camera.handle, &s.year, &s.month, &s.day, &s.hour, &s.minute, &s.second) == 0;
    return s;
}

void AdjustTimeModel::finishedWatcher()
{
    const Settings s = m_refresh.result();
    if (s.hasTime) {
        // Checked here: QDateTime turns an invalid time into midnight.
        const QTime clock(s.hour, s.minute, s.second);
        const QDateTime time
            = clock.isValid() ? QDateTime(QDate(s.year + century, s.month, s.day), clock) : QDateTime();
        if (s.forceUpdate || time != m_cameraTime)
            announce(this, time, m_cameraTime, &Self::cameraTimeChanged);
    }
    m_refresh.finish();
}

void AdjustTimeModel::setCameraTime(const QDateTime &time)
{
    if (time == m_cameraTime)
        return;
    const uint64_t handle = CameraAccess::of(this).handle;
    const auto byte = [](int number) { return static_cast<uint8_t>(number); };
    const auto word = [](int number) { return static_cast<uint16_t>(number); };
    const QDate date = time.date();
    const QTime clock = time.time();
    zvtSetRealTimeClock(handle, byte(date.year() - century), byte(date.month()), byte(date.day()), byte(clock.hour()),
                        byte(clock.minute()), byte(clock.second()));
    zvtSetIRIGTime(handle, word(date.year()), word(date.dayOfYear()), byte(clock.hour()), byte(clock.minute()),
                   byte(clock.second()), word(clock.msec()), 0);
    announce(this, time, m_cameraTime, &Self::cameraTimeChanged);
}

void AdjustTimeModel::syncCameraTimeToPC() { setCameraTime(QDateTime::currentDateTime()); }
