#include "tests/platform/writeProfile.h"
#include "tests/support/Test.h"
#include "tests/unit/VideoTabRig.h"

#include <QSettings>
#include <QTemporaryDir>

namespace
{

const QStringList allFormats{"NTSC",
                             "NTSC (Square Pixel)",
                             "480i",
                             "PAL",
                             "PAL (Square Pixel)",
                             "576i",
                             "SVGA",
                             "SXGA",
                             "720p @ 50Hz",
                             "720p @ 59.9Hz",
                             "720p @ 60Hz",
                             "1080p @ 24Hz",
                             "1080p @ 25Hz",
                             "1080p @ 29.9Hz",
                             "1080p @ 30Hz",
                             "1080p @ 60Hz"};

} // namespace

/// The list of formats of the Video tab: the names, the row of the camera's format, and all formats in the
/// manufacturing mode.
class tst_VideoTabModelFormats : public Test
{
    Q_OBJECT

private slots:
    void everyFormatHasItsName();
    void unknownFormatHasAName();
    void onlyFourFormatsAreStandardDefinition();
    void aChangedFormatIsSignalledOnce();
    void unlistedFormatHasNoRow();
    void formatHasNoRowWithoutAList();

    void allFormatsAreListedBeforeTheFirstRead();
    void theModeKeepsItsListOfFormats();
    void theModeOffersAllFormats();
    void theModeEnds();
    void theModeEndsBeforeTheFirstRead();
    void anEqualListIsNotSignalled();
};

// Formats

void tst_VideoTabModelFormats::everyFormatHasItsName()
{
    VideoTab video(true);
    QCOMPARE(video.model.formatStrings(), allFormats);
    const QList<int> numbers{0, 3, 101, 1, 4, 102, 2, 6, 12, 10, 5, 7, 13, 11, 8, 9};
    for (int row = 0; row < numbers.size(); ++row) {
        video.gate().script("zvtGetVideoFormat", numbers[row]);
        video.read();
        QCOMPARE(video.model.formatIndex(), row);
    }
    for (const int unknown : {14, 50, 100, 103, 255}) {
        video.gate().script("zvtGetVideoFormat", unknown);
        video.read();
        QCOMPARE(video.model.formatIndex(), -1);
    }
}

void tst_VideoTabModelFormats::unknownFormatHasAName()
{
    VideoTab video(false, QStringLiteral("edge-values"));
    video.gate().script("zvtGetVideoFormat", 50);
    video.read();
    QCOMPARE(video.model.formatStrings(), QStringList({"Unknown Format", "NTSC", "720p @ 60Hz"}));
    QCOMPARE(video.model.formatIndex(), 0);
}

void tst_VideoTabModelFormats::onlyFourFormatsAreStandardDefinition()
{
    VideoTab video;
    QList<int> formats;
    for (int format = 0; format < 256; ++format) {
        video.gate().script("zvtGetVideoFormat", format);
        video.read();
        if (video.model.isSD())
            formats << format;
    }
    // Neither 480i (101) nor 576i (102).
    QCOMPARE(formats, QList<int>({0, 1, 3, 4}));
}

void tst_VideoTabModelFormats::aChangedFormatIsSignalledOnce()
{
    VideoTab video;
    video.read();
    // Both formats are standard definition.
    video.gate().script("zvtGetVideoFormat", 0);
    QCOMPARE(video.refresh(), QStringList({"isSDChanged", "formatIndexChanged"}) + alwaysSignalled);
    QVERIFY(video.model.isSD());
}

void tst_VideoTabModelFormats::unlistedFormatHasNoRow()
{
    VideoTab video;
    video.read();
    video.gate().script("zvtGetVideoFormat", 9);
    QCOMPARE(video.refresh(), QStringList({"isSDChanged", "formatIndexChanged"}) + alwaysSignalled);
    QCOMPARE(video.model.formatIndex(), -1);
}

