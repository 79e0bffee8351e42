#include "tests/support/PageDriver.h"
#include "tests/support/Test.h"

#include <QTest>

#include <cmath>

namespace
{

/// The open dialog for the names of filters, and the actions of an operator in it.
class FilterNames : public PageDriver
{
public:
    explicit FilterNames(const PageSetup &setup = {}) : PageDriver(setup) { open(); }

    void open()
    {
        choose("Edit Filter Names");
        settle();
        QTRY_VERIFY(find("Name 0"));
    }
    bool isOpen() const { return find("Save") != nullptr; }

    emulator::Gate &gate() { return rig().gate(); }
    QObject *model() const { return tabModel("editFilterNamesModel"); }
    QObject *filter(int id) const
    {
        QObject *row = nullptr;
        QMetaObject::invokeMethod(model()->property("filterListModel").value<QObject *>(), "at",
                                  Q_RETURN_ARG(QObject *, row), Q_ARG(int, id));
        return row;
    }
    QQuickItem &field(int id) const { return *find(QStringLiteral("Name %1").arg(id)); }
    /// The list of fields, which scrolls.
    QQuickItem &list() const
    {
        QQuickItem *item = &field(0);
        while (!item->inherits("QQuickFlickable"))
            item = item->parentItem();
        return *item;
    }
    qreal scrolled() const { return list().property("contentY").toReal(); }
    void scrollTo(qreal y)
    {
        list().setProperty("contentY", y);
        settle();
    }
    /// The largest distance by which the list can scroll.
    qreal end() const { return list().property("contentHeight").toReal() - list().height(); }
    QRectF placeOf(const QQuickItem &item) const { return item.mapRectToScene(item.boundingRect()); }
    QQuickItem &reset(int id) const { return *find(QStringLiteral("Reset to Default %1").arg(id)); }

    /// Replaces the name in a field, key by key.
    void rename(int id, const QString &name)
    {
        field(id).forceActiveFocus(Qt::TabFocusReason);
        press(Qt::Key_A, Qt::ControlModifier);
        press(Qt::Key_Delete);
        type(name);
    }

    /// The names that `action` writes.
    template <class Action> QStringList writesOf(Action action)
    {
        const size_t mark = gate().mark();
        action();
        settle();
        QStringList writes;
        for (const auto &call : gate().callsSince(mark))
            if (call.name == "zvtSetFilterInfoName")
                writes << QString::fromStdString(call.arguments);
        return writes;
    }
    qsizetype readsSince(size_t mark) { return rig().callsSince(mark).count("zvtGetFilterNameEx"); }
};

const QString invalid = QStringLiteral("At least one name is invalid. Please check and try again.");

} // namespace

/// The dialog that edits the names of filters.
class tst_EditFilterNamesDialog : public Test
{
    Q_OBJECT

private slots:
    void actionNeedsAWheel_data();
    void actionNeedsAWheel();
    void everyOpeningReadsAgain();
    void dialogIsBusyWhileItReads();
    void allNamesAreShown();
    void editedNamesAreSaved();
    void unchangedNamesAreNotWritten();
    void defaultIsSet();
    void enterSaves();
    void cancelDropsTheEdits_data();
    void cancelDropsTheEdits();
    void emptyNameIsNotSaved();
    void overlongNameCannotBeTyped();
    void overlongNameOfTheModelIsNotSaved();
    void savedNamesReachTheWheel();
    void keysWalkOverTheRows();
    void focusedFieldIsInView();
    void clickedFieldStaysUnderThePointer();
    void scrollingEndsWithTheTable();
    void itFitsASmallWindow();
    void dialogOutlivesItsModel();
};

void tst_EditFilterNamesDialog::actionNeedsAWheel_data()
{
    QTest::addColumn<bool>("shown");
    QTest::newRow("everything") << true;
    QTest::newRow("te-cooler") << false;
}

void tst_EditFilterNamesDialog::actionNeedsAWheel()
{
    QFETCH(const bool, shown);
    PageDriver driver({.profile = QString::fromLatin1(QTest::currentDataTag())});
    driver.click("Configuration");
    QTRY_VERIFY(driver.find("About"));
    QCOMPARE(driver.find("Edit Filter Names") != nullptr, shown);
}

void tst_EditFilterNamesDialog::everyOpeningReadsAgain()
{
    FilterNames names;
    QVERIFY(names.model()->property("visible").toBool());
    names.click("Cancel");
    QTRY_VERIFY(!names.isOpen());
    QVERIFY(!names.model()->property("visible").toBool());
    const size_t mark = names.gate().mark();
    names.open();
    QCOMPARE(names.readsSince(mark), 64);
    QVERIFY(names.model()->property("visible").toBool());
}

