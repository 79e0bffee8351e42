#include "tests/page/SyncSection.h"
#include "tests/support/Test.h"

/// The section "Sync Settings" of the Setup page.
class tst_SetupTabSync : public Test
{
    Q_OBJECT

private slots:
    void collapsedSectionIsNotRead();
    void headerReadsBeforeItOpens();
    void opensByKeyboard();
    void lowCostCameraHasNone();
    void offUntilItHasBeenRead();
    void offWhileDisconnected();
    void bodyMakesNoCalls();
    void nothingUnreadIsShown();
    void eachDelayIsShownOnceItHasBeenRead_data();
    void eachDelayIsShownOnceItHasBeenRead();

    void choicesAreSentByMouse_data();
    void choicesAreSentByMouse();
    void choicesAreSentByKeyboard_data() { choicesAreSentByMouse_data(); }
    void choicesAreSentByKeyboard();
    void choicesFollowTheCamera();
    void triggerModesFollowTheSequencingMode();
    void triLevelAppearsWithItsInput();
    void numbersAreSent_data();
    void numbersAreSent();
    void textThatIsNoNumberIsMarked_data() { numbersAreSent_data(); }
    void textThatIsNoNumberIsMarked();
    void refusedNumberShowsTheOldOne();
    void delayIsReadBackAsTheNearestClock();
    void countNeedsTriggeredSequences();
    void buttonsTrigger();
    void advanceIsAName();
};

void tst_SetupTabSync::collapsedSectionIsNotRead()
{
    SyncSection page;
    page.showTab(0);
    QVERIFY(page.reads([&page] { page.showTab(1); }));
    page.click("Sync Settings");
    QVERIFY(!page.find("Trigger Mode"));
    page.showTab(0);
    QVERIFY(!page.reads([&page] { page.showTab(1); }));
    SetupPage fresh;
    QVERIFY(!fresh.rig().callsSince(0).contains("zvtGetTriggerMode"));
}

void tst_SetupTabSync::headerReadsBeforeItOpens()
{
    SyncSection page;
    QVERIFY(!page.reads([&page] { page.click("Sync Settings"); }));
    page.rig().gate().hold("zvtGetTriggerMode");
    page.click("Sync Settings");
    QVERIFY(page.rig().gate().waitHeld("zvtGetTriggerMode"));
    QVERIFY(page.find("Trigger Mode"));
    QVERIFY(page.item("Sync Settings").property("sectionLoading").toBool());
    page.rig().gate().release("*");
    page.settle();
    QVERIFY(!page.item("Sync Settings").property("sectionLoading").toBool());
    QVERIFY(page.reads([&page] { page.refresh(); }));
}

void tst_SetupTabSync::opensByKeyboard()
{
    SetupPage page;
    page.item("Sync Settings").forceActiveFocus(Qt::TabFocusReason);
    const size_t mark = page.rig().gate().mark();
    page.press(Qt::Key_Space);
    page.settle();
    QVERIFY(page.find("Trigger Mode"));
    QVERIFY(page.rig().callsSince(mark).contains("zvtGetTriggerMode"));
    page.press(Qt::Key_Space);
    page.settle();
    QVERIFY(!page.find("Trigger Mode"));
}

void tst_SetupTabSync::lowCostCameraHasNone()
{
    SetupPage page("low-cost");
    QVERIFY(!page.find("Sync Settings"));
    QVERIFY(page.find("Sync Source")); // In the general setup.
}

void tst_SetupTabSync::offUntilItHasBeenRead()
{
    SyncSection page;
    page.rig().gate().hold("zvtGetTriggerMode");
    page.refresh();
    QVERIFY(page.rig().gate().waitHeld("zvtGetTriggerMode"));
    for (const QString &name : syncControls())
        QVERIFY2(!page.enabled(name), qPrintable(name));
    page.rig().gate().release("*");
    page.settle();
    for (const QString &name : syncControls())
        QVERIFY2(page.enabled(name) == (name != "Sequence Count"), qPrintable(name));
}

