#include "tests/faults/randomActions.h"
#include "tests/support/Test.h"
#include "tests/support/modelProperties.h"

#include <algorithm>
#include <vector>

/// Random actions on all models, on a camera that fails at random, disconnects, changes its make-up and has another
/// client.
class tst_RandomOperator : public Test
{
    Q_OBJECT

private slots:
    void everyModelShowsTheCameraInTheEnd_data();
    void everyModelShowsTheCameraInTheEnd();
    void ownStatesNameProperties();
};

namespace
{

/// Properties that no read brings from the camera, so that they keep the operator's value.
struct OwnState {
    QStringList paths; ///< "MODEL.PROPERTY" with a path of modelsOf(), or the name of a property of the root.
    const char *reason;
    /// A camera with this capability is read for them after all, or with this setting, which has a point in its name
    /// ("analog.bias"). Null: none is.
    const char *readWith = nullptr;
};

const std::vector<OwnState> ownStates{
    {{"allowedToCloseController", "aboutModel.lastDirectory", "setupTabModel.fpaWindowSizeHasUnsavedValues"},
     "kept for the page and the host, not in the camera"},
    {{"setupGeneralModel.selectedWindowSizeIsCustom"}, "the row that the operator chose last"},
    {{"setupTabModel.distanceToFocus"}, "the target of the next focusToDistance(), not the position of the lens"},
    {{"nucProcess.preset"}, "the preset of the next correction"},
    {{"loadNucOptions.loadSettings", "loadNucOptions.useAnalogOffset", "loadNucOptions.useColor",
      "loadNucOptions.useDetectorBias", "loadNucOptions.useDigitalGainOffset", "loadNucOptions.useFPAGainLevel",
      "loadNucOptions.useFilter", "loadNucOptions.useFrameRate", "loadNucOptions.useFrameSyncMode",
      "loadNucOptions.useIntTime", "loadNucOptions.useInvertRevert", "loadNucOptions.useSkimming",
      "loadNucOptions.useWindowSize"},
     "the options of the next load, kept for the page"},
    {{"correctionTabModel.autoNucDeltaTemp", "correctionTabModel.autoNucDeltaTime"},
     "a value out of range is replaced only if it differs from the one shown before"},
    {{"correctionTabModel.selectedCorrectionMethodIndex"},
     "without the correction of bad pixels there is no method to read",
     "hasBadPixelCorrection"},
    {{"setupTabModel.lensBasedControlsEnabled"}, "the editors of the page lock the controls and unlock them"},
    {{"flagSettings.desiredSetWasValid"}, "whether the camera accepted the last write"},
    {{"setupCoolerSettingsModel.coolerEnabled", "setupCoolerSettingsModel.setpoint"},
     "without a thermoelectric cooler there is nothing to read",
     "hasTeCooler"},
    {{"setupFilterWheelSettingsModel.selectedFilterIndex", "mfgCorvinFilterSettingsModel.selectedFilterIndex"},
     "without a filter wheel there is no current filter to read",
     "hasFilterWheel"},
    {{"mfgTabModel.selectedFilteredIndex"}, "the row in the table of the page"},
    {{"mfgToolsModel.selectedSaveBplIndex"}, "the lists of the next export"},
    {{"mfgCoolerSettingsModel.coolerEnabled", "mfgCoolerSettingsModel.kP", "mfgCoolerSettingsModel.kI",
      "mfgCoolerSettingsModel.kD", "mfgCoolerSettingsModel.kOff", "mfgCoolerSettingsModel.setpoint"},
     "without a thermoelectric cooler there is nothing to read",
     "hasTeCooler"},
    {{"mfgNucSettingsModel.selectedNucTypeIndex", "mfgNucSettingsModel.selectedNucSourceIndex",
      "mfgNucSettingsModel.detectBadPixels", "mfgNucSettingsModel.adMin", "mfgNucSettingsModel.adMax",
      "mfgNucSettingsModel.gainMin", "mfgNucSettingsModel.gainMax", "mfgNucSettingsModel.nucNumFrames",
      "mfgNucSettingsModel.useTwinklerDetection", "mfgNucSettingsModel.twinklerNumFrames",
      "mfgNucSettingsModel.twinklerDelta", "mfgNucSettingsModel.flagMaxTemp", "mfgNucSettingsModel.stableDelta",
      "mfgNucSettingsModel.stableCount", "mfgNucSettingsModel.timeout", "mfgNucSettingsModel.useFactoryBadPixels",
      "mfgNucSettingsModel.showBadPixels", "mfgNucSettingsModel.nucVideoOutput", "mfgNucSettingsModel.nucDigitalData"},
     "without corrections there is nothing to read",
     "correctionSetup.type"},
    {{"setupTabModel.selectedDiscontinuousFieldOfViewIndex"},
     "a lens without fixed fields of view has none to read",
     "hasDiscontinuousOpticalZoom"},
    {{"setupTabModel.nearFocusPosition", "setupTabModel.farFocusPosition", "setupTabModel.selectedAFRoiPositionIndex",
      "setupTabModel.selectedAFRoiShowWhenIndex", "setupTabModel.selectedLensStateIndex",
      "setupTabModel.selectedLensStateComponentsModifiedNotSaved", "overlaySettings.showFocusRoi"},
     "without a motorized lens there is nothing to read",
     "hasFocus"},
    {{"videoTabModel.selectedUpdateRateIndex"}, "without the capability the update rate is not read", "hasUpdateRate"},
    {{"videoTabModel.selectedTemporalFilterIndex", "videoTabModel.temporalFilterThreshold"},
     "without the capability the filter is not read",
     "hasTemporalFilter"},
    {{"advancedTabModel.selectedCameraLinkModeIndex"},
     "without the capability the mode of CameraLink is not read",
     "hasCameraLinkMode"},
    {{"advancedTabModel.selectedCoaXPressLinksIndex"},
     "without the capability the number of links is not read",
     "hasCoaXPressLinksToUse"},
    {{"advancedAnalogSettingsModel.skimmingValue", "advancedAnalogSettingsModel.skimmingEnabled"},
     "without skimming there is nothing to read",
     "hasSkimming"},
    {{"advancedAnalogSettingsModel.globalOffsetValue", "advancedAnalogSettingsModel.detectorBiasValue"},
     "without adjustable voltages there is nothing to read",
     "analog.bias"},
    {{"advancedLockinSettingsModel.selectedCouplingIndex"}, "without a lock-in there is no coupling", "hasLockin"},
    {{"advancedLockinSettingsModel.sampleRate"}, "the last rate, also while the camera has none"},
    {{"advancedMiscSettingsModel.selectedIntegrateActivePolarityIndex",
      "advancedMiscSettingsModel.selectedIrigLatchIndex", "advancedMiscSettingsModel.gigeHeaderModeIndex",
      "advancedMiscSettingsModel.clHeaderModeIndex", "advancedMiscSettingsModel.cxpHeaderModeIndex"},
     "without the capability the section is not read",
     "hasAdvancedMiscSettings"},
    {{"ssdTabModel.autoDownloadDirectory", "ssdTabModel.autoDownloadDirectoryUrl", "ssdTabModel.autoDownloadCount"},
     "the files of downloads on this computer"},
    {{"ssdTabModel.progress", "ssdTabModel.downloadOk", "ssdTabModel.findingFrameLimits",
      "ssdTabModel.grabbingDroppedFrames", "ssdTabModel.batchDownload.progress",
      "ssdTabModel.batchDownload.itemsSucceeded", "ssdTabModel.batchDownload.itemsFailed",
      "ssdTabModel.batchDownload.itemsNotStarted", "ssdTabModel.batchDownload.log"},
     "the results of the last download"},
    {{"ssdTabModel.batchDownload.outputDir", "ssdTabModel.batchDownload.convertToQdseq",
      "ssdTabModel.batchDownload.keepRqsFile", "ssdTabModel.batchDownload.addCalFile",
      "ssdTabModel.batchDownload.calFilename"},
     "the options of the next downloads, kept for the page"},
    {{"ssdTabModel.loadedMovieName", "ssdTabModel.loadedMovieNumber"}, "the movie that the operator has loaded last"},
    {{"ssdTabModel.currentFrame"}, "read after commands and by polls"},
    {{"ssdTabModel.fromDisk"}, "follows the last command to arm, and is not read"},
    {{"ssdTabModel.totalFramesInFile"}, "without record modes it is only read while there is a recording"},
    {{"ssdTabModel.autoPlay", "ssdTabModel.autoSave", "ssdTabModel.framesToRecord",
      "ssdTabModel.pretriggerFramesToRecord", "ssdTabModel.pretriggerMaxFramesToRecord", "ssdTabModel.loopPlayback",
      "ssdTabModel.playbackRateInHertz", "ssdTabModel.startFrame", "ssdTabModel.endFrame", "ssdTabModel.state",
      "ssdTabModel.canInteract", "ssdTabModel.ramContainsVideo"},
     "without a recorder there is nothing to read",
     "hasSsd"}};

/// The settings of the presets from this number on. On a camera without these presets their reads fail, and they keep
/// the operator's values.
QStringList settingsOfPresetsFrom(int preset)
{
    static const QStringList presets{"presetZero", "presetOne", "presetTwo", "presetThree"};
    QStringList paths;
    for (; preset < presets.size(); ++preset)
        for (const char *setting :
             {"advancedTabModel.%1Gain", "advancedTabModel.%1Offset",
              "advancedSaturationSettingsModel.%1CountThreshold", "advancedSaturationSettingsModel.%1PixelThreshold"})
            paths << QString::fromLatin1(setting).arg(presets.at(preset));
    return paths;
}

/// Whether the camera has a setting, given by its name.
bool hasSetting(const emulator::Camera &camera, const QString &name)
{
    const std::vector<emulator::SettingInfo> settings = camera.settings();
    return std::any_of(settings.begin(), settings.end(),
                       [&name](const emulator::SettingInfo &setting) { return setting.name == name; });
}

/// Whether the camera is read for these properties.
bool isRead(const OwnState &own, const Models &models, const emulator::Camera &camera)
{
    const QString name = QString::fromLatin1(own.readWith);
    return name.contains(u'.')
        ? hasSetting(camera, name)
        : own.readWith && models.root->cameraCapabilitiesModel()->property(own.readWith).toBool();
}

/// The paths of the values that differ, without those that `fresh` does not read from its camera. A model that is the
/// value of a property is compared by itself.
QStringList differing(const Models &models, const Models &fresh, const emulator::Camera &camera)
{
    QStringList paths;
    for (auto model = fresh.byPath.cbegin(); model != fresh.byPath.cend(); ++model) {
        const QString prefix = model.key().isEmpty() ? QString() : model.key() + u'.';
        for (const QString &name : differing(valuesOf(model.value()), valuesOf(models.byPath.value(model.key()))))
            if (const QString path = prefix + name; !fresh.byPath.contains(path))
                paths << path;
    }
    for (const OwnState &own : ownStates)
        if (!isRead(own, fresh, camera))
            paths.removeIf([&own](const QString &path) { return own.paths.contains(path); });
    const QStringList missing = settingsOfPresetsFrom(fresh.root->setupGeneralModel()->numPresets());
    paths.removeIf([&missing](const QString &path) { return missing.contains(path); });
    return paths;
}

bool hasProperty(const Models &models, const QString &path)
{
    const qsizetype dot = path.lastIndexOf(u'.');
    const QObject *model = models.byPath.value(path.left(qMax<qsizetype>(dot, 0)));
    return model && model->metaObject()->indexOfProperty(path.mid(dot + 1).toLatin1()) >= 0;
}

} // namespace

