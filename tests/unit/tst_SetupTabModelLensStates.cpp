#include "tests/support/Test.h"
#include "tests/unit/SetupTabRig.h"

#include "zvt/zvtsdk.h"

/// The lens states: named positions of the lens, stored in the camera.
class tst_SetupTabModelLensStates : public Test
{
    Q_OBJECT

private slots:
    void listComesWithTheRefresh();
    void listComesThoughTheLimitsWereReadMeanwhile();
    void everyRefreshSelectsTheFirstState();
    void failedListIsEmpty();
    void lensWithoutStatesPublishesAnEmptyList();
    void newestListIsPublished();
    void modelMayDieDuringTheList();

    void addedStateIsSelected();
    void addingAKnownNameOverwrites();
    void failedAddStopsWhereItFails_data();
    void failedAddStopsWhereItFails();
    void addOfALensWithoutStatesSignalsOnly();

    void renamedStateIsSelected();
    void refusedRenameChangesNothing();
    void renamedStateThatIsNotListedIsNotSelected();

    void savedStateLosesItsMark();
    void loadLooksAtTheLens_data();
    void loadLooksAtTheLens();

    void deleteLoadsTheFirstState();
    void deleteOfTheLastStateLoadsNothing();
    void refusedDeleteChangesNothing();

    void selectionIsStoredOnly();
    void namesAreUtf8();
};

namespace
{

const QStringList listed{"hasAtLeastOneLensStateChanged", "lensStateNamesChanged", "selectedLensStateIndexChanged"};
const QString listCall = QStringLiteral("zvtListLensStates");
const QString mark = QStringLiteral("selectedLensStateComponentsModifiedNotSavedChanged");
const QStringList focusOnly{"zvtGetFocusCurrentPos"};

/// A tab on a camera with these lens states, which it sorts by name.
struct StatesTab : SetupTab {
    explicit StatesTab(const QStringList &names, const QString &profile = QStringLiteral("everything"))
        : SetupTab(profile)
    {
        for (const QString &name : names)
            zvtSaveLensStateAs(handle(), name.toUtf8().constData());
        refresh();
    }

    /// The calls of the list and the states, without the reads after a load.
    template <class Action> QStringList stateCallsOf(Action action)
    {
        static const QRegularExpression states(QStringLiteral("LensState"));
        return callsOf(action).filter(states);
    }
};

} // namespace

// The list

void tst_SetupTabModelLensStates::listComesWithTheRefresh()
{
    SetupTab tab;
    zvtSaveLensStateAs(tab.handle(), "Day");
    zvtSaveLensStateAs(tab.handle(), "Night");
    QVERIFY(!tab.model->hasAtLeastOneLensState());
    QCOMPARE(tab.model->selectedLensStateIndex(), 0);
    const size_t since = tab.mark();
    tab.model->refresh();
    CameraRig::settle();
    const QStringList order = tab.log.take();
    QCOMPARE(order.mid(order.size() - listed.size()), listed);
    QVERIFY(tab.calls(since, SetupTab::OnPool).contains(listCall));
    QCOMPARE(tab.model->lensStateNames(), QStringList({"Day", "Night"}));
    QVERIFY(tab.model->hasAtLeastOneLensState());
    QCOMPARE(tab.model->selectedLensStateIndex(), 0);
}

void tst_SetupTabModelLensStates::listComesThoughTheLimitsWereReadMeanwhile()
{
    SetupTab tab(QStringLiteral("discrete-fov"));
    zvtSaveLensStateAs(tab.handle(), "Day");
    tab.gate().hold("zvtGetFrameSyncSource");
    const size_t since = tab.mark();
    tab.model->refresh();
    QTRY_VERIFY(tab.calls(since).contains("zvtGetFocusFarPos 1"));
    // The page reads the field of view before the refresh has ended.
    tab.model->selectedDiscontinuousFieldOfViewIndex();
    QTRY_VERIFY(tab.model->fastSpeedStep() > 0);
    QVERIFY(!tab.calls(since).contains(listCall));
    tab.gate().release("*");
    CameraRig::settle();
    QCOMPARE(tab.model->lensStateNames(), QStringList{"Day"});
    QCOMPARE(tab.calls(since).count(listCall), 1);
}

