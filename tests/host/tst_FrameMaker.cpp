#include "platform/emulator/image/Statistics.h"
#include "platform/emulator/image/output.h"
#include "tests/host/PictureRig.h"
#include "tests/support/Test.h"
#include "zvt/zvtsdk.h"

using emulator::image::Output;

/// The pictures that the desk makes of a camera.
class tst_FrameMaker : public Test
{
    Q_OBJECT

private slots:
    void rawFramesAreThoseOfTheCamera();
    void correctedFramesAreThoseOfTheVideoOutput();
    void correctionShows();
    void greyIsLinearBetweenThePercentiles();
    void aSaturatedFrameIsWhite();
    void pictureFlipsWithTheCamera_data();
    void pictureFlipsWithTheCamera();
    void videoIsThePictureOfTheOutput();
    void videoKnowsThePlaceOfTheFrame();
    void nothingNewIsNotMadeAgain();
    void aNewRateComesWithTheSamePicture();
    void videoIsMadeAgain();
    void theVideoPresetIsTheDefault();
    void anotherPresetIsMadeOnRequest();
    void sequencedPresetsAreListed();
    void noFrameBeforeTheFirstConnection();
    void aWindowWithoutFramesIsTooLarge();
    void temporalNoiseFollowsTheFramesOfTheOrder();
    void noisesAreThoseOfTheCamera();
    void gainLimitsAreThoseOfTheFrame();
    void gainLimitsOfTheVideoAreItsOwn();
    void gainLimitsFollowTheVideoAtAnyRateOfTheDesk_data();
    void gainLimitsFollowTheVideoAtAnyRateOfTheDesk();
    void nobodyNoticesIt_data();
    void nobodyNoticesIt();

private:
    static int grey(const QImage &picture, int x, int y) { return qRed(picture.pixel(x, y)); }
};

void tst_FrameMaker::rawFramesAreThoseOfTheCamera()
{
    PictureRig rig;
    QVERIFY(rig.connect());
    FrameMaker maker;
    const auto shown = maker.make(rig.order());
    QVERIFY(shown);
    QCOMPARE(shown->state, ShownFrame::Ready);
    const auto frame = rig.camera().newestFrame(0);
    QCOMPARE(shown->measured->frame.start, frame->start);
    QCOMPARE(shown->measured->frame.counts, frame->counts);
    QCOMPARE(shown->picture.size(), QSize(640, 512));
    QCOMPARE(shown->place, QRectF(0, 0, 640, 512));
    QCOMPARE(shown->rate, 100.0);
}

void tst_FrameMaker::correctedFramesAreThoseOfTheVideoOutput()
{
    PictureRig rig;
    QVERIFY(rig.connect());
    FrameMaker maker;
    const auto shown = maker.make(rig.order(FrameOrder::Corrected));
    QVERIFY(shown);
    QCOMPARE(shown->measured->frame.counts, rig.camera().newestFrame(0, Output::Video)->counts);
    QVERIFY(shown->measured->frame.counts != rig.camera().newestFrame(0)->counts);
}

void tst_FrameMaker::correctionShows()
{
    PictureRig rig;
    QVERIFY(rig.connect());
    QVERIFY(rig.set("emulator./Pattern", 3)); // An even surface.
    FrameMaker maker;
    const auto raw = maker.make(rig.order());
    const auto corrected = maker.make(rig.order(FrameOrder::Corrected));
    QVERIFY(corrected->measured->statistics.spatialNoise < raw->measured->statistics.spatialNoise / 2);
}

void tst_FrameMaker::greyIsLinearBetweenThePercentiles()
{
    PictureRig rig;
    QVERIFY(rig.connect());
    FrameMaker maker;
    const auto shown = maker.make(rig.order());
    const auto &counts = shown->measured->frame.counts;
    const int low = shown->measured->statistics.countAt(5);
    const int high = shown->measured->statistics.countAt(995);
    QVERIFY(low < high);
    for (size_t i = 0; i < counts.size(); i += 97) {
        const int level = qBound(0, (counts[i] - low) * 255 / (high - low), 255);
        QCOMPARE(grey(shown->picture, int(i % 640), int(i / 640)), level);
    }
}

