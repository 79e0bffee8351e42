#include "tests/page/FilterWheelPage.h"
#include "tests/support/Test.h"

/// The section of the filter wheel on the Setup page.
class tst_SetupTabFilterWheel : public Test
{
    Q_OBJECT

private slots:
    void sectionNeedsItsEquipment_data();
    void sectionNeedsItsEquipment();
    void collapsedSectionIsNotRead();
    void sectionReadsBeforeItOpens_data();
    void sectionReadsBeforeItOpens();
    void shownPageReadsAnOpenSection();
    void headerRefreshes();
    void sectionIsOffWithoutACamera();

    void rowsShowTheFilters();
    void panelIsShownDuringARead();
    void emptyListShowsNoRows();

    void filterIsSelected_data();
    void filterIsSelected();
    void selectionByKeyboardKeepsItsPlace();
    void buttonsAreOffWhileTheWheelTurns_data();
    void buttonsAreOffWhileTheWheelTurns();
    void failedTurnShowsTheFilterOfTheNextRead();
    void selectionOfAnotherClientIsShown();

    void disconnectionEndsATurn();
    void longNamesAreElided();
    void nothingIsClipped_data();
    void nothingIsClipped();
    void pageOutlivesItsModel();
};

// The section

void tst_SetupTabFilterWheel::sectionNeedsItsEquipment_data()
{
    QTest::addColumn<bool>("shown");
    QTest::newRow("everything") << true;
    QTest::newRow("discrete-fov") << true;
    QTest::newRow("te-cooler") << false;
    QTest::newRow("low-cost") << false;
    QTest::newRow("bare") << false;
}

void tst_SetupTabFilterWheel::sectionNeedsItsEquipment()
{
    QFETCH(const bool, shown);
    SetupPage page(QTest::currentDataTag());
    QCOMPARE(page.find(section) != nullptr, shown);
}

void tst_SetupTabFilterWheel::collapsedSectionIsNotRead()
{
    SetupPage page;
    QVERIFY(!page.findText("Filter"));
    const size_t mark = page.rig().gate().mark();
    page.showTab(0);
    page.showTab(1);
    QVERIFY(!page.rig().callsSince(mark).contains("zvtGetNumFilters"));
    // A section that has been open is not read any more after it has been collapsed.
    page.click("General Setup");
    page.click(section);
    page.settle();
    page.click(section);
    const size_t again = page.rig().gate().mark();
    page.showTab(0);
    page.showTab(1);
    QVERIFY(!page.rig().callsSince(again).contains("zvtGetNumFilters"));
}

void tst_SetupTabFilterWheel::sectionReadsBeforeItOpens_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::newRow("by mouse") << false;
    QTest::newRow("by keyboard") << true;
}

void tst_SetupTabFilterWheel::sectionReadsBeforeItOpens()
{
    QFETCH(const bool, byKeyboard);
    SetupPage page;
    page.click("General Setup");
    page.rig().gate().hold("zvtGetNumFilters");
    if (byKeyboard) {
        page.item(section).forceActiveFocus(Qt::TabFocusReason);
        page.press(Qt::Key_Return);
    } else {
        page.click(section);
    }
    QVERIFY(page.rig().gate().waitHeld("zvtGetNumFilters"));
    page.awaitFrame();
    QVERIFY(page.findText(busyPanel));
    QVERIFY(page.item(section).property("sectionLoading").toBool());
    page.rig().gate().release("*");
    page.settle();
    QVERIFY(!page.findText(busyPanel));
    QVERIFY(page.findText("Sapphire") == nullptr);
    QVERIFY(page.findText("Open"));
    // Closing does not read.
    const size_t mark = page.rig().gate().mark();
    page.click(section);
    page.settle();
    QVERIFY(!page.rig().callsSince(mark).contains("zvtGetNumFilters"));
    QVERIFY(!page.findText("Open"));
}

void tst_SetupTabFilterWheel::shownPageReadsAnOpenSection()
{
    FilterWheelPage page;
    page.showTab(0);
    const size_t mark = page.gate().mark();
    page.showTab(1);
    QCOMPARE(page.rig().callsSince(mark).count("zvtGetNumFilters"), 1);
    page.rig().camera().disconnect();
    page.settle();
    const size_t again = page.gate().mark();
    page.rig().camera().connect();
    page.settle();
    QCOMPARE(page.rig().callsSince(again).count("zvtGetNumFilters"), 1);
}

void tst_SetupTabFilterWheel::headerRefreshes()
{
    FilterWheelPage page;
    const size_t mark = page.gate().mark();
    page.click("Refresh " + section);
    page.settle();
    QCOMPARE(page.rig().callsSince(mark).count("zvtGetNumFilters"), 1);
    QVERIFY(!page.rig().callsSince(mark).contains("zvtScanFilters"));
    QVERIFY(page.findText("Open"));
}

