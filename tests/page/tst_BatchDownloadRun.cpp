#include "tests/page/BatchPage.h"
#include "tests/support/Test.h"

#include <QFileInfo>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QUrl>

/// Runs of batch downloads in their dialog: what it shows meanwhile, and how it ends.
class tst_BatchDownloadRun : public Test
{
    Q_OBJECT

private slots:
    void theStateOfARunIsShown();
    void editsAreDisabledInARun();
    void startsByEachWay_data();
    void startsByEachWay();
    void anEditIsEnteredBeforeTheStart();
    void typedTextIsDiscardedByTheStart();
    void theListFollowsTheRun();
    void keysScrollTheListInARun();
    void cancelEndsTheRun_data();
    void cancelEndsTheRun();
    void aRunCannotBeLeft();
    void aRowThatFadesAtTheStartComesBack();
    void closingResetsAndEmptiesTheList();
    void theListIsKeptWithoutAnotherRun();
    void thePageCanBeDeletedInARun();
    void moviesOfTheDriveAreDownloaded();

    void eachStatusHasItsColor_data();
    void eachStatusHasItsColor();
    void eachStageHasItsIcon_data();
    void eachStageHasItsIcon();
    void progressIsShownInTheRunningStatuses_data();
    void progressIsShownInTheRunningStatuses();

private:
    /// Opens the dialog with movies, of which the second one fails.
    static void openWith(BatchPage &page, const QList<QByteArray> &names)
    {
        page.open();
        page.add(names);
        page.gate().failNext("zvtSsdLoadMovie", 2);
    }
    /// The counts that the dialog with the results shows for succeeded, failed and not started movies.
    static QStringList results(BatchPage &page)
    {
        QStringList results;
        for (const char *name : {"Succeeded", "Failed", "Not Started"})
            if (const QQuickItem *count = page.find(name, page.dialog("Batch Download Results")))
                results << count->property("text").toString() + (count->isEnabled() ? "" : " dimmed");
        return results;
    }
    static QObject *create(BatchPage &page, const QString &qml, const QVariantMap &properties)
    {
        return page.create("import zvt.dialogs\n" + qml, properties);
    }
};

void tst_BatchDownloadRun::theStateOfARunIsShown()
{
    BatchPage page;
    openWith(page, {"a", "b", "c", "d"});
    QVERIFY(page.startAndHold("controller.DownloadMovie"));
    QVERIFY(page.downloading());
    QCOMPARE(page.rowColor(0), "#48484f");
    QCOMPARE(page.rowColor(1), "#202020");
    QVERIFY(page.find("Downloading"));
    QVERIFY(page.find("In Progress"));
    QVERIFY(page.find("Batch Progress"));
    QCOMPARE(page.item("Batch Progress").property("value").toDouble(), 0.0);
    QCOMPARE(page.text("Files"), "1 / 4");
    page.saveScreenshot("first");
    // The second one fails, and the third one is loaded.
    page.gate().hold("zvtSsdUnload");
    page.gate().release("controller.DownloadMovie");
    QVERIFY(page.gate().waitHeld("zvtSsdUnload"));
    page.gate().hold("controller.DownloadMovie");
    page.gate().release("zvtSsdUnload");
    QVERIFY(page.gate().waitHeld("controller.DownloadMovie"));
    page.deliver();
    QCOMPARE(page.rowColor(0), "#186a3b");
    QCOMPARE(page.rowColor(1), "#78281f");
    QCOMPARE(page.rowColor(2), "#48484f");
    QCOMPARE(page.text("Files"), "3 / 4");
    QCOMPARE(page.item("Batch Progress").property("value").toDouble(), 0.5);
    page.saveScreenshot("third");
    QVERIFY(page.finish());
    QVERIFY(page.findText("Batch Download Results"));
    page.saveScreenshot("results");
    QCOMPARE(page.rowColor(3), "#186a3b");
    QCOMPARE(results(page), QStringList({"3", "1", "0 dimmed"}));
    page.use("OK", true);
    page.settle();
    QVERIFY(page.isOpen());
    QVERIFY(!page.findText("Batch Download Results"));
    QVERIFY(page.item("Close").hasActiveFocus());
    QCOMPARE(page.text("Files"), "4");
    QVERIFY(!page.find("Batch Progress"));
    page.saveScreenshot("after");
}

