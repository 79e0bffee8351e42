#include "tests/support/PageDriver.h"
#include "tests/support/Test.h"

#include <QColor>
#include <QRegularExpression>
#include <QTimer>

class tst_StatusTab : public Test
{
    Q_OBJECT

private slots:
    void theRowsStandInOrder();
    void theRowsShowTheCamera();
    void theDetectorTemperature_data();
    void theDetectorTemperature();
    void theTemperatureRowsFollowTheMakeUp_data();
    void theTemperatureRowsFollowTheMakeUp();
    void temperaturesHaveTwoDecimalsAndUnits();
    void nothingIsShownBeforeTheFirstReading();
    void sensorThatNeverAnsweredShowsNothing();
    void valueThatFellToZeroStaysOnShow();
    void saturationIsGoodUnderAllThresholds();
    void saturationIsBadAboveAThreshold();
    void saturationIsUnknownWithoutACamera();
    void theBannerFollowsTheConnection();
    void aReconnectReadsAgain();
    void theModelKnowsWhetherThePageIsSeen();
    void aHiddenPageDoesNotPoll();
    void labelsEndAtOneLine();
    void nothingIsClipped_data();
    void nothingIsClipped();
    void thePageOutlivesItsModel();

private:
    static QColor glyphColour(PageDriver &driver);
    static QString glyph(PageDriver &driver);
    static QColor colour(PageDriver &driver, const QString &name);
};

QColor tst_StatusTab::glyphColour(PageDriver &driver)
{
    return driver.object(QStringLiteral("saturationGlyph"))->property("color").value<QColor>();
}

QString tst_StatusTab::glyph(PageDriver &driver)
{
    return driver.object(QStringLiteral("saturationGlyph"))->property("text").toString();
}

QColor tst_StatusTab::colour(PageDriver &driver, const QString &name)
{
    return driver.find(name)->property("color").value<QColor>();
}

void tst_StatusTab::theRowsStandInOrder()
{
    PageDriver driver;
    driver.rig().camera().disconnect();
    driver.settle();
    double above = -1;
    for (const QString text :
         {"No camera connected", "Model/Serial:", "Integration Time:", "Frame Size:", "Frame Rate:", "Time:",
          "Operating Time:", "Type:", "Saturation:", "Camera Temperatures:"}) {
        const QQuickItem *label = driver.findText(text);
        QVERIFY2(label, qPrintable(text));
        const double y = label->mapToScene({0, label->height()}).y();
        QVERIFY2(y > above, qPrintable(QStringLiteral("%1: %2 after %3").arg(text).arg(y).arg(above)));
        above = y;
    }
    above = -1;
    for (const QString text : {"FPA:", "Front Panel:", "Air Gap:", "Lens:", "Chassis:"}) {
        const QQuickItem *label = driver.findText(text);
        QVERIFY2(label, qPrintable(text));
        const double y = label->mapToScene({0, 0}).y();
        QVERIFY2(y > above, qPrintable(text));
        QVERIFY(label->mapToScene({0, 0}).x() > driver.findText("Camera Temperatures:")->mapToScene({0, 0}).x());
        above = y;
    }
}

void tst_StatusTab::theRowsShowTheCamera()
{
    PageDriver driver;
    QCOMPARE(driver.text("Model/Serial"), "Campion 640 C/ZE-100001");
    QCOMPARE(driver.text("Frame Size"), "640x512");
    QVERIFY(QRegularExpression("^\\d+\\.\\d{6} ms$").match(driver.text("Integration Time")).hasMatch());
    QVERIFY(QRegularExpression("^\\d+\\.\\d{2} Hz$").match(driver.text("Frame Rate")).hasMatch());
    QCOMPARE(driver.text("Time"), "2024-02-29 12:00:00");
    QVERIFY(QRegularExpression("^\\d+ h \\d{2} min$").match(driver.text("Operating Time")).hasMatch());
    const auto name = [&driver](const char *property) { return driver.cameraModel()->property(property).toString(); };
    QVERIFY(!name("readoutName").isEmpty());
    QCOMPARE(driver.text("Type"),
             QStringList({name("readoutName"), name("detectorTypeName"), name("cameraSubtypeName")}).join(", "));
}

