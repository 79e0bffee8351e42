#include "tests/support/Test.h"
#include "tests/unit/TabRig.h"

#include "manufacturing/MfgMiscSettingsModel.h"

namespace
{

const QStringList publishedSignals = changedSignals({"ddeThreshold", "fpaClockPhaseShift"});

/// Lets each read return a value that differs from those of a new model.
void scriptMisc(CameraRig &rig)
{
    rig.gate().script("zvtGetVideoAGCDDEThreshold", 16383);
    rig.gate().script("zvtMfgGetClockPhaseShift", 100000000);
}

struct MiscSettings : TabRig<MfgMiscSettingsModel> {
    MiscSettings() : TabRig(QStringLiteral("everything"))
    {
        scriptMisc(rig);
        start();
    }

    QStringList apply()
    {
        return callsOf([this] { model.applySettings(); });
    }
};

ModelUnderTest miscModel()
{
    auto model = modelOf<MfgMiscSettingsModel>();
    model.prepare = scriptMisc;
    return model;
}

} // namespace

/// The threshold of the detail enhancement and the phase of the detector clock, which are applied together.
class tst_MfgMiscSettingsModel : public Test
{
    Q_OBJECT

private slots:
    void nothingIsKnownAtFirst();
    void readsInOrder();
    void publishesInOrder();
    void everyReadSignalsEveryValue();
    void refreshDiscardsEdits();

    void editsAreStoredOnly_data();
    void editsAreStoredOnly();
    void applyWritesBoth();
    void numbersHave32Bits();
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

void tst_MfgMiscSettingsModel::nothingIsKnownAtFirst()
{
    MiscSettings misc;
    QVERIFY(!misc.model.refreshing() && !misc.model.hasRefreshed() && !misc.model.visible());
    QCOMPARE(misc.model.ddeThreshold(), 0);
    QCOMPARE(misc.model.fpaClockPhaseShift(), 0);
}

// Reading

void tst_MfgMiscSettingsModel::readsInOrder()
{
    MiscSettings misc;
    QCOMPARE(misc.read(), QStringList({"zvtGetVideoAGCDDEThreshold", "zvtMfgGetClockPhaseShift"}));
    QCOMPARE(misc.model.ddeThreshold(), 16383);
    QCOMPARE(misc.model.fpaClockPhaseShift(), 100000000);
}

void tst_MfgMiscSettingsModel::publishesInOrder()
{
    MiscSettings misc;
    misc.model.refresh();
    QCOMPARE(misc.log.take(), QStringList({"refreshingChanged", "hasRefreshedChanged"}));
    QVERIFY(misc.model.refreshing() && !misc.model.hasRefreshed());
    CameraRig::settle();
    QCOMPARE(misc.log.take(), publishedSignals + QStringList({"hasRefreshedChanged", "refreshingChanged"}));
    QVERIFY(!misc.model.refreshing() && misc.model.hasRefreshed());
}

void tst_MfgMiscSettingsModel::everyReadSignalsEveryValue()
{
    MiscSettings misc;
    QCOMPARE(misc.refresh(), publishedSignals);
    QCOMPARE(misc.refresh(), publishedSignals);
}

void tst_MfgMiscSettingsModel::refreshDiscardsEdits()
{
    MiscSettings misc;
    misc.read();
    misc.model.setDdeThreshold(1);
    misc.model.setFpaClockPhaseShift(2);
    misc.read();
    QCOMPARE(misc.model.ddeThreshold(), 16383);
    QCOMPARE(misc.model.fpaClockPhaseShift(), 100000000);
}

// Editing

void tst_MfgMiscSettingsModel::editsAreStoredOnly_data()
{
    QTest::addColumn<int>("value");
    QTest::newRow("ddeThreshold") << 77;
    QTest::newRow("fpaClockPhaseShift") << 99999999;
}

void tst_MfgMiscSettingsModel::editsAreStoredOnly()
{
    QFETCH(const int, value);
    const char *property = QTest::currentDataTag();
    MiscSettings misc;
    QCOMPARE(misc.write(property, value), QStringList());
    QCOMPARE(misc.log.take(), QStringList(changedSignal(property)));
    QCOMPARE(misc.model.property(property), QVariant(value));
    QCOMPARE(misc.write(property, value), QStringList());
    QCOMPARE(misc.log.take(), QStringList());
}

void tst_MfgMiscSettingsModel::applyWritesBoth()
{
    MiscSettings misc;
    misc.read();
    misc.model.setDdeThreshold(5);
    const QStringList expected{"zvtSetVideoAGCDDEThreshold 5", "zvtMfgSetClockPhaseShift 100000000"};
    misc.log.take();
    QCOMPARE(misc.apply(), expected);
    QCOMPARE(misc.apply(), expected);
    QCOMPARE(misc.log.take(), QStringList());
}

void tst_MfgMiscSettingsModel::numbersHave32Bits()
{
    MiscSettings misc;
    misc.model.setDdeThreshold(-1);
    misc.model.setFpaClockPhaseShift(65536);
    QCOMPARE(misc.apply(), QStringList({"zvtSetVideoAGCDDEThreshold 4294967295", "zvtMfgSetClockPhaseShift 65536"}));
}

void tst_MfgMiscSettingsModel::refusedSettingsStay()
{
    MiscSettings misc;
    misc.model.setDdeThreshold(16384);
    misc.gate().failAlways("zvtSetVideoAGCDDEThreshold");
    misc.gate().failAlways("zvtMfgSetClockPhaseShift");
    QCOMPARE(misc.apply().size(), 2);
    QCOMPARE(misc.log.take(), QStringList());
    QCOMPARE(misc.model.ddeThreshold(), 16384);
}

void tst_MfgMiscSettingsModel::applyOnlyWrites() { walkApply(miscModel(), "applySettings"); }

void tst_MfgMiscSettingsModel::appliedSettingsReachTheCamera()
{
    TabRig<MfgMiscSettingsModel> misc(QStringLiteral("everything"));
    misc.start();
    misc.read();
    misc.model.setDdeThreshold(misc.model.ddeThreshold() + 1);
    misc.model.setFpaClockPhaseShift(100000000);
    misc.model.applySettings();
    MfgMiscSettingsModel another(&misc.root);
    another.refresh();
    CameraRig::settle();
    QCOMPARE(another.ddeThreshold(), misc.model.ddeThreshold());
    QCOMPARE(another.fpaClockPhaseShift(), 100000000);
}

// The walkers

void tst_MfgMiscSettingsModel::visibilityReadsNothing() { walkVisibility(miscModel()); }

void tst_MfgMiscSettingsModel::failingReads() { walkFailingReads(miscModel()); }

void tst_MfgMiscSettingsModel::heldReadsOutliveTheModel() { walkHeldDeletion(miscModel()); }

void tst_MfgMiscSettingsModel::secondRefreshIsDropped() { walkSecondRefresh(miscModel()); }

void tst_MfgMiscSettingsModel::readsWithoutACamera() { walkNoCamera(miscModel()); }

void tst_MfgMiscSettingsModel::randomOperator() { walkRandomOperator(miscModel(), 97); }

ZVT_TEST(tst_MfgMiscSettingsModel)
#include "tst_MfgMiscSettingsModel.moc"
