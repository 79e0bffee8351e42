#include "tests/support/SignalLog.h"
#include "tests/support/Test.h"
#include "tests/support/modelOf.h"

#include "platform/emulator/devices/VideoOutput.h"
#include "video/VideoOutputSettingsModel.h"

#include <thread>

namespace
{

const QString everything = QStringLiteral("everything");

/// A model that has been read.
struct Video {
    explicit Video(const QString &profile = everything, bool connected = true)
        : rig(profile, connected), root(rig.controller(), nullptr), model(*root.videoOutputSettings())
    {
        CameraRig::settle();
        log.watch(&model);
    }

    /// Reads everything. Returns the calls of the task.
    QStringList read()
    {
        const size_t mark = rig.gate().mark();
        model.refresh();
        CameraRig::settle();
        QStringList calls;
        for (const auto &call : rig.gate().callsSince(mark))
            if (call.thread != std::this_thread::get_id())
                calls << QString::fromStdString(call.name);
        return calls;
    }

    /// Writes a property. Returns the calls with their arguments.
    QStringList write(const char *property, const QVariant &value)
    {
        const size_t mark = rig.gate().mark();
        model.setProperty(property, value);
        return commandsSince(mark);
    }

    QStringList commandsSince(size_t mark)
    {
        QStringList calls;
        for (const auto &call : rig.gate().callsSince(mark))
            if (call.name.starts_with("zvtSet"))
                calls << QString::fromStdString(call.name + " " + call.arguments);
        return calls;
    }

    bool set(const char *name, const QVariant &value)
    {
        return rig.camera().otherClient().set(QStringLiteral("video.") + QLatin1String(name), value);
    }
    /// Lets the camera have another value for every property.
    bool changeAll()
    {
        return set("position", 2) && set("zoomFactor", 2) && set("offset", QVariantList{0, -40})
            && set("positionWritable", false);
    }
    emulator::VideoOutput &device() { return *rig.camera().device<emulator::VideoOutput>(); }

    CameraRig rig;
    ZvtCameraModel root;
    VideoOutputSettingsModel &model;
    SignalLog log;
};

/// The model on a camera whose values all differ from those of a model that has not been read.
ModelUnderTest changedModel()
{
    auto model = modelOf<VideoOutputSettingsModel>();
    model.prepare = [](CameraRig &rig) {
        auto client = rig.camera().otherClient();
        client.set("video.position", 2);
        client.set("video.positionWritable", false);
        client.set("video.zoomFactor", 0);
        client.set("video.offset", QVariantList{8, 12});
    };
    return model;
}

} // namespace

class tst_VideoOutputSettingsModel : public Test
{
    Q_OBJECT

private slots:
    void startsWithDefaults();
    void readsInOrder();
    void publishesInOrder();
    void unchangedValuesAreNotSignalled();
    void hasRefreshedRisesOnce();
    void anUnchangedListOfFactorsIsLeftAlone();
    void anotherListIsReplacedAndItsRowSelectedAgain();
    void anUnlistedFactorHasNoRow();
    void everyFormatHasTheRasterOfTheCamera_data();
    void everyFormatHasTheRasterOfTheCamera();
    void onlyTwoFormatsAreNtsc();
    void everyZoomFactorHasItsScale_data();
    void everyZoomFactorHasItsScale();
    void rowsHaveScales();

    void aPositionIsStoredBeforeItIsWritten();
    void aZoomFactorIsStoredBeforeItIsWritten();
    void aRefusedChoiceStaysUntilTheNextRead();
    void aRowOutsideTheListWrites255();
    void offsetsAreOnlyStored();
    void aPointSignalsEachCoordinateThatChanges();
    void offsetsAreAppliedTogether();
    void aReadDiscardsOffsetsThatWereNotApplied();
    void unchangedValuesAreNotWritten();
    void visibleIsKept();
    void theRootReadsAVisibleSection();

    void failingReads();
    void heldReadsOutliveTheModel();
    void secondRefreshIsDropped();
    void readsWithoutACamera();
    void randomOperator();
};

