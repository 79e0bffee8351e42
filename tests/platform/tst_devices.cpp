#include "platform/emulator/control.h"
#include "platform/emulator/devices/EmulatorProperties.h"
#include "platform/emulator/devices/EventQueue.h"
#include "platform/emulator/devices/Identity.h"
#include "tests/support/Test.h"
#include "zvt/zvtsdk.h"

#include <QTemporaryDir>

#include <limits>

using emulator::Camera;
using emulator::Clock;
using emulator::EmulatorProperties;
using emulator::EventQueue;

class tst_devices : public Test
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { Clock::automatic(); }

    void identityIsThatOfTheProfile();
    void identityTakesAnyNumber();
    void identityRefusesImpossibleTexts();
    void identityTextsRespectTheirBuffers();
    void identityIsOpenToOtherClients();
    void hourMeterCountsWhileConnected();
    void hourMeterStopsAtItsEnd();
    void hourMeterNeverRunsBackwards();
    void correctionsHaveNames();
    void correctionsEndWithThePresets();
    void informationIsThatOfTheProfile_data();
    void informationIsThatOfTheProfile();
    void informationIsAppended();
    void eventsComeOneByOne();
    void eventsPushOldOnesOut();
    void propertiesAreThoseOfTheProfile();
    void propertiesTakeTheirKinds_data();
    void propertiesTakeTheirKinds();
    void propertiesAreOpenToOtherClients();

private:
    void use(const char *profile)
    {
        m_camera = Camera::create(QString::fromLatin1(profile), m_folder->path());
        m_camera->connect();
        m_handle = m_camera->handle();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::shared_ptr<Camera> m_camera;
    uint64_t m_handle = 0;
};

void tst_devices::init()
{
    Test::init();
    Clock::manual();
    m_camera.reset();
    m_folder = std::make_unique<QTemporaryDir>();
    use("everything");
}

void tst_devices::identityIsThatOfTheProfile()
{
    const auto number = [this](int (*get)(uint64_t, uint8_t *)) {
        uint8_t value = 0;
        return get(m_handle, &value) == 0 ? int(value) : -1;
    };
    QCOMPARE(number(zvtGetBoardType), 5);
    QCOMPARE(number(zvtGetCameraType), 6);
    QCOMPARE(number(zvtGetCameraSubtype), 2);
    QCOMPARE(number(zvtGetDetectorType), 1);
    QCOMPARE(number(zvtGetReadout), 2);
    QCOMPARE(number(zvtGetVariant), 1);
    QCOMPARE(number(zvtGetPleoraBoardType), 2);
    char text[64];
    QCOMPARE(zvtGetCameraModel(m_handle, text, sizeof text), 0);
    QCOMPARE(text, "Campion 640 C");
    QCOMPARE(zvtGetCameraSN(m_handle, text, sizeof text), 0);
    QCOMPARE(text, "ZE-100001");
}

void tst_devices::identityTakesAnyNumber()
{
    for (const uint8_t wanted : {uint8_t(0), uint8_t(255)}) {
        uint8_t type = 1, subtype = 1, board = 1;
        QCOMPARE(zvtSetCameraType(m_handle, wanted), 0);
        QCOMPARE(zvtSetCameraSubtype(m_handle, wanted), 0);
        QCOMPARE(zvtSetPleoraBoardType(m_handle, wanted), 0);
        QCOMPARE(zvtGetCameraType(m_handle, &type), 0);
        QCOMPARE(zvtGetCameraSubtype(m_handle, &subtype), 0);
        QCOMPARE(zvtGetPleoraBoardType(m_handle, &board), 0);
        QVERIFY(type == wanted && subtype == wanted && board == wanted);
    }
}

void tst_devices::identityRefusesImpossibleTexts()
{
    QCOMPARE(zvtSetCameraModel(m_handle, std::string(256, 'x').c_str()), int(emulator::Refused));
    QCOMPARE(zvtSetCameraSN(m_handle, "\xff\xfe"), int(emulator::Refused));
    char text[64];
    QCOMPARE(zvtGetCameraSN(m_handle, text, sizeof text), 0);
    QCOMPARE(text, "ZE-100001");
    QCOMPARE(zvtSetCameraModel(m_handle, std::string(255, 'x').c_str()), 0);
    QCOMPARE(zvtSetCameraSN(m_handle, ""), 0);
    QCOMPARE(zvtGetCameraSN(m_handle, text, sizeof text), 0);
    QCOMPARE(text, "");
}

void tst_devices::identityTextsRespectTheirBuffers()
{
    use("edge-values");
    char text[65];
    text[64] = '!';
    QCOMPARE(zvtGetCameraSN(m_handle, text, 64), 0);
    QCOMPARE(text, std::string(63, 'S').c_str());
    QCOMPARE(text[64], '!');
}

