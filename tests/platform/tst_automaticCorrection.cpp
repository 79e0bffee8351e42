#include "tests/platform/CorrectionRig.h"
#include "tests/support/Test.h"

#include <QFile>

#include <cmath>
#include <functional>

using emulator::Clock;

namespace
{

constexpr int refused = emulator::Refused;
constexpr int64_t second = 1000;

} // namespace

/// Offset updates that the camera makes by itself.
class tst_automaticCorrection : public Test
{
    Q_OBJECT

private slots:
    void showsItsStatusesAndEndsWithAnEvent();
    void updatesEveryPresetInUse();
    void isRefused_data();
    void isRefused();
    void startsAfterATime();
    void startsAfterAChangeOfTemperature();
    void waitsForRunsAndDecisions_data();
    void waitsForRunsAndDecisions();
    void outOfRangeValuesAreKeptAndCountAsOne();
    void failureWaitsForTheNextTime();
    void improvesAStaleCorrection();
    void endsWithoutALookAtItsStatus();
    void needsAFlag();
    void canBeAborted();
    void needsFrames();
    void hotFlagEndsIt();
    void leavesTheFactoryCorrectionAlone();
};

void tst_automaticCorrection::showsItsStatusesAndEndsWithAnEvent()
{
    CorrectionRig rig;
    QCOMPARE(zvtSetNUCNumFrames(rig.handle(), 50), 0);
    const int64_t before = Clock::now();
    QCOMPARE(zvtDoAutoNUC(rig.handle()), 0);
    QCOMPARE(Clock::now(), before);
    const auto steps = rig.walk();
    QCOMPARE(CorrectionRig::statuses(steps), "13 3 4 5 12 0");
    int64_t sum = 0;
    for (const auto &step : steps)
        sum += step.milliseconds;
    QVERIFY2(std::abs(sum - 1500 - 500) <= 100, qPrintable(QString::number(sum)));
    QCOMPARE(rig.result(), "0 Done");
    QCOMPARE(rig.event(), ZVT_EVENT_SETTINGS_CHANGED);
    QCOMPARE(rig.event(), ZVT_EVENT_NONE);
    QCOMPARE(rig.name(), "Factory 2 ms");
    // It needs no decision.
    QCOMPARE(zvtAcceptNUC(rig.handle()), refused);
    Clock::advance(second);
    QCOMPARE(rig.exposure().optics.flagCover, 0.0);
}

void tst_automaticCorrection::updatesEveryPresetInUse()
{
    CorrectionRig rig;
    QVERIFY(rig.set("sensor.sequencingMode", 1));
    QCOMPARE(zvtLoadNUC(rig.handle(), 3, "Factory 1 ms"), 0);
    rig.events();
    QCOMPARE(zvtDoAutoNUC(rig.handle()), 0);
    // Presets 0, 1 and 3 have a correction.
    QCOMPARE(CorrectionRig::statuses(rig.walk()), "13 3 4 5 12 13 3 4 5 12 13 3 4 5 12 0");
    QCOMPARE(rig.events(), 1);
    QVERIFY(rig.counts(1)[0] > 0 && rig.counts(3)[0] > 0);
    QCOMPARE(rig.counts(2)[0], 0U);
}

void tst_automaticCorrection::isRefused_data()
{
    using Prepare = std::function<bool(CorrectionRig &)>;
    QTest::addColumn<Prepare>("prepare");
    const auto row = [](const char *name, const Prepare &prepare) { QTest::newRow(name) << prepare; };
    row("without a correction", [](CorrectionRig &rig) { return zvtUnloadNUC(rig.handle(), 0) == 0; });
    row("correction in another preset only", [](CorrectionRig &rig) { return rig.set("sensor.activePreset", 2); });
    row("without a flag", [](CorrectionRig &rig) {
        rig.openWith(R"({"flag": null})");
        return true;
    });
    row("during a run", [](CorrectionRig &rig) { return zvtStartNUC(rig.handle()) == 0; });
    row("during another one", [](CorrectionRig &rig) { return zvtDoAutoNUC(rig.handle()) == 0; });
    row("while a correction is pending", [](CorrectionRig &rig) { return rig.run() == "0 Done"; });
}

void tst_automaticCorrection::isRefused()
{
    QFETCH(const std::function<bool(CorrectionRig &)>, prepare);
    CorrectionRig rig;
    QVERIFY(prepare(rig));
    QCOMPARE(zvtDoAutoNUC(rig.handle()), refused);
}

