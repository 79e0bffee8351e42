#include "tests/page/SetupPage.h"
#include "tests/support/Test.h"

#include <QColor>

/// The rows of the presets on the Setup page.
class tst_SetupTabPresets : public Test
{
    Q_OBJECT

private slots:
    void modeIsChosen();
    void oneModeNeedsNoChoice();
    void onePresetHasOneRow();
    void partsOfARowFollowTheMode_data();
    void partsOfARowFollowTheMode();
    void tileTellsAndActsByMode_data();
    void tileTellsAndActsByMode();
    void dwellCountIsTyped();
    void dwellCountThatIsNoneIsKeptAndMarked_data();
    void dwellCountThatIsNoneIsKeptAndMarked();
    void integrationTimeIsTyped();
    void integrationTimeThatIsNoNumberIsKeptAndMarked();
    void halfTypedTimeSurvivesARead();
    void halfTypedNumberIsNotTakenWhenItIsDisabled_data();
    void halfTypedNumberIsNotTakenWhenItIsDisabled();
    void refusedRateGivesWayToTheCameras_data();
    void refusedRateGivesWayToTheCameras();
    void valuesThatWereNeverReadAreEmpty();
    void firstReadIsNoAnswer();
    void integrationTimeIsTakenWhenTheFocusLeaves();
    void answerOfTheCameraIsMarked();
    void calibrationFixesTheTime();
    void frameRateIsTyped();
    void frameRateIsChosen();
    void maximumFrameRateIsAskedFor();
    void withoutRatesThereIsNoMaximum();
    void superframeRateStandsInTheFirstRow();
    void gigEPresetIsChosen();
    void videoPresetIsChosen();

private:
    enum Mode { Single, Superframing, Sequencing };
    static void setMode(SetupPage &page, int mode);
    static QColor colour(SetupPage &page, const QString &tile);
};

void tst_SetupTabPresets::setMode(SetupPage &page, int mode)
{
    page.general()->setProperty("sequencingMode", mode);
    page.settle();
}

QColor tst_SetupTabPresets::colour(SetupPage &page, const QString &tile)
{
    return page.item(tile).property("contentItem").value<QQuickItem *>()->property("color").value<QColor>();
}

void tst_SetupTabPresets::modeIsChosen()
{
    SetupPage page;
    QCOMPARE(page.item("Sequencing Mode").property("toolTip").toString(), "Sequencing Mode");
    QCOMPARE(page.commandsOf([&page] { page.choose("Sequencing Mode", "Superframing"); }),
             QStringList{"controller.SetPresetSequencingMode 1"});
    QCOMPARE(page.shown("Sequencing Mode"), "Superframing");
}

void tst_SetupTabPresets::oneModeNeedsNoChoice()
{
    const SetupPage page("low-cost");
    QVERIFY(!page.find("Sequencing Mode"));
}

void tst_SetupTabPresets::onePresetHasOneRow()
{
    const SetupPage one("low-cost");
    const SetupPage four;
    QVERIFY(one.find("Preset 0"));
    for (const QString name : {"Preset 1", "Preset 2", "Preset 3"}) {
        QVERIFY(!one.find(name));
        QVERIFY(four.find(name));
    }
}

void tst_SetupTabPresets::partsOfARowFollowTheMode_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QStringList>("shown");
    QTest::addColumn<QStringList>("hidden");
    QTest::newRow("single") << int(Single) << QStringList{"Frame Rate 0", "Frame Rate 3", "Maximum Frame Rate 0"}
                            << QStringList{"Dwell Count 0", "Superframe Rate", "GigE Preset", "Video Preset"};
    QTest::newRow("superframing") << int(Superframing)
                                  << QStringList{"Superframe Rate", "Maximum Superframe Rate", "Video Preset"}
                                  << QStringList{"Dwell Count 0", "Frame Rate 0", "Frame Rate 3",
                                                 "Maximum Frame Rate 0", "GigE Preset"};
    QTest::newRow("sequencing") << int(
        Sequencing) << QStringList{"Dwell Count 0", "Dwell Count 3", "Frame Rate 0", "GigE Preset", "Video Preset"}
                                << QStringList{"Superframe Rate"};
}

