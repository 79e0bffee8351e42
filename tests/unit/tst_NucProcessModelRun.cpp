#include "tests/support/Test.h"
#include "tests/unit/NucRig.h"

#include <memory>
#include <thread>

namespace
{

const QStringList settingsOfTwoPoint{"zvtSetNUCType 1",
                                     "zvtSetNUCSource 0",
                                     "zvtSetNUCNumFrames 16",
                                     "zvtSetNUCPreset 0",
                                     "zvtSetNUCFlagSetpointType 0",
                                     "zvtSetNUCFlagSetpointDeltas 0, 15",
                                     "zvtSetNUCFlagSetpointTemps 20, 35",
                                     "zvtSetNUCUseFactoryBadPixels true",
                                     "zvtSetNUCSetup 0.75, 1.5, 1000, 15000, true",
                                     "zvtSetTwinklerSetup true, 32, 200",
                                     "zvtStartNUC"};

/// The ten counts, in the order of the camera.
QList<int> countsOf(const NucProcessModel &model)
{
    return {model.totalBadPixels(), model.factoryBadPixels(), model.newBadPixels(),   model.twinklingPixels(),
            model.aboveGainMax(),   model.belowGainMin(),     model.aboveADMaxSrc1(), model.belowADMinSrc1(),
            model.aboveADMaxSrc2(), model.belowADMinSrc2()};
}

} // namespace

/// The start of a run, its end, and the decisions of the operator.
class tst_NucProcessModelRun : public Test
{
    Q_OBJECT

private slots:
    void startWritesTheSettingsInOrder();
    void editedSettingsAreWritten();
    void otherTypesKeepTheirLimits_data();
    void otherTypesKeepTheirLimits();
    void startEndsAtTheFirstFailure_data();
    void startEndsAtTheFirstFailure();
    void failedStartKeepsTheLastRun();
    void startRunsOnThePool();
    void secondStartIsIgnored();
    void settingsAreThoseOfTheStart();

    void readyEndsTheRun();
    void failedRunHasItsResult_data();
    void failedRunHasItsResult();
    void readyAtTheFirstPollEndsTheRun();
    void everyReadyPollSignalsTheResult();
    void resultIsReadOnlyWhenReady();
    void runCanBeStartedAgain();
    void silentCameraKeepsTheRunInProgress();
    void runContinuesAfterADisconnection();

    void decisionsAreOneCall_data();
    void decisionsAreOneCall();
    void abortLeavesTheModelAlone();
    void neverEmittedSignalExists();
    void heldTasksOutliveTheModel_data();
    void heldTasksOutliveTheModel();
    void withoutARootARunFails();
};

void tst_NucProcessModelRun::startWritesTheSettingsInOrder()
{
    NucRig nuc;
    SignalLog log(&nuc.model);
    const size_t mark = nuc.gate().mark();
    nuc.model.start();
    QVERIFY(nuc.model.inProgress());
    QCOMPARE(log.take(), QStringList("inProgressChanged"));
    NucRig::settle();
    QCOMPARE(nuc.callsSince(mark).mid(0, settingsOfTwoPoint.size()), settingsOfTwoPoint);
    QVERIFY(nuc.model.inProgress());
    QVERIFY(nuc.timer().isActive());
}

void tst_NucProcessModelRun::editedSettingsAreWritten()
{
    NucRig nuc;
    nuc.model.setPreset(2);
    nuc.model.setNucSource(NucProcessModel::SOURCE_INTERNAL);
    nuc.model.setNumFrames(256);
    nuc.model.setGainMin(0.5F);
    nuc.model.setGainMax(2.0F);
    nuc.model.setAdcLow(1);
    nuc.model.setAdcHigh(2);
    nuc.model.setDetectBadPixels(false);
    nuc.model.setDetectTwinklers(false);
    nuc.model.setTwinklerNumFrames(100'000);
    nuc.model.setTwinklerDelta(3);
    nuc.model.setFlagSetpointType(NucProcessModel::SETPOINT_FIXED);
    nuc.model.setFlagSetpointDeltaLow(4.5F);
    nuc.model.setFlagSetpointDeltaHigh(5.5F);
    nuc.model.setFlagSetpointTempLow(6.5F);
    nuc.model.setFlagSetpointTempHigh(7.5F);
    nuc.model.setUseFactoryBadPixels(false);
    const size_t mark = nuc.gate().mark();
    nuc.start();
    QCOMPARE(
        nuc.callsSince(mark).mid(0, 11),
        QStringList({"zvtSetNUCType 1", "zvtSetNUCSource 1", "zvtSetNUCNumFrames 0", "zvtSetNUCPreset 2",
                     "zvtSetNUCFlagSetpointType 1", "zvtSetNUCFlagSetpointDeltas 4.5, 5.5",
                     "zvtSetNUCFlagSetpointTemps 6.5, 7.5", "zvtSetNUCUseFactoryBadPixels false",
                     "zvtSetNUCSetup 0.5, 2, 1, 2, false", "zvtSetTwinklerSetup false, 100000, 3", "zvtStartNUC"}));
}

void tst_NucProcessModelRun::otherTypesKeepTheirLimits_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("one-point") << 0;
    QTest::newRow("offset update") << 2;
}

