#include "tests/support/Test.h"
#include "tests/unit/MovieRig.h"

#include <QPointer>
#include <QThreadPool>

#include <limits>

namespace
{

const QStringList listing{"zvtGetSsdMovieCount",    "zvtGetSsdMovieInfo 0",     "zvtGetSsdMovieInfo 1",
                          "zvtGetSsdMovieInfo 2",   "zvtGetSsdDriveSpaceTotal", "zvtGetSsdDriveSpaceFree",
                          "zvtGetSsdDriveSpaceUsed"};
const QStringList listingSignals{"fileListModelChanged", "totalSpaceChanged", "freeSpaceChanged", "usedSpaceChanged",
                                 "fileListLoadingChanged"};
} // namespace

/// The list of the movies on the drive, and the sizes of the drive.
class tst_SsdTabModelMovies : public Test
{
    Q_OBJECT

private slots:
    void startsWithoutMovies();
    void listsInOrder();
    void showsTheMovies();
    void unreadableMovieShiftsTheLater();
    void listWithoutACount_data();
    void listWithoutACount();
    void unreadableSizesAreUnknown_data();
    void unreadableSizesAreUnknown();
    void sizesHaveUnits_data();
    void sizesHaveUnits();
    void secondListingIsDropped();
    void listingIsDroppedUntilItIsShown();
    void newListReplacesTheRows();
    void listOutlivesADisconnection();
    void runningListingOutlivesTheModel();
};

void tst_SsdTabModelMovies::startsWithoutMovies()
{
    const Movies movies;
    QVERIFY(!movies.model.fileListLoading() && !movies.model.movieLoaded());
    QCOMPARE(movies.model.fileListModel()->size(), 0);
    QCOMPARE(movies.model.totalSpace() + movies.model.freeSpace() + movies.model.usedSpace(), QString());
    QCOMPARE(movies.model.loadedMovieName(), QString());
    QCOMPARE(movies.model.loadedMovieNumber(), 0U);
}

void tst_SsdTabModelMovies::listsInOrder()
{
    Movies movies;
    const size_t mark = movies.gate().mark();
    movies.model.loadAndViewFiles();
    QCOMPARE(movies.log.take(), QStringList("fileListLoadingChanged"));
    QVERIFY(movies.model.fileListLoading());
    CameraRig::settle();
    QCOMPARE(movies.log.take(), listingSignals);
    QVERIFY(!movies.model.fileListLoading());
    QCOMPARE(movies.calls(mark, false), listing);
    QCOMPARE(movies.calls(mark, true), QStringList());
}

void tst_SsdTabModelMovies::showsTheMovies()
{
    Movies movies;
    movies.list();
    QCOMPARE(movies.model.fileListModel()->size(), 3);
    for (int row = 0; row < 3; ++row)
        QCOMPARE(movies.movie(row)->index(), row);
    QCOMPARE(movies.movie(2)->name(), "Flight");
    QCOMPARE(movies.movie(2)->number(), 17U);
    QCOMPARE(movies.movie(2)->height(), 256U);
    QCOMPARE(movies.model.totalSpace(), "4.00 KB");
    QCOMPARE(movies.model.freeSpace(), "1.50 KB");
    QCOMPARE(movies.model.usedSpace(), "1023.00 bytes");
}

// The number of a row is its place in the list, and the camera gets this number.
void tst_SsdTabModelMovies::unreadableMovieShiftsTheLater()
{
    Movies movies;
    movies.gate().failNext("zvtGetSsdMovieInfo", 2);
    QCOMPARE(movies.list(), listing);
    QCOMPARE(movies.model.fileListModel()->size(), 2);
    QCOMPARE(movies.movie(1)->index(), 1);
    const size_t mark = movies.gate().mark();
    movies.model.loadMovie(movies.movie(1));
    CameraRig::settle();
    QCOMPARE(movies.calls(mark, false).value(0), "zvtSsdLoadMovie 1");
}

void tst_SsdTabModelMovies::listWithoutACount_data()
{
    QTest::addColumn<bool>("fails");
    QTest::newRow("no movies") << false;
    QTest::newRow("not known") << true;
}

void tst_SsdTabModelMovies::listWithoutACount()
{
    QFETCH(const bool, fails);
    Movies movies;
    movies.list();
    if (fails)
        movies.gate().failNext("zvtGetSsdMovieCount");
    else
        movies.gate().script("zvtGetSsdMovieCount", 0U);
    QCOMPARE(movies.list(), QStringList(listing.front()) + listing.mid(4));
    QCOMPARE(movies.model.fileListModel()->size(), 0);
    QCOMPARE(movies.model.totalSpace(), "4.00 KB");
}

void tst_SsdTabModelMovies::unreadableSizesAreUnknown_data()
{
    QTest::addColumn<QString>("call");
    QTest::newRow("totalSpace") << "zvtGetSsdDriveSpaceTotal";
    QTest::newRow("freeSpace") << "zvtGetSsdDriveSpaceFree";
    QTest::newRow("usedSpace") << "zvtGetSsdDriveSpaceUsed";
}

