#include "tests/page/StateDialog.h"
#include "tests/support/Test.h"

#include <QDateTime>
#include <QWheelEvent>

#include "hlxui/ObjectListModel.h"

namespace
{

const QStringList threeStates{"Alpha", "Bravo", "Charlie"};
const char *const anyName = "State Name";
const QString overwrite = QStringLiteral("That state already exists.\n\nDo you want to overwrite it?");

} // namespace

class tst_CameraStateDialog : public Test
{
    Q_OBJECT

private slots:
    void eachModeHasItsTitleAndButtons_data();
    void eachModeHasItsTitleAndButtons();
    void theListShowsNamesAndDates();
    void theListIsBusyWhileItIsRead();
    void anEmptyListSaysSo();
    void aClickSelectsAndCopiesTheName_data();
    void aClickSelectsAndCopiesTheName();
    void typingClearsTheSelection();
    void theNameCannotBeTypedWhenLoading();
    void openingClearsSelectionAndName();
    void theArrowKeysSelect();
    void theSelectionOutlivesANewList();
    void theSelectionGoesWithItsState();
    void aNewStateIsSaved_data();
    void aNewStateIsSaved();
    void anInvalidNameIsNotSaved();
    void savingOverAStateIsAsked_data();
    void savingOverAStateIsAsked();
    void aStateIsLoaded_data();
    void aStateIsLoaded();
    void itStaysUntilItIsClosed_data();
    void itStaysUntilItIsClosed();
    void everythingFitsASmallWindow_data();
    void everythingFitsASmallWindow();
    void theFocusReturnsToTheConfigurationButton_data();
    void theFocusReturnsToTheConfigurationButton();
    void theFocusReturnsToWhatOpenedAQuestion();
    void oneShadeIsBelowAllDialogs();
    void theWheelScrollsOverTheScrollBarToo();
    void thePageOutlivesItsModel();
};

void tst_CameraStateDialog::eachModeHasItsTitleAndButtons_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("verb");
    QTest::addColumn<QString>("last");
    QTest::newRow("Save State As") << "Save State"
                                   << "Save"
                                   << "Cancel";
    QTest::newRow("Load State") << "Load State"
                                << "Load"
                                << "Cancel";
    QTest::newRow("Manage States") << "Manage States" << QString() << "Done";
}

void tst_CameraStateDialog::eachModeHasItsTitleAndButtons()
{
    QFETCH(const QString, title);
    QFETCH(const QString, verb);
    QFETCH(const QString, last);
    StateDialog dialog(threeStates);
    dialog.open(QTest::currentDataTag());
    QVERIFY(dialog.driver.findText(title));
    QCOMPARE(dialog.driver.find(anyName) != nullptr, !verb.isEmpty());
    for (const QString unused : {"Save", "Load"})
        QCOMPARE(dialog.driver.find(unused) != nullptr, verb == unused);
    double x = 0;
    for (const QString &button : {QString("Rename"), QString("Delete"), QString("Upload"), QString("Download"), last}) {
        const QQuickItem *item = dialog.driver.find(button);
        QVERIFY2(item, qPrintable(button));
        QVERIFY(item->mapToScene({0, 0}).x() > x);
        x = item->mapToScene({0, 0}).x();
        QCOMPARE(item->isEnabled(), button == "Upload" || button == last);
        QCOMPARE(item->property("destructive").toBool(), button == "Delete");
        QVERIFY(!item->property("primary").toBool());
    }
    QVERIFY(verb.isEmpty() || dialog.driver.find(verb)->property("primary").toBool());
    dialog.driver.click(last);
    QTRY_VERIFY(!dialog.isOpen());
}

void tst_CameraStateDialog::theListShowsNamesAndDates()
{
    StateDialog dialog(threeStates);
    dialog.open("Manage States");
    QCOMPARE(dialog.names(), threeStates);
    const auto *entries = dialog.model()->property("entries").value<ObjectListModel *>();
    const QDateTime date = entries->at(1)->property("date").toDateTime();
    QVERIFY(date.isValid());
    const QQuickItem *shown = dialog.driver.findText(date.toLocalTime().toString("yyyy-MM-dd HH:mm"));
    QVERIFY(shown);
    // The dates are in a column to the right of the names.
    QVERIFY(shown->mapToScene({0, 0}).x() > dialog.driver.findText("Bravo")->mapToScene({0, 0}).x());
}

