#include "tests/page/MfgPage.h"
#include "tests/support/Test.h"

#include <memory>

namespace
{

const QString section = QStringLiteral("ROIC Config");

/// A number field of the section, its setter, a number that is not the default, and its getter.
struct Field {
    const char *name;
    const char *setter;
    const char *number;
    const char *getter;
};

const QList<Field> fields{{"Line Dead Width", "zvtSetMfgLineDeadWidth", "40", "zvtGetMfgLineDeadWidth"},
                          {"Pre Int Width", "zvtSetMfgPreIntDeadWidth", "350", "zvtGetMfgPreIntDeadWidth"},
                          {"Post Int Width", "zvtSetMfgPostIntDeadWidth", "250", "zvtGetMfgPostIntDeadWidth"},
                          {"Pre Dead Rows", "zvtSetMfgPreDeadRows", "3", "zvtGetMfgPreDeadRows"},
                          {"Post Dead Rows", "zvtSetMfgPostDeadRows", "4", "zvtGetMfgPostDeadRows"}};

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

    /// The texts of a number and, if it has one, of its time.
    QStringList textsOf(int field) const
    {
        QStringList texts{text(fields.at(field).name)};
        if (field < times.size())
            texts << text(times.at(field));
        return texts;
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
    void tooLongTimesAreNotWritten_data();
    void tooLongTimesAreNotWritten();
    void aWidthAndItsTimeAreOneNumber();
    void withoutAClockATimeIsAWidth();
    void aTimeThatIsNotFiniteIsEmpty();
    void extraLineSyncIsSwitched();
    void theLatestReadIsShown();
    void aNumberThatIsNotReadIsEmpty_data() { addFields(); }
    void aNumberThatIsNotReadIsEmpty();
    void aNumberThatIsEnteredUnreadIsShown();
    void anEarlierReadWithoutACameraShowsNothing();
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
    const auto &[name, setter, number, getter] = fields.at(field);
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
    const auto &[name, setter, number, getter] = fields.at(field);
    const std::unique_ptr<ReadoutPage> page(ReadoutPage::overridden());
    const QString before = page->text(name);
    page->gate().failAlways(setter);
    QCOMPARE(page->commandsOf([&] { page->enterNumber(name, number); }).size(), 1);
    QCOMPARE(page->text(name), before);
}

void tst_MfgTabReadout::theLargestNumbersAreWritten()
{
    QFETCH(const int, field);
    const auto &[name, setter, number, getter] = fields.at(field);
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

void tst_MfgTabReadout::tooLongTimesAreNotWritten_data()
{
    QTest::addColumn<uint>("clock");
    QTest::addColumn<bool>("periodIsKnown");
    QTest::addColumn<QString>("longest");
    QTest::addColumn<QString>("width");
    QTest::addColumn<QString>("tooLong");
    QTest::newRow("20 MHz") << 20000000U << true << "214748364"
                            << "4294967280"
                            << "214748365";
    QTest::newRow("13.1 MHz") << 13100000U << true << "327860098"
                              << "4294967284"
                              << "327860099";
    QTest::newRow("1 MHz") << 1000000U << true << "4294967294"
                           << "4294967294"
                           << "4294967296";
    // The width of the time that follows is rounded up to one too many.
    QTest::newRow("39.3 MHz") << 39322200U << true << "109224999"
                              << "4294967256"
                              << "109225000";
    // The length of a period is not known, either.
    QTest::newRow("no line dead width") << 1000000U << false << "4294967295"
                                        << "4294967295"
                                        << "4294967296";
}

void tst_MfgTabReadout::tooLongTimesAreNotWritten()
{
    QFETCH(const uint, clock);
    QFETCH(const bool, periodIsKnown);
    QFETCH(const QString, longest);
    QFETCH(const QString, width);
    QFETCH(const QString, tooLong);
    ReadoutPage page([&](emulator::Camera &camera) {
        camera.otherClient().set("roic.override", true);
        camera.gate().script("zvtGetClockFrequency", clock);
        camera.gate().script("zvtGetMfgLineDeadWidth", 21);
        if (!periodIsKnown)
            camera.gate().failAlways("zvtGetMfgLineDeadWidth");
    });
    for (const QString &name : times) {
        for (const QString &wrong : {tooLong, QStringLiteral("1e300")}) {
            QCOMPARE(page.commandsOf([&] { page.enterNumber(name, wrong); }), QStringList());
            QCOMPARE(page.fault(name), "Not between 0 and " + longest);
            page.press(Qt::Key_Escape);
        }
    }
    QCOMPARE(page.commandsOf([&] { page.enterNumber("Pre Int Width Time (us)", longest); }),
             QStringList("zvtSetMfgPreIntDeadWidth " + width));
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

void tst_MfgTabReadout::aNumberThatIsNotReadIsEmpty()
{
    QFETCH(const int, field);
    const char *const getter = fields.at(field).getter;
    // A number that was never read is 0, too.
    ReadoutPage page([&](emulator::Camera &camera) {
        for (const Field &any : fields)
            camera.gate().script(any.getter, 0);
        camera.gate().failAlways(getter);
    });
    const QStringList zero = field < times.size() ? QStringList{"0", "0.00"} : QStringList{"0"};
    QCOMPARE(page.textsOf(field).join(""), "");
    for (int other = 0; other < fields.size(); ++other)
        if (other != field)
            QCOMPARE(page.textsOf(other).first(), "0");
    page.gate().failNoLonger(getter);
    page.refresh(section);
    QCOMPARE(page.textsOf(field), zero);
    page.gate().failAlways(getter);
    page.refresh(section);
    QCOMPARE(page.textsOf(field), zero);
}

void tst_MfgTabReadout::aNumberThatIsEnteredUnreadIsShown()
{
    ReadoutPage page([](emulator::Camera &camera) {
        camera.otherClient().set("roic.override", true);
        camera.gate().failAlways("zvtGetMfgPreIntDeadWidth");
    });
    page.enterNumber("Pre Int Width", "400");
    QCOMPARE(page.textsOf(1), QStringList({"400", "20.00"}));
}

// The body of the section is made after a read that has found nothing.
void tst_MfgTabReadout::anEarlierReadWithoutACameraShowsNothing()
{
    MfgPage page;
    page.rig().camera().disconnect();
    QVERIFY(QMetaObject::invokeMethod(page.roic(), "refresh"));
    page.settle();
    QVERIFY(page.roic()->property("hasRefreshed").toBool());
    page.rig().camera().connect();
    page.settle();
    page.gate().hold("zvtGetMfgOverrideRoicConfig");
    page.click(section);
    QVERIFY(page.gate().waitHeld("zvtGetMfgOverrideRoicConfig"));
    page.awaitFrame();
    for (const Field &field : fields)
        QCOMPARE(page.text(field.name), "");
    for (const QString &time : times)
        QCOMPARE(page.text(time), "");
    page.gate().release("*");
    page.settle();
    QCOMPARE(page.text("Line Dead Width"), "20");
}

ZVT_TEST(tst_MfgTabReadout)
#include "tst_MfgTabReadout.moc"
