#include "platform/emulator/CallRecorder.h"
#include "platform/emulator/CallReplay.h"
#include "platform/emulator/SetupError.h"
#include "platform/emulator/control.h"
#include "platform/emulator/dispatch.h"
#include "tests/support/Test.h"
#include "zvt/zvtsdk.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <future>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

using namespace emulator;

class tst_CallReplay : public Test
{
    Q_OBJECT

private slots:
    void init()
    {
        Test::init();
        Clock::manual();
        m_camera = Camera::create(QStringLiteral("everything"), m_folder.path());
        m_camera->connect();
        m_recorder.emplace(m_camera, file(), [](const QString &message) { qWarning("%s", qPrintable(message)); });
    }

    void cleanup()
    {
        m_recorder.reset();
        m_camera.reset();
        m_replay.reset();
        Clock::automatic();
    }

    void equalCallsGetTheirAnswersInOrder()
    {
        answer({5, 6, 7});
        replay();
        QCOMPARE(reads(4), (QList<int>{5, 6, 7, 7}));
    }

    void argumentsTellCallsApart()
    {
        get("test.get", 5, 1);
        get("test.get", 6, 2);
        get("test.get", 7, 1);
        replay();
        QCOMPARE(get("test.get", 0, 2), 6);
        QCOMPARE(get("test.get", 0, 1), 5);
        QCOMPARE(get("test.get", 0, 1), 7);
    }

    void failuresAreRepeated()
    {
        answer({5});
        m_camera->gate().failNext("test.get");
        answer({6});
        answer({7});
        replay();
        QCOMPARE(reads(3), (QList<int>{5, Injected, 7}));
    }

    void unknownCallsGoToTheCamera()
    {
        answer({5});
        replay();
        QCOMPARE(get("test.other", 9, 0), 9);
        QCOMPARE(get("test.get", 9, 1), 9);
    }

    void aCommandSeparatesTheAnswers()
    {
        answer({1, 2});
        command("test.set", Ok);
        answer({3, 4});
        replay();
        // More reads than were recorded do not show what the command will change.
        QCOMPARE(reads(3), (QList<int>{1, 2, 2}));
        command("test.set", Ok);
        QCOMPARE(reads(3), (QList<int>{3, 4, 4}));
    }

    void aCommandEndsTheAnswersBeforeIt()
    {
        answer({1, 2});
        command("test.set", Ok);
        answer({3});
        replay();
        QCOMPARE(reads(1), QList<int>{1});
        command("test.set", Ok);
        QCOMPARE(reads(1), QList<int>{3});
    }

    void anEarlyReadGetsItsFirstAnswer()
    {
        command("test.set", Ok);
        answer({3});
        replay();
        QCOMPARE(reads(2), (QList<int>{3, 3}));
    }

    void anEarlyReadDisturbsNoOtherAnswer()
    {
        answer({1});
        m_camera->disconnect();
        m_camera->connect();
        get("test.other", 2, 0);
        replay();
        QCOMPARE(get("test.other", 0, 0), 2);
        QCOMPARE(get("test.other", 0, 0), 2);
        QVERIFY(m_camera->connected());
        QCOMPARE(reads(1), QList<int>{1});
        QCOMPARE(get("test.other", 0, 0), int(NotConnected));
        QVERIFY(!m_camera->connected());
    }

    void anEarlyReadChangesNoCapabilities()
    {
        answer({1});
        command("test.set", Ok);
        recordLossOfSsd();
        get("test.other", 2, 0);
        replay();
        QCOMPARE(get("test.other", 0, 0), 2);
        QVERIFY(hasSsd());
        command("test.set", Ok);
        QCOMPARE(get("test.other", 0, 0), 2);
        QVERIFY(!hasSsd());
    }

    void commandsGetTheirResultsAndReachTheCamera()
    {
        command("test.set", Refused);
        command("test.set", Ok);
        replay();
        m_asked = 0;
        QCOMPARE(command("test.set", Ok), int(Refused));
        QCOMPARE(m_asked, 0);
        QCOMPARE(command("test.set", Absent), int(Ok));
        QCOMPARE(m_asked, 1);
        QCOMPARE(command("test.set", Absent), int(Ok));
    }

