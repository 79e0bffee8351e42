#include "tests/support/Test.h"
#include "tests/unit/FilterWheelRig.h"

#include <memory>

/// Turns of the filter wheel, to use a filter or to replace it.
class tst_SetupFilterWheelSettingsModelTurns : public Test
{
    Q_OBJECT

private slots:
    void selectionMarksTheRowBeforeTheWheelTurns();
    void failedSelectionStaysMarkedUntilTheNextRead();
    void selectionOfAMissingRowTurnsNothing_data();
    void selectionOfAMissingRowTurnsNothing();
    void rowsMayBeReplacedWhileTheWheelTurns();
    void secondSelectionIsNotStopped();
    void selectedIndexIsStoredOnly();
    void replacementTurnsToAnotherRow();
    void replacementOfTheSelectedRowTurnsNothing();
    void heldTurnsOutliveTheModel();
};

void tst_SetupFilterWheelSettingsModelTurns::selectionMarksTheRowBeforeTheWheelTurns()
{
    Wheel wheel;
    wheel.refresh();
    SignalLog log(&wheel.model);
    wheel.gate().hold("zvtSetCurrentFilterID");
    const size_t mark = wheel.gate().mark();
    wheel.model.selectFilter(2);
    QCOMPARE(log.take(), QStringList({"selectedFilterIndexChanged", "filterSelectionInProgressChanged"}));
    QCOMPARE(wheel.model.selectedFilterIndex(), 2);
    QVERIFY(wheel.model.filterSelectionInProgress());
    QVERIFY(wheel.gate().waitHeld("zvtSetCurrentFilterID"));
    QVERIFY(!wheel.model.filterReplacementSelectionInProgress());
    wheel.gate().release("*");
    CameraRig::settle();
    QCOMPARE(log.take(), QStringList("filterSelectionInProgressChanged"));
    QVERIFY(!wheel.model.filterSelectionInProgress());
    // Nothing is read back.
    QCOMPARE(wheel.rig.callsSince(mark), QStringList("zvtSetCurrentFilterID"));
    QCOMPARE(wheel.turnsSince(mark), QStringList("21"));
}

void tst_SetupFilterWheelSettingsModelTurns::failedSelectionStaysMarkedUntilTheNextRead()
{
    Wheel wheel;
    wheel.refresh();
    wheel.gate().failAlways("zvtSetCurrentFilterID");
    wheel.callsOf([&] { wheel.model.selectFilter(3); });
    QVERIFY(!wheel.model.filterSelectionInProgress());
    QCOMPARE(wheel.model.selectedFilterIndex(), 3);
    wheel.refresh();
    QCOMPARE(wheel.model.selectedFilterIndex(), 1);
}

void tst_SetupFilterWheelSettingsModelTurns::selectionOfAMissingRowTurnsNothing_data()
{
    QTest::addColumn<int>("row");
    QTest::newRow("before the first") << -1;
    QTest::newRow("after the last") << 4;
}

void tst_SetupFilterWheelSettingsModelTurns::selectionOfAMissingRowTurnsNothing()
{
    QFETCH(const int, row);
    Wheel wheel;
    wheel.refresh();
    SignalLog log(&wheel.model);
    QCOMPARE(wheel.callsOf([&] { wheel.model.selectFilter(row); }), QStringList());
    QCOMPARE(wheel.model.selectedFilterIndex(), row);
    QCOMPARE(log.take(),
             QStringList({"selectedFilterIndexChanged", "filterSelectionInProgressChanged",
                          "filterSelectionInProgressChanged"}));
}

// The task has the ID of the filter and not the row, which a refresh deletes.
void tst_SetupFilterWheelSettingsModelTurns::rowsMayBeReplacedWhileTheWheelTurns()
{
    Wheel wheel;
    wheel.refresh();
    wheel.gate().hold("zvtSetCurrentFilterID");
    const size_t mark = wheel.gate().mark();
    wheel.model.selectFilter(0);
    wheel.gate().script("zvtGetFilterIDs", QVariantList{2, 3, 4, 5});
    wheel.model.refresh();
    QTRY_COMPARE(wheel.ids(), QList<int>({2, 3, 4, 5}));
    wheel.gate().release("*");
    CameraRig::settle();
    QCOMPARE(wheel.turnsSince(mark), QStringList("1"));
}

