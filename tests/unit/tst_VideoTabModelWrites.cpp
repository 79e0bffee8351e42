#include "tests/support/Test.h"
#include "tests/unit/VideoTabRig.h"

#include <memory>

namespace
{

/// A model that has been read from a camera that accepts everything.
std::unique_ptr<VideoTab> readVideo()
{
    auto video = std::make_unique<VideoTab>();
    video->read();
    for (const char *call :
         {"zvtSetVideoFormat", "zvtSetVideoOverlayEnabled", "zvtSetVideoAGCFilterRateEnabled",
          "zvtSetVideoAGCFilterRate", "zvtSetVideoAGCDampeningEnabled", "zvtSetVideoAGCDampening",
          "zvtSetVideoAGCMethod", "zvtSetVideoAGCPlateauP", "zvtSetVideoAGCManualLow", "zvtSetVideoAGCManualHigh",
          "zvtSetVideoAGCDDESharpness", "zvtSetVideoBrightness", "zvtSetVideoContrast", "zvtLoadPalette",
          "zvtSetVideoUpdateRate", "zvtSetVideoTemporalFilter", "zvtSetVideoTemporalFilterThreshold"})
        video->gate().script(call, true);
    video->log.take();
    return video;
}

} // namespace

/// What the Video tab writes.
class tst_VideoTabModelWrites : public Test
{
    Q_OBJECT

private slots:
    void settingsAreWritten_data();
    void settingsAreWritten();
    void refusedSettingIsNotStored_data() { settingsAreWritten_data(); }
    void refusedSettingIsNotStored();
    void presentSettingIsNotWritten_data() { settingsAreWritten_data(); }
    void presentSettingIsNotWritten();
    void refusedSettingIsStored_data();
    void refusedSettingIsStored();
    void indexOutsideTheListIsIgnored_data();
    void indexOutsideTheListIsIgnored();
    void numberOutOfRangeIsIgnored_data();
    void numberOutOfRangeIsIgnored();

    void formatIsSignalledAfterItIsStored();
    void unknownFormatCanBeSelected();
    void levelsAreCutForTheCamera();
    void levelsAreReset();
    void rateIsWidened();
    void dampeningIsLockedAndUnlocked();
    void firstUnlockSetsHalf();
    void refusedLockKeepsTheDampening();
    void lockIsExactlyZero();
    void modelWithoutARootIsHarmless();
};

void tst_VideoTabModelWrites::settingsAreWritten_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("call");
    QTest::addColumn<QStringList>("signalled"); // Empty: only the one of the property.
    QTest::newRow("formatIndex") << QVariant(5) << "zvtSetVideoFormat 5"
                                 << QStringList{"formatIndexChanged", "isSDChanged"};
    QTest::newRow("showOverlay") << QVariant(false) << "zvtSetVideoOverlayEnabled false" << QStringList();
    QTest::newRow("useFilterRate") << QVariant(false) << "zvtSetVideoAGCFilterRateEnabled false" << QStringList();
    QTest::newRow("filterRate") << QVariant(4.5F) << "zvtSetVideoAGCFilterRate 4.5" << QStringList();
    QTest::newRow("useFilterDampening") << QVariant(false) << "zvtSetVideoAGCDampeningEnabled false" << QStringList();
    QTest::newRow("filterDampening") << QVariant(0.75F) << "zvtSetVideoAGCDampening 0.75" << QStringList();
    QTest::newRow("lockFilterDampening") << QVariant(true) << "zvtSetVideoAGCDampening 0"
                                         << QStringList{"filterDampeningChanged", "lockFilterDampeningChanged"};
    QTest::newRow("agcModeIndex") << QVariant(1) << "zvtSetVideoAGCMethod 1"
                                  << QStringList{"agcModeIndexChanged", "agcModeChanged"};
    QTest::newRow("plateauP") << QVariant(16383U) << "zvtSetVideoAGCPlateauP 16383" << QStringList();
    QTest::newRow("manualLow") << QVariant(0) << "zvtSetVideoAGCManualLow 0" << QStringList();
    QTest::newRow("manualHigh") << QVariant(65535) << "zvtSetVideoAGCManualHigh 65535" << QStringList();
    QTest::newRow("ddeSharpness") << QVariant(7) << "zvtSetVideoAGCDDESharpness 7" << QStringList();
    QTest::newRow("brightness") << QVariant(63) << "zvtSetVideoBrightness 63" << QStringList();
    QTest::newRow("contrast") << QVariant(-128) << "zvtSetVideoContrast -128" << QStringList();
    QTest::newRow("paletteIndex") << QVariant(2) << "zvtLoadPalette \"Grayscale\"" << QStringList();
}

void tst_VideoTabModelWrites::settingsAreWritten()
{
    QFETCH(const QVariant, value);
    QFETCH(const QString, call);
    QFETCH(QStringList, signalled);
    const char *property = QTest::currentDataTag();
    if (signalled.isEmpty())
        signalled << QString::fromLatin1(property) + "Changed";
    const auto video = readVideo();
    QCOMPARE(video->write(property, value), QStringList(call));
    QCOMPARE(video->model.property(property), value);
    QCOMPARE(video->log.take(), signalled);
}

