#include "platform/emulator/image/Agc.h"
#include "platform/emulator/image/Detail.h"
#include "platform/emulator/image/Raster.h"
#include "platform/emulator/image/output.h"
#include "tests/platform/VideoRig.h"
#include "tests/support/Test.h"

using emulator::image::Rgb;
using Levels = VideoRig::Levels;
using Picture = VideoRig::Picture;

/// How the settings of the video output change its picture: raster, place, colours and levels.
class tst_videoPicture : public Test
{
    Q_OBJECT

private slots:
    void formatsHaveTheirRasters_data();
    void formatsHaveTheirRasters();
    void thePictureIsTheFrameByItsSteps_data();
    void thePictureIsTheFrameByItsSteps();
    void theCorrectionOfTheOutputIsShown();
    void flipsMirrorThePicture();
    void wholeZoomFactorsRepeatPixels_data();
    void wholeZoomFactorsRepeatPixels();
    void halfTheSizeIsTheMeanOfFourPixels();
    void theImageFillsTheRaster();
    void positionAndOffsetMoveTheImage();
    void anImageLargerThanTheRasterIsCut();
    void thePaletteColoursTheLevels();
    void brightnessAndContrastChangeAnalogFormats_data();
    void brightnessAndContrastChangeAnalogFormats();
    void hotIsBlack();
    void sharpnessRaisesTheStepAtAnEdge();
    void differencesBelowTheThresholdAreNoDetails();
    void aSmallPlateauLeavesFewLevelsToALargeArea();
    void theRegionOfTheGainControlSpreadsMore();
    void theOverlayIsDrawnOverTheImage();

private:
    /// The levels of a frame by a gain control of its own.
    static Levels levelsOf(const emulator::Frame &frame, const emulator::image::AgcSettings &settings)
    {
        std::vector<uint16_t> counts = frame.counts;
        if (settings.method == emulator::image::AgcMethod::Detail)
            emulator::image::enhanceDetail(counts, frame.size, settings.sharpness, settings.threshold);
        emulator::image::Agc gain;
        gain.update(counts, frame.size, {0, 0, frame.size.width, frame.size.height}, settings, 1);
        Levels levels;
        gain.apply(counts, levels);
        return levels;
    }
    /// The mean level of a part of the picture, by pixels of the image.
    static double meanOf(VideoRig &rig, const QRect &part)
    {
        return VideoRig::meanOf(VideoRig::levelsIn(rig.picture(), part.translated(rig.place().topLeft())));
    }
};

void tst_videoPicture::formatsHaveTheirRasters_data()
{
    QTest::addColumn<QSize>("raster");
    for (const int format : {0, 3, 50, 101})
        QTest::addRow("%d", format) << QSize(640, 480);
    for (const int format : {1, 4, 102})
        QTest::addRow("%d", format) << QSize(640, 512);
    for (const int format : {5, 10, 12})
        QTest::addRow("%d", format) << QSize(1280, 720);
    for (const int format : {7, 8, 9, 11, 13})
        QTest::addRow("%d", format) << QSize(1920, 1080);
    QTest::newRow("2") << QSize(800, 600);
    QTest::newRow("6") << QSize(1280, 1024);
}

void tst_videoPicture::formatsHaveTheirRasters()
{
    QFETCH(const QSize, raster);
    VideoRig rig;
    rig.openWith(R"({"video": {"formats": [50]}})");
    QCOMPARE(zvtSetVideoFormat(rig.handle(), static_cast<uint8_t>(atoi(QTest::currentDataTag()))), 0);
    const Picture picture = rig.picture();
    QCOMPARE(QSize(picture.width, picture.height), raster);
    QCOMPARE(picture.rgb.size(), static_cast<size_t>(raster.width() * raster.height() * 3));
    // The image is in the middle.
    const QRect image((raster.width() - 160) / 2, (raster.height() - 128) / 2, 160, 128);
    QVERIFY(VideoRig::isBlackOutside(picture, image));
    QVERIFY(VideoRig::meanOf(VideoRig::levelsIn(picture, image)) > 50);
}

