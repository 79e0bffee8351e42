#include "setup/SetupGeneralModel.h"

#include "common/CameraRoot.h"
#include "common/publishing.h"
#include "common/reading.h"
#include "common/setters.h"
#include "setup/SyncSettingsModel.h"

#include "zvt/zvtsdk.h"

namespace
{

using hlx::cam::IZVTController;

/// Calls a controller operation. Returns false if it fails or there is no controller.
template <class Operation, class... Arguments>
bool callSucceeds(const CameraAccess &camera, Operation operation, Arguments... arguments)
{
    return reading::callController(camera.controller, operation, arguments...) == 0;
}

QRect windowOf(const CameraAccess &camera)
{
    uint16_t x = 0;
    uint16_t y = 0;
    uint16_t width = 0;
    uint16_t height = 0;
    return callSucceeds(camera, &IZVTController::GetWindow, &x, &y, &width, &height) ? QRect(x, y, width, height)
                                                                                     : QRect();
}

/// The row of the camera's window size in a list of `rows` rows. A size that is not standard gets the last row, which
/// is "Custom" if the camera allows free sizes.
int windowSizeIndexOf(const CameraAccess &camera, qsizetype rows)
{
    int index = -1;
    callSucceeds(camera, &IZVTController::GetWindowSizeIndex, &index);
    return index < 0 ? static_cast<int>(rows) - 1 : index;
}

SetupGeneralModel::ESEQUENCING_MODE sequencingModeOf(const CameraAccess &camera)
{
    int mode = 0;
    callSucceeds(camera, &IZVTController::GetPresetSequencingMode, &mode);
    return static_cast<SetupGeneralModel::ESEQUENCING_MODE>(mode);
}

/// The name of a mode; empty for an unknown mode.
QString nameOf(SetupGeneralModel::ESEQUENCING_MODE mode)
{
    switch (mode) {
    case SetupGeneralModel::SUPERFRAMING:
        //: A sequencing mode: the subframes of all presets make one frame
        return SetupGeneralModel::tr("Superframing");
    case SetupGeneralModel::PRESET_SEQUENCING:
        //: A sequencing mode: the presets take turns
        return SetupGeneralModel::tr("Preset Sequencing");
    case SetupGeneralModel::SINGLE_PRESET:
        //: A sequencing mode: one preset is in use
        return SetupGeneralModel::tr("Single Preset");
    }
    return {};
}

} // namespace

SetupGeneralModel::SetupGeneralModel(QObject *parent) : QObject(parent)
{
    for (int preset = 0; ZvtCameraPresetModel * &model : m_presets)
        model = new ZvtCameraPresetModel(parent, preset++);
}

ZvtCameraPresetModel *SetupGeneralModel::ps(int index)
{
    const auto preset = static_cast<unsigned>(index);
    return preset < m_presets.size() ? m_presets[preset] : nullptr;
}

// The read

void SetupGeneralModel::refresh() { m_refresh.start(&SetupGeneralResult::read); }

SetupGeneralModel::SetupGeneralResult SetupGeneralModel::SetupGeneralResult::read(const CameraAccess &camera)
{
    SetupGeneralResult result;
    result.readWindowSizes(camera);
    result.isLowCost = callSucceeds(camera, &IZVTController::GetIsLowCost);
    callSucceeds(camera, &IZVTController::GetCanWindowCustom, &result.canWindowCustom);
    callSucceeds(camera, &IZVTController::GetCanWindowCustomOffset, &result.canWindowCustomOffset);
    callSucceeds(camera, &IZVTController::GetIsFactoryCalibrated, &result.isFactoryCalibrated);
    result.readCalibrations(camera);
    result.readWindow(camera);
    result.readSequencing(camera);
    result.numPresets = readOr<int>(presetCount, zvtGetNumPresets, camera.handle);
    result.readSuperframe(camera);
    for (int preset = 0; auto &presetResult : result.presets)
        presetResult = ZvtCameraPresetModel::GetFullRefreshResult(camera, preset++);
    result.videoPreset = readOr<int>(0, zvtGetVideoPreset, camera.handle);
    result.gigEPreset = readOr<int>(allPresets, zvtGetGigEPreset, camera.handle);
    result.activePreset = readOr<int>(0, zvtGetActivePreset, camera.handle);
    return result;
}

void SetupGeneralModel::SetupGeneralResult::readWindowSizes(const CameraAccess &camera)
{
    hlx::TArray<IZVTController::SWindowSize> sizes;
    if (callSucceeds(camera, &IZVTController::GetWindowSizes, &sizes))
        for (const auto &size : sizes)
            windowSizeStrings << QStringLiteral("%1x%2").arg(size.width).arg(size.height);
    bool custom = false;
    callSucceeds(camera, &IZVTController::GetCanWindowCustom, &custom);
    if (custom)
        //: The row of a window size that is not a standard one
        windowSizeStrings << tr("Custom");
    windowSizeIndex = windowSizeIndexOf(camera, windowSizeStrings.size());
}