void tst_VideoTabModelWrites::refusedSettingIsNotStored()
{
    QFETCH(const QVariant, value);
    QFETCH(const QString, call);
    const char *property = QTest::currentDataTag();
    const auto video = readVideo();
    const QVariant before = video->model.property(property);
    video->gate().failAlways(call.section(u' ', 0, 0).toStdString());
    QCOMPARE(video->write(property, value), QStringList(call));
    QCOMPARE(video->model.property(property), before);
    QCOMPARE(video->log.take(), QStringList());
}

void tst_VideoTabModelWrites::presentSettingIsNotWritten()
{
    const char *property = QTest::currentDataTag();
    const auto video = readVideo();
    QCOMPARE(video->write(property, video->model.property(property)), QStringList());
    QCOMPARE(video->log.take(), QStringList());
}

void tst_VideoTabModelWrites::refusedSettingIsStored_data()
{
    QTest::addColumn<QString>("property");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("call");
    QTest::newRow("update rate") << "selectedUpdateRateIndex" << QVariant(0) << "zvtSetVideoUpdateRate 0";
    QTest::newRow("8 bits of it") << "selectedUpdateRateIndex" << QVariant(258) << "zvtSetVideoUpdateRate 2";
    QTest::newRow("filter") << "selectedTemporalFilterIndex" << QVariant(1) << "zvtSetVideoTemporalFilter 1";
    QTest::newRow("no filter") << "selectedTemporalFilterIndex" << QVariant(-1) << "zvtSetVideoTemporalFilter 255";
    QTest::newRow("threshold") << "temporalFilterThreshold" << QVariant(65535U)
                               << "zvtSetVideoTemporalFilterThreshold 65535";
    QTest::newRow("16 bits of it") << "temporalFilterThreshold" << QVariant(65537U)
                                   << "zvtSetVideoTemporalFilterThreshold 1";
}

void tst_VideoTabModelWrites::refusedSettingIsStored()
{
    QFETCH(const QString, property);
    QFETCH(const QVariant, value);
    QFETCH(const QString, call);
    for (const bool refused : {false, true}) {
        const auto video = readVideo();
        if (refused)
            video->gate().failAlways(call.section(u' ', 0, 0).toStdString());
        QCOMPARE(video->write(property.toLatin1(), value), QStringList(call));
        QCOMPARE(video->model.property(property.toLatin1()), value);
        QCOMPARE(video->log.take(), QStringList(property + "Changed"));
        QCOMPARE(video->write(property.toLatin1(), value), QStringList());
        QCOMPARE(video->log.take(), QStringList());
    }
}

void tst_VideoTabModelWrites::indexOutsideTheListIsIgnored_data()
{
    QTest::addColumn<int>("rows");
    QTest::newRow("formatIndex") << 9;
    QTest::newRow("agcModeIndex") << 4;
    QTest::newRow("paletteIndex") << 8;
}

void tst_VideoTabModelWrites::indexOutsideTheListIsIgnored()
{
    QFETCH(const int, rows);
    const char *property = QTest::currentDataTag();
    const auto video = readVideo();
    const QVariant before = video->model.property(property);
    for (const int index : {-1, -2, rows, 1000})
        QCOMPARE(video->write(property, index), QStringList());
    QCOMPARE(video->model.property(property), before);
    QCOMPARE(video->log.take(), QStringList());
}

void tst_VideoTabModelWrites::numberOutOfRangeIsIgnored_data()
{
    QTest::addColumn<QList<int>>("numbers");
    QTest::newRow("manualLow") << QList<int>{-1, 65536, 100000};
    QTest::newRow("manualHigh") << QList<int>{-1, 65536, 100000};
    QTest::newRow("ddeSharpness") << QList<int>{-1, 0, 8, 256};
}

void tst_VideoTabModelWrites::numberOutOfRangeIsIgnored()
{
    QFETCH(const QList<int>, numbers);
    const char *property = QTest::currentDataTag();
    const auto video = readVideo();
    const QVariant before = video->model.property(property);
    for (const int number : numbers)
        QCOMPARE(video->write(property, number), QStringList());
    QCOMPARE(video->model.property(property), before);
    QCOMPARE(video->log.take(), QStringList());
}

void tst_VideoTabModelWrites::formatIsSignalledAfterItIsStored()
{
    const auto video = readVideo();
    QObject::connect(&video->model, &VideoTabModel::formatIndexChanged, this, [&] { QVERIFY(!video->model.isSD()); });
    video->model.setFormatIndex(5);
    QVERIFY(!video->model.isSD());
    // Signalled also if neither format is standard definition.
    video->log.take();
    video->model.setFormatIndex(6);
    QCOMPARE(video->log.take(), QStringList({"formatIndexChanged", "isSDChanged"}));
}

