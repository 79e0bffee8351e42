#include "tests/support/Test.h"
#include "tests/support/movieFiles.h"
#include "tests/unit/BatchTransferRig.h"

#include <QDir>
#include <QUrl>

#include "hlx/memory.h"
#include "platform/hlxfile/CalPackWriter.h"

namespace
{

/// A batch download that converts. A transfer writes a movie of four small frames.
struct Conversion : BatchTransfer {
    Conversion()
    {
        batch.setOutputDir(folder.filePath(""));
        batch.setConvertToQdseq(true);
        controller->download = [this](auto...) {
            folder.writeRaw("a.rqs", 4, abated);
            return true;
        };
        add(driveMovie(1))->setOutFile("a");
        QObject::connect(entry(0), &BatchDownloadEntry::statusChanged, entry(0),
                         [this] { statuses << entry(0)->status(); });
        QObject::connect(entry(0), &BatchDownloadEntry::progressChanged, entry(0),
                         [this] { progress << entry(0)->progress(); });
    }

    void run()
    {
        batch.start();
        CameraRig::settle();
    }

    QStringList files() const { return QDir(folder.filePath("")).entryList(QDir::Files, QDir::Name); }

    /// The frames of the converted movie; -1 if it is no movie.
    int convertedFrames() const
    {
        const auto movie = folder.open(hlx::file::qdseqFormat, "a.qdseq");
        return movie ? static_cast<int>(movie->frames()) : -1;
    }

    movies::Folder folder;
    bool abated = false;
    QList<int> statuses;
    QList<double> progress;
};

} // namespace

/// The conversions of a batch download.
class tst_BatchDownloadModelConvert : public Test
{
    Q_OBJECT

private slots:
    void movieIsConvertedAfterTheUnload();
    void rawMovieIsDeletedOnRequest();
    void nothingIsConvertedByDefault();
    void failedTransferIsNotConverted();
    void failedUnloadIsNotConverted();
    void failedConversionKeepsTheRawMovie();
    void failedAllocationEndsTheMovieOnly();
    void cancelInTheConversionSucceeds_data();
    void cancelInTheConversionSucceeds();

    void calibrationIsUsedOnRequest();
    void unreadableCalibrationFails();
    void calibrationMustBeAUrl();
    void settingsAreThoseOfTheStart();
};

void tst_BatchDownloadModelConvert::movieIsConvertedAfterTheUnload()
{
    Conversion rig;
    const size_t mark = rig.rig.gate().mark();
    rig.run();
    QCOMPARE(rig.rig.callsSince(mark).last(), QStringLiteral("zvtSsdUnload"));
    QCOMPARE(rig.lines(), QStringList({"Processing movie: Kiln", "Converting to qdseq."}));
    QCOMPARE(rig.files(), QStringList({"a.qdseq", "a.rqs"}));
    QCOMPARE(rig.convertedFrames(), 4);
    QCOMPARE(rig.statuses, QList<int>({1, 3, 5, 7}));
    // The last frame reports 3 of 4. The reports before it were not handled in time.
    QCOMPARE(rig.progress, QList<double>({0.75, 1.0}));
}

void tst_BatchDownloadModelConvert::rawMovieIsDeletedOnRequest()
{
    Conversion rig;
    rig.batch.setKeepRqsFile(false);
    rig.run();
    QCOMPARE(rig.files(), QStringList("a.qdseq"));
    QCOMPARE(rig.batch.itemsSucceeded(), 1);
}

void tst_BatchDownloadModelConvert::nothingIsConvertedByDefault()
{
    Conversion rig;
    rig.batch.setConvertToQdseq(false);
    rig.batch.setKeepRqsFile(false);
    rig.run();
    QCOMPARE(rig.files(), QStringList("a.rqs"));
    QCOMPARE(rig.statuses, QList<int>({1, 3, 7}));
}

void tst_BatchDownloadModelConvert::failedTransferIsNotConverted()
{
    Conversion rig;
    rig.controller->download = [&rig](auto...) {
        rig.folder.writeRaw("a.rqs", 2);
        return false;
    };
    rig.run();
    QCOMPARE(rig.files(), QStringList("a.rqs"));
    QCOMPARE(rig.statuses, QList<int>({1, 3, 6}));
}

void tst_BatchDownloadModelConvert::failedUnloadIsNotConverted()
{
    Conversion rig;
    rig.batch.setKeepRqsFile(false);
    rig.rig.gate().failAlways("zvtSsdUnload");
    rig.run();
    QCOMPARE(rig.files(), QStringList("a.rqs"));
    QCOMPARE(rig.lines(), QStringList({"Processing movie: Kiln", "Failed to unload movie.", "Failed to extract file"}));
}

void tst_BatchDownloadModelConvert::failedConversionKeepsTheRawMovie()
{
    Conversion rig;
    rig.batch.setKeepRqsFile(false);
    rig.abated = true;
    rig.run();
    QCOMPARE(rig.files(), QStringList("a.rqs"));
    QCOMPARE(rig.statuses, QList<int>({1, 3, 5, 6}));
    QCOMPARE(rig.lines(),
             QStringList({"Processing movie: Kiln", "Converting to qdseq.", "Failed to convert to qdseq.",
                          "Failed to extract file"}));
}

