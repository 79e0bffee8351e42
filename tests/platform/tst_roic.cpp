#include "platform/emulator/devices/FrameClock.h"
#include "platform/emulator/devices/Sensor.h"
#include "tests/platform/LensRig.h"
#include "tests/platform/callTimes.h"
#include "tests/platform/settingOf.h"
#include "tests/support/Test.h"

#include <cmath>

/// The constants of the readout circuit.
class tst_roic : public Test
{
    Q_OBJECT

private slots:
    void usualConstantsGiveTheUsualRate();
    void constantsChangeTheShortestFrame_data();
    void constantsChangeTheShortestFrame();
    void framesComeFaster();
    void framesGetLonger();
    void deadWidthsAddToTheIntegration();
    void presetsChangeInSequencing();
    void playbackRateFollows();
    void settersNeedTheOverride();
    void valuesComeBackWithTheOverride();
    void valuesAreTakenInTheirRanges_data();
    void valuesAreTakenInTheirRanges();
    void flagsAreZeroOrOne();
    void constantsOfAProfileAreTheDefaults();
    void microbolometerIsSlow();
    void armedRecorderRefusesChanges();
    void otherClientsSetThem();
    void valuesOutliveTheProcess();
    void valuesThatWereNotSetFollowTheProfile();
    void fastStateComesBack();
    void snapshotsDoNotHoldThem();
    void functionsAreFast();
};

