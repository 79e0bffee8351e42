#include "tests/support/Test.h"
#include "tests/unit/StatusRig.h"

#include <QSignalSpy>

#include <cmath>

/// The poll of the Status tab: the clock, the temperatures, the operating hours and the saturation.
class tst_StatusTabModelPoll : public Test
{
    Q_OBJECT

private slots:
    void firstPollReadsEverything();
    void pollsFollowTheirSchedule();
    void slowPollLosesTicksAndDelaysTheSchedule();
    void restartDuringASlowPollReadsEverythingNext();
    void timerRunsWhileSeenAndConnected();
    void hiddenPageMakesNoCall();
    void realTimeClockIsShownWithFourDigitsOfYear();
    void irigTimeIsShown_data();
    void irigTimeIsShown();
    void failedClockLeavesTheTime();
    void clockIsChosenAfreshWhenTheReadHasEnded();
    void saturationAndTimeAreSignalledOnEveryTick();
    void coldRuleOfACryocooler_data();
    void coldRuleOfACryocooler();
    void coldRuleOfAThermoelectricCooler_data();
    void coldRuleOfAThermoelectricCooler();
    void failedCoolerTypeLeavesThreeValues();
    void lensWithoutSensorIsNotAsked();
    void secondInternalReadingWins();
    void unchangedTemperatureIsNotSignalled();
    void firstTemperatureIsSignalledEvenIfZero();
    void failedFirstTemperatureIsNotSignalled();
    void absurdValuesAreSurvived();
    void operatingTimeIsShownInHoursAndMinutes();
};

void tst_StatusTabModelPoll::firstPollReadsEverything()
{
    Status status;
    QCOMPARE(status.show(), clockCalls + temperatureCalls + QStringList{"zvtGetOperatingTime"});
}

void tst_StatusTabModelPoll::pollsFollowTheirSchedule()
{
    Status status;
    status.show();
    for (int tick = 1; tick <= 120; ++tick) {
        QStringList expected = clockCalls;
        if (tick % 5 == 0)
            expected += temperatureCalls;
        if (tick % 60 == 0)
            expected << "zvtGetOperatingTime";
        QCOMPARE(status.poll(), expected);
    }
}

void tst_StatusTabModelPoll::slowPollLosesTicksAndDelaysTheSchedule()
{
    Status status;
    status.show();
    status.rig.gate().hold("zvtGetSaturatedFlag");
    size_t mark = status.rig.gate().mark();
    QMetaObject::invokeMethod(status.timer, "timeout");
    QVERIFY(status.rig.gate().waitHeld("zvtGetSaturatedFlag"));
    for (int lost = 0; lost < 4; ++lost)
        QMetaObject::invokeMethod(status.timer, "timeout");
    status.rig.gate().release("zvtGetSaturatedFlag");
    CameraRig::settle();
    QCOMPARE(status.taskCalls(mark), clockCalls);
    // This was tick 1 only, although it was slow; tick 5 reads the temperatures.
    for (int tick = 2; tick < 5; ++tick)
        QCOMPARE(status.poll(), clockCalls);
    QCOMPARE(status.poll(), clockCalls + temperatureCalls);
}

void tst_StatusTabModelPoll::restartDuringASlowPollReadsEverythingNext()
{
    Status status;
    status.show();
    status.rig.gate().hold("zvtGetSaturatedFlag");
    QMetaObject::invokeMethod(status.timer, "timeout");
    QVERIFY(status.rig.gate().waitHeld("zvtGetSaturatedFlag"));
    status.model->setVisible(false);
    status.model->setVisible(true); // Its immediate poll is dropped, since the old one still runs.
    status.rig.gate().release("zvtGetSaturatedFlag");
    CameraRig::settle();
    QCOMPARE(status.poll(), clockCalls + temperatureCalls + QStringList{"zvtGetOperatingTime"});
}

void tst_StatusTabModelPoll::timerRunsWhileSeenAndConnected()
{
    Status status;
    status.model->setVisible(true);
    QVERIFY(status.timer->isActive());
    status.rig.camera().disconnect();
    CameraRig::settle();
    QVERIFY(!status.timer->isActive());
    status.rig.camera().connect();
    CameraRig::settle();
    QVERIFY(status.timer->isActive());
    status.model->setVisible(false);
    QVERIFY(!status.timer->isActive());
    status.rig.camera().disconnect();
    status.model->setVisible(true);
    QVERIFY(!status.timer->isActive());
}

