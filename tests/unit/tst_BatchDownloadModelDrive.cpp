#include "tests/support/Test.h"
#include "tests/support/limitFileSize.h"
#include "tests/unit/BatchRig.h"

#include <QDir>
#include <QMap>
#include <QRandomGenerator>
#include <QSet>

#include "hlx/IFileSystem.h"
#include "platform/hlxfile/MovieReader.h"
#include "zvt/zvtsdk.h"

namespace
{

// The movies of the camera, by their places in the list of its drive.
enum Place { Small = 0, Medium = 1, OneFrame = 4, Corrected = 5, Empty = 6, LongName = 7 };

/// The batch download of a camera with movies on its drive. No answer is scripted.
struct DriveBatch : Batch {
    DriveBatch()
    {
        model.loadAndViewFiles();
        CameraRig::settle();
        set("link.lossPerMillion", 0);
        if (!rig.controller()->SetWindow(64, 32, 320, 256))
            qFatal("refused window");
    }

    void set(const char *setting, const QVariant &value)
    {
        if (!rig.camera().otherClient().set(setting, value))
            qFatal("refused setting %s", setting);
    }

    /// Adds a movie of the drive with the name of its output.
    BatchDownloadEntry *addFrom(Place place, const QString &outFile)
    {
        BatchDownloadEntry *entry = batch.add(qobject_cast<SsdMovieFileInfoModel *>(model.fileListModel()->at(place)));
        entry->setOutFile(outFile);
        return entry;
    }
    BatchDownloadEntry *addFrames(Place place, const QString &outFile, qulonglong first, qulonglong last)
    {
        BatchDownloadEntry *entry = addFrom(place, outFile);
        entry->setRangeType(BatchDownloadEntry::RANGE_FRAMES);
        entry->setStartFrame(first);
        entry->setEndFrame(last);
        return entry;
    }

    /// The window of the camera. None that a movie of the drive needs is like the first one.
    QList<int> window() const
    {
        uint16_t x = 0;
        uint16_t y = 0;
        uint16_t width = 0;
        uint16_t height = 0;
        return rig.controller()->GetWindow(&x, &y, &width, &height) ? QList<int>{x, y, width, height} : QList<int>();
    }
    static inline const QList<int> firstWindow{64, 32, 320, 256};

    QStringList files() const { return QDir(folder.path()).entryList(QDir::Files, QDir::Name); }

    /// What a file tells of each of its frames. Empty if it is no movie or if a frame is damaged.
    QList<hlx::file::MovieFrame> frames(const QString &name) const
    {
        const bool isRaw = name.endsWith(".rqs");
        hlx::reduce::CReduceObjectArray objects;
        const auto movie = hlx::file::MovieReader::open(isRaw ? hlx::file::rqsFormat : hlx::file::qdseqFormat,
                                                        hlx::fileSystem(), qUtf8Printable(pathOf(name)), objects);
        if (!movie)
            return {};
        QByteArray pixels(static_cast<qsizetype>(movie->imageFormat().frameBytes()), '\0');
        QList<hlx::file::MovieFrame> list(movie->frames());
        for (unsigned int frame = 0; frame < movie->frames(); ++frame)
            if (!movie->readFrame(frame, pixels.data(), list[frame]))
                return {};
        return list;
    }
};

/// A batch of movies, some of which are to fail, and what it must lead to.
class Plan
{
public:
    explicit Plan(DriveBatch &rig) : m_rig(rig) { }

