#include "platform/emulator/devices/VideoOutput.h"
#include "tests/platform/ControlPage.h"
#include "tests/platform/LensRig.h"
#include "tests/platform/callTimes.h"
#include "tests/support/Test.h"

#include <QJsonArray>
#include <QJsonObject>
#include <limits>

/// The settings of the video output, and the place of the image on its raster.
class tst_videoOutput : public Test
{
    Q_OBJECT

private slots:
    void profilesHaveTheirFormats_data();
    void profilesHaveTheirFormats();
    void offeredAndKnownFormatsAreSet_data();
    void offeredAndKnownFormatsAreSet();
    void filterAndLevelsAreSet();
    void updateRateAndFilterNeedTheirCapabilities();
    void positionsAreSet();
    void aFixedPositionIsRefused();
    void onlyOfferedZoomFactorsAreSet();
    void onlyOffsetsWithRoomAreSet_data();
    void onlyOffsetsWithRoomAreSet();
    void anOffsetOutlivesItsRoom();
    void snapshotsContainEverySetting();
    void otherClientsChangeEverySetting();
    void signalOptionsAreStored();
    void callsAreQuick();
    void theImageFollowsWindowAndFlips();
    void theImageFollowsTheZoomFactor_data();
    void theImageFollowsTheZoomFactor();
    void theEditorPlacesTheImageAsTheCamera_data();
    void theEditorPlacesTheImageAsTheCamera();

private:
    static constexpr int refused = emulator::Refused;

    static uint8_t byte(int (*get)(uint64_t, uint8_t *), LensRig &rig)
    {
        uint8_t value = 255;
        get(rig.handle(), &value);
        return value;
    }
    /// The offered formats, "refused" if they cannot be read.
    static QString formats(LensRig &rig)
    {
        hlx::TArray<unsigned char> list;
        if (zvtGetVideoFormats(rig.handle(), &list) != 0)
            return QStringLiteral("refused");
        QStringList texts;
        for (const uint8_t format : list)
            texts << QString::number(format);
        return texts.join(' ');
    }
    static QPoint offset(LensRig &rig)
    {
        int16_t x = -1, y = -1;
        zvtGetVideoOffset(rig.handle(), &x, &y);
        return {x, y};
    }
    static QList<int> factors(LensRig &rig)
    {
        hlx::TArray<unsigned char> list;
        zvtGetVideoZoomFactors(rig.handle(), &list);
        return {list.begin(), list.end()};
    }
    static QRectF image(LensRig &rig)
    {
        const auto image = rig.camera().device<emulator::VideoOutput>()->placement().image();
        return {image.x, image.y, image.width, image.height};
    }
};

void tst_videoOutput::profilesHaveTheirFormats_data()
{
    QTest::addColumn<QString>("offered");
    QTest::addColumn<int>("format");
    QTest::addColumn<bool>("writable");
    QTest::newRow("everything") << "0 3 1 4 2 5 6 8 12" << 5 << true;
    QTest::newRow("te-cooler") << "0 1 101 102" << 1 << true;
    QTest::newRow("low-cost") << "0 1" << 0 << false;
    QTest::newRow("bare") << "0 1" << 0 << true;
    QTest::newRow("edge-values") << "50 0 5" << 101 << false;
}

void tst_videoOutput::profilesHaveTheirFormats()
{
    QFETCH(const QString, offered);
    QFETCH(const int, format);
    QFETCH(const bool, writable);
    LensRig rig(QTest::currentDataTag());
    QCOMPARE(formats(rig), offered);
    QCOMPARE(byte(zvtGetVideoFormat, rig), uint8_t(format));
    bool isWritable = !writable;
    QCOMPARE(zvtGetVideoPositionWritable(rig.handle(), &isWritable), 0);
    QCOMPARE(isWritable, writable);
}

