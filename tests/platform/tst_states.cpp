#include "platform/emulator/devices/StateStore.h"
#include "platform/hlxcamzvt/makeController.h"
#include "tests/platform/StateFixture.h"

#include <QDir>

#include <algorithm>
#include <ctime>
#include <functional>
#include <future>
#include <limits>
#include <mutex>
#include <random>

using namespace emulator;

class tst_states : public StateFixture
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

    void aNewCameraIsInItsFactoryDefault();
    void holdsEverythingThatASnapshotHolds();
    void undoesWhateverWasChanged();
    void bringsBackTheRateOfAFrameThatWasTooShort();
    void savesOverTheCurrentState();
    void doesNotSaveOverASpecialState();
    void refusesToSaveUnderAnInvalidName_data();
    void refusesToSaveUnderAnInvalidName();
    void takesTheLongestName();
    void tellsUpperFromLowerCase();
    void listsTheOldestStateFirst();
    void listsOnlyStates();
    void knowsWhichStatesExist();
    void leavesNothingBesideTheStates();
    void deletesAState();
    void renamesAState();
    void refusesToRename_data();
    void refusesToRename();
    void keepsItsNameWhenTheStateIsGone();
    void refusesToLoadWhatIsUnsound_data() { addUnsoundContents(); }
    void refusesToLoadWhatIsUnsound();
    void refusesToLoadWhatIsNotThere_data();
    void refusesToLoadWhatIsNotThere();
    void leavesDevicesAloneThatAStateDoesNotTellOf();
    void takesItsTime();
    void savesNothingWhenDisconnected();
    void savesNothingWithoutAFolder();
    void listsAThousandStatesQuickly();

private:
    /// Makes a random change that an operator could make.
    void changeSomething(std::mt19937 &random);

    int load(const char *name) { return m_controller->LoadState(name) ? 0 : m_camera->gate().calls().back().status; }

    hlx::TSharedPtr<hlx::cam::CZVTController> m_controller;
};

void tst_states::aNewCameraIsInItsFactoryDefault()
{
    QCOMPARE(current(), QStringLiteral("Factory Defaults"));
    uint8_t isFactory = 7;
    QCOMPARE(zvtIsFactoryDefaultState(m_handle, &isFactory), 0);
    QCOMPARE(isFactory, uint8_t(1));
    QCOMPARE(names(), QStringList());
    QVERIFY(!QFile::exists(m_camera->folder() + "/camera.json"));
}

void tst_states::holdsEverythingThatASnapshotHolds()
{
    QVERIFY(set("cooler.setpoint", 85.5));
    QVERIFY(set("sensor.window", QVariantList{16, 8, 320, 256}));
    QVERIFY(set("sensor.integrationTime", 3.0));
    const QJsonObject saved = m_camera->snapshot();
    QCOMPARE(zvtSaveStateAs(m_handle, "Nächtlich"), 0);
    QCOMPARE(current(), QStringLiteral("Nächtlich"));
    QCOMPARE(names(), QStringList{QStringLiteral("Nächtlich")});
    uint8_t isFactory = 7;
    QCOMPARE(zvtIsFactoryDefaultState(m_handle, &isFactory), 0);
    QCOMPARE(isFactory, uint8_t(0));

    QVERIFY(m_controller->LoadHardDefaults());
    QVERIFY(m_camera->snapshot() != saved);
    QCOMPARE(load("Nächtlich"), 0);
    QCOMPARE(m_camera->snapshot(), saved);
    QCOMPARE(current(), QStringLiteral("Nächtlich"));
}

void tst_states::changeSomething(std::mt19937 &random)
{
    const auto below = [&](int end) { return static_cast<int>(random() % static_cast<uint32_t>(end)); };
    set("cooler.setpoint", 60.0 + below(600) / 10.0);
    for (int n = 0; n < 10; ++n) {
        set("sensor.activePreset", below(4));
        set("sensor.window", QVariantList{below(20) * 16, below(60) * 4, (4 + below(16)) * 16, (1 + below(60)) * 4});
        set("sensor.sequencingMode", below(3));
        set("sensor.reduceNoise", below(2) == 1);
        set("sensor.integrationTime", 0.01 + below(30));
        set("sensor.frameRate", 1.0 + below(1000));
        m_controller->SetDwellCount(below(4), static_cast<unsigned int>(1 + below(9)));
        m_controller->SetSubframeEnabled(below(4), below(2) == 1);
        m_controller->SetSuperframeRate(1, 1.0 + below(100));
    }
}

