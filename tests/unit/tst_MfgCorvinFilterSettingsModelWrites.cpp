#include "tests/support/Test.h"
#include "tests/unit/FilterTableRig.h"

#include <memory>

#include "zvt/zvtsdk.h"

namespace
{

const QStringList writesOfTheCamerasTable{"zvtSetFilterIDInSlot 0, 1", "zvtSetFilterIDInSlot 1, 13",
                                          "zvtSetFilterIDInSlot 2, 21", "zvtSetFilterIDInSlot 3, 25"};

/// The turns of the wheel since a mark, on pool threads.
QStringList turnsSince(FilterTableRig &table, size_t mark)
{
    QStringList turns = table.calls(mark, false);
    turns.removeIf([](const QString &call) { return !call.startsWith("zvtSet"); });
    return turns;
}

} // namespace

/// Turns of the filter wheel by the factory's table, and the write of the table.
class tst_MfgCorvinFilterSettingsModelWrites : public Test
{
    Q_OBJECT

private slots:
    void selectionMarksTheRowBeforeTheWheelTurns();
    void failedSelectionStaysMarkedUntilTheNextRead();
    void selectionOfAMissingRowTurnsNothing_data();
    void selectionOfAMissingRowTurnsNothing();
    void selectionUsesAnEditedID();
    void rowsMayBeChangedWhileTheWheelTurns();
    void secondSelectionIsNotStopped();
    void heldTurnOutlivesTheModel();
    void wheelTurnsToTheSlot();
    void selectedIndexIsStoredOnly();
    void selectionWithoutACamera();

    void editsAreStoredOnly();
    void refreshDiscardsEdits();
    void applyWritesEverySlotInOrder();
    void applyWritesTheEditedIDs();
    void applyNeverWritesMoreThanTheRows_data();
    void applyNeverWritesMoreThanTheRows();
    void applyBeforeTheFirstReadWritesNothing();
    void refusedTableStays();
    void applyOnlyWrites();
    void applyDoesNotRename();
    void numbersAreCut();
    void appliedTableReachesTheCamera();
};

void tst_MfgCorvinFilterSettingsModelWrites::selectionMarksTheRowBeforeTheWheelTurns()
{
    FilterTableRig table;
    table.read();
    table.gate().hold("zvtSetCurrentFilterID");
    const size_t mark = table.gate().mark();
    QCOMPARE(table.callsOf([&] { table.model.selectFilter(2); }), QStringList());
    QCOMPARE(table.log.take(), QStringList({"selectedFilterIndexChanged", "filterSelectionInProgressChanged"}));
    QCOMPARE(table.model.selectedFilterIndex(), 2);
    QVERIFY(table.model.filterSelectionInProgress());
    QVERIFY(table.gate().waitHeld("zvtSetCurrentFilterID"));
    table.gate().release("*");
    CameraRig::settle();
    QCOMPARE(table.log.take(), QStringList("filterSelectionInProgressChanged"));
    QVERIFY(!table.model.filterSelectionInProgress());
    // Nothing is read back.
    QCOMPARE(table.calls(mark, false), QStringList("zvtSetCurrentFilterID 21"));
}

void tst_MfgCorvinFilterSettingsModelWrites::failedSelectionStaysMarkedUntilTheNextRead()
{
    FilterTableRig table;
    table.read();
    table.gate().failAlways("zvtSetCurrentFilterID");
    table.model.selectFilter(3);
    CameraRig::settle();
    QVERIFY(!table.model.filterSelectionInProgress());
    QCOMPARE(table.model.selectedFilterIndex(), 3);
    table.read();
    QCOMPARE(table.model.selectedFilterIndex(), 1);
}

void tst_MfgCorvinFilterSettingsModelWrites::selectionOfAMissingRowTurnsNothing_data()
{
    QTest::addColumn<int>("row");
    QTest::newRow("before the first") << -1;
    QTest::newRow("after the last") << 4;
}

void tst_MfgCorvinFilterSettingsModelWrites::selectionOfAMissingRowTurnsNothing()
{
    QFETCH(const int, row);
    FilterTableRig table;
    table.read();
    table.log.take();
    const size_t mark = table.gate().mark();
    table.model.selectFilter(row);
    CameraRig::settle();
    QCOMPARE(table.calls(mark, false), QStringList());
    QCOMPARE(table.model.selectedFilterIndex(), row);
    QCOMPARE(table.log.take(),
             QStringList({"selectedFilterIndexChanged", "filterSelectionInProgressChanged",
                          "filterSelectionInProgressChanged"}));
}

