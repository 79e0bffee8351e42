#include "status/StatusTabModel.h"

#include "common/CameraRoot.h"
#include "common/conversions.h"
#include "common/coolers.h"
#include "common/formatting.h"
#include "common/presets.h"
#include "common/publishing.h"
#include "common/reading.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <limits>

#include "zvt/zvtsdk.h"

namespace
{

using hlx::cam::IZVTController;

constexpr int freeRatesMode = 2; // The sequencing mode in which each preset has its own frame rate.

QString rateText(double hertz)
{
    constexpr int decimals = 2;
    return plainLocale().toString(hertz, 'f', decimals);
}

QString timeText(double milliseconds)
{
    constexpr int decimals = 6;
    return plainLocale().toString(milliseconds, 'f', decimals);
}

/// The lowest and the highest of a series of values.
struct Range {
    double lowest = std::numeric_limits<double>::max();
    double highest = std::numeric_limits<double>::lowest();

    void include(double value)
    {
        lowest = std::min(lowest, value);
        highest = std::max(highest, value);
    }
};

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

// Returns at the first step that fails, with the values read until then.
StatusTabModel::Result StatusTabModel::Result::read(const CameraAccess &camera)
{
    Result result;
    uint16_t x = 0;
    uint16_t y = 0;
    uint16_t width = 0;
    uint16_t height = 0;
    if (!camera.controller || !camera.controller->GetWindow(&x, &y, &width, &height))
        return result;
    result.frameSize = QStringLiteral("%1x%2").arg(width).arg(height);

    Nullable<int> mode;
    if (!fetch(mode, &IZVTController::GetPresetSequencingMode, camera.controller))
        return result;
    if (mode.get() == 0)
        result.readActivePreset(camera);
    else
        result.readSequence(camera, mode.get());
    return result;
}

void StatusTabModel::Result::readActivePreset(const CameraAccess &camera)
{
    Nullable<int> preset;
    Nullable<double> hertz;
    Nullable<double> milliseconds;
    if (!fetch(preset, &IZVTController::GetActivePreset, camera.controller)
        || !fetch(hertz, &IZVTController::GetPresetFrameRate, camera.controller, preset.get()))
        return;
    frameRate = QStringLiteral("%1 Hz").arg(rateText(hertz.get()));
    if (fetch(milliseconds, &IZVTController::GetPresetIntegrationTime, camera.controller, preset.get()))
        integrationTime = QStringLiteral("%1 ms").arg(timeText(milliseconds.get()));
}

void StatusTabModel::Result::readSequence(const CameraAccess &camera, int mode)
{
    // The entries are not used; only a failure matters.
    std::array<IZVTController::SPresetSequenceEntry, presetCount> sequence{};
    if (!camera.controller->GetPresetSequence(sequence.data(), presetCount))
        return;
    Range times;
    Range rates;
    for (int preset = 0; preset < presetCount; ++preset) {
        Nullable<double> milliseconds;
        Nullable<double> hertz;
        if (!fetch(milliseconds, &IZVTController::GetPresetIntegrationTime, camera.controller, preset)
            || !fetch(hertz, &IZVTController::GetPresetFrameRate, camera.controller, preset))
            return;
        times.include(milliseconds.get());
        rates.include(hertz.get());
    }
    //: The lowest and the highest integration time of a preset sequence
    integrationTime = tr("%1 to %2 ms").arg(timeText(times.lowest), timeText(times.highest));
    if (mode == freeRatesMode) {
        //: The lowest and the highest frame rate of a preset sequence
        frameRate = tr("%1 to %2 Hz").arg(rateText(rates.lowest), rateText(rates.highest));
        return;
    }
    Nullable<double> superframeHertz;
    if (fetch(superframeHertz, &IZVTController::GetSuperframeRate, camera.controller))
        //: The rate of whole superframes
        frameRate = tr("%1 Hz (Superframe)").arg(rateText(superframeHertz.get()));
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
        fetch(result.operatingMinutes, zvtGetOperatingTime, camera.handle);
    return result;
}

void StatusTabModel::TimesAndTempsResult::readClock(const CameraAccess &camera)
{
    if (camera.controller && camera.controller->HasRealTimeClock()) {
        hasRtc = zvtGetRealTimeClock(camera.handle, &year, &month, &day, &hour, &minute, &second) == 0;
        return;
    }
    // Read into aligned variables: the members of the packed record are not aligned.
    uint16_t irigDay = 0;
    uint16_t millisecond = 0;
    uint16_t microsecond = 0;
    hasIrig = zvtGetIRIGTime(camera.handle, &irigYear, &irigDay, &irig.hour, &irig.minute, &irig.second, &millisecond,
                             &microsecond)
        == 0;
    irig.day = irigDay;
    irig.millisecond = millisecond;
    irig.microsecond = microsecond;
    zvtGetIRIGLocked(camera.handle, &irigLocked);
}

void StatusTabModel::TimesAndTempsResult::readTemperatures(uint64_t handle)
{
    readDetectorTemperature(handle);
    if (fetch(hasLensTemp, zvtGetHasLensTemperature, handle) && hasLensTemp.get())
        fetch(lensTemp, zvtGetLensTemperature, handle);
    scOk = zvtGetSCTemperatures(handle, &frontPanelTemp, &airGapTemp, &scInternalTemp) == 0;
    rsOk = zvtGetRSTemperatures(handle, &rsInternalTemp) == 0;
}

void StatusTabModel::TimesAndTempsResult::readDetectorTemperature(uint64_t handle)
{
    constexpr float fallbackSetpoint = 10.0F; // Celsius.
    constexpr float fallbackColdTemperature = 80.0F; // Kelvin.
    constexpr double settledDistance = 0.5; // Kelvin.

    const bool fpaRead = fetch(fpaTemp, zvtGetFPATemperature, handle);
    const bool typeRead = fetch(coolerType, zvtMfgGetCoolerType, handle);
    if (!fpaRead || !typeRead)
        return;
    fpaTempCelsius = coolerType.get() == thermoelectricCooler;
    if (fpaTempCelsius.get()) {
        coldTemp = readOr(fallbackSetpoint, zvtMfgGetCoolerSetpoint, handle);
        coolerPowerEnabled = readOr(uint8_t{0}, zvtMfgGetCoolerPowerEnabled, handle);
        const double distance = std::abs(fpaTemp.get() - kelvinOffset - coldTemp.get());
        fpaCold = coolerPowerEnabled.get() != 0 && distance <= settledDistance;
    } else {
        coldTemp = readOr(fallbackColdTemperature, zvtGetFPAColdTemperature, handle);
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

// Asks again which clock the camera has: the controller may have another camera since the task ran.
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
        const QString year = result.irigYear == 0 ? QString() : zeroPadded(result.irigYear, 4) + u'-';
        announce(this, year + stringifyIrigTime(result.irig) + u' ' + (result.irigLocked ? u'L' : u' '), m_time,
                 &Self::timeChanged);
    }
}

void StatusTabModel::publishTemperatures(const TimesAndTempsResult &result)
{
    const auto publishTemperature
        = [this](const Nullable<float> &value, std::optional<double> &member, void (Self::*changed)()) {
              if (member)
                  publishIfChanged(this, value, *member, changed);
              else
                  publish(this, value, member, changed);
          };
    publishTemperature(result.fpaTemp, m_fpaTemp, &Self::fpaTempChanged);
    publishIfChanged(this, result.fpaCold, m_fpaCold, &Self::fpaColdChanged);
    publishIfChanged(this, result.fpaTempCelsius, m_fpaTempCelsius, &Self::fpaTempCelsiusChanged);
    publishTemperature(result.lensTemp, m_lensTemp, &Self::lensTempChanged);
    publishIfChanged(this, result.hasLensTemp, m_hasLensTemp, &Self::hasLensTempChanged);
    if (result.scOk) {
        publishTemperature(result.frontPanelTemp, m_frontPanelTemp, &Self::frontPanelTempChanged);
        publishTemperature(result.airGapTemp, m_airGapTemp, &Self::airGapTempChanged);
        publishTemperature(result.scInternalTemp, m_internalChassisTemp, &Self::internalChassisTempChanged);
    }
    // Published last: it takes precedence over the interior temperature above.
    if (result.rsOk)
        publishTemperature(result.rsInternalTemp, m_internalChassisTemp, &Self::internalChassisTempChanged);
}