void tst_videoPicture::thePictureIsTheFrameByItsSteps_data()
{
    QTest::addColumn<int>("method");
    QTest::newRow("plateau") << 0;
    QTest::newRow("detail") << 1;
    QTest::newRow("linear") << 2;
    QTest::newRow("manual") << 3;
}

void tst_videoPicture::thePictureIsTheFrameByItsSteps()
{
    QFETCH(const int, method);
    VideoRig rig;
    QVERIFY(rig.setAll({{"corrections.videoCorrected", true},
                        {"agc.method", method},
                        {"agc.plateau", 40},
                        {"agc.sharpness", 5},
                        {"agc.threshold", 12},
                        {"agc.manualLow", 2000},
                        {"agc.manualHigh", 9000},
                        {"palette.name", "Iron"}}));
    const auto frame = rig.camera().newestFrame(0, emulator::image::Output::Video);
    QVERIFY(frame);
    emulator::image::AgcSettings settings;
    settings.method = emulator::image::AgcMethod(method);
    settings.plateau = 40;
    settings.sharpness = 5;
    settings.threshold = 12;
    settings.manualLow = 2000;
    settings.manualHigh = 9000;
    const emulator::image::Fields fields{frame->size, levelsOf(*frame, settings), {}};
    const emulator::image::RasterPlace place{{1280, 720}, 560, 296, 160, 128, false};
    const auto &palette = rig.camera().device<emulator::VideoPalette>()->palette();
    QVERIFY(rig.picture() == emulator::image::drawRaster(fields, place, palette));
}

void tst_videoPicture::theCorrectionOfTheOutputIsShown()
{
    VideoRig rig;
    QVERIFY(rig.showArea(27) && rig.setAll({{"corrections.digitalCorrected", true}}) && rig.useNarrowRange());
    const double raw = VideoRig::deviationOf(rig.levels());
    QVERIFY(rig.set("corrections.videoCorrected", true));
    const double corrected = VideoRig::deviationOf(rig.levels());
    QVERIFY2(corrected < raw / 2, qPrintable(QString("%1 %2").arg(raw).arg(corrected)));
}

// The raw image is mirrored in the middle of the raster.
void tst_videoPicture::flipsMirrorThePicture()
{
    VideoRig rig;
    const Picture picture = rig.picture();
    for (const auto &[reverted, inverted] : {std::pair{true, false}, {true, true}, {false, true}, {false, false}}) {
        QVERIFY(rig.setAll({{"image.reverted", reverted}, {"image.inverted", inverted}}));
        Picture mirrored = picture;
        for (int y = 0; y < picture.height; ++y)
            for (int x = 0; x < picture.width; ++x) {
                const Rgb from = VideoRig::pixel(picture, reverted ? picture.width - 1 - x : x,
                                                 inverted ? picture.height - 1 - y : y);
                uint8_t *const to = mirrored.rgb.data() + size_t(y * picture.width + x) * 3;
                to[0] = from.red;
                to[1] = from.green;
                to[2] = from.blue;
            }
        QVERIFY(rig.picture() == mirrored);
    }
    // Both flips move the window to the opposite place of the array.
    QVERIFY(rig.setAll({{"sensor.window", QVariantList{16, 8, 160, 128}}, {"video.position", 0}}));
    QVERIFY(VideoRig::isBlackOutside(rig.picture(), {16, 8, 160, 128}));
    QVERIFY(rig.setAll({{"image.reverted", true}, {"image.inverted", true}}));
    const Picture moved = rig.picture();
    QVERIFY(VideoRig::isBlackOutside(moved, {464, 376, 160, 128}));
    QVERIFY(VideoRig::meanOf(VideoRig::levelsIn(moved, {464, 376, 160, 128})) > 50);
}

void tst_videoPicture::wholeZoomFactorsRepeatPixels_data()
{
    QTest::addColumn<int>("zoomFactor");
    QTest::addColumn<int>("scale");
    QTest::newRow("2X") << 2 << 2;
    QTest::newRow("4X") << 3 << 4;
}

