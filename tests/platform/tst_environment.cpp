#include "platform/emulator/control.h"
#include "platform/emulator/devices/EmulatorProperties.h"
#include "platform/emulator/devices/Environment.h"
#include "tests/support/Test.h"
#include "zvt/zvtsdk.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <cmath>

using namespace emulator;

namespace
{

QString programOf(int points)
{
    QStringList pairs;
    for (int second = 0; second < points; ++second)
        pairs.append(QStringLiteral("%1:%2").arg(second).arg(second % 2 ? 80 : -60));
    return pairs.join(u',');
}

} // namespace

/// The ambient temperature, the program of the climate chamber, and the temperatures of a camera that follow them.
class tst_environment : public Test
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { Clock::automatic(); }

    void ambientIsThatOfTheProfile();
    void anotherClientSetsTheAmbient();
    void ambientOutOfRangeIsRefused_data();
    void ambientOutOfRangeIsRefused();
    void programLeadsFromTheAmbientToItsPoints();
    void programMayStartAtOnce();
    void programIsStartedAgain();
    void newProgramStartsAtThePresentAmbient();
    void emptyProgramRestoresTheProfile();
    void ambientCannotBeSetWhileAProgramRuns();
    void programOfTheProfileStartsWithTheCamera();
    void programsAreTaken_data();
    void programsAreTaken();
    void badProgramsAreRefused_data();
    void badProgramsAreRefused();
    void bodyFollowsWithALag();
    void bodyFollowsAProgramExactly();
    void bodyKeepsItsTemperatureWhenTheAmbientChanges();
    void bodyFollowsWhileTheCameraIsOff();
    void clockMayBeSetBack();
    void hourCostsLittle();
    void everySensorFollowsTheAmbient();
    void missingSensorsReadZero();

private:
    void use(const QByteArray &profile)
    {
        QFile file(m_folder->filePath("mine.json"));
        if (!file.open(QIODevice::WriteOnly) || file.write(profile) != profile.size())
            qFatal("the profile cannot be written");
        file.close();
        m_camera = Camera::create(file.fileName(), m_folder->path());
    }
    bool set(const QString &name, const QVariant &value)
    {
        m_why.clear();
        return m_camera->otherClient().set(name, value, &m_why);
    }
    bool setProgram(const QString &text) { return set("emulator./ChamberProfile", text); }
    QString program() const
    {
        QVariant text;
        m_camera->device<EmulatorProperties>()->get("/ChamberProfile", text);
        return text.toString();
    }
    Environment &environment() const { return *m_camera->device<Environment>(); }
    double ambient() const { return environment().ambient(); }
    double body() const { return environment().laggedAmbient(); }
    /// The temperatures of all sensors: front panel, air gap, internal, RS internal, lens.
    QList<float> sensors() const
    {
        float panel = -1, gap = -1, inside = -1, other = -1, lens = -1;
        zvtGetSCTemperatures(m_camera->handle(), &panel, &gap, &inside);
        zvtGetRSTemperatures(m_camera->handle(), &other);
        zvtGetLensTemperature(m_camera->handle(), &lens);
        return {panel, gap, inside, other, lens};
    }
    static bool isNear(double value, double expected) { return std::abs(value - expected) < 1e-6; }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::shared_ptr<Camera> m_camera;
    QString m_why;
};

void tst_environment::init()
{
    Test::init();
    Clock::manual();
    m_camera.reset();
    m_folder = std::make_unique<QTemporaryDir>();
    use(R"({"extends": "everything", "devices": {"temperatures": {"noise": 0}}})");
    m_camera->connect();
}

void tst_environment::ambientIsThatOfTheProfile()
{
    QCOMPARE(ambient(), 23.0);
    QCOMPARE(body(), 23.0);
    use("{}");
    QCOMPARE(ambient(), 23.0);
    use(R"({"devices": {"environment": {"ambient": -12.5}}})");
    Clock::advance(3'600'000);
    QCOMPARE(ambient(), -12.5);
    QCOMPARE(body(), -12.5);
}

