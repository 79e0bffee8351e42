#include "tests/support/Test.h"
#include "tests/unit/SetupTabRig.h"

/// The focus limits and the field of view: the reads, the one that is published, and its signals.
class tst_SetupTabModelLimits : public Test
{
    Q_OBJECT

private slots:
    void discreteLimitsAreReadInOrder_data();
    void discreteLimitsAreReadInOrder();
    void continuousLimitsAreReadInOrder_data();
    void continuousLimitsAreReadInOrder();
    void lensWithoutFieldOfViewReadsNoLimits();
    void limitsAreReadBesideTheRefresh();

    void discreteLimitsArePublishedInOrder();
    void continuousLimitsArePublishedInOrder();
    void failedLimitsStayAsTheyWere_data();
    void failedLimitsStayAsTheyWere();
    void encoderAscendsStrictly_data();
    void encoderAscendsStrictly();
    void minimumAndMaximumFollowTheKindOfLens();

    void readingTheFieldOfViewLoadsItsLimits();
    void unknownFieldOfViewLoadsNothing();
    void choosingAFieldOfViewMarksTheLensState();
    void readOfLimitsClearsTheMarkSilently();

    void newestOfTwoChangesIsPublished();
    void olderReadOfARefreshIsNotPublished();
    void continuousReadIsDroppedWhileOneRuns();
    void modelMayDieDuringAReadOfLimits_data();
    void modelMayDieDuringAReadOfLimits();

    void limitsOfTheDialogAreWrittenAtOnce();
    void limitsOfTheOtherFieldLeaveThePresentAlone_data();
    void limitsOfTheOtherFieldLeaveThePresentAlone();
    void nearAndFarSignalTheRange();
};

namespace
{

const QString discrete = QStringLiteral("discrete-fov");

const QStringList steps{"speedStepValuesChanged"};
const QStringList end{"minimumFocusPositionChanged", "maximumFocusPositionChanged",
                      "focusEncoderHasAscendingValuesNearToFarChanged"};
const QStringList lensStates{"hasAtLeastOneLensStateChanged", "lensStateNamesChanged", "selectedLensStateIndexChanged"};

} // namespace

void tst_SetupTabModelLimits::discreteLimitsAreReadInOrder_data()
{
    QTest::addColumn<int>("fov");
    QTest::addColumn<int>("slowControl");
    QTest::addColumn<bool>("increment");
    QTest::newRow("narrow, by steps") << 0 << 0 << true;
    QTest::newRow("wide, by speed") << 1 << 2 << false;
}

void tst_SetupTabModelLimits::discreteLimitsAreReadInOrder()
{
    QFETCH(int, fov);
    QFETCH(int, slowControl);
    QFETCH(bool, increment);
    SetupTab tab(discrete);
    tab.gate().script("zvtGetFOV", fov);
    tab.gate().script("zvtMfgGetFocusSlowControl", slowControl);
    const auto of = [fov](const char *name) { return QStringLiteral("%1 %2").arg(QLatin1String(name)).arg(fov); };
    QStringList expected{of("zvtGetFocusNearPos"), of("zvtGetFocusFarPos"), of("zvtMfgGetFocusSlowControl")};
    if (increment)
        expected << of("zvtMfgGetFocusPositionIncrement");
    expected << QStringList{"zvtGetFocusCurrentPos", "zvtGetFocusRange",     "zvtGetFocusNearPos 0",
                            "zvtGetFocusFarPos 0",   "zvtGetFocusNearPos 1", "zvtGetFocusFarPos 1"};
    const QStringList calls = tab.refresh();
    QCOMPARE(limitCalls(calls), expected);
    QCOMPARE(calls.last(), QStringLiteral("zvtListLensStates"));

    // The read that the page starts does not include the lens states.
    QCOMPARE(tab.callsOf([&] { tab.model->selectedDiscontinuousFieldOfViewIndex(); }),
             QStringList{"zvtGetFOV"} + expected);

    // The increment is not read if the read of the slow control fails.
    tab.gate().failNext("zvtMfgGetFocusSlowControl");
    expected.removeAll(of("zvtMfgGetFocusPositionIncrement"));
    QCOMPARE(limitCalls(tab.refresh()), expected);
}

