#include "status/StatusTabModel.h"

#include "common/CameraRoot.h"
#include "common/publishing.h"
#include "common/reading.h"

#include <QLocale>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <limits>

#include "zvt/zvtsdk.h"

namespace
{

using hlx::cam::IZVTController;

constexpr int numPresets = 4;
constexpr int rateDecimals = 2;
constexpr int timeDecimals = 6;
constexpr int freeRatesMode = 2; // The sequencing mode in which each preset runs at a rate of its own.
constexpr uint8_t thermoelectricCooler = 1;
constexpr double kelvinOffset = 273.15;

QString zeroPadded(int number, int width) { return QStringLiteral("%1").arg(number, width, 10, QLatin1Char('0')); }

/// The lowest and highest of a series.
struct Range {
    double lowest = std::numeric_limits<double>::max();
    double highest = std::numeric_limits<double>::lowest();

    void include(double value)
    {
        lowest = std::min(lowest, value);
        highest = std::max(highest, value);
    }
};

QLocale plainLocale()
{
    QLocale locale = QLocale::system();
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    return locale;
}

} // namespace

StatusTabModel::StatusTabModel(QObject *parent) : BaseTabModel(parent)
{
    m_updateTimeTimer.setObjectName(QStringLiteral("updateTimeTimer"));
    m_updateTimeTimer.setInterval(std::chrono::seconds(1));
    QObject::connect(&m_updateTimeTimer, &QTimer::timeout, this, &Self::timeoutUpdateTimeTimer);
    if (auto *root = CameraRoot::of(this))
        root->onConnectedChanged(this, [this] { connectedChangedCameraModel(); });
}

ZvtCameraModel *StatusTabModel::cameraModel() const
{
    auto *root = CameraRoot::of(this);
    return root ? root->cameraModel() : nullptr;
}

void StatusTabModel::setVisible(bool visible)
{
    if (visible == m_visible)
        return;
    announce(this, visible, m_visible, &Self::visibleChanged);
    if (m_visible && !m_loaded)
        announce(this, true, m_loaded, &Self::loadedChanged);
    checkTimer();
}

void StatusTabModel::checkTimer()
{
    const auto *root = CameraRoot::of(this);
    if (m_visible && root && root->connected()) {
        if (m_updateTimeTimer.isActive())
            return;
        m_updateTimeTimer.start();
        m_schedule->restart();
        timeoutUpdateTimeTimer();
    } else {
        m_updateTimeTimer.stop();
    }
}

void StatusTabModel::connectedChangedCameraModel() { checkTimer(); }

// The slow values

void StatusTabModel::refresh() { m_refresh.start(&Result::read); }

StatusTabModel::Result StatusTabModel::Result::read(const CameraAccess &camera)
{
    Result result;
    if (!camera.controller)
        return result;
    IZVTController &controller = *camera.controller;
    const QLocale locale = plainLocale();
    const auto rate = [&](double hertz) { return locale.toString(hertz, 'f', rateDecimals); };
    const auto time = [&](double milliseconds) { return locale.toString(milliseconds, 'f', timeDecimals); };

    uint16_t x = 0;
    uint16_t y = 0;
    uint16_t width = 0;
    uint16_t height = 0;
    if (!controller.GetWindow(&x, &y, &width, &height))
        return result;
    result.frameSize = QStringLiteral("%1x%2").arg(width).arg(height);

    int mode = 0;
    if (!controller.GetPresetSequencingMode(&mode))
        return result;
    if (mode == 0) {
        uint8_t preset = 0;
        double hertz = 0.0;
        double milliseconds = 0.0;
        if (!controller.GetActivePreset(&preset) || !controller.GetPresetFrameRate(preset, &hertz))
            return result;
        result.frameRate = QStringLiteral("%1 Hz").arg(rate(hertz));
        if (controller.GetPresetIntegrationTime(preset, &milliseconds))
            result.integrationTime = QStringLiteral("%1 ms").arg(time(milliseconds));
        return result;
    }

    // What the sequence holds does not matter; that it can be read does.
    std::array<IZVTController::SPresetSequenceEntry, numPresets> sequence{};
    if (!controller.GetPresetSequence(sequence.data(), numPresets))
        return result;
    Range times;
    Range rates;
    for (int preset = 0; preset < numPresets; ++preset) {
        double milliseconds = 0.0;
        double hertz = 0.0;
        if (!controller.GetPresetIntegrationTime(preset, &milliseconds)
            || !controller.GetPresetFrameRate(preset, &hertz))
            return result;
        times.include(milliseconds);
        rates.include(hertz);
    }
    //: The lowest and the highest integration time of a preset sequence
    result.integrationTime = tr("%1 to %2 ms").arg(time(times.lowest), time(times.highest));
    if (mode == freeRatesMode) {
        //: The lowest and the highest frame rate of a preset sequence
        result.frameRate = tr("%1 to %2 Hz").arg(rate(rates.lowest), rate(rates.highest));
        return result;
    }
    double superframeHertz = 0.0;
    if (controller.GetSuperframeRate(&superframeHertz))
        //: The rate of whole superframes
        result.frameRate = tr("%1 Hz (Superframe)").arg(rate(superframeHertz));
    return result;
}

