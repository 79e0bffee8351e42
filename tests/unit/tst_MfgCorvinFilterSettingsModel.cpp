#include "tests/support/Test.h"
#include "tests/unit/FilterTableRig.h"

#include <QPointer>

#include "zvt/zvtsdk.h"

namespace
{

constexpr int idCount = 64;

QStringList nameCalls()
{
    QStringList calls;
    for (int id = 0; id < idCount; ++id)
        calls << QStringLiteral("zvtGetFilterNameEx %1").arg(id);
    return calls;
}

const QStringList reads = QStringList{"zvtGetNumFilters",       "zvtGetFilterIDInSlot 0", "zvtGetFilterIDInSlot 1",
                                      "zvtGetFilterIDInSlot 2", "zvtGetFilterIDInSlot 3", "zvtGetCurrentFilterID"}
    + nameCalls();
const QStringList everySignal
    = changedSignals({"filterIDNameStringListModel", "selectedFilterIndex", "filterListModel"});

/// The IDs whose built-in names were asked for.
QStringList builtInNamesSince(size_t mark)
{
    QStringList asked;
    for (const auto &call : emulator::Sdk::gate().callsSince(mark))
        if (call.name == "zvtGetFilterName")
            asked << QString::fromStdString(call.arguments);
    return asked;
}

/// With another filter than the first one in the optical path.
ModelUnderTest filterTableModel()
{
    auto model = modelOf<MfgCorvinFilterSettingsModel>();
    model.prepare = [](CameraRig &rig) { rig.gate().script("zvtGetCurrentFilterID", 13); };
    return model;
}

} // namespace

/// The read of the table of the filter wheel.
class tst_MfgCorvinFilterSettingsModel : public Test
{
    Q_OBJECT

private slots:
    void nothingIsKnownAtFirst();
    void readsInOrder();
    void publishesInOrder();
    void rowsAreTheSlots();
    void rowsHaveTheBuiltInNames();
    void unknownFilterHasNoName();
    void countDecidesOnTheRows_data();
    void countDecidesOnTheRows();
    void countOfZeroKeepsTheRows();
    void fourthSlotOfAWheelOfThreeIsRead();
    void failedSlotEndsTheReadOfTheSlots_data();
    void failedSlotEndsTheReadOfTheSlots();
    void failedCountKeepsTheRows();
    void signalsOfTheEndAreUnconditional();
    void cameraWithoutAWheel();
    void oldRowsAreFreed();

    void currentFilterIsTheFirstRowOfItsID();
    void currentFilterInNoRowKeepsTheSelection();
    void currentFilterIsFoundInTheOldRows();
    void currentFilterIsComparedUncut();
    void failedCurrentFilterKeepsTheSelection();

    void namesOfAllIDs();
    void failedNameIsEmpty();
    void longNamesAreComplete();

    void visibilityReadsNothing();
    void failingReads();
    void heldReadsOutliveTheModel();
    void secondRefreshIsDropped();
    void readsWithoutACamera();
    void randomOperator();
};

void tst_MfgCorvinFilterSettingsModel::nothingIsKnownAtFirst()
{
    FilterTableRig table;
    for (const char *flag : {"refreshing", "hasRefreshed", "visible", "filterSelectionInProgress"})
        QCOMPARE(table.model.property(flag), QVariant(false));
    QCOMPARE(table.model.selectedFilterIndex(), -1);
    QCOMPARE(table.model.filterListModel()->size(), 0);
    QCOMPARE(table.model.filterIDNameStringListModel(), QStringList());
}

void tst_MfgCorvinFilterSettingsModel::readsInOrder()
{
    FilterTableRig table;
    QCOMPARE(table.read(), reads);
}

void tst_MfgCorvinFilterSettingsModel::publishesInOrder()
{
    FilterTableRig table;
    table.model.refresh();
    QCOMPARE(table.log.take(), QStringList({"refreshingChanged", "hasRefreshedChanged"}));
    QVERIFY(table.model.refreshing() && !table.model.hasRefreshed());
    CameraRig::settle();
    QCOMPARE(table.log.take(), everySignal + QStringList({"hasRefreshedChanged", "refreshingChanged"}));
    QVERIFY(!table.model.refreshing() && table.model.hasRefreshed());
}

