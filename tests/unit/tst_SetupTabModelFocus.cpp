#include "tests/support/Test.h"
#include "tests/unit/SetupTabRig.h"

/// Moves of the focus and its slider: the commands, and the reads of the position.
class tst_SetupTabModelFocus : public Test
{
    Q_OBJECT

private slots:
    void focusMovesBySpeedUntilItIsStopped();
    void refusedFocusMoveLooksOnce();
    void focusPercentHasADeadBand_data();
    void focusPercentHasADeadBand();
    void focusPositionIsSignalledChangedOrNot();

    void slowFocusGoesBySteps();
    void slowStepsStayWithinTheLimits_data();
    void slowStepsStayWithinTheLimits();
    void stepsLeadToTheSamePlaceUntilThePositionIsRead();
    void stopOfALensThatGoesByStepsIsNoStopBySpeed();
    void stepsStayOn();
    void unknownIncrementIsTheUsualOne();
    void freshLensSteps();

    void focusSliderSendsATarget();
};

namespace
{

const QStringList focusOnly{"zvtGetFocusCurrentPos"};

QString moved(const char *name, auto value) { return QStringLiteral("%1 %2").arg(QLatin1String(name)).arg(value); }

/// A lens that moves by steps at slow speed.
struct SteppingTab : SetupTab {
    SteppingTab(uint nearPosition, uint farPosition, uint position, uint increment = 90)
        : SetupTab(QStringLiteral("discrete-fov"))
    {
        gate().script("zvtMfgGetFocusSlowControl", 0);
        gate().script("zvtMfgGetFocusPositionIncrement", increment);
        gate().script("zvtSetFocusPos", true);
        readFocus(nearPosition, farPosition, position);
    }
};

} // namespace

void tst_SetupTabModelFocus::focusMovesBySpeedUntilItIsStopped()
{
    SetupTab tab;
    tab.gate().script("zvtFocusMove", true);
    tab.readFocus(100, 5000, 700);
    QTimer *timer = tab.timer("focusPositionTimer");
    QCOMPARE(tab.guiCallsOf([&] { QVERIFY(tab.model->attemptMoveFocus(-3)); }), QStringList{"zvtFocusMove -3"});
    QVERIFY(timer->isActive());
    QCOMPARE(timer->interval(), 300);
    QCOMPARE(tab.log.take(), QStringList());

    tab.gate().script("zvtGetFocusCurrentPos", 650);
    QCOMPARE(tab.tick("focusPositionTimer"), focusOnly);
    QCOMPARE(tab.model->selectedFocusPosition(), 650);

    QCOMPARE(tab.guiCallsOf([&] { QVERIFY(tab.model->attemptMoveFocus(0)); }),
             QStringList{"zvtFocusMove 0"} + focusOnly);
    QVERIFY(!timer->isActive());
    QVERIFY(!tab.timer("slowFocusTimer")->isActive());
}

void tst_SetupTabModelFocus::refusedFocusMoveLooksOnce()
{
    SetupTab tab;
    tab.gate().script("zvtFocusMove", true);
    tab.readFocus(100, 5000, 700);
    tab.model->attemptMoveFocus(1);
    tab.gate().failNext("zvtFocusMove");
    QCOMPARE(tab.guiCallsOf([&] { QVERIFY(!tab.model->attemptMoveFocus(2)); }),
             QStringList{"zvtFocusMove 2"} + focusOnly);
    QVERIFY(!tab.timer("focusPositionTimer")->isActive());
    tab.gate().failNext("zvtFocusMove");
    QVERIFY(!tab.model->attemptMoveFocus(0));
}

void tst_SetupTabModelFocus::focusPercentHasADeadBand_data()
{
    QTest::addColumn<float>("percent");
    QTest::addColumn<QString>("sent");
    QTest::addColumn<bool>("moves");
    QTest::newRow("half") << 0.5F << "zvtFocusMovePercent 0" << false;
    QTest::newRow("minus nearly one") << -0.99F << "zvtFocusMovePercent 0" << false;
    QTest::newRow("one") << 1.0F << "zvtFocusMovePercent 1" << true;
    QTest::newRow("minus a hundred") << -100.0F << "zvtFocusMovePercent -100" << true;
}

