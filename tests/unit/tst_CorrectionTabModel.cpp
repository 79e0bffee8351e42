#include "tests/support/Test.h"
#include "tests/unit/CorrectionRig.h"

#include "correction/NucInfoModel.h"

#include "hlx/delegate.h"

namespace
{

const QStringList otherReads{"zvtGetShowBadPixels", "zvtGetAutoNUCSetup", "zvtGetDigitalOutputNUCEnabled",
                             "zvtGetVideoOutputNUCEnabled", "zvtGetBadPixelCorrectionMethod"};
const QStringList valueSignals{"nucAnalogOutputChanged",
                               "nucDigitalOutputChanged",
                               "showBadPixelsChanged",
                               "nucNamePS0Changed",
                               "nucNamePS1Changed",
                               "nucNamePS2Changed",
                               "nucNamePS3Changed",
                               "autoNucEnabledChanged",
                               "autoNucUseDeltaTempChanged",
                               "autoNucUseDeltaTimeChanged",
                               "autoNucDeltaTempChanged",
                               "autoNucDeltaTimeChanged",
                               "selectedCorrectionMethodIndexChanged",
                               "calLoadedPS0Changed",
                               "calLoadedPS0Changed",
                               "calLoadedPS0Changed",
                               "numPresetsChanged"};
const QStringList startSignals{"refreshingChanged", "hasRefreshedChanged"};
const QStringList endSignals{"hasRefreshedChanged", "refreshingChanged"};

ModelUnderTest correctionModel()
{
    auto model = modelOf<CorrectionTabModel>();
    model.prepare = [](CameraRig &rig) { scriptCorrections(rig.gate()); };
    return model;
}

/// Records the value changes that the controller reports.
struct Listener {
    void changed(hlx::CString name) { names << QString::fromUtf8(name.c_str()); }
    hlx::cam::IController::ValueChanged delegate()
    {
        return hlx::cam::IController::ValueChanged::FromMember<Listener, &Listener::changed>(this);
    }

    QStringList names;
};

} // namespace

/// The Correction tab: its read, and its settings.
class tst_CorrectionTabModel : public Test
{
    Q_OBJECT

private slots:
    void nothingIsKnownAtFirst();
    void readsInOrder_data();
    void readsInOrder();
    void methodNeedsItsCapability();
    void publishesInOrder();
    void unchangedValuesAreNotSignalled();
    void anyCalibrationSignalsThatOfTheFirstPreset();
    void namesAreExact();
    void nameFillsItsBuffer();
    void namesSetTheMask();
    void tooManyPresetsAreCounted();

    void automaticValuesAreCorrected_data();
    void automaticValuesAreCorrected();
    void wrongTemperatureIsCorrectedInEachRead();

    void settingsAreWritten_data();
    void settingsAreWritten();
    void refusedSettingIsNotStored_data() { settingsAreWritten_data(); }
    void refusedSettingIsNotStored();
    void presentSettingIsNotWritten_data() { settingsAreWritten_data(); }
    void presentSettingIsNotWritten();
    void refusedMethodIsStored();
    void listenersAreInformedOfTheAutomaticCorrection();
    void automaticCorrectionStartsNow();
    void factoryCorrectionsAreAsked();
    void infoIsANewModel();
    void modelWithoutARootIsHarmless();

    void rootRefreshesTheTab();
    void failingReads();
    void heldReadsOutliveTheModel();
    void secondRefreshIsDropped();
    void readsWithoutACamera();
    void randomOperator();
};

void tst_CorrectionTabModel::nothingIsKnownAtFirst()
{
    Correction correction;
    QCOMPARE(correction.model.cameraModel(), &correction.root);
    QVERIFY(!correction.model.refreshing() && !correction.model.hasRefreshed());
    QCOMPARE(correction.model.numPresets(), 4);
    for (const char *name : {"nucNamePS0", "nucNamePS1", "nucNamePS2", "nucNamePS3"})
        QCOMPARE(correction.model.property(name).toString(), QString());
    for (const char *name : {"autoNucEnabled", "autoNucUseDeltaTemp", "autoNucUseDeltaTime", "autoNucDeltaTemp",
                             "autoNucDeltaTime", "nucAnalogOutput", "nucDigitalOutput", "showBadPixels", "calLoadedPS0",
                             "calLoadedPS1", "calLoadedPS2", "calLoadedPS3", "selectedCorrectionMethodIndex"})
        QCOMPARE(correction.model.property(name).toInt(), 0);
}

