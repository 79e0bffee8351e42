#include "tests/page/NucListPage.h"
#include "tests/support/Test.h"

#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QUrl>

#include "platform/hlxcamui/WidgetFileDialog.h"

using hlx::cam::ui::WidgetFileDialog;

namespace
{

const QStringList threeNucs{"Alpha", "Bravo", "Charlie"};
const char *const manage = "Manage NUCs";
const char *const load = "Load Existing NUC 2";

} // namespace

/// The dialog with the list of corrections renames, deletes, uploads and downloads them.
class tst_NucListDialogFiles : public Test
{
    Q_OBJECT

private slots:
    void aNucIsRenamed_data();
    void aNucIsRenamed();
    void aRefusedRenamingKeepsTheSelection();
    void anInvalidNewNameIsRefused();
    void aRenamingIsCancelled();
    void aNucIsDeleted_data();
    void aNucIsDeleted();
    void aDeletionIsCancelled_data();
    void aDeletionIsCancelled();
    void aRefusedDeletionKeepsTheSelection();
    void aNucIsDownloaded();
    void aNucIsUploaded();
    void theFileDialogsAreAsked();
    void aCancelledFileDialogCopiesNothing_data() { addButtons(); }
    void aCancelledFileDialogCopiesNothing();
    void uploadingTestsTheSpaceFirst();
    void uploadingTestsTheStem_data();
    void uploadingTestsTheStem();
    void uploadingOverANucIsAsked_data();
    void uploadingOverANucIsAsked();
    void buttonsWaitForTheTransfer_data() { addButtons(); }
    void buttonsWaitForTheTransfer();
    void theBarShowsTheTransfer();
    void aFailedTransferIsReported_data() { addButtons(); }
    void aFailedTransferIsReported();
    void aLostConnectionIsReported();

private:
    static void addButtons()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("call");
        QTest::newRow("upload") << "Upload"
                                << "zvtUploadNUCStdEx";
        QTest::newRow("download") << "Download"
                                  << "zvtDownloadNUCStd";
    }

    static bool transferring(const NucListPage &page) { return page.model()->property("transferring").toBool(); }
    static bool write(const QString &path, const QByteArray &content = correctionFile())
    {
        QFile file(path);
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
    }
    static void answer(NucListPage &page, const QString &button, const QString &path);
    static void openQuestion(NucListPage &page, const QString &button);
};

// The operator clicks a button and chooses a file.
void tst_NucListDialogFiles::answer(NucListPage &page, const QString &button, const QString &path)
{
    WidgetFileDialog::setNextAnswer(QUrl::fromLocalFile(path));
    page.click(button);
    QVERIFY(!WidgetFileDialog::hasNextAnswer());
    page.settle();
}

void tst_NucListDialogFiles::openQuestion(NucListPage &page, const QString &button)
{
    page.click(button);
    QTRY_VERIFY(page.findText(button + " NUC"));
    page.awaitFrame();
}

void tst_NucListDialogFiles::aNucIsRenamed_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("by the button") << false;
    QTest::newRow("by Enter") << true;
}

// The renamed correction moves to the end, and stays selected.
void tst_NucListDialogFiles::aNucIsRenamed()
{
    QFETCH(const bool, byKey);
    for (const QString nuc : {"Bravo", "Charlie"}) {
        NucListPage page(threeNucs);
        page.open(load);
        page.choose(nuc);
        openQuestion(page, "Rename");
        QCOMPARE(page.text("Old Name"), nuc);
        QVERIFY(page.find("Old Name")->property("readOnly").toBool());
        QTRY_VERIFY(page.find("New Name")->hasActiveFocus());
        page.type("Aaron");
        const size_t mark = page.gate().mark();
        byKey ? page.press(Qt::Key_Return) : page.click("Rename");
        QTRY_VERIFY(!page.find("New Name"));
        page.settle();
        QCOMPARE(page.calls(mark), QStringList(QStringLiteral("zvtRenameNUC \"%1\", \"Aaron\"").arg(nuc)));
        QStringList names = threeNucs;
        names.removeOne(nuc);
        QCOMPARE(page.names(), names + QStringList("Aaron"));
        QCOMPARE(page.selected(), QStringList("Aaron"));
        QCOMPARE(page.name(), "Aaron");
        QVERIFY(page.enabled("Rename"));
    }
}