// Rows

void tst_MfgCorvinFilterSettingsModel::rowsAreTheSlots()
{
    FilterTableRig table;
    table.read();
    QCOMPARE(table.ids(), QList<int>({1, 13, 21, 25}));
    for (int row = 0; row < 4; ++row)
        QCOMPARE(table.filter(row)->slotID(), row);
    QCOMPARE(table.model.selectedFilterIndex(), 1);
}

void tst_MfgCorvinFilterSettingsModel::rowsHaveTheBuiltInNames()
{
    FilterTableRig table;
    table.gate().script("zvtGetFilterNameEx", "The user's");
    const size_t mark = emulator::Sdk::gate().mark();
    table.read();
    QCOMPARE(builtInNamesSince(mark), QStringList({"1", "13", "21", "25"}));
    QStringList builtIn;
    for (const uint8_t id : {1, 13, 21, 25})
        builtIn << QString::fromUtf8(zvtGetFilterName(id));
    QCOMPARE(table.names(), builtIn);
}

void tst_MfgCorvinFilterSettingsModel::unknownFilterHasNoName()
{
    FilterTableRig table;
    table.gate().script("zvtGetFilterIDInSlot", 200);
    table.read();
    QCOMPARE(table.ids(), QList<int>({200, 200, 200, 200}));
    QCOMPARE(table.names(), QStringList({"", "", "", ""}));
}

void tst_MfgCorvinFilterSettingsModel::countDecidesOnTheRows_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("rows");
    QTest::newRow("none") << 0 << 0;
    QTest::newRow("one") << 1 << 3;
    QTest::newRow("three") << 3 << 3;
    QTest::newRow("four") << 4 << 4;
    QTest::newRow("five") << 5 << 3;
    QTest::newRow("most") << 255 << 3;
}

void tst_MfgCorvinFilterSettingsModel::countDecidesOnTheRows()
{
    QFETCH(const int, count);
    QFETCH(const int, rows);
    FilterTableRig table;
    table.gate().script("zvtGetNumFilters", count);
    QCOMPARE(table.read(), reads);
    QCOMPARE(table.ids(), QList<int>({1, 13, 21, 25}).first(rows));
}

void tst_MfgCorvinFilterSettingsModel::countOfZeroKeepsTheRows()
{
    FilterTableRig table;
    table.read();
    table.gate().script("zvtGetNumFilters", 0);
    table.gate().script("zvtGetFilterIDInSlot", 7);
    QCOMPARE(table.refresh(), everySignal);
    QCOMPARE(table.ids(), QList<int>({1, 13, 21, 25}));
}

void tst_MfgCorvinFilterSettingsModel::fourthSlotOfAWheelOfThreeIsRead()
{
    FilterTableRig table(QStringLiteral("discrete-fov"));
    QCOMPARE(table.read(), reads);
    QCOMPARE(table.ids(), QList<int>({1, 4, 21}));
    QCOMPARE(table.filter(2)->slotID(), 2);
    // If the fourth slot cannot be read, the table has no rows.
    FilterTableRig failing(QStringLiteral("discrete-fov"));
    failing.gate().failNext("zvtGetFilterIDInSlot", 4);
    failing.read();
    QCOMPARE(failing.ids(), QList<int>());
    QVERIFY(failing.model.hasRefreshed());
}

void tst_MfgCorvinFilterSettingsModel::failedSlotEndsTheReadOfTheSlots_data()
{
    QTest::addColumn<int>("slot");
    for (int slot = 0; slot < 4; ++slot)
        QTest::addRow("%d", slot) << slot;
}

