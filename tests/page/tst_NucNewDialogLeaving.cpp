#include "tests/page/NucWizard.h"
#include "tests/support/Test.h"

#include <QThreadPool>

namespace
{

const QString leftAlone
    = QStringLiteral("The camera goes on with the correction by itself. Connect it again to continue here.");
const QString keptResult = QStringLiteral(
    "The camera keeps the correction until it is accepted or discarded. Connect it again to decide here.");

} // namespace

/// The wizard when its camera disconnects during a run, and when its page or its model is deleted.
class tst_NucNewDialogLeaving : public Test
{
    Q_OBJECT

private slots:
    void disconnectionReleasesThePage_data();
    void disconnectionReleasesThePage();
    void runContinuesAfterAReconnection();
    void acceptingWaitsForTheConnection();
    void otherCameraIsNotAsked_data();
    void otherCameraIsNotAsked();
    void runMayEndAsTheCameraDisconnects();
    void closedRunContinues_data();
    void closedRunContinues();
    void closedRunThatFailedIsForgotten();
    void otherCameraIsNotShownTheRun();
    void resultWaitsForItsCamera();
    void unknownRunIsEnded_data();
    void unknownRunIsEnded();
    void everyStatusCanBeLeft_data();
    void everyStatusCanBeLeft();
    void runEndsWithThePage_data();
    void runEndsWithThePage();
    void runEndsWithTheModel();
    void itOutlivesItsModel();
};

void tst_NucNewDialogLeaving::disconnectionReleasesThePage_data()
{
    QTest::addColumn<bool>("ended");
    QTest::newRow("run") << false;
    QTest::newRow("result") << true;
}

void tst_NucNewDialogLeaving::disconnectionReleasesThePage()
{
    QFETCH(const bool, ended);
    NucWizard wizard;
    wizard.start();
    if (ended)
        wizard.end();
    wizard.setConnected(false);
    QVERIFY(wizard.isOpen());
    QVERIFY(wizard.findText(ended ? keptResult : leftAlone));
    QVERIFY(!wizard.findText(ended ? leftAlone : keptResult));
    QVERIFY(!wizard.pageBlocked());
    QVERIFY(wizard.page()->isEnabled());
    QVERIFY(wizard.hostMayClose());
    QVERIFY(!wizard.enabled(ended ? "Accept" : "Next"));
    // The tool bar can be used.
    wizard.click("Configuration");
    QTRY_VERIFY(wizard.shows("About"));
    wizard.press(Qt::Key_Escape);
    QTRY_VERIFY(!wizard.shows("About"));
    const size_t mark = wizard.gate().mark();
    wizard.use("Close");
    QVERIFY(!wizard.isOpen());
    QCOMPARE(wizard.commands(mark), QStringList());
}

void tst_NucNewDialogLeaving::runContinuesAfterAReconnection()
{
    NucWizard wizard;
    wizard.start();
    wizard.setConnected(false);
    wizard.setConnected(true);
    QVERIFY(!wizard.findText(leftAlone));
    QVERIFY(wizard.pageBlocked());
    QVERIFY(!wizard.hostMayClose());
    wizard.pollStatus(6, "Place the second source");
    QVERIFY(wizard.enabled("Next"));
    wizard.end();
    const size_t mark = wizard.gate().mark();
    wizard.use("Accept");
    QCOMPARE(wizard.commands(mark), QStringList({"zvtAcceptNUC", "zvtSaveNUCAs 0, \"new\""}));
}

void tst_NucNewDialogLeaving::acceptingWaitsForTheConnection()
{
    NucWizard wizard;
    wizard.start();
    wizard.end();
    wizard.setConnected(false);
    QVERIFY(!wizard.enabled("Accept"));
    wizard.setConnected(true);
    QVERIFY(wizard.enabled("Accept"));
    const size_t mark = wizard.gate().mark();
    wizard.use("Accept");
    QCOMPARE(wizard.commands(mark), QStringList({"zvtAcceptNUC", "zvtSaveNUCAs 0, \"new\""}));
}

void tst_NucNewDialogLeaving::otherCameraIsNotAsked_data() { disconnectionReleasesThePage_data(); }

void tst_NucNewDialogLeaving::otherCameraIsNotAsked()
{
    QFETCH(const bool, ended);
    NucWizard wizard;
    wizard.start();
    if (ended)
        wizard.end();
    wizard.setConnected(false);
    wizard.gate().script("zvtGetCameraSN", "ZE-999999");
    const size_t mark = wizard.gate().mark();
    wizard.setConnected(true);
    wizard.end();
    QVERIFY(!wizard.isOpen());
    QVERIFY(wizard.hostMayClose());
    QCOMPARE(wizard.commands(mark), QStringList());
}

