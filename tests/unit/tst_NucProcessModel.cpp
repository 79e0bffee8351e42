#include "tests/support/Test.h"
#include "tests/unit/NucRig.h"

#include <QMetaEnum>
#include <QMetaProperty>

namespace
{

const QVariantMap defaults{
    {"adcHigh", 15000},
    {"adcLow", 1000},
    {"detectBadPixels", true},
    {"detectTwinklers", true},
    {"flagSetpointDeltaHigh", 15.0F},
    {"flagSetpointDeltaLow", 0.0F},
    {"flagSetpointTempHigh", 35.0F},
    {"flagSetpointTempLow", 20.0F},
    {"flagSetpointType", 0},
    {"gainMax", 1.5F},
    {"gainMin", 0.75F},
    {"nucSource", 0},
    {"nucType", 1},
    {"numFrames", 16},
    {"preset", 0},
    {"twinklerDelta", 200},
    {"twinklerNumFrames", 32},
    {"useFactoryBadPixels", true},
};

/// Gives the camera settings that all differ from the defaults.
void prepare(CameraRig &rig)
{
    rig.gate().script("zvtGetNUCType", 0);
    rig.gate().script("zvtGetNUCSource", 1);
    rig.gate().script("zvtGetNUCNumFrames", 64);
    rig.gate().script("zvtGetNUCFlagSetpointType", 1);
    rig.gate().script("zvtGetNUCFlagSetpointDeltas", QVariantList{2.5, 12.5});
    rig.gate().script("zvtGetNUCFlagSetpointTemps", QVariantList{22.5, 37.5});
    rig.gate().script("zvtGetNUCUseFactoryBadPixels", false);
    rig.gate().script("zvtGetNUCSetup", QVariantList{0.5, 1.75, 900, 14000, false});
    rig.gate().script("zvtGetTwinklerSetup", QVariantList{false, 100'000, 300});
    rig.gate().script("zvtGetFlagPresent", true);
    rig.gate().script("zvtGetFlagTemperatureControlled", true);
}

ModelUnderTest underTest()
{
    ModelUnderTest model = modelOf<NucProcessModel>();
    model.prepare = prepare;
    model.ownState << "preset";
    return model;
}

int number(const QObject &model, const char *property) { return model.property(property).toInt(); }

} // namespace

/// The settings of the model, without a run.
class tst_NucProcessModel : public Test
{
    Q_OBJECT

private slots:
    void defaultsAreShownBeforeTheFirstRead();
    void enumerationsHaveTheCamerasNumbers_data();
    void enumerationsHaveTheCamerasNumbers();
    void refreshReadsInOrder();
    void refreshSignalsInOrder();
    void refreshWithoutAChangeSignalsOnlyItself();
    void absentFlagIsNotAskedForItsTemperature();
    void flagThatCannotBeReadIsAbsent();
    void failedReadRestoresTheDefault();
    void presetIsNotRead();

    void settersStoreAndSignal_data();
    void settersStoreAndSignal();
    void settersCutTheirNumbers_data();
    void settersCutTheirNumbers();
    void onlyExistingPresetsAreTaken();
    void editedSettingIsReplacedByARead();

    void failingReads();
    void heldReadsOutliveTheModel();
    void secondRefreshIsDropped();
    void readsWithoutACamera();
    void randomOperator();
};

void tst_NucProcessModel::defaultsAreShownBeforeTheFirstRead()
{
    const NucRig nuc;
    for (auto it = defaults.cbegin(); it != defaults.cend(); ++it)
        QCOMPARE(nuc.model.property(qPrintable(it.key())).toFloat(), it.value().toFloat());
    for (const char *name : {"refreshing", "inProgress", "canNext", "hasFlag", "hasTempControlledFlag", "status",
                             "result", "totalBadPixels", "belowADMinSrc2"})
        QCOMPARE(number(nuc.model, name), 0);
    QCOMPARE(nuc.model.statusText(), QString());
    QCOMPARE(nuc.model.resultText(), QString());
    QVERIFY(!nuc.timer().isActive());
}

void tst_NucProcessModel::enumerationsHaveTheCamerasNumbers_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::newRow("ENUC_TYPE") << QStringList{"TYPE_ONE_POINT", "TYPE_TWO_POINT", "TYPE_UPDATE_OFFSET"};
    QTest::newRow("ENUC_SOURCE") << QStringList{"SOURCE_EXTERNAL", "SOURCE_INTERNAL"};
    QTest::newRow("ESETPOINT_TYPE") << QStringList{"SETPOINT_DELTA", "SETPOINT_FIXED"};
    QTest::newRow("ENUC_RESULT") << QStringList{"RESULT_OKAY", "RESULT_ABORT", "RESULT_ABORT_INVALID_PARAM",
                                                "RESULT_ABORT_FLAG_COOLER_RUNAWAY"};
    QTest::newRow("ENUC_STATUS") << QStringList{"STATUS_READY",
                                                "STATUS_SAVING_OLD_NUC",
                                                "STATUS_WAITING_FOR_FIRST_SOURCE_EXTERNAL",
                                                "STATUS_WAITING_FOR_FIRST_SOURCE_INTERNAL",
                                                "STATUS_COLLECTING_FIRST_SOURCE",
                                                "STATUS_DONE_COLLECTING_FIRST_SOURCE",
                                                "STATUS_WAITING_FOR_SECOND_SOURCE_EXTERNAL",
                                                "STATUS_WAITING_FOR_SECOND_SOURCE_INTERNAL",
                                                "STATUS_COLLECTING_SECOND_SOURCE",
                                                "STATUS_DONE_COLLECTING_SECOND_SOURCE",
                                                "STATUS_COLLECTING_TWINKLE_SOURCE",
                                                "STATUS_DONE_COLLECTING_TWINKLE_SOURCE",
                                                "STATUS_COMPUTING_COEFFICIENTS",
                                                "STATUS_STARTING",
                                                "STATUS_APPLYING_FACTORY_BAD_PIXELS"};
}

void tst_NucProcessModel::enumerationsHaveTheCamerasNumbers()
{
    QFETCH(const QStringList, names);
    const QMetaObject &meta = NucProcessModel::staticMetaObject;
    const QMetaEnum values = meta.enumerator(meta.indexOfEnumerator(QTest::currentDataTag()));
    QCOMPARE(values.keyCount(), names.size());
    for (int value = 0; value < names.size(); ++value)
        QCOMPARE(values.valueToKey(value), names.at(value).toLatin1());
}

void tst_NucProcessModel::refreshReadsInOrder()
{
    NucRig nuc;
    prepare(nuc.rig);
    const size_t mark = nuc.gate().mark();
    nuc.model.refresh();
    CameraRig::settle();
    QCOMPARE(
        nuc.rig.callsSince(mark),
        QStringList({"zvtGetNUCType", "zvtGetNUCSource", "zvtGetNUCNumFrames", "zvtGetNUCFlagSetpointType",
                     "zvtGetNUCFlagSetpointDeltas", "zvtGetNUCFlagSetpointTemps", "zvtGetNUCUseFactoryBadPixels",
                     "zvtGetNUCSetup", "zvtGetTwinklerSetup", "zvtGetFlagPresent", "zvtGetFlagTemperatureControlled"}));
    const QVariantMap read{
        {"adcHigh", 14000},
        {"adcLow", 900},
        {"detectBadPixels", false},
        {"detectTwinklers", false},
        {"flagSetpointDeltaHigh", 12.5F},
        {"flagSetpointDeltaLow", 2.5F},
        {"flagSetpointTempHigh", 37.5F},
        {"flagSetpointTempLow", 22.5F},
        {"flagSetpointType", 1},
        {"gainMax", 1.75F},
        {"gainMin", 0.5F},
        {"hasFlag", true},
        {"hasTempControlledFlag", true},
        {"nucSource", 1},
        {"nucType", 0},
        {"numFrames", 64},
        {"twinklerDelta", 300},
        {"twinklerNumFrames", 100'000},
        {"useFactoryBadPixels", false},
    };
    for (auto it = read.cbegin(); it != read.cend(); ++it)
        QCOMPARE(nuc.model.property(qPrintable(it.key())).toFloat(), it.value().toFloat());
}

void tst_NucProcessModel::refreshSignalsInOrder()
{
    NucRig nuc;
    prepare(nuc.rig);
    SignalLog log(&nuc.model);
    nuc.model.refresh();
    QVERIFY(nuc.model.refreshing());
    QCOMPARE(log.take(), QStringList("refreshingChanged"));
    CameraRig::settle();
    QCOMPARE(log.take(),
             QStringList({"hasFlagChanged",
                          "hasTempControlledFlagChanged",
                          "nucTypeChanged",
                          "nucSourceChanged",
                          "numFramesChanged",
                          "gainMinChanged",
                          "gainMaxChanged",
                          "adcLowChanged",
                          "adcHighChanged",
                          "detectBadPixelsChanged",
                          "detectTwinklersChanged",
                          "twinklerNumFramesChanged",
                          "twinklerDeltaChanged",
                          "flagSetpointTypeChanged",
                          "flagSetpointDeltaLowChanged",
                          "flagSetpointDeltaHighChanged",
                          "flagSetpointTempLowChanged",
                          "flagSetpointTempHighChanged",
                          "useFactoryBadPixelsChanged",
                          "refreshingChanged"}));
    QVERIFY(!nuc.model.refreshing());
}

void tst_NucProcessModel::refreshWithoutAChangeSignalsOnlyItself()
{
    NucRig nuc;
    prepare(nuc.rig);
    nuc.model.refresh();
    CameraRig::settle();
    SignalLog log(&nuc.model);
    nuc.model.refresh();
    CameraRig::settle();
    QCOMPARE(log.take(), QStringList({"refreshingChanged", "refreshingChanged"}));
}

void tst_NucProcessModel::absentFlagIsNotAskedForItsTemperature()
{
    NucRig nuc;
    prepare(nuc.rig);
    nuc.model.refresh();
    CameraRig::settle();
    nuc.gate().script("zvtGetFlagPresent", false);
    const size_t mark = nuc.gate().mark();
    nuc.model.refresh();
    CameraRig::settle();
    QVERIFY(!nuc.rig.callsSince(mark).contains("zvtGetFlagTemperatureControlled"));
    QVERIFY(!nuc.model.hasFlag());
    QVERIFY(!nuc.model.hasTempControlledFlag());
}

void tst_NucProcessModel::flagThatCannotBeReadIsAbsent()
{
    NucRig nuc;
    prepare(nuc.rig);
    nuc.model.refresh();
    CameraRig::settle();
    nuc.gate().failNext("zvtGetFlagTemperatureControlled");
    nuc.model.refresh();
    CameraRig::settle();
    QVERIFY(nuc.model.hasFlag());
    QVERIFY(!nuc.model.hasTempControlledFlag());
    nuc.gate().failNext("zvtGetFlagPresent");
    nuc.model.refresh();
    CameraRig::settle();
    QVERIFY(!nuc.model.hasFlag());
    QVERIFY(!nuc.model.hasTempControlledFlag());
}

void tst_NucProcessModel::failedReadRestoresTheDefault()
{
    NucRig nuc;
    prepare(nuc.rig);
    nuc.model.refresh();
    CameraRig::settle();
    QCOMPARE(nuc.model.adcLow(), 900);
    nuc.gate().failAlways("*");
    nuc.model.refresh();
    CameraRig::settle();
    for (auto it = defaults.cbegin(); it != defaults.cend(); ++it)
        QCOMPARE(nuc.model.property(qPrintable(it.key())).toFloat(), it.value().toFloat());
}

void tst_NucProcessModel::presetIsNotRead()
{
    NucRig nuc;
    nuc.model.setPreset(2);
    nuc.model.refresh();
    CameraRig::settle();
    QCOMPARE(nuc.model.preset(), 2);
}

void tst_NucProcessModel::settersStoreAndSignal_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("preset") << QVariant(3);
    QTest::newRow("nucType") << QVariant(2);
    QTest::newRow("nucSource") << QVariant(1);
    QTest::newRow("numFrames") << QVariant(255);
    QTest::newRow("gainMin") << QVariant(-1.5F);
    QTest::newRow("gainMax") << QVariant(1e9F);
    QTest::newRow("adcLow") << QVariant(65535);
    QTest::newRow("adcHigh") << QVariant(0);
    QTest::newRow("detectBadPixels") << QVariant(false);
    QTest::newRow("detectTwinklers") << QVariant(false);
    QTest::newRow("twinklerNumFrames") << QVariant(1'048'575);
    QTest::newRow("twinklerDelta") << QVariant(65535);
    QTest::newRow("flagSetpointType") << QVariant(1);
    QTest::newRow("flagSetpointDeltaLow") << QVariant(-300.0F);
    QTest::newRow("flagSetpointDeltaHigh") << QVariant(16.0F);
    QTest::newRow("flagSetpointTempLow") << QVariant(21.0F);
    QTest::newRow("flagSetpointTempHigh") << QVariant(36.0F);
    QTest::newRow("useFactoryBadPixels") << QVariant(false);
}

void tst_NucProcessModel::settersStoreAndSignal()
{
    QFETCH(const QVariant, value);
    NucRig nuc;
    SignalLog log(&nuc.model);
    const size_t mark = nuc.gate().mark();
    QVERIFY(nuc.model.setProperty(QTest::currentDataTag(), value));
    QCOMPARE(nuc.model.property(QTest::currentDataTag()).toFloat(), value.toFloat());
    QCOMPARE(log.take(), QStringList(QString::fromLatin1(QTest::currentDataTag()) + "Changed"));
    QVERIFY(nuc.model.setProperty(QTest::currentDataTag(), value));
    QCOMPARE(log.take(), QStringList());
    QCOMPARE(nuc.callsSince(mark), QStringList());
}

void tst_NucProcessModel::settersCutTheirNumbers_data()
{
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("stored");
    QTest::newRow("300 frames") << QByteArray("numFrames") << 300 << 44;
    QTest::newRow("256 frames") << QByteArray("numFrames") << 256 << 0;
    QTest::newRow("-1 frames") << QByteArray("numFrames") << -1 << 255;
    QTest::newRow("low limit") << QByteArray("adcLow") << 65537 << 1;
    QTest::newRow("high limit") << QByteArray("adcHigh") << -1 << 65535;
    QTest::newRow("twinklers") << QByteArray("twinklerDelta") << 70000 << 4464;
    QTest::newRow("all bits") << QByteArray("twinklerNumFrames") << -2 << -2;
}

void tst_NucProcessModel::settersCutTheirNumbers()
{
    QFETCH(const QByteArray, property);
    QFETCH(const int, value);
    QFETCH(const int, stored);
    const NucRig nuc;
    QVERIFY(nuc.model.setProperty(property, value));
    QCOMPARE(number(nuc.model, property), stored);
}

void tst_NucProcessModel::onlyExistingPresetsAreTaken()
{
    const NucRig nuc;
    nuc.model.setPreset(3);
    SignalLog log(&nuc.model);
    for (const int preset : {4, -1, 256, 259})
        nuc.model.setPreset(preset);
    QCOMPARE(nuc.model.preset(), 3);
    QCOMPARE(log.take(), QStringList());
}

void tst_NucProcessModel::editedSettingIsReplacedByARead()
{
    NucRig nuc;
    prepare(nuc.rig);
    nuc.model.setNumFrames(8);
    nuc.model.refresh();
    CameraRig::settle();
    QCOMPARE(nuc.model.numFrames(), 64);
}

void tst_NucProcessModel::failingReads()
{
    const auto restored = [](const QStringList &values) {
        return ReadException{values, "a failed read restores the default", values};
    };
    walkFailingReads(underTest(),
                     {{"zvtGetNUCType", restored({"nucType"})},
                      {"zvtGetNUCSource", restored({"nucSource"})},
                      {"zvtGetNUCNumFrames", restored({"numFrames"})},
                      {"zvtGetNUCFlagSetpointType", restored({"flagSetpointType"})},
                      {"zvtGetNUCFlagSetpointDeltas", restored({"flagSetpointDeltaHigh", "flagSetpointDeltaLow"})},
                      {"zvtGetNUCFlagSetpointTemps", restored({"flagSetpointTempHigh", "flagSetpointTempLow"})},
                      {"zvtGetNUCUseFactoryBadPixels", restored({"useFactoryBadPixels"})},
                      {"zvtGetNUCSetup", restored({"adcHigh", "adcLow", "detectBadPixels", "gainMax", "gainMin"})},
                      {"zvtGetTwinklerSetup", restored({"detectTwinklers", "twinklerDelta", "twinklerNumFrames"})},
                      {"zvtGetFlagPresent", restored({"hasFlag", "hasTempControlledFlag"})},
                      {"zvtGetFlagTemperatureControlled", restored({"hasTempControlledFlag"})}});
}

void tst_NucProcessModel::heldReadsOutliveTheModel() { walkHeldDeletion(underTest()); }

void tst_NucProcessModel::secondRefreshIsDropped() { walkSecondRefresh(underTest()); }

void tst_NucProcessModel::readsWithoutACamera() { walkNoCamera(underTest()); }

void tst_NucProcessModel::randomOperator() { walkRandomOperator(underTest(), 53); }

ZVT_TEST(tst_NucProcessModel)
#include "tst_NucProcessModel.moc"
