#include "tests/support/Test.h"
#include "tests/unit/SsdRig.h"

namespace
{

const QString frameRead = QStringLiteral("zvtGetSsdPlaybackFrame");

} // namespace

/// The playback of the SSD tab: its commands, its range and the limit of its rate.
class tst_SsdTabModelPlayback : public Test
{
    Q_OBJECT

private slots:
    void playStartsOrResumes();
    void pausingCommands_data();
    void pausingCommands();
    void unreadableFrameIsZero();
    void frameOfAnArmedCameraIsNotRead();
    void stopKeepsARecording();
    void stopUnloadsAMovie();

    void seekShowsTheFrame();
    void seekBeyondTheRecording_data();
    void seekBeyondTheRecording();
    void seekToTheShownFrame();
    void rangeIsEdited();

    void limitOfTheRate_data();
    void limitOfTheRate();
    void limitWithoutAWindow();
    void limitThatCannotBeRead_data();
    void limitThatCannotBeRead();
    void readMovieDoesNotSignalTheLimit();
    void recordingFromTheDriveStaysSo();
};

// By the camera's state: a pause that no poll has seen leads to a playback from the start.
void tst_SsdTabModelPlayback::playStartsOrResumes()
{
    Ssd ssd;
    ssd.enter(SsdTabModel::COMPLETE);
    QCOMPARE(ssd.orderOf([&] { ssd.model.play(); }), QStringList({"zvtSsdPlayBuffer", "stateChanged"}));
    QCOMPARE(ssd.log.take(), stateSignals);
    QCOMPARE(ssd.model.state(), SsdTabModel::PLAYING);
    ssd.model.pause();
    QCOMPARE(ssd.model.state(), SsdTabModel::PAUSED);
    QCOMPARE(ssd.callsOf([&] { ssd.model.play(); }), QStringList("zvtSsdPlayBuffer"));
    ssd.model.pause();
    ssd.enter(SsdTabModel::PAUSED);
    QCOMPARE(ssd.callsOf([&] { ssd.model.play(); }), QStringList("zvtSsdResumeBuffer"));
    QCOMPARE(ssd.model.state(), SsdTabModel::PLAYING);
    // Until a poll has seen that it plays again.
    QCOMPARE(ssd.callsOf([&] { ssd.model.play(); }), QStringList("zvtSsdResumeBuffer"));
}

void tst_SsdTabModelPlayback::pausingCommands_data()
{
    QTest::addColumn<QString>("call");
    QTest::newRow("pause") << "zvtSsdPauseBuffer";
    QTest::newRow("skipForwardToNextFrame") << "zvtSsdSkipForward";
    QTest::newRow("skipBackwardToPreviousFrame") << "zvtSsdSkipBackward";
    QTest::newRow("skipToFrame") << "zvtSsdSkipToFrame 9";
}

void tst_SsdTabModelPlayback::pausingCommands()
{
    QFETCH(const QString, call);
    Ssd ssd;
    const auto act = [&ssd] {
        if (qstrcmp(QTest::currentDataTag(), "skipToFrame") == 0)
            ssd.model.skipToFrame(9);
        else
            QMetaObject::invokeMethod(&ssd.model, QTest::currentDataTag());
    };
    ssd.enter(SsdTabModel::PLAYING);
    ssd.gate().script("zvtGetSsdPlaybackFrame", 43U);
    QCOMPARE(ssd.orderOf(act), QStringList({call, "stateChanged", frameRead}));
    QCOMPARE(ssd.log.take(), stateSignals + QStringList("currentFrameChanged"));
    QCOMPARE(ssd.model.state(), SsdTabModel::PAUSED);
    QCOMPARE(ssd.model.currentFrame(), 43U);
    // The frame is read and signalled each time, also after a refusal.
    ssd.gate().failAlways(call.section(u' ', 0, 0).toStdString());
    QCOMPARE(ssd.callsOf(act), QStringList({call, frameRead}));
    QCOMPARE(ssd.log.take(), QStringList("currentFrameChanged"));
}

void tst_SsdTabModelPlayback::unreadableFrameIsZero()
{
    Ssd ssd;
    ssd.enter(SsdTabModel::PLAYING);
    QCOMPARE(ssd.model.currentFrame(), 42U);
    ssd.gate().failNext("zvtGetSsdPlaybackFrame");
    ssd.model.pause();
    QCOMPARE(ssd.log.take(), stateSignals + QStringList("currentFrameChanged"));
    QCOMPARE(ssd.model.currentFrame(), 0U);
}

