#include "tests/page/BatchPage.h"
#include "tests/page/Stall.h"
#include "tests/support/Test.h"

#include <QClipboard>
#include <QGuiApplication>

/// The rows of the dialog for batch downloads: names, ranges, marks, and the removal of movies.
class tst_BatchDownloadRows : public Test
{
    Q_OBJECT

private slots:
    void aRowShowsItsMovie();
    void anOutputNameIsEntered_data();
    void anOutputNameIsEntered();
    void wrongOutputNamesStayInTheField_data();
    void wrongOutputNamesStayInTheField();
    void duplicatesAreMarked();
    void lettersOfOtherCaseAreNoDuplicates();

    void aRangeHasItsFields();
    void framesAreEntered_data();
    void framesAreEntered();
    void theEndAllowsOneFrameMore();
    void aRangeThatEndsBeforeItsStartIsMarked();
    void timesAreEntered_data();
    void timesAreEntered();
    void aTimeThatEndsBeforeItsStartIsMarked();

    void aRemovedRowFadesAndShrinks();
    void theFocusMovesToTheNextRow();
    void aRowLeavesOnlyItsOwnMovie();
    void keysMoveBetweenRows();
    void manyRowsDoNotStallThePage();
    void aRowOutOfViewKeepsNoText();
};

void tst_BatchDownloadRows::aRowShowsItsMovie()
{
    BatchPage page;
    page.open();
    page.add({"Lift off", QByteArray(67, 'x')});
    QCOMPARE(page.rows().size(), 2);
    QVERIFY(page.findText("Lift off"));
    QVERIFY(!page.findText("No output files."));
    QCOMPARE(page.text("Output 1"), "1-Lift off");
    QCOMPARE(page.shown("Range 1"), "Entire File");
    QVERIFY(!page.find("Start 1"));
    QCOMPARE(page.rowColor(0), "#202020");
    QVERIFY(!page.barIsRed(0));
    QVERIFY(page.find("Not Started"));
    page.saveScreenshot();
}

void tst_BatchDownloadRows::anOutputNameIsEntered_data()
{
    QTest::addColumn<Qt::Key>("leave");
    QTest::newRow("by Enter") << Qt::Key_Return;
    QTest::newRow("by Tab") << Qt::Key_Tab;
}

void tst_BatchDownloadRows::anOutputNameIsEntered()
{
    QFETCH(const Qt::Key, leave);
    BatchPage page;
    page.open();
    page.add({"a", "b"});
    page.enter(page.item("Output 2"), "my movie", leave);
    QCOMPARE(page.value(1, "outFile").toString(), "my movie");
    QCOMPARE(page.text("Output 2"), "my movie");
    QCOMPARE(page.value(0, "outFile").toString(), "1-a");
}

void tst_BatchDownloadRows::wrongOutputNamesStayInTheField_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << "";
    QTest::newRow("blank first") << " a";
    QTest::newRow("tab first") << "\ta";
}

void tst_BatchDownloadRows::wrongOutputNamesStayInTheField()
{
    QFETCH(const QString, text);
    BatchPage page;
    page.open();
    page.add({"a"});
    QQuickItem &field = page.item("Output 1");
    QGuiApplication::clipboard()->setText(text);
    field.forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_A, Qt::ControlModifier);
    page.press(Qt::Key_Delete);
    page.press(Qt::Key_V, Qt::ControlModifier);
    page.press(Qt::Key_Return);
    page.press(Qt::Key_Tab);
    QCOMPARE(page.text("Output 1"), text);
    QVERIFY(!field.property("fault").toString().isEmpty());
    QCOMPARE(page.value(0, "outFile").toString(), "1-a");
    field.forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_Escape);
    QCOMPARE(page.text("Output 1"), "1-a");
    QVERIFY(field.property("fault").toString().isEmpty());
    QVERIFY(page.isOpen());
}