void tst_videoOutput::offeredAndKnownFormatsAreSet_data()
{
    QTest::addColumn<bool>("knows50");
    QTest::newRow("everything") << false;
    QTest::newRow("low-cost") << false;
    QTest::newRow("edge-values") << true;
}

void tst_videoOutput::offeredAndKnownFormatsAreSet()
{
    QFETCH(const bool, knows50);
    LensRig rig(QTest::currentDataTag());
    for (int format = 0; format <= 255; ++format) {
        const uint8_t before = byte(zvtGetVideoFormat, rig);
        const bool known = format <= 13 || format == 101 || format == 102 || (format == 50 && knows50);
        QCOMPARE(zvtSetVideoFormat(rig.handle(), static_cast<uint8_t>(format)), known ? 0 : refused);
        QCOMPARE(int(byte(zvtGetVideoFormat, rig)), known ? format : int(before));
    }
}

void tst_videoOutput::filterAndLevelsAreSet()
{
    LensRig rig;
    QCOMPARE(byte(zvtGetVideoUpdateRate, rig), uint8_t(0));
    QCOMPARE(byte(zvtGetVideoTemporalFilter, rig), uint8_t(0));
    QCOMPARE(zvtSetVideoUpdateRate(rig.handle(), 1), 0);
    QCOMPARE(zvtSetVideoUpdateRate(rig.handle(), 2), refused);
    QCOMPARE(zvtSetVideoUpdateRate(rig.handle(), 255), refused);
    QCOMPARE(byte(zvtGetVideoUpdateRate, rig), uint8_t(1));
    for (const uint8_t mode : {2, 0, 1})
        QCOMPARE(zvtSetVideoTemporalFilter(rig.handle(), mode), 0);
    for (const uint8_t mode : {3, 255})
        QCOMPARE(zvtSetVideoTemporalFilter(rig.handle(), mode), refused);
    QCOMPARE(byte(zvtGetVideoTemporalFilter, rig), uint8_t(1));
    for (const uint16_t threshold : {0, 65535, 12}) {
        uint16_t counts = 1;
        QCOMPARE(zvtSetVideoTemporalFilterThreshold(rig.handle(), threshold), 0);
        QCOMPARE(zvtGetVideoTemporalFilterThreshold(rig.handle(), &counts), 0);
        QCOMPARE(counts, threshold);
    }
    for (const int8_t level : {-128, 127, -56, 0, 63}) {
        int8_t brightness = 1, contrast = 1;
        QCOMPARE(zvtSetVideoBrightness(rig.handle(), level), 0);
        QCOMPARE(zvtSetVideoContrast(rig.handle(), static_cast<int8_t>(-1 - level)), 0);
        QCOMPARE(zvtGetVideoBrightness(rig.handle(), &brightness), 0);
        QCOMPARE(zvtGetVideoContrast(rig.handle(), &contrast), 0);
        QCOMPARE(brightness, level);
        QCOMPARE(int(contrast), -1 - level);
    }
}

void tst_videoOutput::updateRateAndFilterNeedTheirCapabilities()
{
    LensRig rig("bare");
    uint8_t number = 77;
    uint16_t threshold = 77;
    QCOMPARE(zvtGetVideoUpdateRate(rig.handle(), &number), int(emulator::Absent));
    QCOMPARE(zvtSetVideoUpdateRate(rig.handle(), 0), int(emulator::Absent));
    QCOMPARE(zvtGetVideoTemporalFilter(rig.handle(), &number), int(emulator::Absent));
    QCOMPARE(zvtSetVideoTemporalFilter(rig.handle(), 0), int(emulator::Absent));
    QCOMPARE(zvtGetVideoTemporalFilterThreshold(rig.handle(), &threshold), int(emulator::Absent));
    QCOMPARE(zvtSetVideoTemporalFilterThreshold(rig.handle(), 0), int(emulator::Absent));
    QCOMPARE(number, uint8_t(77));
    QCOMPARE(threshold, uint16_t(77));
    QVERIFY(!rig.set("video.updateRate", 1) && !rig.set("video.temporalFilter", 1)
            && !rig.set("video.temporalFilterThreshold", 1));
    QVERIFY(rig.camera().changeMakeUp("hasUpdateRate", true) && rig.camera().changeMakeUp("hasTemporalFilter", true));
    QVERIFY(rig.set("video.updateRate", 1) && rig.set("video.temporalFilter", 1)
            && rig.set("video.temporalFilterThreshold", 1));
}

