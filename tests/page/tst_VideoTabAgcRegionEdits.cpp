#include "tests/page/AgcRegionSection.h"
#include "tests/support/Test.h"

/// The section "AGC ROI Settings" of the Video page: how a region is edited and applied.
class tst_VideoTabAgcRegionEdits : public Test
{
    Q_OBJECT

private slots:
    void fieldsHaveTheLimitsOfTheWindow();
    void fieldsEditThePicture_data();
    void fieldsEditThePicture();
    void wrongTextsAreNotApplied_data();
    void wrongTextsAreNotApplied();
    void aRegionThatDoesNotFitIsMarked();
    void withoutAWindowNothingCanBeApplied();
    void aDragIsAnEditToo();
    void anotherRegionReplacesATypedText();
    void theSwitchIsAppliedWithTheRegion_data();
    void theSwitchIsAppliedWithTheRegion();
    void anUnchangedRegionIsNotSent();
    void openingForgetsUnsavedEdits();
    void aReadDiscardsEdits();
    void aRefusedRegionStaysInThePictureUntilARead();
    void escapeDiscardsAnEdit();
    void thePictureFollowsTheModel();
};

void tst_VideoTabAgcRegionEdits::fieldsHaveTheLimitsOfTheWindow()
{
    AgcRegionSection page;
    QVERIFY(page.set("sensor.window", QVariantList{160, 128, 320, 256}));
    page.refresh();
    const auto limits = [&page](const QString &field) {
        return QPoint(page.item(field).property("from").toInt(), page.item(field).property("to").toInt());
    };
    QCOMPARE(limits("Width"), QPoint(1, 320));
    QCOMPARE(limits("Height"), QPoint(1, 256));
    // An offset may be as large as the window, where no region has room.
    QCOMPARE(limits("X Offset"), QPoint(0, 320));
    QCOMPARE(limits("Y Offset"), QPoint(0, 256));
    QCOMPARE(page.item("Width").property("toolTip").toString(), "Between 1 and 320");
    QCOMPARE(page.item("Y Offset").property("toolTip").toString(), "Between 0 and 256");
    page.type("X Offset", "320");
    QCOMPARE(page.commandsOf([&] { page.click("Apply"); }), QStringList("zvtSetVideoAGCROI 320, 20, 100, 50"));
}

void tst_VideoTabAgcRegionEdits::fieldsEditThePicture_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QRect>("window");
    QTest::newRow("width") << "Width" << QRect(10, 20, 33, 50);
    QTest::newRow("height") << "Height" << QRect(10, 20, 100, 33);
    QTest::newRow("x") << "X Offset" << QRect(33, 20, 100, 50);
    QTest::newRow("y") << "Y Offset" << QRect(10, 33, 100, 50);
}

void tst_VideoTabAgcRegionEdits::fieldsEditThePicture()
{
    QFETCH(const QString, field);
    QFETCH(const QRect, window);
    AgcRegionSection page;
    QVERIFY(!page.enabled("Apply"));
    QCOMPARE(page.commandsOf([&] { page.type(field, "33"); }), QStringList());
    QCOMPARE(page.edited(), window);
    QVERIFY(page.unsaved());
    QCOMPARE(page.region()->property("window").toRect(), QRect(10, 20, 100, 50));
    page.item("Apply").forceActiveFocus(Qt::TabFocusReason);
    QCOMPARE(page.text(field), "33");
    const QString numbers
        = QStringLiteral("%1, %2, %3, %4").arg(window.x()).arg(window.y()).arg(window.width()).arg(window.height());
    QCOMPARE(page.commandsOf([&] { page.press(Qt::Key_Return); }), QStringList("zvtSetVideoAGCROI " + numbers));
    QVERIFY(!page.unsaved());
    QVERIFY(!page.enabled("Apply"));
    QCOMPARE(page.region()->property("window").toRect(), window);
}

void tst_VideoTabAgcRegionEdits::wrongTextsAreNotApplied_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("fault");
    QTest::newRow("no number") << "Width"
                               << "12a"
                               << "Not a number";
    QTest::newRow("nothing") << "Y Offset"
                             << ""
                             << "Not a number";
    QTest::newRow("no width") << "Width"
                              << "0"
                              << "Not between 1 and 640";
    QTest::newRow("too wide") << "Width"
                              << "641"
                              << "Not between 1 and 640";
    QTest::newRow("no height") << "Height"
                               << "0"
                               << "Not between 1 and 512";
    QTest::newRow("too high") << "Height"
                              << "513"
                              << "Not between 1 and 512";
    QTest::newRow("too far right") << "X Offset"
                                   << "641"
                                   << "Not between 0 and 640";
    QTest::newRow("too far down") << "Y Offset"
                                  << "513"
                                  << "Not between 0 and 512";
    QTest::newRow("negative") << "X Offset"
                              << "-1"
                              << "Not between 0 and 640";
}

