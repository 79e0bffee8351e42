#include "platform/emulator/devices/MovieFolder.h"
#include "platform/emulator/utf8.h"
#include "tests/platform/RecordedMoviesRig.h"
#include "tests/support/Test.h"

namespace
{

using Numbers = std::vector<uint32_t>;

constexpr auto twoMovies = R"({"movies": [{"name": "A", "frames": 20}, {"name": "B", "frames": 10}]})";

} // namespace

/// The movies on the drive: those of a new camera, and those that outlive the process.
class tst_RecorderMovies : public Test
{
    Q_OBJECT

private slots:
    void aNewCameraHasMovies();
    void moviesOfTheProfileAreTheSameAfterEachStart();
    void oneMovieOfTheProfileIsAbated();
    void moviesThatTheCameraCannotHaveAreLeftOut_data();
    void moviesThatTheCameraCannotHaveAreLeftOut();
    void wrongMoviesOfAProfileAreRefused_data();
    void wrongMoviesOfAProfileAreRefused();
    void aProfileMayHaveManyMovies();
    void spacesAddUp();
    void namesAreCutBetweenCharacters();
    void loadsNeedTheWindowAndThePlace();
    void aLoadedMovieReplacesTheMemory();
    void aMovieWithoutFramesIsLoadedAndNotPlayed();
    void aFolderMayHaveAnyName();
};

void tst_RecorderMovies::aNewCameraHasMovies()
{
    RecordedMoviesRig rig;
    rig.open("everything");
    const std::vector<MovieEntry> expected{
        {"Fast target", 1, 64, 5, 2000},
        {"Engine start", 2, 160, 129, 500},
        {"Two presets", 3, 320, 257, 300},
        {"Courtyard", 4, 640, 513, 200},
        {"One frame", 5, 640, 513, 1},
        {"Corrected in the camera", 6, 160, 129, 100},
        {"Empty", 7, 320, 257, 0},
        {"Überlanger Name für eine Aufnahme der Prüfstandsreihe Nr. 12 üb", 8, 64, 5, 50}};
    const auto entries = rig.entries();
    QCOMPARE(entries.size(), expected.size());
    for (size_t i = 0; i < entries.size(); ++i)
        QCOMPARE(entries[i].text(), expected[i].text());
    QCOMPARE(entries[7].name.size(), 67);
    int day = 310;
    for (const zvtSSsdMovieInfo &info : rig.list()) {
        if (info.numFrames == 0)
            QVERIFY(info.startTime.day == 0 && info.endTime.day == 0);
        else
            QVERIFY(info.startTime.day == day + 1 && info.startTime.hour == 9 && info.endTime.day == day + 1);
        ++day;
    }
    // 2000 frames, 1 ms each.
    const zvtSIRIG end = rig.list()[0].endTime;
    QVERIFY(end.minute == 0 && end.second == 1 && end.millisecond == 999 && end.microsecond == 0);
    QVERIFY(rig.loadMovie(2));
    for (uint64_t frame = 0; frame < 4; ++frame)
        QCOMPARE(rig.recorder().memory()->start(frame).preset, int(frame % 2));
    // None of this takes a file.
    QVERIFY(rig.files().isEmpty() && rig.files("corrections").isEmpty());
}

void tst_RecorderMovies::moviesOfTheProfileAreTheSameAfterEachStart()
{
    RecordedMoviesRig rig;
    rig.openWith(R"({"movies": [{"name": "A", "frames": 20, "presets": 2}, {"frames": 20, "abated": true}]})");
    std::vector<std::vector<uint32_t>> before;
    for (uint32_t place = 0; place < 2; ++place) {
        QVERIFY(rig.load(place));
        before.push_back(rig.checksums());
        QCOMPARE(before.back().size(), size_t(4));
    }
    QVERIFY(before[0] != before[1]);
    QVERIFY(rig.set("focus.position", 3000) && rig.set("sensor.integrationTime", 0.5)
            && rig.set("emulator./Pattern", 2));
    // The correction of the factory has been replaced.
    QVERIFY(zvtLoadNUC(rig.handle(), 0, "Factory 1 ms") == 0 && zvtSaveNUCAs(rig.handle(), 0, "Factory 2 ms") == 0);
    QCOMPARE(zvtSaveStateAs(rig.handle(), "other"), 0);
    rig.restart();
    for (uint32_t place = 0; place < 2; ++place) {
        QVERIFY(rig.setWindow(64, 4) && rig.load(place));
        QVERIFY(rig.checksums() == before[place]);
    }
}

