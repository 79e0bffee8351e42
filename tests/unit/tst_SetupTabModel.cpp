#include "tests/support/Test.h"
#include "tests/unit/SetupTabRig.h"

#include "zvt/zvtsdk.h"

/// The refresh of the Setup tab: the order of its reads and of its signals.
class tst_SetupTabModel : public Test
{
    Q_OBJECT

private slots:
    void startsWithItsInitialValues();
    void refreshReadsInOrder_data();
    void refreshReadsInOrder();
    void refreshPublishesInOrder();
    void unchangedImageSettingsAreNotSignalled();
    void rootRefreshesTheTab();

    void failingReads();
    void heldReadsOutliveTheModel();
    void secondRefreshIsDropped();
    void readsWithoutACamera();
    void randomOperator();
};

void tst_SetupTabModel::startsWithItsInitialValues()
{
    SetupTab tab;
    const QMap<QString, QVariant> others{{"selectedLensCoverStateIndex", 2},
                                         {"lensBasedControlsEnabled", true},
                                         {"focusEncoderHasAscendingValuesNearToFar", true}};
    const QMetaObject *meta = tab.model->metaObject();
    for (int i = QObject::staticMetaObject.propertyCount(); i < meta->propertyCount(); ++i) {
        const QMetaProperty property = meta->property(i);
        if (qstrcmp(property.name(), "cameraModel") == 0)
            QCOMPARE(property.read(tab.model).value<ZvtCameraModel *>(), &tab.root);
        else
            QVERIFY2(property.read(tab.model) == others.value(property.name(), QVariant(property.metaType())),
                     property.name());
    }
    for (const char *name : {"focusPositionTimer", "slowFocusTimer", "zoomPositionTimer", "zoomSettleTimer"})
        QVERIFY2(!tab.timer(name)->isActive(), name);
    QVERIFY(tab.timer("eventQueueTimer")->isActive());
    QCOMPARE(tab.timer("eventQueueTimer")->interval(), 5000);
}

void tst_SetupTabModel::refreshReadsInOrder_data()
{
    QTest::addColumn<QStringList>("expected");
    const QStringList gain{"zvtGetGainLevelsAreNamed", "zvtGetGainLevelName 0", "zvtGetGainLevelName 1",
                           "zvtGetGainLevelName 2", "zvtGetGainLevel"};
    const QStringList cover{"zvtGetLensCoverState"};
    const QStringList focus{"zvtGetAutoFocusROISize", "zvtGetAutoFocusROIPosition",
                            "zvtGetAutoFocusROIShowWhenFocusing", "zvtGetVideoOverlayShowFocusROI",
                            "zvtGetFocusManualMode"};
    const QStringList distance{"zvtGetFocusToDistanceMin", "zvtGetFocusToDistanceMax"};
    const QStringList always{"zvtGetHSMAvailable",
                             "zvtGetHSMEnabled",
                             "zvtGetRevertEnabled",
                             "zvtGetInvertEnabled",
                             "zvtGetFrameSyncSource",
                             "zvtGetLensAthermalizationEnabledAvailable",
                             "zvtGetLensAthermalizationEnabled"};
    QTest::newRow("everything") << gain + QStringList{"zvtGetFOVPos", "zvtGetFOVRange"} + cover + focus + distance
            + always;
    QTest::newRow("discrete-fov") << gain + QStringList{"zvtGetFOV", "zvtGetFOV"} + cover + focus + distance + always;
    QTest::newRow("low-cost") << focus + always;
    QTest::newRow("bare") << always;
}

void tst_SetupTabModel::refreshReadsInOrder()
{
    QFETCH(QStringList, expected);
    SetupTab tab(QString::fromLatin1(QTest::currentDataTag()));
    tab.gate().script("zvtGetGainLevelsAreNamed", true);
    tab.gate().script("zvtGetLensAthermalizationEnabledAvailable", true);
    QCOMPARE(settingCalls(tab.refresh()), expected);

    // Without athermalization only its state is not read.
    tab.gate().script("zvtGetLensAthermalizationEnabledAvailable", false);
    expected.removeLast();
    QCOMPARE(settingCalls(tab.refresh()), expected);
}

