#include "tests/page/VideoPage.h"
#include "tests/support/Test.h"

namespace
{

/// The texts of the rows of a combo box.
QStringList rowsOf(const VideoPage &page, const QString &box)
{
    return page.item(box).property("model").toStringList();
}

} // namespace

/// The controls of the section "General Video Settings", except for its sliders.
class tst_VideoTabGeneral : public Test
{
    Q_OBJECT

private slots:
    void formatIsChosen();
    void theModeOffersAllFormats();
    void unlistedFormatIsEmpty();
    void anotherListKeepsItsRow();

    void updateRateIsChosen();
    void rowsNeedTheirCapabilities_data();
    void rowsNeedTheirCapabilities();

    void filterRateIsSwitchedAndSet_data();
    void filterRateIsSwitchedAndSet();
    void dampeningIsSwitchedLockedAndSet_data();
    void dampeningIsSwitchedLockedAndSet();
    void dampeningOfZeroLocks();
    void temporalFilterAndThreshold();

    void wrongNumbersAreNotSent_data();
    void wrongNumbersAreNotSent();
    void refusedNumberIsReplaced();

    void theModeShowsItsSettings_data();
    void theModeShowsItsSettings();
    void boardWithoutDetailEnhancement();
    void sharpnessIsChosen();
    void manualRangeIsTyped();

    void paletteIsChosen();
    void levelsBelongToFourFormats();
    void levelsAreReset_data();
    void levelsAreReset();

    void refusedChoiceStaysUntilARead_data();
    void refusedChoiceStaysUntilARead();
    void refusedSwitchStaysUntilARead();
    void controlsFollowTheCamera();
};

void tst_VideoTabGeneral::formatIsChosen()
{
    VideoPage page;
    QCOMPARE(rowsOf(page, "Format").size(), 9);
    QCOMPARE(page.commandsOf([&] { page.choose("Format", "PAL (Square Pixel)"); }), QStringList("zvtSetVideoFormat 4"));
    QCOMPARE(page.commandsOf([&] { page.step("Format", Qt::Key_Down); }), QStringList("zvtSetVideoFormat 2"));
    QCOMPARE(page.shown("Format"), "SVGA");
}

void tst_VideoTabGeneral::theModeOffersAllFormats()
{
    VideoPage page;
    page.setMode(true);
    QCOMPARE(rowsOf(page, "Format").size(), 16);
    QCOMPARE(page.shown("Format"), "720p @ 60Hz");
    QCOMPARE(page.commandsOf([&] { page.choose("Format", "480i"); }), QStringList("zvtSetVideoFormat 101"));
    page.setMode(false);
    // The camera does not offer this format.
    QCOMPARE(page.shown("Format"), "");
    page.setMode(true);
    QCOMPARE(page.shown("Format"), "480i");
}

void tst_VideoTabGeneral::unlistedFormatIsEmpty()
{
    VideoPage page([](emulator::Camera &) {}, "edge-values");
    QCOMPARE(page.shown("Format"), "");
    QCOMPARE(page.commandsOf([&] { page.choose("Format", "Unknown Format"); }), QStringList("zvtSetVideoFormat 50"));
    page.refresh();
    QCOMPARE(page.shown("Format"), "Unknown Format");
}

// A combo box with new rows selects the first one.
void tst_VideoTabGeneral::anotherListKeepsItsRow()
{
    VideoPage page;
    // In the list of the mode it is in the same row, so that only the list is signalled.
    QVERIFY(page.set("video.format", 3));
    page.refresh();
    for (const bool mode : {true, false}) {
        page.setMode(mode);
        QCOMPARE(rowsOf(page, "Format").size(), mode ? 16 : 9);
        QCOMPARE(page.shown("Format"), "NTSC (Square Pixel)");
    }
}

void tst_VideoTabGeneral::updateRateIsChosen()
{
    VideoPage page;
    const QString field = QStringLiteral("Field - Best for Tracking Moving Objects");
    QCOMPARE(page.shown("Update Rate"), "Frame - Recommended For General Use");
    QCOMPARE(page.commandsOf([&] { page.choose("Update Rate", field); }), QStringList("zvtSetVideoUpdateRate 1"));
    QCOMPARE(page.commandsOf([&] { page.step("Update Rate", Qt::Key_Up); }), QStringList("zvtSetVideoUpdateRate 0"));
}

