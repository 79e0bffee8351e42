#include "tests/page/MfgCameraPage.h"
#include "tests/support/Test.h"

#include <dlfcn.h>

#include <algorithm>
#include <array>
#include <functional>

#include "zvt/zvtsdk.h"
#include "zvt/zvttypes.h"

namespace
{

constexpr int count = 1000;

/// The row of the camera of the page.
constexpr int cameraRow = 50;

/// A table of models in place of the SDK's; null while the SDK's is used.
const zvtSModelInfo *otherTable = nullptr;

} // namespace

// The dynamic linker prefers a function of the program to that of the SDK's library, also for the plug-in.
const void *zvtGetModelInfoTable()
{
    if (otherTable != nullptr)
        return otherTable;
    static const auto ofTheSdk
        = reinterpret_cast<decltype(&zvtGetModelInfoTable)>(dlsym(RTLD_NEXT, "zvtGetModelInfoTable"));
    return ofTheSdk();
}

namespace
{

/// The row that has the name of the row two before it.
constexpr int namesake = 994;

QByteArray nameOf(int row)
{
    return QByteArray("Model-") + QByteArray::number(row == namesake ? row - 2 : row).rightJustified(4, '0');
}

bool isCooled(int row) { return row % 10 == 0; }

/// Whether the row has the five numbers of the row two before it.
bool isTwin(int row) { return row % 10 == 4; }

/// Every second row has the board set, the detector and the readout circuit of the camera. The others differ in one of
/// these, but each has the type and the subtype of the row before. No two rows have all five numbers in common, but for
/// the twins: these differ in the Pleora board and the variant, and but for the namesake in the name.
const zvtSModelInfo *manyModels()
{
    static std::array<QByteArray, count> names;
    static std::array<zvtSModelInfo, count + 1> table{};
    for (int row = 0; row < count; ++row) {
        names[row] = nameOf(row);
        zvtSModelInfo &info = table[row];
        info.boardSet = row % 6 == 1 ? 4 : 5;
        info.detectorType = row % 6 == 3 ? 1 : 0;
        info.roicType = row % 6 == 5 ? 1 : 2;
        const int kind = isTwin(row) ? row - 2 : row;
        info.type = static_cast<uint8_t>(kind / 8);
        info.subType = static_cast<uint8_t>(kind / 2 % 4);
        info.pleoraBoard = static_cast<uint8_t>(row % 4);
        info.variant = static_cast<uint8_t>(row % 4);
        info.name = names[row].constData();
        info.subTypeName = isCooled(row) ? "Cooled" : "Warm";
    }
    return table.data();
}

/// The names of the rows for which `fits` returns true.
QStringList modelsWhere(const std::function<bool(int)> &fits)
{
    QStringList names;
    for (int row = 0; row < count; ++row)
        if (fits(row))
            names << QString::fromLatin1(nameOf(row));
    return names;
}

bool isOfCamera(int row) { return row % 2 == 0; }

/// The most rows that are made for a view of 240 pixels, with those before and after it.
constexpr int mostRows = 40;

} // namespace

/// The table of the section "Camera Settings" of the Mfg page with 1 000 models.
class tst_MfgTabCameraMany : public Test
{
    Q_OBJECT

private slots:
    void initTestCase() { otherTable = manyModels(); }
    void cleanupTestCase() { otherTable = nullptr; }

    void theTableIsAtTheRowOfTheCamera();
    void onlyVisibleRowsAreMade();
    void textAndNumbersFilterTogether_data();
    void textAndNumbersFilterTogether();
    void theChosenModelIsFoundAgain_data();
    void theChosenModelIsFoundAgain();
    void theChosenModelIsFoundInANarrowerTable();
    void theChosenTwinStays_data();
    void theChosenTwinStays();
    void theCameraIsFoundAmongTwins_data();
    void theCameraIsFoundAmongTwins();
    void eachModelOfTheCameraIsFound();
};

void tst_MfgTabCameraMany::theTableIsAtTheRowOfTheCamera()
{
    MfgCameraPage page;
    QCOMPARE(page.rows(), modelsWhere(isOfCamera).size());
    QCOMPARE(page.current(), QString::fromLatin1(nameOf(cameraRow)));
    QCOMPARE(page.identityOf("selectedFilteredIndex").toInt(), cameraRow / 2);
    QVERIFY(page.find(nameOf(cameraRow)));
}

// The detector could not be read, so no row is left out.
void tst_MfgTabCameraMany::onlyVisibleRowsAreMade()
{
    MfgCameraPage page([](emulator::Camera &camera) { camera.gate().failAlways("zvtGetDetectorType"); });
    QCOMPARE(page.rows(), count);
    const auto made = [&page] {
        const auto items = page.item("Models").property("contentItem").value<QQuickItem *>()->childItems();
        return std::ranges::count_if(items,
                                     [](const QQuickItem *item) { return item->inherits("QQuickItemDelegate"); });
    };
    QVERIFY2(made() >= 7 && made() < mostRows, qPrintable(QString::number(made())));
    page.item("Models").forceActiveFocus(Qt::TabFocusReason);
    for (int step = 0; step < 40; ++step)
        page.press(Qt::Key_PageDown);
    page.settle();
    QVERIFY2(made() < mostRows, qPrintable(QString::number(made())));
}