void tst_BatchDownloadRows::duplicatesAreMarked()
{
    BatchPage page;
    page.open();
    page.add({"a", "b", "c"});
    QVERIFY(!page.find("Duplicate 1"));
    page.enter(page.item("Output 3"), "1-a", Qt::Key_Return);
    QVERIFY(page.find("Duplicate 1"));
    QVERIFY(!page.find("Duplicate 2"));
    QVERIFY(page.find("Duplicate 3"));
    // A duplicate name is valid.
    QVERIFY(!page.barIsRed(0));
    page.hover("Duplicate 3");
    QTRY_COMPARE(page.hint(), "Output filename is not unique for this batch.");
    page.saveScreenshot();
    page.enter(page.item("Output 1"), "other", Qt::Key_Return);
    QVERIFY(!page.find("Duplicate 1"));
    QVERIFY(!page.find("Duplicate 3"));
}

void tst_BatchDownloadRows::lettersOfOtherCaseAreNoDuplicates()
{
    BatchPage page;
    page.open();
    page.add({"a", "b"});
    page.enter(page.item("Output 1"), "a", Qt::Key_Return);
    page.enter(page.item("Output 2"), "A", Qt::Key_Return);
    QVERIFY(!page.find("Duplicate 1"));
    page.enter(page.item("Output 2"), "a", Qt::Key_Return);
    QVERIFY(page.find("Duplicate 1"));
}

void tst_BatchDownloadRows::aRangeHasItsFields()
{
    BatchPage page;
    page.open();
    page.add({"a", "b", "c"});
    page.chooseRange(2, "Frames");
    page.chooseRange(3, "Time");
    QVERIFY(!page.find("Start 1"));
    QCOMPARE(page.text("Start 2"), "0");
    QCOMPARE(page.value(1, "rangeType").toInt(), 1);
    QCOMPARE(page.text("End 2"), "299");
    QCOMPARE(page.text("Start 3"), "032:01:00:00.000");
    QCOMPARE(page.text("End 3"), "032:01:00:03.000");
    page.saveScreenshot();
    // The end of the frames is then one more than the last frame.
    page.chooseRange(2, "Entire File");
    QVERIFY(!page.find("Start 2"));
    page.item("Range 2").forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_Down);
    page.settle();
    QCOMPARE(page.text("End 2"), "300");
    QVERIFY(!page.item("End 2").property("marked").toBool());
}

void tst_BatchDownloadRows::framesAreEntered_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isTaken");
    for (const char *text : {"0", "7", "299"})
        QTest::addRow("start %s", text) << "Start 1" << text << true;
    for (const char *text : {"300", "-1", "1.5", "x", ""})
        QTest::addRow("no start %s", text) << "Start 1" << text << false;
    for (const char *text : {"0", "299", "300"})
        QTest::addRow("end %s", text) << "End 1" << text << true;
    for (const char *text : {"301", "-1", "2.5", "y", ""})
        QTest::addRow("no end %s", text) << "End 1" << text << false;
}

void tst_BatchDownloadRows::framesAreEntered()
{
    QFETCH(const QString, field);
    QFETCH(const QString, text);
    QFETCH(const bool, isTaken);
    BatchPage page;
    page.open();
    page.add({"a"});
    page.chooseRange(1, "Frames");
    page.entry(0)->setProperty("startFrame", 1);
    page.entry(0)->setProperty("endFrame", 2);
    QQuickItem &item = page.item(field);
    item.forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_A, Qt::ControlModifier);
    page.press(Qt::Key_Delete);
    page.type(text);
    page.press(Qt::Key_Tab);
    QCOMPARE(page.text(field), text);
    QCOMPARE(item.property("fault").toString().isEmpty(), isTaken);
    const char *property = field == "Start 1" ? "startFrame" : "endFrame";
    QCOMPARE(page.value(0, property).toString() == text, isTaken);
    item.forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_Escape);
    QCOMPARE(page.text(field), page.value(0, property).toString());
}