void tst_SetupTabModelLensStates::everyRefreshSelectsTheFirstState()
{
    StatesTab tab({"Day", "Night"});
    tab.model->setSelectedLensStateIndex(1);
    tab.refresh();
    QCOMPARE(tab.model->selectedLensStateIndex(), 0);
}

void tst_SetupTabModelLensStates::failedListIsEmpty()
{
    StatesTab tab({"Day"});
    tab.gate().failNext("zvtListLensStates");
    tab.model->refresh();
    CameraRig::settle();
    const QStringList order = tab.log.take();
    QCOMPARE(order.mid(order.size() - listed.size()), listed);
    QCOMPARE(tab.model->lensStateNames(), QStringList());
    QVERIFY(!tab.model->hasAtLeastOneLensState());
    QCOMPARE(tab.model->selectedLensStateIndex(), -1);
}

void tst_SetupTabModelLensStates::lensWithoutStatesPublishesAnEmptyList()
{
    SetupTab tab(QStringLiteral("low-cost"));
    tab.model->refresh();
    CameraRig::settle();
    const QStringList order = tab.log.take();
    QCOMPARE(order.mid(order.size() - listed.size()), listed);
    QCOMPARE(tab.model->selectedLensStateIndex(), -1);
}

// Several reads of the list may run at the same time.
void tst_SetupTabModelLensStates::newestListIsPublished()
{
    StatesTab tab({"Day"});
    tab.gate().hold("zvtListLensStates");
    const size_t since = tab.mark();
    for (int list = 1; list <= 2; ++list) {
        tab.model->refresh();
        QTRY_COMPARE(tab.calls(since).count(listCall), list);
        QVERIFY(tab.model->hasRefreshed());
    }
    tab.log.take();
    tab.gate().release("*");
    CameraRig::settle();
    QCOMPARE(tab.log.take(), listed);
}

void tst_SetupTabModelLensStates::modelMayDieDuringTheList()
{
    StatesTab tab({"Day"});
    auto *model = new SetupTabModel(&tab.root);
    tab.gate().hold("zvtListLensStates");
    const size_t since = tab.mark();
    model->refresh();
    QTRY_VERIFY(tab.calls(since).contains(listCall));
    delete model;
    tab.gate().release("*");
    CameraRig::settle();
}

// Adding

void tst_SetupTabModelLensStates::addedStateIsSelected()
{
    StatesTab tab({"Day", "Night"});
    QCOMPARE(tab.callsOf([&] { tab.model->addLensState("Evening"); }),
             QStringList({"zvtSaveLensStateAs \"Evening\"", listCall, "zvtLoadLensState \"Evening\""}));
    QCOMPARE(tab.model->lensStateNames(), QStringList({"Day", "Evening", "Night"}));
    QCOMPARE(tab.model->selectedLensStateIndex(), 1);
    QCOMPARE(tab.log.take(), listed + QStringList({"selectedLensStateIndexChanged", mark}));
}

void tst_SetupTabModelLensStates::addingAKnownNameOverwrites()
{
    StatesTab tab({"Day", "Night"}, QStringLiteral("discrete-fov"));
    tab.model->setSelectedDiscontinuousFieldOfViewIndex(1);
    tab.model->addLensState("Night");
    QCOMPARE(tab.model->lensStateNames(), QStringList({"Day", "Night"}));
    QCOMPARE(tab.model->selectedLensStateIndex(), 1);
    QVERIFY(!tab.model->selectedLensStateComponentsModifiedNotSaved());
}

void tst_SetupTabModelLensStates::failedAddStopsWhereItFails_data()
{
    QTest::addColumn<QString>("failing");
    QTest::addColumn<int>("calls");
    QTest::addColumn<QStringList>("signalled");
    QTest::addColumn<int>("index");
    QTest::newRow("save") << "zvtSaveLensStateAs" << 1 << QStringList() << 1;
    // The index stays although the list is empty.
    QTest::newRow("list") << "zvtListLensStates" << 3 << listed << 1;
    QTest::newRow("load") << "zvtLoadLensState" << 3 << listed << 0;
}