void tst_SsdTabModelPlayback::frameOfAnArmedCameraIsNotRead()
{
    Ssd ssd;
    ssd.enter(SsdTabModel::ARMED);
    QCOMPARE(ssd.callsOf([&] { ssd.model.skipForwardToNextFrame(); }), QStringList("zvtSsdSkipForward"));
    QCOMPARE(ssd.log.take(), stateSignals);
    // The camera is still armed, whatever the page shows.
    QCOMPARE(ssd.callsOf([&] { ssd.model.skipForwardToNextFrame(); }), QStringList("zvtSsdSkipForward"));
    QCOMPARE(ssd.log.take(), QStringList());
}

void tst_SsdTabModelPlayback::stopKeepsARecording()
{
    Ssd ssd;
    ssd.enter(SsdTabModel::PLAYING);
    QCOMPARE(ssd.orderOf([&] { ssd.model.stop(); }), QStringList({"zvtSsdStopBuffer", "stateChanged", frameRead}));
    QCOMPARE(ssd.log.take(), stateSignals + QStringList("currentFrameChanged"));
    QCOMPARE(ssd.model.state(), SsdTabModel::COMPLETE);
}

void tst_SsdTabModelPlayback::stopUnloadsAMovie()
{
    Ssd ssd;
    ssd.read();
    QVERIFY(ssd.model.movieLoaded());
    ssd.enter(SsdTabModel::PAUSED);
    QCOMPARE(ssd.orderOf([&] { ssd.model.stop(); }),
             QStringList({"zvtSsdStopBuffer", "zvtSsdUnload", "stateChanged", frameRead}));
    QCOMPARE(ssd.log.take(),
             stateSignals
                 + QStringList({"movieLoadedChanged", "maxPlaybackRateInHertzChanged", "currentFrameChanged"}));
    QCOMPARE(ssd.model.state(), SsdTabModel::DISARMED);
    QVERIFY(!ssd.model.movieLoaded());
    QCOMPARE(ssd.model.maxPlaybackRateInHertz(), 500.0F);
}

// Frames

void tst_SsdTabModelPlayback::seekShowsTheFrame()
{
    Ssd ssd;
    ssd.read();
    ssd.enter(SsdTabModel::PLAYING);
    QCOMPARE(ssd.write("currentFrame", 349U), QStringList({"zvtSsdSkipToFrame 349", frameRead}));
    // The frame that the camera shows, then the one that was asked for.
    QCOMPARE(ssd.log.take(), stateSignals + QStringList({"currentFrameChanged", "currentFrameChanged"}));
    QCOMPARE(ssd.model.currentFrame(), 349U);
    QCOMPARE(ssd.model.state(), SsdTabModel::PAUSED);
    // A frame outside the range is shown as well.
    QCOMPARE(ssd.write("currentFrame", 1U).value(0), "zvtSsdSkipToFrame 1");
}

void tst_SsdTabModelPlayback::seekBeyondTheRecording_data()
{
    QTest::addColumn<uint>("frame");
    for (const uint frame : {350U, 351U, 4294967295U})
        QTest::addRow("%u", frame) << frame;
}

// It goes to the end of the range, not of the recording.
void tst_SsdTabModelPlayback::seekBeyondTheRecording()
{
    QFETCH(const uint, frame);
    Ssd ssd;
    ssd.read();
    QCOMPARE(ssd.write("currentFrame", frame).value(0), "zvtSsdSkipToFrame 300");
    QCOMPARE(ssd.model.currentFrame(), 300U);
}

void tst_SsdTabModelPlayback::seekToTheShownFrame()
{
    Ssd ssd;
    ssd.enter(SsdTabModel::PLAYING);
    QCOMPARE(ssd.write("currentFrame", 42U), QStringList());
    QCOMPARE(ssd.log.take(), QStringList());
    QCOMPARE(ssd.model.state(), SsdTabModel::PLAYING);
}

// As the dialog of the range writes it. No number is checked against another one.
void tst_SsdTabModelPlayback::rangeIsEdited()
{
    Ssd ssd;
    ssd.read();
    QCOMPARE(ssd.write("startFrame", 320U), QStringList("zvtSetSsdStartFrame 320"));
    QCOMPARE(ssd.write("currentFrame", 330U).value(0), "zvtSsdSkipToFrame 330");
    QCOMPARE(ssd.write("endFrame", 310U), QStringList("zvtSetSsdEndFrame 310"));
    QCOMPARE(ssd.model.startFrame(), 320U);
    QCOMPARE(ssd.model.endFrame(), 310U);
}

