#include "tests/support/PageDriver.h"
#include "tests/support/Test.h"

#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include "platform/hlxcamui/WidgetFileDialog.h"

using hlx::cam::ui::WidgetFileDialog;

namespace
{

/// The Correction page of a camera with a factory correction in use, and the dialog that describes it.
class NucInfo : public PageDriver
{
public:
    explicit NucInfo(const QSize &size = {640, 480})
        : PageDriver({.size = size, .prepare = [](emulator::Camera &camera) {
                          camera.gate().script("zvtGetNUCName", "Factory 2 ms");
                      }})
    {
        click("Correction");
        settle();
    }

    emulator::Gate &gate() { return rig().gate(); }
    void open()
    {
        click("Show NUC Info 0");
        settle();
    }
    bool isOpen() const { return find("Done") != nullptr; }
    QQuickItem &list() const { return *find("NUC Information"); }
    double scrolled() const { return list().property("contentY").toDouble(); }
    double end() const { return list().property("contentHeight").toDouble() - list().height(); }
    /// The item of the row with this name.
    QQuickItem &row(const QString &name) const { return *find(name, &list())->parentItem(); }
};

} // namespace

/// The dialog with the description of a correction.
class tst_NucInfoDialog : public Test
{
    Q_OBJECT

private slots:
    void rowsAreShown();
    void namesAreRightAndValuesLeft();
    void shadesAlternate();
    void itIsBusyWhileItReads();
    void failureIsSaid();
    void everyOpeningReadsAgain();
    void textFileIsSaved();
    void fileDialogIsAsked();
    void cancelledFileDialogWritesNothing();
    void keysScroll();
    void doneAndEscClose_data();
    void doneAndEscClose();
    void itFitsItsWindow_data();
    void itFitsItsWindow();
    void itOutlivesItsModel();
};

void tst_NucInfoDialog::rowsAreShown()
{
    NucInfo info({900, 900});
    info.open();
    QVERIFY(info.findText("NUC Information"));
    QVERIFY(info.findText("Name"));
    QVERIFY(info.findText("Value"));
    QCOMPARE(info.text("Camera Serial"), "ZE-100001");
    QCOMPARE(info.text("Window"), "640x512 (0,0)");
    QCOMPARE(info.text("NUC Type"), "Two-Point");
    QCOMPARE(info.list().property("count").toInt(), 41);
    QVERIFY(info.find("Save")->isEnabled());
    QVERIFY(!info.findText("Failed to query information"));
}

void tst_NucInfoDialog::namesAreRightAndValuesLeft()
{
    NucInfo info;
    info.open();
    for (const char *name : {"Size", "Camera Serial", "Integration Time"}) {
        const QQuickItem *value = info.find(name, &info.list());
        QCOMPARE(value->property("effectiveHorizontalAlignment").toInt(), int(Qt::AlignLeft));
        const QQuickItem *heading = value->parentItem()->childItems().constFirst();
        QCOMPARE(heading->property("text").toString(), name);
        QCOMPARE(heading->property("effectiveHorizontalAlignment").toInt(), int(Qt::AlignRight));
        QVERIFY(heading->x() + heading->width() < value->x());
    }
}

void tst_NucInfoDialog::shadesAlternate()
{
    NucInfo info;
    info.open();
    const QVariant first = info.row("Size").property("color");
    const QVariant second = info.row("Date").property("color");
    QVERIFY(first != second);
    QCOMPARE(info.row("Camera Model").property("color"), first);
    QCOMPARE(info.row("Camera Serial").property("color"), second);
}

void tst_NucInfoDialog::itIsBusyWhileItReads()
{
    NucInfo info;
    info.gate().hold("zvtQueryNUCInfo");
    info.click("Show NUC Info 0");
    QVERIFY(info.gate().waitHeld("zvtQueryNUCInfo"));
    info.awaitFrame();
    QVERIFY(info.object("nucInfoBusy"));
    QVERIFY(!info.find("Save")->isEnabled());
    QVERIFY(!info.findText("Failed to query information"));
    info.gate().release("*");
    info.settle();
    QVERIFY(!info.object("nucInfoBusy"));
    QVERIFY(info.find("Save")->isEnabled());
}

void tst_NucInfoDialog::failureIsSaid()
{
    NucInfo info;
    info.gate().failAlways("zvtQueryNUCInfo");
    info.open();
    QVERIFY(info.findText("Failed to query information"));
    QVERIFY(!info.find("Save")->isEnabled());
    QCOMPARE(info.list().property("count").toInt(), 0);
}

void tst_NucInfoDialog::everyOpeningReadsAgain()
{
    NucInfo info;
    info.gate().failNext("zvtQueryNUCInfo");
    info.open();
    QVERIFY(info.findText("Failed to query information"));
    info.click("Done");
    info.settle();
    const size_t mark = info.gate().mark();
    info.open();
    QCOMPARE(info.rig().callsSince(mark).count("zvtQueryNUCInfo"), 1);
    QCOMPARE(info.list().property("count").toInt(), 41);
}

