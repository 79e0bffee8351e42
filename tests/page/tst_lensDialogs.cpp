#include "tests/support/PageDriver.h"
#include "tests/support/Test.h"

#include <QColor>

/// A fake of the Setup tab's model: the properties that the lens dialogs read, and a record of their calls.
class LensTabFake : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int narrowNearFocusPosition MEMBER narrowNear NOTIFY changed)
    Q_PROPERTY(int narrowFarFocusPosition MEMBER narrowFar NOTIFY changed)
    Q_PROPERTY(int wideNearFocusPosition MEMBER wideNear NOTIFY changed)
    Q_PROPERTY(int wideFarFocusPosition MEMBER wideFar NOTIFY changed)
    Q_PROPERTY(int selectedFocusPosition MEMBER focus NOTIFY changed)
    Q_PROPERTY(uint fullRangeFocusMinimum MEMBER minimum NOTIFY changed)
    Q_PROPERTY(uint fullRangeFocusMaximum MEMBER maximum NOTIFY changed)
    Q_PROPERTY(bool focusEncoderHasAscendingValuesNearToFar MEMBER ascending NOTIFY changed)

public:
    Q_INVOKABLE void addLensState(const QString &name) { calls += "add " + name; }
    Q_INVOKABLE void renameLensState(const QString &oldName, const QString &newName)
    {
        calls += "rename " + oldName + " to " + newName;
    }
    Q_INVOKABLE void deleteLensState(const QString &name) { calls += "delete " + name; }
    Q_INVOKABLE void setNarrowWideNearFarPositions(uint narrowNearest, uint narrowFarthest, uint wideNearest,
                                                   uint wideFarthest)
    {
        calls += QStringLiteral("limits %1 %2 %3 %4")
                     .arg(narrowNearest)
                     .arg(narrowFarthest)
                     .arg(wideNearest)
                     .arg(wideFarthest);
    }

    int narrowNear = 100;
    int narrowFar = 200;
    int wideNear = 300;
    int wideFar = 400;
    int focus = 150;
    uint minimum = 50;
    uint maximum = 5000;
    bool ascending = true;
    QStringList calls;

signals:
    void changed();
};

class tst_lensDialogs : public Test
{
    Q_OBJECT

private slots:
    void dialogsAreModalAndStayUntilTheyAreAnswered_data();
    void dialogsAreModalAndStayUntilTheyAreAnswered();
    void aLensStateIsAdded_data();
    void aLensStateIsAdded();
    void aNameStartsEmptyEachTime();
    void aNameIsChecked_data();
    void aNameIsChecked();
    void aNameThatCannotBeTakenIsMarked();
    void cancellingANameSavesNothing();
    void aLensStateIsRenamed();
    void rolesOfButtonsShow_data();
    void rolesOfButtonsShow();
    void aLensStateIsDeleted();
    void enterDoesNotDelete();
    void limitsAreCopiedOnOpening();
    void limitsAreSaved_data();
    void limitsAreSaved();
    void limitsAreChecked_data();
    void limitsAreChecked();
    void whatIsNoPositionIsNotMadeOne_data();
    void whatIsNoPositionIsNotMadeOne();
    void theFullRangeReadsFromNearToFar();
    void cancellingTheLimitsChangesNothing();

private:
    static QObject *open(PageDriver &driver, LensTabFake &tab, const QString &qml);
    static QObject *openLimits(PageDriver &driver, LensTabFake &tab)
    {
        return open(driver, tab, "EditNearFarPositions");
    }
    static bool isOpen(const QObject *dialog) { return dialog->property("opened").toBool(); }
    static bool isClosed(const QObject *dialog) { return !dialog->property("visible").toBool(); }
    static bool canPress(const PageDriver &driver, const QString &button);
    static void type(PageDriver &driver, const QString &text);
    /// Replaces the text of a field, key by key.
    static void enter(PageDriver &driver, const QString &field, const QString &text);
};

