#include "tests/page/AdvancedPage.h"
#include "tests/support/Test.h"
#include "tests/support/otherLocale.h"

/// Numbers on the Advanced page in a locale that writes decimals with a comma.
class tst_AdvancedTabLocale : public Test
{
    Q_OBJECT

private slots:
    void decimalsOfTheLocale();
};

void tst_AdvancedTabLocale::decimalsOfTheLocale()
{
    if (!hasLocale(*this, "de_DE.UTF-8"))
        return;
    AdvancedPage page([](emulator::Camera &camera) { camera.gate().script("zvtGetLockinSampleFreq", 1000.0); });
    for (const char *section : {"Analog Settings", "Saturation Settings", "Lockin Settings"})
        page.toggle(section);
    QCOMPARE(page.text("Preset 0 Digital Gain"), "1,000");
    QCOMPARE(page.commandsOf([&] { page.enter(page.item("Preset 0 Digital Gain"), "3,999", Qt::Key_Return); }),
             QStringList("zvtSetDigitalGain 0, 3.999"));
    QCOMPARE(page.commandsOf([&] { page.enter(page.item("Preset 1 Digital Offset"), "-1000,5"); }),
             QStringList("zvtSetDigitalOffset 1, -1000.5"));
    QCOMPARE(page.text("Preset 1 Digital Offset"), "-1000,5");
    QCOMPARE(page.commandsOf([&] { page.enter(page.item("Detector Bias (mv)"), "99,75"); }),
             QStringList("zvtSetFPABias 99.75"));
    QCOMPARE(page.text("Detector Bias (mv)"), "99,75");
    QCOMPARE(page.text("Preset 2 Count Threshold"), "16000");
    QCOMPARE(page.commandsOf([&] { page.enter(page.item("Estimated Input Frequency (Hz)"), "12,5"); }),
             QStringList("zvtSetLockinEstInputFreq 12.5"));
    QCOMPARE(page.text("Estimated Input Frequency (Hz)"), "12,500");
    QCOMPARE(page.rowsOf("Digital Filter (Hz)").first(), "26,37");
    QCOMPARE(page.item("Sample Rate (Hz)").property("text").toString(), "1000,00");
    // A point is not a decimal separator here.
    QCOMPARE(page.commandsOf([&] { page.enter(page.item("Preset 0 Digital Gain"), "1.5", Qt::Key_Return); }),
             QStringList());
    QCOMPARE(page.text("Preset 0 Digital Gain"), "1.5");
    QCOMPARE(page.fault("Preset 0 Digital Gain"), "Not a number");
    const auto faultOf = [&](const char *field, const char *text) {
        page.type(field, text);
        return page.fault(field);
    };
    QCOMPARE(faultOf("Preset 0 Digital Gain", "4"), "Not between 0 and 3,999");
    QCOMPARE(faultOf("Preset 0 Digital Offset", "20000"), "Not between -16383,5 and 16383,5");
}

ZVT_TEST(tst_AdvancedTabLocale)
#include "tst_AdvancedTabLocale.moc"
