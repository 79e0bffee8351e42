#include "tests/support/Test.h"
#include "tests/unit/BatchRig.h"

#include <QMetaEnum>

namespace
{

const QStringList frameSignals{"validFrameRangeChanged", "validAllChanged"};
const QStringList frameReset{"startFrameChanged", "endFrameChanged", "validFrameRangeChanged"};
const QStringList timeReset{"startTimeChanged", "endTimeChanged", "validTimeRangeChanged"};

QDateTime timeOf(int month, int day, const QTime &clock) { return QDateTime(QDate(-1, month, day), clock); }

} // namespace

/// One movie in the list of a batch download: its values, its setters and their signals.
class tst_BatchDownloadEntry : public Test
{
    Q_OBJECT

private slots:
    void numbersOfTheEnumerations();
    void newEntryShowsTheMovie();
    void nameIsNotAPattern();
    void nameMayFillItsField();
    void recordOfAnEmptyMovie();
    void timeWithoutADayIsTheStartOfTheYear();

    void settersSignal_data();
    void settersSignal();
    void equalValuesAreSilent();
    void outFileIsSignalledBeforeTheCheckForDuplicates();
    void timeTextsAreParsed();
    void wrongTimeText();

    void changedRangeTypeResetsTheOthers_data();
    void changedRangeTypeResetsTheOthers();
    void endFrameIsOneTooManyAfterAChangeOfTheRange();
    void movieTimesComeBack();

    void outFileMustNotBeEmpty();
    void frameRangeMustNotBeReversed();
    void timeRangeMustNotBeReversed();
    void editedTimesCompareWithThoseOfTheMovie();
    void statusesInProgress_data();
    void statusesInProgress();
    void postedValuesArriveLater();
};

void tst_BatchDownloadEntry::numbersOfTheEnumerations()
{
    const auto names = [](const QMetaEnum &values) {
        QStringList list;
        for (int number = 0; number < values.keyCount(); ++number)
            list << QString::fromLatin1(values.valueToKey(number));
        return list;
    };
    QCOMPARE(names(QMetaEnum::fromType<BatchDownloadEntry::ESTATUS>()),
             QStringList({"STATUS_NOT_STARTED", "STATUS_LOADING", "STATUS_FINDING_FRAME_RANGE", "STATUS_DOWNLOADING",
                          "STATUS_GRABBING_DROPPED_FRAMES", "STATUS_CONVERTING", "STATUS_FAILED", "STATUS_SUCCEEDED"}));
    QCOMPARE(names(QMetaEnum::fromType<BatchDownloadEntry::ERANGE_TYPE>()),
             QStringList({"RANGE_ENTIRE_FILE", "RANGE_FRAMES", "RANGE_IRIG"}));
}

void tst_BatchDownloadEntry::newEntryShowsTheMovie()
{
    Batch batch;
    const BatchDownloadEntry &entry = *batch.add(driveMovie(7, "Öfen", 300, 320, 256));
    QCOMPARE(entry.index(), 10);
    QCOMPARE(entry.number(), 7U);
    QCOMPARE(entry.file(), QStringLiteral("Öfen"));
    QCOMPARE(entry.outFile(), QStringLiteral("7-Öfen"));
    QCOMPARE(entry.width(), 320U);
    QCOMPARE(entry.height(), 256U);
    QCOMPARE(entry.startFrame(), 0U);
    QCOMPARE(entry.endFrame(), 299U);
    QCOMPARE(entry.totalFrames(), 300U);
    QCOMPARE(entry.status(), BatchDownloadEntry::STATUS_NOT_STARTED);
    QCOMPARE(entry.rangeType(), BatchDownloadEntry::RANGE_ENTIRE_FILE);
    QCOMPARE(entry.progress(), 0.0);
    QVERIFY(entry.validAll());
    QVERIFY(!entry.hasDuplicateOutputName());
    // Day 60 of a leap year. The microseconds are dropped.
    QCOMPARE(entry.startTime(), timeOf(2, 29, QTime(12, 30, 15, 250)));
    QCOMPARE(entry.endTime(), timeOf(2, 29, QTime(12, 30, 15, 450)));
    QCOMPARE(entry.startTimeString(), QStringLiteral("060:12:30:15.250"));
    QCOMPARE(entry.endTimeString(), QStringLiteral("060:12:30:15.450"));
}

