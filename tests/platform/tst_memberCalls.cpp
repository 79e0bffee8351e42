#include "platform/emulator/devices/Athermalization.h"
#include "platform/emulator/devices/Cooler.h"
#include "platform/emulator/devices/DetectorGain.h"
#include "platform/emulator/devices/Focus.h"
#include "platform/emulator/devices/Identity.h"
#include "platform/emulator/devices/LensStates.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/devices/StateStore.h"
#include "platform/emulator/memberCalls.h"
#include "tests/support/Test.h"

#include <QTemporaryDir>

using namespace emulator;

/// Functions of the SDK and operations of the controller that are one function of a device.
class tst_memberCalls : public Test
{
    Q_OBJECT

private slots:
    void init();

    void inputsArePassedAndLogged();
    void outputsArePassedByReference();
    void aFailedFunctionLeavesItsOutputAlone();
    void resultsBecomeAStatus();
    void scriptsFillTheOutputs();
    void textsArePassedBothWays();
    void gettersFillTheirOutputs();
    void nullOutputsAreRefused();
    void aLackingDeviceIsAbsent();
    void operationsOfTheControllerReturnTrueOrFalse();

private:
    Call lastCall() const { return m_camera->gate().calls().back(); }
    uint64_t handle() const { return m_camera->handle(); }

    QTemporaryDir m_folder;
    std::shared_ptr<Camera> m_camera;
};

void tst_memberCalls::init()
{
    Test::init();
    m_camera = Camera::create(QStringLiteral("everything"), m_folder.path());
    m_camera->connect();
}

void tst_memberCalls::inputsArePassedAndLogged()
{
    QCOMPARE(call<&DetectorGain::setLevel>("name", handle(), uint8_t(2)), int(Ok));
    QCOMPARE(m_camera->device<DetectorGain>()->level(), uint8_t(2));
    QCOMPARE(lastCall().name, std::string("name"));
    QCOMPARE(lastCall().arguments, std::string("2"));
    QCOMPARE(call<&DetectorGain::setLevel>("name", handle(), uint8_t(3)), int(Refused));
    QCOMPARE(lastCall().status, int(Refused));
}

void tst_memberCalls::outputsArePassedByReference()
{
    uint32_t counts = 7;
    QCOMPARE(call<&Focus::increment>("name", handle(), uint8_t(2), &counts), int(Ok));
    uint32_t expected = 0;
    QCOMPARE(m_camera->device<Focus>()->increment(2, expected), Ok);
    QCOMPARE(counts, expected);
    QCOMPARE(lastCall().arguments, std::string("2"));
}

void tst_memberCalls::aFailedFunctionLeavesItsOutputAlone()
{
    uint32_t counts = 7;
    QCOMPARE(call<&Focus::increment>("name", handle(), uint8_t(0), &counts), int(Refused));
    QCOMPARE(counts, 7U);
}

void tst_memberCalls::resultsBecomeAStatus()
{
    // Nothing, and true or false.
    QCOMPARE(call<&Identity::setType>("name", handle(), uint8_t(9)), int(Ok));
    QCOMPARE(m_camera->device<Identity>()->type(), uint8_t(9));
    QCOMPARE(call<&StateStore::exists>("name", handle(), "none"), int(Refused));
}

void tst_memberCalls::scriptsFillTheOutputs()
{
    m_camera->gate().script("name", "abc");
    char buffer[8] = "?";
    QCOMPARE(get<&Identity::serial>("name", handle(), Text(buffer, sizeof buffer)), int(Ok));
    QCOMPARE(buffer, "abc");
    m_camera->gate().script("name", QVariantList{3, 4});
    uint32_t minimum = 0, maximum = 0;
    const int status = get<&Focus::minimum, &Focus::maximum>("name", handle(), &minimum, &maximum);
    QCOMPARE(status, int(Ok));
    QCOMPARE(QPair(minimum, maximum), QPair(3U, 4U));
}

