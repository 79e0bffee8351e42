#include "tests/support/SignalLog.h"
#include "tests/support/Test.h"

#include "recording/SsdMovieFileInfoModel.h"

#include <QMetaProperty>

#include <cstring>

namespace
{

zvtSSsdMovieInfo record()
{
    zvtSSsdMovieInfo info{};
    std::strcpy(info.name, "Größe 1");
    info.number = 4'000'000'000U;
    info.width = 640;
    info.height = 513;
    info.numFrames = 3'000'000'000U;
    info.startTime = {366, 23, 59, 58, 999, 1};
    info.endTime = {1, 2, 3, 4, 5, 678};
    return info;
}

} // namespace

class tst_SsdMovieFileInfoModel : public Test
{
    Q_OBJECT

private slots:
    void showsTheRecord();
    void keepsTheRecord();
    void nameMayFillItsField();
    void recordWithoutLinesWraps();
    void isSelected();
    void onlyTheSelectionCanBeWritten();
};

void tst_SsdMovieFileInfoModel::showsTheRecord()
{
    const SsdMovieFileInfoModel movie(7, record(), nullptr);
    const QVariantMap expected{{"index", 7},
                               {"name", "Größe 1"},
                               {"number", 4'000'000'000U},
                               {"width", 640U},
                               {"height", 512U},
                               {"numFrames", 3'000'000'000U},
                               {"startIrigDay", 366U},
                               {"startIrigHour", 23U},
                               {"startIrigMinute", 59U},
                               {"startIrigSecond", 58U},
                               {"startIrigMillisecond", 999U},
                               {"startIrigMicrosecond", 1U},
                               {"endIrigDay", 1U},
                               {"endIrigHour", 2U},
                               {"endIrigMinute", 3U},
                               {"endIrigSecond", 4U},
                               {"endIrigMillisecond", 5U},
                               {"endIrigMicrosecond", 678U},
                               {"startTimeString", "366:23:59:58.999001"},
                               {"endTimeString", "001:02:03:04.005678"},
                               {"selected", false}};
    for (auto it = expected.cbegin(); it != expected.cend(); ++it)
        QCOMPARE(movie.property(qPrintable(it.key())), it.value());
    QCOMPARE(movie.metaObject()->propertyCount() - movie.metaObject()->propertyOffset(), expected.size());
}

void tst_SsdMovieFileInfoModel::keepsTheRecord()
{
    const zvtSSsdMovieInfo given = record();
    const SsdMovieFileInfoModel movie(0, given, nullptr);
    QCOMPARE(std::memcmp(&movie.info(), &given, sizeof given), 0);
}

// A camera that writes no zero behind a long name.
void tst_SsdMovieFileInfoModel::nameMayFillItsField()
{
    zvtSSsdMovieInfo info = record();
    std::memset(info.name, 'x', sizeof info.name);
    QCOMPARE(SsdMovieFileInfoModel(0, info, nullptr).name(), QString(68, u'x'));
}

void tst_SsdMovieFileInfoModel::recordWithoutLinesWraps()
{
    zvtSSsdMovieInfo info = record();
    info.height = 0;
    QCOMPARE(SsdMovieFileInfoModel(0, info, nullptr).height(), 4294967295U);
}

void tst_SsdMovieFileInfoModel::isSelected()
{
    SsdMovieFileInfoModel movie(0, record(), nullptr);
    SignalLog log(&movie);
    movie.setSelected(true);
    QVERIFY(movie.selected());
    QCOMPARE(log.take(), QStringList("selectedChanged"));
    movie.setSelected(true);
    QCOMPARE(log.take(), QStringList());
    movie.setSelected(false);
    QVERIFY(!movie.selected());
    QCOMPARE(log.take(), QStringList("selectedChanged"));
}

void tst_SsdMovieFileInfoModel::onlyTheSelectionCanBeWritten()
{
    const QMetaObject &meta = SsdMovieFileInfoModel::staticMetaObject;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
        QCOMPARE(meta.property(i).isWritable(), qstrcmp(meta.property(i).name(), "selected") == 0);
}

ZVT_TEST(tst_SsdMovieFileInfoModel)
#include "tst_SsdMovieFileInfoModel.moc"