// Reading

void tst_CorrectionTabModel::readsInOrder_data()
{
    QTest::addColumn<int>("count"); // -1: it is not read.
    QTest::addColumn<int>("names");
    QTest::addColumn<int>("calibrations");
    QTest::newRow("not read") << -1 << 1 << 0;
    QTest::newRow("no preset") << 0 << 1 << 0;
    QTest::newRow("one preset") << 1 << 1 << 1;
    QTest::newRow("two presets") << 2 << 4 << 2;
    QTest::newRow("four presets") << 4 << 4 << 4;
    QTest::newRow("too many presets") << 200 << 4 << 4;
}

void tst_CorrectionTabModel::readsInOrder()
{
    QFETCH(const int, count);
    QFETCH(const int, names);
    QFETCH(const int, calibrations);
    Correction correction;
    if (count < 0)
        correction.gate().failNext("zvtGetNumPresets");
    else
        correction.gate().script("zvtGetNumPresets", count);
    QStringList expected{"zvtGetNumPresets"};
    for (int preset = 0; preset < names; ++preset)
        expected << QStringLiteral("zvtGetNUCName %1").arg(preset);
    for (int preset = 0; preset < calibrations; ++preset)
        expected << QStringLiteral("controller.GetPresetCalibrationIndex %1").arg(preset);
    expected << otherReads;
    const size_t since = correction.gate().mark();
    QCOMPARE(correction.taskOf([&] { correction.model.refresh(); }), expected);
    QCOMPARE(correction.calls(since, true), QStringList());
    QCOMPARE(correction.model.nucNamePS0(), "Sky");
    QCOMPARE(correction.model.nucNamePS3(), names > 1 ? "Sky" : "");
    QCOMPARE(correction.model.calLoadedPS3(), calibrations > 3);
}

void tst_CorrectionTabModel::methodNeedsItsCapability()
{
    Correction correction;
    correction.rig.camera().changeMakeUp("hasBadPixelCorrection", false);
    correction.rig.controller()->capabilities.configure(correction.rig.controller().get());
    correction.root.cameraCapabilitiesModel()->configure();
    const QStringList calls = correction.taskOf([&] { correction.model.refresh(); });
    QVERIFY(calls.contains("zvtGetShowBadPixels"));
    QVERIFY(!calls.contains("zvtGetBadPixelCorrectionMethod"));
    QCOMPARE(correction.model.selectedCorrectionMethodIndex(), 0);
}

void tst_CorrectionTabModel::publishesInOrder()
{
    Correction correction;
    correction.model.refresh();
    QCOMPARE(correction.log.take(), QStringList({"refreshingChanged", "hasRefreshedChanged"}));
    QVERIFY(correction.model.refreshing() && !correction.model.hasRefreshed());
    CameraRig::settle();
    QCOMPARE(correction.log.take(), valueSignals + endSignals);
    QVERIFY(!correction.model.refreshing() && correction.model.hasRefreshed());
    QVERIFY(correction.model.autoNucEnabled() && correction.model.autoNucUseDeltaTemp());
    QVERIFY(correction.model.autoNucUseDeltaTime());
    QCOMPARE(correction.model.autoNucDeltaTemp(), 2.5F);
    QCOMPARE(correction.model.autoNucDeltaTime(), 30U);
    QVERIFY(correction.model.nucAnalogOutput() && correction.model.nucDigitalOutput());
    QVERIFY(correction.model.showBadPixels());
    QCOMPARE(correction.model.nucNamePS2(), "Sky");
    QVERIFY(correction.model.calLoadedPS0() && correction.model.calLoadedPS1() && correction.model.calLoadedPS2());
    QVERIFY(!correction.model.calLoadedPS3());
    QCOMPARE(correction.model.numPresets(), 3);
    QCOMPARE(correction.model.selectedCorrectionMethodIndex(), 2);
}

void tst_CorrectionTabModel::unchangedValuesAreNotSignalled()
{
    Correction correction;
    correction.refresh();
    QCOMPARE(correction.refresh(), startSignals + endSignals);
}

