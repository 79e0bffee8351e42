#include "tests/page/SetupPage.h"
#include "tests/support/Test.h"

#include <QWheelEvent>

/// The Setup page: its section, its reads, its layout, and the settings of the whole camera.
class tst_SetupTab : public Test
{
    Q_OBJECT

private slots:
    void standsBehindStatus();
    void nothingIsReadBeforeItIsShown();
    void showingThePageReadsAndTakesTheKeyboard();
    void connectionReadsWhileThePageIsShown();
    void disconnectedPageReadsNothing();
    void selectionReads();
    void collapsedSectionIsNotRead();
    void headerReadsBeforeItOpens();
    void headerRefreshes();
    void sectionIsOffUntilItHasBeenRead();
    void modelKnowsWhetherThePageIsSeen();
    void rowsStandInOrder();
    void gainIsChosen();
    void gainNeedsItsEquipment();
    void noiseReductionIsSwitched();
    void noiseReductionOfAnotherClientIsLearnt();
    void syncSourceOfALowCostCamera();
    void highSensitivityModeIsSwitched();
    void tabKeyBringsItsControlIntoView();
    void wheelScrollsOverTheScrollBarToo();
    void twoColumnsStandInAWideWindow();
    void nothingIsClipped_data();
    void nothingIsClipped();
    void pageOutlivesItsModel_data();
    void pageOutlivesItsModel();

private:
    static bool reads(SetupPage &page, const std::function<void()> &action);
    static QQuickItem *setupTab(const PageDriver &page);
};

/// Whether `action` makes both models of the section read.
bool tst_SetupTab::reads(SetupPage &page, const std::function<void()> &action)
{
    const size_t mark = page.rig().gate().mark();
    action();
    page.settle();
    const QStringList calls = page.rig().callsSince(mark);
    const bool tab = calls.contains("zvtGetHSMAvailable");
    if (tab != calls.contains("controller.GetWindowSizes"))
        qFatal("only one of the two models reads");
    return tab;
}

QQuickItem *tst_SetupTab::setupTab(const PageDriver &page)
{
    for (QQuickItem *item : page.page()->findChildren<QQuickItem *>())
        if (item->property("generalSetupExpanded").isValid())
            return item;
    return nullptr;
}

void tst_SetupTab::standsBehindStatus()
{
    SetupPage page;
    QVERIFY(page.middle("Status").x() < page.middle("Setup").x());
    QVERIFY(page.find("General Setup"));
    QVERIFY(page.find("Image Size"));
}

void tst_SetupTab::nothingIsReadBeforeItIsShown()
{
    PageDriver driver;
    QVERIFY(!driver.rig().callsSince(0).contains("zvtGetHSMAvailable"));
    QVERIFY(!driver.tabModel("setupTabModel")->property("visible").toBool());
}

void tst_SetupTab::showingThePageReadsAndTakesTheKeyboard()
{
    SetupPage page;
    page.showTab(0);
    QVERIFY(reads(page, [&page] { page.showTab(1); }));
    QVERIFY(setupTab(page)->hasActiveFocus());
    QVERIFY(reads(page, [&page] {
        page.page()->setVisible(false);
        page.page()->setVisible(true);
    }));
}

void tst_SetupTab::connectionReadsWhileThePageIsShown()
{
    SetupPage page;
    page.rig().camera().disconnect();
    page.settle();
    QVERIFY(page.findText("No camera connected"));
    QVERIFY(reads(page, [&page] { page.rig().camera().connect(); }));
    QVERIFY(!page.findText("No camera connected"));
    page.showTab(0);
    page.rig().camera().disconnect();
    page.settle();
    const size_t mark = page.rig().gate().mark();
    page.rig().camera().connect();
    page.settle();
    QVERIFY(!page.rig().callsSince(mark).contains("zvtGetHSMAvailable"));
}