void tst_memberCalls::textsArePassedBothWays()
{
    char buffer[8] = "?";
    QCOMPARE(call<&DetectorGain::name>("name", handle(), uint8_t(0), Text(buffer, sizeof buffer)), int(Ok));
    QCOMPARE(buffer, "Low");
    QCOMPARE(lastCall().arguments, std::string("0"));
    QCOMPARE(call<&Identity::setSerial>("name", handle(), "one"), int(Ok));
    QCOMPARE(lastCall().arguments, std::string("\"one\""));
    QCOMPARE(get<&Identity::serial>("name", handle(), Text(buffer, sizeof buffer)), int(Ok));
    QCOMPARE(buffer, "one");
    QCOMPARE(call<&Identity::setSerial>("name", handle(), static_cast<const char *>(nullptr)), int(Refused));
}

void tst_memberCalls::gettersFillTheirOutputs()
{
    uint32_t minimum = 1, maximum = 1;
    const int status = get<&Focus::minimum, &Focus::maximum>("name", handle(), &minimum, &maximum);
    QCOMPARE(status, int(Ok));
    QCOMPARE(minimum, 0U);
    QCOMPARE(maximum, 10'000U);
    QCOMPARE(lastCall().arguments, std::string());
    uint8_t type = 0;
    QCOMPARE(get<&Cooler::type>("name", handle(), &type), int(Ok));
    QCOMPARE(type, uint8_t(Cooler::LinearStirling));
    uint8_t presets = 0;
    QCOMPARE(get<&Sensor::numPresets>("name", handle(), &presets), int(Ok));
    QCOMPARE(presets, uint8_t(4));
}

void tst_memberCalls::nullOutputsAreRefused()
{
    uint32_t *const none = nullptr;
    uint32_t minimum = 1;
    const int status = get<&Focus::minimum, &Focus::maximum>("name", handle(), &minimum, none);
    QCOMPARE(status, int(Refused));
    QCOMPARE(minimum, 1U);
    QCOMPARE(call<&Focus::increment>("name", handle(), uint8_t(2), none), int(Refused));
    QCOMPARE(get<&Identity::serial>("name", handle(), Text(nullptr, 8)), int(Refused));
}

void tst_memberCalls::aLackingDeviceIsAbsent()
{
    m_camera = Camera::create(QStringLiteral("bare"), m_folder.path());
    m_camera->connect();
    bool available = true;
    QCOMPARE(get<&Athermalization::available>("name", handle(), &available), int(Absent));
    QVERIFY(available);
    QCOMPARE(call<&LensStates::load>("name", handle(), "x"), int(Absent));
    QCOMPARE(get<&Athermalization::available>("name", 0, &available), int(InvalidHandle));
}

void tst_memberCalls::operationsOfTheControllerReturnTrueOrFalse()
{
    uint8_t level = 9;
    QVERIFY(controllerCall<&DetectorGain::setLevel>(m_camera, "controller.set", uint8_t(1)));
    QVERIFY(controllerGet<&DetectorGain::level>(m_camera, "controller.get", &level));
    QCOMPARE(level, uint8_t(1));
    QVERIFY(!controllerCall<&DetectorGain::setLevel>(m_camera, "controller.set", uint8_t(7)));
    QCOMPARE(lastCall().arguments, std::string("7"));
    uint32_t counts = 0;
    QVERIFY(controllerCall<&Focus::increment>(m_camera, "controller.increment", uint8_t(2), &counts));
    QVERIFY(counts > 0);
    QVERIFY(!controllerGet<&DetectorGain::level>(nullptr, "controller.get", &level));
    // The script of an operation without outputs is its result.
    m_camera->gate().script("controller.set", false);
    QVERIFY(!controllerCall<&DetectorGain::setLevel>(m_camera, "controller.set", uint8_t(2)));
}

ZVT_TEST(tst_memberCalls)
#include "tst_memberCalls.moc"
