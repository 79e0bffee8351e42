#include "platform/emulator/devices/VideoGain.h"
#include "tests/platform/FrameRig.h"
#include "tests/platform/callTimes.h"
#include "tests/support/Test.h"

#include <QJsonArray>
#include <QJsonObject>

#include <chrono>
#include <cmath>
#include <functional>
#include <limits>
#include <numeric>
#include <vector>

using emulator::image::Agc;
using emulator::image::Window;

/// The settings of the gain control of the video, and their effect on frames.
class tst_videoGain : public Test
{
    Q_OBJECT

private slots:
    void startValues_data();
    void startValues();
    void valuesAreTakenWithinTheirLimits_data();
    void valuesAreTakenWithinTheirLimits();
    void methodsNeedTheirBoard();
    void switchesAreSet_data();
    void switchesAreSet();
    void blackHotNeedsItsEquipment();
    void stepsFollowRateAndDampening_data();
    void stepsFollowRateAndDampening();
    void aRateOfAHalfTakesTwoSeconds();
    void lockedDampeningFreezesTheLevels();
    void eachMethodShowsTheScene();
    void theRegionOfTheCameraIsSpread();
    void snapshotsContainEverySetting();
    void otherClientsAreRefusedTheSame_data();
    void otherClientsAreRefusedTheSame();
    void callsReturnAtOnce();
};

namespace
{

constexpr int refused = emulator::Refused;

const emulator::VideoGain &gain(LensRig &rig) { return *rig.camera().device<emulator::VideoGain>(); }

/// A function of the SDK that returns a value, and the one that sets it, for values of any type.
struct Function {
    std::function<double(uint64_t)> get;
    std::function<int(uint64_t, double)> set;
};

template <class T, class Get, class Set> Function functionOf(Get get, Set set)
{
    return {[get](uint64_t handle) {
                T value{};
                return get(handle, &value) == 0 ? double(value) : -1;
            },
            [set](uint64_t handle, double value) { return set(handle, static_cast<T>(value)); }};
}

const QMap<QString, Function> &functions()
{
    static const QMap<QString, Function> map{
        {"method", functionOf<uint8_t>(zvtGetVideoAGCMethod, zvtSetVideoAGCMethod)},
        {"plateau", functionOf<uint32_t>(zvtGetVideoAGCPlateauP, zvtSetVideoAGCPlateauP)},
        {"sharpness", functionOf<uint8_t>(zvtGetVideoAGCDDESharpness, zvtSetVideoAGCDDESharpness)},
        {"threshold", functionOf<uint32_t>(zvtGetVideoAGCDDEThreshold, zvtSetVideoAGCDDEThreshold)},
        {"manualLow", functionOf<uint16_t>(zvtGetVideoAGCManualLow, zvtSetVideoAGCManualLow)},
        {"manualHigh", functionOf<uint16_t>(zvtGetVideoAGCManualHigh, zvtSetVideoAGCManualHigh)},
        {"filterRate", functionOf<double>(zvtGetVideoAGCFilterRate, zvtSetVideoAGCFilterRate)},
        {"filterRateEnabled", functionOf<bool>(zvtGetVideoAGCFilterRateEnabled, zvtSetVideoAGCFilterRateEnabled)},
        {"dampening", functionOf<float>(zvtGetVideoAGCDampening, zvtSetVideoAGCDampening)},
        {"dampeningEnabled", functionOf<bool>(zvtGetVideoAGCDampeningEnabled, zvtSetVideoAGCDampeningEnabled)},
        {"regionEnabled", functionOf<bool>(zvtGetVideoAGCROIEnabled, zvtSetVideoAGCROIEnabled)},
        {"blackHotEnabled", functionOf<uint8_t>(zvtGetBlackHotEnabled, zvtSetBlackHotEnabled)},
    };
    return map;
}

/// Fits a gain to the newest frame of a camera, as its settings say, after a frame of the video of this duration.
void update(Agc &agc, FrameRig &rig, double seconds)
{
    const Window window = rig.window();
    agc.update(rig.newest(), {window.width, window.height}, gain(rig).effectiveRegion(), gain(rig).agcSettings(),
               gain(rig).step(seconds));
}

/// The mean level of the newest frame of a camera.
double meanLevel(const Agc &agc, FrameRig &rig)
{
    std::vector<uint8_t> levels;
    agc.apply(rig.newest(), levels);
    return std::accumulate(levels.begin(), levels.end(), 0.0) / double(levels.size());
}

/// The counts that are neither black nor white.
int greys(const Agc &agc)
{
    int number = 0;
    for (uint16_t count = 0; count <= emulator::image::maximumCount; ++count)
        number += agc.level(count) > 0 && agc.level(count) < 255;
    return number;
}

} // namespace

