#include "hlx/CDateTime.h"

#include <QDateTime>

#include "hlx/SSize.h"
#include "tests/support/Test.h"

using hlx::CDateTime;

namespace
{

QByteArray fields(const CDateTime &time)
{
    return QStringLiteral("%1/%2 %3-%4 %5:%6:%7 %8+%9")
        .arg(time.year())
        .arg(time.dayOfYear())
        .arg(time.month())
        .arg(time.day())
        .arg(time.hour())
        .arg(time.minute())
        .arg(time.second())
        .arg(time.millisecond())
        .arg(time.microsecond())
        .toUtf8();
}

} // namespace

class tst_hlxCDateTime : public Test
{
    Q_OBJECT

private slots:
    void readsTexts_data();
    void readsTexts();
    void isMadeWithoutAYear();
    void isMadeWithAYear();
    void turnsDaysIntoMonths_data();
    void turnsDaysIntoMonths();
    void agreesWithTheCalendarOverAYear();
    void keepsFieldsBeyondTheirRange();
    void comparesByWeight();
    void aSizeIsWidthAndHeight();
};

void tst_hlxCDateTime::readsTexts_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char *text, const char *expected) {
        QTest::newRow(text) << QByteArray(text) << QByteArray(expected);
    };
    row("045:07:05:09.012345", "0/45 2-14 7:5:9 12+345");
    row("2023:045:07:05:09.012345", "2023/45 2-14 7:5:9 12+345");
    row("366:23:59:59.999999", "0/366 12-31 23:59:59 999+999");
    row("001:00:00:00", "0/1 1-1 0:0:0 0+0");
    row("001:00:00:00.5", "0/1 1-1 0:0:0 500+0");
    row("001:00:00:00.12345678", "0/1 1-1 0:0:0 123+456");
    row("001:00:00:00.", "0/1 1-1 0:0:0 0+0");
    row("001:00:00:00.-5", "0/1 1-1 0:0:0 0+0");
    row("12", "0/0 1-1 0:0:12 0+0");
    row("", "0/0 1-1 0:0:0 0+0");
    row("a:b:c:d", "0/0 1-1 0:0:0 0+0");
    row("99999999999:1:2:3", "0/0 1-1 1:2:3 0+0");
    row("1:2:3:4:5:6", "0/0 1-1 0:0:0 0+0");
    row(":::::::::::", "0/0 1-1 0:0:0 0+0");
}

void tst_hlxCDateTime::readsTexts()
{
    QFETCH(QByteArray, text);
    QTEST(fields(CDateTime(hlx::CString(text.constData()))), "expected");
}

void tst_hlxCDateTime::isMadeWithoutAYear()
{
    const CDateTime time = CDateTime::NewYDHMS(366, 23, 59, 58, 997, 996);
    QCOMPARE(fields(time), "0/366 12-31 23:59:58 997+996");
    QCOMPARE(fields(CDateTime::NewYDHMS(60, 0, 0, 0, 0, 0)), "0/60 2-29 0:0:0 0+0");
    QCOMPARE(fields(CDateTime()), "0/0 1-1 0:0:0 0+0");
    const CDateTime copy(time);
    QVERIFY(copy == time);
}

void tst_hlxCDateTime::isMadeWithAYear()
{
    QCOMPARE(fields(CDateTime::NewYYDHMS(2023, 60, 1, 2, 3, 4, 5)), "2023/60 3-1 1:2:3 4+5");
    QVERIFY(CDateTime::NewYYDHMS(0, 60, 1, 2, 3, 4, 5) == CDateTime::NewYDHMS(60, 1, 2, 3, 4, 5));
}

void tst_hlxCDateTime::turnsDaysIntoMonths_data()
{
    QTest::addColumn<int>("year");
    QTest::addColumn<int>("dayOfYear");
    QTest::addColumn<int>("month");
    QTest::addColumn<int>("day");
    QTest::newRow("first") << 0 << 1 << 1 << 1;
    QTest::newRow("year 0 is leap") << 0 << 60 << 2 << 29;
    QTest::newRow("last of year 0") << 0 << 366 << 12 << 31;
    QTest::newRow("day 0") << 0 << 0 << 1 << 1;
    QTest::newRow("negative") << 0 << -1000 << 1 << 1;
    QTest::newRow("lowest") << 0 << std::numeric_limits<int>::min() << 1 << 1;
    QTest::newRow("beyond") << 0 << 367 << 12 << 31;
    QTest::newRow("highest") << 0 << std::numeric_limits<int>::max() << 12 << 31;
    QTest::newRow("last of a common year") << 2023 << 365 << 12 << 31;
    QTest::newRow("beyond a common year") << 2023 << 366 << 12 << 31;
    QTest::newRow("common century") << 1900 << 60 << 3 << 1;
    QTest::newRow("leap century") << 2000 << 60 << 2 << 29;
}

void tst_hlxCDateTime::turnsDaysIntoMonths()
{
    QFETCH(int, year);
    QFETCH(int, dayOfYear);
    int month = 77;
    int day = 77;
    CDateTime::GetDayInMonth(month, day, year, dayOfYear);
    QTEST(month, "month");
    QTEST(day, "day");
}

void tst_hlxCDateTime::agreesWithTheCalendarOverAYear()
{
    for (int dayOfYear = 1; dayOfYear <= 366; ++dayOfYear) {
        // The year before 1 is -1 for QDate and 0 here.
        const QDate date = QDate(-1, 1, 1).addDays(dayOfYear - 1);
        const CDateTime time = CDateTime::NewYDHMS(dayOfYear, 0, 0, 0, 0, 0);
        QCOMPARE(time.month(), date.month());
        QCOMPARE(time.day(), date.day());
    }
}

void tst_hlxCDateTime::keepsFieldsBeyondTheirRange()
{
    QCOMPARE(fields(CDateTime::NewYDHMS(400, 25, 75, 99, 1000, 1000)), "0/400 12-31 25:75:99 1000+1000");
}

void tst_hlxCDateTime::comparesByWeight()
{
    const CDateTime time = CDateTime::NewYYDHMS(1, 2, 3, 4, 5, 6, 7);
    QVERIFY(time < CDateTime::NewYYDHMS(1, 2, 3, 4, 5, 6, 8));
    QVERIFY(time < CDateTime::NewYYDHMS(1, 2, 3, 4, 5, 7, 0));
    QVERIFY(time < CDateTime::NewYYDHMS(1, 2, 3, 5, 0, 0, 0));
    QVERIFY(time < CDateTime::NewYYDHMS(1, 3, 0, 0, 0, 0, 0));
    QVERIFY(time < CDateTime::NewYYDHMS(2, 0, 0, 0, 0, 0, 0));
    QVERIFY(time > CDateTime());
    QVERIFY(time != CDateTime());
}

void tst_hlxCDateTime::aSizeIsWidthAndHeight()
{
    QVERIFY(hlx::SSize() == hlx::SSize(0, 0));
    const hlx::SSize size(640, 512);
    QCOMPARE(size.width, 640);
    QCOMPARE(size.height, 512);
}

ZVT_TEST(tst_hlxCDateTime)
#include "tst_hlxCDateTime.moc"
