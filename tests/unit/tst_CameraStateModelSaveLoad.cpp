#include "tests/support/Test.h"
#include "tests/unit/StateRig.h"

#include <QTemporaryDir>
#include <QTimer>

#include <functional>

namespace
{

using Operation = std::function<void(CameraStateModel &)>;

/// One of the six operations that save or load, with its expected effects.
struct SaveOrLoad {
    const char *name;
    Operation start;
    const char *call;
    bool isLoad;
    const char *newName;
    bool canSave;
};

const QList<SaveOrLoad> &operations()
{
    static const QList<SaveOrLoad> all{
        {"saveState", [](auto &m) { m.saveState(); }, "zvtSaveState", false, "a", true},
        {"saveStateAs", [](auto &m) { m.saveStateAs("b"); }, "zvtSaveStateAs", false, "b", true},
        {"saveFactoryDefaults", [](auto &m) { m.saveFactoryDefaults(); }, "zvtSaveFactoryDefaults", false,
         "Factory Defaults", false},
        {"loadState", [](auto &m) { m.loadState("a"); }, "controller.LoadState", true, "a", true},
        {"loadFactoryDefaults", [](auto &m) { m.loadFactoryDefaults(); }, "controller.LoadFactoryDefaults", true,
         "Factory Defaults", false},
        {"loadHardDefaults", [](auto &m) { m.loadHardDefaults(); }, "controller.LoadHardDefaults", true,
         "Hard Defaults", false},
    };
    return all;
}

/// A camera in the state "a", which may be overwritten.
struct InStateA : State {
    InStateA() { save("a"); }
};

} // namespace

/// Saves and loads, and transfers of state files.
class tst_CameraStateModelSaveLoad : public Test
{
    Q_OBJECT

private slots:
    void flagsStandWhileItRuns_data() { addOperations(); }
    void flagsStandWhileItRuns();
    void successNamesTheState_data() { addOperations(); }
    void successNamesTheState();
    void failureKeepsTheNameAndForbidsSaving_data() { addOperations(); }
    void failureKeepsTheNameAndForbidsSaving();
    void nothingElseOfTheKindStartsMeanwhile_data() { addOperations(); }
    void nothingElseOfTheKindStartsMeanwhile();
    void savesAndLoadsWaitForATransfer();
    void stateThatMayNotBeOverwrittenIsNotSaved();
    void savedStateIsThatOfTheStart();
    void specialNamesAreNotSaved();
    void specialNameInAnotherCaseIsSaved();
    void savesLeaveTheListAlone();
    void everySaveIsASnapshot();
    void loadWithoutAControllerFails();

    void endOfALoadReadsAllThatIsVisibleOnce();
    void endOfALoadReadsWhatTheHotKeyReads_data() { addOperations(); }
    void endOfALoadReadsWhatTheHotKeyReads();
    void endOfALoadIsToldBeforeTheName();
    void saveReadsNothing();

    void heldOperationOutlivesTheModel_data() { addOperations(); }
    void heldOperationOutlivesTheModel();

private:
    static void addOperations()
    {
        QTest::addColumn<int>("row");
        for (int row = 0; row < operations().size(); ++row)
            QTest::newRow(operations().at(row).name) << row;
    }
};

void tst_CameraStateModelSaveLoad::flagsStandWhileItRuns()
{
    QFETCH(const int, row);
    const SaveOrLoad &operation = operations().at(row);
    InStateA state;
    auto &order
        = state.note({{&CameraStateModel::savingChanged, "saving"}, {&CameraStateModel::loadingChanged, "loading"}});
    state.rig.gate().hold(operation.call);
    operation.start(state.model);
    QVERIFY(state.rig.gate().waitHeld(operation.call));
    QCOMPARE(state.model.saving(), !operation.isLoad);
    QCOMPARE(state.model.loading(), operation.isLoad);
    const QString flag = operation.isLoad ? "loading" : "saving";
    QCOMPARE(order, QStringList(flag));
    state.rig.gate().release("*");
    CameraRig::settle();
    QVERIFY(!state.model.saving());
    QVERIFY(!state.model.loading());
    QCOMPARE(order, QStringList({flag, flag}));
}

