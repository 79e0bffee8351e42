#include "tests/page/VideoPage.h"
#include "tests/support/Test.h"

#include <algorithm>

namespace
{

const QStringList alwaysShown{"Format",          "Update Rate", "Filter Rate", "Dampening",
                              "Temporal Filter", "AGC Mode",    "Palette"};

} // namespace

/// The Video page: its tab, its sections, when they are read, and its layout.
class tst_VideoTab : public Test
{
    Q_OBJECT

private slots:
    void theTabFollowsCorrection();
    void theSectionsAreInOrder();
    void onlyTheGeneralSectionIsOpenAtFirst();
    void theHeaderReadsBeforeItOpens_data();
    void theHeaderReadsBeforeItOpens();
    void theShownPageIsRead();
    void theOpenSectionsAreRead();
    void theRootReadsThePage();

    void theBodyIsOffUntilItHasBeenRead();
    void theBodyIsOffWhileItIsRead();
    void theControlInUseStaysOnWhileItIsRead();
    void theBodyIsOffWhileDisconnected();
    void unreadValuesAreEmpty();

    void everyTextFits_data();
    void everyTextFits();
    void tabWalksInReadingOrder();
    void thePageOutlivesItsModel();
};

void tst_VideoTab::theTabFollowsCorrection()
{
    PageDriver driver({.connected = false});
    QList<double> places;
    for (const char *tab : {"Status", "Setup", "Correction", "Video"})
        places << driver.item(tab).mapToScene({}).x();
    QVERIFY(std::ranges::is_sorted(places));
    driver.click("Video");
    driver.settle();
    QVERIFY(driver.findText("No camera connected"));
    QVERIFY(driver.find("General Video Settings"));
}

void tst_VideoTab::theSectionsAreInOrder()
{
    VideoPage page;
    double last = 0;
    for (const char *name : {"General Video Settings", "AGC ROI Settings", "Overlay Settings"}) {
        QVERIFY2(page.find(name), name);
        const double y = page.item(name).mapToScene({}).y();
        QVERIFY2(y > last, name);
        last = y;
    }
}

void tst_VideoTab::onlyTheGeneralSectionIsOpenAtFirst()
{
    VideoPage page;
    for (const QString &name : alwaysShown)
        QVERIFY2(page.find(name), qPrintable(name));
    for (const char *section : {"agcRoiSettings", "overlaySettings"})
        QVERIFY(!page.tabModel(section)->property("visible").toBool());
    const QStringList calls = page.rig().callsSince(0);
    QCOMPARE(calls.count("zvtGetVideoAGCMethod"), 1);
    QVERIFY(!calls.contains("zvtGetVideoAGCROI") && !calls.contains("zvtGetVideoOverlayPalette"));
}

void tst_VideoTab::theHeaderReadsBeforeItOpens_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::newRow("by mouse") << false;
    QTest::newRow("by keyboard") << true;
}

void tst_VideoTab::theHeaderReadsBeforeItOpens()
{
    QFETCH(const bool, byKeyboard);
    VideoPage page;
    const auto toggle = [&] { page.use("General Video Settings", byKeyboard); };
    QCOMPARE(page.reads(toggle), 0);
    QVERIFY(!page.find("Format"));
    page.gate().hold("zvtGetVideoAGCMethod");
    toggle();
    QVERIFY(page.gate().waitHeld("zvtGetVideoAGCMethod"));
    QVERIFY(page.item("General Video Settings").property("sectionLoading").toBool());
    page.gate().release("*");
    page.settle();
    QVERIFY(page.find("Format"));
    QCOMPARE(page.reads([&] { page.refresh(); }), 1);
}

void tst_VideoTab::theShownPageIsRead()
{
    VideoPage page;
    QCOMPARE(page.reads([&] { page.showTab(0); }), 0);
    QCOMPARE(page.reads([&] { page.showTab(3); }), 1);
    page.rig().camera().disconnect();
    page.settle();
    QCOMPARE(page.reads([&] { page.rig().camera().connect(); }), 1);
    page.click("General Video Settings");
    page.showTab(0);
    QCOMPARE(page.reads([&] { page.showTab(3); }), 0);
}