namespace
{

constexpr int refused = emulator::Refused;
constexpr uint32_t usualWidth = 93'020;

using Get = int (*)(uint64_t handle, uint32_t *value);
using Set = int (*)(uint64_t handle, uint32_t value);

/// A constant of the readout circuit.
struct Constant {
    const char *key;
    Get get;
    Set set;
    uint32_t usual;
    uint32_t lowest;
    uint32_t highest;
};

const QList<Constant> &constants()
{
    static const QList<Constant> list{
        {"lineDeadWidth", zvtGetMfgLineDeadWidth, zvtSetMfgLineDeadWidth, 20, 1, 4095},
        {"preIntDeadWidth", zvtGetMfgPreIntDeadWidth, zvtSetMfgPreIntDeadWidth, 300, 0, 1'000'000},
        {"postIntDeadWidth", zvtGetMfgPostIntDeadWidth, zvtSetMfgPostIntDeadWidth, 200, 0, 1'000'000},
        {"preDeadRows", zvtGetMfgPreDeadRows, zvtSetMfgPreDeadRows, 1, 0, 255},
        {"postDeadRows", zvtGetMfgPostDeadRows, zvtSetMfgPostDeadRows, 1, 0, 255},
        {"hasExtraLineSync",
         [](uint64_t handle, uint32_t *value) {
             uint8_t flag = 0;
             const int status = zvtGetMfgHasExtraLSync(handle, &flag);
             *value = flag;
             return status;
         },
         [](uint64_t handle, uint32_t value) { return zvtSetMfgHasExtraLSync(handle, static_cast<uint8_t>(value)); }, 0,
         0, 1},
    };
    return list;
}

/// 9999999 if it cannot be read.
uint32_t read(const LensRig &rig, Get get)
{
    uint32_t value = 9'999'999;
    get(rig.handle(), &value);
    return value;
}

/// The values of all constants.
QList<uint32_t> readAll(const LensRig &rig)
{
    QList<uint32_t> values;
    for (const Constant &constant : constants())
        values.append(read(rig, constant.get));
    return values;
}

const QList<uint32_t> usualConstants{20, 300, 200, 1, 1, 0};

/// The shortest frame of a window in clocks, 0 if the call fails.
uint32_t shortest(const LensRig &rig, uint16_t width = 640, uint16_t height = 512, uint32_t integration = 20,
                  bool sequencing = false)
{
    uint32_t clocks = 0;
    zvtCalcMinFrameWidthEx(rig.handle(), &clocks, width, height, integration, sequencing);
    return clocks;
}

const emulator::Sensor &sensorOf(LensRig &rig) { return *rig.camera().device<emulator::Sensor>(); }

/// The highest rate that the camera offers, rounded to a tenth of a hertz.
double highestRate(LensRig &rig)
{
    std::vector<double> rates;
    return sensorOf(rig).frameRates(0, rates) == emulator::Ok ? std::round(rates.front() * 10) / 10 : 0;
}

/// The frames in a second, from the times of two frames of the first preset, rounded to a tenth.
double frameRate(LensRig &rig)
{
    const auto newest = [&rig] { return rig.camera().device<emulator::FrameClock>()->newest(0).value(); };
    // The frame in progress ends as it began.
    emulator::Clock::advance(1000);
    const emulator::FrameStart before = newest();
    emulator::Clock::advance(10'000);
    const emulator::FrameStart after = newest();
    const auto seconds = static_cast<double>(after.microseconds - before.microseconds) / 1e6;
    return std::round(static_cast<double>(after.number - before.number) / seconds * 10) / 10;
}

bool setOverride(const LensRig &rig, bool on) { return zvtSetMfgOverrideRoicConfig(rig.handle(), on ? 1 : 0) == 0; }

} // namespace

void tst_roic::usualConstantsGiveTheUsualRate()
{
    LensRig rig;
    QCOMPARE(readAll(rig), usualConstants);
    uint8_t flag = 9;
    QCOMPARE(zvtGetMfgOverrideRoicConfig(rig.handle(), &flag), 0);
    QCOMPARE(flag, uint8_t(0));
    QCOMPARE(shortest(rig), usualWidth);
    QCOMPARE(highestRate(rig), 215.0);
}

void tst_roic::constantsChangeTheShortestFrame_data()
{
    QTest::addColumn<int>("constant");
    QTest::addColumn<uint32_t>("value");
    QTest::addColumn<uint32_t>("clocks");
    QTest::addColumn<double>("rate");
    QTest::newRow("line") << 0 << 40U << 103'300U << 193.6;
    QTest::newRow("shortest line") << 0 << 1U << 83'254U << 240.2;
    QTest::newRow("longest line") << 0 << 4095U << 2'187'570U << 9.1;
    QTest::newRow("before the integration") << 1 << 1300U << 94'020U << 212.7;
    QTest::newRow("after the integration") << 2 << 0U << 92'820U << 215.5;
    QTest::newRow("rows before the image") << 3 << 0U << 92'840U << 215.4;
    QTest::newRow("rows after the image") << 4 << 255U << 138'740U << 144.2;
    QTest::newRow("line sync") << 5 << 1U << 93'200U << 214.6;
}

void tst_roic::constantsChangeTheShortestFrame()
{
    QFETCH(const int, constant);
    QFETCH(const uint32_t, value);
    QFETCH(const uint32_t, clocks);
    QFETCH(const double, rate);
    LensRig rig;
    QVERIFY(setOverride(rig, true));
    QCOMPARE(shortest(rig), usualWidth);
    QCOMPARE(constants().at(constant).set(rig.handle(), value), 0);
    QCOMPARE(read(rig, constants().at(constant).get), value);
    QCOMPARE(shortest(rig), clocks);
    uint32_t byWindow = 0;
    QCOMPARE(zvtCalcMinFrameWidth(rig.handle(), &byWindow, 640, 512), 0);
    QCOMPARE(byWindow, clocks);
    QCOMPARE(highestRate(rig), rate);
    QCOMPARE(zvtSetFrameWidth(rig.handle(), 0, clocks - 1), refused);
    QCOMPARE(zvtSetFrameWidth(rig.handle(), 0, clocks), 0);
    QCOMPARE(frameRate(rig), rate);
    QVERIFY(setOverride(rig, false));
    QCOMPARE(shortest(rig), usualWidth);
    QCOMPARE(highestRate(rig), 215.0);
}

void tst_roic::framesComeFaster()
{
    LensRig rig;
    QVERIFY(rig.set("sensor.frameRate", 10'000));
    QCOMPARE(frameRate(rig), 215.0);
    QVERIFY(setOverride(rig, true));
    QCOMPARE(zvtSetMfgLineDeadWidth(rig.handle(), 1), 0);
    // The frames keep their rate until another one is set.
    QCOMPARE(frameRate(rig), 215.0);
    QVERIFY(rig.set("sensor.frameRate", 10'000));
    QCOMPARE(frameRate(rig), 240.2);
    QVERIFY(setOverride(rig, false));
    QCOMPARE(frameRate(rig), 215.0);
}

void tst_roic::framesGetLonger()
{
    LensRig rig;
    QVERIFY(rig.set("sensor.frameRate", 200));
    QVERIFY(setOverride(rig, true));
    QCOMPARE(frameRate(rig), 200.0);
    QCOMPARE(zvtSetMfgLineDeadWidth(rig.handle(), 40), 0);
    QCOMPARE(frameRate(rig), 193.6);
    uint32_t clocks = 0;
    QCOMPARE(zvtGetFrameWidth(rig.handle(), 0, &clocks), 0);
    QCOMPARE(clocks, 103'300U);
}

void tst_roic::deadWidthsAddToTheIntegration()
{
    LensRig rig;
    QVERIFY(setOverride(rig, true));
    QCOMPARE(zvtSetMfgPreIntDeadWidth(rig.handle(), 1'000'000), 0);
    QCOMPARE(zvtSetMfgPostIntDeadWidth(rig.handle(), 3), 0);
    QCOMPARE(shortest(rig, 640, 512, 500'000), 1'500'003U);
    QCOMPARE(shortest(rig, 640, 512, 20), 92'520U + 1'000'003U);
    QVERIFY(rig.set("sensor.reduceNoise", true));
    QCOMPARE(shortest(rig, 640, 512, 500'000), 92'520U + 1'500'003U);
    QCOMPARE(shortest(rig, 65535, 65535, UINT32_MAX), UINT32_MAX);
}

void tst_roic::presetsChangeInSequencing()
{
    LensRig rig;
    QVERIFY(setOverride(rig, true));
    QCOMPARE(zvtSetMfgLineDeadWidth(rig.handle(), 40), 0);
    QCOMPARE(shortest(rig, 640, 512, 20, true), 103'700U);
    QVERIFY(rig.set("sensor.sequencingMode", 1));
    // Superframes of four presets, with integration times that are shorter than the readout.
    QCOMPARE(sensorOf(rig).superframeRates().front(), 20e6 / (4 * 103'700));
    QVERIFY(rig.set("sensor.superframeRate", 10'000));
    QCOMPARE(frameRate(rig), 192.9);
    QCOMPARE(zvtSetMfgLineDeadWidth(rig.handle(), 20), 0);
    QCOMPARE(sensorOf(rig).superframeRates().front(), 20e6 / (4 * 93'420));
    QVERIFY(rig.set("sensor.superframeRate", 10'000));
    QCOMPARE(frameRate(rig), 214.1);
}

void tst_roic::playbackRateFollows()
{
    LensRig rig;
    float rate = 0;
    QCOMPARE(zvtSetSsdPlaybackRate(rig.handle(), 1e9f), 0);
    QCOMPARE(zvtGetSsdPlaybackRate(rig.handle(), &rate), 0);
    QCOMPARE(std::round(rate), 215.0f);
    QVERIFY(setOverride(rig, true));
    QCOMPARE(zvtSetMfgLineDeadWidth(rig.handle(), 40), 0);
    QCOMPARE(zvtSetSsdPlaybackRate(rig.handle(), 1e9f), 0);
    QCOMPARE(zvtGetSsdPlaybackRate(rig.handle(), &rate), 0);
    QCOMPARE(std::round(rate), 194.0f);
}

void tst_roic::settersNeedTheOverride()
{
    LensRig rig;
    for (const Constant &constant : constants())
        QCOMPARE(constant.set(rig.handle(), constant.highest), refused);
    QCOMPARE(readAll(rig), usualConstants);
    QCOMPARE(shortest(rig), usualWidth);
    QVERIFY(!rig.set("roic.lineDeadWidth", 40));
    QVERIFY(rig.set("roic.override", true) && rig.set("roic.lineDeadWidth", 40));
}

void tst_roic::valuesComeBackWithTheOverride()
{
    LensRig rig;
    QVERIFY(setOverride(rig, true));
    QCOMPARE(readAll(rig), usualConstants);
    QList<uint32_t> set;
    for (const Constant &constant : constants()) {
        QCOMPARE(constant.set(rig.handle(), constant.highest), 0);
        set.append(constant.highest);
    }
    const uint32_t longest = shortest(rig);
    QVERIFY(longest > usualWidth);
    for (int pass = 0; pass < 2; ++pass) {
        QVERIFY(setOverride(rig, false));
        QCOMPARE(readAll(rig), usualConstants);
        QCOMPARE(settingOf(rig.camera(), "roic.lineDeadWidth").toInt(), 20);
        QCOMPARE(shortest(rig), usualWidth);
        QVERIFY(setOverride(rig, true));
        QCOMPARE(readAll(rig), set);
        QCOMPARE(settingOf(rig.camera(), "roic.lineDeadWidth").toInt(), 4095);
        QCOMPARE(shortest(rig), longest);
    }
}

void tst_roic::valuesAreTakenInTheirRanges_data()
{
    QTest::addColumn<int>("index");
    for (int index = 0; index < constants().size(); ++index)
        QTest::newRow(constants().at(index).key) << index;
}

void tst_roic::valuesAreTakenInTheirRanges()
{
    QFETCH(const int, index);
    const Constant &constant = constants().at(index);
    LensRig rig;
    QVERIFY(setOverride(rig, true));
    for (const uint32_t value : {constant.lowest, constant.highest}) {
        QCOMPARE(constant.set(rig.handle(), value), 0);
        for (const uint32_t wrong : {constant.lowest - 1, constant.highest + 1, UINT32_MAX})
            QCOMPARE(constant.set(rig.handle(), wrong), refused);
        QCOMPARE(read(rig, constant.get), value);
    }
}

void tst_roic::flagsAreZeroOrOne()
{
    LensRig rig;
    uint8_t flag = 9;
    for (const uint8_t wrong : {uint8_t(2), uint8_t(255)}) {
        QCOMPARE(zvtSetMfgOverrideRoicConfig(rig.handle(), wrong), refused);
        QCOMPARE(zvtGetMfgOverrideRoicConfig(rig.handle(), &flag), 0);
        QCOMPARE(flag, uint8_t(0));
    }
    QVERIFY(setOverride(rig, true));
    for (const uint8_t wrong : {uint8_t(2), uint8_t(255)})
        QCOMPARE(zvtSetMfgHasExtraLSync(rig.handle(), wrong), refused);
    QCOMPARE(zvtGetMfgHasExtraLSync(rig.handle(), &flag), 0);
    QCOMPARE(flag, uint8_t(0));
}

void tst_roic::constantsOfAProfileAreTheDefaults()
{
    const QTemporaryDir folder;
    LensRig rig;
    rig.open(writeProfile(folder.path(), "everything",
                          R"({"sensor": {"lineDeadWidth": 30, "preIntDeadWidth": 1, "postIntDeadWidth": 2,
                              "preDeadRows": 3, "postDeadRows": 4, "hasExtraLineSync": true}})")
                 .toLatin1());
    const QList<uint32_t> ofProfile{30, 1, 2, 3, 4, 1};
    QCOMPARE(readAll(rig), ofProfile);
    QCOMPARE(shortest(rig), 520 * 190 + 3U);
    QVERIFY(setOverride(rig, true));
    QCOMPARE(readAll(rig), ofProfile);
    QCOMPARE(zvtSetMfgLineDeadWidth(rig.handle(), 31), 0);
    QVERIFY(setOverride(rig, false));
    QCOMPARE(readAll(rig), ofProfile);
}

void tst_roic::microbolometerIsSlow()
{
    LensRig rig("low-cost");
    QCOMPARE(readAll(rig), (QList<uint32_t>{250, 300, 200, 1, 1, 0}));
    // No frame is faster than 60 Hz.
    for (const uint16_t rows : {uint16_t(4), uint16_t(288)})
        QCOMPARE(shortest(rig, 384, rows), 333'334U);
    QCOMPARE(highestRate(rig), 60.0);
    QVERIFY(rig.set("sensor.frameRate", 1000));
    QCOMPARE(frameRate(rig), 60.0);
    // A row takes a clock for each pixel.
    QVERIFY(setOverride(rig, true));
    QCOMPARE(zvtSetMfgPostIntDeadWidth(rig.handle(), 1'000'000), 0);
    QCOMPARE(shortest(rig, 384, 288), 290 * (384 + 250) + 1'000'300U);
}

void tst_roic::armedRecorderRefusesChanges()
{
    LensRig rig;
    QVERIFY(setOverride(rig, true));
    QCOMPARE(zvtSsdArm(rig.handle()), 0);
    emulator::Clock::advance(300);
    for (const Constant &constant : constants())
        QCOMPARE(constant.set(rig.handle(), constant.highest), refused);
    QVERIFY(!setOverride(rig, false));
    QVERIFY(!rig.set("roic.override", false) && !rig.set("roic.preDeadRows", 2));
    QVERIFY(!rig.set("roic.hasExtraLineSync", true));
    QCOMPARE(readAll(rig), usualConstants);
    // The phase of the clock does not change the timing.
    QCOMPARE(zvtMfgSetClockPhaseShift(rig.handle(), 90), 0);
    QVERIFY(rig.set("roic.clockPhaseShift", 91));
    QCOMPARE(read(rig, zvtMfgGetClockPhaseShift), 91U);
    QCOMPARE(zvtSsdDisarm(rig.handle()), 0);
    QCOMPARE(zvtSetMfgLineDeadWidth(rig.handle(), 40), 0);
    QVERIFY(setOverride(rig, false));
}

void tst_roic::otherClientsSetThem()
{
    LensRig rig;
    QVERIFY(rig.set("roic.override", true));
    for (const Constant &constant : constants()) {
        const QString name = QStringLiteral("roic.") + constant.key;
        const bool isFlag = constant.highest == 1;
        const QVariant value = isFlag ? QVariant(true) : QVariant(constant.highest);
        QVERIFY(rig.set(qPrintable(name), value));
        QCOMPARE(settingOf(rig.camera(), name).toUInt(), constant.highest);
        QCOMPARE(read(rig, constant.get), constant.highest);
        QVERIFY(!rig.set(qPrintable(name), constant.highest + 1));
        QVERIFY(!rig.set(qPrintable(name), "many"));
    }
    QCOMPARE(shortest(rig), (512 + 511U) * (160 + 4095) + 2'000'000);
    QVERIFY(!rig.set("roic.override", 1));
    QVERIFY(rig.set("roic.clockPhaseShift", 90) && !rig.set("roic.clockPhaseShift", -1));
    QCOMPARE(read(rig, zvtMfgGetClockPhaseShift), 90U);
}

void tst_roic::valuesOutliveTheProcess()
{
    LensRig rig;
    QVERIFY(setOverride(rig, true));
    QCOMPARE(zvtSetMfgLineDeadWidth(rig.handle(), 40), 0);
    QCOMPARE(zvtSetMfgHasExtraLSync(rig.handle(), 1), 0);
    QCOMPARE(zvtMfgSetClockPhaseShift(rig.handle(), 77), 0);
    const QList<uint32_t> set{40, 300, 200, 1, 1, 1};
    rig.open("everything");
    QCOMPARE(readAll(rig), set);
    QCOMPARE(shortest(rig), 103'500U);
    QCOMPARE(read(rig, zvtMfgGetClockPhaseShift), 77U);
    // Also what is not in force.
    QVERIFY(setOverride(rig, false));
    rig.open("everything");
    QCOMPARE(readAll(rig), usualConstants);
    QCOMPARE(shortest(rig), usualWidth);
    QVERIFY(setOverride(rig, true));
    QCOMPARE(readAll(rig), set);
    QCOMPARE(shortest(rig), 103'500U);
}

void tst_roic::valuesThatWereNotSetFollowTheProfile()
{
    const QTemporaryDir folder;
    LensRig rig;
    QString file;
    const auto open = [&](const QByteArray &devices) {
        if (!file.isEmpty())
            QFile::remove(file);
        file = writeProfile(folder.path(), "everything", devices);
        rig.open(file.toLatin1());
    };
    open(R"({"sensor": {"lineDeadWidth": 30, "preDeadRows": 3}, "roic": {"bestClockPhaseShift": 50}})");
    QVERIFY(setOverride(rig, true));
    QCOMPARE(zvtSetMfgLineDeadWidth(rig.handle(), 40), 0);
    const QString folderOfCamera = rig.camera().folder();
    open(R"({"sensor": {"lineDeadWidth": 31, "preDeadRows": 5, "hasExtraLineSync": true},
             "roic": {"bestClockPhaseShift": 60}})");
    QCOMPARE(rig.camera().folder(), folderOfCamera);
    QCOMPARE(readAll(rig), (QList<uint32_t>{40, 300, 200, 5, 1, 1}));
    QCOMPARE(read(rig, zvtMfgGetClockPhaseShift), 60U);
    QVERIFY(setOverride(rig, false));
    QCOMPARE(readAll(rig), (QList<uint32_t>{31, 300, 200, 5, 1, 1}));
}

// A rate that only the constants make possible, in the state in which the camera starts.
void tst_roic::fastStateComesBack()
{
    LensRig rig;
    QVERIFY(setOverride(rig, true));
    QCOMPARE(zvtSetMfgLineDeadWidth(rig.handle(), 1), 0);
    QVERIFY(rig.set("sensor.frameRate", 10'000));
    QCOMPARE(zvtSaveStateAs(rig.handle(), "Fast"), 0);
    rig.open("everything");
    uint32_t clocks = 0;
    QCOMPARE(zvtGetFrameWidth(rig.handle(), 0, &clocks), 0);
    QCOMPARE(clocks, 83'254U);
    QCOMPARE(frameRate(rig), 240.2);
}

void tst_roic::snapshotsDoNotHoldThem()
{
    LensRig rig;
    const QJsonObject before = rig.camera().snapshot();
    QVERIFY(!before.contains("roic"));
    QVERIFY(setOverride(rig, true));
    QCOMPARE(zvtSetMfgPreDeadRows(rig.handle(), 0), 0);
    QCOMPARE(zvtMfgSetClockPhaseShift(rig.handle(), 77), 0);
    QCOMPARE(rig.camera().snapshot(), before);
    rig.camera().restore(before);
    QCOMPARE(readAll(rig), (QList<uint32_t>{20, 300, 200, 0, 1, 0}));
    QCOMPARE(read(rig, zvtMfgGetClockPhaseShift), 77U);
}

void tst_roic::functionsAreFast()
{
    LensRig rig;
    const size_t mark = rig.camera().gate().mark();
    for (int pass = 0; pass < 3; ++pass) {
        QVERIFY(setOverride(rig, true));
        for (const Constant &constant : constants())
            QCOMPARE(constant.set(rig.handle(), constant.highest), 0);
        readAll(rig);
        uint8_t flag = 0;
        QCOMPARE(zvtGetMfgOverrideRoicConfig(rig.handle(), &flag), 0);
        QCOMPARE(zvtMfgSetClockPhaseShift(rig.handle(), 41), 0);
        QCOMPARE(read(rig, zvtMfgGetClockPhaseShift), 41U);
        QVERIFY(setOverride(rig, false));
    }
    QVERIFY(slowestFunction(rig.camera().gate(), mark) < std::chrono::milliseconds(1));
}

ZVT_TEST(tst_roic)
#include "tst_roic.moc"
