#include "platform/emulator/devices/VideoOverlay.h"
#include "platform/emulator/devices/overlayTexts.h"
#include "platform/emulator/image/Overlay.h"
#include "platform/emulator/image/Picture.h"
#include "tests/platform/RecorderRig.h"
#include "tests/platform/VideoRig.h"
#include "tests/support/Test.h"

#include <limits>

/// The playback of the recorder, and its frames on the video output.
class tst_RecorderPlayback : public Test
{
    Q_OBJECT

private slots:
    void framesFollowTheRate();
    void endsAtTheEndFrame();
    void repeatsInALoop();
    void playsTheRangeOnly_data();
    void playsTheRangeOnly();
    void pausesAndGoesOn();
    void skipsToFramesThatExist();
    void startsByItselfAfterARecording();
    void takesChangesWhileItPlays();
    void ratesAreCut();
    void aRateIsCutWhenAPlaybackBegins();
    void theVideoShowsTheFrameWithItsTime();
    void theVideoShowsFramesOfAnotherWindow();
    void theVideoShowsALoadedMovie();
    void theOverlayShowsMessages();
};

void tst_RecorderPlayback::framesFollowTheRate()
{
    for (const int64_t milliseconds : {0, 19, 20, 500, 1979}) {
        RecorderRig rig;
        QVERIFY(rig.record(100) && zvtSetSsdPlaybackRate(rig.handle(), 50) == 0);
        QCOMPARE(rig.playbackFrame(), 0U);
        QVERIFY(rig.call(zvtSsdPlayBuffer));
        rig.wait(milliseconds);
        QCOMPARE(rig.playbackFrame(), uint32_t(milliseconds / 20));
        QCOMPARE(rig.state(), 4);
    }
}

void tst_RecorderPlayback::endsAtTheEndFrame()
{
    RecorderRig rig;
    QVERIFY(rig.record(100) && zvtSetSsdPlaybackRate(rig.handle(), 50) == 0 && rig.call(zvtSsdPlayBuffer));
    rig.wait(1999);
    QCOMPARE(rig.state(), 4);
    QCOMPARE(rig.playbackFrame(), 99U);
    rig.wait(1);
    QCOMPARE(rig.state(), 6);
    QCOMPARE(rig.playbackFrame(), 99U);
    // It starts again.
    QVERIFY(rig.call(zvtSsdResumeBuffer));
    QCOMPARE(rig.playbackFrame(), 0U);
    rig.wait(100);
    QCOMPARE(rig.playbackFrame(), 5U);
    QVERIFY(rig.call(zvtSsdStopBuffer));
    QCOMPARE(rig.state(), 3);
}

void tst_RecorderPlayback::repeatsInALoop()
{
    RecorderRig rig;
    QVERIFY(rig.record(100) && zvtSetSsdPlaybackRate(rig.handle(), 50) == 0);
    QVERIFY(rig.set(zvtSetSsdLoopPlayback, 1) && rig.call(zvtSsdPlayBuffer));
    rig.wait(2000 * 1000 + 40);
    QCOMPARE(rig.state(), 4);
    QCOMPARE(rig.playbackFrame(), 2U);
}

void tst_RecorderPlayback::playsTheRangeOnly_data()
{
    QTest::addColumn<uint32_t>("start");
    QTest::addColumn<uint32_t>("end");
    QTest::addColumn<uint32_t>("first");
    QTest::addColumn<uint32_t>("last");
    QTest::newRow("all") << 0U << UINT32_MAX << 0U << 49U;
    QTest::newRow("some") << 10U << 20U << 10U << 20U;
    QTest::newRow("one") << 10U << 10U << 10U << 10U;
    QTest::newRow("start above end") << 30U << 20U << 30U << 30U;
    QTest::newRow("after the end") << 100U << 200U << 49U << 49U;
}

void tst_RecorderPlayback::playsTheRangeOnly()
{
    QFETCH(uint32_t, start);
    QFETCH(uint32_t, end);
    QFETCH(uint32_t, first);
    QFETCH(uint32_t, last);
    RecorderRig rig;
    QVERIFY(rig.record(50) && zvtSetSsdPlaybackRate(rig.handle(), 100) == 0);
    QVERIFY(zvtSetSsdStartFrame(rig.handle(), start) == 0 && zvtSetSsdEndFrame(rig.handle(), end) == 0);
    QCOMPARE(rig.number<uint32_t>(zvtGetSsdStartFrame), start);
    QCOMPARE(rig.number<uint32_t>(zvtGetSsdEndFrame), end);
    QVERIFY(rig.call(zvtSsdPlayBuffer));
    for (uint32_t frame = first; frame <= last; ++frame) {
        QCOMPARE(rig.state(), 4);
        QCOMPARE(rig.playbackFrame(), frame);
        rig.wait(10);
    }
    QCOMPARE(rig.state(), 6);
    QCOMPARE(rig.playbackFrame(), last);
}

