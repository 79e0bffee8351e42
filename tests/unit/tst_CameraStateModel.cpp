#include "tests/support/Test.h"
#include "tests/unit/StateRig.h"

#include <QRegularExpression>

#include <atomic>

/// The list of states, the name of the current one, and the operations that change the list.
class tst_CameraStateModel : public Test
{
    Q_OBJECT

private slots:
    void constructionReadsTheCurrentState();
    void startWithoutACameraFailsQuietly();
    void currentStateIsReadInOrder();
    void stateMayBeOverwritten_data();
    void stateMayBeOverwritten();
    void unreadNameIsTestedAsItIs();
    void currentStateIsSignalledInAnyCase();
    void onlyARefreshLogsTheName();
    void newerReadOfTheCurrentStateWins();

    void refreshListsInTheOrderOfTheCamera();
    void datesCountFromTheYear1601();
    void failedListingIsAnEmptyList();
    void refreshedRisesOnce();
    void entriesAreReplacedAndFreed();

    void deletingTakesTheFirstEntryOfTheName();
    void refusedDeletionChangesNothing();
    void renamingMovesTheEntryToTheEnd();
    void refusedRenamingChangesNothing();
    void existenceIsAskedOfTheCamera();
    void nameIsTestedAsAFileName();

    void failingReads();
    void heldReadsOutliveTheModel();
    void secondRefreshIsDropped();
    void readsWithoutACamera();
    void randomOperator();

private:
    static void expectCurrentStateLine(const QString &name)
    {
        QTest::ignoreMessage(QtDebugMsg,
                             QRegularExpression("^Current state name is: " + QRegularExpression::escape(name) + "$"));
    }
};

void tst_CameraStateModel::constructionReadsTheCurrentState()
{
    CameraRig rig;
    rig.gate().script("zvtGetStateName", "Kiln");
    rig.gate().script("zvtIsFactoryDefaultState", false);
    const size_t mark = rig.gate().mark();
    ZvtCameraModel root(rig.controller(), nullptr);
    QCOMPARE(root.cameraState()->currentStateName(), QString());
    QVERIFY(!root.cameraState()->canSaveState());
    CameraRig::settle();
    QCOMPARE(root.cameraState()->currentStateName(), QStringLiteral("Kiln"));
    QVERIFY(root.cameraState()->canSaveState());
    QCOMPARE(rig.callsSince(mark).filter("zvtListStates"), QStringList());
    QVERIFY(!root.cameraState()->hasRefreshed());
}

void tst_CameraStateModel::startWithoutACameraFailsQuietly()
{
    State state(false);
    QCOMPARE(state.model.currentStateName(), QString());
    QVERIFY(!state.model.canSaveState());
    ZvtCameraModel orphan({}, nullptr);
    CameraRig::settle();
    QCOMPARE(orphan.cameraState()->currentStateName(), QString());
}

void tst_CameraStateModel::currentStateIsReadInOrder()
{
    State state;
    const size_t mark = state.rig.gate().mark();
    const size_t namesMark = emulator::Sdk::gate().mark();
    state.rig.gate().script("zvtGetStateName", "Kiln");
    expectCurrentStateLine("Kiln");
    state.run(&CameraStateModel::refresh);
    QStringList calls = state.rig.callsSince(mark);
    QVERIFY(calls.removeOne("zvtListStates"));
    QCOMPARE(calls, QStringList({"zvtGetStateName", "zvtIsFactoryDefaultState"}));
    const auto tests = emulator::Sdk::gate().callsSince(namesMark);
    QCOMPARE(tests.size(), size_t(1));
    QCOMPARE(tests.front().name, std::string("zvtIsValidStateName"));
    QCOMPARE(tests.front().arguments, std::string("\"Kiln\""));
}

