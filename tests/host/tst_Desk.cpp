#include "tests/host/DeskRig.h"
#include "tests/support/Test.h"

#include <QSignalSpy>

#include <algorithm>

/// Tests the label "faults on", and that the desk does not touch page, plug-in and gate.
class tst_Desk : public Test
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(DeskRig::loadPlugin()); }

    void faultsAreThoseOfTheirSources();
    void changeIsReportedOnce();
    void settingsHaveDefaultsAndLimits();

    void windowHasNoLabelWithoutFaults();
    void faultIsLabelledWhileTheDeskIsHidden();
    void faultOfTheCommandLineIsLabelled_data();
    void faultOfTheCommandLineIsLabelled();
    void faultOfACardIsLabelledAndCleared();
    void clearingLeavesTheFocusOnThePage_data();
    void clearingLeavesTheFocusOnThePage();
    void barLeavesThePageItsLeastSize();

    void pulledCableIsSeenOnThePage();
    void windowWithoutDeskIsThePageAlone();
    void hiddenDeskDoesNothing();
    void deskMakesNoCalls();
    void callsOfThePageAreTheSame();

private:
    static void openAllCards(DeskSettings &settings);
    static bool areCardsWorking(Desk &desk);
    static QStringList drive(DeskRig &rig, bool withDesk);
};

void tst_Desk::openAllCards(DeskSettings &settings)
{
    for (const char *card : {"picture", "line", "world", "otherClient", "calls"})
        settings.setOpen(card, true);
}

/// Whether every card that follows the camera does so and has something to show.
bool tst_Desk::areCardsWorking(Desk &desk)
{
    return desk.picture()->hasFrame() && desk.world()->active() && desk.otherClient()->active()
        && desk.otherClient()->rowCount() > 35 && desk.calls()->active();
}

void tst_Desk::faultsAreThoseOfTheirSources()
{
    Faults faults;
    QVERIFY(!faults.active());
    QStringList first{"Slow"};
    QStringList second;
    faults.add(
        this, [&first] { return first; }, [&first] { first.clear(); });
    faults.add(
        this, [&second] { return second; }, [&second] { second.clear(); });
    QVERIFY(faults.active());
    QCOMPARE(faults.texts(), QStringList{"Slow"});
    second = {"Stuck", "Lost"};
    faults.update();
    QCOMPARE(faults.texts(), QStringList({"Slow", "Stuck", "Lost"}));
    first.clear();
    faults.update();
    QCOMPARE(faults.texts(), QStringList({"Stuck", "Lost"}));
    first = {"Slow"};
    faults.clearAll();
    QVERIFY(!faults.active());
    QVERIFY(first.isEmpty() && second.isEmpty());
}

void tst_Desk::changeIsReportedOnce()
{
    Faults faults;
    QStringList texts;
    faults.add(
        this, [&texts] { return texts; }, [&texts] { texts.clear(); });
    QSignalSpy changed(&faults, &Faults::changed);
    faults.update();
    faults.clearAll();
    QCOMPARE(changed.size(), 0);
    texts = {"Slow"};
    faults.update();
    faults.update();
    QCOMPARE(changed.size(), 1);
    faults.clearAll();
    QCOMPARE(changed.size(), 2);
}

void tst_Desk::settingsHaveDefaultsAndLimits()
{
    TemporarySettings file;
    DeskSettings settings(*file.get());
    QVERIFY(settings.shown());
    QCOMPARE(settings.width(), 420);
    QVERIFY(settings.isOpen("line", true));
    QVERIFY(!settings.isOpen("line", false));
    settings.setWidth(100);
    QCOMPARE(settings.width(), 340);
    file.get()->setValue("desk/width", "wide");
    QCOMPARE(settings.width(), 420);
    file.get()->setValue("desk/width", 10);
    QCOMPARE(settings.width(), 340);
    settings.setOpen("line", false);
    settings.setShown(false);
    const DeskSettings again(*file.get());
    QVERIFY(!again.isOpen("line", true));
    QVERIFY(!again.shown());
}

void tst_Desk::windowHasNoLabelWithoutFaults()
{
    DeskRig rig;
    rig.split().setShown(true);
    QVERIFY(!rig.window().title().contains("faults"));
    QVERIFY(!rig.button("Clear all faults"));
    QCOMPARE(rig.page().y(), 0.0);
}