void tst_StatusTabModelPoll::hiddenPageMakesNoCall()
{
    Status status;
    status.show();
    QVERIFY(status.timer->isActive());
    status.model->setVisible(false);
    QVERIFY(!status.timer->isActive());
    const size_t mark = status.rig.gate().mark();
    CameraRig::settle();
    QCOMPARE(status.rig.callsSince(mark), QStringList());
}

// The clock

void tst_StatusTabModelPoll::realTimeClockIsShownWithFourDigitsOfYear()
{
    Status status;
    status.rig.gate().script("zvtGetRealTimeClock", QVariantList{7, 2, 3, 4, 5, 6});
    status.show();
    QCOMPARE(status.model->time(), QStringLiteral("2007-02-03 04:05:06"));
}

void tst_StatusTabModelPoll::irigTimeIsShown_data()
{
    QTest::addColumn<int>("year");
    QTest::addColumn<bool>("locked");
    QTest::addColumn<QString>("text");
    QTest::newRow("no year, free") << 0 << false << "045:07:05:09.012345  ";
    QTest::newRow("no year, locked") << 0 << true << "045:07:05:09.012345 L";
    QTest::newRow("year, free") << 2024 << false << "2024-045:07:05:09.012345  ";
    QTest::newRow("year, locked") << 2024 << true << "2024-045:07:05:09.012345 L";
    QTest::newRow("short year") << 7 << true << "0007-045:07:05:09.012345 L";
}

void tst_StatusTabModelPoll::irigTimeIsShown()
{
    QFETCH(int, year);
    QFETCH(bool, locked);
    QFETCH(QString, text);
    Status status;
    status.rig.gate().script("controller.HasRealTimeClock", false);
    status.rig.gate().script("zvtGetIRIGTime", QVariantList{year, 45, 7, 5, 9, 12, 345});
    status.rig.gate().script("zvtGetIRIGLocked", locked);
    QCOMPARE(status.show().mid(0, 4),
             QStringList({"zvtGetSaturatedFlag", "controller.HasRealTimeClock", "zvtGetIRIGTime", "zvtGetIRIGLocked"}));
    QCOMPARE(status.model->time(), text);
}

void tst_StatusTabModelPoll::failedClockLeavesTheTime()
{
    Status status;
    status.show();
    const QString time = status.model->time();
    QVERIFY(!time.isEmpty());
    const QSignalSpy spy(status.model, &StatusTabModel::timeChanged);
    status.rig.gate().failNext("zvtGetRealTimeClock");
    emulator::Clock::advance(5000);
    status.poll();
    QCOMPARE(status.model->time(), time);
    QCOMPARE(spy.size(), 0);
    status.poll();
    QVERIFY(status.model->time() != time);
}

void tst_StatusTabModelPoll::clockIsChosenAfreshWhenTheReadHasEnded()
{
    Status status;
    const size_t mark = status.rig.gate().mark();
    status.show();
    QVERIFY(status.guiCalls(mark).contains("controller.HasRealTimeClock"));
    // A time that was read from the other kind of clock is not published.
    const QString time = status.model->time();
    const QSignalSpy spy(status.model, &StatusTabModel::timeChanged);
    QMetaObject::invokeMethod(status.timer, "timeout");
    QThreadPool::globalInstance()->waitForDone();
    status.rig.gate().script("controller.HasRealTimeClock", false);
    CameraRig::settle();
    QCOMPARE(status.model->time(), time);
    QCOMPARE(spy.size(), 0);
}

// Values of the poll

void tst_StatusTabModelPoll::saturationAndTimeAreSignalledOnEveryTick()
{
    Status status;
    CameraRig::coolDetector();
    const QSignalSpy saturated(status.model, &StatusTabModel::saturatedChanged);
    const QSignalSpy time(status.model, &StatusTabModel::timeChanged);
    status.show();
    status.poll();
    QCOMPARE(saturated.size(), 2);
    QCOMPARE(time.size(), 2);
    QVERIFY(!status.model->saturated());
    status.rig.gate().script("zvtGetSaturatedFlag", true);
    status.poll();
    QVERIFY(status.model->saturated());
    // A failed read counts as not saturated.
    status.rig.gate().script("zvtGetSaturatedFlag", {});
    status.rig.gate().failNext("zvtGetSaturatedFlag");
    status.poll();
    QVERIFY(!status.model->saturated());
    QCOMPARE(saturated.size(), 4);
}

