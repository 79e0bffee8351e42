#include "tests/support/PageDriver.h"
#include "tests/support/Test.h"

#include <QColor>
#include <QSignalSpy>

class tst_dialogs : public Test
{
    Q_OBJECT

private slots:
    void aMessageIsDismissed();
    void aQuestionIsAnswered_data();
    void aQuestionIsAnswered();
    void aQuestionStaysUntilItIsAnswered();
    void enterConfirms_data();
    void enterConfirms();
    void whatDestroysIsInTheDestructiveColour();
    void anInformationIsAccepted();
    void anInformationStaysUntilItIsClosed();
    void aLongInformationFitsTheWindow();
    void aWrappedTextIsShownWhole();
    void textsAreTakenAsTheyAre();
    void escapeClosesTheUppermostDialog();
    void theButtonOfAMessageIsPrimary();
    void aDialogOfAPageIsInTheMiddleOfTheWindow();
    void theLowestDialogDarkensThePage();
    void theFocusReturnsToTheOpener_data();
    void theFocusReturnsToTheOpener();
    void aFadingMessageLeavesTheFocusToTheNextDialog();
    void dialogsAreDarkAndHangOnTheOverlay_data();
    void dialogsAreDarkAndHangOnTheOverlay();
    void thePickerHasTwoAndThirtyColumns();
    void thePickerHidesTheTransparentEntry();
    void thePickerMarksTheSelected();
    void aClickPicksAColour();
    void aColourIsPickedByKey();
    void leavingThePickerChangesNothing();

private:
    static QObject *open(PageDriver &driver, const QString &qml);
    /// A button beside the other controls of the page that opens the dialog.
    static QQuickItem *createOpener(PageDriver &driver, const QString &dialog);
    static QObject *openPicker(PageDriver &driver, int selectedIndex);
    static void clickOutside(PageDriver &driver);
    static bool isOpen(const QObject *dialog) { return dialog->property("opened").toBool(); }
    static bool isClosed(const QObject *dialog) { return !dialog->property("visible").toBool(); }
};

QObject *tst_dialogs::open(PageDriver &driver, const QString &qml)
{
    QObject *dialog = driver.create(qml);
    QMetaObject::invokeMethod(dialog, "open");
    return QTest::qWaitFor([dialog] { return isOpen(dialog); }) ? dialog : nullptr;
}

QQuickItem *tst_dialogs::createOpener(PageDriver &driver, const QString &dialog)
{
    const QString qml = QStringLiteral(
        "WrappingButton { x: 40; y: 90; text: \"Opener\"; onClicked: lazy.open(); LazyLoader { id: lazy; %1 {} } }");
    return qobject_cast<QQuickItem *>(driver.create(qml.arg(dialog)));
}

QObject *tst_dialogs::openPicker(PageDriver &driver, int selectedIndex)
{
    QStringList colours;
    for (int index = 0; index < 256; ++index)
        colours += QColor::fromHsv(index, 200, 200).name();
    QObject *picker = driver.create("VideoPaletteColorPicker { x: 10; y: 60 }",
                                    {{"colors", colours}, {"selectedIndex", selectedIndex}});
    QMetaObject::invokeMethod(picker, "open");
    return QTest::qWaitFor([picker] { return isOpen(picker); }) ? picker : nullptr;
}

void tst_dialogs::clickOutside(PageDriver &driver)
{
    QTest::mouseClick(&driver.window(), Qt::LeftButton, Qt::NoModifier, {4, 470});
}

void tst_dialogs::aMessageIsDismissed()
{
    PageDriver driver;
    QObject *dialog = driver.create("GenericMessageDialog { text: \"All output filenames must be unique.\" }");
    QMetaObject::invokeMethod(dialog, "open");
    // The dialog fades in, so it is visible before it is completely open.
    QVERIFY(dialog->property("visible").toBool());
    QVERIFY(!isOpen(dialog));
    QTRY_VERIFY(isOpen(dialog));
    QCOMPARE(dialog->property("opacity").toDouble(), 1.0);
    QVERIFY(dialog->property("modal").toBool());
    QVERIFY(driver.findText("KESTRIN Quarry Desk"));
    QVERIFY(driver.findText("All output filenames must be unique."));
    driver.click("OK");
    QVERIFY(!isOpen(dialog));
    QVERIFY(!isClosed(dialog));
    QTRY_VERIFY(isClosed(dialog));
}

void tst_dialogs::aQuestionIsAnswered_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("confirmed") << "Remove All" << true;
    QTest::newRow("denied") << "Keep Files" << false;
}

