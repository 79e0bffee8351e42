#include "tests/page/NucWizard.h"
#include "tests/support/Test.h"

namespace
{

const QStringList counts{
    "Total Bad Pixels",       "Factory", "New", "Twinkler", "Responsivity Low/High", "Src1 A/D Count Low/High",
    "Src2 A/D Count Low/High"};

} // namespace

/// The pages of the wizard during a run and after it.
class tst_NucNewDialogRun : public Test
{
    Q_OBJECT

private slots:
    void cameraSaysWhatItDoes();
    void nextIsForExternalSources();
    void abortEndsTheRun();
    void escDoesNotEndTheRun();
    void failedRunClosesIt_data();
    void failedRunClosesIt();
    void failedStartIsJudgedByTheLastRun_data();
    void failedStartIsJudgedByTheLastRun();

    void countsAreShown();
    void countsAreForFoundBadPixels_data();
    void countsAreForFoundBadPixels();
    void badPixelsAreShownInTheImage();
    void acceptedCorrectionIsSaved_data();
    void acceptedCorrectionIsSaved();
    void discardedCorrectionIsNotSaved();
    void escDoesNotDiscard();
    void wholeWalkByKeyboard();

    void everythingFits_data();
    void everythingFits();
};

void tst_NucNewDialogRun::cameraSaysWhatItDoes()
{
    NucWizard wizard;
    wizard.start();
    QCOMPARE(wizard.text("Status"), "Starting");
    QVERIFY(wizard.object("nucBusy"));
    wizard.pollStatus(4, "Collecting 16 frames");
    QCOMPARE(wizard.text("Status"), "Collecting 16 frames");
    QVERIFY(!wizard.enabled("Previous"));
    QVERIFY(!wizard.enabled("Next"));
    QVERIFY(wizard.pageBlocked());
}

void tst_NucNewDialogRun::nextIsForExternalSources()
{
    NucWizard wizard;
    wizard.start();
    for (int status = 1; status <= 14; ++status) {
        wizard.pollStatus(status, QString::number(status));
        QCOMPARE(wizard.enabled("Next"), status == 2 || status == 6);
        QCOMPARE(wizard.object("nucBusy") == nullptr, status == 2 || status == 6);
    }
    wizard.pollStatus(2, "Place the first source");
    size_t mark = wizard.gate().mark();
    wizard.use("Next");
    QCOMPARE(wizard.commands(mark), QStringList("zvtContinueNUC"));
    QVERIFY(!wizard.enabled("Next"));
    wizard.pollStatus(6, "Place the second source");
    // The button has the focus again.
    mark = wizard.gate().mark();
    wizard.press(Qt::Key_Return);
    QCOMPARE(wizard.commands(mark), QStringList("zvtContinueNUC"));
}

void tst_NucNewDialogRun::abortEndsTheRun()
{
    NucWizard wizard;
    wizard.start();
    const size_t mark = wizard.gate().mark();
    wizard.use("Abort");
    QCOMPARE(wizard.commands(mark), QStringList("zvtAbortNUC"));
    QVERIFY(wizard.shows("Abort"));
    wizard.end(1);
    QVERIFY(!wizard.isOpen());
    QVERIFY(!wizard.pageBlocked());
    QVERIFY(wizard.hostMayClose());
}

void tst_NucNewDialogRun::escDoesNotEndTheRun()
{
    NucWizard wizard;
    wizard.start();
    const size_t mark = wizard.gate().mark();
    wizard.press(Qt::Key_Escape);
    wizard.settle();
    QVERIFY(wizard.shows("Abort"));
    QCOMPARE(wizard.commands(mark), QStringList());
}

void tst_NucNewDialogRun::failedRunClosesIt_data()
{
    QTest::addColumn<int>("result");
    QTest::newRow("aborted") << 1;
    QTest::newRow("invalid parameters") << 2;
    QTest::newRow("hot flag") << 3;
    QTest::newRow("unknown") << 9;
}