void tst_Desk::faultIsLabelledWhileTheDeskIsHidden()
{
    DeskRig rig;
    const QString title = rig.window().title();
    const QSizeF size = rig.page().size();
    rig.desk().line()->setRefusesChanges(true);
    QVERIFY(rig.desk().faults()->active());
    QCOMPARE(rig.window().title(), title + " - faults on");
    QVERIFY(rig.button("Clear all faults"));
    QCOMPARE(rig.page().y(), 32.0);
    QCOMPARE(rig.page().size(), size - QSizeF(0, 32));

    rig.user().press(*rig.button("Clear all faults"));
    QVERIFY(!rig.desk().line()->refusesChanges());
    QVERIFY(!rig.desk().faults()->active());
    QCOMPARE(rig.window().title(), title);
    QVERIFY(!rig.button("Clear all faults"));
    QCOMPARE(rig.page().y(), 0.0);
    QCOMPARE(rig.page().size(), size);
    QCOMPARE(rig.split().desk(), nullptr);
}

void tst_Desk::faultOfTheCommandLineIsLabelled_data()
{
    QTest::addColumn<int>("latency");
    QTest::addColumn<double>("failRate");
    QTest::newRow("latency") << 20 << 0.0;
    QTest::newRow("failures") << 0 << 0.25;
}

void tst_Desk::faultOfTheCommandLineIsLabelled()
{
    QFETCH(int, latency);
    QFETCH(double, failRate);
    Options options;
    options.latency = latency;
    options.failRate = failRate;
    DeskRig rig(options);
    QVERIFY(rig.window().title().endsWith(" - faults on"));
    QCOMPARE(rig.desk().faults()->texts().size(), 1);
    rig.user().press(*rig.button("Clear all faults"));
    QVERIFY(!rig.window().title().contains("faults"));
    QCOMPARE(rig.camera().gate().requests(), std::vector<std::string>());
}

void tst_Desk::faultOfACardIsLabelledAndCleared()
{
    DeskRig rig;
    rig.settings().setOpen("line", true);
    rig.split().setShown(true);
    rig.user().press(*rig.button("Refuse all changes"));
    QVERIFY(rig.window().title().endsWith(" - faults on"));
    rig.user().press(*rig.button("Clear all faults"));
    QVERIFY(!rig.desk().line()->refusesChanges());
    QVERIFY(!rig.button("Refuse all changes")->property("checked").toBool());
}

void tst_Desk::clearingLeavesTheFocusOnThePage_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::newRow("mouse") << false;
    QTest::newRow("keyboard") << true;
}

void tst_Desk::clearingLeavesTheFocusOnThePage()
{
    QFETCH(const bool, byKeyboard);
    DeskRig rig;
    QQuickItem *focused = rig.user().tabButtons().constFirst();
    focused->forceActiveFocus(Qt::TabFocusReason);
    rig.desk().line()->setRefusesChanges(true);
    QCOMPARE(rig.window().activeFocusItem(), focused);
    if (byKeyboard) {
        rig.button("Clear all faults")->forceActiveFocus(Qt::TabFocusReason);
        QTest::keyClick(&rig.window(), Qt::Key_Space);
    } else {
        rig.user().press(*rig.button("Clear all faults"));
    }
    QVERIFY(!rig.desk().faults()->active());
    QCOMPARE(rig.window().activeFocusItem(), focused);
}

void tst_Desk::barLeavesThePageItsLeastSize()
{
    DeskRig rig;
    rig.desk().line()->setRefusesChanges(true);
    QCOMPARE(rig.window().minimumSize(), QSize(648, 512));
    rig.window().resize(648, 512);
    QTRY_COMPARE(rig.page().size(), QSizeF(640, 480));
    rig.desk().faults()->clearAll();
    QCOMPARE(rig.window().minimumSize(), QSize(648, 480));
    QCOMPARE(rig.page().size(), QSizeF(640, 512));
}

void tst_Desk::pulledCableIsSeenOnThePage()
{
    DeskRig rig;
    const auto offers = [&rig](const QString &button) { return rig.button(button) && rig.button(button)->isEnabled(); };
    QVERIFY(offers("Connect") && !offers("Disconnect"));
    QVERIFY(rig.connectCamera());
    QTRY_VERIFY(offers("Disconnect") && !offers("Connect"));
    rig.desk().line()->pull();
    QTRY_VERIFY(offers("Connect") && !offers("Disconnect"));
    QVERIFY(!rig.standalone().connected());
    QTRY_VERIFY(rig.desk().line()->canMoveCable());
    rig.desk().line()->plug();
    QTRY_VERIFY(offers("Disconnect") && !offers("Connect"));
    QVERIFY(rig.user().settle());
}

