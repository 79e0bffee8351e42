#include "tests/page/OverlaySection.h"
#include "tests/support/Test.h"

/// The section "Overlay Settings" of the Video page.
class tst_VideoTabOverlay : public Test
{
    Q_OBJECT

private slots:
    void aCollapsedSectionIsNotRead();
    void theHeaderReadsBeforeItOpens();
    void theSectionOpensByKeyboard();
    void itIsReadWhenThePageIsShown();
    void theBodyIsOffDuringARead();
    void theBodyIsOffWhileDisconnected();
    void aReadWritesNothing();
    void cameraAndModeShowTheRows_data();
    void cameraAndModeShowTheRows();
    void rowsNeedTheOverlay();

    void eachSwitchFollowsTheCameraAndSetsIt_data();
    void eachSwitchFollowsTheCameraAndSetsIt();
    void switchesWithoutEquipmentAreHidden_data();
    void switchesWithoutEquipmentAreHidden();
    void switchesAreInTheOrderOfThePage();
    void aRefusedSwitchStaysUntilARead();
    void messagesAndOverlayAreSwitched_data();
    void messagesAndOverlayAreSwitched();
    void commandsReachTheCamera_data();
    void commandsReachTheCamera();
    void defaultsAreShown();

    void aTextOfTheUserIsEntered();
    void aTextOfTheUserIsEnteredOnFocusLoss();
    void aRefusedTextOfTheUserFallsBack();
    void aRefusedSwitchOfTheUserTextFallsBack();
    void typedTextSurvivesARead();
    void nothingIsClipped_data();
    void nothingIsClipped();
};

namespace
{

/// The switches of the texts in the order of the page.
const QStringList textsInOrder{"Logo",
                               "Focus",
                               "Date",
                               "Camera Info",
                               "Time",
                               "IRIG",
                               "Hour Meter",
                               "Front Panel Temp",
                               "Lens Temp",
                               "Air Gap Temp",
                               "Palette",
                               "Internal Temp",
                               "Chassis Temp",
                               "FOV",
                               "State Name",
                               "Zoom",
                               "Status/Preset : Integration Time",
                               "Frame Rate",
                               "Flag"};

/// A camera with all sensors. It first lacks the one at the chassis, since only then the one in the interior is read.
void addAllSensors(OverlaySection &page)
{
    auto &camera = page.rig().camera();
    camera.disconnect();
    camera.changeMakeUp("hasChassisTemperature", false);
    camera.changeMakeUp("hasInternalTemperature", true);
    camera.connect();
    page.settle();
    camera.disconnect();
    camera.changeMakeUp("hasChassisTemperature", true);
    camera.connect();
    page.settle();
}

} // namespace

void tst_VideoTabOverlay::aCollapsedSectionIsNotRead()
{
    OverlaySection page;
    page.click(OverlaySection::header);
    QVERIFY(!page.find("Show Overlay"));
    QCOMPARE(page.reads([&] {
        QMetaObject::invokeMethod(page.cameraModel(), "refreshAllVisible");
        page.showTab(0);
        page.showTab(3);
    }),
             0);
}

void tst_VideoTabOverlay::theHeaderReadsBeforeItOpens()
{
    OverlaySection page;
    QVERIFY(page.find("Show Overlay"));
    QVERIFY(page.overlay()->property("visible").toBool());
    QCOMPARE(page.reads([&] { page.refresh(); }), 1);
    QCOMPARE(page.reads([&] { page.click(OverlaySection::header); }), 0);
    QVERIFY(!page.overlay()->property("visible").toBool());
    QCOMPARE(page.reads([&] { page.click(OverlaySection::header); }), 1);
}

void tst_VideoTabOverlay::theSectionOpensByKeyboard()
{
    OverlaySection page;
    page.item(OverlaySection::header).forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_Space);
    QVERIFY(!page.find("Show Overlay"));
    QCOMPARE(page.reads([&] { page.press(Qt::Key_Return); }), 1);
    QVERIFY(page.find("Show Overlay"));
}

