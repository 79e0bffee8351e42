#include "tests/page/SetupPage.h"
#include "tests/support/Test.h"

#include <QColor>

/// Typed positions of the lens, and the lock that the lens controls share.
class tst_SetupTabPositions : public Test
{
    Q_OBJECT

private slots:
    void positionStandsBetweenItsLimits();
    void clickOpensTheEditorAndLocksTheLens();
    void acceptedPositionUnlocksAndMoves_data();
    void acceptedPositionUnlocksAndMoves();
    void positionOutOfRangeIsNotTaken();
    void positionThatIsNoNumberIsNotTaken_data();
    void positionThatIsNoNumberIsNotTaken();
    void leavingTheEditorSendsNothing();
    void cancelledEditorGivesTheLockBack_data();
    void cancelledEditorGivesTheLockBack();
    void editorSurvivesARead();
    void everyLensControlFollowsTheLock_data();
    void everyLensControlFollowsTheLock();
    void lockedRowsAreDimmedAsAWhole();
    void lockIsShownBesideTheHeading();
    void lockOfAHiddenPageRunsNothing();
    void nearAndFarAreEditedInADialog();
    void typedDistanceIsStored();
    void enterStoresTheDistanceAndFocuses();
    void distanceOutOfRangeIsMarked();
    void distanceThatIsNoNumberIsNotStored_data();
    void distanceThatIsNoNumberIsNotStored();
    void halfTypedDistanceSurvivesALock();
    void distanceLimitsAreRounded();
    void positionKeepsItsPlaceWhileTheLensMoves();
};

void tst_SetupTabPositions::positionStandsBetweenItsLimits()
{
    SetupPage page;
    QCOMPARE(page.text("Optical Zoom"), "500");
    QVERIFY(page.findText("500 /"));
    QVERIFY(page.findText("/ 9500"));
    QCOMPARE(page.text("Focus"), "6000");
    QVERIFY(page.findText("0 /"));
    QVERIFY(page.findText("/ 10000"));
}

void tst_SetupTabPositions::clickOpensTheEditorAndLocksTheLens()
{
    SetupPage page;
    page.click("Optical Zoom");
    QVERIFY(!page.lensUnlocked());
    QVERIFY(page.item("Optical Zoom").inherits("QQuickTextField"));
    QVERIFY(page.item("Optical Zoom").hasActiveFocus());
    QCOMPARE(page.text("Optical Zoom"), "500");
    for (const char *name : {"Optical Zoom", "Apply", "Cancel"})
        QVERIFY2(page.enabled(name), name);
    for (const char *name : {"Focus", "Wide", "Auto Focus", "Lens Cover", "Zoom Position"})
        QVERIFY2(!page.enabled(name), name);
}

void tst_SetupTabPositions::acceptedPositionUnlocksAndMoves_data()
{
    QTest::addColumn<QString>("position");
    QTest::addColumn<bool>("byKey");
    QTest::addColumn<QString>("command");
    QTest::newRow("zoom, by Enter") << "Optical Zoom" << true << "zvtSetFOVPos 7000";
    QTest::newRow("zoom, by the button") << "Optical Zoom" << false << "zvtSetFOVPos 7000";
    QTest::newRow("focus, by Enter") << "Focus" << true << "zvtSetFocusPos 7000";
}

void tst_SetupTabPositions::acceptedPositionUnlocksAndMoves()
{
    QFETCH(const QString, position);
    QFETCH(const bool, byKey);
    QFETCH(const QString, command);
    SetupPage page;
    page.rig().gate().hold("zvtSetFOVPos");
    page.rig().gate().hold("zvtSetFocusPos");
    page.click(position);
    page.type(position, "7000");
    page.settle();
    const size_t mark = page.rig().gate().mark();
    if (byKey)
        page.press(Qt::Key_Return);
    else
        page.click("Apply");
    QVERIFY(page.rig().gate().waitHeld(command.section(u' ', 0, 0).toStdString()));
    QVERIFY(!page.find("Apply"));
    // The lens is locked by the move. An editor that released its lock after the move started would have unlocked it.
    QVERIFY(!page.lensUnlocked());
    page.rig().gate().release("*");
    page.settle();
    QCOMPARE(page.commands(mark), QStringList{command});
    QVERIFY(page.lensUnlocked());
    QCOMPARE(page.text(position), "7000");
}