void tst_MfgCorvinFilterSettingsModel::failedSlotEndsTheReadOfTheSlots()
{
    QFETCH(const int, slot);
    FilterTableRig table;
    table.read();
    const QStringList names = table.names();
    table.gate().script("zvtGetFilterIDInSlot", 7);
    table.gate().failNext("zvtGetFilterIDInSlot", slot + 1);
    const size_t mark = emulator::Sdk::gate().mark();
    QCOMPARE(table.read(), reads.first(slot + 2) + reads.mid(5));
    QCOMPARE(builtInNamesSince(mark), QStringList());
    QCOMPARE(table.ids(), QList<int>({1, 13, 21, 25}));
    QCOMPARE(table.names(), names);
}

void tst_MfgCorvinFilterSettingsModel::failedCountKeepsTheRows()
{
    FilterTableRig table;
    table.read();
    table.gate().script("zvtGetFilterIDInSlot", 7);
    table.gate().failNext("zvtGetNumFilters");
    QCOMPARE(table.read(), reads);
    QCOMPARE(table.ids(), QList<int>({1, 13, 21, 25}));
}

void tst_MfgCorvinFilterSettingsModel::signalsOfTheEndAreUnconditional()
{
    FilterTableRig table;
    QCOMPARE(table.refresh(), everySignal);
    QCOMPARE(table.refresh(), everySignal);
    table.gate().failAlways("zvtGet*");
    QCOMPARE(table.refresh(), everySignal);
}

void tst_MfgCorvinFilterSettingsModel::cameraWithoutAWheel()
{
    FilterTableRig table(QStringLiteral("board-6"));
    table.gate().script("zvtGetCurrentFilterID", {});
    QCOMPARE(table.refresh(), everySignal);
    QCOMPARE(table.ids(), QList<int>());
    QCOMPARE(table.model.selectedFilterIndex(), -1);
    QCOMPARE(table.model.filterIDNameStringListModel(), QStringList(idCount, QString()));
    QVERIFY(table.model.hasRefreshed());
}

void tst_MfgCorvinFilterSettingsModel::oldRowsAreFreed()
{
    FilterTableRig table;
    table.read();
    const QPointer<FilterWheelItemModel> old = table.filter(0);
    table.read();
    QVERIFY(old.isNull());
    QCOMPARE(table.model.filterListModel()->size(), 4);
}

// The filter in the optical path

void tst_MfgCorvinFilterSettingsModel::currentFilterIsTheFirstRowOfItsID()
{
    FilterTableRig table;
    QVERIFY(table.rig.camera().otherClient().set("filters.known", QVariantList{1, 21, 13, 13}));
    table.read();
    QCOMPARE(table.ids(), QList<int>({1, 21, 13, 13}));
    QCOMPARE(table.model.selectedFilterIndex(), 2);
}

void tst_MfgCorvinFilterSettingsModel::currentFilterInNoRowKeepsTheSelection()
{
    FilterTableRig table;
    table.read();
    table.gate().script("zvtGetCurrentFilterID", 40);
    QCOMPARE(table.refresh(), everySignal);
    QCOMPARE(table.model.selectedFilterIndex(), 1);
    // The filter in a slot without a row, too.
    table.gate().script("zvtGetNumFilters", 3);
    table.gate().script("zvtGetCurrentFilterID", 25);
    table.read();
    QCOMPARE(table.model.selectedFilterIndex(), 1);
}

void tst_MfgCorvinFilterSettingsModel::currentFilterIsFoundInTheOldRows()
{
    FilterTableRig table;
    table.read();
    table.gate().failNext("zvtGetFilterIDInSlot");
    table.gate().script("zvtGetCurrentFilterID", 25);
    table.read();
    QCOMPARE(table.model.selectedFilterIndex(), 3);
}

// An edited row may hold more than 8 bits. It is not the filter to which a write would cut it.
void tst_MfgCorvinFilterSettingsModel::currentFilterIsComparedUncut()
{
    FilterTableRig table;
    table.read();
    table.filter(0)->setFilterID(256 + 25);
    table.gate().failNext("zvtGetFilterIDInSlot");
    table.gate().script("zvtGetCurrentFilterID", 25);
    table.read();
    QCOMPARE(table.ids(), QList<int>({256 + 25, 13, 21, 25}));
    QCOMPARE(table.model.selectedFilterIndex(), 3);
}