void tst_CorrectionTabModel::anyCalibrationSignalsThatOfTheFirstPreset()
{
    Correction correction;
    correction.refresh();
    correction.gate().script("controller.GetPresetCalibrationIndex", -1);
    // The camera has three presets.
    const QStringList calibrations(3, "calLoadedPS0Changed");
    QCOMPARE(correction.refresh(), startSignals + calibrations + endSignals);
    QVERIFY(!correction.model.calLoadedPS0() && !correction.model.calLoadedPS2());
}

void tst_CorrectionTabModel::namesAreExact()
{
    Correction correction;
    correction.refresh();
    correction.gate().script("zvtGetNUCName", "sky");
    QVERIFY(correction.refresh().contains("nucNamePS0Changed"));
    QCOMPARE(correction.model.nucNamePS0(), "sky");
    correction.gate().script("zvtGetNUCName", "größer 8 µm");
    correction.refresh();
    QCOMPARE(correction.model.nucNamePS1(), "größer 8 µm");
}

void tst_CorrectionTabModel::nameFillsItsBuffer()
{
    Correction correction;
    correction.gate().fillBuffers(true);
    correction.refresh();
    QCOMPARE(correction.model.nucNamePS0().size(), 256);
    QVERIFY(correction.model.nucNamePS0().startsWith("Sky#"));
}

void tst_CorrectionTabModel::namesSetTheMask()
{
    Correction correction;
    correction.root.modifyHasNucMask(0xff, 0);
    SignalLog rootLog(&correction.root);
    QStringList order;
    QObject::connect(&correction.model, &CorrectionTabModel::nucNamePS1Changed, this,
                     [&] { order << QStringLiteral("name %1").arg(correction.root.hasNucMask()); });
    correction.refresh();
    // The name is signalled before its bit is set.
    QCOMPARE(order, QStringList{"name 1"});
    QCOMPARE(correction.root.hasNucMask(), uint8_t(15));
    QCOMPARE(rootLog.take(),
             QStringList({"hasNucMaskChanged", "hasNucMaskChanged", "hasNucMaskChanged", "hasNucMaskChanged"}));
    correction.refresh();
    QCOMPARE(rootLog.take(), QStringList());
    correction.gate().script("zvtGetNUCName", "");
    correction.refresh();
    QCOMPARE(correction.root.hasNucMask(), uint8_t(0));
}

void tst_CorrectionTabModel::tooManyPresetsAreCounted()
{
    Correction correction;
    correction.gate().script("zvtGetNumPresets", 255);
    correction.refresh();
    QCOMPARE(correction.model.numPresets(), 255);
}

void tst_CorrectionTabModel::automaticValuesAreCorrected_data()
{
    QTest::addColumn<double>("temp");
    QTest::addColumn<uint>("time");
    QTest::addColumn<float>("shownTemp");
    QTest::addColumn<uint>("shownTime");
    QTest::newRow("valid") << 0.5 << 604800U << 0.5F << 604800U;
    QTest::newRow("no time is refused") << 0.5 << 4000000000U << 0.5F << 4000000000U;
    QTest::newRow("no temperature") << 0.0 << 30U << 0.0F << 1U;
    QTest::newRow("negative temperature") << -2.0 << 30U << 1.0F << 1U;
    QTest::newRow("highest temperature") << 1999.5 << 30U << 1999.5F << 30U;
    // The limit of the time is applied to the temperature.
    QTest::newRow("too high temperature") << 2000.0 << 30U << 1.0F << 30U;
    QTest::newRow("temperature above the limit of the time") << 604800.0 << 30U << 1.0F << 1U;
    QTest::newRow("not a number") << qQNaN() << 30U << 1.0F << 1U;
}

void tst_CorrectionTabModel::automaticValuesAreCorrected()
{
    QFETCH(const double, temp);
    QFETCH(const uint, time);
    QFETCH(const float, shownTemp);
    QFETCH(const uint, shownTime);
    Correction correction;
    correction.gate().script("zvtGetAutoNUCSetup", QVariantList{true, true, temp, true, time});
    const size_t since = correction.gate().mark();
    correction.refresh();
    QCOMPARE(correction.model.autoNucDeltaTemp(), shownTemp);
    QCOMPARE(correction.model.autoNucDeltaTime(), shownTime);
    // The camera keeps its values.
    QVERIFY(!correction.rig.callsSince(since).contains("zvtSetAutoNUCSetup"));
}