void tst_SetupTabSync::offWhileDisconnected()
{
    SyncSection page;
    page.rig().camera().disconnect();
    page.settle();
    QVERIFY(!page.enabled("Trigger Mode") && !page.enabled("Trigger"));
    QVERIFY(page.reads([&page] { page.rig().camera().connect(); }));
    QVERIFY(page.enabled("Trigger Mode") && page.enabled("Trigger"));
}

void tst_SetupTabSync::bodyMakesNoCalls()
{
    SetupPage page;
    page.settle();
    const size_t mark = page.rig().gate().mark();
    for (QObject *tab : page.page()->findChildren<QObject *>())
        if (tab->property("syncSettingsExpanded").isValid())
            tab->setProperty("syncSettingsExpanded", true);
    page.settle();
    page.item("Trigger Mode");
    QCOMPARE(page.rig().callsSince(mark).filter("Sync") + page.rig().callsSince(mark).filter("Trigger"), QStringList());
}

void tst_SetupTabSync::nothingUnreadIsShown()
{
    SyncSection page("everything", [](emulator::Camera &camera) {
        for (const char *name :
             {"zvtGetFrameSyncMode", "zvtGetFrameSyncSource", "zvtGetTriggerMode", "zvtGetTriggerSource",
              "zvtGetInternalTriggerRate", "zvtGetSequenceCount", "zvtGetFrameSyncDelay", "zvtGetTriggerDelay",
              "zvtGetSyncOutDelay", "zvtGetSyncOutSource", "zvtGetSyncOutPolarity", "zvtGetFrameSyncPolarity",
              "zvtGetTriggerPolarity", "zvtGetIRIGTriggerTime"})
            camera.gate().failAlways(name);
    });
    for (const QString &name : syncControls()) {
        const QQuickItem &item = page.item(name);
        if (item.inherits("QQuickComboBox"))
            QCOMPARE(item.property("displayText").toString(), "");
        else if (item.inherits("QQuickTextField"))
            QCOMPARE(page.text(name), "");
    }
    page.rig().gate().failNever();
    page.refresh();
    page.settle();
    QCOMPARE(page.shown("Sync Source"), "Internal");
    QCOMPARE(page.text("Trigger Rate (Hz)"), "10.00");
    QCOMPARE(page.text("Sync In Delay (us)"), "0.00");
    QCOMPARE(page.text("Trigger Time day"), "1");
    QCOMPARE(page.text("Trigger Time us"), "0");
    QCOMPARE(page.text("Sequence Count"), "1");
}

void tst_SetupTabSync::eachDelayIsShownOnceItHasBeenRead_data()
{
    QTest::addColumn<QByteArray>("call");
    QTest::addColumn<int>("failure"); // The number of the call that fails.
    QTest::addColumn<QString>("unread");
    QTest::newRow("mode") << QByteArray("zvtGetFrameSyncMode") << 1 << "";
    QTest::newRow("sync in") << QByteArray("zvtGetFrameSyncDelay") << 1 << "Sync In Delay (us)";
    QTest::newRow("trigger in") << QByteArray("zvtGetTriggerDelay") << 1 << "Trigger In Delay (us)";
    for (const int preset : {0, 1, 2, 3})
        QTest::addRow("preset %d", preset)
            << QByteArray("zvtGetSyncOutDelay") << preset + 1 << QStringLiteral("Sync Out Delay (us) PS%1").arg(preset);
}

void tst_SetupTabSync::eachDelayIsShownOnceItHasBeenRead()
{
    QFETCH(const QByteArray, call);
    QFETCH(const int, failure);
    QFETCH(const QString, unread);
    SyncSection page("everything", [&](emulator::Camera &camera) { camera.gate().failNext(call.data(), failure); });
    const auto check = [&page](const QString &empty) {
        for (const QString &name : syncControls().filter(" Delay (us)"))
            QCOMPARE(page.text(name), name == empty ? "" : "0.00");
    };
    check(unread);
    page.refresh();
    page.settle();
    check({});
    // A delay that has been read stays after a failed read.
    page.rig().gate().failNext(call.toStdString(), failure);
    page.refresh();
    page.settle();
    check({});
}

// The controls

