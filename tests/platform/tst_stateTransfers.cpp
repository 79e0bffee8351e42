#include "tests/platform/StateFixture.h"

#include <QDir>
#include <QDirIterator>
#include <QMap>

#include <chrono>
#include <functional>
#include <future>
#include <thread>
#include <vector>

using namespace emulator;
using namespace std::chrono_literals;

namespace
{

using Progress = hlx::delegate<int(unsigned int, unsigned int)>;

/// One of the functions that transfer the local file "state.qsf" to the camera or from it.
struct Transfer {
    const char *name;
    bool toCamera;
    std::function<int(uint64_t handle, const char *localFile, Progress &progress)> run;
};

const std::vector<Transfer> &transfers()
{
    static const std::vector<Transfer> all{
        {"upload", true, [](uint64_t h, const char *file, Progress &p) { return zvtUploadStateStd(h, file, &p); }},
        {"upload of the factory default", true,
         [](uint64_t h, const char *file, Progress &p) { return zvtUploadFactoryDefaultStateStd(h, file, p); }},
        {"download", false,
         [](uint64_t h, const char *file, Progress &p) { return zvtDownloadStateStd(h, "night", file, &p); }},
        {"download of the factory default", false,
         [](uint64_t h, const char *file, Progress &p) { return zvtDownloadFactoryDefaultStateStd(h, file, p); }},
        {"download of a file", false,
         [](uint64_t h, const char *file, Progress &p) { return zvtDownloadFileStd(h, "/states/night.qsf", file, p); }},
    };
    return all;
}

} // namespace

class tst_stateTransfers : public StateFixture
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { StateFixture::cleanup(); }

    void bringsTheWholeFile_data() { addTransfers(); }
    void bringsTheWholeFile();
    void tellsItsProgress_data() { addTransfers(); }
    void tellsItsProgress();
    void needsNoProgress_data() { addTransfers(); }
    void needsNoProgress();
    void stopsWhenAsked_data();
    void stopsWhenAsked();
    void endsWithTheConnection_data() { addTransfers(); }
    void endsWithTheConnection();
    void letsOthersInMeanwhile_data() { addTransfers(); }
    void letsOthersInMeanwhile();
    void takesTheTimeOfItsSpeed_data() { addTransfers(); }
    void takesTheTimeOfItsSpeed();
    void showsAHalfFileToNobody_data() { addTransfers(); }
    void showsAHalfFileToNobody();
    void refusesImpossibleLocalFiles_data() { addTransfers(); }
    void refusesImpossibleLocalFiles();
    void failsAtTheGate_data() { addTransfers(); }
    void failsAtTheGate();

private:
    static void addTransfers()
    {
        QTest::addColumn<int>("row");
        for (size_t row = 0; row < transfers().size(); ++row)
            QTest::newRow(transfers()[row].name) << static_cast<int>(row);
    }

    static const Transfer &transfer()
    {
        QFETCH(int, row);
        return transfers()[static_cast<size_t>(row)];
    }

    int run(Progress progress = {}) { return transfer().run(m_handle, qPrintable(m_local), progress); }

    int run(const std::function<int(unsigned int, unsigned int)> &progress)
    {
        return run(Progress::FromLamda(progress));
    }

    /// Returns the path of the file that the transfer writes.
    QString target() const
    {
        if (!transfer().toCamera)
            return m_local;
        return transfer().name == std::string("upload") ? stateFile(QStringLiteral("state"))
                                                        : m_camera->folder() + "/factory.qsf";
    }

    /// Returns the contents of all files of the camera and of all local files. The file of the values that devices
    /// remember is left out, since the camera writes it after a change and when it is disconnected.
    QMap<QString, QByteArray> everything() const
    {
        // A write of the values would leave a temporary file in the folder meanwhile.
        m_camera->flushMemory();
        QMap<QString, QByteArray> files;
        QDirIterator it(m_folder->path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString file = it.next();
            if (it.fileName() != QLatin1String("camera.json"))
                files[file] = contentOf(file);
        }
        return files;
    }

    QString m_local;
};

void tst_stateTransfers::init()
{
    StateFixture::init();
    m_local = m_folder->filePath(QStringLiteral("state.qsf"));
    QCOMPARE(zvtSaveFactoryDefaults(m_handle), 0);
    QVERIFY(set("cooler.setpoint", 66.0));
    QCOMPARE(zvtSaveStateAs(m_handle, "night"), 0);
    if (transfer().toCamera)
        write(m_local, otherState());
}

void tst_stateTransfers::bringsTheWholeFile()
{
    const QByteArray sent = transfer().toCamera ? otherState()
        : transfer().name == std::string("download of the factory default")
        ? contentOf(m_camera->folder() + "/factory.qsf")
        : contentOf(stateFile(QStringLiteral("night")));
    const QJsonObject before = m_camera->snapshot();
    for (int round = 0; round < 2; ++round) {
        QCOMPARE(run(), 0);
        QCOMPARE(contentOf(target()), sent);
    }
    // A transfer does not change settings.
    QCOMPARE(m_camera->snapshot(), before);
    QCOMPARE(current(), QStringLiteral("night"));
}