void tst_CameraStateModel::stateMayBeOverwritten_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("factory");
    QTest::addColumn<bool>("canSave");
    QTest::newRow("plain") << "Kiln" << false << true;
    QTest::newRow("factory default") << "Kiln" << true << false;
    QTest::newRow("name of the factory default") << "Factory Defaults" << false << false;
    QTest::newRow("name of the hard defaults") << "Hard Defaults" << false << false;
    QTest::newRow("in another case") << "hard defaults" << false << false;
    QTest::newRow("no state name") << "a:b" << false << false;
    QTest::newRow("none") << "" << false << false;
}

void tst_CameraStateModel::stateMayBeOverwritten()
{
    QFETCH(const QString, name);
    QFETCH(const bool, factory);
    QFETCH(const bool, canSave);
    State state;
    state.rig.gate().script("zvtGetStateName", name);
    state.rig.gate().script("zvtIsFactoryDefaultState", factory);
    state.run(&CameraStateModel::refresh);
    QCOMPARE(state.model.currentStateName(), name);
    QCOMPARE(state.model.canSaveState(), canSave);
}

// After a failed call the buffer is not used as the name, but the SDK still validates its contents.
void tst_CameraStateModel::unreadNameIsTestedAsItIs()
{
    State state;
    state.rig.gate().failAlways("zvtGetStateName");
    state.rig.gate().failAlways("zvtIsFactoryDefaultState");
    const size_t namesMark = emulator::Sdk::gate().mark();
    state.run(&CameraStateModel::refresh);
    QCOMPARE(state.model.currentStateName(), QString());
    QVERIFY(!state.model.canSaveState());
    const auto tests = emulator::Sdk::gate().callsSince(namesMark);
    QCOMPARE(tests.size(), size_t(1));
    QCOMPARE(tests.front().arguments, std::string("\"\""));
}

void tst_CameraStateModel::currentStateIsSignalledInAnyCase()
{
    State state;
    auto &order = state.note(
        {{&CameraStateModel::currentStateNameChanged, "name"}, {&CameraStateModel::canSaveStateChanged, "canSave"}});
    state.run(&CameraStateModel::refresh);
    QCOMPARE(order, QStringList({"name", "canSave"}));
    state.run(&CameraStateModel::refresh);
    QCOMPARE(order, QStringList({"name", "canSave", "name", "canSave"}));
}

void tst_CameraStateModel::onlyARefreshLogsTheName()
{
    static std::atomic<int> lines = 0;
    const auto count = [](QtMsgType, const QMessageLogContext &, const QString &text) {
        if (text.startsWith(QLatin1String("Current state name is: ")))
            ++lines;
    };
    const QtMessageHandler before = qInstallMessageHandler(count);
    State state;
    const int atTheStart = lines;
    state.run(&CameraStateModel::refresh);
    qInstallMessageHandler(before);
    QCOMPARE(atTheStart, 0);
    QCOMPARE(lines, 1);
}

void tst_CameraStateModel::newerReadOfTheCurrentStateWins()
{
    CameraRig rig;
    rig.gate().script("zvtGetStateName", "older");
    rig.gate().hold("zvtIsFactoryDefaultState");
    ZvtCameraModel root(rig.controller(), nullptr);
    QVERIFY(rig.gate().waitHeld("zvtIsFactoryDefaultState"));
    const QSignalSpy named(root.cameraState(), &CameraStateModel::currentStateNameChanged);
    rig.gate().script("zvtGetStateName", "newer");
    root.cameraState()->refresh();
    QVERIFY(rig.gate().waitHeld("zvtIsFactoryDefaultState", 2));
    rig.gate().release("*");
    CameraRig::settle();
    QCOMPARE(root.cameraState()->currentStateName(), QStringLiteral("newer"));
    QCOMPARE(named.size(), 1);
}

// The list