void tst_SetupTabPresets::partsOfARowFollowTheMode()
{
    QFETCH(const int, mode);
    QFETCH(const QStringList, shown);
    QFETCH(const QStringList, hidden);
    SetupPage page;
    setMode(page, mode);
    for (const QString &name : shown)
        QVERIFY2(page.find(name), qPrintable(name));
    for (const QString &name : hidden)
        QVERIFY2(!page.find(name), qPrintable(name));
    QCOMPARE(page.findText("x") != nullptr, mode == Sequencing);
}

void tst_SetupTabPresets::tileTellsAndActsByMode_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("inUse");
    QTest::addColumn<QString>("toolTip");
    QTest::addColumn<QStringList>("commands");
    QTest::newRow("active") << int(Single) << true << "This is the Active Preset" << QStringList();
    QTest::newRow("not active") << int(Single) << false << "Make Preset Active"
                                << QStringList{"controller.SetActivePreset 2"};
    QTest::newRow("in the sequence") << int(Sequencing) << true
                                     << "Preset included in sequence. (Dwell is greater than 0)" << QStringList();
    QTest::newRow("not in the sequence") << int(Sequencing) << false << "Preset excluded from sequence. (Dwell is 0)"
                                         << QStringList();
    QTest::newRow("in the superframe") << int(Superframing) << true << "Preset included in superframe."
                                       << QStringList{"controller.SetSubframeEnabled 2, false"};
    QTest::newRow("not in the superframe") << int(Superframing) << false << "Preset excluded from superframe."
                                           << QStringList{"controller.SetSubframeEnabled 2, true"};
}

void tst_SetupTabPresets::tileTellsAndActsByMode()
{
    QFETCH(const int, mode);
    QFETCH(const bool, inUse);
    QFETCH(const QString, toolTip);
    QFETCH(const QStringList, commands);
    SetupPage page("everything", [inUse](emulator::Camera &camera) {
        camera.gate().script("zvtGetActivePreset", inUse ? 2 : 0);
        camera.gate().script("controller.GetDwellCount", inUse ? 1 : 0);
        camera.gate().script("controller.GetSubframeEnabled", inUse ? 1 : 0);
    });
    setMode(page, mode);
    QCOMPARE(page.item("Preset 2").property("toolTip").toString(), toolTip);
    QCOMPARE(colour(page, "Preset 2") == page.rootProperty("kestrinAccentBlue").value<QColor>(), inUse);
    QCOMPARE(page.commandsOf([&page] { page.click("Preset 2"); }), commands);
}

void tst_SetupTabPresets::dwellCountIsTyped()
{
    SetupPage page;
    setMode(page, Sequencing);
    const QQuickItem &field = page.item("Dwell Count 1");
    QCOMPARE(field.property("toolTip").toString(), "Dwell Count");
    QCOMPARE(field.property("from").toInt(), 0);
    QCOMPARE(field.property("to").toInt(), 2147483647);
    QCOMPARE(page.commandsOf([&page] {
        page.type("Dwell Count 1", "25");
        page.press(Qt::Key_Tab);
    }),
             QStringList{"controller.SetDwellCount 1, 25"});
    QCOMPARE(page.commandsOf([&page] {
        page.type("Dwell Count 1", "26");
        page.press(Qt::Key_Escape);
        page.press(Qt::Key_Tab);
    }),
             QStringList());
    QCOMPARE(page.text("Dwell Count 1"), "25");
}

void tst_SetupTabPresets::dwellCountThatIsNoneIsKeptAndMarked_data()
{
    QTest::addColumn<QString>("typed");
    for (const char *typed : {"1,5", "1.5", "-1", "2147483648", "abc", "1e3"})
        QTest::newRow(typed) << typed;
}

