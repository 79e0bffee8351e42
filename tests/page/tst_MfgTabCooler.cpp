#include "platform/emulator/Clock.h"
#include "tests/page/MfgPage.h"
#include "tests/support/Test.h"
#include "zvt/zvtsdk.h"

#include <algorithm>
#include <cmath>

/// How a thermoelectric cooler follows the constants that the operator applies on the Mfg page.
class tst_MfgTabCooler : public Test
{
    Q_OBJECT

private slots:
    void appliedConstantsChangeHowTheDetectorCools_data();
    void appliedConstantsChangeHowTheDetectorCools();
};

namespace
{

constexpr double kelvinAtZeroCelsius = 273.15;
constexpr double setpoint = 10;
constexpr double sensorStep = 0.02; ///< The sensor of the detector is no more exact.

/// The detector's temperature in Celsius.
double detectorOf(MfgPage &page)
{
    float kelvin = 0;
    return zvtGetFPATemperature(page.rig().camera().handle(), &kelvin) == 0 ? kelvin - kelvinAtZeroCelsius : NAN;
}

void apply(MfgPage &page)
{
    page.click("Apply TE Cooler Settings");
    page.settle();
}

} // namespace

void tst_MfgTabCooler::appliedConstantsChangeHowTheDetectorCools_data()
{
    QTest::addColumn<QStringList>("constants");
    QTest::addColumn<double>("overshoot");
    QTest::addColumn<double>("rest");
    QTest::newRow("usual") << QStringList{"1.5", "0.25", "0.05"} << 0.63 << 0.0;
    QTest::newRow("soft") << QStringList{"0.3", "0.02", "0.2"} << 0.27 << 0.0;
    QTest::newRow("without an integral") << QStringList{"1.5", "0", "0.05"} << 0.61 << 0.09;
}

// From the ambient temperature of 22 degrees, within 10 % of the figures of measured runs.
void tst_MfgTabCooler::appliedConstantsChangeHowTheDetectorCools()
{
    QFETCH(const QStringList, constants);
    QFETCH(const double, overshoot);
    QFETCH(const double, rest);
    MfgPage page("te-cooler");
    page.openOnly("TE Cooler Settings");
    page.click("Cooler Enabled");
    apply(page);
    emulator::Clock::advance(3'600'000);
    QVERIFY2(std::abs(detectorOf(page) - 22) < sensorStep, qPrintable(QString::number(detectorOf(page))));
    page.enterNumber("kP", constants.at(0));
    page.enterNumber("kI", constants.at(1));
    page.enterNumber("kD", constants.at(2));
    page.enterNumber("Setpoint", QString::number(setpoint));
    page.click("Cooler Enabled");
    apply(page);
    double lowest = detectorOf(page);
    for (int step = 0; step < 6000; ++step) {
        emulator::Clock::advance(100);
        lowest = std::min(lowest, detectorOf(page));
    }
    QVERIFY2(std::abs(std::max(0.0, setpoint - lowest) - overshoot) < std::max(sensorStep, overshoot / 10),
             qPrintable(QString::number(lowest)));
    QVERIFY2(std::abs(detectorOf(page) - setpoint - rest) < sensorStep, qPrintable(QString::number(detectorOf(page))));
}

ZVT_TEST(tst_MfgTabCooler)
#include "tst_MfgTabCooler.moc"