void tst_VideoOutputSettingsModel::startsWithDefaults()
{
    Video video;
    QVERIFY(!video.model.refreshing() && !video.model.hasRefreshed() && !video.model.visible());
    QCOMPARE(video.model.selectedVideoOutputPositionIndex(), 0);
    QCOMPARE(video.model.selectedZoomFactorIndex(), 0);
    QCOMPARE(video.root.videoOutputSettings()->zoomFactorListModel()->size(), 0);
    QCOMPARE(video.model.videoOutputOffset(), QPoint());
    QCOMPARE(video.model.displaySize(), QSize(640, 480));
    QCOMPARE(video.model.zoomScale(), 1.0F);
    QVERIFY(video.model.canChangePosition());
    QVERIFY(video.model.videoFormatIsNtsc());
}

void tst_VideoOutputSettingsModel::readsInOrder()
{
    Video video;
    QCOMPARE(video.read(),
             QStringList({"zvtGetVideoZoomFactors", "zvtGetVideoPositionWritable", "zvtGetVideoFormat",
                          "zvtGetVideoPosition", "zvtGetVideoZoomFactor", "zvtGetVideoOffset"}));
}

void tst_VideoOutputSettingsModel::publishesInOrder()
{
    Video video;
    QVERIFY(video.changeAll());
    video.read();
    QCOMPARE(video.log.take(),
             QStringList({"refreshingChanged", "selectedVideoOutputPositionIndexChanged", "canChangePositionChanged",
                          "selectedZoomFactorIndexChanged", "zoomFactorChanged", "selectedZoomFactorIndexChanged",
                          "videoOutputYOffsetChanged", "videoOutputOffsetChanged", "videoFormatChanged",
                          "hasRefreshedChanged", "refreshingChanged"}));
    QCOMPARE(video.model.selectedVideoOutputPositionIndex(), 2);
    QVERIFY(!video.model.canChangePosition());
    QCOMPARE(video.model.zoomFactorListModel()->strings(), QStringList({"0.5X", "1X", "1.3X", "2X", "4X", "Fit"}));
    QCOMPARE(video.model.zoomFactorListModel()->values(), QList<int>({0, 1, 4, 2, 3, 5}));
    QCOMPARE(video.model.selectedZoomFactorIndex(), 3);
    QCOMPARE(video.model.zoomScale(), 2.0F);
    QCOMPARE(video.model.videoOutputOffset(), QPoint(0, -40));
    QCOMPARE(video.model.displaySize(), QSize(1280, 720));
}

void tst_VideoOutputSettingsModel::unchangedValuesAreNotSignalled()
{
    Video video;
    video.read();
    video.log.take();
    video.read();
    QCOMPARE(video.log.take(), QStringList({"refreshingChanged", "refreshingChanged"}));
}

void tst_VideoOutputSettingsModel::hasRefreshedRisesOnce()
{
    Video video;
    video.rig.gate().failAlways("*");
    video.read();
    QVERIFY(video.model.hasRefreshed());
    QCOMPARE(video.log.take(), QStringList({"refreshingChanged", "hasRefreshedChanged", "refreshingChanged"}));
    video.model.refresh();
    QVERIFY(video.model.refreshing() && video.model.hasRefreshed());
}

void tst_VideoOutputSettingsModel::anUnchangedListOfFactorsIsLeftAlone()
{
    Video video;
    video.read();
    SignalLog list(video.model.zoomFactorListModel());
    video.read();
    QCOMPARE(list.take(), QStringList());
}

void tst_VideoOutputSettingsModel::anotherListIsReplacedAndItsRowSelectedAgain()
{
    Video video;
    video.read();
    video.log.take();
    QVERIFY(video.rig.camera().changeMakeUp("hasBilinearZoom", false));
    StringIntDisplaySanityModel *const list = video.model.zoomFactorListModel();
    video.read();
    // The factor is the same; its row is another one.
    QCOMPARE(video.log.take(),
             QStringList({"refreshingChanged", "selectedZoomFactorIndexChanged", "selectedZoomFactorIndexChanged",
                          "refreshingChanged"}));
    QCOMPARE(video.model.zoomFactorListModel(), list);
    QCOMPARE(list->values(), QList<int>({1, 2, 3}));
    QCOMPARE(list->strings(), QStringList({"1X", "2X", "4X"}));
    QCOMPARE(video.model.selectedZoomFactorIndex(), 0);
    // A shorter list with the row at the same place is signalled once.
    QVERIFY(video.rig.camera().changeMakeUp("hasBilinearZoom", true));
    QVERIFY(video.set("zoomFactor", 0));
    video.read();
    QVERIFY(video.rig.camera().changeMakeUp("hasBilinearZoom", false));
    QVERIFY(video.set("zoomFactor", 1));
    video.log.take();
    video.read();
    QCOMPARE(
        video.log.take(),
        QStringList({"refreshingChanged", "selectedZoomFactorIndexChanged", "zoomFactorChanged", "refreshingChanged"}));
}

