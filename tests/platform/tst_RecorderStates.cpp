#include "tests/platform/RecorderRig.h"
#include "tests/support/Test.h"

#include <functional>
#include <map>

namespace
{

using Machine = emulator::RecorderMachine;

/// A state of the recorder, with or without a loaded movie.
struct Situation {
    Machine::State state;
    bool movie = false;
};

const std::map<QByteArray, Situation> situations{
    {"disarmed", {Machine::Disarmed}},
    {"armed", {Machine::Armed}},
    {"triggered", {Machine::Triggered}},
    {"complete", {Machine::Complete}},
    {"playing", {Machine::Playing}},
    {"playing a movie", {Machine::Playing, true}},
    {"saving", {Machine::Saving}},
    {"paused", {Machine::Paused}},
    {"paused in a movie", {Machine::Paused, true}},
    {"formatting", {Machine::Formatting}},
    {"loading", {Machine::Loading}},
    {"recording paused", {Machine::RecordPaused}},
    {"movie loaded", {Machine::MovieLoaded, true}},
    {"arming", {Machine::Arming}},
    {"download requested", {Machine::DownloadRequested}},
    {"download requested, movie", {Machine::DownloadRequested, true}},
};

/// The next state for each state in which the command is allowed; `movie` replaces it while a movie is loaded.
struct Command {
    std::function<int(uint64_t)> call;
    std::map<int, int> next;
    bool needsMovie = false;
    std::map<int, int> nextWithMovie = {};
};

const std::map<int, int> toPaused{{3, 6}, {4, 6}, {6, 6}, {10, 6}};

const std::map<QByteArray, Command> commands{
    {"arm", {zvtSsdArm, {{0, 11}, {3, 11}, {10, 11}}}},
    {"disarm", {zvtSsdDisarm, {{1, 0}}}},
    {"trigger", {zvtSsdTrigger, {{1, 2}}}},
    {"pause the recording", {zvtSsdRecordPause, {{2, 9}}}},
    {"resume the recording", {zvtSsdRecordResume, {{9, 2}}}},
    {"stop the recording", {zvtSsdRecordStop, {{2, 3}, {9, 3}}}},
    {"save", {zvtSsdSaveBuffer, {{3, 5}}}},
    {"format", {zvtSsdFormatDrive, {{0, 7}, {3, 7}}}},
    {"load",
     {[](uint64_t h) { return zvtSsdLoadMovie(h, 0); }, {{0, 10}, {3, 10}, {4, 10}, {6, 10}, {10, 10}, {12, 12}}}},
    {"play", {zvtSsdPlayBuffer, {{3, 4}, {4, 4}, {6, 4}, {10, 4}}}},
    {"pause", {zvtSsdPauseBuffer, {{4, 6}}}},
    {"resume", {zvtSsdResumeBuffer, {{6, 4}}}},
    {"skip forward", {zvtSsdSkipForward, toPaused}},
    {"skip backward", {zvtSsdSkipBackward, toPaused}},
    {"skip to a frame", {[](uint64_t h) { return zvtSsdSkipToFrame(h, 4); }, toPaused}},
    {"stop", {zvtSsdStopBuffer, {{3, 3}, {4, 3}, {6, 3}, {10, 10}, {12, 12}}, false, {{4, 10}, {6, 10}, {12, 12}}}},
    {"unload", {zvtSsdUnload, {{4, 0}, {6, 0}, {10, 0}, {12, 12}}, true}},
    {"download starts", {zvtSsdAutoDownloadStart, {{12, 12}}}},
    {"download is done", {zvtSsdAutoDownloadDone, {{12, 3}}, false, {{12, 10}}}},
};

bool load(RecorderRig &rig) { return zvtSsdLoadMovie(rig.handle(), 0) == 0; }

bool trigger(RecorderRig &rig) { return rig.arm() && rig.call(zvtSsdTrigger); }

bool play(RecorderRig &rig) { return rig.call(zvtSsdPlayBuffer); }

bool requestDownload(RecorderRig &rig)
{
    const bool triggered = rig.set(zvtSetSsdAutoDownload, 1) && trigger(rig);
    rig.wait(100);
    return triggered;
}

/// From a recording or a movie in the memory to a state.
const std::map<Machine::State, bool (*)(RecorderRig &)> ways{
    {Machine::Disarmed, [](RecorderRig &rig) { return rig.arm() && rig.call(zvtSsdDisarm); }},
    {Machine::Arming, [](RecorderRig &rig) { return rig.call(zvtSsdArm); }},
    {Machine::Armed, [](RecorderRig &rig) { return rig.arm(); }},
    {Machine::Triggered, trigger},
    {Machine::RecordPaused, [](RecorderRig &rig) { return trigger(rig) && rig.call(zvtSsdRecordPause); }},
    {Machine::Complete, [](RecorderRig &) { return true; }},
    {Machine::MovieLoaded, [](RecorderRig &) { return true; }},
    {Machine::Playing, play},
    {Machine::Paused, [](RecorderRig &rig) { return play(rig) && rig.call(zvtSsdPauseBuffer); }},
    {Machine::Saving, [](RecorderRig &rig) { return rig.call(zvtSsdSaveBuffer); }},
    {Machine::Formatting, [](RecorderRig &rig) { return rig.call(zvtSsdFormatDrive); }},
    {Machine::DownloadRequested, requestDownload},
};

} // namespace