    /// Adds a movie that fails at this call, at "conversion", or not at all.
    void add(const QString &failure)
    {
        if (!failure.isEmpty())
            failures << failure;
        const int row = m_rig.batch.entries()->size();
        const QString name = QString::number(row);
        // Each movie that fails has another size than those before and after it, so it needs another window.
        const Place place = failure.isEmpty() ? Small : Medium;
        BatchDownloadEntry *entry = m_rig.addFrames(place, name, 1, 3);
        const bool byTime = failure == "controller.FindFrameRange";
        if (byTime)
            entry->setRangeType(BatchDownloadEntry::RANGE_IRIG);
        lines << "Processing movie: " + entry->file();
        if (byTime)
            lines << QStringLiteral("Scanning movie for frames in irig time range %1 to %2")
                         .arg(entry->startTimeString(), entry->endTimeString());
        const bool changesWindow = m_window != place;
        if (fails(failure, {"controller.GetWindow"}) || (changesWindow && fails(failure, {"controller.SetWindow"})))
            return end(true);
        m_window = place;
        if (fails(failure, {"zvtSsdLoadMovie"}, "Failed to load movie."))
            return end(true);
        const bool isFound = !(byTime && fails(failure, {"controller.FindFrameRange"}, "Failed to find frame range."));
        const bool isTransferred
            = isFound && !fails(failure, {"controller.DownloadMovie"}, "Failed to download movie.");
        if (isTransferred)
            files << name + ".rqs";
        if (fails(failure, {"zvtSsdStopBuffer", "zvtSsdUnload"}, "Failed to unload movie.") || !isTransferred)
            return end(true);
        lines << "Converting to qdseq.";
        const bool isConverted = failure != "conversion";
        if (isConverted)
            files.last().replace(".rqs", ".qdseq");
        else
            lines << "Failed to convert to qdseq.";
        // The converted movie cannot be created where a folder has its name.
        if (!isConverted && !QDir(m_rig.folder.path()).mkdir(name + ".qdseq"))
            qFatal("cannot create a folder");
        end(!isConverted);
    }

    QStringList lines;
    QStringList files;
    int failed = 0;
    QSet<QString> failures; ///< The calls and steps at which a movie fails.

private:
    // Counts the calls of a movie up to the one that fails.
    bool fails(const QString &failure, const QStringList &calls, const char *line = nullptr)
    {
        for (const QString &call : calls) {
            ++m_calls[call];
            if (failure != call)
                continue;
            m_rig.gate().failNext(call.toStdString(), m_calls[call]);
            if (line)
                lines << line;
            return true;
        }
        return false;
    }
    void end(bool hasFailed)
    {
        if (!hasFailed)
            return;
        ++failed;
        lines << "Failed to extract file";
    }

    DriveBatch &m_rig;
    QMap<QString, int> m_calls;
    int m_window = -1; ///< The movie whose size the window has.
};

} // namespace

/// Batch downloads of the movies on the drive of an emulated camera, to files.
class tst_BatchDownloadModelDrive : public Test
{
    Q_OBJECT

private slots:
    void moviesArriveWhole();
    void rangesArrive();
    void lostFramesAreFetchedAgain();
    void windowOfTheCameraComesBack();
    void playbackIsReplaced();
    void unreadableMoviesFail();
    void fullDiskFailsTheMovieOnly();
    void unwritableFileFailsItsMovie_data();
    void unwritableFileFailsItsMovie();
    void existingFileIsReplaced();
    void earlyCancelActsInTheTransfer_data();
    void earlyCancelActsInTheTransfer();
    void disconnectionBeforeATransferLeavesNothing();
    void everyTenthOfManyMoviesFails();
};

void tst_BatchDownloadModelDrive::moviesArriveWhole()
{
    DriveBatch rig;
    rig.addFrom(LongName, "long");
    rig.addFrom(OneFrame, "one");
    rig.addFrom(Small, "small");
    rig.batch.setConvertToQdseq(true);
    rig.run();
    QCOMPARE(rig.batch.itemsSucceeded(), 3);
    for (const auto &[name, count] : {std::pair{"long", 50}, {"one", 1}, {"small", 2000}}) {
        QCOMPARE(rig.frames(name + QStringLiteral(".rqs")).size(), count);
        QCOMPARE(rig.frames(name + QStringLiteral(".qdseq")).size(), count);
    }
}

void tst_BatchDownloadModelDrive::rangesArrive()
{
    DriveBatch rig;
    rig.addFrom(LongName, "all");
    rig.addFrames(LongName, "frames", 10, 50); // One more than the last frame.
    BatchDownloadEntry *entry = rig.addFrom(LongName, "times");
    entry->setRangeType(BatchDownloadEntry::RANGE_IRIG);
    entry->setStartTime(entry->startTime().addMSecs(100));
    entry->setEndTime(entry->startTime().addMSecs(200));
    rig.run();
    QCOMPARE(rig.batch.itemsSucceeded(), 3);
    const auto all = rig.frames("all.rqs");
    const auto frames = rig.frames("frames.rqs");
    QCOMPARE(frames.size(), 40);
    QCOMPARE(frames.first().number, all.at(10).number);
    QCOMPARE(frames.last().number, all.at(49).number);
    // 100 frames a second.
    const auto times = rig.frames("times.rqs");
    QVERIFY2(qAbs(times.size() - 20) <= 1, qPrintable(QString::number(times.size())));
    QVERIFY(qAbs(int(times.first().number - all.first().number) - 10) <= 1);
}