void tst_devices::identityIsOpenToOtherClients()
{
    auto client = m_camera->otherClient();
    QVERIFY(client.set(QStringLiteral("identity.serial"), QStringLiteral("other")));
    QVERIFY(client.set(QStringLiteral("identity.type"), 3));
    QVERIFY(!client.set(QStringLiteral("identity.type"), 256));
    QVERIFY(!client.set(QStringLiteral("identity.type"), -1));
    QVERIFY(!client.set(QStringLiteral("identity.type"), QStringLiteral("three")));
    QVERIFY(!client.set(QStringLiteral("identity.serial"), 3));
    QVERIFY(!client.set(QStringLiteral("identity.boardSet"), 3));
    char text[64];
    QCOMPARE(zvtGetCameraSN(m_handle, text, sizeof text), 0);
    QCOMPARE(text, "other");
}

void tst_devices::hourMeterCountsWhileConnected()
{
    uint32_t minutes = 0;
    QCOMPARE(zvtGetOperatingTime(m_handle, &minutes), 0);
    QCOMPARE(minutes, uint32_t(73512));
    Clock::advance(59'999);
    QCOMPARE(zvtGetOperatingTime(m_handle, &minutes), 0);
    QCOMPARE(minutes, uint32_t(73512));
    Clock::advance(1);
    QCOMPARE(zvtGetOperatingTime(m_handle, &minutes), 0);
    QCOMPARE(minutes, uint32_t(73513));
    m_camera->disconnect();
    Clock::advance(600'000);
    m_camera->connect();
    QCOMPARE(zvtGetOperatingTime(m_handle, &minutes), 0);
    QCOMPARE(minutes, uint32_t(73513));
}

void tst_devices::hourMeterStopsAtItsEnd()
{
    use("edge-values");
    Clock::advance(600'000);
    uint32_t minutes = 0;
    QCOMPARE(zvtGetOperatingTime(m_handle, &minutes), 0);
    QCOMPARE(minutes, std::numeric_limits<uint32_t>::max());
}

void tst_devices::hourMeterNeverRunsBackwards()
{
    Clock::advance(600'000);
    m_camera->disconnect();
    m_camera->connect();
    Clock::manual();
    uint32_t minutes = 0;
    QCOMPARE(zvtGetOperatingTime(m_handle, &minutes), 0);
    QCOMPARE(minutes, uint32_t(73522));
}

void tst_devices::correctionsHaveNames()
{
    char text[256];
    QCOMPARE(zvtGetNUCName(m_handle, 0, text, sizeof text), 0);
    QCOMPARE(text, "Factory 2 ms");
    QCOMPARE(zvtGetNUCName(m_handle, 3, text, sizeof text), 0);
    QCOMPARE(text, "");
}

void tst_devices::correctionsEndWithThePresets()
{
    char text[256] = "old";
    for (const uint8_t preset : {uint8_t(4), uint8_t(255)})
        QCOMPARE(zvtGetNUCName(m_handle, preset, text, sizeof text), int(emulator::Refused));
    use("low-cost");
    QCOMPARE(zvtGetNUCName(m_handle, 1, text, sizeof text), int(emulator::Refused));
    use("bare");
    QCOMPARE(zvtGetNUCName(m_handle, 0, text, sizeof text), int(emulator::Absent));
    QCOMPARE(text, "old");
}

void tst_devices::informationIsThatOfTheProfile_data()
{
    QTest::addColumn<QByteArray>("profile");
    QTest::addColumn<QStringList>("rows");
    QTest::newRow("some") << QByteArray("everything")
                          << QStringList{"Firmware Version|3.2.1", "FPGA Version|1.18", "GigE Firmware|2.0.7",
                                         "Lens|25-150 mm f/2.3"};
    QTest::newRow("other ones") << QByteArray("low-cost") << QStringList{"Firmware Version|1.4.0"};
    QTest::newRow("inherited") << QByteArray("two-color")
                               << QStringList{"Firmware Version|3.2.1", "FPGA Version|1.18", "GigE Firmware|2.0.7",
                                              "Lens|25-150 mm f/2.3"};
    QTest::newRow("odd ones") << QByteArray("edge-values")
                              << QStringList{"Firmware Version|", "Größe|3,7 µm: je Pixel",
                                             "Firmware Version|" + QString(255, u'V')};
}

void tst_devices::informationIsThatOfTheProfile()
{
    QFETCH(QByteArray, profile);
    QFETCH(QStringList, rows);
    use(profile.constData());
    hlx::TArray<zvtSInfoEntry> entries;
    QCOMPARE(zvtGetCameraExtraInfo(m_handle, &entries), 0);
    QStringList told;
    for (const auto &entry : entries)
        told << QString::fromUtf8(entry.name.c_str()) + u'|' + QString::fromUtf8(entry.value.c_str());
    QCOMPARE(told, rows);
}

void tst_devices::informationIsAppended()
{
    hlx::TArray<zvtSInfoEntry> entries{{"of before", "x"}};
    use("bare");
    QCOMPARE(zvtGetCameraExtraInfo(m_handle, &entries), int(emulator::Absent));
    QCOMPARE(entries.size(), size_t(1));
    use("everything");
    QCOMPARE(zvtGetCameraExtraInfo(m_handle, &entries), 0);
    QCOMPARE(entries.size(), size_t(5));
    QCOMPARE(entries[0].name.c_str(), "of before");
    QCOMPARE(entries[1].name.c_str(), "Firmware Version");
}

void tst_devices::eventsComeOneByOne()
{
    auto *const queue = m_camera->device<EventQueue>();
    queue->push(ZVT_EVENT_SETTINGS_CHANGED);
    queue->push(ZVT_EVENT_MAKE_UP_CHANGED);
    queue->push(static_cast<zvtEEventType>(77));
    for (const int expected : {2, 1, 77, 0, 0}) {
        auto event = static_cast<zvtEEventType>(42);
        QCOMPARE(zvtReadEventQueue(m_handle, &event), 0);
        QCOMPARE(int(event), expected);
    }
}

void tst_devices::eventsPushOldOnesOut()
{
    auto *const queue = m_camera->device<EventQueue>();
    queue->push(ZVT_EVENT_SETTINGS_CHANGED);
    for (size_t n = 0; n < EventQueue::capacity; ++n)
        queue->push(ZVT_EVENT_MAKE_UP_CHANGED);
    for (size_t n = 0; n < EventQueue::capacity; ++n)
        QCOMPARE(queue->take(), ZVT_EVENT_MAKE_UP_CHANGED);
    QCOMPARE(queue->take(), ZVT_EVENT_NONE);
}

void tst_devices::propertiesAreThoseOfTheProfile()
{
    const auto *properties = m_camera->device<EmulatorProperties>();
    const auto value = [&](const char *path) {
        QVariant result;
        return properties->get(QLatin1String(path), result) ? result : QVariant();
    };
    QCOMPARE(value("/RecordStart"), QVariant(false));
    QCOMPARE(value("/SSDTransfer"), QVariant(true));
    QCOMPARE(value("/Pattern"), QVariant(0));
    QCOMPARE(value("/BlackbodyTemp1"), QVariant(20.0F));
    QCOMPARE(value("/BlackbodyTemp2"), QVariant(35.0F));
    QCOMPARE(value("/ChamberProfile"), QVariant(QString()));
    QVERIFY(!value("/ChamberProfile").toString().size());
    for (const auto *unknown : {"Pattern", "/pattern", "", "/"})
        QVERIFY(!value(unknown).isValid());
    use("bare");
    QVERIFY(m_camera->device<EmulatorProperties>());
}

void tst_devices::propertiesTakeTheirKinds_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QVariant>("expected"); // invalid: refused
    const QVariant refused;
    QTest::newRow("bool") << "/RecordStart" << QVariant(true) << QVariant(true);
    QTest::newRow("int") << "/Pattern" << QVariant(-3) << QVariant(-3);
    QTest::newRow("float") << "/BlackbodyTemp1" << QVariant(1.5F) << QVariant(1.5F);
    QTest::newRow("text") << "/ChamberProfile" << QVariant("0:23,9:60") << QVariant("0:23,9:60");
    QTest::newRow("double for a float") << "/BlackbodyTemp2" << QVariant(1.5) << QVariant(1.5F);
    QTest::newRow("int for a float") << "/BlackbodyTemp2" << QVariant(2) << QVariant(2.0F);
    QTest::newRow("whole float for an int") << "/Pattern" << QVariant(2.0F) << QVariant(2);
    QTest::newRow("half for an int") << "/Pattern" << QVariant(2.5) << refused;
    QTest::newRow("too large for an int") << "/Pattern" << QVariant(1e10) << refused;
    QTest::newRow("too large for a float") << "/BlackbodyTemp1" << QVariant(1e39) << refused;
    QTest::newRow("int for a bool") << "/RecordStart" << QVariant(1) << refused;
    QTest::newRow("bool for an int") << "/Pattern" << QVariant(true) << refused;
    QTest::newRow("text for an int") << "/Pattern" << QVariant(QStringLiteral("1")) << refused;
    QTest::newRow("int for a text") << "/ChamberProfile" << QVariant(1) << refused;
    QTest::newRow("text that is no program") << "/ChamberProfile" << QVariant("warm") << refused;
    QTest::newRow("nothing") << "/Pattern" << QVariant() << refused;
    QTest::newRow("unknown") << "/Nothing" << QVariant(1) << refused;
}

void tst_devices::propertiesTakeTheirKinds()
{
    QFETCH(QString, path);
    QFETCH(QVariant, value);
    QFETCH(QVariant, expected);
    auto *const properties = m_camera->device<EmulatorProperties>();
    QVariant before;
    properties->get(path, before);
    QCOMPARE(properties->set(path, value), expected.isValid());
    QVariant after;
    properties->get(path, after);
    QCOMPARE(after, expected.isValid() ? expected : before);
    QCOMPARE(after.typeId(), before.typeId());
}

void tst_devices::propertiesAreOpenToOtherClients()
{
    QVERIFY(m_camera->otherClient().set(QStringLiteral("emulator./Pattern"), 4));
    QVariant pattern;
    QVERIFY(m_camera->device<EmulatorProperties>()->get(QStringLiteral("/Pattern"), pattern));
    QCOMPARE(pattern.toInt(), 4);
}

ZVT_TEST(tst_devices)
#include "tst_devices.moc"
