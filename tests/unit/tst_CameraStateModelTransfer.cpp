#include "tests/support/Test.h"
#include "tests/unit/StateRig.h"

#include "state/CameraStateTransferWorker.h"

#include <QTemporaryDir>

#include <limits>

namespace
{

constexpr const char *uploadCall = "zvtUploadStateStd";
constexpr const char *downloadCall = "zvtDownloadStateStd";

/// A camera with the state "a", and a folder on the computer.
struct Transfer : State {
    Transfer()
    {
        save("a");
        run(&CameraStateModel::refresh);
    }

    QString path(const QString &file) const { return folder.filePath(file); }
    QString url(const QString &file) const { return QUrl::fromLocalFile(path(file)).toString(); }

    bool finish()
    {
        const bool ended = QTest::qWaitFor([this] { return !model.transferring(); }, 10'000);
        CameraRig::settle();
        return ended;
    }

    bool download(const QString &name, const QString &file)
    {
        model.downloadState(name, url(file));
        return finish();
    }

    bool upload(const QString &file)
    {
        model.uploadState(url(file));
        return finish();
    }

    QStringList localFiles() const { return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name); }

    QTemporaryDir folder;
};

} // namespace

class tst_CameraStateModelTransfer : public Test
{
    Q_OBJECT

private slots:
    void downloadWritesAFile();
    void uploadAddsAState();
    void uploadRefreshesAndDownloadDoesNot();
    void namesMayHoldAnything();
    void flagsStandWhileItRuns();
    void endIsToldWithItsResult();
    void nextOneMayBeginAtOnce();
    void progressGoesUpToAHundred();
    void progressOfNothingIsZero();
    void secondTransferIsIgnored();
    void transferMayStartDuringASave();

    void failedTransferIsTold_data();
    void failedTransferIsTold();
    void abortedUploadLeavesNothing();
    void abortWithoutATransferDoesNothing();
    void corruptFileIsRefused();
    void disconnectingEndsIt();
    void destructionWaitsForTheTransfer();
    void workerIsFreed();
};

void tst_CameraStateModelTransfer::downloadWritesAFile()
{
    Transfer transfer;
    QVERIFY(transfer.download("a", "copy.qsf"));
    QVERIFY(transfer.model.transferOk());
    QVERIFY(!transfer.model.transferUpload());
    QCOMPARE(transfer.localFiles(), QStringList("copy.qsf"));
}

void tst_CameraStateModelTransfer::uploadAddsAState()
{
    Transfer transfer;
    QVERIFY(transfer.download("a", "copy.two.qsf"));
    emulator::Clock::advance(1000);
    QVERIFY(transfer.upload("copy.two.qsf"));
    QVERIFY(transfer.model.transferOk());
    QVERIFY(transfer.model.transferUpload());
    QCOMPARE(transfer.files(), QStringList({"a.qsf", "copy.two.qsf"}));
    QCOMPARE(transfer.names(), QStringList({"a", "copy.two"}));
}

void tst_CameraStateModelTransfer::uploadRefreshesAndDownloadDoesNot()
{
    Transfer transfer;
    const size_t mark = transfer.rig.gate().mark();
    QVERIFY(transfer.download("a", "copy.qsf"));
    QCOMPARE(transfer.rig.callsSince(mark), QStringList(downloadCall));
    const size_t uploadMark = transfer.rig.gate().mark();
    QVERIFY(transfer.upload("copy.qsf"));
    QCOMPARE(transfer.rig.callsSince(uploadMark).first(), QLatin1String(uploadCall));
    QCOMPARE(transfer.rig.callsSince(uploadMark).count("zvtListStates"), 1);
}

void tst_CameraStateModelTransfer::namesMayHoldAnything()
{
    Transfer transfer;
    const QString name = QString::fromUtf8("Glühofen 5% #2");
    transfer.save(name);
    QVERIFY(transfer.download(name, name + ".qsf"));
    QVERIFY(transfer.model.transferOk());
    transfer.model.deleteState(name);
    QVERIFY(transfer.upload(name + ".qsf"));
    QVERIFY(transfer.model.transferOk());
    QVERIFY(transfer.names().contains(name));
}

void tst_CameraStateModelTransfer::flagsStandWhileItRuns()
{
    Transfer transfer;
    transfer.rig.gate().hold(downloadCall);
    auto &order = transfer.note(
        {{&CameraStateModel::progressChanged, "progress"}, {&CameraStateModel::transferringChanged, "transferring"}});
    transfer.model.downloadState("a", transfer.url("copy.qsf"));
    QCOMPARE(order, QStringList({"progress", "transferring"}));
    QVERIFY(transfer.model.transferring());
    QCOMPARE(transfer.model.progress(), 0);
    QVERIFY(transfer.rig.gate().waitHeld(downloadCall));
    transfer.rig.gate().release("*");
    QVERIFY(transfer.finish());
    QCOMPARE(order.count("transferring"), 2);
    QCOMPARE(order.last(), QStringLiteral("transferring"));
}