void tst_SetupTabPresets::dwellCountThatIsNoneIsKeptAndMarked()
{
    QFETCH(const QString, typed);
    SetupPage page;
    setMode(page, Sequencing);
    const QString before = page.text("Dwell Count 1");
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Tab})
        QCOMPARE(page.commandsOf([&] {
            page.type("Dwell Count 1", typed);
            page.press(key);
        }),
                 QStringList());
    QCOMPARE(page.text("Dwell Count 1"), typed);
    QVERIFY(!page.item("Dwell Count 1").property("fault").toString().isEmpty());
    page.item("Dwell Count 1").forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_Escape);
    QCOMPARE(page.text("Dwell Count 1"), before);
    QVERIFY(page.item("Dwell Count 1").property("fault").toString().isEmpty());
}

void tst_SetupTabPresets::integrationTimeIsTyped()
{
    SetupPage page;
    QCOMPARE(page.item("Integration Time 0").property("editText").toString(), "2.000000");
    QCOMPARE(page.item("Integration Time 0").property("toolTip").toString(),
             "Calibration Setting or Integration Time in Milliseconds");
    QCOMPARE(page.commandsOf([&page] {
        page.type("Integration Time 0", "1.5");
        page.press(Qt::Key_Return);
    }),
             QStringList{"controller.SetPresetIntegrationTime 0, 1, 1.5"});
    QCOMPARE(page.item("Integration Time 0").property("editText").toString(), "1.500000");
}

void tst_SetupTabPresets::integrationTimeThatIsNoNumberIsKeptAndMarked()
{
    SetupPage page;
    for (const QString text : {"fast", "", "inf", "1.2.3"})
        QCOMPARE(page.commandsOf([&] {
            page.type("Integration Time 0", text.isEmpty() ? QStringLiteral(" ") : text);
            page.press(Qt::Key_Return);
        }),
                 QStringList());
    page.press(Qt::Key_Tab);
    page.settle();
    QVERIFY(page.findText("1.2.3"));
    QVERIFY(page.item("Integration Time 0").property("refused").toBool());
    page.item("Integration Time 0").forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_Escape);
    QVERIFY(page.findText("2.000000"));
    QVERIFY(!page.item("Integration Time 0").property("refused").toBool());
}

// A change by another client causes an event, after which the section is read again.
void tst_SetupTabPresets::halfTypedTimeSurvivesARead()
{
    SetupPage page;
    page.type("Integration Time 0", "12");
    page.press(Qt::Key_Left);
    QCOMPARE(page.commandsOf([&page] { QMetaObject::invokeMethod(page.tab(), "refresh"); }), QStringList());
    QCOMPARE(page.commandsOf([&page] { page.general()->metaObject()->invokeMethod(page.general(), "refresh"); }),
             QStringList());
    // Cursor and text have not changed.
    page.PageDriver::type("5");
    QCOMPARE(page.commandsOf([&page] { page.press(Qt::Key_Return); }),
             QStringList{"controller.SetPresetIntegrationTime 0, 1, 152"});
}

void tst_SetupTabPresets::halfTypedNumberIsNotTakenWhenItIsDisabled_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<bool>("connected");
    for (const QString field : {"Integration Time 0", "Frame Rate 0", "Dwell Count 0"})
        for (const bool connected : {false, true})
            QTest::addRow("%s, %s", qPrintable(field), connected ? "refresh hotkey" : "disconnected")
                << field << connected;
}

void tst_SetupTabPresets::halfTypedNumberIsNotTakenWhenItIsDisabled()
{
    QFETCH(const QString, field);
    QFETCH(const bool, connected);
    SetupPage page;
    setMode(page, Sequencing);
    page.type(field, "12");
    QCOMPARE(page.commandsOf([&] {
        if (connected)
            page.object("pages")->setProperty("enabled", false);
        else
            page.rig().camera().disconnect();
    }),
             QStringList());
    QVERIFY(!page.enabled(field));
    page.object("pages")->setProperty("enabled", true);
    page.rig().camera().connect();
    page.settle();
    QVERIFY(page.findText("12"));
}

void tst_SetupTabPresets::refusedRateGivesWayToTheCameras_data()
{
    QTest::addColumn<QString>("rate");
    for (const char *rate : {"-5", "0", "99999"})
        QTest::newRow(rate) << rate;
}

