#include "platform/emulator/control.h"
#include "platform/emulator/devices/EventQueue.h"
#include "platform/emulator/devices/Identity.h"
#include "tests/platform/settingOf.h"
#include "tests/support/Test.h"
#include "zvt/zvtsdk.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <set>

using emulator::Camera;
using emulator::Clock;
using emulator::SetupError;

namespace
{

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Returns the message of the SetupError that Camera::create() throws.
QString errorOf(const QString &folder, const char *profile = "bare")
{
    try {
        Camera::create(QString::fromLatin1(profile), folder);
    } catch (const SetupError &error) {
        return QString::fromUtf8(error.what());
    }
    return {};
}

} // namespace

class tst_Camera : public Test
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { Clock::automatic(); }

    void isNotConnectedAtFirst();
    void keepsItsHandleForLife();
    void neverReusesAHandle();
    void isNotFoundByWrongHandles();
    void fitsTheDevicesOfItsProfile();
    void tellsItsListeners();
    void letsAListenerEndItself();
    void tellsOfAChangedMakeUp();
    void refusesAnImpossibleMakeUp_data();
    void refusesAnImpossibleMakeUp();
    void tellsOfAnotherClient();
    void refusesTheSettingsOfAnotherClient_data();
    void refusesTheSettingsOfAnotherClient();
    void holdsItsSettingsInASnapshot();
    void restoresWhatASnapshotTells();

    void makesItsFolder();
    void usesTheUsersFolder();
    void keepsTheFilesOfOtherProfilesApart();
    void refusesACorruptFile_data();
    void refusesACorruptFile();
    void refusesAnImpossibleFolder();
    void refusesAValueOfAnotherKind_data();
    void refusesAValueOfAnotherKind();
    void passesOverImpossibleValues();

private:
    std::shared_ptr<Camera> create(const char *profile = "everything")
    {
        return Camera::create(QString::fromLatin1(profile), m_folder->path());
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_Camera::init()
{
    Test::init();
    Clock::manual();
    m_folder = std::make_unique<QTemporaryDir>();
}

void tst_Camera::isNotConnectedAtFirst()
{
    const auto camera = create();
    QVERIFY(!camera->connected());
    uint8_t type = 42;
    QCOMPARE(zvtGetCameraType(camera->handle(), &type), int(emulator::NotConnected));
    QCOMPARE(type, uint8_t(42));
    camera->connect();
    QVERIFY(camera->connected());
    QCOMPARE(zvtGetCameraType(camera->handle(), &type), 0);
}

void tst_Camera::keepsItsHandleForLife()
{
    const auto camera = create();
    const uint64_t handle = camera->handle();
    for (int round = 0; round < 2; ++round) {
        camera->connect();
        camera->disconnect();
        QCOMPARE(camera->handle(), handle);
        QCOMPARE(Camera::find(handle), camera);
    }
}

void tst_Camera::neverReusesAHandle()
{
    std::set<uint64_t> handles;
    for (int n = 0; n < 10; ++n)
        handles.insert(create("bare")->handle());
    QCOMPARE(handles.size(), size_t(10));
    QVERIFY(!handles.contains(0));
}

void tst_Camera::isNotFoundByWrongHandles()
{
    auto camera = create("bare");
    const uint64_t handle = camera->handle();
    QVERIFY(!Camera::find(0));
    QVERIFY(!Camera::find(handle + 1));
    camera.reset();
    QVERIFY(!Camera::find(handle));
    uint8_t type = 42;
    QCOMPARE(zvtGetCameraType(handle, &type), int(emulator::InvalidHandle));
}

void tst_Camera::fitsTheDevicesOfItsProfile()
{
    const auto bare = create("bare");
    QVERIFY(bare->device<emulator::Identity>());
    bare->connect();
    float value = 42;
    QCOMPARE(zvtGetRSTemperatures(bare->handle(), &value), int(emulator::Absent));
    QCOMPARE(value, 42.0F);
    const auto everything = create();
    everything->connect();
    QCOMPARE(zvtGetRSTemperatures(everything->handle(), &value), 0);
}

void tst_Camera::tellsItsListeners()
{
    const auto camera = create("bare");
    QList<bool> heard;
    const int number = camera->onConnectionChanged([&] { heard.append(camera->connected()); });
    camera->connect();
    camera->connect();
    camera->disconnect();
    camera->disconnect();
    QCOMPARE(heard, (QList<bool>{true, false}));
    camera->removeListener(number);
    camera->connect();
    QCOMPARE(heard.size(), 2);
}

void tst_Camera::letsAListenerEndItself()
{
    const auto camera = create("bare");
    int calls = 0;
    int number = 0;
    number = camera->onConnectionChanged([&] {
        ++calls;
        camera->removeListener(number);
    });
    camera->connect();
    camera->disconnect();
    QCOMPARE(calls, 1);
}

void tst_Camera::tellsOfAChangedMakeUp()
{
    const auto camera = create();
    QVERIFY(camera->capabilities().value(QLatin1String("hasSsd")).toBool());
    QVERIFY(camera->changeMakeUp(QStringLiteral("hasSsd"), false));
    QVERIFY(camera->changeMakeUp(QStringLiteral("numFPAGainLevels"), 7));
    QVERIFY(!camera->capabilities().value(QLatin1String("hasSsd")).toBool());
    QCOMPARE(camera->capabilities().value(QLatin1String("numFPAGainLevels")).toInt(), 7);
    auto *const events = camera->device<emulator::EventQueue>();
    QCOMPARE(events->take(), ZVT_EVENT_MAKE_UP_CHANGED);
    QCOMPARE(events->take(), ZVT_EVENT_MAKE_UP_CHANGED);
    QCOMPARE(events->take(), ZVT_EVENT_NONE);
}

void tst_Camera::refusesAnImpossibleMakeUp_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("unknown") << "hasWings" << QVariant(true);
    QTest::newRow("number for a flag") << "hasSsd" << QVariant(1);
    QTest::newRow("flag for a number") << "numFPAGainLevels" << QVariant(true);
    QTest::newRow("negative count") << "numFPAGainLevels" << QVariant(-1);
    QTest::newRow("half a level") << "numFPAGainLevels" << QVariant(1.5);
    QTest::newRow("nothing") << "hasSsd" << QVariant();
}