QObject *tst_lensDialogs::open(PageDriver &driver, LensTabFake &tab, const QString &qml)
{
    QObject *dialog = driver.create(qml.contains('{') ? qml : qml + " { }", {{"tabModel", QVariant::fromValue(&tab)}});
    QMetaObject::invokeMethod(dialog, "open");
    return QTest::qWaitFor([dialog] { return isOpen(dialog); }) ? dialog : nullptr;
}

bool tst_lensDialogs::canPress(const PageDriver &driver, const QString &button)
{
    const QQuickItem *item = driver.find(button);
    return item != nullptr && item->isEnabled();
}

void tst_lensDialogs::type(PageDriver &driver, const QString &text)
{
    for (const QChar character : text)
        QTest::keyClick(&driver.window(), character.toLatin1());
}

void tst_lensDialogs::enter(PageDriver &driver, const QString &field, const QString &text)
{
    driver.find(field)->forceActiveFocus();
    driver.press(Qt::Key_A, Qt::ControlModifier);
    driver.press(Qt::Key_Delete);
    type(driver, text);
}

void tst_lensDialogs::dialogsAreModalAndStayUntilTheyAreAnswered_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<int>("width");
    QTest::newRow("AddLensStateDialog") << "Add Lens State" << 300;
    QTest::newRow("RenameLensStateDialog") << "Rename Lens State" << 300;
    QTest::newRow("ConfirmDeleteLensStateDialog") << "Confirm" << 300;
    QTest::newRow("EditNearFarPositions") << "Edit Nearest/Farthest Positions" << 400;
}

void tst_lensDialogs::dialogsAreModalAndStayUntilTheyAreAnswered()
{
    QFETCH(const QString, title);
    QFETCH(const int, width);
    PageDriver driver;
    LensTabFake tab;
    driver.find("Configuration")->forceActiveFocus(Qt::TabFocusReason);
    const QObject *dialog = open(driver, tab, QTest::currentDataTag());
    QVERIFY(dialog);
    QVERIFY(driver.findText(title));
    QVERIFY(dialog->property("modal").toBool());
    QCOMPARE(dialog->property("width").toInt(), width);
    QVERIFY(dialog->property("height").toInt() <= 480 - 32);
    QTest::mouseClick(&driver.window(), Qt::LeftButton, Qt::NoModifier, {4, 470});
    driver.settle();
    QVERIFY(isOpen(dialog));
    driver.press(Qt::Key_Escape);
    QTRY_VERIFY(isClosed(dialog));
    QVERIFY(driver.find("Configuration")->property("visualFocus").toBool());
    QCOMPARE(tab.calls, QStringList());
}

void tst_lensDialogs::aLensStateIsAdded_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("by a click") << 0;
    QTest::newRow("by Return") << int(Qt::Key_Return);
    QTest::newRow("by Enter") << int(Qt::Key_Enter);
}

void tst_lensDialogs::aLensStateIsAdded()
{
    QFETCH(const int, key);
    PageDriver driver;
    LensTabFake tab;
    const QObject *dialog = open(driver, tab, "AddLensStateDialog");
    QVERIFY(dialog);
    QVERIFY(driver.find("Name")->hasActiveFocus());
    QVERIFY(!canPress(driver, "Save"));
    driver.press(Qt::Key_Return);
    QVERIFY(isOpen(dialog));
    type(driver, "Runway 2");
    QVERIFY(canPress(driver, "Save"));
    key == 0 ? driver.click("Save") : driver.press(Qt::Key(key));
    QTRY_VERIFY(isClosed(dialog));
    QCOMPARE(tab.calls, QStringList("add Runway 2"));
}

void tst_lensDialogs::aNameStartsEmptyEachTime()
{
    PageDriver driver;
    LensTabFake tab;
    QObject *dialog = open(driver, tab, "AddLensStateDialog");
    QVERIFY(dialog);
    type(driver, "Runway");
    driver.press(Qt::Key_Escape);
    QTRY_VERIFY(isClosed(dialog));
    QMetaObject::invokeMethod(dialog, "open");
    QTRY_VERIFY(isOpen(dialog));
    QCOMPARE(driver.text("Name"), QString());
    QVERIFY(driver.find("Name")->hasActiveFocus());
}