void tst_StatusTabModelPoll::coldRuleOfACryocooler_data()
{
    QTest::addColumn<double>("temperature");
    QTest::addColumn<double>("coldTemperature"); // Negative: its read fails.
    QTest::addColumn<bool>("cold");
    QTest::newRow("below") << 76.5 << 77.0 << true;
    QTest::newRow("equal") << 77.0 << 77.0 << true;
    QTest::newRow("above") << 77.5 << 77.0 << false;
    QTest::newRow("fallback, cold") << 80.0 << -1.0 << true;
    QTest::newRow("fallback, warm") << 80.5 << -1.0 << false;
}

void tst_StatusTabModelPoll::coldRuleOfACryocooler()
{
    QFETCH(double, temperature);
    QFETCH(double, coldTemperature);
    QFETCH(bool, cold);
    Status status;
    status.rig.gate().script("zvtMfgGetCoolerType", 0);
    status.rig.gate().script("zvtGetFPATemperature", temperature);
    if (coldTemperature < 0)
        status.rig.gate().failAlways("zvtGetFPAColdTemperature");
    else
        status.rig.gate().script("zvtGetFPAColdTemperature", coldTemperature);
    status.show();
    QCOMPARE(status.model->fpaTemp(), temperature);
    QCOMPARE(status.model->fpaCold(), cold);
    QVERIFY(!status.model->fpaTempCelsius());
}

void tst_StatusTabModelPoll::coldRuleOfAThermoelectricCooler_data()
{
    QTest::addColumn<double>("celsius");
    QTest::addColumn<QVariant>("setpoint"); // Invalid: its read fails.
    QTest::addColumn<QVariant>("power"); // As above.
    QTest::addColumn<bool>("cold");
    QTest::newRow("settled below") << -20.375 << QVariant(-20.0) << QVariant(true) << true;
    QTest::newRow("settled above") << -19.625 << QVariant(-20.0) << QVariant(true) << true;
    QTest::newRow("too warm") << -19.25 << QVariant(-20.0) << QVariant(true) << false;
    QTest::newRow("too cold") << -20.75 << QVariant(-20.0) << QVariant(true) << false;
    QTest::newRow("power off") << -20.0 << QVariant(-20.0) << QVariant(false) << false;
    QTest::newRow("power unknown") << -20.0 << QVariant(-20.0) << QVariant() << false;
    QTest::newRow("fallback setpoint") << 10.0 << QVariant() << QVariant(true) << true;
    QTest::newRow("far from the fallback setpoint") << -20.0 << QVariant() << QVariant(true) << false;
}

void tst_StatusTabModelPoll::coldRuleOfAThermoelectricCooler()
{
    QFETCH(double, celsius);
    QFETCH(QVariant, setpoint);
    QFETCH(QVariant, power);
    QFETCH(bool, cold);
    Status status;
    const auto scriptOrFail = [&](const char *name, const QVariant &value) {
        if (value.isValid())
            status.rig.gate().script(name, value);
        else
            status.rig.gate().failAlways(name);
    };
    status.rig.gate().script("zvtMfgGetCoolerType", 1);
    status.rig.gate().script("zvtGetFPATemperature", celsius + 273.15);
    scriptOrFail("zvtMfgGetCoolerSetpoint", setpoint);
    scriptOrFail("zvtMfgGetCoolerPowerEnabled", power);
    const QStringList calls = status.show();
    QVERIFY(calls.contains("zvtMfgGetCoolerSetpoint") && calls.contains("zvtMfgGetCoolerPowerEnabled"));
    QVERIFY(!calls.contains("zvtGetFPAColdTemperature"));
    QCOMPARE(status.model->fpaCold(), cold);
    QVERIFY(status.model->fpaTempCelsius());
}

void tst_StatusTabModelPoll::failedCoolerTypeLeavesThreeValues()
{
    Status status;
    status.rig.gate().failNext("zvtMfgGetCoolerType");
    const QSignalSpy cold(status.model, &StatusTabModel::fpaColdChanged);
    const QSignalSpy celsius(status.model, &StatusTabModel::fpaTempCelsiusChanged);
    const QStringList calls = status.show();
    QVERIFY(!calls.contains("zvtGetFPAColdTemperature") && !calls.contains("zvtMfgGetCoolerSetpoint"));
    QVERIFY(status.model->fpaTemp() > 0.0);
    QCOMPARE(cold.size() + celsius.size(), 0);
}

void tst_StatusTabModelPoll::lensWithoutSensorIsNotAsked()
{
    Status status;
    status.rig.gate().script("zvtGetHasLensTemperature", false);
    QVERIFY(!status.show().contains("zvtGetLensTemperature"));
    QVERIFY(!status.model->hasLensTemp());
}

