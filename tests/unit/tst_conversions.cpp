#include "common/conversions.h"
#include "tests/support/Test.h"

class tst_conversions : public Test
{
    Q_OBJECT

private slots:
    void namesThatFileSystemsTake_data();
    void namesThatFileSystemsTake();
    void theFilenameStandsBehindTheLastSeparator_data();
    void theFilenameStandsBehindTheLastSeparator();
    void twoPiecesAreJoinedByOneSeparator_data();
    void twoPiecesAreJoinedByOneSeparator();
    void manyPiecesAreJoinedFromLeftToRight();
    void irigTimeShowsMicroseconds_data();
    void irigTimeShowsMicroseconds();
    void dateTimeShowsTheDayOfItsYear_data();
    void dateTimeShowsTheDayOfItsYear();
    void dateTimeIsShownInItsOwnZone();
    void irigTextGivesATimeOfTheYear_data();
    void irigTextGivesATimeOfTheYear();
    void irigTextMayLackLeadingFields_data();
    void irigTextMayLackLeadingFields();
    void irigTextThatIsNoTimeIsInvalid_data();
    void irigTextThatIsNoTimeIsInvalid();
    void irigTextIsLocalTimeInALeapYear();
    void everyDayOfTheYearSurvivesTheRoundTrip();
    void frameworkTimeStandsInTheYearZero();
    void frameworkTimeOfAnEditedTextKeepsTheDay();
    void fileTimesAreCutToMilliseconds();
    void frameworkTextIsUtf8();
};

void tst_conversions::namesThatFileSystemsTake_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isFileSafe");
    QTest::addColumn<bool>("isTag");
    QTest::newRow("plain") << "state 1" << true << true;
    QTest::newRow("empty") << "" << true << true;
    QTest::newRow("other marks") << "a_b-c+(d)[e]{f}#%&'!~;,=@" << true << true;
    QTest::newRow("umlaut") << QStringLiteral("K\u00fchlung") << true << true;
    QTest::newRow("full stop") << "a.b" << true << false;
    QTest::newRow("stop at the end") << "a." << true << false;
    for (const QChar forbidden : QStringLiteral("/\\:*?\"<>|")) {
        const QByteArray tag = QByteArray("forbidden ") + forbidden.toLatin1();
        QTest::newRow(tag + " inside") << QStringLiteral("a%1b").arg(forbidden) << false << false;
        QTest::newRow(tag + " alone") << QString(forbidden) << false << false;
        QTest::newRow(tag + " at the end") << QStringLiteral("a.b%1").arg(forbidden) << false << false;
    }
}

void tst_conversions::namesThatFileSystemsTake()
{
    QFETCH(QString, name);
    QTEST(isFileSystemSafe(name), "isFileSafe");
    QTEST(isTagSafe(name), "isTag");
}

void tst_conversions::theFilenameStandsBehindTheLastSeparator_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("filename");
    QTest::newRow("none") << "a.nuc"
                          << "a.nuc";
    QTest::newRow("slash") << "/flashfs/nucs/a.nuc"
                           << "a.nuc";
    QTest::newRow("backslash") << "c:\\nucs\\a.nuc"
                               << "a.nuc";
    QTest::newRow("slash later") << "c:\\nucs/a.nuc"
                                 << "a.nuc";
    QTest::newRow("backslash later") << "nucs/b\\a.nuc"
                                     << "a.nuc";
    QTest::newRow("at the end") << "nucs/"
                                << "";
    QTest::newRow("empty") << ""
                           << "";
}

void tst_conversions::theFilenameStandsBehindTheLastSeparator()
{
    QFETCH(QString, path);
    QTEST(GetFilename(path), "filename");
}

