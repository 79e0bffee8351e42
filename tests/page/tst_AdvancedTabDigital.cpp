#include "tests/page/AdvancedPage.h"
#include "tests/support/Test.h"

namespace
{

QString gainOf(int preset) { return QStringLiteral("Preset %1 Digital Gain").arg(preset); }
QString offsetOf(int preset) { return QStringLiteral("Preset %1 Digital Offset").arg(preset); }

} // namespace

/// The section "Digital Settings" of the Advanced page.
class tst_AdvancedTabDigital : public Test
{
    Q_OBJECT

private slots:
    void theTableHasItsTitles();
    void eachGainAndOffsetIsShownAndSet_data();
    void eachGainAndOffsetIsShownAndSet();
    void aNumberIsEnteredOnFocusLoss();
    void wrongNumbersAreNotSent_data();
    void wrongNumbersAreNotSent();
    void anyNumberOfDecimalsIsAccepted();
    void limitsAreAccepted_data();
    void limitsAreAccepted();
    void nothingIsShownDuringTheFirstRead();
    void aFailedReadKeepsTheNumber();

    void theLinksShowTheCamera();
    void theLinksWriteNothing();
    void twoCoaXPressLinksShowNoRow();
    void theLinksCanBeLocked_data();
    void theLinksCanBeLocked();
    void theLinksNeedTheirCapabilities_data();
    void theLinksNeedTheirCapabilities();

    void blackHotIsSwitched_data();
    void blackHotIsSwitched();
    void blackHotNeedsTheCamera();
    void refusedBlackHotStaysUntilARead();
    void blackHotKeepsItsStateIfItsAvailabilityIsNotRead();
};

void tst_AdvancedTabDigital::theTableHasItsTitles()
{
    AdvancedPage page;
    for (const char *text : {"Digital Gain", "Digital Offset", "Preset 0:", "Preset 1:", "Preset 2:", "Preset 3:",
                             "CameraLink Mode:", "CoaXPress Links:", "Black Hot Mode"})
        QVERIFY2(page.findText(text), text);
}

void tst_AdvancedTabDigital::eachGainAndOffsetIsShownAndSet_data()
{
    QTest::addColumn<int>("preset");
    for (int preset = 0; preset < 4; ++preset)
        QTest::addRow("preset %d", preset) << preset;
}

void tst_AdvancedTabDigital::eachGainAndOffsetIsShownAndSet()
{
    QFETCH(const int, preset);
    AdvancedPage page;
    QVERIFY(page.set("digital.gains", QVariantList{1.5, 0.25, 3.0, 3.999}));
    QVERIFY(page.set("digital.offsets", QVariantList{-16383.5, 0.0, 12.25, 16383.5}));
    page.refresh("Digital Settings");
    QCOMPARE(page.text(gainOf(preset)), QStringList({"1.500", "0.250", "3.000", "3.999"}).at(preset));
    QCOMPARE(page.text(offsetOf(preset)), QStringList({"-16383.5", "0.0", "12.3", "16383.5"}).at(preset));

    QCOMPARE(page.commandsOf([&] { page.enter(page.item(gainOf(preset)), "2.125", Qt::Key_Return); }),
             QStringList(QStringLiteral("zvtSetDigitalGain %1, 2.125").arg(preset)));
    QCOMPARE(page.text(gainOf(preset)), "2.125");
    QCOMPARE(page.commandsOf([&] { page.enter(page.item(offsetOf(preset)), "-100.5", Qt::Key_Return); }),
             QStringList(QStringLiteral("zvtSetDigitalOffset %1, -100.5").arg(preset)));
    QCOMPARE(page.text(offsetOf(preset)), "-100.5");
    page.refresh("Digital Settings");
    QCOMPARE(page.text(gainOf(preset)), "2.125");
    QCOMPARE(page.text(offsetOf(preset)), "-100.5");
}

