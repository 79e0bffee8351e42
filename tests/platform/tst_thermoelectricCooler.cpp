#include "tests/platform/LensRig.h"
#include "tests/platform/callTimes.h"
#include "tests/platform/settingOf.h"
#include "tests/support/Test.h"

#include <algorithm>
#include <cmath>
#include <limits>

using emulator::Clock;

namespace
{

constexpr int64_t second = 1000;
constexpr double noise = 0.03;

/// A camera with its thermoelectric cooler.
class CoolerRig : public LensRig
{
public:
    explicit CoolerRig(const char *profile = "te-cooler") : LensRig(profile) { }

    /// Of the detector, in Celsius.
    double detector() const
    {
        float kelvin = 0;
        return zvtGetFPATemperature(handle(), &kelvin) == 0 ? kelvin - 273.15
                                                            : std::numeric_limits<double>::quiet_NaN();
    }
    double flag() const
    {
        float celsius = 0;
        return zvtGetFlagTemperature(handle(), &celsius) == 0 ? celsius : std::numeric_limits<double>::quiet_NaN();
    }
    double setpoint() const
    {
        float celsius = 0;
        return zvtMfgGetCoolerSetpoint(handle(), &celsius) == 0 ? celsius : std::numeric_limits<double>::quiet_NaN();
    }
    int power() const
    {
        uint8_t on = 42;
        return zvtMfgGetCoolerPowerEnabled(handle(), &on) == 0 ? on : -1;
    }
    QList<float> constants() const
    {
        float p = -1, i = -1, d = -1, off = -1;
        zvtMfgGetCoolerSetup(handle(), &p, &i, &d, &off);
        return {p, i, d, off};
    }
};

} // namespace

/// The thermoelectric cooler of a camera: the temperature of its detector, and the commands, which speak of the
/// detector or of the flag.
class tst_thermoelectricCooler : public Test
{
    Q_OBJECT

private slots:
    void detectorIsCooled();
    void detectorStartsAtTheAmbientTemperature();
    void constantsChangeTheRun();
    void powerIsSwitched();
    void setpointOutOfRangeIsRefused_data();
    void setpointOutOfRangeIsRefused();
    void constantsOutOfRangeAreRefused();
    void commandsSpeakOfTheFlag();
    void commandsAreAbsentWithoutACooler_data();
    void commandsAreAbsentWithoutACooler();
    void otherClientsSetEverything_data();
    void otherClientsSetEverything();
    void settingsOutliveARestartButAreInNoSnapshot_data();
    void settingsOutliveARestartButAreInNoSnapshot();
    void callsAreQuick();
};

void tst_thermoelectricCooler::detectorIsCooled()
{
    CoolerRig rig;
    uint8_t type = 0;
    QCOMPARE(zvtMfgGetCoolerType(rig.handle(), &type), 0);
    QCOMPARE(type, uint8_t(1));
    QCOMPARE(rig.setpoint(), 10.0);
    double lowest = 22;
    for (int step = 0; step < 300; ++step) {
        Clock::advance(100);
        lowest = std::min(lowest, rig.detector());
    }
    QVERIFY2(std::abs(10 - lowest - 0.63) < 0.063 + noise, qPrintable(QString::number(lowest)));
    QVERIFY(std::abs(rig.detector() - 10) < 0.05 + noise);
    QCOMPARE(zvtMfgSetCoolerSetpoint(rig.handle(), -40), 0);
    QVERIFY(std::abs(rig.detector() - 10) < 0.05 + noise);
    Clock::advance(600 * second);
    QVERIFY(std::abs(rig.detector() + 10.7) < 0.1 + noise);
    // On a hot day it loses the fight. The case takes its time to become as hot.
    QCOMPARE(zvtMfgSetCoolerSetpoint(rig.handle(), 10), 0);
    Clock::advance(60 * second);
    QVERIFY(std::abs(rig.detector() - 10) < 0.05 + noise);
    QVERIFY(rig.set("environment.ambient", 55));
    for (int minute = 0; minute < 60; ++minute) {
        Clock::advance(60 * second);
        rig.detector();
    }
    QVERIFY2(std::abs(rig.detector() - 22.3) < 0.1 + noise, qPrintable(QString::number(rig.detector())));
}

void tst_thermoelectricCooler::detectorStartsAtTheAmbientTemperature()
{
    CoolerRig rig;
    QVERIFY(std::abs(rig.detector() - 22) < noise);
    rig.camera().disconnect();
    Clock::advance(600 * second);
    rig.camera().connect();
    // It is not switched off by a disconnection.
    QVERIFY(std::abs(rig.detector() - 10) < noise);
}

void tst_thermoelectricCooler::constantsChangeTheRun()
{
    CoolerRig rig;
    QCOMPARE(rig.constants(), QList<float>({1.5F, 0.25F, 0.05F, 0}));
    QCOMPARE(zvtMfgSetCoolerSetup(rig.handle(), 1.5F, 0, 0.05F, 0), 0);
    QCOMPARE(rig.constants(), QList<float>({1.5F, 0, 0.05F, 0}));
    Clock::advance(600 * second);
    double sum = 0;
    for (int i = 0; i < 100; ++i) {
        Clock::advance(second);
        sum += rig.detector() - 10;
    }
    QVERIFY2(std::abs(sum / 100 - 0.09) < 0.009, qPrintable(QString::number(sum / 100)));
}