void tst_MfgCorvinFilterSettingsModelWrites::selectionUsesAnEditedID()
{
    FilterTableRig table;
    table.read();
    table.filter(2)->setFilterID(25);
    const size_t mark = table.gate().mark();
    table.model.selectFilter(2);
    CameraRig::settle();
    QCOMPARE(turnsSince(table, mark), QStringList("zvtSetCurrentFilterID 25"));
}

// The task has the ID of the filter and not the row, which the operator edits and a refresh deletes.
void tst_MfgCorvinFilterSettingsModelWrites::rowsMayBeChangedWhileTheWheelTurns()
{
    FilterTableRig table;
    table.read();
    table.gate().hold("zvtSetCurrentFilterID");
    const size_t mark = table.gate().mark();
    table.model.selectFilter(0);
    table.filter(0)->setFilterID(21);
    table.gate().script("zvtGetFilterIDInSlot", 5);
    table.model.refresh();
    QTRY_COMPARE(table.ids(), QList<int>({5, 5, 5, 5}));
    QVERIFY(table.model.filterSelectionInProgress());
    table.gate().release("*");
    CameraRig::settle();
    QCOMPARE(turnsSince(table, mark), QStringList("zvtSetCurrentFilterID 1"));
}

void tst_MfgCorvinFilterSettingsModelWrites::secondSelectionIsNotStopped()
{
    FilterTableRig table;
    table.read();
    table.gate().hold("zvtSetCurrentFilterID");
    const size_t mark = table.gate().mark();
    table.model.selectFilter(0);
    table.model.selectFilter(2);
    QVERIFY(table.gate().waitHeld("zvtSetCurrentFilterID", 2));
    QVERIFY(table.model.filterSelectionInProgress());
    table.gate().release("*");
    CameraRig::settle();
    QVERIFY(!table.model.filterSelectionInProgress());
    QCOMPARE(table.model.selectedFilterIndex(), 2);
    QStringList turns = turnsSince(table, mark);
    turns.sort();
    QCOMPARE(turns, QStringList({"zvtSetCurrentFilterID 1", "zvtSetCurrentFilterID 21"}));
}

void tst_MfgCorvinFilterSettingsModelWrites::heldTurnOutlivesTheModel()
{
    CameraRig rig;
    auto root = std::make_unique<ZvtCameraModel>(rig.controller(), nullptr);
    auto *const model = new MfgCorvinFilterSettingsModel(root.get());
    model->refresh();
    CameraRig::settle();
    rig.gate().hold("zvtSetCurrentFilterID");
    model->selectFilter(2);
    QVERIFY(rig.gate().waitHeld("zvtSetCurrentFilterID"));
    root.reset();
    rig.gate().release("*");
    CameraRig::settle();
    // The camera was told the filter of the row, and the wheel has turned.
    uint8_t id = 0;
    QCOMPARE(zvtGetCurrentFilterID(rig.controller()->GetHandle(), &id), 0);
    QCOMPARE(id, uint8_t{21});
}

void tst_MfgCorvinFilterSettingsModelWrites::wheelTurnsToTheSlot()
{
    FilterTableRig table;
    table.gate().script("zvtGetCurrentFilterID", {});
    table.read();
    QCOMPARE(table.model.selectedFilterIndex(), 0);
    table.model.selectFilter(3);
    CameraRig::settle();
    uint8_t id = 0;
    QCOMPARE(zvtGetCurrentFilterID(table.rig.controller()->GetHandle(), &id), 0);
    QCOMPARE(id, uint8_t{25});
}

void tst_MfgCorvinFilterSettingsModelWrites::selectedIndexIsStoredOnly()
{
    FilterTableRig table;
    table.read();
    QCOMPARE(table.write("selectedFilterIndex", 3), QStringList());
    table.model.setSelectedFilterIndex(3);
    CameraRig::settle();
    QCOMPARE(table.log.take(), QStringList("selectedFilterIndexChanged"));
    QCOMPARE(table.model.selectedFilterIndex(), 3);
    QVERIFY(!table.model.filterSelectionInProgress());
}

void tst_MfgCorvinFilterSettingsModelWrites::selectionWithoutACamera()
{
    ZvtCameraModel root({}, nullptr);
    MfgCorvinFilterSettingsModel below(&root);
    MfgCorvinFilterSettingsModel alone(nullptr);
    for (MfgCorvinFilterSettingsModel *model : {&below, &alone}) {
        SignalLog log(model);
        model->selectFilter(0);
        QVERIFY(model->filterSelectionInProgress());
        CameraRig::settle();
        QCOMPARE(log.take(),
                 QStringList({"selectedFilterIndexChanged", "filterSelectionInProgressChanged",
                              "filterSelectionInProgressChanged"}));
        QCOMPARE(model->selectedFilterIndex(), 0);
        QVERIFY(!model->filterSelectionInProgress());
    }
}

// The table