void tst_NucProcessModelRun::otherTypesKeepTheirLimits()
{
    QFETCH(const int, type);
    NucRig nuc;
    nuc.model.setNucType(static_cast<NucProcessModel::ENUC_TYPE>(type));
    const size_t mark = nuc.gate().mark();
    nuc.start();
    QStringList expected = settingsOfTwoPoint;
    expected.removeAt(9);
    expected.removeAt(8);
    expected.replace(0, QStringLiteral("zvtSetNUCType %1").arg(type));
    QCOMPARE(nuc.callsSince(mark).mid(0, expected.size()), expected);
}

void tst_NucProcessModelRun::startEndsAtTheFirstFailure_data()
{
    QTest::addColumn<int>("calls");
    int calls = 0;
    for (const QString &call : settingsOfTwoPoint)
        QTest::newRow(qPrintable(call.section(u' ', 0, 0))) << ++calls;
}

void tst_NucProcessModelRun::startEndsAtTheFirstFailure()
{
    QFETCH(const int, calls);
    NucRig nuc;
    nuc.gate().failNext(QTest::currentDataTag());
    const size_t mark = nuc.gate().mark();
    SignalLog log(&nuc.model);
    nuc.start();
    QCOMPARE(nuc.callsSince(mark), settingsOfTwoPoint.mid(0, calls));
    QCOMPARE(log.take(), QStringList({"inProgressChanged", "inProgressChanged"}));
    QVERIFY(!nuc.model.inProgress());
    QVERIFY(!nuc.timer().isActive());
}

void tst_NucProcessModelRun::failedStartKeepsTheLastRun()
{
    NucRig nuc;
    nuc.setResult(3, QStringLiteral("The flag is too hot"));
    nuc.setCounts(5);
    nuc.start();
    nuc.pollStatus(0, QStringLiteral("Ready"));
    nuc.gate().failNext("zvtStartNUC");
    nuc.start();
    QVERIFY(!nuc.model.inProgress());
    QCOMPARE(nuc.model.status(), NucProcessModel::STATUS_READY);
    QCOMPARE(nuc.model.result(), NucProcessModel::RESULT_ABORT_FLAG_COOLER_RUNAWAY);
    QCOMPARE(nuc.model.totalBadPixels(), 5);
}

void tst_NucProcessModelRun::startRunsOnThePool()
{
    NucRig nuc;
    const size_t mark = nuc.gate().mark();
    nuc.start();
    nuc.poll();
    for (const auto &call : nuc.gate().callsSince(mark))
        if (call.name.starts_with("zvt"))
            QVERIFY(call.thread != std::this_thread::get_id());
}

void tst_NucProcessModelRun::secondStartIsIgnored()
{
    NucRig nuc;
    nuc.gate().hold("zvtStartNUC");
    nuc.model.start();
    QVERIFY(nuc.gate().waitHeld("zvtStartNUC"));
    SignalLog log(&nuc.model);
    const size_t mark = nuc.gate().mark();
    nuc.model.start();
    QCOMPARE(log.take(), QStringList());
    nuc.gate().release("*");
    NucRig::settle();
    nuc.start();
    QVERIFY(!nuc.rig.callsSince(mark).contains("zvtSetNUCType"));
}