void tst_NucNewDialogRun::failedRunClosesIt()
{
    QFETCH(const int, result);
    NucWizard wizard;
    wizard.start();
    const size_t mark = wizard.gate().mark();
    wizard.end(result);
    QVERIFY(!wizard.isOpen());
    QVERIFY(!wizard.findText("text of the result"));
    QVERIFY(wizard.hostMayClose());
    QCOMPARE(wizard.commands(mark), QStringList());
}

void tst_NucNewDialogRun::failedStartIsJudgedByTheLastRun_data()
{
    QTest::addColumn<int>("lastResult");
    QTest::addColumn<bool>("asks");
    QTest::newRow("no run") << -1 << true;
    QTest::newRow("good run") << 0 << true;
    QTest::newRow("failed run") << 2 << false;
}

void tst_NucNewDialogRun::failedStartIsJudgedByTheLastRun()
{
    QFETCH(const int, lastResult);
    QFETCH(const bool, asks);
    NucWizard wizard;
    if (lastResult >= 0) {
        wizard.start();
        wizard.end(lastResult);
        if (wizard.isOpen())
            wizard.use("Discard");
        wizard.open();
    }
    wizard.use("Next");
    wizard.use("Next");
    wizard.enter("Name", "new");
    wizard.gate().failAlways("zvtStartNUC");
    wizard.use("Next");
    QCOMPARE(wizard.isOpen(), asks);
    QCOMPARE(wizard.shows("Accept"), asks);
}

// The result

void tst_NucNewDialogRun::countsAreShown()
{
    NucWizard wizard;
    wizard.start();
    wizard.end();
    QStringList shown;
    for (const QString &name : counts)
        shown << wizard.text(name);
    QCOMPARE(shown, QStringList({"11", "12", "13", "14", "16 / 15", "18 / 17", "20 / 19"}));
    QVERIFY(wizard.findText("Bad Pixels"));
    QVERIFY(wizard.findText("Accept this correction?"));
    QVERIFY(!wizard.enabled("Previous"));
    QVERIFY(wizard.enabled("Accept"));
    QVERIFY(wizard.enabled("Discard"));
}

void tst_NucNewDialogRun::countsAreForFoundBadPixels_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("detect");
    QTest::newRow("two-point") << 1 << false;
    QTest::newRow("one-point") << 0 << true;
    QTest::newRow("offset update") << 2 << true;
}

void tst_NucNewDialogRun::countsAreForFoundBadPixels()
{
    QFETCH(const int, type);
    QFETCH(const bool, detect);
    NucWizard wizard({.type = type, .detectBadPixels = detect});
    wizard.start();
    wizard.end();
    for (const QString &name : counts)
        QVERIFY(!wizard.shows(name));
    QVERIFY(wizard.findText("Accept this correction?"));
    QVERIFY(wizard.shows("Show Bad Pixels"));
}

void tst_NucNewDialogRun::badPixelsAreShownInTheImage()
{
    NucWizard wizard;
    wizard.start();
    wizard.end();
    QVERIFY(!wizard.checked("Show Bad Pixels"));
    size_t mark = wizard.gate().mark();
    wizard.use("Show Bad Pixels");
    QCOMPARE(wizard.commands(mark), QStringList("zvtSetShowBadPixels true"));
    QVERIFY(wizard.tabModel("correctionTabModel")->property("showBadPixels").toBool());
    mark = wizard.gate().mark();
    wizard.use("Show Bad Pixels", true);
    QCOMPARE(wizard.commands(mark), QStringList("zvtSetShowBadPixels false"));
    wizard.tabModel("correctionTabModel")->setProperty("showBadPixels", true);
    QVERIFY(wizard.checked("Show Bad Pixels"));
}

void tst_NucNewDialogRun::acceptedCorrectionIsSaved_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QStringList>("commands");
    QTest::newRow("one-point") << 0 << QStringList{"zvtAcceptNUC", "zvtSaveNUCAs 0, \"new\""};
    QTest::newRow("two-point") << 1 << QStringList{"zvtAcceptNUC", "zvtSaveNUCAs 0, \"new\""};
    QTest::newRow("offset update") << 2 << QStringList{"zvtAcceptNUC"};
}