void tst_SetupFilterWheelSettingsModelTurns::secondSelectionIsNotStopped()
{
    Wheel wheel;
    wheel.refresh();
    wheel.gate().hold("zvtSetCurrentFilterID");
    const size_t mark = wheel.gate().mark();
    wheel.model.selectFilter(0);
    wheel.model.selectFilter(2);
    QVERIFY(wheel.gate().waitHeld("zvtSetCurrentFilterID", 2));
    QVERIFY(wheel.model.filterSelectionInProgress());
    wheel.gate().release("*");
    CameraRig::settle();
    QVERIFY(!wheel.model.filterSelectionInProgress());
    QCOMPARE(wheel.model.selectedFilterIndex(), 2);
    QStringList turns = wheel.turnsSince(mark);
    turns.sort();
    QCOMPARE(turns, QStringList({"1", "21"}));
}

void tst_SetupFilterWheelSettingsModelTurns::selectedIndexIsStoredOnly()
{
    Wheel wheel;
    wheel.refresh();
    SignalLog log(&wheel.model);
    QCOMPARE(wheel.callsOf([&] { wheel.model.setSelectedFilterIndex(3); }), QStringList());
    QCOMPARE(wheel.model.selectedFilterIndex(), 3);
    QCOMPARE(log.take(), QStringList("selectedFilterIndexChanged"));
    wheel.model.setSelectedFilterIndex(3);
    QCOMPARE(log.take(), QStringList());
}

void tst_SetupFilterWheelSettingsModelTurns::replacementTurnsToAnotherRow()
{
    Wheel wheel;
    wheel.refresh();
    SignalLog log(&wheel.model);
    wheel.gate().hold("zvtSetCurrentFilterID");
    const size_t mark = wheel.gate().mark();
    wheel.model.replaceFilter(3);
    QCOMPARE(log.take(), QStringList({"selectedFilterIndexChanged", "filterReplacementSelectionInProgressChanged"}));
    QVERIFY(wheel.model.filterReplacementSelectionInProgress());
    QVERIFY(!wheel.model.filterSelectionInProgress());
    QVERIFY(wheel.gate().waitHeld("zvtSetCurrentFilterID"));
    wheel.gate().release("*");
    CameraRig::settle();
    QCOMPARE(log.take(), QStringList("filterReplacementSelectionInProgressChanged"));
    QVERIFY(!wheel.model.filterReplacementSelectionInProgress());
    QCOMPARE(wheel.turnsSince(mark), QStringList("25"));
    QCOMPARE(wheel.model.selectedFilterIndex(), 3);
}

void tst_SetupFilterWheelSettingsModelTurns::replacementOfTheSelectedRowTurnsNothing()
{
    Wheel wheel;
    wheel.refresh();
    SignalLog log(&wheel.model);
    const size_t mark = wheel.gate().mark();
    wheel.model.replaceFilter(1);
    // The page opens its dialog when the flag is cleared, so the flag rises all the same.
    QCOMPARE(log.take(), QStringList("filterReplacementSelectionInProgressChanged"));
    QVERIFY(wheel.model.filterReplacementSelectionInProgress());
    CameraRig::settle();
    QCOMPARE(log.take(), QStringList("filterReplacementSelectionInProgressChanged"));
    QVERIFY(!wheel.model.filterReplacementSelectionInProgress());
    QCOMPARE(wheel.rig.callsSince(mark), QStringList());
}

void tst_SetupFilterWheelSettingsModelTurns::heldTurnsOutliveTheModel()
{
    CameraRig rig;
    scriptWheel(rig);
    auto root = std::make_unique<ZvtCameraModel>(rig.controller(), nullptr);
    SetupFilterWheelSettingsModel &model = *root->setupFilterWheelSettingsModel();
    model.refresh();
    CameraRig::settle();
    rig.gate().hold("zvtSetCurrentFilterID");
    model.selectFilter(0);
    model.replaceFilter(2);
    QVERIFY(rig.gate().waitHeld("zvtSetCurrentFilterID", 2));
    root.reset();
    rig.gate().release("*");
    CameraRig::settle();
}

ZVT_TEST(tst_SetupFilterWheelSettingsModelTurns)
#include "tst_SetupFilterWheelSettingsModelTurns.moc"
