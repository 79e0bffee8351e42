#include "tests/page/StandaloneFake.h"
#include "tests/support/PageDriver.h"
#include "tests/support/Test.h"

#include <QColor>
#include <QKeyEvent>
#include <QRegularExpression>
#include <QSignalSpy>

using hlx::cam::ui::PageOptions;

class tst_MainPage : public Test
{
    Q_OBJECT

private slots:
    void thePaletteHasItsColours_data();
    void thePaletteHasItsColours();
    void aHostSeesNoConnectionButtons();
    void theConnectionButtonsFollowTheConnection();
    void theFinderConnectsTheChosenCamera();
    void disconnectAsksTheStandaloneModel();
    void theControllerIsChosenInThePopup();
    void theControllerCannotBeChangedWhileConnected();
    void theTabsShareTheBar_data();
    void theTabsShareTheBar();
    void theBannerCoversTheToolBar();
    void theBusyIndicatorFollowsTheConnection();
    void aHostShowsNoBusyIndicatorAtRest();
    void theRefreshHotkeyReadsEverything();
    void theRefreshMarkFades();
    void otherKeysPass_data();
    void otherKeysPass();
    void manufacturingModeToggles();
    void manufacturingModeTogglesWhileThePageIsBlocked();
    void aHiddenPageTakesNoHotkey();
    void theFakeOverlayBlocksThePage();
    void theHelpersTellWhatIsThere();
    void theHelpersSurviveTheModel();
    void aFailedConnectionIsTold();
    void aGoodConnectionIsNotTold();
    void aDisconnectLeavesThePage();
    void everyPageIsBuiltAtOnce();
    void tabWalksThroughTheToolBar();

private:
    static constexpr int f5 = Qt::Key_F5;

