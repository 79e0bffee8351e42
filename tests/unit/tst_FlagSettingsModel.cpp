#include "tests/support/Test.h"
#include "tests/unit/PollRig.h"

#include "setup/FlagSettingsModel.h"

namespace
{

const QStringList readCalls{"zvtGetFlagState", "zvtGetFlagCoolerEnabled", "zvtGetFlagTemperature",
                            "zvtGetFlagDesiredTemperature"};
const QStringList valueSignals{"selectedFlagStateIndexChanged", "coolerEnabledChanged", "currentFlagTemperatureChanged",
                               "desiredFlagTemperatureChanged"};
const QStringList flagValues{"selectedFlagStateIndex", "coolerEnabled", "currentFlagTemperature",
                             "desiredFlagTemperature"};

/// Lets each read return a value that differs from those of a new model.
void scriptFlag(CameraRig &rig)
{
    rig.gate().script("zvtGetFlagState", 1);
    rig.gate().script("zvtGetFlagCoolerEnabled", true);
    rig.gate().script("zvtGetFlagTemperature", 24.5);
    rig.gate().script("zvtGetFlagDesiredTemperature", 35.25);
}

/// The flag below a root, with helpers for tests.
struct FlagSettings : PollRig {
    explicit FlagSettings(bool connected = true) : PollRig(connected), model(*root.flagSettings()), log(&model)
    {
        scriptFlag(rig);
    }

    QStringList refresh()
    {
        return callsOf([this] { model.refresh(); });
    }

    FlagSettingsModel &model;
    SignalLog log;
};

ModelUnderTest flagModel()
{
    auto model = modelOf<FlagSettingsModel>();
    model.prepare = scriptFlag;
    model.ownState << QStringLiteral("desiredSetWasValid");
    return model;
}

} // namespace

/// The settings of the flag: reads, polls, the move of the flag, and the desired temperature.
class tst_FlagSettingsModel : public Test
{
    Q_OBJECT

private slots:
    void nothingIsKnownAtFirst();
    void readsInOrder();
    void publishesInOrder();
    void capabilitiesDecideOnTheReads_data();
    void capabilitiesDecideOnTheReads();
    void failedReadSetsZero_data();
    void failedReadSetsZero();

    void pollReadsTheTemperature();
    void pollNeedsNoCooler();
    void failedPollKeepsTheTemperature();
    void pollsMayOverlap();
    void pollEndsAfterTheSectionIsClosed();
    void pollOutlivesTheModel();

    void stateMovesTheFlag();
    void refusedStateStays();
    void editsAreStoredOnly_data();
    void editsAreStoredOnly();
    void refreshSetsTheSwitchBack();
    void applyTellsWhetherItWasAccepted();

    void visibilityReadsNothing();
    void rootRefreshesAVisibleFlagOnly();

    void failingReads();
    void heldReadsOutliveTheModel();
    void secondRefreshIsDropped();
    void readsWithoutACamera();
    void randomOperator();
};

void tst_FlagSettingsModel::nothingIsKnownAtFirst()
{
    FlagSettings flag;
    QVERIFY(!flag.model.refreshing());
    QVERIFY(!flag.model.hasRefreshed());
    QVERIFY(!flag.model.visible());
    QCOMPARE(flag.model.selectedFlagStateIndex(), 0);
    QVERIFY(!flag.model.coolerEnabled());
    QCOMPARE(flag.model.currentFlagTemperature(), 0.0F);
    QCOMPARE(flag.model.desiredFlagTemperature(), 0.0F);
    QVERIFY(!flag.model.desiredSetWasValid());
    QVERIFY(!PollRig::timerOf(flag.model)->isActive());
    QCOMPARE(PollRig::timerOf(FlagSettingsModel(nullptr))->interval(), 1000);
}

// Reading

