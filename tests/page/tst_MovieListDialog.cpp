#include "tests/page/MovieListPage.h"
#include "tests/support/Test.h"

#include <algorithm>

namespace
{

constexpr auto control = Qt::ControlModifier;
constexpr auto shift = Qt::ShiftModifier;
constexpr auto both = Qt::ControlModifier | Qt::ShiftModifier;

/// The arguments of the loads since `mark`.
QStringList loads(MovieListPage &page, size_t mark) { return page.commands(mark).filter("zvtSsdLoadMovie"); }

} // namespace

/// The dialog with the movies on the drive, as the SSD page opens it: to load one, or only to view them.
class tst_MovieListDialog : public Test
{
    Q_OBJECT

private slots:
    void listsTheMovies();
    void namesAreShownInFull();
    void screenReadersTellAllColumns();
    void titleAndButtonsFollowTheCamera_data();
    void titleAndButtonsFollowTheCamera();
    void withoutRecordModesRowsCannotBeSelected();
    void spinnerReplacesTheList();
    void emptyListSaysSo();
    void openingClearsTheSelection();
    void onlyItsButtonsCloseIt();
    void windowGrowsWithIt_data();
    void windowGrowsWithIt();

    void clickSelectsOneRow_data();
    void clickSelectsOneRow();
    void loadsTheSelectedMovie_data();
    void loadsTheSelectedMovie();
    void doubleClickLoads();
    void enterLoads();
    void keysSelectOneRow();
    void closeLoadsNothing();
    void changedStatePreventsTheLoad();
    void disconnectionPreventsTheLoad();
    void movieOfAnotherSizeSetsTheWindow();
    void fits_data();
    void fits();
};

void tst_MovieListDialog::listsTheMovies()
{
    MovieListPage page(3);
    const size_t mark = page.gate().mark();
    page.open();
    QCOMPARE(page.rows(), 3);
    QCOMPARE(page.rig().callsSince(mark).count("zvtGetSsdMovieInfo"), 3);
    for (const char *text : {"#", "Filename", "Frames", "Size", "IRIG Start Time", "IRIG End Time", "17",
                             "Flight over the field", "60", "640x512", "045:07:05:09.012345", "045:07:05:11.500000",
                             "Capacity: 4.00 KB", "Free: 1.50 KB", "Used: 1023.00 bytes"})
        QVERIFY2(page.findText(text), text);
}

void tst_MovieListDialog::namesAreShownInFull()
{
    MovieListPage page(3);
    const QString name = QString(67, u'M');
    page.setMovies(3, MovieListPage::movie(qPrintable(name)));
    page.open();
    const QQuickItem &row = *page.row(1);
    QTest::mouseMove(&page.window(), row.mapToScene({90, row.height() / 2}).toPoint());
    QTRY_COMPARE(page.hint(), name);
    QTest::mouseMove(&page.window(), row.mapToScene({row.width() - 60, row.height() / 2}).toPoint());
    QTRY_COMPARE(page.hint(), QString());
}

void tst_MovieListDialog::screenReadersTellAllColumns()
{
    MovieListPage page(3);
    page.open();
    const QQuickItem &row = *page.row(1);
    QCOMPARE(PageDriver::nameOf(row), "Flight over the field");
    QCOMPARE(SsdPage::descriptionOf(row),
             "Number 17, 60 frames, 640x512, from 045:07:05:09.012345 to 045:07:05:11.500000");
}

void tst_MovieListDialog::titleAndButtonsFollowTheCamera_data()
{
    QTest::addColumn<QString>("profile");
    QTest::addColumn<QString>("title");
    QTest::addColumn<bool>("loads");
    QTest::newRow("Load Movie") << QStringLiteral("everything") << QStringLiteral("Load Movie") << true;
    QTest::newRow("List Movies") << QStringLiteral("board-6") << QStringLiteral("Movies List") << false;
}

void tst_MovieListDialog::titleAndButtonsFollowTheCamera()
{
    QFETCH(const QString, profile);
    QFETCH(const QString, title);
    QFETCH(const bool, loads);
    MovieListPage page(3, {.profile = profile, .size = {900, 700}});
    page.open(QString::fromLatin1(QTest::currentDataTag()));
    QCOMPARE(page.dialogTitle(), title);
    QVERIFY(page.enabled("Close"));
    const auto buttons = page.page()->findChildren<QQuickItem *>();
    QCOMPARE(std::ranges::any_of(buttons,
                                 [](const QQuickItem *item) {
                                     return item->isVisible() && item->inherits("QQuickButton")
                                         && item->property("text").toString() == "Load Movie";
                                 }),
             loads);
}

void tst_MovieListDialog::withoutRecordModesRowsCannotBeSelected()
{
    MovieListPage page(100, {.profile = "board-6", .size = {900, 700}});
    page.open("List Movies");
    page.clickRow(1);
    page.doubleClickRow(2);
    page.press(Qt::Key_Space);
    page.press(Qt::Key_Return);
    QCOMPARE(page.selected(), QList<int>());
    QVERIFY(page.isOpen());
    // The keys scroll.
    page.press(Qt::Key_PageDown);
    QVERIFY(page.list()->property("contentY").toDouble() > 0);
    page.press(Qt::Key_Home);
    QCOMPARE(page.list()->property("contentY").toDouble(), 0.0);
    QCOMPARE(page.selected(), QList<int>());
    page.saveScreenshot();
}