// A frame takes 32 bytes of memory.
void tst_BatchDownloadModelConvert::failedAllocationEndsTheMovieOnly()
{
    static int frames = 0;
    frames = 0;
    Conversion rig;
    rig.add(driveMovie(2))->setOutFile("a");
    QTest::ignoreMessage(QtWarningMsg, "a step of a batch download ended early: std::bad_alloc");
    hlx::SetAllocationHook([](std::size_t size) { return size != 32 || ++frames != 1; });
    rig.run();
    hlx::SetAllocationHook(nullptr);
    QCOMPARE(rig.lines(),
             QStringList({"Processing movie: Kiln", "Converting to qdseq.", "Failed to convert to qdseq.",
                          "Failed to extract file", "Processing movie: Kiln", "Converting to qdseq."}));
    QCOMPARE(rig.statuses.last(), int(BatchDownloadEntry::STATUS_FAILED));
    QCOMPARE(rig.batch.itemsSucceeded(), 1);
}

void tst_BatchDownloadModelConvert::cancelInTheConversionSucceeds_data()
{
    QTest::addColumn<bool>("keepsRawMovie");
    QTest::newRow("kept") << true;
    QTest::newRow("deleted") << false;
}

// The movie is cut off after the frame at which the conversion sees the cancellation.
void tst_BatchDownloadModelConvert::cancelInTheConversionSucceeds()
{
    QFETCH(const bool, keepsRawMovie);
    Conversion rig;
    rig.add(driveMovie(2));
    rig.batch.setKeepRqsFile(keepsRawMovie);
    rig.controller->download = [&rig](auto...) {
        rig.folder.writeRaw("a.rqs", 4);
        rig.reported.release();
        rig.proceed.acquire();
        return true;
    };
    rig.batch.start();
    rig.reported.acquire();
    rig.batch.cancel();
    rig.proceed.release();
    CameraRig::settle();
    QCOMPARE(rig.convertedFrames(), 1);
    QCOMPARE(rig.files(), keepsRawMovie ? QStringList({"a.qdseq", "a.rqs"}) : QStringList("a.qdseq"));
    QCOMPARE(rig.statuses, QList<int>({1, 3, 5, 7}));
    QCOMPARE(rig.lines(), QStringList({"Processing movie: Kiln", "Converting to qdseq.", "Extract canceled"}));
    QCOMPARE(rig.batch.itemsNotStarted(), 1);
}

void tst_BatchDownloadModelConvert::calibrationIsUsedOnRequest()
{
    Conversion rig;
    hlx::CCalPack pack;
    pack.cal(true)->name = "50 mm";
    QVERIFY(hlx::saveCalPack(pack, hlx::fileSystem(), rig.folder.path("p.cal")));
    rig.batch.setCalFilename(QUrl::fromLocalFile(rig.folder.filePath("p.cal")).toString());
    for (const bool isUsed : {false, true}) {
        rig.batch.setAddCalFile(isUsed);
        rig.run();
        QCOMPARE(rig.convertedFrames(), 4);
        QCOMPARE(rig.folder.content("a.qdseq").contains("50 mm"), isUsed);
    }
}

void tst_BatchDownloadModelConvert::unreadableCalibrationFails()
{
    Conversion rig;
    rig.batch.setAddCalFile(true);
    rig.batch.setCalFilename(QUrl::fromLocalFile(rig.folder.filePath("none.cal")).toString());
    rig.run();
    QCOMPARE(rig.files(), QStringList("a.rqs"));
    QCOMPARE(rig.batch.itemsFailed(), 1);
}

// A plain path has no local file, so the calibrations of the movie stay.
void tst_BatchDownloadModelConvert::calibrationMustBeAUrl()
{
    Conversion rig;
    rig.batch.setAddCalFile(true);
    rig.batch.setCalFilename(rig.folder.filePath("none.cal"));
    rig.run();
    QCOMPARE(rig.convertedFrames(), 4);
}

void tst_BatchDownloadModelConvert::settingsAreThoseOfTheStart()
{
    Conversion rig;
    rig.rig.gate().hold("zvtSsdLoadMovie");
    rig.batch.start();
    QVERIFY(rig.rig.gate().waitHeld("zvtSsdLoadMovie"));
    rig.batch.setConvertToQdseq(false);
    rig.batch.setKeepRqsFile(false);
    rig.batch.setOutputDir("/nowhere");
    rig.entry(0)->setOutFile("b");
    rig.rig.gate().release("*");
    CameraRig::settle();
    QCOMPARE(rig.files(), QStringList({"a.qdseq", "a.rqs"}));
}

ZVT_TEST(tst_BatchDownloadModelConvert)
#include "tst_BatchDownloadModelConvert.moc"