void tst_videoOutput::positionsAreSet()
{
    LensRig rig;
    QCOMPARE(byte(zvtGetVideoPosition, rig), uint8_t(0));
    for (const uint8_t position : {1, 2, 0, 2})
        QCOMPARE(zvtSetVideoPosition(rig.handle(), position), 0);
    for (const uint8_t position : {uint8_t(3), uint8_t(255)})
        QCOMPARE(zvtSetVideoPosition(rig.handle(), position), refused);
    QCOMPARE(byte(zvtGetVideoPosition, rig), uint8_t(2));
}

void tst_videoOutput::aFixedPositionIsRefused()
{
    LensRig rig("low-cost");
    for (const uint8_t position : {0, 1, 2})
        QCOMPARE(zvtSetVideoPosition(rig.handle(), position), refused);
    QVERIFY(!rig.set("video.position", 1));
    QCOMPARE(byte(zvtGetVideoPosition, rig), uint8_t(0));
    // Zoom factor and offset are not fixed.
    QCOMPARE(zvtSetVideoZoomFactor(rig.handle(), 0), 0);
    QCOMPARE(zvtSetVideoOffset(rig.handle(), 4, 8), 0);
    rig.open("edge-values");
    QCOMPARE(byte(zvtGetVideoPosition, rig), uint8_t(2));
}

void tst_videoOutput::onlyOfferedZoomFactorsAreSet()
{
    LensRig rig;
    QCOMPARE(factors(rig), QList<int>({0, 1, 4, 2, 3, 5}));
    QCOMPARE(byte(zvtGetVideoZoomFactor, rig), uint8_t(1));
    for (const uint8_t factor : {0, 1, 4, 2, 3, 5})
        QCOMPARE(zvtSetVideoZoomFactor(rig.handle(), factor), 0);
    for (const uint8_t factor : {uint8_t(6), uint8_t(255)})
        QCOMPARE(zvtSetVideoZoomFactor(rig.handle(), factor), refused);
    QCOMPARE(byte(zvtGetVideoZoomFactor, rig), uint8_t(5));

    QVERIFY(rig.camera().changeMakeUp("hasBilinearZoom", false));
    QCOMPARE(factors(rig), QList<int>({1, 2, 3}));
    for (const uint8_t factor : {0, 4, 5})
        QCOMPARE(zvtSetVideoZoomFactor(rig.handle(), factor), refused);
    QCOMPARE(byte(zvtGetVideoZoomFactor, rig), uint8_t(5));
    QCOMPARE(zvtSetVideoZoomFactor(rig.handle(), 2), 0);
}

void tst_videoOutput::onlyOffsetsWithRoomAreSet_data()
{
    QTest::addColumn<int>("format");
    QTest::addColumn<int>("zoomFactor");
    QTest::addColumn<QPoint>("least");
    QTest::addColumn<QPoint>("largest");
    QTest::newRow("smaller than the raster") << 5 << 1 << QPoint(0, 0) << QPoint(640, 208);
    QTest::newRow("larger than the raster") << 5 << 3 << QPoint(-1280, -1328) << QPoint(0, 0);
    QTest::newRow("wider only") << 2 << 4 << QPoint(-32, -64) << QPoint(0, 0);
    QTest::newRow("higher only") << 0 << 1 << QPoint(0, -32) << QPoint(0, 0);
    QTest::newRow("half as large") << 1 << 0 << QPoint(0, 0) << QPoint(320, 256);
    QTest::newRow("to fit") << 5 << 5 << QPoint(0, 0) << QPoint(380, 0);
}