void tst_lensDialogs::aNameIsChecked_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("acceptable");
    QTest::newRow("empty") << QString() << false;
    QTest::newRow("one character") << "a" << true;
    QTest::newRow("31 with blanks inside") << "a" + QString(29, ' ') + "b" << true;
    QTest::newRow("32 characters") << QString(32, 'a') << false;
    QTest::newRow("trailing blank") << "a " << true;
    QTest::newRow("leading blank") << " a" << false;
    QTest::newRow("tab") << "a\tb" << false;
    QTest::newRow("line break") << "a\nb" << false;
}

void tst_lensDialogs::aNameIsChecked()
{
    QFETCH(const QString, name);
    QFETCH(const bool, acceptable);
    PageDriver driver;
    LensTabFake tab;
    const QObject *dialog = open(driver, tab, "AddLensStateDialog");
    QVERIFY(dialog);
    QQuickItem *field = driver.find("Name");
    field->setProperty("text", name);
    QCOMPARE(canPress(driver, "Save"), acceptable);
    driver.press(Qt::Key_Return);
    QTRY_COMPARE(isClosed(dialog), acceptable);
    QCOMPARE(tab.calls, acceptable ? QStringList("add " + name) : QStringList());
}

void tst_lensDialogs::aNameThatCannotBeTakenIsMarked()
{
    PageDriver driver;
    LensTabFake tab;
    const QObject *dialog = open(driver, tab, "AddLensStateDialog");
    QVERIFY(dialog);
    const auto isMarked = [&driver] { return !driver.find("Name")->property("fault").toString().isEmpty(); };
    QVERIFY(!isMarked());
    for (const QString &name : {QString(31, 'a') + "b", QString(" x")}) {
        enter(driver, "Name", name);
        QCOMPARE(driver.text("Name"), name);
        QVERIFY(isMarked());
        QVERIFY(!canPress(driver, "Save"));
        driver.press(Qt::Key_Return);
        QVERIFY(isOpen(dialog));
    }
    enter(driver, "Name", "x");
    QVERIFY(!isMarked());
    QCOMPARE(tab.calls, QStringList());
}

void tst_lensDialogs::cancellingANameSavesNothing()
{
    PageDriver driver;
    LensTabFake tab;
    const QObject *dialog = open(driver, tab, "AddLensStateDialog");
    QVERIFY(dialog);
    type(driver, "Runway");
    // The field loses the focus to the button, which must not save.
    driver.click("Cancel");
    QTRY_VERIFY(isClosed(dialog));
    QCOMPARE(tab.calls, QStringList());
}

void tst_lensDialogs::aLensStateIsRenamed()
{
    PageDriver driver;
    LensTabFake tab;
    QObject *dialog = open(driver, tab, "RenameLensStateDialog { currentName: \"Runway\" }");
    QVERIFY(dialog);
    QCOMPARE(driver.text("Name"), "Runway");
    QVERIFY(driver.find("Name")->hasActiveFocus());
    // Typing replaces the current name.
    type(driver, "Tower");
    driver.press(Qt::Key_Return);
    QTRY_VERIFY(isClosed(dialog));
    QCOMPARE(tab.calls, QStringList("rename Runway to Tower"));

    dialog->setProperty("currentName", "Tower");
    QMetaObject::invokeMethod(dialog, "open");
    QTRY_VERIFY(isOpen(dialog));
    QCOMPARE(driver.text("Name"), "Tower");
    driver.click("Save");
    QCOMPARE(tab.calls.constLast(), "rename Tower to Tower");
}

void tst_lensDialogs::rolesOfButtonsShow_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("role");
    QTest::newRow("AddLensStateDialog") << "Save"
                                        << "primary";
    QTest::newRow("RenameLensStateDialog") << "Save"
                                           << "primary";
    QTest::newRow("ConfirmDeleteLensStateDialog") << "Delete"
                                                  << "destructive";
    QTest::newRow("EditNearFarPositions") << "OK"
                                          << "primary";
}

