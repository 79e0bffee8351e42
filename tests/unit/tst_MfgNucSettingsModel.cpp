#include "tests/support/Test.h"
#include "tests/unit/TabRig.h"

#include "manufacturing/MfgNucSettingsModel.h"

namespace
{

const QStringList reads{"zvtGetNUCType",
                        "zvtGetNUCSource",
                        "zvtGetNUCSetup",
                        "zvtGetNUCNumFrames",
                        "zvtGetTwinklerSetup",
                        "zvtGetNUCFlagConfig",
                        "zvtGetNUCUseFactoryBadPixels",
                        "zvtGetShowBadPixels",
                        "zvtGetDigitalOutputNUCEnabled",
                        "zvtGetVideoOutputNUCEnabled"};
const QStringList publishedSignals
    = changedSignals({"selectedNucTypeIndex", "selectedNucSourceIndex", "nucSetup", "nucNumFrames", "twinklerSetup",
                      "flagSetup", "useFactoryBadPixels", "showBadPixels", "nucDigitalData", "nucVideoOutput"});
const QStringList writesOfTheCamerasValues{"zvtSetNUCType 2",
                                           "zvtSetNUCSource 1",
                                           "zvtSetNUCSetup 0.5, 1.75, 100, 15000, true",
                                           "zvtSetNUCNumFrames 44",
                                           "zvtSetTwinklerSetup true, 70000, 321",
                                           "zvtSetNUCFlagConfig 55.5, 0.25, 12, 20000",
                                           "zvtSetNUCUseFactoryBadPixels true",
                                           "zvtSetShowBadPixels true",
                                           "zvtSetDigitalOutputNUCEnabled true",
                                           "zvtSetVideoOutputNUCEnabled true"};

/// Lets each read return a value that differs from those of a new model.
void scriptNuc(CameraRig &rig)
{
    rig.gate().script("zvtGetNUCType", 2);
    rig.gate().script("zvtGetNUCSource", 1);
    rig.gate().script("zvtGetNUCSetup", QVariantList{0.5, 1.75, 100, 15000, true});
    rig.gate().script("zvtGetNUCNumFrames", 44);
    rig.gate().script("zvtGetTwinklerSetup", QVariantList{true, 70000, 321});
    rig.gate().script("zvtGetNUCFlagConfig", QVariantList{55.5, 0.25, 12, 20000});
    for (const char *name : {"zvtGetNUCUseFactoryBadPixels", "zvtGetShowBadPixels", "zvtGetDigitalOutputNUCEnabled",
                             "zvtGetVideoOutputNUCEnabled"})
        rig.gate().script(name, true);
}

struct NucSettings : TabRig<MfgNucSettingsModel> {
    NucSettings() : TabRig(QStringLiteral("everything"))
    {
        scriptNuc(rig);
        start();
    }

    QStringList apply()
    {
        return callsOf([this] { model.applySettings(); });
    }
};

ModelUnderTest nucModel()
{
    auto model = modelOf<MfgNucSettingsModel>();
    model.prepare = scriptNuc;
    return model;
}

} // namespace

/// The factory's settings of corrections, which are applied all together.
class tst_MfgNucSettingsModel : public Test
{
    Q_OBJECT

private slots:
    void nothingIsKnownAtFirst();
    void readsInOrder();
    void publishesInOrder();
    void everyReadSignalsEveryGroup();
    void valuesAreThoseOfTheCamera();
    void widestNumbersAreRead();
    void failedGroupKeepsItsValues();
    void refreshDiscardsEdits();

    void editsAreStoredOnly_data();
    void editsAreStoredOnly();
    void applyWritesEverythingInOrder();
    void editOfOneValueWritesAllGroups();
    void numbersAreCut_data();
    void numbersAreCut();
    void refusedSettingsStay();
    void applyOnlyWrites();
    void appliedSettingsReachTheCamera();

    void visibilityReadsNothing();
    void failingReads();
    void heldReadsOutliveTheModel();
    void secondRefreshIsDropped();
    void readsWithoutACamera();
    void randomOperator();
};

