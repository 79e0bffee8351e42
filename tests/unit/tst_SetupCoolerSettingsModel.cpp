#include "tests/support/Test.h"
#include "tests/unit/PollRig.h"

#include "setup/SetupCoolerSettingsModel.h"

#include "zvt/zvtsdk.h"

namespace
{

const QString flagRead = QStringLiteral("zvtGetFlagTemperature");
const QString detectorRead = QStringLiteral("zvtGetFPATemperature");

/// Lets each read return a value that differs from those of a new model. The cooler cools the flag.
void scriptCooler(CameraRig &rig)
{
    rig.gate().script("zvtMfgGetCoolerType", 3);
    rig.gate().script("zvtMfgGetCoolerPowerEnabled", 1);
    rig.gate().script("zvtGetFPATemperature", 283.5);
    rig.gate().script("zvtGetFlagTemperature", 21.5);
    rig.gate().script("zvtGetSCTemperatures", QVariantList{31, 32, 33.5});
    rig.gate().script("zvtMfgGetCoolerSetpoint", 12.25);
}

/// The cooler below a root, with helpers for tests.
struct CoolerSettings : PollRig {
    explicit CoolerSettings(bool connected = true)
        : PollRig(connected), model(*root.setupCoolerSettingsModel()), log(&model)
    {
        scriptCooler(rig);
    }

    QStringList refresh()
    {
        return callsOf([this] { model.refresh(); });
    }
    QStringList poll() { return tick(model); }

    SetupCoolerSettingsModel &model;
    SignalLog log;
};

/// The calls of a read, where `temperature` is the call that reads the actual temperature.
QStringList readCalls(const QString &temperature)
{
    return {"zvtMfgGetCoolerType", "zvtMfgGetCoolerPowerEnabled", temperature, "zvtGetSCTemperatures",
            "zvtMfgGetCoolerSetpoint"};
}

ModelUnderTest coolerModel()
{
    auto model = modelOf<SetupCoolerSettingsModel>();
    model.prepare = scriptCooler;
    return model;
}

} // namespace

/// The settings of the cooler: reads, polls, and the two settings that are applied together.
class tst_SetupCoolerSettingsModel : public Test
{
    Q_OBJECT

private slots:
    void cleanup() { emulator::Sdk::gate().script("zvtCoolerTypeText", {}); }

    void nothingIsKnownAtFirst();
    void readsInOrder_data();
    void readsInOrder();
    void publishesInOrder();
    void everyReadSignalsEveryValue();
    void textIsTheCamerasName();
    void failedTypeIsShownAndMeansTheFlag();
    void missingTextIsEmpty();
    void refreshDiscardsEdits();

    void pollReadsTwoTemperatures();
    void pollGoesByTheText_data();
    void pollGoesByTheText();
    void typeWithoutATextMeansTheFlag();
    void failedPollKeepsTheTemperature();
    void pollsMayOverlap();
    void newestPollIsPublished();
    void pollEndsAfterTheSectionIsClosed();
    void pollOutlivesTheModel();

    void editsAreStoredOnly();
    void applyWritesPowerThenSetpoint();
    void refusedSettingsStay();

    void visibilityReadsNothing();
    void rootRefreshesAVisibleCoolerOnly();

    void failingReads();
    void heldReadsOutliveTheModel();
    void secondRefreshIsDropped();
    void readsWithoutACamera();
    void randomOperator();
};

void tst_SetupCoolerSettingsModel::nothingIsKnownAtFirst()
{
    CoolerSettings cooler;
    QVERIFY(!cooler.model.refreshing());
    QVERIFY(!cooler.model.hasRefreshed());
    QVERIFY(!cooler.model.visible());
    QCOMPARE(cooler.model.coolerType(), QStringLiteral("N/A"));
    QVERIFY(!cooler.model.coolerEnabled());
    QCOMPARE(cooler.model.actualTemp(), 0.0F);
    QCOMPARE(cooler.model.internalTemp(), 0.0F);
    QCOMPARE(cooler.model.setpoint(), 0.0F);
    QVERIFY(!PollRig::timerOf(cooler.model)->isActive());
    QCOMPARE(PollRig::timerOf(SetupCoolerSettingsModel(nullptr))->interval(), 1000);
}

// Reading

void tst_SetupCoolerSettingsModel::readsInOrder_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("temperature");
    QTest::newRow("none") << 0 << flagRead;
    QTest::newRow("thermoelectric") << 1 << detectorRead;
    QTest::newRow("rotary Stirling") << 2 << flagRead;
    QTest::newRow("unknown") << 200 << flagRead;
}

