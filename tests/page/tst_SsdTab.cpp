#include "tests/page/SsdPage.h"
#include "tests/page/Stall.h"
#include "tests/support/Test.h"

#include <QQmlIncubationController>

namespace
{

void moveMouse(SsdPage &page, const QString &name)
{
    const QQuickItem &item = page.item(name);
    QTest::mouseMove(&page.window(), item.mapToScene({item.width() / 2, item.height() / 2}).toPoint());
    page.awaitFrame();
}

/// The path that the diagram is asked to highlight: 0 none, 1 a recording, 2 a playback, 3 a save, 4 a load, 7 a
/// download, 8 a batch download.
int hoveredPath(const SsdPage &page) { return page.diagram()->property("hoveredPath").toInt(); }

/// The arrows of the diagram in the color of a highlighted path.
QStringList highlighted(const SsdPage &page)
{
    QStringList arrows;
    for (const char *arrow : {"ssdToRamArrow", "ramToSsdArrow", "camToRamArrow", "camToAppArrow", "ramPlaybackArrow"})
        if (page.partColor(arrow) == page.rootProperty("kestrinAccentBlue").value<QColor>())
            arrows << arrow;
    return arrows;
}

/// The accessible names of the controls that Tab visits from the one with the focus, up to its second visit.
QStringList walkedByTab(SsdPage &page)
{
    const QString first = PageDriver::nameOf(*page.window().activeFocusItem());
    QStringList walked;
    for (int step = 0; step < 60 && walked.count(first) < 2; ++step) {
        walked << PageDriver::nameOf(*page.window().activeFocusItem());
        page.press(Qt::Key_Tab);
    }
    return walked;
}

bool isInWindow(SsdPage &page, const QQuickItem &item)
{
    const QRectF window(QPointF(), page.window().size());
    return window.contains(item.mapRectToScene({0, 0, item.width(), item.height()}));
}

} // namespace

/// The SSD page: its tab, when it is read, its layout and its texts.
class tst_SsdTab : public Test
{
    Q_OBJECT

private slots:
    void theTabNeedsARecorder();
    void theTabFollowsVideo();
    void theShownPageIsRead();
    void theModelKnowsWhetherThePageIsShown();
    void aConnectionReadsTheShownPage_data();
    void aConnectionReadsTheShownPage();
    void refreshReadsThePage_data();
    void refreshReadsThePage();
    void theFocusReturnsAfterARead();
    void aTypedTextSurvivesARead();
    void theCameraIsNamed();

    void buttonsShowTheirPath_data();
    void buttonsShowTheirPath();
    void aListWithoutLoadsShowsNoPath();

    void hiddenBodyIsCreatedInSteps();

    void withoutRecordModesTheirControlsAreHidden();
    void tabWalksInReadingOrder_data();
    void tabWalksInReadingOrder();
    void thePageOutlivesItsModel();
    void everythingFits_data();
    void everythingFits();
    void dialogsFitASmallWindow_data();
    void dialogsFitASmallWindow();
    void theFocusStaysInViewInASmallWindow();
};

void tst_SsdTab::theTabNeedsARecorder()
{
    PageDriver driver;
    QVERIFY(driver.find("SSD"));
    driver.rig().camera().disconnect();
    driver.rig().camera().changeMakeUp(QStringLiteral("hasSsd"), false);
    driver.rig().camera().connect();
    driver.settle();
    QVERIFY(!driver.find("SSD"));
}

void tst_SsdTab::theTabFollowsVideo()
{
    PageDriver driver;
    QVERIFY(driver.item("SSD").mapToScene({}).x() > driver.item("Video").mapToScene({}).x());
}

void tst_SsdTab::theShownPageIsRead()
{
    SsdPage page;
    const size_t mark = page.gate().mark();
    page.click("Video");
    page.settle();
    QVERIFY(!page.rig().callsSince(mark).contains("zvtGetSsdNumFrames"));
    page.click("SSD");
    page.settle();
    QCOMPARE(page.rig().callsSince(mark).count("zvtGetSsdNumFrames"), 1);
}

void tst_SsdTab::theModelKnowsWhetherThePageIsShown()
{
    SsdPage page;
    QVERIFY(page.value("visible").toBool());
    page.click("Video");
    QVERIFY(!page.value("visible").toBool());
}

