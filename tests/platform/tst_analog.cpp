#include "platform/emulator/image/output.h"
#include "tests/platform/FrameRig.h"
#include "tests/platform/settingOf.h"
#include "tests/support/Test.h"

#include <cmath>
#include <limits>

using emulator::image::Output;

/// The voltages and colours of detectors, and digital gain and offset, by functions of the SDK and by other clients.
class tst_analog : public Test
{
    Q_OBJECT

private slots:
    void startValues();
    void valuesAreTakenWithinTheirLimits_data();
    void valuesAreTakenWithinTheirLimits();
    void voltagesChangeTheFrames_data();
    void voltagesChangeTheFrames();
    void skimmingNeedsADetectorThatCan();
    void secondBiasNeedsTwoColors();
    void colorsAreThoseOfPresets();
    void camerasWithOneColorRefuseIt();
    void digitalGainIsThatOfAPreset();
    void presetsThatTheCameraLacksAreRefused();
    void camerasWithoutVoltages();
    void otherClientsSetThem_data();
    void otherClientsSetThem();
    void snapshotsHoldThem();
    void saturationFlagFollowsTheVoltages();
};

namespace
{

constexpr int refused = emulator::Refused;

/// The mean of an output's newest frame.
double meanOf(FrameRig &rig, Output output, int preset = 0)
{
    const auto frame = rig.camera().newestFrame(preset, output);
    if (!frame)
        return -1;
    emulator::image::Statistics statistics(frame->counts.size());
    statistics.add(frame->counts);
    return statistics.mean();
}

/// The functions of a voltage.
struct Function {
    int (*set)(uint64_t handle, float value);
    int (*get)(uint64_t handle, float *value);
    int (*limits)(uint64_t handle, float *minimum, float *maximum);
};

const QList<Function> &functions()
{
    static const QList<Function> list{
        {zvtSetGlobalOffsetVoltage, zvtGetGlobalOffsetVoltage, zvtGetGlobalOffsetVoltageLimits},
        {zvtSetFPABias, zvtGetFPABias, zvtGetFPABiasLimits},
        {zvtSetSkimmingVoltage, zvtGetSkimmingVoltage, zvtGetSkimmingVoltageLimits},
    };
    return list;
}

} // namespace

void tst_analog::startValues()
{
    const LensRig rig;
    float value = 9;
    QCOMPARE(zvtGetGlobalOffsetVoltage(rig.handle(), &value), 0);
    QCOMPARE(value, 0.0f);
    QCOMPARE(zvtGetFPABias(rig.handle(), &value), 0);
    QCOMPARE(value, 250.0f);
    QCOMPARE(zvtGetSkimmingVoltage(rig.handle(), &value), 0);
    QCOMPARE(value, 1.2f);
    bool flag = false;
    QCOMPARE(zvtGetSkimmingAvailable(rig.handle(), &flag), 0);
    QVERIFY(flag);
    QCOMPARE(zvtGetSkimmingEnabled(rig.handle(), &flag), 0);
    QVERIFY(!flag);
    uint8_t colors = 0;
    QCOMPARE(zvtGetNumColors(rig.handle(), &colors), 0);
    QCOMPARE(colors, uint8_t(1));
    for (uint8_t preset = 0; preset < 4; ++preset) {
        QCOMPARE(zvtGetDigitalGain(rig.handle(), preset, &value), 0);
        QCOMPARE(value, 1.0f);
        QCOMPARE(zvtGetDigitalOffset(rig.handle(), preset, &value), 0);
        QCOMPARE(value, 0.0f);
    }
}

void tst_analog::valuesAreTakenWithinTheirLimits_data()
{
    QTest::addColumn<int>("function");
    QTest::addColumn<float>("minimum");
    QTest::addColumn<float>("maximum");
    QTest::newRow("global offset") << 0 << -5.0f << 5.0f;
    QTest::newRow("bias") << 1 << 0.0f << 500.0f;
    QTest::newRow("skimming") << 2 << 0.0f << 3.3f;
}