namespace
{

/// Values that differ from those of a model that has read nothing.
void scriptEverything(CameraRig &rig)
{
    const QMap<std::string, QVariant> values{
        {"zvtGetGainLevelsAreNamed", true},
        {"zvtGetGainLevelName", "Low"},
        {"zvtGetGainLevel", 2},
        {"zvtGetFOVPos", 1200},
        {"zvtGetFOVRange", QVariantList{100, 9000}},
        {"zvtGetFocusRange", QVariantList{10, 60000}},
        {"zvtGetFocusCurrentPos", 700},
        {"zvtGetFocusNearPos", 5000},
        {"zvtGetFocusFarPos", 800},
        {"zvtGetLensCoverState", 1},
        {"zvtGetAutoFocusROISize", 512},
        {"zvtGetAutoFocusROIPosition", 3},
        {"zvtGetAutoFocusROIShowWhenFocusing", true},
        {"zvtGetVideoOverlayShowFocusROI", false},
        {"zvtGetFocusManualMode", true},
        {"zvtGetFocusToDistanceMin", 1.5},
        {"zvtGetFocusToDistanceMax", 80},
        {"zvtGetHSMAvailable", true},
        {"zvtGetHSMEnabled", true},
        {"zvtGetRevertEnabled", true},
        {"zvtGetInvertEnabled", true},
        {"zvtGetFrameSyncSource", 2},
        {"zvtGetLensAthermalizationEnabledAvailable", true},
        {"zvtGetLensAthermalizationEnabled", true},
    };
    for (auto it = values.cbegin(); it != values.cend(); ++it)
        rig.gate().script(it.key(), it.value());
    zvtSaveLensStateAs(rig.camera().handle(), "Day");
}

} // namespace

void tst_SetupTabModel::refreshPublishesInOrder()
{
    SetupTab tab;
    scriptEverything(tab.rig);
    tab.gate().hold("zvtGetFocusRange"); // Delays the read of the limits.
    tab.model->refresh();
    QCOMPARE(tab.log.take(), QStringList({"refreshingChanged", "hasRefreshedChanged"}));
    QVERIFY(tab.model->refreshing() && !tab.model->hasRefreshed());
    QTRY_VERIFY(tab.model->hasRefreshed());
    QVERIFY(!tab.model->refreshing());
    QCOMPARE(tab.log.take(),
             QStringList({"fpaGainLevelsChanged",
                          "selectedFPAGainLevelChanged",
                          "fullRangeZoomValuesChanged",
                          "selectedZoomPositionChanged",
                          "selectedLensCoverStateIndexChanged",
                          "selectedAFRoiSizeIndexChanged",
                          "selectedAFRoiPositionIndexChanged",
                          "selectedAFRoiShowWhenIndexChanged",
                          "distanceRangeValuesChanged",
                          "distanceToFocusChanged",
                          "distanceRangeValuesChanged",
                          "hsmAvailableChanged",
                          "hsmEnabledChanged",
                          "hflipImageChanged",
                          "vflipImageChanged",
                          "syncSourceChanged",
                          "lensBasedControlsEnabledChanged",
                          "athermalizationEnabledAvailableChanged",
                          "athermalizationEnabledChanged",
                          "hasRefreshedChanged",
                          "refreshingChanged"}));
    tab.gate().release("*");
    CameraRig::settle();

    QCOMPARE(tab.model->fpaGainLevels(), QStringList({"Low", "Low", "Low"}));
    QCOMPARE(tab.model->selectedFPAGainLevel(), 2);
    QCOMPARE(tab.model->fullRangeZoomMinimum(), 100U);
    QCOMPARE(tab.model->fullRangeZoomMaximum(), 9000U);
    QCOMPARE(tab.model->selectedZoomPosition(), 1200U);
    QCOMPARE(tab.model->selectedLensCoverStateIndex(), 1);
    QCOMPARE(tab.model->distanceMinimum(), 1.5F);
    QCOMPARE(tab.model->distanceMaximum(), 80.0F);
    QVERIFY(tab.model->hsmAvailable() && tab.model->hsmEnabled());
    QVERIFY(tab.model->hflipImage() && tab.model->vflipImage());
    QCOMPARE(tab.model->syncSource(), 2);
    QVERIFY(!tab.model->lensBasedControlsEnabled());
    QVERIFY(tab.model->athermalizationEnabledAvailable() && tab.model->athermalizationEnabled());
}

void tst_SetupTabModel::unchangedImageSettingsAreNotSignalled()
{
    SetupTab tab;
    scriptEverything(tab.rig);
    tab.refresh();
    tab.gate().hold("zvtGetFocusRange");
    tab.model->refresh();
    tab.log.take();
    QTRY_VERIFY(tab.model->hasRefreshed());
    const QStringList order = tab.log.take();
    for (const char *silent : {"hsmAvailable", "hsmEnabled", "hflipImage", "vflipImage", "syncSource",
                               "lensBasedControlsEnabled", "athermalizationEnabledAvailable", "athermalizationEnabled"})
        QVERIFY2(!order.contains(QLatin1String(silent) + "Changed"), silent);
    QVERIFY(order.contains("selectedZoomPositionChanged"));
    tab.gate().release("*");
}

