#include "hlx/IInterface.h"
#include "platform/emulator/control.h"
#include "platform/hlxcamzvt/makeController.h"
#include "tests/support/Test.h"

#include <QTemporaryDir>

using emulator::Camera;
using hlx::CString;
using hlx::CVariant;

class tst_interfaces : public Test
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void anEmulatedCameraIsOnTheEmulator();
    void everyCameraHasAKeyOfItsOwn();
    void anUnknownKeyIsOnNoInterface_data();
    void anUnknownKeyIsOnNoInterface();
    void aKeyWithSomethingBehindItIsUnknown();
    void aCameraThatHasGoneIsOnNoInterface();
    void propertiesKeepTheirKind_data();
    void propertiesKeepTheirKind();
    void anUnknownPropertyIsLeftAlone();
    void propertiesWorkWithoutAConnection();
    void propertiesPassTheGate();

private:
    hlx::cam::CProperties &properties() { return m_controller->device()->properties(); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::shared_ptr<Camera> m_camera;
    hlx::TSharedPtr<hlx::cam::CZVTController> m_controller;
};

void tst_interfaces::init()
{
    Test::init();
    m_folder = std::make_unique<QTemporaryDir>();
    m_camera = Camera::create(QStringLiteral("everything"), m_folder->path());
    m_camera->connect();
    m_controller = hlx::cam::makeController(m_camera);
}

void tst_interfaces::cleanup()
{
    m_controller.reset();
    m_camera.reset();
    m_folder.reset();
}

void tst_interfaces::anEmulatedCameraIsOnTheEmulator()
{
    const auto found = hlx::cam::interfaces().GetInterfaceOfDevice(m_controller->device()->key());
    QVERIFY(found);
    QVERIFY(found->isEmulator);
    m_camera->disconnect();
    QVERIFY(hlx::cam::interfaces().GetInterfaceOfDevice(m_controller->device()->key()));
}

void tst_interfaces::everyCameraHasAKeyOfItsOwn()
{
    const auto other = hlx::cam::makeController(Camera::create(QStringLiteral("bare"), m_folder->path()));
    QVERIFY(!(other->device()->key() == m_controller->device()->key()));
}

void tst_interfaces::anUnknownKeyIsOnNoInterface_data()
{
    QTest::addColumn<CString>("key");
    for (const char *key : {"", "emulator:", "emulator:0", "emulator:18446744073709551615", "emulator:999999999999",
                            "emulator:99999999999999999999999", "emulator:-1", "emulator: 1", "grabber:1"})
        QTest::newRow(key) << CString(key);
}

void tst_interfaces::anUnknownKeyIsOnNoInterface()
{
    QFETCH(CString, key);
    QVERIFY(!hlx::cam::interfaces().GetInterfaceOfDevice(key));
}

void tst_interfaces::aKeyWithSomethingBehindItIsUnknown()
{
    QVERIFY(!hlx::cam::interfaces().GetInterfaceOfDevice(m_controller->device()->key() + "x"));
}

void tst_interfaces::aCameraThatHasGoneIsOnNoInterface()
{
    const auto device = m_controller->device();
    m_controller.reset();
    m_camera.reset();
    QVERIFY(!hlx::cam::interfaces().GetInterfaceOfDevice(device->key()));
    CVariant value(7);
    QVERIFY(!device->properties().get("/Pattern", value));
    QVERIFY(value == CVariant(7));
    QVERIFY(!device->properties().set("/Pattern", 1));
}

void tst_interfaces::propertiesKeepTheirKind_data()
{
    QTest::addColumn<CVariant>("written");
    QTest::addColumn<CVariant>("read");
    QTest::newRow("/RecordStart") << CVariant(true) << CVariant(true);
    QTest::newRow("/SSDTransfer") << CVariant(0) << CVariant(false);
    QTest::newRow("/Pattern") << CVariant(3) << CVariant(3);
    QTest::newRow("/BlackbodyTemp1") << CVariant(30.5F) << CVariant(30.5F);
    QTest::newRow("/BlackbodyTemp2") << CVariant(31) << CVariant(31.0F);
    QTest::newRow("/ChamberProfile") << CVariant("0:23,9:60") << CVariant("0:23,9:60");
}

void tst_interfaces::propertiesKeepTheirKind()
{
    QFETCH(CVariant, written);
    QFETCH(CVariant, read);
    const CString key = QTest::currentDataTag();
    CVariant value;
    QVERIFY(properties().get(key, value));
    QVERIFY(!(value == read));
    QVERIFY(properties().set(key, written));
    QVERIFY(properties().get(key, value));
    QVERIFY(value == read);
}

void tst_interfaces::anUnknownPropertyIsLeftAlone()
{
    CVariant value(7);
    QVERIFY(!properties().get("Pattern", value));
    QVERIFY(value == CVariant(7));
    QVERIFY(!properties().set("/Colour", 1));
}

void tst_interfaces::propertiesWorkWithoutAConnection()
{
    m_camera->disconnect();
    CVariant value;
    QVERIFY(properties().set("/Pattern", 5));
    QVERIFY(properties().get("/Pattern", value));
    QVERIFY(value == CVariant(5));
}

void tst_interfaces::propertiesPassTheGate()
{
    const size_t mark = m_camera->gate().mark();
    m_camera->gate().failAlways("*");
    CVariant value(7);
    QVERIFY(!properties().get("/Pattern", value));
    QVERIFY(value == CVariant(7));
    QVERIFY(!properties().set("/Pattern", 5));
    m_camera->gate().failNever();
    QVERIFY(properties().get("/Pattern", value));
    QVERIFY(value == CVariant(0));
    const auto calls = m_camera->gate().callsSince(mark);
    QCOMPARE(calls.size(), size_t(3));
    QCOMPARE(calls[0].name, std::string("controller.properties.get"));
    QCOMPARE(calls[1].name, std::string("controller.properties.set"));
    QCOMPARE(calls[1].arguments, std::string("\"/Pattern\""));
    QCOMPARE(calls[1].status, int(emulator::Injected));
}

ZVT_TEST(tst_interfaces)
#include "tst_interfaces.moc"