void StatusTabModel::finishedResultWatcher()
{
    const Result result = m_refresh.result();
    const auto publishText = [this](const QString &text, QString &member, void (Self::*changed)()) {
        if (!text.isEmpty())
            publishIfChanged(this, Nullable<QString>(text), member, changed);
    };
    publishText(result.frameRate, m_frameRate, &Self::frameRateChanged);
    publishText(result.frameSize, m_frameSize, &Self::frameSizeChanged);
    publishText(result.integrationTime, m_integrationTime, &Self::integrationTimeChanged);
    m_refresh.finish();
}

// The poll

void StatusTabModel::timeoutUpdateTimeTimer()
{
    m_timesAndTemps.start([schedule = m_schedule](const CameraAccess &camera) {
        const uint32_t moment = schedule->current();
        auto result = TimesAndTempsResult::read(camera, Schedule::tick(moment));
        schedule->advance(moment);
        return result;
    });
}

StatusTabModel::TimesAndTempsResult StatusTabModel::TimesAndTempsResult::read(const CameraAccess &camera, int tick)
{
    constexpr int ticksBetweenTemperatures = 5;

    TimesAndTempsResult result;
    zvtGetSaturatedFlag(camera.handle, &result.saturated);
    result.readClock(camera);
    if (tick % ticksBetweenTemperatures == 0)
        result.readTemperatures(camera.handle);
    if (tick == 0)
        ::read(result.operatingMinutes, zvtGetOperatingTime, camera.handle);
    return result;
}

void StatusTabModel::TimesAndTempsResult::readClock(const CameraAccess &camera)
{
    if (camera.controller && camera.controller->HasRealTimeClock()) {
        hasRtc = zvtGetRealTimeClock(camera.handle, &year, &month, &day, &hour, &minute, &second) == 0;
        return;
    }
    hasIrig = zvtGetIRIGTime(camera.handle, &irigYear, &irigDay, &irigHour, &irigMinute, &irigSecond, &irigMillisecond,
                             &irigMicrosecond)
        == 0;
    zvtGetIRIGLocked(camera.handle, &irigLocked);
}

void StatusTabModel::TimesAndTempsResult::readTemperatures(uint64_t handle)
{
    readDetectorTemperature(handle);
    if (::read(hasLensTemp, zvtGetHasLensTemperature, handle) && hasLensTemp.get())
        ::read(lensTemp, zvtGetLensTemperature, handle);
    scOk = zvtGetSCTemperatures(handle, &frontPanelTemp, &airGapTemp, &scInternalTemp) == 0;
    rsOk = zvtGetRSTemperatures(handle, &rsInternalTemp) == 0;
}