void tst_SetupTabSync::choicesAreSentByMouse_data()
{
    QTest::addColumn<QString>("box");
    QTest::addColumn<QStringList>("rows");
    QTest::addColumn<QString>("call");
    const QStringList polarities{"Active Low", "Active High"};
    const auto row = [](const char *box, const QStringList &rows, const char *call) {
        QTest::newRow(box) << QString::fromLatin1(box) << rows << QString::fromLatin1(call);
    };
    row("Sync Source", {"Internal", "External", "Video"}, "zvtSetFrameSyncSource");
    row("Frame Sync Starts", {"Integration", "Readout"}, "zvtSetFrameSyncMode");
    row("Trigger Mode", {"Free Run", "Triggered Free Run", "Triggered Sequence"}, "zvtSetTriggerMode");
    row("Trigger Source", {"Internal", "External", "Software", "Time"}, "zvtSetTriggerSource");
    row("Sync In Polarity", polarities, "zvtSetFrameSyncPolarity");
    row("Trigger In Polarity", polarities, "zvtSetTriggerPolarity");
    row("Sync Out Reference", {"Integration Start", "Frame Start", "Saturation Flag"}, "zvtSetSyncOutSource");
    row("Sync Out Polarity", polarities, "zvtSetSyncOutPolarity");
}

void tst_SetupTabSync::choicesAreSentByMouse()
{
    QFETCH(const QString, box);
    QFETCH(const QStringList, rows);
    QFETCH(const QString, call);
    SyncSection page;
    QCOMPARE(page.item(box).property("model").toStringList(), rows);
    QCOMPARE(page.shown(box), rows.first());
    const auto last = rows.size() - 1;
    QCOMPARE(page.commandsOf([&] { page.choose(box, rows.last()); }), QStringList{call + ' ' + QString::number(last)});
    QCOMPARE(page.shown(box), rows.last());
    page.refresh();
    page.settle();
    QCOMPARE(page.shown(box), rows.last());
}

void tst_SetupTabSync::choicesAreSentByKeyboard()
{
    QFETCH(const QString, box);
    QFETCH(const QStringList, rows);
    QFETCH(const QString, call);
    SyncSection page;
    page.item(box).forceActiveFocus(Qt::TabFocusReason);
    QCOMPARE(page.commandsOf([&] { page.press(Qt::Key_Down); }), QStringList{call + " 1"});
    QCOMPARE(page.shown(box), rows.at(1));
    QCOMPARE(page.commandsOf([&] { page.press(Qt::Key_Up); }), QStringList{call + " 0"});
}

void tst_SetupTabSync::choicesFollowTheCamera()
{
    SyncSection page;
    auto other = page.rig().camera().otherClient();
    for (const auto &[name, value] : std::initializer_list<std::pair<const char *, QVariant>>{
             {"sync.source", 2},
             {"sync.mode", 1},
             {"sync.delay", 12.35},
             {"sync.polarity", 1},
             {"trigger.mode", 1},
             {"trigger.source", 3},
             {"trigger.delay", 0.05},
             {"trigger.polarity", 1},
             {"trigger.internalRate", 33.3},
             {"trigger.sequenceCount", 12},
             {"trigger.time", QVariantList{366, 23, 59, 58, 999, 998}},
             {"syncOut.delays", QVariantList{1, 2.5, 3, 1'000'000}},
             {"syncOut.source", 1},
             {"syncOut.polarity", 1}})
        QVERIFY2(other.set(name, value), name);
    page.refresh();
    page.settle();
    QStringList shown;
    for (const QString &name : syncControls())
        if (page.item(name).inherits("QQuickComboBox"))
            shown << page.shown(name);
        else if (page.item(name).inherits("QQuickTextField"))
            shown << page.text(name);
    QCOMPARE(
        shown.join(", "),
        "Video, Readout, Triggered Free Run, 12, Time, 33.30, 366, 23, 59, 58, 999, 998, 12.35, Active High, 0.05, "
        "Active High, 1.00, 2.50, 3.00, 1000000.00, Frame Start, Active High");
}

