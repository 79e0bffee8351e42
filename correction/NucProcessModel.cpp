#include "correction/NucProcessModel.h"

#include "common/presets.h"
#include "common/reading.h"
#include "common/setters.h"

#include <array>
#include <chrono>

#include "zvt/zvtsdk.h"

namespace
{

constexpr size_t textSize = 256; ///< The size of the buffer for a text of the camera, in bytes.

/// Reads a number and its text for the operator: zvtGetNUCStatus() or zvtGetNUCResult(). Leaves both unchanged if the
/// call fails.
bool readNumberAndText(int (*get)(uint64_t, uint16_t *, char *, uint32_t), uint64_t handle, uint16_t &number,
                       QString &text)
{
    std::array<char, textSize> buffer{};
    if (get(handle, &number, buffer.data(), buffer.size()) != 0)
        return false;
    text = fromBoundedUtf8(buffer.data(), buffer.size());
    return true;
}

} // namespace

NucProcessModel::NucProcessModel(QObject *parent) : QObject(parent)
{
    m_statusTimer.setObjectName(QStringLiteral("statusTimer"));
    m_statusTimer.setInterval(std::chrono::seconds(1));
    QObject::connect(&m_statusTimer, &QTimer::timeout, this, &Self::refreshStatus);
}

// The settings

void NucProcessModel::refresh() { m_refresh.start(&Settings::read); }

NucProcessModel::Settings NucProcessModel::Settings::read(const CameraAccess &camera)
{
    Settings s;
    const uint64_t handle = camera.handle;
    s.nucType = readOr(s.nucType, zvtGetNUCType, handle);
    s.nucSource = readOr(s.nucSource, zvtGetNUCSource, handle);
    s.numFrames = readOr(s.numFrames, zvtGetNUCNumFrames, handle);
    s.flagSetpointType = readOr(s.flagSetpointType, zvtGetNUCFlagSetpointType, handle);
    // A failed call leaves its outputs unchanged.
    zvtGetNUCFlagSetpointDeltas(handle, &s.flagSetpointDeltaLow, &s.flagSetpointDeltaHigh);
    zvtGetNUCFlagSetpointTemps(handle, &s.flagSetpointTempLow, &s.flagSetpointTempHigh);
    s.useFactoryBadPixels = readOr(s.useFactoryBadPixels, zvtGetNUCUseFactoryBadPixels, handle);
    zvtGetNUCSetup(handle, &s.gainMin, &s.gainMax, &s.adcLow, &s.adcHigh, &s.detectBadPixels);
    zvtGetTwinklerSetup(handle, &s.detectTwinklers, &s.twinklerNumFrames, &s.twinklerDelta);
    s.hasFlag = readOr(false, zvtGetFlagPresent, handle);
    s.hasTempControlledFlag = s.hasFlag && readOr(false, zvtGetFlagTemperatureControlled, handle);
    return s;
}

void NucProcessModel::finishedSettingsWatcher()
{
    const Settings s = m_refresh.result();
    storeOnly(this, s.hasFlag, m_settings.hasFlag, &Self::hasFlagChanged);
    storeOnly(this, s.hasTempControlledFlag, m_settings.hasTempControlledFlag, &Self::hasTempControlledFlagChanged);
    setNucType(static_cast<ENUC_TYPE>(s.nucType));
    setNucSource(static_cast<ENUC_SOURCE>(s.nucSource));
    setNumFrames(s.numFrames);
    setGainMin(s.gainMin);
    setGainMax(s.gainMax);
    setAdcLow(s.adcLow);
    setAdcHigh(s.adcHigh);
    setDetectBadPixels(s.detectBadPixels);
    setDetectTwinklers(s.detectTwinklers);
    setTwinklerNumFrames(static_cast<int>(s.twinklerNumFrames));
    setTwinklerDelta(s.twinklerDelta);
    setFlagSetpointType(static_cast<ESETPOINT_TYPE>(s.flagSetpointType));
    setFlagSetpointDeltaLow(s.flagSetpointDeltaLow);
    setFlagSetpointDeltaHigh(s.flagSetpointDeltaHigh);
    setFlagSetpointTempLow(s.flagSetpointTempLow);
    setFlagSetpointTempHigh(s.flagSetpointTempHigh);
    setUseFactoryBadPixels(s.useFactoryBadPixels);
    m_refresh.finish();
}

