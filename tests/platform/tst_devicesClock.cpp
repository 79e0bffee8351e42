#include "platform/emulator/control.h"
#include "platform/emulator/devices/CameraClock.h"
#include "tests/support/Test.h"
#include "zvt/zvtsdk.h"

#include <QTemporaryDir>

using emulator::Camera;
using emulator::CameraClock;
using emulator::Clock;

namespace
{

/// The real-time clock as "yyyy-mm-dd hh:mm:ss".
QString realTime(uint64_t handle)
{
    uint8_t year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
    if (zvtGetRealTimeClock(handle, &year, &month, &day, &hour, &minute, &second) != 0)
        return {};
    return QString::asprintf("%04d-%02d-%02d %02d:%02d:%02d", 2000 + year, month, day, hour, minute, second);
}

/// An IRIG time as "year day hh:mm:ss.mmm.uuu".
QString text(const CameraClock::IrigTime &time)
{
    return QString::asprintf("%d %d %02d:%02d:%02d.%03d.%03d", time.year, time.day, time.hour, time.minute, time.second,
                             time.millisecond, time.microsecond);
}

/// The present IRIG time as text().
QString irig(uint64_t handle)
{
    uint16_t year = 0, day = 0, millisecond = 0, microsecond = 0;
    uint8_t hour = 0, minute = 0, second = 0;
    if (zvtGetIRIGTime(handle, &year, &day, &hour, &minute, &second, &millisecond, &microsecond) != 0)
        return {};
    return text({year, day, hour, minute, second, millisecond, microsecond});
}

} // namespace

class tst_devicesClock : public Test
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { Clock::automatic(); }

    void followsTheEmulatedWorld();
    void runsOnFromWhatItWasSetTo();
    void keepsTheTwoClocksApart();
    void turnsTheYear();
    void refusesTimesThatDoNotExist_data();
    void refusesTimesThatDoNotExist();
    void takesTheLastPossibleTime();
    void wrapsTheYearByte();
    void refusesIrigTimesThatDoNotExist_data();
    void refusesIrigTimesThatDoNotExist();
    void keepsTheYearThatIrigDoesNotTell();
    void hasNoYearWhereTheSignalHasNone();
    void takesTheLongestYear();
    void irigTimesHaveMicroseconds();
    void irigTimesTurnDayAndYear();
    void locksAndUnlocks();
    void leavesOutputsAloneWhenItFails();

private:
    void use(const char *profile)
    {
        m_camera = Camera::create(QString::fromLatin1(profile), m_folder.path());
        m_camera->connect();
        m_handle = m_camera->handle();
    }

    QTemporaryDir m_folder;
    std::shared_ptr<Camera> m_camera;
    uint64_t m_handle = 0;
};

void tst_devicesClock::init()
{
    Test::init();
    Clock::manual();
    m_camera.reset();
    QDir(m_folder.path()).removeRecursively();
    use("irig");
}