void tst_videoOutput::onlyOffsetsWithRoomAreSet()
{
    QFETCH(const int, format);
    QFETCH(const int, zoomFactor);
    QFETCH(const QPoint, least);
    QFETCH(const QPoint, largest);
    LensRig rig;
    QVERIFY(rig.set("video.format", format) && rig.set("video.zoomFactor", zoomFactor));
    const auto set = [&rig](const QPoint &to) {
        return zvtSetVideoOffset(rig.handle(), static_cast<int16_t>(to.x()), static_cast<int16_t>(to.y()));
    };
    QCOMPARE(set(least), 0);
    QCOMPARE(set(largest), 0);
    for (const QPoint &wrong : {least - QPoint(4, 0), least - QPoint(0, 4), largest + QPoint(4, 0),
                                largest + QPoint(0, 4), largest - QPoint(1, 0), least + QPoint(0, 2)})
        QCOMPARE(set(wrong), refused);
    QCOMPARE(offset(rig), largest);
}

void tst_videoOutput::anOffsetOutlivesItsRoom()
{
    LensRig rig;
    QVERIFY(rig.set("sensor.window", QVariantList{160, 128, 320, 256}));
    QCOMPARE(zvtSetVideoOffset(rig.handle(), 960, 464), 0);
    QVERIFY(rig.set("sensor.window", QVariantList{0, 0, 640, 512}));
    QCOMPARE(offset(rig), QPoint(960, 464));
    QCOMPARE(zvtSetVideoOffset(rig.handle(), 960, 464), refused);
    const QJsonObject snapshot = rig.camera().snapshot();
    QCOMPARE(zvtSetVideoOffset(rig.handle(), 0, 0), 0);
    rig.camera().restore(snapshot);
    QCOMPARE(offset(rig), QPoint(960, 464));
}

void tst_videoOutput::snapshotsContainEverySetting()
{
    LensRig rig;
    QVERIFY(rig.set("video.updateRate", 1) && rig.set("video.temporalFilter", 2)
            && rig.set("video.temporalFilterThreshold", 40000) && rig.set("video.brightness", -15)
            && rig.set("video.contrast", -128));
    QVERIFY(rig.set("video.format", 9) && rig.set("video.position", 2) && rig.set("video.zoomFactor", 2)
            && rig.set("video.offset", QVariantList{8, 12}) && rig.set("video.integratePolarity", 1)
            && rig.set("video.irigLatch", 2));
    const QJsonObject snapshot = rig.camera().snapshot();
    QCOMPARE(snapshot.value("video").toObject(),
             QJsonObject({{"format", 9},
                          {"updateRate", 1},
                          {"temporalFilter", 2},
                          {"temporalFilterThreshold", 40000},
                          {"brightness", -15},
                          {"contrast", -128},
                          {"position", 2},
                          {"zoomFactor", 2},
                          {"offset", QJsonArray({8, 12})},
                          {"integratePolarity", 1},
                          {"irigLatch", 2}}));
    rig.open("everything");
    rig.camera().restore(snapshot);
    QCOMPARE(byte(zvtGetVideoFormat, rig), uint8_t(9));
    QCOMPARE(offset(rig), QPoint(8, 12));
    QCOMPARE(byte(zvtGetIRIGLatchSource, rig), uint8_t(2));
    QCOMPARE(byte(zvtGetVideoTemporalFilter, rig), uint8_t(2));
    int8_t brightness = 0;
    QCOMPARE(zvtGetVideoBrightness(rig.handle(), &brightness), 0);
    QCOMPARE(brightness, int8_t(-15));
}