void tst_AdvancedTabDigital::aNumberIsEnteredOnFocusLoss()
{
    AdvancedPage page;
    page.type(gainOf(0), "0.5");
    QCOMPARE(page.commandsOf([&] { page.click(offsetOf(2)); }), QStringList("zvtSetDigitalGain 0, 0.5"));
    // The same number is not written again.
    QCOMPARE(page.commandsOf([&] { page.enter(page.item(gainOf(0)), "0.500"); }), QStringList());
}

void tst_AdvancedTabDigital::wrongNumbersAreNotSent_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QStringList>("wrong");
    QTest::addColumn<QString>("hint");
    QTest::newRow("gain") << gainOf(1) << QStringList{"4.0", "4", "-0.001", "x", "1e0", "1,5"}
                          << "Not between 0 and 3.999";
    QTest::newRow("offset") << offsetOf(1) << QStringList{"16383.6", "-16383.6", "1e2", ""}
                            << "Not between -16383.5 and 16383.5";
}

void tst_AdvancedTabDigital::wrongNumbersAreNotSent()
{
    QFETCH(const QString, field);
    QFETCH(const QStringList, wrong);
    QFETCH(const QString, hint);
    AdvancedPage page;
    const QString before = page.text(field);
    QStringList hints;
    for (const QString &text : wrong) {
        page.type(field, text.isEmpty() ? QStringLiteral("\b") : text);
        QCOMPARE(page.commandsOf([&] { page.press(Qt::Key_Return); }), QStringList());
        QCOMPARE(page.text(field), text);
        hints << page.fault(field);
        page.press(Qt::Key_Escape);
        QCOMPARE(page.text(field), before);
    }
    QCOMPARE(hints.first(), hint);
    QVERIFY(!hints.contains(QString()));
}

void tst_AdvancedTabDigital::anyNumberOfDecimalsIsAccepted()
{
    AdvancedPage page;
    QCOMPARE(page.commandsOf([&] { page.enter(page.item(gainOf(0)), "1.0625", Qt::Key_Return); }),
             QStringList("zvtSetDigitalGain 0, 1.0625"));
    QCOMPARE(page.text(gainOf(0)), "1.063");
    QCOMPARE(page.commandsOf([&] { page.enter(page.item(offsetOf(0)), "-1.25", Qt::Key_Return); }),
             QStringList("zvtSetDigitalOffset 0, -1.25"));
}

void tst_AdvancedTabDigital::limitsAreAccepted_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("number");
    QTest::newRow("least gain") << gainOf(3) << "0.000";
    QTest::newRow("most gain") << gainOf(3) << "3.999";
    QTest::newRow("least offset") << offsetOf(3) << "-16383.5";
    QTest::newRow("most offset") << offsetOf(3) << "16383.5";
}

void tst_AdvancedTabDigital::limitsAreAccepted()
{
    QFETCH(const QString, field);
    QFETCH(const QString, number);
    AdvancedPage page;
    QCOMPARE(page.commandsOf([&] { page.enter(page.item(field), number); }).size(), 1);
    page.refresh("Digital Settings");
    QCOMPARE(page.text(field), number);
}

void tst_AdvancedTabDigital::nothingIsShownDuringTheFirstRead()
{
    PageDriver driver({.prepare = [](emulator::Camera &camera) {
        QVERIFY(camera.otherClient().set(QStringLiteral("agc.blackHotEnabled"), true));
        camera.gate().hold("zvtGetDigitalGain");
    }});
    driver.click("Advanced");
    QVERIFY(driver.rig().gate().waitHeld("zvtGetDigitalGain"));
    driver.awaitFrame();
    const auto shown = [&](const char *box) { return driver.item(box).property("displayText").toString(); };
    for (int preset = 0; preset < 4; ++preset)
        QVERIFY(driver.text(gainOf(preset)).isEmpty() && driver.text(offsetOf(preset)).isEmpty());
    QCOMPARE(shown("CameraLink Mode"), "");
    QCOMPARE(shown("CoaXPress Links"), "");
    QVERIFY(!driver.find("Black Hot Mode"));
    driver.rig().gate().release("*");
    driver.settle();
    for (int preset = 0; preset < 4; ++preset)
        QVERIFY(!driver.text(gainOf(preset)).isEmpty() && !driver.text(offsetOf(preset)).isEmpty());
    QVERIFY(!shown("CameraLink Mode").isEmpty());
    QVERIFY(driver.checked("Black Hot Mode"));
}