void tst_SsdTabModelMovies::unreadableSizesAreUnknown()
{
    QFETCH(const QString, call);
    Movies movies;
    movies.list();
    movies.log.take();
    movies.gate().failNext(call.toStdString());
    QCOMPARE(movies.list(), listing);
    QCOMPARE(movies.log.take(), QStringList("fileListLoadingChanged") + listingSignals);
    for (const char *size : {"totalSpace", "freeSpace", "usedSpace"})
        QCOMPARE(movies.model.property(size).toString() == "Unknown", qstrcmp(size, QTest::currentDataTag()) == 0);
    QCOMPARE(movies.model.fileListModel()->size(), 3);
}

void tst_SsdTabModelMovies::sizesHaveUnits_data()
{
    QTest::addColumn<qint64>("bytes");
    QTest::addColumn<QString>("text");
    const auto power = [](int exponent) { return qint64{1} << exponent; };
    QTest::newRow("none") << qint64{0} << "0.00 bytes";
    QTest::newRow("below KB") << qint64{1023} << "1023.00 bytes";
    QTest::newRow("KB") << qint64{1024} << "1.00 KB";
    QTest::newRow("one and a half") << qint64{1536} << "1.50 KB";
    QTest::newRow("below MB") << power(20) - 1 << "1024.00 KB";
    QTest::newRow("MB") << power(20) << "1.00 MB";
    QTest::newRow("GB") << power(30) << "1.00 GB";
    QTest::newRow("TB") << power(40) << "1.00 TB";
    QTest::newRow("above TB") << power(50) << "1024.00 TB";
    QTest::newRow("greatest") << std::numeric_limits<qint64>::max() << "8388608.00 TB";
    QTest::newRow("negative") << qint64{-2048} << "-2048.00 bytes";
}

void tst_SsdTabModelMovies::sizesHaveUnits()
{
    QFETCH(const qint64, bytes);
    QFETCH(const QString, text);
    Movies movies;
    movies.gate().script("zvtGetSsdDriveSpaceTotal", bytes);
    movies.list();
    QCOMPARE(movies.model.totalSpace(), text);
}

// The dialog is opened again while the list is read.
void tst_SsdTabModelMovies::secondListingIsDropped()
{
    Movies movies;
    movies.list();
    const QPointer<QObject> oldRow = movies.movie(0);
    movies.gate().hold("zvtGetSsdMovieCount");
    const size_t mark = movies.gate().mark();
    movies.model.loadAndViewFiles();
    QVERIFY(movies.gate().waitHeld("zvtGetSsdMovieCount"));
    movies.log.take();
    movies.model.loadAndViewFiles();
    QCOMPARE(movies.log.take(), QStringList());
    QCOMPARE(movies.model.fileListModel()->size(), 3);
    QCOMPARE(movies.movie(0), oldRow);
    movies.release();
    QCOMPARE(movies.calls(mark, false), listing);
    QVERIFY(!oldRow);
}

// Also between the end of the task and its publication.
void tst_SsdTabModelMovies::listingIsDroppedUntilItIsShown()
{
    Movies movies;
    const size_t mark = movies.gate().mark();
    movies.model.loadAndViewFiles();
    QVERIFY(QThreadPool::globalInstance()->waitForDone(10'000));
    movies.gate().script("zvtGetSsdMovieCount", 0U);
    movies.model.loadAndViewFiles();
    CameraRig::settle();
    QCOMPARE(movies.calls(mark, false), listing);
    QCOMPARE(movies.model.fileListModel()->size(), 3);
}

void tst_SsdTabModelMovies::newListReplacesTheRows()
{
    Movies movies;
    movies.list();
    const QPointer<QObject> oldRow = movies.movie(2);
    movies.movie(2)->setSelected(true);
    movies.gate().script("zvtGetSsdMovieCount", 4U);
    movies.list();
    QVERIFY(!oldRow);
    QCOMPARE(movies.model.fileListModel()->size(), 4);
    QVERIFY(!movies.movie(2)->selected());
    QCOMPARE(movies.model.findChildren<SsdMovieFileInfoModel *>().size()
                 + movies.model.fileListModel()->findChildren<SsdMovieFileInfoModel *>().size(),
             4);
}

void tst_SsdTabModelMovies::listOutlivesADisconnection()
{
    Movies movies;
    movies.gate().hold("zvtGetSsdMovieInfo");
    movies.model.loadAndViewFiles();
    QVERIFY(movies.gate().waitHeld("zvtGetSsdMovieInfo"));
    movies.rig.camera().disconnect();
    movies.release();
    QVERIFY(!movies.model.fileListLoading());
    QCOMPARE(movies.model.fileListModel()->size(), 0);
    QCOMPARE(movies.model.usedSpace(), "Unknown");
}

void tst_SsdTabModelMovies::runningListingOutlivesTheModel()
{
    walkHeldDeletion(moviesModel([](SsdTabModel *model) { model->loadAndViewFiles(); }));
}

ZVT_TEST(tst_SsdTabModelMovies)
#include "tst_SsdTabModelMovies.moc"