void tst_NucProcessModelRun::settingsAreThoseOfTheStart()
{
    NucRig nuc;
    nuc.gate().hold("zvtSetNUCType");
    nuc.model.start();
    QVERIFY(nuc.gate().waitHeld("zvtSetNUCType"));
    nuc.model.setNumFrames(99);
    const size_t mark = nuc.gate().mark();
    nuc.gate().release("*");
    NucRig::settle();
    QVERIFY(nuc.callsSince(mark).contains("zvtSetNUCNumFrames 16"));
}

void tst_NucProcessModelRun::readyEndsTheRun()
{
    NucRig nuc;
    nuc.setCounts(11);
    nuc.start();
    SignalLog log(&nuc.model);
    const size_t mark = nuc.gate().mark();
    nuc.pollStatus(0, QStringLiteral("Ready"));
    QCOMPARE(nuc.callsSince(mark), QStringList({"zvtGetNUCStatus", "zvtGetNUCResult", "zvtGetNUCResults 0"}));
    QCOMPARE(log.take(), QStringList({"statusChanged", "resultChanged", "inProgressChanged"}));
    QVERIFY(!nuc.timer().isActive());
    QVERIFY(!nuc.model.inProgress());
    QCOMPARE(nuc.model.result(), NucProcessModel::RESULT_OKAY);
    QCOMPARE(nuc.model.resultText(), "Done");
    QCOMPARE(countsOf(nuc.model), (QList<int>{11, 12, 13, 14, 15, 16, 17, 18, 19, 20}));
}

void tst_NucProcessModelRun::failedRunHasItsResult_data()
{
    QTest::addColumn<int>("result");
    QTest::newRow("Stopped") << 1;
    QTest::newRow("Invalid parameters") << 2;
    QTest::newRow("The flag is too hot") << 3;
}

void tst_NucProcessModelRun::failedRunHasItsResult()
{
    QFETCH(const int, result);
    NucRig nuc;
    nuc.start();
    nuc.setResult(result, QString::fromLatin1(QTest::currentDataTag()));
    nuc.pollStatus(0, QStringLiteral("Ready"));
    QVERIFY(!nuc.model.inProgress());
    QCOMPARE(static_cast<int>(nuc.model.result()), result);
    QCOMPARE(nuc.model.resultText(), QString::fromLatin1(QTest::currentDataTag()));
}

void tst_NucProcessModelRun::readyAtTheFirstPollEndsTheRun()
{
    NucRig nuc;
    nuc.setStatus(0, QStringLiteral("Ready"));
    SignalLog log(&nuc.model);
    nuc.start();
    QVERIFY(!nuc.model.inProgress());
    QVERIFY(!nuc.timer().isActive());
    QCOMPARE(log.take(), QStringList({"inProgressChanged", "statusChanged", "resultChanged", "inProgressChanged"}));
}

void tst_NucProcessModelRun::everyReadyPollSignalsTheResult()
{
    NucRig nuc;
    nuc.setStatus(0, QStringLiteral("Ready"));
    nuc.start();
    SignalLog log(&nuc.model);
    nuc.start();
    QCOMPARE(log.take(), QStringList({"inProgressChanged", "resultChanged", "inProgressChanged"}));
}

void tst_NucProcessModelRun::resultIsReadOnlyWhenReady()
{
    NucRig nuc;
    nuc.start();
    const size_t mark = nuc.gate().mark();
    for (int status = 1; status <= 14; ++status)
        nuc.pollStatus(status);
    QVERIFY(!nuc.rig.callsSince(mark).contains("zvtGetNUCResult"));
}

void tst_NucProcessModelRun::runCanBeStartedAgain()
{
    NucRig nuc;
    nuc.start();
    nuc.pollStatus(0, QStringLiteral("Ready"));
    nuc.setStatus(13, QStringLiteral("Starting"));
    const size_t mark = nuc.gate().mark();
    nuc.start();
    QCOMPARE(nuc.callsSince(mark).mid(0, settingsOfTwoPoint.size()), settingsOfTwoPoint);
    QVERIFY(nuc.model.inProgress());
    QVERIFY(nuc.timer().isActive());
}