void tst_NucNewDialogRun::acceptedCorrectionIsSaved()
{
    QFETCH(const int, type);
    NucWizard wizard({.type = type});
    wizard.start();
    wizard.end();
    const size_t mark = wizard.gate().mark();
    wizard.use("Accept");
    QTEST(wizard.commands(mark), "commands");
    QVERIFY(!wizard.isOpen());
    QVERIFY(!wizard.pageBlocked());
    QVERIFY(wizard.hostMayClose());
}

void tst_NucNewDialogRun::discardedCorrectionIsNotSaved()
{
    NucWizard wizard;
    wizard.start();
    wizard.end();
    const size_t mark = wizard.gate().mark();
    wizard.use("Discard");
    QCOMPARE(wizard.commands(mark), QStringList("zvtDiscardNUC"));
    QVERIFY(!wizard.isOpen());
    QVERIFY(wizard.hostMayClose());
}

void tst_NucNewDialogRun::escDoesNotDiscard()
{
    NucWizard wizard;
    wizard.start();
    wizard.end();
    const size_t mark = wizard.gate().mark();
    wizard.press(Qt::Key_Escape);
    wizard.settle();
    QVERIFY(wizard.shows("Accept"));
    QCOMPARE(wizard.commands(mark), QStringList());
}

void tst_NucNewDialogRun::wholeWalkByKeyboard()
{
    NucWizard wizard;
    const size_t mark = wizard.gate().mark();
    const auto pressEnter = [&wizard] {
        wizard.press(Qt::Key_Return);
        wizard.settle();
        wizard.settle();
    };
    pressEnter(); // The button Next has the focus.
    QVERIFY(wizard.shows("A/D Count Limit Low"));
    pressEnter();
    QVERIFY(wizard.shows("Name"));
    int tabs = 0;
    while (&wizard.item("Name") != wizard.window().activeFocusItem() && ++tabs < 30)
        wizard.press(Qt::Key_Tab);
    wizard.type("new");
    while (&wizard.item("Next") != wizard.window().activeFocusItem() && ++tabs < 60)
        wizard.press(Qt::Key_Tab);
    pressEnter();
    wizard.pollStatus(2, "Place the first source");
    pressEnter();
    wizard.end();
    QVERIFY(wizard.shows("Accept"));
    pressEnter();
    const QStringList commands = wizard.commands(mark);
    QVERIFY(commands.contains("zvtStartNUC"));
    QCOMPARE(commands.mid(commands.indexOf("zvtStartNUC") + 1),
             QStringList({"zvtContinueNUC", "zvtAcceptNUC", "zvtSaveNUCAs 0, \"new\""}));
}

void tst_NucNewDialogRun::everythingFits_data()
{
    QTest::addColumn<int>("source");
    QTest::addColumn<QSize>("size");
    QTest::newRow("smallest window") << 0 << QSize(640, 480);
    QTest::newRow("smallest window, flag") << 1 << QSize(640, 480);
    QTest::newRow("window") << 1 << QSize(900, 720);
}

void tst_NucNewDialogRun::everythingFits()
{
    QFETCH(const int, source);
    QFETCH(const QSize, size);
    NucWizard wizard({.source = source, .size = size});
    int number = 0;
    const auto check = [&] {
        wizard.saveScreenshot(QString::number(++number));
        const QQuickItem *dialog = &wizard.item("Previous");
        while (!dialog->inherits("QQuickPopupItem"))
            dialog = dialog->parentItem();
        const QRectF place = dialog->mapRectToScene(dialog->boundingRect());
        QVERIFY(QRectF({0, 0}, QSizeF(size)).contains(place));
        for (const QQuickItem *text : PageDriver::shownTexts(*dialog))
            QVERIFY2(PageDriver::fits(*text, place), qPrintable(text->property("text").toString()));
    };
    check();
    wizard.use("Next");
    check();
    wizard.use("Next");
    check();
    wizard.enter("Name", "new");
    wizard.use("Next");
    wizard.pollStatus(2, "Place the first source before the lens and press Next");
    check();
    wizard.setConnected(false);
    check();
    wizard.setConnected(true);
    wizard.end();
    check();
    wizard.setConnected(false);
    check();
}

ZVT_TEST(tst_NucNewDialogRun)
#include "tst_NucNewDialogRun.moc"
