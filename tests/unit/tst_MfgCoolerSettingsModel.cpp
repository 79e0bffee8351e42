#include "tests/support/Test.h"
#include "tests/unit/TabRig.h"

#include "manufacturing/MfgCoolerSettingsModel.h"

#include "zvt/zvtsdk.h"

namespace
{

const QString flagRead = QStringLiteral("zvtGetFlagTemperature");
const QString detectorRead = QStringLiteral("zvtGetFPATemperature");
const QStringList publishedSignals = changedSignals(
    {"coolerType", "coolerEnabled", "actualTemp", "internalTemp", "kP", "kI", "kD", "kOff", "setpoint"});

/// The calls of a read, where `temperature` is the call that reads the actual temperature.
QStringList readCalls(const QString &temperature)
{
    return {"zvtMfgGetCoolerType",  "zvtMfgGetCoolerPowerEnabled", temperature,
            "zvtGetSCTemperatures", "zvtMfgGetCoolerSetup",        "zvtMfgGetCoolerSetpoint"};
}

/// Lets each read return a value that differs from those of a new model. The cooler cools the flag.
void scriptCooler(CameraRig &rig)
{
    rig.gate().script("zvtMfgGetCoolerType", 3);
    rig.gate().script("zvtMfgGetCoolerPowerEnabled", 1);
    rig.gate().script("zvtGetFPATemperature", 283.5);
    rig.gate().script("zvtGetFlagTemperature", 21.5);
    rig.gate().script("zvtGetSCTemperatures", QVariantList{31, 32, 33.5});
    rig.gate().script("zvtMfgGetCoolerSetup", QVariantList{1.5, 2.5, 3.5, 4.5});
    rig.gate().script("zvtMfgGetCoolerSetpoint", 12.25);
}

struct CoolerSettings : TabRig<MfgCoolerSettingsModel> {
    CoolerSettings() : TabRig(QStringLiteral("everything"))
    {
        scriptCooler(rig);
        start();
    }

    QStringList apply()
    {
        return callsOf([this] { model.applySettings(); });
    }
};

ModelUnderTest coolerModel()
{
    auto model = modelOf<MfgCoolerSettingsModel>();
    model.prepare = scriptCooler;
    return model;
}

} // namespace

/// The factory's settings of the cooler, which are applied all together.
class tst_MfgCoolerSettingsModel : public Test
{
    Q_OBJECT

private slots:
    void nothingIsKnownAtFirst();
    void readsInOrder_data();
    void readsInOrder();
    void publishesInOrder();
    void everyReadSignalsEveryValue();
    void valuesAreThoseOfTheCamera();
    void textIsTheCamerasName();
    void failedTypeKeepsTheTextAndMeansTheFlag();
    void missingTextIsEmpty();
    void refreshDiscardsEdits();

    void editsAreStoredOnly_data();
    void editsAreStoredOnly();
    void applyWritesTheTermsInTheOrderOfTheCamera();
    void editOfOneValueWritesAll();
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

void tst_MfgCoolerSettingsModel::nothingIsKnownAtFirst()
{
    CoolerSettings cooler;
    for (const char *flag : {"refreshing", "hasRefreshed", "visible", "coolerEnabled"})
        QCOMPARE(cooler.model.property(flag), QVariant(false));
    QCOMPARE(cooler.model.coolerType(), QString());
    for (const char *number : {"actualTemp", "internalTemp", "kP", "kOff", "kI", "kD", "setpoint"})
        QCOMPARE(cooler.model.property(number), QVariant(0.0F));
}

// Reading

void tst_MfgCoolerSettingsModel::readsInOrder_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("temperature");
    QTest::newRow("none") << 0 << flagRead;
    QTest::newRow("thermoelectric") << 1 << detectorRead;
    QTest::newRow("rotary Stirling") << 2 << flagRead;
    QTest::newRow("unknown") << 200 << flagRead;
}

void tst_MfgCoolerSettingsModel::readsInOrder()
{
    QFETCH(const int, type);
    QFETCH(const QString, temperature);
    CoolerSettings cooler;
    cooler.gate().script("zvtMfgGetCoolerType", type);
    QCOMPARE(cooler.read(), readCalls(temperature));
    QCOMPARE(cooler.model.actualTemp(), temperature == detectorRead ? 283.5F : 21.5F);
}