void tst_Desk::windowWithoutDeskIsThePageAlone()
{
    DeskRig rig;
    PageWindow window(rig.session(), false);
    window.show();
    QCOMPARE(window.desk(), nullptr);
    QCOMPARE(window.page().size(), QSizeF(window.size()));
    QTest::keyClick(&window, Qt::Key_F12);
    QCOMPARE(window.contentItem()->childItems(), QList<QQuickItem *>{&window.page()});
}

void tst_Desk::hiddenDeskDoesNothing()
{
    DeskRig rig;
    openAllCards(rig.settings());
    rig.split().setShown(true);
    // So high that the picture is not scrolled out of sight.
    rig.window().resize(1328, 2000);
    QVERIFY(rig.connectCamera());
    QTRY_VERIFY(areCardsWorking(rig.desk()));
    rig.split().setShown(false);
    QTRY_VERIFY(!rig.desk().picture()->frames().isRunning() && !rig.desk().picture()->frames().hasThread());
    QVERIFY(!rig.desk().world()->active() && !rig.desk().otherClient()->active() && !rig.desk().calls()->active());
    rig.split().setShown(true);
    QTRY_VERIFY(areCardsWorking(rig.desk()));
}

// All cards are open and the picture runs, but no page is there to make calls.
void tst_Desk::deskMakesNoCalls()
{
    QTemporaryDir folder;
    TemporarySettings settings;
    StandaloneModel standalone("everything", folder.path(), {});
    DeskSettings cards(*settings.get());
    openAllCards(cards);
    Desk::registerTypes();
    Desk desk(standalone, *settings.get());
    QQmlEngine engine;
    QQuickWindow window;
    window.resize(1280, 2000);
    window.show();
    auto *page = new QQuickItem(window.contentItem());
    DeskSplit split(window, engine, *page, desk);
    split.setShown(true);
    QCOMPARE(PageUser::visibleItems(*split.desk(),
                                    [](QQuickItem &item) {
                                        return item.objectName() == "cardHeader" && item.property("checked").toBool();
                                    })
                 .size(),
             5);
    standalone.connect("everything");
    QTRY_VERIFY(!standalone.connecting());
    QVERIFY(standalone.connected());
    const size_t mark = standalone.camera().gate().mark();
    QTRY_VERIFY(areCardsWorking(desk));
    desk.line()->setRefusesChanges(true);
    desk.faults()->clearAll();
    QVERIFY(standalone.camera().otherClient().set("image.reverted", true));
    const QString frame = desk.picture()->frame();
    QTRY_VERIFY(desk.picture()->frame() != frame);
    QCOMPARE(standalone.camera().gate().callsSince(mark).size(), 0u);
}

/// Drives the page through connection, every tab and a refresh. Returns its calls without the time: the sorted names
/// and arguments, each once, since the number of polls depends on the time.
QStringList tst_Desk::drive(DeskRig &rig, bool withDesk)
{
    if (withDesk)
        rig.split().setShown(true);
    rig.window().resize(withDesk ? 1328 : 908, 720); // The page has the same size.
    QStringList calls;
    if (!rig.connectCamera())
        return calls;
    for (QQuickItem *tab : rig.user().tabButtons())
        if (!rig.user().openTab(*tab))
            return calls;
    if (!QMetaObject::invokeMethod(&rig.session().cameraModel(), "refreshAllVisible") || !rig.user().settle())
        return calls;
    for (const emulator::Call &call : rig.camera().gate().calls())
        calls << QString::fromStdString(call.name + '(' + call.arguments + ')');
    calls.removeDuplicates();
    calls.sort();
    return calls;
}

void tst_Desk::callsOfThePageAreTheSame()
{
    DeskRig without;
    const QStringList expected = drive(without, false);
    QVERIFY(expected.size() > 100);
    DeskRig with;
    openAllCards(with.settings());
    QCOMPARE(drive(with, true), expected);
    QTRY_VERIFY(with.desk().otherClient()->rowCount() > 35);
    QVERIFY(with.desk().world()->active() && with.desk().otherClient()->active());
}

ZVT_TEST(tst_Desk)
#include "tst_Desk.moc"
