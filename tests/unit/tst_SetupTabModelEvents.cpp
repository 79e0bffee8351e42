#include "tests/support/Test.h"
#include "tests/unit/SetupTabRig.h"

/// The camera's events, and the actions of the tab.
class tst_SetupTabModelEvents : public Test
{
    Q_OBJECT

private slots:
    void oneTickTakesOneEvent();
    void hiddenTabTakesNoEvent();
    void lockedLensTakesNoEvent();
    void manualFocusTakesEvents();
    void changedMakeUpIsReadAnew();
    void eventsCallTheRefreshOfTheClass_data();
    void eventsCallTheRefreshOfTheClass();
    void eventDuringARefreshIsDropped();
    void failedReadIsIgnored();
    void readsMayOverlap();
    void everyReadActsOnItsOwnAnswer();
    void modelMayDieDuringARead();
    void tickWithoutAControllerEnds();
    void changeOfAnotherClientShows();
};

namespace
{

const QStringList eventRead{"zvtReadEventQueue"};

/// A tab that counts its refreshes.
struct CountingTab : SetupTabModel {
    using SetupTabModel::SetupTabModel;
    void refresh() override { ++refreshes; }
    int refreshes = 0;
};

} // namespace

void tst_SetupTabModelEvents::oneTickTakesOneEvent()
{
    SetupTab tab;
    tab.model->setVisible(true);
    const size_t mark = tab.mark();
    QCOMPARE(tab.tick("eventQueueTimer"), eventRead);
    QCOMPARE(tab.calls(mark, SetupTab::OnPool), eventRead);
    QVERIFY(!tab.model->hasRefreshed());
}

void tst_SetupTabModelEvents::hiddenTabTakesNoEvent()
{
    SetupTab tab;
    QCOMPARE(tab.tick("eventQueueTimer"), QStringList());
    tab.model->setVisible(true);
    tab.model->setVisible(false);
    QCOMPARE(tab.tick("eventQueueTimer"), QStringList());
    QVERIFY(tab.timer("eventQueueTimer")->isActive());
}

void tst_SetupTabModelEvents::lockedLensTakesNoEvent()
{
    SetupTab tab;
    tab.model->setVisible(true);
    tab.model->setLensBasedControlsEnabled(false);
    QCOMPARE(tab.tick("eventQueueTimer"), QStringList());
    tab.model->setLensBasedControlsEnabled(true);
    QCOMPARE(tab.tick("eventQueueTimer"), eventRead);
}

void tst_SetupTabModelEvents::manualFocusTakesEvents()
{
    SetupTab tab;
    tab.gate().script("zvtGetFocusManualMode", true);
    tab.refresh();
    QVERIFY(!tab.model->lensBasedControlsEnabled());
    tab.model->setVisible(true);
    QCOMPARE(tab.tick("eventQueueTimer"), eventRead);
}

void tst_SetupTabModelEvents::changedMakeUpIsReadAnew()
{
    SetupTab tab;
    tab.model->setVisible(true);
    tab.log.take();
    tab.log.watch(tab.root.cameraCapabilitiesModel());
    QVERIFY(tab.rig.camera().changeMakeUp("hasLensCover", false));
    QVERIFY(tab.rig.controller()->capabilities.hasLensCover());
    tab.gate().hold("zvtGetHSMAvailable");
    const size_t mark = tab.mark();
    QMetaObject::invokeMethod(tab.timer("eventQueueTimer"), "timeout");
    QTRY_VERIFY(tab.model->refreshing());
    QCOMPARE(tab.log.take(), QStringList({"cameraCapabilitiesChanged", "refreshingChanged", "hasRefreshedChanged"}));
    QVERIFY(!tab.rig.controller()->capabilities.hasLensCover());
    QVERIFY(!tab.root.cameraCapabilitiesModel()->hasLensCover());
    tab.gate().release("*");
    CameraRig::settle();
    QVERIFY(!tab.calls(mark).contains("zvtGetLensCoverState"));
    QVERIFY(tab.model->hasRefreshed());
    // The queue is empty again.
    QCOMPARE(tab.tick("eventQueueTimer"), eventRead);
}

void tst_SetupTabModelEvents::eventsCallTheRefreshOfTheClass_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("refreshes");
    QTest::newRow("none") << 0 << 0;
    QTest::newRow("make-up") << 1 << 1;
    QTest::newRow("settings") << 2 << 1;
    QTest::newRow("any other") << 3 << 0;
    QTest::newRow("below zero") << -1 << 0;
}

void tst_SetupTabModelEvents::eventsCallTheRefreshOfTheClass()
{
    QFETCH(int, type);
    SetupTab tab;
    auto *counting = new CountingTab(&tab.root);
    counting->setVisible(true);
    SignalLog capabilities(tab.root.cameraCapabilitiesModel());
    tab.gate().script("zvtReadEventQueue", type);
    QCOMPARE(tab.callsOf([&] {
        QMetaObject::invokeMethod(counting->findChild<QTimer *>(QStringLiteral("eventQueueTimer")), "timeout");
    }),
             eventRead);
    QTEST(counting->refreshes, "refreshes");
    QCOMPARE(capabilities.take().size(), type == 1 ? 1 : 0);
}

