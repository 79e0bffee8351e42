#include "tests/page/DownloadPage.h"
#include "tests/page/MovieListPage.h"
#include "tests/support/Test.h"

namespace
{

const QQuickItem &progressBar(const DownloadPage &page) { return page.item(QStringLiteral("Download")); }

/// Lets the camera ask for a download, which is held. Returns whether its progress is shown.
bool requestHeld(SsdPage &page)
{
    for (const char *call : {"zvtSsdAutoDownloadStart", "zvtSsdAutoDownloadDone", "controller.DownloadMovie"})
        page.gate().script(call, true);
    page.gate().hold("controller.DownloadMovie");
    page.enterState(RequestAutoDownload);
    const bool runs = page.gate().waitHeld("controller.DownloadMovie");
    page.awaitFrame();
    return runs && page.findText("Transferring movie...");
}

/// Ends the download. Returns whether the progress dialog has closed.
bool finishRequested(SsdPage &page)
{
    page.gate().script("zvtGetSsdState", Complete);
    page.gate().release("controller.DownloadMovie");
    const bool ended = QTest::qWaitFor([&page] { return !page.value("downloading").toBool(); });
    page.settle();
    return ended && !page.findText("Transferring movie...");
}

} // namespace

/// The dialogs that show the progress of a download, and its failure.
class tst_DownloadProgress : public Test
{
    Q_OBJECT

private slots:
    void progressIsShown();
    void textsFollowTheStage();
    void onlyAbortEndsIt();
    void keysOfTheOperatorDoNotAbort();
    void requestedDownloadLeavesTheListBelow();
    void requestedDownloadLeavesTheFieldBelow();
    void abortShowsTheFailure_data();
    void abortShowsTheFailure();
    void failureIsShown();
    void successShowsNothing();
    void progressIsShownOnOtherPages();
    void pageOutlivesItsModel();
};

void tst_DownloadProgress::progressIsShown()
{
    DownloadPage page;
    page.startHeld("controller.DownloadMovie");
    QVERIFY(page.findText("Transferring movie..."));
    QCOMPARE(progressBar(page).property("value").toDouble(), 0.0);
    QVERIFY(!progressBar(page).property("indeterminate").toBool());
    QMetaObject::invokeMethod(page.recorder(), "progressChangedDownloadWorker", Q_ARG(int, 42));
    QCOMPARE(progressBar(page).property("position").toDouble(), 0.42);
    QCOMPARE(SsdPage::descriptionOf(progressBar(page)), "42 %");
    page.awaitFrame();
    page.saveScreenshot();
}

void tst_DownloadProgress::textsFollowTheStage()
{
    DownloadPage page;
    page.startHeld("controller.FindFrameRange", "IRIG Range");
    QTRY_VERIFY(page.findText("Finding frame range from time range..."));
    QVERIFY(progressBar(page).property("indeterminate").toBool());
    page.awaitFrame();
    page.saveScreenshot("finding");
    page.gate().hold("controller.DownloadMovie");
    page.gate().release("controller.FindFrameRange");
    QVERIFY(page.gate().waitHeld("controller.DownloadMovie"));
    QTRY_VERIFY(page.findText("Transferring movie..."));
    QVERIFY(!progressBar(page).property("indeterminate").toBool());
    QMetaObject::invokeMethod(page.recorder(), "grabbingDroppedFramesChangedDownloadWorker", Q_ARG(bool, true));
    QVERIFY(page.findText("Grabbing dropped frames..."));
    QMetaObject::invokeMethod(page.recorder(), "findingFrameLimitsChangedDownloadWorker", Q_ARG(bool, true));
    QVERIFY(page.findText("Finding frame range from time range..."));
}

void tst_DownloadProgress::onlyAbortEndsIt()
{
    DownloadPage page;
    page.startHeld("controller.DownloadMovie");
    page.press(Qt::Key_Escape);
    QTest::mouseClick(&page.window(), Qt::LeftButton, Qt::NoModifier, {4, 4});
    page.awaitFrame();
    QCOMPARE(page.dialogTitle(), "Downloading");
    QVERIFY(page.isShaded() && page.enabled("Abort"));
    QVERIFY(!page.find("Close") && !page.find("Cancel"));
}

// The camera can start a download while the operator types.
void tst_DownloadProgress::keysOfTheOperatorDoNotAbort()
{
    DownloadPage page;
    QVERIFY(page.record(5));
    page.startHeld("controller.DownloadMovie");
    QVERIFY(!page.item("Abort").hasActiveFocus());
    page.press(Qt::Key_Space);
    page.press(Qt::Key_Return);
    QVERIFY(page.finishHeld());
    QCOMPARE(page.dialogTitle(), "");
    QVERIFY(QFile::exists(page.file("Shot.rqs")));
}