void tst_CameraStateModelSaveLoad::successNamesTheState()
{
    QFETCH(const int, row);
    const SaveOrLoad &operation = operations().at(row);
    InStateA state;
    const QString before = state.model.currentStateName();
    auto &order = state.note(
        {{&CameraStateModel::currentStateNameChanged, "name"}, {&CameraStateModel::canSaveStateChanged, "canSave"}});
    operation.start(state.model);
    CameraRig::settle();
    QCOMPARE(state.model.currentStateName(), QLatin1String(operation.newName));
    QCOMPARE(state.model.canSaveState(), operation.canSave);
    QStringList expected;
    if (before != QLatin1String(operation.newName))
        expected << "name";
    if (!operation.canSave)
        expected << "canSave";
    QCOMPARE(order, expected);
    // The camera reports the same.
    state.run(&CameraStateModel::refresh);
    QCOMPARE(state.model.currentStateName(), QLatin1String(operation.newName));
    QCOMPARE(state.model.canSaveState(), operation.canSave);
}

void tst_CameraStateModelSaveLoad::failureKeepsTheNameAndForbidsSaving()
{
    QFETCH(const int, row);
    const SaveOrLoad &operation = operations().at(row);
    InStateA state;
    const QStringList files = state.files();
    auto &order = state.note(
        {{&CameraStateModel::currentStateNameChanged, "name"}, {&CameraStateModel::canSaveStateChanged, "canSave"}});
    state.rig.gate().failAlways(operation.call);
    operation.start(state.model);
    CameraRig::settle();
    QCOMPARE(state.model.currentStateName(), QStringLiteral("a"));
    QVERIFY(!state.model.canSaveState());
    QCOMPARE(order, QStringList("canSave"));
    QCOMPARE(state.files(), files);
    // The next read allows it again.
    state.run(&CameraStateModel::refresh);
    QVERIFY(state.model.canSaveState());
}

void tst_CameraStateModelSaveLoad::nothingElseOfTheKindStartsMeanwhile()
{
    QFETCH(const int, row);
    InStateA state;
    state.rig.gate().hold(operations().at(row).call);
    operations().at(row).start(state.model);
    QVERIFY(state.rig.gate().waitHeld(operations().at(row).call));
    auto &order
        = state.note({{&CameraStateModel::savingChanged, "saving"}, {&CameraStateModel::loadingChanged, "loading"}});
    const size_t mark = state.rig.gate().mark();
    for (const auto &other : operations())
        other.start(state.model);
    QCOMPARE(order, QStringList());
    state.rig.gate().release("*");
    CameraRig::settle();
    for (const auto &other : operations())
        QVERIFY(!state.rig.callsSince(mark).contains(QLatin1String(other.call)));
}

void tst_CameraStateModelSaveLoad::savesAndLoadsWaitForATransfer()
{
    const QTemporaryDir folder;
    InStateA state;
    state.rig.gate().hold("zvtDownloadStateStd");
    state.model.downloadState("a", QUrl::fromLocalFile(folder.filePath("a.qsf")).toString());
    QVERIFY(state.rig.gate().waitHeld("zvtDownloadStateStd"));
    const size_t mark = state.rig.gate().mark();
    for (const auto &operation : operations())
        operation.start(state.model);
    QVERIFY(!state.model.saving());
    QVERIFY(!state.model.loading());
    state.rig.gate().release("*");
    QTRY_VERIFY(!state.model.transferring());
    CameraRig::settle();
    QCOMPARE(state.rig.callsSince(mark), QStringList());
}