    static bool accepts(PageDriver &driver, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    static QVariant ask(PageDriver &driver, const char *function);
    static QObject *busyIndicator(PageDriver &driver);
    static QQuickItem *tabBar(PageDriver &driver);
};

bool tst_MainPage::accepts(PageDriver &driver, int key, Qt::KeyboardModifiers modifiers)
{
    QKeyEvent event(QEvent::KeyPress, key, modifiers);
    QCoreApplication::sendEvent(&driver.window(), &event);
    return event.isAccepted();
}

QVariant tst_MainPage::ask(PageDriver &driver, const char *function)
{
    bool answer = false;
    if (!QMetaObject::invokeMethod(driver.page(), function, Q_RETURN_ARG(bool, answer)))
        return {};
    return answer;
}

QObject *tst_MainPage::busyIndicator(PageDriver &driver) { return driver.object(QStringLiteral("busyIndicator")); }

QQuickItem *tst_MainPage::tabBar(PageDriver &driver)
{
    QQuickItem *item = driver.find("Status");
    while (item != nullptr && !item->inherits("QQuickTabBar"))
        item = item->parentItem();
    return item;
}

void tst_MainPage::thePaletteHasItsColours_data()
{
    QTest::addColumn<QString>("value");
    QTest::newRow("kestrinBlue") << "#002f86";
    QTest::newRow("kestrinSecondaryCoolGray") << "#555859";
    QTest::newRow("kestrinSecondaryGold") << "#ffa300";
    QTest::newRow("kestrinAccentBlue") << "#18aae2";
    QTest::newRow("kestrinAccentOrange") << "#ff6a00";
    QTest::newRow("kestrinAccentGreen") << "#8dc63f";
    QTest::newRow("kestrinAccentCoolGray") << "#d2cfcd";
    QTest::newRow("tidepoolAccentGreen") << "#00ff00";
    QTest::newRow("tidepoolAccentRed") << "#ff0000";
    QTest::newRow("tidepoolAccentDestructiveButtonBackground") << "#ff6666";
    QTest::newRow("cameraBarBackgroundColor") << "#272727";
    QTest::newRow("cameraBarForegroundColor") << "#cccccc";
    QTest::newRow("rectangleOutlineColor") << "#333333";
}

void tst_MainPage::thePaletteHasItsColours()
{
    QFETCH(const QString, value);
    PageDriver driver;
    const QVariant colour = driver.rootProperty(QTest::currentDataTag());
    QCOMPARE(colour.metaType(), QMetaType::fromType<QColor>());
    QCOMPARE(colour.value<QColor>().name(), value);
}

void tst_MainPage::aHostSeesNoConnectionButtons()
{
    PageDriver driver;
    QVERIFY(!driver.find("Connect"));
    QVERIFY(!driver.find("Disconnect"));
    QVERIFY(driver.find("Configuration"));
}

void tst_MainPage::theConnectionButtonsFollowTheConnection()
{
    StandaloneFake standalone;
    PageDriver driver({.connected = false, .options = {.standaloneModel = &standalone}});
    QVERIFY(driver.find("Connect")->isEnabled());
    QVERIFY(!driver.find("Disconnect")->isEnabled());
    standalone.setProperty("connected", true);
    QVERIFY(!driver.find("Connect")->isEnabled());
    QVERIFY(driver.find("Disconnect")->isEnabled());
}

void tst_MainPage::theFinderConnectsTheChosenCamera()
{
    StandaloneFake standalone;
    PageDriver driver({.connected = false, .options = {.standaloneModel = &standalone}});
    driver.click("Connect");
    QTRY_VERIFY(driver.find("camera-7"));
    QTest::keyClick(&driver.window(), Qt::Key_Return);
    QTRY_COMPARE(standalone.asked, QStringList{"connect camera-7"});
}

void tst_MainPage::disconnectAsksTheStandaloneModel()
{
    StandaloneFake standalone;
    standalone.connected = true;
    PageDriver driver({.options = {.standaloneModel = &standalone}});
    driver.click("Disconnect");
    QCOMPARE(standalone.asked, QStringList{"disconnect"});
}

void tst_MainPage::theControllerIsChosenInThePopup()
{
    StandaloneFake standalone;
    PageDriver driver({.connected = false, .options = {.standaloneModel = &standalone}});
    driver.click("Configuration");
    QTRY_VERIFY(driver.find("Controller"));
    QQuickItem *box = driver.find("Controller");
    QCOMPARE(box->property("displayText").toString(), "First");
    box->forceActiveFocus();
    driver.press(Qt::Key_Down);
    QTRY_COMPARE(standalone.controllerIndex, 1);
    // The box follows the model, not only its own last choice.
    standalone.setProperty("controllerIndex", 0);
    QCOMPARE(box->property("displayText").toString(), "First");
}

void tst_MainPage::theControllerCannotBeChangedWhileConnected()
{
    StandaloneFake standalone;
    standalone.connected = true;
    PageDriver driver({.options = {.standaloneModel = &standalone}});
    driver.click("Configuration");
    QTRY_VERIFY(driver.find("Controller"));
    QVERIFY(!driver.find("Controller")->isEnabled());
}

void tst_MainPage::theTabsShareTheBar_data()
{
    QTest::addColumn<bool>("standalone");
    QTest::newRow("in a host") << false;
    QTest::newRow("standalone") << true;
}

void tst_MainPage::theTabsShareTheBar()
{
    QFETCH(const bool, standalone);
    StandaloneFake model;
    PageDriver driver({.options = {.standaloneModel = standalone ? &model : nullptr}});
    QQuickItem *bar = tabBar(driver);
    QVERIFY(bar);
    QCOMPARE(bar->mapToScene(QPointF(bar->width(), 0)).x(), driver.page()->width());

    const int count = bar->property("count").toInt();
    QList<const QQuickItem *> available;
    for (int index = 0; index < count; ++index) {
        QQuickItem *tab = nullptr;
        QVERIFY(QMetaObject::invokeMethod(bar, "itemAt", Q_RETURN_ARG(QQuickItem *, tab), Q_ARG(int, index)));
        if (tab->isVisible())
            available += tab;
        else
            QCOMPARE(tab->width(), 0.0);
    }
    for (const QQuickItem *tab : available) {
        QCOMPARE(tab->width(), bar->width() / static_cast<double>(available.size()));
        QCOMPARE(tab->height(), 40.0);
    }
}

void tst_MainPage::theBannerCoversTheToolBar()
{
    PageDriver driver;
    QVERIFY(!driver.findText("Playing back from SSD/Memory."));
    QObject *banner = driver.object(QStringLiteral("ssdPlaybackBanner"));
    banner->setProperty("visible", true);
    QVERIFY(driver.findText("Playing back from SSD/Memory."));
    QVERIFY(driver.find("Back to live"));
    QCOMPARE(banner->property("color").value<QColor>(), QColor("#D35400"));
    QCOMPARE(banner->property("width").toDouble(), driver.page()->width());
    QCOMPARE(banner->property("height").toDouble(), 40.0);
    driver.click("Configuration");
    QVERIFY(!driver.find("About"));
}

void tst_MainPage::theBusyIndicatorFollowsTheConnection()
{
    StandaloneFake standalone;
    PageDriver driver({.connected = false, .options = {.standaloneModel = &standalone}});
    QObject *indicator = busyIndicator(driver);
    for (const char *property : {"connecting", "disconnecting"}) {
        standalone.connected = true;
        standalone.setProperty(property, true);
        QVERIFY(indicator->property("item").value<QObject *>());
        standalone.setProperty(property, false);
        QVERIFY(!indicator->property("item").value<QObject *>());
    }
}

void tst_MainPage::aHostShowsNoBusyIndicatorAtRest()
{
    PageDriver driver;
    QVERIFY(!busyIndicator(driver)->property("item").value<QObject *>());
}

void tst_MainPage::theRefreshHotkeyReadsEverything()
{
    PageDriver driver({.options = {.refreshCameraControllerHotkey = Qt::ControlModifier | f5}});
    const size_t mark = driver.rig().gate().mark();
    QVERIFY(accepts(driver, f5, Qt::ControlModifier));
    driver.settle();
    QVERIFY(driver.rig().callsSince(mark).contains("controller.GetWindow"));
}

void tst_MainPage::theRefreshMarkFades()
{
    PageDriver driver({.options = {.refreshCameraControllerHotkey = f5}});
    QObject *animation = driver.object(QStringLiteral("refreshAnimation"));
    QObject *mark = driver.object(QStringLiteral("refreshMark"));
    QObject *pages = driver.object(QStringLiteral("pages"));
    QVERIFY(!mark->property("visible").toBool());

    QVERIFY(accepts(driver, f5));
    QVERIFY(animation->property("running").toBool());
    QVERIFY(mark->property("visible").toBool());
    QVERIFY(!pages->property("enabled").toBool());
    QCOMPARE(mark->property("width").toDouble(), 100.0);
    QCOMPARE(mark->property("height").toDouble(), 100.0);
    QCOMPARE(mark->property("color").value<QColor>(), QColor("#18aae2"));

    QObject *fade = animation->findChild<QObject *>(QStringLiteral("refreshFade"));
    QVERIFY(fade);
    QCOMPARE(fade->property("duration").toInt(), 700);
    QCOMPARE(fade->property("from").toDouble(), 1.0);
    QCOMPARE(fade->property("to").toDouble(), 0.0);

    QVERIFY(QMetaObject::invokeMethod(animation, "complete"));
    QVERIFY(!mark->property("visible").toBool());
    QCOMPARE(mark->property("opacity").toDouble(), 0.0);
    QVERIFY(pages->property("enabled").toBool());
}

void tst_MainPage::otherKeysPass_data()
{
    QTest::addColumn<bool>("standalone");
    QTest::addColumn<bool>("hotkey");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::newRow("another key") << false << true << int(Qt::Key_F6) << int(Qt::NoModifier);
    QTest::newRow("the key with a modifier") << false << true << f5 << int(Qt::ShiftModifier);
    QTest::newRow("a bare modifier") << false << true << int(Qt::Key_Control) << int(Qt::NoModifier);
    QTest::newRow("without a hot key") << false << false << f5 << int(Qt::NoModifier);
    QTest::newRow("in the standalone controller") << true << true << f5 << int(Qt::NoModifier);
}

void tst_MainPage::otherKeysPass()
{
    QFETCH(const bool, standalone);
    QFETCH(const bool, hotkey);
    QFETCH(const int, key);
    QFETCH(const int, modifiers);
    StandaloneFake model;
    PageOptions options;
    if (standalone)
        options.standaloneModel = &model;
    if (hotkey)
        options.refreshCameraControllerHotkey = f5;
    PageDriver driver({.options = options});
    const size_t mark = driver.rig().gate().mark();
    QVERIFY(!accepts(driver, key, Qt::KeyboardModifiers(modifiers)));
    driver.settle();
    QVERIFY(!driver.rig().callsSince(mark).contains("controller.GetWindow"));
    QVERIFY(!driver.object(QStringLiteral("refreshAnimation"))->property("running").toBool());
}

void tst_MainPage::manufacturingModeToggles()
{
    PageDriver driver;
    const bool before = driver.cameraModel()->property("manufacturingMode").toBool();
    driver.press(Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(driver.cameraModel()->property("manufacturingMode").toBool(), !before);
    driver.press(Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(driver.cameraModel()->property("manufacturingMode").toBool(), before);
}

void tst_MainPage::manufacturingModeTogglesWhileThePageIsBlocked()
{
    PageDriver driver;
    const bool before = driver.cameraModel()->property("manufacturingMode").toBool();
    QMetaObject::invokeMethod(driver.page(), "setFakeOverlay", Q_ARG(bool, true));
    driver.press(Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(driver.cameraModel()->property("manufacturingMode").toBool(), !before);
}

void tst_MainPage::aHiddenPageTakesNoHotkey()
{
    PageDriver driver;
    const bool before = driver.cameraModel()->property("manufacturingMode").toBool();
    driver.page()->setVisible(false);
    driver.press(Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(driver.cameraModel()->property("manufacturingMode").toBool(), before);
}

void tst_MainPage::theFakeOverlayBlocksThePage()
{
    PageDriver driver;
    QObject *overlay = driver.object(QStringLiteral("fakeOverlay"));
    QVERIFY(!overlay->property("visible").toBool());
    QMetaObject::invokeMethod(driver.page(), "setFakeOverlay", Q_ARG(bool, true));
    QVERIFY(overlay->property("visible").toBool());
    QCOMPARE(overlay->property("color").value<QColor>(), QColor("#dd333333"));
    QCOMPARE(overlay->property("width").toDouble(), driver.page()->width());
    QCOMPARE(overlay->property("height").toDouble(), driver.page()->height());
    QVERIFY(!driver.page()->isEnabled());
    driver.click("Configuration");
    QVERIFY(!driver.find("About"));
    QMetaObject::invokeMethod(driver.page(), "setFakeOverlay", Q_ARG(bool, false));
    QVERIFY(!overlay->property("visible").toBool());
    QVERIFY(driver.page()->isEnabled());
}

void tst_MainPage::theHelpersTellWhatIsThere()
{
    PageDriver driver;
    QCOMPARE(ask(driver, "cameraModelExists"), QVariant(true));
    QCOMPARE(ask(driver, "safeGetConnected"), QVariant(true));
    QCOMPARE(ask(driver, "cameraStateExists"), QVariant(true));
    QCOMPARE(ask(driver, "capabilitiesModelExists"), QVariant(true));
    driver.rig().camera().disconnect();
    driver.settle();
    QCOMPARE(ask(driver, "safeGetConnected"), QVariant(false));
}

void tst_MainPage::theHelpersSurviveTheModel()
{
    PageDriver driver;
    driver.deleteModel();
    driver.settle();
    QCOMPARE(ask(driver, "safeGetConnected"), QVariant(false));
    QCOMPARE(ask(driver, "cameraStateExists"), QVariant(false));
    QCOMPARE(ask(driver, "capabilitiesModelExists"), QVariant(false));
    QTest::ignoreMessage(QtCriticalMsg, QRegularExpression("camera model must not be null"));
    QCOMPARE(ask(driver, "cameraModelExists"), QVariant(false));
    driver.press(Qt::Key_F5);
}

void tst_MainPage::aFailedConnectionIsTold()
{
    StandaloneFake standalone;
    PageDriver driver({.connected = false, .options = {.standaloneModel = &standalone}});
    standalone.setProperty("connecting", true);
    QVERIFY(!driver.findText("Failed to connect to the camera."));
    standalone.setProperty("connecting", false);
    QTRY_VERIFY(driver.findText("Failed to connect to the camera."));
    QVERIFY(driver.findText("Error"));
    QTRY_VERIFY(driver.find("OK")->hasActiveFocus());
    driver.press(Qt::Key_Return);
    QTRY_VERIFY(!driver.findText("Failed to connect to the camera."));
}

void tst_MainPage::aGoodConnectionIsNotTold()
{
    StandaloneFake standalone;
    PageDriver driver({.connected = false, .options = {.standaloneModel = &standalone}});
    standalone.setProperty("connecting", true);
    standalone.setProperty("connected", true);
    standalone.setProperty("connecting", false);
    driver.settle();
    QVERIFY(!driver.findText("Failed to connect to the camera."));
}

void tst_MainPage::aDisconnectLeavesThePage()
{
    PageDriver driver;
    driver.rig().camera().disconnect();
    driver.settle();
    QVERIFY(driver.findText("No camera connected"));
    QVERIFY(driver.page()->isEnabled());
    QCOMPARE(driver.text("Frame Size"), "640x512");
}

void tst_MainPage::everyPageIsBuiltAtOnce()
{
    PageDriver driver;
    const QObject *pages = driver.object(QStringLiteral("pages"));
    QCOMPARE(pages->property("count").toInt(), tabBar(driver)->property("count").toInt());
    QCOMPARE(pages->property("currentIndex").toInt(), 0);
}

void tst_MainPage::tabWalksThroughTheToolBar()
{
    StandaloneFake standalone;
    PageDriver driver({.connected = false, .options = {.standaloneModel = &standalone}});
    QStringList walked;
    for (int step = 0; step < 3; ++step) {
        driver.press(Qt::Key_Tab);
        for (const QString name : {"Connect", "Configuration", "Status"})
            if (driver.find(name)->hasActiveFocus())
                walked += name;
    }
    QCOMPARE(walked, (QStringList{"Connect", "Configuration", "Status"}));
}

ZVT_TEST(tst_MainPage)
#include "moc_StandaloneFake.cpp"
#include "tst_MainPage.moc"