void tst_devicesClock::followsTheEmulatedWorld()
{
    QCOMPARE(realTime(m_handle), QStringLiteral("2024-02-29 12:00:00"));
    QCOMPARE(irig(m_handle), QStringLiteral("2024 60 12:00:00.000.000"));
    Clock::advance(61'234);
    QCOMPARE(realTime(m_handle), QStringLiteral("2024-02-29 12:01:01"));
    QCOMPARE(irig(m_handle), QStringLiteral("2024 60 12:01:01.234.000"));
}

void tst_devicesClock::runsOnFromWhatItWasSetTo()
{
    QCOMPARE(zvtSetRealTimeClock(m_handle, 1, 2, 3, 4, 5, 6), 0);
    QCOMPARE(zvtSetIRIGTime(m_handle, 2001, 34, 4, 5, 6, 789, 12), 0);
    QCOMPARE(realTime(m_handle), QStringLiteral("2001-02-03 04:05:06"));
    QCOMPARE(irig(m_handle), QStringLiteral("2001 34 04:05:06.789.012"));
    m_camera->disconnect();
    Clock::advance(60'000);
    m_camera->connect();
    QCOMPARE(realTime(m_handle), QStringLiteral("2001-02-03 04:06:06"));
    QCOMPARE(irig(m_handle), QStringLiteral("2001 34 04:06:06.789.012"));
}

void tst_devicesClock::keepsTheTwoClocksApart()
{
    QCOMPARE(zvtSetRealTimeClock(m_handle, 1, 2, 3, 4, 5, 6), 0);
    QCOMPARE(irig(m_handle), QStringLiteral("2024 60 12:00:00.000.000"));
}

void tst_devicesClock::turnsTheYear()
{
    QCOMPARE(zvtSetRealTimeClock(m_handle, 23, 12, 31, 23, 59, 59), 0);
    QCOMPARE(zvtSetIRIGTime(m_handle, 2023, 365, 23, 59, 59, 999, 0), 0);
    Clock::advance(1000);
    QCOMPARE(realTime(m_handle), QStringLiteral("2024-01-01 00:00:00"));
    QCOMPARE(irig(m_handle), QStringLiteral("2024 1 00:00:00.999.000"));
}

void tst_devicesClock::refusesTimesThatDoNotExist_data()
{
    QTest::addColumn<QList<int>>("time");
    QTest::newRow("what an invalid date becomes") << QList<int>{48, 0, 0, 255, 255, 255};
    QTest::newRow("month 0") << QList<int>{24, 0, 1, 0, 0, 0};
    QTest::newRow("month 13") << QList<int>{24, 13, 1, 0, 0, 0};
    QTest::newRow("day 0") << QList<int>{24, 1, 0, 0, 0, 0};
    QTest::newRow("February 29 of no leap year") << QList<int>{23, 2, 29, 0, 0, 0};
    QTest::newRow("hour 24") << QList<int>{24, 1, 1, 24, 0, 0};
    QTest::newRow("minute 60") << QList<int>{24, 1, 1, 0, 60, 0};
    QTest::newRow("second 60") << QList<int>{24, 1, 1, 0, 0, 60};
}

void tst_devicesClock::refusesTimesThatDoNotExist()
{
    QFETCH(QList<int>, time);
    const auto byte = [&](int index) { return static_cast<uint8_t>(time.at(index)); };
    QCOMPARE(zvtSetRealTimeClock(m_handle, byte(0), byte(1), byte(2), byte(3), byte(4), byte(5)),
             int(emulator::Refused));
    Clock::advance(1000);
    QCOMPARE(realTime(m_handle), QStringLiteral("2024-02-29 12:00:01"));
}

void tst_devicesClock::takesTheLastPossibleTime()
{
    QCOMPARE(zvtSetRealTimeClock(m_handle, 255, 12, 31, 23, 59, 59), 0);
    QCOMPARE(realTime(m_handle), QStringLiteral("2255-12-31 23:59:59"));
}

void tst_devicesClock::wrapsTheYearByte()
{
    QCOMPARE(zvtSetRealTimeClock(m_handle, 255, 12, 31, 23, 59, 59), 0);
    Clock::advance(1000);
    QCOMPARE(realTime(m_handle), QStringLiteral("2000-01-01 00:00:00"));
}

void tst_devicesClock::refusesIrigTimesThatDoNotExist_data()
{
    QTest::addColumn<QList<int>>("time");
    QTest::newRow("what an invalid date becomes") << QList<int>{0, 0, 255, 255, 255, 65535, 0};
    QTest::newRow("day 0") << QList<int>{2024, 0, 0, 0, 0, 0, 0};
    QTest::newRow("day 366 of no leap year") << QList<int>{2023, 366, 0, 0, 0, 0, 0};
    QTest::newRow("day 367") << QList<int>{2024, 367, 0, 0, 0, 0, 0};
    QTest::newRow("last day number") << QList<int>{2024, 65535, 0, 0, 0, 0, 0};
    QTest::newRow("hour 24") << QList<int>{2024, 1, 24, 0, 0, 0, 0};
    QTest::newRow("minute 60") << QList<int>{2024, 1, 0, 60, 0, 0, 0};
    QTest::newRow("second 60") << QList<int>{2024, 1, 0, 0, 60, 0, 0};
    QTest::newRow("millisecond 1000") << QList<int>{2024, 1, 0, 0, 0, 1000, 0};
    QTest::newRow("microsecond 1000") << QList<int>{2024, 1, 0, 0, 0, 0, 1000};
}

void tst_devicesClock::refusesIrigTimesThatDoNotExist()
{
    QFETCH(QList<int>, time);
    const auto byte = [&](int index) { return static_cast<uint8_t>(time.at(index)); };
    const auto word = [&](int index) { return static_cast<uint16_t>(time.at(index)); };
    QCOMPARE(zvtSetIRIGTime(m_handle, word(0), word(1), byte(2), byte(3), byte(4), word(5), word(6)),
             int(emulator::Refused));
    Clock::advance(1000);
    QCOMPARE(irig(m_handle), QStringLiteral("2024 60 12:00:01.000.000"));
}

void tst_devicesClock::keepsTheYearThatIrigDoesNotTell()
{
    QCOMPARE(zvtSetIRIGTime(m_handle, 0, 366, 1, 2, 3, 4, 5), 0);
    QCOMPARE(irig(m_handle), QStringLiteral("2024 366 01:02:03.004.005"));
}

void tst_devicesClock::hasNoYearWhereTheSignalHasNone()
{
    use("edge-values");
    QCOMPARE(irig(m_handle), QStringLiteral("0 60 12:00:00.000.000"));
    QCOMPARE(zvtSetIRIGTime(m_handle, 2023, 12, 1, 2, 3, 4, 5), 0);
    QCOMPARE(irig(m_handle), QStringLiteral("0 12 01:02:03.004.005"));
    QCOMPARE(zvtSetIRIGTime(m_handle, 2023, 366, 1, 2, 3, 4, 5), 0);
    QCOMPARE(irig(m_handle), QStringLiteral("0 366 01:02:03.004.005"));
    QCOMPARE(zvtSetIRIGTime(m_handle, 2023, 367, 1, 2, 3, 4, 5), int(emulator::Refused));
}

void tst_devicesClock::takesTheLongestYear()
{
    QCOMPARE(zvtSetIRIGTime(m_handle, 65535, 365, 23, 59, 59, 999, 999), 0);
    QCOMPARE(irig(m_handle), QStringLiteral("65535 365 23:59:59.999.999"));
    m_camera.reset();
    use("irig");
    QCOMPARE(irig(m_handle), QStringLiteral("65535 365 23:59:59.999.999"));
}

void tst_devicesClock::irigTimesHaveMicroseconds()
{
    const auto *const clock = m_camera->device<CameraClock>();
    const int64_t now = Clock::now() * 1000;
    QCOMPARE(text(clock->irigTimeAt(now + 1'234'567)), QStringLiteral("2024 60 12:00:01.234.567"));
    QCOMPARE(text(clock->irigTimeAt(now - 1)), QStringLiteral("2024 60 11:59:59.999.999"));
    QCOMPARE(zvtSetIRIGTime(m_handle, 2001, 34, 4, 5, 6, 789, 12), 0);
    Clock::advance(1);
    QCOMPARE(text(clock->irigTimeAt(now)), QStringLiteral("2001 34 04:05:06.789.012"));
    QCOMPARE(text(clock->irigTimeAt(now + 987)), QStringLiteral("2001 34 04:05:06.789.999"));
    QCOMPARE(text(clock->irigTimeAt(now + 988)), QStringLiteral("2001 34 04:05:06.790.000"));
    QCOMPARE(irig(m_handle), QStringLiteral("2001 34 04:05:06.790.012"));
}

void tst_devicesClock::irigTimesTurnDayAndYear()
{
    const auto *const clock = m_camera->device<CameraClock>();
    const int64_t now = Clock::now() * 1000;
    QCOMPARE(zvtSetIRIGTime(m_handle, 2023, 365, 23, 59, 59, 999, 999), 0);
    QCOMPARE(text(clock->irigTimeAt(now)), QStringLiteral("2023 365 23:59:59.999.999"));
    QCOMPARE(text(clock->irigTimeAt(now + 1)), QStringLiteral("2024 1 00:00:00.000.000"));
    QCOMPARE(text(clock->irigTimeAt(now + 86'400'000'000)), QStringLiteral("2024 1 23:59:59.999.999"));
    // Times before 1970.
    QCOMPARE(zvtSetIRIGTime(m_handle, 1969, 365, 23, 59, 59, 999, 999), 0);
    QCOMPARE(text(clock->irigTimeAt(now)), QStringLiteral("1969 365 23:59:59.999.999"));
    QCOMPARE(text(clock->irigTimeAt(now - 1000)), QStringLiteral("1969 365 23:59:59.998.999"));
    use("edge-values");
    QCOMPARE(m_camera->device<CameraClock>()->irigTimeAt(now).year, uint16_t(0));
}

void tst_devicesClock::locksAndUnlocks()
{
    uint8_t locked = 42;
    QCOMPARE(zvtGetIRIGLocked(m_handle, &locked), 0);
    QCOMPARE(locked, uint8_t(1));
    QVERIFY(m_camera->otherClient().set(QStringLiteral("clock.irigLocked"), false));
    QCOMPARE(zvtGetIRIGLocked(m_handle, &locked), 0);
    QCOMPARE(locked, uint8_t(0));
}

void tst_devicesClock::leavesOutputsAloneWhenItFails()
{
    m_camera->disconnect();
    uint8_t bytes[6] = {1, 2, 3, 4, 5, 6};
    QVERIFY(zvtGetRealTimeClock(m_handle, &bytes[0], &bytes[1], &bytes[2], &bytes[3], &bytes[4], &bytes[5]) != 0);
    for (int n = 0; n < 6; ++n)
        QCOMPARE(int(bytes[n]), n + 1);
}

ZVT_TEST(tst_devicesClock)
#include "tst_devicesClock.moc"
