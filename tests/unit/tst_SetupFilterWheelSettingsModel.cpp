#include "tests/support/Test.h"
#include "tests/unit/FilterWheelRig.h"

#include <QPointer>

#include <thread>

/// The filter wheel: its reads and its scans.
class tst_SetupFilterWheelSettingsModel : public Test
{
    Q_OBJECT

private slots:
    void nothingIsKnownAtFirst();
    void filterIDIsStoredOnly();

    void readsInOrder();
    void publishesInOrder();
    void namesAndSlotsOfTheRows();
    void rowsHaveTheNamesOfTheirFilters();
    void countDecidesOnTheRows_data();
    void countDecidesOnTheRows();
    void failedReadEmptiesTheList_data();
    void failedReadEmptiesTheList();
    void failedNameIsEmpty();
    void longNameIsNotReadBeyondItsBuffer();
    void currentFilterIsTheFirstRowOfItsID();
    void currentFilterInNoRowKeepsTheSelection();
    void oldRowsAreFreed();

    void scanFollowsTheCount();
    void scanIsDoneOnce();
    void scanDuringAReadIsLeftToTheNextOne();
    void scanRequestedDuringAScanIsLeftToTheNextRead();

    void visibilityReadsNothing();
    void rootRefreshesAVisibleWheelOnly();

    void failingReads();
    void heldReadsOutliveTheModel();
    void secondRefreshIsDropped();
    void readsWithoutACamera();
    void randomOperator();
};

void tst_SetupFilterWheelSettingsModel::nothingIsKnownAtFirst()
{
    const Wheel wheel;
    QVERIFY(!wheel.model.refreshing());
    QVERIFY(!wheel.model.hasRefreshed());
    QVERIFY(!wheel.model.visible());
    QCOMPARE(wheel.model.filterListModel()->size(), 0);
    QCOMPARE(wheel.model.selectedFilterIndex(), -1);
    QVERIFY(!wheel.model.filterSelectionInProgress());
    QVERIFY(!wheel.model.filterReplacementSelectionInProgress());
}

void tst_SetupFilterWheelSettingsModel::filterIDIsStoredOnly()
{
    FilterWheelItemModel filter(QStringLiteral("Open"), 1, 2, nullptr);
    QCOMPARE(filter.filterName(), QStringLiteral("Open"));
    QCOMPARE(filter.slotID(), 2);
    SignalLog log(&filter);
    filter.setFilterID(7);
    QCOMPARE(filter.filterID(), 7);
    QCOMPARE(log.take(), QStringList("filterIDChanged"));
    filter.setFilterID(7);
    QCOMPARE(log.take(), QStringList());
    QCOMPARE(filter.filterName(), QStringLiteral("Open"));
}

// Reading

void tst_SetupFilterWheelSettingsModel::readsInOrder()
{
    Wheel wheel;
    const size_t mark = wheel.gate().mark();
    QCOMPARE(wheel.refresh(), readCalls);
    for (const auto &call : wheel.gate().callsSince(mark))
        if (call.name.starts_with("zvt"))
            QVERIFY(call.thread != std::this_thread::get_id());
    QCOMPARE(wheel.ids(), QList<int>({1, 13, 21, 25}));
    QCOMPARE(wheel.model.selectedFilterIndex(), 1);
}

void tst_SetupFilterWheelSettingsModel::publishesInOrder()
{
    Wheel wheel;
    SignalLog log(&wheel.model);
    wheel.model.refresh();
    // The two flags change in this order here, unlike in most models.
    QCOMPARE(log.take(), QStringList({"hasRefreshedChanged", "refreshingChanged"}));
    QVERIFY(wheel.model.refreshing());
    QVERIFY(!wheel.model.hasRefreshed());
    CameraRig::settle();
    QCOMPARE(log.take(), QStringList({"selectedFilterIndexChanged", "hasRefreshedChanged", "refreshingChanged"}));
    QVERIFY(wheel.model.hasRefreshed());
    // The selection is signalled also if it is the same.
    wheel.refresh();
    QVERIFY(log.take().contains("selectedFilterIndexChanged"));
}

void tst_SetupFilterWheelSettingsModel::namesAndSlotsOfTheRows()
{
    Wheel wheel;
    QStringList asked;
    const size_t mark = wheel.gate().mark();
    wheel.refresh();
    for (const auto &call : wheel.gate().callsSince(mark))
        if (call.name == "zvtGetFilterNameEx")
            asked << QString::fromStdString(call.arguments);
    QCOMPARE(asked, QStringList({"1", "13", "21", "25"}));
    for (int row = 0; row < 4; ++row) {
        QCOMPARE(wheel.filter(row)->filterName(), QStringLiteral("Cold filter"));
        QCOMPARE(wheel.filter(row)->slotID(), -1);
    }
}

