#include "tests/platform/VideoRig.h"
#include "tests/support/Test.h"

#include <cmath>

using emulator::Clock;
using Levels = VideoRig::Levels;
using Picture = VideoRig::Picture;

/// The picture of the video output while its image stays: without a signal, and during the run of a correction.
class tst_videoPathStill : public Test
{
    Q_OBJECT

private slots:
    void withoutASignalTheImageStays();
    void theGainWaitsForTheSignal();
    void duringARunTheImageStays();
    void aRunBeforeTheFirstPictureShowsOneFrame();
    void theImageThatStaysHasThePresentSettings();
    void theImageThatStaysKeepsItsFrames();
};

void tst_videoPathStill::withoutASignalTheImageStays()
{
    VideoRig rig;
    QVERIFY(rig.showArea(20) && rig.useRange(0, 16'383));
    const Picture before = rig.picture();
    QVERIFY(rig.setAll({{"sync.externalRate", 0.0}, {"sync.source", 1}, {"emulator./BlackbodyTemp1", 30.0}}));
    Clock::advance(1000);
    QVERIFY(rig.picture() == before);
    // The message is drawn over it.
    QVERIFY(rig.set("overlay.enabled", true));
    const Picture message = rig.picture();
    QVERIFY(message != before);
    Clock::advance(1000);
    QVERIFY(rig.setAll({{"overlay.enabled", false}}));
    QVERIFY(rig.picture() == before);
    QVERIFY(rig.set("sync.source", 0));
    Clock::advance(100);
    QVERIFY(VideoRig::meanOf(rig.levels()) > VideoRig::meanOf(VideoRig::levelsIn(before, rig.place())) + 10);
    // So slow a camera has a picture all the time.
    QVERIFY(rig.set("sensor.frameRate", 2.0));
    Clock::advance(10'000);
    const Picture slow = rig.picture();
    Clock::advance(300);
    rig.picture();
    Clock::advance(400);
    QVERIFY(rig.picture() != slow);
}

void tst_videoPathStill::theGainWaitsForTheSignal()
{
    SlowGainRig rig;
    QVERIFY(rig.begin() && rig.setAll({{"sync.externalRate", 0.0}, {"sync.source", 1}}));
    QVERIFY(std::abs(rig.way()) < 0.02);
    for (int second = 0; second < 5; ++second) {
        Clock::advance(1000);
        QVERIFY(std::abs(rig.way()) < 0.02);
    }
    QVERIFY(rig.set("sync.source", 0));
    Clock::advance(100);
    QVERIFY2(rig.way() > 0.02 && rig.way() < 0.1, qPrintable(QString::number(rig.way())));
}

void tst_videoPathStill::duringARunTheImageStays()
{
    VideoRig rig;
    QVERIFY(rig.showArea(20) && rig.useRange(0, 16'383));
    const Picture before = rig.picture();
    QCOMPARE(zvtSetNUCType(rig.handle(), 1), 0);
    QCOMPARE(zvtStartNUC(rig.handle()), 0);
    QVERIFY(rig.set("emulator./BlackbodyTemp1", 30.0));
    for (int second = 0; second < 3; ++second) {
        Clock::advance(1000);
        QVERIFY(rig.picture() == before);
    }
    QVERIFY(rig.setAll({{"overlay.enabled", true}}));
    QVERIFY(rig.picture() != before);
    QVERIFY(rig.setAll({{"overlay.enabled", false}}));
    QCOMPARE(zvtAbortNUC(rig.handle()), 0);
    QVERIFY(VideoRig::meanOf(rig.levels()) > VideoRig::meanOf(VideoRig::levelsIn(before, rig.place())) + 10);
}

void tst_videoPathStill::aRunBeforeTheFirstPictureShowsOneFrame()
{
    VideoRig rig;
    QVERIFY(rig.showArea(20) && rig.useRange(0, 16'383));
    QCOMPARE(zvtSetNUCType(rig.handle(), 1), 0);
    QCOMPARE(zvtStartNUC(rig.handle()), 0);
    Clock::advance(100);
    const Picture first = rig.picture();
    QVERIFY(!first.isEmpty());
    QVERIFY(rig.set("emulator./BlackbodyTemp1", 30.0));
    Clock::advance(1000);
    QVERIFY(rig.picture() == first);
}

void tst_videoPathStill::theImageThatStaysHasThePresentSettings()
{
    VideoRig rig;
    const Levels before = rig.levels();
    QVERIFY(rig.setAll({{"sync.externalRate", 0.0}, {"sync.source", 1}}));
    Clock::advance(1000);
    // Its window and flips are those of its frame.
    QVERIFY(rig.setAll({{"sensor.window", QVariantList{0, 0, 320, 256}},
                        {"image.reverted", true},
                        {"video.format", 0},
                        {"video.zoomFactor", 1}}));
    const Picture picture = rig.picture();
    QCOMPARE(QSize(picture.width, picture.height), QSize(640, 480));
    const QRect image(240, 176, 160, 128);
    QVERIFY(VideoRig::isBlackOutside(picture, image));
    QVERIFY(VideoRig::levelsIn(picture, image) == before);
    QVERIFY(rig.set("palette.name", "Iron"));
    QVERIFY(rig.picture() != picture);
    // The gain control waits.
    QVERIFY(rig.setAll({{"palette.name", "Grayscale"}, {"agc.filterRateEnabled", true}, {"agc.method", 2}}));
    Clock::advance(5000);
    QVERIFY(rig.picture() == picture);
}

void tst_videoPathStill::theImageThatStaysKeepsItsFrames()
{
    VideoRig rig;
    QVERIFY(rig.setAll({{"agc.region", QVariantList{10, 20, 40, 30}},
                        {"agc.regionEnabled", true},
                        {"overlay.enabled", true},
                        {"overlay.showAgcRoi", true}}));
    const QRect place = QRect(10, 20, 40, 30).translated(rig.place().topLeft());
    QCOMPARE(VideoRig::coloredPart(rig.picture()), place);
    QVERIFY(rig.setAll({{"sync.externalRate", 0.0}, {"sync.source", 1}}));
    Clock::advance(1000);
    QVERIFY(rig.setAll({{"sensor.window", QVariantList{0, 0, 320, 256}}, {"image.reverted", true}}));
    QCOMPARE(VideoRig::coloredPart(rig.picture()), place);
}

ZVT_TEST(tst_videoPathStill)
#include "tst_videoPathStill.moc"