void tst_Camera::refusesAnImpossibleMakeUp()
{
    QFETCH(QString, name);
    QFETCH(QVariant, value);
    const auto camera = create();
    const auto before = camera->capabilities();
    QVERIFY(!camera->changeMakeUp(name, value));
    QCOMPARE(camera->capabilities(), before);
    QCOMPARE(camera->device<emulator::EventQueue>()->take(), ZVT_EVENT_NONE);
}

void tst_Camera::tellsOfAnotherClient()
{
    const auto camera = create("te-cooler");
    camera->connect();
    QVERIFY(camera->otherClient().set(QStringLiteral("cooler.setpoint"), -20.0));
    float setpoint = 0;
    QCOMPARE(zvtMfgGetCoolerSetpoint(camera->handle(), &setpoint), 0);
    QCOMPARE(setpoint, -20.0F);
    zvtEEventType event = ZVT_EVENT_NONE;
    QCOMPARE(zvtReadEventQueue(camera->handle(), &event), 0);
    QCOMPARE(event, ZVT_EVENT_SETTINGS_CHANGED);
    QCOMPARE(zvtReadEventQueue(camera->handle(), &event), 0);
    QCOMPARE(event, ZVT_EVENT_NONE);
}

void tst_Camera::refusesTheSettingsOfAnotherClient_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("no device") << "wings.span" << QVariant(1);
    QTest::newRow("device that the camera lacks") << "temperatures.lens" << QVariant(1);
    QTest::newRow("no setting") << "clock.colour" << QVariant(1);
    QTest::newRow("device without settings") << "events.next" << QVariant(1);
    QTest::newRow("no dot") << "clock" << QVariant(1);
    QTest::newRow("nothing") << "" << QVariant(1);
    QTest::newRow("refused") << "cooler.setpoint" << QVariant(1e9);
    QTest::newRow("wrong kind") << "clock.irigLocked" << QVariant(QStringLiteral("yes"));
}

void tst_Camera::refusesTheSettingsOfAnotherClient()
{
    QFETCH(QString, name);
    QFETCH(QVariant, value);
    const auto camera = create("bare");
    QVERIFY(!camera->otherClient().set(name, value));
    QCOMPARE(camera->device<emulator::EventQueue>()->take(), ZVT_EVENT_NONE);
}

