#include "tests/page/MfgCameraPage.h"
#include "tests/support/Test.h"

namespace
{

const QStringList writesOfTheCamera{"zvtSetCameraModel \"Campion 640 V\"", "zvtSetCameraType 6",
                                    "zvtSetCameraSubtype 1", "zvtSetPleoraBoardType 2", "zvtSetCameraSN \"ZE-100008\""};

} // namespace

/// The section "Camera Settings" of the Mfg page: the table of models, and the serial number.
class tst_MfgTabCamera : public Test
{
    Q_OBJECT

private slots:
    void theTableIsAtTheRowOfTheCamera();
    void theRowsShowNumbersAndNames();
    void theFactsAreHiddenDuringARead();
    void aModelIsChosen_data();
    void aModelIsChosen();
    void theKeysStayInTheTable();
    void choosingNarrowsTheTable();
    void applyWritesFiveValues_data();
    void applyWritesFiveValues();
    void applyWithANewSerialWritesTheOthersToo();
    void applyDoesNotRead();

    void serialIsStoredAtEachKey();
    void aRefreshDiscardsEdits();
    void theShownTableReturnsToTheRowOfTheCamera();
    void theTableReturnsWithoutARead();

    void searchFilters();
    void aSearchWithoutMatchDisablesApply();
    void searchKeepsTheChosenModel();
    void withoutNumbersAllModelsAreShown_data();
    void withoutNumbersAllModelsAreShown();
    void anUnknownCameraHasNoRow();
};

void tst_MfgTabCamera::theTableIsAtTheRowOfTheCamera()
{
    MfgCameraPage page;
    QCOMPARE(page.models(), QStringList({"Campion 640", "Campion 640 V"}));
    QCOMPARE(page.current(), "Campion 640 V");
    for (const bool current : {false, true})
        QCOMPARE(page.madeRows().value(current)->property("current").toBool(), current);
    QCOMPARE(page.identityOf("selectedFilteredIndex").toInt(), 1);
    QCOMPARE(page.facts(), QStringList({"Linden", "InSb", "R640-D"}));
    QCOMPARE(page.text("Serial"), "ZE-100008");
    QVERIFY(page.enabled("Apply Camera Settings"));
    QVERIFY(!page.primary("Apply Camera Settings"));
}

void tst_MfgTabCamera::theRowsShowNumbersAndNames()
{
    MfgCameraPage page;
    for (const char *heading : {"Model", "Type", "Subtype", "Pleora Board", "Wheel", "Variant"})
        QVERIFY2(page.findText(heading), heading);
    QMap<double, QString> texts;
    for (const QQuickItem *text : page.shownTexts(page.item("Campion 640 V")))
        texts.insert(text->mapToScene({}).x(), text->property("text").toString());
    QCOMPARE(
        texts.values(),
        QStringList({"Campion 640 V", "6: Campion", "1: Science, vacuum", "2: GigE, two ports", "Yes", "0: Standard"}));
}

void tst_MfgTabCamera::theFactsAreHiddenDuringARead()
{
    MfgCameraPage page;
    const double place = page.item("Models").mapToScene({}).y();
    page.gate().hold("zvtGetBoardType");
    page.click("Refresh Camera Settings");
    QVERIFY(page.gate().waitHeld("zvtGetBoardType"));
    page.awaitFrame();
    for (const char *name : {"Board Set", "Detector", "ROIC"})
        QVERIFY2(!page.find(name), name);
    QCOMPARE(page.item("Models").mapToScene({}).y(), place);
    page.gate().release("*");
    page.settle();
    QCOMPARE(page.facts(), QStringList({"Linden", "InSb", "R640-D"}));
}

void tst_MfgTabCamera::aModelIsChosen_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::newRow("mouse") << false;
    QTest::newRow("keyboard") << true;
}

void tst_MfgTabCamera::aModelIsChosen()
{
    QFETCH(const bool, byKeyboard);
    MfgCameraPage page;
    QCOMPARE(page.commandsOf([&] {
        if (byKeyboard)
            page.step("Models", Qt::Key_Up);
        else
            page.click("Campion 640");
    }),
             QStringList());
    QCOMPARE(page.current(), "Campion 640");
    QCOMPARE(page.identityOf("selectedFilteredIndex").toInt(), 0);
    QCOMPARE(page.identityOf("model").toString(), "Campion 640");
    const QList<std::pair<const char *, int>> numbers{{"cameraType", 6}, {"cameraSubType", 0},   {"detector", 0},
                                                      {"readout", 2},    {"pleoraBoardType", 2}, {"variant", 0}};
    for (const auto &[property, number] : numbers)
        QCOMPARE(page.identityOf(property).toInt(), number);
    QVERIFY(page.primary("Apply Camera Settings"));
}

