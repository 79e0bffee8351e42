#include "tests/support/Test.h"
#include "tests/unit/TabRig.h"

#include "manufacturing/MfgToolsModel.h"

#include <QDir>
#include <QFile>
#include <QMetaObject>
#include <QTemporaryDir>
#include <QUrl>

#include <memory>
#include <utility>

#include "zvt/zvtsdk.h"

namespace
{

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

struct Tools : TabRig<MfgToolsModel> {
    Tools() : TabRig(QStringLiteral("everything")) { start(); }

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

void tst_MfgToolsModel::refreshMayOutliveTheModel()
{
    CameraRig rig;
    auto root = std::make_unique<ZvtCameraModel>(rig.controller(), nullptr);
    CameraRig::settle();
    (new MfgToolsModel(root.get()))->refresh();
    root.reset();
    CameraRig::settle();
}

void tst_MfgToolsModel::refreshesWithoutACamera() { walkNoCamera(modelOf<MfgToolsModel>()); }

void tst_MfgToolsModel::visibilityReadsNothing()
{
    Tools tools;
    QCOMPARE(tools.write("visible", true), QStringList());
    tools.model.setVisible(true);
    QVERIFY(tools.model.visible() && !tools.model.refreshing());
    QCOMPARE(tools.log.take(), QStringList("visibleChanged"));
}

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
    const QTemporaryDir folder;
    const QString made = folder.filePath(QStringLiteral("made.qsf"));
    const QString own = folder.filePath(QStringLiteral("own.qsf"));
    const QString back = folder.filePath(QStringLiteral("back.qsf"));
    tools.model.downloadFactoryState(QUrl::fromLocalFile(own));
    QVERIFY(tools.rig.camera().otherClient().set("image.reverted", true));
    const uint64_t handle = tools.rig.controller()->GetHandle();
    QCOMPARE(zvtSaveStateAs(handle, "made"), 0);
    QCOMPARE(zvtDownloadStateStd(handle, "made", qPrintable(made), nullptr), 0);
    tools.model.uploadFactoryState(QUrl::fromLocalFile(made));
    tools.model.downloadFactoryState(QUrl::fromLocalFile(back));
    QVERIFY(!contentOf(made).isEmpty());
    QCOMPARE(contentOf(back), contentOf(made));
    QVERIFY(contentOf(own) != contentOf(made));
}

void tst_MfgToolsModel::operationsWithoutACamera()
{
    ZvtCameraModel root({}, nullptr);
    MfgToolsModel model(&root);
    const QTemporaryDir folder;
    const QUrl url = QUrl::fromLocalFile(folder.filePath(QStringLiteral("state.qsf")));
    model.downloadFactoryState(url);
    model.uploadFactoryState(url);
    model.createFactoryBplForAllLoadedNucs();
    model.appendToFactoryBplForAllLoadedNucs();
    model.applyFactoryBplForAllLoadedNucs();
    model.saveAllLoadedNucs();
    model.tk2950AutoFocusFull();
    model.saveBplForSelectedIndexAction(QUrl::fromLocalFile(folder.path()));
    // Only the summary is opened before the camera is asked.
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList("bpl.txt"));
}

ZVT_TEST(tst_MfgToolsModel)
#include "tst_MfgToolsModel.moc"