void tst_conversions::twoPiecesAreJoinedByOneSeparator_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::addColumn<QString>("path");
    QTest::newRow("none") << "a"
                          << "b"
                          << "a/b";
    QTest::newRow("both") << "a/"
                          << "/b"
                          << "a/b";
    QTest::newRow("both, mixed") << "a\\"
                                 << "/b"
                                 << "a\\b";
    QTest::newRow("both, backslashes") << "a\\"
                                       << "\\b"
                                       << "a\\b";
    QTest::newRow("first") << "a/"
                           << "b"
                           << "a/b";
    QTest::newRow("first, backslash") << "a\\"
                                      << "b"
                                      << "a\\b";
    QTest::newRow("second") << "a"
                            << "/b"
                            << "a/b";
    QTest::newRow("second, backslash kept") << "a"
                                            << "\\b"
                                            << "a\\b";
    QTest::newRow("only one is taken off") << "a/"
                                           << "//b"
                                           << "a//b";
    QTest::newRow("first empty") << ""
                                 << "b"
                                 << "b";
    QTest::newRow("first empty, absolute") << ""
                                           << "/b"
                                           << "/b";
    QTest::newRow("second empty") << "a"
                                  << ""
                                  << "a";
    QTest::newRow("second empty, ended") << "a/"
                                         << ""
                                         << "a/";
    QTest::newRow("both empty") << ""
                                << ""
                                << "";
    QTest::newRow("two roots") << "/"
                               << "/"
                               << "/";
}

void tst_conversions::twoPiecesAreJoinedByOneSeparator()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    QTEST(MakePath(first, second), "path");
}

void tst_conversions::manyPiecesAreJoinedFromLeftToRight()
{
    QCOMPARE(MakePath({}), QString());
    QCOMPARE(MakePath({QStringLiteral("/a")}), QStringLiteral("/a"));
    QCOMPARE(
        MakePath({QStringLiteral("a"), QStringLiteral("b/"), QString(), QStringLiteral("/c"), QStringLiteral("d")}),
        QStringLiteral("a/b/c/d"));
}

void tst_conversions::irigTimeShowsMicroseconds_data()
{
    QTest::addColumn<zvtSIRIG>("time");
    QTest::addColumn<QString>("text");
    QTest::newRow("padded") << zvtSIRIG{45, 7, 5, 9, 12, 345} << "045:07:05:09.012345";
    QTest::newRow("zero") << zvtSIRIG{} << "000:00:00:00.000000";
    QTest::newRow("full") << zvtSIRIG{366, 23, 59, 59, 999, 999} << "366:23:59:59.999999";
    QTest::newRow("short parts") << zvtSIRIG{1, 0, 0, 0, 0, 7} << "001:00:00:00.000007";
    QTest::newRow("absurd") << zvtSIRIG{65535, 255, 255, 255, 65535, 65535} << "65535:255:255:255.6553565535";
}

void tst_conversions::irigTimeShowsMicroseconds()
{
    QFETCH(zvtSIRIG, time);
    QTEST(stringifyIrigTime(time), "text");
}

void tst_conversions::dateTimeShowsTheDayOfItsYear_data()
{
    QTest::addColumn<QDateTime>("time");
    QTest::addColumn<QString>("text");
    QTest::newRow("padded") << QDateTime(QDate(2023, 2, 14), QTime(7, 5, 9, 12)) << "045:07:05:09.012";
    QTest::newRow("first day") << QDateTime(QDate(2023, 1, 1), QTime(0, 0)) << "001:00:00:00.000";
    QTest::newRow("last day") << QDateTime(QDate(2023, 12, 31), QTime(23, 59, 59, 999)) << "365:23:59:59.999";
    QTest::newRow("leap year") << QDateTime(QDate(2024, 12, 31), QTime(12, 0)) << "366:12:00:00.000";
    QTest::newRow("no year") << QDateTime(QDate(-1, 12, 31), QTime(12, 0)) << "366:12:00:00.000";
}

void tst_conversions::dateTimeShowsTheDayOfItsYear()
{
    QFETCH(QDateTime, time);
    QTEST(DateTimeToIrigString(time), "text");
}

