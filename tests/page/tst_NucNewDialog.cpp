#include "tests/page/NucWizard.h"
#include "tests/support/Test.h"

namespace
{

enum Type { OnePoint, TwoPoint, OffsetUpdate };

const QStringList temperatureFields{"Low Delta (°C)", "Delta (°C)", "High Delta (°C)",
                                    "Low Temp (°C)",  "Temp (°C)",  "High Temp (°C)"};

} // namespace

/// The settings in the wizard.
class tst_NucNewDialog : public Test
{
    Q_OBJECT

private slots:
    void itBlocksThePage();
    void settingsCanBeChangedWhenTheyAreRead();
    void presetWithACorrectionOpensOnTheOffsetUpdate();
    void onePointIsForManufacturing();
    void typesThatCanBeChosen_data();
    void typesThatCanBeChosen();
    void typeOfTheCameraIsMadeWithoutAChoice_data();
    void typeOfTheCameraIsMadeWithoutAChoice();
    void flagThatCanBeChosen_data();
    void flagThatCanBeChosen();
    void choicesWork_data();
    void choicesWork();
    void choicesFollowTheModel();
    void boxesFollowTheType();
    void temperaturesFollowTheChoices_data();
    void temperaturesFollowTheChoices();
    void setpointTypeIsChosen();
    void numbersAreStored_data();
    void numbersAreStored();
    void frameCountIsCut();
    void wrongTextIsNotStored();
    void limitsAreStored_data();
    void limitsAreStored();
    void nothingIsWrittenBeforeTheStart();
};

void tst_NucNewDialog::itBlocksThePage()
{
    NucWizard wizard;
    QVERIFY(wizard.isOpen());
    QVERIFY(wizard.pageBlocked());
    QVERIFY(!wizard.hostMayClose());
    // The wizard itself is not disabled.
    wizard.click("External Blackbody");
    QVERIFY(wizard.enabled("Next"));
    // The tool bar behind it is.
    wizard.click("Configuration");
    wizard.settle();
    QVERIFY(!wizard.shows("About"));
    wizard.use("Cancel");
    QVERIFY(!wizard.isOpen());
    QVERIFY(!wizard.pageBlocked());
    QVERIFY(wizard.page()->isEnabled());
    QVERIFY(wizard.hostMayClose());
}

void tst_NucNewDialog::settingsCanBeChangedWhenTheyAreRead()
{
    NucWizard wizard;
    wizard.use("Cancel");
    wizard.gate().hold("zvtGetTwinklerSetup");
    wizard.click("Perform New NUC 0");
    QVERIFY(wizard.gate().waitHeld("zvtGetTwinklerSetup"));
    wizard.awaitFrame();
    QVERIFY(wizard.object("nucSettingsBusy"));
    QVERIFY(!wizard.enabled("Two-Point"));
    QVERIFY(!wizard.enabled("Next"));
    QVERIFY(wizard.enabled("Cancel"));
    wizard.gate().release("*");
    wizard.settle();
    QVERIFY(!wizard.object("nucSettingsBusy"));
    QVERIFY(wizard.enabled("Two-Point"));
    QVERIFY(wizard.enabled("Next"));
}

void tst_NucNewDialog::presetWithACorrectionOpensOnTheOffsetUpdate()
{
    NucWizard wizard({.nucName = "Sky"});
    QVERIFY(wizard.checked("Offset Update"));
    QCOMPARE(wizard.setting("nucType").toInt(), OffsetUpdate);
    wizard.use("Two-Point");
    QCOMPARE(wizard.setting("nucType").toInt(), TwoPoint);
    // A later read forces it again.
    QMetaObject::invokeMethod(wizard.process(), "refresh");
    wizard.settle();
    QCOMPARE(wizard.setting("nucType").toInt(), OffsetUpdate);
}

void tst_NucNewDialog::onePointIsForManufacturing()
{
    NucWizard wizard({.type = OnePoint, .detectBadPixels = false});
    wizard.cameraModel()->setProperty("manufacturingMode", true);
    wizard.settle();
    QVERIFY(wizard.checked("One-Point"));
    wizard.cameraModel()->setProperty("manufacturingMode", false);
    wizard.settle();
    QVERIFY(!wizard.shows("One-Point"));
    QVERIFY(!wizard.checked("Two-Point"));
    QVERIFY(!wizard.checked("Offset Update"));
    const size_t mark = wizard.gate().mark();
    wizard.start();
    QVERIFY(wizard.commands(mark).contains("zvtSetNUCType 0"));
}

