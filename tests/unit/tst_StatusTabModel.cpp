#include "tests/support/Test.h"
#include "tests/support/modelOf.h"

#include "status/StatusTabModel.h"

#include <QSignalSpy>

#include <cmath>

namespace
{

/// A Status tab below a root, and what a test wants to know of it.
struct Status {
    explicit Status(const QString &profile = QStringLiteral("everything"), bool connected = true)
        : rig(profile, connected), root(rig.controller(), nullptr), model(root.statusTabModel())
    {
        timer = model->findChild<QTimer *>(QStringLiteral("updateTimeTimer"));
    }

    /// One turn of the timer, to its end. Gives the calls of its task.
    QStringList poll()
    {
        const size_t mark = rig.gate().mark();
        QMetaObject::invokeMethod(timer, "timeout");
        CameraRig::settle();
        return taskCalls(mark);
    }

    /// Shows the page, which polls at once.
    QStringList show()
    {
        const size_t mark = rig.gate().mark();
        model->setVisible(true);
        CameraRig::settle();
        return taskCalls(mark);
    }

    QStringList refresh()
    {
        const size_t mark = rig.gate().mark();
        model->refresh();
        CameraRig::settle();
        return taskCalls(mark);
    }

    QStringList taskCalls(size_t mark) { return calls(mark, false); }
    QStringList guiCalls(size_t mark) { return calls(mark, true); }

    QStringList calls(size_t mark, bool gui)
    {
        QStringList names;
        for (const auto &call : rig.gate().callsSince(mark))
            if ((call.thread == std::this_thread::get_id()) == gui && call.name != "controller.GetHandle"
                && call.name != "controller.IsConnected")
                names << QString::fromStdString(call.name);
        return names;
    }

    CameraRig rig;
    ZvtCameraModel root;
    StatusTabModel *model;
    QTimer *timer;
};

const QStringList clockCalls{"zvtGetSaturatedFlag", "controller.HasRealTimeClock", "zvtGetRealTimeClock"};
const QStringList temperatureCalls{"zvtGetFPATemperature",     "zvtMfgGetCoolerType",   "zvtGetFPAColdTemperature",
                                   "zvtGetHasLensTemperature", "zvtGetLensTemperature", "zvtGetSCTemperatures",
                                   "zvtGetRSTemperatures"};

QString systemNumber(double number, int decimals)
{
    QLocale locale = QLocale::system();
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    return locale.toString(number, 'f', decimals);
}

} // namespace

class tst_StatusTabModel : public Test
{
    Q_OBJECT

private slots:
    void nothingIsReadBeforeThePageIsSeen();

    void refreshReadsTheActivePreset();
    void refreshReadsAllPresetsOfASequence();
    void sequenceAtOneRateShowsTheSuperframeRate();
    void failedStepEndsTheRefresh_data();
    void failedStepEndsTheRefresh();
    void unchangedTextIsNotSignalled();
    void textsAreSignalledInOrder();

    void firstPollReadsEverything();
    void pollsFollowTheirSchedule();
    void slowPollLosesTicksAndDelaysTheSchedule();
    void restartDuringASlowPollReadsEverythingNext();
    void timerRunsWhileSeenAndConnected();
    void hiddenPageMakesNoCall();
    void loadedTurnsTrueOnce();

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
    void absurdValuesAreSurvived();
    void operatingTimeIsShownInHoursAndMinutes();
    void kelvinIsConverted();

    void failingReadsOfARefresh();
    void failingReadsOfAPoll();
    void heldReadsOutliveTheModel();
    void secondRefreshIsDropped();
    void readsWithoutACamera();
    void randomOperator();
};

void tst_StatusTabModel::nothingIsReadBeforeThePageIsSeen()
{
    Status status;
    const size_t mark = status.rig.gate().mark();
    CameraRig::settle();
    QCOMPARE(status.rig.callsSince(mark), QStringList());
    QCOMPARE(status.timer->interval(), 1000);
    QVERIFY(!status.timer->isActive());
}

// The slow values