void tst_VideoTabGeneral::rowsNeedTheirCapabilities_data()
{
    QTest::addColumn<QStringList>("rows");
    QTest::newRow("hasUpdateRate") << QStringList{"Update Rate"};
    QTest::newRow("hasTemporalFilter") << QStringList{"Temporal Filter", "Threshold"};
}

void tst_VideoTabGeneral::rowsNeedTheirCapabilities()
{
    QFETCH(const QStringList, rows);
    const QString capability = QString::fromLatin1(QTest::currentDataTag());
    VideoPage page([&](emulator::Camera &camera) { camera.changeMakeUp(capability, false); });
    for (const char *row : {"Format", "Update Rate", "Temporal Filter", "Threshold", "AGC Mode"})
        QCOMPARE(page.find(row) != nullptr, !rows.contains(QLatin1String(row)));
}

// Filters

void tst_VideoTabGeneral::filterRateIsSwitchedAndSet_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::newRow("by mouse") << false;
    QTest::newRow("by keyboard") << true;
}

void tst_VideoTabGeneral::filterRateIsSwitchedAndSet()
{
    QFETCH(const bool, byKeyboard);
    VideoPage page([](emulator::Camera &camera) { camera.otherClient().set("agc.filterRateEnabled", false); });
    QVERIFY(!page.checked("Filter Rate") && !page.enabled("Filter Rate Value"));
    QCOMPARE(page.commandsOf([&] { page.use("Filter Rate", byKeyboard); }),
             QStringList("zvtSetVideoAGCFilterRateEnabled true"));
    QVERIFY(page.checked("Filter Rate") && page.enabled("Filter Rate Value"));
    QCOMPARE(page.commandsOf([&] { page.enter(page.item("Filter Rate Value"), "12.5"); }),
             QStringList("zvtSetVideoAGCFilterRate 12.5"));
    QCOMPARE(page.text("Filter Rate Value"), "12.5");
    QVERIFY(page.set("agc.filterRate", 3.25));
    page.refresh();
    QCOMPARE(page.text("Filter Rate Value"), "3.3");
    QCOMPARE(page.commandsOf([&] { page.use("Filter Rate", byKeyboard); }),
             QStringList("zvtSetVideoAGCFilterRateEnabled false"));
    QVERIFY(!page.enabled("Filter Rate Value"));
}

void tst_VideoTabGeneral::dampeningIsSwitchedLockedAndSet_data() { filterRateIsSwitchedAndSet_data(); }

void tst_VideoTabGeneral::dampeningIsSwitchedLockedAndSet()
{
    QFETCH(const bool, byKeyboard);
    VideoPage page([](emulator::Camera &camera) {
        camera.otherClient().set("agc.dampeningEnabled", false);
        camera.otherClient().set("agc.dampening", 0.0);
    });
    const auto areEnabled = [&](bool radios, bool field) {
        return page.enabled("Locked") == radios && page.enabled("User Defined") == radios
            && page.enabled("Dampening Value") == field;
    };
    QVERIFY(areEnabled(false, false));
    QVERIFY(page.checked("Locked") && !page.checked("User Defined"));
    QCOMPARE(page.commandsOf([&] { page.use("Dampening", byKeyboard); }),
             QStringList("zvtSetVideoAGCDampeningEnabled true"));
    QVERIFY(areEnabled(true, false));
    QCOMPARE(page.commandsOf([&] { page.use("User Defined", byKeyboard); }),
             QStringList("zvtSetVideoAGCDampening 0.5"));
    QVERIFY(areEnabled(true, true));
    QCOMPARE(page.text("Dampening Value"), "0.50");
    QCOMPARE(page.commandsOf([&] { page.enter(page.item("Dampening Value"), "0.25", Qt::Key_Return); }),
             QStringList("zvtSetVideoAGCDampening 0.25"));
    QCOMPARE(page.commandsOf([&] { page.use("Locked", byKeyboard); }), QStringList("zvtSetVideoAGCDampening 0"));
    QVERIFY(areEnabled(true, false));
    QVERIFY(page.checked("Locked") && !page.checked("User Defined"));
    QCOMPARE(page.commandsOf([&] { page.use("User Defined", byKeyboard); }),
             QStringList("zvtSetVideoAGCDampening 0.25"));
}

void tst_VideoTabGeneral::dampeningOfZeroLocks()
{
    VideoPage page([](emulator::Camera &camera) {
        camera.otherClient().set("agc.dampeningEnabled", true);
        camera.otherClient().set("agc.dampening", 0.5);
    });
    QVERIFY(page.checked("User Defined"));
    page.enter(page.item("Dampening Value"), "0");
    page.settle();
    QVERIFY(page.checked("Locked") && !page.checked("User Defined") && !page.enabled("Dampening Value"));
}