void tst_dialogs::aQuestionIsAnswered()
{
    QFETCH(const QString, button);
    QFETCH(const bool, accepted);
    PageDriver driver;
    QObject *dialog = open(driver,
                           "ConfirmationDialog { title: \"Confirm\"; text: \"Remove all files from the batch?\"; "
                           "confirmButtonText: \"Remove All\"; denyButtonText: \"Keep Files\" }");
    QVERIFY(dialog);
    QVERIFY(driver.findText("Confirm"));
    QVERIFY(driver.findText("Remove all files from the batch?"));
    const QSignalSpy acceptedSpy(dialog, SIGNAL(accepted()));
    const QSignalSpy rejectedSpy(dialog, SIGNAL(rejected()));
    driver.click(button);
    QTRY_VERIFY(isClosed(dialog));
    QCOMPARE(acceptedSpy.count(), accepted ? 1 : 0);
    QCOMPARE(rejectedSpy.count(), accepted ? 0 : 1);
}

void tst_dialogs::aQuestionStaysUntilItIsAnswered()
{
    PageDriver driver;
    QObject *dialog = open(driver, "ConfirmationDialog { text: \"Erase all data from the SSD?\" }");
    QVERIFY(dialog);
    QVERIFY(driver.find("Yes"));
    QVERIFY(driver.find("No"));
    const QSignalSpy rejectedSpy(dialog, SIGNAL(rejected()));
    clickOutside(driver);
    driver.settle();
    QVERIFY(isOpen(dialog));
    driver.press(Qt::Key_Escape);
    QTRY_VERIFY(isClosed(dialog));
    QCOMPARE(rejectedSpy.count(), 1);
}

void tst_dialogs::enterConfirms_data()
{
    QTest::addColumn<bool>("destructive");
    QTest::newRow("harmless") << false;
    QTest::newRow("destructive") << true;
}

void tst_dialogs::enterConfirms()
{
    QFETCH(const bool, destructive);
    PageDriver driver;
    QObject *dialog
        = open(driver, QStringLiteral("ConfirmationDialog { destructive: %1 }").arg(destructive ? "true" : "false"));
    QVERIFY(dialog);
    const QSignalSpy acceptedSpy(dialog, SIGNAL(accepted()));
    QTRY_VERIFY(driver.find(destructive ? "No" : "Yes")->property("visualFocus").toBool());
    driver.press(Qt::Key_Return);
    QTRY_VERIFY(isClosed(dialog));
    QCOMPARE(acceptedSpy.count(), destructive ? 0 : 1);
}

void tst_dialogs::whatDestroysIsInTheDestructiveColour()
{
    PageDriver driver;
    QVERIFY(open(driver, "ConfirmationDialog { confirmButtonText: \"Delete\"; destructive: true }"));
    const auto *text = driver.find("Delete")->property("contentItem").value<QQuickItem *>();
    QCOMPARE(text->property("color").value<QColor>(), QColor("black"));
    QVERIFY(driver.find("Delete")->property("destructive").toBool());
}

void tst_dialogs::anInformationIsAccepted()
{
    PageDriver driver;
    QObject *dialog
        = open(driver, "InformationDialog { title: \"Replace Filter\"; text: \"To change\"; buttonText: \"OK\" }");
    QVERIFY(dialog);
    QVERIFY(driver.findText("Replace Filter"));
    QVERIFY(driver.findText("To change"));
    const QSignalSpy acceptedSpy(dialog, SIGNAL(accepted()));
    driver.click("OK");
    QTRY_VERIFY(isClosed(dialog));
    QCOMPARE(acceptedSpy.count(), 1);
}

void tst_dialogs::anInformationStaysUntilItIsClosed()
{
    PageDriver driver;
    QObject *dialog = open(driver, "InformationDialog { text: \"At least one name is invalid.\" }");
    QVERIFY(dialog);
    QVERIFY(driver.find("Close"));
    const QSignalSpy acceptedSpy(dialog, SIGNAL(accepted()));
    clickOutside(driver);
    driver.settle();
    QVERIFY(isOpen(dialog));
    driver.press(Qt::Key_Escape);
    QTRY_VERIFY(isClosed(dialog));
    QCOMPARE(acceptedSpy.count(), 0);
}

void tst_dialogs::aLongInformationFitsTheWindow()
{
    PageDriver driver;
    const QObject *dialog = open(driver, "InformationDialog { title: \"Long\"; text: \"A line.\\n\".repeat(100) }");
    QVERIFY(dialog);
    QVERIFY(dialog->property("height").toDouble() <= 480 - 32);
    const QQuickItem *button = driver.find("Close");
    QVERIFY(QRectF(0, 0, 640, 480).contains(button->mapRectToScene(button->boundingRect())));
    // The keyboard scrolls to the rest of the text.
    QTRY_VERIFY(button->hasActiveFocus());
    auto *text = driver.findText(QStringLiteral("A line.\n").repeated(100));
    QVERIFY(text);
    const double top = text->mapToScene({0, 0}).y();
    driver.press(Qt::Key_Down);
    QTRY_VERIFY(text->mapToScene({0, 0}).y() < top);
    driver.press(Qt::Key_Up);
    QTRY_COMPARE(text->mapToScene({0, 0}).y(), top);
}

