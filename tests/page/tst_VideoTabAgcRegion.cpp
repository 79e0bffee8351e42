#include "tests/page/AgcRegionSection.h"
#include "tests/support/Test.h"

/// The section "AGC ROI Settings" of the Video page: when it is shown and read, and what it shows.
class tst_VideoTabAgcRegion : public Test
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
    void theBodyIsOffWhileDisconnected();
    void aFieldInUseStaysEnabledDuringARead();
    void theBodyMakesNoCalls();
    void nothingIsClipped_data();
    void nothingIsClipped();
    void tabWalksInReadingOrder();
    void thePictureShowsTheCamera();
    void theRegionIsSwitchedOnAtOnce_data();
    void theRegionIsSwitchedOnAtOnce();
    void onlyThePictureNeedsTheRegionToBeOn();
};

void tst_VideoTabAgcRegion::aCollapsedSectionIsNotRead()
{
    SetupPage page;
    page.click("Video");
    page.settle();
    QVERIFY(page.find(AgcRegionSection::header));
    QVERIFY(!page.find(AgcRegionSection::picture));
    QMetaObject::invokeMethod(page.cameraModel(), "refreshAllVisible");
    page.settle();
    QCOMPARE(page.rig().callsSince(0).filter("AGCROI"), QStringList());
}

void tst_VideoTabAgcRegion::theHeaderReadsBeforeItOpens()
{
    AgcRegionSection page;
    QVERIFY(page.find(page.picture));
    QVERIFY(page.region()->property("visible").toBool());
    QCOMPARE(page.reads([&] { page.refresh(); }), 1);
    QCOMPARE(page.reads([&] { page.click(page.header); }), 0);
    QVERIFY(!page.find(page.picture));
    QVERIFY(!page.region()->property("visible").toBool());
    page.rig().gate().hold("zvtGetVideoAGCROI");
    page.click(page.header);
    QVERIFY(page.rig().gate().waitHeld("zvtGetVideoAGCROI"));
    QVERIFY(page.item(page.header).property("sectionLoading").toBool());
    page.rig().gate().release("*");
    page.settle();
    QVERIFY(!page.item(page.header).property("sectionLoading").toBool());
    QVERIFY(page.enabled("Width"));
}

void tst_VideoTabAgcRegion::theSectionOpensByKeyboard()
{
    AgcRegionSection page;
    page.item(page.header).forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_Space);
    QVERIFY(!page.find(page.picture));
    QCOMPARE(page.reads([&] { page.press(Qt::Key_Return); }), 1);
    QVERIFY(page.find(page.picture));
}

void tst_VideoTabAgcRegion::itIsReadWhenThePageIsShown()
{
    AgcRegionSection page;
    QCOMPARE(page.reads([&] { page.click("Status"); }), 0);
    QCOMPARE(page.reads([&] { page.click("Video"); }), 1);
    page.rig().camera().disconnect();
    page.settle();
    QCOMPARE(page.reads([&] { page.rig().camera().connect(); }), 1);
    QCOMPARE(page.reads([&] { QMetaObject::invokeMethod(page.cameraModel(), "refreshAllVisible"); }), 1);
}

void tst_VideoTabAgcRegion::cameraOrModeShowsTheSection_data()
{
    QTest::addColumn<bool>("capability");
    QTest::addColumn<bool>("mode");
    for (const bool capability : {false, true})
        for (const bool mode : {false, true})
            QTest::addRow("%d %d", capability, mode) << capability << mode;
}

void tst_VideoTabAgcRegion::cameraOrModeShowsTheSection()
{
    QFETCH(const bool, capability);
    QFETCH(const bool, mode);
    SetupPage page("everything",
                   [capability](emulator::Camera &camera) { camera.changeMakeUp("hasVideoAgcRoi", capability); });
    page.cameraModel()->setProperty("manufacturingMode", mode);
    page.tabModel("agcRoiSettings")->setProperty("visible", true);
    page.click("Video");
    page.settle();
    QCOMPARE(page.find(AgcRegionSection::header) != nullptr, capability || mode);
    QCOMPARE(page.find(AgcRegionSection::picture) != nullptr, capability || mode);
}

