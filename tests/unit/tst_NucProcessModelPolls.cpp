#include "tests/support/Test.h"
#include "tests/unit/NucRig.h"

#include <QSignalSpy>

/// The polls of a run.
class tst_NucProcessModelPolls : public Test
{
    Q_OBJECT

private slots:
    void firstPollComesAtOnce();
    void countsAreReadOnEveryPoll();
    void statusIsSignalledOnChange();
    void pollsDoNotOverlap();
    void failedPollIsVoid_data();
    void failedPollIsVoid();
    void operatorMayContinueOnlyAtAnExternalSource_data();
    void operatorMayContinueOnlyAtAnExternalSource();
    void continuingIsPossibleOnceForEachState();
    void startEndsTheLastChanceToContinue();
    void textsMayFillTheirBuffers();
    void textsAreUtf8();
};

void tst_NucProcessModelPolls::firstPollComesAtOnce()
{
    NucRig nuc;
    const size_t mark = nuc.gate().mark();
    nuc.start();
    QCOMPARE(nuc.callsSince(mark).mid(11), QStringList({"zvtGetNUCStatus", "zvtGetNUCResults 0"}));
    QCOMPARE(nuc.model.status(), NucProcessModel::STATUS_STARTING);
    QCOMPARE(nuc.model.statusText(), "Starting");
    QVERIFY(nuc.timer().isActive());
    const NucProcessModel fresh(nullptr);
    QCOMPARE(fresh.findChild<QTimer *>(QStringLiteral("statusTimer"))->interval(), 1000);
}

void tst_NucProcessModelPolls::countsAreReadOnEveryPoll()
{
    NucRig nuc;
    nuc.model.setPreset(3);
    nuc.start();
    nuc.setCounts(20);
    const size_t mark = nuc.gate().mark();
    nuc.pollStatus(4, QStringLiteral("Collecting 16 frames"));
    QCOMPARE(nuc.callsSince(mark), QStringList({"zvtGetNUCStatus", "zvtGetNUCResults 3"}));
    // They are published only at the end.
    QCOMPARE(nuc.model.totalBadPixels(), 0);
}

void tst_NucProcessModelPolls::statusIsSignalledOnChange()
{
    NucRig nuc;
    nuc.start();
    SignalLog log(&nuc.model);
    nuc.poll();
    QCOMPARE(log.take(), QStringList());
    nuc.pollStatus(13, QStringLiteral("Still starting"));
    QCOMPARE(log.take(), QStringList("statusChanged"));
    nuc.pollStatus(4, QStringLiteral("Still starting"));
    QCOMPARE(log.take(), QStringList("statusChanged"));
    QCOMPARE(nuc.model.status(), NucProcessModel::STATUS_COLLECTING_FIRST_SOURCE);
}

void tst_NucProcessModelPolls::pollsDoNotOverlap()
{
    NucRig nuc;
    nuc.start();
    nuc.gate().hold("zvtGetNUCStatus");
    QMetaObject::invokeMethod(&nuc.timer(), "timeout");
    QVERIFY(nuc.gate().waitHeld("zvtGetNUCStatus"));
    const size_t mark = nuc.gate().mark();
    for (int tick = 0; tick < 5; ++tick)
        QMetaObject::invokeMethod(&nuc.timer(), "timeout");
    nuc.gate().release("*");
    NucRig::settle();
    QCOMPARE(nuc.callsSince(mark), QStringList("zvtGetNUCResults 0"));
    nuc.poll();
    QCOMPARE(nuc.callsSince(mark).size(), 3);
}

void tst_NucProcessModelPolls::failedPollIsVoid_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QStringList>("calls");
    QTest::newRow("zvtGetNUCStatus") << 4 << QStringList("zvtGetNUCStatus");
    QTest::newRow("zvtGetNUCResults") << 4 << QStringList({"zvtGetNUCStatus", "zvtGetNUCResults 0"});
    QTest::newRow("zvtGetNUCResult") << 0 << QStringList({"zvtGetNUCStatus", "zvtGetNUCResult"});
}