void tst_BatchDownloadEntry::nameIsNotAPattern()
{
    Batch batch;
    QCOMPARE(batch.add(driveMovie(7, "a%2%1"))->outFile(), QStringLiteral("7-a%2%1"));
}

void tst_BatchDownloadEntry::nameMayFillItsField()
{
    Batch batch;
    const QByteArray name(sizeof(zvtSSsdMovieInfo::name), 'n');
    QCOMPARE(batch.add(driveMovie(7, name))->file(), QString::fromLatin1(name));
}

// The numbers of frames and lines have 32 bits, so one less than 0 is the greatest number.
void tst_BatchDownloadEntry::recordOfAnEmptyMovie()
{
    Batch batch;
    zvtSSsdMovieInfo info = driveMovie(7, "", 0);
    info.height = 0;
    const BatchDownloadEntry &entry = *batch.add(info);
    QCOMPARE(entry.outFile(), QStringLiteral("7-"));
    QCOMPARE(entry.endFrame(), 4294967295U);
    QCOMPARE(entry.totalFrames(), 0U);
    QCOMPARE(entry.height(), 4294967295U);
}

void tst_BatchDownloadEntry::timeWithoutADayIsTheStartOfTheYear()
{
    Batch batch;
    zvtSSsdMovieInfo info = driveMovie(7);
    info.startTime = {};
    info.endTime = {366, 23, 59, 59, 999, 999};
    const BatchDownloadEntry &entry = *batch.add(info);
    QCOMPARE(entry.startTime(), timeOf(1, 1, QTime(0, 0)));
    QCOMPARE(entry.endTime(), timeOf(12, 31, QTime(23, 59, 59, 999)));
    QCOMPARE(entry.endTimeString(), QStringLiteral("366:23:59:59.999"));
}

void tst_BatchDownloadEntry::settersSignal_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QStringList>("signalled");
    QTest::newRow("outFile") << QVariant("Forge")
                             << QStringList({"outFileChanged", "validOutFileChanged", "validAllChanged"});
    QTest::newRow("startFrame") << QVariant(5ULL) << (QStringList("startFrameChanged") + frameSignals);
    QTest::newRow("endFrame") << QVariant(0x1'0000'0000ULL) << (QStringList("endFrameChanged") + frameSignals);
    // The times leave validAllChanged out.
    QTest::newRow("startTime") << QVariant(timeOf(2, 29, QTime(13, 0)))
                               << QStringList({"startTimeChanged", "validTimeRangeChanged"});
    QTest::newRow("endTime") << QVariant(timeOf(2, 29, QTime(13, 0)))
                             << QStringList({"endTimeChanged", "validTimeRangeChanged"});
    QTest::newRow("startTimeString") << QVariant("061:00:00:00.000")
                                     << QStringList({"startTimeChanged", "validTimeRangeChanged"});
    QTest::newRow("endTimeString") << QVariant("061:00:00:00.000")
                                   << QStringList({"endTimeChanged", "validTimeRangeChanged"});
}

void tst_BatchDownloadEntry::settersSignal()
{
    QFETCH(const QVariant, value);
    QFETCH(const QStringList, signalled);
    Batch batch;
    BatchDownloadEntry &entry = *batch.add(driveMovie(7));
    SignalLog log(&entry);
    QVERIFY(entry.setProperty(QTest::currentDataTag(), value));
    QCOMPARE(entry.property(QTest::currentDataTag()), value);
    QCOMPARE(log.take(), signalled);
}

void tst_BatchDownloadEntry::equalValuesAreSilent()
{
    Batch batch;
    BatchDownloadEntry &entry = *batch.add(driveMovie(7));
    SignalLog log(&entry);
    for (const char *property :
         {"outFile", "rangeType", "startFrame", "endFrame", "startTime", "endTime", "startTimeString", "endTimeString"})
        QVERIFY(entry.setProperty(property, entry.property(property)));
    entry.setStatus(BatchDownloadEntry::STATUS_NOT_STARTED);
    entry.setProgress(0.0);
    QCOMPARE(log.take(), QStringList());
    QCOMPARE(entry.endFrame(), 99U);
}

