#include "platform/emulator/control.h"
#include "platform/emulator/devices/Sensor.h"
#include "tests/support/Test.h"
#include "zvt/zvtsdk.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>

using emulator::Camera;
using emulator::Sensor;
using emulator::Status;

class tst_SensorGeometry : public Test
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void standardWindowsLieInTheMiddle();
    void windows_data();
    void windows();
    void theWindowIsTheSameForAllPresets();
    void freeWindowsAgreeWithTheCapability_data();
    void freeWindowsAgreeWithTheCapability();
    void aBadProfileIsNamed_data();
    void aBadProfileIsNamed();

private:
    void use(const QString &profile);
    Sensor &sensor() { return *m_camera->device<Sensor>(); }
    uint64_t handle() const { return m_camera->handle(); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::shared_ptr<Camera> m_camera;
};

void tst_SensorGeometry::init()
{
    Test::init();
    m_folder = std::make_unique<QTemporaryDir>();
    use(QStringLiteral("everything"));
}

void tst_SensorGeometry::cleanup()
{
    m_camera.reset();
    m_folder.reset();
}

void tst_SensorGeometry::use(const QString &profile)
{
    m_camera = Camera::create(profile, m_folder->path());
    m_camera->connect();
}

void tst_SensorGeometry::standardWindowsLieInTheMiddle()
{
    QCOMPARE(sensor().geometry().sizes().size(), size_t(5));
    QCOMPARE(sensor().geometry().sizeIndex(), 0);
    QCOMPARE(sensor().setWindowSizeIndex(2), emulator::Ok);
    QVERIFY((sensor().geometry().window() == Sensor::Window{160, 128, 320, 256}));
    QCOMPARE(sensor().geometry().sizeIndex(), 2);
    // The row of the custom window.
    QCOMPARE(sensor().setWindowSizeIndex(5), emulator::Ok);
    QCOMPARE(sensor().geometry().sizeIndex(), 2);
    QCOMPARE(sensor().setWindowSizeIndex(6), emulator::Refused);
    QCOMPARE(sensor().setWindowSizeIndex(-1), emulator::Refused);
    QCOMPARE(sensor().setWindow({0, 0, 320, 256}), emulator::Ok);
    QCOMPARE(sensor().geometry().sizeIndex(), -1);
}

void tst_SensorGeometry::windows_data()
{
    QTest::addColumn<QString>("profile");
    QTest::addColumn<QList<int>>("window");
    QTest::addColumn<Status>("status");
    const QString everything = QStringLiteral("everything");
    QTest::newRow("free") << everything << QList<int>{16, 4, 96, 100} << emulator::Ok;
    QTest::newRow("at the edge") << everything << QList<int>{576, 508, 64, 4} << emulator::Ok;
    QTest::newRow("width too small") << everything << QList<int>{0, 0, 48, 4} << emulator::Refused;
    QTest::newRow("height 0") << everything << QList<int>{0, 0, 64, 0} << emulator::Refused;
    QTest::newRow("width no multiple") << everything << QList<int>{0, 0, 100, 4} << emulator::Refused;
    QTest::newRow("height no multiple") << everything << QList<int>{0, 0, 64, 6} << emulator::Refused;
    QTest::newRow("offset no multiple") << everything << QList<int>{8, 0, 64, 4} << emulator::Refused;
    QTest::newRow("beyond the right") << everything << QList<int>{592, 0, 64, 4} << emulator::Refused;
    QTest::newRow("beyond the bottom") << everything << QList<int>{0, 512, 64, 4} << emulator::Refused;
    const QString centred = QStringLiteral("discrete-fov");
    QTest::newRow("centred only: in the middle") << centred << QList<int>{272, 200, 96, 112} << emulator::Ok;
    QTest::newRow("centred only: elsewhere") << centred << QList<int>{0, 0, 96, 112} << emulator::Refused;
    const QString standard = QStringLiteral("low-cost");
    QTest::newRow("standard only: standard") << standard << QList<int>{96, 72, 192, 144} << emulator::Ok;
    QTest::newRow("standard only: free") << standard << QList<int>{128, 72, 128, 144} << emulator::Refused;
}