void tst_SetupTabPositions::positionOutOfRangeIsNotTaken()
{
    SetupPage page;
    page.click("Optical Zoom");
    const QStringList commands = page.commandsOf([&page] {
        page.type("Optical Zoom", "499");
        QVERIFY(!page.enabled("Apply"));
        page.press(Qt::Key_Return);
        QVERIFY(page.find("Apply"));
        page.type("Optical Zoom", "95000");
        QVERIFY(!page.enabled("Apply"));
        page.press(Qt::Key_Return);
        QCOMPARE(page.text("Optical Zoom"), "95000");
    });
    QCOMPARE(commands, QStringList());
    QVERIFY(!page.lensUnlocked());
}

void tst_SetupTabPositions::positionThatIsNoNumberIsNotTaken_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text : {"9,50", "1e3", "950.5", "950.", "abc", ""})
        QTest::newRow(text) << text;
}

void tst_SetupTabPositions::positionThatIsNoNumberIsNotTaken()
{
    QFETCH(const QString, text);
    SetupPage page;
    page.click("Optical Zoom");
    const QStringList commands = page.commandsOf([&] {
        page.type("Optical Zoom", text);
        if (text.isEmpty())
            page.press(Qt::Key_Delete);
        QVERIFY(!page.enabled("Apply"));
        page.press(Qt::Key_Return);
    });
    QCOMPARE(commands, QStringList());
    QCOMPARE(page.text("Optical Zoom"), text);
    QVERIFY(page.item("Optical Zoom").property("background").value<QQuickItem *>()->property("color").value<QColor>()
            == QColor("#5a1a1a"));
    QVERIFY(!page.lensUnlocked());
}

void tst_SetupTabPositions::leavingTheEditorSendsNothing()
{
    SetupPage page;
    page.click("Optical Zoom");
    const QStringList commands = page.commandsOf([&page] {
        page.type("Optical Zoom", "7000");
        page.press(Qt::Key_Tab);
    });
    QCOMPARE(commands, QStringList());
    QVERIFY(page.item("Apply").hasActiveFocus());
    QCOMPARE(page.text("Optical Zoom"), "7000");
    QCOMPARE(page.commandsOf([&page] { page.press(Qt::Key_Space); }), QStringList{"zvtSetFOVPos 7000"});
}

void tst_SetupTabPositions::cancelledEditorGivesTheLockBack_data()
{
    QTest::addColumn<QString>("cause");
    for (const char *cause : {"button", "escape", "tab", "collapse", "disconnect", "window"})
        QTest::newRow(cause) << cause;
}

void tst_SetupTabPositions::cancelledEditorGivesTheLockBack()
{
    QFETCH(const QString, cause);
    SetupPage page;
    page.click("Optical Zoom");
    page.type("Optical Zoom", "7000");
    const QStringList commands = page.commandsOf([&] {
        if (cause == "button")
            page.click("Cancel");
        else if (cause == "escape")
            page.press(Qt::Key_Escape);
        else if (cause == "tab")
            page.showTab(0);
        else if (cause == "collapse")
            page.click("General Setup");
        else if (cause == "disconnect")
            page.rig().camera().disconnect();
        else
            page.window().hide();
        page.settle();
        QVERIFY(page.lensUnlocked());
        // The page that is shown again shows the current position.
        page.window().show();
        if (cause == "tab")
            page.showTab(1);
        else if (cause == "collapse")
            page.click("General Setup");
        else if (cause == "disconnect")
            page.rig().camera().connect();
    });
    QCOMPARE(commands.filter("FOVPos"), QStringList());
    QVERIFY(page.lensUnlocked());
    QVERIFY(!page.find("Cancel"));
    QCOMPARE(page.text("Optical Zoom"), "500");
    page.click("Optical Zoom");
    QCOMPARE(page.text("Optical Zoom"), "500");
}

void tst_SetupTabPositions::editorSurvivesARead()
{
    SetupPage page;
    page.click("Focus");
    page.type("Focus", "70");
    page.click("Refresh General Setup");
    page.settle();
    QVERIFY(!page.lensUnlocked());
    QVERIFY(page.enabled("Apply"));
    QCOMPARE(page.text("Focus"), "70");
}

void tst_SetupTabPositions::everyLensControlFollowsTheLock_data()
{
    QTest::addColumn<QString>("profile");
    QTest::addColumn<QStringList>("names");
    QTest::newRow("by percent") << "everything"
                                << QStringList{
                                       "Lens Cover",       "Lens States",   "Add New Lens State Using Current Settings",
                                       "Optical Zoom",     "Zoom Position", "Wide",
                                       "Zoom Speed",       "Narrow",        "Focus",
                                       "Focus Position",   "Near Focus",    "Focus Speed",
                                       "Far Focus",        "Auto Focus",    "Distance",
                                       "Focus To Distance"};
    QTest::newRow("by speed") << "speed-moves"
                              << QStringList{"Zoom Out Quickly",     "Zoom In Slowly", "Focus Closer with Medium Speed",
                                             "Focus Farther Slowly", "Nearest",        "Farthest"};
    QTest::newRow("discrete") << "discrete-fov"
                              << QStringList{"Field of View", "Focus", "Edit Nearest/Farthest Positions"};
}

