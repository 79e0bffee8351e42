#include "tests/support/Test.h"
#include "tests/unit/SetupTabRig.h"

#include <QThread>

#include <functional>
#include <stdexcept>

/// One-shot moves: each locks the lens controls, runs on the pool, and publishes at its end.
class tst_SetupTabModelOneShots : public Test
{
    Q_OBJECT

private slots:
    void movesRunOnThePool_data();
    void movesRunOnThePool();
    void unchangedTargetIsNotSent();
    void endStopsFollowTheEncoder();
    void secondMoveTakesThePlaceOfTheFirst();
    void modelMayDieDuringAMove();

    void lockIsSignalledWhenItShows();
    void manualModeDisablesTheControls();

    void autoFocusTellsWhereItLooks_data();
    void autoFocusTellsWhereItLooks();
    void autoFocusWithoutRegionStillFocuses_data();
    void autoFocusWithoutRegionStillFocuses();
    void autoFocusTellsItsEndBeforeTheUnlock();
    void autoFocusWithoutAControllerEnds();
    void moveThatThrowsUnlocks();

    void focusToDistanceWaitsForTheLens();
    void focusToDistanceTakesTheDistanceOfItsStart();
    void focusToDistanceOfALensAtZeroEndsAtOnce();
    void refusedFocusToDistanceDoesNotWait();
    void focusToDistanceEndsWithAFailingRead();
    void roadToADistance();
};

namespace
{

using Action = std::function<void(SetupTabModel &)>;

const QStringList zoomEnd = QStringList{"zvtGetFOVCurrentPos"} + focusAndDistances + focusAndDistances;

/// Records the calls of the listeners of an auto focus.
struct Heard {
    QList<QList<int>> regions;
    QStringList ends; ///< "locked" or "unlocked" at the time of the call.
    QList<int> endPositions; ///< The model's position at the time of the call.
    bool startedOnGui = false;
    bool endedOnGui = false;
    SetupTabModel *model = nullptr;

    explicit Heard(SetupTab &tab) : model(tab.model)
    {
        const auto controller = tab.rig.controller();
        controller->autoFocusStartedListeners.Add({[](void *context, int x, int y, int width, int height) {
                                                       auto *heard = static_cast<Heard *>(context);
                                                       heard->regions << QList<int>{x, y, width, height};
                                                       heard->startedOnGui = onGui(heard);
                                                   },
                                                   this});
        controller->autoFocusEndedListeners.Add({[](void *context) {
                                                     auto *heard = static_cast<Heard *>(context);
                                                     const bool unlocked = heard->model->lensBasedControlsEnabled();
                                                     heard->ends << (unlocked ? "unlocked" : "locked");
                                                     heard->endPositions << heard->model->selectedFocusPosition();
                                                     heard->endedOnGui = onGui(heard);
                                                 },
                                                 this});
    }

    static bool onGui(const Heard *heard) { return QThread::currentThread() == heard->model->thread(); }
};

} // namespace

void tst_SetupTabModelOneShots::movesRunOnThePool_data()
{
    QTest::addColumn<Action>("action");
    QTest::addColumn<QStringList>("onPool");
    QTest::addColumn<QStringList>("onSuccess"); // The calls of the GUI thread.
    QTest::addColumn<QStringList>("published");
    const QStringList focus{"zvtGetFocusCurrentPos"};
    const QStringList zoomSignals{"selectedZoomPositionChanged", "selectedFocusPositionChanged",
                                  "distanceRangeValuesChanged"};
    const auto row = [](const char *name, const Action &action, const char *call, const QStringList &onSuccess,
                        const QStringList &published) {
        QTest::newRow(name) << action << QStringList{call} << onSuccess << published;
    };
    row("focus position", [](SetupTabModel &m) { m.setSelectedFocusPosition(1234); }, "zvtSetFocusPos 1234", {},
        {"selectedFocusPositionChanged"});
    row(
        "zoom position", [](SetupTabModel &m) { m.setSelectedZoomPosition(77); }, "zvtSetFOVPos 77", focusAndDistances,
        zoomSignals);
    row("cover", [](SetupTabModel &m) { m.setSelectedLensCoverStateIndex(1); }, "zvtSetLensCoverState 1", {},
        {"selectedLensCoverStateIndexChanged"});
    row("focus minimum", [](SetupTabModel &m) { m.focusMinimum(); }, "zvtFocusNear", focus,
        {"selectedFocusPositionChanged"});
    row("focus maximum", [](SetupTabModel &m) { m.focusMaximum(); }, "zvtFocusFar", focus,
        {"selectedFocusPositionChanged"});
    row(
        "widest", [](SetupTabModel &m) { m.zoomWidest(); }, "zvtFOVMin", zoomEnd, zoomSignals + zoomSignals.mid(1));
    row(
        "narrowest", [](SetupTabModel &m) { m.zoomNarrowest(); }, "zvtFOVMax", zoomEnd,
        zoomSignals + zoomSignals.mid(1));
}