void tst_VideoTabGeneral::temporalFilterAndThreshold()
{
    VideoPage page;
    QCOMPARE(rowsOf(page, "Temporal Filter"), QStringList({"None", "4-Tap", "4-Tap Adaptive"}));
    QCOMPARE(page.shown("Temporal Filter"), "None");
    QVERIFY(page.findText("Threshold:") && !page.enabled("Threshold"));
    QCOMPARE(page.commandsOf([&] { page.choose("Temporal Filter", "4-Tap"); }),
             QStringList("zvtSetVideoTemporalFilter 1"));
    QVERIFY(page.enabled("Threshold"));
    QCOMPARE(page.commandsOf([&] { page.step("Temporal Filter", Qt::Key_Down); }),
             QStringList("zvtSetVideoTemporalFilter 2"));
    QVERIFY(page.enabled("Threshold"));
    QCOMPARE(page.commandsOf([&] { page.enter(page.item("Threshold"), "65535"); }),
             QStringList("zvtSetVideoTemporalFilterThreshold 65535"));
}

// Fields

void tst_VideoTabGeneral::wrongNumbersAreNotSent_data()
{
    QTest::addColumn<QStringList>("wrong");
    QTest::addColumn<QString>("hint");
    QTest::newRow("Filter Rate Value") << QStringList{"20.1", "-1", "x", "1.25"} << "Not between 0 and 20";
    QTest::newRow("Dampening Value") << QStringList{"1.01", "-0.1", "0.125"} << "Not between 0 and 1";
    QTest::newRow("Threshold") << QStringList{"65536", "-1", "1.5"} << "Not between 0 and 65535";
    QTest::newRow("Plateau P Value") << QStringList{"0", "16384", "10.5"} << "Not between 1 and 16383";
}

void tst_VideoTabGeneral::wrongNumbersAreNotSent()
{
    QFETCH(const QStringList, wrong);
    QFETCH(const QString, hint);
    const QString field = QString::fromLatin1(QTest::currentDataTag());
    VideoPage page([](emulator::Camera &camera) {
        camera.otherClient().set("agc.filterRateEnabled", true);
        camera.otherClient().set("agc.dampeningEnabled", true);
        camera.otherClient().set("agc.dampening", 0.5);
        camera.otherClient().set("video.temporalFilter", 1);
    });
    const QString before = page.text(field);
    QVERIFY(!before.isEmpty());
    QStringList hints;
    for (const QString &text : wrong) {
        QCOMPARE(page.commandsOf([&] { page.enter(page.item(field), text, Qt::Key_Return); }), QStringList());
        QCOMPARE(page.text(field), text);
        hints << page.item(field).property("fault").toString();
        page.press(Qt::Key_Escape);
        QCOMPARE(page.text(field), before);
    }
    QCOMPARE(hints.first(), hint);
    QVERIFY(!hints.contains(QString()));
}

void tst_VideoTabGeneral::refusedNumberIsReplaced()
{
    VideoPage page;
    const QString before = page.text("Plateau P Value");
    page.gate().failAlways("zvtSetVideoAGCPlateauP");
    QCOMPARE(page.commandsOf([&] { page.enter(page.item("Plateau P Value"), "77"); }),
             QStringList("zvtSetVideoAGCPlateauP 77"));
    QCOMPARE(page.text("Plateau P Value"), before);
}

// The gain control

void tst_VideoTabGeneral::theModeShowsItsSettings_data()
{
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QStringList>("rows");
    const QStringList plateau{"Plateau P Variable", "Plateau P Value"};
    const QStringList sharpness{"DDE Sharpness", "DDE Sharpness Value"};
    QTest::newRow("plateau") << "Plateau" << plateau;
    QTest::newRow("detail") << "DDE" << plateau + sharpness;
    QTest::newRow("linear") << "Auto Linear" << QStringList();
    QTest::newRow("manual") << "Manual Linear"
                            << QStringList{"Manual Low", "Manual High", "Manual Low Value", "Manual High Value"};
}