void tst_CameraStateDialog::theListIsBusyWhileItIsRead()
{
    StateDialog dialog(threeStates);
    dialog.gate().hold("zvtListStates");
    dialog.driver.choose("Manage States");
    QTRY_VERIFY(dialog.driver.object(QStringLiteral("stateListBusy")));
    QVERIFY(dialog.driver.object(QStringLiteral("stateListBusy"))->property("visible").toBool());
    QVERIFY(!dialog.driver.findText("The camera holds no states."));
    dialog.gate().release("zvtListStates");
    dialog.driver.settle();
    // A hidden spinner does not turn.
    QVERIFY(!dialog.driver.object(QStringLiteral("stateListBusy")));
    QCOMPARE(dialog.names(), threeStates);
}

void tst_CameraStateDialog::anEmptyListSaysSo()
{
    StateDialog dialog({});
    dialog.open("Load State");
    QVERIFY(dialog.driver.findText("The camera holds no states."));
    QVERIFY(!dialog.isEnabled("Load"));
    dialog.driver.press(Qt::Key_Down);
    QVERIFY(!dialog.isEnabled("Delete"));
}

void tst_CameraStateDialog::aClickSelectsAndCopiesTheName_data()
{
    QTest::addColumn<QString>("verb");
    QTest::newRow("Save State As") << "Save";
    QTest::newRow("Load State") << "Load";
}

void tst_CameraStateDialog::aClickSelectsAndCopiesTheName()
{
    QFETCH(const QString, verb);
    StateDialog dialog(threeStates);
    dialog.open(QTest::currentDataTag());
    QVERIFY(!dialog.isEnabled(verb));
    dialog.click("Bravo");
    QCOMPARE(dialog.selected(), QStringList{"Bravo"});
    QCOMPARE(dialog.driver.text(anyName), "Bravo");
    for (const QString &button : {verb, QString("Rename"), QString("Delete"), QString("Download")})
        QVERIFY(dialog.isEnabled(button));
    dialog.click("Alpha");
    QCOMPARE(dialog.selected(), QStringList{"Alpha"});
    QCOMPARE(dialog.driver.text(anyName), "Alpha");
}

void tst_CameraStateDialog::typingClearsTheSelection()
{
    StateDialog dialog(threeStates);
    dialog.open("Save State As");
    QTRY_VERIFY(dialog.driver.find(anyName)->hasActiveFocus());
    dialog.click("Bravo");
    dialog.driver.click(anyName);
    dialog.driver.press(Qt::Key_End);
    dialog.driver.type("2");
    QCOMPARE(dialog.driver.text(anyName), "Bravo2");
    QCOMPARE(dialog.selected(), QStringList());
    for (const QString button : {"Rename", "Delete", "Download"})
        QVERIFY(!dialog.isEnabled(button));
    QVERIFY(dialog.isEnabled("Save"));
    dialog.driver.press(Qt::Key_A, Qt::ControlModifier);
    dialog.driver.press(Qt::Key_Delete);
    QVERIFY(!dialog.isEnabled("Save"));
    dialog.driver.press(Qt::Key_Return);
    QVERIFY(dialog.isOpen());
}

void tst_CameraStateDialog::theNameCannotBeTypedWhenLoading()
{
    StateDialog dialog(threeStates);
    dialog.open("Load State");
    dialog.click("Bravo");
    dialog.driver.click(anyName);
    dialog.driver.type("2");
    QCOMPARE(dialog.driver.text(anyName), "Bravo");
    QCOMPARE(dialog.selected(), QStringList{"Bravo"});
}

void tst_CameraStateDialog::openingClearsSelectionAndName()
{
    StateDialog dialog(threeStates);
    dialog.open("Load State");
    dialog.click("Bravo");
    dialog.driver.click("Cancel");
    QTRY_VERIFY(!dialog.isOpen());
    dialog.open("Save State As");
    QCOMPARE(dialog.selected(), QStringList());
    QCOMPARE(dialog.driver.text(anyName), QString());
}