void tst_BatchDownloadRows::theEndAllowsOneFrameMore()
{
    BatchPage page;
    auto empty = BatchPage::movie(1, "empty");
    empty.numFrames = 0;
    page.setDrive(empty);
    page.open();
    page.addDrive();
    page.chooseRange(1, "Frames");
    // The last frame of no frames, in 32 bits.
    QCOMPARE(page.text("End 1"), "4294967295");
    page.enter(page.item("End 1"), "0");
    QCOMPARE(page.value(0, "endFrame").toULongLong(), 0U);
    page.enter(page.item("Start 1"), "0");
    QCOMPARE(page.text("Start 1"), "0");
}

void tst_BatchDownloadRows::aRangeThatEndsBeforeItsStartIsMarked()
{
    BatchPage page;
    page.open();
    page.add({"a", "b"});
    page.chooseRange(1, "Frames");
    page.enter(page.item("Start 1"), "20");
    page.enter(page.item("End 1"), "20");
    QVERIFY(!page.barIsRed(0));
    page.enter(page.item("End 1"), "19");
    QVERIFY(page.barIsRed(0));
    QVERIFY(!page.barIsRed(1));
    QVERIFY(page.find("Not Valid 1"));
    QVERIFY(!page.find("Not Valid 2"));
    QVERIFY(page.item("Start 1").property("marked").toBool());
    QVERIFY(page.item("End 1").property("marked").toBool());
    page.saveScreenshot();
    // Only duplicates prevent the start.
    QVERIFY(page.enabled("Start"));
    page.chooseRange(1, "Entire File");
    QVERIFY(!page.barIsRed(0));
}

void tst_BatchDownloadRows::timesAreEntered_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isTaken");
    QTest::newRow("digits") << "032010001500"
                            << "032:01:00:01.500" << true;
    QTest::newRow("the last day") << "366235959999"
                                  << "366:23:59:59.999" << true;
    QTest::newRow("other characters are skipped") << "03201x0002250"
                                                  << "032:01:00:02.250" << true;
    QTest::newRow("no day") << "000010001500"
                            << "000:01:00:01.500" << false;
    QTest::newRow("no such day") << "367010001500"
                                 << "367:01:00:01.500" << false;
    QTest::newRow("no such hour") << "032240001500"
                                  << "032:24:00:01.500" << false;
    QTest::newRow("no such minute") << "032016001500"
                                    << "032:01:60:01.500" << false;
    QTest::newRow("no such second") << "032010060500"
                                    << "032:01:00:60.500" << false;
    QTest::newRow("incomplete") << "0320100"
                                << "032:01:00:." << false;
}

void tst_BatchDownloadRows::timesAreEntered()
{
    QFETCH(const QString, keys);
    QFETCH(const QString, text);
    QFETCH(const bool, isTaken);
    for (const auto &[field, property, leave] :
         {std::tuple("Start 1", "startTimeString", Qt::Key_Return),
          std::tuple("Start 1", "startTimeString", Qt::Key_Tab), std::tuple("End 1", "endTimeString", Qt::Key_Return),
          std::tuple("End 1", "endTimeString", Qt::Key_Backtab)}) {
        BatchPage page;
        page.open();
        page.add({"a"});
        page.chooseRange(1, "Time");
        const QString before = page.value(0, property).toString();
        QQuickItem &item = page.item(field);
        item.forceActiveFocus(Qt::TabFocusReason);
        page.press(Qt::Key_A, Qt::ControlModifier);
        page.press(Qt::Key_Delete);
        page.type(keys);
        page.press(leave);
        QCOMPARE(page.text(field), text);
        QCOMPARE(page.value(0, property).toString(), isTaken ? text : before);
        QCOMPARE(item.property("fault").toString().isEmpty(), isTaken);
        item.forceActiveFocus(Qt::TabFocusReason);
        page.press(Qt::Key_Escape);
        QCOMPARE(page.text(field), page.value(0, property).toString());
    }
}

