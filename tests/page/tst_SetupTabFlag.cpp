#include "tests/page/TemperaturePage.h"
#include "tests/support/Test.h"

#include <QColor>

#include "zvt/zvtsdk.h"

/// The section of the flag on the Setup page.
class tst_SetupTabFlag : public Test
{
    Q_OBJECT

private slots:
    void flagIsMoved_data();
    void flagIsMoved();
    void flagOfAnotherClientIsShown();
    void plainFlagHasOnlyAState();
    void switchOfTheFlagOnlyEnablesRows_data();
    void switchOfTheFlagOnlyEnablesRows();
    void frameShowsTheRefusal();
    void enteringClearsTheFrame();
    void numberOutOfRangeCannotBeApplied_data();
    void numberOutOfRangeCannotBeApplied();
    void clickOnApplyTakesTheTypedNumber();
};

void tst_SetupTabFlag::flagIsMoved_data()
{
    QTest::addColumn<QString>("profile");
    QTest::addColumn<bool>("byKeyboard");
    QTest::newRow("mouse") << "everything" << false;
    QTest::newRow("keyboard") << "everything" << true;
    QTest::newRow("plain flag") << "low-cost" << false;
}

void tst_SetupTabFlag::flagIsMoved()
{
    QFETCH(const QString, profile);
    QFETCH(const bool, byKeyboard);
    TemperaturePage page(flagSection, profile);
    QCOMPARE(page.shown("State"), "Stowed");
    const auto commands = page.commandsOf([&] {
        if (byKeyboard) {
            page.item("State").forceActiveFocus(Qt::TabFocusReason);
            page.press(Qt::Key_Down);
        } else {
            page.SetupPage::choose("State", "In Field Of View");
        }
    });
    QCOMPARE(commands, QStringList("zvtSetFlagState 1"));
    QCOMPARE(page.shown("State"), "In Field Of View");
    uint8_t state = 0;
    QCOMPARE(zvtGetFlagState(page.rig().camera().handle(), &state), 0);
    QCOMPARE(state, uint8_t(1));
}

void tst_SetupTabFlag::flagOfAnotherClientIsShown()
{
    TemperaturePage page(flagSection);
    QVERIFY(page.rig().camera().otherClient().set("flag.state", 1));
    QVERIFY(page.rig().camera().otherClient().set("flag.setpoint", 42.5));
    page.refresh(page.flag());
    QCOMPARE(page.shown("State"), "In Field Of View");
    QCOMPARE(page.text("Desired"), "42.50");
}

void tst_SetupTabFlag::plainFlagHasOnlyAState()
{
    TemperaturePage page(flagSection, "te-cooler");
    QVERIFY(page.enabled("State"));
    for (const char *name : {"Cooler", "Temperature", "Desired", "Apply"})
        QVERIFY2(!page.find(name), name);
    // It is polled all the same.
    QCOMPARE(page.pollsOfASecond(page.flag()), 1);
}

void tst_SetupTabFlag::switchOfTheFlagOnlyEnablesRows_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::newRow("mouse") << false;
    QTest::newRow("keyboard") << true;
}

void tst_SetupTabFlag::switchOfTheFlagOnlyEnablesRows()
{
    QFETCH(const bool, byKeyboard);
    TemperaturePage page(flagSection);
    QVERIFY(page.checked("Cooler") && page.enabled("Desired") && page.enabled("Apply"));
    QCOMPARE(page.commandsOf([&] { page.use("Cooler", byKeyboard); }), QStringList());
    QVERIFY(!page.checked("Cooler"));
    QVERIFY(!page.flag()->property("coolerEnabled").toBool());
    QVERIFY(!page.enabled("Desired") && !page.enabled("Apply") && !page.enabled("Temperature"));
    page.refresh(page.flag());
    QVERIFY(page.checked("Cooler") && page.enabled("Desired"));
    QVERIFY(page.flag()->property("coolerEnabled").toBool());
    QVERIFY(page.rig().camera().otherClient().set("flag.power", false));
    page.refresh(page.flag());
    QVERIFY(!page.checked("Cooler") && !page.flag()->property("coolerEnabled").toBool());
    QCOMPARE(page.commandsOf([&] { page.use("Cooler", byKeyboard); }), QStringList());
    QVERIFY(page.checked("Cooler") && page.enabled("Desired"));
}