void tst_analog::valuesAreTakenWithinTheirLimits()
{
    QFETCH(const int, function);
    QFETCH(const float, minimum);
    QFETCH(const float, maximum);
    const auto &[set, get, limits] = functions().at(function);
    const LensRig rig;
    float lowest = -99;
    float highest = -99;
    QCOMPARE(limits(rig.handle(), &lowest, &highest), 0);
    QCOMPARE(lowest, minimum);
    QCOMPARE(highest, maximum);
    const float infinite = std::numeric_limits<float>::infinity();
    for (const float value : {minimum, maximum, (minimum + maximum) / 2}) {
        QCOMPARE(set(rig.handle(), value), 0);
        for (const float wrong : {std::nextafter(minimum, -infinite), std::nextafter(maximum, infinite), infinite,
                                  -infinite, std::numeric_limits<float>::quiet_NaN()})
            QCOMPARE(set(rig.handle(), wrong), refused);
        float now = -99;
        QCOMPARE(get(rig.handle(), &now), 0);
        QCOMPARE(now, value);
    }
}

void tst_analog::voltagesChangeTheFrames_data()
{
    QTest::addColumn<int>("function");
    QTest::addColumn<float>("value");
    QTest::addColumn<double>("least"); // Of the change of the mean.
    QTest::addColumn<double>("most");
    QTest::newRow("global offset") << 0 << 1.0f << 380.0 << 420.0;
    QTest::newRow("global offset, down") << 0 << -1.0f << -420.0 << -380.0;
    QTest::newRow("bias") << 1 << 500.0f << 500.0 << 900.0;
    QTest::newRow("bias, down") << 1 << 125.0f << -1800.0 << -1000.0;
    QTest::newRow("skimming") << 2 << 1.0f << -610.0 << -570.0;
}

void tst_analog::voltagesChangeTheFrames()
{
    QFETCH(const int, function);
    QFETCH(const float, value);
    QFETCH(const double, least);
    QFETCH(const double, most);
    FrameRig rig;
    QVERIFY(rig.useSmallWindow() && rig.showArea(27));
    const double before = rig.mean();
    QCOMPARE(functions().at(function).set(rig.handle(), value), 0);
    if (function == 2) {
        QCOMPARE(rig.mean(), before); // It is off.
        QCOMPARE(zvtSetSkimmingEnabled(rig.handle(), true), 0);
    }
    const double change = rig.mean() - before;
    QVERIFY2(change >= least && change <= most, QByteArray::number(change));
}

void tst_analog::skimmingNeedsADetectorThatCan()
{
    FrameRig rig;
    QCOMPARE(zvtSetSkimmingEnabled(rig.handle(), true), 0);
    const double skimmed = rig.mean();
    QVERIFY(rig.set("analog.skimmingAvailable", false));
    QVERIFY(rig.mean() > skimmed + 100);
    bool flag = true;
    QCOMPARE(zvtGetSkimmingAvailable(rig.handle(), &flag), 0);
    QVERIFY(!flag);
    float value = 9;
    float other = 9;
    QCOMPARE(zvtGetSkimmingEnabled(rig.handle(), &flag), refused);
    QCOMPARE(zvtSetSkimmingEnabled(rig.handle(), false), refused);
    QCOMPARE(zvtGetSkimmingVoltage(rig.handle(), &value), refused);
    QCOMPARE(zvtSetSkimmingVoltage(rig.handle(), 1), refused);
    QCOMPARE(zvtGetSkimmingVoltageLimits(rig.handle(), &value, &other), refused);
    QVERIFY(!flag && value == 9 && other == 9);
    QVERIFY(!rig.set("analog.skimmingVoltage", 1.0));
}