void tst_MfgCorvinFilterSettingsModelWrites::editsAreStoredOnly()
{
    FilterTableRig table;
    table.read();
    SignalLog row(table.filter(1));
    QCOMPARE(table.callsOf([&] { table.filter(1)->setProperty("filterID", 63); }), QStringList());
    QCOMPARE(row.take(), QStringList("filterIDChanged"));
    QCOMPARE(table.log.take(), QStringList());
    QCOMPARE(table.ids(), QList<int>({1, 63, 21, 25}));
}

void tst_MfgCorvinFilterSettingsModelWrites::refreshDiscardsEdits()
{
    FilterTableRig table;
    table.read();
    table.filter(1)->setFilterID(63);
    table.read();
    QCOMPARE(table.ids(), QList<int>({1, 13, 21, 25}));
}

void tst_MfgCorvinFilterSettingsModelWrites::applyWritesEverySlotInOrder()
{
    FilterTableRig table;
    table.read();
    QCOMPARE(table.apply(), writesOfTheCamerasTable);
    QCOMPARE(table.log.take(), QStringList());
    QCOMPARE(table.apply(), writesOfTheCamerasTable);
}

void tst_MfgCorvinFilterSettingsModelWrites::applyWritesTheEditedIDs()
{
    FilterTableRig table;
    table.read();
    table.filter(0)->setFilterID(0);
    table.filter(3)->setFilterID(63);
    QCOMPARE(table.apply(),
             QStringList({"zvtSetFilterIDInSlot 0, 0", "zvtSetFilterIDInSlot 1, 13", "zvtSetFilterIDInSlot 2, 21",
                          "zvtSetFilterIDInSlot 3, 63"}));
}

void tst_MfgCorvinFilterSettingsModelWrites::applyNeverWritesMoreThanTheRows_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("written");
    QTest::newRow("fewer filters than rows") << 2 << 2;
    QTest::newRow("three") << 3 << 3;
    QTest::newRow("more filters than rows") << 6 << 3;
    QTest::newRow("most") << 255 << 3;
}

void tst_MfgCorvinFilterSettingsModelWrites::applyNeverWritesMoreThanTheRows()
{
    QFETCH(const int, count);
    QFETCH(const int, written);
    FilterTableRig table;
    table.gate().script("zvtGetNumFilters", count);
    table.read();
    QCOMPARE(table.apply(), writesOfTheCamerasTable.first(written));
}

void tst_MfgCorvinFilterSettingsModelWrites::applyBeforeTheFirstReadWritesNothing()
{
    FilterTableRig table;
    QCOMPARE(table.apply(), QStringList());
    // A count without rows, neither.
    table.gate().failNext("zvtGetFilterIDInSlot");
    table.read();
    QCOMPARE(table.apply(), QStringList());
}

void tst_MfgCorvinFilterSettingsModelWrites::refusedTableStays()
{
    FilterTableRig table;
    table.read();
    table.filter(1)->setFilterID(63);
    table.gate().failAlways("zvtSetFilterIDInSlot");
    QCOMPARE(table.apply().size(), 4);
    QCOMPARE(table.log.take(), QStringList());
    QCOMPARE(table.ids(), QList<int>({1, 63, 21, 25}));
}

void tst_MfgCorvinFilterSettingsModelWrites::applyOnlyWrites()
{
    walkApply(modelOf<MfgCorvinFilterSettingsModel>(), "applyFilterIDs");
}

void tst_MfgCorvinFilterSettingsModelWrites::applyDoesNotRename()
{
    FilterTableRig table;
    table.read();
    const QStringList names = table.names();
    table.filter(1)->setFilterID(63);
    table.model.applyFilterIDs();
    CameraRig::settle();
    QCOMPARE(table.names(), names);
    table.read();
    QVERIFY(table.names().at(1) != names.at(1));
}

void tst_MfgCorvinFilterSettingsModelWrites::numbersAreCut()
{
    FilterTableRig table;
    table.read();
    table.filter(0)->setFilterID(256 + 7);
    QCOMPARE(table.apply().first(), "zvtSetFilterIDInSlot 0, 7");
    QCOMPARE(table.filter(0)->filterID(), 256 + 7);
}

void tst_MfgCorvinFilterSettingsModelWrites::appliedTableReachesTheCamera()
{
    FilterTableRig table;
    table.read();
    table.filter(1)->setFilterID(7);
    table.filter(3)->setFilterID(9);
    table.model.applyFilterIDs();
    table.read();
    QCOMPARE(table.ids(), QList<int>({1, 7, 21, 9}));
}

ZVT_TEST(tst_MfgCorvinFilterSettingsModelWrites)
#include "tst_MfgCorvinFilterSettingsModelWrites.moc"