void tst_automaticCorrection::startsAfterATime()
{
    CorrectionRig rig;
    QCOMPARE(zvtSetAutoNUCSetup(rig.handle(), true, false, 1, true, 10), 0);
    Clock::advance(600 * second - 1);
    QCOMPARE(rig.status(), uint16_t(0));
    Clock::advance(1);
    QCOMPARE(rig.status(), uint16_t(13));
    rig.walk();
    QCOMPARE(rig.events(), 1);
    Clock::advance(590 * second);
    QCOMPARE(rig.status(), uint16_t(0));
    Clock::advance(10 * second);
    QCOMPARE(rig.status(), uint16_t(13));
    rig.walk();
    // Another correction starts the time again; a switched-off one never comes.
    Clock::advance(500 * second);
    QVERIFY(rig.setType(2));
    QCOMPARE(rig.run(), "0 Done");
    QCOMPARE(zvtAcceptNUC(rig.handle()), 0);
    Clock::advance(590 * second);
    QCOMPARE(rig.status(), uint16_t(0));
    QCOMPARE(zvtSetAutoNUCSetup(rig.handle(), false, false, 1, true, 10), 0);
    Clock::advance(3600 * second);
    QCOMPARE(rig.status(), uint16_t(0));
}

void tst_automaticCorrection::startsAfterAChangeOfTemperature()
{
    CorrectionRig rig;
    Clock::advance(7200 * second);
    QCOMPARE(zvtSetAutoNUCSetup(rig.handle(), true, true, 2, false, 1), 0);
    Clock::advance(7200 * second);
    QCOMPARE(rig.status(), uint16_t(0));
    QVERIFY(rig.set("environment.ambient", 24.9));
    Clock::advance(7200 * second);
    QCOMPARE(rig.status(), uint16_t(0));
    QVERIFY(rig.set("environment.ambient", 25.1));
    Clock::advance(7200 * second);
    QCOMPARE(rig.status(), uint16_t(13));
    rig.walk();
    QVERIFY(rig.set("environment.ambient", 23.3));
    Clock::advance(7200 * second);
    QCOMPARE(rig.status(), uint16_t(0));
    QVERIFY(rig.set("environment.ambient", 22.9));
    Clock::advance(7200 * second);
    QCOMPARE(rig.status(), uint16_t(13));
}

void tst_automaticCorrection::waitsForRunsAndDecisions_data()
{
    QTest::addColumn<bool>("accepted");
    QTest::newRow("accepted: the time starts again") << true;
    QTest::newRow("discarded: it is late already") << false;
}

void tst_automaticCorrection::waitsForRunsAndDecisions()
{
    QFETCH(const bool, accepted);
    CorrectionRig rig;
    QCOMPARE(zvtSetAutoNUCSetup(rig.handle(), true, false, 1, true, 1), 0);
    QCOMPARE(zvtStartNUC(rig.handle()), 0);
    QVERIFY(rig.walkTo(2));
    Clock::advance(120 * second);
    QCOMPARE(rig.status(), uint16_t(2));
    QCOMPARE(CorrectionRig::statuses(rig.walk()), "2 4 5 6 8 9 10 11 14 12 0");
    Clock::advance(120 * second);
    QCOMPARE(rig.status(), uint16_t(0));
    QCOMPARE(accepted ? zvtAcceptNUC(rig.handle()) : zvtDiscardNUC(rig.handle()), 0);
    if (accepted) {
        Clock::advance(60 * second - 1);
        QCOMPARE(rig.status(), uint16_t(0));
        Clock::advance(1);
    }
    QCOMPARE(rig.status(), uint16_t(13));
}

