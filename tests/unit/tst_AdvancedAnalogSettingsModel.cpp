#include "tests/support/Test.h"
#include "tests/unit/TabRig.h"

#include "advanced/AdvancedAnalogSettingsModel.h"

namespace
{

const QStringList everyRead{"zvtGetGlobalOffsetVoltage", "zvtGetGlobalOffsetVoltageLimits", "zvtGetFPABias",
                            "zvtGetFPABiasLimits"};
const QStringList skimmingReads{"zvtGetSkimmingVoltage", "zvtGetSkimmingVoltageLimits", "zvtGetSkimmingEnabled"};
const QStringList everySignal{"globalOffsetValueChanged", "globalOffsetLimitsChanged", "detectorBiasValueChanged",
                              "detectorBiasLimitsChanged"};
const QStringList skimmingSignals{"skimmingValueChanged", "skimmingLimitsChanged", "skimmingEnabledChanged"};

const QList<const char *> limits{"globalOffsetLimitMin", "globalOffsetLimitMax", "detectorBiasLimitMin",
                                 "detectorBiasLimitMax", "skimmingLimitMin",     "skimmingLimitMax"};

/// Lets each read return a value that differs from those of a new model.
void scriptVoltages(emulator::Gate &gate)
{
    gate.script("zvtGetGlobalOffsetVoltage", 0.5);
    gate.script("zvtGetGlobalOffsetVoltageLimits", QVariantList{-4.5, 4.25});
    gate.script("zvtGetFPABias", 310.25);
    gate.script("zvtGetFPABiasLimits", QVariantList{10.5, 480.5});
    gate.script("zvtGetSkimmingVoltage", 1.75);
    gate.script("zvtGetSkimmingVoltageLimits", QVariantList{0.25, 3.125});
    gate.script("zvtGetSkimmingEnabled", true);
}

/// The analog settings below a root, with scripted values of the camera.
struct AnalogSettings : TabRig<AdvancedAnalogSettingsModel> {
    explicit AnalogSettings(const QString &profile = QStringLiteral("everything"))
        : TabRig(profile, &ZvtCameraModel::advancedAnalogSettingsModel)
    {
        scriptVoltages(gate());
        start();
    }
};

ModelUnderTest voltageModel()
{
    auto model = modelOf<AdvancedAnalogSettingsModel>();
    model.prepare = [](CameraRig &rig) { scriptVoltages(rig.gate()); };
    return model;
}

} // namespace

/// The voltages of the detector.
class tst_AdvancedAnalogSettingsModel : public Test
{
    Q_OBJECT

private slots:
    void nothingIsKnownAtFirst();
    void readsInOrder();
    void publishesInOrder();
    void unchangedValuesAreSignalled();
    void failedLimitsKeepBoth_data();
    void failedLimitsKeepBoth();
    void cameraWithoutSkimming();
    void lostSkimmingKeepsItsValues();

    void valuesAreWritten_data();
    void valuesAreWritten();
    void refusedValueStaysUntilTheNextRead_data() { valuesAreWritten_data(); }
    void refusedValueStaysUntilTheNextRead();
    void writeDuringAReadIsMadeAtOnce();
    void valueIsNotLimited();
    void visibleIsKept();

    void readsTheRealCamera();
    void modelWithoutARootIsHarmless();
    void failingReads();
    void heldReadsOutliveTheModel();
    void secondRefreshIsDropped();
    void readsWithoutACamera();
    void randomOperator();
};

void tst_AdvancedAnalogSettingsModel::nothingIsKnownAtFirst()
{
    AnalogSettings analog;
    const AdvancedAnalogSettingsModel &model = analog.model;
    QVERIFY(!model.refreshing() && !model.hasRefreshed() && !model.visible() && !model.skimmingEnabled());
    for (const char *value : limits + QList<const char *>{"globalOffsetValue", "detectorBiasValue", "skimmingValue"})
        QCOMPARE(model.property(value).toFloat(), 0.0F);
}

// Reading

void tst_AdvancedAnalogSettingsModel::readsInOrder()
{
    AnalogSettings analog;
    QCOMPARE(analog.read(), everyRead + skimmingReads);
}

void tst_AdvancedAnalogSettingsModel::publishesInOrder()
{
    AnalogSettings analog;
    const AdvancedAnalogSettingsModel &model = analog.model;
    analog.model.refresh();
    QCOMPARE(analog.log.take(), QStringList({"refreshingChanged", "hasRefreshedChanged"}));
    CameraRig::settle();
    QCOMPARE(analog.log.take(),
             everySignal + skimmingSignals + QStringList({"hasRefreshedChanged", "refreshingChanged"}));
    QCOMPARE(model.globalOffsetValue(), 0.5F);
    QCOMPARE(model.globalOffsetLimitMin(), -4.5F);
    QCOMPARE(model.globalOffsetLimitMax(), 4.25F);
    QCOMPARE(model.detectorBiasValue(), 310.25F);
    QCOMPARE(model.detectorBiasLimitMin(), 10.5F);
    QCOMPARE(model.detectorBiasLimitMax(), 480.5F);
    QCOMPARE(model.skimmingValue(), 1.75F);
    QCOMPARE(model.skimmingLimitMin(), 0.25F);
    QCOMPARE(model.skimmingLimitMax(), 3.125F);
    QVERIFY(model.skimmingEnabled());
}