void tst_lensDialogs::rolesOfButtonsShow()
{
    QFETCH(const QString, button);
    QFETCH(const QString, role);
    PageDriver driver;
    LensTabFake tab;
    QVERIFY(open(driver, tab, QTest::currentDataTag()));
    for (const char *one : {"primary", "destructive"}) {
        QCOMPARE(driver.find(button)->property(one).toBool(), role == one);
        QVERIFY(!driver.find("Cancel")->property(one).toBool());
    }
}

void tst_lensDialogs::aLensStateIsDeleted()
{
    PageDriver driver;
    LensTabFake tab;
    const QObject *dialog = open(driver, tab, "ConfirmDeleteLensStateDialog { name: \"<b>Runway</b>\" }");
    QVERIFY(dialog);
    driver.settle();
    const QQuickItem *question = driver.findText("Delete this lens state?");
    const QQuickItem *name = driver.findText("<b>Runway</b>");
    QVERIFY(question && name);
    QVERIFY(name->mapToScene({0, 0}).y() > question->mapToScene({0, 0}).y());
    QVERIFY(driver.find("Delete")->property("destructive").toBool());
    driver.click("Delete");
    QTRY_VERIFY(isClosed(dialog));
    QCOMPARE(tab.calls, QStringList("delete <b>Runway</b>"));
}

void tst_lensDialogs::enterDoesNotDelete()
{
    PageDriver driver;
    LensTabFake tab;
    const QObject *dialog = open(driver, tab, "ConfirmDeleteLensStateDialog { name: \"Runway\" }");
    QVERIFY(dialog);
    QTRY_VERIFY(driver.find("Cancel")->hasActiveFocus());
    driver.press(Qt::Key_Return);
    QTRY_VERIFY(isClosed(dialog));
    QCOMPARE(tab.calls, QStringList());
}

void tst_lensDialogs::limitsAreCopiedOnOpening()
{
    PageDriver driver;
    LensTabFake tab;
    QObject *dialog = openLimits(driver, tab);
    QVERIFY(dialog);
    const auto shown = [&driver] {
        QStringList texts;
        for (const QString field : {"Narrow Field Of View Nearest", "Narrow Field Of View Farthest",
                                    "Wide Field Of View Nearest", "Wide Field Of View Farthest"})
            texts += driver.text(field);
        return texts.join(' ');
    };
    QCOMPARE(shown(), "100 200 300 400");
    QCOMPARE(driver.text("Current Position"), "150");
    // New values from the camera do not change the text of the fields; the current position is updated.
    tab.narrowNear = 110;
    tab.focus = 160;
    emit tab.changed();
    QCOMPARE(shown(), "100 200 300 400");
    QCOMPARE(driver.text("Current Position"), "160");
    driver.press(Qt::Key_Escape);
    QTRY_VERIFY(isClosed(dialog));
    QMetaObject::invokeMethod(dialog, "open");
    QTRY_VERIFY(isOpen(dialog));
    QCOMPARE(shown(), "110 200 300 400");
}

void tst_lensDialogs::limitsAreSaved_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("by a click") << false;
    QTest::newRow("by Return") << true;
}

void tst_lensDialogs::limitsAreSaved()
{
    QFETCH(const bool, byKey);
    PageDriver driver;
    LensTabFake tab;
    const QObject *dialog = openLimits(driver, tab);
    QVERIFY(dialog);
    QVERIFY(driver.find("Narrow Field Of View Nearest")->hasActiveFocus());
    // Tab moves from field to field; typing replaces the old text.
    for (const QString text : {"60", "70", "80", "5000"}) {
        type(driver, text);
        if (text != "5000")
            driver.press(Qt::Key_Tab);
    }
    byKey ? driver.press(Qt::Key_Return) : driver.click("OK");
    QTRY_VERIFY(isClosed(dialog));
    QCOMPARE(tab.calls, QStringList("limits 60 70 80 5000"));
}

