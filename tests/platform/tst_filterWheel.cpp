#include "platform/emulator/devices/filterTable.h"
#include "tests/platform/FilterRig.h"
#include "tests/support/Test.h"

#include <future>

using emulator::Clock;

/// The filters in the wheel, its turns and its scans.
class tst_filterWheel : public Test
{
    Q_OBJECT

private slots:
    void wheelsOfTheProfiles_data();
    void wheelsOfTheProfiles();
    void slotsAreReadOneByOne();
    void theTableOfTheFactoryIsWritten();
    void anUnknownDefaultPassesEverything();

    void turnsTakeTheShorterWay_data();
    void turnsTakeTheShorterWay();
    void aFilterInThePathNeedsNoTurn();
    void theFirstSlotOfAnIdIsTaken();
    void filtersThatNoSlotHoldsAreRefused();
    void theIdIsUnknownWhileTheWheelTurns();
    void anotherCommandTakesTheWheelOver();
    void aTurnStartsWhereTheWheelIs();
    void theSameCommandJoinsTheTurn();
    void disconnectionEndsTheCommandOnly();
    void aClockThatIsSetBackEndsTheTurn();
    void withoutAConnectionTheWheelIsThereAtOnce();

    void scansTakeASecondForEachSlot_data();
    void scansTakeASecondForEachSlot();
    void scansCopyWhatIsInserted();
    void aFilterThatWasReplacedIsSeenAtOnce();
    void anInterruptedScanCopiesNothing_data();
    void anInterruptedScanCopiesNothing();
    void aWheelWithOtherSlotsStartsAtTheFirst();
};

// The filters

void tst_filterWheel::wheelsOfTheProfiles_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<Ids>("ids");
    QTest::newRow("everything") << 4 << Ids{1, 13, 21, 25};
    QTest::newRow("discrete-fov") << 3 << Ids{1, 4, 21, 0};
    QTest::newRow("edge-values") << 3 << Ids{63, 0, 63, 0};
    for (const char *none : {"te-cooler", "low-cost", "board-6", "bare"})
        QTest::newRow(none) << 77 << Ids();
}

void tst_filterWheel::wheelsOfTheProfiles()
{
    QFETCH(const int, count);
    QFETCH(const Ids, ids);
    Wheel wheel(QTest::currentDataTag());
    uint8_t present = 77;
    QCOMPARE(zvtGetFilterWheelPresent(wheel.handle(), &present), 0);
    QCOMPARE(present, uint8_t(!ids.isEmpty()));
    QCOMPARE(wheel.count(), count);
    QCOMPARE(wheel.known(), ids);
    QCOMPARE(wheel.current(), ids.isEmpty() ? -1 : ids.first());
    const QJsonObject capabilities = wheel.camera().capabilities();
    QCOMPARE(capabilities.value(QStringLiteral("hasFilterWheel")).toBool(), !ids.isEmpty());
    QCOMPARE(capabilities.value(QStringLiteral("hasReplaceableFilters")).toBool(),
             !ids.isEmpty() && qstrcmp(QTest::currentDataTag(), "discrete-fov") != 0);
    if (ids.isEmpty()) {
        QCOMPARE(zvtScanFilters(wheel.handle()), int(emulator::Absent));
        uint8_t id = 77;
        QCOMPARE(zvtGetFilterIDInSlot(wheel.handle(), 0, &id), int(emulator::Absent));
        QCOMPARE(zvtSetFilterIDInSlot(wheel.handle(), 0, 1), int(emulator::Absent));
        QCOMPARE(id, uint8_t(77));
        QCOMPARE(wheel.setName(1, "x"), int(emulator::Absent));
    }
}

void tst_filterWheel::slotsAreReadOneByOne()
{
    Wheel wheel("discrete-fov");
    const Ids ids = wheel.known();
    for (uint8_t slot = 0; slot < 4; ++slot) {
        uint8_t id = 77;
        QCOMPARE(zvtGetFilterIDInSlot(wheel.handle(), slot, &id), 0);
        QCOMPARE(int(id), ids.at(slot));
    }
    for (const uint8_t slot : {4, 255}) {
        uint8_t id = 77;
        QCOMPARE(zvtGetFilterIDInSlot(wheel.handle(), slot, &id), refused);
        QCOMPARE(id, uint8_t(77));
    }
}

void tst_filterWheel::theTableOfTheFactoryIsWritten()
{
    Wheel wheel("discrete-fov");
    QVERIFY(wheel.useSmallWindow() && wheel.showArea(35));
    const FrameRig::Counts before = wheel.newest();
    QCOMPARE(zvtSetFilterIDInSlot(wheel.handle(), 0, 2), 0);
    QCOMPARE(zvtSetFilterIDInSlot(wheel.handle(), 2, 63), 0);
    QCOMPARE(wheel.known(), Ids({2, 4, 63, 0}));
    QCOMPARE(wheel.current(), 2);
    // The filter itself has not changed.
    QVERIFY(wheel.newest() == before);
    QCOMPARE(zvtSetFilterIDInSlot(wheel.handle(), 3, 1), refused);
    QCOMPARE(zvtSetFilterIDInSlot(wheel.handle(), 0, 64), refused);
    QCOMPARE(wheel.known(), Ids({2, 4, 63, 0}));
    QCOMPARE(zvtScanFilters(wheel.handle()), 0);
    QCOMPARE(wheel.known(), Ids({1, 4, 21, 0}));
    Wheel four;
    QCOMPARE(zvtSetFilterIDInSlot(four.handle(), 3, 1), 0);
    QCOMPARE(zvtSetFilterIDInSlot(four.handle(), 4, 1), refused);
}