void tst_MfgNucSettingsModel::nothingIsKnownAtFirst()
{
    NucSettings nuc;
    QCOMPARE(nuc.model.selectedNucTypeIndex(), -1);
    QCOMPARE(nuc.model.selectedNucSourceIndex(), -1);
    for (const char *flag : {"refreshing", "hasRefreshed", "visible", "detectBadPixels", "useTwinklerDetection",
                             "useFactoryBadPixels", "showBadPixels", "nucVideoOutput", "nucDigitalData"})
        QCOMPARE(nuc.model.property(flag), QVariant(false));
    for (const char *number : {"adMin", "adMax", "gainMin", "gainMax", "nucNumFrames", "twinklerNumFrames",
                               "twinklerDelta", "flagMaxTemp", "stableDelta", "stableCount", "timeout"})
        QCOMPARE(nuc.model.property(number).toDouble(), 0.0);
}

// Reading

void tst_MfgNucSettingsModel::readsInOrder()
{
    NucSettings nuc;
    QCOMPARE(nuc.read(), reads);
}

void tst_MfgNucSettingsModel::publishesInOrder()
{
    NucSettings nuc;
    nuc.model.refresh();
    QCOMPARE(nuc.log.take(), QStringList({"refreshingChanged", "hasRefreshedChanged"}));
    QVERIFY(nuc.model.refreshing() && !nuc.model.hasRefreshed());
    CameraRig::settle();
    QCOMPARE(nuc.log.take(), publishedSignals + QStringList({"hasRefreshedChanged", "refreshingChanged"}));
    QVERIFY(!nuc.model.refreshing() && nuc.model.hasRefreshed());
}

void tst_MfgNucSettingsModel::everyReadSignalsEveryGroup()
{
    NucSettings nuc;
    QCOMPARE(nuc.refresh(), publishedSignals);
    QCOMPARE(nuc.refresh(), publishedSignals);
}

void tst_MfgNucSettingsModel::valuesAreThoseOfTheCamera()
{
    NucSettings nuc;
    nuc.read();
    QCOMPARE(nuc.model.selectedNucTypeIndex(), 2);
    QCOMPARE(nuc.model.selectedNucSourceIndex(), 1);
    QCOMPARE(nuc.model.gainMin(), 0.5F);
    QCOMPARE(nuc.model.gainMax(), 1.75F);
    QCOMPARE(nuc.model.adMin(), 100);
    QCOMPARE(nuc.model.adMax(), 15000);
    QCOMPARE(nuc.model.nucNumFrames(), 44);
    QCOMPARE(nuc.model.twinklerNumFrames(), 70000);
    QCOMPARE(nuc.model.twinklerDelta(), 321);
    QCOMPARE(nuc.model.flagMaxTemp(), 55.5F);
    QCOMPARE(nuc.model.stableDelta(), 0.25F);
    QCOMPARE(nuc.model.stableCount(), 12U);
    QCOMPARE(nuc.model.timeout(), 20000U);
    QVERIFY(nuc.model.detectBadPixels() && nuc.model.useTwinklerDetection() && nuc.model.useFactoryBadPixels());
    QVERIFY(nuc.model.showBadPixels() && nuc.model.nucVideoOutput() && nuc.model.nucDigitalData());
}

// A number that is narrower in the camera than in the model leaves no bits of its neighbours or of an old value.
void tst_MfgNucSettingsModel::widestNumbersAreRead()
{
    NucSettings nuc;
    nuc.model.setNucNumFrames(0x12345678);
    nuc.model.setAdMin(0x12345678);
    nuc.model.setTwinklerDelta(-1);
    nuc.gate().script("zvtGetNUCNumFrames", 255);
    nuc.gate().script("zvtGetNUCSetup", QVariantList{0.5, 1.75, 65535, 65535, false});
    nuc.gate().script("zvtGetTwinklerSetup", QVariantList{false, 1048575, 65535});
    nuc.gate().script("zvtGetNUCFlagConfig", QVariantList{55.5, 0.25, 4294967295U, 4294967295U});
    nuc.read();
    QCOMPARE(nuc.model.nucNumFrames(), 255);
    QCOMPARE(nuc.model.adMin(), 65535);
    QCOMPARE(nuc.model.adMax(), 65535);
    QCOMPARE(nuc.model.twinklerNumFrames(), 1048575);
    QCOMPARE(nuc.model.twinklerDelta(), 65535);
    QCOMPARE(nuc.model.stableCount(), 4294967295U);
    QCOMPARE(nuc.model.timeout(), 4294967295U);
    QVERIFY(!nuc.model.detectBadPixels() && !nuc.model.useTwinklerDetection());
}