void NucProcessModel::setPreset(int preset)
{
    if (preset >= 0 && preset < presetCount)
        storeOnly(this, static_cast<uint8_t>(preset), m_settings.preset, &Self::presetChanged);
}

void NucProcessModel::setNucType(ENUC_TYPE type)
{
    storeOnly(this, static_cast<uint8_t>(type), m_settings.nucType, &Self::nucTypeChanged);
}

void NucProcessModel::setNucSource(ENUC_SOURCE source)
{
    storeOnly(this, static_cast<uint8_t>(source), m_settings.nucSource, &Self::nucSourceChanged);
}

void NucProcessModel::setNumFrames(int count)
{
    storeOnly(this, static_cast<uint8_t>(count), m_settings.numFrames, &Self::numFramesChanged);
}

void NucProcessModel::setGainMin(float limit) { storeOnly(this, limit, m_settings.gainMin, &Self::gainMinChanged); }

void NucProcessModel::setGainMax(float limit) { storeOnly(this, limit, m_settings.gainMax, &Self::gainMaxChanged); }

void NucProcessModel::setAdcLow(int counts)
{
    storeOnly(this, static_cast<uint16_t>(counts), m_settings.adcLow, &Self::adcLowChanged);
}

void NucProcessModel::setAdcHigh(int counts)
{
    storeOnly(this, static_cast<uint16_t>(counts), m_settings.adcHigh, &Self::adcHighChanged);
}

void NucProcessModel::setDetectBadPixels(bool detect)
{
    storeOnly(this, detect, m_settings.detectBadPixels, &Self::detectBadPixelsChanged);
}

void NucProcessModel::setDetectTwinklers(bool detect)
{
    storeOnly(this, detect, m_settings.detectTwinklers, &Self::detectTwinklersChanged);
}

void NucProcessModel::setTwinklerNumFrames(int count)
{
    storeOnly(this, static_cast<uint32_t>(count), m_settings.twinklerNumFrames, &Self::twinklerNumFramesChanged);
}

void NucProcessModel::setTwinklerDelta(int counts)
{
    storeOnly(this, static_cast<uint16_t>(counts), m_settings.twinklerDelta, &Self::twinklerDeltaChanged);
}

void NucProcessModel::setFlagSetpointType(ESETPOINT_TYPE type)
{
    storeOnly(this, static_cast<uint8_t>(type), m_settings.flagSetpointType, &Self::flagSetpointTypeChanged);
}

void NucProcessModel::setFlagSetpointDeltaLow(float celsius)
{
    storeOnly(this, celsius, m_settings.flagSetpointDeltaLow, &Self::flagSetpointDeltaLowChanged);
}

void NucProcessModel::setFlagSetpointDeltaHigh(float celsius)
{
    storeOnly(this, celsius, m_settings.flagSetpointDeltaHigh, &Self::flagSetpointDeltaHighChanged);
}

void NucProcessModel::setFlagSetpointTempLow(float celsius)
{
    storeOnly(this, celsius, m_settings.flagSetpointTempLow, &Self::flagSetpointTempLowChanged);
}

void NucProcessModel::setFlagSetpointTempHigh(float celsius)
{
    storeOnly(this, celsius, m_settings.flagSetpointTempHigh, &Self::flagSetpointTempHighChanged);
}

void NucProcessModel::setUseFactoryBadPixels(bool use)
{
    storeOnly(this, use, m_settings.useFactoryBadPixels, &Self::useFactoryBadPixelsChanged);
}

// The start

void NucProcessModel::start()
{
    if (m_inProgress)
        return;
    setInProgress(true);
    setCanNext(false);
    m_start.start([settings = m_settings](const CameraAccess &camera) { return settings.start(camera.handle); });
}