// The limit of the rate

void tst_SsdTabModelPlayback::limitOfTheRate_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<double>("hertz");
    QTest::addColumn<float>("live");
    QTest::addColumn<float>("movie");
    QTest::newRow("drive limits") << 640 << 512 << 500.0 << 500.0F << static_cast<float>(262144000.0 / 656640.0);
    QTest::newRow("sensor limits") << 640 << 512 << 399.0 << 399.0F << 399.0F;
    QTest::newRow("largest window") << 65535 << 65535 << 500.0 << 500.0F
                                    << static_cast<float>(262144000.0 / (2.0 * 65535.0 * 65536.0));
    QTest::newRow("no window") << 0 << 0 << 500.0 << 500.0F << 500.0F;
}

void tst_SsdTabModelPlayback::limitOfTheRate()
{
    QFETCH(const int, width);
    QFETCH(const int, height);
    QFETCH(const double, hertz);
    QFETCH(const float, live);
    QFETCH(const float, movie);
    Ssd ssd;
    ssd.gate().script("controller.GetWindow", QVariantList{8, 8, width, height});
    ssd.gate().script("zvtClocksToHertz", hertz);
    ssd.read();
    QCOMPARE(ssd.model.maxPlaybackRateInHertz(), movie);
    ssd.gate().script("zvtGetSsdMovieLoaded", 0);
    ssd.read();
    QCOMPARE(ssd.model.maxPlaybackRateInHertz(), live);
}

void tst_SsdTabModelPlayback::limitWithoutAWindow()
{
    Ssd ssd;
    ssd.gate().failNext("controller.GetWindow");
    QVERIFY(ssd.read().contains("zvtCalcMinFrameWidth 0, 0"));
    QCOMPARE(ssd.model.maxPlaybackRateInHertz(), 100.0F);
    ssd.model.stop();
    QCOMPARE(ssd.model.maxPlaybackRateInHertz(), 500.0F);
}

void tst_SsdTabModelPlayback::limitThatCannotBeRead_data()
{
    QTest::addColumn<int>("further");
    QTest::newRow("zvtCalcMinFrameWidth") << 0;
    QTest::newRow("zvtClocksToHertz") << 1;
}

void tst_SsdTabModelPlayback::limitThatCannotBeRead()
{
    QFETCH(const int, further);
    Ssd ssd;
    ssd.read();
    ssd.gate().script("controller.GetWindow", QVariantList{0, 0, 64, 4});
    ssd.gate().failNext(QTest::currentDataTag());
    ssd.log.take();
    QCOMPARE(ssd.read().filter("zvtClocksToHertz").size(), further);
    QVERIFY(!ssd.log.take().contains("maxPlaybackRateInHertzChanged"));
    QCOMPARE(ssd.model.maxPlaybackRateInHertz(), static_cast<float>(262144000.0 / 656640.0));
}

void tst_SsdTabModelPlayback::readMovieDoesNotSignalTheLimit()
{
    Ssd ssd;
    ssd.read();
    ssd.gate().script("zvtGetSsdMovieLoaded", 0);
    const QStringList signalled = ssd.refresh();
    // Once for each of the two limits, before the movie.
    QCOMPARE(signalled.count("maxPlaybackRateInHertzChanged"), 2);
    QVERIFY(signalled.lastIndexOf("maxPlaybackRateInHertzChanged") < signalled.indexOf("movieLoadedChanged"));
}

void tst_SsdTabModelPlayback::recordingFromTheDriveStaysSo()
{
    Ssd ssd;
    ssd.setCameraState(SsdTabModel::MOVIE_LOADED);
    ssd.read();
    QVERIFY(ssd.model.fromDisk());
    ssd.model.stop();
    ssd.enter(SsdTabModel::DISARMED);
    ssd.read();
    QVERIFY(ssd.model.fromDisk());
    ssd.model.setRecordMode(SsdTabModel::MODE_TO_MEMORY);
    QVERIFY(ssd.model.fromDisk());
    ssd.model.arm();
    QVERIFY(!ssd.model.fromDisk());
}

ZVT_TEST(tst_SsdTabModelPlayback)
#include "tst_SsdTabModelPlayback.moc"
