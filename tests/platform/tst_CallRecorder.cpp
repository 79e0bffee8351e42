#include "platform/emulator/CallRecorder.h"
#include "platform/emulator/CallRecording.h"
#include "platform/emulator/SetupError.h"
#include "platform/emulator/control.h"
#include "platform/emulator/dispatch.h"
#include "tests/support/Test.h"
#include "tests/support/limitFileSize.h"
#include "zvt/zvtsdk.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QJsonDocument>
#include <QScopeGuard>
#include <QTemporaryDir>

#include <chrono>
#include <future>
#include <optional>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace emulator;
using namespace std::chrono_literals;

class tst_CallRecorder : public Test
{
    Q_OBJECT

private slots:
    void init()
    {
        Test::init();
        Clock::manual();
        m_camera = Camera::create(QStringLiteral("everything"), m_folder.path());
        m_camera->connect();
        m_failure = std::promise<QString>();
    }

    void cleanup()
    {
        m_recorder.reset();
        m_camera.reset();
        Clock::automatic();
    }

    void eachCallIsALine()
    {
        record();
        Clock::advance(250);
        QCOMPARE(zvtSetGainLevel(m_camera->handle(), 1), 0);
        std::thread([this] {
            uint8_t level = 0;
            QCOMPARE(zvtGetGainLevel(m_camera->handle(), &level), 0);
        }).join();
        m_camera->gate().failNext("zvtGetGainLevel");
        uint8_t level = 0;
        zvtGetGainLevel(m_camera->handle(), &level);
        const auto lines = end();
        QCOMPARE(lines.size(), 4);
        QCOMPARE(lines[1]["kind"], QJsonValue("call"));
        QCOMPARE(lines[1]["number"], QJsonValue(0));
        QCOMPARE(lines[1]["time"], QJsonValue(250));
        QCOMPARE(lines[1]["name"], QJsonValue("zvtSetGainLevel"));
        QCOMPARE(lines[1]["arguments"], QJsonValue("1"));
        QCOMPARE(lines[1]["thread"], QJsonValue(1));
        QCOMPARE(lines[1]["status"], QJsonValue(0));
        QVERIFY(lines[1]["duration"].isDouble());
        QVERIFY(!lines[1].contains("results"));
        QCOMPARE(lines[2]["thread"], QJsonValue(2));
        QCOMPARE(lines[2]["results"], QJsonValue(QJsonArray{1}));
        QCOMPARE(lines[3]["thread"], QJsonValue(1));
        QCOMPARE(lines[3]["status"], QJsonValue(int(Injected)));
        QVERIFY(lines[3]["results"].isNull());
    }

    void theFirstLineDescribesTheCamera()
    {
        m_camera->changeMakeUp(QStringLiteral("hasSsd"), false);
        record();
        const auto lines = end();
        QCOMPARE(lines.size(), 1);
        QCOMPARE(lines[0]["format"], QJsonValue("zvt-calls"));
        QCOMPARE(lines[0]["version"], QJsonValue(1));
        QCOMPARE(lines[0]["profileName"], QJsonValue("everything"));
        QCOMPARE(lines[0]["profile"]["devices"].toObject(), m_camera->profile().devices());
        QCOMPARE(lines[0]["profile"]["capabilities"]["hasSsd"], QJsonValue(false));
        QCOMPARE(lines[0]["settings"].toObject(), m_camera->snapshot());
    }

    void connectionsAndCapabilitiesAreLines()
    {
        while (event() != ZVT_EVENT_NONE) { }
        record();
        m_camera->changeMakeUp(QStringLiteral("hasSsd"), false);
        QCOMPARE(event(), int(ZVT_EVENT_MAKE_UP_CHANGED));
        m_camera->disconnect();
        m_camera->connect();
        const auto lines = end();
        QCOMPARE(lines.size(), 5);
        QCOMPARE(lines[1]["kind"], QJsonValue("capabilities"));
        QCOMPARE(lines[1]["capabilities"]["hasSsd"], QJsonValue(false));
        QCOMPARE(lines[1]["number"], lines[2]["number"]);
        QCOMPARE(lines[2]["results"], QJsonValue(QJsonArray{int(ZVT_EVENT_MAKE_UP_CHANGED)}));
        QCOMPARE(lines[3]["kind"], QJsonValue("connection"));
        QCOMPARE(lines[3]["connected"], QJsonValue(false));
        QCOMPARE(lines[4]["connected"], QJsonValue(true));
    }