void tst_VideoTabGeneral::theModeShowsItsSettings()
{
    QFETCH(const QString, mode);
    QFETCH(const QStringList, rows);
    VideoPage page;
    QCOMPARE(rowsOf(page, "AGC Mode"), QStringList({"Plateau", "DDE", "Auto Linear", "Manual Linear"}));
    const int index = static_cast<int>(rowsOf(page, "AGC Mode").indexOf(mode));
    const QStringList expected
        = index == 0 ? QStringList() : QStringList(QStringLiteral("zvtSetVideoAGCMethod %1").arg(index));
    QCOMPARE(page.commandsOf([&] {
        if (index > 0)
            page.choose("AGC Mode", mode);
    }),
             expected);
    for (const char *name : {"Plateau P Variable", "Plateau P Value", "DDE Sharpness", "DDE Sharpness Value",
                             "Manual Low", "Manual High", "Manual Low Value", "Manual High Value"})
        QVERIFY2((page.find(name) != nullptr) == rows.contains(QLatin1String(name)), name);
}

void tst_VideoTabGeneral::boardWithoutDetailEnhancement()
{
    VideoPage page([](emulator::Camera &) {}, "board-6");
    QCOMPARE(rowsOf(page, "AGC Mode"), QStringList({"Plateau", "Auto Linear", "Manual Linear"}));
    QCOMPARE(page.commandsOf([&] { page.choose("AGC Mode", "Auto Linear"); }), QStringList("zvtSetVideoAGCMethod 2"));
    // The camera reports a mode that is not offered. Its settings are shown.
    page.gate().script("zvtGetVideoAGCMethod", 1);
    page.refresh();
    QCOMPARE(page.shown("AGC Mode"), "");
    QVERIFY(page.find("DDE Sharpness"));
}

void tst_VideoTabGeneral::sharpnessIsChosen()
{
    VideoPage page([](emulator::Camera &camera) { camera.otherClient().set("agc.method", 1); });
    QCOMPARE(rowsOf(page, "DDE Sharpness Value"), QStringList({"1", "2", "3", "4", "5", "6", "7"}));
    QCOMPARE(page.commandsOf([&] { page.choose("DDE Sharpness Value", "6"); }),
             QStringList("zvtSetVideoAGCDDESharpness 6"));
    QCOMPARE(page.item("DDE Sharpness").property("value").toInt(), 6);
    QCOMPARE(page.commandsOf([&] { page.step("DDE Sharpness Value", Qt::Key_Down); }),
             QStringList("zvtSetVideoAGCDDESharpness 7"));
}

void tst_VideoTabGeneral::manualRangeIsTyped()
{
    VideoPage page([](emulator::Camera &camera) { camera.otherClient().set("agc.method", 3); });
    QCOMPARE(page.commandsOf([&] {
        page.enter(page.item("Manual Low Value"), "1200");
        page.enter(page.item("Manual High Value"), "0");
        page.enter(page.item("Manual High Value"), "16384", Qt::Key_Return);
    }),
             QStringList({"zvtSetVideoAGCManualLow 1200", "zvtSetVideoAGCManualHigh 0"}));
    QCOMPARE(page.item("Manual High Value").property("fault").toString(), "Not between 0 and 16383");
}

// The picture

void tst_VideoTabGeneral::paletteIsChosen()
{
    VideoPage page;
    QCOMPARE(page.shown("Palette"), "Grayscale");
    QCOMPARE(page.commandsOf([&] { page.choose("Palette", "Sepia"); }), QStringList("zvtLoadPalette \"Sepia\""));
    QCOMPARE(page.commandsOf([&] { page.step("Palette", Qt::Key_Up); }), QStringList("zvtLoadPalette \"Rainbow\""));
}

void tst_VideoTabGeneral::levelsBelongToFourFormats()
{
    VideoPage page;
    page.setMode(true);
    for (const int format : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 101, 102}) {
        QVERIFY(page.set("video.format", format));
        page.refresh();
        const bool isSD = format < 5 && format != 2;
        for (const char *name : {"Brightness", "Reset Brightness", "Contrast", "Reset Contrast"})
            QVERIFY2((page.find(name) != nullptr) == isSD, qPrintable(QString::number(format)));
    }
}

void tst_VideoTabGeneral::levelsAreReset_data() { filterRateIsSwitchedAndSet_data(); }