void tst_CameraStateDialog::theArrowKeysSelect()
{
    StateDialog dialog(threeStates);
    dialog.open("Load State");
    QTRY_VERIFY(dialog.list()->hasActiveFocus());
    for (const QString state : {"Alpha", "Bravo", "Charlie", "Charlie"}) {
        dialog.driver.press(Qt::Key_Down);
        QCOMPARE(dialog.selected(), QStringList{state});
        QCOMPARE(dialog.driver.text(anyName), state);
    }
    for (const QString state : {"Bravo", "Alpha", "Alpha"}) {
        dialog.driver.press(Qt::Key_Up);
        QCOMPARE(dialog.selected(), QStringList{state});
    }
}

void tst_CameraStateDialog::theSelectionOutlivesANewList()
{
    StateDialog dialog(threeStates);
    dialog.open("Load State");
    dialog.click("Bravo");
    QMetaObject::invokeMethod(dialog.model(), "refresh");
    dialog.driver.settle();
    QCOMPARE(dialog.selected(), QStringList{"Bravo"});
    QCOMPARE(dialog.driver.text(anyName), "Bravo");
}

void tst_CameraStateDialog::theSelectionGoesWithItsState()
{
    StateDialog dialog(threeStates);
    dialog.open("Load State");
    dialog.click("Bravo");
    QCOMPARE(zvtDeleteState(dialog.handle(), "Bravo"), 0);
    QMetaObject::invokeMethod(dialog.model(), "refresh");
    dialog.driver.settle();
    QCOMPARE(dialog.names(), QStringList({"Alpha", "Charlie"}));
    QCOMPARE(dialog.driver.text(anyName), QString());
    QVERIFY(!dialog.isEnabled("Load"));
    QVERIFY(!dialog.isEnabled("Delete"));
}

void tst_CameraStateDialog::aNewStateIsSaved_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("by the button") << false;
    QTest::newRow("by Enter") << true;
}

void tst_CameraStateDialog::aNewStateIsSaved()
{
    QFETCH(const bool, byKey);
    StateDialog dialog(threeStates);
    dialog.open("Save State As");
    const size_t mark = dialog.gate().mark();
    dialog.driver.type("Delta");
    byKey ? dialog.driver.press(Qt::Key_Return) : dialog.driver.click("Save");
    dialog.driver.settle();
    QCOMPARE(dialog.calls("zvtSaveStateAs", mark), QStringList{"\"Delta\""});
    QVERIFY(!dialog.isOpen());
    QCOMPARE(dialog.model()->property("currentStateName").toString(), "Delta");
}

void tst_CameraStateDialog::anInvalidNameIsNotSaved()
{
    StateDialog dialog(threeStates);
    dialog.open("Save State As");
    const size_t mark = dialog.gate().mark();
    dialog.driver.type("a:b");
    dialog.driver.press(Qt::Key_Return);
    QTRY_VERIFY(dialog.driver.findText(invalidStateName));
    QVERIFY(dialog.driver.findText("Error"));
    QTRY_VERIFY(dialog.driver.find("OK")->hasActiveFocus());
    dialog.driver.press(Qt::Key_Return);
    QTRY_VERIFY(!dialog.driver.findText(invalidStateName));
    // The dialog stays open, so that the name can be corrected.
    QVERIFY(dialog.isOpen());
    QTRY_VERIFY(dialog.driver.find(anyName)->hasActiveFocus());
    QCOMPARE(dialog.driver.text(anyName), "a:b");
    QCOMPARE(dialog.calls("zvtSaveStateAs", mark), QStringList());
    QCOMPARE(dialog.calls("zvtStateExists", mark), QStringList());
}

void tst_CameraStateDialog::savingOverAStateIsAsked_data()
{
    QTest::addColumn<bool>("yes");
    QTest::newRow("yes") << true;
    QTest::newRow("no") << false;
}

