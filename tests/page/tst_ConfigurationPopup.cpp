#include "tests/page/StandaloneFake.h"
#include "tests/support/PageDriver.h"
#include "tests/support/Test.h"

#include <QTextOption>
#include <QTimer>
#include <QTranslator>

#include "zvt/zvtsdk.h"

using hlx::cam::ui::PageOptions;

namespace
{

/// Translates every text in a way that shows whether it was translated.
class Translated : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *, const char *text, const char *, int) const override
    {
        return QStringLiteral("~") + QString::fromUtf8(text);
    }
};

} // namespace

/// The actions of the configuration menu, and what the page shows while a state is saved or loaded.
class tst_ConfigurationPopup : public Test
{
    Q_OBJECT

private slots:
    void theActionsStandInOrder_data();
    void theActionsStandInOrder();
    void theActionsForTheMakerAreNotTranslated();
    void theActionsWantAConnection();
    void theStateIsNamed();
    void theStateIsNotNamedWhileStatesAreRead();
    void onlyAStateOfItsOwnIsSavedOver();
    void anActionClosesTheMenuAndActs_data();
    void anActionClosesTheMenuAndActs();
    void aDialogOpens_data();
    void aDialogOpens();
    void theStatesAreReadForTheirDialog_data();
    void theStatesAreReadForTheirDialog();
    void theActionsAreWithinReachOfTheKeyboard();
    void everythingFitsASmallWindow();
    void aLoadBlocksThePage_data();
    void aLoadBlocksThePage();
    void aSaveDoesNotBlockThePage_data();
    void aSaveDoesNotBlockThePage();
    void aLoadReadsThePageAnew();
    void manufacturingModeShowsItsActions();
    void thePageHasTheKeysAgain_data();
    void thePageHasTheKeysAgain();
    void aDialogKeepsTheKeys();

private:
    static QStringList actions(PageDriver &driver);
    static void saveAs(PageDriver &driver, const QString &name);
    static void setManufacturing(PageDriver &driver, bool on)
    {
        driver.cameraModel()->setProperty("manufacturingMode", on);
    }
};

// All buttons of the open menu, from the top.
QStringList tst_ConfigurationPopup::actions(PageDriver &driver)
{
    const QQuickItem *column = driver.find("About")->parentItem();
    QMap<double, QString> texts;
    for (const QQuickItem *item : column->childItems())
        if (item->isVisible() && item->inherits("QQuickControl"))
            texts.insert(item->y(),
                         item->inherits("QQuickComboBox") ? QStringLiteral("(controllers)")
                                                          : item->property("text").toString());
    return texts.values();
}

void tst_ConfigurationPopup::saveAs(PageDriver &driver, const QString &name)
{
    QMetaObject::invokeMethod(driver.tabModel("cameraState"), "saveStateAs", Q_ARG(QString, name));
    driver.settle();
}

void tst_ConfigurationPopup::theActionsStandInOrder_data()
{
    QTest::addColumn<bool>("standalone");
    QTest::addColumn<bool>("manufacturing");
    QTest::newRow("in a host") << false << false;
    QTest::newRow("in a host, for the maker") << false << true;
    QTest::newRow("standalone") << true << false;
    QTest::newRow("standalone, for the maker") << true << true;
}

void tst_ConfigurationPopup::theActionsStandInOrder()
{
    QFETCH(const bool, standalone);
    QFETCH(const bool, manufacturing);
    StandaloneFake model;
    PageDriver driver({.options = {.standaloneModel = standalone ? &model : nullptr}});
    setManufacturing(driver, manufacturing);
    driver.click("Configuration");
    QTRY_VERIFY(driver.find("About"));
    driver.settle();
    QStringList expected;
    if (standalone)
        expected << "(controllers)";
    expected << "Save State"
             << "Save State As"
             << "Load State"
             << "Manage States"
             << "Load Factory Defaults";
    if (manufacturing)
        expected << "Save Factory Defaults"
                 << "Load Hard Defaults";
    expected << "Adjust Time"
             << "Edit Filter Names"
             << "About";
    QStringList shown = actions(driver);
    shown.replaceInStrings(QRegularExpression(R"(^Save State \(.*\)$)"), "Save State");
    QCOMPARE(shown, expected);
    setManufacturing(driver, false);
}