void tst_SetupTabModelLimits::continuousLimitsAreReadInOrder_data()
{
    QTest::addColumn<bool>("lensStates");
    QTest::newRow("everything") << true;
    QTest::newRow("low-cost") << false;
}

void tst_SetupTabModelLimits::continuousLimitsAreReadInOrder()
{
    QFETCH(bool, lensStates);
    SetupTab tab(QString::fromLatin1(QTest::currentDataTag()));
    const QStringList calls = tab.refresh();
    QCOMPARE(limitCalls(calls),
             QStringList({"zvtGetFocusRange", "zvtGetFocusCurrentPos", "zvtGetFocusNearPos 2", "zvtGetFocusFarPos 2"}));
    QCOMPARE(calls.contains("zvtListLensStates"), lensStates);
}

void tst_SetupTabModelLimits::lensWithoutFieldOfViewReadsNoLimits()
{
    SetupTab bare(QStringLiteral("bare"));
    QCOMPARE(limitCalls(bare.refresh()), QStringList());

    // The second read of the field of view is used for the limits.
    SetupTab tab(discrete);
    tab.gate().failNext("zvtGetFOV", 2);
    QCOMPARE(limitCalls(tab.refresh()), QStringList());
    tab.gate().failNext("zvtGetFOV", 1);
    QVERIFY(!limitCalls(tab.refresh()).isEmpty());
}

void tst_SetupTabModelLimits::limitsAreReadBesideTheRefresh()
{
    for (const QString &profile : {discrete, QStringLiteral("everything"), QStringLiteral("low-cost")}) {
        SetupTab tab(profile);
        tab.gate().hold("zvtGetFocusManualMode");
        const size_t mark = tab.mark();
        tab.model->refresh();
        QVERIFY(tab.gate().waitHeld("zvtGetFocusManualMode"));
        const int field = profile == discrete ? 1 : 2;
        const QString last = QStringLiteral("zvtGetFocusFarPos %1").arg(field);
        QTRY_VERIFY(tab.calls(mark).contains(last));
        QVERIFY(tab.model->refreshing());
        tab.gate().release("*");
        CameraRig::settle();
    }
}

// The published values

void tst_SetupTabModelLimits::discreteLimitsArePublishedInOrder()
{
    SetupTab tab(discrete);
    tab.gate().script("zvtGetFocusCurrentPos", 4321);
    tab.model->selectedDiscontinuousFieldOfViewIndex();
    CameraRig::settle();
    QCOMPARE(tab.log.take(),
             QStringList({"nearFocusPositionChanged", "farFocusPositionChanged", "selectedFocusPositionChanged"})
                 + steps
                 + QStringList({"fullRangeFocusValuesChanged", "narrowNearFocusPositionChanged",
                                "narrowFarFocusPositionChanged", "wideNearFocusPositionChanged",
                                "wideFarFocusPositionChanged"})
                 + end);
    QCOMPARE(tab.model->nearFocusPosition(), 11000U);
    QCOMPARE(tab.model->farFocusPosition(), 1000U);
    QCOMPARE(tab.model->selectedFocusPosition(), 4321);
    QCOMPARE(tab.model->slowSpeedStep(), 1);
    QCOMPARE(tab.model->mediumSpeedStep(), 2);
    QCOMPARE(tab.model->fastSpeedStep(), 3);
    QCOMPARE(tab.model->fullRangeFocusMinimum(), 100U);
    QCOMPARE(tab.model->fullRangeFocusMaximum(), 12000U);
    QCOMPARE(tab.model->narrowNearFocusPosition(), 11000);
    QCOMPARE(tab.model->narrowFarFocusPosition(), 1000);
    QCOMPARE(tab.model->wideNearFocusPosition(), 9000);
    QCOMPARE(tab.model->wideFarFocusPosition(), 3000);
    QVERIFY(!tab.model->focusEncoderHasAscendingValuesNearToFar());

    // Published also if unchanged. A refresh reads the lens states too.
    tab.model->refresh();
    CameraRig::settle();
    const QStringList order = tab.log.take();
    QCOMPARE(order.mid(order.size() - end.size() - lensStates.size()), end + lensStates);
}