void tst_VideoTabModelFormats::formatHasNoRowWithoutAList()
{
    VideoTab video;
    video.gate().failNext("zvtGetVideoFormats");
    video.read();
    QVERIFY(video.log.take().contains("isSDChanged"));
    QCOMPARE(video.model.formatIndex(), -1);
    QCOMPARE(video.refresh(), QStringList({"formatStringsChanged", "formatIndexChanged"}) + alwaysSignalled);
    QCOMPARE(video.model.formatIndex(), 2);
}

// The manufacturing mode

void tst_VideoTabModelFormats::allFormatsAreListedBeforeTheFirstRead()
{
    // The root turns the mode on after it has made the tabs, because the setting is on at first.
    QSettings().remove(QStringLiteral("zvtCamCtrlMfgTabVisibility"));
    const CameraRig rig;
    const ZvtCameraModel root(rig.controller(), nullptr);
    CameraRig::settle();
    QVERIFY(root.manufacturingMode());
    QVERIFY(!root.videoTabModel()->hasRefreshed());
    QCOMPARE(root.videoTabModel()->formatStrings(), allFormats);
    QCOMPARE(root.videoTabModel()->formatIndex(), -1);
}

void tst_VideoTabModelFormats::theModeKeepsItsListOfFormats()
{
    VideoTab video(true);
    QCOMPARE(video.model.formatStrings(), allFormats);
    // The list of the camera is new, but not shown.
    QVERIFY(!video.refresh().contains("formatStringsChanged"));
    QCOMPARE(video.model.formatStrings(), allFormats);
    QCOMPARE(video.model.formatIndex(), 3);
    // Outside the mode it is.
    video.root.setManufacturingMode(false);
    QCOMPARE(video.model.formatStrings(), cameraFormats);
    QCOMPARE(video.model.formatIndex(), 2);
}

void tst_VideoTabModelFormats::theModeOffersAllFormats()
{
    VideoTab video;
    video.read();
    video.log.take();
    const size_t since = video.gate().mark();
    video.root.setManufacturingMode(true);
    QCOMPARE(video.log.take(), QStringList({"formatStringsChanged", "formatIndexChanged"}));
    QCOMPARE(video.model.formatStrings(), allFormats);
    QCOMPARE(video.model.formatIndex(), 3);
    QCOMPARE(video.calls(since, true), QStringList());
    // A row at the same place is not signalled.
    video.root.setManufacturingMode(false);
    video.gate().script("zvtGetVideoFormat", 0);
    video.read();
    video.log.take();
    video.root.setManufacturingMode(true);
    QCOMPARE(video.log.take(), QStringList("formatStringsChanged"));
}

void tst_VideoTabModelFormats::theModeEnds()
{
    VideoTab video(true);
    video.gate().script("zvtGetVideoFormat", 9);
    video.read();
    QCOMPARE(video.model.formatIndex(), 15);
    video.log.take();
    video.root.setManufacturingMode(false);
    QCOMPARE(video.log.take(), QStringList({"formatStringsChanged", "formatIndexChanged"}));
    QCOMPARE(video.model.formatStrings(), cameraFormats);
    QCOMPARE(video.model.formatIndex(), -1);
}

void tst_VideoTabModelFormats::theModeEndsBeforeTheFirstRead()
{
    VideoTab video(true);
    video.root.setManufacturingMode(false);
    QCOMPARE(video.log.take(), QStringList("formatStringsChanged"));
    QCOMPARE(video.model.formatStrings(), QStringList());
    QCOMPARE(video.model.formatIndex(), -1);
}

void tst_VideoTabModelFormats::anEqualListIsNotSignalled()
{
    const QTemporaryDir folder;
    const QString profile
        = writeProfile(folder.path(), "everything",
                       R"({"video": {"formats": [0, 3, 101, 1, 4, 102, 2, 6, 12, 10, 5, 7, 13, 11, 8, 9]}})");
    VideoTab video(false, profile);
    video.read();
    QCOMPARE(video.model.formatStrings(), allFormats);
    video.log.take();
    video.root.setManufacturingMode(true);
    video.root.setManufacturingMode(false);
    QCOMPARE(video.log.take(), QStringList());
}

ZVT_TEST(tst_VideoTabModelFormats)
#include "tst_VideoTabModelFormats.moc"
