#include "platform/hlxcamui/WidgetFileDialog.h"
#include "tests/platform/ControlPage.h"
#include "tests/support/Test.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QStyle>
#include <QTemporaryDir>

using hlx::cam::ui::WidgetFileDialog;

class tst_hostDialogs : public Test
{
    Q_OBJECT

private slots:
    void cleanup();

    void windowGrowsForADialogAndShrinksBack();
    void requestsOfAWindowStack();
    void aWindowResizedByItsUserStays();
    void aRequestDiesWithItsObject();
    void withoutAWindowNothingHappens();

    void fileDialogIsAnsweredByTests();
    void fileDialogMayBeCancelled();
    void anAnswerSeesWhatWasAsked();
    void fileDialogChoosesAFile();
    void fileDialogAddsTheSuffixOfItsFilter();
    void fileDialogChoosesAFolder();
    void fileDialogGoesWithItsPage();
    void fileDialogIsDark();
    void shortcutsAreUrls();

private:
    void call(const char *function, const QVariant &argument = {});

    /// Shows a page with a file dialog of these settings and returns the dialog.
    QObject *showFileDialog(const QString &settings);
    QFileDialog *openDialog() const;
    /// Returns a picture of the widget, which is also saved for inspection.
    static QImage shot(QWidget &widget, const char *name);

    ControlPage m_page;
    QQuickItem *m_item = nullptr;
};

void tst_hostDialogs::cleanup()
{
    m_page.close();
    WidgetFileDialog::setNextAnswer(nullptr);
}

void tst_hostDialogs::call(const char *function, const QVariant &argument)
{
    if (argument.isValid())
        QVERIFY(QMetaObject::invokeMethod(m_item, function, Q_ARG(QVariant, argument)));
    else
        QVERIFY(QMetaObject::invokeMethod(m_item, function));
}

namespace
{

const auto resizerPage = QStringLiteral(R"(
    Item {
        function pushFirst(size) { first.DialogWindowResizer.pushMinSize(size) }
        function popFirst() { first.DialogWindowResizer.popMinSize() }
        function pushSecond(size) { second.item.DialogWindowResizer.pushMinSize(size) }
        function popSecond() { second.item.DialogWindowResizer.popMinSize() }
        function dropSecond() { second.active = false }
        Dialog { id: first; parent: Overlay.overlay }
        Loader { id: second; sourceComponent: Item { } }
    })");

} // namespace

void tst_hostDialogs::windowGrowsForADialogAndShrinksBack()
{
    m_item = m_page.show(resizerPage);
    m_page.window()->setMinimumSize({320, 200});
    call("pushFirst", QSizeF(600, 300.5));
    QCOMPARE(m_page.window()->minimumSize(), QSize(600, 301));
    QTRY_COMPARE(m_page.window()->size(), QSize(600, 360));
    call("popFirst");
    QCOMPARE(m_page.window()->minimumSize(), QSize(320, 200));
    QTRY_COMPARE(m_page.window()->size(), QSize(480, 360));
    call("popFirst");
    QCOMPARE(m_page.window()->minimumSize(), QSize(320, 200));
}

void tst_hostDialogs::requestsOfAWindowStack()
{
    m_item = m_page.show(resizerPage);
    call("pushFirst", QSizeF(600, 300));
    call("pushSecond", QSizeF(500, 500));
    QCOMPARE(m_page.window()->minimumSize(), QSize(600, 500));
    QTRY_COMPARE(m_page.window()->size(), QSize(600, 500));
    // In another order than they were opened, and the first one twice.
    call("popFirst");
    QCOMPARE(m_page.window()->minimumSize(), QSize(500, 500));
    QTRY_COMPARE(m_page.window()->size(), QSize(500, 500));
    call("pushFirst", QSizeF(700, 100));
    call("pushFirst", QSizeF(100, 100));
    call("popFirst");
    QCOMPARE(m_page.window()->minimumSize(), QSize(700, 500));
    call("popFirst");
    call("popSecond");
    QCOMPARE(m_page.window()->minimumSize(), QSize(0, 0));
    QTRY_COMPARE(m_page.window()->size(), QSize(480, 360));
}

void tst_hostDialogs::aWindowResizedByItsUserStays()
{
    m_item = m_page.show(resizerPage);
    call("pushFirst", QSizeF(600, 300));
    QTRY_COMPARE(m_page.window()->size(), QSize(600, 360));
    m_page.window()->resize(700, 400);
    QTRY_COMPARE(m_page.window()->size(), QSize(700, 400));
    call("popFirst");
    QCOMPARE(m_page.window()->minimumSize(), QSize(0, 0));
    QCOMPARE(m_page.window()->size(), QSize(700, 400));
}

void tst_hostDialogs::aRequestDiesWithItsObject()
{
    m_item = m_page.show(resizerPage);
    call("pushSecond", QSizeF(600, 500));
    QCOMPARE(m_page.window()->minimumSize(), QSize(600, 500));
    call("dropSecond");
    QTRY_COMPARE(m_page.window()->minimumSize(), QSize(0, 0));
    QTRY_COMPARE(m_page.window()->size(), QSize(480, 360));
}

