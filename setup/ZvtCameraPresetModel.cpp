#include "setup/ZvtCameraPresetModel.h"

#include "common/CameraRoot.h"
#include "common/presets.h"
#include "common/publishing.h"
#include "common/reading.h"
#include "common/setters.h"
#include "setup/SetupGeneralModel.h"

#include <QJSEngine>

#include <algorithm>
#include <bit>

namespace
{

using hlx::cam::IZVTController;

/// Compares bit for bit, so that an unchanged list with a NaN counts as unchanged.
bool bitwiseEqual(const QList<qreal> &first, const QList<qreal> &second)
{
    return std::equal(first.begin(), first.end(), second.begin(), second.end(), [](qreal one, qreal other) {
        return std::bit_cast<uint64_t>(one) == std::bit_cast<uint64_t>(other);
    });
}

void readFrameRates(IZVTController &controller, int preset, QList<qreal> &rates, int &index)
{
    hlx::TArray<double> offered;
    controller.GetPresetFrameRates(preset, &offered);
    rates = QList<qreal>(offered.begin(), offered.end());
    controller.GetPresetFrameRateIndex(preset, &index);
}

void readCalibration(IZVTController &controller, int preset, ZvtCameraPresetModel::PresetFullRefreshResult &result)
{
    hlx::TArray<IZVTController::SFactoryCalibration> calibrations;
    if (!controller.GetFactoryCalibrations(&calibrations))
        return;
    int index = -1;
    controller.GetPresetCalibrationIndex(preset, &index);
    const int count = static_cast<int>(calibrations.size());
    result.factoryCalibrationLoaded = index >= 0 && index < count;
    // The page's row for no calibration is the last one, after the calibrations.
    result.activeFactoryCalibrationIndex = index == -1 ? count : index;
}

} // namespace

ZvtCameraPresetModel::ZvtCameraPresetModel(QObject *parent, int preset) : QObject(parent), m_preset(preset)
{
    // A page gets the preset as the result of a function; without this the QML engine would own it.
    QJSEngine::setObjectOwnership(this, QJSEngine::CppOwnership);
}

// Reads

void ZvtCameraPresetModel::refresh()
{
    m_fullRefresh.start(
        [preset = m_preset](const CameraAccess &camera) { return GetFullRefreshResult(camera, preset); });
}

void ZvtCameraPresetModel::partialRefresh()
{
    const auto startTime = std::chrono::steady_clock::now();
    if (m_partialRefresh.start(
            [preset = m_preset](const CameraAccess &camera) { return GetPartialRefreshResult(camera, preset); }))
        m_exposureReadStart = startTime;
}

ZvtCameraPresetModel::PresetFullRefreshResult ZvtCameraPresetModel::GetFullRefreshResult(const CameraAccess &camera,
                                                                                         int preset)
{
    PresetFullRefreshResult result;
    result.startTime = std::chrono::steady_clock::now();
    if (!camera.controller)
        return result;
    IZVTController &controller = *camera.controller;
    controller.GetPresetIntegrationTime(preset, &result.integrationTime);
    controller.GetPresetFrameRate(preset, &result.frameRate);
    controller.GetSubframeEnabled(preset, &result.subframeEnabled);
    controller.GetDwellCount(preset, &result.dwellCount);
    readFrameRates(controller, preset, result.frameRates, result.frameRateIndex);
    readCalibration(controller, preset, result);
    return result;
}

ZvtCameraPresetModel::PresetPartialRefreshResult
ZvtCameraPresetModel::GetPartialRefreshResult(const CameraAccess &camera, int preset)
{
    PresetPartialRefreshResult result;
    result.startTime = std::chrono::steady_clock::now();
    if (!camera.controller)
        return result;
    IZVTController &controller = *camera.controller;
    controller.GetPresetIntegrationTime(preset, &result.integrationTime);
    controller.GetPresetFrameRate(preset, &result.frameRate);
    readFrameRates(controller, preset, result.frameRates, result.frameRateIndex);
    return result;
}

void ZvtCameraPresetModel::finishedFullRefreshWatcher()
{
    ApplyFullRefreshResult(m_fullRefresh.result());
    m_fullRefresh.finish();
}

void ZvtCameraPresetModel::finishedPartialRefreshWatcher()
{
    ApplyPartialRefreshResult(m_partialRefresh.result());
    m_partialRefresh.finish();
}

