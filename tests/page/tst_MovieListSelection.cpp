#include "tests/page/MovieListPage.h"
#include "tests/page/Stall.h"
#include "tests/support/Test.h"

namespace
{

constexpr auto control = Qt::ControlModifier;
constexpr auto shift = Qt::ShiftModifier;
constexpr auto both = Qt::ControlModifier | Qt::ShiftModifier;

/// The dialog with movies of which several can be selected.
struct Selection : MovieListPage {
    explicit Selection(uint movies = 10, const PageSetup &setup = {.size = {900, 700}}) : MovieListPage(movies, setup)
    {
        QObject *host = create("Item { property QtObject dialog: loader.item; function open() { loader.open() }\n"
                               "LazyLoader { id: loader; ViewOrLoadSsdFilesDialog {\n"
                               "ssdTabModel: cameraModel.ssdTabModel; selectMultiple: true } } }");
        QMetaObject::invokeMethod(host, "open");
        settle();
        settle();
        dialog = host->property("dialog").value<QObject *>();
    }

    int lastSelected() const { return dialog->property("lastSelected").toInt(); }
    int numSelected() const { return dialog->property("numSelected").toInt(); }
    /// The rows that the dialog has returned.
    QList<int> returned() const
    {
        QList<int> rows;
        for (const QVariant &movie : dialog->property("selectedMovies").toList())
            rows << movie.value<QObject *>()->property("index").toInt();
        return rows;
    }

    QObject *dialog = nullptr;
};

struct Click {
    int row;
    Qt::KeyboardModifiers modifiers;
};

} // namespace

Q_DECLARE_METATYPE(QList<Click>)

/// The dialog with the movies on the drive, with several movies selected, as the batch download opens it.
class tst_MovieListSelection : public Test
{
    Q_OBJECT

private slots:
    void clicksSelect_data();
    void clicksSelect();
    void keysSelect();
    void keypadSelects();
    void clicksGoOnFromTheLastSelection();
    void doubleClickAddsOneMovie();
    void returnsTheMoviesInOrder();
    void titleAndTextFollowTheNumber();
    void newListHasNoSelection();
    void manyMoviesAreCheap();
};

void tst_MovieListSelection::clicksSelect_data()
{
    QTest::addColumn<QList<Click>>("clicks");
    QTest::addColumn<QList<int>>("selected");
    using Clicks = QList<Click>;
    using Rows = QList<int>;
    QTest::newRow("plain") << Clicks{{1, {}}, {4, {}}} << Rows{4};
    QTest::newRow("plain after many") << Clicks{{1, {}}, {4, shift}, {2, {}}} << Rows{2};
    QTest::newRow("Ctrl adds") << Clicks{{1, {}}, {4, control}} << Rows{1, 4};
    QTest::newRow("Ctrl removes") << Clicks{{1, {}}, {4, control}, {1, control}} << Rows{4};
    QTest::newRow("Ctrl removes the last") << Clicks{{1, {}}, {1, control}} << Rows{};
    QTest::newRow("Shift down") << Clicks{{2, {}}, {5, shift}} << Rows{2, 3, 4, 5};
    QTest::newRow("Shift up") << Clicks{{5, {}}, {2, shift}} << Rows{2, 3, 4, 5};
    QTest::newRow("Shift from the last click") << Clicks{{1, {}}, {5, control}, {7, shift}} << Rows{1, 5, 6, 7};
    QTest::newRow("Shift after a removal") << Clicks{{1, {}}, {1, control}, {3, shift}} << Rows{1, 2, 3};
    QTest::newRow("Shift without a last click") << Clicks{{3, shift}} << Rows{};
    QTest::newRow("Shift to the end without a last click") << Clicks{{9, shift}} << Rows{};
    QTest::newRow("Shift twice without a last click") << Clicks{{3, shift}, {5, shift}} << Rows{3, 4, 5};
    QTest::newRow("both below") << Clicks{{1, {}}, {4, control}, {7, both}} << Rows{1, 4, 5, 6, 7};
    QTest::newRow("both above") << Clicks{{3, {}}, {6, control}, {1, both}} << Rows{1, 2, 3, 6};
    QTest::newRow("both between") << Clicks{{1, {}}, {8, control}, {4, both}} << Rows{1, 2, 3, 4, 8};
    QTest::newRow("both without a selection") << Clicks{{3, both}} << Rows{3};
    QTest::newRow("both not from the last click")
        << Clicks{{2, {}}, {5, control}, {5, control}, {7, both}} << Rows{2, 3, 4, 5, 6, 7};
}

void tst_MovieListSelection::clicksSelect()
{
    QFETCH(const QList<Click>, clicks);
    QFETCH(const QList<int>, selected);
    Selection page;
    QCOMPARE(page.lastSelected(), -1);
    for (const Click &click : clicks) {
        page.clickRow(click.row, click.modifiers);
        QCOMPARE(page.lastSelected(), click.row);
    }
    QCOMPARE(page.selected(), selected);
    QCOMPARE(page.numSelected(), selected.size());
    QCOMPARE(page.loadButton().isEnabled(), !selected.isEmpty());
    page.awaitFrame();
    page.saveScreenshot();
}