void tst_hostDialogs::withoutAWindowNothingHappens()
{
    m_item = m_page.show(resizerPage);
    m_page.item()->setParentItem(nullptr);
    call("pushSecond", QSizeF(600, 500));
    call("popSecond");
    QCOMPARE(m_page.window()->minimumSize(), QSize(0, 0));
}

QObject *tst_hostDialogs::showFileDialog(const QString &settings)
{
    m_item = m_page.show(
        QStringLiteral("Item { property alias dialog: dialog; WidgetFileDialog { id: dialog; %1 } }").arg(settings));
    return m_item->property("dialog").value<QObject *>();
}

QFileDialog *tst_hostDialogs::openDialog() const
{
    for (QWidget *widget : QApplication::topLevelWidgets())
        if (auto *dialog = qobject_cast<QFileDialog *>(widget); dialog && dialog->isVisible())
            return dialog;
    return nullptr;
}

QImage tst_hostDialogs::shot(QWidget &widget, const char *name)
{
    const QImage image = widget.grab().toImage();
    QDir().mkpath(ZVT_BINARY_DIR "/shots");
    image.save(QStringLiteral(ZVT_BINARY_DIR "/shots/%1.png").arg(QLatin1String(name)));
    return image;
}

void tst_hostDialogs::fileDialogIsAnsweredByTests()
{
    QObject *dialog = showFileDialog(QString());
    QSignalSpy accepted(dialog, SIGNAL(accepted()));
    WidgetFileDialog::setNextAnswer(QUrl("file:///tmp/one.nuc"));
    QVERIFY(WidgetFileDialog::hasNextAnswer());
    QMetaObject::invokeMethod(dialog, "open");
    QVERIFY(!WidgetFileDialog::hasNextAnswer());
    QCOMPARE(accepted.size(), 0);
    QTRY_COMPARE(accepted.size(), 1);
    QCOMPARE(dialog->property("fileUrl").toUrl(), QUrl("file:///tmp/one.nuc"));
    QVERIFY(!openDialog());
}

void tst_hostDialogs::fileDialogMayBeCancelled()
{
    QObject *dialog = showFileDialog(QString());
    QSignalSpy accepted(dialog, SIGNAL(accepted()));
    QSignalSpy rejected(dialog, SIGNAL(rejected()));
    WidgetFileDialog::setNextAnswer(QUrl());
    QMetaObject::invokeMethod(dialog, "open");
    QTRY_COMPARE(rejected.size(), 1);
    QMetaObject::invokeMethod(dialog, "open");
    QTRY_VERIFY(openDialog());
    QTest::keyClick(openDialog(), Qt::Key_Escape);
    QTRY_COMPARE(rejected.size(), 2);
    QMetaObject::invokeMethod(dialog, "open");
    QTRY_VERIFY(openDialog());
    QMetaObject::invokeMethod(dialog, "close");
    QTRY_COMPARE(rejected.size(), 3);
    QCOMPARE(accepted.size(), 0);
}

void tst_hostDialogs::anAnswerSeesWhatWasAsked()
{
    QObject *dialog = showFileDialog("title: 'Select NUC File'; defaultName: 'night'; selectExisting: false");
    QSignalSpy accepted(dialog, SIGNAL(accepted()));
    WidgetFileDialog::setNextAnswer([](const WidgetFileDialog &asked) {
        return asked.property("selectExisting").toBool()
            ? QUrl()
            : QUrl("file:///tmp/" + asked.property("defaultName").toString() + ".nuc");
    });
    QMetaObject::invokeMethod(dialog, "open");
    QTRY_COMPARE(accepted.size(), 1);
    QCOMPARE(dialog->property("fileUrl").toUrl(), QUrl("file:///tmp/night.nuc"));
}

void tst_hostDialogs::fileDialogChoosesAFile()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("there.nuc"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QObject *dialog
        = showFileDialog("title: 'Select NUC File'\n"
                         "nameFilters: ['NUC files (*.nuc)', 'All files (*)']; selectedNameFilter: 'All files (*)'");
    dialog->setProperty("folder", QUrl::fromLocalFile(folder.path()));
    QSignalSpy accepted(dialog, SIGNAL(accepted()));
    QMetaObject::invokeMethod(dialog, "open");
    QMetaObject::invokeMethod(dialog, "open");
    QTRY_VERIFY(openDialog());
    QFileDialog *shown = openDialog();
    QCOMPARE(shown->windowTitle(), QStringLiteral("Select NUC File"));
    QCOMPARE(shown->selectedNameFilter(), QStringLiteral("All files (*)"));
    QCOMPARE(shown->directory().canonicalPath(), QDir(folder.path()).canonicalPath());
    QCOMPARE(shown->windowHandle()->transientParent(), m_page.window());
    auto *name = shown->findChild<QLineEdit *>("fileNameEdit");
    QTest::keyClicks(name, "there.nuc");
    QTest::keyClick(name, Qt::Key_Return);
    QTRY_COMPARE(accepted.size(), 1);
    QCOMPARE(dialog->property("fileUrl").toUrl(), QUrl::fromLocalFile(file.fileName()));
    QCOMPARE(dialog->property("folder").toUrl(), QUrl::fromLocalFile(folder.path()));
    QTRY_VERIFY(!openDialog());
}