void tst_CameraStateModelSaveLoad::stateThatMayNotBeOverwrittenIsNotSaved()
{
    InStateA state;
    state.run(&CameraStateModel::loadFactoryDefaults);
    QVERIFY(!state.model.canSaveState());
    const size_t mark = state.rig.gate().mark();
    state.run(&CameraStateModel::saveState);
    QVERIFY(!state.rig.callsSince(mark).contains("zvtSaveState"));
}

// A read that ends meanwhile does not change this.
void tst_CameraStateModelSaveLoad::savedStateIsThatOfTheStart()
{
    InStateA state;
    state.rig.gate().hold("zvtSaveState");
    state.model.saveState();
    QVERIFY(state.rig.gate().waitHeld("zvtSaveState"));
    state.rig.gate().script("zvtGetStateName", "Hard Defaults");
    state.model.refresh();
    QTRY_COMPARE(state.model.currentStateName(), QStringLiteral("Hard Defaults"));
    QVERIFY(!state.model.canSaveState());
    state.rig.gate().release("*");
    CameraRig::settle();
    QCOMPARE(state.model.currentStateName(), QStringLiteral("a"));
    QVERIFY(state.model.canSaveState());
}

void tst_CameraStateModelSaveLoad::specialNamesAreNotSaved()
{
    InStateA state;
    const QSignalSpy saving(&state.model, &CameraStateModel::savingChanged);
    const size_t mark = state.rig.gate().mark();
    state.save("Hard Defaults");
    state.save("Factory Defaults");
    QCOMPARE(saving.size(), 0);
    QCOMPARE(state.rig.callsSince(mark), QStringList());
}

// The name is accepted, but after the next read the state cannot be overwritten.
void tst_CameraStateModelSaveLoad::specialNameInAnotherCaseIsSaved()
{
    InStateA state;
    state.save("hard defaults");
    QCOMPARE(state.model.currentStateName(), QStringLiteral("hard defaults"));
    QVERIFY(state.model.canSaveState());
    state.run(&CameraStateModel::refresh);
    QCOMPARE(state.model.currentStateName(), QStringLiteral("hard defaults"));
    QVERIFY(!state.model.canSaveState());
}

void tst_CameraStateModelSaveLoad::savesLeaveTheListAlone()
{
    InStateA state;
    state.run(&CameraStateModel::refresh);
    const size_t mark = state.rig.gate().mark();
    state.save("b");
    QVERIFY(!state.rig.callsSince(mark).contains("zvtListStates"));
    QCOMPARE(state.names(), QStringList("a"));
    QCOMPARE(state.files(), QStringList({"a.qsf", "b.qsf"}));
}

void tst_CameraStateModelSaveLoad::everySaveIsASnapshot()
{
    State state;
    auto controller = state.rig.controller();
    const auto time = [&controller] {
        double milliseconds = 0.0;
        controller->GetPresetIntegrationTime(0, &milliseconds);
        return milliseconds;
    };
    controller->SetPresetIntegrationTime(0, 1, 1.0);
    const double first = time();
    state.save("first");
    controller->SetPresetIntegrationTime(0, 1, 3.0);
    const double second = time();
    QVERIFY(first != second);
    state.save("second");
    state.run(&CameraStateModel::loadState, QStringLiteral("first"));
    QCOMPARE(time(), first);
    state.run(&CameraStateModel::loadState, QStringLiteral("second"));
    QCOMPARE(time(), second);
    controller->SetPresetIntegrationTime(0, 1, 1.0);
    state.run(&CameraStateModel::saveState);
    controller->SetPresetIntegrationTime(0, 1, 2.0);
    state.run(&CameraStateModel::loadState, QStringLiteral("second"));
    QCOMPARE(time(), first);
}

void tst_CameraStateModelSaveLoad::loadWithoutAControllerFails()
{
    ZvtCameraModel orphan({}, nullptr);
    const QSignalSpy loading(orphan.cameraState(), &CameraStateModel::loadingChanged);
    orphan.cameraState()->loadState("a");
    CameraRig::settle();
    QCOMPARE(loading.size(), 2);
    QCOMPARE(orphan.cameraState()->currentStateName(), QString());
}