void tst_videoGain::startValues_data()
{
    QTest::addColumn<QString>("profile");
    for (const auto *profile : {"everything", "board-6", "te-cooler", "low-cost", "bare"})
        QTest::newRow(profile) << profile;
}

void tst_videoGain::startValues()
{
    QFETCH(const QString, profile);
    LensRig rig(qPrintable(profile));
    for (const auto &[name, value] : {std::pair{"method", 0.0},
                                      {"plateau", 250.0},
                                      {"sharpness", 3.0},
                                      {"threshold", 8.0},
                                      {"manualLow", 0.0},
                                      {"manualHigh", 16'383.0},
                                      {"filterRate", 1.0},
                                      {"filterRateEnabled", 0.0},
                                      {"dampening", 0.5},
                                      {"dampeningEnabled", 0.0},
                                      {"regionEnabled", 0.0}})
        QVERIFY2(functions()[name].get(rig.handle()) == value, name);
}

void tst_videoGain::valuesAreTakenWithinTheirLimits_data()
{
    using Values = QList<double>;
    QTest::addColumn<Values>("taken");
    QTest::addColumn<Values>("wrong");
    constexpr double infinite = std::numeric_limits<double>::infinity();
    constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("method") << Values{3, 1, 2, 0} << Values{4, 128, 255};
    QTest::newRow("plateau") << Values{1, 16'383, 100} << Values{0, 16'384, 4'294'967'295};
    QTest::newRow("sharpness") << Values{1, 7, 4} << Values{0, 8, 255};
    QTest::newRow("threshold") << Values{0, 16'383, 8} << Values{16'384, 4'294'967'295};
    QTest::newRow("manualLow") << Values{16'383, 0, 9000} << Values{16'384, 65'535};
    QTest::newRow("manualHigh") << Values{0, 16'383, 100} << Values{16'384, 65'535};
    QTest::newRow("filterRate") << Values{0, 20, 0.1} << Values{-0.001, 20.001, infinite, -infinite, noNumber};
    QTest::newRow("dampening") << Values{0, 1, 0.25} << Values{-0.001, 1.001, infinite, -infinite, noNumber};
}

void tst_videoGain::valuesAreTakenWithinTheirLimits()
{
    QFETCH(const QList<double>, taken);
    QFETCH(const QList<double>, wrong);
    const Function &function = functions()[QTest::currentDataTag()];
    LensRig rig;
    for (const double value : taken) {
        QCOMPARE(function.set(rig.handle(), value), 0);
        for (const double outside : wrong)
            QCOMPARE(function.set(rig.handle(), outside), refused);
        QCOMPARE(function.get(rig.handle()), value);
    }
}

void tst_videoGain::methodsNeedTheirBoard()
{
    LensRig rig("board-6");
    for (const uint8_t method : {uint8_t(2), uint8_t(3), uint8_t(0)})
        QCOMPARE(zvtSetVideoAGCMethod(rig.handle(), method), 0);
    QCOMPARE(zvtSetVideoAGCMethod(rig.handle(), 1), refused);
    QVERIFY(!rig.set("agc.method", 1));
    QCOMPARE(functions()["method"].get(rig.handle()), 0.0);
    // The other settings of the details exist.
    QCOMPARE(zvtSetVideoAGCDDESharpness(rig.handle(), 5), 0);
}

void tst_videoGain::switchesAreSet_data()
{
    QTest::addColumn<QString>("name");
    for (const auto *name : {"filterRateEnabled", "dampeningEnabled", "regionEnabled", "blackHotEnabled"})
        QTest::newRow(name) << name;
}

void tst_videoGain::switchesAreSet()
{
    QFETCH(const QString, name);
    LensRig rig;
    for (const double on : {1.0, 0.0, 1.0}) {
        QCOMPARE(functions()[name].set(rig.handle(), on), 0);
        for (const QString &other : functions().keys())
            if (other.endsWith("Enabled"))
                QCOMPARE(functions()[other].get(rig.handle()), other == name ? on : 0.0);
    }
}

void tst_videoGain::blackHotNeedsItsEquipment()
{
    const auto available = [](LensRig &rig) {
        uint8_t value = 77;
        return zvtGetBlackHotAvailable(rig.handle(), &value) == 0 ? value : 99;
    };
    LensRig rig;
    QCOMPARE(available(rig), 1);
    QVERIFY(!gain(rig).blackHot());
    QCOMPARE(zvtSetBlackHotEnabled(rig.handle(), 1), 0);
    QVERIFY(gain(rig).blackHot());
    QVERIFY(rig.set("agc.blackHotAvailable", false));
    QVERIFY(!gain(rig).blackHot());
    for (const auto *profile : {"low-cost", "bare"}) {
        LensRig without(profile);
        QCOMPARE(available(without), 0);
        uint8_t enabled = 77;
        QCOMPARE(zvtGetBlackHotEnabled(without.handle(), &enabled), refused);
        QCOMPARE(enabled, uint8_t(77));
        QCOMPARE(zvtSetBlackHotEnabled(without.handle(), 1), refused);
        QVERIFY(!without.set("agc.blackHotEnabled", true));
        QVERIFY(!gain(without).blackHot());
    }
}

void tst_videoGain::stepsFollowRateAndDampening_data()
{
    QTest::addColumn<bool>("useRate");
    QTest::addColumn<double>("rate");
    QTest::addColumn<bool>("useDampening");
    QTest::addColumn<double>("dampening");
    QTest::addColumn<double>("seconds");
    QTest::addColumn<double>("step");
    QTest::newRow("neither") << false << 3.0 << false << 0.2 << 0.04 << 1.0;
    QTest::newRow("rate") << true << 3.0 << false << 0.2 << 0.04 << 0.113'080;
    QTest::newRow("rate, one second") << true << 1.0 << false << 0.2 << 1.0 << 0.632'121;
    QTest::newRow("rate after a pause") << true << 20.0 << false << 0.2 << 60.0 << 1.0;
    QTest::newRow("rate 0") << true << 0.0 << false << 0.2 << 60.0 << 0.0;
    QTest::newRow("rate, no time") << true << 20.0 << false << 0.2 << 0.0 << 0.0;
    QTest::newRow("rate, time backwards") << true << 20.0 << false << 0.2 << -1.0 << 0.0;
    QTest::newRow("dampening") << false << 3.0 << true << 0.25 << 0.04 << 0.25;
    QTest::newRow("dampening 1") << false << 3.0 << true << 1.0 << 0.04 << 1.0;
    QTest::newRow("both") << true << 3.0 << true << 0.5 << 0.04 << 0.056'540;
    QTest::newRow("locked") << true << 20.0 << true << 0.0 << 60.0 << 0.0;
}

void tst_videoGain::stepsFollowRateAndDampening()
{
    QFETCH(const bool, useRate);
    QFETCH(const double, rate);
    QFETCH(const bool, useDampening);
    QFETCH(const double, dampening);
    QFETCH(const double, seconds);
    QFETCH(const double, step);
    LensRig rig;
    QVERIFY(rig.set("agc.filterRate", rate) && rig.set("agc.filterRateEnabled", useRate)
            && rig.set("agc.dampening", dampening) && rig.set("agc.dampeningEnabled", useDampening));
    QVERIFY(std::abs(gain(rig).step(seconds) - step) < 1e-6);
}

void tst_videoGain::aRateOfAHalfTakesTwoSeconds()
{
    // 63 % of the way takes 1 / rate, whatever the rate of the video is.
    for (const int hertz : {60, 25, 1}) {
        FrameRig rig;
        QVERIFY(rig.useSmallWindow() && rig.set("agc.method", 3) && rig.set("agc.filterRate", 0.5)
                && rig.set("agc.filterRateEnabled", true) && rig.set("agc.manualLow", 16'383));
        Agc agc;
        update(agc, rig, 1.0 / hertz);
        QCOMPARE(agc.level(5000), uint8_t(0));
        QVERIFY(rig.set("agc.manualLow", 0) && rig.set("agc.manualHigh", 0));
        for (int frame = 0; frame < 2 * hertz; ++frame)
            update(agc, rig, 1.0 / hertz);
        QCOMPARE(int(agc.level(5000)), int(std::lround(255 * (1 - std::exp(-1)))));
    }
}

void tst_videoGain::lockedDampeningFreezesTheLevels()
{
    FrameRig rig;
    QVERIFY(rig.useSmallWindow() && rig.showArea(20) && rig.set("agc.dampeningEnabled", true));
    QVERIFY(rig.set("agc.dampening", 0));
    Agc agc;
    update(agc, rig, 0.04);
    const double before = meanLevel(agc, rig);
    QVERIFY(before > 100 && before < 150);
    QVERIFY(rig.showArea(35));
    for (int frame = 0; frame < 100; ++frame)
        update(agc, rig, 0.04);
    QVERIFY(meanLevel(agc, rig) > 250);
    QVERIFY(rig.set("agc.dampening", 0.5));
    for (int frame = 0; frame < 20; ++frame)
        update(agc, rig, 0.04);
    QVERIFY(std::abs(meanLevel(agc, rig) - before) < 10);
}

void tst_videoGain::eachMethodShowsTheScene()
{
    FrameRig rig;
    QVERIFY(rig.useSmallWindow());
    const int middle = static_cast<int>(rig.mean());
    QVERIFY(rig.set("agc.manualLow", middle - 500) && rig.set("agc.manualHigh", middle + 500));
    for (const int method : {0, 1, 2, 3}) {
        QVERIFY(rig.set("agc.method", method));
        Agc agc;
        update(agc, rig, 0.04);
        const double mean = meanLevel(agc, rig);
        QVERIFY2(mean > 20 && mean < 235, qPrintable(QStringLiteral("%1: %2").arg(method).arg(mean)));
        if (method == 3)
            QCOMPARE(greys(agc), 997); // Of 1001, two at each end are black or white.
    }
}

void tst_videoGain::theRegionOfTheCameraIsSpread()
{
    FrameRig rig;
    QVERIFY(rig.useSmallWindow() && rig.set("emulator./Pattern", 2) && rig.set("emulator./BlackbodyTemp1", 20)
            && rig.set("emulator./BlackbodyTemp2", 35) && rig.set("agc.method", 2));
    Agc agc;
    update(agc, rig, 0.04);
    const int whole = greys(agc);
    // The left half has only one temperature, so that far fewer counts have all the levels.
    QVERIFY(rig.set("agc.region", QVariantList{8, 8, 32, 32}) && rig.set("agc.regionEnabled", true));
    update(agc, rig, 0.04);
    QVERIFY2(greys(agc) < 0.7 * whole, qPrintable(QStringLiteral("%1, %2").arg(greys(agc)).arg(whole)));
}

void tst_videoGain::snapshotsContainEverySetting()
{
    LensRig rig;
    const QJsonObject values{{"method", 2},
                             {"plateau", 77},
                             {"sharpness", 6},
                             {"threshold", 12},
                             {"manualLow", 4000},
                             {"manualHigh", 9000},
                             {"filterRate", 2.5},
                             {"filterRateEnabled", true},
                             {"dampening", 0.25},
                             {"dampeningEnabled", true},
                             {"region", QJsonArray({10, 20, 100, 50})},
                             {"regionEnabled", true},
                             {"blackHotEnabled", true}};
    for (auto value = values.begin(); value != values.end(); ++value)
        QVERIFY2(rig.set(("agc." + value.key().toUtf8()).constData(), value.value().toVariant()),
                 qPrintable(value.key()));
    const QJsonObject snapshot = rig.camera().snapshot();
    QCOMPARE(snapshot.value("agc").toObject(), values);
    rig.open("everything");
    rig.camera().restore(snapshot);
    QCOMPARE(rig.camera().snapshot().value("agc").toObject(), values);
}

void tst_videoGain::otherClientsAreRefusedTheSame_data()
{
    QTest::addColumn<QVariantList>("wrong");
    QTest::newRow("method") << QVariantList{4, -1, 0.5, "2", true};
    QTest::newRow("plateau") << QVariantList{0, 16'384, -1};
    QTest::newRow("sharpness") << QVariantList{0, 8};
    QTest::newRow("threshold") << QVariantList{-1, 16'384};
    QTest::newRow("manualLow") << QVariantList{-1, 16'384};
    QTest::newRow("manualHigh") << QVariantList{-1, 16'384};
    QTest::newRow("filterRate") << QVariantList{-0.1, 20.1, "1"};
    QTest::newRow("dampening") << QVariantList{-0.1, 1.1, true};
    QTest::newRow("filterRateEnabled") << QVariantList{1, "true"};
    QTest::newRow("dampeningEnabled") << QVariantList{1};
    QTest::newRow("regionEnabled") << QVariantList{0};
    QTest::newRow("blackHotEnabled") << QVariantList{1};
    QTest::newRow("region") << QVariantList{0, QVariantList{0, 0, 640}, QVariantList{0, 0, 0, 1},
                                            QVariantList{-1, 0, 5, 5}, QVariantList{0, 0, 641, 512}};
}

void tst_videoGain::otherClientsAreRefusedTheSame()
{
    QFETCH(const QVariantList, wrong);
    LensRig rig;
    const QJsonObject before = rig.camera().snapshot();
    for (const QVariant &value : wrong)
        QVERIFY2(!rig.set((QByteArray("agc.") + QTest::currentDataTag()).constData(), value),
                 qPrintable(QDebug::toString(value)));
    QCOMPARE(rig.camera().snapshot(), before);
}

void tst_videoGain::callsReturnAtOnce()
{
    LensRig rig;
    const size_t mark = rig.camera().gate().mark();
    for (int times = 0; times < 5; ++times) {
        for (const Function &function : functions())
            function.set(rig.handle(), function.get(rig.handle()));
        zvtSetVideoAGCROI(rig.handle(), 10, 10, 100, 100);
    }
    QVERIFY(slowestFunction(rig.camera().gate(), mark) < std::chrono::milliseconds(1));
}

ZVT_TEST(tst_videoGain)
#include "tst_videoGain.moc"