void tst_StatusTabModel::refreshReadsTheActivePreset()
{
    Status status;
    status.rig.gate().script("controller.GetWindow", QVariantList{0, 0, 640, 512});
    status.rig.gate().script("controller.GetActivePreset", 2);
    status.rig.gate().script("controller.GetPresetFrameRate", 1180.256);
    status.rig.gate().script("controller.GetPresetIntegrationTime", 1.25);
    const size_t mark = status.rig.gate().mark();
    QCOMPARE(status.refresh(),
             QStringList({"controller.GetWindow", "controller.GetPresetSequencingMode", "controller.GetActivePreset",
                          "controller.GetPresetFrameRate", "controller.GetPresetIntegrationTime"}));
    for (const auto &call : status.rig.gate().callsSince(mark))
        if (call.name == "controller.GetPresetFrameRate" || call.name == "controller.GetPresetIntegrationTime")
            QCOMPARE(call.arguments, std::string("2"));
    QCOMPARE(status.model->frameSize(), QStringLiteral("640x512"));
    QCOMPARE(status.model->frameRate(), systemNumber(1180.26, 2) + " Hz");
    QCOMPARE(status.model->integrationTime(), systemNumber(1.25, 6) + " ms");
}

void tst_StatusTabModel::refreshReadsAllPresetsOfASequence()
{
    Status status;
    status.rig.gate().script("controller.GetPresetSequencingMode", 2);
    status.rig.gate().script("controller.GetPresetIntegrationTime", 0.5);
    status.rig.gate().script("controller.GetPresetFrameRate", 99.999);
    // All four are asked, whatever the number of presets is.
    QStringList expected{"controller.GetWindow", "controller.GetPresetSequencingMode", "controller.GetPresetSequence"};
    for (int preset = 0; preset < 4; ++preset)
        expected << "controller.GetPresetIntegrationTime"
                 << "controller.GetPresetFrameRate";
    QCOMPARE(status.refresh(), expected);
    QCOMPARE(status.model->integrationTime(), QStringLiteral("%1 to %1 ms").arg(systemNumber(0.5, 6)));
    QCOMPARE(status.model->frameRate(), QStringLiteral("%1 to %1 Hz").arg(systemNumber(100.0, 2)));

    // The lowest stands first, whatever the order of the presets is.
    status.rig.gate().script("controller.GetPresetIntegrationTime", {});
    auto controller = status.rig.controller();
    controller->SetPresetIntegrationTime(0, 1, 3.0);
    controller->SetPresetIntegrationTime(1, 1, 1.0);
    controller->SetPresetIntegrationTime(2, 1, 4.0);
    controller->SetPresetIntegrationTime(3, 1, 2.0);
    double lowest = 0.0;
    double highest = 0.0;
    QVERIFY(controller->GetPresetIntegrationTime(1, &lowest));
    QVERIFY(controller->GetPresetIntegrationTime(2, &highest));
    status.refresh();
    QCOMPARE(status.model->integrationTime(),
             QStringLiteral("%1 to %2 ms").arg(systemNumber(lowest, 6), systemNumber(highest, 6)));
}

void tst_StatusTabModel::sequenceAtOneRateShowsTheSuperframeRate()
{
    Status status;
    status.rig.gate().script("controller.GetPresetSequencingMode", 7);
    status.rig.gate().script("controller.GetSuperframeRate", 12.5);
    QCOMPARE(status.refresh().last(), QStringLiteral("controller.GetSuperframeRate"));
    QCOMPARE(status.model->frameRate(), systemNumber(12.5, 2) + " Hz (Superframe)");
}

void tst_StatusTabModel::failedStepEndsTheRefresh_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("failing");
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("filled"); // The texts that are there all the same: size, time, rate.
    QTest::newRow("window") << 0 << "controller.GetWindow" << 1 << "";
    QTest::newRow("mode") << 0 << "controller.GetPresetSequencingMode" << 1 << "s";
    QTest::newRow("active preset") << 0 << "controller.GetActivePreset" << 1 << "s";
    QTest::newRow("rate") << 0 << "controller.GetPresetFrameRate" << 1 << "s";
    QTest::newRow("time") << 0 << "controller.GetPresetIntegrationTime" << 1 << "sr";
    QTest::newRow("sequence") << 2 << "controller.GetPresetSequence" << 1 << "s";
    QTest::newRow("time of the last preset") << 2 << "controller.GetPresetIntegrationTime" << 4 << "s";
    QTest::newRow("rate of the last preset") << 2 << "controller.GetPresetFrameRate" << 4 << "s";
    QTest::newRow("superframe rate") << 1 << "controller.GetSuperframeRate" << 1 << "st";
}