void tst_VideoTabAgcRegion::theBodyIsOffUntilItHasBeenRead()
{
    SetupPage page("everything", AgcRegionSection::useRegion);
    page.click("Video");
    page.click("General Video Settings");
    page.settle();
    page.rig().gate().hold("zvtGetVideoAGCROI");
    page.click(AgcRegionSection::header);
    QVERIFY(page.rig().gate().waitHeld("zvtGetVideoAGCROI"));
    page.awaitFrame();
    const QStringList names{"Enable AGC ROI", AgcRegionSection::picture, "Width", "Height", "X Offset",
                            "Y Offset",       "Show When Enabled"};
    for (const QString &name : names)
        QVERIFY2(!page.enabled(name), qPrintable(name));
    // No number is shown that was not read from the camera.
    QCOMPARE(page.text("Width") + page.text("X Offset"), QString());
    QCOMPARE(page.item("Width").property("marked"), QVariant(false));
    page.rig().gate().release("*");
    page.settle();
    for (const QString &name : names)
        QVERIFY2(page.enabled(name), qPrintable(name));
    QCOMPARE(page.text("Width"), "100");
    QVERIFY(!page.enabled("Apply"));
}

void tst_VideoTabAgcRegion::theBodyIsOffWhileDisconnected()
{
    AgcRegionSection page;
    page.rig().camera().disconnect();
    page.settle();
    for (const char *name : {"Enable AGC ROI", page.picture, "Width", "Show When Enabled"})
        QVERIFY2(!page.enabled(name), name);
    QCOMPARE(page.text("Width"), "100");
}

void tst_VideoTabAgcRegion::aFieldInUseStaysEnabledDuringARead()
{
    AgcRegionSection page;
    page.item("Width").forceActiveFocus(Qt::TabFocusReason);
    page.rig().gate().hold("zvtGetVideoAGCROI");
    QMetaObject::invokeMethod(page.region(), "refresh");
    QVERIFY(page.rig().gate().waitHeld("zvtGetVideoAGCROI"));
    QVERIFY(page.enabled("Width"));
    page.rig().gate().release("*");
    page.settle();
    QVERIFY(page.item("Width").hasActiveFocus());
}

void tst_VideoTabAgcRegion::theBodyMakesNoCalls()
{
    SetupPage page;
    page.click("Video");
    page.settle();
    const size_t mark = page.rig().gate().mark();
    // The page has not opened the section, so only its body could read the model.
    page.tabModel("agcRoiSettings")->setProperty("visible", true);
    page.settle();
    QVERIFY(page.find(AgcRegionSection::picture));
    page.tabModel("agcRoiSettings")->setProperty("visible", false);
    page.settle();
    QCOMPARE(page.rig().callsSince(mark).filter("AGCROI"), QStringList());
}

void tst_VideoTabAgcRegion::nothingIsClipped_data()
{
    QTest::addColumn<bool>("mode");
    QTest::newRow("normal") << false;
    QTest::newRow("manufacturing") << true;
}

void tst_VideoTabAgcRegion::nothingIsClipped()
{
    QFETCH(const bool, mode);
    AgcRegionSection page;
    page.cameraModel()->setProperty("manufacturingMode", mode);
    page.click("Show When Enabled");
    for (const int width : {640, 900, 1400}) {
        page.page()->setWidth(width);
        page.settle();
        page.saveScreenshot(QString::number(width), {width, 480});
        const QRectF place(0, 0, width, page.page()->height());
        for (const QQuickItem *text : page.shownTexts(*page.page()))
            QVERIFY2(page.fits(*text, place), qPrintable(text->property("text").toString()));
        // The bounding rectangle of a field is that of its text.
        const auto rectangle = [&page](const QString &name) {
            return page.item(name).mapRectToScene(QRectF({0, 0}, page.item(name).size()));
        };
        const QRectF editor = rectangle(page.picture);
        QCOMPARE(editor.size(), QSizeF(160, 128));
        QVERIFY(place.contains(editor) && place.contains(rectangle("Width")) && place.contains(rectangle("Apply")));
        // The fields are beside the picture in a window of any width.
        const double gap = rectangle("Width").left() - editor.right();
        QVERIFY2(gap > 90 && gap < 120, qPrintable(QString::number(gap)));
    }
}