void tst_FrameMaker::aSaturatedFrameIsWhite()
{
    PictureRig rig;
    QVERIFY(rig.connect());
    QVERIFY(rig.set("sensor.integrationTime", 100));
    FrameMaker maker;
    emulator::Clock::advance(1000);
    const auto shown = maker.make(rig.order());
    QCOMPARE(shown->measured->statistics.countAt(5), uint16_t{16'383});
    QCOMPARE(grey(shown->picture, 320, 256), 255);
}

void tst_FrameMaker::pictureFlipsWithTheCamera_data()
{
    QTest::addColumn<bool>("mirrored");
    QTest::addColumn<bool>("inverted");
    QTest::newRow("mirrored") << true << false;
    QTest::newRow("inverted") << false << true;
    QTest::newRow("both") << true << true;
}

void tst_FrameMaker::pictureFlipsWithTheCamera()
{
    QFETCH(bool, mirrored);
    QFETCH(bool, inverted);
    PictureRig rig;
    QVERIFY(rig.connect());
    QVERIFY(rig.set("environment.movingTargets", false));
    FrameMaker maker;
    const auto before = maker.make(rig.order());
    // The calls of the page's switches.
    QCOMPARE(zvtSetRevertEnabled(rig.camera().handle(), mirrored), 0);
    QCOMPARE(zvtSetInvertEnabled(rig.camera().handle(), inverted), 0);
    emulator::Clock::advance(100);
    const auto after = maker.make(rig.order());
    QVERIFY(after);
    // They differ by the noise.
    const QImage expected = before->picture.mirrored(mirrored, inverted);
    int differences = 0;
    for (int y = 0; y < 512; y += 3)
        for (int x = 0; x < 640; x += 3)
            differences += qAbs(grey(after->picture, x, y) - grey(expected, x, y)) > 60;
    QVERIFY2(differences < 200, qPrintable(QString::number(differences)));
}

void tst_FrameMaker::videoIsThePictureOfTheOutput()
{
    PictureRig rig;
    QVERIFY(rig.connect());
    FrameMaker maker;
    const auto shown = maker.make(rig.order(FrameOrder::Video));
    QVERIFY(shown);
    // At the same time, the output shows the same picture again.
    const auto picture = rig.camera().device<emulator::VideoOutput>()->render();
    QCOMPARE(shown->picture.size(), QSize(picture.width, picture.height));
    for (int y = 0; y < picture.height; y += 7)
        for (int x = 0; x < picture.width; x += 7) {
            const auto *rgb = &picture.rgb[static_cast<size_t>(3 * (y * picture.width + x))];
            QCOMPARE(shown->picture.pixel(x, y), qRgb(rgb[0], rgb[1], rgb[2]));
        }
    QCOMPARE(shown->measured->frame.counts, rig.camera().newestFrame(0, Output::Video)->counts);
}

void tst_FrameMaker::videoKnowsThePlaceOfTheFrame()
{
    PictureRig rig;
    QVERIFY(rig.connect());
    QVERIFY(rig.set("video.zoomFactor", 2));
    QVERIFY(rig.set("video.position", 1));
    FrameMaker maker;
    const auto shown = maker.make(rig.order(FrameOrder::Video));
    const auto place = rig.camera().device<emulator::VideoOutput>()->placement().image();
    QCOMPARE(shown->place, QRectF(place.x, place.y, place.width, place.height));
    QCOMPARE(shown->place.center(), QRectF(shown->picture.rect()).center());
}

void tst_FrameMaker::nothingNewIsNotMadeAgain()
{
    PictureRig rig;
    QVERIFY(rig.connect());
    FrameMaker maker;
    const auto first = maker.make(rig.order());
    QVERIFY(first);
    QVERIFY(!maker.make(rig.order()));
    emulator::Clock::advance(10);
    const auto second = maker.make(rig.order());
    QVERIFY(second);
    QCOMPARE(second->measured->frame.start.number, first->measured->frame.start.number + 1);
}

void tst_FrameMaker::aNewRateComesWithTheSamePicture()
{
    PictureRig rig;
    QVERIFY(rig.connect());
    FrameMaker maker;
    const auto first = maker.make(rig.order());
    QVERIFY(rig.set("sensor.frameRate", 50));
    const auto second = maker.make(rig.order());
    QVERIFY(second);
    QCOMPARE(second->rate, 50.0);
    QCOMPARE(second->measured, first->measured);
    QCOMPARE(second->picture.cacheKey(), first->picture.cacheKey());
}

void tst_FrameMaker::videoIsMadeAgain()
{
    PictureRig rig;
    QVERIFY(rig.connect());
    FrameMaker maker;
    const auto first = maker.make(rig.order(FrameOrder::Video));
    const auto second = maker.make(rig.order(FrameOrder::Video));
    QVERIFY(second);
    QCOMPARE(second->measured, first->measured);
}

void tst_FrameMaker::theVideoPresetIsTheDefault()
{
    PictureRig rig;
    QVERIFY(rig.set("sensor.activePreset", 1));
    QVERIFY(rig.connect());
    QCOMPARE(FrameMaker().make(rig.order())->measured->frame.start.preset, 1);
    QVERIFY(rig.set("sensor.sequencingMode", 1));
    QVERIFY(rig.set("sensor.videoPreset", 2));
    emulator::Clock::advance(1000);
    for (const auto view : {FrameOrder::Raw, FrameOrder::Corrected, FrameOrder::Video})
        QCOMPARE(FrameMaker().make(rig.order(view))->measured->frame.start.preset, 2);
}

void tst_FrameMaker::anotherPresetIsMadeOnRequest()
{
    PictureRig rig;
    QVERIFY(rig.set("sensor.sequencingMode", 1));
    QVERIFY(rig.connect());
    FrameOrder order = rig.order();
    order.preset = 3;
    QCOMPARE(FrameMaker().make(order)->measured->frame.start.preset, 3);
    order.view = FrameOrder::Video;
    QCOMPARE(FrameMaker().make(order)->measured->frame.start.preset, 0);
}

void tst_FrameMaker::sequencedPresetsAreListed()
{
    PictureRig rig;
    QVERIFY(rig.connect());
    QCOMPARE(FrameMaker().make(rig.order())->presets, std::vector<int>{0});
    QVERIFY(rig.set("sensor.sequencingMode", 1));
    QCOMPARE(FrameMaker().make(rig.order())->presets, std::vector<int>({0, 1, 2, 3}));
    QVERIFY(rig.set("sensor.activePreset", 1));
    QVERIFY(rig.set("sensor.subframeEnabled", false));
    QCOMPARE(FrameMaker().make(rig.order())->presets, std::vector<int>({0, 2, 3}));
}

void tst_FrameMaker::noFrameBeforeTheFirstConnection()
{
    PictureRig rig;
    for (const auto view : {FrameOrder::Raw, FrameOrder::Corrected, FrameOrder::Video}) {
        FrameMaker maker;
        const auto shown = maker.make(rig.order(view));
        QVERIFY(shown);
        QCOMPARE(shown->state, ShownFrame::Nothing);
        QVERIFY(shown->picture.isNull());
        QVERIFY(!maker.make(rig.order(view)));
    }
}

void tst_FrameMaker::aWindowWithoutFramesIsTooLarge()
{
    PictureRig rig("edge-values");
    QVERIFY(rig.connect());
    for (const auto view : {FrameOrder::Raw, FrameOrder::Corrected, FrameOrder::Video})
        QCOMPARE(FrameMaker().make(rig.order(view))->state, ShownFrame::TooLarge);
}

void tst_FrameMaker::temporalNoiseFollowsTheFramesOfTheOrder()
{
    PictureRig rig;
    QVERIFY(rig.connect());
    FrameMaker maker;
    QVERIFY(!maker.make(rig.order())->measured->statistics.temporalNoise);
    emulator::Clock::advance(40);
    QVERIFY(maker.make(rig.order())->measured->statistics.temporalNoise);
    emulator::Clock::advance(40);
    QVERIFY(!maker.make(rig.order(FrameOrder::Corrected))->measured->statistics.temporalNoise);
    emulator::Clock::advance(40);
    QVERIFY(maker.make(rig.order(FrameOrder::Corrected))->measured->statistics.temporalNoise);
    QVERIFY(rig.set("sensor.window", QVariantList{0, 0, 320, 256}));
    emulator::Clock::advance(40);
    QVERIFY(!maker.make(rig.order(FrameOrder::Corrected))->measured->statistics.temporalNoise);
}

void tst_FrameMaker::noisesAreThoseOfTheCamera()
{
    PictureRig rig;
    QVERIFY(rig.connect());
    QVERIFY(rig.set("emulator./Pattern", 3));
    FrameMaker maker;
    const auto first = maker.make(rig.order());
    emulator::Clock::advance(40);
    const auto second = maker.make(rig.order());
    emulator::image::Statistics single(second->measured->frame.counts.size());
    single.add(second->measured->frame.counts);
    const FrameStatistics &statistics = second->measured->statistics;
    QVERIFY(qAbs(statistics.mean - single.mean()) < 1e-6);
    QVERIFY(qAbs(statistics.spatialNoise - single.spatialDeviation()) < 1e-6);
    emulator::image::Statistics many(second->measured->frame.counts.size());
    for (int i = 0; i < 20; ++i) {
        emulator::Clock::advance(40);
        many.add(rig.camera().newestFrame(0)->counts);
    }
    // Nothing moves, so all differences are noise; that of twenty frames is a little too small.
    const double ratio = *statistics.temporalNoise / many.temporalDeviation();
    QVERIFY2(ratio > 0.9 && ratio < 1.15, qPrintable(QString::number(ratio)));
}

void tst_FrameMaker::gainLimitsAreThoseOfTheFrame()
{
    PictureRig rig;
    QVERIFY(rig.connect());
    QVERIFY(rig.set("agc.method", 2)); // Linear from 0.5 % to 99.5 %.
    FrameMaker maker;
    const auto shown = maker.make(rig.order(FrameOrder::Corrected));
    const auto &measured = *shown->measured;
    const int range = measured.statistics.countAt(995) - measured.statistics.countAt(5);
    QVERIFY(qAbs(measured.gain.black - measured.statistics.countAt(5)) <= range / 100 + 1);
    QVERIFY(qAbs(measured.gain.white - measured.statistics.countAt(995)) <= range / 100 + 1);
    QVERIFY(rig.set("agc.manualLow", 4000) && rig.set("agc.manualHigh", 9000) && rig.set("agc.method", 3));
    emulator::Clock::advance(5000);
    const auto manual = maker.make(rig.order(FrameOrder::Corrected));
    QVERIFY(qAbs(manual->measured->gain.black - 4000) < 50);
    QVERIFY(qAbs(manual->measured->gain.white - 9000) < 50);
}

void tst_FrameMaker::gainLimitsOfTheVideoAreItsOwn()
{
    PictureRig rig;
    QVERIFY(rig.connect());
    FrameMaker maker;
    maker.make(rig.order(FrameOrder::Video));
    QVERIFY(rig.set("agc.method", 0));
    for (int i = 0; i < 3; ++i) {
        emulator::Clock::advance(40);
        const auto shown = maker.make(rig.order(FrameOrder::Video));
        QCOMPARE(shown->measured->gain, rig.camera().device<emulator::VideoOutput>()->renderWithFrame().gain);
    }
}

void tst_FrameMaker::gainLimitsFollowTheVideoAtAnyRateOfTheDesk_data()
{
    QTest::addColumn<bool>("dampened");
    QTest::addColumn<bool>("filtered");
    QTest::newRow("dampening") << true << false;
    QTest::newRow("filter") << false << true;
    QTest::newRow("both") << true << true;
}

void tst_FrameMaker::gainLimitsFollowTheVideoAtAnyRateOfTheDesk()
{
    QFETCH(bool, dampened);
    QFETCH(bool, filtered);
    constexpr int desk = 25; // Pictures in a second.
    PictureRig rig;
    QVERIFY(rig.connect());
    QVERIFY(rig.set("agc.dampening", 0.1) && rig.set("agc.dampeningEnabled", dampened));
    QVERIFY(rig.set("agc.filterRate", 20) && rig.set("agc.filterRateEnabled", filtered));
    QVERIFY(rig.set("agc.method", 3));
    FrameMaker often;
    FrameMaker once;
    const auto start = often.make(rig.order())->measured->gain;
    QCOMPARE(once.make(rig.order())->measured->gain, start);
    QVERIFY(rig.set("agc.manualLow", 4000) && rig.set("agc.manualHigh", 9000));
    emulator::image::Agc::Limits limits;
    for (int i = 0; i < desk; ++i) {
        emulator::Clock::advance(1000 / desk);
        limits = often.make(rig.order())->measured->gain;
    }
    QVERIFY(limits.black > start.black + 50);
    const auto atOnce = once.make(rig.order())->measured->gain;
    QVERIFY2(qAbs(atOnce.black - limits.black) <= 1, qPrintable(QString::number(atOnce.black)));
    QVERIFY2(qAbs(atOnce.white - limits.white) <= 1, qPrintable(QString::number(atOnce.white)));
}

void tst_FrameMaker::nobodyNoticesIt_data()
{
    QTest::addColumn<FrameOrder::View>("view");
    QTest::newRow("raw") << FrameOrder::Raw;
    QTest::newRow("corrected") << FrameOrder::Corrected;
    QTest::newRow("video") << FrameOrder::Video;
}

void tst_FrameMaker::nobodyNoticesIt()
{
    QFETCH(FrameOrder::View, view);
    PictureRig rig;
    QVERIFY(rig.connect());
    const size_t mark = rig.camera().gate().mark();
    const QJsonObject before = rig.camera().snapshot();
    FrameMaker maker;
    for (int i = 0; i < 5; ++i) {
        emulator::Clock::advance(40);
        QVERIFY(maker.make(rig.order(view)));
    }
    QCOMPARE(rig.camera().gate().callsSince(mark).size(), size_t{0});
    QCOMPARE(rig.camera().snapshot(), before);
}

ZVT_TEST(tst_FrameMaker)
#include "tst_FrameMaker.moc"