void tst_MovieListDialog::spinnerReplacesTheList()
{
    MovieListPage page(3);
    page.open();
    page.click("Close");
    page.settle();
    page.gate().hold("zvtGetSsdMovieCount");
    page.click("Load Movie");
    QVERIFY(page.gate().waitHeld("zvtGetSsdMovieCount"));
    page.awaitFrame();
    QVERIFY(page.object("movieListBusy"));
    QCOMPARE(page.rows(), 0);
    QVERIFY(!page.findText("The drive holds no movies."));
    page.saveScreenshot();
    page.gate().release("zvtGetSsdMovieCount");
    page.settle();
    QVERIFY(!page.object("movieListBusy"));
    QCOMPARE(page.rows(), 3);
}

void tst_MovieListDialog::emptyListSaysSo()
{
    MovieListPage page(0);
    page.open();
    QVERIFY(page.findText("The drive holds no movies."));
    page.press(Qt::Key_Down);
    page.press(Qt::Key_Space);
    page.press(Qt::Key_Return);
    QVERIFY(!page.loadButton().isEnabled());
    QVERIFY(page.isOpen());
    page.saveScreenshot();
}

void tst_MovieListDialog::openingClearsTheSelection()
{
    MovieListPage page;
    page.open();
    page.clickRow(4);
    page.click("Close");
    page.settle();
    // The old rows are still there.
    page.gate().hold("zvtGetSsdMovieCount");
    page.click("Load Movie");
    QVERIFY(page.gate().waitHeld("zvtGetSsdMovieCount"));
    QCOMPARE(page.selected(), QList<int>());
    page.gate().release("zvtGetSsdMovieCount");
    page.settle();
    QVERIFY(!page.loadButton().isEnabled());
    page.press(Qt::Key_Down);
    QCOMPARE(page.selected(), QList<int>{0});
}

void tst_MovieListDialog::onlyItsButtonsCloseIt()
{
    MovieListPage page;
    page.open();
    page.press(Qt::Key_Escape);
    QTest::mouseClick(&page.window(), Qt::LeftButton, Qt::NoModifier, {4, 4});
    page.settle();
    QVERIFY(page.isOpen());
    page.use("Close", true);
    page.settle();
    QVERIFY(!page.isOpen());
    QVERIFY(page.item("Load Movie").hasActiveFocus());
}

void tst_MovieListDialog::windowGrowsWithIt_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QSize>("least");
    QTest::newRow("small") << QSize(640, 480) << QSize(792, 448);
    // The height of the dialog follows that of the window, and the least height follows the dialog's.
    QTest::newRow("high") << QSize(900, 1200) << QSize(792, 1168);
}

void tst_MovieListDialog::windowGrowsWithIt()
{
    QFETCH(const QSize, size);
    QFETCH(const QSize, least);
    MovieListPage page(3, {.size = size});
    const QSize before = page.window().minimumSize();
    page.open();
    QTRY_COMPARE(page.window().minimumSize(), least);
    QTRY_COMPARE(page.window().size(), size.expandedTo(least));
    page.saveScreenshot();
    page.click("Close");
    page.settle();
    QTRY_COMPARE(page.window().size(), size);
    QCOMPARE(page.window().minimumSize(), before);
}

void tst_MovieListDialog::clickSelectsOneRow_data()
{
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("plain") << Qt::KeyboardModifiers();
    // Only one movie can be loaded.
    QTest::newRow("Ctrl") << Qt::KeyboardModifiers(control);
    QTest::newRow("Shift") << Qt::KeyboardModifiers(shift);
    QTest::newRow("Ctrl Shift") << Qt::KeyboardModifiers(both);
}

void tst_MovieListDialog::clickSelectsOneRow()
{
    QFETCH(const Qt::KeyboardModifiers, modifiers);
    MovieListPage page;
    page.open();
    page.clickRow(2, modifiers);
    QCOMPARE(page.selected(), QList<int>{2});
    QVERIFY(page.loadButton().isEnabled());
    page.clickRow(5, modifiers);
    QCOMPARE(page.selected(), QList<int>{5});
    QVERIFY(page.row(5)->property("highlighted").toBool() && !page.row(2)->property("highlighted").toBool());
    page.saveScreenshot();
}

void tst_MovieListDialog::loadsTheSelectedMovie_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::newRow("by mouse") << false;
    QTest::newRow("by keyboard") << true;
}