void tst_SetupTabModelLensStates::failedAddStopsWhereItFails()
{
    QFETCH(QString, failing);
    QFETCH(int, calls);
    QFETCH(QStringList, signalled);
    StatesTab tab({"Day", "Night"});
    tab.model->setSelectedLensStateIndex(1);
    tab.log.take();
    tab.gate().failNext(failing.toStdString());
    QCOMPARE(tab.callsOf([&] { tab.model->addLensState("Zenith"); }).size(), calls);
    QCOMPARE(tab.log.take(), signalled);
    QTEST(tab.model->selectedLensStateIndex(), "index");
    QCOMPARE(tab.model->hasAtLeastOneLensState(), failing != "zvtListLensStates");
}

void tst_SetupTabModelLensStates::addOfALensWithoutStatesSignalsOnly()
{
    SetupTab tab(QStringLiteral("low-cost"));
    for (const char *name : {"zvtSaveLensStateAs", "zvtLoadLensState"})
        tab.gate().script(name, true);
    QCOMPARE(tab.callsOf([&] { tab.model->addLensState("Day"); }),
             QStringList({"zvtSaveLensStateAs \"Day\"", "zvtLoadLensState \"Day\""}));
    QCOMPARE(tab.log.take(), listed);
    QCOMPARE(tab.model->selectedLensStateIndex(), 0);
}

// Renaming

void tst_SetupTabModelLensStates::renamedStateIsSelected()
{
    StatesTab tab({"Day", "Night"});
    QCOMPARE(tab.callsOf([&] { tab.model->renameLensState("Day", "Zenith"); }),
             QStringList({"zvtRenameLensState \"Day\", \"Zenith\"", listCall}));
    QCOMPARE(tab.model->lensStateNames(), QStringList({"Night", "Zenith"}));
    QCOMPARE(tab.model->selectedLensStateIndex(), 1);
    // The mark of a modified state is not changed.
    QCOMPARE(tab.log.take(), listed + QStringList{"selectedLensStateIndexChanged"});
}

void tst_SetupTabModelLensStates::refusedRenameChangesNothing()
{
    StatesTab tab({"Day", "Night"});
    QCOMPARE(tab.callsOf([&] { tab.model->renameLensState("Day", "Night"); }),
             QStringList{"zvtRenameLensState \"Day\", \"Night\""});
    QCOMPARE(tab.log.take(), QStringList());
    QCOMPARE(tab.model->lensStateNames(), QStringList({"Day", "Night"}));
}

void tst_SetupTabModelLensStates::renamedStateThatIsNotListedIsNotSelected()
{
    StatesTab tab({"Day", "Night"});
    tab.gate().failNext("zvtListLensStates");
    tab.model->renameLensState("Night", "Zenith");
    QCOMPARE(tab.model->lensStateNames(), QStringList());
    QCOMPARE(tab.model->selectedLensStateIndex(), 0);
    QCOMPARE(tab.log.take(), listed);
}

// Saving and loading

void tst_SetupTabModelLensStates::savedStateLosesItsMark()
{
    for (const bool refused : {false, true}) {
        StatesTab tab({"Day"}, QStringLiteral("discrete-fov"));
        tab.model->setSelectedDiscontinuousFieldOfViewIndex(1);
        QVERIFY(tab.model->selectedLensStateComponentsModifiedNotSaved());
        tab.log.take();
        if (refused)
            tab.gate().failNext("zvtSaveLensStateAs");
        QCOMPARE(tab.callsOf([&] { tab.model->saveLensState("Day"); }), QStringList{"zvtSaveLensStateAs \"Day\""});
        QCOMPARE(tab.log.take(), QStringList{mark});
        QVERIFY(!tab.model->selectedLensStateComponentsModifiedNotSaved());
    }
}

