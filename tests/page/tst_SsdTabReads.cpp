#include "tests/page/SsdPage.h"
#include "tests/support/Test.h"

#include <QClipboard>
#include <QGuiApplication>

/// What the SSD page shows before, during and after a read, and the limits and values that a camera may report.
class tst_SsdTabReads : public Test
{
    Q_OBJECT

private slots:
    void nothingIsLitBeforeTheFirstRead();
    void aHiddenPageDoesNotReadTheName();
    void theFocusRingReturnsAfterARead_data();
    void theFocusRingReturnsAfterARead();
    void aFocusThatMovedDuringAReadStays();

    void largeLimitsAreShownInFull_data();
    void largeLimitsAreShownInFull();
    void limitsWithDecimalsAreShort();
    void largeFrameNumbersAreSent();

    void aDurationOfADayIsMarked();
    void textsThatDoNotCountAreNotSent_data();
    void textsThatDoNotCountAreNotSent();
    void longNamesEndAtTheLimitInBytes();
    void oneCharacterOfTwoUnitsCountsOnce();

private:
    static void paste(SsdPage &page, const QString &field, const QString &text);
};

void tst_SsdTabReads::paste(SsdPage &page, const QString &field, const QString &text)
{
    QGuiApplication::clipboard()->setText(text);
    page.item(field).forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_A, Qt::ControlModifier);
    page.press(Qt::Key_V, Qt::ControlModifier);
}

// Reads

void tst_SsdTabReads::nothingIsLitBeforeTheFirstRead()
{
    PageDriver page({.size = {900, 1000}});
    page.rig().gate().hold("zvtGetSsdState");
    page.click("SSD");
    QVERIFY(page.rig().gate().waitHeld("zvtGetSsdState"));
    page.awaitFrame();
    const auto color
        = [&page](const char *part) { return page.object(QLatin1String(part))->property("color").value<QColor>(); };
    QCOMPARE(color("detectorIcon"), QColor(Qt::white));
    QCOMPARE(color("camToAppArrow"), QColor("gray"));
    QVERIFY(!page.findText("Disarmed") && !page.findText("Unknown State"));
    page.rig().gate().release("zvtGetSsdState");
    page.settle();
    QCOMPARE(color("detectorIcon"), QColor("lime"));
    QCOMPARE(color("camToAppArrow"), QColor("lime"));
    QVERIFY(page.findText("Disarmed"));
}

// The contents of a hidden page are created soon after the start.
void tst_SsdTabReads::aHiddenPageDoesNotReadTheName()
{
    PageDriver page({.size = {900, 1000}});
    const auto name = [&page] { return page.object("flowDiagram")->property("cameraName").toString(); };
    QTRY_VERIFY(page.object("flowDiagram"));
    QCOMPARE(name(), QString());
    page.click("SSD");
    page.settle();
    QCOMPARE(name(), QString("Campion 640 C ZE-100001"));
}

// All controls are disabled during a read.
void tst_SsdTabReads::theFocusRingReturnsAfterARead_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::newRow("by mouse") << false;
    QTest::newRow("by keyboard") << true;
}

void tst_SsdTabReads::theFocusRingReturnsAfterARead()
{
    QFETCH(const bool, byKeyboard);
    SsdPage page;
    page.use("Refresh", byKeyboard);
    QVERIFY(!page.enabled("Refresh"));
    page.settle();
    QVERIFY(page.item("Refresh").hasActiveFocus());
    QCOMPARE(page.item("Refresh").property("visualFocus").toBool(), byKeyboard);
}

void tst_SsdTabReads::aFocusThatMovedDuringAReadStays()
{
    SsdPage page;
    page.gate().hold("zvtGetSsdState");
    page.use("Refresh", true);
    QVERIFY(page.gate().waitHeld("zvtGetSsdState"));
    page.item("Configuration").forceActiveFocus(Qt::OtherFocusReason);
    page.gate().release("zvtGetSsdState");
    page.settle();
    QVERIFY(page.enabled("Refresh"));
    QVERIFY(page.item("Configuration").hasActiveFocus());
    QVERIFY(!page.item("Refresh").property("visualFocus").toBool());
}

// Limits

void tst_SsdTabReads::largeLimitsAreShownInFull_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("limit");
    QTest::newRow("memory") << 0 << "26800000";
    QTest::newRow("drive") << 1 << "4294967295";
}

void tst_SsdTabReads::largeLimitsAreShownInFull()
{
    QFETCH(const int, mode);
    QFETCH(const QString, limit);
    SsdPage page([mode](emulator::Camera &camera) {
        camera.otherClient().set("recorder.mode", mode);
        camera.gate().script("zvtGetSsdMaxNumFrames", 26800000U);
        camera.gate().script("zvtGetSsdMaxNumFramesDisk", 4294967295U);
    });
    QQuickItem &field = page.item("Frames To Record");
    QCOMPARE(field.property("toolTip").toString(), "Maximum: " + limit);
    page.enter(field, "99999999999");
    QCOMPARE(field.property("fault").toString(), "Not between 1 and " + limit);
}

