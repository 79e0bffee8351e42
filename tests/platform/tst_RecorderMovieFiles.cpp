#include "platform/emulator/devices/MovieFolder.h"
#include "platform/emulator/devices/Recording.h"
#include "platform/emulator/image/output.h"
#include "tests/platform/RecordedMoviesRig.h"
#include "tests/support/Test.h"

#include <QJsonArray>
#include <QRegularExpression>

namespace
{

using Numbers = std::vector<uint32_t>;

} // namespace

/// The files of recorded movies.
class tst_RecorderMovieFiles : public Test
{
    Q_OBJECT

private slots:
    void moviesOutliveTheProcess();
    void theCameraWritesByItself();
    void aSaveCountsFromItsEnd_data();
    void aSaveCountsFromItsEnd();
    void numbersNeverComeTwice();
    void aFormattedDriveStaysEmpty();
    void recordedMoviesFollowThoseOfTheProfile();
    void correctionsOutliveTheirFiles();
    void formattingRemovesCorrections();
    void anUnreadableCorrectionStaysNone();
    void otherFilesAreLeftAlone();
    void filesOfAnInterruptedFormatDoNotCount();
    void aFormattedDriveNeedsNoListOfNumbers_data();
    void aFormattedDriveNeedsNoListOfNumbers();
    void aMovieThatDoesNotFitIsReported();
    void aFailedWriteIsTriedAgain();
    void anOlderContentIsNotWritten();
    void aRemovedFolderIsNotMadeAgain();
};