void tst_videoPicture::wholeZoomFactorsRepeatPixels()
{
    QFETCH(const int, zoomFactor);
    QFETCH(const int, scale);
    VideoRig rig;
    const Levels levels = rig.levels();
    QVERIFY(rig.set("video.zoomFactor", zoomFactor));
    const Levels enlarged = rig.levels();
    QCOMPARE(rig.place(), QRect((1280 - 160 * scale) / 2, (720 - 128 * scale) / 2, 160 * scale, 128 * scale));
    QCOMPARE(enlarged.size(), levels.size() * static_cast<size_t>(scale * scale));
    size_t wrong = 0;
    for (size_t y = 0; y < 128; ++y)
        for (size_t x = 0; x < 160; ++x)
            for (size_t part = 0; part < size_t(scale * scale); ++part) {
                const size_t row = y * size_t(scale) + part / size_t(scale);
                const size_t column = x * size_t(scale) + part % size_t(scale);
                wrong += enlarged[row * 160 * size_t(scale) + column] != levels[y * 160 + x];
            }
    QCOMPARE(wrong, size_t(0));
}

void tst_videoPicture::halfTheSizeIsTheMeanOfFourPixels()
{
    VideoRig rig;
    const Levels levels = rig.levels();
    QVERIFY(rig.set("video.zoomFactor", 0));
    const Levels reduced = rig.levels();
    QCOMPARE(reduced.size(), size_t(80 * 64));
    int largest = 0;
    for (size_t y = 0; y < 64; ++y)
        for (size_t x = 0; x < 80; ++x) {
            const uint8_t *const corner = levels.data() + 2 * y * 160 + 2 * x;
            const int mean = (corner[0] + corner[1] + corner[160] + corner[161]) / 4;
            largest = std::max(largest, std::abs(reduced[y * 80 + x] - mean));
        }
    QVERIFY2(largest <= 1, qPrintable(QString::number(largest)));
}

void tst_videoPicture::theImageFillsTheRaster()
{
    VideoRig rig;
    // Steps of 1.3 and of 5.625 raster pixels.
    for (const auto &[factor, image] : {std::pair{4, QRect(536, 277, 208, 166)}, {5, QRect(190, 0, 900, 720)}}) {
        QVERIFY(rig.set("video.zoomFactor", factor));
        const Picture picture = rig.picture();
        QVERIFY(VideoRig::isBlackOutside(picture, image.adjusted(-1, -1, 1, 1)));
        // The same picture, so the levels have about the same mean; interpolation makes it smoother.
        const Levels levels = VideoRig::levelsIn(picture, image);
        QVERIFY(rig.set("video.zoomFactor", 1));
        const Levels original = rig.levels();
        QVERIFY(std::abs(VideoRig::meanOf(levels) - VideoRig::meanOf(original)) < 1);
        QVERIFY(VideoRig::deviationOf(levels) < VideoRig::deviationOf(original));
    }
}

void tst_videoPicture::positionAndOffsetMoveTheImage()
{
    VideoRig rig;
    const Levels levels = rig.levels();
    const auto imageAt = [&](int x, int y) {
        const Picture picture = rig.picture();
        const QRect image(x, y, 160, 128);
        return VideoRig::isBlackOutside(picture, image) && VideoRig::levelsIn(picture, image) == levels;
    };
    QVERIFY(imageAt(560, 296));
    QVERIFY(rig.set("video.position", 0));
    QVERIFY(imageAt(240, 192));
    QVERIFY(rig.setAll({{"video.offset", QVariantList{8, 20}}}));
    QVERIFY(imageAt(240, 192));
    QVERIFY(rig.set("video.position", 2));
    QVERIFY(imageAt(8, 20));
    QCOMPARE(zvtSetVideoOffset(rig.handle(), 1120, 592), 0);
    QVERIFY(imageAt(1120, 592));
    // Another window is elsewhere on the array.
    QVERIFY(rig.setAll({{"sensor.window", QVariantList{0, 100, 160, 128}}, {"video.position", 0}}));
    QVERIFY(VideoRig::isBlackOutside(rig.picture(), {0, 100, 160, 128}));
}