void tst_BatchDownloadRows::aTimeThatEndsBeforeItsStartIsMarked()
{
    BatchPage page;
    page.open();
    page.add({"a"});
    page.chooseRange(1, "Time");
    QVERIFY(!page.barIsRed(0));
    page.enter(page.item("Start 1"), "032010003001");
    QVERIFY(page.barIsRed(0));
    QVERIFY(page.item("Start 1").property("marked").toBool());
    QVERIFY(page.item("End 1").property("marked").toBool());
    QCOMPARE(page.text("Start 1"), "032:01:00:03.001");
    QCOMPARE(page.item("Start 1").property("toolTip").toString(), "The end is before the start");
    page.hover("Not Valid 1");
    QTRY_COMPARE(page.hint(), "The end is before the start");
    page.saveScreenshot();
    page.enter(page.item("End 1"), "032010003001");
    QVERIFY(!page.barIsRed(0));
    QVERIFY(!page.find("Not Valid 1"));
}

void tst_BatchDownloadRows::aRemovedRowFadesAndShrinks()
{
    BatchPage page;
    page.open();
    page.add({"a", "b"});
    const QQuickItem *row = page.rows().constFirst();
    QCOMPARE(row->height(), 40.0);
    page.click("Remove 1");
    QCOMPARE(page.size(), 2);
    QVERIFY(!page.enabled("Remove 1"));
    QTRY_VERIFY(row->height() < 40 && row->opacity() < 1);
    QTRY_COMPARE(page.size(), 1);
    page.settle();
    QCOMPARE(page.text("Output 1"), "2-b");
    QCOMPARE(page.rows().size(), 1);
    QCOMPARE(page.rows().constFirst()->height(), 40.0);
    QCOMPARE(page.rows().constFirst()->opacity(), 1.0);
    // A row that is used again is shown in full.
    page.setDrive(BatchPage::movie(9, "nine"), 3);
    page.addDrive();
    for (const QQuickItem *each : page.rows()) {
        QCOMPARE(each->height(), 40.0);
        QCOMPARE(each->opacity(), 1.0);
    }
}

void tst_BatchDownloadRows::theFocusMovesToTheNextRow()
{
    BatchPage page;
    page.open();
    page.add({"a", "b", "c"});
    page.item("Output 2").forceActiveFocus(Qt::TabFocusReason);
    page.use("Remove 2", true);
    QTRY_COMPARE(page.size(), 2);
    page.settle();
    QVERIFY(page.item("Remove 2").hasActiveFocus());
    QCOMPARE(page.text("Output 2"), "3-c");
    page.press(Qt::Key_Space);
    QTRY_COMPARE(page.size(), 1);
    page.settle();
    QVERIFY(page.item("Remove 1").hasActiveFocus());
    page.press(Qt::Key_Return);
    QTRY_COMPARE(page.size(), 0);
    page.settle();
    QVERIFY(page.item("Add File(s)").hasActiveFocus());
    QVERIFY(page.findText("No output files."));
}

void tst_BatchDownloadRows::aRowLeavesOnlyItsOwnMovie()
{
    BatchPage page;
    page.open();
    page.add({"a", "b", "c", "d"});
    page.click("Remove 1");
    page.click("Remove 3");
    QTRY_COMPARE(page.size(), 2);
    QCOMPARE(page.value(0, "file").toString(), "b");
    QCOMPARE(page.value(1, "file").toString(), "d");
}

