#include "tests/page/MfgCameraPage.h"
#include "tests/support/Test.h"

#include <QScopeGuard>

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
    void aLongFactHasAToolTip();
    void aModelIsChosen_data();
    void aModelIsChosen();
    void theKeysStayInTheTable();
    void choosingNarrowsTheTable();
    void applyWritesFiveValues_data();
    void applyWritesFiveValues();
    void applyWithANewSerialWritesTheOthersToo();
    void applyDoesNotRead();
    void aModelWithTheSameNumbersStaysChosen();
    void aModelWithTheSameNumbersStaysChosenInANarrowerTable();
    void theCameraIsFoundByItsName_data();
    void theCameraIsFoundByItsName();
    void nothingIsChosenDuringARead_data();
    void nothingIsChosenDuringARead();

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
    void aCameraThatBecomesUnknownHasNoRow_data();
    void aCameraThatBecomesUnknownHasNoRow();
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

void tst_MfgTabCamera::aLongFactHasAToolTip()
{
    const auto unscript = qScopeGuard([] { emulator::Sdk::gate().script("zvtGetDetectorTypeName", {}); });
    const QString name = QStringLiteral("material ").repeated(20).trimmed();
    emulator::Sdk::gate().script("zvtGetDetectorTypeName", name);
    MfgCameraPage page;
    QCOMPARE(page.fact("Detector"), name);
    QTest::mouseMove(&page.window(), page.middle("Detector"));
    QTRY_COMPARE(page.hint(), name);
    // The others are complete.
    QTest::mouseMove(&page.window(), page.middle("ROIC"));
    QTRY_COMPARE(page.hint(), "");
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

void tst_MfgTabCamera::aModelWithTheSameNumbersStaysChosen()
{
    MfgCameraPage page([](emulator::Camera &) {}, "low-cost");
    QCOMPARE(page.models(), QStringList({"Tansy 384", "Tansy 384 X", "Tansy 384 G"}));
    QCOMPARE(page.current(), "Tansy 384");
    page.click("Tansy 384 G");
    page.settle();
    QVERIFY(page.isCurrent("Tansy 384 G"));
    page.search("tansy");
    QCOMPARE(page.rows(), 3);
    QVERIFY(page.isCurrent("Tansy 384 G"));
    QCOMPARE(page.identityOf("selectedFilteredIndex").toInt(), 2);
    // Another model with its numbers is not in its place.
    page.search("export");
    QCOMPARE(page.models(), QStringList("Tansy 384 X"));
    QCOMPARE(page.current(), "");
    QVERIFY(!page.enabled("Apply Camera Settings"));
    page.search("");
    QVERIFY(page.isCurrent("Tansy 384 G"));
    const QStringList commands = page.commandsOf([&] { page.click("Apply Camera Settings"); });
    QCOMPARE(commands.first(), "zvtSetCameraModel \"Tansy 384 G\"");
    QCOMPARE(commands.at(3), "zvtSetPleoraBoardType 1");
    page.refresh("Camera Settings");
    QVERIFY(page.isCurrent("Tansy 384 G"));
}

// The Pleora board of the model is another one than the camera's, and is set after the rows have changed.
void tst_MfgTabCamera::aModelWithTheSameNumbersStaysChosenInANarrowerTable()
{
    MfgCameraPage page([](emulator::Camera &camera) { camera.gate().failAlways("zvtGetReadout"); }, "low-cost");
    QVERIFY(page.rows() > 40);
    page.search("tansy 384");
    page.click("Tansy 384 G");
    page.settle();
    QVERIFY(page.isCurrent("Tansy 384 G"));
    page.search("");
    QCOMPARE(page.rows(), 3);
    QVERIFY(page.isCurrent("Tansy 384 G"));
    QCOMPARE(page.identityOf("pleoraBoardType").toInt(), 1);
}

void tst_MfgTabCamera::theCameraIsFoundByItsName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("expected");
    QTest::newRow("first") << "Tansy 384"
                           << "Tansy 384";
    QTest::newRow("second") << "Tansy 384 X"
                            << "Tansy 384 X";
    QTest::newRow("another Pleora board") << "Tansy 384 G"
                                          << "Tansy 384 G";
    QTest::newRow("a name of its own") << "Prototype 7"
                                       << "Tansy 384";
    QTest::newRow("name of a camera with other numbers") << "Campion 640"
                                                         << "Tansy 384";
}

// The camera has the numbers of three models.
void tst_MfgTabCamera::theCameraIsFoundByItsName()
{
    QFETCH(const QString, name);
    QFETCH(const QString, expected);
    MfgCameraPage page([&](emulator::Camera &camera) { camera.otherClient().set("identity.model", name); }, "low-cost");
    QCOMPARE(page.identityOf("model").toString(), name);
    QCOMPARE(page.current(), expected);
    page.search("tansy");
    QCOMPARE(page.current(), expected);
    QVERIFY(page.set("identity.model", "Tansy 384 X"));
    page.refresh("Camera Settings");
    QVERIFY(page.isCurrent("Tansy 384 X"));
}

void tst_MfgTabCamera::nothingIsChosenDuringARead_data()
{
    QTest::addColumn<QString>("other");
    QTest::newRow("Search") << "Serial";
    QTest::newRow("Serial") << "Search";
}

// The field that the operator is using keeps the section enabled.
void tst_MfgTabCamera::nothingIsChosenDuringARead()
{
    QFETCH(const QString, other);
    const QString used = QString::fromLatin1(QTest::currentDataTag());
    MfgCameraPage page;
    page.item(used).forceActiveFocus(Qt::TabFocusReason);
    page.gate().hold("zvtGetBoardType");
    QVERIFY(QMetaObject::invokeMethod(page.identity(), "refresh"));
    QVERIFY(page.gate().waitHeld("zvtGetBoardType"));
    page.awaitFrame();
    QVERIFY(page.enabled(used));
    for (const QString &name : {other, QStringLiteral("Models")})
        QVERIFY2(!page.enabled(name), qPrintable(name));
    page.click("Campion 640");
    QVERIFY(page.isCurrent("Campion 640 V"));
    page.gate().release("*");
    page.settle();
    for (const QString &name : {other, QStringLiteral("Models")})
        QVERIFY2(page.enabled(name), qPrintable(name));
    page.click("Campion 640");
    QVERIFY(page.isCurrent("Campion 640"));
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

void tst_MfgTabCamera::aCameraThatBecomesUnknownHasNoRow_data()
{
    QTest::addColumn<std::string>("call");
    for (const char *call : {"zvtGetBoardType", "zvtGetCameraType", "zvtGetCameraSubtype", "zvtGetReadout"})
        QTest::newRow(call) << std::string(call);
}

void tst_MfgTabCamera::aCameraThatBecomesUnknownHasNoRow()
{
    QFETCH(const std::string, call);
    MfgCameraPage page;
    QCOMPARE(page.current(), "Campion 640 V");
    page.gate().script(call, 77);
    page.refresh("Camera Settings");
    QCOMPARE(page.current(), "");
    QCOMPARE(page.facts(), QStringList({"", "", ""}));
    QVERIFY(!page.enabled("Apply Camera Settings"));
    page.gate().script(call, {});
    page.refresh("Camera Settings");
    QCOMPARE(page.current(), "Campion 640 V");
    QVERIFY(page.enabled("Apply Camera Settings"));
}

ZVT_TEST(tst_MfgTabCamera)
#include "tst_MfgTabCamera.moc"
