#include "tests/page/StateDialog.h"
#include "tests/support/Test.h"

#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>

#include "platform/hlxcamui/WidgetFileDialog.h"

using hlx::cam::ui::WidgetFileDialog;

namespace
{

const QStringList threeStates{"Alpha", "Bravo", "Charlie"};
const char *const anyName = "State Name";
const QStringList filters{"State files (*.qsf)", "All files (*)"};

} // namespace

/// The dialog for states renames, deletes, uploads and downloads states.
class tst_CameraStateDialogFiles : public Test
{
    Q_OBJECT

private slots:
    void aStateIsRenamed_data();
    void aStateIsRenamed();
    void aRenamingThatFailsLeavesTheList();
    void anInvalidNewNameIsRefused();
    void aRenamingIsCancelled();
    void aStateIsDeleted();
    void aDeletionIsCancelled_data();
    void aDeletionIsCancelled();
    void aDeletionThatFailsLeavesTheList();
    void aStateIsDownloaded();
    void aStateIsUploaded();
    void theFileDialogsAreAsked();
    void aCancelledFileDialogCopiesNothing_data();
    void aCancelledFileDialogCopiesNothing();
    void uploadingOverAStateIsAsked_data();
    void uploadingOverAStateIsAsked();
    void onlyTheLastExtensionIsLeftOut();
    void theBarShowsTheTransfer();
    void aFailedTransferIsTold_data();
    void aFailedTransferIsTold();
    void aTransferOutlivesTheDialog();

private:
    static bool transferring(StateDialog &dialog) { return dialog.model()->property("transferring").toBool(); }
    static void answer(StateDialog &dialog, const QString &button, const QString &path);
};

// The operator clicks a button and chooses a file.
void tst_CameraStateDialogFiles::answer(StateDialog &dialog, const QString &button, const QString &path)
{
    WidgetFileDialog::setNextAnswer(QUrl::fromLocalFile(path));
    dialog.driver.click(button);
    QVERIFY(!WidgetFileDialog::hasNextAnswer());
    dialog.driver.settle();
}

void tst_CameraStateDialogFiles::aStateIsRenamed_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("by the button") << false;
    QTest::newRow("by Enter") << true;
}

void tst_CameraStateDialogFiles::aStateIsRenamed()
{
    QFETCH(const bool, byKey);
    StateDialog dialog(threeStates);
    dialog.open("Load State");
    dialog.click("Bravo");
    dialog.driver.click("Rename");
    QTRY_VERIFY(dialog.driver.find("New Name"));
    dialog.driver.awaitFrame();
    QCOMPARE(dialog.driver.text("Old Name"), "Bravo");
    QVERIFY(dialog.driver.find("Old Name")->property("readOnly").toBool());
    QTRY_VERIFY(dialog.driver.find("New Name")->hasActiveFocus());
    dialog.driver.type("Delta");
    byKey ? dialog.driver.press(Qt::Key_Return) : dialog.driver.click("Rename");
    QTRY_VERIFY(!dialog.driver.find("New Name"));
    dialog.driver.settle();
    QCOMPARE(dialog.names(), QStringList({"Alpha", "Charlie", "Delta"}));
    QCOMPARE(dialog.selected(), QStringList{"Alpha"});
    QCOMPARE(dialog.driver.text(anyName), "Alpha");
    QCOMPARE(zvtStateExists(dialog.handle(), "Delta"), 0);
}

void tst_CameraStateDialogFiles::aRenamingThatFailsLeavesTheList()
{
    StateDialog dialog(threeStates);
    dialog.open("Manage States");
    dialog.click("Bravo");
    dialog.driver.click("Rename");
    QTRY_VERIFY(dialog.driver.find("New Name"));
    dialog.driver.type("Charlie");
    dialog.driver.press(Qt::Key_Return);
    QTRY_VERIFY(!dialog.driver.find("New Name"));
    dialog.driver.settle();
    QCOMPARE(dialog.names(), threeStates);
    QCOMPARE(dialog.selected(), QStringList{"Alpha"});
}

void tst_CameraStateDialogFiles::anInvalidNewNameIsRefused()
{
    StateDialog dialog(threeStates);
    dialog.open("Manage States");
    dialog.click("Bravo");
    dialog.driver.click("Rename");
    QTRY_VERIFY(dialog.driver.find("New Name"));
    const size_t mark = dialog.gate().mark();
    // An empty name is not valid either.
    dialog.driver.press(Qt::Key_Return);
    QTRY_VERIFY(dialog.driver.findText(invalidStateName));
    dialog.driver.press(Qt::Key_Escape);
    QTRY_VERIFY(!dialog.driver.findText(invalidStateName));
    QVERIFY(dialog.driver.find("New Name"));
    QCOMPARE(dialog.calls("zvtRenameState", mark), QStringList());
}