void tst_AdvancedAnalogSettingsModel::unchangedValuesAreSignalled()
{
    AnalogSettings analog;
    analog.read();
    QCOMPARE(analog.refresh(), everySignal + skimmingSignals);
}

void tst_AdvancedAnalogSettingsModel::failedLimitsKeepBoth_data()
{
    QTest::addColumn<QString>("signalled");
    QTest::addColumn<int>("first");
    QTest::newRow("zvtGetGlobalOffsetVoltageLimits") << "globalOffsetLimitsChanged" << 0;
    QTest::newRow("zvtGetFPABiasLimits") << "detectorBiasLimitsChanged" << 2;
    QTest::newRow("zvtGetSkimmingVoltageLimits") << "skimmingLimitsChanged" << 4;
}

void tst_AdvancedAnalogSettingsModel::failedLimitsKeepBoth()
{
    QFETCH(const QString, signalled);
    QFETCH(const int, first);
    const char *call = QTest::currentDataTag();
    AnalogSettings analog;
    analog.gate().failNext(call);
    analog.read();
    for (int limit = 0; limit < limits.size(); ++limit)
        QCOMPARE(analog.model.property(limits.at(limit)).toFloat() == 0.0F, limit == first || limit == first + 1);
    analog.read();
    const QVariant minimum = analog.model.property(limits.at(first));
    const QVariant maximum = analog.model.property(limits.at(first + 1));
    analog.gate().script(call, QVariantList{-1.0, 1.0});
    analog.gate().failNext(call);
    QStringList expected = everySignal + skimmingSignals;
    expected.removeOne(signalled);
    QCOMPARE(analog.refresh(), expected);
    QCOMPARE(analog.model.property(limits.at(first)), minimum);
    QCOMPARE(analog.model.property(limits.at(first + 1)), maximum);
    analog.read();
    QCOMPARE(analog.model.property(limits.at(first)).toFloat(), -1.0F);
    QCOMPARE(analog.model.property(limits.at(first + 1)).toFloat(), 1.0F);
}

void tst_AdvancedAnalogSettingsModel::cameraWithoutSkimming()
{
    AnalogSettings analog;
    analog.setEquipment("hasSkimming", false);
    QCOMPARE(analog.read(), everyRead);
    QVERIFY(analog.model.hasRefreshed());
    QCOMPARE(analog.refresh(), everySignal);
    QVERIFY(!analog.model.skimmingEnabled());
    QCOMPARE(analog.model.skimmingLimitMax(), 0.0F);
}

void tst_AdvancedAnalogSettingsModel::lostSkimmingKeepsItsValues()
{
    AnalogSettings analog;
    analog.read();
    analog.setEquipment("hasSkimming", false);
    analog.gate().script("zvtGetSkimmingVoltage", 2.5);
    analog.gate().script("zvtGetSkimmingVoltageLimits", QVariantList{0.0, 0.0});
    analog.gate().script("zvtGetSkimmingEnabled", false);
    QCOMPARE(analog.refresh(), everySignal);
    QCOMPARE(analog.model.skimmingValue(), 1.75F);
    QCOMPARE(analog.model.skimmingLimitMin(), 0.25F);
    QCOMPARE(analog.model.skimmingLimitMax(), 3.125F);
    QVERIFY(analog.model.skimmingEnabled());
}

// Writes

void tst_AdvancedAnalogSettingsModel::valuesAreWritten_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("call");
    QTest::newRow("globalOffsetValue") << QVariant(-2.25F) << "zvtSetGlobalOffsetVoltage -2.25";
    QTest::newRow("detectorBiasValue") << QVariant(120.5F) << "zvtSetFPABias 120.5";
    QTest::newRow("skimmingValue") << QVariant(0.5F) << "zvtSetSkimmingVoltage 0.5";
    QTest::newRow("skimmingEnabled") << QVariant(false) << "zvtSetSkimmingEnabled false";
}

void tst_AdvancedAnalogSettingsModel::valuesAreWritten()
{
    QFETCH(const QVariant, value);
    QFETCH(const QString, call);
    const char *property = QTest::currentDataTag();
    AnalogSettings analog;
    analog.read();
    QCOMPARE(analog.write(property, value), QStringList(call));
    QCOMPARE(analog.model.property(property), value);
    QCOMPARE(analog.log.take(), QStringList(changedSignal(property)));
    QCOMPARE(analog.write(property, value), QStringList());
    QCOMPARE(analog.log.take(), QStringList());
}