// The last poll has found the end of the run when the camera disconnects.
void tst_NucNewDialogLeaving::runMayEndAsTheCameraDisconnects()
{
    NucWizard wizard;
    wizard.start();
    wizard.gate().script("zvtGetNUCStatus", QVariantList{0, "Ready"});
    QMetaObject::invokeMethod(wizard.statusTimer(), "timeout");
    QVERIFY(QThreadPool::globalInstance()->waitForDone(10000));
    wizard.setConnected(false);
    QVERIFY(wizard.findText(keptResult));
    QVERIFY(!wizard.enabled("Accept"));
    wizard.setConnected(true);
    QVERIFY(wizard.enabled("Accept"));
}

void tst_NucNewDialogLeaving::closedRunContinues_data()
{
    QTest::addColumn<QString>("end"); // When the run ends.
    for (const char *end :
         {"before the disconnection", "before the reconnection", "with the reconnection", "after the reconnection"})
        QTest::newRow(end) << QString::fromLatin1(end);
}

// The wizard opens by itself.
void tst_NucNewDialogLeaving::closedRunContinues()
{
    QFETCH(const QString, end);
    NucWizard wizard;
    wizard.process()->setProperty("preset", 2);
    wizard.start();
    if (end == "before the disconnection")
        wizard.end();
    wizard.setConnected(false);
    wizard.use("Close");
    QVERIFY(wizard.hostMayClose());
    if (end == "before the reconnection")
        wizard.gate().script("zvtGetNUCStatus", QVariantList{0, "Ready"});
    if (end == "with the reconnection") {
        wizard.gate().script("zvtGetNUCStatus", QVariantList{0, "Ready"});
        wizard.rig().camera().connect();
        QMetaObject::invokeMethod(wizard.statusTimer(), "timeout");
        QVERIFY(QThreadPool::globalInstance()->waitForDone(10000));
    }
    wizard.setConnected(true);
    QVERIFY(wizard.isOpen());
    QVERIFY(wizard.pageBlocked());
    if (end != "before the disconnection" && end != "with the reconnection") {
        QVERIFY(wizard.shows("Abort"));
        wizard.end();
    }
    const size_t mark = wizard.gate().mark();
    wizard.use("Accept");
    QCOMPARE(wizard.commands(mark), QStringList({"zvtAcceptNUC", "zvtSaveNUCAs 2, \"new\""}));
    // The decision has been made.
    wizard.setConnected(false);
    wizard.setConnected(true);
    QVERIFY(!wizard.isOpen());
}

void tst_NucNewDialogLeaving::closedRunThatFailedIsForgotten()
{
    NucWizard wizard;
    wizard.start();
    wizard.setConnected(false);
    wizard.use("Close");
    wizard.setConnected(true);
    wizard.end(1);
    QVERIFY(!wizard.isOpen());
    wizard.setConnected(false);
    wizard.setConnected(true);
    QVERIFY(!wizard.isOpen());
    wizard.open();
    QVERIFY(wizard.shows("Two-Point"));
}

// The model does not know yet that the run has not been made by the present camera.
void tst_NucNewDialogLeaving::otherCameraIsNotShownTheRun()
{
    NucWizard wizard;
    wizard.start();
    wizard.setConnected(false);
    wizard.use("Close");
    wizard.gate().script("zvtGetCameraSN", "ZE-999999");
    const size_t mark = wizard.gate().mark();
    wizard.setConnected(true);
    QVERIFY(!wizard.isOpen());
    wizard.open();
    QVERIFY(wizard.shows("Two-Point"));
    QVERIFY(!wizard.enabled("Next"));
    wizard.focus("Number of frames");
    wizard.press(Qt::Key_Return);
    QVERIFY(wizard.shows("Two-Point"));
    wizard.end();
    QVERIFY(wizard.shows("Two-Point"));
    QVERIFY(wizard.enabled("Next"));
    QCOMPARE(wizard.commands(mark), QStringList());
    // The result was that of the other camera. The first one gets no decision about it.
    wizard.setConnected(false);
    wizard.gate().script("zvtGetCameraSN", {});
    wizard.setConnected(true);
    QVERIFY(!wizard.isOpen());
}