void tst_thermoelectricCooler::powerIsSwitched()
{
    CoolerRig rig;
    Clock::advance(600 * second);
    QCOMPARE(rig.power(), 1);
    QCOMPARE(zvtMfgSetCoolerPowerEnabled(rig.handle(), false), 0);
    QCOMPARE(rig.power(), 0);
    QVERIFY(std::abs(rig.detector() - 10) < noise);
    Clock::advance(600 * second);
    QVERIFY(std::abs(rig.detector() - 22) < noise);
    QCOMPARE(zvtMfgSetCoolerPowerEnabled(rig.handle(), true), 0);
    Clock::advance(60 * second);
    QVERIFY(std::abs(rig.detector() - 10) < noise);
}

void tst_thermoelectricCooler::setpointOutOfRangeIsRefused_data()
{
    QTest::addColumn<QByteArray>("profile");
    QTest::addColumn<float>("setpoint");
    QTest::addColumn<bool>("taken");
    struct Range {
        QByteArray profile;
        float minimum;
        float maximum;
    };
    for (const auto &[profile, minimum, maximum] : {Range{"te-cooler", -40, 40}, Range{"everything", -10, 60}}) {
        const auto row = [&profile = profile](const char *name) -> QTestData & {
            return QTest::addRow("%s, %s", profile.constData(), name) << profile;
        };
        row("lowest") << minimum << true;
        row("highest") << maximum << true;
        row("too low") << minimum - 0.1F << false;
        row("too high") << maximum + 0.1F << false;
        row("not a number") << std::numeric_limits<float>::quiet_NaN() << false;
        row("infinite") << -std::numeric_limits<float>::infinity() << false;
    }
}

void tst_thermoelectricCooler::setpointOutOfRangeIsRefused()
{
    QFETCH(const QByteArray, profile);
    QFETCH(const float, setpoint);
    QFETCH(const bool, taken);
    CoolerRig rig(profile.constData());
    const double before = rig.setpoint();
    QCOMPARE(zvtMfgSetCoolerSetpoint(rig.handle(), setpoint), int(taken ? emulator::Ok : emulator::Refused));
    QCOMPARE(rig.setpoint(), taken ? setpoint : before);
}

void tst_thermoelectricCooler::constantsOutOfRangeAreRefused()
{
    CoolerRig rig;
    const QList<float> good{0, 1000, 3, 4};
    QCOMPARE(zvtMfgSetCoolerSetup(rig.handle(), 0, 1000, 3, 4), 0);
    for (const float bad :
         {-0.1F, 1000.1F, std::numeric_limits<float>::infinity(), std::numeric_limits<float>::quiet_NaN()})
        for (int constant = 0; constant < 4; ++constant) {
            float values[] = {1, 1, 1, 1};
            values[constant] = bad;
            QCOMPARE(zvtMfgSetCoolerSetup(rig.handle(), values[0], values[1], values[2], values[3]),
                     int(emulator::Refused));
            QCOMPARE(rig.constants(), good);
        }
}

// The detector of this camera has a Stirling cooler, which the operator cannot command.
void tst_thermoelectricCooler::commandsSpeakOfTheFlag()
{
    CoolerRig rig("everything");
    uint8_t type = 0;
    QCOMPARE(zvtMfgGetCoolerType(rig.handle(), &type), 0);
    QCOMPARE(type, uint8_t(3));
    Clock::advance(600 * second);
    const double detector = rig.detector();
    QCOMPARE(zvtMfgSetCoolerSetpoint(rig.handle(), 45), 0);
    float desired = 0;
    QCOMPARE(zvtGetFlagDesiredTemperature(rig.handle(), &desired), 0);
    QCOMPARE(desired, 45.0F);
    Clock::advance(60 * second);
    QVERIFY(std::abs(rig.flag() - 45) < noise);
    QCOMPARE(zvtSetFlagDesiredTemperature(rig.handle(), 35), 0);
    QCOMPARE(rig.setpoint(), 35.0);
    QCOMPARE(zvtMfgSetCoolerPowerEnabled(rig.handle(), false), 0);
    bool on = true;
    QCOMPARE(zvtGetFlagCoolerEnabled(rig.handle(), &on), 0);
    QVERIFY(!on);
    QCOMPARE(zvtMfgSetCoolerSetup(rig.handle(), 2, 3, 4, 5), 0);
    QCOMPARE(settingOf(rig.camera(), "flag.kI").toDouble(), 3.0);
    QVERIFY(std::abs(rig.detector() - detector) < 2 * noise);
    QVERIFY(settingOf(rig.camera(), "cooler.power").toBool());
    QCOMPARE(settingOf(rig.camera(), "cooler.setpoint").toDouble(), 77.0);
}