void tst_EditFilterNamesDialog::dialogIsBusyWhileItReads()
{
    PageDriver driver;
    driver.rig().gate().hold("zvtGetFilterNameEx");
    driver.choose("Edit Filter Names");
    QVERIFY(driver.rig().gate().waitHeld("zvtGetFilterNameEx"));
    QTRY_VERIFY(driver.object("filterNamesBusy"));
    QVERIFY(!driver.find("Save")->isEnabled());
    QVERIFY(!driver.find("Cancel")->isEnabled());
    QVERIFY(!driver.find("Name 0"));
    driver.rig().gate().release("*");
    driver.settle();
    QVERIFY(driver.find("Name 0"));
    QVERIFY(driver.find("Save")->isEnabled());
    QVERIFY(driver.find("Cancel")->isEnabled());
    // A hidden spinner does not turn.
    QVERIFY(!driver.object("filterNamesBusy"));
}

void tst_EditFilterNamesDialog::allNamesAreShown()
{
    FilterNames names;
    QVERIFY(names.findText("Edit Filter Names"));
    for (const char *heading : {"ID", "Name", "Actions"})
        QVERIFY2(names.findText(heading), heading);
    QCOMPARE(names.field(0).property("text").toString(), QStringLiteral("Empty"));
    QCOMPARE(names.field(63).property("text").toString(), QStringLiteral("Custom 32"));
    for (int id = 0; id < 64; ++id) {
        QVERIFY(!names.reset(id).isEnabled());
        if (id > 0)
            QVERIFY(names.field(id).mapToScene({}).y() > names.field(id - 1).mapToScene({}).y());
    }
}

void tst_EditFilterNamesDialog::editedNamesAreSaved()
{
    FilterNames names;
    names.rename(3, "Window ");
    QCOMPARE(names.filter(3)->property("name").toString(), QStringLiteral("Window "));
    QVERIFY(names.reset(3).isEnabled());
    names.rename(40, "x");
    QCOMPARE(names.writesOf([&] { names.click("Save"); }), QStringList({"3, \"Window \"", "40, \"x\""}));
    QTRY_VERIFY(!names.isOpen());
    names.open();
    QCOMPARE(names.field(3).property("text").toString(), QStringLiteral("Window "));
    QVERIFY(names.reset(3).isEnabled());
}

void tst_EditFilterNamesDialog::unchangedNamesAreNotWritten()
{
    FilterNames names;
    QCOMPARE(names.writesOf([&] { names.click("Save"); }), QStringList());
    QTRY_VERIFY(!names.isOpen());
}

void tst_EditFilterNamesDialog::defaultIsSet()
{
    FilterNames names;
    names.rename(1, "open");
    QVERIFY(names.reset(1).isEnabled());
    names.click(&names.reset(1));
    QCOMPARE(names.field(1).property("text").toString(), QStringLiteral("Open"));
    QVERIFY(!names.reset(1).isEnabled());
    QCOMPARE(names.writesOf([&] { names.click("Save"); }), QStringList("1, \"Open\""));
}

void tst_EditFilterNamesDialog::enterSaves()
{
    FilterNames names;
    names.rename(2, "Shutter");
    QCOMPARE(names.writesOf([&] { names.press(Qt::Key_Return); }), QStringList("2, \"Shutter\""));
    QTRY_VERIFY(!names.isOpen());
}

void tst_EditFilterNamesDialog::cancelDropsTheEdits_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::newRow("by mouse") << false;
    QTest::newRow("by keyboard") << true;
}

void tst_EditFilterNamesDialog::cancelDropsTheEdits()
{
    QFETCH(const bool, byKeyboard);
    FilterNames names;
    names.rename(2, "Shutter");
    const QStringList writes = names.writesOf([&] {
        if (byKeyboard)
            names.press(Qt::Key_Escape);
        else
            names.click("Cancel");
    });
    QCOMPARE(writes, QStringList());
    QTRY_VERIFY(!names.isOpen());
    names.open();
    QCOMPARE(names.field(2).property("text").toString(), QStringLiteral("Blocked"));
}

void tst_EditFilterNamesDialog::emptyNameIsNotSaved()
{
    FilterNames names;
    names.rename(2, {});
    QVERIFY(!names.field(2).property("fault").toString().isEmpty());
    QVERIFY(names.field(3).property("fault").toString().isEmpty());
    QCOMPARE(names.writesOf([&] { names.click("Save"); }), QStringList());
    QVERIFY(names.findText("Invalid Filter Name(s)"));
    QVERIFY(names.findText(invalid));
    names.click("Close");
    QTRY_VERIFY(!names.findText(invalid));
    QVERIFY(names.isOpen());
    names.rename(2, "Shut");
    QCOMPARE(names.writesOf([&] { names.click("Save"); }), QStringList("2, \"Shut\""));
}

void tst_EditFilterNamesDialog::overlongNameCannotBeTyped()
{
    FilterNames names;
    names.filter(2)->setProperty("name", QString(198, u'f'));
    names.field(2).forceActiveFocus(Qt::TabFocusReason);
    names.press(Qt::Key_End);
    names.type("gh");
    QCOMPARE(names.filter(2)->property("name").toString(), QString(198, u'f') + "g");
    QVERIFY(names.field(2).property("fault").toString().isEmpty());
}