// Direction and result are set before the signal, and the list is read after it.
void tst_CameraStateModelTransfer::endIsToldWithItsResult()
{
    Transfer transfer;
    QVERIFY(transfer.download("a", "copy.qsf"));
    QStringList seen;
    QObject::connect(&transfer.model, &CameraStateModel::transferringChanged, this, [&] {
        const CameraStateModel &model = transfer.model;
        seen << QStringLiteral("transferring %1, upload %2, ok %3, refreshing %4")
                    .arg(model.transferring())
                    .arg(model.transferUpload())
                    .arg(model.transferOk())
                    .arg(model.refreshing());
    });
    transfer.rig.gate().failNext(uploadCall);
    QVERIFY(transfer.upload("copy.qsf"));
    QVERIFY(transfer.upload("copy.qsf"));
    QCOMPARE(
        seen,
        QStringList({"transferring 1, upload 1, ok 1, refreshing 0", "transferring 0, upload 1, ok 0, refreshing 0",
                     "transferring 1, upload 1, ok 0, refreshing 0", "transferring 0, upload 1, ok 1, refreshing 0"}));
}

void tst_CameraStateModelTransfer::nextOneMayBeginAtOnce()
{
    Transfer transfer;
    QObject::connect(&transfer.model, &CameraStateModel::transferringChanged, this, [&] {
        if (!transfer.model.transferring() && transfer.localFiles().size() < 2)
            transfer.model.downloadState("a", transfer.url("second.qsf"));
    });
    transfer.model.downloadState("a", transfer.url("first.qsf"));
    QTRY_COMPARE(transfer.localFiles(), QStringList({"first.qsf", "second.qsf"}));
    QVERIFY(transfer.finish());
    QVERIFY(transfer.model.transferOk());
}

void tst_CameraStateModelTransfer::progressGoesUpToAHundred()
{
    Transfer transfer;
    QList<int> progress;
    QObject::connect(&transfer.model, &CameraStateModel::progressChanged, this,
                     [&] { progress << transfer.model.progress(); });
    QVERIFY(transfer.download("a", "copy.qsf"));
    QCOMPARE(progress.first(), 0);
    QCOMPARE(progress.last(), 100);
    QVERIFY(progress.size() > 2);
    // Only changes are signalled, upwards.
    for (int i = 1; i < progress.size(); ++i)
        QVERIFY(progress.at(i) > progress.at(i - 1));
}

void tst_CameraStateModelTransfer::progressOfNothingIsZero()
{
    CameraStateTransferWorker worker(nullptr, 0, true, QString(), QString());
    const QSignalSpy progress(&worker, &CameraStateTransferWorker::progressChanged);
    QCOMPARE(worker.progress(0, 0), 0);
    QCOMPARE(worker.progress(1, 3), 0);
    QCOMPARE(worker.progress(4'000'000'000U, 4'000'000'000U), 0);
    QCOMPARE(worker.progress(std::numeric_limits<unsigned int>::max(), 1), 0);
    worker.abort();
    QCOMPARE(worker.progress(2, 3), -1);
    QCOMPARE(QList<QVariantList>(progress), (QList<QVariantList>{{0}, {33}, {100}, {100}, {66}}));
}

void tst_CameraStateModelTransfer::secondTransferIsIgnored()
{
    Transfer transfer;
    transfer.rig.gate().hold(downloadCall);
    transfer.model.downloadState("a", transfer.url("copy.qsf"));
    QVERIFY(transfer.rig.gate().waitHeld(downloadCall));
    const size_t mark = transfer.rig.gate().mark();
    transfer.model.uploadState(transfer.url("other.qsf"));
    transfer.model.downloadState("a", transfer.url("other.qsf"));
    QVERIFY(!transfer.model.transferUpload());
    transfer.rig.gate().release("*");
    QVERIFY(transfer.finish());
    QCOMPARE(transfer.rig.callsSince(mark), QStringList());
    QCOMPARE(transfer.localFiles(), QStringList("copy.qsf"));
}

void tst_CameraStateModelTransfer::transferMayStartDuringASave()
{
    Transfer transfer;
    transfer.rig.gate().hold("zvtSaveStateAs");
    transfer.model.saveStateAs("b");
    QVERIFY(transfer.rig.gate().waitHeld("zvtSaveStateAs"));
    QVERIFY(transfer.model.saving());
    transfer.model.downloadState("a", transfer.url("copy.qsf"));
    QTRY_VERIFY(!transfer.model.transferring());
    QVERIFY(transfer.model.transferOk());
    transfer.rig.gate().release("*");
    CameraRig::settle();
    QVERIFY(!transfer.model.saving());
}