// The value of the camera is compared, not the corrected one.
void tst_CorrectionTabModel::wrongTemperatureIsCorrectedInEachRead()
{
    Correction correction;
    correction.gate().script("zvtGetAutoNUCSetup", QVariantList{true, true, 2.5, true, 30});
    correction.refresh();
    correction.gate().script("zvtGetAutoNUCSetup", QVariantList{true, true, 0.0, true, 30});
    for (int read = 0; read < 2; ++read) {
        QCOMPARE(correction.refresh(), startSignals + QStringList("autoNucDeltaTempChanged") + endSignals);
        QCOMPARE(correction.model.autoNucDeltaTemp(), 1.0F);
        QCOMPARE(correction.model.autoNucDeltaTime(), 30U);
    }
}

// The settings

void tst_CorrectionTabModel::settingsAreWritten_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("call");
    QTest::newRow("autoNucEnabled") << QVariant(false) << "zvtSetAutoNUCSetup false, true, 2.5, true, 30";
    QTest::newRow("autoNucUseDeltaTemp") << QVariant(false) << "zvtSetAutoNUCSetup true, false, 2.5, true, 30";
    QTest::newRow("autoNucUseDeltaTime") << QVariant(false) << "zvtSetAutoNUCSetup true, true, 2.5, false, 30";
    QTest::newRow("autoNucDeltaTemp") << QVariant(0.25F) << "zvtSetAutoNUCSetup true, true, 0.25, true, 30";
    QTest::newRow("autoNucDeltaTime") << QVariant(77U) << "zvtSetAutoNUCSetup true, true, 2.5, true, 77";
    QTest::newRow("nucAnalogOutput") << QVariant(false) << "zvtSetVideoOutputNUCEnabled false";
    QTest::newRow("nucDigitalOutput") << QVariant(false) << "zvtSetDigitalOutputNUCEnabled false";
    QTest::newRow("showBadPixels") << QVariant(false) << "zvtSetShowBadPixels false";
}

void tst_CorrectionTabModel::settingsAreWritten()
{
    QFETCH(const QVariant, value);
    QFETCH(const QString, call);
    const char *property = QTest::currentDataTag();
    Correction correction;
    correction.refresh();
    correction.gate().script(call.section(u' ', 0, 0).toStdString(), true);
    QCOMPARE(correction.guiCallsOf([&] { correction.model.setProperty(property, value); }), QStringList{call});
    QCOMPARE(correction.model.property(property), value);
    QCOMPARE(correction.log.take(), QStringList{QString::fromLatin1(property) + "Changed"});
}

void tst_CorrectionTabModel::refusedSettingIsNotStored()
{
    QFETCH(const QVariant, value);
    QFETCH(const QString, call);
    const char *property = QTest::currentDataTag();
    Correction correction;
    correction.refresh();
    const QVariant before = correction.model.property(property);
    correction.gate().failAlways(call.section(u' ', 0, 0).toStdString());
    QCOMPARE(correction.guiCallsOf([&] { correction.model.setProperty(property, value); }), QStringList{call});
    QCOMPARE(correction.model.property(property), before);
    QCOMPARE(correction.log.take(), QStringList());
}

void tst_CorrectionTabModel::presentSettingIsNotWritten()
{
    const char *property = QTest::currentDataTag();
    Correction correction;
    correction.refresh();
    const QVariant present = correction.model.property(property);
    QCOMPARE(correction.guiCallsOf([&] { correction.model.setProperty(property, present); }), QStringList());
    QCOMPARE(correction.log.take(), QStringList());
}

void tst_CorrectionTabModel::refusedMethodIsStored()
{
    Correction correction;
    correction.refresh();
    correction.gate().failAlways("zvtSetBadPixelCorrectionMethod");
    const auto write = [&] { correction.model.setSelectedCorrectionMethodIndex(1); };
    QCOMPARE(correction.guiCallsOf(write), QStringList{"zvtSetBadPixelCorrectionMethod 1"});
    QCOMPARE(correction.model.selectedCorrectionMethodIndex(), 1);
    QCOMPARE(correction.log.take(), QStringList{"selectedCorrectionMethodIndexChanged"});
    QCOMPARE(correction.guiCallsOf(write), QStringList());
}

