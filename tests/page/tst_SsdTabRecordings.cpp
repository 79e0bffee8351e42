#include "tests/page/SsdPage.h"
#include "tests/support/Test.h"

#include "platform/emulator/devices/Recorder.h"

/// Whole recordings on the SSD page, by mouse and by keyboard, with the emulated recorder at 100 Hz.
class tst_SsdTabRecordings : public Test
{
    Q_OBJECT

private slots:
    void toMemory_data();
    void toMemory();
    void toDisk_data() { toMemory_data(); }
    void toDisk();
    void withPretrigger_data() { toMemory_data(); }
    void withPretrigger();
    void timed_data() { toMemory_data(); }
    void timed();
    void gated_data() { toMemory_data(); }
    void gated();
    void paused_data() { toMemory_data(); }
    void paused();
    void savedAndFormatted();

    void disarmed();
    void armingSendsWhatTheFieldsShow();
    void armingComesAfterTheEditOfAField();
    void armingSendsTextsThatStillHaveTheFocus();
    void armingWaitsForLateEdits();
    void armingWritesAnUneditedRate();

private:
    /// Arms the recorder and waits until it is armed. Returns whether the page shows both states.
    static bool arm(SsdPage &page, bool byKeyboard);
};

namespace
{

uint32_t framesAcquired(SsdPage &page)
{
    uint32_t frames = 0;
    page.rig().camera().device<emulator::Recorder>()->framesAcquired(frames);
    return frames;
}

/// Replaces the text of a field as typing does, without a change of the focus.
void typeWithoutFocus(SsdPage &page, const QString &field, const QString &text)
{
    page.item(field).setProperty("text", text);
    QMetaObject::invokeMethod(&page.item(field), "textEdited");
}

/// A page whose camera has recorded nothing, with settings of the recorder by their keys.
struct Recording : SsdPage {
    explicit Recording(const QVariantMap &settings)
        : SsdPage([&settings](emulator::Camera &camera) {
              for (auto it = settings.begin(); it != settings.end(); ++it)
                  if (!camera.otherClient().set("recorder." + it.key(), it.value()))
                      throw std::runtime_error(it.key().toStdString());
          })
    {
    }
};

} // namespace

void tst_SsdTabRecordings::toMemory_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::newRow("by mouse") << false;
    QTest::newRow("by keyboard") << true;
}

bool tst_SsdTabRecordings::arm(SsdPage &page, bool byKeyboard)
{
    page.use("Arm for recording", byKeyboard);
    page.settle();
    const bool arming = page.findText("Arming") != nullptr;
    page.advance(400);
    return arming && page.findText("Armed - Ready To Record");
}

void tst_SsdTabRecordings::toMemory()
{
    QFETCH(const bool, byKeyboard);
    Recording page({{"frames", 300}, {"pretrigger", 0}});
    QVERIFY(arm(page, byKeyboard));
    page.use("Record to RAM", byKeyboard);
    page.advance(1000);
    QVERIFY(page.findText("Recording..."));
    QCOMPARE(page.state(), Triggered);
    page.advance(3000);
    QVERIFY(page.findText("Complete"));
    QCOMPARE(framesAcquired(page), 300U);
    QCOMPARE(page.value("endFrame").toUInt(), 299U);

    page.use("Play", byKeyboard);
    QVERIFY(page.bannerIsShown());
    page.advance(1000);
    QVERIFY(page.findText("Playing"));
    QCOMPARE(page.text("Frame"), "30");
    page.use("Pause", byKeyboard);
    QVERIFY(page.bannerIsShown());
    QVERIFY(page.findText("Paused"));
    page.use("Next Frame", byKeyboard);
    QCOMPARE(page.text("Frame"), "31");
    page.use("Previous Frame", byKeyboard);
    page.use("Previous Frame", byKeyboard);
    QCOMPARE(page.text("Frame"), "29");
    page.use("Back to live", byKeyboard);
    QVERIFY(!page.bannerIsShown());
    QCOMPARE(page.state(), Complete);
    page.poll();
    QCOMPARE(page.state(), Complete);
}