void tst_SetupTabModelFocus::focusPercentHasADeadBand()
{
    QFETCH(float, percent);
    QFETCH(QString, sent);
    QFETCH(bool, moves);
    SetupTab tab;
    tab.gate().script("zvtFocusMovePercent", true);
    tab.model->attemptMoveFocusPercent(50.0F);
    QCOMPARE(tab.guiCallsOf([&] { QVERIFY(tab.model->attemptMoveFocusPercent(percent)); }),
             QStringList{sent} + (moves ? QStringList() : focusOnly));
    QCOMPARE(tab.timer("focusPositionTimer")->isActive(), moves);
    QCOMPARE(tab.timer("focusPositionTimer")->interval(), 300);

    tab.gate().failNext("zvtFocusMovePercent");
    QVERIFY(!tab.model->attemptMoveFocusPercent(percent));
    QVERIFY(!tab.timer("focusPositionTimer")->isActive());
}

void tst_SetupTabModelFocus::focusPositionIsSignalledChangedOrNot()
{
    SetupTab tab;
    tab.readFocus(100, 5000, 700);
    tab.tick("focusPositionTimer");
    QCOMPARE(tab.log.take(), QStringList{"selectedFocusPositionChanged"});
    tab.gate().failNext("zvtGetFocusCurrentPos");
    tab.tick("focusPositionTimer");
    QCOMPARE(tab.log.take(), QStringList());
    QCOMPARE(tab.model->selectedFocusPosition(), 700);
}

// Steps of position

void tst_SetupTabModelFocus::slowFocusGoesBySteps()
{
    SteppingTab tab(100, 5000, 2000);
    QCOMPARE(tab.guiCallsOf([&] { QVERIFY(tab.model->attemptMoveFocus(1)); }), QStringList{"zvtSetFocusPos 2090"});
    QVERIFY(tab.timer("slowFocusTimer")->isActive() && tab.timer("focusPositionTimer")->isActive());
    QCOMPARE(tab.timer("slowFocusTimer")->interval(), 90);
    QCOMPARE(tab.timer("focusPositionTimer")->interval(), 300);
    QCOMPARE(tab.guiCallsOf([&] { QVERIFY(tab.model->attemptMoveFocus(0)); }), focusOnly);
    QVERIFY(!tab.timer("slowFocusTimer")->isActive() && !tab.timer("focusPositionTimer")->isActive());
    // The stop has cleared the direction.
    QCOMPARE(tab.tick("slowFocusTimer"), QStringList());

    QCOMPARE(tab.guiCallsOf([&] { QVERIFY(tab.model->attemptMoveFocus(-1)); }), QStringList{"zvtSetFocusPos 1910"});
    // A refused step changes nothing.
    tab.gate().failNext("zvtSetFocusPos");
    QVERIFY(tab.model->attemptMoveFocus(-1));
}

void tst_SetupTabModelFocus::slowStepsStayWithinTheLimits_data()
{
    QTest::addColumn<uint>("nearPosition");
    QTest::addColumn<uint>("farPosition");
    QTest::addColumn<uint>("position");
    QTest::addColumn<int>("direction");
    QTest::addColumn<uint>("commanded");
    QTest::newRow("far end") << 100U << 5000U << 4950U << 1 << 5000U;
    QTest::newRow("near end") << 100U << 5000U << 150U << -1 << 100U;
    QTest::newRow("descending, to far") << 5000U << 100U << 2000U << 1 << 1910U;
    QTest::newRow("descending, far end") << 5000U << 100U << 150U << 1 << 100U;
    QTest::newRow("descending, to near") << 5000U << 100U << 2000U << -1 << 2090U;
    QTest::newRow("descending, near end") << 5000U << 100U << 4950U << -1 << 5000U;
    QTest::newRow("no way between the limits") << 3000U << 3000U << 2000U << 1 << 2000U;
    // Positions are unsigned: one below zero wraps to the top of the range.
    QTest::newRow("below zero") << 0U << 5000U << 50U << -1 << 4294967256U;
}

void tst_SetupTabModelFocus::slowStepsStayWithinTheLimits()
{
    QFETCH(uint, nearPosition);
    QFETCH(uint, farPosition);
    QFETCH(uint, position);
    QFETCH(int, direction);
    QFETCH(uint, commanded);
    SteppingTab tab(nearPosition, farPosition, position);
    const QStringList step{moved("zvtSetFocusPos", commanded)};
    QCOMPARE(tab.guiCallsOf([&] { tab.model->attemptMoveFocus(direction); }), step);
    QCOMPARE(tab.tick("slowFocusTimer"), step);
    QCOMPARE(tab.tick("slowFocusTimer"), step);
}