void tst_MfgTabCameraMany::textAndNumbersFilterTogether_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("byNumbers");
    QTest::addColumn<QStringList>("expected");
    for (const bool byNumbers : {true, false}) {
        const char *which = byNumbers ? "the camera's" : "all";
        const auto add = [&](const char *text, const std::function<bool(int)> &fits) {
            QTest::addRow("%s, \"%s\"", which, text)
                << text << byNumbers
                << modelsWhere([&](int row) { return fits(row) && (!byNumbers || isOfCamera(row)); });
        };
        add("", [](int) { return true; });
        add("MODEL", [](int) { return true; });
        add("cooled", isCooled);
        add("-099", [](int row) { return row / 10 == 99; });
        add("cooled -05", [](int row) { return row / 100 == 5 && isCooled(row); });
        add("model-0051", [](int row) { return row == 51; });
        add("model-0051 cooled", [](int) { return false; });
    }
}

void tst_MfgTabCameraMany::textAndNumbersFilterTogether()
{
    QFETCH(const QString, text);
    QFETCH(const bool, byNumbers);
    QFETCH(const QStringList, expected);
    MfgCameraPage page([&](emulator::Camera &camera) {
        if (!byNumbers)
            camera.gate().failAlways("zvtGetDetectorType");
    });
    page.search(text);
    QCOMPARE(page.rows(), expected.size());
    // The table is at the camera's row, if it has one.
    const qsizetype row = byNumbers ? expected.indexOf(QString::fromLatin1(nameOf(cameraRow))) : -1;
    QCOMPARE(page.current(), row < 0 ? QString() : expected.at(row));
    if (row >= 0)
        QCOMPARE(page.identityOf("selectedFilteredIndex").toInt(), row);
    const QStringList made = page.models();
    if (!made.isEmpty())
        QCOMPARE(made, expected.mid(expected.indexOf(made.first()), made.size()));
}

void tst_MfgTabCameraMany::theChosenModelIsFoundAgain_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("row");
    QTest::newRow("first") << int(Qt::Key_Home) << 0;
    QTest::newRow("next") << int(Qt::Key_Down) << cameraRow + 2;
    QTest::newRow("last") << int(Qt::Key_End) << count - 2;
}

void tst_MfgTabCameraMany::theChosenModelIsFoundAgain()
{
    QFETCH(const int, key);
    QFETCH(const int, row);
    const QString name = QString::fromLatin1(nameOf(row));
    MfgCameraPage page;
    page.step("Models", Qt::Key(key));
    QCOMPARE(page.current(), name);
    QCOMPARE(page.identityOf("selectedFilteredIndex").toInt(), row / 2);
    const zvtSModelInfo &chosen = otherTable[row];
    QCOMPARE(page.identityOf("model").toString(), name);
    const QList<std::pair<const char *, int>> numbers{
        {"cameraType", chosen.type},  {"cameraSubType", chosen.subType},       {"detector", chosen.detectorType},
        {"readout", chosen.roicType}, {"pleoraBoardType", chosen.pleoraBoard}, {"variant", chosen.variant}};
    for (const auto &[property, number] : numbers)
        QCOMPARE(page.identityOf(property).toInt(), number);
    page.click("Apply Camera Settings");
    page.settle();
    page.step("Models", key == Qt::Key_Home ? Qt::Key_End : Qt::Key_Home);
    QVERIFY(page.current() != name);
    page.refresh("Camera Settings");
    QCOMPARE(page.current(), name);
    QCOMPARE(page.identityOf("selectedFilteredIndex").toInt(), row / 2);
    QVERIFY(page.find(name));
    page.search(name);
    QCOMPARE(page.models(), QStringList(name));
    QCOMPARE(page.current(), name);
    page.search(row == 0 ? "" : "cooled");
    QCOMPARE(page.current(), isCooled(row) ? name : QString());
}

// Not yet filtered by numbers, a table becomes so by the first choice.
void tst_MfgTabCameraMany::theChosenModelIsFoundInANarrowerTable()
{
    MfgCameraPage page([](emulator::Camera &camera) { camera.gate().failAlways("zvtGetReadout"); });
    QCOMPARE(page.rows(), count);
    page.step("Models", Qt::Key_End);
    const QStringList likeTheLast = modelsWhere([](int row) { return row % 6 == (count - 1) % 6; });
    QCOMPARE(page.rows(), likeTheLast.size());
    QCOMPARE(page.current(), likeTheLast.last());
    QCOMPARE(page.identityOf("selectedFilteredIndex").toInt(), likeTheLast.size() - 1);
    page.step("Models", Qt::Key_Up);
    QCOMPARE(page.rows(), likeTheLast.size());
    QCOMPARE(page.current(), likeTheLast.at(likeTheLast.size() - 2));
}