void tst_RecorderMovieFiles::moviesOutliveTheProcess()
{
    RecordedMoviesRig rig;
    rig.openWith(R"({"rate": 20})");
    QVERIFY(rig.set("corrections.digitalCorrected", true));
    QVERIFY(rig.call(zvtSsdArm));
    rig.wait(300);
    QVERIFY(zvtSetFOVPos(rig.handle(), 3000) == 0 && rig.call(zvtSsdTrigger));
    rig.wait(10'000);
    QVERIFY(rig.state() == 3 && rig.recorder().memory()->segments() > 20 && rig.call(zvtSsdSaveBuffer));
    rig.wait(500);
    QVERIFY(rig.set("corrections.digitalCorrected", false) && rig.set("sensor.sequencingMode", 2));
    QVERIFY(rig.setWindow(160, 128) && rig.recordMovie(40, "Zwei ü"));
    const auto entries = rig.entries();
    const auto list = rig.list();
    std::vector<std::vector<uint32_t>> checksums;
    for (uint32_t place = 0; place < 2; ++place) {
        QVERIFY(rig.loadMovie(place));
        checksums.push_back(rig.checksums());
        QCOMPARE(checksums.back().size(), size_t(4));
        QCOMPARE(rig.recorder().memory()->abated(), place == 0);
    }
    rig.restart();
    QVERIFY(rig.entries() == entries && rig.entries().size() == 2);
    for (uint32_t place = 0; place < 2; ++place) {
        QVERIFY(std::memcmp(&rig.list()[place], &list[place], sizeof list[place]) == 0);
        QVERIFY(rig.loadMovie(place));
        QVERIFY(rig.checksums() == checksums[place]);
        QCOMPARE(rig.recorder().memory()->abated(), place == 0);
    }
}

void tst_RecorderMovieFiles::theCameraWritesByItself()
{
    RecordedMoviesRig rig;
    QVERIFY(rig.recordMovie(5));
    QTRY_VERIFY(!rig.contentOf("1.json").isEmpty());
    const QJsonObject values = QJsonDocument::fromJson(rig.contentOf("1.json")).object().value("values").toObject();
    QCOMPARE(values.value("name").toString(), "Untitled");
    QCOMPARE(values.value("number").toInt(), 1);
    QCOMPARE(values.value("frames").toInt(), 5);
    QCOMPARE(values.value("corrections").toArray().size(), 2);
    const zvtSIRIG first = rig.list()[0].startTime;
    QCOMPARE(QDateTime::fromString(values.value("first").toString(), Qt::ISODateWithMs).date().dayOfYear(), first.day);
    // An empty movie has no times.
    QVERIFY(rig.set(zvtSetSsdRecordGated, 1) && rig.arm() && rig.call(zvtSsdTrigger) && rig.call(zvtSsdRecordStop));
    QVERIFY(rig.call(zvtSsdSaveBuffer));
    rig.wait(500);
    QCOMPARE(rig.movies(), 2U);
    rig.restart();
    QVERIFY(rig.entries().at(1).frames == 0);
}

void tst_RecorderMovieFiles::aSaveCountsFromItsEnd_data()
{
    QTest::addColumn<int>("milliseconds");
    QTest::addColumn<uint32_t>("movies");
    QTest::newRow("ended") << 500 << 1U;
    QTest::newRow("running") << 499 << 0U;
}

/// A camera that is switched off has what it had saved by then, whether or not anybody has looked.
void tst_RecorderMovieFiles::aSaveCountsFromItsEnd()
{
    QFETCH(int, milliseconds);
    QFETCH(uint32_t, movies);
    RecordedMoviesRig rig;
    QVERIFY(rig.record(5) && rig.call(zvtSsdSaveBuffer));
    rig.wait(milliseconds);
    rig.restart();
    QCOMPARE(rig.movies(), movies);
}

void tst_RecorderMovieFiles::numbersNeverComeTwice()
{
    RecordedMoviesRig rig;
    QVERIFY(rig.recordMovie(5) && rig.recordMovie(5));
    rig.restart();
    rig.useSmallestWindow();
    QVERIFY(rig.recordMovie(5));
    QCOMPARE(rig.movieNumbers(), (Numbers{1, 2, 3}));
    rig.flush();
    QVERIFY(QFile::remove(rig.path("3.json")));
    rig.restart();
    rig.useSmallestWindow();
    QVERIFY(rig.recordMovie(5));
    QCOMPARE(rig.movieNumbers(), (Numbers{1, 2, 4}));
    rig.format();
    QVERIFY(rig.recordMovie(7));
    rig.restart();
    QCOMPARE(rig.movieNumbers(), Numbers{1});
    QCOMPARE(rig.entries()[0].frames, 7U);
    rig.useSmallestWindow();
    QVERIFY(rig.recordMovie(5));
    QCOMPARE(rig.movieNumbers(), (Numbers{1, 2}));
}

void tst_RecorderMovieFiles::aFormattedDriveStaysEmpty()
{
    RecordedMoviesRig rig;
    rig.openWith(R"({"movies": [{"frames": 20}, {"frames": 10}]})");
    QVERIFY(rig.recordMovie(5));
    QCOMPARE(rig.movieNumbers(), (Numbers{1, 2, 3}));
    QCOMPARE(rig.files(), (QStringList{"3.json", "drive.json"}));
    rig.format();
    QCOMPARE(rig.movies(), 0U);
    QCOMPARE(rig.files(), QStringList("drive.json"));
    rig.restart();
    QCOMPARE(rig.movies(), 0U);
    rig.useSmallestWindow();
    QVERIFY(rig.recordMovie(5));
    QCOMPARE(rig.movieNumbers(), Numbers{1});
}

/// The movies of a profile may have become more or fewer since a movie was recorded.
void tst_RecorderMovieFiles::recordedMoviesFollowThoseOfTheProfile()
{
    RecordedMoviesRig rig;
    rig.openWith(R"({"movies": [{"name": "A", "frames": 2}]})");
    QVERIFY(rig.recordMovie(5, "Mine"));
    rig.restartWith(R"({"movies": [{"name": "A"}, {"name": "B"}, {"name": "C"}]})");
    QCOMPARE(rig.names(), "A, Mine, C");
    rig.restartWith(R"({"movies": []})");
    QCOMPARE(rig.names(), "Mine");
    rig.useSmallestWindow();
    QVERIFY(rig.recordMovie(5, "Next"));
    QCOMPARE(rig.movieNumbers(), (Numbers{2, 3}));
}

void tst_RecorderMovieFiles::correctionsOutliveTheirFiles()
{
    RecordedMoviesRig rig;
    const auto select = [&rig](const char *name) {
        return rig.set("corrections.names", QVariantList{name, "", "", ""});
    };
    QVERIFY(rig.setWindow(160, 128) && rig.set("corrections.digitalCorrected", true));
    QVERIFY(zvtLoadNUC(rig.handle(), 0, "Factory 1 ms") == 0 && zvtSaveNUCAs(rig.handle(), 0, "Mine") == 0);
    QVERIFY(select("Mine") && rig.recordMovie(20, "corrected") && rig.recordMovie(20, "again"));
    const auto checksums = rig.checksums();
    QVERIFY(select("") && rig.recordMovie(20, "none"));
    QCOMPARE(rig.files("corrections").size(), 1);
    QCOMPARE(zvtDeleteNUC(rig.handle(), "Mine"), 0);
    rig.restart();
    QVERIFY(rig.loadMovie(1));
    QVERIFY(rig.checksums() == checksums);
    QVERIFY(rig.recorder().memory()->abated());
    QVERIFY(rig.loadMovie(2) && !rig.recorder().memory()->abated());
}

void tst_RecorderMovieFiles::formattingRemovesCorrections()
{
    RecordedMoviesRig rig;
    QVERIFY(rig.set("corrections.digitalCorrected", true));
    QVERIFY(rig.recordMovie(20));
    QCOMPARE(rig.files("corrections").size(), 2);
    rig.restart();
    rig.useSmallestWindow();
    QVERIFY(rig.load(0));
    const auto loaded = rig.recorder().memory();
    QVERIFY(rig.call(zvtSsdUnload));
    rig.format();
    QVERIFY(rig.files("corrections").isEmpty());
    // A movie that was read from the file still has its correction: a download may use it.
    std::vector<uint16_t> counts;
    const auto frame = rig.recorder().recorded(*loaded, 3);
    QVERIFY(frame.correction->correction() && rig.recorder().render(frame, emulator::image::Output::Digital, counts));
    QVERIFY(rig.recordMovie(20));
    QCOMPARE(rig.files("corrections").size(), 2);
}

void tst_RecorderMovieFiles::anUnreadableCorrectionStaysNone()
{
    RecordedMoviesRig rig;
    QVERIFY(rig.setWindow(160, 128) && rig.set("corrections.digitalCorrected", true));
    QVERIFY(zvtLoadNUC(rig.handle(), 0, "Factory 1 ms") == 0 && zvtSaveNUCAs(rig.handle(), 0, "Mine") == 0);
    QVERIFY(rig.set("corrections.names", QVariantList{"", "", "", ""}));
    QVERIFY(rig.set("corrections.names", QVariantList{"Mine", "", "", ""}));
    QFile file(rig.camera().folder() + "/nucs/Mine.nuc");
    QVERIFY(file.open(QIODevice::ReadWrite) && file.seek(5000) && file.write("damage") == 6);
    file.close();
    QVERIFY(rig.recordMovie(20));
    const auto checksums = rig.checksums();
    QVERIFY(rig.files("corrections").isEmpty());
    rig.restart();
    QVERIFY(rig.loadMovie(0));
    QVERIFY(rig.checksums() == checksums);
}

void tst_RecorderMovieFiles::otherFilesAreLeftAlone()
{
    RecordedMoviesRig rig;
    const QStringList others{"0.json", "01.json", "4294967295.json", "4294967296.json", "7.txt", "a.json"};
    for (const QString &name : others)
        QVERIFY(rig.write(name, "mine"));
    rig.restart();
    rig.useSmallestWindow();
    QCOMPARE(rig.movies(), 0U);
    QVERIFY(rig.recordMovie(5));
    rig.format();
    QCOMPARE(rig.files(), QStringList(others) + QStringList("drive.json"));
}

void tst_RecorderMovieFiles::filesOfAnInterruptedFormatDoNotCount()
{
    RecordedMoviesRig rig;
    QVERIFY(rig.recordMovie(5) && rig.recordMovie(6));
    rig.flush();
    const QByteArray first = rig.contentOf("1.json");
    const QByteArray second = rig.contentOf("2.json");
    rig.format();
    rig.flush();
    QVERIFY(rig.write("1.json", first) && rig.write("2.json", second));
    QVERIFY(QDir().mkdir(rig.path("corrections")) && rig.write("corrections/abc.nuc", "left"));
    rig.restart();
    QCOMPARE(rig.movies(), 0U);
    rig.useSmallestWindow();
    QVERIFY(rig.recordMovie(7));
    QCOMPARE(rig.files(), (QStringList{"1.json", "drive.json"}));
    QVERIFY(!rig.files("corrections").contains("abc.nuc"));
    rig.restart();
    QCOMPARE(rig.movieNumbers(), Numbers{1});
    QCOMPARE(rig.entries()[0].frames, 7U);
}

void tst_RecorderMovieFiles::aFormattedDriveNeedsNoListOfNumbers_data()
{
    QTest::addColumn<QByteArray>("list");
    QTest::addColumn<QByteArray>("report");
    QTest::newRow("missing") << QByteArray() << QByteArray();
    QTest::newRow("damaged") << QByteArray("damage") << QByteArray("drive\\.json: corrupt");
    const QByteArray head = R"({"magic": "zvt-emulated-drive", "version": 1, "values": )";
    QTest::newRow("number above 32 bits")
        << head + R"({"lastNumber": 4294967296, "formats": 2}})" << QByteArray("drive\\.json: damaged");
    QTest::newRow("no formats") << head + R"({"lastNumber": 2}})" << QByteArray("drive\\.json: damaged");
}

/// The movies tell how often the drive was formatted before.
void tst_RecorderMovieFiles::aFormattedDriveNeedsNoListOfNumbers()
{
    QFETCH(QByteArray, list);
    QFETCH(QByteArray, report);
    RecordedMoviesRig rig;
    rig.openWith(R"({"movies": [{"frames": 20}]})");
    QVERIFY(rig.recordMovie(5));
    rig.flush();
    const QByteArray old = rig.contentOf("2.json");
    rig.format();
    rig.format();
    QVERIFY(rig.recordMovie(6) && rig.recordMovie(7));
    rig.flush();
    QVERIFY(QFile::remove(rig.path("drive.json")) && rig.write("4.json", old));
    QVERIFY(list.isEmpty() || rig.write("drive.json", list));
    if (!report.isEmpty())
        expectReport(report);
    expectReport("4\\.json: from another format");
    rig.restart();
    QCOMPARE(rig.movieNumbers(), (Numbers{1, 2}));
    QCOMPARE(rig.entries()[1].frames, 7U);
    rig.useSmallestWindow();
    QVERIFY(rig.recordMovie(8));
    QCOMPARE(rig.movieNumbers(), (Numbers{1, 2, 5}));
    rig.flush();
    QCOMPARE(rig.contentOf("4.json"), old);
}

void tst_RecorderMovieFiles::aMovieThatDoesNotFitIsReported()
{
    RecordedMoviesRig rig;
    QVERIFY(rig.recordMovie(5) && rig.recordMovie(50));
    expectReport("movie 2 does not fit onto the drive");
    rig.restartWith(R"({"driveBytes": 32000})");
    // The movies of the profile come after those that were recorded.
    QCOMPARE(rig.movieNumbers(), (Numbers{1, 7}));
    QCOMPARE(rig.space(zvtGetSsdDriveSpaceFree), 32'000 - 5 * 640);
}

void tst_RecorderMovieFiles::aFailedWriteIsTriedAgain()
{
    RecordedMoviesRig rig;
    QVERIFY(QDir().mkdir(rig.path("1.json")));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("1\\.json: cannot be written"));
    QVERIFY(rig.recordMovie(5));
    rig.flush();
    QVERIFY(QDir().rmdir(rig.path("1.json")));
    QVERIFY(rig.recordMovie(5));
    QCOMPARE(rig.files(), (QStringList{"1.json", "2.json", "drive.json"}));
}

/// Two threads may write at the same time.
void tst_RecorderMovieFiles::anOlderContentIsNotWritten()
{
    RecordedMoviesRig rig;
    QVERIFY(rig.recordMovie(5));
    const emulator::Drive::Movie *movie = nullptr;
    QCOMPARE(rig.recorder().movie(0, movie), emulator::Ok);
    QTemporaryDir folder;
    emulator::MovieFolder files(folder.path());
    files.write({{}, 0, 1}, 2);
    files.write({{*movie}, 1, 0}, 1);
    QCOMPARE(files.written(), 2U);
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList("drive.json"));
}

void tst_RecorderMovieFiles::aRemovedFolderIsNotMadeAgain()
{
    RecordedMoviesRig rig;
    rig.flush();
    QVERIFY(QDir(rig.camera().folder()).removeRecursively());
    QVERIFY(rig.recordMovie(5));
    rig.flush();
    QVERIFY(!QDir(rig.camera().folder()).exists());
    QCOMPARE(rig.movies(), 1U);
}

ZVT_TEST(tst_RecorderMovieFiles)
#include "tst_RecorderMovieFiles.moc"