void tst_BatchDownloadRows::keysMoveBetweenRows()
{
    BatchPage page;
    page.setDrive(BatchPage::movie(1, "a"), 100);
    page.open();
    page.addDrive();
    const auto goes = [&page](Qt::Key key, const QString &name) {
        page.press(key);
        page.awaitFrame();
        const QQuickItem *item = page.find(name);
        const double y = item ? item->mapToItem(page.list(), {}).y() : -1;
        return item && item->hasActiveFocus() && y >= 0 && y + item->height() <= page.list()->height();
    };
    page.item("Output 1").forceActiveFocus(Qt::TabFocusReason);
    QVERIFY(goes(Qt::Key_Up, "Output 1"));
    for (int row = 2; row < 40; ++row)
        QVERIFY2(goes(Qt::Key_Down, QStringLiteral("Output %1").arg(row)), qPrintable(QString::number(row)));
    page.item("Remove 39").forceActiveFocus(Qt::TabFocusReason);
    QVERIFY(goes(Qt::Key_End, "Remove 100"));
    QVERIFY(goes(Qt::Key_Down, "Remove 100"));
    QVERIFY(goes(Qt::Key_Up, "Remove 99"));
    QVERIFY(goes(Qt::Key_Home, "Remove 1"));
    page.chooseRange(2, "Frames");
    page.chooseRange(3, "Frames");
    page.item("End 3").forceActiveFocus(Qt::TabFocusReason);
    QVERIFY(goes(Qt::Key_Up, "End 2"));
    // A row without the field has an output name.
    QVERIFY(goes(Qt::Key_Up, "Output 1"));
    // The arrow keys of a box are its own.
    page.item("Range 1").forceActiveFocus(Qt::TabFocusReason);
    QVERIFY(goes(Qt::Key_Down, "Range 1"));
    QCOMPARE(page.shown("Range 1"), "Frames");
    page.press(Qt::Key_PageDown);
    QVERIFY(goes(Qt::Key_PageUp, "Range 1"));
}

void tst_BatchDownloadRows::manyRowsDoNotStallThePage()
{
    BatchPage page;
    page.setDrive(BatchPage::movie(1, "a"), 5000);
    page.addDrive();
    QCOMPARE(page.size(), 5000);
    QVERIFY(awaitHiddenPages(page));
    page.open();
    page.click("Close");
    page.settle();
    QQuickItem &button = page.item("Batch Download Movies");
    {
        Stall stall;
        page.click(&button);
        page.awaitFrame();
        const qint64 longest = stall.milliseconds();
        QVERIFY2(longest <= longestStall, qPrintable(QString::number(longest)));
    }
    // Only visible rows are created.
    QVERIFY2(page.rows().size() >= 10 && page.rows().size() < 60, qPrintable(QString::number(page.rows().size())));
    page.item("Remove 1").forceActiveFocus(Qt::TabFocusReason);
    Stall stall;
    page.press(Qt::Key_End);
    page.awaitFrame();
    const qint64 longest = stall.milliseconds();
    QVERIFY2(longest <= longestStall, qPrintable(QString::number(longest)));
    QVERIFY(page.item("Remove 5000").hasActiveFocus());
    QVERIFY(page.rows().size() < 60);
    page.saveScreenshot();
}

void tst_BatchDownloadRows::aRowOutOfViewKeepsNoText()
{
    BatchPage page;
    page.setDrive(BatchPage::movie(1, "a"), 200);
    page.open();
    page.addDrive();
    const auto scrollTo = [&page](int row) {
        QMetaObject::invokeMethod(page.list(), "positionViewAtIndex", Q_ARG(int, row), Q_ARG(int, 0));
        page.settle();
    };
    const auto type = [&page](const QString &field, const QString &text) {
        page.item(field).forceActiveFocus(Qt::TabFocusReason);
        page.press(Qt::Key_A, Qt::ControlModifier);
        page.type(text);
    };
    type("Output 1", " not a name");
    page.item("Output 2").forceActiveFocus(Qt::TabFocusReason);
    type("Output 2", "a name");
    scrollTo(150);
    QCOMPARE(page.value(1, "outFile").toString(), "a name");
    for (const QQuickItem *row : page.rows())
        for (const QQuickItem *field : row->findChildren<QQuickItem *>())
            if (field->inherits("QQuickTextField"))
                QCOMPARE(field->property("text").toString(), "1-a");
    scrollTo(0);
    QCOMPARE(page.text("Output 1"), "1-a");
    QCOMPARE(page.text("Output 2"), "a name");
}

ZVT_TEST(tst_BatchDownloadRows)
#include "tst_BatchDownloadRows.moc"