void tst_VideoTabAgcRegion::tabWalksInReadingOrder()
{
    AgcRegionSection page;
    page.click("Show When Enabled");
    page.item("Enable AGC ROI").forceActiveFocus(Qt::TabFocusReason);
    for (const char *name : {page.picture, "Width", "Height", "X Offset", "Y Offset", "Show When Enabled", "Apply"}) {
        page.press(Qt::Key_Tab);
        QVERIFY2(page.item(name).hasActiveFocus(), name);
    }
}

void tst_VideoTabAgcRegion::thePictureShowsTheCamera()
{
    AgcRegionSection page;
    const QQuickItem &picture = page.item(page.picture);
    QCOMPARE(page.edited(), QRect(10, 20, 100, 50));
    QCOMPARE(page.numbers(), QStringList({"10", "20", "100", "50"}));
    QCOMPARE(picture.property("minSize").toSize(), QSize(1, 1));
    QCOMPARE(picture.property("maxSize").toSize(), QSize(640, 512));
    QCOMPARE(picture.property("fullSize").toSize(), QSize(640, 512));
    QVERIFY(picture.property("isSubWindow").toBool());
    QVERIFY(!page.unsaved());
    QVERIFY(page.set("sensor.window", QVariantList{160, 128, 320, 256}));
    QVERIFY(page.set("agc.region", QVariantList{8, 4, 32, 16}));
    page.refresh();
    QCOMPARE(page.edited(), QRect(8, 4, 32, 16));
    QCOMPARE(page.numbers(), QStringList({"8", "4", "32", "16"}));
    QCOMPARE(picture.property("maxSize").toSize(), QSize(320, 256));
    QCOMPARE(picture.property("subWindowPosition").toPoint(), QPoint(160, 128));
    QVERIFY(!page.unsaved());
}

void tst_VideoTabAgcRegion::theRegionIsSwitchedOnAtOnce_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::newRow("by mouse") << false;
    QTest::newRow("by keyboard") << true;
}

void tst_VideoTabAgcRegion::theRegionIsSwitchedOnAtOnce()
{
    QFETCH(const bool, byKeyboard);
    AgcRegionSection page;
    QVERIFY(page.checked("Enable AGC ROI"));
    const auto use = [&] { page.use("Enable AGC ROI", byKeyboard); };
    QCOMPARE(page.commandsOf(use), QStringList("zvtSetVideoAGCROIEnabled false"));
    QVERIFY(!page.checked("Enable AGC ROI"));
    QCOMPARE(page.commandsOf(use), QStringList("zvtSetVideoAGCROIEnabled true"));
    QVERIFY(!page.unsaved());
    // The switch follows the camera.
    QVERIFY(page.set("agc.regionEnabled", false));
    page.refresh();
    QVERIFY(!page.checked("Enable AGC ROI"));
}

void tst_VideoTabAgcRegion::onlyThePictureNeedsTheRegionToBeOn()
{
    AgcRegionSection page;
    QCOMPARE(page.item(page.picture).opacity(), 1.0);
    page.click("Enable AGC ROI");
    QCOMPARE(page.item(page.picture).opacity(), 0.3);
    QVERIFY(!page.enabled(page.picture));
    for (const char *name : {"Width", "Height", "X Offset", "Y Offset", "Show When Enabled"})
        QVERIFY2(page.enabled(name), name);
    page.type("Width", "120");
    QCOMPARE(page.commandsOf([&] { page.click("Apply"); }), QStringList("zvtSetVideoAGCROI 10, 20, 120, 50"));
}

ZVT_TEST(tst_VideoTabAgcRegion)
#include "tst_VideoTabAgcRegion.moc"
