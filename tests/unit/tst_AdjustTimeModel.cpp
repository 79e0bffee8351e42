#include "tests/support/Test.h"
#include "tests/support/modelOf.h"

#include "status/AdjustTimeModel.h"

#include <QSignalSpy>

namespace
{

struct Time {
    explicit Time(bool connected = true)
        : rig(QStringLiteral("everything"), connected), root(rig.controller(), nullptr), model(*root.adjustTime())
    {
        CameraRig::settle();
    }

    void read(void (AdjustTimeModel::*start)())
    {
        (model.*start)();
        CameraRig::settle();
    }

    /// The calls that write the clocks, with their arguments.
    QStringList writesSince(size_t mark)
    {
        QStringList writes;
        for (const auto &call : rig.gate().callsSince(mark))
            if (call.name.starts_with("zvtSet"))
                writes << QString::fromStdString(call.name + "(" + call.arguments + ")");
        return writes;
    }

    CameraRig rig;
    ZvtCameraModel root;
    AdjustTimeModel &model;
};

const QDateTime someTime(QDate(2031, 12, 24), QTime(18, 5, 9));

} // namespace

class tst_AdjustTimeModel : public Test
{
    Q_OBJECT

private slots:
    void nothingIsKnownAtFirst();
    void refreshReadsTheRealTimeClock();
    void refreshSignalsOnlyAnotherTime();
    void getSignalsTheSameTimeToo();
    void getIsDroppedWhileARefreshRuns();
    void refreshedRisesOnce();
    void failedReadKeepsTheTime();
    void timeThatIsNoneIsInvalid_data();
    void timeThatIsNoneIsInvalid();

    void setWritesBothClocks();
    void setWritesBothClocksWhicheverIsInUse();
    void setOfTheSameTimeWritesNothing();
    void refusedTimeIsShownAllTheSame();
    void yearWrapsInTheByteOfTheRealTimeClock_data();
    void yearWrapsInTheByteOfTheRealTimeClock();
    void invalidTimeReachesTheCamera();
    void invalidTimeOnAFreshModelIsTheSame();
    void setClockRunsOn();
    void computerTimeIsTaken();

    void failingReads();
    void heldReadsOutliveTheModel();
    void secondRefreshIsDropped();
    void readsWithoutACamera();
    void randomOperator();
};

void tst_AdjustTimeModel::nothingIsKnownAtFirst()
{
    Time time;
    QVERIFY(!time.model.refreshing());
    QVERIFY(!time.model.hasRefreshed());
    QVERIFY(!time.model.cameraTime().isValid());
}

void tst_AdjustTimeModel::refreshReadsTheRealTimeClock()
{
    Time time;
    time.rig.gate().script("zvtGetRealTimeClock", QVariantList{31, 12, 24, 18, 5, 9});
    const size_t mark = time.rig.gate().mark();
    QStringList order;
    const auto note = [&](auto signal, const char *name) {
        QObject::connect(&time.model, signal, this, [&order, name] { order << name; });
    };
    note(&AdjustTimeModel::refreshingChanged, "refreshing");
    note(&AdjustTimeModel::cameraTimeChanged, "time");
    note(&AdjustTimeModel::hasRefreshedChanged, "hasRefreshed");
    time.read(&AdjustTimeModel::refresh);
    QCOMPARE(time.rig.callsSince(mark), QStringList("zvtGetRealTimeClock"));
    QCOMPARE(time.model.cameraTime(), someTime);
    QCOMPARE(time.model.cameraTime().timeSpec(), Qt::LocalTime);
    QCOMPARE(order, QStringList({"refreshing", "time", "hasRefreshed", "refreshing"}));
}

void tst_AdjustTimeModel::refreshSignalsOnlyAnotherTime()
{
    Time time;
    time.read(&AdjustTimeModel::refresh);
    const QSignalSpy changed(&time.model, &AdjustTimeModel::cameraTimeChanged);
    time.read(&AdjustTimeModel::refresh);
    QCOMPARE(changed.size(), 0);
    emulator::Clock::advance(1000);
    time.read(&AdjustTimeModel::refresh);
    QCOMPARE(changed.size(), 1);
}