bool NucProcessModel::Settings::start(uint64_t handle) const
{
    return zvtSetNUCType(handle, nucType) == 0 && zvtSetNUCSource(handle, nucSource) == 0
        && zvtSetNUCNumFrames(handle, numFrames) == 0 && zvtSetNUCPreset(handle, preset) == 0
        && zvtSetNUCFlagSetpointType(handle, flagSetpointType) == 0
        && zvtSetNUCFlagSetpointDeltas(handle, flagSetpointDeltaLow, flagSetpointDeltaHigh) == 0
        && zvtSetNUCFlagSetpointTemps(handle, flagSetpointTempLow, flagSetpointTempHigh) == 0
        && zvtSetNUCUseFactoryBadPixels(handle, useFactoryBadPixels) == 0
        && (nucType != TYPE_TWO_POINT
            || (zvtSetNUCSetup(handle, gainMin, gainMax, adcLow, adcHigh, detectBadPixels) == 0
                && zvtSetTwinklerSetup(handle, detectTwinklers, twinklerNumFrames, twinklerDelta) == 0))
        && zvtStartNUC(handle) == 0;
}

void NucProcessModel::finishedStartWatcher()
{
    if (m_start.result()) {
        refreshStatus();
        m_statusTimer.start();
    } else {
        setInProgress(false);
    }
    m_start.finish();
}

// The polls

void NucProcessModel::refreshStatus()
{
    m_poll.start([preset = m_settings.preset](const CameraAccess &camera) { return Status::read(camera, preset); });
}

NucProcessModel::Status NucProcessModel::Status::read(const CameraAccess &camera, uint8_t preset)
{
    Status s;
    const uint64_t handle = camera.handle;
    s.ok = readNumberAndText(zvtGetNUCStatus, handle, s.status, s.text)
        && (s.status != STATUS_READY || readNumberAndText(zvtGetNUCResult, handle, s.result.result, s.result.text))
        && s.result.readCounts(handle, preset);
    return s;
}

bool NucProcessModel::Result::readCounts(uint64_t handle, uint8_t preset)
{
    return zvtGetNUCResults(handle, preset, &totalBadPixels, &factoryBadPixels, &newBadPixels, &twinklingPixels,
                            &aboveGainMax, &belowGainMin, &aboveADMaxSrc1, &belowADMinSrc1, &aboveADMaxSrc2,
                            &belowADMinSrc2)
        == 0;
}

void NucProcessModel::finishedStatusWatcher()
{
    // After a failed poll the timer starts the next one.
    if (const Status s = m_poll.result(); s.ok)
        publishStatus(s);
    m_poll.finish();
}

void NucProcessModel::publishStatus(const Status &status)
{
    if (status.status != m_status || status.text != m_statusText) {
        m_status = status.status;
        m_statusText = status.text;
        setCanNext(m_status == STATUS_WAITING_FOR_FIRST_SOURCE_EXTERNAL
                   || m_status == STATUS_WAITING_FOR_SECOND_SOURCE_EXTERNAL);
        emit statusChanged();
    }
    if (m_status == STATUS_READY) {
        announce(this, status.result, m_result, &Self::resultChanged);
        m_statusTimer.stop();
        setInProgress(false);
    }
}

// The operator's decisions

// A second press must not reach the camera before a poll has seen the next state.
void NucProcessModel::next()
{
    zvtContinueNUC(CameraAccess::of(this).handle);
    setCanNext(false);
}

void NucProcessModel::abort() { zvtAbortNUC(CameraAccess::of(this).handle); }

void NucProcessModel::accept() { zvtAcceptNUC(CameraAccess::of(this).handle); }

void NucProcessModel::discard() { zvtDiscardNUC(CameraAccess::of(this).handle); }

void NucProcessModel::setInProgress(bool inProgress)
{
    announce(this, inProgress, m_inProgress, &Self::inProgressChanged);
}

void NucProcessModel::setCanNext(bool canNext) { storeOnly(this, canNext, m_canNext, &Self::canNextChanged); }
