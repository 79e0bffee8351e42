#include "tests/page/StateDialog.h"
#include "tests/support/Test.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>

#include <atomic>
#include <semaphore>
#include <thread>

#include "platform/hlxcamui/WidgetFileDialog.h"

using hlx::cam::ui::WidgetFileDialog;

/// Holds a transfer at its first block, on the thread of the transfer.
class Latch : public QObject
{
    Q_OBJECT

public:
    /// Attaches to the running transfer of the model, which the gate still holds before its first block.
    bool attach(QObject *model)
    {
        const auto workers = model->findChildren<QThread *>();
        return workers.size() == 1
            && connect(workers.first(), SIGNAL(progressChanged(int)), this, SLOT(block()), Qt::DirectConnection);
    }

    bool waitBlocked() { return m_blocked.try_acquire_for(std::chrono::seconds(10)); }
    void release() { m_release.release(); }

private slots:
    void block()
    {
        if (m_done.exchange(true))
            return;
        m_blocked.release();
        m_release.acquire();
    }

private:
    std::atomic<bool> m_done{false};
    std::binary_semaphore m_blocked{0};
    std::binary_semaphore m_release{0};
};

/// A transfer, a save or a load that is interrupted by another event.
class tst_CameraStateDialogMidway : public Test
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aTransferOutlivesTheDialog_data() { addTransfers(); }
    void aTransferOutlivesTheDialog();
    void aTransferEndsWithTheConnection_data() { addTransfers(); }
    void aTransferEndsWithTheConnection();
    void anAbortedTransferLeavesNothing_data() { addTransfers(); }
    void anAbortedTransferLeavesNothing();
    void theEndWaitsForATransfer_data();
    void theEndWaitsForATransfer();
    void aSaveOrLoadFailsWithTheConnection_data() { addSavesAndLoads(); }
    void aSaveOrLoadFailsWithTheConnection();
    void theEndWaitsForNoSaveOrLoad_data() { addSavesAndLoads(); }
    void theEndWaitsForNoSaveOrLoad();
    void aDialogOpenedDuringASaveChangesNothing();