void tst_filterWheel::anUnknownDefaultPassesEverything()
{
    QCOMPARE(emulator::filterTransmission(63), 1.0);
    QCOMPARE(emulator::filterTransmission(64), 1.0);
    QVERIFY(!emulator::filterName(64));
}

// Turning

void tst_filterWheel::turnsTakeTheShorterWay_data()
{
    QTest::addColumn<QString>("profile");
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<int>("milliseconds");
    QTest::newRow("one forwards") << "everything" << 0 << 1 << 1000;
    QTest::newRow("two") << "everything" << 0 << 2 << 1800;
    QTest::newRow("one backwards") << "everything" << 0 << 3 << 1000;
    QTest::newRow("over the end") << "everything" << 3 << 0 << 1000;
    QTest::newRow("two over the end") << "everything" << 3 << 1 << 1800;
    QTest::newRow("one of three") << "discrete-fov" << 1 << 2 << 1000;
    QTest::newRow("one backwards of three") << "discrete-fov" << 0 << 2 << 1000;
}

void tst_filterWheel::turnsTakeTheShorterWay()
{
    QFETCH(const QString, profile);
    QFETCH(const int, from);
    QFETCH(const int, to);
    QFETCH(const int, milliseconds);
    Wheel wheel(profile.toLatin1().constData());
    const Ids ids = wheel.known();
    QCOMPARE(wheel.turnTo(static_cast<uint8_t>(ids.at(from))), 0);
    int status = -1;
    const int64_t duration = Wheel::durationOf([&] { status = wheel.turnTo(static_cast<uint8_t>(ids.at(to))); });
    QCOMPARE(status, 0);
    QCOMPARE(duration, milliseconds);
    QCOMPARE(wheel.current(), ids.at(to));
}

void tst_filterWheel::aFilterInThePathNeedsNoTurn()
{
    Wheel wheel;
    QCOMPARE(Wheel::durationOf([&] { QCOMPARE(wheel.turnTo(1), 0); }), 0);
}

void tst_filterWheel::theFirstSlotOfAnIdIsTaken()
{
    Wheel wheel;
    QVERIFY(wheel.set("filters.inserted", listOf({5, 9, 5, 2})) && wheel.set("filters.known", listOf({5, 9, 5, 2})));
    QCOMPARE(wheel.turnTo(2), 0);
    // The first one is a step away, as the other one.
    QVERIFY(wheel.set("filters.current", 5));
    Clock::advance(2000);
    QVERIFY(wheel.set("filters.inserted", listOf({2, 9, 1, 2})));
    QVERIFY(wheel.useSmallWindow() && wheel.showArea(35));
    QVERIFY(wheel.isDark());
}

void tst_filterWheel::filtersThatNoSlotHoldsAreRefused()
{
    Wheel wheel("discrete-fov");
    for (const uint8_t id : {0, 2, 64, 255})
        QCOMPARE(wheel.turnTo(id), refused);
    QCOMPARE(wheel.current(), 1);
    // The camera believes in a slot that the wheel lacks.
    QVERIFY(wheel.set("filters.known", listOf({1, 4, 21, 30})));
    QCOMPARE(wheel.count(), 4);
    QCOMPARE(wheel.turnTo(30), refused);
}

void tst_filterWheel::theIdIsUnknownWhileTheWheelTurns()
{
    Wheel wheel;
    QVERIFY(wheel.set("filters.current", 13));
    QCOMPARE(wheel.current(), -1);
    Clock::advance(999);
    QCOMPARE(wheel.current(), -1);
    Clock::advance(1);
    QCOMPARE(wheel.current(), 13);
}

void tst_filterWheel::anotherCommandTakesTheWheelOver()
{
    Wheel wheel;
    Clock::automatic();
    auto turning = std::async(std::launch::async, [&] { return wheel.turnTo(21); });
    QTRY_COMPARE(wheel.current(), -1);
    QVERIFY(wheel.set("filters.current", 25));
    QCOMPARE(turning.get(), refused);
    Clock::stop();
    QCOMPARE(wheel.current(), -1);
    Clock::advance(1800);
    QCOMPARE(wheel.current(), 25);
}

void tst_filterWheel::aTurnStartsWhereTheWheelIs()
{
    Wheel wheel;
    QVERIFY(wheel.set("filters.current", 13));
    Clock::advance(400);
    QCOMPARE(Wheel::durationOf([&] { QCOMPARE(wheel.turnTo(1), 0); }), 600);
    QCOMPARE(wheel.current(), 1);
}

