#include "correction/CorrectionTabModel.h"

#include "common/CameraRoot.h"
#include "common/CapabilityBlock.h"
#include "common/publishing.h"
#include "common/reading.h"
#include "common/setters.h"
#include "correction/LoadNucOptionsModel.h"
#include "correction/NucInfoModel.h"
#include "correction/NucLoad.h"

#include <algorithm>

#include "zvt/zvtsdk.h"

namespace
{

constexpr int noCalibration = -1; ///< The index of the factory calibration of a preset without one.

/// Whether a number is between 0 and a limit, without both ends.
bool isBetweenZeroAnd(float limit, float number) { return number > 0.0F && number < limit; }

} // namespace

const std::array<CorrectionTabModel::Signal, presetCount> CorrectionTabModel::s_nucNameChanged{
    &Self::nucNamePS0Changed, &Self::nucNamePS1Changed, &Self::nucNamePS2Changed, &Self::nucNamePS3Changed};

ZvtCameraModel *CorrectionTabModel::cameraModel() const
{
    CameraRoot *root = CameraRoot::of(this);
    return root ? root->cameraModel() : nullptr;
}

// Reading

void CorrectionTabModel::refresh() { m_refresh.start(&Settings::read); }

CorrectionTabModel::Settings CorrectionTabModel::Settings::read(const CameraAccess &camera)
{
    const uint64_t handle = camera.handle;
    Settings settings;
    const int presets = fetch(settings.numPresets, zvtGetNumPresets, handle) ? settings.numPresets.get() : 0;
    settings.readName(handle, 0);
    if (presets > 1)
        for (uint8_t preset = 1; preset < presetCount; ++preset)
            settings.readName(handle, preset);
    for (int preset = 0; preset < std::min<int>(presets, presetCount); ++preset) {
        Nullable<int> index;
        if (fetch(index, &hlx::cam::IZVTController::GetPresetCalibrationIndex, camera.controller, preset))
            settings.calLoaded[static_cast<size_t>(preset)] = index.get() != noCalibration;
    }
    fetch(settings.showBadPixels, zvtGetShowBadPixels, handle);
    AutoNuc autoNuc;
    if (zvtGetAutoNUCSetup(handle, &autoNuc.enabled, &autoNuc.useDeltaTemp, &autoNuc.deltaTemp, &autoNuc.useDeltaTime,
                           &autoNuc.deltaTime)
        == 0)
        settings.autoNuc = autoNuc;
    fetch(settings.nucDigitalOutput, zvtGetDigitalOutputNUCEnabled, handle);
    fetch(settings.nucAnalogOutput, zvtGetVideoOutputNUCEnabled, handle);
    if (camera.capabilities->hasBadPixelCorrection())
        fetch(settings.selectedCorrectionMethodIndex, zvtGetBadPixelCorrectionMethod, handle);
    return settings;
}

void CorrectionTabModel::Settings::readName(uint64_t handle, uint8_t preset)
{
    readText<nucNameSize>(nucNames[preset], zvtGetNUCName, handle, preset);
}

void CorrectionTabModel::finishedWatcher()
{
    const Settings settings = m_refresh.result();
    publishIfChanged(this, settings.nucAnalogOutput, m_nucAnalogOutput, &Self::nucAnalogOutputChanged);
    publishIfChanged(this, settings.nucDigitalOutput, m_nucDigitalOutput, &Self::nucDigitalOutputChanged);
    publishIfChanged(this, settings.showBadPixels, m_showBadPixels, &Self::showBadPixelsChanged);
    publishNames(settings);
    if (settings.autoNuc.set())
        publishAutoNuc(settings.autoNuc.get());
    publishIfChanged(this, settings.selectedCorrectionMethodIndex, m_selectedCorrectionMethodIndex,
                     &Self::selectedCorrectionMethodIndexChanged);
    for (size_t preset = 0; preset < presetCount; ++preset)
        publishIfChanged(this, settings.calLoaded[preset], m_calLoaded[preset], &Self::calLoadedPS0Changed);
    publishIfChanged(this, settings.numPresets, m_numPresets, &Self::numPresetsChanged);
    m_refresh.finish();
}

void CorrectionTabModel::publishNames(const Settings &settings)
{
    for (uint8_t preset = 0; preset < presetCount; ++preset) {
        const Nullable<QString> &name = settings.nucNames[preset];
        if (!name.set() || name.get() == m_nucNames[preset])
            continue;
        announce(this, name.get(), m_nucNames[preset], s_nucNameChanged[preset]);
        if (CameraRoot *root = CameraRoot::of(this))
            root->setPresetHasNuc(preset, !name.get().isEmpty());
    }
}

// Publishes values that the page can show. The camera keeps its own ones.
void CorrectionTabModel::publishAutoNuc(const AutoNuc &autoNuc)
{
    constexpr float tempLimit = 2000.0F;
    constexpr float timeLimit = 604800.0F;
    publishIfChanged(this, Nullable(autoNuc.enabled), m_autoNuc.enabled, &Self::autoNucEnabledChanged);
    publishIfChanged(this, Nullable(autoNuc.useDeltaTemp), m_autoNuc.useDeltaTemp, &Self::autoNucUseDeltaTempChanged);
    publishIfChanged(this, Nullable(autoNuc.useDeltaTime), m_autoNuc.useDeltaTime, &Self::autoNucUseDeltaTimeChanged);
    const float temp = autoNuc.deltaTemp;
    if (temp != m_autoNuc.deltaTemp)
        announce(this, isBetweenZeroAnd(tempLimit, temp) ? temp : 1.0F, m_autoNuc.deltaTemp,
                 &Self::autoNucDeltaTempChanged);
    // Required: the temperature decides about the time too.
    if (autoNuc.deltaTime != m_autoNuc.deltaTime)
        announce(this, isBetweenZeroAnd(timeLimit, temp) ? autoNuc.deltaTime : 1U, m_autoNuc.deltaTime,
                 &Self::autoNucDeltaTimeChanged);
}