void tst_SsdTab::aConnectionReadsTheShownPage_data()
{
    QTest::addColumn<int>("reads");
    QTest::newRow("SSD") << 1;
    QTest::newRow("Video") << 0;
}

void tst_SsdTab::aConnectionReadsTheShownPage()
{
    QFETCH(const int, reads);
    SsdPage page;
    page.click(QString::fromLatin1(QTest::currentDataTag()));
    page.rig().camera().disconnect();
    page.settle();
    const size_t mark = page.gate().mark();
    page.rig().camera().connect();
    page.settle();
    QCOMPARE(page.rig().callsSince(mark).count("zvtGetSsdNumFrames"), reads);
}

void tst_SsdTab::refreshReadsThePage_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::newRow("by mouse") << false;
    QTest::newRow("by keyboard") << true;
}

void tst_SsdTab::refreshReadsThePage()
{
    QFETCH(const bool, byKeyboard);
    SsdPage page;
    QVERIFY(page.set("recorder.frames", 77));
    const size_t mark = page.gate().mark();
    page.use("Refresh", byKeyboard);
    page.settle();
    QCOMPARE(page.rig().callsSince(mark).count("zvtGetSsdNumFrames"), 1);
    QCOMPARE(page.text("Frames To Record"), "77");
}

// All controls are disabled during the read.
void tst_SsdTab::theFocusReturnsAfterARead()
{
    SsdPage page;
    page.use("Refresh", true);
    page.settle();
    QVERIFY(page.item("Refresh").hasActiveFocus());
}

void tst_SsdTab::aTypedTextSurvivesARead()
{
    SsdPage page;
    page.item("Frames To Record").forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_A, Qt::ControlModifier);
    page.type("12");
    QVERIFY(!page.commandsOf([&] { page.refresh(); }).join(u' ').contains("zvtSet"));
    QCOMPARE(page.text("Frames To Record"), "12");
    QVERIFY(page.item("Frames To Record").hasActiveFocus());
    QCOMPARE(page.commandsOf([&] { page.press(Qt::Key_Return); }), QStringList("zvtSetSsdNumFrames 12"));
}

void tst_SsdTab::theCameraIsNamed()
{
    SsdPage page;
    QVERIFY(page.findText("Campion 640 C ZE-100001"));
}

void tst_SsdTab::buttonsShowTheirPath_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<bool>("toDisk");
    QTest::addColumn<int>("path");
    QTest::addColumn<QStringList>("arrows");
    const QStringList none;
    const QStringList record{"camToRamArrow"};
    const QStringList recordToDisk{"ramToSsdArrow", "camToRamArrow"};
    QTest::newRow("Arm for recording") << int(Complete) << false << 1 << record;
    QTest::newRow("Arm for recording ") << int(Complete) << true << 1 << recordToDisk;
    QTest::newRow("Disarm") << int(Armed) << false << 0 << none;
    QTest::newRow("Record to RAM") << int(Armed) << false << 1 << record;
    QTest::newRow("Record to SSD") << int(Armed) << true << 1 << recordToDisk;
    QTest::newRow("Stop Recording") << int(Triggered) << false << 0 << none;
    QTest::newRow("Pause Recording") << int(Triggered) << false << 0 << none;
    QTest::newRow("Resume Recording") << int(RecordPaused) << false << 1 << record;
    QTest::newRow("Save to SSD") << int(Complete) << false << 3 << QStringList{"ramToSsdArrow"};
    QTest::newRow("Play") << int(Complete) << false << 2 << QStringList{"ramPlaybackArrow"};
    QTest::newRow("Pause") << int(Playing) << false << 0 << none;
    // The arrow of the playback pulses, so the path is not highlighted.
    QTest::newRow("Play ") << int(Paused) << false << 2 << none;
    QTest::newRow("Load Movie") << int(Complete) << false << 4 << QStringList{"ssdToRamArrow"};
    QTest::newRow("Download Movie") << int(Complete) << false << 7 << QStringList{"ramPlaybackArrow"};
    QTest::newRow("Batch Download Movies")
        << int(Complete) << false << 8 << QStringList{"ssdToRamArrow", "ramPlaybackArrow"};
    // These are disabled.
    QTest::newRow("Load Movie ") << int(Armed) << false << 0 << none;
    QTest::newRow("Download Movie ") << int(Disarmed) << false << 0 << none;
    QTest::newRow("Batch Download Movies ") << int(Armed) << false << 0 << none;
    QTest::newRow("Record to RAM ") << int(Disarmed) << false << 0 << none;
    QTest::newRow("Save to SSD ") << int(Armed) << false << 0 << none;
    QTest::newRow("Play  ") << int(Disarmed) << false << 0 << none;
}