void tst_DownloadProgress::requestedDownloadLeavesTheListBelow()
{
    MovieListPage page;
    page.open();
    page.clickRow(2);
    const size_t mark = page.gate().mark();
    QVERIFY(requestHeld(page));
    QVERIFY(!page.list()->hasActiveFocus());
    for (const auto key : {Qt::Key_Down, Qt::Key_Space, Qt::Key_Return, Qt::Key_Escape})
        page.press(key);
    QVERIFY(page.findText("Transferring movie...") && page.findText("Load Movie"));
    QVERIFY(finishRequested(page));
    QCOMPARE(page.dialogTitle(), "Load Movie");
    QCOMPARE(page.selected(), QList<int>{2});
    QVERIFY(!page.commands(mark).join('\n').contains("zvtSsdLoadMovie"));
    QVERIFY(page.list()->hasActiveFocus());
    page.press(Qt::Key_Down);
    QCOMPARE(page.selected(), QList<int>{3});
}

void tst_DownloadProgress::requestedDownloadLeavesTheFieldBelow()
{
    DownloadPage page;
    page.open();
    page.item("Start Frame").forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_Home);
    page.type("2");
    QVERIFY(requestHeld(page));
    page.type("9");
    page.press(Qt::Key_Escape);
    QVERIFY(page.findText("Transferring movie..."));
    QVERIFY(finishRequested(page));
    QCOMPARE(page.dialogTitle(), "Download Settings");
    QVERIFY(page.item("Start Frame").hasActiveFocus());
    QCOMPARE(page.text("Start Frame"), "27");
}

void tst_DownloadProgress::abortShowsTheFailure_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::newRow("by mouse") << false;
    QTest::newRow("by keyboard") << true;
}

void tst_DownloadProgress::abortShowsTheFailure()
{
    QFETCH(const bool, byKeyboard);
    DownloadPage page;
    QVERIFY(page.record(5));
    page.startHeld("controller.DownloadMovie");
    if (byKeyboard) {
        page.press(Qt::Key_Tab);
        QVERIFY(page.item("Abort").hasActiveFocus());
        page.press(Qt::Key_Space);
    } else {
        page.click("Abort");
    }
    QCOMPARE(page.dialogTitle(), "Downloading");
    // The transfer ends at its first frame.
    QVERIFY(!page.finishHeld());
    QCOMPARE(page.value("progress").toInt(), 20);
    QCOMPARE(page.dialogTitle(), "Error");
}

void tst_DownloadProgress::failureIsShown()
{
    DownloadPage page;
    page.gate().script("controller.DownloadMovie", false);
    page.open();
    page.answerFile("Shot.rqs");
    page.save();
    QCOMPARE(page.dialogTitle(), "Error");
    QVERIFY(page.findText("Failed to download movie."));
    page.saveScreenshot();
    page.press(Qt::Key_Return);
    page.settle();
    QCOMPARE(page.dialogTitle(), "");
}

void tst_DownloadProgress::successShowsNothing()
{
    DownloadPage page;
    page.startHeld("controller.DownloadMovie");
    QVERIFY(page.finishHeld());
    QCOMPARE(page.dialogTitle(), "");
    QVERIFY(page.item("Download Movie").hasActiveFocus());
}

void tst_DownloadProgress::progressIsShownOnOtherPages()
{
    PageDriver driver;
    auto &gate = driver.rig().gate();
    gate.script("controller.DownloadMovie", true);
    gate.hold("controller.DownloadMovie");
    QMetaObject::invokeMethod(driver.tabModel("ssdTabModel"), "downloadEntireMovie",
                              Q_ARG(QString, QStringLiteral("file:///nowhere/Shot.rqs")));
    QVERIFY(gate.waitHeld("controller.DownloadMovie"));
    driver.awaitFrame();
    QVERIFY(driver.findText("Transferring movie..."));
    gate.release("controller.DownloadMovie");
    QTRY_VERIFY(!driver.findText("Transferring movie..."));
}

void tst_DownloadProgress::pageOutlivesItsModel()
{
    DownloadPage page;
    page.startHeld("controller.DownloadMovie");
    page.gate().release("controller.DownloadMovie");
    page.deleteModel();
    page.awaitFrame();
    QTRY_VERIFY(!page.findText("Transferring movie..."));
}

ZVT_TEST(tst_DownloadProgress)
#include "tst_DownloadProgress.moc"
