#include "tests/support/PageDriver.h"
#include "tests/support/Test.h"

#include <QClipboard>
#include <QColor>
#include <QGuiApplication>
#include <QRegularExpression>
#include <QTimer>

class tst_StatusTab : public Test
{
    Q_OBJECT

private slots:
    void theRowsStandInOrder();
    void theRowsShowTheCamera();
    void nothingIsShownBeforeTheFirstReading();
    void saturationIsGoodUnderAllThresholds();
    void saturationIsBadAboveAThreshold();
    void saturationIsUnknownWithoutACamera();
    void saturationIsEmptyUntilItWasRead();
    void theBannerFollowsTheConnection();
    void aReconnectReadsAgain();
    void theModelKnowsWhetherThePageIsSeen();
    void aHiddenPageDoesNotPoll();
    void captionsEndAtOneLine();
    void cardsAreSideBySideWhereThereIsRoom_data();
    void cardsAreSideBySideWhereThereIsRoom();
    void factsAreSelectedByMouse();
    void selectedClockStaysSelected();
    void markupFromTheCameraIsShown();
    void onlyValuesAreDimmedWithoutACamera();
    void nothingIsClipped_data();
    void nothingIsClipped();
    void thePageOutlivesItsModel_data();
    void thePageOutlivesItsModel();

private:
    static QColor glyphColour(PageDriver &driver);
    static QString glyph(PageDriver &driver);
    static double end(const PageDriver &driver, const QString &text);
    static double effectiveOpacity(const QQuickItem *item);
};

QColor tst_StatusTab::glyphColour(PageDriver &driver)
{
    return driver.object(QStringLiteral("saturationGlyph"))->property("color").value<QColor>();
}

QString tst_StatusTab::glyph(PageDriver &driver)
{
    return driver.object(QStringLiteral("saturationGlyph"))->property("text").toString();
}

/// The right edge of the visible text, in window coordinates.
double tst_StatusTab::end(const PageDriver &driver, const QString &text)
{
    const QQuickItem *label = driver.findText(text);
    return label->mapToScene({label->width(), 0}).x();
}

double tst_StatusTab::effectiveOpacity(const QQuickItem *item)
{
    return item == nullptr ? 1.0 : item->opacity() * effectiveOpacity(item->parentItem());
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

void tst_StatusTab::nothingIsShownBeforeTheFirstReading()
{
    PageDriver driver({.connected = false});
    for (const QString name :
         {"Model/Serial", "Integration Time", "Frame Size", "Frame Rate", "Time", "Operating Time", "Type", "FPA"})
        QCOMPARE(driver.text(name), QString());
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

void tst_StatusTab::saturationIsEmptyUntilItWasRead()
{
    PageDriver driver;
    CameraRig::coolDetector();
    driver.rig().camera().disconnect();
    driver.settle();
    driver.rig().gate().hold("zvtGetSaturatedFlag");
    driver.rig().camera().connect();
    driver.awaitFrame();
    QVERIFY(driver.rig().gate().waitHeld("zvtGetSaturatedFlag"));
    QCOMPARE(driver.text("Saturation"), QString());
    QCOMPARE(glyph(driver), QString());
    driver.rig().gate().release("zvtGetSaturatedFlag");
    driver.settle();
    QCOMPARE(driver.text("Saturation"), "Good. Under all thresholds.");
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

void tst_StatusTab::captionsEndAtOneLine()
{
    const PageDriver driver;
    for (const QString text : {"Integration Time:", "Frame Size:", "Frame Rate:", "Time:", "Operating Time:", "Type:",
                               "Saturation:", "FPA:", "Front Panel:", "Air Gap:", "Lens:", "Chassis:"})
        QCOMPARE(end(driver, text), end(driver, "Model/Serial:"));
}

void tst_StatusTab::cardsAreSideBySideWhereThereIsRoom_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<bool>("sideBySide");
    QTest::newRow("small") << 640 << false;
    QTest::newRow("just too narrow") << 819 << false;
    QTest::newRow("just wide enough") << 820 << true;
    QTest::newRow("wide") << 1280 << true;
}

void tst_StatusTab::cardsAreSideBySideWhereThereIsRoom()
{
    QFETCH(const int, width);
    QFETCH(const bool, sideBySide);
    const PageDriver driver({.size = {width, 720}});
    const QPointF facts = driver.findText("Model/Serial:")->mapToScene({0, 0});
    const QPointF saturation = driver.findText("Saturation:")->mapToScene({0, 0});
    const QPointF temperatures = driver.findText("Camera Temperatures:")->mapToScene({0, 0});
    QCOMPARE(temperatures.y() == facts.y(), sideBySide);
    QCOMPARE(temperatures.y() > saturation.y(), !sideBySide);
    QCOMPARE(temperatures.x() > width / 2.0, sideBySide);
}

void tst_StatusTab::factsAreSelectedByMouse()
{
    PageDriver driver;
    const QQuickItem *fact = driver.find("Model/Serial");
    const QPoint start = fact->mapToScene({1, fact->height() / 2}).toPoint();
    QTest::mousePress(&driver.window(), Qt::LeftButton, Qt::NoModifier, start);
    for (int x = 0; x <= 300; x += 20)
        QTest::mouseMove(&driver.window(), start + QPoint(x, 0));
    QTest::mouseRelease(&driver.window(), Qt::LeftButton, Qt::NoModifier, start + QPoint(300, 0));
    QCOMPARE(fact->property("selectedText").toString(), "Campion 640 C/ZE-100001");
    driver.press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), "Campion 640 C/ZE-100001");
    driver.type("x");
    QCOMPARE(driver.text("Model/Serial"), "Campion 640 C/ZE-100001");
}