void tst_dialogs::aWrappedTextIsShownWhole()
{
    PageDriver driver;
    const QString text = QStringLiteral("A sentence that goes on for more than one line. ").repeated(6);
    QVERIFY(open(driver, QStringLiteral("GenericMessageDialog { text: \"%1\" }").arg(text)));
    driver.settle();
    const QQuickItem *label = driver.findText(text);
    QVERIFY(label->property("lineCount").toInt() > 3);
    QVERIFY(label->mapToScene({0, label->height()}).y() < driver.find("OK")->mapToScene({0, 0}).y());
}

void tst_dialogs::textsAreTakenAsTheyAre()
{
    PageDriver driver;
    const QString text = QStringLiteral("Delete <b>runway</b> & more?");
    QVERIFY(open(driver, QStringLiteral("ConfirmationDialog { text: \"%1\" }").arg(text)));
    const QQuickItem *label = driver.findText(text);
    QQuickItem *plain = qobject_cast<QQuickItem *>(
        driver.create("Text { font.pixelSize: Look.textSize; textFormat: Text.PlainText }", {{"text", text}}));
    QCOMPARE(label->property("contentWidth").toDouble(), plain->property("contentWidth").toDouble());
}

void tst_dialogs::escapeClosesTheUppermostDialog()
{
    PageDriver driver;
    const QObject *lower = open(driver, "InformationDialog { text: \"Below\" }");
    QVERIFY(lower);
    const QObject *upper = open(driver, "ConfirmationDialog { text: \"Above\" }");
    QVERIFY(upper);
    driver.press(Qt::Key_Escape);
    QTRY_VERIFY(isClosed(upper));
    QVERIFY(isOpen(lower));
    driver.press(Qt::Key_Escape);
    QTRY_VERIFY(isClosed(lower));
}

void tst_dialogs::theButtonOfAMessageIsPrimary()
{
    PageDriver driver;
    QVERIFY(open(driver, "GenericMessageDialog { }"));
    QVERIFY(driver.find("OK")->property("primary").toBool());
    QVERIFY(open(driver, "InformationDialog { }"));
    QVERIFY(!driver.find("Close")->property("primary").toBool());
}

void tst_dialogs::aDialogOfAPageIsInTheMiddleOfTheWindow()
{
    PageDriver driver;
    driver.click(createOpener(driver, "InformationDialog"));
    QTRY_VERIFY(driver.find("Close"));
    driver.awaitFrame();
    const QQuickItem *frame = driver.find("Close");
    while (!frame->inherits("QQuickPopupItem"))
        frame = frame->parentItem();
    QCOMPARE(frame->mapRectToScene(frame->boundingRect()).center(), QPointF(320, 240));
}

void tst_dialogs::theLowestDialogDarkensThePage()
{
    PageDriver driver;
    const QColor bare = driver.grab().pixelColor(4, 470);
    const QObject *lower = open(driver, "InformationDialog { }");
    QVERIFY(lower);
    const QColor shaded = driver.grab().pixelColor(4, 470);
    QVERIFY(shaded != bare);
    const QObject *upper = open(driver, "ConfirmationDialog { }");
    QVERIFY(upper);
    QCOMPARE(driver.grab().pixelColor(4, 470), shaded);
    driver.press(Qt::Key_Escape);
    QTRY_VERIFY(isClosed(upper));
    QCOMPARE(driver.grab().pixelColor(4, 470), shaded);
}

void tst_dialogs::theFocusReturnsToTheOpener_data()
{
    QTest::addColumn<QString>("dialog");
    QTest::addColumn<bool>("byKey");
    for (const QString dialog : {"InformationDialog", "ConfirmationDialog", "GenericMessageDialog"}) {
        QTest::addRow("%s by key", qPrintable(dialog)) << dialog << true;
        QTest::addRow("%s by a click", qPrintable(dialog)) << dialog << false;
    }
}

void tst_dialogs::theFocusReturnsToTheOpener()
{
    QFETCH(const QString, dialog);
    QFETCH(const bool, byKey);
    PageDriver driver;
    QQuickItem *opener = createOpener(driver, dialog);
    if (byKey) {
        opener->forceActiveFocus(Qt::TabFocusReason);
        driver.press(Qt::Key_Return);
    } else {
        driver.click(opener);
    }
    QTRY_VERIFY(!opener->hasActiveFocus());
    driver.settle();
    QVERIFY(driver.isShaded());
    driver.press(Qt::Key_Escape);
    QTRY_VERIFY(opener->hasActiveFocus());
    // The focus ring is shown again if it was shown before.
    QCOMPARE(opener->property("visualFocus").toBool(), byKey);
    // The dialog is completely closed, and the focus has not changed.
    QTRY_VERIFY(!driver.isShaded());
    driver.settle();
    QVERIFY(opener->hasActiveFocus());
}