void tst_SetupTabModelLimits::continuousLimitsArePublishedInOrder()
{
    SetupTab tab;
    tab.gate().script("zvtGetFocusRange", QVariantList{10, 60000});
    tab.gate().script("zvtGetFocusNearPos", 100);
    tab.gate().script("zvtGetFocusFarPos", 5000);
    tab.gate().script("zvtGetFocusCurrentPos", 700);
    tab.gate().hold("zvtGetFocusRange");
    tab.model->refresh();
    QTRY_VERIFY(tab.model->hasRefreshed());
    tab.log.take();
    tab.gate().release("*");
    CameraRig::settle();
    QCOMPARE(tab.log.take(),
             QStringList({"fullRangeFocusValuesChanged", "nearFocusPositionChanged", "farFocusPositionChanged",
                          "selectedFocusPositionChanged"})
                 + steps + end + lensStates);
    QCOMPARE(tab.model->fullRangeFocusMinimum(), 10U);
    QCOMPARE(tab.model->fullRangeFocusMaximum(), 60000U);
    QCOMPARE(tab.model->nearFocusPosition(), 100U);
    QCOMPARE(tab.model->farFocusPosition(), 5000U);
    QCOMPARE(tab.model->selectedFocusPosition(), 700);
    QCOMPARE(tab.model->fastSpeedStep(), 3);
    QVERIFY(tab.model->focusEncoderHasAscendingValuesNearToFar());
}

void tst_SetupTabModelLimits::failedLimitsStayAsTheyWere_data()
{
    QTest::addColumn<QString>("failing");
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("signal");
    const auto row = [](const char *failing, int number, const char *signal) {
        QTest::newRow(signal) << failing << number << signal;
    };
    row("zvtGetFocusNearPos", 1, "nearFocusPositionChanged");
    row("zvtGetFocusFarPos", 1, "farFocusPositionChanged");
    row("zvtGetFocusCurrentPos", 1, "selectedFocusPositionChanged");
    row("zvtGetFocusRange", 1, "fullRangeFocusValuesChanged");
    row("zvtGetFocusNearPos", 2, "narrowNearFocusPositionChanged");
    row("zvtGetFocusFarPos", 2, "narrowFarFocusPositionChanged");
    row("zvtGetFocusNearPos", 3, "wideNearFocusPositionChanged");
    row("zvtGetFocusFarPos", 3, "wideFarFocusPositionChanged");
}

void tst_SetupTabModelLimits::failedLimitsStayAsTheyWere()
{
    QFETCH(QString, failing);
    QFETCH(int, number);
    QFETCH(QString, signal);
    SetupTab tab(discrete);
    const auto load = [&] {
        tab.model->selectedDiscontinuousFieldOfViewIndex();
        CameraRig::settle();
        return tab.log.take();
    };
    QStringList expected = load();
    QVERIFY(expected.removeOne(signal));
    tab.gate().failNext(failing.toStdString(), number);
    QCOMPARE(load(), expected);
    QCOMPARE(tab.model->nearFocusPosition(), 11000U);
    QCOMPARE(tab.model->wideFarFocusPosition(), 3000);
}

void tst_SetupTabModelLimits::encoderAscendsStrictly_data()
{
    QTest::addColumn<uint>("nearPosition");
    QTest::addColumn<uint>("farPosition");
    QTest::addColumn<bool>("ascends");
    QTest::newRow("ascending") << 100U << 101U << true;
    QTest::newRow("equal") << 100U << 100U << false;
    QTest::newRow("descending") << 101U << 100U << false;
}

