#include "tests/page/SetupPage.h"
#include "tests/support/Test.h"

#include "zvt/zvtsdk.h"

/// What the Setup page reads from the camera, how often, and what it shows after a read.
class tst_SetupTabReads : public Test
{
    Q_OBJECT

private slots:
    void openListSurvivesAPoll_data();
    void openListSurvivesAPoll();
    void fieldOfViewIsAskedNoMoreThanNeeded();
    void noiseReductionIsAskedOnceForARead();
    void bareCameraShowsWhatItHas();
    void loadedStateIsShown();
};

void tst_SetupTabReads::openListSurvivesAPoll_data()
{
    QTest::addColumn<QString>("box");
    for (const char *box : {"Frame Rate 0", "Integration Time 2", "Sequencing Mode", "FPA Gain", "Image Size"})
        QTest::newRow(box) << box;
}

void tst_SetupTabReads::openListSurvivesAPoll()
{
    QFETCH(const QString, box);
    SetupPage page;
    const auto listIsOpen = [&page, &box] { return page.item(box).property("listOpen").toBool(); };
    page.click(box);
    page.settle();
    QVERIFY(listIsOpen());
    const int index = page.item(box).property("currentIndex").toInt();

    QVERIFY(page.rig().camera().otherClient().set("image.reverted", true));
    QMetaObject::invokeMethod(page.tab(), "timeoutEventQueueTimer");
    page.settle();
    QVERIFY(page.tab()->property("hflipImage").toBool());
    QVERIFY(listIsOpen());
    QMetaObject::invokeMethod(page.general(), "refresh");
    page.settle();
    QVERIFY(listIsOpen());
    QCOMPARE(page.item(box).property("currentIndex").toInt(), index);
}

void tst_SetupTabReads::fieldOfViewIsAskedNoMoreThanNeeded()
{
    SetupPage page("discrete-fov");
    QObject *tab = page.tab();
    // Two reads by the refresh itself, one by the page.
    QCOMPARE(page.fieldOfViewReads([tab] { QMetaObject::invokeMethod(tab, "refresh"); }), 3);
    const auto toggle = [&page] { QMetaObject::invokeMethod(page.find("General Setup"), "clicked"); };
    QCOMPARE(page.fieldOfViewReads(toggle), 0);
    QCOMPARE(page.fieldOfViewReads(toggle), 3);
    QCOMPARE(page.fieldOfViewReads([&page] { page.showTab(0); }), 0);
    QCOMPARE(page.fieldOfViewReads([tab] { QMetaObject::invokeMethod(tab, "timeoutEventQueueTimer"); }), 0);
    QCOMPARE(page.fieldOfViewReads([&page] { page.showTab(1); }), 3);
    QCOMPARE(page.fieldOfViewReads([tab] { tab->setProperty("selectedFocusPosition", 3000); }), 0);
}

void tst_SetupTabReads::noiseReductionIsAskedOnceForARead()
{
    SetupPage page;
    const size_t mark = page.rig().gate().mark();
    QMetaObject::invokeMethod(page.tab(), "refresh");
    page.settle();
    QCOMPARE(page.rig().callsSince(mark).count("controller.GetReduceNoise"), 1);
}

void tst_SetupTabReads::bareCameraShowsWhatItHas()
{
    SetupPage page("bare");
    for (const char *name : {"Integration Time 0", "Frame Rate 0", "Maximum Frame Rate 0", "Reduce Noise", "Image Size",
                             "Flip Horizontally", "Flip Vertically"})
        QVERIFY2(page.find(name), name);
    for (const char *name : {"Lens Cover", "Lens States", "Field of View", "Optical Zoom", "Focus", "Auto Focus",
                             "Distance", "FPA Gain", "Enable High Sensitivity Mode", "GigE Preset"})
        QVERIFY2(!page.find(name), name);
    QVERIFY(!page.findText("Lens Control"));
    QVERIFY(!page.rig().callsSince(0).contains("zvtGetFOV"));
    QVERIFY(!page.rig().callsSince(0).contains("zvtListLensStates"));
}

void tst_SetupTabReads::loadedStateIsShown()
{
    SetupPage page;
    page.page()->setSize({900, 1700});
    const auto camera = page.rig().camera().handle();
    QCOMPARE(zvtSaveStateAs(camera, "Night"), 0);
    const QString gain = page.shown("FPA Gain");
    const QString time = page.item("Integration Time 0").property("editText").toString();
    page.tab()->setProperty("selectedFPAGainLevel", page.tab()->property("selectedFPAGainLevel").toInt() == 0 ? 1 : 0);
    page.type("Integration Time 0", "1.5");
    page.press(Qt::Key_Return);
    page.tab()->setProperty("hflipImage", true);
    page.settle();
    QVERIFY(page.shown("FPA Gain") != gain);
    QVERIFY(page.item("Integration Time 0").property("editText").toString() != time);
    page.PageDriver::choose("Load State");
    page.settle();
    page.click("Night");
    page.click("Load");
    QTRY_VERIFY(!page.tabModel("cameraState")->property("loading").toBool());
    page.settle();
    QCOMPARE(page.shown("FPA Gain"), gain);
    QCOMPARE(page.item("Integration Time 0").property("editText").toString(), time);
    QVERIFY(page.findText(time));
    QVERIFY(!page.item("Flip Horizontally").property("highlighted").toBool());
}

ZVT_TEST(tst_SetupTabReads)
#include "tst_SetupTabReads.moc"