void tst_VideoTab::theOpenSectionsAreRead()
{
    VideoPage page;
    page.showTab(0);
    for (const char *section : {"agcRoiSettings", "overlaySettings"})
        page.tabModel(section)->setProperty("visible", true);
    const size_t mark = page.gate().mark();
    page.showTab(3);
    const QStringList calls = page.rig().callsSince(mark);
    for (const char *call : {"zvtGetVideoAGCMethod", "zvtGetVideoAGCROI", "zvtGetVideoOverlayPalette"})
        QCOMPARE(calls.count(call), 1);
}

void tst_VideoTab::theRootReadsThePage()
{
    VideoPage page;
    // The section need not be open.
    page.click("General Video Settings");
    QCOMPARE(page.reads([&] { QMetaObject::invokeMethod(page.cameraModel(), "refreshAllVisible"); }), 1);
}

// Enabled controls

void tst_VideoTab::theBodyIsOffUntilItHasBeenRead()
{
    SetupPage page;
    page.rig().gate().hold("zvtGetVideoAGCMethod");
    page.click("Video");
    QVERIFY(page.rig().gate().waitHeld("zvtGetVideoAGCMethod"));
    page.awaitFrame();
    for (const QString &name : alwaysShown)
        QVERIFY2(!page.enabled(name), qPrintable(name));
    QCOMPARE(page.shown("Format"), "");
    QCOMPARE(page.text("Filter Rate Value"), "");
    QVERIFY(!page.checked("Locked") && !page.checked("User Defined"));
    page.rig().gate().release("*");
    page.settle();
    for (const QString &name : alwaysShown)
        QVERIFY2(page.enabled(name), qPrintable(name));
    QCOMPARE(page.shown("Format"), "720p @ 60Hz");
}

void tst_VideoTab::theBodyIsOffWhileItIsRead()
{
    VideoPage page;
    QVERIFY(page.set("video.format", 0) && page.set("agc.method", 1));
    page.refresh();
    const QStringList all
        = alwaysShown + QStringList{"Plateau P Variable", "Plateau P Value", "DDE Sharpness",    "DDE Sharpness Value",
                                    "Brightness",         "Contrast",        "Reset Brightness", "Reset Contrast"};
    for (const QString &name : all)
        QVERIFY2(page.enabled(name), qPrintable(name));
    page.gate().hold("zvtGetVideoAGCMethod");
    page.click("Refresh General Video Settings");
    QVERIFY(page.gate().waitHeld("zvtGetVideoAGCMethod"));
    for (const QString &name : all)
        QVERIFY2(!page.enabled(name), qPrintable(name));
    page.gate().release("*");
    page.settle();
    for (const QString &name : all)
        QVERIFY2(page.enabled(name), qPrintable(name));
}

void tst_VideoTab::theControlInUseStaysOnWhileItIsRead()
{
    VideoPage page;
    page.type("Plateau P Value", "12");
    page.gate().hold("zvtGetVideoAGCMethod");
    QMetaObject::invokeMethod(page.video(), "refresh");
    QVERIFY(page.gate().waitHeld("zvtGetVideoAGCMethod"));
    QVERIFY(page.enabled("Plateau P Value"));
    QVERIFY(!page.enabled("Plateau P Variable") && !page.enabled("Format"));
    page.gate().release("*");
    page.settle();
    QCOMPARE(page.text("Plateau P Value"), "12");
    QCOMPARE(page.commandsOf([&] { page.press(Qt::Key_Return); }), QStringList("zvtSetVideoAGCPlateauP 12"));
}

