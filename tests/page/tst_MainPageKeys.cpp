#include "tests/page/SetupPage.h"
#include "tests/page/StandaloneFake.h"
#include "tests/support/PageDriver.h"
#include "tests/support/Test.h"

/// Tabs, menu and dialogs by keyboard, and the item that has the focus after each action.
class tst_MainPageKeys : public Test
{
    Q_OBJECT

private slots:
    void controlTabWalksOverTheTabs();
    void aBlockedPageKeepsItsTab();
    void enterOpensATab_data();
    void enterOpensATab();
    void walkingOverTheTabsKeepsTheFocusThere();
    void arrowsMoveInTheMenu();
    void theMenuGivesTheFocusBack_data();
    void theMenuGivesTheFocusBack();
    void aDialogGivesTheFocusBack_data();
    void aDialogGivesTheFocusBack();
    void aDisconnectedPageTakesNoOrders();
    void theReasonOfAFailedConnectionIsShown();

private:
    static int shownTab(PageDriver &driver) { return driver.object("pages")->property("currentIndex").toInt(); }
    static QString focusName(PageDriver &driver);
};

QString tst_MainPageKeys::focusName(PageDriver &driver)
{
    const QQuickItem *item = driver.window().activeFocusItem();
    return item == nullptr ? QString() : driver.nameOf(*item);
}

void tst_MainPageKeys::controlTabWalksOverTheTabs()
{
    PageDriver driver;
    QCOMPARE(shownTab(driver), 0);
    constexpr int tabs = 7;
    for (int step = 1; step <= tabs; ++step) {
        driver.press(Qt::Key_Tab, Qt::ControlModifier);
        QCOMPARE(shownTab(driver), step % tabs);
    }
    driver.press(Qt::Key_Tab, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(shownTab(driver), tabs - 1);
}

void tst_MainPageKeys::aBlockedPageKeepsItsTab()
{
    PageDriver driver;
    QVERIFY(QMetaObject::invokeMethod(driver.page(), "setFakeOverlay", Q_ARG(bool, true)));
    driver.press(Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(shownTab(driver), 0);
    QVERIFY(QMetaObject::invokeMethod(driver.page(), "setFakeOverlay", Q_ARG(bool, false)));
    driver.press(Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(shownTab(driver), 1);
}

void tst_MainPageKeys::enterOpensATab_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("Enter") << Qt::Key_Enter;
    QTest::newRow("Space") << Qt::Key_Space;
}

void tst_MainPageKeys::enterOpensATab()
{
    QFETCH(const Qt::Key, key);
    PageDriver driver;
    driver.find("Setup")->forceActiveFocus(Qt::TabFocusReason);
    driver.press(key);
    QCOMPARE(shownTab(driver), 1);
}

void tst_MainPageKeys::walkingOverTheTabsKeepsTheFocusThere()
{
    PageDriver driver;
    driver.find("Status")->forceActiveFocus(Qt::TabFocusReason);
    driver.press(Qt::Key_Right);
    driver.settle();
    QCOMPARE(shownTab(driver), 1);
    QCOMPARE(focusName(driver), "Setup");
    QVERIFY(driver.find("Setup")->property("visualFocus").toBool());
    driver.press(Qt::Key_Left);
    driver.settle();
    QCOMPARE(focusName(driver), "Status");
}

void tst_MainPageKeys::arrowsMoveInTheMenu()
{
    PageDriver driver;
    driver.find("Configuration")->forceActiveFocus(Qt::TabFocusReason);
    driver.press(Qt::Key_Return);
    QTRY_VERIFY(driver.find("About"));
    const QString first = focusName(driver);
    driver.press(Qt::Key_Down);
    QVERIFY(focusName(driver) != first);
    driver.press(Qt::Key_Up);
    QCOMPARE(focusName(driver), first);
}

void tst_MainPageKeys::theMenuGivesTheFocusBack_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::newRow("opened by keyboard") << true;
    QTest::newRow("opened by mouse") << false;
}

void tst_MainPageKeys::theMenuGivesTheFocusBack()
{
    QFETCH(const bool, byKeyboard);
    PageDriver driver;
    QQuickItem *button = driver.find("Configuration");
    if (byKeyboard) {
        button->forceActiveFocus(Qt::TabFocusReason);
        driver.press(Qt::Key_Return);
    } else {
        driver.click(button);
    }
    QTRY_VERIFY(driver.find("About"));
    driver.press(Qt::Key_Escape);
    QTRY_COMPARE(focusName(driver), "Configuration");
    QCOMPARE(button->property("visualFocus").toBool(), byKeyboard);
}

void tst_MainPageKeys::aDialogGivesTheFocusBack_data()
{
    QTest::addColumn<QString>("action");
    for (const char *action : {"Load State", "Adjust Time", "About"})
        QTest::newRow(action) << action;
}

// If the focus did not return, the next Tab and Enter would disconnect the camera.
void tst_MainPageKeys::aDialogGivesTheFocusBack()
{
    QFETCH(const QString, action);
    StandaloneFake standalone;
    standalone.connected = true;
    PageDriver driver({.options = {.standaloneModel = &standalone}});
    driver.choose(action);
    driver.settle();
    QVERIFY(!driver.find("Manage States"));
    driver.press(Qt::Key_Escape);
    QTRY_COMPARE(focusName(driver), "Configuration");
    driver.press(Qt::Key_Tab);
    QCOMPARE(focusName(driver), "Status");
}

void tst_MainPageKeys::aDisconnectedPageTakesNoOrders()
{
    SetupPage page;
    // A field with the focus keeps its section enabled during a read, but not without a camera.
    page.item("Integration Time 0").forceActiveFocus(Qt::TabFocusReason);
    page.rig().camera().disconnect();
    page.settle();
    for (const QString name : {"Sequencing Mode", "Preset 1", "Reduce Noise", "Image Size", "Width", "Auto Focus"})
        QVERIFY2(!page.enabled(name), qPrintable(name));
    QCOMPARE(page.commandsOf([&page] { page.click("Preset 1"); }), QStringList());
}

void tst_MainPageKeys::theReasonOfAFailedConnectionIsShown()
{
    StandaloneFake standalone;
    PageDriver driver({.connected = false, .options = {.standaloneModel = &standalone}});
    standalone.setProperty("connecting", true);
    standalone.connectError = "The camera is switched off.";
    standalone.setProperty("connecting", false);
    QTRY_VERIFY(driver.findText("Failed to connect to the camera.\nThe camera is switched off."));
}

ZVT_TEST(tst_MainPageKeys)
#include "tst_MainPageKeys.moc"
