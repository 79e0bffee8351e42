#include "tests/support/Test.h"
#include "tests/unit/VideoTabRig.h"

namespace
{

const QStringList startSignals{"refreshingChanged", "hasRefreshedChanged"};
const QStringList endSignals{"hasRefreshedChanged", "refreshingChanged"};
const QStringList boardReads{"zvtGetBoardType", "zvtGetCameraType", "zvtGetCameraSubtype"};
const QStringList temporalReads{"zvtGetVideoTemporalFilter", "zvtGetVideoTemporalFilterThreshold"};

const QStringList cameraPalettes{"Contour", "Fire", "Grayscale", "Green", "Ice", "Iron", "Rainbow", "Sepia"};

ModelUnderTest videoModel()
{
    auto model = modelOf<VideoTabModel>();
    model.prepare = [](CameraRig &rig) { scriptVideo(rig.gate()); };
    return model;
}

} // namespace

/// What the Video tab reads, and what it shows after a read. tst_VideoTabModelFormats has the lists of formats.
class tst_VideoTabModel : public Test
{
    Q_OBJECT

private slots:
    void nothingIsKnownAtFirst();
    void readsInOrder_data();
    void readsInOrder();
    void unidentifiedCameraIsNotRead_data();
    void unidentifiedCameraIsNotRead();
    void publishesInOrder();
    void publishesTheValuesOfTheCamera();
    void unchangedValuesAreNotSignalled();
    void rateThatIsNoFloatIsSignalledEachTime();
    void aReadCanLockTheDampening();

    void boardWithoutDetailEnhancementHasThreeModes();
    void unlistedModeHasNoRow_data();
    void unlistedModeHasNoRow();
    void modeWithoutAListKeepsItsRow();

    void paletteAloneDoesNothing();
    void palettesAloneKeepTheRow();
    void unlistedPaletteHasNoRow_data();
    void unlistedPaletteHasNoRow();
    void paletteFillsItsBuffer();

    void readsTheRealCamera();
    void rootRefreshesTheTab();
    void failingReads();
    void heldReadsOutliveTheModel();
    void secondRefreshIsDropped();
    void readsWithoutACamera();
    void randomOperator();
};

void tst_VideoTabModel::nothingIsKnownAtFirst()
{
    VideoTab video;
    QVERIFY(!video.model.refreshing() && !video.model.hasRefreshed());
    for (const char *index : {"formatIndex", "agcModeIndex", "paletteIndex"})
        QCOMPARE(video.model.property(index).toInt(), -1);
    for (const char *list : {"formatStrings", "agcModeStrings", "palettes"})
        QCOMPARE(video.model.property(list).toStringList(), QStringList());
    QCOMPARE(static_cast<int>(video.model.agcMode()), 255);
    QVERIFY(!video.model.isSD());
    QVERIFY(video.model.lockFilterDampening());
    for (const char *name : {"showOverlay", "useFilterRate", "filterRate", "useFilterDampening", "filterDampening",
                             "plateauP", "manualLow", "manualHigh", "ddeSharpness", "brightness", "contrast",
                             "selectedUpdateRateIndex", "selectedTemporalFilterIndex", "temporalFilterThreshold"})
        QCOMPARE(video.model.property(name).toDouble(), 0.0);
}

// Reading

void tst_VideoTabModel::readsInOrder_data()
{
    QTest::addColumn<bool>("hasUpdateRate");
    QTest::addColumn<bool>("hasTemporalFilter");
    for (const bool hasUpdateRate : {false, true})
        for (const bool hasTemporalFilter : {false, true})
            QTest::addRow("%d %d", hasUpdateRate, hasTemporalFilter) << hasUpdateRate << hasTemporalFilter;
}