void tst_VideoTabOverlay::itIsReadWhenThePageIsShown()
{
    OverlaySection page;
    QCOMPARE(page.reads([&] { page.showTab(0); }), 0);
    QCOMPARE(page.reads([&] { page.showTab(3); }), 1);
    page.rig().camera().disconnect();
    page.settle();
    QCOMPARE(page.reads([&] { page.rig().camera().connect(); }), 1);
    QCOMPARE(page.reads([&] { QMetaObject::invokeMethod(page.cameraModel(), "refreshAllVisible"); }), 1);
}

void tst_VideoTabOverlay::theBodyIsOffDuringARead()
{
    OverlaySection page;
    page.rig().gate().hold("zvtGetVideoOverlayPalette");
    page.click("Refresh Overlay Settings");
    QVERIFY(page.rig().gate().waitHeld("zvtGetVideoOverlayPalette"));
    page.awaitFrame();
    QVERIFY(page.item(OverlaySection::header).property("sectionLoading").toBool());
    for (const char *name : {"Show Messages", "Clear Message", "Show Overlay", "Select All", "Logo"})
        QVERIFY2(!page.enabled(name), name);
    page.rig().gate().release("*");
    page.settle();
    QVERIFY(page.enabled("Show Overlay"));
}

void tst_VideoTabOverlay::theBodyIsOffWhileDisconnected()
{
    OverlaySection page;
    page.rig().camera().disconnect();
    page.settle();
    QVERIFY(!page.enabled("Show Overlay") && !page.enabled("Logo"));
}

void tst_VideoTabOverlay::aReadWritesNothing()
{
    OverlaySection page;
    QCOMPARE(page.commandsOf([&] {
        for (const bool shown : {true, false}) {
            for (const OverlayFlag &flag : overlayFlags)
                page.rig().gate().script(flag.getter(), shown);
            page.rig().gate().script("zvtGetVideoOverlayTextColor", shown ? 4 : 0);
            page.rig().gate().script("zvtGetVideoOverlayTextBackground", shown ? 0 : 4);
            page.rig().gate().script("zvtGetVideoOverlayEnabled", shown);
            page.refresh();
        }
    }),
             QStringList());
}

void tst_VideoTabOverlay::cameraAndModeShowTheRows_data()
{
    QTest::addColumn<bool>("customization");
    QTest::addColumn<bool>("mode");
    QTest::addColumn<bool>("textColors");
    QTest::addColumn<bool>("userText");
    for (int row = 0; row < 16; ++row)
        QTest::addRow("%d%d%d%d", row & 1, row >> 1 & 1, row >> 2 & 1, row >> 3)
            << bool(row & 1) << bool(row & 2) << bool(row & 4) << bool(row & 8);
}

void tst_VideoTabOverlay::cameraAndModeShowTheRows()
{
    QFETCH(const bool, customization);
    QFETCH(const bool, mode);
    QFETCH(const bool, textColors);
    QFETCH(const bool, userText);
    OverlaySection page("everything", [=](emulator::Camera &camera) {
        camera.changeMakeUp("hasOverlayCustomization", customization);
        camera.gate().script("zvtGetVideoOverlayTextColorsAvailable", textColors);
        camera.gate().script("zvtGetVideoOverlayUserDefinedFieldAvailable", userText);
    });
    page.setManufacturingMode(mode);
    const bool custom = customization || mode;
    QVERIFY(page.find("Show Overlay"));
    for (const char *name : {"Show Messages", "Clear Message", "Fields To Display", "Select All", "Select None",
                             "Defaults", "AGC ROI", "Pick AGC ROI Color", "Focus ROI", "Logo", "Frame Rate"})
        QVERIFY2((page.find(name) != nullptr) == custom, name);
    for (const char *name : {"Text Colors", "Foreground: Transparent", "Background: Color", "Pick Foreground Color"})
        QVERIFY2((page.find(name) != nullptr) == ((customization && textColors) || mode), name);
    for (const char *name : {"User Text", "Text To Display"})
        QVERIFY2((page.find(name) != nullptr) == (custom && userText), name);
}