void tst_SsdTabReads::limitsWithDecimalsAreShort()
{
    SsdPage page([](emulator::Camera &camera) { camera.gate().script("zvtClocksToHertz", 123.456789); });
    QQuickItem &field = page.item("Playback Rate (Hz)");
    page.enter(field, "200");
    QCOMPARE(field.property("fault").toString(), "Not between 0.0001 and 123.457");
}

void tst_SsdTabReads::largeFrameNumbersAreSent()
{
    SsdPage page([](emulator::Camera &camera) {
        emulator::Gate &gate = camera.gate();
        gate.script("zvtGetSsdState", Paused);
        gate.script("zvtGetSsdEndFrame", 4294967295U);
        gate.script("zvtGetSsdNumFramesAcquired", 4294967295U);
        gate.script("zvtSsd*", true);
    });
    QVERIFY(page.findText("/ 4294967295"));
    page.click("Frame");
    page.awaitFrame();
    QCOMPARE(page.commandsOf([&] {
        page.type("3000000000");
        page.press(Qt::Key_Return);
    }),
             QStringList("zvtSsdSkipToFrame 3000000000"));
    QCOMPARE(page.commandsOf([&] {
        page.item("Current Frame").forceActiveFocus(Qt::TabFocusReason);
        page.press(Qt::Key_End);
    }),
             QStringList());
    page.gate().script("zvtGetSsdPlaybackFrame", 3000000000U);
    page.enterState(Playing);
    QCOMPARE(page.text("Frame"), "3000000000");
    QCOMPARE(page.commandsOf([&] { page.press(Qt::Key_Right); }), QStringList("zvtSsdSkipToFrame 3000000001"));
}

// Fields

void tst_SsdTabReads::aDurationOfADayIsMarked()
{
    SsdPage page([](emulator::Camera &camera) {
        camera.otherClient().set("recorder.type", 1);
        camera.otherClient().set("recorder.duration", 86'400'000);
    });
    const auto background = [&page] {
        return page.item("Duration To Record").property("background").value<QObject *>()->property("color");
    };
    const QVariant marked = background();
    QVERIFY(!page.enabled("Arm for recording"));
    page.saveScreenshot();
    QCOMPARE(page.commandsOf([&] { page.enter(page.item("Duration To Record"), "01:00:00"); }),
             QStringList("zvtSetSsdRecordDuration 3600000"));
    QVERIFY(background() != marked);
    QVERIFY(page.enabled("Arm for recording"));
    // A wrong text has the same mark.
    page.enter(page.item("Duration To Record"), "00:99:00");
    QCOMPARE(background(), marked);
}

void tst_SsdTabReads::textsThatDoNotCountAreNotSent_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QVariantMap>("settings");
    QTest::addColumn<QString>("setter");
    QTest::newRow("pretrigger frames to the drive")
        << "Pretrigger Frames" << QVariantMap{{"recorder.mode", 1}} << "zvtSetSsdPretriggerFrames";
    QTest::newRow("frames by duration") << "Frames To Record" << QVariantMap{{"recorder.type", 1}}
                                        << "zvtSetSsdNumFrames";
}

void tst_SsdTabReads::textsThatDoNotCountAreNotSent()
{
    QFETCH(const QString, field);
    QFETCH(const QVariantMap, settings);
    QFETCH(const QString, setter);
    SsdPage page;
    page.enter(page.item(field), "4000000000");
    QVERIFY(!page.enabled("Arm for recording"));
    for (auto it = settings.begin(); it != settings.end(); ++it)
        QVERIFY(page.set(qPrintable(it.key()), it.value()));
    page.refresh();
    QVERIFY(page.enabled("Arm for recording"));
    const QStringList commands = page.commandsOf([&] { page.click("Arm for recording"); });
    QCOMPARE(commands.last(), "zvtSsdArm");
    QVERIFY2(!commands.contains(setter + " 4000000000"), qPrintable(commands.join(u' ')));
}

// The storage of the camera takes 199 bytes.
void tst_SsdTabReads::longNamesEndAtTheLimitInBytes()
{
    SsdPage page;
    paste(page, "SSD Filename", QString(100, QChar(0xe4)));
    QCOMPARE(page.text("SSD Filename"), QString(99, QChar(0xe4)));
    QVERIFY(page.item("SSD Filename").property("acceptable").toBool());
}

void tst_SsdTabReads::oneCharacterOfTwoUnitsCountsOnce()
{
    SsdPage page;
    const char32_t character = 0x1f525;
    paste(page, "SSD Filename", QString(99, u'a') + QString::fromUcs4(&character, 1));
    QCOMPARE(page.text("SSD Filename").size(), 101);
    QVERIFY(page.item("SSD Filename").property("acceptable").toBool());
    paste(page, "SSD Filename", QString(100, u'a') + QString::fromUcs4(&character, 1));
    QVERIFY(!page.item("SSD Filename").property("acceptable").toBool());
}

ZVT_TEST(tst_SsdTabReads)
#include "tst_SsdTabReads.moc"