void SetupGeneralModel::SetupGeneralResult::readCalibrations(const CameraAccess &camera)
{
    hlx::TArray<IZVTController::SFactoryCalibration> calibrations;
    if (callSucceeds(camera, &IZVTController::GetFactoryCalibrations, &calibrations))
        for (const auto &calibration : calibrations)
            factoryCalibrationStrings << QString::fromUtf8(calibration.name.c_str());
    //: The row of a preset with an integration time of its own
    factoryCalibrationStrings << tr("No Factory Calibration");
}

void SetupGeneralModel::SetupGeneralResult::readWindow(const CameraAccess &camera)
{
    window = windowOf(camera);
    uint16_t minWidth = 0;
    uint16_t maxWidth = 0;
    uint16_t minHeight = 0;
    uint16_t maxHeight = 0;
    uint16_t widthIncrement = 0;
    uint16_t heightIncrement = 0;
    callSucceeds(camera, &IZVTController::GetWindowLimits, &minWidth, &maxWidth, &minHeight, &maxHeight,
                 &widthIncrement, &heightIncrement);
    windowMinSize = {minWidth, minHeight};
    windowMaxSize = {maxWidth, maxHeight};
    windowIncrement = {widthIncrement, heightIncrement};
}

void SetupGeneralModel::SetupGeneralResult::readSequencing(const CameraAccess &camera)
{
    sequencingMode = sequencingModeOf(camera);
    hlx::TArray<uint32_t> modes;
    if (callSucceeds(camera, &IZVTController::GetSequencingModes, &modes)) {
        for (const uint32_t value : modes) {
            const auto mode = static_cast<ESEQUENCING_MODE>(value);
            if (const QString name = nameOf(mode); !name.isEmpty()) {
                sequencingModes << mode;
                sequencingModeStrings << name;
            }
        }
    }
    // Read again: another client may have changed it meanwhile.
    sequencingModeIndex = static_cast<int>(sequencingModes.indexOf(sequencingModeOf(camera)));
}

void SetupGeneralModel::SetupGeneralResult::readSuperframe(const CameraAccess &camera)
{
    callSucceeds(camera, &IZVTController::GetSuperframeRate, &superframeRate);
    hlx::TArray<double> rates;
    callSucceeds(camera, &IZVTController::GetSuperframeRates, &rates);
    superframeRates = QList<qreal>(rates.begin(), rates.end());
    callSucceeds(camera, &IZVTController::GetSuperframeRateIndex, &superframeRateIndex);
}

void SetupGeneralModel::finishedWatcher()
{
    const SetupGeneralResult result = m_refresh.result();
    // Published first: a preset's calibration is a row of this list.
    announce(this, result.factoryCalibrationStrings, m_factoryCalibrationStrings,
             &Self::factoryCalibrationStringsChanged);
    publishWindow(result);
    publishSequence(result);
    for (size_t preset = 0; preset < m_presets.size(); ++preset)
        m_presets[preset]->ApplyFullRefreshResult(result.presets[preset]);
    announce(this, result.videoPreset, m_videoPreset, &Self::videoPresetChanged);
    announce(this, result.gigEPreset, m_gigEPreset, &Self::gigEPresetChanged);
    announce(this, result.activePreset, m_activePreset, &Self::activePresetChanged);
    m_refresh.finish();
}

void SetupGeneralModel::publishWindow(const SetupGeneralResult &result)
{
    announce(this, result.windowSizeStrings, m_windowSizeStrings, &Self::windowSizeStringsChanged);
    announce(this, result.windowSizeIndex, m_windowSizeIndex, &Self::windowSizeIndexChanged);
    announce(this, result.canWindowCustom, m_canWindowCustom, &Self::canWindowCustomChanged);
    announce(this, result.canWindowCustomOffset, m_canWindowCustomOffset, &Self::canWindowCustomOffsetChanged);
    announce(this, result.isLowCost, m_isLowCost, &Self::isLowCostChanged);
    announce(this, result.isFactoryCalibrated, m_isFactoryCalibrated, &Self::isFactoryCalibratedChanged);
    announce(this, result.window, m_window, &Self::windowChanged);
    announce(this, result.windowMinSize, m_windowMinSize, &Self::windowMinSizeChanged);
    announce(this, result.windowMaxSize, m_windowMaxSize, &Self::windowMaxSizeChanged);
    announce(this, result.windowIncrement, m_windowIncrement, &Self::windowIncrementChanged);
}