void tst_SetupFilterWheelSettingsModel::rowsHaveTheNamesOfTheirFilters()
{
    CameraRig rig(QStringLiteral("discrete-fov"));
    ZvtCameraModel root(rig.controller(), nullptr);
    QVERIFY(rig.camera().otherClient().set("filters.names", QStringList{"", "Window"}));
    root.setupFilterWheelSettingsModel()->refresh();
    CameraRig::settle();
    QStringList names;
    for (int row = 0; row < root.setupFilterWheelSettingsModel()->filterListModel()->size(); ++row)
        names << qobject_cast<FilterWheelItemModel *>(root.setupFilterWheelSettingsModel()->filterListModel()->at(row))
                     ->filterName();
    QCOMPARE(names, QStringList({"Window", "ND 0.3", "BP 3.30 um"}));
    QCOMPARE(root.setupFilterWheelSettingsModel()->selectedFilterIndex(), 0);
}

void tst_SetupFilterWheelSettingsModel::countDecidesOnTheRows_data()
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

void tst_SetupFilterWheelSettingsModel::countDecidesOnTheRows()
{
    QFETCH(const int, count);
    QFETCH(const int, rows);
    Wheel wheel;
    wheel.gate().script("zvtGetNumFilters", count);
    QCOMPARE(wheel.refresh(), readCalls);
    QCOMPARE(wheel.ids(), QList<int>({1, 13, 21, 25}).first(rows));
}

void tst_SetupFilterWheelSettingsModel::failedReadEmptiesTheList_data()
{
    QTest::addColumn<QString>("call");
    QTest::newRow("count") << "zvtGetNumFilters";
    QTest::newRow("filters") << "zvtGetFilterIDs";
}

void tst_SetupFilterWheelSettingsModel::failedReadEmptiesTheList()
{
    QFETCH(const QString, call);
    Wheel wheel;
    wheel.refresh();
    wheel.gate().failAlways(call.toStdString());
    const QStringList calls = wheel.refresh();
    QCOMPARE(calls.contains("zvtGetFilterNameEx"), call != "zvtGetFilterIDs");
    QVERIFY(calls.contains("zvtGetCurrentFilterID"));
    QCOMPARE(wheel.ids(), QList<int>());
    QCOMPARE(wheel.model.selectedFilterIndex(), 1);
    QVERIFY(wheel.model.hasRefreshed());
}

void tst_SetupFilterWheelSettingsModel::failedNameIsEmpty()
{
    Wheel wheel;
    wheel.gate().failNext("zvtGetFilterNameEx", 2);
    wheel.refresh();
    QCOMPARE(wheel.filter(0)->filterName(), QStringLiteral("Cold filter"));
    QCOMPARE(wheel.filter(1)->filterName(), QString());
    QCOMPARE(wheel.filter(2)->filterName(), QStringLiteral("Cold filter"));
}

void tst_SetupFilterWheelSettingsModel::longNameIsNotReadBeyondItsBuffer()
{
    Wheel wheel;
    wheel.gate().script("zvtGetFilterNameEx", QString(300, u'f'));
    wheel.gate().fillBuffers(true);
    wheel.refresh();
    QCOMPARE(wheel.filter(3)->filterName(), QString(200, u'f'));
}

void tst_SetupFilterWheelSettingsModel::currentFilterIsTheFirstRowOfItsID()
{
    Wheel wheel;
    wheel.gate().script("zvtGetFilterIDs", QVariantList{1, 13, 25, 25});
    wheel.gate().script("zvtGetCurrentFilterID", 25);
    wheel.refresh();
    QCOMPARE(wheel.model.selectedFilterIndex(), 2);
}

void tst_SetupFilterWheelSettingsModel::currentFilterInNoRowKeepsTheSelection()
{
    Wheel wheel;
    wheel.refresh();
    SignalLog log(&wheel.model);
    wheel.gate().script("zvtGetCurrentFilterID", 40);
    wheel.refresh();
    QCOMPARE(wheel.model.selectedFilterIndex(), 1);
    QVERIFY(!log.take().contains("selectedFilterIndexChanged"));
    // The filter in a slot without a row, too.
    wheel.gate().script("zvtGetNumFilters", 3);
    wheel.gate().script("zvtGetCurrentFilterID", 25);
    wheel.refresh();
    QCOMPARE(wheel.model.selectedFilterIndex(), 1);
}