void tst_CorrectionTabModel::listenersAreInformedOfTheAutomaticCorrection()
{
    Correction correction;
    correction.refresh();
    Listener listener;
    correction.rig.controller()->AddValueChanged(listener.delegate());
    QStringList namesAtSignal{"not signalled"};
    QObject::connect(&correction.model, &CorrectionTabModel::autoNucEnabledChanged, this,
                     [&] { namesAtSignal = listener.names; });
    correction.gate().failAlways("zvtSetAutoNUCSetup");
    correction.model.setAutoNucEnabled(false);
    correction.model.setAutoNucEnabled(true);
    QCOMPARE(listener.names, QStringList());
    correction.gate().failNever();
    correction.gate().script("zvtSetAutoNUCSetup", true);
    correction.model.setAutoNucUseDeltaTemp(false);
    QCOMPARE(listener.names, QStringList());
    correction.model.setAutoNucEnabled(false);
    // After the signal.
    QCOMPARE(namesAtSignal, QStringList());
    QCOMPARE(listener.names, QStringList{"AutomaticCorrectionUpdateEnabled"});
    correction.rig.controller()->RemoveValueChanged(listener.delegate());
    CameraRig::settle();
}

void tst_CorrectionTabModel::automaticCorrectionStartsNow()
{
    Correction correction;
    correction.gate().failNext("zvtDoAutoNUC");
    QCOMPARE(correction.guiCallsOf([&] { correction.model.autoNucNow(); }), QStringList{"zvtDoAutoNUC"});
    QCOMPARE(correction.log.take(), QStringList());
}

void tst_CorrectionTabModel::factoryCorrectionsAreAsked()
{
    Correction correction;
    for (const bool factory : {true, false}) {
        correction.gate().script("zvtIsFactoryNUC", factory);
        bool answer = !factory;
        QCOMPARE(correction.guiCallsOf([&] { answer = correction.model.isFactoryNuc("Möwe"); }),
                 QStringList{"zvtIsFactoryNUC \"Möwe\""});
        QCOMPARE(answer, factory);
    }
    correction.gate().script("zvtIsFactoryNUC", true);
    correction.gate().failNext("zvtIsFactoryNUC");
    QVERIFY(!correction.model.isFactoryNuc("Sky"));
}

void tst_CorrectionTabModel::infoIsANewModel()
{
    Correction correction;
    correction.gate().script("zvtGetNUCFileInfo", QVariantList{3332, 1});
    std::unique_ptr<NucInfoModel> info;
    const QStringList calls = correction.taskOf([&] { info.reset(correction.model.infoForNuc("Möwe")); });
    QVERIFY(!info->parent());
    QVERIFY(calls.contains("zvtQueryNUCInfo \"Möwe\""));
    // Size and time are unknown, so the camera is asked for them.
    QVERIFY(calls.contains("zvtGetNUCFileInfo \"Möwe\""));
}

void tst_CorrectionTabModel::modelWithoutARootIsHarmless()
{
    CorrectionTabModel orphan(nullptr);
    QVERIFY(!orphan.cameraModel());
    orphan.refresh();
    CameraRig::settle();
    QVERIFY(orphan.hasRefreshed());
    orphan.setAutoNucEnabled(true);
    QVERIFY(!orphan.autoNucEnabled());
    orphan.autoNucNow();
    orphan.loadNuc(0, "Sky");
    CameraRig::settle();
    QVERIFY(!orphan.refreshing());
}

// The walkers

void tst_CorrectionTabModel::rootRefreshesTheTab()
{
    Correction correction;
    QVERIFY(correction.taskOf([&] { correction.root.refreshAllVisible(); }).contains("zvtGetAutoNUCSetup"));
}

void tst_CorrectionTabModel::failingReads()
{
    walkFailingReads(
        correctionModel(),
        {{"zvtGetNumPresets",
          {{"numPresets", "nucNamePS1", "nucNamePS2", "nucNamePS3", "calLoadedPS0", "calLoadedPS1", "calLoadedPS2"},
           "without a number only the first name is read"}}});
}

void tst_CorrectionTabModel::heldReadsOutliveTheModel() { walkHeldDeletion(correctionModel()); }

void tst_CorrectionTabModel::secondRefreshIsDropped() { walkSecondRefresh(correctionModel()); }

void tst_CorrectionTabModel::readsWithoutACamera() { walkNoCamera(modelOf<CorrectionTabModel>()); }

void tst_CorrectionTabModel::randomOperator() { walkRandomOperator(correctionModel(), 54); }

ZVT_TEST(tst_CorrectionTabModel)
#include "tst_CorrectionTabModel.moc"