void SetupGeneralModel::publishSequence(const SetupGeneralResult &result)
{
    m_sequencingModes = result.sequencingModes;
    announce(this, result.sequencingModeStrings, m_sequencingModeStrings, &Self::sequencingModeStringsChanged);
    m_sequencingMode = result.sequencingMode;
    announce(this, result.sequencingModeIndex, m_sequencingModeIndex, &Self::sequencingModeChanged);
    announce(this, result.numPresets, m_numPresets, &Self::numPresetsChanged);
    announce(this, result.superframeRate, m_superframeRate, &Self::superframeRateChanged);
    announce(this, result.superframeRateIndex, m_superframeRateIndex, &Self::superframeRateIndexChanged);
    announce(this, result.superframeRates, m_superframeRates, &Self::superframeRatesChanged);
}

void SetupGeneralModel::partialRefreshAllPresets()
{
    for (ZvtCameraPresetModel *preset : m_presets)
        preset->partialRefresh();
}

// Writes

void SetupGeneralModel::setVisible(bool visible) { storeOnly(this, visible, m_visible, &Self::visibleChanged); }

void SetupGeneralModel::setSequencingMode(ESEQUENCING_MODE mode)
{
    if (mode == m_sequencingMode)
        return;
    setters::write(this, &IZVTController::SetPresetSequencingMode, mode);
    // The list of trigger modes follows the camera's mode before this model signals the change.
    if (auto *root = CameraRoot::of(this))
        root->syncSettings()->sequencingModeChanged();
    announce(this, mode, m_sequencingMode, &Self::sequencingModeChanged);
}

void SetupGeneralModel::setSequencingModeIndex(int index)
{
    if (index < 0 || index >= m_sequencingModes.size() || index == m_sequencingModeIndex)
        return;
    const ESEQUENCING_MODE mode = m_sequencingModes.at(index);
    setSequencingMode(mode);
    announce(this, static_cast<int>(m_sequencingModes.indexOf(mode)), m_sequencingModeIndex,
             &Self::sequencingModeChanged);
}

void SetupGeneralModel::setActivePreset(int preset)
{
    writeStandard(this, preset, m_activePreset, &Self::activePresetChanged, &IZVTController::SetActivePreset);
}

void SetupGeneralModel::setGigEPreset(int preset)
{
    writeStandard(this, preset, m_gigEPreset, &Self::gigEPresetChanged, zvtSetGigEPreset);
}

void SetupGeneralModel::setVideoPreset(int preset)
{
    writeStandard(this, preset, m_videoPreset, &Self::videoPresetChanged, &IZVTController::SetVideoPreset);
}

void SetupGeneralModel::setWindowSizeIndex(int index)
{
    const qsizetype rows = m_windowSizeStrings.size();
    if (index == m_windowSizeIndex || rows == 0)
        return;
    if (index < rows)
        setters::write(this, &IZVTController::SetWindowSizeIndex, index);
    announce(this, index, m_windowSizeIndex, &Self::windowSizeIndexChanged);
    const bool custom = m_canWindowCustom && index == rows - 1;
    announce(this, custom, m_selectedWindowSizeIsCustom, &Self::selectedWindowSizeIsCustomChanged);
    if (!custom)
        announce(this, windowOf(CameraAccess::of(this)), m_window, &Self::windowChanged);
    partialRefreshAllPresets();
}

void SetupGeneralModel::setWindow(QRect window)
{
    if (window == m_window)
        return;
    const CameraAccess camera = CameraAccess::of(this);
    const auto toPixels = [](int pixels) { return static_cast<uint16_t>(pixels); };
    callSucceeds(camera, &IZVTController::SetWindow, toPixels(window.x()), toPixels(window.y()),
                 toPixels(window.width()), toPixels(window.height()));
    announce(this, window, m_window, &Self::windowChanged);
    const int index = windowSizeIndexOf(camera, m_windowSizeStrings.size());
    if (index != m_windowSizeIndex)
        announce(this, index, m_windowSizeIndex, &Self::windowSizeIndexChanged);
    if (!m_selectedWindowSizeIsCustom)
        announce(this, true, m_selectedWindowSizeIsCustom, &Self::selectedWindowSizeIsCustomChanged);
    partialRefreshAllPresets();
}

void SetupGeneralModel::setSuperframeRate(double hertz)
{
    if (hertz == m_superframeRate)
        return;
    m_superframeRate = hertz;
    m_superframeRateIndex = static_cast<int>(m_superframeRates.indexOf(hertz));
    if (m_superframeRateIndex >= 0)
        setters::write(this, &IZVTController::SetSuperframeRateIndex, m_superframeRateIndex);
    else
        setters::write(this, &IZVTController::SetSuperframeRate, hertz, controllerFlag);
    emit superframeRateIndexChanged();
    emit superframeRateChanged();
}

void SetupGeneralModel::setSuperframeRateIndex(int index)
{
    if (writeStandard(this, index, m_superframeRateIndex, &Self::superframeRateIndexChanged,
                      &IZVTController::SetSuperframeRateIndex)
        && index >= 0 && index < m_superframeRates.size())
        announce(this, m_superframeRates.at(index), m_superframeRate, &Self::superframeRateChanged);
}
