#include "tests/page/NucListPage.h"
#include "tests/page/Stall.h"
#include "tests/support/Test.h"

#include <algorithm>
#include <limits>

/// The dialog with the list of corrections of a camera with very many of them.
class tst_NucListDialogMany : public Test
{
    Q_OBJECT

private slots:
    void openingDoesNotStallThePage();
    void searchesDoNotStallThePage();
    void theCostOfAListIsLinear();
    void everyRowIsWithinReachOfTheKeyboard();

private:
    static QString name(int number) { return QStringLiteral("NUC %1").arg(number, 5, 10, QLatin1Char('0')); }
    static QStringList namesOf(int count)
    {
        QStringList names;
        for (int number = 0; number < count; ++number)
            names << name(number);
        return names;
    }
    static std::unique_ptr<NucListPage> pageWith(int count)
    {
        auto page = std::make_unique<NucListPage>(QStringList());
        storeCorrections(page->rig().camera(), namesOf(count), correctionFile(8, 1));
        return page;
    }
    static int rows(NucListPage &page) { return page.list()->property("count").toInt(); }
    static bool awaitList(NucListPage &page)
    {
        return QTest::qWaitFor([&page] { return !page.model()->property("refreshing").toBool(); }, 20'000);
    }
};

void tst_NucListDialogMany::openingDoesNotStallThePage()
{
    const auto page = pageWith(10'000);
    QVERIFY(awaitHiddenPages(*page));
    // The second opening replaces the list of the first one.
    for (int opening = 0; opening < 2; ++opening) {
        QQuickItem *button = page->find("Manage NUCs");
        const size_t mark = page->gate().mark();
        page->gate().hold("zvtListNUCs");
        Stall stall;
        page->click(button);
        QVERIFY(page->gate().waitHeld("zvtListNUCs"));
        page->gate().release("zvtListNUCs");
        QVERIFY(awaitList(*page));
        page->awaitFrame();
        const qint64 longest = stall.milliseconds();
        QVERIFY2(longest <= longestStall, qPrintable(QStringLiteral("%1 ms").arg(longest)));
        QCOMPARE(rows(*page), 10'000);
        // Only visible rows are created.
        const auto *content = page->list()->property("contentItem").value<QQuickItem *>();
        const auto made = std::ranges::count_if(
            content->childItems(), [](const QQuickItem *item) { return item->inherits("QQuickItemDelegate"); });
        QVERIFY2(made >= 8 && made < 60, qPrintable(QString::number(made)));
        // The GUI thread does not wait for the camera either.
        for (const auto &call : page->gate().callsSince(mark))
            if (call.name.starts_with("zvt"))
                QVERIFY2(call.thread != std::this_thread::get_id(), call.name.c_str());
        page->press(Qt::Key_Escape);
        QTRY_VERIFY(!page->isOpen());
    }
}

// A search starts at the last row: those for the first row, and for a name that is not in the list, are the longest.
void tst_NucListDialogMany::searchesDoNotStallThePage()
{
    const auto page = pageWith(10'000);
    const auto stallOf = [&page](const auto &action) {
        Stall stall;
        action();
        awaitList(*page);
        page->awaitFrame();
        return stall.milliseconds();
    };
    const auto request = [&page](const QString &button, const QString &nuc) {
        page->choose(nuc);
        page->click(button);
        QTRY_VERIFY(page->findText(button + " NUC"));
        page->awaitFrame();
    };
    // Only the page computes meanwhile, since the test has found the button before.
    const auto stallOfClick = [&](const QString &button) {
        QQuickItem &item = page->item(button);
        return stallOf([&] { page->click(&item); });
    };
    QCOMPARE_LE(stallOfClick("Save Current NUC 2"), longestStall);
    page->settle();
    QCOMPARE(page->selected(), QStringList());
    page->choose(name(0));
    QCOMPARE_LE(stallOf([&] { QMetaObject::invokeMethod(page->model(), "refresh"); }), longestStall);
    QCOMPARE(page->selected(), QStringList(name(0)));
    request("Delete", name(0));
    QCOMPARE_LE(stallOfClick("Delete"), longestStall);
    QTRY_VERIFY(!page->findText("Delete NUC"));
    QCOMPARE(page->names().constFirst(), name(1));
    request("Rename", name(1));
    page->type("Renamed");
    QCOMPARE_LE(stallOfClick("Rename"), longestStall);
    QTRY_VERIFY(!page->findText("Rename NUC"));
    QCOMPARE(page->selected(), QStringList("Renamed"));
    QCOMPARE(rows(*page), 9999);
}

void tst_NucListDialogMany::theCostOfAListIsLinear()
{
    const auto costOf = [](int count) {
        const auto page = pageWith(count);
        page->open("Manage NUCs");
        qint64 least = std::numeric_limits<qint64>::max();
        for (int round = 0; round < 3; ++round) {
            const qint64 before = computedMicroseconds();
            QMetaObject::invokeMethod(page->model(), "refresh");
            page->settle();
            least = std::min(least, computedMicroseconds() - before);
        }
        return rows(*page) == count ? least : -1;
    };
    const qint64 empty = costOf(0);
    const qint64 few = costOf(600) - empty;
    const qint64 many = costOf(9600) - empty;
    QVERIFY(empty > 0 && few > 0 && many > 0);
    // 16 times as many corrections: a linear cost, not a quadratic one.
    QVERIFY2(many < 32 * few, qPrintable(QStringLiteral("%1 us, %2 us").arg(few).arg(many)));
}

void tst_NucListDialogMany::everyRowIsWithinReachOfTheKeyboard()
{
    const auto page = pageWith(1000);
    page->open("Load Existing NUC 1");
    QTRY_VERIFY(page->list()->hasActiveFocus());
    const auto goes = [&page](Qt::Key key, int number) {
        page->press(key);
        page->awaitFrame();
        const QQuickItem *row = page->find(name(number), page->list());
        return row && page->name() == name(number) && page->selected() == QStringList(name(number))
            && row->mapToItem(page->list(), {}).y() >= -1
            && row->mapToItem(page->list(), {}).y() + row->height() <= page->list()->height() + 1;
    };
    QVERIFY(goes(Qt::Key_End, 999));
    QVERIFY(goes(Qt::Key_Down, 999));
    QVERIFY(goes(Qt::Key_Up, 998));
    QVERIFY(goes(Qt::Key_Home, 0));
    QVERIFY(goes(Qt::Key_PageUp, 0));
    page->press(Qt::Key_PageDown);
    page->press(Qt::Key_PageDown);
    const int shown = page->name().right(5).toInt();
    QVERIFY(shown > 8 && shown < 50);
    QVERIFY(goes(Qt::Key_PageUp, shown / 2));
    for (int number = shown / 2 - 1; number >= 0; --number)
        QVERIFY2(goes(Qt::Key_Up, number), qPrintable(name(number)));
}

ZVT_TEST(tst_NucListDialogMany)
#include "tst_NucListDialogMany.moc"
