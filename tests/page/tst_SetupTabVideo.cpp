#include "tests/page/VideoSection.h"
#include "tests/support/Test.h"

#include <QRect>

/// The section "Video Output Settings" of the Setup page.
class tst_SetupTabVideo : public Test
{
    Q_OBJECT

private slots:
    void aCollapsedSectionIsNotRead();
    void theHeaderReadsBeforeItOpens();
    void theSectionOpensByKeyboard();
    void itIsReadWhenThePageIsShown();
    void cameraOrModeShowsTheSection_data();
    void cameraOrModeShowsTheSection();
    void theBodyIsOffUntilItHasBeenRead();
    void theBodyStaysOnDuringALaterRead();
    void theBodyIsOffWhileDisconnected();
    void theBodyMakesNoCalls();

    void theEditorShowsTheCamera();
    void aPositionIsChosen();
    void aFixedPositionCannotBeChosen();
    void aZoomFactorIsChosen();
    void aReadListOfFactorsKeepsTheRow();
    void aRefusedChoiceStaysUntilARead();
    void nothingIsClipped_data();
    void nothingIsClipped();
    void tabWalksInReadingOrder();
};

void tst_SetupTabVideo::aCollapsedSectionIsNotRead()
{
    SetupPage page;
    QVERIFY(page.find("Video Output Settings"));
    QVERIFY(!page.find(editorName));
    QMetaObject::invokeMethod(page.cameraModel(), "refreshAllVisible");
    page.showTab(0);
    page.showTab(1);
    QCOMPARE(page.rig().callsSince(0).filter("zvtGetVideoOffset"), QStringList());
}

void tst_SetupTabVideo::theHeaderReadsBeforeItOpens()
{
    VideoSection page;
    QVERIFY(page.find(editorName));
    QVERIFY(page.video()->property("visible").toBool());
    QCOMPARE(page.reads([&] { page.refresh(); }), 1);
    QCOMPARE(page.reads([&] { page.click("Video Output Settings"); }), 0);
    QVERIFY(!page.find(editorName));
    QVERIFY(!page.video()->property("visible").toBool());
    page.rig().gate().hold("zvtGetVideoOffset");
    page.click("Video Output Settings");
    QVERIFY(page.rig().gate().waitHeld("zvtGetVideoOffset"));
    // The header does not show that the section is read.
    QVERIFY(!page.item("Video Output Settings").property("sectionLoading").toBool());
    page.rig().gate().release("*");
    page.settle();
}

void tst_SetupTabVideo::theSectionOpensByKeyboard()
{
    VideoSection page;
    page.item("Video Output Settings").forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_Space);
    QVERIFY(!page.find(editorName));
    QCOMPARE(page.reads([&] { page.press(Qt::Key_Return); }), 1);
    QVERIFY(page.find(editorName));
}

void tst_SetupTabVideo::itIsReadWhenThePageIsShown()
{
    VideoSection page;
    QCOMPARE(page.reads([&] { page.showTab(0); }), 0);
    QCOMPARE(page.reads([&] { page.showTab(1); }), 1);
    page.rig().camera().disconnect();
    page.settle();
    QCOMPARE(page.reads([&] { page.rig().camera().connect(); }), 1);
    QCOMPARE(page.reads([&] { QMetaObject::invokeMethod(page.cameraModel(), "refreshAllVisible"); }), 1);
}

void tst_SetupTabVideo::cameraOrModeShowsTheSection_data()
{
    QTest::addColumn<bool>("capability");
    QTest::addColumn<bool>("mode");
    for (const bool capability : {false, true})
        for (const bool mode : {false, true})
            QTest::addRow("%d %d", capability, mode) << capability << mode;
}

void tst_SetupTabVideo::cameraOrModeShowsTheSection()
{
    QFETCH(const bool, capability);
    QFETCH(const bool, mode);
    SetupPage page("everything", [capability](emulator::Camera &camera) {
        camera.changeMakeUp("hasVideoOutputSettings", capability);
    });
    page.cameraModel()->setProperty("manufacturingMode", mode);
    page.settle();
    QCOMPARE(page.find("Video Output Settings") != nullptr, capability || mode);
}