void tst_CameraStateModel::refreshListsInTheOrderOfTheCamera()
{
    State state;
    for (const char *name : {"Kiln", "aerial", "Glühofen"})
        state.save(name);
    hlx::TArray<zvtSDirEntry> entries;
    QCOMPARE(zvtListStates(state.rig.camera().handle(), &entries), 0);
    QStringList expected;
    for (const auto &entry : entries)
        expected << QString::fromUtf8(entry.name.c_str());
    QCOMPARE(expected.size(), 3);
    QVERIFY(expected.contains(QStringLiteral("Glühofen")));

    auto &order = state.note({{&CameraStateModel::refreshingChanged, "refreshing"},
                              {&CameraStateModel::hasRefreshedChanged, "hasRefreshed"}});
    QObject::connect(state.model.entries(), &ObjectListModel::sizeChanged, this, [&order] {
        if (order.last() != "entries")
            order << "entries";
    });
    state.model.refresh();
    QVERIFY(state.model.refreshing());
    CameraRig::settle();
    QVERIFY(!state.model.refreshing());
    QCOMPARE(state.names(), expected);
    QCOMPARE(order, QStringList({"refreshing", "entries", "hasRefreshed", "refreshing"}));
}

void tst_CameraStateModel::datesCountFromTheYear1601()
{
    State state;
    state.save("Kiln");
    state.run(&CameraStateModel::refresh);
    QCOMPARE(state.entry(0)->date().timeSpec(), Qt::UTC);
    QCOMPARE(state.entry(0)->date(), QDateTime::fromMSecsSinceEpoch(emulator::Clock::now(), Qt::UTC));
}

void tst_CameraStateModel::failedListingIsAnEmptyList()
{
    State state;
    state.save("Kiln");
    state.run(&CameraStateModel::refresh);
    QCOMPARE(state.names(), QStringList("Kiln"));
    state.rig.gate().failAlways("zvtListStates");
    state.run(&CameraStateModel::refresh);
    QCOMPARE(state.names(), QStringList());
}

void tst_CameraStateModel::refreshedRisesOnce()
{
    State state;
    const QSignalSpy refreshed(&state.model, &CameraStateModel::hasRefreshedChanged);
    state.run(&CameraStateModel::refresh);
    state.model.refresh();
    QVERIFY(state.model.hasRefreshed());
    CameraRig::settle();
    QCOMPARE(refreshed.size(), 1);
}

void tst_CameraStateModel::entriesAreReplacedAndFreed()
{
    State state;
    state.save("Kiln");
    state.run(&CameraStateModel::refresh);
    const QPointer<CameraStateEntry> old = state.entry(0);
    state.run(&CameraStateModel::refresh);
    QVERIFY(old.isNull());
    const QPointer<CameraStateEntry> renamed = state.entry(0);
    state.run(&CameraStateModel::renameState, QStringLiteral("Kiln"), QStringLiteral("Oven"));
    QVERIFY(renamed.isNull());
    const QPointer<CameraStateEntry> deleted = state.entry(0);
    state.run(&CameraStateModel::deleteState, QStringLiteral("Oven"));
    QVERIFY(deleted.isNull());
}

// Operations that change the list

void tst_CameraStateModel::deletingTakesTheFirstEntryOfTheName()
{
    State state;
    for (const char *name : {"a", "b", "c"})
        state.save(name);
    state.run(&CameraStateModel::refresh);
    const size_t mark = state.rig.gate().mark();
    state.model.deleteState("b");
    QCOMPARE(state.rig.callsSince(mark), QStringList("zvtDeleteState"));
    QCOMPARE(state.names(), QStringList({"a", "c"}));
    QCOMPARE(state.files(), QStringList({"a.qsf", "c.qsf"}));
}

void tst_CameraStateModel::refusedDeletionChangesNothing()
{
    State state;
    state.save("a");
    state.run(&CameraStateModel::refresh);
    state.rig.gate().failAlways("zvtDeleteState");
    state.model.deleteState("a");
    QCOMPARE(state.names(), QStringList("a"));
    QCOMPARE(state.files(), QStringList("a.qsf"));
    state.rig.gate().failNever();
    state.model.deleteState("none");
    QCOMPARE(state.names(), QStringList("a"));
}

