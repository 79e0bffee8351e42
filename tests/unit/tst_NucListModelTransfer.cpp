#include "tests/support/Test.h"
#include "tests/unit/NucListRig.h"

#include "correction/NucTransferWorker.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QUrl>

#include <limits>
#include <memory>

namespace
{

constexpr const char *uploadCall = "zvtUploadNUCStdEx";
constexpr const char *downloadCall = "zvtDownloadNUCStd";

/// A camera with the correction "a", and a folder on the computer.
struct Transfer : NucListRig {
    Transfer() : NucListRig({"a"}) { refresh(); }

    QString path(const QString &file) const { return folder.filePath(file); }
    QString url(const QString &file) const { return QUrl::fromLocalFile(path(file)).toString(QUrl::FullyEncoded); }

    bool finish()
    {
        const bool ended = QTest::qWaitFor([this] { return !model.transferring(); }, 10'000);
        CameraRig::settle();
        return ended;
    }

    bool download(const QString &name, const QString &file)
    {
        model.downloadNuc(name, url(file));
        return finish();
    }

    bool upload(const QString &file)
    {
        model.uploadNuc(url(file));
        return finish();
    }

    QStringList localFiles() const { return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name); }

    QTemporaryDir folder;
};

} // namespace

/// Copying corrections to and from the computer.
class tst_NucListModelTransfer : public Test
{
    Q_OBJECT

private slots:
    void downloadWritesTheFile();
    void uploadAddsACorrection();
    void uploadSendsTheWholeFileName();
    void uploadRefreshesAndDownloadDoesNot();
    void namesMayHoldAnything();
    void flagsAreSetWhileItRuns();
    void resultIsSetBeforeTheEndIsSignalled();
    void resultOfTheLastTransferStaysMeanwhile();
    void nextOneMayBeginAtOnce();
    void uploadIsListedThoughTheNextTransferBegins();
    void progressGoesUpToAHundred();
    void progressIsCutToWholePercents();
    void secondTransferIsIgnored();
    void transferAndReadOverlap();
    void failedTransferLeavesTheList_data();
    void failedTransferLeavesTheList();
    void abortedTransferFails_data();
    void abortedTransferFails();
    void abortWithoutATransferDoesNothing();
    void missingAndDamagedFilesAreRefused();
    void disconnectingEndsIt();
    void destructionWaitsForTheTransfer();
    void workerIsFreed();
    void workerKnowsTheFreeSpaceAfterAnUpload();

private:
    static void addDirections()
    {
        QTest::addColumn<bool>("upload");
        QTest::newRow("upload") << true;
        QTest::newRow("download") << false;
    }
};

void tst_NucListModelTransfer::downloadWritesTheFile()
{
    Transfer transfer;
    const size_t mark = transfer.gate().mark();
    QVERIFY(transfer.download("a", "copy"));
    QVERIFY(transfer.model.transferOk());
    QVERIFY(!transfer.model.transferUpload());
    QCOMPARE(transfer.calls(mark),
             QStringList(QStringLiteral("%1 \"a\", \"%2\", delegate").arg(downloadCall, transfer.path("copy"))));
    // No extension is added.
    QCOMPARE(transfer.localFiles(), QStringList("copy"));
    QFile file(transfer.path("copy"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), correctionFile());
}

void tst_NucListModelTransfer::uploadAddsACorrection()
{
    Transfer transfer;
    QVERIFY(transfer.download("a", "b.nuc"));
    QVERIFY(transfer.upload("b.nuc"));
    QVERIFY(transfer.model.transferOk());
    QVERIFY(transfer.model.transferUpload());
    QCOMPARE(transfer.names(), QStringList({"a", "b"}));
    QCOMPARE(transfer.files(), QStringList({"a.nuc", "b.nuc"}));
}

void tst_NucListModelTransfer::uploadSendsTheWholeFileName()
{
    Transfer transfer;
    QVERIFY(transfer.download("a", "Cold.Start.nuc"));
    const size_t mark = transfer.gate().mark();
    QVERIFY(transfer.upload("Cold.Start.nuc"));
    QCOMPARE(
        transfer.calls(mark).first(),
        QStringLiteral("%1 \"Cold.Start.nuc\", \"%2\", delegate").arg(uploadCall, transfer.path("Cold.Start.nuc")));
    QCOMPARE(transfer.names(), QStringList({"Cold.Start", "a"}));
}