void tst_RandomOperator::everyModelShowsTheCameraInTheEnd_data()
{
    QTest::addColumn<QString>("profile");
    QTest::addColumn<uint>("seed");
    uint seed = 1;
    for (const QString &profile : emulator::Profile::names())
        QTest::newRow(qPrintable(profile)) << profile << seed++;
}

void tst_RandomOperator::everyModelShowsTheCameraInTheEnd()
{
    constexpr int rounds = 3;
    constexpr int steps = 1000;
    constexpr int lastChanges = 100;
    QFETCH(QString, profile);
    QFETCH(uint, seed);
    QRandomGenerator random(seed);
    CameraRig rig(profile);
    Models models(rig);
    const Models otherClient(rig);
    const QString changed = QStringLiteral("hasSsd"); // By the random actions.
    const QVariant hasSsd = rig.camera().capabilities().value(changed).toVariant();
    for (int round = 0; round < rounds; ++round) {
        rig.gate().failRandomly(0.2, random.generate());
        for (int step = 0; step < steps; ++step)
            doSomething(models, otherClient, rig, random);
        endDownloads(models);
        CameraRig::settle();
        rig.gate().failNever();
        // The own states without a recorder are those of a camera that has none.
        QVERIFY(rig.camera().changeMakeUp(changed, hasSsd));
        rig.camera().disconnect();
        rig.camera().connect();
        for (int change = 0; change < lastChanges; ++change)
            writeRandomProperty(otherClient.byPath.values(), random);
        CameraRig::settle();

        readEverything(models);
        const Models fresh(rig);
        // A new root reads the mode from the settings of the computer, which the other client has also changed.
        fresh.root->setManufacturingMode(models.root->manufacturingMode());
        readEverything(fresh);
        QVERIFY(models.root->connected());
        QCOMPARE(models.byPath.keys(), fresh.byPath.keys());
        const QStringList different = differing(models, fresh, rig.camera());
        QVERIFY2(different.isEmpty(), qPrintable("not as a fresh model reads them: " + different.join(", ")));
    }
}

void tst_RandomOperator::ownStatesNameProperties()
{
    CameraRig rig;
    const Models models(rig);
    for (const OwnState &own : ownStates) {
        for (const QString &path : own.paths)
            QVERIFY2(hasProperty(models, path), qPrintable(path));
        if (own.readWith)
            QVERIFY2(hasSetting(rig.camera(), own.readWith)
                         || hasProperty(models, QStringLiteral("cameraCapabilitiesModel.%1").arg(own.readWith)),
                     own.readWith);
    }
    for (const QString &path : settingsOfPresetsFrom(0))
        QVERIFY2(hasProperty(models, path), qPrintable(path));
}

ZVT_TEST(tst_RandomOperator)
#include "tst_RandomOperator.moc"
