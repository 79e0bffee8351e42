#include "tests/platform/CorrectionRig.h"
#include "tests/support/Test.h"

#include <algorithm>
#include <cmath>

using emulator::Clock;

namespace
{

constexpr int refused = emulator::Refused;

/// A camera as an operator uses it, by functions of the SDK alone but for the scene.
class OperatorRig : public CorrectionRig
{
public:
    bool setUp(uint8_t type, uint8_t source)
    {
        const uint64_t h = handle();
        return setType(type, source) && zvtSetNUCNumFrames(h, 16) == 0 && zvtSetNUCPreset(h, 0) == 0
            && zvtSetNUCFlagSetpointType(h, 1) == 0 && zvtSetNUCFlagSetpointDeltas(h, 0, 15) == 0
            && zvtSetNUCFlagSetpointTemps(h, 20, 35) == 0 && zvtSetNUCUseFactoryBadPixels(h, true) == 0
            && zvtSetNUCSetup(h, 0.75F, 1.5F, 1000, 15'000, true) == 0 && zvtSetTwinklerSetup(h, true, 32, 200) == 0;
    }
    /// Makes and accepts a correction.
    bool makeAccepted(uint8_t type, uint8_t source)
    {
        return setUp(type, source) && run() == "0 Done" && zvtAcceptNUC(handle()) == 0;
    }
    double residualAt(double celsius) { return showArea(celsius) ? residual(64) : -1; }
};

QString ratio(double first, double second) { return QString("%1 and %2").arg(first).arg(second); }

} // namespace

/// Runs whose corrections improve the frames, from start to end.
class tst_correctedFrames : public Test
{
    Q_OBJECT

private slots:
    void operatorMakesKeepsAndLoadsACorrection();
    void correctionByTheFlagIsSeenThroughTheLens();
    void onePointFitsItsOwnTemperatureOnly();
    void offsetUpdateBringsAWarmCaseBack();
    void mirroredCorrectionIsWorseThanNone();
    void correctionOfOtherSettingsDoesNotFit_data();
    void correctionOfOtherSettingsDoesNotFit();
    void faultsAreFound();
};

void tst_correctedFrames::operatorMakesKeepsAndLoadsACorrection()
{
    OperatorRig rig;
    const uint64_t h = rig.handle();
    QCOMPARE(zvtUnloadNUC(h, 0), 0);
    const double raw = rig.residualAt(27);
    QVERIFY(rig.showArea(20) && rig.setUp(1, 0));
    QCOMPARE(zvtContinueNUC(h), refused);
    QCOMPARE(zvtAcceptNUC(h), refused);
    QCOMPARE(zvtDiscardNUC(h), refused);
    QCOMPARE(zvtStartNUC(h), 0);
    QCOMPARE(zvtStartNUC(h), refused);
    // The operator places a source before the lens and presses Next, twice.
    QVERIFY(rig.walkTo(2));
    QCOMPARE(zvtContinueNUC(h), 0);
    QVERIFY(rig.walkTo(6));
    QCOMPARE(rig.exposure().scene.secondSource, true);
    QCOMPARE(zvtContinueNUC(h), 0);
    rig.walk();
    QCOMPARE(rig.exposure().scene.secondSource, false);
    QCOMPARE(rig.result(), "0 Done");
    QCOMPARE(zvtAcceptNUC(h), 0);
    QCOMPARE(zvtSaveNUC(h, 0), refused);
    QCOMPARE(zvtSaveNUCAs(h, 0, "Bench"), 0);
    QCOMPARE(zvtUnloadNUC(h, 0), 0);
    QVERIFY(std::abs(rig.residualAt(27) - raw) < 1);
    QCOMPARE(zvtLoadNUC(h, 0, "bench"), refused);
    QCOMPARE(zvtLoadNUC(h, 0, "Bench"), 0);
    const double corrected = rig.residualAt(27);
    QVERIFY2(corrected > 0 && corrected < raw / 50, qPrintable(ratio(raw, corrected)));
}

void tst_correctedFrames::correctionByTheFlagIsSeenThroughTheLens()
{
    OperatorRig rig;
    QCOMPARE(zvtUnloadNUC(rig.handle(), 0), 0);
    const double raw = rig.residualAt(27);
    QVERIFY(rig.makeAccepted(1, 1));
    Clock::advance(1000);
    const double corrected = rig.residualAt(27);
    // The small window has little of the shading of the lens.
    QVERIFY2(corrected > 0 && corrected < raw / 10, qPrintable(ratio(raw, corrected)));
}

void tst_correctedFrames::onePointFitsItsOwnTemperatureOnly()
{
    OperatorRig rig;
    QVERIFY(rig.showArea(27) && rig.makeAccepted(0, 0));
    QVERIFY2(rig.residualAt(27) < 3, qPrintable(QString::number(rig.residualAt(27))));
    QVERIFY2(rig.residualAt(35) > 60, qPrintable(QString::number(rig.residualAt(35))));
}

void tst_correctedFrames::offsetUpdateBringsAWarmCaseBack()
{
    OperatorRig rig;
    Clock::advance(7'200'000);
    QVERIFY(rig.makeAccepted(1, 0));
    const double fresh = rig.residualAt(27);
    QVERIFY(rig.set("environment.ambient", 28));
    Clock::advance(7'200'000);
    const double stale = rig.residualAt(27);
    QVERIFY2(stale > 5 * fresh, qPrintable(ratio(fresh, stale)));
    QVERIFY(rig.makeAccepted(2, 0));
    const double updated = rig.residualAt(27);
    QVERIFY2(updated < 2.5, qPrintable(ratio(stale, updated)));
}

void tst_correctedFrames::mirroredCorrectionIsWorseThanNone()
{
    OperatorRig rig;
    const double raw = rig.showArea(27) ? rig.rawResidual() : -1;
    QVERIFY(rig.showArea(20) && rig.makeAccepted(1, 0));
    QVERIFY(rig.residualAt(27) < raw / 50);
    QVERIFY(rig.set("image.reverted", true));
    // The frames are mirrored together with their faulty pixels.
    std::vector<uint8_t> faults = rig.faults();
    const auto width = rig.window().width;
    for (auto row = faults.begin(); row != faults.end(); row += width)
        std::reverse(row, row + width);
    const auto deviation = [&faults](const FrameRig::Counts &counts) {
        emulator::image::Statistics statistics(counts.size(), faults);
        statistics.add(counts);
        return statistics.spatialDeviation();
    };
    const double mirrored = deviation(rig.output());
    const double mirroredRaw = deviation(rig.newest());
    QVERIFY2(mirrored > mirroredRaw, qPrintable(ratio(mirroredRaw, mirrored)));
}

void tst_correctedFrames::correctionOfOtherSettingsDoesNotFit_data()
{
    QTest::addColumn<QByteArray>("setting");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("integration time") << QByteArray("sensor.integrationTime") << QVariant(4.0);
    QTest::newRow("gain") << QByteArray("gain.level") << QVariant(1);
}

void tst_correctedFrames::correctionOfOtherSettingsDoesNotFit()
{
    QFETCH(const QByteArray, setting);
    QFETCH(const QVariant, value);
    OperatorRig rig;
    QVERIFY(rig.makeAccepted(1, 0));
    const double fresh = rig.residualAt(27);
    QVERIFY(rig.set(setting.constData(), value));
    const double other = rig.residualAt(27);
    QVERIFY2(other > 5 * fresh, qPrintable(ratio(fresh, other)));
}

void tst_correctedFrames::faultsAreFound()
{
    OperatorRig rig;
    QVERIFY(rig.makeAccepted(1, 0));
    const auto faults = rig.faults();
    const auto table = rig.exposure().correction;
    QVERIFY(table && table->flags.size() == faults.size());
    int trueFaults = 0, found = 0, wrong = 0;
    for (size_t i = 0; i < faults.size(); ++i) {
        const bool bad = (table->flags[i] & emulator::image::CorrectionTable::Bad) != 0;
        trueFaults += faults[i] != 0 ? 1 : 0;
        found += bad && faults[i] != 0 ? 1 : 0;
        wrong += bad && faults[i] == 0 ? 1 : 0;
    }
    QVERIFY2(trueFaults > 20 && found >= 0.95 * trueFaults, qPrintable(ratio(trueFaults, found)));
    QVERIFY2(wrong <= 2, qPrintable(QString::number(wrong)));
    QCOMPARE(rig.counts()[0], static_cast<uint32_t>(found + wrong));
}

ZVT_TEST(tst_correctedFrames)
#include "tst_correctedFrames.moc"