void tst_VideoTabModel::readsInOrder()
{
    QFETCH(const bool, hasUpdateRate);
    QFETCH(const bool, hasTemporalFilter);
    VideoTab video;
    video.rig.camera().changeMakeUp("hasUpdateRate", hasUpdateRate);
    video.rig.camera().changeMakeUp("hasTemporalFilter", hasTemporalFilter);
    video.rig.controller()->capabilities.configure(video.rig.controller().get());
    video.root.cameraCapabilitiesModel()->configure();
    QStringList expected = boardReads + QStringList{"zvtGetVideoFormats",        "zvtGetVideoFormat",
                                                    "zvtGetVideoOverlayEnabled", "zvtGetVideoAGCFilterRateEnabled",
                                                    "zvtGetVideoAGCFilterRate",  "zvtGetVideoAGCDampeningEnabled",
                                                    "zvtGetVideoAGCDampening",   "zvtGetVideoAGCMethod",
                                                    "zvtGetVideoAGCPlateauP",    "zvtGetVideoBrightness",
                                                    "zvtGetVideoContrast",       "zvtGetVideoAGCManualLow",
                                                    "zvtGetVideoAGCManualHigh",  "zvtGetVideoAGCDDESharpness",
                                                    "zvtListPalettes",           "zvtGetPalette"};
    if (hasUpdateRate)
        expected << "zvtGetVideoUpdateRate";
    if (hasTemporalFilter)
        expected << temporalReads;
    QCOMPARE(video.read(), expected);
    QCOMPARE(video.model.selectedUpdateRateIndex(), hasUpdateRate ? 1 : 0);
    QCOMPARE(video.model.selectedTemporalFilterIndex(), hasTemporalFilter ? 2 : 0);
}

void tst_VideoTabModel::unidentifiedCameraIsNotRead_data()
{
    QTest::addColumn<int>("calls");
    for (const QString &call : boardReads)
        QTest::newRow(qPrintable(call)) << static_cast<int>(boardReads.indexOf(call)) + 1;
}

void tst_VideoTabModel::unidentifiedCameraIsNotRead()
{
    QFETCH(const int, calls);
    VideoTab video;
    video.gate().failNext(QTest::currentDataTag());
    QCOMPARE(video.read(), boardReads.first(calls));
    QCOMPARE(video.log.take(), startSignals + endSignals);
    QCOMPARE(video.model.agcModeStrings(), QStringList());
    // A later read publishes everything.
    video.read();
    QCOMPARE(video.model.agcModeStrings().size(), 4);
    // Later failures keep the values.
    video.gate().failNext(QTest::currentDataTag());
    QCOMPARE(video.refresh(), QStringList());
    QCOMPARE(video.model.agcModeStrings().size(), 4);
}

void tst_VideoTabModel::publishesInOrder()
{
    VideoTab video;
    video.model.refresh();
    QCOMPARE(video.log.take(), startSignals);
    QVERIFY(video.model.refreshing() && !video.model.hasRefreshed());
    CameraRig::settle();
    QCOMPARE(video.log.take(),
             QStringList({"formatStringsChanged",
                          "isSDChanged",
                          "formatIndexChanged",
                          "showOverlayChanged",
                          "useFilterRateChanged",
                          "filterRateChanged",
                          "useFilterDampeningChanged",
                          "filterDampeningChanged",
                          "lockFilterDampeningChanged",
                          "agcModeStringsChanged",
                          "agcModeChanged",
                          "agcModeIndexChanged",
                          "plateauPChanged",
                          "brightnessChanged",
                          "contrastChanged",
                          "manualLowChanged",
                          "manualHighChanged",
                          "ddeSharpnessChanged",
                          "palettesChanged",
                          "paletteIndexChanged"})
                 + alwaysSignalled + endSignals);
    QVERIFY(!video.model.refreshing() && video.model.hasRefreshed());
}

void tst_VideoTabModel::publishesTheValuesOfTheCamera()
{
    VideoTab video;
    video.read();
    QCOMPARE(video.model.formatStrings(), cameraFormats);
    QCOMPARE(video.model.formatIndex(), 2);
    QVERIFY(video.model.isSD() && video.model.showOverlay());
    QVERIFY(video.model.useFilterRate() && video.model.useFilterDampening() && !video.model.lockFilterDampening());
    QCOMPARE(video.model.filterRate(), 2.5F);
    QCOMPARE(video.model.filterDampening(), 0.25F);
    QCOMPARE(video.model.agcModeStrings(), QStringList({"Plateau", "DDE", "Auto Linear", "Manual Linear"}));
    QCOMPARE(video.model.agcModeIndex(), 3);
    QCOMPARE(video.model.agcMode(), VideoTabModel::AGC_MANUAL);
    QCOMPARE(video.model.plateauP(), 400U);
    QCOMPARE(video.model.brightness(), -15);
    QCOMPARE(video.model.contrast(), 127);
    QCOMPARE(video.model.manualLow(), 1000);
    QCOMPARE(video.model.manualHigh(), 9000);
    QCOMPARE(video.model.ddeSharpness(), 3);
    QCOMPARE(video.model.palettes(), cameraPalettes);
    QCOMPARE(video.model.paletteIndex(), 5);
    QCOMPARE(video.model.selectedUpdateRateIndex(), 1);
    QCOMPARE(video.model.selectedTemporalFilterIndex(), 2);
    QCOMPARE(video.model.temporalFilterThreshold(), 77U);
}