void tst_SetupTabFilterWheel::sectionIsOffWithoutACamera()
{
    FilterWheelPage page;
    QVERIFY(page.enabled("Select Open"));
    QVERIFY(page.enabled("Replace Open"));
    page.rig().camera().disconnect();
    page.settle();
    QVERIFY(!page.enabled("Select Open"));
    QVERIFY(!page.enabled("Replace Open"));
    QVERIFY(!page.enabled("Scan Filter Wheel"));
    page.rig().camera().connect();
    page.settle();
    QVERIFY(page.enabled("Select Open"));
}

// The list

void tst_SetupTabFilterWheel::rowsShowTheFilters()
{
    FilterWheelPage page;
    QVERIFY(page.findText("Filter"));
    QVERIFY(page.findText("ID"));
    QVERIFY(page.findText("Actions"));
    QCOMPARE(page.rowOf("Open"), QStringList({"Open", "1", "Select", "Replace"}));
    QCOMPARE(page.rowOf("SP 5.00 um"), QStringList({"SP 5.00 um", "13", "Selected", "Replace"}));
    QCOMPARE(page.rowOf("BP 3.30 um"), QStringList({"BP 3.30 um", "21", "Select", "Replace"}));
    QCOMPARE(page.rowOf("BP 4.26 um"), QStringList({"BP 4.26 um", "25", "Select", "Replace"}));
    QCOMPARE(page.markOf("SP 5.00 um"), blue);
    QCOMPARE(page.markOf("Open"), QStringLiteral("none"));
    QVERIFY(page.findText("Open")->mapToScene({}).y() < page.findText("SP 5.00 um")->mapToScene({}).y());
}

void tst_SetupTabFilterWheel::panelIsShownDuringARead()
{
    FilterWheelPage page;
    QVERIFY(!page.findText(busyPanel));
    page.gate().hold("zvtGetFilterIDs");
    page.click("Refresh " + section);
    QVERIFY(page.gate().waitHeld("zvtGetFilterIDs"));
    page.awaitFrame();
    QVERIFY(page.findText(busyPanel));
    QVERIFY(page.object("filterScanBusy"));
    QVERIFY(!page.findText("Open"));
    QVERIFY(!page.enabled("Scan Filter Wheel"));
    page.gate().release("*");
    page.settle();
    QVERIFY(!page.findText(busyPanel));
    // A hidden spinner does not turn.
    QVERIFY(!page.object("filterScanBusy"));
    QVERIFY(page.findText("Open"));
}

void tst_SetupTabFilterWheel::emptyListShowsNoRows()
{
    FilterWheelPage page;
    page.gate().failAlways("zvtGetFilterIDs");
    page.click("Refresh " + section);
    page.settle();
    QVERIFY(!page.findText("Open"));
    QVERIFY(!page.findText("Select"));
    QVERIFY(page.enabled("Scan Filter Wheel"));
    page.gate().failNever();
    page.click("Scan Filter Wheel");
    page.settle();
    QVERIFY(page.findText("Open"));
}

// Selecting

void tst_SetupTabFilterWheel::filterIsSelected_data() { sectionReadsBeforeItOpens_data(); }

void tst_SetupTabFilterWheel::filterIsSelected()
{
    QFETCH(const bool, byKeyboard);
    FilterWheelPage page;
    const auto select = [&] {
        if (byKeyboard) {
            page.item("Select BP 3.30 um").forceActiveFocus(Qt::TabFocusReason);
            page.press(Qt::Key_Space);
        } else {
            page.click("Select BP 3.30 um");
        }
    };
    QCOMPARE(page.commandsOf(select), QStringList("zvtSetCurrentFilterID 21"));
    QCOMPARE(page.rowOf("BP 3.30 um"), QStringList({"BP 3.30 um", "21", "Selected", "Replace"}));
    QCOMPARE(page.rowOf("SP 5.00 um"), QStringList({"SP 5.00 um", "13", "Select", "Replace"}));
    QCOMPARE(page.markOf("BP 3.30 um"), blue);
    QCOMPARE(page.markOf("SP 5.00 um"), QStringLiteral("none"));
    // A read finds the wheel at the filter.
    page.click("Refresh " + section);
    page.settle();
    QCOMPARE(page.markOf("BP 3.30 um"), blue);
}

// The button of the filter that is used disappears. The keyboard goes on from its row.
void tst_SetupTabFilterWheel::selectionByKeyboardKeepsItsPlace()
{
    FilterWheelPage page;
    page.item("Select Open").forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_Return);
    page.settle();
    page.press(Qt::Key_Tab);
    QVERIFY(page.item("Replace Open").hasActiveFocus());
    page.press(Qt::Key_Tab);
    QVERIFY(page.item("Select SP 5.00 um").hasActiveFocus());
}

