#include "tests/page/MfgPage.h"
#include "tests/support/Test.h"

#include <memory>

namespace
{

const QString section = QStringLiteral("ROIC Config");

/// A number field of the section, its setter and a number that is not the default.
struct Field {
    const char *name;
    const char *setter;
    const char *number;
};

const QList<Field> fields{{"Line Dead Width", "zvtSetMfgLineDeadWidth", "40"},
                          {"Pre Int Width", "zvtSetMfgPreIntDeadWidth", "350"},
                          {"Post Int Width", "zvtSetMfgPostIntDeadWidth", "250"},
                          {"Pre Dead Rows", "zvtSetMfgPreDeadRows", "3"},
                          {"Post Dead Rows", "zvtSetMfgPostDeadRows", "4"}};

const QStringList times{"Line Dead Width Time (us)", "Pre Int Width Time (us)", "Post Int Width Time (us)"};

void addFields()
{
    QTest::addColumn<int>("field");
    for (qsizetype field = 0; field < fields.size(); ++field)
        QTest::newRow(fields.at(field).name) << static_cast<int>(field);
}

struct ReadoutPage : MfgPage {
    explicit ReadoutPage(const Prepare &prepare = [](emulator::Camera &) {})
        : MfgPage(QStringLiteral("everything"), prepare)
    {
        openOnly(section);
    }

    /// The page of a camera whose defaults are overridden.
    static ReadoutPage *overridden()
    {
        return new ReadoutPage([](emulator::Camera &camera) { camera.otherClient().set("roic.override", true); });
    }
};

} // namespace

/// The section "ROIC Config" of the Mfg page.
class tst_MfgTabReadout : public Test
{
    Q_OBJECT

private slots:
    void theDefaultsAreShown();
    void overrideEnablesTheOthers_data();
    void overrideEnablesTheOthers();
    void refusedOverrideSpringsBack();
    void numbersAreWrittenWhenEntered_data() { addFields(); }
    void numbersAreWrittenWhenEntered();
    void wrongNumbersAreNotWritten_data() { addFields(); }
    void wrongNumbersAreNotWritten();
    void refusedNumbersSpringBack_data() { addFields(); }
    void refusedNumbersSpringBack();
    void theLargestNumbersAreWritten_data() { addFields(); }
    void theLargestNumbersAreWritten();
    void timesAreRoundedUpToWidths();
    void aTimeThatIsNotChangedIsNotWritten_data();
    void aTimeThatIsNotChangedIsNotWritten();
    void wrongTimesAreNotWritten_data() { aTimeThatIsNotChangedIsNotWritten_data(); }
    void wrongTimesAreNotWritten();
    void aWidthAndItsTimeAreOneNumber();
    void withoutAClockATimeIsAWidth();
    void aTimeThatIsNotFiniteIsEmpty();
    void extraLineSyncIsSwitched();
    void theLatestReadIsShown();
};

void tst_MfgTabReadout::theDefaultsAreShown()
{
    ReadoutPage page;
    const QStringList texts{"20", "300", "200", "1", "1"};
    for (qsizetype i = 0; i < texts.size(); ++i)
        QCOMPARE(page.text(fields.at(i).name), texts.at(i));
    const QStringList microseconds{"1.00", "15.00", "10.00"};
    for (qsizetype i = 0; i < times.size(); ++i)
        QCOMPARE(page.text(times.at(i)), microseconds.at(i));
    QVERIFY(page.findText("Time (us):"));
    QVERIFY(!page.checked("Override Defaults") && !page.checked("Has Extra LSync"));
}

void tst_MfgTabReadout::overrideEnablesTheOthers_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::newRow("mouse") << false;
    QTest::newRow("keyboard") << true;
}