void tst_VideoTabAgcRegionEdits::wrongTextsAreNotApplied()
{
    QFETCH(const QString, field);
    QFETCH(const QString, text);
    QFETCH(const QString, fault);
    AgcRegionSection page;
    page.type(field, text);
    if (text.isEmpty())
        page.press(Qt::Key_Delete);
    QCOMPARE(page.text(field), text);
    QCOMPARE(page.item(field).property("fault").toString(), fault);
    QVERIFY(page.unsaved());
    QVERIFY(!page.enabled("Apply"));
    // The text stays until it is corrected.
    page.press(Qt::Key_Tab);
    QCOMPARE(page.text(field), text);
    page.type(field, "40");
    QVERIFY(page.enabled("Apply"));
}

// A camera may report a region that is larger than the window.
void tst_VideoTabAgcRegionEdits::aRegionThatDoesNotFitIsMarked()
{
    AgcRegionSection page;
    page.rig().gate().script("zvtGetVideoAGCROI", QVariantList{10, 20, 700, 50});
    page.refresh();
    QCOMPARE(page.text("Width"), "700");
    QVERIFY(page.item("Width").property("marked").toBool());
    QVERIFY(!page.item("Height").property("marked").toBool());
    page.click("Show When Enabled");
    QVERIFY(page.unsaved());
    QVERIFY(!page.enabled("Apply"));
    page.type("Width", "600");
    QVERIFY(!page.item("Width").property("marked").toBool());
    QVERIFY(page.enabled("Apply"));
}

void tst_VideoTabAgcRegionEdits::withoutAWindowNothingCanBeApplied()
{
    AgcRegionSection page([](emulator::Camera &camera) {
        AgcRegionSection::useRegion(camera);
        camera.gate().failAlways("zvtGetVideoPreset");
    });
    QCOMPARE(page.numbers(), QStringList({"10", "20", "100", "50"}));
    page.click("Show When Enabled");
    QVERIFY(page.unsaved());
    QVERIFY(!page.enabled("Apply"));
    QCOMPARE(page.item("Width").property("toolTip").toString(), QString());
}

void tst_VideoTabAgcRegionEdits::aDragIsAnEditToo()
{
    AgcRegionSection page;
    page.item(page.picture).forceActiveFocus(Qt::TabFocusReason);
    QCOMPARE(page.commandsOf([&] { page.press(Qt::Key_Right); }), QStringList());
    QCOMPARE(page.edited(), QRect(11, 20, 100, 50));
    QCOMPARE(page.text("X Offset"), "11");
    QVERIFY(page.unsaved());
    page.press(Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(page.text("Height"), "51");
    // By mouse, from the middle of the region.
    const QRectF frame = page.item(page.picture).property("windowFrame").toRectF();
    const QPoint from = page.item(page.picture).mapToScene(frame.center()).toPoint();
    QTest::mousePress(&page.window(), Qt::LeftButton, Qt::NoModifier, from);
    QTest::mouseMove(&page.window(), from + QPoint(25, 0));
    QTest::mouseRelease(&page.window(), Qt::LeftButton, Qt::NoModifier, from + QPoint(25, 0));
    const QRect dragged = page.edited();
    QVERIFY2(dragged.x() > 60 && dragged.x() < 160, qPrintable(QString::number(dragged.x())));
    QCOMPARE(dragged.size(), QSize(100, 51));
    QCOMPARE(page.text("X Offset"), QString::number(dragged.x()));
    QCOMPARE(page.commandsOf([&] { page.click("Apply"); }),
             QStringList(QStringLiteral("zvtSetVideoAGCROI %1, 20, 100, 51").arg(dragged.x())));
}

void tst_VideoTabAgcRegionEdits::anotherRegionReplacesATypedText()
{
    AgcRegionSection page;
    page.type("X Offset", "12a");
    page.item(page.picture).forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_Right);
    QCOMPARE(page.text("X Offset"), "13");
    QVERIFY(page.enabled("Apply"));
}

void tst_VideoTabAgcRegionEdits::theSwitchIsAppliedWithTheRegion_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::newRow("by mouse") << false;
    QTest::newRow("by keyboard") << true;
}

