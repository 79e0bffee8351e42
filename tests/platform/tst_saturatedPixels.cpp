#include "platform/emulator/devices/FrameClock.h"
#include "platform/emulator/image/frame.h"
#include "tests/platform/FrameRig.h"
#include "tests/platform/callTimes.h"
#include "tests/platform/settingOf.h"
#include "tests/support/Test.h"

#include <QJsonArray>

#include <atomic>
#include <cmath>
#include <mutex>
#include <thread>

using emulator::Clock;
using emulator::image::Statistics;

/// The saturated pixels of each preset and their thresholds.
class tst_saturatedPixels : public Test
{
    Q_OBJECT

private slots:
    void startValues();
    void anAreaBlackbodyIsCounted_data();
    void anAreaBlackbodyIsCounted();
    void itIsTheCountOfTheFrame_data();
    void itIsTheCountOfTheFrame();
    void noiseAndTwinklingPixelsDoNotCount();
    void onlyTheWindowCounts();
    void thresholdsAreTakenWithinTheirRanges();
    void presetsThatTheCameraLacksAreRefused();
    void aCountIsKeptForATenthOfASecond();
    void aClockThatWasSetBackEndsIt();
    void anotherThresholdCountsAtOnce();
    void presetsHaveCountsOfTheirOwn();
    void aPresetThatIsNotActiveSeesThePresentScene();
    void presetsThatTakeTurnsCountTheirOwnFrames();
    void aPresetWithoutAFrameCountsTheNewestOfAll();
    void withoutFramesThereAreNone();
    void theLastFrameStaysCounted();
    void itIsReadWhileFramesAreMade();
    void thresholdsDecideOnTheFlag();
    void thresholdsOfEachPresetDecideOnTheFlag();
    void beforeAnyFrameThresholdsDecideOnTheFlag();
    void otherClientsSetThem_data();
    void otherClientsSetThem();
    void snapshotsHoldThem();
    void allFunctionsReturnAtOnce();

private:
    static constexpr int refused = emulator::Refused;
    static constexpr int pixelsOfArray = 640 * 512;

    /// -1 if the camera refuses to return it.
    static int pixels(FrameRig &rig, uint8_t preset = 0)
    {
        uint32_t count = 9;
        return zvtGetSaturatedPixels(rig.handle(), preset, &count) == 0 ? int(count) : -1;
    }
    static int countThreshold(FrameRig &rig, uint8_t preset)
    {
        uint16_t counts = 9;
        return zvtGetSaturationCountThreshold(rig.handle(), preset, &counts) == 0 ? counts : -1;
    }
    static int pixelThreshold(FrameRig &rig, uint8_t preset)
    {
        uint32_t count = 9;
        return zvtGetSaturationPixelThreshold(rig.handle(), preset, &count) == 0 ? int(count) : -1;
    }
    static int flag(FrameRig &rig)
    {
        uint8_t saturated = 9;
        return zvtGetSaturatedFlag(rig.handle(), &saturated) == 0 ? saturated : -1;
    }
    static bool setTime(FrameRig &rig, int preset, double milliseconds)
    {
        const int active = rig.sensor().activePreset();
        return rig.set("sensor.activePreset", preset) && rig.set("sensor.integrationTime", milliseconds)
            && rig.set("sensor.activePreset", active);
    }
};