void tst_VideoOutputSettingsModel::anUnlistedFactorHasNoRow()
{
    Video video;
    QVERIFY(video.set("zoomFactor", 5));
    QVERIFY(video.rig.camera().changeMakeUp("hasBilinearZoom", false));
    video.read();
    QCOMPARE(video.model.selectedZoomFactorIndex(), -1);
    QCOMPARE(video.model.zoomScale(), 0.0F);
}

void tst_VideoOutputSettingsModel::everyFormatHasTheRasterOfTheCamera_data()
{
    QTest::addColumn<int>("format");
    QTest::addColumn<QSize>("raster");
    const auto rows = [](const QSize &raster, const QList<int> &formats) {
        for (const int format : formats)
            QTest::addRow("%d", format) << format << raster;
    };
    rows({640, 480}, {0, 3, 101});
    rows({640, 512}, {1, 4, 102});
    rows({800, 600}, {2});
    rows({1280, 720}, {5, 10, 12});
    rows({1280, 1024}, {6});
    rows({1920, 1080}, {7, 8, 9, 11, 13});
}

void tst_VideoOutputSettingsModel::everyFormatHasTheRasterOfTheCamera()
{
    QFETCH(const int, format);
    QFETCH(const QSize, raster);
    Video video;
    QVERIFY(video.set("format", format));
    video.read();
    QCOMPARE(video.model.displaySize(), raster);
    const auto device = video.device().placement().raster;
    QCOMPARE(QSize(device.width, device.height), raster);
}

void tst_VideoOutputSettingsModel::onlyTwoFormatsAreNtsc()
{
    Video video;
    for (const int format : {0, 1, 2, 3, 4, 5, 101, 255}) {
        video.rig.gate().script("zvtGetVideoFormat", format);
        video.read();
        QCOMPARE(video.model.videoFormatIsNtsc(), format == 0 || format == 3);
    }
    // A format that this model does not support.
    QCOMPARE(video.model.displaySize(), QSize(640, 480));
}

void tst_VideoOutputSettingsModel::everyZoomFactorHasItsScale_data()
{
    QTest::addColumn<int>("factor");
    QTest::addColumn<float>("scale");
    const float scales[] = {0.5F, 1.0F, 2.0F, 4.0F, 1.3F, 0.0F, 1.0F};
    for (int factor = 0; factor < 7; ++factor)
        QTest::addRow("%d", factor) << factor << scales[factor];
    QTest::addRow("255") << 255 << 1.0F;
}

void tst_VideoOutputSettingsModel::everyZoomFactorHasItsScale()
{
    QFETCH(const int, factor);
    QFETCH(const float, scale);
    Video video;
    video.rig.gate().script("zvtGetVideoZoomFactor", factor);
    video.read();
    QCOMPARE(video.model.zoomScale(), scale);
    video.rig.gate().script("zvtGetVideoZoomFactor", {});
    QCOMPARE(video.set("zoomFactor", factor), factor < 6);
    if (factor >= 6)
        return;
    // The emulated camera has the same scale.
    QCOMPARE(float(video.device().placement().zoom), scale);
}

void tst_VideoOutputSettingsModel::rowsHaveScales()
{
    Video video;
    QCOMPARE(video.model.convertZoomFactorIndexToRealZoomFactor(0), 1.0F);
    video.read();
    const float scales[] = {0.5F, 1.0F, 1.3F, 2.0F, 4.0F, 0.0F};
    for (int row = 0; row < 6; ++row)
        QCOMPARE(video.model.convertZoomFactorIndexToRealZoomFactor(row), scales[row]);
    for (const int row : {-1, 6, 1000})
        QCOMPARE(video.model.convertZoomFactorIndexToRealZoomFactor(row), 1.0F);
}

// Setters

