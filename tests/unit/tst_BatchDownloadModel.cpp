#include "tests/support/Test.h"
#include "tests/support/computedMicroseconds.h"
#include "tests/unit/BatchRig.h"

#include <QPointer>
#include <QQmlEngine>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QUrl>

#include "hlxui/IInvokeEvent.h"

namespace
{

/// A batch of two movies for the walkers, whose read is a run.
ModelUnderTest batchModel()
{
    auto model = modelOf<BatchDownloadModel>();
    model.prepare = [](CameraRig &rig) {
        for (const char *name : {"zvtSsdLoadMovie", "zvtSsdStopBuffer", "zvtSsdUnload", "controller.DownloadMovie"})
            rig.gate().script(name, true);
    };
    model.makeModel = [](QObject *root) -> QObject * {
        auto *batch = new BatchDownloadModel(root);
        for (const uint32_t number : {1, 2})
            addTo(*batch, driveMovie(number));
        return batch;
    };
    model.read = [](QObject *batch) { QMetaObject::invokeMethod(batch, "start"); };
    return model;
}

// What a run changes, and what is another object in each model.
const QStringList changing{"currentEntry", "progress", "itemsSucceeded", "itemsFailed", "itemsNotStarted",
                           "entries",      "log"};

} // namespace

/// The list and the settings of the batch download.
class tst_BatchDownloadModel : public Test
{
    Q_OBJECT

private slots:
    void startsEmpty();
    void folderIsThatOfTheDocumentsAtFirst();
    void settersSignalOnlyChanges_data();
    void settersSignalOnlyChanges();
    void listsBelongToTheModel();
    void parentIsTheSsdTab();

    void addedMovieIsTheLast();
    void nothingIsAddedForNull();
    void removedEntryIsDeletedLater();
    void removingNothingChangesNothing();
    void removeAllEmptiesTheList();
    void removedCurrentEntryIsNoLongerCurrent();

    void sameMovieTwiceIsADuplicate();
    void letterCaseMakesNamesDifferent();
    void emptyNamesAreNoDuplicates();
    void allOfThreeEqualNamesAreMarked();
    void duplicatesAreCheckedAgainAfterARemoval();
    void onlyChangedMarksAreSignalled();
    void addedMovieIsComparedWithThePresentNames();
    void addedMovieSignalsNewMarksOnly();
    void manyEntriesAreCheckedInOneFrame_data();
    void manyEntriesAreCheckedInOneFrame();
    void manyMoviesAreAddedInLinearTime_data();
    void manyMoviesAreAddedInLinearTime();

    void resultsAreCountedAtOnce();
    void statusesAreReset();
    void localFileOfAUrl_data();
    void localFileOfAUrl();
    void postedEventsArriveInOrder();
    void otherEventsAreNotInvoked();

    void randomOperator();
};

void tst_BatchDownloadModel::startsEmpty()
{
    Batch batch;
    const BatchDownloadModel fresh(&batch.model);
    QVERIFY(!fresh.downloading());
    QVERIFY(!fresh.convertToQdseq());
    QVERIFY(fresh.keepRqsFile());
    QVERIFY(!fresh.addCalFile());
    QCOMPARE(fresh.calFilename(), QString());
    QVERIFY(!fresh.currentEntry());
    QCOMPARE(fresh.currentEntryFileNumber(), -1);
    QCOMPARE(fresh.progress(), 0.0);
    QCOMPARE(fresh.itemsSucceeded() + fresh.itemsFailed() + fresh.itemsNotStarted(), 0);
}

void tst_BatchDownloadModel::folderIsThatOfTheDocumentsAtFirst()
{
    Batch batch;
    const BatchDownloadModel fresh(&batch.model);
    QVERIFY(fresh.outputDir().startsWith("file:"));
    QCOMPARE(QUrl(fresh.outputDir()).toLocalFile(),
             QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
}

void tst_BatchDownloadModel::settersSignalOnlyChanges_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("outputDir") << QVariant("file:///tmp/movies");
    QTest::newRow("convertToQdseq") << QVariant(true);
    QTest::newRow("keepRqsFile") << QVariant(false);
    QTest::newRow("addCalFile") << QVariant(true);
    QTest::newRow("calFilename") << QVariant("file:///tmp/a.cal");
}

void tst_BatchDownloadModel::settersSignalOnlyChanges()
{
    QFETCH(const QVariant, value);
    const char *property = QTest::currentDataTag();
    Batch batch;
    SignalLog log(&batch.batch);
    QVERIFY(batch.batch.setProperty(property, value));
    QVERIFY(batch.batch.setProperty(property, value));
    QCOMPARE(batch.batch.property(property), value);
    QCOMPARE(log.take(), QStringList(QLatin1String(property) + "Changed"));
}