private:
    static void addTransfers()
    {
        QTest::addColumn<bool>("upload");
        QTest::newRow("upload") << true;
        QTest::newRow("download") << false;
    }

    static void addSavesAndLoads()
    {
        QTest::addColumn<QString>("action");
        QTest::addColumn<QString>("call");
        QTest::newRow("save") << "Save State As"
                              << "zvtSaveStateAs";
        QTest::newRow("load") << "Load State"
                              << "controller.LoadState";
    }

    static bool transferring(StateDialog &dialog) { return dialog.model()->property("transferring").toBool(); }
    static QByteArray contentOf(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// The finished and unfinished files of a folder.
    static QStringList files(const QString &folder)
    {
        return QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    QStringList statesOn(const QString &camera) const { return files(camera + "/states"); }
    QStringList localFiles() const { return files(m_folder->path()); }
    QString local(const QString &file) const { return m_folder->filePath(file); }

    /// Starts a transfer that is held at its first block: of "Bravo.qsf" to the camera, or of "Alpha" from it.
    void begin(StateDialog &dialog, bool upload);
    /// The operator starts a save as "Bravo" or a load of "Alpha", which the gate holds.
    void begin(StateDialog &dialog, const QString &action, const QString &call);

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Latch> m_latch;
};

void tst_CameraStateDialogMidway::init()
{
    Test::init();
    m_folder = std::make_unique<QTemporaryDir>();
    m_latch = std::make_unique<Latch>();
}

void tst_CameraStateDialogMidway::cleanup()
{
    m_latch.reset();
    m_folder.reset();
}

void tst_CameraStateDialogMidway::begin(StateDialog &dialog, bool upload)
{
    const QString folder = dialog.driver.rig().camera().folder() + "/states/";
    if (upload)
        QVERIFY(QFile::copy(folder + "Alpha.qsf", local("Bravo.qsf")));
    const char *call = upload ? "zvtUploadStateStd" : "zvtDownloadStateStd";
    dialog.open("Manage States");
    dialog.click("Alpha");
    dialog.gate().hold(call);
    WidgetFileDialog::setNextAnswer(QUrl::fromLocalFile(local(upload ? "Bravo.qsf" : "copy.qsf")));
    dialog.driver.click(upload ? "Upload" : "Download");
    QVERIFY(dialog.gate().waitHeld(call));
    QVERIFY(m_latch->attach(dialog.model()));
    dialog.gate().release(call);
    QVERIFY(m_latch->waitBlocked());
    QTRY_VERIFY(dialog.model()->property("progress").toInt() > 0);
    // An incomplete file is not listed as a state.
    QCOMPARE(statesOn(dialog.driver.rig().camera().folder()), QStringList("Alpha.qsf"));
    QVERIFY(!localFiles().contains("copy.qsf"));
}

void tst_CameraStateDialogMidway::begin(StateDialog &dialog, const QString &action, const QString &call)
{
    dialog.open(action);
    dialog.gate().hold(call.toStdString());
    if (action == "Load State")
        dialog.click("Alpha");
    else
        dialog.driver.type("Bravo");
    dialog.driver.press(Qt::Key_Return);
    QVERIFY(dialog.gate().waitHeld(call.toStdString()));
}

void tst_CameraStateDialogMidway::aTransferOutlivesTheDialog()
{
    QFETCH(const bool, upload);
    StateDialog dialog({"Alpha"});
    begin(dialog, upload);
    dialog.driver.click("Done");
    QTRY_VERIFY(!dialog.isOpen());
    QVERIFY(transferring(dialog));
    m_latch->release();
    QTRY_VERIFY(!transferring(dialog));
    dialog.driver.settle();
    QVERIFY(dialog.model()->property("transferOk").toBool());
    QVERIFY(!dialog.driver.find("OK"));
    dialog.open("Manage States");
    QCOMPARE(dialog.names(), upload ? QStringList({"Alpha", "Bravo"}) : QStringList("Alpha"));
    QCOMPARE(localFiles(), QStringList(upload ? "Bravo.qsf" : "copy.qsf"));
}

void tst_CameraStateDialogMidway::aTransferEndsWithTheConnection()
{
    QFETCH(const bool, upload);
    StateDialog dialog({"Alpha"});
    begin(dialog, upload);
    dialog.driver.rig().camera().disconnect();
    m_latch->release();
    QTRY_VERIFY(!transferring(dialog));
    QTRY_VERIFY(dialog.driver.findText(upload ? "Failed to upload file." : "Failed to download file."));
    QCOMPARE(statesOn(dialog.driver.rig().camera().folder()), QStringList("Alpha.qsf"));
    QCOMPARE(localFiles(), upload ? QStringList("Bravo.qsf") : QStringList());
    // The list stays, and the dialog can be closed.
    QCOMPARE(dialog.names(), QStringList("Alpha"));
    QTRY_VERIFY(dialog.driver.find("OK")->hasActiveFocus());
    dialog.driver.press(Qt::Key_Return);
    QTRY_VERIFY(!dialog.driver.find("OK"));
    dialog.driver.click("Done");
    QTRY_VERIFY(!dialog.isOpen());
}

void tst_CameraStateDialogMidway::anAbortedTransferLeavesNothing()
{
    QFETCH(const bool, upload);
    StateDialog dialog({"Alpha"});
    begin(dialog, upload);
    QMetaObject::invokeMethod(dialog.model(), "abort");
    m_latch->release();
    QTRY_VERIFY(!transferring(dialog));
    QTRY_VERIFY(dialog.driver.findText(upload ? "Failed to upload file." : "Failed to download file."));
    dialog.driver.settle();
    QCOMPARE(dialog.names(), QStringList("Alpha"));
    QCOMPARE(statesOn(dialog.driver.rig().camera().folder()), QStringList("Alpha.qsf"));
    QCOMPARE(localFiles(), upload ? QStringList("Bravo.qsf") : QStringList());
}

void tst_CameraStateDialogMidway::theEndWaitsForATransfer_data()
{
    QTest::addColumn<bool>("upload");
    QTest::addColumn<bool>("pageStays");
    QTest::newRow("upload, the camera goes before the page") << true << true;
    QTest::newRow("upload, all goes at once") << true << false;
    QTest::newRow("download, the camera goes before the page") << false << true;
    QTest::newRow("download, all goes at once") << false << false;
}

void tst_CameraStateDialogMidway::theEndWaitsForATransfer()
{
    QFETCH(const bool, upload);
    QFETCH(const bool, pageStays);
    auto dialog = std::make_unique<StateDialog>(QStringList("Alpha"));
    begin(*dialog, upload);
    const QString folder = dialog->driver.rig().camera().folder() + "/states/";
    const QByteArray sent = contentOf(folder + "Alpha.qsf");
    QVERIFY(!sent.isEmpty());
    const std::jthread releaser([this] { m_latch->release(); });
    if (pageStays) {
        dialog->driver.deleteModel();
        // The transfer was not aborted.
        QCOMPARE(contentOf(upload ? folder + "Bravo.qsf" : local("copy.qsf")), sent);
        dialog->driver.settle();
        dialog->driver.click("Done");
        QTRY_VERIFY(!dialog->isOpen());
    }
    dialog.reset();
    if (!upload)
        QCOMPARE(contentOf(local("copy.qsf")), sent);
}

void tst_CameraStateDialogMidway::aSaveOrLoadFailsWithTheConnection()
{
    QFETCH(const QString, action);
    QFETCH(const QString, call);
    StateDialog dialog({"Alpha"});
    begin(dialog, action, call);
    const QString folder = dialog.driver.rig().camera().folder();
    const QJsonObject before = dialog.driver.rig().camera().snapshot();
    dialog.driver.rig().camera().disconnect();
    dialog.gate().release("*");
    dialog.driver.settle();
    QVERIFY(dialog.driver.page()->isEnabled());
    QVERIFY(!dialog.model()->property("saving").toBool());
    QVERIFY(!dialog.model()->property("loading").toBool());
    // No message is shown.
    QVERIFY(!dialog.driver.find("OK"));
    QVERIFY(!dialog.model()->property("canSaveState").toBool());
    QCOMPARE(statesOn(folder), QStringList("Alpha.qsf"));
    QCOMPARE(dialog.driver.rig().camera().snapshot(), before);
}

void tst_CameraStateDialogMidway::theEndWaitsForNoSaveOrLoad()
{
    QFETCH(const QString, action);
    QFETCH(const QString, call);
    StateDialog dialog({"Alpha"});
    begin(dialog, action, call);
    dialog.driver.deleteModel();
    QVERIFY(dialog.driver.page()->isEnabled());
    dialog.gate().release("*");
    dialog.driver.settle();
    // The camera executes the command nevertheless.
    QCOMPARE(statesOn(dialog.driver.rig().camera().folder()).contains("Bravo.qsf"), action == "Save State As");
}

void tst_CameraStateDialogMidway::aDialogOpenedDuringASaveChangesNothing()
{
    StateDialog dialog({"Alpha"});
    begin(dialog, "Save State As", "zvtSaveStateAs");
    const size_t mark = dialog.gate().mark();
    dialog.driver.choose("Load State");
    QTRY_VERIFY(dialog.isOpen());
    QTRY_COMPARE(dialog.names(), QStringList("Alpha"));
    dialog.driver.awaitFrame();
    dialog.click("Alpha");
    dialog.driver.click("Load");
    QTRY_VERIFY(!dialog.isOpen());
    QVERIFY(dialog.driver.page()->isEnabled());
    dialog.gate().release("*");
    dialog.driver.settle();
    QCOMPARE(dialog.calls("controller.LoadState", mark), QStringList());
    QCOMPARE(dialog.model()->property("currentStateName").toString(), "Bravo");
}

ZVT_TEST(tst_CameraStateDialogMidway)
#include "tst_CameraStateDialogMidway.moc"