void tst_NucNewDialogLeaving::resultWaitsForItsCamera()
{
    NucWizard wizard;
    wizard.process()->setProperty("preset", 2);
    wizard.start();
    wizard.end();
    wizard.setConnected(false);
    wizard.use("Close");
    wizard.gate().script("zvtGetCameraSN", "ZE-999999");
    wizard.gate().script("zvtGetNUCType", 2);
    wizard.setConnected(true);
    QVERIFY(!wizard.isOpen());
    wizard.open();
    QVERIFY(wizard.checked("Offset Update"));
    QVERIFY(wizard.enabled("Next"));
    wizard.use("Cancel");
    wizard.setConnected(false);
    wizard.gate().script("zvtGetCameraSN", {});
    wizard.setConnected(true);
    const size_t mark = wizard.gate().mark();
    wizard.use("Accept");
    QCOMPARE(wizard.commands(mark), QStringList({"zvtAcceptNUC", "zvtSaveNUCAs 2, \"new\""}));
}

void tst_NucNewDialogLeaving::unknownRunIsEnded_data()
{
    QTest::addColumn<int>("result");
    QTest::newRow("ended") << 1;
    QTest::newRow("complete before it was ended") << 0;
}

// A new page does not know the name of a run that it finds.
void tst_NucNewDialogLeaving::unknownRunIsEnded()
{
    QFETCH(const int, result);
    NucWizard wizard;
    wizard.use("Cancel");
    QMetaObject::invokeMethod(wizard.process(), "start");
    wizard.settle();
    const size_t mark = wizard.gate().mark();
    wizard.open();
    QCOMPARE(wizard.commands(mark), QStringList("zvtAbortNUC"));
    QVERIFY(wizard.shows("Abort"));
    wizard.end(result);
    QVERIFY(!wizard.isOpen());
    QVERIFY(wizard.hostMayClose());
    QCOMPARE(wizard.commands(mark), QStringList("zvtAbortNUC"));
}

void tst_NucNewDialogLeaving::everyStatusCanBeLeft_data()
{
    QTest::addColumn<int>("status");
    for (int status = 1; status <= 14; ++status)
        QTest::addRow("%d", status) << status;
}

void tst_NucNewDialogLeaving::everyStatusCanBeLeft()
{
    QFETCH(const int, status);
    NucWizard wizard;
    wizard.start();
    wizard.pollStatus(status, "text");
    const size_t mark = wizard.gate().mark();
    wizard.use("Abort");
    QCOMPARE(wizard.commands(mark), QStringList("zvtAbortNUC"));
    wizard.setConnected(false);
    QVERIFY(wizard.page()->isEnabled());
    wizard.use("Close");
    QVERIFY(!wizard.isOpen());
    QVERIFY(wizard.hostMayClose());
}

// A host may unload the page although a correction is made.
void tst_NucNewDialogLeaving::runEndsWithThePage_data()
{
    QTest::addColumn<QString>("way");
    QTest::addColumn<QStringList>("commands");
    QTest::newRow("run") << "" << QStringList("zvtAbortNUC");
    QTest::newRow("result") << "end" << QStringList("zvtDiscardNUC");
    QTest::newRow("disconnected") << "disconnect" << QStringList("zvtAbortNUC");
    QTest::newRow("closed") << "disconnect, close" << QStringList("zvtAbortNUC");
    QTest::newRow("connected again") << "disconnect, close, connect" << QStringList("zvtAbortNUC");
    QTest::newRow("closed result") << "end, disconnect, close, connect" << QStringList("zvtDiscardNUC");
    QTest::newRow("other camera") << "disconnect, close, change, connect" << QStringList();
}

void tst_NucNewDialogLeaving::runEndsWithThePage()
{
    QFETCH(const QString, way);
    NucWizard wizard;
    wizard.start();
    for (const QString &step : way.split(", ")) {
        if (step == "end")
            wizard.end();
        else if (step == "close")
            wizard.use("Close");
        else if (step == "change")
            wizard.gate().script("zvtGetCameraSN", "ZE-999999");
        else if (!step.isEmpty())
            wizard.setConnected(step == "connect");
    }
    const size_t mark = wizard.gate().mark();
    wizard.deletePage();
    QTEST(wizard.commands(mark), "commands");
    QVERIFY(wizard.hostMayClose());
}

// A model may be deleted before its page.
void tst_NucNewDialogLeaving::runEndsWithTheModel()
{
    NucWizard wizard;
    wizard.start();
    const size_t mark = wizard.gate().mark();
    wizard.deleteModel();
    QCOMPARE(wizard.commands(mark), QStringList("zvtAbortNUC"));
}

void tst_NucNewDialogLeaving::itOutlivesItsModel()
{
    NucWizard wizard;
    wizard.start();
    wizard.end();
    wizard.deleteModel();
    wizard.settle();
    QVERIFY(wizard.findText("Perform NUC"));
    wizard.click("Close");
}

ZVT_TEST(tst_NucNewDialogLeaving)
#include "tst_NucNewDialogLeaving.moc"
