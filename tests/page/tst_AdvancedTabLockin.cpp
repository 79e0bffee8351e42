#include "tests/page/AdvancedPage.h"
#include "tests/support/Test.h"

#include <utility>

namespace
{

constexpr auto section = "Lockin Settings";
constexpr auto frequency = "Estimated Input Frequency (Hz)";
constexpr auto rateCall = "zvtGetLockinSampleFreq";

/// The page with only this section expanded, of a camera that has found no sample rate.
struct LockinSection : AdvancedPage {
    LockinSection() : AdvancedPage([](emulator::Camera &camera) { camera.gate().failAlways(rateCall); })
    {
        openOnly(section);
    }

    void refresh() { AdvancedPage::refresh(section); }
    void findRate(double rate)
    {
        gate().failNever();
        gate().script(rateCall, rate);
        refresh();
    }
    void loseRate()
    {
        gate().failAlways(rateCall);
        refresh();
    }
};

const QStringList rowsWithoutRate{"Off", "1/2", "1/4", "1/8", "1/16", "1/32", "1/64", "1/128"};
const QStringList rowsAtOneKilohertz{"26.37", "13.18", "6.59", "3.30", "1.65", "0.82", "0.41"};

} // namespace

/// The section "Lockin Settings" of the Advanced page.
class tst_AdvancedTabLockin : public Test
{
    Q_OBJECT

private slots:
    void couplingIsChosen();
    void frequencyIsTyped();
    void aChangeBelowTheToleranceDoesNothing();
    void wrongFrequenciesAreNotSent();
    void theFilterIsNamedByTheRate();
    void filterIsChosen();
    void theRowOfTheFilterStands();
    void theLastRowHasNoNumber();
    void refusedFilterShowsTheCamera();
    void theSampleRateIsShown();
    void controlsFollowTheCamera();
};

void tst_AdvancedTabLockin::couplingIsChosen()
{
    LockinSection page;
    QCOMPARE(page.rowsOf("Coupling"), QStringList({"AC - Alternating Current", "DC - Direct Current"}));
    QVERIFY(page.findText("Coupling:"));
    QVERIFY(page.set("lockin.coupling", 0));
    page.refresh();
    QCOMPARE(page.shown("Coupling"), "AC - Alternating Current");
    QCOMPARE(page.commandsOf([&] { page.choose("Coupling", "DC - Direct Current"); }),
             QStringList("zvtSetLockinCoupling 1"));
    QCOMPARE(page.commandsOf([&] { page.step("Coupling", Qt::Key_Up); }), QStringList("zvtSetLockinCoupling 0"));
}

void tst_AdvancedTabLockin::frequencyIsTyped()
{
    LockinSection page;
    QVERIFY(page.findText("Estimated Input Frequency (Hz):"));
    QCOMPARE(page.commandsOf([&] { page.enter(page.item(frequency), "12.25", Qt::Key_Return); }),
             QStringList("zvtSetLockinEstInputFreq 12.25"));
    QCOMPARE(page.text(frequency), "12.250");
    // The camera takes no more than half of its frame rate.
    QCOMPARE(page.commandsOf([&] { page.enter(page.item(frequency), "1e6"); }),
             QStringList("zvtSetLockinEstInputFreq 1e+06"));
    QVERIFY(page.text(frequency).toDouble() < 1000);
}

void tst_AdvancedTabLockin::aChangeBelowTheToleranceDoesNothing()
{
    LockinSection page;
    page.enter(page.item(frequency), "10");
    QCOMPARE(page.commandsOf([&] { page.enter(page.item(frequency), "10.0005", Qt::Key_Return); }), QStringList());
    QCOMPARE(page.text(frequency), "10.000");
}

void tst_AdvancedTabLockin::wrongFrequenciesAreNotSent()
{
    LockinSection page;
    const QString before = page.text(frequency);
    const std::pair<const char *, const char *> wrong[]{{"-1", "Must be 0 or more"},
                                                        {"-0.1", "Must be 0 or more"},
                                                        {"x", "Not a number"},
                                                        {"1e39", "Not between 0 and 3.40282e+38"}};
    for (const auto &[text, fault] : wrong) {
        QCOMPARE(page.commandsOf([&] { page.enter(page.item(frequency), text, Qt::Key_Return); }), QStringList());
        QCOMPARE(page.fault(frequency), fault);
        page.press(Qt::Key_Escape);
        QCOMPARE(page.text(frequency), before);
    }
    QVERIFY(page.set("lockin.estimatedFrequency", 10.0));
    page.refresh();
    QCOMPARE(page.commandsOf([&] { page.enter(page.item(frequency), "0"); }),
             QStringList("zvtSetLockinEstInputFreq 0"));
}