void tst_SetupTabModelEvents::eventDuringARefreshIsDropped()
{
    SetupTab tab;
    tab.model->setVisible(true);
    tab.gate().script("zvtReadEventQueue", 2);
    tab.gate().hold("zvtGetHSMAvailable");
    const size_t mark = tab.mark();
    tab.model->refresh();
    QVERIFY(tab.gate().waitHeld("zvtGetHSMAvailable"));
    tab.log.take();
    QMetaObject::invokeMethod(tab.timer("eventQueueTimer"), "timeout");
    QTRY_VERIFY(tab.model->findChildren<QFutureWatcherBase *>().isEmpty());
    QVERIFY(tab.calls(mark).contains("zvtReadEventQueue"));
    tab.gate().release("*");
    CameraRig::settle();
    QCOMPARE(tab.calls(mark).count("zvtGetHSMAvailable"), 1);
}

void tst_SetupTabModelEvents::failedReadIsIgnored()
{
    SetupTab tab;
    tab.model->setVisible(true);
    tab.gate().script("zvtReadEventQueue", 2);
    tab.gate().failNext("zvtReadEventQueue");
    QCOMPARE(tab.tick("eventQueueTimer"), eventRead);
    QVERIFY(!tab.model->hasRefreshed());
    tab.tick("eventQueueTimer");
    QVERIFY(tab.model->hasRefreshed());
}

void tst_SetupTabModelEvents::readsMayOverlap()
{
    SetupTab tab;
    tab.model->setVisible(true);
    tab.gate().hold("zvtReadEventQueue");
    const size_t mark = tab.mark();
    for (int tick = 0; tick < 2; ++tick)
        QMetaObject::invokeMethod(tab.timer("eventQueueTimer"), "timeout");
    QVERIFY(tab.gate().waitHeld("zvtReadEventQueue", 2));
    tab.gate().release("*");
    CameraRig::settle();
    QCOMPARE(tab.calls(mark), eventRead + eventRead);
    QVERIFY(tab.model->findChildren<QFutureWatcherBase *>().isEmpty());
}

void tst_SetupTabModelEvents::everyReadActsOnItsOwnAnswer()
{
    SetupTab tab;
    auto *counting = new CountingTab(&tab.root);
    counting->setVisible(true);
    SignalLog capabilities(tab.root.cameraCapabilitiesModel());
    QVERIFY(tab.rig.camera().changeMakeUp("hasLensCover", false));
    QVERIFY(tab.rig.camera().otherClient().set(QStringLiteral("focusToDistance.available"), false));
    tab.gate().hold("zvtReadEventQueue");
    for (int tick = 0; tick < 3; ++tick)
        QMetaObject::invokeMethod(counting, "timeoutEventQueueTimer");
    QVERIFY(tab.gate().waitHeld("zvtReadEventQueue", 2));
    tab.gate().release("*");
    CameraRig::settle();
    // The events: changed make-up, changed settings, and none.
    QCOMPARE(counting->refreshes, 2);
    QCOMPARE(capabilities.take().size(), 1);
}

void tst_SetupTabModelEvents::modelMayDieDuringARead()
{
    SetupTab tab;
    auto *model = new SetupTabModel(&tab.root);
    model->setVisible(true);
    tab.gate().script("zvtReadEventQueue", 1);
    tab.gate().hold("zvtReadEventQueue");
    QMetaObject::invokeMethod(model->findChild<QTimer *>(QStringLiteral("eventQueueTimer")), "timeout");
    QVERIFY(tab.gate().waitHeld("zvtReadEventQueue"));
    delete model;
    tab.gate().release("*");
    CameraRig::settle();
}

void tst_SetupTabModelEvents::tickWithoutAControllerEnds()
{
    ZvtCameraModel root({}, nullptr);
    root.setupTabModel()->setVisible(true);
    QMetaObject::invokeMethod(root.setupTabModel(), "timeoutEventQueueTimer");
    CameraRig::settle();
    QVERIFY(!root.setupTabModel()->hasRefreshed());
}

void tst_SetupTabModelEvents::changeOfAnotherClientShows()
{
    SetupTab tab;
    tab.refresh();
    tab.model->setVisible(true);
    QVERIFY(tab.rig.camera().otherClient().set(QStringLiteral("focusToDistance.available"), false));
    const size_t mark = tab.mark();
    tab.tick("eventQueueTimer");
    QVERIFY(tab.calls(mark).contains("zvtGetFrameSyncSource"));
}

ZVT_TEST(tst_SetupTabModelEvents)
#include "tst_SetupTabModelEvents.moc"