void tst_EditFilterNamesDialog::overlongNameOfTheModelIsNotSaved()
{
    FilterNames names;
    names.filter(2)->setProperty("name", QString(200, u'f'));
    QVERIFY(!names.field(2).property("fault").toString().isEmpty());
    QCOMPARE(names.writesOf([&] { names.click("Save"); }), QStringList());
    QVERIFY(names.findText(invalid));
}

void tst_EditFilterNamesDialog::savedNamesReachTheWheel()
{
    FilterNames names;
    const auto wheelReadsOfSaving = [&] {
        const size_t mark = names.gate().mark();
        names.click("Save");
        names.settle();
        return names.rig().callsSince(mark).count("zvtGetNumFilters");
    };
    QCOMPARE(wheelReadsOfSaving(), 0);
    names.tabModel("setupFilterWheelSettingsModel")->setProperty("visible", true);
    names.open();
    QCOMPARE(wheelReadsOfSaving(), 1);
}

void tst_EditFilterNamesDialog::keysWalkOverTheRows()
{
    FilterNames names;
    names.field(0).forceActiveFocus(Qt::TabFocusReason);
    names.press(Qt::Key_Down);
    QVERIFY(names.field(1).hasActiveFocus());
    names.press(Qt::Key_Up);
    names.press(Qt::Key_Up);
    QVERIFY(names.field(0).hasActiveFocus());
    // Disabled buttons are left out.
    names.press(Qt::Key_Tab);
    QVERIFY(names.field(1).hasActiveFocus());
    names.type("x");
    names.press(Qt::Key_Tab);
    QVERIFY(names.reset(1).hasActiveFocus());
    names.press(Qt::Key_Tab);
    QVERIFY(names.field(2).hasActiveFocus());
    names.field(63).forceActiveFocus(Qt::TabFocusReason);
    names.press(Qt::Key_Down);
    QVERIFY(names.field(63).hasActiveFocus());
    names.press(Qt::Key_Tab);
    QVERIFY(names.find("Save")->hasActiveFocus());
}

void tst_EditFilterNamesDialog::focusedFieldIsInView()
{
    FilterNames names;
    const QRectF place = names.placeOf(names.list());
    names.field(0).forceActiveFocus(Qt::TabFocusReason);
    for (int id = 1; id < 64; ++id) {
        names.press(Qt::Key_Down);
        names.awaitFrame();
        const QQuickItem &field = names.field(id);
        QVERIFY2(place.contains(names.placeOf(field)), qPrintable(QString::number(id)));
    }
}

// The list must not move under the pointer. The keyboard brings the rest of the row into view.
void tst_EditFilterNamesDialog::clickedFieldStaysUnderThePointer()
{
    FilterNames names;
    const QRectF place = names.placeOf(names.list());
    // Only the upper third of the field is visible.
    names.scrollTo(100);
    int id = 0;
    while (names.placeOf(names.field(id)).bottom() <= place.bottom())
        ++id;
    const QQuickItem &field = names.field(id);
    names.scrollTo(100 + std::round(names.placeOf(field).top() + field.height() / 3 - place.bottom()));
    const QRectF before = names.placeOf(field);
    QVERIFY(before.top() < place.bottom() && before.bottom() > place.bottom());
    QTest::mouseClick(&names.window(), Qt::LeftButton, {}, before.topLeft().toPoint() + QPoint(10, 3));
    names.settle();
    QVERIFY(field.hasActiveFocus());
    QCOMPARE(names.placeOf(field), before);
    names.press(Qt::Key_Up);
    names.press(Qt::Key_Down);
    names.settle();
    QVERIFY(field.hasActiveFocus());
    QVERIFY(place.contains(names.placeOf(field)));
}

void tst_EditFilterNamesDialog::scrollingEndsWithTheTable()
{
    FilterNames names;
    QVERIFY(names.end() > 100);
    // Rows have a margin, for which there is no room beyond the first and the last row.
    for (const auto &[id, scrolled] : {std::pair{63, names.end()}, {0, 0.0}}) {
        names.field(id).forceActiveFocus(Qt::TabFocusReason);
        names.awaitFrame();
        QCOMPARE(names.scrolled(), scrolled);
    }
}

void tst_EditFilterNamesDialog::itFitsASmallWindow()
{
    FilterNames names({.size = {640, 480}});
    const QRectF window(0, 0, 640, 480);
    for (const char *name : {"Save", "Cancel", "Name 0", "Reset to Default 0"})
        QVERIFY2(window.contains(names.find(name)->mapRectToScene(names.find(name)->boundingRect())), name);
    for (const char *text : {"Edit Filter Names", "Actions", "Cancel"})
        QVERIFY2(PageDriver::fits(*names.findText(text), window), text);
    QVERIFY(PageDriver::fits(*names.reset(0).property("contentItem").value<QQuickItem *>(), window));
}

void tst_EditFilterNamesDialog::dialogOutlivesItsModel()
{
    FilterNames names;
    names.rename(2, "Shutter");
    names.deleteModel();
    names.settle();
    names.press(Qt::Key_Escape);
    names.settle();
    QVERIFY(!names.isOpen());
}

ZVT_TEST(tst_EditFilterNamesDialog)
#include "tst_EditFilterNamesDialog.moc"