void tst_NucProcessModelPolls::failedPollIsVoid()
{
    QFETCH(const int, status);
    NucRig nuc;
    nuc.start();
    nuc.gate().failNext(QTest::currentDataTag());
    SignalLog log(&nuc.model);
    const size_t mark = nuc.gate().mark();
    nuc.pollStatus(status, QStringLiteral("Other"));
    QTEST(nuc.callsSince(mark), "calls");
    QCOMPARE(log.take(), QStringList());
    QCOMPARE(nuc.model.statusText(), "Starting");
    QVERIFY(nuc.model.inProgress());
    QVERIFY(nuc.timer().isActive());
    nuc.poll();
    QCOMPARE(nuc.model.statusText(), "Other");
}

void tst_NucProcessModelPolls::operatorMayContinueOnlyAtAnExternalSource_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("may");
    for (int status = 1; status <= 20; ++status)
        QTest::addRow("%d", status) << status << (status == 2 || status == 6);
    QTest::newRow("16 bits") << 0x8002 << false;
}

void tst_NucProcessModelPolls::operatorMayContinueOnlyAtAnExternalSource()
{
    QFETCH(const int, status);
    QFETCH(const bool, may);
    NucRig nuc;
    nuc.start();
    const QSignalSpy changed(&nuc.model, &NucProcessModel::canNextChanged);
    nuc.pollStatus(status, QStringLiteral("text"));
    QCOMPARE(nuc.model.canNext(), may);
    QCOMPARE(changed.size(), may ? 1 : 0);
    QCOMPARE(static_cast<int>(nuc.model.status()), status);
    nuc.pollStatus(12, QStringLiteral("Computing"));
    QVERIFY(!nuc.model.canNext());
}

void tst_NucProcessModelPolls::continuingIsPossibleOnceForEachState()
{
    NucRig nuc;
    nuc.start();
    nuc.pollStatus(2, QStringLiteral("Place the first source"));
    const size_t mark = nuc.gate().mark();
    nuc.model.next();
    QCOMPARE(nuc.callsSince(mark), QStringList("zvtContinueNUC"));
    QVERIFY(!nuc.model.canNext());
    // The camera still says the same.
    nuc.poll();
    QVERIFY(!nuc.model.canNext());
    // Another text counts as another state.
    nuc.pollStatus(2, QStringLiteral("Place it again"));
    QVERIFY(nuc.model.canNext());
    nuc.model.next();
    nuc.pollStatus(6, QStringLiteral("Place it again"));
    QVERIFY(nuc.model.canNext());
    nuc.gate().failNext("zvtContinueNUC");
    nuc.model.next();
    QVERIFY(!nuc.model.canNext());
}

void tst_NucProcessModelPolls::startEndsTheLastChanceToContinue()
{
    NucRig nuc;
    nuc.start();
    nuc.pollStatus(2);
    QVERIFY(nuc.model.canNext());
    // Only a run that has ended can be started; the camera ends it while it waits.
    nuc.pollStatus(0);
    QVERIFY(!nuc.model.canNext());
    nuc.gate().hold("zvtStartNUC");
    nuc.model.start();
    QVERIFY(!nuc.model.canNext());
}

void tst_NucProcessModelPolls::textsMayFillTheirBuffers()
{
    NucRig nuc;
    nuc.gate().fillBuffers(true);
    nuc.start();
    nuc.pollStatus(0, QStringLiteral("Ready"));
    QCOMPARE(nuc.model.statusText().size(), 256);
    QVERIFY(nuc.model.statusText().startsWith("Ready"));
    QCOMPARE(nuc.model.resultText().size(), 256);
    QVERIFY(nuc.model.resultText().startsWith("Done"));
}

void tst_NucProcessModelPolls::textsAreUtf8()
{
    NucRig nuc;
    nuc.start();
    nuc.pollStatus(3, QStringLiteral("24.0 \u00b0C of 35.0 \u00b0C"));
    QCOMPARE(nuc.model.statusText(), QStringLiteral("24.0 \u00b0C of 35.0 \u00b0C"));
}

ZVT_TEST(tst_NucProcessModelPolls)
#include "tst_NucProcessModelPolls.moc"
