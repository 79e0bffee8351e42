#include "tests/support/Test.h"
#include "tests/unit/SetupTabRig.h"

/// Moves of the zoom and its slider: the commands, and the reads of the position and the distances.
class tst_SetupTabModelZoom : public Test
{
    Q_OBJECT

private slots:
    void zoomMovesBySpeedUntilItIsStopped();
    void refusedZoomMoveLooksOnce();
    void zoomIsNotDrivenPastItsLimits_data();
    void zoomIsNotDrivenPastItsLimits();
    void coastedZoomIsBroughtBack_data();
    void coastedZoomIsBroughtBack();
    void zoomPercentHasNoDeadBand();
    void failedZoomReadStillLooksAtTheFocus();
    void distancesAreReadWhenAvailable_data();
    void distancesAreReadWhenAvailable();
    void zoomSliderSettles();
    void refusedZoomTargetIsLookedAtAllTheSame();
    void zoomAtZeroHasSettledAtOnce();
    void settlingEndsWhenThePositionCanNotBeRead();
    void zoomedLensChangesItsDistances();
};

namespace
{

const QStringList zoomAndFocus = QStringList{"zvtGetFOVCurrentPos"} + focusAndDistances;

QString moved(const char *name, auto value) { return QStringLiteral("%1 %2").arg(QLatin1String(name)).arg(value); }

} // namespace

void tst_SetupTabModelZoom::zoomMovesBySpeedUntilItIsStopped()
{
    SetupTab tab;
    tab.gate().script("zvtFOVMove", true);
    tab.readZoom(100, 9000, 5000);
    QTimer *timer = tab.timer("zoomPositionTimer");
    QCOMPARE(tab.guiCallsOf([&] { QVERIFY(tab.model->attemptMoveZoom(2)); }), QStringList{"zvtFOVMove 2"});
    QVERIFY(timer->isActive());
    QCOMPARE(timer->interval(), 300);

    tab.gate().script("zvtGetFOVCurrentPos", 5200);
    QCOMPARE(tab.tick("zoomPositionTimer"), zoomAndFocus);
    QCOMPARE(tab.model->selectedZoomPosition(), 5200U);
    QCOMPARE(
        tab.log.take(),
        QStringList({"selectedZoomPositionChanged", "selectedFocusPositionChanged", "distanceRangeValuesChanged"}));

    QCOMPARE(tab.guiCallsOf([&] { QVERIFY(tab.model->attemptMoveZoom(0)); }),
             QStringList{"zvtFOVMove 0"} + zoomAndFocus);
    QVERIFY(!timer->isActive());
}

void tst_SetupTabModelZoom::refusedZoomMoveLooksOnce()
{
    SetupTab tab;
    tab.gate().script("zvtFOVMove", true);
    tab.gate().script("zvtGetFOVCurrentPos", 5000);
    tab.readZoom(100, 9000, 5000);
    tab.model->attemptMoveZoom(1);
    tab.gate().failNext("zvtFOVMove");
    QCOMPARE(tab.guiCallsOf([&] { QVERIFY(!tab.model->attemptMoveZoom(-1)); }),
             QStringList{"zvtFOVMove -1"} + zoomAndFocus);
    QVERIFY(!tab.timer("zoomPositionTimer")->isActive());
}

void tst_SetupTabModelZoom::zoomIsNotDrivenPastItsLimits_data()
{
    QTest::addColumn<uint>("position");
    QTest::addColumn<int>("speed");
    QTest::addColumn<bool>("sent");
    QTest::newRow("minimum, down") << 100U << -1 << false;
    QTest::newRow("minimum, up") << 100U << 1 << true;
    QTest::newRow("minimum, stop") << 100U << 0 << true;
    QTest::newRow("maximum, up") << 9000U << 3 << false;
    QTest::newRow("maximum, down") << 9000U << -3 << true;
    QTest::newRow("past the minimum, up") << 90U << 1 << true;
    QTest::newRow("past the maximum, down") << 9010U << -1 << true;
    QTest::newRow("past the maximum, stop") << 9010U << 0 << true;
}

void tst_SetupTabModelZoom::zoomIsNotDrivenPastItsLimits()
{
    QFETCH(uint, position);
    QFETCH(int, speed);
    QFETCH(bool, sent);
    SetupTab tab;
    tab.gate().script("zvtFOVMove", true);
    tab.gate().script("zvtGetFOVCurrentPos", position);
    tab.readZoom(100, 9000, position);
    const QStringList calls = tab.guiCallsOf([&] { QCOMPARE(tab.model->attemptMoveZoom(speed), sent); });
    QCOMPARE(calls.value(0), sent ? moved("zvtFOVMove", speed) : QString());
    QCOMPARE(tab.timer("zoomPositionTimer")->isActive(), sent && speed != 0);
    QCOMPARE(tab.guiCallsOf([&] { QVERIFY(tab.model->attemptMoveZoom(0)); }).first(), QStringLiteral("zvtFOVMove 0"));
}