void tst_SetupCoolerSettingsModel::readsInOrder()
{
    QFETCH(const int, type);
    QFETCH(const QString, temperature);
    CoolerSettings cooler;
    cooler.gate().script("zvtMfgGetCoolerType", type);
    const size_t texts = emulator::Sdk::gate().mark();
    const size_t mark = cooler.gate().mark();
    QCOMPARE(cooler.refresh(), readCalls(temperature));
    QVERIFY(cooler.allOnPool(mark));
    QStringList asked;
    for (const auto &call : emulator::Sdk::gate().callsSince(texts))
        asked << QString::fromStdString(call.name + ' ' + call.arguments);
    QCOMPARE(asked, QStringList(QStringLiteral("zvtCoolerTypeText %1").arg(type)));
    QCOMPARE(cooler.model.actualTemp(), temperature == detectorRead ? 283.5F : 21.5F);
    QCOMPARE(cooler.model.internalTemp(), 33.5F);
    QCOMPARE(cooler.model.setpoint(), 12.25F);
    QVERIFY(cooler.model.coolerEnabled());
}

void tst_SetupCoolerSettingsModel::publishesInOrder()
{
    CoolerSettings cooler;
    cooler.model.refresh();
    QCOMPARE(cooler.log.take(), QStringList({"refreshingChanged", "hasRefreshedChanged"}));
    QVERIFY(cooler.model.refreshing());
    QVERIFY(!cooler.model.hasRefreshed());
    CameraRig::settle();
    QCOMPARE(cooler.log.take(),
             QStringList({"coolerTypeChanged", "coolerEnabledChanged", "actualTempChanged", "internalTempChanged",
                          "setpointChanged", "hasRefreshedChanged", "refreshingChanged"}));
    QVERIFY(cooler.model.hasRefreshed());
    QVERIFY(!cooler.model.refreshing());
}

void tst_SetupCoolerSettingsModel::everyReadSignalsEveryValue()
{
    CoolerSettings cooler;
    cooler.refresh();
    const QStringList first = cooler.log.take();
    cooler.refresh();
    QCOMPARE(cooler.log.take(), first);
}

void tst_SetupCoolerSettingsModel::textIsTheCamerasName()
{
    CoolerSettings cooler;
    for (const int type : {0, 1, 2, 3}) {
        cooler.gate().script("zvtMfgGetCoolerType", type);
        cooler.refresh();
        QCOMPARE(cooler.model.coolerType(), QString::fromUtf8(zvtCoolerTypeText(static_cast<uint8_t>(type))));
        QVERIFY(!cooler.model.coolerType().isEmpty());
    }
}

void tst_SetupCoolerSettingsModel::failedTypeIsShownAndMeansTheFlag()
{
    CoolerSettings cooler;
    cooler.gate().script("zvtMfgGetCoolerType", 1);
    cooler.refresh();
    QCOMPARE(cooler.model.actualTemp(), 283.5F);
    cooler.gate().failNext("zvtMfgGetCoolerType");
    const size_t texts = emulator::Sdk::gate().mark();
    QCOMPARE(cooler.refresh(), readCalls(flagRead));
    QVERIFY(emulator::Sdk::gate().callsSince(texts).empty());
    QCOMPARE(cooler.model.coolerType(), QStringLiteral("N/A"));
    QCOMPARE(cooler.model.actualTemp(), 21.5F);
}

void tst_SetupCoolerSettingsModel::missingTextIsEmpty()
{
    CoolerSettings cooler;
    cooler.gate().script("zvtMfgGetCoolerType", 200);
    cooler.refresh();
    QCOMPARE(cooler.model.coolerType(), QString());
    QVERIFY(cooler.model.hasRefreshed());
}

void tst_SetupCoolerSettingsModel::refreshDiscardsEdits()
{
    CoolerSettings cooler;
    cooler.refresh();
    cooler.model.setSetpoint(-7);
    cooler.model.setCoolerEnabled(false);
    cooler.refresh();
    QCOMPARE(cooler.model.setpoint(), 12.25F);
    QVERIFY(cooler.model.coolerEnabled());
}

// The poll

void tst_SetupCoolerSettingsModel::pollReadsTwoTemperatures()
{
    CoolerSettings cooler;
    const size_t mark = cooler.gate().mark();
    QCOMPARE(cooler.poll(), QStringList({flagRead, "zvtGetSCTemperatures"}));
    QVERIFY(cooler.allOnPool(mark));
    QCOMPARE(cooler.log.take(), QStringList({"actualTempChanged", "internalTempChanged"}));
    QCOMPARE(cooler.model.actualTemp(), 21.5F);
    QCOMPARE(cooler.model.internalTemp(), 33.5F);
    QVERIFY(!cooler.model.hasRefreshed());
    // The same temperatures are signalled again.
    cooler.poll();
    QCOMPARE(cooler.log.take(), QStringList({"actualTempChanged", "internalTempChanged"}));
}

