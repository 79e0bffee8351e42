#include "tests/support/Test.h"
#include "tests/unit/BadPixelExportRig.h"

#include <QMetaObject>
#include <QPointer>
#include <QSemaphore>
#include <QThreadPool>

#include <memory>
#include <utility>

#include "zvt/zvtsdk.h"

namespace
{

struct Tools : BadPixelExportRig {
    /// Calls an operation by its name. Returns the calls to the camera.
    QStringList run(const char *operation)
    {
        return callsOf([&] { QMetaObject::invokeMethod(&model, operation); });
    }
};

} // namespace

/// The operations of the factory, other than the export of bad pixels.
class tst_MfgToolsModel : public Test
{
    Q_OBJECT

private slots:
    void startsWithEverythingSelected();
    void refreshReadsNothing();
    void secondRefreshIsDropped();
    void refreshMayOutliveTheModel();
    void refreshesWithoutACamera();
    void visibilityReadsNothing();
    void selectedListsAreStoredOnly();

    void operations_data();
    void operations();
    void failuresAreNotReported_data();
    void failuresAreNotReported();
    void everyPresetIsSavedAlthoughOneFails();
    void stateGoesToTheLocalPath();
    void stateOfAnotherComputerHasNoPath();
    void stateComesBack();
    void operationsWithoutACamera();
};

void tst_MfgToolsModel::startsWithEverythingSelected()
{
    Tools tools;
    QVERIFY(!tools.model.refreshing() && !tools.model.hasRefreshed() && !tools.model.visible());
    QCOMPARE(tools.model.selectedSaveBplIndex(), 6);
}

void tst_MfgToolsModel::refreshReadsNothing()
{
    Tools tools;
    tools.model.refresh();
    QVERIFY(tools.model.refreshing() && !tools.model.hasRefreshed());
    QCOMPARE(tools.log.take(), QStringList({"refreshingChanged", "hasRefreshedChanged"}));
    CameraRig::settle();
    QVERIFY(!tools.model.refreshing() && tools.model.hasRefreshed());
    QCOMPARE(tools.log.take(), QStringList({"hasRefreshedChanged", "refreshingChanged"}));
    // Later ones disable the section again.
    QCOMPARE(tools.read(), QStringList());
    QCOMPARE(tools.log.take(),
             QStringList({"refreshingChanged", "hasRefreshedChanged", "hasRefreshedChanged", "refreshingChanged"}));
}

void tst_MfgToolsModel::secondRefreshIsDropped()
{
    Tools tools;
    tools.model.refresh();
    tools.log.take();
    tools.model.refresh();
    QCOMPARE(tools.log.take(), QStringList());
    CameraRig::settle();
    QCOMPARE(tools.log.take(), QStringList({"hasRefreshedChanged", "refreshingChanged"}));
}

// The read makes no call that could be held. The only thread of the pool is busy until the model is deleted.
void tst_MfgToolsModel::refreshMayOutliveTheModel()
{
    CameraRig rig;
    auto root = std::make_unique<ZvtCameraModel>(rig.controller(), nullptr);
    CameraRig::settle();
    const QPointer<MfgToolsModel> model = new MfgToolsModel(root.get());
    QThreadPool &pool = *QThreadPool::globalInstance();
    const int threads = pool.maxThreadCount();
    pool.setMaxThreadCount(1);
    QSemaphore busy;
    pool.start([&busy] { busy.acquire(); });
    model->refresh();
    // A destructor that waits for its read would never return.
    root.reset();
    busy.release();
    CameraRig::settle();
    pool.setMaxThreadCount(threads);
    QVERIFY(model.isNull());
    QCOMPARE(pool.activeThreadCount(), 0);
}

void tst_MfgToolsModel::refreshesWithoutACamera() { walkNoCamera(modelOf<MfgToolsModel>()); }

void tst_MfgToolsModel::visibilityReadsNothing() { walkVisibility(modelOf<MfgToolsModel>()); }

void tst_MfgToolsModel::selectedListsAreStoredOnly()
{
    Tools tools;
    QCOMPARE(tools.write("selectedSaveBplIndex", 2), QStringList());
    tools.model.setSelectedSaveBplIndex(2);
    QCOMPARE(tools.model.selectedSaveBplIndex(), 2);
    QCOMPARE(tools.log.take(), QStringList("selectedSaveBplIndexChanged"));
    tools.read();
    QCOMPARE(tools.model.selectedSaveBplIndex(), 2);
}

// Operations

void tst_MfgToolsModel::operations_data()
{
    QTest::addColumn<QStringList>("calls");
    const auto row = [](const char *operation, const QStringList &calls) { QTest::newRow(operation) << calls; };
    row("createFactoryBplForAllLoadedNucs", {"zvtMfgFactoryBPLCreate 4294967295"});
    row("appendToFactoryBplForAllLoadedNucs", {"zvtMfgFactoryBPLAppend 4294967295"});
    row("applyFactoryBplForAllLoadedNucs", {"zvtMfgFactoryBPLApply 4294967295"});
    row("saveAllLoadedNucs", {"zvtSaveNUC 0", "zvtSaveNUC 1", "zvtSaveNUC 2", "zvtSaveNUC 3"});
    row("tk2950AutoFocusFull", {"zvtAutoFocusFull 0"});
}