// The end of a load

void tst_CameraStateModelSaveLoad::endOfALoadReadsAllThatIsVisibleOnce()
{
    InStateA state;
    const size_t mark = state.rig.gate().mark();
    state.run(&CameraStateModel::loadState, QStringLiteral("a"));
    const QStringList calls = state.rig.callsSince(mark);
    QCOMPARE(calls.count("controller.LoadState"), 1);
    // A call of the Status tab.
    QCOMPARE(calls.count("controller.GetActivePreset"), 1);
    // A failed load may have changed settings too.
    state.rig.gate().failAlways("controller.LoadState");
    const size_t failedMark = state.rig.gate().mark();
    state.run(&CameraStateModel::loadState, QStringLiteral("a"));
    QCOMPARE(state.rig.callsSince(failedMark).count("controller.GetActivePreset"), 1);
}

// All models that can be visible are. The end of a load reads the same as the host's hot key, as often and nothing
// else; the end of a save reads none of it.
void tst_CameraStateModelSaveLoad::endOfALoadReadsWhatTheHotKeyReads()
{
    QFETCH(const int, row);
    const SaveOrLoad &operation = operations().at(row);
    InStateA state;
    for (QObject *model : state.root.findChildren<QObject *>())
        if (model->metaObject()->indexOfProperty("visible") >= 0)
            model->setProperty("visible", true);
    CameraRig::settle();
    // Polls have timers, which would add calls.
    for (QTimer *timer : state.root.findChildren<QTimer *>())
        timer->stop();
    const auto callsOf = [&state](const std::function<void()> &act) {
        const size_t mark = state.rig.gate().mark();
        act();
        CameraRig::settle();
        QStringList calls = state.rig.callsSince(mark);
        calls.sort();
        return calls;
    };
    QStringList calls = callsOf([&] { operation.start(state.model); });
    QVERIFY(calls.removeOne(QLatin1String(operation.call)));
    const QStringList all = callsOf([&state] { state.root.refreshAllVisible(); });
    QVERIFY(all.size() > 20);
    QCOMPARE(calls, operation.isLoad ? all : QStringList());
}

void tst_CameraStateModelSaveLoad::endOfALoadIsToldBeforeTheName()
{
    InStateA state;
    state.save("b");
    auto &order = state.note(
        {{&CameraStateModel::loadingChanged, "loading"}, {&CameraStateModel::currentStateNameChanged, "name"}});
    state.run(&CameraStateModel::loadState, QStringLiteral("a"));
    QCOMPARE(order, QStringList({"loading", "loading", "name"}));
}

void tst_CameraStateModelSaveLoad::saveReadsNothing()
{
    InStateA state;
    const size_t mark = state.rig.gate().mark();
    state.run(&CameraStateModel::saveState);
    QCOMPARE(state.rig.callsSince(mark), QStringList("zvtSaveState"));
}

void tst_CameraStateModelSaveLoad::heldOperationOutlivesTheModel()
{
    QFETCH(const int, row);
    const SaveOrLoad &operation = operations().at(row);
    CameraRig rig;
    auto root = std::make_unique<ZvtCameraModel>(rig.controller(), nullptr);
    CameraRig::settle(); // The read at the start would replace the name of the saved state if it ended after the save.
    root->cameraState()->saveStateAs("a");
    CameraRig::settle();
    rig.gate().hold(operation.call);
    operation.start(*root->cameraState());
    QVERIFY(rig.gate().waitHeld(operation.call));
    root.reset();
    rig.gate().release("*");
    CameraRig::settle();
}

ZVT_TEST(tst_CameraStateModelSaveLoad)
#include "tst_CameraStateModelSaveLoad.moc"