// No question is asked before: the camera refuses it, without a message.
void tst_NucListDialogFiles::aRefusedRenamingKeepsTheSelection()
{
    NucListPage page(threeNucs);
    page.open(load);
    page.choose("Alpha");
    openQuestion(page, "Rename");
    page.type("Charlie");
    const size_t mark = page.gate().mark();
    page.press(Qt::Key_Return);
    QTRY_VERIFY(!page.find("New Name"));
    page.settle();
    QCOMPARE(page.calls(mark), QStringList("zvtRenameNUC \"Alpha\", \"Charlie\""));
    QCOMPARE(page.names(), threeNucs);
    QCOMPARE(page.selected(), QStringList("Alpha"));
    QCOMPARE(page.name(), "Alpha");
}

void tst_NucListDialogFiles::anInvalidNewNameIsRefused()
{
    NucListPage page(threeNucs);
    page.open(manage);
    page.choose("Bravo");
    openQuestion(page, "Rename");
    const size_t mark = page.gate().mark();
    // An empty name is not valid either.
    page.press(Qt::Key_Return);
    QTRY_VERIFY(page.findText(invalidNucName));
    QVERIFY(page.findText("Error"));
    page.press(Qt::Key_Escape);
    QTRY_VERIFY(!page.findText(invalidNucName));
    QVERIFY(page.find("New Name"));
    QCOMPARE(page.calls(mark), QStringList());
}

void tst_NucListDialogFiles::aRenamingIsCancelled()
{
    NucListPage page(threeNucs);
    page.open(manage);
    page.choose("Bravo");
    const size_t mark = page.gate().mark();
    for (const bool byKey : {true, false}) {
        openQuestion(page, "Rename");
        // The text typed before is gone.
        QCOMPARE(page.text("New Name"), QString());
        page.type("Delta");
        byKey ? page.press(Qt::Key_Escape) : page.click("Cancel");
        // A first Esc takes back the typed text.
        if (byKey && page.find("New Name"))
            page.press(Qt::Key_Escape);
        QTRY_VERIFY(!page.find("New Name"));
    }
    QCOMPARE(page.calls(mark), QStringList());
    QCOMPARE(page.selected(), QStringList("Bravo"));
}

void tst_NucListDialogFiles::aNucIsDeleted_data()
{
    QTest::addColumn<bool>("factory");
    QTest::newRow("an ordinary one") << false;
    // The question is the same for a correction of the factory.
    QTest::newRow("one of the factory") << true;
}

void tst_NucListDialogFiles::aNucIsDeleted()
{
    QFETCH(const bool, factory);
    NucListPage page(threeNucs);
    page.gate().script("zvtIsFactoryNUC", factory);
    page.open(load);
    page.choose("Bravo");
    const size_t mark = page.gate().mark();
    openQuestion(page, "Delete");
    QVERIFY(page.findText("Are you sure you want to delete Bravo?"));
    QVERIFY(page.find("Cancel")->hasActiveFocus());
    page.click("Delete");
    QTRY_VERIFY(!page.findText("Delete NUC"));
    page.settle();
    QCOMPARE(page.calls(mark), QStringList({"zvtDeleteNUC \"Bravo\"", "zvtGetNUCFreeSpace"}));
    QCOMPARE(page.names(), QStringList({"Alpha", "Charlie"}));
    // No neighbour is selected, which a second deletion would hit.
    QCOMPARE(page.selected(), QStringList());
    QCOMPARE(page.name(), QString());
    for (const QString button : {"Load", "Rename", "Delete", "Download"})
        QVERIFY(!page.enabled(button));
}