void tst_SetupTabPresets::refusedRateGivesWayToTheCameras()
{
    QFETCH(const QString, rate);
    SetupPage page;
    page.type("Frame Rate 0", rate);
    page.press(Qt::Key_Return);
    page.settle();
    double hertz = 0;
    QVERIFY(page.rig().controller()->GetPresetFrameRate(0, &hertz));
    QCOMPARE(page.item("Frame Rate 0").property("editText").toString(), QString::number(hertz, 'f', 2));
    QVERIFY(page.find("The camera kept another value than the one typed."));

    setMode(page, Superframing);
    const QString kept = page.item("Superframe Rate").property("editText").toString();
    page.type("Superframe Rate", rate);
    page.press(Qt::Key_Return);
    page.settle();
    QCOMPARE(page.item("Superframe Rate").property("editText").toString(), kept);
    QVERIFY(page.item("Superframe Rate").findChild<QQuickItem *>("updateMark")->isVisible());
}

void tst_SetupTabPresets::valuesThatWereNeverReadAreEmpty()
{
    SetupPage page("everything", [](emulator::Camera &camera) {
        camera.gate().failAlways("controller.GetPresetIntegrationTime");
        camera.gate().failAlways("controller.GetPresetFrameRate");
    });
    QCOMPARE(page.item("Integration Time 0").property("editText").toString(), QString());
    QCOMPARE(page.item("Frame Rate 0").property("editText").toString(), QString());
}

void tst_SetupTabPresets::firstReadIsNoAnswer()
{
    SetupPage page;
    QVERIFY(!page.find("The integration time has been updated. It may have been adjusted to the nearest valid value."));
}

void tst_SetupTabPresets::integrationTimeIsTakenWhenTheFocusLeaves()
{
    SetupPage page;
    QCOMPARE(page.commandsOf([&page] {
        page.type("Integration Time 3", "0.75");
        page.press(Qt::Key_Tab);
    }),
             QStringList{"controller.SetPresetIntegrationTime 3, 1, 0.75"});
}

void tst_SetupTabPresets::answerOfTheCameraIsMarked()
{
    SetupPage page;
    const auto mark = [&page](const QString &box) { return page.item(box).findChild<QQuickItem *>("updateMark"); };
    page.type("Integration Time 1", "1.5");
    page.press(Qt::Key_Return);
    QVERIFY(mark("Integration Time 1")->isVisible());
    QVERIFY(!mark("Integration Time 2"));
}

void tst_SetupTabPresets::calibrationFixesTheTime()
{
    SetupPage page;
    QQuickItem &box = page.item("Integration Time 0");
    const QStringList rows = box.property("model").toStringList();
    QCOMPARE(rows.constLast(), "No Factory Calibration");
    QVERIFY(box.property("editable").toBool());
    QCOMPARE(page.commandsOf([&] { page.choose("Integration Time 0", rows.at(1)); }).filter("Calibration"),
             QStringList{"controller.SetPresetCalibrationIndex 0, 1, 1"});
    QVERIFY(!box.property("editable").toBool());
    QVERIFY(page.findText(rows.at(1)));
    page.choose("Integration Time 0", rows.constLast());
    QVERIFY(box.property("editable").toBool());
}

void tst_SetupTabPresets::frameRateIsTyped()
{
    SetupPage page;
    QCOMPARE(page.item("Frame Rate 0").property("editText").toString(), "100.00");
    QCOMPARE(page.item("Frame Rate 0").property("toolTip").toString(), "Frame Rate in hertz");
    QCOMPARE(page.commandsOf([&page] {
        page.type("Frame Rate 0", "33.3");
        page.press(Qt::Key_Return);
    }),
             QStringList{"controller.SetPresetFrameRate 0, 1, 33.3"});
}