    void capabilitiesAreThoseAtTheCall()
    {
        while (event() != ZVT_EVENT_NONE) { }
        record();
        m_camera->changeMakeUp(QStringLiteral("hasSsd"), false);
        {
            // The thread of the recorder cannot read the camera before the next change.
            const std::lock_guard lock(m_camera->mutex());
            QCOMPARE(event(), int(ZVT_EVENT_MAKE_UP_CHANGED));
            m_camera->changeMakeUp(QStringLiteral("hasSsd"), true);
        }
        const auto lines = end();
        QCOMPARE(lines[1]["kind"], QJsonValue("capabilities"));
        QCOMPARE(lines[1]["capabilities"]["hasSsd"], QJsonValue(false));
    }

    void linesAreInTheFileDuringTheRecording()
    {
        record();
        zvtSetGainLevel(m_camera->handle(), 1);
        // Not the end of the recorder, but its thread writes the line.
        QTRY_COMPARE(lines().size(), 2);
    }

    void aFileThatCannotBeWrittenIsRefused()
    {
        const auto refusal = [this](const QString &file) {
            try {
                CallRecorder(m_camera, file, {});
            } catch (const SetupError &error) {
                return QString::fromUtf8(error.what());
            }
            return QString();
        };
        QCOMPARE(refusal("/nowhere/file"),
                 QStringLiteral("recording /nowhere/file: cannot be written: No such file or directory"));
        QCOMPARE(refusal("/dev/full"),
                 QStringLiteral("recording /dev/full: cannot be written: No space left on device"));
        QVERIFY(!refusal(m_folder.path()).isEmpty());
    }

    void aFullDiskEndsTheRecordingOnly()
    {
        record();
        zvtSetGainLevel(m_camera->handle(), 1);
        QTRY_COMPARE(lines().size(), 2);
        auto failure = m_failure.get_future();
        {
            const auto restore = qScopeGuard([] { limitFileSize({}); });
            limitFileSize(QFileInfo(m_file).size() + 300);
            for (int i = 0; i < 50; ++i)
                QCOMPARE(zvtSetGainLevel(m_camera->handle(), 1), 0);
            QVERIFY(failure.wait_for(30s) == std::future_status::ready);
        }
        QCOMPARE(failure.get(), "recording " + m_file + ": cannot be written: File too large");
        QCOMPARE(zvtSetGainLevel(m_camera->handle(), 1), 0);
        // The recording ends with a whole line. A second message would break the promise, and so the test.
        QVERIFY(end().size() >= 2);
        QCOMPARE(CallRecording::read(m_file).profileName, QStringLiteral("everything"));
    }

    void aDiskThatIsTooSlowEndsTheRecordingOnly()
    {
        // A pipe that is read only after too many calls have ended.
        const QString name = m_folder.filePath(QStringLiteral("pipe"));
        QCOMPARE(mkfifo(qPrintable(name), 0600), 0);
        const int pipe = open(qPrintable(name), O_RDWR);
        const auto close = qScopeGuard([pipe] { ::close(pipe); });
        m_recorder.emplace(m_camera, name, [this](const QString &message) { m_failure.set_value(message); });
        for (int i = 0; i < 120'000; ++i)
            dispatch("test.set", m_camera->handle(), [](Camera &) {});
        auto failure = m_failure.get_future();
        fcntl(pipe, F_SETFL, O_NONBLOCK);
        QByteArray content(1 << 16, 0);
        const QDeadlineTimer deadline(30s);
        while (failure.wait_for(0s) != std::future_status::ready && !deadline.hasExpired())
            while (read(pipe, content.data(), size_t(content.size())) > 0) { }
        QVERIFY(!deadline.hasExpired());
        QCOMPARE(failure.get(), "recording " + name + ": cannot be written: the disk is too slow");
    }

private:
    void record()
    {
        m_file = m_folder.filePath(QStringLiteral("session.jsonl"));
        m_recorder.emplace(m_camera, m_file, [this](const QString &message) { m_failure.set_value(message); });
    }

    int event()
    {
        zvtEEventType type = ZVT_EVENT_NONE;
        const int status = zvtReadEventQueue(m_camera->handle(), &type);
        return status == Ok ? int{type} : status;
    }

    QList<QJsonObject> lines() const
    {
        QFile file(m_file);
        QList<QJsonObject> result;
        if (file.open(QIODevice::ReadOnly))
            while (!file.atEnd())
                result += QJsonDocument::fromJson(file.readLine()).object();
        return result;
    }

    QList<QJsonObject> end()
    {
        m_recorder.reset();
        return lines();
    }

    QTemporaryDir m_folder;
    QString m_file;
    std::shared_ptr<Camera> m_camera;
    std::promise<QString> m_failure;
    std::optional<CallRecorder> m_recorder;
};

ZVT_TEST(tst_CallRecorder)
#include "tst_CallRecorder.moc"
