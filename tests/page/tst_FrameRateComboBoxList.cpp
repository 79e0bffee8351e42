#include "tests/page/FrameRateBox.h"
#include "tests/support/PageDriver.h"
#include "tests/support/Test.h"

using namespace rateBox;

class tst_FrameRateComboBoxList : public Test
{
    Q_OBJECT

private slots:
    void anOpenListSurvivesARead();
    void aClickAnywhereOpensTheList_data();
    void aClickAnywhereOpensTheList();
    void theArrowClosesTheListAgain();
    void theListOpensWhereThereIsRoom_data();
    void theListOpensWhereThereIsRoom();
    void anEmptyListDoesNotOpen();
    void aRowIsChosenByMouse_data();
    void aRowIsChosenByMouse();
    void aRowIsChosenByKey_data();
    void aRowIsChosenByKey();
    void choosingDropsWhatWasTyped();
    void typingClosesTheList();
    void leavingClosesTheList();
    void onlyTheFirstRowBearsTheMaximum_data();
    void onlyTheFirstRowBearsTheMaximum();

private:
    static void clickArrow(PageDriver &driver, const QQuickItem *box);
};

void tst_FrameRateComboBoxList::clickArrow(PageDriver &driver, const QQuickItem *box)
{
    const QPointF end = box->mapToScene({box->width() - 8, box->height() / 2});
    QTest::mouseClick(&driver.window(), Qt::LeftButton, Qt::NoModifier, end.toPoint());
}

void tst_FrameRateComboBoxList::anOpenListSurvivesARead()
{
    PageDriver driver;
    RateFake rate;
    rate.rows.clear();
    for (int row = 0; row < 40; ++row)
        rate.rows += QStringLiteral("%1.00").arg(400 - row);
    QQuickItem *box = create(driver, rate);
    driver.click(box);
    QVERIFY(isOpen(box));
    auto *list = qobject_cast<QQuickItem *>(driver.find("399.00")->parentItem()->parentItem());
    QVERIFY(list);
    list->setProperty("contentY", 280);
    // An equal list arrives during a read, which disables the section.
    box->setEnabled(false);
    rate.rows = QStringList(rate.rows);
    emit rate.changed();
    box->setEnabled(true);
    QVERIFY(isOpen(box));
    QCOMPARE(list->property("contentY").toDouble(), 280.0);
    QVERIFY(box->hasActiveFocus());
    // A shorter list.
    rate.rows.removeLast();
    emit rate.changed();
    QVERIFY(isOpen(box));
    QCOMPARE(list->property("count").toInt(), 39);
    rate.rows.clear();
    emit rate.changed();
    QTRY_VERIFY(!isOpen(box));
    QCOMPARE(rate.calls, QStringList());
}

void tst_FrameRateComboBoxList::aClickAnywhereOpensTheList_data()
{
    QTest::addColumn<bool>("editable");
    QTest::addColumn<int>("x");
    QTest::newRow("on a field") << true << 60;
    QTest::newRow("on a text") << false << 60;
    QTest::newRow("on the arrow of a field") << true << 150;
    QTest::newRow("on the arrow of a text") << false << 150;
}

void tst_FrameRateComboBoxList::aClickAnywhereOpensTheList()
{
    QFETCH(const int, x);
    PageDriver driver;
    RateFake rate;
    QFETCH(const bool, editable);
    rate.editable = editable;
    const QQuickItem *box = create(driver, rate);
    QTest::mouseClick(&driver.window(), Qt::LeftButton, Qt::NoModifier, box->mapToScene({qreal(x), 14}).toPoint());
    QVERIFY(isOpen(box));
    QVERIFY(box->hasActiveFocus());
    driver.settle();
    for (const QString &row : rate.rows)
        QVERIFY(driver.find(row));
    // A click outside the list only closes it.
    QTest::mouseClick(&driver.window(), Qt::LeftButton, Qt::NoModifier, {600, 460});
    QTRY_VERIFY(!isOpen(box));
    QCOMPARE(rate.calls, QStringList());
}

void tst_FrameRateComboBoxList::theArrowClosesTheListAgain()
{
    PageDriver driver;
    RateFake rate;
    const QQuickItem *box = create(driver, rate);
    clickArrow(driver, box);
    QVERIFY(isOpen(box));
    clickArrow(driver, box);
    QTRY_VERIFY(!isOpen(box));
}

void tst_FrameRateComboBoxList::theListOpensWhereThereIsRoom_data()
{
    QTest::addColumn<int>("y");
    QTest::addColumn<int>("rows");
    QTest::addColumn<bool>("above");
    QTest::newRow("below") << 40 << 3 << false;
    QTest::newRow("above") << 380 << 3 << true;
    QTest::newRow("long, below") << 40 << 50 << false;
    QTest::newRow("long, above") << 380 << 50 << true;
}

void tst_FrameRateComboBoxList::theListOpensWhereThereIsRoom()
{
    QFETCH(const int, y);
    QFETCH(const int, rows);
    QFETCH(const bool, above);
    PageDriver driver;
    RateFake rate;
    rate.rows.clear();
    for (int row = 0; row < rows; ++row)
        rate.rows += QString::number(row);
    QQuickItem *box = create(driver, rate);
    box->setY(y);
    driver.click(box);
    QVERIFY(isOpen(box));
    driver.settle();
    const auto *list = popup(box)->property("contentItem").value<QQuickItem *>();
    const QRectF place = list->mapRectToScene(list->boundingRect());
    const QRectF boxPlace = box->mapRectToScene(box->boundingRect());
    QVERIFY(QRectF(0, 0, 640, 480).contains(place));
    QVERIFY(!place.intersects(boxPlace));
    QCOMPARE(place.bottom() <= boxPlace.top(), above);
    if (rows == 3)
        QCOMPARE(place.height(), 3 * 28.0);
}

