#include "platform/emulator/image/Agc.h"
#include "platform/emulator/image/Raster.h"
#include "tests/platform/ImageFixture.h"
#include "tests/platform/VideoRig.h"
#include "tests/support/Test.h"

#include <QDir>
#include <QImage>
#include <QRegion>

#include <algorithm>
#include <cstdlib>

/// Pictures of the video output that must stay as they are: without text to the byte, with text as stored pictures.
class tst_videoStored : public Test
{
    Q_OBJECT

private slots:
    void picturesWithoutTextAreTheSameEverywhere_data();
    void picturesWithoutTextAreTheSameEverywhere();
    void picturesWithTextLookAsStored_data();
    void picturesWithTextLookAsStored();
    void missingTextsAndFramesAreSeen_data() { picturesWithTextLookAsStored_data(); }
    void missingTextsAndFramesAreSeen();

private:
    static QImage imageOf(const VideoRig::Picture &picture);
    static QImage storedImage(const QString &file);
    static QString fileName();
    /// Prepares a camera for the settings of a row.
    static bool prepare(VideoRig &rig, const QVariantMap &settings);
    /// The differences in a part of two images of the same size, as a text. Empty if they look the same: a mean
    /// difference of 1.0 at most, and no more than 0.5 % of the pixels differ by more than 8 levels.
    static QString differencesIn(const QRegion &part, const QImage &first, const QImage &second);

    /// The pixels of a frame.
    static QRegion frameOf(const QRect &box) { return QRegion(box).subtracted(box.adjusted(1, 1, -1, -1)); }
};

QImage tst_videoStored::imageOf(const VideoRig::Picture &picture)
{
    return QImage(picture.rgb.data(), picture.width, picture.height, picture.width * 3, QImage::Format_RGB888).copy();
}

QString tst_videoStored::fileName()
{
    return QString::fromLatin1(QTest::currentDataTag()).replace(' ', '-') + QStringLiteral(".png");
}

QImage tst_videoStored::storedImage(const QString &file)
{
    return QImage(QStringLiteral(ZVT_SOURCE_DIR "/tests/platform/pictures/") + file)
        .convertToFormat(QImage::Format_RGB888);
}

bool tst_videoStored::prepare(VideoRig &rig, const QVariantMap &settings)
{
    bool set = rig.focusOn(25)
        && rig.setAll({{"overlay.enabled", true}, {"corrections.videoCorrected", true}, {"video.zoomFactor", 3}});
    for (auto setting = settings.begin(); setting != settings.end(); ++setting)
        set = set && rig.set(qPrintable(setting.key()), setting.value());
    return set;
}

QString tst_videoStored::differencesIn(const QRegion &part, const QImage &first, const QImage &second)
{
    double pixels = 0;
    double sum = 0;
    int off = 0;
    for (const QRect &rectangle : part)
        for (int y = rectangle.top(); y <= rectangle.bottom(); ++y)
            for (int x = rectangle.left(); x <= rectangle.right(); ++x) {
                const QRgb one = first.pixel(x, y), other = second.pixel(x, y);
                const int red = std::abs(qRed(one) - qRed(other));
                const int green = std::abs(qGreen(one) - qGreen(other));
                const int blue = std::abs(qBlue(one) - qBlue(other));
                ++pixels;
                sum += (red + green + blue) / 3.0;
                off += std::max({red, green, blue}) > 8 ? 1 : 0;
            }
    if (sum / pixels <= 1.0 && off / pixels <= 0.005)
        return {};
    return QStringLiteral("at %1, %2: %3 of %4 pixels are off, the mean difference is %5")
        .arg(part.boundingRect().x())
        .arg(part.boundingRect().y())
        .arg(off)
        .arg(pixels)
        .arg(sum / pixels);
}

void tst_videoStored::picturesWithoutTextAreTheSameEverywhere_data()
{
    QTest::addColumn<double>("scale");
    QTest::addColumn<bool>("interpolated");
    QTest::addColumn<QByteArray>("md5");
    QTest::newRow("1X") << 1.0 << false << QByteArray("86e48e0352d17d8214b2f52fcd85c04f");
    QTest::newRow("2X") << 2.0 << false << QByteArray("b9b8e1b7e999e407e31e13b187c9578e");
    QTest::newRow("0.5X") << 0.5 << true << QByteArray("b7988a5a628e9d2889b741d9692bd2f2");
    QTest::newRow("1.3X") << double(1.3F) << true << QByteArray("b67c5501eb3d158c8a58cb0a2e9c2d02");
    QTest::newRow("to fit") << 3.75 << true << QByteArray("ce9f80e599b4964897593c35bc62e423");
}