void tst_FlagSettingsModel::readsInOrder()
{
    FlagSettings flag;
    const size_t mark = flag.gate().mark();
    QCOMPARE(flag.refresh(), readCalls);
    QVERIFY(flag.allOnPool(mark));
    QCOMPARE(flag.model.selectedFlagStateIndex(), 1);
    QVERIFY(flag.model.coolerEnabled());
    QCOMPARE(flag.model.currentFlagTemperature(), 24.5F);
    QCOMPARE(flag.model.desiredFlagTemperature(), 35.25F);
}

void tst_FlagSettingsModel::publishesInOrder()
{
    FlagSettings flag;
    for (int read = 0; read < 2; ++read) {
        flag.model.refresh();
        QCOMPARE(flag.log.take(), QStringList({"refreshingChanged", "hasRefreshedChanged"}));
        QVERIFY(!flag.model.hasRefreshed());
        CameraRig::settle();
        // All values are signalled, also the unchanged ones of the second read.
        QCOMPARE(flag.log.take(), valueSignals + QStringList({"hasRefreshedChanged", "refreshingChanged"}));
        QVERIFY(flag.model.hasRefreshed());
    }
    QVERIFY(!flag.model.desiredSetWasValid());
}

void tst_FlagSettingsModel::capabilitiesDecideOnTheReads_data()
{
    QTest::addColumn<bool>("hasFlag");
    QTest::addColumn<bool>("hasFlagCooler");
    QTest::addColumn<int>("calls");
    QTest::newRow("no flag") << false << false << 0;
    QTest::newRow("cooler without a flag") << false << true << 0;
    QTest::newRow("plain flag") << true << false << 1;
    QTest::newRow("cooled flag") << true << true << 4;
}

void tst_FlagSettingsModel::capabilitiesDecideOnTheReads()
{
    QFETCH(const bool, hasFlag);
    QFETCH(const bool, hasFlagCooler);
    QFETCH(const int, calls);
    FlagSettings flag;
    flag.refresh();
    flag.setCapability("hasFlag", hasFlag);
    flag.setCapability("hasFlagCooler", hasFlagCooler);
    QCOMPARE(flag.refresh(), readCalls.first(calls));
    QCOMPARE(flag.model.selectedFlagStateIndex(), hasFlag ? 1 : 0);
    QCOMPARE(flag.model.coolerEnabled(), calls == 4);
    QCOMPARE(flag.model.currentFlagTemperature(), calls == 4 ? 24.5F : 0.0F);
    QCOMPARE(flag.model.desiredFlagTemperature(), calls == 4 ? 35.25F : 0.0F);
    QVERIFY(flag.model.hasRefreshed());
}

void tst_FlagSettingsModel::failedReadSetsZero_data()
{
    QTest::addColumn<int>("value");
    for (int value = 0; value < readCalls.size(); ++value)
        QTest::newRow(qPrintable(readCalls.at(value))) << value;
}

void tst_FlagSettingsModel::failedReadSetsZero()
{
    QFETCH(const int, value);
    FlagSettings flag;
    flag.refresh();
    flag.gate().failNext(readCalls.at(value).toStdString());
    flag.log.take();
    QCOMPARE(flag.refresh(), readCalls);
    for (int i = 0; i < flagValues.size(); ++i)
        QCOMPARE(flag.model.property(qPrintable(flagValues.at(i))).toDouble() == 0, i == value);
    QVERIFY(flag.log.take().contains(valueSignals.at(value)));
    QVERIFY(flag.model.hasRefreshed());
}

// The poll

void tst_FlagSettingsModel::pollReadsTheTemperature()
{
    FlagSettings flag;
    const size_t mark = flag.gate().mark();
    QCOMPARE(flag.tick(flag.model), QStringList("zvtGetFlagTemperature"));
    QVERIFY(flag.allOnPool(mark));
    QCOMPARE(flag.log.take(), QStringList("currentFlagTemperatureChanged"));
    QCOMPARE(flag.model.currentFlagTemperature(), 24.5F);
    QVERIFY(!flag.model.hasRefreshed());
}