void tst_Camera::holdsItsSettingsInASnapshot()
{
    const auto camera = create();
    camera->connect();
    QVERIFY(camera->otherClient().set(QStringLiteral("cooler.setpoint"), 85.0));
    QVERIFY(camera->otherClient().set(QStringLiteral("sensor.activePreset"), 2));
    const QJsonObject snapshot = camera->snapshot();
    QCOMPARE(snapshot.keys().join(QLatin1Char(' ')),
             QStringLiteral(
                 "agc analog athermalization autoFocus automaticCorrection color cooler corrections cover digital "
                 "factoryCalibrations filters focus gain image interfaces lockin overlay palette recorder saturation "
                 "sensor sync syncOut trigger video zoom"));

    QVERIFY(camera->otherClient().set(QStringLiteral("cooler.setpoint"), 75.0));
    QVERIFY(camera->otherClient().set(QStringLiteral("sensor.activePreset"), 1));
    QVERIFY(camera->otherClient().set(QStringLiteral("identity.serial"), QStringLiteral("Newer")));
    QCOMPARE(zvtSetRealTimeClock(camera->handle(), 30, 1, 2, 3, 4, 5), 0);
    camera->restore(snapshot);
    QCOMPARE(settingOf(*camera, QStringLiteral("cooler.setpoint")).toDouble(), 85.0);
    uint8_t preset = 0;
    QCOMPARE(zvtGetActivePreset(camera->handle(), &preset), 0);
    QCOMPARE(preset, uint8_t(2));
    QCOMPARE(camera->snapshot(), snapshot);

    // The identity and the time of a camera are not settings.
    char serial[64];
    QCOMPARE(zvtGetCameraSN(camera->handle(), serial, sizeof serial), 0);
    QCOMPARE(QString::fromUtf8(serial), QStringLiteral("Newer"));
    uint8_t year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
    QCOMPARE(zvtGetRealTimeClock(camera->handle(), &year, &month, &day, &hour, &minute, &second), 0);
    QCOMPARE(year, uint8_t(30));
}

void tst_Camera::restoresWhatASnapshotTells()
{
    const auto camera = create();
    camera->connect();
    QVERIFY(camera->otherClient().set(QStringLiteral("cooler.setpoint"), 85.0));
    const QJsonObject before = camera->snapshot();
    camera->restore({});
    camera->restore({{QStringLiteral("cooler"), QJsonObject{{QStringLiteral("setpoint"), 1e9}}},
                     {QStringLiteral("sensor"), QStringLiteral("nonsense")},
                     {QStringLiteral("identity"), QJsonObject{{QStringLiteral("serial"), QStringLiteral("Stolen")}}},
                     {QStringLiteral("hours"), QJsonObject{{QStringLiteral("milliseconds"), 0}}}});
    QCOMPARE(camera->snapshot(), before);
    char serial[64];
    QCOMPARE(zvtGetCameraSN(camera->handle(), serial, sizeof serial), 0);
    QCOMPARE(QString::fromUtf8(serial), QStringLiteral("ZE-100001"));
    uint32_t minutes = 0;
    QCOMPARE(zvtGetOperatingTime(camera->handle(), &minutes), 0);
    QCOMPARE(minutes, uint32_t(73512));
}

void tst_Camera::makesItsFolder()
{
    const auto camera = create("bare");
    QCOMPARE(camera->folder(), m_folder->filePath(QStringLiteral("cameras/bare")));
    for (const auto *part : {"states", "nucs", "movies", "lens"})
        QVERIFY(QDir(camera->folder()).exists(QLatin1String(part)));
}

void tst_Camera::usesTheUsersFolder()
{
    const auto camera = Camera::create(QStringLiteral("bare"), {});
    QCOMPARE(camera->folder(),
             QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QStringLiteral("/cameras/bare"));
    QVERIFY(QDir(camera->folder()).exists());
    QDir(camera->folder()).removeRecursively();
}

void tst_Camera::keepsTheFilesOfOtherProfilesApart()
{
    const auto first = create("irig");
    first->connect();
    QCOMPARE(zvtSetCameraModel(first->handle(), "Changed"), 0);
    const auto second = create("everything");
    second->connect();
    char text[128];
    QCOMPARE(zvtGetCameraModel(second->handle(), text, sizeof text), 0);
    QCOMPARE(QString::fromUtf8(text), QStringLiteral("Campion 640 C"));
}

void tst_Camera::refusesACorruptFile_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("message");
    const QString corrupt = QStringLiteral("corrupt, or not a file of an emulated camera");
    QTest::newRow("empty") << QByteArray() << corrupt;
    QTest::newRow("binary") << QByteArray("\x00\x01\xff", 3) << corrupt;
    QTest::newRow("cut off") << QByteArray(R"({"magic": "zvt-emulated-camera", "version": 1, "val)") << corrupt;
    QTest::newRow("a list") << QByteArray("[]") << corrupt;
    QTest::newRow("no magic") << QByteArray(R"({"version": 1, "values": {}})") << corrupt;
    QTest::newRow("other magic") << QByteArray(R"({"magic": "x", "version": 1, "values": {}})") << corrupt;
    QTest::newRow("no values") << QByteArray(R"({"magic": "zvt-emulated-camera", "version": 1})") << corrupt;
    QTest::newRow("other version") << QByteArray(R"({"magic": "zvt-emulated-camera", "version": 2, "values": {}})")
                                   << QStringLiteral("written by another version of this program");
}