void tst_SensorGeometry::windows()
{
    QFETCH(QString, profile);
    QFETCH(QList<int>, window);
    QFETCH(Status, status);
    use(profile);
    const auto at = [&](int index) { return static_cast<uint16_t>(window.at(index)); };
    const Sensor::Window wanted{at(0), at(1), at(2), at(3)};
    const Sensor::Window before = sensor().geometry().window();
    QCOMPARE(sensor().setWindow(wanted), status);
    QVERIFY(sensor().geometry().window() == (status == emulator::Ok ? wanted : before));
}

void tst_SensorGeometry::theWindowIsTheSameForAllPresets()
{
    QCOMPARE(sensor().setWindow({16, 8, 64, 12}), emulator::Ok);
    for (uint8_t preset = 0; preset < emulator::maximumPresets; ++preset) {
        uint16_t x = 0;
        uint16_t y = 0;
        uint16_t width = 0;
        uint16_t height = 0;
        QCOMPARE(zvtGetWindow(handle(), preset, &x, &y, &width, &height), 0);
        QVERIFY((Sensor::Window{x, y, width, height} == Sensor::Window{16, 8, 64, 12}));
    }
    uint16_t unused = 77;
    QVERIFY(zvtGetWindow(handle(), 4, &unused, &unused, &unused, &unused) != 0);
    QCOMPARE(unused, uint16_t(77));
    uint16_t limits[6] = {};
    QCOMPARE(zvtGetWindowLimits(handle(), limits, limits + 1, limits + 2, limits + 3, limits + 4, limits + 5), 0);
    const uint16_t expected[6] = {64, 640, 4, 512, 16, 4};
    QVERIFY(std::equal(std::begin(limits), std::end(limits), expected));
}

void tst_SensorGeometry::freeWindowsAgreeWithTheCapability_data()
{
    QTest::addColumn<QString>("profile");
    for (const QString &name : emulator::Profile::names())
        QTest::newRow(qPrintable(name)) << name;
}

void tst_SensorGeometry::freeWindowsAgreeWithTheCapability()
{
    QFETCH(QString, profile);
    use(profile);
    const QString capability = QStringLiteral("hasWindowDimensionsThatCanBeArbitrary");
    QCOMPARE(sensor().geometry().customAllowed(), m_camera->capabilities().value(capability).toBool());
}

void tst_SensorGeometry::aBadProfileIsNamed_data()
{
    QTest::addColumn<QByteArray>("settings");
    QTest::addColumn<QString>("key");
    QTest::newRow("no size") << QByteArray(R"("windowSizes": ["wide"])") << QStringLiteral("windowSizes");
    QTest::newRow("three numbers") << QByteArray(R"("maximumSize": "1x2x3")") << QStringLiteral("maximumSize");
    QTest::newRow("size 0") << QByteArray(R"("increment": "0x4")") << QStringLiteral("increment");
    QTest::newRow("beyond the limits") << QByteArray(R"("windowSizes": ["800x600"])") << QStringLiteral("windowSizes");
    QTest::newRow("no sizes") << QByteArray(R"("windowSizes": [])") << QStringLiteral("windowSizes");
    QTest::newRow("no times") << QByteArray(R"("integrationTimes": [])") << QStringLiteral("integrationTimes");
    QTest::newRow("no mode") << QByteArray(R"("sequencingModes": [-1])") << QStringLiteral("sequencingModes");
    QTest::newRow("five presets") << QByteArray(R"("numPresets": 5)") << QStringLiteral("numPresets");
    QTest::newRow("unknown") << QByteArray(R"("colour": 1)") << QStringLiteral("colour");
}

void tst_SensorGeometry::aBadProfileIsNamed()
{
    QFETCH(QByteArray, settings);
    QFETCH(QString, key);
    QFile file(m_folder->filePath(QStringLiteral("bad.json")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(R"({"title": "Bad", "extends": "everything", "devices": {"sensor": {)" + settings + "}}}");
    file.close();
    try {
        Camera::create(file.fileName(), m_folder->path());
        QFAIL("taken");
    } catch (const emulator::SetupError &error) {
        QVERIFY2(QString::fromUtf8(error.what()).contains(QStringLiteral("sensor.") + key), error.what());
    }
}

ZVT_TEST(tst_SensorGeometry)
#include "tst_SensorGeometry.moc"