void tst_ConfigurationPopup::theActionsForTheMakerAreNotTranslated()
{
    Translated translated;
    QCoreApplication::installTranslator(&translated);
    PageDriver driver;
    setManufacturing(driver, true);
    driver.click("~Configuration");
    QTRY_VERIFY(driver.find("~About"));
    QVERIFY(driver.find("~Load State"));
    QVERIFY(driver.find("Save Factory Defaults"));
    QVERIFY(driver.find("Load Hard Defaults"));
    setManufacturing(driver, false);
}

void tst_ConfigurationPopup::theActionsWantAConnection()
{
    PageDriver driver({.connected = false});
    setManufacturing(driver, true);
    driver.click("Configuration");
    QTRY_VERIFY(driver.find("About"));
    for (const QString &action : actions(driver))
        QVERIFY2(!driver.find(action)->isEnabled(), qPrintable(action));
    driver.rig().camera().connect();
    driver.settle();
    for (const QString &action : actions(driver))
        if (!action.startsWith("Save State") || action == "Save State As")
            QVERIFY2(driver.find(action)->isEnabled(), qPrintable(action));
    setManufacturing(driver, false);
}

void tst_ConfigurationPopup::theStateIsNamed()
{
    PageDriver driver;
    saveAs(driver, "Runway");
    driver.click("Configuration");
    QTRY_VERIFY(driver.find("Save State (Runway)"));
    // Without a name of the current state, the text has no addition.
    driver.press(Qt::Key_Escape);
    driver.rig().gate().failAlways("zvtGetStateName");
    QMetaObject::invokeMethod(driver.tabModel("cameraState"), "refresh");
    driver.settle();
    driver.click("Configuration");
    QTRY_VERIFY(driver.find("Save State"));
}

void tst_ConfigurationPopup::theStateIsNotNamedWhileStatesAreRead()
{
    PageDriver driver;
    saveAs(driver, "Runway");
    driver.click("Configuration");
    QTRY_VERIFY(driver.find("Save State (Runway)"));
    driver.rig().gate().hold("zvtListStates");
    QMetaObject::invokeMethod(driver.tabModel("cameraState"), "refresh");
    QVERIFY(driver.find("Save State"));
    driver.rig().gate().release("zvtListStates");
    driver.settle();
    QVERIFY(driver.find("Save State (Runway)"));
}

void tst_ConfigurationPopup::onlyAStateOfItsOwnIsSavedOver()
{
    PageDriver driver;
    driver.choose("Load Factory Defaults");
    driver.settle();
    driver.click("Configuration");
    QTRY_VERIFY(driver.find("Save State (Factory Defaults)"));
    QVERIFY(!driver.find("Save State (Factory Defaults)")->isEnabled());
    saveAs(driver, "Runway");
    QVERIFY(driver.find("Save State (Runway)")->isEnabled());
    const size_t mark = driver.rig().gate().mark();
    driver.click("Save State (Runway)");
    driver.settle();
    QCOMPARE(driver.rig().callsSince(mark).mid(0, 1), QStringList{"zvtSaveState"});
    QVERIFY(!driver.find("About"));
    // The operator cannot repeat a failed save by this action.
    driver.rig().gate().failNext("zvtSaveState");
    driver.choose("Save State (Runway)");
    driver.settle();
    driver.click("Configuration");
    QTRY_VERIFY(driver.find("Save State (Runway)"));
    QVERIFY(!driver.find("Save State (Runway)")->isEnabled());
}

void tst_ConfigurationPopup::anActionClosesTheMenuAndActs_data()
{
    QTest::addColumn<QString>("call");
    QTest::newRow("Load Factory Defaults") << "controller.LoadFactoryDefaults";
    QTest::newRow("Save Factory Defaults") << "zvtSaveFactoryDefaults";
    QTest::newRow("Load Hard Defaults") << "controller.LoadHardDefaults";
}

void tst_ConfigurationPopup::anActionClosesTheMenuAndActs()
{
    QFETCH(const QString, call);
    PageDriver driver;
    setManufacturing(driver, true);
    const size_t mark = driver.rig().gate().mark();
    driver.choose(QTest::currentDataTag());
    driver.settle();
    QVERIFY(!driver.find("About"));
    QCOMPARE(driver.rig().callsSince(mark).count(call), 1);
    setManufacturing(driver, false);
}