void tst_CameraStateDialog::savingOverAStateIsAsked()
{
    QFETCH(const bool, yes);
    StateDialog dialog(threeStates);
    dialog.open("Save State As");
    const size_t mark = dialog.gate().mark();
    dialog.click("Bravo");
    dialog.driver.click("Save");
    QTRY_VERIFY(dialog.driver.findText(overwrite));
    QVERIFY(dialog.driver.findText("Warning"));
    dialog.driver.awaitFrame();
    QVERIFY(dialog.driver.find("Yes")->property("destructive").toBool());
    QVERIFY(dialog.driver.find("No")->hasActiveFocus());
    dialog.driver.click(yes ? "Yes" : "No");
    dialog.driver.settle();
    QVERIFY(!dialog.driver.findText(overwrite));
    QCOMPARE(dialog.calls("zvtSaveStateAs", mark), yes ? QStringList{"\"Bravo\""} : QStringList());
    QCOMPARE(dialog.isOpen(), !yes);
}

void tst_CameraStateDialog::aStateIsLoaded_data() { aNewStateIsSaved_data(); }

void tst_CameraStateDialog::aStateIsLoaded()
{
    QFETCH(const bool, byKey);
    StateDialog dialog(threeStates);
    dialog.open("Load State");
    const size_t mark = dialog.gate().mark();
    dialog.click("Bravo");
    byKey ? dialog.driver.press(Qt::Key_Return) : dialog.driver.click("Load");
    dialog.driver.settle();
    QCOMPARE(dialog.calls("controller.LoadState", mark), QStringList{"\"Bravo\""});
    // A load does not check first whether the state exists.
    QCOMPARE(dialog.calls("zvtStateExists", mark), QStringList());
    QVERIFY(!dialog.isOpen());
    QCOMPARE(dialog.model()->property("currentStateName").toString(), "Bravo");
}

void tst_CameraStateDialog::itStaysUntilItIsClosed_data()
{
    QTest::addColumn<QString>("action");
    for (const char *action : {"Save State As", "Load State", "Manage States"})
        QTest::newRow(action) << action;
}

void tst_CameraStateDialog::itStaysUntilItIsClosed()
{
    QFETCH(const QString, action);
    StateDialog dialog(threeStates);
    dialog.open(action);
    QTest::mouseClick(&dialog.driver.window(), Qt::LeftButton, Qt::NoModifier, {4, 470});
    dialog.driver.settle();
    QVERIFY(dialog.isOpen());
    dialog.driver.press(Qt::Key_Escape);
    QTRY_VERIFY(!dialog.isOpen());
}

void tst_CameraStateDialog::everythingFitsASmallWindow_data() { itStaysUntilItIsClosed_data(); }

void tst_CameraStateDialog::everythingFitsASmallWindow()
{
    QFETCH(const QString, action);
    QStringList states;
    for (int number = 0; number < 30; ++number)
        states += QStringLiteral("State %1").arg(number) + QString(number == 0 ? 150 : 0, QLatin1Char('x'));
    StateDialog dialog(states);
    dialog.open(action);
    const QQuickItem *frame = dialog.list();
    while (!frame->inherits("QQuickPopupItem"))
        frame = frame->parentItem();
    QCOMPARE(frame->width(), 500.0);
    const QRectF inside = frame->mapRectToScene(frame->boundingRect());
    QVERIFY(QRectF(0, 0, 640, 480).contains(inside));
    const QRectF content = inside.adjusted(16, 16, -16, -16);
    for (const QString button : {"Rename", "Delete", "Upload", "Download", "Done", "Cancel", "Save", "Load"})
        if (const QQuickItem *item = dialog.driver.find(button))
            QVERIFY2(content.contains(item->mapRectToScene(item->boundingRect())), qPrintable(button));
    // A long name does not push the date aside, and keys scroll to the rest of the list.
    const QQuickItem *longName = dialog.driver.findText(states.constFirst());
    QVERIFY(longName->property("truncated").toBool());
    QTest::mouseMove(&dialog.driver.window(), longName->mapToScene({20, 14}).toPoint());
    QTRY_COMPARE(dialog.driver.hint(), states.constFirst());
    dialog.list()->forceActiveFocus();
    for (int step = 0; step < 30; ++step)
        dialog.driver.press(Qt::Key_Down);
    dialog.driver.settle();
    const QQuickItem *row = dialog.driver.find(states.constLast(), dialog.list());
    QVERIFY(row);
    QVERIFY(dialog.list()->contains(row->mapToItem(dialog.list(), QPointF(4, row->height() - 4))));
}