void ZvtCameraPresetModel::ApplyFullRefreshResult(const PresetFullRefreshResult &result)
{
    const bool newest = isNewestOfExposure(result.startTime);
    if (newest)
        applyTimeAndRate(result.integrationTime, result.frameRate);
    publishIfChanged(this, Nullable(result.subframeEnabled), m_subframeEnabled, &Self::subframeEnabledChanged);
    publishIfChanged(this, Nullable(result.dwellCount), m_dwellCount, &Self::dwellCountChanged);
    if (newest)
        applyFrameRates(result.frameRates, result.frameRateIndex);
    if (result.activeFactoryCalibrationIndex == m_activeFactoryCalibrationIndex
        && result.factoryCalibrationLoaded == m_factoryCalibrationLoaded)
        return;
    m_factoryCalibrationLoaded = result.factoryCalibrationLoaded;
    announce(this, result.activeFactoryCalibrationIndex, m_activeFactoryCalibrationIndex,
             &Self::activeFactoryCalibrationIndexChanged);
}

void ZvtCameraPresetModel::ApplyPartialRefreshResult(const PresetPartialRefreshResult &result)
{
    if (!isNewestOfExposure(result.startTime))
        return;
    applyTimeAndRate(result.integrationTime, result.frameRate);
    applyFrameRates(result.frameRates, result.frameRateIndex);
}

// Returns whether no newer read of the exposure has been started. A read of all presets is slow; a value that was
// changed and read again meanwhile must not return to the old one. A result without a start time is always published.
bool ZvtCameraPresetModel::isNewestOfExposure(TimePoint startTime)
{
    if (startTime != TimePoint() && startTime < m_exposureReadStart)
        return false;
    m_exposureReadStart = std::max(m_exposureReadStart, startTime);
    return true;
}

void ZvtCameraPresetModel::applyTimeAndRate(double milliseconds, double hertz)
{
    publishIfChanged(this, Nullable(milliseconds), m_integrationTime, &Self::integrationTimeChanged);
    publishIfChanged(this, Nullable(hertz), m_frameRate, &Self::frameRateChanged);
}

// The list is published first: a combo box with a new list selects its row only when the index is signalled.
void ZvtCameraPresetModel::applyFrameRates(const QList<qreal> &rates, int index)
{
    if (!bitwiseEqual(rates, m_frameRates))
        announce(this, rates, m_frameRates, &Self::frameRatesChanged);
    publishIfChanged(this, Nullable(index), m_frameRateIndex, &Self::frameRateIndexChanged);
}

// Writes

void ZvtCameraPresetModel::setActiveFactoryCalibrationIndex(int index)
{
    if (index == m_activeFactoryCalibrationIndex)
        return;
    m_activeFactoryCalibrationIndex = index;
    auto *root = CameraRoot::of(this);
    const qsizetype rows = root ? root->setupGeneralModel()->factoryCalibrationStrings().size() : 0;
    m_factoryCalibrationLoaded = index >= 0 && index != rows - 1;
    if (root) {
        reading::callController(root->controller(), &IZVTController::SetPresetCalibrationIndex, m_preset, index,
                                controllerFlag);
        root->updateHasNucMask();
    }
    emit activeFactoryCalibrationIndexChanged();
}

void ZvtCameraPresetModel::setIntegrationTime(double milliseconds)
{
    if (writeStandard(this, milliseconds, m_integrationTime, &Self::integrationTimeChanged,
                      &IZVTController::SetPresetIntegrationTime, m_preset, controllerFlag))
        partialRefresh();
}

void ZvtCameraPresetModel::setFrameRate(double hertz)
{
    if (hertz == m_frameRate)
        return;
    m_frameRate = hertz;
    m_frameRateIndex = static_cast<int>(m_frameRates.indexOf(hertz));
    if (m_frameRateIndex >= 0)
        setters::write(this, &IZVTController::SetPresetFrameRateIndex, m_frameRateIndex, m_preset);
    else
        setters::write(this, &IZVTController::SetPresetFrameRate, hertz, m_preset, controllerFlag);
    emit frameRateIndexChanged();
    emit frameRateChanged();
}

void ZvtCameraPresetModel::setSubframeEnabled(bool enabled)
{
    writeStandard(this, enabled, m_subframeEnabled, &Self::subframeEnabledChanged, &IZVTController::SetSubframeEnabled,
                  m_preset);
}

void ZvtCameraPresetModel::setDwellCount(uint32_t count)
{
    writeStandard(this, count, m_dwellCount, &Self::dwellCountChanged, &IZVTController::SetDwellCount, m_preset);
}

void ZvtCameraPresetModel::setFrameRateIndex(int index)
{
    if (writeStandard(this, index, m_frameRateIndex, &Self::frameRateIndexChanged,
                      &IZVTController::SetPresetFrameRateIndex, m_preset)
        && index >= 0 && index < m_frameRates.size())
        announce(this, m_frameRates.at(index), m_frameRate, &Self::frameRateChanged);
}