void tst_BatchDownloadRun::editsAreDisabledInARun()
{
    BatchPage page;
    openWith(page, {"a", "b", "c"});
    page.batch()->setProperty("convertToQdseq", true);
    page.batch()->setProperty("addCalFile", true);
    page.chooseRange(1, "Frames");
    page.chooseRange(2, "Time");
    const QStringList names{"Output Directory",
                            "Choose Output Directory",
                            "Add File(s)",
                            "Remove All Files",
                            "Convert to QDSEQ files after downloading",
                            "Keep RQS file after converting",
                            "Add user calibration",
                            "Calibration File",
                            "Choose Calibration File",
                            "Output 1",
                            "Range 1",
                            "Start 1",
                            "End 1",
                            "Remove 1",
                            "Start 2",
                            "End 2",
                            "Output 3",
                            "Remove 3",
                            "Start"};
    for (const QString &name : names)
        QVERIFY2(page.enabled(name), qPrintable(name));
    QVERIFY(page.startAndHold("controller.DownloadMovie"));
    for (const QString &name : names)
        QVERIFY2(!page.enabled(name), qPrintable(name));
    QVERIFY(page.enabled("Cancel"));
    page.batch()->setProperty("convertToQdseq", false);
    QVERIFY(page.finish());
    page.click("OK");
    page.settle();
    QVERIFY(page.enabled("Output 1"));
    QVERIFY(page.enabled("Start"));
}

void tst_BatchDownloadRun::startsByEachWay_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("by mouse") << Qt::Key_unknown;
    QTest::newRow("by Space") << Qt::Key_Space;
    QTest::newRow("by Enter") << Qt::Key_Return;
}

void tst_BatchDownloadRun::startsByEachWay()
{
    QFETCH(const Qt::Key, key);
    BatchPage page;
    page.open();
    page.add({"a", "b"});
    page.gate().hold("zvtSsdLoadMovie");
    page.item("Output 2").forceActiveFocus(Qt::TabFocusReason);
    if (key == Qt::Key_unknown) {
        page.click("Start");
    } else {
        page.item("Start").forceActiveFocus(Qt::TabFocusReason);
        page.press(key);
    }
    QVERIFY(page.gate().waitHeld("zvtSsdLoadMovie"));
    page.deliver();
    QVERIFY(page.downloading());
    // Not the button that stops the run.
    QCOMPARE(page.window().activeFocusItem(), page.list());
    page.press(Qt::Key_Space);
    page.press(Qt::Key_Return);
    page.press(Qt::Key_Tab);
    QVERIFY(page.item("Cancel").hasActiveFocus());
    page.press(Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(page.list()->hasActiveFocus());
    QVERIFY(page.finish());
    QCOMPARE(results(page), QStringList({"2", "0 dimmed", "0 dimmed"}));
    page.press(Qt::Key_Return);
    page.settle();
    QVERIFY(page.item("Close").hasActiveFocus());
    QCOMPARE(page.item("Close").property("visualFocus").toBool(), key != Qt::Key_unknown);
}

void tst_BatchDownloadRun::anEditIsEnteredBeforeTheStart()
{
    BatchPage page;
    page.open();
    page.add({"a", "b"});
    page.item("Output 1").forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_A, Qt::ControlModifier);
    page.type("2-b");
    page.click("Start");
    page.settle();
    QVERIFY(page.findText("All output filenames must be unique."));
    QVERIFY(!page.downloading());
}

void tst_BatchDownloadRun::typedTextIsDiscardedByTheStart()
{
    BatchPage page;
    page.open();
    page.add({"a"});
    page.chooseRange(1, "Frames");
    page.enter(page.item("End 1"), "999");
    QCOMPARE(page.text("End 1"), "999");
    page.enter(page.item("Output 1"), " ");
    QVERIFY(page.startAndHold("controller.DownloadMovie"));
    QCOMPARE(page.text("End 1"), "299");
    QCOMPARE(page.text("Output 1"), "1-a");
    QVERIFY(page.finish());
}

void tst_BatchDownloadRun::theListFollowsTheRun()
{
    BatchPage page;
    page.open();
    page.add(QList<QByteArray>(60, "movie"));
    page.gate().hold("zvtSsdLoadMovie");
    page.click("Start");
    for (int row = 1; row <= 30; ++row) {
        QVERIFY(page.gate().waitHeld("zvtSsdLoadMovie"));
        page.deliver();
        QVERIFY2(page.showsRow(row), qPrintable(QString::number(row)));
        // The call after the one that is held for this row.
        page.gate().hold("zvtSsdUnload");
        page.gate().release("zvtSsdLoadMovie");
        QVERIFY(page.gate().waitHeld("zvtSsdUnload"));
        page.gate().hold("zvtSsdLoadMovie");
        page.gate().release("zvtSsdUnload");
    }
    QVERIFY(page.gate().waitHeld("zvtSsdLoadMovie"));
    page.deliver();
    QVERIFY(page.showsRow(31));
    QVERIFY(!page.showsRow(1));
    QVERIFY(!page.showsRow(60));
    QVERIFY(page.finish());
    page.click("OK");
    page.settle();
    QVERIFY(page.showsRow(60));
    QVERIFY(!page.showsRow(1));
    page.saveScreenshot();
    page.gate().hold("controller.DownloadMovie");
    page.click("Start");
    QVERIFY(page.gate().waitHeld("controller.DownloadMovie"));
    page.deliver();
    QVERIFY(page.showsRow(1));
    QVERIFY(page.finish());
}