void tst_videoOutput::otherClientsChangeEverySetting()
{
    LensRig rig;
    for (const auto &[name, values] :
         {std::pair{"video.format", QVariantList{14, 50, 100, 103, -1, 0.5, "5"}},
          {"video.formats", QVariantList{QVariantList{0}}},
          {"video.updateRate", QVariantList{2, -1, true}},
          {"video.temporalFilter", QVariantList{3, -1}},
          {"video.temporalFilterThreshold", QVariantList{65536, -1}},
          {"video.brightness", QVariantList{128, -129, 0.5}},
          {"video.contrast", QVariantList{128, -129}},
          {"video.position", QVariantList{3, -1, true}},
          {"video.zoomFactor", QVariantList{6, -1}},
          {"video.integratePolarity", QVariantList{2, -1}},
          {"video.irigLatch", QVariantList{3, -1}},
          {"video.positionWritable", QVariantList{0, "x"}},
          {"video.offset", QVariantList{0, QVariantList{4}, QVariantList{2, 4}, QVariantList{0, 212}}}})
        for (const QVariant &value : values)
            QVERIFY2(!rig.set(name, value), qPrintable(name + QDebug::toString(value)));
    QVERIFY(rig.set("video.format", 102) && rig.set("video.position", 1) && rig.set("video.zoomFactor", 0)
            && rig.set("video.offset", QVariantList{4, 0}) && rig.set("video.positionWritable", false));
    QCOMPARE(byte(zvtGetVideoFormat, rig), uint8_t(102));
    QCOMPARE(byte(zvtGetVideoPosition, rig), uint8_t(1));
    QCOMPARE(byte(zvtGetVideoZoomFactor, rig), uint8_t(0));
    QCOMPARE(offset(rig), QPoint(4, 0));
    QCOMPARE(zvtSetVideoPosition(rig.handle(), 0), refused);
}

void tst_videoOutput::signalOptionsAreStored()
{
    for (const char *profile : {"everything", "bare"}) {
        LensRig rig(profile);
        QCOMPARE(byte(zvtGetIntegrateOutPolarity, rig), uint8_t(0));
        QCOMPARE(byte(zvtGetIRIGLatchSource, rig), uint8_t(0));
        QCOMPARE(zvtSetIntegrateOutPolarity(rig.handle(), 1), 0);
        QCOMPARE(zvtSetIntegrateOutPolarity(rig.handle(), 2), refused);
        QCOMPARE(byte(zvtGetIntegrateOutPolarity, rig), uint8_t(1));
        QCOMPARE(zvtSetIRIGLatchSource(rig.handle(), 2), 0);
        QCOMPARE(zvtSetIRIGLatchSource(rig.handle(), 3), refused);
        QCOMPARE(byte(zvtGetIRIGLatchSource, rig), uint8_t(2));
    }
}

void tst_videoOutput::callsAreQuick()
{
    LensRig rig;
    auto &gate = rig.camera().gate();
    const size_t mark = gate.mark();
    for (int round = 0; round < 10; ++round) {
        QCOMPARE(formats(rig), QStringLiteral("0 3 1 4 2 5 6 8 12"));
        QVERIFY(zvtSetVideoFormat(rig.handle(), 6) == 0 && zvtSetVideoUpdateRate(rig.handle(), 1) == 0
                && zvtSetVideoTemporalFilter(rig.handle(), 1) == 0
                && zvtSetVideoTemporalFilterThreshold(rig.handle(), 9) == 0
                && zvtSetVideoBrightness(rig.handle(), 9) == 0 && zvtSetVideoContrast(rig.handle(), 9) == 0);
    }
    QVERIFY(slowestFunction(gate, mark) < std::chrono::milliseconds(1));
}