void tst_FlagSettingsModel::pollNeedsNoCooler()
{
    FlagSettings flag;
    flag.setCapability("hasFlagCooler", false);
    flag.root.setupTabModel()->setVisible(true);
    flag.model.setVisible(true);
    QVERIFY(PollRig::timerOf(flag.model)->isActive());
    QCOMPARE(flag.tick(flag.model), QStringList("zvtGetFlagTemperature"));
    QCOMPARE(flag.model.currentFlagTemperature(), 24.5F);
}

void tst_FlagSettingsModel::failedPollKeepsTheTemperature()
{
    FlagSettings flag;
    flag.refresh();
    flag.log.take();
    flag.gate().failNext("zvtGetFlagTemperature");
    flag.tick(flag.model);
    QCOMPARE(flag.log.take(), QStringList());
    QCOMPARE(flag.model.currentFlagTemperature(), 24.5F);
}

void tst_FlagSettingsModel::pollsMayOverlap()
{
    FlagSettings flag;
    flag.gate().hold("zvtGetFlagTemperature");
    PollRig::fire(flag.model);
    PollRig::fire(flag.model);
    QVERIFY(flag.gate().waitHeld("zvtGetFlagTemperature", 2));
    flag.gate().release("*");
    CameraRig::settle();
    // Only the newest one is published.
    QCOMPARE(flag.log.take(), QStringList("currentFlagTemperatureChanged"));
}

void tst_FlagSettingsModel::pollEndsAfterTheSectionIsClosed()
{
    FlagSettings flag;
    flag.root.setupTabModel()->setVisible(true);
    flag.model.setVisible(true);
    flag.gate().hold("zvtGetFlagTemperature");
    PollRig::fire(flag.model);
    QVERIFY(flag.gate().waitHeld("zvtGetFlagTemperature"));
    flag.model.setVisible(false);
    QVERIFY(!PollRig::timerOf(flag.model)->isActive());
    flag.gate().release("*");
    CameraRig::settle();
    QCOMPARE(flag.model.currentFlagTemperature(), 24.5F);
}

void tst_FlagSettingsModel::pollOutlivesTheModel()
{
    CameraRig rig;
    auto root = std::make_unique<ZvtCameraModel>(rig.controller(), nullptr);
    CameraRig::settle();
    rig.gate().hold("zvtGetFlagTemperature");
    PollRig::fire(*root->flagSettings());
    QVERIFY(rig.gate().waitHeld("zvtGetFlagTemperature"));
    root.reset();
    rig.gate().release("*");
    CameraRig::settle();
}

// The settings

void tst_FlagSettingsModel::stateMovesTheFlag()
{
    FlagSettings flag;
    const size_t mark = flag.gate().mark();
    flag.model.setSelectedFlagStateIndex(1);
    QCOMPARE(flag.guiCalls(mark), QStringList("zvtSetFlagState 1"));
    QCOMPARE(flag.model.selectedFlagStateIndex(), 1);
    QCOMPARE(flag.log.take(), QStringList("selectedFlagStateIndexChanged"));
    flag.model.setSelectedFlagStateIndex(1);
    QCOMPARE(flag.guiCalls(mark).size(), 1);
    QCOMPARE(flag.log.take(), QStringList());
}

void tst_FlagSettingsModel::refusedStateStays()
{
    FlagSettings flag;
    flag.gate().failNext("zvtSetFlagState");
    flag.model.setSelectedFlagStateIndex(1);
    QCOMPARE(flag.model.selectedFlagStateIndex(), 1);
    QCOMPARE(flag.log.take(), QStringList("selectedFlagStateIndexChanged"));
}

void tst_FlagSettingsModel::editsAreStoredOnly_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("coolerEnabled") << QVariant(true);
    QTest::newRow("currentFlagTemperature") << QVariant(12.5F);
    QTest::newRow("desiredFlagTemperature") << QVariant(-99.99F);
    QTest::newRow("desiredSetWasValid") << QVariant(true);
}