void tst_RecorderMovies::oneMovieOfTheProfileIsAbated()
{
    RecordedMoviesRig rig;
    rig.open("everything");
    for (uint32_t place = 0; place < rig.movies(); ++place) {
        const emulator::Drive::Movie *movie = nullptr;
        QCOMPARE(rig.recorder().movie(place, movie), emulator::Ok);
        QCOMPARE(movie->recording->abated(), place == 5);
    }
}

void tst_RecorderMovies::moviesThatTheCameraCannotHaveAreLeftOut_data()
{
    QTest::addColumn<QByteArray>("devices");
    const auto row = [](const char *name, const QByteArray &recorder, const QByteArray &more = "") {
        QTest::newRow(name) << QByteArray(R"({"recorder": )" + recorder + more + "}");
    };
    row("window", R"({"movies": [{"width": 656, "frames": 3}, {"name": "B", "frames": 3}]})");
    row("presets", R"({"movies": [{"presets": 3, "frames": 3}, {"name": "B", "frames": 3}]})",
        R"(, "sensor": {"numPresets": 2}, "corrections": {"names": ["", ""]})");
    row("correction", R"({"movies": [{"presets": 3, "frames": 3, "abated": true}, {"name": "B", "frames": 3}]})");
    row("space", R"({"driveBytes": 6400, "movies": [{"frames": 11}, {"name": "B", "frames": 10}]})");
}

void tst_RecorderMovies::moviesThatTheCameraCannotHaveAreLeftOut()
{
    QFETCH(QByteArray, devices);
    RecordedMoviesRig rig;
    rig.openDevices(devices);
    QCOMPARE(rig.names(), "B");
    QCOMPARE(rig.movieNumbers(), Numbers{2});
}

void tst_RecorderMovies::wrongMoviesOfAProfileAreRefused_data()
{
    QTest::addColumn<QByteArray>("movies");
    QTest::addColumn<QByteArray>("error");
    QTest::newRow("no list") << QByteArray("3") << QByteArray("devices.recorder.movies: must be a list");
    QTest::newRow("no object") << QByteArray("[3]") << QByteArray("devices.recorder.movies: must be a list of objects");
    QTest::newRow("unknown key") << QByteArray(R"([{}, {"size": 3}])")
                                 << QByteArray("devices.recorder.movies[1].size: unknown key");
    QTest::newRow("frames") << QByteArray(R"([{"frames": -1}])")
                            << QByteArray("devices.recorder.movies[0].frames: must lie between 0 and 2147483647");
}

void tst_RecorderMovies::wrongMoviesOfAProfileAreRefused()
{
    QFETCH(QByteArray, movies);
    QFETCH(QByteArray, error);
    QTemporaryDir folder;
    const QString profile = writeProfile(folder.path(), "everything", R"({"recorder": {"movies": )" + movies + "}}");
    try {
        emulator::Camera::create(profile, folder.path());
        QFAIL("accepted");
    } catch (const std::exception &refusal) {
        QVERIFY2(QByteArray(refusal.what()).contains(error), refusal.what());
    }
}

void tst_RecorderMovies::aProfileMayHaveManyMovies()
{
    QByteArrayList movies;
    for (int number = 1; number <= 500; ++number)
        movies << R"({"name": "M)" + QByteArray::number(number) + R"(", "frames": 2})";
    RecordedMoviesRig rig;
    rig.openWith((R"({"movies": [)" + movies.join(", ") + "]}").constData());
    const auto entries = rig.entries();
    QCOMPARE(entries.size(), size_t(500));
    QVERIFY(entries[499] == (MovieEntry{"M500", 500, 64, 5, 2}));
    QVERIFY(rig.load(499));
}

