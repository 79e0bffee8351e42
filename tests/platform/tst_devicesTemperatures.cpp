#include "platform/emulator/control.h"
#include "platform/emulator/devices/Cooler.h"
#include "platform/emulator/devices/noise.h"
#include "tests/support/Test.h"
#include "zvt/zvtsdk.h"

#include <QTemporaryDir>

#include <cmath>
#include <limits>

using emulator::Camera;
using emulator::Clock;

class tst_devicesTemperatures : public Test
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { Clock::automatic(); }

    void detectorIsWarmUntilTheCameraIsSwitchedOn();
    void detectorGoesOnFromWhereItIs();
    void coldTemperatureIsReached();
    void cameraWithoutACoolerHasADetectorAllTheSame();
    void coldTemperatureMayBeUnknown();
    void otherClientsReachTheCooler();
    void typesHaveNames();
    void sensorsOfTheCaseDiffer();
    void caseWarmsUp();
    void lensSensorIsOptional();
    void failingSensorsLeaveOutputsAlone();
    void noiseIsTheSameInEveryRun();

private:
    void use(const char *profile)
    {
        m_camera = Camera::create(QString::fromLatin1(profile), m_folder->path());
        m_handle = m_camera->handle();
    }
    void useConnected(const char *profile)
    {
        use(profile);
        m_camera->connect();
    }
    float detector() const
    {
        float kelvin = -1;
        return zvtGetFPATemperature(m_handle, &kelvin) == 0 ? kelvin : std::numeric_limits<float>::quiet_NaN();
    }
    static bool isNear(float value, double expected) { return std::abs(value - expected) < 0.06; }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::shared_ptr<Camera> m_camera;
    uint64_t m_handle = 0;
};

void tst_devicesTemperatures::init()
{
    Test::init();
    Clock::manual();
    m_camera.reset();
    m_folder = std::make_unique<QTemporaryDir>();
}

void tst_devicesTemperatures::detectorIsWarmUntilTheCameraIsSwitchedOn()
{
    use("everything");
    Clock::advance(3'600'000);
    m_camera->connect();
    QVERIFY(isNear(detector(), 296.15));
}