void tst_AdvancedAnalogSettingsModel::refusedValueStaysUntilTheNextRead()
{
    QFETCH(const QVariant, value);
    QFETCH(const QString, call);
    const char *property = QTest::currentDataTag();
    AnalogSettings analog;
    analog.read();
    const QVariant before = analog.model.property(property);
    analog.gate().failAlways(call.section(u' ', 0, 0).toStdString());
    QCOMPARE(analog.write(property, value), QStringList(call));
    QCOMPARE(analog.model.property(property), value);
    QCOMPARE(analog.log.take(), QStringList(changedSignal(property)));
    analog.read();
    QCOMPARE(analog.model.property(property), before);
}

void tst_AdvancedAnalogSettingsModel::writeDuringAReadIsMadeAtOnce()
{
    AnalogSettings analog;
    analog.gate().hold("zvtGetSkimmingEnabled");
    analog.model.refresh();
    QVERIFY(analog.gate().waitHeld("zvtGetSkimmingEnabled"));
    QCOMPARE(analog.write("detectorBiasValue", 100.0F), QStringList("zvtSetFPABias 100"));
    QCOMPARE(analog.model.detectorBiasValue(), 100.0F);
    analog.gate().release("*");
    CameraRig::settle();
    QCOMPARE(analog.model.detectorBiasValue(), 310.25F); // The read had begun before.
}

// The page limits the numbers, and the camera refuses others.
void tst_AdvancedAnalogSettingsModel::valueIsNotLimited()
{
    const CameraRig rig;
    ZvtCameraModel root(rig.controller(), nullptr);
    AdvancedAnalogSettingsModel &model = *root.advancedAnalogSettingsModel();
    model.refresh();
    CameraRig::settle();
    model.setGlobalOffsetValue(5.5F);
    QCOMPARE(model.globalOffsetValue(), 5.5F);
    model.refresh();
    CameraRig::settle();
    QCOMPARE(model.globalOffsetValue(), 0.0F);
}

void tst_AdvancedAnalogSettingsModel::visibleIsKept()
{
    AnalogSettings analog;
    QCOMPARE(analog.write("visible", true), QStringList());
    QVERIFY(analog.model.visible());
    QCOMPARE(analog.log.take(), QStringList("visibleChanged"));
    QCOMPARE(analog.write("visible", true), QStringList());
    QCOMPARE(analog.log.take(), QStringList());
    CameraRig::settle();
    QVERIFY(!analog.model.hasRefreshed());
}

// The real answers

void tst_AdvancedAnalogSettingsModel::readsTheRealCamera()
{
    const CameraRig rig;
    ZvtCameraModel root(rig.controller(), nullptr);
    AdvancedAnalogSettingsModel &model = *root.advancedAnalogSettingsModel();
    model.refresh();
    CameraRig::settle();
    QCOMPARE(model.globalOffsetLimitMin(), -5.0F);
    QCOMPARE(model.globalOffsetLimitMax(), 5.0F);
    QCOMPARE(model.detectorBiasValue(), 250.0F);
    QCOMPARE(model.detectorBiasLimitMax(), 500.0F);
    QCOMPARE(model.skimmingValue(), 1.2F);
    QCOMPARE(model.skimmingLimitMax(), 3.3F);
    QVERIFY(!model.skimmingEnabled());
    model.setGlobalOffsetValue(1.5F);
    model.setDetectorBiasValue(300.0F);
    model.setSkimmingValue(2.0F);
    model.setSkimmingEnabled(true);
    AdvancedAnalogSettingsModel other(&root);
    other.refresh();
    CameraRig::settle();
    QCOMPARE(other.globalOffsetValue(), 1.5F);
    QCOMPARE(other.detectorBiasValue(), 300.0F);
    QCOMPARE(other.skimmingValue(), 2.0F);
    QVERIFY(other.skimmingEnabled());
}

void tst_AdvancedAnalogSettingsModel::modelWithoutARootIsHarmless()
{
    AdvancedAnalogSettingsModel orphan(nullptr);
    orphan.refresh();
    CameraRig::settle();
    QVERIFY(orphan.hasRefreshed());
    orphan.setDetectorBiasValue(5.0F);
    QCOMPARE(orphan.detectorBiasValue(), 5.0F);
}

// The walkers

void tst_AdvancedAnalogSettingsModel::failingReads() { walkFailingReads(voltageModel()); }

void tst_AdvancedAnalogSettingsModel::heldReadsOutliveTheModel() { walkHeldDeletion(voltageModel()); }

void tst_AdvancedAnalogSettingsModel::secondRefreshIsDropped() { walkSecondRefresh(voltageModel()); }

void tst_AdvancedAnalogSettingsModel::readsWithoutACamera() { walkNoCamera(modelOf<AdvancedAnalogSettingsModel>()); }

void tst_AdvancedAnalogSettingsModel::randomOperator()
{
    walkRandomOperator(modelOf<AdvancedAnalogSettingsModel>(), 82);
}

ZVT_TEST(tst_AdvancedAnalogSettingsModel)
#include "tst_AdvancedAnalogSettingsModel.moc"