    void questionsAreNoCommands()
    {
        answer({1});
        command("zvtNUCExists", Ok);
        command("controller.GetVideoSource", Ok);
        answer({2});
        replay();
        QCOMPARE(reads(2), (QList<int>{1, 2}));
    }

    void theFrameworkAnswersItself()
    {
        bool value = true;
        const auto body = [&] { return value = !value, Ok; };
        QVERIFY(passGate(m_camera, "controller.Test", body, &value));
        replay();
        value = true;
        QVERIFY(passGate(m_camera, "controller.Test", body, &value));
        QVERIFY(!value);
    }

    void everyEventIsReturnedOnce()
    {
        m_camera->otherClient().set(QStringLiteral("cooler.setpoint"), 80);
        QList<int> recorded;
        for (int i = 0; i < 3; ++i)
            recorded += event();
        QVERIFY(recorded.contains(ZVT_EVENT_SETTINGS_CHANGED));
        replay();
        for (const int type : recorded)
            QCOMPARE(event(), type);
        for (int i = 0; i < 20; ++i)
            QVERIFY(event() != ZVT_EVENT_SETTINGS_CHANGED);
    }

    void capabilitiesChangeInTheirPlace()
    {
        event();
        recordLossOfSsd();
        replay();
        QVERIFY(hasSsd());
        while (event() != ZVT_EVENT_MAKE_UP_CHANGED)
            QVERIFY(hasSsd());
        QVERIFY(!hasSsd());
        // The emulated camera does not report the change again.
        for (int i = 0; i < 20; ++i)
            QVERIFY(event() != ZVT_EVENT_MAKE_UP_CHANGED);
    }

    void thePolledCableIsPulledAgain()
    {
        answer({1, 2});
        m_camera->disconnect();
        answer({3});
        m_camera->connect();
        answer({4});
        replay();
        QCOMPARE(reads(2), (QList<int>{1, 2}));
        QVERIFY(m_camera->connected());
        QCOMPARE(reads(1), QList<int>{NotConnected});
        QVERIFY(!m_camera->connected());
        m_camera->connect();
        QCOMPARE(reads(2), (QList<int>{4, 4}));
        QVERIFY(m_camera->connected());
    }

    void callsAtTheSameTimePullTheCableOnce()
    {
        answer({1});
        m_camera->disconnect();
        replay();
        QCOMPARE(reads(1), QList<int>{1});
        std::vector<std::future<int>> results;
        m_camera->gate().hold("test.get");
        for (int i = 0; i < 3; ++i)
            results.push_back(std::async(std::launch::async, [this] { return get("test.get", 0, 0); }));
        QVERIFY(m_camera->gate().waitHeld("test.get", 3));
        {
            // Only the call that disconnects the camera waits for its lock.
            const std::lock_guard lock(m_camera->mutex());
            m_camera->gate().release("test.get");
            QTRY_COMPARE(std::ranges::count_if(results, &isReady), 2);
        }
        for (auto &result : results)
            QCOMPARE(result.get(), int(NotConnected));
        QVERIFY(!m_camera->connected());
    }

    void aDisconnectionByTheOperatorIsTheRecordedOne()
    {
        answer({1});
        m_camera->disconnect();
        m_camera->connect();
        answer({2});
        replay();
        QCOMPARE(reads(1), QList<int>{1});
        m_camera->disconnect();
        m_camera->connect();
        QCOMPARE(reads(2), (QList<int>{2, 2}));
        QVERIFY(m_camera->connected());
    }

    void theCameraHasProfileAndSettingsOfTheRecordedOne()
    {
        m_recorder.reset();
        m_camera->otherClient().set(QStringLiteral("cooler.setpoint"), 80);
        m_recorder.emplace(m_camera, file(), std::function<void(const QString &)>());
        const QJsonObject settings = m_camera->snapshot();
        replay();
        QCOMPARE(m_camera->profile().name(), QStringLiteral("everything"));
        QCOMPARE(m_camera->snapshot(), settings);
    }