void tst_SetupTabModelZoom::coastedZoomIsBroughtBack_data()
{
    QTest::addColumn<uint>("position");
    QTest::addColumn<int>("speed");
    QTest::addColumn<uint>("limit");
    QTest::newRow("below") << 60U << -2 << 100U;
    QTest::newRow("above") << 9040U << 1 << 9000U;
}

void tst_SetupTabModelZoom::coastedZoomIsBroughtBack()
{
    QFETCH(uint, position);
    QFETCH(int, speed);
    QFETCH(uint, limit);
    SetupTab tab;
    tab.gate().script("zvtSetFOVPos", true);
    tab.readZoom(100, 9000, position);
    const QStringList calls = tab.callsOf([&] {
        QVERIFY(tab.model->attemptMoveZoom(speed));
        QVERIFY(!tab.model->lensBasedControlsEnabled());
        QVERIFY(tab.timer("zoomPositionTimer")->isActive());
        QCOMPARE(tab.timer("zoomPositionTimer")->interval(), 300);
    });
    QCOMPARE(calls, QStringList{moved("zvtSetFOVPos", limit)} + focusAndDistances);
    QCOMPARE(tab.model->selectedZoomPosition(), limit);
    QVERIFY(tab.model->lensBasedControlsEnabled());
}

void tst_SetupTabModelZoom::zoomPercentHasNoDeadBand()
{
    SetupTab tab;
    tab.gate().script("zvtFOVMovePercent", true);
    QCOMPARE(tab.guiCallsOf([&] { QVERIFY(tab.model->attemptMoveZoomPercent(0.5F)); }),
             QStringList{"zvtFOVMovePercent 0.5"});
    QVERIFY(tab.timer("zoomPositionTimer")->isActive());
    QCOMPARE(tab.timer("zoomPositionTimer")->interval(), 300);
    QCOMPARE(tab.guiCallsOf([&] { QVERIFY(tab.model->attemptMoveZoomPercent(0.0F)); }),
             QStringList{"zvtFOVMovePercent 0"} + zoomAndFocus);
    QVERIFY(!tab.timer("zoomPositionTimer")->isActive());
    tab.gate().failNext("zvtFOVMovePercent");
    QVERIFY(!tab.model->attemptMoveZoomPercent(20.0F));
    QVERIFY(!tab.timer("zoomPositionTimer")->isActive());
}

void tst_SetupTabModelZoom::failedZoomReadStillLooksAtTheFocus()
{
    SetupTab tab;
    tab.readZoom(100, 9000, 5000);
    tab.gate().failNext("zvtGetFOVCurrentPos");
    QCOMPARE(tab.tick("zoomPositionTimer"), zoomAndFocus);
    QCOMPARE(tab.model->selectedZoomPosition(), 5000U);
    QCOMPARE(tab.log.take(), QStringList({"selectedFocusPositionChanged", "distanceRangeValuesChanged"}));
}

void tst_SetupTabModelZoom::distancesAreReadWhenAvailable_data()
{
    QTest::addColumn<QString>("failing");
    QTest::addColumn<bool>("available");
    QTest::addColumn<int>("calls"); // Of focusAndDistances.
    QTest::addColumn<float>("minimum");
    QTest::addColumn<float>("maximum");
    QTest::newRow("available") << "" << true << 4 << 3.0F << 90.0F;
    QTest::newRow("not available") << "" << false << 2 << 1.5F << 80.0F;
    QTest::newRow("not known") << "zvtGetFocusToDistanceAvailable" << true << 2 << 1.5F << 80.0F;
    QTest::newRow("no minimum") << "zvtGetFocusToDistanceMin" << true << 4 << 1.5F << 90.0F;
    QTest::newRow("no maximum") << "zvtGetFocusToDistanceMax" << true << 4 << 3.0F << 80.0F;
}

void tst_SetupTabModelZoom::distancesAreReadWhenAvailable()
{
    QFETCH(QString, failing);
    QFETCH(bool, available);
    QFETCH(int, calls);
    SetupTab tab;
    tab.gate().script("zvtGetFocusToDistanceMin", 1.5);
    tab.gate().script("zvtGetFocusToDistanceMax", 80);
    tab.refresh();
    tab.gate().script("zvtGetFocusToDistanceAvailable", available);
    tab.gate().script("zvtGetFocusToDistanceMin", 3);
    tab.gate().script("zvtGetFocusToDistanceMax", 90);
    if (!failing.isEmpty())
        tab.gate().failNext(failing.toStdString());
    QCOMPARE(tab.tick("zoomPositionTimer").mid(1), focusAndDistances.mid(0, calls));
    QTEST(tab.model->distanceMinimum(), "minimum");
    QTEST(tab.model->distanceMaximum(), "maximum");
    QCOMPARE(tab.log.take().count("distanceRangeValuesChanged"), calls == 4 ? 1 : 0);
    QCOMPARE(tab.model->distanceToFocus(), 1.5F);
}

