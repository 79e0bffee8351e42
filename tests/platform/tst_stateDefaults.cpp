#include "platform/emulator/devices/EventQueue.h"
#include "platform/hlxcamzvt/makeController.h"
#include "tests/platform/StateFixture.h"
#include "tests/platform/settingOf.h"

#include <QDir>
#include <QJsonDocument>

#include <atomic>
#include <functional>
#include <future>
#include <vector>

using namespace emulator;

/// The two special states, the loads of the controller, and the values that outlive a restart.
class tst_stateDefaults : public StateFixture
{
    Q_OBJECT

private slots:
    void init()
    {
        StateFixture::init();
        m_controller = hlx::cam::makeController(m_camera);
    }

    void cleanup()
    {
        m_controller.reset();
        StateFixture::cleanup();
    }

    void hardDefaultsAreThoseOfTheProfile_data();
    void hardDefaultsAreThoseOfTheProfile();
    void theFactoryDefaultOfANewCameraIsItsProfile();
    void theFactoryDefaultCanBeSaved();
    void hardDefaultsStayWhatTheyAre();
    void loadsPassTheGate_data();
    void loadsPassTheGate();
    void aNullNameIsRefused();
    void aLoadBringsTheCapabilitiesUpToDate();
    void aLoadOfOnesOwnIsNoEvent();
    void aLoadOfAnotherClientIsAnEvent();
    void anotherClientLoadsNothingThatThereIsNot();
    void theMemoryAgreesWithALoad();
    void wakesUpInItsState();
    void wakesUpInItsFactoryDefault_data();
    void wakesUpInItsFactoryDefault();
    void everythingMayOverlap();

private:
    void restart(const QString &profile = QStringLiteral("everything"))
    {
        m_controller.reset();
        switchOn(profile);
        m_controller = hlx::cam::makeController(m_camera);
    }

    double setpoint() const { return settingOf(*m_camera, "cooler.setpoint").toDouble(); }

    int activePreset() const
    {
        uint8_t preset = 255;
        zvtGetActivePreset(m_handle, &preset);
        return preset;
    }

    hlx::TSharedPtr<hlx::cam::CZVTController> m_controller;
};

void tst_stateDefaults::hardDefaultsAreThoseOfTheProfile_data()
{
    QTest::addColumn<QString>("profile");
    for (const QString &name : Profile::names())
        QTest::newRow(qPrintable(name)) << name;
}

void tst_stateDefaults::hardDefaultsAreThoseOfTheProfile()
{
    QFETCH(QString, profile);
    restart(profile);
    const QJsonObject before = m_camera->snapshot();
    QCOMPARE(before, m_camera->newSettings());
    QVERIFY(m_controller->LoadHardDefaults());
    QCOMPARE(m_camera->snapshot(), before);
    QCOMPARE(current(), QStringLiteral("Hard Defaults"));
    uint8_t isFactory = 7;
    QCOMPARE(zvtIsFactoryDefaultState(m_handle, &isFactory), 0);
    QCOMPARE(isFactory, uint8_t(0));
}

void tst_stateDefaults::theFactoryDefaultOfANewCameraIsItsProfile()
{
    QVERIFY(set("cooler.setpoint", 66.0));
    QCOMPARE(zvtSaveStateAs(m_handle, "a"), 0);
    QVERIFY(m_controller->LoadFactoryDefaults());
    QCOMPARE(m_camera->snapshot(), m_camera->newSettings());
    QCOMPARE(current(), QStringLiteral("Factory Defaults"));
}

void tst_stateDefaults::theFactoryDefaultCanBeSaved()
{
    QCOMPARE(zvtSaveStateAs(m_handle, "a"), 0);
    QVERIFY(set("cooler.setpoint", 66.0));
    const QJsonObject saved = m_camera->snapshot();
    QCOMPARE(zvtSaveFactoryDefaults(m_handle), 0);
    QCOMPARE(current(), QStringLiteral("Factory Defaults"));
    QCOMPARE(names(), QStringList{QStringLiteral("a")});
    QVERIFY(m_controller->LoadState("a"));
    QVERIFY(m_camera->snapshot() != saved);
    uint8_t isFactory = 7;
    QCOMPARE(zvtIsFactoryDefaultState(m_handle, &isFactory), 0);
    QCOMPARE(isFactory, uint8_t(0));
    QVERIFY(m_controller->LoadFactoryDefaults());
    QCOMPARE(m_camera->snapshot(), saved);
    QCOMPARE(zvtIsFactoryDefaultState(m_handle, &isFactory), 0);
    QCOMPARE(isFactory, uint8_t(1));
}

