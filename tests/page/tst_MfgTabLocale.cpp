#include "tests/page/MfgPage.h"
#include "tests/support/Test.h"
#include "tests/support/otherLocale.h"

#include <array>

namespace
{

/// The page with one section open.
struct OpenPage : MfgPage {
    explicit OpenPage(
        const QString &section, const QString &profile = QStringLiteral("everything"),
        const Prepare &prepare = [](emulator::Camera &) {})
        : MfgPage(profile, prepare)
    {
        openOnly(section);
    }

    QStringList sentBy(const QString &field, const QString &text)
    {
        return commandsOf([&] { enterNumber(field, text); });
    }
};

} // namespace

/// Numbers on the Mfg page in a locale that writes decimals with a comma.
class tst_MfgTabLocale : public Test
{
    Q_OBJECT

private slots:
    void voltages();
    void nucSettings();
    void coolerSettings();
    void largeNumbersHaveNoSeparators();
    void timesOfTheReadout();
    void temperaturesOfTheEmulator();
};

void tst_MfgTabLocale::voltages()
{
    if (!hasLocale(*this, "de_DE.UTF-8"))
        return;
    OpenPage page("Voltage Settings");
    QCOMPARE(page.text("Reference"), "1,650");
    QCOMPARE(page.text("Analog supply"), "5,000");
    QCOMPARE(page.sentBy("Reference", "2,3"), QStringList("zvtSetVoltage \"VREF\", 2.3"));
    QCOMPARE(page.text("Reference"), "2,300");
    // The tool tip is not in the language of the operator.
    QCOMPARE(page.item("Reference").property("toolTip").toString(), "1.000 to 2.300");
    // A point is not a decimal separator here.
    QCOMPARE(page.sentBy("Reference", "1.5"), QStringList());
    QCOMPARE(page.fault("Reference"), "Not a number");
    QCOMPARE(page.sentBy("Reference", "2,301"), QStringList());
    QCOMPARE(page.fault("Reference"), "Not between 1 and 2,3");
}

void tst_MfgTabLocale::nucSettings()
{
    if (!hasLocale(*this, "de_DE.UTF-8"))
        return;
    OpenPage page("NUC Settings", "everything", [](emulator::Camera &camera) {
        camera.gate().script("zvtGetNUCSetup", QVariantList{0.5, 1.75, 100, 15000, true});
        camera.gate().script("zvtGetNUCFlagConfig", QVariantList{55.5, 0.25, 12, 20000});
    });
    const QList<std::array<const char *, 3>> fields{{"Gain Min", "0,50", "0,75"},
                                                    {"Gain Max", "1,75", "2,00"},
                                                    {"Flag Max Temperature", "55,5", "40,5"},
                                                    {"Stable Delta", "0,25", "0,10"}};
    for (const auto &[name, before, after] : fields) {
        QCOMPARE(page.text(name), before);
        QCOMPARE(page.sentBy(name, after), QStringList());
        QCOMPARE(page.text(name), after);
    }
    const QStringList sent = page.commandsOf([&] { page.click("Apply NUC Settings"); });
    for (const char *command : {"zvtSetNUCSetup 0.75, 2, 100, 15000, true", "zvtSetNUCFlagConfig 40.5, 0.1, 12, 20000"})
        QVERIFY2(sent.contains(QLatin1String(command)), qPrintable(sent.join(u'\n')));
    page.enterNumber("Stable Delta", "0,09");
    QCOMPARE(page.fault("Stable Delta"), "Not between 0,1 and 5");
    page.enterNumber("Gain Max", "1.5");
    QCOMPARE(page.fault("Gain Max"), "Not a number");
}

void tst_MfgTabLocale::coolerSettings()
{
    if (!hasLocale(*this, "de_DE.UTF-8"))
        return;
    OpenPage page("TE Cooler Settings", "te-cooler");
    for (const char *field : {"kP", "kI", "kD", "kOff"})
        page.enterNumber(field, "-1,5");
    page.enterNumber("Setpoint", "-5,25");
    QCOMPARE(page.text("kI"), "-1,50");
    QCOMPARE(page.text("Setpoint"), "-5,25");
    QVERIFY(page.text("Actual Temperature").contains(u','));
    QVERIFY(page.text("Internal Temperature").contains(u','));
    const QStringList sent = page.commandsOf([&] { page.click("Apply TE Cooler Settings"); });
    QVERIFY(sent.contains("zvtMfgSetCoolerSetup -1.5, -1.5, -1.5, -1.5"));
    QVERIFY(sent.contains("zvtMfgSetCoolerSetpoint -5.25"));
}

// A field accepts its own text.
void tst_MfgTabLocale::largeNumbersHaveNoSeparators()
{
    if (!hasLocale(*this, "de_DE.UTF-8"))
        return;
    OpenPage page("Miscellaneous Settings");
    page.enterNumber("FPA Clock Phase Shift", "100000000");
    QCOMPARE(page.text("FPA Clock Phase Shift"), "100000000");
    QCOMPARE(page.tabModel("mfgMiscSettingsModel")->property("fpaClockPhaseShift").toInt(), 100000000);
}

// The clock has 20 MHz.
void tst_MfgTabLocale::timesOfTheReadout()
{
    if (!hasLocale(*this, "de_DE.UTF-8"))
        return;
    OpenPage page("ROIC Config", "everything",
                  [](emulator::Camera &camera) { camera.otherClient().set("roic.override", true); });
    QCOMPARE(page.text("Pre Int Width Time (us)"), "15,00");
    QCOMPARE(page.sentBy("Pre Int Width Time (us)", "2,51"), QStringList("zvtSetMfgPreIntDeadWidth 51"));
    QCOMPARE(page.text("Pre Int Width Time (us)"), "2,55");
    QCOMPARE(page.sentBy("Pre Int Width", "70000"), QStringList("zvtSetMfgPreIntDeadWidth 70000"));
    QCOMPARE(page.text("Pre Int Width"), "70000");
    QCOMPARE(page.text("Pre Int Width Time (us)"), "3500,00");
    QCOMPARE(page.sentBy("Pre Int Width Time (us)", "2.51"), QStringList());
}

void tst_MfgTabLocale::temperaturesOfTheEmulator()
{
    if (!hasLocale(*this, "de_DE.UTF-8"))
        return;
    OpenPage page("Emulator Settings");
    QCOMPARE(page.text("BB1 Temp"), "20,00");
    page.enterNumber("BB2 Temp", "-12,5");
    QCOMPARE(page.text("BB2 Temp"), "-12,50");
    QCOMPARE(page.cameraModel()->property("bb2Temp").toFloat(), -12.5F);
}

ZVT_TEST(tst_MfgTabLocale)
#include "tst_MfgTabLocale.moc"