void tst_VideoOutputSettingsModel::aPositionIsStoredBeforeItIsWritten()
{
    Video video;
    video.read();
    video.log.take();
    const size_t mark = video.rig.gate().mark();
    QObject::connect(&video.model, &VideoOutputSettingsModel::selectedVideoOutputPositionIndexChanged, this, [&] {
        QCOMPARE(video.model.selectedVideoOutputPositionIndex(), 1);
        QCOMPARE(video.commandsSince(mark), QStringList());
    });
    QCOMPARE(video.write("selectedVideoOutputPositionIndex", 1), QStringList("zvtSetVideoPosition 1"));
    QCOMPARE(video.log.take(), QStringList("selectedVideoOutputPositionIndexChanged"));
    QCOMPARE(video.device().position(), uint8_t(1));
}

void tst_VideoOutputSettingsModel::aZoomFactorIsStoredBeforeItIsWritten()
{
    Video video;
    video.read();
    video.log.take();
    const size_t mark = video.rig.gate().mark();
    QStringList commands;
    QObject::connect(&video.model, &VideoOutputSettingsModel::selectedZoomFactorIndexChanged, this,
                     [&] { commands = video.commandsSince(mark) + QStringList("row"); });
    QObject::connect(&video.model, &VideoOutputSettingsModel::zoomFactorChanged, this,
                     [&] { commands += video.commandsSince(mark) + QStringList("factor"); });
    QCOMPARE(video.write("selectedZoomFactorIndex", 2), QStringList("zvtSetVideoZoomFactor 4"));
    QCOMPARE(commands, QStringList({"row", "zvtSetVideoZoomFactor 4", "factor"}));
    QCOMPARE(video.log.take(), QStringList({"selectedZoomFactorIndexChanged", "zoomFactorChanged"}));
    QCOMPARE(video.model.zoomScale(), 1.3F);
    QCOMPARE(video.device().zoomFactor(), uint8_t(4));
}

void tst_VideoOutputSettingsModel::aRefusedChoiceStaysUntilTheNextRead()
{
    Video video;
    video.read();
    video.rig.gate().failNext("zvtSetVideoPosition");
    video.rig.gate().failNext("zvtSetVideoZoomFactor");
    video.model.setSelectedVideoOutputPositionIndex(2);
    video.model.setSelectedZoomFactorIndex(4);
    QCOMPARE(video.model.selectedVideoOutputPositionIndex(), 2);
    QCOMPARE(video.model.selectedZoomFactorIndex(), 4);
    QCOMPARE(video.model.zoomScale(), 4.0F);
    video.log.take();
    video.read();
    QCOMPARE(video.model.selectedVideoOutputPositionIndex(), 0);
    QCOMPARE(video.model.selectedZoomFactorIndex(), 1);
    QCOMPARE(video.model.zoomScale(), 1.0F);
    QCOMPARE(video.log.take(),
             QStringList({"refreshingChanged", "selectedVideoOutputPositionIndexChanged", "zoomFactorChanged",
                          "selectedZoomFactorIndexChanged", "refreshingChanged"}));
}

void tst_VideoOutputSettingsModel::aRowOutsideTheListWrites255()
{
    Video video;
    video.read();
    for (const int row : {-1, 6}) {
        QCOMPARE(video.write("selectedZoomFactorIndex", row), QStringList("zvtSetVideoZoomFactor 255"));
        QCOMPARE(video.model.zoomScale(), 1.0F);
    }
    QCOMPARE(video.write("selectedVideoOutputPositionIndex", 258), QStringList("zvtSetVideoPosition 2"));
    QCOMPARE(video.model.selectedVideoOutputPositionIndex(), 258);
}

void tst_VideoOutputSettingsModel::offsetsAreOnlyStored()
{
    Video video;
    video.read();
    video.log.take();
    QCOMPARE(video.write("videoOutputXOffset", 12), QStringList());
    QCOMPARE(video.log.take(), QStringList({"videoOutputXOffsetChanged", "videoOutputOffsetChanged"}));
    QCOMPARE(video.write("videoOutputYOffset", -7), QStringList());
    QCOMPARE(video.log.take(), QStringList({"videoOutputYOffsetChanged", "videoOutputOffsetChanged"}));
    QCOMPARE(video.model.videoOutputOffset(), QPoint(12, -7));
    QCOMPARE(video.model.videoOutputXOffset(), 12);
    QCOMPARE(video.model.videoOutputYOffset(), -7);
}