void tst_MfgNucSettingsModel::failedGroupKeepsItsValues()
{
    NucSettings nuc;
    nuc.read();
    nuc.gate().script("zvtGetNUCSetup", QVariantList{1, 2, 3, 4, false});
    nuc.gate().failNext("zvtGetNUCSetup");
    QStringList expected = publishedSignals;
    expected.removeOne("nucSetupChanged");
    QCOMPARE(nuc.refresh(), expected);
    QCOMPARE(nuc.model.adMin(), 100);
    QVERIFY(nuc.model.detectBadPixels());
}

void tst_MfgNucSettingsModel::refreshDiscardsEdits()
{
    NucSettings nuc;
    nuc.read();
    nuc.model.setSelectedNucTypeIndex(0);
    nuc.model.setAdMin(7);
    nuc.model.setTimeout(7);
    nuc.model.setNucDigitalData(false);
    nuc.read();
    QCOMPARE(nuc.model.selectedNucTypeIndex(), 2);
    QCOMPARE(nuc.model.adMin(), 100);
    QCOMPARE(nuc.model.timeout(), 20000U);
    QVERIFY(nuc.model.nucDigitalData());
}

// Editing

void tst_MfgNucSettingsModel::editsAreStoredOnly_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("signal");
    QTest::newRow("selectedNucTypeIndex") << QVariant(1) << "selectedNucTypeIndexChanged";
    QTest::newRow("selectedNucSourceIndex") << QVariant(0) << "selectedNucSourceIndexChanged";
    QTest::newRow("detectBadPixels") << QVariant(false) << "nucSetupChanged";
    QTest::newRow("adMin") << QVariant(5) << "nucSetupChanged";
    QTest::newRow("adMax") << QVariant(6) << "nucSetupChanged";
    QTest::newRow("gainMin") << QVariant(0.25F) << "nucSetupChanged";
    QTest::newRow("gainMax") << QVariant(2.0F) << "nucSetupChanged";
    QTest::newRow("nucNumFrames") << QVariant(300) << "nucNumFramesChanged";
    QTest::newRow("useTwinklerDetection") << QVariant(false) << "twinklerSetupChanged";
    QTest::newRow("twinklerNumFrames") << QVariant(8) << "twinklerSetupChanged";
    QTest::newRow("twinklerDelta") << QVariant(70000) << "twinklerSetupChanged";
    QTest::newRow("flagMaxTemp") << QVariant(40.5F) << "flagSetupChanged";
    QTest::newRow("stableDelta") << QVariant(5.0F) << "flagSetupChanged";
    QTest::newRow("stableCount") << QVariant(9U) << "flagSetupChanged";
    QTest::newRow("timeout") << QVariant(300000U) << "flagSetupChanged";
    QTest::newRow("useFactoryBadPixels") << QVariant(false) << "useFactoryBadPixelsChanged";
    QTest::newRow("showBadPixels") << QVariant(false) << "showBadPixelsChanged";
    QTest::newRow("nucVideoOutput") << QVariant(false) << "nucVideoOutputChanged";
    QTest::newRow("nucDigitalData") << QVariant(false) << "nucDigitalDataChanged";
}

void tst_MfgNucSettingsModel::editsAreStoredOnly()
{
    QFETCH(const QVariant, value);
    QFETCH(const QString, signal);
    const char *property = QTest::currentDataTag();
    NucSettings nuc;
    nuc.read();
    QCOMPARE(nuc.write(property, value), QStringList());
    QCOMPARE(nuc.log.take(), QStringList(signal));
    QCOMPARE(nuc.model.property(property), value);
    QCOMPARE(nuc.write(property, value), QStringList());
    QCOMPARE(nuc.log.take(), QStringList());
}

void tst_MfgNucSettingsModel::applyWritesEverythingInOrder()
{
    NucSettings nuc;
    nuc.read();
    QCOMPARE(nuc.apply(), writesOfTheCamerasValues);
    QCOMPARE(nuc.log.take(), QStringList());
    QCOMPARE(nuc.apply(), writesOfTheCamerasValues);
}