void tst_CameraStateDialogFiles::aRenamingIsCancelled()
{
    StateDialog dialog(threeStates);
    dialog.open("Manage States");
    dialog.click("Bravo");
    const size_t mark = dialog.gate().mark();
    for (const bool byKey : {true, false}) {
        dialog.driver.click("Rename");
        QTRY_VERIFY(dialog.driver.find("New Name"));
        dialog.driver.awaitFrame();
        // The text typed before is gone.
        QCOMPARE(dialog.driver.text("New Name"), QString());
        dialog.driver.type("Delta");
        byKey ? dialog.driver.press(Qt::Key_Escape) : dialog.driver.click("Cancel");
        QTRY_VERIFY(!dialog.driver.find("New Name"));
    }
    QCOMPARE(dialog.calls("zvtRenameState", mark), QStringList());
    QCOMPARE(dialog.selected(), QStringList{"Bravo"});
}

void tst_CameraStateDialogFiles::aStateIsDeleted()
{
    StateDialog dialog(threeStates);
    dialog.open("Load State");
    dialog.click("Bravo");
    dialog.driver.click("Delete");
    QTRY_VERIFY(dialog.driver.findText("Are you sure you want to delete Bravo?"));
    QVERIFY(dialog.driver.findText("Delete State"));
    dialog.driver.awaitFrame();
    dialog.driver.click("Delete");
    QTRY_VERIFY(!dialog.driver.findText("Are you sure you want to delete Bravo?"));
    dialog.driver.settle();
    QCOMPARE(dialog.names(), QStringList({"Alpha", "Charlie"}));
    QVERIFY(zvtStateExists(dialog.handle(), "Bravo") != 0);
    QCOMPARE(dialog.selected(), QStringList());
    QCOMPARE(dialog.driver.text(anyName), QString());
    QVERIFY(!dialog.isEnabled("Delete"));
}

void tst_CameraStateDialogFiles::aDeletionIsCancelled_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("by Esc") << int(Qt::Key_Escape);
    QTest::newRow("by Enter, as on the harmless button") << int(Qt::Key_Return);
}

void tst_CameraStateDialogFiles::aDeletionIsCancelled()
{
    QFETCH(const int, key);
    StateDialog dialog(threeStates);
    dialog.open("Manage States");
    dialog.click("Bravo");
    dialog.driver.click("Delete");
    QTRY_VERIFY(dialog.driver.findText("Are you sure you want to delete Bravo?"));
    dialog.driver.awaitFrame();
    dialog.driver.press(Qt::Key(key));
    QTRY_VERIFY(!dialog.driver.findText("Are you sure you want to delete Bravo?"));
    QCOMPARE(dialog.names(), threeStates);
    QCOMPARE(dialog.selected(), QStringList{"Bravo"});
    QCOMPARE(zvtStateExists(dialog.handle(), "Bravo"), 0);
}

void tst_CameraStateDialogFiles::aDeletionThatFailsLeavesTheList()
{
    StateDialog dialog(threeStates);
    dialog.gate().failNext("zvtDeleteState");
    dialog.open("Manage States");
    dialog.click("Bravo");
    dialog.driver.click("Delete");
    QTRY_VERIFY(dialog.driver.findText("Are you sure you want to delete Bravo?"));
    dialog.driver.awaitFrame();
    dialog.driver.click("Delete");
    dialog.driver.settle();
    QCOMPARE(dialog.names(), threeStates);
}

void tst_CameraStateDialogFiles::aStateIsDownloaded()
{
    QTemporaryDir folder;
    // A path with characters that a URL encodes.
    const QString path = folder.filePath("a b%25 #1.qsf");
    StateDialog dialog(threeStates);
    dialog.open("Manage States");
    dialog.click("Bravo");
    const size_t mark = dialog.gate().mark();
    answer(dialog, "Download", path);
    QTRY_VERIFY(!transferring(dialog));
    QVERIFY(dialog.model()->property("transferOk").toBool());
    QCOMPARE(dialog.calls("zvtDownloadStateStd", mark),
             QStringList{QStringLiteral("\"Bravo\", \"%1\", delegate").arg(path)});
    QVERIFY(QFile(path).size() > 0);
    // The list has not changed.
    dialog.driver.settle();
    QCOMPARE(dialog.calls("zvtListStates", mark), QStringList());
}