void tst_SetupTabSync::triggerModesFollowTheSequencingMode()
{
    SyncSection page;
    page.click("General Setup");
    page.settle();
    page.choose("Trigger Mode", "Triggered Free Run");
    page.choose("Sequencing Mode", "Preset Sequencing");
    QCOMPARE(page.item("Trigger Mode").property("model").toStringList().last(), "Triggered Preset Advance");
    QCOMPARE(page.shown("Trigger Mode"), "Triggered Free Run");
    QCOMPARE(page.commandsOf([&] { page.choose("Trigger Mode", "Triggered Preset Advance"); }),
             QStringList{"zvtSetTriggerMode 3"});
    // The row goes away; the list shows nothing until a read.
    page.choose("Sequencing Mode", "Single Preset");
    QCOMPARE(page.shown("Trigger Mode"), "");
    page.refresh();
    page.settle();
    QCOMPARE(page.shown("Trigger Mode"), "Free Run");
    SyncSection bare("bare");
    QCOMPARE(bare.item("Trigger Mode").property("model").toStringList().last(), "Triggered Superframe");
}

void tst_SetupTabSync::triLevelAppearsWithItsInput()
{
    SyncSection page;
    page.rig().gate().script("zvtGetTriLevelSyncSourceAvailable", true);
    page.rig().gate().script("zvtGetFrameSyncSource", 3);
    page.refresh();
    page.settle();
    QCOMPARE(page.shown("Sync Source"), "Tri-level");
    page.rig().gate().script("zvtGetFrameSyncSource", 2);
    page.rig().gate().script("zvtGetTriLevelSyncSourceAvailable", false);
    page.refresh();
    page.settle();
    QCOMPARE(page.shown("Sync Source"), "Video");
}

void tst_SetupTabSync::numbersAreSent_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char *field, const char *typed, const char *command, const char *shown) {
        QTest::newRow(field) << field << typed << command << shown;
    };
    row("Sequence Count", "12", "zvtSetSequenceCount 12", "12");
    row("Trigger Rate (Hz)", "12.5", "zvtSetInternalTriggerRate 12.5", "12.50");
    row("Trigger Time day", "366", "zvtSetIRIGTriggerTime 366, 0, 0, 0, 0, 0", "366");
    row("Trigger Time hour", "23", "zvtSetIRIGTriggerTime 1, 23, 0, 0, 0, 0", "23");
    row("Trigger Time min", "59", "zvtSetIRIGTriggerTime 1, 0, 59, 0, 0, 0", "59");
    row("Trigger Time sec", "59", "zvtSetIRIGTriggerTime 1, 0, 0, 59, 0, 0", "59");
    row("Trigger Time ms", "999", "zvtSetIRIGTriggerTime 1, 0, 0, 0, 999, 0", "999");
    row("Trigger Time us", "999", "zvtSetIRIGTriggerTime 1, 0, 0, 0, 0, 999", "999");
    row("Sync In Delay (us)", "1.25", "zvtSetFrameSyncDelay 1.25", "1.25");
    row("Trigger In Delay (us)", "1000000", "zvtSetTriggerDelay 1e+06", "1000000.00");
    row("Sync Out Delay (us) PS0", "7.5", "zvtSetSyncOutDelay 0, 7.5", "7.50");
    row("Sync Out Delay (us) PS1", "7.5", "zvtSetSyncOutDelay 1, 7.5", "7.50");
    row("Sync Out Delay (us) PS2", "7.5", "zvtSetSyncOutDelay 2, 7.5", "7.50");
    row("Sync Out Delay (us) PS3", "7.5", "zvtSetSyncOutDelay 3, 7.5", "7.50");
}

void tst_SetupTabSync::numbersAreSent()
{
    QFETCH(const QString, field);
    QFETCH(const QString, typed);
    QFETCH(const QString, command);
    QFETCH(const QString, shown);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Tab}) {
        SyncSection page;
        page.choose("Trigger Mode", "Triggered Sequence");
        QStringList commands = page.commandsOf([&] {
            page.type(field, typed);
            page.press(key);
        });
        commands.removeIf([](const QString &call) { return call.startsWith("zvtSnapHertz"); });
        QCOMPARE(commands, QStringList{command});
        QCOMPARE(page.text(field), shown);
        // The same number again is not sent.
        commands = page.commandsOf([&] {
            page.type(field, typed);
            page.press(key);
        });
        commands.removeIf([](const QString &call) { return call.startsWith("zvtSnapHertz"); });
        QCOMPARE(commands, QStringList());
    }
}