void tst_NucListDialogFiles::aDeletionIsCancelled_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("by Esc") << int(Qt::Key_Escape);
    QTest::newRow("by Enter, as on the harmless button") << int(Qt::Key_Return);
}

void tst_NucListDialogFiles::aDeletionIsCancelled()
{
    QFETCH(const int, key);
    NucListPage page(threeNucs);
    page.open(manage);
    page.choose("Bravo");
    const size_t mark = page.gate().mark();
    openQuestion(page, "Delete");
    page.press(Qt::Key(key));
    QTRY_VERIFY(!page.findText("Delete NUC"));
    QCOMPARE(page.calls(mark), QStringList());
    QCOMPARE(page.selected(), QStringList("Bravo"));
}

void tst_NucListDialogFiles::aRefusedDeletionKeepsTheSelection()
{
    NucListPage page(threeNucs);
    page.gate().failNext("zvtDeleteNUC");
    page.open(load);
    page.choose("Bravo");
    openQuestion(page, "Delete");
    page.click("Delete");
    page.settle();
    QCOMPARE(page.names(), threeNucs);
    QCOMPARE(page.selected(), QStringList("Bravo"));
    QCOMPARE(page.name(), "Bravo");
}

void tst_NucListDialogFiles::aNucIsDownloaded()
{
    const QTemporaryDir folder;
    // A path with characters that a URL encodes.
    const QString path = folder.filePath("a b%25 #1.nuc");
    NucListPage page(threeNucs);
    page.open(manage);
    page.choose("Bravo");
    const size_t mark = page.gate().mark();
    answer(page, "Download", path);
    QTRY_VERIFY(!transferring(page));
    QVERIFY(page.model()->property("transferOk").toBool());
    QCOMPARE(page.calls(mark), QStringList(QStringLiteral("zvtDownloadNUCStd \"Bravo\", \"%1\", delegate").arg(path)));
    QCOMPARE(QFile(path).size(), 3332);
    QCOMPARE(page.selected(), QStringList("Bravo"));
}

void tst_NucListDialogFiles::aNucIsUploaded()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("a b%.nuc");
    QVERIFY(write(path));
    NucListPage page(threeNucs);
    page.open(manage);
    page.choose("Bravo");
    const size_t mark = page.gate().mark();
    answer(page, "Upload", path);
    QTRY_VERIFY(!transferring(page));
    page.settle();
    QCOMPARE(page.calls(mark),
             QStringList({"zvtNUCExists \"a b%\"",
                          QStringLiteral("zvtUploadNUCStdEx \"a b%.nuc\", \"%1\", delegate").arg(path),
                          "zvtGetNUCFreeSpace", "zvtGetNUCFreeSpace"}));
    QCOMPARE(page.names(), threeNucs + QStringList("a b%"));
    QCOMPARE(page.selected(), QStringList("Bravo"));
    QVERIFY(page.enabled("Rename"));
}

void tst_NucListDialogFiles::theFileDialogsAreAsked()
{
    NucListPage page(threeNucs);
    page.open(manage);
    page.choose("Bravo");
    for (const bool upload : {true, false}) {
        QVariantMap asked;
        WidgetFileDialog::setNextAnswer([&asked](const WidgetFileDialog &files) {
            for (const char *property :
                 {"title", "selectExisting", "nameFilters", "selectedNameFilter", "folder", "defaultName"})
                asked.insert(property, files.property(property));
            return QUrl();
        });
        page.click(upload ? "Upload" : "Download");
        page.settle();
        QCOMPARE(asked.value("title").toString(), "Select NUC File");
        QCOMPARE(asked.value("selectExisting").toBool(), upload);
        QCOMPARE(asked.value("nameFilters").toStringList(), QStringList({"NUC files (*.nuc)", "All files (*)"}));
        // The first filter.
        QCOMPARE(asked.value("selectedNameFilter").toString(), QString());
        QCOMPARE(asked.value("folder").toUrl(),
                 QUrl::fromLocalFile(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)));
        QCOMPARE(asked.value("defaultName").toString(), upload ? "" : "Bravo");
    }
}