// The automatic correction

template <class Value> bool CorrectionTabModel::writeAutoNuc(Value AutoNuc::*member, Value value, Signal changed)
{
    if (m_autoNuc.*member == value)
        return false;
    AutoNuc autoNuc = m_autoNuc;
    autoNuc.*member = value;
    if (zvtSetAutoNUCSetup(CameraAccess::of(this).handle, autoNuc.enabled, autoNuc.useDeltaTemp, autoNuc.deltaTemp,
                           autoNuc.useDeltaTime, autoNuc.deltaTime)
        != 0)
        return false;
    announce(this, autoNuc, m_autoNuc, changed);
    return true;
}

void CorrectionTabModel::setAutoNucEnabled(bool enabled)
{
    if (!writeAutoNuc(&AutoNuc::enabled, enabled, &Self::autoNucEnabledChanged))
        return;
    if (const auto controller = CameraAccess::of(this).controller)
        controller->FireValueChanged("AutomaticCorrectionUpdateEnabled");
}

void CorrectionTabModel::setAutoNucUseDeltaTemp(bool use)
{
    writeAutoNuc(&AutoNuc::useDeltaTemp, use, &Self::autoNucUseDeltaTempChanged);
}

void CorrectionTabModel::setAutoNucUseDeltaTime(bool use)
{
    writeAutoNuc(&AutoNuc::useDeltaTime, use, &Self::autoNucUseDeltaTimeChanged);
}

void CorrectionTabModel::setAutoNucDeltaTemp(float celsius)
{
    writeAutoNuc(&AutoNuc::deltaTemp, celsius, &Self::autoNucDeltaTempChanged);
}

void CorrectionTabModel::setAutoNucDeltaTime(uint32_t minutes)
{
    writeAutoNuc(&AutoNuc::deltaTime, minutes, &Self::autoNucDeltaTimeChanged);
}

void CorrectionTabModel::autoNucNow() { zvtDoAutoNUC(CameraAccess::of(this).handle); }

// Where corrections are used

void CorrectionTabModel::setNucAnalogOutput(bool enabled)
{
    writeAccepted(this, enabled, m_nucAnalogOutput, &Self::nucAnalogOutputChanged, zvtSetVideoOutputNUCEnabled);
}

void CorrectionTabModel::setNucDigitalOutput(bool enabled)
{
    writeAccepted(this, enabled, m_nucDigitalOutput, &Self::nucDigitalOutputChanged, zvtSetDigitalOutputNUCEnabled);
}

void CorrectionTabModel::setShowBadPixels(bool show)
{
    writeAccepted(this, show, m_showBadPixels, &Self::showBadPixelsChanged, zvtSetShowBadPixels);
}

void CorrectionTabModel::setSelectedCorrectionMethodIndex(int index)
{
    writeStandard(this, index, m_selectedCorrectionMethodIndex, &Self::selectedCorrectionMethodIndexChanged,
                  zvtSetBadPixelCorrectionMethod);
}

// The corrections of the presets

template <class Task> void CorrectionTabModel::startTask(int preset, Task task)
{
    // The values on the page stay valid, so `hasRefreshed` stays true.
    if (preset < 0 || preset >= presetCount || !m_refresh.begin(RefreshForm::RefreshingOnly))
        return;
    m_refresh.run([task, preset = static_cast<uint8_t>(preset)](const CameraAccess &camera) {
        Settings settings;
        task(settings, camera, preset);
        return settings;
    });
}

void CorrectionTabModel::unloadNuc(int preset)
{
    startTask(preset, [](Settings &settings, const CameraAccess &camera, uint8_t number) {
        if (zvtUnloadNUC(camera.handle, number) == 0)
            settings.readName(camera.handle, number);
    });
}

void CorrectionTabModel::loadNuc(int preset, const QString &name)
{
    CameraRoot *root = CameraRoot::of(this);
    const LoadNucOptions options = root ? root->loadNucOptions()->options() : LoadNucOptions();
    startTask(preset, [text = name.toUtf8(), options](Settings &settings, const CameraAccess &camera, uint8_t number) {
        settings.nucNames[number] = NucLoad(number, text, options).run(camera);
    });
}

void CorrectionTabModel::saveNuc(int preset, const QString &name)
{
    startTask(preset, [text = name.toUtf8()](Settings &settings, const CameraAccess &camera, uint8_t number) {
        if (zvtSaveNUCAs(camera.handle, number, text.constData()) == 0)
            settings.readName(camera.handle, number);
    });
}

NucInfoModel *CorrectionTabModel::infoForNuc(const QString &name)
{
    return new NucInfoModel(CameraAccess::of(this).handle, name.toUtf8().constData(), 0, 0, nullptr);
}

bool CorrectionTabModel::isFactoryNuc(const QString &name)
{
    return readOr(false, zvtIsFactoryNUC, CameraAccess::of(this).handle, name.toUtf8().constData());
}