void tst_SetupTabModelLimits::encoderAscendsStrictly()
{
    QFETCH(uint, nearPosition);
    QFETCH(uint, farPosition);
    for (const QString &profile : {discrete, QStringLiteral("everything")}) {
        SetupTab tab(profile);
        tab.readFocus(nearPosition, farPosition, 100);
        QTEST(tab.model->focusEncoderHasAscendingValuesNearToFar(), "ascends");
    }
}

void tst_SetupTabModelLimits::minimumAndMaximumFollowTheKindOfLens()
{
    for (const QString &profile : {discrete, QStringLiteral("everything")}) {
        SetupTab tab(profile);
        tab.gate().script("zvtGetFocusRange", QVariantList{10, 60000});
        tab.readFocus(5000, 100, 700);
        QCOMPARE(tab.model->minimumFocusPosition(), profile == discrete ? 100U : 10U);
        QCOMPARE(tab.model->maximumFocusPosition(), profile == discrete ? 5000U : 60000U);
    }
}

// The field of view

void tst_SetupTabModelLimits::readingTheFieldOfViewLoadsItsLimits()
{
    SetupTab tab(discrete);
    tab.gate().script("zvtGetFOV", 1);
    QCOMPARE(tab.guiCallsOf([&] { QCOMPARE(tab.model->selectedDiscontinuousFieldOfViewIndex(), 1); }),
             QStringList{"zvtGetFOV"});
    CameraRig::settle();
    QVERIFY(!tab.log.take().contains("selectedDiscontinuousFieldOfViewIndexChanged"));
    QCOMPARE(tab.model->nearFocusPosition(), 9000U);
    // The read has stored the value: choosing the wide view now is no change.
    QCOMPARE(tab.callsOf([&] { tab.model->setSelectedDiscontinuousFieldOfViewIndex(1); }), QStringList());
}

void tst_SetupTabModelLimits::unknownFieldOfViewLoadsNothing()
{
    SetupTab tab(discrete);
    tab.gate().script("zvtGetFOV", 1);
    tab.model->selectedDiscontinuousFieldOfViewIndex();
    CameraRig::settle();
    tab.gate().failNext("zvtGetFOV");
    QCOMPARE(tab.callsOf([&] { QCOMPARE(tab.model->selectedDiscontinuousFieldOfViewIndex(), 1); }),
             QStringList{"zvtGetFOV"});
}

void tst_SetupTabModelLimits::choosingAFieldOfViewMarksTheLensState()
{
    for (const bool refused : {false, true}) {
        SetupTab tab(discrete);
        if (refused)
            tab.gate().failNext("zvtSetFOV");
        QCOMPARE(tab.callsOf([&] { tab.model->setSelectedDiscontinuousFieldOfViewIndex(0); }), QStringList());
        QCOMPARE(tab.callsOf([&] { tab.model->setSelectedDiscontinuousFieldOfViewIndex(1); }),
                 QStringList{"zvtSetFOV 1"});
        QCOMPARE(tab.log.take(),
                 QStringList({"selectedDiscontinuousFieldOfViewIndexChanged",
                              "selectedLensStateComponentsModifiedNotSavedChanged"}));
        QVERIFY(tab.model->selectedLensStateComponentsModifiedNotSaved());
        QCOMPARE(tab.callsOf([&] { tab.model->setSelectedDiscontinuousFieldOfViewIndex(1); }), QStringList());
    }
}