void tst_CameraStateModelTransfer::failedTransferIsTold_data()
{
    QTest::addColumn<bool>("upload");
    QTest::newRow("upload") << true;
    QTest::newRow("download") << false;
}

void tst_CameraStateModelTransfer::failedTransferIsTold()
{
    QFETCH(const bool, upload);
    Transfer transfer;
    QVERIFY(transfer.download("a", "copy.qsf"));
    QVERIFY(transfer.model.transferOk());
    transfer.rig.gate().failAlways(upload ? uploadCall : downloadCall);
    const size_t mark = transfer.rig.gate().mark();
    QVERIFY(upload ? transfer.upload("copy.qsf") : transfer.download("a", "other.qsf"));
    QVERIFY(!transfer.model.transferOk());
    QCOMPARE(transfer.model.transferUpload(), upload);
    QVERIFY(!transfer.rig.callsSince(mark).contains("zvtListStates"));
    QCOMPARE(transfer.files(), QStringList("a.qsf"));
    QCOMPARE(transfer.localFiles(), QStringList("copy.qsf"));
}

void tst_CameraStateModelTransfer::abortedUploadLeavesNothing()
{
    Transfer transfer;
    QVERIFY(transfer.download("a", "copy.qsf"));
    transfer.rig.gate().hold(uploadCall);
    transfer.model.uploadState(transfer.url("copy.qsf"));
    QVERIFY(transfer.rig.gate().waitHeld(uploadCall));
    transfer.model.abort();
    transfer.rig.gate().release("*");
    QVERIFY(transfer.finish());
    QVERIFY(!transfer.model.transferOk());
    QCOMPARE(transfer.files(), QStringList("a.qsf"));
    QCOMPARE(transfer.names(), QStringList("a"));
}

void tst_CameraStateModelTransfer::abortWithoutATransferDoesNothing()
{
    Transfer transfer;
    transfer.model.abort();
    QVERIFY(transfer.download("a", "copy.qsf"));
    QVERIFY(transfer.model.transferOk());
}

void tst_CameraStateModelTransfer::corruptFileIsRefused()
{
    Transfer transfer;
    QVERIFY(transfer.download("a", "b.qsf"));
    QFile file(transfer.path("b.qsf"));
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.resize(file.size() / 2));
    file.close();
    QVERIFY(transfer.upload("b.qsf"));
    QVERIFY(!transfer.model.transferOk());
    QCOMPARE(transfer.files(), QStringList("a.qsf"));
    QVERIFY(transfer.upload("none.qsf"));
    QVERIFY(!transfer.model.transferOk());
}

void tst_CameraStateModelTransfer::disconnectingEndsIt()
{
    Transfer transfer;
    transfer.rig.gate().hold(downloadCall);
    transfer.model.downloadState("a", transfer.url("copy.qsf"));
    QVERIFY(transfer.rig.gate().waitHeld(downloadCall));
    transfer.rig.camera().disconnect();
    transfer.rig.gate().release("*");
    QVERIFY(transfer.finish());
    QVERIFY(!transfer.model.transferOk());
    QCOMPARE(transfer.localFiles(), QStringList());
}

void tst_CameraStateModelTransfer::destructionWaitsForTheTransfer()
{
    const QTemporaryDir folder;
    CameraRig rig;
    zvtSaveStateAs(rig.camera().handle(), "a");
    auto root = std::make_unique<ZvtCameraModel>(rig.controller(), nullptr);
    CameraRig::settle();
    rig.gate().hold(downloadCall);
    root->cameraState()->downloadState("a", QUrl::fromLocalFile(folder.filePath("copy.qsf")).toString());
    QVERIFY(rig.gate().waitHeld(downloadCall));
    // The root destroys this model immediately before the states.
    QObject::connect(root->nucList(), &QObject::destroyed, this, [&rig] { rig.gate().release("*"); });
    root.reset();
    // The transfer was not aborted.
    QVERIFY(QFile::exists(folder.filePath("copy.qsf")));
}

void tst_CameraStateModelTransfer::workerIsFreed()
{
    Transfer transfer;
    transfer.model.downloadState("a", transfer.url("copy.qsf"));
    QCOMPARE(transfer.model.findChildren<CameraStateTransferWorker *>().size(), 1);
    QVERIFY(transfer.finish());
    QCOMPARE(transfer.model.findChildren<CameraStateTransferWorker *>().size(), 0);
}

ZVT_TEST(tst_CameraStateModelTransfer)
#include "tst_CameraStateModelTransfer.moc"