void tst_BatchDownloadRun::keysScrollTheListInARun()
{
    BatchPage page;
    page.open();
    page.add(QList<QByteArray>(60, "movie"));
    QVERIFY(page.startAndHold("zvtSsdLoadMovie"));
    for (const auto &[key, row] : {std::pair(Qt::Key_End, 60), std::pair(Qt::Key_Home, 1)}) {
        page.press(key);
        page.awaitFrame();
        QVERIFY(page.showsRow(row));
        QVERIFY(!page.showsRow(61 - row));
        QCOMPARE(page.window().activeFocusItem(), page.list());
    }
    QVERIFY(page.finish());
}

void tst_BatchDownloadRun::cancelEndsTheRun_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::newRow("by mouse") << false;
    QTest::newRow("by keyboard") << true;
}

void tst_BatchDownloadRun::cancelEndsTheRun()
{
    QFETCH(const bool, byKeyboard);
    BatchPage page;
    page.open();
    page.add({"a", "b", "c"});
    QVERIFY(page.startAndHold("controller.DownloadMovie"));
    page.use("Cancel", byKeyboard);
    QVERIFY(page.isOpen());
    QVERIFY(page.downloading());
    QVERIFY(page.finish());
    QCOMPARE(results(page), QStringList({"1", "0 dimmed", "2"}));
    page.saveScreenshot();
    page.click("OK");
    page.settle();
    QCOMPARE(page.rowColor(1), "#202020");
    QVERIFY(page.enabled("Close"));
}

void tst_BatchDownloadRun::aRunCannotBeLeft()
{
    BatchPage page;
    page.open();
    page.add({"a"});
    QVERIFY(page.startAndHold("controller.DownloadMovie"));
    QVERIFY(!page.find("Close"));
    page.press(Qt::Key_Escape);
    page.deliver();
    QVERIFY(page.isOpen());
    QVERIFY(page.downloading());
    QVERIFY(page.finish());
}

void tst_BatchDownloadRun::aRowThatFadesAtTheStartComesBack()
{
    BatchPage page;
    page.open();
    page.add({"a", "b"});
    page.gate().hold("zvtSsdLoadMovie");
    page.click("Remove 2");
    QMetaObject::invokeMethod(page.batch(), "start");
    QVERIFY(page.gate().waitHeld("zvtSsdLoadMovie"));
    QTRY_VERIFY(!page.rows()[1]->property("_leaving").value<QObject *>());
    page.deliver();
    QCOMPARE(page.size(), 2);
    QCOMPARE(page.rows()[1]->height(), 40.0);
    QCOMPARE(page.rows()[1]->opacity(), 1.0);
    QVERIFY(page.finish());
    QCOMPARE(results(page), QStringList({"2", "0 dimmed", "0 dimmed"}));
}

void tst_BatchDownloadRun::closingResetsAndEmptiesTheList()
{
    BatchPage page;
    openWith(page, {"a", "b"});
    page.click("Start");
    QVERIFY(page.finish());
    page.click("OK");
    page.settle();
    QCOMPARE(page.value(0, "status").toInt(), 7);
    const QSignalSpy resets(page.entry(0), SIGNAL(statusChanged()));
    page.click("Close");
    QCOMPARE(resets.count(), 1);
    QVERIFY(!page.isOpen());
    page.settle();
    QCOMPARE(page.size(), 0);
    page.open();
    QVERIFY(page.findText("No output files."));
}

void tst_BatchDownloadRun::theListIsKeptWithoutAnotherRun()
{
    BatchPage page;
    page.open();
    page.add({"a"});
    page.click("Start");
    QVERIFY(page.finish());
    page.click("OK");
    page.settle();
    page.click("Close");
    page.settle();
    page.open();
    page.add({"b"});
    page.click("Close");
    page.settle();
    QCOMPARE(page.size(), 1);
}

void tst_BatchDownloadRun::thePageCanBeDeletedInARun()
{
    BatchPage page;
    page.open();
    page.add({"a", "b"});
    QObject *batch = page.batch();
    QVERIFY(page.startAndHold("controller.DownloadMovie"));
    page.deletePage();
    page.gate().release("*");
    QTRY_VERIFY(!batch->property("downloading").toBool());
    QCOMPARE(batch->property("itemsSucceeded").toInt(), 2);
}

