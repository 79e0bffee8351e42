#include "tests/support/PageDriver.h"
#include "tests/support/Test.h"

#include <QColor>
#include <QSignalSpy>

/// The temperatures of the Status tab and their trends.
class tst_StatusTemperatures : public Test
{
    Q_OBJECT

private slots:
    void theDetectorTemperature_data();
    void theDetectorTemperature();
    void detectorGlyphTellsWhetherItIsCold();
    void theTemperatureRowsFollowTheMakeUp_data();
    void theTemperatureRowsFollowTheMakeUp();
    void temperaturesHaveTwoDecimalsAndUnits();
    void sensorThatNeverAnsweredShowsNothing();
    void sensorAtZeroIsShown();
    void valueThatFellToZeroStaysOnShow();
    void numbersStayInTheirPlaces();
    void trendTakesAPointOfEachReading();
    void trendBeginsAnewWithTheConnection();
    void trendForgetsWhatIsOlderThanTenMinutes();
    void trendRisesToTheRight();
    void trendLeavesOutWhatIsNotKnown();

private:
    static QList<QQuickItem *> trends(const PageDriver &driver);
    /// The painted trend of points, each a time in seconds and a value.
    static QImage painted(PageDriver &driver, const QList<QPointF> &points);
    /// The topmost row of the line in column `x` of the trend.
    static int lineAt(const QImage &image, int x);
};

/// Polls often enough to read every temperature once more.
void pollTemperatures(PageDriver &driver)
{
    for (int tick = 0; tick < 5; ++tick)
        driver.poll();
}

QList<QQuickItem *> tst_StatusTemperatures::trends(const PageDriver &driver)
{
    QList<QQuickItem *> items = driver.page()->findChildren<QQuickItem *>();
    items.removeIf([](const QQuickItem *item) { return !item->inherits("QQuickCanvasItem") || !item->isVisible(); });
    return items;
}

QImage tst_StatusTemperatures::painted(PageDriver &driver, const QList<QPointF> &points)
{
    QVariantList list;
    for (const QPointF &point : points)
        list << QVariantMap{{"at", point.x() * 1000}, {"value", point.y()}};
    auto *trend = qobject_cast<QQuickItem *>(
        driver.create("import zvt.status\nTrend { z: 1; width: 92; height: 36; color: \"white\"; span: 600000 }",
                      {{"points", list}}));
    QSignalSpy ready(trend, SIGNAL(painted()));
    if (ready.isEmpty() && !ready.wait())
        return {};
    driver.awaitFrame();
    return driver.grab().copy(trend->mapRectToScene(trend->boundingRect()).toRect());
}

int tst_StatusTemperatures::lineAt(const QImage &image, int x)
{
    constexpr int bright = 128;
    for (int y = 0; y < image.height() - 1; ++y)
        if (qGray(image.pixel(x, y)) > bright)
            return y;
    return -1;
}

void tst_StatusTemperatures::theDetectorTemperature_data()
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

void tst_StatusTemperatures::theDetectorTemperature()
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
    QCOMPARE(driver.find("FPA")->property("color").value<QColor>().name(), colour);
}

void tst_StatusTemperatures::detectorGlyphTellsWhetherItIsCold()
{
    PageDriver driver(
        {.prepare = [](emulator::Camera &camera) { camera.gate().script("zvtGetFPATemperature", 77.0); }});
    const auto *glyph = qobject_cast<QQuickItem *>(driver.object(QStringLiteral("fpaGlyph")));
    const auto text = [glyph] { return glyph->property("text").toString(); };
    const QPoint middle = glyph->mapToScene({glyph->width() / 2, glyph->height() / 2}).toPoint();
    QCOMPARE(text(), QString(QChar(0xf2dc)));
    QTest::mouseMove(&driver.window(), middle);
    QTRY_COMPARE(driver.hint(), "At working temperature");
    QTest::mouseMove(&driver.window(), QPoint(4, 4));
    QTRY_COMPARE(driver.hint(), QString());
    driver.rig().gate().script("zvtGetFPATemperature", 290.0);
    pollTemperatures(driver);
    QCOMPARE(text(), QString(QChar(0xf2c9)));
    QTest::mouseMove(&driver.window(), middle);
    QTRY_COMPARE(driver.hint(), "Not at working temperature");
}

void tst_StatusTemperatures::theTemperatureRowsFollowTheMakeUp_data()
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

void tst_StatusTemperatures::theTemperatureRowsFollowTheMakeUp()
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

void tst_StatusTemperatures::temperaturesHaveTwoDecimalsAndUnits()
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
    // The right edges of all numbers are aligned, and the units start there.
    QCOMPARE(driver.findText("1031.26")->mapToScene({driver.findText("1031.26")->width(), 0}).x(),
             driver.findText("-2.50")->mapToScene({driver.findText("-2.50")->width(), 0}).x());
}