void tst_hostDialogs::fileDialogAddsTheSuffixOfItsFilter()
{
    const QTemporaryDir folder;
    QObject *dialog = showFileDialog("selectExisting: false; defaultName: 'night'\n"
                                     "nameFilters: ['NUC files (*.nuc)', 'All files (*)']");
    dialog->setProperty("folder", QUrl::fromLocalFile(folder.path()));
    QSignalSpy accepted(dialog, SIGNAL(accepted()));
    QMetaObject::invokeMethod(dialog, "open");
    QTRY_VERIFY(openDialog());
    QCOMPARE(openDialog()->acceptMode(), QFileDialog::AcceptSave);
    auto *name = openDialog()->findChild<QLineEdit *>("fileNameEdit");
    QCOMPARE(name->text(), QStringLiteral("night"));
    QTest::keyClick(name, Qt::Key_Return);
    QTRY_COMPARE(accepted.size(), 1);
    QCOMPARE(dialog->property("fileUrl").toUrl(), QUrl::fromLocalFile(folder.filePath("night.nuc")));
    QCOMPARE(dialog->property("selectedNameFilter").toString(), QStringLiteral("NUC files (*.nuc)"));
}

void tst_hostDialogs::fileDialogChoosesAFolder()
{
    const QTemporaryDir folder;
    QObject *dialog = showFileDialog("selectFolder: true; title: 'Select Folder'");
    dialog->setProperty("folder", QUrl::fromLocalFile(folder.path()));
    QSignalSpy accepted(dialog, SIGNAL(accepted()));
    QMetaObject::invokeMethod(dialog, "open");
    QTRY_VERIFY(openDialog());
    QCOMPARE(openDialog()->fileMode(), QFileDialog::Directory);
    auto *name = openDialog()->findChild<QLineEdit *>("fileNameEdit");
    name->setText(folder.path());
    QTest::keyClick(name, Qt::Key_Return);
    QTRY_COMPARE(accepted.size(), 1);
    QCOMPARE(dialog->property("fileUrl").toUrl(), QUrl::fromLocalFile(folder.path()));
}

void tst_hostDialogs::fileDialogGoesWithItsPage()
{
    QObject *dialog = showFileDialog(QString());
    QMetaObject::invokeMethod(dialog, "open");
    QTRY_VERIFY(openDialog());
    m_page.close();
    QVERIFY(!openDialog());
}

void tst_hostDialogs::fileDialogIsDark()
{
    const QPalette ofTheApplication = QApplication::palette();
    QObject *dialog = showFileDialog("nameFilters: ['NUC files (*.nuc)', 'All files (*)']");
    QMetaObject::invokeMethod(dialog, "open");
    QTRY_VERIFY(openDialog());
    QFileDialog *shown = openDialog();
    shot(*shown, "file-dialog");
    auto *types = shown->findChild<QComboBox *>("fileTypeCombo");
    types->showPopup();
    QTRY_VERIFY(types->view()->isVisible());
    const QImage list = shot(*types->view()->window(), "file-dialog-types");
    QVERIFY(list.pixelColor(list.width() - 4, list.height() - 4).lightness() < 64);
    for (const QWidget *widget : QList<QWidget *>{shown, types, types->view()}) {
        QCOMPARE(widget->palette().color(QPalette::Window), QColor(0x22, 0x22, 0x2b));
        QCOMPARE(widget->palette().color(QPalette::Base), QColor(0x1a, 0x1a, 0x21));
        QCOMPARE(widget->palette().color(QPalette::Text), QColor(0xd8, 0xd8, 0xd8));
        QCOMPARE(widget->style()->name(), QStringLiteral("fusion"));
    }
    QCOMPARE(QApplication::palette(), ofTheApplication);
}

void tst_hostDialogs::shortcutsAreUrls()
{
    QObject *dialog = showFileDialog("folder: shortcuts.documents");
    const auto documents = QUrl::fromLocalFile(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    QCOMPARE(dialog->property("folder").toUrl(), documents);
    const auto shortcuts = dialog->property("shortcuts").toMap();
    QCOMPARE(shortcuts.keys(),
             QStringList({"desktop", "documents", "downloads", "home", "movies", "music", "pictures"}));
    for (const auto &url : shortcuts)
        QVERIFY(url.toUrl().isLocalFile());
}

ZVT_TEST(tst_hostDialogs)
#include "tst_hostDialogs.moc"