void tst_StatusTabModel::failedStepEndsTheRefresh()
{
    QFETCH(int, mode);
    QFETCH(QString, failing);
    QFETCH(int, number);
    QFETCH(QString, filled);
    Status status;
    if (mode != 0)
        QVERIFY(status.rig.camera().otherClient().set("sensor.sequencingMode", mode));
    status.rig.gate().failNext(failing.toStdString(), number);
    const QStringList calls = status.refresh();
    QCOMPARE(calls.last(), failing);
    QCOMPARE(!status.model->frameSize().isEmpty(), filled.contains(u's'));
    QCOMPARE(!status.model->integrationTime().isEmpty(), filled.contains(u't'));
    QCOMPARE(!status.model->frameRate().isEmpty(), filled.contains(u'r'));

    // The next good read fills the rest, and a failure behind it leaves all as it is.
    status.refresh();
    const QString frameSize = status.model->frameSize();
    QVERIFY(!frameSize.isEmpty() && !status.model->frameRate().isEmpty() && !status.model->integrationTime().isEmpty());
    status.rig.gate().failNext("controller.GetWindow");
    status.refresh();
    QCOMPARE(status.model->frameSize(), frameSize);
}

void tst_StatusTabModel::unchangedTextIsNotSignalled()
{
    Status status;
    status.refresh();
    const QSignalSpy spy(status.model, &StatusTabModel::frameSizeChanged);
    status.refresh();
    QCOMPARE(spy.size(), 0);
}

void tst_StatusTabModel::textsAreSignalledInOrder()
{
    Status status;
    QStringList order;
    QObject::connect(status.model, &StatusTabModel::integrationTimeChanged, this, [&] { order << "time"; });
    QObject::connect(status.model, &StatusTabModel::frameSizeChanged, this, [&] { order << "size"; });
    QObject::connect(status.model, &StatusTabModel::frameRateChanged, this, [&] { order << "rate"; });
    status.refresh();
    QCOMPARE(order, QStringList({"rate", "size", "time"}));
}

// The poll

void tst_StatusTabModel::firstPollReadsEverything()
{
    Status status;
    QCOMPARE(status.show(), clockCalls + temperatureCalls + QStringList{"zvtGetOperatingTime"});
}

void tst_StatusTabModel::pollsFollowTheirSchedule()
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

void tst_StatusTabModel::slowPollLosesTicksAndDelaysTheSchedule()
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
    // That was tick 1, however long it took; the temperatures come with the fifth that runs.
    for (int tick = 2; tick < 5; ++tick)
        QCOMPARE(status.poll(), clockCalls);
    QCOMPARE(status.poll(), clockCalls + temperatureCalls);
}

void tst_StatusTabModel::restartDuringASlowPollReadsEverythingNext()
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

void tst_StatusTabModel::timerRunsWhileSeenAndConnected()
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

void tst_StatusTabModel::hiddenPageMakesNoCall()
{
    Status status;
    status.show();
    status.model->setVisible(false);
    const size_t mark = status.rig.gate().mark();
    CameraRig::settle();
    QCOMPARE(status.rig.callsSince(mark), QStringList());
}

void tst_StatusTabModel::loadedTurnsTrueOnce()
{
    Status status;
    const QSignalSpy spy(status.model, &StatusTabModel::loadedChanged);
    QStringList order;
    QObject::connect(status.model, &StatusTabModel::visibleChanged, this, [&] { order << "visible"; });
    QObject::connect(status.model, &StatusTabModel::loadedChanged, this, [&] { order << "loaded"; });
    QVERIFY(!status.model->loaded());
    for (const bool visible : {true, true, false, true})
        status.model->setVisible(visible);
    QVERIFY(status.model->loaded());
    QCOMPARE(spy.size(), 1);
    QCOMPARE(order, QStringList({"visible", "loaded", "visible", "visible"}));
}

// The clock

void tst_StatusTabModel::realTimeClockIsShownWithFourDigitsOfYear()
{
    Status status;
    status.rig.gate().script("zvtGetRealTimeClock", QVariantList{7, 2, 3, 4, 5, 6});
    status.show();
    QCOMPARE(status.model->time(), QStringLiteral("2007-02-03 04:05:06"));
}

void tst_StatusTabModel::irigTimeIsShown_data()
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

void tst_StatusTabModel::irigTimeIsShown()
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

void tst_StatusTabModel::failedClockLeavesTheTime()
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

