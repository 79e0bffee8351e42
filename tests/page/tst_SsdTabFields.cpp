#include "tests/page/SsdPage.h"
#include "tests/support/Test.h"

#include <QClipboard>
#include <QGuiApplication>

#include "platform/hlxcamui/WidgetFileDialog.h"

using hlx::cam::ui::WidgetFileDialog;

namespace
{

QColor background(const QQuickItem &field)
{
    return field.property("background").value<QObject *>()->property("color").value<QColor>();
}

/// A page whose recorder has this record type. Its largest playback rate is 120.5 Hz.
std::unique_ptr<SsdPage> pageOfType(int type)
{
    return std::make_unique<SsdPage>([type](emulator::Camera &camera) {
        camera.otherClient().set("recorder.type", type);
        camera.gate().script("zvtClocksToHertz", 120.5);
    });
}

} // namespace

/// The fields, switches and dialogs of the SSD page.
class tst_SsdTabFields : public Test
{
    Q_OBJECT

private slots:
    void fieldsAreSent_data();
    void fieldsAreSent();
    void wrongTextsAreNotSent_data();
    void wrongTextsAreNotSent();
    void wrongTextsPreventCommands();
    void theDurationHasAMask();
    void aLongDurationWarns();
    void aLongDurationOfAnotherSourceDoesNotWarn();
    void theLongestDurationIsUnlimitedFrom24Hours();
    void withoutAFrameRateEachDurationWarns();
    void unreadValuesAreEmpty();

    void switchesAreSent_data();
    void switchesAreSent();
    void refusedSettingsSnapBack_data();
    void refusedSettingsSnapBack();
    void modesAndTypesAreChosen();

    void formattingIsConfirmed_data();
    void formattingIsConfirmed();
    void theFolderIsChosen();
    void theFolderStaysAfterCancel();
    void theCountIsOfThisComputer();
};

void tst_SsdTabFields::fieldsAreSent_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("command");
    const auto add = [](const char *field, int type, const QString &text, const QString &command) {
        QTest::addRow("%s %s", field, qPrintable(text)) << field << type << text << command;
    };
    for (const char *frames : {"250", "1", "26163"})
        add("Frames To Record", 0, frames, QStringLiteral("zvtSetSsdNumFrames %1").arg(frames));
    for (const char *frames : {"7", "0", "1000"})
        add("Pretrigger Frames", 0, frames, QStringLiteral("zvtSetSsdPretriggerFrames %1").arg(frames));
    add("Duration To Record", 1, "00:00:09", "zvtSetSsdRecordDuration 9000");
    add("Duration To Record", 1, "23:59:59", "zvtSetSsdRecordDuration 86399000");
    for (const char *rate : {"12.5", "0.1", "120.5"})
        add("Playback Rate (Hz)", 0, rate, QStringLiteral("zvtSetSsdPlaybackRate %1").arg(rate));
    for (const QString &name : {QStringLiteral("a b"), QStringLiteral("a"), QString(100, u'a')})
        add("SSD Filename", 0, name, QStringLiteral("zvtSetSsdSaveName \"%1\"").arg(name));
}

void tst_SsdTabFields::fieldsAreSent()
{
    QFETCH(const QString, field);
    QFETCH(const int, type);
    QFETCH(const QString, text);
    QFETCH(const QString, command);
    for (const Qt::Key leave : {Qt::Key_Tab, Qt::Key_Return}) {
        const auto page = pageOfType(type);
        QCOMPARE(page->commandsOf([&] { page->enter(page->item(field), text, leave); }), QStringList(command));
        QCOMPARE(page->text(field), text);
        page->refresh();
        QCOMPARE(page->text(field), text);
    }
}

void tst_SsdTabFields::wrongTextsAreNotSent_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("Frames To Record") << 0 << QStringList{"0", "26164", "1.5", "x", "-1"};
    QTest::newRow("Pretrigger Frames") << 0 << QStringList{"1001", "-1", "x"};
    QTest::newRow("Duration To Record") << 1 << QStringList{"00:75:00", "24:00:00"};
    QTest::newRow("Playback Rate (Hz)") << 0 << QStringList{"0", "0.05", "12.34", "120.6", "x"};
    // A tab and a no-break space are white space other than a blank.
    QTest::newRow("SSD Filename") << 0 << QStringList{" a", "", QString(101, 'a'), "a\tb", QStringLiteral("a\u00a0b")};
}

