#include "tests/platform/CorrectionRig.h"
#include "tests/platform/callTimes.h"
#include "tests/support/Test.h"

#include <cmath>
#include <functional>

namespace
{

constexpr int refused = emulator::Refused;

} // namespace

/// The settings of runs, and the functions of corrections in general.
class tst_correctionSetup : public Test
{
    Q_OBJECT

private slots:
    void refusedSettings_data();
    void refusedSettings();
    void otherClientsSeeTheSetup();
    void camerasWithoutCorrectionsHaveNoFunctions();
    void functionsReturnAtOnce();
};

void tst_correctionSetup::refusedSettings_data()
{
    using Set = std::function<int(uint64_t)>;
    QTest::addColumn<Set>("set");
    QTest::addColumn<bool>("taken");
    const auto row = [](const char *name, const Set &set, bool taken = false) { QTest::newRow(name) << set << taken; };
    const float nan = NAN;
    const float infinity = INFINITY;
    row("type", [](uint64_t h) { return zvtSetNUCType(h, 3); });
    row("source", [](uint64_t h) { return zvtSetNUCSource(h, 2); });
    row("setpoint type", [](uint64_t h) { return zvtSetNUCFlagSetpointType(h, 2); });
    for (const float gain : {-0.001F, 10.001F, nan, infinity}) {
        row("gain min", [gain](uint64_t h) { return zvtSetNUCSetup(h, gain, 2, 0, 1, true); });
        row("gain max", [gain](uint64_t h) { return zvtSetNUCSetup(h, 1, gain, 0, 1, true); });
    }
    row(
        "gains", [](uint64_t h) { return zvtSetNUCSetup(h, 0, 10, 65535, 0, true); }, true);
    for (const float celsius : {-40.1F, 100.1F, nan, infinity}) {
        row("low delta", [celsius](uint64_t h) { return zvtSetNUCFlagSetpointDeltas(h, celsius, 1); });
        row("high delta", [celsius](uint64_t h) { return zvtSetNUCFlagSetpointDeltas(h, 1, celsius); });
        row("low temperature", [celsius](uint64_t h) { return zvtSetNUCFlagSetpointTemps(h, celsius, 1); });
        row("high temperature", [celsius](uint64_t h) { return zvtSetNUCFlagSetpointTemps(h, 1, celsius); });
    }
    row(
        "deltas", [](uint64_t h) { return zvtSetNUCFlagSetpointDeltas(h, 100, -40); }, true);
    row(
        "temperatures", [](uint64_t h) { return zvtSetNUCFlagSetpointTemps(h, -40, 100); }, true);
    const auto config
        = [&row](const char *name, float maximum, float delta, uint32_t count, uint32_t timeout, bool taken = false) {
              row(
                  name, [=](uint64_t h) { return zvtSetNUCFlagConfig(h, maximum, delta, count, timeout); }, taken);
          };
    config("lowest", 40, 0.01F, 1, 1000, true);
    config("highest", 100, 10, 255, 600'000, true);
    config("maximum too low", 39.9F, 1, 8, 60'000);
    config("maximum too high", 100.1F, 1, 8, 60'000);
    config("maximum no number", nan, 1, 8, 60'000);
    config("delta too low", 70, 0.009F, 8, 60'000);
    config("delta too high", 70, 10.1F, 8, 60'000);
    config("delta no number", 70, nan, 8, 60'000);
    config("count 0", 70, 1, 0, 60'000);
    config("count too high", 70, 1, 256, 60'000);
    config("timeout too low", 70, 1, 8, 999);
    config("timeout too high", 70, 1, 8, 600'001);
    row(
        "frames 0", [](uint64_t h) { return zvtSetNUCNumFrames(h, 0); }, true);
    row(
        "twinklers", [](uint64_t h) { return zvtSetTwinklerSetup(h, true, UINT32_MAX, UINT16_MAX); }, true);
}

void tst_correctionSetup::refusedSettings()
{
    QFETCH(const std::function<int(uint64_t)>, set);
    QFETCH(const bool, taken);
    CorrectionRig rig;
    const auto values = [&rig] {
        QStringList texts;
        for (const auto &setting : rig.camera().settings())
            if (setting.name.startsWith("correctionSetup."))
                texts << setting.name + setting.value.toVariant().toString();
        return texts;
    };
    const QStringList before = values();
    QCOMPARE(before.size(), 20);
    QCOMPARE(set(rig.handle()), taken ? 0 : refused);
    QVERIFY(taken || values() == before);
}

void tst_correctionSetup::otherClientsSeeTheSetup()
{
    CorrectionRig rig;
    float gainMin = 0, gainMax = 0, low = 9, high = 9, maximum = 0, stable = 0;
    uint16_t adLow = 0, adHigh = 0, delta = 0;
    uint32_t frames = 0, count = 0, timeout = 0;
    bool detect = false, twinklers = false;
    const uint64_t handle = rig.handle();
    QCOMPARE(zvtGetNUCSetup(handle, &gainMin, &gainMax, &adLow, &adHigh, &detect), 0);
    QVERIFY(gainMin == 0.75F && gainMax == 1.5F && adLow == 1000 && adHigh == 15000 && detect);
    QCOMPARE(zvtGetTwinklerSetup(handle, &twinklers, &frames, &delta), 0);
    QVERIFY(twinklers && frames == 32 && delta == 200);
    QCOMPARE(zvtGetNUCFlagSetpointDeltas(handle, &low, &high), 0);
    QVERIFY(low == 0 && high == 15);
    QCOMPARE(zvtGetNUCFlagSetpointTemps(handle, &low, &high), 0);
    QVERIFY(low == 20 && high == 35);
    QCOMPARE(zvtGetNUCFlagConfig(handle, &maximum, &stable, &count, &timeout), 0);
    QVERIFY(maximum == 70 && stable == 0.5F && count == 8 && timeout == 60'000);
    uint8_t type = 9, source = 9, number = 9, setpoint = 9;
    bool factory = false;
    QCOMPARE(zvtGetNUCType(handle, &type), 0);
    QCOMPARE(zvtGetNUCSource(handle, &source), 0);
    QCOMPARE(zvtGetNUCNumFrames(handle, &number), 0);
    QCOMPARE(zvtGetNUCFlagSetpointType(handle, &setpoint), 0);
    QCOMPARE(zvtGetNUCUseFactoryBadPixels(handle, &factory), 0);
    QVERIFY(type == 1 && source == 0 && number == 16 && setpoint == 0 && factory);
    // They are the settings that other clients change.
    QVERIFY(rig.set("correctionSetup.type", 2) && rig.set("correctionSetup.flagDeltas", QVariantList{1, 2}));
    QCOMPARE(zvtGetNUCType(handle, &type), 0);
    QCOMPARE(zvtGetNUCFlagSetpointDeltas(handle, &low, &high), 0);
    QVERIFY(type == 2 && low == 1 && high == 2);
    QCOMPARE(zvtSetNUCNumFrames(handle, 44), 0);
    QCOMPARE(settingOf(rig.camera(), "correctionSetup.frames").toInt(), 44);
}

void tst_correctionSetup::camerasWithoutCorrectionsHaveNoFunctions()
{
    LensRig rig("bare");
    const uint64_t handle = rig.handle();
    uint8_t byte = 9;
    uint16_t number = 9;
    bool on = true;
    char text[256] = "old";
    const int absent = emulator::Absent;
    QCOMPARE(zvtGetNUCType(handle, &byte), absent);
    QCOMPARE(zvtStartNUC(handle), absent);
    QCOMPARE(zvtGetNUCStatus(handle, &number, text, sizeof text), absent);
    QCOMPARE(zvtGetVideoOutputNUCEnabled(handle, &on), absent);
    QCOMPARE(zvtDoAutoNUC(handle), absent);
    QCOMPARE(zvtLoadNUC(handle, 0, "a"), absent);
    QVERIFY(byte == 9 && number == 9 && on && QByteArray(text) == "old");
}

void tst_correctionSetup::functionsReturnAtOnce()
{
    CorrectionRig rig;
    const uint64_t handle = rig.handle();
    const size_t mark = rig.camera().gate().mark();
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(zvtStartNUC(handle), 0);
        rig.walkTo(2);
        QCOMPARE(zvtContinueNUC(handle), 0);
        QCOMPARE(zvtAbortNUC(handle), 0);
        QCOMPARE(zvtDoAutoNUC(handle), 0);
        QCOMPARE(zvtAbortNUC(handle), 0);
        QCOMPARE(zvtSetShowBadPixels(handle, true), 0);
        QCOMPARE(zvtUnloadNUC(handle, 2), 0);
        QCOMPARE(zvtSetAutoNUCSetup(handle, true, true, 1, true, 60), 0);
        QCOMPARE(rig.run(), "0 Done");
        QCOMPARE(zvtAcceptNUC(handle), 0);
        QCOMPARE(rig.run(), "0 Done");
        QCOMPARE(zvtDiscardNUC(handle), 0);
        rig.names();
        rig.counts();
    }
    QVERIFY(slowestFunction(rig.camera().gate(), mark) < std::chrono::milliseconds(1));
}

ZVT_TEST(tst_correctionSetup)
#include "tst_correctionSetup.moc"