void tst_SsdTabRecordings::toDisk()
{
    QFETCH(const bool, byKeyboard);
    Recording page({{"mode", 1}, {"frames", 300}, {"pretrigger", 0}});
    QVERIFY(arm(page, byKeyboard));
    QVERIFY(page.find("Record to SSD") && !page.enabled("Pretrigger Frames"));
    page.use("Record to SSD", byKeyboard);
    page.advance(1000);
    QVERIFY(page.findText("Recording..."));
    page.advance(3000);
    page.advance(3000);
    QVERIFY(page.findText("Disarmed"));
    QVERIFY(!page.enabled("Play"));
    uint32_t limit = 0;
    page.rig().camera().device<emulator::Recorder>()->diskLimit(limit);
    QCOMPARE(page.item("Frames To Record").property("toolTip").toString(), QStringLiteral("Maximum: %1").arg(limit));
}

void tst_SsdTabRecordings::withPretrigger()
{
    QFETCH(const bool, byKeyboard);
    Recording page({{"frames", 300}, {"pretrigger", 0}});
    page.enter(page.item("Pretrigger Frames"), "200");
    QVERIFY(arm(page, byKeyboard));
    page.advance(5000);
    page.use("Record to RAM", byKeyboard);
    page.advance(900);
    QCOMPARE(page.state(), Triggered);
    // 200 of the 300 frames are from before the trigger.
    page.advance(200);
    QCOMPARE(page.state(), Complete);
    QCOMPARE(framesAcquired(page), 300U);
}

void tst_SsdTabRecordings::timed()
{
    QFETCH(const bool, byKeyboard);
    Recording page({{"type", 1}, {"pretrigger", 0}});
    page.enter(page.item("Duration To Record"), "00:00:04");
    QVERIFY(arm(page, byKeyboard));
    page.use("Record to RAM", byKeyboard);
    page.advance(3900);
    QCOMPARE(page.state(), Triggered);
    page.advance(200);
    QCOMPARE(page.state(), Complete);
    QCOMPARE(framesAcquired(page), 400U);
}

// Another client sets the input of the recorder.
void tst_SsdTabRecordings::gated()
{
    QFETCH(const bool, byKeyboard);
    Recording page({{"type", 2}, {"pretrigger", 0}});
    page.use("Gated record", byKeyboard);
    QVERIFY(arm(page, byKeyboard));
    page.set("emulator./RecordStart", true);
    page.advance(1000);
    QCOMPARE(page.state(), Triggered);
    page.set("emulator./RecordStart", false);
    page.advance(5000);
    page.use("Stop Recording", byKeyboard);
    page.settle();
    QCOMPARE(page.state(), Complete);
    QCOMPARE(framesAcquired(page), 100U);
}

void tst_SsdTabRecordings::paused()
{
    QFETCH(const bool, byKeyboard);
    Recording page({{"type", 2}, {"pretrigger", 0}});
    QVERIFY(arm(page, byKeyboard));
    page.use("Record to RAM", byKeyboard);
    page.advance(1000);
    page.use("Pause Recording", byKeyboard);
    page.settle();
    QCOMPARE(page.state(), RecordPaused);
    page.advance(5000);
    QVERIFY(page.findText("Paused"));
    QVERIFY(!page.enabled("Record to RAM"));
    page.use("Resume Recording", byKeyboard);
    page.settle();
    page.advance(1000);
    QVERIFY(page.findText("Recording..."));
    page.use("Stop Recording", byKeyboard);
    page.settle();
    QVERIFY(page.findText("Complete"));
    QCOMPARE(framesAcquired(page), 200U);
}

void tst_SsdTabRecordings::savedAndFormatted()
{
    Recording page({{"frames", 300}, {"pretrigger", 0}});
    page.enter(page.item("SSD Filename"), "Kiln 4");
    QVERIFY(arm(page, false));
    page.click("Record to RAM");
    page.advance(4000);
    QCOMPARE(page.commandsOf([&] { page.click("Save to SSD"); }),
             QStringList({"zvtSetSsdSaveName \"Kiln 4\"", "zvtSsdSaveBuffer"}));
    QVERIFY(page.findText("Saving..."));
    page.advance(3000);
    QVERIFY(page.findText("Complete"));
    page.click("Format SSD");
    page.settle();
    page.click("Yes");
    page.settle();
    QVERIFY(page.findText("Formatting SSD..."));
    page.advance(4000);
    QVERIFY(page.findText("Complete"));
}