void tst_MfgTabReadout::overrideEnablesTheOthers()
{
    QFETCH(const bool, byKeyboard);
    ReadoutPage page;
    QStringList others = times + QStringList{"Has Extra LSync"};
    for (const Field &field : fields)
        others << QString::fromLatin1(field.name);
    for (const bool on : {true, false}) {
        for (const QString &name : others)
            QCOMPARE(page.enabled(name), !on);
        QCOMPARE(page.commandsOf([&] { page.use("Override Defaults", byKeyboard); }),
                 QStringList(QStringLiteral("zvtSetMfgOverrideRoicConfig %1").arg(on ? "1" : "0")));
        QCOMPARE(page.checked("Override Defaults"), on);
    }
    for (const QString &name : others)
        QVERIFY(!page.enabled(name));
}

void tst_MfgTabReadout::refusedOverrideSpringsBack()
{
    ReadoutPage page;
    page.gate().failAlways("zvtSetMfgOverrideRoicConfig");
    page.click("Override Defaults");
    page.settle();
    QVERIFY(!page.checked("Override Defaults"));
    QVERIFY(!page.enabled("Pre Dead Rows"));
}

void tst_MfgTabReadout::numbersAreWrittenWhenEntered()
{
    QFETCH(const int, field);
    const auto &[name, setter, number] = fields.at(field);
    const std::unique_ptr<ReadoutPage> page(ReadoutPage::overridden());
    QCOMPARE(page->commandsOf([&] { page->SetupPage::type(name, number); }), QStringList());
    const QStringList command(QStringLiteral("%1 %2").arg(QLatin1String(setter), QLatin1String(number)));
    QCOMPARE(page->commandsOf([&] { page->press(Qt::Key_Tab); }), command);
    page->refresh(section);
    QCOMPARE(page->text(name), number);
}

void tst_MfgTabReadout::wrongNumbersAreNotWritten()
{
    QFETCH(const int, field);
    const char *name = fields.at(field).name;
    const std::unique_ptr<ReadoutPage> page(ReadoutPage::overridden());
    const QString before = page->text(name);
    for (const char *text : {"-1", "1.5", "4294967296", "x"}) {
        QCOMPARE(page->commandsOf([&] { page->enterNumber(name, text); }), QStringList());
        QVERIFY2(!page->fault(name).isEmpty(), text);
        page->press(Qt::Key_Escape);
        QCOMPARE(page->text(name), before);
    }
}

void tst_MfgTabReadout::refusedNumbersSpringBack()
{
    QFETCH(const int, field);
    const auto &[name, setter, number] = fields.at(field);
    const std::unique_ptr<ReadoutPage> page(ReadoutPage::overridden());
    const QString before = page->text(name);
    page->gate().failAlways(setter);
    QCOMPARE(page->commandsOf([&] { page->enterNumber(name, number); }).size(), 1);
    QCOMPARE(page->text(name), before);
}

void tst_MfgTabReadout::theLargestNumbersAreWritten()
{
    QFETCH(const int, field);
    const auto &[name, setter, number] = fields.at(field);
    const std::unique_ptr<ReadoutPage> page(ReadoutPage::overridden());
    for (const char *text : {"4294967295", "0"})
        QCOMPARE(page->commandsOf([&] { page->enterNumber(name, text); }),
                 QStringList(QStringLiteral("%1 %2").arg(QLatin1String(setter), QLatin1String(text))));
}

// The clock has 20 MHz.
void tst_MfgTabReadout::timesAreRoundedUpToWidths()
{
    const std::unique_ptr<ReadoutPage> page(ReadoutPage::overridden());
    const QStringList commands = page->commandsOf([&] { page->enterNumber("Line Dead Width Time (us)", "1.51"); });
    QCOMPARE(commands, QStringList("zvtSetMfgLineDeadWidth 31"));
    QCOMPARE(page->text("Line Dead Width"), "31");
    QCOMPARE(page->text("Line Dead Width Time (us)"), "1.55");
    QCOMPARE(page->commandsOf([&] { page->enterNumber("Pre Int Width Time (us)", "0.01"); }),
             QStringList("zvtSetMfgPreIntDeadWidth 1"));
    QCOMPARE(page->commandsOf([&] { page->enterNumber("Post Int Width Time (us)", "2"); }),
             QStringList("zvtSetMfgPostIntDeadWidth 40"));
}

