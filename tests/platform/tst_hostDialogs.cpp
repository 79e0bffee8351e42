#include "hlxui/ObjectListModel.h"
#include "platform/hlxcamui/WidgetFileDialog.h"
#include "tests/platform/ControlPage.h"
#include "tests/support/Test.h"

#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>

using hlx::cam::ui::WidgetFileDialog;

namespace
{

class Camera : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString key MEMBER m_key CONSTANT)
    Q_PROPERTY(QString name MEMBER m_name CONSTANT)
    Q_PROPERTY(QString profile MEMBER m_profile CONSTANT)

public:
    Camera(const QString &key, const QString &name, const QString &profile)
        : m_key(key), m_name(name), m_profile(profile)
    {
    }

private:
    QString m_key;
    QString m_name;
    QString m_profile;
};

class Finder : public QObject
{
    Q_OBJECT
    Q_PROPERTY(ObjectListModel *cameras READ cameras CONSTANT)

public:
    ObjectListModel *cameras() { return &m_cameras; }

private:
    ObjectListModel m_cameras{true};
};

const auto finderPage = QStringLiteral(R"(
    Item {
        id: opener
        property var finder
        property string connected
        function open() { popup.open() }
        CameraFinderPopup { id: popup; palette: root.palette; font.pixelSize: 13
                            cameraFinder: opener.finder; configDir: "/home/operator/.config/quarry"
                            onConnect: camera => opener.connected = camera }
    })");

} // namespace

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

    void finderConnectsByDoubleClick();
    void finderConnectsByKeys();
    void finderConnectsByButton();
    void finderFollowsItsCameras();
    void cancellingTheFinderConnectsNothing();

    void fileDialogIsAnsweredByTests();
    void fileDialogMayBeCancelled();
    void anAnswerSeesWhatWasAsked();
    void fileDialogChoosesAFile();
    void fileDialogAddsTheSuffixOfItsFilter();
    void fileDialogChoosesAFolder();
    void fileDialogGoesWithItsPage();
    void shortcutsAreUrls();

private:
    void call(const char *function, const QVariant &argument = {});
    void showFinder();
    QObject *popup() const;
    QQuickItem *named(const QString &name) const;
    void click(QQuickItem *item) const;

    /// Shows a page with a file dialog of these settings and returns the dialog.
    QObject *showFileDialog(const QString &settings);
    QFileDialog *openDialog() const;

    Finder m_finder;
    ControlPage m_page;
    QQuickItem *m_item = nullptr;
};

void tst_hostDialogs::cleanup()
{
    m_page.close();
    m_finder.cameras()->removeAll();
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
    // Not in the order of opening, and the first twice.
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

void tst_hostDialogs::showFinder()
{
    m_item = m_page.show(finderPage);
    m_item->setProperty("finder", QVariant::fromValue<QObject *>(&m_finder));
    call("open");
    QTRY_VERIFY(popup()->property("opened").toBool());
}

QObject *tst_hostDialogs::popup() const
{
    for (QObject *child : m_item->findChildren<QObject *>())
        if (child->property("cameraFinder").isValid())
            return child;
    return nullptr;
}

QQuickItem *tst_hostDialogs::named(const QString &name) const
{
    QList<QQuickItem *> items{m_page.window()->contentItem()};
    while (!items.isEmpty()) {
        QQuickItem *item = items.takeFirst();
        if (item->isVisible() && item->property("text").toString() == name)
            return item;
        items += item->childItems();
    }
    return nullptr;
}

void tst_hostDialogs::click(QQuickItem *item) const
{
    QVERIFY(item);
    QTest::mouseClick(m_page.window(), Qt::LeftButton, {},
                      item->mapToScene({item->width() / 2, item->height() / 2}).toPoint());
}

void tst_hostDialogs::finderConnectsByDoubleClick()
{
    m_finder.cameras()->append(new Camera("c1", "Tower North", "everything"));
    m_finder.cameras()->append(new Camera("c2", "Tower South", "discrete-fov"));
    showFinder();
    QTRY_VERIFY(named("Tower South"));
    m_page.shot("finder");
    QQuickItem *row = named("Tower South");
    QTest::mouseDClick(m_page.window(), Qt::LeftButton, {}, row->mapToScene({10, 5}).toPoint());
    QTRY_COMPARE(m_item->property("connected").toString(), QStringLiteral("c2"));
    QTRY_VERIFY(!popup()->property("visible").toBool());
}

void tst_hostDialogs::finderConnectsByKeys()
{
    for (const auto *key : {"c1", "c2", "c3"})
        m_finder.cameras()->append(new Camera(key, QStringLiteral("Camera ") + key, "bare"));
    showFinder();
    m_page.key(Qt::Key_Down);
    m_page.key(Qt::Key_Down);
    m_page.key(Qt::Key_Up);
    m_page.key(Qt::Key_Return);
    QTRY_COMPARE(m_item->property("connected").toString(), QStringLiteral("c2"));
    call("open");
    QTRY_VERIFY(popup()->property("opened").toBool());
    m_page.key(Qt::Key_Tab);
    m_page.shot("finder-button-focus");
    m_page.key(Qt::Key_Space);
    QTRY_COMPARE(m_item->property("connected").toString(), QStringLiteral("c1"));
}

void tst_hostDialogs::finderConnectsByButton()
{
    m_finder.cameras()->append(new Camera("c1", "Tower North", "everything"));
    m_finder.cameras()->append(
        new Camera("c2", "Tower South with a name that is much too long for its row", "edge-values"));
    showFinder();
    click(named(m_finder.cameras()->at(1)->property("name").toString()));
    m_page.shot("finder-second");
    click(named("Connect"));
    QTRY_COMPARE(m_item->property("connected").toString(), QStringLiteral("c2"));
}

void tst_hostDialogs::finderFollowsItsCameras()
{
    showFinder();
    QVERIFY(named("No cameras found"));
    QVERIFY(!named("Connect")->isEnabled());
    m_page.key(Qt::Key_Return);
    m_page.shot("finder-empty");
    auto *camera = new Camera("c1", "Tower North", "everything");
    m_finder.cameras()->append(camera);
    QTRY_VERIFY(named("Tower North"));
    QVERIFY(!named("No cameras found"));
    QTRY_VERIFY(named("Connect")->isEnabled());
    m_finder.cameras()->remove(camera);
    QTRY_VERIFY(named("No cameras found"));
    QTRY_VERIFY(!named("Connect")->isEnabled());
    QCOMPARE(m_item->property("connected").toString(), QString());
}

void tst_hostDialogs::cancellingTheFinderConnectsNothing()
{
    m_finder.cameras()->append(new Camera("c1", "Tower North", "everything"));
    showFinder();
    m_page.key(Qt::Key_Escape);
    QTRY_VERIFY(!popup()->property("visible").toBool());
    call("open");
    QTRY_VERIFY(popup()->property("opened").toBool());
    click(named("Cancel"));
    QTRY_VERIFY(!popup()->property("visible").toBool());
    QCOMPARE(m_item->property("connected").toString(), QString());
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