void tst_SetupTabModelLimits::readOfLimitsClearsTheMarkSilently()
{
    SetupTab tab(discrete);
    tab.model->setSelectedDiscontinuousFieldOfViewIndex(1);
    tab.log.take();
    tab.model->selectedDiscontinuousFieldOfViewIndex();
    QVERIFY(tab.model->selectedLensStateComponentsModifiedNotSaved());
    CameraRig::settle();
    QVERIFY(!tab.model->selectedLensStateComponentsModifiedNotSaved());
    QVERIFY(!tab.log.take().contains("selectedLensStateComponentsModifiedNotSavedChanged"));

    SetupTab continuous;
    continuous.model->setSelectedDiscontinuousFieldOfViewIndex(1);
    continuous.log.take();
    continuous.model->refresh();
    CameraRig::settle();
    QVERIFY(!continuous.model->selectedLensStateComponentsModifiedNotSaved());
    QVERIFY(!continuous.log.take().contains("selectedLensStateComponentsModifiedNotSavedChanged"));
}

// Simultaneous reads

void tst_SetupTabModelLimits::newestOfTwoChangesIsPublished()
{
    SetupTab tab(discrete);
    tab.gate().hold("zvtGetFocusNearPos");
    for (const int fov : {1, 0}) {
        tab.model->setSelectedDiscontinuousFieldOfViewIndex(fov);
        QCOMPARE(tab.model->selectedDiscontinuousFieldOfViewIndex(), fov);
    }
    QVERIFY(tab.gate().waitHeld("zvtGetFocusNearPos", 1));
    tab.log.take();
    tab.gate().release("*");
    CameraRig::settle();
    QCOMPARE(tab.log.take().count("nearFocusPositionChanged"), 1);
    QCOMPARE(tab.model->nearFocusPosition(), 11000U);
}

// A slow refresh has read the limits of the former field of view; they are dropped.
void tst_SetupTabModelLimits::olderReadOfARefreshIsNotPublished()
{
    SetupTab tab(discrete);
    tab.gate().hold("zvtGetFrameSyncSource");
    const size_t mark = tab.mark();
    tab.model->refresh();
    QTRY_VERIFY(tab.calls(mark).contains("zvtGetFocusFarPos 1"));
    tab.model->setSelectedDiscontinuousFieldOfViewIndex(1);
    QCOMPARE(tab.model->selectedDiscontinuousFieldOfViewIndex(), 1);
    QTRY_COMPARE(tab.model->nearFocusPosition(), 9000U);
    tab.log.take();
    tab.gate().release("*");
    CameraRig::settle();
    QVERIFY(tab.model->hasRefreshed());
    QCOMPARE(tab.model->nearFocusPosition(), 9000U);
    QVERIFY(!tab.log.take().contains("nearFocusPositionChanged"));
}

void tst_SetupTabModelLimits::continuousReadIsDroppedWhileOneRuns()
{
    SetupTab tab;
    tab.gate().hold("zvtGetFocusRange");
    const size_t mark = tab.mark();
    for (int refresh = 0; refresh < 2; ++refresh) {
        tab.model->refresh();
        QVERIFY(!tab.model->hasRefreshed());
        QTRY_VERIFY(tab.model->hasRefreshed());
    }
    QCOMPARE(tab.calls(mark).count("zvtGetFocusRange"), 1);
    tab.log.take();
    tab.gate().release("*");
    CameraRig::settle();
    QCOMPARE(tab.log.take().count("fullRangeFocusValuesChanged"), 1);
    QCOMPARE(limitCalls(tab.refresh()).count("zvtGetFocusRange"), 1);
}

void tst_SetupTabModelLimits::modelMayDieDuringAReadOfLimits_data()
{
    QTest::addColumn<QString>("held");
    for (const char *name : {"zvtGetFocusNearPos", "zvtGetFocusRange", "zvtGetFOV", "zvtGetFrameSyncSource"})
        QTest::newRow(name) << name;
}

void tst_SetupTabModelLimits::modelMayDieDuringAReadOfLimits()
{
    QFETCH(QString, held);
    SetupTab tab(discrete);
    auto *model = new SetupTabModel(&tab.root);
    tab.gate().hold(held.toStdString());
    model->refresh();
    QVERIFY(tab.gate().waitHeld(held.toStdString()));
    model->selectedDiscontinuousFieldOfViewIndex();
    delete model;
    tab.gate().release("*");
    CameraRig::settle();
}