void tst_FrameRateComboBoxList::anEmptyListDoesNotOpen()
{
    PageDriver driver;
    RateFake rate;
    rate.rows.clear();
    QQuickItem *box = create(driver, rate);
    driver.click(box);
    driver.press(Qt::Key_Down);
    QVERIFY(!isOpen(box));
}

void tst_FrameRateComboBoxList::aRowIsChosenByMouse_data()
{
    QTest::addColumn<bool>("editable");
    QTest::newRow("field") << true;
    QTest::newRow("text") << false;
}

void tst_FrameRateComboBoxList::aRowIsChosenByMouse()
{
    PageDriver driver;
    RateFake rate;
    QFETCH(const bool, editable);
    rate.editable = editable;
    QQuickItem *box = create(driver, rate);
    driver.click(box);
    driver.settle();
    driver.click("60.00");
    QTRY_VERIFY(!isOpen(box));
    QCOMPARE(rate.calls, QStringList("choose 2"));
    QCOMPARE(box->property("currentText").toString(), "60.00");
    QCOMPARE(shown(box), rate.editable ? "120.00" : "60.00");
    QVERIFY(box->hasActiveFocus());
    // The box still follows the caller's index.
    rate.index = 0;
    emit rate.changed();
    QCOMPARE(box->property("currentText").toString(), "180.25");
}

void tst_FrameRateComboBoxList::aRowIsChosenByKey_data()
{
    QTest::addColumn<bool>("editable");
    QTest::addColumn<QList<Qt::Key>>("keys");
    QTest::addColumn<QStringList>("calls");
    QTest::newRow("down") << true << QList{Qt::Key_Down, Qt::Key_Down, Qt::Key_Return} << QStringList("choose 2");
    QTest::newRow("up") << true << QList{Qt::Key_Up, Qt::Key_Up, Qt::Key_Enter} << QStringList("choose 0");
    QTest::newRow("not beyond the end") << true << QList{Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Return}
                                        << QStringList("choose 2");
    QTest::newRow("cancelled") << true << QList{Qt::Key_Down, Qt::Key_Down, Qt::Key_Escape} << QStringList();
    QTest::newRow("space") << false << QList{Qt::Key_Space, Qt::Key_Up, Qt::Key_Space} << QStringList("choose 0");
    QTest::newRow("return") << false << QList{Qt::Key_Return, Qt::Key_Down, Qt::Key_Return} << QStringList("choose 2");
}

void tst_FrameRateComboBoxList::aRowIsChosenByKey()
{
    QFETCH(const QList<Qt::Key>, keys);
    QFETCH(const QStringList, calls);
    PageDriver driver;
    RateFake rate;
    QFETCH(const bool, editable);
    rate.editable = editable;
    QQuickItem *box = create(driver, rate);
    box->forceActiveFocus(Qt::TabFocusReason);
    for (const Qt::Key key : keys) {
        QCOMPARE(rate.calls, QStringList());
        driver.press(key);
    }
    QTRY_VERIFY(!isOpen(box));
    QCOMPARE(rate.calls, calls);
}

void tst_FrameRateComboBoxList::choosingDropsWhatWasTyped()
{
    PageDriver driver;
    RateFake rate;
    const QQuickItem *box = create(driver, rate);
    field(box)->forceActiveFocus(Qt::TabFocusReason);
    type(driver, "99");
    clickArrow(driver, box);
    driver.settle();
    driver.click("120.00");
    QCOMPARE(shown(box), "120.00");
    driver.press(Qt::Key_Tab);
    QCOMPARE(rate.calls, QStringList("choose 1"));
}

void tst_FrameRateComboBoxList::typingClosesTheList()
{
    PageDriver driver;
    RateFake rate;
    QQuickItem *box = create(driver, rate);
    driver.click(box);
    QVERIFY(isOpen(box));
    driver.press(Qt::Key_A, Qt::ControlModifier);
    QVERIFY(isOpen(box));
    type(driver, "99");
    QTRY_VERIFY(!isOpen(box));
    driver.press(Qt::Key_Return);
    QCOMPARE(rate.calls, QStringList("take 99"));
}

void tst_FrameRateComboBoxList::leavingClosesTheList()
{
    PageDriver driver;
    RateFake rate;
    QQuickItem *box = create(driver, rate);
    driver.click(box);
    driver.press(Qt::Key_Tab);
    QTRY_VERIFY(!isOpen(box));
    driver.click(box);
    QVERIFY(isOpen(box));
    box->setVisible(false);
    QTRY_VERIFY(!isOpen(box));
}

void tst_FrameRateComboBoxList::onlyTheFirstRowBearsTheMaximum_data()
{
    QTest::addColumn<bool>("shows");
    QTest::newRow("frame rates") << true;
    QTest::newRow("others") << false;
}

void tst_FrameRateComboBoxList::onlyTheFirstRowBearsTheMaximum()
{
    QFETCH(const bool, shows);
    PageDriver driver;
    RateFake rate;
    QQuickItem *box = create(driver, rate, QStringLiteral("showMaxOnFirstIndexText: %1").arg(shows ? "true" : "false"));
    driver.click(box);
    driver.settle();
    for (const QString &row : rate.rows) {
        QCOMPARE(driver.find(row)->property("endIcon").toString().isEmpty(), !shows || row != "180.25");
    }
}

ZVT_TEST(tst_FrameRateComboBoxList)
#include "tst_FrameRateComboBoxList.moc"