void tst_NucNewDialog::typesThatCanBeChosen_data()
{
    QTest::addColumn<QString>("nucName");
    QTest::addColumn<bool>("calibrated");
    QTest::addColumn<bool>("creating");
    QTest::addColumn<bool>("updating");
    QTest::newRow("nothing") << "" << false << true << false;
    QTest::newRow("correction") << "Sky" << false << true << true;
    QTest::newRow("calibration") << "" << true << false << false;
    QTest::newRow("both") << "Sky" << true << false << true;
}

void tst_NucNewDialog::typesThatCanBeChosen()
{
    QFETCH(const QString, nucName);
    QFETCH(const bool, calibrated);
    NucWizard wizard({.nucName = nucName, .calibrated = calibrated});
    wizard.cameraModel()->setProperty("manufacturingMode", true);
    wizard.settle();
    QTEST(wizard.enabled("One-Point"), "creating");
    QTEST(wizard.enabled("Two-Point"), "creating");
    QTEST(wizard.enabled("Offset Update"), "updating");
}

void tst_NucNewDialog::typeOfTheCameraIsMadeWithoutAChoice_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("page");
    QTest::newRow("one-point") << int(OnePoint) << "Name";
    QTest::newRow("two-point") << int(TwoPoint) << "A/D Count Limit Low";
    QTest::newRow("offset update") << int(OffsetUpdate) << "Abort";
}

// No type can be chosen for a preset with a calibration and no correction.
void tst_NucNewDialog::typeOfTheCameraIsMadeWithoutAChoice()
{
    QFETCH(const int, type);
    QFETCH(const QString, page);
    NucWizard wizard({.calibrated = true, .type = type});
    QVERIFY(!wizard.enabled("Two-Point"));
    wizard.use("Next");
    QVERIFY(wizard.shows(page));
    QCOMPARE(wizard.setting("nucType").toInt(), type);
}

void tst_NucNewDialog::flagThatCanBeChosen_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("flag");
    QTest::addColumn<bool>("controlled");
    QTest::addColumn<bool>("can");
    for (const int type : {OnePoint, TwoPoint, OffsetUpdate}) {
        QTest::addRow("%d, no flag", type) << type << false << false << false;
        QTest::addRow("%d, flag", type) << type << true << false << (type != TwoPoint);
        QTest::addRow("%d, controlled flag", type) << type << true << true << true;
    }
}

void tst_NucNewDialog::flagThatCanBeChosen()
{
    QFETCH(const int, type);
    QFETCH(const bool, flag);
    QFETCH(const bool, controlled);
    NucWizard wizard({.type = type, .source = 1, .flag = flag, .controlledFlag = controlled});
    QTEST(wizard.enabled("Internal Flag"), "can");
    QVERIFY(wizard.enabled("External Blackbody"));
    QCOMPARE(wizard.shows("Temperature Setpoints"), flag && controlled);
}

void tst_NucNewDialog::choicesWork_data()
{
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("after");
    QTest::addColumn<bool>("byKeyboard");
    for (const bool keyboard : {false, true}) {
        const char *by = keyboard ? "keyboard" : "mouse";
        QTest::addRow("One-Point, %s", by) << QByteArray("nucType") << 2 << 0 << keyboard;
        QTest::addRow("Two-Point, %s", by) << QByteArray("nucType") << 2 << 1 << keyboard;
        QTest::addRow("Offset Update, %s", by) << QByteArray("nucType") << 1 << 2 << keyboard;
        QTest::addRow("Bad Pixel Correction, %s", by) << QByteArray("detectBadPixels") << 1 << 0 << keyboard;
        QTest::addRow("Use Factory Bad Pixels, %s", by) << QByteArray("useFactoryBadPixels") << 1 << 0 << keyboard;
        QTest::addRow("Internal Flag, %s", by) << QByteArray("nucSource") << 0 << 1 << keyboard;
        QTest::addRow("External Blackbody, %s", by) << QByteArray("nucSource") << 1 << 0 << keyboard;
    }
}

void tst_NucNewDialog::choicesWork()
{
    QFETCH(const QByteArray, property);
    QFETCH(const int, before);
    QFETCH(const int, after);
    QFETCH(const bool, byKeyboard);
    const QString name = QString::fromLatin1(QTest::currentDataTag()).section(',', 0, 0);
    NucWizard wizard({.nucName = "Sky"});
    wizard.cameraModel()->setProperty("manufacturingMode", true);
    wizard.process()->setProperty("nucType", TwoPoint);
    wizard.process()->setProperty(property, before);
    wizard.settle();
    QCOMPARE(wizard.checked(name), property == "detectBadPixels" || property == "useFactoryBadPixels");
    wizard.use(name, byKeyboard);
    QCOMPARE(wizard.setting(property).toInt(), after);
    QCOMPARE(wizard.checked(name), property != "detectBadPixels" && property != "useFactoryBadPixels");
}