void tst_SetupTabModelFocus::stepsLeadToTheSamePlaceUntilThePositionIsRead()
{
    SteppingTab tab(100, 5000, 2000, 45);
    tab.model->attemptMoveFocus(1);
    QCOMPARE(tab.tick("slowFocusTimer"), QStringList{"zvtSetFocusPos 2045"});
    QCOMPARE(tab.model->selectedFocusPosition(), 2000);
    tab.gate().script("zvtGetFocusCurrentPos", 2045);
    tab.tick("focusPositionTimer");
    QCOMPARE(tab.tick("slowFocusTimer"), QStringList{"zvtSetFocusPos 2090"});
}

void tst_SetupTabModelFocus::stopOfALensThatGoesByStepsIsNoStopBySpeed()
{
    SteppingTab tab(100, 5000, 2000);
    tab.gate().script("zvtFocusMove", true);
    for (const int speed : {2, -3}) {
        QCOMPARE(tab.guiCallsOf([&] { tab.model->attemptMoveFocus(speed); }),
                 QStringList{moved("zvtFocusMove", speed)});
        QVERIFY(tab.timer("focusPositionTimer")->isActive() && !tab.timer("slowFocusTimer")->isActive());
        QCOMPARE(tab.guiCallsOf([&] { QVERIFY(tab.model->attemptMoveFocus(0)); }), focusOnly);
        QVERIFY(!tab.timer("focusPositionTimer")->isActive());
    }
}

void tst_SetupTabModelFocus::stepsStayOn()
{
    SteppingTab tab(100, 5000, 2000, 45);
    tab.gate().script("zvtMfgGetFocusSlowControl", 1);
    tab.gate().script("zvtMfgGetFocusPositionIncrement", 7);
    tab.refresh();
    QCOMPARE(tab.guiCallsOf([&] { tab.model->attemptMoveFocus(1); }), QStringList{"zvtSetFocusPos 2045"});
}

void tst_SetupTabModelFocus::unknownIncrementIsTheUsualOne()
{
    SetupTab tab(QStringLiteral("discrete-fov"));
    tab.gate().script("zvtMfgGetFocusSlowControl", 0);
    tab.gate().script("zvtSetFocusPos", true);
    tab.gate().failAlways("zvtMfgGetFocusPositionIncrement");
    tab.readFocus(100, 5000, 2000);
    QCOMPARE(tab.guiCallsOf([&] { tab.model->attemptMoveFocus(1); }), QStringList{"zvtSetFocusPos 2090"});

    // A lens moves by speed if the read of its slow control fails.
    SetupTab unknown(QStringLiteral("discrete-fov"));
    unknown.gate().failAlways("zvtMfgGetFocusSlowControl");
    unknown.gate().script("zvtFocusMove", true);
    unknown.readFocus(100, 5000, 2000);
    QCOMPARE(unknown.guiCallsOf([&] { unknown.model->attemptMoveFocus(1); }), QStringList{"zvtFocusMove 1"});
}

// The model starts with a direction and with equal limits.
void tst_SetupTabModelFocus::freshLensSteps()
{
    SetupTab tab;
    tab.gate().script("zvtSetFocusPos", true);
    QCOMPARE(tab.tick("slowFocusTimer"), QStringList{"zvtSetFocusPos 0"});
}

void tst_SetupTabModelFocus::focusSliderSendsATarget()
{
    SetupTab tab;
    tab.gate().script("zvtFocusMoveTo", true);
    tab.readFocus(100, 5000, 700);
    QCOMPARE(tab.callsOf([&] { tab.model->focusMoveTo(700); }), QStringList());
    QCOMPARE(tab.callsOf([&] { tab.model->focusMoveTo(800); }), QStringList{"zvtFocusMoveTo 800"});
    QCOMPARE(tab.model->selectedFocusPosition(), 800);
    QCOMPARE(tab.log.take(), QStringList{"selectedFocusPositionChanged"});
    tab.gate().failNext("zvtFocusMoveTo");
    tab.model->focusMoveTo(900);
    QCOMPARE(tab.model->selectedFocusPosition(), 800);
    QCOMPARE(tab.log.take(), QStringList());
    QVERIFY(!tab.timer("focusPositionTimer")->isActive());
}

ZVT_TEST(tst_SetupTabModelFocus)
#include "tst_SetupTabModelFocus.moc"
