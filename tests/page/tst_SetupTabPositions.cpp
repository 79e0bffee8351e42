#include "tests/page/SetupPage.h"
#include "tests/support/Test.h"

#include <QColor>

/// Positions of the lens that are typed, and the lock that the lens controls share.
class tst_SetupTabPositions : public Test
{
    Q_OBJECT

private slots:
    void positionStandsBetweenItsLimits();
    void clickOpensTheEditorAndLocksTheLens();
    void acceptedPositionUnlocksAndMoves_data();
    void acceptedPositionUnlocksAndMoves();
    void positionOutOfRangeIsNotTaken();
    void cancelledEditorGivesTheLockBack_data();
    void cancelledEditorGivesTheLockBack();
    void editorSurvivesARead();
    void everyLensControlFollowsTheLock_data();
    void everyLensControlFollowsTheLock();
    void nearAndFarAreEditedInADialog();
    void typedDistanceIsStored();
    void enterStoresTheDistanceAndFocuses();
    void distanceOutOfRangeIsMarked();
    void distanceLimitsAreRounded();
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
    // The move's own lock: an editor that gave its lock back after it would have opened this one.
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
        // One digit too many can not even be typed.
        page.type("Optical Zoom", "95000");
        QCOMPARE(page.text("Optical Zoom"), "9500");
    });
    QCOMPARE(commands, QStringList());
    QVERIFY(!page.lensUnlocked());
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
        // What comes back shows the lens.
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

ZVT_TEST(tst_SetupTabPositions)
#include "tst_SetupTabPositions.moc"