void tst_SetupTabModelOneShots::movesRunOnThePool()
{
    QFETCH(Action, action);
    QFETCH(QStringList, onPool);
    QFETCH(QStringList, onSuccess);
    QFETCH(QStringList, published);
    SetupTab tab;
    tab.readFocus(100, 5000, 700);
    const std::string call = onPool.first().section(u' ', 0, 0).toStdString();
    tab.gate().script(call, true);

    tab.gate().hold(call);
    const size_t mark = tab.mark();
    action(*tab.model);
    QVERIFY(!tab.model->lensBasedControlsEnabled());
    QCOMPARE(tab.log.take(), QStringList{"lensBasedControlsEnabledChanged"});
    QVERIFY(tab.gate().waitHeld(call));
    tab.gate().release(call);
    CameraRig::settle();
    QCOMPARE(tab.calls(mark, SetupTab::OnPool), onPool);
    QCOMPARE(tab.calls(mark, SetupTab::OnGui), onSuccess);
    QCOMPARE(tab.log.take(), published + QStringList{"lensBasedControlsEnabledChanged"});
    QVERIFY(tab.model->lensBasedControlsEnabled());

    // After a refused move the controls are only unlocked.
    SetupTab refused;
    refused.readFocus(100, 5000, 700);
    refused.gate().failNext(call);
    QCOMPARE(refused.callsOf([&] { action(*refused.model); }), onPool);
    QCOMPARE(refused.log.take(), QStringList({"lensBasedControlsEnabledChanged", "lensBasedControlsEnabledChanged"}));
}

void tst_SetupTabModelOneShots::unchangedTargetIsNotSent()
{
    SetupTab tab;
    tab.gate().script("zvtGetLensCoverState", 1);
    tab.gate().script("zvtGetFOVPos", 400);
    tab.readFocus(100, 5000, 700);
    QCOMPARE(tab.callsOf([&] {
        tab.model->setSelectedFocusPosition(700);
        tab.model->setSelectedZoomPosition(400);
        tab.model->setSelectedLensCoverStateIndex(1);
    }),
             QStringList());
    QCOMPARE(tab.log.take(), QStringList());
}

void tst_SetupTabModelOneShots::endStopsFollowTheEncoder()
{
    SetupTab tab;
    tab.readFocus(5000, 100, 700);
    QVERIFY(!tab.model->focusEncoderHasAscendingValuesNearToFar());
    QCOMPARE(tab.callsOf([&] { tab.model->focusMinimum(); }).first(), QStringLiteral("zvtFocusFar"));
    QCOMPARE(tab.callsOf([&] { tab.model->focusMaximum(); }).first(), QStringLiteral("zvtFocusNear"));
}

// The lock on the page prevents this. Without the page only the newest move publishes and unlocks.
void tst_SetupTabModelOneShots::secondMoveTakesThePlaceOfTheFirst()
{
    SetupTab tab;
    tab.gate().script("zvtSetFocusPos", true);
    tab.gate().script("zvtSetLensCoverState", true);
    tab.readFocus(100, 5000, 700);
    tab.gate().hold("zvtSetFocusPos");
    tab.model->setSelectedFocusPosition(900);
    QVERIFY(tab.gate().waitHeld("zvtSetFocusPos"));
    tab.model->setSelectedLensCoverStateIndex(1);
    QTRY_VERIFY(tab.model->lensBasedControlsEnabled());
    QCOMPARE(tab.model->selectedLensCoverStateIndex(), 1);
    tab.gate().release("*");
    CameraRig::settle();
    QCOMPARE(tab.model->selectedFocusPosition(), 700);
}