void tst_analog::secondBiasNeedsTwoColors()
{
    FrameRig rig;
    QCOMPARE(zvtSetFPABiasEx(rig.handle(), 1, 300), refused);
    QCOMPARE(zvtSetFPABiasEx(rig.handle(), 0, 300), 0);
    float bias = 0;
    QCOMPARE(zvtGetFPABias(rig.handle(), &bias), 0);
    QCOMPARE(bias, 300.0f);
    QVERIFY(!settingOf(rig.camera(), QStringLiteral("analog.secondBias")).isValid());

    rig.open("two-color");
    rig.coolDetector();
    QVERIFY(rig.useSmallWindow() && rig.showArea(27));
    const double before = rig.mean();
    QCOMPARE(zvtSetFPABiasEx(rig.handle(), 1, 100), 0);
    for (const float wrong : {-1.0f, 501.0f, std::numeric_limits<float>::quiet_NaN()})
        QCOMPARE(zvtSetFPABiasEx(rig.handle(), 1, wrong), refused);
    QCOMPARE(zvtSetFPABiasEx(rig.handle(), 2, 100), refused);
    // It is the bias of the second colour only.
    QCOMPARE(rig.mean(), before);
    QCOMPARE(zvtGetFPABias(rig.handle(), &bias), 0);
    QCOMPARE(bias, 250.0f);
    QCOMPARE(zvtSetColor(rig.handle(), 0, 1), 0);
    const double second = rig.mean();
    QCOMPARE(zvtSetFPABiasEx(rig.handle(), 0, 500), 0);
    QCOMPARE(rig.mean(), second);
    QCOMPARE(zvtSetFPABiasEx(rig.handle(), 1, 250), 0);
    QVERIFY(rig.mean() > second + 1000);
}

void tst_analog::colorsAreThoseOfPresets()
{
    FrameRig rig("two-color");
    QVERIFY(rig.useSmallWindow() && rig.showArea(35) && rig.set("sensor.sequencingMode", 2));
    rig.set("sensor.activePreset", 1);
    rig.set("sensor.integrationTime", 2.0);
    emulator::Clock::advance(1000);
    uint8_t colors = 0;
    QCOMPARE(zvtGetNumColors(rig.handle(), &colors), 0);
    QCOMPARE(colors, uint8_t(2));
    const double first = rig.mean(0);
    QVERIFY(std::abs(rig.mean(1) - first) < 2);
    QCOMPARE(zvtSetColor(rig.handle(), 1, 1), 0);
    QVERIFY(std::abs(rig.mean(0) - first) < 2);
    QVERIFY(std::abs(rig.mean(1) - first - 300) < 5);
    QCOMPARE(zvtSetColor(rig.handle(), 1, 2), refused);
    QCOMPARE(zvtSetColor(rig.handle(), 4, 1), refused);
    QCOMPARE(zvtSetColor(rig.handle(), 1, 0), 0);
    QVERIFY(std::abs(rig.mean(1) - first) < 2);
}

void tst_analog::camerasWithOneColorRefuseIt()
{
    for (const char *profile : {"everything", "low-cost", "bare", "te-cooler"}) {
        LensRig rig(profile);
        uint8_t colors = 0;
        QCOMPARE(zvtGetNumColors(rig.handle(), &colors), 0);
        QCOMPARE(colors, uint8_t(1));
        for (const uint8_t color : {0, 1})
            QCOMPARE(zvtSetColor(rig.handle(), 0, color), refused);
        QVERIFY(!rig.set("color.selected", QVariantList{1, 0, 0, 0}));
    }
}