void tst_SetupFilterWheelSettingsModel::oldRowsAreFreed()
{
    Wheel wheel;
    wheel.refresh();
    const QPointer<FilterWheelItemModel> old = wheel.filter(0);
    wheel.refresh();
    QVERIFY(old.isNull());
    QCOMPARE(wheel.model.filterListModel()->size(), 4);
}

// Scanning

void tst_SetupFilterWheelSettingsModel::scanFollowsTheCount()
{
    Wheel wheel;
    QCOMPARE(wheel.callsOf([&] { wheel.model.forceScan(); }), scanCalls);
    QVERIFY(wheel.model.hasRefreshed());
}

void tst_SetupFilterWheelSettingsModel::scanIsDoneOnce()
{
    Wheel wheel;
    wheel.gate().failNext("zvtScanFilters");
    wheel.callsOf([&] { wheel.model.forceScan(); });
    QCOMPARE(wheel.ids().size(), 4);
    QCOMPARE(wheel.refresh(), readCalls);
}

void tst_SetupFilterWheelSettingsModel::scanDuringAReadIsLeftToTheNextOne()
{
    Wheel wheel;
    wheel.gate().hold("zvtGetCurrentFilterID");
    wheel.model.refresh();
    QVERIFY(wheel.gate().waitHeld("zvtGetCurrentFilterID"));
    const QStringList calls = wheel.callsOf([&] {
        wheel.model.forceScan();
        wheel.gate().release("*");
    });
    QCOMPARE(calls, QStringList());
    QCOMPARE(wheel.refresh(), scanCalls);
    QCOMPARE(wheel.refresh(), readCalls);
}

void tst_SetupFilterWheelSettingsModel::scanRequestedDuringAScanIsLeftToTheNextRead()
{
    Wheel wheel;
    wheel.gate().hold("zvtScanFilters");
    wheel.model.forceScan();
    QVERIFY(wheel.gate().waitHeld("zvtScanFilters"));
    wheel.callsOf([&] {
        wheel.model.forceScan();
        wheel.gate().release("*");
    });
    QCOMPARE(wheel.refresh(), scanCalls);
    QCOMPARE(wheel.refresh(), readCalls);
}

// Values of the page

void tst_SetupFilterWheelSettingsModel::visibilityReadsNothing()
{
    Wheel wheel;
    SignalLog log(&wheel.model);
    QCOMPARE(wheel.callsOf([&] { wheel.model.setVisible(true); }), QStringList());
    QVERIFY(wheel.model.visible());
    wheel.model.setVisible(true);
    QCOMPARE(log.take(), QStringList("visibleChanged"));
}

void tst_SetupFilterWheelSettingsModel::rootRefreshesAVisibleWheelOnly()
{
    Wheel wheel;
    QVERIFY(!wheel.callsOf([&] { wheel.root.refreshAllVisible(); }).contains("zvtGetNumFilters"));
    wheel.model.setVisible(true);
    QVERIFY(wheel.callsOf([&] { wheel.root.refreshAllVisible(); }).contains("zvtGetNumFilters"));
}

void tst_SetupFilterWheelSettingsModel::failingReads()
{
    const ReadException noRows{
        {"filterListModel", "selectedFilterIndex"}, "without rows no row is the current one", {"filterListModel"}};
    const ReadException noName{{"filterListModel"}, "the name in its row is empty", {"filterListModel"}};
    walkFailingReads(wheelModel(),
                     {{"zvtGetNumFilters", noRows},
                      {"zvtGetFilterIDs", noRows},
                      {"zvtGetFilterNameEx", noName},
                      {"zvtGetFilterNameEx#2", noName},
                      {"zvtGetFilterNameEx#3", noName},
                      {"zvtGetFilterNameEx#4", noName}});
}

void tst_SetupFilterWheelSettingsModel::heldReadsOutliveTheModel() { walkHeldDeletion(wheelModel()); }

void tst_SetupFilterWheelSettingsModel::secondRefreshIsDropped() { walkSecondRefresh(wheelModel()); }

void tst_SetupFilterWheelSettingsModel::readsWithoutACamera()
{
    walkNoCamera(modelOf<SetupFilterWheelSettingsModel>());
}

void tst_SetupFilterWheelSettingsModel::randomOperator() { walkRandomOperator(wheelModel(), 44); }

ZVT_TEST(tst_SetupFilterWheelSettingsModel)
#include "tst_SetupFilterWheelSettingsModel.moc"