void tst_NucListDialogFiles::aCancelledFileDialogCopiesNothing()
{
    QFETCH(const QString, button);
    NucListPage page(threeNucs);
    page.open(manage);
    page.choose("Bravo");
    const size_t mark = page.gate().mark();
    WidgetFileDialog::setNextAnswer(QUrl());
    page.click(button);
    page.settle();
    QVERIFY(!WidgetFileDialog::hasNextAnswer());
    QVERIFY(!transferring(page));
    QCOMPARE(page.calls(mark), QStringList());
}

// A size that equals the free space does not fit.
void tst_NucListDialogFiles::uploadingTestsTheSpaceFirst()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("Bravo.nuc");
    QVERIFY(write(path));
    NucListPage page(threeNucs);
    page.gate().script("zvtGetNUCFreeSpace", 3332);
    page.open(manage);
    const size_t mark = page.gate().mark();
    answer(page, "Upload", path);
    QTRY_VERIFY(page.findText(noSpaceForNuc));
    QCOMPARE(page.calls(mark), QStringList());
    page.press(Qt::Key_Return);
    QTRY_VERIFY(!page.findText(noSpaceForNuc));
    QVERIFY(!transferring(page));
}

void tst_NucListDialogFiles::uploadingTestsTheStem_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("stem");
    QTest::newRow("one extension") << "plain.nuc"
                                   << "plain";
    QTest::newRow("two dots") << "Cold.Start.nuc"
                              << "Cold.Start";
    QTest::newRow("no extension") << "plain"
                                  << "plain";
    QTest::newRow("other characters") << "a b%20 #1.nuc"
                                      << "a b%20 #1";
}

void tst_NucListDialogFiles::uploadingTestsTheStem()
{
    QFETCH(const QString, file);
    QFETCH(const QString, stem);
    NucListPage page(threeNucs);
    page.open(manage);
    const size_t mark = page.gate().mark();
    // The file does not exist, so the upload fails.
    answer(page, "Upload", "/a.folder/" + file);
    QTRY_VERIFY(page.findText("Failed to upload file."));
    const QStringList calls = page.calls(mark);
    QCOMPARE(calls.value(0), QStringLiteral("zvtNUCExists \"%1\"").arg(stem));
    QCOMPARE(calls.value(1), QStringLiteral("zvtUploadNUCStdEx \"%1\", \"/a.folder/%1\", delegate").arg(file));
}

void tst_NucListDialogFiles::uploadingOverANucIsAsked_data()
{
    QTest::addColumn<bool>("factory");
    QTest::addColumn<bool>("yes");
    QTest::newRow("yes") << false << true;
    QTest::newRow("no") << false << false;
    QTest::newRow("factory, yes") << true << true;
}

void tst_NucListDialogFiles::uploadingOverANucIsAsked()
{
    QFETCH(const bool, factory);
    QFETCH(const bool, yes);
    const QString question = factory ? overwriteFactoryNuc : overwriteNuc;
    const QTemporaryDir folder;
    const QString path = folder.filePath("Bravo.nuc");
    QVERIFY(write(path, correctionFile(8, 8)));
    NucListPage page(threeNucs);
    page.gate().script("zvtIsFactoryNUC", factory);
    page.open(manage);
    const size_t mark = page.gate().mark();
    answer(page, "Upload", path);
    QTRY_VERIFY(page.findText(question));
    QVERIFY(page.findText("Warning"));
    QCOMPARE(page.calls(mark), QStringList({"zvtNUCExists \"Bravo\"", "zvtIsFactoryNUC \"Bravo\""}));
    page.awaitFrame();
    page.click(yes ? "Yes" : "No");
    QTRY_VERIFY(!page.findText(question));
    QTRY_VERIFY(!transferring(page));
    page.settle();
    QCOMPARE(page.calls(mark).filter("zvtUploadNUCStdEx").size(), yes ? 1 : 0);
    QCOMPARE(page.findText("8x8") != nullptr, yes);
    QVERIFY(page.isOpen());
}