void tst_conversions::dateTimeIsShownInItsOwnZone()
{
    const QDate date(2023, 2, 14);
    const QTime clock(7, 5, 9, 12);
    QCOMPARE(DateTimeToIrigString(QDateTime(date, clock, Qt::UTC)), QStringLiteral("045:07:05:09.012"));
    QCOMPARE(DateTimeToIrigString(QDateTime(date, clock, Qt::OffsetFromUTC, -36000)),
             QStringLiteral("045:07:05:09.012"));
}

void tst_conversions::irigTextGivesATimeOfTheYear_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QDate>("date");
    QTest::addColumn<QTime>("clock");
    const QDate date(-1, 2, 14);
    QTest::newRow("four fields") << "045:07:05:09.012" << date << QTime(7, 5, 9, 12);
    QTest::newRow("five fields") << "2023:045:07:05:09.012" << date << QTime(7, 5, 9, 12);
    QTest::newRow("year unread") << "soon:045:07:05:09.012" << date << QTime(7, 5, 9, 12);
    QTest::newRow("year empty") << ":045:07:05:09.012" << date << QTime(7, 5, 9, 12);
    QTest::newRow("not padded") << "45:7:5:9.12" << date << QTime(7, 5, 9, 12);
    QTest::newRow("no milliseconds") << "45:7:5:9" << date << QTime(7, 5, 9);
    QTest::newRow("empty milliseconds") << "45:7:5:9." << date << QTime(7, 5, 9);
    QTest::newRow("plain number of milliseconds") << "45:7:5:9.5" << date << QTime(7, 5, 9, 5);
    QTest::newRow("cut after three") << "45:7:5:9.012345" << date << QTime(7, 5, 9, 12);
    QTest::newRow("cut, not rounded") << "45:7:5:9.9999" << date << QTime(7, 5, 9, 999);
    QTest::newRow("second point") << "45:7:5:9.12.7" << date << QTime(7, 5, 9, 12);
    QTest::newRow("letters count as 0") << "45:x:5:y.z" << date << QTime(0, 5, 0);
    QTest::newRow("empty fields count as 0") << "45:::" << date << QTime(0, 0, 0);
    QTest::newRow("hexadecimal is no number") << "45:0x7:5:9" << date << QTime(0, 5, 9);
    QTest::newRow("leap day") << "60:0:0:0" << QDate(-1, 2, 29) << QTime(0, 0);
    QTest::newRow("last day") << "366:23:59:59.999" << QDate(-1, 12, 31) << QTime(23, 59, 59, 999);
}

void tst_conversions::irigTextGivesATimeOfTheYear()
{
    QFETCH(QString, text);
    const QDateTime time = IrigStringToDateTime(text);
    QVERIFY(time.isValid());
    QTEST(time.date(), "date");
    QTEST(time.time(), "clock");
}

void tst_conversions::irigTextMayLackLeadingFields_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QTime>("clock");
    QTest::newRow("seconds") << "12" << QTime(0, 0, 12);
    QTest::newRow("seconds and milliseconds") << "12.34" << QTime(0, 0, 12, 34);
    QTest::newRow("milliseconds") << ".5" << QTime(0, 0, 0, 5);
    QTest::newRow("minutes") << "3:12" << QTime(0, 3, 12);
    QTest::newRow("hours") << "4:3:12.001" << QTime(4, 3, 12, 1);
    QTest::newRow("empty") << "" << QTime(0, 0);
    QTest::newRow("no time at all") << "now" << QTime(0, 0);
}

// The day of such a text is 0; the framework defines the date for it, which is not tested.
void tst_conversions::irigTextMayLackLeadingFields()
{
    QFETCH(QString, text);
    QTEST(IrigStringToDateTime(text).time(), "clock");
}