void tst_SetupTabModelOneShots::modelMayDieDuringAMove()
{
    const QMap<std::string, Action> moves{
        {"zvtSetFocusPos", [](SetupTabModel &m) { m.setSelectedFocusPosition(1234); }},
        {"zvtFOVMax", [](SetupTabModel &m) { m.zoomNarrowest(); }},
        {"zvtGetWindow", [](SetupTabModel &m) { m.autoFocus(); }},
        {"zvtAutoFocusFast", [](SetupTabModel &m) { m.autoFocus(); }},
        {"zvtFocusToDistance", [](SetupTabModel &m) { m.focusToDistance(); }},
        {"zvtGetFocusCurrentPos", [](SetupTabModel &m) { m.focusToDistance(); }},
    };
    for (auto move = moves.cbegin(); move != moves.cend(); ++move) {
        SetupTab tab;
        auto *model = new SetupTabModel(&tab.root);
        model->setDistanceToFocus(12.5F);
        tab.gate().hold(move.key());
        move.value()(*model);
        QVERIFY(tab.gate().waitHeld(move.key()));
        delete model;
        const size_t mark = tab.mark();
        tab.gate().release("*");
        CameraRig::settle();
        QCOMPARE(tab.calls(mark, SetupTab::OnGui), QStringList());
    }
}

// The lock

void tst_SetupTabModelOneShots::lockIsSignalledWhenItShows()
{
    SetupTab tab;
    tab.model->setLensBasedControlsEnabled(true);
    QCOMPARE(tab.log.take(), QStringList());
    tab.model->setLensBasedControlsEnabled(false);
    tab.model->setLensBasedControlsEnabled(false);
    QVERIFY(!tab.model->lensBasedControlsEnabled());
    QCOMPARE(tab.log.take(), QStringList{"lensBasedControlsEnabledChanged"});
}

void tst_SetupTabModelOneShots::manualModeDisablesTheControls()
{
    SetupTab tab;
    tab.gate().script("zvtGetFocusManualMode", true);
    tab.model->setLensBasedControlsEnabled(false);
    tab.refresh();
    tab.model->setLensBasedControlsEnabled(true);
    // Manual mode still locks the controls, so nothing is signalled.
    QCOMPARE(tab.log.take(), QStringList());
    QVERIFY(!tab.model->lensBasedControlsEnabled());
    tab.gate().script("zvtGetFocusManualMode", false);
    tab.model->refresh();
    CameraRig::settle();
    QVERIFY(tab.log.take().contains("lensBasedControlsEnabledChanged"));
    QVERIFY(tab.model->lensBasedControlsEnabled());
}

// Auto focus

void tst_SetupTabModelOneShots::autoFocusTellsWhereItLooks_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("size");
    QTest::addColumn<QVariantList>("window");
    QTest::addColumn<QList<int>>("region");
    const QVariantList window{0, 0, 640, 512};
    QTest::newRow("center") << 0 << 128 << window << QList<int>{256, 192, 128, 128};
    QTest::newRow("top left") << 1 << 64 << window << QList<int>{128, 96, 64, 64};
    QTest::newRow("top right") << 2 << 64 << window << QList<int>{448, 96, 64, 64};
    QTest::newRow("bottom left") << 3 << 64 << window << QList<int>{128, 352, 64, 64};
    QTest::newRow("bottom right") << 4 << 64 << window << QList<int>{448, 352, 64, 64};
    QTest::newRow("any other") << 9 << 128 << window << QList<int>{256, 192, 128, 128};
    QTest::newRow("clipped top left") << 1 << 512 << window << QList<int>{0, 0, 416, 384};
    QTest::newRow("clipped bottom right") << 4 << 512 << window << QList<int>{224, 128, 416, 384};
    // The offset of the window is not used; quarters are rounded down to whole pixels.
    QTest::newRow("odd sizes") << 4 << 17 << QVariantList{7, 9, 643, 515} << QList<int>{472, 376, 17, 17};
    QTest::newRow("empty window") << 0 << 16 << QVariantList{0, 0, 0, 0} << QList<int>{0, 0, 0, 0};
    QTest::newRow("no room left") << 2 << 0 << QVariantList{0, 0, 0, 4} << QList<int>{0, 1, 0, 0};
}