void tst_VideoTabModel::unchangedValuesAreNotSignalled()
{
    VideoTab video;
    video.read();
    QCOMPARE(video.refresh(), alwaysSignalled);
}

void tst_VideoTabModel::rateThatIsNoFloatIsSignalledEachTime()
{
    VideoTab video;
    video.gate().script("zvtGetVideoAGCFilterRate", 0.1);
    video.read();
    QCOMPARE(video.refresh(), QStringList("filterRateChanged") + alwaysSignalled);
    QCOMPARE(video.model.filterRate(), 0.1F);
}

void tst_VideoTabModel::aReadCanLockTheDampening()
{
    VideoTab video;
    video.read();
    video.gate().script("zvtGetVideoAGCDampening", 0.5);
    QCOMPARE(video.refresh(), QStringList("filterDampeningChanged") + alwaysSignalled);
    video.gate().script("zvtGetVideoAGCDampening", 0.0);
    QCOMPARE(video.refresh(), QStringList({"filterDampeningChanged", "lockFilterDampeningChanged"}) + alwaysSignalled);
    QVERIFY(video.model.lockFilterDampening());
    // A dampening that is nearly 0 is not locked.
    video.gate().script("zvtGetVideoAGCDampening", 1e-6);
    video.read();
    QVERIFY(!video.model.lockFilterDampening());
}

// Modes of the gain control

void tst_VideoTabModel::boardWithoutDetailEnhancementHasThreeModes()
{
    VideoTab video(false, QStringLiteral("board-6"));
    video.read();
    QCOMPARE(video.model.agcModeStrings(), QStringList({"Plateau", "Auto Linear", "Manual Linear"}));
    QCOMPARE(video.model.agcModeIndex(), 2);
    QCOMPARE(video.write("agcModeIndex", 1), QStringList("zvtSetVideoAGCMethod 2"));
    // The camera reports a mode that is not offered. The page shows its settings all the same.
    video.gate().script("zvtGetVideoAGCMethod", 1);
    video.read();
    QCOMPARE(video.model.agcModeIndex(), -1);
    QCOMPARE(video.model.agcMode(), VideoTabModel::AGC_DDE);
}

void tst_VideoTabModel::unlistedModeHasNoRow_data()
{
    QTest::addColumn<int>("mode");
    for (const int mode : {4, 200, 255})
        QTest::addRow("%d", mode) << mode;
}

void tst_VideoTabModel::unlistedModeHasNoRow()
{
    QFETCH(const int, mode);
    VideoTab video;
    video.read();
    video.gate().script("zvtGetVideoAGCMethod", mode);
    QCOMPARE(video.refresh(), QStringList({"agcModeChanged", "agcModeIndexChanged"}) + alwaysSignalled);
    QCOMPARE(video.model.agcModeIndex(), -1);
    QCOMPARE(static_cast<int>(video.model.agcMode()), mode);
}

void tst_VideoTabModel::modeWithoutAListKeepsItsRow()
{
    VideoTab video;
    video.read();
    video.gate().failNext("zvtGetVideoAGCMethod");
    QCOMPARE(video.refresh(), alwaysSignalled);
    QCOMPARE(video.model.agcModeIndex(), 3);
}

// Palettes

void tst_VideoTabModel::paletteAloneDoesNothing()
{
    VideoTab video;
    video.gate().failNext("zvtListPalettes");
    QVERIFY(!video.refresh().contains("paletteIndexChanged"));
    QCOMPARE(video.model.paletteIndex(), -1);
    QCOMPARE(video.refresh(), QStringList({"palettesChanged", "paletteIndexChanged"}) + alwaysSignalled);
    QCOMPARE(video.model.paletteIndex(), 5);
    video.gate().failNext("zvtListPalettes");
    video.gate().script("zvtGetPalette", "Grayscale");
    QCOMPARE(video.refresh(), alwaysSignalled);
    QCOMPARE(video.model.paletteIndex(), 5);
    QCOMPARE(video.refresh(), QStringList("paletteIndexChanged") + alwaysSignalled);
    QCOMPARE(video.model.paletteIndex(), 2);
}

void tst_VideoTabModel::palettesAloneKeepTheRow()
{
    VideoTab video;
    video.gate().failNext("zvtGetPalette");
    QVERIFY(video.refresh().contains("palettesChanged"));
    QCOMPARE(video.model.paletteIndex(), -1);
    QCOMPARE(video.refresh(), QStringList("paletteIndexChanged") + alwaysSignalled);
}

