#include "platform/emulator/control.h"
#include "platform/emulator/devices/StirlingLoop.h"
#include "tests/platform/settingOf.h"
#include "tests/platform/writeProfile.h"
#include "tests/support/Test.h"
#include "zvt/zvtsdk.h"

#include <QTemporaryDir>

#include <algorithm>
#include <cmath>
#include <ctime>
#include <limits>
#include <vector>

using namespace emulator;

namespace
{

constexpr double ambient = 296.15;
constexpr int64_t second = 1000;
constexpr int64_t hour = 3600 * second;

constexpr StirlingLoop::Conditions cooling{true, ambient, 77, 55, 1800};
constexpr StirlingLoop::Conditions off{false, ambient, 77, 55, 1800};

} // namespace

/// The Stirling cooler: its control loop, and the values of it that snapshots and the camera's memory contain.
class tst_cooler : public Test
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void coolsDownInAMinute();
    void doesNotDependOnHowOftenItIsRead();
    void keepsTheSetpointForHours();
    void followsTheSetpoint_data();
    void followsTheSetpoint();
    void followsTheAmbientTemperature();
    void warmsUpSlowlyWithoutPower();
    void startsAgainAfterAPowerFailure();
    void aClockThatIsSetBackDoesNotStopIt();
    void aLongTimeCostsLittle();
    void staysFinite_data();
    void staysFinite();

    void coolsFromTheFirstConnection();
    void frequentChangesDoNotStopIt();
    void inAClimateChamberItDoesNotDependOnReads_data();
    void inAClimateChamberItDoesNotDependOnReads();
    void aStateDoesNotContainThePower();
    void anOldStateDoesNotWarmTheDetector();
    void thePowerOutlivesARestart();

private:
    void switchOn(const QString &profile)
    {
        m_camera.reset();
        m_camera = Camera::create(profile, m_folder->path());
        m_camera->connect();
        m_handle = m_camera->handle();
    }
    /// Writes a profile with sensors that have no noise.
    QString silent() const { return writeProfile(m_folder->path(), "everything", R"({"cooler": {"noise": 0}})"); }
    float detector() const
    {
        float kelvin = -1;
        return zvtGetFPATemperature(m_handle, &kelvin) == 0 ? kelvin : std::numeric_limits<float>::quiet_NaN();
    }
    bool set(const char *setting, const QVariant &value) const
    {
        return m_camera->otherClient().set(QLatin1String(setting), value);
    }
    bool power() const { return settingOf(*m_camera, "cooler.power").toBool(); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::shared_ptr<Camera> m_camera;
    uint64_t m_handle = 0;
};

void tst_cooler::init()
{
    Test::init();
    Clock::manual();
    m_folder = std::make_unique<QTemporaryDir>();
}

void tst_cooler::cleanup()
{
    m_camera.reset();
    Clock::automatic();
}

void tst_cooler::coolsDownInAMinute()
{
    StirlingLoop loop(ambient, 0);
    QCOMPARE(loop.temperature(cooling, 0), ambient);
    double lowest = ambient;
    double secondsTo80 = 0;
    double secondsUntilSettled = 0;
    for (int64_t time = 100; time <= 600 * second; time += 100) {
        const double kelvin = loop.temperature(cooling, time);
        const double seconds = static_cast<double>(time) / 1000;
        lowest = std::min(lowest, kelvin);
        if (kelvin <= 80 && secondsTo80 == 0)
            secondsTo80 = seconds;
        if (std::abs(kelvin - 77) > 0.05)
            secondsUntilSettled = seconds;
    }
    QVERIFY2(secondsTo80 >= 55 && secondsTo80 < 55.5, qPrintable(QString::number(secondsTo80)));
    QVERIFY2(77 - lowest > 0.03 && 77 - lowest < 0.055, qPrintable(QString::number(77 - lowest)));
    QVERIFY2(secondsUntilSettled > 58 && secondsUntilSettled < 59, qPrintable(QString::number(secondsUntilSettled)));
}