void tst_filterWheel::theSameCommandJoinsTheTurn()
{
    Wheel wheel;
    QVERIFY(wheel.set("filters.current", 13));
    Clock::advance(400);
    QCOMPARE(Wheel::durationOf([&] { QCOMPARE(wheel.turnTo(13), 0); }), 600);
}

void tst_filterWheel::aClockThatIsSetBackEndsTheTurn()
{
    Wheel wheel;
    Clock::advance(3'600'000);
    QVERIFY(wheel.set("filters.current", 21));
    Clock::manual(); // Back to the start.
    QCOMPARE(wheel.current(), 21);
}

void tst_filterWheel::disconnectionEndsTheCommandOnly()
{
    Wheel wheel;
    Clock::automatic();
    auto turning = std::async(std::launch::async, [&] { return wheel.turnTo(21); });
    QTRY_COMPARE(wheel.current(), -1);
    wheel.camera().disconnect();
    QCOMPARE(turning.get(), int(emulator::NotConnected));
    wheel.camera().connect();
    Clock::stop();
    QCOMPARE(wheel.current(), -1);
    Clock::advance(1800);
    QCOMPARE(wheel.current(), 21);
}

void tst_filterWheel::withoutAConnectionTheWheelIsThereAtOnce()
{
    Wheel wheel;
    wheel.camera().disconnect();
    QVERIFY(wheel.set("filters.current", 21));
    wheel.camera().connect();
    QCOMPARE(wheel.current(), 21);
}

// Scanning

void tst_filterWheel::scansTakeASecondForEachSlot_data()
{
    QTest::addColumn<int>("milliseconds");
    QTest::newRow("everything") << 5000;
    QTest::newRow("discrete-fov") << 4000;
}

void tst_filterWheel::scansTakeASecondForEachSlot()
{
    QFETCH(const int, milliseconds);
    Wheel wheel(QTest::currentDataTag());
    const Ids ids = wheel.known();
    QCOMPARE(wheel.turnTo(4) == 0 || wheel.turnTo(21) == 0, true);
    const int before = wheel.current();
    QCOMPARE(Wheel::durationOf([&] { QCOMPARE(zvtScanFilters(wheel.handle()), 0); }), milliseconds);
    QCOMPARE(wheel.current(), before);
    QCOMPARE(wheel.known(), ids);
}

void tst_filterWheel::scansCopyWhatIsInserted()
{
    Wheel wheel;
    QVERIFY(wheel.set("filters.inserted", listOf({1, 2, 3})));
    QCOMPARE(wheel.count(), 4);
    QCOMPARE(wheel.known(), Ids({1, 13, 21, 25}));
    QCOMPARE(zvtScanFilters(wheel.handle()), 0);
    QCOMPARE(wheel.count(), 3);
    QCOMPARE(wheel.known(), Ids({1, 2, 3, 0}));
    QCOMPARE(wheel.turnTo(0), refused);
    QVERIFY(wheel.set("filters.inserted", listOf({6, 7, 8, 9})));
    QCOMPARE(zvtScanFilters(wheel.handle()), 0);
    QCOMPARE(wheel.known(), Ids({6, 7, 8, 9}));
}

void tst_filterWheel::aFilterThatWasReplacedIsSeenAtOnce()
{
    Wheel wheel;
    QVERIFY(wheel.useSmallWindow() && wheel.showArea(35));
    QVERIFY(!wheel.isDark());
    QVERIFY(wheel.set("filters.inserted", listOf({2, 13, 21, 25})));
    QVERIFY(wheel.isDark());
    QCOMPARE(wheel.current(), 1);
}

void tst_filterWheel::anInterruptedScanCopiesNothing_data()
{
    QTest::addColumn<bool>("disconnected");
    QTest::newRow("by another turn") << false;
    QTest::newRow("by a disconnection") << true;
}

void tst_filterWheel::anInterruptedScanCopiesNothing()
{
    QFETCH(const bool, disconnected);
    Wheel wheel;
    QVERIFY(wheel.set("filters.inserted", listOf({6, 7, 8, 9})));
    Clock::automatic();
    auto scanning = std::async(std::launch::async, [&] { return zvtScanFilters(wheel.handle()); });
    QTRY_COMPARE(wheel.current(), -1);
    if (disconnected)
        wheel.camera().disconnect();
    else // To the filter in the path: the wheel does not end its round.
        QVERIFY(wheel.set("filters.current", 1));
    QCOMPARE(scanning.get(), disconnected ? int(emulator::NotConnected) : refused);
    wheel.camera().connect();
    QCOMPARE(wheel.known(), Ids({1, 13, 21, 25}));
}

void tst_filterWheel::aWheelWithOtherSlotsStartsAtTheFirst()
{
    Wheel wheel;
    QCOMPARE(wheel.turnTo(25), 0);
    QVERIFY(wheel.set("filters.inserted", listOf({6, 7, 8})));
    QCOMPARE(wheel.current(), 1);
    QVERIFY(wheel.set("filters.current", 13));
    QVERIFY(wheel.set("filters.inserted", listOf({6, 7, 8, 9})));
    QCOMPARE(wheel.current(), 1);
}

ZVT_TEST(tst_filterWheel)
#include "tst_filterWheel.moc"