void tst_Camera::refusesACorruptFile()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, message);
    for (const auto &name : {QStringLiteral("camera.json"), QStringLiteral("names.json")}) {
        const QString path = m_folder->filePath(QStringLiteral("cameras/bare/") + name);
        QVERIFY(QDir().mkpath(QFileInfo(path).path()));
        write(path, content);
        QCOMPARE(errorOf(m_folder->path()), QStringLiteral("storage %1: %2").arg(path, message));
        QCOMPARE(contentOf(path), content);
        QFile::remove(path);
    }
    QCOMPARE(errorOf(m_folder->path()), QString());
}

void tst_Camera::refusesAnImpossibleFolder()
{
    const QString file = m_folder->filePath(QStringLiteral("file"));
    write(file, "x");
    QVERIFY(errorOf(file).contains(QStringLiteral("the folder cannot be made")));
    QVERIFY(errorOf(QStringLiteral("/proc/none")).contains(QStringLiteral("/proc/none/cameras/bare")));
    const QString camera = m_folder->filePath(QStringLiteral("cameras/bare"));
    QVERIFY(QDir().mkpath(QFileInfo(camera).path()));
    write(camera, "x");
    QCOMPARE(errorOf(m_folder->path()), QStringLiteral("storage %1: not a folder").arg(camera));
}

void tst_Camera::refusesAValueOfAnotherKind_data()
{
    QTest::addColumn<QByteArray>("values");
    QTest::addColumn<QString>("message");
    QTest::newRow("null") << QByteArray(R"("flag": {"kP": null})") << "flag.kP: must be a number";
    QTest::newRow("number") << QByteArray(R"("flag": {"kP": "1"})") << "flag.kP: must be a number";
    QTest::newRow("flag") << QByteArray(R"("cooler": {"power": 1})") << "cooler.power: must be true or false";
    QTest::newRow("text") << QByteArray(R"("states": {"current": 1})") << "states.current: must be a text";
    QTest::newRow("identity") << QByteArray(R"("identity": {"model": 3})") << "identity.model: must be a text";
    QTest::newRow("readout circuit") << QByteArray(R"("roic": {"preDeadRows": "1"})")
                                     << "roic.preDeadRows: must be a number";
    QTest::newRow("list") << QByteArray(R"("focus": {"near": ["x"]})") << "focus.near: must be a list of numbers";
    QTest::newRow("device") << QByteArray(R"("cooler": 7)") << "cooler: must be an object";
}

void tst_Camera::refusesAValueOfAnotherKind()
{
    QFETCH(QByteArray, values);
    QFETCH(QString, message);
    const QString path = m_folder->filePath(QStringLiteral("cameras/everything/camera.json"));
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    write(path, R"({"magic": "zvt-emulated-camera", "version": 1, "values": {)" + values + "}}");
    QCOMPARE(errorOf(m_folder->path(), "everything"), QStringLiteral("storage %1: %2").arg(path, message));
}

void tst_Camera::passesOverImpossibleValues()
{
    const QString path = m_folder->filePath(QStringLiteral("cameras/te-cooler/camera.json"));
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    write(path, R"({"magic": "zvt-emulated-camera", "version": 1, "values": {
        "wings": {}, "identity": {"type": 999, "model": "", "boardSet": 2}, "hours": {"milliseconds": -7},
        "clock": {"realTimeOffset": 1e300, "irigOffset": 9e18, "irigMicrosecond": 70000},
        "cooler": {"setpoint": 1000, "kP": 1e300}}})");
    const auto camera = create("te-cooler");
    camera->connect();
    uint8_t type = 0;
    QCOMPARE(zvtGetCameraType(camera->handle(), &type), 0);
    QCOMPARE(type, uint8_t(3));
    float setpoint = 0;
    QCOMPARE(zvtMfgGetCoolerSetpoint(camera->handle(), &setpoint), 0);
    QCOMPARE(setpoint, 10.0F);
    uint32_t minutes = 1;
    QCOMPARE(zvtGetOperatingTime(camera->handle(), &minutes), 0);
    QCOMPARE(minutes, uint32_t(0));
    uint16_t year = 0, day = 0, millisecond = 0, microsecond = 1000;
    uint8_t hour = 0, minute = 0, second = 0;
    QCOMPARE(zvtGetIRIGTime(camera->handle(), &year, &day, &hour, &minute, &second, &millisecond, &microsecond), 0);
    QVERIFY(day >= 1 && day <= 366 && microsecond <= 999);
}

ZVT_TEST(tst_Camera)
#include "tst_Camera.moc"