void tst_cooler::doesNotDependOnHowOftenItIsRead()
{
    StirlingLoop often(ambient, 0);
    for (int64_t time = 0; time < 57 * second; time += 33)
        often.temperature(cooling, time);
    StirlingLoop once(ambient, 0);
    QCOMPARE(often.temperature(cooling, 57 * second), once.temperature(cooling, 57 * second));
}

void tst_cooler::keepsTheSetpointForHours()
{
    StirlingLoop loop(ambient, 0);
    for (int64_t time = hour; time <= 10 * hour; time += hour)
        QVERIFY(std::abs(loop.temperature(cooling, time) - 77) < 0.001);
}

void tst_cooler::followsTheSetpoint_data()
{
    QTest::addColumn<double>("setpoint");
    for (const double setpoint : {60.0, 76.0, 77.0, 78.0, 100.0, 120.0})
        QTest::addRow("%g K", setpoint) << setpoint;
}

void tst_cooler::followsTheSetpoint()
{
    QFETCH(double, setpoint);
    StirlingLoop loop(ambient, 0);
    const double before = loop.temperature(cooling, 600 * second);
    auto conditions = cooling;
    conditions.setpoint = setpoint;
    QCOMPARE(loop.temperature(conditions, 600 * second), before);
    QVERIFY(std::abs(loop.temperature(conditions, 1500 * second) - setpoint) < 0.05);
}

void tst_cooler::followsTheAmbientTemperature()
{
    StirlingLoop loop(ambient, 0);
    loop.temperature(cooling, hour);
    auto hot = cooling;
    hot.ambient = ambient + 40;
    QVERIFY(std::abs(loop.temperature(hot, hour + 300 * second) - 77) < 0.05);
    hot.power = false;
    QVERIFY(std::abs(loop.temperature(hot, 10 * hour) - hot.ambient) < 0.05);
}

void tst_cooler::warmsUpSlowlyWithoutPower()
{
    StirlingLoop loop(ambient, 0);
    const int64_t start = 600 * second;
    loop.temperature(cooling, start);
    const auto expected = [](double seconds) { return ambient - (ambient - 77) * std::exp(-seconds / 1800); };
    // The drive takes 0.2 s to come to rest.
    QVERIFY(std::abs(loop.temperature(off, start + 60 * second) - expected(60)) < 0.05);
    QVERIFY(std::abs(loop.temperature(off, start + 1800 * second) - expected(1800)) < 0.05);
    QVERIFY(std::abs(loop.temperature(off, start + 10 * hour) - ambient) < 0.05);
}

void tst_cooler::startsAgainAfterAPowerFailure()
{
    StirlingLoop loop(ambient, 0);
    loop.temperature(cooling, hour);
    loop.temperature(off, 11 * hour);
    double lowest = ambient;
    for (int64_t time = 11 * hour; time <= 12 * hour; time += 100)
        lowest = std::min(lowest, loop.temperature(cooling, time));
    QVERIFY(lowest > 76.94);
    QVERIFY(std::abs(loop.temperature(cooling, 12 * hour) - 77) < 0.001);
}

void tst_cooler::aClockThatIsSetBackDoesNotStopIt()
{
    StirlingLoop loop(ambient, hour);
    const double before = loop.temperature(cooling, hour + 10 * second);
    QCOMPARE(loop.temperature(cooling, 0), before);
    QVERIFY(loop.temperature(cooling, 10 * second) < before - 20);
}

