#include "platform/emulator/devices/FrameClock.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/image/output.h"
#include "tests/platform/VideoRig.h"
#include "tests/support/Test.h"

#include <QTemporaryDir>

#include <mutex>

#include <cstdlib>
#include <limits>

using emulator::Clock;
using emulator::Sensor;
using Levels = VideoRig::Levels;
using Picture = VideoRig::Picture;

/// How the picture of the video output changes with time: its frames and its memories.
class tst_videoPath : public Test
{
    Q_OBJECT

private slots:
    void withoutAFrameThereIsNoPicture();
    void thePictureIsIndependentOfTheConnection();
    void thePictureIsNoCall();
    void theNewestFrameOfTheVideoPresetIsShown();
    void theFrameOfThePictureIsUnfiltered_data();
    void theFrameOfThePictureIsUnfiltered();
    void theLimitsAreThoseOfTheGain();
    void theSameTimeShowsTheSamePicture_data();
    void theSameTimeShowsTheSamePicture();
    void theTemporalFilterReducesTheNoise_data();
    void theTemporalFilterReducesTheNoise();
    void theTemporalFilterDependsOnTimesOnly();
    void oddRowsAreHalfAFrameLater_data();
    void oddRowsAreHalfAFrameLater();
    void onlyInterlacedFormatsHaveFields_data();
    void onlyInterlacedFormatsHaveFields();
    void theTemporalFilterNeedsNoNewFrame();
    void theGainFollowsByItsFilterRate();
    void theGainNeedsNoNewFrame_data();
    void theGainNeedsNoNewFrame();
    void theGainFollowsByItsDampening();
    void theGainDependsOnTimesOnly_data();
    void theGainDependsOnTimesOnly();

private:
    /// A second camera. It sees the same as a rig that is made at the same time, and makes the same frames.
    class Twin : public LensRig
    {
    public:
        void takeSettingsOf(VideoRig &rig) { camera().restore(rig.camera().snapshot()); }
        Picture picture() { return camera().device<emulator::VideoOutput>()->render(); }
    };

    static int largestDifference(const Levels &first, const Levels &second)
    {
        if (first.empty() || first.size() != second.size())
            return std::numeric_limits<int>::max();
        int largest = 0;
        for (size_t i = 0; i < first.size(); ++i)
            largest = std::max(largest, std::abs(first[i] - second[i]));
        return largest;
    }
    static Levels rows(const Levels &levels, size_t first)
    {
        Levels half;
        for (size_t row = first; row < levels.size() / 160; row += 2)
            half.insert(half.end(), levels.begin() + std::ptrdiff_t(row * 160),
                        levels.begin() + std::ptrdiff_t((row + 1) * 160));
        return half;
    }
};

void tst_videoPath::withoutAFrameThereIsNoPicture()
{
    // A window that is too large for frames.
    VideoRig rig("edge-values");
    QVERIFY(rig.picture().isEmpty());
    const QTemporaryDir folder;
    const auto camera = emulator::Camera::create(QStringLiteral("everything"), folder.path());
    auto &output = *camera->device<emulator::VideoOutput>();
    QVERIFY(output.render().isEmpty());
    QVERIFY(!output.renderWithFrame().frame);
    camera->connect();
    QVERIFY(!output.render().isEmpty());
}

void tst_videoPath::thePictureIsIndependentOfTheConnection()
{
    VideoRig rig;
    const Picture first = rig.picture();
    rig.camera().disconnect();
    QVERIFY(rig.picture() == first);
    Clock::advance(1000);
    const Picture second = rig.picture();
    QCOMPARE(second.rgb.size(), first.rgb.size());
    QVERIFY(second != first);
    rig.camera().connect();
    QVERIFY(rig.picture() == second);
}

void tst_videoPath::thePictureIsNoCall()
{
    VideoRig rig;
    rig.camera().gate().failAlways("*");
    const size_t mark = rig.camera().gate().mark();
    QVERIFY(!rig.picture().isEmpty());
    QVERIFY(rig.camera().gate().callsSince(mark).empty());
}