void tst_videoPicture::anImageLargerThanTheRasterIsCut()
{
    VideoRig rig;
    QVERIFY(rig.setAll({{"sensor.window", QVariantList{0, 0, 640, 512}}, {"video.position", 2}, {"video.format", 4}}));
    const Levels all = rig.levels();
    QCOMPARE(all.size(), size_t(640 * 512));
    QVERIFY(rig.set("video.format", 3));
    const QRect raster(0, 0, 640, 480);
    QVERIFY(std::ranges::equal(VideoRig::levelsIn(rig.picture(), raster), std::span(all).first(640 * 480)));
    QCOMPARE(zvtSetVideoOffset(rig.handle(), 0, -32), 0);
    QVERIFY(std::ranges::equal(VideoRig::levelsIn(rig.picture(), raster), std::span(all).last(640 * 480)));
}

void tst_videoPicture::thePaletteColoursTheLevels()
{
    VideoRig rig;
    const Levels levels = rig.levels();
    for (const QString &name : emulator::VideoPalette::names()) {
        QCOMPARE(zvtLoadPalette(rig.handle(), qPrintable(name)), 0);
        const auto &palette = rig.camera().device<emulator::VideoPalette>()->palette();
        const Picture picture = rig.picture();
        const QRect image = rig.place();
        size_t wrong = 0;
        for (int y = 0; y < 128; ++y)
            for (int x = 0; x < 160; ++x)
                wrong += VideoRig::pixel(picture, image.x() + x, image.y() + y)
                    != palette[levels[static_cast<size_t>(y * 160 + x)]];
        QVERIFY2(wrong == 0, qPrintable(name));
        QVERIFY(VideoRig::isBlackOutside(picture, image));
    }
}

void tst_videoPicture::brightnessAndContrastChangeAnalogFormats_data()
{
    QTest::addColumn<bool>("analog");
    for (const int format : {0, 1, 3, 4})
        QTest::addRow("%d", format) << true;
    for (const int format : {2, 5, 8, 101, 102})
        QTest::addRow("%d", format) << false;
}

void tst_videoPicture::brightnessAndContrastChangeAnalogFormats()
{
    QFETCH(const bool, analog);
    VideoRig rig;
    QVERIFY(rig.setAll({{"video.format", atoi(QTest::currentDataTag())}, {"agc.method", 2}}));
    const Levels plain = rig.levels();
    for (const auto &[brightness, contrast] : {std::pair{20, 0}, {-15, 0}, {0, 60}, {0, -64}, {-128, 127}}) {
        QCOMPARE(zvtSetVideoBrightness(rig.handle(), static_cast<int8_t>(brightness)), 0);
        QCOMPARE(zvtSetVideoContrast(rig.handle(), static_cast<int8_t>(contrast)), 0);
        const Levels changed = rig.levels();
        if (!analog) {
            QVERIFY(changed == plain);
            continue;
        }
        const double moved = VideoRig::meanOf(changed) - VideoRig::meanOf(plain);
        const double spread = VideoRig::deviationOf(changed) - VideoRig::deviationOf(plain);
        if (brightness != 0)
            QVERIFY(brightness > 0 ? moved > 5 : moved < -5);
        else
            QVERIFY(contrast > 0 ? spread > 5 : spread < -5);
    }
}

void tst_videoPicture::hotIsBlack()
{
    VideoRig rig;
    rig.openWith(R"({"agc": {"blackHotAvailable": true}})");
    Levels levels = rig.levels();
    QCOMPARE(zvtSetBlackHotEnabled(rig.handle(), 1), 0);
    for (uint8_t &level : levels)
        level = static_cast<uint8_t>(255 - level);
    QVERIFY(rig.levels() == levels);
}