void tst_StatusTab::theDetectorTemperature_data()
{
    QTest::addColumn<QString>("profile");
    QTest::addColumn<double>("kelvin");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("colour");
    QTest::newRow("cold") << "everything" << 77.125 << "77.13 K"
                          << "#8080ff";
    QTest::newRow("at the limit") << "everything" << 80.0 << "80.00 K"
                                  << "#8080ff";
    QTest::newRow("warm") << "everything" << 295.5 << "295.50 K"
                          << "#ff8080";
    QTest::newRow("thermoelectric, cold") << "te-cooler" << 283.15 << "10.00 °C"
                                          << "#8080ff";
    QTest::newRow("thermoelectric, warm") << "te-cooler" << 293.15 << "20.00 °C"
                                          << "#ff8080";
    QTest::newRow("thermoelectric, too cold") << "te-cooler" << 263.15 << "-10.00 °C"
                                              << "#ff8080";
}

void tst_StatusTab::theDetectorTemperature()
{
    QFETCH(const QString, profile);
    QFETCH(const double, kelvin);
    QFETCH(const QString, text);
    QFETCH(const QString, colour);
    PageDriver driver({.profile = profile, .prepare = [kelvin](emulator::Camera &camera) {
                           camera.gate().script("zvtGetFPATemperature", kelvin);
                           camera.gate().script("zvtMfgGetCoolerPowerEnabled", 1);
                       }});
    QCOMPARE(driver.text("FPA"), text);
    QCOMPARE(tst_StatusTab::colour(driver, "FPA").name(), colour);
}

void tst_StatusTab::theTemperatureRowsFollowTheMakeUp_data()
{
    QTest::addColumn<bool>("frontPanel");
    QTest::addColumn<bool>("airGap");
    QTest::addColumn<bool>("lens");
    QTest::addColumn<bool>("chassis");
    QTest::addColumn<bool>("internal");
    QTest::newRow("nothing") << false << false << false << false << false;
    QTest::newRow("front panel") << true << false << false << false << false;
    QTest::newRow("air gap") << false << true << false << false << false;
    QTest::newRow("lens") << false << false << true << false << false;
    QTest::newRow("internal") << false << false << false << false << true;
    QTest::newRow("chassis") << false << false << false << true << false;
    QTest::newRow("chassis before internal") << true << true << true << true << true;
}

void tst_StatusTab::theTemperatureRowsFollowTheMakeUp()
{
    QFETCH(const bool, frontPanel);
    QFETCH(const bool, airGap);
    QFETCH(const bool, lens);
    QFETCH(const bool, chassis);
    QFETCH(const bool, internal);
    PageDriver driver({.prepare = [&](emulator::Camera &camera) {
        camera.changeMakeUp("hasFrontPanelTemperature", frontPanel);
        camera.changeMakeUp("hasAirGapTemperature", airGap);
        camera.changeMakeUp("hasChassisTemperature", chassis);
        camera.changeMakeUp("hasInternalTemperature", internal);
        camera.gate().script("zvtGetHasLensTemperature", lens ? 1 : 0);
    }});
    QVERIFY(driver.find("FPA"));
    QCOMPARE(driver.find("Front Panel") != nullptr, frontPanel);
    QCOMPARE(driver.find("Air Gap") != nullptr, airGap);
    QCOMPARE(driver.find("Lens") != nullptr, lens);
    QCOMPARE(driver.find("Chassis") != nullptr, chassis);
    QCOMPARE(driver.find("Internal") != nullptr, internal && !chassis);
    QCOMPARE(driver.findText("Chassis:") != nullptr, chassis);
}

