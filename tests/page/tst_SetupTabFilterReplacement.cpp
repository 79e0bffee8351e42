#include "tests/page/FilterWheelPage.h"
#include "tests/support/Test.h"

/// The replacement of a filter in the filter wheel, and the scan of the wheel.
class tst_SetupTabFilterReplacement : public Test
{
    Q_OBJECT

private slots:
    void fixedFiltersAreNotReplaced();
    void replacementOpensTheDialog_data();
    void replacementOpensTheDialog();
    void dialogScansOnlyWhenAccepted_data();
    void dialogScansOnlyWhenAccepted();
    void dialogOpensOnlyForAClick();
    void wheelIsScanned();
};

void tst_SetupTabFilterReplacement::fixedFiltersAreNotReplaced()
{
    FilterWheelPage page("everything",
                         [](emulator::Camera &camera) { camera.changeMakeUp("hasReplaceableFilters", false); });
    QVERIFY(page.findText("Open"));
    QVERIFY(!page.findText("Replace"));
    QVERIFY(!page.find("Scan Filter Wheel"));
    QCOMPARE(page.rowOf("Open"), QStringList({"Open", "1", "Select"}));
}

void tst_SetupTabFilterReplacement::replacementOpensTheDialog_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QStringList>("commands");
    QTest::newRow("another filter") << "Replace Open" << QStringList("zvtSetCurrentFilterID 1");
    QTest::newRow("the filter in use") << "Replace SP 5.00 um" << QStringList();
}

void tst_SetupTabFilterReplacement::replacementOpensTheDialog()
{
    QFETCH(const QString, button);
    QFETCH(const QStringList, commands);
    FilterWheelPage page;
    QCOMPARE(page.commandsOf([&] { page.click(button); }), commands);
    QVERIFY(page.findText("Replace Filter"));
    QVERIFY(page.findText(instructions));
    page.press(Qt::Key_Escape);
    QTRY_VERIFY(!page.findText("Replace Filter"));
    // Each replacement has its dialog, once.
    QCOMPARE(page.commandsOf([&] { page.click("Select BP 4.26 um"); }), QStringList("zvtSetCurrentFilterID 25"));
    QVERIFY(!page.findText("Replace Filter"));
    page.click(button);
    page.settle();
    QVERIFY(page.findText("Replace Filter"));
}

void tst_SetupTabFilterReplacement::dialogScansOnlyWhenAccepted_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<QStringList>("commands");
    QTest::newRow("OK") << Qt::Key_Return << QStringList("zvtScanFilters");
    QTest::newRow("Esc") << Qt::Key_Escape << QStringList();
}

void tst_SetupTabFilterReplacement::dialogScansOnlyWhenAccepted()
{
    QFETCH(const Qt::Key, key);
    QFETCH(const QStringList, commands);
    FilterWheelPage page;
    page.click("Replace Open");
    page.settle();
    QVERIFY(page.find("OK"));
    QCOMPARE(page.commandsOf([&] { page.press(key); }), commands);
    QVERIFY(!page.find("OK"));
    QVERIFY(page.findText("Open"));
}

void tst_SetupTabFilterReplacement::dialogOpensOnlyForAClick()
{
    FilterWheelPage page;
    QMetaObject::invokeMethod(page.wheel(), "replaceFilter", Q_ARG(int, 0));
    page.settle();
    QCOMPARE(page.markOf("Open"), blue);
    QVERIFY(!page.findText("Replace Filter"));
}

void tst_SetupTabFilterReplacement::wheelIsScanned()
{
    FilterWheelPage page;
    QCOMPARE(page.commandsOf([&] { page.click("Scan Filter Wheel"); }), QStringList("zvtScanFilters"));
    page.item("Scan Filter Wheel").forceActiveFocus(Qt::TabFocusReason);
    QCOMPARE(page.commandsOf([&] { page.press(Qt::Key_Return); }), QStringList("zvtScanFilters"));
    QVERIFY(page.item("Scan Filter Wheel").hasActiveFocus());
}

ZVT_TEST(tst_SetupTabFilterReplacement)
#include "tst_SetupTabFilterReplacement.moc"