void tst_SetupTab::disconnectedPageReadsNothing()
{
    SetupPage page;
    page.showTab(0);
    page.rig().camera().disconnect();
    page.settle();
    QVERIFY(!reads(page, [&page] { page.showTab(1); }));
}

void tst_SetupTab::selectionReads()
{
    SetupPage page;
    setupTab(page)->setProperty("selected", false);
    QVERIFY(reads(page, [&page] { setupTab(page)->setProperty("selected", true); }));
    setupTab(page)->setProperty("selected", false);
    page.rig().camera().disconnect();
    page.settle();
    QVERIFY(!reads(page, [&page] { setupTab(page)->setProperty("selected", true); }));
}

void tst_SetupTab::collapsedSectionIsNotRead()
{
    SetupPage page;
    page.type("Width", "72");
    page.click("Apply Settings");
    QVERIFY(page.find("Window Warning"));
    page.click("General Setup");
    QVERIFY(!page.find("Image Size"));
    page.showTab(0);
    QVERIFY(!reads(page, [&page] { page.showTab(1); }));
    page.click("General Setup");
    QVERIFY(!page.find("Window Warning"));
}

void tst_SetupTab::headerReadsBeforeItOpens()
{
    SetupPage page;
    QVERIFY(!reads(page, [&page] { page.click("General Setup"); }));
    page.rig().gate().hold("zvtGetHSMAvailable");
    page.click("General Setup");
    QVERIFY(page.rig().gate().waitHeld("zvtGetHSMAvailable"));
    QVERIFY(page.find("Image Size"));
    QVERIFY(page.item("General Setup").property("sectionLoading").toBool());
    page.rig().gate().release("*");
    page.settle();
    QVERIFY(!page.item("General Setup").property("sectionLoading").toBool());
}

void tst_SetupTab::headerRefreshes()
{
    SetupPage page;
    QVERIFY(reads(page, [&page] { page.click("Refresh General Setup"); }));
    QVERIFY(page.find("Image Size"));
}

void tst_SetupTab::sectionIsOffUntilItHasBeenRead()
{
    SetupPage page;
    page.rig().gate().hold("zvtGetHSMAvailable");
    page.click("Refresh General Setup");
    QVERIFY(page.rig().gate().waitHeld("zvtGetHSMAvailable"));
    QVERIFY(!page.enabled("Image Size"));
    QVERIFY(!page.enabled("Integration Time 0"));
    QVERIFY(page.enabled("General Setup"));
    page.rig().gate().release("*");
    page.settle();
    QVERIFY(page.enabled("Image Size"));
    QVERIFY(page.enabled("Integration Time 0"));
}

void tst_SetupTab::modelKnowsWhetherThePageIsSeen()
{
    SetupPage page;
    const auto seen = [&page] { return page.tab()->property("visible").toBool(); };
    QVERIFY(seen());
    page.showTab(0);
    QVERIFY(!seen());
    page.showTab(1);
    QVERIFY(seen());
    page.window().hide();
    QVERIFY(!seen());
    page.window().show();
    QVERIFY(seen());
}

void tst_SetupTab::rowsStandInOrder()
{
    SetupPage page("everything", [](emulator::Camera &camera) {
        camera.changeMakeUp("hasDiscontinuousOpticalZoom", true);
        camera.gate().script("controller.GetIsLowCost", true);
    });
    page.general()->setProperty("sequencingMode", 2);
    page.settle();
    int above = 0;
    for (const QString name : {"General Setup",
                               "Sequencing Mode",
                               "Preset 0",
                               "Preset 3",
                               "GigE Preset",
                               "Video Preset",
                               "Lens Cover",
                               "Lens Control",
                               "Lens States",
                               "Field of View",
                               "Enable Athermalization",
                               "Optical Zoom",
                               "Zoom Position",
                               "Zoom Speed",
                               "Focus",
                               "Focus Position",
                               "Focus Speed",
                               "Auto Focus",
                               "Size (Pixels)",
                               "Position",
                               "Show on Video Output",
                               "Distance",
                               "Range",
                               "FPA Gain",
                               "Reduce Noise",
                               "Sync Source",
                               "Enable High Sensitivity Mode",
                               "FPA Window Settings",
                               "Image Size",
                               "Width",
                               "Apply Settings"}) {
        const int y = page.middle(name).y();
        QVERIFY2(y > above, qPrintable(QStringLiteral("%1: %2 after %3").arg(name).arg(y).arg(above)));
        above = y;
    }
}