void tst_analog::digitalGainIsThatOfAPreset()
{
    FrameRig rig;
    QVERIFY(rig.useSmallWindow() && rig.showArea(27) && rig.set("sensor.sequencingMode", 2));
    emulator::Clock::advance(1000);
    const double raw0 = rig.mean(0);
    const double video0 = meanOf(rig, Output::Video, 0);
    const double video1 = meanOf(rig, Output::Video, 1);
    const double digital0 = meanOf(rig, Output::Digital, 0);
    QCOMPARE(zvtSetDigitalGain(rig.handle(), 0, 1.5f), 0);
    QCOMPARE(zvtSetDigitalOffset(rig.handle(), 0, -500), 0);
    QVERIFY(std::abs(meanOf(rig, Output::Video, 0) - (1.5 * video0 - 500)) < 20);
    QVERIFY(std::abs(meanOf(rig, Output::Digital, 0) - (1.5 * digital0 - 500)) < 20);
    QCOMPARE(meanOf(rig, Output::Video, 1), video1);
    QCOMPARE(rig.mean(0), raw0);
    float value = 0;
    QCOMPARE(zvtGetDigitalGain(rig.handle(), 0, &value), 0);
    QCOMPARE(value, 1.5f);
    QCOMPARE(zvtGetDigitalOffset(rig.handle(), 0, &value), 0);
    QCOMPARE(value, -500.0f);

    const float infinite = std::numeric_limits<float>::infinity();
    for (const float gain : {0.0f, 3.999f})
        QCOMPARE(zvtSetDigitalGain(rig.handle(), 1, gain), 0);
    for (const float gain : {-0.001f, 3.9995f, infinite, std::numeric_limits<float>::quiet_NaN()})
        QCOMPARE(zvtSetDigitalGain(rig.handle(), 1, gain), refused);
    for (const float offset : {-16'383.5f, 16'383.5f})
        QCOMPARE(zvtSetDigitalOffset(rig.handle(), 1, offset), 0);
    for (const float offset : {-16'383.6f, 16'383.6f, -infinite, std::numeric_limits<float>::quiet_NaN()})
        QCOMPARE(zvtSetDigitalOffset(rig.handle(), 1, offset), refused);
    QCOMPARE(zvtGetDigitalGain(rig.handle(), 1, &value), 0);
    QCOMPARE(value, 3.999f);
    QCOMPARE(zvtGetDigitalOffset(rig.handle(), 1, &value), 0);
    QCOMPARE(value, 16'383.5f);
}

void tst_analog::presetsThatTheCameraLacksAreRefused()
{
    const LensRig rig("low-cost");
    float value = 9;
    QCOMPARE(zvtSetDigitalGain(rig.handle(), 0, 2), 0);
    for (const uint8_t preset : {1, 4, 255}) {
        QCOMPARE(zvtGetDigitalGain(rig.handle(), preset, &value), refused);
        QCOMPARE(zvtSetDigitalGain(rig.handle(), preset, 2), refused);
        QCOMPARE(zvtGetDigitalOffset(rig.handle(), preset, &value), refused);
        QCOMPARE(zvtSetDigitalOffset(rig.handle(), preset, 2), refused);
        QCOMPARE(value, 9.0f);
    }
}

void tst_analog::camerasWithoutVoltages()
{
    const LensRig rig("bare");
    float value = 9;
    float other = 9;
    bool flag = true;
    const int absent = emulator::Absent;
    QCOMPARE(zvtGetGlobalOffsetVoltage(rig.handle(), &value), absent);
    QCOMPARE(zvtSetGlobalOffsetVoltage(rig.handle(), 1), absent);
    QCOMPARE(zvtGetGlobalOffsetVoltageLimits(rig.handle(), &value, &other), absent);
    QCOMPARE(zvtGetFPABias(rig.handle(), &value), absent);
    QCOMPARE(zvtSetFPABias(rig.handle(), 100), absent);
    QCOMPARE(zvtSetFPABiasEx(rig.handle(), 0, 100), absent);
    QCOMPARE(zvtGetFPABiasLimits(rig.handle(), &value, &other), absent);
    QCOMPARE(zvtGetSkimmingAvailable(rig.handle(), &flag), absent);
    QCOMPARE(zvtGetSkimmingEnabled(rig.handle(), &flag), absent);
    QCOMPARE(zvtSetSkimmingEnabled(rig.handle(), true), absent);
    QCOMPARE(zvtGetSkimmingVoltage(rig.handle(), &value), absent);
    QCOMPARE(zvtSetSkimmingVoltage(rig.handle(), 1), absent);
    QCOMPARE(zvtGetSkimmingVoltageLimits(rig.handle(), &value, &other), absent);
    QVERIFY(flag && value == 9 && other == 9);
}

void tst_analog::otherClientsSetThem_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QVariant>("good");
    QTest::addColumn<QVariantList>("bad");
    const auto row = [](const char *name, const QVariant &good, const QVariantList &bad) {
        QTest::newRow(name) << QByteArray(name) << good << bad;
    };
    row("analog.globalOffset", -5.0, {-5.1, 5.1, "1"});
    row("analog.bias", 500.0, {-0.1, 500.1});
    row("analog.secondBias", 0.0, {-0.1, 500.1});
    row("analog.skimmingEnabled", true, {1});
    row("analog.skimmingVoltage", 2.5, {-0.1, 3.4});
    row("color.selected", QVariantList{1, 0, 1, 0}, {QVariantList{1, 0}, QVariantList{2, 0, 0, 0}, 1});
    row("digital.gains", QVariantList{0, 1, 2, 3.5}, {QVariantList{0, 1, 2, 4}, QVariantList{-1, 0, 0, 0}, 1});
    row("digital.offsets", QVariantList{-16383.5, 1, 2, 16383.5}, {QVariantList{-16384, 1, 2, 3}, QVariantList{1}});
}