void tst_CameraStateDialogFiles::aStateIsUploaded()
{
    QTemporaryDir folder;
    const QString path = folder.filePath("a b%.qsf");
    StateDialog dialog(threeStates);
    dialog.open("Manage States");
    dialog.click("Bravo");
    answer(dialog, "Download", path);
    QTRY_VERIFY(!transferring(dialog));
    const size_t mark = dialog.gate().mark();
    answer(dialog, "Upload", path);
    QTRY_VERIFY(!transferring(dialog));
    QCOMPARE(dialog.calls("zvtStateExists", mark), QStringList{"\"a b%\""});
    QCOMPARE(dialog.calls("zvtUploadStateStd", mark), QStringList{QStringLiteral("\"%1\", delegate").arg(path)});
    dialog.driver.settle();
    QCOMPARE(dialog.names(), threeStates + QStringList{"a b%"});
    QCOMPARE(dialog.selected(), QStringList{"Bravo"});
}

void tst_CameraStateDialogFiles::theFileDialogsAreAsked()
{
    StateDialog dialog(threeStates);
    dialog.open("Manage States");
    dialog.click("Bravo");
    for (const bool upload : {true, false}) {
        QVariantMap asked;
        WidgetFileDialog::setNextAnswer([&asked](const WidgetFileDialog &files) {
            for (const char *property : {"title", "selectExisting", "nameFilters", "folder", "defaultName"})
                asked.insert(property, files.property(property));
            return QUrl();
        });
        dialog.driver.click(upload ? "Upload" : "Download");
        dialog.driver.settle();
        QCOMPARE(asked.value("title").toString(), "Select State File");
        QCOMPARE(asked.value("selectExisting").toBool(), upload);
        QCOMPARE(asked.value("nameFilters").toStringList(), filters);
        QCOMPARE(asked.value("folder").toUrl(),
                 QUrl::fromLocalFile(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)));
        QCOMPARE(asked.value("defaultName").toString(), upload ? "" : "Bravo.qsf");
    }
}

void tst_CameraStateDialogFiles::aCancelledFileDialogCopiesNothing_data()
{
    QTest::addColumn<QString>("button");
    QTest::newRow("upload") << "Upload";
    QTest::newRow("download") << "Download";
}

void tst_CameraStateDialogFiles::aCancelledFileDialogCopiesNothing()
{
    QFETCH(const QString, button);
    StateDialog dialog(threeStates);
    dialog.open("Manage States");
    dialog.click("Bravo");
    const size_t mark = dialog.gate().mark();
    WidgetFileDialog::setNextAnswer(QUrl());
    dialog.driver.click(button);
    dialog.driver.settle();
    QVERIFY(!WidgetFileDialog::hasNextAnswer());
    QVERIFY(!transferring(dialog));
    QCOMPARE(dialog.driver.rig().callsSince(mark), QStringList());
}

void tst_CameraStateDialogFiles::uploadingOverAStateIsAsked_data()
{
    QTest::addColumn<bool>("yes");
    QTest::newRow("yes") << true;
    QTest::newRow("no") << false;
}

void tst_CameraStateDialogFiles::uploadingOverAStateIsAsked()
{
    QFETCH(const bool, yes);
    const QString question = QStringLiteral("That state already exists.\n\nDo you want to overwrite it?");
    QTemporaryDir folder;
    const QString path = folder.filePath("Bravo.qsf");
    StateDialog dialog(threeStates);
    dialog.open("Manage States");
    dialog.click("Bravo");
    answer(dialog, "Download", path);
    QTRY_VERIFY(!transferring(dialog));
    const size_t mark = dialog.gate().mark();
    answer(dialog, "Upload", path);
    QTRY_VERIFY(dialog.driver.findText(question));
    QVERIFY(dialog.driver.findText("Warning"));
    dialog.driver.awaitFrame();
    dialog.driver.click(yes ? "Yes" : "No");
    QTRY_VERIFY(!dialog.driver.findText(question));
    QTRY_VERIFY(!transferring(dialog));
    dialog.driver.settle();
    QCOMPARE(dialog.calls("zvtUploadStateStd", mark).size(), yes ? 1 : 0);
    QCOMPARE(dialog.calls("zvtSaveStateAs", mark), QStringList());
    QVERIFY(dialog.isOpen());
}