void tst_conversions::irigTextThatIsNoTimeIsInvalid_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("six fields") << "1:2:3:4:5:6";
    QTest::newRow("six empty fields") << ":::::";
    QTest::newRow("hour 24") << "45:24:0:0";
    QTest::newRow("minute 75") << "45:1:75:0";
    QTest::newRow("second 60") << "45:1:0:60";
    QTest::newRow("negative second") << "45:1:0:-1";
    QTest::newRow("day 367") << "367:0:0:0";
    QTest::newRow("negative day") << "-1:0:0:0";
    QTest::newRow("number too large") << "45:99999:0:0";
    QTest::newRow("negative milliseconds") << "45:1:0:1.-5";
}

void tst_conversions::irigTextThatIsNoTimeIsInvalid()
{
    QFETCH(QString, text);
    const QDateTime time = IrigStringToDateTime(text);
    QVERIFY(!time.isValid());
    QVERIFY(!time.time().isValid());
    QVERIFY(!time.date().isValid());
}

void tst_conversions::irigTextIsLocalTimeInALeapYear()
{
    const QDateTime time = IrigStringToDateTime(QStringLiteral("2023:1:0:0:0"));
    QCOMPARE(time.timeSpec(), Qt::LocalTime);
    QCOMPARE(time.date().year(), -1);
    QVERIFY(QDate::isLeapYear(time.date().year()));
    QCOMPARE(IrigStringToDateTime(QStringLiteral("2023:045:07:05:09.012")),
             IrigStringToDateTime(QStringLiteral("045:07:05:09.012")));
}

void tst_conversions::everyDayOfTheYearSurvivesTheRoundTrip()
{
    for (int day = 1; day <= 366; ++day) {
        const QString text = QStringLiteral("%1:23:04:05.067").arg(day, 3, 10, QLatin1Char('0'));
        QCOMPARE(DateTimeToIrigString(IrigStringToDateTime(text)), text);
    }
}

void tst_conversions::frameworkTimeStandsInTheYearZero()
{
    const QDateTime time(QDate(2023, 2, 14), QTime(7, 5, 9, 12));
    QCOMPARE(IrigTimeToDateTime(time), hlx::CDateTime::NewYYDHMS(0, 45, 7, 5, 9, 12, 0));
}

void tst_conversions::frameworkTimeOfAnEditedTextKeepsTheDay()
{
    const QDateTime time = IrigStringToDateTime(QStringLiteral("2023:366:23:59:59.999"));
    QCOMPARE(IrigTimeToDateTime(time), hlx::CDateTime::NewYYDHMS(0, 366, 23, 59, 59, 999, 0));
}

void tst_conversions::fileTimesAreCutToMilliseconds()
{
    constexpr uint64_t millisecond = 10'000;
    constexpr uint64_t from1601To1970 = 11'644'473'600'000 * millisecond;
    QCOMPARE(dateTimeOfFileTime(0), QDateTime(QDate(1601, 1, 1), QTime(0, 0), Qt::UTC));
    QCOMPARE(dateTimeOfFileTime(from1601To1970 + 9999), QDateTime::fromMSecsSinceEpoch(0, Qt::UTC));
    for (const uint64_t time :
         {uint64_t{0}, millisecond, from1601To1970, from1601To1970 + 1'790'000'000'123 * millisecond})
        for (const uint64_t rest : {0, 1, 9999})
            QCOMPARE(fileTimeOfDateTime(dateTimeOfFileTime(time + rest)), time);
    // The zone of the time does not matter.
    QCOMPARE(fileTimeOfDateTime(QDateTime::fromMSecsSinceEpoch(0, Qt::OffsetFromUTC, 3600)), from1601To1970);
}

void tst_conversions::frameworkTextIsUtf8()
{
    QCOMPARE(QByteArray(toCString(QStringLiteral("Öfen/1-Kiln.rqs")).c_str()),
             QByteArray("\xC3\x96"
                        "fen/1-Kiln.rqs"));
    QVERIFY(toCString(QString()).empty());
}

ZVT_TEST(tst_conversions)
#include "tst_conversions.moc"
