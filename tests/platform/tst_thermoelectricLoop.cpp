#include "platform/emulator/devices/ThermoelectricLoop.h"
#include "tests/support/Test.h"

#include <algorithm>
#include <cmath>
#include <ctime>
#include <limits>

using emulator::ThermoelectricLoop;

namespace
{

constexpr int64_t second = 1000;
constexpr int64_t hour = 3600 * second;
constexpr ThermoelectricLoop::Control softControl{0.3F, 0.02F, 0.2F, 0};

/// What a run of a loop showed.
struct Run {
    double lowest;
    double highest;
    double last;
    double secondsUntilHalfAKelvin; ///< After this time it is always within 0.5 K of the setpoint.
    double secondsUntilSettled; ///< The same for 0.05 K.
};

/// Runs a loop for ten minutes, from the ambient temperature or another one.
Run run(double ambient, double setpoint, const ThermoelectricLoop::Control &control = {})
{
    ThermoelectricLoop loop(ambient, 0);
    Run run{ambient, ambient, ambient, 0, 0};
    for (int64_t time = 100; time <= 600 * second; time += 100) {
        run.last = loop.temperature({true, ambient, setpoint, control}, time);
        run.lowest = std::min(run.lowest, run.last);
        run.highest = std::max(run.highest, run.last);
        const double distance = std::abs(run.last - setpoint);
        const double seconds = static_cast<double>(time) / 1000;
        if (distance > 0.5)
            run.secondsUntilHalfAKelvin = seconds;
        if (distance > 0.05)
            run.secondsUntilSettled = seconds;
    }
    return run;
}

/// Whether a figure is what the camera was measured to have, within 10 %.
bool isAbout(double figure, double measured) { return std::abs(figure - measured) <= 0.1 * std::abs(measured); }

} // namespace

#define COMPARE_FIGURE(figure, measured) QVERIFY2(isAbout(figure, measured), qPrintable(QString::number(figure)))

/// The loop of a thermoelectric cooler. The figures are those of measured runs, within 10 %.
class tst_thermoelectricLoop : public Test
{
    Q_OBJECT

private slots:
    void coolsWithALittleOvershoot();
    void withoutAnIntegralADistanceStays();
    void anUnusedIntegralDoesNotAddUp();
    void softConstantsOvershootLess();
    void losesOnAHotDay();
    void losesAgainstALowSetpoint();
    void flagReachesItsTemperatures_data();
    void flagReachesItsTemperatures();
    void heatsAsWellAsItCools();
    void offsetDrivesWithoutADistance();
    void newSetpointIsNoJumpOfTheDerivative();
    void followsTheAmbientTemperatureWithoutPower();
    void integralDoesNotOutliveThePower();
    void doesNotDependOnHowOftenItIsRead();
    void aClockThatIsSetBackDoesNotStopIt();
    void aLongTimeCostsLittle();
    void staysInRangeWithAnyConstants_data();
    void staysInRangeWithAnyConstants();
};

void tst_thermoelectricLoop::coolsWithALittleOvershoot()
{
    const Run cooling = run(22, 10);
    COMPARE_FIGURE(10 - cooling.lowest, 0.63);
    COMPARE_FIGURE(cooling.secondsUntilSettled, 21);
    QVERIFY(std::abs(cooling.last - 10) < 0.001);
}

void tst_thermoelectricLoop::withoutAnIntegralADistanceStays()
{
    COMPARE_FIGURE(run(22, 10, {1.5F, 0, 0.05F, 0}).last - 10, 0.09);
}

void tst_thermoelectricLoop::anUnusedIntegralDoesNotAddUp()
{
    ThermoelectricLoop loop(22, 0);
    int64_t time = 3600 * second;
    loop.temperature({true, 22, 10, {1.5F, 0, 0.05F, 0}}, time);
    for (const int64_t end = time + 60 * second; time < end; time += 100)
        QVERIFY(std::abs(loop.temperature({true, 22, 10, {}}, time) - 10) < 0.5);
}

void tst_thermoelectricLoop::softConstantsOvershootLess()
{
    COMPARE_FIGURE(10 - run(22, 10, softControl).lowest, 0.27);
}

void tst_thermoelectricLoop::losesOnAHotDay() { COMPARE_FIGURE(run(55, 10).last, 22.3); }

void tst_thermoelectricLoop::losesAgainstALowSetpoint() { COMPARE_FIGURE(run(22, -40).last, -10.7); }

void tst_thermoelectricLoop::flagReachesItsTemperatures_data()
{
    QTest::addColumn<double>("setpoint");
    QTest::addColumn<double>("seconds");
    QTest::newRow("20 C") << 20.0 << 5.6;
    QTest::newRow("35 C") << 35.0 << 11.1;
    QTest::newRow("45 C") << 45.0 << 15.1;
}

void tst_thermoelectricLoop::flagReachesItsTemperatures()
{
    QFETCH(const double, setpoint);
    QFETCH(const double, seconds);
    COMPARE_FIGURE(run(24, setpoint).secondsUntilHalfAKelvin, seconds);
    COMPARE_FIGURE(run(24, -10).last, -8.7);
}

void tst_thermoelectricLoop::heatsAsWellAsItCools()
{
    const Run heating = run(22, 40);
    QVERIFY(heating.highest > 40 && heating.highest < 42);
    QVERIFY(heating.lowest >= 22);
    QVERIFY(std::abs(heating.last - 40) < 0.01);
}