/// The states of the recorder and the commands that each of them allows.
class tst_RecorderStates : public Test
{
    Q_OBJECT

private slots:
    void aStateAllowsItsCommandsOnly_data();
    void aStateAllowsItsCommandsOnly();
    void refusesCommandsBeforeTheFirstConnection();
    void statesThatTakeTimeEndByThemselves();
    void aDownloadEndsByItself();
    void aDownloadDoesNotEndDuringALoad();
    void theEndOfADownloadEndsALoad();
    void aDriveThatIsNoLongerRecognizedIsNotArmedAgain();
    void aLoadFillsTheMemory();
    void refusesMoviesThatDoNotFitTheWindow();
    void aDisconnectedLoadFails();
    void theRiseOfTheInputTriggers();

private:
    /// Brings a recorder with a movie on its drive into a situation. For Loading, `then` is called in it.
    static bool reach(RecorderRig &rig, const Situation &situation, const std::function<void()> &then);
};

bool tst_RecorderStates::reach(RecorderRig &rig, const Situation &situation, const std::function<void()> &then)
{
    if (!rig.record(10) || !rig.call(zvtSsdSaveBuffer))
        return false;
    rig.wait(500);
    if (!rig.set(zvtSetSsdLoopPlayback, 1) || zvtSetSsdNumFrames(rig.handle(), 10) != 0)
        return false;
    if (situation.movie && situation.state != Machine::DownloadRequested && !load(rig))
        return false;
    if (situation.state == Machine::Loading) {
        emulator::Clock::duringNextWait(then);
        return load(rig);
    }
    if (!ways.at(situation.state)(rig))
        return false;
    if (situation.movie && situation.state == Machine::DownloadRequested && !load(rig))
        return false;
    const bool reached = rig.state() == situation.state;
    then();
    return reached;
}

void tst_RecorderStates::aStateAllowsItsCommandsOnly_data()
{
    QTest::addColumn<QByteArray>("situation");
    QTest::addColumn<QByteArray>("command");
    for (const auto &[situation, unused] : situations)
        for (const auto &[command, unusedToo] : commands)
            QTest::addRow("%s: %s", situation.constData(), command.constData()) << situation << command;
}