void tst_RecorderMovies::spacesAddUp()
{
    RecordedMoviesRig rig;
    rig.openWith(R"({"driveBytes": 64000, "movies": [{"frames": 20}]})");
    const auto addsUp = [&rig](int64_t used) {
        const int64_t total = rig.space(zvtGetSsdDriveSpaceTotal);
        return total == 64'000 && rig.space(zvtGetSsdDriveSpaceUsed) == used
            && rig.space(zvtGetSsdDriveSpaceFree) == total - used;
    };
    QVERIFY(addsUp(20 * 640));
    QVERIFY(rig.recordMovie(30));
    QVERIFY(addsUp(50 * 640));
    rig.restart();
    QVERIFY(addsUp(50 * 640));
    QVERIFY(rig.set("recorder.driveFull", true));
    QVERIFY(addsUp(64'000));
    rig.format();
    QVERIFY(addsUp(0));
}

void tst_RecorderMovies::namesAreCutBetweenCharacters()
{
    RecordedMoviesRig rig;
    const QByteArray whole(66, 'a');
    for (const char *end : {"", "b", "ü", "b€", "bc"})
        QVERIFY(rig.recordMovie(1, whole + end));
    const auto entries = rig.entries();
    QCOMPARE(entries[0].name, whole);
    QCOMPARE(entries[1].name, whole + "b");
    QCOMPARE(entries[2].name, whole);
    QCOMPARE(entries[3].name, whole + "b");
    QCOMPARE(entries[4].name, whole + "b");
    const emulator::Drive::Movie *movie = nullptr;
    QCOMPARE(rig.recorder().movie(2, movie), emulator::Ok);
    QCOMPARE(movie->name, whole.toStdString());
    rig.restart();
    QVERIFY(rig.entries() == entries);
    QCOMPARE(emulator::beginningOf("\x80\x80", 1), std::string_view());
}

void tst_RecorderMovies::loadsNeedTheWindowAndThePlace()
{
    RecordedMoviesRig rig;
    rig.openWith(R"({"movies": [{"frames": 20}, {"width": 160, "height": 128, "frames": 5}]})");
    QVERIFY(rig.record(10));
    QVERIFY(!rig.load(1) && !rig.load(2) && !rig.load(UINT32_MAX));
    QVERIFY(rig.state() == 3 && rig.acquired() == 10);
    QVERIFY(rig.setWindow(160, 128) && !rig.load(0) && rig.load(1));
    QVERIFY(rig.state() == 10 && rig.acquired() == 5);
}

void tst_RecorderMovies::aLoadedMovieReplacesTheMemory()
{
    RecordedMoviesRig rig;
    rig.openWith(twoMovies);
    QVERIFY(rig.record(5) && rig.load(0));
    QCOMPARE(rig.acquired(), 20U);
    QVERIFY(rig.load(1));
    QCOMPARE(rig.acquired(), 10U);
    QVERIFY(rig.call(zvtSsdUnload));
    QVERIFY(rig.state() == 0 && rig.acquired() == 0 && !rig.recorder().memory());
}

void tst_RecorderMovies::aMovieWithoutFramesIsLoadedAndNotPlayed()
{
    RecordedMoviesRig rig;
    rig.openWith(R"({"movies": [{"frames": 0}]})");
    QVERIFY(rig.load(0));
    QVERIFY(rig.state() == 10 && rig.acquired() == 0);
    QVERIFY(!rig.call(zvtSsdPlayBuffer) && !rig.call(zvtSsdSkipForward));
    QCOMPARE(rig.number<uint32_t>(zvtGetSsdEndFrame), UINT32_MAX);
    QVERIFY(rig.call(zvtSsdUnload));
}

void tst_RecorderMovies::aFolderMayHaveAnyName()
{
    RecordedMoviesRig rig;
    QVERIFY(rig.recordMovie(5));
    const emulator::Drive::Movie *movie = nullptr;
    QCOMPARE(rig.recorder().movie(0, movie), emulator::Ok);
    const QTemporaryDir folder;
    const QString path = folder.path() + "/a%1b%2";
    QVERIFY(QDir().mkdir(path));
    emulator::MovieFolder(path).write({{*movie}, 1, 0}, 1);
    QVERIFY(QFile::exists(path + "/1.json"));
    QCOMPARE(emulator::MovieFolder(path).read().movies.size(), size_t(1));
}

ZVT_TEST(tst_RecorderMovies)
#include "tst_RecorderMovies.moc"