void tst_MfgTabReadout::aTimeThatIsNotChangedIsNotWritten_data()
{
    QTest::addColumn<QString>("text");
    const QStringList texts{"1.53", "22.90", "15.27"};
    for (qsizetype i = 0; i < times.size(); ++i)
        QTest::newRow(qPrintable(times.at(i))) << texts.at(i);
}

// The clock has 13.1 MHz, so that the shown time of each width is rounded: rounded up to a width, it would be another.
void tst_MfgTabReadout::aTimeThatIsNotChangedIsNotWritten()
{
    QFETCH(const QString, text);
    const QString name = QString::fromLatin1(QTest::currentDataTag());
    ReadoutPage page([](emulator::Camera &camera) {
        camera.otherClient().set("roic.override", true);
        camera.gate().script("zvtGetClockFrequency", 13100000);
    });
    QCOMPARE(page.text(name), text);
    QCOMPARE(page.commandsOf([&] {
        page.item(name).forceActiveFocus(Qt::TabFocusReason);
        page.press(Qt::Key_Tab);
        page.item(name).forceActiveFocus(Qt::TabFocusReason);
        page.press(Qt::Key_Return);
        // Typed, but the same.
        page.enterNumber(name, text);
    }),
             QStringList());
    QCOMPARE(page.text(name), text);
}

void tst_MfgTabReadout::wrongTimesAreNotWritten()
{
    const QString name = QString::fromLatin1(QTest::currentDataTag());
    const std::unique_ptr<ReadoutPage> page(ReadoutPage::overridden());
    for (const char *wrong : {"-1", "x", "1e400"}) {
        QCOMPARE(page->commandsOf([&] { page->enterNumber(name, wrong); }), QStringList());
        QVERIFY2(!page->fault(name).isEmpty(), wrong);
        page->press(Qt::Key_Escape);
    }
}

void tst_MfgTabReadout::aWidthAndItsTimeAreOneNumber()
{
    const std::unique_ptr<ReadoutPage> page(ReadoutPage::overridden());
    page->enterNumber("Pre Int Width", "400");
    QCOMPARE(page->text("Pre Int Width Time (us)"), "20.00");
}

void tst_MfgTabReadout::withoutAClockATimeIsAWidth()
{
    ReadoutPage page([](emulator::Camera &camera) { camera.gate().failAlways("zvtGetClockFrequency"); });
    QCOMPARE(page.text("Pre Int Width"), "300");
    QCOMPARE(page.text("Pre Int Width Time (us)"), "300.00");
}

void tst_MfgTabReadout::aTimeThatIsNotFiniteIsEmpty()
{
    ReadoutPage page([](emulator::Camera &camera) {
        camera.gate().script("zvtGetClockFrequency", 0);
        camera.gate().script("zvtGetMfgPreIntDeadWidth", 0);
    });
    for (const QString &name : times)
        QCOMPARE(page.text(name), "");
    QCOMPARE(page.text("Line Dead Width"), "20");
    QCOMPARE(page.text("Pre Int Width"), "0");
}

void tst_MfgTabReadout::extraLineSyncIsSwitched()
{
    const std::unique_ptr<ReadoutPage> page(ReadoutPage::overridden());
    QCOMPARE(page->commandsOf([&] { page->click("Has Extra LSync"); }), QStringList("zvtSetMfgHasExtraLSync 1"));
    QVERIFY(page->checked("Has Extra LSync"));
    page->gate().failAlways("zvtSetMfgHasExtraLSync");
    page->click("Has Extra LSync");
    page->settle();
    QVERIFY(page->checked("Has Extra LSync"));
}

void tst_MfgTabReadout::theLatestReadIsShown()
{
    const std::unique_ptr<ReadoutPage> page(ReadoutPage::overridden());
    QVERIFY(page->set("roic.lineDeadWidth", 44));
    page->refresh(section);
    QCOMPARE(page->text("Line Dead Width"), "44");
    QCOMPARE(page->text("Line Dead Width Time (us)"), "2.20");
}

ZVT_TEST(tst_MfgTabReadout)
#include "tst_MfgTabReadout.moc"
