#include "tests/page/MfgPage.h"
#include "tests/support/Test.h"

#include <QDir>
#include <QStandardPaths>
#include <QTemporaryDir>

#include "platform/hlxcamui/WidgetFileDialog.h"

using hlx::cam::ui::WidgetFileDialog;

namespace
{

struct ToolsPage : MfgPage {
    ToolsPage() { openOnly("Tools"); }

    QObject *tools() const { return tabModel("mfgToolsModel"); }

    /// The commands after the operator has clicked a button and has answered the dialog that it opens.
    QStringList answer(const QString &button, const QString &path)
    {
        WidgetFileDialog::setNextAnswer(QUrl::fromLocalFile(path));
        const QStringList sent = commandsOf([&] { click(button); });
        if (WidgetFileDialog::hasNextAnswer())
            return {QStringLiteral("no dialog")};
        return sent;
    }
};

} // namespace

/// The section "Tools" of the Mfg page.
class tst_MfgTabTools : public Test
{
    Q_OBJECT

private slots:
    void theRowsHaveTheirHeadings();
    void eachButtonCallsTheCamera_data();
    void eachButtonCallsTheCamera();
    void openingReadsNothing();
    void theDialogsAreAsked_data();
    void theDialogsAreAsked();
    void statesAreTransferred();
    void cancelledDialogDoesNothing_data();
    void cancelledDialogDoesNothing();
    void everyExportIsOfEverything();
};

void tst_MfgTabTools::theRowsHaveTheirHeadings()
{
    ToolsPage page;
    for (const char *heading : {"Factory Default State", "All Loaded NUCs", "Save BPL for...", "TK2950 Only"})
        QVERIFY2(page.findText(heading), heading);
    QCOMPARE(page.rowsOf("Save BPL for..."),
             QStringList({"Preset 0", "Preset 1", "Preset 2", "Preset 3", "All Presets", "Factory", "Everything"}));
    QCOMPARE(page.shown("Save BPL for..."), "Everything");
}

void tst_MfgTabTools::eachButtonCallsTheCamera_data()
{
    QTest::addColumn<QStringList>("commands");
    QTest::newRow("Create Factory BPL") << QStringList("zvtMfgFactoryBPLCreate 4294967295");
    QTest::newRow("Append to Factory BPL") << QStringList("zvtMfgFactoryBPLAppend 4294967295");
    QTest::newRow("Apply Factory BPL") << QStringList("zvtMfgFactoryBPLApply 4294967295");
    QTest::newRow("Save All") << QStringList({"zvtSaveNUC 0", "zvtSaveNUC 1", "zvtSaveNUC 2", "zvtSaveNUC 3"});
    QTest::newRow("Auto Focus Full") << QStringList("zvtAutoFocusFull 0");
}

void tst_MfgTabTools::eachButtonCallsTheCamera()
{
    QFETCH(const QStringList, commands);
    ToolsPage page;
    for (const bool byKeyboard : {false, true})
        QCOMPARE(page.commandsOf([&] { page.use(QString::fromLatin1(QTest::currentDataTag()), byKeyboard); }),
                 commands);
}

void tst_MfgTabTools::openingReadsNothing()
{
    MfgPage page;
    page.toggle("Camera Settings");
    const size_t mark = page.gate().mark();
    page.toggle("Tools");
    QCOMPARE(page.rig().callsSince(mark), QStringList());
    QVERIFY(page.enabled("Download"));
}

void tst_MfgTabTools::theDialogsAreAsked_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<bool>("existing");
    QTest::addColumn<bool>("folder");
    QTest::newRow("Download") << "Download State File" << false << false;
    QTest::newRow("Upload") << "Upload State File" << true << false;
    QTest::newRow("Save") << "Select Folder To Save BPL Files" << true << true;
}

void tst_MfgTabTools::theDialogsAreAsked()
{
    QFETCH(const QString, title);
    QFETCH(const bool, existing);
    QFETCH(const bool, folder);
    ToolsPage page;
    QVariantMap asked;
    WidgetFileDialog::setNextAnswer([&asked](const WidgetFileDialog &files) {
        for (const char *property : {"title", "selectExisting", "selectFolder", "nameFilters", "folder"})
            asked.insert(property, files.property(property));
        return QUrl();
    });
    page.click(QString::fromLatin1(QTest::currentDataTag()));
    page.settle();
    QCOMPARE(asked.value("title").toString(), title);
    QCOMPARE(asked.value("selectFolder").toBool(), folder);
    QCOMPARE(asked.value("folder").toUrl(),
             QUrl::fromLocalFile(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)));
    if (folder)
        return;
    QCOMPARE(asked.value("selectExisting").toBool(), existing);
    QCOMPARE(asked.value("nameFilters").toStringList(), QStringList({"State Files (*.qsf)", "All Files (*.*)"}));
}

void tst_MfgTabTools::statesAreTransferred()
{
    ToolsPage page;
    const QTemporaryDir folder;
    const QString path = folder.filePath("a b%.qsf");
    QCOMPARE(page.answer("Download", path),
             QStringList(QStringLiteral("zvtDownloadFactoryDefaultStateStd \"%1\", delegate").arg(path)));
    QVERIFY(QFile::exists(path));
    QCOMPARE(page.answer("Upload", path),
             QStringList(QStringLiteral("zvtUploadFactoryDefaultStateStd \"%1\", delegate").arg(path)));
}

void tst_MfgTabTools::cancelledDialogDoesNothing_data()
{
    QTest::addColumn<QString>("button");
    for (const char *button : {"Download", "Upload", "Save"})
        QTest::newRow(button) << button;
}

void tst_MfgTabTools::cancelledDialogDoesNothing()
{
    QFETCH(const QString, button);
    ToolsPage page;
    QCOMPARE(page.answer(button, QString()), QStringList());
}

// The box is not bound to the model.
void tst_MfgTabTools::everyExportIsOfEverything()
{
    ToolsPage page;
    page.choose("Save BPL for...", "Preset 1");
    QCOMPARE(page.shown("Save BPL for..."), "Preset 1");
    QCOMPARE(page.tools()->property("selectedSaveBplIndex").toInt(), 6);
    const QTemporaryDir folder;
    const QStringList sent = page.answer("Save", folder.path());
    QCOMPARE(sent.first(), "zvtSaveBadPixelList 0, \"/Temp/ps0.bpl\"");
    QVERIFY(QFile::exists(folder.filePath("bpl.txt")) && QFile::exists(folder.filePath("ps0.bpl.png")));
    page.tools()->setProperty("selectedSaveBplIndex", 5);
    QCOMPARE(page.shown("Save BPL for..."), "Preset 1");
}

ZVT_TEST(tst_MfgTabTools)
#include "tst_MfgTabTools.moc"