void tst_NucListDialogFiles::buttonsWaitForTheTransfer()
{
    QFETCH(const QString, button);
    QFETCH(const QString, call);
    const QTemporaryDir folder;
    QVERIFY(write(folder.filePath("New.nuc")));
    NucListPage page(threeNucs);
    page.open(load);
    page.choose("Bravo");
    page.gate().hold(call.toStdString());
    answer(page, button, folder.filePath(button == "Upload" ? "New.nuc" : "copy"));
    QVERIFY(page.gate().waitHeld(call.toStdString()));
    for (const QString other : {"Rename", "Delete", "Upload", "Download", "Cancel"})
        QVERIFY2(!page.enabled(other), qPrintable(other));
    QVERIFY(page.enabled("Load"));
    page.press(Qt::Key_Escape);
    page.awaitFrame();
    QVERIFY(page.isOpen());
    page.gate().release("*");
    QTRY_VERIFY(!transferring(page));
    page.settle();
    for (const QString other : {"Rename", "Delete", "Upload", "Download", "Cancel"})
        QVERIFY2(page.enabled(other), qPrintable(other));
}

void tst_NucListDialogFiles::theBarShowsTheTransfer()
{
    const QTemporaryDir folder;
    NucListPage page(threeNucs);
    page.open(manage);
    page.choose("Bravo");
    const double y = page.find("Rename")->mapToScene({0, 0}).y();
    const auto *bar = qobject_cast<QQuickItem *>(page.object(QStringLiteral("nucTransferProgress")));
    QVERIFY(!bar->isVisible());
    page.gate().hold("zvtDownloadNUCStd");
    answer(page, "Download", folder.filePath("copy"));
    QVERIFY(page.gate().waitHeld("zvtDownloadNUCStd"));
    QVERIFY(bar->isVisible());
    QCOMPARE(bar->property("from").toDouble(), 0.0);
    QCOMPARE(bar->property("to").toDouble(), 100.0);
    QCOMPARE(bar->property("value").toDouble(), 0.0);
    QCOMPARE(page.find("Rename")->mapToScene({0, 0}).y(), y);
    page.gate().release("*");
    QTRY_VERIFY(!bar->isVisible());
    QCOMPARE(bar->property("value").toDouble(), 100.0);
}

void tst_NucListDialogFiles::aFailedTransferIsReported()
{
    QFETCH(const QString, button);
    QFETCH(const QString, call);
    const QString message = QStringLiteral("Failed to %1 file.").arg(button.toLower());
    const QTemporaryDir folder;
    NucListPage page(threeNucs);
    page.gate().failNext(call.toStdString());
    page.open(manage);
    page.choose("Bravo");
    answer(page, button, folder.filePath("Delta.nuc"));
    QTRY_VERIFY(page.findText(message));
    QVERIFY(page.findText("Error"));
    QTRY_VERIFY(page.find("OK")->hasActiveFocus());
    page.press(Qt::Key_Return);
    QTRY_VERIFY(!page.findText(message));
    QVERIFY(page.isOpen());
}

void tst_NucListDialogFiles::aLostConnectionIsReported()
{
    const QTemporaryDir folder;
    NucListPage page(threeNucs);
    page.open(manage);
    page.choose("Bravo");
    page.gate().hold("zvtDownloadNUCStd");
    answer(page, "Download", folder.filePath("copy"));
    QVERIFY(page.gate().waitHeld("zvtDownloadNUCStd"));
    page.rig().camera().disconnect();
    page.gate().release("*");
    QTRY_VERIFY(page.findText("Failed to download file."));
    page.press(Qt::Key_Escape);
    QTRY_VERIFY(!page.findText("Failed to download file."));
    page.click("Done");
    QTRY_VERIFY(!page.isOpen());
}

ZVT_TEST(tst_NucListDialogFiles)
#include "tst_NucListDialogFiles.moc"