void tst_cooler::aLongTimeCostsLittle()
{
    const auto millisecondsFor = [](int64_t time) {
        double best = std::numeric_limits<double>::max();
        for (int round = 0; round < 5; ++round) {
            StirlingLoop loop(ambient, 0);
            timespec start{};
            timespec end{};
            clock_gettime(CLOCK_THREAD_CPUTIME_ID, &start);
            loop.temperature(cooling, time);
            clock_gettime(CLOCK_THREAD_CPUTIME_ID, &end);
            best = std::min(best,
                            static_cast<double>(end.tv_sec - start.tv_sec) * 1e3
                                + static_cast<double>(end.tv_nsec - start.tv_nsec) / 1e6);
        }
        return best;
    };
    const double anHour = millisecondsFor(hour);
    QVERIFY2(anHour < 2, qPrintable(QString::number(anHour)));
    // The computer's clock may jump by years.
    const double years = millisecondsFor(std::numeric_limits<int64_t>::max());
    QVERIFY2(years < 100, qPrintable(QString::number(years)));
}

void tst_cooler::staysFinite_data()
{
    QTest::addColumn<double>("ambient");
    QTest::addColumn<double>("setpoint");
    QTest::addColumn<double>("seconds");
    for (const double ambient : {0.0, 300.0, 1e6})
        for (const double setpoint : {0.0, 77.0, 5e5, 1e6})
            for (const double seconds : {0.001, 1e6})
                QTest::addRow("%g K, %g K, %g s", ambient, setpoint, seconds) << ambient << setpoint << seconds;
}

// Profiles may have such values.
void tst_cooler::staysFinite()
{
    QFETCH(double, ambient);
    QFETCH(double, setpoint);
    QFETCH(double, seconds);
    StirlingLoop loop(ambient, 0);
    for (int64_t time = 0; time < 100 * second; time += second)
        for (const bool power : {true, false}) {
            const double kelvin = loop.temperature({power, ambient, setpoint, seconds, seconds}, time);
            QVERIFY(kelvin >= 0 && kelvin <= ambient);
        }
}

void tst_cooler::coolsFromTheFirstConnection()
{
    m_camera = Camera::create(silent(), m_folder->path());
    m_handle = m_camera->handle();
    Clock::advance(hour);
    m_camera->connect();
    QVERIFY(std::abs(detector() - ambient) < 0.001);
    Clock::advance(54 * second);
    QVERIFY(detector() > 80);
    Clock::advance(2 * second);
    QVERIFY(detector() < 80);
    Clock::advance(3 * second);
    QVERIFY(std::abs(detector() - 77) < 0.05);
    m_camera->disconnect();
    Clock::advance(hour);
    m_camera->connect();
    QVERIFY(std::abs(detector() - 77) < 0.001);
    QVERIFY(set("cooler.power", false));
    QVERIFY(std::abs(detector() - 77) < 0.001);
    Clock::advance(1800 * second);
    QVERIFY(std::abs(detector() - (ambient - (ambient - 77) * std::exp(-1.0))) < 0.05);
}

// A slider may write the setpoint more often than the loop makes a step.
void tst_cooler::frequentChangesDoNotStopIt()
{
    switchOn(silent());
    for (int change = 0; change < 1200; ++change) {
        QVERIFY(set("cooler.setpoint", change % 2 ? 77.0 : 77.5));
        Clock::advance(50);
    }
    QVERIFY(std::abs(detector() - 77.25) < 0.5);
}

void tst_cooler::inAClimateChamberItDoesNotDependOnReads_data()
{
    QTest::addColumn<QByteArray>("profile");
    QTest::addColumn<QByteArray>("device");
    QTest::addColumn<double>("limit"); // Celsius. The temperature is below with power, and above without.
    QTest::addColumn<bool>("power");
    QTest::addColumn<int>("startSeconds");
    struct Kind {
        const char *name;
        const char *profile;
        const char *device;
        double limit;
    };
    for (const auto &[name, profile, device, limit] :
         {Kind{"Stirling", "everything", "cooler", -73}, Kind{"thermoelectric", "te-cooler", "cooler", 33},
          Kind{"flag", "everything", "flag", 33}})
        for (const bool power : {false, true})
            for (const int start : {0, 1800})
                QTest::addRow("%s, power %s, program starts after %d s", name, power ? "on" : "off", start)
                    << QByteArray(profile) << QByteArray(device) << limit << power << start;
}