void tst_VideoTabModelWrites::unknownFormatCanBeSelected()
{
    VideoTab video(false, QStringLiteral("edge-values"));
    video.gate().script("zvtGetVideoFormat", {});
    video.read();
    QCOMPARE(video.model.formatStrings(), QStringList({"Unknown Format", "NTSC", "720p @ 60Hz"}));
    QCOMPARE(video.model.formatIndex(), -1);
    QCOMPARE(video.write("formatIndex", 0), QStringList("zvtSetVideoFormat 50"));
    QCOMPARE(video.model.formatIndex(), 0);
    video.read();
    QCOMPARE(video.model.formatIndex(), 0);
}

void tst_VideoTabModelWrites::levelsAreCutForTheCamera()
{
    const auto video = readVideo();
    QCOMPARE(video->write("brightness", 200), QStringList("zvtSetVideoBrightness -56"));
    QCOMPARE(video->model.brightness(), 200);
    QCOMPARE(video->write("contrast", -129), QStringList("zvtSetVideoContrast 127"));
    QCOMPARE(video->model.contrast(), -129);
    // The camera stores the cut numbers, and the next read replaces the others by them.
    video->gate().script("zvtGetVideoBrightness", -56);
    video->gate().script("zvtGetVideoContrast", 127);
    QCOMPARE(video->refresh(), QStringList({"brightnessChanged", "contrastChanged"}) + alwaysSignalled);
    QCOMPARE(video->model.brightness(), -56);
    QCOMPARE(video->model.contrast(), 127);
}

void tst_VideoTabModelWrites::levelsAreReset()
{
    const auto video = readVideo();
    const size_t since = video->gate().mark();
    for (int press = 0; press < 2; ++press) {
        video->model.resetBrightness();
        video->model.resetContrast();
    }
    QCOMPARE(video->calls(since, true), QStringList({"zvtSetVideoBrightness 0", "zvtSetVideoContrast 0"}));
    QCOMPARE(video->log.take(), QStringList({"brightnessChanged", "contrastChanged"}));
}

void tst_VideoTabModelWrites::rateIsWidened()
{
    const auto video = readVideo();
    QCOMPARE(video->write("filterRate", 0.1F), QStringList("zvtSetVideoAGCFilterRate 0.10000000149011612"));
}

void tst_VideoTabModelWrites::dampeningIsLockedAndUnlocked()
{
    const auto video = readVideo();
    video->model.setFilterDampening(0.3F);
    video->log.take();
    const QStringList both{"filterDampeningChanged", "lockFilterDampeningChanged"};
    QCOMPARE(video->write("lockFilterDampening", true), QStringList("zvtSetVideoAGCDampening 0"));
    QCOMPARE(video->log.take(), both);
    QVERIFY(video->model.lockFilterDampening());
    QCOMPARE(video->write("lockFilterDampening", true), QStringList());
    QCOMPARE(video->write("lockFilterDampening", false), QStringList("zvtSetVideoAGCDampening 0.3"));
    QCOMPARE(video->log.take(), both);
    QCOMPARE(video->model.filterDampening(), 0.3F);
}

void tst_VideoTabModelWrites::firstUnlockSetsHalf()
{
    VideoTab video;
    video.gate().script("zvtGetVideoAGCDampening", 0.0);
    video.gate().script("zvtSetVideoAGCDampening", true);
    video.read();
    QVERIFY(video.model.lockFilterDampening());
    QCOMPARE(video.write("lockFilterDampening", false), QStringList("zvtSetVideoAGCDampening 0.5"));
    QVERIFY(!video.model.lockFilterDampening());
}

void tst_VideoTabModelWrites::refusedLockKeepsTheDampening()
{
    const auto video = readVideo();
    video->gate().failNext("zvtSetVideoAGCDampening");
    QCOMPARE(video->write("lockFilterDampening", true), QStringList("zvtSetVideoAGCDampening 0"));
    QVERIFY(!video->model.lockFilterDampening());
    QCOMPARE(video->model.filterDampening(), 0.25F);
    QCOMPARE(video->log.take(), QStringList());
}

void tst_VideoTabModelWrites::lockIsExactlyZero()
{
    const auto video = readVideo();
    video->model.setFilterDampening(1e-6F);
    QVERIFY(!video->model.lockFilterDampening());
    video->log.take();
    video->model.setFilterDampening(0.0F);
    QVERIFY(video->model.lockFilterDampening());
    QCOMPARE(video->log.take(), QStringList({"filterDampeningChanged", "lockFilterDampeningChanged"}));
    // The dampening was not locked by the switch, so nothing was stored.
    QCOMPARE(video->write("lockFilterDampening", false), QStringList("zvtSetVideoAGCDampening 0.5"));
}

void tst_VideoTabModelWrites::modelWithoutARootIsHarmless()
{
    VideoTabModel orphan(nullptr);
    orphan.refresh();
    CameraRig::settle();
    QVERIFY(orphan.hasRefreshed());
    orphan.setContrast(5);
    orphan.setFormatIndex(0);
    QCOMPARE(orphan.contrast(), 0);
    QCOMPARE(orphan.formatIndex(), -1);
}

ZVT_TEST(tst_VideoTabModelWrites)
#include "tst_VideoTabModelWrites.moc"