void tst_SetupTabFilterWheel::buttonsAreOffWhileTheWheelTurns_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QStringList>("row");
    QTest::newRow("to a filter") << "Select Open" << QStringList({"Open", "1", "Replace"});
    QTest::newRow("to replace a filter") << "Replace Open" << QStringList({"Open", "1", "Selected"});
}

void tst_SetupTabFilterWheel::buttonsAreOffWhileTheWheelTurns()
{
    QFETCH(const QString, button);
    QFETCH(const QStringList, row);
    FilterWheelPage page;
    page.startTurn(button);
    QCOMPARE(page.rowOf("Open"), row);
    QCOMPARE(page.markOf("Open"), yellow);
    QVERIFY(page.isBusy("Open"));
    QVERIFY(!page.isBusy("SP 5.00 um"));
    for (const char *other : {"Select SP 5.00 um", "Replace SP 5.00 um", "Select BP 4.26 um", "Replace BP 4.26 um"})
        QVERIFY2(!page.enabled(other), other);
    QVERIFY(!page.findText("Replace Filter"));
    page.endTurn();
    QCOMPARE(page.markOf("Open"), blue);
    QVERIFY(!page.isBusy("Open"));
    QVERIFY(page.enabled("Select SP 5.00 um"));
    QVERIFY(page.enabled("Replace Open"));
}

void tst_SetupTabFilterWheel::failedTurnShowsTheFilterOfTheNextRead()
{
    FilterWheelPage page;
    page.gate().failNext("zvtSetCurrentFilterID");
    page.click("Select Open");
    page.settle();
    QCOMPARE(page.markOf("Open"), blue);
    page.click("Refresh " + section);
    page.settle();
    QCOMPARE(page.markOf("SP 5.00 um"), blue);
    QCOMPARE(page.markOf("Open"), QStringLiteral("none"));
}

void tst_SetupTabFilterWheel::selectionOfAnotherClientIsShown()
{
    FilterWheelPage page;
    page.wheel()->setProperty("selectedFilterIndex", 3);
    page.awaitFrame();
    QCOMPARE(page.markOf("BP 4.26 um"), blue);
    QCOMPARE(page.rowOf("BP 4.26 um"), QStringList({"BP 4.26 um", "25", "Selected", "Replace"}));
    QCOMPARE(page.markOf("SP 5.00 um"), QStringLiteral("none"));
}

// Lifetime and layout

void tst_SetupTabFilterWheel::disconnectionEndsATurn()
{
    FilterWheelPage page;
    page.startTurn("Select Open");
    page.rig().camera().disconnect();
    page.endTurn();
    QVERIFY(page.findText("No camera connected"));
    QCOMPARE(page.markOf("Open"), blue);
    QVERIFY(!page.isBusy("Open"));
    page.rig().camera().connect();
    page.settle();
    QCOMPARE(page.markOf("SP 5.00 um"), blue);
}

void tst_SetupTabFilterWheel::longNamesAreElided()
{
    FilterWheelPage page("everything", [](emulator::Camera &camera) {
        camera.gate().script("zvtGetFilterNameEx", QStringLiteral("A narrow one ").repeated(15));
    });
    QQuickItem *name = page.findText(QStringLiteral("A narrow one ").repeated(15));
    QVERIFY(name->property("truncated").toBool());
    QTest::mouseMove(&page.window(), name->mapToScene({20, 10}).toPoint());
    QTRY_COMPARE(page.hint(), QStringLiteral("A narrow one ").repeated(15));
}

void tst_SetupTabFilterWheel::nothingIsClipped_data()
{
    QTest::addColumn<QString>("profile");
    QTest::newRow("everything") << "everything";
    QTest::newRow("discrete-fov") << "discrete-fov";
}

void tst_SetupTabFilterWheel::nothingIsClipped()
{
    QFETCH(const QString, profile);
    FilterWheelPage page(profile);
    page.page()->setWidth(640);
    page.settle();
    const QQuickItem *tab = page.findText("Open");
    while (!tab->inherits("QQuickFlickable"))
        tab = tab->parentItem();
    const QList<QQuickItem *> texts = PageDriver::shownTexts(*tab);
    for (const QQuickItem *text : texts)
        QVERIFY2(PageDriver::fits(*text, {0, 0, 640, 1700}), qPrintable(text->property("text").toString()));
    QVERIFY(texts.size() > 12);
}

void tst_SetupTabFilterWheel::pageOutlivesItsModel()
{
    FilterWheelPage page;
    page.startTurn("Replace Open");
    page.deleteModel();
    page.endTurn();
    QVERIFY(page.findText("No camera connected"));
    QVERIFY(!page.findText("Replace Filter"));
}

ZVT_TEST(tst_SetupTabFilterWheel)
#include "tst_SetupTabFilterWheel.moc"