void tst_NucInfoDialog::textFileIsSaved()
{
    QTemporaryDir folder;
    QFile file(folder.filePath("info 100%25 #1.txt"));
    NucInfo info;
    info.open();
    WidgetFileDialog::setNextAnswer(QUrl::fromLocalFile(file.fileName()));
    info.click("Save");
    info.settle();
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArrayList lines = file.readAll().split('\n');
    QCOMPARE(lines.size(), 42);
    QCOMPARE(lines.constFirst(), "Name: Factory 2 ms");
    QVERIFY(info.isOpen());
}

void tst_NucInfoDialog::fileDialogIsAsked()
{
    NucInfo info;
    info.open();
    QVariantMap asked;
    WidgetFileDialog::setNextAnswer([&asked](const WidgetFileDialog &dialog) {
        for (const char *property : {"title", "selectExisting", "nameFilters", "folder"})
            asked.insert(property, dialog.property(property));
        return QUrl();
    });
    info.find("Done")->forceActiveFocus(Qt::TabFocusReason);
    info.press(Qt::Key_Backtab);
    info.press(Qt::Key_Return);
    QVERIFY(!WidgetFileDialog::hasNextAnswer());
    QCOMPARE(asked.value("title").toString(), "Select text File");
    QCOMPARE(asked.value("selectExisting").toBool(), false);
    QCOMPARE(asked.value("nameFilters").toStringList(), QStringList({"Text files (*.txt)", "Text files (*)"}));
    QCOMPARE(asked.value("folder").toUrl(),
             QUrl::fromLocalFile(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)));
    info.settle();
}

void tst_NucInfoDialog::cancelledFileDialogWritesNothing()
{
    QTemporaryDir folder;
    QFile file(folder.filePath("info.txt"));
    NucInfo info;
    info.open();
    // The file dialog keeps the name of a saved file.
    WidgetFileDialog::setNextAnswer(QUrl::fromLocalFile(file.fileName()));
    info.click("Save");
    info.settle();
    QVERIFY(file.remove());
    WidgetFileDialog::setNextAnswer(QUrl());
    info.click("Save");
    info.settle();
    QVERIFY(!WidgetFileDialog::hasNextAnswer());
    QVERIFY(!file.exists());
    QVERIFY(info.isOpen());
}

void tst_NucInfoDialog::keysScroll()
{
    NucInfo info;
    info.open();
    info.list().forceActiveFocus(Qt::TabFocusReason);
    QVERIFY(info.end() > 100);
    info.press(Qt::Key_Down);
    QCOMPARE(info.scrolled(), 28);
    info.press(Qt::Key_Up);
    QCOMPARE(info.scrolled(), 0);
    info.press(Qt::Key_Up);
    QCOMPARE(info.scrolled(), 0);
    info.press(Qt::Key_PageDown);
    QVERIFY(info.scrolled() > info.list().height() - 28 && info.scrolled() <= info.list().height());
    info.press(Qt::Key_End);
    QCOMPARE(info.scrolled(), info.end());
    info.press(Qt::Key_PageDown);
    QCOMPARE(info.scrolled(), info.end());
    info.press(Qt::Key_PageUp);
    QVERIFY(info.scrolled() < info.end());
    info.press(Qt::Key_Home);
    QCOMPARE(info.scrolled(), 0);
}

void tst_NucInfoDialog::doneAndEscClose_data()
{
    QTest::addColumn<bool>("byEsc");
    QTest::newRow("Done") << false;
    QTest::newRow("Esc") << true;
}

void tst_NucInfoDialog::doneAndEscClose()
{
    QFETCH(const bool, byEsc);
    NucInfo info;
    info.open();
    QTest::mouseClick(&info.window(), Qt::LeftButton, Qt::NoModifier, {4, 470});
    info.settle();
    QVERIFY(info.isOpen());
    if (byEsc)
        info.press(Qt::Key_Escape);
    else
        info.click("Done");
    QTRY_VERIFY(!info.isOpen());
    info.open();
    QVERIFY(info.isOpen());
}

void tst_NucInfoDialog::itFitsItsWindow_data()
{
    QTest::addColumn<QSize>("window");
    QTest::addColumn<QSizeF>("dialog");
    QTest::newRow("info of the smallest window") << QSize(640, 480) << QSizeF(576, 376);
    QTest::newRow("info of a large window") << QSize(1000, 1000) << QSizeF(600, 800);
}

void tst_NucInfoDialog::itFitsItsWindow()
{
    QFETCH(const QSize, window);
    NucInfo info(window);
    info.open();
    info.saveScreenshot();
    const QQuickItem *dialog = info.find("Done");
    while (!dialog->inherits("QQuickPopupItem"))
        dialog = dialog->parentItem();
    QTEST(dialog->size(), "dialog");
    const QRectF place = dialog->mapRectToScene(dialog->boundingRect());
    QVERIFY(QRectF({0, 0}, QSizeF(window)).contains(place));
    for (const QQuickItem *text : PageDriver::shownTexts(*dialog))
        QVERIFY2(!text->property("truncated").toBool(), qPrintable(text->property("text").toString()));
}

void tst_NucInfoDialog::itOutlivesItsModel()
{
    NucInfo info;
    info.open();
    info.deleteModel();
    info.settle();
    QCOMPARE(info.text("Camera Serial"), "ZE-100001");
    info.click("Done");
    QTRY_VERIFY(!info.isOpen());
}

ZVT_TEST(tst_NucInfoDialog)
#include "tst_NucInfoDialog.moc"