void tst_videoPicture::sharpnessRaisesTheStepAtAnEdge()
{
    VideoRig rig;
    // The small plateau leaves levels to the differences between few pixels.
    QVERIFY(rig.focusOn(25) && rig.setAll({{"corrections.videoCorrected", true}, {"agc.plateau", 5}}));
    // Left and right of the edge of the first upright bar.
    const auto step = [&rig] { return meanOf(rig, {39, 16, 1, 34}) - meanOf(rig, {38, 16, 1, 34}); };
    double before = step();
    QVERIFY2(before > 20, qPrintable(QString::number(before)));
    QVERIFY(rig.set("agc.method", 1));
    for (uint8_t sharpness = 1; sharpness <= 7; ++sharpness) {
        QCOMPARE(zvtSetVideoAGCDDESharpness(rig.handle(), sharpness), 0);
        const double now = step();
        QVERIFY2(now > before + 1, qPrintable(QString("%1: %2, %3").arg(sharpness).arg(before).arg(now)));
        before = now;
    }
}

void tst_videoPicture::differencesBelowTheThresholdAreNoDetails()
{
    VideoRig rig;
    const Picture plain = rig.picture();
    QVERIFY(rig.set("agc.method", 1));
    QVERIFY(rig.picture() != plain);
    QCOMPARE(zvtSetVideoAGCDDEThreshold(rig.handle(), 16'383), 0);
    QVERIFY(rig.picture() == plain);
}

void tst_videoPicture::aSmallPlateauLeavesFewLevelsToALargeArea()
{
    VideoRig rig;
    QVERIFY(rig.focusOn(25) && rig.set("corrections.videoCorrected", true));
    const auto spread = [&rig](uint32_t plateau) {
        // A part of the even background.
        const QRect area = QRect(10, 30, 18, 90).translated(rig.place().topLeft());
        const bool set = zvtSetVideoAGCPlateauP(rig.handle(), plateau) == 0;
        return set ? VideoRig::deviationOf(VideoRig::levelsIn(rig.picture(), area)) : 0;
    };
    const double large = spread(16'383);
    const double medium = spread(50);
    const double small = spread(5);
    QVERIFY2(large > 15 && medium < 0.8 * large && small < 0.5 * large,
             qPrintable(QString("%1 %2 %3").arg(large).arg(medium).arg(small)));
}

void tst_videoPicture::theRegionOfTheGainControlSpreadsMore()
{
    VideoRig rig;
    // A warm blackbody in the right half; the region is in the other one.
    QVERIFY(rig.setAll({{"emulator./Pattern", 2},
                        {"emulator./BlackbodyTemp1", 20.0},
                        {"emulator./BlackbodyTemp2", 30.0},
                        {"agc.method", 2}}));
    const auto spread = [&rig] {
        const QRect image = rig.place();
        return VideoRig::deviationOf(VideoRig::levelsIn(rig.picture(), {image.x() + 20, image.y() + 20, 40, 80}));
    };
    const double whole = spread();
    QCOMPARE(zvtSetVideoAGCROI(rig.handle(), 20, 20, 40, 80), 0);
    QCOMPARE(zvtSetVideoAGCROIEnabled(rig.handle(), true), 0);
    const double region = spread();
    QVERIFY2(region > 1.5 * whole, qPrintable(QString("%1 %2").arg(whole).arg(region)));
}

void tst_videoPicture::theOverlayIsDrawnOverTheImage()
{
    VideoRig rig;
    QVERIFY(rig.setAll({{"sensor.window", QVariantList{0, 0, 640, 512}}, {"video.position", 0}}));
    const Picture plain = rig.picture();
    QVERIFY(rig.setAll({{"overlay.enabled", true}, {"overlay.textColor", 2}, {"overlay.showMessages", false}}));
    const Picture overlay = rig.picture();
    size_t red = 0;
    size_t changed = 0;
    for (int y = 0; y < plain.height; ++y)
        for (int x = 0; x < plain.width; ++x) {
            const Rgb pixel = VideoRig::pixel(overlay, x, y);
            if (pixel == VideoRig::pixel(plain, x, y))
                continue;
            ++changed;
            red += pixel == Rgb{255, 0, 0} ? 1 : 0;
        }
    QVERIFY(red > 200);
    QCOMPARE(changed, red);
    QVERIFY(rig.set("overlay.enabled", false));
    QVERIFY(rig.picture() == plain);
}

ZVT_TEST(tst_videoPicture)
#include "tst_videoPicture.moc"