void tst_AdjustTimeModel::getSignalsTheSameTimeToo()
{
    Time time;
    time.read(&AdjustTimeModel::refresh);
    const QSignalSpy changed(&time.model, &AdjustTimeModel::cameraTimeChanged);
    time.read(&AdjustTimeModel::getCameraTime);
    QCOMPARE(changed.size(), 1);
}

void tst_AdjustTimeModel::getIsDroppedWhileARefreshRuns()
{
    Time time;
    time.read(&AdjustTimeModel::refresh);
    const QSignalSpy changed(&time.model, &AdjustTimeModel::cameraTimeChanged);
    time.rig.gate().hold("zvtGetRealTimeClock");
    time.model.refresh();
    QVERIFY(time.rig.gate().waitHeld("zvtGetRealTimeClock"));
    const size_t mark = time.rig.gate().mark();
    time.model.getCameraTime();
    time.rig.gate().release("*");
    CameraRig::settle();
    QCOMPARE(time.rig.callsSince(mark), QStringList());
    QCOMPARE(changed.size(), 0);
}

void tst_AdjustTimeModel::refreshedRisesOnce()
{
    Time time;
    const QSignalSpy refreshed(&time.model, &AdjustTimeModel::hasRefreshedChanged);
    time.read(&AdjustTimeModel::refresh);
    time.model.getCameraTime();
    QVERIFY(time.model.refreshing());
    QVERIFY(time.model.hasRefreshed());
    CameraRig::settle();
    QVERIFY(!time.model.refreshing());
    QCOMPARE(refreshed.size(), 1);
}

void tst_AdjustTimeModel::failedReadKeepsTheTime()
{
    Time time;
    time.read(&AdjustTimeModel::refresh);
    const QDateTime before = time.model.cameraTime();
    const QSignalSpy changed(&time.model, &AdjustTimeModel::cameraTimeChanged);
    emulator::Clock::advance(5000);
    time.rig.gate().failAlways("zvtGetRealTimeClock");
    time.read(&AdjustTimeModel::getCameraTime);
    QCOMPARE(changed.size(), 0);
    QCOMPARE(time.model.cameraTime(), before);
}

void tst_AdjustTimeModel::timeThatIsNoneIsInvalid_data()
{
    QTest::addColumn<QVariantList>("fields");
    QTest::newRow("month") << QVariantList{31, 13, 24, 18, 5, 9};
    QTest::newRow("day") << QVariantList{31, 2, 30, 18, 5, 9};
    QTest::newRow("hour") << QVariantList{31, 12, 24, 24, 5, 9};
    QTest::newRow("second") << QVariantList{31, 12, 24, 18, 5, 60};
}

void tst_AdjustTimeModel::timeThatIsNoneIsInvalid()
{
    QFETCH(const QVariantList, fields);
    Time time;
    time.read(&AdjustTimeModel::refresh);
    QVERIFY(time.model.cameraTime().isValid());
    time.rig.gate().script("zvtGetRealTimeClock", fields);
    time.read(&AdjustTimeModel::refresh);
    QVERIFY(!time.model.cameraTime().isValid());
}

// Setting

void tst_AdjustTimeModel::setWritesBothClocks()
{
    Time time;
    const QSignalSpy changed(&time.model, &AdjustTimeModel::cameraTimeChanged);
    const QDateTime moment = someTime.addMSecs(123);
    const size_t mark = time.rig.gate().mark();
    time.model.setCameraTime(moment);
    QCOMPARE(time.writesSince(mark),
             QStringList({"zvtSetRealTimeClock(31, 12, 24, 18, 5, 9)", "zvtSetIRIGTime(2031, 358, 18, 5, 9, 123, 0)"}));
    QCOMPARE(time.model.cameraTime(), moment);
    QCOMPARE(changed.size(), 1);
}

void tst_AdjustTimeModel::setWritesBothClocksWhicheverIsInUse()
{
    CameraRig rig(QStringLiteral("irig"));
    ZvtCameraModel root(rig.controller(), nullptr);
    CameraRig::settle();
    const size_t mark = rig.gate().mark();
    root.adjustTime()->setCameraTime(someTime);
    QCOMPARE(rig.callsSince(mark), QStringList({"zvtSetRealTimeClock", "zvtSetIRIGTime"}));
}