void tst_SetupTabVideo::theBodyIsOffUntilItHasBeenRead()
{
    SetupPage page;
    page.click("General Setup");
    page.rig().gate().hold("zvtGetVideoOffset");
    page.click("Video Output Settings");
    QVERIFY(page.rig().gate().waitHeld("zvtGetVideoOffset"));
    page.awaitFrame();
    for (const char *name : {editorName, "Position", "Zoom Factor", "X Offset", "Y Offset", "Apply Offset"})
        QVERIFY2(!page.enabled(name), name);
    QCOMPARE(page.shown("Position"), "");
    QCOMPARE(page.shown("Zoom Factor"), "");
    QCOMPARE(page.text("X Offset"), "");
    page.rig().gate().release("*");
    page.settle();
    for (const char *name : {editorName, "Position", "Zoom Factor"})
        QVERIFY2(page.enabled(name), name);
    QCOMPARE(page.shown("Position"), "Same As FPA");
    QCOMPARE(page.shown("Zoom Factor"), "1X");
    QCOMPARE(page.text("X Offset"), "0");
}

void tst_SetupTabVideo::theBodyStaysOnDuringALaterRead()
{
    VideoSection page;
    page.rig().gate().hold("zvtGetVideoOffset");
    page.click("Refresh Video Output Settings");
    QVERIFY(page.rig().gate().waitHeld("zvtGetVideoOffset"));
    QVERIFY(page.enabled("Position"));
    page.rig().gate().release("*");
    page.settle();
}

void tst_SetupTabVideo::theBodyIsOffWhileDisconnected()
{
    VideoSection page;
    page.rig().camera().disconnect();
    page.settle();
    QVERIFY(!page.enabled("Position"));
    QVERIFY(!page.enabled(editorName));
}

void tst_SetupTabVideo::theBodyMakesNoCalls()
{
    SetupPage page;
    const size_t mark = page.rig().gate().mark();
    // The page has not opened the section, so only its body could read the model.
    QObject *video = page.tabModel("videoOutputSettings");
    video->setProperty("visible", true);
    page.settle();
    const QQuickItem &editor = page.item(editorName);
    video->setProperty("videoOutputOffset", QPoint(4, 4));
    video->setProperty("visible", false);
    page.settle();
    QCOMPARE(editor.property("offset").toPoint(), QPoint(4, 4));
    QCOMPARE(page.rig().callsSince(mark).filter("Video"), QStringList());
}

void tst_SetupTabVideo::theEditorShowsTheCamera()
{
    VideoSection page("everything", [](emulator::Camera &camera) {
        camera.otherClient().set("sensor.window", QVariantList{160, 128, 320, 256});
        camera.otherClient().set("image.reverted", true);
    });
    const QQuickItem &editor = page.editor();
    QCOMPARE(editor.property("window").toRect(), QRect(160, 128, 320, 256));
    QCOMPARE(editor.property("fpaSize").toSize(), QSize(640, 512));
    QCOMPARE(editor.property("displaySize").toSize(), QSize(1280, 720));
    QCOMPARE(editor.property("increment").toPoint(), QPoint(4, 4));
    QCOMPARE(editor.property("offsetType").toInt(), 0);
    QVERIFY(editor.property("hFlip").toBool() && !editor.property("vFlip").toBool());
    QVERIFY(!editor.property("showNtscLines").toBool());
    QVERIFY(page.set("video.zoomFactor", 4) && page.set("video.position", 2)
            && page.set("video.offset", QVariantList{100, 40}) && page.set("video.format", 2)
            && page.set("image.inverted", true));
    page.refresh();
    QMetaObject::invokeMethod(page.tab(), "refresh");
    page.settle();
    QCOMPARE(editor.property("zoom").toFloat(), 1.3F);
    QCOMPARE(editor.property("offsetType").toInt(), 2);
    QCOMPARE(editor.property("offset").toPoint(), QPoint(100, 40));
    QCOMPARE(editor.property("displaySize").toSize(), QSize(800, 600));
    QVERIFY(editor.property("vFlip").toBool());
}

void tst_SetupTabVideo::aPositionIsChosen()
{
    VideoSection page;
    QCOMPARE(page.commandsOf([&] { page.choose("Position", "Centered"); }), QStringList("zvtSetVideoPosition 1"));
    QCOMPARE(page.editor().property("offsetType").toInt(), 1);
    page.item("Position").forceActiveFocus(Qt::TabFocusReason);
    QCOMPARE(page.commandsOf([&] { page.press(Qt::Key_Down); }), QStringList("zvtSetVideoPosition 2"));
    // The box also follows the camera.
    QVERIFY(page.set("video.position", 0));
    page.refresh();
    QCOMPARE(page.shown("Position"), "Same As FPA");
}