void tst_thermoelectricLoop::offsetDrivesWithoutADistance()
{
    const Run offset = run(22, 22, {0, 0, 0, 0.1F});
    QVERIFY(offset.last < 21 && offset.last > 10);
    QCOMPARE(run(22, 22, {0, 0, 0, 0}).last, 22.0);
}

// With this large a constant, the drive would stop for a moment.
void tst_thermoelectricLoop::newSetpointIsNoJumpOfTheDerivative()
{
    const ThermoelectricLoop::Control control{1.5F, 0.25F, 5, 0};
    ThermoelectricLoop loop(22, 0);
    loop.temperature({true, 22, 10, control}, 600 * second);
    double before = loop.temperature({true, 22, 20, control}, 600 * second);
    for (int64_t time = 100; time <= second; time += 100) {
        const double now = loop.temperature({true, 22, 20, control}, 600 * second + time);
        QVERIFY(now >= before);
        before = now;
    }
}

void tst_thermoelectricLoop::followsTheAmbientTemperatureWithoutPower()
{
    ThermoelectricLoop loop(22, 0);
    loop.temperature({true, 22, 10, {}}, 600 * second);
    // The drive takes some seconds to come to rest.
    loop.temperature({false, 22, 10, {}}, 620 * second);
    const double start = loop.temperature({false, 22, 10, {}}, 620 * second);
    const double later = loop.temperature({false, 22, 10, {}}, 680 * second);
    QVERIFY(std::abs((22 - later) / (22 - start) - std::exp(-1.0)) < 0.01);
    QVERIFY(std::abs(loop.temperature({false, 22, 10, {}}, hour) - 22) < 0.001);
    QVERIFY(std::abs(loop.temperature({false, 30, 10, {}}, 2 * hour) - 30) < 0.001);
}

void tst_thermoelectricLoop::integralDoesNotOutliveThePower()
{
    ThermoelectricLoop loop(22, 0);
    loop.temperature({true, 22, 10, {}}, 600 * second);
    loop.temperature({false, 22, 10, {}}, 2 * hour);
    double lowest = 22;
    for (int64_t time = 2 * hour; time <= 2 * hour + 600 * second; time += 100)
        lowest = std::min(lowest, loop.temperature({true, 22, 10, {}}, time));
    COMPARE_FIGURE(10 - lowest, 0.63);
}

void tst_thermoelectricLoop::doesNotDependOnHowOftenItIsRead()
{
    const ThermoelectricLoop::Conditions cooling{true, 22, 10, {}};
    ThermoelectricLoop often(22, 0);
    for (int64_t time = 0; time < 9 * second; time += 33)
        often.temperature(cooling, time);
    ThermoelectricLoop once(22, 0);
    QCOMPARE(often.temperature(cooling, 9 * second), once.temperature(cooling, 9 * second));
}

void tst_thermoelectricLoop::aClockThatIsSetBackDoesNotStopIt()
{
    const ThermoelectricLoop::Conditions cooling{true, 22, 10, {}};
    ThermoelectricLoop loop(22, hour);
    const double before = loop.temperature(cooling, hour + 3 * second);
    QCOMPARE(loop.temperature(cooling, 0), before);
    QVERIFY(loop.temperature(cooling, 3 * second) < before - 2);
}

// The computer's clock may jump by years.
void tst_thermoelectricLoop::aLongTimeCostsLittle()
{
    double best = std::numeric_limits<double>::max();
    for (int round = 0; round < 5; ++round) {
        ThermoelectricLoop loop(22, 0);
        timespec start{};
        timespec end{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &start);
        QVERIFY(std::abs(loop.temperature({true, 22, 10, {}}, std::numeric_limits<int64_t>::max()) - 10) < 0.001);
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &end);
        best = std::min(best,
                        static_cast<double>(end.tv_sec - start.tv_sec) * 1e3
                            + static_cast<double>(end.tv_nsec - start.tv_nsec) / 1e6);
    }
    QVERIFY2(best < 10, qPrintable(QString::number(best)));
}

void tst_thermoelectricLoop::staysInRangeWithAnyConstants_data()
{
    QTest::addColumn<double>("setpoint");
    QTest::addColumn<float>("proportional");
    QTest::addColumn<float>("integral");
    QTest::addColumn<float>("derivative");
    for (const double setpoint : {-40.0, 10.0, 60.0})
        for (const float proportional : {0.0F, 1000.0F})
            for (const float integral : {0.0F, 1e-6F, 0.25F, 1000.0F})
                for (const float derivative : {0.0F, 1000.0F})
                    QTest::addRow("%g C, %g, %g, %g", setpoint, proportional, integral, derivative)
                        << setpoint << proportional << integral << derivative;
}

void tst_thermoelectricLoop::staysInRangeWithAnyConstants()
{
    QFETCH(const double, setpoint);
    QFETCH(const float, proportional);
    QFETCH(const float, integral);
    QFETCH(const float, derivative);
    for (const float offset : {0.0F, 1000.0F}) {
        ThermoelectricLoop loop(22, 0);
        for (int64_t time = 0; time <= 2 * hour; time += second) {
            const double celsius
                = loop.temperature({true, 22, setpoint, {proportional, integral, derivative, offset}}, time);
            QVERIFY(celsius >= -12 && celsius <= 120);
        }
    }
}

ZVT_TEST(tst_thermoelectricLoop)
#include "tst_thermoelectricLoop.moc"