void tst_VideoTabAgcRegionEdits::theSwitchIsAppliedWithTheRegion()
{
    QFETCH(const bool, byKeyboard);
    AgcRegionSection page;
    QVERIFY(!page.checked("Show When Enabled"));
    QCOMPARE(page.commandsOf([&] { page.use("Show When Enabled", byKeyboard); }), QStringList());
    QVERIFY(page.checked("Show When Enabled"));
    QVERIFY(page.unsaved());
    QVERIFY(!page.region()->property("showWhenEnabled").toBool());
    page.type("Height", "60");
    QCOMPARE(page.commandsOf([&] { page.use("Apply", byKeyboard); }),
             QStringList({"zvtSetVideoAGCROI 10, 20, 100, 60", "zvtSetVideoOverlayShowAGCROI true"}));
    QVERIFY(page.checked("Show When Enabled"));
    QVERIFY(page.region()->property("showWhenEnabled").toBool());
    // The camera has both values.
    page.refresh();
    QVERIFY(page.checked("Show When Enabled"));
    QCOMPARE(page.text("Height"), "60");
    // The switch follows the camera.
    QVERIFY(page.set("overlay.showAgcRoi", false));
    page.refresh();
    QVERIFY(!page.checked("Show When Enabled"));
}

void tst_VideoTabAgcRegionEdits::anUnchangedRegionIsNotSent()
{
    AgcRegionSection page;
    page.click("Show When Enabled");
    QCOMPARE(page.commandsOf([&] { page.click("Apply"); }), QStringList("zvtSetVideoOverlayShowAGCROI true"));
    QVERIFY(!page.unsaved());
    page.type("Width", "101");
    page.type("Width", "100");
    QVERIFY(page.unsaved());
    QCOMPARE(page.commandsOf([&] { page.click("Apply"); }), QStringList());
    QVERIFY(!page.unsaved());
}

void tst_VideoTabAgcRegionEdits::openingForgetsUnsavedEdits()
{
    SetupPage page;
    page.click("Video");
    page.settle();
    QObject *region = page.tabModel("agcRoiSettings");
    region->setProperty("windowSizeHasUnsavedValues", true);
    region->setProperty("visible", true);
    page.settle();
    QVERIFY(page.find(AgcRegionSection::picture));
    QVERIFY(!region->property("windowSizeHasUnsavedValues").toBool());
}

void tst_VideoTabAgcRegionEdits::aReadDiscardsEdits()
{
    AgcRegionSection page;
    page.type("Width", "120");
    page.type("Height", "12a");
    page.click("Show When Enabled");
    QVERIFY(page.unsaved());
    QCOMPARE(page.commandsOf([&] { page.refresh(); }), QStringList());
    QVERIFY(!page.unsaved());
    QVERIFY(!page.enabled("Apply"));
    // The region of the camera is still the same, so the model does not signal it.
    QCOMPARE(page.edited(), QRect(10, 20, 100, 50));
    QCOMPARE(page.numbers(), QStringList({"10", "20", "100", "50"}));
    QVERIFY(!page.checked("Show When Enabled"));
}

void tst_VideoTabAgcRegionEdits::aRefusedRegionStaysInThePictureUntilARead()
{
    AgcRegionSection page;
    page.type("X Offset", "600");
    QCOMPARE(page.commandsOf([&] { page.click("Apply"); }), QStringList("zvtSetVideoAGCROI 600, 20, 100, 50"));
    QVERIFY(!page.unsaved());
    QVERIFY(!page.enabled("Apply"));
    QCOMPARE(page.edited(), QRect(600, 20, 100, 50));
    QCOMPARE(page.text("X Offset"), "600");
    QCOMPARE(page.region()->property("window").toRect(), QRect(10, 20, 100, 50));
    page.refresh();
    QCOMPARE(page.edited(), QRect(10, 20, 100, 50));
    QCOMPARE(page.text("X Offset"), "10");
    QVERIFY(!page.unsaved());
}

void tst_VideoTabAgcRegionEdits::escapeDiscardsAnEdit()
{
    AgcRegionSection page;
    page.click("Show When Enabled");
    page.type("Width", "120");
    // The first Esc discards the text in the field.
    page.press(Qt::Key_Escape);
    QVERIFY(page.unsaved());
    page.press(Qt::Key_Escape);
    QVERIFY(!page.unsaved());
    QCOMPARE(page.edited(), QRect(10, 20, 100, 50));
    QCOMPARE(page.text("Width"), "100");
    QVERIFY(!page.checked("Show When Enabled"));
}

void tst_VideoTabAgcRegionEdits::thePictureFollowsTheModel()
{
    AgcRegionSection page;
    page.type("Width", "120");
    page.item("Height").forceActiveFocus(Qt::TabFocusReason);
    page.region()->setProperty("window", QRect(1, 2, 3, 4));
    QCOMPARE(page.edited(), QRect(1, 2, 3, 4));
    QCOMPARE(page.numbers(), QStringList({"1", "2", "3", "4"}));
    page.region()->setProperty("showWhenEnabled", true);
    QVERIFY(page.checked("Show When Enabled"));
}

ZVT_TEST(tst_VideoTabAgcRegionEdits)
#include "tst_VideoTabAgcRegionEdits.moc"