void tst_SsdTabFields::wrongTextsAreNotSent()
{
    QFETCH(const int, type);
    QFETCH(const QStringList, texts);
    const QString field = QString::fromLatin1(QTest::currentDataTag());
    const auto page = pageOfType(type);
    const QString before = page->text(field);
    QQuickItem &item = page->item(field);
    for (const QString &text : texts) {
        QGuiApplication::clipboard()->setText(text);
        item.forceActiveFocus(Qt::TabFocusReason);
        QCOMPARE(page->commandsOf([&] {
            page->press(Qt::Key_A, Qt::ControlModifier);
            page->press(Qt::Key_Delete);
            page->press(Qt::Key_V, Qt::ControlModifier);
            page->press(Qt::Key_Return);
        }),
                 QStringList());
        QCOMPARE(page->text(field), text);
        QVERIFY2(!item.property("acceptable").toBool(), qPrintable(text));
        QVERIFY2(!item.property("fault").toString().isEmpty(), qPrintable(text));
        page->press(Qt::Key_Escape);
        QCOMPARE(page->text(field), before);
    }
}

void tst_SsdTabFields::wrongTextsPreventCommands()
{
    SsdPage page;
    QVERIFY(page.enabled("Arm for recording"));
    page.enter(page.item("Playback Rate (Hz)"), "0");
    QVERIFY(!page.enabled("Arm for recording"));
    page.enter(page.item("Playback Rate (Hz)"), "30");
    page.enter(page.item("Frames To Record"), "0");
    QVERIFY(!page.enabled("Arm for recording"));
    page.chooseRow("Record Type", "Start Stop");
    QVERIFY(page.enabled("Arm for recording"));
    page.enter(page.item("Pretrigger Frames"), "99999999");
    QVERIFY(!page.enabled("Arm for recording"));
    page.chooseRow("Record Mode", "To Camera SSD");
    QVERIFY(page.enabled("Arm for recording"));

    page.enterState(Complete);
    QVERIFY(page.enabled("Save to SSD"));
    page.enter(page.item("SSD Filename"), " x");
    QVERIFY(!page.enabled("Save to SSD"));
}

void tst_SsdTabFields::theDurationHasAMask()
{
    SsdPage page([](emulator::Camera &camera) {
        camera.otherClient().set("recorder.type", 1);
        camera.otherClient().set("recorder.duration", 5'025'000);
    });
    QCOMPARE(page.text("Duration To Record"), "01:23:45");
    QVERIFY(page.item("Duration To Record").property("inputMask").toString().startsWith("99:99:99"));
    QQuickItem &field = page.item("Duration To Record");
    field.forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(page.commandsOf([&] {
        page.type("x1");
        page.press(Qt::Key_Return);
    }),
             QStringList());
    QVERIFY(!page.enabled("Arm for recording"));
    QCOMPARE(page.commandsOf([&] {
        page.type("01005");
        page.press(Qt::Key_Return);
    }),
             QStringList("zvtSetSsdRecordDuration 36605000"));
    QVERIFY(page.enabled("Arm for recording"));
}

// The memory takes 26163 frames, at 100 Hz.
void tst_SsdTabFields::aLongDurationWarns()
{
    SsdPage page([](emulator::Camera &camera) {
        camera.otherClient().set("recorder.type", 1);
        camera.otherClient().set("recorder.duration", 261'000);
    });
    const QQuickItem &field = page.item("Duration To Record");
    QCOMPARE(field.property("toolTip").toString(), "Maximum: 00:04:21 at 100.0 Hz");
    const QColor normal = background(field);
    QVERIFY(normal != QColor("yellow"));
    page.enter(page.item("Duration To Record"), "00:04:22");
    QCOMPARE(background(field), QColor("yellow"));
    QVERIFY(page.enabled("Arm for recording"));
    page.saveScreenshot();
    page.enterState(Armed);
    QVERIFY(!field.isEnabled());
    QCOMPARE(background(field), normal);
}

void tst_SsdTabFields::aLongDurationOfAnotherSourceDoesNotWarn()
{
    SsdPage page([](emulator::Camera &camera) {
        camera.otherClient().set("recorder.type", 1);
        camera.otherClient().set("recorder.duration", 3'600'000);
    });
    QCOMPARE(background(page.item("Duration To Record")), QColor("yellow"));
    page.gate().script("zvtGetFrameSyncSource", 1);
    page.refresh();
    QVERIFY(background(page.item("Duration To Record")) != QColor("yellow"));
}

// The limit is then no time of day, so it has no text.
void tst_SsdTabFields::theLongestDurationIsUnlimitedFrom24Hours()
{
    SsdPage page([](emulator::Camera &camera) {
        camera.otherClient().set("recorder.type", 1);
        camera.gate().script("zvtGetSsdMaxNumFrames", 4294967295U);
    });
    page.enter(page.item("Duration To Record"), "23:59:59");
    const QQuickItem &field = page.item("Duration To Record");
    QVERIFY(background(field) != QColor("yellow"));
    QCOMPARE(field.property("toolTip").toString(), "Maximum:  at 100.0 Hz");
}

void tst_SsdTabFields::withoutAFrameRateEachDurationWarns()
{
    SsdPage page([](emulator::Camera &camera) {
        camera.otherClient().set("recorder.type", 1);
        camera.gate().script("controller.GetAverageFrameRate", 0.0);
    });
    const QQuickItem &field = page.item("Duration To Record");
    QCOMPARE(background(field), QColor("yellow"));
    QCOMPARE(field.property("toolTip").toString(), "Maximum: 00:00:00 at 0.0 Hz");
}

void tst_SsdTabFields::unreadValuesAreEmpty()
{
    PageDriver page({.size = {900, 1000}});
    page.rig().gate().hold("zvtGetSsdState");
    page.click("SSD");
    QVERIFY(page.rig().gate().waitHeld("zvtGetSsdState"));
    for (const char *field : {"Frames To Record", "Pretrigger Frames", "Playback Rate (Hz)", "SSD Filename"})
        QCOMPARE(page.text(field), "");
    page.rig().gate().release("zvtGetSsdState");
    page.settle();
    QCOMPARE(page.text("Frames To Record"), "1000");
}

// Switches and choices

void tst_SsdTabFields::switchesAreSent_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::newRow("by mouse") << false;
    QTest::newRow("by keyboard") << true;
}