void tst_SetupTabPositions::everyLensControlFollowsTheLock()
{
    QFETCH(const QString, profile);
    QFETCH(const QStringList, names);
    SetupPage page(profile);
    for (const QString &name : names)
        QVERIFY2(page.enabled(name), qPrintable(name));
    page.tab()->setProperty("lensBasedControlsEnabled", false);
    for (const QString &name : names)
        QVERIFY2(!page.enabled(name), qPrintable(name));
}

void tst_SetupTabPositions::lockedRowsAreDimmedAsAWhole()
{
    SetupPage page;
    const auto opacity = [&page](const QString &text) {
        double product = 1;
        for (const QQuickItem *item = page.findText(text); item != nullptr; item = item->parentItem())
            product *= item->opacity();
        return product;
    };
    const QStringList texts{"Lens Cover:", "Lens States:", "Optical Zoom:", "500",       "Wide",
                            "Focus:",      "Near Focus",   "Auto Focus",    "Distance:", "Focus To Distance"};
    for (const QString &text : texts)
        QCOMPARE(opacity(text), 1.0);
    page.tab()->setProperty("lensBasedControlsEnabled", false);
    for (const QString &text : texts)
        QVERIFY2(qFuzzyCompare(opacity(text), 0.6), qPrintable(text));
    QCOMPARE(opacity("Lens Control"), 1.0);
    // Limits and units are already as dim as readable text can be, so they are not dimmed further.
    QCOMPARE(opacity("500 /"), 1.0);
    QCOMPARE(opacity("m"), 1.0);
    page.tab()->setProperty("lensBasedControlsEnabled", true);
    // The row in which a position is typed is not locked.
    page.click("Focus");
    QCOMPARE(opacity("Focus:"), 1.0);
    QVERIFY(qFuzzyCompare(opacity("Optical Zoom:"), 0.6));
}

void tst_SetupTabPositions::lockIsShownBesideTheHeading()
{
    const QString lock = QStringLiteral("The lens moves, or stands in manual focus");
    SetupPage page;
    QVERIFY(!page.object("lockBusy"));
    const QObject *timer = page.object("lockTimer");
    QVERIFY(!timer->property("running").toBool());
    page.rig().gate().hold("zvtAutoFocusFast");
    page.click("Auto Focus");
    page.awaitFrame();
    QVERIFY(page.object("lockBusy"));
    QVERIFY(timer->property("running").toBool());
    QCOMPARE(timer->property("interval").toInt(), 10000);

    QMetaObject::invokeMethod(page.object("lockTimer"), "triggered");
    QCOMPARE(page.text(lock), QString(QChar(0xf023)));
    QTRY_VERIFY(!page.object("lockBusy"));
    QVERIFY(!timer->property("running").toBool());
    QTest::mouseMove(&page.window(), page.middle(lock));
    QTRY_COMPARE(page.hint(), lock);

    page.rig().gate().release("*");
    page.settle();
    QVERIFY(!page.find(lock));
    // The next lock starts with the spinner again.
    page.tab()->setProperty("lensBasedControlsEnabled", false);
    QVERIFY(page.object("lockBusy"));
    page.tab()->setProperty("lensBasedControlsEnabled", true);
    // Typing a position locks the lens without showing the mark.
    page.click("Focus");
    page.settle();
    QVERIFY(!page.lensUnlocked());
    QVERIFY(!page.object("lockBusy"));
}

void tst_SetupTabPositions::lockOfAHiddenPageRunsNothing()
{
    SetupPage page;
    page.tab()->setProperty("lensBasedControlsEnabled", false);
    QVERIFY(page.object("lockBusy"));
    page.showTab(0);
    QVERIFY(!page.object("lockBusy"));
    QVERIFY(!page.object("lockTimer")->property("running").toBool());
}

void tst_SetupTabPositions::nearAndFarAreEditedInADialog()
{
    SetupPage page("discrete-fov");
    page.click("Edit Nearest/Farthest Positions");
    QTRY_VERIFY(page.findText("Narrow Field Of View"));
    const QStringList commands = page.commandsOf([&page] { page.click("OK"); });
    QCOMPARE(commands.size(), 4);
    QVERIFY(commands.constFirst().startsWith("zvtSetFocusNearPos 0"));
    SetupPage zoom;
    QVERIFY(!zoom.find("Edit Nearest/Farthest Positions"));
}