void tst_devicesTemperatures::detectorGoesOnFromWhereItIs()
{
    useConnected("everything");
    Clock::advance(30'000);
    const float before = detector();
    QVERIFY(m_camera->otherClient().set(QStringLiteral("cooler.setpoint"), 100));
    QCOMPARE(detector(), before);
    Clock::advance(600'000);
    QVERIFY(isNear(detector(), 100));
}

void tst_devicesTemperatures::coldTemperatureIsReached()
{
    useConnected("everything");
    float cold = 0;
    QCOMPARE(zvtGetFPAColdTemperature(m_handle, &cold), 0);
    QCOMPARE(cold, 80.0F);
    QVERIFY(detector() > cold);
    Clock::advance(600'000);
    QVERIFY(detector() <= cold);
}

void tst_devicesTemperatures::cameraWithoutACoolerHasADetectorAllTheSame()
{
    useConnected("bare");
    Clock::advance(600'000);
    QVERIFY(isNear(detector(), 296.15));
    uint8_t type = 42;
    QCOMPARE(zvtMfgGetCoolerType(m_handle, &type), 0);
    QCOMPARE(type, uint8_t(0));
    float value = 42;
    uint8_t power = 42;
    QCOMPARE(zvtMfgGetCoolerSetpoint(m_handle, &value), int(emulator::Absent));
    QCOMPARE(zvtMfgSetCoolerSetpoint(m_handle, 77.0F), int(emulator::Absent));
    QCOMPARE(zvtMfgGetCoolerPowerEnabled(m_handle, &power), int(emulator::Absent));
    QCOMPARE(zvtMfgSetCoolerPowerEnabled(m_handle, true), int(emulator::Absent));
    QCOMPARE(zvtMfgGetCoolerSetup(m_handle, &value, &value, &value, &value), int(emulator::Absent));
    QCOMPARE(zvtMfgSetCoolerSetup(m_handle, 1, 1, 1, 1), int(emulator::Absent));
    QCOMPARE(value, 42.0F);
    QCOMPARE(power, uint8_t(42));
}

void tst_devicesTemperatures::coldTemperatureMayBeUnknown()
{
    useConnected("te-cooler");
    float cold = 42;
    QCOMPARE(zvtGetFPAColdTemperature(m_handle, &cold), int(emulator::Absent));
    QCOMPARE(cold, 42.0F);
}

void tst_devicesTemperatures::otherClientsReachTheCooler()
{
    useConnected("te-cooler");
    auto client = m_camera->otherClient();
    QVERIFY(client.set(QStringLiteral("cooler.power"), false));
    QVERIFY(client.set(QStringLiteral("cooler.setpoint"), 5));
    QVERIFY(!client.set(QStringLiteral("cooler.power"), 1));
    QVERIFY(!client.set(QStringLiteral("cooler.setpoint"), QStringLiteral("cold")));
    QVERIFY(!client.set(QStringLiteral("cooler.setpoint"), 300));
    uint8_t power = 42;
    QCOMPARE(zvtMfgGetCoolerPowerEnabled(m_handle, &power), 0);
    QCOMPARE(power, uint8_t(0));
}

void tst_devicesTemperatures::typesHaveNames()
{
    QCOMPARE(zvtCoolerTypeText(0), "None");
    QCOMPARE(zvtCoolerTypeText(1), "Thermoelectric");
    QVERIFY(zvtCoolerTypeText(3));
    QVERIFY(!zvtCoolerTypeText(4));
    QVERIFY(!zvtCoolerTypeText(255));
}

void tst_devicesTemperatures::sensorsOfTheCaseDiffer()
{
    useConnected("everything");
    float panel = 0, gap = 0, inside = 0, otherInside = 0, lens = 0;
    QCOMPARE(zvtGetSCTemperatures(m_handle, &panel, &gap, &inside), 0);
    QCOMPARE(zvtGetRSTemperatures(m_handle, &otherInside), 0);
    QCOMPARE(zvtGetLensTemperature(m_handle, &lens), 0);
    QVERIFY(isNear(panel, 24.0) && isNear(gap, 27.5) && isNear(inside, 31.0));
    QVERIFY(isNear(otherInside, 33.5));
    QVERIFY(isNear(lens, 22.5));
}

void tst_devicesTemperatures::caseWarmsUp()
{
    use("everything");
    Clock::advance(3'600'000);
    m_camera->connect();
    float inside = 0;
    QCOMPARE(zvtGetRSTemperatures(m_handle, &inside), 0);
    QVERIFY(isNear(inside, 33.5));
    Clock::advance(600'000);
    QCOMPARE(zvtGetRSTemperatures(m_handle, &inside), 0);
    QVERIFY(isNear(inside, 33.5 + 6 * (1 - std::exp(-1.0))));
}

void tst_devicesTemperatures::lensSensorIsOptional()
{
    useConnected("low-cost");
    uint8_t has = 42;
    QCOMPARE(zvtGetHasLensTemperature(m_handle, &has), 0);
    QCOMPARE(has, uint8_t(0));
    float value = 42;
    QCOMPARE(zvtGetLensTemperature(m_handle, &value), int(emulator::Absent));
    QCOMPARE(value, 42.0F);
    useConnected("everything");
    QCOMPARE(zvtGetHasLensTemperature(m_handle, &has), 0);
    QCOMPARE(has, uint8_t(1));
}

void tst_devicesTemperatures::failingSensorsLeaveOutputsAlone()
{
    useConnected("edge-values");
    uint8_t has = 0;
    QCOMPARE(zvtGetHasLensTemperature(m_handle, &has), 0);
    QCOMPARE(has, uint8_t(1));
    float lens = 42, inside = 42;
    QCOMPARE(zvtGetLensTemperature(m_handle, &lens), int(emulator::Refused));
    QCOMPARE(zvtGetRSTemperatures(m_handle, &inside), int(emulator::Refused));
    QCOMPARE(lens, 42.0F);
    QCOMPARE(inside, 42.0F);
    float panel = 0, gap = 0;
    QCOMPARE(zvtGetSCTemperatures(m_handle, &panel, &gap, &inside), 0);
    QVERIFY(std::isfinite(panel) && std::abs(panel) > 1e30F);
    QVERIFY(std::isfinite(gap) && std::abs(gap) > 1e30F);
}

void tst_devicesTemperatures::noiseIsTheSameInEveryRun()
{
    double sum = 0;
    for (int second = 0; second < 1000; ++second) {
        const double value = emulator::noise(1, second * 1000);
        QVERIFY(value >= -1 && value <= 1);
        QCOMPARE(emulator::noise(1, second * 1000 + 999), value);
        QVERIFY(emulator::noise(1, second * 1000 + 1000) != value);
        QVERIFY(emulator::noise(2, second * 1000) != value);
        sum += value;
    }
    QVERIFY(std::abs(sum) < 100);
}

ZVT_TEST(tst_devicesTemperatures)
#include "tst_devicesTemperatures.moc"