void tst_MfgCoolerSettingsModel::publishesInOrder()
{
    CoolerSettings cooler;
    cooler.model.refresh();
    QCOMPARE(cooler.log.take(), QStringList({"refreshingChanged", "hasRefreshedChanged"}));
    QVERIFY(cooler.model.refreshing() && !cooler.model.hasRefreshed());
    CameraRig::settle();
    QCOMPARE(cooler.log.take(), publishedSignals + QStringList({"hasRefreshedChanged", "refreshingChanged"}));
    QVERIFY(!cooler.model.refreshing() && cooler.model.hasRefreshed());
}

void tst_MfgCoolerSettingsModel::everyReadSignalsEveryValue()
{
    CoolerSettings cooler;
    QCOMPARE(cooler.refresh(), publishedSignals);
    QCOMPARE(cooler.refresh(), publishedSignals);
}

void tst_MfgCoolerSettingsModel::valuesAreThoseOfTheCamera()
{
    CoolerSettings cooler;
    cooler.read();
    QVERIFY(cooler.model.coolerEnabled());
    QCOMPARE(cooler.model.actualTemp(), 21.5F);
    QCOMPARE(cooler.model.internalTemp(), 33.5F);
    QCOMPARE(cooler.model.kP(), 1.5F);
    QCOMPARE(cooler.model.kI(), 2.5F);
    QCOMPARE(cooler.model.kD(), 3.5F);
    QCOMPARE(cooler.model.kOff(), 4.5F);
    QCOMPARE(cooler.model.setpoint(), 12.25F);
}

void tst_MfgCoolerSettingsModel::textIsTheCamerasName()
{
    CoolerSettings cooler;
    for (const int type : {0, 1, 2, 3}) {
        cooler.gate().script("zvtMfgGetCoolerType", type);
        cooler.read();
        QCOMPARE(cooler.model.coolerType(), QString::fromUtf8(zvtCoolerTypeText(static_cast<uint8_t>(type))));
        QVERIFY(!cooler.model.coolerType().isEmpty());
    }
}

void tst_MfgCoolerSettingsModel::failedTypeKeepsTheTextAndMeansTheFlag()
{
    CoolerSettings cooler;
    cooler.gate().script("zvtMfgGetCoolerType", 1);
    cooler.read();
    const QString text = cooler.model.coolerType();
    QCOMPARE(cooler.model.actualTemp(), 283.5F);
    cooler.gate().failNext("zvtMfgGetCoolerType");
    const size_t texts = emulator::Sdk::gate().mark();
    QCOMPARE(cooler.read(), readCalls(flagRead));
    QVERIFY(emulator::Sdk::gate().callsSince(texts).empty());
    QCOMPARE(cooler.model.coolerType(), text);
    QCOMPARE(cooler.model.actualTemp(), 21.5F);
    cooler.gate().failNext("zvtMfgGetCoolerType");
    QCOMPARE(cooler.refresh(), publishedSignals.mid(1));
}

void tst_MfgCoolerSettingsModel::missingTextIsEmpty()
{
    CoolerSettings cooler;
    cooler.read();
    cooler.gate().script("zvtMfgGetCoolerType", 200);
    cooler.read();
    QCOMPARE(cooler.model.coolerType(), QString());
    QVERIFY(cooler.model.hasRefreshed());
}

void tst_MfgCoolerSettingsModel::refreshDiscardsEdits()
{
    CoolerSettings cooler;
    cooler.read();
    cooler.model.setCoolerEnabled(false);
    cooler.model.setKD(-7);
    cooler.model.setSetpoint(-7);
    cooler.read();
    QVERIFY(cooler.model.coolerEnabled());
    QCOMPARE(cooler.model.kD(), 3.5F);
    QCOMPARE(cooler.model.setpoint(), 12.25F);
}

// Editing

void tst_MfgCoolerSettingsModel::editsAreStoredOnly_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("coolerEnabled") << QVariant(true);
    for (const char *number : {"kP", "kOff", "kI", "kD", "setpoint"})
        QTest::newRow(number) << QVariant(-12.5F);
}