void tst_SsdTabFields::switchesAreSent()
{
    QFETCH(const bool, byKeyboard);
    SsdPage page;
    for (const auto &[name, command] : std::initializer_list<std::pair<const char *, const char *>>{
             {"Gated record", "zvtSetSsdRecordGated"},
             {"Begin playback", "zvtSetSsdAutoPlay"},
             {"Save it to the SSD", "zvtSetSsdAutoSave"},
             {"Arm for the next recording", "zvtSetSsdAutoRearm"},
             {"Download the recording", "zvtSetSsdAutoDownload"}}) {
        for (const int on : {1, 0, 1}) {
            QCOMPARE(page.commandsOf([&, name = name] { page.use(name, byKeyboard); }),
                     QStringList(QStringLiteral("%1 %2").arg(command).arg(on)));
            QCOMPARE(page.checked(name), on == 1);
        }
    }
    QCOMPARE(page.commandsOf([&] { page.use("Toggle Looping", byKeyboard); }), QStringList("zvtSetSsdLoopPlayback 1"));
    QVERIFY(page.item("Toggle Looping").property("highlighted").toBool());
    QCOMPARE(page.commandsOf([&] { page.use("Toggle Looping", byKeyboard); }), QStringList("zvtSetSsdLoopPlayback 0"));
    QVERIFY(!page.item("Toggle Looping").property("highlighted").toBool());
}

void tst_SsdTabFields::refusedSettingsSnapBack_data()
{
    QTest::addColumn<QString>("call");
    QTest::newRow("Gated record") << "zvtSetSsdRecordGated";
    QTest::newRow("Arm for the next recording") << "zvtSetSsdAutoRearm";
    QTest::newRow("Download the recording") << "zvtSetSsdAutoDownload";
    QTest::newRow("Record Mode") << "zvtSetSsdRecordMode";
    QTest::newRow("Record Type") << "zvtSetSsdRecordType";
    QTest::newRow("Duration To Record") << "zvtSetSsdRecordDuration";
}

void tst_SsdTabFields::refusedSettingsSnapBack()
{
    QFETCH(const QString, call);
    const QString name = QString::fromLatin1(QTest::currentDataTag());
    SsdPage page([&](emulator::Camera &camera) {
        camera.otherClient().set("recorder.autoSave", true);
        camera.otherClient().set("recorder.type", name.startsWith("Duration") ? 1 : 0);
    });
    page.gate().failAlways(call.toStdString());
    const size_t mark = page.gate().mark();
    if (name == "Duration To Record") {
        page.enter(page.item(name), "00:00:07");
        QCOMPARE(page.text(name), "00:00:01");
    } else if (name.startsWith("Record ")) {
        const QString before = page.shown(name);
        page.chooseRow(name, name == "Record Mode" ? "To Camera SSD" : "Start Stop");
        QCOMPARE(page.shown(name), before);
    } else {
        page.click(name);
        QVERIFY(!page.checked(name));
    }
    QCOMPARE(page.rig().callsSince(mark).count(call), 1);
}