void tst_MfgTabCamera::theKeysStayInTheTable()
{
    MfgCameraPage page;
    page.step("Models", Qt::Key_Down);
    QCOMPARE(page.current(), "Campion 640 V");
    page.step("Models", Qt::Key_Home);
    page.step("Models", Qt::Key_Up);
    QCOMPARE(page.current(), "Campion 640");
    page.step("Models", Qt::Key_End);
    QCOMPARE(page.current(), "Campion 640 V");
}

// The detector could not be read, so the table is not filtered by numbers.
void tst_MfgTabCamera::choosingNarrowsTheTable()
{
    MfgCameraPage page([](emulator::Camera &camera) { camera.gate().failAlways("zvtGetDetectorType"); });
    const int all = page.rows();
    QVERIFY(all > 40);
    QCOMPARE(page.current(), QString());
    page.search("campion 1280");
    QCOMPARE(page.models(), QStringList({"Campion 1280", "Campion 1280 V", "Rowan prototype"}));
    page.click("Campion 1280 V");
    page.settle();
    QCOMPARE(page.current(), "Campion 1280 V");
    page.search("");
    QCOMPARE(page.models(), QStringList({"Campion 1280", "Campion 1280 V"}));
    QCOMPARE(page.current(), "Campion 1280 V");
    QCOMPARE(page.identityOf("model").toString(), "Campion 1280 V");
    QCOMPARE(page.identityOf("pleoraBoardType").toInt(), 3);
    QCOMPARE(page.facts(), QStringList({"Linden", "SLS", "R1280-D"}));
}

void tst_MfgTabCamera::applyWritesFiveValues_data() { aModelIsChosen_data(); }

void tst_MfgTabCamera::applyWritesFiveValues()
{
    QFETCH(const bool, byKeyboard);
    MfgCameraPage page;
    page.click("Campion 640");
    page.settle();
    QStringList expected = writesOfTheCamera;
    expected[0] = "zvtSetCameraModel \"Campion 640\"";
    expected[2] = "zvtSetCameraSubtype 0";
    QCOMPARE(page.commandsOf([&] { page.use("Apply Camera Settings", byKeyboard); }), expected);
    QVERIFY(!page.primary("Apply Camera Settings"));
    page.refresh("Camera Settings");
    QCOMPARE(page.current(), "Campion 640");
}

void tst_MfgTabCamera::applyWithANewSerialWritesTheOthersToo()
{
    MfgCameraPage page;
    page.enter(page.item("Serial"), "ZE-7");
    QStringList expected = writesOfTheCamera;
    expected.last() = "zvtSetCameraSN \"ZE-7\"";
    QCOMPARE(page.commandsOf([&] { page.click("Apply Camera Settings"); }), expected);
    page.refresh("Camera Settings");
    QCOMPARE(page.text("Serial"), "ZE-7");
}

void tst_MfgTabCamera::applyDoesNotRead()
{
    MfgCameraPage page;
    QCOMPARE(page.calls("zvtGetBoardType", [&] { page.click("Apply Camera Settings"); }), 0);
}

void tst_MfgTabCamera::serialIsStoredAtEachKey()
{
    MfgCameraPage page;
    page.item("Serial").forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_A, Qt::ControlModifier);
    QStringList serials;
    const QStringList commands = page.commandsOf([&] {
        for (const char *key : {"Z", "1", "9"}) {
            page.PageDriver::type(key);
            serials << page.identityOf("serial").toString();
        }
    });
    QCOMPARE(serials, QStringList({"Z", "Z1", "Z19"}));
    QCOMPARE(commands, QStringList());
    QVERIFY(page.primary("Apply Camera Settings"));
    // Also in the middle of the text.
    page.press(Qt::Key_Left);
    page.PageDriver::type("5");
    page.PageDriver::type("6");
    QCOMPARE(page.text("Serial"), "Z1569");
    QCOMPARE(page.identityOf("serial").toString(), "Z1569");
}