void tst_SetupTabVideo::aFixedPositionCannotBeChosen()
{
    VideoSection page("low-cost");
    QVERIFY(!page.enabled("Position"));
    QVERIFY(page.enabled("Zoom Factor"));
    QVERIFY(!page.enabled("X Offset"));
    // The offsets of a fixed position can be set.
    QVERIFY(page.set("video.positionWritable", true) && page.set("video.position", 2)
            && page.set("video.positionWritable", false));
    page.refresh();
    QVERIFY(!page.enabled("Position"));
    QCOMPARE(page.shown("Position"), "Offset");
    QVERIFY(page.enabled("X Offset") && page.enabled("Y Offset") && page.enabled("Apply Offset"));
}

void tst_SetupTabVideo::aZoomFactorIsChosen()
{
    VideoSection page;
    QCOMPARE(page.commandsOf([&] { page.choose("Zoom Factor", "Fit"); }), QStringList("zvtSetVideoZoomFactor 5"));
    QCOMPARE(page.editor().property("zoom").toDouble(), 0.0);
    page.item("Zoom Factor").forceActiveFocus(Qt::TabFocusReason);
    QCOMPARE(page.commandsOf([&] { page.press(Qt::Key_Up); }), QStringList("zvtSetVideoZoomFactor 3"));
    QCOMPARE(page.editor().property("zoom").toDouble(), 4.0);
}

void tst_SetupTabVideo::aReadListOfFactorsKeepsTheRow()
{
    VideoSection page;
    page.choose("Zoom Factor", "2X");
    QVERIFY(page.rig().camera().changeMakeUp("hasBilinearZoom", false));
    page.refresh();
    QCOMPARE(page.shown("Zoom Factor"), "2X");
    QCOMPARE(page.item("Zoom Factor").property("count").toInt(), 3);
    QVERIFY(page.rig().camera().changeMakeUp("hasBilinearZoom", true));
    page.refresh();
    QCOMPARE(page.shown("Zoom Factor"), "2X");
    QCOMPARE(page.item("Zoom Factor").property("count").toInt(), 6);
}

void tst_SetupTabVideo::aRefusedChoiceStaysUntilARead()
{
    VideoSection page;
    page.rig().gate().failAlways("zvtSetVideoPosition");
    page.rig().gate().failAlways("zvtSetVideoZoomFactor");
    page.choose("Position", "Offset");
    page.choose("Zoom Factor", "4X");
    QCOMPARE(page.shown("Position"), "Offset");
    QCOMPARE(page.shown("Zoom Factor"), "4X");
    QVERIFY(page.enabled("X Offset"));
    page.refresh();
    QCOMPARE(page.shown("Position"), "Same As FPA");
    QCOMPARE(page.shown("Zoom Factor"), "1X");
    QVERIFY(!page.enabled("X Offset"));
}

void tst_SetupTabVideo::nothingIsClipped_data()
{
    QTest::addColumn<QString>("profile");
    for (const char *profile : {"everything", "low-cost"})
        QTest::newRow(profile) << profile;
}

void tst_SetupTabVideo::nothingIsClipped()
{
    QFETCH(const QString, profile);
    VideoSection page(profile);
    for (const int width : {640, 900, 1400}) {
        page.page()->setWidth(width);
        page.settle();
        const QRectF place(0, 0, width, page.page()->height());
        const auto texts = page.shownTexts(*page.page());
        QVERIFY(texts.size() > 10);
        for (const QQuickItem *text : texts)
            QVERIFY2(page.fits(*text, place), qPrintable(text->property("text").toString()));
        const QRectF editor = page.editor().mapRectToScene(page.editor().boundingRect());
        const QRectF box = page.item("Position").mapRectToScene(page.item("Position").boundingRect());
        QVERIFY(place.contains(editor) && place.contains(box));
        // The rows are beside the editor in a window of any width.
        QVERIFY(box.left() - editor.right() > 12 && box.left() - editor.right() < 150);
    }
}

void tst_SetupTabVideo::tabWalksInReadingOrder()
{
    VideoSection page;
    page.choose("Position", "Offset");
    page.editor().forceActiveFocus(Qt::TabFocusReason);
    for (const char *name : {"Position", "Zoom Factor", "X Offset", "Y Offset", "Apply Offset"}) {
        page.press(Qt::Key_Tab);
        QVERIFY2(page.item(name).hasActiveFocus(), name);
    }
}

ZVT_TEST(tst_SetupTabVideo)
#include "tst_SetupTabVideo.moc"