void tst_BatchDownloadModel::listsBelongToTheModel()
{
    Batch batch;
    QCOMPARE(QQmlEngine::objectOwnership(batch.batch.entries()), QQmlEngine::CppOwnership);
    QCOMPARE(QQmlEngine::objectOwnership(batch.batch.log()), QQmlEngine::CppOwnership);
    QCOMPARE(QQmlEngine::objectOwnership(batch.add(driveMovie(1))), QQmlEngine::CppOwnership);
}

void tst_BatchDownloadModel::parentIsTheSsdTab()
{
    Batch batch;
    QCOMPARE(batch.batch.ssdTabModel(), &batch.model);
    const BatchDownloadModel other(&batch.root);
    QVERIFY(!other.ssdTabModel());
}

void tst_BatchDownloadModel::addedMovieIsTheLast()
{
    Batch batch;
    const QSignalSpy sizes(batch.batch.entries(), &ObjectListModel::sizeChanged);
    const BatchDownloadEntry *first = batch.add(driveMovie(4));
    const BatchDownloadEntry *second = batch.add(driveMovie(2));
    QCOMPARE(batch.batch.entries()->size(), 2);
    QCOMPARE(batch.entry(0), first);
    QCOMPARE(batch.entry(1), second);
    QCOMPARE(second->index(), 11);
    QCOMPARE(sizes.size(), 2);
}

void tst_BatchDownloadModel::nothingIsAddedForNull()
{
    Batch batch;
    QVERIFY(!batch.batch.add(nullptr));
    QCOMPARE(batch.batch.entries()->size(), 0);
}

// The handler of its row may still use it.
void tst_BatchDownloadModel::removedEntryIsDeletedLater()
{
    Batch batch;
    const QPointer<BatchDownloadEntry> first = batch.add(driveMovie(1));
    const BatchDownloadEntry *second = batch.add(driveMovie(2));
    batch.batch.remove(first);
    QCOMPARE(batch.batch.entries()->size(), 1);
    QCOMPARE(batch.entry(0), second);
    QVERIFY(first);
    CameraRig::settle();
    QVERIFY(!first);
}

void tst_BatchDownloadModel::removingNothingChangesNothing()
{
    Batch batch;
    batch.add(driveMovie(1));
    BatchDownloadEntry elsewhere(3, driveMovie(2), &batch.batch);
    batch.batch.remove(nullptr);
    batch.batch.remove(&elsewhere);
    QCOMPARE(batch.batch.entries()->size(), 1);
}

void tst_BatchDownloadModel::removeAllEmptiesTheList()
{
    Batch batch;
    batch.add(driveMovie(1));
    const QPointer<BatchDownloadEntry> last = batch.add(driveMovie(2));
    batch.batch.removeAll();
    QCOMPARE(batch.batch.entries()->size(), 0);
    CameraRig::settle();
    QVERIFY(!last);
}

void tst_BatchDownloadModel::removedCurrentEntryIsNoLongerCurrent()
{
    Batch batch;
    batch.batch.postCurrentEntry(batch.add(driveMovie(1)));
    CameraRig::settle();
    QCOMPARE(batch.batch.currentEntry(), batch.entry(0));
    batch.batch.removeAll();
    CameraRig::settle();
    QVERIFY(!batch.batch.currentEntry());
    QCOMPARE(batch.batch.currentEntryFileNumber(), -1);
}

void tst_BatchDownloadModel::sameMovieTwiceIsADuplicate()
{
    Batch batch;
    const BatchDownloadEntry *first = batch.add(driveMovie(1));
    QVERIFY(!first->hasDuplicateOutputName());
    const BatchDownloadEntry *second = batch.add(driveMovie(1));
    QVERIFY(first->hasDuplicateOutputName());
    QVERIFY(second->hasDuplicateOutputName());
    QVERIFY(batch.batch.checkAndSetDuplicateOutputs());
}

void tst_BatchDownloadModel::letterCaseMakesNamesDifferent()
{
    Batch batch;
    batch.add(driveMovie(1))->setOutFile("a");
    batch.add(driveMovie(2))->setOutFile("A");
    QVERIFY(!batch.batch.checkAndSetDuplicateOutputs());
    QVERIFY(!batch.entry(0)->hasDuplicateOutputName());
    QVERIFY(!batch.entry(1)->hasDuplicateOutputName());
}

void tst_BatchDownloadModel::emptyNamesAreNoDuplicates()
{
    Batch batch;
    batch.add(driveMovie(1))->setOutFile("");
    batch.add(driveMovie(2))->setOutFile("");
    QVERIFY(!batch.batch.checkAndSetDuplicateOutputs());
    QVERIFY(!batch.entry(0)->hasDuplicateOutputName());
    QVERIFY(!batch.entry(0)->validOutFile());
}