void tst_analog::otherClientsSetThem()
{
    QFETCH(const QByteArray, name);
    QFETCH(const QVariant, good);
    QFETCH(const QVariantList, bad);
    FrameRig rig("two-color");
    QVERIFY(rig.useSmallWindow() && rig.set("analog.skimmingEnabled", name == "analog.skimmingVoltage"));
    QVERIFY(rig.set("color.selected", QVariantList{name == "analog.secondBias" ? 1 : 0, 0, 0, 0}));
    const auto before = rig.camera().newestFrame(0, Output::Video)->counts;
    QVERIFY(rig.set(name.constData(), good));
    QCOMPARE(settingOf(rig.camera(), QString::fromLatin1(name)), good);
    QVERIFY(rig.camera().newestFrame(0, Output::Video)->counts != before);
    for (const QVariant &wrong : bad)
        QVERIFY2(!rig.set(name.constData(), wrong), qPrintable(wrong.toString()));
    QCOMPARE(settingOf(rig.camera(), QString::fromLatin1(name)), good);
}

void tst_analog::snapshotsHoldThem()
{
    LensRig rig("two-color");
    const QJsonObject before = rig.camera().snapshot();
    QCOMPARE(zvtSetGlobalOffsetVoltage(rig.handle(), -1.1f), 0);
    QCOMPARE(zvtSetFPABias(rig.handle(), 311.3f), 0);
    QCOMPARE(zvtSetFPABiasEx(rig.handle(), 1, 123.4f), 0);
    QCOMPARE(zvtSetSkimmingEnabled(rig.handle(), true), 0);
    QCOMPARE(zvtSetSkimmingVoltage(rig.handle(), 3.3f), 0);
    QCOMPARE(zvtSetColor(rig.handle(), 2, 1), 0);
    QCOMPARE(zvtSetDigitalGain(rig.handle(), 3, 3.999f), 0);
    QCOMPARE(zvtSetDigitalOffset(rig.handle(), 1, 0.1f), 0);
    const QJsonObject after = rig.camera().snapshot();
    QCOMPARE(after.value("analog").toObject().keys(),
             QStringList({"bias", "globalOffset", "secondBias", "skimmingEnabled", "skimmingVoltage"}));
    QCOMPARE(after.value("color").toObject().keys(), QStringList({"selected"}));
    QCOMPARE(after.value("digital").toObject().keys(), QStringList({"gains", "offsets"}));
    rig.camera().restore(before);
    QCOMPARE(rig.camera().snapshot(), before);
    rig.camera().restore(after);
    QCOMPARE(rig.camera().snapshot(), after);
    float gain = 0;
    QCOMPARE(zvtGetDigitalGain(rig.handle(), 3, &gain), 0);
    QCOMPARE(gain, 3.999f);
}

void tst_analog::saturationFlagFollowsTheVoltages()
{
    FrameRig rig;
    QVERIFY(rig.showArea(35) && rig.set("sensor.integrationTime", 3.0));
    const auto flag = [&] {
        uint8_t saturated = 9;
        return zvtGetSaturatedFlag(rig.handle(), &saturated) == 0 ? saturated : uint8_t(9);
    };
    // Without maps of the pixels, and with them.
    for (const bool maps : {false, true}) {
        QVERIFY(!maps || rig.mean() > 0);
        QCOMPARE(flag(), uint8_t(0));
        QVERIFY(rig.set("analog.globalOffset", 5.0) && rig.set("analog.bias", 500.0));
        QCOMPARE(flag(), uint8_t(1));
        QVERIFY(rig.set("analog.skimmingVoltage", 3.3) && rig.set("analog.skimmingEnabled", true));
        QVERIFY(rig.set("analog.globalOffset", 2.0));
        QCOMPARE(flag(), uint8_t(0));
        QVERIFY(rig.set("analog.skimmingEnabled", false) && rig.set("analog.globalOffset", 0));
        QVERIFY(rig.set("analog.bias", 250.0));
    }
}

ZVT_TEST(tst_analog)
#include "tst_analog.moc"