void tst_VideoTabOverlay::rowsNeedTheOverlay()
{
    OverlaySection page;
    for (const bool shown : {false, true}) {
        page.rig().gate().script("zvtGetVideoOverlayEnabled", shown);
        page.refresh();
        QCOMPARE(page.checked("Show Overlay"), shown);
        for (const char *name : {"Foreground: Transparent", "Background: Color", "Select All", "Defaults", "AGC ROI",
                                 "Focus ROI", "User Text", "Logo", "Flag"})
            QVERIFY2(page.enabled(name) == shown, name);
        for (const char *name : {"Show Messages", "Clear Message", "Show Overlay"})
            QVERIFY2(page.enabled(name), name);
    }
}

// Switches

void tst_VideoTabOverlay::eachSwitchFollowsTheCameraAndSetsIt_data()
{
    QTest::addColumn<int>("flag");
    for (int flag = 0; flag < int(std::size(overlayFlags)); ++flag)
        QTest::newRow(overlayFlags[flag].property) << flag;
}

void tst_VideoTabOverlay::eachSwitchFollowsTheCameraAndSetsIt()
{
    QFETCH(const int, flag);
    const OverlayFlag &row = overlayFlags[flag];
    OverlaySection page;
    addAllSensors(page);
    const QQuickItem &toggle = page.item(row.text);
    QCOMPARE(toggle.property("text").toString(), row.text);
    for (const bool shown : {true, false}) {
        page.rig().gate().script(row.getter(), shown);
        page.refresh();
        QCOMPARE(page.checked(row.text), shown);
        for (const bool byKeyboard : {false, true}) {
            const bool wanted = shown == byKeyboard;
            QCOMPARE(page.commandsOf([&] { page.use(row.text, byKeyboard); }), QStringList(row.command(wanted)));
            QCOMPARE(page.overlay()->property(row.property).toBool(), wanted);
            QCOMPARE(page.checked(row.text), wanted);
        }
    }
}

void tst_VideoTabOverlay::switchesWithoutEquipmentAreHidden_data()
{
    QTest::addColumn<int>("flag");
    for (int flag = 0; flag < int(std::size(overlayFlags)); ++flag)
        if (overlayFlags[flag].needs)
            QTest::newRow(overlayFlags[flag].property) << flag;
}

void tst_VideoTabOverlay::switchesWithoutEquipmentAreHidden()
{
    QFETCH(const int, flag);
    const OverlayFlag &row = overlayFlags[flag];
    OverlaySection page;
    addAllSensors(page);
    QVERIFY(page.find(row.text));
    auto &camera = page.rig().camera();
    if (row.needs == QByteArrayView("hasLensTemp")) {
        page.rig().gate().script("zvtGetHasLensTemperature", 0);
        page.refresh();
    } else {
        camera.disconnect();
        // The sensor in the interior is read only without one at the chassis.
        if (row.needs == QByteArrayView("hasInternalTemperature"))
            QVERIFY(camera.changeMakeUp("hasChassisTemperature", false));
        QVERIFY(camera.changeMakeUp(row.needs, false));
        camera.connect();
        page.settle();
    }
    for (const bool mode : {false, true}) {
        page.setManufacturingMode(mode);
        QVERIFY(!page.find(row.text));
        QVERIFY(page.find("Frame Rate"));
    }
}