void tst_SsdTab::buttonsShowTheirPath()
{
    QFETCH(const int, state);
    QFETCH(const bool, toDisk);
    QFETCH(const int, path);
    QFETCH(const QStringList, arrows);
    SsdPage page([toDisk](emulator::Camera &camera) { camera.otherClient().set("recorder.mode", toDisk ? 1 : 0); });
    page.enterState(state);
    QCOMPARE(hoveredPath(page), 0);
    moveMouse(page, QString::fromLatin1(QTest::currentDataTag()).trimmed());
    QCOMPARE(hoveredPath(page), path);
    QCOMPARE(highlighted(page), arrows);
    page.saveScreenshot();
    moveMouse(page, "Format SSD");
    QCOMPARE(hoveredPath(page), 0);
    QCOMPARE(highlighted(page), QStringList());
}

// The list can only be viewed.
void tst_SsdTab::aListWithoutLoadsShowsNoPath()
{
    SsdPage page([](emulator::Camera &) {}, "board-6");
    page.enterState(Complete);
    QVERIFY(page.enabled("List Movies"));
    moveMouse(page, "List Movies");
    QCOMPARE(hoveredPath(page), 0);
    moveMouse(page, "Save to SSD");
    QCOMPARE(hoveredPath(page), 3);
}

// So that the window can show frames in between.
void tst_SsdTab::hiddenBodyIsCreatedInSteps()
{
    PageDriver driver;
    QVERIFY(awaitHiddenPages(driver));
    QQmlIncubationController controller;
    qmlEngine(driver.page())->setIncubationController(&controller);
    QObject *loader = driver.create("BodyLoader { camera: cameraModel; connected: true; isShown: false; preload: true\n"
                                    "body: \"qrc:/qt-project.org/imports/zvt/recording/RecorderSettings.qml\" }");
    int steps = 0;
    QVERIFY(QTest::qWaitFor(
        [&] {
            controller.incubateFor(1);
            ++steps;
            return loader->property("item").value<QObject *>() != nullptr;
        },
        20'000));
    // A host shows frames between the steps.
    QVERIFY2(steps >= 4, qPrintable(QString::number(steps)));
}

void tst_SsdTab::withoutRecordModesTheirControlsAreHidden()
{
    SsdPage page([](emulator::Camera &) {}, "board-6");
    for (const char *name : {"Record Mode", "Record Type", "Gated record", "Resume Recording", "Pause Recording",
                             "Arm for the next recording", "Download the recording", "Directory", "Count", "Load Movie",
                             "Download Movie", "Batch Download Movies"})
        QVERIFY2(!page.find(name), name);
    QVERIFY(!page.findText("Auto download settings"));
    for (const char *name : {"SSD Filename", "Frames To Record", "Pretrigger Frames", "Begin playback"})
        QVERIFY2(page.find(name), name);
}

void tst_SsdTab::tabWalksInReadingOrder_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<QStringList>("expected");
    const QStringList mode{"Record Mode",        "Record Type",    "Gated record", "SSD Filename",
                           "Playback Rate (Hz)", "Toggle Looping", "Frame"};
    const QStringList options{"Frames To Record",   "Pretrigger Frames",          "Begin playback",
                              "Save it to the SSD", "Arm for the next recording", "Download the recording"};
    const QStringList download{"Directory", "Choose Directory", "Count"};
    const QStringList range{"Edit Playback Range"};
    QTest::newRow("disarmed") << int(Disarmed)
                              << QStringList{"Refresh", "Arm for recording", "Load Movie", "Batch Download Movies"}
            + mode + options + QStringList{"Format SSD"} + download;
    QTest::newRow("complete") << int(Complete)
                              << QStringList{"Refresh",    "Arm for recording", "Save to SSD",
                                             "Load Movie", "Download Movie",    "Batch Download Movies"}
            + mode + range + QStringList{"Play"} + options + QStringList{"Format SSD"} + download;
    QTest::newRow("paused") << int(Paused)
                            << QStringList{"Refresh", "Load Movie", "Download Movie"} + mode + range
            + QStringList{"Previous Frame", "Play", "Next Frame", "Current Frame"} + options + download;
}

void tst_SsdTab::tabWalksInReadingOrder()
{
    QFETCH(const int, state);
    QFETCH(const QStringList, expected);
    SsdPage page([](emulator::Camera &camera) { camera.otherClient().set("recorder.autoDownload", true); });
    page.enterState(state);
    page.item("Refresh").forceActiveFocus(Qt::TabFocusReason);
    QCOMPARE(walkedByTab(page).mid(0, expected.size()), expected);
}

void tst_SsdTab::thePageOutlivesItsModel()
{
    SsdPage page;
    page.enterState(Playing);
    QVERIFY(page.bannerIsShown() && page.arrowsPulse() && page.findText("Playing"));
    page.deleteModel();
    page.awaitFrame();
    QVERIFY(!page.bannerIsShown() && !page.arrowsPulse() && !page.findText("Playing"));
}

void tst_SsdTab::everythingFits_data()
{
    QTest::addColumn<QString>("profile");
    QTest::addColumn<int>("state");
    for (const QString &profile :
         {QStringLiteral("everything"), QStringLiteral("te-cooler"), QStringLiteral("board-6")})
        for (const int state : {Disarmed, Armed, Triggered, Complete, Playing})
            QTest::addRow("%s %d", qPrintable(profile), state) << profile << state;
}

void tst_SsdTab::everythingFits()
{
    QFETCH(const QString, profile);
    QFETCH(const int, state);
    SsdPage page([](emulator::Camera &) {}, profile);
    page.enterState(state);
    for (const int width : {640, 900, 1400}) {
        page.resize({width, 1000});
        const QRectF place(0, 0, width, 1000);
        const auto texts = PageDriver::shownTexts(*page.page());
        QVERIFY(texts.size() > 10);
        page.saveScreenshot(QString::number(width));
        for (const QQuickItem *text : texts)
            QVERIFY2(PageDriver::fits(*text, place), qPrintable(text->property("text").toString()));
    }
}

void tst_SsdTab::dialogsFitASmallWindow_data()
{
    QTest::addColumn<QStringList>("buttons");
    QTest::newRow("Format SSD") << QStringList{"Yes", "No"};
    QTest::newRow("Edit Playback Range") << QStringList{"Start", "Current", "End", "OK", "Cancel"};
}

void tst_SsdTab::dialogsFitASmallWindow()
{
    QFETCH(const QStringList, buttons);
    SsdPage page;
    page.enterState(Complete);
    page.resize({640, 480});
    page.item(QString::fromLatin1(QTest::currentDataTag())).forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_Space);
    page.settle();
    page.saveScreenshot();
    for (const QString &button : buttons)
        QVERIFY2(isInWindow(page, page.item(button)), qPrintable(button));
}

void tst_SsdTab::theFocusStaysInViewInASmallWindow()
{
    SsdPage page([](emulator::Camera &camera) { camera.otherClient().set("recorder.autoDownload", true); });
    page.enterState(Complete);
    page.resize({640, 480});
    QVERIFY(!isInWindow(page, page.item("Count")));
    page.item("Refresh").forceActiveFocus(Qt::TabFocusReason);
    for (int step = 0; step < 60 && PageDriver::nameOf(*page.window().activeFocusItem()) != "Count"; ++step) {
        const QQuickItem &focused = *page.window().activeFocusItem();
        page.awaitFrame();
        QVERIFY2(isInWindow(page, focused), qPrintable(PageDriver::nameOf(focused)));
        page.press(Qt::Key_Tab);
    }
    page.awaitFrame();
    QVERIFY(isInWindow(page, page.item("Count")));
    page.saveScreenshot();
}

ZVT_TEST(tst_SsdTab)
#include "tst_SsdTab.moc"