void tst_MovieListDialog::loadsTheSelectedMovie()
{
    QFETCH(const bool, byKeyboard);
    MovieListPage page;
    page.open();
    page.clickRow(3);
    const size_t mark = page.gate().mark();
    page.use(page.loadButton(), byKeyboard);
    page.settle();
    QVERIFY(!page.isOpen());
    QCOMPARE(loads(page, mark), QStringList("zvtSsdLoadMovie 3"));
    QVERIFY(!page.rig().callsSince(mark).contains("controller.SetWindow"));
    QCOMPARE(page.value("loadedMovieName").toString(), "Flight over the field");
    QVERIFY(page.value("movieLoaded").toBool());
}

void tst_MovieListDialog::doubleClickLoads()
{
    MovieListPage page;
    page.open();
    page.clickRow(1);
    const size_t mark = page.gate().mark();
    page.doubleClickRow(6);
    page.settle();
    QVERIFY(!page.isOpen());
    QCOMPARE(loads(page, mark), QStringList("zvtSsdLoadMovie 6"));
}

void tst_MovieListDialog::enterLoads()
{
    MovieListPage page;
    page.open();
    page.press(Qt::Key_Return);
    QVERIFY(page.isOpen());
    page.press(Qt::Key_Down);
    page.press(Qt::Key_Down);
    const size_t mark = page.gate().mark();
    page.press(Qt::Key_Return);
    page.settle();
    QVERIFY(!page.isOpen());
    QCOMPARE(loads(page, mark), QStringList("zvtSsdLoadMovie 1"));
}

void tst_MovieListDialog::keysSelectOneRow()
{
    MovieListPage page(100);
    page.open();
    const auto goes = [&page](Qt::Key key, int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        page.press(key, modifiers);
        page.awaitFrame();
        return page.selected() == QList<int>{row} && page.row(row) != nullptr;
    };
    QVERIFY(goes(Qt::Key_Down, 0));
    QVERIFY(goes(Qt::Key_Up, 0));
    QVERIFY(goes(Qt::Key_Down, 1, shift));
    QVERIFY(goes(Qt::Key_Down, 2, control));
    QVERIFY(goes(Qt::Key_End, 99));
    QVERIFY(goes(Qt::Key_Down, 99));
    QVERIFY(goes(Qt::Key_Home, 0));
    QVERIFY(goes(Qt::Key_Space, 0));
}

void tst_MovieListDialog::closeLoadsNothing()
{
    MovieListPage page;
    page.open();
    page.clickRow(3);
    const size_t mark = page.gate().mark();
    page.click("Close");
    page.settle();
    QCOMPARE(page.commands(mark), QStringList());
}

void tst_MovieListDialog::changedStatePreventsTheLoad()
{
    MovieListPage page;
    page.open();
    page.clickRow(3);
    page.enterState(Triggered);
    QVERIFY(!page.loadButton().isEnabled());
    const size_t mark = page.gate().mark();
    page.doubleClickRow(4);
    page.press(Qt::Key_Return);
    page.settle();
    QVERIFY(page.isOpen());
    QCOMPARE(loads(page, mark), QStringList());
}

void tst_MovieListDialog::disconnectionPreventsTheLoad()
{
    MovieListPage page;
    page.open();
    page.clickRow(3);
    page.rig().camera().disconnect();
    page.settle();
    QVERIFY(!page.loadButton().isEnabled() && page.enabled("Close"));
    const size_t mark = page.gate().mark();
    page.doubleClickRow(4);
    page.press(Qt::Key_Return);
    page.settle();
    QVERIFY(page.isOpen());
    QCOMPARE(loads(page, mark), QStringList());
}

void tst_MovieListDialog::movieOfAnotherSizeSetsTheWindow()
{
    MovieListPage page;
    page.gate().script("zvtGetWindow", QVariantList{8, 4, 320, 256});
    page.gate().script("controller.SetWindow", true);
    page.open();
    const size_t mark = page.gate().mark();
    page.doubleClickRow(0);
    page.settle();
    QCOMPARE(page.commands(mark).mid(0, 2), (QStringList{"controller.SetWindow 0, 0, 640, 512", "zvtSsdLoadMovie 0"}));
}

void tst_MovieListDialog::fits_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("least") << QSize(792, 480);
    QTest::newRow("large") << QSize(900, 700);
}

void tst_MovieListDialog::fits()
{
    QFETCH(const QSize, size);
    MovieListPage page(60, {.size = size});
    zvtSSsdMovieInfo largest = MovieListPage::movie("Flight over the field");
    largest.number = 10'000;
    largest.width = 1280;
    largest.height = 1025;
    largest.numFrames = 9'999'999;
    page.setMovies(60, largest);
    page.open();
    QVERIFY(page.findText("10000") && page.findText("1280x1024") && page.findText("9999999"));
    page.clickRow(1);
    page.awaitFrame();
    page.saveScreenshot();
    const QRectF place(QPointF(), page.window().size());
    const auto texts = page.dialogTexts() + PageDriver::shownTexts(*page.row(1));
    QCOMPARE(texts.size(), 1 + 6 + 3 + 2 + 6);
    for (const QQuickItem *text : texts)
        QVERIFY2(PageDriver::fits(*text, place), qPrintable(text->property("text").toString()));
}

ZVT_TEST(tst_MovieListDialog)
#include "tst_MovieListDialog.moc"
