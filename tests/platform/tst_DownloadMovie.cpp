#include "platform/emulator/devices/Link.h"
#include "tests/platform/TransferRig.h"
#include "tests/support/Test.h"

#include <algorithm>
#include <chrono>

using hlx::file::MovieFrame;

/// A download of the recorder's memory: the frames of the movie and their values.
class tst_DownloadMovie : public Test
{
    Q_OBJECT

private slots:
    void framesComeAsTheyWereRecorded();
    void eachFrameHasItsPresetAndItsTime();
    void theYearIsNotToldWithoutIt();
    void aRangeIsCutToTheEnd_data();
    void aRangeIsCutToTheEnd();
    void impossibleRequestsLeaveNoFile_data();
    void impossibleRequestsLeaveNoFile();
    void aCameraThatCannotTransferRefuses();
    void aLoadedMovieIsDownloaded();
    void lostFramesAreFetchedAgain();
    void framesThatNeverComeFailTheDownload();
    void tellsItsProgress();
    void tellsTheProgressOfBothStages();
    void tellsItsProgressEvery50Milliseconds_data();
    void tellsItsProgressEvery50Milliseconds();
    void takesTheTimeOfARunningClock();
    void needsNoProgress();
    void takesTheTimeOfTheLink_data();
    void takesTheTimeOfTheLink();
    void aRunningDownloadKeepsItsSpeed();
    void saturatedFramesAreMarked();
    void replacesAnExistingFile();
    void passesTheGate();

private:
    /// The frames that the link loses in a pass, by their places.
    static std::vector<uint32_t> lost(TransferRig &rig, uint32_t pass)
    {
        std::vector<uint32_t> places;
        uint32_t place = 0;
        for (const uint64_t number : rig.numbers()) {
            if (rig.camera().device<emulator::Link>()->loses(number, pass))
                places.push_back(place);
            ++place;
        }
        return places;
    }
    /// The places of the frames that have a flag.
    static std::vector<uint32_t> marked(TransferRig &rig, uint8_t flag)
    {
        std::vector<uint32_t> places;
        const auto frames = rig.frames();
        for (uint32_t place = 0; place < frames.size(); ++place)
            if (frames[place] && (frames[place]->info.flags & flag) != 0)
                places.push_back(place);
        return places;
    }
};

void tst_DownloadMovie::framesComeAsTheyWereRecorded()
{
    TransferRig rig;
    TransferRig::coolDetector();
    QVERIFY(rig.record(30));
    const auto recorded = rig.recorded();
    QCOMPARE(recorded.size(), 30U);
    QVERIFY(recorded[0] != recorded[1]);
    QVERIFY(rig.download());
    QCOMPARE(rig.downloaded(), recorded);
    const auto movie = rig.open();
    QCOMPARE(movie->imageFormat().width, 64U);
    QCOMPARE(movie->imageFormat().height, 4U);
    QCOMPARE(movie->imageFormat().bytesPerPixel(), 2U);
    QVERIFY(marked(rig, MovieFrame::fetchedAgain).empty());
}

void tst_DownloadMovie::eachFrameHasItsPresetAndItsTime()
{
    TransferRig rig;
    QVERIFY(rig.set("sensor.sequencingMode", 2) && rig.record(12));
    QVERIFY(rig.download());
    const auto frames = rig.frames();
    QCOMPARE(frames.size(), 12U);
    const auto &memory = *rig.recorder().memory();
    std::vector<bool> presets(4);
    for (uint32_t n = 0; n < frames.size(); ++n) {
        const auto recorded = rig.recorder().recorded(memory, n);
        const MovieFrame &info = frames[n]->info;
        QCOMPARE(info.number, uint32_t(recorded.start.number));
        QCOMPARE(int(info.preset), recorded.start.preset);
        presets[info.preset] = true;
        const zvtSIRIG &time = info.time;
        QCOMPARE(int(info.year), 2024);
        QCOMPARE(int(info.year), int(recorded.irigTime.year));
        QCOMPARE(int(time.day), int(recorded.irigTime.day));
        QCOMPARE(int(time.hour), int(recorded.irigTime.hour));
        QCOMPARE(int(time.minute), int(recorded.irigTime.minute));
        QCOMPARE(int(time.second), int(recorded.irigTime.second));
        QCOMPARE(int(time.millisecond), int(recorded.irigTime.millisecond));
        QCOMPARE(int(time.microsecond), int(recorded.irigTime.microsecond));
    }
    QCOMPARE(std::ranges::count(presets, true), 4);
}