void tst_BatchDownloadRun::moviesOfTheDriveAreDownloaded()
{
    const QTemporaryDir folder;
    BatchPage page;
    for (const char *call : {"controller.DownloadMovie", "zvtSsdLoadMovie", "zvtSsdStopBuffer", "zvtSsdUnload"})
        page.gate().script(call, {});
    page.open();
    page.batch()->setProperty("outputDir", QUrl::fromLocalFile(folder.path()).toString());
    page.addDrive();
    page.saveScreenshot("before");
    // Movies of all sizes, but few frames of each, and one that fails: a movie without frames has no frame 9.
    const int movies = page.size();
    QVERIFY(movies > 1);
    int empty = 0;
    for (int row = 0; row < movies; ++row) {
        page.entry(row)->setProperty("rangeType", 1);
        page.entry(row)->setProperty("endFrame", 9);
        empty += page.value(row, "totalFrames").toInt() == 0 ? 1 : 0;
    }
    page.click("Start");
    QVERIFY(QTest::qWaitFor([&] { return page.findText("Batch Download Results") != nullptr; }, 60'000));
    page.saveScreenshot("results");
    QCOMPARE(page.batch()->property("itemsSucceeded").toInt(), movies - empty);
    QCOMPARE(page.batch()->property("itemsFailed").toInt(), empty);
    for (int row = 0; row < movies; ++row)
        QCOMPARE(QFileInfo::exists(folder.filePath(page.value(row, "outFile").toString() + ".rqs")),
                 page.value(row, "totalFrames").toInt() > 0);
}

void tst_BatchDownloadRun::eachStatusHasItsColor_data()
{
    QTest::addColumn<QString>("color");
    QTest::newRow("0") << "#202020";
    for (const char *running : {"1", "2", "3", "4", "5"})
        QTest::newRow(running) << "#48484f";
    QTest::newRow("6") << "#78281f";
    QTest::newRow("7") << "#186a3b";
}

void tst_BatchDownloadRun::eachStatusHasItsColor()
{
    QFETCH(const QString, color);
    BatchPage page;
    const QObject *back = create(page, "BatchBackground { progress: 0; downloading: false }",
                                 {{"status", QByteArray(QTest::currentDataTag()).toInt()}});
    QCOMPARE(back->property("color").value<QColor>().name(), color);
}

void tst_BatchDownloadRun::eachStageHasItsIcon_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("glyph");
    QTest::addColumn<QString>("color");
    QTest::newRow("1") << ""
                       << ""
                       << "#ffffff";
    QTest::newRow("2") << "Finding Frame Range" << QStringLiteral("\uf002") << "#ffffff";
    QTest::newRow("3") << "Downloading" << QStringLiteral("\uf019") << "#ffffff";
    QTest::newRow("4") << "Fetching Dropped Frames" << QStringLiteral("\uf019") << "#ffe699";
    QTest::newRow("5") << "Converting" << QStringLiteral("\uf0ec") << "#ffffff";
}

void tst_BatchDownloadRun::eachStageHasItsIcon()
{
    QFETCH(const QString, name);
    QFETCH(const QString, glyph);
    QFETCH(const QString, color);
    BatchPage page;
    auto *icon = qobject_cast<QQuickItem *>(
        create(page, "BatchStageIcon { y: 100 }", {{"status", QByteArray(QTest::currentDataTag()).toInt()}}));
    const QObject *label = icon->findChild<QObject *>("stageGlyph");
    QCOMPARE(PageDriver::nameOf(*icon), name);
    QCOMPARE(label->property("text").toString(), glyph);
    QCOMPARE(label->property("color").value<QColor>().name(), color);
}

void tst_BatchDownloadRun::progressIsShownInTheRunningStatuses_data()
{
    QTest::addColumn<bool>("isShown");
    QTest::addColumn<bool>("isKnown");
    for (const char *waiting : {"0", "6", "7"})
        QTest::newRow(waiting) << false << false;
    for (const char *unknown : {"1", "2"})
        QTest::newRow(unknown) << true << false;
    for (const char *known : {"3", "4", "5"})
        QTest::newRow(known) << true << true;
}

void tst_BatchDownloadRun::progressIsShownInTheRunningStatuses()
{
    QFETCH(const bool, isShown);
    QFETCH(const bool, isKnown);
    BatchPage page;
    QObject *back
        = create(page, "BatchBackground { y: 100; width: 400; height: 40; progress: 0.25; downloading: true }",
                 {{"status", QByteArray(QTest::currentDataTag()).toInt()}});
    const QObject *walk = back->findChild<QObject *>("walk");
    QCOMPARE(walk != nullptr, isShown);
    if (isShown) {
        QCOMPARE(walk->property("running").toBool(), !isKnown);
        QCOMPARE(walk->parent()->property("value").toDouble(), 0.25);
    }
    back->setProperty("downloading", false);
    page.settle();
    QVERIFY(!back->findChild<QObject *>("walk"));
}

ZVT_TEST(tst_BatchDownloadRun)
#include "tst_BatchDownloadRun.moc"