void tst_saturatedPixels::startValues()
{
    FrameRig rig;
    for (uint8_t preset = 0; preset < 4; ++preset) {
        QCOMPARE(countThreshold(rig, preset), 16'000);
        QCOMPARE(pixelThreshold(rig, preset), 0);
    }
}

void tst_saturatedPixels::anAreaBlackbodyIsCounted_data()
{
    QTest::addColumn<double>("milliseconds");
    QTest::addColumn<int>("expected");
    QTest::newRow("3.5 ms") << 3.5 << 198;
    QTest::newRow("4 ms") << 4.0 << 50'700;
    QTest::newRow("5 ms") << 5.0 << 325'000;
}

void tst_saturatedPixels::anAreaBlackbodyIsCounted()
{
    QFETCH(const double, milliseconds);
    QFETCH(const int, expected);
    FrameRig rig;
    QVERIFY(rig.showArea(35) && rig.set("sensor.integrationTime", milliseconds));
    const int counted = pixels(rig);
    QVERIFY2(std::abs(counted - expected) <= expected / 10, QByteArray::number(counted));
}

void tst_saturatedPixels::itIsTheCountOfTheFrame_data()
{
    QTest::addColumn<int>("threshold");
    QTest::newRow("dead pixels") << 301;
    QTest::newRow("half of the pixels") << 8400;
    QTest::newRow("targets") << 12'000;
    QTest::newRow("hot pixels") << 16'383;
}

void tst_saturatedPixels::itIsTheCountOfTheFrame()
{
    QFETCH(const int, threshold);
    FrameRig rig;
    QVERIFY(!rig.newest().empty());
    QCOMPARE(zvtSetSaturationCountThreshold(rig.handle(), 0, uint16_t(threshold)), 0);
    const auto shown = static_cast<int>(Statistics::countAtLeast(rig.newest(), uint16_t(threshold)));
    QVERIFY2(shown > 80, QByteArray::number(shown));
    // The frame has noise.
    const int counted = pixels(rig);
    QVERIFY2(std::abs(counted - shown) <= 3 + std::min(shown, pixelsOfArray - shown) / 50,
             qPrintable(QString("%1 counted, %2 shown").arg(counted).arg(shown)));
}

void tst_saturatedPixels::noiseAndTwinklingPixelsDoNotCount()
{
    FrameRig rig;
    rig.openWith(QByteArray(FrameRig::equalPixels).replace(R"("twinkling": 0)", R"("twinkling": 100000)").constData());
    QVERIFY(rig.useSmallWindow() && rig.showArea(27));
    Clock::advance(1000);
    constexpr int all = 160 * 128;
    const auto middle = static_cast<uint16_t>(std::lround(rig.mean()));
    const auto shown = [&](int counts) {
        return static_cast<int>(Statistics::countAtLeast(rig.newest(), static_cast<uint16_t>(middle + counts)));
    };
    // The shading of the lens changes pixels of this window by up to four counts, the noise by more.
    QVERIFY(shown(-7) < all - 500 && shown(7) > 2 * shown(200) && shown(200) > 500);
    for (const auto &[counts, expected] : {std::pair{-7, all}, {7, 0}, {200, 0}}) {
        QCOMPARE(zvtSetSaturationCountThreshold(rig.handle(), 0, uint16_t(middle + counts)), 0);
        QCOMPARE(pixels(rig), expected);
    }
}

void tst_saturatedPixels::onlyTheWindowCounts()
{
    FrameRig rig;
    QCOMPARE(zvtSetSaturationCountThreshold(rig.handle(), 0, 0), 0);
    QCOMPARE(pixels(rig), pixelsOfArray);
    QVERIFY(rig.useSmallWindow());
    Clock::advance(1000);
    QCOMPARE(pixels(rig), 160 * 128);
}

void tst_saturatedPixels::thresholdsAreTakenWithinTheirRanges()
{
    FrameRig rig;
    QVERIFY(rig.useSmallWindow());
    Clock::advance(1000);
    for (const uint16_t threshold : {0, 1, 16'383, 16'384, 65'535}) {
        QCOMPARE(zvtSetSaturationCountThreshold(rig.handle(), 2, threshold), 0);
        QCOMPARE(countThreshold(rig, 2), int(threshold));
    }
    // Above the highest count.
    QCOMPARE(pixels(rig, 2), 0);
    for (const uint32_t threshold : {0u, 1u, 1'048'576u}) {
        QCOMPARE(zvtSetSaturationPixelThreshold(rig.handle(), 2, threshold), 0);
        QCOMPARE(pixelThreshold(rig, 2), int(threshold));
    }
    for (const uint32_t threshold : {1'048'577u, UINT32_MAX})
        QCOMPARE(zvtSetSaturationPixelThreshold(rig.handle(), 2, threshold), refused);
    QCOMPARE(pixelThreshold(rig, 2), 1'048'576);
    QCOMPARE(countThreshold(rig, 1), 16'000);
    QCOMPARE(pixelThreshold(rig, 1), 0);
}

void tst_saturatedPixels::presetsThatTheCameraLacksAreRefused()
{
    FrameRig rig("low-cost");
    QCOMPARE(zvtSetSaturationCountThreshold(rig.handle(), 0, 0), 0);
    QCOMPARE(zvtSetSaturationPixelThreshold(rig.handle(), 0, 3), 0);
    QVERIFY(pixels(rig) > 0);
    for (const uint8_t preset : {1, 4, 255}) {
        QCOMPARE(zvtSetSaturationCountThreshold(rig.handle(), preset, 1), refused);
        QCOMPARE(zvtSetSaturationPixelThreshold(rig.handle(), preset, 1), refused);
        QCOMPARE(countThreshold(rig, preset), -1);
        QCOMPARE(pixelThreshold(rig, preset), -1);
        QCOMPARE(pixels(rig, preset), -1);
    }
}

void tst_saturatedPixels::aCountIsKeptForATenthOfASecond()
{
    FrameRig rig;
    QVERIFY(rig.showArea(35) && rig.set("sensor.integrationTime", 3.5));
    const int first = pixels(rig);
    QVERIFY(rig.set("sensor.integrationTime", 5.0));
    QCOMPARE(pixels(rig), first);
    Clock::advance(99);
    QCOMPARE(pixels(rig), first);
    Clock::advance(1);
    const int second = pixels(rig);
    QVERIFY(second > 1000 * first);
    // The tenth of a second begins at the last count.
    QVERIFY(rig.set("sensor.integrationTime", 3.5));
    Clock::advance(99);
    QCOMPARE(pixels(rig), second);
    Clock::advance(1);
    QCOMPARE(pixels(rig), first);
}

void tst_saturatedPixels::aClockThatWasSetBackEndsIt()
{
    FrameRig rig;
    QVERIFY(rig.showArea(35) && rig.set("sensor.integrationTime", 3.5));
    const int first = pixels(rig);
    QVERIFY(rig.set("sensor.integrationTime", 5.0));
    Clock::manual(); // Begins at its start again.
    QVERIFY(pixels(rig) > 1000 * first);
}

void tst_saturatedPixels::anotherThresholdCountsAtOnce()
{
    FrameRig rig;
    QVERIFY(rig.showArea(27));
    int last = pixelsOfArray + 1;
    for (const uint16_t threshold : {0, 1000, 6500, 7000, 12'000, 16'384}) {
        QCOMPARE(zvtSetSaturationCountThreshold(rig.handle(), 0, threshold), 0);
        const int counted = pixels(rig);
        QVERIFY2(counted < last, qPrintable(QString("%1: %2").arg(threshold).arg(counted)));
        last = counted;
    }
    QCOMPARE(last, 0);
    // Another client's threshold and that of a restored snapshot, too.
    QVERIFY(rig.set("saturation.countThresholds", QVariantList{0, 1, 2, 3}));
    QCOMPARE(pixels(rig), pixelsOfArray);
}

void tst_saturatedPixels::presetsHaveCountsOfTheirOwn()
{
    FrameRig rig;
    QVERIFY(rig.showArea(35));
    for (const auto &[preset, milliseconds] : {std::pair{0, 2.0}, {1, 3.5}, {2, 4.0}, {3, 5.0}})
        QVERIFY(setTime(rig, preset, milliseconds));
    std::vector<int> counts;
    for (uint8_t preset = 0; preset < 4; ++preset)
        counts.push_back(pixels(rig, preset));
    QVERIFY(counts[0] < 150 && counts[1] > 1.5 * counts[0] && counts[2] > 100 * counts[1] && counts[3] > 5 * counts[2]);
    // The same when they are active.
    for (uint8_t preset = 0; preset < 4; ++preset) {
        QVERIFY(rig.set("sensor.activePreset", preset));
        Clock::advance(100);
        // The case becomes a little warmer meanwhile.
        QVERIFY(std::abs(pixels(rig, preset) - counts[preset]) <= counts[preset] / 1000 + 1);
    }
    QCOMPARE(zvtSetSaturationCountThreshold(rig.handle(), 3, 16'384), 0);
    QCOMPARE(pixels(rig, 3), 0);
    QVERIFY(pixels(rig, 2) > counts[2] / 2);
}

void tst_saturatedPixels::aPresetThatIsNotActiveSeesThePresentScene()
{
    FrameRig rig;
    QVERIFY(setTime(rig, 0, 3.5) && setTime(rig, 1, 3.5));
    QVERIFY(rig.set("sensor.activePreset", 1));
    Clock::advance(1000);
    const int before = pixels(rig, 1);
    QVERIFY(rig.set("sensor.activePreset", 0));
    // The targets have moved, and some have left the picture.
    Clock::advance(7000);
    QCOMPARE(pixels(rig, 1), pixels(rig, 0));
    QVERIFY(pixels(rig, 1) != before);
}

void tst_saturatedPixels::presetsThatTakeTurnsCountTheirOwnFrames()
{
    FrameRig rig;
    QVERIFY(setTime(rig, 0, 3.5) && setTime(rig, 1, 3.5));
    QVERIFY(rig.set("sensor.sequencingMode", int(emulator::Sensor::PresetSequencing)));
    // A long sequence, so that the targets move meanwhile.
    QVERIFY(rig.set("sensor.activePreset", 1) && rig.set("sensor.dwellCount", 500));
    Clock::advance(60'000);
    for (const uint8_t preset : {0, 1}) {
        emulator::image::Exposure exposure;
        {
            const std::lock_guard lock(rig.camera().mutex());
            const auto start = rig.camera().device<emulator::FrameClock>()->newest(preset);
            QVERIFY(start);
            exposure = rig.camera().exposure(*start);
        }
        exposure.detector = rig.camera().device<emulator::Sensor>()->array().mapsFor(exposure.window);
        QCOMPARE(pixels(rig, preset), int(emulator::image::countAtLeast(exposure, 16'000)));
    }
    QVERIFY(pixels(rig, 0) != pixels(rig, 1));
}

void tst_saturatedPixels::aPresetWithoutAFrameCountsTheNewestOfAll()
{
    FrameRig rig;
    QVERIFY(setTime(rig, 0, 3.5) && setTime(rig, 3, 3.5));
    Clock::advance(1000);
    QVERIFY(rig.set("sensor.sequencingMode", int(emulator::Sensor::PresetSequencing)));
    QVERIFY(rig.newest(3).empty());
    QVERIFY(pixels(rig, 0) > 0);
    QCOMPARE(pixels(rig, 3), pixels(rig, 0));
}

void tst_saturatedPixels::withoutFramesThereAreNone()
{
    FrameRig rig;
    rig.openWith(R"({"sync": {"source": 1, "externalRate": 0}})");
    QVERIFY(rig.showArea(90));
    QVERIFY(rig.newest().empty());
    for (const uint8_t preset : {0, 3})
        QCOMPARE(pixels(rig, preset), 0);
    QVERIFY(rig.set("sync.externalRate", 50));
    Clock::advance(1000);
    QVERIFY(pixels(rig) > 300'000);
    // An array without frames.
    rig.open("edge-values");
    QCOMPARE(pixels(rig), 0);
}

void tst_saturatedPixels::theLastFrameStaysCounted()
{
    FrameRig rig;
    QVERIFY(rig.showArea(90) && rig.set("sync.source", 1));
    Clock::advance(1000);
    const int first = pixels(rig);
    QVERIFY(first > 300'000);
    QVERIFY(rig.set("sync.externalRate", 0));
    Clock::advance(1000);
    QCOMPARE(pixels(rig), first);
    QCOMPARE(flag(rig), 0);
}

void tst_saturatedPixels::itIsReadWhileFramesAreMade()
{
    FrameRig rig;
    QVERIFY(rig.showArea(35) && rig.set("sensor.integrationTime", 5.0));
    std::atomic<int> wrong{0};
    {
        std::vector<std::jthread> threads;
        for (uint8_t thread = 0; thread < 4; ++thread)
            threads.emplace_back([&, thread] {
                for (uint16_t round = 0; round < 10; ++round) {
                    const bool hasSet
                        = zvtSetSaturationCountThreshold(rig.handle(), thread, uint16_t(100 * round)) == 0;
                    const int counted = pixels(rig, thread);
                    if (!hasSet || counted < 327'000 || counted > pixelsOfArray || rig.newest().empty())
                        ++wrong;
                }
            });
    }
    QCOMPARE(wrong.load(), 0);
}

void tst_saturatedPixels::thresholdsDecideOnTheFlag()
{
    FrameRig rig;
    QVERIFY(rig.showArea(35) && rig.set("sensor.integrationTime", 4.0));
    const auto counted = static_cast<uint32_t>(pixels(rig));
    QCOMPARE(flag(rig), 1);
    for (const auto &[threshold, expected] : {std::pair{counted, 0}, {counted - 1, 1}, {1'048'576u, 0}, {0u, 1}}) {
        QCOMPARE(zvtSetSaturationPixelThreshold(rig.handle(), 0, threshold), 0);
        QCOMPARE(flag(rig), expected);
    }
    for (const auto &[threshold, expected] : {std::pair{16'384, 0}, {16'000, 1}, {65'535, 0}, {0, 1}}) {
        QCOMPARE(zvtSetSaturationCountThreshold(rig.handle(), 0, uint16_t(threshold)), 0);
        QCOMPARE(flag(rig), expected);
    }
    // Pixels that are always at the maximum.
    QVERIFY(rig.showArea(0));
    QCOMPARE(zvtSetSaturationCountThreshold(rig.handle(), 0, 16'000), 0);
    QCOMPARE(flag(rig), 0);
    QCOMPARE(zvtSetSaturationPixelThreshold(rig.handle(), 0, 1), 0);
    QCOMPARE(flag(rig), 1);
}

void tst_saturatedPixels::thresholdsOfEachPresetDecideOnTheFlag()
{
    FrameRig rig;
    QVERIFY(rig.showArea(27));
    for (const int preset : {0, 1, 2, 3})
        QVERIFY(setTime(rig, preset, 2.0 + 0.1 * preset));
    QVERIFY(rig.set("sensor.sequencingMode", int(emulator::Sensor::PresetSequencing)));
    Clock::advance(1000);
    QVERIFY(!rig.newest().empty());
    for (uint8_t preset = 0; preset < 4; ++preset) {
        QCOMPARE(flag(rig), 0);
        QCOMPARE(zvtSetSaturationCountThreshold(rig.handle(), preset, 5000), 0);
        QCOMPARE(flag(rig), 1);
        QCOMPARE(zvtSetSaturationPixelThreshold(rig.handle(), preset, 1'048'576), 0);
        QCOMPARE(flag(rig), 0);
        QCOMPARE(zvtSetSaturationPixelThreshold(rig.handle(), preset, 0), 0);
        QCOMPARE(zvtSetSaturationCountThreshold(rig.handle(), preset, 16'000), 0);
    }
    // A preset that is not in use raises nothing.
    QVERIFY(rig.set("sensor.sequencingMode", int(emulator::Sensor::SinglePreset)));
    Clock::advance(1000);
    QCOMPARE(zvtSetSaturationCountThreshold(rig.handle(), 1, 0), 0);
    QCOMPARE(flag(rig), 0);
}

void tst_saturatedPixels::beforeAnyFrameThresholdsDecideOnTheFlag()
{
    FrameRig rig;
    QVERIFY(rig.showArea(27));
    QCOMPARE(flag(rig), 0);
    QCOMPARE(zvtSetSaturationCountThreshold(rig.handle(), 0, 5000), 0);
    QCOMPARE(flag(rig), 1);
    QCOMPARE(zvtSetSaturationPixelThreshold(rig.handle(), 0, pixelsOfArray), 0);
    QCOMPARE(flag(rig), 0);
    // Above the highest count.
    QCOMPARE(zvtSetSaturationPixelThreshold(rig.handle(), 0, 1), 0);
    QVERIFY(rig.showArea(90));
    for (const auto &[threshold, expected] : {std::pair{16'383, 1}, {16'384, 0}, {65'535, 0}}) {
        QCOMPARE(zvtSetSaturationCountThreshold(rig.handle(), 0, uint16_t(threshold)), 0);
        QCOMPARE(flag(rig), expected);
    }
    QVERIFY(!rig.exposure().detector);
}

void tst_saturatedPixels::otherClientsSetThem_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QVariant>("good");
    QTest::addColumn<QVariantList>("bad");
    QTest::newRow("counts") << QByteArray("saturation.countThresholds") << QVariant(QVariantList{0, 1, 16'383, 65'535})
                            << QVariantList{QVariantList{0, 1, 2, 65'536}, QVariantList{0, 1, 2, -1},
                                            QVariantList{0, 1, 2, 0.5}, QVariantList{0, 1, 2}, 16'000};
    QTest::newRow("pixels") << QByteArray("saturation.pixelThresholds")
                            << QVariant(QVariantList{0, 1, 65'536, 1'048'576})
                            << QVariantList{QVariantList{0, 1, 2, 1'048'577}, QVariantList{0, 1, 2, -1},
                                            QVariantList{0, 1, 2, 0.5}, QVariantList{0, 1, 2}, 16'000};
}

void tst_saturatedPixels::otherClientsSetThem()
{
    QFETCH(const QByteArray, name);
    QFETCH(const QVariant, good);
    QFETCH(const QVariantList, bad);
    FrameRig rig;
    QVERIFY(rig.set(name.constData(), good));
    for (const QVariant &wrong : bad)
        QVERIFY2(!rig.set(name.constData(), wrong), qPrintable(wrong.toString()));
    QCOMPARE(settingOf(rig.camera(), QString::fromLatin1(name)), good);
}

void tst_saturatedPixels::snapshotsHoldThem()
{
    FrameRig rig;
    const QJsonObject before = rig.camera().snapshot();
    QCOMPARE(zvtSetSaturationCountThreshold(rig.handle(), 1, 65'535), 0);
    QCOMPARE(zvtSetSaturationPixelThreshold(rig.handle(), 3, 1'048'576), 0);
    const QJsonObject after = rig.camera().snapshot();
    QCOMPARE(after.value("saturation").toObject(),
             (QJsonObject{{"countThresholds", QJsonArray{16'000, 65'535, 16'000, 16'000}},
                          {"pixelThresholds", QJsonArray{0, 0, 0, 1'048'576}}}));
    rig.camera().restore(before);
    QCOMPARE(countThreshold(rig, 1), 16'000);
    QCOMPARE(pixelThreshold(rig, 3), 0);
    rig.camera().restore(after);
    QCOMPARE(countThreshold(rig, 1), 65'535);
    QCOMPARE(pixelThreshold(rig, 3), 1'048'576);
}

void tst_saturatedPixels::allFunctionsReturnAtOnce()
{
    FrameRig rig;
    QVERIFY(rig.useSmallWindow());
    Clock::advance(1000);
    QVERIFY(!rig.newest().empty());
    const size_t mark = rig.camera().gate().mark();
    for (uint16_t repeat = 0; repeat < 5; ++repeat) {
        // A changed threshold makes the camera count the pixels again.
        QCOMPARE(zvtSetSaturationCountThreshold(rig.handle(), 0, uint16_t(8000 + repeat)), 0);
        QCOMPARE(zvtSetSaturationPixelThreshold(rig.handle(), 0, 5), 0);
        QCOMPARE(countThreshold(rig, 0), 8000 + repeat);
        QCOMPARE(pixelThreshold(rig, 0), 5);
        QVERIFY(pixels(rig) > 0);
    }
    QVERIFY(slowestFunction(rig.camera().gate(), mark) < std::chrono::milliseconds(1));
}

ZVT_TEST(tst_saturatedPixels)
#include "tst_saturatedPixels.moc"