void tst_BatchDownloadModel::allOfThreeEqualNamesAreMarked()
{
    Batch batch;
    for (const uint32_t number : {1, 2, 1, 3, 1})
        batch.add(driveMovie(number));
    const QList<bool> expected{true, false, true, false, true};
    for (int row = 0; row < expected.size(); ++row)
        QCOMPARE(batch.entry(row)->hasDuplicateOutputName(), expected.at(row));
}

void tst_BatchDownloadModel::duplicatesAreCheckedAgainAfterARemoval()
{
    Batch batch;
    batch.add(driveMovie(1));
    batch.add(driveMovie(1));
    batch.batch.remove(batch.entry(0));
    QVERIFY(!batch.entry(0)->hasDuplicateOutputName());
    QVERIFY(!batch.batch.checkAndSetDuplicateOutputs());
}

void tst_BatchDownloadModel::onlyChangedMarksAreSignalled()
{
    Batch batch;
    batch.add(driveMovie(1));
    batch.add(driveMovie(1));
    SignalLog log(batch.entry(0));
    QVERIFY(batch.batch.checkAndSetDuplicateOutputs());
    QCOMPARE(log.take(), QStringList());
    batch.entry(1)->setOutFile("other");
    QCOMPARE(log.take(), QStringList("hasDuplicateOutputNameChanged"));
}

// Names that were changed, removed or emptied before count as they are now.
void tst_BatchDownloadModel::addedMovieIsComparedWithThePresentNames()
{
    Batch batch;
    batch.add(driveMovie(1))->setOutFile("2-Kiln");
    QVERIFY(!batch.add(driveMovie(1))->hasDuplicateOutputName());
    QVERIFY(batch.add(driveMovie(2))->hasDuplicateOutputName());
    QVERIFY(batch.entry(0)->hasDuplicateOutputName());
    batch.batch.remove(batch.entry(1));
    QVERIFY(!batch.add(driveMovie(1))->hasDuplicateOutputName());
    batch.entry(0)->setOutFile("");
    QVERIFY(batch.add(driveMovie(2))->hasDuplicateOutputName());
    batch.batch.removeAll();
    QVERIFY(!batch.add(driveMovie(2))->hasDuplicateOutputName());
    QVERIFY(!batch.batch.checkAndSetDuplicateOutputs());
}

void tst_BatchDownloadModel::addedMovieSignalsNewMarksOnly()
{
    Batch batch;
    SignalLog first(batch.add(driveMovie(1)));
    SignalLog other(batch.add(driveMovie(2)));
    SignalLog second(batch.add(driveMovie(1)));
    QCOMPARE(first.take(), QStringList("hasDuplicateOutputNameChanged"));
    batch.add(driveMovie(1));
    QCOMPARE(first.take() + other.take() + second.take(), QStringList());
}

void tst_BatchDownloadModel::manyEntriesAreCheckedInOneFrame_data()
{
    QTest::addColumn<bool>("equalNames");
    QTest::newRow("different names") << false;
    QTest::newRow("equal names") << true;
}

// Four times as many entries take about four times as long, not sixteen times.
void tst_BatchDownloadModel::manyEntriesAreCheckedInOneFrame()
{
    QFETCH(const bool, equalNames);
    constexpr int few = 1250;
    constexpr int many = 4 * few;
    constexpr qint64 frameOfTheDisplay = 16'000; // Microseconds.
    Batch batch;
    const auto leastTime = [&batch] {
        qint64 least = std::numeric_limits<qint64>::max();
        for (int round = 0; round < 5; ++round) {
            const qint64 before = computedMicroseconds();
            batch.batch.checkAndSetDuplicateOutputs();
            least = std::min(least, computedMicroseconds() - before);
        }
        return least;
    };
    const auto fill = [&batch, equalNames](int size) {
        for (int row = batch.batch.entries()->size(); row < size; ++row)
            batch.add(driveMovie(equalNames ? 7 : static_cast<uint32_t>(row)));
    };
    fill(few);
    const qint64 timeOfFew = leastTime();
    fill(many);
    const qint64 timeOfMany = leastTime();
    QVERIFY2(timeOfMany < frameOfTheDisplay, qPrintable(QString::number(timeOfMany)));
    QVERIFY2(timeOfMany < 8 * timeOfFew, qPrintable(QStringLiteral("%1 %2").arg(timeOfFew).arg(timeOfMany)));
    batch.entry(0)->setOutFile(batch.entry(many - 1)->outFile());
    QVERIFY(batch.entry(many - 1)->hasDuplicateOutputName());
}

void tst_BatchDownloadModel::manyMoviesAreAddedInLinearTime_data() { manyEntriesAreCheckedInOneFrame_data(); }