void tst_RecorderPlayback::pausesAndGoesOn()
{
    RecorderRig rig;
    QVERIFY(rig.record(100) && zvtSetSsdPlaybackRate(rig.handle(), 100) == 0 && rig.call(zvtSsdPlayBuffer));
    rig.wait(300);
    QVERIFY(rig.call(zvtSsdPauseBuffer));
    rig.wait(10'000);
    QCOMPARE(rig.playbackFrame(), 30U);
    QVERIFY(rig.call(zvtSsdResumeBuffer));
    rig.wait(100);
    QCOMPARE(rig.playbackFrame(), 40U);
    QVERIFY(rig.call(zvtSsdPlayBuffer));
    QCOMPARE(rig.playbackFrame(), 0U);
    // After a frame outside of the range, the playback starts at the first frame of the range.
    QVERIFY(zvtSsdSkipToFrame(rig.handle(), 70) == 0 && zvtSetSsdEndFrame(rig.handle(), 60) == 0);
    QCOMPARE(rig.playbackFrame(), 70U);
    QVERIFY(rig.call(zvtSsdResumeBuffer));
    QCOMPARE(rig.playbackFrame(), 0U);
}

void tst_RecorderPlayback::skipsToFramesThatExist()
{
    RecorderRig rig;
    QVERIFY(rig.record(10) && rig.call(zvtSsdSkipBackward));
    QVERIFY(rig.playbackFrame() == 0 && rig.call(zvtSsdSkipForward) && rig.playbackFrame() == 1);
    QVERIFY(zvtSsdSkipToFrame(rig.handle(), 9) == 0 && rig.call(zvtSsdSkipForward) && rig.playbackFrame() == 9);
    QVERIFY(zvtSsdSkipToFrame(rig.handle(), UINT32_MAX) == 0 && rig.playbackFrame() == 9);
    QVERIFY(rig.call(zvtSsdSkipBackward) && rig.playbackFrame() == 8);
    QCOMPARE(rig.state(), 6);
}

void tst_RecorderPlayback::startsByItselfAfterARecording()
{
    RecorderRig rig;
    QVERIFY(rig.set(zvtSetSsdAutoPlay, 1) && zvtSetSsdPlaybackRate(rig.handle(), 100) == 0);
    QVERIFY(zvtSetSsdNumFrames(rig.handle(), 100) == 0 && zvtSetSsdPretriggerFrames(rig.handle(), 0) == 0);
    QVERIFY(rig.arm() && rig.call(zvtSsdTrigger));
    rig.wait(1000 + 250);
    QCOMPARE(rig.state(), 4);
    QCOMPARE(rig.playbackFrame(), 25U);
}

void tst_RecorderPlayback::takesChangesWhileItPlays()
{
    RecorderRig rig;
    QVERIFY(rig.record(100) && zvtSetSsdPlaybackRate(rig.handle(), 10) == 0 && rig.call(zvtSsdPlayBuffer));
    rig.wait(1050);
    QVERIFY(zvtSetSsdPlaybackRate(rig.handle(), 100) == 0);
    QCOMPARE(rig.playbackFrame(), 10U);
    rig.wait(5);
    QCOMPARE(rig.playbackFrame(), 11U);
    QVERIFY(zvtSetSsdStartFrame(rig.handle(), 50) == 0);
    QCOMPARE(rig.playbackFrame(), 50U);
    rig.wait(500);
    QCOMPARE(rig.state(), 6);
    QVERIFY(rig.set(zvtSetSsdLoopPlayback, 1) && rig.call(zvtSsdPlayBuffer));
    rig.wait(505);
    QCOMPARE(rig.state(), 4);
    QCOMPARE(rig.playbackFrame(), 50U);
}

void tst_RecorderPlayback::ratesAreCut()
{
    RecorderRig rig;
    const auto rateAfter = [&](float hertz) {
        return zvtSetSsdPlaybackRate(rig.handle(), hertz) == 0 ? rig.number<float>(zvtGetSsdPlaybackRate) : -1;
    };
    QCOMPARE(rateAfter(0), 0.0001f);
    QCOMPARE(rateAfter(-5), 0.0001f);
    uint32_t clocks = 0;
    double live = 0;
    QVERIFY(zvtCalcMinFrameWidth(rig.handle(), &clocks, 64, 4) == 0
            && zvtClocksToHertz(rig.handle(), clocks, &live) == 0);
    QCOMPARE(rateAfter(1e9f), float(live));
    QCOMPARE(rateAfter(std::numeric_limits<float>::infinity()), float(live));
    QCOMPARE(rateAfter(std::numeric_limits<float>::quiet_NaN()), -1.f);
    QCOMPARE(rateAfter(25), 25.f);
    // The drive limits a movie of large frames: 100 000 bytes/s for frames of 640 bytes.
    rig.openWith(R"({"driveBytesPerSecond": 100000})");
    QVERIFY(rig.record(10) && rig.call(zvtSsdSaveBuffer));
    rig.wait(1000);
    QCOMPARE(rateAfter(1e9f), float(live));
    QCOMPARE(zvtSsdLoadMovie(rig.handle(), 0), 0);
    QCOMPARE(rig.number<float>(zvtGetSsdPlaybackRate), 156.25f);
    QCOMPARE(rateAfter(1e9f), 156.25f);
    // The limit is not below the lowest rate.
    rig.openDevices(R"({"recorder": {"driveBytesPerSecond": 1000},
                        "sensor": {"maximumSize": "8192x8192", "windowSizes": ["8192x8192", "64x4"]}})");
    QVERIFY(rig.set("sensor.frameRate", 100));
    // The frame in progress has the large window.
    rig.wait(60'000);
    QVERIFY(rig.record(10) && rig.call(zvtSsdSaveBuffer));
    rig.wait(10'000);
    QCOMPARE(zvtSsdLoadMovie(rig.handle(), 0), 0);
    QVERIFY(rig.set("sensor.window", QVariantList{0, 0, 8192, 8192}));
    QCOMPARE(rateAfter(30), 0.0001f);
}

void tst_RecorderPlayback::aRateIsCutWhenAPlaybackBegins()
{
    RecorderRig rig;
    QVERIFY(rig.record(50) && zvtSetSsdPlaybackRate(rig.handle(), 1e9f) == 0);
    const float fast = rig.number<float>(zvtGetSsdPlaybackRate);
    QVERIFY(rig.set("sensor.window", QVariantList{0, 0, 640, 512}));
    const float limit = rig.recorder().highestRate();
    QVERIFY(limit < fast / 10);
    // It is kept until it matters.
    for (const QVariantList &window : {QVariantList{0, 0, 64, 4}, QVariantList{0, 0, 640, 512}}) {
        QCOMPARE(rig.number<float>(zvtGetSsdPlaybackRate), fast);
        QVERIFY(rig.set("sensor.window", window));
    }
    QVERIFY(rig.set(zvtSetSsdLoopPlayback, 1) && rig.call(zvtSsdPlayBuffer));
    QCOMPARE(rig.number<float>(zvtGetSsdPlaybackRate), limit);
    rig.wait(100);
    QCOMPARE(rig.playbackFrame(), uint32_t(limit / 10));
    // The same after a pause, and for a playback that begins by itself.
    for (const bool byItself : {false, true}) {
        QVERIFY(byItself ? rig.call(zvtSsdStopBuffer) : rig.call(zvtSsdPauseBuffer));
        QVERIFY(rig.set("sensor.window", QVariantList{0, 0, 64, 4}) && zvtSetSsdPlaybackRate(rig.handle(), 1e9f) == 0);
        QVERIFY(rig.set("sensor.window", QVariantList{0, 0, 640, 512}));
        QVERIFY(byItself ? rig.set(zvtSetSsdAutoPlay, 1) && rig.arm() && rig.call(zvtSsdTrigger)
                         : rig.call(zvtSsdResumeBuffer));
        rig.wait(byItself ? 500 : 0);
        QCOMPARE(rig.state(), 4);
        QCOMPARE(rig.number<float>(zvtGetSsdPlaybackRate), limit);
    }
}

void tst_RecorderPlayback::theVideoShowsTheFrameWithItsTime()
{
    VideoRig rig;
    const uint64_t h = rig.handle();
    // No temperature drifts after a day.
    emulator::Clock::advance(86'400'000);
    QVERIFY(rig.useRange(0, 16'383));
    QVERIFY(zvtSetSsdNumFrames(h, 100) == 0 && zvtSetSsdPretriggerFrames(h, 0) == 0 && zvtSsdArm(h) == 0);
    emulator::Clock::advance(300);
    QVERIFY(zvtSsdTrigger(h) == 0);
    emulator::Clock::advance(500);
    const auto during = rig.picture();
    const std::string irig = emulator::overlayText(rig.camera(), emulator::OverlayField::Irig).toStdString();
    emulator::Clock::advance(3500);
    const auto live = rig.picture();
    QVERIFY(live.rgb != during.rgb);
    QVERIFY(zvtSsdSkipToFrame(h, 49) == 0);
    QVERIFY(rig.picture().rgb == during.rgb);
    QCOMPARE(emulator::overlayText(rig.camera(), emulator::OverlayField::Irig).toStdString(), irig);
    // It stays, also with other settings of the camera.
    QVERIFY(rig.set("sensor.integrationTime", 0.5));
    emulator::Clock::advance(5000);
    QVERIFY(rig.picture().rgb == during.rgb);
    QVERIFY(zvtSsdSkipForward(h) == 0);
    QVERIFY(rig.picture().rgb != during.rgb);
    QVERIFY(zvtSsdStopBuffer(h) == 0 && rig.set("sensor.integrationTime", 2));
    const auto again = rig.picture();
    QVERIFY(again.rgb != during.rgb && again.rgb != live.rgb);
    QVERIFY(emulator::overlayText(rig.camera(), emulator::OverlayField::Irig).toStdString() != irig);
    // While it plays, pictures follow the rate.
    QVERIFY(zvtSetSsdPlaybackRate(h, 10) == 0 && zvtSsdPlayBuffer(h) == 0);
    emulator::Clock::advance(4900);
    QVERIFY(rig.picture().rgb == during.rgb);
}

/// The gain fits to the whole recorded frame, and the boxes are on it.
void tst_RecorderPlayback::theVideoShowsFramesOfAnotherWindow()
{
    VideoRig rig;
    const uint64_t h = rig.handle();
    emulator::Clock::advance(86'400'000);
    QVERIFY(rig.setAll({{"agc.method", 2}, {"autoFocus.showAlways", true}, {"overlay.showMessages", false}}));
    for (const char *field :
         {"overlay.showCameraInfo", "overlay.showTime", "overlay.showPreset", "overlay.showFrameRate"})
        QVERIFY(rig.set(field, false));
    QVERIFY(rig.set("overlay.enabled", true));
    QVERIFY(zvtSetSsdNumFrames(h, 10) == 0 && zvtSetSsdPretriggerFrames(h, 0) == 0 && zvtSsdArm(h) == 0);
    emulator::Clock::advance(300);
    QVERIFY(zvtSsdTrigger(h) == 0);
    emulator::Clock::advance(500);
    QVERIFY(zvtSsdSkipToFrame(h, 4) == 0);
    const auto before = rig.picture();
    QVERIFY(zvtSsdStopBuffer(h) == 0 && rig.set("sensor.window", QVariantList{0, 0, 64, 4}));
    QVERIFY(rig.picture().rgb != before.rgb);
    QVERIFY(zvtSsdSkipToFrame(h, 4) == 0);
    QVERIFY(rig.picture().rgb == before.rgb);
}

void tst_RecorderPlayback::theVideoShowsALoadedMovie()
{
    VideoRig rig;
    const uint64_t h = rig.handle();
    emulator::Clock::advance(86'400'000);
    QVERIFY(rig.useRange(0, 16'383) && zvtSetSsdNumFrames(h, 10) == 0 && zvtSetSsdPretriggerFrames(h, 0) == 0);
    QVERIFY(zvtSsdArm(h) == 0);
    emulator::Clock::advance(300);
    QVERIFY(zvtSsdTrigger(h) == 0);
    emulator::Clock::advance(10);
    const auto first = rig.picture();
    emulator::Clock::advance(100);
    QVERIFY(zvtSsdSaveBuffer(h) == 0);
    emulator::Clock::advance(500);
    QVERIFY(rig.picture().rgb != first.rgb);
    uint32_t movies = 0;
    QVERIFY(zvtGetSsdMovieCount(h, &movies) == 0 && zvtSsdLoadMovie(h, movies - 1) == 0);
    QVERIFY(rig.picture().rgb == first.rgb);
    QVERIFY(zvtSsdUnload(h) == 0);
    QVERIFY(rig.picture().rgb != first.rgb);
}

void tst_RecorderPlayback::theOverlayShowsMessages()
{
    RecorderRig rig;
    QVERIFY(rig.record(10) && rig.call(zvtSsdSaveBuffer));
    rig.wait(500);
    QString message;
    emulator::Clock::duringNextWait([&] {
        rig.state();
        const std::lock_guard lock(rig.camera().mutex());
        message = QString::fromStdString(rig.camera().device<emulator::VideoOverlay>()->content().message);
    });
    QCOMPARE(zvtSsdLoadMovie(rig.handle(), 0), 0);
    QCOMPARE(message, QStringLiteral("LOADING"));
}

ZVT_TEST(tst_RecorderPlayback)
#include "tst_RecorderPlayback.moc"
