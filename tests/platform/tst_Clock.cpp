#include "platform/emulator/Clock.h"
#include "tests/support/Test.h"

#include <chrono>
#include <thread>
#include <vector>

using emulator::Clock;

namespace
{

constexpr int64_t leapDayNoon = 1709208000000;

int64_t computerTime()
{
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(sinceEpoch).count();
}

} // namespace

class tst_Clock : public Test
{
    Q_OBJECT

private slots:
    void cleanup() { Clock::automatic(); }

    void followsTheComputerByDefault()
    {
        QVERIFY(!Clock::isManual());
        const int64_t before = computerTime();
        const int64_t now = Clock::now();
        QVERIFY(before <= now && now <= computerTime());
    }

    void standsStillWhenTakenOver()
    {
        Clock::manual();
        QVERIFY(Clock::isManual());
        QCOMPARE(Clock::now(), leapDayNoon);
        QCOMPARE(Clock::now(), leapDayNoon);
    }

    void startsAgainAtTheSameInstant()
    {
        Clock::manual();
        Clock::advance(5000);
        Clock::manual();
        QCOMPARE(Clock::now(), leapDayNoon);
    }

    void stopsAtThePresentTime()
    {
        const int64_t before = computerTime();
        Clock::stop();
        const int64_t stopped = Clock::now();
        QVERIFY(Clock::isManual());
        QVERIFY(before <= stopped && stopped <= computerTime());
        Clock::advance(1500);
        Clock::stop();
        QCOMPARE(Clock::now(), stopped + 1500);
    }

    void movesForwardOnly()
    {
        Clock::manual();
        Clock::advance(1500);
        Clock::advance(0);
        Clock::advance(-700);
        QCOMPARE(Clock::now(), leapDayNoon + 1500);
    }

    void waitingMovesAManualClock()
    {
        Clock::manual();
        Clock::wait(3'600'000);
        QCOMPARE(Clock::now(), leapDayNoon + 3'600'000);
        Clock::wait(-1);
        QCOMPARE(Clock::now(), leapDayNoon + 3'600'000);
    }

    void waitingTakesTimeOtherwise()
    {
        const auto before = std::chrono::steady_clock::now();
        Clock::wait(20);
        QVERIFY(std::chrono::steady_clock::now() - before >= std::chrono::milliseconds(20));
        Clock::wait(-1);
    }

    void anAutomaticClockCannotBeAdvanced()
    {
        Clock::advance(1'000'000'000);
        QVERIFY(Clock::now() <= computerTime());
    }

    void returnsToTheComputersTime()
    {
        Clock::manual();
        Clock::automatic();
        QVERIFY(!Clock::isManual());
        QVERIFY(Clock::now() > leapDayNoon);
    }

    void anEarlierTimeEndsWithItsObject()
    {
        Clock::manual();
        {
            const Clock::AsOf outer(1000);
            {
                const Clock::AsOf inner(500);
                QCOMPARE(Clock::now(), 500);
            }
            QVERIFY(Clock::isAsOf());
            QCOMPARE(Clock::now(), 1000);
        }
        QVERIFY(!Clock::isAsOf());
        QCOMPARE(Clock::now(), leapDayNoon);
    }

    void advancesFromManyThreadsAddUp()
    {
        Clock::manual();
        std::vector<std::thread> threads;
        for (int i = 0; i < 4; ++i)
            threads.emplace_back([] {
                for (int step = 0; step < 1000; ++step)
                    Clock::advance(1);
            });
        for (auto &thread : threads)
            thread.join();
        QCOMPARE(Clock::now(), leapDayNoon + 4000);
    }
};

ZVT_TEST(tst_Clock)
#include "tst_Clock.moc"