void tst_SetupTab::gainIsChosen()
{
    SetupPage page;
    QCOMPARE(page.item("FPA Gain").property("model").toStringList(), (QStringList{"Low", "Medium", "High"}));
    QCOMPARE(page.commandsOf([&page] { page.choose("FPA Gain", "High"); }), QStringList{"zvtSetGainLevel 2"});
    QCOMPARE(page.shown("FPA Gain"), "High");
    // The box shows its row again after each read.
    page.click("Refresh General Setup");
    page.settle();
    QCOMPARE(page.shown("FPA Gain"), "High");
}

void tst_SetupTab::gainNeedsItsEquipment()
{
    const SetupPage page("low-cost");
    QVERIFY(!page.find("FPA Gain"));
}

void tst_SetupTab::noiseReductionIsSwitched()
{
    SetupPage page;
    QCOMPARE(page.item("Reduce Noise").property("toolTip").toString(),
             "Reduces noise by preventing integration from occuring during readout (aka ITR).");
    QCOMPARE(page.commandsOf([&page] { page.click("Reduce Noise"); }), QStringList{"controller.SetReduceNoise true"});
    QVERIFY(page.item("Reduce Noise").property("checked").toBool());
}

void tst_SetupTab::noiseReductionOfAnotherClientIsLearnt()
{
    SetupPage page;
    QVERIFY(!page.item("Reduce Noise").property("checked").toBool());
    page.rig().gate().script("controller.GetReduceNoise", true);
    page.click("Refresh General Setup");
    page.settle();
    QVERIFY(page.item("Reduce Noise").property("checked").toBool());
}

void tst_SetupTab::syncSourceOfALowCostCamera()
{
    const SetupPage other;
    QVERIFY(!other.find("Sync Source"));
    SetupPage page("low-cost");
    QCOMPARE(page.item("Sync Source").property("model").toStringList(), (QStringList{"Internal", "External", "Video"}));
    QCOMPARE(page.commandsOf([&page] { page.choose("Sync Source", "Video"); }), QStringList{"zvtSetFrameSyncSource 2"});
    QCOMPARE(page.shown("Sync Source"), "Video");
}

void tst_SetupTab::highSensitivityModeIsSwitched()
{
    SetupPage page;
    QCOMPARE(page.commandsOf([&page] { page.click("Enable High Sensitivity Mode"); }),
             QStringList{"zvtSetHSMEnabled true"});
    QVERIFY(page.item("Enable High Sensitivity Mode").property("checked").toBool());
    const SetupPage without("everything",
                            [](emulator::Camera &camera) { camera.gate().script("zvtGetHSMAvailable", 0); });
    QVERIFY(!without.find("Enable High Sensitivity Mode"));
}

void tst_SetupTab::tabKeyBringsItsControlIntoView()
{
    PageDriver driver;
    driver.click("Setup");
    driver.settle();
    driver.settle();
    const QQuickItem *tab = setupTab(driver);
    const auto *view = tab->property("contentItem").value<QQuickItem *>();
    const auto inView = [&](const QQuickItem &item) {
        const QRectF place = item.mapRectToItem(tab, item.boundingRect());
        return place.top() >= 0 && place.bottom() <= tab->height();
    };
    QStringList walked;
    for (int step = 0; step < 80; ++step) {
        driver.press(Qt::Key_Tab);
        driver.settle();
        const QQuickItem *item = driver.window().activeFocusItem();
        if (!item || !view->isAncestorOf(item))
            continue;
        QVERIFY2(inView(*item), item->metaObject()->className());
        walked << item->metaObject()->className();
    }
    QVERIFY(view->property("contentY").toDouble() > 0 || walked.size() > 60);
}

