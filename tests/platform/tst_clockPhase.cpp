#include "platform/emulator/SetupError.h"
#include "tests/platform/FrameRig.h"
#include "tests/support/Test.h"

#include <cmath>

/// The phase of the detector clock.
class tst_clockPhase : public Test
{
    Q_OBJECT

private slots:
    void phaseMakesNoise_data();
    void phaseMakesNoise();
    void bestPhaseIsThatOfTheProfile();
    void phaseIsTakenInItsRange();
    void keysOfAProfileAreChecked_data();
    void keysOfAProfileAreChecked();
};

namespace
{

/// 9999999 if it cannot be read.
uint32_t phaseShift(const LensRig &rig)
{
    uint32_t shift = 9'999'999;
    zvtMfgGetClockPhaseShift(rig.handle(), &shift);
    return shift;
}

} // namespace

void tst_clockPhase::phaseMakesNoise_data()
{
    QTest::addColumn<uint32_t>("shift");
    QTest::addColumn<double>("factor");
    QTest::newRow("best") << 40U << 1.0;
    QTest::newRow("below") << 0U << 1.8;
    QTest::newRow("above") << 90U << 2.0;
    QTest::newRow("far above") << 540U << 11.0;
    QTest::newRow("limit") << 990U << 20.0;
    QTest::newRow("beyond the limit") << 1040U << 20.0;
    QTest::newRow("highest") << 100'000'000U << 20.0;
}

void tst_clockPhase::phaseMakesNoise()
{
    QFETCH(const uint32_t, shift);
    QFETCH(const double, factor);
    FrameRig rig;
    QVERIFY(rig.useSmallWindow() && rig.showArea(27));
    QCOMPARE(zvtMfgSetClockPhaseShift(rig.handle(), shift), 0);
    emulator::Clock::advance(1000);
    const auto statistics = rig.statistics(32);
    QCOMPARE(statistics.frames(), 32);
    // Beside the read noise of 3 counts, light and dark current have shot noise. The mean without both is 1000 counts,
    // 2 more for each kelvin of the case, and rounding adds a twelfth.
    const double kelvin = rig.exposure().readout.caseCelsius - 25;
    const double shot = (statistics.mean() - 1000 - 2 * kelvin) / 467;
    const double expected = std::sqrt(9 * factor * factor + shot + 1 / 12.0);
    const double deviation = statistics.temporalDeviation();
    QVERIFY2(std::abs(deviation / expected - 1) < 0.02, qPrintable(QString::number(deviation / expected)));
}

void tst_clockPhase::bestPhaseIsThatOfTheProfile()
{
    LensRig usual;
    QCOMPARE(phaseShift(usual), 40U);
    FrameRig rig;
    rig.openWith(R"({"roic": {"bestClockPhaseShift": 1000}})");
    QVERIFY(rig.useSmallWindow() && rig.showArea(27));
    QCOMPARE(phaseShift(rig), 1000U);
    const double best = rig.statistics(16).temporalDeviation();
    QCOMPARE(zvtMfgSetClockPhaseShift(rig.handle(), 40), 0);
    QVERIFY(rig.statistics(16).temporalDeviation() > 10 * best);
    rig.openWith(R"({"roic": {"clockPhaseShift": 90}})");
    QVERIFY(rig.useSmallWindow() && rig.showArea(27));
    QCOMPARE(phaseShift(rig), 90U);
    const double worse = rig.statistics(16).temporalDeviation();
    QCOMPARE(zvtMfgSetClockPhaseShift(rig.handle(), 40), 0);
    QVERIFY(std::abs(rig.statistics(16).temporalDeviation() / best - 1) < 0.02 && worse > 1.3 * best);
}

void tst_clockPhase::phaseIsTakenInItsRange()
{
    LensRig rig;
    for (const uint32_t value : {0U, 100'000'000U}) {
        QCOMPARE(zvtMfgSetClockPhaseShift(rig.handle(), value), 0);
        for (const uint32_t wrong : {100'000'001U, UINT32_MAX})
            QCOMPARE(zvtMfgSetClockPhaseShift(rig.handle(), wrong), int(emulator::Refused));
        QCOMPARE(phaseShift(rig), value);
    }
}

void tst_clockPhase::keysOfAProfileAreChecked_data()
{
    QTest::addColumn<QByteArray>("keys");
    for (const char *key : {"bestClockPhaseShift", "clockPhaseShift"})
        for (const char *value : {"-1", "100000001", "0.5", R"("best")", "true"}) {
            const QByteArray keys = QByteArray(R"("%1": %2)").replace("%1", key).replace("%2", value);
            QTest::newRow(keys.constData()) << keys;
        }
    // The constants of the profile are those of the sensor.
    for (const char *keys : {R"("override": true)", R"("lineDeadWidth": 40)", R"("phase": 40)"})
        QTest::newRow(keys) << QByteArray(keys);
}

void tst_clockPhase::keysOfAProfileAreChecked()
{
    QFETCH(const QByteArray, keys);
    const QTemporaryDir folder;
    LensRig rig;
    const QByteArray profile = writeProfile(folder.path(), "everything", R"({"roic": {)" + keys + "}}").toLatin1();
    try {
        rig.open(profile);
        QFAIL("it was accepted");
    } catch (const emulator::SetupError &error) {
        const QByteArray key = keys.mid(1, keys.indexOf('"', 1) - 1);
        QVERIFY2(QByteArray(error.what()).contains("devices.roic." + key + ':'), error.what());
    }
}

ZVT_TEST(tst_clockPhase)
#include "tst_clockPhase.moc"
