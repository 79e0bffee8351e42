#include "setup/ZvtCameraPresetModel.h"

#include "common/CameraRoot.h"
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

/// Bit for bit: whatever the camera puts into its list, only another list is a change.
bool sameInMemory(const QList<qreal> &first, const QList<qreal> &second)
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
    // The page's row for no calibration stands behind those of the calibrations.
    result.activeFactoryCalibrationIndex = index == -1 ? count : index;
}

} // namespace

ZvtCameraPresetModel::ZvtCameraPresetModel(QObject *parent, int preset) : QObject(parent), m_preset(preset)
{
    // A page gets it as the result of a function, which the engine would take as a gift.
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
    const auto since = std::chrono::steady_clock::now();
    if (m_partialRefresh.start(
            [preset = m_preset](const CameraAccess &camera) { return GetPartialRefreshResult(camera, preset); }))
        m_exposureSince = since;
}

ZvtCameraPresetModel::PresetFullRefreshResult ZvtCameraPresetModel::GetFullRefreshResult(const CameraAccess &camera,
                                                                                         int preset)
{
    PresetFullRefreshResult result;
    result.since = std::chrono::steady_clock::now();
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
    result.since = std::chrono::steady_clock::now();
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
    const bool newest = isNewestOfExposure(result.since);
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
    if (!isNewestOfExposure(result.since))
        return;
    applyTimeAndRate(result.integrationTime, result.frameRate);
    applyFrameRates(result.frameRates, result.frameRateIndex);
}

// The reads of all presets take long. What was changed meanwhile has been read anew, and is not to go back to what it
// was before. A result without a time counts in any case.
bool ZvtCameraPresetModel::isNewestOfExposure(TimePoint since)
{
    if (since != TimePoint() && since < m_exposureSince)
        return false;
    m_exposureSince = std::max(m_exposureSince, since);
    return true;
}

void ZvtCameraPresetModel::applyTimeAndRate(double milliseconds, double hertz)
{
    publishIfChanged(this, Nullable(milliseconds), m_integrationTime, &Self::integrationTimeChanged);
    publishIfChanged(this, Nullable(hertz), m_frameRate, &Self::frameRateChanged);
}

// The list goes first: a box whose list is replaced finds its row only when the index is signalled.
void ZvtCameraPresetModel::applyFrameRates(const QList<qreal> &rates, int index)
{
    if (!sameInMemory(rates, m_frameRates))
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
        reading::callController(root->controller(), &IZVTController::SetPresetCalibrationIndex, m_preset, index, 1);
        root->updateHasNucMask();
    }
    emit activeFactoryCalibrationIndexChanged();
}

void ZvtCameraPresetModel::setIntegrationTime(double milliseconds)
{
    if (standard(this, milliseconds, m_integrationTime, &Self::integrationTimeChanged,
                 &IZVTController::SetPresetIntegrationTime, m_preset, 1))
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
        setters::write(this, &IZVTController::SetPresetFrameRate, hertz, m_preset, 1);
    emit frameRateIndexChanged();
    emit frameRateChanged();
}

void ZvtCameraPresetModel::setSubframeEnabled(bool enabled)
{
    standard(this, enabled, m_subframeEnabled, &Self::subframeEnabledChanged, &IZVTController::SetSubframeEnabled,
             m_preset);
}

void ZvtCameraPresetModel::setDwellCount(uint32_t count)
{
    standard(this, count, m_dwellCount, &Self::dwellCountChanged, &IZVTController::SetDwellCount, m_preset);
}

void ZvtCameraPresetModel::setFrameRateIndex(int index)
{
    if (standard(this, index, m_frameRateIndex, &Self::frameRateIndexChanged, &IZVTController::SetPresetFrameRateIndex,
                 m_preset)
        && index >= 0 && index < m_frameRates.size())
        announce(this, m_frameRates.at(index), m_frameRate, &Self::frameRateChanged);
}