void tst_SetupTabFlag::frameShowsTheRefusal()
{
    TemperaturePage page(flagSection);
    QVERIFY(page.showsRefusal());
    const QQuickItem *frame = page.item("Desired").findChild<QQuickItem *>("refusalFrame");
    const auto border = frame->property("border");
    const QObject *pen = border.value<QObject *>();
    QVERIFY(pen);
    QCOMPARE(pen->property("width").toInt(), 1);
    QCOMPARE(pen->property("color").value<QColor>(), QColor("red"));
    const auto apply = [&](const QString &number) {
        page.type("Desired", number);
        page.press(Qt::Key_Return);
        return page.commandsOf([&] { page.click("Apply"); });
    };
    QCOMPARE(apply("35"), QStringList("zvtSetFlagDesiredTemperature 35"));
    QVERIFY(!page.showsRefusal());
    // The camera refuses it.
    QCOMPARE(apply("75.5"), QStringList("zvtSetFlagDesiredTemperature 75.5"));
    QVERIFY(page.showsRefusal());
    QCOMPARE(page.text("Desired"), "75.50");
    page.refresh(page.flag());
    QVERIFY(page.showsRefusal());
    QCOMPARE(page.text("Desired"), "35.00");
    emulator::Clock::advance(60'000);
    page.pollsOfASecond(page.flag());
    QVERIFY2(page.text("Temperature").startsWith("35.0") || page.text("Temperature").startsWith("34.9"),
             qPrintable(page.text("Temperature")));
    QVERIFY(page.text("Temperature").endsWith(QString::fromUtf8(" °C")));
}

void tst_SetupTabFlag::enteringClearsTheFrame()
{
    TemperaturePage page(flagSection);
    page.type("Desired", "30");
    QVERIFY(page.showsRefusal());
    page.press(Qt::Key_Return);
    QVERIFY(!page.showsRefusal());
    QCOMPARE(page.flag()->property("desiredFlagTemperature").toDouble(), 30.0);
    QVERIFY(page.flag()->property("desiredSetWasValid").toBool());
}

void tst_SetupTabFlag::numberOutOfRangeCannotBeApplied_data()
{
    QTest::addColumn<bool>("acceptable");
    for (const char *text : {"100.01", "-100.01", "101", "1.234", "warm", ""})
        QTest::addRow("\"%s\"", text) << false;
    for (const char *text : {"100", "-100", "99.99", "0"})
        QTest::addRow("\"%s\"", text) << true;
}

void tst_SetupTabFlag::numberOutOfRangeCannotBeApplied()
{
    QFETCH(const bool, acceptable);
    const QString text = QString::fromLatin1(QTest::currentDataTag()).remove(u'"');
    TemperaturePage page(flagSection);
    const double before = page.flag()->property("desiredFlagTemperature").toDouble();
    page.item("Desired").forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_A, Qt::ControlModifier);
    page.press(Qt::Key_Delete);
    page.PageDriver::type(text);
    QCOMPARE(page.enabled("Apply"), acceptable);
    page.press(Qt::Key_Return);
    QCOMPARE(page.enabled("Apply"), acceptable);
    QCOMPARE(page.flag()->property("desiredFlagTemperature").toDouble(),
             acceptable ? static_cast<double>(text.toFloat()) : before);
    QCOMPARE(page.showsRefusal(), !acceptable);
}

void tst_SetupTabFlag::clickOnApplyTakesTheTypedNumber()
{
    TemperaturePage page(flagSection);
    page.type("Desired", "27.5");
    QCOMPARE(page.commandsOf([&] { page.click("Apply"); }), QStringList("zvtSetFlagDesiredTemperature 27.5"));
    QVERIFY(!page.showsRefusal());
}

ZVT_TEST(tst_SetupTabFlag)
#include "tst_SetupTabFlag.moc"
