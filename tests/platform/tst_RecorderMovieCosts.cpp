#include "platform/emulator/devices/CorrectionStore.h"
#include "platform/emulator/devices/MovieFolder.h"
#include "platform/emulator/devices/Recording.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/devices/Trigger.h"
#include "tests/platform/RecordedMoviesRig.h"
#include "tests/support/Test.h"

#include <QElapsedTimer>
#include <QRegularExpression>

#include <functional>

namespace
{

using Numbers = std::vector<uint32_t>;

qsizetype openFiles() { return QDir("/proc/self/fd").entryList(QDir::AllEntries | QDir::System).size(); }

/// Saves movies of which each has two corrections of its own.
bool recordWithCorrections(RecordedMoviesRig &rig, int movies)
{
    bool done = rig.set("corrections.digitalCorrected", true);
    auto &store = *rig.camera().device<emulator::CorrectionStore>();
    for (int movie = 0; movie < movies; ++movie) {
        const std::string name = "Own " + std::to_string(movie);
        auto own = store.read("Factory 1 ms");
        own->info.numFrames = static_cast<uint32_t>(1000 + movie);
        const QString text = QString::fromStdString(name);
        done = done && store.write(name, own->info, *own->table) == emulator::Ok
            && rig.set("corrections.names", QVariantList{text, "", "", ""}) && rig.recordMovie(2);
    }
    rig.flush();
    return done;
}

/// The correction of a frame of the movie with this place.
std::shared_ptr<emulator::RecordedCorrection> correctionOf(RecordedMoviesRig &rig, uint32_t place)
{
    const emulator::Drive::Movie *movie = nullptr;
    if (rig.recorder().movie(place, movie) != emulator::Ok)
        return nullptr;
    return rig.recorder().recorded(*movie->recording, 0).correction;
}

using Table = std::weak_ptr<const emulator::image::CorrectionTable>;

Table tableOf(RecordedMoviesRig &rig, uint32_t place)
{
    const auto correction = correctionOf(rig, place)->correction();
    return correction ? correction->table : nullptr;
}

} // namespace

/// What many movies cost, and faults of their files.
class tst_RecorderMovieCosts : public Test
{
    Q_OBJECT

private slots:
    void moviesKeepNoFilesOpen();
    void tablesAreNotKept();
    void usedTablesAreNotReadAgain();
    void theOthersAreWrittenAfterAFault();
    void noNumberComesAfterTheLast();
    void moviesOfALargerCameraAreReported_data();
    void moviesOfALargerCameraAreReported();
    void aCameraEndsAtOnce_data();
    void aCameraEndsAtOnce();
};

void tst_RecorderMovieCosts::moviesKeepNoFilesOpen()
{
    RecordedMoviesRig rig;
    const qsizetype before = openFiles();
    QVERIFY(recordWithCorrections(rig, 6));
    rig.set("corrections.names", QVariantList{"", "", "", ""});
    QVERIFY2(openFiles() <= before + 1, qPrintable(QString::number(openFiles() - before)));
    rig.restart();
    QCOMPARE(rig.movies(), 6U);
    QVERIFY2(openFiles() <= before, qPrintable(QString::number(openFiles() - before)));
    QVERIFY(correctionOf(rig, 5)->correction());
    QVERIFY2(openFiles() <= before, qPrintable(QString::number(openFiles() - before)));
}

/// Saving and downloading need the tables of many movies.
void tst_RecorderMovieCosts::tablesAreNotKept()
{
    RecordedMoviesRig rig;
    QVERIFY(recordWithCorrections(rig, 7));
    rig.set("corrections.names", QVariantList{"", "", "", ""});
    QVERIFY(rig.call(zvtSsdArm));
    for (const bool restarted : {false, true}) {
        if (restarted)
            rig.restart();
        std::vector<Table> tables;
        for (uint32_t place = 0; place < 7; ++place) {
            tables.push_back(tableOf(rig, place));
            QVERIFY(!tables.back().expired());
        }
        const auto kept = std::ranges::count_if(tables, [](const Table &table) { return !table.expired(); });
        QVERIFY2(kept <= emulator::maximumPresets, qPrintable(QString::number(kept)));
        QCOMPARE(correctionOf(rig, 0)->correction()->info.numFrames, 1000U);
    }
}

void tst_RecorderMovieCosts::usedTablesAreNotReadAgain()
{
    RecordedMoviesRig rig;
    QVERIFY(recordWithCorrections(rig, 2));
    rig.restart();
    const Table first = tableOf(rig, 0);
    const Table second = tableOf(rig, 1);
    QVERIFY(!first.expired() && tableOf(rig, 0).lock() == first.lock());
    QVERIFY(!second.expired() && tableOf(rig, 1).lock() == second.lock());
}

void tst_RecorderMovieCosts::theOthersAreWrittenAfterAFault()
{
    RecordedMoviesRig rig;
    QVERIFY(QDir().mkdir(rig.path("1.json")));
    // Once, though each change tries again.
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("1\\.json: cannot be written"));
    QVERIFY(rig.recordMovie(5));
    rig.flush();
    QVERIFY(rig.recordMovie(5));
    QCOMPARE(rig.files(), (QStringList{"2.json", "drive.json"}));
    QVERIFY(rig.recordMovie(5));
    QCOMPARE(rig.files(), (QStringList{"2.json", "3.json", "drive.json"}));
    QVERIFY(QDir().rmdir(rig.path("1.json")));
    QVERIFY(rig.recordMovie(5));
    QCOMPARE(rig.files(), (QStringList{"1.json", "2.json", "3.json", "4.json", "drive.json"}));
}