void tst_videoOutput::theImageFollowsWindowAndFlips()
{
    LensRig rig;
    QVERIFY(rig.set("sensor.window", QVariantList{160, 100, 320, 256}));
    QCOMPARE(image(rig), QRectF(160, 100, 320, 256));
    QCOMPARE(zvtSetRevertEnabled(rig.handle(), true), 0);
    QCOMPARE(zvtSetInvertEnabled(rig.handle(), true), 0);
    QCOMPARE(image(rig), QRectF(160, 156, 320, 256));
    QCOMPARE(zvtSetVideoPosition(rig.handle(), 1), 0);
    QCOMPARE(image(rig), QRectF(480, 232, 320, 256));
    QCOMPARE(zvtSetVideoOffset(rig.handle(), 8, 20), 0);
    QCOMPARE(image(rig), QRectF(480, 232, 320, 256));
    QCOMPARE(zvtSetVideoPosition(rig.handle(), 2), 0);
    QCOMPARE(image(rig), QRectF(8, 20, 320, 256));
    // Another raster has another middle.
    QCOMPARE(zvtSetVideoPosition(rig.handle(), 1), 0);
    QVERIFY(rig.set("video.format", 6));
    QCOMPARE(image(rig), QRectF(480, 384, 320, 256));
}

void tst_videoOutput::theImageFollowsTheZoomFactor_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::newRow("0") << QSizeF(320, 256);
    QTest::newRow("1") << QSizeF(640, 512);
    QTest::newRow("2") << QSizeF(1280, 1024);
    QTest::newRow("3") << QSizeF(2560, 2048);
    QTest::newRow("4") << QSizeF(640, 512) * double(1.3F);
    QTest::newRow("5") << QSizeF(900, 720);
}

void tst_videoOutput::theImageFollowsTheZoomFactor()
{
    QFETCH(const QSizeF, size);
    LensRig rig;
    QCOMPARE(zvtSetVideoZoomFactor(rig.handle(), static_cast<uint8_t>(atoi(QTest::currentDataTag()))), 0);
    QCOMPARE(image(rig).size(), size);
}

void tst_videoOutput::theEditorPlacesTheImageAsTheCamera_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("zoomFactor");
    for (const int position : {0, 1, 2})
        for (const int zoomFactor : {0, 3, 4, 5})
            QTest::addRow("%d %d", position, zoomFactor) << position << zoomFactor;
}

void tst_videoOutput::theEditorPlacesTheImageAsTheCamera()
{
    QFETCH(const int, position);
    QFETCH(const int, zoomFactor);
    LensRig rig;
    QVERIFY(rig.set("sensor.window", QVariantList{160, 100, 320, 256}) && rig.set("image.reverted", true)
            && rig.set("video.position", position) && rig.set("video.zoomFactor", zoomFactor));
    const auto placement = rig.camera().device<emulator::VideoOutput>()->placement();
    ControlPage page;
    const QQuickItem *editor
        = page.show(QStringLiteral("DisplayEditor { width: 420; height: 300; fpaSize: Qt.size(640, 512); hFlip: true\n"
                                   "window: Qt.rect(160, 100, 320, 256); displaySize: Qt.size(1280, 720);\n"
                                   "increment: Qt.point(4, 4); offsetType: %1; zoom: %2 }")
                        .arg(position)
                        .arg(placement.zoom, 0, 'g', std::numeric_limits<double>::max_digits10));
    const auto display = editor->property("displayFrame").toRectF();
    const auto frame = editor->property("imageFrame").toRectF();
    const qreal scale = display.width() / 1280;
    const QRectF expected = image(rig);
    QCOMPARE(frame, QRectF(display.topLeft() + expected.topLeft() * scale, expected.size() * scale));
    const auto least = placement.leastOffset({4, 4});
    QCOMPARE(editor->property("offsetMin").toPoint(), QPoint(least.x, least.y));
    const auto largest = placement.largestOffset({4, 4});
    QCOMPARE(editor->property("offsetMax").toPoint(), QPoint(largest.x, largest.y));
}

ZVT_TEST(tst_videoOutput)
#include "tst_videoOutput.moc"