void tst_AdvancedTabLockin::theFilterIsNamedByTheRate()
{
    LockinSection page;
    QVERIFY(page.findText("Digital Filter:") && !page.findText("Digital Filter (Hz):"));
    QCOMPARE(page.rowsOf("Digital Filter"), rowsWithoutRate);
    page.findRate(1000.0);
    QVERIFY(!page.findText("Digital Filter:") && page.findText("Digital Filter (Hz):"));
    QCOMPARE(page.rowsOf("Digital Filter (Hz)"), rowsAtOneKilohertz);
    page.loseRate();
    QCOMPARE(page.rowsOf("Digital Filter"), rowsWithoutRate);
}

void tst_AdvancedTabLockin::filterIsChosen()
{
    LockinSection page;
    QVERIFY(page.set("lockin.filter", 0));
    page.refresh();
    QCOMPARE(page.shown("Digital Filter"), "Off");
    QCOMPARE(page.commandsOf([&] { page.choose("Digital Filter", "1/16"); }), QStringList("zvtSetLockinAlphaFilter 4"));
    QCOMPARE(page.commandsOf([&] { page.step("Digital Filter", Qt::Key_Down); }),
             QStringList("zvtSetLockinAlphaFilter 5"));
    page.findRate(1000.0);
    QCOMPARE(page.commandsOf([&] { page.choose("Digital Filter (Hz)", "26.37"); }),
             QStringList("zvtSetLockinAlphaFilter 0"));
    QCOMPARE(page.shown("Digital Filter (Hz)"), "26.37");
}

// A combo box with new rows selects the first one.
void tst_AdvancedTabLockin::theRowOfTheFilterStands()
{
    LockinSection page;
    QVERIFY(page.set("lockin.filter", 3));
    page.refresh();
    QCOMPARE(page.shown("Digital Filter"), "1/8");
    page.findRate(1000.0);
    QCOMPARE(page.shown("Digital Filter (Hz)"), "3.30");
    page.loseRate();
    QCOMPARE(page.shown("Digital Filter"), "1/8");
    QCOMPARE(page.item("Digital Filter").property("currentIndex").toInt(), 3);
}

void tst_AdvancedTabLockin::theLastRowHasNoNumber()
{
    LockinSection page;
    QVERIFY(page.set("lockin.filter", 7));
    page.refresh();
    QCOMPARE(page.shown("Digital Filter"), "1/128");
    page.findRate(1000.0);
    QCOMPARE(page.shown("Digital Filter (Hz)"), "");
    page.loseRate();
    QCOMPARE(page.shown("Digital Filter"), "1/128");
}

void tst_AdvancedTabLockin::refusedFilterShowsTheCamera()
{
    LockinSection page;
    QVERIFY(page.set("lockin.filter", 2));
    page.refresh();
    page.gate().failNext("zvtSetLockinAlphaFilter");
    page.choose("Digital Filter", "1/64");
    QCOMPARE(page.shown("Digital Filter"), "1/4");
}

void tst_AdvancedTabLockin::theSampleRateIsShown()
{
    LockinSection page;
    QVERIFY(page.findText("Sample Rate (Hz):"));
    const auto value = [&] { return page.item("Sample Rate (Hz)").property("text").toString(); };
    QCOMPARE(value(), "Not Set");
    page.findRate(123.456);
    QCOMPARE(value(), "123.46");
    page.loseRate();
    QCOMPARE(value(), "Not Set");
}

void tst_AdvancedTabLockin::controlsFollowTheCamera()
{
    LockinSection page;
    QVERIFY(page.set("lockin.coupling", 1) && page.set("lockin.filter", 6)
            && page.set("lockin.estimatedFrequency", 5.5));
    page.refresh();
    QCOMPARE(page.shown("Coupling"), "DC - Direct Current");
    QCOMPARE(page.shown("Digital Filter"), "1/64");
    QCOMPARE(page.text(frequency), "5.500");
}

ZVT_TEST(tst_AdvancedTabLockin)
#include "tst_AdvancedTabLockin.moc"