// The dialog of the limits

void tst_SetupTabModelLimits::limitsOfTheDialogAreWrittenAtOnce()
{
    SetupTab tab(discrete);
    tab.readFocus(1, 2, 3);
    tab.gate().failAlways("zvtSetFocusFarPos"); // All statuses are ignored.
    QCOMPARE(tab.callsOf([&] { tab.model->setNarrowWideNearFarPositions(11, 12, 13, 14); }),
             QStringList({"zvtSetFocusNearPos 0, 11", "zvtSetFocusFarPos 0, 12", "zvtSetFocusNearPos 1, 13",
                          "zvtSetFocusFarPos 1, 14"}));
    QCOMPARE(tab.log.take(),
             QStringList({"narrowNearFocusPositionChanged", "narrowFarFocusPositionChanged",
                          "wideNearFocusPositionChanged", "wideFarFocusPositionChanged", "nearFocusPositionChanged",
                          "minimumFocusPositionChanged", "maximumFocusPositionChanged", "farFocusPositionChanged",
                          "minimumFocusPositionChanged", "maximumFocusPositionChanged"}));
    QCOMPARE(tab.model->narrowNearFocusPosition(), 11);
    QCOMPARE(tab.model->narrowFarFocusPosition(), 12);
    QCOMPARE(tab.model->wideNearFocusPosition(), 13);
    QCOMPARE(tab.model->wideFarFocusPosition(), 14);

    // Each value is signalled before it is written.
    QStringList written;
    const size_t mark = tab.mark();
    QObject::connect(tab.model, &SetupTabModel::wideNearFocusPositionChanged, this, [&] { written = tab.calls(mark); });
    tab.model->setNarrowWideNearFarPositions(21, 22, 23, 24);
    QCOMPARE(written.size(), 2);
}

void tst_SetupTabModelLimits::limitsOfTheOtherFieldLeaveThePresentAlone_data()
{
    QTest::addColumn<int>("fov");
    QTest::addColumn<uint>("nearPosition");
    QTest::addColumn<uint>("farPosition");
    QTest::newRow("narrow") << 0 << 11U << 12U;
    QTest::newRow("wide") << 1 << 13U << 14U;
    QTest::newRow("neither") << 2 << 1U << 2U;
}

void tst_SetupTabModelLimits::limitsOfTheOtherFieldLeaveThePresentAlone()
{
    QFETCH(int, fov);
    SetupTab tab(discrete);
    tab.readFocus(1, 2, 3);
    tab.gate().script("zvtGetFOV", fov);
    tab.model->selectedDiscontinuousFieldOfViewIndex();
    CameraRig::settle();
    tab.model->setNarrowWideNearFarPositions(11, 12, 13, 14);
    QTEST(tab.model->nearFocusPosition(), "nearPosition");
    QTEST(tab.model->farFocusPosition(), "farPosition");
}

void tst_SetupTabModelLimits::nearAndFarSignalTheRange()
{
    SetupTab tab(discrete);
    tab.readFocus(100, 5000, 700);
    const QStringList range{"minimumFocusPositionChanged", "maximumFocusPositionChanged"};
    const QStringList calls = tab.callsOf([&] {
        tab.model->setNearFocusPosition(100);
        tab.model->setFarFocusPosition(5000);
        QCOMPARE(tab.log.take(), QStringList());
        tab.model->setNearFocusPosition(6000);
        QCOMPARE(tab.log.take(), QStringList{"nearFocusPositionChanged"} + range);
        tab.model->setFarFocusPosition(200);
        QCOMPARE(tab.log.take(), QStringList{"farFocusPositionChanged"} + range);
    });
    QCOMPARE(calls, QStringList());
    QCOMPARE(tab.model->minimumFocusPosition(), 200U);
    QCOMPARE(tab.model->maximumFocusPosition(), 6000U);
}

ZVT_TEST(tst_SetupTabModelLimits)
#include "tst_SetupTabModelLimits.moc"