void tst_MfgCorvinFilterSettingsModel::failedCurrentFilterKeepsTheSelection()
{
    FilterTableRig table;
    table.read();
    table.gate().script("zvtGetCurrentFilterID", 25);
    table.gate().failNext("zvtGetCurrentFilterID");
    QCOMPARE(table.refresh(), everySignal);
    QCOMPARE(table.model.selectedFilterIndex(), 1);
}

// The names of all IDs

void tst_MfgCorvinFilterSettingsModel::namesOfAllIDs()
{
    FilterTableRig table;
    QVERIFY(table.rig.camera().otherClient().set("filters.names", QStringList{"", "W\u00e4rme"}));
    table.read();
    QStringList names;
    for (uint8_t id = 0; id < idCount; ++id)
        names << QString::fromUtf8(zvtGetFilterName(id));
    names[1] = QStringLiteral("W\u00e4rme");
    QCOMPARE(table.model.filterIDNameStringListModel(), names);
}

void tst_MfgCorvinFilterSettingsModel::failedNameIsEmpty()
{
    FilterTableRig table;
    table.read();
    QStringList names = table.model.filterIDNameStringListModel();
    names[5].clear();
    table.gate().failNext("zvtGetFilterNameEx", 6);
    table.read();
    // The name of the ID before it is not repeated, and those behind it keep their places.
    QCOMPARE(table.model.filterIDNameStringListModel(), names);
}

void tst_MfgCorvinFilterSettingsModel::longNamesAreComplete()
{
    FilterTableRig table;
    table.gate().script("zvtGetFilterNameEx", QString(256, u'f'));
    table.read();
    QCOMPARE(table.model.filterIDNameStringListModel(), QStringList(idCount, QString(256, u'f')));
    table.gate().script("zvtGetFilterNameEx", QString(300, u'f'));
    table.gate().fillBuffers(true);
    table.read();
    QCOMPARE(table.model.filterIDNameStringListModel(), QStringList(idCount, QString(257, u'f')));
}

// The walkers

void tst_MfgCorvinFilterSettingsModel::visibilityReadsNothing() { walkVisibility(filterTableModel()); }

void tst_MfgCorvinFilterSettingsModel::failingReads()
{
    const ReadException noRows{{"filterListModel", "selectedFilterIndex"},
                               "without rows no row is the current one",
                               {"filterListModel", "selectedFilterIndex"}};
    const ReadException noCurrent{{"selectedFilterIndex"}, "it is signalled by every read", {"selectedFilterIndex"}};
    const ReadException noName{
        {"filterIDNameStringListModel"}, "the name in its place is empty", {"filterIDNameStringListModel"}};
    ReadExceptions exceptions{{"zvtGetNumFilters", noRows},       {"zvtGetFilterIDInSlot", noRows},
                              {"zvtGetFilterIDInSlot#2", noRows}, {"zvtGetFilterIDInSlot#3", noRows},
                              {"zvtGetFilterIDInSlot#4", noRows}, {"zvtGetCurrentFilterID", noCurrent},
                              {"zvtGetFilterNameEx", noName}};
    for (int number = 2; number <= idCount; ++number)
        exceptions.insert(QStringLiteral("zvtGetFilterNameEx#%1").arg(number), noName);
    walkFailingReads(filterTableModel(), exceptions);
}

void tst_MfgCorvinFilterSettingsModel::heldReadsOutliveTheModel() { walkHeldDeletion(filterTableModel()); }

void tst_MfgCorvinFilterSettingsModel::secondRefreshIsDropped() { walkSecondRefresh(filterTableModel()); }

void tst_MfgCorvinFilterSettingsModel::readsWithoutACamera()
{
    walkNoCamera(modelOf<MfgCorvinFilterSettingsModel>(),
                 {"filterIDNameStringListModel", "selectedFilterIndex", "filterListModel"});
}

void tst_MfgCorvinFilterSettingsModel::randomOperator() { walkRandomOperator(filterTableModel(), 95); }

ZVT_TEST(tst_MfgCorvinFilterSettingsModel)
#include "tst_MfgCorvinFilterSettingsModel.moc"