void tst_RecorderStates::aStateAllowsItsCommandsOnly()
{
    QFETCH(QByteArray, situation);
    QFETCH(QByteArray, command);
    const Situation &from = situations.at(situation);
    const Command &given = commands.at(command);
    int status = 1;
    int before = 255;
    int after = 255;
    uint32_t movies = 0;
    uint32_t frames = 0;
    bool unchanged = false;
    int64_t time = -1;
    RecorderRig rig;
    const bool reached = reach(rig, from, [&] {
        before = rig.state();
        movies = rig.movies();
        frames = rig.acquired();
        const uint8_t loaded = rig.number<uint8_t>(zvtGetSsdMovieLoaded);
        const int64_t start = emulator::Clock::now();
        status = given.call(rig.handle());
        time = emulator::Clock::now() - start;
        after = rig.state();
        unchanged = after == before && rig.movies() == movies && rig.acquired() == frames
            && rig.number<uint8_t>(zvtGetSsdMovieLoaded) == loaded;
    });
    QVERIFY(reached);
    QCOMPARE(before, int(from.state));
    QCOMPARE(movies, 1U);
    // All commands but a load return at once.
    if (command != "load")
        QCOMPARE(time, int64_t(0));
    const auto allowed = given.next.find(before);
    if (allowed == given.next.end() || (given.needsMovie && !from.movie)) {
        QCOMPARE(status, int(emulator::Refused));
        QVERIFY(unchanged);
        return;
    }
    QCOMPARE(status, 0);
    const auto withMovie = given.nextWithMovie.find(before);
    QCOMPARE(after, from.movie && withMovie != given.nextWithMovie.end() ? withMovie->second : allowed->second);
}

void tst_RecorderStates::refusesCommandsBeforeTheFirstConnection()
{
    QTemporaryDir folder;
    const auto camera = emulator::Camera::create(QStringLiteral("everything"), folder.path());
    QCOMPARE(zvtSsdArm(camera->handle()), int(emulator::NotConnected));
    QCOMPARE(camera->device<emulator::Recorder>()->arm(), emulator::Refused);
    QVERIFY(camera->otherClient().set(QStringLiteral("emulator./RecordStart"), true));
    QCOMPARE(int(camera->device<emulator::Recorder>()->state()), 0);
}

void tst_RecorderStates::statesThatTakeTimeEndByThemselves()
{
    RecorderRig rig;
    QVERIFY(rig.call(zvtSsdArm));
    rig.wait(299);
    QCOMPARE(rig.state(), 11);
    rig.wait(1);
    QCOMPARE(rig.state(), 1);
    QVERIFY(rig.call(zvtSsdDisarm) && rig.record(20));
    QVERIFY(rig.call(zvtSsdSaveBuffer));
    rig.wait(499);
    QCOMPARE(rig.state(), 5);
    QCOMPARE(rig.movies(), 0U);
    rig.wait(1);
    QCOMPARE(rig.state(), 3);
    QCOMPARE(rig.movies(), 1U);
    for (const int from : {3, 0}) {
        QVERIFY(rig.call(zvtSsdFormatDrive));
        rig.wait(2999);
        QCOMPARE(rig.state(), 7);
        rig.wait(1);
        QCOMPARE(rig.state(), from);
        QCOMPARE(rig.movies(), 0U);
        QCOMPARE(rig.acquired(), from == 3 ? 20U : 0U);
        QVERIFY(from == 0 || (rig.arm() && rig.call(zvtSsdDisarm)));
    }
    // 2000 frames of 640 bytes at 1 000 000 bytes/s.
    rig.openWith(R"({"driveBytesPerSecond": 1000000})");
    QVERIFY(rig.record(2000) && rig.call(zvtSsdSaveBuffer));
    rig.wait(1279);
    QCOMPARE(rig.state(), 5);
    rig.wait(1);
    QCOMPARE(rig.state(), 3);
    const int64_t before = emulator::Clock::now();
    QCOMPARE(zvtSsdLoadMovie(rig.handle(), 0), 0);
    QCOMPARE(emulator::Clock::now() - before, 1480);
    QCOMPARE(rig.state(), 10);
}