void tst_VideoTabGeneral::levelsAreReset()
{
    QFETCH(const bool, byKeyboard);
    VideoPage page([](emulator::Camera &camera) {
        camera.otherClient().set("video.format", 0);
        camera.otherClient().set("video.brightness", -15);
        camera.otherClient().set("video.contrast", 127);
    });
    QCOMPARE(page.item("Brightness").property("value").toInt(), -15);
    QCOMPARE(page.item("Contrast").property("value").toInt(), 127);
    QCOMPARE(page.commandsOf([&] { page.use("Reset Brightness", byKeyboard); }),
             QStringList("zvtSetVideoBrightness 0"));
    QCOMPARE(page.commandsOf([&] { page.use("Reset Contrast", byKeyboard); }), QStringList("zvtSetVideoContrast 0"));
    QCOMPARE(page.item("Brightness").property("value").toInt(), 0);
    QCOMPARE(page.item("Contrast").property("value").toInt(), 0);
    QCOMPARE(page.text("Reset Brightness"), "Reset");
}

// Refused values

void tst_VideoTabGeneral::refusedChoiceStaysUntilARead_data()
{
    QTest::addColumn<QString>("call");
    QTest::addColumn<QString>("row");
    QTest::newRow("Format") << "zvtSetVideoFormat"
                            << "PAL";
    QTest::newRow("AGC Mode") << "zvtSetVideoAGCMethod"
                              << "Auto Linear";
    QTest::newRow("Palette") << "zvtLoadPalette"
                             << "Iron";
    QTest::newRow("Update Rate") << "zvtSetVideoUpdateRate"
                                 << "Field - Best for Tracking Moving Objects";
    QTest::newRow("Temporal Filter") << "zvtSetVideoTemporalFilter"
                                     << "4-Tap";
}

void tst_VideoTabGeneral::refusedChoiceStaysUntilARead()
{
    QFETCH(const QString, call);
    QFETCH(const QString, row);
    const QString box = QString::fromLatin1(QTest::currentDataTag());
    VideoPage page;
    const QString before = page.shown(box);
    page.gate().failAlways(call.toStdString());
    page.choose(box, row);
    QCOMPARE(page.shown(box), row);
    page.refresh();
    QCOMPARE(page.shown(box), before);
}

void tst_VideoTabGeneral::refusedSwitchStaysUntilARead()
{
    VideoPage page([](emulator::Camera &camera) {
        camera.otherClient().set("agc.dampeningEnabled", true);
        camera.otherClient().set("agc.dampening", 0.5);
        camera.otherClient().set("agc.filterRateEnabled", true);
    });
    for (const char *call : {"zvtSetVideoAGCFilterRateEnabled", "zvtSetVideoAGCDampening"})
        page.gate().failAlways(call);
    page.click("Filter Rate");
    page.click("Locked");
    QVERIFY(!page.checked("Filter Rate") && page.checked("Locked") && !page.checked("User Defined"));
    page.refresh();
    QVERIFY(page.checked("Filter Rate") && !page.checked("Locked") && page.checked("User Defined"));
}

void tst_VideoTabGeneral::controlsFollowTheCamera()
{
    VideoPage page;
    for (const auto &[name, value] :
         std::initializer_list<std::pair<const char *, QVariant>>{{"video.format", 1},
                                                                  {"video.updateRate", 1},
                                                                  {"agc.filterRateEnabled", true},
                                                                  {"agc.dampeningEnabled", true},
                                                                  {"agc.dampening", 0.75},
                                                                  {"video.temporalFilter", 2},
                                                                  {"agc.method", 1},
                                                                  {"agc.plateau", 1234},
                                                                  {"agc.sharpness", 5},
                                                                  {"palette.name", "Ice"},
                                                                  {"video.brightness", 9},
                                                                  {"video.contrast", -9}})
        QVERIFY2(page.set(name, value), name);
    page.refresh();
    QCOMPARE(page.shown("Format"), "PAL");
    QCOMPARE(page.shown("Update Rate"), "Field - Best for Tracking Moving Objects");
    QVERIFY(page.checked("Filter Rate") && page.checked("Dampening") && page.checked("User Defined"));
    QCOMPARE(page.text("Dampening Value"), "0.75");
    QCOMPARE(page.shown("Temporal Filter"), "4-Tap Adaptive");
    QCOMPARE(page.shown("AGC Mode"), "DDE");
    QCOMPARE(page.text("Plateau P Value"), "1234");
    QCOMPARE(page.shown("DDE Sharpness Value"), "5");
    QCOMPARE(page.shown("Palette"), "Ice");
    for (const auto &[slider, value] : std::initializer_list<std::pair<const char *, int>>{
             {"Plateau P Variable", 1234}, {"DDE Sharpness", 5}, {"Brightness", 9}, {"Contrast", -9}})
        QCOMPARE(page.item(slider).property("value").toInt(), value);
}

ZVT_TEST(tst_VideoTabGeneral)
#include "tst_VideoTabGeneral.moc"