void tst_VideoTabModel::unlistedPaletteHasNoRow_data()
{
    QTest::addColumn<QString>("palette");
    QTest::newRow("unknown") << "Lava";
    QTest::newRow("other case") << "iron";
    QTest::newRow("none") << "";
    QTest::newRow("of another alphabet") << "Wärme";
}

void tst_VideoTabModel::unlistedPaletteHasNoRow()
{
    QFETCH(const QString, palette);
    VideoTab video;
    video.read();
    video.gate().script("zvtGetPalette", palette);
    QCOMPARE(video.refresh(), QStringList("paletteIndexChanged") + alwaysSignalled);
    QCOMPARE(video.model.paletteIndex(), -1);
}

// The name then ends with its buffer.
void tst_VideoTabModel::paletteFillsItsBuffer()
{
    VideoTab video;
    video.gate().fillBuffers(true);
    video.read();
    QCOMPARE(video.model.palettes(), cameraPalettes);
    QCOMPARE(video.model.paletteIndex(), -1);
}

// The real answers

void tst_VideoTabModel::readsTheRealCamera()
{
    const CameraRig rig;
    ZvtCameraModel root(rig.controller(), nullptr);
    root.setManufacturingMode(false);
    VideoTabModel &model = *root.videoTabModel();
    model.refresh();
    CameraRig::settle();
    QCOMPARE(model.formatStrings().value(model.formatIndex()), "720p @ 60Hz");
    QCOMPARE(model.agcModeIndex(), 0);
    QCOMPARE(model.palettes().value(model.paletteIndex()), "Grayscale");
    model.setPaletteIndex(5);
    model.setFormatIndex(0);
    model.setBrightness(20);
    model.setFilterDampening(0.25F);
    VideoTabModel other(&root);
    other.refresh();
    CameraRig::settle();
    QCOMPARE(other.palettes().value(other.paletteIndex()), "Iron");
    QVERIFY(other.isSD());
    QCOMPARE(other.brightness(), 20);
    QCOMPARE(other.filterDampening(), 0.25F);
}

// The walkers

void tst_VideoTabModel::rootRefreshesTheTab()
{
    VideoTab video;
    const size_t since = video.gate().mark();
    video.root.refreshAllVisible();
    CameraRig::settle();
    QCOMPARE(video.calls(since, false).count("zvtGetVideoAGCMethod"), 1);
}

void tst_VideoTabModel::failingReads()
{
    const QStringList board{"agcMode",
                            "agcModeIndex",
                            "agcModeStrings",
                            "brightness",
                            "contrast",
                            "ddeSharpness",
                            "filterDampening",
                            "filterRate",
                            "formatIndex",
                            "formatStrings",
                            "isSD",
                            "lockFilterDampening",
                            "manualHigh",
                            "manualLow",
                            "paletteIndex",
                            "palettes",
                            "plateauP",
                            "showOverlay",
                            "useFilterDampening",
                            "useFilterRate",
                            "selectedUpdateRateIndex",
                            "selectedTemporalFilterIndex",
                            "temporalFilterThreshold"};
    const char *gate = "nothing is read from a camera that cannot be identified";
    walkFailingReads(
        videoModel(),
        {{"zvtGetBoardType", {board, gate}},
         {"zvtGetCameraType", {board, gate}},
         {"zvtGetCameraSubtype", {board, gate}},
         {"zvtGetVideoFormats", {{"formatStrings", "formatIndex"}, "a format has no row without the list"}},
         {"zvtGetVideoFormat", {{"isSD", "formatIndex"}, "both come from the format"}},
         {"zvtGetVideoAGCDampening", {{"filterDampening", "lockFilterDampening"}, "a dampening of 0 is locked"}},
         {"zvtGetVideoAGCMethod", {{"agcMode", "agcModeIndex"}, "both come from the mode"}},
         {"zvtListPalettes", {{"palettes", "paletteIndex"}, "a palette has no row without the list"}}});
}

void tst_VideoTabModel::heldReadsOutliveTheModel() { walkHeldDeletion(videoModel()); }

void tst_VideoTabModel::secondRefreshIsDropped() { walkSecondRefresh(videoModel()); }

void tst_VideoTabModel::readsWithoutACamera() { walkNoCamera(modelOf<VideoTabModel>()); }

void tst_VideoTabModel::randomOperator() { walkRandomOperator(modelOf<VideoTabModel>(), 65); }

ZVT_TEST(tst_VideoTabModel)
#include "tst_VideoTabModel.moc"