void tst_RecorderStates::aDownloadEndsByItself()
{
    for (const bool starts : {false, true}) {
        RecorderRig rig;
        QVERIFY(rig.set(zvtSetSsdAutoDownload, 1) && zvtSetSsdNumFrames(rig.handle(), 10) == 0);
        QVERIFY(rig.arm() && rig.call(zvtSsdTrigger));
        rig.wait(100 + 59'999);
        QCOMPARE(rig.state(), 12);
        if (starts) {
            QVERIFY(rig.call(zvtSsdAutoDownloadStart));
            rig.wait(59'999);
            QCOMPARE(rig.state(), 12);
        }
        rig.wait(1);
        QCOMPARE(rig.state(), 3);
        QCOMPARE(rig.acquired(), 10U);
    }
}

void tst_RecorderStates::aDownloadDoesNotEndDuringALoad()
{
    RecorderRig rig;
    // 100 frames of 640 bytes at 1000 bytes/s: 64 s.
    rig.openWith(R"({"driveBytesPerSecond": 1000})");
    QVERIFY(rig.record(100) && rig.call(zvtSsdSaveBuffer));
    rig.wait(64'000);
    QCOMPARE(rig.movies(), 1U);
    QVERIFY(rig.set(zvtSetSsdAutoDownload, 1) && zvtSetSsdNumFrames(rig.handle(), 10) == 0 && trigger(rig));
    rig.wait(100 + 59'000);
    QCOMPARE(rig.state(), 12);
    int during = 255;
    bool loads = false;
    emulator::Clock::duringNextWait([&] {
        rig.wait(63'000);
        during = rig.state();
        loads = rig.acquired() == 10;
    });
    QVERIFY(load(rig));
    QCOMPARE(during, 12);
    QVERIFY(loads);
    QCOMPARE(rig.state(), 10);
    QCOMPARE(rig.acquired(), 100U);
    // The next option follows the load, not the 60 s.
    QVERIFY(rig.set(zvtSetSsdAutoRearm, 1) && trigger(rig));
    rig.wait(100 + 59'000);
    QCOMPARE(zvtSsdLoadMovie(rig.handle(), 0), int(emulator::Refused));
    QCOMPARE(rig.state(), 11);
    rig.wait(300);
    QCOMPARE(rig.state(), 1);
}

void tst_RecorderStates::theEndOfADownloadEndsALoad()
{
    RecorderRig rig;
    QVERIFY(rig.record(30) && rig.call(zvtSsdSaveBuffer));
    rig.wait(500);
    QVERIFY(zvtSetSsdNumFrames(rig.handle(), 10) == 0 && requestDownload(rig));
    int after = 255;
    emulator::Clock::duringNextWait([&] {
        zvtSsdAutoDownloadDone(rig.handle());
        after = rig.state();
    });
    QCOMPARE(zvtSsdLoadMovie(rig.handle(), 0), int(emulator::Refused));
    QCOMPARE(after, 3);
    QCOMPARE(rig.state(), 3);
    QCOMPARE(rig.acquired(), 10U);
    QVERIFY(load(rig));
    QCOMPARE(rig.acquired(), 30U);
}

void tst_RecorderStates::aDriveThatIsNoLongerRecognizedIsNotArmedAgain()
{
    RecorderRig rig;
    rig.openWith(R"({"mode": 1, "frames": 20, "autoRearm": true})");
    QVERIFY(trigger(rig));
    QVERIFY(rig.set("recorder.recognized", false));
    rig.wait(200);
    QCOMPARE(rig.state(), 5);
    rig.wait(500);
    QCOMPARE(rig.state(), 0);
    QCOMPARE(rig.recorder().timesFull(), 0U);
    QCOMPARE(zvtSsdArm(rig.handle()), int(emulator::Refused));
    QVERIFY(rig.set("recorder.recognized", true));
    QCOMPARE(rig.movies(), 1U);
    QVERIFY(trigger(rig));
    rig.wait(700);
    QCOMPARE(rig.state(), 11);
}

void tst_RecorderStates::aLoadFillsTheMemory()
{
    RecorderRig rig;
    for (const uint32_t frames : {30U, 20U})
        QVERIFY(rig.record(frames) && rig.call(zvtSsdSaveBuffer) && (rig.wait(500), rig.state() == 3));
    const auto loaded = [&] { return rig.number<uint8_t>(zvtGetSsdMovieLoaded); };
    QCOMPARE(loaded(), uint8_t(0));
    QCOMPARE(zvtSsdLoadMovie(rig.handle(), 2), int(emulator::Refused));
    QVERIFY(zvtSetSsdStartFrame(rig.handle(), 7) == 0 && zvtSetSsdEndFrame(rig.handle(), 9) == 0);
    QCOMPARE(zvtSsdLoadMovie(rig.handle(), 0), 0);
    QCOMPARE(loaded(), uint8_t(1));
    QCOMPARE(rig.acquired(), 30U);
    QCOMPARE(rig.number<uint32_t>(zvtGetSsdStartFrame), 0U);
    QCOMPARE(rig.number<uint32_t>(zvtGetSsdEndFrame), 29U);
    QCOMPARE(zvtSsdLoadMovie(rig.handle(), 1), 0);
    QCOMPARE(rig.acquired(), 20U);
    QVERIFY(rig.call(zvtSsdUnload));
    QCOMPARE(loaded(), uint8_t(0));
    QCOMPARE(rig.acquired(), 0U);
    QCOMPARE(zvtSsdLoadMovie(rig.handle(), 0), 0);
    QVERIFY(rig.arm());
    QCOMPARE(loaded(), uint8_t(0));
}

void tst_RecorderStates::refusesMoviesThatDoNotFitTheWindow()
{
    RecorderRig rig;
    QVERIFY(rig.record(30) && rig.call(zvtSsdSaveBuffer));
    rig.wait(500);
    QVERIFY(rig.set("sensor.window", QVariantList{0, 0, 80, 4}));
    QCOMPARE(zvtSsdLoadMovie(rig.handle(), 0), int(emulator::Refused));
    QCOMPARE(rig.state(), 3);
    QVERIFY(rig.set("sensor.window", QVariantList{16, 8, 64, 4}));
    QCOMPARE(zvtSsdLoadMovie(rig.handle(), 0), 0);
}

void tst_RecorderStates::aDisconnectedLoadFails()
{
    RecorderRig rig;
    QVERIFY(rig.record(30) && rig.call(zvtSsdSaveBuffer));
    rig.wait(500);
    emulator::Clock::duringNextWait([&] { rig.camera().disconnect(); });
    const int64_t start = emulator::Clock::now();
    QCOMPARE(zvtSsdLoadMovie(rig.handle(), 0), int(emulator::NotConnected));
    QVERIFY(emulator::Clock::now() <= start + 50);
    // The recorder goes on.
    rig.camera().connect();
    QCOMPARE(rig.state(), 8);
    rig.wait(200);
    QCOMPARE(rig.state(), 10);
}

void tst_RecorderStates::theRiseOfTheInputTriggers()
{
    RecorderRig rig;
    QVERIFY(rig.call(zvtSsdArm));
    QVERIFY(rig.set("emulator./RecordStart", true));
    rig.wait(300);
    QCOMPARE(rig.state(), 1);
    QVERIFY(rig.set("emulator./RecordStart", true));
    QCOMPARE(rig.state(), 1);
    QVERIFY(rig.set("emulator./RecordStart", false));
    QCOMPARE(rig.state(), 1);
    QVERIFY(rig.set("emulator./RecordStart", true));
    QCOMPARE(rig.state(), 2);
}

ZVT_TEST(tst_RecorderStates)
#include "tst_RecorderStates.moc"