void tst_thermoelectricCooler::commandsAreAbsentWithoutACooler_data()
{
    QTest::addColumn<QByteArray>("profile");
    for (const char *profile : {"bare", "low-cost", "discrete-fov", "board-6"})
        QTest::newRow(profile) << QByteArray(profile);
}

void tst_thermoelectricCooler::commandsAreAbsentWithoutACooler()
{
    QFETCH(const QByteArray, profile);
    const CoolerRig rig(profile.constData());
    float value = 42;
    uint8_t power = 42;
    QCOMPARE(zvtMfgGetCoolerSetpoint(rig.handle(), &value), int(emulator::Absent));
    QCOMPARE(zvtMfgSetCoolerSetpoint(rig.handle(), 10), int(emulator::Absent));
    QCOMPARE(zvtMfgGetCoolerPowerEnabled(rig.handle(), &power), int(emulator::Absent));
    QCOMPARE(zvtMfgSetCoolerPowerEnabled(rig.handle(), true), int(emulator::Absent));
    QCOMPARE(zvtMfgGetCoolerSetup(rig.handle(), &value, &value, &value, &value), int(emulator::Absent));
    QCOMPARE(zvtMfgSetCoolerSetup(rig.handle(), 1, 1, 1, 1), int(emulator::Absent));
    QCOMPARE(value, 42.0F);
    QCOMPARE(power, uint8_t(42));
}

void tst_thermoelectricCooler::otherClientsSetEverything_data()
{
    QTest::addColumn<QByteArray>("profile");
    QTest::addColumn<QByteArray>("device");
    QTest::newRow("detector") << QByteArray("te-cooler") << QByteArray("cooler");
    QTest::newRow("flag") << QByteArray("everything") << QByteArray("flag");
}

void tst_thermoelectricCooler::otherClientsSetEverything()
{
    QFETCH(const QByteArray, profile);
    QFETCH(const QByteArray, device);
    CoolerRig rig(profile.constData());
    const auto set = [&](const char *key, const QVariant &value) {
        return rig.set(QByteArray(device + '.' + key).constData(), value);
    };
    QVERIFY(set("power", false) && set("setpoint", 5.5));
    QVERIFY(set("kP", 1) && set("kI", 2) && set("kD", 3) && set("kOff", 4));
    QCOMPARE(rig.power(), 0);
    QCOMPARE(rig.setpoint(), 5.5);
    QCOMPARE(rig.constants(), QList<float>({1, 2, 3, 4}));
    QVERIFY(!set("power", 1) && !set("setpoint", "cold") && !set("setpoint", 300));
    QVERIFY(!set("kP", -1) && !set("kOff", 1001));
    QCOMPARE(rig.setpoint(), 5.5);
    QCOMPARE(rig.constants(), QList<float>({1, 2, 3, 4}));
}

void tst_thermoelectricCooler::settingsOutliveARestartButAreInNoSnapshot_data() { otherClientsSetEverything_data(); }

void tst_thermoelectricCooler::settingsOutliveARestartButAreInNoSnapshot()
{
    QFETCH(const QByteArray, profile);
    QFETCH(const QByteArray, device);
    CoolerRig rig(profile.constData());
    const QJsonObject snapshot = rig.camera().snapshot();
    const QJsonObject values = snapshot[QLatin1String(device)].toObject();
    for (const char *key : {"power", "kP", "kI", "kD", "kOff"})
        QVERIFY(!values.contains(QLatin1String(key)));
    QVERIFY(!values.contains("setpoint"));
    QCOMPARE(zvtMfgSetCoolerPowerEnabled(rig.handle(), false), 0);
    QCOMPARE(zvtMfgSetCoolerSetpoint(rig.handle(), 5.5F), 0);
    QCOMPARE(zvtMfgSetCoolerSetup(rig.handle(), 1, 2, 3, 4), 0);
    rig.camera().restore(snapshot);
    QCOMPARE(rig.power(), 0);
    rig.open(profile.constData());
    QCOMPARE(rig.power(), 0);
    QCOMPARE(rig.setpoint(), 5.5);
    QCOMPARE(rig.constants(), QList<float>({1, 2, 3, 4}));
}

void tst_thermoelectricCooler::callsAreQuick()
{
    CoolerRig rig;
    const auto before = Clock::now();
    const size_t mark = rig.camera().gate().mark();
    for (int i = 0; i < 10; ++i) {
        zvtMfgSetCoolerSetpoint(rig.handle(), static_cast<float>(i));
        zvtMfgSetCoolerPowerEnabled(rig.handle(), i % 2);
        zvtMfgSetCoolerSetup(rig.handle(), 1, 1, 1, 0);
        rig.detector();
    }
    QCOMPARE(Clock::now(), before);
    QVERIFY(slowestFunction(rig.camera().gate(), mark) < std::chrono::milliseconds(1));
}

ZVT_TEST(tst_thermoelectricCooler)
#include "tst_thermoelectricCooler.moc"