void tst_SetupTabPresets::frameRateIsChosen()
{
    SetupPage page;
    const QStringList rates = page.item("Frame Rate 2").property("model").toStringList();
    QVERIFY(rates.size() > 2);
    for (const QString &rate : rates)
        QCOMPARE(rate.section(u'.', 1).size(), 2);
    QVERIFY(page.item("Frame Rate 2").property("showMaxOnFirstIndexText").toBool());
    QCOMPARE(page.commandsOf([&] { page.choose("Frame Rate 2", rates.at(1)); }),
             QStringList{"controller.SetPresetFrameRateIndex 2, 1"});
}

void tst_SetupTabPresets::maximumFrameRateIsAskedFor()
{
    SetupPage page;
    const QString button = QStringLiteral("Maximum Frame Rate 1");
    QCOMPARE(page.item(button).property("toolTip").toString(), "Set to Maximum Frame Rate");
    QVERIFY(!page.item(button).property("highlighted").toBool());
    QCOMPARE(page.commandsOf([&] { page.click(button); }), QStringList{"controller.SetPresetFrameRateIndex 1, 0"});
    QVERIFY(page.item(button).property("highlighted").toBool());
}

void tst_SetupTabPresets::withoutRatesThereIsNoMaximum()
{
    SetupPage page("everything",
                   [](emulator::Camera &camera) { camera.gate().failAlways("controller.GetPresetFrameRates"); });
    QCOMPARE(page.commandsOf([&] {
        page.click("Maximum Frame Rate 1");
        page.item("Maximum Frame Rate 1").forceActiveFocus(Qt::TabFocusReason);
        page.press(Qt::Key_Return);
    }),
             QStringList());
}

void tst_SetupTabPresets::superframeRateStandsInTheFirstRow()
{
    SetupPage page;
    setMode(page, Superframing);
    QCOMPARE(page.item("Superframe Rate").property("toolTip").toString(), "Superframe Rate in hertz");
    QCOMPARE(page.middle("Superframe Rate").y(), page.middle("Preset 0").y());
    QCOMPARE(page.commandsOf([&page] {
        page.type("Superframe Rate", "12.5");
        page.press(Qt::Key_Return);
    }),
             QStringList{"controller.SetSuperframeRate 1, 12.5"});
    QCOMPARE(page.commandsOf([&page] { page.click("Maximum Superframe Rate"); }),
             QStringList{"controller.SetSuperframeRateIndex 0"});
    const QStringList rates = page.item("Superframe Rate").property("model").toStringList();
    QVERIFY(rates.constFirst().section(u'.', 1).size() == 2);
    QCOMPARE(page.commandsOf([&] { page.choose("Superframe Rate", rates.at(1)); }),
             QStringList{"controller.SetSuperframeRateIndex 1"});
}

void tst_SetupTabPresets::gigEPresetIsChosen()
{
    SetupPage page;
    setMode(page, Sequencing);
    QCOMPARE(page.item("GigE Preset").property("model").toStringList(),
             (QStringList{"0", "1", "2", "3", "All (Best Effort)"}));
    page.choose("GigE Preset", "All (Best Effort)");
    QCOMPARE(page.commandsOf([&page] { page.choose("GigE Preset", "3"); }), QStringList{"zvtSetGigEPreset 3"});
    QCOMPARE(page.commandsOf([&page] { page.choose("GigE Preset", "All (Best Effort)"); }),
             QStringList{"zvtSetGigEPreset 4"});
    page.rig().camera().changeMakeUp("hasGigEPreset", false);
    QMetaObject::invokeMethod(page.tab(), "timeoutEventQueueTimer");
    page.settle();
    QVERIFY(!page.find("GigE Preset"));
}

void tst_SetupTabPresets::videoPresetIsChosen()
{
    SetupPage page;
    setMode(page, Sequencing);
    QCOMPARE(page.item("Video Preset").property("model").toStringList(), (QStringList{"0", "1", "2", "3"}));
    QCOMPARE(page.commandsOf([&page] { page.choose("Video Preset", "2"); }),
             QStringList{"controller.SetVideoPreset 2"});
}

ZVT_TEST(tst_SetupTabPresets)
#include "tst_SetupTabPresets.moc"
