#include "tests/platform/CorrectionFixture.h"

#include <QDir>
#include <QFileInfo>

#include <chrono>
#include <future>
#include <vector>

using namespace emulator;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

class tst_correctionTransfers : public CorrectionFixture
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { StateFixture::cleanup(); }

    void uploadMakesACorrection();
    void uploadDropsTheExtension_data();
    void uploadDropsTheExtension();
    void uploadReplacesACorrection();
    void uploadShowsNoPartOfAFile();
    void uploadRefusesDamagedFiles_data();
    void uploadRefusesDamagedFiles();
    void uploadRefusesForeignWindows_data();
    void uploadRefusesForeignWindows();
    void uploadRefusesNames_data();
    void uploadRefusesNames();
    void uploadNeedsSpace();
    void uploadNeedsSpaceAtItsEnd();
    void downloadReturnsTheFile();
    void downloadKeepsItsContentsWhenTheFileIsDeleted();
    void reportsProgress_data() { addDirections(); }
    void reportsProgress();
    void stopsWhenAsked_data() { addDirections(); }
    void stopsWhenAsked();
    void endsWithTheConnection_data() { addDirections(); }
    void endsWithTheConnection();
    void takesTheTimeOfItsSpeed_data() { addDirections(); }
    void takesTheTimeOfItsSpeed();
    void answersOtherCallsMeanwhile_data() { addDirections(); }
    void answersOtherCallsMeanwhile();
    void refusesImpossibleLocalFiles_data() { addDirections(); }
    void refusesImpossibleLocalFiles();
    void failsAtTheGate_data() { addDirections(); }
    void failsAtTheGate();

private:
    using Progress = hlx::delegate<int(unsigned int, unsigned int)>;
    using Function = std::function<int(unsigned int, unsigned int)>;
    static constexpr int keepOn = 0;

    static void addDirections()
    {
        QTest::addColumn<bool>("toCamera");
        QTest::newRow("upload") << true;
        QTest::newRow("download") << false;
    }

    int upload(const char *name = "new.nuc", const Progress &progress = {}) const
    {
        return zvtUploadNUCStdEx(m_handle, name, qPrintable(m_local), progress);
    }

    /// Transfers the local file to the correction "new", or the correction "night" to the local file.
    int run(const Function &progress = [](unsigned int, unsigned int) { return keepOn; }) const
    {
        QFETCH(bool, toCamera);
        const auto delegate = Progress::FromLamda(progress);
        return toCamera ? upload("new.nuc", delegate)
                        : zvtDownloadNUCStd(m_handle, "night", qPrintable(m_local), delegate);
    }

    /// Whether run() has left no correction "new", and of the local file as much as it may.
    bool hasNothingNew(qsizetype downloaded) const
    {
        QFETCH(bool, toCamera);
        return !corrections().contains(u"new"_s)
            && contentOf(m_local) == file().first(toCamera ? file().size() : downloaded);
    }

    QString m_local;
};

void tst_correctionTransfers::init()
{
    StateFixture::init();
    m_local = m_folder->filePath(u"local.nuc"_s);
    write(m_local, file());
    QVERIFY(save("night"));
}

void tst_correctionTransfers::uploadMakesACorrection()
{
    Clock::advance(5000);
    QCOMPARE(upload(), 0);
    QVERIFY(corrections().contains(u"new"_s));
    QCOMPARE(contentOf(pathOf("new")), file());
    QVERIFY(store().read("new"));
    uint32_t size = 0;
    uint64_t time = 0;
    uint64_t older = 0;
    QCOMPARE(zvtGetNUCFileInfo(m_handle, "new", &size, &time), 0);
    QCOMPARE(zvtGetNUCFileInfo(m_handle, "night", &size, &older), 0);
    QVERIFY(time >= older + 50'000'000);
}

void tst_correctionTransfers::uploadDropsTheExtension_data()
{
    QTest::addColumn<QByteArray>("remote");
    QTest::addColumn<QString>("name");
    QTest::newRow("extension") << QByteArray("Cold.Start.nuc") << u"Cold.Start"_s;
    QTest::newRow("none") << QByteArray("Cold.Start") << u"Cold.Start"_s;
    QTest::newRow("twice") << QByteArray("a.nuc.nuc") << u"a.nuc"_s;
    QTest::newRow("not at the end") << QByteArray("a.nuc.x") << u"a.nuc.x"_s;
}

void tst_correctionTransfers::uploadDropsTheExtension()
{
    QFETCH(QByteArray, remote);
    QFETCH(QString, name);
    QCOMPARE(upload(remote), 0);
    QVERIFY(corrections().contains(name));
}