// A program that is replaced has had its effect on a camera that was not read meanwhile.
void tst_cooler::inAClimateChamberItDoesNotDependOnReads()
{
    QFETCH(const QByteArray, profile);
    QFETCH(const QByteArray, device);
    QFETCH(const double, limit);
    QFETCH(const bool, power);
    QFETCH(const int, startSeconds);
    const QTemporaryDir otherFolder;
    const QString silentProfile = writeProfile(m_folder->path(), profile, "{\"" + device + R"(": {"noise": 0}})");
    const auto other = Camera::create(silentProfile, otherFolder.path());
    other->connect();
    switchOn(silentProfile);
    const auto setBoth = [&](const QString &setting, const QVariant &value) {
        return set(setting.toLatin1().constData(), value) && other->otherClient().set(setting, value);
    };
    const auto celsius = [&device](uint64_t handle) {
        float value = 0;
        const bool ofFlag = device == "flag";
        const int status = ofFlag ? zvtGetFlagTemperature(handle, &value) : zvtGetFPATemperature(handle, &value);
        return status == 0 ? value - (ofFlag ? 0 : 273.15) : std::numeric_limits<double>::quiet_NaN();
    };
    Clock::advance(120 * second);
    QVERIFY(setBoth(QString::fromLatin1(device + ".power"), power));
    for (int seconds = 0; seconds < 3600; ++seconds) {
        if (seconds == startSeconds)
            QVERIFY(setBoth("emulator./ChamberProfile", "0:23,3600:60"));
        if (seconds == 3590)
            QVERIFY(setBoth("emulator./ChamberProfile", "3600:23"));
        Clock::advance(second);
        celsius(m_handle);
    }
    QCOMPARE(celsius(other->handle()), celsius(m_handle));
    QVERIFY2((celsius(m_handle) < limit) == power, qPrintable(QString::number(celsius(m_handle))));
}

void tst_cooler::aStateDoesNotContainThePower()
{
    switchOn(QStringLiteral("everything"));
    const QString key = QStringLiteral("cooler");
    QCOMPARE(m_camera->snapshot()[key].toObject().keys(), QStringList("setpoint"));
    QVERIFY(!m_camera->newSettings()[key].toObject().contains("power"));
    QVERIFY(set("cooler.power", false));
    QCOMPARE(zvtSaveStateAs(m_handle, "off"), 0);
    QVERIFY(set("cooler.power", true));
    for (const char *name : {"off", "Factory Defaults", "Hard Defaults"}) {
        QVERIFY(m_camera->otherClient().set("states.current", name));
        QVERIFY(power());
    }
    // Nor does a load switch the cooler on.
    QVERIFY(set("cooler.power", false));
    QVERIFY(m_camera->otherClient().set("states.current", "Hard Defaults"));
    QVERIFY(!power());
}

// States of earlier versions contain the power.
void tst_cooler::anOldStateDoesNotWarmTheDetector()
{
    switchOn(QStringLiteral("everything"));
    m_camera->restore({{"cooler", QJsonObject{{"power", false}, {"setpoint", 91.0}}}});
    QVERIFY(power());
    QCOMPARE(settingOf(*m_camera, "cooler.setpoint").toDouble(), 91.0);
}

void tst_cooler::thePowerOutlivesARestart()
{
    switchOn(QStringLiteral("everything"));
    QVERIFY(set("cooler.power", false));
    switchOn(QStringLiteral("everything"));
    QVERIFY(!power());
    Clock::advance(600 * second);
    QVERIFY(std::abs(detector() - ambient) < 0.06);
}

ZVT_TEST(tst_cooler)
#include "tst_cooler.moc"