void tst_StatusTab::temperaturesHaveTwoDecimalsAndUnits()
{
    PageDriver driver({.prepare = [](emulator::Camera &camera) {
        camera.gate().script("zvtGetSCTemperatures", QVariantList{1031.256, -2.5, 30.0});
        camera.gate().script("zvtGetRSTemperatures", 35.5);
        camera.gate().script("zvtGetHasLensTemperature", 1);
        camera.gate().script("zvtGetLensTemperature", 0.004);
    }});
    QCOMPARE(driver.text("Front Panel"), "1031.26 °C");
    QCOMPARE(driver.text("Air Gap"), "-2.50 °C");
    QCOMPARE(driver.text("Lens"), "0.00 °C");
    QCOMPARE(driver.text("Chassis"), "35.50 °C");
    // The numbers end at one line, and the units begin there.
    QCOMPARE(driver.findText("1031.26")->mapToScene({driver.findText("1031.26")->width(), 0}).x(),
             driver.findText("-2.50")->mapToScene({driver.findText("-2.50")->width(), 0}).x());
}

void tst_StatusTab::nothingIsShownBeforeTheFirstReading()
{
    PageDriver driver({.connected = false});
    for (const QString name :
         {"Model/Serial", "Integration Time", "Frame Size", "Frame Rate", "Time", "Operating Time", "Type", "FPA"})
        QCOMPARE(driver.text(name), QString());
}

// The other sensors were read in the same poll; this one has no value, and zero would be a lie.
void tst_StatusTab::sensorThatNeverAnsweredShowsNothing()
{
    PageDriver driver({.prepare = [](emulator::Camera &camera) {
        camera.gate().failAlways("zvtGetFPATemperature");
        camera.gate().script("zvtGetSCTemperatures", QVariantList{21.5, 22.5, 23.5});
    }});
    QCOMPARE(driver.text("FPA"), QString());
    QVERIFY(driver.text("Front Panel").startsWith("21"));
}

void tst_StatusTab::valueThatFellToZeroStaysOnShow()
{
    PageDriver driver({.prepare = [](emulator::Camera &camera) {
        camera.gate().script("zvtGetSCTemperatures", QVariantList{21.5, 22.5, 23.5});
    }});
    driver.rig().gate().script("zvtGetSCTemperatures", QVariantList{0.0, 22.5, 23.5});
    for (int tick = 1; tick <= 5; ++tick)
        driver.poll();
    QVERIFY2(driver.text("Front Panel").startsWith("0"), qPrintable(driver.text("Front Panel")));
}

void tst_StatusTab::saturationIsGoodUnderAllThresholds()
{
    PageDriver driver({.prepare = [](emulator::Camera &camera) { camera.gate().script("zvtGetSaturatedFlag", 0); }});
    QCOMPARE(driver.text("Saturation"), "Good. Under all thresholds.");
    QCOMPARE(glyph(driver), QString(QChar(0xf00c)));
    QCOMPARE(glyphColour(driver), driver.rootProperty("tidepoolAccentGreen").value<QColor>());
}

void tst_StatusTab::saturationIsBadAboveAThreshold()
{
    PageDriver driver;
    driver.rig().gate().script("zvtGetSaturatedFlag", 1);
    driver.poll();
    QCOMPARE(driver.text("Saturation"), "Bad. Above at least one threshold.");
    QCOMPARE(glyph(driver), QString(QChar(0xf00d)));
    QCOMPARE(glyphColour(driver), driver.rootProperty("tidepoolAccentRed").value<QColor>());
}

void tst_StatusTab::saturationIsUnknownWithoutACamera()
{
    PageDriver driver;
    driver.rig().gate().script("zvtGetSaturatedFlag", 1);
    driver.poll();
    driver.rig().camera().disconnect();
    driver.settle();
    QCOMPARE(driver.text("Saturation"), "Unknown");
    QCOMPARE(glyph(driver), QString(QChar(0xf059)));
    QCOMPARE(glyphColour(driver), driver.rootProperty("kestrinSecondaryCoolGray").value<QColor>());
}