void tst_DownloadMovie::theYearIsNotToldWithoutIt()
{
    TransferRig rig;
    rig.openDevices(R"({"clock": {"irigYear": false}})");
    QVERIFY(rig.record(1) && rig.download());
    QCOMPARE(int(rig.frames().at(0)->info.year), 0);
    QVERIFY(rig.frames().at(0)->info.time.day > 0);
}

void tst_DownloadMovie::aRangeIsCutToTheEnd_data()
{
    QTest::addColumn<unsigned int>("first");
    QTest::addColumn<unsigned int>("last");
    QTest::addColumn<unsigned int>("frames");
    QTest::newRow("all by number") << 0U << 19U << 20U;
    QTest::newRow("to the end") << 0U << TransferRig::toTheEnd << 20U;
    QTest::newRow("past the end") << 5U << 20U << 15U;
    QTest::newRow("inside") << 5U << 9U << 5U;
    QTest::newRow("one") << 7U << 7U << 1U;
    QTest::newRow("the last one") << 19U << TransferRig::toTheEnd << 1U;
}

void tst_DownloadMovie::aRangeIsCutToTheEnd()
{
    QFETCH(unsigned int, first);
    QFETCH(unsigned int, last);
    QFETCH(unsigned int, frames);
    TransferRig rig;
    TransferRig::coolDetector();
    QVERIFY(rig.record(20));
    QVERIFY(rig.download(first, last));
    QCOMPARE(rig.downloaded().size(), size_t(frames));
    QCOMPARE(rig.downloaded(), rig.recorded(first, frames));
}

void tst_DownloadMovie::impossibleRequestsLeaveNoFile_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<unsigned int>("first");
    QTest::addColumn<unsigned int>("last");
    QTest::newRow("first above last") << 3 << 5U << 4U;
    QTest::newRow("past the end") << 3 << 20U << TransferRig::toTheEnd;
    QTest::newRow("first above last, past the end") << 3 << 30U << 25U;
    QTest::newRow("nothing recorded") << 0 << 0U << TransferRig::toTheEnd;
    QTest::newRow("armed") << 1 << 0U << TransferRig::toTheEnd;
    QTest::newRow("recording") << 2 << 0U << TransferRig::toTheEnd;
}

void tst_DownloadMovie::impossibleRequestsLeaveNoFile()
{
    QFETCH(int, state);
    QFETCH(unsigned int, first);
    QFETCH(unsigned int, last);
    TransferRig rig;
    if (state == 3)
        QVERIFY(rig.record(20));
    if (state == 1 || state == 2)
        QVERIFY(rig.arm());
    if (state == 2)
        QVERIFY(rig.call(zvtSsdTrigger));
    QCOMPARE(rig.state(), state);
    QVERIFY(!rig.download(first, last));
    QVERIFY(!rig.exists());
    QVERIFY(rig.reports.empty());
    QCOMPARE(rig.state(), state);
}

void tst_DownloadMovie::aCameraThatCannotTransferRefuses()
{
    TransferRig rig;
    QVERIFY(rig.record(5));
    QVERIFY(rig.set("emulator./SSDTransfer", false));
    QVERIFY(!rig.download());
    QVERIFY(!rig.exists());
    QVERIFY(rig.set("emulator./SSDTransfer", true));
    QVERIFY(rig.download());
}

void tst_DownloadMovie::aLoadedMovieIsDownloaded()
{
    TransferRig rig;
    TransferRig::coolDetector();
    QVERIFY(rig.record(20));
    const auto recorded = rig.recorded();
    const uint32_t place = rig.movies();
    QVERIFY(rig.call(zvtSsdSaveBuffer));
    rig.wait(1000);
    QVERIFY(rig.record(3));
    QCOMPARE(zvtSsdLoadMovie(rig.handle(), place), 0);
    QVERIFY(rig.download());
    QCOMPARE(rig.downloaded(), recorded);
}