// Clicks have not destroyed the bindings.
void tst_NucNewDialog::choicesFollowTheModel()
{
    NucWizard wizard({.nucName = "Sky"});
    wizard.use("Two-Point");
    wizard.use("Internal Flag");
    wizard.use("Bad Pixel Correction");
    wizard.process()->setProperty("nucType", OffsetUpdate);
    wizard.process()->setProperty("nucSource", 0);
    wizard.process()->setProperty("detectBadPixels", true);
    wizard.settle();
    QVERIFY(wizard.checked("Offset Update"));
    QVERIFY(!wizard.checked("Two-Point"));
    QVERIFY(wizard.checked("External Blackbody"));
    QVERIFY(!wizard.checked("Internal Flag"));
    QVERIFY(wizard.checked("Bad Pixel Correction"));
}

void tst_NucNewDialog::boxesFollowTheType()
{
    NucWizard wizard;
    for (const int type : {OnePoint, TwoPoint, OffsetUpdate}) {
        wizard.process()->setProperty("nucType", type);
        wizard.settle();
        QCOMPARE(wizard.enabled("Bad Pixel Correction"), type == TwoPoint);
        QCOMPARE(wizard.enabled("Use Factory Bad Pixels"), type != OffsetUpdate);
        QVERIFY(wizard.enabled("Number of frames"));
    }
}

void tst_NucNewDialog::temperaturesFollowTheChoices_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("setpointType");
    QTest::addColumn<QStringList>("fields");
    QTest::newRow("two-point, deltas") << int(TwoPoint) << 0 << QStringList{"Low Delta (°C)", "High Delta (°C)"};
    QTest::newRow("offset update, delta") << int(OffsetUpdate) << 0 << QStringList{"Delta (°C)"};
    QTest::newRow("one-point, delta") << int(OnePoint) << 0 << QStringList{"Delta (°C)"};
    QTest::newRow("two-point, fixed") << int(TwoPoint) << 1 << QStringList{"Low Temp (°C)", "High Temp (°C)"};
    QTest::newRow("offset update, fixed") << int(OffsetUpdate) << 1 << QStringList{"Temp (°C)"};
    QTest::newRow("one-point, fixed") << int(OnePoint) << 1 << QStringList{"Temp (°C)"};
}

void tst_NucNewDialog::temperaturesFollowTheChoices()
{
    QFETCH(const int, type);
    QFETCH(const int, setpointType);
    QFETCH(const QStringList, fields);
    NucWizard wizard({.source = 1});
    wizard.process()->setProperty("nucType", type);
    wizard.process()->setProperty("flagSetpointType", setpointType);
    wizard.settle();
    for (const QString &field : temperatureFields)
        QCOMPARE(wizard.shows(field), fields.contains(field));
    for (const QString &field : fields)
        QVERIFY(wizard.enabled(field));
    QVERIFY(wizard.enabled("Temperature Setpoints"));
    // They are for the flag only.
    wizard.use("External Blackbody");
    for (const QString &field : fields)
        QVERIFY(!wizard.enabled(field));
    QVERIFY(!wizard.enabled("Temperature Setpoints"));
}

void tst_NucNewDialog::setpointTypeIsChosen()
{
    NucWizard wizard({.source = 1});
    wizard.click("Temperature Setpoints");
    QTRY_VERIFY(wizard.findText("Fixed"));
    wizard.settle();
    wizard.click(wizard.findText("Fixed"));
    wizard.settle();
    QCOMPARE(wizard.setting("flagSetpointType").toInt(), 1);
    QVERIFY(wizard.shows("Low Temp (°C)"));
    wizard.process()->setProperty("flagSetpointType", 0);
    QCOMPARE(wizard.item("Temperature Setpoints").property("displayText").toString(), "Ambient + Delta");
    wizard.focus("Temperature Setpoints");
    wizard.press(Qt::Key_Down);
    QCOMPARE(wizard.setting("flagSetpointType").toInt(), 1);
}