void tst_SetupTabPositions::typedDistanceIsStored()
{
    SetupPage page;
    QCOMPARE(page.text("Distance"), "0.50");
    QCOMPARE(page.text("Range"), "0.50m - 500.00m");
    QCOMPARE(page.commandsOf([&page] {
        page.type("Distance", "12.5");
        page.press(Qt::Key_Tab);
    }),
             QStringList());
    QCOMPARE(page.tab()->property("distanceToFocus").toFloat(), 12.5f);
    QCOMPARE(page.text("Distance"), "12.50");
    QCOMPARE(page.commandsOf([&page] { page.click("Focus To Distance"); }), QStringList{"zvtFocusToDistance 12.5"});
}

void tst_SetupTabPositions::enterStoresTheDistanceAndFocuses()
{
    SetupPage page;
    QCOMPARE(page.commandsOf([&page] {
        page.type("Distance", "20");
        page.press(Qt::Key_Return);
    }),
             QStringList{"zvtFocusToDistance 20"});
    QCOMPARE(page.text("Distance"), "20.00");
}

void tst_SetupTabPositions::distanceOutOfRangeIsMarked()
{
    SetupPage page;
    const auto marked = [&page] {
        return page.item("Range").property("background").value<QQuickItem *>()->property("color").value<QColor>()
            == QColor("#990000");
    };
    QVERIFY(!marked());
    QCOMPARE(page.commandsOf([&page] {
        page.type("Distance", "0.1");
        page.press(Qt::Key_Return);
    }),
             QStringList());
    QVERIFY(marked());
    QVERIFY(!page.enabled("Focus To Distance"));
    page.press(Qt::Key_Escape);
    QCOMPARE(page.text("Distance"), "0.50");
    QVERIFY(!marked());
    QVERIFY(page.enabled("Focus To Distance"));
    QCOMPARE(page.tab()->property("distanceToFocus").toFloat(), 0.5f);
}

void tst_SetupTabPositions::distanceThatIsNoNumberIsNotStored_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<Qt::Key>("key");
    for (const char *text : {"1,5", "1.555", "1e1", "ten"}) {
        QTest::addRow("%s, Tab", text) << QString::fromLatin1(text) << Qt::Key_Tab;
        QTest::addRow("%s, Return", text) << QString::fromLatin1(text) << Qt::Key_Return;
    }
}

void tst_SetupTabPositions::distanceThatIsNoNumberIsNotStored()
{
    QFETCH(const QString, text);
    QFETCH(const Qt::Key, key);
    SetupPage page;
    QCOMPARE(page.commandsOf([&] {
        page.type("Distance", text);
        page.press(key);
    }),
             QStringList());
    QCOMPARE(page.text("Distance"), text);
    QVERIFY(!page.enabled("Focus To Distance"));
    QCOMPARE(page.tab()->property("distanceToFocus").toFloat(), 0.5f);
}

// A move by another client locks the lens.
void tst_SetupTabPositions::halfTypedDistanceSurvivesALock()
{
    SetupPage page;
    page.type("Distance", "12");
    page.tab()->setProperty("lensBasedControlsEnabled", false);
    page.settle();
    QVERIFY(!page.enabled("Distance"));
    QCOMPARE(page.tab()->property("distanceToFocus").toFloat(), 0.5f);
    page.tab()->setProperty("lensBasedControlsEnabled", true);
    page.settle();
    page.PageDriver::type("5");
    QCOMPARE(page.text("Distance"), "125");
}

void tst_SetupTabPositions::distanceLimitsAreRounded()
{
    SetupPage page("everything", [](emulator::Camera &camera) {
        camera.gate().script("zvtGetFocusToDistanceMin", 1.2345);
        camera.gate().script("zvtGetFocusToDistanceMax", 98.7654);
    });
    QCOMPARE(page.text("Range"), "1.23m - 98.77m");
    QCOMPARE(page.text("Distance"), "1.23");
    QVERIFY(page.enabled("Focus To Distance"));
    page.type("Distance", "98.77");
    QVERIFY(page.enabled("Focus To Distance"));
}

void tst_SetupTabPositions::positionKeepsItsPlaceWhileTheLensMoves()
{
    SetupPage page("speed-moves");
    const auto width = [&page] {
        page.settle();
        return page.item("Focus").width();
    };
    const double before = width();
    page.rig().gate().script("zvtGetFocusCurrentPos", 7);
    QMetaObject::invokeMethod(page.tab(), "updateFocusPosition");
    QCOMPARE(page.text("Focus"), "7");
    QCOMPARE(width(), before);
}

ZVT_TEST(tst_SetupTabPositions)
#include "tst_SetupTabPositions.moc"