void tst_stateDefaults::hardDefaultsStayWhatTheyAre()
{
    const QJsonObject made = m_camera->newSettings();
    QVERIFY(set("cooler.setpoint", 66.0));
    QCOMPARE(zvtSaveFactoryDefaults(m_handle), 0);
    restart();
    QCOMPARE(setpoint(), 66.0);
    QVERIFY(m_controller->LoadHardDefaults());
    QCOMPARE(m_camera->snapshot(), made);
}

void tst_stateDefaults::loadsPassTheGate_data()
{
    using Load = std::function<bool(hlx::cam::CZVTController &)>;
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("arguments");
    QTest::addColumn<Load>("load");
    QTest::newRow("state") << QByteArray("controller.LoadState") << QByteArray("\"a\"")
                           << Load([](auto &c) { return c.LoadState("a"); });
    QTest::newRow("factory") << QByteArray("controller.LoadFactoryDefaults") << QByteArray()
                             << Load([](auto &c) { return c.LoadFactoryDefaults(); });
    QTest::newRow("hard") << QByteArray("controller.LoadHardDefaults") << QByteArray()
                          << Load([](auto &c) { return c.LoadHardDefaults(); });
}

void tst_stateDefaults::loadsPassTheGate()
{
    using Load = std::function<bool(hlx::cam::CZVTController &)>;
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, arguments);
    QFETCH(Load, load);
    QCOMPARE(zvtSaveStateAs(m_handle, "a"), 0);
    QCOMPARE(zvtSaveStateAs(m_handle, "b"), 0);
    QVERIFY(set("cooler.setpoint", 66.0));
    const QJsonObject before = m_camera->snapshot();
    const auto lastCall = [this] { return m_camera->gate().calls().back(); };

    m_camera->gate().failNext(name.toStdString());
    QVERIFY(!load(*m_controller));
    QCOMPARE(lastCall().status, int(Injected));
    m_camera->disconnect();
    QVERIFY(!load(*m_controller));
    QCOMPARE(lastCall().status, int(NotConnected));
    m_camera->connect();
    QVERIFY(!load(*hlx::cam::makeController(nullptr)));
    QCOMPARE(m_camera->snapshot(), before);
    QCOMPARE(current(), QStringLiteral("b"));

    const size_t mark = m_camera->gate().mark();
    QVERIFY(load(*m_controller));
    const auto calls = m_camera->gate().callsSince(mark);
    QCOMPARE(calls.size(), size_t(1));
    QCOMPARE(calls[0].name, name.toStdString());
    QCOMPARE(calls[0].arguments, arguments.toStdString());
    QVERIFY(m_camera->snapshot() != before);
}

void tst_stateDefaults::aNullNameIsRefused()
{
    QVERIFY(!m_controller->LoadState(nullptr));
    QCOMPARE(m_camera->gate().calls().back().status, int(Refused));
}

void tst_stateDefaults::aLoadBringsTheCapabilitiesUpToDate()
{
    QVERIFY(m_controller->capabilities.hasSsd());
    QVERIFY(m_camera->changeMakeUp(QStringLiteral("hasSsd"), false));
    QVERIFY(!m_controller->LoadState("missing"));
    QVERIFY(m_controller->capabilities.hasSsd());
    QVERIFY(m_controller->LoadFactoryDefaults());
    QVERIFY(!m_controller->capabilities.hasSsd());
}

void tst_stateDefaults::aLoadOfOnesOwnIsNoEvent()
{
    QCOMPARE(zvtSaveStateAs(m_handle, "a"), 0);
    QVERIFY(m_controller->LoadState("a"));
    QVERIFY(m_controller->LoadHardDefaults());
    zvtEEventType event = ZVT_EVENT_MAKE_UP_CHANGED;
    QCOMPARE(zvtReadEventQueue(m_handle, &event), 0);
    QCOMPARE(event, ZVT_EVENT_NONE);
}

void tst_stateDefaults::aLoadOfAnotherClientIsAnEvent()
{
    const QJsonObject before = m_camera->snapshot();
    QCOMPARE(zvtSaveStateAs(m_handle, "Größe"), 0);
    for (const QString &name :
         {QStringLiteral("Größe"), QStringLiteral("Factory Defaults"), QStringLiteral("Hard Defaults")}) {
        QVERIFY(set("cooler.setpoint", 66.0));
        while (m_camera->device<EventQueue>()->take() != ZVT_EVENT_NONE) { }
        QVERIFY(set("states.current", name));
        QCOMPARE(m_camera->device<EventQueue>()->take(), ZVT_EVENT_SETTINGS_CHANGED);
        QCOMPARE(m_camera->snapshot(), before);
        QCOMPARE(current(), name);
    }
}

void tst_stateDefaults::anotherClientLoadsNothingThatThereIsNot()
{
    for (const char *name : {"missing", "", "../states/a"})
        QVERIFY(!set("states.current", QLatin1String(name)));
    QVERIFY(!set("states.colour", QStringLiteral("Hard Defaults")));
    QCOMPARE(m_camera->device<EventQueue>()->take(), ZVT_EVENT_NONE);
    QCOMPARE(current(), QStringLiteral("Factory Defaults"));
}