void tst_RecorderMovieCosts::noNumberComesAfterTheLast()
{
    RecordedMoviesRig rig;
    QVERIFY(rig.write("4294967293.json", "damage"));
    QTest::ignoreMessage(QtInfoMsg, QRegularExpression("4294967293\\.json: corrupt"));
    rig.restart();
    rig.useSmallestWindow();
    QVERIFY(rig.recordMovie(5));
    QCOMPARE(rig.movieNumbers(), Numbers{4'294'967'294});
    QVERIFY(rig.record(5) && rig.call(zvtSsdSaveBuffer));
    rig.wait(500);
    QCOMPARE(rig.movieNumbers(), Numbers{4'294'967'294});
    QVERIFY(rig.state() == 3 && rig.recorder().timesFull() == 1);
    rig.restart();
    QCOMPARE(rig.movieNumbers(), Numbers{4'294'967'294});
    rig.format();
    rig.useSmallestWindow();
    QVERIFY(rig.recordMovie(5));
    QCOMPARE(rig.movieNumbers(), Numbers{1});
}

void tst_RecorderMovieCosts::moviesOfALargerCameraAreReported_data()
{
    QTest::addColumn<QVariantList>("window");
    QTest::addColumn<int>("sequencing");
    QTest::addColumn<QByteArray>("devices");
    const QByteArray smaller = R"("sensor": {"maximumSize": "320x256", "windowSizes": ["320x256", "64x4"]})";
    QTest::newRow("size") << QVariantList{0, 0, 400, 4} << 1 << smaller;
    QTest::newRow("place") << QVariantList{480, 0, 64, 4} << 1 << smaller;
    QTest::newRow("presets") << QVariantList{0, 0, 64, 4} << 2
                             << QByteArray(R"("sensor": {"numPresets": 1}, "corrections": {"names": []})");
}

/// The file of the profile has changed.
void tst_RecorderMovieCosts::moviesOfALargerCameraAreReported()
{
    QFETCH(QVariantList, window);
    QFETCH(int, sequencing);
    QFETCH(QByteArray, devices);
    RecordedMoviesRig rig;
    rig.openWith("{}");
    QVERIFY(rig.recordMovie(5));
    QVERIFY(rig.set("sensor.window", window) && rig.set("sensor.sequencingMode", sequencing) && rig.recordMovie(6));
    QTest::ignoreMessage(QtInfoMsg, QRegularExpression("movie 2 needs a larger array or more presets"));
    rig.restartWithDevices(R"({"recorder": {"movies": []}, )" + devices + "}");
    QCOMPARE(rig.movieNumbers(), Numbers{1});
    rig.useSmallestWindow();
    QVERIFY(rig.recordMovie(5));
    QCOMPARE(rig.movieNumbers(), (Numbers{1, 3}));
}

void tst_RecorderMovieCosts::aCameraEndsAtOnce_data()
{
    using Prepare = std::function<bool(RecordedMoviesRig &)>;
    QTest::addColumn<Prepare>("prepare");
    const auto arm = [](RecordedMoviesRig &rig) { return rig.arm(); };
    const auto trigger = [](RecordedMoviesRig &rig) { return rig.arm() && rig.call(zvtSsdTrigger); };
    const auto save = [](RecordedMoviesRig &rig) {
        return rig.set(zvtSetSsdAutoSave, 1) && rig.set(zvtSetSsdAutoRearm, 1) && rig.record(50) == false
            && rig.state() == emulator::RecorderMachine::Saving;
    };
    const auto play = [](RecordedMoviesRig &rig) { return rig.record(50) && rig.call(zvtSsdPlayBuffer); };
    QTest::newRow("armed") << Prepare(arm);
    QTest::newRow("recording") << Prepare(trigger);
    QTest::newRow("saving, then armed") << Prepare(save);
    QTest::newRow("playing") << Prepare(play);
}

/// The clock jumps by years when it runs again: a camera that ends has no use for the frames since then.
void tst_RecorderMovieCosts::aCameraEndsAtOnce()
{
    QFETCH(std::function<bool(RecordedMoviesRig &)>, prepare);
    RecordedMoviesRig rig;
    QVERIFY(rig.set("sensor.sequencingMode", int(emulator::Sensor::PresetSequencing)) && prepare(rig));
    // A trigger that advances the presets a thousand times a second takes a step for each.
    QVERIFY(rig.set("trigger.internalRate", 1000) && rig.set("trigger.mode", int(emulator::Trigger::PresetAdvance)));
    rig.flush();
    const bool saves = rig.recorder().state() == emulator::RecorderMachine::Saving;
    emulator::Clock::automatic();
    QElapsedTimer timer;
    timer.start();
    rig.restart();
    QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(rig.movies(), saves ? 1U : 0U);
}

ZVT_TEST(tst_RecorderMovieCosts)
#include "tst_RecorderMovieCosts.moc"