void tst_dialogs::aFadingMessageLeavesTheFocusToTheNextDialog()
{
    PageDriver driver;
    const QObject *message = open(driver, "GenericMessageDialog { }");
    QVERIFY(message);
    driver.press(Qt::Key_Escape);
    QVERIFY(!isClosed(message));
    QVERIFY(open(driver, "InformationDialog { }"));
    QTRY_VERIFY(isClosed(message));
    QVERIFY(driver.find("Close")->hasActiveFocus());
}

void tst_dialogs::dialogsAreDarkAndHangOnTheOverlay_data()
{
    QTest::addColumn<QString>("dialog");
    for (const QString dialog : {"GenericMessageDialog", "ConfirmationDialog", "InformationDialog"})
        QTest::newRow(qPrintable(dialog)) << dialog;
}

void tst_dialogs::dialogsAreDarkAndHangOnTheOverlay()
{
    PageDriver driver;
    const QObject *dialog
        = open(driver, QStringLiteral("%1 { title: \"A title\"; text: \"A text\" }").arg(QTest::currentDataTag()));
    QVERIFY(dialog);
    QVERIFY(dialog->property("parent").value<QQuickItem *>()->inherits("QQuickOverlay"));
    const auto *background = dialog->property("background").value<QQuickItem *>();
    QCOMPARE(background->property("color").value<QColor>(), QColor("#22222b"));
    QCOMPARE(driver.findText("A text")->property("color").value<QColor>(), QColor("#d8d8d8"));
    QCOMPARE(dialog->property("font").value<QFont>().pixelSize(), 13);
    // The dialog is centred in windows of all sizes.
    QCOMPARE(dialog->property("x").toDouble() + dialog->property("width").toDouble() / 2, 320.0);
}

void tst_dialogs::thePickerHasTwoAndThirtyColumns()
{
    PageDriver driver;
    QVERIFY(openPicker(driver, 5));
    QTRY_VERIFY(driver.find("Color 255"));
    const auto at = [&driver](int index) {
        return driver.find(QStringLiteral("Color %1").arg(index))->mapToScene({0, 0});
    };
    for (int index = 33; index < 256; ++index) {
        QCOMPARE(at(index).x(), at(index - 32 == 0 ? 32 : index - 32).x());
        QVERIFY(at(index).y() > at(index - 32).y());
    }
    QCOMPARE(at(31).y(), at(1).y());
    QVERIFY(QRectF(0, 0, 640, 480).contains(at(255)));
}

void tst_dialogs::thePickerHidesTheTransparentEntry()
{
    PageDriver driver;
    QVERIFY(openPicker(driver, 0));
    QTRY_VERIFY(driver.find("Color 1"));
    QVERIFY(!driver.find("Color 0"));
}

void tst_dialogs::thePickerMarksTheSelected()
{
    PageDriver driver;
    QVERIFY(openPicker(driver, 40));
    QTRY_VERIFY(driver.find("Color 255"));
    for (int index = 1; index < 256; ++index) {
        const auto *mark
            = driver.find(QStringLiteral("Color %1").arg(index))->property("contentItem").value<QQuickItem *>();
        QCOMPARE(mark->property("text").toString().isEmpty(), index != 40);
    }
}

void tst_dialogs::aClickPicksAColour()
{
    PageDriver driver;
    const QObject *picker = openPicker(driver, 40);
    QVERIFY(picker);
    QTRY_VERIFY(driver.find("Color 77"));
    driver.click("Color 77");
    QTRY_VERIFY(isClosed(picker));
    QCOMPARE(picker->property("selectedIndex").toInt(), 77);
}

void tst_dialogs::aColourIsPickedByKey()
{
    PageDriver driver;
    const QObject *picker = openPicker(driver, 40);
    QVERIFY(picker);
    QTRY_VERIFY(driver.find("Color 255"));
    driver.press(Qt::Key_Right);
    driver.press(Qt::Key_Down);
    driver.press(Qt::Key_Return);
    QTRY_VERIFY(isClosed(picker));
    QCOMPARE(picker->property("selectedIndex").toInt(), 73);
}

void tst_dialogs::leavingThePickerChangesNothing()
{
    PageDriver driver;
    const QObject *picker = openPicker(driver, 40);
    QVERIFY(picker);
    clickOutside(driver);
    QTRY_VERIFY(isClosed(picker));
    QCOMPARE(picker->property("selectedIndex").toInt(), 40);
}

ZVT_TEST(tst_dialogs)
#include "tst_dialogs.moc"