void tst_VideoTabOverlay::switchesAreInTheOrderOfThePage()
{
    OverlaySection page;
    addAllSensors(page);
    page.item(textsInOrder.first()).forceActiveFocus(Qt::TabFocusReason);
    QPointF last;
    for (const QString &text : textsInOrder) {
        const QQuickItem &toggle = page.item(text);
        QVERIFY2(toggle.hasActiveFocus(), qPrintable(text));
        const QPointF place = toggle.mapToScene({0, 0});
        QVERIFY(place.y() > last.y() || (place.y() == last.y() && place.x() > last.x()));
        last = place;
        page.press(Qt::Key_Tab);
    }
}

void tst_VideoTabOverlay::aRefusedSwitchStaysUntilARead()
{
    OverlaySection page;
    page.rig().gate().failAlways("zvtSetVideoOverlayShowLogo");
    page.click("Logo");
    QVERIFY(page.checked("Logo"));
    page.refresh();
    QVERIFY(!page.checked("Logo"));
}

void tst_VideoTabOverlay::messagesAndOverlayAreSwitched_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("command");
    QTest::newRow("messages") << "Show Messages"
                              << "zvtSetVideoOverlayShowMessage ";
    QTest::newRow("overlay") << "Show Overlay"
                             << "zvtSetVideoOverlayEnabled ";
}

void tst_VideoTabOverlay::messagesAndOverlayAreSwitched()
{
    QFETCH(const QString, text);
    QFETCH(const QString, command);
    OverlaySection page;
    QVERIFY(page.checked(text));
    QCOMPARE(page.commandsOf([&] { page.use(text, false); }), QStringList(command + "false"));
    QCOMPARE(page.commandsOf([&] { page.use(text, true); }), QStringList(command + "true"));
    QVERIFY(page.checked(text));
}

void tst_VideoTabOverlay::commandsReachTheCamera_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::newRow("mouse") << false;
    QTest::newRow("keyboard") << true;
}

void tst_VideoTabOverlay::commandsReachTheCamera()
{
    QFETCH(const bool, byKeyboard);
    OverlaySection page;
    const auto commands
        = [&](const char *button) { return page.commandsOf([&] { page.use(QLatin1String(button), byKeyboard); }); };
    QCOMPARE(commands("Clear Message"), QStringList("zvtVideoOverlayClearMessage"));
    commands("Select None");
    for (const OverlayFlag &flag : overlayFlags)
        QVERIFY2(!page.overlay()->property(flag.property).toBool(), flag.property);
    // All 21 switches but the one of the interior, and the user's text.
    QCOMPARE(commands("Select All").size(), 21);
    for (const QString &text : textsInOrder)
        if (text != "Internal Temp")
            QVERIFY2(page.checked(text), qPrintable(text));
    QVERIFY(page.checked("AGC ROI") && page.checked("Focus ROI") && page.checked("User Text"));
    QCOMPARE(commands("Defaults"), QStringList("zvtVideoOverlayUseDefaults"));
}

void tst_VideoTabOverlay::defaultsAreShown()
{
    OverlaySection page;
    page.click("Select All");
    page.click("Show Messages");
    page.settle();
    QCOMPARE(page.reads([&] { page.click("Defaults"); }), 1);
    QVERIFY(page.checked("Show Messages") && page.checked("Camera Info") && page.checked("Frame Rate"));
    QVERIFY(!page.checked("Logo") && !page.checked("AGC ROI") && !page.checked("User Text"));
}

// The text of the user

