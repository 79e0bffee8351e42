#include "tests/page/Stall.h"
#include "tests/page/StateDialog.h"
#include "tests/support/Test.h"

#include <QFile>

#include <algorithm>
#include <limits>
#include <thread>

/// The dialog for states of a camera with very many states.
class tst_CameraStateDialogMany : public Test
{
    Q_OBJECT

private slots:
    void openingDoesNotStallThePage();
    void theCostOfAListIsLinear();
    void everyRowIsWithinReachOfTheKeyboard();

private:
    /// Makes the camera hold `count` states.
    static void fill(StateDialog &dialog, int count);
    static QString name(int number) { return QStringLiteral("State %1").arg(number, 4, 10, QLatin1Char('0')); }
    static int rows(StateDialog &dialog) { return dialog.list()->property("count").toInt(); }
    static bool awaitList(StateDialog &dialog)
    {
        return QTest::qWaitFor([&dialog] { return !dialog.model()->property("refreshing").toBool(); });
    }
};

void tst_CameraStateDialogMany::fill(StateDialog &dialog, int count)
{
    const QString folder = dialog.driver.rig().camera().folder() + "/states/";
    QVERIFY(QFile::rename(folder + "Alpha.qsf", folder + name(0) + ".qsf"));
    QFile first(folder + name(0) + ".qsf");
    QVERIFY(first.open(QIODevice::ReadOnly));
    const QByteArray content = first.readAll();
    // Without QFile::copy(), which waits for the disk each time.
    for (int number = 1; number < count; ++number) {
        QFile file(folder + name(number) + ".qsf");
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(content), content.size());
    }
}

void tst_CameraStateDialogMany::openingDoesNotStallThePage()
{
    StateDialog dialog({"Alpha"});
    fill(dialog, 1000);
    QVERIFY(awaitHiddenPages(dialog.driver));
    // The second opening replaces the list of the first one.
    for (int opening = 0; opening < 2; ++opening) {
        dialog.driver.click("Configuration");
        QTRY_VERIFY(dialog.driver.find("Manage States"));
        dialog.driver.awaitFrame();
        QQuickItem *action = dialog.driver.find("Manage States");
        const size_t mark = dialog.gate().mark();
        dialog.gate().hold("zvtListStates");
        Stall stall;
        dialog.driver.click(action);
        QVERIFY(dialog.gate().waitHeld("zvtListStates"));
        dialog.gate().release("zvtListStates");
        QVERIFY(awaitList(dialog));
        dialog.driver.awaitFrame();
        const qint64 longest = stall.milliseconds();
        QVERIFY2(longest <= longestStall, qPrintable(QStringLiteral("%1 ms").arg(longest)));
        QCOMPARE(rows(dialog), 1000);
        // Only visible rows are created.
        const auto *content = dialog.list()->property("contentItem").value<QQuickItem *>();
        const auto made = std::ranges::count_if(
            content->childItems(), [](const QQuickItem *item) { return item->inherits("QQuickItemDelegate"); });
        QVERIFY2(made >= 8 && made < 50, qPrintable(QString::number(made)));
        // The GUI thread does not wait for the camera either.
        for (const auto &call : dialog.gate().callsSince(mark))
            if (call.name.starts_with("zvt"))
                QVERIFY2(call.thread != std::this_thread::get_id(), call.name.c_str());
        dialog.driver.press(Qt::Key_Escape);
        QTRY_VERIFY(!dialog.isOpen());
    }
}

void tst_CameraStateDialogMany::theCostOfAListIsLinear()
{
    const auto costOf = [](int count) {
        StateDialog dialog({"Alpha"});
        fill(dialog, count);
        dialog.open("Manage States");
        qint64 least = std::numeric_limits<qint64>::max();
        for (int round = 0; round < 3; ++round) {
            const qint64 before = computedMicroseconds();
            QMetaObject::invokeMethod(dialog.model(), "refresh");
            dialog.driver.settle();
            least = std::min(least, computedMicroseconds() - before);
        }
        return rows(dialog) == count ? least : -1;
    };
    const qint64 few = costOf(100);
    const qint64 many = costOf(1600);
    QVERIFY(few > 0 && many > 0);
    // 16 times as many states: a linear cost, not a quadratic one.
    QVERIFY2(many < 64 * few, qPrintable(QStringLiteral("%1 us, %2 us").arg(few).arg(many)));
}

void tst_CameraStateDialogMany::everyRowIsWithinReachOfTheKeyboard()
{
    StateDialog dialog({"Alpha"});
    fill(dialog, 1000);
    dialog.open("Load State");
    QTRY_VERIFY(dialog.list()->hasActiveFocus());
    const auto goes = [&dialog](Qt::Key key, int number) {
        dialog.driver.press(key);
        dialog.driver.awaitFrame();
        return dialog.driver.text("State Name") == name(number) && dialog.selected() == QStringList(name(number));
    };
    QVERIFY(goes(Qt::Key_End, 999));
    QVERIFY(goes(Qt::Key_Down, 999));
    QVERIFY(goes(Qt::Key_Up, 998));
    QVERIFY(goes(Qt::Key_Home, 0));
    QVERIFY(goes(Qt::Key_PageUp, 0));
    dialog.driver.press(Qt::Key_PageDown);
    dialog.driver.press(Qt::Key_PageDown);
    const int shown = dialog.driver.text("State Name").right(4).toInt();
    QVERIFY(shown > 8 && shown < 40);
    QVERIFY(goes(Qt::Key_PageUp, shown / 2));
}

ZVT_TEST(tst_CameraStateDialogMany)
#include "tst_CameraStateDialogMany.moc"