void tst_AdjustTimeModel::setOfTheSameTimeWritesNothing()
{
    Time time;
    time.model.setCameraTime(someTime);
    const QSignalSpy changed(&time.model, &AdjustTimeModel::cameraTimeChanged);
    const size_t mark = time.rig.gate().mark();
    time.model.setCameraTime(someTime);
    QCOMPARE(time.writesSince(mark), QStringList());
    QCOMPARE(changed.size(), 0);
}

void tst_AdjustTimeModel::refusedTimeIsShownAllTheSame()
{
    Time time;
    time.rig.gate().failAlways("zvtSetRealTimeClock");
    time.rig.gate().failAlways("zvtSetIRIGTime");
    time.model.setCameraTime(someTime);
    QCOMPARE(time.model.cameraTime(), someTime);
}

void tst_AdjustTimeModel::yearWrapsInTheByteOfTheRealTimeClock_data()
{
    QTest::addColumn<int>("year");
    QTest::addColumn<int>("byte");
    QTest::newRow("first") << 2000 << 0;
    QTest::newRow("last") << 2255 << 255;
    QTest::newRow("before") << 1999 << 255;
    QTest::newRow("behind") << 2256 << 0;
}

void tst_AdjustTimeModel::yearWrapsInTheByteOfTheRealTimeClock()
{
    QFETCH(const int, year);
    QFETCH(const int, byte);
    Time time;
    const size_t mark = time.rig.gate().mark();
    time.model.setCameraTime(QDateTime(QDate(year, 1, 2), QTime(3, 4, 5)));
    QCOMPARE(time.writesSince(mark),
             QStringList({QStringLiteral("zvtSetRealTimeClock(%1, 1, 2, 3, 4, 5)").arg(byte),
                          QStringLiteral("zvtSetIRIGTime(%1, 2, 3, 4, 5, 0, 0)").arg(year)}));
}

// Empty fields make an invalid date. The camera refuses it and keeps its time.
void tst_AdjustTimeModel::invalidTimeReachesTheCamera()
{
    Time time;
    time.model.setCameraTime(someTime);
    const size_t mark = time.rig.gate().mark();
    time.model.setCameraTime(QDateTime());
    QCOMPARE(time.writesSince(mark).size(), 2);
    for (const auto &call : time.rig.gate().callsSince(mark))
        if (call.name.starts_with("zvtSet"))
            QVERIFY(call.status != 0);
    QVERIFY(!time.model.cameraTime().isValid());
    time.read(&AdjustTimeModel::refresh);
    QCOMPARE(time.model.cameraTime(), someTime);
}

void tst_AdjustTimeModel::invalidTimeOnAFreshModelIsTheSame()
{
    Time time;
    const size_t mark = time.rig.gate().mark();
    time.model.setCameraTime(QDateTime());
    QCOMPARE(time.writesSince(mark), QStringList());
}

void tst_AdjustTimeModel::setClockRunsOn()
{
    Time time;
    time.model.setCameraTime(someTime);
    emulator::Clock::advance(61'000);
    time.read(&AdjustTimeModel::refresh);
    QCOMPARE(time.model.cameraTime(), someTime.addSecs(61));
}

void tst_AdjustTimeModel::computerTimeIsTaken()
{
    Time time;
    const QDateTime before = QDateTime::currentDateTime();
    time.model.syncCameraTimeToPC();
    const QDateTime after = QDateTime::currentDateTime();
    QVERIFY(before <= time.model.cameraTime() && time.model.cameraTime() <= after);
    QCOMPARE(time.model.cameraTime().timeSpec(), Qt::LocalTime);
}

void tst_AdjustTimeModel::failingReads() { walkFailingReads(modelOf<AdjustTimeModel>()); }

void tst_AdjustTimeModel::heldReadsOutliveTheModel() { walkHeldDeletion(modelOf<AdjustTimeModel>()); }

void tst_AdjustTimeModel::secondRefreshIsDropped() { walkSecondRefresh(modelOf<AdjustTimeModel>()); }

void tst_AdjustTimeModel::readsWithoutACamera() { walkNoCamera(modelOf<AdjustTimeModel>()); }

void tst_AdjustTimeModel::randomOperator() { walkRandomOperator(modelOf<AdjustTimeModel>(), 23); }

ZVT_TEST(tst_AdjustTimeModel)
#include "tst_AdjustTimeModel.moc"