void tst_SetupTabModelOneShots::autoFocusTellsWhereItLooks()
{
    QFETCH(int, position);
    QFETCH(int, size);
    QFETCH(QVariantList, window);
    QFETCH(QList<int>, region);
    SetupTab tab;
    Heard heard(tab);
    tab.gate().script("zvtGetAutoFocusROIPosition", position);
    tab.gate().script("zvtGetAutoFocusROISize", size);
    tab.gate().script("zvtGetWindow", window);
    tab.gate().script("zvtAutoFocusFast", true);
    QCOMPARE(tab.callsOf([&] { tab.model->autoFocus(); }),
             QStringList({"zvtGetAutoFocusROIPosition", "zvtGetAutoFocusROISize", "zvtGetWindow 0",
                          "zvtAutoFocusFast 1", "zvtGetFocusCurrentPos"}));
    QCOMPARE(heard.regions, QList<QList<int>>{region});
    QVERIFY(!heard.startedOnGui);
}

void tst_SetupTabModelOneShots::autoFocusWithoutRegionStillFocuses_data()
{
    QTest::addColumn<QString>("failing");
    for (const char *name : {"zvtGetAutoFocusROIPosition", "zvtGetAutoFocusROISize", "zvtGetWindow"})
        QTest::newRow(name) << name;
}

void tst_SetupTabModelOneShots::autoFocusWithoutRegionStillFocuses()
{
    QFETCH(QString, failing);
    SetupTab tab;
    Heard heard(tab);
    tab.gate().script("zvtAutoFocusFast", true);
    tab.gate().script("zvtGetFocusCurrentPos", 4321);
    tab.gate().failNext(failing.toStdString());
    const QStringList calls = tab.callsOf([&] { tab.model->autoFocus(); });
    QVERIFY(calls.value(calls.size() - 3).startsWith(failing));
    QCOMPARE(calls.mid(calls.size() - 2), QStringList({"zvtAutoFocusFast 1", "zvtGetFocusCurrentPos"}));
    QCOMPARE(heard.regions.size(), 0);
    QCOMPARE(heard.ends, QStringList{"locked"});
    QCOMPARE(heard.endPositions, QList<int>{4321});
}

void tst_SetupTabModelOneShots::autoFocusTellsItsEndBeforeTheUnlock()
{
    SetupTab tab;
    Heard heard(tab);
    tab.gate().failNext("zvtAutoFocusFast");
    const QStringList calls = tab.callsOf([&] { tab.model->autoFocus(); });
    QCOMPARE(calls.last(), QStringLiteral("zvtAutoFocusFast 1"));
    QCOMPARE(heard.ends, QStringList{"locked"});
    QVERIFY(heard.endedOnGui);
    QVERIFY(tab.model->lensBasedControlsEnabled());
}

void tst_SetupTabModelOneShots::autoFocusWithoutAControllerEnds()
{
    ZvtCameraModel root({}, nullptr);
    root.setupTabModel()->autoFocus();
    QVERIFY(!root.setupTabModel()->lensBasedControlsEnabled());
    CameraRig::settle();
    QVERIFY(root.setupTabModel()->lensBasedControlsEnabled());
}

void tst_SetupTabModelOneShots::moveThatThrowsUnlocks()
{
    SetupTab tab;
    tab.rig.controller()->autoFocusStartedListeners.Add(
        {[](void *, int, int, int, int) { throw std::runtime_error("no view"); }});
    QTest::ignoreMessage(QtWarningMsg, "a read of the camera ended early: no view");
    tab.model->autoFocus();
    QVERIFY(!tab.model->lensBasedControlsEnabled());
    CameraRig::settle();
    QVERIFY(tab.model->lensBasedControlsEnabled());
}