void tst_NucListModelTransfer::uploadRefreshesAndDownloadDoesNot()
{
    Transfer transfer;
    const size_t mark = transfer.gate().mark();
    QVERIFY(transfer.download("a", "b.nuc"));
    QCOMPARE(transfer.rig.callsSince(mark), QStringList(downloadCall));
    const size_t uploadMark = transfer.gate().mark();
    QVERIFY(transfer.upload("b.nuc"));
    const QStringList calls = transfer.rig.callsSince(uploadMark);
    // The worker reads the free space, which the model does not use, then the list is read.
    QCOMPARE(calls.mid(0, 3), QStringList({uploadCall, "zvtGetNUCFreeSpace", "zvtListNUCs"}));
    QCOMPARE(calls.count("zvtGetNUCFreeSpace"), 2);
}

void tst_NucListModelTransfer::namesMayHoldAnything()
{
    Transfer transfer;
    const QString name = QStringLiteral("Glühofen 5%25 #2");
    storeCorrections(transfer.rig.camera(), {name});
    QVERIFY(transfer.download(name, name + ".nuc"));
    QVERIFY(transfer.model.transferOk());
    transfer.model.deleteNuc(name);
    QVERIFY(transfer.upload(name + ".nuc"));
    QVERIFY(transfer.model.transferOk());
    QVERIFY(transfer.names().contains(name));
}

void tst_NucListModelTransfer::flagsAreSetWhileItRuns()
{
    Transfer transfer;
    transfer.gate().hold(downloadCall);
    SignalLog log(&transfer.model);
    transfer.model.downloadNuc("a", transfer.url("copy"));
    QCOMPARE(log.take(), QStringList({"progressChanged", "transferringChanged"}));
    QVERIFY(transfer.model.transferring());
    QCOMPARE(transfer.model.progress(), 0);
    QVERIFY(transfer.gate().waitHeld(downloadCall));
    transfer.gate().release("*");
    QVERIFY(transfer.finish());
    QCOMPARE(log.take().last(), "transferringChanged");
}

void tst_NucListModelTransfer::resultIsSetBeforeTheEndIsSignalled()
{
    Transfer transfer;
    QVERIFY(transfer.download("a", "b.nuc"));
    QStringList seen;
    QObject::connect(&transfer.model, &NucListModel::transferringChanged, this, [&] {
        const NucListModel &model = transfer.model;
        seen << QStringLiteral("transferring %1, upload %2, ok %3, refreshing %4")
                    .arg(model.transferring())
                    .arg(model.transferUpload())
                    .arg(model.transferOk())
                    .arg(model.refreshing());
    });
    transfer.gate().failNext(uploadCall);
    QVERIFY(transfer.upload("b.nuc"));
    QVERIFY(transfer.upload("b.nuc"));
    QCOMPARE(
        seen,
        QStringList({"transferring 1, upload 1, ok 1, refreshing 0", "transferring 0, upload 1, ok 0, refreshing 0",
                     "transferring 1, upload 1, ok 0, refreshing 0", "transferring 0, upload 1, ok 1, refreshing 0"}));
}

void tst_NucListModelTransfer::resultOfTheLastTransferStaysMeanwhile()
{
    Transfer transfer;
    QVERIFY(transfer.download("a", "copy"));
    transfer.gate().hold(uploadCall);
    transfer.model.uploadNuc(transfer.url("copy"));
    QVERIFY(transfer.gate().waitHeld(uploadCall));
    QVERIFY(transfer.model.transferOk());
    QVERIFY(transfer.model.transferUpload());
    transfer.gate().release("*");
    QVERIFY(transfer.finish());
}

void tst_NucListModelTransfer::nextOneMayBeginAtOnce()
{
    Transfer transfer;
    QObject::connect(&transfer.model, &NucListModel::transferringChanged, this, [&] {
        if (!transfer.model.transferring() && transfer.localFiles().size() < 2)
            transfer.model.downloadNuc("a", transfer.url("second"));
    });
    transfer.model.downloadNuc("a", transfer.url("first"));
    QTRY_COMPARE(transfer.localFiles(), QStringList({"first", "second"}));
    QVERIFY(transfer.finish());
    QVERIFY(transfer.model.transferOk());
}