void tst_correctionTransfers::uploadReplacesACorrection()
{
    write(m_local, file({0, 0, 128, 4}));
    QCOMPARE(upload("night.nuc"), 0);
    QCOMPARE(store().read("night")->table->window.width, 128);
    QCOMPARE(corrections().count(u"night"_s), 1);
}

void tst_correctionTransfers::uploadShowsNoPartOfAFile()
{
    write(m_local, file({0, 0, 128, 4}));
    const auto before = contentOf(pathOf("night"));
    const auto listed = corrections();
    const auto unchanged = [&](unsigned int, unsigned int) {
        return contentOf(pathOf("night")) == before && corrections() == listed ? keepOn : 1;
    };
    QCOMPARE(upload("night.nuc", Progress::FromLamda(unchanged)), 0);
    QVERIFY(contentOf(pathOf("night")) != before);
    QCOMPARE(QDir(m_camera->folder() + "/nucs").entryList(QDir::Files | QDir::Hidden), QStringList{u"night.nuc"_s});
}

void tst_correctionTransfers::uploadRefusesDamagedFiles_data()
{
    QTest::addColumn<QByteArray>("content");
    const auto flipped = [](qsizetype place) {
        QByteArray content = file();
        content[place] = static_cast<char>(content[place] ^ 1);
        return content;
    };
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text") << QByteArray(3'332, 'x');
    QTest::newRow("truncated") << file().chopped(1);
    QTest::newRow("with a tail") << file() + 'x';
    QTest::newRow("magic") << flipped(0);
    QTest::newRow("version") << flipped(8);
    QTest::newRow("window") << flipped(144);
    QTest::newRow("head checksum") << flipped(1023);
    QTest::newRow("gain") << flipped(1024);
    QTest::newRow("flag") << flipped(3'300);
    QTest::newRow("table checksum") << flipped(3'331);
}

void tst_correctionTransfers::uploadRefusesDamagedFiles()
{
    QFETCH(QByteArray, content);
    const auto before = contentOf(pathOf("night"));
    write(m_local, content);
    QCOMPARE(upload(), int(Refused));
    QCOMPARE(upload("night.nuc"), int(Refused));
    QVERIFY(!corrections().contains(u"new"_s));
    QCOMPARE(contentOf(pathOf("night")), before);
}

void tst_correctionTransfers::uploadRefusesForeignWindows_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("whole array") << file({0, 0, 640, 512}) << true;
    QTest::newRow("last corner") << file({576, 508, 64, 4}) << true;
    QTest::newRow("too far right") << file({577, 508, 64, 4}) << false;
    QTest::newRow("too far down") << file({576, 509, 64, 4}) << false;
    QTest::newRow("too wide") << file({0, 0, 641, 4}) << false;
    QTest::newRow("too high") << file({0, 0, 64, 513}) << false;
}

void tst_correctionTransfers::uploadRefusesForeignWindows()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, accepted);
    write(m_local, content);
    QCOMPARE(upload() == 0, accepted);
    QCOMPARE(corrections().contains(u"new"_s), accepted);
}

void tst_correctionTransfers::uploadRefusesNames_data()
{
    QTest::addColumn<QByteArray>("remote");
    QTest::newRow("nothing but the extension") << QByteArray(".nuc");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("space first") << QByteArray(" a.nuc");
    QTest::newRow("folder") << QByteArray("../a.nuc");
    QTest::newRow("too long") << QByteArray(201, 'n') + ".nuc";
}

void tst_correctionTransfers::uploadRefusesNames()
{
    QFETCH(QByteArray, remote);
    const int64_t before = Clock::now();
    QCOMPARE(upload(remote), int(Refused));
    QCOMPARE(Clock::now(), before);
    QCOMPARE(upload(QByteArray(200, 'n') + ".nuc"), 0);
}

void tst_correctionTransfers::uploadNeedsSpace()
{
    const auto count = [calls = 0](unsigned int, unsigned int) mutable { return ++calls; };
    QVERIFY(leaveFree(smallSize - 1));
    // Refused before the first byte.
    QCOMPARE(upload("new.nuc", Progress::FromLamda(count)), int(Refused));
    QCOMPARE(upload("night.nuc"), 0);
    QVERIFY(leaveFree(smallSize));
    QCOMPARE(upload(), 0);
    QCOMPARE(freeSpace(), uint64_t(0));
}

void tst_correctionTransfers::uploadNeedsSpaceAtItsEnd()
{
    QVERIFY(leaveFree(smallSize));
    const auto fill
        = [this](unsigned int done, unsigned int total) { return done < total || save("last") ? keepOn : 1; };
    QCOMPARE(upload("new.nuc", Progress::FromLamda(fill)), int(Refused));
    QVERIFY(corrections().contains(u"last"_s));
    QVERIFY(!corrections().contains(u"new"_s));
}