void tst_ConfigurationPopup::aDialogOpens_data()
{
    QTest::addColumn<QString>("title");
    QTest::newRow("Save State As") << "Save State";
    QTest::newRow("Load State") << "Load State";
    QTest::newRow("Manage States") << "Manage States";
    QTest::newRow("Adjust Time") << "Adjust Time";
    QTest::newRow("Edit Filter Names") << "Edit Filter Names";
    QTest::newRow("About") << "About";
}

void tst_ConfigurationPopup::aDialogOpens()
{
    QFETCH(const QString, title);
    PageDriver driver;
    driver.choose(QTest::currentDataTag());
    driver.settle();
    QVERIFY(driver.findText(title));
    // The menu is closed.
    QVERIFY(!driver.find("Load Factory Defaults"));
}

void tst_ConfigurationPopup::theStatesAreReadForTheirDialog_data()
{
    QTest::addColumn<QString>("action");
    for (const char *action : {"Save State As", "Load State", "Manage States"})
        QTest::newRow(action) << action;
}

void tst_ConfigurationPopup::theStatesAreReadForTheirDialog()
{
    QFETCH(const QString, action);
    PageDriver driver;
    const size_t mark = driver.rig().gate().mark();
    driver.choose(action);
    driver.settle();
    QCOMPARE(driver.rig().callsSince(mark).count("zvtListStates"), 1);
    QCOMPARE(driver.rig().callsSince(mark).count("zvtGetStateName"), 1);
}

void tst_ConfigurationPopup::theActionsAreWithinReachOfTheKeyboard()
{
    PageDriver driver;
    driver.find("Configuration")->forceActiveFocus(Qt::TabFocusReason);
    driver.press(Qt::Key_Return);
    QTRY_VERIFY(driver.find("About"));
    driver.settle();
    for (int step = 0; step < 12 && !driver.find("Manage States")->hasActiveFocus(); ++step)
        driver.press(Qt::Key_Tab);
    QVERIFY(driver.find("Manage States")->property("visualFocus").toBool());
    driver.press(Qt::Key_Return);
    driver.settle();
    QVERIFY(driver.find("Done"));
}

void tst_ConfigurationPopup::everythingFitsASmallWindow()
{
    StandaloneFake standalone;
    PageDriver driver({.options = {.standaloneModel = &standalone}});
    setManufacturing(driver, true);
    saveAs(driver, QStringLiteral("A rather long name, ").repeated(10).left(199));
    driver.click("Configuration");
    QTRY_VERIFY(driver.find("About"));
    driver.settle();
    const QRectF window(0, 0, 640, 480);
    for (const QString &action : actions(driver).mid(1)) {
        const QQuickItem *button = driver.find(action);
        QVERIFY(window.contains(button->mapRectToScene(button->boundingRect())));
        const auto *text = button->property("contentItem").value<QQuickItem *>();
        QVERIFY(!text->property("truncated").toBool());
        QVERIFY(text->property("contentWidth").toDouble() <= text->width());
        QVERIFY(text->property("contentHeight").toDouble() <= text->height());
        QCOMPARE(text->property("wrapMode").toInt(), int(QTextOption::WordWrap));
    }
    setManufacturing(driver, false);
}

void tst_ConfigurationPopup::aLoadBlocksThePage_data()
{
    QTest::addColumn<bool>("standalone");
    QTest::newRow("in a host") << false;
    QTest::newRow("standalone") << true;
}

void tst_ConfigurationPopup::aLoadBlocksThePage()
{
    QFETCH(const bool, standalone);
    StandaloneFake model;
    PageDriver driver({.options = {.standaloneModel = standalone ? &model : nullptr}});
    const QObject *busy = driver.object(QStringLiteral("busyIndicator"));
    driver.rig().gate().hold("controller.LoadFactoryDefaults");
    driver.choose("Load Factory Defaults");
    QVERIFY(driver.rig().gate().waitHeld("controller.LoadFactoryDefaults"));
    QVERIFY(!driver.page()->isEnabled());
    QCOMPARE(busy->property("item").value<QObject *>() != nullptr, !standalone);
    // The page does not react.
    driver.click("Configuration");
    driver.awaitFrame();
    QVERIFY(!driver.find("About"));
    driver.rig().gate().release("controller.LoadFactoryDefaults");
    driver.settle();
    QVERIFY(driver.page()->isEnabled());
    QVERIFY(!busy->property("item").value<QObject *>());
}