void tst_MfgNucSettingsModel::editOfOneValueWritesAllGroups()
{
    NucSettings nuc;
    nuc.read();
    nuc.model.setAdMin(5);
    QStringList expected = writesOfTheCamerasValues;
    expected[2] = QStringLiteral("zvtSetNUCSetup 0.5, 1.75, 5, 15000, true");
    QCOMPARE(nuc.apply(), expected);
    nuc.model.setNucVideoOutput(false);
    expected[9] = QStringLiteral("zvtSetVideoOutputNUCEnabled false");
    QCOMPARE(nuc.apply(), expected);
}

void tst_MfgNucSettingsModel::numbersAreCut_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("call");
    QTest::newRow("selectedNucTypeIndex") << QVariant(-1) << "zvtSetNUCType 255";
    QTest::newRow("selectedNucSourceIndex") << QVariant(256) << "zvtSetNUCSource 0";
    QTest::newRow("nucNumFrames") << QVariant(300) << "zvtSetNUCNumFrames 44";
    QTest::newRow("adMax") << QVariant(65536 + 6) << "zvtSetNUCSetup 0.5, 1.75, 100, 6, true";
    QTest::newRow("twinklerDelta") << QVariant(-1) << "zvtSetTwinklerSetup true, 70000, 65535";
    QTest::newRow("twinklerNumFrames") << QVariant(-1) << "zvtSetTwinklerSetup true, 4294967295, 321";
}

void tst_MfgNucSettingsModel::numbersAreCut()
{
    QFETCH(const QVariant, value);
    QFETCH(const QString, call);
    NucSettings nuc;
    nuc.read();
    nuc.model.setProperty(QTest::currentDataTag(), value);
    const QStringList calls = nuc.apply();
    QVERIFY2(calls.contains(call), qPrintable(calls.join(u'\n')));
    QCOMPARE(nuc.model.property(QTest::currentDataTag()), value);
}

void tst_MfgNucSettingsModel::refusedSettingsStay()
{
    NucSettings nuc;
    nuc.read();
    nuc.model.setAdMin(5);
    nuc.model.setTimeout(1);
    nuc.gate().failAlways("zvtSet*");
    QCOMPARE(nuc.apply().size(), writesOfTheCamerasValues.size());
    QCOMPARE(nuc.log.take(), QStringList());
    QCOMPARE(nuc.model.adMin(), 5);
    QCOMPARE(nuc.model.timeout(), 1U);
}

void tst_MfgNucSettingsModel::applyOnlyWrites() { walkApply(nucModel(), "applySettings"); }

void tst_MfgNucSettingsModel::appliedSettingsReachTheCamera()
{
    TabRig<MfgNucSettingsModel> nuc(QStringLiteral("everything"));
    nuc.start();
    nuc.read();
    nuc.model.setSelectedNucTypeIndex(nuc.model.selectedNucTypeIndex() == 0 ? 1 : 0);
    nuc.model.setAdMin(nuc.model.adMin() + 1);
    nuc.model.setNucNumFrames(nuc.model.nucNumFrames() + 1);
    nuc.model.setTwinklerDelta(nuc.model.twinklerDelta() + 1);
    nuc.model.setTimeout(nuc.model.timeout() + 1);
    nuc.model.setShowBadPixels(!nuc.model.showBadPixels());
    nuc.model.setNucDigitalData(!nuc.model.nucDigitalData());
    nuc.model.applySettings();
    MfgNucSettingsModel another(&nuc.root);
    another.refresh();
    CameraRig::settle();
    for (const char *property : {"selectedNucTypeIndex", "adMin", "nucNumFrames", "twinklerDelta", "timeout",
                                 "showBadPixels", "nucDigitalData", "nucVideoOutput", "gainMax"})
        QCOMPARE(another.property(property), nuc.model.property(property));
}

// The walkers

void tst_MfgNucSettingsModel::visibilityReadsNothing() { walkVisibility(nucModel()); }

void tst_MfgNucSettingsModel::failingReads() { walkFailingReads(nucModel()); }

void tst_MfgNucSettingsModel::heldReadsOutliveTheModel() { walkHeldDeletion(nucModel()); }

void tst_MfgNucSettingsModel::secondRefreshIsDropped() { walkSecondRefresh(nucModel()); }

void tst_MfgNucSettingsModel::readsWithoutACamera() { walkNoCamera(nucModel()); }

void tst_MfgNucSettingsModel::randomOperator() { walkRandomOperator(nucModel(), 93); }

ZVT_TEST(tst_MfgNucSettingsModel)
#include "tst_MfgNucSettingsModel.moc"