void tst_automaticCorrection::outOfRangeValuesAreKeptAndCountAsOne()
{
    CorrectionRig rig;
    bool enabled = false, useTemp = true, useTime = false;
    float temp = 0;
    uint32_t time = 9;
    QCOMPARE(zvtSetAutoNUCSetup(rig.handle(), true, false, -5, true, 0), 0);
    QCOMPARE(zvtGetAutoNUCSetup(rig.handle(), &enabled, &useTemp, &temp, &useTime, &time), 0);
    QVERIFY(enabled && !useTemp && temp == -5 && useTime && time == 0);
    Clock::advance(59 * second);
    QCOMPARE(rig.status(), uint16_t(0));
    Clock::advance(second);
    QCOMPARE(rig.status(), uint16_t(13));
    rig.walk();
    QCOMPARE(zvtSetAutoNUCSetup(rig.handle(), true, true, 0, false, 604'801), 0);
    Clock::advance(second);
    QCOMPARE(rig.status(), uint16_t(0));
    QCOMPARE(zvtSetAutoNUCSetup(rig.handle(), false, true, NAN, false, 1), refused);
}

void tst_automaticCorrection::failureWaitsForTheNextTime()
{
    CorrectionRig rig;
    QCOMPARE(zvtSetAutoNUCSetup(rig.handle(), true, false, 1, true, 1), 0);
    QVERIFY(rig.set("cooler.setpoint", 90));
    Clock::advance(60 * second);
    QCOMPARE(CorrectionRig::statuses(rig.walk()), "13 0");
    QCOMPARE(rig.result(), "2 Invalid parameters");
    QCOMPARE(rig.status(), uint16_t(0));
    QCOMPARE(rig.events(), 2); // Also that of the setpoint.
    Clock::advance(60 * second);
    QCOMPARE(rig.status(), uint16_t(13));
}

void tst_automaticCorrection::improvesAStaleCorrection()
{
    CorrectionRig rig;
    QVERIFY(rig.set("environment.ambient", 35));
    Clock::advance(7200 * second);
    QVERIFY(rig.showArea(27));
    const double stale = rig.residual();
    QCOMPARE(zvtDoAutoNUC(rig.handle()), 0);
    rig.walk();
    Clock::advance(second);
    const double updated = rig.residual();
    QVERIFY2(updated > 0 && updated < stale / 3, qPrintable(QString("%1 %2").arg(stale).arg(updated)));
}

void tst_automaticCorrection::endsWithoutALookAtItsStatus()
{
    CorrectionRig rig;
    QCOMPARE(zvtDoAutoNUC(rig.handle()), 0);
    int events = 0;
    for (int i = 0; i < 10; ++i) {
        Clock::advance(second);
        events += rig.event() == ZVT_EVENT_SETTINGS_CHANGED ? 1 : 0;
    }
    QCOMPARE(events, 1);
    QCOMPARE(rig.exposure().optics.flagCover, 0.0);
}

void tst_automaticCorrection::needsAFlag()
{
    CorrectionRig rig;
    rig.openWith(R"({"flag": null})");
    QCOMPARE(zvtSetAutoNUCSetup(rig.handle(), true, true, 1, true, 1), refused);
    QVERIFY(!rig.set("automaticCorrection.enabled", true));
    QCOMPARE(zvtSetAutoNUCSetup(rig.handle(), false, true, 3, true, 4), 0);
    QCOMPARE(settingOf(rig.camera(), "automaticCorrection.deltaTime").toInt(), 4);
}

void tst_automaticCorrection::canBeAborted()
{
    CorrectionRig rig;
    QCOMPARE(zvtDoAutoNUC(rig.handle()), 0);
    QVERIFY(rig.walkTo(4));
    QCOMPARE(zvtAbortNUC(rig.handle()), 0);
    QCOMPARE(rig.result(), "1 Stopped");
    Clock::advance(second);
    QCOMPARE(rig.exposure().optics.flagCover, 0.0);
    QCOMPARE(rig.events(), 1);
}

void tst_automaticCorrection::needsFrames()
{
    CorrectionRig rig;
    QCOMPARE(zvtSetNUCNumFrames(rig.handle(), 0), 0);
    QCOMPARE(zvtDoAutoNUC(rig.handle()), 0);
    QCOMPARE(CorrectionRig::statuses(rig.walk()), "13 0");
    QCOMPARE(rig.result(), "2 Invalid parameters");
}

void tst_automaticCorrection::hotFlagEndsIt()
{
    CorrectionRig rig;
    QVERIFY(rig.set("flag.power", true) && rig.set("flag.stuck", true));
    double celsius = 0;
    for (int i = 0; i < 60 && celsius < 45; ++i) {
        Clock::advance(second);
        celsius = rig.exposure().optics.flagCelsius;
    }
    QVERIFY2(celsius >= 45 && celsius < 47, qPrintable(QString::number(celsius)));
    QCOMPARE(zvtSetNUCFlagConfig(rig.handle(), 40, 0.5F, 8, 60'000), 0);
    QCOMPARE(zvtDoAutoNUC(rig.handle()), 0);
    rig.walk();
    QCOMPARE(rig.result(), "3 The flag is too hot");
    QCOMPARE(settingOf(rig.camera(), "flag.power").toBool(), false);
}

void tst_automaticCorrection::leavesTheFactoryCorrectionAlone()
{
    CorrectionRig rig;
    QCOMPARE(rig.name(), "Factory 2 ms");
    QCOMPARE(zvtDoAutoNUC(rig.handle()), 0);
    rig.walk();
    QCOMPARE(rig.result(), "0 Done");
    QCOMPARE(rig.name(), "Factory 2 ms");
    bool factory = false;
    QCOMPARE(zvtIsFactoryNUC(rig.handle(), "Factory 2 ms", &factory), 0);
    QVERIFY(factory);
    QVERIFY(!QFile::exists(rig.camera().folder() + "/nucs/Factory 2 ms.nuc"));
}

ZVT_TEST(tst_automaticCorrection)
#include "tst_automaticCorrection.moc"
