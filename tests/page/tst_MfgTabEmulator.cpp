#include "tests/page/MfgPage.h"
#include "tests/support/Test.h"

namespace
{

const QString section = QStringLiteral("Emulator Settings");

struct EmulatorPage : MfgPage {
    explicit EmulatorPage(const Prepare &prepare = [](emulator::Camera &) {})
        : MfgPage(QStringLiteral("everything"), prepare)
    {
        openOnly(section);
    }

    QVariant value(const char *property) const { return cameraModel()->property(property); }
};

} // namespace

/// The section "Emulator Settings" of the Mfg page.
class tst_MfgTabEmulator : public Test
{
    Q_OBJECT

private slots:
    void theValuesOfTheEmulatorAreShown();
    void switchesAreSet_data();
    void switchesAreSet();
    void thePatternIsChosen();
    void temperaturesAreSet_data();
    void temperaturesAreSet();
    void theChamberRunsAProgram();
    void wrongProgramSpringsBack();
    void othersChangesAreShown_data();
    void othersChangesAreShown();
};

void tst_MfgTabEmulator::theValuesOfTheEmulatorAreShown()
{
    EmulatorPage page;
    for (const char *text : {"Test Pattern", "BB1 Temp", "BB2 Temp", "Chamber Profile"})
        QVERIFY2(page.findText(text), text);
    QVERIFY(!page.checked("Record Start") && page.checked("SSD Transfer"));
    QCOMPARE(page.rowsOf("Test Pattern"),
             QStringList({"Unit Test", "One Blackbody", "Two Blackbodies", "Area Blackbody"}));
    QCOMPARE(page.shown("Test Pattern"), "Unit Test");
    QCOMPARE(page.text("BB1 Temp"), "20.00");
    QCOMPARE(page.text("BB2 Temp"), "35.00");
    QCOMPARE(page.text("Chamber Profile"), "");
}

void tst_MfgTabEmulator::switchesAreSet_data()
{
    QTest::addColumn<QByteArray>("property");
    QTest::newRow("Record Start") << QByteArray("recordStart");
    QTest::newRow("SSD Transfer") << QByteArray("ssdTransfer");
}

void tst_MfgTabEmulator::switchesAreSet()
{
    QFETCH(const QByteArray, property);
    const QString name = QString::fromLatin1(QTest::currentDataTag());
    EmulatorPage page;
    for (const bool byKeyboard : {false, true}) {
        const bool before = page.value(property).toBool();
        page.use(name, byKeyboard);
        page.settle();
        QCOMPARE(page.value(property).toBool(), !before);
        QCOMPARE(page.checked(name), !before);
    }
}

void tst_MfgTabEmulator::thePatternIsChosen()
{
    EmulatorPage page;
    page.choose("Test Pattern", "Area Blackbody");
    QCOMPARE(page.value("testPattern").toInt(), 3);
    page.step("Test Pattern", Qt::Key_Up);
    QCOMPARE(page.value("testPattern").toInt(), 2);
    QCOMPARE(page.shown("Test Pattern"), "Two Blackbodies");
}

void tst_MfgTabEmulator::temperaturesAreSet_data()
{
    QTest::addColumn<QByteArray>("property");
    QTest::newRow("BB1 Temp") << QByteArray("bb1Temp");
    QTest::newRow("BB2 Temp") << QByteArray("bb2Temp");
}

void tst_MfgTabEmulator::temperaturesAreSet()
{
    QFETCH(const QByteArray, property);
    const QString name = QString::fromLatin1(QTest::currentDataTag());
    EmulatorPage page;
    page.enterNumber(name, "-12.5");
    QCOMPARE(page.value(property).toFloat(), -12.5F);
    QCOMPARE(page.text(name), "-12.50");
    // A float holds no more than 3.4e38.
    for (const char *wrong : {"warm", "3.5e38", "-3.5e38", "1e39"}) {
        page.enterNumber(name, wrong);
        QVERIFY2(!page.fault(name).isEmpty(), wrong);
        QCOMPARE(page.value(property).toFloat(), -12.5F);
    }
    page.enterNumber(name, "3.4e38");
    QCOMPARE(page.value(property).toFloat(), 3.4e38F);
}

void tst_MfgTabEmulator::theChamberRunsAProgram()
{
    EmulatorPage page;
    page.enterNumber("Chamber Profile", "0:23,600:60");
    QCOMPARE(page.value("chamberProfile").toString(), "0:23,600:60");
    QCOMPARE(page.text("Chamber Profile"), "0:23,600:60");
}

void tst_MfgTabEmulator::wrongProgramSpringsBack()
{
    EmulatorPage page;
    page.enterNumber("Chamber Profile", "no program");
    QCOMPARE(page.value("chamberProfile").toString(), "");
    QCOMPARE(page.text("Chamber Profile"), "");
}

void tst_MfgTabEmulator::othersChangesAreShown_data()
{
    QTest::addColumn<QString>("way");
    for (const char *way : {"Refresh", "shown again", "connected again"})
        QTest::newRow(way) << way;
}

void tst_MfgTabEmulator::othersChangesAreShown()
{
    QFETCH(const QString, way);
    EmulatorPage page;
    QVERIFY(page.set("emulator./RecordStart", true) && page.set("emulator./Pattern", 1)
            && page.set("emulator./BlackbodyTemp1", 44.5));
    QCOMPARE(page.text("BB1 Temp"), "20.00");
    if (way == "Refresh") {
        page.refresh(section);
    } else if (way == "shown again") {
        page.showTab(0);
        page.showTab(MfgPage::tabIndex);
    } else {
        page.rig().camera().disconnect();
        page.settle();
        page.rig().camera().connect();
        page.settle();
    }
    QVERIFY(page.checked("Record Start"));
    QCOMPARE(page.shown("Test Pattern"), "One Blackbody");
    QCOMPARE(page.text("BB1 Temp"), "44.50");
}

ZVT_TEST(tst_MfgTabEmulator)
#include "tst_MfgTabEmulator.moc"