void StatusTabModel::TimesAndTempsResult::readDetectorTemperature(uint64_t handle)
{
    constexpr float fallbackSetpoint = 10.0F; // Celsius.
    constexpr float fallbackColdTemperature = 80.0F; // Kelvin.
    constexpr double settledDistance = 0.5; // Kelvin.

    const bool fpaRead = ::read(fpaTemp, zvtGetFPATemperature, handle);
    const bool typeRead = ::read(coolerType, zvtMfgGetCoolerType, handle);
    if (!fpaRead || !typeRead)
        return;
    fpaTempCelsius = coolerType.get() == thermoelectricCooler;
    if (fpaTempCelsius.get()) {
        if (!::read(coldTemp, zvtMfgGetCoolerSetpoint, handle))
            coldTemp = fallbackSetpoint;
        if (!::read(coolerPowerEnabled, zvtMfgGetCoolerPowerEnabled, handle))
            coolerPowerEnabled = uint8_t{0};
        fpaCold = coolerPowerEnabled.get() != 0
            && std::abs(fpaTemp.get() - kelvinOffset - coldTemp.get()) <= settledDistance;
    } else {
        if (!::read(coldTemp, zvtGetFPAColdTemperature, handle))
            coldTemp = fallbackColdTemperature;
        fpaCold = fpaTemp.get() <= coldTemp.get();
    }
}

void StatusTabModel::finishedGettingTimesAndTemps()
{
    const TimesAndTempsResult result = m_timesAndTemps.result();
    announce(this, result.saturated != 0, m_saturated, &Self::saturatedChanged);
    publishTime(result);
    publishTemperatures(result);
    if (result.operatingMinutes.set()) {
        constexpr uint32_t minutesPerHour = 60;
        const uint32_t minutes = result.operatingMinutes.get();
        announce(this,
                 QStringLiteral("%1 h %2 min")
                     .arg(minutes / minutesPerHour)
                     .arg(zeroPadded(static_cast<int>(minutes % minutesPerHour), 2)),
                 m_operatingTime, &Self::operatingTimeChanged);
    }
    m_timesAndTemps.finish();
}

// Which clock the camera keeps is asked afresh: it may have become another camera since the task read it.
void StatusTabModel::publishTime(const TimesAndTempsResult &result)
{
    const auto *root = CameraRoot::of(this);
    const auto controller = root ? root->controller() : nullptr;
    if (controller && controller->HasRealTimeClock()) {
        if (!result.hasRtc)
            return;
        constexpr int century = 2000;
        announce(this,
                 QStringLiteral("%1-%2-%3 %4:%5:%6")
                     .arg(zeroPadded(result.year + century, 4), zeroPadded(result.month, 2), zeroPadded(result.day, 2),
                          zeroPadded(result.hour, 2), zeroPadded(result.minute, 2), zeroPadded(result.second, 2)),
                 m_time, &Self::timeChanged);
    } else if (result.hasIrig) {
        const QString time
            = QStringLiteral("%1:%2:%3:%4.%5%6 %7")
                  .arg(zeroPadded(result.irigDay, 3), zeroPadded(result.irigHour, 2), zeroPadded(result.irigMinute, 2),
                       zeroPadded(result.irigSecond, 2), zeroPadded(result.irigMillisecond, 3),
                       zeroPadded(result.irigMicrosecond, 3), QString(result.irigLocked ? u'L' : u' '));
        announce(this, result.irigYear == 0 ? time : zeroPadded(result.irigYear, 4) + u'-' + time, m_time,
                 &Self::timeChanged);
    }
}

void StatusTabModel::publishTemperatures(const TimesAndTempsResult &result)
{
    publishIfChanged(this, result.fpaTemp, m_fpaTemp, &Self::fpaTempChanged);
    publishIfChanged(this, result.fpaCold, m_fpaCold, &Self::fpaColdChanged);
    publishIfChanged(this, result.fpaTempCelsius, m_fpaTempCelsius, &Self::fpaTempCelsiusChanged);
    publishIfChanged(this, result.lensTemp, m_lensTemp, &Self::lensTempChanged);
    publishIfChanged(this, result.hasLensTemp, m_hasLensTemp, &Self::hasLensTempChanged);
    const auto publishSensor = [this](double value, double &member, void (Self::*changed)()) {
        publishIfChanged(this, Nullable<double>(value), member, changed);
    };
    if (result.scOk) {
        publishSensor(result.frontPanelTemp, m_frontPanelTemp, &Self::frontPanelTempChanged);
        publishSensor(result.airGapTemp, m_airGapTemp, &Self::airGapTempChanged);
        publishSensor(result.scInternalTemp, m_internalChassisTemp, &Self::internalChassisTempChanged);
    }
    // Behind the other one, so that this reading wins.
    if (result.rsOk)
        publishSensor(result.rsInternalTemp, m_internalChassisTemp, &Self::internalChassisTempChanged);
}