void tst_NucListModelTransfer::uploadIsListedThoughTheNextTransferBegins()
{
    Transfer transfer;
    QVERIFY(transfer.download("a", "b.nuc"));
    QObject::connect(&transfer.model, &NucListModel::transferringChanged, this, [&] {
        if (!transfer.model.transferring() && transfer.model.transferUpload())
            transfer.model.downloadNuc("a", transfer.url("copy"));
    });
    transfer.model.uploadNuc(transfer.url("b.nuc"));
    QTRY_COMPARE(transfer.localFiles(), QStringList({"b.nuc", "copy"}));
    QVERIFY(transfer.finish());
    QCOMPARE(transfer.names(), QStringList({"a", "b"}));
}

void tst_NucListModelTransfer::progressGoesUpToAHundred()
{
    Transfer transfer;
    storeCorrections(transfer.rig.camera(), {"large"}, correctionFile(640, 256));
    QList<int> progress;
    QObject::connect(&transfer.model, &NucListModel::progressChanged, this,
                     [&] { progress << transfer.model.progress(); });
    QVERIFY(transfer.download("large", "copy"));
    QCOMPARE(progress.first(), 0);
    QCOMPARE(progress.last(), 100);
    QVERIFY(progress.size() > 2);
    // Only changes are signalled, upwards.
    for (int i = 1; i < progress.size(); ++i)
        QVERIFY(progress.at(i) > progress.at(i - 1));
}

void tst_NucListModelTransfer::progressIsCutToWholePercents()
{
    NucTransferWorker worker(nullptr, 0, true, QString(), QString());
    const QSignalSpy progress(&worker, &NucTransferWorker::progressChanged);
    QCOMPARE(worker.progress(0, 0), 0); // Nothing to transfer.
    QCOMPARE(worker.progress(2, 3), 0);
    // 29 / 100 * 100 would be less than 29.
    QCOMPARE(worker.progress(29, 100), 0);
    QCOMPARE(worker.progress(4'000'000'000U, 4'000'000'000U), 0);
    QCOMPARE(worker.progress(std::numeric_limits<unsigned int>::max(), 1), 0);
    worker.abort();
    QCOMPARE(worker.progress(1, 2), -1);
    QCOMPARE(QList<QVariantList>(progress), (QList<QVariantList>{{0}, {66}, {29}, {100}, {100}, {50}}));
}

void tst_NucListModelTransfer::secondTransferIsIgnored()
{
    Transfer transfer;
    transfer.gate().hold(downloadCall);
    transfer.model.downloadNuc("a", transfer.url("copy"));
    QVERIFY(transfer.gate().waitHeld(downloadCall));
    const size_t mark = transfer.gate().mark();
    SignalLog log(&transfer.model);
    transfer.model.uploadNuc(transfer.url("other"));
    transfer.model.downloadNuc("a", transfer.url("other"));
    QVERIFY(!transfer.model.transferUpload());
    QCOMPARE(log.take(), QStringList());
    transfer.gate().release("*");
    QVERIFY(transfer.finish());
    QCOMPARE(transfer.rig.callsSince(mark), QStringList());
    QCOMPARE(transfer.localFiles(), QStringList("copy"));
}

void tst_NucListModelTransfer::transferAndReadOverlap()
{
    Transfer transfer;
    transfer.gate().hold("zvtListNUCs");
    transfer.model.refresh();
    QVERIFY(transfer.gate().waitHeld("zvtListNUCs"));
    transfer.model.downloadNuc("a", transfer.url("copy"));
    QTRY_VERIFY(!transfer.model.transferring());
    QVERIFY(transfer.model.transferOk());
    QVERIFY(transfer.model.refreshing());
    transfer.gate().release("*");
    CameraRig::settle();
    QCOMPARE(transfer.names(), QStringList("a"));
}

void tst_NucListModelTransfer::failedTransferLeavesTheList_data() { addDirections(); }

void tst_NucListModelTransfer::failedTransferLeavesTheList()
{
    QFETCH(const bool, upload);
    Transfer transfer;
    QVERIFY(transfer.download("a", "b.nuc"));
    transfer.gate().failAlways(upload ? uploadCall : downloadCall);
    const size_t mark = transfer.gate().mark();
    QVERIFY(upload ? transfer.upload("b.nuc") : transfer.download("a", "other"));
    QVERIFY(!transfer.model.transferOk());
    QCOMPARE(transfer.model.transferUpload(), upload);
    QVERIFY(!transfer.rig.callsSince(mark).contains("zvtListNUCs"));
    QCOMPARE(transfer.files(), QStringList("a.nuc"));
    QCOMPARE(transfer.localFiles(), QStringList("b.nuc"));
}

void tst_NucListModelTransfer::abortedTransferFails_data() { addDirections(); }