void tst_MfgCoolerSettingsModel::editsAreStoredOnly()
{
    QFETCH(const QVariant, value);
    const char *property = QTest::currentDataTag();
    CoolerSettings cooler;
    QCOMPARE(cooler.write(property, value), QStringList());
    QCOMPARE(cooler.log.take(), QStringList(changedSignal(property)));
    QCOMPARE(cooler.model.property(property), value);
    QCOMPARE(cooler.write(property, value), QStringList());
    QCOMPARE(cooler.log.take(), QStringList());
}

void tst_MfgCoolerSettingsModel::applyWritesTheTermsInTheOrderOfTheCamera()
{
    CoolerSettings cooler;
    const QStringList expected{"zvtMfgSetCoolerPowerEnabled true", "zvtMfgSetCoolerSetup 1.5, 2.5, 3.5, 4.5",
                               "zvtMfgSetCoolerSetpoint 12.25"};
    cooler.read();
    QCOMPARE(cooler.apply(), expected);
    QCOMPARE(cooler.apply(), expected);
    QCOMPARE(cooler.log.take(), QStringList());
    cooler.model.setKP(10);
    cooler.model.setKI(20);
    cooler.model.setKD(30);
    cooler.model.setKOff(40);
    QCOMPARE(cooler.apply().at(1), QStringLiteral("zvtMfgSetCoolerSetup 10, 20, 30, 40"));
}

void tst_MfgCoolerSettingsModel::editOfOneValueWritesAll()
{
    CoolerSettings cooler;
    cooler.read();
    cooler.model.setCoolerEnabled(false);
    QCOMPARE(cooler.apply(),
             QStringList({"zvtMfgSetCoolerPowerEnabled false", "zvtMfgSetCoolerSetup 1.5, 2.5, 3.5, 4.5",
                          "zvtMfgSetCoolerSetpoint 12.25"}));
}

void tst_MfgCoolerSettingsModel::refusedSettingsStay()
{
    CoolerSettings cooler;
    cooler.read();
    cooler.model.setKI(1000);
    cooler.model.setSetpoint(1000);
    cooler.gate().failAlways("zvtMfgSet*");
    QCOMPARE(cooler.apply().size(), 3);
    QCOMPARE(cooler.log.take(), QStringList());
    QCOMPARE(cooler.model.kI(), 1000.0F);
    QCOMPARE(cooler.model.setpoint(), 1000.0F);
}

void tst_MfgCoolerSettingsModel::applyOnlyWrites() { walkApply(coolerModel(), "applySettings"); }

void tst_MfgCoolerSettingsModel::appliedSettingsReachTheCamera()
{
    TabRig<MfgCoolerSettingsModel> cooler(QStringLiteral("te-cooler"));
    cooler.start();
    cooler.read();
    cooler.model.setKP(cooler.model.kP() * 2);
    cooler.model.setKI(cooler.model.kI() * 2);
    cooler.model.setSetpoint(cooler.model.setpoint() + 1);
    cooler.model.applySettings();
    MfgCoolerSettingsModel another(&cooler.root);
    another.refresh();
    CameraRig::settle();
    for (const char *property : {"coolerType", "coolerEnabled", "kP", "kI", "kD", "kOff", "setpoint"})
        QCOMPARE(another.property(property), cooler.model.property(property));
}

// The walkers

void tst_MfgCoolerSettingsModel::visibilityReadsNothing() { walkVisibility(coolerModel()); }

void tst_MfgCoolerSettingsModel::failingReads() { walkFailingReads(coolerModel()); }

void tst_MfgCoolerSettingsModel::heldReadsOutliveTheModel() { walkHeldDeletion(coolerModel()); }

void tst_MfgCoolerSettingsModel::secondRefreshIsDropped() { walkSecondRefresh(coolerModel()); }

void tst_MfgCoolerSettingsModel::readsWithoutACamera() { walkNoCamera(coolerModel()); }

void tst_MfgCoolerSettingsModel::randomOperator() { walkRandomOperator(coolerModel(), 94); }

ZVT_TEST(tst_MfgCoolerSettingsModel)
#include "tst_MfgCoolerSettingsModel.moc"