void tst_FlagSettingsModel::editsAreStoredOnly()
{
    QFETCH(const QVariant, value);
    const char *property = QTest::currentDataTag();
    FlagSettings flag;
    const QStringList calls = flag.callsOf([&] {
        flag.model.setProperty(property, value);
        flag.model.setProperty(property, value);
    });
    QCOMPARE(calls, QStringList());
    QCOMPARE(flag.log.take(), QStringList(QString::fromLatin1(property) + "Changed"));
    QCOMPARE(flag.model.property(property), value);
}

void tst_FlagSettingsModel::refreshSetsTheSwitchBack()
{
    FlagSettings flag;
    flag.refresh();
    const size_t mark = flag.gate().mark();
    flag.model.setCoolerEnabled(false);
    flag.model.setDesiredFlagTemperature(12);
    QVERIFY(flag.guiCalls(mark).isEmpty());
    flag.refresh();
    QVERIFY(flag.model.coolerEnabled());
    QCOMPARE(flag.model.desiredFlagTemperature(), 35.25F);
}

void tst_FlagSettingsModel::applyTellsWhetherItWasAccepted()
{
    FlagSettings flag;
    flag.model.setDesiredFlagTemperature(-99.5F);
    flag.log.take();
    const auto apply = [&flag](bool refuse) {
        if (refuse)
            flag.gate().failNext("zvtSetFlagDesiredTemperature");
        else
            flag.gate().script("zvtSetFlagDesiredTemperature", true);
        const size_t mark = flag.gate().mark();
        flag.model.applyDesiredFlagTemperature();
        return flag.guiCalls(mark) == QStringList("zvtSetFlagDesiredTemperature -99.5");
    };
    for (const bool refuse : {false, false, true, true, false}) {
        QVERIFY(apply(refuse));
        QCOMPARE(flag.model.desiredSetWasValid(), !refuse);
        // Signalled also if it is the same again.
        QCOMPARE(flag.log.take(), QStringList("desiredSetWasValidChanged"));
    }
}

// Visibility

void tst_FlagSettingsModel::visibilityReadsNothing()
{
    FlagSettings flag;
    QCOMPARE(flag.callsOf([&] { flag.model.setVisible(true); }), QStringList());
    QVERIFY(flag.model.visible());
    flag.model.setVisible(true);
    QCOMPARE(flag.log.take(), QStringList("visibleChanged"));
}

void tst_FlagSettingsModel::rootRefreshesAVisibleFlagOnly()
{
    FlagSettings flag;
    QVERIFY(!flag.callsOf([&] { flag.root.refreshAllVisible(); }).contains("zvtGetFlagState"));
    flag.model.setVisible(true);
    QVERIFY(flag.callsOf([&] { flag.root.refreshAllVisible(); }).contains("zvtGetFlagState"));
}

// The walkers

void tst_FlagSettingsModel::failingReads()
{
    ReadExceptions exceptions;
    for (int i = 0; i < readCalls.size(); ++i)
        exceptions.insert(readCalls.at(i), {{flagValues.at(i)}, "a value that was not read is 0", {flagValues.at(i)}});
    walkFailingReads(flagModel(), exceptions);
}

void tst_FlagSettingsModel::heldReadsOutliveTheModel() { walkHeldDeletion(flagModel()); }

void tst_FlagSettingsModel::secondRefreshIsDropped() { walkSecondRefresh(flagModel()); }

void tst_FlagSettingsModel::readsWithoutACamera() { walkNoCamera(modelOf<FlagSettingsModel>(), flagValues); }

void tst_FlagSettingsModel::randomOperator() { walkRandomOperator(flagModel(), 47); }

ZVT_TEST(tst_FlagSettingsModel)
#include "tst_FlagSettingsModel.moc"