void tst_StatusTabModelPoll::secondInternalReadingWins()
{
    Status status;
    status.rig.gate().script("zvtGetSCTemperatures", QVariantList{21.5, 22.5, 23.5});
    status.rig.gate().script("zvtGetRSTemperatures", 33.5);
    QList<double> shown;
    QObject::connect(status.model, &StatusTabModel::internalChassisTempChanged, this,
                     [&] { shown << status.model->internalChassisTemp(); });
    status.show();
    QCOMPARE(shown, (QList<double>{23.5, 33.5}));
    QCOMPARE(status.model->frontPanelTemp(), 21.5);
    QCOMPARE(status.model->airGapTemp(), 22.5);
}

void tst_StatusTabModelPoll::unchangedTemperatureIsNotSignalled()
{
    Status status;
    for (const char *name : {"zvtGetFPATemperature", "zvtGetLensTemperature", "zvtGetRSTemperatures"})
        status.rig.gate().script(name, 42.5);
    status.rig.gate().script("zvtGetSCTemperatures", QVariantList{1.5, 2.5, 42.5});
    status.show();
    const QSignalSpy fpa(status.model, &StatusTabModel::fpaTempChanged);
    const QSignalSpy lens(status.model, &StatusTabModel::lensTempChanged);
    const QSignalSpy internal(status.model, &StatusTabModel::internalChassisTempChanged);
    const QSignalSpy panel(status.model, &StatusTabModel::frontPanelTempChanged);
    for (int tick = 1; tick <= 5; ++tick)
        status.poll();
    QCOMPARE(fpa.size() + lens.size() + internal.size() + panel.size(), 0);
}

// A page shows a value only after its first signal, and the values start at zero.
void tst_StatusTabModelPoll::firstTemperatureIsSignalledEvenIfZero()
{
    Status status;
    for (const char *name : {"zvtGetFPATemperature", "zvtGetLensTemperature", "zvtGetRSTemperatures"})
        status.rig.gate().script(name, 0.0);
    status.rig.gate().script("zvtGetSCTemperatures", QVariantList{0.0, 0.0, 0.0});
    const QSignalSpy fpa(status.model, &StatusTabModel::fpaTempChanged);
    const QSignalSpy lens(status.model, &StatusTabModel::lensTempChanged);
    const QSignalSpy internal(status.model, &StatusTabModel::internalChassisTempChanged);
    const QSignalSpy panel(status.model, &StatusTabModel::frontPanelTempChanged);
    const QSignalSpy gap(status.model, &StatusTabModel::airGapTempChanged);
    status.show();
    QCOMPARE(QList({fpa.size(), lens.size(), internal.size(), panel.size(), gap.size()}),
             QList<qsizetype>({1, 1, 1, 1, 1}));
    for (int tick = 1; tick <= 5; ++tick)
        status.poll();
    QCOMPARE(fpa.size() + lens.size() + internal.size() + panel.size() + gap.size(), 5);
}

void tst_StatusTabModelPoll::failedFirstTemperatureIsNotSignalled()
{
    Status status;
    status.rig.gate().failNext("zvtGetSCTemperatures");
    const QSignalSpy panel(status.model, &StatusTabModel::frontPanelTempChanged);
    status.show();
    QCOMPARE(panel.size(), 0);
    QCOMPARE(status.model->frontPanelTemp(), 0.0);
}

void tst_StatusTabModelPoll::absurdValuesAreSurvived()
{
    Status status;
    status.rig.gate().script("zvtGetRealTimeClock", QVariantList{255, 255, 0, 255, 255, 255});
    status.rig.gate().script("zvtGetFPATemperature", qQNaN());
    status.rig.gate().script("zvtGetOperatingTime", 4294967295U);
    status.show();
    QCOMPARE(status.model->time(), QStringLiteral("2255-255-00 255:255:255"));
    QVERIFY(std::isnan(status.model->fpaTemp()));
    QVERIFY(!status.model->fpaCold());
    QCOMPARE(status.model->operatingTime(), QStringLiteral("71582788 h 15 min"));
    const QSignalSpy fpa(status.model, &StatusTabModel::fpaTempChanged);
    for (int tick = 1; tick <= 5; ++tick)
        status.poll();
    QCOMPARE(fpa.size(), 0);
}

void tst_StatusTabModelPoll::operatingTimeIsShownInHoursAndMinutes()
{
    Status status;
    status.rig.gate().script("zvtGetOperatingTime", 60 * 1234 + 7);
    status.show();
    QCOMPARE(status.model->operatingTime(), QStringLiteral("1234 h 07 min"));
}

ZVT_TEST(tst_StatusTabModelPoll)
#include "tst_StatusTabModelPoll.moc"