void tst_VideoTab::theBodyIsOffWhileDisconnected()
{
    VideoPage page;
    page.rig().camera().disconnect();
    page.settle();
    for (const QString &name : alwaysShown)
        QVERIFY2(!page.enabled(name), qPrintable(name));
    QVERIFY(page.findText("No camera connected"));
}

void tst_VideoTab::unreadValuesAreEmpty()
{
    VideoPage page([](emulator::Camera &camera) {
        for (const char *call : {"zvtGetVideoFormats", "zvtGetVideoAGCMethod", "zvtGetPalette"})
            camera.gate().failAlways(call);
    });
    QVERIFY(page.enabled("Format"));
    for (const char *box : {"Format", "AGC Mode", "Palette"})
        QCOMPARE(page.shown(box), "");
    for (const char *field : {"Plateau P Value", "Manual Low Value"})
        QVERIFY(!page.find(field));
    page.gate().failNever();
    page.refresh();
    QCOMPARE(page.shown("AGC Mode"), "Plateau");
}

// Layout

void tst_VideoTab::everyTextFits_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("method");
    QTest::addColumn<bool>("mode");
    for (const int width : {640, 900, 1400})
        for (const int method : {0, 1, 2, 3})
            for (const bool mode : {false, true})
                QTest::addRow("%d wide, method %d%s", width, method, mode ? ", manufacturing mode" : "")
                    << width << method << mode;
}

void tst_VideoTab::everyTextFits()
{
    QFETCH(const int, width);
    QFETCH(const int, method);
    QFETCH(const bool, mode);
    VideoPage page([method](emulator::Camera &camera) {
        camera.otherClient().set("agc.method", method);
        camera.otherClient().set("video.format", 3);
    });
    page.setMode(mode);
    page.page()->setWidth(width);
    page.settle();
    page.saveScreenshot({}, {width, 700});
    const QRectF place(0, 0, width, page.page()->height());
    const auto texts = page.shownTexts(*page.page());
    QVERIFY(texts.size() > 20);
    for (const QQuickItem *text : texts)
        QVERIFY2(page.fits(*text, place), qPrintable(text->property("text").toString()));
    for (const QString &name : alwaysShown) {
        const QQuickItem &control = page.item(name);
        QVERIFY2(place.contains(control.mapRectToScene(control.boundingRect())), qPrintable(name));
    }
}

void tst_VideoTab::tabWalksInReadingOrder()
{
    VideoPage page([](emulator::Camera &camera) {
        for (const auto &[name, value] :
             std::initializer_list<std::pair<const char *, QVariant>>{{"agc.method", 1},
                                                                      {"video.format", 0},
                                                                      {"agc.filterRateEnabled", true},
                                                                      {"agc.dampeningEnabled", true},
                                                                      {"agc.dampening", 0.5},
                                                                      {"video.temporalFilter", 1}})
            QVERIFY(camera.otherClient().set(QLatin1String(name), value));
    });
    page.item("Format").forceActiveFocus(Qt::TabFocusReason);
    QStringList walked;
    for (int step = 0; step < 21; ++step) {
        walked << PageDriver::nameOf(*page.window().activeFocusItem());
        page.press(Qt::Key_Tab);
    }
    QCOMPARE(
        walked,
        QStringList(
            {"Format",          "Update Rate",        "Filter Rate",      "Filter Rate Value", "Dampening",
             "Locked",          "User Defined",       "Dampening Value",  "Temporal Filter",   "Threshold",
             "AGC Mode",        "Plateau P Variable", "Plateau P Value",  "DDE Sharpness",     "DDE Sharpness Value",
             "Palette",         "Brightness",         "Reset Brightness", "Contrast",          "Reset Contrast",
             "AGC ROI Settings"}));
}

void tst_VideoTab::thePageOutlivesItsModel()
{
    VideoPage page;
    page.deleteModel();
    page.settle();
    QVERIFY(page.findText("No camera connected"));
}

ZVT_TEST(tst_VideoTab)
#include "tst_VideoTab.moc"