void tst_CameraStateModel::renamingMovesTheEntryToTheEnd()
{
    State state;
    for (const char *name : {"a", "b", "c"})
        state.save(name);
    state.run(&CameraStateModel::refresh);
    state.run(&CameraStateModel::loadState, QStringLiteral("a"));
    const QDateTime date = state.entry(0)->date();
    state.model.renameState("a", "z");
    QCOMPARE(state.names(), QStringList({"b", "c", "z"}));
    QCOMPARE(state.entry(2)->date(), date);
    QCOMPARE(state.files(), QStringList({"b.qsf", "c.qsf", "z.qsf"}));
    // Although this is the renamed state.
    QCOMPARE(state.model.currentStateName(), QStringLiteral("a"));
}

void tst_CameraStateModel::refusedRenamingChangesNothing()
{
    State state;
    for (const char *name : {"a", "b"})
        state.save(name);
    state.run(&CameraStateModel::refresh);
    state.model.renameState("a", "b");
    state.model.renameState("none", "c");
    QCOMPARE(state.names(), QStringList({"a", "b"}));
    QCOMPARE(state.files(), QStringList({"a.qsf", "b.qsf"}));
}

void tst_CameraStateModel::existenceIsAskedOfTheCamera()
{
    State state;
    state.save("a");
    QVERIFY(state.model.stateExists("a"));
    QVERIFY(!state.model.stateExists("b"));
    state.rig.camera().disconnect();
    QVERIFY(!state.model.stateExists("a"));
}

// Not as a state name, whose maximum length is shorter.
void tst_CameraStateModel::nameIsTestedAsAFileName()
{
    State state;
    const size_t mark = emulator::Sdk::gate().mark();
    QVERIFY(state.model.stateNameValid("a b"));
    QVERIFY(state.model.stateNameValid(QString(220, 'a')));
    QVERIFY(!state.model.stateNameValid(" a"));
    QVERIFY(!state.model.stateNameValid("a?"));
    QVERIFY(!state.model.stateNameValid(""));
    for (const auto &call : emulator::Sdk::gate().callsSince(mark))
        QCOMPARE(call.name, std::string("zvtIsValidFileName"));
}

namespace
{

/// States for the walkers: a current one that may be overwritten, and two in the list.
ModelUnderTest states()
{
    auto model = modelOf<CameraStateModel>();
    model.prepare = [](CameraRig &rig) {
        for (const char *name : {"a", "b"})
            zvtSaveStateAs(rig.camera().handle(), name);
    };
    // The constructor starts a read; the walkers compare the model after it.
    return model;
}

} // namespace

void tst_CameraStateModel::failingReads()
{
    // A refresh reads the name in a separate task, which always publishes. A call that fails in it does not change the
    // list.
    walkFailingReads(
        states(),
        {{"zvtListStates",
          {{"entries"}, "the list is published as it was read, so that a failed listing empties it", {"entries"}}},
         {"zvtGetStateName",
          {{"canSaveState", "currentStateName"},
           "no name is an empty one, which no state can have",
           {"canSaveState", "currentStateName"}}},
         {"zvtIsFactoryDefaultState", {{}, "its status is ignored; a failed read counts as false"}}});
}

void tst_CameraStateModel::heldReadsOutliveTheModel() { walkHeldDeletion(states()); }

void tst_CameraStateModel::secondRefreshIsDropped() { walkSecondRefresh(states()); }

void tst_CameraStateModel::readsWithoutACamera()
{
    walkNoCamera(states(),
                 {QStringLiteral("entries"), QStringLiteral("currentStateName"), QStringLiteral("canSaveState")});
}

void tst_CameraStateModel::randomOperator() { walkRandomOperator(states(), 31); }

ZVT_TEST(tst_CameraStateModel)
#include "tst_CameraStateModel.moc"