    void aWrongLineIsNamed_data()
    {
        QTest::addColumn<int>("line");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("why");
        const auto row = [](const char *name, int line, const QByteArray &content, const char *why) {
            QTest::newRow(name) << line << content << QString::fromLatin1(why);
        };
        row("no JSON", 3, "hello\n", "line 3: not JSON at byte 1: illegal value");
        row("a list", 3, "[1]\n", "line 3: must be an object");
        row("empty line", 2, "\n", "line 2: not JSON at byte 1: illegal value");
        row("unknown kind", 3, "{\"kind\": \"frame\"}\n", "line 3: kind: there is no \"frame\"");
        row("no kind", 3, "{}\n", "line 3: kind: must be a text");
        row("no name", 3, "{\"kind\": \"call\"}\n", "line 3: name: must be a text");
        row("status in words", 3,
            R"({"kind":"call","name":"a","arguments":"","status":"bad"})"
            "\n",
            "line 3: status: must be a number");
        row("no number", 3,
            R"({"kind":"call","name":"a","arguments":"","status":0})"
            "\n",
            "line 3: number: must be a number");
        row("results that are no list", 3,
            R"({"kind":"call","name":"a","arguments":"","status":0,"results":5})"
            "\n",
            "line 3: results: must be a list");
        row("results of a failure", 3,
            R"({"kind":"call","name":"a","arguments":"","status":-3,"results":[5]})"
            "\n",
            "line 3: results: must be null after a failure");
        row("connected in words", 3,
            R"({"kind":"connection","number":1,"connected":"no"})"
            "\n",
            "line 3: connected: must be true or false");
        row("capabilities in words", 3,
            R"({"kind":"capabilities","number":1,"time":1,"capabilities":{"hasSsd":"no"}})"
            "\n",
            "line 3: capabilities.hasSsd: must be true or false");
        row("an unknown capability", 3,
            R"({"kind":"capabilities","number":1,"time":1,"capabilities":{"hasWings":true}})"
            "\n",
            "line 3: capabilities.hasWings: ");
        row("time in words", 3,
            R"({"kind":"connection","number":1,"connected":true,"time":"noon"})"
            "\n",
            "line 3: time: must be a number");
        row("another format", 1, "{\"format\": \"zvt-frames\"}\n", "line 1: not the start of a recording of calls");
        row("a newer version", 1, "{\"format\": \"zvt-calls\", \"version\": 2}\n", "line 1: version: must be 1");
        row("a path as name", 1,
            R"({"format":"zvt-calls","version":1,"profileName":"../x","profile":{},"settings":{}})"
            "\n",
            "line 1: profileName: must be a file name");
        row("a name of too many bytes", 1,
            R"({"format":"zvt-calls","version":1,"profileName":")" + QByteArray("\xe2\x82\xac").repeated(90)
                + R"(","profile":{},"settings":{}})"
                  "\n",
            "line 1: profileName: must be a file name");
        row("a name with a zero", 1,
            R"({"format":"zvt-calls","version":1,"profileName":"x\u0000","profile":{},"settings":{}})"
            "\n",
            "line 1: profileName: must be a file name");
        row("a bad profile", 1,
            R"({"format":"zvt-calls","version":1,"profileName":"x","profile":{"colour":1},"settings":{}})"
            "\n",
            "line 1: profile");
        row("cut off", 4, "{\"kind\": ", "line 4: cut off");
    }

    void aWrongLineIsNamed()
    {
        QFETCH(int, line);
        QFETCH(QByteArray, content);
        QFETCH(QString, why);
        answer({1, 2, 3});
        auto lines = recorded();
        lines[line - 1] = content;
        const QString message = refusal(lines.mid(0, content.endsWith('\n') ? lines.size() : line).join());
        QVERIFY2(message.startsWith("recording " + file() + ": " + why), qPrintable(message));
    }

    void filesThatAreNoRecordingsAreRefused()
    {
        QCOMPARE(refusal(""), "recording " + file() + ": line 1: cut off");
        QVERIFY(messageOf(m_folder.filePath("missing")).contains("cannot be read: No such file"));
        QVERIFY(messageOf(m_folder.path()).contains("cannot be read: it is not a file"));
        QVERIFY(messageOf("/dev/zero").contains("cannot be read: it is not a file"));
        QCOMPARE(refusal(QByteArray(5'000'000, ' ')), "recording " + file() + ": line 1: too long");
    }

    void everyTruncatedLineIsRefused()
    {
        answer({1, 2});
        const QByteArray content = recorded().join();
        const qsizetype header = content.indexOf('\n') + 1;
        for (qsizetype size = 0; size < content.size(); size += size < header ? 997 : 1) {
            const QByteArray part = content.left(size);
            const QString message = refusal(part);
            const bool whole = part.endsWith('\n');
            QCOMPARE(message.isEmpty(), whole);
            if (!whole)
                QVERIFY2(message.contains(QStringLiteral("line %1: cut off").arg(part.count('\n') + 1)),
                         qPrintable(message));
        }
    }

    void garbledFilesNeverCrash()
    {
        answer({1, 2, 3});
        command("test.set", Ok);
        const QByteArray content = recorded().join();
        QRandomGenerator random(7);
        int refused = 0;
        for (int round = 0; round < 300; ++round) {
            QByteArray garbled = content;
            for (int change = 0; change < 3; ++change)
                garbled[random.bounded(int(garbled.size()))] = char(random.bounded(256));
            const QString message = refusal(garbled);
            refused += message.isEmpty() ? 0 : 1;
            QVERIFY2(message.isEmpty() || message.contains(": line "), qPrintable(message));
        }
        QVERIFY(refused > 150);
    }