void tst_AdvancedTabDigital::aFailedReadKeepsTheNumber()
{
    AdvancedPage page;
    QVERIFY(page.set("digital.gains", QVariantList{2.0, 2.0, 2.0, 2.0}));
    page.gate().failAlways("zvtGetDigitalGain");
    page.refresh("Digital Settings");
    QVERIFY(page.enabled(gainOf(0)));
    QCOMPARE(page.text(gainOf(0)), "1.000");
    page.gate().failNever();
    page.refresh("Digital Settings");
    QCOMPARE(page.text(gainOf(0)), "2.000");
}

// The links

void tst_AdvancedTabDigital::theLinksShowTheCamera()
{
    AdvancedPage page;
    QCOMPARE(page.rowsOf("CameraLink Mode"), QStringList({"Base", "Full"}));
    QCOMPARE(page.rowsOf("CoaXPress Links"), QStringList({"Single", "Dual"}));
    for (const int type : {1, 0}) {
        QVERIFY(page.set("interfaces.cameraLinkType", type));
        page.refresh("Digital Settings");
        QCOMPARE(page.shown("CameraLink Mode"), type == 0 ? "Base" : "Full");
    }
    // Not one of the rows.
    QVERIFY(page.set("interfaces.cameraLinkType", 7));
    page.refresh("Digital Settings");
    QCOMPARE(page.shown("CameraLink Mode"), "");
}

void tst_AdvancedTabDigital::theLinksWriteNothing()
{
    AdvancedPage page;
    QVERIFY(page.set("interfaces.coaXPressLinks", 1));
    page.refresh("Digital Settings");
    const QString mode = page.shown("CameraLink Mode");
    QCOMPARE(page.shown("CoaXPress Links"), "Dual");
    QCOMPARE(page.commandsOf([&] {
        page.choose("CameraLink Mode", mode == "Base" ? "Full" : "Base");
        page.choose("CoaXPress Links", "Single");
    }),
             QStringList());
    QVERIFY(page.shown("CameraLink Mode") != mode);
    QCOMPARE(page.shown("CoaXPress Links"), "Single");
    page.refresh("Digital Settings");
    QCOMPARE(page.shown("CameraLink Mode"), mode);
    QCOMPARE(page.shown("CoaXPress Links"), "Dual");
    QCOMPARE(page.commandsOf([&] { page.step("CoaXPress Links", Qt::Key_Up); }), QStringList());
    QCOMPARE(page.shown("CoaXPress Links"), "Single");
}

void tst_AdvancedTabDigital::twoCoaXPressLinksShowNoRow()
{
    AdvancedPage page;
    QVERIFY(page.set("interfaces.coaXPressLinks", 2));
    page.refresh("Digital Settings");
    QCOMPARE(page.shown("CoaXPress Links"), "");
    QCOMPARE(page.item("CoaXPress Links").property("currentIndex").toInt(), 2);
}

void tst_AdvancedTabDigital::theLinksCanBeLocked_data()
{
    QTest::addColumn<QString>("key");
    QTest::newRow("CameraLink Mode") << "interfaces.cameraLinkTypeWritable";
    QTest::newRow("CoaXPress Links") << "interfaces.coaXPressLinksWritable";
}

void tst_AdvancedTabDigital::theLinksCanBeLocked()
{
    QFETCH(const QString, key);
    const QString box = QString::fromLatin1(QTest::currentDataTag());
    AdvancedPage page;
    QVERIFY(page.enabled(box));
    QVERIFY(page.set(key.toLatin1(), false));
    page.refresh("Digital Settings");
    QVERIFY(!page.enabled(box));
}