void tst_CameraStateDialog::theFocusReturnsToTheConfigurationButton_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("button");
    QTest::newRow("saved") << "Save State As"
                           << "Save";
    QTest::newRow("loaded") << "Load State"
                            << "Load";
    QTest::newRow("not saved") << "Save State As"
                               << "Cancel";
    QTest::newRow("done") << "Manage States"
                          << "Done";
}

void tst_CameraStateDialog::theFocusReturnsToTheConfigurationButton()
{
    QFETCH(const QString, action);
    QFETCH(const QString, button);
    StateDialog dialog(threeStates);
    dialog.open(action);
    if (button == "Save")
        dialog.driver.type("Delta");
    else
        dialog.click("Bravo");
    dialog.driver.click(button);
    dialog.driver.settle();
    QTRY_VERIFY(!dialog.isOpen());
    // The whole page is disabled during a load.
    QTRY_VERIFY(dialog.driver.page()->isEnabled());
    QTRY_VERIFY(dialog.driver.find("Configuration")->hasActiveFocus());
}

void tst_CameraStateDialog::theFocusReturnsToWhatOpenedAQuestion()
{
    StateDialog dialog(threeStates);
    dialog.open("Manage States");
    dialog.click("Bravo");
    for (const QString button : {"Rename", "Delete"}) {
        dialog.driver.find(button)->forceActiveFocus(Qt::TabFocusReason);
        dialog.driver.press(Qt::Key_Return);
        QTRY_VERIFY(dialog.driver.find("Cancel"));
        dialog.driver.press(Qt::Key_Escape);
        QTRY_VERIFY(!dialog.driver.find("Cancel"));
        QTRY_VERIFY(dialog.driver.find(button)->property("visualFocus").toBool());
    }
}

void tst_CameraStateDialog::oneShadeIsBelowAllDialogs()
{
    StateDialog dialog(threeStates);
    dialog.open("Manage States");
    const auto corner = [&dialog] { return dialog.driver.grab().pixelColor(4, 470); };
    const QColor shaded = corner();
    dialog.click("Bravo");
    dialog.driver.click("Delete");
    QTRY_VERIFY(dialog.driver.find("Cancel"));
    dialog.driver.awaitFrame();
    QCOMPARE(corner(), shaded);
    dialog.driver.press(Qt::Key_Escape);
    QTRY_VERIFY(!dialog.driver.find("Cancel"));
    dialog.driver.press(Qt::Key_Escape);
    QTRY_VERIFY(!dialog.isOpen());
    dialog.driver.awaitFrame();
    QVERIFY(corner() != shaded);
}

void tst_CameraStateDialog::theWheelScrollsOverTheScrollBarToo()
{
    QStringList states;
    for (int number = 0; number < 30; ++number)
        states += QStringLiteral("State %1").arg(number);
    StateDialog dialog(states);
    dialog.open("Manage States");
    QQuickItem *list = dialog.list();
    const QPointF bar = list->mapToScene({list->width() - 6, list->height() - 20});
    QWheelEvent wheel(bar, bar, {}, {0, -120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&dialog.driver.window(), &wheel);
    QTRY_VERIFY(list->property("contentY").toDouble() > 0);
}

void tst_CameraStateDialog::thePageOutlivesItsModel()
{
    StateDialog dialog(threeStates);
    dialog.open("Manage States");
    dialog.click("Bravo");
    dialog.driver.deleteModel();
    dialog.driver.settle();
    QCOMPARE(dialog.names(), QStringList());
    dialog.driver.click("Done");
    QTRY_VERIFY(!dialog.isOpen());
}

ZVT_TEST(tst_CameraStateDialog)
#include "tst_CameraStateDialog.moc"