void tst_VideoOutputSettingsModel::aPointSignalsEachCoordinateThatChanges()
{
    Video video;
    QCOMPARE(video.write("videoOutputOffset", QPoint(4, 8)), QStringList());
    QCOMPARE(video.log.take(),
             QStringList({"videoOutputXOffsetChanged", "videoOutputYOffsetChanged", "videoOutputOffsetChanged"}));
    video.model.setVideoOutputOffset({4, 12});
    QCOMPARE(video.log.take(), QStringList({"videoOutputYOffsetChanged", "videoOutputOffsetChanged"}));
    video.model.setVideoOutputOffset({4, 12});
    QCOMPARE(video.log.take(), QStringList());
}

void tst_VideoOutputSettingsModel::offsetsAreAppliedTogether()
{
    Video video;
    video.read();
    video.model.setVideoOutputOffset({640, 208});
    video.log.take();
    size_t mark = video.rig.gate().mark();
    video.model.applyVideoOffsetSettings();
    QCOMPARE(video.commandsSince(mark), QStringList("zvtSetVideoOffset 640, 208"));
    QCOMPARE(QPoint(video.device().xOffset(), video.device().yOffset()), QPoint(640, 208));
    QCOMPARE(video.log.take(), QStringList());
    // The camera gets the lowest 16 bits. The model keeps the numbers.
    video.model.setVideoOutputOffset({0x18000, -0x10004});
    mark = video.rig.gate().mark();
    video.model.applyVideoOffsetSettings();
    QCOMPARE(video.commandsSince(mark), QStringList("zvtSetVideoOffset -32768, -4"));
    QCOMPARE(video.model.videoOutputOffset(), QPoint(0x18000, -0x10004));
    QCOMPARE(QPoint(video.device().xOffset(), video.device().yOffset()), QPoint(640, 208));
}

void tst_VideoOutputSettingsModel::aReadDiscardsOffsetsThatWereNotApplied()
{
    Video video;
    QVERIFY(video.set("offset", QVariantList{8, 4}));
    video.read();
    video.model.setVideoOutputOffset({100, 4});
    video.log.take();
    video.read();
    QCOMPARE(video.model.videoOutputOffset(), QPoint(8, 4));
    QCOMPARE(video.log.take(),
             QStringList(
                 {"refreshingChanged", "videoOutputXOffsetChanged", "videoOutputOffsetChanged", "refreshingChanged"}));
}

void tst_VideoOutputSettingsModel::unchangedValuesAreNotWritten()
{
    Video video;
    video.read();
    video.log.take();
    for (const char *property : {"visible", "selectedVideoOutputPositionIndex", "selectedZoomFactorIndex",
                                 "videoOutputXOffset", "videoOutputYOffset", "videoOutputOffset"})
        QCOMPARE(video.write(property, video.model.property(property)), QStringList());
    QCOMPARE(video.log.take(), QStringList());
}

void tst_VideoOutputSettingsModel::visibleIsKept()
{
    Video video;
    QCOMPARE(video.write("visible", true), QStringList());
    QVERIFY(video.model.visible());
    QCOMPARE(video.log.take(), QStringList("visibleChanged"));
}

void tst_VideoOutputSettingsModel::theRootReadsAVisibleSection()
{
    Video video;
    for (const bool visible : {false, true}) {
        video.model.setVisible(visible);
        const size_t mark = video.rig.gate().mark();
        video.root.refreshAllVisible();
        CameraRig::settle();
        QCOMPARE(video.rig.callsSince(mark).count("zvtGetVideoOffset"), visible ? 1 : 0);
    }
}

void tst_VideoOutputSettingsModel::failingReads()
{
    walkFailingReads(changedModel(),
                     {{"zvtGetVideoZoomFactors",
                       {{"zoomFactorListModel", "selectedZoomFactorIndex"}, "a factor has no row without the list"}}});
}

void tst_VideoOutputSettingsModel::heldReadsOutliveTheModel() { walkHeldDeletion(modelOf<VideoOutputSettingsModel>()); }

void tst_VideoOutputSettingsModel::secondRefreshIsDropped() { walkSecondRefresh(modelOf<VideoOutputSettingsModel>()); }

void tst_VideoOutputSettingsModel::readsWithoutACamera() { walkNoCamera(modelOf<VideoOutputSettingsModel>()); }

void tst_VideoOutputSettingsModel::randomOperator() { walkRandomOperator(modelOf<VideoOutputSettingsModel>(), 64); }

ZVT_TEST(tst_VideoOutputSettingsModel)
#include "tst_VideoOutputSettingsModel.moc"