void tst_SetupTabModelLensStates::loadLooksAtTheLens_data()
{
    QTest::addColumn<QStringList>("looks");
    QTest::addColumn<QStringList>("signalled");
    QTest::newRow("discrete-fov") << focusOnly
                                  << QStringList{"selectedDiscontinuousFieldOfViewIndexChanged",
                                                 "selectedFocusPositionChanged", mark};
    QTest::newRow("everything") << QStringList{"zvtGetFOVCurrentPos"} + focusAndDistances
                                << QStringList{"selectedZoomPositionChanged", "selectedFocusPositionChanged",
                                               "distanceRangeValuesChanged", mark};
    QTest::newRow("low-cost") << QStringList() << QStringList{mark};
}

void tst_SetupTabModelLensStates::loadLooksAtTheLens()
{
    QFETCH(QStringList, looks);
    QFETCH(QStringList, signalled);
    for (const bool refused : {false, true}) {
        SetupTab tab(QString::fromLatin1(QTest::currentDataTag()));
        tab.gate().script("zvtLoadLensState", true);
        if (refused)
            tab.gate().failNext("zvtLoadLensState");
        QTest::ignoreMessage(QtDebugMsg, "Trying to load lens state: Day");
        QCOMPARE(tab.callsOf([&] { tab.model->loadLensState("Day"); }),
                 QStringList{"zvtLoadLensState \"Day\""} + looks);
        QCOMPARE(tab.log.take(), signalled);
    }
}

// Deleting

void tst_SetupTabModelLensStates::deleteLoadsTheFirstState()
{
    StatesTab tab({"Day", "Evening", "Night"});
    tab.model->setSelectedLensStateIndex(2);
    QTest::ignoreMessage(QtDebugMsg, "Trying to load lens state: Day");
    QCOMPARE(tab.stateCallsOf([&] { tab.model->deleteLensState("Night"); }),
             QStringList({"zvtDeleteLensState \"Night\"", listCall, "zvtLoadLensState \"Day\""}));
    QCOMPARE(tab.model->lensStateNames(), QStringList({"Day", "Evening"}));
    QCOMPARE(tab.model->selectedLensStateIndex(), 0);
}

void tst_SetupTabModelLensStates::deleteOfTheLastStateLoadsNothing()
{
    StatesTab tab({"Day"});
    QCOMPARE(tab.callsOf([&] { tab.model->deleteLensState("Day"); }),
             QStringList({"zvtDeleteLensState \"Day\"", listCall}));
    QCOMPARE(tab.model->lensStateNames(), QStringList());
    QCOMPARE(tab.model->selectedLensStateIndex(), -1);
    QCOMPARE(tab.log.take(), listed);
}

void tst_SetupTabModelLensStates::refusedDeleteChangesNothing()
{
    StatesTab tab({"Day"});
    QCOMPARE(tab.callsOf([&] { tab.model->deleteLensState("Night"); }), QStringList{"zvtDeleteLensState \"Night\""});
    QCOMPARE(tab.log.take(), QStringList());
}

// Names and selection

void tst_SetupTabModelLensStates::selectionIsStoredOnly()
{
    StatesTab tab({"Day", "Night"});
    QCOMPARE(tab.callsOf([&] {
        tab.model->setSelectedLensStateIndex(0);
        tab.model->setSelectedLensStateIndex(1);
    }),
             QStringList());
    QCOMPARE(tab.log.take(), QStringList{"selectedLensStateIndexChanged"});
}

void tst_SetupTabModelLensStates::namesAreUtf8()
{
    const QString name = QString::fromUtf8("Ferne Größe 高");
    StatesTab tab({name});
    QCOMPARE(tab.model->lensStateNames(), QStringList{name});
    QVERIFY(tab.callsOf([&] { tab.model->saveLensState(name); })
                .contains(QStringLiteral("zvtSaveLensStateAs \"%1\"").arg(name)));
}

ZVT_TEST(tst_SetupTabModelLensStates)
#include "tst_SetupTabModelLensStates.moc"