void tst_stateDefaults::theMemoryAgreesWithALoad()
{
    QVERIFY(set("cooler.setpoint", 66.0));
    QCOMPARE(zvtSaveStateAs(m_handle, "a"), 0);
    QVERIFY(m_controller->LoadHardDefaults());
    QVERIFY(m_controller->LoadState("a"));
    m_camera->flushMemory();
    const QByteArray memory = contentOf(m_camera->folder() + "/camera.json");
    const auto values = QJsonDocument::fromJson(memory)[QLatin1String("values")].toObject();
    QCOMPARE(values[QLatin1String("states")].toObject()[QLatin1String("current")].toString(), QStringLiteral("a"));
    // Only the memory contains the power of the cooler.
    QJsonObject cooler = m_camera->snapshot()[QLatin1String("cooler")].toObject();
    cooler[QLatin1String("power")] = true;
    QCOMPARE(values[QLatin1String("cooler")].toObject(), cooler);
}

void tst_stateDefaults::wakesUpInItsState()
{
    QVERIFY(set("sensor.activePreset", 2));
    QVERIFY(set("cooler.setpoint", 66.0));
    QCOMPARE(zvtSaveStateAs(m_handle, "a"), 0);
    QVERIFY(set("sensor.activePreset", 1));
    QVERIFY(set("cooler.setpoint", 67.0));
    restart();
    QCOMPARE(current(), QStringLiteral("a"));
    QCOMPARE(activePreset(), 2);
    // The cooler remembers its own values: this is the last setpoint.
    QCOMPARE(setpoint(), 67.0);
    QVERIFY(m_controller->LoadHardDefaults());
    restart();
    QCOMPARE(current(), QStringLiteral("Hard Defaults"));
    QCOMPARE(m_camera->snapshot(), m_camera->newSettings());
}

void tst_stateDefaults::wakesUpInItsFactoryDefault_data()
{
    QTest::addColumn<bool>("deleted");
    QTest::newRow("state deleted") << true;
    QTest::newRow("state damaged") << false;
}

void tst_stateDefaults::wakesUpInItsFactoryDefault()
{
    QFETCH(bool, deleted);
    QVERIFY(set("sensor.activePreset", 3));
    QCOMPARE(zvtSaveFactoryDefaults(m_handle), 0);
    QVERIFY(set("sensor.activePreset", 2));
    QCOMPARE(zvtSaveStateAs(m_handle, "a"), 0);
    if (deleted)
        QCOMPARE(zvtDeleteState(m_handle, "a"), 0);
    else
        write(stateFile(QStringLiteral("a")), "damaged");
    QCOMPARE(activePreset(), 2);
    restart();
    QCOMPARE(current(), QStringLiteral("Factory Defaults"));
    QCOMPARE(activePreset(), 3);
}

void tst_stateDefaults::everythingMayOverlap()
{
    QCOMPARE(zvtSaveStateAs(m_handle, "a"), 0);
    const auto inBackground = [](const std::function<void(int)> &operation) {
        return std::async(std::launch::async, [operation] {
            for (int round = 0; round < 50; ++round)
                operation(round);
        });
    };
    const QString copy = m_folder->filePath(QStringLiteral("b.qsf"));
    write(copy, otherState());
    std::vector<std::future<void>> threads;
    threads.push_back(inBackground([this](int) { zvtSaveStateAs(m_handle, "b"); }));
    threads.push_back(inBackground([this](int) { m_controller->LoadState("b"); }));
    threads.push_back(inBackground([this](int) { zvtRenameState(m_handle, "b", "c"); }));
    threads.push_back(inBackground([this](int) { zvtDeleteState(m_handle, "c"); }));
    threads.push_back(inBackground([&](int) { zvtUploadStateStd(m_handle, qPrintable(copy), nullptr); }));
    std::atomic<int> torn{0};
    threads.push_back(inBackground([&](int round) {
        const QString file = m_folder->filePath(QStringLiteral("%1.qsf").arg(round));
        if (zvtDownloadStateStd(m_handle, "b", qPrintable(file), nullptr) == 0
            && !fromStateFile(contentOf(file), QStringLiteral("everything")))
            ++torn;
    }));
    for (auto &thread : threads)
        thread.get();
    QCOMPARE(torn.load(), 0);
    for (const QString &name : names())
        QVERIFY(m_controller->LoadState(qPrintable(name)));
    QVERIFY(names().contains(QStringLiteral("a")));
    QCOMPARE(QDir(m_camera->folder() + "/states").entryList(QDir::Files | QDir::Hidden).size(), names().size());
}

ZVT_TEST(tst_stateDefaults)
#include "tst_stateDefaults.moc"