void tst_NucProcessModelRun::silentCameraKeepsTheRunInProgress()
{
    NucRig nuc;
    nuc.start();
    nuc.gate().failAlways("*");
    for (int tick = 0; tick < 20; ++tick)
        nuc.poll();
    QVERIFY(nuc.model.inProgress());
    QVERIFY(nuc.timer().isActive());
    const size_t mark = nuc.gate().mark();
    nuc.start();
    QCOMPARE(nuc.callsSince(mark), QStringList());
    nuc.gate().failNever();
    nuc.pollStatus(0);
    QVERIFY(!nuc.model.inProgress());
}

void tst_NucProcessModelRun::runContinuesAfterADisconnection()
{
    NucRig nuc;
    nuc.start();
    nuc.rig.camera().disconnect();
    nuc.poll();
    nuc.poll();
    QVERIFY(nuc.model.inProgress());
    QCOMPARE(nuc.model.statusText(), "Starting");
    nuc.rig.camera().connect();
    nuc.pollStatus(6, QStringLiteral("Place the second source"));
    QVERIFY(nuc.model.canNext());
    nuc.pollStatus(0);
    QVERIFY(!nuc.model.inProgress());
}

void tst_NucProcessModelRun::decisionsAreOneCall_data()
{
    QTest::addColumn<QString>("call");
    QTest::newRow("next") << "zvtContinueNUC";
    QTest::newRow("abort") << "zvtAbortNUC";
    QTest::newRow("accept") << "zvtAcceptNUC";
    QTest::newRow("discard") << "zvtDiscardNUC";
}

void tst_NucProcessModelRun::decisionsAreOneCall()
{
    QFETCH(const QString, call);
    NucRig nuc;
    SignalLog log(&nuc.model);
    const size_t mark = nuc.gate().mark();
    QVERIFY(QMetaObject::invokeMethod(&nuc.model, QTest::currentDataTag()));
    nuc.gate().failNext(call.toStdString());
    QVERIFY(QMetaObject::invokeMethod(&nuc.model, QTest::currentDataTag()));
    QCOMPARE(nuc.callsSince(mark), QStringList({call, call}));
    QCOMPARE(log.take(), QStringList());
}

void tst_NucProcessModelRun::abortLeavesTheModelAlone()
{
    NucRig nuc;
    nuc.start();
    nuc.pollStatus(2);
    SignalLog log(&nuc.model);
    nuc.model.abort();
    QCOMPARE(log.take(), QStringList());
    QVERIFY(nuc.model.inProgress());
    QVERIFY(nuc.model.canNext());
    nuc.setResult(1, QStringLiteral("Stopped"));
    nuc.pollStatus(0);
    QVERIFY(!nuc.model.inProgress());
    QCOMPARE(nuc.model.result(), NucProcessModel::RESULT_ABORT);
}

void tst_NucProcessModelRun::neverEmittedSignalExists()
{
    QVERIFY(NucProcessModel::staticMetaObject.indexOfSignal("respLowChanged()") >= 0);
}

void tst_NucProcessModelRun::heldTasksOutliveTheModel_data()
{
    QTest::addColumn<bool>("starting");
    QTest::newRow("zvtSetNUCType") << true;
    QTest::newRow("zvtStartNUC") << true;
    QTest::newRow("zvtGetNUCStatus") << false;
    QTest::newRow("zvtGetNUCResults") << false;
}

void tst_NucProcessModelRun::heldTasksOutliveTheModel()
{
    QFETCH(const bool, starting);
    auto nuc = std::make_unique<NucRig>();
    if (!starting)
        nuc->start();
    auto model = std::make_unique<NucProcessModel>(&nuc->root);
    nuc->gate().hold(QTest::currentDataTag());
    if (starting)
        model->start();
    else
        QMetaObject::invokeMethod(model->findChild<QTimer *>(QStringLiteral("statusTimer")), "timeout");
    QVERIFY(nuc->gate().waitHeld(QTest::currentDataTag()));
    model.reset();
    nuc->gate().release("*");
    NucRig::settle();
}

void tst_NucProcessModelRun::withoutARootARunFails()
{
    NucProcessModel model(nullptr);
    model.refresh();
    model.start();
    NucRig::settle();
    QVERIFY(!model.inProgress());
    QVERIFY(!model.refreshing());
    model.next();
    model.abort();
    model.accept();
    model.discard();
}

ZVT_TEST(tst_NucProcessModelRun)
#include "tst_NucProcessModelRun.moc"