void tst_SetupTabModelZoom::zoomSliderSettles()
{
    SetupTab tab;
    tab.gate().script("zvtFOVMoveTo", true);
    tab.readZoom(100, 9000, 5000);
    QTimer *timer = tab.timer("zoomSettleTimer");
    QCOMPARE(tab.callsOf([&] { tab.model->zoomMoveTo(5000); }), QStringList());
    QVERIFY(!timer->isActive());
    QCOMPARE(tab.callsOf([&] { tab.model->zoomMoveTo(6000); }), QStringList{"zvtFOVMoveTo 6000"});
    QCOMPARE(tab.model->selectedZoomPosition(), 6000U);
    QCOMPARE(tab.log.take(), QStringList{"selectedZoomPositionChanged"});
    QVERIFY(timer->isActive());
    QCOMPARE(timer->interval(), 250);

    for (const uint position : {5400U, 5900U, 6000U}) {
        tab.gate().script("zvtGetFOVCurrentPos", position);
        QCOMPARE(tab.tick("zoomSettleTimer"), QStringList{"zvtGetFOVCurrentPos"});
        QVERIFY(timer->isActive());
    }
    QCOMPARE(tab.tick("zoomSettleTimer"), QStringList{"zvtGetFOVCurrentPos"} + focusAndDistances.mid(1));
    QVERIFY(!timer->isActive());
    // The polled positions are not published.
    QCOMPARE(tab.log.take(), QStringList{"distanceRangeValuesChanged"});

    // The next drag starts without an old position.
    tab.model->zoomMoveTo(6100);
    QCOMPARE(tab.tick("zoomSettleTimer"), QStringList{"zvtGetFOVCurrentPos"});
}

void tst_SetupTabModelZoom::refusedZoomTargetIsLookedAtAllTheSame()
{
    SetupTab tab;
    tab.readZoom(100, 9000, 5000);
    tab.gate().failNext("zvtFOVMoveTo");
    tab.model->zoomMoveTo(6000);
    QCOMPARE(tab.model->selectedZoomPosition(), 5000U);
    QCOMPARE(tab.log.take(), QStringList());
    QVERIFY(tab.timer("zoomSettleTimer")->isActive());

    // Without an old position also after a refused target.
    tab.gate().script("zvtGetFOVCurrentPos", 5000);
    tab.tick("zoomSettleTimer");
    tab.gate().failNext("zvtFOVMoveTo");
    tab.model->zoomMoveTo(6000);
    tab.tick("zoomSettleTimer");
    QVERIFY(tab.timer("zoomSettleTimer")->isActive());
}

void tst_SetupTabModelZoom::zoomAtZeroHasSettledAtOnce()
{
    SetupTab tab;
    tab.readZoom(0, 9000, 5000);
    tab.gate().script("zvtFOVMoveTo", true);
    tab.gate().script("zvtGetFOVCurrentPos", 0);
    tab.model->zoomMoveTo(1);
    QVERIFY(tab.tick("zoomSettleTimer").contains("zvtGetFocusToDistanceAvailable"));
    QVERIFY(!tab.timer("zoomSettleTimer")->isActive());
}

void tst_SetupTabModelZoom::settlingEndsWhenThePositionCanNotBeRead()
{
    SetupTab tab;
    tab.readZoom(100, 9000, 5000);
    tab.model->zoomMoveTo(6000);
    tab.gate().failNext("zvtGetFOVCurrentPos");
    QCOMPARE(tab.tick("zoomSettleTimer"), QStringList{"zvtGetFOVCurrentPos"});
    QVERIFY(!tab.timer("zoomSettleTimer")->isActive());
}

// The complete zoom of the emulated lens.
void tst_SetupTabModelZoom::zoomedLensChangesItsDistances()
{
    SetupTab tab;
    tab.refresh();
    const float minimum = tab.model->distanceMinimum();
    const uint target = tab.model->fullRangeZoomMaximum();
    QVERIFY(tab.model->selectedZoomPosition() != target);
    tab.model->zoomMoveTo(target);
    for (int poll = 0; poll < 200 && tab.timer("zoomSettleTimer")->isActive(); ++poll) {
        emulator::Clock::advance(250);
        tab.tick("zoomSettleTimer");
    }
    QVERIFY(!tab.timer("zoomSettleTimer")->isActive());
    QVERIFY(tab.model->distanceMinimum() != minimum);
    QCOMPARE(tab.log.take(), QStringList({"selectedZoomPositionChanged", "distanceRangeValuesChanged"}));
}

ZVT_TEST(tst_SetupTabModelZoom)
#include "tst_SetupTabModelZoom.moc"