void tst_correctionTransfers::downloadReturnsTheFile()
{
    const QString local = m_folder->filePath(u"other.nuc"_s);
    QCOMPARE(zvtDownloadNUCStd(m_handle, "night", qPrintable(local), {}), 0);
    QCOMPARE(contentOf(local), file());
    // A longer file is replaced completely.
    write(local, QByteArray(5000, 'x'));
    QCOMPARE(zvtDownloadNUCStd(m_handle, "night", qPrintable(local), {}), 0);
    QCOMPARE(contentOf(local), file());
    QCOMPARE(zvtDownloadNUCStd(m_handle, "missing", qPrintable(local), {}), int(Refused));
    QCOMPARE(contentOf(local), file());
}

void tst_correctionTransfers::downloadKeepsItsContentsWhenTheFileIsDeleted()
{
    const auto remove = [this](unsigned int, unsigned int) {
        zvtDeleteNUC(m_handle, "night");
        return keepOn;
    };
    QCOMPARE(zvtDownloadNUCStd(m_handle, "night", qPrintable(m_local), Progress::FromLamda(remove)), 0);
    QCOMPARE(contentOf(m_local), file());
    QVERIFY(!corrections().contains(u"night"_s));
}

void tst_correctionTransfers::reportsProgress()
{
    std::vector<unsigned int> parts{0};
    QCOMPARE(run([&](unsigned int done, unsigned int total) {
                 const bool grows = done > parts.back() && total == file().size();
                 parts.push_back(done);
                 return grows ? keepOn : 1;
             }),
             0);
    QCOMPARE(parts.back(), static_cast<unsigned int>(file().size()));
    QVERIFY(parts.size() > 40);
}

void tst_correctionTransfers::stopsWhenAsked()
{
    unsigned int transferred = 0;
    QCOMPARE(run([&](unsigned int done, unsigned int total) {
                 transferred = done;
                 return done > total / 2 ? -1 : keepOn;
             }),
             int(Stopped));
    QVERIFY(transferred < file().size());
    QVERIFY(hasNothingNew(transferred));
}

void tst_correctionTransfers::endsWithTheConnection()
{
    unsigned int transferred = 0;
    QCOMPARE(run([&](unsigned int done, unsigned int) {
                 transferred = done;
                 m_camera->disconnect();
                 return keepOn;
             }),
             int(NotConnected));
    m_camera->connect();
    QVERIFY(hasNothingNew(transferred));
    QCOMPARE(run(), 0);
}

void tst_correctionTransfers::takesTheTimeOfItsSpeed()
{
    for (const int speed : {2'000'000, 1'000}) {
        QVERIFY(set("corrections.bytesPerSecond", speed));
        const int64_t before = Clock::now();
        QCOMPARE(run(), 0);
        QCOMPARE(Clock::now() - before, int64_t(smallSize * 1000 / static_cast<uint64_t>(speed)));
    }
    switchOn();
    write(m_local, file({0, 0, 640, 512}));
    QCOMPARE(upload("night.nuc"), 0);
    const int64_t before = Clock::now();
    QCOMPARE(run(), 0);
    QCOMPARE(Clock::now() - before, int64_t(1475));
}

void tst_correctionTransfers::answersOtherCallsMeanwhile()
{
    // If the transfer did not release the lock, these reads would wait for its end, and so would this test.
    std::vector<std::future<QStringList>> reads;
    const auto readAlongside = [&](unsigned int, unsigned int) {
        reads.push_back(std::async(std::launch::async, [this] { return corrections(); }));
        return reads.back().wait_for(10s) == std::future_status::ready ? keepOn : 1;
    };
    QCOMPARE(run(readAlongside), 0);
    for (auto &read : reads)
        QVERIFY(read.get().contains(u"night"_s));
}

void tst_correctionTransfers::refusesImpossibleLocalFiles()
{
    QVERIFY(QDir(m_folder->path()).mkdir(u"folder"_s));
    for (const QString &local :
         {QString(), m_folder->filePath(u"missing/local.nuc"_s), m_folder->filePath(u"folder"_s)}) {
        m_local = local;
        int calls = 0;
        QCOMPARE(run([&](unsigned int, unsigned int) { return ++calls; }), int(Refused));
        QCOMPARE(calls, 0);
    }
    QVERIFY(!corrections().contains(u"new"_s));
}

void tst_correctionTransfers::failsAtTheGate()
{
    m_camera->gate().failNext("*");
    QCOMPARE(run(), int(Injected));
    QVERIFY(!corrections().contains(u"new"_s));
    QCOMPARE(contentOf(m_local), file());
}

ZVT_TEST(tst_correctionTransfers)
#include "tst_correctionTransfers.moc"