void tst_BatchDownloadModel::manyMoviesAreAddedInLinearTime()
{
    QFETCH(const bool, equalNames);
    constexpr int few = 1250;
    constexpr int many = 4 * few;
    const Batch rig;
    const auto leastTime = [&rig, equalNames](int size) {
        qint64 least = std::numeric_limits<qint64>::max();
        for (int round = 0; round < 3; ++round) {
            BatchDownloadModel batch(&rig.model);
            const qint64 before = computedMicroseconds();
            for (int row = 0; row < size; ++row)
                addTo(batch, driveMovie(equalNames ? 7 : static_cast<uint32_t>(row)));
            least = std::min(least, computedMicroseconds() - before);
        }
        return least;
    };
    const qint64 timeOfFew = leastTime(few);
    const qint64 timeOfMany = leastTime(many);
    QVERIFY2(timeOfMany < 8 * timeOfFew, qPrintable(QStringLiteral("%1 %2").arg(timeOfFew).arg(timeOfMany)));
}

// Only waiting, failed and succeeded movies are counted.
void tst_BatchDownloadModel::resultsAreCountedAtOnce()
{
    Batch batch;
    for (const int status : {0, 0, 0, 1, 2, 3, 4, 5, 6, 6, 7})
        batch.add(driveMovie(1))->setStatus(static_cast<BatchDownloadEntry::ESTATUS>(status));
    SignalLog log(&batch.batch);
    batch.batch.generateResultsForDisplay();
    QCOMPARE(log.take(), QStringList("resultReportingChanged"));
    QCOMPARE(batch.batch.itemsNotStarted(), 3);
    QCOMPARE(batch.batch.itemsFailed(), 2);
    QCOMPARE(batch.batch.itemsSucceeded(), 1);
    batch.batch.generateResultsForDisplay();
    QCOMPARE(batch.batch.itemsNotStarted(), 3);
}

void tst_BatchDownloadModel::statusesAreReset()
{
    Batch batch;
    for (const int status : {0, 5, 6, 7})
        batch.add(driveMovie(1))->setStatus(static_cast<BatchDownloadEntry::ESTATUS>(status));
    batch.entry(3)->setProgress(1.0);
    batch.batch.resetAllStatusOnEntries();
    QCOMPARE(batch.statuses(), QList<int>(4, BatchDownloadEntry::STATUS_NOT_STARTED));
    QCOMPARE(batch.entry(3)->progress(), 1.0);
}

void tst_BatchDownloadModel::localFileOfAUrl_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("file");
    QTest::newRow("file") << "file:///tmp/a b.cal"
                          << "/tmp/a b.cal";
    QTest::newRow("encoded") << "file:///tmp/a%20b.cal"
                             << "/tmp/a b.cal";
    QTest::newRow("no file") << "http://host/a.cal"
                             << "";
    QTest::newRow("empty") << ""
                           << "";
}

void tst_BatchDownloadModel::localFileOfAUrl()
{
    QFETCH(const QString, url);
    QFETCH(const QString, file);
    Batch batch;
    QCOMPARE(batch.batch.urlToLocalFile(url), file);
}

void tst_BatchDownloadModel::postedEventsArriveInOrder()
{
    Batch batch;
    BatchDownloadEntry *entry = batch.addWatched(driveMovie(1));
    batch.batch.postLog("one");
    entry->postStatus(BatchDownloadEntry::STATUS_LOADING);
    batch.batch.postCurrentEntry(entry);
    batch.batch.postProgress(0.25);
    batch.batch.postLog("two");
    QCOMPARE(batch.journal, QStringList());
    CameraRig::settle();
    QCOMPARE(batch.journal, QStringList({"log one", "0 status 1", "current 0", "progress 0.25", "log two"}));
}

// The events of the plug-in have the types 1000 to 2000.
void tst_BatchDownloadModel::otherEventsAreNotInvoked()
{
    struct Event : IInvokeEvent {
        explicit Event(int type) : IInvokeEvent(static_cast<QEvent::Type>(type)) { }
        void invoke() override { isInvoked = true; }
        bool isInvoked = false;
    };
    Batch batch;
    for (const int type : {999, 1000, 2000, 2001}) {
        Event event(type);
        QCOMPARE(batch.batch.event(&event), type != 999);
        QCOMPARE(event.isInvoked, type == 1000 || type == 2000);
    }
}

// Chosen settings and the movies that they let fail are those of each model.
void tst_BatchDownloadModel::randomOperator()
{
    ModelUnderTest model = batchModel();
    model.ownState = changing + QStringList{"outputDir", "convertToQdseq", "keepRqsFile", "addCalFile", "calFilename"};
    walkRandomOperator(model, 5);
}

ZVT_TEST(tst_BatchDownloadModel)
#include "tst_BatchDownloadModel.moc"