void tst_videoStored::picturesWithoutTextAreTheSameEverywhere()
{
    QFETCH(const double, scale);
    QFETCH(const bool, interpolated);
    QFETCH(const QByteArray, md5);
    using namespace emulator::image;
    const auto counts = imageFixture::outputOf(imageFixture::exposureOf(Scene::Live));
    Agc gain;
    gain.update(counts, imageFixture::smallArray, imageFixture::smallWindow, {}, 1);
    Fields fields{imageFixture::smallArray, {}, {}};
    gain.apply(counts, fields.first);
    Palette palette;
    for (size_t level = 0; level < palette.size(); ++level)
        palette[level] = {static_cast<uint8_t>(level), static_cast<uint8_t>(level * 3), static_cast<uint8_t>(~level)};
    const Picture picture = drawRaster(fields, {{640, 480}, 20, 10, 160 * scale, 128 * scale, interpolated}, palette);
    QCOMPARE(imageFixture::checksum(picture.rgb), md5);
}

void tst_videoStored::picturesWithTextLookAsStored_data()
{
    QTest::addColumn<QString>("profile");
    QTest::addColumn<QVariantMap>("settings");
    using Parts = QList<QRegion>; // The rows of text, the message, and the frames.
    QTest::addColumn<Parts>("parts");
    const QRegion fourRows(8, 8, 23 * 8, 70);
    const QRegion messageOf480(8, 458, 7 * 8, 16);
    const QRegion messageOf512(8, 494, 7 * 8, 16);
    QTest::newRow("defaults") << "everything" << QVariantMap{{"video.format", 0}} << Parts{fourRows, messageOf480};
    QVariantMap all{{"video.format", 3},
                    {"agc.method", 1},
                    {"palette.name", "Iron"},
                    {"overlay.textColor", 5},
                    {"overlay.textBackground", 16},
                    {"overlay.showUserField", true},
                    {"overlay.userText", QStringLiteral("20 °C")}};
    for (const char *field :
         {"Logo", "Focus", "Date", "CameraInfo", "Time", "Irig", "HourMeter", "FrontPanelTemp", "Flag", "AirGapTemp",
          "Palette", "InternalTemp", "Fov", "StateName", "Zoom", "Preset", "FrameRate", "LensTemp", "ChassisTemp"})
        all.insert(QStringLiteral("overlay.show") + field, true);
    QTest::newRow("every field") << "everything" << all << Parts{{8, 8, 23 * 8, 20 * 18 - 2}, messageOf480};
    // The whole height of the window is the region of the automatic focus.
    QTest::newRow("regions") << "everything" << QVariantMap{{"video.format", 102},
                                                            {"palette.name", "Rainbow"},
                                                            {"agc.region", QVariantList{10, 20, 60, 40}},
                                                            {"agc.regionEnabled", true},
                                                            {"overlay.showAgcRoi", true},
                                                            {"autoFocus.showAlways", true}}
                             << Parts{frameOf({40, 80, 240, 160}), frameOf({64, 0, 512, 512}), fourRows, messageOf512};
    QTest::newRow("brightness and contrast") << "te-cooler"
                                             << QVariantMap{{"video.format", 1},
                                                            {"video.brightness", 20},
                                                            {"video.contrast", -40},
                                                            {"video.temporalFilter", 1},
                                                            {"agc.method", 2}}
                                             << Parts{fourRows, messageOf512};
}

void tst_videoStored::picturesWithTextLookAsStored()
{
    QFETCH(const QString, profile);
    QFETCH(const QVariantMap, settings);
    QFETCH(const QList<QRegion>, parts);
    VideoRig rig(qPrintable(profile));
    QVERIFY(prepare(rig, settings));
    const QImage image = imageOf(rig.picture());
    // The rendered pictures are for those who compare or replace the stored ones.
    const QDir folder(QStringLiteral(ZVT_BINARY_DIR "/pictures"));
    QVERIFY(folder.mkpath(QStringLiteral(".")) && image.save(folder.filePath(fileName())));
    const QImage stored = storedImage(fileName());
    QCOMPARE(image.size(), stored.size());
    QCOMPARE(differencesIn(image.rect(), image, stored), QString());
    for (const QRegion &part : parts)
        QCOMPARE(differencesIn(part, image, stored), QString());
}

// Each text and frame is so small a part of the picture that it has to be compared alone.
void tst_videoStored::missingTextsAndFramesAreSeen()
{
    QFETCH(const QString, profile);
    QFETCH(const QVariantMap, settings);
    QFETCH(const QList<QRegion>, parts);
    VideoRig rig(qPrintable(profile));
    QVERIFY(prepare(rig, settings) && rig.set("overlay.enabled", false));
    const QImage image = imageOf(rig.picture());
    for (const QRegion &part : parts)
        QVERIFY(!differencesIn(part, image, storedImage(fileName())).isEmpty());
}

ZVT_TEST(tst_videoStored)
#include "tst_videoStored.moc"