void tst_DownloadMovie::lostFramesAreFetchedAgain()
{
    TransferRig rig;
    TransferRig::coolDetector();
    QVERIFY(rig.record(200));
    QVERIFY(rig.lose(200'000));
    const auto again = lost(rig, 0);
    QVERIFY(again.size() > 20 && again.size() < 60);
    QVERIFY(rig.download());
    QCOMPARE(rig.downloaded(), rig.recorded());
    QCOMPARE(marked(rig, MovieFrame::fetchedAgain), again);
}

void tst_DownloadMovie::framesThatNeverComeFailTheDownload()
{
    TransferRig rig;
    QVERIFY(rig.record(10));
    QVERIFY(rig.lose(1'000'000) && rig.set("link.bytesPerSecond", 64'000));
    const int64_t begin = emulator::Clock::now();
    QVERIFY(!rig.download());
    // Once, and again in five passes.
    QCOMPARE(emulator::Clock::now() - begin, 6 * 10 * 10);
    QVERIFY(rig.frames().empty());
    QVERIFY(rig.open());
    // The first and the last frame of the stage.
    QCOMPARE(std::ranges::count(rig.reports, (TransferRig::Report{1, 0, 10})), 2);
    QCOMPARE(rig.reports.back(), (TransferRig::Report{1, 0, 10}));
}

void tst_DownloadMovie::tellsItsProgress()
{
    TransferRig rig;
    QVERIFY(rig.record(20));
    QVERIFY(rig.download(3, 12));
    QCOMPARE(rig.reports.front(), (TransferRig::Report{0, 1, 10}));
    QCOMPARE(rig.reports.back(), (TransferRig::Report{0, 10, 10}));
    // The first frame is the last one.
    rig.reports.clear();
    QVERIFY(rig.download(3, 3));
    QCOMPARE(rig.reports, (std::vector<TransferRig::Report>{{0, 1, 1}}));
}

void tst_DownloadMovie::tellsTheProgressOfBothStages()
{
    TransferRig rig;
    QVERIFY(rig.record(100));
    QVERIFY(rig.lose(200'000));
    const auto again = static_cast<unsigned int>(lost(rig, 0).size());
    QVERIFY(rig.download());
    std::vector<TransferRig::Report> ends;
    for (const auto &report : rig.reports) {
        QCOMPARE(report.total, report.stage == 0 ? 100U : again);
        if (report.done == report.total)
            ends.push_back(report);
    }
    QCOMPARE(ends, (std::vector<TransferRig::Report>{{0, 100, 100}, {1, again, again}}));
    const auto second = std::ranges::find(rig.reports, 1, &TransferRig::Report::stage);
    QVERIFY(second->done <= 1);
    QVERIFY(std::ranges::all_of(rig.reports.begin(), second, [](const auto &report) { return report.stage == 0; }));
}

void tst_DownloadMovie::tellsItsProgressEvery50Milliseconds_data()
{
    QTest::addColumn<int>("frames");
    QTest::addColumn<int>("bytesPerSecond");
    // 2 ms each. A busy computer may pause the test for longer than a tenth of a second.
    QTest::newRow("many frames") << 400 << 320'000;
    QTest::newRow("long frames") << 4 << 6400; // 100 ms each.
}

void tst_DownloadMovie::tellsItsProgressEvery50Milliseconds()
{
    using Clock = std::chrono::steady_clock;
    QFETCH(int, frames);
    QFETCH(int, bytesPerSecond);
    TransferRig rig;
    QVERIFY(rig.record(static_cast<uint32_t>(frames)) && rig.set("link.bytesPerSecond", bytesPerSecond));
    emulator::Clock::automatic();
    std::vector<Clock::time_point> times;
    QVERIFY(rig.download([&](TransferRig::Report) {
        times.push_back(Clock::now());
        return 0;
    }));
    emulator::Clock::stop();
    size_t between = 0;
    for (size_t i = 1; i < times.size(); ++i) {
        const unsigned int before = rig.reports[i - 1].done;
        const unsigned int done = rig.reports[i].done;
        QVERIFY(done >= before);
        // The first and the last frame are told in any case.
        if (done == static_cast<unsigned int>(frames) || (done == 1 && before == 0))
            continue;
        QVERIFY(times[i] - times[i - 1] >= std::chrono::milliseconds(49));
        ++between;
    }
    QVERIFY(between > 0);
}

void tst_DownloadMovie::takesTheTimeOfARunningClock()
{
    TransferRig rig;
    TransferRig::coolDetector();
    QVERIFY(rig.record(100) && rig.lose(50'000));
    const auto again = lost(rig, 0);
    QVERIFY(!again.empty());
    emulator::Clock::automatic();
    const int64_t begin = emulator::Clock::now();
    QVERIFY(rig.download());
    QVERIFY(emulator::Clock::now() - begin >= 100 * TransferRig::frameBytes / 100'000);
    emulator::Clock::stop();
    QCOMPARE(rig.downloaded(), rig.recorded());
    QCOMPARE(marked(rig, MovieFrame::fetchedAgain), again);
}

void tst_DownloadMovie::needsNoProgress()
{
    TransferRig rig;
    QVERIFY(rig.record(20));
    QVERIFY(rig.controller()->DownloadMovie(qPrintable(rig.path()), {}, 0, TransferRig::toTheEnd));
    QCOMPARE(rig.downloaded(), rig.recorded());
}

void tst_DownloadMovie::takesTheTimeOfTheLink_data()
{
    QTest::addColumn<int>("bytesPerSecond");
    QTest::addColumn<int>("frames");
    QTest::addColumn<int>("milliseconds");
    QTest::newRow("ten milliseconds a frame") << 64'000 << 20 << 200;
    QTest::newRow("less than a millisecond a frame") << 6'400'000 << 200 << 20;
    QTest::newRow("slow") << 1000 << 3 << 1920;
    QTest::newRow("usual") << 100'000'000 << 1000 << 6;
}

void tst_DownloadMovie::takesTheTimeOfTheLink()
{
    QFETCH(int, bytesPerSecond);
    QFETCH(int, frames);
    QFETCH(int, milliseconds);
    TransferRig rig;
    QVERIFY(rig.record(static_cast<uint32_t>(frames)));
    QVERIFY(rig.set("link.bytesPerSecond", bytesPerSecond));
    const int64_t begin = emulator::Clock::now();
    QVERIFY(rig.download());
    QCOMPARE(emulator::Clock::now() - begin, milliseconds);
}

void tst_DownloadMovie::aRunningDownloadKeepsItsSpeed()
{
    TransferRig rig;
    QVERIFY(rig.record(20));
    QVERIFY(rig.set("link.bytesPerSecond", 64'000));
    const int64_t begin = emulator::Clock::now();
    QVERIFY(rig.download([&](TransferRig::Report) { return rig.set("link.bytesPerSecond", 1000) ? 0 : 1; }));
    QCOMPARE(emulator::Clock::now() - begin, 200);
}

void tst_DownloadMovie::saturatedFramesAreMarked()
{
    TransferRig rig;
    // A warm detector gives white frames.
    QVERIFY(rig.record(2) && rig.download());
    QCOMPARE(marked(rig, MovieFrame::saturated), (std::vector<uint32_t>{0, 1}));
    TransferRig::coolDetector();
    QVERIFY(rig.record(2) && rig.download());
    QVERIFY(marked(rig, MovieFrame::saturated).empty());
}

void tst_DownloadMovie::replacesAnExistingFile()
{
    TransferRig rig;
    TransferRig::coolDetector();
    QVERIFY(rig.record(20) && rig.download());
    QCOMPARE(rig.downloaded().size(), 20U);
    QVERIFY(rig.record(5) && rig.download());
    QCOMPARE(rig.downloaded(), rig.recorded());
    QCOMPARE(rig.downloaded().size(), 5U);
}

void tst_DownloadMovie::passesTheGate()
{
    TransferRig rig;
    QVERIFY(rig.record(5));
    rig.camera().gate().failNext("controller.DownloadMovie");
    QVERIFY(!rig.download());
    QVERIFY(!rig.exists());
    const size_t mark = rig.camera().gate().mark();
    QVERIFY(rig.download(1, 2));
    const auto calls = rig.camera().gate().callsSince(mark);
    QCOMPARE(calls.size(), 1U);
    QCOMPARE(calls[0].name, std::string("controller.DownloadMovie"));
    QCOMPARE(calls[0].status, 0);
    QCOMPARE(calls[0].arguments, '"' + rig.path().toStdString() + "\", delegate, 1, 2");
}

ZVT_TEST(tst_DownloadMovie)
#include "tst_DownloadMovie.moc"