void tst_BatchDownloadModelDrive::lostFramesAreFetchedAgain()
{
    DriveBatch rig;
    rig.set("link.lossPerMillion", 100'000);
    const BatchDownloadEntry *entry = rig.addFrom(LongName, "a");
    QList<int> statuses;
    QObject::connect(entry, &BatchDownloadEntry::statusChanged, entry, [&] { statuses << entry->status(); });
    rig.run();
    QCOMPARE(statuses, QList<int>({1, 3, 4, 7}));
    QCOMPARE(rig.frames("a.rqs").size(), 50);
}

void tst_BatchDownloadModelDrive::windowOfTheCameraComesBack()
{
    DriveBatch rig;
    rig.addFrom(LongName, "a");
    rig.run();
    QCOMPARE(rig.batch.itemsSucceeded(), 1);
    QCOMPARE(rig.window(), DriveBatch::firstWindow);
}

void tst_BatchDownloadModelDrive::playbackIsReplaced()
{
    DriveBatch rig;
    const uint64_t handle = rig.rig.camera().handle();
    QVERIFY(rig.rig.controller()->SetWindow(0, 0, 640, 512));
    QCOMPARE(zvtSsdLoadMovie(handle, OneFrame), 0);
    QCOMPARE(zvtSsdPlayBuffer(handle), 0);
    rig.addFrom(LongName, "a");
    rig.run();
    QCOMPARE(rig.frames("a.rqs").size(), 50);
    uint8_t state = 0;
    QCOMPARE(zvtGetSsdState(handle, &state), 0);
    QCOMPARE(int(state), int(SsdTabModel::DISARMED));
}

void tst_BatchDownloadModelDrive::unreadableMoviesFail()
{
    DriveBatch rig;
    rig.batch.setConvertToQdseq(true);
    rig.addFrom(Corrected, "corrected");
    rig.addFrom(Empty, "empty");
    rig.addFrames(LongName, "reversed", 7, 6);
    rig.addFrames(LongName, "behind", 50, 60);
    rig.run();
    QCOMPARE(rig.batch.itemsFailed(), 4);
    QCOMPARE(rig.files(), QStringList("corrected.rqs"));
    QCOMPARE(rig.lines().filter("Failed to convert").size(), 1);
    QCOMPARE(rig.lines().filter("Failed to download").size(), 3);
}

// The first movie has 500 frames of 40 kB, the second one takes less than 1 MB.
void tst_BatchDownloadModelDrive::fullDiskFailsTheMovieOnly()
{
    DriveBatch rig;
    rig.addFrom(Medium, "a");
    rig.addFrom(LongName, "b");
    limitFileSize(1'000'000);
    const QStringList calls = rig.run();
    limitFileSize({});
    QCOMPARE(rig.statuses(), QList<int>({BatchDownloadEntry::STATUS_FAILED, BatchDownloadEntry::STATUS_SUCCEEDED}));
    QCOMPARE(rig.lines().filter("Fail"), QStringList({"Failed to download movie.", "Failed to extract file"}));
    QCOMPARE(calls.filter("zvtSsdUnload").size(), 2);
    const qsizetype written = rig.frames("a.rqs").size();
    QVERIFY2(written > 0 && written < 25, qPrintable(QString::number(written)));
    QCOMPARE(rig.frames("b.rqs").size(), 50);
    QCOMPARE(rig.window(), DriveBatch::firstWindow);
}

void tst_BatchDownloadModelDrive::unwritableFileFailsItsMovie_data()
{
    QTest::addColumn<QString>("outputFolder");
    QTest::addColumn<int>("failed");
    QTest::newRow("no folder") << "none" << 2;
    QTest::newRow("folder with the name of the first file") << "." << 1;
}

void tst_BatchDownloadModelDrive::unwritableFileFailsItsMovie()
{
    QFETCH(const QString, outputFolder);
    QFETCH(const int, failed);
    DriveBatch rig;
    QVERIFY(QDir(rig.folder.path()).mkdir("a.rqs"));
    rig.batch.setOutputDir(rig.pathOf(outputFolder));
    rig.addFrom(LongName, "a");
    rig.addFrom(LongName, "b");
    const QStringList calls = rig.run();
    QCOMPARE(rig.lines().mid(1, 2), QStringList({"Failed to download movie.", "Failed to extract file"}));
    QCOMPARE(rig.entry(0)->status(), BatchDownloadEntry::STATUS_FAILED);
    QCOMPARE(rig.batch.itemsFailed(), failed);
    QCOMPARE(rig.batch.itemsSucceeded(), 2 - failed);
    QCOMPARE(rig.files(), failed == 2 ? QStringList() : QStringList("b.rqs"));
    QCOMPARE(calls.filter("zvtSsdUnload").size(), 2);
    QCOMPARE(rig.window(), DriveBatch::firstWindow);
}

void tst_BatchDownloadModelDrive::existingFileIsReplaced()
{
    DriveBatch rig;
    rig.addFrom(LongName, "a");
    rig.addFrames(LongName, "a", 0, 1);
    rig.run();
    QCOMPARE(rig.batch.itemsSucceeded(), 2);
    QCOMPARE(rig.frames("a.rqs").size(), 2);
}

void tst_BatchDownloadModelDrive::earlyCancelActsInTheTransfer_data()
{
    QTest::addColumn<QString>("heldCall");
    for (const char *call : {"zvtGetSsdState", "controller.GetWindow", "controller.SetWindow", "zvtSsdLoadMovie",
                             "controller.FindFrameRange"})
        QTest::newRow(call) << QString::fromLatin1(call);
}

// The steps before the transfer cannot be interrupted. The transfer ends after its first frame.
void tst_BatchDownloadModelDrive::earlyCancelActsInTheTransfer()
{
    QFETCH(const QString, heldCall);
    DriveBatch rig;
    rig.addFrom(LongName, "a")->setRangeType(BatchDownloadEntry::RANGE_IRIG);
    rig.addFrom(LongName, "b");
    QVERIFY(rig.runUntil(qPrintable(heldCall)));
    rig.batch.cancel();
    rig.finishRun();
    QCOMPARE(rig.frames("a.rqs").size(), 1);
    QCOMPARE(rig.files(), QStringList("a.rqs"));
    QCOMPARE(rig.statuses(), QList<int>({BatchDownloadEntry::STATUS_FAILED, BatchDownloadEntry::STATUS_NOT_STARTED}));
    QCOMPARE(rig.lines().mid(2), QStringList({"Failed to download movie.", "Extract canceled"}));
    QCOMPARE(rig.window(), DriveBatch::firstWindow);
}

void tst_BatchDownloadModelDrive::disconnectionBeforeATransferLeavesNothing()
{
    DriveBatch rig;
    rig.addFrom(Small, "a");
    rig.addFrom(Small, "b");
    QVERIFY(rig.runUntil("controller.DownloadMovie"));
    rig.rig.camera().disconnect();
    rig.finishRun();
    QCOMPARE(rig.batch.itemsFailed(), 2);
    QVERIFY(!rig.batch.downloading());
    QCOMPARE(rig.files(), QStringList());
}

void tst_BatchDownloadModelDrive::everyTenthOfManyMoviesFails()
{
    constexpr int movies = 500;
    const QStringList stages{
        "controller.GetWindow",     "controller.SetWindow", "zvtSsdLoadMovie", "controller.FindFrameRange",
        "controller.DownloadMovie", "zvtSsdStopBuffer",     "zvtSsdUnload",    "conversion"};
    DriveBatch rig;
    rig.set("link.lossPerMillion", 20'000);
    rig.batch.setConvertToQdseq(true);
    rig.batch.setKeepRqsFile(false);
    Plan plan(rig);
    QRandomGenerator random(7);
    for (int movie = 0; movie < movies; ++movie)
        plan.add(movie % 10 == 9 ? stages.at(random.bounded(stages.size())) : QString());
    QCOMPARE(plan.failures.size(), stages.size());
    QCOMPARE(plan.failed, movies / 10);
    rig.run();
    QCOMPARE(rig.lines(), plan.lines);
    QCOMPARE(rig.batch.itemsSucceeded(), movies - plan.failed);
    QCOMPARE(rig.batch.itemsFailed(), plan.failed);
    QCOMPARE(rig.batch.itemsNotStarted(), 0);
    plan.files.sort();
    QCOMPARE(rig.files(), plan.files);
    for (const QString &file : std::as_const(plan.files))
        QCOMPARE(rig.frames(file).size(), 3);
}

ZVT_TEST(tst_BatchDownloadModelDrive)
#include "tst_BatchDownloadModelDrive.moc"