void tst_NucListModelTransfer::abortedTransferFails()
{
    QFETCH(const bool, upload);
    Transfer transfer;
    QVERIFY(transfer.download("a", "b.nuc"));
    const char *call = upload ? uploadCall : downloadCall;
    transfer.gate().hold(call);
    if (upload)
        transfer.model.uploadNuc(transfer.url("b.nuc"));
    else
        transfer.model.downloadNuc("a", transfer.url("other"));
    QVERIFY(transfer.gate().waitHeld(call));
    transfer.model.abort();
    transfer.gate().release("*");
    QVERIFY(transfer.finish());
    QVERIFY(!transfer.model.transferOk());
    QCOMPARE(transfer.files(), QStringList("a.nuc"));
    QCOMPARE(transfer.names(), QStringList("a"));
    // The first block, which was written before the stop.
    const qint64 written = QFile(transfer.path("other")).size();
    QVERIFY(upload ? written == 0 : written > 0 && written < correctionFile().size());
}

void tst_NucListModelTransfer::abortWithoutATransferDoesNothing()
{
    Transfer transfer;
    transfer.model.abort();
    QVERIFY(transfer.download("a", "copy"));
    QVERIFY(transfer.model.transferOk());
}

void tst_NucListModelTransfer::missingAndDamagedFilesAreRefused()
{
    Transfer transfer;
    QVERIFY(transfer.upload("none.nuc"));
    QVERIFY(!transfer.model.transferOk());
    QVERIFY(transfer.download("a", "b.nuc"));
    QFile file(transfer.path("b.nuc"));
    QVERIFY(file.resize(file.size() - 1));
    QVERIFY(transfer.upload("b.nuc"));
    QVERIFY(!transfer.model.transferOk());
    QCOMPARE(transfer.files(), QStringList("a.nuc"));
}

void tst_NucListModelTransfer::disconnectingEndsIt()
{
    Transfer transfer;
    transfer.gate().hold(downloadCall);
    transfer.model.downloadNuc("a", transfer.url("copy"));
    QVERIFY(transfer.gate().waitHeld(downloadCall));
    transfer.rig.camera().disconnect();
    transfer.gate().release("*");
    QVERIFY(transfer.finish());
    QVERIFY(!transfer.model.transferOk());
    QCOMPARE(transfer.localFiles(), QStringList());
}

void tst_NucListModelTransfer::destructionWaitsForTheTransfer()
{
    const QTemporaryDir folder;
    CameraRig rig;
    const QByteArray large = correctionFile(640, 512);
    storeCorrections(rig.camera(), {"a"}, large);
    auto root = std::make_unique<ZvtCameraModel>(rig.controller(), nullptr);
    CameraRig::settle();
    rig.gate().hold(downloadCall);
    root->nucList()->downloadNuc("a", QUrl::fromLocalFile(folder.filePath("copy")).toString());
    QVERIFY(rig.gate().waitHeld(downloadCall));
    // The root destroys this model immediately before the list.
    QObject::connect(root->nucProcess(), &QObject::destroyed, this, [&rig] { rig.gate().release("*"); });
    root.reset();
    // The transfer was not aborted.
    QCOMPARE(QFile(folder.filePath("copy")).size(), large.size());
}

void tst_NucListModelTransfer::workerIsFreed()
{
    Transfer transfer;
    transfer.model.downloadNuc("a", transfer.url("copy"));
    QCOMPARE(transfer.model.findChildren<NucTransferWorker *>().size(), 1);
    QVERIFY(transfer.finish());
    QCOMPARE(transfer.model.findChildren<NucTransferWorker *>().size(), 0);
}

void tst_NucListModelTransfer::workerKnowsTheFreeSpaceAfterAnUpload()
{
    Transfer transfer;
    QVERIFY(transfer.download("a", "b.nuc"));
    transfer.gate().script("zvtGetNUCFreeSpace", 4711);
    for (const bool upload : {true, false}) {
        NucTransferWorker worker(nullptr, transfer.handle(), upload, transfer.path("b.nuc"), upload ? "b.nuc" : "a");
        worker.start();
        QVERIFY(worker.wait(10'000));
        QVERIFY(worker.ok());
        QCOMPARE(worker.freeSpaceValid(), upload);
        QCOMPARE(worker.freeSpace(), upload ? 4711U : 0U);
    }
}

ZVT_TEST(tst_NucListModelTransfer)
#include "tst_NucListModelTransfer.moc"