void tst_SetupTabModel::rootRefreshesTheTab()
{
    SetupTab tab;
    const QStringList calls = tab.callsOf([&] { tab.root.refreshAllVisible(); });
    QCOMPARE(calls.count("zvtGetHSMAvailable"), 1);
    QVERIFY(tab.model->hasRefreshed());
}

// The walkers

namespace
{

const QStringList profiles{"everything", "discrete-fov", "low-cost"};

ModelUnderTest setupTab(const QString &profile = QStringLiteral("everything"))
{
    auto model = modelOf<SetupTabModel>(profile);
    model.prepare = scriptEverything;
    return model;
}

/// As setupTab() without the list of lens states, which is read only after the limits have been published.
ModelUnderTest setupTabWithoutLensStates(const QString &profile)
{
    auto model = setupTab(profile);
    model.prepare = [](CameraRig &rig) {
        scriptEverything(rig);
        rig.camera().changeMakeUp("hasLensStatesFunctionality", false);
        rig.controller()->capabilities.configure(rig.controller().get());
    };
    return model;
}

} // namespace

void tst_SetupTabModel::failingReads()
{
    const ReadException gainName{{"fpaGainLevels"}, "the level shows as its number", {"fpaGainLevels"}};
    const ReadException showWhen{{"selectedAFRoiShowWhenIndex"}, "both flags make the choice"};
    const char *derived = "values derived from a limit are signalled in any case";
    const char *oneSignal = "the other end of the range has the same signal";
    walkFailingReads(
        setupTab(),
        {{"zvtGetGainLevelsAreNamed", gainName},
         {"zvtGetGainLevelName", gainName},
         {"zvtGetGainLevelName#2", gainName},
         {"zvtGetGainLevelName#3", gainName},
         {"zvtGetGainLevel", {{"selectedFPAGainLevel"}, "falls back to the first", {"selectedFPAGainLevel"}}},
         {"zvtGetAutoFocusROIShowWhenFocusing", showWhen},
         {"zvtGetVideoOverlayShowFocusROI", showWhen},
         {"zvtGetFocusToDistanceMin", {{"distanceMinimum", "distanceToFocus"}, oneSignal, {"distanceMinimum"}}},
         {"zvtGetFocusToDistanceMax", {{"distanceMaximum"}, oneSignal, {"distanceMaximum"}}},
         {"zvtGetFocusRange",
          {{"fullRangeFocusMinimum", "fullRangeFocusMaximum", "minimumFocusPosition", "maximumFocusPosition"},
           derived,
           {"minimumFocusPosition", "maximumFocusPosition"}}},
         {"zvtGetFocusNearPos",
          {{"nearFocusPosition", "focusEncoderHasAscendingValuesNearToFar"},
           derived,
           {"focusEncoderHasAscendingValuesNearToFar"}}},
         {"zvtGetLensAthermalizationEnabledAvailable",
          {{"athermalizationEnabledAvailable", "athermalizationEnabled"},
           "a failed read counts as not available",
           {"athermalizationEnabledAvailable"}}},
         {"zvtListLensStates",
          {{"hasAtLeastOneLensState", "lensStateNames", "selectedLensStateIndex"},
           "a list that could not be read is empty",
           {"hasAtLeastOneLensState", "lensStateNames", "selectedLensStateIndex"}}}});
}

void tst_SetupTabModel::heldReadsOutliveTheModel()
{
    for (const QString &profile : profiles)
        walkHeldDeletion(setupTabWithoutLensStates(profile));
}

void tst_SetupTabModel::secondRefreshIsDropped()
{
    for (const QString &profile : profiles)
        walkSecondRefresh(setupTab(profile));
}

void tst_SetupTabModel::readsWithoutACamera() { walkNoCamera(modelOf<SetupTabModel>()); }

void tst_SetupTabModel::randomOperator()
{
    for (const QString &profile : profiles) {
        auto model = modelOf<SetupTabModel>(profile);
        // Stored for the page only, or not read from this lens.
        model.ownState << "fpaWindowSizeHasUnsavedValues"
                       << "lensBasedControlsEnabled"
                       << "selectedDiscontinuousFieldOfViewIndex";
        if (profile == QLatin1String("low-cost"))
            model.ownState << "distanceToFocus";
        for (uint32_t seed = 1; seed <= 3; ++seed)
            walkRandomOperator(model, seed);
    }
}

ZVT_TEST(tst_SetupTabModel)
#include "tst_SetupTabModel.moc"