void tst_MfgTabCameraMany::theChosenTwinStays_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("twin");
    QTest::addColumn<bool>("byNumbers");
    for (const bool byNumbers : {true, false}) {
        const char *which = byNumbers ? "the camera's" : "all";
        QTest::addRow("%s, first", which) << 502 << 504 << byNumbers;
        QTest::addRow("%s, second", which) << 504 << 502 << byNumbers;
    }
}

void tst_MfgTabCameraMany::theChosenTwinStays()
{
    QFETCH(const int, row);
    QFETCH(const int, twin);
    QFETCH(const bool, byNumbers);
    const QString name = QString::fromLatin1(nameOf(row));
    MfgCameraPage page([&](emulator::Camera &camera) {
        if (!byNumbers)
            camera.gate().failAlways("zvtGetReadout");
    });
    page.search(name);
    page.step("Models", Qt::Key_Home);
    QVERIFY(page.isCurrent(name));
    page.search("");
    QCOMPARE(page.rows(), count / 2);
    QVERIFY(page.isCurrent(name));
    QCOMPARE(page.identityOf("selectedFilteredIndex").toInt(), row / 2);
    page.search(nameOf(twin));
    QCOMPARE(page.models(), QStringList(nameOf(twin)));
    QCOMPARE(page.current(), "");
    QVERIFY(!page.enabled("Apply Camera Settings"));
    page.search("");
    const QStringList commands = page.commandsOf([&] { page.click("Apply Camera Settings"); });
    QCOMPARE(commands.mid(0, 4),
             QStringList({QStringLiteral("zvtSetCameraModel \"%1\"").arg(name), "zvtSetCameraType 62",
                          "zvtSetCameraSubtype 3",
                          QStringLiteral("zvtSetPleoraBoardType %1").arg(otherTable[row].pleoraBoard)}));
    page.gate().failNever();
    page.refresh("Camera Settings");
    QVERIFY(page.isCurrent(name));
    QCOMPARE(page.identityOf("selectedFilteredIndex").toInt(), row / 2);
}

void tst_MfgTabCameraMany::theCameraIsFoundAmongTwins_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("pleoraBoard");
    QTest::addColumn<int>("row");
    QTest::newRow("first") << 502 << nameOf(502) << 2 << 502;
    QTest::newRow("second") << 502 << nameOf(504) << 0 << 504;
    // The name comes before the Pleora board.
    QTest::newRow("second, with the board of the first") << 502 << nameOf(504) << 2 << 504;
    QTest::newRow("second, with another board") << 502 << nameOf(504) << 3 << 504;
    QTest::newRow("name of neither, board of the second") << 502 << QByteArray("Model") << 0 << 502;
    QTest::newRow("namesake, first") << namesake << nameOf(namesake) << 0 << namesake - 2;
    QTest::newRow("namesake, second") << namesake << nameOf(namesake) << 2 << namesake;
    QTest::newRow("namesake, another board") << namesake << nameOf(namesake) << 1 << namesake - 2;
}

void tst_MfgTabCameraMany::theCameraIsFoundAmongTwins()
{
    QFETCH(const int, kind);
    QFETCH(const QByteArray, name);
    QFETCH(const int, pleoraBoard);
    QFETCH(const int, row);
    MfgCameraPage page([&](emulator::Camera &camera) {
        camera.gate().script("zvtGetCameraModel", QString::fromLatin1(name));
        camera.gate().script("zvtGetCameraType", otherTable[kind].type);
        camera.gate().script("zvtGetCameraSubtype", otherTable[kind].subType);
        camera.gate().script("zvtGetPleoraBoardType", pleoraBoard);
    });
    QCOMPARE(page.identityOf("selectedFilteredIndex").toInt(), row / 2);
    QCOMPARE(page.current(), QString::fromLatin1(nameOf(row)));
}

// The row is looked for after each change of the list. A blank matches all.
void tst_MfgTabCameraMany::eachModelOfTheCameraIsFound()
{
    MfgCameraPage page;
    page.item("Search").forceActiveFocus(Qt::TabFocusReason);
    for (int row = 0; row < count; row += 14) {
        page.identity()->setProperty("model", QString::fromLatin1(otherTable[row].name));
        page.identity()->setProperty("cameraType", otherTable[row].type);
        page.identity()->setProperty("cameraSubType", otherTable[row].subType);
        page.identity()->setProperty("pleoraBoardType", otherTable[row].pleoraBoard);
        page.press(page.text("Search").isEmpty() ? Qt::Key_Space : Qt::Key_Backspace);
        QCOMPARE(page.rows(), count / 2);
        QCOMPARE(page.identityOf("selectedFilteredIndex").toInt(), row / 2);
    }
    page.settle();
    QCOMPARE(page.current(), QString::fromLatin1(nameOf(994)));
}

ZVT_TEST(tst_MfgTabCameraMany)
#include "tst_MfgTabCameraMany.moc"