void tst_NucNewDialog::numbersAreStored_data()
{
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<int>("setpointType");
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<double>("stored");
    QTest::addColumn<QString>("after");
    QTest::newRow("Number of frames") << QByteArray("numFrames") << 0 << "16"
                                      << "64" << 64.0 << "64";
    QTest::newRow("Low Delta (°C)") << QByteArray("flagSetpointDeltaLow") << 0 << "2.50"
                                    << "-3" << -3.0 << "-3.00";
    QTest::newRow("High Delta (°C)") << QByteArray("flagSetpointDeltaHigh") << 0 << "12.50"
                                     << "13.25" << 13.25 << "13.25";
    QTest::newRow("Low Temp (°C)") << QByteArray("flagSetpointTempLow") << 1 << "22.50"
                                   << "1e1" << 10.0 << "10.00";
    QTest::newRow("High Temp (°C)") << QByteArray("flagSetpointTempHigh") << 1 << "37.50"
                                    << "1234.5" << 1234.5 << "1234.50";
}

void tst_NucNewDialog::numbersAreStored()
{
    QFETCH(const QByteArray, property);
    QFETCH(const int, setpointType);
    QFETCH(const QString, typed);
    const auto field = QString::fromUtf8(QTest::currentDataTag());
    NucWizard wizard({.source = 1});
    wizard.process()->setProperty("flagSetpointType", setpointType);
    wizard.settle();
    QTEST(wizard.text(field), "before");
    wizard.enter(field, typed);
    QTEST(wizard.setting(property).toDouble(), "stored");
    QTEST(wizard.text(field), "after");
}

void tst_NucNewDialog::frameCountIsCut()
{
    NucWizard wizard;
    wizard.enter("Number of frames", "300");
    QCOMPARE(wizard.setting("numFrames").toInt(), 44);
    QCOMPARE(wizard.text("Number of frames"), "44");
    wizard.enter("Number of frames", "256");
    QCOMPARE(wizard.text("Number of frames"), "0");
}

void tst_NucNewDialog::wrongTextIsNotStored()
{
    NucWizard wizard;
    wizard.enter("Number of frames", "many");
    QCOMPARE(wizard.text("Number of frames"), "many");
    QCOMPARE(wizard.item("Number of frames").property("fault").toString(), "Not a number");
    QCOMPARE(wizard.setting("numFrames").toInt(), 16);
    wizard.enter("Number of frames", "17");
    QCOMPARE(wizard.setting("numFrames").toInt(), 17);
}

void tst_NucNewDialog::limitsAreStored_data()
{
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<double>("stored");
    QTest::newRow("A/D Count Limit Low") << QByteArray("adcLow") << "1000"
                                         << "65537" << 1.0;
    QTest::newRow("A/D Count Limit High") << QByteArray("adcHigh") << "15000"
                                          << "16383" << 16383.0;
    QTest::newRow("Responsivity Limit Low") << QByteArray("gainMin") << "0.75"
                                            << "0.5" << 0.5;
    QTest::newRow("Responsivity Limit High") << QByteArray("gainMax") << "1.50"
                                             << "2" << 2.0;
    QTest::newRow("Twinkler num frames to collect") << QByteArray("twinklerNumFrames") << "32"
                                                    << "0" << 0.0;
    QTest::newRow("Twinkler max pixel value delta") << QByteArray("twinklerDelta") << "200"
                                                    << "150" << 150.0;
}

void tst_NucNewDialog::limitsAreStored()
{
    QFETCH(const QByteArray, property);
    QFETCH(const QString, typed);
    const auto field = QString::fromUtf8(QTest::currentDataTag());
    NucWizard wizard;
    wizard.use("Next");
    QVERIFY(wizard.findText("Bad Pixel Detection Settings"));
    QTEST(wizard.text(field), "before");
    wizard.enter(field, typed);
    QTEST(wizard.setting(property).toDouble(), "stored");
    QVERIFY(wizard.checked("Twinkling Pixel Detection"));
    wizard.use("Twinkling Pixel Detection");
    QCOMPARE(wizard.setting("detectTwinklers").toBool(), false);
}

void tst_NucNewDialog::nothingIsWrittenBeforeTheStart()
{
    NucWizard wizard;
    const size_t mark = wizard.gate().mark();
    wizard.use("Internal Flag");
    wizard.enter("Number of frames", "20");
    wizard.use("Next");
    wizard.enter("A/D Count Limit Low", "20");
    wizard.use("Next");
    wizard.use("Cancel");
    QCOMPARE(wizard.commands(mark), QStringList());
}

ZVT_TEST(tst_NucNewDialog)
#include "tst_NucNewDialog.moc"