void tst_ConfigurationPopup::aSaveDoesNotBlockThePage_data() { aLoadBlocksThePage_data(); }

void tst_ConfigurationPopup::aSaveDoesNotBlockThePage()
{
    QFETCH(const bool, standalone);
    StandaloneFake model;
    PageDriver driver({.options = {.standaloneModel = standalone ? &model : nullptr}});
    const QObject *busy = driver.object(QStringLiteral("busyIndicator"));
    driver.rig().gate().hold("zvtSaveStateAs");
    QMetaObject::invokeMethod(driver.tabModel("cameraState"), "saveStateAs", Q_ARG(QString, "Runway"));
    QVERIFY(driver.rig().gate().waitHeld("zvtSaveStateAs"));
    QVERIFY(driver.page()->isEnabled());
    QCOMPARE(busy->property("item").value<QObject *>() != nullptr, !standalone);
    driver.rig().gate().release("zvtSaveStateAs");
    driver.settle();
    QVERIFY(!busy->property("item").value<QObject *>());
}

void tst_ConfigurationPopup::aLoadReadsThePageAnew()
{
    PageDriver driver;
    // Polls run on their own timers and would add calls.
    for (QTimer *timer : driver.cameraModel()->findChildren<QTimer *>())
        timer->stop();
    driver.click("Configuration");
    QTRY_VERIFY(driver.find("Load Factory Defaults"));
    driver.awaitFrame();
    const size_t mark = driver.rig().gate().mark();
    driver.click("Load Factory Defaults");
    driver.settle();
    QStringList calls = driver.rig().callsSince(mark);
    QCOMPARE(calls.takeFirst(), "controller.LoadFactoryDefaults");
    QVERIFY(calls.contains("controller.GetWindow"));
    // The same number of reads as by the refresh key of the host.
    const size_t again = driver.rig().gate().mark();
    QMetaObject::invokeMethod(driver.cameraModel(), "refreshAllVisible");
    driver.settle();
    QStringList all = driver.rig().callsSince(again);
    calls.sort();
    all.sort();
    QCOMPARE(calls, all);
}

void tst_ConfigurationPopup::manufacturingModeShowsItsActions()
{
    PageDriver driver;
    setManufacturing(driver, false);
    driver.click("Configuration");
    QTRY_VERIFY(driver.find("About"));
    QVERIFY(!driver.find("Load Hard Defaults"));
    driver.press(Qt::Key_Escape);
    driver.press(Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);
    driver.click("Configuration");
    QTRY_VERIFY(driver.find("Load Hard Defaults"));
    setManufacturing(driver, false);
}

void tst_ConfigurationPopup::thePageHasTheKeysAgain_data()
{
    QTest::addColumn<QString>("action");
    QTest::newRow("after the menu") << "Configuration";
    QTest::newRow("after a dialog") << "About";
    QTest::newRow("after a dialog with a field") << "Save State As";
    QTest::newRow("after a load") << "Load Factory Defaults";
}

void tst_ConfigurationPopup::thePageHasTheKeysAgain()
{
    QFETCH(const QString, action);
    PageDriver driver({.options = {.refreshCameraControllerHotkey = Qt::Key_F5}});
    if (action == "Configuration")
        driver.click(action);
    else
        driver.choose(action);
    driver.settle();
    driver.press(Qt::Key_Escape);
    driver.settle();
    const size_t mark = driver.rig().gate().mark();
    driver.press(Qt::Key_F5);
    driver.settle();
    QVERIFY(driver.rig().callsSince(mark).contains("controller.GetWindow"));
}

void tst_ConfigurationPopup::aDialogKeepsTheKeys()
{
    PageDriver driver({.options = {.refreshCameraControllerHotkey = Qt::Key_F5}});
    driver.choose("About");
    driver.settle();
    const size_t mark = driver.rig().gate().mark();
    driver.press(Qt::Key_F5);
    driver.settle();
    QVERIFY(!driver.rig().callsSince(mark).contains("controller.GetWindow"));
}

ZVT_TEST(tst_ConfigurationPopup)
#include "tst_ConfigurationPopup.moc"