void tst_BatchDownloadEntry::outFileIsSignalledBeforeTheCheckForDuplicates()
{
    Batch batch;
    batch.add(driveMovie(6));
    BatchDownloadEntry &entry = *batch.add(driveMovie(7));
    SignalLog log(&entry);
    entry.setOutFile("6-Kiln");
    QCOMPARE(
        log.take(),
        QStringList({"outFileChanged", "validOutFileChanged", "validAllChanged", "hasDuplicateOutputNameChanged"}));
    QVERIFY(batch.entry(0)->hasDuplicateOutputName());
}

void tst_BatchDownloadEntry::timeTextsAreParsed()
{
    Batch batch;
    BatchDownloadEntry &entry = *batch.add(driveMovie(7));
    entry.setStartTimeString("045:07:05:09.012");
    QCOMPARE(entry.startTime(), timeOf(2, 14, QTime(7, 5, 9, 12)));
    entry.setEndTimeString("2023:45:7:5:9.5");
    QCOMPARE(entry.endTimeString(), QStringLiteral("045:07:05:09.005"));
}

// A range that ends at a wrong time is not valid; one that starts at a wrong time is, since that is before any time.
void tst_BatchDownloadEntry::wrongTimeText()
{
    Batch batch;
    BatchDownloadEntry &entry = *batch.add(driveMovie(7));
    entry.setRangeType(BatchDownloadEntry::RANGE_IRIG);
    entry.setStartTimeString("045:07:75:09.012");
    QVERIFY(!entry.startTime().isValid());
    QVERIFY(entry.validTimeRange());
    entry.setStartTimeString("045:07:05:09.012");
    entry.setEndTimeString("999:99:99:99.999");
    QVERIFY(!entry.validTimeRange());
}

void tst_BatchDownloadEntry::changedRangeTypeResetsTheOthers_data()
{
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("after");
    QTest::addColumn<QStringList>("signalled");
    const QStringList type("rangeTypeChanged");
    const QStringList all("validAllChanged");
    QTest::newRow("entire to frames") << 0 << 1 << type + timeReset + all;
    QTest::newRow("entire to times") << 0 << 2 << type + frameReset + all;
    QTest::newRow("frames to entire") << 1 << 0 << type + frameReset + timeReset + all;
    QTest::newRow("frames to times") << 1 << 2 << type + frameReset + all;
    QTest::newRow("times to entire") << 2 << 0 << type + frameReset + timeReset + all;
    QTest::newRow("times to frames") << 2 << 1 << type + timeReset + all;
}

void tst_BatchDownloadEntry::changedRangeTypeResetsTheOthers()
{
    QFETCH(const int, before);
    QFETCH(const int, after);
    QFETCH(const QStringList, signalled);
    Batch batch;
    BatchDownloadEntry &entry = *batch.add(driveMovie(7));
    const QDateTime movieStart = entry.startTime();
    entry.setRangeType(static_cast<BatchDownloadEntry::ERANGE_TYPE>(before));
    entry.setStartFrame(5);
    entry.setEndFrame(6);
    entry.setStartTimeString("001:00:00:00.000");
    SignalLog log(&entry);
    entry.setProperty("rangeType", after);
    QCOMPARE(log.take(), signalled);
    const bool keepsFrames = after == BatchDownloadEntry::RANGE_FRAMES;
    QCOMPARE(entry.startFrame(), keepsFrames ? 5U : 0U);
    QCOMPARE(entry.endFrame(), keepsFrames ? 6U : 100U);
    QCOMPARE(entry.startTime() == movieStart, after != BatchDownloadEntry::RANGE_IRIG);
}

void tst_BatchDownloadEntry::endFrameIsOneTooManyAfterAChangeOfTheRange()
{
    Batch batch;
    BatchDownloadEntry &entry = *batch.add(driveMovie(7));
    entry.setRangeType(BatchDownloadEntry::RANGE_FRAMES);
    QCOMPARE(entry.endFrame(), 99U);
    entry.setRangeType(BatchDownloadEntry::RANGE_ENTIRE_FILE);
    entry.setRangeType(BatchDownloadEntry::RANGE_FRAMES);
    QCOMPARE(entry.endFrame(), 100U);
}