void tst_AdvancedTabDigital::theLinksNeedTheirCapabilities_data()
{
    QTest::addColumn<QStringList>("missing");
    QTest::newRow("CameraLink") << QStringList{"hasCameraLinkMode"};
    QTest::newRow("CoaXPress") << QStringList{"hasCoaXPressLinksToUse"};
    QTest::newRow("both") << QStringList{"hasCameraLinkMode", "hasCoaXPressLinksToUse"};
}

void tst_AdvancedTabDigital::theLinksNeedTheirCapabilities()
{
    QFETCH(const QStringList, missing);
    AdvancedPage page([&](emulator::Camera &camera) {
        for (const QString &capability : missing)
            camera.changeMakeUp(capability, false);
    });
    QCOMPARE(page.find("CameraLink Mode") == nullptr, missing.contains("hasCameraLinkMode"));
    QCOMPARE(page.find("CoaXPress Links") == nullptr, missing.contains("hasCoaXPressLinksToUse"));
    QCOMPARE(page.digital()->property("selectedCameraLinkModeIndex").toInt() == -1,
             missing.contains("hasCameraLinkMode"));
    QCOMPARE(page.digital()->property("selectedCoaXPressLinksIndex").toInt() == -1,
             missing.contains("hasCoaXPressLinksToUse"));
}

// Black hot

void tst_AdvancedTabDigital::blackHotIsSwitched_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::newRow("by mouse") << false;
    QTest::newRow("by keyboard") << true;
}

void tst_AdvancedTabDigital::blackHotIsSwitched()
{
    QFETCH(const bool, byKeyboard);
    AdvancedPage page;
    QVERIFY(!page.checked("Black Hot Mode"));
    QCOMPARE(page.commandsOf([&] { page.use("Black Hot Mode", byKeyboard); }), QStringList("zvtSetBlackHotEnabled 1"));
    QVERIFY(page.checked("Black Hot Mode"));
    QCOMPARE(page.commandsOf([&] { page.use("Black Hot Mode", byKeyboard); }), QStringList("zvtSetBlackHotEnabled 0"));
    QVERIFY(page.set("agc.blackHotEnabled", true));
    page.refresh("Digital Settings");
    QVERIFY(page.checked("Black Hot Mode"));
}

void tst_AdvancedTabDigital::blackHotNeedsTheCamera()
{
    AdvancedPage page;
    QVERIFY(page.find("Black Hot Mode"));
    QVERIFY(page.set("agc.blackHotAvailable", false));
    page.refresh("Digital Settings");
    QVERIFY(!page.find("Black Hot Mode"));
}

void tst_AdvancedTabDigital::refusedBlackHotStaysUntilARead()
{
    AdvancedPage page;
    page.gate().failAlways("zvtSetBlackHotEnabled");
    QCOMPARE(page.commandsOf([&] { page.click("Black Hot Mode"); }), QStringList("zvtSetBlackHotEnabled 1"));
    QVERIFY(page.checked("Black Hot Mode"));
    QVERIFY(!page.digital()->property("blackHotEnabled").toBool());
    page.refresh("Digital Settings");
    QVERIFY(!page.checked("Black Hot Mode"));
}

void tst_AdvancedTabDigital::blackHotKeepsItsStateIfItsAvailabilityIsNotRead()
{
    AdvancedPage page;
    page.click("Black Hot Mode");
    page.settle();
    QVERIFY(page.set("agc.blackHotEnabled", false));
    page.gate().failAlways("zvtGetBlackHotAvailable");
    QCOMPARE(page.calls("zvtGetBlackHotEnabled", [&] { page.refresh("Digital Settings"); }), 0);
    QVERIFY(page.checked("Black Hot Mode"));
    page.gate().failNever();
    page.refresh("Digital Settings");
    QVERIFY(!page.checked("Black Hot Mode"));
}

ZVT_TEST(tst_AdvancedTabDigital)
#include "tst_AdvancedTabDigital.moc"