void tst_SetupTab::wheelScrollsOverTheScrollBarToo()
{
    PageDriver driver;
    driver.click("Setup");
    driver.settle();
    driver.settle();
    const QQuickItem *tab = setupTab(driver);
    const QPointF bar = tab->mapToScene({tab->width() - 6, tab->height() - 20});
    QWheelEvent wheel(bar, bar, {}, {0, -120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&driver.window(), &wheel);
    QTRY_VERIFY(tab->property("contentY").toDouble() > 0);
}

void tst_SetupTab::twoColumnsStandInAWideWindow()
{
    PageDriver driver({.size = {1239, 1700}});
    driver.click("Setup");
    driver.settle();
    driver.settle();
    const auto left = [&driver](const char *name) { return driver.find(name)->mapToScene({}).x(); };
    QCOMPARE(driver.find("General Setup")->width(), 960.0);
    QCOMPARE(left("FPA Gain"), left("Sequencing Mode"));
    driver.page()->setWidth(1240);
    driver.settle();
    QVERIFY(left("FPA Gain") > 620);
}

void tst_SetupTab::nothingIsClipped_data()
{
    QTest::addColumn<QString>("profile");
    QTest::addColumn<int>("mode");
    for (const char *profile : {"everything", "speed-moves", "discrete-fov", "low-cost", "bare", "edge-values"})
        QTest::newRow(profile) << profile << 0;
    QTest::newRow("superframing") << "everything" << 1;
    QTest::newRow("sequencing") << "everything" << 2;
}

void tst_SetupTab::nothingIsClipped()
{
    QFETCH(const QString, profile);
    QFETCH(const int, mode);
    PageDriver driver({.profile = profile, .size = {640, 1700}});
    driver.click("Setup");
    driver.settle();
    driver.tabModel("setupGeneralModel")->setProperty("sequencingMode", mode);
    driver.settle();
    const QRectF place(0, 0, 640, 1700);
    const QQuickItem *header = driver.find("General Setup");
    QCOMPARE(header->width(), 640.0 - 2 * 12);
    const QQuickItem *last = driver.find(mode == 1 ? "Maximum Superframe Rate" : "Maximum Frame Rate 0");
    QVERIFY(last->mapRectToScene(last->boundingRect()).right()
            <= header->mapRectToScene(header->boundingRect()).right());
    const QList<QQuickItem *> texts = PageDriver::shownTexts(*setupTab(driver));
    for (const QQuickItem *text : texts)
        QVERIFY2(PageDriver::fits(*text, place), qPrintable(text->property("text").toString()));
    QVERIFY(texts.size() > 8);
}

void tst_SetupTab::pageOutlivesItsModel_data()
{
    QTest::addColumn<QString>("profile");
    QTest::addColumn<int>("mode");
    QTest::newRow("two fields of view") << "discrete-fov" << 0;
    QTest::newRow("superframing") << "everything" << 1;
    QTest::newRow("sequencing") << "everything" << 2;
}

void tst_SetupTab::pageOutlivesItsModel()
{
    QFETCH(const QString, profile);
    QFETCH(const int, mode);
    SetupPage page(profile);
    page.general()->setProperty("sequencingMode", mode);
    page.settle();
    page.click("Focus");
    page.deleteModel();
    page.settle();
    QVERIFY(page.findText("No camera connected"));
    page.page()->setVisible(false);
    page.page()->setVisible(true);
    page.settle();
}

ZVT_TEST(tst_SetupTab)
#include "tst_SetupTab.moc"