private:
    QString file() const { return m_folder.filePath(QStringLiteral("session.jsonl")); }

    /// Makes a call that reads a number. Returns the number, or the status if the call fails.
    int get(const char *name, int value, int argument)
    {
        int result = 0;
        const auto body = [&](Camera &) { result = value; };
        const int status = dispatch(name, m_camera->handle(), body, argument, &result);
        return status == Ok ? result : status;
    }

    void answer(const QList<int> &values)
    {
        for (const int value : values)
            get("test.get", value, 0);
    }

    QList<int> reads(int count)
    {
        QList<int> values;
        for (int i = 0; i < count; ++i)
            values += get("test.get", -1, 0);
        return values;
    }

    int command(const char *name, Status status)
    {
        const auto body = [&](Camera &) {
            ++m_asked;
            return status;
        };
        return dispatch(name, m_camera->handle(), body, 5);
    }

    int event()
    {
        zvtEEventType type = ZVT_EVENT_NONE;
        const int status = zvtReadEventQueue(m_camera->handle(), &type);
        return status == Ok ? int{type} : status;
    }

    bool hasSsd() const { return m_camera->capabilities()["hasSsd"].toBool(); }

    void recordLossOfSsd()
    {
        m_camera->changeMakeUp(QStringLiteral("hasSsd"), false);
        while (event() != ZVT_EVENT_MAKE_UP_CHANGED) { }
    }

    static bool isReady(const std::future<int> &result)
    {
        return result.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
    }

    /// The lines of the recording so far.
    QList<QByteArray> recorded()
    {
        m_recorder.reset();
        QFile recording(file());
        QList<QByteArray> lines;
        if (recording.open(QIODevice::ReadOnly))
            while (!recording.atEnd())
                lines += recording.readLine();
        return lines;
    }

    /// Replaces the camera by one that repeats the recording, connected.
    void replay()
    {
        m_recorder.reset();
        m_replay.emplace(file());
        m_camera = Camera::create(m_replay->profile(), m_replay->folder());
        m_replay->attachTo(m_camera);
        m_camera->connect();
    }

    static QString messageOf(const QString &name)
    {
        try {
            CallReplay replay(name);
        } catch (const SetupError &error) {
            return QString::fromUtf8(error.what());
        }
        return {};
    }

    QString refusal(const QByteArray &content)
    {
        QFile recording(file());
        if (recording.open(QIODevice::WriteOnly))
            recording.write(content);
        recording.close();
        return messageOf(file());
    }

    QTemporaryDir m_folder;
    std::shared_ptr<Camera> m_camera;
    std::optional<CallRecorder> m_recorder;
    std::optional<CallReplay> m_replay;
    int m_asked = 0;
};

ZVT_TEST(tst_CallReplay)
#include "tst_CallReplay.moc"