void tst_states::undoesWhateverWasChanged()
{
    std::mt19937 random(1);
    for (int round = 0; round < 20; ++round) {
        changeSomething(random);
        QCOMPARE(zvtSaveStateAs(m_handle, "a"), 0);
        const QJsonObject saved = m_camera->snapshot();
        changeSomething(random);
        QVERIFY(m_camera->snapshot() != saved);
        QCOMPARE(load("a"), 0);
        QCOMPARE(m_camera->snapshot(), saved);
    }
}

void tst_states::bringsBackTheRateOfAFrameThatWasTooShort()
{
    const auto rate = [this] {
        double hertz = 0;
        m_controller->GetPresetFrameRate(0, &hertz);
        return hertz;
    };
    QCOMPARE(zvtSetIntegrationWidth(m_handle, 0, 400'000), 0);
    QCOMPARE(zvtSaveStateAs(m_handle, "a"), 0);
    const double saved = rate();
    m_controller->SetPresetFrameRate(0, 1, 2.0);
    QVERIFY(rate() < saved);
    QCOMPARE(load("a"), 0);
    QCOMPARE(rate(), saved);
}

void tst_states::savesOverTheCurrentState()
{
    QCOMPARE(zvtSaveStateAs(m_handle, "a"), 0);
    QCOMPARE(zvtSaveStateAs(m_handle, "b"), 0);
    QCOMPARE(load("a"), 0);
    QVERIFY(set("cooler.setpoint", 66.0));
    const QJsonObject saved = m_camera->snapshot();
    QCOMPARE(zvtSaveState(m_handle), 0);
    QCOMPARE(load("b"), 0);
    QVERIFY(m_camera->snapshot() != saved);
    QCOMPARE(load("a"), 0);
    QCOMPARE(m_camera->snapshot(), saved);
}

void tst_states::doesNotSaveOverASpecialState()
{
    QCOMPARE(zvtSaveState(m_handle), int(Refused));
    QVERIFY(m_controller->LoadHardDefaults());
    QCOMPARE(zvtSaveState(m_handle), int(Refused));
    QCOMPARE(current(), QStringLiteral("Hard Defaults"));
    QVERIFY(QDir(m_camera->folder() + "/states").isEmpty());
    QVERIFY(!QFile::exists(m_camera->folder() + "/factory.qsf"));
}

void tst_states::refusesToSaveUnderAnInvalidName_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("blanks") << QByteArray("  ");
    QTest::newRow("leading blank") << QByteArray(" x");
    for (const char forbidden : std::string("/\\:\"*?<>|"))
        QTest::addRow("forbidden %c", forbidden) << QByteArray("a") + forbidden + "b";
    QTest::newRow("out of the folder") << QByteArray("../x");
    QTest::newRow("too long") << QByteArray(200, 'x');
    QTest::newRow("no UTF-8") << QByteArray("x\xff");
    QTest::newRow("the factory default") << QByteArray("Factory Defaults");
    QTest::newRow("the hard defaults") << QByteArray("Hard Defaults");
}

void tst_states::refusesToSaveUnderAnInvalidName()
{
    QFETCH(QByteArray, name);
    QCOMPARE(zvtSaveStateAs(m_handle, "old"), 0);
    const int64_t before = Clock::now();
    QCOMPARE(zvtSaveStateAs(m_handle, name.constData()), int(Refused));
    QCOMPARE(zvtRenameState(m_handle, "old", name.constData()), int(Refused));
    QCOMPARE(Clock::now(), before);
    QCOMPARE(current(), QStringLiteral("old"));
    QCOMPARE(names(), QStringList{QStringLiteral("old")});
}

void tst_states::takesTheLongestName()
{
    const QByteArray name = QByteArray("€").repeated(66) + 'x';
    QCOMPARE(name.size(), qsizetype(199));
    QCOMPARE(zvtSaveStateAs(m_handle, name.constData()), 0);
    QCOMPARE(load(name.constData()), 0);
    QCOMPARE(current(), QString::fromUtf8(name));
    QCOMPARE(names(), QStringList{QString::fromUtf8(name)});
}

void tst_states::tellsUpperFromLowerCase()
{
    for (const char *name : {"night", "Night", "hard defaults", ".", ".hidden"})
        QCOMPARE(zvtSaveStateAs(m_handle, name), 0);
    QCOMPARE(names().size(), 5);
    QVERIFY(zvtStateExists(m_handle, "NIGHT") != 0);
    QCOMPARE(zvtRenameState(m_handle, "night", "NIGHT"), 0);
    QCOMPARE(zvtStateExists(m_handle, "Night"), 0);
    QCOMPARE(load("hard defaults"), 0);
    QCOMPARE(current(), QStringLiteral("hard defaults"));
}

void tst_states::listsTheOldestStateFirst()
{
    QCOMPARE(zvtSaveStateAs(m_handle, "b"), 0);
    Clock::advance(60'000);
    QCOMPARE(zvtSaveStateAs(m_handle, "a"), 0);
    QCOMPARE(names(), (QStringList{QStringLiteral("b"), QStringLiteral("a")}));
    hlx::TArray<zvtSDirEntry> entries{{"of before", 0, 0, 0}};
    QCOMPARE(zvtListStates(m_handle, &entries), 0);
    QCOMPARE(entries.size(), size_t(2));
    QCOMPARE(entries[0].kind, 0U);
    QCOMPARE(qint64(entries[0].size), QFileInfo(stateFile(QStringLiteral("b"))).size());
    const QDateTime epoch(QDate(1601, 1, 1), QTime(0, 0), Qt::UTC);
    QCOMPARE(epoch.addMSecs(qint64(entries[1].time100ns / 10'000)).toMSecsSinceEpoch(), Clock::now());
    QCOMPARE(entries[1].time100ns - entries[0].time100ns, uint64_t(60'400) * 10'000);

    Clock::advance(1000);
    QCOMPARE(load("b"), 0);
    QCOMPARE(zvtSaveState(m_handle), 0);
    QCOMPARE(names(), (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
}

void tst_states::listsOnlyStates()
{
    for (const char *name :
         {"good.qsf", "x.QSF", "x.txt", "qsf", ".qsf", " x.qsf", "a:b.qsf", "night.qsf.aBcDeF", "Factory Defaults.qsf"})
        write(m_camera->folder() + "/states/" + name, "x");
    QVERIFY(QDir(m_camera->folder()).mkpath(QStringLiteral("states/folder.qsf")));
    QCOMPARE(names(), QStringList{QStringLiteral("good")});
    QVERIFY(zvtStateExists(m_handle, "folder") != 0);
}

void tst_states::knowsWhichStatesExist()
{
    QCOMPARE(zvtStateExists(m_handle, "a"), int(Refused));
    QCOMPARE(zvtSaveStateAs(m_handle, "a"), 0);
    QCOMPARE(zvtSaveFactoryDefaults(m_handle), 0);
    QCOMPARE(zvtStateExists(m_handle, "a"), 0);
    for (const char *name : {"", "b", "A", "a.qsf", "../factory", "Factory Defaults", "Hard Defaults"})
        QCOMPARE(zvtStateExists(m_handle, name), int(Refused));
}

void tst_states::leavesNothingBesideTheStates()
{
    QCOMPARE(zvtSaveStateAs(m_handle, "a"), 0);
    QCOMPARE(zvtSaveState(m_handle), 0);
    const QDir folder(m_camera->folder() + "/states");
    QCOMPARE(folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList{QStringLiteral("a.qsf")});
}

void tst_states::deletesAState()
{
    QCOMPARE(zvtSaveStateAs(m_handle, "a"), 0);
    QCOMPARE(zvtSaveStateAs(m_handle, "b"), 0);
    QCOMPARE(zvtDeleteState(m_handle, "a"), 0);
    QCOMPARE(names(), QStringList{QStringLiteral("b")});
    for (const char *name : {"a", "", "../camera", "../states/b", "Factory Defaults"})
        QCOMPARE(zvtDeleteState(m_handle, name), int(Refused));
    QCOMPARE(names(), QStringList{QStringLiteral("b")});
}

void tst_states::renamesAState()
{
    QCOMPARE(zvtSaveStateAs(m_handle, "a"), 0);
    const QByteArray content = contentOf(stateFile(QStringLiteral("a")));
    const QDateTime time = QFileInfo(stateFile(QStringLiteral("a"))).lastModified();
    Clock::advance(60'000);
    QCOMPARE(zvtRenameState(m_handle, "a", "Übung"), 0);
    QCOMPARE(names(), QStringList{QStringLiteral("Übung")});
    QCOMPARE(contentOf(stateFile(QStringLiteral("Übung"))), content);
    QCOMPARE(QFileInfo(stateFile(QStringLiteral("Übung"))).lastModified(), time);
}

void tst_states::refusesToRename_data()
{
    QTest::addColumn<QByteArray>("from");
    QTest::addColumn<QByteArray>("to");
    QTest::newRow("missing") << QByteArray("c") << QByteArray("d");
    QTest::newRow("taken") << QByteArray("a") << QByteArray("b");
    QTest::newRow("itself") << QByteArray("a") << QByteArray("a");
    QTest::newRow("invalid source") << QByteArray("../states/a") << QByteArray("d");
    QTest::newRow("invalid target") << QByteArray("a") << QByteArray("../d");
    QTest::newRow("to the factory default") << QByteArray("a") << QByteArray("Factory Defaults");
    QTest::newRow("the factory default") << QByteArray("Factory Defaults") << QByteArray("d");
}

void tst_states::refusesToRename()
{
    QFETCH(QByteArray, from);
    QFETCH(QByteArray, to);
    QCOMPARE(zvtSaveFactoryDefaults(m_handle), 0);
    QCOMPARE(zvtSaveStateAs(m_handle, "a"), 0);
    QVERIFY(set("cooler.setpoint", 66.0));
    QCOMPARE(zvtSaveStateAs(m_handle, "b"), 0);
    const QByteArray a = contentOf(stateFile(QStringLiteral("a")));
    const QByteArray b = contentOf(stateFile(QStringLiteral("b")));
    QVERIFY(a != b);
    QCOMPARE(zvtRenameState(m_handle, from.constData(), to.constData()), int(Refused));
    QCOMPARE(names(), (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
    QCOMPARE(contentOf(stateFile(QStringLiteral("a"))), a);
    QCOMPARE(contentOf(stateFile(QStringLiteral("b"))), b);
    QVERIFY(QFile::exists(m_camera->folder() + "/factory.qsf"));
}

void tst_states::keepsItsNameWhenTheStateIsGone()
{
    QCOMPARE(zvtSaveStateAs(m_handle, "a"), 0);
    QCOMPARE(zvtRenameState(m_handle, "a", "b"), 0);
    QCOMPARE(current(), QStringLiteral("a"));
    QCOMPARE(zvtDeleteState(m_handle, "b"), 0);
    QCOMPARE(current(), QStringLiteral("a"));
    QCOMPARE(load("a"), int(Refused));
    QCOMPARE(zvtSaveState(m_handle), 0);
    QCOMPARE(names(), QStringList{QStringLiteral("a")});
}

void tst_states::refusesToLoadWhatIsUnsound()
{
    QFETCH(QByteArray, content);
    QCOMPARE(zvtSaveStateAs(m_handle, "good"), 0);
    write(stateFile(QStringLiteral("bad")), content);
    write(m_camera->folder() + "/factory.qsf", content);
    const QJsonObject before = m_camera->snapshot();
    m_camera->flushMemory();
    const QByteArray memory = contentOf(m_camera->folder() + "/camera.json");
    const int64_t time = Clock::now();
    QCOMPARE(load("bad"), int(Refused));
    QVERIFY(!m_controller->LoadFactoryDefaults());
    QVERIFY(!set("states.current", QStringLiteral("bad")));
    QCOMPARE(Clock::now(), time);
    QCOMPARE(m_camera->snapshot(), before);
    QCOMPARE(current(), QStringLiteral("good"));
    m_camera->flushMemory();
    QCOMPARE(contentOf(m_camera->folder() + "/camera.json"), memory);
    QCOMPARE(contentOf(stateFile(QStringLiteral("bad"))), content);
}

void tst_states::refusesToLoadWhatIsNotThere_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("missing") << QByteArray("nobody");
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("other case") << QByteArray("GOOD");
    QTest::newRow("path") << QByteArray("../states/good");
    QTest::newRow("folder") << QByteArray("folder");
    QTest::newRow("factory default by its name") << QByteArray("Factory Defaults");
    QTest::newRow("hard defaults by their name") << QByteArray("Hard Defaults");
}

void tst_states::refusesToLoadWhatIsNotThere()
{
    QFETCH(QByteArray, name);
    QVERIFY(set("cooler.setpoint", 66.0));
    QCOMPARE(zvtSaveStateAs(m_handle, "good"), 0);
    QVERIFY(QDir(m_camera->folder()).mkpath(QStringLiteral("states/folder.qsf")));
    const QJsonObject before = m_camera->snapshot();
    QCOMPARE(load(name.constData()), int(Refused));
    QCOMPARE(m_camera->snapshot(), before);
    QCOMPARE(current(), QStringLiteral("good"));
}

void tst_states::leavesDevicesAloneThatAStateDoesNotTellOf()
{
    QVERIFY(set("cooler.setpoint", 66.0));
    QVERIFY(set("sensor.activePreset", 2));
    const QJsonObject before = m_camera->snapshot();
    write(stateFile(QStringLiteral("old")),
          toStateFile(QStringLiteral("everything"),
                      {{QStringLiteral("sensor"), QJsonObject{{QStringLiteral("activePreset"), 1}}},
                       {QStringLiteral("identity"), QJsonObject{{QStringLiteral("serial"), QStringLiteral("stolen")}}},
                       {QStringLiteral("warp drive"), QJsonObject{{QStringLiteral("factor"), 9}}}}));
    QCOMPARE(load("old"), 0);
    QVERIFY(set("sensor.activePreset", 2));
    QCOMPARE(m_camera->snapshot(), before);
    char serial[64];
    QCOMPARE(zvtGetCameraSN(m_handle, serial, sizeof serial), 0);
    QCOMPARE(serial, "ZE-100001");
}

void tst_states::takesItsTime()
{
    const auto timeOf = [](const std::function<bool()> &operation) {
        const int64_t before = Clock::now();
        return operation() ? Clock::now() - before : -1;
    };
    QCOMPARE(timeOf([&] { return zvtSaveStateAs(m_handle, "a") == 0; }), int64_t(400));
    QCOMPARE(timeOf([&] { return zvtSaveState(m_handle) == 0; }), int64_t(400));
    QCOMPARE(timeOf([&] { return zvtSaveFactoryDefaults(m_handle) == 0; }), int64_t(400));
    QCOMPARE(timeOf([&] { return m_controller->LoadState("a"); }), int64_t(800));
    QCOMPARE(timeOf([&] { return m_controller->LoadFactoryDefaults(); }), int64_t(800));
    QCOMPARE(timeOf([&] { return m_controller->LoadHardDefaults(); }), int64_t(800));
}

void tst_states::savesNothingWhenDisconnected()
{
    QCOMPARE(zvtSaveStateAs(m_handle, "a"), 0);
    const QJsonObject before = m_camera->snapshot();
    QVERIFY(set("cooler.setpoint", 66.0));
    const size_t mark = m_camera->gate().mark();
    // Locked, so that both calls wait to start while the camera is disconnected.
    std::unique_lock lock(m_camera->mutex());
    auto save = std::async(std::launch::async, [this] { return zvtSaveStateAs(m_handle, "b"); });
    auto load = std::async(std::launch::async, [this] { return m_controller->LoadState("a"); });
    QTRY_COMPARE(m_camera->gate().callsSince(mark).size(), size_t(2));
    m_camera->disconnect();
    lock.unlock();
    QCOMPARE(save.get(), int(NotConnected));
    QVERIFY(!load.get());
    m_camera->connect();
    QCOMPARE(names(), QStringList{QStringLiteral("a")});
    QCOMPARE(current(), QStringLiteral("a"));
    QVERIFY(m_camera->snapshot() != before);
}

void tst_states::savesNothingWithoutAFolder()
{
    QVERIFY(QDir(m_camera->folder() + "/states").removeRecursively());
    QCOMPARE(zvtSaveStateAs(m_handle, "a"), int(Refused));
    QCOMPARE(current(), QStringLiteral("Factory Defaults"));
    QCOMPARE(names(), QStringList());
}

void tst_states::listsAThousandStatesQuickly()
{
    const auto fill = [this](int from, int to) {
        // The contents of the files do not matter for the list.
        for (int n = from; n < to; ++n)
            write(stateFile(QString::number(n)), QByteArray(10'000, 'x'));
    };
    // Processor time, since other programs run meanwhile.
    const auto fastest = [this] {
        std::clock_t best = std::numeric_limits<std::clock_t>::max();
        for (int round = 0; round < 10; ++round) {
            const std::clock_t begin = std::clock();
            names();
            best = std::min(best, std::clock() - begin);
        }
        return std::max<std::clock_t>(best, 1);
    };
    fill(0, 100);
    QCOMPARE(names().size(), 100);
    const auto hundred = fastest();
    fill(100, 1000);
    QCOMPARE(names().size(), 1000);
    const auto thousand = fastest();
    QVERIFY2(thousand < 40 * hundred, qPrintable(QStringLiteral("%1 and %2 ticks").arg(hundred).arg(thousand)));
}

ZVT_TEST(tst_states)
#include "tst_states.moc"
