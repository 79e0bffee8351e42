#include "platform/emulator/devices/Link.h"
#include "platform/hlxcamzvt/MovieTransfer.h"
#include "tests/platform/TransferRig.h"
#include "tests/support/Test.h"
#include "tests/support/limitFileSize.h"

#include <QDir>

#include <functional>
#include <future>
#include <map>

using State = RecorderRig::State;

/// Downloads that end early, and what happens beside a download.
class tst_DownloadMovieEnds : public Test
{
    Q_OBJECT

private slots:
    void anAbortLeavesTheFramesSoFar_data();
    void anAbortLeavesTheFramesSoFar();
    void anAbortInStage1LeavesTheOtherFrames();
    void aDisconnectionLeavesTheFramesSoFar_data();
    void aDisconnectionLeavesTheFramesSoFar();
    void anAbortIsSoonNoticed_data();
    void anAbortIsSoonNoticed();
    void aDisconnectionIsSoonNoticed();
    void aFullDiskInTheHeadLeavesNothing_data();
    void aFullDiskInTheHeadLeavesNothing();
    void aFullDiskLeavesTheFramesSoFar_data();
    void aFullDiskLeavesTheFramesSoFar();
    void anUnwritablePathLeavesNothing_data();
    void anUnwritablePathLeavesNothing();
    void theCameraAnswersMeanwhile();
    void twoDownloadsAtOnce();
    void theRecordingStaysForTheDownload_data();
    void theRecordingStaysForTheDownload();
    void aRequestDoesNotEndDuringADownload();
    void aRequestWaitsForAllDownloads();
    void aRequestEndsAfterAShortDownload();
    void theMemoryIsThatAtTheBegin();
    void aMovieMayBecomeLoadedAtTheBegin();

private:
    /// Downloads with the camera's lock, so that the recorder has not followed the clock before.
    static emulator::Status runLocked(TransferRig &rig, uint32_t first)
    {
        const std::lock_guard lock(rig.camera().mutex());
        return hlx::cam::MovieTransfer::run(rig.camera(), qPrintable(rig.path()), {}, first, TransferRig::toTheEnd);
    }
    /// Records a frame that a bad link loses only at first.
    static bool recordFrameLostOnce(TransferRig &rig)
    {
        const auto &link = *rig.camera().device<emulator::Link>();
        bool recorded = rig.lose(500'000);
        for (int attempt = 0; recorded && attempt < 100; ++attempt) {
            recorded = rig.record(1);
            const auto numbers = rig.numbers();
            if (recorded && link.loses(numbers.front(), 0) && !link.loses(numbers.front(), 1))
                return true;
        }
        return false;
    }
    /// A camera that asks for a download of 20 frames.
    static bool request(TransferRig &rig)
    {
        if (!rig.set(zvtSetSsdAutoDownload, 1) || zvtSetSsdNumFrames(rig.handle(), 20) != 0 || !rig.arm()
            || !rig.call(zvtSsdTrigger))
            return false;
        rig.wait(200);
        return rig.state() == State::DownloadRequested;
    }
};

void tst_DownloadMovieEnds::anAbortLeavesTheFramesSoFar_data()
{
    QTest::addColumn<unsigned int>("done");
    QTest::newRow("at the first frame") << 1U;
    QTest::newRow("at the last frame") << 20U;
}

void tst_DownloadMovieEnds::anAbortLeavesTheFramesSoFar()
{
    QFETCH(unsigned int, done);
    for (const int answer : {-1, 1}) {
        TransferRig rig;
        TransferRig::coolDetector();
        QVERIFY(rig.record(20));
        QVERIFY(!rig.download([&](TransferRig::Report report) { return report.done == done ? answer : 0; }));
        QCOMPARE(rig.downloaded(), rig.recorded(0, done));
        QCOMPARE(rig.reports.back().done, done);
        QCOMPARE(rig.state(), State::Complete);
    }
}

void tst_DownloadMovieEnds::anAbortInStage1LeavesTheOtherFrames()
{
    TransferRig rig;
    TransferRig::coolDetector();
    QVERIFY(rig.record(100));
    QVERIFY(rig.lose(300'000));
    QVERIFY(!rig.download([&](TransferRig::Report report) { return report.stage; }));
    QCOMPARE(rig.reports.back().stage, 1);
    const auto recorded = rig.recorded();
    const auto frames = rig.frames();
    const auto numbers = rig.numbers();
    size_t missing = 0;
    for (size_t place = 0; place < frames.size(); ++place) {
        const bool lost = rig.camera().device<emulator::Link>()->loses(numbers[place], 0);
        if (frames[place])
            QCOMPARE(frames[place]->checksum, recorded[place]);
        else
            ++missing;
        QVERIFY(frames[place] || lost);
    }
    QVERIFY(missing > 10);
}

void tst_DownloadMovieEnds::aDisconnectionLeavesTheFramesSoFar_data()
{
    QTest::addColumn<bool>("duringReport");
    QTest::addColumn<unsigned int>("done");
    QTest::newRow("while the progress is reported") << true << 1U;
    QTest::newRow("while the end is reported") << true << 20U;
    QTest::newRow("while a frame comes") << false << 1U;
}

void tst_DownloadMovieEnds::aDisconnectionLeavesTheFramesSoFar()
{
    QFETCH(bool, duringReport);
    QFETCH(unsigned int, done);
    TransferRig rig;
    TransferRig::coolDetector();
    QVERIFY(rig.record(20));
    QVERIFY(!rig.download([&](TransferRig::Report report) {
        if (report.done != done)
            return 0;
        if (duringReport)
            rig.camera().disconnect();
        else
            emulator::Clock::duringNextWait([&] { rig.camera().disconnect(); });
        return 0;
    }));
    QCOMPARE(rig.reports.back().done, done);
    QCOMPARE(rig.downloaded(), rig.recorded(0, done));
    // The recording is still there, and the camera can be used again.
    rig.camera().connect();
    QVERIFY(rig.download());
    QCOMPARE(rig.downloaded(), rig.recorded());
}

void tst_DownloadMovieEnds::anAbortIsSoonNoticed_data()
{
    QTest::addColumn<int>("stage");
    QTest::addColumn<bool>("disconnect");
    QTest::newRow("aborted in a frame") << 0 << false;
    QTest::newRow("disconnected in a frame") << 0 << true;
    QTest::newRow("aborted in a frame that comes again") << 1 << false;
    QTest::newRow("disconnected in a frame that comes again") << 1 << true;
}

// A frame takes 41 s, or 0.6 s, so that stage 1 soon begins.
void tst_DownloadMovieEnds::anAbortIsSoonNoticed()
{
    QFETCH(int, stage);
    QFETCH(bool, disconnect);
    TransferRig rig;
    if (stage == 0)
        QVERIFY(rig.set("sensor.window", QVariantList{0, 0, 160, 128}) && rig.record(1));
    else
        QVERIFY(recordFrameLostOnce(rig));
    QVERIFY(rig.set("link.bytesPerSecond", 1000));
    emulator::Clock::automatic();
    std::future<void> disconnection;
    QVERIFY(!rig.download([&](TransferRig::Report report) {
        if (report.stage != stage)
            return 0;
        if (disconnect && !disconnection.valid())
            disconnection = std::async(std::launch::async, [&] { rig.camera().disconnect(); });
        return disconnect ? 0 : 1;
    }));
    emulator::Clock::stop();
    QCOMPARE(rig.reports.back(), (TransferRig::Report{stage, 0, 1}));
    QVERIFY(rig.open());
    QCOMPARE(rig.open()->frames(), 0U);
}

void tst_DownloadMovieEnds::aDisconnectionIsSoonNoticed()
{
    TransferRig rig;
    QVERIFY(rig.record(20) && rig.set("link.bytesPerSecond", 1000));
    emulator::Clock::duringNextWait([&] { rig.camera().disconnect(); });
    const int64_t begin = emulator::Clock::now();
    QVERIFY(!rig.download());
    QCOMPARE(emulator::Clock::now() - begin, 50);
    QVERIFY(rig.open());
}

void tst_DownloadMovieEnds::aFullDiskInTheHeadLeavesNothing_data()
{
    QTest::addColumn<int>("size");
    QTest::newRow("nothing fits") << 0;
    QTest::newRow("in the head") << 10;
    QTest::newRow("after the head") << int(hlx::file::MovieFormat::headSize);
    QTest::newRow("in the description") << 50;
    QTest::newRow("in the corrections") << 1000;
    QTest::newRow("in the checksum") << -1;
}

void tst_DownloadMovieEnds::aFullDiskInTheHeadLeavesNothing()
{
    QFETCH(int, size);
    for (const bool hasFile : {false, true}) {
        TransferRig rig;
        QVERIFY(rig.record(20) && rig.download(0, 0));
        constexpr qint64 frameSize = hlx::file::MovieFormat::frameSize(64 * 4 * 2);
        const qint64 head = QFile(rig.path()).size() - frameSize;
        QVERIFY(head > 1010);
        QVERIFY(hasFile || QFile::remove(rig.path()));
        rig.reports.clear();
        limitFileSize(size < 0 ? head + size : size);
        const bool downloaded = rig.download();
        limitFileSize({});
        QVERIFY(!downloaded);
        QVERIFY(!rig.exists());
        QVERIFY(rig.reports.empty());
        QVERIFY(rig.download());
        QCOMPARE(rig.downloaded().size(), 20U);
    }
}

void tst_DownloadMovieEnds::aFullDiskLeavesTheFramesSoFar_data()
{
    QTest::addColumn<unsigned int>("whole");
    QTest::addColumn<int>("more");
    QTest::newRow("after whole frames") << 7U << 0;
    QTest::newRow("in a frame") << 7U << 100;
    QTest::newRow("in the first frame") << 0U << 30;
}

void tst_DownloadMovieEnds::aFullDiskLeavesTheFramesSoFar()
{
    QFETCH(unsigned int, whole);
    QFETCH(int, more);
    TransferRig rig;
    TransferRig::coolDetector();
    QVERIFY(rig.record(20));
    QVERIFY(rig.download());
    constexpr qint64 frameSize = hlx::file::MovieFormat::frameSize(64 * 4 * 2);
    const qint64 head = QFile(rig.path()).size() - 20 * frameSize;
    QVERIFY(head > 0);
    limitFileSize(head + whole * frameSize + more);
    const bool downloaded = rig.download();
    limitFileSize({});
    QVERIFY(!downloaded);
    QCOMPARE(rig.downloaded(), rig.recorded(0, whole));
    QCOMPARE(rig.open()->frames(), whole);
    QVERIFY(rig.download());
    QCOMPARE(rig.downloaded().size(), 20U);
}

void tst_DownloadMovieEnds::anUnwritablePathLeavesNothing_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("no folder") << "none/movie.rqs";
    QTest::newRow("a folder") << "folder";
    QTest::newRow("no name") << "";
}

void tst_DownloadMovieEnds::anUnwritablePathLeavesNothing()
{
    QFETCH(QString, path);
    const QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkdir("folder"));
    TransferRig rig;
    QVERIFY(rig.record(20));
    QVERIFY(!rig.downloadTo(path.isEmpty() ? path : folder.filePath(path), 0, TransferRig::toTheEnd));
    QVERIFY(rig.reports.empty());
    QCOMPARE(QDir(folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList("folder"));
    QVERIFY(QDir(folder.filePath("folder")).isEmpty());
}

// Another thread uses the camera while the progress is reported and while a frame comes.
void tst_DownloadMovieEnds::theCameraAnswersMeanwhile()
{
    TransferRig rig;
    QVERIFY(rig.record(20));
    const auto stateElsewhere = [&rig] { return std::async(std::launch::async, [&rig] { return rig.state(); }).get(); };
    int atReport = -1;
    int duringWait = -1;
    QVERIFY(rig.download([&](TransferRig::Report) {
        atReport = stateElsewhere();
        emulator::Clock::duringNextWait([&] { duringWait = stateElsewhere(); });
        return 0;
    }));
    emulator::Clock::duringNextWait({});
    QCOMPARE(atReport, int(State::Complete));
    QCOMPARE(duringWait, int(State::Complete));
}

void tst_DownloadMovieEnds::twoDownloadsAtOnce()
{
    TransferRig rig;
    TransferRig::coolDetector();
    QVERIFY(rig.record(40));
    const QTemporaryDir folder;
    const QString other = folder.filePath("other.rqs");
    // The second one begins and ends in the middle of the first one, and a third runs beside both.
    bool second = false;
    std::future<bool> third;
    TransferRig thirdFile;
    QVERIFY(rig.download([&](TransferRig::Report report) {
        if (report.done == 1) {
            third = std::async(std::launch::async, [&] {
                return bool(rig.controller()->DownloadMovie(qPrintable(thirdFile.path()), {}, 0, 39));
            });
            second = rig.controller()->DownloadMovie(qPrintable(other), {}, 10, 19);
        }
        return 0;
    }));
    QVERIFY(second && third.get());
    const auto recorded = rig.recorded();
    QCOMPARE(rig.downloaded(), recorded);
    QCOMPARE(thirdFile.downloaded(), recorded);
    QVERIFY(QFile::remove(rig.path()) && QFile::copy(other, rig.path()));
    QCOMPARE(rig.downloaded(), rig.recorded(10, 10));
}

void tst_DownloadMovieEnds::theRecordingStaysForTheDownload_data()
{
    QTest::addColumn<QByteArray>("change");
    for (const char *change : {"armed again", "movie loaded", "unloaded", "formatted", "drive pulled", "other window"})
        QTest::newRow(change) << QByteArray(change);
}

void tst_DownloadMovieEnds::theRecordingStaysForTheDownload()
{
    QFETCH(const QByteArray, change);
    TransferRig rig;
    TransferRig::coolDetector();
    QVERIFY(rig.record(20));
    const auto recorded = rig.recorded();
    const uint32_t place = rig.movies();
    QVERIFY(rig.call(zvtSsdSaveBuffer));
    rig.wait(1000);
    if (change == "unloaded" || change == "drive pulled")
        QCOMPARE(zvtSsdLoadMovie(rig.handle(), place), 0);
    const std::map<QByteArray, std::function<bool()>> changes{
        {"armed again", [&] { return rig.arm(); }},
        {"movie loaded", [&] { return zvtSsdLoadMovie(rig.handle(), place) == 0; }},
        {"unloaded", [&] { return rig.call(zvtSsdUnload); }},
        {"formatted", [&] { return rig.call(zvtSsdFormatDrive); }},
        {"drive pulled", [&] { return rig.set("recorder.drivePulled", true); }},
        {"other window",
         [&] {
             return rig.set("sensor.window", QVariantList{0, 0, 160, 128});
         }},
    };
    bool changed = false;
    QVERIFY(rig.download([&](TransferRig::Report report) {
        if (report.done == 1)
            changed = changes.at(change)();
        return 0;
    }));
    QVERIFY(changed);
    QCOMPARE(rig.downloaded(), recorded);
}

void tst_DownloadMovieEnds::aRequestDoesNotEndDuringADownload()
{
    TransferRig rig;
    QVERIFY(request(rig));
    QVERIFY(rig.call(zvtSsdAutoDownloadStart));
    // 100 s.
    QVERIFY(rig.set("link.bytesPerSecond", 1000));
    rig.wait(30'000);
    int within = -1;
    QVERIFY(rig.download([&](TransferRig::Report report) {
        if (report.done == 1) {
            rig.wait(100'000);
            within = rig.state();
        }
        return 0;
    }));
    QCOMPARE(within, int(State::DownloadRequested));
    QCOMPARE(rig.state(), int(State::Complete));
}

void tst_DownloadMovieEnds::aRequestWaitsForAllDownloads()
{
    TransferRig rig;
    QVERIFY(request(rig));
    int afterOne = -1;
    QVERIFY(rig.download([&](TransferRig::Report report) {
        if (report.done == 1) {
            rig.wait(70'000);
            const bool other = rig.controller()->DownloadMovie(qPrintable(rig.path() + "2"), {}, 0, 1);
            afterOne = other ? rig.state() : -1;
        }
        return 0;
    }));
    QCOMPARE(afterOne, int(State::DownloadRequested));
    QCOMPARE(rig.state(), int(State::Complete));
}

void tst_DownloadMovieEnds::aRequestEndsAfterAShortDownload()
{
    TransferRig rig;
    QVERIFY(request(rig));
    QVERIFY(rig.call(zvtSsdAutoDownloadStart));
    QVERIFY(rig.download());
    rig.wait(59'000);
    QCOMPARE(rig.state(), int(State::DownloadRequested));
    rig.wait(1'000);
    QCOMPARE(rig.state(), int(State::Complete));
    // The end that the computer tells counts at once.
    QVERIFY(request(rig));
    QVERIFY(rig.download());
    QVERIFY(rig.call(zvtSsdAutoDownloadDone));
    QCOMPARE(rig.state(), int(State::Complete));
}

// The request ends when the download begins, and the recorder is armed again.
void tst_DownloadMovieEnds::theMemoryIsThatAtTheBegin()
{
    TransferRig rig;
    QVERIFY(rig.set(zvtSetSsdAutoRearm, 1) && request(rig));
    rig.wait(62'000);
    QCOMPARE(runLocked(rig, 0), emulator::Refused);
    QVERIFY(!rig.exists());
    QVERIFY(rig.recorder().memory() == nullptr);
}

// A load ends when the download begins.
void tst_DownloadMovieEnds::aMovieMayBecomeLoadedAtTheBegin()
{
    for (const uint32_t first : {0U, 2U, 3U, 10U}) {
        TransferRig rig;
        TransferRig::coolDetector();
        const uint32_t place = rig.movies();
        QVERIFY(rig.recordMovie(3) && rig.record(20));
        emulator::Status status = emulator::Refused;
        emulator::Clock::duringNextWait([&] {
            rig.wait(60'000);
            status = runLocked(rig, first);
        });
        QVERIFY(rig.load(place));
        QCOMPARE(status, first < 3 ? emulator::Ok : emulator::Refused);
        QCOMPARE(rig.exists(), first < 3);
        QCOMPARE(rig.downloaded(), rig.recorded(first));
    }
}

ZVT_TEST(tst_DownloadMovieEnds)
#include "tst_DownloadMovieEnds.moc"