void tst_environment::anotherClientSetsTheAmbient()
{
    Clock::advance(10'000);
    QVERIFY(set("environment.ambient", 40.5));
    QCOMPARE(ambient(), 40.5);
    QCOMPARE(body(), 23.0);
    Clock::advance(10'000);
    QCOMPARE(ambient(), 40.5);
}

void tst_environment::ambientOutOfRangeIsRefused_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("why");
    QTest::newRow("lowest") << QVariant(-60) << QString();
    QTest::newRow("highest") << QVariant(80) << QString();
    QTest::newRow("too low") << QVariant(-60.1) << "must lie between -60 and 80";
    QTest::newRow("too high") << QVariant(80.1) << "must lie between -60 and 80";
    QTest::newRow("text") << QVariant("warm") << "must be a number";
}

void tst_environment::ambientOutOfRangeIsRefused()
{
    QFETCH(const QVariant, value);
    QFETCH(const QString, why);
    QCOMPARE(set("environment.ambient", value), why.isEmpty());
    QCOMPARE(m_why, why.isEmpty() ? QString() : "other client: environment.ambient: " + why);
    QCOMPARE(ambient(), why.isEmpty() ? value.toDouble() : 23.0);
}

void tst_environment::programLeadsFromTheAmbientToItsPoints()
{
    QVERIFY(setProgram("100:33,200:-17,300:-17,300.5:80"));
    QCOMPARE(ambient(), 23.0);
    Clock::advance(50'000);
    QCOMPARE(ambient(), 28.0);
    Clock::advance(50'000);
    QCOMPARE(ambient(), 33.0);
    Clock::advance(25'000);
    QCOMPARE(ambient(), 20.5);
    Clock::advance(75'000);
    QCOMPARE(ambient(), -17.0);
    Clock::advance(100'000);
    QCOMPARE(ambient(), -17.0);
    Clock::advance(250);
    QCOMPARE(ambient(), 31.5);
    Clock::advance(250);
    QCOMPARE(ambient(), 80.0);
    Clock::advance(3'600'000);
    QCOMPARE(ambient(), 80.0);
}

void tst_environment::programMayStartAtOnce()
{
    QVERIFY(setProgram("0:50,100:60"));
    QCOMPARE(ambient(), 50.0);
    QCOMPARE(body(), 23.0);
    Clock::advance(50'000);
    QCOMPARE(ambient(), 55.0);
}

void tst_environment::programIsStartedAgain()
{
    QVERIFY(setProgram("0:50,100:60"));
    Clock::advance(75'000);
    QVERIFY(setProgram("0:50,100:60"));
    QCOMPARE(ambient(), 50.0);
    Clock::advance(50'000);
    QCOMPARE(ambient(), 55.0);
}

void tst_environment::newProgramStartsAtThePresentAmbient()
{
    QVERIFY(setProgram("100:33"));
    Clock::advance(50'000);
    QVERIFY(setProgram("10:8"));
    QCOMPARE(ambient(), 28.0);
    Clock::advance(5000);
    QCOMPARE(ambient(), 18.0);
}

void tst_environment::emptyProgramRestoresTheProfile()
{
    QVERIFY(set("environment.ambient", 40));
    QVERIFY(setProgram("100:60"));
    Clock::advance(50'000);
    QCOMPARE(ambient(), 50.0);
    const double before = body();
    QVERIFY(before > 23);
    QVERIFY(setProgram(""));
    QCOMPARE(ambient(), 23.0);
    QCOMPARE(body(), before);
    Clock::advance(3'600'000);
    QCOMPARE(ambient(), 23.0);
}

void tst_environment::ambientCannotBeSetWhileAProgramRuns()
{
    QVERIFY(setProgram("0:50"));
    QVERIFY(!set("environment.ambient", 30));
    QCOMPARE(m_why, "other client: environment.ambient: cannot be changed now");
    QCOMPARE(ambient(), 50.0);
    QVERIFY(setProgram(""));
    QVERIFY(set("environment.ambient", 30));
    QCOMPARE(ambient(), 30.0);
}

void tst_environment::programOfTheProfileStartsWithTheCamera()
{
    use(R"({"devices": {"environment": {"ambient": 20}, "emulator": {"ChamberProfile": "10:40"}}})");
    QCOMPARE(program(), "10:40");
    Clock::advance(5000);
    QCOMPARE(ambient(), 30.0);
    QVERIFY(setProgram(""));
    QCOMPARE(ambient(), 20.0);
}

void tst_environment::programsAreTaken_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("one point") << "0:23";
    QTest::newRow("ends of the range") << "0:-60,1000000000:80";
    QTest::newRow("fractions") << "0.001:22.5,0.002:1e1";
    QTest::newRow("blanks") << "0:23, 600 : 60";
    QTest::newRow("64 pairs") << programOf(64);
}

void tst_environment::programsAreTaken()
{
    QFETCH(const QString, text);
    QVERIFY2(setProgram(text), qPrintable(m_why));
    QCOMPARE(program(), text);
}

void tst_environment::badProgramsAreRefused_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("why");
    const QString pairs = "must be pairs of seconds and Celsius like \"0:23,600:60\"";
    const QString seconds = "must have seconds between 0 and 1000000000";
    const QString celsius = "must have temperatures between -60 and 80";
    const QString ascending = "must have ascending seconds";
    QTest::newRow("blank") << " " << pairs;
    QTest::newRow("word") << "hot" << pairs;
    QTest::newRow("one number") << "23" << pairs;
    QTest::newRow("three numbers") << "0:23:5" << pairs;
    QTest::newRow("no seconds") << ":23" << pairs;
    QTest::newRow("no temperature") << "0:" << pairs;
    QTest::newRow("comma at the end") << "0:23," << pairs;
    QTest::newRow("only a comma") << "," << pairs;
    QTest::newRow("semicolon") << "0:23;10:24" << pairs;
    QTest::newRow("unit") << "0:23C" << pairs;
    QTest::newRow("negative seconds") << "-1:23" << seconds;
    QTest::newRow("too many seconds") << "1000000001:23" << seconds;
    QTest::newRow("infinite seconds") << "inf:23" << seconds;
    QTest::newRow("seconds that are no number") << "nan:23" << seconds;
    QTest::newRow("too cold") << "0:-60.1" << celsius;
    QTest::newRow("too hot") << "0:23,1:80.1" << celsius;
    QTest::newRow("infinite temperature") << "0:-inf" << celsius;
    QTest::newRow("temperature that is no number") << "0:nan" << celsius;
    QTest::newRow("descending") << "10:23,5:24" << ascending;
    QTest::newRow("same time") << "10:23,10:24" << ascending;
    QTest::newRow("same millisecond") << "10:23,10.0001:24" << ascending;
    QTest::newRow("65 pairs") << programOf(65) << "must have at most 64 pairs";
}

void tst_environment::badProgramsAreRefused()
{
    QFETCH(const QString, text);
    QFETCH(const QString, why);
    QVERIFY(setProgram("0:20,100:40"));
    Clock::advance(50'000);
    QVERIFY(!setProgram(text));
    QCOMPARE(m_why, "other client: emulator./ChamberProfile: " + why);
    QVERIFY(!m_camera->device<EmulatorProperties>()->set("/ChamberProfile", text));
    QCOMPARE(program(), "0:20,100:40");
    QCOMPARE(ambient(), 30.0);
}

void tst_environment::bodyFollowsWithALag()
{
    QVERIFY(set("environment.ambient", 43));
    for (const int seconds : {0, 100, 200, 300, 600}) {
        QVERIFY(isNear(body(), 43 - 20 * std::exp(-seconds / 300.0)));
        Clock::advance(seconds < 300 ? 100'000 : 300'000);
    }
}

// Asked once at the end, or each second: the temperature is the same, and that of small steps.
void tst_environment::bodyFollowsAProgramExactly()
{
    const QString text = "100:60,150:60,1000:-40,1000.001:10";
    QVERIFY(setProgram(text));
    Clock::advance(2'000'000);
    const double once = body();
    use(R"({"extends": "everything"})");
    QVERIFY(setProgram(text));
    double often = 0, inSteps = 23;
    for (int step = 0; step < 2'000'000 / 10; ++step) {
        const double first = ambient();
        Clock::advance(10);
        inSteps += ((first + ambient()) / 2 - inSteps) * -std::expm1(-0.01 / 300);
        often = body();
        QVERIFY(std::abs(often - inSteps) < 0.003);
    }
    QCOMPARE(once, often);
}

void tst_environment::bodyKeepsItsTemperatureWhenTheAmbientChanges()
{
    QVERIFY(set("environment.ambient", 43));
    Clock::advance(300'000);
    const double before = body();
    QVERIFY(set("environment.ambient", -20));
    QCOMPARE(body(), before);
    Clock::advance(300'000);
    QVERIFY(isNear(body(), -20 + (before + 20) * std::exp(-1)));
    const double later = body();
    QVERIFY(setProgram("300:10"));
    QCOMPARE(body(), later);
}

void tst_environment::bodyFollowsWhileTheCameraIsOff()
{
    m_camera->disconnect();
    QVERIFY(set("environment.ambient", 43));
    Clock::advance(300'000);
    QVERIFY(isNear(body(), 43 - 20 * std::exp(-1)));
}

void tst_environment::clockMayBeSetBack()
{
    Clock::advance(3'600'000);
    QVERIFY(set("environment.ambient", 43));
    QVERIFY(setProgram("100:33"));
    Clock::manual();
    QCOMPARE(ambient(), 43.0);
    QCOMPARE(body(), 23.0);
}

// 2 ms are allowed. Computed by the second, an hour would take 20 times as long as here.
void tst_environment::hourCostsLittle()
{
    QVERIFY(setProgram(programOf(64)));
    constexpr int hours = 200;
    QElapsedTimer timer;
    timer.start();
    for (int hour = 0; hour < hours; ++hour) {
        Clock::advance(3'600'000);
        QVERIFY(sensors().first() > -60);
    }
    QVERIFY2(timer.elapsed() < 2 * hours, qPrintable(QString::number(timer.elapsed())));
}

void tst_environment::everySensorFollowsTheAmbient()
{
    QVERIFY(setProgram("0:10,3600:70"));
    int64_t passed = 0;
    for (const int64_t seconds : {0, 60, 600, 3600, 36'000}) {
        Clock::advance((seconds - passed) * 1000);
        passed = seconds;
        const double heat = 1 - std::exp(-static_cast<double>(seconds) / 600);
        const QList<double> expected{body() + 1 + 3 * heat, body() + 4.5 + 4 * heat, body() + 8 + 6 * heat,
                                     body() + 10.5 + 6 * heat, body() - 0.5 + heat};
        for (int sensor = 0; sensor < expected.size(); ++sensor)
            QCOMPARE(sensors().at(sensor), static_cast<float>(expected.at(sensor)));
    }
    QVERIFY(isNear(body(), 70));
}

void tst_environment::missingSensorsReadZero()
{
    use(R"({"devices": {"temperatures": {"internal": true}}})");
    m_camera->connect();
    Clock::advance(600'000);
    const QList<float> values = sensors();
    QCOMPARE(values.at(0), 0.0F);
    QCOMPARE(values.at(1), 0.0F);
    QVERIFY(values.at(2) > 34);
    QCOMPARE(values.at(3), -1.0F);
    QCOMPARE(values.at(4), -1.0F);
}

ZVT_TEST(tst_environment)
#include "tst_environment.moc"