void tst_CameraStateDialogFiles::onlyTheLastExtensionIsLeftOut()
{
    StateDialog dialog(threeStates);
    dialog.gate().failAlways("zvtUploadStateStd");
    dialog.open("Manage States");
    const std::pair<const char *, const char *> files[]{{"one.two.qsf", "\"one.two\""}, {"plain", "\"plain\""}};
    for (const auto &[file, stem] : files) {
        const size_t mark = dialog.gate().mark();
        answer(dialog, "Upload", QStringLiteral("/a.folder/") + file);
        QCOMPARE(dialog.calls("zvtStateExists", mark), QStringList{stem});
        QTRY_VERIFY(dialog.driver.findText("Failed to upload file."));
        dialog.driver.press(Qt::Key_Escape);
        QTRY_VERIFY(!dialog.driver.findText("Failed to upload file."));
    }
}

void tst_CameraStateDialogFiles::theBarShowsTheTransfer()
{
    QTemporaryDir folder;
    StateDialog dialog(threeStates);
    dialog.open("Manage States");
    dialog.click("Bravo");
    const QQuickItem *bar = dialog.driver.find("Rename");
    const double y = bar->mapToScene({0, 0}).y();
    bar = qobject_cast<QQuickItem *>(dialog.driver.object(QStringLiteral("transferProgress")));
    QVERIFY(!bar->isVisible());
    dialog.gate().hold("zvtDownloadStateStd");
    answer(dialog, "Download", folder.filePath("Bravo.qsf"));
    QVERIFY(dialog.gate().waitHeld("zvtDownloadStateStd"));
    QVERIFY(bar->isVisible());
    QCOMPARE(bar->property("from").toDouble(), 0.0);
    QCOMPARE(bar->property("to").toDouble(), 100.0);
    QCOMPARE(bar->property("value").toDouble(), 0.0);
    const QQuickItem *list = dialog.list();
    QVERIFY(bar->mapToScene({0, 0}).y() > list->mapToScene({0, list->height()}).y());
    QCOMPARE(dialog.driver.find("Rename")->mapToScene({0, 0}).y(), y);
    dialog.gate().release("zvtDownloadStateStd");
    QTRY_VERIFY(!bar->isVisible());
    QCOMPARE(bar->property("value").toDouble(), 100.0);
}

void tst_CameraStateDialogFiles::aFailedTransferIsTold_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("call");
    QTest::addColumn<QString>("message");
    QTest::newRow("upload") << "Upload"
                            << "zvtUploadStateStd"
                            << "Failed to upload file.";
    QTest::newRow("download") << "Download"
                              << "zvtDownloadStateStd"
                              << "Failed to download file.";
}

void tst_CameraStateDialogFiles::aFailedTransferIsTold()
{
    QFETCH(const QString, button);
    QFETCH(const QString, call);
    QFETCH(const QString, message);
    StateDialog dialog(threeStates);
    dialog.gate().failNext(call.toStdString());
    dialog.open("Manage States");
    dialog.click("Bravo");
    answer(dialog, button, "/tmp/Delta.qsf");
    QTRY_VERIFY(dialog.driver.findText(message));
    QVERIFY(dialog.driver.findText("Error"));
    QTRY_VERIFY(dialog.driver.find("OK")->hasActiveFocus());
    dialog.driver.press(Qt::Key_Return);
    QTRY_VERIFY(!dialog.driver.findText(message));
    QVERIFY(dialog.isOpen());
}

void tst_CameraStateDialogFiles::aTransferOutlivesTheDialog()
{
    StateDialog dialog(threeStates);
    dialog.gate().failNext("zvtUploadStateStd");
    dialog.gate().hold("zvtUploadStateStd");
    dialog.open("Manage States");
    answer(dialog, "Upload", "/tmp/Delta.qsf");
    QVERIFY(dialog.gate().waitHeld("zvtUploadStateStd"));
    dialog.driver.click("Done");
    QTRY_VERIFY(!dialog.isOpen());
    QVERIFY(transferring(dialog));
    dialog.gate().release("zvtUploadStateStd");
    // The failure is reported although the dialog was closed.
    QTRY_VERIFY(dialog.driver.findText("Failed to upload file."));
    QVERIFY(!dialog.isOpen());
}

ZVT_TEST(tst_CameraStateDialogFiles)
#include "tst_CameraStateDialogFiles.moc"