void tst_lensDialogs::limitsAreChecked_data()
{
    QTest::addColumn<bool>("ascending");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("fault");
    const QString range = "Positions lie between 50 and 5000.";
    const QString order = "Nearest may not lie beyond farthest.";
    QTest::newRow("lowest") << true << "Narrow Field Of View Nearest"
                            << "50" << QString();
    QTest::newRow("below the range") << true << "Narrow Field Of View Nearest"
                                     << "49" << range;
    QTest::newRow("highest") << true << "Wide Field Of View Farthest"
                             << "5000" << QString();
    QTest::newRow("above the range") << true << "Wide Field Of View Farthest"
                                     << "5001" << range;
    QTest::newRow("empty") << true << "Wide Field Of View Nearest"
                           << "" << range;
    QTest::newRow("equal") << true << "Narrow Field Of View Nearest"
                           << "200" << QString();
    QTest::newRow("narrow out of order") << true << "Narrow Field Of View Nearest"
                                         << "201" << order;
    QTest::newRow("wide out of order") << true << "Wide Field Of View Farthest"
                                       << "299" << order;
    QTest::newRow("falling, equal") << false << "Narrow Field Of View Nearest"
                                    << "200" << QString();
    QTest::newRow("falling, narrow out of order") << false << "Narrow Field Of View Nearest"
                                                  << "199" << order;
    QTest::newRow("falling, wide out of order") << false << "Wide Field Of View Farthest"
                                                << "401" << order;
}

void tst_lensDialogs::limitsAreChecked()
{
    QFETCH(const bool, ascending);
    QFETCH(const QString, field);
    QFETCH(const QString, text);
    QFETCH(const QString, fault);
    PageDriver driver;
    LensTabFake tab;
    tab.ascending = ascending;
    if (!ascending) {
        tab.narrowNear = 300;
        tab.narrowFar = 200;
        tab.wideNear = 400;
        tab.wideFar = 300;
    }
    const QObject *dialog = openLimits(driver, tab);
    QVERIFY(dialog);
    QVERIFY(canPress(driver, "OK"));
    enter(driver, field, text);
    QCOMPARE(canPress(driver, "OK"), fault.isEmpty());
    QVERIFY(fault.isEmpty() || driver.findText(fault));
    driver.press(Qt::Key_Return);
    QTRY_COMPARE(isClosed(dialog), fault.isEmpty());
    QCOMPARE(tab.calls.size(), fault.isEmpty() ? 1 : 0);
}

void tst_lensDialogs::whatIsNoPositionIsNotMadeOne_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text : {"9,50", "1.5", "1e2", "x"})
        QTest::newRow(text) << text;
}

void tst_lensDialogs::whatIsNoPositionIsNotMadeOne()
{
    QFETCH(const QString, text);
    const QString field = "Wide Field Of View Nearest";
    PageDriver driver;
    LensTabFake tab;
    const QObject *dialog = openLimits(driver, tab);
    QVERIFY(dialog);
    enter(driver, field, text);
    driver.press(Qt::Key_Return);
    driver.press(Qt::Key_Tab);
    QCOMPARE(driver.text(field), text);
    QCOMPARE(driver.find(field)->property("fault").toString(), "Not a number");
    QVERIFY(!canPress(driver, "OK"));
    QVERIFY(isOpen(dialog));
    QCOMPARE(tab.calls, QStringList());
}

void tst_lensDialogs::theFullRangeReadsFromNearToFar()
{
    PageDriver driver;
    LensTabFake tab;
    QVERIFY(openLimits(driver, tab));
    QCOMPARE(driver.text("Full Range (Near to Far)"), "50 -> 5000");
    tab.ascending = false;
    emit tab.changed();
    QCOMPARE(driver.text("Full Range (Near to Far)"), "5000 -> 50");
    // The shown limits no longer match the direction of the encoder.
    QVERIFY(!canPress(driver, "OK"));
}

void tst_lensDialogs::cancellingTheLimitsChangesNothing()
{
    PageDriver driver;
    LensTabFake tab;
    const QObject *dialog = openLimits(driver, tab);
    QVERIFY(dialog);
    enter(driver, "Narrow Field Of View Nearest", "120");
    driver.click("Cancel");
    QTRY_VERIFY(isClosed(dialog));
    QCOMPARE(tab.calls, QStringList());
}

ZVT_TEST(tst_lensDialogs)
#include "tst_lensDialogs.moc"