void tst_videoPath::theNewestFrameOfTheVideoPresetIsShown()
{
    VideoRig rig;
    QVERIFY(rig.showArea(27) && rig.useRange(0, 16'383));
    // 2, 1, 0.5 and 0.25 ms. Alone, the active preset is shown.
    const double brightest = VideoRig::meanOf(rig.levels());
    QVERIFY(rig.setAll({{"sensor.activePreset", 1}}));
    Clock::advance(100);
    const double active = VideoRig::meanOf(rig.levels());
    QVERIFY(active < brightest - 20);
    QVERIFY(rig.setAll({{"sensor.sequencingMode", int(Sensor::PresetSequencing)}, {"sensor.videoPreset", 2}}));
    Clock::advance(100);
    const double third = VideoRig::meanOf(rig.levels());
    QVERIFY(third < active - 10);
    QVERIFY(rig.set("sensor.videoPreset", 0));
    QVERIFY(std::abs(VideoRig::meanOf(rig.levels()) - brightest) < 2);
    // Each new frame changes the noise.
    const Picture before = rig.picture();
    Clock::advance(100);
    QVERIFY(rig.picture() != before);
}

void tst_videoPath::theFrameOfThePictureIsUnfiltered_data()
{
    QTest::addColumn<int>("filter");
    QTest::newRow("off") << 0;
    QTest::newRow("on") << 1;
    QTest::newRow("adaptive") << 2;
}

void tst_videoPath::theFrameOfThePictureIsUnfiltered()
{
    QFETCH(int, filter);
    VideoRig rig;
    QVERIFY(rig.set("video.temporalFilter", filter));
    for (int i = 0; i < 3; ++i) {
        Clock::advance(100);
        const auto shown = rig.output().renderWithFrame();
        const auto frame = rig.camera().newestFrame(0, emulator::image::Output::Video);
        QVERIFY(shown.frame && frame);
        QCOMPARE(shown.frame->start, frame->start);
        QCOMPARE(shown.frame->size, frame->size);
        QCOMPARE(shown.frame->counts, frame->counts);
        QVERIFY(shown.picture == rig.picture());
    }
}

void tst_videoPath::theLimitsAreThoseOfTheGain()
{
    VideoRig rig;
    QVERIFY(rig.useRange(4000, 9000));
    Clock::advance(5000);
    const auto gain = rig.output().renderWithFrame().gain;
    // Half a level is 10 counts.
    QVERIFY(std::abs(gain.black - 4000) <= 10);
    QVERIFY(std::abs(gain.white - 9000) <= 10);
}

void tst_videoPath::theSameTimeShowsTheSamePicture_data()
{
    QTest::addColumn<int>("filter");
    QTest::addColumn<bool>("byRate");
    QTest::addColumn<int>("updateRate");
    QTest::newRow("plain") << 0 << false << 0;
    QTest::newRow("temporal filter") << 1 << false << 0;
    QTest::newRow("adaptive filter and filter rate") << 2 << true << 0;
    QTest::newRow("fields, temporal filter and filter rate") << 1 << true << 1;
}

void tst_videoPath::theSameTimeShowsTheSamePicture()
{
    QFETCH(const int, filter);
    QFETCH(const bool, byRate);
    QFETCH(const int, updateRate);
    VideoRig rig;
    QVERIFY(rig.setAll({{"video.format", 1},
                        {"video.temporalFilter", filter},
                        {"agc.filterRateEnabled", byRate},
                        {"agc.filterRate", 2.0},
                        {"video.updateRate", updateRate}}));
    for (const int milliseconds : {0, 1, 40, 7, 500}) {
        Clock::advance(milliseconds);
        const Picture picture = rig.picture();
        QVERIFY(rig.picture() == picture);
        // Another palette and back.
        QVERIFY(rig.set("palette.name", "Iron"));
        QVERIFY(rig.picture() != picture);
        QVERIFY(rig.set("palette.name", "Grayscale"));
        QVERIFY(rig.picture() == picture);
    }
}

void tst_videoPath::theTemporalFilterReducesTheNoise_data()
{
    QTest::addColumn<int>("filter");
    QTest::addColumn<int>("threshold");
    QTest::addColumn<double>("share");
    QTest::newRow("none") << 0 << 0 << 1.0;
    QTest::newRow("four taps") << 1 << 0 << 0.5;
    QTest::newRow("adaptive") << 2 << 100 << 0.5;
    QTest::newRow("adaptive without a threshold") << 2 << 0 << 1.0;
}

void tst_videoPath::theTemporalFilterReducesTheNoise()
{
    QFETCH(const int, filter);
    QFETCH(const int, threshold);
    QFETCH(const double, share);
    VideoRig rig;
    rig.openWith(FrameRig::equalPixels);
    QVERIFY(rig.showArea(27) && rig.useNarrowRange() && rig.set("video.format", 12));
    // All pixels are equal, so the differences between them are noise.
    const double noise = VideoRig::deviationOf(rig.levels());
    QVERIFY2(std::abs(noise - 4.6) < 0.3, qPrintable(QString::number(noise)));
    QVERIFY(rig.setAll({{"video.temporalFilter", filter}, {"video.temporalFilterThreshold", threshold}}));
    const double filtered = VideoRig::deviationOf(rig.levels());
    QVERIFY2(std::abs(filtered / noise - share) < 0.05, qPrintable(QString::number(filtered)));
}

// 50 Hz, so that a frame of the video has two frames of the camera.
void tst_videoPath::theTemporalFilterDependsOnTimesOnly()
{
    Twin twin;
    VideoRig rig;
    QVERIFY(rig.useNarrowRange() && rig.setAll({{"video.format", 12}, {"video.temporalFilter", 1}}));
    twin.takeSettingsOf(rig);
    QVERIFY(largestDifference(twin.picture().rgb, rig.picture().rgb) == 0);
    for (int picture = 0; picture < 12; ++picture) {
        Clock::advance(20);
        rig.picture();
    }
    // The temperatures have changed a little.
    const Levels often = rig.picture().rgb;
    QVERIFY(largestDifference(twin.picture().rgb, often) <= 1);
    Clock::advance(1000);
    QVERIFY(largestDifference(twin.picture().rgb, often) > 10);
    QVERIFY(largestDifference(twin.picture().rgb, rig.picture().rgb) == 0);
}

void tst_videoPath::oddRowsAreHalfAFrameLater_data()
{
    QTest::addColumn<int>("format");
    QTest::newRow("PAL") << 1;
    QTest::newRow("576i") << 102;
}

// 25 Hz, so that half a frame takes 20 ms.
void tst_videoPath::oddRowsAreHalfAFrameLater()
{
    QFETCH(const int, format);
    VideoRig rig;
    QVERIFY(rig.useNarrowRange() && rig.set("video.format", format));
    const Levels before = rig.levels();
    Clock::advance(20);
    const Levels now = rig.levels();
    // The noise has changed.
    QVERIFY(largestDifference(rows(before, 0), rows(now, 0)) > 3
            && largestDifference(rows(before, 1), rows(now, 1)) > 3);
    QVERIFY(rig.set("video.updateRate", 1));
    const Levels fields = rig.levels();
    // The image begins at an even row of the raster. The temperatures have changed a little.
    QCOMPARE(rig.place().top() % 2, 0);
    QVERIFY(largestDifference(rows(fields, 0), rows(before, 0)) <= 1);
    QVERIFY(rows(fields, 1) == rows(now, 1));
    QVERIFY(rig.set("video.updateRate", 0));
    QVERIFY(rig.levels() == now);
}

void tst_videoPath::onlyInterlacedFormatsHaveFields_data()
{
    QTest::addColumn<bool>("interlaced");
    for (const int format : {0, 1, 3, 4, 101, 102})
        QTest::addRow("%d", format) << true;
    for (const int format : {2, 5, 6, 7, 8, 12})
        QTest::addRow("%d", format) << false;
}

void tst_videoPath::onlyInterlacedFormatsHaveFields()
{
    QFETCH(const bool, interlaced);
    VideoRig rig;
    QVERIFY(rig.useRange(1000, 12'000) && rig.set("video.format", atoi(QTest::currentDataTag())));
    Clock::advance(1000);
    const Picture byFrames = rig.picture();
    QVERIFY(rig.set("video.updateRate", 1));
    QCOMPARE(rig.picture() != byFrames, interlaced);
    QVERIFY(rig.camera().changeMakeUp("hasUpdateRate", false));
    QVERIFY(rig.picture() == byFrames);
}

// A camera of 5 Hz and a video of 25 Hz: four frames of the video fit between two of the camera.
void tst_videoPath::theTemporalFilterNeedsNoNewFrame()
{
    VideoRig rig;
    QVERIFY(rig.showArea(20) && rig.useRange(0, 16'383));
    QVERIFY(rig.setAll({{"sensor.frameRate", 5.0}, {"video.format", 1}, {"video.temporalFilter", 1}}));
    const auto frame = [&] {
        const std::lock_guard lock(rig.camera().mutex());
        return rig.camera().device<emulator::FrameClock>()->newest(0)->number;
    };
    Clock::advance(1000);
    const uint64_t before = frame();
    while (frame() == before)
        Clock::advance(1);
    const double cold = VideoRig::meanOf(rig.levels());
    QVERIFY(rig.set("emulator./BlackbodyTemp1", 30.0));
    double mean = cold;
    for (int picture = 0; picture < 4; ++picture) {
        Clock::advance(40);
        mean = VideoRig::meanOf(rig.levels());
    }
    QCOMPARE(frame(), before + 1);
    QVERIFY(rig.set("video.temporalFilter", 0));
    Clock::advance(200);
    const double warm = VideoRig::meanOf(rig.levels());
    QVERIFY(warm > cold + 10);
    QVERIFY2(std::abs(mean - warm) < 1, qPrintable(QString("%1 %2 %3").arg(cold).arg(mean).arg(warm)));
}

void tst_videoPath::theGainFollowsByItsFilterRate()
{
    SlowGainRig rig;
    QVERIFY(rig.begin());
    QVERIFY(std::abs(rig.way()) < 0.02);
    Clock::advance(2000);
    QVERIFY2(std::abs(rig.way() - 0.63) < 0.03, qPrintable(QString::number(rig.way())));
    Clock::advance(2000);
    QVERIFY2(std::abs(rig.way() - 0.86) < 0.03, qPrintable(QString::number(rig.way())));
    // Frozen.
    QVERIFY(rig.setAll({{"agc.dampeningEnabled", true}, {"agc.dampening", 0.0}}));
    Clock::advance(10'000);
    QVERIFY2(std::abs(rig.way() - 0.86) < 0.03, qPrintable(QString::number(rig.way())));
}

void tst_videoPath::theGainNeedsNoNewFrame_data()
{
    using Settings = QList<std::pair<const char *, QVariant>>;
    QTest::addColumn<Settings>("settings");
    QTest::newRow("slow frames") << Settings{{"sensor.frameRate", 2.0}};
    QTest::newRow("presets in turn, one of them slow")
        << Settings{{"sensor.activePreset", 1}, {"sensor.frameRate", 2.0}, {"sensor.sequencingMode", 2}};
    QTest::newRow("sequences with pauses")
        << Settings{{"trigger.mode", 2}, {"trigger.internalRate", 1.0}, {"trigger.sequenceCount", 5}};
}

void tst_videoPath::theGainNeedsNoNewFrame()
{
    using Settings = QList<std::pair<const char *, QVariant>>;
    QFETCH(const Settings, settings);
    SlowGainRig rig;
    for (const auto &[name, value] : settings)
        QVERIFY2(rig.set(name, value), name);
    Clock::advance(3500);
    QVERIFY(rig.begin());
    for (int picture = 0; picture < 20; ++picture) {
        Clock::advance(100);
        rig.picture();
    }
    QVERIFY2(std::abs(rig.way() - 0.63) < 0.03, qPrintable(QString::number(rig.way())));
}

// 60 frames of the video in a second.
void tst_videoPath::theGainFollowsByItsDampening()
{
    VideoRig rig;
    QVERIFY(rig.showArea(27) && rig.set("video.format", 5) && rig.useRange(0, 10'000));
    const double goal = VideoRig::meanOf(rig.levels());
    QVERIFY(rig.set("agc.manualHigh", 16'383));
    const double start = VideoRig::meanOf(rig.levels());
    QVERIFY(goal - start > 30);
    QVERIFY(rig.setAll({{"agc.dampeningEnabled", true}, {"agc.dampening", 0.02}, {"agc.manualHigh", 10'000}}));
    const auto way = [&] { return (VideoRig::meanOf(rig.levels()) - start) / (goal - start); };
    QVERIFY(std::abs(way()) < 0.02);
    Clock::advance(1000);
    QVERIFY2(std::abs(way() - 0.70) < 0.03, qPrintable(QString::number(way())));
}

void tst_videoPath::theGainDependsOnTimesOnly_data()
{
    QTest::addColumn<double>("rate");
    QTest::addColumn<double>("dampening");
    QTest::newRow("filter rate") << 1.5 << 1.0;
    QTest::newRow("dampening") << 20.0 << 0.01;
    QTest::newRow("both") << 3.0 << 0.5;
}

void tst_videoPath::theGainDependsOnTimesOnly()
{
    QFETCH(const double, rate);
    QFETCH(const double, dampening);
    const auto meanAfter = [&](int steps) {
        VideoRig rig;
        const bool prepared = rig.showArea(27) && rig.useRange(0, 16'383);
        rig.picture();
        const bool set = rig.setAll({{"agc.filterRateEnabled", true},
                                     {"agc.filterRate", rate},
                                     {"agc.dampeningEnabled", true},
                                     {"agc.dampening", dampening},
                                     {"agc.manualHigh", 8000}});
        for (int step = 0; step < steps; ++step) {
            Clock::advance(600 / steps);
            rig.picture();
        }
        return prepared && set ? VideoRig::meanOf(rig.levels()) : 0;
    };
    const double once = meanAfter(1);
    const double often = meanAfter(40);
    QVERIFY(once > 50);
    QVERIFY2(std::abs(once - often) < 1, qPrintable(QString("%1 %2").arg(once).arg(often)));
}

ZVT_TEST(tst_videoPath)
#include "tst_videoPath.moc"