void tst_BatchDownloadEntry::movieTimesComeBack()
{
    Batch batch;
    BatchDownloadEntry &entry = *batch.add(driveMovie(7));
    entry.setRangeType(BatchDownloadEntry::RANGE_IRIG);
    entry.setStartTimeString("001:00:00:00.000");
    entry.setEndTimeString("300:00:00:00.000");
    entry.setRangeType(BatchDownloadEntry::RANGE_ENTIRE_FILE);
    QCOMPARE(entry.startTimeString(), QStringLiteral("060:12:30:15.250"));
    QCOMPARE(entry.endTimeString(), QStringLiteral("060:12:30:15.450"));
}

void tst_BatchDownloadEntry::outFileMustNotBeEmpty()
{
    Batch batch;
    BatchDownloadEntry &entry = *batch.add(driveMovie(7));
    entry.setOutFile("");
    QVERIFY(!entry.validOutFile());
    QVERIFY(!entry.validAll());
    entry.setOutFile(" ");
    QVERIFY(entry.validAll());
}

void tst_BatchDownloadEntry::frameRangeMustNotBeReversed()
{
    Batch batch;
    BatchDownloadEntry &entry = *batch.add(driveMovie(7));
    entry.setStartFrame(50);
    entry.setEndFrame(49);
    QVERIFY(entry.validAll()); // The range of frames is not in use.
    entry.setRangeType(BatchDownloadEntry::RANGE_FRAMES);
    QVERIFY(!entry.validFrameRange());
    QVERIFY(!entry.validAll());
    entry.setEndFrame(50);
    QVERIFY(entry.validFrameRange());
    QVERIFY(entry.validAll());
}

void tst_BatchDownloadEntry::timeRangeMustNotBeReversed()
{
    Batch batch;
    BatchDownloadEntry &entry = *batch.add(driveMovie(7));
    entry.setEndTimeString("060:12:30:15.249");
    QVERIFY(entry.validAll()); // The range of times is not in use.
    entry.setRangeType(BatchDownloadEntry::RANGE_IRIG);
    entry.setEndTimeString("060:12:30:15.249");
    QVERIFY(!entry.validTimeRange());
    QVERIFY(!entry.validAll());
    entry.setEndTimeString("060:12:30:15.250");
    QVERIFY(entry.validTimeRange());
    QVERIFY(entry.validAll());
}

void tst_BatchDownloadEntry::editedTimesCompareWithThoseOfTheMovie()
{
    Batch batch;
    BatchDownloadEntry &entry = *batch.add(driveMovie(7));
    entry.setRangeType(BatchDownloadEntry::RANGE_IRIG);
    entry.setStartTimeString("060:12:30:15.451");
    QVERIFY(!entry.validTimeRange());
    entry.setStartTimeString("060:12:30:15.450");
    QVERIFY(entry.validTimeRange());
    QCOMPARE(entry.startTime(), entry.endTime());
}

void tst_BatchDownloadEntry::statusesInProgress_data()
{
    QTest::addColumn<bool>("inProgress");
    const QList<bool> expected{false, true, true, true, true, false, false, false};
    for (int status = 0; status < expected.size(); ++status)
        QTest::addRow("%d", status) << expected.at(status);
}

void tst_BatchDownloadEntry::statusesInProgress()
{
    QFETCH(const bool, inProgress);
    Batch batch;
    BatchDownloadEntry &entry = *batch.add(driveMovie(7));
    entry.setStatus(static_cast<BatchDownloadEntry::ESTATUS>(QByteArray(QTest::currentDataTag()).toInt()));
    QCOMPARE(entry.inProgress(), inProgress);
}

void tst_BatchDownloadEntry::postedValuesArriveLater()
{
    Batch batch;
    BatchDownloadEntry &entry = *batch.add(driveMovie(7));
    SignalLog log(&entry);
    entry.postStatus(BatchDownloadEntry::STATUS_CONVERTING);
    entry.postProgress(0.5);
    QCOMPARE(log.take(), QStringList());
    CameraRig::settle();
    QCOMPARE(log.take(), QStringList({"statusChanged", "progressChanged"}));
    QCOMPARE(entry.status(), BatchDownloadEntry::STATUS_CONVERTING);
    QCOMPARE(entry.progress(), 0.5);
}

ZVT_TEST(tst_BatchDownloadEntry)
#include "tst_BatchDownloadEntry.moc"
