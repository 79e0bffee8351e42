#include "tests/page/SsdPage.h"
#include "tests/support/Test.h"

/// What becomes of open editors, dialogs and the SSD page itself when the recorder or the camera changes meanwhile.
class tst_SsdTabChanges : public Test
{
    Q_OBJECT

private slots:
    void theEditorClosesWithTheRecording();
    void theFocusReturnsToTheFrame_data();
    void theFocusReturnsToTheFrame();

    void formattingNeedsAnIdleDrive_data();
    void formattingNeedsAnIdleDrive();
    void theRangeNeedsARecording_data();
    void theRangeNeedsARecording();

    void thePageIsLeftForACameraWithoutARecorder();

private:
    using Change = void (*)(SsdPage &page);
    static void disconnect(SsdPage &page);
    static void record(SsdPage &page);
    static void waitForATrigger(SsdPage &page);
    static void deleteModel(SsdPage &page);
    static void addChanges();
};

Q_DECLARE_METATYPE(void (*)(SsdPage &))

void tst_SsdTabChanges::disconnect(SsdPage &page) { page.rig().camera().disconnect(); }
void tst_SsdTabChanges::record(SsdPage &page) { page.enterState(Triggered); }
void tst_SsdTabChanges::waitForATrigger(SsdPage &page) { page.enterState(Armed); }
void tst_SsdTabChanges::deleteModel(SsdPage &page) { page.deleteModel(); }

void tst_SsdTabChanges::addChanges()
{
    QTest::addColumn<Change>("change");
    QTest::newRow("disconnection") << &tst_SsdTabChanges::disconnect;
    QTest::newRow("recording") << &tst_SsdTabChanges::record;
    QTest::newRow("armed") << &tst_SsdTabChanges::waitForATrigger;
    QTest::newRow("model deleted") << &tst_SsdTabChanges::deleteModel;
}

// The editor of the frame

void tst_SsdTabChanges::theEditorClosesWithTheRecording()
{
    SsdPage page;
    page.enterState(Paused);
    page.click("Frame");
    page.awaitFrame();
    QVERIFY(page.find("Apply") && page.item("Frame").hasActiveFocus());
    page.enterState(Disarmed);
    QVERIFY(!page.find("Apply"));
    QCOMPARE(page.text("Frame"), "--");
    page.enterState(Complete);
    QVERIFY(!page.find("Apply") && page.enabled("Play"));
}

void tst_SsdTabChanges::theFocusReturnsToTheFrame_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::addColumn<QString>("by");
    for (const bool byKeyboard : {false, true})
        for (const char *by : {"Return", "Escape", "Apply", "Cancel"})
            QTest::addRow("%s, %s", byKeyboard ? "keyboard" : "mouse", by) << byKeyboard << by;
}

void tst_SsdTabChanges::theFocusReturnsToTheFrame()
{
    QFETCH(const bool, byKeyboard);
    QFETCH(const QString, by);
    SsdPage page([](emulator::Camera &camera) {
        camera.gate().script("zvtGetSsdEndFrame", 300U);
        camera.gate().script("zvtGetSsdNumFramesAcquired", 301U);
        camera.gate().script("zvtSsd*", true);
    });
    page.enterState(Paused);
    page.refresh();
    page.use("Frame", byKeyboard);
    page.awaitFrame();
    page.type("12");
    if (page.find(by))
        page.use(by, byKeyboard);
    else
        page.press(by == "Return" ? Qt::Key_Return : Qt::Key_Escape);
    page.settle();
    QVERIFY(!page.find("Apply"));
    QVERIFY(page.item("Frame").hasActiveFocus());
    QCOMPARE(page.item("Frame").property("visualFocus").toBool(), byKeyboard);
    page.press(Qt::Key_Tab);
    QCOMPARE(PageDriver::nameOf(*page.window().activeFocusItem()), "Edit Playback Range");
}

// Dialogs

void tst_SsdTabChanges::formattingNeedsAnIdleDrive_data() { addChanges(); }

void tst_SsdTabChanges::formattingNeedsAnIdleDrive()
{
    QFETCH(const Change, change);
    SsdPage page;
    page.click("Format SSD");
    page.settle();
    change(page);
    page.settle();
    QVERIFY(page.find("Yes"));
    const size_t mark = page.gate().mark();
    page.click("Yes");
    page.settle();
    QCOMPARE(page.commands(mark), QStringList());
    QVERIFY(!page.findText("Formatting SSD..."));
}

void tst_SsdTabChanges::theRangeNeedsARecording_data() { addChanges(); }

void tst_SsdTabChanges::theRangeNeedsARecording()
{
    QFETCH(const Change, change);
    SsdPage page([](emulator::Camera &camera) {
        camera.gate().script("zvtGetSsdEndFrame", 300U);
        camera.gate().script("zvtGetSsdNumFramesAcquired", 301U);
        camera.gate().script("zvtSsd*", true);
        camera.gate().script("zvtSetSsd*", true);
    });
    page.enterState(Complete);
    page.refresh();
    page.click("Edit Playback Range");
    page.settle();
    page.enter(page.item("Current"), "5");
    QVERIFY(page.enabled("OK"));
    change(page);
    page.settle();
    QVERIFY(!page.enabled("OK"));
    const size_t mark = page.gate().mark();
    page.press(Qt::Key_Return);
    page.click("OK");
    page.settle();
    QCOMPARE(page.commands(mark), QStringList());
    QVERIFY(!page.bannerIsShown());
    page.click("Cancel");
    page.settle();
    QVERIFY(!page.find("OK"));
}

// The page

void tst_SsdTabChanges::thePageIsLeftForACameraWithoutARecorder()
{
    SsdPage page;
    page.rig().camera().disconnect();
    page.rig().camera().changeMakeUp(QStringLiteral("hasSsd"), false);
    page.rig().camera().connect();
    page.settle();
    QVERIFY(!page.find("SSD"));
    QVERIFY(page.checked("Status"));
    QVERIFY(!page.find("Refresh") && !page.value("visible").toBool());
}

ZVT_TEST(tst_SsdTabChanges)
#include "tst_SsdTabChanges.moc"