void tst_SetupCoolerSettingsModel::pollGoesByTheText_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("textOfTypeOne"); // Empty: as it is.
    QTest::addColumn<QString>("temperature");
    QTest::newRow("thermoelectric") << 1 << "" << detectorRead;
    QTest::newRow("another") << 2 << "" << flagRead;
    QTest::newRow("unknown") << 200 << "" << flagRead;
    QTest::newRow("upper and lower case differ") << 1 << "thermoelectric" << flagRead;
    QTest::newRow("another with the same text") << 2 << "Rotary Stirling" << detectorRead;
}

void tst_SetupCoolerSettingsModel::pollGoesByTheText()
{
    QFETCH(const int, type);
    QFETCH(const QString, textOfTypeOne);
    QFETCH(const QString, temperature);
    CoolerSettings cooler;
    cooler.gate().script("zvtMfgGetCoolerType", type);
    cooler.refresh();
    if (!textOfTypeOne.isEmpty())
        emulator::Sdk::gate().script("zvtCoolerTypeText", textOfTypeOne);
    QCOMPARE(cooler.poll(), QStringList({temperature, "zvtGetSCTemperatures"}));
}

// Neither text exists, which must not count as equal.
void tst_SetupCoolerSettingsModel::typeWithoutATextMeansTheFlag()
{
    CoolerSettings cooler;
    emulator::Sdk::gate().failAlways("zvtCoolerTypeText");
    cooler.gate().script("zvtMfgGetCoolerType", 1);
    const QStringList read = cooler.refresh();
    const QStringList poll = cooler.poll();
    emulator::Sdk::gate().failNever();
    QCOMPARE(read, readCalls(detectorRead));
    QVERIFY(cooler.model.coolerType().isNull());
    QCOMPARE(poll, QStringList({flagRead, "zvtGetSCTemperatures"}));
}

void tst_SetupCoolerSettingsModel::failedPollKeepsTheTemperature()
{
    CoolerSettings cooler;
    cooler.refresh();
    cooler.log.take();
    cooler.gate().script("zvtGetFlagTemperature", 22.5);
    cooler.gate().failNext("zvtGetSCTemperatures");
    cooler.poll();
    QCOMPARE(cooler.log.take(), QStringList("actualTempChanged"));
    QCOMPARE(cooler.model.actualTemp(), 22.5F);
    QCOMPARE(cooler.model.internalTemp(), 33.5F);
    cooler.gate().failNext("zvtGetFlagTemperature");
    cooler.poll();
    QCOMPARE(cooler.log.take(), QStringList("internalTempChanged"));
    QCOMPARE(cooler.model.actualTemp(), 22.5F);
}

void tst_SetupCoolerSettingsModel::pollsMayOverlap()
{
    CoolerSettings cooler;
    cooler.gate().hold("zvtGetFlagTemperature");
    const size_t mark = cooler.gate().mark();
    cooler.fire(cooler.model);
    cooler.fire(cooler.model);
    QVERIFY(cooler.gate().waitHeld("zvtGetFlagTemperature", 2));
    QVERIFY(!cooler.model.refreshing());
    cooler.gate().release("*");
    CameraRig::settle();
    QCOMPARE(cooler.rig.callsSince(mark).count(flagRead), 2);
}

void tst_SetupCoolerSettingsModel::newestPollIsPublished()
{
    CoolerSettings cooler;
    cooler.gate().hold("zvtGetFlagTemperature");
    cooler.fire(cooler.model);
    cooler.fire(cooler.model);
    QVERIFY(cooler.gate().waitHeld("zvtGetFlagTemperature", 2));
    cooler.gate().release("*");
    CameraRig::settle();
    QCOMPARE(cooler.log.take(), QStringList({"actualTempChanged", "internalTempChanged"}));
}

void tst_SetupCoolerSettingsModel::pollEndsAfterTheSectionIsClosed()
{
    CoolerSettings cooler;
    cooler.root.setupTabModel()->setVisible(true);
    cooler.model.setVisible(true);
    cooler.gate().hold("zvtGetSCTemperatures");
    cooler.fire(cooler.model);
    QVERIFY(cooler.gate().waitHeld("zvtGetSCTemperatures"));
    cooler.model.setVisible(false);
    QVERIFY(!PollRig::timerOf(cooler.model)->isActive());
    cooler.gate().release("*");
    CameraRig::settle();
    QCOMPARE(cooler.model.internalTemp(), 33.5F);
}