// Focus to distance

void tst_SetupTabModelOneShots::focusToDistanceWaitsForTheLens()
{
    SetupTab tab;
    tab.gate().script("zvtFocusToDistance", true);
    tab.gate().script("zvtGetFocusCurrentPos", 700);
    tab.model->setDistanceToFocus(12.5F);
    tab.log.take();
    // Two equal positions end the wait; the third read is that of the model.
    QCOMPARE(tab.callsOf([&] { tab.model->focusToDistance(); }),
             QStringList({"zvtFocusToDistance 12.5", "zvtGetFocusCurrentPos", "zvtGetFocusCurrentPos",
                          "zvtGetFocusCurrentPos"}));
    QCOMPARE(tab.model->selectedFocusPosition(), 700);
    QCOMPARE(tab.log.take(),
             QStringList({"lensBasedControlsEnabledChanged", "selectedFocusPositionChanged",
                          "lensBasedControlsEnabledChanged"}));
}

void tst_SetupTabModelOneShots::focusToDistanceTakesTheDistanceOfItsStart()
{
    SetupTab tab;
    tab.gate().failAlways("zvtFocusToDistance");
    // Occupies all threads of the pool, so that the task has to wait.
    const int threads = QThreadPool::globalInstance()->maxThreadCount();
    QSemaphore go;
    for (int thread = 0; thread < threads; ++thread)
        QThreadPool::globalInstance()->start([&go] { go.acquire(); });
    tab.model->setDistanceToFocus(1.5F);
    QCOMPARE(tab.callsOf([&] {
        tab.model->focusToDistance();
        tab.model->setDistanceToFocus(2.5F);
        go.release(threads);
    }),
             QStringList{"zvtFocusToDistance 2.5"});
}

void tst_SetupTabModelOneShots::focusToDistanceOfALensAtZeroEndsAtOnce()
{
    SetupTab tab;
    tab.gate().script("zvtFocusToDistance", true);
    tab.gate().script("zvtGetFocusCurrentPos", 0);
    const QStringList calls = tab.callsOf([&] { tab.model->focusToDistance(); });
    QCOMPARE(calls.count("zvtGetFocusCurrentPos"), 2); // One in the wait, one by the model.
}

void tst_SetupTabModelOneShots::refusedFocusToDistanceDoesNotWait()
{
    SetupTab tab;
    tab.gate().failNext("zvtFocusToDistance");
    QCOMPARE(tab.callsOf([&] { tab.model->focusToDistance(); }), QStringList{"zvtFocusToDistance 0"});
    QVERIFY(tab.model->lensBasedControlsEnabled());
}

void tst_SetupTabModelOneShots::focusToDistanceEndsWithAFailingRead()
{
    SetupTab tab;
    tab.gate().script("zvtFocusToDistance", true);
    tab.gate().failAlways("zvtGetFocusCurrentPos");
    QCOMPARE(tab.callsOf([&] { tab.model->focusToDistance(); }),
             QStringList({"zvtFocusToDistance 0", "zvtGetFocusCurrentPos"}));
    QVERIFY(tab.model->lensBasedControlsEnabled());
}

// The complete move of the emulated lens.
void tst_SetupTabModelOneShots::roadToADistance()
{
    SetupTab tab;
    tab.refresh();
    const int before = tab.model->selectedFocusPosition();
    tab.model->setDistanceToFocus(tab.model->distanceMinimum());
    tab.gate().hold("zvtGetFocusCurrentPos");
    tab.model->focusToDistance();
    QVERIFY(tab.gate().waitHeld("zvtGetFocusCurrentPos"));
    emulator::Clock::advance(60000);
    tab.gate().release("*");
    CameraRig::settle();
    QVERIFY(tab.model->selectedFocusPosition() != before);
    QVERIFY(tab.model->lensBasedControlsEnabled());
}

ZVT_TEST(tst_SetupTabModelOneShots)
#include "tst_SetupTabModelOneShots.moc"