void tst_VideoTabOverlay::aTextOfTheUserIsEntered()
{
    OverlaySection page;
    QVERIFY(!page.enabled("Text To Display"));
    QCOMPARE(page.commandsOf([&] { page.click("User Text"); }),
             QStringList("zvtSetVideoOverlayShowUserDefinedField true"));
    QVERIFY(page.enabled("Text To Display"));
    page.type("Text To Display", "Bench 3");
    QCOMPARE(page.commandsOf([&] { page.press(Qt::Key_Return); }),
             QStringList("zvtSetVideoOverlayUserDefinedFieldText \"Bench 3\""));
    QCOMPARE(page.commandsOf([&] { page.press(Qt::Key_Tab); }), QStringList());
    QCOMPARE(page.text("Text To Display"), "Bench 3");
    // Esc discards a text.
    page.type("Text To Display", "Bench 4");
    QCOMPARE(page.commandsOf([&] {
        page.press(Qt::Key_Escape);
        page.press(Qt::Key_Tab);
    }),
             QStringList());
    QCOMPARE(page.text("Text To Display"), "Bench 3");
    // The text of another client is shown.
    QVERIFY(page.set("overlay.userText", "Bench 5"));
    page.refresh();
    QCOMPARE(page.text("Text To Display"), "Bench 5");
}

void tst_VideoTabOverlay::aTextOfTheUserIsEnteredOnFocusLoss()
{
    OverlaySection page;
    page.click("User Text");
    page.type("Text To Display", "Bench 3");
    QCOMPARE(page.commandsOf([&] { page.press(Qt::Key_Tab); }),
             QStringList("zvtSetVideoOverlayUserDefinedFieldText \"Bench 3\""));
    // A field that is disabled while the operator types enters nothing.
    page.type("Text To Display", "Bench 4");
    QCOMPARE(page.commandsOf([&] { page.rig().camera().disconnect(); }), QStringList());
}

void tst_VideoTabOverlay::aRefusedTextOfTheUserFallsBack()
{
    OverlaySection page;
    page.click("User Text");
    page.type("Text To Display", "Bench 3");
    page.press(Qt::Key_Return);
    // The field has no limit; the camera has one of 64 bytes.
    page.type("Text To Display", QString(70, u'x'));
    QCOMPARE(page.text("Text To Display").size(), 70);
    QCOMPARE(page.commandsOf([&] { page.press(Qt::Key_Return); }).size(), 1);
    QCOMPARE(page.text("Text To Display"), "Bench 3");
}

void tst_VideoTabOverlay::aRefusedSwitchOfTheUserTextFallsBack()
{
    OverlaySection page;
    page.rig().gate().failNext("zvtSetVideoOverlayShowUserDefinedField");
    page.click("User Text");
    QVERIFY(!page.checked("User Text"));
    page.click("User Text");
    QVERIFY(page.checked("User Text"));
}

void tst_VideoTabOverlay::typedTextSurvivesARead()
{
    OverlaySection page;
    page.click("User Text");
    page.type("Text To Display", "Ben");
    QMetaObject::invokeMethod(page.overlay(), "refresh");
    page.settle();
    QVERIFY(page.item("Text To Display").hasActiveFocus());
    page.PageDriver::type("ch");
    page.press(Qt::Key_Return);
    QCOMPARE(page.text("Text To Display"), "Bench");
}

void tst_VideoTabOverlay::nothingIsClipped_data()
{
    QTest::addColumn<QString>("profile");
    QTest::addColumn<bool>("mode");
    for (const char *profile : {"everything", "low-cost"})
        for (const bool mode : {false, true})
            QTest::addRow("%s %d", profile, mode) << QString::fromLatin1(profile) << mode;
}

void tst_VideoTabOverlay::nothingIsClipped()
{
    QFETCH(const QString, profile);
    QFETCH(const bool, mode);
    OverlaySection page(profile);
    page.setManufacturingMode(mode);
    for (const int width : {640, 900, 1400}) {
        page.resize({width, 900});
        const QRectF place(0, 0, width, 900);
        const auto texts = PageDriver::shownTexts(*page.page());
        QVERIFY(texts.size() > 10);
        for (const QQuickItem *text : texts)
            QVERIFY2(PageDriver::fits(*text, place), qPrintable(text->property("text").toString()));
        page.saveScreenshot(QString::number(width));
    }
}

ZVT_TEST(tst_VideoTabOverlay)
#include "tst_VideoTabOverlay.moc"