void tst_SetupTabSync::textThatIsNoNumberIsMarked()
{
    QFETCH(const QString, field);
    SyncSection page;
    page.choose("Trigger Mode", "Triggered Sequence");
    const QString before = page.text(field);
    QCOMPARE(page.commandsOf([&] {
        page.type(field, "1x");
        page.press(Qt::Key_Tab);
    }),
             QStringList());
    QCOMPARE(page.text(field), "1x");
    QVERIFY(!page.item(field).property("fault").toString().isEmpty());
    page.item(field).forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_Escape);
    QCOMPARE(page.text(field), before);
}

void tst_SetupTabSync::refusedNumberShowsTheOldOne()
{
    SyncSection page;
    for (const auto &[field, typed] :
         std::initializer_list<std::pair<const char *, const char *>>{{"Trigger Time hour", "24"},
                                                                      {"Trigger Time sec", "-1"},
                                                                      {"Sync In Delay (us)", "-1"},
                                                                      {"Sync Out Delay (us) PS2", "1000001"},
                                                                      {"Trigger Rate (Hz)", "0"}}) {
        const QString before = page.text(field);
        QVERIFY(!page.commandsOf([&] {
                         page.type(field, typed);
                         page.press(Qt::Key_Return);
                     })
                     .isEmpty());
        QCOMPARE(page.text(field), before);
        page.refresh();
        page.settle();
        QCOMPARE(page.text(field), before);
    }
}

void tst_SetupTabSync::delayIsReadBackAsTheNearestClock()
{
    SyncSection page;
    page.type("Trigger In Delay (us)", "12.34");
    page.press(Qt::Key_Return);
    QCOMPARE(page.text("Trigger In Delay (us)"), "12.34");
    page.refresh();
    page.settle();
    QCOMPARE(page.text("Trigger In Delay (us)"), "12.35");
}

void tst_SetupTabSync::countNeedsTriggeredSequences()
{
    SyncSection page;
    QVERIFY(!page.enabled("Sequence Count"));
    page.choose("Trigger Mode", "Triggered Sequence");
    QVERIFY(page.enabled("Sequence Count"));
    page.choose("Trigger Mode", "Triggered Free Run");
    QVERIFY(!page.enabled("Sequence Count"));
    SyncSection bare("bare");
    QVERIFY(!bare.find("Sequence Count"));
    QVERIFY(!bare.findText("Sequence Count:"));
}

void tst_SetupTabSync::buttonsTrigger()
{
    SyncSection page;
    for (const auto &[button, call] : std::initializer_list<std::pair<const char *, const char *>>{
             {"Trigger", "zvtSoftwareTrigger"}, {"Rearm", "zvtRearmTrigger"}}) {
        QCOMPARE(page.commandsOf([&] { page.click(button); }), QStringList{call});
        page.item(button).forceActiveFocus(Qt::TabFocusReason);
        for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return})
            QCOMPARE(page.commandsOf([&] { page.press(key); }), QStringList{call});
    }
}

void tst_SetupTabSync::advanceIsAName()
{
    SyncSection page("everything", [](emulator::Camera &camera) {
        camera.otherClient().set("sensor.sequencingMode", 2);
        camera.otherClient().set("trigger.mode", 3);
        camera.otherClient().set("trigger.source", 2);
    });
    QVERIFY(!page.find("Trigger"));
    QCOMPARE(page.commandsOf([&] { page.click("Advance"); }), QStringList{"zvtSoftwareTrigger"});
    uint8_t preset = 9;
    page.rig().controller()->GetActivePreset(&preset);
    QCOMPARE(preset, uint8_t(1));
    page.choose("Trigger Mode", "Free Run");
    QVERIFY(page.find("Trigger") && !page.find("Advance"));
}

ZVT_TEST(tst_SetupTabSync)
#include "tst_SetupTabSync.moc"