void tst_MfgTabCamera::aRefreshDiscardsEdits()
{
    MfgCameraPage page;
    page.click("Campion 640");
    page.settle();
    page.enter(page.item("Serial"), "X");
    page.refresh("Camera Settings");
    QCOMPARE(page.text("Serial"), "ZE-100008");
    QCOMPARE(page.current(), "Campion 640 V");
    QCOMPARE(page.identityOf("cameraSubType").toInt(), 1);
    QVERIFY(!page.primary("Apply Camera Settings"));
}

void tst_MfgTabCamera::theShownTableReturnsToTheRowOfTheCamera()
{
    MfgCameraPage page;
    page.click("Campion 640");
    page.settle();
    page.showTab(0);
    page.showTab(MfgPage::tabIndex);
    QCOMPARE(page.current(), "Campion 640 V");
    QCOMPARE(page.identityOf("selectedFilteredIndex").toInt(), 1);
}

// The model may be read or changed while the page is hidden.
void tst_MfgTabCamera::theTableReturnsWithoutARead()
{
    MfgCameraPage page;
    page.toggle("Camera Settings");
    page.showTab(0);
    page.identity()->setProperty("cameraSubType", 0);
    QCOMPARE(page.calls("zvtGetBoardType", [&] { page.showTab(MfgPage::tabIndex); }), 0);
    QCOMPARE(page.identityOf("selectedFilteredIndex").toInt(), 0);
}

void tst_MfgTabCamera::searchFilters()
{
    MfgCameraPage page;
    page.search("vacuum");
    QCOMPARE(page.models(), QStringList{"Campion 640 V"});
    QCOMPARE(page.current(), "Campion 640 V");
    QCOMPARE(page.identityOf("selectedFilteredIndex").toInt(), 0);
    page.search("linden 640");
    QCOMPARE(page.models(), QStringList({"Campion 640", "Campion 640 V"}));
    QCOMPARE(page.current(), "Campion 640 V");
    page.search("  ");
    QCOMPARE(page.rows(), 2);
}

void tst_MfgTabCamera::aSearchWithoutMatchDisablesApply()
{
    MfgCameraPage page;
    page.search("nothing");
    QCOMPARE(page.rows(), 0);
    QVERIFY(page.findText("No model matches."));
    QVERIFY(!page.enabled("Apply Camera Settings"));
    QCOMPARE(page.facts(), QStringList({"", "", ""}));
    page.item("Models").forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_Down);
    page.item("Search").forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_Escape);
    page.settle();
    QCOMPARE(page.current(), "Campion 640 V");
    QVERIFY(page.enabled("Apply Camera Settings"));
}

void tst_MfgTabCamera::searchKeepsTheChosenModel()
{
    MfgCameraPage page;
    page.click("Campion 640");
    page.settle();
    page.search("vacuum");
    QCOMPARE(page.current(), QString());
    QVERIFY(!page.enabled("Apply Camera Settings"));
    page.search("campion");
    QCOMPARE(page.current(), "Campion 640");
    QCOMPARE(page.identityOf("model").toString(), "Campion 640");
}

void tst_MfgTabCamera::withoutNumbersAllModelsAreShown_data()
{
    QTest::addColumn<int>("rows");
    QTest::newRow("zvtGetBoardType") << 45;
    QTest::newRow("zvtGetReadout") << 45;
    QTest::newRow("zvtGetCameraType") << 2;
}

void tst_MfgTabCamera::withoutNumbersAllModelsAreShown()
{
    QFETCH(const int, rows);
    MfgCameraPage page([](emulator::Camera &camera) { camera.gate().failAlways(QTest::currentDataTag()); });
    QCOMPARE(page.rows(), rows);
    QCOMPARE(page.current(), QString());
    QVERIFY(!page.enabled("Apply Camera Settings"));
}

void tst_MfgTabCamera::anUnknownCameraHasNoRow()
{
    MfgCameraPage page([](emulator::Camera &) {}, "edge-values");
    QCOMPARE(page.rows(), 0);
    QVERIFY(page.findText("No model matches."));
    QVERIFY(!page.enabled("Apply Camera Settings"));
}

ZVT_TEST(tst_MfgTabCamera)
#include "tst_MfgTabCamera.moc"