void tst_MovieListSelection::keysSelect()
{
    Selection page;
    page.press(Qt::Key_Down);
    page.press(Qt::Key_Down, shift);
    page.press(Qt::Key_Down, shift);
    QCOMPARE(page.selected(), (QList<int>{0, 1, 2}));
    page.press(Qt::Key_Down, control);
    page.press(Qt::Key_Down, control);
    QCOMPARE(page.selected(), (QList<int>{0, 1, 2}));
    page.press(Qt::Key_Space);
    QCOMPARE(page.selected(), (QList<int>{0, 1, 2, 4}));
    page.awaitFrame();
    page.saveScreenshot();
    page.press(Qt::Key_Space);
    QCOMPARE(page.selected(), (QList<int>{0, 1, 2}));
    page.press(Qt::Key_End, shift);
    QCOMPARE(page.selected().size(), 10);
    QCOMPARE(page.numSelected(), 10);
    page.press(Qt::Key_Up);
    QCOMPARE(page.selected(), QList<int>{8});
}

void tst_MovieListSelection::keypadSelects()
{
    Selection page;
    page.press(Qt::Key_Down, Qt::KeypadModifier);
    QCOMPARE(page.selected(), QList<int>{0});
    page.press(Qt::Key_Down, Qt::KeypadModifier | shift);
    QCOMPARE(page.selected(), (QList<int>{0, 1}));
    page.press(Qt::Key_Down, Qt::KeypadModifier | control);
    QCOMPARE(page.selected(), (QList<int>{0, 1}));
    page.press(Qt::Key_End, Qt::KeypadModifier);
    QCOMPARE(page.selected(), QList<int>{9});
}

// Ctrl and an arrow key move the cursor, but not the last selected row.
void tst_MovieListSelection::clicksGoOnFromTheLastSelection()
{
    Selection page;
    page.clickRow(1);
    page.press(Qt::Key_Down, control);
    page.press(Qt::Key_Down, control);
    QCOMPARE(page.lastSelected(), 1);
    page.clickRow(5, shift);
    QCOMPARE(page.selected(), (QList<int>{1, 2, 3, 4, 5}));
    QCOMPARE(page.lastSelected(), 5);
    // The keys go on from the click.
    page.press(Qt::Key_Down, control);
    page.press(Qt::Key_Down, control);
    page.press(Qt::Key_Space);
    QCOMPARE(page.selected(), (QList<int>{1, 2, 3, 4, 5, 7}));
    QCOMPARE(page.lastSelected(), 7);
    page.clickRow(9, shift);
    QCOMPARE(page.selected(), (QList<int>{1, 2, 3, 4, 5, 7, 8, 9}));
}

void tst_MovieListSelection::doubleClickAddsOneMovie()
{
    Selection page;
    page.clickRow(1);
    page.clickRow(3, control);
    page.doubleClickRow(5, control);
    page.settle();
    QCOMPARE(page.returned(), QList<int>{5});
    QVERIFY(!page.isOpen());
}

void tst_MovieListSelection::returnsTheMoviesInOrder()
{
    Selection page;
    page.clickRow(7);
    page.clickRow(2, control);
    page.clickRow(4, control);
    const size_t mark = page.gate().mark();
    page.click("Add 3 Movies");
    page.settle();
    QVERIFY(!page.isOpen());
    QCOMPARE(page.returned(), (QList<int>{2, 4, 7}));
    QCOMPARE(page.dialog->property("selectedMovie").value<QObject *>(), page.movie(2));
    // Nothing is loaded.
    QCOMPARE(page.commands(mark), QStringList());
}

void tst_MovieListSelection::titleAndTextFollowTheNumber()
{
    Selection page;
    QCOMPARE(page.dialogTitle(), "Add Movies");
    QCOMPARE(page.verb(), "Add Movie");
    page.clickRow(1);
    QCOMPARE(page.verb(), "Add 1 Movie");
    page.clickRow(2, control);
    QCOMPARE(page.verb(), "Add 2 Movies");
    page.clickRow(2, control);
    page.clickRow(1, control);
    QCOMPARE(page.verb(), "Add Movie");
}

void tst_MovieListSelection::newListHasNoSelection()
{
    Selection page;
    page.clickRow(1);
    page.clickRow(3, shift);
    QMetaObject::invokeMethod(page.recorder(), "loadAndViewFiles");
    page.settle();
    QCOMPARE(page.numSelected(), 0);
    QCOMPARE(page.lastSelected(), -1);
    QVERIFY(!page.loadButton().isEnabled());
}

void tst_MovieListSelection::manyMoviesAreCheap()
{
    constexpr uint movies = 5000;
    Selection page(movies);
    QCOMPARE(page.rows(), movies);
    QVERIFY(awaitHiddenPages(page));
    const auto *content = page.list()->property("contentItem").value<QQuickItem *>();
    QVERIFY(content->childItems().size() < 60);
    page.clickRow(2);
    page.awaitFrame();
    Stall stall;
    page.press(Qt::Key_End, shift);
    page.awaitFrame();
    const qint64 longest = stall.milliseconds();
    QVERIFY2(longest <= longestStall, qPrintable(QStringLiteral("%1 ms").arg(longest)));
    QCOMPARE(page.numSelected(), movies - 2);
    QVERIFY(page.row(movies - 1));
}

ZVT_TEST(tst_MovieListSelection)
#include "tst_MovieListSelection.moc"