void tst_stateTransfers::tellsItsProgress()
{
    std::vector<std::pair<unsigned int, unsigned int>> told;
    const auto thread = std::this_thread::get_id();
    QCOMPARE(run([&](unsigned int done, unsigned int total) {
                 told.emplace_back(done, total);
                 return thread == std::this_thread::get_id() ? 0 : 1;
             }),
             0);
    const auto size = static_cast<unsigned int>(contentOf(target()).size());
    QVERIFY(told.size() > 3);
    unsigned int before = 0;
    for (const auto &[done, total] : told) {
        QCOMPARE(total, size);
        QVERIFY(done > before);
        before = done;
    }
    QCOMPARE(before, size);
}

void tst_stateTransfers::needsNoProgress()
{
    QCOMPARE(run(), 0);
    if (transfer().name == std::string("upload"))
        QCOMPARE(zvtUploadStateStd(m_handle, qPrintable(m_local), nullptr), 0);
    if (transfer().name == std::string("download"))
        QCOMPARE(zvtDownloadStateStd(m_handle, "night", qPrintable(m_local), nullptr), 0);
}

void tst_stateTransfers::stopsWhenAsked_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<bool>("atTheEnd");
    QTest::addColumn<int>("answer");
    for (size_t row = 0; row < transfers().size(); ++row) {
        QTest::addRow("%s at once", transfers()[row].name) << static_cast<int>(row) << false << -1;
        QTest::addRow("%s at the end", transfers()[row].name) << static_cast<int>(row) << true << 1;
    }
}

void tst_stateTransfers::stopsWhenAsked()
{
    QFETCH(bool, atTheEnd);
    QFETCH(int, answer);
    const auto before = everything();
    int calls = 0;
    QCOMPARE(run([&](unsigned int done, unsigned int total) {
                 ++calls;
                 return !atTheEnd || done == total ? answer : 0;
             }),
             int(Stopped));
    QCOMPARE(calls == 1, !atTheEnd);
    QCOMPARE(everything(), before);
}

void tst_stateTransfers::endsWithTheConnection()
{
    const auto before = everything();
    int calls = 0;
    QCOMPARE(run([&](unsigned int, unsigned int) {
                 ++calls;
                 m_camera->disconnect();
                 return 0;
             }),
             int(NotConnected));
    QCOMPARE(calls, 1);
    QCOMPARE(everything(), before);

    m_camera->connect();
    QCOMPARE(run([&](unsigned int done, unsigned int total) {
                 if (done == total)
                     m_camera->disconnect();
                 return 0;
             }),
             int(NotConnected));
    QCOMPARE(everything(), before);
}

void tst_stateTransfers::letsOthersInMeanwhile()
{
    // If the transfer did not release the lock, these reads would wait for its end, and so would this test.
    std::vector<std::future<QString>> reads;
    const auto readAlongside = [&](unsigned int, unsigned int) {
        reads.push_back(std::async(std::launch::async, [this] { return current(); }));
        return reads.back().wait_for(10s) == std::future_status::ready ? 0 : 1;
    };
    QCOMPARE(run(readAlongside), 0);
    for (auto &read : reads)
        QCOMPARE(read.get(), QStringLiteral("night"));
}

void tst_stateTransfers::takesTheTimeOfItsSpeed()
{
    for (const int speed : {1000, 2000}) {
        QVERIFY(set("transfers.bytesPerSecond", speed));
        const int64_t before = Clock::now();
        QCOMPARE(run(), 0);
        QCOMPARE(Clock::now() - before, int64_t(contentOf(target()).size() * 1000 / speed));
    }
}

void tst_stateTransfers::showsAHalfFileToNobody()
{
    write(m_local, transfer().toCamera ? otherState() : QByteArray("what was there"));
    const auto before = contentOf(target());
    const auto states = names();
    QCOMPARE(
        run([&](unsigned int, unsigned int) { return contentOf(target()) == before && names() == states ? 0 : 1; }), 0);
    QVERIFY(contentOf(target()) != before);
}

void tst_stateTransfers::refusesImpossibleLocalFiles()
{
    const auto before = everything();
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("folder")));
    for (const QString &local : {QString(), m_folder->filePath(QStringLiteral("missing/state.qsf")),
                                 m_folder->filePath(QStringLiteral("folder"))}) {
        int calls = 0;
        auto progress = Progress::FromLamda([&](unsigned int, unsigned int) { return calls++; });
        QCOMPARE(transfer().run(m_handle, qPrintable(local), progress), int(Refused));
        QCOMPARE(calls, 0);
    }
    QCOMPARE(everything(), before);
}

void tst_stateTransfers::failsAtTheGate()
{
    const auto before = everything();
    m_camera->gate().failNext("*");
    QCOMPARE(run(), int(Injected));
    QCOMPARE(everything(), before);
}

ZVT_TEST(tst_stateTransfers)
#include "tst_stateTransfers.moc"
