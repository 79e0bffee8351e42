#include "platform/emulator/control.h"
#include "tests/support/Test.h"
#include "zvt/zvtsdk.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>

#include <algorithm>
#include <limits>
#include <mutex>
#include <string>
#include <thread>

using emulator::Camera;
using emulator::Clock;

/// The values of a camera that outlive the process, and the thread that writes them.
class tst_cameraMemory : public Test
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { Clock::automatic(); }

    void remembersAfterARestart();
    void writesAChangeByItself();
    void aDisconnectionWrites();
    void aDisconnectionUnderTheLockWrites();
    void aChangeCostsItsCallerLittle();
    void aPolledCameraHasNoThread();
    void theNewestValuesAreWrittenLast();
    void warnsOfAFolderThatHasBecomeUnwritable();
    void leavesARemovedFolderAlone();
    void theEndOfTheProcessWrites();
    void leavesACameraBehind();

private:
    std::shared_ptr<Camera> create(const char *profile = "everything")
    {
        return Camera::create(QString::fromLatin1(profile), m_folder->path());
    }
    static QByteArray contentOf(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static QByteArray memoryOf(const Camera &camera) { return contentOf(camera.folder() + "/camera.json"); }
    static QSet<QString> threads()
    {
        const QStringList names = QDir("/proc/self/task").entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        return {names.begin(), names.end()};
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_cameraMemory::init()
{
    Test::init();
    Clock::manual();
    m_folder = std::make_unique<QTemporaryDir>();
}

void tst_cameraMemory::remembersAfterARestart()
{
    uint32_t minutes = 0;
    {
        const auto camera = create("te-cooler");
        camera->connect();
        QCOMPARE(zvtSetCameraSN(camera->handle(), "ZE-Ω"), 0);
        QCOMPARE(zvtSetCameraSubtype(camera->handle(), 200), 0);
        QCOMPARE(zvtMfgSetCoolerSetpoint(camera->handle(), -5.5F), 0);
        QCOMPARE(zvtMfgSetCoolerPowerEnabled(camera->handle(), false), 0);
        QCOMPARE(zvtMfgSetCoolerSetup(camera->handle(), 1.0F, 2.0F, 3.0F, 4.0F), 0);
        QCOMPARE(zvtSetRealTimeClock(camera->handle(), 30, 1, 2, 3, 4, 5), 0);
        QCOMPARE(zvtGetOperatingTime(camera->handle(), &minutes), 0);
        Clock::advance(10 * 60'000);
    }
    const auto camera = create("te-cooler");
    camera->connect();
    char text[64];
    QCOMPARE(zvtGetCameraSN(camera->handle(), text, sizeof text), 0);
    QCOMPARE(QString::fromUtf8(text), QStringLiteral("ZE-Ω"));
    QCOMPARE(zvtGetCameraModel(camera->handle(), text, sizeof text), 0);
    QCOMPARE(QString::fromUtf8(text), QStringLiteral("Tansy 320 N"));
    uint8_t byte = 0;
    QCOMPARE(zvtGetCameraSubtype(camera->handle(), &byte), 0);
    QCOMPARE(byte, uint8_t(200));
    float setpoint = 0;
    QCOMPARE(zvtMfgGetCoolerSetpoint(camera->handle(), &setpoint), 0);
    QCOMPARE(setpoint, -5.5F);
    QCOMPARE(zvtMfgGetCoolerPowerEnabled(camera->handle(), &byte), 0);
    QCOMPARE(byte, uint8_t(0));
    float p = 0, i = 0, d = 0, off = 0;
    QCOMPARE(zvtMfgGetCoolerSetup(camera->handle(), &p, &i, &d, &off), 0);
    QCOMPARE((QList<float>{p, i, d, off}), (QList<float>{1, 2, 3, 4}));
    uint8_t year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
    QCOMPARE(zvtGetRealTimeClock(camera->handle(), &year, &month, &day, &hour, &minute, &second), 0);
    QCOMPARE((QList<int>{year, month, day, hour, minute, second}), (QList<int>{30, 1, 2, 3, 14, 5}));
    uint32_t now = 0;
    QCOMPARE(zvtGetOperatingTime(camera->handle(), &now), 0);
    QCOMPARE(now, minutes + 10);
}

void tst_cameraMemory::writesAChangeByItself()
{
    const auto camera = create();
    camera->connect();
    QVERIFY(memoryOf(*camera).isEmpty());
    for (const char *serial : {"first", "second"}) {
        QCOMPARE(zvtSetCameraSN(camera->handle(), serial), 0);
        QTRY_VERIFY(memoryOf(*camera).contains(serial));
    }
}

void tst_cameraMemory::aDisconnectionWrites()
{
    const auto camera = create();
    for (const char *serial : {"first", "second"}) {
        camera->connect();
        QCOMPARE(zvtSetCameraSN(camera->handle(), "x"), 0);
        QCOMPARE(zvtSetCameraSN(camera->handle(), serial), 0);
        camera->disconnect();
        QVERIFY(memoryOf(*camera).contains(serial));
    }
}

void tst_cameraMemory::aDisconnectionUnderTheLockWrites()
{
    const auto camera = create();
    for (int round = 0; round < 20; ++round) {
        camera->connect();
        const std::lock_guard lock(camera->mutex());
        const QByteArray serial = "serial-" + QByteArray::number(round);
        QCOMPARE(zvtSetCameraSN(camera->handle(), serial), 0);
        camera->disconnect();
        QVERIFY(memoryOf(*camera).contains(serial));
    }
}

void tst_cameraMemory::aChangeCostsItsCallerLittle()
{
    constexpr int changes = 64;
    qint64 best = std::numeric_limits<qint64>::max();
    for (int round = 0; round < 10; ++round) {
        const auto camera = create();
        camera->connect();
        QElapsedTimer timer;
        timer.start();
        for (int change = 0; change < changes; ++change)
            zvtMfgSetCoolerSetpoint(camera->handle(), 70.0F + static_cast<float>(change) / 10);
        best = std::min(best, timer.nsecsElapsed() / changes);
    }
    QVERIFY2(best < 100'000, qPrintable(QString::number(best) + " ns"));
}

void tst_cameraMemory::aPolledCameraHasNoThread()
{
    // The first start writes the factory's list of bad pixels.
    create()->connect();
    const QSet<QString> before = threads();
    const auto camera = create();
    camera->connect();
    float kelvin = 0;
    QCOMPARE(zvtGetFPATemperature(camera->handle(), &kelvin), 0);
    camera->disconnect();
    QCOMPARE((threads() - before).size(), 0);
    camera->connect();
    QCOMPARE(zvtSetCameraSN(camera->handle(), "new"), 0);
    QCOMPARE((threads() - before).size(), 1);
}

void tst_cameraMemory::theNewestValuesAreWrittenLast()
{
    const auto camera = create();
    camera->connect();
    std::thread other([&] {
        for (int round = 0; round < 30; ++round)
            camera->flushMemory();
    });
    for (int round = 0; round < 30; ++round) {
        const std::string serial = "serial-" + std::to_string(round);
        zvtSetCameraSN(camera->handle(), serial.c_str());
        camera->disconnect();
        QVERIFY(memoryOf(*camera).contains(serial.c_str()));
        camera->connect();
    }
    other.join();
    QVERIFY(memoryOf(*camera).contains("serial-29"));
}

void tst_cameraMemory::warnsOfAFolderThatHasBecomeUnwritable()
{
    const auto camera = create("bare");
    camera->connect();
    const QString path = camera->folder() + QStringLiteral("/camera.json");
    QVERIFY(!QFile::exists(path));
    QVERIFY(QDir().mkpath(path));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^storage .*camera.json: cannot be written")));
    QCOMPARE(zvtSetCameraSN(camera->handle(), "new"), 0);
    camera->flushMemory();
    QVERIFY(QDir().rmdir(path));
    camera->disconnect();
    QVERIFY(contentOf(path).contains("new"));
}

void tst_cameraMemory::leavesARemovedFolderAlone()
{
    const auto camera = create("bare");
    m_folder.reset();
    camera->connect();
    QCOMPARE(zvtSetCameraSN(camera->handle(), "new"), 0);
    camera->flushMemory();
    QVERIFY(!QDir(camera->folder()).exists());
}

// A second process makes a camera that it does not end.
void tst_cameraMemory::theEndOfTheProcessWrites()
{
    QProcess process;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert("ZVT_TEST_FOLDER", m_folder->path());
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationFilePath(), {"tst_cameraMemory", "leavesACameraBehind"});
    QVERIFY(process.waitForFinished());
    QVERIFY2(process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0, process.readAll());
    QVERIFY(contentOf(m_folder->filePath("cameras/everything/camera.json")).contains("left behind"));
}

void tst_cameraMemory::leavesACameraBehind()
{
    const QString folder = qEnvironmentVariable("ZVT_TEST_FOLDER");
    if (folder.isEmpty())
        return;
    static auto *const camera = new std::shared_ptr(Camera::create("everything", folder));
    (*camera)->connect();
    // The thread writes the first change immediately, and would write the second one a second later.
    QCOMPARE(zvtSetCameraSN((*camera)->handle(), "first"), 0);
    QTRY_VERIFY(memoryOf(**camera).contains("first"));
    QCOMPARE(zvtSetCameraSN((*camera)->handle(), "left behind"), 0);
}

ZVT_TEST(tst_cameraMemory)
#include "tst_cameraMemory.moc"