void tst_StatusTabModel::clockIsChosenAfreshWhenTheReadHasEnded()
{
    Status status;
    const size_t mark = status.rig.gate().mark();
    status.show();
    QVERIFY(status.guiCalls(mark).contains("controller.HasRealTimeClock"));
    // A clock that was read as the other kind is not shown.
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

void tst_StatusTabModel::saturationAndTimeAreSignalledOnEveryTick()
{
    Status status;
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

void tst_StatusTabModel::coldRuleOfACryocooler_data()
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

void tst_StatusTabModel::coldRuleOfACryocooler()
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

void tst_StatusTabModel::coldRuleOfAThermoelectricCooler_data()
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

void tst_StatusTabModel::coldRuleOfAThermoelectricCooler()
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

void tst_StatusTabModel::failedCoolerTypeLeavesThreeValues()
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

void tst_StatusTabModel::lensWithoutSensorIsNotAsked()
{
    Status status;
    status.rig.gate().script("zvtGetHasLensTemperature", false);
    QVERIFY(!status.show().contains("zvtGetLensTemperature"));
    QVERIFY(!status.model->hasLensTemp());
}

void tst_StatusTabModel::secondInternalReadingWins()
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

void tst_StatusTabModel::unchangedTemperatureIsNotSignalled()
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

void tst_StatusTabModel::absurdValuesAreSurvived()
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

void tst_StatusTabModel::operatingTimeIsShownInHoursAndMinutes()
{
    Status status;
    status.rig.gate().script("zvtGetOperatingTime", 60 * 1234 + 7);
    status.show();
    QCOMPARE(status.model->operatingTime(), QStringLiteral("1234 h 07 min"));
}

void tst_StatusTabModel::kelvinIsConverted()
{
    Status status;
    QCOMPARE(status.model->convertKelvinToCelsius(273.15), 0.0);
    QCOMPARE(status.model->convertKelvinToCelsius(77.0), -196.15);
}

// The walkers

namespace
{

ModelUnderTest poll(const QString &profile = QStringLiteral("everything"))
{
    auto model = modelOf<StatusTabModel>(profile);
    model.read = [](QObject *subject) { subject->setProperty("visible", true); };
    return model;
}

} // namespace

void tst_StatusTabModel::failingReadsOfARefresh()
{
    const char *chain = "each step ends the read on its failure";
    walkFailingReads(modelOf<StatusTabModel>(),
                     {{"controller.GetWindow", {{"frameSize", "frameRate", "integrationTime"}, chain}},
                      {"controller.GetPresetSequencingMode", {{"frameRate", "integrationTime"}, chain}},
                      {"controller.GetActivePreset", {{"frameRate", "integrationTime"}, chain}},
                      {"controller.GetPresetFrameRate", {{"frameRate", "integrationTime"}, chain}}});
}

void tst_StatusTabModel::failingReadsOfAPoll()
{
    auto model = poll();
    // A camera whose every value differs from that of a model which has read nothing.
    model.prepare = [](CameraRig &rig) {
        rig.gate().script("zvtGetSaturatedFlag", true);
        rig.gate().script("zvtGetFPATemperature", 79.0);
        rig.gate().script("zvtGetFPAColdTemperature", 79.5);
        rig.gate().script("zvtMfgGetCoolerType", 0);
    };
    walkFailingReads(
        model,
        {{"controller.HasRealTimeClock", {{"time"}, "the other clock is read, and not shown"}},
         {"zvtMfgGetCoolerType", {{"fpaCold"}, "without the type of cooler it is not known what is cold"}},
         {"zvtGetFPATemperature", {{"fpaCold", "fpaTemp"}, "without a temperature nothing is cold"}},
         {"zvtGetFPAColdTemperature", {{}, "the fallback of 80 K judges alike"}},
         {"zvtGetHasLensTemperature", {{"hasLensTemp", "lensTemp"}, "the sensor is asked only if it is there"}},
         {"zvtGetSCTemperatures", {{"airGapTemp", "frontPanelTemp"}, "the other internal reading wins"}},
         {"zvtGetRSTemperatures", {{"internalChassisTemp"}, "the first internal reading then stands"}}});
}

void tst_StatusTabModel::heldReadsOutliveTheModel()
{
    walkHeldDeletion(modelOf<StatusTabModel>());
    walkHeldDeletion(poll());
    walkHeldDeletion(poll("te-cooler"));
    walkHeldDeletion(poll("irig"));
}

void tst_StatusTabModel::secondRefreshIsDropped()
{
    walkSecondRefresh(modelOf<StatusTabModel>());
    auto model = poll();
    model.read = [](QObject *subject) { QMetaObject::invokeMethod(subject, "timeoutUpdateTimeTimer"); };
    walkSecondRefresh(model);
}

void tst_StatusTabModel::readsWithoutACamera()
{
    walkNoCamera(modelOf<StatusTabModel>());
    auto model = poll();
    model.read = [](QObject *subject) { QMetaObject::invokeMethod(subject, "timeoutUpdateTimeTimer"); };
    walkNoCamera(model, {"saturated"});
}

void tst_StatusTabModel::randomOperator()
{
    for (uint32_t seed = 1; seed <= 5; ++seed)
        walkRandomOperator(poll(), seed);
}

ZVT_TEST(tst_StatusTabModel)
#include "tst_StatusTabModel.moc"