void tst_SsdTabRecordings::disarmed()
{
    Recording page({});
    QVERIFY(arm(page, false));
    QCOMPARE(page.commandsOf([&] { page.click("Disarm"); }), QStringList("zvtSsdDisarm"));
    QVERIFY(page.findText("Disarmed"));
    page.poll();
    QCOMPARE(page.state(), Disarmed);
}

void tst_SsdTabRecordings::armingSendsWhatTheFieldsShow()
{
    Recording page({{"frames", 300}, {"pretrigger", 10}, {"name", "Shot"}});
    QCOMPARE(page.commandsOf([&] { page.click("Arm for recording"); }),
             QStringList({"zvtSetSsdNumFrames 300", "zvtSetSsdPretriggerFrames 10", "zvtSetSsdSaveName \"Shot\"",
                          "zvtSetSsdStartFrame 0", "zvtSetSsdEndFrame 299", "zvtSsdArm"}));
}

// The click moves the focus, so the field is committed first.
void tst_SsdTabRecordings::armingComesAfterTheEditOfAField()
{
    Recording page({{"frames", 300}, {"pretrigger", 10}, {"name", "Shot"}});
    page.item("Frames To Record").forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_A, Qt::ControlModifier);
    page.type("400");
    const QStringList commands = page.commandsOf([&] { page.click("Arm for recording"); });
    QCOMPARE(commands.last(), "zvtSsdArm");
    QVERIFY(commands.contains("zvtSetSsdNumFrames 400") && !commands.contains("zvtSetSsdNumFrames 300"));
    QVERIFY(commands.contains("zvtSetSsdEndFrame 399"));
}

// On some platforms a click does not move the focus to the button. The recorder is armed after all present events.
void tst_SsdTabRecordings::armingSendsTextsThatStillHaveTheFocus()
{
    Recording page({{"frames", 300}, {"pretrigger", 10}});
    typeWithoutFocus(page, "Frames To Record", "400");
    typeWithoutFocus(page, "Pretrigger Frames", "7");
    typeWithoutFocus(page, "Playback Rate (Hz)", "12.5");
    QStringList atOnce;
    const QStringList commands = page.commandsOf([&] {
        const size_t mark = page.gate().mark();
        QMetaObject::invokeMethod(&page.item("Arm for recording"), "clicked");
        atOnce = page.commands(mark);
    });
    QCOMPARE(atOnce,
             QStringList({"zvtSetSsdNumFrames 400", "zvtSetSsdPretriggerFrames 7", "zvtSetSsdPlaybackRate 12.5"}));
    QCOMPARE(commands.last(), "zvtSsdArm");
    QCOMPARE(page.state(), Arming);
}

// On some platforms a field that loses the focus emits its edit after the click.
void tst_SsdTabRecordings::armingWaitsForLateEdits()
{
    Recording page({{"frames", 300}});
    QVERIFY(!page.commandsOf([&] {
                     const size_t mark = page.gate().mark();
                     QMetaObject::invokeMethod(&page.item("Arm for recording"), "clicked");
                     QVERIFY(!page.commands(mark).contains("zvtSsdArm"));
                     page.recorder()->setProperty("framesToRecord", 400);
                 })
                 .contains("zvtSetSsdEndFrame 299"));
    QCOMPARE(page.value("endFrame").toUInt(), 399U);
    QCOMPARE(page.state(), Arming);
}

// The field shows one decimal.
void tst_SsdTabRecordings::armingWritesAnUneditedRate()
{
    Recording page({{"rate", 29.97}});
    QCOMPARE(page.text("Playback Rate (Hz)"), "30.0");
    const QStringList commands = page.commandsOf([&] { page.click("Arm for recording"); });
    QCOMPARE(commands.first(), "zvtSetSsdPlaybackRate 30");
    QCOMPARE(commands.last(), "zvtSsdArm");
}

ZVT_TEST(tst_SsdTabRecordings)
#include "tst_SsdTabRecordings.moc"