void tst_MfgToolsModel::operations()
{
    QFETCH(const QStringList, calls);
    Tools tools;
    QCOMPARE(tools.run(QTest::currentDataTag()), calls);
    CameraRig::settle();
    QCOMPARE(tools.log.take(), QStringList());
    QVERIFY(!tools.model.hasRefreshed());
}

void tst_MfgToolsModel::failuresAreNotReported_data() { operations_data(); }

void tst_MfgToolsModel::failuresAreNotReported()
{
    QFETCH(const QStringList, calls);
    Tools tools;
    tools.gate().failAlways("zvt*");
    QCOMPARE(tools.run(QTest::currentDataTag()), calls);
    QCOMPARE(tools.log.take(), QStringList());
}

void tst_MfgToolsModel::everyPresetIsSavedAlthoughOneFails()
{
    Tools tools;
    tools.gate().failNext("zvtSaveNUC", 2);
    QCOMPARE(tools.run("saveAllLoadedNucs").size(), 4);
}

void tst_MfgToolsModel::stateGoesToTheLocalPath()
{
    Tools tools;
    tools.gate().failAlways("zvt*FactoryDefaultStateStd");
    const QString path = QStringLiteral("/tmp/W\u00e4rme 100% #1.qsf");
    const QUrl url = QUrl::fromLocalFile(path);
    for (const auto &[operation, function] :
         {std::pair{&MfgToolsModel::downloadFactoryState, "zvtDownloadFactoryDefaultStateStd"},
          {&MfgToolsModel::uploadFactoryState, "zvtUploadFactoryDefaultStateStd"}}) {
        const QStringList calls = tools.callsOf([&] { (tools.model.*operation)(url); });
        QCOMPARE(calls, QStringList(QStringLiteral("%1 \"%2\", delegate").arg(function, path)));
    }
}

void tst_MfgToolsModel::stateOfAnotherComputerHasNoPath()
{
    Tools tools;
    const QUrl url(QStringLiteral("http://factory/state.qsf"));
    QCOMPARE(tools.callsOf([&] { tools.model.uploadFactoryState(url); }),
             QStringList("zvtUploadFactoryDefaultStateStd \"\", delegate"));
    QCOMPARE(tools.callsOf([&] { tools.model.downloadFactoryState(url); }),
             QStringList("zvtDownloadFactoryDefaultStateStd \"\", delegate"));
}

void tst_MfgToolsModel::stateComesBack()
{
    Tools tools;
    const auto url = [&](const char *name) { return QUrl::fromLocalFile(tools.local(name)); };
    tools.model.downloadFactoryState(url("own.qsf"));
    QVERIFY(tools.rig.camera().otherClient().set("image.reverted", true));
    const uint64_t handle = tools.rig.controller()->GetHandle();
    QCOMPARE(zvtSaveStateAs(handle, "made"), 0);
    QCOMPARE(zvtDownloadStateStd(handle, "made", qPrintable(tools.local("made.qsf")), nullptr), 0);
    tools.model.uploadFactoryState(url("made.qsf"));
    tools.model.downloadFactoryState(url("back.qsf"));
    QVERIFY(!tools.content("made.qsf").isEmpty());
    QCOMPARE(tools.content("back.qsf"), tools.content("made.qsf"));
    QVERIFY(tools.content("own.qsf") != tools.content("made.qsf"));
}

void tst_MfgToolsModel::operationsWithoutACamera()
{
    ZvtCameraModel root({}, nullptr);
    MfgToolsModel below(&root);
    MfgToolsModel alone(nullptr);
    for (MfgToolsModel *model : {&below, &alone}) {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("state.qsf"));
        const size_t mark = emulator::Sdk::gate().mark();
        model->downloadFactoryState(QUrl::fromLocalFile(path));
        model->uploadFactoryState(QUrl::fromLocalFile(path));
        model->createFactoryBplForAllLoadedNucs();
        model->appendToFactoryBplForAllLoadedNucs();
        model->applyFactoryBplForAllLoadedNucs();
        model->saveAllLoadedNucs();
        model->saveBplForSelectedIndexAction(QUrl::fromLocalFile(folder.path()));
        model->tk2950AutoFocusFull();
        QCOMPARE(threadCalls(emulator::Sdk::gate(), mark, CallPlace::OnGui),
                 QStringList({QStringLiteral("zvtDownloadFactoryDefaultStateStd \"%1\", delegate").arg(path),
                              QStringLiteral("zvtUploadFactoryDefaultStateStd \"%1\", delegate").arg(path),
                              "zvtMfgFactoryBPLCreate 4294967295", "zvtMfgFactoryBPLAppend 4294967295",
                              "zvtMfgFactoryBPLApply 4294967295", "zvtSaveNUC 0", "zvtSaveNUC 1", "zvtSaveNUC 2",
                              "zvtSaveNUC 3", "zvtSaveBadPixelList 0, \"/Temp/ps0.bpl\"", "zvtAutoFocusFull 0"}));
        // The summary is opened before the camera is asked.
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList("bpl.txt"));
    }
}

ZVT_TEST(tst_MfgToolsModel)
#include "tst_MfgToolsModel.moc"