void tst_StatusTab::theBannerFollowsTheConnection()
{
    PageDriver driver;
    QVERIFY(!driver.findText("No camera connected"));
    driver.rig().camera().disconnect();
    driver.settle();
    const QQuickItem *label = driver.findText("No camera connected");
    QVERIFY(label);
    QCOMPARE(label->property("color").value<QColor>(), QColor("black"));
    QCOMPARE(label->parentItem()->property("color").value<QColor>(), QColor("#ff6a00"));
    driver.rig().camera().connect();
    driver.settle();
    QVERIFY(!driver.findText("No camera connected"));
}

void tst_StatusTab::aReconnectReadsAgain()
{
    PageDriver driver;
    driver.rig().camera().disconnect();
    driver.settle();
    const size_t mark = driver.rig().gate().mark();
    driver.rig().camera().connect();
    driver.settle();
    QVERIFY(driver.rig().callsSince(mark).contains("controller.GetWindow"));
    QVERIFY(driver.rig().callsSince(mark).contains("zvtGetSaturatedFlag"));
}

void tst_StatusTab::theModelKnowsWhetherThePageIsSeen()
{
    PageDriver driver;
    const QObject *model = driver.tabModel("statusTabModel");
    QVERIFY(model->property("visible").toBool());
    driver.page()->setVisible(false);
    QVERIFY(!model->property("visible").toBool());
    const size_t mark = driver.rig().gate().mark();
    driver.page()->setVisible(true);
    QVERIFY(model->property("visible").toBool());
    driver.settle();
    QVERIFY(driver.rig().callsSince(mark).contains("controller.GetWindow"));
}

void tst_StatusTab::aHiddenPageDoesNotPoll()
{
    PageDriver driver;
    const auto *timer = driver.tabModel("statusTabModel")->findChild<QTimer *>();
    QVERIFY(timer->isActive());
    driver.page()->setVisible(false);
    QVERIFY(!timer->isActive());
}

void tst_StatusTab::labelsEndAtOneLine()
{
    PageDriver driver;
    const auto end = [&driver](const QString &text) {
        const QQuickItem *label = driver.findText(text);
        return label->mapToScene({label->width(), 0}).x();
    };
    for (const QString text : {"Model/Serial:", "Integration Time:", "Frame Size:", "Frame Rate:", "Time:",
                               "Operating Time:", "Type:", "Saturation:"})
        QCOMPARE(end(text), end("Camera Temperatures:"));
    for (const QString text : {"Front Panel:", "Air Gap:", "Lens:", "Chassis:"})
        QCOMPARE(end(text), end("FPA:"));
}

void tst_StatusTab::nothingIsClipped_data()
{
    QTest::addColumn<QString>("profile");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("connected");
    QTest::newRow("small") << "everything" << QSize(640, 480) << true;
    QTest::newRow("small, no camera") << "everything" << QSize(640, 480) << false;
    QTest::newRow("large") << "everything" << QSize(900, 720) << true;
    QTest::newRow("absurd values") << "edge-values" << QSize(640, 480) << true;
}

void tst_StatusTab::nothingIsClipped()
{
    QFETCH(const QString, profile);
    QFETCH(const QSize, size);
    QFETCH(const bool, connected);
    PageDriver driver({.profile = profile, .size = size});
    if (!connected) {
        driver.rig().camera().disconnect();
        driver.settle();
    }
    // Only what is absurdly long may need scrolling.
    const QRectF place(0, 0, size.width(), profile == "everything" ? size.height() : 10 * size.height());
    const QList<QQuickItem *> texts = PageDriver::shownTexts(*driver.page());
    for (const QQuickItem *text : texts)
        QVERIFY2(PageDriver::fits(*text, place), qPrintable(text->property("text").toString()));
    QVERIFY(texts.size() > 20);
}

void tst_StatusTab::thePageOutlivesItsModel()
{
    PageDriver driver;
    driver.deleteModel();
    driver.settle();
    QCOMPARE(driver.text("Saturation"), "Unknown");
    QVERIFY(driver.findText("No camera connected"));
    driver.page()->setVisible(false);
    driver.page()->setVisible(true);
}

ZVT_TEST(tst_StatusTab)
#include "tst_StatusTab.moc"