void tst_StatusTab::selectedClockStaysSelected()
{
    PageDriver driver;
    QQuickItem *time = driver.find("Time");
    QVERIFY(QMetaObject::invokeMethod(time, "selectAll"));
    driver.rig().gate().script("zvtGetRealTimeClock", QVariantList{24, 3, 1, 13, 14, 15});
    driver.poll();
    QCOMPARE(driver.text("Time"), "2024-03-01 13:14:15");
    QCOMPARE(time->property("selectedText").toString(), "2024-03-01 13:14:15");
}

void tst_StatusTab::markupFromTheCameraIsShown()
{
    const PageDriver driver(
        {.prepare = [](emulator::Camera &camera) { camera.gate().script("zvtGetCameraModel", "M<b>640</b>"); }});
    QCOMPARE(driver.text("Model/Serial"), "M<b>640</b>/ZE-100001");
    // The markup is shown as text: the width fits all characters.
    QVERIFY(driver.find("Model/Serial")->property("contentWidth").toDouble() > 120);
}

void tst_StatusTab::onlyValuesAreDimmedWithoutACamera()
{
    PageDriver driver(
        {.prepare = [](emulator::Camera &camera) { camera.gate().script("zvtGetFPATemperature", 77.0); }});
    QCOMPARE(effectiveOpacity(driver.find("Frame Size")), 1.0);
    driver.rig().camera().disconnect();
    driver.settle();
    for (const QString name : {"Frame Size", "Saturation", "FPA"}) {
        QVERIFY(!driver.find(name)->isEnabled());
        QCOMPARE(effectiveOpacity(driver.find(name)), 0.6);
    }
    // Nested items are not dimmed twice.
    QCOMPARE(effectiveOpacity(driver.findText("77.00")), 0.6);
    QCOMPARE(effectiveOpacity(driver.findText(" K")), 0.6);
    QCOMPARE(effectiveOpacity(driver.findText("No camera connected")), 1.0);
}

void tst_StatusTab::nothingIsClipped_data()
{
    QTest::addColumn<QString>("profile");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("connected");
    QTest::newRow("small") << "everything" << QSize(640, 480) << true;
    QTest::newRow("small, no camera") << "everything" << QSize(640, 480) << false;
    QTest::newRow("large") << "everything" << QSize(900, 720) << true;
    QTest::newRow("two narrow cards") << "everything" << QSize(820, 600) << true;
    QTest::newRow("very large") << "everything" << QSize(1280, 1024) << true;
    QTest::newRow("absurd values in two cards") << "edge-values" << QSize(820, 600) << true;
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
    // Only very long texts may need scrolling.
    const QRectF place(0, 0, size.width(), profile == "everything" ? size.height() : 10 * size.height());
    const QList<QQuickItem *> texts = PageDriver::shownTexts(*driver.page());
    for (const QQuickItem *text : texts)
        QVERIFY2(PageDriver::fits(*text, place), qPrintable(text->property("text").toString()));
    QVERIFY(texts.size() > 20);
}

void tst_StatusTab::thePageOutlivesItsModel_data()
{
    QTest::addColumn<QString>("profile");
    QTest::newRow("kelvin") << "everything";
    QTest::newRow("celsius") << "te-cooler";
}

void tst_StatusTab::thePageOutlivesItsModel()
{
    QFETCH(const QString, profile);
    PageDriver driver({.profile = profile});
    driver.deleteModel();
    driver.settle();
    QCOMPARE(driver.text("Saturation"), "Unknown");
    QVERIFY(driver.findText("No camera connected"));
    driver.page()->setVisible(false);
    driver.page()->setVisible(true);
}

ZVT_TEST(tst_StatusTab)
#include "tst_StatusTab.moc"