void tst_SetupCoolerSettingsModel::pollOutlivesTheModel()
{
    CameraRig rig;
    auto root = std::make_unique<ZvtCameraModel>(rig.controller(), nullptr);
    CameraRig::settle();
    rig.gate().hold("zvtGetSCTemperatures");
    PollRig::fire(*root->setupCoolerSettingsModel());
    QVERIFY(rig.gate().waitHeld("zvtGetSCTemperatures"));
    root.reset();
    rig.gate().release("*");
    CameraRig::settle();
}

// The settings

void tst_SetupCoolerSettingsModel::editsAreStoredOnly()
{
    CoolerSettings cooler;
    const QStringList calls = cooler.callsOf([&] {
        cooler.model.setCoolerEnabled(true);
        cooler.model.setCoolerEnabled(true);
        cooler.model.setSetpoint(-12.5F);
        cooler.model.setSetpoint(-12.5F);
    });
    QCOMPARE(calls, QStringList());
    QCOMPARE(cooler.log.take(), QStringList({"coolerEnabledChanged", "setpointChanged"}));
    QVERIFY(cooler.model.coolerEnabled());
    QCOMPARE(cooler.model.setpoint(), -12.5F);
}

void tst_SetupCoolerSettingsModel::applyWritesPowerThenSetpoint()
{
    CoolerSettings cooler;
    cooler.refresh();
    cooler.model.setCoolerEnabled(false);
    cooler.model.setSetpoint(-12.5F);
    cooler.log.take();
    const size_t mark = cooler.gate().mark();
    cooler.model.applySettings();
    QCOMPARE(cooler.guiCalls(mark),
             QStringList({"zvtMfgSetCoolerPowerEnabled false", "zvtMfgSetCoolerSetpoint -12.5"}));
    // Both are written also if nothing has changed.
    const size_t again = cooler.gate().mark();
    cooler.model.applySettings();
    QCOMPARE(cooler.guiCalls(again),
             QStringList({"zvtMfgSetCoolerPowerEnabled false", "zvtMfgSetCoolerSetpoint -12.5"}));
    QCOMPARE(cooler.log.take(), QStringList());
}

void tst_SetupCoolerSettingsModel::refusedSettingsStay()
{
    CoolerSettings cooler;
    cooler.refresh();
    cooler.model.setCoolerEnabled(false);
    cooler.model.setSetpoint(1000);
    cooler.gate().failAlways("zvtMfgSetCoolerPowerEnabled");
    cooler.gate().failAlways("zvtMfgSetCoolerSetpoint");
    const size_t mark = cooler.gate().mark();
    cooler.model.applySettings();
    QCOMPARE(cooler.guiCalls(mark).size(), 2);
    QCOMPARE(cooler.model.setpoint(), 1000.0F);
    QVERIFY(!cooler.model.coolerEnabled());
}

// Visibility

void tst_SetupCoolerSettingsModel::visibilityReadsNothing()
{
    CoolerSettings cooler;
    QCOMPARE(cooler.callsOf([&] { cooler.model.setVisible(true); }), QStringList());
    QVERIFY(cooler.model.visible());
    cooler.model.setVisible(true);
    QCOMPARE(cooler.log.take(), QStringList("visibleChanged"));
}

void tst_SetupCoolerSettingsModel::rootRefreshesAVisibleCoolerOnly()
{
    CoolerSettings cooler;
    QVERIFY(!cooler.callsOf([&] { cooler.root.refreshAllVisible(); }).contains("zvtMfgGetCoolerSetpoint"));
    cooler.model.setVisible(true);
    QVERIFY(cooler.callsOf([&] { cooler.root.refreshAllVisible(); }).contains("zvtMfgGetCoolerSetpoint"));
}

// The walkers

void tst_SetupCoolerSettingsModel::failingReads()
{
    walkFailingReads(coolerModel(),
                     {{"zvtMfgGetCoolerType", {{"coolerType"}, "the text is then that of a failure", {"coolerType"}}}});
}

void tst_SetupCoolerSettingsModel::heldReadsOutliveTheModel() { walkHeldDeletion(coolerModel()); }

void tst_SetupCoolerSettingsModel::secondRefreshIsDropped() { walkSecondRefresh(coolerModel()); }

void tst_SetupCoolerSettingsModel::readsWithoutACamera()
{
    walkNoCamera(modelOf<SetupCoolerSettingsModel>(), {"coolerType"});
}

void tst_SetupCoolerSettingsModel::randomOperator() { walkRandomOperator(coolerModel(), 46); }

ZVT_TEST(tst_SetupCoolerSettingsModel)
#include "tst_SetupCoolerSettingsModel.moc"