// The other sensors were read in the same poll. This one has no value, so 0 would be wrong.
void tst_StatusTemperatures::sensorThatNeverAnsweredShowsNothing()
{
    PageDriver driver({.prepare = [](emulator::Camera &camera) {
        camera.gate().failAlways("zvtGetFPATemperature");
        camera.gate().script("zvtGetSCTemperatures", QVariantList{21.5, 22.5, 23.5});
    }});
    QCOMPARE(driver.text("FPA"), QString());
    QVERIFY(driver.text("Front Panel").startsWith("21"));
}

void tst_StatusTemperatures::sensorAtZeroIsShown()
{
    const PageDriver driver({.prepare = [](emulator::Camera &camera) {
        camera.gate().script("zvtGetSCTemperatures", QVariantList{0.0, 22.5, 23.5});
    }});
    QCOMPARE(driver.text("Front Panel"), "0.00 °C");
}

void tst_StatusTemperatures::valueThatFellToZeroStaysOnShow()
{
    PageDriver driver({.prepare = [](emulator::Camera &camera) {
        camera.gate().script("zvtGetSCTemperatures", QVariantList{21.5, 22.5, 23.5});
    }});
    driver.rig().gate().script("zvtGetSCTemperatures", QVariantList{0.0, 22.5, 23.5});
    for (int tick = 1; tick <= 5; ++tick)
        driver.poll();
    QVERIFY2(driver.text("Front Panel").startsWith("0"), qPrintable(driver.text("Front Panel")));
}

void tst_StatusTemperatures::numbersStayInTheirPlaces()
{
    PageDriver driver({.prepare = [](emulator::Camera &camera) {
        camera.gate().script("zvtGetSCTemperatures", QVariantList{21.5, 22.5, 23.5});
    }});
    const auto end = [&driver](const QString &text) {
        const QQuickItem *label = driver.findText(text);
        return label->mapToScene({label->width(), 0}).x();
    };
    const double before = end("21.50");
    driver.rig().gate().script("zvtGetSCTemperatures", QVariantList{-121.5, 9.75, 23.5});
    pollTemperatures(driver);
    QCOMPARE(end("-121.50"), before);
    QCOMPARE(end("9.75"), before);
}

void tst_StatusTemperatures::trendTakesAPointOfEachReading()
{
    PageDriver driver;
    QCOMPARE(trends(driver).size(), 0);
    pollTemperatures(driver);
    // A line needs two points.
    QCOMPARE(trends(driver).size(), 0);
    pollTemperatures(driver);
    QCOMPARE(trends(driver).size(), 5);
    pollTemperatures(driver);
    for (const QQuickItem *trend : trends(driver))
        QCOMPARE(trend->property("points").toList().size(), 3);
}

void tst_StatusTemperatures::trendBeginsAnewWithTheConnection()
{
    PageDriver driver;
    for (int reading = 0; reading < 3; ++reading)
        pollTemperatures(driver);
    driver.rig().camera().disconnect();
    driver.settle();
    QCOMPARE(trends(driver).size(), 5);
    driver.rig().camera().connect();
    driver.settle();
    QCOMPARE(trends(driver).size(), 0);
}

void tst_StatusTemperatures::trendForgetsWhatIsOlderThanTenMinutes()
{
    PageDriver driver;
    QQuickItem *fpa = driver.find("FPA");
    constexpr int readings = 300;
    for (int reading = 0; reading < readings; ++reading)
        QVERIFY(QMetaObject::invokeMethod(fpa, "addPoint", Q_ARG(double, reading * 5000.0)));
    driver.awaitFrame();
    QCOMPARE(trends(driver).size(), 1);
    QCOMPARE(trends(driver).constFirst()->property("points").toList().size(), 120);
}

void tst_StatusTemperatures::trendRisesToTheRight()
{
    PageDriver driver;
    QList<QPointF> points;
    for (int second = 0; second <= 600; second += 5)
        points << QPointF(second, 20 + second / 60.0);
    const QImage image = painted(driver, points);
    QCOMPARE(image.size(), QSize(92, 36));
    QVERIFY(lineAt(image, 4) > 28);
    QVERIFY(qAbs(lineAt(image, 46) - 18) <= 2);
    QVERIFY(lineAt(image, 88) >= 0 && lineAt(image, 88) < 8);
}

void tst_StatusTemperatures::trendLeavesOutWhatIsNotKnown()
{
    PageDriver driver;
    const QImage image = painted(driver, {{0, 20}, {30, 20}, {60, 20}, {540, 20}, {570, 20}, {600, 20}});
    QVERIFY(lineAt(image, 4) >= 0);
    QCOMPARE(lineAt(image, 46), -1);
    QVERIFY(lineAt(image, 88) >= 0);
}

ZVT_TEST(tst_StatusTemperatures)
#include "tst_StatusTemperatures.moc"