void tst_SsdTabFields::modesAndTypesAreChosen()
{
    SsdPage page;
    QCOMPARE(page.item("Record Mode").property("model").toStringList(),
             QStringList({"To Camera RAM", "To Camera SSD"}));
    QCOMPARE(page.item("Record Type").property("model").toStringList(),
             QStringList({"Num Frames", "Duration", "Start Stop"}));
    QCOMPARE(page.commandsOf([&] { page.chooseRow("Record Mode", "To Camera SSD"); }),
             QStringList("zvtSetSsdRecordMode 1"));
    QCOMPARE(page.shown("Record Mode"), "To Camera SSD");
    QCOMPARE(page.commandsOf([&] { page.chooseRow("Record Type", "Start Stop"); }),
             QStringList("zvtSetSsdRecordType 2"));
    page.item("Record Type").forceActiveFocus(Qt::TabFocusReason);
    QCOMPARE(page.commandsOf([&] { page.press(Qt::Key_Up); }), QStringList("zvtSetSsdRecordType 1"));
    QVERIFY(page.find("Duration To Record") && !page.find("Frames To Record"));
    // Another client changes them.
    QVERIFY(page.set("recorder.mode", 0) && page.set("recorder.type", 0));
    page.refresh();
    QCOMPARE(page.shown("Record Mode"), "To Camera RAM");
    QCOMPARE(page.shown("Record Type"), "Num Frames");
}

// Dialogs

void tst_SsdTabFields::formattingIsConfirmed_data()
{
    QTest::addColumn<QList<Qt::Key>>("keys");
    QTest::addColumn<QStringList>("commands");
    QTest::newRow("Yes") << QList<Qt::Key>() << QStringList("zvtSsdFormatDrive");
    QTest::newRow("No") << QList<Qt::Key>() << QStringList();
    QTest::newRow("Escape") << QList{Qt::Key_Escape} << QStringList();
    // The harmless button has the focus.
    QTest::newRow("Enter") << QList{Qt::Key_Return} << QStringList();
    QTest::newRow("Space") << QList{Qt::Key_Space} << QStringList();
    QTest::newRow("Backtab, Space") << QList{Qt::Key_Backtab, Qt::Key_Space} << QStringList("zvtSsdFormatDrive");
}

void tst_SsdTabFields::formattingIsConfirmed()
{
    QFETCH(const QList<Qt::Key>, keys);
    QFETCH(const QStringList, commands);
    SsdPage page;
    QCOMPARE(page.commandsOf([&] { page.click("Format SSD"); }), QStringList());
    QCOMPARE(page.dialogTitle(), "Format SSD");
    QVERIFY(page.findText("Erase all data from the SSD?"));
    QVERIFY(page.find("Yes") && page.find("No"));
    page.saveScreenshot();
    QCOMPARE(page.commandsOf([&] {
        if (keys.isEmpty())
            page.click(QString::fromLatin1(QTest::currentDataTag()));
        for (const Qt::Key key : keys)
            page.press(key);
    }),
             commands);
    QTRY_VERIFY(!page.findText("Erase all data from the SSD?"));
    QCOMPARE(page.state(), commands.isEmpty() ? Disarmed : Formatting);
}

void tst_SsdTabFields::theFolderIsChosen()
{
    SsdPage page([](emulator::Camera &camera) { camera.otherClient().set("recorder.autoDownload", true); });
    const QString before = page.text("Directory");
    QVERIFY(!before.isEmpty() && page.item("Directory").property("readOnly").toBool());
    bool asked = false;
    WidgetFileDialog::setNextAnswer([&](const WidgetFileDialog &dialog) {
        asked = dialog.property("selectFolder").toBool()
            && dialog.property("folder").toUrl() == QUrl::fromLocalFile(before);
        return QUrl::fromLocalFile("/tmp/movies here");
    });
    QCOMPARE(page.commandsOf([&] { page.click("Choose Directory"); }), QStringList());
    QTRY_COMPARE(page.text("Directory"), "/tmp/movies here");
    QVERIFY(asked);
    QCOMPARE(QUrl(page.value("autoDownloadDirectoryUrl").toString()), QUrl::fromLocalFile("/tmp/movies here"));
}

void tst_SsdTabFields::theFolderStaysAfterCancel()
{
    SsdPage page([](emulator::Camera &camera) { camera.otherClient().set("recorder.autoDownload", true); });
    const QString before = page.text("Directory");
    WidgetFileDialog::setNextAnswer(QUrl());
    page.click("Choose Directory");
    QTRY_VERIFY(!WidgetFileDialog::hasNextAnswer());
    page.settle();
    QCOMPARE(page.text("Directory"), before);
}

void tst_SsdTabFields::theCountIsOfThisComputer()
{
    SsdPage page([](emulator::Camera &camera) { camera.otherClient().set("recorder.autoDownload", true); });
    QCOMPARE(page.text("Count"), "1");
    QCOMPARE(page.commandsOf([&] { page.enter(page.item("Count"), "17"); }), QStringList());
    QCOMPARE(page.value("autoDownloadCount").toUInt(), 17U);
}

ZVT_TEST(tst_SsdTabFields)
#include "tst_SsdTabFields.moc"
